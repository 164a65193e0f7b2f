#include <gtest/gtest.h>

#include <algorithm>

#include "Members.h"

using namespace BS5950Test;

// 4.6.1 with 3.4.3, UB 457x191x67 S275, A = 85.5 cm²: net/gross 0.8 gives Ae = 1.2 * 0.8 A = 0.96 A, Pt = 2257 kN; 0.9
// gives the gross section.
TEST(Tension, TakesTheEffectiveNetArea)
{
    const SectionProperties s = PropertiesOf(L"UB 457x191x67");
    const Material m = SteelOf(L"S275", s);
    EXPECT_NEAR(TensionCapacity(s, m, 0.8), 2257e3, 3e3);
    EXPECT_DOUBLE_EQ(TensionCapacity(s, m, 0.9), s.A * 275e6);
}

// 4.6.3.1, L 100x100x10 S275: a1 is the leg at its full width, 100 x 10 = 1000 mm², A = 1915 mm², a2 = A - a1 = 915 mm²:
// Pt = 0.275(1915 - 457.5) = 400.8 kN. L 200x150x15 S355 by its shorter leg: A = 5050 mm², a2 = 5050 - 2250 = 2800 mm²:
// Pt = 0.355(5050 - 1400) = 1296 kN.
TEST(Tension, OfAnAngleThroughOneLegLosesHalfTheOther)
{
    const SectionProperties s = PropertiesOf(L"L 100x100x10");
    EXPECT_NEAR(EccentricTensionCapacity(s, SteelOf(L"S275", s), 1.0), 400.8e3, 0.2e3);
    const SectionProperties unequal = PropertiesOf(L"L 200x150x15");
    EXPECT_NEAR(EccentricTensionCapacity(unequal, SteelOf(L"S355", unequal), 1.0), 1296e3, 1e3);
}

// L 100x100x10 S275, 480 kN with its own weight of 147 N/m over 3 m (0.165 kNm): 480/400.8 = 1.198 by 4.6.3.1, whatever the moments. With
// the axial force alone over the gross section 480/526.6 = 0.9115, and with the moments by 4.8.2.2 0.945.
TEST(Tension, TheEccentricityOfAnAngleCountsBesideMoments)
{
    Case given;
    given.section = L"L 100x100x10";
    given.points = {{0.0, L"Pinned"}, {3.0, L"Pinned"}};
    Uniform(given, 3.0, 147.0, 480e3);
    Checked c(given);
    EXPECT_FALSE(c.Check());
    EXPECT_NEAR(c.result.UtilOverAll(), 1.198, 0.002);
    EXPECT_NEAR(c.Entry(Rule::EccentricConnection).utilisation, 1.198, 0.002);
    EXPECT_NEAR(c.Entry(Rule::EccentricConnection).resistance, 400.8e3, 0.2e3);
    EXPECT_NEAR(c.Entry(Rule::Tension).utilisation, 0.9115, 0.001);
    EXPECT_TRUE(c.Assumes(L"end connection of the tie"));

    DesignOptions options;
    options.momentsHoldEccentricity = true;
    Checked declared(given);
    declared.member.SetOptions(options);
    EXPECT_TRUE(declared.Check());
    EXPECT_NEAR(declared.Entry(Rule::CombinedTension).utilisation, 0.945, 0.002);
    EXPECT_EQ(declared.Entry(Rule::EccentricConnection).status, CheckStatus::NotApplicable);
    EXPECT_TRUE(declared.Assumes(L"end connection of the tie")) << "the option is named";
}

TEST(Tension, WithoutAnyAreaLeftFailsInsteadOfPassing)
{
    Case given;
    given.section = L"L 100x100x10";
    given.netGross = 0.1;
    EndMoments(given, 6.0, 0.0, 0.0, 10e3);
    Checked c(given);
    EXPECT_FALSE(c.Check());
    EXPECT_EQ(c.Entry(Rule::EccentricConnection).resistance, 0.0);
    EXPECT_EQ(c.result.UtilOverAll(), INFINITY);
}

struct ShearRow {
    const wchar_t* section;
    int type;
    double along, across; // shear areas, mm²
};

