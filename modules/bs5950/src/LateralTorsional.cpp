// Lateral-torsional buckling: stretches of each flange between sections that hold it, Tables 13, 14 and 18, 4.3, 4.7.7.

#include "LateralChecks.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "BucklingEntry.h"
#include "CompressionChecks.h"
#include "ElasticRules.h"
#include "MomentShape.h"
#include "SpanClass.h"
#include "keltrix/design/LateralLength.h"

namespace Keltrix::BS5950 {

using Design::EndKind;
using Design::Flange;
using Design::FLANGES;
using Design::MomentDiagram;
using Design::Stretch;
using Design::StretchEnd;
using Steel::CCodeShare;
using Steel::CMemberResult;
using Steel::CRestraint;

namespace {

// Share of the member's largest moment up to which a moment does not buckle a flange.
constexpr double LEAST_SHARE = 1e-5;
// Relative difference up to which the largest moments of both signs count as equal.
constexpr double EQUAL = 1e-9;

constexpr std::size_t Index(Flange f) { return static_cast<std::size_t>(f); }

CCodeShare::LT_BuckleDirection SenseOf(const std::array<bool, 2>& compressed)
{
    if (compressed[0] && compressed[1]) return CCodeShare::LT_COMP_BOTH;
    if (compressed[0]) return CCodeShare::LT_COMP_FLANGE1;
    return compressed[1] ? CCodeShare::LT_COMP_FLANGE2 : CCodeShare::LT_COMP_NONE;
}

bool BelongsToBoth(const SpanResult& span) { return span.lateral.flange[0] && span.lateral.flange[1]; }

} // namespace

// Given effective lengths leave one stretch, the whole member, for both flanges.
std::vector<Stretch> LateralRules::Stretches(bool turned) const
{
    const MomentDiagram& moments = m_model.MomentsX(turned);
    if (!m_model.lengthOverride) return Design::FindStretches(m_model.points, m_model.subSpans, moments);
    const int last = static_cast<int>(m_model.points.size()) - 1;
    const auto end = [&](int point) {
        StretchEnd e;
        e.kind = Design::IsTip(m_model.points, point) ? EndKind::Tip : EndKind::MemberEnd;
        e.x = m_model.points[static_cast<std::size_t>(point)].GetPos();
        e.point = point;
        e.restraint = Design::Resolved(m_model.PointRestraint(point), 0);
        return e;
    };
    Stretch whole;
    whole.flange = {true, true};
    whole.left = end(0);
    whole.right = end(last);
    whole.cantilever = whole.left.kind == EndKind::Tip || whole.right.kind == EndKind::Tip;
    whole.moments = moments.Between(whole.left.x, whole.right.x);
    return {whole};
}

SpanResult LateralRules::MakeSpan(const Stretch& stretch, bool turned) const
{
    const auto position = [](const Steel::CMemberPoint& point) { return point.GetPos(); };
    SpanResult span;
    span.mode = BucklingMode::LateralTorsional;
    span.turned = turned;
    span.from = stretch.left;
    span.to = stretch.right;
    span.start = stretch.left.x;
    span.end = stretch.right.x;
    const auto& points = m_model.points;
    span.left = span.from.point;
    if (span.left < 0)
        span.left = static_cast<int>(std::upper_bound(points.begin(), points.end(), span.start,
                                                      [&](double x, const auto& p) { return x < position(p); }) -
                                     points.begin()) -
                    1;
    span.right = span.to.point;
    if (span.right < 0)
        span.right = static_cast<int>(std::lower_bound(points.begin(), points.end(), span.end,
                                                       [&](const auto& p, double x) { return position(p) < x; }) -
                                      points.begin());
    span.startReason = Design::EndKindText(span.from.kind);
    span.endReason = Design::EndKindText(span.to.kind);
    span.lateral.flange = stretch.flange;
    span.continuous = stretch.held;
    span.lateral.cantilever = stretch.cantilever;
    span.radius = m_model.Properties().MinorRadius();
    const double least = std::max(m_model.LeastMomentX(), LEAST_SHARE * m_model.MomentsX(turned).Largest());
    for (const Flange f : FLANGES) {
        const double moment = stretch.Has(f) ? stretch.Compressing(f) : 0.0;
        span.lateral.compressed[Index(f)] = !(moment <= least);
        if (span.lateral.compressed[Index(f)]) span.effect = std::max(span.effect, moment);
        if (std::isnan(moment)) span.effect = moment;
    }
    span.lateral.sense = SenseOf(span.lateral.compressed);
    span.lateral.destabilising = Design::IsDestabilised(stretch, points, m_model.subSpans);
    span.momentX = ShapeOf(m_model.MomentsX(turned), span.start, span.end, FactorTable::Table18);
    span.lateral.simpleColumn = IsSimpleColumn(span);
    if (!span.lateral.simpleColumn) return span;
    const auto [from, to] = StoreyOf(span);
    span.lateral.storey = to - from;
    return span;
}

void LateralChecks::FindSpans(bool turned)
{
    const std::vector<Stretch> stretches = m_rules.Stretches(turned);
    if (!m_found.units.empty() && !turned) return ElasticRules(m_model).AddSpans(stretches, m_found);
    for (const Stretch& stretch : stretches) {
        m_found.spans.push_back(m_rules.MakeSpan(stretch, turned));
        if (m_model.lengthOverride) SetOverride(m_found.spans.back(), m_model.Llt, m_model.Length());
    }
}

bool LateralChecks::IsUnsupportedEnd(const StretchEnd& end) const
{
    const int last = static_cast<int>(m_model.points.size()) - 1;
    return (end.point == 0 || end.point == last) && end.kind != EndKind::Tip &&
           !m_model.PointRestraint(end.point).IsRestrained(CRestraint::MAJOR_SHEAR, false);
}

void LateralChecks::SetLength(SpanResult& span)
{
    if (span.overridden) return;
    if (!span.lateral.cantilever && (IsUnsupportedEnd(span.from) || IsUnsupportedEnd(span.to)))
        m_found.Assume(L"vertical support",
                       L"an end without major axis shear restraint is taken as supported, not as a tip", std::nan(""));
    m_rules.FindLength(span, CCodeShare(nullptr));
}

void LateralRules::FindLength(SpanResult& span, const CCodeShare& rules) const
{
    Stretch stretch;
    stretch.cantilever = span.lateral.cantilever;
    stretch.left = span.from;
    stretch.right = span.to;
    for (const Flange f : FLANGES) {
        if (!span.lateral.compressed[Index(f)]) continue;
        const Design::LateralLength length =
            Design::FindLateralLength(stretch, f, m_model.points, m_model.MomentsX(span.turned), m_model.Properties().D,
                                      span.lateral.destabilising, rules);
        switch (length.table) {
        case Design::LateralTable::Table13:
            span.lengthRule = L"Table 13";
            break;
        case Design::LateralTable::Table14:
            span.lengthRule = L"Table 14, cantilever";
            break;
        case Design::LateralTable::LongerOfBoth:
            span.lengthRule = L"the longer of Tables 13 and 14, cantilever held up to its tip (4.3.5.5)";
            break;
        }
        if (length.LE < span.LE) continue;
        span.LE = length.LE;
        span.lateral.tipMoment = length.tipMoment;
    }
}

namespace {

// Whether the moments of all sub-spans between two places lie on one straight line: nothing bends the length but its ends.
bool IsStraight(const MomentDiagram& moments, double from, double to, double least)
{
    const MomentDiagram::Range range = moments.Covering(from, to);
    const double left = moments.RightOf(from).least;
    const double slope = (moments.LeftOf(to).least - left) / (to - from);
    for (int k = range.first; k < range.last; ++k) {
        const MomentDiagram::Piece& piece = moments.At(k);
        if (!moments.IsBalanced(k)) return false;
        for (const double s : {0.0, 0.5, 1.0}) {
            const double line = left + slope * (piece.start + s * piece.length - from);
            if (std::abs(moments.Curves(k).front().At(s) - line) > least) return false;
        }
    }
    return true;
}

} // namespace

// The levels around a stretch; 0 and 0 where it does not lie between two.
std::pair<double, double> LateralRules::StoreyOf(const SpanResult& span) const
{
    const auto above = std::lower_bound(m_model.levels.begin(), m_model.levels.end(), span.end);
    const auto below = std::upper_bound(m_model.levels.begin(), m_model.levels.end(), span.start);
    if (above == m_model.levels.end() || below == m_model.levels.begin()) return {0.0, 0.0};
    return {*(below - 1), *above};
}

// Clause 4.7.7 is for I, H and hollow sections in compression between floors, under nominal moments at the floors alone. An effective length
// that is given says that the column is held in another way.
bool LateralRules::IsSimpleColumn(const SpanResult& span) const
{
    if (!m_model.options.simpleColumn || m_model.lengthOverride) return false;
    const Shape shape = m_model.Properties().shape;
    if (shape == Shape::Angle || shape == Shape::Channel || shape == Shape::Tee) return false;
    const auto [from, to] = StoreyOf(span);
    if (!(from < to)) return false;
    const MomentDiagram::Range storey = m_model.major.Covering(from, to);
    const bool compressed =
        std::all_of(m_model.subSpans.begin() + storey.first, m_model.subSpans.begin() + storey.last,
                    [](const Steel::CSubSpan& s) { return s.GetForcesLeft().x < 0.0 && s.GetForcesRight().x < 0.0; });
    const double leastX = std::max(m_model.LeastMomentX(), LEAST_SHARE * m_model.major.Largest());
    const double leastY = std::max(m_model.LeastMomentY(), LEAST_SHARE * m_model.minor.Largest());
    return compressed && IsStraight(m_model.major, from, to, leastX) && IsStraight(m_model.minor, from, to, leastY);
}

// Annex B.2: λLT = (π² E/py)^0.5 (Mp/Mcr)^0.5 with Mp = βW Sx py.
SlendernessLT LateralRules::ElasticSlenderness(const SpanResult& span, const Classification& c) const
{
    SlendernessLT lt;
    lt.betaW = BetaW(m_model.Properties(), c);
    const double Mp = c.Wx * c.pyMomentX;
    lt.lambdaLT = std::sqrt(std::numbers::pi * std::numbers::pi * m_model.Steel().E / c.pyMomentX) *
                  std::sqrt(Mp / span.lateral.elastic->Mcr);
    lt.source = L"Annex B.2, elastic Mcr";
    return lt;
}

// The smallest Mb of the flanges that are compressed, each with the class of the places where its moment compresses it. An elastic
// critical moment is that of both flanges.
void LateralRules::SetResistance(SpanResult& span) const
{
    const SectionProperties& s = m_model.Properties();
    const Material& m = m_model.Steel();
    const SpanClass classes(s, m, m_model.subSpans, m_model.MomentsX(span.turned), m_model.MomentsY(span.turned));
    const double LE = span.applied ? span.LE : 0.0;
    bool first = true;
    for (const Flange f : FLANGES) {
        if (!span.lateral.compressed[Index(f)]) continue;
        const bool flange1 = f == Flange::First;
        const WorstClass worst =
            classes.Worst(span.start, span.end, flange1 ? SpanClass::Part::Flange1 : SpanClass::Part::Flange2);
        const Classification& c = worst.bending;
        SlendernessLT lt = LateralTorsionalSlenderness(s, LE, BetaW(s, c), flange1);
        double resistance = BucklingResistanceMoment(s, m, c, LE, flange1);
        if (span.lateral.elastic) {
            lt = ElasticSlenderness(span, c);
            resistance = BendingStrength(lt.lambdaLT, c.pyMomentX, s.IsWelded(), m.E) * c.Wx;
        } else if (span.applied && span.lateral.simpleColumn) {
            lt.lambda = span.lateral.storey / s.ry;
            lt.lambdaLT = 0.5 * lt.lambda;
            lt.source = L"4.7.7";
            resistance = BendingStrength(lt.lambdaLT, c.pyMomentX, s.IsWelded(), m.E) * c.Wx;
        }
        if (!first && !(resistance < span.resistance)) continue;
        first = false;
        span.lateral.resisting = static_cast<int>(Index(f));
        span.cls = worst.cls;
        span.lateral.modulus = c.Wx;
        span.py = c.pyMomentX;
        span.lateral.lt = lt;
        span.resistance = resistance;
        span.strength = resistance / c.Wx;
    }
}

// mLT. Table 18 reads the whole diagram; it serves a flange where the largest moment of either sign compresses it. The elastic
// critical moment has the shape of the moments in it.
double LateralRules::MomentFactor(const SpanResult& span) const
{
    if (span.lateral.elastic) return m_model.Factor(1.0, 1.0);
    const bool uniform = span.lateral.destabilising || span.lateral.cantilever; // 4.3.6.6
    const bool largest = BelongsToBoth(span) || span.effect >= span.momentX.Mmax * (1.0 - EQUAL);
    const double computed = largest ? span.momentX.factor : 1.0;
    return m_model.Factor(computed, uniform || !span.momentX.balanced || span.lateral.simpleColumn ? 1.0 : 0.0);
}

void LateralChecks::SetFactor(SpanResult& span)
{
    span.m = m_rules.MomentFactor(span);
    if (span.applied && span.lateral.elastic && m_model.momentFactor.value_or(1.0) < 1.0)
        m_found.Assume(L"mLT beside an elastic critical moment",
                       L"1.0 in place of a smaller factor given by the user: the shape of the moments is part of Mcr",
                       1.0);
    const bool uniform = (span.lateral.destabilising || span.lateral.cantilever) && !span.lateral.elastic;
    if (span.applied && uniform && m_model.momentFactor.value_or(1.0) < 1.0)
        m_found.Assume(L"mLT under destabilising loads",
                       L"1.0 in place of a smaller factor given by the user (4.3.6.6)", 1.0);
    if (span.applied && uniform && !m_model.momentFactor)
        m_found.Assume(L"mLT", L"1.0 for a destabilising load or a cantilever (4.3.6.6)", 1.0);
}

bool LateralRules::IsApplied(const SpanResult& span) const
{
    // An elastic critical moment finds any section that is not held, and loads far above one that is.
    const bool canBuckle = span.lateral.elastic || CanBuckleLaterally(m_model.Properties());
    return span.lateral.sense != CCodeShare::LT_COMP_NONE && !span.continuous && canBuckle &&
           !(span.overridden && span.LE == 0.0);
}

// Clause 4.3.6.1. Table 15 is a limit of LE/ry, which an elastic check does not have.
bool LateralRules::IsExempt(const SpanResult& span) const
{
    const SectionProperties& s = m_model.Properties();
    if (!span.applied || !CanBuckleLaterally(s)) return true;
    return !span.lateral.elastic && !span.lateral.simpleColumn && IsWithinTable15(s, m_model.Steel(), span.slenderness);
}

void LateralChecks::Check(SpanResult& span)
{
    span.Mx = span.effect;
    span.applied = m_rules.IsApplied(span);
    if (span.applied && !span.lateral.elastic)
        SetLength(span);
    else if (span.continuous)
        span.lengthRule = L"flange held along its length (4.2.2)";
    span.slenderness = span.LE / span.radius;
    m_rules.SetResistance(span);
    span.lateral.exempt = m_rules.IsExempt(span);
    SetFactor(span);
    if (span.applied) span.utilisation = Ratio(span.m * span.effect, span.resistance);
    Record(span);
}

void LateralChecks::Record(const SpanResult& span)
{
    LedgerEntry e = SpanEntry(Rule::LateralTorsional, span);
    e.clause = span.lateral.simpleColumn ? L"4.7.7" : m_model.Properties().shape == Shape::Angle ? L"4.3.8" : L"4.3.6";
    e.resistance = span.resistance;
    e.symbol = span.lateral.simpleColumn ? L"Mbs" : L"Mb";
    e.quantity = span.resistance > 0.0 ? Quantity::Moment : Quantity::None;
    if (span.applied) {
        e.utilisation = CMemberResult::InfinitiseNANs(span.utilisation);
        e.status = e.utilisation > 1.0 ? CheckStatus::Failed : CheckStatus::Passed;
        if (!(span.LE < INF)) e.reason = L"no effective length: no row of Table 13 or 14 applies to an end of the span";
        if (span.lateral.elastic) {
            const bool held = span.lateral.elastic->outcome != Stability::Outcome::NotHeld;
            e.clause = L"Annex B.2, elastic Mcr";
            e.slenderness = span.lateral.lt.lambdaLT;
            e.reason = held ? L"by the elastic critical moment"
                            : L"not held: the restraints leave the length free to move sideways or to twist";
        }
    } else {
        e.status = CheckStatus::NotApplicable;
        e.reason =
            span.continuous                             ? L"the flange is held along the span (4.2.2)"
            : !CanBuckleLaterally(m_model.Properties()) ? L"the section does not buckle laterally about x-x (4.3.6.1)"
            : span.momentX.Mmax == 0.0                  ? L"no moment about the major axis"
            : span.lateral.sense == CCodeShare::LT_COMP_NONE ? L"no moment beyond the tolerance compresses the flange"
                                                             : L"the effective length given is zero";
    }
    m_found.ledger.Add(e);
}

} // namespace Keltrix::BS5950
