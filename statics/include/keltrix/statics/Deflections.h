#pragma once

#include <cstddef>
#include <limits>
#include <vector>

#include "keltrix/platform/CString.h"
#include "keltrix/statics/Combinations.h"
#include "keltrix/statics/Export.h"

namespace Keltrix::Statics {

/// Loads whose deflection a limit is about.
enum class Counted {
    Variable, ///< the variable cases of the combinations alone
    Total     ///< all cases, less the camber
};

/// A limit of deflection. A ratio of 0 is no limit; one below zero or that is not a number is not evaluated.
struct DeflectionLimit {
    CString name;
    CString clause;
    Counted counted = Counted::Total;
    /// The combinations that it is checked with. Serviceability is that of BS 5950-1 alone: with combinations of EN 1990
    /// give one of its three, or nothing is checked.
    LimitState state = LimitState::Serviceability;
    double spanRatio = 0.0;     ///< span over this, for the deflection from the chord between its supports
    double overhangRatio = 0.0; ///< length of an overhang over this, for the deflection from the level of its support
    bool minor = false;         ///< deflection across the web
};

/// Limits that a standard gives for beams: BS 5950-1:2000 Table 8, UK National Annex to EN 1993-1-1, NA.2.23, both for
/// variable loads alone: span/360 with a brittle finish and span/200 otherwise, length/180 of cantilevers. EN 1993-1-1,
/// 7.2.1 gives none. Throws std::invalid_argument where the basis is none.
KELTRIX_STATICS_API std::vector<DeflectionLimit> DeflectionLimitsOf(Basis basis, bool brittleFinish);

/// A limit on a span, with the combination in which the deflection is largest.
struct DeflectionCheck {
    std::size_t limit = 0;
    std::size_t span = 0; ///< index in Analysis::Spans(); names of combinations count from 1
    int combination = -1; ///< index in the list; -1: nothing was checked
    double deflection = std::numeric_limits<double>::quiet_NaN(); ///< m, downwards (along y)
    double at = std::numeric_limits<double>::quiet_NaN();
    double allowed = 0.0;                                         ///< m; of a ratio that is none, not a number
    double utilisation = std::numeric_limits<double>::infinity(); ///< infinite where nothing was checked
    CString reason;                                               ///< why nothing was checked

    bool IsEvaluated() const { return combination >= 0; }
    /// Whether it was checked and the deflection is allowed.
    bool IsPassed() const { return IsEvaluated() && utilisation <= 1.0; }
};

/// Deflections against limits, for each limit each span to which it applies. Deflections upwards count like those
/// downwards. `camber` is the rise of each span at its middle before any load, m, a parabola between its supports;
/// spans beyond the list, and overhangs, have none. Of a beam without an answer there are no checks. Not evaluated, with
/// a reason, is a limit without a combination of its state, with a ratio or a kind of loads that is none, or with a
/// camber that is not a number. Throws what Analysis::Of throws where a combination names an unknown case or a factor
/// that is not finite.
KELTRIX_STATICS_API std::vector<DeflectionCheck> CheckDeflections(const Analysis& analysis,
                                                                  const std::vector<Combination>& combinations,
                                                                  const std::vector<DeflectionLimit>& limits,
                                                                  const std::vector<double>& camber = {});

/// The terms of a combination whose deflections a limit counts: all, or those of variable cases alone.
KELTRIX_STATICS_API std::vector<Term> CountedTerms(const Beam& beam, const Combination& combination,
                                                   const DeflectionLimit& limit);

/// Largest deflections of a span: from the chord between its supports, from the level of its support on an overhang.
KELTRIX_STATICS_API Extremes SpanDeflections(const Line& line, const Span& span, double camber = 0.0);

} // namespace Keltrix::Statics
