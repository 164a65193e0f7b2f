// Elastic critical loads of struts, for information: torsional, flexural-torsional and minor-axis flexural buckling as the member is
// held. The standard checks flexure alone.

#include "TorsionalBuckling.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "BucklingEntry.h"
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

// The smallest critical load of the slendernesses with which compression is checked somewhere in a length.
double CheckedFlexuralLoad(const MemberModel& model, const std::vector<SpanResult>& spans, double from, double to)
{
    const double EA = model.Steel().E * model.Properties().A;
    double least = std::numeric_limits<double>::infinity();
    for (const SpanResult& span : spans) {
        const bool checked = span.mode != BucklingMode::LateralTorsional && span.applied && span.slenderness > 0.0;
        if (!checked || !(span.start < to && from < span.end)) continue;
        least = std::min(least, std::numbers::pi * std::numbers::pi * EA / (span.slenderness * span.slenderness));
    }
    return least;
}

// The critical load of each length that is compressed; NotEvaluated, with the reason, where the analysis is not exact enough.
std::vector<LedgerEntry> CriticalLoadsOf(const MemberModel& model, const std::vector<SpanResult>& spans)
{
    std::vector<LedgerEntry> entries;
    const auto isStrut = [](const SpanResult& span) {
        return span.mode != BucklingMode::LateralTorsional && span.applied;
    };
    const Shape shape = model.Properties().shape;
    const bool covered = shape != Shape::Angle && shape != Shape::Channel; // the shear centre lies in the web plane
    if (!covered || std::none_of(spans.begin(), spans.end(), isStrut)) return entries;
    const double E = model.Steel().E;
    const auto constants = Stability::MakeSectionConstants(model.KeltrixSection(), E, E / 2.6, nullptr);
    if (!constants) return entries;
    const std::vector<Steel::CSubSpan> axial = AxialAlone(model.subSpans);
    const Design::MomentDiagram none(model.points, axial, Design::Bending::Major);
    for (const Stability::Unit& unit : Stability::FindCriticalLoads(model.points, axial, none, *constants).units) {
        const double tolerance = 1e-9 * model.Length();
        double compression = 0.0;
        for (std::size_t k = 0; k < axial.size(); ++k) {
            const bool inside = model.points[k].GetPos() >= unit.start - tolerance &&
                                model.points[k + 1].GetPos() <= unit.end + tolerance;
            if (inside)
                compression = std::max({compression, -axial[k].GetForcesLeft().x, -axial[k].GetForcesRight().x});
        }
        if (!(compression > 0.0) || unit.outcome == Outcome::NothingBuckles) continue;
        const wchar_t* const refusal = Stability::DesignRefusal(unit);
        LedgerEntry e;
        e.rule = Rule::TorsionalBuckling;
        e.clause = L"elastic Ncr";
        e.status = refusal ? CheckStatus::NotEvaluated : CheckStatus::Information;
        e.start = unit.start;
        e.end = unit.end;
        e.symbol = L"Ncr";
        e.quantity = Quantity::Force;
        const bool isKnown = unit.positive && !refusal;
        e.resistance = isKnown ? unit.positive->lambda * compression / (1.0 + unit.positive->error) : 0.0;
        e.utilisation = CMemberResult::InfinitiseNANs(compression / e.resistance);
        e.slenderness = std::numbers::pi * std::sqrt(E * model.Properties().A / e.resistance);
        const bool lower = e.resistance < CheckedFlexuralLoad(model, spans, unit.start, unit.end) * (1.0 - SAME_LOAD);
        e.reason =
            unit.outcome == Outcome::NotHeld ? NOT_HELD
            : refusal                        ? refusal
            : lower ? L"BELOW the critical load of the effective lengths that are checked: twist, or how the member is "
                      L"held, lowers the load at which it buckles, and no rule of the standard checks that"
                    : L"not below the critical load of the effective lengths that are checked";
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
    constexpr unsigned int FORK = Data::CRestraint::MINOR_SHEAR | Data::CRestraint::TORSION;
    const auto isFork = [](const Steel::CMemberPoint& point) { return point.GetRestraint().IsRestrained(FORK, true); };
    const auto& points = model.points;
    double compression = 0.0;
    for (const Steel::CSubSpan& sub : model.subSpans)
        compression = std::max({compression, -sub.GetForcesLeft().x, -sub.GetForcesRight().x});
    if (!(compression > 0.0)) return true;
    if (!isFork(points.front()) || !isFork(points.back())) return false;
    double longest = 0.0;
    double held = points.front().GetPos();
    for (const Steel::CMemberPoint& point : points) {
        if (!isFork(point)) continue;
        longest = std::max(longest, point.GetPos() - held);
        held = point.GetPos();
    }
    const double E = model.Steel().E;
    const auto s = Stability::MakeSectionConstants(model.KeltrixSection(), E, E / 2.6, nullptr);
    if (!s) return false;
    const double k2 = std::numbers::pi * std::numbers::pi / (longest * longest);
    const double i2 = s->PolarRadius2();
    const double Pz = s->E * s->Iz * k2;
    const double Pt = (s->G * s->It + s->E * s->Iw * k2) / i2;
    // The smaller root of (1 - zc²/i0²) N² - (Pz + Pt) N + Pz Pt = 0.
    const double share = 1.0 - s->zc * s->zc / i2;
    const double sum = Pz + Pt;
    const double N = 2.0 * Pz * Pt / (sum + std::sqrt(std::max(0.0, sum * sum - 4.0 * share * Pz * Pt)));
    return compression < MARGIN * N;
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
