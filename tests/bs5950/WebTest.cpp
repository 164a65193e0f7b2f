// Webs and walls: shear buckling, least thickness, bearing and buckling under concentrated loads, high shear.

#include <gtest/gtest.h>

#include "Members.h"

using namespace BS5950Test;

// 4.4.5 holds for every plate in shear. Welded BOX 900x900x8x8 S275: d/t = b/T = 884/8 = 110.5 > 62, qe = (1000/110.5)² = 81.9,
// λw = (165/81.9)^0.5 = 1.419, qw = 0.9 · 165/1.419 = 104.6 N/mm², Vw = 2 · 884 · 8 · 0.1046 = 1480 kN.
TEST(ShearBuckling, OfTheWallsAcrossABox)
{
    const SectionProperties s = PropertiesOf(L"BOX 900x900x8x8", SEC_WELDED);
    const Material m = SteelOf(L"S275", s);
    EXPECT_TRUE(NeedsShearBuckling(s, m, Axis::X));
    EXPECT_TRUE(NeedsShearBuckling(s, m, Axis::Y));
    EXPECT_NEAR(ShearBucklingResistance(s, m, Axis::X) / 1e3, 1479.8, 0.1);
    EXPECT_NEAR(ShearBucklingResistance(s, m, Axis::Y) / 1e3, 1479.8, 0.1);

    const SectionProperties flat = PropertiesOf(L"BOX 400x900x12x8", SEC_WELDED);
    EXPECT_TRUE(NeedsShearBuckling(flat, m, Axis::X)) << "876/8 = 109.5";
    EXPECT_FALSE(NeedsShearBuckling(flat, m, Axis::Y)) << "384/12 = 32";
    for (const wchar_t* section : {L"I 1500x300x6x20", L"C 900x100x6x12", L"TUBE 900x6", L"TEE 500x300x6x12"})
        EXPECT_FALSE(NeedsShearBuckling(PropertiesOf(section, SEC_WELDED), m, Axis::X)) << *CString(section).ToUtf8();
}

// The same box, 0.2 m long, under 1500 kN across or along: 1500/1479.8 = 1.014 either way.
TEST(ShearBuckling, FailsABoxWhicheverWayItLies)
{
    for (const bool across : {true, false}) {
        Case given;
        given.section = L"BOX 900x900x8x8";
        given.type = SEC_WELDED;
        given.points = {{0.0, L"Pinned"}, {0.2, L"Pinned"}};
        given.force = [=](double) { return across ? Vector(0, -1500e3, 0) : Vector(0, 0, 1500e3); };
        given.moment = [=](double x) {
            const double M = -150e3 + 1500e3 * x;
            return across ? Vector(0, 0, M) : Vector(0, M, 0);
        };
        Checked c(given);
        EXPECT_FALSE(c.Check()) << across;
        EXPECT_NEAR(c.Entry(Rule::ShearBuckling).utilisation, 1.0137, 0.0005) << across;
        EXPECT_NEAR(c.Entry(Rule::ShearBuckling).resistance / 1e3, 1479.8, 0.1) << across;
        // The walls that are its flanges are slender (110.5), so that 4.4.4.2 b has no moment capacity beside this shear.
        bool isReported = false;
        for (const LedgerEntry& e : c.member.Checks().Entries())
            isReported = isReported || (e.rule == (across ? Rule::MomentMinor : Rule::MomentMajor) &&
                                        e.status == CheckStatus::NotEvaluated);
        EXPECT_TRUE(isReported) << across;
    }
}

// I 784x349x4x12 S355, welded, ε = 0.880: d/t = 190, Vw = 210 kN, the outstands of 172.5/12 = 14.4 are slender. A uniform load of 53.3 kN/m
// on 6 m gives 160 kN at the supports, above 0.6 Vw = 126 kN: 4.4.4.2 b asks for flanges that are not slender wherever the shear is that
// high, although the moment vanishes at the supports.
TEST(ThinWebs, BesideSlenderFlangesHaveNoRuleUnderHighShear)
{
    Case given;
    given.section = L"I 784x349x4x12";
    given.grade = L"S355";
    given.type = SEC_WELDED;
    Uniform(given, 6.0, 160e3 / 3.0);
    Checked c(given);
    EXPECT_FALSE(c.Check());
    EXPECT_NEAR(c.Entry(Rule::ShearBuckling).resistance / 1e3, 210.0, 1.0);
    const LedgerEntry* found = nullptr;
    for (const LedgerEntry& e : c.member.Checks().Entries())
        if (e.rule == Rule::MomentMajor && e.status == CheckStatus::NotEvaluated) found = &e;
    ASSERT_NE(found, nullptr);
    EXPECT_NE(std::wstring(found->clause).find(L"4.4.4.2"), std::wstring::npos);
    Uniform(given, 6.0, 100e3 / 3.0); // below 0.6 Vw
    Checked low(given);
    low.Check();
    for (const LedgerEntry& e : low.member.Checks().Entries())
        EXPECT_FALSE(e.rule == Rule::MomentMajor && e.status == CheckStatus::NotEvaluated);
}

