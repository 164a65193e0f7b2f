#pragma once

#include <string>
#include <string_view>

#include "beamfile/Toml.h"
#include "memberfile/Defect.h"

namespace Keltrix::Host {

/// What a TOML file says, or where it cannot be read.
struct SafeToml {
    toml::table root;
    LineNumber line = 0; ///< of the fault
    std::string fault;   ///< a part of a sentence; empty where the text was read
};

/// Reads TOML after a look at what toml++ does not read safely. Every file that a user gives is read so.
SafeToml ReadSafeToml(std::string_view bytes);

/// The same for a beam file: no larger than LARGEST_BEAM_FILE, and not a member file.
SafeToml ReadBeamToml(std::string_view bytes);

} // namespace Keltrix::Host
