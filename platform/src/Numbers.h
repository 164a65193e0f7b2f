#pragma once

#include <cstddef>
#include <string_view>

namespace Keltrix {

/// The real number that the longest valid prefix of the text writes, correctly rounded to T (double or float), and the
/// length of that prefix in `used`. A leading sign, "inf" and "nan" in any case are understood, hexadecimal is not.
/// 0 and a length of 0 where there is no number. Too large gives infinity, too small a subnormal number or zero.
template <class T>
T ReadReal(std::wstring_view text, std::size_t& used);

extern template double ReadReal<double>(std::wstring_view, std::size_t&);
extern template float ReadReal<float>(std::wstring_view, std::size_t&);

} // namespace Keltrix
