// I section: flange 1 (top), flange 2 (bottom), web and four root fillets.
//
//   D      overall depth              B1, T1  width and thickness of flange 1
//   Tw     web thickness              B2, T2  width and thickness of flange 2
//   R      root radius                webHeight = D - T1 - T2, between the flanges
//
// Area, centroid, second and plastic moments: sums over the parts, each about its own centroid and carried over by the
// parallel-axis theorem; fillets as spandrels (Fillets.h).

#include <algorithm>
#include <cmath>
#include <utility>

#include "keltrix/steel/SectionGeometry.h"
#include "section/DimensionText.h"
#include "section/Fillets.h"
#include "section/Powers.h"
#include "section/TwoFlanges.h"

namespace Keltrix::Steel {

bool CDesSectGeomI::SetKeltrixSec(const CSection& sec, CMemberResult* const result)
{
    const int shape = ShapeCode(sec);
    if (shape != CSecGeom::SHAPE_I && shape != CSecGeom::SHAPE_GENERAL_I) return false;
    const bool equalFlanges = shape == CSecGeom::SHAPE_I;
    const CSecComp& component = sec.Component(0);
    m_dD = component.Dimension(0.0, CSecGeom::DEPTH);
    m_dB1 = component.Dimension(0.0, CSecGeom::WIDTH);
    m_dB2 = component.Dimension(0.0, equalFlanges ? CSecGeom::WIDTH : CSecGeom::BOTTOM_FLANGE_WIDTH);
    m_dTw = component.Dimension(0.0, CSecGeom::WEB_THICKNESS);
    m_dT1 = component.Dimension(0.0, CSecGeom::FLANGE_THICKNESS);
    m_dT2 = component.Dimension(0.0, equalFlanges ? CSecGeom::FLANGE_THICKNESS : CSecGeom::BOTTOM_FLANGE_THICKNESS);
    m_dR = component.Dimension(0.0, CSecGeom::ROOT_RADIUS);
    return CDesSectGeom::SetKeltrixSec(sec, result);
}

double CDesSectGeomI::Area() const
{
    const double webHeight = m_dD - m_dT1 - m_dT2;
    return m_dB1 * m_dT1 + m_dB2 * m_dT2 + webHeight * m_dTw + Fillet::FOUR_AREA * Square(m_dR);
}

double CDesSectGeomI::Ybar() const
{
    const double webHeight = m_dD - m_dT1 - m_dT2;
    const double flange1 = m_dB1 * m_dT1;
    const double flange2 = m_dB2 * m_dT2;
    const double web = webHeight * m_dTw;
    const double filletPair = Fillet::FOUR_AREA * Square(m_dR) / 2.0;
    const double filletCentroid = Fillet::CENTROID * m_dR;

    const double firstMoment = (m_dD - m_dT1 / 2.0) * flange1 + (m_dT2 / 2.0) * flange2 +
                               (m_dT2 + webHeight / 2.0) * web + (m_dD - m_dT1 - filletCentroid) * filletPair +
                               (m_dT2 + filletCentroid) * filletPair;
    return firstMoment / (flange1 + flange2 + web + 2.0 * filletPair);
}

double CDesSectGeomI::Xbar() const { return 0.0; }

double CDesSectGeomI::Ixx() const
{
    const double y = Ybar();
    const double webHeight = m_dD - m_dT1 - m_dT2;
    const double filletPair = Fillet::FOUR_AREA * Square(m_dR) / 2.0;
    const double filletCentroid = Fillet::CENTROID * m_dR;

    const double own = m_dB1 * Cube(m_dT1) / 12.0 + m_dB2 * Cube(m_dT2) / 12.0 + m_dTw * Cube(webHeight) / 12.0 +
                       Fillet::FOUR_OWN_SECOND_MOMENT * Fourth(m_dR);
    const double flanges = m_dB1 * m_dT1 * Square(m_dD - m_dT1 / 2.0 - y) + m_dB2 * m_dT2 * Square(m_dT2 / 2.0 - y);
    const double web = webHeight * m_dTw * Square((m_dT2 + m_dD - m_dT1) / 2.0 - y);
    const double fillets =
        filletPair * Square(m_dD - m_dT1 - filletCentroid - y) + filletPair * Square(filletCentroid + m_dT2 - y);
    return own + flanges + web + fillets;
}

double CDesSectGeomI::Iyy() const
{
    const double webHeight = m_dD - m_dT1 - m_dT2;
    const double flanges = m_dT1 * Cube(m_dB1) / 12.0 + m_dT2 * Cube(m_dB2) / 12.0;
    const double web = webHeight * Cube(m_dTw) / 12.0;
    const double fillets = Fillet::FOUR_OWN_SECOND_MOMENT * Fourth(m_dR) +
                           Fillet::FOUR_AREA * Square(m_dR) * Square(Fillet::CENTROID * m_dR + m_dTw / 2.0);
    return flanges + web + fillets;
}

double CDesSectGeomI::Ixy() const { return 0.0; }

double CDesSectGeomI::Sxx() const
{
    const double yp = YbarPlastic();
    const double half = Area() / 2.0;
    const double webHeight = m_dD - m_dT1 - m_dT2;
    const double flange1 = m_dB1 * m_dT1;
    const double flange2 = m_dB2 * m_dT2;
    const double web = webHeight * m_dTw;
    const double filletPair = Fillet::FOUR_AREA * Square(m_dR) / 2.0;
    const double topFillets = m_dD - m_dT1 - Fillet::CENTROID * m_dR; // heights above the outer face of flange 2
    const double bottomFillets = m_dT2 + Fillet::CENTROID * m_dR;

    if (flange1 >= half) // axis in flange 1
        return std::abs(webHeight / 2.0 + m_dT2 - yp) * web + m_dB1 * Square(m_dD - yp) / 2.0 +
               m_dB1 * Square(yp - (m_dD - m_dT1)) / 2.0 + (yp - m_dT2 / 2.0) * flange2 +
               std::abs(topFillets - yp) * filletPair + (yp - bottomFillets) * filletPair;
    if (flange2 >= half) // axis in flange 2
        return (m_dD - m_dT1 / 2.0 - yp) * flange1 + m_dB2 * Square(m_dT2 - yp) / 2.0 + m_dB2 * Square(yp) / 2.0 +
               (webHeight / 2.0 + m_dT2 - yp) * web + (topFillets - yp) * filletPair +
               std::abs(yp - bottomFillets) * filletPair;
    // Axis in the web. Plates take yp from the outer face of flange 1, as YbarPlastic gives it here, but fillets take the
    // same yp from that of flange 2: kept for compatibility. Their two arms have a sum that does not depend on yp.
    return (m_dD - m_dT2 / 2.0 - yp) * flange2 + (yp - m_dT1 / 2.0) * flange1 + m_dTw * Square(yp - m_dT1) / 2.0 +
           m_dTw * Square(m_dD - m_dT2 - yp) / 2.0 + (topFillets - yp) * filletPair + (yp - bottomFillets) * filletPair;
}

double CDesSectGeomI::Syy() const
{
    const double webHeight = m_dD - m_dT1 - m_dT2;
    return Square(m_dB1) * m_dT1 / 4.0 + Square(m_dB2) * m_dT2 / 4.0 + webHeight * Square(m_dTw) / 4.0 +
           (Fillet::CENTROID * m_dR + m_dTw / 2.0) * Fillet::FOUR_AREA * Square(m_dR);
}

double CDesSectGeomI::Zxx() const { return ElasticModulus(Ixx(), m_dD, Ybar()); }

double CDesSectGeomI::Zyy() const { return Iyy() / std::max(m_dB1 / 2.0, m_dB2 / 2.0); }

double CDesSectGeomI::J() const
{
    const double flanges = m_dB2 * Cube(m_dT2) + m_dB1 * Cube(m_dT1);
    // Thin plates: the sum of b t³/3.
    if (std::abs(m_dR) < Fillet::NO_RADIUS) return (flanges + (m_dD - m_dT2 - m_dT1) * Cube(m_dTw)) / 3.0;
    // Thin plates with the full depth as the web's length, in place of its clear height: kept for compatibility.
    if (!IsXXSymmetric()) return (flanges + m_dD * Cube(m_dTw)) / 3.0;

    // El Darwish and Johnston, Torsion of Structural Shapes (ASCE J. Struct. Div. 91, 1965): plates, the two junctions of
    // inscribed-circle diameter D1, less the loss at the four flange tips.
    const double T = m_dT1;
    const double D1 = ((m_dTw / 4.0 + m_dR) * m_dTw + Square(T + m_dR)) / (2.0 * m_dR + T);
    const double alpha1 = 0.2204 * m_dTw / T - 0.042 + 0.1355 * m_dR / T - 0.0865 * m_dTw * m_dR / Square(T) -
                          0.0725 * Square(m_dTw) / Square(T);
    return (m_dD - 2.0 * T) * Cube(m_dTw) / 3.0 + 2.0 * m_dB1 * Cube(T) / 3.0 + 2.0 * alpha1 * Fourth(D1) -
           0.42 * Fourth(T);
}

CString CDesSectGeomI::SectGeomString(const CDesFormat& fmt)
{
    CString text = FabricationText() + L"I section dimensions:\n";
    AddDimension(text, L"\tD  = ", fmt, m_dD);
    AddDimension(text, L"\tB1 = ", fmt, m_dB1);
    AddDimension(text, L"\tB2 = ", fmt, m_dB2);
    AddDimension(text, L"\tT1 = ", fmt, m_dT1);
    AddDimension(text, L"\tT2 = ", fmt, m_dT2);
    AddDimension(text, L"\tTw = ", fmt, m_dTw);
    AddDimension(text, L"\tR  = ", fmt, m_dR);
    return text;
}

double CDesSectGeomI::Gamma() const
{
    // Two flanges in their own planes, h apart (Timoshenko and Gere, Theory of Elastic Stability); web and fillets do not
    // count.
    const double I1 = m_dT1 * Cube(m_dB1) / 12.0;
    const double I2 = m_dT2 * Cube(m_dB2) / 12.0;
    const double h = m_dD - (m_dT1 + m_dT2) / 2.0;
    return I1 * I2 / (I1 + I2) * Square(h);
}

void CDesSectGeomI::MirrorXX()
{
    std::swap(m_dB1, m_dB2);
    std::swap(m_dT1, m_dT2);
}

bool CDesSectGeomI::IsXXSymmetric() const { return m_dB1 == m_dB2 && m_dT1 == m_dT2; }

double CDesSectGeomI::YbarPlastic() const { return TwoFlangePlasticAxis(m_dD, m_dB1, m_dT1, m_dB2, m_dT2, Area()); }

} // namespace Keltrix::Steel
