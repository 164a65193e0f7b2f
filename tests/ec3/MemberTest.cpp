// Members by hand, and what holds for any member.

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "CheckedMember.h"

using namespace EC3Test;
using Design::CheckStatus;
using Design::RuleFinding;

namespace {

// Sections of every family, plastic and slender.
const wchar_t* SectionOfMember(int i)
{
    static const wchar_t* const SECTIONS[] = {L"UC 254x254x89", L"UB 457x191x67",   L"RHS 300x200x8", L"CHS 273x8",
                                              L"SHS 200x200x5", L"UB 1016x305x222", L"UC 152x152x23"};
    return SECTIONS[static_cast<std::size_t>(i) % std::size(SECTIONS)];
}

// Forces of a size that such sections are near their resistance under.
DesignTest::Member RandomMember(std::mt19937& random)
{
    DesignTest::Member m = DesignTest::RandomMember(random);
    Scale(m, std::uniform_real_distribution<double>(0.02, 0.5)(random));
    return m;
}

} // namespace

// SCI P364 (2009), example 2: UB 533x210x92 in S275, 6.5 m, 63.7 kN/m and 125 kN, held along: MEd 539.5, VEd 269.5, Mc,Rd 649 kNm, Vpl,Rd 909 kN, 0.83
// and 0.30.
TEST(Member, WorkedExampleOfARestrainedBeam)
{
    const Checked c(Beam(6.5, 63.7e3, 125e3, DECK), L"UB 533x210x92", L"S275");
    EXPECT_TRUE(c.passed);
    EXPECT_EQ(c.member.SectionClass(), 1);
    EXPECT_NEAR(c.Rule(L"6.2.5", L"McyRd").resistance / 1e3, 649.0, 1.0);
    EXPECT_NEAR(c.Rule(L"6.2.5", L"McyRd").utilisation, 539.5 / 649.0, 0.003);
    // The example takes A = 117 cm², rounded from 117.4: Av 5724 instead of 5761 mm².
    EXPECT_NEAR(c.Rule(L"6.2.6", L"VczRd").resistance / 1e3, 909.0 * 5761.0 / 5724.0, 1.0);
    EXPECT_NEAR(c.Rule(L"6.2.6", L"VczRd").utilisation, 269.5 / 909.0, 0.003);
    EXPECT_EQ(c.Rule(L"6.3.2").status, CheckStatus::NotApplicable) << "held along";
}

// By hand. UC 254x254x89 in S275 (fy 265), 4.5 m, N 1200 kN, My 45 and Mz 12 kNm at one end. A 113.3 cm², Iy 14270, Iz 4857 cm⁴, Wpl 1224, 575 cm³.
// Ncr,y = π² 210 * 14270e4/4500² = 14605 kN, λy = (3002/14605)^0.5 = 0.4534, b: χy 0.904, Nb,y 2715 kN
// Ncr,z = 4971 kN, λz = 0.777, c: χz 0.6765, Nb,z 2031 kN
// Cmy = Cmz = CmLT = 0.6; ny 0.442, nz 0.591
// kyy = 0.6(1 + 0.2534 * 0.442) = 0.667, kzz = 0.6(1 + (1.554 - 0.6) 0.591) = 0.938, kyz = 0.563, kzy = 1 - 0.1 * 0.777 * 0.591/0.35 = 0.869
// My/Mb = 45/324.4 = 0.1387 (χLT 1), Mz/Mc = 12/152.4 = 0.0787: (6.61) 0.442 + 0.0925 + 0.0443 = 0.579; (6.62) 0.591 + 0.1205 + 0.0738 = 0.785
TEST(Member, ColumnWithMomentsAboutBothAxesByHand)
{
    const Checked c(Column(4.5, 1200e3, 45e3, 12e3), L"UC 254x254x89", L"S275");
    EXPECT_TRUE(c.passed);
    EXPECT_NEAR(c.Value(L"NbyRd") / 1e3, 2715.0, 3.0);
    EXPECT_NEAR(c.Value(L"NbzRd") / 1e3, 2031.0, 3.0);
    EXPECT_NEAR(c.Value(L"lambdaY"), 0.4534, 0.0005);
    EXPECT_NEAR(c.Value(L"chiLT"), 1.0, 1e-9);
    EXPECT_NEAR(c.Value(L"kyy"), 0.667, 0.001);
    EXPECT_NEAR(c.Value(L"kyz"), 0.563, 0.001);
    EXPECT_NEAR(c.Value(L"kzy"), 0.869, 0.001);
    EXPECT_NEAR(c.Value(L"kzz"), 0.938, 0.001);
    EXPECT_NEAR(c.Rule(L"6.3.3 (6.61)").utilisation, 0.579, 0.001);
    EXPECT_NEAR(c.Rule(L"6.3.3 (6.62)").utilisation, 0.785, 0.001);
    EXPECT_EQ(c.findings.Governing()->clause, std::wstring(L"6.3.3 (6.62)"));
}

