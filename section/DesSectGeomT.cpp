// T section: flange at the top, stem below it, two root fillets, and two toe roundings at the lower corners of the
// flange tips.
//
//   D      overall depth              B, Tf   width and thickness of the flange
//   Tw     stem thickness             R, Rt   root and toe radius
//   stemHeight = D - Tf, below the flange; heights y are measured upwards from the stem's tip
//
// Sums over the parts by the parallel-axis theorem, fillets as spandrels (Fillets.h).

#include <cmath>

#include "keltrix/steel/SectionGeometry.h"
#include "section/DimensionText.h"
#include "section/Fillets.h"
#include "section/Powers.h"
#include "section/TwoFlanges.h"

namespace Keltrix::Steel {

bool CDesSectGeomT::SetKeltrixSec(const CSection& sec, CMemberResult* const result)
{
    if (ShapeCode(sec) != CSecGeom::SHAPE_T) return false;
    const CSecComp& component = sec.Component(0);
    m_dD = component.Dimension(0.0, CSecGeom::DEPTH);
    m_dTw = component.Dimension(0.0, CSecGeom::WEB_THICKNESS);
    m_dTf = component.Dimension(0.0, CSecGeom::FLANGE_THICKNESS);
    m_dB = component.Dimension(0.0, CSecGeom::WIDTH);
    m_dR = component.Dimension(0.0, CSecGeom::ROOT_RADIUS);
    m_dRt = component.Dimension(0.0, CSecGeom::TOE_RADIUS);
    return CDesSectGeom::SetKeltrixSec(sec, result);
}

double CDesSectGeomT::Area() const
{
    const double stemHeight = m_dD - m_dTf;
    return stemHeight * m_dTw + m_dTf * m_dB + Fillet::PAIR_AREA * Square(m_dR) - Fillet::PAIR_AREA * Square(m_dRt);
}

double CDesSectGeomT::Ybar() const
{
    const double stemHeight = m_dD - m_dTf;
    const double flange = m_dTf * m_dB;
    const double stem = stemHeight * m_dTw;
    const double rootFillets = Fillet::PAIR_AREA * Square(m_dR);
    const double toes = Fillet::PAIR_AREA * Square(m_dRt);

    const double firstMoment = (m_dD - m_dTf / 2.0) * flange + stem * stemHeight / 2.0 +
                               (stemHeight - Fillet::CENTROID * m_dR) * rootFillets -
                               (Fillet::CENTROID * m_dRt + stemHeight) * toes;
    return firstMoment / (stem + flange + rootFillets - toes);
}

double CDesSectGeomT::Xbar() const { return 0.0; }

double CDesSectGeomT::Ixx() const
{
    const double y = Ybar();
    const double stemHeight = m_dD - m_dTf;
    const double flange = m_dTf * m_dB * Square(m_dD - m_dTf / 2.0 - y) + m_dB * Cube(m_dTf) / 12.0;
    const double stem = m_dTw * Cube(stemHeight) / 12.0 + stemHeight * m_dTw * Square(stemHeight / 2.0 - y);
    const double rootFillets = Fillet::PAIR_OWN_SECOND_MOMENT * Fourth(m_dR) +
                               Fillet::PAIR_AREA * Square(m_dR) * Square(stemHeight - Fillet::CENTROID * m_dR - y);
    const double toes = Fillet::PAIR_OWN_SECOND_MOMENT * Fourth(m_dRt) +
                        Fillet::PAIR_AREA * Square(m_dRt) * Square(Fillet::CENTROID * m_dRt + stemHeight - y);
    return flange + stem + rootFillets - toes;
}

double CDesSectGeomT::Iyy() const
{
    const double flange = m_dTf * Cube(m_dB) / 12.0;
    const double stem = (m_dD - m_dTf) * Cube(m_dTw) / 12.0;
    const double rootFillets = Fillet::PAIR_OWN_SECOND_MOMENT * Fourth(m_dR) +
                               Fillet::PAIR_AREA * Square(m_dR) * Square(Fillet::CENTROID * m_dR + m_dTw / 2.0);
    const double toes = Fillet::PAIR_OWN_SECOND_MOMENT * Fourth(m_dRt) +
                        Fillet::PAIR_AREA * Square(m_dRt) * Square(m_dB / 2.0 - Fillet::CENTROID * m_dRt);
    return flange + stem + rootFillets - toes;
}

double CDesSectGeomT::Ixy() const { return 0.0; }

double CDesSectGeomT::Sxx() const
{
    const double yp = YbarPlastic();
    const double area = Area();
    const double stemHeight = m_dD - m_dTf;
    const double flange = m_dTf * m_dB;
    const double rootFillets = Fillet::PAIR_AREA * Square(m_dR);
    const double toes = Fillet::PAIR_AREA * Square(m_dRt);
    const double rootCentroid = Fillet::CENTROID * m_dR;
    const double toeCentroid = Fillet::CENTROID * m_dRt;

    if (flange >= area / 2.0) // axis in the flange, yp from the stem's tip
        return std::abs((m_dD - yp) / 2.0) * (m_dD - yp) * m_dB +
               std::abs((yp - stemHeight) / 2.0) * (yp - stemHeight) * m_dB +
               std::abs(stemHeight / 2.0 - yp) * stemHeight * m_dTw +
               std::abs(stemHeight - rootCentroid - yp) * rootFillets - std::abs(toeCentroid + stemHeight - yp) * toes;
    // Axis in the stem, yp from the top of the flange.
    return m_dTw * Square(yp - m_dTf) / 2.0 + (yp - m_dTf / 2.0) * flange + m_dTw * Square(m_dD - yp) / 2.0 +
           (yp - m_dTf - rootCentroid) * rootFillets - (toeCentroid + yp - m_dTf) * toes;
}

double CDesSectGeomT::Syy() const
{
    const double flange = m_dTf * m_dB * m_dB / 4.0;
    const double stem = (m_dD - m_dTf) * Square(m_dTw) / 4.0;
    const double rootFillets = (Fillet::CENTROID * m_dR + m_dTw / 2.0) * Fillet::PAIR_AREA * Square(m_dR);
    // The removed toes are taken beside the stem, where they lie at the flange's tips: kept for compatibility.
    const double toes = (Fillet::CENTROID * m_dRt + m_dTw / 2.0) * Fillet::PAIR_AREA * Square(m_dRt);
    return stem + flange + rootFillets - toes;
}

double CDesSectGeomT::Zxx() const { return ElasticModulus(Ixx(), m_dD, Ybar()); }

double CDesSectGeomT::Zyy() const { return Iyy() / (m_dB / 2.0); }

double CDesSectGeomT::J() const
{
    const double plates = (m_dD - m_dTf) * Cube(m_dTw) / 3.0 + m_dB * Cube(m_dTf) / 3.0;
    if (std::abs(m_dR) < Fillet::NO_RADIUS) return plates;

    // El Darwish and Johnston, Torsion of Structural Shapes (ASCE J. Struct. Div. 91, 1965): plates, the junction of
    // inscribed-circle diameter D1, less the loss at the two flange tips and the stem's tip.
    const double D1 = (Square(m_dTf + m_dR) + (m_dTw / 4.0 + m_dR) * m_dTw) / (2.0 * m_dR + m_dTf);
    const double alpha1 = 0.2204 * m_dTw / m_dTf - 0.042 + 0.1355 * m_dR / m_dTf -
                          0.0865 * m_dTw * m_dR / Square(m_dTf) - 0.0725 * Square(m_dTw) / Square(m_dTf);
    return alpha1 * Fourth(D1) + plates - 0.21 * Fourth(m_dTf) - 0.105 * Fourth(m_dTw);
}

CString CDesSectGeomT::SectGeomString(const CDesFormat& fmt)
{
    CString text = FabricationText() + L"T section dimensions:\n";
    AddDimension(text, L"\tD  = ", fmt, m_dD);
    AddDimension(text, L"\tB  = ", fmt, m_dB);
    AddDimension(text, L"\tTf = ", fmt, m_dTf);
    AddDimension(text, L"\tTw = ", fmt, m_dTw);
    AddDimension(text, L"\tRr  = ", fmt, m_dR);
    return text;
}

double CDesSectGeomT::Iw() const
{
    // Plates that meet in one point warp across their thickness only: the sum of (b t)³/36 with b from the meeting
    // point, so 144 for a flange of two halves (Bleich, Buckling Strength of Metal Structures).
    return Cube((m_dD - m_dTf / 2.0) * m_dTw) / 36.0 + Cube(m_dTf * m_dB) / 144.0;
}

double CDesSectGeomT::MonoSymBeta() const
{
    // ∫ y (x² + y²) dA / (2 Ixx) - |flange distance|, heights from the centroid. For a rectangle of height h at height d:
    // (Iy + A d² + 3 I0) d with its own moments Iy about y and I0 about its horizontal centroidal axis.
    const double y = Ybar();
    const double Ixx0 = Ixx();
    const double stemHeight = m_dD - m_dTf;
    const double dw = stemHeight / 2.0 - y;
    const double df = m_dD - m_dTf / 2.0 - y;
    const double dr = stemHeight - Fillet::CENTROID * m_dR - y;
    const double dt = Fillet::CENTROID * m_dRt + stemHeight - y;

    const double stem =
        (Cube(m_dTw) * stemHeight / 12.0 + stemHeight * m_dTw * Square(dw) + 3.0 * (Cube(stemHeight) * m_dTw / 12.0)) *
        dw;
    const double flange =
        (Cube(m_dB) * m_dTf / 12.0 + m_dB * m_dTf * Square(df) + 3.0 * (Cube(m_dTf) * m_dB / 12.0)) * df;
    // The pair's area enters twice and the fillets' distance from the stem not at all: kept for compatibility.
    const double rootFillets =
        (4.0 * Fillet::OWN_SECOND_MOMENT * Fourth(m_dR) + Fillet::PAIR_AREA * Square(m_dR) * Square(dr)) * 2.0 * dr;
    // Added although material is missing there, and with the roots' distance times the toes' in its area term: both
    // kept for compatibility.
    const double toes =
        (4.0 * Fillet::OWN_SECOND_MOMENT * Fourth(m_dRt) + Fillet::PAIR_AREA * Square(m_dRt) * dr * dt) * 2.0 * dt;
    return (stem + flange + rootFillets + toes) * (0.5 / Ixx0) - std::abs(df);
}

double CDesSectGeomT::YbarPlastic() const
{
    const double area = Area();
    const double flange = m_dTf * m_dB;
    if (flange >= area / 2.0) return m_dD - area / (2.0 * m_dB);
    // Measured from the top of the flange, where the value above is from the stem's tip: kept for compatibility.
    return m_dTf + (area / 2.0 - flange) / ((area - flange) / (m_dD - m_dTf));
}

} // namespace Keltrix::Steel
