#include "text/SourceText.h"

#include <algorithm>
#include <optional>

#include "text/BadInput.h"

namespace Keltrix::Host {

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

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

} // namespace Keltrix::Host
