#include "keltrix/design/MomentDiagram.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "design/RandomMember.h"

namespace {

using namespace DesignTest;
using Design::Bending;
using Design::Extremes;
using Design::MomentDiagram;
using Design::Parabola;

MomentDiagram Major(const Member& m) { return {m.points, m.subSpans, Bending::Major}; }

Member OneSubSpan(double shearLeft, double shearRight, double momentLeft, double momentRight, double h = 6.0)
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, h, L"Pinned");
    AddSubSpan(m, shearLeft, shearRight, momentLeft, momentRight);
    return m;
}

TEST(MomentDiagram, UniformLoadHasItsSaggingMomentAtMidSpan)
{
    // 20 kN/m over 6 m: w L²/8 = 90 kNm, sagging, below zero.
    const MomentDiagram d = Major(OneSubSpan(-60e3, 60e3, 0.0, 0.0));
    ASSERT_TRUE(d.IsBalanced(0));
    const Extremes e = d.Between(0.0, 6.0);
    EXPECT_DOUBLE_EQ(e.least, -90e3);
    EXPECT_DOUBLE_EQ(e.leastAt, 3.0);
    EXPECT_DOUBLE_EQ(e.greatest, 0.0);
    EXPECT_DOUBLE_EQ(d.InSubSpan(0, 0.25).least, -67.5e3); // w a (L - a)/2 = 20 * 1.5 * 4.5/2
}

// 1 % of (60 + 60) * 6/8 = 90 kNm is 0.9 kNm.
TEST(MomentDiagram, SmallMisfitsKeepTheParabolaThroughBothEnds)
{
    for (const auto& [right, moment] : {std::pair{60001.0, 0.0}, {60000.0, 5.0}, {60100.0, 0.0}, {60000.0, 890.0}}) {
        const MomentDiagram d = Major(OneSubSpan(-60e3, right, 0.0, moment));
        ASSERT_TRUE(d.IsBalanced(0)) << right << ' ' << moment;
        EXPECT_EQ(d.InSubSpan(0, 0.0).least, 0.0);
        EXPECT_EQ(d.InSubSpan(0, 1.0).least, moment);
        EXPECT_NEAR(d.InSubSpan(0, 0.5).least, -90e3, 520.0);
    }
    EXPECT_FALSE(Major(OneSubSpan(-60e3, 60e3, 0.0, 920.0)).IsBalanced(0));
}

// A point load of 200 kN at mid-span of 8 m with one sign of the shear wrong: by the shears nothing changes.
TEST(MomentDiagram, AnUnbalancedSubSpanCoversAllThreeReadings)
{
    const MomentDiagram d = Major(OneSubSpan(-50e3, -50e3, 0.0, 30e3, 4.0));
    ASSERT_FALSE(d.IsBalanced(0));
    EXPECT_DOUBLE_EQ(d.At(0).balance.byShears, -200e3);
    EXPECT_DOUBLE_EQ(d.At(0).balance.byMoments, 30e3);
    // From the left end -50 x; from the right end 30 + 50 (4 - x); straight 30 x/4.
    const Design::MomentRange middle = d.InSubSpan(0, 0.5);
    EXPECT_DOUBLE_EQ(middle.least, -100e3);
    EXPECT_DOUBLE_EQ(middle.greatest, 130e3);
    const Design::MomentRange right = d.InSubSpan(0, 1.0);
    EXPECT_DOUBLE_EQ(right.least, -200e3);
    EXPECT_DOUBLE_EQ(right.greatest, 30e3);
    EXPECT_DOUBLE_EQ(d.Largest(), 230e3);
    EXPECT_FALSE(d.IsBalanced(1.0, 2.0));
}

TEST(MomentDiagram, TextOfAnUnbalancedSubSpanSaysWhatToDo)
{
    const MomentDiagram d = Major(OneSubSpan(-50e3, -50e3, 0.0, 30e3, 4.0));
    const std::string text = *Design::UnbalancedText(1, Bending::Major, d.At(0), CDesFormat(CUnit())).ToUtf8();
    for (const char* words : {"sub-span 1", "-200", "30", "not known", "Divide", "dMyy/dx = Fz"})
        EXPECT_NE(text.find(words), std::string::npos) << words << " in: " << text;
}

