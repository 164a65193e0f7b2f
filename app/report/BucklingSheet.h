#pragma once

#include <string>

#include "CheckedMember.h"
#include "report/MemberAxis.h"

namespace Keltrix::App {

/// The elastic critical load of a checked member for its sheet: verdict, drawing and figures, or the reason why there is none.
std::string BucklingHtml(const std::string& id, const CheckedMember& checked, const DrawnLayout& layout,
                         const MemberAxis& axis);

/// The same in one paragraph.
std::string BucklingLine(const CheckedMember& checked);

} // namespace Keltrix::App