// 4.2.3 by hand: tD; td welded; AD/(D+B) and AB/(D+B); 2td welded box; 0.6A; 0.9 times the flanges across.
TEST(Shear, AreasByShape)
{
    const ShearRow rows[] = {
        {L"UB 457x191x67", SEC_ROLLED, 8.5 * 453.4, 0.9 * 2 * 189.9 * 12.7},
        {L"I 600x200x10x15", SEC_WELDED, 10 * 570.0, 0.9 * 2 * 200 * 15},
        {L"PFC 200x90x30", SEC_ROLLED, 7 * 200.0, 0.9 * 2 * 90 * 14},
        {L"BOX 300x200x8x12", SEC_WELDED, 2 * 8 * 276.0, 2 * 12 * 184.0},
        {L"L 150x75x10", SEC_ROLLED, 0.9 * 150 * 10, 0.9 * 75 * 10},
    };
    for (const ShearRow& row : rows) {
        const SectionProperties s = PropertiesOf(row.section, row.type);
        EXPECT_NEAR(s.Avy * 1e6, row.along, 1e-6 * row.along) << CString(row.section).ToUtf8()->c_str();
        EXPECT_NEAR(s.Avx * 1e6, row.across, 1e-6 * row.across) << CString(row.section).ToUtf8()->c_str();
    }
    const SectionProperties box = PropertiesOf(L"RHS 200x100x6.3");
    EXPECT_NEAR(box.Avy, box.A * 2.0 / 3.0, 1e-12);
    EXPECT_NEAR(box.Avx, box.A / 3.0, 1e-12);
    const SectionProperties tube = PropertiesOf(L"CHS 168.3x5");
    EXPECT_NEAR(tube.Avy, 0.6 * tube.A, 1e-12);
}

// 4.2.5.3, UB 457x191x67 S275: at Fv = 0.9 Pv, ρ = 0.8² = 0.64; Sv = D²t/4 = 436.8 cm³; S = 1471: Mc = 0.275(1471 -
// 279.6) = 327.6 kNm. At 0.6 Pv and below Mc = 404.5.
TEST(MomentCapacityRule, HighShearTakesOffTheShearAreasModulus)
{
    const SectionProperties s = PropertiesOf(L"UB 457x191x67");
    const Material m = SteelOf(L"S275", s);
    Actions a;
    a.Mx = -100e3;
    const Classification c = Classify(s, m, a);
    const double Pv = ShearCapacity(s, m, Axis::Y);
    EXPECT_NEAR(MomentCapacity(s, m, c, {}, Axis::X, 0.6 * Pv), 404.5e3, 0.5e3);
    EXPECT_NEAR(MomentCapacity(s, m, c, {}, Axis::X, 0.9 * Pv), 327.6e3, 0.5e3);
    EXPECT_NEAR(HighShearFactor(0.9 * Pv, Pv), 0.64, 1e-12);
    EXPECT_EQ(HighShearFactor(0.6 * Pv, Pv), 0.0);
    EXPECT_EQ(HighShearFactor(2.0 * Pv, Pv), 1.0);
}

// 4.2.5.3 with unequal flanges, welded 300 x 20 and 200 x 15 with a web of 565 x 12, S275 (py = 265): S = 6000 · 167.5 +
// 12 · 157.5²/2 + 12 · 407.5²/2 + 3000 · 415 = 3395 cm³. The flanges alone have their plastic neutral axis 5 mm inside the
// larger one: Sf = 3000 · 577.5 + 300 · 5²/2 + 300 · 15²/2 = 1770 cm³. Fv = 0.9 Pv: Mc = 0.265(3395.2 - 0.64 · 1625.2) =
// 624.1 kNm; Fv = Pv: 0.265 · 1770 = 469.1 kNm.
TEST(MomentCapacityRule, HighShearLeavesUnequalFlangesWhatTheyCarryInEquilibrium)
{
    const SectionProperties s = PropertiesOf(L"GI 600x300x200x12x20x15", SEC_WELDED);
    const Material m = SteelOf(L"S275", s);
    Actions a;
    a.Mx = -100e3;
    const Classification c = Classify(s, m, a);
    ASSERT_LE(c.cls, 2);
    EXPECT_NEAR(s.Svx * 1e9, 1625175.0, 1.0);
    const double Pv = ShearCapacity(s, m, Axis::Y);
    EXPECT_NEAR(MomentCapacity(s, m, c, {}, Axis::X, 0.9 * Pv), 624.1e3, 0.1e3);
    EXPECT_NEAR(MomentCapacity(s, m, c, {}, Axis::X, Pv), 469.05e3, 0.05e3);
}