// The same column with a couple at its middle, where twist is held: nothing below it, 20 kNm above. Table B.3 with Ms = Mh and ψ = 0: αs = 1, Cmy = 1.0;
// kyy = 1 + (0.4534 - 0.2) 0.442 = 1.112. The course upside down has the same.
TEST(Member, ACoupleAtTheMiddleHasTheFactorOfItsLargerSide)
{
    for (const bool above : {true, false}) {
        DesignTest::Member m;
        AddPoint(m, 0.0, L"Pinned");
        AddPoint(m, 2.25, L"TR");
        AddPoint(m, 4.5, L"Pinned");
        for (const bool isSecond : {false, true}) {
            const double My = isSecond == above ? 20e3 : 0.0;
            AddSubSpan(m, 0.0, 0.0, My, My);
            m.subSpans.back().SetForcesAll({-1200e3, 0.0, 0.0}, {-1200e3, 0.0, 0.0});
        }
        const Checked c(m, L"UC 254x254x89", L"S275");
        EXPECT_NEAR(c.Value(L"kyy"), 1.112, 0.001) << above;
    }
}

// Closed forms: uniform moment exactly; uniform load at the shear centre with C1 = 1.127 within 1 %.
TEST(Member, ElasticMomentsAreThoseOfTheClosedForms)
{
    DesignTest::Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 6.0, L"Pinned");
    AddSubSpan(m, 0.0, 0.0, -150e3, -150e3);
    const Checked uniform(m, L"UB 457x191x67", L"S275");
    const auto s = Design::MakeProperties(CSection(L"UB 457x191x67"), nullptr).value();
    const double Mcr = ElasticMoment(s, 210e9, 81e9, 6.0, 1.0);
    EXPECT_NEAR(uniform.Value(L"Mcr") / Mcr, 1.0, 1e-4);
    EXPECT_NEAR(uniform.Value(L"C1"), 1.0, 1e-4);
    EXPECT_NEAR(uniform.Value(L"f"), 1.0, 1e-4);
    const Checked load(Beam(6.0, 20e3, 0.0), L"UB 457x191x67", L"S275");
    EXPECT_NEAR(load.Value(L"Mcr") / Mcr, 1.127, 0.012);
    EXPECT_NEAR(load.Value(L"C1"), 1.127, 0.012);
    DesignOptions tables;
    tables.mcr = CriticalMoment::C1;
    const Checked byTables(Beam(6.0, 20e3, 0.0), L"UB 457x191x67", L"S275", false, tables);
    EXPECT_DOUBLE_EQ(byTables.Value(L"C1"), 1.127);
    EXPECT_NEAR(byTables.Value(L"MbRd") / load.Value(L"MbRd"), 1.0, 0.01);
}

TEST(Member, ALoadOnTheTopFlangeLowersTheCriticalMomentAndTheHandbookWayRefusesIt)
{
    DesignTest::Member m = Beam(6.0, 0.0, 100e3);
    Steel::CRestraint r = m.points[1].GetRestraint();
    r.SetRefLoadHeight(Steel::TOP_FLANGE);
    m.points[1].SetRestraint(r);
    const Checked top(m, L"UB 457x191x67", L"S275");
    const Checked centre(Beam(6.0, 0.0, 100e3), L"UB 457x191x67", L"S275");
    EXPECT_LT(top.Value(L"Mcr"), 0.8 * centre.Value(L"Mcr"));
    EXPECT_NEAR(top.Value(L"C1"), centre.Value(L"C1"), 1e-6) << "C1 has all loads at the shear centre";
    DesignOptions tables;
    tables.mcr = CriticalMoment::C1;
    const Checked refused(m, L"UB 457x191x67", L"S275", false, tables);
    EXPECT_FALSE(refused.passed);
    EXPECT_EQ(refused.Rule(L"6.3.2").status, CheckStatus::NotEvaluated);
}

