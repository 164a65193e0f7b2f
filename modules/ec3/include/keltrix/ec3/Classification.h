#pragma once

#include <array>

#include "keltrix/ec3/Export.h"
#include "keltrix/ec3/Section.h"

namespace Keltrix::EC3 {

/// What a member, or a cross-section, carries as far as its class depends on it. N in N.
struct ClassActions {
    double NEd = 0.0;           ///< compression above zero, tension below
    bool compressesTop = false; ///< My compresses flange 1 (top) somewhere
    bool compressesBottom = false;
    bool compressesBack = false; ///< Mz compresses the back of a channel (of other shapes, one side) somewhere
    bool compressesTips = false; ///< Mz compresses the tips, or the other side, somewhere

    bool BendsMajor() const { return compressesTop || compressesBottom; }
    bool BendsMinor() const { return compressesBack || compressesTips; }

    static ClassActions Compression(double NEd) { return {NEd, false, false, false, false}; }
    static ClassActions Major(double NEd = 0.0) { return {NEd, true, true, false, false}; }
    static ClassActions Minor(double NEd = 0.0) { return {NEd, false, false, true, true}; }
};

/// One plate against its row of Table 5.2.
struct PlateClass {
    Plate plate;
    const wchar_t* row = L""; ///< "internal, bending and compression"
    double ratio = 0.0;
    /// Of classes 1, 2 and 3; infinite where there is none, 0 where the table has no such class.
    std::array<double, 3> limit{};
    double alpha = 1.0; ///< compressed part of c under plastic stresses; 1 of uniform compression
    double psi = 1.0;   ///< ratio of the elastic stresses at its edges
    int cls = 1;
};

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

/// Class of a section for its actions, and the properties that all resistances take for it.
struct Classification {
    static constexpr int MAX_PLATES = 6;
    std::array<PlateClass, MAX_PLATES> plates{}; ///< every plate in every way in which it is compressed
    int count = 0;
    int cls = 1;
    EffectiveSection effective;

    double A = 0.0;  ///< gross, or Aeff in class 4
    double Wy = 0.0; ///< Wpl,y, Wel,y or Weff,y; of an angle in class 3 about u-u. 0 where refused
    double Wz = 0.0; ///< the same about z-z, or v-v of an angle
    const wchar_t* WyName = L"Wpl,y";
    const wchar_t* WzName = L"Wpl,z";

    bool IsPlastic() const { return cls <= 2; }
};

/// Table 5.2 for one member or cross-section, all its plates, with α = 0.5(1 + NEd/(fy tw c)) and ψ = 2 NEd/(A fy) - 1 for the webs of
/// sections with equal flanges, and the like from equilibrium for others. A web that My bends is judged so; uniform compression counts
/// only where there is no My at all, of the stem of a tee always. In class 4 the effective section is filled in.
KELTRIX_EC3_API Classification Classify(const Section& section, const Strength& strength, const ClassActions& actions);

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
