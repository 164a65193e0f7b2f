#pragma once

// Sections and strengths for the tests of the EN 1993-1-1 module's cross-section.

#include <cmath>
#include <optional>
#include <stdexcept>
#include <string>

#include "keltrix/ec3/Section.h"
#include "keltrix/platform/KxData.h"

namespace EC3Test {

inline constexpr double MM = 1e-3, MM2 = 1e-6, MM3 = 1e-9;

using namespace Keltrix;
using namespace Keltrix::EC3;

/// A section by its description, made as `type` says where one is given.
inline Section SectionOf(const CString& description, int type = -1)
{
    CSection s{description};
    if (type >= 0) {
        CSecComp c = s.Component(0);
        c.SetType(type);
        s.SetComponent(0, c);
    }
    const std::optional<Section> section = MakeSection(s, nullptr);
    if (!section) throw std::runtime_error("no section");
    return *section;
}

/// fy in N/mm².
inline Strength StrengthOf(double fy)
{
    Strength m;
    m.fy = fy * 1e6;
    m.fu = 1.3 * m.fy;
    m.epsilon = std::sqrt(235.0 / fy);
    return m;
}

/// EN 10025-2 in the steps of its table, as the UK National Annex has it: S275 and S355 up to 150 mm. Thickness in m.
inline Strength RolledStrength(const std::string& grade, double thickness)
{
    constexpr double upTo[] = {0.016, 0.040, 0.063, 0.080, 0.100, 0.150};
    constexpr double s275[] = {275, 265, 255, 245, 235, 225};
    constexpr double s355[] = {355, 345, 335, 325, 315, 295};
    for (int i = 0; i < 6; ++i)
        if (thickness <= upTo[i] + 1e-9) return StrengthOf(grade == "S275" ? s275[i] : s355[i]);
    throw std::runtime_error("no strength");
}

} // namespace EC3Test
