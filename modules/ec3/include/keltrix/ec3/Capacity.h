#pragma once

#include <optional>

#include "keltrix/ec3/Buckling.h"
#include "keltrix/ec3/Classification.h"
#include "keltrix/ec3/CrossSection.h"
#include "keltrix/ec3/Export.h"
#include "keltrix/ec3/Web.h"

namespace Keltrix::EC3 {

/// Resistances of one section in one grade as printed tables have them. N, N·m, m; nothing where the standard has no rule, and nothing at all of a
/// section or a grade that is refused.
class KELTRIX_EC3_API SectionCapacity {
public:
    SectionCapacity(const CSection& section, const CSteelGrade& grade, const Annex& annex);

    /// Why there is none; null where there is.
    const wchar_t* Refusal() const { return m_refusal; }
    bool IsValid() const { return !m_refusal; }
    const EC3::Section& Section() const { return m_section; }
    const Material& Steel() const { return m_material; }
    const Strength& Strengths() const { return m_strength; }

    /// Class under a moment about y-y, about z-z, and under uniform compression.
    const Classification& MajorBending() const { return m_major; }
    const Classification& MinorBending() const { return m_minor; }
    const Classification& Compression() const { return m_compression; }

    std::optional<double> NplRd() const { return IsValid() ? EC3::NplRd(m_section, m_strength).value : std::nullopt; }
    std::optional<double> McyRd() const
    {
        return IsValid() ? EC3::McyRd(m_section, m_strength, m_major).value : std::nullopt;
    }
    std::optional<double> MczRd() const
    {
        return IsValid() ? EC3::MczRd(m_section, m_strength, m_minor).value : std::nullopt;
    }
    std::optional<double> VczRd() const { return IsValid() ? EC3::VczRd(m_section, m_strength).value : std::nullopt; }
    std::optional<double> VcyRd() const { return IsValid() ? EC3::VcyRd(m_section, m_strength).value : std::nullopt; }

    /// EN 1993-1-5 5.2: of webs, and of the walls across, that buckle in shear, stiffened at supports only; nothing where they do not.
    std::optional<double> VbwRd() const;
    std::optional<double> VbwyRd() const;
    /// EN 1993-1-5 6: of the unstiffened web under a force on a stiff bearing of the length ss, which counts up to hw. At the end of the member
    /// the bearing begins there; otherwise it is so far from the end that this does not matter, kF = 6. I and H sections alone.
    std::optional<double> FRd(double ss, bool atEnd) const;

    /// With the axial force n Npl,Rd, 0 <= n <= 1: MN,Rd in classes 1 and 2 of a member with moment and that compression.
    std::optional<double> MNyRd(double n) const;
    std::optional<double> MNzRd(double n) const;

    /// For a buckling length. Where a web can be class 4 in compression: of the gross section up to the force at which it turns class 4
    /// with bending up to fy, then the larger of the effective section's resistance and that force. Torsional buckling
    /// always of the effective section. Of an angle about u-u and v-v.
    std::optional<double> NbyRd(double L) const { return AtOwnClass(Axis::Y, L); }
    std::optional<double> NbzRd(double L) const { return AtOwnClass(Axis::Z, L); }
    /// Nothing for hollow sections. Torsional-flexural, with the same length for flexure, where the shear centre is not the centroid.
    std::optional<double> NbTRd(double L) const;
    /// Between forks, with the moment's shape factor; with either flange compressed, the smaller one. Nothing for a factor other than 1 where the
    /// section is not symmetrical about the major axis. Of an angle about u-u, uniform moment.
    std::optional<double> MbRd(double L, double C1) const;

private:
    enum class Axis { Y, Z, T };
    double Nb(Axis axis, double L, double area) const;
    std::optional<double> AtOwnClass(Axis axis, double L) const;

    EC3::Section m_section;
    Material m_material;
    Strength m_strength;
    const Annex* m_annex = nullptr;
    const wchar_t* m_refusal = nullptr;
    Classification m_major, m_minor, m_compression;
};

} // namespace Keltrix::EC3
