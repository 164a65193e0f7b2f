#pragma once

#include <array>
#include <optional>
#include <vector>

#include "keltrix/steel/MemberLayout.h"
#include "memberfile/DefectList.h"

namespace Keltrix::Host {

/// A point or a sub-span with the line that says it.
template <class Record>
struct PlacedRecord {
    Record record;
    MemberLine line;
};

/// What the lines of a member say of its layout.
struct MemberLayout {
    std::vector<PlacedRecord<Steel::CMemberPoint>> points;
    std::vector<PlacedRecord<Steel::CSubSpan>> subSpans;
    std::optional<std::array<double, 3>> givenLengths; ///< major, minor, lateral-torsional
    MemberLine lengthsLine;
};

/// Checks the rules of the library's validation of points and sub-spans, with the places, and what the strict reading adds to them:
/// numbers from 1 and positions from 0 without gaps, except with `allowGaps`. Of a member without errors it checks what lengths, forces and restraints
/// say of each other. Puts the records in the order of their numbers. `end` is the line after the last one.
void CheckMemberLayout(MemberLayout& layout, const MemberLine& end, bool allowGaps, DefectList& defects);

} // namespace Keltrix::Host
