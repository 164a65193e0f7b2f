#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string_view>

#include "io/Failure.h"

namespace Keltrix::App {

/// A line that tells how far a long run is: members so far, those that fail and those that were refused, and how many
/// there are in a second. It appears after half a second, changes five times a second at most, and goes when other text
/// is to be written.
class Progress {
public:
    /// `show` replaces the line, and takes it away where the text is empty; without it nothing is shown.
    explicit Progress(std::function<void(std::string_view)> show) : m_show(std::move(show)) {}

    /// One more member or file, and how it came out.
    void Count(ExitCode code);
    void Clear();

private:
    using Clock = std::chrono::steady_clock;

    std::function<void(std::string_view)> m_show;
    Clock::time_point m_start = Clock::now();
    Clock::time_point m_next = m_start + std::chrono::milliseconds(500);
    std::size_t m_members = 0;
    std::size_t m_failing = 0;
    std::size_t m_refused = 0;
    bool m_isShown = false;
};

} // namespace Keltrix::App
