#pragma once

#include <string_view>

namespace Keltrix::Host {

/// The style sheet of the report: screen, light and dark, and A4 paper.
extern const std::string_view REPORT_STYLE;

} // namespace Keltrix::Host
