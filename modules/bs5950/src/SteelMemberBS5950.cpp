#include "keltrix/bs5950/SteelMemberBS5950.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "ElasticRules.h"
#include "FindingSteps.h"
#include "MemberCheck.h"
#include "MemberText.h"
#include "ResultRecord.h"
#include "keltrix/design/MemberInput.h"

namespace Keltrix::BS5950 {

using Design::Subject;
using Steel::CMemberResult;

CString CSteelMemberBS5950::DesOptName(int desOpt)
{
    return desOpt == MORE_EXACT ? L"BS 5950-1:2000 (more exact interaction)" : L"BS 5950-1:2000";
}

void CSteelMemberBS5950::PrepareInput()
{
    m_section = CSectionBS5950();
    m_grade = CSteelGrade();
    m_hasGrade = false;
    m_found.Clear();
}

bool CSteelMemberBS5950::SetKeltrixSec(const CSection& section)
{
    if (!m_section.SetKeltrixSec(section, Result())) return false;
    m_found.Clear();
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
    m_found.Clear();
    return true;
}

void CSteelMemberBS5950::SetOptions(const DesignOptions& options)
{
    m_options = options;
    m_found.Clear();
}

bool CSteelMemberBS5950::SetMemberPointVec(const std::vector<Steel::CMemberPoint>& points)
{
    m_found.Clear();
    return CSteelMemberGen::SetMemberPointVec(points);
}

bool CSteelMemberBS5950::SetSubSpanVec(const std::vector<Steel::CSubSpan>& subSpans)
{
    m_found.Clear();
    return CSteelMemberGen::SetSubSpanVec(subSpans);
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

// Nothing can be checked: every rule gets its entry, and the result says so.
void CSteelMemberBS5950::Refuse(const Design::Refusal& refusal)
{
    m_found.Clear();
    m_found.refusal = refusal;
    for (int i = 0; i < static_cast<int>(Rule::COUNT); ++i) {
        LedgerEntry e;
        e.rule = static_cast<Rule>(i);
        e.clause = RuleClause(e.rule);
        e.reason = refusal.reason;
        m_found.ledger.Add(e);
    }
    if (!Result()) return;
    Result()->AddFlags(CMemberResult::NOT_CHECKED | CMemberResult::WARNING);
    if (!Result()->TextEnabled()) return;
    CString text;
    text.Format(L"<red><b>Not checked:</b></red> %s\n", refusal.reason);
    Result()->AddOutputString(text);
}

MemberInput CSteelMemberBS5950::Input() const
{
    return {MemberPoints(),
            SubSpans(),
            m_section,
            m_options,
            DesOpt() == MORE_EXACT,
            LengthOverride(),
            Lyy(),
            Lzz(),
            Llt(),
            EquivalentUniformMomentFactor(),
            Result() ? Result()->DesFormat() : CDesFormat()};
}

bool CSteelMemberBS5950::Run(Part part, bool alongMember)
{
    if (Result()) Result()->SetCurSubSpan(0);
    if (const Design::Refusal refusal = FindRefusal(); refusal.subject != Subject::None) {
        Refuse(refusal);
        return false;
    }
    m_found.information.reset();
    MemberModel model(Input());
    MemberCheck check(model, m_found);
    check.CheckGeneral();
    WriteGeneral(model);
    const int subSpans = static_cast<int>(SubSpans().size());
    const bool text = CMemberResult::TextEnabled(Result());
    if (part != Part::Buckling) {
        check.CheckLocal();
        if (Result()) WriteLocal(m_found, subSpans, *Result());
        if (text) MemberText(model, m_found, *Result()).Local(alongMember);
    }
    if (part != Part::Local) {
        check.CheckBuckling();
        if (Result()) WriteBuckling(m_found, subSpans, *Result());
        if (text) MemberText(model, m_found, *Result()).Buckling();
    }
    m_found.major = std::move(model.major);
    m_found.minor = std::move(model.minor);
    return true;
}

void CSteelMemberBS5950::WriteGeneral(const MemberModel& model)
{
    if (!Result()) return;
    Result()->IniDynaArray(2 * static_cast<int>(SubSpans().size()) + 2);
    WriteLoads(m_found, *Result());
    if (m_found.warnings.empty()) return;
    Result()->AddFlags(CMemberResult::WARNING);
    if (Result()->TextEnabled()) MemberText(model, m_found, *Result()).Warnings();
}

bool CSteelMemberBS5950::CheckLocal(bool alongMember)
{
    return Run(Part::Local, alongMember) && !m_found.ledger.HasFailed(Stage::Local) &&
           !m_found.ledger.IsOpen(Stage::Local);
}

bool CSteelMemberBS5950::CheckBuckling()
{
    return Run(Part::Buckling, true) && !m_found.ledger.HasFailed(Stage::Buckling) &&
           !m_found.ledger.IsOpen(Stage::Buckling);
}

bool CSteelMemberBS5950::Check()
{
    if (CMemberResult::TextEnabled(Result())) {
        Result()->SetCurSubSpan(0);
        ReportInput(GetSectionText(Result()->DesFormat()));
    }
    m_found.Clear();
    return Run(Part::Both, true) && Status() == Design::Status::Passed;
}

std::vector<LedgerEntry> CSteelMemberBS5950::InformationEntries() const
{
    if (m_found.spans.empty()) return {};
    if (m_found.information) return *m_found.information;
    const MemberModel model(Input());
    return BS5950::Information(model, m_found, ElasticRules(model).Offers(m_found.spans));
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
    findings.refusal = m_found.refusal;
    findings.designStrength = {L"py", Quantity::Stress, DesignStrength()};
    findings.momentFactor = EquivalentUniformMomentFactor();
    findings.rules.reserve(m_found.ledger.Entries().size());
    for (const LedgerEntry& entry : m_found.ledger.Entries())
        findings.rules.push_back(FindingOf(entry));
    if (CMemberResult::TextEnabled(Result()) && !m_found.positions.empty()) {
        std::vector<std::vector<Design::Step>> steps = LedgerSteps(MemberModel(Input()), m_found);
        for (std::size_t i = 0; i < steps.size(); ++i)
            findings.rules[i].steps = std::move(steps[i]);
    }
    findings.assumptions = m_found.assumptions;
    findings.warnings = m_found.warnings;
    findings.positions.reserve(m_found.positions.size());
    for (const PositionResult& position : m_found.positions)
        findings.positions.push_back(FindingOf(position));
    const ResistanceSummary r = m_found.Resistances();
    findings.resistances = {{L"Pz", Quantity::Force, r.Pz},    {L"Pt", Quantity::Force, r.Pt},
                            {L"Pvx", Quantity::Force, r.Pvx},  {L"Pvy", Quantity::Force, r.Pvy},
                            {L"Mcx", Quantity::Moment, r.Mcx}, {L"Mcy", Quantity::Moment, r.Mcy}};
    findings.spans.reserve(m_found.spans.size() + m_found.interactions.size());
    for (const SpanResult& span : m_found.spans)
        findings.spans.push_back(FindingOf(span));
    for (const InteractionResult& interaction : m_found.interactions)
        findings.spans.push_back({interaction.start, interaction.end, {}, true});
    // The record gives its text entry by entry.
    std::vector<std::pair<int, Design::CalculationPart>> parts = m_found.parts;
    std::stable_sort(parts.begin(), parts.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [entry, part] : parts)
        findings.parts.push_back(part);
    return findings;
}

std::vector<Design::RuleFinding> CSteelMemberBS5950::Information() const
{
    std::vector<Design::RuleFinding> findings;
    for (const LedgerEntry& entry : InformationEntries())
        findings.push_back(FindingOf(entry));
    return findings;
}

Steel::SubspanEffectiveLengthData CSteelMemberBS5950::GetEffectiveLengths() const
{
    using Entry = Steel::SubspanEffectiveLengthData::Entry;
    std::map<int, Entry> maps[3];
    for (const SpanResult& s : m_found.spans) {
        const bool unchecked = s.mode == BucklingMode::LateralTorsional && s.lateral.flange[0] != s.lateral.flange[1] &&
                               !s.lateral.compressed[0] && !s.lateral.compressed[1];
        if (s.turned || unchecked || s.lateral.elastic) continue;
        std::map<int, Entry>& map = maps[static_cast<int>(s.mode)];
        map.emplace(static_cast<int>(map.size()),
                    Entry(static_cast<std::size_t>(s.left), static_cast<std::size_t>(s.right - 1), s.start, s.end, s.LE,
                          s.radius));
    }
    return {maps[0], maps[1], maps[2]};
}

} // namespace Keltrix::BS5950
