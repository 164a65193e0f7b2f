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

// 6 m between supports at 0 and 6 m, x to the right, z up, y away from the reader. Calculated by hand:
//   10 kN/m down:       V = 30 - 10 x, M = 30 x - 5 x² sagging; Fz = -V, Myy = -M: Fz -30 to 30, Myy -45 at 3 m
//   6 kN along y at 3 m: reactions of 3 kN against y; Fy = +3 on the left, -3 on the right; dMzz/dx = -Fy: Mzz = -9 at 3 m
//   20 kN along x at 6 m, held at 0: tension of 20 kN
TEST(Signs, CalculatedByHand)
{
    Beam beam = Single(6.0, PINNED, PINNED);
    beam.loads = {UniformLoad(0, 10e3), PointLoad(0, 6e3, 3.0, Direction::Minor),
                  PointLoad(0, 20e3, 6.0, Direction::Axial)};
    GeneratedMember expected;
    for (const wchar_t* const line : {L"1,0,Pinned,0", L"2,3,Free,0", L"3,6,Pinned,0"}) {
        CString text(line);
        expected.points.emplace_back();
        expected.points.back().CSVLineIn(text);
    }
    for (const wchar_t* const line : {L"1,20000,3000,-30000,20000,3000,0,0,0,0,0,-45000,-9000,Free,0",
                                      L"2,20000,-3000,0,20000,-3000,30000,0,-45000,-9000,0,0,0,Free,0"}) {
        expected.subSpans.emplace_back();
        expected.subSpans.back().CSVLineIn(line);
    }
    const GeneratedMember made = MemberOf(beam);
    ExpectSame(made, expected);
    // As written to a file: no zero has a sign.
    EXPECT_EQ(*made.subSpans[0].CSVLineOut().ToUtf8(),
              "1,20000,3000,-30000,20000,3000,0,0,0,0,0,-45000,-9000,Free,0\n");
    // Clockwise moments at the ends of a beam that carries nothing else: Myy falls by each of them.
    beam.loads = {MomentLoad(0, 12e3, 0.0), MomentLoad(0, 24e3, 6.0)};
    const GeneratedMember moments = MemberOf(beam);
    EXPECT_NEAR(moments.subSpans.front().GetMomentsLeft().y, -12e3, 1e-9);
    EXPECT_NEAR(moments.subSpans.back().GetMomentsRight().y, 24e3, 1e-9);
    EXPECT_NEAR(moments.subSpans.front().GetForcesLeft().z, 6e3, 1e-9);
}

TEST(Points, AtEverythingThatBeginsOrEnds)
{
    Beam beam = Single(10.0, PINNED, PINNED);
    beam.supports.push_back(Held(5.0, CRestraint::BOTTOM_FLANGE_LATERAL));
    beam.supports.push_back(Held(5.0, CRestraint::TORSION)); // two at one place hold together
    beam.restraints = {{2.0, 7.0, Held(0.0, CRestraint::TOP_FLANGE_LATERAL).holds},
                       {6.0, 8.0, Held(0.0, CRestraint::TORSION).holds}};
    beam.loads = {UniformLoad(0, 1e3, 1.0, 9.0), PointLoad(0, 5e3, 4.0), MomentLoad(0, 5e3, 3.0)};
    const GeneratedMember m = MemberOf(beam);
    std::vector<double> places;
    for (const auto& p : m.points)
        places.push_back(p.GetPos());
    EXPECT_EQ(places, (std::vector<double>{0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0, 10.0}));
    for (std::size_t k = 0; k < m.subSpans.size(); ++k) {
        const int top = k >= 2 && k < 7 ? CRestraint::TOP_FLANGE_LATERAL : 0;
        const int torsion = k >= 6 && k < 8 ? static_cast<int>(CRestraint::TORSION) : 0;
        EXPECT_EQ(m.subSpans[k].GetRestraint().RestFlag(), top | torsion) << k;
    }
    EXPECT_EQ(m.points[5].GetRestraint().RestFlag(),
              static_cast<int>(CRestraint::FLANGE2_LATERAL | CRestraint::TORSION));
    EXPECT_TRUE(m.notes.empty());
}

