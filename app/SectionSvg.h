#pragma once

#include <string>

#include "keltrix/platform/KxData.h"

namespace Keltrix::App {

/// A drawing of the section to scale as SVG, one user unit to the millimetre: the outline with its fillets, the
/// centroid with the axes x-x and y-y, the plastic axes dashed, and the principal axes u-u and v-v of an angle.
std::string SectionSvg(const CSection& section, const std::string& title);

} // namespace Keltrix::App
