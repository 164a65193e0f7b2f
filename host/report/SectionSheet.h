#pragma once

#include <string>

#include "keltrix/platform/KxData.h"

namespace Keltrix::Host {

/// The section to one of the usual scales with its axes and main dimensions. Empty for a section without an outline.
std::string SectionSheetSvg(const std::string& id, const CSection& section, const std::string& name);

} // namespace Keltrix::Host
