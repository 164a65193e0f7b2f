#pragma once

#include <array>
#include <vector>

#include "keltrix/design/Export.h"
#include "keltrix/design/MomentDiagram.h"

// Places along a sub-span at which a check of the cross-section can be at its worst. A place is the share s of the sub-span's length, 0
// to 1.
namespace Keltrix::Design {

/// The value at a place between two ends; exactly theirs where both are equal.
inline double Between(double a, double b, double s) { return a == b ? a : (1.0 - s) * a + s * b; }
inline Vec3<double> Between(const Vec3<double>& a, const Vec3<double>& b, double s)
{
    return {Between(a.x, b.x, s), Between(a.y, b.y, s), Between(a.z, b.z, s)};
}

/// ka a + kb b.
inline Parabola Sum(const Parabola& a, double ka, const Parabola& b, double kb)
{
    return {ka * a.left + kb * b.left, ka * a.right + kb * b.right, ka * a.curvature + kb * b.curvature};
}

/// Largest magnitude over the sub-span.
KELTRIX_DESIGN_API double LargestMagnitude(const Parabola& curve);
/// Places inside where one of two curves has an extreme that differs from its value at the nearer end by more than rounding; not-a-number for
/// those there are not. A place that both have is given once.
KELTRIX_DESIGN_API std::array<double, 2> ExtremePlaces(const Parabola& first, const Parabola& second);
/// Adds the places strictly between the ends where the curve reaches a level.
KELTRIX_DESIGN_API void AddPlacesAtLevel(const Parabola& curve, double level, std::vector<double>& places);

} // namespace Keltrix::Design
