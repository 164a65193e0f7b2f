#pragma once

#include "keltrix/stability/Export.h"
#include "keltrix/stability/SectionConstants.h"

// Struts whose flexure and twist buckle together, in closed form. N.
namespace Keltrix::Stability {

/// Critical forces of the three modes by themselves; infinite where one is held.
struct ModeForces {
    double major = 0.0; ///< flexure about the major axis
    double minor = 0.0; ///< flexure about the minor axis
    double twist = 0.0;
};

/// Smallest force at which twist and the flexure that it is coupled with buckle together; that of twist alone where the shear centre is the
/// centroid; infinite where twist is held. The offsets of the shear centre from the centroid along the two axes are shares of the polar radius about
/// the shear centre: one along the major axis couples flexure about the major axis with twist. The smallest root of Timoshenko and Gere,
/// Theory of Elastic Stability, (5-38). Where the modes have different lengths it is a lower bound of the critical force, because their shapes
/// then do less work on each other than equal ones.
KELTRIX_STABILITY_API double CoupledForce(double alongMajor, double alongMinor, const ModeForces& forces);

/// Smallest force, the same all along, at which a length (m) between two forks buckles by lateral displacement and twist in one half-wave. Only for
/// sections whose shear centre lies in the plane of the web. The smaller root of (1 - zc²/i0²) N² - (Pz + Pt) N + Pz Pt = 0: Timoshenko and Gere,
/// Theory of Elastic Stability, 5.6.
KELTRIX_STABILITY_API double StrutForceBetweenForks(const SectionConstants& section, double length);

} // namespace Keltrix::Stability
