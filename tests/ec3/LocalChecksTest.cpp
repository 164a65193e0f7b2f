// Checks of cross-sections along a member, 6.2, by hand.

#include <gtest/gtest.h>

#include <cmath>
#include <cwchar>
#include <numbers>

#include "CheckedMember.h"

using namespace EC3Test;
using Design::CheckStatus;

namespace {

Checked WithNetArea(const DesignTest::Member& m, const wchar_t* section, double netGross)
{
    return {m, section, L"S275", true, {}, -1, UkAnnex(), [=](CSteelMemberEC3& member) {
                CSection holed = member.GetKeltrixSec();
                CSecComp component = holed.Component(0);
                component.SetNetGross(netGross);
                holed.SetComponent(0, component);
                EXPECT_TRUE(member.SetKeltrixSec(holed));
            }};
}

double StepOf(const Design::RuleFinding& f, const std::wstring& symbol)
{
    for (const Design::Step& step : f.steps)
        if (step.symbol == symbol) return step.value;
    return std::nan("");
}

} // namespace

// UB 457x191x67 in S275, A 8551 mm²: net 80 %, 0.9 * 0.8 * 8551 * 410/1.10 = 2295 kN below A fy = 2352 kN; net 90 %, 2582 kN above it.
TEST(LocalChecks, TensionOfANetSection)
{
    const DesignTest::Member tie = Column(4.0, -1000e3, 0.0, 0.0);
    const Checked c = WithNetArea(tie, L"UB 457x191x67", 0.8);
    EXPECT_NEAR(c.Rule(L"6.2.3", L"NtRd").resistance / 1e3, 2295.0, 1.0);
    EXPECT_NEAR(c.Rule(L"6.2.3", L"NtRd").utilisation, 1000.0 / 2295.0, 1e-3);
    EXPECT_NEAR(WithNetArea(tie, L"UB 457x191x67", 0.9).Rule(L"6.2.3", L"NtRd").resistance / 1e3, 2352.0, 1.0);
    EXPECT_EQ(std::wstring(c.Rule(L"6.2.5(4)").reason), L"no moment");
}

// All holes in one flange of 189.9 * 12.7 = 2412 mm². Net 99 %: 0.9 * 2326 * 410/1.10 = 780 kN is not below 2412 * 275 = 663 kN; net 95 %:
// 0.9 * 1984 * 410/1.10 = 666 kN; net 94 %: 0.9 * 1899 * 410/1.10 = 637 kN is below it.
TEST(LocalChecks, HolesInTheTensionFlange)
{
    const auto status = [](double netGross, double My, double Mz, const wchar_t* section = L"UB 457x191x67") {
        return WithNetArea(Column(4.0, 0.0, My, Mz), section, netGross).Rule(L"6.2.5(4)").status;
    };
    EXPECT_EQ(status(0.99, 50e3, 0.0), CheckStatus::NotApplicable);
    EXPECT_EQ(status(0.95, 50e3, 0.0), CheckStatus::NotApplicable);
    EXPECT_EQ(status(0.94, 50e3, 0.0), CheckStatus::NotEvaluated);
    EXPECT_EQ(status(0.94, 0.0, 5e3), CheckStatus::NotEvaluated);
    EXPECT_EQ(status(0.94, 0.0, 0.0), CheckStatus::NotApplicable);
    // What has no two flanges has no flange to compare.
    EXPECT_EQ(status(0.99, 1e3, 0.0, L"T 229x191x49"), CheckStatus::NotEvaluated);
}

// UB 457x191x67, 500 kN and 300 kNm at one place: Av = 8551 - 2 * 189.9 * 12.7 + 28.9 * 12.7 = 4095 mm², Vpl 650 kN, ρ = (1000/650 - 1)² = 0.290;
// Aw = 428 * 8.5 = 3638 mm², (6.30): (1471e3 - 0.290 * 3638²/(4 * 8.5)) 275 = 373.5 kNm.
TEST(LocalChecks, BendingWithHighShear)
{
    const Checked c(Column(0.6, 0.0, 300e3, 0.0), L"UB 457x191x67", L"S275", true);
    const Design::RuleFinding& f = c.Rule(L"6.2.8", L"MyVRd");
    EXPECT_NEAR(f.resistance / 1e3, 373.5, 0.5);
    EXPECT_NEAR(f.utilisation, 300.0 / 373.5, 2e-3);
    EXPECT_NEAR(StepOf(f, L"ρz"), 0.290, 0.001);
    EXPECT_NEAR(StepOf(f, L"MyEd"), 300e3, 1e-6);
    // With an axial force it is a matter of 6.2.10, by the same share of the web.
    const Checked axial(Column(0.6, 300e3, 300e3, 0.0), L"UB 457x191x67", L"S275", true);
    EXPECT_NEAR(StepOf(axial.Rule(L"6.2.9"), L"ρz"), 0.290, 0.001);
}