// I 1500x400x6x20 S355: d/t = 243.3, qe = 16.9, λw = 3.50, qw = 53.2, Vw = 466 kN. With 400 kN, above 0.6 Vw, the flanges alone carry the
// moment: 3000/4084.8 = 0.734; the web's own class (3.6.5: 1080 kNm) does not matter then.
TEST(ThinWebs, ReachTheCheck)
{
    Case given;
    given.section = L"I 1500x400x6x20";
    given.grade = L"S355";
    given.type = SEC_WELDED;
    given.points = {{0.0, L"Pinned"}, {0.2, L"Pinned"}};
    given.force = [](double) { return Vector(0, 0, 400e3); };
    given.moment = [](double x) { return Vector(0, -3000e3 + 400e3 * x, 0); };
    Checked c(given);
    c.Check();
    EXPECT_NEAR(c.Entry(Rule::ShearBuckling).resistance / 1e3, 466.0, 1.0);
    EXPECT_NEAR(c.Entry(Rule::MomentMajor).resistance / 1e3, 4084.8, 0.1);
    EXPECT_NEAR(c.Entry(Rule::MomentMajor).utilisation, 0.7344, 0.0005);
}

// H.1 with d/t = 110.5 and py = 275: a/d = 0.5: k = 0.75 + 4 = 4.75, qe = 389.0, λw = 0.651, qw = pv = 165. a/d = 1: k = 1.75, qe =
// 143.3, λw = 1.073, qw = (13.48 - 5.6 · 1.073)/9 · 165 = 137.0. a/d = 1.5: k = 1.3333, qe = 109.2, λw = 1.229, qw = 120.9.
TEST(ShearBuckling, OfWebsWithTransverseStiffeners)
{
    EXPECT_NEAR(ShearBucklingStrength(110.5, 275e6, 0.5) / 1e6, 165.0, 0.01);
    EXPECT_NEAR(ShearBucklingStrength(110.5, 275e6, 1.0) / 1e6, 136.98, 0.01);
    EXPECT_NEAR(ShearBucklingStrength(110.5, 275e6, 1.5) / 1e6, 120.93, 0.01);
    EXPECT_NEAR(ShearBucklingStrength(110.5, 275e6) / 1e6, 104.62, 0.01);
    double before = ShearBucklingStrength(110.5, 275e6, 0.2);
    for (double ratio = 0.2; ratio < 20.0; ratio += 0.01) { // no step at a = d
        const double strength = ShearBucklingStrength(110.5, 275e6, ratio);
        EXPECT_LE(strength, before + 1e-6);
        EXPECT_GT(strength, before - 2e6);
        before = strength;
    }
    // I 1200x300x10x20: d = 1160, stiffeners 1.74 m apart: 1160/10 = 116, qe = 1.3333 (1000/116)² = 99.1, λw = (159/99.1)^0.5 =
    // 1.267 (py 265 for 20 mm), qw = 0.9 · 159/1.267 = 113.0, Vw = 1160 · 10 · 0.1130 = 1310 kN.
    const SectionProperties s = PropertiesOf(L"I 1200x300x10x20", SEC_WELDED);
    EXPECT_NEAR(ShearBucklingResistance(s, SteelOf(L"S275", s), Axis::Y, 1.74) / 1e3, 1310.5, 1.0);
}

