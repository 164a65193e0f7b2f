#pragma once

#include <string_view>
#include <vector>

namespace Keltrix {

/// The CSV texts of platform/catalogue, in the order of the build's list. The source is generated at build time.
std::vector<std::string_view> BuiltInCatalogue();

} // namespace Keltrix
