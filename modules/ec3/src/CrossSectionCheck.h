#pragma once

#include <vector>

#include "keltrix/design/Findings.h"
#include "keltrix/design/MomentDiagram.h"
#include "keltrix/ec3/CrossSection.h"
#include "keltrix/ec3/Web.h"

namespace Keltrix::EC3 {

/// A cross-section under the actions at one place, with the utilisations of each rule; 0 where a rule does not apply.
struct Position {
    double x = 0.0;
    int subSpan = 0; ///< counted from 0
    Design::Place place = Design::Place::LeftEnd;
    Actions actions;
    double torsion = 0.0;

    double tension = 0.0;
    double compression = 0.0;
    double major = 0.0; ///< 6.2.5, without shear
    double minor = 0.0;
    double shearMajor = 0.0;
    double shearMinor = 0.0;
    double shearBuckling = 0.0;
    double shearBucklingAcross = 0.0; ///< of the walls b of a box under the shear across
    double rhoZ = 0.0, rhoY = 0.0;    ///< 6.2.8(3)
    double highMajor = 0.0;           ///< 6.2.8; 0 where the shear is not above half of the resistance
    double highMinor = 0.0;
    double shearMoment = 0.0;       ///< EN 1993-1-5 7.1
    double shearMomentAcross = 0.0; ///< the same of the moment about z-z with the walls b
    double combined = 0.0;

    /// Entry of the result record.
    int Entry() const { return 1 + 2 * subSpan + (place == Design::Place::RightEnd ? 1 : 0); }
    double Axial() const { return std::max(tension, compression); }
    double Major() const { return std::max({major, highMajor, shearMoment}); }
    double Minor() const { return std::max({minor, highMinor, shearMomentAcross}); }
    double ShearMajor() const { return std::max(shearMajor, shearBuckling); }
    double ShearMinor() const { return std::max(shearMinor, shearBucklingAcross); }
};

/// Resistances of a section in its class, and the rules at a place.
class CrossSectionCheck {
public:
    CrossSectionCheck(const Section& s, const Strength& m, const Classification& c, double net);

    void Evaluate(Position& p) const;
    /// What remains of actions when those below a millionth of the section's resistance, noise of an analysis, are taken as zero. Moments of an
    /// angle become those about u-u and v-v.
    Actions Significant(const Vec3<double>& force, double My, double Mz) const;
    double NoiseMy() const { return m_noiseMy; }
    double NoiseMz() const { return m_noiseMz; }
    double NoiseN() const { return m_noiseN; }
    /// Whether two of axial force and moments act, or compression of class 4 with a shift of the neutral axis.
    bool IsCombined(const Actions& a) const
    {
        const bool shifts = a.N < 0.0 && (cls.effective.eNy > 0.0 || cls.effective.eNz > 0.0);
        return shifts || (a.N != 0.0) + (a.My != 0.0) + (a.Mz != 0.0) > 1;
    }
    double HalfVz() const { return 0.5 * vcz.value.value_or(0.0); }
    double HalfVy() const { return 0.5 * vcy.value.value_or(0.0); }

    const Section& section;
    const Strength& strength;
    const Classification& cls;
    double netGross;
    Resistance npl, nt, nc, mcy, mcz, vcz, vcy;
    bool bucklesInShear;
    bool bucklesAcross;
    Section turned; ///< by a right angle, for the shear across a box
    Resistance vbw, vbwAcross;

private:
    double m_noiseN, m_noiseMy, m_noiseMz;
};

/// Adds the positions of a sub-span: its ends, the extremes of both moments, and places in between where a utilisation is larger than
/// at all of these. Every reading of an unbalanced sub-span is gone through.
void FindPositions(const CrossSectionCheck& check, const Design::MomentDiagram& major,
                   const Design::MomentDiagram& minor, int subSpan, const Steel::CSubSpan& forces,
                   std::vector<Position>& positions);

} // namespace Keltrix::EC3