// 4.4.3: I 1500x300x4x20 S355, d = 1460, py = 345 for 20 mm: 1460/250 = 5.84 mm by both rules; 4 mm are too few. With 5 mm of
// S460 (py = 440): 1460/250 · 440/345 = 7.45 mm.
TEST(WebThickness, HasAMinimum)
{
    const SectionProperties thin = PropertiesOf(L"I 1500x300x4x20", SEC_WELDED);
    const MinimumWebThickness t = WebThicknessLimits(thin, SteelOf(L"S355", thin), Axis::Y);
    EXPECT_NEAR(t.serviceability * 1e3, 5.84, 1e-9);
    EXPECT_NEAR(t.flangeBuckling * 1e3, 5.84, 1e-9);
    EXPECT_FALSE(t.IsMet());
    const MinimumWebThickness high = WebThicknessLimits(thin, SteelOf(L"S460", thin), Axis::Y);
    EXPECT_NEAR(high.Required() * 1e3, 7.448, 0.001);

    // Stiffeners 0.73 m = d/2 apart: d/250 · 0.5^0.5 = 4.130 mm, d/250 (345/455)^0.5 = 5.085 mm; 2 m = 1.37d: 5.84 and 5.085 mm.
    const MinimumWebThickness close = WebThicknessLimits(thin, SteelOf(L"S355", thin), Axis::Y, 0.73);
    EXPECT_NEAR(close.serviceability * 1e3, 4.130, 0.001);
    EXPECT_NEAR(close.flangeBuckling * 1e3, 5.085, 0.001);
    const MinimumWebThickness wide = WebThicknessLimits(thin, SteelOf(L"S355", thin), Axis::Y, 2.0);
    EXPECT_NEAR(wide.serviceability * 1e3, 5.840, 0.001);
    EXPECT_NEAR(wide.flangeBuckling * 1e3, 5.085, 0.001);

    const SectionProperties rolled = PropertiesOf(L"UB 914x305x201");
    EXPECT_TRUE(WebThicknessLimits(rolled, SteelOf(L"S355", rolled), Axis::Y).IsMet());
    const SectionProperties exact = PropertiesOf(L"I 1290x300x5x20", SEC_WELDED); // d = 1250 mm = 250 t
    EXPECT_TRUE(WebThicknessLimits(exact, SteelOf(L"S275", exact), Axis::Y).IsMet());
    const SectionProperties box = PropertiesOf(L"BOX 500x1616x8x6", SEC_WELDED);
    EXPECT_TRUE(WebThicknessLimits(box, SteelOf(L"S275", box), Axis::Y).IsMet()) << "488/8";
    EXPECT_FALSE(WebThicknessLimits(box, SteelOf(L"S275", box), Axis::X).IsMet()) << "1600/6 = 266.7";
    const SectionProperties tee = PropertiesOf(L"T 191x229x34");
    EXPECT_EQ(WebThicknessLimits(tee, SteelOf(L"S275", tee), Axis::Y).Required(), 0.0);
    EXPECT_TRUE(WebThicknessLimits(tee, SteelOf(L"S275", tee), Axis::Y).IsMet());
}

// 4.5.2.1, 4.5.3.1: UB 457x191x67 S275 (t 8.5, T 12.7, r 10.2, d 407.6), b1 = 75 mm: k = 22.9. Away from the ends n = 5: Pbw =
// (75 + 114.5) · 8.5 · 0.275 = 443.0 kN, Px = 25 · 8.5/(189.5 · 407.6)^0.5 · 443.0 = 338.7 kN. Bearing flush with the end: n = 2, Pbw
// = 120.8 · 8.5 · 0.275 = 282.4 kN, Px = 270.4 (37.5 + 285.3)/570.6 = 153.0 kN. 20 mm from it: n = 2 + 0.6 · 20/22.9 = 2.524, Pbw =
// 132.8 · 8.5 · 0.275 = 310.4 kN, Px = 283.5 (57.5 + 285.3)/570.6 = 170.3 kN.
TEST(WebBearing, OfARolledBeam)
{
    const SectionProperties s = PropertiesOf(L"UB 457x191x67");
    const Material m = SteelOf(L"S275", s);
    WebLoad load;
    load.stiffBearing = 0.075;
    EXPECT_NEAR(WebBearingCapacity(s, m, load) / 1e3, 442.96, 0.05);
    EXPECT_NEAR(WebBucklingResistance(s, m, load) / 1e3, 338.69, 0.05);
    load.bearingToEnd = 0.0;
    load.loadToEnd = 0.0375;
    EXPECT_NEAR(WebBearingCapacity(s, m, load) / 1e3, 282.37, 0.05);
    EXPECT_NEAR(WebBucklingResistance(s, m, load) / 1e3, 152.98, 0.05);
    load.bearingToEnd = 0.020;
    load.loadToEnd = 0.0575;
    EXPECT_NEAR(WebBearingCapacity(s, m, load) / 1e3, 310.42, 0.05);
    EXPECT_NEAR(WebBucklingResistance(s, m, load) / 1e3, 170.34, 0.05);
    // A flange that is not held: LE = d gives 0.7 of it.
    load.effectiveLength = 0.4076;
    EXPECT_NEAR(WebBucklingResistance(s, m, load) / 1e3, 0.7 * 170.34, 0.05);
    load.bearingToEnd = 0.5; // 2 + 0.6 · 500/22.9 lies beyond 5
    EXPECT_NEAR(WebBearingCapacity(s, m, load) / 1e3, 442.96, 0.05);
}

