// A design code in one file: tubes in tension, checked for their stress. docs/writing-a-design-code.md goes through it.

#include <cmath>

#include "keltrix/design/DesignCode.h"
#include "keltrix/steel/Steel.h"

using namespace Keltrix;
using namespace Keltrix::Steel;

namespace {

// The rules, by their numbers in the findings.
enum Rule { TENSION, COMPRESSION, BENDING };

// Places in the list of options and of annexes below.
enum Option : std::size_t { ENDS, HOLE };
enum Ends : std::size_t { WELDED = 1, BOLTED };
enum Annex : std::size_t { PLAIN, CAREFUL };

constexpr double E = 210e9;         // Pa
constexpr double LEAST_FORCE = 1.0; // N, and N·m: less is analysis noise

Design::CodeDescription MakeDescription()
{
    using Design::OptionKind;
    Design::CodeDescription d;
    d.id = L"tie";
    d.title = L"Ties by stress";
    d.edition = L"an example";
    d.options = {{OptionKind::Choice,
                  L"ends",
                  L"How the ends are connected: welded or bolted (90 % of the resistance)",
                  {{L"welded", L"the whole section"}, {L"bolted", L"90 % of it"}}},
                 {OptionKind::Length, L"hole", L"Width of a slot in the tube, m", {}, 0.001, 0.1}};
    d.annexes = {{L"plain", L"safety factor 1.0"}, {L"careful", L"safety factor 1.1"}};
    d.grades = {{L"S235", L"235 N/mm²"}, {L"User_defined", L"with the yield strength of the member file"}};
    d.families = {{L"circular hollow sections", L"hot finished or cold formed"}};
    d.scope = L"Tension; compression and bending are named and not evaluated";
    return d;
}

// The geometry class that the section properties of a tube come from.
class Tube : public CDesSectGeomCHS {
public:
    Tube* Clone() const override { return new Tube(*this); }
};

bool IsTube(const CSection& section)
{
    return (section.Component(0).Shape() & CSecGeom::SHAPE_MASK) == CSecGeom::SHAPE_CHS;
}

// Yield strength, Pa; 0 for a grade that the code does not take.
double YieldStrength(const CSteelGrade& grade)
{
    if (grade.Name().CompareNoCase(L"S235") == 0) return 235e6;
    const bool isUser = grade.Name().CompareNoCase(L"User_defined") == 0;
    return isUser && grade.GetUserPy() > 0.0 && std::isfinite(grade.GetUserPy()) ? grade.GetUserPy() : 0.0;
}

double Resistance(Tube& tube, const CSection& section, double strength, const Design::CodeSettings& settings)
{
    const double wall = section.Component(0).Dimension(0.0, CSecGeom::WEB_THICKNESS);
    const double area = std::fmax(0.0, tube.Area() - settings.Length(HOLE) * wall);
    const double ends = settings.Choice(ENDS) == BOLTED ? 0.9 : 1.0;
    return ends * area * strength / (settings.annex == CAREFUL ? 1.1 : 1.0);
}

class TieMember : public CSteelMemberGen, public Design::CodeMember {
public:
    explicit TieMember(const Design::CodeSettings& settings) : m_settings(settings) {}
    TieMember* Clone() const override { return new TieMember(*this); }
    CString DesOptName(int) override { return L"Ties by stress"; }

    // What the member is made of. Whatever changes it drops the findings.
    void PrepareInput() override
    {
        Clear();
        m_findings = {};
    }
    bool SetKeltrixSec(const CSection& section) override
    {
        m_findings = {};
        if (!IsTube(section) || !m_tube.SetKeltrixSec(section, Result()) || !(m_tube.Area() > 0.0)) return false;
        m_section = section;
        return true;
    }
    CSection GetKeltrixSec() const override { return m_section; }
    bool SetGrade(const CSteelGrade& grade) override
    {
        m_findings = {};
        if (!(YieldStrength(grade) > 0.0)) return false;
        m_grade = grade;
        return true;
    }
    CSteelGrade GetGrade() const override { return m_grade; }

