#include "keltrix/bs5950/Classification.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "Numbers.h"

namespace Keltrix::BS5950 {

namespace {

constexpr const wchar_t* TABLE_11 = L"Table 11";
constexpr const wchar_t* TABLE_12 = L"Table 12";

// Elastic compressive stresses (compression positive) at the places where elements are judged.
struct Stresses {
    double axial = 0.0;
    double top = 0.0;        ///< axial and major-axis bending at the outer face of flange 1
    double bottom = 0.0;     ///< the same at flange 2
    double sideTop = 0.0;    ///< largest from minor-axis bending at flange 1
    double sideBottom = 0.0; ///< the same at flange 2
    double zero = 0.0;       ///< below this nothing counts as compressed

    bool TopFlange() const { return top + sideTop > zero; }
    bool BottomFlange() const { return bottom + sideBottom > zero; }
    bool Web() const { return std::max(top, bottom) > zero; }
    bool Anywhere() const { return TopFlange() || BottomFlange(); }
};

Stresses ElasticStresses(const SectionProperties& s, const Material& m, const Actions& a)
{
    Stresses f;
    f.axial = -a.F / s.A;
    if (s.shape == Shape::Angle) {
        // About the principal axes, the stresses of both added at one point and the angle turned the worse way.
        const double c = std::abs(std::cos(s.alpha));
        const double n = std::abs(std::sin(s.alpha));
        f.sideTop = f.sideBottom =
            (c * std::abs(a.Mx) + n * std::abs(a.My)) / s.Zu + (n * std::abs(a.Mx) + c * std::abs(a.My)) / s.Zv;
        f.top = f.bottom = f.axial;
        f.zero = 1e-9 * m.py;
        return f;
    }
    if (s.shape == Shape::CHS) { // both moments have one resultant
        f.sideTop = f.sideBottom = std::hypot(a.Mx, a.My) / s.Zx;
        f.top = f.bottom = f.axial;
        f.zero = 1e-9 * m.py;
        return f;
    }
    f.top = f.axial - a.Mx * (s.D - s.cy) / s.Ix;
    f.bottom = f.axial + a.Mx * s.cy / s.Ix;
    f.sideTop = f.sideBottom = std::abs(a.My) / s.Zy;
    if (s.shape == Shape::UnequalI) { // each at the tips of its own flange
        f.sideTop = std::abs(a.My) * 0.5 * s.B / s.Iy;
        f.sideBottom = std::abs(a.My) * 0.5 * s.B2 / s.Iy;
    }
    f.zero = 1e-9 * m.py;
    return f;
}

// Collects the elements of a section.
class Elements {
public:
    explicit Elements(Classification& c) : m_c(c) {}

