#include "import/ForceBalance.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::Host {

namespace {

// What counts as balanced where a member file is read, too.
constexpr double BALANCE_TOLERANCE = 0.01;
// Of the largest actions of the case: what analyses leave of nothing.
constexpr double NOISE = 1e-6;

struct Sizes {
    double planeMoment = 0.0; // the largest moment of the plane
    double halfMoment = 0.0;  // and the coarsest last digit of its moments
    double moment = 0.0;      // the largest of all
    double force = 0.0;
};

Sizes SizesOf(const ForceCase& one, TablePlane plane)
{
    Sizes sizes;
    for (const ForceRow& row : one.rows) {
        sizes.planeMoment = std::max(sizes.planeMoment, std::abs(row.value[MomentOf(plane)]));
        sizes.halfMoment = std::max(sizes.halfMoment, row.half[MomentOf(plane)]);
        for (const ImportedAction action : {ACTION_N, ACTION_VY, ACTION_VZ})
            sizes.force = std::max(sizes.force, std::abs(row.value[action]));
        for (const ImportedAction action : {ACTION_MY, ACTION_MZ})
            sizes.moment = std::max(sizes.moment, std::abs(row.value[action]));
    }
    return sizes;
}

// Twice the largest error that rounding of shears and stations makes between two rows.
double RoundingOf(const ForceRow& a, const ForceRow& b, ImportedAction shear)
{
    const double length = std::abs(b.station.value - a.station.value);
    return (a.half[shear] + b.half[shear]) * length +
           (std::abs(a.value[shear]) + std::abs(b.value[shear])) * (a.station.half + b.station.half);
}

} // namespace

std::optional<ForceGap> FindGap(const ForceCase& one, TablePlane plane, int law)
{
    if (one.stations.empty()) return std::nullopt;
    const ImportedAction shear = ShearOf(plane);
    const ImportedAction moment = MomentOf(plane);
    const Sizes sizes = SizesOf(one, plane);
    const double length = one.stations.back().at - one.stations.front().at;
    const double noise = NOISE * std::max(sizes.moment, sizes.force * length);
    double allowed = std::max(BALANCE_TOLERANCE * sizes.planeMoment, noise) + 4.0 * sizes.halfMoment;

    // Changes from the first station on, and where their difference was least and greatest.
    std::vector<double> byMoments{0.0};
    std::vector<double> byShears{0.0};
    std::size_t least = 0;
    std::size_t greatest = 0;
    const auto residual = [&](std::size_t k) { return byMoments[k] - byShears[k]; };
    for (std::size_t k = 1; k < one.stations.size(); ++k) {
        const ForceRow& a = *one.stations[k - 1].right;
        const ForceRow& b = *one.stations[k].left;
        const double piece = one.stations[k].at - one.stations[k - 1].at;
        byMoments.push_back(byMoments.back() + b.value[moment] - a.value[moment]);
        byShears.push_back(byShears.back() + 0.5 * law * (a.value[shear] + b.value[shear]) * piece);
        allowed += RoundingOf(a, b, shear);
        if (one.stations[k - 1].left != one.stations[k - 1].right) allowed += 2.0 * sizes.halfMoment;
        if (residual(k) < residual(least)) least = k;
        if (residual(k) > residual(greatest)) greatest = k;
        if (residual(greatest) - residual(least) <= allowed) continue;
        const std::size_t from = std::min(least, greatest);
        return ForceGap{&b, one.stations[from].at, one.stations[k].at, byMoments[k] - byMoments[from],
                        byShears[k] - byShears[from]};
    }
    return std::nullopt;
}

std::vector<ForceCouple> FindCouples(const ForceCase& one, TablePlane plane)
{
    const ImportedAction moment = MomentOf(plane);
    const Sizes sizes = SizesOf(one, plane);
    std::vector<ForceCouple> couples;
    for (const ForceStation& station : one.stations) {
        const double jump = station.right->value[moment] - station.left->value[moment];
        const double rounding = station.right->half[moment] + station.left->half[moment];
        if (std::abs(jump) > std::max(1e-3 * sizes.planeMoment, NOISE * sizes.moment) + rounding)
            couples.push_back({&station, jump});
    }
    return couples;
}

} // namespace Keltrix::Host
