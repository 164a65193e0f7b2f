#include "keltrix/ec3/Buckling.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Keltrix::EC3 {

using Design::Fabrication;
using Design::SectionProperties;
using Design::Shape;

namespace {

constexpr double PI2 = std::numbers::pi * std::numbers::pi;

Curve CurveNamed(wchar_t letter)
{
    switch (letter) {
    case L'a':
        return Curve::A;
    case L'b':
        return Curve::B;
    case L'c':
        return Curve::C;
    default:
        return Curve::D;
    }
}

AxisCurves RolledICurves(const SectionProperties& s, bool isS460)
{
    const double thickest = std::max(s.T, s.T2);
    const bool deep = s.D > 1.2 * std::max(s.B, s.B2);
    const bool above100 = thickest > 0.100 * (1.0 + 1e-12);
    if (!deep && above100) return isS460 ? AxisCurves{Curve::C, Curve::C} : AxisCurves{Curve::D, Curve::D};
    const bool thin = thickest <= 0.040 * (1.0 + 1e-12);
    if (deep && thin) return isS460 ? AxisCurves{Curve::A0, Curve::A0} : AxisCurves{Curve::A, Curve::B};
    AxisCurves curves = isS460 ? AxisCurves{Curve::A, Curve::A} : AxisCurves{Curve::B, Curve::C};
    if (above100)
        curves.assumed = L"those of flanges of 40 to 100 mm, as published tables have them: Table 6.2 has no row for "
                         L"rolled sections with h/b above 1.2 and thicker flanges";
    return curves;
}

AxisCurves HollowCurves(const SectionProperties& s, bool isS460)
{
    if (s.fabrication == Fabrication::Rolled)
        return isS460 ? AxisCurves{Curve::A0, Curve::A0} : AxisCurves{Curve::A, Curve::A};
    if (s.fabrication == Fabrication::Formed || s.shape == Shape::CHS) return {Curve::C, Curve::C};
    // Thick welds cannot be excluded where the walls are that stocky.
    const bool stocky = s.B < 30.0 * s.T || s.D < 30.0 * s.t;
    return stocky ? AxisCurves{Curve::C, Curve::C} : AxisCurves{Curve::B, Curve::B};
}

LateralRule LateralRow(const LateralChoice& choice, double ratio, const Annex& annex)
{
    LateralRule rule;
    rule.clause = L"6.3.2.3";
    rule.lambda0 = choice.lambda0;
    rule.beta = choice.beta;
    rule.isModified = annex.correctionFromC1;
    rule.curve = CurveNamed(ratio <= choice.firstRatio    ? choice.firstCurve
                            : ratio <= choice.secondRatio ? choice.secondCurve
                                                          : choice.lastCurve);
    return rule;
}

bool IsInRange(const LateralChoice& choice, double ratio)
{
    return choice.lastCurve != 0 || ratio <= choice.secondRatio;
}

// Table 6.4.
LateralRule GeneralRule(const SectionProperties& s)
{
    LateralRule rule;
    rule.clause = L"6.3.2.2";
    if (s.shape != Shape::I && s.shape != Shape::UnequalI) return rule;
    const bool stocky = s.D <= 2.0 * std::min(s.B, s.B2);
    if (s.fabrication == Fabrication::Rolled)
        rule.curve = stocky ? Curve::A : Curve::B;
    else
        rule.curve = stocky ? Curve::C : Curve::D;
    return rule;
}

} // namespace

const wchar_t* CurveName(Curve curve)
{
    switch (curve) {
    case Curve::A0:
        return L"a0";
    case Curve::A:
        return L"a";
    case Curve::B:
        return L"b";
    case Curve::C:
        return L"c";
    case Curve::D:
        break;
    }
    return L"d";
}

double ImperfectionFactor(Curve curve)
{
    switch (curve) {
    case Curve::A0:
        return 0.13;
    case Curve::A:
        return 0.21;
    case Curve::B:
        return 0.34;
    case Curve::C:
        return 0.49;
    case Curve::D:
        break;
    }
    return 0.76;
}

Reduction CompressionReduction(double slenderness, double alpha)
{
    Reduction r;
    if (!std::isfinite(slenderness)) return r;
    r.phi = 0.5 * (1.0 + alpha * (slenderness - 0.2) + slenderness * slenderness);
    r.chi = slenderness <= 0.2
                ? 1.0
                : std::min(1.0, 1.0 / (r.phi + std::sqrt(std::max(0.0, r.phi * r.phi - slenderness * slenderness))));
    return r;
}

