// Calculations by hand, with the standard on the desk: the numbers are written out next to what they are held against.
// Dimensions and section properties are the printed ones (mm, cm², cm³), so agreement is to their last digit.
#include <gtest/gtest.h>

#include <algorithm>

#include "Members.h"

using namespace BS5950Test;

namespace {

constexpr double kN = 1e3;
constexpr double kNm = 1e3;

// Within a share of what is expected.
void ExpectWithin(double share, double value, double expected, const char* what)
{
    EXPECT_NEAR(value, expected, share * expected) << what;
}

Classification ClassOf(const wchar_t* section, const Actions& actions, int type = SEC_ROLLED)
{
    const SectionProperties s = PropertiesOf(section, type);
    return Classify(s, SteelOf(L"S275", s), actions);
}

Actions Force(double F)
{
    Actions a;
    a.F = F;
    return a;
}

Actions Bending(double Mx, double My = 0.0)
{
    Actions a;
    a.Mx = Mx;
    a.My = My;
    return a;
}

} // namespace

// --- classification ----------------------------------------------------------------------------------------------------

// UB 457x191x67 (A 85.5 cm², Zy 153 cm³) under 800 kN tension and 20 kNm about y-y: -93.6 N/mm² everywhere, ±130.7 at the
// tips of the flanges. The tips are compressed, the web is not.
TEST(ClassByHand, AWebInTensionHasNoClassWhereTheFlangeTipsAreCompressed)
{
    Actions a = Force(800 * kN);
    a.My = 20 * kNm;
    const Classification c = ClassOf(L"UB 457x191x67", a);
    ASSERT_EQ(c.count, 2);
    for (int i = 0; i < c.count; ++i)
        EXPECT_EQ(c.elements[static_cast<std::size_t>(i)].compressed, !c.elements[static_cast<std::size_t>(i)].isWeb);
    a.My = 10 * kNm; // ±65.4: tension throughout
    EXPECT_EQ(ClassOf(L"UB 457x191x67", a).count, 0);
}

// A moment above zero compresses the stem of a T and leaves its flange in tension; below zero the other way round.
TEST(ClassByHand, OfATeeOnlyTheCompressedElementCounts)
{
    for (const double sign : {1.0, -1.0}) {
        const Classification c = ClassOf(L"T 229x191x34", Bending(sign * 10 * kNm));
        ASSERT_EQ(c.count, 2);
        for (const ElementClass& e : {c.elements[0], c.elements[1]})
            EXPECT_EQ(e.compressed, e.isWeb == (sign > 0.0)) << *CString(e.element).ToUtf8() << ' ' << sign;
    }
}

// Table 11, axial compression of an angle: b/t, d/t <= 15ε and (b + d)/t <= 24ε are limits of class 3, and there are no
// others; under a moment the legs have those of 9ε, 10ε and 15ε.
TEST(ClassByHand, AnglesInCompressionHaveNoLimitsOfClass1And2)
{
    const Classification c = ClassOf(L"L 150x150x15", Force(-100 * kN));
    ASSERT_EQ(c.count, 3);
    for (int i = 0; i < 3; ++i) {
        const ElementClass& e = c.elements[static_cast<std::size_t>(i)];
        EXPECT_EQ(e.limit[0], 0.0);
        EXPECT_EQ(e.limit[1], 0.0);
        EXPECT_NEAR(e.ratio, i < 2 ? 10.0 : 20.0, 1e-9);
        EXPECT_NEAR(e.limit[2], i < 2 ? 15.0 : 24.0, 1e-9);
        EXPECT_EQ(e.cls, 3);
    }
}

