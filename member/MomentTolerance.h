#pragma once

#include <algorithm>
#include <cmath>

#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Steel {

/// Extremes of the major-axis moment (Myy) over a span and the tolerance within which a moment counts as none: 1 N·m or one
/// percent of the larger extreme. Shared by the moment reversal of a span and the buckling sense, which compare with it
/// differently (one at or beyond it, the other strictly beyond it).
struct MajorMomentRange {
    double largest;
    double smallest;
    double tolerance;

    explicit MajorMomentRange(const CSpan& span) : MajorMomentRange(span.MaxForces(), span.MinForces()) {}

    MajorMomentRange(const CSubSpan& max, const CSubSpan& min)
    {
        const double maxLeft = max.GetMomentsLeft().y;
        const double maxRight = max.GetMomentsRight().y;
        const double minLeft = min.GetMomentsLeft().y;
        const double minRight = min.GetMomentsRight().y;
        largest = maxRight > maxLeft ? maxRight : maxLeft;
        smallest = minLeft > minRight ? minRight : minLeft;
        tolerance = std::max(1.0, 0.01 * std::max(std::fabs(smallest), std::fabs(largest)));
    }
};

} // namespace Keltrix::Steel
