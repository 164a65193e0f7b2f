// Where the local checks look: hand calculations, and the laws that no division and no direction of the member may break.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

#include "Members.h"
#include "RandomActions.h"
#include "support/RandomCases.h"

using Keltrix::TestSupport::RandomCases;

using namespace BS5950Test;

namespace {

const PositionResult& Worst(const Checked& c)
{
    return *std::max_element(c.member.Positions().begin(), c.member.Positions().end(),
                             [](const PositionResult& a, const PositionResult& b) { return a.combined < b.combined; });
}

/// One sub-span with the given forces and moments at its ends.
struct SubSpan {
    double length = 0.0;
    Vector forceLeft, forceRight, momentLeft, momentRight;
};

Case OneSubSpan(const SubSpan& sub)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {sub.length, L"Pinned"}};
    given.force = [sub](double x) { return x < 0.5 * sub.length ? sub.forceLeft : sub.forceRight; };
    given.moment = [sub](double x) { return x < 0.5 * sub.length ? sub.momentLeft : sub.momentRight; };
    return given;
}

} // namespace

// SHS 200x200x5 S355, 4 m: Mx = 24.15 + 130.41 s - 154.56 s², My = -38.64 + 90.16 s² (s = x/L). The section is square, so the sum is
// largest where |Mx| + |My| = 62.79 + 130.41 s - 244.72 s² is: s = 130.41/489.44 = 0.26645, 62.79 + 17.374 = 80.164 kNm. At the
// extreme of Mx (s = 0.4219) it is only 74.25, at the ends 62.79 and 51.52. Mc by 3.6.5: b/t = (200 - 15)/5 = 37 above
// 40ε = 35.2, Z = 245 cm³: 0.355 * 245 * (35.206/37)² = 78.7 kNm. 80.16/78.7 = 1.018.
TEST(LargestInside, BiaxialMomentsBetweenEndsAndExtremes)
{
    Case given = OneSubSpan(
        {4.0, {0.0, 0.0, 32602.5}, {0.0, -45080.0, -44677.5}, {0.0, 24150.0, -38640.0}, {0.0, 0.0, 51520.0}});
    given.section = L"SHS 200x200x5";
    given.grade = L"S355";
    Checked c(given);
    EXPECT_FALSE(c.Check());
    const PositionResult& p = Worst(c);
    EXPECT_EQ(p.place, Place::Inside);
    EXPECT_EQ(p.found, Found::LargestUtilisation);
    EXPECT_NEAR(p.x, 4.0 * 0.26645, 1e-4);
    EXPECT_NEAR(std::abs(p.actions.Mx) + std::abs(p.actions.My), 80164.0, 1.0);
    EXPECT_NEAR(p.combined, 1.018, 0.004);
    // Both ends, the extreme of Mx and the worst place: a search that looks at other utilisations too adds no place for those.
    EXPECT_EQ(c.member.Positions().size(), 4u);
    EXPECT_EQ(p.Entry(), 1) << "filed with the left end of its sub-span";
    EXPECT_EQ(c.result.UtilLocalCombined(1), p.combined);
    EXPECT_EQ(c.Entry(Rule::CombinedCompression).utilisation, p.combined);
}

// UB 457x191x67 S275 (Pt = 8553 mm² * 275 = 2352 kN, Mcx = 404.5 kNm), 6 m under 20 kN/m, tension growing from 0 to 1200 kN:
// 1200 s/2352 + 360 s (1 - s)/404.5 is largest at s = 0.5(1 + 0.5102/0.8900) = 0.7866: 0.4013 + 0.1494 = 0.5507.
// At mid-span it is 0.2551 + 0.2225 = 0.4776, at the right end 0.5102.
TEST(LargestInside, TensionThatVariesWithMoment)
{
    Case given = OneSubSpan({6.0, {0.0, 0.0, -60e3}, {1200e3, 0.0, 60e3}, {0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}});
    Checked c(given);
    c.Check();
    EXPECT_NEAR(Worst(c).x, 6.0 * 0.7866, 0.01);
    EXPECT_NEAR(Worst(c).combined, 0.5507, 0.001);
    EXPECT_NEAR(c.Entry(Rule::CombinedTension).utilisation, 0.5507, 0.001);
}

