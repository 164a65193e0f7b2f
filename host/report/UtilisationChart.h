#pragma once

#include <string>

#include "check/CheckedMember.h"

namespace Keltrix::Host {

/// A bar for each rule that was evaluated with an action, by its largest utilisation, against the limit 1.0; the governing check
/// is marked in words. Empty where no rule has a utilisation above zero.
std::string UtilisationSvg(const std::string& id, const CheckedMember& checked);

} // namespace Keltrix::Host
