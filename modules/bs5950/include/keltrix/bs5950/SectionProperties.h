#pragma once

#include <algorithm>
#include <optional>

#include "keltrix/bs5950/Export.h"
#include "keltrix/design/SectionProperties.h"

namespace Keltrix::BS5950 {

using Design::Fabrication;
using Design::FabricationNote;
using Design::MakeGeometry;
using Design::Shape;

/// What the standard makes of a section, with its symbols: x-x is the axis of the member's major moment, y-y the other one.
struct SectionProperties : Design::SectionProperties {
    double d = 0.0; ///< web depth for classification (Figure 5)
    double b = 0.0; ///< flange width for classification: outstand, or internal width of a hollow section
    double b2 = 0.0;
    double thickest = 0.0; ///< thickest element, for Table 9

    double Avy = 0.0; ///< shear area for shear along y (parallel to the web), clause 4.2.3
    double Avx = 0.0; ///< shear area for shear along x
    double Svx = 0.0; ///< plastic modulus about x of Avy, for the high-shear rule of clause 4.2.5.3
    double Svy = 0.0; ///< plastic modulus about y of Avx

    double u = 0.0, x = 0.0; ///< buckling parameter and torsional index, Annex B.2.3, B.2.8; 0 for other shapes
    /// Monosymmetry index: exact, with flange 1 in compression, of an I with unequal flanges (B.2.3) and of a T (B.2.8); of
    /// an angle (B.2.9).
    double psi = 0.0;
    double w = 1.0; ///< warping ratio 4H/(Iy hs²) of a T

    /// H section by depth not above 1.2 times width, as Table 23 has it; of two flanges by the wider one, which has the lower curves.
    bool IsHSection() const { return D <= 1.2 * std::max(B, B2); }
};

/// Properties of a section. Nothing where Design::MakeProperties gives nothing, nor for cold-formed open sections, which
/// BS 5950-5 covers and Part 1 does not.
KELTRIX_BS5950_API std::optional<SectionProperties> MakeProperties(const CSection& section,
                                                                   Steel::CMemberResult* result);

} // namespace Keltrix::BS5950
