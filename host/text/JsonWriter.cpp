#include "text/JsonWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include <nlohmann/json.hpp>

#include "keltrix/platform/NumberText.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

constexpr std::size_t INDENT = 2;
constexpr std::string_view ILL_FORMED = "\xEF\xBF\xBD";

// What stands for itself in a quoted text and is a character of one byte.
constexpr bool IsPlainInJson(unsigned c) { return c >= 0x20 && c < 0x80 && c != '"' && c != '\\'; }

// What one byte or one wide character becomes at most: an escape of a control character.
constexpr std::size_t LONGEST_ESCAPE = 6;
constexpr std::size_t LONGEST_NUMBER = 32;

char* Write(char* to, std::string_view text) { return std::copy(text.begin(), text.end(), to); }

char* WriteEscaped(char* to, char32_t c)
{
    switch (c) {
    case '"':
        return Write(to, "\\\"");
    case '\\':
        return Write(to, "\\\\");
    case '\b':
        return Write(to, "\\b");
    case '\f':
        return Write(to, "\\f");
    case '\n':
        return Write(to, "\\n");
    case '\r':
        return Write(to, "\\r");
    case '\t':
        return Write(to, "\\t");
    default:
        constexpr const char* digits = "0123456789abcdef";
        to = Write(to, "\\u00");
        *to++ = digits[c >> 4 & 0xF];
        *to++ = digits[c & 0xF];
        return to;
    }
}

char* WriteQuoted(char* to, std::string_view text)
{
    *to++ = '"';
    for (std::size_t i = 0; i < text.size();) {
        if (IsPlainInJson(static_cast<unsigned char>(text[i]))) {
            *to++ = text[i++];
            continue;
        }
        const auto [value, length] = FirstCodePoint(text.substr(i));
        if (value < 0x80)
            to = WriteEscaped(to, value);
        else
            to = Write(to, length > 1 ? text.substr(i, length) : ILL_FORMED);
        i += length;
    }
    *to++ = '"';
    return to;
}

// The digits of a positive number and the power of ten that its first one stands for.
struct Decimal {
    std::array<char, 32> digits;
    int count = 0;
    int exponent = 0;
};

Decimal DecimalOf(double value)
{
    std::array<char, 40> buffer;
    const char* const end =
        WriteNumber(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific).ptr;
    Decimal decimal;
    const char* p = buffer.data();
    for (; *p != 'e'; ++p)
        if (*p != '.') decimal.digits[static_cast<std::size_t>(decimal.count++)] = *p;
    std::from_chars(p + (p[1] == '+' ? 2 : 1), end, decimal.exponent);
    return decimal;
}

// Fixed from 0.0001 up to 10^15, else with an exponent of two digits or more; a whole number has ".0".
char* WriteDouble(char* to, double value)
{
    if (std::signbit(value)) *to++ = '-';
    if (value == 0.0) return Write(to, "0.0");
    const Decimal decimal = DecimalOf(std::abs(value));
    const std::string_view digits(decimal.digits.data(), static_cast<std::size_t>(decimal.count));
    if (decimal.exponent >= 0 && decimal.exponent < 15) {
        const std::size_t whole = static_cast<std::size_t>(decimal.exponent) + 1;
        to = Write(to, digits.substr(0, whole));
        if (digits.size() <= whole) return Write(std::fill_n(to, whole - digits.size(), '0'), ".0");
        *to++ = '.';
        return Write(to, digits.substr(whole));
    }
    if (decimal.exponent < 0 && decimal.exponent >= -4) {
        to = Write(to, "0.");
        return Write(std::fill_n(to, -decimal.exponent - 1, '0'), digits);
    }
    *to++ = digits[0];
    if (digits.size() > 1) {
        *to++ = '.';
        to = Write(to, digits.substr(1));
    }
    to = Write(to, decimal.exponent < 0 ? "e-" : "e+");
    const int power = std::abs(decimal.exponent);
    if (power < 10) *to++ = '0';
    return std::to_chars(to, to + 3, power).ptr;
}

} // namespace

