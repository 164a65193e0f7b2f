#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "keltrix/platform/KxUtil.h"
#include "keltrix/platform/NumberText.h"

namespace Keltrix {

namespace {

using Buffer = std::array<char, 64>;

std::string_view ToChars(Buffer& buffer, double value, std::chars_format form, int precision)
{
    const auto end = WriteNumber(buffer.data(), buffer.data() + buffer.size(), value, form, precision).ptr;
    return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

// Text that is put together without a place on the heap: a number with its unit.
class ShortText {
public:
    void Put(wchar_t character) { m_text[m_size++] = character; }
    void Put(std::string_view text)
    {
        for (const char c : text)
            Put(static_cast<wchar_t>(c));
    }
    void Put(std::size_t count, wchar_t character)
    {
        std::fill_n(m_text.begin() + m_size, count, character);
        m_size += count;
    }
    bool HasRoomFor(std::size_t count) const { return m_size + count <= m_text.size(); }
    std::wstring_view View() const { return {m_text.data(), m_size}; }
    CString Text() const { return CString(View()); }

private:
    std::array<wchar_t, 96> m_text;
    std::size_t m_size = 0;
};

// A number of a few significant digits: 0.d1 d2 d3... times 10 to the power exponent + 1.
struct Decimal {
    std::array<char, 24> digits;
    int count = 0;
    int exponent = 0;

    void SetDigits(long long whole, int figures)
    {
        count = figures;
        for (int i = figures - 1; i >= 0; --i, whole /= 10)
            digits[static_cast<std::size_t>(i)] = static_cast<char>('0' + whole % 10);
    }
    std::string_view Digits(int from, int to) const
    {
        return {digits.data() + from, static_cast<std::size_t>(to - from)};
    }
};

constexpr std::array<double, 16> POWERS{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// The nearest whole number where the product's own rounding cannot change it; -1 where it could.
long long SafelyRounded(double magnitude)
{
    const double whole = std::floor(magnitude);
    const double rest = magnitude - whole;
    if (std::abs(rest - 0.5) < 1e-6) return -1;
    return static_cast<long long>(whole) + (rest > 0.5 ? 1 : 0);
}

// Magnitudes whose digits plain arithmetic gives: no power of ten here is itself rounded, and the quotient or product below 10^figures is
// right to 1e-9.
bool PlainDecimal(double magnitude, int figures, Decimal& decimal)
{
    if (!(magnitude > 1.1e-4 && magnitude < 9e8)) return false;
    int exponent = 0;
    while (magnitude >= POWERS[static_cast<std::size_t>(exponent) + 1])
        ++exponent;
    while (exponent <= 0 && magnitude * POWERS[static_cast<std::size_t>(-exponent)] < 1.0)
        --exponent;
    const int shift = figures - 1 - exponent;
    const double power = POWERS[static_cast<std::size_t>(std::abs(shift))];
    long long whole = SafelyRounded(shift < 0 ? magnitude / power : magnitude * power);
    if (whole < 0) return false;
    const auto limit = static_cast<long long>(POWERS[static_cast<std::size_t>(figures)]);
    if (whole >= limit) {
        whole /= 10;
        ++exponent;
    }
    decimal.SetDigits(whole, figures);
    decimal.exponent = exponent;
    return true;
}

Decimal RoundedDecimal(double magnitude, int figures)
{
    Decimal decimal;
    if (PlainDecimal(magnitude, figures, decimal)) return decimal;
    Buffer buffer;
    const std::string_view text = ToChars(buffer, magnitude, std::chars_format::scientific, figures - 1);
    const std::size_t e = text.find('e');
    for (const char c : text.substr(0, e))
        if (c != '.') decimal.digits[static_cast<std::size_t>(decimal.count++)] = c;
    std::from_chars(text.data() + e + (text[e + 1] == '+' ? 2 : 1), text.data() + text.size(), decimal.exponent);
    return decimal;
}

// "1.5e-07": two digits of exponent at least, as printf has it.
void PutScientific(const Decimal& decimal, int count, ShortText& text)
{
    text.Put(decimal.Digits(0, 1));
    if (count > 1) text.Put(L'.');
    text.Put(decimal.Digits(1, count));
    text.Put(decimal.exponent < 0 ? std::string_view("e-") : "e+");
    const int exponent = std::abs(decimal.exponent);
    if (exponent < 10) text.Put(L'0');
    Buffer buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), exponent).ptr;
    text.Put(std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data())));
}