// Table 12 at the squash load, r1 = r2 = 1: 64/1.6 = 80/2 = 120/3 = 40 hot finished, 56/1.6 = 70/2 = 105/3 = 35 cold
// formed. Half of that load on the web, r1 = 0.5: 64/1.3 = 49.2 and 80/1.5 = 53.3.
TEST(ClassByHand, WebsOfHollowSectionsUnderUniformCompression)
{
    const auto limits = [](const wchar_t* section, int type, double share) {
        const SectionProperties s = PropertiesOf(section, type);
        const double webs = 2.0 * s.d * s.t * 275e6;
        const Classification c = ClassOf(section, Force(share < 1.0 ? -share * webs : -s.A * 275e6), type);
        const auto* const web =
            std::find_if(c.elements.begin(), c.elements.end(), [](const auto& e) { return e.isWeb; });
        return web->limit;
    };
    for (const double limit : limits(L"RHS 200x100x6.3", SEC_ROLLED, 1.0))
        EXPECT_NEAR(limit, 40.0, 1e-9);
    for (const double limit : limits(L"BOX 200x100x6x6", SEC_FORMED, 1.0))
        EXPECT_NEAR(limit, 35.0, 1e-9);
    EXPECT_NEAR(limits(L"RHS 200x100x6.3", SEC_ROLLED, 0.5)[0], 64.0 / 1.3, 1e-6);
    EXPECT_NEAR(limits(L"RHS 200x100x6.3", SEC_ROLLED, 0.5)[1], 80.0 / 1.5, 1e-6);
}

// A tube under a moment alone has the limits of bending, 40ε², 50ε² and 140ε², and no other.
TEST(ClassByHand, ATubeInBendingIsNotJudgedForCompression)
{
    const Classification c = ClassOf(L"CHS 168.3x5", Bending(5 * kNm));
    ASSERT_EQ(c.count, 1);
    EXPECT_NEAR(c.elements[0].ratio, 33.66, 1e-9);
    EXPECT_EQ(c.elements[0].limit, (std::array<double, 3>{40.0, 50.0, 140.0}));
}

// A member in tension throughout is class 1.
TEST(ClassByHand, OfAMemberInTension)
{
    Case given;
    EndMoments(given, 6.0, 0.0, 0.0, 100 * kN);
    Checked c(given);
    EXPECT_TRUE(c.Check());
    EXPECT_EQ(c.member.SectionClass(), 1);
}

// --- effective areas, 3.6.2.2 to 3.6.6 -----------------------------------------------------------------------------------

struct EffectiveAreaRow {
    const wchar_t* section;
    int type;
    double Aeff; // mm²
};

class EffectiveAreaByHand : public testing::TestWithParam<EffectiveAreaRow> {};

// Welded box 400x400x6: clear width 388, 40t = 240 kept of each wall: 9456 - 4*148*6 = 5904.
// Welded I 800x300x8x15: d = 770, 320 kept, outstand 146 within 13T: 15160 - 450*8 = 11560.
// Welded I 500x500x12x12: outstand 244, 13T = 156 kept; d = 476, 480 kept: 17712 - 4*88*12 = 13488.
// Tube 400x4: D/t = 100, A (80/100)^0.5 = 4976.3*0.8944 = 4450.9. L 150x150x10: (b + d)/t = 30, 12/15 of 2930 (printed).
INSTANTIATE_TEST_SUITE_P(Clause3_6, EffectiveAreaByHand,
                         testing::Values(EffectiveAreaRow{L"BOX 400x400x6x6", SEC_WELDED, 5904},
                                         EffectiveAreaRow{L"I 800x300x8x15", SEC_WELDED, 11560},
                                         EffectiveAreaRow{L"I 500x500x12x12", SEC_WELDED, 13488},
                                         EffectiveAreaRow{L"TUBE 400x4", SEC_ROLLED, 4450.9},
                                         EffectiveAreaRow{L"L 150x150x10", SEC_ROLLED, 2344}));

TEST_P(EffectiveAreaByHand, OfSlenderSectionsAtTheSquashLoad)
{
    const EffectiveAreaRow& row = GetParam();
    const SectionProperties s = PropertiesOf(row.section, row.type);
    const Material m = SteelOf(L"S275", s);
    ASSERT_EQ(m.py, 275e6);
    const Classification c = Classify(s, m, Force(-s.A * m.py));
    EXPECT_EQ(c.cls, 4);
    ExpectWithin(0.002, c.Aeff, row.Aeff * 1e-6, "effective area");
    EXPECT_EQ(Classify(s, m, Force(s.A * m.py)).Aeff, s.A) << "in tension all of it serves";
}

