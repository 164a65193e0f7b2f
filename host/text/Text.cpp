#include "text/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "keltrix/platform/KxUtil.h"
#include "keltrix/platform/NumberText.h"

namespace Keltrix::Host {

namespace {

constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD";
constexpr char32_t REPLACEMENT_POINT = 0xFFFD;

constexpr bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// What the first byte of a character says: its length, the bits it holds, the smallest value that needs that length.
struct LeadByte {
    std::size_t length;
    char32_t bits;
    char32_t least;
};

constexpr LeadByte ReadLeadByte(unsigned char byte)
{
    if (byte < 0x80) return {1, byte, 0};
    if (byte >= 0xC2 && byte < 0xE0) return {2, byte & 0x1FU, 0x80};
    if (byte >= 0xE0 && byte < 0xF0) return {3, byte & 0x0FU, 0x800};
    if (byte >= 0xF0 && byte < 0xF5) return {4, byte & 0x07U, 0x10000};
    return {0, 0, 0};
}

constexpr bool IsPlain(char c) { return c >= 0x20 && c < 0x7F; }

// Whether eight characters are plain. Where one is below 0x20 the difference borrows from the next one, but is negative itself.
bool ArePlain(const char* eight)
{
    constexpr std::uint64_t ones = 0x0101010101010101;
    std::uint64_t word = 0;
    std::memcpy(&word, eight, sizeof(word));
    return ((word | (word + ones) | (word - 0x20 * ones)) & 0x80 * ones) == 0;
}

constexpr bool IsControl(char32_t c) { return (c < 0x20 && c != '\n' && c != '\t') || (c >= 0x7F && c < 0xA0); }

struct Range {
    char32_t first;
    char32_t last;
};

// The blocks that matter in names and titles; not the whole of Unicode's tables.
constexpr Range COMBINING[] = {{0x0300, 0x036F}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},
                               {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};
constexpr Range WIDE[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},  {0xAC00, 0xD7A3},
                          {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},  {0xFFE0, 0xFFE6},
                          {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

// Unicode's Default_Ignorable_Code_Point, without the variation selectors that follow a visible character, and the separators
// of lines and paragraphs.
constexpr Range HIDDEN[] = {{0x00AD, 0x00AD}, {0x034F, 0x034F},   {0x061C, 0x061C},   {0x115F, 0x1160},
                            {0x17B4, 0x17B5}, {0x180E, 0x180E},   {0x200B, 0x200F},   {0x2028, 0x202E},
                            {0x2060, 0x206F}, {0x3164, 0x3164},   {0xFEFF, 0xFEFF},   {0xFFA0, 0xFFA0},
                            {0xFFF0, 0xFFF8}, {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0xE0FFF}};

template <std::size_t N>
bool IsIn(const Range (&ranges)[N], char32_t c)
{
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [c](const Range& range) { return c >= range.first && c <= range.last; });
}

// "[U+202E]".
std::string NameOfCodePoint(char32_t value)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string name = "[U+";
    for (int shift = value > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4)
        if (shift < 20 || value >> 20 != 0) name += digits[(value >> shift) & 0xF];
    return name + ']';
}

} // namespace

std::size_t PlainLength(std::string_view utf8)
{
    std::size_t length = 0;
    while (utf8.size() - length >= 8 && ArePlain(utf8.data() + length))
        length += 8;
    while (length < utf8.size() && IsPlain(utf8[length]))
        ++length;
    return length;
}

std::string Utf8(const CString& text)
{
    if (std::optional<std::string> utf8 = text.ToUtf8()) return *utf8;
    std::string result;
    for (int i = 0; i < text.GetLength(); ++i) {
        // A surrogate pair, where wide characters have 16 bits, is one character.
        std::optional<std::string> character = text.Mid(i, 2).GetLength() == 2 ? text.Mid(i, 2).ToUtf8() : std::nullopt;
        if (character && FirstCodePoint(*character).length == character->size()) {
            ++i;
        } else {
            character = text.Mid(i, 1).ToUtf8();
        }
        result += character ? std::string_view(*character) : REPLACEMENT;
    }
    return result;
}

std::string Utf8(std::wstring_view text) { return Utf8(CString(text)); }

CString Wide(std::string_view utf8)
{
    if (std::optional<CString> text = CString::FromUtf8(utf8)) return *text;
    return CString::FromUtf8(Printable(utf8)).value_or(CString());
}