// 4.2.5.1: about y-y of an I section S/Z is near 1.55, so that 1.2 py Z governs, or 1.5 py Z where that is allowed.
TEST(MomentCapacityRule, IsLimitedByTheElasticModulus)
{
    const SectionProperties s = PropertiesOf(L"UB 533x210x92");
    const Material m = SteelOf(L"S275", s);
    Actions a;
    a.My = 10e3;
    const Classification c = Classify(s, m, a);
    EXPECT_DOUBLE_EQ(MomentCapacity(s, m, c, {1.0, 1.2}, Axis::Y, 0.0), 1.2 * m.py * s.Zy);
    EXPECT_DOUBLE_EQ(MomentCapacity(s, m, c, {1.0, 1.5}, Axis::Y, 0.0), 1.5 * m.py * s.Zy);
    EXPECT_DOUBLE_EQ(MomentCapacity(s, m, c, {1.0, 2.0}, Axis::Y, 0.0), 1.5 * m.py * s.Zy);
}

// Annex H.1: three branches that meet at λw = 0.8 and 1.25. For S275, λw = (165/qe)^0.5 with qe = (1000/(d/t))².
TEST(ShearBuckling, StrengthIsContinuousAndFallsWithSlenderness)
{
    const auto slendernessFor = [](double lambdaW) { return lambdaW * 1000.0 / std::sqrt(165.0); };
    EXPECT_NEAR(ShearBucklingStrength(slendernessFor(0.8), 275e6) / 1e6, 165.0, 1e-6);
    EXPECT_NEAR(ShearBucklingStrength(slendernessFor(1.25), 275e6) / 1e6, 165.0 * 0.72, 1e-6);
    EXPECT_NEAR(ShearBucklingStrength(slendernessFor(1.2501), 275e6) / 1e6, 165.0 * 0.72, 0.05);
    // d/t = 150: qe = 44.4, λw = 1.927, qw = 0.9/1.927 * 165 = 77.1.
    EXPECT_NEAR(ShearBucklingStrength(150.0, 275e6) / 1e6, 77.1, 0.1);
    double before = 1e12;
    for (double r = 20.0; r < 300.0; r += 0.5) {
        const double q = ShearBucklingStrength(r, 355e6);
        EXPECT_LE(q, before);
        before = q;
    }
}

// 4.4.5: a welded girder 1200x10 web, d/t = 115 in S275 (T = 25: py = 265, ε = 1.0187): λw = (159)^0.5 * 115/1000 =
// 1.450, qw = 0.9/1.450 * 159 = 98.7 N/mm², Vw = 1150 * 10 * 98.7 = 1135 kN.
TEST(ShearBuckling, OfAWeldedGirderGovernsItsShear)
{
    Case given;
    given.section = L"I 1200x400x10x25";
    given.type = SEC_WELDED;
    given.points = {{0.0, L"Pinned"}, {5.0, L"Top flange lateral"}, {10.0, L"Pinned"}};
    given.along = L"Top flange lateral";
    Uniform(given, 10.0, 120e3);
    Checked c(given);
    c.Check();
    const LedgerEntry& e = c.Entry(Rule::ShearBuckling);
    EXPECT_NEAR(e.resistance, 1135e3, 2e3);
    EXPECT_NEAR(e.utilisation, 600.0 / 1135.0, 0.002);
    EXPECT_STREQ(e.clause, L"4.4.5");
}

// 4.4.4.2: the same girder with 800 kN, above 0.6 Vw = 681: the flanges alone, 265*400*25*1175 = 3114 kNm. At 600 kN the
// semi-compact section counts.
TEST(ShearBuckling, LeavesTheMomentToTheFlangesInHighShear)
{
    Case given;
    given.section = L"I 1200x400x10x25";
    given.type = SEC_WELDED;
    given.points = {{0.0, L"Pinned"}, {3.0, L"Pinned"}};
    EndMoments(given, 3.0, -1200e3, 1200e3);
    Checked high(given);
    high.Check();
    EXPECT_TRUE(high.member.Positions().front().flangesOnly);
    EXPECT_NEAR(high.Entry(Rule::MomentMajor).resistance, 3114e3, 1e3);
    EXPECT_NE(high.Verbose().find("cl. 4.4.4.2"), std::string::npos);
    EndMoments(given, 3.0, -900e3, 900e3);
    Checked low(given);
    low.Check();
    EXPECT_FALSE(low.member.Positions().front().flangesOnly);
    EXPECT_GT(low.Entry(Rule::MomentMajor).resistance, 3300e3);
}

