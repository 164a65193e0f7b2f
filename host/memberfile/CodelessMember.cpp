#include "memberfile/CodelessMember.h"

#include "sections/SectionShapes.h"

namespace Keltrix::Host {

bool CodelessMember::SetKeltrixSec(const CSection& section)
{
    m_section = section;
    return true;
}

bool CodelessMember::SetGrade(const CSteelGrade& grade)
{
    m_grade = grade;
    return true;
}

bool CodelessMember::Check()
{
    if (!ValidateInputData()) return false;
    if (Steel::CMemberResult::TextEnabled(Result())) ReportInput(GetSectionText(Result()->DesFormat()));
    return true;
}

CString CodelessMember::GetSectionText(const CDesFormat& fmt) const
{
    const CSecComp& component = m_section.Component(0);
    const CString description = component.Description(true);
    CString text = description.IsEmpty() ? CString(L"unknown section") : description;
    text += L"\nGrade " + m_grade.Name();
    if (m_grade.Name().CompareNoCase(L"User_defined") == 0) {
        text += L": Py = " + fmt.Stress(m_grade.GetUserPy()) + L", Pu = " + fmt.Stress(m_grade.GetUserPu()) +
                L", E = " + fmt.Stress(m_grade.GetUserE()) + L", material factor " + fmt.NoDim(m_grade.GetMatFactor());
    }
    text += L"\nNet to gross ratio " + fmt.NoDim(component.NetGross()) + L", allowable plastic to elastic ratio " +
            fmt.NoDim(component.PlasElas()) + L", shear lag factor " + fmt.NoDim(component.Beta()) + L"\n";
    if (const std::unique_ptr<Steel::CDesSectGeom> geometry = MakeGeometry(m_section))
        text += geometry->SectGeomString(fmt);
    return text;
}

} // namespace Keltrix::Host
