#pragma once

#include "MemberCheck.h"

namespace Keltrix::EC3 {

/// Writes the steps of the findings, the assumptions and the ledger into the text of a result, and fills the findings' parts.
void WriteText(MemberCheck& check, Steel::CMemberResult& result);

} // namespace Keltrix::EC3
