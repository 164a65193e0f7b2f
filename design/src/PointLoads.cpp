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

// The loads on one flange that begin at a member point.
class LoadsFrom {
public:
    LoadsFrom(const Points& points, const SubSpans& subSpans, const LoadSpacing& spacing) :
        m_points(points), m_subSpans(subSpans), m_spacing(spacing)
    {
        double largest = 0.0;
        for (const Steel::CSubSpan& sub : subSpans)
            largest = std::max({largest, std::abs(sub.GetForcesLeft().z), std::abs(sub.GetForcesRight().z)});
        m_noise = 1e-6 * largest;
    }

    // `add(last, force)` is told the load at the point, whose last is the point itself, and each longer one that is more than those before it.
    // `sign` is 1 for what presses downwards, -1 upwards.
    template <typename Add>
    void Find(int point, double sign, const Add& add) const
    {
        const double own = sign * JumpAt(m_subSpans, point);
        double most = std::max(own, 0.0);
        double sum = most;
        bool near = true;     // all that was summed up lies upon the part of the web that the point loads
        bool unbroken = true; // sub-spans press from the point on
        const auto tell = [&](int last) {
            if (most > m_noise) add(last, most);
        };
        for (std::size_t k = static_cast<std::size_t>(point); k < m_subSpans.size(); ++k) {
            const double along = sign * (m_subSpans[k].GetForcesRight().z - m_subSpans[k].GetForcesLeft().z);
            unbroken = unbroken && along > m_noise;
            // Nothing begins to press here; the next points have loads of their own.
            if (k == static_cast<std::size_t>(point) && !(own > m_noise) && !unbroken) break;
            const double distance = m_points[k + 1].GetPos() - m_points[static_cast<std::size_t>(point)].GetPos();
            if (near && distance > m_spacing.loaded) {
                near = false;
                tell(point);
            }
            if (!near && distance > (unbroken ? m_spacing.patch : m_spacing.group)) return;
            sum += along + sign * JumpAt(m_subSpans, static_cast<int>(k) + 1);
            if (!(sum > most)) continue;
            most = sum;
            if (!near) tell(static_cast<int>(k) + 1);
        }
        if (near) tell(point);
    }

private:
    const Points& m_points;
    const SubSpans& m_subSpans;
    const LoadSpacing& m_spacing;
    double m_noise = 0.0;
};

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
                                      const LoadSpacing& spacing)
{
    const LoadsFrom from(points, subSpans, spacing);
    const double start = points.front().GetPos();
    const double end = points.back().GetPos();
    std::vector<PointLoad> loads;
    for (int i = 0; i <= static_cast<int>(subSpans.size()); ++i) {
        for (const Flange flange : FLANGES) {
            const bool onFlange1 = flange == Flange::First;
            from.Find(i, onFlange1 ? 1.0 : -1.0, [&](int last, double force) {
                PointLoad load;
                load.point = i;
                load.lastPoint = last;
                load.onFlange1 = onFlange1;
                load.force = force;
                load.x = points[static_cast<std::size_t>(i)].GetPos();
                load.end = points[static_cast<std::size_t>(last)].GetPos();
                load.bearing = last > i ? std::max(load.end - load.x, spacing.stiffBearing) : spacing.stiffBearing;
                const double middle = 0.5 * (load.x + load.end);
                load.loadToEnd = std::max(std::min(middle - start, end - middle), 0.5 * load.bearing);
                load.bearingToEnd = load.loadToEnd - 0.5 * load.bearing;
                load.held = IsFlangeHeld(points, subSpans, major, i, flange) &&
                            (last == i || IsFlangeHeld(points, subSpans, major, last, flange));
                loads.push_back(load);
            });
        }
    }
    return loads;
}

} // namespace Keltrix::Design