// Welded: k = T of the loaded flange. GI 600x300x200x12x20x15 S275 (py 265), b1 = 100: on flange 1 (100 + 100) · 12 · 0.265 = 636
// kN, on flange 2 (100 + 75) · 12 · 0.265 = 556.5 kN; d = 565, ε = 1.0187: Px = 25 · 1.0187 · 12/(200 · 565)^0.5 · 636 = 578.2 kN.
TEST(WebBearing, OfAWeldedGirder)
{
    const SectionProperties s = PropertiesOf(L"GI 600x300x200x12x20x15", SEC_WELDED);
    const Material m = SteelOf(L"S275", s);
    WebLoad load;
    load.stiffBearing = 0.1;
    EXPECT_NEAR(WebBearingCapacity(s, m, load) / 1e3, 636.0, 0.01);
    EXPECT_NEAR(WebBucklingResistance(s, m, load) / 1e3, 578.2, 0.1);
    load.onFlange1 = false;
    EXPECT_NEAR(WebBearingCapacity(s, m, load) / 1e3, 556.5, 0.01);
    const SectionProperties box = PropertiesOf(L"BOX 300x200x8x12", SEC_WELDED);
    EXPECT_EQ(WebBearingCapacity(box, m, load), 0.0);
    EXPECT_EQ(WebBucklingResistance(box, m, load), 0.0);
}

// 4.4.4.2 b: I 1500x400x6x20 S355 (py 345): flanges alone 400 · 20 · 1480 · 0.345 = 4085 kNm, whatever the class of the web: by 3.6.5
// its d/t = 243.3 beyond 120ε = 107.1 leaves 0.194 py and 1080 kNm. Slender flanges (b/T = 197/10 beyond 13ε = 11.6) may not.
TEST(ThinWebs, LeaveTheMomentToTheFlanges)
{
    const SectionProperties s = PropertiesOf(L"I 1500x400x6x20", SEC_WELDED);
    const Material m = SteelOf(L"S355", s);
    Actions bending;
    bending.Mx = -1e3;
    const Classification c = Classify(s, m, bending);
    EXPECT_EQ(c.cls, 4);
    EXPECT_TRUE(FlangesAloneMayCarryMoment(c, Axis::X));
    EXPECT_NEAR(FlangesOnlyMomentCapacity(s, m, Axis::X) / 1e3, 4084.8, 0.1);
    EXPECT_LT(MomentCapacity(s, m, c, {}, Axis::X, 0.0), FlangesOnlyMomentCapacity(s, m, Axis::X));
    EXPECT_EQ(FlangesOnlyMomentCapacity(s, m, Axis::Y), 0.0);

    const SectionProperties slender = PropertiesOf(L"I 1500x400x6x10", SEC_WELDED);
    EXPECT_FALSE(FlangesAloneMayCarryMoment(Classify(slender, SteelOf(L"S355", slender), bending), Axis::X));

    // BOX 600x400x8x20: about y-y the walls of 8 mm are the flanges, 600 · 8 · 392 · 0.345 = 649.2 kNm.
    const SectionProperties box = PropertiesOf(L"BOX 600x400x8x20", SEC_WELDED);
    EXPECT_NEAR(FlangesOnlyMomentCapacity(box, SteelOf(L"S355", box), Axis::Y) / 1e3, 649.2, 0.1);
}

// CHS 168.3x10 in S275: A = 4973 mm², Pv = 0.6*275*0.6*4973 = 492.4 kN in any direction. 480.8 kN along both axes are 680 kN, 1.381 of it.
TEST(TubeShear, IsTheResultantOfBothDirections)
{
    const double V = 480.8e3;
    Case given;
    given.section = L"CHS 168.3x10";
    given.points = {{0.0, L"Pinned"}, {0.004, L"Pinned"}};
    given.force = [V](double) { return Vector(0, -V, V); };
    given.moment = [V](double x) { return Vector(0, V * (x - 0.002), V * (x - 0.002)); };
    Checked c(given);
    EXPECT_FALSE(c.Check());
    for (const Rule rule : {Rule::ShearMajor, Rule::ShearMinor}) {
        EXPECT_EQ(c.Entry(rule).status, CheckStatus::Failed);
        EXPECT_NEAR(c.Entry(rule).resistance, 492.4e3, 0.2e3);
        EXPECT_NEAR(c.Entry(rule).utilisation, 1.381, 0.001);
    }
}