// Annex I.2 against strips: the plastic moment about the axis that splits the section for the force, for sections
// made of plates alone.
TEST(ReducedModulus, AgreesWithAPlasticStressBlockInStrips)
{
    const auto strips = [](const SectionProperties& s, Axis axis, double n) {
        const int count = 200000;
        const double depth = axis == Axis::X ? s.D : s.B;
        const auto width = [&](double y) {
            if (axis == Axis::X) {
                const double webs = s.shape == Shape::RHS ? 2.0 * s.t : s.t;
                return y < s.T || y > s.D - s.T ? s.B : webs;
            }
            if (s.shape == Shape::RHS) return y < s.t || y > s.B - s.t ? s.D : 2.0 * s.T;
            return 2.0 * s.T + (std::abs(y - 0.5 * s.B) < 0.5 * s.t ? s.D - 2.0 * s.T : 0.0);
        };
        // The force is carried by a symmetric middle block; the rest gives the moment.
        double area = 0.0;
        std::vector<double> y(count), b(count);
        for (int i = 0; i < count; ++i) {
            y[static_cast<std::size_t>(i)] = (i + 0.5) * depth / count;
            b[static_cast<std::size_t>(i)] = width(y[static_cast<std::size_t>(i)]) * depth / count;
            area += b[static_cast<std::size_t>(i)];
        }
        double outer = 0.5 * (1.0 - n) * area;
        double modulus = 0.0;
        for (int i = 0; i < count && outer > 0.0; ++i) {
            const double part = std::min(outer, b[static_cast<std::size_t>(i)]);
            modulus += 2.0 * part * (0.5 * depth - y[static_cast<std::size_t>(i)]);
            outer -= part;
        }
        return modulus;
    };
    for (const wchar_t* section : {L"I 500x200x10x20", L"BOX 400x200x10x16"}) {
        const SectionProperties s = PropertiesOf(section, SEC_WELDED);
        for (const Axis axis : {Axis::X, Axis::Y})
            for (double n = 0.0; n < 0.999; n += 0.05)
                EXPECT_NEAR(ReducedPlasticModulus(s, axis, n) * 1e6, strips(s, axis, n) * 1e6,
                            2e-3 * strips(s, axis, 0.0) * 1e6)
                    << CString(section).ToUtf8()->c_str() << " axis " << static_cast<int>(axis) << " n " << n;
        EXPECT_NEAR(ReducedPlasticModulus(s, Axis::X, 1.0), 0.0, 1e-12);
    }
    const SectionProperties tube = PropertiesOf(L"CHS 168.3x5");
    EXPECT_NEAR(ReducedPlasticModulus(tube, Axis::X, 0.5), tube.Sx * std::sqrt(0.5), 1e-9);
}

// 4.8.3.2 a at the top of a column: UC 254x254x89 S275 (py = 265, A = 113 cm²): 1200/3003 + 45/324.3 + 12/120.5 =
// 0.3996 + 0.1388 + 0.0996 = 0.638. Published: Sx 1220 cm³, Zy 379 cm³.
TEST(Combined, CompressionWithMomentsAboutBothAxes)
{
    Case given;
    given.section = L"UC 254x254x89";
    given.points = {{0.0, L"Pinned"}, {4.5, L"Pinned"}};
    EndMoments(given, 4.5, 0.0, 45e3, -1200e3, 0.0, 12e3);
    Checked c(given);
    c.Check();
    const LedgerEntry& e = c.Entry(Rule::CombinedCompression);
    EXPECT_NEAR(e.utilisation, 0.638, 0.003);
    EXPECT_STREQ(e.clause, L"4.8.3.2 a");
    EXPECT_NEAR(e.start, 4.5, 1e-12);
}

