#pragma once

#include <vector>

#include "keltrix/design/Export.h"
#include "keltrix/design/MomentDiagram.h"
#include "keltrix/design/Stretches.h"
#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Design {

/// A concentrated load or reaction along the web at a member point. Force in N, lengths in m.
struct PointLoad {
    int point = 0; ///< place of the member point
    double x = 0.0;
    double force = 0.0;        ///< magnitude
    bool onFlange1 = true;     ///< presses downwards
    double loadToEnd = 0.0;    ///< from the middle of the bearing to the nearer end of the member
    double bearingToEnd = 0.0; ///< from the edge of the bearing to the nearer end of the member
    bool held = false;         ///< the flange that it presses on is held laterally there
};

/// The loads that the member's forces imply: jumps of Fz at its points, and Fz itself at its ends; those below a millionth of the largest
/// shear are noise. What follows within `spread` of a point lies upon the same part of the web and is one load with it, other points as well as
/// loads along sub-spans that end there. What presses on the other flange there is a load of its own, and takes away from the one before it only
/// what it carries of later loads. Loads along longer sub-spans are spread and are no point loads. A bearing of
/// the length `stiffBearing` is centred on its point, except at an end of the member, where it begins there. `major` is the
/// major-axis diagram of the same points and sub-spans.
KELTRIX_DESIGN_API std::vector<PointLoad> FindPointLoads(const std::vector<Steel::CMemberPoint>& points,
                                                         const std::vector<Steel::CSubSpan>& subSpans,
                                                         const MomentDiagram& major, double stiffBearing,
                                                         double spread);

/// Whether a flange is held laterally at a member point, by the point or along a neighbouring sub-span.
KELTRIX_DESIGN_API bool IsFlangeHeld(const std::vector<Steel::CMemberPoint>& points,
                                     const std::vector<Steel::CSubSpan>& subSpans, const MomentDiagram& major,
                                     int point, Flange flange);

} // namespace Keltrix::Design