AxisCurves CompressionCurves(const SectionProperties& section, Grade grade)
{
    const bool isS460 = grade == Grade::S460;
    switch (section.shape) {
    case Shape::I:
    case Shape::UnequalI:
        if (section.fabrication == Fabrication::Rolled) return RolledICurves(section, isS460);
        return std::max(section.T, section.T2) <= 0.040 * (1.0 + 1e-12) ? AxisCurves{Curve::B, Curve::C}
                                                                        : AxisCurves{Curve::C, Curve::D};
    case Shape::RHS:
    case Shape::CHS:
        return HollowCurves(section, isS460);
    case Shape::Angle:
        return {Curve::B, Curve::B};
    case Shape::Channel:
    case Shape::Tee:
        break;
    }
    return {Curve::C, Curve::C};
}

double FlexuralNcr(double E, double I, double L) { return PI2 * E * I / (L * L); }

double TorsionalNcr(const SectionProperties& section, double E, double G, double L)
{
    const double i02 = (section.Ix + section.Iy) / section.A + section.x0 * section.x0 + section.y0 * section.y0;
    return (G * section.J + PI2 * E * section.H / (L * L)) / i02;
}

double TorsionalFlexuralNcr(double Ncr, double NcrT, double y0, double i0)
{
    const double beta = 1.0 - (y0 / i0) * (y0 / i0);
    const double ratio = NcrT / Ncr;
    const double root = std::sqrt((1.0 - ratio) * (1.0 - ratio) + 4.0 * (y0 / i0) * (y0 / i0) * ratio);
    return Ncr / (2.0 * beta) * (1.0 + ratio - root);
}

StrutResistance BuckleStrut(double Ncr, double area, double fy, double gammaM1, Curve curve)
{
    StrutResistance r;
    r.Ncr = Ncr;
    r.curve = curve;
    r.slenderness = std::sqrt(area * fy / Ncr);
    r.reduction = CompressionReduction(r.slenderness, ImperfectionFactor(curve));
    r.NbRd = r.reduction.chi * area * fy / gammaM1;
    return r;
}

std::optional<LateralRule> LateralRuleOf(const SectionProperties& s, const Annex& annex)
{
    const double ratio = s.D / s.B;
    const bool rolled = s.fabrication == Fabrication::Rolled;
    switch (s.shape) {
    case Shape::CHS:
        return std::nullopt;
    case Shape::RHS:
        // 6.3.2.1(2) names square boxes and circular ones: no section buckles laterally that is not stiffer about y-y.
        if (s.D <= s.B && s.Ix <= s.Iy * (1.0 + 1e-9)) return std::nullopt;
        if (rolled && annex.lateralOfHotHollow) return LateralRow(annex.rolled, ratio, annex);
        break;
    case Shape::I: {
        const LateralChoice& choice = rolled ? annex.rolled : annex.welded;
        if (IsInRange(choice, ratio)) return LateralRow(choice, ratio, annex);
        break;
    }
    case Shape::Channel:
        if (rolled && annex.lateralOfChannels) {
            LateralRule rule = LateralRow(annex.rolled, ratio, annex);
            rule.curve = Curve::D;
            return rule;
        }
        break;
    default:
        break;
    }
    return GeneralRule(s);
}

LateralReduction ReduceLateral(const LateralRule& rule, double slenderness, double C1)
{
    LateralReduction r;
    r.slenderness = slenderness;
    if (!std::isfinite(slenderness)) return r;
    const double l2 = slenderness * slenderness;
    r.phi = 0.5 * (1.0 + ImperfectionFactor(rule.curve) * (slenderness - rule.lambda0) + rule.beta * l2);
    const double root = std::sqrt(std::max(0.0, r.phi * r.phi - rule.beta * l2));
    const auto limited = [&](double chi) { return l2 > 0.0 ? std::min({chi, 1.0, 1.0 / l2}) : 1.0; };
    r.chi = slenderness <= rule.lambda0 ? 1.0 : limited(1.0 / (r.phi + root));
    r.chiMod = r.chi;
    if (!rule.isModified) return r;
    // A diagram that is worse than a uniform moment has no benefit.
    r.kc = C1 > 1.0 ? 1.0 / std::sqrt(C1) : 1.0;
    r.f = std::min(1.0, 1.0 - 0.5 * (1.0 - r.kc) * (1.0 - 2.0 * (slenderness - 0.8) * (slenderness - 0.8)));
    r.chiMod = limited(r.chi / r.f);
    return r;
}

