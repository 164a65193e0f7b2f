// Lateral-torsional buckling by the tables' C1 and by the compression flange, 6.3.2.4.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "CheckedMember.h"

using namespace EC3Test;
using Design::CheckStatus;

namespace {

const wchar_t UB[] = L"UB 457x191x67";

DesignOptions ByTables()
{
    DesignOptions options;
    options.mcr = CriticalMoment::C1;
    return options;
}

DesignOptions ByFlange()
{
    DesignOptions options;
    options.lateral = LateralMethod::Simplified;
    return options;
}

// Between forks, moments at both ends.
DesignTest::Member EndMoments(double L, double left, double right, const wchar_t* along = L"Free")
{
    DesignTest::Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, L, L"Pinned");
    AddSubSpan(m, (right - left) / L, (right - left) / L, left, right, along);
    return m;
}

// A simple span of 6 m with a force at a place, N, and a uniform load, N/m.
DesignTest::Member Loaded(double P, double at, double w)
{
    DesignTest::Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, at, L"Free");
    AddPoint(m, 6.0, L"Pinned");
    const double left = P * (6.0 - at) / 6.0 + 3.0 * w, M = -left * at + 0.5 * w * at * at;
    AddSubSpan(m, -left, -left + w * at, 0.0, M);
    AddSubSpan(m, -left + w * at + P, P * at / 6.0 + 3.0 * w, M, 0.0);
    return m;
}

} // namespace

// C1 as handbooks have it. End moments: (1.33 - 0.33 ψ)². A uniform load and a force at the middle of a simple span: 1.127 and 1.348. Others:
// (35 M²/(M² + 9 M2² + 16 M3² + 9 M4²))^0.5 of the quarter points.
TEST(LateralByTables, HasC1OfTheMoments)
{
    const auto C1 = [](const DesignTest::Member& m) { return Checked(m, UB, L"S275", true, ByTables()).Value(L"C1"); };
    EXPECT_NEAR(C1(EndMoments(6.0, 100e3, 100e3)), 1.0, 1e-9);
    for (const auto& [left, right] : {std::pair(100e3, -50e3), std::pair(-50e3, 100e3), std::pair(50e3, -100e3)})
        EXPECT_NEAR(C1(EndMoments(6.0, left, right)), 1.495 * 1.495, 1e-9);
    EXPECT_NEAR(C1(Loaded(0.0, 3.0, 20e3)), 1.127, 1e-12);
    EXPECT_NEAR(C1(Loaded(60e3, 3.0, 0.0)), 1.348, 1e-12);
    // The force at a third: M2, M3, M4 are 0.75, 0.75 and 0.375 of M: (35/16.328)^0.5.
    EXPECT_NEAR(C1(Loaded(60e3, 2.0, 0.0)), 1.4641, 1e-4);
    EXPECT_NEAR(C1(Loaded(60e3, 4.0, 0.0)), 1.4641, 1e-4);
    // 10 kN/m and 30 kN: 56.25 of 90 kNm at the quarters: (35/24.031)^0.5.
    EXPECT_NEAR(C1(Loaded(30e3, 3.0, 10e3)), 1.2068, 1e-4);
    // 20 kN/m and 60 kNm at the left end: 22.5, 60, 52.5 and at most 62.5 kNm (at 3.5 m): (35 * 62.5²/90869)^0.5.
    DesignTest::Member fixed;
    AddPoint(fixed, 0.0, L"Pinned");
    AddPoint(fixed, 6.0, L"Pinned");
    AddSubSpan(fixed, -70e3, 50e3, 60e3, 0.0);
    EXPECT_NEAR(C1(fixed), 1.2266, 1e-4);
    // Two equal forces at the quarters: the same moment at all three points, (35/35)^0.5.
    DesignTest::Member two;
    for (const auto& [x, restraint] :
         {std::pair(0.0, L"Pinned"), std::pair(1.5, L"Free"), std::pair(4.5, L"Free"), std::pair(6.0, L"Pinned")})
        AddPoint(two, x, restraint);
    AddSubSpan(two, -40e3, -40e3, 0.0, -60e3);
    AddSubSpan(two, 0.0, 0.0, -60e3, -60e3);
    AddSubSpan(two, 40e3, 40e3, -60e3, 0.0);
    EXPECT_NEAR(C1(two), 1.0, 1e-9);
}