// The box as a 6 m column: Pz = 0.275*5904 = 1623.6 kN. I = (400⁴ - 388⁴)/12 = 24471 cm⁴, r = 160.9 mm, λ = 37.30, times
// (5904/9456)^0.5 = 29.47. Welded, curve b with 275 - 20 = 255: λ0 = 17.82, pE = 2329.6, η = 3.5*11.66/1000 = 0.0408, φ =
// 1339.8, pc = 594048/(1339.8 + 1095.9) = 243.9, Pc = 0.2439*5904 = 1440 kN.
TEST(SlenderColumnByHand, KeepsItsEffectiveAreaAndGainsTheReducedSlenderness)
{
    Case given;
    given.section = L"BOX 400x400x6x6";
    given.type = SEC_WELDED;
    EndMoments(given, 6.0, 0.0, 0.0, -1000 * kN);
    Checked c(given);
    EXPECT_TRUE(c.Check());
    ExpectWithin(0.001, c.Entry(Rule::Compression).resistance, 1623.6 * kN, "Pz");
    ExpectWithin(0.001, c.Entry(Rule::BucklingMajor).resistance, 1440 * kN, "Pcx");
    ExpectWithin(0.001, c.Entry(Rule::BucklingMinor).resistance, 1440 * kN, "Pcy");
    ExpectWithin(0.001, c.Entry(Rule::BucklingMinor).utilisation, 1000.0 / 1440.0, "Fc/Pcy");
}

// --- shear -------------------------------------------------------------------------------------------------------------

// UB 457x191x67 S275: 0.6*275*453.4*8.5 = 635.9 kN. d/t = 48.0 is within 70, so its web needs no shear buckling check, and
// the depth between the fillets plays no part.
TEST(ShearByHand, AStockyWebIsGovernedByItsShearCapacity)
{
    Case given;
    given.force = [](double) { return Vector(0, 0, 300 * kN); };
    given.moment = [](double x) { return Vector(0, 300 * kN * (x - 6.0) * 0.1, 0); };
    Checked c(given);
    c.Check();
    for (const PositionResult& p : c.member.Positions()) {
        EXPECT_EQ(p.Vw, 0.0);
        EXPECT_EQ(p.shearBuckling, 0.0);
    }
    EXPECT_NEAR(c.Entry(Rule::ShearMajor).utilisation, 300.0 / 635.9, 1e-4);
    EXPECT_NEAR(c.result.MaxUtilLocalShearMajor(nullptr), 300.0 / 635.9, 1e-4);
    EXPECT_EQ(c.Entry(Rule::ShearBuckling).status, CheckStatus::NotApplicable);
}

// 4.4.5.1: d/t above 70ε rolled, 62ε welded. I 600x200x9x12: d/t = 576/9 = 64. S275 ε = 1: 70 and 62; S355 ε = 0.880: 61.6
// and 54.6; S460 ε = 0.773: 54.1.
TEST(ShearByHand, TheLimitOfShearBucklingFallsWithTheStrength)
{
    const SectionProperties rolled = PropertiesOf(L"I 600x200x9x12", SEC_ROLLED);
    const SectionProperties welded = PropertiesOf(L"I 600x200x9x12", SEC_WELDED);
    EXPECT_FALSE(NeedsShearBuckling(rolled, SteelOf(L"S275", rolled), Axis::Y));
    EXPECT_TRUE(NeedsShearBuckling(rolled, SteelOf(L"S355", rolled), Axis::Y));
    EXPECT_TRUE(NeedsShearBuckling(rolled, SteelOf(L"S460", rolled), Axis::Y));
    EXPECT_TRUE(NeedsShearBuckling(welded, SteelOf(L"S275", welded), Axis::Y));
    const SectionProperties thicker = PropertiesOf(L"I 600x200x10x12", SEC_ROLLED); // d/t = 57.6
    EXPECT_FALSE(NeedsShearBuckling(thicker, SteelOf(L"S355", thicker), Axis::Y));
    EXPECT_TRUE(NeedsShearBuckling(thicker, SteelOf(L"S460", thicker), Axis::Y));
}

// --- moment with high shear, 4.2.5.3 -------------------------------------------------------------------------------------

struct HighShearRow {
    const wchar_t* section;
    int type;
    Axis axis;
    double Mc; // kNm at Fv = 0.9 Pv, where ρ = (1.8 - 1)² = 0.64
};

class HighShearByHand : public testing::TestWithParam<HighShearRow> {};

