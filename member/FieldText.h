#pragma once

#include <string_view>

#include "keltrix/platform/CString.h"
#include "keltrix/platform/KxUtil.h"
#include "keltrix/steel/Restraint.h"

namespace Keltrix::Steel {

/// Takes the last two fields of a member point or sub-span line: the restraint, as a description or, where it is none, as a
/// number of restraint bits; and the load height, which is read in single precision (kept for compatibility, so a height of
/// more than about seven digits comes back rounded).
inline void TakeRestraint(std::wstring_view& line, Data::CRestraint& restraint)
{
    const CString text(GetSubString(line));
    if (!restraint.SetDescription(text)) {
        int bits = 0;
        StringTo(text, bits);
        restraint.SetRestFlag(bits);
    }
    restraint.SetLoadHeight(GetValueFloat(line));
}

} // namespace Keltrix::Steel
