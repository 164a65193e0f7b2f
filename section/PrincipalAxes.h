#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

#include "section/Powers.h"

/// Principal axes of a section from its second moments about the centroidal x and y axes: Mohr's circle of inertia.
/// The absolute limits below are in the fourth power of the host's length unit, and required as they are.
namespace Keltrix::Steel::PrincipalAxes {

/// Below this product moment x and y count as the principal axes.
inline constexpr double NO_PRODUCT_MOMENT = 1e-10;
/// Below this difference the second moments count as equal. Hazard: in metres it is 100 cm⁴, more than the difference of
/// every small unequal angle, which is then answered 45°. See CDesSectGeomAngle::Alpha.
inline constexpr double EQUAL_SECOND_MOMENTS = 1e-6;

inline double MohrRadius(double Ixx, double Iyy, double Ixy)
{
    return std::sqrt(Square(Ixx - Iyy) / 4.0 + Square(Ixy));
}

/// Second moment about the major principal axis u.
inline double Iuu(double Ixx, double Iyy, double Ixy)
{
    if (std::abs(Ixy) < NO_PRODUCT_MOMENT) return std::max(Ixx, Iyy);
    return (Ixx + Iyy) / 2.0 + MohrRadius(Ixx, Iyy, Ixy);
}

/// Second moment about the minor principal axis v.
inline double Ivv(double Ixx, double Iyy, double Ixy)
{
    if (std::abs(Ixy) < NO_PRODUCT_MOMENT) return std::min(Ixx, Iyy);
    return (Ixx + Iyy) / 2.0 - MohrRadius(Ixx, Iyy, Ixy);
}

/// Angle from the x axis to the u axis, radians, for an angle whose legs lie along +x and +y from the heel.
inline double Alpha(double Ixx, double Iyy, double Ixy)
{
    if (Ixx == Iyy || std::abs(Ixx - Iyy) < EQUAL_SECOND_MOMENTS) return std::numbers::pi / 4.0;
    if (Ixx > Iyy) return std::atan(2.0 * Ixy / (Iyy - Ixx)) / 2.0;
    return std::numbers::pi / 2.0 - std::atan(2.0 * Ixy / (Ixx - Iyy)) / 2.0;
}

} // namespace Keltrix::Steel::PrincipalAxes
