#pragma once

#include <vector>

#include "MemberModel.h"

namespace Keltrix::BS5950 {

/// The steps of the calculation of each entry of a check's ledger, in its order; empty for those that nothing was calculated for.
std::vector<std::vector<Design::Step>> LedgerSteps(const MemberModel& model, const MemberResults& found);

} // namespace Keltrix::BS5950