    bool CheckLocal(bool) override
    {
        m_findings = {};
        m_compressed = m_bent = false;
        if (!ValidateInputData())
            return Refuse(Design::Subject::Member, L"member points and sub-spans do not fit together");
        if (!IsTube(m_section)) return Refuse(Design::Subject::Section, L"the member has no tube");
        if (!(YieldStrength(m_grade) > 0.0)) return Refuse(Design::Subject::Grade, L"the member has no grade");
        m_findings.designStrength = {L"fy", Design::Quantity::Stress, YieldStrength(m_grade)};
        CheckPositions();
        Record();
        return m_findings.status == Design::Status::Passed;
    }
    // A tie does not buckle; what compresses it is among the rules of CheckLocal.
    bool CheckBuckling() override { return m_findings.status == Design::Status::Passed; }
    bool Check() override
    {
        if (Result() && Result()->TextEnabled()) ReportInput(GetSectionText(Result()->DesFormat()));
        return CheckLocal(true) && CheckBuckling();
    }

    SubspanEffectiveLengthData GetEffectiveLengths() const override { return {{}, {}, {}}; }
    CString GetSectionText(const CDesFormat& fmt) const override { return Tube(m_tube).SectGeomString(fmt); }
    int SectionClass() const override { return m_findings.rules.empty() ? 0 : 1; }

    CSteelMemberGen& Member() override { return *this; }
    Design::MemberFindings Findings() const override { return m_findings; }

private:
    TieMember(const TieMember&) = default;

    bool Refuse(Design::Subject subject, const wchar_t* reason)
    {
        m_findings.refusal = {subject, reason};
        if (Result()) Result()->AddFlags(CMemberResult::NOT_CHECKED | CMemberResult::WARNING);
        return false;
    }

    // Both ends of each sub-span: entries 1, 2, ... of the result. The utilisation is that of the force there.
    void CheckPositions()
    {
        const double resistance = Resistance(m_tube, m_section, YieldStrength(m_grade), m_settings);
        m_findings.resistances = {{L"Nt", Design::Quantity::Force, resistance}};
        if (Result()) Result()->IniDynaArray(2 * static_cast<int>(SubSpans().size()) + 2);
        for (std::size_t k = 0; k < SubSpans().size(); ++k) {
            const CSubSpan& subSpan = SubSpans()[k];
            Position(k, MemberPoints()[k].GetPos(), Design::Place::LeftEnd, subSpan.GetForcesLeft(),
                     subSpan.GetMomentsLeft());
            Position(k, MemberPoints()[k + 1].GetPos(), Design::Place::RightEnd, subSpan.GetForcesRight(),
                     subSpan.GetMomentsRight());
        }
    }

    void Position(std::size_t subSpan, double x, Design::Place place, const Vec3<double>& force,
                  const Vec3<double>& moment)
    {
        const double resistance = m_findings.resistances.front().value;
        Design::LocalFinding f;
        f.x = x;
        f.subSpan = static_cast<int>(subSpan);
        f.place = place;
        f.axial = f.combined = force.x > 0.0 ? force.x / resistance : 0.0;
        f.hasTorsion = moment.x != 0.0;
        m_findings.positions.push_back(f);
        // Not-a-number is beyond any limit.
        m_compressed = m_compressed || !(force.x >= -LEAST_FORCE);
        for (const double other : {force.y, force.z, moment.x, moment.y, moment.z})
            m_bent = m_bent || !(std::abs(other) <= LEAST_FORCE);
        if (!Result()) return;
        Result()->SetCurSubSpan(static_cast<int>(m_findings.positions.size()));
        Result()->SetUtilLocalAxial(f.axial);
        if (!Result()->TextEnabled()) return;
        const CDesFormat& fmt = Result()->DesFormat();
        Result()->AddOutputString(L"At " + fmt.Length(x) + L": Ft/Nt = " + fmt.Force(force.x) + L"/" +
                                  fmt.Force(resistance) + L" = <b>" + fmt.Util(f.axial) + L"</b>\n");
    }

