// Webs and walls: shear buckling, least thickness, stiffeners, and bearing and buckling under concentrated loads; 4.4 and 4.5.

#include <algorithm>
#include <array>
#include <cmath>

#include "CrossSection.h"
#include "LocalEntry.h"
#include "Numbers.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"
#include "keltrix/design/Stretches.h"

namespace Keltrix::BS5950 {

using Steel::CMemberResult;
using Steel::CRestraint;

namespace {

// Clause 4.4.5.5: critical shear strength that belongs to a shear buckling strength qw of H.1.
double CriticalShearStrength(double qw, double pv)
{
    if (qw >= pv) return pv;
    if (qw > 0.72 * pv) return (9.0 * qw - 2.0 * pv) / 7.0;
    return (qw / 0.9) * (qw / 0.9) / pv;
}

} // namespace

double CSteelMemberBS5950::StiffenerSpacing(Axis direction) const
{
    return direction == Axis::Y && m_options.stiffenerSpacing > 0.0 ? m_options.stiffenerSpacing : UNSTIFFENED;
}

void CSteelMemberBS5950::RecordWebs()
{
    m_webLoads.clear();
    RecordShearBuckling();
    RecordSlenderFlanges();
    RecordWebThickness();
    RecordEndAnchorage();
    RecordStiffeners();
    RecordWebLoads();
}

void CSteelMemberBS5950::RecordShearBuckling()
{
    const bool across = NeedsShearBuckling(m_section.Properties(), m_section.Steel(), Axis::X);
    if (across)
        RecordLocalRule(Rule::ShearBuckling, &PositionResult::shearBucklingX, &PositionResult::Vwx, L"Vwx",
                        Quantity::Force, L"no shear along the flanges");
    if (NeedsShearBuckling(m_section.Properties(), m_section.Steel(), Axis::Y))
        RecordLocalRule(Rule::ShearBuckling, &PositionResult::shearBuckling, &PositionResult::Vw, L"Vw",
                        Quantity::Force, L"no shear along the web");
    else if (!across)
        m_ledger.Add(Absent(Rule::ShearBuckling,
                            L"d/t is within 70ε (rolled) or 62ε (welded), or the section has no web between two "
                            L"flanges"));
}

// Clause 4.4.4.2 b: a thin web in high shear leaves the moment to the flanges, which must not be slender.
void CSteelMemberBS5950::RecordSlenderFlanges()
{
    for (const Axis axis : {Axis::X, Axis::Y}) {
        const bool x = axis == Axis::X;
        const auto p = std::find_if(m_positions.begin(), m_positions.end(),
                                    [axis](const PositionResult& q) { return IsLeftToSlenderFlanges(q, axis); });
        if (p == m_positions.end()) continue;
        LedgerEntry e = EntryOf(x ? Rule::MomentMajor : Rule::MomentMinor);
        e.clause = L"4.4.4.2";
        e.start = e.end = p->x;
        e.reason =
            L"thin web with Fv above 0.6 Vw beside a slender flange: the flanges alone cannot be taken for the moment";
        m_ledger.Add(e);
        if (Result()) Result()->AddFlags(CMemberResult::NOT_CHECKED);
    }
}

void CSteelMemberBS5950::RecordWebThickness()
{
    const SectionProperties& s = m_section.Properties();
    bool any = false;
    for (const Axis direction : {Axis::Y, Axis::X}) {
        const bool along = direction == Axis::Y;
        const MinimumWebThickness t = WebThicknessLimits(s, m_section.Steel(), direction, StiffenerSpacing(direction));
        const bool acted = std::any_of(m_positions.begin(), m_positions.end(), [along](const PositionResult& p) {
            return along ? p.momentMajor + p.actions.Fvy > 0.0 : p.momentMinor + p.actions.Fvx > 0.0;
        });
        if (!(t.Required() > 0.0) || !acted) continue;
        any = true;
        LedgerEntry e = EntryOf(Rule::WebThickness);
        e.clause = t.serviceability >= t.flangeBuckling ? L"4.4.3.2" : L"4.4.3.3";
        e.status = t.IsMet() ? CheckStatus::Passed : CheckStatus::Failed;
        if (!t.IsMet()) {
            e.reason = along ? L"the web is thinner than the clause allows"
                             : L"the walls across are thinner than the clause allows";
            e.utilisation = t.Required() / t.actual;
        }
        m_ledger.Add(e);
    }
    if (!any)
        m_ledger.Add(Absent(Rule::WebThickness, L"no web or wall between two flanges carries a moment or a shear"));
}

// Clauses 4.4.5.4, 4.4.5.5: where the shear at an end of the member stays below the critical one, no tension field has to be
// anchored there.
void CSteelMemberBS5950::RecordEndAnchorage()
{
    const SectionProperties& s = m_section.Properties();
    const Material& m = m_section.Steel();
    bool any = false;
    for (const Axis direction : {Axis::Y, Axis::X}) {
        if (!NeedsShearBuckling(s, m, direction)) continue;
        any = true;
        const bool along = direction == Axis::Y;
        const double ratio = along ? s.d / s.t : s.b / s.T;
        const double spacing = StiffenerSpacing(direction) / (along ? s.d : s.b);
        const double qw = ShearBucklingStrength(ratio, m.py, spacing);
        const double Vw = ShearBucklingResistance(s, m, direction, StiffenerSpacing(direction));
        LedgerEntry e = EntryOf(Rule::EndAnchorage);
        e.resistance = Vw * CriticalShearStrength(qw, 0.6 * m.py) / qw;
        e.symbol = along ? L"Vcr" : L"Vcrx";
        e.quantity = Quantity::Force;
        const auto shear = [along](const PositionResult& p) { return along ? p.actions.Fvy : p.actions.Fvx; };
        const bool within = shear(m_positions.front()) <= e.resistance && shear(m_positions.back()) <= e.resistance;
        e.status = within ? CheckStatus::NotApplicable : CheckStatus::OutOfScope;
        e.reason = within
                       ? L"the shear at both ends of the member is within the critical shear buckling resistance"
                       : L"the shear at an end of the member exceeds the critical shear buckling resistance: its end "
                         L"panel or end post has to anchor the tension field (H.4)";
        m_ledger.Add(e);
    }
    if (!any) m_ledger.Add(Absent(Rule::EndAnchorage, L"no web or wall that can buckle in shear"));
}

void CSteelMemberBS5950::RecordStiffeners()
{
    if (!(m_options.stiffenerSpacing > 0.0)) {
        m_ledger.Add(Absent(Rule::Stiffeners, L"no transverse stiffeners are given"));
        return;
    }
    LedgerEntry e = EntryOf(Rule::Stiffeners);
    e.status = CheckStatus::OutOfScope;
    e.reason = L"stiffness and strength of the stiffeners: their own section is not part of the input";
    m_ledger.Add(e);
    Assume(L"transverse stiffeners of the web", L"along the whole member, at the distance that the options give",
           m_options.stiffenerSpacing);
}

// What presses on the flanges at a member point: the jump of the shear there, at an end the shear itself. Above zero downwards.
double CSteelMemberBS5950::PointLoad(int point) const
{
    const double before = point > 0 ? SubSpans()[static_cast<std::size_t>(point) - 1].GetForcesRight().z : 0.0;
    const bool last = point == static_cast<int>(SubSpans().size());
    return (last ? 0.0 : SubSpans()[static_cast<std::size_t>(point)].GetForcesLeft().z) - before;
}

// Length of web that a stiff bearing reaches at the root of the flange, b1 + 5k of 4.5.2.1.
double CSteelMemberBS5950::SpreadOfBearing() const
{
    const SectionProperties& s = m_section.Properties();
    return m_options.stiffBearing + 5.0 * (std::max(s.T, s.T2) + (s.IsWelded() ? 0.0 : s.r));
}

// What presses at a member point together with all that follows within a length, and lies upon the same part of the web: other
// points, and loads along sub-spans that end there. The point's own load where that is more.
double CSteelMemberBS5950::LoadWithin(int point, double length) const
{
    const double x = MemberPoints()[static_cast<std::size_t>(point)].GetPos();
    double largest = PointLoad(point);
    double sum = largest;
    for (std::size_t k = static_cast<std::size_t>(point); k < SubSpans().size(); ++k) {
        if (MemberPoints()[k + 1].GetPos() - x > length) break;
        sum += SubSpans()[k].GetForcesRight().z - SubSpans()[k].GetForcesLeft().z + PointLoad(static_cast<int>(k) + 1);
        if (std::abs(sum) > std::abs(largest)) largest = sum;
    }
    return largest;
}

// Whether the flange that a load presses on is held laterally at a member point, by the point or along a neighbouring sub-span.
bool CSteelMemberBS5950::IsPressedFlangeHeld(int point, bool first) const
{
    const unsigned int flange = first ? CRestraint::FLANGE1_LATERAL : CRestraint::FLANGE2_LATERAL;
    const double x = MemberPoints()[static_cast<std::size_t>(point)].GetPos();
    const Design::MomentRange left = m_major.LeftOf(x);
    const Design::MomentRange right = m_major.RightOf(x);
    const int sign = std::min(left.least, right.least) >= 0.0         ? 1
                     : std::max(left.greatest, right.greatest) <= 0.0 ? -1
                                                                      : 0;
    const auto holds = [&](const CRestraint& r) { return Design::Resolved(r, sign).IsRestrained(flange, true); };
    if (holds(PointRestraint(point))) return true;
    const int last = static_cast<int>(SubSpans().size());
    return (point > 0 && holds(SubSpans()[static_cast<std::size_t>(point) - 1].GetRestraint())) ||
           (point < last && holds(SubSpans()[static_cast<std::size_t>(point)].GetRestraint()));
}

void CSteelMemberBS5950::FindWebLoads()
{
    const SectionProperties& s = m_section.Properties();
    const Material& m = m_section.Steel();
    double largest = 0.0;
    for (const Steel::CSubSpan& sub : SubSpans())
        largest = std::max({largest, std::abs(sub.GetForcesLeft().z), std::abs(sub.GetForcesRight().z)});
    const double start = MemberPoints().front().GetPos();
    const double end = MemberPoints().back().GetPos();
    const double spread = SpreadOfBearing();
    for (int i = 0; i <= static_cast<int>(SubSpans().size()); ++i) {
        const double force = LoadWithin(i, spread);
        if (!(std::abs(force) > 1e-6 * largest)) continue;
        WebLoadResult r;
        r.point = i;
        r.x = MemberPoints()[static_cast<std::size_t>(i)].GetPos();
        r.force = std::abs(force);
        r.onFlange1 = force > 0.0;
        const double b1 = m_options.stiffBearing;
        r.load.stiffBearing = b1;
        // At an end of the member the stiff bearing begins there.
        r.load.loadToEnd = std::max(std::min(r.x - start, end - r.x), 0.5 * b1);
        r.load.bearingToEnd = r.load.loadToEnd - 0.5 * b1;
        r.held = IsPressedFlangeHeld(i, r.onFlange1);
        r.Pbw = r.Px = INF;
        for (const bool first : {true, false}) { // of unequal flanges the less favourable one
            r.load.onFlange1 = first;
            r.Pbw = std::min(r.Pbw, WebBearingCapacity(s, m, r.load));
            r.Px = std::min(r.Px, WebBucklingResistance(s, m, r.load));
        }
        m_webLoads.push_back(r);
    }
}

void CSteelMemberBS5950::RecordWebLoads()
{
    FindWebLoads();
    const Shape shape = m_section.Properties().shape;
    const bool covered = shape == Shape::I || shape == Shape::UnequalI || shape == Shape::Channel;
    for (const Rule rule : {Rule::WebBearing, Rule::WebBuckling}) {
        if (m_webLoads.empty()) {
            m_ledger.Add(Absent(rule, L"no concentrated load or reaction along the web"));
            continue;
        }
        LedgerEntry e = EntryOf(rule);
        e.start = e.end = m_webLoads.front().x;
        if (!(m_options.stiffBearing > 0.0)) {
            e.start = e.end = std::nan("");
            e.status = CheckStatus::OutOfScope;
            e.reason = L"no stiff bearing length is given for supports and concentrated loads";
            m_ledger.Add(e);
        } else if (!covered) {
            e.reason = L"the rule is not evaluated for hollow sections, angles and tees";
            m_ledger.Add(e);
        } else
            RecordWebLoad(rule);
    }
    if (m_webLoads.empty() || !covered || !(m_options.stiffBearing > 0.0)) {
        m_webLoads.clear();
        return;
    }
    Assume(
        L"stiff bearing",
        L"the given length at every support and concentrated load, with what follows within b1 + 5k of it; at an end "
        L"of "
        L"the member it begins there; a flange that is held laterally does not turn against the web (4.5.3.1). Loads "
        L"along longer sub-spans are taken to be spread",
        m_options.stiffBearing);
}

void CSteelMemberBS5950::RecordWebLoad(Rule rule)
{
    const bool bearing = rule == Rule::WebBearing;
    const WebLoadResult* worst = nullptr;
    const auto utilisation = [bearing](const WebLoadResult& r) { return r.force / (bearing ? r.Pbw : r.Px); };
    for (const WebLoadResult& r : m_webLoads) {
        if (!bearing && !r.held) {
            LedgerEntry open = EntryOf(rule);
            open.start = open.end = r.x;
            open.reason =
                L"the flange that the load presses on is not held laterally there: its effective length as part of "
                L"a strut is not known";
            m_ledger.Add(open);
            if (Result()) Result()->AddFlags(CMemberResult::NOT_CHECKED);
            continue;
        }
        if (!worst || utilisation(r) > utilisation(*worst)) worst = &r;
    }
    if (!worst) return;
    LedgerEntry e = EntryOf(rule);
    e.start = e.end = worst->x;
    e.utilisation = CMemberResult::InfinitiseNANs(utilisation(*worst));
    e.status = LocalStatus(e.utilisation);
    e.resistance = bearing ? worst->Pbw : worst->Px;
    e.symbol = bearing ? L"Pbw" : L"Px";
    e.quantity = Quantity::Force;
    m_ledger.Add(e);
}

// The record has no place of its own for webs: they are filed with the shear along the web, the least thickness with the first
// entry.
void CSteelMemberBS5950::WriteWebUtilisations()
{
    CMemberResult& r = *Result();
    for (const LedgerEntry& e : m_ledger.Entries()) {
        if (e.rule != Rule::WebThickness || !(e.utilisation > 0.0)) continue;
        r.SetCurSubSpan(1);
        r.SetUtilLocalShearMajor(e.utilisation);
    }
    for (const WebLoadResult& w : m_webLoads) {
        r.SetCurSubSpan(w.Entry(static_cast<int>(SubSpans().size())));
        r.SetUtilLocalShearMajor(std::max(w.force / w.Pbw, w.held ? w.force / w.Px : 0.0));
    }
}

} // namespace Keltrix::BS5950
