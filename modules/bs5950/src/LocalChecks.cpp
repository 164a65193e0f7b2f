// Cross-sections: 4.2, 4.6, 4.8.2, 4.8.3.2, 4.9.

#include "LocalChecks.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "CrossSection.h"
#include "LocalEntry.h"
#include "Positions.h"
#include "WebChecks.h"
#include "keltrix/design/Places.h"

namespace Keltrix::BS5950 {

using Steel::CMemberResult;

void LocalChecks::FindPositions()
{
    const CrossSection section(m_model.section, m_model.moreExact,
                               m_model.MayHaveEccentricConnection() && !m_model.options.momentsHoldEccentricity,
                               m_model.StiffenerSpacing(Axis::Y));
    PositionFinder finder(section, m_model.major, m_model.minor);
    m_found.positions.clear();
    m_found.positions.reserve(3 * m_model.subSpans.size());
    for (std::size_t k = 0; k < m_model.subSpans.size(); ++k)
        finder.Find(static_cast<int>(k), m_model.subSpans[k], m_model.points[k].GetPos(),
                    m_model.points[k + 1].GetPos(), m_found.positions);
    m_found.cls = 1;
    for (const PositionResult& p : m_found.positions)
        m_found.cls = std::max(m_found.cls, p.cls.cls);
}

// The entry of a local rule is that of its largest utilisation.
LedgerEntry WorstEntry(const std::vector<PositionResult>& positions, const LocalRule& r)
{
    int worst = -1;
    double largest = 0.0;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const double u = CMemberResult::InfinitiseNANs(positions[i].*r.utilisation);
        if (!(u > largest)) continue;
        largest = u;
        worst = static_cast<int>(i);
    }
    if (worst < 0) return Absent(r.rule, r.absent);
    const PositionResult& p = positions[static_cast<std::size_t>(worst)];
    LedgerEntry e = EntryOf(r.rule);
    e.status = LocalStatus(largest);
    e.position = worst;
    e.start = e.end = p.x;
    e.utilisation = largest;
    e.resistance = p.*r.resistance;
    e.symbol = r.symbol;
    e.quantity = r.quantity;
    return e;
}

void LocalChecks::Check()
{
    LedgerEntry cls = EntryOf(Rule::Classification);
    cls.clause =
        m_model.Properties().IsHollow() && !m_model.Properties().IsWelded() ? L"3.5, Table 12" : L"3.5, Table 11";
    cls.status = CheckStatus::Passed;
    m_found.ledger.Add(cls);

    RecordAxial();
    const auto add = [this](const LocalRule& rule) { m_found.ledger.Add(WorstEntry(m_found.positions, rule)); };
    add({Rule::ShearMajor, &PositionResult::shearMajor, &PositionResult::Pvy, L"Pvy", Quantity::Force,
         L"no shear along the web"});
    add({Rule::ShearMinor, &PositionResult::shearMinor, &PositionResult::Pvx, L"Pvx", Quantity::Force,
         L"no shear along the flanges"});
    const bool angle = m_model.Properties().shape == Shape::Angle;
    add({Rule::MomentMajor, &PositionResult::major, &PositionResult::Mcx, angle ? L"Mcu" : L"Mcx", Quantity::Moment,
         L"no moment about the major axis"});
    add({Rule::MomentMinor, &PositionResult::minor, &PositionResult::Mcy, angle ? L"Mcv" : L"Mcy", Quantity::Moment,
         L"no moment about the minor axis"});
    WebChecks(m_model, m_found).Check();
    RecordBoltHoles();
    RecordCombined();
    RecordTorsion();
}

void LocalChecks::RecordAxialRule(Rule rule, int position, double PositionResult::*resistance, const wchar_t* symbol)
{
    const PositionResult& p = m_found.positions[static_cast<std::size_t>(position)];
    LedgerEntry e = EntryOf(rule);
    e.position = position;
    e.start = e.end = p.x;
    e.resistance = p.*resistance;
    e.utilisation = CMemberResult::InfinitiseNANs(std::abs(p.actions.F) / e.resistance);
    e.status = LocalStatus(e.utilisation);
    e.symbol = symbol;
    e.quantity = Quantity::Force;
    m_found.ledger.Add(e);
}