// UB 457x191x67, Sx 1470, Sy 237: Sv = 8.5*453.4²/4 = 436.8 cm³: 0.275(1470 - 0.64*436.8) = 327.4 kNm.
//   about y-y: Sv = 0.9*2*12.7*189.9²/4 = 206.1: 0.275(237 - 0.64*206.1) = 28.90.
// PFC 200x90x30, Sx 291: Sv = 7*200²/4 = 70: 0.275(291 - 44.8) = 67.7.
// RHS 200x100x6.3, A 35.8, Sx 228, Sy 140: Av = 35.8*200/300 = 23.87 cm², Sv = 23.87*20/4 = 119.3: 0.275(228 - 76.4) = 41.7.
//   about y-y: Av = 11.93, Sv = 11.93*10/4 = 29.8: 0.275(140 - 19.1) = 33.2.
// CHS 168.3x5, S 133: Sv = S: 0.275*133*0.36 = 13.17.
// Welded I 500x200x10x16: Sx = 200*16*484 + 10*468²/4 = 2096.4 cm³, Sv = 10*468*468/4 = 547.6: 0.275(2096.4 - 350.4) = 480.1.
INSTANTIATE_TEST_SUITE_P(Clause4_2_5_3, HighShearByHand,
                         testing::Values(HighShearRow{L"UB 457x191x67", SEC_ROLLED, Axis::X, 327.4},
                                         HighShearRow{L"UB 457x191x67", SEC_ROLLED, Axis::Y, 28.90},
                                         HighShearRow{L"PFC 200x90x30", SEC_ROLLED, Axis::X, 67.7},
                                         HighShearRow{L"RHS 200x100x6.3", SEC_ROLLED, Axis::X, 41.7},
                                         HighShearRow{L"RHS 200x100x6.3", SEC_ROLLED, Axis::Y, 33.2},
                                         HighShearRow{L"CHS 168.3x5", SEC_ROLLED, Axis::X, 13.17},
                                         HighShearRow{L"I 500x200x10x16", SEC_WELDED, Axis::X, 480.1}));

TEST_P(HighShearByHand, TakesTheModulusOfTheShearAreaOffThePlasticModulus)
{
    const HighShearRow& row = GetParam();
    const SectionProperties s = PropertiesOf(row.section, row.type);
    const Material m = SteelOf(L"S275", s);
    const bool x = row.axis == Axis::X;
    const Classification c = Classify(s, m, x ? Bending(-1e3) : Bending(0.0, 1e3));
    ASSERT_LE(c.cls, 2);
    const double Pv = ShearCapacity(s, m, x ? Axis::Y : Axis::X);
    SectionDesign design;
    design.plasElas = 1.5;
    ExpectWithin(0.004, MomentCapacity(s, m, c, design, row.axis, 0.9 * Pv), row.Mc * kNm, "Mc at 0.9 Pv");
    EXPECT_EQ(MomentCapacity(s, m, c, design, row.axis, 0.6 * Pv), MomentCapacity(s, m, c, design, row.axis, 0.0));
}

// --- tension through one part, 4.6.3.1 -----------------------------------------------------------------------------------

// PFC 200x90x30 through its web: A 37.9, web 20*0.7 = 14.0, a2 = 23.9: 27.5(37.9 - 11.95) = 713.6 kN. T 229x191x34 through
// its flange: A 42.7, flange 18.99*1.27 = 24.1, a2 = 18.6: 27.5(42.7 - 9.3) = 918.5. L 150x75x10 through its short leg: A 21.7,
// leg 7.5, a2 = 14.2: 27.5(21.7 - 7.1) = 401.5.
TEST(TiesByHand, LoseHalfOfTheUnconnectedPart)
{
    const auto capacity = [](const wchar_t* section) {
        const SectionProperties s = PropertiesOf(section, SEC_ROLLED);
        return EccentricTensionCapacity(s, SteelOf(L"S275", s), 1.0);
    };
    ExpectWithin(0.004, capacity(L"PFC 200x90x30"), 713.6 * kN, "channel");
    ExpectWithin(0.004, capacity(L"T 229x191x34"), 918.5 * kN, "tee");
    ExpectWithin(0.004, capacity(L"L 150x75x10"), 401.5 * kN, "angle");
}

// --- combined actions on the cross-section -------------------------------------------------------------------------------