// Triangle of 0 to 30 kN/m on 6 m: the largest moment is 69.28 kNm (W L²/9√3). One parabola errs by 0.00802 x 30 x 36 = 8.66 kNm; n parts by
// 1/n³ of that, 0.069 kNm or 0.1 % at n = 5. In the first part, where the moment rises from 0 to 180 kNm/n, shears and moments differ by 90 kNm/n³:
// 0.5 % at n = 10, so that it takes 11.
TEST(Trapezoids, AreDividedAndSaySo)
{
    Beam beam = Single(6.0, PINNED, PINNED);
    beam.loads = {TrapezoidalLoad(0, 0.0, 0.0, 6.0, 30e3)};
    const GeneratedMember m = MemberOf(beam);
    EXPECT_EQ(m.subSpans.size(), 11U);
    ASSERT_EQ(m.notes.size(), 1U);
    EXPECT_EQ(*m.notes[0].text.ToUtf8(),
              "1 length under loads that change along them divided into up to 11 parts: the parabola between "
              "two points errs by less than 0.1 % of the largest moment");
    const Design::MomentDiagram diagram(m.points, m.subSpans, Design::Bending::Major);
    double worst = 0.0;
    for (int i = 0; i <= 6000; ++i) {
        const double x = i * 0.001;
        const double exact = 30e3 * x / 6.0 * (36.0 - x * x) / 6.0; // W x (L² - x²)/(6 L)
        worst = std::max(worst, std::abs(diagram.RightOf(x).Worst() + exact));
    }
    EXPECT_LT(worst, 1e-3 * 69.28e3);
    EXPECT_NEAR(worst, 8.66e3 / 1331.0, 0.01); // 11³
}

// At the tip of a cantilever under a triangle that is zero there, no division makes shears and moments those of a uniform load: the moment is a third of
// shear times length, not a half.
TEST(Trapezoids, TipsHaveTheirMeanLoad)
{
    Beam beam = Single(6.0, ENCASTRE, 0);
    beam.loads = {TrapezoidalLoad(0, 0.0, 30e3, 6.0, 0.0)};
    const GeneratedMember m = MemberOf(beam);
    const Design::MomentDiagram diagram(m.points, m.subSpans, Design::Bending::Major);
    for (std::size_t k = 0; k < m.subSpans.size(); ++k)
        EXPECT_TRUE(diagram.IsBalanced(static_cast<int>(k))) << k;
    ASSERT_EQ(m.notes.size(), 1U);
    EXPECT_GE(m.notes[0].text.Find(L"have the shears of their mean load"), 0);
    // Exact where it matters: 30 x 6²/6 and 30 x 6/2.
    EXPECT_NEAR(m.subSpans.front().GetMomentsLeft().y, 180e3, 1e-6);
    EXPECT_NEAR(m.subSpans.front().GetForcesLeft().z, -90e3, 1e-6);
    EXPECT_NEAR(m.subSpans.back().GetForcesRight().z, 0.0, 90.0);
}

// Loads that jump but do not change along a length need no division.
TEST(Trapezoids, UniformLoadsAreNotDivided)
{
    Beam beam = Single(6.0, PINNED, PINNED);
    beam.loads = {UniformLoad(0, 5e3, 0.0, 2.0), UniformLoad(0, 9e3, 2.0)};
    const GeneratedMember m = MemberOf(beam);
    EXPECT_EQ(m.subSpans.size(), 2U);
    EXPECT_TRUE(m.notes.empty());
}

namespace {

// Dead load at the shear centre, imposed loads by span on the top flange and at 0.3 m above the shear centre.
Beam WithHeights()
{
    Beam beam = Continuous({6.0, 6.0});
    beam.section.topFlange = 0.2;
    beam.section.bottomFlange = -0.2;
    beam.cases = {{L"Dead", ActionKind::Permanent, Category::None, false},
                  {L"Imposed", ActionKind::Imposed, Category::A, true}};
    beam.loads = {UniformLoad(0, 2e3), UniformLoad(1, 3e3), PointLoad(1, 4e3, 2.0), PointLoad(1, 4e3, 8.0)};
    beam.loads[1].reference = Steel::TOP_FLANGE;
    beam.loads[2].height = 0.3;
    beam.loads[3].height = -0.3;
    return beam;
}

} // namespace

TEST(LoadHeights, TheHighestLoadThatActs)
{
    const Analysis analysis(WithHeights());
    Combination all;
    all.terms = {{0, 1.4, {}}, {1, 1.6, {}}};
    Combination first = all;
    first.terms[1].spans = {true, false};
    Combination dead = all;
    dead.terms.pop_back();
    const auto members = MakeMembers(analysis, {all, first, dead});
    // Points at 0, 2, 6, 8, 12.
    const auto at = [](const GeneratedMember& m, std::size_t i) { return m.points[i].GetRestraint().LoadHeight(); };
    const auto along = [](const GeneratedMember& m, std::size_t i) {
        return m.subSpans[i].GetRestraint().LoadHeight();
    };
    ASSERT_EQ(members[0].points.size(), 5U);
    EXPECT_EQ(at(members[0], 1), 0.3);
    EXPECT_EQ(at(members[0], 3), -0.3);
    EXPECT_EQ(along(members[0], 0), 0.2);
    EXPECT_EQ(along(members[0], 3), 0.2);
    EXPECT_EQ(at(members[1], 3), 0.0); // the load of the second span does not act
    EXPECT_EQ(along(members[1], 1), 0.2);
    EXPECT_EQ(along(members[1], 2), 0.0);
    EXPECT_EQ(at(members[2], 1), 0.0);
    ASSERT_EQ(members[0].notes.size(), 1U);
    EXPECT_GE(members[0].notes[0].text.Find(L"destabilises most"), 0);
    EXPECT_FALSE(members[0].notes[0].isUnsafe || members[0].notes[0].isOfBeam);
    EXPECT_TRUE(members[2].notes.empty());
    // The same points for all.
    for (const GeneratedMember& m : members)
        for (std::size_t i = 0; i < m.points.size(); ++i)
            EXPECT_EQ(m.points[i].GetPos(), members[0].points[i].GetPos());
}

