// Angle: two legs of one thickness, a root fillet in the inside corner, a toe rounding at the inner corner of each tip.
//
//   A, B   lengths of the vertical and the horizontal leg, over all      T      thickness of both
//   R, Rt  root and toe radius                                           x, y   from the heel along the legs
//
// Sums over the parts by the parallel-axis theorem, fillets as spandrels (Fillets.h). What is asked about y is what the
// angle with its legs exchanged answers about x.

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

/// A spandrel of radius r at a corner whose faces lie at the given place, on the side of growing x and y.
Point SpandrelInside(double face, double r) { return {face + Fillet::CENTROID * r, face + Fillet::CENTROID * r}; }

/// Centroid of what the rounding of a leg's toe removes; (x, y) is the corner that is rounded.
Point ToeCentroid(double x, double y, double r) { return {x - Fillet::CENTROID * r, y - Fillet::CENTROID * r}; }

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

// Suu and Svv take each leg as a strip along its mid-thickness line, the two meeting in the corner K. The first moment of
// a piece of strip is its area times the mean of the distances of its two ends; fillets act at their centroids.

double CDesSectGeomAngle::Suu() const
{
    const double A = m_dDepth;
    const double B = m_dWidth;
    const double T = m_dThickness;
    const double mid = T / 2.0;
    const double root = Fillet::AREA * Square(m_dRootRadius);
    const double toe = Fillet::AREA * Square(m_dToeRadius);
    const double t = std::tan(Alpha());
    const double half = Area() / 2.0 + toe; // of the strips, on the longer leg's tip side
    const Point corner{mid, mid};
    const Point horizontalTip{B, mid};
    const Point verticalTip{mid, A};
    const Point horizontalToe = ToeCentroid(B, T, m_dToeRadius);
    const Point verticalToe = ToeCentroid(T, A, m_dToeRadius);

    if (A == B || std::abs(A - B) < EQUAL_LEGS) { // the axis bisects the corner
        const Line axis(corner, {mid / t, mid});
        const double rootFillet = m_dRootRadius * (std::numbers::pi / 4.0) * (1.0 / 3.0) * (root / 2.0);
        return 2.0 * (axis.DistanceOf(horizontalTip) * (B - mid) * T / 2.0 - axis.DistanceOf(horizontalToe) * toe +
                      rootFillet);
    }

    // The axis cuts the longer leg where the strips are halved, and the other leg's mid-line behind the corner.
    const bool verticalLonger = B <= A;
    const double cut = (verticalLonger ? A : B) - half / T;
    const Line axis = verticalLonger ? Line({mid, cut}, {(mid - (cut - mid) / t) - mid, mid - cut})
                                     : Line({cut, mid}, {mid - cut, (mid - t * (cut - mid)) - mid});
    const double tipLonger = axis.DistanceOf(verticalLonger ? verticalTip : horizontalTip);
    const double tipShorter = axis.DistanceOf(verticalLonger ? horizontalTip : verticalTip);
    const double lengthLonger = verticalLonger ? A : B;
    const double lengthShorter = verticalLonger ? B : A;
    const double dK = axis.DistanceOf(corner);
    const double shorterLeg = (tipShorter + dK) * (lengthShorter - mid) * T / 2.0;
    const double longerLeg = dK * (cut - mid) * T / 2.0 + tipLonger * (lengthLonger - cut) * T / 2.0;
    // The root fillet acts at K, not at its own centroid: kept for compatibility.
    return shorterLeg + longerLeg - axis.DistanceOf(horizontalToe) * toe - axis.DistanceOf(verticalToe) * toe +
           dK * root;
}

double CDesSectGeomAngle::Svv() const
{
    const double T = m_dThickness;
    const double mid = T / 2.0;
    const double root = Fillet::AREA * Square(m_dRootRadius);
    const double toe = Fillet::AREA * Square(m_dToeRadius);
    const double x = Xbar();
    const double y = Ybar();
    const double s = std::tan(Alpha() + std::numbers::pi / 2.0);
    // The axis is taken through the centroid, where the equal-area axis lies elsewhere: kept for compatibility. It meets
    // the mid-line of the horizontal leg at Q and that of the vertical leg at P.
    const Point Q{x - (y - mid) / s, mid};
    const Point P{mid, y - s * (x - mid)};
    const Line axis = Line::Through(P, Q);
    const double dK = axis.DistanceOf({mid, mid});

    const double verticalLeg =
        axis.DistanceOf({mid, m_dDepth}) * (m_dDepth - P.y) * T / 2.0 + dK * (P.y - mid) * T / 2.0;
    const double horizontalLeg =
        axis.DistanceOf({m_dWidth, mid}) * (m_dWidth - Q.x) * T / 2.0 + dK * (Q.x - mid) * T / 2.0;
    return verticalLeg + horizontalLeg + axis.DistanceOf(SpandrelInside(T, m_dRootRadius)) * root -
           axis.DistanceOf(ToeCentroid(m_dWidth, T, m_dToeRadius)) * toe -
           axis.DistanceOf(ToeCentroid(T, m_dDepth, m_dToeRadius)) * toe;
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