// RHS 200x100x6.3 S275, more exact rule, -100 kN, 31 and 19.2 kNm. A 35.8, n = 100/984.5 = 0.1016, nA = 3.636 cm²: Srx = 228 -
// 3.636²/(8*0.63) = 225.4, Sry = 140 - 2.6 = 137.4. Mrx = min(62.0, 1.2*0.275*183 = 60.39), Mry = 37.78. z1 = z2 = 5/3:
// 0.5133^(5/3) + 0.5082^(5/3) = 0.3291 + 0.3236 = 0.653.
TEST(CombinedByHand, HollowSectionsHaveTheExponents5Over3)
{
    Case given;
    given.section = L"RHS 200x100x6.3";
    given.option = CSteelMemberBS5950::MORE_EXACT;
    EndMoments(given, 6.0, -31 * kNm, -31 * kNm, -100 * kN, 19.2 * kNm, 19.2 * kNm);
    Checked c(given);
    c.Check();
    const PositionResult& p = c.member.Positions().front();
    EXPECT_DOUBLE_EQ(p.z1, 5.0 / 3.0);
    EXPECT_DOUBLE_EQ(p.z2, 5.0 / 3.0);
    EXPECT_NEAR(p.combined, 0.653, 0.004);
}

// z1 = 2, z2 = 1 for I and H sections; z1 = z2 = 2 for tubes.
TEST(CombinedByHand, ExponentsOfTheOtherSections)
{
    Case given;
    given.option = CSteelMemberBS5950::MORE_EXACT;
    EndMoments(given, 6.0, -40 * kNm, -40 * kNm, 100 * kN, 5 * kNm, 5 * kNm);
    Checked beam(given);
    beam.Check();
    EXPECT_EQ(beam.member.Positions().front().z1, 2.0);
    EXPECT_EQ(beam.member.Positions().front().z2, 1.0);
    given.section = L"CHS 168.3x5";
    EndMoments(given, 6.0, -10 * kNm, -10 * kNm, 100 * kN, 5 * kNm, 5 * kNm);
    Checked tube(given);
    tube.Check();
    EXPECT_EQ(tube.member.Positions().front().z1, 2.0);
    EXPECT_EQ(tube.member.Positions().front().z2, 2.0);
}

// UB 457x191x67 S275 under 50 and 10 kNm without axial force: Mcx = 0.275*1470 = 404.3, Mcy = 1.2*0.275*153 = 50.5:
// 0.1237 + 0.1980 = 0.3217.
TEST(CombinedByHand, MomentsAboutBothAxesWithoutAxialForce)
{
    Case given;
    given.along = L"Pinned";
    EndMoments(given, 6.0, -50 * kNm, -50 * kNm, 0.0, 10 * kNm, 10 * kNm);
    Checked c(given);
    c.Check();
    EXPECT_EQ(c.Entry(Rule::CombinedCompression).status, CheckStatus::Passed);
    EXPECT_NEAR(c.Entry(Rule::CombinedCompression).utilisation, 0.3217, 0.001);
    EXPECT_EQ(c.Entry(Rule::CombinedTension).status, CheckStatus::NotApplicable);
}

// --- effective lengths of struts, Table 22 -------------------------------------------------------------------------------

struct Table22Row {
    const wchar_t* left;
    const wchar_t* right;
    double factor;
};

class Table22ByHand : public testing::TestWithParam<Table22Row> {};

// a: both ends held in position; b: the other end not. Held in direction 2, partially 1, not 0.
INSTANTIATE_TEST_SUITE_P(
    Rows, Table22ByHand,
    testing::Values(Table22Row{L"MAJRV MINRV", L"MAJRV MINRV", 0.7}, Table22Row{L"MAJPV MINPV", L"MAJPV MINPV", 0.85},
                    Table22Row{L"MAJRV MINRV", L"MAJPV MINPV", 0.85}, Table22Row{L"MAJRV MINRV", L"MAJV MINV", 0.85},
                    Table22Row{L"MAJPV MINPV", L"MAJV MINV", 1.0}, Table22Row{L"MAJV MINV", L"MAJV MINV", 1.0},
                    Table22Row{L"MAJRV MINRV", L"MAJR MINR", 1.2}, Table22Row{L"MAJRV MINRV", L"MAJP MINP", 1.5},
                    Table22Row{L"MAJRV MINRV", L"Free", 2.0}));

