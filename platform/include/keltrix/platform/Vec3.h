#pragma once

#include <limits>

namespace Keltrix {

/// Three components of one kind: a force (Fx, Fy, Fz) or a moment (Mxx, Myy, Mzz) in the host's element axes.
/// A default-constructed vector is not-a-number in all three, so that a value nobody set shows in every result;
/// holders that mean zero say so.
template <class T>
struct Vec3 {
    T x = std::numeric_limits<T>::quiet_NaN();
    T y = std::numeric_limits<T>::quiet_NaN();
    T z = std::numeric_limits<T>::quiet_NaN();

    constexpr Vec3() = default;
    constexpr Vec3(T xValue, T yValue, T zValue) : x(xValue), y(yValue), z(zValue) {}

    /// Exact comparison, component by component; a not-a-number component equals nothing.
    friend constexpr bool operator==(const Vec3& a, const Vec3& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }
};

} // namespace Keltrix
