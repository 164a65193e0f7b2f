// Parallel-flange channel: web at the back, flange 1 (top), flange 2 (bottom), two root fillets, and two toe roundings at
// the inner corners of the flange tips.
//
//   D      overall depth              B1, T1  width (from the back of the web) and thickness of flange 1
//   Tw     web thickness              B2, T2  the same of flange 2
//   R, Rt  root and toe radius        webHeight = D - T1 - T2, between the flanges
//
// Sums over the parts by the parallel-axis theorem, fillets as spandrels (Fillets.h). x is measured from the back of
// the web. The host's channels have equal flanges, so the x axis lies at half depth throughout.

#include <algorithm>
#include <cmath>

#include "keltrix/steel/SectionGeometry.h"
#include "section/DimensionText.h"
#include "section/Fillets.h"
#include "section/Powers.h"
#include "section/TwoFlanges.h"

namespace Keltrix::Steel {

bool CDesSectGeomPFC::SetKeltrixSec(const CSection& sec, CMemberResult* const result)
{
    if (ShapeCode(sec) != CSecGeom::SHAPE_CHANNEL) return false;
    const CSecComp& component = sec.Component(0);
    m_dD = component.Dimension(0.0, CSecGeom::DEPTH);
    m_dTw = component.Dimension(0.0, CSecGeom::WEB_THICKNESS);
    m_dT1 = component.Dimension(0.0, CSecGeom::FLANGE_THICKNESS);
    m_dT2 = component.Dimension(0.0, CSecGeom::FLANGE_THICKNESS);
    m_dB1 = component.Dimension(0.0, CSecGeom::WIDTH);
    m_dB2 = component.Dimension(0.0, CSecGeom::WIDTH);
    m_dR = component.Dimension(0.0, CSecGeom::ROOT_RADIUS);
    m_dRt = component.Dimension(0.0, CSecGeom::TOE_RADIUS);
    return CDesSectGeom::SetKeltrixSec(sec, result);
}

double CDesSectGeomPFC::Area() const
{
    const double webHeight = m_dD - m_dT1 - m_dT2;
    return m_dB1 * m_dT1 + m_dB2 * m_dT2 + webHeight * m_dTw + Fillet::PAIR_AREA * Square(m_dR) -
           Fillet::PAIR_AREA * Square(m_dRt);
}

double CDesSectGeomPFC::Ybar() const { return m_dD / 2.0; }

double CDesSectGeomPFC::Xbar() const
{
    const double flange1 = m_dB1 * m_dT1;
    const double flange2 = m_dB2 * m_dT2;
    const double web = (m_dD - m_dT1 - m_dT2) * m_dTw;
    const double rootFillets = Fillet::PAIR_AREA * Square(m_dR);
    const double toes = Fillet::PAIR_AREA * Square(m_dRt);
    // The removed toes are taken at B1 - Rt + kC Rt from the back, here and in Iyy, where their centroid lies at
    // B1 - kC Rt: kept for compatibility.
    const double toeCentroid = m_dB1 - m_dRt + Fillet::CENTROID * m_dRt;

    const double firstMoment = (m_dB1 / 2.0) * flange1 + (m_dB2 / 2.0) * flange2 + (m_dTw / 2.0) * web +
                               rootFillets * (Fillet::CENTROID * m_dR + m_dTw) - toes * toeCentroid;
    return firstMoment / (flange1 + flange2 + web + rootFillets - toes);
}

double CDesSectGeomPFC::Ixx() const
{
    const double webHeight = m_dD - m_dT1 - m_dT2;
    const double flanges = m_dB1 * Cube(m_dT1) / 12.0 + m_dB2 * Cube(m_dT2) / 12.0 +
                           m_dB1 * m_dT1 * Square((m_dD - m_dT1) / 2.0) + m_dB2 * m_dT2 * Square((m_dD - m_dT2) / 2.0);
    const double web = m_dTw * Cube(webHeight) / 12.0; // centred on the axis
    const double rootFillets = Fillet::PAIR_OWN_SECOND_MOMENT * Fourth(m_dR) +
                               Fillet::PAIR_AREA * Square(m_dR) * Square(m_dD / 2.0 - m_dT1 - Fillet::CENTROID * m_dR);
    const double toes = Fillet::PAIR_OWN_SECOND_MOMENT * Fourth(m_dRt) +
                        Fillet::PAIR_AREA * Square(m_dRt) * Square(Fillet::CENTROID * m_dRt + m_dD / 2.0 - m_dT1);
    return flanges + web + rootFillets - toes;
}

double CDesSectGeomPFC::Iyy() const
{
    const double x = Xbar();
    const double webHeight = m_dD - m_dT1 - m_dT2;
    const double flanges = m_dT1 * Cube(m_dB1) / 12.0 + m_dT2 * Cube(m_dB2) / 12.0 +
                           m_dB1 * m_dT1 * Square(m_dB1 / 2.0 - x) + m_dB2 * m_dT2 * Square(m_dB2 / 2.0 - x);
    const double web = webHeight * Cube(m_dTw) / 12.0 + webHeight * m_dTw * Square(x - m_dTw / 2.0);
    const double rootFillets = Fillet::PAIR_OWN_SECOND_MOMENT * Fourth(m_dR) +
                               Fillet::PAIR_AREA * Square(m_dR) * Square(x - m_dTw - Fillet::CENTROID * m_dR);
    // The place of the toes as in Xbar.
    const double toes = Fillet::PAIR_OWN_SECOND_MOMENT * Fourth(m_dRt) +
                        Fillet::PAIR_AREA * Square(m_dRt) * Square(m_dB1 - x - m_dRt + Fillet::CENTROID * m_dRt);
    return flanges + web + rootFillets - toes;
}

double CDesSectGeomPFC::Ixy() const { return 0.0; }

double CDesSectGeomPFC::Sxx() const
{
    const double flanges = m_dB1 * m_dT1 * (m_dD - m_dT1) / 2.0 + m_dB2 * m_dT2 * (m_dD - m_dT2) / 2.0;
    const double web = m_dTw * Square(m_dD / 2.0 - m_dT1);
    const double rootFillets = Fillet::PAIR_AREA * Square(m_dR) * (m_dD / 2.0 - m_dT1 - Fillet::CENTROID * m_dR);
    const double toes = Fillet::PAIR_AREA * Square(m_dRt) * (Fillet::CENTROID * m_dRt + m_dD / 2.0 - m_dT1);
    // The toes are added although material is missing there: kept for compatibility.
    return flanges + web + rootFillets + toes;
}

double CDesSectGeomPFC::Syy() const
{
    const double xp = XbarPlastic();
    const double webHeight = m_dD - m_dT1 - m_dT2;
    const double filletArea = Fillet::PAIR_AREA * Square(m_dR);
    const double filletCentroid = m_dTw + Fillet::CENTROID * m_dR;
    // Both flanges with the thickness of flange 1, as the host's channels have them.
    const double flanges = 2.0 * m_dT1 * Square(xp) / 2.0 + 2.0 * m_dT1 * Square(m_dB1 - xp) / 2.0;
    const double toes = Fillet::PAIR_AREA * Square(m_dRt) * ((m_dB1 - xp) - Fillet::CENTROID * m_dRt);

    if (m_dTw >= xp) { // axis in the web
        const double web = webHeight * Square(xp) / 2.0 + webHeight * Square(m_dTw - xp) / 2.0;
        return flanges + web + filletArea * (filletCentroid - xp) - toes;
    }
    const double web = (xp - m_dTw / 2.0) * webHeight * m_dTw;
    return flanges + web + filletArea * (xp - filletCentroid) - toes;
}

double CDesSectGeomPFC::Zxx() const { return Ixx() / (m_dD / 2.0); }

double CDesSectGeomPFC::Zyy() const
{
    const double x = Xbar();
    return Iyy() / std::max(std::abs(m_dB1 - x), x);
}

double CDesSectGeomPFC::J() const
{
    // Thin plates: the sum of b t³/3.
    if (std::abs(m_dR) < Fillet::NO_RADIUS)
        return (m_dB1 * Cube(m_dT1) + m_dB2 * Cube(m_dT2) + (m_dD - m_dT2 - m_dT1) * Cube(m_dTw)) / 3.0;

    // El Darwish and Johnston, Torsion of Structural Shapes (ASCE J. Struct. Div. 91, 1965): plates, the two corners of
    // inscribed-circle diameter D2, less the loss at the ends.
    const double T = m_dT1;
    const double D2 = 2.0 * (3.0 * m_dR + m_dTw + T - std::sqrt(2.0 * (2.0 * m_dR + m_dTw) * (2.0 * m_dR + T)));
    const double alpha2 = 0.2621 * m_dTw / T - 0.0908 + 0.1231 * m_dR / T - 0.0752 * m_dTw * m_dR / Square(T) -
                          0.0945 * Square(m_dTw) / Square(T);
    return (m_dD - 2.0 * T) * Cube(m_dTw) / 3.0 + 2.0 * m_dB1 * Cube(T) / 3.0 + 2.0 * alpha2 * Fourth(D2) -
           0.42 * Fourth(T);
}

CString CDesSectGeomPFC::SectGeomString(const CDesFormat& fmt)
{
    CString text = FabricationText() + L"Channel section dimensions:\n";
    AddDimension(text, L"\tD  = ", fmt, m_dD);
    AddDimension(text, L"\tB1 = ", fmt, m_dB1);
    AddDimension(text, L"\tB2 = ", fmt, m_dB2);
    AddDimension(text, L"\tT1 = ", fmt, m_dT1);
    AddDimension(text, L"\tT2 = ", fmt, m_dT2);
    AddDimension(text, L"\tTw = ", fmt, m_dTw);
    AddDimension(text, L"\tRr  = ", fmt, m_dR);
    return text;
}

double CDesSectGeomPFC::YbarPlastic() const { return TwoFlangePlasticAxis(m_dD, m_dB1, m_dT1, m_dB2, m_dT2, Area()); }

double CDesSectGeomPFC::XbarPlastic() const
{
    const double half = Area() / 2.0;
    if (m_dTw * m_dD >= half) return half / m_dD; // axis in the web
    // Half the area lies towards the tips, in the two flanges less their toes.
    const double toes = Fillet::PAIR_AREA * Square(m_dRt);
    return m_dB1 - (toes + half) / (m_dT2 + m_dT1);
}

double CDesSectGeomPFC::Iw() const
{
    // Warping constant about the shear centre: Iw = h²/4 (Iyy - A e² (h² A/(4 Ixx) - 1)), with h between flange mid-planes
    // and e from the web's mid-plane to the centroid (SCI P363, Steel Building Design: Design Data, section properties).
    const double area = Area();
    const double h2 = Square(m_dD - m_dT1);
    const double e = Square(Xbar() - m_dTw / 2.0) * area;
    return (Iyy() - e * (h2 * area / (4.0 * Ixx()) - 1.0)) * h2 / 4.0;
}

} // namespace Keltrix::Steel
