#include "keltrix/platform/CString.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <type_traits>

#include "keltrix/platform/NumberText.h"

namespace Keltrix {

namespace {

constexpr std::wstring_view WHITE_SPACE = L" \t\r\n\v\f";

constexpr wchar_t LowerAscii(wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c; }

constexpr wchar_t UpperAscii(wchar_t c) { return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - (L'a' - L'A')) : c; }

std::size_t NotNegative(int n) { return n > 0 ? static_cast<std::size_t>(n) : 0; }

int Position(std::size_t found) { return found == std::wstring_view::npos ? -1 : static_cast<int>(found); }

// --- Format ---------------------------------------------------------------------------------------------------------

struct Conversion {
    bool left = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1; // -1: not given
    wchar_t type = L'\0';
};

// What a conversion prints: sign or base prefix, zeros that its precision asks for, the text; `tail` is an exponent.
struct Printed {
    std::string_view prefix;
    std::size_t zeros = 0;
    std::string_view body;
    bool point = false;
    std::size_t trailingZeros = 0;
    std::string_view tail;
};

std::string TypeName(wchar_t type)
{
    return type > L' ' && type < 127 ? std::string("%") + static_cast<char>(type) : std::string("%");
}

void AppendPadded(std::wstring& out, const Conversion& conversion, std::wstring_view text)
{
    const std::size_t width = NotNegative(conversion.width);
    const std::size_t fill = width > text.size() ? width - text.size() : 0;
    if (!conversion.left) out.append(fill, L' ');
    out.append(text);
    if (conversion.left) out.append(fill, L' ');
}

// Writes narrow text and fill characters one after the other into wide text that is long enough.
class WideWriter {
public:
    explicit WideWriter(wchar_t* place, bool upper) : m_place(place), m_upper(upper) {}

    void Put(std::string_view text)
    {
        for (const char c : text) {
            const auto wide = static_cast<wchar_t>(c);
            *m_place++ = m_upper ? UpperAscii(wide) : wide;
        }
    }
    void Fill(std::size_t count, wchar_t character) { m_place = std::fill_n(m_place, count, character); }

private:
    wchar_t* m_place;
    bool m_upper;
};

void AppendPadded(std::wstring& out, const Conversion& conversion, const Printed& printed, bool zeroFill, bool upper)
{
    const std::size_t length = printed.prefix.size() + printed.zeros + printed.body.size() + (printed.point ? 1 : 0) +
                               printed.trailingZeros + printed.tail.size();
    const std::size_t width = NotNegative(conversion.width);
    const std::size_t fill = width > length ? width - length : 0;
    const bool zeros = zeroFill && conversion.zero && !conversion.left;

    const std::size_t start = out.size();
    out.resize(start + length + fill);
    WideWriter writer(out.data() + start, upper);
    if (!conversion.left && !zeros) writer.Fill(fill, L' ');
    writer.Put(printed.prefix);
    writer.Fill(printed.zeros + (zeros ? fill : 0), L'0');
    writer.Put(printed.body);
    writer.Fill(printed.point ? 1 : 0, L'.');
    writer.Fill(printed.trailingZeros, L'0');
    writer.Put(printed.tail);
    if (conversion.left) writer.Fill(fill, L' ');
}

std::string_view SignOf(const Conversion& conversion, bool negative)
{
    return negative ? "-" : conversion.plus ? "+" : conversion.blank ? " " : "";
}

void AppendInteger(std::wstring& out, const Conversion& conversion, const FormatArg& arg)
{
    const bool isSigned = conversion.type == L'd' || conversion.type == L'i';
    const bool negative = isSigned && arg.ArgKind() == FormatArg::Kind::Signed && arg.Signed() < 0;
    const unsigned long long magnitude =
        negative ? 0ULL - static_cast<unsigned long long>(arg.Signed()) : arg.Unsigned();
    const bool hex = conversion.type == L'x' || conversion.type == L'X';
    const int base = hex ? 16 : conversion.type == L'o' ? 8 : 10;

    std::array<char, 24> buffer;
    Printed printed;
    if (magnitude != 0 || conversion.precision != 0) {
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, base).ptr;
        printed.body = {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
    }
    if (const std::size_t digits = NotNegative(conversion.precision); digits > printed.body.size()) {
        printed.zeros = digits - printed.body.size();
    }
    if (isSigned) printed.prefix = SignOf(conversion, negative);
    if (conversion.alternate && hex && magnitude != 0) printed.prefix = "0x";
    const bool leadsWithZero = printed.zeros > 0 || printed.body.substr(0, 1) == "0";
    if (conversion.alternate && base == 8 && !leadsWithZero) printed.zeros = 1;
    AppendPadded(out, conversion, printed, conversion.precision < 0, conversion.type == L'X');
}

// No double has more than 1074 decimals or 767 significant digits: what is asked for beyond is zeros.
constexpr int MAX_PRECISION = 1100;
using RealBuffer = std::array<char, 1536>;

std::string_view ToChars(RealBuffer& buffer, double magnitude, std::chars_format form, int precision)
{
    const auto result = precision < 0
                            ? WriteNumber(buffer.data(), buffer.data() + buffer.size(), magnitude, form)
                            : WriteNumber(buffer.data(), buffer.data() + buffer.size(), magnitude, form, precision);
    return {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())};
}

