// Webs and walls: shear buckling, least thickness, stiffeners, and bearing and buckling under concentrated loads; 4.4 and 4.5.

#include "WebChecks.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "CrossSection.h"
#include "LocalEntry.h"
#include "Numbers.h"
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

void WebChecks::Check()
{
    m_found.webLoads.clear();
    RecordShearBuckling();
    RecordSlenderFlanges();
    RecordThickness();
    RecordEndAnchorage();
    RecordStiffeners();
    RecordLoads();
}

void WebChecks::RecordShearBuckling()
{
    const auto add = [this](const LocalRule& rule) { m_found.ledger.Add(WorstEntry(m_found.positions, rule)); };
    const bool across = NeedsShearBuckling(m_model.Properties(), m_model.Steel(), Axis::X);
    if (across)
        add({Rule::ShearBuckling, &PositionResult::shearBucklingX, &PositionResult::Vwx, L"Vwx", Quantity::Force,
             L"no shear along the flanges"});
    if (NeedsShearBuckling(m_model.Properties(), m_model.Steel(), Axis::Y))
        add({Rule::ShearBuckling, &PositionResult::shearBuckling, &PositionResult::Vw, L"Vw", Quantity::Force,
             L"no shear along the web"});
    else if (!across)
        m_found.ledger.Add(Absent(Rule::ShearBuckling,
                                  L"d/t is within 70ε (rolled) or 62ε (welded), or the section has no web between two "
                                  L"flanges"));
}

// Clause 4.4.4.2 b: a thin web in high shear leaves the moment to the flanges, which must not be slender.
void WebChecks::RecordSlenderFlanges()
{
    for (const Axis axis : {Axis::X, Axis::Y}) {
        const bool x = axis == Axis::X;
        const auto p = std::find_if(m_found.positions.begin(), m_found.positions.end(),
                                    [axis](const PositionResult& q) { return IsLeftToSlenderFlanges(q, axis); });
        if (p == m_found.positions.end()) continue;
        LedgerEntry e = EntryOf(x ? Rule::MomentMajor : Rule::MomentMinor);
        e.clause = L"4.4.4.2";
        e.start = e.end = p->x;
        e.reason =
            L"thin web with Fv above 0.6 Vw beside a slender flange: the flanges alone cannot be taken for the moment";
        m_found.ledger.Add(e);
    }
}

