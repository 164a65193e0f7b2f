#pragma once

#include <vector>

#include "keltrix/bs5950/Results.h"
#include "keltrix/bs5950/SectionBS5950.h"

namespace Keltrix::BS5950 {

/// The local rules for the cross-section of one member: what they need that no action changes, and the evaluation of a
/// position. Refers to the section, which must stay as it is.
class CrossSection {
public:
    /// `moreExact`: design option 2. `eccentricTies`: clause 4.6.3.1 applies to ties of this section.
    /// `spacing`: of transverse stiffeners of the web, m.
    CrossSection(const CSectionBS5950& section, bool moreExact, bool eccentricTies, double spacing);

    /// Fills everything that follows from the position's actions.
    void Evaluate(PositionResult& p) const;

    const CSectionBS5950& Section() const { return m_section; }
    const SectionProperties& Properties() const { return m_s; }
    const Material& Steel() const { return m_m; }
    bool IsMoreExact() const { return m_moreExact; }
    /// Shears along the web and along the flanges above which a moment capacity depends on the shear.
    double HighShearY() const;
    double HighShearX() const;
    /// Magnitudes of a quantity at which the rules change their formula.
    std::vector<double> AxialThresholds() const;
    std::vector<double> ShearThresholdsY() const;
    std::vector<double> ShearThresholdsX() const;

private:
    void SetMoments(PositionResult& p) const;
    void SetCapacities(PositionResult& p) const;
    void SetThinWebs(PositionResult& p) const;
    void SetUtilisations(PositionResult& p) const;
    bool MoreExactRuleServes(const PositionResult& p) const;
    void CombineMoreExactly(PositionResult& p) const;

    const CSectionBS5950& m_section;
    const SectionProperties& m_s;
    const Material& m_m;
    SectionDesign m_design;
    bool m_moreExact;
    bool m_eccentricTies;
    double m_Pt, m_eccentricPt, m_Pvy, m_Pvx;
    double m_Vw = 0.0, m_Vwx = 0.0; ///< 0 where shear buckling need not be checked
};

/// A shear and the capacity that it is compared with, N.
struct ShearPair {
    double Fv = 0.0, Pv = 0.0;
};
/// Along one axis for 4.2.3: of a tube the resultant of both directions, 0 where none acts along this one.
ShearPair ShearAlong(const SectionProperties& s, const PositionResult& p, Axis direction);
/// What reduces the moment capacity about one axis in 4.2.5.3: the resultant of a tube; of an angle, whose legs both carry both principal moments,
/// the one of the larger share.
ShearPair ShearBesideMoment(const SectionProperties& s, const PositionResult& p, Axis moment);

/// Whether clause 4.4.4.2 b leaves the moment about an axis to slender flanges, which have no capacity for it.
bool IsLeftToSlenderFlanges(const PositionResult& p, Axis axis);
/// How many of axial force and moments about both axes act together.
int KindsOfAction(const PositionResult& p);
/// Of the rule that combines them.
const wchar_t* CombinationClause(const PositionResult& p);

} // namespace Keltrix::BS5950
