#pragma once

#include <cstdint>
#include <filesystem>
#include <istream>
#include <memory>
#include <string>
#include <string_view>

#include "keltrix/platform/CString.h"

namespace Keltrix::App {

/// The most that is read as a whole, a file or a member: a member takes a few kilobytes. Files of several members that are
/// read one by one may be of any size.
inline constexpr std::size_t LARGEST_FILE = std::size_t(64) << 20;

/// How messages call a file.
std::string NameOfInput(const std::string& path);

/// A file to read from, or the standard input.
class InputStream {
public:
    /// `standardInput` is read where the path is "-". Throws BadInput for a missing or unreadable file and a directory.
    InputStream(const std::string& path, std::istream& standardInput);

    /// How messages call it.
    const std::string& Name() const { return m_name; }
    /// Whether all of it is there before reading begins: it is neither the standard input nor a pipe.
    bool IsRegularFile() const { return m_isRegularFile; }
    /// Takes what is available without waiting, and waits where that is nothing. 0 only at the end. Throws BadInput where
    /// reading fails.
    std::size_t ReadSome(char* buffer, std::size_t size);

private:
    std::string m_name;
    bool m_isRegularFile = false;
    std::unique_ptr<std::istream> m_file;
    std::istream* m_stream;
};

/// The path that a name in UTF-8 stands for.
std::filesystem::path FilePath(const std::string& name);

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

/// Where a part of a file begins: how many bytes and lines stand before it.
struct FilePlace {
    std::size_t bytes = 0;
    std::int64_t lines = 0;
};

/// The text in bytes already read, which may be those of a part of the file; ReadText's second half.
SourceText DecodeText(const std::string& name, std::string_view bytes, FilePlace start = {});

} // namespace Keltrix::App
