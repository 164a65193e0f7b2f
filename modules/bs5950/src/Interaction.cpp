// Members under axial force and moments, and under moments about both axes: 4.8.3.3, 4.9, 4.7.7.

#include <algorithm>
#include <array>
#include <cmath>

#include "BucklingEntry.h"
#include "MemberText.h"

namespace Keltrix::BS5950 {

using Steel::CMemberResult;

// Clause 4.8.3.3.1: moments over py Z; Fc/Pc is the worse of the two axes.
void CSteelMemberBS5950::SimplifiedInteraction(InteractionResult& r) const
{
    const SpanResult& x = Span(r.major);
    const SpanResult& y = Span(r.minor);
    const SpanResult& lt = Span(r.lateral);
    r.clause = L"4.8.3.3.1";
    r.MxTerm = x.m * x.Mx / x.pyZx;
    r.MyTerm = y.m * y.My / y.pyZy;
    r.MLTTerm = Ratio(lt.m * lt.effect, lt.resistance);
    r.first = std::max(x.utilisation, y.utilisation) + r.MxTerm + r.MyTerm;
    r.second = y.utilisation + r.MLTTerm + r.MyTerm;
}

// Clause 4.8.3.3.2 for I and H sections with equal flanges, 4.8.3.3.3 for hollow sections; they differ in the
// coefficients of the minor axis and of lateral-torsional buckling.
void CSteelMemberBS5950::ExactInteraction(InteractionResult& r) const
{
    const SpanResult& x = Span(r.major);
    const SpanResult& y = Span(r.minor);
    const SpanResult& lt = Span(r.lateral);
    const bool hollow = m_section.Properties().IsHollow();
    const double k = hollow ? 0.5 : 1.0;
    const double fx = x.utilisation;
    const double fy = y.utilisation;
    const double mx = x.m * x.major;
    const double my = y.m * y.minor;
    const double myx = x.myx * x.minor;
    r.rule = InteractionRule::MoreExact;
    r.clause = hollow ? L"4.8.3.3.3" : L"4.8.3.3.2";
    r.MxTerm = mx * (1.0 + 0.5 * fx);
    r.MyTerm = my * (1.0 + k * fy);
    r.MLTTerm = k * Ratio(lt.m * lt.effect, lt.resistance);
    r.first = fx + r.MxTerm + 0.5 * myx;
    r.second = fy + r.MLTTerm + r.MyTerm;
    const auto amplified = [](double term, double f) { return term == 0.0 ? 0.0 : f < 1.0 ? term / (1.0 - f) : INF; };
    r.third = amplified(r.MxTerm, fx) + amplified(r.MyTerm, fy);
}

// Clause 4.7.7: Fc/Pc + Mx/Mbs + My/(py Zy) with m = 1.
void CSteelMemberBS5950::SimpleColumnInteraction(InteractionResult& r) const
{
    const SpanResult& x = Span(r.major);
    const SpanResult& y = Span(r.minor);
    const SpanResult& lt = Span(r.lateral);
    r.rule = InteractionRule::SimpleColumn;
    r.clause = L"4.7.7";
    r.MLTTerm = Ratio(lt.effect, lt.resistance);
    r.MyTerm = y.My / y.pyZy;
    r.first = r.second = std::max(x.utilisation, y.utilisation) + r.MLTTerm + r.MyTerm;
}

InteractionResult CSteelMemberBS5950::Interact(int major, int minor, int lateral) const
{
    InteractionResult r;
    r.major = major;
    r.minor = minor;
    r.lateral = lateral;
    const SpanResult& x = Span(major);
    const SpanResult& y = Span(minor);
    const SpanResult& lt = Span(lateral);
    r.start = std::max({x.start, y.start, lt.start});
    r.end = std::min({x.end, y.end, lt.end});
    r.Fc = std::max(x.effect, y.effect);
    const Shape shape = m_section.Properties().shape;
    if (IsSimpleColumn(lt))
        SimpleColumnInteraction(r);
    else if (DesOpt() == MORE_EXACT && (shape == Shape::I || shape == Shape::RHS || shape == Shape::CHS))
        ExactInteraction(r);
    else
        SimplifiedInteraction(r);
    if (!(r.Fc > 0.0) && !IsSimpleColumn(lt)) r.clause = L"4.9";
    r.utilisation = CMemberResult::InfinitiseNANs(std::max({r.first, r.second, r.third}));
    return r;
}

// Whether the spans have actions that act together.
bool CSteelMemberBS5950::CheckInteraction(int major, int minor, int lateral)
{
    const SpanResult& x = Span(major);
    const SpanResult& y = Span(minor);
    const bool compressed = x.applied || y.applied;
    const bool bentX = x.Mx > 0.0;
    const bool bentY = y.My > 0.0;
    if (!(compressed && (bentX || bentY)) && !(bentX && bentY)) return false;
    const InteractionResult r = Interact(major, minor, lateral);
    LedgerEntry e;
    e.rule = Rule::BucklingInteraction;
    e.clause = r.clause;
    e.start = r.start;
    e.end = r.end;
    e.utilisation = r.utilisation;
    e.status = e.utilisation > 1.0 ? CheckStatus::Failed : CheckStatus::Passed;
    m_ledger.Add(e);
    m_interactions.push_back(r);
    if (Result() && Result()->TextEnabled()) Text(*this).Interaction(r);
    return true;
}

// Every combination of spans that have a stretch in common, from left to right, with the lateral-torsional stretches of one
// flange. Those of flange 2 count where they add something to what flange 1 has been checked with.
void CSteelMemberBS5950::CheckInteractionsOf(Design::Flange flange, bool turned)
{
    std::array<std::vector<int>, 3> spans; // places by mode
    for (std::size_t i = 0; i < m_spans.size(); ++i) {
        const SpanResult& span = m_spans[i];
        const bool counts =
            span.mode != BucklingMode::LateralTorsional || span.flange[static_cast<std::size_t>(flange)];
        if (span.turned == turned && counts) spans[static_cast<std::size_t>(span.mode)].push_back(static_cast<int>(i));
    }
    std::array<std::size_t, 3> next{};
    while (next[0] < spans[0].size() && next[1] < spans[1].size() && next[2] < spans[2].size()) {
        const std::array<int, 3> place{spans[0][next[0]], spans[1][next[1]], spans[2][next[2]]};
        const SpanResult& lt = Span(place[2]);
        if (flange == Design::Flange::First || (!lt.flange[0] && lt.effect > 0.0))
            CheckInteraction(place[0], place[1], place[2]);
        const double end = std::min({Span(place[0]).end, Span(place[1]).end, Span(place[2]).end});
        for (std::size_t mode = 0; mode < 3; ++mode)
            if (Span(place[mode]).end == end) ++next[mode];
    }
}

void CSteelMemberBS5950::CheckInteractions(bool turned)
{
    for (const Design::Flange flange : Design::FLANGES)
        CheckInteractionsOf(flange, turned);
}

void CSteelMemberBS5950::RecordNoInteraction()
{
    if (!m_interactions.empty()) return;
    LedgerEntry e;
    e.rule = Rule::BucklingInteraction;
    e.clause = RuleClause(e.rule);
    e.status = CheckStatus::NotApplicable;
    e.reason = L"no compression together with a moment, and no moments about both axes";
    m_ledger.Add(e);
}

} // namespace Keltrix::BS5950
