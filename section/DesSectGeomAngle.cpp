// Angle: two legs of one thickness, a root fillet in the inside corner, a toe rounding at the inner corner of each tip.
//
//   A, B   lengths of the vertical and the horizontal leg, over all      T      thickness of both
//   R, Rt  root and toe radius                                           x, y   from the heel along the legs
//
// Sums over the parts by the parallel-axis theorem, fillets as spandrels (Fillets.h). What is asked about y is what the
// angle with its legs exchanged returns about x.

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <utility>

#include "keltrix/steel/SectionGeometry.h"
#include "section/DimensionText.h"
#include "section/Fillets.h"
#include "section/Powers.h"
#include "section/PrincipalAxes.h"

namespace Keltrix::Steel {

namespace {

/// Leg thicknesses closer than this count as one.
constexpr double EQUAL_THICKNESS = 1e-10;
/// Legs closer than this, in the host's length unit, count as equal in Suu.
constexpr double EQUAL_LEGS = 0.0001;

struct Point {
    double x;
    double y;
};

/// A straight line through a point. A direction too short to be normalised counts as none, and every point then has
/// the distance 0.
class Line {
public:
    Line(Point through, Point direction) : m_through(through)
    {
        const double length = std::sqrt(Square(direction.x) + Square(direction.y));
        if (length < std::numeric_limits<double>::epsilon()) return;
        m_unit = {direction.x / length, direction.y / length};
    }
    static Line Through(Point from, Point to) { return {from, {to.x - from.x, to.y - from.y}}; }

    double DistanceOf(Point point) const
    {
        return std::abs((point.x - m_through.x) * m_unit.y - (point.y - m_through.y) * m_unit.x);
    }

private:
    Point m_through;
    Point m_unit{0.0, 0.0};
};

/// Where the line through a point with a slope meets the axes.
struct Intercepts {
    Point onY;
    Point onX;
};

Intercepts AxisIntercepts(Point through, double slope)
{
    return {{0.0, through.y - slope * through.x}, {through.x - through.y / slope, 0.0}};
}

/// The legs as strips along their mid-thickness lines, which meet in the corner K = (T/2, T/2), with the fillets at their
/// centroids: what Suu and Svv take the angle for. The first moment of a piece of strip is its area times the mean of the
/// distances of its two ends.
struct Strips {
    double A, B, T, R, Rt;

