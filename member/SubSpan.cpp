#include <string_view>

#include "keltrix/steel/MemberLayout.h"
#include "keltrix/steel/MemberResult.h"
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

void AppendVector(CString& line, const Vec3<double>& v) { line.AppendFormat(L"%G,%G,%G,", v.x, v.y, v.z); }

Vec3<double> TakeVector(std::wstring_view& line)
{
    const double x = GetValueDouble(line);
    const double y = GetValueDouble(line);
    const double z = GetValueDouble(line);
    return {x, y, z};
}

double LargerOrFirst(double a, double b) { return a < b ? b : a; }
double SmallerOrFirst(double a, double b) { return b < a ? b : a; }

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
    line.Format(L"%i,", m_i1Index);
    AppendVector(line, m_vForceL);
    AppendVector(line, m_vForceR);
    AppendVector(line, m_vMomentL);
    AppendVector(line, m_vMomentR);
    line.AppendFormat(L"%s,%G\n", m_restraint.Description(true), m_restraint.LoadHeight());
    return line;
}

void CSubSpan::CSVLineIn(CString line)
{
    std::wstring_view rest = line;
    m_i1Index = GetValueInt(rest);
    m_vForceL = TakeVector(rest);
    m_vForceR = TakeVector(rest);
    m_vMomentL = TakeVector(rest);
    m_vMomentR = TakeVector(rest);
    TakeRestraint(rest, m_restraint);
}

Vec3<double> CSubSpan::Max(const Vec3<double>& a, const Vec3<double>& b)
{
    return {LargerOrFirst(a.x, b.x), LargerOrFirst(a.y, b.y), LargerOrFirst(a.z, b.z)};
}

Vec3<double> CSubSpan::Min(const Vec3<double>& a, const Vec3<double>& b)
{
    return {SmallerOrFirst(a.x, b.x), SmallerOrFirst(a.y, b.y), SmallerOrFirst(a.z, b.z)};
}

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
