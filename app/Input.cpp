#include "Input.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <istream>
#include <optional>
#include <string_view>

#include "Failure.h"
#include "Text.h"

namespace Keltrix::App {

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

std::string NameOf(const std::string& path) { return path == "-" ? "standard input" : Printable(path); }

[[noreturn]] void RefuseSize(const std::string& name)
{
    throw BadInput(name + ": larger than " + std::to_string(LARGEST_FILE >> 20) +
                   " MiB, which no member file is; split it");
}

std::string ReadStream(std::istream& stream, const std::string& name)
{
    std::string bytes;
    std::array<char, 1 << 16> block;
    while (stream.read(block.data(), block.size()) || stream.gcount() > 0) {
        bytes.append(block.data(), static_cast<std::size_t>(stream.gcount()));
        if (bytes.size() > LARGEST_FILE) RefuseSize(name);
    }
    if (stream.bad()) throw BadInput(name + ": cannot be read");
    return bytes;
}

// "byte 17 (line 2, column 5)", all counted from 1 but the byte, which is the offset.
std::string Place(std::string_view bytes, std::size_t offset)
{
    const std::string_view before = bytes.substr(0, offset);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t lineStart = before.rfind('\n') == std::string_view::npos ? 0 : before.rfind('\n') + 1;
    return "byte " + std::to_string(offset) + " (line " + std::to_string(line) + ", column " +
           std::to_string(offset - lineStart + 1) + ")";
}

} // namespace

std::string ReadBytes(const std::string& path, std::istream& standardInput)
{
    const std::string name = NameOf(path);
    if (path == "-") return ReadStream(standardInput, name);

    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) throw BadInput(name + ": no such file");
    if (error) throw BadInput(name + ": " + error.message());
    if (fs::is_directory(status)) throw BadInput(name + ": is a directory, expected a file");
    if (fs::is_regular_file(status) && fs::file_size(path, error) > LARGEST_FILE && !error) RefuseSize(name);

    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    if (!stream) throw BadInput(name + ": cannot be opened" + (errno ? std::string(": ") + std::strerror(errno) : ""));
    return ReadStream(stream, name);
}

SourceText DecodeText(const std::string& name, std::string_view bytes)
{
    if (bytes.empty()) throw BadInput(name + ": is empty");
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        throw BadInput(name + ": byte 0 begins UTF-16 text; save the file as UTF-8");
    const std::size_t mark = bytes.starts_with(BYTE_ORDER_MARK) ? BYTE_ORDER_MARK.size() : 0;

    std::size_t offset = 0;
    std::optional<CString> text = CString::FromUtf8(bytes.substr(mark), &offset);
    if (!text) throw BadInput(name + ": " + Place(bytes, mark + offset) + " is not UTF-8 text; save the file as UTF-8");
    const std::size_t nul = bytes.find('\0');
    if (nul != std::string_view::npos)
        throw BadInput(name + ": " + Place(bytes, nul) + " is a NUL character, so this is no text file");
    return {name, std::move(*text)};
}

SourceText ReadText(const std::string& path, std::istream& standardInput)
{
    return DecodeText(NameOf(path), ReadBytes(path, standardInput));
}

} // namespace Keltrix::App
