#include "keltrix/statics/Beam.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Keltrix::Statics {

Load UniformLoad(std::size_t caseIndex, double load, double from, double to, Direction direction)
{
    return TrapezoidalLoad(caseIndex, from, load, to, load, direction);
}

Load TrapezoidalLoad(std::size_t caseIndex, double from, double load, double to, double loadTo, Direction direction)
{
    Load made;
    made.caseIndex = caseIndex;
    made.shape = LoadShape::Distributed;
    made.direction = direction;
    made.from = from;
    made.to = to;
    made.value = load;
    made.valueTo = loadTo;
    return made;
}

Load PointLoad(std::size_t caseIndex, double force, double at, Direction direction)
{
    Load made;
    made.caseIndex = caseIndex;
    made.shape = LoadShape::Point;
    made.direction = direction;
    made.from = made.to = at;
    made.value = force;
    return made;
}

Load MomentLoad(std::size_t caseIndex, double moment, double at, Direction direction)
{
    Load made = PointLoad(caseIndex, moment, at, direction);
    made.shape = LoadShape::Moment;
    return made;
}

std::vector<Load> EccentricReaction(std::size_t caseIndex, double reaction, double at, double eccentricity,
                                    Direction plane)
{
    return {PointLoad(caseIndex, reaction, at, Direction::Gravity),
            MomentLoad(caseIndex, reaction * eccentricity, at, plane)};
}

double NominalEccentricity(double faceDistance) { return faceDistance + 0.1; }

void SetSpans(Beam& beam, const std::vector<double>& spans, int restraint)
{
    if (!std::all_of(spans.begin(), spans.end(), [](double span) { return std::isfinite(span) && span > 0.0; }))
        throw std::invalid_argument("a span that is not a length above zero");
    Support support;
    support.holds = Steel::CRestraint(restraint, Steel::SHR_CENTRE, 0.0);
    beam.length = 0.0;
    beam.supports.assign(1, support);
    for (const double span : spans) {
        beam.length += span;
        support.at = beam.length;
        beam.supports.push_back(support);
    }
}

} // namespace Keltrix::Statics
