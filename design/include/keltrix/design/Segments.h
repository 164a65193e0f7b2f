#pragma once

#include <utility>
#include <vector>

namespace Keltrix::Design {

/// Pairs of places of member points between which a member buckles by flexure or twist: from one held point to the next, and where a
/// restraint along sub-spans begins and ends. A run of sub-spans that are held along their length is one pair. `pointHeld` is asked for inner points,
/// `subSpanHeld` for sub-spans, by their places counted from 0. `points` is 2 at least.
template <class Point, class Sub>
std::vector<std::pair<int, int>> Segments(int points, Point pointHeld, Sub subSpanHeld)
{
    std::vector<std::pair<int, int>> segments;
    int start = 0;
    bool before = subSpanHeld(0);
    for (int i = 1; i < points; ++i) {
        const bool end = i == points - 1;
        const bool after = end ? before : subSpanHeld(i);
        if (!end && before == after && (before || !pointHeld(i))) continue;
        segments.emplace_back(start, i);
        start = i;
        before = after;
    }
    return segments;
}

} // namespace Keltrix::Design