// Axial capacity of the cross-section: tension (4.6) and compression.
void LocalChecks::RecordAxial()
{
    int tie = -1;
    int strut = -1;
    const auto worse = [this](int i, int than) {
        return than < 0 || m_found.positions[static_cast<std::size_t>(i)].axial >
                               m_found.positions[static_cast<std::size_t>(than)].axial;
    };
    for (int i = 0; i < static_cast<int>(m_found.positions.size()); ++i) {
        const double F = m_found.positions[static_cast<std::size_t>(i)].actions.F;
        if (F > 0.0 && worse(i, tie)) tie = i;
        if (F < 0.0 && worse(i, strut)) strut = i;
    }
    RecordTie(tie);
    if (strut < 0)
        m_found.ledger.Add(Absent(Rule::Compression, L"no compression"));
    else
        RecordAxialRule(Rule::Compression, strut, &PositionResult::Pz, L"Pz");
}

void LocalChecks::RecordTie(int position)
{
    if (position < 0) {
        m_found.ledger.Add(Absent(Rule::Tension, L"no tension"));
        m_found.ledger.Add(Absent(Rule::EccentricConnection, L"no tension"));
        return;
    }
    RecordAxialRule(Rule::Tension, position, &PositionResult::Pt, L"Pt");
    if (m_found.positions[static_cast<std::size_t>(position)].eccentricTie) {
        RecordAxialRule(Rule::EccentricConnection, position, &PositionResult::Pte, L"Pt");
        m_found.Assume(
            L"end connection of the tie",
            L"bolted through one leg of an angle (the larger leg unconnected), the web of a channel or the flange of "
            L"a T (4.6.3.1)",
            std::nan(""));
        return;
    }
    if (!m_model.MayHaveEccentricConnection()) {
        m_found.ledger.Add(Absent(Rule::EccentricConnection, L"not an angle, channel or T"));
        return;
    }
    m_found.ledger.Add(Absent(Rule::EccentricConnection, L"the user says that the moments hold the eccentricity"));
    m_found.Assume(L"end connection of the tie",
                   L"the given moments hold the eccentricity of the end connections, as the user says", std::nan(""));
}

namespace {

// Smallest area that can be the tension flange or leg of a section under the given moments; 0 where it has none.
double TensionFlange(const SectionProperties& s, bool bentMajor, bool bentMinor)
{
    double least = std::numeric_limits<double>::infinity();
    const auto consider = [&least](bool bent, double area) { least = bent ? std::min(least, area) : least; };
    switch (s.shape) {
    case Shape::CHS:
        return 0.0;
    case Shape::RHS:
        consider(bentMajor, s.B * s.T);
        consider(bentMinor, s.D * s.t);
        return least;
    case Shape::Angle:
        return std::min(s.B, s.D) * s.t;
    case Shape::Tee:
        consider(bentMajor, std::min(s.B * s.T, s.D * s.t));
        consider(bentMinor, 0.5 * s.B * s.T);
        return least;
    default: // the halves of two flanges about y-y
        consider(bentMajor, std::min(s.B * s.T, s.B2 * s.T2));
        consider(bentMinor,
                 s.shape == Shape::Channel ? std::min(2.0 * s.B * s.T, s.D * s.t) : 0.5 * (s.B * s.T + s.B2 * s.T2));
        return least;
    }
}

} // namespace

// Clause 4.2.5.5: no allowance for holes where Ke times the net area of the tension flange is not below its gross area. The
// input says how much area the holes take of the section, not where: all of it is taken to lie in the tension flange.
void LocalChecks::RecordBoltHoles()
{
    const SectionProperties& s = m_model.Properties();
    const double netGross = m_model.section.Design().netGross;
    const auto bent = [this](double PositionResult::*moment) {
        return std::any_of(m_found.positions.begin(), m_found.positions.end(),
                           [moment](const PositionResult& p) { return p.*moment > 0.0; });
    };
    const bool major = bent(&PositionResult::momentMajor);
    const bool minor = bent(&PositionResult::momentMinor);
    if (netGross == 1.0) return m_found.ledger.Add(Absent(Rule::BoltHoles, L"the net area is the gross area"));
    if (!major && !minor) return m_found.ledger.Add(Absent(Rule::BoltHoles, L"no moment"));
    const double flange = TensionFlange(s, major, minor);
    if (m_model.Steel().Ke * (flange - (1.0 - netGross) * s.A) >= flange && flange > 0.0)
        return m_found.ledger.Add(
            Absent(Rule::BoltHoles,
                   L"Ke times the net area of the tension flange is not below its gross area, all holes in it"));
    LedgerEntry e = EntryOf(Rule::BoltHoles);
    e.reason =
        L"the net to gross ratio does not say which holes lie in the tension flange; with all of them there they count";
    m_found.ledger.Add(e);
}

