// Member buckling: the checks in their order, and what leaves them.

#include <algorithm>
#include <cmath>

#include "BucklingEntry.h"
#include "MemberText.h"

namespace Keltrix::BS5950 {

using Steel::CMemberResult;
using Steel::CRestraint;

CRestraint CSteelMemberBS5950::PointRestraint(int point) const
{
    return MemberPoints()[static_cast<std::size_t>(point)].GetRestraint();
}

const Design::MomentDiagram& CSteelMemberBS5950::MomentsX(bool turned) const
{
    return m_principal.empty() ? m_major : m_principal[turned ? 2 : 0];
}

const Design::MomentDiagram& CSteelMemberBS5950::MomentsY(bool turned) const
{
    return m_principal.empty() ? m_minor : m_principal[turned ? 3 : 1];
}

double CSteelMemberBS5950::LeastMomentX() const
{
    const SectionProperties& s = m_section.Properties();
    return 1e-6 * m_section.Steel().py * (s.shape == Shape::Angle ? s.Zu : s.Zx);
}

double CSteelMemberBS5950::LeastMomentY() const
{
    const SectionProperties& s = m_section.Properties();
    return 1e-6 * m_section.Steel().py * (s.shape == Shape::Angle ? s.Zv : s.Zy);
}

// An equivalent uniform moment factor: the user's in place of the computed one, at least what the standard asks for.
double CSteelMemberBS5950::Factor(double computed, double least) const
{
    return std::max(EquivalentUniformMomentFactor().value_or(computed), least);
}

// A moment about y-y says different things of an angle turned one way or the other: by itself it compresses the other flange then,
// which may be held elsewhere.
bool CSteelMemberBS5950::HasTwoWays() const
{
    const SectionProperties& s = m_section.Properties();
    const double py = m_section.Steel().py;
    return s.shape == Shape::Angle && m_minor.Largest() > 1e-6 * py * s.Zy;
}

void CSteelMemberBS5950::MakeDiagrams()
{
    m_major = Design::MomentDiagram(MemberPoints(), SubSpans(), Design::Bending::Major);
    m_minor = Design::MomentDiagram(MemberPoints(), SubSpans(), Design::Bending::Minor);
    m_principal.clear();
    const SectionProperties& s = m_section.Properties();
    if (s.shape != Shape::Angle) return;
    const double c = std::cos(s.alpha);
    const double n = std::sin(s.alpha);
    for (const double sign : {1.0, -1.0}) {
        m_principal.emplace_back(m_major, c, m_minor, sign * n);
        m_principal.emplace_back(m_major, -n, m_minor, sign * c);
    }
}

void CSteelMemberBS5950::WriteBucklingUtilisations()
{
    CMemberResult& r = *Result();
    for (const SpanResult& span : m_spans) {
        if (!span.applied) continue;
        switch (span.mode) {
        case BucklingMode::Major:
            r.SetUtilBucklingAxialMajor(span.utilisation);
            break;
        case BucklingMode::Minor:
            r.SetUtilBucklingAxialMinor(span.utilisation);
            break;
        case BucklingMode::LateralTorsional:
            r.SetUtilBucklingLT(span.utilisation);
            break;
        }
        if (span.mode != BucklingMode::LateralTorsional && span.slenderness > 180.0)
            r.AddFlags(CMemberResult::INFO_MEMBER_SLENDER);
    }
    for (const InteractionResult& i : m_interactions)
        r.SetUtilBucklingCombined(i.utilisation);
}

void CSteelMemberBS5950::AssumeFactors()
{
    const std::optional<double>& given = EquivalentUniformMomentFactor();
    if (given) Assume(L"equivalent uniform moment factor", L"given by the user in place of m and mLT", *given);
    if (!m_options.simpleColumn) return;
    const bool all = std::all_of(m_spans.begin(), m_spans.end(), [this](const SpanResult& span) {
        return span.mode != BucklingMode::LateralTorsional || IsSimpleColumn(span);
    });
    Assume(L"column in simple construction",
           all ? L"as the options say: the moments are the nominal ones of 4.7.7, m = 1.0 and λLT = 0.5 L/ry"
               : L"the options say so, but 4.7.7 is used only for I, H and hollow sections in compression between "
                 L"levels that "
                 L"are held in both directions, under end moments alone and without given effective lengths",
           std::nan(""));
}

void CSteelMemberBS5950::RunBuckling()
{
    m_ledger.Drop(Stage::Buckling);
    std::erase_if(m_parts, [](const auto& part) { return part.second.start < part.second.end; });
    m_spans.clear();
    m_interactions.clear();
    const bool text = Result() && Result()->TextEnabled();
    if (Result()) Result()->SetCurSubSpan(2 * static_cast<int>(SubSpans().size()) + 1);
    if (text) Text(*this).BucklingTitle();
    FindLevels();
    for (const bool turned : {false, true}) {
        if (turned && !HasTwoWays()) break;
        FindFlexuralSpans(BucklingMode::Major, turned);
        FindFlexuralSpans(BucklingMode::Minor, turned);
        FindLateralSpans(turned);
    }
    AssumeFactors();
    for (SpanResult& span : m_spans)
        if (span.mode == BucklingMode::LateralTorsional)
            CheckLateral(span);
        else
            CheckFlexural(span);
    RecordMinorAxisLateral();
    RecordStrutConnections();
    RecordTorsionalBuckling();
    CheckInteractions(false);
    CheckInteractions(true);
    RecordNoInteraction();
    m_ledger.MarkGoverning();
    if (!Result()) return;
    WriteBucklingUtilisations();
    if (!text) return;
    Text(*this).ElasticOffers();
    Text(*this).Summary();
}

bool CSteelMemberBS5950::CheckBuckling()
{
    if (!Prepare()) return false;
    RunBuckling();
    return !m_ledger.HasFailed(Stage::Buckling) && !m_ledger.IsOpen(Stage::Buckling);
}

} // namespace Keltrix::BS5950
