#pragma once

#include <ostream>
#include <string>

#include "keltrix/platform/CString.h"

namespace Keltrix {

/// How a failing assertion prints a text.
inline void PrintTo(const CString& text, std::ostream* out)
{
    *out << '"' << text.ToUtf8().value_or("(not well-formed)") << '"';
}

/// The bits tell 0 from -0 and compare equal for not-a-number.
template <class To, class From>
To BitsOf(From value)
{
    static_assert(sizeof(To) == sizeof(From));
    To bits;
    std::char_traits<char>::copy(reinterpret_cast<char*>(&bits), reinterpret_cast<const char*>(&value), sizeof(To));
    return bits;
}

} // namespace Keltrix