// %g with the flag '#': the same choice of form, but the trailing zeros stay.
std::string_view ToCharsKeepingZeros(RealBuffer& buffer, double magnitude, int precision)
{
    const std::string_view scientific = ToChars(buffer, magnitude, std::chars_format::scientific, precision - 1);
    const std::size_t e = scientific.find('e');
    const bool negative = scientific[e + 1] == '-';
    int exponent = 0;
    std::from_chars(scientific.data() + e + 2, scientific.data() + scientific.size(), exponent);
    if (negative) exponent = -exponent;
    if (exponent < -4 || exponent >= precision) return scientific;
    return ToChars(buffer, magnitude, std::chars_format::fixed, precision - 1 - exponent);
}

// The hexadecimal digits of a finite magnitude, as C's printf groups them: one digit (1, or 0 for zero and subnormal
// numbers) before the point. A precision below 13 rounds half to even.
std::string_view ToHexChars(RealBuffer& buffer, double magnitude, int precision)
{
    int exponent = 0;
    unsigned long long bits = 0; // the digit before the point and 52 bits after it
    if (magnitude >= std::numeric_limits<double>::min()) {
        bits = static_cast<unsigned long long>(std::ldexp(std::frexp(magnitude, &exponent), 53));
        --exponent;
    } else if (magnitude > 0.0) {
        bits = static_cast<unsigned long long>(std::ldexp(std::ldexp(magnitude, 1022), 52));
        exponent = -1022;
    }
    int digits = 13;
    if (precision >= 0 && precision < 13) {
        const int dropped = 4 * (13 - precision);
        const unsigned long long half = 1ULL << (dropped - 1);
        const unsigned long long rest = bits & ((half << 1) - 1);
        bits >>= dropped;
        if (rest > half || (rest == half && (bits & 1) != 0)) ++bits;
        bits <<= dropped;
        digits = precision;
    } else if (precision < 0) {
        while (digits > 0 && (bits >> (4 * (13 - digits)) & 0xf) == 0)
            --digits;
    }

    char* out = buffer.data();
    *out++ = static_cast<char>('0' + (bits >> 52));
    if (digits > 0) *out++ = '.';
    for (int i = 1; i <= digits; ++i)
        *out++ = "0123456789abcdef"[bits >> (4 * (13 - i)) & 0xf];
    *out++ = 'p';
    if (exponent >= 0) *out++ = '+';
    out = std::to_chars(out, buffer.data() + buffer.size(), exponent).ptr;
    return {buffer.data(), static_cast<std::size_t>(out - buffer.data())};
}

void AppendReal(std::wstring& out, const Conversion& conversion, double value)
{
    const wchar_t type = LowerAscii(conversion.type);
    const bool upper = type != conversion.type;
    const double magnitude = std::fabs(value);
    std::array<char, 4> prefix{};
    std::string_view sign = SignOf(conversion, std::signbit(value));

    Printed printed;
    printed.prefix = sign;
    if (!std::isfinite(value)) {
        printed.body = std::isnan(value) ? "nan" : "inf";
        AppendPadded(out, conversion, printed, false, upper);
        return;
    }

    RealBuffer buffer;
    std::string_view text;
    if (type == L'a') {
        std::copy(sign.begin(), sign.end(), prefix.begin());
        prefix[sign.size()] = '0';
        prefix[sign.size() + 1] = 'x';
        printed.prefix = {prefix.data(), sign.size() + 2};
        text = ToHexChars(buffer, magnitude, conversion.precision);
        if (conversion.precision > 13) printed.trailingZeros = static_cast<std::size_t>(conversion.precision - 13);
    } else {
        int wanted = conversion.precision < 0 ? 6 : conversion.precision;
        if (type == L'g') wanted = std::max(wanted, 1);
        const int precision = std::min(wanted, MAX_PRECISION);
        if (type == L'f') {
            text = ToChars(buffer, magnitude, std::chars_format::fixed, precision);
        } else if (type == L'e') {
            text = ToChars(buffer, magnitude, std::chars_format::scientific, precision);
        } else if (conversion.alternate) {
            text = ToCharsKeepingZeros(buffer, magnitude, precision);
        } else {
            text = ToChars(buffer, magnitude, std::chars_format::general, precision);
        }
        if (type != L'g' || conversion.alternate) printed.trailingZeros = static_cast<std::size_t>(wanted - precision);
    }

    const std::size_t exponent = std::min(text.find(type == L'a' ? 'p' : 'e'), text.size());
    printed.body = text.substr(0, exponent);
    printed.tail = text.substr(exponent);
    printed.point = conversion.alternate && printed.body.find('.') == std::string_view::npos;
    AppendPadded(out, conversion, printed, true, upper);
}

