#include "keltrix/bs5950/Resistance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "Numbers.h"

namespace Keltrix::BS5950 {

namespace {

double EulerStrength(double slenderness, double E)
{
    return std::numbers::pi * std::numbers::pi * E / (slenderness * slenderness);
}

// The Perry formula of Annexes B.2.1 and C.1.
double PerryStrength(double pE, double py, double eta)
{
    const double phi = 0.5 * (py + (eta + 1.0) * pE);
    return pE * py / (phi + std::sqrt(phi * phi - pE * py));
}

double ClampToUnit(double value) { return std::clamp(value, 0.0, 1.0); }

} // namespace

double TensionCapacity(const SectionProperties& s, const Material& m, double netGross)
{
    return m.py * s.A * std::min(1.0, m.Ke * netGross);
}

double UnconnectedArea(const SectionProperties& s)
{
    switch (s.shape) {
    case Shape::Angle:
        return s.A - std::min(s.D, s.B) * s.t;
    case Shape::Channel:
        return s.A - s.D * s.t;
    case Shape::Tee:
        return s.A - s.B * s.T;
    default:
        return 0.0;
    }
}

double EccentricTensionCapacity(const SectionProperties& s, const Material& m, double netGross)
{
    const double Ae = s.A * std::min(1.0, m.Ke * netGross);
    return m.py * std::max(0.0, Ae - 0.5 * UnconnectedArea(s));
}

double ShearCapacity(const SectionProperties& s, const Material& m, Axis direction)
{
    return 0.6 * m.py * (direction == Axis::Y ? s.Avy : s.Avx);
}

namespace {

// Plates that carry a shear between two others, side by side.
struct ShearPlates {
    double depth = 0.0;
    double thickness = 0.0;
    int count = 0;
};

ShearPlates PlatesInShear(const SectionProperties& s, Axis direction)
{
    switch (s.shape) {
    case Shape::I:
    case Shape::UnequalI:
    case Shape::Channel:
        return direction == Axis::Y ? ShearPlates{s.d, s.t, 1} : ShearPlates{};
    case Shape::RHS:
        return direction == Axis::Y ? ShearPlates{s.d, s.t, 2} : ShearPlates{s.b, s.T, 2};
    default:
        return {};
    }
}

} // namespace

bool NeedsShearBuckling(const SectionProperties& s, const Material& m, Axis direction)
{
    const ShearPlates plates = PlatesInShear(s, direction);
    return plates.count > 0 && plates.depth / plates.thickness > (s.IsWelded() ? 62.0 : 70.0) * Epsilon(m.py);
}

double ShearBucklingStrength(double depthToThickness, double pyw, double spacingToDepth)
{
    const double pv = 0.6 * pyw;
    const double inverse = 1.0 / (spacingToDepth * spacingToDepth);
    const double k = spacingToDepth > 1.0 ? 1.0 + 0.75 * inverse : 0.75 + inverse;
    const double qe = k * std::pow(1000.0 / depthToThickness, 2.0) * 1e6;
    const double lambdaW = std::sqrt(pv / qe);
    if (lambdaW <= 0.8) return pv;
    if (lambdaW < 1.25) return (13.48 - 5.6 * lambdaW) / 9.0 * pv;
    return 0.9 / lambdaW * pv;
}

double ShearBucklingResistance(const SectionProperties& s, const Material& m, Axis direction, double spacing)
{
    const ShearPlates plates = PlatesInShear(s, direction);
    if (plates.count == 0) return 0.0;
    return plates.count * plates.depth * plates.thickness *
           ShearBucklingStrength(plates.depth / plates.thickness, m.py, spacing / plates.depth);
}

MinimumWebThickness WebThicknessLimits(const SectionProperties& s, const Material& m, Axis direction, double spacing)
{
    const ShearPlates plates = PlatesInShear(s, direction);
    if (plates.count == 0) return {};
    const double ratio = spacing / plates.depth;
    const double base = plates.depth / 250.0;
    MinimumWebThickness t;
    t.serviceability = base * std::sqrt(std::min(1.0, ratio));
    t.flangeBuckling = base * (ratio > 1.5 ? m.py / 345e6 : std::sqrt(m.py / 455e6));
    t.actual = plates.thickness;
    return t;
}

namespace {

// b1 + n k: the length of web at the root of the flange over which a load has spread (4.5.2.1).
double SpreadLength(const SectionProperties& s, const WebLoad& load)
{
    const double T = load.onFlange1 ? s.T : s.T2;
    const double k = s.IsWelded() ? T : T + s.r;
    return load.stiffBearing + std::min(5.0, 2.0 + 0.6 * load.bearingToEnd / k) * k;
}

bool HasWebOfOnePlate(const SectionProperties& s)
{
    return s.shape == Shape::I || s.shape == Shape::UnequalI || s.shape == Shape::Channel;
}

} // namespace

double WebBearingCapacity(const SectionProperties& s, const Material& m, const WebLoad& load)
{
    return HasWebOfOnePlate(s) ? SpreadLength(s, load) * s.t * m.py : 0.0;
}

double WebBucklingResistance(const SectionProperties& s, const Material& m, const WebLoad& load)
{
    if (!HasWebOfOnePlate(s)) return 0.0;
    double Px = 25.0 * Epsilon(m.py) * s.t / std::sqrt(SpreadLength(s, load) * s.d) * WebBearingCapacity(s, m, load);
    if (load.loadToEnd < 0.7 * s.d) Px *= (load.loadToEnd + 0.7 * s.d) / (1.4 * s.d);
    if (load.effectiveLength > 0.7 * s.d) Px *= 0.7 * s.d / load.effectiveLength;
    return Px;
}

double HighShearFactor(double Fv, double Pv)
{
    const double ratio = std::abs(Fv) / Pv;
    if (!(ratio > 0.6)) return 0.0;
    return ClampToUnit(std::pow(2.0 * ratio - 1.0, 2.0));
}

double MomentCapacity(const SectionProperties& s, const Material& m, const Classification& c,
                      const SectionDesign& design, Axis axis, double Fv)
{
    const bool x = axis == Axis::X;
    const double rho = HighShearFactor(Fv, ShearCapacity(s, m, x ? Axis::Y : Axis::X));
    const double Sv = x ? s.Svx : s.Svy;
    const bool plastic = x ? c.WxIsPlastic : c.WyIsPlastic;
    const double W = x ? c.Wx : c.Wy;
    const double Z = s.shape == Shape::Angle ? W : x ? s.Zx : s.Zy;
    const double lost = s.shape == Shape::Angle ? W : plastic ? Sv : Sv / 1.5;
    const double reduced = std::max(0.0, W - rho * lost);
    return (x ? c.pyMomentX : c.pyMomentY) * std::min(reduced, std::min(design.plasElas, 1.5) * Z);
}

bool FlangesAloneMayCarryMoment(const Classification& c, Axis axis)
{
    for (int i = 0; i < c.count; ++i) {
        const ElementClass& e = c.elements[static_cast<std::size_t>(i)];
        if (!e.isWeb && e.aboutY == (axis == Axis::Y) && e.cls == 4) return false;
    }
    return true;
}

double FlangesOnlyMomentCapacity(const SectionProperties& s, const Material& m, Axis axis)
{
    if (axis == Axis::Y) return s.shape == Shape::RHS ? m.py * s.D * s.t * (s.B - s.t) : 0.0;
    if (PlatesInShear(s, Axis::Y).count == 0) return 0.0;
    return m.py * std::min(s.B * s.T, s.B2 * s.T2) * s.hs;
}

double ReducedPlasticModulus(const SectionProperties& s, Axis axis, double n)
{
    n = ClampToUnit(n);
    const double A = s.A;
    if (s.shape == Shape::CHS) return s.Sx * std::cos(0.5 * std::numbers::pi * n);
    const bool x = axis == Axis::X;
    if (s.shape == Shape::RHS) {
        const double depth = x ? s.D : s.B;
        const double width = x ? s.B : s.D;
        const double wall = x ? s.t : s.T;
        const double flange = x ? s.T : s.t;
        if (n * A <= 2.0 * wall * (depth - 2.0 * flange)) return (x ? s.Sx : s.Sy) - A * A * n * n / (8.0 * wall);
        return A * A / (4.0 * width) * (2.0 * depth * width / A - 1.0 + n) * (1.0 - n);
    }
    if (x) {
        if (n * A <= s.t * (s.D - 2.0 * s.T)) return s.Sx - A * A * n * n / (4.0 * s.t);
        return A * A / (4.0 * s.B) * (2.0 * s.D * s.B / A - 1.0 + n) * (1.0 - n);
    }
    if (n * A <= s.t * s.D) return s.Sy - A * A * n * n / (4.0 * s.D);
    return A * A / (8.0 * s.T) * (4.0 * s.B * s.T / A - 1.0 + n) * (1.0 - n);
}

double ReducedMomentCapacity(const SectionProperties& s, const Material& m, Axis axis, double n, double Mc)
{
    return std::clamp(m.py * ReducedPlasticModulus(s, axis, n), 0.0, Mc);
}

wchar_t StrutCurve::Name(double robertson)
{
    return robertson <= 2.0 ? L'a' : robertson <= 3.5 ? L'b' : robertson <= 5.5 ? L'c' : L'd';
}

StrutCurve Table23(const SectionProperties& s, Axis axis)
{
    constexpr double a = 2.0, b = 3.5, c = 5.5, d = 8.0;
    const bool x = axis == Axis::X;
    const auto pick = [&](double upTo, double above) { // by the maximum thickness, that of a web too
        const double thickness = s.thickest;
        const double over = thickness <= 0.040 * (1.0 + 1e-9) ? 0.0 : thickness < 0.050 * (1.0 - 1e-9) ? 0.5 : 1.0;
        return StrutCurve{upTo, above, over};
    };
    switch (s.shape) {
    case Shape::I:
    case Shape::UnequalI:
        if (s.IsWelded()) return x ? pick(b, b) : pick(c, d);
        if (s.IsHSection()) return x ? pick(b, c) : pick(c, d);
        return x ? pick(a, b) : pick(b, c);
    case Shape::RHS:
        if (s.IsWelded()) return pick(b, c);
        return s.fabrication == Fabrication::Formed ? StrutCurve{c, c, 0.0} : StrutCurve{a, a, 0.0};
    case Shape::CHS:
        return s.fabrication == Fabrication::Rolled ? StrutCurve{a, a, 0.0} : StrutCurve{c, c, 0.0};
    default:
        return StrutCurve{c, c, 0.0};
    }
}

double CompressiveStrength(double slenderness, double py, double robertson, double E)
{
    if (!(py > 0.0)) return 0.0;
    const double lambda0 = 0.2 * std::sqrt(std::numbers::pi * std::numbers::pi * E / py);
    if (slenderness <= lambda0) return py;
    if (!(slenderness < INF)) return 0.0;
    const double eta = robertson * (slenderness - lambda0) / 1000.0;
    return PerryStrength(EulerStrength(slenderness, E), py, eta);
}

bool LosesStrengthByWelding(const SectionProperties& s)
{
    return s.IsWelded() && (s.shape == Shape::I || s.shape == Shape::UnequalI || s.shape == Shape::RHS);
}

double CompressiveStrength(const SectionProperties& s, const Material& m, const Classification& c, Axis axis,
                           double slenderness)
{
    const double py = c.pyCompression - (LosesStrengthByWelding(s) ? 20e6 : 0.0);
    const double reduced = slenderness * std::sqrt(std::min(1.0, c.Aeff / s.A));
    const StrutCurve curve = Table23(s, axis);
    const double upTo = CompressiveStrength(reduced, py, curve.a, m.E);
    if (curve.over == 0.0) return upTo;
    return (1.0 - curve.over) * upTo + curve.over * CompressiveStrength(reduced, py, curve.aOver, m.E);
}

double CompressionResistance(const SectionProperties& s, const Material& m, const Classification& c, Axis axis,
                             double slenderness)
{
    return c.Aeff * CompressiveStrength(s, m, c, axis, slenderness);
}

double Table22(bool held1, int rotation1, bool held2, int rotation2)
{
    if (held1 && held2) {
        if (rotation1 == 2 && rotation2 == 2) return 0.7;
        if (rotation1 >= 1 && rotation2 >= 1) return 0.85;
        return rotation1 == 2 || rotation2 == 2 ? 0.85 : 1.0;
    }
    if (held1 == held2) return INF;
    if ((held1 ? rotation1 : rotation2) != 2) return INF;
    constexpr std::array<double, 3> SWAY{2.0, 1.5, 1.2};
    return SWAY[static_cast<std::size_t>(std::clamp(held1 ? rotation2 : rotation1, 0, 2))];
}

double LimitingSlendernessLT(double py, double E)
{
    return 0.4 * std::sqrt(std::numbers::pi * std::numbers::pi * E / py);
}

namespace {

// Annex B.2.2: Perry coefficient, αLT = 7.0.
double PerryCoefficientLT(double lambdaLT, double lambdaL0, bool welded)
{
    constexpr double alphaLT = 7.0;
    if (!welded || lambdaLT > 3.0 * lambdaL0) return alphaLT * (lambdaLT - lambdaL0) / 1000.0;
    if (lambdaLT < 2.0 * lambdaL0) return 2.0 * alphaLT * (lambdaLT - lambdaL0) / 1000.0;
    return 2.0 * alphaLT * lambdaL0 / 1000.0;
}

// Annex B.2.3, B.2.8: v = ((w' + 0.05(λ/x)² + ψ²)^0.5 + ψ)^-0.5, w' = 4η(1-η) or the warping ratio of a T.
double SlendernessFactor(double lambdaOverX, double warping, double psi)
{
    const double root = std::sqrt(warping + 0.05 * lambdaOverX * lambdaOverX + psi * psi);
    return 1.0 / std::sqrt(root + psi);
}

void FlangedSlenderness(const SectionProperties& s, bool flange1, SlendernessLT& r)
{
    double warping = 1.0;
    double psi = 0.0;
    if (s.shape == Shape::UnequalI) {
        const double I1 = s.T * std::pow(s.B, 3.0);
        const double I2 = s.T2 * std::pow(s.B2, 3.0);
        const double eta = (flange1 ? I1 : I2) / (I1 + I2);
        warping = 4.0 * eta * (1.0 - eta);
        const bool approximate = eta >= 0.1 && eta <= 0.9; // 4.3.6.7 a; B.2.4.1 otherwise
        psi = approximate ? (eta > 0.5 ? 0.8 : 1.0) * (2.0 * eta - 1.0) : flange1 ? s.psi : -s.psi;
    }
    if (s.shape == Shape::Tee) {
        warping = s.w;
        psi = flange1 ? s.psi : -s.psi;
    }
    r.u = s.u;
    r.x = s.x;
    r.v = SlendernessFactor(r.lambda / s.x, warping, psi);
    r.lambdaLT = r.u * r.v * r.lambda * std::sqrt(r.betaW);
    r.source = s.shape == Shape::Tee ? L"B.2.8" : L"4.3.6.7, B.2.3";
}

// Annex B.2.6.
void BoxSlenderness(const SectionProperties& s, SlendernessLT& r)
{
    const double gamma = (1.0 - s.Iy / s.Ix) * (1.0 - s.J / (2.6 * s.Ix));
    r.phi = std::sqrt(std::max(0.0, s.Sx * s.Sx * gamma) / (s.A * s.J));
    r.lambdaLT = 2.25 * std::sqrt(r.phi * r.lambda * r.betaW);
    r.source = L"B.2.6";
}

// Annex B.2.9. The monosymmetry index of an unequal angle counts as negative (long leg in compression), because the
// actions do not say which way the angle is turned.
void AngleSlenderness(const SectionProperties& s, SlendernessLT& r)
{
    const double gamma = 1.0 - s.Iv / s.Iu;
    r.phi = std::sqrt(s.Zu * s.Zu * gamma / (s.A * s.J));
    const double k = r.lambda > 0.0 ? 4.5 * -s.psi / r.lambda : 0.0;
    r.v = s.psi == 0.0 || r.lambda == 0.0 ? 1.0 : 1.0 / std::sqrt(std::sqrt(1.0 + k * k) + k);
    r.lambdaLT = 2.25 * r.v * std::sqrt(r.phi * r.lambda);
    r.source = L"B.2.9";
}

} // namespace

double BendingStrength(double lambdaLT, double py, bool welded, double E)
{
    const double lambdaL0 = LimitingSlendernessLT(py, E);
    if (lambdaLT <= lambdaL0) return py;
    if (!(lambdaLT < INF)) return 0.0;
    return PerryStrength(EulerStrength(lambdaLT, E), py, PerryCoefficientLT(lambdaLT, lambdaL0, welded));
}

double Table15(double DoverB, double py)
{
    constexpr std::array<std::array<double, 2>, 12> ROWS{{{1.25, 770},
                                                          {1.33, 670},
                                                          {1.4, 580},
                                                          {1.44, 550},
                                                          {1.5, 515},
                                                          {1.67, 435},
                                                          {1.75, 410},
                                                          {1.8, 395},
                                                          {2.0, 340},
                                                          {2.5, 275},
                                                          {3.0, 225},
                                                          {4.0, 170}}};
    if (DoverB <= 1.0) return INF;
    const double stress = 275e6 / py;
    if (DoverB <= ROWS.front()[0]) return ROWS.front()[1] * stress;
    for (std::size_t i = 1; i < ROWS.size(); ++i) {
        if (DoverB > ROWS[i][0]) continue;
        const double f = (DoverB - ROWS[i - 1][0]) / (ROWS[i][0] - ROWS[i - 1][0]);
        return (ROWS[i - 1][1] + f * (ROWS[i][1] - ROWS[i - 1][1])) * stress;
    }
    return 0.0;
}

bool CanBuckleLaterally(const SectionProperties& s)
{
    switch (s.shape) {
    case Shape::CHS:
        return false;
    case Shape::Angle:
        return true;
    default: // of square sections only rounding tells the axes apart
        return s.Ix > s.Iy * (1.0 + 1e-9);
    }
}

bool IsWithinTable15(const SectionProperties& s, const Material& m, double slenderness)
{
    return s.shape == Shape::RHS && !s.IsWelded() && slenderness <= Table15(s.D / s.B, m.py);
}

double BetaW(const SectionProperties& s, const Classification& c)
{
    return s.shape == Shape::Angle ? 1.0 : c.Wx / s.Sx;
}

SlendernessLT LateralTorsionalSlenderness(const SectionProperties& s, double LE, double betaW,
                                          bool flange1InCompression)
{
    SlendernessLT r;
    r.betaW = betaW;
    r.lambda = LE / s.MinorRadius();
    r.source = L"4.3.6.1";
    if (!CanBuckleLaterally(s) || LE == 0.0) return r;
    if (!(LE < INF)) {
        r.lambdaLT = INF;
        return r;
    }
    switch (s.shape) {
    case Shape::RHS:
        BoxSlenderness(s, r);
        break;
    case Shape::Angle:
        AngleSlenderness(s, r);
        break;
    default:
        FlangedSlenderness(s, flange1InCompression, r);
        break;
    }
    return r;
}

double BucklingResistanceMoment(const SectionProperties& s, const Material& m, const Classification& c, double LE,
                                bool flange1InCompression)
{
    const SlendernessLT r = LateralTorsionalSlenderness(s, LE, BetaW(s, c), flange1InCompression);
    if (IsWithinTable15(s, m, r.lambda)) return c.pyMomentX * c.Wx;
    return BendingStrength(r.lambdaLT, c.pyMomentX, s.IsWelded(), m.E) * c.Wx;
}

double AngleMbSimplified(const SectionProperties& s, const Material& m, double LE, bool heelInCompression)
{
    const double cap = 0.8 * m.py * s.Zx;
    if (heelInCompression) return cap;
    const double e = Epsilon(m.py);
    return std::clamp(m.py * s.Zx * (1350.0 * e - LE / s.rv) / (1625.0 * e), 0.0, cap);
}

double MomentFactorLT(double M2, double M3, double M4, double Mmax)
{
    const double max = std::abs(Mmax);
    if (max == 0.0) return 1.0;
    const double m = 0.2 + (0.15 * std::abs(M2) + 0.5 * std::abs(M3) + 0.15 * std::abs(M4)) / max;
    return std::clamp(m, 0.44, 1.0);
}

double MomentFactor(double M2, double M3, double M4, double M24, double Mmax)
{
    const double max = std::abs(Mmax);
    if (max == 0.0) return 1.0;
    const double m = 0.2 + std::abs(0.1 * M2 + 0.6 * M3 + 0.1 * M4) / max;
    return std::min(1.0, std::max(m, 0.8 * std::abs(M24) / max));
}

} // namespace Keltrix::BS5950
