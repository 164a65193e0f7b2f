// Rectangular hollow section: the rectangle D x B less the opening (D - 2 Tf) x (B - 2 Tw).
//
//   D, B    overall depth and width            Ri, Ro  inner and outer corner radius
//   Tf, Tw  thickness of flanges and webs
//
// The outer corners lose a spandrel each, those of the opening gain one (Fillets.h). What is asked about y is what the
// section turned by 90° returns about x.

#include <algorithm>
#include <memory>
#include <utility>

#include "keltrix/steel/SectionGeometry.h"
#include "section/DimensionText.h"
#include "section/Fabrication.h"
#include "section/Fillets.h"
#include "section/Powers.h"

namespace Keltrix::Steel {

bool CDesSectGeomRHS::SetKeltrixSec(const CSection& sec, CMemberResult* const result)
{
    if (ShapeCode(sec) == CSecGeom::SHAPE_RHS) {
        const CSecComp& component = sec.Component(0);
        m_dD = component.Dimension(0.0, CSecGeom::DEPTH);
        m_dB = component.Dimension(0.0, CSecGeom::WIDTH);
        m_dTf = component.Dimension(0.0, CSecGeom::FLANGE_THICKNESS);
        m_dTw = component.Dimension(0.0, CSecGeom::WEB_THICKNESS);
    }
    const bool accepted = CDesSectGeom::SetKeltrixSec(sec, result);
    // Every kind but 0 has one wall thickness, kept dimensions of another shape's section included.
    if (m_dTf == m_dTw || FabType() == Fabrication::WELDED) return accepted;
    const double T = std::min(m_dTf, m_dTw);
    m_dTf = T;
    m_dTw = T;
    if (result == nullptr) return accepted;
    if (result->TextEnabled()) {
        result->AddOutputString(
            L"<orange><b>Warning:</b> hot rolled and cold formed sections cannot have different flange"
            L" and web thicknesses\n");
        result->AddOutputString(L"\tthe smaller thickness has been selected: (T=");
        result->AddOutputString(result->DesFormat().LengthSmall(T) + L")</orange>\n");
    }
    result->SetFlags(result->GetFlags() | CMemberResult::NOTIFY | CMemberResult::WARNING);
    return accepted;
}

double CDesSectGeomRHS::Area() const
{
    const double Ri = RadiusInner();
    const double Ro = RadiusOuter();
    return m_dB * m_dD - (m_dD - 2.0 * m_dTf) * (m_dB - 2.0 * m_dTw) + 4.0 * Fillet::AREA * Square(Ri) -
           4.0 * Fillet::AREA * Square(Ro);
}

double CDesSectGeomRHS::Ybar() const { return 0.0; }

double CDesSectGeomRHS::Xbar() const { return 0.0; }

double CDesSectGeomRHS::Ixx() const
{
    const double Ri = RadiusInner();
    const double Ro = RadiusOuter();
    const double walls = (Cube(m_dD) * m_dB - Cube(m_dD - 2.0 * m_dTf) * (m_dB - 2.0 * m_dTw)) / 12.0;
    // Own terms of the spandrels about their face, yet transfer from their centroid, as in the angle: kept for
    // compatibility.
    const double inner = 4.0 * Fillet::AREA * Square(Ri) * Square(m_dD / 2.0 - m_dTf - Fillet::CENTROID * Ri) +
                         4.0 * Fillet::FACE_SECOND_MOMENT * Fourth(Ri);
    const double outer = 4.0 * Fillet::AREA * Square(Ro) * Square(m_dD / 2.0 - Fillet::CENTROID * Ro) +
                         4.0 * Fillet::FACE_SECOND_MOMENT * Fourth(Ro);
    return walls + inner - outer;
}

double CDesSectGeomRHS::Iyy() const
{
    const std::unique_ptr<CDesSectGeomRHS> turned(static_cast<CDesSectGeomRHS*>(Clone()));
    turned->Rotate90Clockwise();
    return turned->Ixx();
}

double CDesSectGeomRHS::Ixy() const { return 0.0; }

double CDesSectGeomRHS::Sxx() const
{
    const double Ri = RadiusInner();
    const double Ro = RadiusOuter();
    const double walls = (Square(m_dD) * m_dB - Square(m_dD - 2.0 * m_dTf) * (m_dB - 2.0 * m_dTw)) / 4.0;
    const double inner = 4.0 * Fillet::AREA * Square(Ri) * (m_dD / 2.0 - m_dTf - Fillet::CENTROID * Ri);
    const double outer = 4.0 * Fillet::AREA * Square(Ro) * (m_dD / 2.0 - Fillet::CENTROID * Ro);
    return walls + inner - outer;
}

double CDesSectGeomRHS::Syy() const
{
    const std::unique_ptr<CDesSectGeomRHS> turned(static_cast<CDesSectGeomRHS*>(Clone()));
    turned->Rotate90Clockwise();
    return turned->Sxx();
}

double CDesSectGeomRHS::Zxx() const { return Ixx() / (m_dD / 2.0); }

double CDesSectGeomRHS::Zyy() const
{
    const std::unique_ptr<CDesSectGeomRHS> turned(static_cast<CDesSectGeomRHS*>(Clone()));
    turned->Rotate90Clockwise();
    return turned->Zxx();
}

double CDesSectGeomRHS::J() const
{
    // Bredt: 4 Ah² / ∮ ds/t over the mid-line, here of a box of four plates.
    if (IsWelded())
        return 2.0 * m_dTw * m_dTf * Square(m_dB - m_dTw) * Square(m_dD - m_dTf) /
               (m_dD * m_dTf + m_dB * m_dTw - Square(m_dTw) - Square(m_dTf));

    // EN 10210-2 and EN 10219-2, annex on section properties: Bredt's term of a mid-line with rounded corners, and that of
    // the open strip.
    const double t = (m_dTw + m_dTf) / 2.0;
    const double rc = (RadiusOuter() + RadiusInner()) / 2.0;
    const double h = m_dD - t;
    const double b = m_dB - t;
    const double Ah = h * b - Fillet::FOUR_AREA * Square(rc);
    const double p = 2.0 * (h + b) - 2.0 * Fillet::FOUR_AREA * rc;
    return 4.0 * Square(Ah) * t / p + Cube(t) * p / 3.0;
}

CString CDesSectGeomRHS::SectGeomString(const CDesFormat& fmt)
{
    CString text = FabricationText() + L"RHS section dimensions:\n";
    AddDimension(text, L"\tD  = ", fmt, m_dD);
    AddDimension(text, L"\tB  = ", fmt, m_dB);
    AddDimension(text, L"\tTf = ", fmt, m_dTf);
    AddDimension(text, L"\tTw = ", fmt, m_dTw);
    AddDimension(text, L"\tRo = ", fmt, RadiusOuter());
    AddDimension(text, L"\tRi = ", fmt, RadiusInner());
    return text;
}

double CDesSectGeomRHS::RadiusInner() const
{
    if (FabType() == Fabrication::HOT_ROLLED) return m_dTf;
    if (FabType() == Fabrication::COLD_FORMED) return 1.5 * m_dTf;
    return 0.0;
}

double CDesSectGeomRHS::RadiusOuter() const
{
    if (FabType() == Fabrication::HOT_ROLLED) return 1.5 * m_dTf;
    if (FabType() == Fabrication::COLD_FORMED) return 2.5 * m_dTf;
    return 0.0;
}

void CDesSectGeomRHS::Rotate90Clockwise()
{
    std::swap(m_dD, m_dB);
    std::swap(m_dTf, m_dTw);
}

} // namespace Keltrix::Steel