// CHS 168.3x10 in S275: A = π 158.3 * 10 = 4973 mm², Vpl = 2 A/π 275/3^0.5 = 502.7 kN, Wpl = (168.3³ - 148.3³)/6 = 250.9 cm³.
// 320 kN and 240 kN make 400 kN, ρ = (800/502.7 - 1)² = 0.350 of both: 0.650 * 69.0 = 44.9 kNm. (32/44.9)² + (24/44.9)² = 0.795.
TEST(LocalChecks, ATubeCarriesTheResultant)
{
    const Checked c(Column(0.1, 0.0, 32e3, 24e3), L"CHS 168.3x10", L"S275", true);
    const Design::RuleFinding& shear = c.Rule(L"6.2.6");
    EXPECT_NEAR(shear.utilisation, 400.0 / 502.7, 2e-3);
    EXPECT_NEAR(StepOf(shear, L"VEd"), 400e3, 1e-3);
    EXPECT_NEAR(c.Rule(L"6.2.8", L"MyVRd").utilisation, 32.0 / 44.9, 3e-3);
    EXPECT_NEAR(c.Rule(L"6.2.8", L"MzVRd").utilisation, 24.0 / 44.9, 3e-3);
    EXPECT_NEAR(StepOf(c.Rule(L"6.2.8", L"MyVRd"), L"ρy"), 0.350, 0.002);
    EXPECT_NEAR(c.Rule(L"6.2.9").utilisation, 0.795, 0.003);
}

// CHS 323.9x5 in S275: d/t = 64.8 lies between 70 ε² = 59.8 and 90 ε² = 76.9, class 3. 300 kN beside 30 and 40 kNm: stresses of the resultant of 50 kNm.
// In S355 it is class 4, for EN 1993-1-6: nothing but tension and shear is evaluated.
TEST(LocalChecks, ATubeOfClass3AddsItsStresses)
{
    const Checked c(Column(3.0, 300e3, 30e3, 40e3), L"CHS 323.9x5", L"S275", true);
    ASSERT_EQ(c.member.SectionClass(), 3);
    const double A = std::numbers::pi * 318.9 * 5.0;
    const double W = std::numbers::pi * (std::pow(323.9, 4.0) - std::pow(313.9, 4.0)) / (32.0 * 323.9);
    EXPECT_NEAR(c.Rule(L"6.2.9").utilisation, 300e3 / (A * 275.0) + 50e6 / (W * 275.0), 1e-3);
    const Checked slender(Column(3.0, 300e3, 30e3, 40e3), L"CHS 323.9x5", L"S355", true);
    for (const wchar_t* clause : {L"6.2.4", L"6.2.5", L"6.2.9", L"6.3.1", L"6.3.3 (6.61)", L"6.3.3 (6.62)"})
        EXPECT_EQ(slender.Rule(clause).status, CheckStatus::NotEvaluated)
            << std::string(clause, clause + std::wcslen(clause));
    EXPECT_TRUE(slender.Rule(L"6.2.6").WasEvaluated());
    // My alone: the reason is that of its own axis.
    const Checked major(Column(3.0, 300e3, 30e3, 0.0), L"CHS 323.9x5", L"S355");
    EXPECT_EQ(major.Rule(L"6.3.3 (6.61)").status, CheckStatus::NotEvaluated);
}

// BOX 600x1200x20x10 in S355 (fy 345), 2000 kN across and 6000 kNm about z-z: hw 1160, Vbw 2357 kN, η3 0.8485. The walls of 600x20 are the flanges:
// 2 (15 * 0.8253 * 20 + 10) 20 = 10304 mm² count, Mf = 10304 * 1180 * 345 = 4195 kNm; Mpl = (2 * 12000 * 590 + 20 * 1160²/4) 345 = 7206 kNm.
// 6000/7206 + (1 - 4195/7206)(2 * 0.8485 - 1)² = 1.036.
TEST(LocalChecks, WallsAcrossABoxThatBuckleInShearAlsoBend)
{
    const Checked c(Column(3.0, 0.0, 0.0, 6000e3), L"BOX 600x1200x20x10", L"S355", true);
    const Design::RuleFinding& f = c.Rule(L"EN 1993-1-5 7.1");
    EXPECT_NEAR(f.utilisation, 1.036, 0.002);
    EXPECT_EQ(f.status, CheckStatus::Failed);
    EXPECT_NEAR(StepOf(f, L"η3"), 0.8485, 0.001);
    EXPECT_NEAR(StepOf(f, L"MfRd") / 1e3, 4195.0, 5.0);
    EXPECT_NEAR(StepOf(f, L"MplRd") / 1e3, 7206.0, 5.0);
    // Below half of Vbw there is nothing to add.
    EXPECT_EQ(Checked(Column(6.0, 0.0, 0.0, 6000e3), L"BOX 600x1200x20x10", L"S355").Rule(L"EN 1993-1-5 7.1").status,
              CheckStatus::NotApplicable);
}

// A box whose walls across are thin, bent along its webs alone: no shear acts across them, and the webs of hw/tw = 56 do not buckle.
TEST(LocalChecks, ThinWallsAcrossWithoutShearHaveNoPart)
{
    const Checked c(Column(3.0, 0.0, 500e3, 0.0), L"BOX 600x1200x20x10", L"S355");
    EXPECT_EQ(c.Rule(L"EN 1993-1-5 5").status, CheckStatus::NotApplicable);
    EXPECT_EQ(c.Rule(L"EN 1993-1-5 7.1").status, CheckStatus::NotApplicable);
}

