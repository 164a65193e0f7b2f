// EN 1993-1-5 4.4: effective sections of class 4. What is lost is taken off the gross section: first from the compressed flange, then,
// with the stresses of the section so reduced, from the webs. One pass.
//
//   u     distance from the compressed outer fibre      be1   effective part at the more compressed edge, Table 4.1
//   ρ     share of the compressed width that counts     bc    compressed width

#include "keltrix/ec3/Effective.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Keltrix::EC3 {

double BucklingFactorInternal(double psi)
{
    psi = std::clamp(psi, -3.0, 1.0);
    if (psi > 0.0) return 8.2 / (1.05 + psi);
    if (psi >= -1.0 - 1e-9) return 7.81 - 6.29 * psi + 9.78 * psi * psi;
    return 5.98 * (1.0 - psi) * (1.0 - psi);
}

double BucklingFactorTip(double psi)
{
    psi = std::clamp(psi, -3.0, 1.0);
    return 0.57 - 0.21 * psi + 0.07 * psi * psi;
}

double BucklingFactorRoot(double psi)
{
    psi = std::clamp(psi, -1.0, 1.0);
    if (psi >= 1.0) return 0.43;
    if (psi >= 0.0) return 0.578 / (psi + 0.34);
    return 1.7 - 5.0 * psi + 17.1 * psi * psi;
}

double ReductionInternal(double slenderness, double psi)
{
    psi = std::clamp(psi, -3.0, 1.0);
    if (slenderness <= 0.5 + std::sqrt(0.085 - 0.055 * psi)) return 1.0;
    return std::min(1.0, (slenderness - 0.055 * (3.0 + psi)) / (slenderness * slenderness));
}

double ReductionOutstand(double slenderness)
{
    if (slenderness <= 0.748) return 1.0;
    return std::min(1.0, (slenderness - 0.188) / (slenderness * slenderness));
}

namespace {

double Slenderness(const Plate& plate, const Strength& m, double k)
{
    return plate.Ratio() / (28.4 * m.epsilon * std::sqrt(k));
}

} // namespace

double UniformReduction(const Plate& plate, const Strength& strength)
{
    if (plate.kind == PlateKind::Internal) return ReductionInternal(Slenderness(plate, strength, 4.0), 1.0);
    return ReductionOutstand(Slenderness(plate, strength, 0.43));
}

namespace {

constexpr const wchar_t* TUBE = L"a circular hollow section of class 4 is for EN 1993-1-6";
constexpr const wchar_t* UNEQUAL_ANGLE =
    L"bending of an unequal angle of class 4: its effective legs turn the principal axes";

// What is left of a section when strips are taken off, along one axis.
class Remainder {
public:
    Remainder(double A, double centroid, double I) : m_A(A), m_S(A * centroid), m_I(I + A * centroid * centroid) {}
    /// A strip from u1 to u2, of a width across.
    void Remove(double u1, double u2, double width)
    {
        const double length = u2 - u1;
        const double middle = 0.5 * (u1 + u2);
        const double A = length * width;
        m_A -= A;
        m_S -= A * middle;
        m_I -= A * (length * length / 12.0 + middle * middle);
    }
    double Area() const { return m_A; }
    double Centroid() const { return m_S / m_A; }
    double SecondMoment() const { return m_I - m_S * m_S / m_A; }

private:
    double m_A;
    double m_S;
    double m_I;
};

// A plate along the gradient of stress: internal, or an outstand whose tip or whose root is its more compressed edge.
struct SidePlate {
    enum class Kind { Internal, Tip, Root };
    Kind kind = Kind::Internal;
    const Plate* plate = nullptr;
    double from = 0.0; // u of its more compressed edge
    int count = 1;
};

// A section in bending, its compressed outer fibre at u = 0.
struct BentSection {
    double depth = 0.0;
    double A = 0.0;
    double centroid = 0.0;
    double I = 0.0;
    const Plate* flange = nullptr; // in uniform compression at u = 0; null where there is none
    std::array<SidePlate, 2> sides{};
    int sideCount = 0;

