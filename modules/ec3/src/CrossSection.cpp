// EN 1993-1-1 6.2: resistances of cross-sections.

#include "keltrix/ec3/CrossSection.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Keltrix::EC3 {

namespace {

constexpr double USED_UP = std::numeric_limits<double>::infinity();
constexpr const wchar_t* NO_RULE =
    L"6.2.9.1 has no reduced plastic moment resistance for this shape; the linear sum of 6.2.1(7) is used";
constexpr const wchar_t* NOT_PLASTIC = L"6.2.9.1 is for classes 1 and 2";

Resistance Found(double value, const wchar_t* clause) { return {value, clause, nullptr}; }
Resistance Refused(const wchar_t* clause, const wchar_t* reason) { return {std::nullopt, clause, reason}; }

// A plastic section of which the plates along Vz have lost ρz of their strength, and those along Vy ρy (6.2.8(3), 6.2.10(3)): area and
// plastic moduli that count with fy, and the shares a = aw and af of 6.2.9.1(5).
struct Sheared {
    double A = 0.0;
    double Wy = 0.0;
    double Wz = 0.0;
    double aw = 0.0;
    double af = 0.0;
};

double ShareOf(double area, double whole) { return whole > 0.0 ? std::clamp(area / whole, 0.0, 0.5) : 0.5; }

// Equal flanges. The plastic modulus of the web is Aw²/(4 tw), as in (6.30).
Sheared ShearedI(const Section& s, double rhoZ, double rhoY)
{
    const double web = s.hw * s.tw;
    const double webWy = web * web / (4.0 * s.tw);
    const double webWz = web * s.tw / 4.0;
    Sheared r;
    r.A = (1.0 - rhoZ) * web + (1.0 - rhoY) * (s.A - web);
    r.Wy = (1.0 - rhoZ) * webWy + (1.0 - rhoY) * (s.Wply - webWy);
    r.Wz = (1.0 - rhoZ) * webWz + (1.0 - rhoY) * (s.Wplz - webWz);
    r.aw = r.af = ShareOf(r.A - (1.0 - rhoY) * 2.0 * s.b * s.tf, r.A);
    return r;
}

// Each pair of walls is the shear area for the force along it, Av²/(8 t) its plastic modulus for bending by that force.
Sheared ShearedBox(const Section& s, double rhoZ, double rhoY)
{
    const double web = s.IsWelded() ? 2.0 * s.hw * s.tw : ShearAreaZ(s, 1.0);
    const double flange = s.A - web;
    const double webWy = web * web / (8.0 * s.tw);
    const double flangeWz = flange * flange / (8.0 * s.tf);
    Sheared r;
    r.A = (1.0 - rhoZ) * web + (1.0 - rhoY) * flange;
    r.Wy = (1.0 - rhoZ) * webWy + (1.0 - rhoY) * (s.Wply - webWy);
    r.Wz = (1.0 - rhoY) * flangeWz + (1.0 - rhoZ) * (s.Wplz - flangeWz);
    r.aw = ShareOf(r.A - (1.0 - rhoY) * 2.0 * s.b * s.tf, r.A);
    r.af = ShareOf(r.A - (1.0 - rhoZ) * 2.0 * s.h * s.tw, r.A);
    return r;
}

// Other shapes lose strength over the whole section, which is safe.
Sheared ShearedWhole(const Section& s, double rhoZ, double rhoY)
{
    const double left = 1.0 - std::max(rhoZ, rhoY);
    return {left * s.A, left * s.Wply, left * s.Wplz, 0.0, 0.0};
}

Sheared ShearedOf(const Section& s, double rhoZ, double rhoY)
{
    switch (s.shape) {
    case Shape::I:
        return ShearedI(s, rhoZ, rhoY);
    case Shape::RHS:
        return ShearedBox(s, rhoZ, rhoY);
    default:
        return ShearedWhole(s, rhoZ, rhoY);
    }
}

bool HasPlatesApart(const Section& s) { return s.shape == Shape::I || s.shape == Shape::RHS; }

Resistance Moment(const Section& s, const Strength& m, const Classification& c, bool major)
{
    const double W = major ? c.Wy : c.Wz;
    const wchar_t* refusal = major ? c.effective.refusalY : c.effective.refusalZ;
    const wchar_t* clause = c.IsPlastic() && s.shape != Shape::Angle ? L"6.2.5(2) (6.13)"
                            : c.cls <= 3                             ? L"6.2.5(2) (6.14)"
                                                                     : L"6.2.5(2) (6.15)";
    return refusal ? Refused(clause, refusal) : Found(W * m.fy / m.gammaM0, clause);
}

// 6.2.8. (6.30) is for I sections bent about the major axis; its limit is the resistance without shear, elastic in class 3. Otherwise a section of
// class 3 or 4 loses strength as a whole, because its moduli are elastic.
Resistance MomentWithShear(const Section& s, const Strength& m, const Classification& c, bool major, double rhoZ,
                           double rhoY)
{
    const Resistance without = Moment(s, m, c, major);
    if (!without || (rhoZ == 0.0 && rhoY == 0.0)) return without;
    const bool isWhole = c.cls == 4 || (c.cls == 3 && !(s.shape == Shape::I && major));
    if (!HasPlatesApart(s) || isWhole) return Found((1.0 - std::max(rhoZ, rhoY)) * *without.value, L"6.2.8(3)");
    const Sheared r = ShearedOf(s, rhoZ, rhoY);
    const double reduced = (major ? r.Wy : r.Wz) * m.fy / m.gammaM0;
    return Found(std::min(*without.value, reduced), s.shape == Shape::I && major ? L"6.2.8(5)" : L"6.2.8(3)");
}

// (6.36), (6.39): bending that stresses the flanges evenly. a is the share of the web.
double ReducedByWeb(double n, double a) { return std::min(1.0, (1.0 - n) / (1.0 - 0.5 * a)); }
// (6.37), (6.38).
double ReducedMinorI(double n, double a)
{
    if (n <= a) return 1.0;
    const double over = (n - a) / (1.0 - a);
    return 1.0 - over * over;
}

Resistance ReducedMoment(const Section& s, const Strength& m, const Classification& c, bool major, double NEd,
                         double rhoZ, double rhoY)
{
    constexpr const wchar_t* clause = L"6.2.9.1(5)";
    if (!c.IsPlastic()) return Refused(clause, NOT_PLASTIC);
    if (!s.IsDoublySymmetric()) return Refused(clause, NO_RULE);
    const Sheared r = ShearedOf(s, rhoZ, rhoY);
    const double Npl = r.A * m.fy / m.gammaM0;
    const double n = std::abs(NEd) < Npl ? std::abs(NEd) / Npl : 1.0;
    const double Mpl = (major ? r.Wy : r.Wz) * m.fy / m.gammaM0;
    switch (s.shape) {
    case Shape::CHS:
        return Found(Mpl * (1.0 - std::pow(n, 1.7)), clause);
    case Shape::RHS:
        return Found(Mpl * ReducedByWeb(n, major ? r.aw : r.af), clause);
    default:
        return Found(Mpl * (major ? ReducedByWeb(n, r.aw) : ReducedMinorI(n, r.af)), clause);
    }
}

} // namespace

