#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "keltrix/platform/CString.h"

namespace Keltrix::Host {

/// The most that is read as a whole, a file or a member: a member takes a few kilobytes. Files of several members that are
/// read one by one may be of any size.
inline constexpr std::size_t LARGEST_FILE = std::size_t(64) << 20;

/// A file's text, with the name under which messages speak of it.
struct SourceText {
    std::string name;
    CString text;
};

/// Where a part of a file begins: how many bytes and lines stand before it.
struct FilePlace {
    std::size_t bytes = 0;
    std::int64_t lines = 0;
};

/// The text in the bytes of a file, or of a part of one. They must be UTF-8 (a byte order mark at their start is dropped) and
/// hold no NUL character. Throws BadInput where there are none, and for ill-formed text with the offset, line and column (in
/// bytes) of the first bad byte.
SourceText DecodeText(const std::string& name, std::string_view bytes, FilePlace start = {});

} // namespace Keltrix::Host
