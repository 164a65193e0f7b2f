// A small design code built on the installed headers alone: elastic stress at the ends of every sub-span against the
// grade's design strength, sigma = |Fx|/A + |Myy|/Zxx + |Mzz|/Zyy <= py.
#include "YieldCode.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

using namespace Keltrix;
using namespace Keltrix::Steel;

class CYieldSection : public CDesSectGeomI {
public:
    CYieldSection* Clone() const override { return new CYieldSection(*this); }
};

class CYieldMember : public CSteelMemberGen {
public:
    CYieldMember* Clone() const override { return new CYieldMember(*this); }

    CString DesOptName(int) override { return L"Yield"; }
    void PrepareInput() override { Clear(); }
    bool SetKeltrixSec(const CSection& section) override
    {
        m_section = section;
        return m_geometry.SetKeltrixSec(section, Result());
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
        Result()->IniDynaArray(static_cast<int>(SubSpans().size()));
        int position = 0; // counted here: the numbers of a file may have gaps
        for (const CSubSpan& subSpan : SubSpans()) {
            Result()->SetCurSubSpan(position++);
            Result()->SetUtilLocalCombined(Utilisation(subSpan.GetForcesLeft(), subSpan.GetMomentsLeft()));
            Result()->SetUtilLocalCombined(Utilisation(subSpan.GetForcesRight(), subSpan.GetMomentsRight()));
        }
        return !Result()->HasFailed();
    }
    bool CheckBuckling() override { return true; }
    bool Check() override
    {
        if (!ValidateInputData()) return false;
        ReportInput(GetSectionText(Result()->DesFormat()));
        return CheckLocal(true) && CheckBuckling();
    }
    SubspanEffectiveLengthData GetEffectiveLengths() const override { return {{}, {}, {}}; }
    CString GetSectionText(const CDesFormat& fmt) const override
    {
        // The text operation of the geometry is not const, so it is asked of a copy, as a module's own would be.
        const std::unique_ptr<CDesSectGeom> copy(m_geometry.Clone());
        return copy->SectGeomString(fmt);
    }
    int SectionClass() const override { return 3; }

private:
    double Utilisation(const Vec3<double>& force, const Vec3<double>& moment) const
    {
        return (std::abs(force.x) / m_geometry.Area() + std::abs(moment.y) / m_geometry.Zxx() +
                std::abs(moment.z) / m_geometry.Zyy()) /
               m_grade.GetUserPy();
    }

    CSection m_section;
    CSteelGrade m_grade;
    CYieldSection m_geometry;
};

} // namespace

Keltrix::Steel::CSteelMember* NewYieldMember() { return new CYieldMember; }
