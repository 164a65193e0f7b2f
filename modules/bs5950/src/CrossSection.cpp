#include "CrossSection.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Numbers.h"

namespace Keltrix::BS5950 {

namespace {

// Clause 4.8.2.3: exponents of the more exact rule.
void SetExponents(Shape shape, PositionResult& p)
{
    p.z1 = shape == Shape::RHS ? 5.0 / 3.0 : 2.0;
    p.z2 = shape == Shape::RHS ? 5.0 / 3.0 : shape == Shape::CHS ? 2.0 : 1.0;
}

} // namespace

bool IsLeftToSlenderFlanges(const PositionResult& p, Axis axis)
{
    const bool left = axis == Axis::X ? p.flangesOnly && p.momentMajor > 0.0 : p.flangesOnlyY && p.momentMinor > 0.0;
    return left && !FlangesAloneMayCarryMoment(p.cls, axis);
}

int KindsOfAction(const PositionResult& p)
{
    return (p.actions.F != 0.0) + (p.momentMajor != 0.0) + (p.momentMinor != 0.0);
}

const wchar_t* CombinationClause(const PositionResult& p)
{
    const bool moreExact = p.Mrx > 0.0;
    if (p.actions.F > 0.0) return moreExact ? L"4.8.2.3" : L"4.8.2.2";
    if (p.actions.F < 0.0) return moreExact ? L"4.8.3.2 b" : L"4.8.3.2 a";
    return moreExact ? L"4.9, 4.8.3.2 b" : L"4.9";
}

CrossSection::CrossSection(const CSectionBS5950& section, bool moreExact, bool eccentricTies, double spacing) :
    m_section(section), m_s(section.Properties()), m_m(section.Steel()), m_design(section.Design()),
    m_moreExact(moreExact), m_eccentricTies(eccentricTies), m_Pt(TensionCapacity(m_s, m_m, m_design.netGross)),
    m_eccentricPt(EccentricTensionCapacity(m_s, m_m, m_design.netGross)), m_Pvy(ShearCapacity(m_s, m_m, Axis::Y)),
    m_Pvx(ShearCapacity(m_s, m_m, Axis::X))
{
    if (NeedsShearBuckling(m_s, m_m, Axis::Y)) m_Vw = ShearBucklingResistance(m_s, m_m, Axis::Y, spacing);
    if (NeedsShearBuckling(m_s, m_m, Axis::X)) m_Vwx = ShearBucklingResistance(m_s, m_m, Axis::X);
}

double CrossSection::HighShearY() const { return 0.6 * (m_Vw > 0.0 ? std::min(m_Vw, m_Pvy) : m_Pvy); }

double CrossSection::HighShearX() const { return 0.6 * (m_Vwx > 0.0 ? std::min(m_Vwx, m_Pvx) : m_Pvx); }

std::vector<double> CrossSection::ShearThresholdsY() const
{
    std::vector<double> thresholds{0.6 * m_Pvy, m_Pvy};
    if (m_Vw > 0.0) thresholds.push_back(0.6 * m_Vw);
    return thresholds;
}

std::vector<double> CrossSection::ShearThresholdsX() const
{
    std::vector<double> thresholds{0.6 * m_Pvx, m_Pvx};
    if (m_Vwx > 0.0) thresholds.push_back(0.6 * m_Vwx);
    return thresholds;
}

// Annex I.2 changes its formula where the force fills the web or the walls; from the squash load on the rule serves no more.
std::vector<double> CrossSection::AxialThresholds() const
{
    const double py = m_m.py;
    switch (m_moreExact ? m_s.shape : Shape::Angle) {
    case Shape::I:
        return {m_Pt, py * m_s.A, py * m_s.t * (m_s.D - 2.0 * m_s.T), py * m_s.t * m_s.D};
    case Shape::RHS:
        return {m_Pt, py * m_s.A, 2.0 * py * m_s.t * (m_s.D - 2.0 * m_s.T), 2.0 * py * m_s.T * (m_s.B - 2.0 * m_s.t)};
    case Shape::CHS:
        return {m_Pt, py * m_s.A};
    default:
        return {};
    }
}

ShearPair ShearAlong(const SectionProperties& s, const PositionResult& p, Axis direction)
{
    const bool web = direction == Axis::Y;
    const double own = web ? p.actions.Fvy : p.actions.Fvx;
    const bool isResultant = s.shape == Shape::CHS && own != 0.0;
    return {isResultant ? std::hypot(p.actions.Fvx, p.actions.Fvy) : own, web ? p.Pvy : p.Pvx};
}

ShearPair ShearBesideMoment(const SectionProperties& s, const PositionResult& p, Axis moment)
{
    const ShearPair web{p.actions.Fvy, p.Pvy}, across{p.actions.Fvx, p.Pvx};
    if (s.shape == Shape::CHS) return {std::hypot(web.Fv, across.Fv), p.Pvy};
    if (s.shape == Shape::Angle) return web.Fv * across.Pv >= across.Fv * web.Pv ? web : across;
    return moment == Axis::X ? web : across;
}

// The moments that are compared with the capacities: about the principal axes of an angle, otherwise as they are.
void CrossSection::SetMoments(PositionResult& p) const
{
    p.momentMajor = std::abs(p.actions.Mx);
    p.momentMinor = std::abs(p.actions.My);
    if (m_s.shape != Shape::Angle) return;
    const double c = std::cos(m_s.alpha);
    const double s = std::sin(m_s.alpha);
    const double My = p.reversed ? -p.actions.My : p.actions.My;
    p.momentMajor = std::abs(c * p.actions.Mx + s * My);
    p.momentMinor = std::abs(c * My - s * p.actions.Mx);
}

void CrossSection::SetCapacities(PositionResult& p) const
{
    p.Pt = m_Pt;
    p.eccentricTie = m_eccentricTies && p.actions.F > 0.0;
    if (p.eccentricTie) p.Pte = m_eccentricPt;
    p.Pz = p.cls.Aeff * p.cls.pyCompression;
    p.Pvy = m_Pvy;
    p.Pvx = m_Pvx;
    // MomentCapacity goes by the share of the own direction's capacity.
    const auto capacity = [&](Axis moment, double ownPv) {
        const ShearPair shear = ShearBesideMoment(m_s, p, moment);
        return MomentCapacity(m_s, m_m, p.cls, m_design, moment, shear.Fv * ownPv / shear.Pv);
    };
    p.Mcx = capacity(Axis::X, p.Pvy);
    p.Mcy = capacity(Axis::Y, p.Pvx);
    SetThinWebs(p);
}

// Clause 4.4.4.2 b: in high shear a thin web carries no moment. The flanges alone carry it, and then the axial force too. Slender
// flanges have no such capacity: the smaller one is given for information, and the ledger says that the rule is open.
void CrossSection::SetThinWebs(PositionResult& p) const
{
    const auto capacity = [&](Axis axis, double Mc) {
        const double Mf = FlangesOnlyMomentCapacity(m_s, m_m, axis);
        return FlangesAloneMayCarryMoment(p.cls, axis) ? Mf : std::min(Mf, Mc);
    };
    p.Vw = m_Vw;
    p.Vwx = m_Vwx;
    p.flangesOnly = m_Vw > 0.0 && p.actions.Fvy > 0.6 * m_Vw && p.actions.Mx != 0.0;
    p.flangesOnlyY = m_Vwx > 0.0 && p.actions.Fvx > 0.6 * m_Vwx && p.actions.My != 0.0;
    double area = std::numeric_limits<double>::infinity();
    if (p.flangesOnly) {
        p.Mcx = capacity(Axis::X, p.Mcx);
        area = m_s.B * m_s.T + m_s.B2 * m_s.T2;
    }
    if (p.flangesOnlyY) {
        p.Mcy = capacity(Axis::Y, p.Mcy);
        area = std::min(area, 2.0 * m_s.D * m_s.t);
    }
    if (p.flangesOnly || p.flangesOnlyY) p.Pf = m_m.py * area;
}

void CrossSection::SetUtilisations(PositionResult& p) const
{
    const Actions& a = p.actions;
    const double axial = a.F > 0.0 ? Ratio(a.F, p.Pt) : Ratio(-a.F, p.Pz);
    p.axial = p.eccentricTie ? std::max(axial, a.F / p.Pte) : axial;
    p.major = Ratio(p.momentMajor, p.Mcx);
    p.minor = Ratio(p.momentMinor, p.Mcy);
    const auto shear = [&](Axis direction) {
        const ShearPair pair = ShearAlong(m_s, p, direction);
        return Ratio(pair.Fv, pair.Pv);
    };
    p.shearMajor = shear(Axis::Y);
    p.shearMinor = shear(Axis::X);
    if (p.Vw > 0.0) p.shearBuckling = a.Fvy / p.Vw;
    if (p.Vwx > 0.0) p.shearBucklingX = a.Fvx / p.Vwx;
    const double combined = p.Pf > 0.0 ? std::abs(a.F) / p.Pf : axial;
    p.combined = std::max(combined + p.major + p.minor, p.axial);
}

// Clauses 4.8.2.3 and 4.8.3.2 b are for doubly symmetric class 1 and 2 sections; the reduced moments of I.2 for low
// shear. One action by itself has nothing to be combined with, so its ratio is not raised to a power.
bool CrossSection::MoreExactRuleServes(const PositionResult& p) const
{
    const auto isLow = [&](Axis moment) {
        const ShearPair shear = ShearBesideMoment(m_s, p, moment);
        return HighShearFactor(shear.Fv, shear.Pv) == 0.0;
    };
    return KindsOfAction(p) > 1 && m_s.IsDoublySymmetric() && p.cls.cls <= 2 && p.Pf == 0.0 && p.axial < 1.0 &&
           isLow(Axis::X) && isLow(Axis::Y);
}

void CrossSection::CombineMoreExactly(PositionResult& p) const
{
    const double n = std::abs(p.actions.F) / (m_s.A * m_m.py);
    p.Mrx = ReducedMomentCapacity(m_s, m_m, Axis::X, n, p.Mcx);
    p.Mry = ReducedMomentCapacity(m_s, m_m, Axis::Y, n, p.Mcy);
    SetExponents(m_s.shape, p);
    const double x = Ratio(p.momentMajor, p.Mrx);
    const double y = Ratio(p.momentMinor, p.Mry);
    // A sum of powers of numbers below 1 lies below them: neither action alone may be hidden by it.
    p.combined = std::max({std::pow(x, p.z1) + std::pow(y, p.z2), x, y, p.axial});
}

void CrossSection::Evaluate(PositionResult& p) const
{
    p.cls = Classify(m_s, m_m, p.actions);
    SetMoments(p);
    SetCapacities(p);
    SetUtilisations(p);
    if (m_moreExact && MoreExactRuleServes(p)) CombineMoreExactly(p);
}

} // namespace Keltrix::BS5950
