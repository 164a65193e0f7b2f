// Member checks by hand. Section properties are the published ones, in cm; E = 205 kN/mm², so π²E = 2 023 270 N/mm².

#include <gtest/gtest.h>

#include "Members.h"

using namespace BS5950Test;

namespace {

SpanResult Governing(const Checked& c, BucklingMode mode)
{
    SpanResult worst;
    for (const SpanResult& s : c.Spans(mode))
        if (s.utilisation >= worst.utilisation) worst = s;
    return worst;
}

double LargestInteraction(const Checked& c)
{
    double largest = 0.0;
    for (const InteractionResult& i : c.member.Interactions())
        largest = std::max(largest, i.utilisation);
    return largest;
}

// 12 m under 50 kN/m of uplift between purlins at 3 m and 9 m, where the moment has the other sign.
Case Purlins(const wchar_t* purlin)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {3.0, purlin}, {9.0, purlin}, {12.0, L"Pinned"}};
    given.force = [](double x) { return Vector(0, 0, x < 3 ? -50e3 / 3 : x < 9 ? 150e3 - 50e3 * (x - 3) : 50e3 / 3); };
    given.moment = [](double x) {
        return Vector(0,
                      x < 3    ? -50e3 * x / 3
                      : x <= 9 ? -50e3 + 150e3 * (x - 3) - 25e3 * (x - 3) * (x - 3)
                               : -50e3 * (12 - x) / 3,
                      0);
    };
    return given;
}

} // namespace

// Purlins that hold the top flange, which is compressed where they are, leave the bottom flange to buckle over all 12 m under
// 175 kNm. UB 457x191x67 S275: λ = 1200/4.12 = 291.3, λ/x = 291.3/37.9 = 7.69, v = (1 + 0.05*7.69²)^-0.25 = 0.709, λLT =
// 0.872*0.709*291.3 = 180.1, pE = 62.36, η = 0.007(180.1 - 34.31) = 1.0207, φ = (275 + 2.0207*62.36)/2 = 200.5, pb =
// 17149/(200.5 + 151.8) = 48.67, Mb = 1470*0.04867 = 71.5. Table 18: 0.2 + (0.15*50 + 0.5*175 + 0.15*50)/175 = 0.786.
// 0.786*175/71.5 = 1.922. The beam buckles at 0.765 of the load (finite elements), a utilisation of 1.31.
TEST(LateralByHand, ARestraintOfTheOtherFlangeEndsNothing)
{
    Checked c(Purlins(L"Top flange lateral"));
    EXPECT_FALSE(c.Check());
    const SpanResult span = Governing(c, BucklingMode::LateralTorsional);
    EXPECT_EQ(span.start, 0.0);
    EXPECT_EQ(span.end, 12.0);
    EXPECT_TRUE(!span.lateral.flange[0] && span.lateral.flange[1]);
    EXPECT_NEAR(span.resistance, 71.5e3, 0.2e3);
    EXPECT_NEAR(span.m, 0.7857, 1e-4);
    EXPECT_NEAR(span.utilisation, 1.922, 0.005);
    EXPECT_EQ(c.result.UtilBucklingLT(), span.utilisation);
}

// Where purlins hold both flanges the middle 6 m count, under their largest moment of either sign: λ = 145.6, λ/x = 3.843, v =
// 0.871, λLT = 0.872*0.871*145.6 = 110.6, pE = 165.4, η = 0.534, φ = 264.4, pb = 45485/(264.4 + 156.3) = 108.1, Mb = 158.9. Table 18:
// M2 = M4 = -50 + 150*1.5 - 25*2.25 = 118.75: 0.2 + (0.3*118.75 + 0.5*175)/175 = 0.9036. 0.9036*175/158.9 = 0.995.
TEST(LateralByHand, ARestraintOfBothFlangesEndsTheStretch)
{
    Checked c(Purlins(L"Top and Bottom flange lateral"));
    EXPECT_TRUE(c.Check());
    const SpanResult span = Governing(c, BucklingMode::LateralTorsional);
    EXPECT_EQ(span.start, 3.0);
    EXPECT_EQ(span.end, 9.0);
    EXPECT_TRUE(span.lateral.flange[0] && span.lateral.flange[1]);
    EXPECT_NEAR(span.m, 0.9036, 1e-4);
    EXPECT_NEAR(span.utilisation, 0.995, 0.004);
}