// The same tube with 289 kN along both axes, 0.83 Pv: ρ = (2*0.83 - 1)² = 0.436 of S = 250.9 cm³ is lost, Mc = 0.564*0.275*250.9 = 38.9 kNm about either
// axis. With one component alone, 0.587 Pv, nothing is: 1.2 Z py = 1.2*185.9*0.275 = 61.3 kNm.
TEST(TubeShear, ReducesTheMomentByTheResultant)
{
    const double V = 289e3;
    const auto Mcx = [V](double across) {
        Case given;
        given.section = L"CHS 168.3x10";
        given.points = {{0.0, L"Pinned"}, {0.1, L"Pinned"}};
        given.force = [V, across](double) { return Vector(0, -across * V, V); };
        given.moment = [V, across](double x) { return Vector(0, V * (x - 0.05), across * V * (x - 0.05)); };
        Checked c(given);
        c.Check();
        return c.member.Positions().front().Mcx;
    };
    EXPECT_NEAR(Mcx(1.0) / 1e3, 38.9, 0.2);
    EXPECT_NEAR(Mcx(0.0) / 1e3, 61.3, 0.2);
}

// ANGLE 150x100x12 in S275, Pv = 0.6*275*0.9*150*12 = 267.3 kN along the vertical leg: 240 kN leave 1 - (2*0.898 - 1)² = 0.367 of Wu and Wv.
TEST(AngleShear, InEitherLegReducesBothPrincipalMoments)
{
    const auto at = [](double V) {
        Case given;
        given.section = L"ANGLE 150x100x12";
        given.points = {{0.0, L"Pinned"}, {0.05, L"Pinned"}};
        given.force = [V](double) { return Vector(0, 0, V); };
        given.moment = [V](double x) { return Vector(0, 1e3 + V * (x - 0.025), 500.0); };
        Checked c(given);
        c.Check();
        return c.member.Positions().front();
    };
    const PositionResult sheared = at(240e3);
    const PositionResult whole = at(1e3);
    EXPECT_NEAR(sheared.Pvy, 267.3e3, 0.1e3);
    EXPECT_NEAR(sheared.Mcx / whole.Mcx, 0.367, 0.001);
    EXPECT_NEAR(sheared.Mcy / whole.Mcy, 0.367, 0.001);
}

// 4.2.5.3 for tees: Sv = S less that of the bare flange, BT²/4. T 343x254x63 S275 (py 265): Zx = 358, Sx = 643 cm³ (published), bare
// flange 253 · 16.2²/4 = 16.6 cm³, Sv = 626.4 cm³. Pv = 0.6 · 0.265 · 11.7 · 338.9 = 630.5 kN; Fv = 415.1 kN: ρ = 0.100. Hogging, class 4:
// pyr = 106.2: Mc = 0.1062(358 - 0.1 · 626.4/1.5) = 33.6 kNm. Flange compressed (class 1): S - 0.1 Sv = 580 cm³, beyond 1.5 Z = 537
// cm³: 0.265 · 537 = 142.3 kNm; at ρ = 0.4, S - 0.4 Sv = 392.4 cm³ gives 104.0 kNm.
TEST(HighShear, TakesTheStemFromATee)
{
    const SectionProperties s = PropertiesOf(L"T 343x254x63");
    const Material m = SteelOf(L"S275", s);
    const double Pv = ShearCapacity(s, m, Axis::Y);
    EXPECT_NEAR(Pv / 1e3, 630.5, 0.1);
    const double tenth = 0.5 * (1.0 + std::sqrt(0.1)) * Pv;
    EXPECT_NEAR(tenth / 1e3, 415.0, 0.3);
    SectionDesign design;
    design.plasElas = 1.5;
    Actions hogging;
    hogging.Mx = 1e3;
    EXPECT_NEAR(MomentCapacity(s, m, Classify(s, m, hogging), design, Axis::X, tenth) / 1e3, 33.6, 0.1);
    Actions sagging;
    sagging.Mx = -1e3;
    const Classification c = Classify(s, m, sagging);
    EXPECT_NEAR(MomentCapacity(s, m, c, design, Axis::X, tenth) / 1e3, 142.3, 0.3);
    const double more = 0.5 * (1.0 + std::sqrt(0.4)) * Pv;
    EXPECT_NEAR(MomentCapacity(s, m, c, design, Axis::X, more) / 1e3, 104.0, 0.3);
    // All of the shear capacity used: the bare flange is left.
    EXPECT_NEAR(MomentCapacity(s, m, c, design, Axis::X, Pv) / 1e3, 0.265 * 16.6, 0.02);
}