TEST(MomentDiagram, ZerosAreFoundWithoutCancellation)
{
    // (s - 1e-9)(s - 0.5) * 8: left = 4e-9, right = 8 (1 - 1e-9) 0.5, curvature 8.
    const Parabola p{4e-9, 4.0 * (1.0 - 1e-9), 8.0};
    const auto zeros = p.Zeros();
    EXPECT_NEAR(zeros[0], 1e-9, 1e-18);
    EXPECT_NEAR(zeros[1], 0.5, 1e-15);
    EXPECT_TRUE(std::isnan((Parabola{1.0, 2.0, 0.0}.Zeros()[0])));
    EXPECT_DOUBLE_EQ((Parabola{-1.0, 3.0, 0.0}.Zeros()[0]), 0.25);
    EXPECT_TRUE(std::isnan((Parabola{0.0, 0.0, 0.0}.Zeros()[0])));
    EXPECT_TRUE(std::isnan((Parabola{0.0, 0.0, 0.0}.Extreme())));
}

TEST(MomentDiagram, NotANumberIsNeverLost)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Member m = OneSubSpan(-60e3, 60e3, nan, 0.0);
    AddPoint(m, 8.0, L"Pinned");
    AddSubSpan(m, 0.0, 0.0, 5e3, 5e3);
    const MomentDiagram d = Major(m);
    EXPECT_FALSE(d.IsBalanced(0));
    EXPECT_TRUE(std::isnan(d.Between(0.0, 8.0).Magnitude()));
    EXPECT_TRUE(std::isnan(d.InSubSpan(0, 0.5).Magnitude()));
    EXPECT_DOUBLE_EQ(d.Between(6.5, 8.0).greatest, 5e3);
}

TEST(MomentDiagram, BothSidesOfAJump)
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 2.0, L"Free");
    AddPoint(m, 4.0, L"Pinned");
    AddSubSpan(m, 10e3, 10e3, 0.0, 20e3);
    AddSubSpan(m, 10e3, 10e3, -20e3, 0.0);
    const MomentDiagram d = Major(m);
    EXPECT_DOUBLE_EQ(d.LeftOf(2.0).least, 20e3);
    EXPECT_DOUBLE_EQ(d.RightOf(2.0).least, -20e3);
    EXPECT_DOUBLE_EQ(d.LeftOf(2.0 + 1e-12).least, 20e3);
    EXPECT_DOUBLE_EQ(d.RightOf(2.0 - 1e-12).least, -20e3);
    EXPECT_DOUBLE_EQ(d.LeftOf(1.0).least, 10e3);
    EXPECT_DOUBLE_EQ(d.RightOf(1.0).least, 10e3);
    EXPECT_DOUBLE_EQ(d.RightOf(4.0).least, 0.0);
    EXPECT_DOUBLE_EQ(d.LeftOf(0.0).least, 0.0);
    // A stretch that begins at the jump does not see the value left of it.
    EXPECT_DOUBLE_EQ(d.Between(2.0, 4.0).greatest, 0.0);
    EXPECT_DOUBLE_EQ(d.Between(0.0, 2.0).least, 0.0);
    EXPECT_DOUBLE_EQ(d.Between(0.0, 4.0).greatest, 20e3);
}

TEST(MomentDiagram, ASubSpanWithoutLengthIsBalanced)
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 2.0, L"Free");
    AddPoint(m, 2.0, L"Free");
    AddPoint(m, 4.0, L"Pinned");
    AddSubSpan(m, 10e3, 10e3, 0.0, 20e3);
    AddSubSpan(m, 10e3, 10e3, 20e3, -20e3);
    AddSubSpan(m, 10e3, 10e3, -20e3, 0.0);
    const MomentDiagram d = Major(m);
    EXPECT_TRUE(d.IsBalanced(0.0, 4.0));
    EXPECT_DOUBLE_EQ(d.Between(0.0, 4.0).least, -20e3);
    EXPECT_DOUBLE_EQ(d.Between(0.0, 4.0).greatest, 20e3);
}

TEST(MomentDiagram, NoPointsNoMoments)
{
    const MomentDiagram d = Major(Member());
    EXPECT_EQ(d.Largest(), 0.0);
    EXPECT_EQ(d.LeftOf(1.0).least, 0.0);
    EXPECT_EQ(d.Between(0.0, 1.0).Magnitude(), 0.0);
    EXPECT_TRUE(d.IsBalanced(0.0, 1.0));
}

