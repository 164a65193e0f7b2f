// Resistances of cross-sections against stress blocks over fibres, and their limits.

#include "keltrix/ec3/CrossSection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <utility>

#include "Fibres.h"
#include "Sections.h"

using namespace EC3Test;

namespace {

std::wstring Text(int value) { return std::to_wstring(value); }

struct Dimensions {
    int h, b, tw, tf;
};

// Proportions of rolled and welded beams and columns; welded, so that there are no fillets.
Dimensions RandomI(std::mt19937& random)
{
    const auto pick = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    const double tw = std::round(pick(6.0, 30.0));
    const double tf = std::round(tw * pick(1.2, 2.2));
    const double b = std::round(tf * pick(9.0, 20.0));
    const double h = std::round(b * pick(0.95, 2.2));
    return {static_cast<int>(h), static_cast<int>(b), static_cast<int>(tw), static_cast<int>(tf)};
}

Fibres FibresOfI(const Dimensions& d, double web = 1.0, double flange = 1.0)
{
    Fibres f;
    const double h = 0.5 * d.h, b = 0.5 * d.b;
    f.Rectangle(-b, b, h - d.tf, h, flange, 240, 60);
    f.Rectangle(-b, b, -h, -h + d.tf, flange, 240, 60);
    f.Rectangle(-0.5 * d.tw, 0.5 * d.tw, -h + d.tf, h - d.tf, web, 40, 600);
    return f;
}

Fibres FibresOfBox(const Dimensions& d, double web = 1.0, double flange = 1.0)
{
    Fibres f;
    const double h = 0.5 * d.h, b = 0.5 * d.b;
    f.Rectangle(-b, b, h - d.tf, h, flange, 240, 60);
    f.Rectangle(-b, b, -h, -h + d.tf, flange, 240, 60);
    f.Rectangle(-b, -b + d.tw, -h + d.tf, h - d.tf, web, 60, 240);
    f.Rectangle(b - d.tw, b, -h + d.tf, h - d.tf, web, 60, 240);
    return f;
}

Section Welded(const std::wstring& description) { return SectionOf(CString(description.c_str()), SEC_WELDED); }
Section IOf(const Dimensions& d)
{
    return Welded(L"I " + Text(d.h) + L"x" + Text(d.b) + L"x" + Text(d.tw) + L"x" + Text(d.tf));
}
Section BoxOf(const Dimensions& d)
{
    return Welded(L"BOX " + Text(d.h) + L"x" + Text(d.b) + L"x" + Text(d.tw) + L"x" + Text(d.tf));
}

// Steel with fy of 1 N/mm² in moments and any class limits met: what counts is the geometry.
Strength UnitStrength()
{
    Strength m = StrengthOf(235.0);
    m.fy = 1e6;
    m.epsilon = 100.0;
    return m;
}

double Moment(const Resistance& r) { return *r.value / 1e6 / MM3; }

} // namespace

TEST(CrossSection, HasThePlasticModuliOfStressBlocks)
{
    std::mt19937 random(17);
    const Strength m = UnitStrength();
    for (int i = 0; i < 20; ++i) {
        const Dimensions d = RandomI(random);
        const Section s = IOf(d);
        const Classification c = Classify(s, m, ClassActions::Major());
        ASSERT_EQ(c.cls, 1);
        const Fibres f = FibresOfI(d);
        EXPECT_NEAR(Moment(McyRd(s, m, c)), f.Plastic(true, 0.0), 1e-3 * f.Plastic(true, 0.0));
        EXPECT_NEAR(Moment(MczRd(s, m, c)), f.Plastic(false, 0.0), 1e-3 * f.Plastic(false, 0.0));
    }
}

