#include <algorithm>
#include <cmath>
#include <limits>

#include "MemberText.h"
#include "MomentDiagram.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"

namespace Keltrix::BS5950 {

using Steel::CMemberResult;

double PositionResult::Largest() const
{
    return std::max({axial, major, minor, shearMajor, shearMinor, shearBuckling, shearBucklingX, combined});
}

void CSteelMemberBS5950::CollectPositions()
{
    m_positions.clear();
    const MomentDiagram diagram(MemberPoints(), SubSpans(), MomentDiagram::Component::Major);
    const MomentDiagram minor(MemberPoints(), SubSpans(), MomentDiagram::Component::Minor);
    m_positions.reserve(2 * SubSpans().size() + 2);
    const auto add = [this](int k, Place place, double x, const Vec3<double>& force, const Vec3<double>& moment) {
        m_section.SetMemberForces(force);
        m_section.SetMemberMoments(moment);
        PositionResult p;
        p.x = x;
        p.subSpan = k;
        p.place = place;
        p.actions = m_section.PresentActions();
        m_positions.push_back(p);
    };
    for (int k = 0; k < static_cast<int>(SubSpans().size()); ++k) {
        const Steel::CSubSpan& sub = SubSpans()[static_cast<std::size_t>(k)];
        const double x0 = MemberPoints()[static_cast<std::size_t>(k)].GetPos();
        const double x1 = MemberPoints()[static_cast<std::size_t>(k) + 1].GetPos();
        add(k, Place::LeftEnd, x0, sub.GetForcesLeft(), sub.GetMomentsLeft());
        for (const double s : {diagram.ZeroShear(k), minor.ZeroShear(k)}) {
            if (!(s > 0.0)) continue;
            const auto between = [s](double a, double b) { return (1.0 - s) * a + s * b; };
            const Vec3<double> fl = sub.GetForcesLeft();
            const Vec3<double> fr = sub.GetForcesRight();
            const Vec3<double> ml = sub.GetMomentsLeft();
            const Vec3<double> mr = sub.GetMomentsRight();
            add(k, Place::Inside, between(x0, x1), {between(fl.x, fr.x), between(fl.y, fr.y), between(fl.z, fr.z)},
                {between(ml.x, mr.x), diagram.InSubSpan(k, s), minor.InSubSpan(k, s)});
        }
        add(k, Place::RightEnd, x1, sub.GetForcesRight(), sub.GetMomentsRight());
    }
}

namespace {

// Clause 4.8.2.3: exponents of the more exact rule.
void SetExponents(Shape shape, PositionResult& p)
{
    p.z1 = shape == Shape::RHS ? 5.0 / 3.0 : 2.0;
    p.z2 = shape == Shape::RHS ? 5.0 / 3.0 : shape == Shape::CHS ? 2.0 : 1.0;
}

// The moments that are compared with the capacities: about the principal axes of an angle, taken together in the worse
// way because the actions do not say how the angle is turned; otherwise as they are.
void SetMoments(const SectionProperties& s, PositionResult& p)
{
    p.momentMajor = std::abs(p.actions.Mx);
    p.momentMinor = std::abs(p.actions.My);
    if (s.shape != Shape::Angle) return;
    const double cs = std::abs(std::cos(s.alpha));
    const double sn = std::abs(std::sin(s.alpha));
    p.momentMajor = std::abs(p.actions.Mx) * cs + std::abs(p.actions.My) * sn;
    p.momentMinor = std::abs(p.actions.Mx) * sn + std::abs(p.actions.My) * cs;
}

} // namespace

namespace {

double Ratio(double effect, double capacity) { return effect == 0.0 ? 0.0 : effect / capacity; }

void SetCapacities(const SectionProperties& s, const Material& m, const SectionDesign& design, PositionResult& p)
{
    const Actions& a = p.actions;
    p.Pt = p.eccentricTie ? EccentricTensionCapacity(s, m, design.netGross) : TensionCapacity(s, m, design.netGross);
    p.Pz = p.cls.Aeff * p.cls.pyCompression;
    p.Pvy = ShearCapacity(s, m, Axis::Y);
    p.Pvx = ShearCapacity(s, m, Axis::X);
    p.Mcx = MomentCapacity(s, m, p.cls, design, Axis::X, a.Fvy);
    p.Mcy = MomentCapacity(s, m, p.cls, design, Axis::Y, a.Fvx);
    // 4.4.4.2 b. Slender flanges have no such capacity: RecordLocal says that it was not evaluated.
    const auto flangesOnly = [&](Axis axis, double Mc) {
        const double Mf = FlangesOnlyMomentCapacity(s, m, axis);
        return FlangesAloneMayCarryMoment(p.cls, axis) ? Mf : std::min(Mf, Mc);
    };
    if (NeedsShearBuckling(s, m, Axis::Y)) {
        p.Vw = ShearBucklingResistance(s, m, Axis::Y);
        p.flangesOnly = a.Fvy > 0.6 * p.Vw;
        if (p.flangesOnly) p.Mcx = flangesOnly(Axis::X, p.Mcx);
    }
    if (NeedsShearBuckling(s, m, Axis::X)) {
        p.Vwx = ShearBucklingResistance(s, m, Axis::X);
        p.flangesOnlyY = a.Fvx > 0.6 * p.Vwx;
        if (p.flangesOnlyY) p.Mcy = flangesOnly(Axis::Y, p.Mcy);
    }
}

void SetUtilisations(PositionResult& p)
{
    const Actions& a = p.actions;
    p.axial = a.F > 0.0 ? Ratio(a.F, p.Pt) : Ratio(-a.F, p.Pz);
    p.major = Ratio(p.momentMajor, p.Mcx);
    p.minor = Ratio(p.momentMinor, p.Mcy);
    p.shearMajor = Ratio(a.Fvy, p.Pvy);
    p.shearMinor = Ratio(a.Fvx, p.Pvx);
    if (p.Vw > 0.0) p.shearBuckling = a.Fvy / p.Vw;
    if (p.Vwx > 0.0) p.shearBucklingX = a.Fvx / p.Vwx;
    p.combined = p.axial + p.major + p.minor;
}

// How many of axial force and moments about both axes act together.
int KindsOfAction(const PositionResult& p)
{
    return (p.actions.F != 0.0) + (p.momentMajor != 0.0) + (p.momentMinor != 0.0);
}

// Clauses 4.8.2.3 and 4.8.3.2 b are for doubly symmetric class 1 and 2 sections; the reduced moments of I.2 for low
// shear. One action by itself has nothing to be combined with, so its ratio is not raised to a power.
bool MoreExactRuleServes(const SectionProperties& s, const PositionResult& p)
{
    return KindsOfAction(p) > 1 && s.IsDoublySymmetric() && p.cls.cls <= 2 && !p.flangesOnly && !p.flangesOnlyY &&
           p.axial < 1.0 && HighShearFactor(p.actions.Fvy, p.Pvy) == 0.0 &&
           HighShearFactor(p.actions.Fvx, p.Pvx) == 0.0;
}

void CombineMoreExactly(const SectionProperties& s, const Material& m, PositionResult& p)
{
    const double n = std::abs(p.actions.F) / (s.A * m.py);
    p.Mrx = ReducedMomentCapacity(s, m, Axis::X, n, p.Mcx);
    p.Mry = ReducedMomentCapacity(s, m, Axis::Y, n, p.Mcy);
    SetExponents(s.shape, p);
    const double x = Ratio(p.momentMajor, p.Mrx);
    const double y = Ratio(p.momentMinor, p.Mry);
    // A sum of powers of numbers below 1 lies below them: neither action alone may be hidden by it.
    p.combined = std::max({std::pow(x, p.z1) + std::pow(y, p.z2), x, y, p.axial});
}

} // namespace

PositionResult CSteelMemberBS5950::EvaluatePosition(PositionResult p) const
{
    const SectionProperties& s = m_section.Properties();
    const Material& m = m_section.Steel();
    p.cls = Classify(s, m, p.actions);
    SetMoments(s, p);
    SetCapacities(s, m, m_section.Design(), p);
    SetUtilisations(p);
    if (DesOpt() == MORE_EXACT && MoreExactRuleServes(s, p)) CombineMoreExactly(s, m, p);
    return p;
}

void CSteelMemberBS5950::EvaluatePositions()
{
    const Shape shape = m_section.Properties().shape;
    const bool singlySymmetric = shape == Shape::Angle || shape == Shape::Channel || shape == Shape::Tee;
    const bool bent = std::any_of(m_positions.begin(), m_positions.end(),
                                  [](const PositionResult& p) { return p.actions.Mx != 0.0 || p.actions.My != 0.0; });
    m_class = 1;
    for (PositionResult& p : m_positions) {
        p.eccentricTie = singlySymmetric && !bent && p.actions.F > 0.0;
        p = EvaluatePosition(p);
        m_class = std::max(m_class, p.cls.cls);
    }
}

void CSteelMemberBS5950::RunLocal(bool alongMember)
{
    EvaluatePositions();
    m_ledger.Drop(Stage::Local);
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
    return !m_ledger.HasFailed(Stage::Local);
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
}

namespace {

LedgerEntry EntryOf(Rule rule)
{
    LedgerEntry e;
    e.rule = rule;
    e.clause = RuleClause(rule);
    return e;
}

LedgerEntry Absent(Rule rule, const wchar_t* why)
{
    LedgerEntry e = EntryOf(rule);
    e.status = CheckStatus::NotApplicable;
    e.reason = why;
    return e;
}

// The result record counts a local utilisation of exactly 1.0 as a failure, so the ledger does.
CheckStatus LocalStatus(double utilisation) { return utilisation < 1.0 ? CheckStatus::Passed : CheckStatus::Failed; }

} // namespace

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
    const bool across = NeedsShearBuckling(m_section.Properties(), m_section.Steel(), Axis::X);
    if (across)
        RecordLocalRule(Rule::ShearBuckling, &PositionResult::shearBucklingX, &PositionResult::Vwx, L"Vwx",
                        Quantity::Force, L"no shear along the flanges");
    if (NeedsShearBuckling(m_section.Properties(), m_section.Steel(), Axis::Y))
        RecordLocalRule(Rule::ShearBuckling, &PositionResult::shearBuckling, &PositionResult::Vw, L"Vw",
                        Quantity::Force, L"no shear along the web");
    else if (!across)
        m_ledger.Add(Absent(Rule::ShearBuckling,
                            L"d/t is within 70ε (rolled) or 62ε (welded), or the section has no web"
                            L" between two flanges"));
    const bool angle = m_section.Properties().shape == Shape::Angle;
    RecordLocalRule(Rule::MomentMajor, &PositionResult::major, &PositionResult::Mcx, angle ? L"Mcu" : L"Mcx",
                    Quantity::Moment, L"no moment about the major axis");
    RecordLocalRule(Rule::MomentMinor, &PositionResult::minor, &PositionResult::Mcy, angle ? L"Mcv" : L"Mcy",
                    Quantity::Moment, L"no moment about the minor axis");
    RecordThinWebs();
    RecordBoltHoles();
    RecordCombined();
    RecordTorsion();
}

