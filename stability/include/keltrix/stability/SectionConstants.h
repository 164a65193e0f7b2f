#pragma once

#include <array>
#include <optional>

#include "keltrix/platform/KxData.h"
#include "keltrix/stability/Export.h"

namespace Keltrix::Stability {

/// What the elastic stability of a member needs of its cross-section and material. y is the major axis, z points up along the
/// web from the shear centre. Lengths in m.
struct SectionConstants {
    double E = 0.0;  ///< Young's modulus, N/m²
    double G = 0.0;  ///< shear modulus, N/m²
    double A = 0.0;  ///< area
    double Iy = 0.0; ///< second moment of area about the major axis
    double Iz = 0.0; ///< about the minor axis
    double Iw = 0.0; ///< warping constant about the shear centre; 0 of hollow sections
    double It = 0.0; ///< St Venant torsion constant
    double betaZ =
        0.0; ///< (1/Iy) ∫ ζ (y² + ζ²) dA + 2 zc, ζ up from the centroid; below zero where flange 1 is the larger
    double zc = 0.0; ///< height of the centroid above the shear centre
    /// Heights of flange 1 and flange 2 above the shear centre: middle of the flange's thickness (of the wall, of a hollow
    /// section). Of a T flange 1 is the flange, at 0, and flange 2 the tip of the stem.
    std::array<double, 2> flange{};
    bool offWebPlane = false; ///< the shear centre lies off the plane of the web, as that of a channel

    /// Square of the polar radius of gyration about the shear centre, m².
    double PolarRadius2() const { return (Iy + Iz) / A + zc * zc; }
};

/// The constants of component 0 of a section, from the geometry that the catalogue tables and the checks use: I sections of one
/// or two flange sizes, T sections, channels, rectangular and circular hollow sections. Moduli in N/m².
///
/// Nothing, with a sentence in `reason` (which may be null), for angles, whose principal axes are inclined to the web, for a shape that
/// the library does not know, and for dimensions or moduli that are not those of a section.
KELTRIX_STABILITY_API std::optional<SectionConstants> MakeSectionConstants(const CSection& section, double E, double G,
                                                                           CString* reason);

} // namespace Keltrix::Stability
