#pragma once

#include <functional>
#include <string_view>

namespace Keltrix::Host {

/// Takes a text piece by piece, so that it need not be in memory as a whole.
using TextSink = std::function<void(std::string_view)>;

} // namespace Keltrix::Host