// (6.30) is exact for a web of (1 - ρ) fy between flanges of fy; the other way round for a force along the flanges.
TEST(CrossSection, HasTheMomentOfStressBlocksUnderHighShear)
{
    std::mt19937 random(18);
    const Strength m = UnitStrength();
    for (int i = 0; i < 12; ++i) {
        const Dimensions d = RandomI(random);
        const double rhoZ = 0.3 * (i % 4), rhoY = i < 4 ? 0.0 : 0.15 * (i % 3);
        for (const bool box : {false, true}) {
            const Section s = box ? BoxOf(d) : IOf(d);
            const Classification c = Classify(s, m, ClassActions::Major());
            const Fibres f = box ? FibresOfBox(d, 1.0 - rhoZ, 1.0 - rhoY) : FibresOfI(d, 1.0 - rhoZ, 1.0 - rhoY);
            EXPECT_NEAR(Moment(MyVRd(s, m, c, rhoZ, rhoY)), f.Plastic(true, 0.0), 2e-3 * f.Plastic(true, 0.0))
                << i << box;
            // The flanges of a box run over its corners, of which the modulus about z-z takes half each way.
            EXPECT_NEAR(Moment(MzVRd(s, m, c, rhoZ, rhoY)), f.Plastic(false, 0.0),
                        (box ? 0.02 : 2e-3) * f.Plastic(false, 0.0))
                << i << box;
        }
    }
}

// The curves of 6.2.9.1(5) are approximations: a straight line instead of the parabola of stress blocks, highest above it where it
// leaves Mpl, by up to a third of the web's share of the moment.
TEST(CrossSection, HasReducedPlasticMomentsNearThoseOfStressBlocks)
{
    std::mt19937 random(19);
    const Strength m = UnitStrength();
    double least[4] = {1, 1, 1, 1}, most[4] = {-1, -1, -1, -1};
    for (int i = 0; i < 12; ++i) {
        const Dimensions d = RandomI(random);
        for (const bool box : {false, true}) {
            const Section s = box ? BoxOf(d) : IOf(d);
            const Classification c = Classify(s, m, ClassActions::Major());
            const Fibres f = box ? FibresOfBox(d) : FibresOfI(d);
            for (const double n : {0.05, 0.1, 0.2, 0.3, 0.5, 0.7, 0.9}) {
                const double N = n * *NplRd(s, m).value;
                const double y = f.Plastic(true, n * f.Squash());
                const double z = f.Plastic(false, n * f.Squash());
                const double dy = (Moment(MNyRd(s, m, c, N)) - y) / f.Plastic(true, 0.0);
                const double dz = (Moment(MNzRd(s, m, c, N)) - z) / f.Plastic(false, 0.0);
                least[2 * box] = std::min(least[2 * box], dy);
                most[2 * box] = std::max(most[2 * box], dy);
                least[2 * box + 1] = std::min(least[2 * box + 1], dz);
                most[2 * box + 1] = std::max(most[2 * box + 1], dz);
            }
        }
    }
    const char* name[] = {"I, y", "I, z", "box, y", "box, z"};
    const double below[] = {0.035, 0.005, 0.05, 0.05}, above[] = {0.035, 0.03, 0.085, 0.085};
    for (int i = 0; i < 4; ++i) {
        EXPECT_GT(least[i], -below[i]) << name[i];
        EXPECT_LT(most[i], above[i]) << name[i];
    }
}

// 6.2.10: the same curves over a web and flanges that have lost ρ, held against stress blocks of that strength.
TEST(CrossSection, HasReducedPlasticMomentsUnderHighShearNearThoseOfStressBlocks)
{
    std::mt19937 random(20);
    const Strength m = UnitStrength();
    for (int i = 0; i < 6; ++i) {
        const Dimensions d = RandomI(random);
        const Section s = IOf(d);
        const Classification c = Classify(s, m, ClassActions::Major());
        for (const auto& [rhoZ, rhoY] : {std::pair(0.5, 0.0), std::pair(1.0, 0.0), std::pair(0.3, 0.4)}) {
            const Fibres f = FibresOfI(d, 1.0 - rhoZ, 1.0 - rhoY);
            for (const double n : {0.1, 0.4, 0.8}) {
                const double N = n * f.Squash();
                const Resistance y = MNyRd(s, m, c, N / 1e6 * m.fy, rhoZ, rhoY);
                const Resistance z = MNzRd(s, m, c, N / 1e6 * m.fy, rhoZ, rhoY);
                EXPECT_NEAR(Moment(y), f.Plastic(true, N), 0.04 * f.Plastic(true, 0.0)) << i << " " << n;
                EXPECT_NEAR(Moment(z), f.Plastic(false, N), 0.04 * f.Plastic(false, 0.0)) << i << " " << n;
                EXPECT_EQ(*y.value, *MNyRd(s, m, c, -N / 1e6 * m.fy, rhoZ, rhoY).value);
            }
            // Without axial force it is the resistance of 6.2.8.
            EXPECT_NEAR(*MNyRd(s, m, c, 0.0, rhoZ, rhoY).value, *MyVRd(s, m, c, rhoZ, rhoY).value, 1e-6);
            EXPECT_NEAR(*MNzRd(s, m, c, 0.0, rhoZ, rhoY).value, *MzVRd(s, m, c, rhoZ, rhoY).value, 1e-6);
        }
    }
}

