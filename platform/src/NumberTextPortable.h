#pragma once

#include <charconv>

/// The functions of <charconv> for floating-point numbers on fast_float and fmt, for standard libraries that have none.
namespace Keltrix::Portable {

std::to_chars_result to_chars(char* first, char* last, double value);
std::to_chars_result to_chars(char* first, char* last, float value);
std::to_chars_result to_chars(char* first, char* last, double value, std::chars_format form);
std::to_chars_result to_chars(char* first, char* last, double value, std::chars_format form, int precision);
std::from_chars_result from_chars(const char* first, const char* last, double& value);
std::from_chars_result from_chars(const char* first, const char* last, float& value);

} // namespace Keltrix::Portable