// An end that is held sideways and free to twist is no fork.
TEST(LateralByTables, NeedsEndsThatAreHeldAgainstTwist)
{
    DesignTest::Member m = EndMoments(6.0, 50e3, 50e3);
    m.points[1].SetRestraint(DesignTest::Restraint(L"MAJV MINV"));
    const Checked c(m, UB, L"S275", false, ByTables());
    EXPECT_EQ(c.Rule(L"6.3.2").status, CheckStatus::NotEvaluated);
    EXPECT_EQ(std::wstring(c.Rule(L"6.3.2").reason), L"an end is no fork: the closed form of Mcr does not hold");
    EXPECT_FALSE(c.passed);
}

// A load on the middle third and a couple at the middle are neither of the two single loads that tables have.
// 20 kN/m over 2 m: 30, 50, 30 kNm, (35 * 50²/(50² + 9 * 30² + 16 * 50² + 9 * 30²))^0.5 = 1.2209.
// A couple of 100 kNm where twist is held: 25, 50, 25 kNm, (35/(1 + 2.25 + 16 + 2.25))^0.5 = 1.2759.
TEST(LateralByTables, HasC1OfTheQuarterPointsBesideSingleLoads)
{
    const auto C1 = [](const DesignTest::Member& m) { return Checked(m, UB, L"S275", true, ByTables()).Value(L"C1"); };
    DesignTest::Member third;
    for (const auto& [x, restraint] :
         {std::pair(0.0, L"Pinned"), std::pair(2.0, L"Free"), std::pair(4.0, L"Free"), std::pair(6.0, L"Pinned")})
        AddPoint(third, x, restraint);
    AddSubSpan(third, -20e3, -20e3, 0.0, -40e3);
    AddSubSpan(third, -20e3, 20e3, -40e3, -40e3);
    AddSubSpan(third, 20e3, 20e3, -40e3, 0.0);
    EXPECT_NEAR(C1(third), 1.2209, 1e-4);
    DesignTest::Member couple;
    for (const auto& [x, restraint] : {std::pair(0.0, L"Pinned"), std::pair(3.0, L"TR"), std::pair(6.0, L"Pinned")})
        AddPoint(couple, x, restraint);
    AddSubSpan(couple, 50e3 / 3.0, 50e3 / 3.0, 0.0, 50e3);
    AddSubSpan(couple, 50e3 / 3.0, 50e3 / 3.0, -50e3, 0.0);
    EXPECT_NEAR(C1(couple), 1.2759, 1e-4);
}

// The closed form is for forks and sections that are symmetrical about the major axis; a length without a moment needs none.
TEST(LateralByTables, TellsWhereItDoesNotHold)
{
    const auto reason = [](const DesignTest::Member& m, const wchar_t* section) {
        const Checked c(m, section, L"S275", false, ByTables());
        EXPECT_FALSE(c.passed);
        for (const Design::RuleFinding& f : c.findings.rules)
            if (f.topic == Design::Topic::LateralTorsional && f.status == CheckStatus::NotEvaluated)
                return std::wstring(f.reason);
        return std::wstring();
    };
    EXPECT_EQ(reason(EndMoments(6.0, 20e3, 20e3), L"GI 300x300x100x6x20x8"),
              L"the closed form of Mcr with the tables' C1 is for sections that are symmetrical about the major axis");
    const wchar_t noFork[] = L"an end is no fork: the closed form of Mcr does not hold";
    for (const bool rootLeft : {true, false}) {
        DesignTest::Member cantilever;
        AddPoint(cantilever, 0.0, rootLeft ? L"Fixed" : L"Free");
        AddPoint(cantilever, 3.0, rootLeft ? L"Free" : L"Fixed");
        AddSubSpan(cantilever, -20e3, -20e3, rootLeft ? 60e3 : 0.0, rootLeft ? 0.0 : -60e3);
        EXPECT_EQ(reason(cantilever, UB), noFork);
    }
    // Three lengths between forks, the last one without a moment: ψ = 0 in the first, uniform in the second.
    DesignTest::Member m;
    for (const double x : {0.0, 3.0, 6.0, 9.0})
        AddPoint(m, x, L"Pinned");
    AddSubSpan(m, 20e3, 20e3, 0.0, 60e3);
    AddSubSpan(m, 0.0, 0.0, 60e3, 60e3);
    AddSubSpan(m, 0.0, 0.0, 0.0, 0.0);
    const Checked c(m, UB, L"S275", false, ByTables());
    std::vector<double> C1;
    for (const Design::SpanFinding& s : c.findings.spans)
        if (s.resistance.symbol == std::wstring(L"C1")) C1.push_back(s.resistance.value);
    ASSERT_EQ(C1.size(), 2u);
    EXPECT_NEAR(C1[0], 1.33 * 1.33, 1e-9);
    EXPECT_NEAR(C1[1], 1.0, 1e-9);
}