namespace {

DesignOptions Bearing(double b1)
{
    DesignOptions options;
    options.stiffBearing = b1;
    return options;
}

} // namespace

// The same beam on 75 mm at its ends, 6 m under 40 kN/m and 150 kN at mid-span, where its top flange is held: reactions 195 kN, Pbw
// = 282.4 kN (0.691), Px = 153.0 kN (1.275); at mid-span 150/443.0 = 0.339 and 150/338.7 = 0.443.
TEST(ConcentratedLoads, AreCheckedWhereAStiffBearingLengthIsGiven)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {3.0, L"Top flange lateral"}, {6.0, L"Pinned"}};
    given.along = L"Top flange lateral";
    given.force = [](double x) { return Vector(0, 0, 40e3 * (x - 3.0) + (x < 3.0 ? -75e3 : 75e3)); };
    given.moment = [](double x) { return Vector(0, -20e3 * x * (6.0 - x) - 75e3 * std::min(x, 6.0 - x), 0); };
    Checked c(given);
    c.member.SetOptions(Bearing(0.075));
    EXPECT_FALSE(c.Check());
    const LedgerEntry& bearing = c.Entry(Rule::WebBearing);
    EXPECT_NEAR(bearing.resistance, 282.4e3, 0.1e3);
    EXPECT_NEAR(bearing.utilisation, 195.0 / 282.4, 0.001);
    EXPECT_EQ(bearing.status, CheckStatus::Passed);
    const LedgerEntry& buckling = c.Entry(Rule::WebBuckling);
    EXPECT_NEAR(buckling.resistance, 153.0e3, 0.1e3);
    EXPECT_NEAR(buckling.utilisation, 1.275, 0.002);
    EXPECT_EQ(buckling.status, CheckStatus::Failed);
    EXPECT_EQ(c.member.Status(), Design::Status::Failed);
    EXPECT_EQ(c.result.UtilOverAll(), buckling.utilisation);
    ASSERT_EQ(c.member.WebLoads().size(), 3u);
    const WebLoadResult& load = c.member.WebLoads()[1];
    EXPECT_TRUE(load.onFlange1);
    EXPECT_TRUE(load.held);
    EXPECT_NEAR(load.force, 150e3, 1.0);
    EXPECT_NEAR(load.Pbw, 443.0e3, 0.1e3);
    EXPECT_NEAR(load.Px, 338.7e3, 0.1e3);
    EXPECT_FALSE(c.member.WebLoads()[0].onFlange1) << "a reaction presses upwards";
    EXPECT_TRUE(c.Assumes(L"stiff bearing"));
    EXPECT_NE(c.Verbose().find("cl. 4.5.3.1"), std::string::npos);
}

// 600 kN over 0.3 m of a beam on 50 mm, longer than b1 + 5k = 50 + 5*22.9 and shorter than d = 407.6 mm: a load on a bearing of its length.
// Pbw = (300 + 114.5)*8.5*275 = 969 kN, Px = 25*8.5/(414.5*407.6)^0.5*969 = 501 kN.
TEST(ConcentratedLoads, OfASubSpanShorterThanTheWebBearOnItsLength)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {1.35, L"Pinned"}, {1.65, L"Pinned"}, {3.0, L"Pinned"}};
    given.force = [](double x) { return Vector(0, 0, std::clamp((x - 1.5) * 2e6, -300e3, 300e3)); };
    given.moment = [](double x) {
        const double end = std::min(x, 3.0 - x);
        const double into = std::max(0.0, end - 1.35);
        return Vector(0, 200e3 - 300e3 * end + 1e6 * into * into, 0);
    };
    Checked c(given);
    c.member.SetOptions(Bearing(0.05));
    EXPECT_FALSE(c.Check());
    const auto& loads = c.member.WebLoads();
    const auto patch = std::find_if(loads.begin(), loads.end(), [](const WebLoadResult& w) { return w.end > w.x; });
    ASSERT_NE(patch, loads.end());
    EXPECT_EQ(patch->x, 1.35);
    EXPECT_EQ(patch->end, 1.65);
    EXPECT_NEAR(patch->force, 600e3, 1.0);
    EXPECT_NEAR(patch->Pbw, 969e3, 1e3);
    EXPECT_NEAR(patch->Px, 501e3, 1e3);
    EXPECT_NE(c.Verbose().find("from 1.35"), std::string::npos);
}