// The top flange's own stretch 3 m to 9 m: its moment is 50 kNm, and 175 kNm of the same stretch compress the other flange, so
// that Table 18 does not serve and mLT is 1.0.
TEST(LateralByHand, TheFactorIsOneWhereTheLargestMomentCompressesTheOtherFlange)
{
    Checked c(Purlins(L"Top flange lateral"));
    c.Check();
    for (const SpanResult& s : c.Spans(BucklingMode::LateralTorsional)) {
        if (s.start != 3.0) continue;
        EXPECT_EQ(s.effect, 50e3);
        EXPECT_EQ(s.m, 1.0);
        EXPECT_TRUE(s.lateral.flange[0] && !s.lateral.flange[1]);
        return;
    }
    FAIL() << "no stretch from 3 m";
}

// Deck on the top flange of a propped cantilever, 24 m, 24 kN/m: M = -216 x + 12 x² kNm, 1728 at the right end. The bottom flange is
// compressed near that end and held at both ends alone. UB 914x305x201 S275, py 265: λ = 2400/6.07 = 395.4, λ/x = 8.449, v = 0.684,
// λLT = 0.854*0.684*395.4 = 231.0, pE = 37.93, η = 1.372, φ = (265 + 2.372*37.93)/2 = 177.5, pb = 10052/(177.5 + 146.5) = 31.03,
// Mb = 8350*0.03103 = 259.1. Table 18: M2 = M3 = 864, M4 = 0: 0.2 + (0.15*864 + 0.5*864)/1728 = 0.525. 0.525*1728/259.1 = 3.50.
TEST(LateralByHand, ADeckOnTheTensionFlangeLeavesTheOtherOneWhateverTheDivision)
{
    for (const int pieces : {1, 2, 3, 7, 16, 20}) {
        Case given;
        given.section = L"UB 914x305x201";
        given.plasElas = 1.5;
        given.along = L"Top flange lateral";
        given.force = [](double x) { return Vector(0, 0, -216e3 + 24e3 * x); };
        given.moment = [](double x) { return Vector(0, -216e3 * x + 12e3 * x * x, 0); };
        given.points.clear();
        for (int i = 0; i <= pieces; ++i)
            given.points.emplace_back(24.0 * i / pieces, i % pieces == 0 ? L"Pinned" : L"Free");
        Checked c(given);
        EXPECT_FALSE(c.Check());
        const SpanResult span = Governing(c, BucklingMode::LateralTorsional);
        EXPECT_NEAR(span.resistance, 259.1e3, 0.5e3) << pieces;
        EXPECT_NEAR(span.m, 0.525, 1e-6) << pieces;
        EXPECT_NEAR(span.utilisation, 3.501, 0.01) << pieces;
    }
}

// Where a deck begins at a point without moment it holds the flange all the same.
TEST(LateralByHand, TheEdgeOfADeckAtAPointWithoutMomentHoldsTheFlange)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {4.0, L"Free"}, {8.0, L"Pinned"}};
    given.alongEach = {L"Free", L"Top flange lateral"};
    EndMoments(given, 8.0, -40e3, 40e3);
    Checked c(given);
    EXPECT_TRUE(c.Check());
    for (const SpanResult& s : c.Spans(BucklingMode::LateralTorsional))
        EXPECT_LT(s.LE, 9.0);
    EXPECT_LT(c.result.UtilBucklingLT(), 1.0);
}

// 4.3.5.5 on the safe side: a restraint between the support and a free tip does not count. LE = 0.8*4 = 3.2 m: λ = 77.67, λ/x =
// 2.049, v = 0.9535, λLT = 64.58, pE = 485.2, η = 0.2119, φ = (275 + 1.2119*485.2)/2 = 431.5, pb = 133425/(431.5 + 229.7) = 201.8, Mb =
// 296.6: 300/296.6 = 1.011, with and without the restraint.
TEST(LateralByHand, RestraintsAlongACantileverWithAFreeTipDoNotCount)
{
    for (const wchar_t* middle : {L"Free", L"Top and Bottom flange lateral", L"Bottom flange lateral"}) {
        Case given;
        given.points = {{0.0, L"Fixed"}, {2.0, middle}, {4.0, L"Free"}};
        given.force = [](double) { return Vector(0, 0, -75e3); };
        given.moment = [](double x) { return Vector(0, 75e3 * (4 - x), 0); };
        Checked c(given);
        EXPECT_FALSE(c.Check());
        EXPECT_NEAR(c.result.UtilBucklingLT(), 1.011, 0.003) << *CString(middle).ToUtf8();
    }
}

