#include "keltrix/design/SectionProperties.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <optional>
#include <utility>

#include "keltrix/steel/SectionShapes.h"

namespace Keltrix::Design {

using Steel::CDesSectGeom;
using Steel::CMemberResult;

namespace {

// A root fillet, and what a rounded toe takes away: a square of the radius less a quarter disc, per power of the radius.
namespace Spandrel {
constexpr double AREA = 1.0 - 0.25 * std::numbers::pi;
constexpr double CENTROID = (5.0 / 6.0 - 0.25 * std::numbers::pi) / AREA; // from each of its two faces
constexpr double OWN_SECOND_MOMENT = 1.0 - 0.3125 * std::numbers::pi - AREA * CENTROID * CENTROID;
constexpr double OWN_PRODUCT = 19.0 / 24.0 - 0.25 * std::numbers::pi - AREA * CENTROID * CENTROID;
} // namespace Spandrel

std::optional<Shape> ShapeOf(const CSecComp& component)
{
    switch (component.Shape() & CSecGeom::SHAPE_MASK) {
    case CSecGeom::SHAPE_I:
        return Shape::I;
    case CSecGeom::SHAPE_GENERAL_I:
        return Shape::UnequalI;
    case CSecGeom::SHAPE_CHANNEL:
        return Shape::Channel;
    case CSecGeom::SHAPE_T:
        return Shape::Tee;
    case CSecGeom::SHAPE_ANGLE:
        return Shape::Angle;
    case CSecGeom::SHAPE_CHS:
        return Shape::CHS;
    case CSecGeom::SHAPE_RHS:
        return Shape::RHS;
    default:
        return std::nullopt;
    }
}

void ReadDimensions(SectionProperties& s, const CSecComp& c)
{
    s.D = c.Dimension(0.0, CSecGeom::DEPTH);
    s.B = s.B2 = c.Dimension(0.0, CSecGeom::WIDTH);
    s.t = c.Dimension(0.0, CSecGeom::WEB_THICKNESS);
    s.T = s.T2 = c.Dimension(0.0, CSecGeom::FLANGE_THICKNESS);
    s.r = c.Dimension(0.0, CSecGeom::ROOT_RADIUS);
    if (s.shape == Shape::UnequalI) {
        s.B2 = c.Dimension(0.0, CSecGeom::BOTTOM_FLANGE_WIDTH);
        s.T2 = c.Dimension(0.0, CSecGeom::BOTTOM_FLANGE_THICKNESS);
        if (s.B == s.B2 && s.T == s.T2) s.shape = Shape::I;
    }
    if (s.shape == Shape::CHS) {
        s.B = s.B2 = s.D;
        s.T = s.T2 = s.t;
    }
    if (s.shape == Shape::Angle || (s.shape == Shape::RHS && !s.IsWelded())) s.t = s.T = s.T2 = std::min(s.t, s.T);
}

// Whether the dimensions are of a section: finite, and walls, flanges and fillets fit into the outline, so that every formula has a meaning.
bool FitsTogether(const CSecComp& c, Shape shape)
{
    const auto dimension = [&c](CSecGeom::Prop prop) { return c.Dimension(0.0, prop); };
    const auto arePositive = [&](std::initializer_list<CSecGeom::Prop> props) {
        return std::all_of(props.begin(), props.end(), [&](CSecGeom::Prop prop) {
            return dimension(prop) > 0.0 && std::isfinite(dimension(prop));
        });
    };
    const double D = dimension(CSecGeom::DEPTH);
    const double B = dimension(CSecGeom::WIDTH);
    const double t = dimension(CSecGeom::WEB_THICKNESS);
    const double T = dimension(CSecGeom::FLANGE_THICKNESS);
    const double r = dimension(CSecGeom::ROOT_RADIUS);
    const double toe = dimension(CSecGeom::TOE_RADIUS);
    if (!(r >= 0.0) || !(toe >= 0.0)) return false;
    if (!arePositive({CSecGeom::DEPTH, CSecGeom::WEB_THICKNESS})) return false;
    if (shape == Shape::CHS) return 2.0 * t < D;
    if (!arePositive({CSecGeom::WIDTH, CSecGeom::FLANGE_THICKNESS})) return false;
    switch (shape) {
    case Shape::UnequalI: {
        const double B2 = dimension(CSecGeom::BOTTOM_FLANGE_WIDTH);
        const double T2 = dimension(CSecGeom::BOTTOM_FLANGE_THICKNESS);
        return arePositive({CSecGeom::BOTTOM_FLANGE_WIDTH, CSecGeom::BOTTOM_FLANGE_THICKNESS}) &&
               T + T2 + 2.0 * r < D && t + 2.0 * r <= std::min(B, B2);
    }
    case Shape::Channel:
        return 2.0 * (T + r) < D && t + r + toe <= B && toe <= T;
    case Shape::Tee:
        return T + r < D && t + 2.0 * (r + toe) <= B && toe <= T;
    case Shape::Angle:
        return t + r < std::min(D, B) && t + r + toe <= std::min(D, B) && toe <= t;
    case Shape::RHS:
        return 2.0 * T < D && 2.0 * t < B;
    default:
        return 2.0 * (T + r) < D && t + 2.0 * r <= B;
    }
}

void SetFabrication(SectionProperties& s, const CSecComp& component)
{
    const Steel::SectionMake make = Steel::HowMade(component);
    s.fabrication = make.type == SEC_ROLLED   ? Fabrication::Rolled
                    : make.type == SEC_FORMED ? Fabrication::Formed
                                              : Fabrication::Welded;
    s.fabricationAssumed = make.assumed;
    s.fabricationContradicted = make.contradicted;
}

SectionProperties DimensionsOf(const CSecComp& component, Shape shape)
{
    SectionProperties s;
    s.shape = shape;
    SetFabrication(s, component);
    ReadDimensions(s, component);
    return s;
}

// Exact coefficient of monosymmetry, flange 1 compressed: 2 y0 - ∫ y (x² + y²) dA / Ix, y upwards from the centroid and y0 the
// shear centre. A rectangle b wide and h deep at y has the integral b h y (b²/12 + h²/4 + y²); fillets and toes count at
// their centroids.
class Monosymmetry {
public:
    explicit Monosymmetry(const SectionProperties& s) : m_s(s) {}

