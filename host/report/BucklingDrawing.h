#pragma once

#include <string>

#include "check/BucklingReport.h"
#include "report/MemberAxis.h"

namespace Keltrix::Host {

/// The governing unit as it buckles, or as it is free to move, to the scale of the member's elevation along the member and exaggerated
/// sideways. In plan, seen from above: both flanges, the shear centre, and at which flange something holds. Below it seven sections
/// of the unit, seen along the member from its start, beside where they were. The report must hold an answer.
std::string BucklingSvg(const std::string& id, const BucklingReport& report, const DrawnLayout& layout,
                        const MemberAxis& axis, const CSection& section);

/// The same as a file of its own, with the member's title and the verdict, and with the colours of the calculation sheet.
std::string BucklingSvgFile(const BucklingReport& report, Steel::CSteelMemberGen& member, const std::string& title);

} // namespace Keltrix::Host
