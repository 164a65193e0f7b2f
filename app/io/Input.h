#pragma once

#include <filesystem>
#include <istream>
#include <memory>
#include <string>

#include "io/Failure.h"
#include "text/SourceText.h"

namespace Keltrix::App {

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

/// A file's text. Throws BadInput as ReadBytes and DecodeText do.
SourceText ReadText(const std::string& path, std::istream& standardInput);

} // namespace Keltrix::App
