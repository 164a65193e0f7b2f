// EN 1993-1-5 5 and 6 by hand, and their limits.

#include "keltrix/ec3/Web.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Sections.h"

using namespace EC3Test;

// 1200x300x10x20 of 235: hw/tw = 116, λ̄w = 116/86.4 = 1.3426; 0.83/1.3426 = 0.6182, with rigid end posts 1.37/2.0426 = 0.6707;
// Vbw = 0.6182·235·11600/3^0.5 = 972.9 kN.
TEST(Web, BucklesInShearByHand)
{
    const Section s = SectionOf(L"I 1200x300x10x20", SEC_WELDED);
    const Strength m = StrengthOf(235.0);
    EXPECT_TRUE(NeedsShearBuckling(s, m));
    EXPECT_NEAR(WebSlenderness(s, m), 1.3426, 1e-4);
    EXPECT_NEAR(*VbwRd(s, m).value / 1e3, 972.9, 0.1);
    EXPECT_NEAR(*VbwRd(s, m, {0.0, true}).value / 1e3, 0.67072 * 235 * 11600 / std::sqrt(3.0) / 1e3, 0.1);
    EXPECT_FALSE(VbRd(s, m, {}, 0.0)) << "flanges need a distance of stiffeners";
    // Stiffeners at 1.5 m: kτ = 5.34 + 4(1160/1500)² = 7.7322, λ̄w = 116/(37.4·2.78068) = 1.11542, χw = 0.74411, Vbw 1171.1 kN; flanges
    // 300x20 (15ε tf each side: 610 > 300): c = 1500(0.25 + 1.6·300·400/(10·1160²)) = 396.4 mm, 300·400·235/396.4 = 71.14 kN.
    EXPECT_NEAR(*VbwRd(s, m, {1.5, false}).value / 1e3, 1171.1, 0.2);
    EXPECT_NEAR(*VbRd(s, m, {1.5, false}, 0.0).value / 1e3, 1171.1 + 71.14, 0.3);
    // Mf = 6000·1180·235 = 1663.8 kNm: at half of it three quarters of the flanges' share, beyond it none.
    EXPECT_NEAR(*MfRd(s, m).value / 1e3, 1663.8, 0.1);
    EXPECT_NEAR(*VbRd(s, m, {1.5, false}, 831.9e3).value / 1e3, 1171.1 + 0.75 * 71.14, 0.3);
    EXPECT_EQ(*VbRd(s, m, {1.5, false}, 1700e3).value, *VbwRd(s, m, {1.5, false}).value);
    // 7.1: η̄3 = 0.8 gives M/Mpl + (1 - Mf/Mpl)·0.36.
    const double Mpl = s.Wply * m.fy, V = 0.8 * *VbwRd(s, m).value;
    EXPECT_NEAR(*ShearBucklingInteraction(s, m, {}, 1700e3, V), 1700e3 / Mpl + (1 - 1663.8e3 / Mpl) * 0.36, 1e-4);
    EXPECT_EQ(*ShearBucklingInteraction(s, m, {}, 1600e3, V), 0.0);
    EXPECT_EQ(*ShearBucklingInteraction(s, m, {}, 1700e3, 0.4 * V), 0.0);
}

TEST(Web, HasTheLimitsOfShearBuckling)
{
    const Strength m = StrengthOf(235.0);
    EXPECT_FALSE(NeedsShearBuckling(SectionOf(L"I 760x300x10x20", SEC_WELDED), m)); // hw/tw 72.0
    EXPECT_TRUE(NeedsShearBuckling(SectionOf(L"I 762x300x10x20", SEC_WELDED), m));
    // hw/a = 0.7733: kτ = 7.732, 31·7.732^0.5 = 86.2; hw/a = 2: kτ = 4 + 5.34·4 = 25.36, 156.1.
    EXPECT_FALSE(NeedsShearBuckling(SectionOf(L"I 900x300x10x20", SEC_WELDED), m, {0.860 / 0.7733, false}));
    EXPECT_TRUE(NeedsShearBuckling(SectionOf(L"I 905x300x10x20", SEC_WELDED), m, {0.865 / 0.7733, false}));
    EXPECT_FALSE(NeedsShearBuckling(SectionOf(L"I 1600x300x10x20", SEC_WELDED), m, {0.780, false}));
    EXPECT_TRUE(NeedsShearBuckling(SectionOf(L"I 1604x300x10x20", SEC_WELDED), m, {0.782, false}));
    EXPECT_FALSE(NeedsShearBuckling(SectionOf(L"TEE 400x200x4x20", SEC_WELDED), m));
    EXPECT_FALSE(VbwRd(SectionOf(L"TEE 400x200x4x20", SEC_WELDED), m));
    // Without jumps, and never above η.
    for (const bool rigid : {false, true})
        for (double l = 0.3; l < 3.0; l += 0.001) {
            EXPECT_NEAR(WebShearFactor(l, 1.0, rigid), WebShearFactor(l + 1e-6, 1.0, rigid), 2e-3);
            EXPECT_LE(WebShearFactor(l, 1.2, rigid), 1.2);
        }
    // Stocky, the web alone has η fyw hw tw/3^0.5, flanges add nothing.
    const Section s = SectionOf(L"I 400x200x10x16", SEC_WELDED);
    EXPECT_NEAR(*VbwRd(s, m).value, m.fy * s.hw * s.tw / std::sqrt(3.0), 1e-6);
    EXPECT_EQ(*VbRd(s, m, {1.0, false}, 0.0).value, *VbwRd(s, m).value);
    // A box has two webs.
    const Section box = SectionOf(L"BOX 1200x600x10x20", SEC_WELDED);
    const Section single = SectionOf(L"I 1200x600x10x20", SEC_WELDED);
    EXPECT_NEAR(*VbwRd(box, m).value, 2.0 * *VbwRd(single, m).value, 1e-6);
}