    void Rectangle(double b, double h, double bottom)
    {
        const double y = bottom + 0.5 * h - m_s.cy;
        m_integral += b * h * y * (b * b / 12.0 + h * h / 4.0 + y * y);
    }
    // Two spandrels at the distance x on both sides of the y-y axis.
    void Pair(double radius, double x, double height, double sign)
    {
        const double y = height - m_s.cy;
        m_integral += sign * 2.0 * Spandrel::AREA * radius * radius * y * (x * x + y * y);
    }
    double Coefficient() const { return 2.0 * m_s.y0 - m_integral / m_s.Ix; }

private:
    const SectionProperties& m_s;
    double m_integral = 0.0;
};

double MonosymmetryOf(const SectionProperties& s, double toe)
{
    Monosymmetry sum(s);
    const double root = Spandrel::CENTROID * s.r;
    sum.Rectangle(s.B, s.T, s.D - s.T);
    sum.Pair(s.r, 0.5 * s.t + root, s.D - s.T - root, 1.0);
    if (s.shape == Shape::Tee) {
        sum.Rectangle(s.t, s.D - s.T, 0.0);
        sum.Pair(toe, 0.5 * s.B - Spandrel::CENTROID * toe, s.D - s.T + Spandrel::CENTROID * toe, -1.0);
        return sum.Coefficient();
    }
    sum.Rectangle(s.B2, s.T2, 0.0);
    sum.Rectangle(s.t, s.D - s.T - s.T2, s.T2);
    sum.Pair(s.r, 0.5 * s.t + root, s.T2 + root, 1.0);
    return sum.Coefficient();
}

// Of a channel at h² A e/(4 Ix) outside the centre line of the web, h between the flanges' centres and e from the web's to the
// centroid: what the warping constant of the shape is about.
void SetShearCentre(SectionProperties& s)
{
    switch (s.shape) {
    case Shape::UnequalI: {
        const double I1 = s.T * std::pow(s.B, 3.0);
        const double I2 = s.T2 * std::pow(s.B2, 3.0);
        s.y0 = (I1 * (s.D - 0.5 * s.T) + I2 * 0.5 * s.T2) / (I1 + I2) - s.cy;
        break;
    }
    case Shape::Tee:
        s.y0 = s.D - 0.5 * s.T - s.cy;
        break;
    case Shape::Channel: {
        const double e = s.cx - 0.5 * s.t;
        s.x0 = -e * (1.0 + s.hs * s.hs * s.A / (4.0 * s.Ix));
        break;
    }
    case Shape::Angle:
        s.x0 = 0.5 * s.t - s.cx;
        s.y0 = 0.5 * s.t - s.cy;
        break;
    default:
        break;
    }
}

// A root fillet from its face to a distance of at most its radius r: area and first moment about the face.
struct FilletPart {
    double area = 0.0;
    double moment = 0.0;
};
FilletPart PartOfFillet(double r, double distance)
{
    if (!(r > 0.0)) return {};
    const double q = std::clamp(r - distance, 0.0, r);
    const double chord = std::sqrt(r * r - q * q);
    FilletPart part;
    part.area = r * (r - q) - 0.25 * std::numbers::pi * r * r + 0.5 * (q * chord + r * r * std::asin(q / r));
    part.moment = r * part.area - (0.5 * r * chord * chord - chord * chord * chord / 3.0);
    return part;
}

// Distance, up to `reach`, at which an area that grows with it has a given value.
template <class AreaAt>
double DistanceOfArea(double area, double reach, AreaAt areaAt)
{
    double low = 0.0;
    double high = reach;
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (low + high);
        (areaAt(middle) < area ? low : high) = middle;
    }
    return 0.5 * (low + high);
}

// Plastic modulus about x-x of a T with root fillets whose equal-area axis lies at z below the flange; nothing elsewhere. The geometry
// class spreads the fillets over the stem, which moves the axis: up to 3 % where they are large beside the stem.
std::optional<double> TeePlasticModulus(const SectionProperties& s)
{
    const FilletPart whole = PartOfFillet(s.r, s.r);
    const double stem = s.D - s.T;
    const auto above = [&](double z) { // stem and fillets between the flange and z
        return s.t * z + 2.0 * PartOfFillet(s.r, z).area;
    };
    const double half = s.t * stem + 2.0 * whole.area - 0.5 * s.A;
    if (!(s.r > 0.0) || !(half > 0.0)) return std::nullopt;
    const double beyond = half - above(s.r);
    const double z = beyond < 0.0 ? DistanceOfArea(half, s.r, above) : s.r + beyond / s.t;
    const FilletPart part = PartOfFillet(s.r, std::min(z, s.r));
    const double y = stem - z;
    const double below = 0.5 * s.t * y * y + 2.0 * (whole.moment - part.moment - z * (whole.area - part.area));
    return s.A * (s.cy - y) + 2.0 * below;
}

// The same about y-y of a channel, the axis at z from the web; `cx` is its centroid from the back of the web.
std::optional<double> ChannelPlasticModulus(const SectionProperties& s, double cx)
{
    const auto beside = [&](double z) { return 2.0 * s.T * z + 2.0 * PartOfFillet(s.r, z).area; };
    const double half = 0.5 * s.A - s.D * s.t;
    if (!(s.r > 0.0) || !(half > 0.0) || !(half < beside(s.r))) return std::nullopt;
    const double z = DistanceOfArea(half, s.r, beside);
    const FilletPart part = PartOfFillet(s.r, z);
    const double behind = s.D * s.t * (z + 0.5 * s.t) + s.T * z * z + 2.0 * (z * part.area - part.moment);
    return s.A * (cx - s.t - z) + 2.0 * behind;
}

// |2 v0 - ∫ v (u² + v²) dA / Iu|, taken over the two legs without fillets; v0 is the shear centre, where the legs' centre
// lines meet. Two-point Gauss integration is exact for the cubic.
double AngleMonosymmetry(const SectionProperties& s)
{
    const double sn = std::sin(s.alpha);
    const double cs = std::cos(s.alpha);
    const auto v = [&](double X, double Y) { return -(X - s.cx) * sn + (Y - s.cy) * cs; };
    const auto u = [&](double X, double Y) { return (X - s.cx) * cs + (Y - s.cy) * sn; };
    const double g = 1.0 / std::sqrt(3.0);
    const auto rectangle = [&](double x0, double x1, double y0, double y1) {
        double sum = 0.0;
        for (const double a : {-g, g})
            for (const double e : {-g, g}) {
                const double X = 0.5 * (x0 + x1) + 0.5 * a * (x1 - x0);
                const double Y = 0.5 * (y0 + y1) + 0.5 * e * (y1 - y0);
                const double uu = u(X, Y);
                const double vv = v(X, Y);
                sum += vv * (uu * uu + vv * vv);
            }
        return 0.25 * sum * (x1 - x0) * (y1 - y0);
    };
    const double integral = rectangle(0.0, s.t, 0.0, s.D) + rectangle(s.t, s.B, 0.0, s.t);
    return std::abs(2.0 * v(0.5 * s.t, 0.5 * s.t) - integral / s.Iu);
}

// Second moments of an angle about its centroid, x from the back of the vertical leg and y from that of the horizontal one.
class AngleSum {
public:
    void Rectangle(double b, double h, double x, double y)
    {
        Add(b * h, x + 0.5 * b, y + 0.5 * h, b * h * h * h / 12.0, h * b * b * b / 12.0, 0.0);
    }
    // A spandrel in the corner x, y, towards the axes for a `sign` of -1.
    void Corner(double radius, double x, double y, double sign)
    {
        const double r2 = sign * radius * radius;
        const double own = Spandrel::OWN_SECOND_MOMENT * r2 * radius * radius;
        const double to = sign * Spandrel::CENTROID * radius;
        Add(Spandrel::AREA * r2, x + to, y + to, own, own, Spandrel::OWN_PRODUCT * r2 * radius * radius);
    }
    double X() const { return m_Ax / m_A; }
    double Y() const { return m_Ay / m_A; }
    double Ixx() const { return m_xx - m_A * Y() * Y(); }
    double Iyy() const { return m_yy - m_A * X() * X(); }
    double Ixy() const { return m_xy - m_A * X() * Y(); }

private:
    void Add(double A, double x, double y, double Ixx, double Iyy, double Ixy)
    {
        m_A += A;
        m_Ax += A * x;
        m_Ay += A * y;
        m_xx += Ixx + A * y * y;
        m_yy += Iyy + A * x * x;
        m_xy += Ixy + A * x * y;
    }

