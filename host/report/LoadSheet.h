#pragma once

#include <memory>
#include <string>

#include "check/CheckedBeam.h"
#include "loads/LoadReport.h"
#include "report/MemberSheet.h"

namespace Keltrix::Host {

/// What is reported of the loads of a beam without errors.
LoadReport LoadReportOf(const Beam& beam);

/// The loads of a beam for its calculation sheet: drawings, then the tables. All ids in it start with `id`.
std::string LoadHtml(const std::string& id, const Beam& beam, bool isBrief);

/// The same as the part of a sheet that holds the beam as long as it may be asked for.
LoadPart LoadPartOf(std::shared_ptr<const Beam> beam);

} // namespace Keltrix::Host
