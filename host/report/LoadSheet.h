#pragma once

#include <string>

#include "check/CheckedBeam.h"
#include "loads/LoadReport.h"

namespace Keltrix::Host {

/// What is reported of the loads of a beam without errors.
LoadReport LoadReportOf(const Beam& beam);

/// The loads of a beam for its calculation sheet: drawings, then the tables. All ids in it start with `id`.
std::string LoadHtml(const std::string& id, const Beam& beam, bool isBrief);

} // namespace Keltrix::Host
