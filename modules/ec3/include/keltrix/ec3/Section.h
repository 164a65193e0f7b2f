#pragma once

#include <array>
#include <optional>

#include "keltrix/design/SectionProperties.h"
#include "keltrix/ec3/Export.h"

namespace Keltrix::EC3 {

using Design::Fabrication;
using Design::Shape;

/// Strengths of a section's material and the partial factors and national choices that go with them. Stresses in Pa.
struct Strength {
    double fy = 0.0;
    double fu = 0.0;
    double epsilon = 1.0; ///< (235 N/mm²/fy)^0.5
    double gammaM0 = 1.0;
    double gammaM1 = 1.0;
    double gammaM2 = 1.25;
    double eta = 1.0; ///< EN 1993-1-5 5.1(2)
    double E = 210e9;
    double G = 81e9;
};

/// What supports a plate of the section, for Table 5.2 and EN 1993-1-5 Tables 4.1 and 4.2.
enum class PlateKind { Internal, Outstand, Leg, Tube };
/// Where a plate is: in a web (side wall, stem), in flange 1 (top) or 2 (bottom), one of an angle's legs, the tube itself.
enum class PlatePlace { Web, Flange1, Flange2, VerticalLeg, HorizontalLeg, Tube };

/// A flat part of the cross-section. Lengths in m.
struct Plate {
    const wchar_t* name = L"";      ///< "web", "flange 1"
    const wchar_t* ratioName = L""; ///< "c/t"
    PlateKind kind = PlateKind::Internal;
    PlatePlace place = PlatePlace::Web;
    double c = 0.0; ///< width of Table 5.2; an angle's leg over all; diameter of a tube
    double t = 0.0;
    int count = 1; ///< equal plates of this kind: 2 webs of a box, 2 outstands of a flange

    double Ratio() const { return c / t; }
};

/// What EN 1993-1-1 takes of a section, by its symbols: y-y is the major axis (x-x of the steel library), z-z the minor one (y-y
/// there), z goes up the web and y across. Lengths in m, areas m², moduli m³, second moments m⁴, warping m⁶.
struct Section {
    static constexpr int MAX_PLATES = 3;

    Design::SectionProperties basis; ///< by the symbols and axes of the steel library
    Shape shape = Shape::I;
    Fabrication fabrication = Fabrication::Rolled;

    double h = 0.0, b = 0.0, tw = 0.0, tf = 0.0; ///< b and tf of flange 1 (top)
    double b2 = 0.0, tf2 = 0.0;                  ///< flange 2 (bottom); equal to flange 1 except for the unequal I
    double r = 0.0;                              ///< root radius; 0 where the section counts as welded
    double hw = 0.0;                             ///< clear depth of the web between flanges; of a tee below its flange
    int webs = 1;                                ///< 2 of a rectangular hollow section; 0 of an angle and of a tube
    double thickest = 0.0;                       ///< thickest element, for fy

    double A = 0.0;
    double Iy = 0.0, Iz = 0.0, It = 0.0, Iw = 0.0;
    double Wply = 0.0, Wplz = 0.0;
    double Wely = 0.0, Welz = 0.0; ///< to the farthest fibre; of an angle about its legs' directions
    double iy = 0.0, iz = 0.0;
    double y0 = 0.0,
           z0 = 0.0; ///< shear centre from the centroid; y from the back of a channel or angle towards the tips
    double i0 = 0.0; ///< polar radius of gyration about the shear centre: (iy² + iz² + y0² + z0²)^0.5

    // Angle, principal axes: u-u major, v-v minor.
    double Iu = 0.0, Iv = 0.0, Welu = 0.0, Welv = 0.0, iv = 0.0;

    std::array<Plate, MAX_PLATES> plates{};
    int plateCount = 0;

    bool IsWelded() const { return fabrication == Fabrication::Welded; }
    bool IsHollow() const { return shape == Shape::RHS || shape == Shape::CHS; }
    bool IsDoublySymmetric() const { return shape == Shape::I || IsHollow(); }
    /// One plate between two flanges: I, unequal I, channel.
    bool HasTwoFlanges() const { return shape == Shape::I || shape == Shape::UnequalI || shape == Shape::Channel; }
    double MinorRadius() const { return shape == Shape::Angle ? iv : iz; }
    /// The plate at a place, or null.
    KELTRIX_EC3_API const Plate* Find(PlatePlace place) const;
};

/// Section of the standard. Nothing where Design::MakeProperties gives nothing, nor for cold-formed open sections, which are for
/// EN 1993-1-3.
KELTRIX_EC3_API std::optional<Section> MakeSection(const CSection& section, Steel::CMemberResult* result);

/// 6.2.6(3): shear area for a force along the web (z), and across it (y). Where the standard lists no area for shape and direction
/// (flange of a tee, legs of an angle), 2/3 of the plate along the force, which is the bound of 6.2.6(4) for a parabolic shear flow.
KELTRIX_EC3_API double ShearAreaZ(const Section& section, double eta);
KELTRIX_EC3_API double ShearAreaY(const Section& section);
/// The clause that gave the area: "6.2.6(3)a".
KELTRIX_EC3_API const wchar_t* ShearAreaZClause(const Section& section);
KELTRIX_EC3_API const wchar_t* ShearAreaYClause(const Section& section);

} // namespace Keltrix::EC3
