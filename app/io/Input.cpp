#include "io/Input.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "io/Failure.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

[[noreturn]] void RefuseSize(const std::string& name)
{
    throw BadInput(name + ": larger than " + std::to_string(LARGEST_FILE >> 20) +
                   " MiB, which no member file is; split it");
}

} // namespace

std::string NameOfInput(const std::string& path) { return path == "-" ? "standard input" : PrintableLine(path); }

std::filesystem::path FilePath(const std::string& name)
{
#if defined(_WIN32)
    return std::u8string(name.begin(), name.end());
#else
    return name;
#endif
}

InputStream::InputStream(const std::string& path, std::istream& standardInput) :
    m_name(NameOfInput(path)), m_stream(&standardInput)
{
    if (path == "-") return;
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(FilePath(path), error);
    if (status.type() == fs::file_type::not_found) throw BadInput(m_name + ": no such file");
    if (error) throw BadInput(m_name + ": " + error.message());
    if (fs::is_directory(status)) throw BadInput(m_name + ": is a directory, expected a file");
    m_isRegularFile = fs::is_regular_file(status);

    errno = 0;
    m_file = std::make_unique<std::ifstream>(path, std::ios::binary);
    if (!*m_file)
        throw BadInput(m_name + ": cannot be opened" + (errno ? std::string(": ") + std::strerror(errno) : ""));
    m_stream = m_file.get();
}

std::size_t InputStream::ReadSome(char* buffer, std::size_t size)
{
    const auto most = static_cast<std::streamsize>(size);
    std::streamsize got = m_stream->readsome(buffer, most);
    if (got == 0 && m_stream->peek() != std::istream::traits_type::eof()) {
        got = m_stream->readsome(buffer, most);
        // An unbuffered stream never reports bytes as available; take the one that peek() returned.
        if (got == 0) {
            buffer[0] = static_cast<char>(m_stream->get());
            got = 1;
        }
    }
    if (m_stream->bad()) throw BadInput(m_name + ": cannot be read");
    return static_cast<std::size_t>(got);
}

std::string ReadBytes(const std::string& path, std::istream& standardInput)
{
    InputStream stream(path, standardInput);
    std::error_code error;
    if (stream.IsRegularFile() && std::filesystem::file_size(FilePath(path), error) > LARGEST_FILE && !error)
        RefuseSize(stream.Name());

    std::string bytes;
    std::array<char, 1 << 16> block;
    while (const std::size_t got = stream.ReadSome(block.data(), block.size())) {
        bytes.append(block.data(), got);
        if (bytes.size() > LARGEST_FILE) RefuseSize(stream.Name());
    }
    return bytes;
}

SourceText ReadText(const std::string& path, std::istream& standardInput)
{
    return DecodeText(NameOfInput(path), ReadBytes(path, standardInput));
}

} // namespace Keltrix::App