// 6.2.9.2 and 6.2.9.3 as sums of stresses, each share written out.
TEST(CrossSection, AddsStressesInClass3And4)
{
    const Strength m = StrengthOf(275.0);
    const Section uc = SectionOf(L"UC 152x152x23");
    const Classification c3 = Classify(uc, m, ClassActions::Major());
    ASSERT_EQ(c3.cls, 3);
    const Interaction three = Interact(uc, m, c3, {-1e5, 1e4, -2e3, 0, 0});
    EXPECT_STREQ(three.clause, L"6.2.9.2");
    EXPECT_NEAR(three.utilisation, (1e5 / uc.A + 1e4 / uc.Wely + 2e3 / uc.Welz) / 275e6, 1e-12);

    // A channel of class 4: N acts at eN from the centroid of the effective area, in compression alone.
    const Section channel = SectionOf(L"C 300x100x3x4", SEC_WELDED);
    const Classification c4 = Classify(channel, m, ClassActions::Compression(1e3));
    ASSERT_EQ(c4.cls, 4);
    const double eN = c4.effective.eNz;
    EXPECT_GT(eN, 0.005);
    const Interaction four = Interact(channel, m, c4, {-5e4, 2e3, 1e2, 0, 0});
    EXPECT_STREQ(four.clause, L"6.2.9.3");
    EXPECT_NEAR(four.utilisation,
                (5e4 / c4.effective.Aeff + 2e3 / c4.effective.Weffy + (1e2 + 5e4 * eN) / c4.effective.Weffz) / 275e6,
                1e-12);
    EXPECT_NEAR(Interact(channel, m, c4, {5e4, 0, 0, 0, 0}).utilisation, 5e4 / channel.A / 275e6, 1e-12);

    // A tube of class 3 bends about the resultant: 3 and 4 make 5.
    const Section tube = SectionOf(L"TUBE 500x7", SEC_ROLLED); // 71.4 > 70·235/275 = 59.8, <= 76.9
    const Classification round = Classify(tube, m, ClassActions::Major());
    ASSERT_EQ(round.cls, 3);
    EXPECT_NEAR(Interact(tube, m, round, {0, 3e4, 4e4, 0, 0}).utilisation, 5e4 / tube.Wely / 275e6, 1e-12);
}

// 1 - n^1.7 runs within 0.02 of the thin tube's cos(π n/2).
TEST(CrossSection, HasTheReducedMomentOfATube)
{
    const Section s = SectionOf(L"TUBE 300x10", SEC_ROLLED);
    const Strength m = UnitStrength();
    const Classification c = Classify(s, m, ClassActions::Major());
    Fibres f;
    f.Ring(150.0, 140.0);
    for (const double n : {0.0, 0.2, 0.4, 0.6, 0.8, 0.95}) {
        const double M = Moment(MNyRd(s, m, c, n * *NplRd(s, m).value));
        EXPECT_NEAR(M / f.Plastic(true, 0.0), f.Plastic(true, n * f.Squash()) / f.Plastic(true, 0.0), 0.02) << n;
        EXPECT_EQ(M, Moment(MNzRd(s, m, c, n * *NplRd(s, m).value)));
    }
}

