// Circular hollow section: the annulus between the diameters D and D - 2t.

#include <numbers>

#include "keltrix/steel/SectionGeometry.h"
#include "section/DimensionText.h"
#include "section/Powers.h"

namespace Keltrix::Steel {

bool CDesSectGeomCHS::SetKeltrixSec(const CSection& sec, CMemberResult* const result)
{
    if (ShapeCode(sec) == CSecGeom::SHAPE_CHS) {
        const CSecComp& component = sec.Component(0);
        m_dD = component.Dimension(0.0, CSecGeom::DEPTH);
        m_dT = component.Dimension(0.0, CSecGeom::WEB_THICKNESS);
    }
    return CDesSectGeom::SetKeltrixSec(sec, result);
}

double CDesSectGeomCHS::Area() const
{
    // Mean circumference times thickness, which is the annulus exactly.
    return std::numbers::pi * (m_dD - m_dT) * m_dT;
}

double CDesSectGeomCHS::Ybar() const { return 0.0; }

double CDesSectGeomCHS::Xbar() const { return 0.0; }

double CDesSectGeomCHS::Ixx() const
{
    return std::numbers::pi * (Fourth(m_dD) - Fourth(m_dD - 2.0 * m_dT)) * 0.015625; // π/64 (D⁴ - d⁴)
}

double CDesSectGeomCHS::Iyy() const { return Ixx(); }

double CDesSectGeomCHS::Ixy() const { return 0.0; }

double CDesSectGeomCHS::Sxx() const { return (Cube(m_dD) - Cube(m_dD - 2.0 * m_dT)) / 6.0; }

double CDesSectGeomCHS::Syy() const { return Sxx(); }

double CDesSectGeomCHS::Zxx() const { return 2.0 * Ixx() / m_dD; }

double CDesSectGeomCHS::Zyy() const { return Zxx(); }

double CDesSectGeomCHS::J() const
{
    return 2.0 * Ixx(); // polar second moment
}

CString CDesSectGeomCHS::SectGeomString(const CDesFormat& fmt)
{
    CString text = FabricationText() + L"CHS section dimensions:\n";
    AddDimension(text, L"\tD  = ", fmt, m_dD);
    AddDimension(text, L"\tt = ", fmt, m_dT);
    return text;
}

} // namespace Keltrix::Steel