// Whether actions are combined anywhere along the member: tension with a moment, compression with one, or moments about both axes. Any
// moment bends an angle about both of its principal axes.
bool LocalChecks::HasCombination(bool tension) const
{
    const Actions least = m_model.section.LeastActions();
    const auto bends = [](const Design::MomentDiagram& moments, int k, double noise) {
        for (const Design::Parabola& curve : moments.Curves(k))
            if (Design::LargestMagnitude(curve) > noise) return true;
        return false;
    };
    for (int k = 0; k < static_cast<int>(m_model.subSpans.size()); ++k) {
        const Steel::CSubSpan& sub = m_model.subSpans[static_cast<std::size_t>(k)];
        const auto [low, high] = std::minmax({sub.GetForcesLeft().x, sub.GetForcesRight().x});
        const int axes = bends(m_model.major, k, least.Mx) + bends(m_model.minor, k, least.My);
        const int moments = axes > 0 && m_model.Properties().shape == Shape::Angle ? 2 : axes;
        if (tension ? high > least.F && moments > 0
                    : (low < -least.F && moments > 0) || (low <= least.F && moments > 1))
            return true;
    }
    return false;
}

// Clauses 4.8.2 and 4.8.3.2, 4.9. Where actions are combined somewhere, the entry is that of the largest combination, of one action
// alone too: what is left of it where another one vanishes.
void LocalChecks::RecordCombined()
{
    for (const bool tension : {true, false}) {
        const Rule rule = tension ? Rule::CombinedTension : Rule::CombinedCompression;
        int worst = -1;
        for (int i = 0; i < static_cast<int>(m_found.positions.size()); ++i) {
            const PositionResult& p = m_found.positions[static_cast<std::size_t>(i)];
            if (tension != (p.actions.F > 0.0)) continue;
            const auto rank = [](const PositionResult& q) { return std::pair(q.combined, KindsOfAction(q)); };
            if (worst < 0 || rank(p) > rank(m_found.positions[static_cast<std::size_t>(worst)])) worst = i;
        }
        if (worst < 0 || !HasCombination(tension)) {
            m_found.ledger.Add(
                Absent(rule, tension ? L"no tension together with a moment"
                                     : L"no compression together with a moment, and no moments about both axes"));
            continue;
        }
        const PositionResult& p = m_found.positions[static_cast<std::size_t>(worst)];
        LedgerEntry e = EntryOf(rule);
        e.clause = CombinationClause(p);
        e.position = worst;
        e.start = e.end = p.x;
        e.utilisation = CMemberResult::InfinitiseNANs(p.combined);
        e.status = LocalStatus(e.utilisation);
        m_found.ledger.Add(e);
    }
}

// The standard has no rule for torsion. The tolerance is 1 N·m or a thousandth of the largest bending moment.
void LocalChecks::RecordTorsion()
{
    double torsion = 0.0;
    double bending = 0.0;
    int worst = -1;
    for (int i = 0; i < static_cast<int>(m_found.positions.size()); ++i) {
        const Actions& a = m_found.positions[static_cast<std::size_t>(i)].actions;
        bending = std::max({bending, std::abs(a.Mx), std::abs(a.My)});
        if (!(std::abs(a.Mt) > torsion)) continue;
        torsion = std::abs(a.Mt);
        worst = i;
    }
    if (!(torsion > std::max(1.0, 0.001 * bending))) {
        m_found.ledger.Add(Absent(Rule::Torsion, L"no torsion beyond the tolerance"));
        return;
    }
    LedgerEntry e = EntryOf(Rule::Torsion);
    e.reason = L"BS 5950-1:2000 has no rule for torsion; check it by other means";
    e.position = worst;
    e.start = e.end = m_found.positions[static_cast<std::size_t>(worst)].x;
    m_found.ledger.Add(e);
}

} // namespace Keltrix::BS5950
