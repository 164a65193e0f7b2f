#pragma once

#include <optional>

#include "keltrix/design/SectionProperties.h"
#include "keltrix/ec3/Annex.h"
#include "keltrix/ec3/Export.h"
#include "keltrix/ec3/Material.h"

// Clauses 6.3.1 to 6.3.3 on plain data. y-y is the major axis and z-z the minor one, as in the standard. N, N·m, Pa, m.
namespace Keltrix::EC3 {

/// Buckling curves.
enum class Curve { A0, A, B, C, D };
/// "a0", "a", "b", "c", "d"
KELTRIX_EC3_API const wchar_t* CurveName(Curve curve);
/// Imperfection factor α, Tables 6.1 and 6.3.
KELTRIX_EC3_API double ImperfectionFactor(Curve curve);

/// φ = 0.5(1 + α(λ - 0.2) + λ²) and χ = 1/(φ + (φ² - λ²)^0.5), at most 1. (6.49)
struct Reduction {
    double phi = 0.0;
    double chi = 0.0;
};
/// χ is 1 up to a slenderness of 0.2; it is 0 for an infinite slenderness and for one that is no number.
KELTRIX_EC3_API Reduction CompressionReduction(double slenderness, double alpha);

/// Buckling curves about both axes.
struct AxisCurves {
    Curve y = Curve::D;
    Curve z = Curve::D;
    const wchar_t* assumed = nullptr; ///< why these, where Table 6.2 has no row for the section; null where it has one
};
/// Table 6.2. Of a welded box the curve of thick welds where the walls are so thick that it can hold; the input has no weld sizes.
/// The table has no row for a rolled section with h/b > 1.2 and a flange above 100 mm: that of 40 to 100 mm, as the published tables of
/// the heaviest columns have it, with `assumed`.
KELTRIX_EC3_API AxisCurves CompressionCurves(const Design::SectionProperties& section, Grade grade);

/// Elastic critical force of flexural buckling, π² E I/L².
KELTRIX_EC3_API double FlexuralNcr(double E, double I, double L);
/// (G It + π² E Iw/L²)/i0² with i0² = iy² + iz² + the square of the shear centre's distance.
KELTRIX_EC3_API double TorsionalNcr(const Design::SectionProperties& section, double E, double G, double L);
/// Elastic critical force of torsional-flexural buckling of a section with one axis of symmetry: `Ncr` is that of flexure about the axis of
/// symmetry, y0 the distance of shear centre and centroid along it.
KELTRIX_EC3_API double TorsionalFlexuralNcr(double Ncr, double NcrT, double y0, double i0);

/// Buckling resistance of a strut, 6.3.1.1.
struct StrutResistance {
    double Ncr = 0.0;
    double slenderness = 0.0;
    Reduction reduction;
    Curve curve = Curve::D;
    double NbRd = 0.0;
};
/// `area` is A, or Aeff in class 4.
KELTRIX_EC3_API StrutResistance BuckleStrut(double Ncr, double area, double fy, double gammaM1, Curve curve);

/// How the reduction factor for lateral-torsional buckling is found.
struct LateralRule {
    const wchar_t* clause = L"";
    Curve curve = Curve::D;
    double lambda0 = 0.2;
    double beta = 1.0;
    bool isModified = false; ///< χLT is divided by f of 6.3.2.3(2)
};
/// 6.3.2.3 for rolled and welded I and H sections, and what the annex adds to them; 6.3.2.2 for other sections. Nothing for sections
/// that do not buckle laterally: circular ones, and rectangular hollow ones that are not deeper than wide.
KELTRIX_EC3_API std::optional<LateralRule> LateralRuleOf(const Design::SectionProperties& section, const Annex& annex);

/// 6.3.2: from the slenderness to the reduction factor.
struct LateralReduction {
    double slenderness = 0.0;
    double phi = 0.0;
    double chi = 0.0;
    double kc = 1.0;
    double f = 1.0;
    double chiMod = 0.0; ///< chi/f, at most 1 and 1/λ²; chi itself where the rule has no f
};
/// kc = 1/C1^0.5; kc and f are at most 1.
KELTRIX_EC3_API LateralReduction ReduceLateral(const LateralRule& rule, double slenderness, double C1);

/// Elastic critical moment of a doubly symmetric section between forks, k = kw = 1, loads at the shear centre.
KELTRIX_EC3_API double ElasticMoment(const Design::SectionProperties& section, double E, double G, double L, double C1);

/// Moment along a stretch as Table B.3 has it.
struct MomentPattern {
    double left = 0.0;
    double middle = 0.0;
    double right = 0.0;
    bool linear = true;   ///< nothing bends the stretch but its ends
    bool uniform = true;  ///< not linear: part of it is curved, as under a load along the length
    bool point = false;   ///< not linear: its slope jumps, as under a force at a point
    double largest = 0.0; ///< of largest magnitude, with its sign
};
/// Table B.3. Where both kinds of loads act, or the moment is not linear for another reason, the larger of both rows. The table is for moments that are
/// largest at an end or in the middle: where one between them is larger, not below the row with that moment in place of Ms.
KELTRIX_EC3_API double EquivalentMomentFactor(const MomentPattern& pattern);

/// What Annex B needs of a member.
struct AnnexBInput {
    bool isPlastic = true; ///< class 1 or 2
    bool isHollow = false; ///< Table B.1; otherwise Table B.2
    double ny = 0.0;       ///< N γM1/(χy NRk)
    double nz = 0.0;
    double lambdaY = 0.0;
    double lambdaZ = 0.0;
    double Cmy = 1.0;
    double Cmz = 1.0;
    double CmLT = 1.0;
};
/// Annex B: factors of the moments in (6.61) and (6.62).
struct InteractionFactors {
    double kyy = 0.0;
    double kyz = 0.0;
    double kzy = 0.0;
    double kzz = 0.0;
};
KELTRIX_EC3_API InteractionFactors AnnexB(const AnnexBInput& input);

} // namespace Keltrix::EC3
