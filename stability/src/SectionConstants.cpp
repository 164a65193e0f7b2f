#include "keltrix/stability/SectionConstants.h"

#include <cmath>
#include <memory>
#include <numbers>

#include "keltrix/steel/SectionShapes.h"

namespace Keltrix::Stability {

namespace {

// A root fillet, and what a rounded toe takes away: a square of the radius less a quarter disc, per power of the radius.
constexpr double SPANDREL_AREA = 1.0 - 0.25 * std::numbers::pi;
constexpr double SPANDREL_CENTROID = (5.0 / 6.0 - 0.25 * std::numbers::pi) / SPANDREL_AREA;

struct Dimensions {
    double D, B1, B2, t, T1, T2, r, rt;
};

Dimensions DimensionsOf(const CSecComp& c, int shape)
{
    const bool general = shape == CSecGeom::SHAPE_GENERAL_I;
    Dimensions d{};
    d.D = c.Dimension(0.0, CSecGeom::DEPTH);
    d.B1 = c.Dimension(0.0, CSecGeom::WIDTH);
    d.B2 = general ? c.Dimension(0.0, CSecGeom::BOTTOM_FLANGE_WIDTH) : d.B1;
    d.t = c.Dimension(0.0, CSecGeom::WEB_THICKNESS);
    d.T1 = c.Dimension(0.0, CSecGeom::FLANGE_THICKNESS);
    d.T2 = general ? c.Dimension(0.0, CSecGeom::BOTTOM_FLANGE_THICKNESS) : d.T1;
    d.r = c.Dimension(0.0, CSecGeom::ROOT_RADIUS);
    d.rt = c.Dimension(0.0, CSecGeom::TOE_RADIUS);
    return d;
}

// ∫ ζ (y² + ζ²) dA over parts symmetric about the web plane, ζ up from the centroid, which lies `centroid` above the bottom
// edge. A rectangle b wide and h deep at ζ has b h ζ (b²/12 + h²/4 + ζ²); fillets and toes count at their centroids.
class ThirdMoment {
public:
    explicit ThirdMoment(double centroid) : m_centroid(centroid) {}

    void Rectangle(double b, double h, double bottom)
    {
        const double z = bottom + 0.5 * h - m_centroid;
        m_sum += b * h * z * (b * b / 12.0 + h * h / 4.0 + z * z);
    }
    void Pair(double radius, double y, double height, double sign)
    {
        const double z = height - m_centroid;
        m_sum += sign * 2.0 * SPANDREL_AREA * radius * radius * z * (y * y + z * z);
    }
    double Value() const { return m_sum; }

private:
    double m_centroid;
    double m_sum = 0.0;
};

// The shear centre divides the distance of the flanges inversely to their second moments about the web.
void SetI(SectionConstants& s, const Steel::CDesSectGeomI& geometry, const Dimensions& d)
{
    s.Iw = geometry.Gamma();
    const double y1 = d.D - 0.5 * d.T1;
    const double y2 = 0.5 * d.T2;
    const double I1 = d.T1 * std::pow(d.B1, 3.0);
    const double I2 = d.T2 * std::pow(d.B2, 3.0);
    const bool equal = d.B1 == d.B2 && d.T1 == d.T2;
    const double centre = equal ? 0.5 * d.D : (I1 * y1 + I2 * y2) / (I1 + I2);
    s.flange = {y1 - centre, y2 - centre};
    if (equal) return;
    const double centroid = geometry.Ybar();
    s.zc = centroid - centre;
    ThirdMoment third(centroid);
    const double root = SPANDREL_CENTROID * d.r;
    third.Rectangle(d.B1, d.T1, d.D - d.T1);
    third.Rectangle(d.B2, d.T2, 0.0);
    third.Rectangle(d.t, d.D - d.T1 - d.T2, d.T2);
    third.Pair(d.r, 0.5 * d.t + root, d.D - d.T1 - root, 1.0);
    third.Pair(d.r, 0.5 * d.t + root, d.T2 + root, 1.0);
    s.betaZ = third.Value() / s.Iy + 2.0 * s.zc;
}

// The shear centre is where flange and stem meet.
void SetTee(SectionConstants& s, const Steel::CDesSectGeomT& geometry, const Dimensions& d)
{
    s.Iw = geometry.Iw();
    const double centre = d.D - 0.5 * d.T1;
    s.flange = {0.0, -centre};
    const double centroid = geometry.Ybar();
    s.zc = centroid - centre;
    ThirdMoment third(centroid);
    const double stem = d.D - d.T1;
    third.Rectangle(d.B1, d.T1, stem);
    third.Rectangle(d.t, stem, 0.0);
    third.Pair(d.r, 0.5 * d.t + SPANDREL_CENTROID * d.r, stem - SPANDREL_CENTROID * d.r, 1.0);
    third.Pair(d.rt, 0.5 * d.B1 - SPANDREL_CENTROID * d.rt, stem + SPANDREL_CENTROID * d.rt, -1.0);
    s.betaZ = third.Value() / s.Iy + 2.0 * s.zc;
}

bool IsPositive(double value) { return std::isfinite(value) && value > 0.0; }

bool IsSection(const SectionConstants& s)
{
    return IsPositive(s.A) && IsPositive(s.Iy) && IsPositive(s.Iz) && IsPositive(s.It) && std::isfinite(s.Iw) &&
           s.Iw >= 0.0 && std::isfinite(s.betaZ) && std::isfinite(s.zc) && s.flange[0] > s.flange[1];
}

std::optional<SectionConstants> Refused(CString* reason, const wchar_t* text)
{
    if (reason) *reason = text;
    return std::nullopt;
}

} // namespace

std::optional<SectionConstants> MakeSectionConstants(const CSection& section, double E, double G, CString* reason)
{
    const CSecComp& component = section.Component(0);
    const int shape = component.Shape() & CSecGeom::SHAPE_MASK;
    if (shape == CSecGeom::SHAPE_ANGLE)
        return Refused(reason, L"the principal axes of an angle are inclined to its legs: major-axis moments bend it "
                               L"about both, which elastic critical loads of plane bending do not cover");
    if (!IsPositive(E) || !IsPositive(G))
        return Refused(reason, L"Young's modulus and shear modulus must be above zero");
    const std::unique_ptr<Steel::CDesSectGeom> geometry = Steel::MakeSectionShape(section, nullptr);
    if (!geometry) return Refused(reason, L"the shape of the section is not known");

    SectionConstants s;
    s.E = E;
    s.G = G;
    s.A = geometry->Area();
    s.Iy = geometry->Ixx();
    s.Iz = geometry->Iyy();
    s.It = geometry->J();
    const Dimensions d = DimensionsOf(component, shape);
    s.flange = {0.5 * (d.D - d.T1), -0.5 * (d.D - d.T1)};
    if (const auto* const i = dynamic_cast<const Steel::CDesSectGeomI*>(geometry.get())) SetI(s, *i, d);
    if (const auto* const tee = dynamic_cast<const Steel::CDesSectGeomT*>(geometry.get())) SetTee(s, *tee, d);
    if (const auto* const channel = dynamic_cast<const Steel::CDesSectGeomPFC*>(geometry.get())) {
        s.Iw = channel->Iw();
        s.offWebPlane = true;
    }
    if (shape == CSecGeom::SHAPE_CHS) s.flange = {0.5 * (d.D - d.t), -0.5 * (d.D - d.t)};
    if (!IsSection(s)) return Refused(reason, L"the dimensions are not those of a section");
    return s;
}

} // namespace Keltrix::Stability