// A tip that is held laterally and in torsion makes the restraint at midlength count (4.3.5.5). The half beside the tip is then a
// length between two sections that hold both flanges: LE = 1.0*2 = 2.0 m by Table 13, longer than the 0.7*2 = 1.4 m that Table 14
// has for a cantilever of 2 m.
TEST(LateralByHand, ALengthBesideAHeldTipIsNoCantileverByItself)
{
    const wchar_t* const both = L"Top and Bottom flange lateral";
    Case given;
    given.points = {{0.0, L"Fixed"}, {2.0, both}, {4.0, both}};
    given.force = [](double) { return Vector(0, 0, -75e3); };
    given.moment = [](double x) { return Vector(0, 75e3 * (4 - x), 0); };
    Checked c(given);
    c.Check();
    const SpanResult outer = c.Spans(BucklingMode::LateralTorsional).back();
    EXPECT_EQ(outer.start, 2.0);
    EXPECT_DOUBLE_EQ(outer.LE, 2.0);
    EXPECT_EQ(outer.m, 1.0);
}

// A moment at the tip lengthens LE by 0.3 L (4.3.5.4): 0.8*4 + 0.3*4 = 4.4 m, more than 1.3*3.2 = 4.16 m.
TEST(LateralByHand, AMomentAtTheTipLengthensTheCantilever)
{
    for (const double sign : {1.0, -1.0}) {
        Case given;
        given.points = {{0.0, L"Fixed"}, {4.0, L"Free"}};
        given.force = [&](double) { return Vector(0, 0, -20e3 * sign); };
        given.moment = [&](double x) { return Vector(0, (20e3 * (4 - x) + 10e3) * sign, 0); };
        Checked c(given);
        c.Check();
        const SpanResult span = Governing(c, BucklingMode::LateralTorsional);
        EXPECT_DOUBLE_EQ(span.LE, 4.4);
        EXPECT_EQ(span.lateral.tipMoment, 10e3 * sign);
        EXPECT_NE(c.Verbose().find("LE = max(1.3 LE, LE + 0.3 L) = max(1.3 * 3.2 m, 3.2 m + 0.3 * 4 m) = 4.4 m"),
                  std::string::npos)
            << c.Verbose();
    }
}

// With 60 kN at one end, 60.5 kN at the other and 5 kNm at the right end nobody knows the moment in between.
TEST(MomentFactors, AreOneWhereTheForcesDoNotBalance)
{
    Case given;
    given.force = [](double x) { return Vector(-200e3, 0, x < 3 ? -60e3 : 60.5e3); };
    given.moment = [](double x) { return Vector(0, x > 3 ? 5e3 : 0.0, 0); };
    Checked c(given);
    c.Check();
    EXPECT_EQ(Governing(c, BucklingMode::LateralTorsional).m, 1.0);
    EXPECT_EQ(Governing(c, BucklingMode::Major).m, 1.0);
    EXPECT_NEAR(Governing(c, BucklingMode::LateralTorsional).effect, 90e3, 3e3);
}

// Beside a couple at mid-length, where M jumps from -60 to +60, both sides are M3: 0.2 + (0.15*30 + 0.5*60 + 0.15*30)/60 = 0.85 by
// Table 18. By Table 26 0.2 + |0.1*30 + 0.6*60 - 0.1*30|/60 = 0.8 from either side, and 0.8*60/60 = 0.8.
TEST(MomentFactors, TakeTheWorseSideOfAJumpAtAQuarterPoint)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {3.0, L"Free"}, {6.0, L"Pinned"}};
    given.force = [](double) { return Vector(-100e3, 0, -20e3); };
    Checked c(given, false);
    std::vector<Steel::CSubSpan> subs = c.member.GetSubSpanVec();
    subs[0].SetMomentsAll({0, 0, 0}, {0, -60e3, 0});
    subs[1].SetMomentsAll({0, 60e3, 0}, {0, 0, 0});
    c.member.SetSubSpanVec(subs);
    c.Check();
    EXPECT_NEAR(Governing(c, BucklingMode::LateralTorsional).m, 0.85, 1e-9);
    EXPECT_NEAR(Governing(c, BucklingMode::Major).m, 0.8, 1e-9);
}

