#pragma once

#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Design {

inline bool IsVerticalSupport(const Steel::CMemberPoint& point)
{
    return point.GetRestraint().IsRestrained(Data::CRestraint::MAJOR_SHEAR, false);
}

} // namespace Keltrix::Design
