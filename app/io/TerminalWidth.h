#pragma once

#include <cstddef>

namespace Keltrix::App {

/// Fewer columns hold no table, and are taken as this many.
inline constexpr std::size_t NARROWEST_WIDTH = 40;

/// Columns of the terminal at standard output; 0 where it is no terminal, so that files and pipes get whole lines.
std::size_t TerminalWidth();

} // namespace Keltrix::App
