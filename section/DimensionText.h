#pragma once

#include "keltrix/platform/KxUtil.h"

namespace Keltrix::Steel {

/// Appends one line of a section's dimensions: the tab-led label, then the value.
inline void AddDimension(CString& text, const wchar_t* label, const CDesFormat& fmt, double metres)
{
    text += label;
    text += fmt.LengthSmall(metres);
    text += L'\n';
}

} // namespace Keltrix::Steel