// Up to `figures` significant figures without trailing zeros; plain from 1e-4 to below 1e9, with an exponent outside.
void PutSignificant(double value, int figures, ShortText& text)
{
    if (std::isnan(value)) return text.Put("nan");
    if (std::isinf(value)) return text.Put(value > 0.0 ? "inf" : "-inf");
    if (value == 0.0) return text.Put(L'0');

    const Decimal decimal = RoundedDecimal(std::abs(value), figures);
    if (value < 0.0) text.Put(L'-');
    int count = decimal.count;
    while (decimal.digits[static_cast<std::size_t>(count) - 1] == '0')
        --count;
    const int exponent = decimal.exponent;
    if (exponent < -4 || exponent >= 9) return PutScientific(decimal, count, text);
    if (exponent < 0) {
        text.Put("0.");
        text.Put(static_cast<std::size_t>(-exponent - 1), L'0');
        text.Put(decimal.Digits(0, count));
    } else if (count <= exponent + 1) {
        text.Put(decimal.Digits(0, count));
        text.Put(static_cast<std::size_t>(exponent + 1 - count), L'0');
    } else {
        text.Put(decimal.Digits(0, exponent + 1));
        text.Put(L'.');
        text.Put(decimal.Digits(exponent + 1, count));
    }
}

CString Significant(double value, int figures)
{
    ShortText text;
    PutSignificant(value, figures, text);
    return text.Text();
}

CString WithUnit(double value, const CUnit::Entry& unit, int figures)
{
    ShortText text;
    PutSignificant(value * unit.factor, figures, text);
    if (unit.label.IsEmpty()) return text.Text();
    text.Put(L' ');
    const std::wstring_view label = unit.label;
    if (!text.HasRoomFor(label.size())) return text.Text() += unit.label;
    for (const wchar_t c : label)
        text.Put(c);
    return text.Text();
}

constexpr int LENGTH_FIGURES = 6;
constexpr int ACTION_FIGURES = 5;
constexpr int RATIO_FIGURES = 4;

} // namespace

CUnit::CUnit() :
    m_length{L"m", 1.0}, m_lengthSmall{L"m", 1.0}, m_force{L"kN", 1e-3}, m_moment{L"kNm", 1e-3}, m_stress{L"N/mm\u00B2",
                                                                                                          1e-6}
{}

CString CDesFormat::Length(double metres) const { return WithUnit(metres, m_unit.Length(), LENGTH_FIGURES); }

CString CDesFormat::LengthSmall(double metres) const
{
    return Significant(metres * m_unit.LengthSmall().factor, LENGTH_FIGURES);
}

CString CDesFormat::Force(double newtons) const { return WithUnit(newtons, m_unit.Force(), ACTION_FIGURES); }

CString CDesFormat::Moment(double newtonMetres) const
{
    return WithUnit(newtonMetres, m_unit.Moment(), ACTION_FIGURES);
}

CString CDesFormat::Stress(double pascals) const { return WithUnit(pascals, m_unit.Stress(), ACTION_FIGURES); }

CString CDesFormat::NoDim(double value) const { return Significant(value, RATIO_FIGURES); }

CString CDesFormat::Util(double value) const
{
    if (value == 0.0 || !(std::fabs(value) < 1e9)) return Significant(value, RATIO_FIGURES);

    ShortText text;
    const long long thousandths = std::fabs(value) < 1e6 ? SafelyRounded(std::fabs(value) * 1e3) : -1;
    if (thousandths >= 0 && thousandths != 1000) {
        Decimal decimal;
        const int whole = thousandths < 10'000 ? 1 : static_cast<int>(std::log10(static_cast<double>(thousandths))) - 2;
        decimal.SetDigits(thousandths, whole + 3);
        if (value < 0.0 && thousandths > 0) text.Put(L'-');
        text.Put(decimal.Digits(0, whole));
        text.Put(L'.');
        text.Put(decimal.Digits(whole, whole + 3));
        return text.Text();
    }
    Buffer buffer;
    for (int decimals = 3;; ++decimals) {
        const std::string_view digits = ToChars(buffer, value, std::chars_format::fixed, decimals);
        double shown = 0.0;
        ReadNumber(digits.data(), digits.data() + digits.size(), shown);
        if (shown == 1.0 && value != 1.0) continue;
        text.Put(shown == 0.0 && digits.front() == '-' ? digits.substr(1) : digits);
        return text.Text();
    }
}

CString CDesFormat::Int(int value) const
{
    CString text;
    text.Format(L"%d", value);
    return text;
}

} // namespace Keltrix
