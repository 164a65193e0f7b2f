// Annex A: factors of (6.61) and (6.62), and the member's part in them.

#include "keltrix/ec3/AnnexA.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "MemberCheck.h"

namespace Keltrix::EC3 {

using Design::MomentDiagram;

double MomentFactorA2(const DeflectedMoments& moments, double share)
{
    if (moments.linear) return 0.79 + 0.21 * moments.psi + 0.36 * (moments.psi - 0.33) * share;
    return 1.0 + (moments.shape - 1.0) * share;
}

namespace {

struct Plasticity {
    double wy, wz, npl, lambdaMax;
    double bLT, cLT, dLT, eLT;
};

// Below the critical force.
double AxisFactor(double chi, double share) { return (1.0 - share) / (1.0 - chi * share); }

// Cmy and CmLT where lateral-torsional buckling amplifies the moment.
void SetMomentFactors(const AnnexAInput& i, AnnexAFactors& f, double aLT)
{
    f.Cmy0 = MomentFactorA2(i.major, i.N / i.NcrY);
    f.Cmz0 = MomentFactorA2(i.minor, i.N / i.NcrZ);
    f.Cmy = f.Cmy0;
    f.Cmz = f.Cmz0;
    f.CmLT = 1.0;
    const double left = (1.0 - i.N / i.NcrZ) * (1.0 - i.N / i.NcrT);
    if (i.lambda0 <= 0.2 * std::sqrt(i.C1) * std::pow(std::max(0.0, left), 0.25)) return;
    // Without a force the eccentricity is infinite, and the share of Cmy,0 nil.
    const double root = i.N > 0.0 ? std::sqrt(i.My / i.N * i.A / i.Wy) : std::numeric_limits<double>::infinity();
    const double share = std::isinf(root) ? 1.0 : root * aLT / (1.0 + root * aLT);
    f.Cmy = f.Cmy0 + (1.0 - f.Cmy0) * share;
    f.CmLT =
        left > 0.0 ? std::max(1.0, f.Cmy * f.Cmy * aLT / std::sqrt(left)) : std::numeric_limits<double>::infinity();
}

Plasticity PlasticityOf(const AnnexAInput& i, const AnnexAFactors& f, double aLT)
{
    Plasticity p{};
    p.wy = std::min(1.5, i.Wply / i.Wely);
    p.wz = std::min(1.5, i.Wplz / i.Welz);
    p.npl = i.N / i.NRd;
    p.lambdaMax = std::max(i.lambdaY, i.lambdaZ);
    const double my = i.My / (i.chiLT * i.MplyRd);
    const double mz = i.Mz / i.MplzRd;
    const double l4 = std::pow(i.lambdaZ, 4.0);
    p.bLT = 0.5 * aLT * i.lambda0 * i.lambda0 * my * mz;
    p.cLT = 10.0 * aLT * i.lambda0 * i.lambda0 / (5.0 + l4) * my / f.Cmy;
    p.dLT = 2.0 * aLT * i.lambda0 / (0.1 + l4) * my / f.Cmy * mz / f.Cmz;
    p.eLT = 1.7 * aLT * i.lambda0 / (0.1 + l4) * my / f.Cmy;
    return p;
}

void SetPlasticFactors(const AnnexAInput& i, AnnexAFactors& f, const Plasticity& p)
{
    const auto own = [&](double w, double Cm) {
        return 2.0 - 1.6 / w * Cm * Cm * (p.lambdaMax + p.lambdaMax * p.lambdaMax);
    };
    const auto other = [&](double w, double Cm) {
        return 2.0 - 14.0 * Cm * Cm * p.lambdaMax * p.lambdaMax / std::pow(w, 5.0);
    };
    const double yz = 0.6 * std::sqrt(p.wz / p.wy);
    const double zy = 0.6 * std::sqrt(p.wy / p.wz);
    f.Cyy = std::max(i.Wely / i.Wply, 1.0 + (p.wy - 1.0) * (own(p.wy, f.Cmy) * p.npl - p.bLT));
    f.Cyz = std::max(yz * i.Welz / i.Wplz, 1.0 + (p.wz - 1.0) * (other(p.wz, f.Cmz) * p.npl - p.cLT));
    f.Czy = std::max(zy * i.Wely / i.Wply, 1.0 + (p.wy - 1.0) * (other(p.wy, f.Cmy) * p.npl - p.dLT));
    f.Czz = std::max(i.Welz / i.Wplz, 1.0 + (p.wz - 1.0) * (own(p.wz, f.Cmz) - p.eLT) * p.npl);
    f.k.kyy /= f.Cyy;
    f.k.kyz *= yz / f.Cyz;
    f.k.kzy *= zy / f.Czy;
    f.k.kzz /= f.Czz;
}

} // namespace

AnnexAFactors AnnexA(const AnnexAInput& i)
{
    AnnexAFactors f;
    const double aLT = std::max(0.0, 1.0 - i.It / i.Iy);
    const double y = i.N / i.NcrY;
    const double z = i.N / i.NcrZ;
    if (!(std::max(y, z) < 1.0)) {
        f.k.kyy = f.k.kyz = f.k.kzy = f.k.kzz = std::numeric_limits<double>::infinity();
        return f;
    }
    SetMomentFactors(i, f, aLT);
    f.muY = AxisFactor(i.chiY, y);
    f.muZ = AxisFactor(i.chiZ, z);
    f.k.kyy = f.Cmy * f.CmLT * f.muY / (1.0 - y);
    f.k.kyz = f.Cmz * f.muY / (1.0 - z);
    f.k.kzy = f.Cmy * f.CmLT * f.muZ / (1.0 - y);
    f.k.kzz = f.Cmz * f.muZ / (1.0 - z);
    if (i.isPlastic) SetPlasticFactors(i, f, PlasticityOf(i, f, aLT));
    return f;
}

// The length's moments for Table A.2. Where they are not known, or the length is given and where it lies is not, a uniform moment, which has the
// largest factor.
DeflectedMoments MemberCheck::DeflectedOver(const MomentDiagram& moments, double from, double to, double noise) const
{
    DeflectedMoments d;
    if ((m_in.lengthOverride && m_heldInside) || !moments.IsBalanced(from, to) ||
        !(moments.Between(from, to).Magnitude() > noise))
        return d;
    const MomentPattern p = PatternOf(moments, from, to);
    d.linear = p.linear;
    const bool leftLarger = std::abs(p.left) >= std::abs(p.right);
    const double ends = leftLarger ? p.left : p.right;
    if (p.linear) {
        d.psi = (leftLarger ? p.right : p.left) / ends;
        return d;
    }
    d.shape = std::numbers::pi * std::numbers::pi * LargestDeflection(moments, from, to) / std::abs(p.largest);
    return d;
}

// E I δ/L² between ends that do not move, from the moments at equal steps (Simpson's rule for both integrals).
double MemberCheck::LargestDeflection(const MomentDiagram& moments, double from, double to)
{
    constexpr int STEPS = 200;
    const double h = 1.0 / STEPS;
    const auto at = [&](int half) { return moments.LeftOf(from + (to - from) * 0.5 * half * h).Worst(); };
    double slope = 0.0, deflection = 0.0;
    std::array<double, STEPS + 1> course{};
    double right = moments.RightOf(from).Worst();
    for (int k = 0; k < STEPS; ++k) {
        const double left = right;
        const double middle = at(2 * k + 1);
        right = at(2 * k + 2);
        // Exact for a parabola over the step.
        deflection += slope * h + h * h * (left + 2.0 * middle) / 6.0;
        slope += h * (left + 4.0 * middle + right) / 6.0;
        course[static_cast<std::size_t>(k) + 1] = deflection;
    }
    double largest = 0.0;
    for (int k = 0; k <= STEPS; ++k)
        largest = std::max(largest, std::abs(course[static_cast<std::size_t>(k)] - deflection * k * h));
    return largest;
}

// Why Annex A is not applied to a combination; null where it is.
const wchar_t* MemberCheck::AnnexARefusal(const Combination& c) const
{
    if (!m_in.section.IsDoublySymmetric()) return L"Annex A is evaluated for doubly symmetric sections alone";
    if (m_in.momentFactor)
        return L"Annex A has factors of its own: a given equivalent uniform moment factor is for Annex B";
    if (m_struts[c.major].sway || m_struts[c.minor].sway)
        return L"Table A.2 is for lengths whose ends do not move against each other";
    if (m_laterals[c.lateral].IsApplied() && !(m_laterals[c.lateral].uniformMcr > 0.0))
        return L"Annex A needs the critical moment under uniform moment, which is not found here";
    return nullptr;
}

void MemberCheck::ApplyAnnexA(Combination& c) const
{
    const StrutSpan& y = m_struts[c.major];
    const StrutSpan& z = m_struts[c.minor];
    const LateralSpan& lateral = m_laterals[c.lateral];
    const Strength& m = m_in.strength;
    const Section& s = m_in.section;
    AnnexAInput i;
    i.isPlastic = m_class.IsPlastic();
    i.N = std::max(c.Ny, c.Nz);
    i.NRd = m_class.A * m.fy / m.gammaM1;
    i.NcrY = y.open || y.held ? NEVER : y.strut.Ncr;
    i.NcrZ = z.open || z.held ? NEVER : z.strut.Ncr;
    i.NcrT = NEVER;
    for (const StrutSpan& t : m_struts)
        if (t.mode == BucklingMode::Torsion && !t.open && !t.held && t.start < c.end && t.end > c.start)
            i.NcrT = std::min(i.NcrT, t.strut.Ncr);
    i.chiY = y.open ? 1.0 : y.strut.reduction.chi;
    i.chiZ = z.open ? 1.0 : z.strut.reduction.chi;
    i.lambdaY = c.input.lambdaY;
    i.lambdaZ = c.input.lambdaZ;
    i.lambda0 = lateral.IsApplied() ? std::sqrt(c.MyRk / lateral.uniformMcr) : 0.0;
    i.C1 = lateral.C1;
    i.chiLT = lateral.Chi();
    i.My = c.My;
    i.Mz = c.Mz;
    i.MplyRd = s.Wply * m.fy / m.gammaM0;
    i.MplzRd = s.Wplz * m.fy / m.gammaM0;
    i.A = m_class.A;
    i.Wy = m_class.IsPlastic() ? s.Wely : m_class.Wy;
    i.Wely = s.Wely;
    i.Welz = s.Welz;
    i.Wply = s.Wply;
    i.Wplz = s.Wplz;
    i.It = s.It;
    i.Iy = s.Iy;
    i.major = DeflectedOver(m_major, y.start, y.end, m_check->NoiseMy());
    i.minor = DeflectedOver(m_minor, z.start, z.end, m_check->NoiseMz());
    c.annexA = AnnexA(i);
    c.k = c.annexA->k;
}

} // namespace Keltrix::EC3
