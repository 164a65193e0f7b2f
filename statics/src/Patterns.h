#pragma once

#include <cstdint>
#include <vector>

#include "keltrix/statics/Analysis.h"

namespace Keltrix::Statics {

/// Signs of what the permanent loads together and each variable unit contribute to one effect at one place: 1 and -1, 0 where it is
/// nothing. Entry 0 is of the permanent loads, entry i + 1 of the i-th variable unit.
using Signs = std::vector<std::int8_t>;

/// The units of variable cases.
std::vector<const Unit*> VariableUnits(const Analysis& analysis);

/// The different signs that occur anywhere in a member for its moments, shears, deflections from the chords of the spans, axial forces and
/// reactions, each with its opposite. Between neighbouring zeros of the units' diagrams they do not change.
std::vector<Signs> FindSigns(const Analysis& analysis, const std::vector<const Unit*>& variable);

/// Without those of which another one has the same signs in all places that are not 0. Zeros that are left become 1 of the permanent
/// loads, -1 of the others.
std::vector<Signs> Distinct(std::vector<Signs> all);

} // namespace Keltrix::Statics
