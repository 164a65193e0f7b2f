#pragma once

#include <array>
#include <cmath>
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

/// Place of the largest value of a smooth function between a and c, from a first guess b, to 1e-9. By Brent's method, golden section and
/// parabolic steps (Brent, Algorithms for Minimization without Derivatives, chapter 5).
template <class Function>
double MaximumPlace(const Function& f, double a, double b, double c)
{
    constexpr double GOLDEN = 0.3819660112501051;
    constexpr double TOLERANCE = 1e-9;
    double x = b, w = b, v = b;
    double fx = f(x), fw = fx, fv = fx;
    double step = 0.0, before = 0.0;
    for (int i = 0; i < 80; ++i) {
        const double middle = 0.5 * (a + c);
        if (std::abs(x - middle) <= 2.0 * TOLERANCE - 0.5 * (c - a)) break;
        const double r = (x - w) * (fx - fv);
        double q = (x - v) * (fx - fw);
        double p = (x - v) * q - (x - w) * r;
        q = 2.0 * (q - r);
        if (q > 0.0) p = -p;
        q = std::abs(q);
        const double last = before;
        before = step;
        if (std::abs(p) < std::abs(0.5 * q * last) && p > q * (a - x) && p < q * (c - x)) {
            step = p / q;
        } else {
            before = x < middle ? c - x : a - x;
            step = GOLDEN * before;
        }
        const double u = x + (std::abs(step) >= TOLERANCE ? step : std::copysign(TOLERANCE, step));
        const double fu = f(u);
        if (fu >= fx) {
            (u >= x ? a : c) = x;
            v = w, fv = fw, w = x, fw = fx, x = u, fx = fu;
        } else {
            (u < x ? a : c) = u;
            if (fu >= fw || w == x) {
                v = w, fv = fw, w = u, fw = fu;
            } else if (fu >= fv || v == x || v == w)
                v = u, fv = fu;
        }
    }
    return x;
}

} // namespace Keltrix::Design
