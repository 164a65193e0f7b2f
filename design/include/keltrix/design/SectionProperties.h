#pragma once

#include <memory>
#include <optional>

#include "keltrix/design/Export.h"
#include "keltrix/platform/KxData.h"
#include "keltrix/steel/MemberResult.h"
#include "keltrix/steel/SectionGeometry.h"

namespace Keltrix::Design {

enum class Shape { I, UnequalI, Channel, Tee, Angle, RHS, CHS };
enum class Fabrication { Rolled, Welded, Formed };
/// "rolled", "welded", "formed"
KELTRIX_DESIGN_API const wchar_t* FabricationName(Fabrication fabrication);
/// "rolled or hot finished", "welded", "cold formed"
KELTRIX_DESIGN_API const wchar_t* FabricationText(Fabrication fabrication);

/// Dimensions and properties of a section that belong to no design code. x-x is the axis of the member's major moment, y-y the
/// other one; y points up, x from the back of a channel or of an angle's vertical leg towards the tips. Lengths in m, areas m²,
/// moduli m³, second moments m⁴, warping m⁶.
struct SectionProperties {
    Shape shape = Shape::I;
    Fabrication fabrication = Fabrication::Rolled;
    /// The section's type does not say how it is made. A catalogue section is made as its row says, any other is welded.
    bool fabricationAssumed = false;
    /// The section's type is not that of its catalogue row. The less favourable of the two counts.
    bool fabricationContradicted = false;

    double D = 0.0;  ///< overall depth; diameter of a circular hollow section; vertical leg of an angle
    double B = 0.0;  ///< width of flange 1 (top); horizontal leg of an angle
    double t = 0.0;  ///< web (stem, wall, leg) thickness
    double T = 0.0;  ///< thickness of flange 1
    double B2 = 0.0; ///< flange 2 (bottom); equal to flange 1 except for the unequal I
    double T2 = 0.0;
    double r = 0.0; ///< root radius

    double A = 0.0, Ix = 0.0, Iy = 0.0;
    double Sx = 0.0, Sy = 0.0; ///< plastic moduli
    double Zx = 0.0, Zy = 0.0; ///< elastic moduli, to the farthest fibre
    double J = 0.0;            ///< St Venant torsion constant
    double H = 0.0;            ///< warping constant; 0 for angles and hollow sections
    double rx = 0.0, ry = 0.0; ///< radii of gyration
    double cx = 0.0; ///< distance of the centroid from the back of a channel or angle; half the width of other shapes
    double cy = 0.0; ///< height of the centroid above the bottom edge (half the depth for hollow sections)
    double hs = 0.0; ///< distance between flange centres; D - T/2 of a T
    /// Shear centre from the centroid, along x and y. Of an unequal I it divides the distance of the flanges as their second
    /// moments about y-y do, of a T it is in the middle of the flange, of an angle where the legs' centre lines meet.
    double x0 = 0.0, y0 = 0.0;
    /// Coefficient of monosymmetry with flange 1 (top) in compression, exact: 2 y0 - ∫ y (x² + y²) dA / Ix, m. Unequal I and T.
    /// Of an unequal angle its magnitude for bending about u-u, taken over the legs without fillets.
    double monosymmetry = 0.0;

    // Angle, principal axes: u-u is the major one, at alpha (radians) from x-x.
    double Iu = 0.0, Iv = 0.0, Zu = 0.0, Zv = 0.0, rv = 0.0, alpha = 0.0;

    bool IsDoublySymmetric() const { return shape == Shape::I || shape == Shape::RHS || shape == Shape::CHS; }
    bool IsHollow() const { return shape == Shape::RHS || shape == Shape::CHS; }
    bool IsWelded() const { return fabrication == Fabrication::Welded; }
    /// Least radius of gyration: about v-v for an angle.
    double MinorRadius() const { return shape == Shape::Angle ? rv : ry; }
};

/// The section geometry class for the shape of component 0, filled, made as MakeProperties has it; null where there is none for
/// the shape or the dimensions are not those of a section: not finite, not positive, or walls, flanges and fillets that do not fit into the outline.
KELTRIX_DESIGN_API std::unique_ptr<Steel::CDesSectGeom> MakeGeometry(const CSection& section,
                                                                     Steel::CMemberResult* result = nullptr);

/// Properties of a section. How it is made follows from the component's type and from the shared catalogue's row of its
/// designation: see fabricationAssumed and fabricationContradicted. Nothing where MakeGeometry gives null.
KELTRIX_DESIGN_API std::optional<SectionProperties> MakeProperties(const CSection& section,
                                                                   Steel::CMemberResult* result);

/// What was assumed of the section's fabrication, as a sentence; null where its type says it and no catalogue row
/// contradicts it.
KELTRIX_DESIGN_API const wchar_t* FabricationNote(const SectionProperties& section);

} // namespace Keltrix::Design
