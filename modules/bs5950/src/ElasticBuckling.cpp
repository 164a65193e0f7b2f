// Lateral-torsional buckling by elastic critical moments: the lengths that buckle by themselves, λLT from Mcr, Annex B.2.

#include "ElasticRules.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "BucklingEntry.h"
#include "SpanClass.h"
#include "keltrix/stability/Refusal.h"
#include "keltrix/stability/SectionConstants.h"
#include "keltrix/steel/CodeShare.h"

namespace Keltrix::BS5950 {

using Design::EndKind;
using Design::Stretch;
using Stability::Outcome;
using Steel::CMemberResult;

namespace {

// Poisson's ratio, 3.1.3.
constexpr double POISSON = 0.30;
// Share of the member's length within which two positions are one.
constexpr double SAME_PLACE = 1e-9;

bool Overlaps(double from, double to, double otherFrom, double otherTo, double tolerance)
{
    return std::min(to, otherTo) - std::max(from, otherFrom) > tolerance;
}

} // namespace

ElasticUnit ElasticUnitOf(const Stability::Unit& unit)
{
    ElasticUnit e;
    e.start = unit.start;
    e.end = unit.end;
    e.outcome = unit.outcome;
    e.largestMoment = unit.largestMoment;
    e.refusal = Stability::DesignRefusal(unit);
    e.lambda = e.Mcr = INF;
    if (unit.positive) {
        e.lambda = unit.positive->lambda;
        e.error = unit.positive->error;
        e.Mcr = e.lambda * e.largestMoment / (1.0 + e.error);
    }
    if (e.outcome == Outcome::NotHeld) e.lambda = e.Mcr = 0.0;
    return e;
}

double ElasticRules::Tolerance() const { return SAME_PLACE * m_model.Length(); }

struct ElasticRules::Analysis {
    std::vector<ElasticUnit> units;
    CString reason; ///< why there are none
};

// The bending moments alone: axial forces take part by the interaction of 4.8.3.3.
ElasticRules::Analysis ElasticRules::Analyse() const
{
    Analysis analysis;
    const double E = m_model.Steel().E;
    const auto constants =
        Stability::MakeSectionConstants(m_model.KeltrixSection(), E, E / (2.0 * (1.0 + POISSON)), &analysis.reason);
    if (!constants) return analysis;
    std::vector<Steel::CSubSpan> bent = m_model.subSpans;
    for (Steel::CSubSpan& sub : bent) {
        Vec3<double> left = sub.GetForcesLeft();
        Vec3<double> right = sub.GetForcesRight();
        left.x = right.x = 0.0;
        sub.SetForcesAll(left, right);
    }
    const Stability::CriticalLoads loads =
        Stability::FindCriticalLoads(m_model.points, bent, m_model.major, *constants, Stability::FACTORS_ALONE);
    analysis.reason = loads.reason;
    for (const Stability::Unit& unit : loads.units)
        analysis.units.push_back(ElasticUnitOf(unit));
    return analysis;
}

bool ElasticRules::CanBeUsed() const
{
    return m_model.options.lateral == LateralMethod::Elastic && m_model.major.Largest() > m_model.LeastMomentX();
}

void ElasticRules::FindUnits(MemberResults& found) const
{
    found.units.clear();
    found.elasticReason = CString();
    if (!CanBeUsed()) return;
    if (m_model.lengthOverride) {
        found.elasticReason = L"the effective length is given";
        return;
    }
    Analysis analysis = Analyse();
    found.units = std::move(analysis.units);
    found.elasticReason = analysis.reason;
    if (!UsesElastic(found.units)) return;
    found.Assume(
        L"lateral-torsional buckling",
        L"by elastic critical moments, as the options say; partial restraints and restraint by friction hold nothing, "
        L"what lies beyond the ends of a length is neglected",
        std::nan(""));
}

bool UsesElastic(const std::vector<ElasticUnit>& units)
{
    return std::any_of(units.begin(), units.end(), [](const ElasticUnit& unit) { return !unit.refusal; });
}

// What was asked for and is not done, where nobody can miss it.
void ElasticRules::AddWarnings(MemberResults& found) const
{
    const CDesFormat& fmt = m_model.format;
    const auto warn = [&](const CString& where, const CString& reason, double start, double end) {
        CString text;
        text.Format(L"lateral-torsional buckling%s is checked by Tables 13, 14 and 18 and not by the elastic critical "
                    L"moment that the options ask for: %s",
                    where, reason);
        found.warnings.push_back({Design::WarningKind::OtherMethod, text, -1, start, end});
    };
    if (!found.elasticReason.IsEmpty()) warn(CString(), found.elasticReason, std::nan(""), std::nan(""));
    for (const ElasticUnit& unit : found.units) {
        if (!unit.refusal) continue;
        CString where;
        where.Format(L" between %s and %s", fmt.Length(unit.start), fmt.Length(unit.end));
        warn(where, unit.refusal, unit.start, unit.end);
    }
}

// A span of an elastic check: a unit, or between units a length that is held all along.
SpanResult ElasticRules::MakeSpan(double from, double to, const ElasticUnit* unit) const
{
    const auto& points = m_model.points;
    const int last = static_cast<int>(points.size()) - 1;
    const double tolerance = Tolerance();
    const auto end = [&](double x, bool isLeft) {
        Design::StretchEnd e;
        e.x = x;
        e.kind = EndKind::ContinuousEdge;
        for (int i = 0; i <= last; ++i)
            if (std::abs(points[static_cast<std::size_t>(i)].GetPos() - x) <= tolerance && (isLeft || e.point < 0))
                e.point = i;
        if (e.point < 0) return e;
        e.kind = EndKind::HeldPoint;
        if (e.point == 0 || e.point == last)
            e.kind = Design::IsTip(points, e.point) ? EndKind::Tip : EndKind::MemberEnd;
        e.restraint = Design::Resolved(m_model.PointRestraint(e.point), 0);
        return e;
    };
    Stretch stretch;
    stretch.flange = {true, true};
    stretch.held = !unit;
    stretch.left = end(from, true);
    stretch.right = end(to, false);
    stretch.cantilever = stretch.left.kind == EndKind::Tip || stretch.right.kind == EndKind::Tip;
    stretch.moments = m_model.major.Between(from, to);
    SpanResult span = m_lateral.MakeSpan(stretch, false);
    const auto reason = [](EndKind kind) {
        switch (kind) {
        case EndKind::HeldPoint:
        case EndKind::ContinuousEdge:
            return L"held laterally and against twist";
        case EndKind::Tip:
            return Design::EndKindText(EndKind::Tip);
        case EndKind::MemberEnd:
            break;
        }
        return L"end of the member, as its restraint holds it";
    };
    span.startReason = reason(span.from.kind);
    span.endReason = reason(span.to.kind);
    if (unit) span.lateral.elastic = *unit;
    return span;
}

// Why a part of the member is checked by the tables although the options ask for elastic checks; null where it is not.
const wchar_t* ElasticRules::Refusal(const std::vector<ElasticUnit>& units, const std::vector<Stretch>& stretches) const
{
    for (const Stretch& stretch : stretches)
        if (m_lateral.MakeSpan(stretch, false).lateral.simpleColumn) return L"column in simple construction (4.7.7)";
    for (const ElasticUnit& unit : units)
        for (const Stretch& stretch : stretches)
            if (unit.refusal && Overlaps(unit.start, unit.end, stretch.left.x, stretch.right.x, Tolerance()))
                return unit.refusal;
    return nullptr;
}

// Parts of the member between places at which neither a unit nor a stretch goes on are checked in one way each: all units of a part
// elastically or all of its stretches by the tables.
void ElasticRules::AddSpans(const std::vector<Stretch>& stretches, MemberResults& found) const
{
    const double tolerance = Tolerance();
    std::vector<double> cuts{m_model.points.front().GetPos(), m_model.points.back().GetPos()};
    for (const ElasticUnit& unit : found.units)
        for (const double x : {unit.start, unit.end}) {
            const bool inside = std::any_of(stretches.begin(), stretches.end(), [&](const Stretch& s) {
                return s.left.x < x - tolerance && s.right.x > x + tolerance;
            });
            if (!inside) cuts.push_back(x);
        }
    std::sort(cuts.begin(), cuts.end());
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) {
        const double from = cuts[i];
        const double to = cuts[i + 1];
        if (!(to - from > tolerance)) continue;
        std::vector<Stretch> part;
        std::copy_if(stretches.begin(), stretches.end(), std::back_inserter(part),
                     [&](const Stretch& s) { return Overlaps(from, to, s.left.x, s.right.x, tolerance); });
        AddPart(part, from, to, found);
    }
}