TEST(MomentFactors, GivenAreRefusedAtZeroAndRaisedWhereTheStandardAsksForMore)
{
    Case given;
    EndMoments(given, 6.0, -100e3, -100e3);
    for (const double factor : {0.0, -0.5, std::nan("")}) {
        Checked c(given);
        c.member.SetEquivalentUniformMomentFactor(factor);
        EXPECT_FALSE(c.Check()) << factor;
        EXPECT_TRUE(c.member.Spans().empty());
    }
    given.loadHeight = 0.2;
    Checked c(given);
    c.member.SetEquivalentUniformMomentFactor(0.5);
    c.Check();
    EXPECT_EQ(Governing(c, BucklingMode::LateralTorsional).m, 1.0);
    EXPECT_EQ(Governing(c, BucklingMode::Major).m, 0.5);
}

// An effective length of 2 L means that the ends of the column sway: m is 0.85 at least. UC 203x203x60 S275, 650 kN, 95 kNm in
// double curvature, LEx = 8 m: λ = 89.3, curve b: pE = 253.8, η = 0.2525, φ = (275 + 1.2525*253.8)/2 = 296.4, pc = 69795/(296.4 +
// 134.6) = 162.0, Pcx = 1237: 650/1237 = 0.5255. mx Mx/(py Zx) = 0.85*95/(0.275*584) = 0.5028. Sum 1.028.
TEST(ColumnByHand, AGivenLengthAboveTheMembersIsASwayCase)
{
    Case given;
    given.section = L"UC 203x203x60";
    given.plasElas = 1.5;
    given.points = {{0.0, L"Pinned"}, {4.0, L"Pinned"}};
    EndMoments(given, 4.0, 95e3, -95e3, -650e3);
    Checked c(given);
    c.member.SetLengthOverride(true);
    c.member.SetLyy(-2.0);
    c.member.SetLzz(-1.0);
    c.member.SetLlt(-1.0);
    EXPECT_FALSE(c.Check());
    EXPECT_EQ(Governing(c, BucklingMode::Major).m, 0.85);
    EXPECT_FALSE(Governing(c, BucklingMode::Minor).flexural.sway);
    EXPECT_NEAR(LargestInteraction(c), 1.028, 0.003);
    c.member.SetLyy(-1.0);
    c.Check();
    EXPECT_NEAR(Governing(c, BucklingMode::Major).m, 0.4, 1e-9);
}

// 4.7.10.2 is a floor whatever the fixity: L 100x100x10 S275, 3 m, ends fixed: λv = max(0.7*300/1.95, 0.85*300/1.95, 0.7*300/1.95 +
// 15, 300/3.04, 0.7*300/3.04 + 30) = 130.8; curve c: pE = 118.3, η = 0.6249, φ = (275 + 1.6249*118.3)/2 = 233.6, pc = 32537/(233.6 +
// 148.5) = 85.15, Pcv = 19.2*8.515 = 163.5: 175/163.5 = 1.070.
TEST(AngleStrutByHand, FixedEndsDoNotGoBelowTheSlendernessOfTheConnections)
{
    Case given;
    given.section = L"L 100x100x10";
    given.points = {{0.0, L"Fixed"}, {3.0, L"Fixed"}};
    EndMoments(given, 3.0, 0.0, 0.0, -175e3);
    Checked c(given);
    EXPECT_FALSE(c.Check());
    const SpanResult minor = Governing(c, BucklingMode::Minor);
    EXPECT_NEAR(minor.slenderness, 130.8, 0.4);
    EXPECT_NEAR(minor.utilisation, 1.070, 0.005);
    // About x-x: 0.7*98.7 raised to 1.0*300/3.04 = 98.7 and 0.7*98.7 + 30 = 99.1.
    EXPECT_NEAR(Governing(c, BucklingMode::Major).slenderness, 99.1, 0.2);
    // A moment of 1 N·m changes nothing of that.
    EndMoments(given, 3.0, 1.0, 1.0, -175e3);
    Checked bent(given);
    bent.Check();
    EXPECT_EQ(Governing(bent, BucklingMode::Minor).slenderness, minor.slenderness);
    EXPECT_TRUE(bent.Assumes(L"end connections of the strut"));
    // A given length does not either; L is that between the points that hold the strut.
    given.points = {{0.0, L"Pinned"}, {1.5, L"Pinned"}, {3.0, L"Pinned"}};
    Checked givenLength(given);
    givenLength.member.SetLengthOverride(true);
    givenLength.member.SetLyy(0.5);
    givenLength.member.SetLzz(0.5);
    givenLength.member.SetLlt(0.5);
    givenLength.Check();
    EXPECT_NEAR(Governing(givenLength, BucklingMode::Minor).slenderness, 0.7 * 150 / 1.953 + 15, 0.1);
}

