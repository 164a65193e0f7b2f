#pragma once

#include <string>
#include <vector>

#include "keltrix/steel/MemberLayout.h"
#include "memberfile/MemberCheck.h"

namespace Keltrix::Host {

/// Something that a member's forces, moments and restraints say of each other, at a point or in a sub-span.
struct ActionFinding {
    Severity severity = Severity::Warning;
    const char* code = "";
    bool isOfPoint = false;
    std::size_t index = 0; ///< of the point or sub-span, counted from 0
    std::string field;
    std::string got;
    std::string expected;
    std::string advice;
};

/// Contradictions (warnings) and what looks unlike a member that anybody means (notes). The points ascend, their values
/// are finite, and there is one sub-span less than there are points.
///
/// Warnings: end shears and end moments of a sub-span that do not belong together, so that the moment in between is not
/// known; moments that differ on the two sides of a point, where no load that the format knows acts. Notes: a member
/// whose forces are all below 1 kN, a length above 100 m, a load height beyond 5 m, no point held vertically, a flange held that is never compressed
/// while the compressed one is free, a free end with an axial force or a moment.
std::vector<ActionFinding> FindInActions(const std::vector<Steel::CMemberPoint>& points,
                                         const std::vector<Steel::CSubSpan>& subSpans);

} // namespace Keltrix::Host
