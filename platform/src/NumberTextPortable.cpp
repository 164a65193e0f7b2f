#include "NumberTextPortable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <string_view>

#define FMT_HEADER_ONLY
#include <fast_float/fast_float.h>
#include <fmt/format.h>

namespace Keltrix::Portable {

namespace {

std::to_chars_result Put(char* first, char* last, std::string_view text)
{
    if (text.size() > static_cast<std::size_t>(last - first)) return {last, std::errc::value_too_large};
    return {std::copy(text.begin(), text.end(), first), std::errc()};
}

// The fewest significant digits of a number, and the power of ten of the first of them.
struct Decimal {
    fmt::basic_memory_buffer<char, 32> digits;
    int exponent = 0;
};

// Of a finite number above zero.
template <class T>
Decimal ShortestOf(T magnitude)
{
    fmt::basic_memory_buffer<char, 64> text;
    fmt::format_to(std::back_inserter(text), "{}", magnitude);
    const std::string_view written(text.data(), text.size());
    const std::size_t e = std::min(written.find('e'), written.size());
    const std::size_t point = std::min(written.find('.'), e);
    Decimal decimal;
    decimal.exponent = static_cast<int>(point) - 1;
    for (const char c : written.substr(0, e)) {
        if (c == '.') continue;
        if (c == '0' && decimal.digits.size() == 0)
            --decimal.exponent;
        else
            decimal.digits.push_back(c);
    }
    std::size_t count = decimal.digits.size();
    while (count > 1 && decimal.digits[count - 1] == '0')
        --count;
    decimal.digits.resize(count);
    if (e < written.size()) {
        int exponent = 0;
        const std::size_t sign = written[e + 1] == '+' ? 1 : 0;
        std::from_chars(written.data() + e + 1 + sign, written.data() + written.size(), exponent);
        decimal.exponent += exponent;
    }
    return decimal;
}

int DigitsOf(int exponent) { return std::abs(exponent) >= 100 ? 3 : 2; }

// Lengths of the two forms of a number above zero.
int ScientificLength(const Decimal& decimal)
{
    const int count = static_cast<int>(decimal.digits.size());
    return count + (count > 1 ? 1 : 0) + 2 + DigitsOf(decimal.exponent);
}

int FixedLength(const Decimal& decimal)
{
    const int count = static_cast<int>(decimal.digits.size());
    if (decimal.exponent < 0) return 1 + count - decimal.exponent;
    return std::max(count + (count > decimal.exponent + 1 ? 1 : 0), decimal.exponent + 1);
}

using Text = fmt::basic_memory_buffer<char, 64>;

void AppendScientific(Text& text, const Decimal& decimal)
{
    const std::string_view digits(decimal.digits.data(), decimal.digits.size());
    text.push_back(digits.front());
    if (digits.size() > 1) text.push_back('.');
    text.append(digits.substr(1));
    fmt::format_to(std::back_inserter(text), "e{}{:02}", decimal.exponent < 0 ? '-' : '+', std::abs(decimal.exponent));
}

// A whole number with more digits than are needed to tell it from its neighbours is written out exactly.
template <class T>
void AppendFixed(Text& text, const Decimal& decimal, T magnitude)
{
    const std::string_view digits(decimal.digits.data(), decimal.digits.size());
    if (decimal.exponent < 0) {
        text.append(std::string_view("0."));
        for (int i = decimal.exponent + 1; i < 0; ++i)
            text.push_back('0');
        text.append(digits);
        return;
    }
    const auto whole = static_cast<std::size_t>(decimal.exponent) + 1;
    if (whole > digits.size()) {
        fmt::format_to(std::back_inserter(text), "{:.0f}", magnitude);
        return;
    }
    text.append(digits.substr(0, whole));
    if (whole == digits.size()) return;
    text.push_back('.');
    text.append(digits.substr(whole));
}

enum class Form { Shorter, Fixed, Scientific };

template <class T>
std::to_chars_result WriteShortest(char* first, char* last, T value, Form form)
{
    Text text;
    if (std::signbit(value)) text.push_back('-');
    const T magnitude = std::fabs(value);
    if (!std::isfinite(value)) {
        text.append(std::string_view(std::isnan(value) ? "nan" : "inf"));
    } else if (magnitude == 0) {
        text.append(std::string_view(form == Form::Scientific ? "0e+00" : "0"));
    } else {
        const Decimal decimal = ShortestOf(magnitude);
        const bool isFixed =
            form == Form::Fixed || (form == Form::Shorter && FixedLength(decimal) <= ScientificLength(decimal));
        if (isFixed)
            AppendFixed(text, decimal, magnitude);
        else
            AppendScientific(text, decimal);
    }
    return Put(first, last, {text.data(), text.size()});
}

bool IsWord(const char* first, const char* last)
{
    if (first != last && *first == '-') ++first;
    return first != last && (*first == 'i' || *first == 'I' || *first == 'n' || *first == 'N');
}

bool HasDigitAboveZero(const char* first, const char* last)
{
    for (; first != last && *first != 'e' && *first != 'E'; ++first)
        if (*first >= '1' && *first <= '9') return true;
    return false;
}

template <class T>
std::from_chars_result Read(const char* first, const char* last, T& value)
{
    T read{};
    const auto [end, error] = fast_float::from_chars(first, last, read);
    if (error == std::errc::invalid_argument) return {first, error};
    const bool isTooLarge = std::isinf(read) && !IsWord(first, end);
    const bool isTooSmall = read == 0 && HasDigitAboveZero(first, end);
    if (isTooLarge || isTooSmall) return {end, std::errc::result_out_of_range};
    value = read;
    return {end, std::errc()};
}

} // namespace

std::to_chars_result to_chars(char* first, char* last, double value)
{
    return WriteShortest(first, last, value, Form::Shorter);
}

std::to_chars_result to_chars(char* first, char* last, float value)
{
    return WriteShortest(first, last, value, Form::Shorter);
}

std::to_chars_result to_chars(char* first, char* last, double value, std::chars_format form)
{
    return WriteShortest(first, last, value, form == std::chars_format::fixed ? Form::Fixed : Form::Scientific);
}

std::to_chars_result to_chars(char* first, char* last, double value, std::chars_format form, int precision)
{
    Text text;
    if (form == std::chars_format::fixed)
        fmt::format_to(std::back_inserter(text), "{:.{}f}", value, precision);
    else if (form == std::chars_format::scientific)
        fmt::format_to(std::back_inserter(text), "{:.{}e}", value, precision);
    else
        fmt::format_to(std::back_inserter(text), "{:.{}g}", value, precision);
    return Put(first, last, {text.data(), text.size()});
}

std::from_chars_result from_chars(const char* first, const char* last, double& value)
{
    return Read(first, last, value);
}

std::from_chars_result from_chars(const char* first, const char* last, float& value)
{
    return Read(first, last, value);
}

} // namespace Keltrix::Portable
