#pragma once

#include "keltrix/design/DesignCode.h"
#include "keltrix/ec3/Export.h"

namespace Keltrix::EC3 {

/// The standard as a host takes it: one object for the whole process. Its members are CSteelMemberEC3.
KELTRIX_EC3_API const Design::DesignCode& Code();

} // namespace Keltrix::EC3
