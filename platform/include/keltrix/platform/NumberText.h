#pragma once

#include <charconv>

#include "keltrix/platform/Export.h"

/// Numbers with a fraction as text and back: std::to_chars and std::from_chars, with the same digits where the standard library has neither for
/// them. Those of whole numbers are everywhere.
namespace Keltrix {

/// The fewest digits that are read back as the same number, in the shorter of the plain and the scientific form.
KELTRIX_PLATFORM_API std::to_chars_result WriteNumber(char* first, char* last, double value);
KELTRIX_PLATFORM_API std::to_chars_result WriteNumber(char* first, char* last, float value);
/// Those digits in the form `fixed` or `scientific`.
KELTRIX_PLATFORM_API std::to_chars_result WriteNumber(char* first, char* last, double value, std::chars_format form);
/// As printf's %f, %e and %g in the locale "C".
KELTRIX_PLATFORM_API std::to_chars_result WriteNumber(char* first, char* last, double value, std::chars_format form,
                                                      int precision);

/// The longest valid prefix, correctly rounded. `value` keeps what it has where there is no number, and where it is out of range.
KELTRIX_PLATFORM_API std::from_chars_result ReadNumber(const char* first, const char* last, double& value);
KELTRIX_PLATFORM_API std::from_chars_result ReadNumber(const char* first, const char* last, float& value);

} // namespace Keltrix
