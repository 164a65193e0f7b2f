#include "keltrix/steel/SteelMember.h"

namespace Keltrix::Steel {

namespace {

/// The six actions at one end of a sub-span, a tab after each.
void AppendActions(CString& row, const Vec3<double>& force, const Vec3<double>& moment, const CDesFormat& fmt)
{
    for (const double f : {force.x, force.y, force.z})
        row += fmt.Force(f) + L"\t";
    for (const double m : {moment.x, moment.y, moment.z})
        row += fmt.Moment(m) + L"\t";
}

/// Two rows, one for each end. The end that a row describes is in bold. Ends are numbered from 0 here, while the member
/// points are numbered from 1: kept for compatibility.
void AppendSubSpanRows(CString& table, const CSubSpan& subSpan, const CDesFormat& fmt)
{
    const CString left = fmt.Int(subSpan.IndexCSS());
    const CString right = fmt.Int(subSpan.Get1Index());
    const CString restraint = subSpan.GetRestraint().Description(true);
    table += L"<b>" + left + L"</b>-" + right + L"L\t";
    AppendActions(table, subSpan.GetForcesLeft(), subSpan.GetMomentsLeft(), fmt);
    table += restraint + L"\n";
    table += left + L"-<b>" + right + L"</b>R\t";
    AppendActions(table, subSpan.GetForcesRight(), subSpan.GetMomentsRight(), fmt);
    table += restraint + L"\n";
}

} // namespace

void CSteelMemberGen::AddStringInput(const CString& sectionText) const
{
    if (CMemberResult::TextEnabled(m_pResult))
        m_pResult->AddOutputString(GetStringInput(sectionText, m_pResult->DesFormat()));
}

CString CSteelMemberGen::GetStringInput(const CString& sectionText, const CDesFormat& fmt) const
{
    const CString section = L"<h5>Section Data:</h5>\n" + CMemberResult::Tabify(sectionText, 1, true);
    const CString rest = L"<h5>Forces, Moments, Restraints, Effective Lengths and Calculation Overrides:</h5>\n" +
                         CMemberResult::Tabify(GetStringForcesMomentsAndRestraints(fmt) +
                                                   GetStringEffectiveLengthsInput(fmt) + GetStringOverridesInput(fmt),
                                               1, true);
    return L"<h4>Input Data:</h4>\n" + CMemberResult::Tabify(section + rest, 1, true);
}

CString CSteelMemberGen::GetStringForcesMomentsAndRestraints(const CDesFormat& fmt) const
{
    CString text = L"<h6>MemberPoints</h6>\n<table><align left>Ref\tPos\tRestraint\n";
    for (const CMemberPoint& point : m_vMemberPoints)
        text += fmt.Int(point.Get1Index()) + L"\t" + fmt.Length(point.GetPos()) + L"\t" +
                point.GetRestraint().Description(true) + L"\n";
    text += L"</align></table>\n";

    text += L"<h6>SubSpans</h6>\n<table>Ref\tFx\tFy\tFz\tMxx\tMyy\tMzz\tRestraint\n"
            L"<tablewrap><i>axial\tshear (min)\tshear (maj)\ttorsion\tmom (maj)\tmom (min)\t</i></tablewrap>\n";
    for (const CSubSpan& subSpan : m_vSubSpans)
        AppendSubSpanRows(text, subSpan, fmt);
    text += L"<tablebreak><blue><b>Note:</b> <i>forces and moments in ZMD Axes</i></blue></tablebreak></table>\n";
    return text;
}

CString CSteelMemberGen::GetStringEffectiveLengthsInput(const CDesFormat& fmt) const
{
    CString text = L"<h6>Effective Lengths</h6>\n";
    if (!LengthOverride()) return text + L"<i>to be calculated from restraints</i>\n";
    // The member's major axis yy is the section's x-x, its minor axis zz the section's y-y: the labels are the section's.
    const double length = Length();
    const CString lines = L"<i><blue>manually overridden...</blue></i>\n" +
                          EffectiveLengthOverrideString(fmt, L"xx", Lyy(), length) + L"\n" +
                          EffectiveLengthOverrideString(fmt, L"yy", Lzz(), length) + L"\n" +
                          EffectiveLengthOverrideString(fmt, L"lt", Llt(), length) + L"\n";
    return text + CMemberResult::Tabify(lines, 1, true);
}

CString CSteelMemberGen::EffectiveLengthOverrideString(const CDesFormat& fmt, const CString& axis, double value,
                                                       double memberLength)
{
    const CString symbol = L"L" + axis + L" = ";
    if (!(value < 0.0)) return symbol + fmt.Length(value);
    const double factor = -value;
    return symbol + L"(" + fmt.NoDim(factor) + L" * " + fmt.Length(memberLength) + L") = " +
           fmt.Length(factor * memberLength);
}

CString CSteelMemberGen::GetStringOverridesInput(const CDesFormat& fmt) const
{
    const auto line = [&fmt](const wchar_t* name, const std::optional<double>& factor, const wchar_t* remark) {
        return factor ? name + (L" has been overridden with a value of " + fmt.NoDim(*factor)) + remark : CString();
    };
    const wchar_t* const compressionOnly = L" (only applies when the member is in compression)\n";
    const CString lines =
        line(L"Equivalent Uniform Moment Factor", m_optEquivalentUniformMomentFactor, L"\n") +
        line(L"Moment Amplification Factor (strong axis)", m_optMomentAmplificationFactorStrongAxis, compressionOnly) +
        line(L"Moment Amplification Factor (weak axis)", m_optMomentAmplificationFactorWeakAxis, compressionOnly);
    return lines.IsEmpty() ? lines : L"<h6>Calculation Overrides</h6>\n" + lines;
}

} // namespace Keltrix::Steel
