#pragma once

#include <string>
#include <vector>

#include "keltrix/platform/KxData.h"

namespace Keltrix::Host {

/// One dimension or property of a section.
struct SectionValue {
    std::string symbol; ///< also its name in JSON
    double si;          ///< m, m², m³, m⁴, m⁶, radians
    std::string unit;   ///< the unit in which an engineer reads it
    double factor;      ///< from SI to that unit
    std::string meaning;
};

std::vector<SectionValue> SectionDimensionValues(const CSection& section);

/// Every property of the section's geometry. The section must have one (MakeGeometry).
std::vector<SectionValue> SectionPropertyValues(const CSection& section);

} // namespace Keltrix::Host
