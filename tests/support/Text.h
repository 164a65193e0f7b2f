#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "keltrix/platform/CString.h"

/// Wide text for assertions: compared as UTF-8, so that a failure shows it, line breaks and tabs included.
namespace Keltrix::Steel::Test {

inline std::string Utf8(const CString& text) { return text.ToUtf8().value_or("<ill-formed text>"); }

inline CString Wide(std::string_view text) { return CString::FromUtf8(text).value_or(CString(L"<ill-formed text>")); }

} // namespace Keltrix::Steel::Test