// Under uplift the lowest of the upward loads counts, and what acts downwards elsewhere does not take its height away: 5 kN upwards at
// -0.2 m and 1 kN downwards at 0 turn the section as 4 kN upwards at -0.25 m.
TEST(LoadHeights, OfUpliftAreTheLowest)
{
    Beam beam = Single(6.0, PINNED, PINNED);
    beam.loads = {PointLoad(0, -5e3, 3.0), PointLoad(0, 1e3, 3.0)};
    beam.loads[0].height = -0.2;
    const auto height = [&] { return MemberOf(beam).points[1].GetRestraint().LoadHeight(); };
    EXPECT_DOUBLE_EQ(height(), -0.25);
    beam.loads[1].height = -0.3; // below, and stabilising
    EXPECT_DOUBLE_EQ(height(), -0.2);
    beam.loads[1].value = 0.0;
    EXPECT_DOUBLE_EQ(height(), -0.2);
    beam.loads[0].height = 0.2;
    EXPECT_DOUBLE_EQ(height(), 0.2);
    // A sum downwards: 6 kN at 0.1 m, less 2 kN upwards at -0.2 m, as 4 kN at 0.25 m.
    beam.loads = {PointLoad(0, 6e3, 3.0), PointLoad(0, -2e3, 3.0)};
    beam.loads[0].height = 0.1;
    beam.loads[1].height = -0.2;
    EXPECT_DOUBLE_EQ(height(), 0.25);
    // Half a depth in whole micrometres.
    beam.loads = {PointLoad(0, 6e3, 3.0)};
    beam.loads[0].height = 0.4533999999999 / 2.0;
    EXPECT_DOUBLE_EQ(height(), 0.2267);
}

TEST(Notes, WhatWasReadIntoTheBeam)
{
    Beam beam = Single(6.0, CRestraint::PARTIAL_ROTATIONAL, PINNED);
    beam.restraints = {{0.0, 6.0, Held(0.0, PINNED).holds}};
    const Analysis analysis(beam);
    ASSERT_EQ(analysis.Notes().size(), 2U);
    EXPECT_GE(analysis.Notes()[0].Find(L"carries no loads"), 0);
    EXPECT_GE(analysis.Notes()[1].Find(L"partial hold of rotation at 0 m has no stiffness"), 0);
}

TEST(Members, OfABeamWithoutAnAnswerThereAreNone)
{
    const Analysis analysis(Single(6.0, PINNED, 0));
    EXPECT_TRUE(MakeMembers(analysis, {Combination()}).empty());
    EXPECT_TRUE(analysis.OfCase(0).major.IsEmpty());
    EXPECT_TRUE(Analysis(Plain(NAN)).OfCase(0).reactions.empty());
    EXPECT_TRUE(Expand(analysis, {CombinationRule()}).list.empty());
}

// Of all combinations: what the member cannot say does not depend on them.
TEST(Notes, SpringsAndHingesThatTheMemberHasNot)
{
    Beam beam = Continuous({6.0, 6.0});
    beam.loads = {UniformLoad(0, 10e3)};
    EXPECT_TRUE(MemberOf(beam).notes.empty());
    beam.supports[1].vertical = 1e6;
    beam.hinges = {{8.0, true, false}};
    const GeneratedMember m = MemberOf(beam);
    ASSERT_EQ(m.notes.size(), 2U);
    EXPECT_TRUE(m.notes[0].isUnsafe && m.notes[0].isOfBeam);
    EXPECT_EQ(*m.notes[0].text.ToUtf8(),
              "the springs at 6 m are in the forces alone: the member's point holds rigidly what "
              "the restraint of the support says");
    EXPECT_EQ(*m.notes[1].text.ToUtf8(), "the hinge at 8 m is in the forces alone: the member is continuous there");
}

} // namespace StaticsTest
