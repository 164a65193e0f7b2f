#include "keltrix/platform/NumberText.h"

#include <version>

#ifndef __cpp_lib_to_chars
#include "NumberTextPortable.h"
#endif

namespace Keltrix {

namespace {

#ifdef __cpp_lib_to_chars
namespace Chars = std;
#else
namespace Chars = Portable;
#endif

} // namespace

std::to_chars_result WriteNumber(char* first, char* last, double value) { return Chars::to_chars(first, last, value); }

std::to_chars_result WriteNumber(char* first, char* last, float value) { return Chars::to_chars(first, last, value); }

std::to_chars_result WriteNumber(char* first, char* last, double value, std::chars_format form)
{
    return Chars::to_chars(first, last, value, form);
}

std::to_chars_result WriteNumber(char* first, char* last, double value, std::chars_format form, int precision)
{
    return Chars::to_chars(first, last, value, form, precision);
}

std::from_chars_result ReadNumber(const char* first, const char* last, double& value)
{
    return Chars::from_chars(first, last, value);
}

std::from_chars_result ReadNumber(const char* first, const char* last, float& value)
{
    return Chars::from_chars(first, last, value);
}

} // namespace Keltrix
