#include "keltrix/ec3/SteelMemberEC3.h"

#include <algorithm>
#include <cmath>

#include "MemberCheck.h"
#include "MemberText.h"
#include "keltrix/design/MemberInput.h"

namespace Keltrix::EC3 {

using Design::CheckStatus;
using Design::Subject;
using Steel::CMemberResult;

CSteelMemberEC3::~CSteelMemberEC3() = default;
CSteelMemberEC3::CSteelMemberEC3(const CSteelMemberEC3&) = default;

const wchar_t* SectionRefusal(const CSection& section)
{
    if (MakeSection(section, nullptr)) return nullptr;
    return L"the section is not one that this standard's module covers; cold-formed open sections are for EN 1993-1-3";
}

CString CSteelMemberEC3::DesOptName(int) { return CString(L"EN 1993-1-1:2005+A1:2014, ") + m_annex.title; }

void CSteelMemberEC3::PrepareInput()
{
    m_section.reset();
    m_keltrixSection = CSection();
    m_grade = CSteelGrade();
    m_hasGrade = false;
    DropFindings();
}

bool CSteelMemberEC3::SetKeltrixSec(const CSection& section)
{
    // A shape that is known and not of this standard is refused with its reason when it is checked.
    const std::optional<Section> made = MakeSection(section, Result());
    if (!made && !Design::MakeProperties(section, nullptr)) return false;
    m_section = made;
    m_keltrixSection = section;
    DropFindings();
    return true;
}

bool CSteelMemberEC3::SetGrade(const CSteelGrade& grade)
{
    const Grade which = GradeFromName(grade.Name());
    if (which == Grade::None) return false;
    if (which == Grade::User && !MakeMaterial(grade, 0.01, false, Fabrication::Rolled, m_annex).IsValid()) return false;
    m_grade = grade;
    m_hasGrade = true;
    DropFindings();
    return true;
}

bool CSteelMemberEC3::SetMemberPointVec(const std::vector<Steel::CMemberPoint>& points)
{
    DropFindings();
    return CSteelMemberGen::SetMemberPointVec(points);
}

bool CSteelMemberEC3::SetSubSpanVec(const std::vector<Steel::CSubSpan>& subSpans)
{
    DropFindings();
    return CSteelMemberGen::SetSubSpanVec(subSpans);
}

void CSteelMemberEC3::SetAnnex(const Annex& annex)
{
    m_annex = annex;
    DropFindings();
}

void CSteelMemberEC3::SetOptions(const DesignOptions& options)
{
    m_options = options;
    DropFindings();
}

void CSteelMemberEC3::DropFindings()
{
    m_findings = {};
    m_lengthsMajor.clear();
    m_lengthsMinor.clear();
    m_class = 0;
}

// Why nothing can be checked; Subject::None where everything is at hand.
Design::Refusal CSteelMemberEC3::FindRefusal() const
{
    if (!m_section) return {Subject::Section, SectionRefusal(m_keltrixSection)};
    if (!m_hasGrade) return {Subject::Grade, L"the member has no steel grade"};
    const Material material = MakeMaterial(m_grade, m_section->basis, m_annex);
    if (!material.IsValid())
        return {GradeFromName(m_grade.Name()) == Grade::User ? Subject::Grade : Subject::Section, material.refusal};
    if (const Design::Refusal refusal =
            Design::NumbersRefusal(MemberPoints(), SubSpans(), EquivalentUniformMomentFactor());
        refusal.subject != Subject::None)
        return refusal;
    if (LengthOverride() && !(std::isfinite(Lyy()) && std::isfinite(Lzz()) && std::isfinite(Llt())))
        return {Subject::Member, L"an effective length that is given is not a finite number"};
    if (!ValidateInputData()) return {Subject::Member, L"member points and sub-spans do not fit together"};
    const double netGross = m_keltrixSection.Component(0).NetGross();
    if (!(netGross > 0.0 && netGross <= 1.0))
        return {Subject::NetToGross, L"the net to gross area ratio does not lie above 0 and up to 1"};
    return {};
}

void CSteelMemberEC3::Refuse(const Design::Refusal& refusal)
{
    DropFindings();
    m_findings.refusal = refusal;
    for (int i = 0; i < static_cast<int>(Rule::COUNT); ++i)
        m_findings.rules.push_back(FindingOf(static_cast<Rule>(i), CheckStatus::NotEvaluated, refusal.reason));
    if (!Result()) return;
    Result()->AddFlags(CMemberResult::NOT_CHECKED | CMemberResult::WARNING);
    if (!Result()->TextEnabled()) return;
    CString text;
    text.Format(L"<red><b>Not checked:</b></red> %s\n", refusal.reason);
    Result()->AddOutputString(text);
}

bool CSteelMemberEC3::Run(Part part)
{
    DropFindings();
    if (Result()) Result()->SetCurSubSpan(0);
    if (const Design::Refusal refusal = FindRefusal(); refusal.subject != Subject::None) {
        Refuse(refusal);
        return false;
    }
    MemberInput input;
    input.points = MemberPoints();
    input.subSpans = SubSpans();
    input.keltrixSection = m_keltrixSection;
    input.section = *m_section;
    input.material = MakeMaterial(m_grade, m_section->basis, m_annex);
    input.annex = &m_annex;
    input.strength = MakeStrength(input.material, m_annex);
    input.options = m_options;
    input.lengthOverride = LengthOverride();
    input.Lyy = Lyy();
    input.Lzz = Lzz();
    input.Llt = Llt();
    input.momentFactor = EquivalentUniformMomentFactor();
    input.netGross = m_keltrixSection.Component(0).NetGross();
    input.withSteps = CMemberResult::TextEnabled(Result());
    if (Result()) input.format = Result()->DesFormat();
    MemberCheck check(std::move(input));
    m_class = check.Class().cls;
    check.CheckGeneral();
    if (part != Part::Buckling) check.CheckLocal();
    if (part != Part::Local) check.CheckBuckling();
    check.Finish();
    KeepLengths(check);
    if (Result()) Write(check);
    m_findings = std::move(check.Findings());
    return m_findings.status == Design::Status::Passed;
}

void CSteelMemberEC3::KeepLengths(const MemberCheck& check)
{
    for (const StrutSpan& s : check.Struts()) {
        if (s.mode == BucklingMode::Torsion || s.open) continue;
        auto& map = s.mode == BucklingMode::Major ? m_lengthsMajor : m_lengthsMinor;
        map.emplace(static_cast<int>(map.size()),
                    Steel::SubspanEffectiveLengthData::Entry(
                        static_cast<std::size_t>(s.left), static_cast<std::size_t>(s.right - 1), s.start, s.end, s.Lcr,
                        std::sqrt((s.mode == BucklingMode::Major ? MajorSecondMoment(*m_section)
                                                                 : MinorSecondMoment(*m_section)) /
                                  m_section->A)));
    }
}

void CSteelMemberEC3::SetLoads(const MemberCheck& check)
{
    int loads = 0;
    for (const Position& p : check.Positions()) {
        if (p.actions.N != 0.0) loads |= CMemberResult::LOAD_AXIAL;
        if (p.actions.My != 0.0 || p.actions.Vz > 1.0) loads |= CMemberResult::LOAD_MAJOR;
        if (p.actions.Mz != 0.0 || p.actions.Vy > 1.0) loads |= CMemberResult::LOAD_MINOR;
        if (std::abs(p.torsion) > 1.0) loads |= CMemberResult::LOAD_TORSION;
    }
    Result()->SetLoadFlags(loads);
}

void CSteelMemberEC3::WriteUtilisations(const MemberCheck& check)
{
    CMemberResult& r = *Result();
    bool hasLocal = false, hasBuckling = false;
    for (const Design::RuleFinding& f : check.Findings().rules) {
        hasLocal = hasLocal || StageOf(f) == Stage::Local;
        hasBuckling = hasBuckling || StageOf(f) == Stage::Buckling;
    }
    if (hasLocal)
        for (const Position& p : check.Positions()) {
            r.SetCurSubSpan(p.Entry());
            r.SetUtilLocalAxial(p.Axial());
            r.SetUtilLocalMomMajor(p.Major());
            r.SetUtilLocalMomMinor(p.Minor());
            r.SetUtilLocalShearMajor(p.ShearMajor());
            r.SetUtilLocalShearMinor(p.ShearMinor());
            r.SetUtilLocalCombined(p.combined);
        }
    for (const WebLoadCheck& w : check.WebLoads()) {
        r.SetCurSubSpan(w.Entry(static_cast<int>(SubSpans().size())));
        r.SetUtilLocalShearMajor(std::max({w.utilisation, w.withMoment, w.yield}));
    }
    if (!hasBuckling) return;
    r.SetCurSubSpan(2 * static_cast<int>(SubSpans().size()) + 1);
    for (const Design::RuleFinding& f : check.Findings().rules) {
        if (!f.WasEvaluated()) continue;
        switch (static_cast<Rule>(f.rule)) {
        case Rule::FlexuralMajor:
            r.SetUtilBucklingAxialMajor(f.utilisation);
            break;
        case Rule::FlexuralMinor:
            r.SetUtilBucklingAxialMinor(f.utilisation);
            break;
        case Rule::Torsional:
            if (m_section->IsDoublySymmetric())
                r.SetUtilBucklingAxialTorsion(f.utilisation);
            else
                r.SetUtilBucklingAxialFlexuralTorsion(f.utilisation);
            break;
        case Rule::Lateral:
            r.SetUtilBucklingLT(f.utilisation);
            break;
        case Rule::InteractionMajor:
        case Rule::InteractionMinor:
        case Rule::GeneralMethod:
        case Rule::SimpleColumn:
            r.SetUtilBucklingCombined(f.utilisation);
            break;
        default:
            break;
        }
    }
}

void CSteelMemberEC3::Write(MemberCheck& check)
{
    Result()->IniDynaArray(2 * static_cast<int>(SubSpans().size()) + 2);
    SetLoads(check);
    WriteUtilisations(check);
    if (!check.Findings().warnings.empty()) Result()->AddFlags(CMemberResult::WARNING);
    const auto& rules = check.Findings().rules;
    if (std::any_of(rules.begin(), rules.end(), [](const auto& f) { return f.status == CheckStatus::NotEvaluated; }))
        Result()->AddFlags(CMemberResult::NOT_CHECKED | CMemberResult::WARNING);
    if (Result()->TextEnabled()) WriteText(check, *Result());
    Result()->SetCurSubSpan(0);
}

bool CSteelMemberEC3::CheckLocal(bool) { return Run(Part::Local); }

bool CSteelMemberEC3::CheckBuckling() { return Run(Part::Buckling); }

bool CSteelMemberEC3::Check()
{
    if (CMemberResult::TextEnabled(Result())) {
        Result()->SetCurSubSpan(0);
        ReportInput(GetSectionText(Result()->DesFormat()));
    }
    return Run(Part::Both);
}

Steel::SubspanEffectiveLengthData CSteelMemberEC3::GetEffectiveLengths() const
{
    return {m_lengthsMajor, m_lengthsMinor, {}};
}

} // namespace Keltrix::EC3
