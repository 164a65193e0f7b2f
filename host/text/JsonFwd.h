#pragma once

#include <nlohmann/json_fwd.hpp>

namespace Keltrix::Host {

/// JSON whose members keep the order in which they were written.
using Json = nlohmann::ordered_json;

} // namespace Keltrix::Host
