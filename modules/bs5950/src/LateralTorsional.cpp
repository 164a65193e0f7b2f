// Lateral-torsional buckling: stretches of each flange between sections that hold it, Tables 13, 14 and 18, 4.3, 4.7.7.

#include <algorithm>
#include <cmath>

#include "BucklingEntry.h"
#include "MemberText.h"
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

int SenseOf(const std::array<bool, 2>& compressed)
{
    if (compressed[0] && compressed[1]) return CCodeShare::LT_COMP_BOTH;
    if (compressed[0]) return CCodeShare::LT_COMP_FLANGE1;
    return compressed[1] ? CCodeShare::LT_COMP_FLANGE2 : CCodeShare::LT_COMP_NONE;
}

bool BelongsToBoth(const SpanResult& span) { return span.flange[0] && span.flange[1]; }

} // namespace

// Given effective lengths leave one stretch, the whole member, for both flanges.
std::vector<Stretch> CSteelMemberBS5950::LateralStretches(bool turned) const
{
    const MomentDiagram& moments = MomentsX(turned);
    if (!LengthOverride()) return Design::FindStretches(MemberPoints(), SubSpans(), moments);
    const int last = static_cast<int>(MemberPoints().size()) - 1;
    const auto end = [&](int point) {
        StretchEnd e;
        e.kind = Design::IsTip(MemberPoints(), point) ? EndKind::Tip : EndKind::MemberEnd;
        e.x = MemberPoints()[static_cast<std::size_t>(point)].GetPos();
        e.point = point;
        e.restraint = Design::Resolved(PointRestraint(point), 0);
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

SpanResult CSteelMemberBS5950::LateralSpan(const Stretch& stretch, bool turned) const
{
    const auto position = [](const Steel::CMemberPoint& point) { return point.GetPos(); };
    SpanResult span;
    span.mode = BucklingMode::LateralTorsional;
    span.turned = turned;
    span.from = stretch.left;
    span.to = stretch.right;
    span.start = stretch.left.x;
    span.end = stretch.right.x;
    const auto& points = MemberPoints();
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
    span.flange = stretch.flange;
    span.continuous = stretch.held;
    span.cantilever = stretch.cantilever;
    span.radius = m_section.Properties().MinorRadius();
    const double least = std::max(LeastMomentX(), LEAST_SHARE * MomentsX(turned).Largest());
    for (const Flange f : FLANGES) {
        const double moment = stretch.Has(f) ? stretch.Compressing(f) : 0.0;
        span.compressed[Index(f)] = !(moment <= least);
        if (span.compressed[Index(f)]) span.effect = std::max(span.effect, moment);
        if (std::isnan(moment)) span.effect = moment;
    }
    span.sense = SenseOf(span.compressed);
    span.destabilising = Design::IsDestabilised(stretch, points, SubSpans());
    span.momentX = ShapeOf(MomentsX(turned), span.start, span.end, FactorTable::Table18);
    return span;
}

void CSteelMemberBS5950::FindLateralSpans(bool turned)
{
    const std::vector<Stretch> stretches = LateralStretches(turned);
    if (!m_units.empty() && !turned) {
        FindElasticSpans(stretches, MemberPoints().front().GetPos(), MemberPoints().back().GetPos());
        return;
    }
    for (const Stretch& stretch : stretches) {
        m_spans.push_back(LateralSpan(stretch, turned));
        if (LengthOverride()) SetOverride(m_spans.back(), Llt());
    }
}

bool CSteelMemberBS5950::IsUnsupportedEnd(const StretchEnd& end) const
{
    const int last = static_cast<int>(MemberPoints().size()) - 1;
    return (end.point == 0 || end.point == last) && end.kind != EndKind::Tip &&
           !PointRestraint(end.point).IsRestrained(CRestraint::MAJOR_SHEAR, false);
}

// Effective length of the stretch for each flange that is compressed; the longer one counts.
void CSteelMemberBS5950::SetLateralLength(SpanResult& span)
{
    if (span.overridden) return;
    if (!span.cantilever && (IsUnsupportedEnd(span.from) || IsUnsupportedEnd(span.to)))
        Assume(L"vertical support", L"an end without major axis shear restraint is taken as supported, not as a tip",
               std::nan(""));
    FindLateralLength(span, CCodeShare(Result()));
}

void CSteelMemberBS5950::FindLateralLength(SpanResult& span, const CCodeShare& rules) const
{
    Stretch stretch;
    stretch.cantilever = span.cantilever;
    stretch.left = span.from;
    stretch.right = span.to;
    for (const Flange f : FLANGES) {
        if (!span.compressed[Index(f)]) continue;
        const Design::LateralLength length = Design::FindLateralLength(
            stretch, f, MemberPoints(), MomentsX(span.turned), m_section.Properties().D, span.destabilising, rules);
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
        span.tipMoment = length.tipMoment;
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
std::pair<double, double> CSteelMemberBS5950::StoreyOf(const SpanResult& span) const
{
    const auto above = std::lower_bound(m_levels.begin(), m_levels.end(), span.end);
    const auto below = std::upper_bound(m_levels.begin(), m_levels.end(), span.start);
    if (above == m_levels.end() || below == m_levels.begin()) return {0.0, 0.0};
    return {*(below - 1), *above};
}

// Clause 4.7.7 is for I, H and hollow sections in compression between floors, under nominal moments at the floors alone. An effective length
// that is given says that the column is held in another way.
bool CSteelMemberBS5950::IsSimpleColumn(const SpanResult& span) const
{
    if (!m_options.simpleColumn || LengthOverride()) return false;
    const Shape shape = m_section.Properties().shape;
    if (shape == Shape::Angle || shape == Shape::Channel || shape == Shape::Tee) return false;
    const auto [from, to] = StoreyOf(span);
    if (!(from < to)) return false;
    const MomentDiagram::Range storey = m_major.Covering(from, to);
    const bool compressed =
        std::all_of(SubSpans().begin() + storey.first, SubSpans().begin() + storey.last,
                    [](const Steel::CSubSpan& s) { return s.GetForcesLeft().x < 0.0 && s.GetForcesRight().x < 0.0; });
    const double leastX = std::max(LeastMomentX(), LEAST_SHARE * m_major.Largest());
    const double leastY = std::max(LeastMomentY(), LEAST_SHARE * m_minor.Largest());
    return compressed && IsStraight(m_major, from, to, leastX) && IsStraight(m_minor, from, to, leastY);
}

// Positions at which a column in simple construction is held in both directions.
void CSteelMemberBS5950::FindLevels()
{
    m_levels.clear();
    if (!m_options.simpleColumn) return;
    for (int i = 0; i < static_cast<int>(MemberPoints().size()); ++i)
        if (PointHeld(BucklingMode::Major, i) && PointHeld(BucklingMode::Minor, i))
            m_levels.push_back(MemberPoints()[static_cast<std::size_t>(i)].GetPos());
}

// The smallest Mb of the flanges that are compressed, each with the class of the places where its moment compresses it. An elastic
// critical moment is that of both flanges.
void CSteelMemberBS5950::SetBendingResistance(SpanResult& span) const
{
    const SectionProperties& s = m_section.Properties();
    const Material& m = m_section.Steel();
    const SpanClass classes(s, m, SubSpans(), MomentsX(span.turned), MomentsY(span.turned));
    const double LE = span.applied ? span.LE : 0.0;
    bool first = true;
    for (const Flange f : FLANGES) {
        if (!span.compressed[Index(f)]) continue;
        const bool flange1 = f == Flange::First;
        const WorstClass worst =
            classes.Worst(span.start, span.end, flange1 ? SpanClass::Part::Flange1 : SpanClass::Part::Flange2);
        const Classification& c = worst.bending;
        SlendernessLT lt = LateralTorsionalSlenderness(s, LE, BetaW(s, c), flange1);
        double resistance = BucklingResistanceMoment(s, m, c, LE, flange1);
        if (span.elastic) {
            lt = ElasticSlenderness(span, c);
            resistance = BendingStrength(lt.lambdaLT, c.pyMomentX, s.IsWelded(), m.E) * c.Wx;
        } else if (span.applied && IsSimpleColumn(span)) {
            const auto [from, to] = StoreyOf(span);
            lt.lambda = (to - from) / s.ry;
            lt.lambdaLT = 0.5 * lt.lambda;
            lt.source = L"4.7.7";
            resistance = BendingStrength(lt.lambdaLT, c.pyMomentX, s.IsWelded(), m.E) * c.Wx;
        }
        if (!first && !(resistance < span.resistance)) continue;
        first = false;
        span.resisting = static_cast<int>(Index(f));
        span.cls = worst.cls;
        span.modulus = c.Wx;
        span.py = c.pyMomentX;
        span.lt = lt;
        span.resistance = resistance;
        span.strength = resistance / c.Wx;
    }
}

// mLT. Table 18 reads the whole diagram; it serves a flange where the largest moment of either sign compresses it. The elastic
// critical moment has the shape of the moments in it.
double CSteelMemberBS5950::LateralFactor(const SpanResult& span) const
{
    if (span.elastic) return Factor(1.0, 1.0);
    const bool uniform = span.destabilising || span.cantilever; // 4.3.6.6
    const bool largest = BelongsToBoth(span) || span.effect >= span.momentX.Mmax * (1.0 - EQUAL);
    const double computed = largest ? span.momentX.factor : 1.0;
    return Factor(computed, uniform || !span.momentX.balanced || IsSimpleColumn(span) ? 1.0 : 0.0);
}

void CSteelMemberBS5950::SetLateralFactor(SpanResult& span)
{
    span.m = LateralFactor(span);
    if (span.applied && span.elastic && EquivalentUniformMomentFactor().value_or(1.0) < 1.0)
        Assume(L"mLT beside an elastic critical moment",
               L"1.0 in place of a smaller factor given by the user: the shape of the moments is part of Mcr", 1.0);
    const bool uniform = (span.destabilising || span.cantilever) && !span.elastic;
    if (span.applied && uniform && EquivalentUniformMomentFactor().value_or(1.0) < 1.0)
        Assume(L"mLT under destabilising loads", L"1.0 in place of a smaller factor given by the user (4.3.6.6)", 1.0);
    if (span.applied && uniform && !EquivalentUniformMomentFactor())
        Assume(L"mLT", L"1.0 for a destabilising load or a cantilever (4.3.6.6)", 1.0);
}

bool CSteelMemberBS5950::IsLateralApplied(const SpanResult& span) const
{
    // An elastic critical moment finds any section that is not held, and loads far above one that is.
    const bool canBuckle = span.elastic || CanBuckleLaterally(m_section.Properties());
    return span.sense != CCodeShare::LT_COMP_NONE && !span.continuous && canBuckle &&
           !(span.overridden && span.LE == 0.0);
}

void CSteelMemberBS5950::CheckLateral(SpanResult& span)
{
    const bool text = Result() && Result()->TextEnabled();
    span.Mx = span.effect;
    span.applied = IsLateralApplied(span);
    if (text) Text(*this).LateralTitle(span);
    if (span.applied && !span.elastic) {
        const Steel::CResultIndent indent(Result());
        SetLateralLength(span);
    } else if (span.continuous)
        span.lengthRule = L"flange held along its length (4.2.2)";
    span.slenderness = span.LE / span.radius;
    SetBendingResistance(span);
    SetLateralFactor(span);
    if (span.applied) span.utilisation = Ratio(span.m * span.effect, span.resistance);
    RecordLateral(span);
    if (text) Text(*this).Lateral(span);
}

void CSteelMemberBS5950::RecordLateral(const SpanResult& span)
{
    LedgerEntry e = SpanEntry(Rule::LateralTorsional, span);
    e.clause = IsSimpleColumn(span) ? L"4.7.7" : m_section.Properties().shape == Shape::Angle ? L"4.3.8" : L"4.3.6";
    e.resistance = span.resistance;
    e.symbol = IsSimpleColumn(span) ? L"Mbs" : L"Mb";
    e.quantity = span.resistance > 0.0 ? Quantity::Moment : Quantity::None;
    if (span.applied) {
        e.utilisation = CMemberResult::InfinitiseNANs(span.utilisation);
        e.status = e.utilisation > 1.0 ? CheckStatus::Failed : CheckStatus::Passed;
        if (!(span.LE < INF)) e.reason = L"no effective length: no row of Table 13 or 14 applies to an end of the span";
        if (span.elastic) {
            const bool held = span.elastic->outcome != Stability::Outcome::NotHeld;
            e.clause = L"Annex B.2, elastic Mcr";
            e.slenderness = span.lt.lambdaLT;
            e.reason = held ? L"by the elastic critical moment"
                            : L"not held: the restraints leave the length free to move sideways or to twist";
        }
    } else {
        e.status = CheckStatus::NotApplicable;
        e.reason = span.continuous ? L"the flange is held along the span (4.2.2)"
                   : !CanBuckleLaterally(m_section.Properties())
                       ? L"the section does not buckle laterally about x-x (4.3.6.1)"
                   : span.momentX.Mmax == 0.0               ? L"no moment about the major axis"
                   : span.sense == CCodeShare::LT_COMP_NONE ? L"no moment beyond the tolerance compresses the flange"
                                                            : L"the effective length given is zero";
    }
    m_ledger.Add(e);
}

// Sections stiffer about y-y, such as wide tees (B.2.8 b) and hollow sections laid flat, buckle laterally under moment
// about y-y.
void CSteelMemberBS5950::RecordMinorAxisLateral()
{
    const SectionProperties& s = m_section.Properties();
    if (!(s.Iy > s.Ix * (1.0 + 1e-9)) || s.shape == Shape::Angle || m_minor.Largest() <= LeastMomentY()) return;
    LedgerEntry e;
    e.rule = Rule::LateralTorsional;
    e.clause = s.shape == Shape::Tee ? L"B.2.8 b" : L"4.3.6";
    e.start = MemberPoints().front().GetPos();
    e.end = MemberPoints().back().GetPos();
    e.status = CheckStatus::NotEvaluated;
    e.reason = L"lateral-torsional buckling under moment about y-y, the stiffer axis, is not covered";
    m_ledger.Add(e);
    if (Result()) Result()->AddFlags(CMemberResult::NOT_CHECKED);
}

} // namespace Keltrix::BS5950