// Pinned ends, 3 m: LE/rv = 153.8. Two bolts: 0.85*153.8 = 130.8 may stand for it; one bolt: 153.8 and 80 % of the
// resistance; moments that hold the eccentricity: LE/rv alone, with the ends fixed 0.7*153.8 = 107.7.
TEST(AngleStrutByHand, ConnectionsAndMomentsThatHoldTheEccentricityAreOptions)
{
    Case given;
    given.section = L"L 100x100x10";
    given.points = {{0.0, L"Pinned"}, {3.0, L"Pinned"}};
    EndMoments(given, 3.0, 0.0, 0.0, -100e3);
    const auto minor = [&](const DesignOptions& options) {
        Checked c(given);
        c.member.SetOptions(options);
        c.Check();
        return Governing(c, BucklingMode::Minor);
    };
    DesignOptions options;
    const SpanResult usual = minor(options);
    EXPECT_NEAR(usual.slenderness, 153.8, 0.5);
    options.connection = Connection::TwoBoltsMore;
    EXPECT_NEAR(minor(options).slenderness, 130.8, 0.4);
    options.connection = Connection::OneBolt;
    EXPECT_NEAR(minor(options).slenderness, 153.8, 0.5);
    EXPECT_NEAR(minor(options).resistance, 0.8 * usual.resistance, 1e-6 * usual.resistance);
    given.points = {{0.0, L"Fixed"}, {3.0, L"Fixed"}};
    options = {};
    options.momentsHoldEccentricity = true;
    EXPECT_NEAR(minor(options).slenderness, 107.7, 0.4);
    Checked c(given);
    c.member.SetOptions(options);
    c.Check();
    EXPECT_EQ(c.Entry(Rule::StrutConnections).status, CheckStatus::NotApplicable);
    EXPECT_TRUE(c.Assumes(L"eccentricity of the end connections"));
}

// PFC 300x90x41, Table 25. About y-y, across the gusset: 300/2.77 = 108.3, 0.7*108.3 = 75.8 of fixed ends raised to 108.3, more than 75.8 + 30.
// About x-x: 0.7*300/11.7 raised to 0.85*300/11.7 = 21.8.
TEST(ChannelStrutByHand, KeepsTheSlendernessOfItsWebConnection)
{
    Case given;
    given.section = L"PFC 300x90x41";
    given.points = {{0.0, L"Fixed"}, {3.0, L"Fixed"}};
    EndMoments(given, 3.0, 0.0, 0.0, -100e3);
    Checked c(given);
    c.Check();
    EXPECT_NEAR(Governing(c, BucklingMode::Minor).slenderness, 108.3, 0.3);
    EXPECT_NEAR(Governing(c, BucklingMode::Major).slenderness, 0.85 * 300 / 11.7, 0.1);
}

// Table 25, two bolts or more at pinned ends. Connected along its web, PFC 150x75x18 of 4.5 m has 1.0*450/2.40 = 187.5 about y-y, across the gusset, and
// 0.85*450/6.15 = 62.2 about x-x. Connected along its table, T 343x254x63 has 0.7*450/10.6 + 30 = 59.7
// about x-x, more than 1.0*450/10.6, and 0.85*450/5.24 = 73.0 about y-y.
TEST(StrutByHand, OfTwoBoltsIsHeldInThePlaneOfItsGusset)
{
    struct Row {
        const wchar_t* section;
        double major;
        double minor;
    };
    for (const Row& row : {Row{L"PFC 150x75x18", 62.2, 187.5}, Row{L"T 343x254x63", 59.7, 73.0}}) {
        Case given;
        given.section = row.section;
        given.points = {{0.0, L"Pinned"}, {4.5, L"Pinned"}};
        EndMoments(given, 4.5, 0.0, 0.0, -50e3);
        Checked c(given);
        DesignOptions options;
        options.connection = Connection::TwoBoltsMore;
        c.member.SetOptions(options);
        c.Check();
        EXPECT_NEAR(Governing(c, BucklingMode::Major).slenderness, row.major, 0.4) << *CString(row.section).ToUtf8();
        EXPECT_NEAR(Governing(c, BucklingMode::Minor).slenderness, row.minor, 0.4) << *CString(row.section).ToUtf8();
    }
}

