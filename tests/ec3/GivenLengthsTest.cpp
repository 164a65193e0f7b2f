// Members whose effective lengths are given.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "CheckedMember.h"
#include "keltrix/ec3/Classification.h"
#include "keltrix/ec3/Critical.h"
#include "keltrix/ec3/Effective.h"

using namespace EC3Test;
using Design::CheckStatus;

namespace {

Checked CheckedWith(const DesignTest::Member& m, const wchar_t* section, const wchar_t* grade, double Lyy, double Lzz,
                    double Llt, const DesignOptions& options = {})
{
    return {m, section, grade, true, options, -1, UkAnnex(), GivenLengths(Lyy, Lzz, Llt)};
}

// Between forks under the same moment at both ends, and something that holds it sideways at the middle.
DesignTest::Member ColumnHeldInside(double L, double N, double My)
{
    DesignTest::Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddPoint(m, 0.5 * L, L"F1L F2L");
    AddPoint(m, L, L"Pinned");
    for (const double left : {0.0, 0.5 * My}) {
        AddSubSpan(m, My / L, My / L, left, left + 0.5 * My);
        m.subSpans.back().SetForcesAll({-N, 0.0, My / L}, {-N, 0.0, My / L});
    }
    return m;
}

const wchar_t UC[] = L"UC 254x254x89";

} // namespace

// A published table has 278 kNm for UB 457x191x67 in S275 with 4 m and C1 = 1.00: the moment counts as uniform, whatever its course. By hand
// Mcr = (π² 210000 1452e4/4000² (81000 37.14e4 + π² 210000 0.7038e12/4000²))^0.5 = 478 kNm.
TEST(GivenLengths, OfLateralBucklingStandForAUniformMoment)
{
    const DesignTest::Member beam = Column(8.0, 0.0, 150e3, 0.0);
    for (const double Llt : {4.0, -0.5}) {
        const Checked c = CheckedWith(beam, L"UB 457x191x67", L"S275", 8.0, 8.0, Llt);
        EXPECT_NEAR(c.Value(L"Mcr") / 1e3, 478.0, 1.0);
        EXPECT_NEAR(c.Value(L"MbRd") / 1e3, 278.0, 1.0);
        EXPECT_NEAR(c.Rule(L"6.3.2").utilisation, 150.0 / 278.0, 0.003);
        EXPECT_FALSE(c.HasOpen());
    }
    // No length, no buckling: the resistance is Wpl fy = 1471e-6 * 275e6.
    const Checked none = CheckedWith(beam, L"UB 457x191x67", L"S275", 8.0, 8.0, 0.0);
    EXPECT_EQ(none.Rule(L"6.3.2").status, CheckStatus::NotApplicable);
    EXPECT_NEAR(none.Value(L"MbRd") / 1e3, 404.5, 0.5);
    // A tube has no such length.
    const Checked tube = CheckedWith(Column(8.0, 0.0, 15e3, 0.0), L"CHS 168.3x5", L"S275", 8.0, 8.0, 8.0);
    EXPECT_EQ(tube.Rule(L"6.3.2").status, CheckStatus::NotApplicable);
    EXPECT_TRUE(tube.passed);
}

// What a length alone does not say is not evaluated.
TEST(GivenLengths, OfLateralBucklingKnowNeitherLoadHeightsNorFlanges)
{
    DesignTest::Member high = Beam(6.0, 20e3, 0.0);
    Steel::CRestraint along = high.subSpans[1].GetRestraint();
    along.SetRefLoadHeight(Steel::TOP_FLANGE);
    high.subSpans[1].SetRestraint(along);
    const Checked top = CheckedWith(high, L"UB 457x191x67", L"S275", 6.0, 6.0, 6.0);
    EXPECT_EQ(top.Rule(L"6.3.2").status, CheckStatus::NotEvaluated);
    EXPECT_FALSE(top.passed);
    DesignOptions flange;
    flange.lateral = LateralMethod::Simplified;
    const Checked simplified = CheckedWith(Beam(6.0, 20e3, 0.0), L"UB 457x191x67", L"S275", 6.0, 6.0, 6.0, flange);
    EXPECT_EQ(simplified.Rule(L"6.3.2").status, CheckStatus::NotEvaluated);
    EXPECT_EQ(std::wstring(simplified.Rule(L"6.3.2").reason),
              L"the effective length is given, and 6.3.2.4 goes by the supports of the compression flange");
}