// Inside force on the same girder, ss 100, flange 300x20: m1 = 30, m2 = 0.02·58² = 67.28, ly = 100 + 40(1 + 97.28^0.5) = 534.5;
// Fcr = 0.9·6·210000·1000/1160 = 977.6 kN; λ̄F = (534.5·10·235/977586)^0.5 = 1.1335; χF = 0.4411; FRd = 554.1 kN.
TEST(Web, ResistsAForceBetweenTheEndsByHand)
{
    const Section s = SectionOf(L"I 1200x300x10x20", SEC_WELDED);
    const Strength m = StrengthOf(235.0);
    WebForce force;
    force.ss = 0.1;
    EXPECT_NEAR(*FRd(s, m, force).value / 1e3, 554.1, 0.2);
    force.onFlange1 = false;
    EXPECT_NEAR(*FRd(s, m, force).value / 1e3, 554.1, 0.2);
    force.atEnd = true;
    EXPECT_LT(*FRd(s, m, force).value / 1e3, 554.1);
    EXPECT_FALSE(FRd(SectionOf(L"RHS 200x100x6.3"), m, force));
}

TEST(Web, ResistsMoreOnALongerBearingAndFartherFromTheEnd)
{
    const Strength m = StrengthOf(275.0);
    for (const wchar_t* name : {L"UB 457x191x67", L"UB 914x305x201"}) {
        const Section s = SectionOf(name);
        double before = 0.0;
        for (double ss = 0.0; ss < 1.0; ss += 0.02) {
            WebForce force;
            force.ss = ss;
            force.atEnd = true;
            const double end = *FRd(s, m, force).value;
            EXPECT_GE(end, before);
            before = end;
            force.c = 0.1;
            EXPECT_GE(*FRd(s, m, force).value, end);
            force.atEnd = false;
            EXPECT_GE(*FRd(s, m, force).value, end);
        }
    }
}

// Flanges of class 4: c/t = 195/6 = 32.5, λ̄p = 32.5/(28.4·0.8136·0.43^0.5) = 2.145, ρ = (2.145 - 0.188)/2.145² = 0.4254, of which
// 2400 - 0.5746·195·2·6 = 1055 mm² are left; 15ε tf on each side of the web are (2·73.2 + 10)·6 = 938.6 mm². Mf = 938.6·864·355 = 287.9 kNm. The
// plastic neutral axis lies (2400 - 1055.4)/(2·10) = 67.2 mm off the middle of the web; Mpl = 1167 kNm (1534 of the gross section).
TEST(Web, FlangesOfClass4CountAsTheirEffectiveArea)
{
    const Section s = SectionOf(L"I 870x400x10x6", SEC_WELDED);
    const Strength m = StrengthOf(355.0);
    EXPECT_NEAR(*MfRd(s, m).value / 1e3, 287.9, 0.2);
    const double V = 0.9 * *VbwRd(s, m).value;
    const auto r = BendWithShearBuckling(s, m, {}, 800e3, V);
    ASSERT_TRUE(r);
    const double web = 858.0 / 2.0;
    const double Mpl = (1055.4 * (web + 67.2 + 3.0) + 2400.0 * (web - 67.2 + 3.0) +
                        5.0 * ((web + 67.2) * (web + 67.2) + (web - 67.2) * (web - 67.2))) *
                       355e-6;
    EXPECT_NEAR(r->MplRd / 1e3, Mpl, 0.002 * Mpl);
    EXPECT_NEAR(r->utilisation, 800.0 / Mpl + (1.0 - 287.9 / Mpl) * 0.64, 2e-3);
    // With an axial force both flanges may be compressed.
    const auto both = BendWithShearBuckling(s, m, {}, 800e3, V, 1.0);
    EXPECT_NEAR(both->MplRd / 1e3, (2.0 * 1055.4 * (web + 3.0) + 10.0 * web * web) * 355e-6, 3.0);
    // Up to class 3 nothing is lost: the gross modulus.
    const Section stocky = SectionOf(L"I 1200x300x10x20", SEC_WELDED);
    EXPECT_NEAR(BendWithShearBuckling(stocky, m, {}, 3e6, 0.9 * *VbwRd(stocky, m).value)->MplRd, stocky.Wply * m.fy,
                1.0);
}

