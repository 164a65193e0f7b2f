#include <algorithm>
#include <cmath>
#include <limits>

#include "CrossSection.h"
#include "LocalEntry.h"
#include "MemberText.h"
#include "Positions.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"

namespace Keltrix::BS5950 {

using Steel::CMemberResult;

double PositionResult::Largest() const
{
    return std::max({axial, major, minor, shearMajor, shearMinor, shearBuckling, shearBucklingX, combined});
}

// 4.6.3.1 is for single angles, channels and tees.
bool CSteelMemberBS5950::MayHaveEccentricConnection() const
{
    const Shape shape = m_section.Properties().shape;
    return shape == Shape::Angle || shape == Shape::Channel || shape == Shape::Tee;
}

void CSteelMemberBS5950::CollectPositions()
{
    const CrossSection section(m_section, DesOpt() == MORE_EXACT,
                               MayHaveEccentricConnection() && !m_options.momentsHoldEccentricity,
                               StiffenerSpacing(Axis::Y));
    PositionFinder finder(section, m_major, m_minor);
    m_positions.clear();
    m_positions.reserve(3 * SubSpans().size());
    for (std::size_t k = 0; k < SubSpans().size(); ++k)
        finder.Find(static_cast<int>(k), SubSpans()[k], MemberPoints()[k].GetPos(), MemberPoints()[k + 1].GetPos(),
                    m_positions);
    m_class = 1;
    for (const PositionResult& p : m_positions)
        m_class = std::max(m_class, p.cls.cls);
}

void CSteelMemberBS5950::RunLocal(bool alongMember)
{
    m_ledger.Drop(Stage::Local);
    std::erase_if(m_parts, [](const auto& part) { return !(part.second.start < part.second.end); });
    RecordLocal();
    m_ledger.MarkGoverning();
    if (!Result()) return;
    WriteLocalUtilisations();
    if (Result()->TextEnabled()) Text(*this).Local(alongMember);
}

bool CSteelMemberBS5950::CheckLocal(bool alongMember)
{
    if (!Prepare()) return false;
    RunLocal(alongMember);
    return !m_ledger.HasFailed(Stage::Local) && !m_ledger.IsOpen(Stage::Local);
}

void CSteelMemberBS5950::WriteLocalUtilisations()
{
    CMemberResult& r = *Result();
    for (const PositionResult& p : m_positions) {
        r.SetCurSubSpan(p.Entry());
        r.SetUtilLocalAxial(p.axial);
        r.SetUtilLocalMomMajor(p.major);
        r.SetUtilLocalMomMinor(p.minor);
        r.SetUtilLocalShearMajor(std::max(p.shearMajor, p.shearBuckling));
        r.SetUtilLocalShearMinor(std::max(p.shearMinor, p.shearBucklingX));
        r.SetUtilLocalCombined(p.combined);
        if (p.cls.webSlender) r.AddFlags(CMemberResult::INFO_LOCAL_SLENDER_WEB);
        if (p.cls.flangeSlender) r.AddFlags(CMemberResult::INFO_LOCAL_SLENDER_FLANGE);
    }
    WriteWebUtilisations();
}

// The entry of a local rule is that of its largest utilisation.
void CSteelMemberBS5950::RecordLocalRule(Rule rule, double PositionResult::*utilisation,
                                         double PositionResult::*resistance, const wchar_t* symbol, Quantity quantity,
                                         const wchar_t* absent)
{
    int worst = -1;
    double largest = 0.0;
    for (std::size_t i = 0; i < m_positions.size(); ++i) {
        const double u = CMemberResult::InfinitiseNANs(m_positions[i].*utilisation);
        if (!(u > largest)) continue;
        largest = u;
        worst = static_cast<int>(i);
    }
    if (worst < 0) {
        m_ledger.Add(Absent(rule, absent));
        return;
    }
    const PositionResult& p = m_positions[static_cast<std::size_t>(worst)];
    LedgerEntry e = EntryOf(rule);
    e.status = LocalStatus(largest);
    e.position = worst;
    e.start = e.end = p.x;
    e.utilisation = largest;
    if (resistance) {
        e.resistance = p.*resistance;
        e.symbol = symbol;
        e.quantity = quantity;
    }
    m_ledger.Add(e);
}

void CSteelMemberBS5950::RecordLocal()
{
    LedgerEntry cls = EntryOf(Rule::Classification);
    cls.clause =
        m_section.Properties().IsHollow() && !m_section.Properties().IsWelded() ? L"3.5, Table 12" : L"3.5, Table 11";
    cls.status = CheckStatus::Passed;
    m_ledger.Add(cls);

    RecordAxial();
    RecordLocalRule(Rule::ShearMajor, &PositionResult::shearMajor, &PositionResult::Pvy, L"Pvy", Quantity::Force,
                    L"no shear along the web");
    RecordLocalRule(Rule::ShearMinor, &PositionResult::shearMinor, &PositionResult::Pvx, L"Pvx", Quantity::Force,
                    L"no shear along the flanges");
    const bool angle = m_section.Properties().shape == Shape::Angle;
    RecordLocalRule(Rule::MomentMajor, &PositionResult::major, &PositionResult::Mcx, angle ? L"Mcu" : L"Mcx",
                    Quantity::Moment, L"no moment about the major axis");
    RecordLocalRule(Rule::MomentMinor, &PositionResult::minor, &PositionResult::Mcy, angle ? L"Mcv" : L"Mcy",
                    Quantity::Moment, L"no moment about the minor axis");
    RecordWebs();
    RecordBoltHoles();
    RecordCombined();
    RecordTorsion();
}

void CSteelMemberBS5950::RecordAxialRule(Rule rule, int position, double PositionResult::*resistance,
                                         const wchar_t* symbol)
{
    const PositionResult& p = m_positions[static_cast<std::size_t>(position)];
    LedgerEntry e = EntryOf(rule);
    e.position = position;
    e.start = e.end = p.x;
    e.resistance = p.*resistance;
    e.utilisation = CMemberResult::InfinitiseNANs(std::abs(p.actions.F) / e.resistance);
    e.status = LocalStatus(e.utilisation);
    e.symbol = symbol;
    e.quantity = Quantity::Force;
    m_ledger.Add(e);
}

// Axial capacity of the cross-section: tension (4.6) and compression.
void CSteelMemberBS5950::RecordAxial()
{
    int tie = -1;
    int strut = -1;
    const auto worse = [this](int i, int than) {
        return than < 0 ||
               m_positions[static_cast<std::size_t>(i)].axial > m_positions[static_cast<std::size_t>(than)].axial;
    };
    for (int i = 0; i < static_cast<int>(m_positions.size()); ++i) {
        const double F = m_positions[static_cast<std::size_t>(i)].actions.F;
        if (F > 0.0 && worse(i, tie)) tie = i;
        if (F < 0.0 && worse(i, strut)) strut = i;
    }
    RecordTie(tie);
    if (strut < 0)
        m_ledger.Add(Absent(Rule::Compression, L"no compression"));
    else
        RecordAxialRule(Rule::Compression, strut, &PositionResult::Pz, L"Pz");
}

void CSteelMemberBS5950::RecordTie(int position)
{
    if (position < 0) {
        m_ledger.Add(Absent(Rule::Tension, L"no tension"));
        m_ledger.Add(Absent(Rule::EccentricConnection, L"no tension"));
        return;
    }
    RecordAxialRule(Rule::Tension, position, &PositionResult::Pt, L"Pt");
    if (m_positions[static_cast<std::size_t>(position)].eccentricTie) {
        RecordAxialRule(Rule::EccentricConnection, position, &PositionResult::Pte, L"Pt");
        Assume(
            L"end connection of the tie",
            L"bolted through one leg of an angle (the larger leg unconnected), the web of a channel or the flange of "
            L"a T (4.6.3.1)",
            std::nan(""));
        return;
    }
    if (!MayHaveEccentricConnection()) {
        m_ledger.Add(Absent(Rule::EccentricConnection, L"not an angle, channel or T"));
        return;
    }
    m_ledger.Add(Absent(Rule::EccentricConnection, L"the user says that the moments hold the eccentricity"));
    Assume(L"end connection of the tie",
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
void CSteelMemberBS5950::RecordBoltHoles()
{
    const SectionProperties& s = m_section.Properties();
    const double netGross = m_section.Design().netGross;
    const auto bent = [this](double PositionResult::*moment) {
        return std::any_of(m_positions.begin(), m_positions.end(),
                           [moment](const PositionResult& p) { return p.*moment > 0.0; });
    };
    const bool major = bent(&PositionResult::momentMajor);
    const bool minor = bent(&PositionResult::momentMinor);
    if (netGross == 1.0) return m_ledger.Add(Absent(Rule::BoltHoles, L"the net area is the gross area"));
    if (!major && !minor) return m_ledger.Add(Absent(Rule::BoltHoles, L"no moment"));
    const double flange = TensionFlange(s, major, minor);
    if (m_section.Steel().Ke * (flange - (1.0 - netGross) * s.A) >= flange && flange > 0.0)
        return m_ledger.Add(
            Absent(Rule::BoltHoles,
                   L"Ke times the net area of the tension flange is not below its gross area, all holes in it"));
    LedgerEntry e = EntryOf(Rule::BoltHoles);
    e.reason =
        L"the net to gross ratio does not say which holes lie in the tension flange; with all of them there they count";
    m_ledger.Add(e);
    if (Result()) Result()->AddFlags(CMemberResult::NOT_CHECKED);
}

// Whether actions are combined anywhere along the member: tension with a moment, compression with one, or moments about both axes. Any
// moment bends an angle about both of its principal axes.
bool CSteelMemberBS5950::HasCombination(bool tension) const
{
    const Actions least = m_section.LeastActions();
    const auto bends = [](const Design::MomentDiagram& moments, int k, double noise) {
        for (const Design::Parabola& curve : moments.Curves(k)) {
            const double s = curve.Extreme();
            if (std::max({std::abs(curve.left), std::abs(curve.right), std::isnan(s) ? 0.0 : std::abs(curve.At(s))}) >
                noise)
                return true;
        }
        return false;
    };
    for (int k = 0; k < static_cast<int>(SubSpans().size()); ++k) {
        const Steel::CSubSpan& sub = SubSpans()[static_cast<std::size_t>(k)];
        const auto [low, high] = std::minmax({sub.GetForcesLeft().x, sub.GetForcesRight().x});
        const int axes = bends(m_major, k, least.Mx) + bends(m_minor, k, least.My);
        const int moments = axes > 0 && m_section.Properties().shape == Shape::Angle ? 2 : axes;
        if (tension ? high > least.F && moments > 0
                    : (low < -least.F && moments > 0) || (low <= least.F && moments > 1))
            return true;
    }
    return false;
}

// Clauses 4.8.2 and 4.8.3.2, 4.9. Where actions are combined somewhere, the entry is that of the largest combination, of one action
// alone too: what is left of it where another one vanishes.
void CSteelMemberBS5950::RecordCombined()
{
    for (const bool tension : {true, false}) {
        const Rule rule = tension ? Rule::CombinedTension : Rule::CombinedCompression;
        int worst = -1;
        for (int i = 0; i < static_cast<int>(m_positions.size()); ++i) {
            const PositionResult& p = m_positions[static_cast<std::size_t>(i)];
            if (tension != (p.actions.F > 0.0)) continue;
            const auto rank = [](const PositionResult& q) { return std::pair(q.combined, KindsOfAction(q)); };
            if (worst < 0 || rank(p) > rank(m_positions[static_cast<std::size_t>(worst)])) worst = i;
        }
        if (worst < 0 || !HasCombination(tension)) {
            m_ledger.Add(Absent(rule, tension
                                          ? L"no tension together with a moment"
                                          : L"no compression together with a moment, and no moments about both axes"));
            continue;
        }
        const PositionResult& p = m_positions[static_cast<std::size_t>(worst)];
        LedgerEntry e = EntryOf(rule);
        e.clause = CombinationClause(p);
        e.position = worst;
        e.start = e.end = p.x;
        e.utilisation = CMemberResult::InfinitiseNANs(p.combined);
        e.status = LocalStatus(e.utilisation);
        m_ledger.Add(e);
    }
}

// The standard has no rule for torsion. The tolerance is 1 N·m or a thousandth of the largest bending moment.
void CSteelMemberBS5950::RecordTorsion()
{
    double torsion = 0.0;
    double bending = 0.0;
    int worst = -1;
    for (int i = 0; i < static_cast<int>(m_positions.size()); ++i) {
        const Actions& a = m_positions[static_cast<std::size_t>(i)].actions;
        bending = std::max({bending, std::abs(a.Mx), std::abs(a.My)});
        if (!(std::abs(a.Mt) > torsion)) continue;
        torsion = std::abs(a.Mt);
        worst = i;
    }
    if (!(torsion > std::max(1.0, 0.001 * bending))) {
        m_ledger.Add(Absent(Rule::Torsion, L"no torsion beyond the tolerance"));
        return;
    }
    LedgerEntry e = EntryOf(Rule::Torsion);
    e.reason = L"BS 5950-1:2000 has no rule for torsion; check it by other means";
    e.position = worst;
    e.start = e.end = m_positions[static_cast<std::size_t>(worst)].x;
    m_ledger.Add(e);
    if (Result()) Result()->AddFlags(CMemberResult::NOT_CHECKED);
}

} // namespace Keltrix::BS5950