TEST(Member, WhatIsNotEvaluatedKeepsItFromPassing)
{
    DesignTest::Member torsion = Beam(6.0, 10e3, 0.0, DECK);
    torsion.subSpans[0].SetMomentsAll({5e3, 0.0, 0.0}, {5e3, -45e3, 0.0});
    const Checked twisted(torsion, L"UB 457x191x67", L"S275");
    EXPECT_FALSE(twisted.passed);
    EXPECT_EQ(twisted.findings.status, Design::Status::NotChecked);
    EXPECT_EQ(twisted.Rule(L"6.2.7").status, CheckStatus::NotEvaluated);

    DesignTest::Member unbalanced = Beam(6.0, 10e3, 0.0);
    unbalanced.subSpans[0].SetForcesAll({0.0, 0.0, -90e3}, {0.0, 0.0, 0.0});
    const Checked jumps(unbalanced, L"UB 457x191x67", L"S275");
    EXPECT_FALSE(jumps.passed);
    EXPECT_EQ(jumps.Rule(L"6.3.2").status, CheckStatus::NotEvaluated);
    EXPECT_FALSE(jumps.findings.warnings.empty());

    DesignTest::Member free = Column(4.0, 100e3, 0.0, 0.0);
    free.points[1].SetRestraint(DesignTest::Restraint(L"Free"));
    const Checked unheld(free, L"UC 254x254x89", L"S275");
    EXPECT_FALSE(unheld.passed);
    EXPECT_EQ(unheld.Rule(L"6.3.1").status, CheckStatus::NotEvaluated);

    DesignTest::Member loose = Beam(6.0, 10e3, 0.0);
    for (Steel::CMemberPoint& p : loose.points)
        p.SetRestraint(DesignTest::Restraint(L"MAJRV"));
    const Checked mechanism(loose, L"UB 457x191x67", L"S275");
    EXPECT_FALSE(mechanism.passed);
    EXPECT_EQ(mechanism.Rule(L"6.3.2").status, CheckStatus::Failed);
}

// The text is made of the steps, and the numbers are the same without it.
TEST(Member, TextChangesNoNumber)
{
    const DesignTest::Member m = Column(4.5, 1200e3, 45e3, 12e3);
    const Checked with(m, L"UC 254x254x89", L"S275", true);
    const Checked without(m, L"UC 254x254x89", L"S275", false);
    ASSERT_EQ(with.findings.rules.size(), without.findings.rules.size());
    for (std::size_t i = 0; i < with.findings.rules.size(); ++i) {
        EXPECT_EQ(with.findings.rules[i].utilisation, without.findings.rules[i].utilisation);
        EXPECT_TRUE(without.findings.rules[i].steps.empty());
    }
    EXPECT_FALSE(with.Rule(L"6.3.3 (6.62)").steps.empty());
    EXPECT_FALSE(with.findings.parts.empty());
}

// Every rule has an entry, and a member passes only where all that apply were evaluated.
TEST(MemberLaws, NoMemberPassesWithARuleNotEvaluated)
{
    std::mt19937 random(11);
    int passed = 0, failed = 0, open = 0;
    for (int i = 0; i < 400; ++i) {
        const Checked c(RandomMember(random), SectionOfMember(i), L"S355");
        bool fails = false;
        for (const RuleFinding& f : c.findings.rules) {
            EXPECT_EQ(f.status == CheckStatus::Failed, f.WasEvaluated() && f.status != CheckStatus::Passed);
            if (f.status == CheckStatus::Passed) {
                EXPECT_LE(f.utilisation, 1.0) << "member " << i;
            }
            fails = fails || f.status == CheckStatus::Failed;
        }
        EXPECT_EQ(c.passed, !fails && !c.HasOpen()) << "member " << i;
        EXPECT_EQ(c.result.HasFailed(), fails) << "member " << i;
        passed += c.passed;
        failed += fails;
        open += c.HasOpen();
    }
    EXPECT_GT(passed, 20);
    EXPECT_GT(failed, 20);
    EXPECT_GT(open, 20);
}

