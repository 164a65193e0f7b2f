#pragma once

#include <clocale>
#include <ostream>
#include <string>

#include "keltrix/platform/CString.h"

namespace Keltrix {

/// How a failing assertion prints a text.
inline void PrintTo(const CString& text, std::ostream* out)
{
    *out << '"' << text.ToUtf8().value_or("(not well-formed)") << '"';
}

/// Sets a locale with a decimal comma for the whole process, where the machine has one, and takes it back at the end.
class CommaLocale {
public:
    CommaLocale()
    {
        for (const char* const name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "de_DE", "German"}) {
            if (!std::setlocale(LC_ALL, name)) continue;
            m_set = *std::localeconv()->decimal_point == ',';
            if (m_set) return;
        }
        std::setlocale(LC_ALL, "C");
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;
    ~CommaLocale() { std::setlocale(LC_ALL, "C"); }

    bool IsSet() const { return m_set; }

private:
    bool m_set = false;
};

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
