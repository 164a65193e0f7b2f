// Elastic critical loads of struts, for information: torsional, flexural-torsional and minor-axis flexural buckling as the member is
// held. The standard checks flexure alone.

#include "TorsionalBuckling.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

#include "BucklingEntry.h"
#include "keltrix/stability/CoupledBuckling.h"
#include "keltrix/stability/Refusal.h"
#include "keltrix/stability/SectionConstants.h"

namespace Keltrix::BS5950 {

using Stability::Outcome;
using Steel::CMemberResult;

namespace {

// Relative difference up to which a critical load counts as that of flexure.
constexpr double SAME_LOAD = 1e-3;

constexpr const wchar_t* NOT_HELD = L"not held: the restraints leave the length free to move sideways or to twist";

// The member under its axial forces alone.
std::vector<Steel::CSubSpan> AxialAlone(std::vector<Steel::CSubSpan> subSpans)
{
    for (Steel::CSubSpan& sub : subSpans) {
        sub.SetForcesAll({sub.GetForcesLeft().x, 0.0, 0.0}, {sub.GetForcesRight().x, 0.0, 0.0});
        sub.SetMomentsAll({0.0, 0.0, 0.0}, {0.0, 0.0, 0.0});
    }
    return subSpans;
}

// The smallest critical load of the slendernesses with which compression is checked somewhere in a length, about one axis or both.
double CheckedFlexuralLoad(const MemberModel& model, const std::vector<SpanResult>& spans, double from, double to,
                           std::optional<BucklingMode> mode = std::nullopt)
{
    const double EA = model.Steel().E * model.Properties().A;
    double least = std::numeric_limits<double>::infinity();
    for (const SpanResult& span : spans) {
        const bool isWanted = mode ? span.mode == *mode : span.mode != BucklingMode::LateralTorsional;
        const bool checked = isWanted && span.applied && span.slenderness > 0.0;
        if (!checked || !(span.start < to && from < span.end)) continue;
        least = std::min(least, std::numbers::pi * std::numbers::pi * EA / (span.slenderness * span.slenderness));
    }
    return least;
}

// The largest compression of the sub-spans in a length; 0 where there is none.
double LargestCompression(const MemberModel& model, double from, double to)
{
    const double tolerance = 1e-9 * model.Length();
    double compression = 0.0;
    for (std::size_t k = 0; k < model.subSpans.size(); ++k) {
        const Steel::CSubSpan& sub = model.subSpans[k];
        const bool inside =
            model.points[k].GetPos() >= from - tolerance && model.points[k + 1].GetPos() <= to + tolerance;
        if (inside) compression = std::max({compression, -sub.GetForcesLeft().x, -sub.GetForcesRight().x});
    }
    return compression;
}

bool IsFork(const Steel::CMemberPoint& point)
{
    return point.GetRestraint().IsRestrained(Data::CRestraint::MINOR_SHEAR | Data::CRestraint::TORSION, true);
}

LedgerEntry EntryOf(const MemberModel& model, const std::vector<SpanResult>& spans, double start, double end,
                    double load, double compression)
{
    LedgerEntry e;
    e.rule = Rule::TorsionalBuckling;
    e.clause = L"elastic Ncr";
    e.status = CheckStatus::Information;
    e.start = start;
    e.end = end;
    e.symbol = L"Ncr";
    e.quantity = Quantity::Force;
    e.resistance = load;
    e.utilisation = CMemberResult::InfinitiseNANs(compression / load);
    e.slenderness = std::numbers::pi * std::sqrt(model.Steel().E * model.Properties().A / load);
    const bool lower = load < CheckedFlexuralLoad(model, spans, start, end) * (1.0 - SAME_LOAD);
    e.reason = lower
                   ? L"BELOW the critical load of the effective lengths that are checked: twist, or how the member is "
                     L"held, lowers the load at which it buckles, and no rule of the standard checks that"
                   : L"not below the critical load of the effective lengths that are checked";
    return e;
}

// A channel with an end that is free to move sideways or to twist.
bool IsUnknownChannel(const MemberModel& model)
{
    return model.Properties().shape == Shape::Channel &&
           (!IsFork(model.points.front()) || !IsFork(model.points.back()));
}

// A channel, whose shear centre lies off the plane of its web: flexure about the major axis and twist together, between neighbouring sections that
// hold it laterally and against twist. What holds it in between is left out, which is safe. Nothing is known of free ends.
std::vector<LedgerEntry> CoupledLoadsOf(const MemberModel& model, const std::vector<SpanResult>& spans)
{
    std::vector<LedgerEntry> entries;
    const auto& points = model.points;
    if (IsUnknownChannel(model)) return entries;
    const SectionProperties& s = model.Properties();
    const double E = model.Steel().E;
    const double i2 = (s.Ix + s.Iy) / s.A + s.x0 * s.x0 + s.y0 * s.y0;
    double start = points.front().GetPos();
    for (const Steel::CMemberPoint& point : points) {
        const double end = point.GetPos();
        if (!IsFork(point) || !(end > start)) continue;
        const double compression = LargestCompression(model, start, end);
        const double k2 = std::numbers::pi * std::numbers::pi / ((end - start) * (end - start));
        Stability::ModeForces forces;
        forces.major = CheckedFlexuralLoad(model, spans, start, end, BucklingMode::Major);
        forces.minor = k2 * E * s.Iy;
        forces.twist = (E / 2.6 * s.J + k2 * E * s.H) / i2;
        const double coupled = Stability::CoupledForce(s.x0 / std::sqrt(i2), s.y0 / std::sqrt(i2), forces);
        if (compression > 0.0)
            entries.push_back(EntryOf(model, spans, start, end, std::min(coupled, forces.minor), compression));
        start = end;
    }
    return entries;
}

bool HasStrut(const std::vector<SpanResult>& spans)
{
    return std::any_of(spans.begin(), spans.end(), [](const SpanResult& span) {
        return span.mode != BucklingMode::LateralTorsional && span.applied;
    });
}

// The critical load of each length that is compressed; NotEvaluated, with the reason, where the analysis is not exact enough.
std::vector<LedgerEntry> CriticalLoadsOf(const MemberModel& model, const std::vector<SpanResult>& spans)
{
    std::vector<LedgerEntry> entries;
    if (!HasStrut(spans)) return entries;
    const Shape shape = model.Properties().shape;
    if (shape == Shape::Angle) return entries; // 4.7.10 has the lengths of its ends
    if (shape == Shape::Channel) return CoupledLoadsOf(model, spans);
    const double E = model.Steel().E;
    const auto constants = Stability::MakeSectionConstants(model.KeltrixSection(), E, E / 2.6, nullptr);
    if (!constants) return entries;
    const std::vector<Steel::CSubSpan> axial = AxialAlone(model.subSpans);
    const Design::MomentDiagram none(model.points, axial, Design::Bending::Major);
    const Stability::CriticalLoads loads =
        Stability::FindCriticalLoads(model.points, axial, none, *constants, Stability::FACTORS_ALONE);
    for (const Stability::Unit& unit : loads.units) {
        const double compression = LargestCompression(model, unit.start, unit.end);
        if (!(compression > 0.0) || unit.outcome == Outcome::NothingBuckles) continue;
        const wchar_t* const refusal = Stability::DesignRefusal(unit);
        const bool isKnown = unit.positive && !refusal;
        const double load = isKnown ? unit.positive->lambda * compression / (1.0 + unit.positive->error) : 0.0;
        LedgerEntry e = EntryOf(model, spans, unit.start, unit.end, load, compression);
        if (unit.outcome == Outcome::NotHeld) e.reason = NOT_HELD;
        if (refusal) e.reason = refusal;
        if (refusal) e.status = CheckStatus::NotEvaluated;
        entries.push_back(e);
    }
    return entries;
}

} // namespace

std::vector<LedgerEntry> StrutInformation(const MemberModel& model, const std::vector<SpanResult>& spans)
{
    std::vector<LedgerEntry> entries = CriticalLoadsOf(model, spans);
    std::erase_if(entries, [](const LedgerEntry& e) { return e.status != CheckStatus::Information; });
    return entries;
}

namespace {

// Whether closed forms show that no strut of the member reaches its elastic critical load, which saves the analysis: between sections
// that hold it laterally and against twist a length has at least the critical load of one between forks without anything in between,
// under the largest force all along (Timoshenko and Gere, Theory of Elastic Stability, 5.6).
bool IsPlainlyStable(const MemberModel& model)
{
    constexpr double MARGIN = 0.9;
    const auto& points = model.points;
    const double compression = LargestCompression(model, points.front().GetPos(), points.back().GetPos());
    if (!(compression > 0.0)) return true;
    if (model.Properties().shape == Shape::Channel || !IsFork(points.front()) || !IsFork(points.back())) return false;
    double longest = 0.0;
    double held = points.front().GetPos();
    for (const Steel::CMemberPoint& point : points) {
        if (!IsFork(point)) continue;
        longest = std::max(longest, point.GetPos() - held);
        held = point.GetPos();
    }
    const double E = model.Steel().E;
    const auto s = Stability::MakeSectionConstants(model.KeltrixSection(), E, E / 2.6, nullptr);
    if (!s) return false;
    return compression < MARGIN * Stability::StrutForceBetweenForks(*s, longest);
}

} // namespace

// No rule of the standard compares a strut with its torsional critical load, which Table 11 and 4.7.10 keep away in common sections.
// Where the strut is not held, or its force reaches the elastic critical load, it stands by none.
void RecordTorsionalBuckling(const MemberModel& model, MemberResults& found)
{
    const bool failed = found.ledger.HasFailed(Stage::Local) || found.ledger.HasFailed(Stage::Buckling);
    const std::vector<LedgerEntry> struts =
        failed || IsPlainlyStable(model) ? std::vector<LedgerEntry>() : CriticalLoadsOf(model, found.spans);
    LedgerEntry e;
    e.rule = Rule::TorsionalBuckling;
    e.clause = RuleClause(e.rule);
    e.status = CheckStatus::NotApplicable;
    e.reason = L"the standard has no separate rule; Table 11 and clause 4.7.10 limit what torsion can take away";
    if (IsUnknownChannel(model) && HasStrut(found.spans))
        e.reason = L"the standard has no separate rule; NOT COMPARED with the critical load, which is not known of a "
                   L"channel with an end that "
                   L"is free to move sideways or to twist";
    const auto worst = std::max_element(struts.begin(), struts.end(), [](const LedgerEntry& a, const LedgerEntry& b) {
        return a.utilisation < b.utilisation;
    });
    if (worst != struts.end() && !(worst->utilisation < 1.0)) {
        e.status = CheckStatus::NotEvaluated;
        e.start = worst->start;
        e.end = worst->end;
        if (worst->resistance > 0.0)
            e.reason =
                L"the compression reaches the elastic critical load of the member as it is held, and the standard has "
                L"no rule for it";
        else if (worst->reason == NOT_HELD)
            e.reason =
                L"the restraints leave the strut free to move sideways or to twist, and the standard has no rule "
                L"for it";
        else
            e.reason = worst->reason;
    }
    found.ledger.Add(e);
}

} // namespace Keltrix::BS5950
