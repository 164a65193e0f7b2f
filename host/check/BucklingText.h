#pragma once

#include <string>

#include "check/BucklingReport.h"
#include "memberfile/CodelessMember.h"
#include "memberfile/MemberFile.h"
#include "text/Json.h"

namespace Keltrix::Host {

/// The report in the mark-up of reports: moduli, verdict, the units as a table, remarks, and the shape of the governing unit with its plan down the
/// lines.
std::string BucklingMarkup(const BucklingReport& report);

/// The report as data; docs/schema/buckling.schema.json has every name.
Json JsonOf(const BucklingReport& report);

/// The same with member i of a file in front, as `ksteel buckling --format json` writes it; `member` was read from there.
Json BucklingJson(const MemberFile& file, std::size_t i, CodelessMember& member, const BucklingReport& report);

} // namespace Keltrix::Host