// The same section at the threshold of high shear: Pvy = 0.6 * 275 * 453.4 * 8.5 = 635.9 kN, 0.6 of it 381.5. On 10 mm the shear
// falls from 400 to 360 kN and the moment grows from 200 kNm: where the shear is just above 381.5 kN (s = 0.4621) it is
// 200 + 0.01(400 * 0.4621 - 20 * 0.4621²) = 201.81 and Mcx = 0.275(1471 - 0.04 * 436.8) = 399.7: 0.5049. At the
// right end 203.8/404.5 = 0.5038.
TEST(LargestInside, TheWorseSideOfAThresholdCounts)
{
    Case given = OneSubSpan({0.01, {0.0, 0.0, 400e3}, {0.0, 0.0, 360e3}, {0.0, 200e3, 0.0}, {0.0, 203.8e3, 0.0}});
    given.force = [](double x) { return Vector(0.0, 0.0, x < 0.005 ? 400e3 : 360e3); };
    Checked c(given);
    c.Check();
    EXPECT_EQ(Worst(c).place, Place::Inside);
    EXPECT_NEAR(Worst(c).x, 0.01 * 0.4621, 1e-5);
    EXPECT_NEAR(Worst(c).major, 0.5049, 0.0008);
    EXPECT_GT(Worst(c).major, 1.001 * c.member.Positions().back().major);
}

// Nothing between the ends of a sub-span can exceed what is known there: no place more is looked at.
TEST(LargestInside, NoPositionIsAddedWhereTheEndsAndExtremesAreTheWorst)
{
    Case given;
    Uniform(given, 6.0, 20e3, -200e3);
    Checked beam(given);
    beam.Check();
    EXPECT_EQ(beam.member.Positions().size(), 3u);
    given.section = L"UC 254x254x89";
    EndMoments(given, 6.0, 0.0, 45e3, -1200e3, 0.0, 12e3);
    Checked column(given);
    column.Check();
    EXPECT_EQ(column.member.Positions().size(), 2u);
}

// 6 m under 20 kN/m by its shears (-60 and 60 kN), with 40 kNm given at the right end: the change of moment by the shears is 0, by the
// moments 40 kNm. From the left: 0, -90 at mid-span, 0. From the right: 40, -50, 40. Mcx = 404.5 kNm.
TEST(UnbalancedSubSpan, IsCheckedWithEveryReading)
{
    Checked c(OneSubSpan({6.0, {0.0, 0.0, -60e3}, {0.0, 0.0, 60e3}, {0.0, 0.0, 0.0}, {0.0, 40e3, 0.0}}));
    c.Check();
    std::vector<std::pair<Place, int>> found;
    for (const PositionResult& p : c.member.Positions())
        found.emplace_back(p.place, static_cast<int>(std::lround(p.actions.Mx / 1e3)));
    const std::vector<std::pair<Place, int>> expected{{Place::LeftEnd, 0},  {Place::LeftEnd, 40},
                                                      {Place::Inside, -90}, {Place::Inside, -50},
                                                      {Place::RightEnd, 0}, {Place::RightEnd, 40}};
    EXPECT_EQ(found, expected);
    EXPECT_NEAR(c.result.UtilLocalMomMajor(1), 90.0 / 404.5, 1e-3);
    EXPECT_NEAR(c.result.UtilLocalMomMajor(2), 40.0 / 404.5, 1e-3);
    EXPECT_NEAR(c.Entry(Rule::MomentMajor).utilisation, 90.0 / 404.5, 1e-3);
}