    // One finding for each rule. What was not evaluated keeps the member from passing.
    void Record()
    {
        Design::RuleFinding tension;
        tension.rule = TENSION;
        tension.name = L"tension";
        tension.clause = L"1.1";
        tension.symbol = L"Nt";
        tension.quantity = Design::Quantity::Force;
        tension.resistance = m_findings.resistances.front().value;
        for (const Design::LocalFinding& f : m_findings.positions) {
            if (f.axial <= tension.utilisation) continue;
            tension.utilisation = f.axial;
            tension.start = tension.end = f.x;
        }
        tension.status = tension.utilisation <= 1.0 ? Design::CheckStatus::Passed : Design::CheckStatus::Failed;
        tension.governing = tension.utilisation > 0.0;
        m_findings.rules = {tension,
                            Absent(COMPRESSION, L"compression", L"1.2", m_compressed, L"the member is compressed"),
                            Absent(BENDING, L"bending, shear and torsion", L"1.3", m_bent, L"shears or moments act")};
        const bool isOpen = m_compressed || m_bent;
        const bool fails = tension.status == Design::CheckStatus::Failed;
        m_findings.status = fails    ? Design::Status::Failed
                            : isOpen ? Design::Status::NotChecked
                                     : Design::Status::Passed;
        if (isOpen && Result()) Result()->AddFlags(CMemberResult::NOT_CHECKED | CMemberResult::WARNING);
    }

    static Design::RuleFinding Absent(Rule rule, const wchar_t* name, const wchar_t* clause, bool acts,
                                      const wchar_t* why)
    {
        Design::RuleFinding f;
        f.rule = rule;
        f.name = name;
        f.clause = clause;
        f.status = acts ? Design::CheckStatus::NotEvaluated : Design::CheckStatus::NotApplicable;
        f.reason = acts ? why : L"nothing of the kind acts";
        return f;
    }

    Design::CodeSettings m_settings;
    CSection m_section;
    CSteelGrade m_grade;
    Tube m_tube;
    Design::MemberFindings m_findings;
    bool m_compressed = false;
    bool m_bent = false;
};

class TieCode : public Design::DesignCode {
public:
    const Design::CodeDescription& Description() const override { return m_description; }
    std::unique_ptr<Design::CodeMember> NewMember(const Design::CodeSettings& settings) const override
    {
        return std::make_unique<TieMember>(settings);
    }
    bool HasGrade(const CString& name) const override
    {
        return name.CompareNoCase(L"S235") == 0 || name.CompareNoCase(L"User_defined") == 0;
    }
    bool IsUserGrade(const CSteelGrade& grade) const override
    {
        return grade.Name().CompareNoCase(L"User_defined") == 0;
    }
    CString GradeRefusal(const CSteelGrade& grade) const override
    {
        return YieldStrength(grade) > 0.0 ? L"" : L"the grade has no yield strength above 0";
    }
    CString SectionRefusal(const CSection& section) const override
    {
        return IsTube(section) ? L"" : L"the section is no circular hollow section";
    }
    double ElasticModulus(const CSteelGrade&) const override { return E; }
    double ShearModulus(const CSteelGrade&) const override { return E / 2.6; }

    Design::CapacityTable Capacities(const CSection& section, const CSteelGrade& grade, const std::vector<double>&,
                                     const Design::CodeSettings& settings) const override
    {
        Design::CapacityTable table;
        table.refusal = SectionRefusal(section);
        if (table.refusal.IsEmpty()) table.refusal = GradeRefusal(grade);
        Tube tube;
        if (!table.refusal.IsEmpty() || !tube.SetKeltrixSec(section, nullptr)) return table;
        table.designStrength = {L"fy", Design::Quantity::Stress, YieldStrength(grade)};
        table.fabrication = L"as it is";
        table.crossSection = {
            {{L"Nt", Design::Quantity::Force, Resistance(tube, section, YieldStrength(grade), settings)}, 4}};
        return table;
    }

private:
    const Design::CodeDescription m_description = MakeDescription();
};

const Design::DesignCode& TheCode()
{
    static const TieCode code;
    return code;
}

} // namespace

KELTRIX_DESIGN_CODE_MODULE(TheCode())