double ElasticMoment(const SectionProperties& section, double E, double G, double L, double C1)
{
    const double Ncr = FlexuralNcr(E, section.Iy, L);
    return C1 * std::sqrt(Ncr * (G * section.J + PI2 * E * section.H / (L * L)));
}

namespace {

double LoadedFactor(double ends, double other, double middle, bool uniform)
{
    // Mh is the end moment of larger magnitude, ψ Mh the other one.
    const double psi = ends != 0.0 ? other / ends : 0.0;
    if (std::abs(middle) <= std::abs(ends)) {
        const double alpha = ends != 0.0 ? middle / ends : 1.0;
        if (alpha >= 0.0) return std::max(0.4, 0.2 + 0.8 * alpha);
        const double more = uniform ? 0.1 * (psi < 0.0 ? 1.0 - psi : 1.0) : psi < 0.0 ? -0.2 * psi : 0.0;
        return std::max(0.4, more - 0.8 * alpha);
    }
    const double alpha = ends / middle;
    const double turned = alpha < 0.0 && psi < 0.0 ? 1.0 + 2.0 * psi : 1.0;
    return uniform ? 0.95 + 0.05 * alpha * turned : 0.90 + 0.10 * alpha * turned;
}

} // namespace

double EquivalentMomentFactor(const MomentPattern& p)
{
    const bool leftLarger = std::abs(p.left) >= std::abs(p.right);
    const double ends = leftLarger ? p.left : p.right;
    const double other = leftLarger ? p.right : p.left;
    if (p.linear) return ends == 0.0 ? 1.0 : std::max(0.4, 0.6 + 0.4 * other / ends);
    const bool both = p.uniform == p.point;
    const bool isBetween = std::abs(p.largest) > std::max(std::abs(ends), std::abs(p.middle)) * (1.0 + 1e-9);
    double factor = 0.0;
    for (const bool uniform : {true, false}) {
        if (!both && uniform != p.uniform) continue;
        factor = std::max(factor, LoadedFactor(ends, other, p.middle, uniform));
        if (isBetween) factor = std::max(factor, LoadedFactor(ends, other, p.largest, uniform));
    }
    return factor;
}

InteractionFactors AnnexB(const AnnexBInput& i)
{
    InteractionFactors k;
    if (!i.isPlastic) {
        k.kyy = std::min(i.Cmy * (1.0 + 0.6 * i.lambdaY * i.ny), i.Cmy * (1.0 + 0.6 * i.ny));
        k.kzz = std::min(i.Cmz * (1.0 + 0.6 * i.lambdaZ * i.nz), i.Cmz * (1.0 + 0.6 * i.nz));
        k.kyz = k.kzz;
        k.kzy = i.isHollow
                    ? 0.8 * k.kyy
                    : std::max(1.0 - 0.05 * i.lambdaZ * i.nz / (i.CmLT - 0.25), 1.0 - 0.05 * i.nz / (i.CmLT - 0.25));
        return k;
    }
    k.kyy = std::min(i.Cmy * (1.0 + (i.lambdaY - 0.2) * i.ny), i.Cmy * (1.0 + 0.8 * i.ny));
    k.kzz = i.isHollow ? std::min(i.Cmz * (1.0 + (i.lambdaZ - 0.2) * i.nz), i.Cmz * (1.0 + 0.8 * i.nz))
                       : std::min(i.Cmz * (1.0 + (2.0 * i.lambdaZ - 0.6) * i.nz), i.Cmz * (1.0 + 1.4 * i.nz));
    k.kyz = 0.6 * k.kzz;
    if (i.isHollow) {
        k.kzy = 0.6 * k.kyy;
        return k;
    }
    const double byLength = 1.0 - 0.1 * i.lambdaZ * i.nz / (i.CmLT - 0.25);
    k.kzy =
        i.lambdaZ < 0.4 ? std::min(0.6 + i.lambdaZ, byLength) : std::max(byLength, 1.0 - 0.1 * i.nz / (i.CmLT - 0.25));
    return k;
}

} // namespace Keltrix::EC3