Resistance NplRd(const Section& s, const Strength& m) { return Found(s.A * m.fy / m.gammaM0, L"6.2.3(2)a"); }

Resistance NuRd(const Strength& m, double Anet) { return Found(0.9 * Anet * m.fu / m.gammaM2, L"6.2.3(2)b"); }

Resistance NtRd(const Section& s, const Strength& m, double Anet)
{
    const Resistance gross = NplRd(s, m);
    const Resistance net = NuRd(m, Anet);
    return *net.value < *gross.value ? net : gross;
}

Resistance NcRd(const Section& s, const Strength& m, const Classification& c)
{
    if (c.cls < 4) return Found(s.A * m.fy / m.gammaM0, L"6.2.4(2) (6.10)");
    if (c.effective.refusalA) return Refused(L"6.2.4(2) (6.11)", c.effective.refusalA);
    return Found(c.effective.Aeff * m.fy / m.gammaM0, L"6.2.4(2) (6.11)");
}

Resistance McyRd(const Section& s, const Strength& m, const Classification& c) { return Moment(s, m, c, true); }
Resistance MczRd(const Section& s, const Strength& m, const Classification& c) { return Moment(s, m, c, false); }

Resistance VczRd(const Section& s, const Strength& m)
{
    return Found(ShearAreaZ(s, m.eta) * m.fy / std::sqrt(3.0) / m.gammaM0, ShearAreaZClause(s));
}

Resistance VcyRd(const Section& s, const Strength& m)
{
    return Found(ShearAreaY(s) * m.fy / std::sqrt(3.0) / m.gammaM0, ShearAreaYClause(s));
}

double ShearReduction(double VEd, double VplRd)
{
    const double ratio = std::abs(VEd) / VplRd;
    if (!(ratio > 0.5)) return 0.0;
    return ratio < 1.0 ? (2.0 * ratio - 1.0) * (2.0 * ratio - 1.0) : 1.0;
}

Resistance MyVRd(const Section& s, const Strength& m, const Classification& c, double rhoZ, double rhoY)
{
    return MomentWithShear(s, m, c, true, rhoZ, rhoY);
}

Resistance MzVRd(const Section& s, const Strength& m, const Classification& c, double rhoZ, double rhoY)
{
    return MomentWithShear(s, m, c, false, rhoZ, rhoY);
}

