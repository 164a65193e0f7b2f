#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace Keltrix::App {

/// What a command talks to. Text given out is complete lines; `out` throws BadOutput where it cannot be written.
struct Console {
    std::istream& in;
    std::function<void(std::string_view)> out;
    std::function<void(std::string_view)> err; ///< one message: "ksteel: " and the line break are put around it
    /// Shows a line that the next one replaces; an empty one takes it away. None where nobody looks.
    std::function<void(std::string_view)> progress = {};
    /// Called after all of a member file was read, with the name that messages give it and the SHA-256 of its bytes. None where
    /// nobody asks.
    std::function<void(const std::string& name, const std::string& sha256)> wasRead = {};
};

} // namespace Keltrix::App
