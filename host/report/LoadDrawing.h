#pragma once

#include <string>
#include <vector>

#include "loads/LoadReport.h"

namespace Keltrix::Host {

/// The beam as it is held, with the lengths of its spans, and below it the loads of each case with their sizes; not to scale
/// in height. A member that is not level is drawn lying, its left end being the lower one, and the drawing says so.
/// `beam` is the one that was analysed for the report.
std::string LoadsSvg(const std::string& id, const Statics::Beam& beam, const LoadReport& report);

/// The same in drawings that fit a page of paper each, in their order.
std::vector<std::string> LoadsSvgs(const std::string& id, const Statics::Beam& beam, const LoadReport& report);

/// Greatest and least moments, shears and axial forces over the ultimate combinations, moments on the side in tension, each extreme with the
/// number of its combination; below them the deflected shape in the serviceability check that is used most. Empty where
/// there is neither.
std::string EnvelopeSvg(const std::string& id, const Statics::Beam& beam, const LoadReport& report);

/// Both as a file of its own with the title and the colours of the calculation sheet.
std::string LoadSvgFile(const Statics::Beam& beam, const LoadReport& report);

} // namespace Keltrix::Host