TEST(CrossSection, HasTheLimitsOfTheReducedMoments)
{
    for (const wchar_t* name :
         {L"UB 457x191x67", L"UC 254x254x89", L"RHS 200x100x6.3", L"SHS 150x150x8", L"CHS 168.3x8"}) {
        const Section s = SectionOf(name);
        const Strength m = StrengthOf(275.0);
        const Classification c = Classify(s, m, ClassActions::Major());
        ASSERT_LE(c.cls, 2);
        const double Npl = *NplRd(s, m).value;
        EXPECT_EQ(*MNyRd(s, m, c, 0.0).value, *McyRd(s, m, c).value);
        EXPECT_EQ(*MNzRd(s, m, c, 0.0).value, *MczRd(s, m, c).value);
        for (const double N : {Npl, 2.0 * Npl, -1.5 * Npl}) {
            EXPECT_EQ(*MNyRd(s, m, c, N).value, 0.0);
            EXPECT_EQ(*MNzRd(s, m, c, N).value, 0.0);
        }
        double before = 1e30;
        for (double n = 0.0; n <= 1.0; n += 0.01) {
            const double M = *MNyRd(s, m, c, n * Npl).value;
            EXPECT_LE(M, before);
            EXPECT_EQ(M, *MNyRd(s, m, c, -n * Npl).value);
            before = M;
        }
    }
}

TEST(CrossSection, HasNoReducedPlasticMomentWhereTheStandardHasNone)
{
    const Strength m = StrengthOf(275.0);
    for (const wchar_t* name : {L"GI 400x300x150x12x20x20", L"C 200x80x10x12", L"TEE 120x150x12x15"}) {
        const Section s = SectionOf(name, SEC_WELDED);
        const Classification c = Classify(s, m, ClassActions::Major());
        ASSERT_LE(c.cls, 2) << name;
        const Resistance r = MNyRd(s, m, c, 1e5);
        EXPECT_FALSE(r);
        EXPECT_NE(r.reason, nullptr);
        const Interaction i = Interact(
            s, m, c, {-0.2 * *NplRd(s, m).value, 0.3 * *McyRd(s, m, c).value, 0.1 * *MczRd(s, m, c).value, 0, 0});
        EXPECT_STREQ(i.clause, L"6.2.1(7)");
        EXPECT_NEAR(i.utilisation, 0.6, 1e-12);
    }
    const Section slender = SectionOf(L"I 800x200x5x20", SEC_WELDED);
    EXPECT_FALSE(MNyRd(slender, m, Classify(slender, m, ClassActions::Major()), 0.0));
}

TEST(CrossSection, LosesMomentAboveHalfThePlasticShearResistance)
{
    EXPECT_EQ(ShearReduction(0.5, 1.0), 0.0);
    EXPECT_NEAR(ShearReduction(0.75, 1.0), 0.25, 1e-15);
    EXPECT_NEAR(ShearReduction(-0.75, 1.0), 0.25, 1e-15);
    EXPECT_EQ(ShearReduction(1.0, 1.0), 1.0);
    EXPECT_EQ(ShearReduction(3.0, 1.0), 1.0);
    // I 400x180x8.6x13.5x21, fy 355, V = 0.8 Vpl: ρ = 0.36; Wpl = 180·13.5·386.5 + 8.6·373²/4 + fillets; Aw = 373·8.6 = 3207.8;
    // ρ Aw²/(4 tw) = 0.36·3207.8²/34.4 = 107.687e3 mm³, 38.229 kNm.
    const Section s = SectionOf(L"I 400x180x8.6x13.5x21", SEC_ROLLED);
    const Strength m = StrengthOf(355.0);
    const Classification c = Classify(s, m, ClassActions::Major());
    EXPECT_NEAR((*McyRd(s, m, c).value - *MyVRd(s, m, c, 0.36).value) / 1e3, 38.229, 0.001);
}

// The left side of (6.41) written out. UC 254x254x89 (n = 0.3): α = 2, β = 1.5.
TEST(CrossSection, HasTheLargestOfThreeUtilisationsUnderBothMoments)
{
    const Section s = SectionOf(L"UC 254x254x89");
    const Strength m = StrengthOf(265.0);
    const Classification c = Classify(s, m, ClassActions::Major());
    const double N = 0.3 * *NplRd(s, m).value;
    const double My = *MNyRd(s, m, c, N).value, Mz = *MNzRd(s, m, c, N).value;
    const Interaction i = Interact(s, m, c, {-N, 0.6 * My, -0.5 * Mz, 0, 0});
    EXPECT_NEAR(i.utilisation, 0.36 + std::pow(0.5, 1.5), 1e-9);
    EXPECT_NEAR(Interact(s, m, c, {-N, 0.6 * My, 0.0, 0, 0}).utilisation, 0.6, 1e-9);
    EXPECT_NEAR(Interact(s, m, c, {N, 0.0, 0.7 * Mz, 0, 0}).utilisation, 0.7, 1e-9);
    EXPECT_EQ(Interact(s, m, c, {-N / 0.3, 1.0, 0.0, 0, 0}).utilisation, std::numeric_limits<double>::infinity());
    EXPECT_NEAR(ExponentsOf(SectionOf(L"RHS 200x100x6.3"), 0.5).alpha, 1.66 / (1 - 1.13 * 0.25), 1e-12);
    EXPECT_EQ(ExponentsOf(SectionOf(L"RHS 200x100x6.3"), 0.9).alpha, 6.0);
    EXPECT_EQ(ExponentsOf(SectionOf(L"CHS 168.3x8"), 0.9).beta, 2.0);
}