// 4.8.3.2 b for the same column: n = 0.4; Mrx and Mry by I.2, (Mx/Mrx)² + My/Mry. Srx: nA = 45.2 cm² above t(D - 2T)
// = 10.3*(260.3 - 34.6) mm = 23.2 cm², so the flange formula: A²/(4B)(2DB/A - 1 + n)(1 - n) with A = 113.3, B = 25.63,
// D = 26.03: 125.2 * (11.777 - 0.6) * 0.6 = 839.7 cm³; Mrx = 222.5. Sry: nA above tD = 26.8: A²/(8T)(4BT/A - 1 + n)
// (1 - n) = 927.5 * (15.653/... see below) the elastic limit 120.5 kNm governs. (45/222.5)² + 12/120.5 = 0.1405.
TEST(Combined, MoreExactRuleOfClass2Sections)
{
    Case given;
    given.section = L"UC 254x254x89";
    given.option = CSteelMemberBS5950::MORE_EXACT;
    given.points = {{0.0, L"Pinned"}, {4.5, L"Pinned"}};
    EndMoments(given, 4.5, 0.0, 45e3, -1200e3, 0.0, 12e3);
    Checked c(given);
    c.Check();
    const PositionResult& p = c.member.Positions().back();
    EXPECT_NEAR(p.Mrx, 222.5e3, 1.0e3);
    EXPECT_NEAR(std::pow(45e3 / p.Mrx, 2.0) + 12e3 / p.Mry, 0.1405, 0.002);
    // The axial force alone uses 0.40 of the section, which is more.
    EXPECT_NEAR(p.combined, 0.3996, 0.002);
    EXPECT_STREQ(c.Entry(Rule::CombinedCompression).clause, L"4.8.3.2 b");
}

// RHS 200x100x6.3 S355 under 155.8 kNm alone, with Mc = 1.2 py Z = 77.9 kNm: twice the capacity is a utilisation of 2, not
// 2^(5/3) = 3.17, in the record as in the ledger.
TEST(Combined, MoreExactRuleLeavesASingleMomentAsItIs)
{
    Case given;
    given.section = L"RHS 200x100x6.3";
    given.grade = L"S355";
    given.option = CSteelMemberBS5950::MORE_EXACT;
    given.along = L"Pinned";
    EndMoments(given, 6.0, -155.8e3, -155.8e3);
    Checked c(given);
    EXPECT_FALSE(c.Check());
    EXPECT_NEAR(c.result.UtilOverAll(), 2.0, 0.002);
    ASSERT_NE(c.member.Checks().Governing(), nullptr);
    EXPECT_EQ(c.member.Checks().Governing()->utilisation, c.result.UtilOverAll());
}

// L 100x100x10 S275, α = 45°, under 6 kNm about x-x alone: Mu = Mv = 4.243 kNm, Zu = 39.2 and Zv = 18.5 cm³ (published 18.3): 4.243/(0.275 *
// 39.2) + 4.243/(0.275 * 18.5) = 0.3936 + 0.834 = 1.228. One moment bends an angle about both of its principal axes.
TEST(Combined, AnyMomentOnAnAngleIsTwo)
{
    for (const bool aboutY : {false, true}) {
        Case given;
        given.section = L"L 100x100x10";
        EndMoments(given, 6.0, aboutY ? 0.0 : 6e3, aboutY ? 0.0 : 6e3, 0.0, aboutY ? 6e3 : 0.0, aboutY ? 6e3 : 0.0);
        Checked c(given);
        EXPECT_FALSE(c.Check());
        EXPECT_NEAR(c.Entry(Rule::CombinedCompression).utilisation, 1.228, 0.02);
        EXPECT_STREQ(c.Entry(Rule::CombinedCompression).clause, L"4.9");
        EXPECT_EQ(c.Entry(Rule::CombinedCompression).utilisation, c.result.MaxUtilLocalCombined(nullptr));
    }
}

TEST(Combined, TensionWithMoment)
{
    Case given;
    Uniform(given, 6.0, 20e3, 500e3);
    Checked c(given);
    c.Check();
    // M = 90 kNm at mid-span, found where the shear is zero: 500/2351 + 90/404.5 = 0.435.
    EXPECT_NEAR(c.Entry(Rule::CombinedTension).utilisation, 0.435, 0.002);
    EXPECT_NEAR(c.Entry(Rule::CombinedTension).start, 3.0, 1e-6);
    EXPECT_EQ(c.Entry(Rule::CombinedCompression).status, CheckStatus::NotApplicable);
}