    void Add(SidePlate::Kind kind, const Plate& plate, double from, int count)
    {
        sides[static_cast<std::size_t>(sideCount++)] = {kind, &plate, from, count};
    }
};

// Tables 4.1 and 4.2: takes off what a side plate loses with the neutral axis at a distance from the compressed fibre.
void ReduceSide(const SidePlate& side, const Strength& m, double axis, Remainder& rest)
{
    const Plate& p = *side.plate;
    const double toAxis = axis - side.from; // from its more compressed edge
    if (!(toAxis > 0.0)) return;            // in tension
    const double psi = 1.0 - p.c / toAxis;
    const double bc = psi < 0.0 ? toAxis : p.c;
    const double width = p.t * side.count;
    switch (side.kind) {
    case SidePlate::Kind::Internal: {
        const double beff = ReductionInternal(Slenderness(p, m, BucklingFactorInternal(psi)), psi) * bc;
        const double be1 = psi < 0.0 ? 0.4 * beff : 2.0 * beff / (5.0 - psi);
        rest.Remove(side.from + be1, side.from + be1 + bc - beff, width);
        break;
    }
    case SidePlate::Kind::Tip: {
        const double beff = ReductionOutstand(Slenderness(p, m, BucklingFactorTip(psi))) * bc;
        rest.Remove(side.from, side.from + bc - beff, width);
        break;
    }
    case SidePlate::Kind::Root: {
        const double beff = ReductionOutstand(Slenderness(p, m, BucklingFactorRoot(psi))) * bc;
        rest.Remove(side.from + beff, side.from + bc, width);
        break;
    }
    }
}

// Effective modulus to the farther outer fibre of the gross section. What a stem loses beside the neutral axis can move the centroid
// towards the fibre that governs: the modulus is never above that of the gross section.
double EffectiveModulus(const BentSection& b, const Strength& m)
{
    Remainder rest(b.A, b.centroid, b.I);
    if (b.flange) {
        const double lost = (1.0 - UniformReduction(*b.flange, m)) * b.flange->c * b.flange->count;
        rest.Remove(0.0, b.flange->t, lost);
    }
    const double axis = rest.Centroid();
    for (int i = 0; i < b.sideCount; ++i)
        ReduceSide(b.sides[static_cast<std::size_t>(i)], m, axis, rest);
    const double u = rest.Centroid();
    return std::min(rest.SecondMoment() / std::max(u, b.depth - u), b.I / std::max(b.centroid, b.depth - b.centroid));
}

// About y-y with the top or the bottom compressed.
double MajorModulus(const Section& s, const Strength& m, bool top)
{
    BentSection b;
    b.depth = s.h;
    b.A = s.A;
    b.centroid = top ? s.h - s.basis.cy : s.basis.cy;
    b.I = s.Iy;
    const Plate& web = *s.Find(PlatePlace::Web);
    if (s.shape == Shape::Tee) {
        if (top) b.flange = s.Find(PlatePlace::Flange1);
        b.Add(top ? SidePlate::Kind::Root : SidePlate::Kind::Tip, web, top ? s.h - web.c : 0.0, 1);
        return EffectiveModulus(b, m);
    }
    b.flange = s.Find(top ? PlatePlace::Flange1 : PlatePlace::Flange2);
    const double flange = top ? s.tf : s.tf2;
    const double from = s.shape == Shape::RHS ? 0.5 * (s.h - web.c) : flange + s.r;
    b.Add(SidePlate::Kind::Internal, web, from, s.webs);
    return EffectiveModulus(b, m);
}

// About z-z with one side compressed, of a channel its back or its tips. The web of an I section and the stem of a tee lie at the axis
// and lose nothing.
double MinorModulus(const Section& s, const Strength& m, bool back)
{
    const Plate& web = *s.Find(PlatePlace::Web);
    const Plate& flange = *s.Find(PlatePlace::Flange1);
    const Plate* flange2 = s.Find(PlatePlace::Flange2);
    BentSection b;
    b.depth = std::max(s.b, s.b2);
    b.A = s.A;
    b.centroid = s.shape == Shape::Channel && !back ? s.b - s.basis.cx : s.basis.cx;
    b.I = s.Iz;
    Plate wall = web;
    wall.count = 1;
    if (s.shape == Shape::RHS) {
        b.flange = &wall;
        b.Add(SidePlate::Kind::Internal, flange, 0.5 * (s.b - flange.c), 2);
    } else if (s.shape == Shape::Channel) {
        if (back) b.flange = &wall;
        b.Add(back ? SidePlate::Kind::Root : SidePlate::Kind::Tip, flange, back ? s.b - flange.c : 0.0, 2);
    } else {
        b.Add(SidePlate::Kind::Tip, flange, 0.5 * (b.depth - s.b), 1);
        if (flange2) b.Add(SidePlate::Kind::Tip, *flange2, 0.5 * (b.depth - s.b2), 1);
    }
    return EffectiveModulus(b, m);
}

// Uniform compression: area, and shift of the centroid along z and y. Internal plates lose their middle, outstands their tips.
void SetCompression(const Section& s, const Strength& m, EffectiveSection& e)
{
    double Sz = 0.0; // first moments of what is lost about the gross centroid
    double Sy = 0.0;
    e.Aeff = s.A;
    for (int i = 0; i < s.plateCount; ++i) {
        const Plate& p = s.plates[static_cast<std::size_t>(i)];
        const double lost = (1.0 - UniformReduction(p, m)) * p.c;
        const double area = lost * p.t * p.count;
        double z = 0.0;
        double y = 0.0;
        if (p.place == PlatePlace::Flange1) z = s.h - 0.5 * s.tf - s.basis.cy;
        if (p.place == PlatePlace::Flange2) z = 0.5 * s.tf2 - s.basis.cy;
        if (p.place == PlatePlace::Web) {
            z = (s.shape == Shape::Tee ? 0.5 * lost : s.tf2 + s.r + 0.5 * p.c) - s.basis.cy;
            y = 0.5 * s.tw - s.basis.cx;
        } else {
            y = s.b - 0.5 * lost - s.basis.cx;
        }
        e.Aeff -= area;
        Sz -= area * z;
        Sy -= area * y;
    }
    // What rounding leaves about an axis of symmetry is no shift.
    const auto shift = [&](double moment) {
        const double offset = std::abs(moment / e.Aeff);
        return offset > 1e-9 * s.h ? offset : 0.0;
    };
    if (s.shape != Shape::RHS) e.eNy = shift(Sz);
    if (s.shape == Shape::Channel) e.eNz = shift(Sy);
}

// Legs lose their tips as in uniform compression, in bending too: there at least as much is effective. Of equal legs u-u stays the
// axis of symmetry and the centroid moves along it.
void SetAngle(const Section& s, const Strength& m, EffectiveSection& e)
{
    const Plate& leg = *s.Find(PlatePlace::VerticalLeg);
    const Plate& other = *s.Find(PlatePlace::HorizontalLeg);
    const double lost = (1.0 - UniformReduction(leg, m)) * leg.c;
    const double lostOther = (1.0 - UniformReduction(other, m)) * other.c;
    e.Aeff = s.A - (lost + lostOther) * s.tw;
    if (s.h != s.b && (lost > 0.0 || lostOther > 0.0)) {
        e.refusalY = e.refusalZ = UNEQUAL_ANGLE;
        // The shift is a bound: that along both legs together.
        const double z = lost * s.tw * (s.h - 0.5 * lost - s.basis.cy) / e.Aeff;
        const double y = lostOther * s.tw * (s.b - 0.5 * lostOther - s.basis.cx) / e.Aeff;
        e.eNy = e.eNz = std::abs(y) + std::abs(z);
        return;
    }
    // Middle of a lost tip from the centroid, along u-u and across it, and the second moments of its strip about its own middle.
    const double along = (s.basis.cx - 0.5 * s.tw - (s.h - 0.5 * lost - s.basis.cy)) / std::sqrt(2.0);
    const double across = (s.h - 0.5 * lost - 0.5 * s.tw) / std::sqrt(2.0);
    const double own = s.tw * lost * (lost * lost + s.tw * s.tw) / 24.0;
    const double area = 2.0 * lost * s.tw;
    e.eNz = std::abs(area * along / e.Aeff);
    const double Iu = s.Iu - area * across * across - 2.0 * own;
    const double Iv = s.Iv - area * along * along - 2.0 * own - e.Aeff * e.eNz * e.eNz;
    e.Weffy = Iu / (s.Iu / s.Welu);
    e.Weffz = Iv / (s.Iv / s.Welv + e.eNz);
}

} // namespace

EffectiveSection MakeEffective(const Section& s, const Strength& m, const ClassActions& a)
{
    EffectiveSection e;
    if (s.shape == Shape::CHS) {
        e.refusalA = e.refusalY = e.refusalZ = TUBE;
        return e;
    }
    if (s.shape == Shape::Angle) {
        SetAngle(s, m, e);
        return e;
    }
    SetCompression(s, m, e);
    // Compression bends a section whose centroid shifts, whatever the given moments.
    const bool both = !a.BendsMajor() || (a.NEd > 0.0 && e.eNy > 0.0);
    e.Weffy = both || a.compressesTop ? MajorModulus(s, m, true) : MajorModulus(s, m, false);
    if (both || a.compressesBottom) e.Weffy = std::min(e.Weffy, MajorModulus(s, m, false));
    const bool sides = !a.BendsMinor() || (a.NEd > 0.0 && e.eNz > 0.0);
    e.Weffz = sides || a.compressesBack ? MinorModulus(s, m, true) : MinorModulus(s, m, false);
    if (sides || a.compressesTips) e.Weffz = std::min(e.Weffz, MinorModulus(s, m, false));
    return e;
}

} // namespace Keltrix::EC3