// Both axes unknown: every reading of one is combined with every reading of the other. UC 254x254x89, Mcx = 324.3 and Mcy = 120.5:
// as above about x-x, and 20 kNm at the right end without shear about y-y: 90/324.3 + 20/120.5 = 0.4435.
TEST(UnbalancedSubSpan, ReadingsOfBothAxesAreCombined)
{
    Case given = OneSubSpan({6.0, {0.0, 0.0, -60e3}, {0.0, 0.0, 60e3}, {0.0, 0.0, 0.0}, {0.0, 40e3, 20e3}});
    given.section = L"UC 254x254x89";
    Checked c(given);
    c.Check();
    EXPECT_NEAR(Worst(c).combined, 90.0 / 324.3 + 20.0 / 120.5, 2e-3);
    EXPECT_EQ(Worst(c).majorReading, Reading::FromLeft);
    EXPECT_EQ(Worst(c).minorReading, Reading::FromRight);
}

// L 150x75x10, α = 14.6° (tan α = 0.261): Mx = 2, My = 1 kNm give Mu = 2 * 0.9676 + 1 * 0.2526 = 2.188, Mv = |0.9676 - 2 * 0.2526| =
// 0.4625, or turned the other way 1.683 and 1.473: the largest of each, but not both together.
TEST(Angles, AreTurnedBothWays)
{
    Case given;
    given.section = L"L 150x75x10";
    EndMoments(given, 2.0, 2e3, 2e3, 0.0, 1e3, 1e3);
    given.points = {{0.0, L"Pinned"}, {2.0, L"Pinned"}};
    Checked c(given);
    c.Check();
    ASSERT_EQ(c.member.Positions().size(), 4u);
    const PositionResult& a = c.member.Positions()[0];
    const PositionResult& b = c.member.Positions()[1];
    EXPECT_NE(a.reversed, b.reversed);
    EXPECT_NEAR(std::max(a.momentMajor, b.momentMajor), 2188.0, 15.0);
    EXPECT_NEAR(std::max(a.momentMinor, b.momentMinor), 1473.0, 15.0);
    EXPECT_NEAR(a.momentMajor + b.momentMajor, 2188.0 + 1683.0, 25.0);
    EXPECT_NEAR(a.momentMinor + b.momentMinor, 463.0 + 1473.0, 25.0);
}

namespace {

using DesignTest::Member;

constexpr std::size_t MEASURES = 7;

std::array<double, MEASURES> Largest(const std::vector<PositionResult>& positions)
{
    std::array<double, MEASURES> largest{};
    for (const PositionResult& p : positions) {
        const std::array<double, MEASURES> u{p.axial,      p.major,         p.minor,   p.shearMajor,
                                             p.shearMinor, p.shearBuckling, p.combined};
        for (std::size_t i = 0; i < MEASURES; ++i)
            largest[i] = std::max(largest[i], u[i]);
    }
    return largest;
}

std::array<double, MEASURES> LargestOf(Subject& subject, const Member& m)
{
    subject.member.SetMemberPointVec(m.points);
    subject.member.SetSubSpanVec(m.subSpans);
    subject.member.CheckLocal(true);
    return Largest(subject.member.Positions());
}

constexpr const char* NAMES[] = {"axial",          "major",   "minor", "shear along the web", "shear along the flanges",
                                 "shear buckling", "combined"};

void ExpectSame(const std::array<double, MEASURES>& a, const std::array<double, MEASURES>& b, const std::string& what)
{
    for (std::size_t i = 0; i < MEASURES; ++i) {
        // The reduced moment capacity of the more exact rule vanishes where the axial force reaches the squash load.
        if (a[i] == b[i] || std::min(a[i], b[i]) > 1e6) continue;
        ASSERT_LE(std::abs(a[i] - b[i]), 1e-9 * std::max(a[i], b[i]))
            << what << ", " << NAMES[i] << ": " << a[i] << " and " << b[i];
    }
}

} // namespace

