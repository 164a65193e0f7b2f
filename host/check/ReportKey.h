#pragma once

#include <string>

namespace Keltrix::Host {

/// What the words and numbers of an input report mean, as mark-up: how points, sub-spans and positions are numbered, the axes of
/// forces and moments with their signs, and the unit of dimensions that have none beside them.
std::string ReportKey();

} // namespace Keltrix::Host
