#include "CrossSectionCheck.h"
#include "keltrix/ec3/Critical.h"

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
    bucklesInShear(NeedsShearBuckling(s, m)), bucklesAcross(NeedsShearBucklingAcross(s, m)),
    m_noiseN(NOISE * s.A * m.fy), m_noiseMy(NOISE * s.Wely * m.fy), m_noiseMz(NOISE * s.Welz * m.fy)
{
    if (bucklesInShear) vbw = VbwRd(s, m);
    if (!bucklesAcross) return;
    turned = TurnedSection(s);
    vbwAcross = VbwRd(turned, m);
}

Actions CrossSectionCheck::Significant(const Vec3<double>& force, double My, double Mz) const
{
    const auto beyond = [](double value, double noise) { return std::abs(value) <= noise ? 0.0 : value; };
    Actions a;
    a.N = beyond(force.x, m_noiseN);
    a.My = beyond(My, m_noiseMy);
    a.Mz = beyond(Mz, m_noiseMz);
    if (section.shape == Shape::Angle) {
        const AxisMoments moments = LargestAxisMoments(section, a.My, a.Mz);
        a.My = moments.major;
        a.Mz = moments.minor;
    }
    a.Vz = std::abs(force.z);
    a.Vy = std::abs(force.y);
    return a;
}

void CrossSectionCheck::Evaluate(Position& p) const
{
    const Actions& a = p.actions;
    p.tension = a.N > 0.0 ? Ratio(a.N, nt) : 0.0;
    p.compression = Ratio(a.Compression(), nc);
    p.major = Ratio(std::abs(a.My), mcy);
    p.minor = Ratio(std::abs(a.Mz), mcz);
    // The shear of a tube is that of the resultant.
    const bool tube = section.shape == Shape::CHS;
    const double resultant = tube ? std::hypot(a.Vy, a.Vz) : 0.0;
    p.shearMajor = a.Vz != 0.0 ? Ratio(tube ? resultant : a.Vz, vcz) : 0.0;
    p.shearMinor = a.Vy != 0.0 ? Ratio(tube ? resultant : a.Vy, vcy) : 0.0;
    if (bucklesInShear) {
        p.shearBuckling = Ratio(a.Vz, vbw);
        p.shearMoment = ShearBucklingInteraction(section, strength, {}, std::abs(a.My), a.Vz, -a.N).value_or(0.0);
    }
    if (bucklesAcross) {
        p.shearBucklingAcross = Ratio(a.Vy, vbwAcross);
        p.shearMomentAcross = ShearBucklingInteraction(turned, strength, {}, std::abs(a.Mz), a.Vy, -a.N).value_or(0.0);
    }
    p.rhoZ = ShearReduction(tube ? resultant : a.Vz, *vcz.value);
    p.rhoY = tube ? p.rhoZ : ShearReduction(a.Vy, *vcy.value);
    if (p.rhoZ > 0.0 || p.rhoY > 0.0) {
        p.highMajor = Ratio(std::abs(a.My), MyVRd(section, strength, cls, p.rhoZ, p.rhoY));
        p.highMinor = Ratio(std::abs(a.Mz), MzVRd(section, strength, cls, p.rhoZ, p.rhoY));
    }
    if (!IsCombined(a)) return;
    const Interaction i = Interact(section, strength, cls, a);
    p.combined = i.reason ? 0.0 : i.utilisation;
}

} // namespace Keltrix::EC3
