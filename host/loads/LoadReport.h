#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "keltrix/statics/Combinations.h"
#include "keltrix/statics/Deflections.h"

namespace Keltrix::Host {

/// A beam as the statics answered it, for MakeLoadReport. The analysis has an answer; it and the combinations live as long as this.
struct LoadedBeam {
    const Statics::Analysis& analysis;
    const Statics::Combinations& combinations;
    std::vector<Statics::DeflectionLimit> limits;
    std::vector<Statics::DeflectionCheck> checks; ///< what CheckDeflections found with them
    std::vector<double> camber;                   ///< as it was given to it
    std::string title;
    std::string section;
    std::string grade;
};

/// Sum of the loads of a case, N: straight down, to the right (where x goes on a level member), along y.
struct LoadSum {
    double down = 0.0;
    double right = 0.0;
    double lateral = 0.0;
};

/// A value with its place and the combination that has it. Where the value is nothing, and where there is no
/// combination, `combination` is -1.
struct Governed {
    double value = 0.0;
    double at = 0.0;
    int combination = -1; ///< index in the list of combinations
};

struct GovernedRange {
    Governed greatest;
    Governed least;

    bool IsZero() const { return greatest.value == 0.0 && least.value == 0.0; }
};

/// What a support gives to the member: force straight up and to the right; moment about y; force along y and moment about
/// z; then the first two in the axes of the member, along z and along x. All of them are those of Statics::Reaction on a
/// level member.
enum class ReactionPart { Vertical, Horizontal, Moment, Lateral, LateralMoment, Across, Along };
inline constexpr std::size_t REACTION_PARTS = 7;

/// By the inclination of the member.
double PartOf(const Statics::Reaction& reaction, ReactionPart part, double inclination);

/// What a support gives: in each case with all its loads, unfactored, and over the ultimate combinations.
struct SupportReactions {
    double at = 0.0;
    std::vector<std::array<double, REACTION_PARTS>> ofCase;
    std::array<GovernedRange, REACTION_PARTS> range;

    double OfCase(std::size_t i, ReactionPart part) const { return ofCase[i][static_cast<std::size_t>(part)]; }
    const GovernedRange& RangeOf(ReactionPart part) const { return range[static_cast<std::size_t>(part)]; }
    /// Whether it gives nothing in any case or combination, as what holds a flange alone does.
    bool IsIdle() const;
};

enum class Action { Moment, Shear, Axial, MinorMoment, MinorShear };
inline constexpr std::size_t ACTIONS = 5;

/// An action over the ultimate combinations. Moments sag above zero, tension is above zero.
struct ActionEnvelope {
    /// Greatest and least value of any combination at a place. A jump has two of them at one place.
    struct Sample {
        double at = 0.0;
        double greatest = 0.0;
        double least = 0.0;
    };

    Action action = Action::Moment;
    GovernedRange whole;
    std::vector<GovernedRange> spans; ///< one for each of the analysis' spans
    std::vector<Sample> samples;      ///< along the member, close enough for a drawing
};

/// The deflected member in the serviceability check that is used most; m, downwards, from the line of the unloaded member.
struct DeflectedShape {
    int check = -1;                             ///< index of the check; -1: there is no shape
    std::vector<std::array<double, 2>> samples; ///< place, deflection
};

/// What an engineer wants to know of a beam's loads, as data in SI units. Zeros that rounding has left of larger numbers
/// are zeros. Where several combinations have the same largest value the first one is named.
struct LoadReport {
    std::string title;
    std::string section;
    std::string grade;
    double length = 0.0;
    double inclination = 0.0;
    std::vector<Statics::Span> spans;
    std::vector<Statics::Case> cases;
    std::vector<LoadSum> sums; ///< of each case
    std::vector<Statics::Load> loads;
    std::vector<Statics::Combination> combinations;
    std::vector<SupportReactions> supports;
    std::vector<ActionEnvelope> envelopes; ///< one for each action, in the order of the enumeration
    std::vector<Statics::DeflectionLimit> limits;
    std::vector<Statics::DeflectionCheck> checks;
    DeflectedShape shape;
    std::vector<std::string> notes; ///< of the analysis and of the combinations

    bool HasUltimate() const;
    bool IsLevel() const { return inclination == 0.0; }
    const ActionEnvelope& EnvelopeOf(Action action) const { return envelopes[static_cast<std::size_t>(action)]; }
    /// Whether any support gives this in a case or a combination.
    bool HasReaction(ReactionPart part) const;
};

/// Throws std::invalid_argument where the analysis has no answer, and what Analysis::Of throws.
LoadReport MakeLoadReport(const LoadedBeam& beam);

/// "permanent", "snow above 1000 m", as users write and read them; "A", "" for no category; "ultimate", "quasi-permanent".
const char* NameOf(Statics::ActionKind kind);
const char* NameOf(Statics::Category category);
const char* NameOf(Statics::LimitState state);

} // namespace Keltrix::Host