// More of any action is never less used; signs do not matter; 500 random states of five shapes. With both moments more axial force alone
// can lower the left side of (6.41), because its exponents grow with n: there N is held against one moment.
TEST(CrossSection, IsUsedMoreByMoreOfAnyAction)
{
    std::mt19937 random(23);
    std::uniform_real_distribution<double> share(0.0, 1.1);
    const wchar_t* names[] = {L"UB 457x191x67", L"RHS 200x100x6.3", L"CHS 168.3x8", L"PFC 200x90x30", L"UC 152x152x23"};
    for (int i = 0; i < 500; ++i) {
        const Section s = SectionOf(names[i % 5]);
        const Strength m = StrengthOf(275.0);
        const Classification c = Classify(s, m, ClassActions::Major());
        Actions a{-share(random) * *NplRd(s, m).value, share(random) * *McyRd(s, m, c).value,
                  share(random) * *MczRd(s, m, c).value, share(random) * *VczRd(s, m).value,
                  share(random) * *VcyRd(s, m).value};
        const double base = Interact(s, m, c, a).utilisation;
        EXPECT_EQ(base, Interact(s, m, c, {a.N, -a.My, -a.Mz, -a.Vz, -a.Vy}).utilisation);
        for (double Actions::*member : {&Actions::N, &Actions::My, &Actions::Mz, &Actions::Vz, &Actions::Vy}) {
            Actions less = a;
            if (member == &Actions::N) (i % 2 ? less.My : less.Mz) = 0.0;
            Actions more = less;
            more.*member *= 1.05;
            EXPECT_GE(Interact(s, m, c, more).utilisation, Interact(s, m, c, less).utilisation * (1.0 - 1e-12)) << i;
        }
    }
}

// 6.2.3: 0.9 Anet fu/γM2; 10 cm² of 410 N/mm² at 1.10: 335.5 kN.
TEST(CrossSection, HasTheTensionResistanceOfItsNetArea)
{
    Strength m = StrengthOf(275.0);
    m.fu = 410e6;
    m.gammaM2 = 1.10;
    EXPECT_NEAR(*NuRd(m, 1e-3).value / 1e3, 335.45, 0.01);
    const Section s = SectionOf(L"UB 457x191x67");
    EXPECT_EQ(*NtRd(s, m, s.A).value, *NplRd(s, m).value);
    EXPECT_EQ(*NtRd(s, m, 0.7 * s.A).value, *NuRd(m, 0.7 * s.A).value);
}

// RHS 200x100x6.3 with fy 460 is class 3 about z-z, 28.7 between 38 ε = 27.2 and 42 ε = 30.0: it has (1 - ρ) Wel fy there, whichever wall is sheared.
TEST(CrossSection, LosesItsElasticMomentAsAWholeInClass3)
{
    const Section s = SectionOf(L"RHS 200x100x6.3");
    const Strength m = StrengthOf(460.0);
    const Classification c = Classify(s, m, ClassActions::Minor());
    ASSERT_EQ(c.cls, 3);
    EXPECT_NEAR(*MzVRd(s, m, c, 0.0, 0.3).value, 0.7 * s.Welz * 460e6, 1e-6 * s.Welz * 460e6);
    EXPECT_NEAR(*MzVRd(s, m, c, 0.3, 0.1).value, 0.7 * s.Welz * 460e6, 1e-6 * s.Welz * 460e6);
}