    double m_A = 0.0, m_Ax = 0.0, m_Ay = 0.0, m_xx = 0.0, m_yy = 0.0, m_xy = 0.0;
};

// Distance of the farthest fibre of an angle from the axis through its centroid that is normal to (nx, ny): the heel, the backs
// of the tips, and their rounded toes, of which the point counts whose tangent is parallel to the axis.
double FarthestFibre(const SectionProperties& s, const AngleSum& sum, double toe, double nx, double ny)
{
    double far = 0.0;
    const auto point = [&](double x, double y) {
        far = std::max(far, std::abs(nx * (x - sum.X()) + ny * (y - sum.Y())));
    };
    point(0.0, 0.0);
    point(s.B, 0.0);
    point(0.0, s.D);
    for (const auto& [x, y] : {std::pair(s.t, s.D), std::pair(s.B, s.t)}) {
        point(x - toe, y);
        point(x, y - toe);
        const double sign = nx > 0.0 ? 1.0 : -1.0;
        if (nx * ny > 0.0) point(x - toe + sign * nx * toe, y - toe + sign * ny * toe);
    }
    return far;
}

void SetAngle(SectionProperties& s, double toe)
{
    AngleSum sum;
    sum.Rectangle(s.t, s.D, 0.0, 0.0);
    sum.Rectangle(s.B - s.t, s.t, s.t, 0.0);
    sum.Corner(s.r, s.t, s.t, 1.0);
    sum.Corner(toe, s.t, s.D, -1.0);
    sum.Corner(toe, s.B, s.t, -1.0);
    s.cx = sum.X();
    s.cy = sum.Y();
    s.Ix = sum.Ixx();
    s.Iy = sum.Iyy();
    s.Zx = s.Ix / std::max(sum.Y(), s.D - sum.Y());
    s.Zy = s.Iy / std::max(sum.X(), s.B - sum.X());
    s.rx = std::sqrt(s.Ix / s.A);
    s.ry = std::sqrt(s.Iy / s.A);
    const double middle = 0.5 * (s.Ix + s.Iy);
    const double radius = std::hypot(0.5 * (s.Ix - s.Iy), sum.Ixy());
    s.alpha = 0.5 * std::atan2(-2.0 * sum.Ixy(), s.Ix - s.Iy);
    s.Iu = middle + radius;
    s.Iv = middle - radius;
    const double c = std::cos(s.alpha);
    const double n = std::sin(s.alpha);
    s.Zu = s.Iu / FarthestFibre(s, sum, toe, -n, c);
    s.Zv = s.Iv / FarthestFibre(s, sum, toe, c, n);
    s.rv = std::sqrt(s.Iv / s.A);
    s.monosymmetry = s.D == s.B ? 0.0 : AngleMonosymmetry(s);
}

void SetProperties(SectionProperties& s, const CDesSectGeom& g, double toe)
{
    s.A = g.Area();
    s.Ix = g.Ixx();
    s.Iy = g.Iyy();
    s.Sx = g.Sxx();
    s.Sy = g.Syy();
    s.Zx = g.Zxx();
    s.Zy = g.Zyy();
    s.J = g.J();
    s.rx = std::sqrt(s.Ix / s.A);
    s.ry = std::sqrt(s.Iy / s.A);
    s.cx = 0.5 * std::max(s.B, s.B2);
    s.cy = s.IsHollow() ? 0.5 * s.D : g.Ybar();
    s.hs = s.shape == Shape::Tee ? s.D - 0.5 * s.T : s.D - 0.5 * (s.T + s.T2);

    if (const auto* section = dynamic_cast<const Steel::CDesSectGeomI*>(&g)) s.H = section->Gamma();
    if (const auto* channel = dynamic_cast<const Steel::CDesSectGeomPFC*>(&g)) {
        s.H = channel->Iw();
        s.cx = channel->Xbar();
        s.Sy = ChannelPlasticModulus(s, s.cx).value_or(s.Sy);
    }
    if (const auto* tee = dynamic_cast<const Steel::CDesSectGeomT*>(&g)) {
        s.H = tee->Iw();
        s.Sx = TeePlasticModulus(s).value_or(s.Sx);
    }
    if (s.shape == Shape::Angle) SetAngle(s, toe);
    SetShearCentre(s);
    if (s.shape == Shape::UnequalI || s.shape == Shape::Tee) s.monosymmetry = MonosymmetryOf(s, toe);
}

} // namespace

