#pragma once

#include "keltrix/ec3/Buckling.h"
#include "keltrix/ec3/Export.h"
#include "keltrix/ec3/Section.h"

// Annex A of EN 1993-1-1 on plain data. N, N·m, m.
namespace Keltrix::EC3 {

/// Moments along a length between supports, as Table A.2 has them.
struct DeflectedMoments {
    bool linear = true;
    double psi = 1.0; ///< of end moments, -1 to 1
    /// Of other diagrams: π² E I δ/(L² M), δ the largest deflection under the moments between ends that do not move and M the largest
    /// moment. 1 of a sine.
    double shape = 1.0;
};
/// Table A.2: Cmi,0 with `share` = NEd/Ncr,i.
KELTRIX_EC3_API double MomentFactorA2(const DeflectedMoments& moments, double share);

/// What Annex A needs of a member. Forces of compression above zero.
struct AnnexAInput {
    bool isPlastic = true; ///< class 1 or 2
    double N = 0.0;
    double NRd = 0.0; ///< A fy/γM1, of class 4 with Aeff
    double NcrY = 0.0, NcrZ = 0.0;
    double NcrT = 0.0; ///< infinite where the section does not buckle by twist
    double chiY = 1.0, chiZ = 1.0;
    double lambdaY = 0.0, lambdaZ = 0.0;
    double lambda0 = 0.0; ///< of lateral-torsional buckling under uniform moment; 0 where it does not occur
    double C1 = 1.0;
    double chiLT = 1.0;
    double My = 0.0, Mz = 0.0;
    double MplyRd = 0.0, MplzRd = 0.0;
    double A = 0.0;  ///< Aeff in class 4
    double Wy = 0.0; ///< elastic, of class 4 effective: εy
    double Wely = 0.0, Welz = 0.0, Wply = 0.0, Wplz = 0.0;
    double It = 0.0, Iy = 0.0;
    DeflectedMoments major, minor;
};

/// The factors and what led to them.
struct AnnexAFactors {
    InteractionFactors k;
    double Cmy0 = 1.0, Cmz0 = 1.0;
    double Cmy = 1.0, Cmz = 1.0, CmLT = 1.0;
    double muY = 1.0, muZ = 1.0;
    double Cyy = 1.0, Cyz = 1.0, Czy = 1.0, Czz = 1.0; ///< 1 in classes 3 and 4
};
/// Table A.1. Infinite factors from a critical force on.
KELTRIX_EC3_API AnnexAFactors AnnexA(const AnnexAInput& input);

} // namespace Keltrix::EC3
