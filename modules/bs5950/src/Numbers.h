#pragma once

#include <limits>

namespace Keltrix::BS5950 {

inline constexpr double INF = std::numeric_limits<double>::infinity();

/// 0 where there is no effect.
inline double Ratio(double effect, double resistance) { return effect == 0.0 ? 0.0 : effect / resistance; }

} // namespace Keltrix::BS5950