void WebChecks::RecordThickness()
{
    const SectionProperties& s = m_model.Properties();
    bool any = false;
    for (const Axis direction : {Axis::Y, Axis::X}) {
        const bool along = direction == Axis::Y;
        const MinimumWebThickness t =
            WebThicknessLimits(s, m_model.Steel(), direction, m_model.StiffenerSpacing(direction));
        const bool acted =
            std::any_of(m_found.positions.begin(), m_found.positions.end(), [along](const PositionResult& p) {
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
        m_found.ledger.Add(e);
    }
    if (!any)
        m_found.ledger.Add(
            Absent(Rule::WebThickness, L"no web or wall between two flanges carries a moment or a shear"));
}

// Clauses 4.4.5.4, 4.4.5.5: where the shear at an end of the member stays below the critical one, no tension field has to be
// anchored there.
void WebChecks::RecordEndAnchorage()
{
    const SectionProperties& s = m_model.Properties();
    const Material& m = m_model.Steel();
    bool any = false;
    for (const Axis direction : {Axis::Y, Axis::X}) {
        if (!NeedsShearBuckling(s, m, direction)) continue;
        any = true;
        const bool along = direction == Axis::Y;
        const double ratio = along ? s.d / s.t : s.b / s.T;
        const double spacing = m_model.StiffenerSpacing(direction) / (along ? s.d : s.b);
        const double qw = ShearBucklingStrength(ratio, m.py, spacing);
        const double Vw = ShearBucklingResistance(s, m, direction, m_model.StiffenerSpacing(direction));
        LedgerEntry e = EntryOf(Rule::EndAnchorage);
        e.resistance = Vw * CriticalShearStrength(qw, 0.6 * m.py) / qw;
        e.symbol = along ? L"Vcr" : L"Vcrx";
        e.quantity = Quantity::Force;
        const auto shear = [along](const PositionResult& p) { return along ? p.actions.Fvy : p.actions.Fvx; };
        const bool within =
            shear(m_found.positions.front()) <= e.resistance && shear(m_found.positions.back()) <= e.resistance;
        e.status = within ? CheckStatus::NotApplicable : CheckStatus::OutOfScope;
        e.reason = within
                       ? L"the shear at both ends of the member is within the critical shear buckling resistance"
                       : L"the shear at an end of the member exceeds the critical shear buckling resistance: its end "
                         L"panel or end post has to anchor the tension field (H.4)";
        m_found.ledger.Add(e);
    }
    if (!any) m_found.ledger.Add(Absent(Rule::EndAnchorage, L"no web or wall that can buckle in shear"));
}

void WebChecks::RecordStiffeners()
{
    if (!(m_model.options.stiffenerSpacing > 0.0)) {
        m_found.ledger.Add(Absent(Rule::Stiffeners, L"no transverse stiffeners are given"));
        return;
    }
    LedgerEntry e = EntryOf(Rule::Stiffeners);
    e.status = CheckStatus::OutOfScope;
    e.reason = L"stiffness and strength of the stiffeners: their own section is not part of the input";
    m_found.ledger.Add(e);
    m_found.Assume(L"transverse stiffeners of the web",
                   L"along the whole member, at the distance that the options give", m_model.options.stiffenerSpacing);
}

// Length of web that a stiff bearing reaches at the root of the flange, b1 + 5k of 4.5.2.1.
double WebChecks::SpreadOfBearing() const
{
    const SectionProperties& s = m_model.Properties();
    return m_model.options.stiffBearing + 5.0 * (std::max(s.T, s.T2) + (s.IsWelded() ? 0.0 : s.r));
}

void WebChecks::FindLoads()
{
    const SectionProperties& s = m_model.Properties();
    const Material& m = m_model.Steel();
    Design::LoadSpacing spacing;
    spacing.stiffBearing = m_model.options.stiffBearing;
    spacing.loaded = SpreadOfBearing();
    spacing.patch = s.d;
    for (const Design::PointLoad& load :
         Design::FindPointLoads(m_model.points, m_model.subSpans, m_model.major, spacing)) {
        WebLoadResult r;
        r.point = load.point;
        r.x = load.x;
        r.end = load.end;
        r.force = load.force;
        r.onFlange1 = load.onFlange1;
        r.held = load.held;
        r.load.stiffBearing = load.bearing;
        r.load.loadToEnd = load.loadToEnd;
        r.load.bearingToEnd = load.bearingToEnd;
        r.Pbw = r.Px = INF;
        for (const bool first : {true, false}) { // of unequal flanges the less favourable one
            r.load.onFlange1 = first;
            r.Pbw = std::min(r.Pbw, WebBearingCapacity(s, m, r.load));
            r.Px = std::min(r.Px, WebBucklingResistance(s, m, r.load));
        }
        m_found.webLoads.push_back(r);
    }
}

void WebChecks::RecordLoads()
{
    FindLoads();
    const Shape shape = m_model.Properties().shape;
    const bool covered = shape == Shape::I || shape == Shape::UnequalI || shape == Shape::Channel;
    for (const Rule rule : {Rule::WebBearing, Rule::WebBuckling}) {
        if (m_found.webLoads.empty()) {
            m_found.ledger.Add(Absent(rule, L"no concentrated load or reaction along the web"));
            continue;
        }
        LedgerEntry e = EntryOf(rule);
        e.start = e.end = m_found.webLoads.front().x;
        if (!(m_model.options.stiffBearing > 0.0)) {
            e.start = e.end = std::nan("");
            e.status = CheckStatus::OutOfScope;
            e.reason = L"no stiff bearing length is given for supports and concentrated loads";
            m_found.ledger.Add(e);
        } else if (!covered) {
            e.reason = L"the rule is not evaluated for hollow sections, angles and tees";
            m_found.ledger.Add(e);
        } else
            RecordLoad(rule);
    }
    if (m_found.webLoads.empty() || !covered || !(m_model.options.stiffBearing > 0.0)) {
        m_found.webLoads.clear();
        return;
    }
    m_found.Assume(
        L"stiff bearing",
        L"the given length at every support and concentrated load, with what follows within b1 + 5k of it; at an end "
        L"of the member it begins there; a flange that is held laterally does not turn against the web (4.5.3.1). "
        L"Loads "
        L"along longer sub-spans up to d bear on the length that they cover; along still longer ones they are taken to "
        L"be spread",
        m_model.options.stiffBearing);
}

void WebChecks::RecordLoad(Rule rule)
{
    const bool bearing = rule == Rule::WebBearing;
    const WebLoadResult* worst = nullptr;
    const auto utilisation = [bearing](const WebLoadResult& r) { return r.force / (bearing ? r.Pbw : r.Px); };
    for (const WebLoadResult& r : m_found.webLoads) {
        if (!bearing && !r.held) {
            LedgerEntry open = EntryOf(rule);
            open.start = r.x;
            open.end = r.end;
            open.reason =
                L"the flange that the load presses on is not held laterally there: its effective length as part of "
                L"a strut is not known";
            m_found.ledger.Add(open);
            continue;
        }
        if (!worst || utilisation(r) > utilisation(*worst)) worst = &r;
    }
    if (!worst) return;
    LedgerEntry e = EntryOf(rule);
    e.start = worst->x;
    e.end = worst->end;
    e.utilisation = CMemberResult::InfinitiseNANs(utilisation(*worst));
    e.status = LocalStatus(e.utilisation);
    e.resistance = bearing ? worst->Pbw : worst->Px;
    e.symbol = bearing ? L"Pbw" : L"Px";
    e.quantity = Quantity::Force;
    m_found.ledger.Add(e);
}

} // namespace Keltrix::BS5950
