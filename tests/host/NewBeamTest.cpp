// New files: what is written is read back as what was asked for, and without a word.

#include "loads/NewBeam.h"

#include <limits>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "beamfile/BeamFile.h"

namespace Keltrix::Host {
namespace {

using ::testing::HasSubstr;
using Shape = NewBeam::Shape;

BeamFile ReadBack(const NewBeam& beam)
{
    const std::string text = BeamFileText(beam);
    BeamFile file = ReadBeamFile("new.toml", text, nullptr);
    for (const Defect& defect : file.defects)
        ADD_FAILURE() << BeamMessage(defect, file.name) << "\n" << text;
    return file;
}

std::string FaultOfLoad(const std::string& text, Shape shape)
{
    NewBeam beam;
    return ReadNewLoad(text, shape, beam);
}

std::string FaultOfRestraint(const std::string& text)
{
    NewBeam beam;
    return ReadNewRestraint(text, beam);
}

TEST(NewBeam, WhatIsWrittenIsReadBack)
{
    NewBeam beam;
    beam.title = "Floor \"B12\" \\ roof, €";
    beam.spans = {9.0, 8.25};
    ASSERT_EQ(ReadNewLoad("dead=12", Shape::Uniform, beam), "");
    ASSERT_EQ(ReadNewLoad("snow=-3.5@1:4", Shape::Uniform, beam), "");
    ASSERT_EQ(ReadNewLoad("imposed=45@3", Shape::Point, beam), "");
    ASSERT_EQ(ReadNewLoad("wind=-20@17.25", Shape::Moment, beam), "");
    ASSERT_EQ(ReadNewRestraint("top@0:6", beam), "");
    ASSERT_EQ(ReadNewRestraint("bottom@12", beam), "");
    ASSERT_EQ(ReadNewRestraint("both@14", beam), "");
    beam.combinations = "bs5950";
    ASSERT_EQ(FaultOf(beam), "");
    const BeamFile file = ReadBack(beam);
    EXPECT_EQ(file.title, beam.title);
    EXPECT_EQ(file.section, "UB 457x191x67");
    ASSERT_TRUE(file.standard);
    EXPECT_EQ(file.standard->options.basis, Statics::Basis::BS5950);
    EXPECT_EQ(file.deflection.imposed, 360.0);
    EXPECT_EQ(file.beam.length, 17.25);
    EXPECT_TRUE(file.beam.selfWeight);
    ASSERT_EQ(file.beam.loads.size(), 4U);
    EXPECT_EQ(file.beam.loads[0].value, 12e3);
    EXPECT_EQ(file.beam.loads[0].from, 0.0);
    EXPECT_EQ(file.beam.loads[1].value, -3.5e3);
    EXPECT_EQ(file.beam.loads[1].from, 1.0);
    EXPECT_EQ(file.beam.loads[1].to, 4.0);
    EXPECT_EQ(file.beam.loads[2].value, 45e3);
    EXPECT_EQ(file.beam.loads[2].from, 3.0);
    EXPECT_EQ(file.beam.loads[3].value, -20e3);
    EXPECT_EQ(file.beam.loads[3].shape, Statics::LoadShape::Moment);
    ASSERT_EQ(file.beam.cases.size(), 4U);
    EXPECT_EQ(file.beam.cases[1].kind, Statics::ActionKind::Snow);
    ASSERT_EQ(file.beam.restraints.size(), 1U);
    EXPECT_EQ(file.beam.restraints[0].to, 6.0);
    EXPECT_EQ(file.beam.restraints[0].holds.RestFlag(), Steel::CRestraint::FLANGE1_LATERAL);
    ASSERT_EQ(file.beam.supports.size(), 5U);
    EXPECT_EQ(file.beam.supports[3].at, 12.0);
    EXPECT_EQ(file.beam.supports[3].holds.RestFlag(), Steel::CRestraint::FLANGE2_LATERAL);
    EXPECT_EQ(file.beam.supports[4].holds.RestFlag(),
              Steel::CRestraint::FLANGE1_LATERAL | Steel::CRestraint::FLANGE2_LATERAL);
}

TEST(NewBeam, WithoutLoadsItHasAnExample)
{
    EXPECT_THAT(BeamFileText(NewBeam()), HasSubstr("# This load is an example."));
    const BeamFile file = ReadBack(NewBeam());
    EXPECT_EQ(file.beam.loads.size(), 1U);
    EXPECT_FALSE(file.standard) << "nobody asked for one";
}

TEST(NewBeam, EveryStandardAndKindIsRead)
{
    EXPECT_EQ(CombinationNames().size(), 5U);
    for (const std::string& standard : CombinationNames()) {
        NewBeam beam;
        beam.combinations = standard;
        for (const char* kind : {"permanent", "dead", "imposed", "live", "snow", "snow-above-1000m", "wind"})
            ASSERT_EQ(ReadNewLoad(std::string(kind) + "=1", Shape::Uniform, beam), "");
        EXPECT_EQ(ReadBack(beam).beam.cases.size(), 7U);
    }
}

TEST(NewBeam, RandomBeamsAreReadBack)
{
    const unsigned seed = 511;
    std::mt19937 random(seed);
    const auto real = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(random); };
    for (int i = 0; i < 500; ++i) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", beam " + std::to_string(i));
        NewBeam beam;
        beam.spans = {real(1.0, 20.0), real(1.0, 20.0)};
        const double length = beam.spans[0] + beam.spans[1];
        beam.loads = {{"dead", Shape::Uniform, real(-50.0, 50.0), {}, {}},
                      {"imposed", Shape::Point, real(-1e3, 1e3), real(0.0, length), {}},
                      {"snow", Shape::Uniform, real(0.0, 5.0), real(0.0, 0.5 * length), real(0.6 * length, length)}};
        ASSERT_EQ(FaultOf(beam), "");
        const BeamFile file = ReadBack(beam);
        ASSERT_EQ(file.beam.loads.size(), 3U);
        EXPECT_EQ(file.beam.loads[1].from, *beam.loads[1].from) << "exactly";
        EXPECT_DOUBLE_EQ(file.beam.loads[1].value, beam.loads[1].value * 1e3);
        EXPECT_EQ(file.beam.length, length);
    }
}

