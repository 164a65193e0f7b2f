#include "Input.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

#include "Failure.h"
#include "Text.h"

namespace Keltrix::App {

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

[[noreturn]] void RefuseSize(const std::string& name)
{
    throw BadInput(name + ": larger than " + std::to_string(LARGEST_FILE >> 20) +
                   " MiB, which no member file is; split it");
}

// "byte 17 (line 2, column 5)", all counted from 1 but the byte, which is the offset.
std::string Place(std::string_view bytes, std::size_t offset, FilePlace start)
{
    const std::string_view before = bytes.substr(0, offset);
    const auto line = start.lines + std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t lineStart = before.rfind('\n') == std::string_view::npos ? 0 : before.rfind('\n') + 1;
    return "byte " + std::to_string(start.bytes + offset) + " (line " + std::to_string(line) + ", column " +
           std::to_string(offset - lineStart + 1) + ")";
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

SourceText DecodeText(const std::string& name, std::string_view bytes, FilePlace start)
{
    if (bytes.empty()) throw BadInput(name + ": is empty");
    if (start.bytes == 0 && (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")))
        throw BadInput(name + ": byte 0 begins UTF-16 text; save the file as UTF-8");
    // Files may have been put together, each with its own mark.
    const std::size_t mark = bytes.starts_with(BYTE_ORDER_MARK) ? BYTE_ORDER_MARK.size() : 0;

    std::size_t offset = 0;
    std::optional<CString> text = CString::FromUtf8(bytes.substr(mark), &offset);
    if (!text) {
        throw BadInput(name + ": " + Place(bytes, mark + offset, start) + " is not UTF-8 text; save the file as UTF-8");
    }
    const std::size_t nul = bytes.find('\0');
    if (nul != std::string_view::npos)
        throw BadInput(name + ": " + Place(bytes, nul, start) + " is a NUL character, so this is no text file");
    return {name, std::move(*text)};
}

SourceText ReadText(const std::string& path, std::istream& standardInput)
{
    return DecodeText(NameOfInput(path), ReadBytes(path, standardInput));
}

} // namespace Keltrix::App
