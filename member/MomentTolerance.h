#pragma once

#include <algorithm>
#include <cmath>

#include "keltrix/steel/MemberLayout.h"
#include "member/Envelope.h"

namespace Keltrix::Steel {

/// The major-axis moments (Myy) of the extreme forces of a span, at their left and at their right end: what MaxForces and
/// MinForces find, gathered sub-span by sub-span in the pass of another.
struct MajorMomentExtremes {
    double maxLeft;
    double maxRight;
    double minLeft;
    double minRight;

    MajorMomentExtremes(const CSubSpan& max, const CSubSpan& min) :
        maxLeft(max.GetMomentsLeft().y), maxRight(max.GetMomentsRight().y), minLeft(min.GetMomentsLeft().y),
        minRight(min.GetMomentsRight().y)
    {}
    void Consider(const CSubSpan& subSpan)
    {
        maxLeft = LargerOrFirst(maxLeft, subSpan.GetMomentsLeft().y);
        maxRight = LargerOrFirst(maxRight, subSpan.GetMomentsRight().y);
        minLeft = SmallerOrFirst(minLeft, subSpan.GetMomentsLeft().y);
        minRight = SmallerOrFirst(minRight, subSpan.GetMomentsRight().y);
    }
};

/// Extremes of the major-axis moment (Myy) over a span and the tolerance within which a moment counts as none: 1 N·m or one
/// percent of the larger extreme. Shared by the moment reversal of a span and the buckling sense, which compare with it
/// differently (one at or beyond it, the other strictly beyond it).
struct MajorMomentRange {
    double largest;
    double smallest;
    double tolerance;

    explicit MajorMomentRange(const CSpan& span) :
        MajorMomentRange(MajorMomentExtremes(span.MaxForces(), span.MinForces()))
    {}

    explicit MajorMomentRange(const MajorMomentExtremes& extremes) :
        largest(LargerOrFirst(extremes.maxLeft, extremes.maxRight)),
        smallest(SmallerOrFirst(extremes.minLeft, extremes.minRight))
    {
        tolerance = std::max(1.0, 0.01 * std::max(std::fabs(smallest), std::fabs(largest)));
    }
};

} // namespace Keltrix::Steel
