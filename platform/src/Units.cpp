#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "keltrix/platform/KxUtil.h"
#include "keltrix/platform/NumberText.h"

namespace Keltrix {

namespace {

using Buffer = std::array<char, 64>;

CString Widen(std::string_view text) { return CString(std::wstring(text.begin(), text.end())); }

std::string_view ToChars(Buffer& buffer, double value, std::chars_format form, int precision)
{
    const auto end = WriteNumber(buffer.data(), buffer.data() + buffer.size(), value, form, precision).ptr;
    return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

std::string_view WithoutTrailingZeros(std::string_view digits)
{
    if (digits.find('.') == std::string_view::npos) return digits;
    while (digits.back() == '0')
        digits.remove_suffix(1);
    if (digits.back() == '.') digits.remove_suffix(1);
    return digits;
}

// Up to `figures` significant figures without trailing zeros; plain from 1e-4 to below 1e9, with an exponent outside.
CString Significant(double value, int figures)
{
    if (std::isnan(value)) return L"nan";
    if (std::isinf(value)) return value > 0.0 ? L"inf" : L"-inf";
    if (value == 0.0) return L"0";

    Buffer scientificBuffer;
    const std::string_view scientific = ToChars(scientificBuffer, value, std::chars_format::scientific, figures - 1);
    const std::size_t e = scientific.find('e');
    int exponent = 0;
    std::from_chars(scientific.data() + e + (scientific[e + 1] == '+' ? 2 : 1), scientific.data() + scientific.size(),
                    exponent);
    if (exponent < -4 || exponent >= 9) {
        CString text = Widen(WithoutTrailingZeros(scientific.substr(0, e)));
        return text + Widen(scientific.substr(e));
    }

    double rounded = value;
    if (exponent >= figures) ReadNumber(scientific.data(), scientific.data() + scientific.size(), rounded);
    Buffer fixedBuffer;
    const int decimals = std::max(figures - 1 - exponent, 0);
    return Widen(WithoutTrailingZeros(ToChars(fixedBuffer, rounded, std::chars_format::fixed, decimals)));
}

CString WithUnit(double value, const CUnit::Entry& unit, int figures)
{
    CString text = Significant(value * unit.factor, figures);
    if (!unit.label.IsEmpty()) {
        text += L' ';
        text += unit.label;
    }
    return text;
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

    Buffer buffer;
    for (int decimals = 3;; ++decimals) {
        const std::string_view text = ToChars(buffer, value, std::chars_format::fixed, decimals);
        double shown = 0.0;
        ReadNumber(text.data(), text.data() + text.size(), shown);
        if (shown == 1.0 && value != 1.0) continue;
        return Widen(shown == 0.0 && text.front() == '-' ? text.substr(1) : text);
    }
}

CString CDesFormat::Int(int value) const
{
    CString text;
    text.Format(L"%d", value);
    return text;
}

} // namespace Keltrix
