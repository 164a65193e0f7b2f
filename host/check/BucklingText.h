#pragma once

#include <string>

#include "check/BucklingReport.h"
#include "text/Json.h"

namespace Keltrix::Host {

/// The report in the mark-up of reports: moduli, verdict, the units as a table, remarks, and the shape of the governing unit with its plan down the
/// lines.
std::string BucklingMarkup(const BucklingReport& report);

/// The report as data; docs/schema/buckling.schema.json has every name.
Json JsonOf(const BucklingReport& report);

} // namespace Keltrix::Host