CodePoint FirstCodePoint(std::string_view utf8)
{
    const LeadByte lead = ReadLeadByte(static_cast<unsigned char>(utf8[0]));
    if (lead.length == 0 || utf8.size() < lead.length) return {REPLACEMENT_POINT, 1};
    char32_t value = lead.bits;
    for (std::size_t i = 1; i < lead.length; ++i) {
        if (!IsContinuation(utf8[i])) return {REPLACEMENT_POINT, 1};
        value = value << 6 | (static_cast<unsigned char>(utf8[i]) & 0x3FU);
    }
    const bool isSurrogate = value >= 0xD800 && value < 0xE000;
    if (value < lead.least || value > 0x10FFFF || isSurrogate) return {REPLACEMENT_POINT, 1};
    return {value, lead.length};
}

void AppendPrintable(std::string& text, std::string_view utf8)
{
    while (!utf8.empty()) {
        const std::size_t plain = PlainLength(utf8);
        text += utf8.substr(0, plain);
        utf8.remove_prefix(plain);
        if (utf8.empty()) break;
        const auto [value, length] = FirstCodePoint(utf8);
        const bool isBad = IsControl(value) || (value == REPLACEMENT_POINT && length == 1);
        if (IsIn(HIDDEN, value))
            text += NameOfCodePoint(value);
        else
            text += isBad ? REPLACEMENT : utf8.substr(0, length);
        utf8.remove_prefix(length);
    }
}

std::string Printable(std::string_view utf8)
{
    std::string result;
    result.reserve(utf8.size());
    AppendPrintable(result, utf8);
    return result;
}

std::string PrintableLine(std::string_view utf8)
{
    std::string line;
    for (const char c : Printable(utf8)) {
        if (c == '\n')
            line += NameOfCodePoint(U'\n');
        else
            line += c == '\t' ? ' ' : c;
    }
    return line;
}

std::size_t DisplayWidth(std::string_view utf8)
{
    std::size_t width = 0;
    while (!utf8.empty()) {
        const std::size_t plain = PlainLength(utf8);
        width += plain;
        utf8.remove_prefix(plain);
        if (utf8.empty()) break;
        const auto [value, length] = FirstCodePoint(utf8);
        if (!IsIn(COMBINING, value)) width += IsIn(WIDE, value) ? 2 : 1;
        utf8.remove_prefix(length);
    }
    return width;
}

std::string Quote(std::wstring_view text)
{
    std::size_t longest = 60;
    // Not between the halves of a surrogate pair, where wide characters have 16 bits.
    if (sizeof(wchar_t) == 2 && text.size() > longest && (text[longest - 1] & 0xFC00) == 0xD800) --longest;
    const std::string quoted = PrintableLine(Utf8(text.substr(0, longest)));
    return '"' + quoted + (text.size() > longest ? "...\"" : "\"");
}

std::string Shortest(double value)
{
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value > 0.0 ? "inf" : "-inf";
    std::array<char, 40> buffer;
    return {buffer.data(), WriteNumber(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

std::string Figures(double value, int figures)
{
    if (!std::isfinite(value)) return Shortest(value);
    if (value == 0.0) return "0";
    std::array<char, 40> buffer;
    const auto end =
        WriteNumber(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific, figures - 1)
            .ptr;
    double rounded = value;
    ReadNumber(buffer.data(), end, rounded);
    const double magnitude = std::floor(std::log10(std::fabs(rounded)) + 1e-12);
    if (magnitude < -6.0 || magnitude > 15.0) return {buffer.data(), end};
    const int decimals = std::max(figures - 1 - static_cast<int>(magnitude), 0);
    std::array<char, 64> plain;
    return {plain.data(),
            WriteNumber(plain.data(), plain.data() + plain.size(), rounded, std::chars_format::fixed, decimals).ptr};
}

std::string Rounded(double value, int figures)
{
    std::string text = Figures(value, figures);
    if (text.find('.') == std::string::npos || text.find('e') != std::string::npos) return text;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

std::string LengthText(double metres) { return Rounded(metres, 5) + " m"; }

std::string UtilisationText(double utilisation) { return Utf8(CDesFormat().Util(utilisation)); }

} // namespace Keltrix::Host