// Without a length the rule is isReported and does not block; with one it blocks where the flange under the load is free to move.
TEST(ConcentratedLoads, AreToldWhereTheInputDoesNotSayEnough)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {1.0, L"Free"}, {2.0, L"Pinned"}};
    given.force = [](double x) { return Vector(0, 0, x < 1.0 ? -20e3 : 20e3); };
    given.moment = [](double x) { return Vector(0, -20e3 * std::min(x, 2.0 - x), 0); };
    Checked silent(given);
    EXPECT_TRUE(silent.Check());
    EXPECT_EQ(silent.Entry(Rule::WebBearing).status, CheckStatus::OutOfScope);
    EXPECT_EQ(silent.Entry(Rule::WebBuckling).status, CheckStatus::OutOfScope);
    EXPECT_TRUE(silent.member.WebLoads().empty());

    Checked free(given);
    free.member.SetOptions(Bearing(0.1));
    EXPECT_FALSE(free.Check());
    EXPECT_EQ(free.member.Status(), Design::Status::NotChecked);
    EXPECT_TRUE(free.result.TestFlags(CMemberResult::NOT_CHECKED));
    EXPECT_EQ(free.Entry(Rule::WebBearing).status, CheckStatus::Passed);

    given.section = L"RHS 200x100x6.3";
    Checked hollow(given);
    hollow.member.SetOptions(Bearing(0.1));
    EXPECT_FALSE(hollow.Check());
    EXPECT_EQ(hollow.Entry(Rule::WebBearing).status, CheckStatus::NotEvaluated);
    EXPECT_NE(hollow.result.GetFlags() & CMemberResult::NOT_CHECKED, 0) << "the record says so too";

    EndMoments(given, 2.0, 10e3, 10e3);
    given.section = L"UB 457x191x67";
    Checked unloaded(given);
    unloaded.member.SetOptions(Bearing(0.1));
    EXPECT_TRUE(unloaded.Check());
    EXPECT_EQ(unloaded.Entry(Rule::WebBearing).status, CheckStatus::NotApplicable);
}

// 4.4.3: I 1500x300x4x20 S355 asks for 5.84 mm: 5.84/4 = 1.46, whatever its moment.
TEST(WebThickness, BelowTheLeastFails)
{
    Case given;
    given.section = L"I 1500x300x4x20";
    given.grade = L"S355";
    given.type = SEC_WELDED;
    given.points = {{0.0, L"Pinned"}, {4.0, L"Pinned"}};
    EndMoments(given, 4.0, -300e3, -300e3);
    Checked c(given);
    EXPECT_FALSE(c.Check());
    EXPECT_EQ(c.member.Status(), Design::Status::Failed);
    EXPECT_EQ(c.Entry(Rule::WebThickness).status, CheckStatus::Failed);
    EXPECT_NEAR(c.Entry(Rule::WebThickness).utilisation, 1.46, 0.001);
    EXPECT_EQ(c.result.UtilOverAll(), c.Entry(Rule::WebThickness).utilisation);
    given.section = L"I 1500x300x6x20";
    Checked thick(given);
    thick.Check();
    EXPECT_EQ(thick.Entry(Rule::WebThickness).status, CheckStatus::Passed);
    EXPECT_EQ(thick.Entry(Rule::WebThickness).utilisation, 0.0);
    given.section = L"L 150x75x10";
    Checked angle(given);
    angle.Check();
    EXPECT_EQ(angle.Entry(Rule::WebThickness).status, CheckStatus::NotApplicable);
}

