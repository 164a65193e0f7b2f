#pragma once

#include <limits>

#include "keltrix/bs5950/Classification.h"
#include "keltrix/bs5950/Export.h"
#include "keltrix/bs5950/Material.h"
#include "keltrix/bs5950/SectionProperties.h"

namespace Keltrix::BS5950 {

// Formulas of the standard, one function per rule. SI: m, N, N·m, Pa.

enum class Axis { X, Y };

/// What is known of a section's design beyond its geometry.
struct SectionDesign {
    double netGross = 1.0; ///< net to gross area
    double plasElas = 1.2; ///< limit of Mc in terms of py Z, clause 4.2.5.1: 1.2 or 1.5
};

// Tension, 4.6

/// Clause 4.6.1 with 3.4.3: Pt = py Ae, Ae = Ke times the net area, at most the gross area.
KELTRIX_BS5950_API double TensionCapacity(const SectionProperties& s, const Material& m, double netGross);
/// Clause 4.6.3.1: a2, the gross area less that of the connected element, the latter of the full width of the smaller leg, the
/// web of a channel or the flange of a T; 0 for other shapes.
KELTRIX_BS5950_API double UnconnectedArea(const SectionProperties& s);
/// Clause 4.6.3.1: angle through one leg, channel through its web or T through its flange, bolted, the moment of the
/// eccentricity neglected: Pt = py(Ae - 0.5 a2), not below 0, a2 the larger possible unconnected part.
KELTRIX_BS5950_API double EccentricTensionCapacity(const SectionProperties& s, const Material& m, double netGross);

// Shear, 4.2.3 and 4.4.5

/// Clause 4.2.3: Pv = 0.6 py Av. Axis Y is along the web.
KELTRIX_BS5950_API double ShearCapacity(const SectionProperties& s, const Material& m, Axis direction);
/// No intermediate stiffeners: a stiffener spacing that reaches to infinity.
inline constexpr double UNSTIFFENED = std::numeric_limits<double>::infinity();

/// Whether clause 4.4.5 asks for a shear buckling check of the plates that carry a shear in this direction between two
/// others: d/t above 70ε rolled, 62ε welded. Axis Y: the web of I sections and channels, the walls D of a rectangular
/// hollow section. Axis X: its walls B, with b/T.
KELTRIX_BS5950_API bool NeedsShearBuckling(const SectionProperties& s, const Material& m, Axis direction);
/// Annex H.1: shear buckling strength qw of a web of d/t, its transverse stiffeners a/d apart: qe = (1 + 0.75/(a/d)²)
/// (1000/(d/t))² for a/d above 1, (0.75 + 1/(a/d)²)(1000/(d/t))² up to 1, N/mm².
KELTRIX_BS5950_API double ShearBucklingStrength(double depthToThickness, double pyw,
                                                double spacingToDepth = UNSTIFFENED);
/// Clause 4.4.5.2: simple shear buckling resistance Vw = d t qw of the plates that NeedsShearBuckling speaks of, with
/// transverse stiffeners `spacing` (m) apart; 0 where there are none.
KELTRIX_BS5950_API double ShearBucklingResistance(const SectionProperties& s, const Material& m, Axis direction,
                                                  double spacing = UNSTIFFENED);

/// Clause 4.4.3: least thickness of the plates that NeedsShearBuckling speaks of, m; 0 where there are none.
struct MinimumWebThickness {
    double serviceability = 0.0; ///< 4.4.3.2
    double flangeBuckling = 0.0; ///< 4.4.3.3, so that the compression flange does not buckle into the web
    double actual = 0.0;
    double Required() const { return serviceability > flangeBuckling ? serviceability : flangeBuckling; }
    /// Exactly the required thickness will do, whatever its last digit.
    bool IsMet() const { return actual >= Required() * (1.0 - 1e-9); }
};
/// 4.4.3.2: d/250, and d/250 (a/d)^0.5 with transverse stiffeners up to a = d apart. 4.4.3.3: d/250 (pyf/345), and d/250
/// (pyf/455)^0.5 with stiffeners up to a = 1.5d apart.
KELTRIX_BS5950_API MinimumWebThickness WebThicknessLimits(const SectionProperties& s, const Material& m, Axis direction,
                                                          double spacing = UNSTIFFENED);

// Webs under concentrated loads, 4.5

/// A load or reaction that acts on a flange in the plane of the web. Lengths in m.
struct WebLoad {
    double stiffBearing = 0.0; ///< b1, clause 4.5.1.3
    /// be, from the nearer end of the member to the near end of the stiff bearing.
    double bearingToEnd = std::numeric_limits<double>::infinity();
    /// ae, from the nearer end of the member to the load.
    double loadToEnd = std::numeric_limits<double>::infinity();
    bool onFlange1 = true;
    /// LE of the web as a strut (4.5.3.1) where the loaded flange is not held against rotation relative to the web and
    /// against lateral movement relative to the other flange; 0 where it is held, which gives 0.7d.
    double effectiveLength = 0.0;
};
/// Clause 4.5.2.1: bearing capacity of the unstiffened web, Pbw = (b1 + n k) t pyw; n = 5, near an end of the member 2 +
/// 0.6 be/k up to 5; k = T + r of rolled sections, T of welded ones. I sections and channels; 0 for other shapes.
KELTRIX_BS5950_API double WebBearingCapacity(const SectionProperties& s, const Material& m, const WebLoad& load);
/// Clause 4.5.3.1: buckling resistance of the unstiffened web, Px = 25ε t/((b1 + n k) d)^0.5 Pbw, times (ae + 0.7d)/(1.4d)
/// where ae is below 0.7d, and times 0.7d/LE where the flange is not held. I sections and channels; 0 for other shapes.
KELTRIX_BS5950_API double WebBucklingResistance(const SectionProperties& s, const Material& m, const WebLoad& load);

// Moment, 4.2.5

/// ρ = (2 Fv/Pv - 1)², 0 up to Fv = 0.6 Pv; 1 from Fv = Pv on.
KELTRIX_BS5950_API double HighShearFactor(double Fv, double Pv);
/// Clause 4.2.5.2, 4.2.5.3 and the limit of 4.2.5.1, with the design strength of the class. Fv is the coexistent shear along the web (axis X) or along the
/// flanges (axis Y).
KELTRIX_BS5950_API double MomentCapacity(const SectionProperties& s, const Material& m, const Classification& c,
                                         const SectionDesign& design, Axis axis, double Fv);
/// Clause 4.4.4.2 b: whether the flanges alone may carry a moment about the axis: none of them is class 4.
KELTRIX_BS5950_API bool FlangesAloneMayCarryMoment(const Classification& c, Axis axis);
/// Clause 4.4.4.2 b: moment capacity of the flanges alone, that of the weaker one at py times the distance of their
/// centres, for a shear above 0.6 Vw along the web; the plates of the web carry none of the moment, so that their class
/// does not matter. About x-x for every shape with two flanges, about y-y for rectangular hollow sections, 0 otherwise.
KELTRIX_BS5950_API double FlangesOnlyMomentCapacity(const SectionProperties& s, const Material& m, Axis axis);

/// Annex I.2: reduced plastic modulus for an axial force of n = F/(A py), 0 <= n <= 1, of doubly symmetric sections.
KELTRIX_BS5950_API double ReducedPlasticModulus(const SectionProperties& s, Axis axis, double n);
/// Mr = py Sr, at most the given moment capacity at low shear. Doubly symmetric sections of class 1 and 2.
KELTRIX_BS5950_API double ReducedMomentCapacity(const SectionProperties& s, const Material& m, Axis axis, double n,
                                                double Mc);

// Compression, 4.7

/// Robertson constants of Table 23 at 40 mm and below, and above; `over` is the weight of the second: 0 up to
/// 40 mm, 0.5 between 40 and 50 mm, 1 from 50 mm on.
struct StrutCurve {
    double a = 5.5;
    double aOver = 5.5;
    double over = 0.0;