TEST(MemberLaws, DividingASubSpanChangesNothing)
{
    std::mt19937 random(12);
    for (int i = 0; i < 150; ++i) {
        const DesignTest::Member m = RandomMember(random);
        const auto k = std::uniform_int_distribution<std::size_t>(0, m.subSpans.size() - 1)(random);
        const double s = std::uniform_real_distribution<double>(0.1, 0.9)(random);
        const Checked whole(m, SectionOfMember(i), L"S355");
        const Checked divided(DesignTest::Divided(m, k, s), SectionOfMember(i), L"S355");
        EXPECT_EQ(whole.passed, divided.passed) << "member " << i;
        if (std::isinf(whole.Largest())) continue;
        // Critical moments are found within their estimated error on other meshes.
        EXPECT_NEAR(divided.Largest(), whole.Largest(), 2e-3 * whole.Largest()) << "member " << i;
        EXPECT_NEAR(divided.Rule(L"6.2.5").utilisation, whole.Rule(L"6.2.5").utilisation, 1e-9) << "member " << i;
        EXPECT_NEAR(divided.Rule(L"6.2.9").utilisation, whole.Rule(L"6.2.9").utilisation,
                    1e-7 * (1.0 + whole.Rule(L"6.2.9").utilisation))
            << "member " << i;
    }
}

TEST(MemberLaws, MirroringTheMemberChangesNothing)
{
    std::mt19937 random(13);
    for (int i = 0; i < 150; ++i) {
        const DesignTest::Member m = RandomMember(random);
        const Checked one(m, SectionOfMember(i), L"S355");
        const Checked other(DesignTest::Mirrored(m), SectionOfMember(i), L"S355");
        EXPECT_EQ(one.passed, other.passed) << "member " << i;
        if (std::isinf(one.Largest())) continue;
        EXPECT_NEAR(other.Largest(), one.Largest(), 2e-3 * one.Largest()) << "member " << i;
    }
}

TEST(MemberLaws, MoreLoadNeverMeansLess)
{
    std::mt19937 random(14);
    for (int i = 0; i < 150; ++i) {
        DesignTest::Member m = RandomMember(random);
        const Checked one(m, SectionOfMember(i), L"S355");
        if (!(one.Largest() < 1.0)) continue;
        Scale(m, 1.1);
        const Checked more(m, SectionOfMember(i), L"S355");
        EXPECT_GT(more.Largest(), one.Largest() * (1.0 - 2e-3)) << "member " << i;
    }
}

TEST(MemberLaws, LateralUtilisationIsLinearInTheLoadAndFallsWithTheLengthHeld)
{
    const Checked one(Beam(6.0, 10e3, 0.0), L"UB 457x191x67", L"S275");
    const Checked two(Beam(6.0, 20e3, 0.0), L"UB 457x191x67", L"S275");
    EXPECT_NEAR(two.Rule(L"6.3.2").utilisation, 2.0 * one.Rule(L"6.3.2").utilisation, 1e-6);
    DesignTest::Member held = Beam(6.0, 10e3, 0.0);
    held.points[1].SetRestraint(DesignTest::Restraint(L"F1L F2L TR"));
    const Checked fork(held, L"UB 457x191x67", L"S275");
    EXPECT_LT(fork.Rule(L"6.3.2").utilisation, one.Rule(L"6.3.2").utilisation);
    for (double L = 2.0; L < 12.0; L += 1.0) {
        // The same moment over a longer span.
        const auto M = [](double length) { return 8.0 * 50e3 / (length * length); };
        const Checked shorter(Beam(L, M(L), 0.0), L"UB 457x191x67", L"S275");
        const Checked longer(Beam(L + 1.0, M(L + 1.0), 0.0), L"UB 457x191x67", L"S275");
        EXPECT_GE(longer.Rule(L"6.3.2").utilisation, shorter.Rule(L"6.3.2").utilisation * (1.0 - 1e-9)) << L;
    }
}
