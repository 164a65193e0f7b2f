#pragma once

#include <limits>

#include "keltrix/design/Export.h"
#include "keltrix/platform/CString.h"

namespace Keltrix::Design {

/// What a check says of a member as a whole. A member has passed only where every rule that applies was evaluated and none
/// failed. NotChecked: nothing failed, but a rule that applies was not evaluated, or nothing was checked at all.
enum class Status { Passed, Failed, NotChecked };
/// "pass", "fail", "not checked"
KELTRIX_DESIGN_API const wchar_t* StatusName(Status status);

enum class WarningKind {
    UnbalancedForces, ///< the end moments of a sub-span do not belong to its shears
    LowMomentFactor   ///< an equivalent uniform moment factor was given that lies below any of the standard's tables
};

/// Something in the input that leaves the answer in doubt and that an engineer must see before he uses it.
struct Warning {
    WarningKind kind = WarningKind::UnbalancedForces;
    CString text;                                            ///< one sentence or more, complete in itself
    int subSpan = -1;                                        ///< counted from 0; -1 where it is of the member
    double start = std::numeric_limits<double>::quiet_NaN(); ///< m
    double end = std::numeric_limits<double>::quiet_NaN();
};

} // namespace Keltrix::Design
