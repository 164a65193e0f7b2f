#pragma once

// Beams with their loads, and what the host reports of them.

#include "keltrix/statics/Combinations.h"
#include "loads/LoadReport.h"
#include "statics/Beams.h"

namespace LoadsTest {

using namespace Keltrix;
using namespace Keltrix::Statics;
using StaticsTest::Held;
using StaticsTest::Single;

/// A beam, what follows from it by BS 5950-1 and its report. Limits: variable loads span/360, overhangs length/180.
struct Loaded {
    explicit Loaded(Beam beam, std::vector<double> camber = {}) :
        Loaded(std::move(beam), DeflectionLimitsOf(Basis::BS5950, true), camber)
    {}
    Loaded(Beam beam, const std::vector<DeflectionLimit>& limits, const std::vector<double>& camber) :
        analysis(std::move(beam)), combinations(Expand(analysis, MakeRules(analysis, {}))),
        report(Host::MakeLoadReport({analysis, combinations, limits,
                                     CheckDeflections(analysis, combinations.list, limits, camber), camber, "Beam B12",
                                     "UB 457x191x67", "S275"}))
    {}

    std::string NameOf(int combination) const
    {
        return combination < 0 ? std::string()
                               : *combinations.list[static_cast<std::size_t>(combination)].name.ToUtf8();
    }

    Analysis analysis;
    Combinations combinations;
    Host::LoadReport report;
};

inline std::vector<Case> DeadAndImposed(bool bySpan = false)
{
    return {{L"Dead", ActionKind::Permanent, Category::None, false},
            {L"Imposed", ActionKind::Imposed, Category::B, bySpan}};
}

/// 9 m, dead 12 kN/m, imposed 45 kN at 3 m; EI = 21 MN·m².
inline Beam FloorBeam()
{
    Beam beam = Single(9.0, StaticsTest::PINNED, StaticsTest::PINNED);
    beam.cases = DeadAndImposed();
    beam.loads = {UniformLoad(0, 12e3), PointLoad(1, 45e3, 3.0)};
    return beam;
}

/// Two spans of 8 m, dead 10 kN/m, imposed 20 kN/m on any of them.
inline Beam TwoSpans()
{
    Beam beam = StaticsTest::Continuous({8.0, 8.0});
    beam.cases = DeadAndImposed(true);
    beam.loads = {UniformLoad(0, 10e3), UniformLoad(1, 20e3)};
    return beam;
}

/// 8 m and 2.5 m beyond, dead 12 kN/m and 30 kN at the tip.
inline Beam Overhanging()
{
    Beam beam = StaticsTest::Plain(10.5);
    beam.supports = {Held(0.0, StaticsTest::PINNED), Held(8.0, StaticsTest::PINNED)};
    beam.cases = {{L"Dead", ActionKind::Permanent, Category::None, false}};
    beam.loads = {UniformLoad(0, 12e3), PointLoad(0, 30e3, 10.5)};
    return beam;
}

/// 3 m from a wall at the left, imposed 6 kN/m and 25 kN at the tip.
inline Beam Cantilever()
{
    Beam beam = Single(3.0, StaticsTest::ENCASTRE, 0);
    beam.cases = {{L"Imposed", ActionKind::Imposed, Category::None, false}};
    beam.loads = {UniformLoad(0, 6e3), PointLoad(0, 25e3, 3.0)};
    return beam;
}

/// 4.5 m upright, 150 kN of a beam at its top on the right, 227 mm off the centre line.
inline Beam Column()
{
    Beam beam = Single(4.5, StaticsTest::PINNED, StaticsTest::PINNED);
    beam.inclination = 1.5707963267948966;
    beam.cases = {{L"Imposed", ActionKind::Imposed, Category::None, false}};
    beam.loads = EccentricReaction(0, 150e3, 4.5, 0.227);
    return beam;
}

} // namespace LoadsTest
