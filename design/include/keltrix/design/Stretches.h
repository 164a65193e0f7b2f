#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "keltrix/design/Export.h"
#include "keltrix/design/MomentDiagram.h"
#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Design {

/// Flange 1 is the top flange, flange 2 the bottom flange. A major-axis moment below zero compresses flange 1.
enum class Flange { First, Second };
inline constexpr std::array<Flange, 2> FLANGES{Flange::First, Flange::Second};

/// What ends a stretch.
enum class EndKind {
    HeldPoint,      ///< a member point whose restraint holds the flange laterally
    ContinuousEdge, ///< where a restraint along the member that holds the flange begins or ends
    MemberEnd,      ///< an end of the member that does not hold the flange
    Tip             ///< the free end of a cantilever
};
/// "held laterally at the point", ...
KELTRIX_DESIGN_API const wchar_t* EndKindText(EndKind kind);

/// One end of a stretch: why it is one, and what is held there.
struct StretchEnd {
    EndKind kind = EndKind::MemberEnd;
    double x = 0.0; ///< position, m
    int point = -1; ///< place of the member point, -1 where the end is a contraflexure between points
    /// What is held there: restraint of the point, together with the restraint along the member that ends there. Closed, and
    /// in terms of flange 1 and 2 alone: compression- and tension-flange bits are translated by the moment at the place and
    /// taken off, so that the set means the same whichever flange a rule asks of. Load height of the point.
    Data::CRestraint restraint;
    /// The same for flange 1 and for flange 2 of the stretch by itself: a restraint along the member counts for the flange
    /// that it holds, whether or not the stretches of both flanges have the same ends.
    std::array<Data::CRestraint, 2> ofFlange;
};

/// A length of the member between neighbouring sections that hold a flange laterally.
struct Stretch {
    std::array<bool, 2> flange{}; ///< whose stretch it is; both where both have the same ends
    bool held = false;            ///< the flange is held along the whole length: nothing to check
    bool cantilever = false;      ///< one end is the tip of a cantilever
    StretchEnd left, right;
    Extremes moments; ///< major-axis moments over the stretch

    bool Has(Flange f) const { return flange[static_cast<std::size_t>(f)]; }
    double Length() const { return right.x - left.x; }
    /// Largest moment that compresses a flange, N·m, 0 or above.
    double Compressing(Flange f) const
    {
        return f == Flange::First ? std::max(0.0, -moments.least) : std::max(0.0, moments.greatest);
    }
};

/// Whether the end of the member at place `point` is the tip of a cantilever: it has no vertical support, and the rest can
/// carry it, from two vertical supports or from one that holds its rotation about the major axis, fully or in part.
KELTRIX_DESIGN_API bool IsTip(const std::vector<Steel::CMemberPoint>& points, int point);

/// The restraint closed with the moment of the given sign (0: not known), in terms of flange 1 and 2 alone: bits that name the
/// compression or tension flange are taken off after the closure. Load height and reference stay.
KELTRIX_DESIGN_API Data::CRestraint Resolved(const Data::CRestraint& restraint, int momentSign);

/// The stretches of both flanges, ordered by start, then end, flange 1 before flange 2.
///
/// A section holds a flange where the closure of its restraint holds that flange laterally. A bit that names the compression or the
/// tension flange means the flange that the moment there says; it holds nothing where the magnitude of the moment is below
/// 1e-9 of the member's largest, or where the moments on both sides of a point differ in sign. A sub-span with such bits
/// along it is divided at its contraflexures. A contraflexure ends no stretch by itself, nor does a restraint of the other
/// flange, nor a member point that holds nothing: dividing sub-spans changes no stretch.
///
/// Along a cantilever, from its tip to the first vertical support, intermediate restraints do not count unless the tip is
/// held both laterally and in torsion (BS 5950-1:2000, 4.3.5.5, read on the safe side); a flange that is held along the whole
/// cantilever is held.
///
/// `diagram` is the major-axis diagram of the same points and sub-spans. Cost is linear in the number of sub-spans, except that
/// each stretch looks for its extremes in the diagram.
KELTRIX_DESIGN_API std::vector<Stretch> FindStretches(const std::vector<Steel::CMemberPoint>& points,
                                                      const std::vector<Steel::CSubSpan>& subSpans,
                                                      const MomentDiagram& diagram);

} // namespace Keltrix::Design
