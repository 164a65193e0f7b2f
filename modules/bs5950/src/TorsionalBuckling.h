#pragma once

#include "MemberModel.h"

namespace Keltrix::BS5950 {

/// Elastic critical loads of the member's struts as it is held, as entries of status Information.
std::vector<LedgerEntry> StrutInformation(const MemberModel& model, const std::vector<SpanResult>& spans);
/// The entry of torsional and flexural-torsional buckling, when everything else is checked.
void RecordTorsionalBuckling(const MemberModel& model, MemberResults& found);

} // namespace Keltrix::BS5950
