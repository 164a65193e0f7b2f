#pragma once

#include <optional>

#include "keltrix/ec3/Classification.h"
#include "keltrix/ec3/Export.h"
#include "keltrix/ec3/Section.h"

namespace Keltrix::EC3 {

/// A resistance, in N or N·m, with the clause that gave it; without a value, why the standard has no rule for it.
struct Resistance {
    std::optional<double> value;
    const wchar_t* clause = L"";
    const wchar_t* reason = nullptr;

    explicit operator bool() const { return value.has_value(); }
};

/// Actions on a cross-section: N and N·m. An angle's moments are those about u-u and v-v.
struct Actions {
    double N = 0.0;  ///< tension positive
    double My = 0.0; ///< major axis
    double Mz = 0.0; ///< minor axis
    double Vz = 0.0; ///< along the web
    double Vy = 0.0; ///< along the flanges

    double Compression() const { return N < 0.0 ? -N : 0.0; }
};

/// 6.2.3(2)a: A fy/γM0, the plastic resistance of the gross section.
KELTRIX_EC3_API Resistance NplRd(const Section& section, const Strength& strength);
/// 6.2.3(2)b: 0.9 Anet fu/γM2.
KELTRIX_EC3_API Resistance NuRd(const Strength& strength, double Anet);
/// 6.2.3: the smaller of both.
KELTRIX_EC3_API Resistance NtRd(const Section& section, const Strength& strength, double Anet);
/// 6.2.4: A fy/γM0, in class 4 Aeff fy/γM0.
KELTRIX_EC3_API Resistance NcRd(const Section& section, const Strength& strength, const Classification& c);
/// 6.2.5: W fy/γM0 with the modulus of the class; about u-u and v-v for an angle.
KELTRIX_EC3_API Resistance McyRd(const Section& section, const Strength& strength, const Classification& c);
KELTRIX_EC3_API Resistance MczRd(const Section& section, const Strength& strength, const Classification& c);
/// 6.2.6(2): Av (fy/3^0.5)/γM0 along the web (z) and along the flanges (y). Shear buckling is apart.
KELTRIX_EC3_API Resistance VczRd(const Section& section, const Strength& strength);
KELTRIX_EC3_API Resistance VcyRd(const Section& section, const Strength& strength);

/// 6.2.8(3): ρ = (2 VEd/Vpl,Rd - 1)², where VEd is above half of Vpl,Rd; otherwise 0. 1 from Vpl,Rd on.
KELTRIX_EC3_API double ShearReduction(double VEd, double VplRd);
/// 6.2.8: moment resistances with ρ of Vz and of Vy. I sections with equal flanges and rectangular hollow sections lose ρ of the
/// plates along each force, of an I section with Vz alone as in (6.30); others, and class 4, lose the larger ρ over the whole
/// section, which is safe.
KELTRIX_EC3_API Resistance MyVRd(const Section& section, const Strength& strength, const Classification& c, double rhoZ,
                                 double rhoY = 0.0);
KELTRIX_EC3_API Resistance MzVRd(const Section& section, const Strength& strength, const Classification& c, double rhoZ,
                                 double rhoY);

/// 6.2.9.1(5): plastic moment resistance with an axial force of n = |NEd|/Npl,Rd, 0 to 1, without the neglect of small forces that (4)
/// allows; 0 from n = 1 on. I and H with equal flanges, rectangular and circular hollow sections in classes 1 and 2; others have no rule. With shear
/// (6.2.10) n, Npl and Mpl are those of a section that has lost ρ of the plates along the shear.
KELTRIX_EC3_API Resistance MNyRd(const Section& section, const Strength& strength, const Classification& c, double NEd,
                                 double rhoZ = 0.0, double rhoY = 0.0);
KELTRIX_EC3_API Resistance MNzRd(const Section& section, const Strength& strength, const Classification& c, double NEd,
                                 double rhoZ = 0.0, double rhoY = 0.0);

/// Exponents of (6.41).
struct BiaxialExponents {
    double alpha = 1.0;
    double beta = 1.0;
};
KELTRIX_EC3_API BiaxialExponents ExponentsOf(const Section& section, double n);

/// Bending with axial force and shear.
struct Interaction {
    double utilisation = 0.0;        ///< infinite where a resistance is used up by another action
    const wchar_t* clause = L"";     ///< "6.2.9.1(6)", "6.2.1(7)", "6.2.9.2", "6.2.9.3", and "6.2.10" with high shear
    const wchar_t* reason = nullptr; ///< why it is not evaluated; null where it is
    bool highShear = false;
    double rhoZ = 0.0, rhoY = 0.0;
    double n = 0.0;
    double NRd = 0.0;
    double MyRd = 0.0, MzRd = 0.0; ///< the resistances that the moments were held against: MN,Rd, MV,Rd or Mc,Rd
    double My = 0.0, Mz = 0.0;     ///< the moments, eN included
    BiaxialExponents exponents;    ///< 1 and 1 of linear sums
};
/// 6.2.9 and 6.2.10: the largest of My/MN,y, Mz/MN,z and the left side of (6.41) in classes 1 and 2 where 6.2.9.1 has the shape; the
/// linear sum (6.2) elsewhere, by stresses in class 3 (6.42) and with the shift eN in class 4 (6.44). Of a tube in class 3 the moments
/// add as vectors.
KELTRIX_EC3_API Interaction Interact(const Section& section, const Strength& strength, const Classification& c,
                                     const Actions& actions);

} // namespace Keltrix::EC3