class Formatter {
public:
    Formatter(std::wstring& out, std::wstring_view format, std::span<const FormatArg> args) :
        m_out(out), m_format(format), m_args(args)
    {}

    void Run()
    {
        while (m_place < m_format.size()) {
            const std::size_t percent = std::min(m_format.find(L'%', m_place), m_format.size());
            m_out.append(m_format.substr(m_place, percent - m_place));
            m_place = percent;
            if (m_place == m_format.size()) break;
            ++m_place;
            if (Peek() == L'%') {
                ++m_place;
                m_out.push_back(L'%');
            } else if (Peek() == L's' && m_next < m_args.size() && m_args[m_next].ArgKind() == FormatArg::Kind::Text) {
                ++m_place;
                m_out.append(m_args[m_next++].Text());
            } else {
                const Conversion conversion = ReadConversion();
                Put(conversion);
            }
        }
        if (m_next < m_args.size()) {
            throw std::invalid_argument("CString::Format: " + std::to_string(m_args.size()) +
                                        " arguments given, the format takes " + std::to_string(m_next));
        }
    }

private:
    wchar_t Peek() const { return m_place < m_format.size() ? m_format[m_place] : L'\0'; }

    // What takes an argument: a conversion by its letter, or the star of a width or precision.
    static std::string TakerName(wchar_t taker) { return taker == L'*' ? "*" : TypeName(taker); }

    const FormatArg& NextArg(wchar_t taker)
    {
        if (m_next >= m_args.size()) {
            throw std::invalid_argument("CString::Format: no argument is left for " + TakerName(taker) + " (" +
                                        std::to_string(m_args.size()) + " given)");
        }
        return m_args[m_next++];
    }

    int ReadNumber()
    {
        long long number = 0;
        for (; Peek() >= L'0' && Peek() <= L'9'; ++m_place) {
            number = number * 10 + (Peek() - L'0');
            if (number > std::numeric_limits<int>::max()) {
                throw std::invalid_argument("CString::Format: a width or precision is too large");
            }
        }
        return static_cast<int>(number);
    }

    int ReadStar()
    {
        ++m_place;
        const FormatArg& arg = NextArg(L'*');
        if (arg.ArgKind() != FormatArg::Kind::Signed && arg.ArgKind() != FormatArg::Kind::Unsigned) {
            Mismatch(L'*', "a whole number");
        }
        const long long number =
            arg.ArgKind() == FormatArg::Kind::Signed ? arg.Signed() : static_cast<long long>(arg.Unsigned());
        if (number > std::numeric_limits<int>::max() || number < -std::numeric_limits<int>::max()) {
            throw std::invalid_argument("CString::Format: a width or precision is too large");
        }
        return static_cast<int>(number);
    }

    Conversion ReadConversion()
    {
        Conversion conversion;
        for (bool flags = true; flags;) {
            switch (Peek()) {
            case L'-':
                conversion.left = true;
                break;
            case L'+':
                conversion.plus = true;
                break;
            case L' ':
                conversion.blank = true;
                break;
            case L'#':
                conversion.alternate = true;
                break;
            case L'0':
                conversion.zero = true;
                break;
            default:
                flags = false;
            }
            if (flags) ++m_place;
        }
        conversion.width = Peek() == L'*' ? ReadStar() : ReadNumber();
        if (conversion.width < 0) {
            conversion.left = true;
            conversion.width = -conversion.width;
        }
        if (Peek() == L'.') {
            ++m_place;
            conversion.precision = Peek() == L'*' ? std::max(ReadStar(), -1) : ReadNumber();
        }
        while (Peek() != L'\0' && std::wstring_view(L"hlztjL").find(Peek()) != std::wstring_view::npos)
            ++m_place;
        if (m_place == m_format.size()) {
            throw std::invalid_argument("CString::Format: the format ends within a conversion");
        }
        conversion.type = m_format[m_place++];
        return conversion;
    }

