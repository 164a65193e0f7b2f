#include "keltrix/ec3/Critical.h"

#include <cmath>
#include <numbers>

#include "keltrix/ec3/Buckling.h"

namespace Keltrix::EC3 {

namespace {

// Share of the polar radius up to which an offset is rounding.
constexpr double ROUNDING = 1e-6;

} // namespace

ShearCentre ShearCentreOf(const Section& s)
{
    ShearCentre centre{s.y0, s.z0};
    if (s.shape == Shape::Angle) {
        const double c = std::cos(s.basis.alpha);
        const double n = std::sin(s.basis.alpha);
        centre = {s.y0 * c + s.z0 * n, s.z0 * c - s.y0 * n};
    }
    if (std::abs(centre.alongMajor) <= ROUNDING * s.i0) centre.alongMajor = 0.0;
    if (std::abs(centre.alongMinor) <= ROUNDING * s.i0) centre.alongMinor = 0.0;
    return centre;
}

double CoupledNcr(const Section& s, const ModeForces& forces)
{
    const ShearCentre centre = ShearCentreOf(s);
    return Stability::CoupledForce(centre.alongMajor / s.i0, centre.alongMinor / s.i0, forces);
}

double UniformMcr(const Section& s, double E, double G, double L, bool compressesTop)
{
    constexpr double PI_SQUARED = std::numbers::pi * std::numbers::pi;
    const double Pz = FlexuralNcr(E, MinorSecondMoment(s), L);
    const double torsion = G * s.It + PI_SQUARED * E * s.Iw / (L * L);
    double beta = s.basis.monosymmetry;
    if (s.shape == Shape::Angle)
        beta = -std::abs(beta);
    else if (!compressesTop)
        beta = -beta;
    const double half = 0.5 * Pz * beta;
    const double root = std::sqrt(half * half + Pz * torsion);
    return half > 0.0 ? half + root : Pz * torsion / (root - half);
}

AxisMoments LargestAxisMoments(const Section& s, double My, double Mz)
{
    if (s.shape != Shape::Angle) return {std::abs(My), std::abs(Mz)};
    const double c = std::abs(std::cos(s.basis.alpha));
    const double n = std::abs(std::sin(s.basis.alpha));
    return {c * std::abs(My) + n * std::abs(Mz), n * std::abs(My) + c * std::abs(Mz)};
}

} // namespace Keltrix::EC3
