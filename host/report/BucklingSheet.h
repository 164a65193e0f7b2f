#pragma once

#include <string>

#include "check/CheckedMember.h"
#include "report/MemberAxis.h"

namespace Keltrix::Host {

/// The elastic critical load of a checked member for its sheet: verdict, drawing and figures, or the reason why there is none.
std::string BucklingHtml(const std::string& id, const CheckedMember& checked, const DrawnLayout& layout,
                         const MemberAxis& axis);

/// The same in one paragraph.
std::string BucklingLine(const CheckedMember& checked);

} // namespace Keltrix::Host