    void Put(const Conversion& conversion)
    {
        using Kind = FormatArg::Kind;
        switch (conversion.type) {
        case L'd':
        case L'i':
        case L'u':
        case L'o':
        case L'x':
        case L'X':
        case L'c': {
            const FormatArg& arg = NextArg(conversion.type);
            if (arg.ArgKind() == Kind::Real || arg.ArgKind() == Kind::Text) {
                Mismatch(conversion.type, conversion.type == L'c' ? "a character" : "a whole number");
            }
            if (conversion.type == L'c') {
                const auto character = static_cast<wchar_t>(arg.Unsigned());
                AppendPadded(m_out, conversion, std::wstring_view(&character, 1));
            } else {
                AppendInteger(m_out, conversion, arg);
            }
            break;
        }
        case L's': {
            const FormatArg& arg = NextArg(conversion.type);
            if (arg.ArgKind() != Kind::Text) Mismatch(conversion.type, "a text");
            const std::size_t most =
                conversion.precision < 0 ? std::wstring_view::npos : static_cast<std::size_t>(conversion.precision);
            AppendPadded(m_out, conversion, arg.Text().substr(0, most));
            break;
        }
        case L'f':
        case L'F':
        case L'e':
        case L'E':
        case L'g':
        case L'G':
        case L'a':
        case L'A': {
            const FormatArg& arg = NextArg(conversion.type);
            if (arg.ArgKind() != Kind::Real) Mismatch(conversion.type, "a real number");
            AppendReal(m_out, conversion, arg.Real());
            break;
        }
        default:
            throw std::invalid_argument("CString::Format: unknown conversion " + TypeName(conversion.type) +
                                        " at position " + std::to_string(m_place - 1));
        }
    }

    // The argument that was taken last is not what the conversion needs.
    [[noreturn]] void Mismatch(wchar_t taker, const char* wanted) const
    {
        static constexpr const char* KIND_NAMES[] = {"a whole number", "a whole number", "a real number", "a character",
                                                     "a text"};
        throw std::invalid_argument("CString::Format: " + TakerName(taker) + " takes " + wanted + ", argument " +
                                    std::to_string(m_next) + " is " +
                                    KIND_NAMES[static_cast<std::size_t>(m_args[m_next - 1].ArgKind())]);
    }

    std::wstring& m_out;
    std::wstring_view m_format;
    std::span<const FormatArg> m_args;
    std::size_t m_place = 0;
    std::size_t m_next = 0;
};

// --- UTF-8 ----------------------------------------------------------------------------------------------------------

constexpr bool IsSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

wchar_t* WriteWide(wchar_t* to, char32_t c)
{
    if constexpr (sizeof(wchar_t) == 2) {
        if (c >= 0x10000) {
            *to++ = static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
            *to++ = static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
            return to;
        }
    }
    *to++ = static_cast<wchar_t>(c);
    return to;
}

// Length of the well-formed sequence at the front of `bytes` and its code point; length 0 when it is ill-formed.
std::size_t DecodeUtf8(std::string_view bytes, char32_t& codePoint)
{
    const auto lead = static_cast<unsigned char>(bytes[0]);
    if (lead < 0x80) {
        codePoint = lead;
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return 0;
    codePoint = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(bytes[i]);
        if ((next & 0xC0U) != 0x80U) return 0;
        codePoint = (codePoint << 6) | (next & 0x3FU);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (codePoint < smallest[length] || codePoint > 0x10FFFF || IsSurrogate(codePoint)) return 0;
    return length;
}

constexpr std::size_t LONGEST_UTF8 = 4;

char* WriteUtf8(char* to, char32_t c)
{
    const auto continuation = [&](int shift) { *to++ = static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        *to++ = static_cast<char>(c);
    } else if (c < 0x800) {
        *to++ = static_cast<char>(0xC0 | (c >> 6));
        continuation(0);
    } else if (c < 0x10000) {
        *to++ = static_cast<char>(0xE0 | (c >> 12));
        continuation(6);
        continuation(0);
    } else {
        *to++ = static_cast<char>(0xF0 | (c >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
    return to;
}

} // namespace

CString CString::Left(int n) const { return CString(View().substr(0, NotNegative(n))); }

CString CString::Right(int n) const
{
    return CString(View().substr(m_text.size() - std::min(NotNegative(n), m_text.size())));
}

CString CString::Mid(int first) const { return CString(View().substr(std::min(NotNegative(first), m_text.size()))); }

CString CString::Mid(int first, int n) const
{
    return CString(View().substr(std::min(NotNegative(first), m_text.size()), NotNegative(n)));
}

int CString::Find(wchar_t character, int start) const { return Position(m_text.find(character, NotNegative(start))); }

int CString::Find(std::wstring_view needle, int start) const
{
    return Position(m_text.find(needle, NotNegative(start)));
}

int CString::Replace(wchar_t from, wchar_t to)
{
    const auto count = std::count(m_text.begin(), m_text.end(), from);
    std::replace(m_text.begin(), m_text.end(), from, to);
    return static_cast<int>(count);
}

int CString::Replace(std::wstring_view from, std::wstring_view to)
{
    if (from.empty()) return 0;

    std::size_t found = m_text.find(from);
    if (found == std::wstring::npos) return 0;

    std::wstring result;
    result.reserve(m_text.size());
    int count = 0;
    std::size_t done = 0;
    for (; found != std::wstring::npos; found = m_text.find(from, done)) {
        result.append(m_text, done, found - done).append(to);
        done = found + from.size();
        ++count;
    }
    result.append(m_text, done);
    m_text = std::move(result);
    return count;
}

int CString::Remove(wchar_t character) { return static_cast<int>(std::erase(m_text, character)); }

CString& CString::MakeUpper()
{
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), UpperAscii);
    return *this;
}

CString& CString::MakeLower()
{
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), LowerAscii);
    return *this;
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }

