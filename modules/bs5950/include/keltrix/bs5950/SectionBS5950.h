#pragma once

#include <optional>

#include "keltrix/bs5950/Classification.h"
#include "keltrix/bs5950/Export.h"
#include "keltrix/bs5950/Resistance.h"
#include "keltrix/steel/SectionGeometry.h"

namespace Keltrix::BS5950 {

/// A cross-section under design to BS 5950-1:2000: section, grade and actions, with the class that follows from them.
/// What was derived is dropped when section, grade, forces or moments change and derived again when asked for.
class KELTRIX_BS5950_API CSectionBS5950 : public Steel::CSectionCodeBase {
public:
    CSectionBS5950() = default;
    CSectionBS5950* Clone() const override { return new CSectionBS5950(*this); }

    void ForcesChanged() override { m_classification.reset(); }
    void SectionChanged() override;
    /// False, changing nothing, where the standard's module has no rules for the shape or the dimensions make no
    /// section.
    bool SetKeltrixSec(const CSection& sec, Steel::CMemberResult* const result) override;
    bool SetSteelDesignProp(const CSteelGrade& grade) override;

    double Area() const override { return m_properties.A; }
    CString SectGeomString(const CDesFormat& fmt) override;
    double Ixx() const override { return m_properties.Ix; }
    double Iyy() const override { return m_properties.Iy; }
    double Ixy() const override;
    double Sxx() const override { return m_properties.Sx; }
    double Syy() const override { return m_properties.Sy; }
    double Zxx() const override { return m_properties.Zx; }
    double Zyy() const override { return m_properties.Zy; }
    double J() const override { return m_properties.J; }
    double Gamma() const override { return m_properties.H; }
    /// For an angle by a rule relative to Ixx + Iyy, so that unequal angles of any size get their own axis.
    double Alpha() const override;
    /// Class for the present actions; 0 without a section and a design strength.
    int SectionClass() const override;

    bool HasSection() const { return m_hasSection; }
    const SectionProperties& Properties() const { return m_properties; }
    /// Design strength for the present section and grade.
    const Material& Steel() const;
    /// Net to gross area and the limit of Mc, as the host's section component gives them.
    SectionDesign Design() const;
    bool PlasElasAssumed() const { return PlasElasDefaulted(); }
    /// The present forces and moments in the standard's terms; what is below a millionth of the section's capacity is
    /// analysis noise and counts as zero.
    Actions PresentActions() const
    {
        return ActionsOf({GetForceAxial(), GetShearX(), -GetShearY()}, {GetTorsion(), GetMomentXX(), GetMomentYY()});
    }
    /// The same for forces and moments in the host's element axes.
    Actions ActionsOf(const Vec3<double>& force, const Vec3<double>& moment) const;
    /// Axial force and moments up to which they count as zero.
    Actions LeastActions() const;
    const Classification& PresentClass() const;

private:
    bool m_hasSection = false;
    SectionProperties m_properties;
    mutable std::optional<Material> m_material;
    mutable std::optional<Classification> m_classification;
};

} // namespace Keltrix::BS5950
