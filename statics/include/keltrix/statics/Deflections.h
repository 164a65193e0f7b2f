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

/// A limit of deflection. A ratio of 0 is no limit.
struct DeflectionLimit {
    CString name;
    CString clause;
    Counted counted = Counted::Total;
    LimitState state = LimitState::Serviceability; ///< the combinations that it is checked with
    double spanRatio = 0.0;     ///< span over this, for the deflection from the chord between its supports
    double overhangRatio = 0.0; ///< length of an overhang over this, for the deflection from the level of its support
    bool minor = false;         ///< deflection across the web
};

/// Limits that a standard gives for beams: BS 5950-1:2000 Table 8, UK National Annex to EN 1993-1-1, NA.2.23, both for
/// variable loads alone: span/360 with a brittle finish and span/200 otherwise, length/180 of cantilevers. EN 1993-1-1,
/// 7.2.1 gives none.
KELTRIX_STATICS_API std::vector<DeflectionLimit> DeflectionLimitsOf(Basis basis, bool brittleFinish);

/// A limit on a span, with the combination in which the deflection is largest.
struct DeflectionCheck {
    std::size_t limit = 0;
    std::size_t span = 0;
    int combination = -1; ///< -1: there is no combination of this limit state, and nothing was checked
    double deflection = std::numeric_limits<double>::quiet_NaN(); ///< m, downwards (along y)
    double at = std::numeric_limits<double>::quiet_NaN();
    double allowed = 0.0; ///< m
    double utilisation = std::numeric_limits<double>::quiet_NaN();

    bool IsEvaluated() const { return combination >= 0; }
};

/// Deflections against limits, for each limit each span to which it applies. Deflections upwards count like those
/// downwards. `camber` is the rise of each span at its middle before any load, m, a parabola between its supports;
/// spans beyond the list, and overhangs, have none. Of a beam without an answer nothing is checked.
KELTRIX_STATICS_API std::vector<DeflectionCheck> CheckDeflections(const Analysis& analysis,
                                                                  const std::vector<Combination>& combinations,
                                                                  const std::vector<DeflectionLimit>& limits,
                                                                  const std::vector<double>& camber = {});

/// Largest deflections of a span: from the chord between its supports, from the level of its support on an overhang.
KELTRIX_STATICS_API Extremes SpanDeflections(const Line& line, const Span& span, double camber = 0.0);

} // namespace Keltrix::Statics
