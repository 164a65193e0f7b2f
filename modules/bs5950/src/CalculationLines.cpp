#include "CalculationLines.h"

#include <cmath>

namespace Keltrix::BS5950 {

std::vector<Design::Step> CalculationLines::Steps() const
{
    std::vector<Design::Step> steps;
    steps.reserve(m_lines.size());
    for (const CalculationLine& line : m_lines)
        if (*line.step.symbol) steps.push_back(line.step);
    return steps;
}

namespace {

CString Figures(double value, const wchar_t* unit)
{
    CString text;
    text.Format(std::abs(value) < 9999.5 ? L"%.4G %s" : L"%.0f %s", value, unit);
    return text;
}

} // namespace

CString VolumeText(double m3) { return Figures(m3 * 1e6, L"cm³"); }

CString AreaText(double m2) { return Figures(m2 * 1e4, L"cm²"); }

CString DimensionText(double m) { return Figures(m * 1e2, L"cm"); }

} // namespace Keltrix::BS5950
