#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "keltrix/design/Export.h"
#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Design {

/// Axis of bending of a diagram. Major: Myy with Fz, dMyy/dx = Fz. Minor: Mzz with Fy, dMzz/dx = -Fy.
enum class Bending { Major, Minor };

/// Moment along one sub-span over s = x/h, 0 to 1: (1 - s) left + s right - curvature s (1 - s). N·m.
struct Parabola {
    double left = 0.0;
    double right = 0.0;
    double curvature = 0.0; ///< half the second derivative: w h²/2 for a uniform load w

    double At(double s) const { return (1.0 - s) * left + s * right - curvature * s * (1.0 - s); }
    /// Derivative in s, N·m: h times the shear.
    double Slope(double s) const { return right - left - curvature * (1.0 - 2.0 * s); }
    /// Place of zero slope strictly between the ends; not-a-number where there is none.
    KELTRIX_DESIGN_API double Extreme() const;
    /// Places strictly between the ends where the moment changes sign, ascending; not-a-number for those there are not.
    KELTRIX_DESIGN_API std::array<double, 2> Zeros() const;
};

/// Least and greatest value that a moment can have at a place; both are equal where it is known. N·m.
struct MomentRange {
    double least = 0.0;
    double greatest = 0.0;

    double Magnitude() const { return std::max(std::abs(least), std::abs(greatest)); }
    /// The value of the larger magnitude, with its sign.
    double Worst() const { return std::abs(least) > std::abs(greatest) ? least : greatest; }
};

/// Equilibrium of one sub-span about one axis.
///
/// With linear shear the moment changes over the sub-span by half the sum of the end shears times its length. Where the end
/// moments change by something else, a load is missing or a sign is wrong, and the moment in between is not known.
struct Balance {
    double byShears = 0.0;  ///< change of moment that the end shears ask for, N·m
    double byMoments = 0.0; ///< right end moment less left end moment, N·m
    double scale = 0.0;     ///< max(|M left|, |M right|, (|V left| + |V right|) h/8), N·m
    bool balanced = true;   ///< the two changes differ by at most 1 % of the scale
};

/// The largest and the smallest moment of a stretch with their places along the member, m.
struct Extremes {
    double least = 0.0;
    double greatest = 0.0;
    double leastAt = 0.0;
    double greatestAt = 0.0;

    double Magnitude() const { return std::max(std::abs(least), std::abs(greatest)); }
};

/// Bending moment about one axis along a member, made once from the forces and moments at the sub-span ends. It is the
/// one diagram for checks, drawings, deflections and output.
///
/// In a balanced sub-span the moment is the parabola through both end moments whose curvature is the slope of the shear. In
/// an unbalanced one it is not known: the diagram then holds three curves, the parabola from the left end, the
/// parabola from the right end and the straight line, and every query covers all of them.
///
/// Dividing a sub-span at any place, with the moment of the diagram and the interpolated shear there, leaves the diagram as it
/// is. Scaling the forces scales it. Mirroring the member mirrors it.
///
/// The diagram keeps values, not references. Positions must not descend. A sub-span of no length is balanced; it has its two
/// end moments and nothing between them. Moments or shears that are not numbers make every query that covers them
/// not-a-number.
class KELTRIX_DESIGN_API MomentDiagram {
public:
    /// One sub-span: position of its left end and length, m, and the shears at its ends as slopes of the moment, N.
    struct Piece {
        double start = 0.0;
        double length = 0.0;
        double shearLeft = 0.0;
        double shearRight = 0.0;
        Balance balance;
        std::size_t firstCurve = 0;
        std::size_t curves = 1;

        double End() const { return start + length; }
        double Position(double s) const { return start + s * length; }
    };

    MomentDiagram() = default;
    MomentDiagram(const std::vector<Steel::CMemberPoint>& points, const std::vector<Steel::CSubSpan>& subSpans,
                  Bending bending);
    /// Diagram of a combination: `major` times Myy plus `minor` times Mzz, as for the principal axes of an angle. A
    /// sub-span is balanced where it is so about both axes that count; otherwise the range at a place covers every
    /// combination of the curves.
    MomentDiagram(const std::vector<Steel::CMemberPoint>& points, const std::vector<Steel::CSubSpan>& subSpans,
                  double major, double minor);
    /// The same from the diagrams about both axes of one member, `a` of the major axis and `b` of the minor one.
    MomentDiagram(const MomentDiagram& a, double major, const MomentDiagram& b, double minor);

    const std::vector<Piece>& Pieces() const { return m_pieces; }
    const Piece& At(int subSpan) const { return m_pieces[static_cast<std::size_t>(subSpan)]; }
    /// The curves that the moment can follow in a sub-span: one where it is balanced.
    std::span<const Parabola> Curves(int subSpan) const { return CurvesOf(At(subSpan)); }
    bool IsBalanced(int subSpan) const { return At(subSpan).balance.balanced; }
    /// The sub-spans that have length in common with a stretch, and those of no length inside it: the first one, and the one
    /// after the last. Lengths below 1e-9 of the member's do not count.
    struct Range {
        int first = 0;
        int last = 0;
    };
    Range Covering(double from, double to) const;
    /// Whether every sub-span that has length in common with the stretch is balanced.
    bool IsBalanced(double from, double to) const;

    /// Moment at the share s of a sub-span, 0 to 1.
    MomentRange InSubSpan(int subSpan, double s) const;
    /// Moment immediately left (right) of a position. A position within 1e-9 of the member's length of a member point is
    /// that point. Outside the member the end's value.
    MomentRange LeftOf(double x) const { return Beside(x, true); }
    MomentRange RightOf(double x) const { return Beside(x, false); }
    /// Least and greatest moment between two positions, both sides of jumps included, except those beyond the ends of
    /// the stretch.
    Extremes Between(double from, double to) const;
    /// Largest magnitude along the whole member.
    double Largest() const { return m_largest; }

private:
    void Make(const std::vector<Steel::CMemberPoint>& points, const std::vector<Steel::CSubSpan>& subSpans,
              Bending bending);
    void FindLargest();
    MomentRange Beside(double x, bool left) const;
    double Tolerance() const;
    std::size_t FirstEndingAfter(double x) const;

    std::span<const Parabola> CurvesOf(const Piece& piece) const
    {
        return std::span<const Parabola>(m_curves).subspan(piece.firstCurve, piece.curves);
    }

    std::vector<Piece> m_pieces;
    std::vector<Parabola> m_curves;
    double m_largest = 0.0;
};

/// Text of the finding for an unbalanced sub-span, one sentence: which sub-span (counted from 1) and axis, the change of moment
/// by the shears and by the moments, and what to do.
KELTRIX_DESIGN_API CString UnbalancedText(int subSpan, Bending bending, const MomentDiagram::Piece& piece,
                                          const CDesFormat& fmt);

} // namespace Keltrix::Design