// The larger flange in compression carries more: M² = Pz (G It + π² E Iw/L² + β M), β of one sign for either flange. Moments of both senses
// have the smaller one.
TEST(GivenLengths, TakeTheFlangeThatIsCompressed)
{
    const wchar_t section[] = L"GI 300x300x100x6x20x8";
    const Section s = SectionOf(section);
    const auto Mcr = [&](double left, double right) {
        DesignTest::Member m;
        AddPoint(m, 0.0, L"Pinned");
        AddPoint(m, 6.0, L"Pinned");
        AddSubSpan(m, (right - left) / 6.0, (right - left) / 6.0, left, right);
        return CheckedWith(m, section, L"S275", 6.0, 6.0, 6.0).Value(L"Mcr");
    };
    const double Pz = std::numbers::pi * std::numbers::pi * 210e9 * s.Iz / 36.0;
    const double torsion = 81e9 * s.It + std::numbers::pi * std::numbers::pi * 210e9 * s.Iw / 36.0;
    const double larger = Mcr(-20e3, -20e3), smaller = Mcr(20e3, 20e3);
    // The product of the roots is Pz (G It + π² E Iw/L²), their difference Pz β.
    EXPECT_NEAR(larger * smaller / (Pz * torsion), 1.0, 1e-9);
    EXPECT_GT(larger, 1.5 * smaller);
    EXPECT_DOUBLE_EQ(Mcr(-20e3, 20e3), smaller);
}

// UC 254x254x89 in S275, 4.5 m: Ncr,y 14605 kN, λy 0.4534, χy 0.904, Nb,y 2715 kN. Lzz = 3 m: Ncr,z = 4971 (4.5/3)² = 11185 kN, λz 0.518,
// φ 0.7121, χz 0.8328, Nb,z 2500 kN. Under 1000 kN and a moment at one end, kyy = 0.6(1 + 0.2534 * 0.3683) = 0.656. Held inside, where the lengths
// do not say from where to where they reach, Cmy = 1: 1.0933.
TEST(GivenLengths, ColumnByHand)
{
    const Checked c = CheckedWith(Column(4.5, 1000e3, 45e3, 0.0), UC, L"S275", 4.5, 3.0, 3.0);
    EXPECT_NEAR(c.Value(L"NbyRd") / 1e3, 2715.0, 4.0);
    EXPECT_NEAR(c.Value(L"NbzRd") / 1e3, 2500.0, 4.0);
    EXPECT_NEAR(c.Value(L"kyy"), 0.656, 0.001);
    const Checked held = CheckedWith(ColumnHeldInside(4.5, 1000e3, 45e3), UC, L"S275", 4.5, 3.0, 3.0);
    EXPECT_NEAR(held.Value(L"NbzRd") / 1e3, 2500.0, 4.0);
    EXPECT_NEAR(held.Value(L"kyy"), 1.0933, 0.001);
}

// The same with Annex A and no length for lateral-torsional buckling (Cmy = Cmy,0, CmLT = 1): N/Ncr,y = 0.06847, μy 0.9930, wy = 1224/1096, npl 0.3331,
// λmax 0.518. ψ = 0: Cmy 0.7819, Cyy 1.0510, kyy 0.793; ψ = 1 for a moment that is not known to be where the length is: Cmy 1.0165, Cyy 1.0325, kyy 1.0495.
TEST(GivenLengths, ColumnByAnnexA)
{
    DesignOptions annexA;
    annexA.interaction = InteractionMethod::AnnexA;
    const Checked c = CheckedWith(Column(4.5, 1000e3, 45e3, 0.0), UC, L"S275", 4.5, 3.0, 0.0, annexA);
    EXPECT_NEAR(c.Value(L"kyy"), 0.793, 0.002);
    const Checked held = CheckedWith(ColumnHeldInside(4.5, 1000e3, 45e3), UC, L"S275", 4.5, 3.0, 0.0, annexA);
    EXPECT_NEAR(held.Value(L"kyy"), 1.0495, 0.002);
    // 9 m on a member of 4.5 m: its ends move against each other, which Table A.2 does not have.
    for (const double Lyy : {4.5, 9.0}) {
        const Checked sways = CheckedWith(Column(4.5, 500e3, 45e3, 0.0), UC, L"S275", Lyy, 13.5 - Lyy, 0.0, annexA);
        EXPECT_EQ(sways.Rule(L"6.3.3 (6.61)").status, CheckStatus::NotEvaluated);
        EXPECT_EQ(std::wstring(sways.Rule(L"6.3.3 (6.61)").reason),
                  L"Table A.2 is for lengths whose ends do not move against each other");
    }
}

// 9 m on a member of 4.5 m under 500 kN: Cm at least 0.9. λy 0.9068, χy 0.6568, ny = 500/1972 = 0.2536, kyy = 0.9(1 + 0.7068 * 0.2536) = 1.061.
// λz 1.554, χz 0.2977, nz = 500/893.8 = 0.5594, kzz = 0.9(1 + 1.4 * 0.5594) = 1.605.
TEST(GivenLengths, AboveTheMembersAreOfSway)
{
    const Checked c = CheckedWith(Column(4.5, 500e3, 20e3, 5e3), UC, L"S275", 9.0, 9.0, 4.5);
    EXPECT_NEAR(c.Value(L"kyy"), 1.061, 0.001);
    EXPECT_NEAR(c.Value(L"kzz"), 1.605, 0.002);
}

