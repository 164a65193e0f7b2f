#pragma once

/// Fabrication kinds of section geometry. 3 counts as welded, too; 4 is a further kind of the host's.
namespace Keltrix::Steel::Fabrication {

inline constexpr int WELDED = 0;
inline constexpr int HOT_ROLLED = 1;
inline constexpr int COLD_FORMED = 2;
inline constexpr int WELDED_2 = 3;
inline constexpr int OTHER = 4;

} // namespace Keltrix::Steel::Fabrication