    void Add(const ElementClass& e)
    {
        ElementClass& stored = m_c.elements[static_cast<std::size_t>(m_c.count++)];
        stored = e;
        stored.cls = 1;
        // By the last limit that is exceeded: under tension the limit of class 3 can lie below that of class 2, and what does not
        // meet the former is slender.
        if (e.compressed)
            for (int i = 0; i < 3; ++i)
                if (!(e.ratio <= e.limit[static_cast<std::size_t>(i)] * (1.0 + 1e-9))) stored.cls = i + 2;
        m_c.cls = std::max(m_c.cls, stored.cls);
        if (stored.cls == 4) (e.isWeb ? m_c.webSlender : m_c.flangeSlender) = true;
    }

private:
    Classification& m_c;
};

ElementClass Element(const wchar_t* name, const wchar_t* ratioName, const wchar_t* source, double ratio, double l1,
                     double l2, double l3)
{
    ElementClass e;
    e.element = name;
    e.ratioName = ratioName;
    e.source = source;
    e.ratio = ratio;
    e.limit = {l1, l2, l3};
    return e;
}

// Tables 11 and 12, "web, generally": k1ε/(1 + a r1), k2ε/(1 + b r1) and k3ε/(1 + 2 r2), each at least floorε. The
// row for axial compression alone is its limit for r1 = 1, so that a class does not jump where a moment vanishes.
ElementClass Web(const wchar_t* source, double ratio, double e, double r1, double r2, std::array<double, 3> k,
                 std::array<double, 2> r1Coefficients, double floorLimit)
{
    const auto limit = [&](double numerator, double denominator) {
        return denominator > 0.0 ? std::max(numerator * e / denominator, floorLimit * e) : INF;
    };
    ElementClass web = Element(L"web", L"d/t", source, ratio, limit(k[0], 1.0 + r1Coefficients[0] * r1),
                               limit(k[1], 1.0 + r1Coefficients[1] * r1), limit(k[2], 1.0 + 2.0 * r2));
    web.isWeb = true;
    return web;
}

// Clause 3.5.5: r1 lies above -1 and is at most 1.
double LimitR1(double r1) { return std::clamp(r1, -1.0 + 1e-12, 1.0); }

// Table 11, outstand element of a compression flange.
ElementClass Outstand(const SectionProperties& s, double width, double thickness, double e)
{
    if (s.IsWelded()) return Element(L"flange outstand", L"b/T", TABLE_11, width / thickness, 8 * e, 9 * e, 13 * e);
    return Element(L"flange outstand", L"b/T", TABLE_11, width / thickness, 9 * e, 10 * e, 15 * e);
}

// Clause 3.5.5 for sections with unequal flanges. The bending stresses are scaled until the web's compressed edge is at
// py, because r2 describes the web at the moment capacity. Without a major-axis moment either flange may be the one that a moment
// beside the place compresses: the less favourable r1 counts.
void UnequalFlangeRatios(const SectionProperties& s, const Material& m, const Actions& a, Classification& c)
{
    const double web = s.d * s.t * m.py;
    if (a.Mx == 0.0) {
        c.r1 = LimitR1((-a.F + std::abs(s.B * s.T - s.B2 * s.T2) * m.py) / web);
        c.r2 = -a.F / (s.A * m.py);
        return;
    }
    const bool topCompressed = a.Mx < 0.0;
    const double tension = topCompressed ? s.B2 * s.T2 : s.B * s.T;
    const double compression = topCompressed ? s.B * s.T : s.B2 * s.T2;
    c.r1 = LimitR1((-a.F + (tension - compression) * m.py) / web);
    const double fillet = 0.5 * (s.D - s.T - s.T2 - s.d);
    const double toCompressed = topCompressed ? s.D - s.T - fillet - s.cy : s.cy - s.T2 - fillet;
    const double toTension = s.d - toCompressed;
    const double axial = -a.F / s.A;
    const double bending = m.py - axial;
    if (toCompressed > 0.0) c.r2 = (m.py + axial - bending * toTension / toCompressed) / (2.0 * m.py);
}

void ClassifyI(const SectionProperties& s, const Material& m, const Actions& a, const Stresses& f, Classification& c)
{
    Elements elements(c);
    const double e = c.epsilon;
    if (s.shape == Shape::I) {
        c.r1 = LimitR1(-a.F / (s.d * s.t * m.py));
        c.r2 = -a.F / (s.A * m.py);
        ElementClass flange = Outstand(s, s.b, s.T, e);
        flange.compressed = f.TopFlange() || f.BottomFlange();
        elements.Add(flange);
    } else {
        UnequalFlangeRatios(s, m, a, c);
        ElementClass top = Outstand(s, s.b, s.T, e);
        top.element = L"flange 1 outstand";
        top.compressed = f.TopFlange();
        elements.Add(top);
        ElementClass bottom = Outstand(s, s.b2, s.T2, e);
        bottom.element = L"flange 2 outstand";
        bottom.compressed = f.BottomFlange();
        elements.Add(bottom);
    }
    ElementClass web = Web(TABLE_11, s.d / s.t, e, c.r1, c.r2, {80, 100, 120}, {1.0, c.r1 < 0.0 ? 1.0 : 1.5}, 40);
    web.compressed = f.Web();
    elements.Add(web);
}

void ClassifyChannel(const SectionProperties& s, const Stresses& f, Classification& c)
{
    Elements elements(c);
    const double e = c.epsilon;
    ElementClass flange = Outstand(s, s.b, s.T, e);
    flange.compressed = f.Anywhere();
    elements.Add(flange);
    ElementClass web = Element(L"web", L"d/t", TABLE_11, s.d / s.t, 40 * e, 40 * e, 40 * e);
    web.isWeb = true;
    web.compressed = f.Anywhere();
    elements.Add(web);
}

void ClassifyTee(const SectionProperties& s, const Stresses& f, Classification& c)
{
    Elements elements(c);
    const double e = c.epsilon;
    ElementClass flange = Outstand(s, s.b, s.T, e);
    flange.compressed = f.TopFlange();
    elements.Add(flange);
    // The row for stems is that of rolled T sections and of those cut from rolled ones; a welded stem is an outstand.
    const double semiCompact = s.IsWelded() ? 13 * e : 18 * e;
    ElementClass stem = Element(L"stem", L"D/t", TABLE_11, s.D / s.t, 8 * e, 9 * e, semiCompact);
    stem.isWeb = true;
    stem.compressed = f.bottom > f.zero;
    elements.Add(stem);
}

// Bending of an angle: both legs are taken as compressed, because the stress is that about its principal axes.
void ClassifyAngle(const SectionProperties& s, const Actions& a, Classification& c)
{
    Elements elements(c);
    const double e = c.epsilon;
    if (a.Mx != 0.0 || a.My != 0.0) {
        elements.Add(Element(L"leg b", L"b/t", TABLE_11, s.b / s.t, 9 * e, 10 * e, 15 * e));
        elements.Add(Element(L"leg d", L"d/t", TABLE_11, s.d / s.t, 9 * e, 10 * e, 15 * e));
    }
    if (a.F < 0.0) {
        if (c.count == 0) {
            elements.Add(Element(L"leg b", L"b/t", TABLE_11, s.b / s.t, 0, 0, 15 * e));
            elements.Add(Element(L"leg d", L"d/t", TABLE_11, s.d / s.t, 0, 0, 15 * e));
        }
        elements.Add(Element(L"both legs", L"(b+d)/t", TABLE_11, (s.b + s.d) / s.t, 0, 0, 24 * e));
    }
}

struct HollowLimits {
    const wchar_t* source;
    std::array<double, 3> flange;
    std::array<double, 2> less; ///< class 1: less[0]ε - d/t, class 2: less[1]ε - 0.5 d/t
    std::array<double, 3> web;
    std::array<double, 2> r1Coefficients;
    double webFloor;
};

HollowLimits LimitsOf(const SectionProperties& s, double r1)
{
    switch (s.fabrication) {
    case Fabrication::Rolled:
        return {TABLE_12, {28, 32, 40}, {80, 62}, {64, 80, 120}, {0.6, 1.0}, 40};
    case Fabrication::Formed:
        return {TABLE_12, {26, 28, 35}, {72, 54}, {56, 70, 105}, {0.6, 1.0}, 35};
    default:
        return {TABLE_11, {28, 32, 40}, {INF, INF}, {80, 100, 120}, {1.0, r1 < 0.0 ? 1.0 : 1.5}, 40};
    }
}

// The walls of a rectangular hollow section for bending about one axis: `flange` and `web` are width to thickness.
void AddWalls(const SectionProperties& s, const Material& m, const Actions& a, bool aboutY, bool bent,
              Classification& c)
{
    const double e = c.epsilon;
    const double flange = aboutY ? s.d / s.t : s.b / s.T;
    const double web = aboutY ? s.b / s.T : s.d / s.t;
    const double webArea = 2.0 * (aboutY ? s.b * s.T : s.d * s.t);
    const double r1 = LimitR1(-a.F / (webArea * m.py));
    const HollowLimits k = LimitsOf(s, r1);
    ElementClass wall = Element(aboutY ? L"flange (D side)" : L"flange (B side)", aboutY ? L"d/t" : L"b/t", k.source,
                                flange, k.flange[0] * e, k.flange[1] * e, k.flange[2] * e);
    if (bent) {
        wall.limit[0] = std::min(wall.limit[0], k.less[0] * e - web);
        wall.limit[1] = std::min(wall.limit[1], k.less[1] * e - 0.5 * web);
    }
    wall.aboutY = aboutY;
    Elements(c).Add(wall);
    ElementClass side = Web(k.source, web, e, r1, c.r2, k.web, k.r1Coefficients, k.webFloor);
    side.element = aboutY ? L"web (B side)" : L"web (D side)";
    side.ratioName = aboutY ? L"b/t" : L"d/t";
    side.aboutY = aboutY;
    Elements(c).Add(side);
    if (!aboutY) c.r1 = r1;
}

void ClassifyRHS(const SectionProperties& s, const Material& m, const Actions& a, Classification& c)
{
    c.r2 = -a.F / (s.A * m.py);
    const bool bentX = a.Mx != 0.0;
    const bool bentY = a.My != 0.0;
    if (bentX || !bentY) AddWalls(s, m, a, false, bentX, c);
    if (bentY) AddWalls(s, m, a, true, true, c);
}

void ClassifyCHS(const SectionProperties& s, const Actions& a, Classification& c)
{
    Elements elements(c);
    const double e2 = c.epsilon * c.epsilon;
    c.r2 = -a.F;
    if (a.Mx != 0.0 || a.My != 0.0)
        elements.Add(Element(L"wall, bending", L"D/t", TABLE_12, s.D / s.t, 40 * e2, 50 * e2, 140 * e2));
    if (a.F < 0.0) {
        const double low1 = c.count > 0 ? 80 : 40;
        const double low2 = c.count > 0 ? 80 : 50;
        elements.Add(Element(L"wall, compression", L"D/t", TABLE_12, s.D / s.t, low1 * e2, low2 * e2, 80 * e2));
    }
    c.r2 = 0.0;
}

void ClassifyElements(const SectionProperties& s, const Material& m, const Actions& a, Classification& c)
{
    c.epsilon = Epsilon(m.py);
    const Stresses f = ElasticStresses(s, m, a);
    if (!f.Anywhere()) return; // tension throughout: no element to classify
    switch (s.shape) {
    case Shape::I:
    case Shape::UnequalI:
        return ClassifyI(s, m, a, f, c);
    case Shape::Channel:
        return ClassifyChannel(s, f, c);
    case Shape::Tee:
        return ClassifyTee(s, f, c);
    case Shape::Angle:
        return ClassifyAngle(s, a, c);
    case Shape::RHS:
        return ClassifyRHS(s, m, a, c);
    case Shape::CHS:
        return ClassifyCHS(s, a, c);
    }
}

// A bracket of clause 3.5.6: 1 at the limit of class 2, 0 at that of class 3.
double SemiCompactFactor(const ElementClass& e, double power)
{
    if (!e.compressed || e.ratio <= e.limit[1]) return 1.0;
    const double span = std::pow(e.limit[2] / e.limit[1], power) - 1.0;
    if (!(span > 0.0)) return 0.0;
    return std::clamp((std::pow(e.limit[2] / e.ratio, power) - 1.0) / span, 0.0, 1.0);
}

struct SemiCompact {
    double x = 0.0; ///< share of S - Z
    double y = 0.0;
    bool hasEffectiveModulus = false;
};

// Clause 3.5.6: which share of S - Z the effective plastic modulus keeps.
SemiCompact SemiCompactShares(const SectionProperties& s, const Classification& c)
{
    SemiCompact k{1.0, 1.0, true};
    // 3.5.6.3 is for the hollow sections of Table 12: a welded box has no effective plastic modulus.
    if (s.shape != Shape::I && (!s.IsHollow() || s.IsWelded())) return {};
    if (s.shape == Shape::CHS) { // 3.5.6.4: 1.485((140/(D/t) 275/py)^0.5 - 1), 1 at D/t = 50ε² and 0 at 140ε²
        const double limit = 140.0 * c.epsilon * c.epsilon;
        k.x = k.y = std::clamp(1.485 * (std::sqrt(limit / (s.D / s.t)) - 1.0), 0.0, 1.0);
        return k;
    }
    const bool squared = s.shape == Shape::I; // the web term of 3.5.6.2 is squared, that of 3.5.6.3 is not
    for (int i = 0; i < c.count; ++i) {
        const ElementClass& e = c.elements[static_cast<std::size_t>(i)];
        const double factor = SemiCompactFactor(e, e.isWeb && squared ? 2.0 : 1.0);
        if (s.shape == Shape::I) {
            k.x = std::min(k.x, factor);
            if (!e.isWeb) k.y = std::min(k.y, factor);
        } else
            (e.aboutY ? k.y : k.x) = std::min(e.aboutY ? k.y : k.x, factor);
    }
    return k;
}

// Clauses 3.6.2.2 (Figure 8), 3.6.4 and 3.6.6: area left of a slender section under uniform compression; nothing where
// the reduced design strength of 3.6.5 serves instead.
std::optional<double> EffectiveArea(const SectionProperties& s, double e)
{
    const auto lost = [](double width, double kept) { return std::max(0.0, width - kept); };
    switch (s.shape) {
    case Shape::I: {
        const double outstand = (s.IsWelded() ? 13.0 : 15.0) * e * s.T;
        return s.A - 4.0 * lost(s.b, outstand) * s.T - lost(s.d, 40.0 * e * s.t) * s.t;
    }
    case Shape::RHS: {
        const double k = s.fabrication == Fabrication::Formed ? 35.0 : 40.0;
        return s.A - 2.0 * lost(s.d, k * e * s.t) * s.t - 2.0 * lost(s.b, k * e * s.T) * s.T;
    }
    case Shape::CHS:
        if (s.D / s.t > 240.0 * e * e) return std::nullopt;
        return s.A * std::sqrt(std::min(1.0, 80.0 * e * e / (s.D / s.t)));
    case Shape::Angle:
        if (s.b != s.d || s.b / s.t > 20.0 * e) return std::nullopt;
        return s.A * std::min(1.0, 12.0 * e / (s.b / s.t));
    default:
        return std::nullopt;
    }
}

// (β3/β)² of the worst element, 1 where none is slender.
double SlenderFactor(const Classification& c)
{
    double factor = 1.0;
    for (int i = 0; i < c.count; ++i)
        factor = std::min(factor, c.elements[static_cast<std::size_t>(i)].SlenderFactor());
    return factor;
}

// Clause 3.6.5: reduced over full design strength under the given actions.
double ReducedStrengthFactor(const SectionProperties& s, const Material& m, const Actions& actions)
{
    Classification c;
    ClassifyElements(s, m, actions, c);
    return c.cls < 4 ? 1.0 : SlenderFactor(c);
}

// Clauses 3.6.5 and 3.6.6. Bending is judged by itself, as an effective section modulus is. Where the section has no
// effective area either, 3.6.5 knows one design strength for the whole cross-section, that of its present stresses.
void SetSlender(const SectionProperties& s, const Material& m, const Actions& a, Classification& c)
{
    const std::optional<double> area = EffectiveArea(s, c.epsilon);
    if (a.F < 0.0 && area) c.Aeff = *area;
    if (a.F < 0.0 && !area) {
        Actions squash;
        squash.F = -s.A * m.py;
        c.pyCompression = m.py * ReducedStrengthFactor(s, m, squash);
    }
    const bool angle = s.shape == Shape::Angle;
    c.Wx = angle ? s.Zu : s.Zx;
    c.Wy = angle ? s.Zv : s.Zy;
    c.WxName = angle ? L"Zu" : L"Zx";
    c.WyName = angle ? L"Zv" : L"Zy";
    c.WxIsPlastic = c.WyIsPlastic = false;
    const double diameter = s.D / s.t / (c.epsilon * c.epsilon);
    if (s.shape == Shape::CHS && diameter <= 240.0) {
        c.Wx = c.Wy = s.Zx * std::pow(std::min(1.0, 140.0 / diameter), 0.25);
        c.WxName = L"Zx,eff";
        c.WyName = L"Zy,eff";
        return;
    }
    const double nominal = 1e-3 * m.py;
    Actions x;
    x.Mx = a.Mx > 0.0 ? nominal * s.Zx : -nominal * s.Zx;
    Actions y;
    y.My = nominal * s.Zy;
    const double present = area ? 1.0 : SlenderFactor(c);
    // Without a moment its sign is not known either; what is there then is in the present stresses.
    const auto factor = [&](double moment, const Actions& alone) {
        return area || moment != 0.0 ? std::min(present, ReducedStrengthFactor(s, m, alone)) : present;
    };
    c.pyMomentX = m.py * factor(a.Mx, x);
    c.pyMomentY = m.py * factor(a.My, y);
}

void SetModuli(const SectionProperties& s, const Material& m, const Actions& a, Classification& c)
{
    c.Aeff = s.A;
    c.pyCompression = c.pyMomentX = c.pyMomentY = m.py;
    c.Wx = s.Sx;
    c.Wy = s.Sy;
    if (s.shape == Shape::Angle) { // bent about its principal axes and elastic in every class
        c.Wx = s.Zu;
        c.Wy = s.Zv;
        c.WxName = L"Zu";
        c.WyName = L"Zv";
        c.WxIsPlastic = c.WyIsPlastic = false;
    }
    if (c.cls == 3 && s.shape != Shape::Angle) {
        const SemiCompact k = SemiCompactShares(s, c);
        c.Wx = k.hasEffectiveModulus ? s.Zx + (s.Sx - s.Zx) * k.x : s.Zx;
        c.Wy = k.hasEffectiveModulus ? s.Zy + (s.Sy - s.Zy) * k.y : s.Zy;
        c.WxName = k.hasEffectiveModulus ? L"Sx,eff" : L"Zx";
        c.WyName = k.hasEffectiveModulus ? L"Sy,eff" : L"Zy";
        c.WxIsPlastic = k.hasEffectiveModulus;
        c.WyIsPlastic = k.hasEffectiveModulus;
    }
    if (c.cls == 4) SetSlender(s, m, a, c);
}

} // namespace

double ElementClass::SlenderFactor() const
{
    if (!compressed || !(ratio > limit[2])) return 1.0;
    const double k = limit[2] / ratio;
    return k * k;
}

double Epsilon(double py) { return std::sqrt(275e6 / py); }

Classification Classify(const SectionProperties& section, const Material& material, const Actions& actions)
{
    Classification c;
    ClassifyElements(section, material, actions, c);
    if (c.count == 0) c.epsilon = Epsilon(material.py);
    SetModuli(section, material, actions, c);
    return c;
}

} // namespace Keltrix::BS5950
