#include <string_view>

#include "keltrix/steel/MemberLayout.h"
#include "keltrix/steel/MemberResult.h"
#include "member/Envelope.h"
#include "member/FieldText.h"

namespace Keltrix::Steel {

namespace {

/// Caption and values of the force and the moment at one end. The caption of the force follows the end's label on the same
/// line, which is the required layout.
CString EndText(const wchar_t* label, const Vec3<double>& force, const Vec3<double>& moment, const CDesFormat& fmt)
{
    CString text = label;
    text += L"\tForce <i>(x,y,z in ZMD element axes):</i>\n\t";
    text += fmt.Force(force.x) + L",\t" + fmt.Force(force.y) + L",\t" + fmt.Force(force.z) + L"\n";
    text += L"\tMoment <i>(xx,yy,zz in ZMD element axes):</i>\n\t";
    text += fmt.Moment(moment.x) + L",\t" + fmt.Moment(moment.y) + L",\t" + fmt.Moment(moment.z) + L"\n";
    return text;
}

Vec3<double> TakeVector(std::wstring_view& line)
{
    const double x = GetValueDouble(line);
    const double y = GetValueDouble(line);
    const double z = GetValueDouble(line);
    return {x, y, z};
}

} // namespace

CString CSubSpan::GetString(const CDesFormat& fmt) const
{
    const CString head = L"SubSpan " + fmt.Int(m_i1Index) + L"\n";
    const CString body = EndText(L"LH end:", m_vForceL, m_vMomentL, fmt) +
                         EndText(L"RH end:", m_vForceR, m_vMomentR, fmt) + L"Span Restraint:\n" +
                         m_restraint.GetString(fmt, true);
    return head + CMemberResult::Tabify(body, 1, true);
}

CString CSubSpan::CSVTitleLine()
{
    return L"Index,Fx-L,Fy-L,Fz-L,Fx-R,Fy-R,Fz-R,Mx-L,My-L,Mz-L,Mx-R,My-R,Mz-R,Restraint,Load height\n";
}

CString CSubSpan::CSVLineOut() const
{
    CString line;
    AppendFields(line, *this);
    return line;
}

void CSubSpan::CSVLineIn(CString line)
{
    std::wstring_view rest = line;
    TakeFields(rest, *this);
}

void AppendFields(CString& text, const CSubSpan& subSpan)
{
    NumberFields()
        .Put(subSpan.Get1Index(), ',')
        .Put(subSpan.GetForcesLeft())
        .Put(subSpan.GetForcesRight())
        .Put(subSpan.GetMomentsLeft())
        .Put(subSpan.GetMomentsRight())
        .AppendTo(text);
    AppendRestraint(text, subSpan.GetRestraint());
}

void TakeFields(std::wstring_view& line, CSubSpan& subSpan)
{
    subSpan.Set1Index(GetValueInt(line));
    subSpan.SetForcesLeft(TakeVector(line));
    subSpan.SetForcesRight(TakeVector(line));
    subSpan.SetMomentsLeft(TakeVector(line));
    subSpan.SetMomentsRight(TakeVector(line));
    CRestraint restraint = subSpan.GetRestraint();
    TakeRestraint(line, restraint);
    subSpan.SetRestraint(restraint);
}

Vec3<double> CSubSpan::Max(const Vec3<double>& a, const Vec3<double>& b) { return PickEach<LargerOrFirst>(a, b); }

Vec3<double> CSubSpan::Min(const Vec3<double>& a, const Vec3<double>& b) { return PickEach<SmallerOrFirst>(a, b); }

CSubSpan CSubSpan::Max(const CSubSpan& a, const CSubSpan& b)
{
    CSubSpan envelope;
    envelope.SetForcesAll(Max(a.m_vForceL, b.m_vForceL), Max(a.m_vForceR, b.m_vForceR));
    envelope.SetMomentsAll(Max(a.m_vMomentL, b.m_vMomentL), Max(a.m_vMomentR, b.m_vMomentR));
    return envelope;
}

CSubSpan CSubSpan::Min(const CSubSpan& a, const CSubSpan& b)
{
    CSubSpan envelope;
    envelope.SetForcesAll(Min(a.m_vForceL, b.m_vForceL), Min(a.m_vForceR, b.m_vForceR));
    envelope.SetMomentsAll(Min(a.m_vMomentL, b.m_vMomentL), Min(a.m_vMomentR, b.m_vMomentR));
    return envelope;
}

bool CSubSpan::operator==(const CSubSpan& other) const
{
    return m_i1Index == other.m_i1Index && m_restraint == other.m_restraint && m_vForceL == other.m_vForceL &&
           m_vForceR == other.m_vForceR && m_vMomentL == other.m_vMomentL && m_vMomentR == other.m_vMomentR;
}

} // namespace Keltrix::Steel
