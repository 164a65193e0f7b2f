#pragma once

#include <vector>

#include "keltrix/design/Export.h"
#include "keltrix/design/MomentDiagram.h"
#include "keltrix/design/Stretches.h"
#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Design {

/// A concentrated load or reaction along the web, at a member point or from one to another. Force in N, lengths in m.
struct PointLoad {
    int point = 0;             ///< place of the member point where it begins
    int lastPoint = 0;         ///< place of the one where it ends, the same for a load at a point
    double x = 0.0;            ///< position of the point where it begins
    double end = 0.0;          ///< position of the last point
    double force = 0.0;        ///< magnitude
    bool onFlange1 = true;     ///< presses downwards
    double bearing = 0.0;      ///< length of the stiff bearing
    double loadToEnd = 0.0;    ///< from the middle of the bearing to the nearer end of the member
    double bearingToEnd = 0.0; ///< from the edge of the bearing to the nearer end of the member
    bool held = false;         ///< the flange that it presses on is held laterally at both ends of it
};

/// What lies close together along a flange, lengths in m. A design code says which of its lengths these are; 0 for a rule that it does not have.
struct LoadSpacing {
    double stiffBearing = 0.0; ///< of a load at a point
    /// What follows within this length of a point lies upon the same part of the web and is one load with it: other points as well as loads
    /// along sub-spans that end there.
    double loaded = 0.0;
    /// A load along sub-spans that is longer than `loaded` and at most this long is one load on a bearing of its own length, with what
    /// presses at its points.
    double patch = 0.0;
    /// Loads at points at most this far apart are also one load on a bearing from the first to the last.
    double group = 0.0;
};

/// The loads that the member's forces imply: jumps of Fz at its points, and Fz itself at its ends; those below a millionth of the largest
/// shear are noise. What presses on the other flange is a load of its own, and takes away from the one before it only what it carries of later
/// loads. Loads along longer sub-spans are spread and are no point loads. A stiff bearing is centred on its point, except at an end of the
/// member, where it begins there. `major` is the major-axis diagram of the same points and sub-spans.
KELTRIX_DESIGN_API std::vector<PointLoad> FindPointLoads(const std::vector<Steel::CMemberPoint>& points,
                                                         const std::vector<Steel::CSubSpan>& subSpans,
                                                         const MomentDiagram& major, const LoadSpacing& spacing);

/// Whether a flange is held laterally at a member point, by the point or along a neighbouring sub-span.
KELTRIX_DESIGN_API bool IsFlangeHeld(const std::vector<Steel::CMemberPoint>& points,
                                     const std::vector<Steel::CSubSpan>& subSpans, const MomentDiagram& major,
                                     int point, Flange flange);

} // namespace Keltrix::Design
