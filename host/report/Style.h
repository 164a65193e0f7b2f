#pragma once

#include <string>

namespace Keltrix::Host {

/// The style sheet of the report: screen, light and dark, and A4 paper.
std::string ReportStyle();

/// The part of it that a drawing needs which is a file of its own.
std::string DrawingStyle();

} // namespace Keltrix::Host