    /// 'a' to 'd'.
    KELTRIX_BS5950_API static wchar_t Name(double robertson);
};
/// Table 23.
KELTRIX_BS5950_API StrutCurve Table23(const SectionProperties& s, Axis axis);
/// Annex C.1: compressive strength for a slenderness and a Robertson constant. py for slenderness up to λ0, 0 for an
/// infinite one.
KELTRIX_BS5950_API double CompressiveStrength(double slenderness, double py, double robertson,
                                              double E = ELASTIC_MODULUS);
/// Clause 4.7.5: whether pc is that of a design strength less 20 N/mm²: welded I, H and box sections.
KELTRIX_BS5950_API bool LosesStrengthByWelding(const SectionProperties& s);
/// Clauses 4.7.4, 4.7.5: compressive strength of a section of the class and with the curve of Table 23. The slenderness is
/// that of the gross section; it counts times (Aeff/Ag)^0.5 where Aeff is below Ag. The design strength is that of the class
/// (3.6.5), less 20 N/mm² where LosesStrengthByWelding.
KELTRIX_BS5950_API double CompressiveStrength(const SectionProperties& s, const Material& m, const Classification& c,
                                              Axis axis, double slenderness);
/// Clause 4.7.4: Ag pc or Aeff pcs.
KELTRIX_BS5950_API double CompressionResistance(const SectionProperties& s, const Material& m, const Classification& c,
                                                Axis axis, double slenderness);
/// Table 22: effective length over length. Rotation at an end: 0 free, 1 partial, 2 full. `held1`, `held2`: held in
/// position. Infinite where the table has no row (an end not held opposite one without full rotational restraint).
KELTRIX_BS5950_API double Table22(bool held1, int rotation1, bool held2, int rotation2);

// Lateral-torsional buckling, 4.3 and Annex B

/// λL0 = 0.4 (π²E/py)^0.5.
KELTRIX_BS5950_API double LimitingSlendernessLT(double py, double E = ELASTIC_MODULUS);
/// Annex B.2.1, B.2.2: bending strength.
KELTRIX_BS5950_API double BendingStrength(double lambdaLT, double py, bool welded, double E = ELASTIC_MODULUS);
/// Table 15: slenderness LE/ry up to which a rectangular hollow section of D/B needs no check, py in Pa; infinite for
/// D/B up to 1, linear between the rows, 0 beyond D/B = 4.
KELTRIX_BS5950_API double Table15(double DoverB, double py);

/// λLT and what it was made of.
struct SlendernessLT {
    double lambda = 0.0; ///< LE/ry (LE/rv for an angle)
    double betaW = 1.0;
    double u = 0.0, v = 1.0, x = 0.0;
    double phi = 0.0; ///< φb of a box, φa of an angle
    double lambdaLT = 0.0;
    const wchar_t* source = L"";
};
/// Clause 4.3.6.7 and Annex B.2.3, B.2.6, B.2.8, B.2.9. `flange1InCompression` matters for singly symmetric sections.
/// 0 for shapes and axes that do not buckle laterally.
KELTRIX_BS5950_API SlendernessLT LateralTorsionalSlenderness(const SectionProperties& s, double LE, double betaW,
                                                             bool flange1InCompression);
/// βW of clause 4.3.6.9: the modulus of the class over Sx.
KELTRIX_BS5950_API double BetaW(const SectionProperties& s, const Classification& c);
/// Whether moment about x-x can cause lateral-torsional buckling at all: not for circular hollow sections, nor where Iy is not
/// below Ix. A welded box can be stiffer about x-x though it is wider than deep.
KELTRIX_BS5950_API bool CanBuckleLaterally(const SectionProperties& s);
/// Clause 4.3.6.1: whether Table 15 lets a rectangular hollow section of this slenderness LE/ry have Mb = Mc. The table is for
/// the hollow sections of Table 12 with one wall thickness; welded boxes have B.2.6 throughout.
KELTRIX_BS5950_API bool IsWithinTable15(const SectionProperties& s, const Material& m, double slenderness);
/// Clause 4.3.6.4: Mb = pb times the modulus of the class, with its design strength (3.6.5) in pb and λL0; clause 4.3.8 for
/// angles, about u-u. Reads Wx and pyMomentX of the class.
KELTRIX_BS5950_API double BucklingResistanceMoment(const SectionProperties& s, const Material& m,
                                                   const Classification& c, double LE, bool flange1InCompression);
/// Clause 4.3.8.3, equal-leg angle bent about x-x: Mb by the simplified rule.
KELTRIX_BS5950_API double AngleMbSimplified(const SectionProperties& s, const Material& m, double LE,
                                            bool heelInCompression);

// Equivalent uniform moment factors

/// Table 18: mLT from the moments at the quarter points and the largest, at least 0.44; 1 for no moment.
KELTRIX_BS5950_API double MomentFactorLT(double M2, double M3, double M4, double Mmax);
/// Table 26: m from the signed moments at the quarter points, the largest in the central half and the largest; 1 for no
/// moment.
KELTRIX_BS5950_API double MomentFactor(double M2, double M3, double M4, double M24, double Mmax);

} // namespace Keltrix::BS5950
