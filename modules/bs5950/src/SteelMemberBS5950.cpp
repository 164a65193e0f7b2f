#include "keltrix/bs5950/SteelMemberBS5950.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "MemberText.h"
#include "keltrix/design/MemberInput.h"

namespace Keltrix::BS5950 {

using Design::Subject;
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

void CSteelMemberBS5950::SetOptions(const DesignOptions& options)
{
    m_options = options;
    DropFindings();
}

void CSteelMemberBS5950::DropFindings()
{
    m_ledger.Clear();
    m_assumptions.clear();
    m_warnings.clear();
    m_positions.clear();
    m_webLoads.clear();
    m_spans.clear();
    m_interactions.clear();
    m_units.clear();
    m_elasticReason = CString();
    m_parts.clear();
    m_refusal = {};
    m_class = 0;
}

void CSteelMemberBS5950::Assume(const wchar_t* name, const wchar_t* text, double value)
{
    const auto known = [&](const Assumption& a) { return a.name == name; };
    if (std::none_of(m_assumptions.begin(), m_assumptions.end(), known)) m_assumptions.push_back({name, text, value});
}

// Nothing can be checked: every rule gets its entry, and the result says so.
void CSteelMemberBS5950::Refuse(const Design::Refusal& refusal)
{
    DropFindings();
    m_refusal = refusal;
    for (int i = 0; i < static_cast<int>(Rule::COUNT); ++i) {
        LedgerEntry e;
        e.rule = static_cast<Rule>(i);
        e.clause = RuleClause(e.rule);
        e.reason = refusal.reason;
        m_ledger.Add(e);
    }
    if (!Result()) return;
    Result()->AddFlags(CMemberResult::NOT_CHECKED | CMemberResult::WARNING);
    if (Result()->TextEnabled()) Text(*this).Refusal(refusal.reason);
}

// Why nothing can be checked; Subject::None where everything is at hand.
Design::Refusal CSteelMemberBS5950::FindRefusal() const
{
    if (!m_section.HasSection()) return {Subject::Section, L"the member has no section that this standard covers"};
    if (!m_hasGrade) return {Subject::Grade, L"the member has no steel grade"};
    if (const wchar_t* reason = m_section.Steel().refusal) {
        constexpr double thin = 0.001; // m, within Table 9 for every grade
        return {MakeMaterial(m_grade, thin).IsValid() ? Subject::Section : Subject::Grade, reason};
    }
    if (const Design::Refusal refusal =
            Design::NumbersRefusal(MemberPoints(), SubSpans(), EquivalentUniformMomentFactor());
        refusal.subject != Subject::None)
        return refusal;
    if (!ValidateInputData()) return {Subject::Member, L"member points and sub-spans do not fit together"};
    const SectionDesign design = m_section.Design();
    if (!(design.netGross > 0.0 && design.netGross <= 1.0))
        return {Subject::NetToGross, L"the net to gross area ratio does not lie above 0 and up to 1"};
    if (!(design.plasElas >= 1.0))
        return {Subject::PlasticToElastic, L"the allowable plastic to elastic ratio lies below 1"};
    return {};
}

bool CSteelMemberBS5950::Prepare()
{
    if (Result()) Result()->SetCurSubSpan(0);
    if (const Design::Refusal refusal = FindRefusal(); refusal.subject != Subject::None) {
        Refuse(refusal);
        return false;
    }
    MakeDiagrams();
    FindElasticUnits();
    CollectPositions();
    if (Result()) {
        Result()->IniDynaArray(2 * static_cast<int>(SubSpans().size()) + 2);
        SetLoads();
    }
    RecordGeneral();
    RecordAssumptions();
    RecordWarnings();
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
    RecordOutside();
}

// What the input does not hold, and what its kind of member does not need.
void CSteelMemberBS5950::RecordOutside()
{
    const auto add = [this](Rule rule, CheckStatus status, const wchar_t* why) {
        LedgerEntry e;
        e.rule = rule;
        e.clause = RuleClause(rule);
        e.status = status;
        e.reason = why;
        m_ledger.Add(e);
    };
    const auto outside = [&](Rule rule, const wchar_t* why) { add(rule, CheckStatus::OutOfScope, why); };
    const auto absent = [&](Rule rule, const wchar_t* why) { add(rule, CheckStatus::NotApplicable, why); };
    outside(Rule::SwayStability,
            L"a matter of the frame: forces and moments are taken as given, sway effects included");
    outside(Rule::Robustness, L"a matter of the structure: ties and key elements");
    outside(Rule::Fatigue, L"the input holds one set of actions, no cycles");
    outside(Rule::BrittleFracture, L"the input has no quality of the steel at its thickness, temperature and details");
    outside(Rule::Deflection, L"a serviceability limit; the input holds factored actions");
    outside(Rule::Vibration, L"a serviceability limit; the input holds no masses");
    outside(Rule::Restraints, L"the strength and stiffness of what restrains the member are not part of the input");
    outside(Rule::Connections, L"connections are not part of the input");
    outside(Rule::WebOpenings, L"the section is taken without openings; holes count by the net area alone");
    absent(Rule::CompoundStruts, L"the member is one section, not laced, battened or back to back");
    absent(
        Rule::TensionFlange,
        UsesElastic()
            ? L"an alternative that is not used: the elastic critical moment has restraints of the tension flange in it"
            : L"an alternative that is not used: each compressed flange is checked between the sections that hold it");
    const bool angle = m_section.Properties().shape == Shape::Angle;
    absent(Rule::AngleInteraction, angle ? L"not used: angles are judged about their principal axes by 4.3.8 and "
                                           L"4.8.3.3.1, all terms with the worse sign"
                                         : L"not an angle");
    absent(Rule::SimpleColumn, m_options.simpleColumn
                                   ? L"takes the place of the rules of lateral-torsional buckling and interaction, and "
                                     L"stands there"
                                   : L"the options do not say that the member is a column in simple construction");
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
    std::erase_if(m_assumptions, [](const Assumption& a) { return a.isLoad; });
    Design::AssumeUniformLoads(m_major, m_minor, m_assumptions);
}

void CSteelMemberBS5950::RecordWarnings()
{
    m_warnings.clear();
    const CDesFormat fmt = Result() ? Result()->DesFormat() : CDesFormat();
    Design::WarnOfUnbalancedForces(m_major, m_minor, fmt, m_warnings);
    const double factor = EquivalentUniformMomentFactor().value_or(1.0);
    if (factor < 0.4) {
        CString text;
        text.Format(
            L"the equivalent uniform moment factor is given as %s; no table of the standard has one below 0.4 (Tables "
            L"18 and 26)",
            fmt.NoDim(factor));
        m_warnings.push_back({Design::WarningKind::LowMomentFactor, text, -1, std::nan(""), std::nan("")});
    }
    RecordElasticWarnings();
    if (m_warnings.empty() || !Result()) return;
    Result()->AddFlags(CMemberResult::WARNING);
    if (Result()->TextEnabled()) Text(*this).Warnings();
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
    return Status() == Design::Status::Passed;
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

namespace {

Design::RuleFinding FindingOf(const LedgerEntry& e)
{
    return {static_cast<int>(e.rule),
            RuleName(e.rule),
            e.clause,
            e.status,
            e.reason,
            e.start,
            e.end,
            e.utilisation,
            e.resistance,
            e.symbol,
            e.quantity,
            e.governing,
            e.slenderness,
            RuleTopic(e.rule)};
}

Design::LocalFinding FindingOf(const PositionResult& p)
{
    return {p.x,          p.subSpan,
            p.place,      p.combined,
            p.axial,      p.major,
            p.minor,      std::max(p.shearMajor, p.shearBuckling),
            p.shearMinor, p.actions.Mt != 0.0};
}

Design::SpanFinding FindingOf(const SpanResult& s)
{
    Design::SpanFinding finding{s.start, s.end, {}};
    const bool isMoment = s.mode == BucklingMode::LateralTorsional;
    finding.resistance.symbol = isMoment ? L"Mb" : s.mode == BucklingMode::Major ? L"Pcx" : L"Pcy";
    finding.resistance.quantity = isMoment ? Quantity::Moment : Quantity::Force;
    if (s.resistance > 0.0) finding.resistance.value = s.resistance;
    return finding;
}

} // namespace

Design::MemberFindings CSteelMemberBS5950::Findings() const
{
    Design::MemberFindings findings;
    findings.status = Status();
    findings.refusal = m_refusal;
    findings.designStrength = {L"py", Quantity::Stress, DesignStrength()};
    findings.momentFactor = EquivalentUniformMomentFactor();
    findings.rules.reserve(m_ledger.Entries().size());
    for (const LedgerEntry& entry : m_ledger.Entries())
        findings.rules.push_back(FindingOf(entry));
    for (const LedgerEntry& entry : Information())
        findings.rules.push_back(FindingOf(entry));
    findings.assumptions = m_assumptions;
    findings.warnings = m_warnings;
    findings.positions.reserve(m_positions.size());
    for (const PositionResult& position : m_positions)
        findings.positions.push_back(FindingOf(position));
    const ResistanceSummary r = Resistances();
    findings.resistances = {{L"Pz", Quantity::Force, r.Pz},    {L"Pt", Quantity::Force, r.Pt},
                            {L"Pvx", Quantity::Force, r.Pvx},  {L"Pvy", Quantity::Force, r.Pvy},
                            {L"Mcx", Quantity::Moment, r.Mcx}, {L"Mcy", Quantity::Moment, r.Mcy}};
    findings.spans.reserve(m_spans.size() + m_interactions.size());
    for (const SpanResult& span : m_spans)
        findings.spans.push_back(FindingOf(span));
    for (const InteractionResult& interaction : m_interactions)
        findings.spans.push_back({interaction.start, interaction.end, {}, true});
    // The record gives its text entry by entry.
    std::vector<std::pair<int, Design::CalculationPart>> parts = m_parts;
    std::stable_sort(parts.begin(), parts.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [entry, part] : parts)
        findings.parts.push_back(part);
    return findings;
}

Steel::SubspanEffectiveLengthData CSteelMemberBS5950::GetEffectiveLengths() const
{
    using Entry = Steel::SubspanEffectiveLengthData::Entry;
    std::map<int, Entry> maps[3];
    for (const SpanResult& s : m_spans) {
        const bool unchecked = s.mode == BucklingMode::LateralTorsional && s.flange[0] != s.flange[1] &&
                               !s.compressed[0] && !s.compressed[1];
        if (s.turned || unchecked || s.elastic) continue;
        std::map<int, Entry>& map = maps[static_cast<int>(s.mode)];
        map.emplace(static_cast<int>(map.size()),
                    Entry(static_cast<std::size_t>(s.left), static_cast<std::size_t>(s.right - 1), s.start, s.end, s.LE,
                          s.radius));
    }
    return {maps[0], maps[1], maps[2]};
}

} // namespace Keltrix::BS5950