// Clause 4.4.4.2 b: a thin web in high shear beside a slender flange.
void CSteelMemberBS5950::RecordThinWebs()
{
    for (const PositionResult& p : m_positions) {
        const bool x = p.flangesOnly && p.momentMajor > 0.0 && !FlangesAloneMayCarryMoment(p.cls, Axis::X);
        const bool y = p.flangesOnlyY && p.momentMinor > 0.0 && !FlangesAloneMayCarryMoment(p.cls, Axis::Y);
        if (!x && !y) continue;
        LedgerEntry e = EntryOf(x ? Rule::MomentMajor : Rule::MomentMinor);
        e.clause = L"4.4.4.2";
        e.start = e.end = p.x;
        e.reason = L"thin web with Fv above 0.6 Vw and a slender flange: only the general method of H.3 would serve";
        m_ledger.Add(e);
        if (Result()) Result()->AddFlags(CMemberResult::NOT_CHECKED);
        return;
    }
}

void CSteelMemberBS5950::RecordAxialRule(Rule rule, int position, double PositionResult::*resistance,
                                         const wchar_t* symbol)
{
    const PositionResult& p = m_positions[static_cast<std::size_t>(position)];
    LedgerEntry e = EntryOf(rule);
    e.position = position;
    e.start = e.end = p.x;
    e.utilisation = CMemberResult::InfinitiseNANs(p.axial);
    e.status = LocalStatus(e.utilisation);
    e.resistance = p.*resistance;
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
        RecordAxialRule(Rule::EccentricConnection, position, &PositionResult::Pt, L"Pt");
        Assume(
            L"end connection of the tie",
            L"bolted through one leg of an angle (the larger leg unconnected), the web of a channel or the flange of "
            L"a T (4.6.3.1)",
            std::nan(""));
        return;
    }
    const Shape shape = m_section.Properties().shape;
    m_ledger.Add(
        Absent(Rule::EccentricConnection, shape == Shape::Angle || shape == Shape::Channel || shape == Shape::Tee
                                              ? L"the moments of the connection's eccentricity are part of the actions"
                                              : L"the section is connected symmetrically"));
}

