// Angles in bending: lateral-torsional buckling about u-u, 6.3.2 with the closed form of the critical moment.

#include <algorithm>
#include <cmath>

#include "MemberCheck.h"
#include "keltrix/design/Segments.h"

namespace Keltrix::EC3 {

std::vector<ForkLength> MemberCheck::FindForkLengths() const
{
    const auto isHeld = [this](const auto& part) {
        const Steel::CRestraint restraint = part.GetRestraint();
        return IsHeld(BucklingMode::Major, restraint) && IsHeld(BucklingMode::Torsion, restraint);
    };
    const auto pointHeld = [&](int i) { return isHeld(m_in.points[static_cast<std::size_t>(i)]); };
    const auto subHeld = [&](int k) { return isHeld(m_in.subSpans[static_cast<std::size_t>(k)]); };
    const int last = static_cast<int>(m_in.points.size()) - 1;
    const auto segments = Design::Segments(last + 1, pointHeld, subHeld);
    std::vector<ForkLength> lengths;
    lengths.reserve(segments.size());
    for (const auto& [left, right] : segments)
        lengths.push_back({m_in.points[static_cast<std::size_t>(left)].GetPos(),
                           m_in.points[static_cast<std::size_t>(right)].GetPos(), subHeld(left),
                           (left > 0 || pointHeld(left)) && (right < last || pointHeld(right))});
    return lengths;
}

// Lengths between sections that are held along both legs and in twist. The moment counts as uniform, whatever its course, which is safe.
void MemberCheck::FindOfAngle()
{
    for (const ForkLength& length : FindForkLengths()) {
        LateralSpan span;
        span.start = length.start;
        span.end = length.end;
        span.held = length.held;
        span.M = MomentsOver(span.start, span.end).My;
        span.C1Source = L"the moment of an angle counts as uniform";
        span.lambda = span.Mcr = NEVER;
        if (!span.held && !length.isFork)
            span.open =
                L"an end is not held along both legs and in twist, and the closed form of Mcr of an angle is for "
                L"lengths between such ends";
        else if (!span.held && m_in.options.lateral == LateralMethod::Simplified)
            span.open = L"6.3.2.4 is applied to I and H sections with equal flanges alone";
        else if (!span.held && HasLoadHeight(span.start, span.end))
            span.open = L"a load acts off the shear centre, which the closed form of Mcr of an angle does not take";
        else if (!span.held) {
            span.Mcr = UniformMcr(m_in.section, m_in.material.E, m_in.material.G, span.end - span.start, true);
            span.lambda = span.M > 0.0 ? span.Mcr / span.M : NEVER;
        }
        m_laterals.push_back(span);
    }
}

} // namespace Keltrix::EC3