// A place is not worse because a point of the member lies there, nor because the member is looked at from its other end.
TEST(PositionLaws, DividingOrMirroringChangesNoLocalUtilisation)
{
    constexpr unsigned SEED = 20260417;
    std::mt19937 random(SEED);
    for (int i = 0; i < RandomCases(6000); ++i) {
        const SectionRow& row = SECTIONS[static_cast<std::size_t>(i) % std::size(SECTIONS)];
        Subject subject(row, i / 2 % 2 + 1);
        const Member m = RandomActions(random, subject.member.Properties(), subject.member.Steel());
        const auto whole = LargestOf(subject, m);
        const std::string what = "seed " + std::to_string(SEED) + ", member " + std::to_string(i) + ", " +
                                 *CString(row.name).ToUtf8() + ", option " + std::to_string(i / 2 % 2 + 1);
        Member divided = m;
        for (int cuts = 0; cuts < 3; ++cuts) {
            const std::size_t k = std::uniform_int_distribution<std::size_t>(0, divided.subSpans.size() - 1)(random);
            divided = DesignTest::Divided(divided, k, std::uniform_real_distribution<double>(0.02, 0.98)(random));
        }
        ASSERT_NO_FATAL_FAILURE(ExpectSame(whole, LargestOf(subject, divided), what + ", divided"));
        ASSERT_NO_FATAL_FAILURE(ExpectSame(whole, LargestOf(subject, DesignTest::Mirrored(m)), what + ", mirrored"));
    }
}

// Against places taken without any search: none is worse than what was found, and the worst of many comes close.
TEST(PositionLaws, NoPlaceOfAFineDivisionIsWorse)
{
    constexpr unsigned SEED = 20260418;
    constexpr int PLACES = 160;
    std::mt19937 random(SEED);
    for (int i = 0; i < RandomCases(400); ++i) {
        const SectionRow& row = SECTIONS[static_cast<std::size_t>(i) % std::size(SECTIONS)];
        Subject subject(row, i / 2 % 2 + 1);
        Member m = RandomActions(random, subject.member.Properties(), subject.member.Steel());
        m.points.resize(2);
        m.subSpans.resize(1);
        const auto whole = LargestOf(subject, m);
        for (int k = 0; k < PLACES; ++k)
            m = DesignTest::Divided(m, m.subSpans.size() - 1, 1.0 / (PLACES + 1 - k));
        LargestOf(subject, m);
        // The ends of the small sub-spans alone.
        std::vector<PositionResult> ends;
        for (const PositionResult& p : subject.member.Positions())
            if (p.place != Place::Inside) ends.push_back(p);
        const auto fine = Largest(ends);
        for (std::size_t j = 0; j < MEASURES; ++j) {
            const std::string what = "seed " + std::to_string(SEED) + ", member " + std::to_string(i) + ", " +
                                     *CString(row.name).ToUtf8() + ", " + NAMES[j];
            ASSERT_LE(fine[j], whole[j] * (1.0 + 1e-9)) << what;
            if (whole[j] < 1e3) {
                ASSERT_GE(fine[j], 0.9 * whole[j]) << what;
            }
        }
    }
}

// A parabola whose vertex lies within rounding of an end has its extreme at that end: there is no position between them. M = -q x (L - x)/2
// over x from 0 to L/2 has its vertex at the right end; from 0 to 0.4 L it has none, and to 0.6 L one at 0.5 L.
TEST(Positions, OfAnExtremeAtAnEndAreThoseOfTheEnds)
{
    const auto places = [](double share) {
        const double L = 6.0, q = 20e3, x = share * L;
        Checked c(OneSubSpan({x, Vector(0, 0, -0.5 * q * L), Vector(0, 0, q * (x - 0.5 * L)), Vector(0, 0, 0),
                              Vector(0, -0.5 * q * x * (L - x), 0)}));
        c.Check();
        std::vector<double> at;
        for (const PositionResult& p : c.member.Positions())
            at.push_back(p.x);
        return at;
    };
    EXPECT_EQ(places(0.4).size(), 2U);
    EXPECT_EQ(places(0.5).size(), 2U);
    EXPECT_EQ(places(0.5 + 1e-7).size(), 2U);
    const std::vector<double> inside = places(0.6);
    ASSERT_EQ(inside.size(), 3U);
    EXPECT_NEAR(inside[1], 3.0, 1e-12);
}