// The standard has no rule for torsion: flagged, said, in the ledger, and never a pass in silence.
TEST(Torsion, IsReportedAsNotChecked)
{
    Case given;
    given.force = [](double) { return Vector(0, 0, 0); };
    given.moment = [](double) { return Vector(5e3, 0, 0); };
    Checked c(given);
    c.Check();
    EXPECT_TRUE(c.result.TestFlags(CMemberResult::NOT_CHECKED));
    EXPECT_EQ(c.Entry(Rule::Torsion).status, CheckStatus::NotEvaluated);
    EXPECT_NE(c.Verbose().find("BS 5950-1:2000 has no rule for torsion"), std::string::npos);
    given.scale = 1e-4; // half a newton metre
    Checked small(given);
    small.Check();
    EXPECT_FALSE(small.result.TestFlags(CMemberResult::NOT_CHECKED));
    EXPECT_EQ(small.Entry(Rule::Torsion).status, CheckStatus::NotApplicable);
}

TEST(Positions, AreTheEndsOfSubSpansAndWhereTheShearPassesThroughZero)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {2.0, L"Free"}, {6.0, L"Pinned"}};
    Uniform(given, 6.0, 30e3);
    Checked c(given);
    c.Check();
    const auto& p = c.member.Positions();
    ASSERT_EQ(p.size(), 5u);
    EXPECT_EQ(p[3].place, Place::Inside);
    EXPECT_NEAR(p[3].x, 3.0, 1e-6);
    EXPECT_NEAR(p[3].actions.Mx, -30e3 * 36.0 / 8.0, 1.0);
    EXPECT_EQ(p[3].Entry(), 3);
    EXPECT_NEAR(c.result.UtilLocalMomMajor(3), 135e3 / 404.53e3, 1e-4) << "filed with the left end of its sub-span";
    EXPECT_EQ(c.result.UtilLocalMomMajor(0), 0.0);
}

// Load cases of one member merge position by position, so the record's layout must not depend on the actions.
TEST(Positions, GiveTheResultTwoEntriesForEachSubSpanWhateverTheActions)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {2.0, L"Free"}, {6.0, L"Pinned"}};
    Uniform(given, 6.0, 30e3);
    Checked loaded(given);
    loaded.Check();
    EndMoments(given, 6.0, 0.0, 50e3);
    Checked other(given);
    other.Check();
    ASSERT_NE(loaded.member.Positions().size(), other.member.Positions().size());
    CMemberResult both = loaded.result + other.result;
    EXPECT_EQ(both.UtilOverAll(), std::max(loaded.result.UtilOverAll(), other.result.UtilOverAll()));
    EXPECT_GT(both.GetVerbose().GetLength(), loaded.result.GetVerbose().GetLength());
    both = other.result + loaded.result;
    EXPECT_EQ(both.UtilOverAll(), std::max(loaded.result.UtilOverAll(), other.result.UtilOverAll()));
}

// 4.2.5.5, UB 457x191x67 S275 (Ke 1.2, A = 8551 mm²): the tension flange has 189.9 * 12.7 = 2412 mm². Holes of 5 % of the section are
// 428 mm² and leave 1.2 * 1984 = 2381, less than 2412; 4.5 % leave 1.2 * 2027 = 2432.
TEST(BoltHoles, CountWhereTheyMayAllLieInTheTensionFlange)
{
    Case given;
    Uniform(given, 6.0, 20e3);
    given.netGross = 0.95;
    Checked c(given);
    EXPECT_FALSE(c.Check());
    EXPECT_EQ(c.Entry(Rule::BoltHoles).status, CheckStatus::NotEvaluated);
    EXPECT_TRUE(c.result.TestFlags(CMemberResult::NOT_CHECKED));
    EXPECT_EQ(c.member.Status(), Design::Status::NotChecked);
    given.netGross = 0.955;
    Checked fine(given);
    fine.Check();
    EXPECT_EQ(fine.Entry(Rule::BoltHoles).status, CheckStatus::NotApplicable);
    EXPECT_FALSE(fine.result.TestFlags(CMemberResult::NOT_CHECKED));
    given.netGross = 0.5;
    given.moment = [](double) { return Vector(0, 0, 0); };
    given.force = [](double) { return Vector(100e3, 0, 0); };
    Checked tie(given);
    EXPECT_TRUE(tie.Check());
    EXPECT_EQ(tie.Entry(Rule::BoltHoles).status, CheckStatus::NotApplicable);
}