// H.1, 4.4.5.5: I 1200x300x10x20 S275, d = 1160, py 265, pv = 159: without stiffeners d/t = 116: qe = 74.3, λw = 1.463, qw = 97.8, Vcr = (qw/0.9)²/pv
// = qe: 74.3 * 11600 = 862 kN. With stiffeners 1.74 m apart Vw = 1310 kN, qw = 113.0 = 0.711 pv: Vcr = (113.0/0.9)²/159 = 99.1: 1150 kN.
TEST(ThinWebs, TellWhereTheirEndsMustAnchorATensionField)
{
    Case given;
    given.section = L"I 1200x300x10x20";
    given.type = SEC_WELDED;
    given.along = L"Pinned";
    given.points = {{0.0, L"Pinned"}, {2.0, L"Pinned"}};
    EndMoments(given, 2.0, -850e3, 850e3);
    Checked within(given);
    within.Check();
    EXPECT_EQ(within.Entry(Rule::EndAnchorage).status, CheckStatus::NotApplicable);
    EXPECT_NEAR(within.Entry(Rule::EndAnchorage).resistance, 862e3, 2e3);
    EXPECT_EQ(within.Entry(Rule::Stiffeners).status, CheckStatus::NotApplicable);
    EndMoments(given, 2.0, -880e3, 880e3);
    Checked beyond(given);
    beyond.Check();
    EXPECT_EQ(beyond.Entry(Rule::EndAnchorage).status, CheckStatus::OutOfScope);
    EXPECT_FALSE(beyond.member.Checks().IsOpen()) << "isReported, not blocking";

    DesignOptions options;
    options.stiffenerSpacing = 1.74;
    Checked stiffened(given);
    stiffened.member.SetOptions(options);
    stiffened.Check();
    EXPECT_NEAR(stiffened.Entry(Rule::ShearBuckling).resistance, 1310e3, 2e3);
    EXPECT_EQ(stiffened.Entry(Rule::EndAnchorage).status, CheckStatus::NotApplicable);
    EXPECT_NEAR(stiffened.Entry(Rule::EndAnchorage).resistance, 1150e3, 3e3);
    EXPECT_EQ(stiffened.Entry(Rule::Stiffeners).status, CheckStatus::OutOfScope);
    EXPECT_TRUE(stiffened.Assumes(L"transverse stiffeners of the web"));
}

// The girder of ThinWebs.ReachTheCheck with an axial force of 1000 kN: the flanges that carry the moment alone carry the force too:
// 1000/(2 * 400 * 20 * 0.345 = 5520) + 3000/4084.8 = 0.181 + 0.734 = 0.9156.
TEST(ThinWebs, LeaveTheAxialForceToTheFlangesToo)
{
    Case given;
    given.section = L"I 1500x400x6x20";
    given.grade = L"S355";
    given.type = SEC_WELDED;
    given.points = {{0.0, L"Pinned"}, {0.2, L"Pinned"}};
    given.force = [](double) { return Vector(1000e3, 0, 400e3); };
    given.moment = [](double x) { return Vector(0, -3000e3 + 400e3 * x, 0); };
    Checked c(given);
    c.Check();
    EXPECT_NEAR(c.member.Positions().front().combined, 0.9156, 0.001);
    EXPECT_NE(c.Verbose().find("F/Pf"), std::string::npos);
}

// UB 457x152x52 S275, b1 = 100 mm: k = 10.9 + 10.2 = 21.1, Pbw = (100 + 5 · 21.1) 7.6 · 0.275 = 429.5 kN. 440 kN within 50 mm press on it as one
// load does, whether they are one point load, two, or spread: 440/429.5 = 1.024. Over 300 mm they are spread.
TEST(WebBearing, OfLoadsThatLieCloseTogether)
{
    const auto utilisation = [](double a, double b, bool points) { // from a to b, along it or half at each
        Case given;
        given.section = L"UB 457x152x52";
        given.along = L"Top flange lateral";
        given.points = {{0.0, L"Pinned"}, {a, L"Free"}, {b, L"Free"}, {6.0, L"Pinned"}};
        const double middle = points ? 0.0 : 440e3 / (b - a);
        given.force = [=](double x) {
            return Vector(0, 0, x < a ? -220e3 : x < b ? middle * (x - 0.5 * (a + b)) : 220e3);
        };
        given.moment = [=](double x) {
            const double inside = std::clamp(x - a, 0.0, b - a);
            const double spread = points ? 0.0 : -220e3 * inside + 0.5 * middle * inside * inside;
            return Vector(0, x <= b ? -220e3 * std::min(x, a) + spread : -220e3 * (6.0 - x), 0);
        };
        Checked c(given);
        DesignOptions options;
        options.stiffBearing = 0.1;
        c.member.SetOptions(options);
        c.Check();
        return c.Entry(Rule::WebBearing).utilisation;
    };
    EXPECT_NEAR(utilisation(2.975, 3.025, false), 1.024, 0.001);
    EXPECT_NEAR(utilisation(2.9995, 3.0005, false), 1.024, 0.001);
    EXPECT_NEAR(utilisation(2.975, 3.025, true), 1.024, 0.001);
    EXPECT_LT(utilisation(2.85, 3.15, false), 0.9); // the supports
}
