// Members from loads: the examples, a calculation by hand with its signs, equilibrium, and the moment diagram of the checks.

#include <fstream>
#include <sstream>

#include "keltrix/design/MomentDiagram.h"
#include "keltrix/statics/GeneratedMember.h"
#include "statics/Beams.h"
#include "statics/RandomBeam.h"

namespace StaticsTest {

namespace {

// Points and sub-spans of a file of examples/.
GeneratedMember Example(const std::string& name)
{
    std::ifstream in(KELTRIX_SOURCE_DIR "/examples/" + name + ".csv");
    EXPECT_TRUE(in) << name;
    GeneratedMember member;
    for (std::string line; std::getline(in, line);) {
        const auto fields = [&](std::size_t keyword) { return *CString::FromUtf8(line.substr(keyword)); };
        if (line.rfind("MEMBERPOINT,", 0) == 0) {
            CString text = fields(12);
            member.points.emplace_back();
            member.points.back().CSVLineIn(text);
        } else if (line.rfind("SUBSPAN,", 0) == 0) {
            member.subSpans.emplace_back();
            member.subSpans.back().CSVLineIn(fields(8));
        }
    }
    return member;
}

void ExpectVector(const Vec3<double>& actual, const Vec3<double>& expected, const char* what, std::size_t place)
{
    // Files have six digits.
    const auto expect = [&](double a, double e) { EXPECT_NEAR(a, e, 3e-6 * std::abs(e)) << what << " " << place; };
    expect(actual.x, expected.x);
    expect(actual.y, expected.y);
    expect(actual.z, expected.z);
}

void ExpectSame(const GeneratedMember& actual, const GeneratedMember& expected)
{
    ASSERT_EQ(actual.points.size(), expected.points.size());
    ASSERT_EQ(actual.subSpans.size(), expected.subSpans.size());
    for (std::size_t i = 0; i < expected.points.size(); ++i) {
        EXPECT_EQ(actual.points[i].Get1Index(), expected.points[i].Get1Index());
        EXPECT_DOUBLE_EQ(actual.points[i].GetPos(), expected.points[i].GetPos());
        EXPECT_TRUE(actual.points[i].GetRestraint() == expected.points[i].GetRestraint()) << i;
    }
    for (std::size_t i = 0; i < expected.subSpans.size(); ++i) {
        const auto& a = actual.subSpans[i];
        const auto& e = expected.subSpans[i];
        EXPECT_EQ(a.Get1Index(), e.Get1Index());
        EXPECT_TRUE(a.GetRestraint() == e.GetRestraint()) << i;
        ExpectVector(a.GetForcesLeft(), e.GetForcesLeft(), "forces left", i);
        ExpectVector(a.GetForcesRight(), e.GetForcesRight(), "forces right", i);
        ExpectVector(a.GetMomentsLeft(), e.GetMomentsLeft(), "moments left", i);
        ExpectVector(a.GetMomentsRight(), e.GetMomentsRight(), "moments right", i);
    }
}

} // namespace

TEST(Examples, FloorBeam)
{
    // 1 kN/m and secondary beams with 115 kN, which hold the top flange; the deck ends before the stair void.
    Beam beam = Single(9.0, PINNED, PINNED);
    beam.supports.push_back(Held(3.0, CRestraint::TOP_FLANGE_LATERAL));
    beam.supports.push_back(Held(6.0, CRestraint::TOP_FLANGE_LATERAL));
    beam.restraints.push_back({0.0, 6.0, Held(0.0, CRestraint::TOP_FLANGE_LATERAL).holds});
    beam.loads = {UniformLoad(0, 1e3), PointLoad(0, 115e3, 3.0), PointLoad(0, 115e3, 6.0)};
    ExpectSame(MemberOf(beam), Example("floor_beam"));
}

TEST(Examples, Cantilever)
{
    Beam beam = Single(3.0, ENCASTRE, 0);
    beam.supports.push_back(Held(1.5, CRestraint::FREE));
    beam.loads = {UniformLoad(0, 6e3), PointLoad(0, 25e3, 3.0)};
    ExpectSame(MemberOf(beam), Example("cantilever"));
}

TEST(Examples, ContinuousBeam)
{
    Beam beam = Continuous({8.0, 8.0});
    beam.supports.push_back(Held(3.0, CRestraint::TOP_FLANGE_LATERAL));
    beam.supports.push_back(Held(6.0, CRestraint::TOP_AND_BOTTOM_FLANGE_LATERAL));
    beam.supports.push_back(Held(10.0, CRestraint::TOP_AND_BOTTOM_FLANGE_LATERAL));
    beam.supports.push_back(Held(13.0, CRestraint::TOP_FLANGE_LATERAL));
    beam.restraints.push_back({0.0, 16.0, Held(0.0, CRestraint::TOP_FLANGE_LATERAL).holds});
    beam.loads = {UniformLoad(0, 45e3)};
    ExpectSame(MemberOf(beam), Example("continuous_beam"));
}

TEST(Examples, CraneBeam)
{
    Beam beam = Single(7.5, PINNED, PINNED);
    beam.loads = {UniformLoad(0, 2.5e3), PointLoad(0, 90e3, 2.5), PointLoad(0, 90e3, 5.0)};
    beam.section.topFlange = 0.15;
    beam.section.bottomFlange = -0.15;
    // 0.4 m above the shear centre, once from it and once from the top flange.
    beam.loads[1].height = 0.4;
    beam.loads[2].height = 0.25;
    beam.loads[2].reference = Steel::TOP_FLANGE;
    ExpectSame(MemberOf(beam), Example("crane_beam"));
}

TEST(Examples, Column)
{
    Beam beam = Single(4.5, PINNED, PINNED);
    beam.inclination = 1.5707963267948966;
    beam.supports.push_back(Held(2.25, CRestraint::FREE));
    beam.loads = {PointLoad(0, 1.2e6, 4.5), MomentLoad(0, 45e3, 4.5), MomentLoad(0, 12e3, 4.5, Direction::Minor)};
    ExpectSame(MemberOf(beam), Example("column"));
}

TEST(Examples, BracesTiesAndStruts)
{
    Beam beam = Single(3.2, PINNED, PINNED);
    beam.supports.push_back(Held(1.6, CRestraint::FREE));
    beam.loads = {PointLoad(0, -140e3, 3.2, Direction::Axial)};
    ExpectSame(MemberOf(beam), Example("angle_brace"));
    beam = Single(5.0, PINNED, PINNED);
    beam.supports.push_back(Held(2.5, CRestraint::FREE));
    beam.loads = {PointLoad(0, 300e3, 5.0, Direction::Axial)};
    ExpectSame(MemberOf(beam), Example("tie"));
    beam.loads = {PointLoad(0, -400e3, 5.0, Direction::Axial), UniformLoad(0, 280.0)};
    ExpectSame(MemberOf(beam), Example("hollow_strut"));
}

} // namespace StaticsTest