    double Mid() const { return T / 2.0; }
    Point Corner() const { return {Mid(), Mid()}; }
    Point HorizontalTip() const { return {B, Mid()}; }
    Point VerticalTip() const { return {Mid(), A}; }
    double Root() const { return Fillet::AREA * Square(R); }
    double Toe() const { return Fillet::AREA * Square(Rt); }
    Point RootCentroid() const { return {T + Fillet::CENTROID * R, T + Fillet::CENTROID * R}; }
    Point HorizontalToe() const { return {B - Fillet::CENTROID * Rt, T - Fillet::CENTROID * Rt}; }
    Point VerticalToe() const { return {T - Fillet::CENTROID * Rt, A - Fillet::CENTROID * Rt}; }
};

/// Plastic modulus about the axis of slope t that bisects the corner of equal legs.
double PlasticModulusOfEqualLegs(const Strips& angle, double t)
{
    const double T = angle.T;
    const Line axis(angle.Corner(), {angle.Mid() / t, angle.Mid()});
    const double leg = axis.DistanceOf(angle.HorizontalTip()) * (angle.B - angle.Mid()) * T / 2.0;
    const double toe = axis.DistanceOf(angle.HorizontalToe()) * angle.Toe();
    const double halfRoot = angle.R * (std::numbers::pi / 4.0) * (1.0 / 3.0) * (angle.Root() / 2.0);
    return 2.0 * (leg - toe + halfRoot);
}

/// Plastic modulus about the axis of slope t that cuts the longer leg's mid-line so that the area `tipArea` of the strip
/// lies towards its tip, and meets the other leg's mid-line beyond the corner.
double PlasticModulusOfUnequalLegs(const Strips& angle, double t, double tipArea)
{
    const double T = angle.T;
    const double mid = angle.Mid();
    const bool verticalLonger = angle.B <= angle.A;
    const double longer = verticalLonger ? angle.A : angle.B;
    const double shorter = verticalLonger ? angle.B : angle.A;
    const double cut = longer - tipArea / T;
    const Line axis = verticalLonger ? Line::Through({mid, cut}, {mid - (cut - mid) / t, mid})
                                     : Line::Through({cut, mid}, {mid, mid - t * (cut - mid)});

    const double dK = axis.DistanceOf(angle.Corner());
    const double vertical = axis.DistanceOf(angle.VerticalTip());
    const double horizontal = axis.DistanceOf(angle.HorizontalTip());
    const double shorterLeg = ((verticalLonger ? horizontal : vertical) + dK) * (shorter - mid) * T / 2.0;
    const double longerLeg =
        dK * (cut - mid) * T / 2.0 + (verticalLonger ? vertical : horizontal) * (longer - cut) * T / 2.0;
    const double toes =
        axis.DistanceOf(angle.HorizontalToe()) * angle.Toe() + axis.DistanceOf(angle.VerticalToe()) * angle.Toe();
    // The root fillet acts at the corner, not at its own centroid: kept for compatibility.
    return shorterLeg + longerLeg - toes + dK * angle.Root();
}

} // namespace

bool CDesSectGeomAngle::SetKeltrixSec(const CSection& sec, CMemberResult* const result)
{
    if (ShapeCode(sec) != CSecGeom::SHAPE_ANGLE) return CDesSectGeom::SetKeltrixSec(sec, result);
    const CSecComp& component = sec.Component(0);
    m_dDepth = component.Dimension(0.0, CSecGeom::DEPTH);
    m_dWidth = component.Dimension(0.0, CSecGeom::WIDTH);
    const double t3 = component.Dimension(0.0, CSecGeom::FLANGE_THICKNESS);
    const double t2 = component.Dimension(0.0, CSecGeom::WEB_THICKNESS);
    m_dThickness = std::min(t3, t2);
    if (!(std::abs(t3 - t2) < EQUAL_THICKNESS) && result != nullptr) {
        if (result->TextEnabled()) {
            result->AddOutputString(
                L"<b><orange>Warning:</orange></b> Only a single leg thickness is supported for angles\n");
            result->AddOutputString(L"\tthe smaller thickness has been selected: (T=");
            result->AddOutputString(result->DesFormat().Length(m_dThickness) + L")\n");
        }
        result->SetFlags(result->GetFlags() | CMemberResult::NOTIFY | CMemberResult::WARNING);
    }
    m_dRootRadius = component.Dimension(0.0, CSecGeom::ROOT_RADIUS);
    m_dToeRadius = component.Dimension(0.0, CSecGeom::TOE_RADIUS);
    return CDesSectGeom::SetKeltrixSec(sec, result);
}

double CDesSectGeomAngle::Area() const
{
    return m_dDepth * m_dWidth - (m_dDepth - m_dThickness) * (m_dWidth - m_dThickness) +
           Fillet::AREA * Square(m_dRootRadius) - 2.0 * Fillet::AREA * Square(m_dToeRadius);
}

double CDesSectGeomAngle::Ybar() const
{
    const std::unique_ptr<CDesSectGeomAngle> reflected(static_cast<CDesSectGeomAngle*>(Clone()));
    reflected->Reflect45();
    return reflected->Xbar();
}

double CDesSectGeomAngle::Xbar() const
{
    const double A = m_dDepth;
    const double B = m_dWidth;
    const double T = m_dThickness;
    const double root = Fillet::AREA * Square(m_dRootRadius);
    const double toe = Fillet::AREA * Square(m_dToeRadius);
    const double toeOffset = Fillet::CENTROID * m_dToeRadius;

    const double horizontalLeg = ((T + B) / 2.0) * (B - T) * T;
    const double verticalLeg = A * T * T / 2.0;
    const double firstMoment = horizontalLeg + verticalLeg - (T - toeOffset) * toe - (B - toeOffset) * toe +
                               root * (Fillet::CENTROID * m_dRootRadius + T);
    return firstMoment / (A * B - (A - T) * (B - T) + root - 2.0 * toe);
}

double CDesSectGeomAngle::Ixx() const
{
    const double y = Ybar();
    const double A = m_dDepth;
    const double B = m_dWidth;
    const double T = m_dThickness;
    const double R = m_dRootRadius;
    const double Rt = m_dToeRadius;
    const double toe = Fillet::AREA * Square(Rt);
    const double toeOffset = Fillet::CENTROID * Rt;

    const double verticalLeg = A * T * Square(y - A / 2.0) + T * Cube(A) / 12.0;
    const double horizontalLeg = B * T * Square(y - T / 2.0) + B * Cube(T) / 12.0;
    const double heel = Square(T) * Square(y - T / 2.0) + Fourth(T) / 12.0; // counted with both legs
    // Own terms of the spandrels about their face, yet transfer from their centroid, which counts the offset of the one
    // from the other twice: kept for compatibility.
    const double rootFillet =
        Fillet::FACE_SECOND_MOMENT * Fourth(R) + Fillet::AREA * Square(R) * Square(y - Fillet::CENTROID * R - T);
    const double verticalToe = Fillet::FACE_SECOND_MOMENT * Fourth(Rt) + toe * Square(A - toeOffset - y);
    const double horizontalToe = Fillet::FACE_SECOND_MOMENT * Fourth(Rt) + toe * Square(y - T + toeOffset);
    return verticalLeg + horizontalLeg - heel + rootFillet - verticalToe - horizontalToe;
}

double CDesSectGeomAngle::Iyy() const
{
    const std::unique_ptr<CDesSectGeomAngle> reflected(static_cast<CDesSectGeomAngle*>(Clone()));
    reflected->Reflect45();
    return reflected->Ixx();
}

double CDesSectGeomAngle::Ixy() const
{
    const double x = Xbar();
    const double y = Ybar();
    const double A = m_dDepth;
    const double B = m_dWidth;
    const double T = m_dThickness;
    const double R = m_dRootRadius;
    const double Rt = m_dToeRadius;
    const double toe = Fillet::AREA * Square(Rt);
    const double toeOffset = Fillet::CENTROID * Rt;
    const double rootPlace = Fillet::CENTROID * R + T;

    const double horizontalLeg = ((T + B) / 2.0 - x) * (B - T) * T * (T / 2.0 - y);
    const double verticalLeg = (T / 2.0 - x) * T * A * (A / 2.0 - y);
    // A spandrel's own product moment is negative in all three corners; toes are removed.
    const double verticalToe = (T - toeOffset - x) * toe * (A - toeOffset - y) - Fillet::PRODUCT_MOMENT * Fourth(Rt);
    const double horizontalToe = (B - toeOffset - x) * toe * (T - toeOffset - y) - Fillet::PRODUCT_MOMENT * Fourth(Rt);
    const double rootFillet =
        Fillet::AREA * Square(R) * (rootPlace - x) * (rootPlace - y) - Fillet::PRODUCT_MOMENT * Fourth(R);
    return horizontalLeg + verticalLeg - verticalToe - horizontalToe + rootFillet;
}

double CDesSectGeomAngle::Sxx() const
{
    const double yp = YbarPlastic();
    const double half = Area() / 2.0;
    const double A = m_dDepth;
    const double B = m_dWidth;
    const double T = m_dThickness;
    const double root = Fillet::AREA * Square(m_dRootRadius);
    const double toe = Fillet::AREA * Square(m_dToeRadius);
    const double rootOffset = Fillet::CENTROID * m_dRootRadius;
    const double toeOffset = Fillet::CENTROID * m_dToeRadius;
    const double verticalToe = toe * std::abs(A - toeOffset - yp);

    if (B * T - toe >= half) // axis in the horizontal leg
        return std::abs(yp / 2.0) * B * yp + std::abs((T - yp) / 2.0) * (T - yp) * B +
               std::abs((T + A) / 2.0 - yp) * (A - T) * T - std::abs(T - toeOffset - yp) * toe +
               std::abs(rootOffset + T - yp) * root - verticalToe;
    const double d = yp - T; // above the horizontal leg
    return std::abs(yp - T / 2.0) * T * B + std::abs(d / 2.0) * d * T + std::abs((A - yp) / 2.0) * (A - yp) * T -
           std::abs(d + toeOffset) * toe + std::abs(d - rootOffset) * root - verticalToe;
}

double CDesSectGeomAngle::Syy() const
{
    const std::unique_ptr<CDesSectGeomAngle> reflected(static_cast<CDesSectGeomAngle*>(Clone()));
    reflected->Reflect45();
    return reflected->Sxx();
}

double CDesSectGeomAngle::Zxx() const
{
    const double y = Ybar();
    return Ixx() / std::max(m_dDepth - y, y);
}

double CDesSectGeomAngle::Zyy() const
{
    const double x = Xbar();
    return Iyy() / std::max(m_dWidth - x, x);
}

double CDesSectGeomAngle::J() const
{
    // El Darwish and Johnston, Torsion of Structural Shapes (ASCE J. Struct. Div. 91, 1965): plates, the corner of
    // inscribed-circle diameter D3 = 2d, less the loss at the tips.
    const double T = m_dThickness;
    const double R = m_dRootRadius;
    const double d = 2.0 * T + 3.0 * R - std::sqrt(2.0 * Square(2.0 * R + T));
    const double plates = Cube(T) * (m_dDepth - T) / 3.0 + Cube(T) * m_dWidth / 3.0;
    return plates + Fourth(2.0 * d) * (0.0768 + 0.0479 * R / T) - 0.21 * Fourth(T);
}

CString CDesSectGeomAngle::SectGeomString(const CDesFormat& fmt)
{
    CString text = FabricationText() + L"Angle section dimensions:\n";
    AddDimension(text, L"\tA =     ", fmt, m_dDepth);
    AddDimension(text, L"\tB =     ", fmt, m_dWidth);
    AddDimension(text, L"\tT =     ", fmt, m_dThickness);
    AddDimension(text, L"\tRroot = ", fmt, m_dRootRadius);
    AddDimension(text, L"\tRtoes = ", fmt, m_dToeRadius);
    return text;
}

double CDesSectGeomAngle::Iuu() const
{
    const double Ix = Ixx();
    const double Iy = Iyy();
    return PrincipalAxes::Iuu(Ix, Iy, Ixy());
}

double CDesSectGeomAngle::Ivv() const
{
    const double Ix = Ixx();
    const double Iy = Iyy();
    return PrincipalAxes::Ivv(Ix, Iy, Ixy());
}

double CDesSectGeomAngle::Alpha() const
{
    const double Ix = Ixx();
    const double Iy = Iyy();
    return PrincipalAxes::Alpha(Ix, Iy, Ixy());
}

double CDesSectGeomAngle::Zuu() const
{
    // Extreme fibres of the u axis are the backs of the two tips; their toe roundings lie on the other side.
    const Point centroid{Xbar(), Ybar()};
    const Intercepts u = AxisIntercepts(centroid, std::tan(Alpha()));
    const double verticalTip = Line::Through(u.onY, centroid).DistanceOf({0.0, m_dDepth});
    const double horizontalTip = Line::Through(u.onX, centroid).DistanceOf({m_dWidth, 0.0});
    return Iuu() / std::max(horizontalTip, verticalTip);
}

double CDesSectGeomAngle::Zvv() const
{
    // Extreme fibres of the v axis are the heel and, on each toe rounding, the point whose tangent is parallel to v.
    const double T = m_dThickness;
    const double Rt = m_dToeRadius;
    const double inclination = Alpha() + std::numbers::pi / 2.0;
    const Intercepts v = AxisIntercepts({Xbar(), Ybar()}, std::tan(inclination));
    const double theta = std::numbers::pi - inclination;
    const double fromX = (1.0 - std::sin(theta)) * Rt;
    const double fromY = (1.0 - std::cos(theta)) * Rt;

    const double verticalToe = Line::Through(v.onY, v.onX).DistanceOf({T - fromX, m_dDepth - fromY});
    const Line axis = Line::Through(v.onX, v.onY);
    const double horizontalToe = axis.DistanceOf({m_dWidth - fromX, T - fromY});
    const double heel = axis.DistanceOf({0.0, 0.0});
    return Ivv() / std::max(heel, std::max(horizontalToe, verticalToe));
}

double CDesSectGeomAngle::Suu() const
{
    const Strips angle{m_dDepth, m_dWidth, m_dThickness, m_dRootRadius, m_dToeRadius};
    const double t = std::tan(Alpha());
    if (angle.A == angle.B || std::abs(angle.A - angle.B) < EQUAL_LEGS) return PlasticModulusOfEqualLegs(angle, t);
    return PlasticModulusOfUnequalLegs(angle, t, Area() / 2.0 + angle.Toe());
}

double CDesSectGeomAngle::Svv() const
{
    const Strips angle{m_dDepth, m_dWidth, m_dThickness, m_dRootRadius, m_dToeRadius};
    const double T = angle.T;
    const double mid = angle.Mid();
    const double x = Xbar();
    const double y = Ybar();
    const double s = std::tan(Alpha() + std::numbers::pi / 2.0);
    // The axis is taken through the centroid, where the equal-area axis lies elsewhere: kept for compatibility. It meets
    // the mid-line of the horizontal leg at Q and that of the vertical leg at P.
    const Point Q{x - (y - mid) / s, mid};
    const Point P{mid, y - s * (x - mid)};
    const Line axis = Line::Through(P, Q);

    const double dK = axis.DistanceOf(angle.Corner());
    const double verticalLeg =
        axis.DistanceOf(angle.VerticalTip()) * (angle.A - P.y) * T / 2.0 + dK * (P.y - mid) * T / 2.0;
    const double horizontalLeg =
        axis.DistanceOf(angle.HorizontalTip()) * (angle.B - Q.x) * T / 2.0 + dK * (Q.x - mid) * T / 2.0;
    const double toes =
        axis.DistanceOf(angle.HorizontalToe()) * angle.Toe() + axis.DistanceOf(angle.VerticalToe()) * angle.Toe();
    return verticalLeg + horizontalLeg + axis.DistanceOf(angle.RootCentroid()) * angle.Root() - toes;
}

double CDesSectGeomAngle::YbarPlastic() const
{
    const double area = Area();
    const double horizontalLeg = m_dWidth * m_dThickness - Fillet::AREA * Square(m_dToeRadius);
    if (horizontalLeg >= area / 2.0) return area / (2.0 * m_dWidth);
    // What the horizontal leg does not hold counts as spread evenly over the rest of the vertical leg.
    return m_dThickness + (area / 2.0 - horizontalLeg) / ((area - horizontalLeg) / (m_dDepth - m_dThickness));
}

void CDesSectGeomAngle::Reflect45() { std::swap(m_dDepth, m_dWidth); }

} // namespace Keltrix::Steel