// UB 457x191x67 in S275 of 3 m under a uniform moment: λ̄f = 0.705 (OptionsTest). kc of Table 6.6 is 1/(1.33 - 0.33 ψ), 1 for loads between.
TEST(Simplified, HasKcOfTheEndMoments)
{
    const auto slenderness = [](const DesignTest::Member& m) {
        return Checked(m, UB, L"S275", false, ByFlange()).Rule(L"6.3.2.4").slenderness;
    };
    EXPECT_NEAR(slenderness(EndMoments(3.0, -200e3, -200e3)), 0.705, 0.002);
    EXPECT_NEAR(slenderness(EndMoments(3.0, 0.0, 200e3)), 0.705 / 1.33, 0.002);
    EXPECT_NEAR(slenderness(EndMoments(3.0, 200e3, 0.0)), 0.705 / 1.33, 0.002);
    EXPECT_NEAR(slenderness(EndMoments(3.0, 200e3, -100e3)), 0.705 / 1.495, 0.002);
    EXPECT_NEAR(slenderness(Beam(3.0, 150e3, 0.0)), 0.705, 0.002);
}

// A deck that holds the compressed flange along the middle of three parts of 2, 3 and 3 m: the longer part counts, the held one does not. Pressed
// along its whole length the flange is no strut.
TEST(Simplified, GoesByTheLengthsOfTheCompressedFlange)
{
    DesignTest::Member m;
    for (const auto& [x, restraint] :
         {std::pair(0.0, L"Pinned"), std::pair(2.0, L"Free"), std::pair(5.0, L"Free"), std::pair(8.0, L"Pinned")})
        AddPoint(m, x, restraint);
    for (const wchar_t* along : {L"Free", L"F1L", L"Free"})
        AddSubSpan(m, 0.0, 0.0, -200e3, -200e3, along);
    EXPECT_NEAR(Checked(m, UB, L"S275", false, ByFlange()).Rule(L"6.3.2.4").slenderness, 0.705, 0.002);
    const Checked held(EndMoments(8.0, -200e3, -200e3, L"F1L"), UB, L"S275", true, ByFlange());
    EXPECT_EQ(held.Rule(L"6.3.2.4").slenderness, 0.0);
    EXPECT_NEAR(held.Rule(L"6.3.2.4").resistance / 1e3, 404.5, 1.0);
    // Lengths between forks have their own flanges: 3 m and 2 m, and one without a moment.
    DesignTest::Member spans;
    for (const double x : {0.0, 3.0, 5.0, 9.0})
        AddPoint(spans, x, L"Pinned");
    AddSubSpan(spans, 0.0, 0.0, -200e3, -200e3);
    AddSubSpan(spans, 0.0, 0.0, -200e3, -200e3);
    AddSubSpan(spans, 0.0, 0.0, 0.0, 0.0);
    const Checked c(spans, UB, L"S275", false, ByFlange());
    std::vector<double> found;
    for (const Design::RuleFinding& f : c.findings.rules)
        if (f.clause == std::wstring(L"6.3.2.4")) found.push_back(f.slenderness);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_NEAR(found[0], 0.705, 0.002);
    EXPECT_NEAR(found[1], 0.705 * 2.0 / 3.0, 0.002);
}

