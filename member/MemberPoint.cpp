#include <string_view>

#include "keltrix/steel/MemberLayout.h"
#include "keltrix/steel/MemberResult.h"
#include "member/FieldText.h"

namespace Keltrix::Steel {

CString CMemberPoint::GetString(const CDesFormat& fmt) const
{
    const CString head = L"MemberPoint " + fmt.Int(m_i1Index) + L"\n";
    const CString body =
        L"Position: " + fmt.Length(m_dPos) + L"\n" + L"Point Restraint:\n" + m_restraint.GetString(fmt, true);
    return head + CMemberResult::Tabify(body, 1, true);
}

CString CMemberPoint::CSVTitleLine() { return L"Index,Position,Restraint int, Load height\n"; }

CString CMemberPoint::CSVLineOut() const
{
    CString line;
    line.Format(L"%i,%G,%s,%G\n", m_i1Index, m_dPos, m_restraint.Description(true), m_restraint.LoadHeight());
    return line;
}

void CMemberPoint::CSVLineIn(CString& line)
{
    std::wstring_view rest = line;
    m_i1Index = GetValueInt(rest);
    m_dPos = GetValueDouble(rest);
    TakeRestraint(rest, m_restraint);
    line = CString(rest);
}

} // namespace Keltrix::Steel