TEST_P(Table22ByHand, OfAStrutFromItsRestraintsEitherWayRound)
{
    const Table22Row& row = GetParam();
    for (const bool turned : {false, true}) {
        Case given;
        given.points = {{0.0, turned ? row.right : row.left}, {4.0, turned ? row.left : row.right}};
        EndMoments(given, 4.0, 0.0, 0.0, -100 * kN);
        Checked c(given);
        c.Check();
        for (const BucklingMode mode : {BucklingMode::Major, BucklingMode::Minor}) {
            const SpanResult span = c.Spans(mode).front();
            EXPECT_DOUBLE_EQ(span.LE, row.factor * 4.0);
            EXPECT_EQ(span.flexural.sway, row.factor > 1.0);
        }
    }
}

// An inner support is no directional restraint, and the check says that it is not counted as one.
TEST(StrutsByHand, ContinuityAtInnerPointsIsNotCountedAndNamed)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {3.0, L"Pinned"}, {6.0, L"Pinned"}};
    EndMoments(given, 6.0, 0.0, 0.0, -100 * kN);
    Checked two(given);
    two.Check();
    EXPECT_TRUE(two.Assumes(L"continuity at inner points"));
    for (const SpanResult& span : two.Spans(BucklingMode::Major))
        EXPECT_DOUBLE_EQ(span.LE, 3.0);
    given.points = {{0.0, L"Pinned"}, {6.0, L"Pinned"}};
    Checked one(given);
    one.Check();
    EXPECT_FALSE(one.Assumes(L"continuity at inner points"));
    // A support that holds the rotation counts, and nothing is left out.
    given.points = {{0.0, L"Pinned"}, {3.0, L"Fixed"}, {6.0, L"Pinned"}};
    Checked held(given);
    held.Check();
    EXPECT_FALSE(held.Assumes(L"continuity at inner points"));
    for (const SpanResult& span : held.Spans(BucklingMode::Major))
        EXPECT_LT(span.LE, 3.0);
}

// A moment up to a millionth of the elastic moment of its axis is none. UC 203x203x46 S275: Zx = 450 cm³, 123.75 Nm·10⁻³; Zy = 152 cm³,
// 41.8 Nm·10⁻³.
TEST(StrutsByHand, AMomentUpToAMillionthOfTheElasticOneIsNone)
{
    const auto terms = [](double mx, double my) {
        Case given;
        given.section = L"UC 203x203x46";
        EndMoments(given, 6.0, mx, mx, -100 * kN, my, my);
        Checked c(given);
        c.Check();
        return c.Spans(BucklingMode::Minor).front();
    };
    EXPECT_EQ(terms(0.1215, 0.0).Mx, 0.0);
    EXPECT_EQ(terms(0.1260, 0.0).Mx, 0.1260);
    EXPECT_EQ(terms(0.0, 0.0410).flexural.My, 0.0);
    EXPECT_EQ(terms(0.0, 0.0426).flexural.My, 0.0426);
}

// 4.7.10.2: L 120x120x10 (rv 2.36 cm, ry 3.67 cm), two lengths of 1 m: 0.7*100/3.67 + 30 = 49.1 in each of them, wherever it
// lies along the member.
TEST(StrutsByHand, AnAngleHeldAtMidLengthHasTheSameSlendernessInBothHalves)
{
    Case given;
    given.section = L"L 120x120x10";
    given.points = {{0.0, L"Pinned"}, {1.0, L"Pinned"}, {2.0, L"Pinned"}};
    EndMoments(given, 2.0, 0.0, 0.0, -100 * kN);
    Checked c(given);
    c.Check();
    const auto spans = c.Spans(BucklingMode::Minor);
    ASSERT_EQ(spans.size(), 2u);
    for (const SpanResult& span : spans)
        EXPECT_NEAR(span.slenderness, 49.1, 0.2);
}

// --- cantilevers -------------------------------------------------------------------------------------------------------

struct TipRow {
    std::vector<std::pair<double, const wchar_t*>> points;
    bool isTip; // of the end at 0
};

class TipByHand : public testing::TestWithParam<TipRow> {};

