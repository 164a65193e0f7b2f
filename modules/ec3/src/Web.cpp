// EN 1993-1-5 5 (shear buckling) and 6 (concentrated forces on unstiffened webs).

#include "keltrix/ec3/Web.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "keltrix/ec3/Effective.h"

namespace Keltrix::EC3 {

namespace {

constexpr const wchar_t* NO_WEB = L"EN 1993-1-5 5 is for webs between two flanges";
constexpr const wchar_t* NO_WEB_FORCE = L"EN 1993-1-5 6 is applied to webs of I and H sections alone";
constexpr const wchar_t* NO_PANEL = L"the contribution of the flanges needs the distance of transverse stiffeners";

bool HasPanels(const Section& s) { return s.HasTwoFlanges() || s.shape == Shape::RHS; }

// kτ of a panel between transverse stiffeners, Annex A.3(1).
double ShearBucklingCoefficient(const Section& s, const WebPanel& panel)
{
    const double ratio = s.hw / panel.a;
    return ratio <= 1.0 ? 5.34 + 4.0 * ratio * ratio : 4.0 + 5.34 * ratio * ratio;
}

// Width of a flange that counts, at most 15 ε tf on each side of a web; of half a box.
double FlangeWidth(const Section& s, const Strength& m, bool first)
{
    const double b = first ? s.b : s.b2;
    const double each = 15.0 * m.epsilon * (first ? s.tf : s.tf2);
    if (s.shape == Shape::RHS) return std::min(b, 2.0 * (each + s.tw));
    if (s.shape == Shape::Channel) return std::min(b, each + s.tw);
    return std::min(b, 2.0 * each + s.tw);
}

// Area that a flange of class 4 loses where it is compressed.
double LostArea(const Section& s, const Strength& m, PlatePlace place)
{
    const Plate& flange = *s.Find(place);
    return (1.0 - UniformReduction(flange, m)) * flange.c * flange.t * flange.count;
}

// Area of a flange that counts beside a fully effective web.
double FlangeArea(const Section& s, const Strength& m, bool first)
{
    const double gross = first ? s.b * s.tf : s.b2 * s.tf2;
    const double left = gross - LostArea(s, m, first ? PlatePlace::Flange1 : PlatePlace::Flange2);
    return std::min(left, FlangeWidth(s, m, first) * (first ? s.tf : s.tf2));
}

bool FirstFlangeIsWeaker(const Section& s, const Strength& m)
{
    return FlangeWidth(s, m, true) * s.tf <= FlangeWidth(s, m, false) * s.tf2;
}

} // namespace

bool NeedsShearBuckling(const Section& s, const Strength& m, const WebPanel& panel)
{
    if (!HasPanels(s)) return false;
    const double limit = panel.a > 0.0 ? 31.0 * std::sqrt(ShearBucklingCoefficient(s, panel)) : 72.0;
    return s.hw / s.tw > limit * m.epsilon / m.eta;
}

bool NeedsShearBucklingAcross(const Section& s, const Strength& m)
{
    return s.shape == Shape::RHS && NeedsShearBuckling(TurnedSection(s), m);
}

Section TurnedSection(const Section& s)
{
    Section t = s;
    if (s.shape != Shape::RHS) return t;
    std::swap(t.h, t.b);
    std::swap(t.tw, t.tf);
    t.b2 = t.b;
    t.tf2 = t.tf;
    t.hw = t.h - 2.0 * t.tf;
    std::swap(t.Iy, t.Iz);
    std::swap(t.Wply, t.Wplz);
    std::swap(t.Wely, t.Welz);
    std::swap(t.iy, t.iz);
    for (Plate& plate : t.plates) {
        const bool isWeb = plate.place == PlatePlace::Web;
        const Plate& other = *s.Find(isWeb ? PlatePlace::Flange1 : PlatePlace::Web);
        plate.c = other.c;
        plate.t = other.t;
    }
    return t;
}

double WebSlenderness(const Section& s, const Strength& m, const WebPanel& panel)
{
    if (!(panel.a > 0.0)) return s.hw / (86.4 * s.tw * m.epsilon);
    return s.hw / (37.4 * s.tw * m.epsilon * std::sqrt(ShearBucklingCoefficient(s, panel)));
}

double WebShearFactor(double slenderness, double eta, bool rigidEndPost)
{
    if (slenderness < 0.83 / eta) return eta;
    if (slenderness < 1.08 || !rigidEndPost) return 0.83 / slenderness;
    return 1.37 / (0.7 + slenderness);
}

Resistance VbwRd(const Section& s, const Strength& m, const WebPanel& panel)
{
    constexpr const wchar_t* clause = L"EN 1993-1-5 5.2(1)";
    if (!HasPanels(s)) return {std::nullopt, clause, NO_WEB};
    const double chi = WebShearFactor(WebSlenderness(s, m, panel), m.eta, panel.rigidEndPost);
    return {chi * m.fy * s.webs * s.hw * s.tw / (std::sqrt(3.0) * m.gammaM1), clause, nullptr};
}

Resistance MfRd(const Section& s, const Strength& m, double NEd)
{
    constexpr const wchar_t* clause = L"EN 1993-1-5 5.4";
    if (!HasPanels(s)) return {std::nullopt, clause, NO_WEB};
    const double first = FlangeArea(s, m, true);
    const double second = FlangeArea(s, m, false);
    const double lever = s.h - 0.5 * (s.tf + s.tf2);
    const double axial = std::abs(NEd) / ((first + second) * m.fy / m.gammaM0);
    return {std::max(0.0, 1.0 - axial) * std::min(first, second) * lever * m.fy / m.gammaM0, clause, nullptr};
}

Resistance VbRd(const Section& s, const Strength& m, const WebPanel& panel, double MEd, double NEd)
{
    constexpr const wchar_t* clause = L"EN 1993-1-5 5.2(1), 5.4";
    if (!HasPanels(s)) return {std::nullopt, clause, NO_WEB};
    if (!(panel.a > 0.0)) return {std::nullopt, clause, NO_PANEL};
    const bool first = FirstFlangeIsWeaker(s, m);
    const double bf = FlangeWidth(s, m, first);
    const double tf = first ? s.tf : s.tf2;
    const double web = s.webs * s.tw;
    const double Mf = *MfRd(s, m, NEd).value;
    const double ratio = Mf > 0.0 ? std::min(1.0, std::abs(MEd) / Mf) : 1.0;
    const double c = panel.a * (0.25 + 1.6 * bf * tf * tf / (web * s.hw * s.hw));
    const double flanges = bf * tf * tf * m.fy / (c * m.gammaM1) * (1.0 - ratio * ratio);
    const double most = m.eta * m.fy * s.hw * web / (std::sqrt(3.0) * m.gammaM1);
    return {std::min(*VbwRd(s, m, panel).value + flanges, most), clause, nullptr};
}

namespace {

// Plastic modulus of the webs between flanges of given areas, each of its own thickness.
double PlasticModulus(const Section& s, double first, double second)
{
    const double t = s.webs * s.tw;
    if (std::abs(first - second) > t * s.hw) { // the plastic neutral axis lies in the larger flange
        const auto [larger, thickness] = first > second ? std::pair(first, s.tf) : std::pair(second, s.tf2);
        const auto [smaller, other] = first > second ? std::pair(second, s.tf2) : std::pair(first, s.tf);
        const double inner =
            0.5 * (larger - smaller - t * s.hw) / larger * thickness; // of the larger flange, beside the web
        const double outer = thickness - inner;
        return 0.5 * larger / thickness * (inner * inner + outer * outer) + t * s.hw * (0.5 * s.hw + inner) +
               smaller * (s.hw + inner + 0.5 * other);
    }
    const double below = 0.5 * (first - second + t * s.hw) / t; // of the plastic neutral axis
    const double above = s.hw - below;
    return first * (above + 0.5 * s.tf) + second * (below + 0.5 * s.tf2) + 0.5 * t * (below * below + above * above);
}

// Mpl,Rd of EN 1993-1-5 7.1(1), of the effective area of the flanges and the whole web, whatever its class, with an axial force: by 6.2.9.1(5) for
// equal flanges, else in proportion. The flange counts as compressed with which it is the smaller one; beside an axial force both.
double PlasticMoment(const Section& s, const Strength& m, double NEd)
{
    const double lost = LostArea(s, m, PlatePlace::Flange1);
    const double lost2 = LostArea(s, m, PlatePlace::Flange2);
    const double first = s.b * s.tf;
    const double second = s.b2 * s.tf2;
    const double left =
        NEd != 0.0 ? PlasticModulus(s, first - lost, second - lost2)
                   : std::min(PlasticModulus(s, first - lost, second), PlasticModulus(s, first, second - lost2));
    const double A = s.A - lost - lost2;
    const double n = std::min(1.0, std::abs(NEd) / (A * m.fy / m.gammaM0));
    const double Mpl = (s.Wply - (PlasticModulus(s, first, second) - left)) * m.fy / m.gammaM0;
    if (s.shape != Shape::I) return (1.0 - n) * Mpl;
    const double a = std::min(0.5, (A - 2.0 * (first - lost)) / A);
    return std::min(1.0, (1.0 - n) / (1.0 - 0.5 * a)) * Mpl;
}

} // namespace

std::optional<ShearBending> BendWithShearBuckling(const Section& s, const Strength& m, const WebPanel& panel,
                                                  double MEd, double VEd, double NEd)
{
    const Resistance web = VbwRd(s, m, panel);
    if (!web) return std::nullopt;
    ShearBending r;
    r.eta3 = std::abs(VEd) / *web.value;
    r.MplRd = PlasticMoment(s, m, NEd);
    // 7.1(4), (5): where compression takes the whole web, the flanges alone bear no moment.
    const bool webIsCompressed = NEd > s.webs * s.hw * s.tw * m.fy / m.gammaM0;
    r.MfRd = webIsCompressed ? 0.0 : std::min(*MfRd(s, m, NEd).value, r.MplRd);
    if (r.eta3 <= 0.5 || std::abs(MEd) < r.MfRd || MEd == 0.0) return r;
    if (!(r.MplRd > 0.0)) {
        r.utilisation = std::numeric_limits<double>::infinity();
        return r;
    }
    const double over = 2.0 * std::min(r.eta3, 1.0) - 1.0;
    r.utilisation = std::abs(MEd) / r.MplRd + (1.0 - r.MfRd / r.MplRd) * over * over;
    return r;
}

std::optional<double> ShearBucklingInteraction(const Section& s, const Strength& m, const WebPanel& panel, double MEd,
                                               double VEd, double NEd)
{
    const std::optional<ShearBending> r = BendWithShearBuckling(s, m, panel, MEd, VEd, NEd);
    if (!r) return std::nullopt;
    return r->utilisation;
}

namespace {

// One web with the flange that is pressed.
struct Loaded {
    double bf, tf, tw, hw;
    double ss;
};

double CriticalForce(const Loaded& w, const Strength& m, double kF)
{
    return 0.9 * kF * m.E * w.tw * w.tw * w.tw / w.hw;
}

// (6.10) to (6.12): effective loaded length.
double LoadedLength(const Loaded& w, const Strength& m, const WebForce& force, double kF, double m2)
{
    const double m1 = w.bf / w.tw;
    if (!force.atEnd) return w.ss + 2.0 * w.tf * (1.0 + std::sqrt(m1 + m2));
    const double le = std::min(kF * m.E * w.tw * w.tw / (2.0 * m.fy * w.hw), w.ss + force.c);
    const double ratio = le / w.tf;
    return std::min({w.ss + 2.0 * w.tf * (1.0 + std::sqrt(m1 + m2)),
                     le + w.tf * std::sqrt(0.5 * m1 + ratio * ratio + m2), le + w.tf * std::sqrt(m1 + m2)});
}

} // namespace

std::optional<WebForceResistance> ResistWebForce(const Section& s, const Strength& m, const WebForce& force)
{
    if (s.shape != Shape::I && s.shape != Shape::UnequalI) return std::nullopt;
    const bool first = force.onFlange1;
    const Loaded w{first ? s.b : s.b2, first ? s.tf : s.tf2, s.tw, s.hw,
                   force.limitToDepth ? std::min(force.ss, s.hw) : force.ss};
    WebForceResistance r;
    r.ss = w.ss;
    r.kF = force.atEnd ? std::min(6.0, 2.0 + 6.0 * (w.ss + force.c) / w.hw) : 6.0;
    r.Fcr = CriticalForce(w, m, r.kF);
    r.m1 = w.bf / w.tw;
    const auto slenderness = [&](double ly) { return std::sqrt(ly * w.tw * m.fy / r.Fcr); };
    // m2 counts where λ̄F with it is above 0.5.
    r.m2 = 0.02 * (w.hw / w.tf) * (w.hw / w.tf);
    r.ly = LoadedLength(w, m, force, r.kF, r.m2);
    if (slenderness(r.ly) <= 0.5) {
        r.m2 = 0.0;
        r.ly = LoadedLength(w, m, force, r.kF, r.m2);
    }
    r.slenderness = slenderness(r.ly);
    r.chi = std::min(1.0, 0.5 / r.slenderness);
    r.FRd = r.chi * r.ly * w.tw * m.fy / m.gammaM1;
    return r;
}

Resistance FRd(const Section& s, const Strength& m, const WebForce& force)
{
    constexpr const wchar_t* clause = L"EN 1993-1-5 6.2";
    const std::optional<WebForceResistance> r = ResistWebForce(s, m, force);
    if (!r) return {std::nullopt, clause, NO_WEB_FORCE};
    return {r->FRd, clause, nullptr};
}

double LongestLoadedLength(const Section& s, const WebForce& force)
{
    const double b = force.onFlange1 ? s.b : s.b2;
    const double t = force.onFlange1 ? s.tf : s.tf2;
    if (!s.HasTwoFlanges()) return force.ss;
    return force.ss + 2.0 * t * (1.0 + std::sqrt(b / s.tw + 0.02 * (s.hw / t) * (s.hw / t)));
}

} // namespace Keltrix::EC3