// Basic method, L 150x150x12 S275, 8 m, 12 kNm about x-x alone or y-y alone: Mu = Mv = 12/2^0.5 = 8.485. φa = (110.4²(1 -
// 303.5/1170)/(34.83*18.21))^0.5 = 3.772, λv = 800/2.952 = 271.0, λLT = 2.25(3.772*271.0)^0.5 = 71.94, pE = 390.9, η = 0.2634, φ =
// (275 + 1.2634*390.9)/2 = 384.4, pb = 107498/(384.4 + 200.7) = 183.7, Mb = 20.28: 8.485/20.28 = 0.418. About v-v: 8.485/(0.275*52.06) =
// 0.593. Sum 1.011.
TEST(AngleByHand, BentAboutOneOfItsLegsIsBentAboutBothPrincipalAxes)
{
    for (const bool aboutY : {false, true}) {
        Case given;
        given.section = L"L 150x150x12";
        given.points = {{0.0, L"Pinned"}, {8.0, L"Pinned"}};
        EndMoments(given, 8.0, aboutY ? 0.0 : -12e3, aboutY ? 0.0 : -12e3, 0.0, aboutY ? 12e3 : 0.0,
                   aboutY ? 12e3 : 0.0);
        Checked c(given);
        EXPECT_FALSE(c.Check());
        const SpanResult span = Governing(c, BucklingMode::LateralTorsional);
        EXPECT_NEAR(span.effect, 8.485e3, 5.0) << aboutY;
        EXPECT_NEAR(span.resistance, 20.28e3, 0.05e3) << aboutY;
        EXPECT_NEAR(LargestInteraction(c), 1.011, 0.003) << aboutY;
        EXPECT_STREQ(c.member.Interactions().front().clause, L"4.9");
    }
}

// L 150x150x15 S275, 3 m, 250 kN, Mx 9 kNm all along and My from 20 N·m to -20 N·m. Pcv: λ = 300/2.934 = 102.2, pE = 193.7, η =
// 0.4678, φ = 279.7, pc = 53268/(279.7 + 158.0) = 121.7, Pcv = 523.5: 0.478. Mu is 6.35 to 6.38, so that mLT and mv are 1.00 and not those of My:
// Mb = 35.4 (φa = 2.996, λLT = 39.37, pb = 263.3): 0.180. About v-v 6.36/(0.275*61.65) = 0.375. Sum 1.033, and the same without My.
TEST(AngleByHand, FactorsAreThoseOfTheMomentsAboutPrincipalAxes)
{
    for (const double My : {0.0, 20.0}) {
        Case given;
        given.section = L"L 150x150x15";
        given.points = {{0.0, L"Pinned"}, {3.0, L"Pinned"}};
        EndMoments(given, 3.0, -9e3, -9e3, -250e3, My, -My);
        Checked c(given);
        EXPECT_FALSE(c.Check());
        EXPECT_NEAR(Governing(c, BucklingMode::Minor).utilisation, 0.478, 0.002);
        EXPECT_NEAR(Governing(c, BucklingMode::LateralTorsional).utilisation, 0.180, 0.001);
        EXPECT_NEAR(LargestInteraction(c), 1.033, 0.003) << My;
    }
}

// How an angle is turned is not known: Mx and My of one sign add up about u-u, or about v-v.
TEST(AngleByHand, BentAboutBothLegsIsCheckedTurnedEitherWay)
{
    Case given;
    given.section = L"L 150x150x15";
    given.points = {{0.0, L"Pinned"}, {3.0, L"Pinned"}};
    EndMoments(given, 3.0, -6e3, -6e3, 0.0, 4e3, 4e3);
    Checked c(given);
    c.Check();
    std::vector<double> effects;
    for (const SpanResult& s : c.Spans(BucklingMode::LateralTorsional))
        effects.push_back(s.effect);
    std::sort(effects.begin(), effects.end());
    ASSERT_EQ(effects.size(), 2u);
    EXPECT_NEAR(effects[0], (6e3 - 4e3) / std::sqrt(2.0), 1.0);
    EXPECT_NEAR(effects[1], (6e3 + 4e3) / std::sqrt(2.0), 1.0);
    ASSERT_EQ(c.member.Interactions().size(), 2u);
    for (const InteractionResult& i : c.member.Interactions()) {
        const SpanResult& x = c.member.Spans()[static_cast<std::size_t>(i.major)];
        const SpanResult& y = c.member.Spans()[static_cast<std::size_t>(i.minor)];
        EXPECT_NEAR(x.Mx + y.flexural.My, 12e3 / std::sqrt(2.0), 2.0)
            << "the larger one of Mu and Mv goes with the smaller other";
    }
}

