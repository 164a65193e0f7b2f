#pragma once

// Sections and strengths for the tests of the EN 1993-1-1 module's cross-section.

#include <cmath>
#include <optional>
#include <stdexcept>

#include "keltrix/ec3/Section.h"
#include "keltrix/platform/KxData.h"

namespace EC3Test {

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

} // namespace EC3Test
