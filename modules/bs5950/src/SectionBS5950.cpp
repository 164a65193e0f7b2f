#include "keltrix/bs5950/SectionBS5950.h"

#include <cmath>

namespace Keltrix::BS5950 {

void CSectionBS5950::SectionChanged()
{
    m_material.reset();
    m_classification.reset();
}

bool CSectionBS5950::SetKeltrixSec(const CSection& sec, Steel::CMemberResult* const result)
{
    const std::optional<SectionProperties> properties = MakeProperties(sec, result);
    if (!properties) return false;
    CSectionCodeBase::SetKeltrixSec(sec, result);
    CSectionCodeBase::SetSteelDesignProp(GetGrade());
    m_properties = *properties;
    m_hasSection = true;
    return true;
}

bool CSectionBS5950::SetSteelDesignProp(const CSteelGrade& grade)
{
    SectionChanged();
    return CSectionCodeBase::SetSteelDesignProp(grade);
}

CString CSectionBS5950::SectGeomString(const CDesFormat& fmt)
{
    const std::unique_ptr<Steel::CDesSectGeom> geometry = MakeGeometry(GetKeltrixSec(), nullptr);
    return geometry ? geometry->SectGeomString(fmt) : CString();
}

double CSectionBS5950::Ixy() const
{
    if (m_properties.shape != Shape::Angle) return 0.0;
    return -0.5 * (m_properties.Iu - m_properties.Iv) * std::sin(2.0 * m_properties.alpha);
}

double CSectionBS5950::Alpha() const
{
    return m_properties.shape == Shape::Angle ? m_properties.alpha : CSectionCodeBase::Alpha();
}

int CSectionBS5950::SectionClass() const { return m_hasSection && Steel().IsValid() ? PresentClass().cls : 0; }

const Material& CSectionBS5950::Steel() const
{
    if (!m_material) m_material = MakeMaterial(GetGrade(), m_properties.thickest);
    return *m_material;
}

SectionDesign CSectionBS5950::Design() const
{
    SectionDesign design;
    design.netGross = NetGross();
    design.plasElas = PlasElas();
    return design;
}

Actions CSectionBS5950::LeastActions() const
{
    constexpr double NOISE = 1e-6;
    const double py = Steel().py;
    Actions a;
    a.F = NOISE * m_properties.A * py;
    a.Mx = NOISE * m_properties.Zx * py;
    a.My = NOISE * m_properties.Zy * py;
    return a;
}

Actions CSectionBS5950::ActionsOf(const Vec3<double>& force, const Vec3<double>& moment) const
{
    const Actions least = LeastActions();
    const auto significant = [](double value, double noise) { return std::abs(value) > noise ? value : 0.0; };
    Actions a;
    a.F = significant(force.x, least.F);
    a.Mx = significant(moment.y, least.Mx);
    a.My = significant(moment.z, least.My);
    a.Fvx = std::abs(force.y);
    a.Fvy = std::abs(force.z);
    a.Mt = moment.x;
    return a;
}

const Classification& CSectionBS5950::PresentClass() const
{
    if (!m_classification) m_classification = Classify(m_properties, Steel(), PresentActions());
    return *m_classification;
}

} // namespace Keltrix::BS5950
