// A design-code module in one page: a tie, checked for its stress against the strength that the user gives.

#include <iostream>

#include "keltrix/steel/Steel.h"

using namespace Keltrix;
using namespace Keltrix::Steel;

namespace {

class Tube : public CDesSectGeomCHS {
public:
    Tube* Clone() const override { return new Tube(*this); }
};

class TieMember : public CSteelMemberGen {
public:
    TieMember* Clone() const override { return new TieMember(*this); }
    CString DesOptName(int) override { return L"Example: stress in a tie"; }
    void PrepareInput() override { Clear(); }
    bool SetKeltrixSec(const CSection& section) override
    {
        m_section = section;
        return m_tube.SetKeltrixSec(section, Result()) && m_tube.Area() > 0.0;
    }
    CSection GetKeltrixSec() const override { return m_section; }
    bool SetGrade(const CSteelGrade& grade) override
    {
        m_grade = grade;
        return grade.GetUserPy() > 0.0;
    }
    CSteelGrade GetGrade() const override { return m_grade; }

    bool CheckLocal(bool) override
    {
        CMemberResult& result = *Result();
        result.IniDynaArray(static_cast<int>(SubSpans().size()) + 2);
        int position = 0; // counted here: the numbers of a file may have gaps
        for (const CSubSpan& subSpan : SubSpans()) {
            result.SetCurSubSpan(++position);
            const double tension = subSpan.GetForcesLeft().x;
            const double resistance = m_tube.Area() * m_grade.GetUserPy();
            result.SetUtilLocalAxial(tension / resistance);
            const CDesFormat& fmt = result.DesFormat();
            result.AddOutputString(L"F/(A py) = " + fmt.Force(tension) + L" / " + fmt.Force(resistance) + L" = <b>" +
                                   fmt.Util(tension / resistance) + L"</b>\n");
        }
        return !result.HasFailed();
    }

    bool CheckBuckling() override { return true; } // a tie does not buckle
    bool Check() override { return ValidateInputData() && CheckLocal(true) && CheckBuckling(); }
    SubspanEffectiveLengthData GetEffectiveLengths() const override { return {{}, {}, {}}; }
    CString GetSectionText(const CDesFormat& fmt) const override { return Tube(m_tube).SectGeomString(fmt); }
    int SectionClass() const override { return 0; }

private:
    CSection m_section;
    CSteelGrade m_grade;
    Tube m_tube;
};

const wchar_t* const INPUT = L"TITLE,Hanger\n"
                             L"SECTION,CHS 88.9x5,ROLLED\n"
                             L"GRADE,User_defined,290E6,430E6,205E9,1\n"
                             L"NET_TO_GROSS,1\n"
                             L"ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\n"
                             L"SHEAR_LAG_FACTOR,0.7\n"
                             L"EFFECTIVE_LENGTH_OVERRIDES,NO\n"
                             L"HEADINGS\n"
                             L"MEMBERPOINT,1,0,Pinned,0\n"
                             L"MEMBERPOINT,2,4,Pinned,0\n"
                             L"SUBSPAN,1,300E3,0,0,300E3,0,0,0,0,0,0,0,0,Free,0\n"
                             L"END\n";

} // namespace

int main()
{
    CMemberResult result;
    TieMember tie;
    CSteelGrade grade;
    std::cout << "read: " << (tie.CSVInputData(INPUT, grade) && tie.SetGrade(grade) ? "yes" : "no") << '\n';
    tie.SetResult(&result);
    std::cout << "passes: " << (tie.Check() ? "yes" : "no") << '\n';
    std::cout << "utilisation: " << result.DesFormat().Util(result.UtilOverAll()).ToUtf8().value() << '\n';
    result.SetCurSubSpan(1);
    const CString report = result.GetBrief();
    std::cout << report.Mid(report.Find(L"F/(A py)")).ToUtf8().value();
    return result.HasFailed() ? 1 : 0;
}