// The extremes against 2,000 samples of both diagrams; the combination against the sum of its parts.
TEST(MomentDiagram, RandomMembersAgreeWithSampling)
{
    const unsigned seed = 20260301;
    std::mt19937 random(seed);
    for (int i = 0; i < 500; ++i) {
        const Member m = RandomMember(random);
        const MomentDiagram major = Major(m);
        const MomentDiagram minor(m.points, m.subSpans, Bending::Minor);
        const MomentDiagram both(m.points, m.subSpans, 0.6, -0.8);
        double least = 0.0;
        double greatest = 0.0;
        bool first = true;
        for (int k = 0; k < static_cast<int>(m.subSpans.size()); ++k) {
            ASSERT_TRUE(major.IsBalanced(k) && minor.IsBalanced(k) && both.IsBalanced(k));
            for (int j = 0; j <= 2000; ++j) {
                const double s = j / 2000.0;
                const double value = both.InSubSpan(k, s).least;
                ASSERT_NEAR(value, 0.6 * major.InSubSpan(k, s).least - 0.8 * minor.InSubSpan(k, s).least,
                            1e-9 * (major.Largest() + minor.Largest()));
                least = first ? value : std::min(least, value);
                greatest = first ? value : std::max(greatest, value);
                first = false;
            }
        }
        const Extremes e = both.Between(0.0, m.Length());
        ASSERT_NEAR(e.least, least, 1e-5 * both.Largest()) << "seed " << seed << ", member " << i;
        ASSERT_NEAR(e.greatest, greatest, 1e-5 * both.Largest()) << "seed " << seed << ", member " << i;
        ASSERT_LE(e.least, least + 1e-12 * both.Largest());
        ASSERT_GE(e.greatest, greatest - 1e-12 * both.Largest());
    }
}

TEST(MomentDiagram, DividingAndMirroringChangeNothing)
{
    const unsigned seed = 20260302;
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    for (int i = 0; i < 3000; ++i) {
        const Member m = RandomMember(random);
        const auto k = static_cast<std::size_t>(share(random) * static_cast<double>(m.subSpans.size()));
        const double s = 0.001 + 0.998 * share(random);
        const Member divided = Divided(m, k, s);
        const Member mirrored = Mirrored(m);
        const MomentDiagram d = Major(m);
        const MomentDiagram dd = Major(divided);
        const MomentDiagram dm = Major(mirrored);
        const double tolerance = 1e-11 * d.Largest();
        double a = share(random) * m.Length();
        double b = share(random) * m.Length();
        if (b < a) std::swap(a, b);
        const Extremes e = d.Between(a, b);
        const Extremes ed = dd.Between(a, b);
        const Extremes em = dm.Between(m.Length() - b, m.Length() - a);
        ASSERT_NEAR(e.least, ed.least, tolerance) << "seed " << seed << ", member " << i;
        ASSERT_NEAR(e.greatest, ed.greatest, tolerance) << "seed " << seed << ", member " << i;
        ASSERT_NEAR(e.least, em.least, tolerance) << "seed " << seed << ", member " << i;
        ASSERT_NEAR(e.greatest, em.greatest, tolerance) << "seed " << seed << ", member " << i;
        ASSERT_NEAR(d.LeftOf(a).least, dd.LeftOf(a).least, tolerance);
        ASSERT_NEAR(d.LeftOf(a).least, dm.RightOf(m.Length() - a).least, tolerance);
    }
}

