#pragma once

#include "keltrix/platform/Vec3.h"

namespace Keltrix::Steel {

// The first on a tie and where either is not-a-number.
inline double LargerOrFirst(double a, double b) { return a < b ? b : a; }
inline double SmallerOrFirst(double a, double b) { return b < a ? b : a; }

/// One of two values, component by component.
template <double (*Pick)(double, double)>
Vec3<double> PickEach(const Vec3<double>& a, const Vec3<double>& b)
{
    return {Pick(a.x, b.x), Pick(a.y, b.y), Pick(a.z, b.z)};
}

} // namespace Keltrix::Steel
