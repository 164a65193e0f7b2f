#pragma once

#include <string>
#include <string_view>

namespace Keltrix::Host {

/// Appends an item to a list in words, with the separator before it unless the list is empty.
inline void AddItem(std::string& list, std::string_view separator, std::string_view item)
{
    if (!list.empty()) list += separator;
    list += item;
}

} // namespace Keltrix::Host
