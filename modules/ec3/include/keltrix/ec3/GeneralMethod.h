#pragma once

#include <algorithm>

#include "keltrix/ec3/Buckling.h"
#include "keltrix/ec3/Export.h"

// 6.3.4 on plain data.
namespace Keltrix::EC3 {

/// In-plane state of a member for αult,k.
struct InPlaneInput {
    AnnexBInput factors; ///< ny is NEd/(χy NRk), with its factors of Table B.3
    double axial = 0.0;  ///< NEd/NRk
    double moment = 0.0; ///< My,Ed/My,Rk
};
/// αult,k: the factor of all actions at which in-plane buckling, N/(χy NRk) + kyy My/My,Rk with kyy of Annex B for the enlarged force, or
/// the cross-section by linear addition reaches 1. Infinite without actions.
KELTRIX_EC3_API double InPlaneAmplifier(const InPlaneInput& input);

/// 6.3.4: slenderness of all actions at once, and the reduction factors that come of it.
struct GeneralReduction {
    double slenderness = 0.0; ///< λ̄op
    double chi = 1.0;         ///< of flexural buckling, curve of z-z
    double chiLT = 1.0;       ///< of lateral-torsional buckling, without f; 1 where the section has no rule

    double Chi() const { return std::min(chi, chiLT); }
};
/// (6.64) and 6.3.4(4)a: the smaller reduction factor counts. χ is 0 for a critical factor of 0.
KELTRIX_EC3_API GeneralReduction ReduceGeneral(double amplifier, double criticalFactor, Curve minor,
                                               const LateralRule* lateral);

} // namespace Keltrix::EC3
