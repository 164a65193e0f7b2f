// The C library of emscripten has a hypot whose last digit is not always that of the nearest number, as it is elsewhere. This one takes its place.

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

// a² as the sum of two numbers, exactly (Dekker). No overflow for magnitudes from 2^-400 to 2^400.
std::pair<double, double> SquareOf(double a)
{
    const double split = 134217729.0 * a; // 2^27 + 1
    const double high = split - (split - a);
    const double low = a - high;
    const double square = a * a;
    return {square, ((high * high - square) + 2.0 * high * low) + low * low};
}

// The root of the sum of squares with twice the digits, rounded once; a is not below b, b not below 0.
double RootOfSquares(double a, double b)
{
    const auto [aa, aRest] = SquareOf(a);
    const auto [bb, bRest] = SquareOf(b);
    const double sum = aa + bb;
    const double sumRest = (aa - sum) + bb;
    const double root = std::sqrt(sum);
    const auto [rr, rRest] = SquareOf(root);
    const double error = (sum - rr) - rRest + (sumRest + (aRest + bRest));
    return root + error / (2.0 * root);
}

} // namespace

extern "C" double hypot(double x, double y)
{
    if (std::isinf(x) || std::isinf(y)) return std::numeric_limits<double>::infinity();
    if (std::isnan(x) || std::isnan(y)) return std::numeric_limits<double>::quiet_NaN();
    const double a = std::max(std::fabs(x), std::fabs(y));
    const double b = std::min(std::fabs(x), std::fabs(y));
    if (b <= a * 0x1p-54) return a + b;
    if (a > 0x1p400) return 0x1p600 * RootOfSquares(a * 0x1p-600, b * 0x1p-600);
    if (b < 0x1p-400) return 0x1p-600 * RootOfSquares(a * 0x1p600, b * 0x1p600);
    return RootOfSquares(a, b);
}
