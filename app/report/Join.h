#pragma once

#include <string>
#include <string_view>

namespace Keltrix::App {

/// Puts an item behind a list in words, and the separator between it and what stands there already.
inline void AddItem(std::string& list, std::string_view separator, std::string_view item)
{
    if (!list.empty()) list += separator;
    list += item;
}

} // namespace Keltrix::App