// 4.8.3.3.2 with a capacity that high shear lowers at the support, where the moment is small, and not at mid-span, where it is
// largest. UB 457x191x67 S275: Pv = 0.6*275*453.4*8.5 = 636 kN; 500 kN at the supports are more than 0.6 Pv = 382 kN.
TEST(InteractionByHand, ShearElsewhereDoesNotLowerTheCapacityAtTheLargestMoment)
{
    Case given;
    given.option = CSteelMemberBS5950::MORE_EXACT;
    given.along = L"Top and Bottom flange lateral";
    given.points = {{0.0, L"Pinned"}, {2.0, L"Pinned"}};
    Uniform(given, 2.0, 500e3, -100e3);
    Checked c(given);
    c.Check();
    const SpanResult major = Governing(c, BucklingMode::Major);
    EXPECT_NEAR(major.flexural.major, 250e3 / (275e6 * 1471e-6), 0.001);
}

// 4.7.7, UC 254x254x89 S275, 5 m, 1200 kN, nominal moments 20 and 2.5 kNm at the top: λ = 500/6.547 = 76.4, λLT = 38.2, pE = 1387, η =
// 0.007(38.2 - 34.95) = 0.0227, φ = (265 + 1.0227*1387)/2 = 841.7, pb = 367555/(841.7 + 583.9) = 257.8, Mbs = 1224*0.2578 = 315.6.
// Pcy: η = 5.5*0.0589 = 0.324, φ = 362.4, pc = 164.1, Pcy = 1859: 0.6455 + 20/315.6 + 2.5/(0.265*379) = 0.6455 + 0.0634 + 0.0249 =
// 0.734.
TEST(ColumnByHand, InSimpleConstruction)
{
    Case given;
    given.section = L"UC 254x254x89";
    given.points = {{0.0, L"Pinned"}, {5.0, L"Pinned"}};
    EndMoments(given, 5.0, 0.0, 20e3, -1200e3, 0.0, 2.5e3);
    Checked c(given);
    DesignOptions options;
    options.simpleColumn = true;
    c.member.SetOptions(options);
    EXPECT_TRUE(c.Check());
    const SpanResult span = Governing(c, BucklingMode::LateralTorsional);
    EXPECT_NEAR(span.resistance, 315.6e3, 1e3);
    EXPECT_EQ(span.m, 1.0);
    ASSERT_EQ(c.member.Interactions().size(), 1u);
    EXPECT_STREQ(c.member.Interactions()[0].clause, L"4.7.7");
    EXPECT_NEAR(LargestInteraction(c), 0.734, 0.004);
    EXPECT_TRUE(c.Assumes(L"column in simple construction"));
    // Not under a load between the floors.
    Uniform(given, 5.0, 5e3, -1200e3);
    Checked loaded(given);
    loaded.member.SetOptions(options);
    loaded.Check();
    EXPECT_STREQ(loaded.member.Interactions()[0].clause, L"4.8.3.3.1");
}

// 4.7.7 is for storeys of columns: without compression, with a free end, a given length, or anything that bends the column between its
// levels, the option changes no utilisation.
TEST(ColumnByHand, InSimpleConstructionNeedsAStoreyInCompression)
{
    Case column;
    column.section = L"UB 457x152x52";
    column.points = {{0.0, L"Pinned"}, {4.0, L"Pinned"}};
    EndMoments(column, 4.0, 80e3, 80e3, -100e3);
    const auto with = [](const Case& given, bool option, bool lengths = false) {
        Checked c(given);
        DesignOptions options;
        options.simpleColumn = option;
        c.member.SetOptions(options);
        if (lengths) {
            c.member.SetLengthOverride(true);
            c.member.SetLyy(8.0);
            c.member.SetLzz(8.0);
            c.member.SetLlt(8.0);
        }
        c.Check();
        return LargestInteraction(c);
    };
    EXPECT_LT(with(column, true), 0.7 * with(column, false)); // it is for this one
    EXPECT_EQ(with(column, true, true), with(column, false, true));

    Case cantilever = column;
    cantilever.points = {{0.0, L"Fixed"}, {4.0, L"Free"}};
    EXPECT_EQ(with(cantilever, true), with(cantilever, false));
    // Under 40 kN and 150 kNm, LE = 4.4 m: 40/184.7 + 150/120.4 = 1.462.
    EndMoments(cantilever, 4.0, 150e3, 150e3, -40e3);
    EXPECT_NEAR(with(cantilever, true), 1.462, 0.002);

    Case beam = column;
    EndMoments(beam, 4.0, 80e3, 80e3);
    EXPECT_EQ(with(beam, true), with(beam, false));
    EndMoments(beam, 4.0, 80e3, 80e3, 100e3);
    EXPECT_EQ(with(beam, true), with(beam, false));

    Case bracket = column; // 130 kNm at mid-height
    bracket.points = {{0.0, L"Pinned"}, {3.0, L"Free"}, {6.0, L"Pinned"}};
    bracket.force = [](double) { return Vector(-160e3, 0, 130e3 / 6.0); };
    bracket.moment = [](double x) { return Vector(0, x < 3.0 ? -130e3 * x / 6.0 : 130e3 - 130e3 * x / 6.0, 0); };
    EXPECT_EQ(with(bracket, true), with(bracket, false));

    Case blown = column; // 3 kN/m across
    blown.force = [](double x) { return Vector(-100e3, 3e3 * (x - 2.0), 0); };
    blown.moment = [](double x) { return Vector(0, 80e3, 1.5e3 * x * (4.0 - x)); };
    EXPECT_EQ(with(blown, true), with(blown, false));
}

