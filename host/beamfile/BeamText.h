#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Keltrix::Host {

/// The first line that is neither blank nor a comment, without the blanks in front of it; empty without one.
std::string_view FirstLineOfContent(std::string_view bytes);

/// The place after a quoted text that begins at i in a line of TOML; the end of the line where it does not end.
std::size_t AfterQuoted(std::string_view line, std::size_t i);

/// Whether a text is a beam file rather than a member file: its first line that is neither blank nor a comment begins with "[" or is
/// "key = ". Every file whose name ends with .toml is one as well.
bool IsBeamText(const std::string& name, std::string_view bytes);

} // namespace Keltrix::Host
