#pragma once

#include <vector>

#include "keltrix/bs5950/SteelMemberBS5950.h"

namespace Keltrix::BS5950 {

/// Bending moment about one axis along a member, from the forces and moments at the sub-span ends.
///
/// Within a sub-span the shear is linear. Where the end moments agree with that (to 1 % of the largest of them, or 1
/// N·m), the moment is the parabola that belongs to it; where they do not, it is taken linear.
class MomentDiagram {
public:
    enum class Component { Major, Minor };

    MomentDiagram(const std::vector<Steel::CMemberPoint>& points, const std::vector<Steel::CSubSpan>& subSpans,
                  Component component);

    /// Whether the moment within the sub-span is a parabola.
    bool IsParabolic(int subSpan) const;
    /// Position of zero shear strictly inside the sub-span, as a share of its length; a negative number where there is
    /// none, or the moment is linear.
    double ZeroShear(int subSpan) const;
    /// Moment at a share s of the sub-span, 0 to 1.
    double InSubSpan(int subSpan, double s) const;
    /// Shape over the points left to right.
    MomentShape Shape(int left, int right) const;

private:
    double ShearLeft(int subSpan) const;
    double ShearRight(int subSpan) const;
    double MomentLeft(int subSpan) const;
    double MomentRight(int subSpan) const;
    double Position(int point) const { return m_points[static_cast<std::size_t>(point)].GetPos(); }
    double Length(int subSpan) const { return Position(subSpan + 1) - Position(subSpan); }
    double At(int left, int right, double x) const;
    double LargestIn(int left, int right, double from, double to) const;
    LoadPattern Pattern(int left, int right, double Mmax) const;

    const std::vector<Steel::CMemberPoint>& m_points;
    const std::vector<Steel::CSubSpan>& m_subSpans;
    Component m_component;
};

} // namespace Keltrix::BS5950
