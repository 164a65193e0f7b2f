// Webs and walls: shear buckling, least thickness, stiffeners, and bearing and buckling under concentrated loads; 4.4 and 4.5.

#include <algorithm>
#include <array>
#include <cmath>

#include "CrossSection.h"
#include "LocalEntry.h"
#include "Numbers.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"
#include "keltrix/design/PointLoads.h"

namespace Keltrix::BS5950 {

using Steel::CMemberResult;

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

// Length of web that a stiff bearing reaches at the root of the flange, b1 + 5k of 4.5.2.1.
double CSteelMemberBS5950::SpreadOfBearing() const
{
    const SectionProperties& s = m_section.Properties();
    return m_options.stiffBearing + 5.0 * (std::max(s.T, s.T2) + (s.IsWelded() ? 0.0 : s.r));
}

void CSteelMemberBS5950::FindWebLoads()
{
    const SectionProperties& s = m_section.Properties();
    const Material& m = m_section.Steel();
    for (const Design::PointLoad& load :
         Design::FindPointLoads(MemberPoints(), SubSpans(), m_major, m_options.stiffBearing, SpreadOfBearing())) {
        WebLoadResult r;
        r.point = load.point;
        r.x = load.x;
        r.force = load.force;
        r.onFlange1 = load.onFlange1;
        r.held = load.held;
        r.load.stiffBearing = m_options.stiffBearing;
        r.load.loadToEnd = load.loadToEnd;
        r.load.bearingToEnd = load.bearingToEnd;
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
