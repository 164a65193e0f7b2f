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

void AppendEscaped(std::string& text, char32_t c)
{
    switch (c) {
    case '"':
        text += "\\\"";
        return;
    case '\\':
        text += "\\\\";
        return;
    case '\b':
        text += "\\b";
        return;
    case '\f':
        text += "\\f";
        return;
    case '\n':
        text += "\\n";
        return;
    case '\r':
        text += "\\r";
        return;
    case '\t':
        text += "\\t";
        return;
    default:
        constexpr const char* digits = "0123456789abcdef";
        text += {'\\', 'u', '0', '0', digits[c >> 4 & 0xF], digits[c & 0xF]};
    }
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
void AppendNumber(std::string& text, double value)
{
    if (std::signbit(value)) text += '-';
    if (value == 0.0) {
        text += "0.0";
        return;
    }
    const Decimal decimal = DecimalOf(std::abs(value));
    const char* const digits = decimal.digits.data();
    const auto count = static_cast<std::size_t>(decimal.count);
    if (decimal.exponent >= 0 && decimal.exponent < 15) {
        const std::size_t whole = static_cast<std::size_t>(decimal.exponent) + 1;
        text.append(digits, std::min(count, whole));
        if (count > whole) {
            text += '.';
            text.append(digits + whole, count - whole);
        } else {
            text.append(whole - count, '0');
            text += ".0";
        }
    } else if (decimal.exponent < 0 && decimal.exponent >= -4) {
        text += "0.";
        text.append(static_cast<std::size_t>(-decimal.exponent) - 1, '0');
        text.append(digits, count);
    } else {
        text += digits[0];
        if (count > 1) {
            text += '.';
            text.append(digits + 1, count - 1);
        }
        text += decimal.exponent < 0 ? "e-" : "e+";
        const int power = std::abs(decimal.exponent);
        if (power < 10) text += '0';
        text += std::to_string(power);
    }
}

} // namespace

JsonWriter JsonWriter::Indented(int depth)
{
    JsonWriter writer;
    writer.m_isIndented = true;
    writer.m_depth = depth;
    writer.m_text.append(INDENT * static_cast<std::size_t>(depth), ' ');
    return writer;
}

void JsonWriter::NewLine()
{
    if (!m_isIndented) return;
    m_text += '\n';
    m_text.append(INDENT * static_cast<std::size_t>(m_depth), ' ');
}

void JsonWriter::BeginValue()
{
    if (m_hasName) {
        m_hasName = false;
        return;
    }
    if (!m_isEmpty) m_text += ',';
    NewLine();
    m_isEmpty = false;
}

void JsonWriter::Begin(char bracket)
{
    BeginValue();
    m_text += bracket;
    ++m_depth;
    m_isEmpty = true;
}

void JsonWriter::End(char bracket)
{
    --m_depth;
    if (!m_isEmpty) NewLine();
    m_text += bracket;
    m_isEmpty = false;
}

void JsonWriter::Name(std::string_view name)
{
    BeginValue();
    Quote(name);
    m_text += m_isIndented ? ": " : ":";
    m_hasName = true;
}

void JsonWriter::PutWord(std::string_view word)
{
    BeginValue();
    m_text += word;
}

void JsonWriter::Put(std::nullptr_t) { PutWord("null"); }

void JsonWriter::Put(double value)
{
    if (!std::isfinite(value)) {
        Put(nullptr);
        return;
    }
    BeginValue();
    AppendNumber(m_text, value);
}

void JsonWriter::Quote(std::string_view text)
{
    m_text += '"';
    while (!text.empty()) {
        const auto end = std::find_if_not(text.begin(), text.end(),
                                          [](char c) { return IsPlainInJson(static_cast<unsigned char>(c)); });
        const auto plain = static_cast<std::size_t>(end - text.begin());
        m_text += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) break;
        const auto [value, length] = FirstCodePoint(text);
        if (value < 0x80)
            AppendEscaped(m_text, value);
        else
            m_text += length > 1 ? text.substr(0, length) : ILL_FORMED;
        text.remove_prefix(length);
    }
    m_text += '"';
}

void JsonWriter::Put(std::string_view text)
{
    BeginValue();
    Quote(text);
}

void JsonWriter::Put(std::wstring_view text)
{
    BeginValue();
    const std::size_t before = m_text.size();
    m_text += '"';
    for (const wchar_t c : text) {
        if (!IsPlainInJson(static_cast<unsigned>(c))) {
            m_text.resize(before);
            Quote(Utf8(text));
            return;
        }
        m_text += static_cast<char>(c);
    }
    m_text += '"';
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
