#include <gtest/gtest.h>

#include "statics/Beams.h"

namespace StaticsTest {

TEST(ClosedForms, SimplySupportedUniform)
{
    Beam beam = Single(8.0, PINNED, PINNED);
    beam.loads.push_back(UniformLoad(0, 12e3));
    const Response r = Solved(beam);
    ExpectClose(r.major.Moment(4.0, Side::Left), 12e3 * 64.0 / 8.0);
    ExpectClose(r.major.Deflection(4.0), 5.0 * 12e3 * std::pow(8.0, 4) / (384.0 * EI));
    ExpectClose(r.reactions[0].vertical, 48e3);
}

TEST(ClosedForms, FixedEnds)
{
    Beam beam = Single(8.0, ENCASTRE, ENCASTRE);
    beam.loads.push_back(UniformLoad(0, 12e3));
    const Response r = Solved(beam);
    ExpectClose(r.major.Moment(0.0, Side::Right), -12e3 * 64.0 / 12.0);
    ExpectClose(r.major.Deflection(4.0), 12e3 * std::pow(8.0, 4) / (384.0 * EI));
}

TEST(ClosedForms, TwoSpans)
{
    Beam beam = Continuous({8.0, 8.0});
    beam.loads.push_back(UniformLoad(0, 45e3));
    const Response r = Solved(beam);
    ExpectClose(r.major.Moment(8.0, Side::Right), -45e3 * 64.0 / 8.0);
    ExpectClose(r.reactions[1].vertical, 1.25 * 45e3 * 8.0);
}

TEST(ClosedForms, Mechanism)
{
    Beam beam = Single(8.0, PINNED, 0);
    const Analysis analysis(beam);
    EXPECT_EQ(*analysis.Reason().ToUtf8(), "nothing holds the member in place: from 0 m to 8 m it turns about 0 m");
}

} // namespace StaticsTest