TEST(NewBeam, WhatMeansNothingIsRefusedInWords)
{
    EXPECT_EQ(FaultOfLoad("12", Shape::Uniform),
              "got \"12\", expected a case, = and a load in kN/m, as dead=12 or snow=3@0:4");
    EXPECT_EQ(FaultOfLoad("floor=12", Shape::Uniform),
              "got \"floor\" for the case, expected dead, permanent, imposed, live, snow, snow-above-1000m or wind");
    for (const char* text :
         {"dead=", "dead=x", "dead=1,5", "dead=nan", "dead=inf", "dead=1e300", "dead=5kN", "dead= @1"})
        EXPECT_THAT(FaultOfLoad(text, Shape::Uniform), HasSubstr("expected a case, = and a load in kN/m")) << text;
    EXPECT_THAT(FaultOfLoad("imposed=45", Shape::Point), HasSubstr("without a place"));
    EXPECT_THAT(FaultOfLoad("imposed=45@", Shape::Point), HasSubstr("expected a place in m"));
    EXPECT_THAT(FaultOfLoad("imposed=45@1:2", Shape::Point), HasSubstr("expected one place"));
    EXPECT_THAT(FaultOfLoad("imposed=45@-1", Shape::Point), HasSubstr("expected a place in m"));
    EXPECT_THAT(FaultOfLoad("dead=45@3", Shape::Uniform), HasSubstr("expected two places"));
    EXPECT_THAT(FaultOfLoad("dead=45@3:3", Shape::Uniform), HasSubstr("beyond the first one"));
    EXPECT_THAT(FaultOfRestraint("deck@0:6"), HasSubstr("expected top, bottom or both"));
    EXPECT_THAT(FaultOfRestraint("top"), HasSubstr("expected a place in m"));
    EXPECT_THAT(FaultOfRestraint("top@6:0"), HasSubstr("beyond the first one"));
    EXPECT_THAT(FaultOfRestraint("top@0:x"), HasSubstr("expected a place in m"));
}

TEST(NewBeam, PlacesBeyondTheEndAreRefused)
{
    NewBeam beam;
    ASSERT_EQ(ReadNewLoad("imposed=45@9.5", Shape::Point, beam), "");
    EXPECT_EQ(FaultOf(beam), "--point: the place 9.5 m is beyond the end of the beam, which is 9 m long");
    NewBeam held;
    ASSERT_EQ(ReadNewRestraint("top@0:10", held), "");
    EXPECT_EQ(FaultOf(held), "--restraint: the place 10 m is beyond the end of the beam, which is 9 m long");
    for (const double span :
         {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e5}) {
        NewBeam spans;
        spans.spans = {8.0, span};
        EXPECT_THAT(FaultOf(spans), HasSubstr("--span: got")) << span;
    }
}

} // namespace
} // namespace Keltrix::Host
