#pragma once

#include "keltrix/bs5950/Export.h"
#include "keltrix/design/DesignCode.h"

namespace Keltrix::BS5950 {

/// The standard as a host takes it: one object for the whole process. Its members are CSteelMemberBS5950.
KELTRIX_BS5950_API const Design::DesignCode& Code();

} // namespace Keltrix::BS5950
