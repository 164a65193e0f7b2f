#pragma once

#include <array>
#include <optional>
#include <vector>

#include "keltrix/design/MomentDiagram.h"
#include "keltrix/stability/Export.h"
#include "keltrix/stability/SectionConstants.h"
#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Stability {

/// How a member is analysed.
struct Options {
    /// The whole member at once. Otherwise each stretch between neighbouring sections that are held against lateral movement
    /// and twist is analysed by itself, and what lies beyond its end sections is neglected.
    bool continuity = false;
    /// Buckled shapes. Without them units between plain forks are solved by a series or a closed form, in a tenth of the time or less; factors
    /// differ by no more than their estimated errors.
    bool shapes = true;
};

/// Without shapes, as checks need it.
inline constexpr Options FACTORS_ALONE{.shapes = false};

/// Buckled shape at a place of the member: lateral displacement of the shear centre, twist, lateral displacement of the
/// flanges. Scaled so that the largest displacement of a flange (or of the shear centre) is 1 m.
struct ShapeSample {
    double x = 0.0;
    double v = 0.0;
    double phi = 0.0; ///< radians
    std::array<double, 2> flange{};
};

/// A factor by which all forces are multiplied when the member buckles, with its shape.
struct CriticalLoad {
    double lambda = 0.0;
    /// Estimated relative error of lambda, from meshes of one and two times as many elements.
    double error = 0.0;
    /// lambda times the largest major-axis moment of the unit, N·m; 0 where no moment bends the unit. Axial forces are then
    /// lambda times those given.
    double Mcr = 0.0;
    std::vector<ShapeSample> shape; ///< may be empty where the options ask for none
};

enum class Outcome {
    Buckles,        ///< there is a critical load for the forces as given
    NothingBuckles, ///< the forces as given do not make it buckle, however large they are: nothing is compressed
    NotHeld         ///< the restraints leave a motion that nothing resists
};

/// One length of the member that is analysed by itself.
struct Unit {
    double start = 0.0; ///< m along the member
    double end = 0.0;
    Outcome outcome = Outcome::NothingBuckles;
    /// Sections between the ends are held against lateral movement and twist, too, and bending on plan is continuous over them.
    bool continuous = false;
    /// False where the end moments of a sub-span do not belong to its shears. The smallest of the critical loads of all
    /// readings of the moments then counts.
    bool balanced = true;
    /// Restraints were left out, because they follow each other more closely than the mesh can be refined. The critical load is then at
    /// most that with all of them.
    bool restraintsLeftOut = false;
    double largestMoment = 0.0; ///< largest magnitude of the major-axis moment, N·m
    /// Largest jump of the moment inside the unit at a section that is free to twist, N·m, and its place. It is taken as a pair of forces at the
    /// flanges that keep their directions. A couple that is applied otherwise, as by two vertical forces, can make the unit buckle at a
    /// third of the factor.
    double largestJump = 0.0;
    double largestJumpAt = 0.0;
    double largestMomentAt = 0.0;
    std::optional<CriticalLoad> positive; ///< the smallest factor above zero
    /// That of smallest magnitude below zero: all forces turned. Of both factors one that is ten thousand times the other
    /// counts as none.
    std::optional<CriticalLoad> negative;
    /// Where it is not held: the free motion, at start and end of the unit.
    std::vector<ShapeSample> freeMotion;
};

/// Elastic critical loads of a member: its units and the one that governs.
struct CriticalLoads {
    CString reason; ///< why there is no answer; empty where there is one
    bool continuity = false;
    /// From left to right. Lengths that are held against lateral movement and twist all along are in none.
    std::vector<Unit> units;
    /// The unit that is not held, or that of the smallest positive factor; -1 where nothing buckles.
    int governing = -1;

    bool IsAnswered() const { return reason.IsEmpty(); }
    const Unit* Governing() const { return governing < 0 ? nullptr : &units[static_cast<std::size_t>(governing)]; }
};

/// Elastic critical loads for lateral-torsional, torsional and minor-axis flexural buckling of a straight prismatic member, as it
/// is held and loaded. The model, its signs and its sources are in docs/stability.md.
///
/// `major` is the major-axis diagram of these points and sub-spans. Axial forces, shears and load heights are taken from the
/// points and sub-spans. Partial restraints and restraint by friction hold nothing. Sub-spans shorter than 1e-9 of the member
/// have no length.
///
/// Input that cannot be analysed gives a reason: numbers that are not finite, positions that descend, a member without
/// length, an unknown reference of a load height, an axial force in a section whose shear centre lies off the web plane. Nothing is
/// thrown except std::bad_alloc. Cost is linear in the number of sub-spans.
KELTRIX_STABILITY_API CriticalLoads FindCriticalLoads(const std::vector<Steel::CMemberPoint>& points,
                                                      const std::vector<Steel::CSubSpan>& subSpans,
                                                      const Design::MomentDiagram& major,
                                                      const SectionConstants& section, const Options& options = {});

} // namespace Keltrix::Stability