std::unique_ptr<CDesSectGeom> MakeGeometry(const CSection& section, CMemberResult* result)
{
    const CSecComp& component = section.Component(0);
    const std::optional<Shape> shape = ShapeOf(component);
    return shape && FitsTogether(component, *shape) ? Steel::MakeSectionShape(section, result) : nullptr;
}

std::optional<SectionProperties> MakeProperties(const CSection& section, CMemberResult* result)
{
    const std::unique_ptr<CDesSectGeom> geometry = MakeGeometry(section, result);
    if (!geometry) return std::nullopt;
    const CSecComp& component = section.Component(0);
    SectionProperties s = DimensionsOf(component, *ShapeOf(component));
    SetProperties(s, *geometry, component.Dimension(0.0, CSecGeom::TOE_RADIUS));
    return s;
}

const wchar_t* FabricationName(Fabrication fabrication)
{
    switch (fabrication) {
    case Fabrication::Rolled:
        return L"rolled";
    case Fabrication::Formed:
        return L"formed";
    case Fabrication::Welded:
        break;
    }
    return L"welded";
}

const wchar_t* FabricationText(Fabrication fabrication)
{
    switch (fabrication) {
    case Fabrication::Rolled:
        return L"rolled or hot finished";
    case Fabrication::Formed:
        return L"cold formed";
    case Fabrication::Welded:
        break;
    }
    return L"welded";
}

const wchar_t* FabricationNote(const SectionProperties& section)
{
    if (section.fabricationContradicted)
        return section.IsWelded()
                   ? L"taken as welded, the less favourable of the section's type and its catalogue row"
                   : L"taken as cold formed, the less favourable of the section's type and its catalogue row";
    if (!section.fabricationAssumed) return nullptr;
    switch (section.fabrication) {
    case Fabrication::Rolled:
        return L"taken as rolled or hot finished, as the catalogue has it; the section's type does not say how it is "
               L"made";
    case Fabrication::Formed:
        return L"taken as cold formed, as the catalogue has it; the section's type does not say how it is made";
    default:
        return L"taken as welded; the section's type does not say how it is made";
    }
}

} // namespace Keltrix::Design