// Clause 4.2.5.5: holes may be left out of account where the net area times Ke is not below the gross area.
void CSteelMemberBS5950::RecordBoltHoles()
{
    const double netGross = m_section.Design().netGross;
    if (netGross == 1.0)
        m_ledger.Add(Absent(Rule::BoltHoles, L"the net area is the gross area"));
    else if (netGross * m_section.Steel().Ke >= 1.0)
        m_ledger.Add(Absent(Rule::BoltHoles, L"Ke times the net area is not below the gross area"));
    else if (std::all_of(m_positions.begin(), m_positions.end(),
                         [](const PositionResult& p) { return p.actions.Mx == 0.0 && p.actions.My == 0.0; }))
        m_ledger.Add(Absent(Rule::BoltHoles, L"no moment"));
    else {
        LedgerEntry e = EntryOf(Rule::BoltHoles);
        e.reason = L"the net to gross ratio does not say which holes lie in the tension flange";
        m_ledger.Add(e);
        if (Result()) Result()->AddFlags(CMemberResult::NOT_CHECKED);
    }
}

// Clauses 4.8.2 and 4.8.3.2: positions where an axial force and a moment, or two moments, act together.
void CSteelMemberBS5950::RecordCombined()
{
    for (const bool tension : {true, false}) {
        const Rule rule = tension ? Rule::CombinedTension : Rule::CombinedCompression;
        int worst = -1;
        for (int i = 0; i < static_cast<int>(m_positions.size()); ++i) {
            const PositionResult& p = m_positions[static_cast<std::size_t>(i)];
            const bool sign = tension ? p.actions.F > 0.0 : p.actions.F <= 0.0;
            if (!sign || KindsOfAction(p) < 2) continue;
            if (worst < 0 || p.combined > m_positions[static_cast<std::size_t>(worst)].combined) worst = i;
        }
        if (worst < 0) {
            m_ledger.Add(Absent(rule, tension
                                          ? L"no tension together with a moment"
                                          : L"no compression together with a moment, and no moments about both axes"));
            continue;
        }
        const PositionResult& p = m_positions[static_cast<std::size_t>(worst)];
        LedgerEntry e = EntryOf(rule);
        e.clause = tension ? (p.Mrx > 0.0 ? L"4.8.2.3" : L"4.8.2.2") : (p.Mrx > 0.0 ? L"4.8.3.2 b" : L"4.8.3.2 a");
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