CString& CString::TrimLeft()
{
    m_text.erase(0, m_text.find_first_not_of(WHITE_SPACE));
    return *this;
}

CString& CString::TrimRight()
{
    m_text.erase(m_text.find_last_not_of(WHITE_SPACE) + 1);
    return *this;
}

int CString::Compare(std::wstring_view other) const noexcept { return View().compare(other); }

int CString::CompareNoCase(std::wstring_view other) const noexcept
{
    const std::size_t shared = std::min(m_text.size(), other.size());
    for (std::size_t i = 0; i < shared; ++i) {
        const wchar_t a = LowerAscii(m_text[i]);
        const wchar_t b = LowerAscii(other[i]);
        if (a != b) return a < b ? -1 : 1;
    }
    return m_text.size() == other.size() ? 0 : m_text.size() < other.size() ? -1 : 1;
}

void CString::AppendFormatArgs(std::wstring_view format, std::span<const FormatArg> args)
{
    const std::size_t length = m_text.size();
    std::size_t needed = length + format.size();
    for (const FormatArg& arg : args)
        needed += arg.ArgKind() == FormatArg::Kind::Text ? arg.Text().size() : 8;
    try {
        if (needed > m_text.capacity()) m_text.reserve(std::max(needed, 2 * m_text.capacity()));
        Formatter(m_text, format, args).Run();
    } catch (...) {
        m_text.resize(length);
        throw;
    }
}

std::optional<CString> CString::FromUtf8(std::string_view bytes, std::size_t* errorOffset)
{
    std::wstring text(bytes.size(), L'\0');
    wchar_t* to = text.data();
    for (std::size_t place = 0; place < bytes.size();) {
        char32_t codePoint = 0;
        const std::size_t length = DecodeUtf8(bytes.substr(place), codePoint);
        if (length == 0) {
            if (errorOffset) *errorOffset = place;
            return std::nullopt;
        }
        to = WriteWide(to, codePoint);
        place += length;
    }
    text.resize(static_cast<std::size_t>(to - text.data()));
    return CString(std::move(text));
}

std::optional<std::string> CString::ToUtf8() const
{
    // Has room for a byte of each character that is left.
    std::string bytes(m_text.size(), '\0');
    std::size_t length = 0;
    for (std::size_t i = 0; i < m_text.size(); ++i) {
        char32_t c = static_cast<std::make_unsigned_t<wchar_t>>(m_text[i]);
        if constexpr (sizeof(wchar_t) == 2) {
            if (c >= 0xD800 && c <= 0xDBFF && i + 1 < m_text.size()) {
                const char32_t low = static_cast<std::make_unsigned_t<wchar_t>>(m_text[i + 1]);
                if (low >= 0xDC00 && low <= 0xDFFF) {
                    c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                    ++i;
                }
            }
        }
        if (IsSurrogate(c) || c > 0x10FFFF) return std::nullopt;
        if (c >= 0x80) bytes.resize(bytes.size() + LONGEST_UTF8 - 1);
        length = static_cast<std::size_t>(WriteUtf8(bytes.data() + length, c) - bytes.data());
    }
    bytes.resize(length);
    return bytes;
}

} // namespace Keltrix
