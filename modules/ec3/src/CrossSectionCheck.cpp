#include "CrossSectionCheck.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Keltrix::EC3 {

namespace {

// Share of a resistance up to which an action is noise of an analysis.
constexpr double NOISE = 1e-6;

double Ratio(double effect, const Resistance& resistance)
{
    if (effect == 0.0 || !resistance) return 0.0;
    const double value = *resistance.value;
    return value > 0.0 ? effect / value : std::numeric_limits<double>::infinity();
}

} // namespace

CrossSectionCheck::CrossSectionCheck(const Section& s, const Strength& m, const Classification& c, double net) :
    section(s), strength(m), cls(c), netGross(net), npl(NplRd(s, m)), nt(net < 1.0 ? NtRd(s, m, net * s.A) : npl),
    nc(NcRd(s, m, c)), mcy(McyRd(s, m, c)), mcz(MczRd(s, m, c)), vcz(VczRd(s, m)), vcy(VcyRd(s, m)),
    bucklesInShear(NeedsShearBuckling(s, m)), m_noiseN(NOISE * s.A * m.fy), m_noiseMy(NOISE * s.Wely * m.fy),
    m_noiseMz(NOISE * s.Welz * m.fy)
{
    if (!bucklesInShear) return;
    vbw = VbwRd(s, m);
    mf = MfRd(s, m);
}

Actions CrossSectionCheck::Significant(const Vec3<double>& force, double My, double Mz) const
{
    const auto beyond = [](double value, double noise) { return std::abs(value) <= noise ? 0.0 : value; };
    Actions a;
    a.N = beyond(force.x, m_noiseN);
    a.My = beyond(My, m_noiseMy);
    a.Mz = beyond(Mz, m_noiseMz);
    a.Vz = std::abs(force.z);
    a.Vy = std::abs(force.y);
    return a;
}

// EN 1993-1-5 (7.1): where the shear is above half of the web's resistance and the moment above that of the flanges.
double CrossSectionCheck::ShearMoment(const Actions& a) const
{
    if (!bucklesInShear || !vbw || !mf || a.My == 0.0) return 0.0;
    const double eta3 = Ratio(a.Vz, vbw);
    if (eta3 <= 0.5) return 0.0;
    const double Mpl = section.Wply * strength.fy / strength.gammaM0;
    const double flanges = (section.b * section.tf + section.b2 * section.tf2) * strength.fy / strength.gammaM0;
    const double Mf = *mf.value * std::max(0.0, 1.0 - std::abs(a.N) / flanges);
    const double eta1 = std::abs(a.My) / Mpl;
    if (eta1 <= Mf / Mpl) return 0.0;
    return eta1 + (1.0 - Mf / Mpl) * (2.0 * eta3 - 1.0) * (2.0 * eta3 - 1.0);
}

void CrossSectionCheck::Evaluate(Position& p) const
{
    const Actions& a = p.actions;
    p.tension = a.N > 0.0 ? Ratio(a.N, nt) : 0.0;
    p.compression = Ratio(a.Compression(), nc);
    p.major = Ratio(std::abs(a.My), mcy);
    p.minor = Ratio(std::abs(a.Mz), mcz);
    p.shearMajor = Ratio(a.Vz, vcz);
    p.shearMinor = Ratio(a.Vy, vcy);
    p.shearBuckling = bucklesInShear ? Ratio(a.Vz, vbw) : 0.0;
    p.shearMoment = ShearMoment(a);
    if (a.Vz > HalfVz() && a.My != 0.0)
        p.highMajor = Ratio(std::abs(a.My), MyVRd(section, strength, cls, ShearReduction(a.Vz, *vcz.value)));
    if (a.Vy > HalfVy() && a.Mz != 0.0)
        p.highMinor = Ratio(std::abs(a.Mz), MzVRd(section, strength, cls, ShearReduction(a.Vy, *vcy.value)));
    if (!IsCombined(a)) return;
    const Interaction i = Interact(section, strength, cls, a);
    p.combined = i.reason ? 0.0 : i.utilisation;
}

} // namespace Keltrix::EC3
