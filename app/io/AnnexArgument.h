#pragma once

#include <string>

#include "check/DesignCodes.h"

namespace Keltrix::App {

/// Takes the annex that an argument names: one of the design code's, or a file of national choices, whose name ends in ".toml". Throws BadInput
/// for an unknown name, and for a file that cannot be used.
void ChooseAnnex(const std::string& text, Host::CodeChoice& choice, const std::string& subject = "--annex");

} // namespace Keltrix::App