// Sub-spans of 2, 0 and 3 m.
TEST(Covering, FindsTheSubSpansThatHaveLengthInCommonWithAStretch)
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 2.0, L"Free");
    AddPoint(m, 2.0, L"Free");
    AddPoint(m, 5.0, L"Pinned");
    AddSubSpan(m, 10e3, 10e3, 0.0, 20e3);
    AddSubSpan(m, 0.0, 0.0, 20e3, -30e3);
    AddSubSpan(m, 10e3, 10e3, -30e3, 0.0);
    const MomentDiagram diagram(m.points, m.subSpans, Bending::Major);
    const auto range = [&](double from, double to) {
        const MomentDiagram::Range r = diagram.Covering(from, to);
        return std::pair<int, int>(r.first, r.last);
    };
    EXPECT_EQ(range(0.0, 5.0), std::make_pair(0, 3));
    EXPECT_EQ(range(0.5, 2.0), std::make_pair(0, 1));
    EXPECT_EQ(range(2.0, 4.0), std::make_pair(2, 3));
    EXPECT_EQ(range(std::nextafter(2.0, 0.0), 5.0), std::make_pair(2, 3)) << "a sliver by rounding";
    EXPECT_EQ(range(0.0, std::nextafter(2.0, 3.0)), std::make_pair(0, 1));
    EXPECT_EQ(range(1.0, 3.0), std::make_pair(0, 3));
}

// Made of the diagrams about both axes as of the forces themselves.
TEST(Combination, OfTwoDiagramsIsThatOfTheForces)
{
    std::mt19937 random(7);
    for (int i = 0; i < 100; ++i) {
        const Member m = RandomMember(random);
        const MomentDiagram major(m.points, m.subSpans, Bending::Major);
        const MomentDiagram minor(m.points, m.subSpans, Bending::Minor);
        const MomentDiagram a(m.points, m.subSpans, 0.8, -0.6);
        const MomentDiagram b(major, 0.8, minor, -0.6);
        const double x = 0.37 * m.Length();
        EXPECT_EQ(a.LeftOf(x).least, b.LeftOf(x).least);
        EXPECT_NEAR(a.LeftOf(x).least, 0.8 * major.LeftOf(x).least - 0.6 * minor.LeftOf(x).least,
                    1e-9 * (major.Largest() + minor.Largest()));
    }
}

// Points in one place: a sub-span of no length at an end of the member has the values of its own ends there.
TEST(MomentDiagram, ASubSpanOfNoLengthAtAnEndHasItsOwnValues)
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 0.0, L"Free");
    AddPoint(m, 6.0, L"Free");
    AddPoint(m, 6.0, L"Pinned");
    AddSubSpan(m, -10e3, -20e3, 5e3, 10e3);
    AddSubSpan(m, -60e3, 60e3, 20e3, 20e3);
    AddSubSpan(m, 20e3, 10e3, 30e3, 40e3);
    const MomentDiagram d = Major(m);
    EXPECT_EQ(d.LeftOf(0.0).greatest, 10e3);
    EXPECT_EQ(d.RightOf(0.0).greatest, 20e3);
    EXPECT_EQ(d.LeftOf(6.0).greatest, 20e3);
    EXPECT_EQ(d.RightOf(6.0).greatest, 30e3);
    EXPECT_EQ(d.Between(0.0, 6.0).greatest, 40e3) << "nothing is left out";
}

TEST(MomentDiagram, BeyondTheMemberIsItsEnd)
{
    const MomentDiagram d = Major(OneSubSpan(-60e3, 60e3, 10e3, 10e3));
    EXPECT_EQ(d.LeftOf(7.0).greatest, 10e3);
    EXPECT_EQ(d.RightOf(-1.0).greatest, 10e3);
}

// An axis that takes no part leaves the sum balanced, whatever its own moments are.
TEST(MomentDiagram, AnAxisWithoutPartInASumDoesNotUnbalanceIt)
{
    Member m = OneSubSpan(-60e3, 60e3, 0.0, 920.0);
    ASSERT_FALSE(Major(m).IsBalanced(0));
    EXPECT_TRUE((MomentDiagram{m.points, m.subSpans, 0.0, 1.0}.IsBalanced(0)));
    EXPECT_FALSE((MomentDiagram{m.points, m.subSpans, 1.0, 0.0}.IsBalanced(0)));
    m.subSpans[0].SetForcesAll({0.0, 60e3, -60e3}, {0.0, -60e3, 60e3});
    m.subSpans[0].SetMomentsAll({0.0, 0.0, 0.0}, {0.0, 0.0, 920.0});
    EXPECT_TRUE((MomentDiagram{m.points, m.subSpans, 1.0, 0.0}.IsBalanced(0)));
    EXPECT_FALSE((MomentDiagram{m.points, m.subSpans, 1.0, 1.0}.IsBalanced(0)));
}

} // namespace
