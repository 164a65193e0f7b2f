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

CString DimensionText(double m)
{
    CString text;
    text.Format(std::abs(m) < 99.995 ? L"%.4G cm" : L"%.0f cm", m * 1e2);
    return text;
}

} // namespace Keltrix::BS5950
