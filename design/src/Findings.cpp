#include "keltrix/design/Findings.h"

namespace Keltrix::Design {

const wchar_t* StatusName(Status status)
{
    switch (status) {
    case Status::Passed:
        return L"pass";
    case Status::Failed:
        return L"fail";
    case Status::NotChecked:
        break;
    }
    return L"not checked";
}

} // namespace Keltrix::Design
