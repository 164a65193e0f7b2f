#pragma once

#include "keltrix/bs5950/Results.h"
#include "keltrix/steel/MemberResult.h"

namespace Keltrix::BS5950 {

/// Which actions there are.
void WriteLoads(const MemberResults& found, Steel::CMemberResult& r);
/// Utilisations and flags of the cross-section, position by position.
void WriteLocal(const MemberResults& found, int subSpans, Steel::CMemberResult& r);
/// Utilisations and flags of the buckling checks. The record's last entry is the present one afterwards.
void WriteBuckling(const MemberResults& found, int subSpans, Steel::CMemberResult& r);

} // namespace Keltrix::BS5950
