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
    AppendFields(line, *this);
    return line;
}

void CMemberPoint::CSVLineIn(CString& line)
{
    std::wstring_view rest = line;
    TakeFields(rest, *this);
    line = CString(rest);
}

void AppendFields(CString& text, const CMemberPoint& point)
{
    NumberFields().Put(point.Get1Index(), ',').Put(point.GetPos(), ',').AppendTo(text);
    AppendRestraint(text, point.GetRestraint());
}

void TakeFields(std::wstring_view& line, CMemberPoint& point)
{
    point.Set1Index(GetValueInt(line));
    point.SetPos(GetValueDouble(line));
    CRestraint restraint = point.GetRestraint();
    TakeRestraint(line, restraint);
    point.SetRestraint(restraint);
}

} // namespace Keltrix::Steel
