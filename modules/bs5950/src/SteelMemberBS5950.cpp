#include "keltrix/bs5950/SteelMemberBS5950.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "MemberText.h"
#include "MomentDiagram.h"

namespace Keltrix::BS5950 {

using Steel::CMemberResult;

const wchar_t* LoadPatternName(LoadPattern pattern)
{
    switch (pattern) {
    case LoadPattern::None:
        return L"no moment";
    case LoadPattern::EndMoments:
        return L"end moments only";
    case LoadPattern::Uniform:
        return L"uniform load";
    case LoadPattern::CentralPoint:
        return L"central point load";
    case LoadPattern::PointLoads:
        return L"point loads";
    case LoadPattern::General:
        break;
    }
    return L"distributed and point loads together, or a load that varies";
}

CString CSteelMemberBS5950::DesOptName(int desOpt)
{
    return desOpt == MORE_EXACT ? L"BS 5950-1:2000 (more exact interaction)" : L"BS 5950-1:2000";
}

void CSteelMemberBS5950::PrepareInput()
{
    m_section = CSectionBS5950();
    m_grade = CSteelGrade();
    m_hasGrade = false;
    DropFindings();
}

bool CSteelMemberBS5950::SetKeltrixSec(const CSection& section)
{
    if (!m_section.SetKeltrixSec(section, Result())) return false;
    DropFindings();
    return true;
}

CSection CSteelMemberBS5950::GetKeltrixSec() const
{
    return const_cast<CSectionBS5950&>(m_section).GetKeltrixSec(); // the base's getter is not const and changes nothing
}

bool CSteelMemberBS5950::SetGrade(const CSteelGrade& grade)
{
    const Grade which = GradeFromName(grade.Name());
    if (which == Grade::None) return false;
    if (which == Grade::User && !MakeMaterial(grade, 0.0).IsValid()) return false;
    m_grade = grade;
    m_hasGrade = true;
    m_section.SetSteelDesignProp(grade);
    DropFindings();
    return true;
}

void CSteelMemberBS5950::DropFindings()
{
    m_ledger.Clear();
    m_assumptions.clear();
    m_positions.clear();
    m_spans.clear();
    m_interactions.clear();
    m_class = 0;
}

void CSteelMemberBS5950::Assume(const wchar_t* name, const wchar_t* text, double value)
{
    const auto known = [&](const Assumption& a) { return a.name == name; };
    if (std::none_of(m_assumptions.begin(), m_assumptions.end(), known)) m_assumptions.push_back({name, text, value});
}

// Nothing can be checked: every rule gets its entry, and the result says so.
void CSteelMemberBS5950::Refuse(const wchar_t* reason)
{
    DropFindings();
    for (int i = 0; i < static_cast<int>(Rule::COUNT); ++i) {
        LedgerEntry e;
        e.rule = static_cast<Rule>(i);
        e.clause = RuleClause(e.rule);
        e.reason = reason;
        m_ledger.Add(e);
    }
    if (!Result()) return;
    Result()->AddFlags(CMemberResult::NOT_CHECKED | CMemberResult::WARNING);
    if (Result()->TextEnabled()) Text(*this).Refusal(reason);
}

// Why nothing can be checked; null where everything is at hand.
const wchar_t* CSteelMemberBS5950::RefusalReason() const
{
    if (!m_section.HasSection()) return L"the member has no section that this standard covers";
    if (!m_hasGrade) return L"the member has no steel grade";
    if (!m_section.Steel().IsValid()) return m_section.Steel().refusal;
    if (!ValidateInputData()) return L"member points and sub-spans do not fit together";
    const SectionDesign design = m_section.Design();
    if (!(design.netGross > 0.0 && design.netGross <= 1.0))
        return L"the net to gross area ratio does not lie above 0 and up to 1";
    if (!(design.plasElas >= 1.0)) return L"the allowable plastic to elastic ratio lies below 1";
    if (!(EquivalentUniformMomentFactor().value_or(1.0) >= 0.0))
        return L"the equivalent uniform moment factor lies below 0 or is not a number";
    return nullptr;
}

bool CSteelMemberBS5950::Prepare()
{
    if (Result()) Result()->SetCurSubSpan(0);
    if (const wchar_t* reason = RefusalReason()) {
        Refuse(reason);
        return false;
    }
    CollectPositions();
    if (Result()) {
        Result()->IniDynaArray(2 * static_cast<int>(SubSpans().size()) + 2);
        SetLoads();
    }
    RecordGeneral();
    RecordAssumptions();
    return true;
}

void CSteelMemberBS5950::RecordGeneral()
{
    m_ledger.Drop(Stage::General);
    LedgerEntry strength;
    strength.rule = Rule::DesignStrength;
    strength.clause = m_section.Steel().grade == Grade::User ? L"3.1.1" : L"3.1.1, Table 9";
    strength.status = CheckStatus::Passed;
    strength.resistance = m_section.Steel().py;
    strength.symbol = L"py";
    strength.quantity = Quantity::Stress;
    m_ledger.Add(strength);
    const auto outside = [this](Rule rule, const wchar_t* why) {
        LedgerEntry e;
        e.rule = rule;
        e.clause = RuleClause(rule);
        e.reason = why;
        m_ledger.Add(e);
    };
    outside(Rule::SwayStability,
            L"a matter of the frame: forces and moments are taken as given, sway effects included");
    outside(Rule::WebBearing, L"the input has no stiff bearing lengths and no local loads");
    outside(Rule::Deflection, L"a serviceability limit; the input holds factored actions");
}

void CSteelMemberBS5950::RecordAssumptions()
{
    const Material& m = m_section.Steel();
    if (m_section.PlasElasAssumed())
        Assume(L"plastic to elastic limit", L"Mc limited to 1.2 py Z (4.2.5.1), none was given", 1.2);
    if (m_section.Design().plasElas > 1.5)
        Assume(L"plastic to elastic limit", L"Mc limited to 1.5 py Z (4.2.5.1), more was given", 1.5);
    if (m.keAssumed)
        Assume(L"Ke", L"effective net area coefficient 1.0: the grade gives no tensile strength (3.4.3)", 1.0);
    if (m.grade == Grade::User && m_grade.GetUserE() == 0.0)
        Assume(L"modulus of elasticity", L"205 kN/mm² (3.1.3), the grade gives none", ELASTIC_MODULUS);
    if (const wchar_t* note = FabricationNote(m_section.Properties())) Assume(L"fabrication", note, std::nan(""));
    const Shape shape = m_section.Properties().shape;
    if (shape == Shape::Channel || shape == Shape::Tee || shape == Shape::Angle)
        Assume(L"line of loading", L"loads act through the shear centre, so that bending causes no torsion",
               std::nan(""));
    const MomentDiagram major(MemberPoints(), SubSpans(), MomentDiagram::Component::Major);
    const MomentDiagram minor(MemberPoints(), SubSpans(), MomentDiagram::Component::Minor);
    for (int k = 0; k < static_cast<int>(SubSpans().size()); ++k)
        if (!major.IsParabolic(k) || !minor.IsParabolic(k))
            Assume(L"moment within sub-spans",
                   L"linear between the ends of sub-spans whose end moments do not belong to their shears",
                   std::nan(""));
}

void CSteelMemberBS5950::SetLoads()
{
    int loads = 0;
    for (const PositionResult& p : m_positions) {
        if (p.actions.F != 0.0) loads |= CMemberResult::LOAD_AXIAL;
        if (p.actions.Mx != 0.0 || p.actions.Fvy > 1.0) loads |= CMemberResult::LOAD_MAJOR;
        if (p.actions.My != 0.0 || p.actions.Fvx > 1.0) loads |= CMemberResult::LOAD_MINOR;
        if (std::abs(p.actions.Mt) > 1.0) loads |= CMemberResult::LOAD_TORSION;
    }
    Result()->SetLoadFlags(loads);
}

bool CSteelMemberBS5950::SetMemberPointVec(const std::vector<Steel::CMemberPoint>& points)
{
    DropFindings();
    return CSteelMemberGen::SetMemberPointVec(points);
}

bool CSteelMemberBS5950::SetSubSpanVec(const std::vector<Steel::CSubSpan>& subSpans)
{
    DropFindings();
    return CSteelMemberGen::SetSubSpanVec(subSpans);
}

bool CSteelMemberBS5950::Check()
{
    if (Result()) {
        Result()->SetCurSubSpan(0);
        if (Result()->TextEnabled()) ReportInput(GetSectionText(Result()->DesFormat()));
    }
    DropFindings();
    if (!Prepare()) return false;
    RunLocal(true);
    RunBuckling();
    return !m_ledger.HasFailed();
}

ResistanceSummary CSteelMemberBS5950::Resistances() const
{
    ResistanceSummary r;
    const auto weakest = [this](double PositionResult::*resistance) {
        double least = std::numeric_limits<double>::quiet_NaN();
        for (const PositionResult& p : m_positions)
            if (!(p.*resistance >= least)) least = p.*resistance;
        return least;
    };
    r.Pz = weakest(&PositionResult::Pz);
    r.Pt = weakest(&PositionResult::Pt);
    r.Pvx = weakest(&PositionResult::Pvx);
    r.Pvy = weakest(&PositionResult::Pvy);
    r.Mcx = weakest(&PositionResult::Mcx);
    r.Mcy = weakest(&PositionResult::Mcy);
    return r;
}

Steel::SubspanEffectiveLengthData CSteelMemberBS5950::GetEffectiveLengths() const
{
    using Entry = Steel::SubspanEffectiveLengthData::Entry;
    std::map<int, Entry> maps[3];
    for (const SpanResult& s : m_spans) {
        std::map<int, Entry>& map = maps[static_cast<int>(s.mode)];
        map.emplace(static_cast<int>(map.size()),
                    Entry(static_cast<std::size_t>(s.left), static_cast<std::size_t>(s.right - 1), s.start, s.end, s.LE,
                          s.radius));
    }
    return {maps[0], maps[1], maps[2]};
}

double CSteelMemberBS5950::UserFactor(double computed) const
{
    return EquivalentUniformMomentFactor().value_or(computed);
}

} // namespace Keltrix::BS5950
