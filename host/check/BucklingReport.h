#pragma once

#include <optional>
#include <string>
#include <vector>

#include "keltrix/design/DesignCode.h"
#include "keltrix/stability/CriticalLoad.h"
#include "keltrix/steel/SteelMember.h"

namespace Keltrix::Host {

/// The moduli that a member is analysed with, Pa, and where they come from: "BS 5950-1:2000".
struct Moduli {
    double E = 0.0;
    double G = 0.0;
    std::string source;
};

/// Those that a design code gives to the grade. Without a code, which is null then, those of a grade with a modulus of the user's own
/// and else those of steel, with a Poisson's ratio of 0.3.
Moduli ModuliOf(const Design::DesignCode* code, const CSteelGrade& grade);

/// One length that is analysed by itself, with the forces that its critical factor multiplies.
struct BucklingUnit {
    Stability::Unit found;
    double moment = 0.0;      ///< major-axis moment of the largest magnitude, N·m, below zero where it sags
    double compression = 0.0; ///< the largest in the unit, N; 0 where it is in tension or without axial force
    double Ncr = 0.0;         ///< lambda times the compression, N; 0 where nothing buckles
    std::string freeMotion;   ///< which flange moves where, if the unit is not held; else empty
};

/// The elastic critical load of a member as it is held and loaded.
struct BucklingReport {
    std::string refusal; ///< why there is none; empty where there is one
    Moduli moduli;
    bool continuity = false;
    std::vector<BucklingUnit> units; ///< from left to right
    int governing =
        -1; ///< the unit that is not held, or the first of those of the smallest factor; -1 where nothing buckles
    /// What takes no part of that which the member has, and what else the number stands on; sentences.
    std::vector<std::string> remarks;

    const BucklingUnit* Governing() const
    {
        return governing < 0 ? nullptr : &units[static_cast<std::size_t>(governing)];
    }
    bool IsHeld() const { return !Governing() || Governing()->found.outcome != Stability::Outcome::NotHeld; }
    /// The smallest factor with its shape; null where nothing buckles, the member is not held or there is no answer.
    const Stability::CriticalLoad* Critical() const;
    /// That of the smallest magnitude of all units if all forces turn. Null likewise.
    const Stability::CriticalLoad* CriticalReversed() const;
    /// Whether the member is known to carry more than the forces given before it buckles: analysed, held, and its factor less the
    /// estimated error above 1.
    bool IsStable() const;
};

BucklingReport MakeBucklingReport(Steel::CSteelMemberGen& member, const Moduli& moduli, bool continuity);

/// The buckled shape at a place between its samples, by cubics through them; at the ends outside of them.
Stability::ShapeSample ShapeAt(const std::vector<Stability::ShapeSample>& shape, double x);
/// What a unit shows: its buckled shape, or its free motion; empty where nothing buckles.
const std::vector<Stability::ShapeSample>& ShownShape(const Stability::Unit& unit);

/// "flange 1 (top)" for 0, "flange 2 (bottom)" for 1.
const char* FlangeName(std::size_t flange);

/// The verdict in a sentence without a full stop: "λcr = 1.924, Mcr = 681 kNm at 4.5 m; buckles from 0 m to 9 m".
std::string VerdictSentence(const BucklingReport& report);
/// In percent, rounded up to one figure and to 0.001 % at least: "0.02 %".
std::string ErrorText(double relativeError);

/// The units in words and numbers, a row for each. Columns of forces that no unit has are left out.
struct UnitTable {
    static constexpr const char* NOT_HELD = "not held"; ///< in place of a factor

    std::vector<std::string> head;
    std::vector<std::vector<std::string>> rows;
};
UnitTable MakeUnitTable(const BucklingReport& report);

} // namespace Keltrix::Host
