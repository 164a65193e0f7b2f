#pragma once

namespace Keltrix::Steel {

/// Positions closer than this are one point; m.
inline constexpr double SAME_POINT = 0.001;

} // namespace Keltrix::Steel