JsonWriter JsonWriter::Indented(int depth)
{
    JsonWriter writer;
    writer.m_isIndented = true;
    writer.m_depth = depth;
    const std::size_t margin = INDENT * static_cast<std::size_t>(depth);
    writer.WriteUpTo(std::fill_n(writer.RoomFor(margin), margin, ' '));
    return writer;
}

std::string JsonWriter::Take()
{
    m_text.resize(m_length);
    return std::move(m_text);
}

// The end of the text, with room for so many characters after it.
char* JsonWriter::RoomFor(std::size_t length)
{
    if (m_text.size() - m_length < length) m_text.resize(std::max(2 * m_text.size(), m_length + length));
    return m_text.data() + m_length;
}

// What stands before a value of at most so many characters: a comma and a new line, where it does not follow its name.
char* JsonWriter::BeginValue(std::size_t length)
{
    const std::size_t margin = m_isIndented ? INDENT * static_cast<std::size_t>(m_depth) : 0;
    char* to = RoomFor(margin + length + 2);
    if (m_hasName) {
        m_hasName = false;
        return to;
    }
    if (!m_isEmpty) *to++ = ',';
    m_isEmpty = false;
    if (m_isIndented) {
        *to++ = '\n';
        to = std::fill_n(to, margin, ' ');
    }
    return to;
}

void JsonWriter::Begin(char bracket)
{
    char* to = BeginValue(1);
    *to++ = bracket;
    WriteUpTo(to);
    ++m_depth;
    m_isEmpty = true;
}

void JsonWriter::End(char bracket)
{
    --m_depth;
    const std::size_t margin = INDENT * static_cast<std::size_t>(m_depth);
    char* to = RoomFor(margin + 2);
    if (m_isIndented && !m_isEmpty) {
        *to++ = '\n';
        to = std::fill_n(to, margin, ' ');
    }
    *to++ = bracket;
    WriteUpTo(to);
    m_isEmpty = false;
}

void JsonWriter::Name(std::string_view name)
{
    char* to = BeginValue(LONGEST_ESCAPE * name.size() + 4);
    to = WriteQuoted(to, name);
    *to++ = ':';
    if (m_isIndented) *to++ = ' ';
    WriteUpTo(to);
    m_hasName = true;
}

void JsonWriter::PutWord(std::string_view word) { WriteUpTo(Write(BeginValue(word.size()), word)); }

void JsonWriter::Put(std::nullptr_t) { PutWord("null"); }

void JsonWriter::Put(double value)
{
    if (std::isfinite(value))
        WriteUpTo(WriteDouble(BeginValue(LONGEST_NUMBER), value));
    else
        Put(nullptr);
}

void JsonWriter::Put(std::string_view text)
{
    WriteUpTo(WriteQuoted(BeginValue(LONGEST_ESCAPE * text.size() + 2), text));
}

void JsonWriter::Put(std::wstring_view text)
{
    if (!std::all_of(text.begin(), text.end(), [](wchar_t c) { return IsPlainInJson(static_cast<unsigned>(c)); })) {
        Put(std::string_view(Utf8(text)));
        return;
    }
    char* to = BeginValue(text.size() + 2);
    *to++ = '"';
    to = std::transform(text.begin(), text.end(), to, [](wchar_t c) { return static_cast<char>(c); });
    *to++ = '"';
    WriteUpTo(to);
}

void JsonWriter::Put(const Json& tree)
{
    switch (tree.type()) {
    case Json::value_t::object:
        BeginObject();
        for (const auto& [name, value] : tree.get_ref<const Json::object_t&>()) {
            Name(name);
            Put(value);
        }
        EndObject();
        return;
    case Json::value_t::array:
        Array(tree, [this](const Json& element) { Put(element); });
        return;
    case Json::value_t::string:
        Put(std::string_view(tree.get_ref<const std::string&>()));
        return;
    case Json::value_t::boolean:
        Put(tree.get<bool>());
        return;
    case Json::value_t::number_integer:
        Put(tree.get<std::int64_t>());
        return;
    case Json::value_t::number_unsigned:
        Put(tree.get<std::uint64_t>());
        return;
    case Json::value_t::number_float:
        Put(tree.get<double>());
        return;
    default:
        Put(nullptr);
    }
}

} // namespace Keltrix::Host
