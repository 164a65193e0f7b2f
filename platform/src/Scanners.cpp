#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "Numbers.h"
#include "keltrix/platform/KxUtil.h"
#include "keltrix/platform/NumberText.h"

namespace Keltrix {

namespace {

thread_local std::wstring_view g_restOfText;

constexpr bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

constexpr bool IsNumberCharacter(wchar_t c)
{
    return IsDigit(c) || c == L'.' || c == L'-' || c == L'+' || c == L'e' || c == L'E';
}

constexpr std::wstring_view TrimBlanks(std::wstring_view text)
{
    while (!text.empty() && (text.front() == L' ' || text.front() == L'\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == L' ' || text.back() == L'\t'))
        text.remove_suffix(1);
    return text;
}

// Whether the text begins with the word (given in lower case), in any case.
bool BeginsWith(std::wstring_view text, std::wstring_view word)
{
    return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(), [](wchar_t w, wchar_t c) {
               return c == w || (c >= L'A' && c <= L'Z' && c + (L'a' - L'A') == w);
           });
}

// Decimal digits of a number as they are read: 0.dddd... times ten to the power of `magnitude`.
class DecimalDigits {
public:
    void Take(wchar_t digit, bool behindPoint)
    {
        m_any = true;
        if (m_count == 0 && digit == L'0') {
            if (behindPoint) --m_magnitude;
            return;
        }
        if (!behindPoint) ++m_magnitude;
        if (m_count < MAX_DIGITS) {
            m_buffer[m_count++] = static_cast<char>(digit);
        } else if (digit != L'0') {
            m_sticky = true;
        }
    }

    bool Any() const { return m_any; }

    // The number, correctly rounded, with `exponent` added to its power of ten.
    template <class T>
    T Value(long long exponent)
    {
        if (m_count == 0) return T(0);
        // After more digits than a boundary between two numbers of type T can have, one more says "a little above".
        const std::size_t digits = m_count;
        if (m_sticky) m_buffer[m_count++] = '1';
        const long long magnitude = m_magnitude + exponent;
        const long long power = std::clamp(magnitude, -LIMIT, LIMIT) - static_cast<long long>(m_count);
        char* const last = m_buffer.data() + m_count;
        *last = 'e';
        char* const end = std::to_chars(last + 1, m_buffer.data() + m_buffer.size(), power).ptr;
        m_count = digits;

        T value{};
        if (ReadNumber(m_buffer.data(), end, value).ec == std::errc::result_out_of_range) {
            return magnitude > 0 ? std::numeric_limits<T>::infinity() : T(0);
        }
        return value;
    }

private:
    // The boundary between two neighbouring doubles has at most 768 significant digits.
    static constexpr std::size_t MAX_DIGITS = 800;
    static constexpr long long LIMIT = 100000;

    std::array<char, MAX_DIGITS + 24> m_buffer;
    std::size_t m_count = 0;
    long long m_magnitude = 0;
    bool m_any = false;
    bool m_sticky = false;
};

// The number at the front of the text where it is short and plain, as nearly all are: digits, a point, an exponent.
// False leaves the question to the reading that knows every case; where both answer, they answer alike, because both round
// correctly and take the longest valid prefix.
template <class T>
bool ReadShortReal(std::wstring_view text, T& value, std::size_t& used)
{
    std::array<char, 32> narrow;
    std::size_t count = 0;
    for (; count < text.size() && IsNumberCharacter(text[count]); ++count) {
        if (count == narrow.size()) return false;
        narrow[count] = static_cast<char>(text[count]);
    }
    const auto [end, error] = ReadNumber(narrow.data(), narrow.data() + count, value);
    used = static_cast<std::size_t>(end - narrow.data());
    return error == std::errc();
}

// The exponent part at the front of the text ("e-3"); a length of 0 in `used` where there is none.
long long ReadExponent(std::wstring_view text, std::size_t& used)
{
    constexpr long long enough = std::numeric_limits<long long>::max() / 100;
    used = 0;
    if (text.empty() || (text[0] != L'e' && text[0] != L'E')) return 0;
    std::size_t place = 1;
    const bool negative = text.size() > place && text[place] == L'-';
    if (text.size() > place && (text[place] == L'-' || text[place] == L'+')) ++place;
    long long exponent = 0;
    for (; place < text.size() && IsDigit(text[place]); ++place) {
        if (exponent < enough) exponent = exponent * 10 + (text[place] - L'0');
        used = place + 1;
    }
    return negative ? -exponent : exponent;
}

// The whole number at the front of the text, clamped to int; a length of 0 in `used` where there is none.
int ReadWhole(std::wstring_view text, std::size_t& used)
{
    used = 0;
    std::size_t place = 0;
    const bool negative = !text.empty() && text[0] == L'-';
    if (!text.empty() && (text[0] == L'-' || text[0] == L'+')) ++place;
    constexpr long long limit = -static_cast<long long>(std::numeric_limits<int>::min());
    long long value = 0;
    for (; place < text.size() && IsDigit(text[place]); ++place) {
        value = std::min(value * 10 + (text[place] - L'0'), limit);
        used = place + 1;
    }
    return static_cast<int>(negative ? -value : std::min<long long>(value, std::numeric_limits<int>::max()));
}

// Takes the next field as a real number. A field that is a plain number and nothing else is read where it stands, so that
// its end need not be looked for first.
template <class T>
T TakeReal(std::wstring_view& line)
{
    T value{};
    std::size_t used = 0;
    if (ReadShortReal(line, value, used) && (used == line.size() || line[used] == L',')) {
        line.remove_prefix(std::min(used + 1, line.size()));
        return value;
    }
    return ReadReal<T>(GetSubString(line), used);
}

// Runs a scanner of views on a line that owns its text.
template <class Scanner>
auto TakeFrom(CString& line, Scanner scanner)
{
    std::wstring_view rest = line.View();
    auto value = scanner(rest);
    line = CString(rest);
    return value;
}

} // namespace

template <class T>
T ReadReal(std::wstring_view text, std::size_t& used)
{
    T plain{};
    if (ReadShortReal(text, plain, used)) return plain;

    std::size_t place = 0;
    const bool negative = !text.empty() && text[0] == L'-';
    if (!text.empty() && (text[0] == L'-' || text[0] == L'+')) ++place;
    const T sign = negative ? T(-1) : T(1);

    const std::wstring_view unsignedText = text.substr(place);
    used = place + 3;
    if (BeginsWith(unsignedText, L"nan")) return std::copysign(std::numeric_limits<T>::quiet_NaN(), sign);
    if (BeginsWith(unsignedText, L"inf")) {
        if (BeginsWith(unsignedText, L"infinity")) used = place + 8;
        return sign * std::numeric_limits<T>::infinity();
    }

    DecimalDigits digits;
    for (; place < text.size() && IsDigit(text[place]); ++place)
        digits.Take(text[place], false);
    if (place < text.size() && text[place] == L'.') {
        const std::size_t point = place++;
        for (; place < text.size() && IsDigit(text[place]); ++place)
            digits.Take(text[place], true);
        if (!digits.Any()) place = point;
    }
    used = 0;
    if (!digits.Any()) return T(0);

    std::size_t exponentLength = 0;
    const long long exponent = ReadExponent(text.substr(place), exponentLength);
    used = place + exponentLength;
    return sign * digits.Value<T>(exponent);
}

template double ReadReal<double>(std::wstring_view, std::size_t&);
template float ReadReal<float>(std::wstring_view, std::size_t&);

std::wstring_view GetLineView(const CString* text)
{
    if (text) g_restOfText = text->View();
    const std::size_t end = g_restOfText.find(L'\n');
    std::wstring_view line = g_restOfText.substr(0, end);
    if (end == std::wstring_view::npos) {
        g_restOfText = {};
        return line;
    }
    g_restOfText.remove_prefix(end + 1);
    if (!line.empty() && line.back() == L'\r') line.remove_suffix(1);
    return line;
}

CString GetLine(const CString* text) { return CString(GetLineView(text)); }

bool AtEndOfLines() { return g_restOfText.empty(); }

std::wstring_view GetSubString(std::wstring_view& line)
{
    const std::size_t comma = std::min(line.find(L','), line.size());
    const std::wstring_view field = line.substr(0, comma);
    line.remove_prefix(std::min(comma + 1, line.size()));
    return TrimBlanks(field);
}

CString GetSubString(CString& line)
{
    return TakeFrom(line, [](std::wstring_view& rest) { return CString(GetSubString(rest)); });
}

double GetValueDouble(std::wstring_view& line) { return TakeReal<double>(line); }

double GetValueDouble(CString& line)
{
    return TakeFrom(line, [](std::wstring_view& rest) { return GetValueDouble(rest); });
}

int GetValueInt(std::wstring_view& line)
{
    std::size_t used = 0;
    return ReadWhole(GetSubString(line), used);
}

int GetValueInt(CString& line)
{
    return TakeFrom(line, [](std::wstring_view& rest) { return GetValueInt(rest); });
}

float GetValueFloat(std::wstring_view& line) { return TakeReal<float>(line); }

float GetValueFloat(CString& line)
{
    return TakeFrom(line, [](std::wstring_view& rest) { return GetValueFloat(rest); });
}

bool StringTo(std::wstring_view text, int& value)
{
    const std::wstring_view trimmed = TrimBlanks(text);
    std::size_t used = 0;
    const int whole = ReadWhole(trimmed, used);
    if (used == 0 || used != trimmed.size()) return false;
    value = whole;
    return true;
}

} // namespace Keltrix