// 6.3.2.4(3)B: curve d for welded sections up to h/tf of 44 ε, c for others. Both sections in S275 (ε 0.9244, 44 ε = 40.7), 4 m, UK kfl 1:
// I 400x200x8x12 (h/tf 33.3): If,z = 12 * 200³/12 = 8e6, A = 2400 + 376 * 8/6 = 2901 mm², if,z 52.5 mm, λ̄f = 4000/(52.5 * 86.8) = 0.878, d: χ 0.5334.
// I 700x200x8x12 (h/tf 58.3): A = 2400 + 676 * 8/6 = 3301 mm², if,z 49.2 mm, λ̄f = 0.936, c: χ 0.5758.
TEST(Simplified, TakesTheCurvesOfWeldedSections)
{
    const auto chi = [](double l, double alpha) {
        const double phi = 0.5 * (1.0 + alpha * (l - 0.2) + l * l);
        return 1.0 / (phi + std::sqrt(phi * phi - l * l));
    };
    for (const auto& [name, depth, alpha] :
         {std::tuple(L"I 400x200x8x12", 400.0, 0.76), std::tuple(L"I 700x200x8x12", 700.0, 0.49)}) {
        const Checked c(EndMoments(4.0, -250e3, -250e3), name, L"S275", true, ByFlange());
        const double l =
            4000.0 / (std::sqrt(8e6 / (2400.0 + (depth - 24.0) * 8.0 / 6.0)) * 93.9 * std::sqrt(235.0 / 275.0));
        const Design::RuleFinding& f = c.Rule(L"6.3.2.4");
        EXPECT_NEAR(f.slenderness, l, 1e-6);
        EXPECT_NEAR(c.Value(L"chiLT"), chi(l, alpha), 1e-6);
        EXPECT_NEAR(f.utilisation, 250e3 / f.resistance, 1e-9);
    }
}

TEST(Simplified, TellsWhereItDoesNotHold)
{
    const auto reason = [](const DesignTest::Member& m, const wchar_t* section) {
        const Checked c(m, section, L"S355", false, ByFlange());
        EXPECT_FALSE(c.passed);
        for (const Design::RuleFinding& f : c.findings.rules)
            if (f.topic == Design::Topic::LateralTorsional && f.status == CheckStatus::NotEvaluated)
                return std::wstring(f.reason);
        return std::wstring();
    };
    // c/t of the flange (300 - 6)/2/8 = 18.4 above 14 ε = 11.4.
    EXPECT_EQ(reason(EndMoments(4.0, -50e3, -50e3), L"I 800x300x6x8"),
              L"6.3.2.4 is not applied to class 4, whose flange and web are effective in part");
    DesignTest::Member high = EndMoments(4.0, -50e3, -50e3);
    Steel::CRestraint r = high.subSpans[0].GetRestraint();
    r.SetLoadHeight(0.1);
    high.subSpans[0].SetRestraint(r);
    EXPECT_EQ(reason(high, UB), L"a load acts off the shear centre, which 6.3.2.4 does not take");
    // Either end holds the other flange alone.
    for (const bool atLeft : {true, false}) {
        DesignTest::Member oneFlange = EndMoments(4.0, -50e3, -50e3);
        oneFlange.points[atLeft ? 0 : 1].SetRestraint(DesignTest::Restraint(L"MAJV F2L"));
        EXPECT_EQ(reason(oneFlange, UB),
                  L"6.3.2.4 is for a compression flange that is held laterally at both ends of its length");
    }
    // What is free to move fails, whatever its flange.
    DesignTest::Member loose = EndMoments(4.0, -50e3, -50e3);
    for (Steel::CMemberPoint& p : loose.points)
        p.SetRestraint(DesignTest::Restraint(L"MAJV"));
    const Checked c(loose, UB, L"S355", false, ByFlange());
    EXPECT_EQ(c.Rule(L"6.3.2").status, CheckStatus::Failed);
}

// The tip of a cantilever under a force far below its resistance: C1 above that of any diagram of Table 6.6 decides nothing, and is not warned of.
TEST(Lateral, WarnsOfALargeC1OnlyWhereItDecides)
{
    const auto warned = [](double P, double N) {
        DesignTest::Member m;
        AddPoint(m, 0.0, L"Fixed");
        AddPoint(m, 5.0, L"Free");
        AddSubSpan(m, -P, -P, 5.0 * P, 0.0);
        m.subSpans[0].SetForcesAll({-N, 0.0, -P}, {-N, 0.0, -P});
        const Checked c(m, L"UB 457x191x67", L"S355");
        EXPECT_GT(c.Value(L"C1"), 2.76);
        return std::any_of(c.findings.warnings.begin(), c.findings.warnings.end(),
                           [](const Design::Warning& w) { return w.kind == Design::WarningKind::CurveFactor; });
    };
    EXPECT_FALSE(warned(5e3, 0.0));
    EXPECT_TRUE(warned(5e3, 10e3)) << "its resistance is part of an interaction";
}
