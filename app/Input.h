#pragma once

#include <iosfwd>
#include <string>

#include "keltrix/platform/CString.h"

namespace Keltrix::App {

/// Files beyond this size are refused before they are read: a member takes a few kilobytes.
inline constexpr std::size_t LARGEST_FILE = std::size_t(64) << 20;

/// The bytes of a file, or of `standardInput` where the path is "-". Throws BadInput for a missing or unreadable
/// file, a directory, and one that is too large.
std::string ReadBytes(const std::string& path, std::istream& standardInput);

/// A file's text, with the name under which messages speak of it.
struct SourceText {
    std::string name;
    CString text;
};

/// A file's text. The file must be UTF-8 (a byte order mark at its start is dropped) and hold no NUL character.
/// Throws BadInput as ReadBytes does, for an empty file, and for ill-formed text with the offset, line and column
/// (in bytes) of the first bad byte.
SourceText ReadText(const std::string& path, std::istream& standardInput);

/// The text in bytes already read; ReadText's second half.
SourceText DecodeText(const std::string& name, std::string_view bytes);

} // namespace Keltrix::App
