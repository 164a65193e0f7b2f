#pragma once

#include "keltrix/stability/CriticalLoad.h"

namespace Keltrix::Stability {

/// Why the critical load of a unit cannot be used in a design: how its moments are applied is not known, restraints were left out, or its
/// estimated error is above 1 %. Null where it can be used, and where the unit is not held, which no moments change. The text is static.
KELTRIX_STABILITY_API const wchar_t* DesignRefusal(const Unit& unit);

} // namespace Keltrix::Stability