// Under tension the check is under the moment alone (4.8.2.1): the same as without it, class and modulus included.
TEST(TensionByHand, LeavesTheLateralTorsionalCheckAsItIsUnderTheMomentAlone)
{
    for (const wchar_t* section : {L"UB 457x191x67", L"GI 600x200x300x7x15x20", L"T 229x191x34", L"L 150x150x10"}) {
        Case given;
        given.section = section;
        given.grade = L"S355";
        given.type = CString(section).Left(2) == CString(L"GI") ? SEC_WELDED : SEC_ROLLED;
        EndMoments(given, 6.0, -10e3, -10e3);
        Checked alone(given);
        alone.Check();
        EndMoments(given, 6.0, -10e3, -10e3, 600e3);
        Checked pulled(given);
        pulled.Check();
        EXPECT_EQ(Governing(alone, BucklingMode::LateralTorsional).resistance,
                  Governing(pulled, BucklingMode::LateralTorsional).resistance)
            << *CString(section).ToUtf8();
    }
}

// A box that is bent about y-y up to its end, where Mx is largest and My vanishes: at the end itself the long walls are webs, right
// beside it flanges of the minor axis, (303 - 14)/7 = 41.3 above 40ε. Whether My is nothing there or 50 N·m, a 400th of its
// largest value, may not decide about the plastic capacity of 207.5 kNm: 25/207.5 = 0.120.
TEST(ExactInteraction, TheClassBesideTheLargestMomentCounts)
{
    const auto majorRatio = [](double My) {
        Case given;
        given.section = L"BOX 303x227x7x7";
        given.type = SEC_WELDED;
        given.option = CSteelMemberBS5950::MORE_EXACT;
        given.force = [=](double) { return Vector(-500e3, (20e3 - My) / 6.0, 25e3 / 6.0); };
        given.moment = [=](double x) { return Vector(0, 25e3 * x / 6.0, 20e3 - (20e3 - My) * x / 6.0); };
        Checked c(given);
        c.Check();
        return Governing(c, BucklingMode::Major).flexural.major;
    };
    EXPECT_GT(majorRatio(0.0), 1.1 * 0.120);
    EXPECT_NEAR(majorRatio(0.0), majorRatio(50.0), 1e-3 * majorRatio(50.0));
}

// An end that nothing holds up, and that is no tip because its flange is held sideways, is taken as a support, and the check says so for
// either end; for the inner point of a member it does not.
TEST(LateralByHand, EndsWithoutVerticalSupportAreNamed)
{
    const auto assumes = [](const wchar_t* left, const wchar_t* middle, const wchar_t* right) {
        Case given;
        given.points = {{0.0, left}, {3.0, middle}, {6.0, right}};
        EndMoments(given, 6.0, -50e3, -50e3);
        Checked c(given);
        c.Check();
        return c.Assumes(L"vertical support");
    };
    const wchar_t* held = L"F12L TF";
    EXPECT_FALSE(assumes(L"Pinned", L"Free", L"Pinned"));
    EXPECT_TRUE(assumes(held, L"Free", L"Pinned"));
    EXPECT_TRUE(assumes(L"Pinned", L"Free", held));
    EXPECT_FALSE(assumes(L"Pinned", held, L"Pinned"));
}
