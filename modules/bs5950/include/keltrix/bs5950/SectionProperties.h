#pragma once

#include <algorithm>
#include <memory>
#include <optional>

#include "keltrix/bs5950/Export.h"
#include "keltrix/platform/KxData.h"
#include "keltrix/steel/MemberResult.h"
#include "keltrix/steel/SectionGeometry.h"

namespace Keltrix::BS5950 {

enum class Shape { I, UnequalI, Channel, Tee, Angle, RHS, CHS };
enum class Fabrication { Rolled, Welded, Formed };

/// Dimensions and properties of a section by the symbols of the standard: x-x is the axis of the member's major
/// moment, y-y the other one. Lengths in m, areas m², moduli m³, second moments m⁴, warping m⁶.
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
    double d = 0.0; ///< web depth for classification (Figure 5)
    double b = 0.0; ///< flange width for classification: outstand, or internal width of a hollow section
    double b2 = 0.0;
    double thickest = 0.0; ///< thickest element, for Table 9

    double A = 0.0, Ix = 0.0, Iy = 0.0, Sx = 0.0, Sy = 0.0, Zx = 0.0, Zy = 0.0, J = 0.0, H = 0.0;
    double rx = 0.0, ry = 0.0;
    double cy = 0.0; ///< height of the centroid above the bottom edge (half the depth for hollow sections)

    double Avy = 0.0; ///< shear area for shear along y (parallel to the web), clause 4.2.3
    double Avx = 0.0; ///< shear area for shear along x
    double Svx = 0.0; ///< plastic modulus about x of Avy, for the high-shear rule of clause 4.2.5.3
    double Svy = 0.0; ///< plastic modulus about y of Avx

    double hs = 0.0;         ///< distance between flange centres; D - T/2 of a T
    double u = 0.0, x = 0.0; ///< buckling parameter and torsional index, Annex B.2.3, B.2.8; 0 for other shapes
    /// Monosymmetry index: exact, with flange 1 in compression, of an I with unequal flanges (B.2.3) and of a T (B.2.8); of
    /// an angle (B.2.9).
    double psi = 0.0;
    double w = 1.0; ///< warping ratio 4H/(Iy hs²) of a T

    // Angle, principal axes.
    double Iu = 0.0, Iv = 0.0, Zu = 0.0, Zv = 0.0, rv = 0.0, alpha = 0.0;

    bool IsDoublySymmetric() const { return shape == Shape::I || shape == Shape::RHS || shape == Shape::CHS; }
    bool IsHollow() const { return shape == Shape::RHS || shape == Shape::CHS; }
    bool IsWelded() const { return fabrication == Fabrication::Welded; }
    /// H section by depth not above 1.2 times width, as Table 23 has it; of two flanges by the wider one, which has the lower curves.
    bool IsHSection() const { return D <= 1.2 * std::max(B, B2); }
    /// Least radius of gyration: about v-v for an angle.
    double MinorRadius() const { return shape == Shape::Angle ? rv : ry; }
};

/// The section geometry class for the shape of component 0, filled, made as MakeProperties has it; null where this
/// standard's module has none for the shape or the dimensions are not those of a section (not finite, not positive, walls
/// thicker than the section).
KELTRIX_BS5950_API std::unique_ptr<Steel::CDesSectGeom> MakeGeometry(const CSection& section,
                                                                     Steel::CMemberResult* result);

/// Properties of a section. How it is made follows from the component's type and from the shared catalogue's row of its
/// designation: see fabricationAssumed and fabricationContradicted. Nothing where MakeGeometry gives
/// null, nor for cold-formed open sections, which BS 5950-5 covers and Part 1 does not.
KELTRIX_BS5950_API std::optional<SectionProperties> MakeProperties(const CSection& section,
                                                                   Steel::CMemberResult* result);

/// What was assumed of the section's fabrication, as a sentence; null where its type says it and no catalogue row
/// contradicts it.
KELTRIX_BS5950_API const wchar_t* FabricationNote(const SectionProperties& section);

} // namespace Keltrix::BS5950
