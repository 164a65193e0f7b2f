#pragma once

#include <string>
#include <string_view>

#include "beamfile/Toml.h"
#include "memberfile/Defect.h"

namespace Keltrix::Host {

/// What a beam file says, or where it cannot be read.
struct SafeToml {
    toml::table root;
    LineNumber line = 0; ///< of the fault
    std::string fault;   ///< a part of a sentence; empty where the text was read
};

/// Reads the bytes of a beam file, after a look at what toml++ does not read safely.
SafeToml ReadSafeToml(std::string_view bytes);

} // namespace Keltrix::Host