// The methods that go by the supports of the member are not for given lengths.
TEST(GivenLengths, LeaveTheMethodsThatGoByTheSupports)
{
    DesignOptions general;
    general.interaction = InteractionMethod::General;
    const Checked g = CheckedWith(Column(4.5, 500e3, 20e3, 0.0), UC, L"S275", 4.5, 4.5, 4.5, general);
    EXPECT_EQ(g.Rule(L"6.3.4").status, CheckStatus::NotEvaluated);
    EXPECT_EQ(std::wstring(g.Rule(L"6.3.4").reason),
              L"lengths are given, and the analysis knows the supports of the member alone");
    EXPECT_FALSE(g.passed);
    DesignOptions simple;
    simple.simpleColumn = true;
    const Checked s = CheckedWith(Column(4.5, 500e3, 20e3, 0.0), UC, L"S275", 4.5, 4.5, 4.5, simple);
    EXPECT_EQ(s.Rule(L"NCCI SN048").status, CheckStatus::NotApplicable);
    bool told = false;
    for (const Design::Assumption& a : s.findings.assumptions)
        told = told || a.text == std::wstring(L"effective lengths are given");
    EXPECT_TRUE(told);
    EXPECT_GT(s.Rule(L"6.3.3 (6.61)").utilisation, 0.0);
}

// An angle moves along both legs: the longer one of both axes counts for u-u and for v-v, the longest of all for twist. L 150x75x12, 2 and 3 m.
TEST(GivenLengths, OfAnglesAreTheLongerOnes)
{
    const wchar_t section[] = L"L 150x75x12";
    const Section s = SectionOf(section);
    const double pi2E = std::numbers::pi * std::numbers::pi * 210e9;
    for (const auto& [Lyy, Lzz] : {std::pair(2.0, 3.0), std::pair(3.0, 2.0)}) {
        const Checked c = CheckedWith(Column(3.0, 40e3, 0.0, 0.0), section, L"S275", Lyy, Lzz, 4.0);
        EXPECT_NEAR(c.Value(L"NcrU") / (pi2E * s.Iu / 9.0), 1.0, 1e-9);
        EXPECT_NEAR(c.Value(L"NcrV") / (pi2E * s.Iv / 9.0), 1.0, 1e-9);
        const Design::RuleFinding& twist = c.Rule(L"6.3.1", L"NbTRd");
        ASSERT_FALSE(twist.steps.empty());
        EXPECT_EQ(twist.steps[0].value, 4.0);
    }
    // In bending: the closed form with the length given, and moments of both senses alike.
    const Checked bent = CheckedWith(Column(3.0, 0.0, 2e3, 0.0), section, L"S275", 3.0, 3.0, 2.0);
    EXPECT_NEAR(bent.Value(L"Mcr"), UniformMcr(s, 210e9, 81e9, 2.0, true), 1e-6);
}

// The shift of a slender section makes a uniform moment N eN even where none is given. GI 800x300x200x5x10x10 in S355, 8 m, 300 kN: (6.62) without My is
// N/Nb + kzy N eN/(χLT Weff fy/γM1), χLT of the smaller Mcr of both flanges.
TEST(GivenLengths, HaveTheShiftOfSlenderSections)
{
    const wchar_t section[] = L"GI 800x300x200x5x10x10";
    const double N = 300e3;
    const Checked c = CheckedWith(Column(8.0, N, 0.0, 0.0), section, L"S355", 8.0, 8.0, 8.0);
    const Section s = SectionOf(section);
    const Strength strength = StrengthOf(355.0);
    const Classification cls = Classify(s, strength, ClassActions::Compression(N));
    ASSERT_EQ(cls.cls, 4);
    ASSERT_GT(cls.effective.eNy, 0.0);
    const double MRk = cls.effective.Weffy * 355e6;
    const double Mcr = std::min(UniformMcr(s, 210e9, 81e9, 8.0, true), UniformMcr(s, 210e9, 81e9, 8.0, false));
    // Welded with unequal flanges: Table 6.4, h/b = 800/200 above 2, curve d; λLT,0 0.2 and β 1.
    const double l = std::sqrt(MRk / Mcr), phi = 0.5 * (1.0 + 0.76 * (l - 0.2) + l * l);
    const double chi = 1.0 / (phi + std::sqrt(phi * phi - l * l));
    double least = std::numeric_limits<double>::infinity();
    for (const wchar_t* symbol : {L"NbzRd", L"NbTRd"})
        least = std::min(least, c.Value(symbol));
    EXPECT_NEAR(c.Rule(L"6.3.3 (6.62)").utilisation, N / least + c.Value(L"kzy") * N * cls.effective.eNy / (chi * MRk),
                1e-9);
}

TEST(GivenLengths, ThatAreNoNumbersAreRefused)
{
    const double nan = std::nan("");
    for (int k = 0; k < 3; ++k) {
        const auto at = [&](int i) { return i == k ? nan : 4.0; };
        const Checked c = CheckedWith(Column(4.0, 100e3, 0.0, 0.0), UC, L"S275", at(0), at(1), at(2));
        EXPECT_EQ(c.findings.refusal.subject, Design::Subject::Member);
        EXPECT_EQ(std::wstring(c.findings.refusal.reason), L"an effective length that is given is not a finite number");
        EXPECT_FALSE(c.passed);
    }
}
