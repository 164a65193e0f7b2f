#pragma once

#include <string>
#include <string_view>

#include "check/DesignCodes.h"

namespace Keltrix::Host {

/// Takes the national choices of a TOML file into the settings: `base`, the annex whose choices hold where the file makes none, `title`, by which
/// reports call it, `combinations`, whose combinations of actions go with it, and the choices by their keys
/// (CodeDescription::nationalChoices). Throws BadInput with every fault, each with its file and line: unknown keys with the nearest one that
/// there is, values out of their range, texts that are no TOML.
void ReadAnnexFile(const std::string& name, std::string_view bytes, CodeChoice& choice);

} // namespace Keltrix::Host
