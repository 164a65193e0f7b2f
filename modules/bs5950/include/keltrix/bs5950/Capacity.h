#pragma once

#include <optional>

#include "keltrix/bs5950/Export.h"
#include "keltrix/bs5950/Resistance.h"

namespace Keltrix::BS5950 {

/// Capacities of one section in one grade, as the printed handbooks tabulate them. N and N·m; effective lengths in m.
/// All values come from the same formulas as the checks of a member.
///
///     SectionCapacity c(CSection(L"UB 457x191x67"), CSteelGrade(L"S275", 0, 0, 0, 1));
///     if (c.IsValid()) double Mb = c.Mb(5.0);
class KELTRIX_BS5950_API SectionCapacity {
public:
    SectionCapacity(const CSection& section, const CSteelGrade& grade);

    /// Whether section and grade are covered; otherwise every capacity is 0 and Refusal says why.
    bool IsValid() const { return m_refusal == nullptr; }
    const wchar_t* Refusal() const { return m_refusal; }

    const SectionProperties& Section() const { return m_section; }
    const Material& Steel() const { return m_material; }
    /// Class under bending about x-x (about y-y) alone, and under uniform compression of A py.
    int ClassMajorBending() const;
    int ClassMinorBending() const;
    int ClassCompression() const;

    /// A py of the gross section.
    double SquashLoad() const;
    /// Compression capacity of the cross-section, the class being that at the capacity itself: A py, or in class 4 Aeff py
    /// or A pyr.
    double Pz() const;
    /// Tension capacity of the section, without holes.
    double Pt() const;
    /// Shear capacities along x and along y (parallel to the web).
    double Pvx() const;
    double Pvy() const;
    /// Moment capacities at low shear; about u-u and v-v for an angle.
    double Mcx() const;
    double Mcy() const;
    /// Reduced moment capacities with an axial force of n = F/(A py), 0 to 1 (Annex I.2); nothing where the section is not
    /// doubly symmetric or is class 3 or 4 at that force (compression).
    std::optional<double> Mrx(double n) const;
    std::optional<double> Mry(double n) const;
    /// Compression resistances. The class is that at the resistance itself.
    double Pcx(double LE) const;
    double Pcy(double LE) const;
    /// Buckling resistance moment, at most Mcx; flange 1 in compression. About u-u for an angle.
    double Mb(double LE) const;

private:
    template <class Resistance>
    double AtOwnClass(Resistance resistance) const;
    double Pc(Axis axis, double LE) const;
    std::optional<double> Mr(Axis axis, double n) const;
    double NominalMoment(Axis axis) const;

    SectionProperties m_section;
    Material m_material;
    SectionDesign m_design;
    const wchar_t* m_refusal = nullptr;
};

} // namespace Keltrix::BS5950
