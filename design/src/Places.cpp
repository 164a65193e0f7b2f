#include "keltrix/design/Places.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Keltrix::Design {

double LargestMagnitude(const Parabola& curve)
{
    const double s = curve.Extreme();
    return std::max({std::abs(curve.left), std::abs(curve.right), std::isnan(s) ? 0.0 : std::abs(curve.At(s))});
}

std::array<double, 2> ExtremePlaces(const Parabola& first, const Parabola& second)
{
    constexpr double SAME = 1e-9;
    const auto place = [](const Parabola& curve) {
        const double s = curve.Extreme();
        if (std::isnan(s)) return s;
        const double end = s < 0.5 ? curve.left : curve.right;
        const bool isBeyond = std::abs(curve.At(s) - end) > SAME * LargestMagnitude(curve);
        return isBeyond ? s : std::numeric_limits<double>::quiet_NaN();
    };
    std::array<double, 2> places{place(first), place(second)};
    if (std::abs(places[1] - places[0]) < SAME) places[1] = std::numeric_limits<double>::quiet_NaN();
    return places;
}

void AddPlacesAtLevel(const Parabola& curve, double level, std::vector<double>& places)
{
    for (const double s : Parabola{curve.left - level, curve.right - level, curve.curvature}.Zeros())
        if (!std::isnan(s)) places.push_back(s);
}

} // namespace Keltrix::Design