// I 1200x300x8x20 in S355 (fy 345), 600 kN and 2700 kNm: λw = 145/(86.4 * 0.8253) = 2.0335, χw 0.4082, Vbw 754.5 kN, η3 0.7952;
// Mf = 6000 * 1180 * 345 = 2442.6 kNm, Mpl = (6000 * 1180 + 8 * 1160²/4) 345 = 3371.1 kNm:
// 2700/3371.1 + (1 - 2442.6/3371.1)(2 * 0.7952 - 1)² = 0.897. A moment of 2400 kNm is below that of the flanges.
TEST(LocalChecks, AWebThatBucklesInShearAlsoBends)
{
    const Checked c(Column(4.5, 0.0, 2700e3, 0.0), L"I 1200x300x8x20", L"S355", true);
    const Design::RuleFinding& f = c.Rule(L"EN 1993-1-5 7.1");
    EXPECT_EQ(f.status, CheckStatus::Passed);
    EXPECT_NEAR(f.utilisation, 0.897, 0.001);
    EXPECT_EQ(f.start, 4.5);
    EXPECT_NEAR(StepOf(f, L"η3"), 0.7952, 0.0005);
    EXPECT_NEAR(StepOf(f, L"MfRd") / 1e3, 2442.6, 0.5);
    EXPECT_NEAR(StepOf(f, L"MplRd") / 1e3, 3371.1, 0.5);
    EXPECT_NEAR(StepOf(f, L"left side"), 0.897, 0.001);
    EXPECT_EQ(Checked(Column(4.0, 0.0, 2400e3, 0.0), L"I 1200x300x8x20", L"S355").Rule(L"EN 1993-1-5 7.1").status,
              CheckStatus::NotApplicable);
}

// The same girder with 1000 kNm, 600 kN and 3520 kN of compression, more than its web of 9280 mm² can bear, 3201.6 kN: 7.1(5), Mf = 0.
// n = 3520/7341.6 = 0.4795, a 0.4361, Mpl = 3371.1 (1 - 0.4795)/(1 - 0.2180) = 2244.1 kNm: 1000/2244.1 + 0.5904² = 0.794.
// In tension the flanges keep Mf = 2442.6 (1 - 3520/4140) = 365.8 kNm: 0.4456 + (1 - 0.1630) 0.3486 = 0.737.
TEST(LocalChecks, ACompressionThatTakesTheWebLeavesNothingToTheFlanges)
{
    const Checked pressed(Column(1.0 / 0.6, 3520e3, 1000e3, 0.0), L"I 1200x300x8x20", L"S355", true);
    const Design::RuleFinding& f = pressed.Rule(L"EN 1993-1-5 7.1");
    EXPECT_NEAR(f.utilisation, 0.794, 0.001);
    EXPECT_EQ(StepOf(f, L"MfRd"), 0.0);
    const Checked pulled(Column(1.0 / 0.6, -3520e3, 1000e3, 0.0), L"I 1200x300x8x20", L"S355", true);
    EXPECT_NEAR(pulled.Rule(L"EN 1993-1-5 7.1").utilisation, 0.737, 0.001);
    EXPECT_NEAR(StepOf(pulled.Rule(L"EN 1993-1-5 7.1"), L"MfRd") / 1e3, 365.8, 0.5);
    EXPECT_TRUE(Checked(Column(1.0 / 0.6, -3520e3, 1000e3, 0.0), L"I 1200x300x8x20", L"S355")
                    .Rule(L"EN 1993-1-5 7.1")
                    .steps.empty());
}

// CHS 323.9x5 in S355 is of class 4. Pulled about by nothing but compression it has no entry of moments, and where an end is not held its
// length is what is told of it.
TEST(LocalChecks, ASlenderTubeInCompressionAlone)
{
    const Checked c(Column(3.0, 300e3, 0.0, 0.0), L"CHS 323.9x5", L"S355");
    EXPECT_EQ(c.Rule(L"6.2.4").status, CheckStatus::NotEvaluated);
    EXPECT_EQ(std::wstring(c.Rule(L"6.3.1").reason), L"a circular hollow section of class 4 is for EN 1993-1-6");
    EXPECT_EQ(c.Rule(L"6.3.3 (6.61)").status, CheckStatus::NotApplicable);
    DesignTest::Member free = Column(3.0, 300e3, 0.0, 0.0);
    free.points[1].SetRestraint(DesignTest::Restraint(L"Free"));
    const Checked loose(free, L"CHS 323.9x5", L"S355");
    EXPECT_EQ(loose.Rule(L"6.3.1").status, CheckStatus::NotEvaluated);
    EXPECT_NE(std::wstring(loose.Rule(L"6.3.1").reason).find(L"effective lengths have to be given"),
              std::wstring::npos);
    EXPECT_FALSE(loose.passed);
}