TEST(CheckLocal, NarrowsTheTextToTheCriticalPositionAndNotTheCheck)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {2.0, L"Free"}, {4.0, L"Free"}, {6.0, L"Pinned"}};
    Uniform(given, 6.0, 20e3);
    Checked all(given), critical(given);
    EXPECT_TRUE(all.member.CheckLocal(true));
    EXPECT_TRUE(critical.member.CheckLocal(false));
    EXPECT_EQ(all.result.UtilOverAll(), critical.result.UtilOverAll());
    EXPECT_GT(all.Verbose().size(), 3 * critical.Verbose().size());
    EXPECT_NE(critical.Verbose().find("Position"), std::string::npos);
}

// The tension flange of a T bent about y-y is half its table: TEE 200x200x10x15 has A = 200*15 + 185*10 = 4850 mm² and a half table of
// 100*15 = 1500 mm². With Ke = 1.2 holes up to 1500*(1 - 1/1.2) = 250 mm² do not count, 5.155 % of the area. Bent about x-x its stem
// of 2000 mm² and its table of 3000 mm² may be the one: 2000/6 = 333.3 mm², 6.873 %.
TEST(BoltHoles, OfATeeCountByTheSmallestPartInTension)
{
    const auto status = [](double netGross, double mx, double my) {
        Case given;
        given.section = L"TEE 200x200x10x15";
        given.type = SEC_WELDED;
        given.netGross = netGross;
        EndMoments(given, 6.0, mx, mx, 0.0, my, my);
        Checked c(given);
        c.Check();
        return c.Entry(Rule::BoltHoles).status;
    };
    EXPECT_EQ(status(1.0 - 0.0514, 0.0, 100.0), CheckStatus::NotApplicable);
    EXPECT_EQ(status(1.0 - 0.0517, 0.0, 100.0), CheckStatus::NotEvaluated);
    EXPECT_EQ(status(1.0 - 0.0686, 100.0, 0.0), CheckStatus::NotApplicable);
    EXPECT_EQ(status(1.0 - 0.0689, 100.0, 0.0), CheckStatus::NotEvaluated);
    EXPECT_EQ(status(1.0 - 0.0517, 100.0, 100.0), CheckStatus::NotEvaluated);
}

// The brief text has every position that fails, and where none does the worst alone.
TEST(CheckLocal, ShowsAllPositionsThatFailAndElseTheWorst)
{
    const auto headings = [](double moment) {
        Case given;
        given.points = {{0.0, L"Pinned"}, {2.0, L"Free"}, {4.0, L"Free"}, {6.0, L"Pinned"}};
        // Falls from the left end to none at the right one.
        EndMoments(given, 6.0, moment, 0.0);
        Checked c(given);
        c.member.CheckLocal(false);
        const std::string text = c.Verbose();
        std::vector<std::string> found;
        for (std::size_t at = text.find("<h5>Position"); at != std::string::npos;
             at = text.find("<h5>Position", at + 1))
            found.push_back(text.substr(at + 13, text.find(',', text.find(',', at) + 1) - at - 13));
        return found;
    };
    // Mcx of UB 457x191x67 in S275 is 404 kNm: 100 kNm pass everywhere, and the left end of the first sub-span is the worst. Of 700 kNm there
    // are 700 and 467 at both ends of the first sub-span, and 467 at the left end of the second.
    EXPECT_EQ(headings(100e3).size(), 1U);
    EXPECT_EQ(headings(100e3).front().substr(0, 2), "1:");
    EXPECT_EQ(headings(700e3).size(), 3U);
}

// Of the calculation's parts those about positions come before those about spans, as the record's entries do.
TEST(Parts, OfTheBucklingChecksAreTheLast)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {2.0, L"Free"}, {4.0, L"Free"}, {6.0, L"Pinned"}};
    Uniform(given, 6.0, 20e3, -50e3);
    Checked c(given);
    c.Check();
    const std::vector<Design::CalculationPart> parts = c.member.Findings().parts;
    std::size_t positions = 0;
    while (positions < parts.size() && parts[positions].start == parts[positions].end)
        ++positions;
    EXPECT_GE(positions, 6U);
    EXPECT_GT(parts.size(), positions);
    for (std::size_t i = positions; i < parts.size(); ++i)
        EXPECT_LT(parts[i].start, parts[i].end) << i;
}