// Only webs between two flanges buckle in shear by these rules.
TEST(Web, OfOtherShapesHasNoShearBuckling)
{
    const Strength m = StrengthOf(235.0);
    for (const wchar_t* name : {L"T 229x191x49", L"L 150x150x15", L"CHS 168.3x10"}) {
        const Section s = SectionOf(name);
        EXPECT_FALSE(NeedsShearBuckling(s, m));
        EXPECT_FALSE(NeedsShearBucklingAcross(s, m));
        EXPECT_FALSE(VbwRd(s, m));
        EXPECT_FALSE(MfRd(s, m));
        EXPECT_FALSE(VbRd(s, m, {1.0, false}, 0.0));
        EXPECT_FALSE(BendWithShearBuckling(s, m, {}, 1e3, 1e3));
        EXPECT_FALSE(ShearBucklingInteraction(s, m, {}, 1e3, 1e3));
        EXPECT_EQ(TurnedSection(s).h, s.h);
        EXPECT_EQ(LongestLoadedLength(s, WebForce{0.1}), 0.1);
    }
}

// 5.4(1): the weaker flange 200x10 of a girder 1200 deep, c = 1000 (0.25 + 1.6 * 200 * 10²/(8 * 1170²)) = 252.9 mm: 200 * 10² * 235/252.9 = 18.58 kN
// beside the web, whichever flange is the weaker one; none where the axial force takes them.
TEST(Web, HasTheShearOfTheWeakerFlangeByHand)
{
    const Strength m = StrengthOf(235.0);
    for (const wchar_t* name : {L"GI 1200x400x200x8x20x10", L"GI 1200x200x400x8x10x20"}) {
        const Section s = SectionOf(name, SEC_WELDED);
        const double web = *VbwRd(s, m, {1.0, false}).value;
        EXPECT_NEAR(*VbRd(s, m, {1.0, false}, 0.0).value - web, 18.58e3, 10.0);
        // At half of Mf,Rd three quarters of it.
        EXPECT_NEAR(*VbRd(s, m, {1.0, false}, 0.5 * *MfRd(s, m).value).value - web, 0.75 * 18.58e3, 10.0);
        EXPECT_EQ(*VbRd(s, m, {1.0, false}, 0.0, 1e7).value, web);
    }
}

// A channel's flange counts up to 15 ε tf on one side of its web; c/t = 194/12 = 16.2: λ̄p 0.8681, ρ 0.9025, 2400 - 0.0975 * 194 * 12 = 2173 mm², less than
// 186 * 12 mm². Mf = 2173 * 988 * 235 = 504.5 kNm.
TEST(Web, HasTheFlangesOfAChannelByHand)
{
    EXPECT_NEAR(*MfRd(SectionOf(L"C 1000x200x6x12", SEC_WELDED), StrengthOf(235.0)).value / 1e3, 504.5, 0.1);
}

// GI 300x600x100x6x12x8 in fy 355: the flange of 600 has c/t = 297/12, λ̄p 1.6336, ρ 0.5417, 7200 - 3267 = 3933 mm². The plastic axis of 3933, 800 and
// 6 * 280 mm² lies 9.783 mm down in that flange (327.8 mm of it): W = 16490 + 1680 * 142.2 + 800 * 286.2 = 484.4 cm³, 171.96 kNm; either way up.
// Compression above 1680 * 355 = 596 kN takes the web whole: 700 kN leave 1 - 700/2276.6 of Mpl; 3000 kN nothing.
TEST(Web, BendsWithThePlasticAxisInAFlangeByHand)
{
    const Strength m = StrengthOf(355.0);
    for (const wchar_t* name : {L"GI 300x600x100x6x12x8", L"GI 300x100x600x6x8x12"}) {
        const Section s = SectionOf(name, SEC_WELDED);
        const double V = 0.9 * *VbwRd(s, m).value;
        EXPECT_NEAR(BendWithShearBuckling(s, m, {}, 50e3, V)->MplRd / 1e3, 171.96, 0.05);
        const ShearBending pressed = BendWithShearBuckling(s, m, {}, 50e3, V, 700e3).value();
        EXPECT_EQ(pressed.MfRd, 0.0);
        EXPECT_NEAR(pressed.MplRd / 1e3, 119.1, 0.1);
        EXPECT_NEAR(pressed.utilisation, 50.0 / 119.1 + 0.64, 1e-3);
        EXPECT_EQ(BendWithShearBuckling(s, m, {}, 0.0, V, 700e3)->utilisation, 0.0) << "no moment, nothing to add";
        EXPECT_TRUE(std::isinf(BendWithShearBuckling(s, m, {}, 1e3, V, 3000e3)->utilisation));
    }
}

// 6.3(1): more than hw of bearing counts as hw, except for a comparison with tables without that limit.
TEST(Web, CountsABearingUpToItsDepth)
{
    const Section s = SectionOf(L"UB 457x191x67");
    const Strength m = StrengthOf(275.0);
    WebForce force;
    force.ss = s.hw;
    const double most = *FRd(s, m, force).value;
    force.ss = 2.0 * s.hw;
    EXPECT_EQ(*FRd(s, m, force).value, most);
    force.limitToDepth = false;
    EXPECT_GT(*FRd(s, m, force).value, most);
}
