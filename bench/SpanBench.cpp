// Queries and deflections of a span from 2 to 20,000 sub-spans. Floor: one pass over the member's two vectors that reads
// a position and two moments of every sub-span.

#include "Bench.h"

#include <memory>
#include <string>
#include <vector>

#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Bench {

namespace {

using namespace Keltrix::Steel;

/// A cantilever with a load at its tip: no jumps and no change of the shear, so that every search for one goes over the
/// whole span.
struct Cantilever {
    std::vector<CMemberPoint> points;
    std::vector<CSubSpan> subSpans;

    explicit Cantilever(int numSubSpans)
    {
        constexpr double length = 10.0;
        constexpr double shear = 20000.0;
        const double h = length / numSubSpans;
        for (int i = 0; i <= numSubSpans; ++i) {
            CMemberPoint point;
            point.Set1Index(i + 1);
            point.SetPos(i == numSubSpans ? length : i * h);
            points.push_back(point);
        }
        for (int i = 0; i < numSubSpans; ++i) {
            CSubSpan subSpan;
            subSpan.Set1Index(i + 1);
            subSpan.SetForcesAll({0.0, 0.0, shear}, {0.0, 0.0, shear});
            subSpan.SetMomentsAll({0.0, shear * i * h, 0.4 * shear * i * h},
                                  {0.0, shear * (i + 1) * h, 0.4 * shear * (i + 1) * h});
            subSpans.push_back(subSpan);
        }
    }
    CSpan Whole() const { return {&points, &subSpans, 0, static_cast<int>(subSpans.size())}; }

    double OnePass() const
    {
        double sum = 0.0;
        for (std::size_t i = 0; i < subSpans.size(); ++i)
            sum += points[i].GetPos() + subSpans[i].GetMomentsLeft().y + subSpans[i].GetMomentsRight().y;
        return sum;
    }
};

constexpr int LARGEST = 20000;
const std::string FLOOR = "one pass";

/// Two rows of measurements: one member of each size asked again and again, so that small ones stay in the cache; and so many
/// members of each size, one after the other, that all sizes go over the same number of sub-spans, as in a model of many
/// members. Only the second row shows how the cost depends on the size of a member alone.
template <class Query>
void OverSizes(const std::string& name, Query query)
{
    const auto nameOf = [&](int size) { return name + ", " + std::to_string(size) + " sub-spans"; };
    const auto manyNameOf = [&](int size) { return nameOf(size) + " of 20000"; };
    for (const int size : {2, 20, 200, 2000, LARGEST}) {
        const auto members =
            std::make_shared<std::vector<Cantilever>>(static_cast<std::size_t>(LARGEST / size), Cantilever(size));
        const auto sumOver = [members, query](std::size_t count) {
            double sum = 0.0;
            for (std::size_t i = 0; i < count; ++i)
                sum += static_cast<double>(query((*members)[i].Whole(), (*members)[i]));
            return sum;
        };
        Measure(nameOf(size), [sumOver] { return sumOver(1); }, {static_cast<double>(size)});
        if (size == 200)
            Measure(manyNameOf(size), [sumOver] { return sumOver(LARGEST / 200); }, {static_cast<double>(LARGEST)});
        if (name != FLOOR) Compare({nameOf(size), FLOOR + nameOf(size).substr(name.size())});
    }
    Compare({nameOf(LARGEST), nameOf(200), 1.3});
    Compare({nameOf(LARGEST), manyNameOf(200), 1.3});
}

} // namespace

void RegisterSpans()
{
    constexpr double E = 205e9;
    constexpr double I = 29380e-8;
    OverSizes(FLOOR, [](const CSpan&, const Cantilever& c) { return c.OnePass(); });
    const auto query = [](const std::string& name, auto ask) {
        OverSizes(name, [ask](const CSpan& span, const Cantilever&) { return ask(span); });
    };
    query("MaxForces", [](const CSpan& s) { return s.MaxForces().GetMomentsRight().y; });
    query("MinForces", [](const CSpan& s) { return s.MinForces().GetMomentsRight().y; });
    query("ContinuousRestraint", [](const CSpan& s) { return s.ContinuousRestraint().RestFlag(); });
    query("IsDestabilized", [](const CSpan& s) { return s.IsDestabilized(); });
    query("InterpolateForces", [](const CSpan& s) { return s.InterpolateForces(0.9999).z; });
    query("InterpolateMoments", [](const CSpan& s) { return s.InterpolateMoments(0.9999).y; });
    query("IsMinorAxisLoaded", [](const CSpan& s) { return s.IsMinorAxisLoaded(); });
    query("IsMajorAxisLoaded", [](const CSpan& s) { return s.IsMajorAxisLoaded(); });
    query("IsLoaded", [](const CSpan& s) { return s.IsLoaded(true); });
    query("IsLoadedWithPointLoad", [](const CSpan& s) { return s.IsLoadedWithPointLoad(); });
    query("IsLeftEndPtLoadOnly", [](const CSpan& s) { return s.IsLeftEndPtLoadOnly(); });
    query("IsRightEndPtLoadOnly", [](const CSpan& s) { return s.IsRightEndPtLoadOnly(); });
    query("IsLoadedWithCentrePointLoad", [](const CSpan& s) { return s.IsLoadedWithCentrePointLoad(); });
    query("IsLoadedWithUDL", [](const CSpan& s) { return s.IsLoadedWithUDL(); });
    query("MaxDispXX", [](const CSpan& s) { return s.MaxDispXX(E, I); });
    query("MaxDispYY", [](const CSpan& s) { return s.MaxDispYY(E, I); });
    query("DispXX", [](const CSpan& s) { return s.DispXX(9.999, E, I, true, false); });
    query("DispYY", [](const CSpan& s) { return s.DispYY(9.999, E, I, true, false); });
}

} // namespace Keltrix::Bench
