#pragma once

#include "keltrix/ec3/Export.h"
#include "keltrix/ec3/Section.h"
#include "keltrix/stability/CoupledBuckling.h"

// Elastic critical forces and moments of sections with one axis of symmetry or none, in closed form. N, N·m, m, Pa.
namespace Keltrix::EC3 {

/// Second moments for flexural buckling and for the moments of the resistances: Iy and Iz, of an angle Iu and Iv.
inline double MajorSecondMoment(const Section& s) { return s.shape == Shape::Angle ? s.Iu : s.Iy; }
inline double MinorSecondMoment(const Section& s) { return s.shape == Shape::Angle ? s.Iv : s.Iz; }

/// Shear centre from the centroid, along the major and along the minor axis: y0 and z0, of an angle along u-u and v-v. Zero where it is
/// less than a millionth of the polar radius.
struct ShearCentre {
    double alongMajor = 0.0; ///< couples flexure about the major axis with twist: channels, angles
    double alongMinor = 0.0; ///< couples flexure about the minor axis with twist: tees, unequal flanges, unequal angles
};
KELTRIX_EC3_API ShearCentre ShearCentreOf(const Section& section);

using Stability::ModeForces; ///< about y-y and z-z, of an angle about u-u and v-v
/// 6.3.1.4: Stability::CoupledForce with the section's shear centre.
KELTRIX_EC3_API double CoupledNcr(const Section& section, const ModeForces& forces);

/// Elastic critical moment under a uniform moment between forks, k = kw = 1: the root of M² = Pz (G It + π² E Iw/L² + β M) with
/// Pz = π² E Iz/L² and the coefficient of monosymmetry β above zero where the larger flange is compressed. Of an angle about u-u, with
/// the sign of β that gives the smaller moment. It is a lower bound for every diagram with that largest moment and all loads at the shear
/// centre where it is taken for each flange that the diagram compresses.
KELTRIX_EC3_API double UniformMcr(const Section& section, double E, double G, double L, bool compressesTop);

/// Moments about u-u and v-v of moments about the directions of an angle's legs. How the angle is turned is not known: the largest magnitudes
/// that either way gives, both at once. Of other shapes the magnitudes themselves.
struct AxisMoments {
    double major = 0.0;
    double minor = 0.0;
};
KELTRIX_EC3_API AxisMoments LargestAxisMoments(const Section& section, double My, double Mz);

} // namespace Keltrix::EC3
