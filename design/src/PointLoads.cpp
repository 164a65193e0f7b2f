#include "keltrix/design/PointLoads.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::Design {

namespace {

using Points = std::vector<Steel::CMemberPoint>;
using SubSpans = std::vector<Steel::CSubSpan>;

// The jump of the shear at a member point, at an end the shear itself. Above zero downwards.
double JumpAt(const SubSpans& subSpans, int point)
{
    const double before = point > 0 ? subSpans[static_cast<std::size_t>(point) - 1].GetForcesRight().z : 0.0;
    const bool last = point == static_cast<int>(subSpans.size());
    return (last ? 0.0 : subSpans[static_cast<std::size_t>(point)].GetForcesLeft().z) - before;
}

// What presses on one flange at a member point together with all that follows within a length, the point's own load where that is more; 0
// where nothing begins to press there. `sign` is 1 for what presses downwards, -1 upwards.
double LoadWithin(const Points& points, const SubSpans& subSpans, int point, double length, double sign, double noise)
{
    const double x = points[static_cast<std::size_t>(point)].GetPos();
    const double own = sign * JumpAt(subSpans, point);
    double largest = std::max(own, 0.0);
    double sum = largest;
    for (std::size_t k = static_cast<std::size_t>(point); k < subSpans.size(); ++k) {
        if (points[k + 1].GetPos() - x > length) break;
        const double along = sign * (subSpans[k].GetForcesRight().z - subSpans[k].GetForcesLeft().z);
        // What presses on the other flange here is a load of its own; the next points have theirs.
        if (own < -noise && k == static_cast<std::size_t>(point) && !(along > noise)) break;
        sum += along + sign * JumpAt(subSpans, static_cast<int>(k) + 1);
        largest = std::max(largest, sum);
    }
    return largest;
}

} // namespace

bool IsFlangeHeld(const Points& points, const SubSpans& subSpans, const MomentDiagram& major, int point, Flange flange)
{
    const unsigned int bits =
        flange == Flange::First ? Data::CRestraint::FLANGE1_LATERAL : Data::CRestraint::FLANGE2_LATERAL;
    const double x = points[static_cast<std::size_t>(point)].GetPos();
    const MomentRange left = major.LeftOf(x);
    const MomentRange right = major.RightOf(x);
    const int sign = std::min(left.least, right.least) >= 0.0         ? 1
                     : std::max(left.greatest, right.greatest) <= 0.0 ? -1
                                                                      : 0;
    const auto holds = [&](const Data::CRestraint& r) { return Resolved(r, sign).IsRestrained(bits, true); };
    if (holds(points[static_cast<std::size_t>(point)].GetRestraint())) return true;
    const int last = static_cast<int>(subSpans.size());
    return (point > 0 && holds(subSpans[static_cast<std::size_t>(point) - 1].GetRestraint())) ||
           (point < last && holds(subSpans[static_cast<std::size_t>(point)].GetRestraint()));
}

std::vector<PointLoad> FindPointLoads(const Points& points, const SubSpans& subSpans, const MomentDiagram& major,
                                      double stiffBearing, double spread)
{
    double largest = 0.0;
    for (const Steel::CSubSpan& sub : subSpans)
        largest = std::max({largest, std::abs(sub.GetForcesLeft().z), std::abs(sub.GetForcesRight().z)});
    const double noise = 1e-6 * largest;
    const double start = points.front().GetPos();
    const double end = points.back().GetPos();
    std::vector<PointLoad> loads;
    for (int i = 0; i <= static_cast<int>(subSpans.size()); ++i) {
        for (const Flange flange : FLANGES) {
            PointLoad load;
            load.onFlange1 = flange == Flange::First;
            load.force = LoadWithin(points, subSpans, i, spread, load.onFlange1 ? 1.0 : -1.0, noise);
            if (!(load.force > noise)) continue;
            load.point = i;
            load.x = points[static_cast<std::size_t>(i)].GetPos();
            load.loadToEnd = std::max(std::min(load.x - start, end - load.x), 0.5 * stiffBearing);
            load.bearingToEnd = load.loadToEnd - 0.5 * stiffBearing;
            load.held = IsFlangeHeld(points, subSpans, major, i, flange);
            loads.push_back(load);
        }
    }
    return loads;
}

} // namespace Keltrix::Design
