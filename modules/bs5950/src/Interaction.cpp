// Members under axial force and moments, and under moments about both axes: 4.8.3.3, 4.9, 4.7.7.

#include "Interaction.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "BucklingEntry.h"

namespace Keltrix::BS5950 {

using Steel::CMemberResult;

namespace {

// The spans of one combination.
struct Combination {
    const SpanResult& x;
    const SpanResult& y;
    const SpanResult& lt;

    double MLTTerm() const { return Ratio(lt.m * lt.effect, lt.resistance); }
};

// Clause 4.8.3.3.1: moments over py Z; Fc/Pc is the worse of the two axes.
void Simplified(const Combination& c, InteractionResult& r)
{
    r.clause = L"4.8.3.3.1";
    r.MxTerm = c.x.m * c.x.Mx / c.x.flexural.pyZx;
    r.MyTerm = c.y.m * c.y.flexural.My / c.y.flexural.pyZy;
    r.MLTTerm = c.MLTTerm();
    r.first = std::max(c.x.utilisation, c.y.utilisation) + r.MxTerm + r.MyTerm;
    r.second = c.y.utilisation + r.MLTTerm + r.MyTerm;
}

// Clause 4.8.3.3.3, hollow sections: 0.5 mLT MLT/Mcx where lateral-torsional buckling need not be considered, otherwise the whole
// mLT MLT/Mb. Mcx has the shear of the place of the largest moment.
double HollowMLTTerm(const Combination& c)
{
    const double whole = c.MLTTerm();
    if (!c.lt.lateral.exempt) return whole;
    const double atLargest = c.x.Mx > 0.0 ? c.lt.m * c.lt.effect / c.x.Mx * c.x.flexural.major : 0.0;
    return 0.5 * std::max(whole, atLargest);
}

// Clause 4.8.3.3.2 for I and H sections with equal flanges, 4.8.3.3.3 for hollow sections; they differ in the
// coefficient of the minor axis and in the term of lateral-torsional buckling.
void MoreExact(const Combination& c, bool hollow, InteractionResult& r)
{
    const double k = hollow ? 0.5 : 1.0;
    const double fx = c.x.utilisation;
    const double fy = c.y.utilisation;
    const double mx = c.x.m * c.x.flexural.major;
    const double my = c.y.m * c.y.flexural.minor;
    const double myx = c.x.flexural.myx * c.x.flexural.minor;
    r.rule = InteractionRule::MoreExact;
    r.clause = hollow ? L"4.8.3.3.3" : L"4.8.3.3.2";
    r.MxTerm = mx * (1.0 + 0.5 * fx);
    r.MyTerm = my * (1.0 + k * fy);
    r.MLTTerm = hollow ? HollowMLTTerm(c) : c.MLTTerm();
    r.first = fx + r.MxTerm + 0.5 * myx;
    r.second = fy + r.MLTTerm + r.MyTerm;
    const auto amplified = [](double term, double f) { return term == 0.0 ? 0.0 : f < 1.0 ? term / (1.0 - f) : INF; };
    r.third = amplified(r.MxTerm, fx) + amplified(r.MyTerm, fy);
}

// Clause 4.7.7: Fc/Pc + Mx/Mbs + My/(py Zy) with m = 1.
void SimpleColumn(const Combination& c, InteractionResult& r)
{
    r.rule = InteractionRule::SimpleColumn;
    r.clause = L"4.7.7";
    r.MLTTerm = Ratio(c.lt.effect, c.lt.resistance);
    r.MyTerm = c.y.flexural.My / c.y.flexural.pyZy;
    r.first = r.second = std::max(c.x.utilisation, c.y.utilisation) + r.MLTTerm + r.MyTerm;
}

// Whether the spans have actions that act together.
bool ActTogether(const Combination& c)
{
    const bool compressed = c.x.applied || c.y.applied;
    const bool bentX = c.x.Mx > 0.0;
    const bool bentY = c.y.flexural.My > 0.0;
    return (compressed && (bentX || bentY)) || (bentX && bentY);
}

void Interact(const Combination& c, const MemberModel& model, InteractionResult& r)
{
    r.start = std::max({c.x.start, c.y.start, c.lt.start});
    r.end = std::min({c.x.end, c.y.end, c.lt.end});
    r.Fc = std::max(c.x.effect, c.y.effect);
    const Shape shape = model.Properties().shape;
    if (c.lt.lateral.simpleColumn)
        SimpleColumn(c, r);
    else if (model.moreExact && (shape == Shape::I || shape == Shape::RHS || shape == Shape::CHS))
        MoreExact(c, model.Properties().IsHollow(), r);
    else
        Simplified(c, r);
    if (!(r.Fc > 0.0) && !c.lt.lateral.simpleColumn) r.clause = L"4.9";
    r.utilisation = CMemberResult::InfinitiseNANs(std::max({r.first, r.second, r.third}));
}

void Record(const InteractionResult& r, MemberResults& found)
{
    LedgerEntry e;
    e.rule = Rule::BucklingInteraction;
    e.clause = r.clause;
    e.start = r.start;
    e.end = r.end;
    e.utilisation = r.utilisation;
    e.status = e.utilisation > 1.0 ? CheckStatus::Failed : CheckStatus::Passed;
    found.ledger.Add(e);
    found.interactions.push_back(r);
}

void Check(const std::array<int, 3>& places, const MemberModel& model, MemberResults& found)
{
    const Combination c{found.Span(places[0]), found.Span(places[1]), found.Span(places[2])};
    if (!ActTogether(c)) return;
    InteractionResult r;
    r.major = places[0];
    r.minor = places[1];
    r.lateral = places[2];
    Interact(c, model, r);
    Record(r, found);
}

// From left to right, with the lateral-torsional stretches of one flange. Those of flange 2 count where they add something to what
// flange 1 has been checked with.
void CheckAll(Design::Flange flange, bool turned, const MemberModel& model, MemberResults& found)
{
    std::array<std::vector<int>, 3> spans; // places by mode
    for (std::size_t i = 0; i < found.spans.size(); ++i) {
        const SpanResult& span = found.spans[i];
        const bool counts =
            span.mode != BucklingMode::LateralTorsional || span.lateral.flange[static_cast<std::size_t>(flange)];
        if (span.turned == turned && counts) spans[static_cast<std::size_t>(span.mode)].push_back(static_cast<int>(i));
    }
    std::array<std::size_t, 3> next{};
    while (next[0] < spans[0].size() && next[1] < spans[1].size() && next[2] < spans[2].size()) {
        const std::array<int, 3> places{spans[0][next[0]], spans[1][next[1]], spans[2][next[2]]};
        const SpanResult& lt = found.Span(places[2]);
        if (flange == Design::Flange::First || (!lt.lateral.flange[0] && lt.effect > 0.0)) Check(places, model, found);
        const double end = std::min({found.Span(places[0]).end, found.Span(places[1]).end, lt.end});
        for (std::size_t mode = 0; mode < 3; ++mode)
            if (found.Span(places[mode]).end == end) ++next[mode];
    }
}

} // namespace

void CheckInteractions(const MemberModel& model, MemberResults& found)
{
    for (const bool turned : {false, true})
        for (const Design::Flange flange : Design::FLANGES)
            CheckAll(flange, turned, model, found);
    if (!found.interactions.empty()) return;
    LedgerEntry e;
    e.rule = Rule::BucklingInteraction;
    e.clause = RuleClause(e.rule);
    e.status = CheckStatus::NotApplicable;
    e.reason = L"no compression together with a moment, and no moments about both axes";
    found.ledger.Add(e);
}

} // namespace Keltrix::BS5950
