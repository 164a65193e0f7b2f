#pragma once

#include "text/JsonFwd.h"

namespace Keltrix::Host {

/// What each design code of this process says of itself, as `ksteel codes --format json` writes it: title, edition, scope, families, grades,
/// annexes, options.
Json CodesJson();

} // namespace Keltrix::Host