// An end without vertical support is the tip of a cantilever where the rest can carry it: two vertical supports, or one that
// holds the rotation about x-x. A point that is held sideways only is no support.
INSTANTIATE_TEST_SUITE_P(Ends, TipByHand,
                         testing::Values(TipRow{{{0, L"Free"}, {6, L"Fixed"}}, true},
                                         TipRow{{{0, L"Free"}, {3, L"Free"}, {6, L"Fixed"}}, true},
                                         TipRow{{{0, L"Free"}, {2, L"Pinned"}, {6, L"Pinned"}}, true},
                                         TipRow{{{0, L"Free"}, {2, L"Free"}, {4, L"Pinned"}, {6, L"Pinned"}}, true},
                                         TipRow{{{0, L"Free"}, {6, L"Pinned"}}, false},
                                         TipRow{{{0, L"Free"}, {3, L"Free"}, {6, L"Pinned"}}, false},
                                         TipRow{{{0, L"Free"}, {2, L"Free"}, {4, L"Free"}, {6, L"Pinned"}}, false},
                                         TipRow{{{0, L"Pinned"}, {6, L"Fixed"}}, false}));

TEST_P(TipByHand, IsAnEndThatTheRestOfTheMemberCanCarry)
{
    for (const bool turned : {false, true}) {
        Case given;
        given.points = GetParam().points;
        given.force = [turned](double) { return Vector(0, 0, turned ? -5 * kN : 5 * kN); };
        given.moment = [turned](double x) { return Vector(0, 5 * kN * (turned ? 6.0 - x : x), 0); };
        if (turned) {
            std::reverse(given.points.begin(), given.points.end());
            for (auto& point : given.points)
                point.first = 6.0 - point.first;
        }
        Checked c(given);
        const bool passes = c.Check();
        const auto spans = c.Spans(BucklingMode::LateralTorsional);
        ASSERT_FALSE(spans.empty());
        const SpanResult& end = turned ? spans.back() : spans.front();
        EXPECT_EQ(end.lateral.cantilever, GetParam().isTip);
        // A free end that is no tip has neither a vertical support nor a row of Table 13.
        const bool isFree = std::wstring(GetParam().points.front().second) == L"Free";
        EXPECT_EQ(passes, GetParam().isTip || !isFree);
        if (!GetParam().isTip) continue;
        EXPECT_NE(std::wstring(end.lengthRule).find(L"Table 14"), std::wstring::npos);
    }
}

// --- lateral-torsional buckling ------------------------------------------------------------------------------------------

// 4.3.6.7: λLT = u v λ βW^0.5, so a βW of 0.81 gives 0.9 of the slenderness, and it is the βW that is reported.
TEST(LateralByHand, TheRatioOfTheModuliScalesTheSlenderness)
{
    const SectionProperties s = PropertiesOf(L"UB 457x191x67", SEC_ROLLED);
    const SlendernessLT one = LateralTorsionalSlenderness(s, 5.0, 1.0, true);
    const SlendernessLT less = LateralTorsionalSlenderness(s, 5.0, 0.81, true);
    EXPECT_EQ(one.betaW, 1.0);
    EXPECT_EQ(less.betaW, 0.81);
    EXPECT_NEAR(less.lambdaLT, 0.9 * one.lambdaLT, 1e-9);
    EXPECT_NE(std::wstring(one.source).find(L"4.3.6.7"), std::wstring::npos);
    const SectionProperties tee = PropertiesOf(L"T 229x191x34", SEC_ROLLED);
    EXPECT_EQ(std::wstring(LateralTorsionalSlenderness(tee, 5.0, 1.0, true).source), L"B.2.8");
}

// The clauses under which lateral-torsional buckling stands: 4.3.8 for angles, 4.3.6 for the others.
TEST(LateralByHand, TheLedgerNamesTheClauseOfTheShape)
{
    Case given;
    Uniform(given, 6.0, 2e3);
    Checked beam(given);
    beam.Check();
    EXPECT_STREQ(beam.Entry(Rule::LateralTorsional).clause, L"4.3.6");
    given.section = L"L 150x150x15";
    Checked angle(given);
    angle.Check();
    EXPECT_STREQ(angle.Entry(Rule::LateralTorsional).clause, L"4.3.8");
}

// --- the ledger --------------------------------------------------------------------------------------------------------