Resistance MNyRd(const Section& s, const Strength& m, const Classification& c, double NEd, double rhoZ, double rhoY)
{
    return ReducedMoment(s, m, c, true, NEd, rhoZ, rhoY);
}

Resistance MNzRd(const Section& s, const Strength& m, const Classification& c, double NEd, double rhoZ, double rhoY)
{
    return ReducedMoment(s, m, c, false, NEd, rhoZ, rhoY);
}

BiaxialExponents ExponentsOf(const Section& s, double n)
{
    switch (s.shape) {
    case Shape::I:
        return {2.0, std::max(1.0, 5.0 * n)};
    case Shape::CHS:
        return {2.0, 2.0};
    case Shape::RHS: {
        const double rest = 1.0 - 1.13 * n * n;
        const double exponent = rest > 1.66 / 6.0 ? 1.66 / rest : 6.0;
        return {exponent, exponent};
    }
    default:
        return {1.0, 1.0};
    }
}

namespace {

// A share of a resistance; of none at all, infinite where there is an action.
double Share(double action, double resistance)
{
    if (action == 0.0) return 0.0;
    return resistance > 0.0 ? action / resistance : USED_UP;
}

void SetShear(const Section& s, const Strength& m, const Actions& a, Interaction& r)
{
    const double Vz = s.shape == Shape::CHS ? std::hypot(a.Vy, a.Vz) : a.Vz;
    r.rhoZ = ShearReduction(Vz, *VczRd(s, m).value);
    r.rhoY = s.shape == Shape::CHS ? r.rhoZ : ShearReduction(a.Vy, *VcyRd(s, m).value);
    r.highShear = r.rhoZ > 0.0 || r.rhoY > 0.0;
}

// 6.2.9.1(6).
void InteractPlastic(const Section& s, const Strength& m, const Classification& c, const Actions& a, Interaction& r)
{
    r.clause = r.highShear ? L"6.2.10" : L"6.2.9.1(6)";
    r.NRd = ShearedOf(s, r.rhoZ, r.rhoY).A * m.fy / m.gammaM0;
    r.n = Share(std::abs(a.N), r.NRd);
    r.MyRd = *MNyRd(s, m, c, a.N, r.rhoZ, r.rhoY).value;
    r.MzRd = *MNzRd(s, m, c, a.N, r.rhoZ, r.rhoY).value;
    r.exponents = ExponentsOf(s, std::min(r.n, 1.0));
    const double y = Share(r.My, r.MyRd);
    const double z = Share(r.Mz, r.MzRd);
    r.utilisation = std::max({y, z, std::pow(y, r.exponents.alpha) + std::pow(z, r.exponents.beta)});
}

// 6.2.1(7), and 6.2.9.2 and 6.2.9.3 as sums of the largest stresses. The shift eN belongs to compression.
void InteractLinear(const Section& s, const Strength& m, const Classification& c, const Actions& a, Interaction& r)
{
    const bool effective = c.cls == 4;
    r.clause = r.highShear ? L"6.2.10" : effective ? L"6.2.9.3" : c.cls == 3 ? L"6.2.9.2" : L"6.2.1(7)";
    const wchar_t* refusals[] = {c.effective.refusalA, c.effective.refusalY, c.effective.refusalZ};
    for (const wchar_t* refusal : refusals)
        if (refusal) r.reason = refusal;
    if (r.reason) return;
    const double left = 1.0 - std::max(r.rhoZ, r.rhoY);
    r.NRd = (effective ? left * (a.N < 0.0 ? c.A : s.A) : ShearedOf(s, r.rhoZ, r.rhoY).A) * m.fy / m.gammaM0;
    r.MyRd = *MyVRd(s, m, c, r.rhoZ, r.rhoY).value;
    r.MzRd = *MzVRd(s, m, c, r.rhoZ, r.rhoY).value;
    r.My += a.Compression() * c.effective.eNy;
    r.Mz += a.Compression() * c.effective.eNz;
    r.n = Share(std::abs(a.N), r.NRd);
    const double y = Share(r.My, r.MyRd);
    const double z = Share(r.Mz, r.MzRd);
    r.utilisation = r.n + (s.shape == Shape::CHS ? std::hypot(y, z) : y + z); // a tube bends about their resultant
}

} // namespace

Interaction Interact(const Section& s, const Strength& m, const Classification& c, const Actions& a)
{
    Interaction r;
    r.My = std::abs(a.My);
    r.Mz = std::abs(a.Mz);
    SetShear(s, m, a, r);
    if (c.IsPlastic() && s.IsDoublySymmetric())
        InteractPlastic(s, m, c, a, r);
    else
        InteractLinear(s, m, c, a, r);
    return r;
}

} // namespace Keltrix::EC3
