#pragma once

#include <array>

#include "keltrix/ec3/ClassActions.h"
#include "keltrix/ec3/Effective.h"
#include "keltrix/ec3/Export.h"
#include "keltrix/ec3/Section.h"

namespace Keltrix::EC3 {

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

} // namespace Keltrix::EC3
