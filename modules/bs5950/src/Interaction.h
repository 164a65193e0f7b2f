#pragma once

#include "MemberModel.h"

namespace Keltrix::BS5950 {

/// Members under axial force and moments, and under moments about both axes: every combination of spans that have a stretch in common.
/// Their spans have been checked.
void CheckInteractions(const MemberModel& model, MemberResults& found);

} // namespace Keltrix::BS5950
