#pragma once

#include <algorithm>
#include <cmath>

namespace Keltrix::Steel {

/// Equal-area axis parallel to x of two flanges joined by a web; what sections of that kind share. The area includes
/// the fillets, which count as spread evenly over the web's clear height.
///
/// Required as it is: with the axis in a flange the value is measured from the outer face of flange 2, with the axis
/// in the web from that of flange 1. The two agree for equal flanges, where the axis lies at half depth.
inline double TwoFlangePlasticAxis(double depth, double B1, double T1, double B2, double T2, double area)
{
    const double flange1 = B1 * T1;
    const double flange2 = B2 * T2;
    const double half = area / 2.0;
    if (flange1 >= half) return depth - area / (2.0 * B1);
    if (flange2 >= half) return area / (2.0 * B2);
    const double webHeight = depth - T1 - T2;
    const double areaPerHeight = (area - flange1 - flange2) / webHeight;
    return T1 + (half - flange1) / areaPerHeight;
}

/// Elastic modulus about x to the extreme fibre, of a section whose centroid lies ybar above its bottom edge.
inline double ElasticModulus(double Ixx, double depth, double ybar)
{
    return Ixx / std::max(std::abs(depth - ybar), std::abs(ybar));
}

} // namespace Keltrix::Steel