// Every resistance has the symbol under which an engineer looks for it.
TEST(LedgerByHand, ResistancesHaveTheirSymbols)
{
    Case given;
    Uniform(given, 6.0, 20e3, -100 * kN);
    Checked strut(given);
    strut.Check();
    EXPECT_STREQ(strut.Entry(Rule::Compression).symbol, L"Pz");
    EXPECT_STREQ(strut.Entry(Rule::ShearMajor).symbol, L"Pvy");
    EXPECT_STREQ(strut.Entry(Rule::MomentMajor).symbol, L"Mcx");
    EXPECT_STREQ(strut.Entry(Rule::BucklingMajor).symbol, L"Pcx");
    EXPECT_STREQ(strut.Entry(Rule::BucklingMinor).symbol, L"Pcy");
    EXPECT_STREQ(strut.Entry(Rule::LateralTorsional).symbol, L"Mb");
    Uniform(given, 6.0, 20e3, 100 * kN);
    Checked tie(given);
    tie.Check();
    EXPECT_STREQ(tie.Entry(Rule::Tension).symbol, L"Pt");
    for (const Checked* c : {&strut, &tie})
        for (const LedgerEntry& e : c->member.Checks().Entries())
            EXPECT_EQ(e.quantity != Quantity::None, *e.symbol != L'\0') << *CString(RuleName(e.rule)).ToUtf8();
}

// 4.2.5.1: more than 1.5 is never used, and that it was not is said; 1.5 itself is given as it is.
TEST(LedgerByHand, AnElasticLimitAbove1Point5IsCutAndNamed)
{
    for (const double given : {1.2, 1.5, 1.6}) {
        Case member;
        member.plasElas = given;
        Uniform(member, 6.0, 10e3);
        Checked c(member);
        c.Check();
        EXPECT_EQ(c.Assumes(L"plastic to elastic limit"), given > 1.5) << given;
    }
}

// A net area of half a per cent is no sensible one, but it is one: Pt = 0.005*1.2*275*8550 = 14.1 kN. None at all is refused.
TEST(LedgerByHand, AnyNetAreaAboveZeroIsTaken)
{
    Case given;
    given.netGross = 0.005;
    EndMoments(given, 6.0, 0.0, 0.0, 10 * kN);
    Checked small(given);
    EXPECT_TRUE(small.Check());
    ExpectWithin(0.002, small.Entry(Rule::Tension).resistance, 14.1 * kN, "Pt");
    given.netGross = 0.0;
    Checked none(given);
    EXPECT_FALSE(none.Check());
    EXPECT_EQ(none.Entry(Rule::Tension).status, CheckStatus::NotEvaluated);
}

// Every interaction is that of three spans which have its stretch in common, one of each mode, with their own figures.
TEST(LedgerByHand, InteractionsReferToTheSpansOfTheirStretch)
{
    Case given;
    given.section = L"UC 254x254x89";
    given.points = {{0.0, L"Pinned"}, {2.0, L"MAJV MINV"}, {4.0, L"F12L"}, {5.0, L"Pinned"}, {7.0, L"Pinned"}};
    for (const int option : {CSteelMemberBS5950::SIMPLIFIED, CSteelMemberBS5950::MORE_EXACT}) {
        given.option = option;
        EndMoments(given, 7.0, -60 * kNm, 90 * kNm, -700 * kN, 5 * kNm, -12 * kNm);
        Checked c(given);
        c.Check();
        const auto& spans = c.member.Spans();
        ASSERT_GT(c.member.Interactions().size(), 2u);
        for (const InteractionResult& i : c.member.Interactions()) {
            const SpanResult& x = spans.at(static_cast<std::size_t>(i.major));
            const SpanResult& y = spans.at(static_cast<std::size_t>(i.minor));
            const SpanResult& lt = spans.at(static_cast<std::size_t>(i.lateral));
            EXPECT_EQ(x.mode, BucklingMode::Major);
            EXPECT_EQ(y.mode, BucklingMode::Minor);
            EXPECT_EQ(lt.mode, BucklingMode::LateralTorsional);
            for (const SpanResult* span : {&x, &y, &lt}) {
                EXPECT_LE(span->start, i.start);
                EXPECT_GE(span->end, i.end);
            }
            EXPECT_EQ(i.start, std::max({x.start, y.start, lt.start}));
            EXPECT_EQ(i.end, std::min({x.end, y.end, lt.end}));
            EXPECT_EQ(i.utilisation, std::max({i.first, i.second, i.third}));
            EXPECT_GE(i.first, x.utilisation);
            EXPECT_GE(i.second, y.utilisation);
        }
    }
}