void ElasticRules::AddPart(const std::vector<Stretch>& part, double from, double to, MemberResults& found) const
{
    if (Refusal(found.units, part)) {
        for (const Stretch& stretch : part)
            found.spans.push_back(m_lateral.MakeSpan(stretch, false));
        return;
    }
    const double tolerance = Tolerance();
    double x = from;
    for (const ElasticUnit& unit : found.units) {
        if (!Overlaps(from, to, unit.start, unit.end, tolerance)) continue;
        if (unit.start - x > tolerance) found.spans.push_back(MakeSpan(x, unit.start, nullptr));
        found.spans.push_back(MakeSpan(unit.start, unit.end, &unit));
        x = unit.end;
    }
    if (to - x > tolerance) found.spans.push_back(MakeSpan(x, to, nullptr));
}

// --- Figures beside the rules ---

// Where the tables give nothing, or are far on the safe side: no row, the other flange held along the stretch (Annex G), cantilevers.
bool ElasticRules::IsOffered(const SpanResult& span, const std::vector<SpanResult>& spans) const
{
    const bool isMode = span.mode == BucklingMode::LateralTorsional && span.applied && !span.turned;
    if (!isMode || span.lateral.elastic || span.overridden || m_model.options.lateral != LateralMethod::Tables ||
        m_model.Properties().shape == Shape::Angle || span.lateral.simpleColumn)
        return false;
    if (!(span.LE < INF) || span.lateral.cantilever) return true;
    if (span.lateral.flange[0] == span.lateral.flange[1]) return false;
    const std::size_t other = span.lateral.flange[0] ? 1 : 0;
    const double tolerance = Tolerance();
    return std::any_of(spans.begin(), spans.end(), [&](const SpanResult& s) {
        return s.mode == BucklingMode::LateralTorsional && s.lateral.flange[other] && !s.turned &&
               Overlaps(s.start, s.end, span.start, span.end, tolerance) &&
               (s.continuous || s.start > span.start + tolerance || s.end < span.end - tolerance);
    });
}

