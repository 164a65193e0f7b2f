#include "report/MemberAxis.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::Host {

std::size_t DrawnLayout::SubSpanCount() const
{
    return points.empty() ? 0 : std::min(subSpans.size(), points.size() - 1);
}

double DrawingScale(double size, double room)
{
    static constexpr double STEPS[] = {1.0, 1.25, 1.5, 2.0, 2.5, 3.0, 4.0, 5.0, 6.0, 7.5, 8.0, 10.0};
    const double least = size * 1e3 / room;
    if (!std::isfinite(least) || !(least > 1e-3)) return 1.0;
    const double decade = std::pow(10.0, std::floor(std::log10(least)));
    for (const double step : STEPS) {
        if (step * decade >= least * (1.0 - 1e-9)) return step * decade;
    }
    return 10.0 * decade;
}

MemberAxis::MemberAxis(const DrawnLayout& layout, double depth)
{
    constexpr double widest = 158.0;
    constexpr double deepest = 45.0;
    m_start = layout.Start();
    m_scale = std::max(DrawingScale(layout.Length(), widest), DrawingScale(depth, deepest));
    const double left = (WIDTH - Paper(layout.Length())) / 2.0;
    if (std::isfinite(left)) m_left = left;
}

} // namespace Keltrix::Host
