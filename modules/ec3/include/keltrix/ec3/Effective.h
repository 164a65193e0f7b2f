#pragma once

#include "keltrix/ec3/ClassActions.h"
#include "keltrix/ec3/Export.h"
#include "keltrix/ec3/Section.h"

namespace Keltrix::EC3 {

/// Effective cross-section of class 4, EN 1993-1-5 4.4: area for uniform compression, moduli for bending alone. Gross values where
/// nothing is lost, and in the classes below.
struct EffectiveSection {
    double Aeff = 0.0;
    double Weffy = 0.0; ///< the smaller one where either flange may be compressed, and of both extreme fibres
    double Weffz = 0.0;
    double eNy = 0.0; ///< shift of the centroid of Aeff: along z, makes a moment about y-y; magnitude
    double eNz = 0.0; ///< the same along y, makes a moment about z-z
    /// Why there is no effective section for compression, for bending about y-y and about z-z; null where there is one. The
    /// value is 0 then.
    const wchar_t* refusalA = nullptr;
    const wchar_t* refusalY = nullptr;
    const wchar_t* refusalZ = nullptr;
};

/// EN 1993-1-5 4.4: effective section for uniform compression and for bending alone with either flange compressed (flanges first,
/// then the web, one pass). Moduli are the smallest of the ways of bending that the actions name about an axis, or of both ways
/// where they name none or where a compression bends the section by the shift of its centroid.
KELTRIX_EC3_API EffectiveSection MakeEffective(const Section& section, const Strength& strength,
                                               const ClassActions& actions = {});

/// EN 1993-1-5 Table 4.1 and 4.2: buckling factor of an internal plate, and of an outstand with its tip (or its supported edge)
/// under the larger compression, for ψ = σ2/σ1. Below the tables' range ψ counts as its end, which is safe.
KELTRIX_EC3_API double BucklingFactorInternal(double psi);
KELTRIX_EC3_API double BucklingFactorTip(double psi);
KELTRIX_EC3_API double BucklingFactorRoot(double psi);
/// EN 1993-1-5 (4.2), (4.3): share of the compressed width that is effective.
KELTRIX_EC3_API double ReductionInternal(double slenderness, double psi);
KELTRIX_EC3_API double ReductionOutstand(double slenderness);
/// The same of a plate under uniform compression; 1 up to class 3.
double UniformReduction(const Plate& plate, const Strength& strength);

} // namespace Keltrix::EC3
