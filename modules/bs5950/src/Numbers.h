#pragma once

#include <limits>

namespace Keltrix::BS5950 {

inline constexpr double INF = std::numeric_limits<double>::infinity();

/// 0 where there is no effect.
inline double Ratio(double effect, double resistance) { return effect == 0.0 ? 0.0 : effect / resistance; }

/// The value at the share s between two ends; exactly theirs where both are one.
inline double Between(double a, double b, double s) { return a == b ? a : (1.0 - s) * a + s * b; }

} // namespace Keltrix::BS5950