// Of the stretches that an elastically checked length has in common with the tables' way, the one of the largest utilisation; without
// effect where the tables check none.
SpanResult ElasticRules::WorstByTables(const SpanResult& span) const
{
    SpanResult worst;
    for (const Stretch& stretch : m_lateral.Stretches(false)) {
        if (!Overlaps(stretch.left.x, stretch.right.x, span.start, span.end, Tolerance())) continue;
        SpanResult s = m_lateral.MakeSpan(stretch, false);
        s.applied = m_lateral.IsApplied(s);
        if (!s.applied) continue;
        m_lateral.FindLength(s, Steel::CCodeShare(nullptr));
        m_lateral.SetResistance(s);
        s.m = m_lateral.MomentFactor(s);
        s.utilisation = CMemberResult::InfinitiseNANs(Ratio(s.m * s.effect, s.resistance));
        if (!worst.applied || s.utilisation > worst.utilisation) worst = s;
    }
    return worst;
}

namespace {

LedgerEntry InformationEntry(const SpanResult& span, const wchar_t* reason)
{
    LedgerEntry e = SpanEntry(Rule::LateralTorsional, span);
    e.clause = span.lateral.elastic ? L"Annex B.2, elastic Mcr" : L"4.3.6";
    e.status = CheckStatus::Information;
    e.reason = reason;
    e.utilisation = CMemberResult::InfinitiseNANs(span.utilisation);
    e.resistance = span.resistance;
    e.symbol = L"Mb";
    e.quantity = Quantity::Moment;
    e.slenderness = span.lateral.lt.lambdaLT;
    return e;
}

} // namespace

void ElasticRules::AddInformation(const std::vector<SpanResult>& spans, const std::vector<SpanResult>& offers,
                                  std::vector<LedgerEntry>& entries) const
{
    for (const SpanResult& span : spans) {
        if (!span.lateral.elastic || !span.applied) continue;
        const SpanResult tables = WorstByTables(span);
        if (tables.applied)
            entries.push_back(InformationEntry(tables, L"by Tables 13, 14 and 18, the way that is not used here"));
    }
    for (const SpanResult& unit : offers) {
        const bool held = unit.lateral.elastic->outcome != Outcome::NotHeld;
        entries.push_back(InformationEntry(
            unit, held ? L"by the elastic critical moment, which the option ltb takes; the check above is by the tables"
                       : L"by the elastic critical moment: not held, the restraints leave the length free to move"));
    }
}

// The elastic figures that are offered beside the tables, one for each unit.
std::vector<SpanResult> ElasticRules::Offers(const std::vector<SpanResult>& spans) const
{
    std::vector<SpanResult> offered;
    const auto wanted = [&](const ElasticUnit& unit) {
        return !unit.refusal && std::any_of(spans.begin(), spans.end(), [&](const SpanResult& s) {
            return IsOffered(s, spans) && Overlaps(s.start, s.end, unit.start, unit.end, Tolerance());
        });
    };
    if (std::none_of(spans.begin(), spans.end(), [&](const SpanResult& s) { return IsOffered(s, spans); }))
        return offered;
    for (const ElasticUnit& unit : Analyse().units) {
        if (!wanted(unit)) continue;
        SpanResult span = MakeSpan(unit.start, unit.end, &unit);
        span.applied = m_lateral.IsApplied(span);
        if (!span.applied) continue;
        m_lateral.SetResistance(span);
        span.m = m_lateral.MomentFactor(span);
        span.utilisation = Ratio(span.m * span.effect, span.resistance);
        offered.push_back(span);
    }
    return offered;
}

} // namespace Keltrix::BS5950
