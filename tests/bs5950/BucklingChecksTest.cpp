#include <gtest/gtest.h>

#include "Members.h"

using namespace BS5950Test;

namespace {

std::vector<std::pair<double, double>> Ends(const std::vector<SpanResult>& spans)
{
    std::vector<std::pair<double, double>> ends;
    for (const SpanResult& s : spans)
        ends.emplace_back(s.start, s.end);
    return ends;
}
using Stretch = std::pair<double, double>;

// Stretches in which a moment compresses a flange that is not held along its length.
std::vector<SpanResult> CheckedStretches(const Checked& c)
{
    std::vector<SpanResult> spans;
    for (const SpanResult& s : c.Spans(BucklingMode::LateralTorsional))
        if (s.applied) spans.push_back(s);
    return spans;
}

Case Column()
{
    Case given;
    given.section = L"UC 254x254x89";
    given.points = {{0.0, L"Pinned"}, {4.5, L"Pinned"}};
    EndMoments(given, 4.5, 0.0, 45e3, -1200e3, 0.0, 12e3);
    return given;
}

} // namespace

// By hand with published properties (A 113 cm², rx 11.2 cm, ry 6.55 cm, Zx 1100 cm³, Zy 379 cm³, Sx 1220 cm³), py =
// 265, λ0 = 17.48. x-x, curve b: λ = 40.2, pE = 1252, η = 0.0795, φ = 808.3, pc = 331780/(808.3 + 567.3) = 241.2,
// Pcx = 2726. y-y, curve c: λ = 68.7, pE = 428.7, η = 0.2817, φ = 407.2, pc = 113600/(407.2 + 228.5) = 178.7, Pcy =
// 2019. Fc/Pc = 1200/2019 = 0.594. mx = my = 0.6 (β = 0). 4.8.3.3.1: 0.594 + 0.6*45/291.5 + 0.6*12/100.4 = 0.594 +
// 0.0926 + 0.0717 = 0.759.
TEST(ColumnByHand, SimplifiedInteraction)
{
    Checked c(Column());
    EXPECT_TRUE(c.Check());
    EXPECT_NEAR(c.Entry(Rule::BucklingMajor).resistance, 2726e3, 0.01 * 2726e3);
    EXPECT_NEAR(c.Entry(Rule::BucklingMinor).resistance, 2019e3, 0.01 * 2019e3);
    ASSERT_EQ(c.member.Interactions().size(), 1u);
    const InteractionResult& i = c.member.Interactions().front();
    EXPECT_NEAR(c.Spans(BucklingMode::Major).front().m, 0.6, 1e-6);
    EXPECT_NEAR(c.Spans(BucklingMode::Minor).front().m, 0.6, 1e-6);
    EXPECT_NEAR(i.first, 0.759, 0.008);
    EXPECT_STREQ(i.clause, L"4.8.3.3.1");
    EXPECT_EQ(c.result.UtilBucklingCombined(), i.utilisation);
}

// The same column by 4.8.3.3.2, from the quantities above and Mcx = 324, Mcy = 1.2*265*0.379 = 120.5, fx = 0.440, fy =
// 0.594: first = 0.440 + 0.6*45/324*(1 + 0.220) + 0.5*0.6*12/120.5 = 0.571; third = (0.0833*1.220)/(0.560) +
// (0.0598*1.594)/0.406 = 0.1815 + 0.2346 = 0.416. second = 0.594 + 0.6*45/287 + 0.0598*1.594 = 0.783 (Mb = 287 with LE = 4.5 m), the
// largest.
TEST(ColumnByHand, MoreExactInteraction)
{
    Case given = Column();
    given.option = CSteelMemberBS5950::MORE_EXACT;
    Checked c(given);
    EXPECT_TRUE(c.Check());
    const InteractionResult& i = c.member.Interactions().front();
    EXPECT_STREQ(i.clause, L"4.8.3.3.2");
    EXPECT_NEAR(i.first, 0.571, 0.008);
    EXPECT_NEAR(i.third, 0.416, 0.01);
    EXPECT_NEAR(i.second, 0.783, 0.01);
    EXPECT_EQ(i.utilisation, i.second);
}

// 4.8.3.3.3 by hand, SHS 150x150x8 S355, 4 m pinned, 600 kN, 20 kNm about x-x and 10 kNm about y-y, uniform. Printed:
// A 44.8 cm², r 5.77 cm, S 237 cm³, Z 199 cm³. λ = 69.3, curve a: pE = 421.0, λ0 = 15.10, η = 0.1085, φ = 410.8, pc =
// 149455/(410.8 + 138.8) = 271.9, Pc = 1218: f = 0.4926. Mc = 0.355*237 = 84.1. Major: 0.4926 + 20/84.1(1 + 0.2463)
// + 0.5*10/84.1 = 0.848; minor, with half the term of lateral-torsional buckling: 0.4926 + 0.5*20/84.1 + 10/84.1(1.2463) =
// 0.760; interactive: (0.2378 + 0.1189) 1.2463/0.5074 = 0.876.
TEST(HollowSectionByHand, MoreExactInteraction)
{
    Case given;
    given.section = L"SHS 150x150x8";
    given.grade = L"S355";
    given.option = CSteelMemberBS5950::MORE_EXACT;
    given.points = {{0.0, L"Pinned"}, {4.0, L"Pinned"}};
    EndMoments(given, 4.0, -20e3, -20e3, -600e3, 10e3, 10e3);
    Checked c(given);
    c.Check();
    const InteractionResult& i = c.member.Interactions().front();
    EXPECT_STREQ(i.clause, L"4.8.3.3.3");
    EXPECT_NEAR(i.first, 0.848, 0.006);
    EXPECT_NEAR(i.second, 0.760, 0.006);
    EXPECT_NEAR(i.third, 0.876, 0.008);
}

// 4.8.3.3.3 by hand where Table 15 does not serve, welded box 300x100, all walls 10 mm, S275, 6 m pinned, 150 kN, 40 kNm about x-x and 5 kNm about
// y-y, uniform. A 76 cm², Ix 7865 cm⁴, Iy 1305 cm⁴, J = 4*26100²/76 = 3585 cm⁴, Sx 682 cm³, Zx 524.4 cm³, Sy 302 cm³. Struts with py = 255, curve
// b: λx = 59.0, pc = 208.3, fx = 0.0948; λy = 144.8, pc = 77.7, fy = 0.254. φb = 1.084, λLT = 2.25(1.084*144.8)^0.5 = 28.2 < λL0: Mb = 187.6.
// Mcx = 1.2*0.275*524.4 = 173.1, Mcy = 83.1. Major: 0.0948 + 40/173.1*1.0474 + 0.5*5/83.1 = 0.367; minor, with the whole term of
// lateral-torsional buckling: 0.254 + 40/187.6 + 5/83.1*1.127 = 0.535; interactive: 0.2421/0.9052 + 0.0679/0.746 = 0.359.
TEST(HollowSectionByHand, MoreExactInteractionWithLateralTorsionalBuckling)
{
    Case given;
    given.section = L"BOX 300x100x10x10";
    given.type = SEC_WELDED;
    given.option = CSteelMemberBS5950::MORE_EXACT;
    given.points = {{0.0, L"Pinned"}, {6.0, L"Pinned"}};
    EndMoments(given, 6.0, -40e3, -40e3, -150e3, 5e3, 5e3);
    Checked c(given);
    c.Check();
    const InteractionResult& i = c.member.Interactions().front();
    EXPECT_STREQ(i.clause, L"4.8.3.3.3");
    EXPECT_NEAR(i.first, 0.367, 0.002);
    EXPECT_NEAR(i.second, 0.535, 0.002);
    EXPECT_NEAR(i.third, 0.359, 0.002);
}

// D/B = 3: LE/ry up to 225*275/355 = 174.3, that is 7.2 m with ry = 4.11 cm. Within it the term is half of MLT/Mcx, beyond it whole.
TEST(HollowSectionByHand, Table15HalvesTheTermOfLateralTorsionalBuckling)
{
    const auto interaction = [](double L) {
        Case given;
        given.section = L"RHS 300x100x8";
        given.grade = L"S355";
        given.option = CSteelMemberBS5950::MORE_EXACT;
        given.points = {{0.0, L"Pinned"}, {L, L"Pinned"}};
        EndMoments(given, L, -60e3, -60e3, -20e3);
        Checked c(given);
        c.Check();
        const InteractionResult& i = c.member.Interactions().front();
        EXPECT_NEAR(c.member.Positions().front().Mcx, 1.2 * 355.0 * 420.0, 500.0); // Zx printed: 420 cm³
        return std::array{i.MLTTerm, c.Spans(BucklingMode::LateralTorsional).front().resistance};
    };
    const double within = interaction(7.0)[0];
    EXPECT_NEAR(within, 0.5 * 60.0 / (1.2 * 0.355 * 420.0), 0.001);
    const auto [beyond, Mb] = interaction(7.4);
    EXPECT_NEAR(beyond, 60e3 / Mb, 1e-12);
    EXPECT_NEAR(Mb, 355.0 * 546.0, 0.02 * 355.0 * 546.0); // Sx printed: 546 cm³; λLT is just above λL0
}

// Table 22 from the restraints at the ends, and the sway rows with m at least 0.85.
TEST(EffectiveLengths, OfStrutsFollowTheirEnds)
{
    Case given;
    given.section = L"UC 254x254x89";
    EndMoments(given, 6.0, 0.0, 10e3, -500e3);
    const auto lengths = [&](const wchar_t* left, const wchar_t* right) {
        given.points = {{0.0, left}, {6.0, right}};
        Checked c(given);
        c.Check();
        return std::make_pair(c.Spans(BucklingMode::Major).front().LE, c.Spans(BucklingMode::Minor).front().LE);
    };
    EXPECT_EQ(lengths(L"Pinned", L"Pinned"), std::make_pair(6.0, 6.0));
    EXPECT_EQ(lengths(L"Fixed", L"Fixed"), std::make_pair(0.7 * 6.0, 0.7 * 6.0));
    EXPECT_EQ(lengths(L"Fixed", L"Pinned"), std::make_pair(0.85 * 6.0, 0.85 * 6.0));
    EXPECT_EQ(lengths(L"Full rotational", L"Full rotational"), std::make_pair(0.7 * 6.0, 6.0));
    EXPECT_EQ(lengths(L"Fixed", L"Free"), std::make_pair(2.0 * 6.0, 2.0 * 6.0));
    EXPECT_EQ(lengths(L"Pinned", L"Free").first, INFINITY) << "a mechanism";
    given.points = {{0.0, L"Fixed"}, {6.0, L"Free"}};
    Checked sway(given);
    sway.Check();
    EXPECT_TRUE(sway.Spans(BucklingMode::Major).front().flexural.sway);
    EXPECT_EQ(sway.Spans(BucklingMode::Major).front().m, 0.85);
}

TEST(EffectiveLengths, WithoutARowOfTable22FailInsteadOfPassing)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {6.0, L"Free"}};
    EndMoments(given, 6.0, 0.0, 0.0, -100e3);
    Checked c(given);
    EXPECT_FALSE(c.Check());
    EXPECT_TRUE(c.result.TestFlags(CMemberResult::FAIL_BUCKLE_AXIAL_MAJOR));
    EXPECT_EQ(c.result.UtilBucklingAxialMajor(), INFINITY);
    EXPECT_EQ(c.Entry(Rule::BucklingMajor).status, CheckStatus::Failed);
    EXPECT_NE(std::wstring(c.Entry(Rule::BucklingMajor).reason), L"");
}

TEST(EffectiveLengths, AreOverriddenForTheWholeMemberAndBelowZeroByAFactorOfItsLength)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {3.0, L"Pinned"}, {6.0, L"Pinned"}};
    EndMoments(given, 6.0, 0.0, 50e3, -300e3);
    Checked c(given);
    c.member.SetLengthOverride(true);
    c.member.SetLyy(5.0);
    c.member.SetLzz(-0.85);
    c.member.SetLlt(-1.5);
    c.Check();
    ASSERT_EQ(c.member.Spans().size(), 3u);
    EXPECT_EQ(c.member.Spans()[0].LE, 5.0);
    EXPECT_DOUBLE_EQ(c.member.Spans()[1].LE, 5.1);
    EXPECT_DOUBLE_EQ(c.member.Spans()[2].LE, 9.0);
    const auto lengths = c.member.GetEffectiveLengths();
    EXPECT_EQ(lengths.GetMajorAxisEntries().at(0).GetEffectiveLength(), 5.0);
    EXPECT_DOUBLE_EQ(lengths.GetMinorAxisEntries().at(0).GetEffectiveLength(), 5.1);
    EXPECT_DOUBLE_EQ(lengths.GetLateralTorsionalEntries().at(0).GetEffectiveLength(), 9.0);
    EXPECT_EQ(lengths.GetLateralTorsionalEntries().at(0).GetSubspanEndIndex(), 1u);
}

TEST(EffectiveLengths, ThatAreNotANumberFailInsteadOfPassingForZero)
{
    for (const wchar_t* section : {L"UB 457x191x67", L"RHS 200x100x6.3", L"L 100x100x10"}) {
        Case given;
        given.section = section;
        EndMoments(given, 6.0, 0.5e3, 0.5e3);
        Checked c(given);
        c.member.SetLengthOverride(true);
        c.member.SetLyy(5.0);
        c.member.SetLzz(5.0);
        c.member.SetLlt(std::nan(""));
        EXPECT_FALSE(c.Check()) << CString(section).ToUtf8()->c_str();
        EXPECT_EQ(c.Entry(Rule::LateralTorsional).status, CheckStatus::Failed);
        EXPECT_EQ(c.result.UtilBucklingLT(), INFINITY);
    }
}

// L 150x150x10 S355, LE = 3 m: b/t = 15 lies beyond 15ε = 13.2, so 4.3.8.3 does not serve. Basic rule B.2.9 with the
// published Iu = 990, Iv = 258, J = 10.8 cm⁴, A = 29.3 cm², rv = 2.97 cm: Zu = 990/10.607 = 93.3 cm³, φa = 4.51, λv = 101,
// λLT = 2.25(4.51 · 101)^0.5 = 48.0. 3.6.5: pyr = 355(13.2/15)² = 275, λL0 = 34.3, η = 0.0959, pE = 878, φ = 618.6, pb =
// 241450/(618.6 + 375.8) = 242.8: Mb = 93.3 · 0.2428 = 22.65 kNm.
TEST(AngleBeams, OfSlenderEqualLegsTakeTheBasicRule)
{
    Case given;
    given.section = L"L 150x150x10";
    given.grade = L"S355";
    given.points = {{0.0, L"Pinned"}, {3.0, L"Pinned"}};
    EndMoments(given, 3.0, -2e3, -2e3);
    Checked c(given);
    c.Check();
    const SpanResult span = c.Spans(BucklingMode::LateralTorsional).at(0);
    EXPECT_EQ(std::wstring(span.lateral.lt.source), L"B.2.9");
    EXPECT_NEAR(span.LE, 3.0, 1e-9);
    EXPECT_NEAR(span.resistance, 22.65e3, 0.1e3);
}

// A deck on the top flange holds a sagging beam and leaves a hogging one to its bottom flange.
TEST(LateralSpans, FollowTheCompressionFlange)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {2.0, L"Top flange lateral"}, {6.0, L"Pinned"}};
    Uniform(given, 6.0, 20e3);
    {
        Checked c(given);
        c.Check();
        EXPECT_EQ(Ends(CheckedStretches(c)), (std::vector<Stretch>{{0, 2}, {2, 6}}));
        EXPECT_EQ(Ends(c.Spans(BucklingMode::LateralTorsional)), (std::vector<Stretch>{{0, 2}, {0, 6}, {2, 6}}));
    }
    given.along = L"Top flange lateral";
    {
        Checked c(given);
        c.Check();
        EXPECT_TRUE(CheckedStretches(c).empty());
        const SpanResult held = c.Spans(BucklingMode::LateralTorsional).front();
        EXPECT_TRUE(held.continuous && held.lateral.flange[0]);
        EXPECT_EQ(held.LE, 0.0);
    }
    given.scale = -1.0; // uplift
    {
        Checked c(given);
        c.Check();
        const auto spans = CheckedStretches(c);
        EXPECT_EQ(Ends(spans), (std::vector<Stretch>{{0, 6}}));
        EXPECT_EQ(spans.front().lateral.sense, Steel::CCodeShare::LT_COMP_FLANGE2);
        EXPECT_EQ(spans.front().LE, 6.0);
    }
}

// A span of one sub-span under uniform load has no moment at its ends: the moment inside it still compresses a flange.
TEST(LateralSpans, SeeTheMomentInsideASingleSubSpan)
{
    Case given;
    Uniform(given, 6.0, 20e3);
    const auto span = [&] {
        Checked c(given);
        c.Check();
        return c.Spans(BucklingMode::LateralTorsional).front();
    };
    EXPECT_EQ(span().lateral.sense, Steel::CCodeShare::LT_COMP_FLANGE1);
    EXPECT_TRUE(span().applied);
    const auto checked = [&] {
        Checked c(given);
        c.Check();
        return CheckedStretches(c);
    };
    given.along = L"Bottom flange lateral";
    EXPECT_EQ(checked().size(), 1u) << "the restrained flange is in tension";
    given.along = L"Top flange lateral";
    EXPECT_TRUE(checked().empty());
    given.scale = -1.0;
    ASSERT_EQ(checked().size(), 1u);
    EXPECT_EQ(checked().front().lateral.sense, Steel::CCodeShare::LT_COMP_FLANGE2);
}

TEST(LateralSpans, EndWhereADeckEnds)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {4.0, L"Free"}, {6.0, L"Pinned"}};
    given.alongEach = {L"Top flange lateral", L"Free"};
    Uniform(given, 6.0, 20e3);
    Checked c(given);
    c.Check();
    const auto spans = CheckedStretches(c);
    EXPECT_EQ(Ends(spans), (std::vector<Stretch>{{4, 6}}));
    EXPECT_EQ(spans[0].LE, 2.0) << "the edge of the deck holds the compression flange";
    EXPECT_STREQ(spans[0].startReason, L"edge of a restraint along the member");
}

// Table 13: Pinned ends 1.0L, 1.2L destabilising; both flanges held against rotation on plan 0.7L; torsion held by
// bearing only 1.2L + 2D; and nothing at all where a support gives no torsional restraint (nominal row refused).
TEST(LateralLengths, FollowTable13)
{
    Case given;
    Uniform(given, 6.0, 5e3);
    const auto length = [&](const wchar_t* ends, double height) {
        given.points = {{0.0, ends}, {6.0, ends}};
        given.loadHeight = height;
        Checked c(given);
        c.Check();
        return c.Spans(BucklingMode::LateralTorsional).front().LE;
    };
    const double D = 0.4534;
    EXPECT_DOUBLE_EQ(length(L"Pinned", 0.0), 6.0);
    EXPECT_DOUBLE_EQ(length(L"Pinned", 0.3), 7.2);
    EXPECT_DOUBLE_EQ(length(L"Pinned", -0.3), 6.0) << "a load below the reference does not destabilise";
    EXPECT_DOUBLE_EQ(length(L"Fixed", 0.0), 0.7 * 6.0);
    EXPECT_DOUBLE_EQ(length(L"Fixed", 0.3), 0.85 * 6.0);
    EXPECT_DOUBLE_EQ(length(L"F2L TP MAJV", 0.0), 6.0 + 2.0 * D);
    EXPECT_DOUBLE_EQ(length(L"F1L TF MAJV", 0.0), 1.2 * 6.0 + 2.0 * D);
    EXPECT_EQ(length(L"F1L MAJV", 0.0), INFINITY) << "nominal torsional restraint is not assumed at a support";
}

TEST(LateralLengths, WithoutARowFailAndSayWhy)
{
    Case given;
    given.points = {{0.0, L"F1L MAJV"}, {6.0, L"F1L MAJV"}};
    Uniform(given, 6.0, 5e3);
    Checked c(given);
    EXPECT_FALSE(c.Check());
    EXPECT_TRUE(c.result.TestFlags(CMemberResult::FAIL_BUCKLE_LAT_TORS));
    EXPECT_EQ(c.Entry(Rule::LateralTorsional).status, CheckStatus::Failed);
    EXPECT_EQ(c.Entry(Rule::LateralTorsional).utilisation, INFINITY);
}

// At an inner point the beam goes on, so that the row with nominal torsional restraint serves.
TEST(LateralLengths, TakeTheNominalRowAtInnerPoints)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {3.0, L"Top flange lateral"}, {6.0, L"Pinned"}};
    Uniform(given, 6.0, 5e3);
    Checked c(given);
    c.Check();
    EXPECT_EQ(CheckedStretches(c).size(), 2u);
    for (const SpanResult& s : CheckedStretches(c))
        EXPECT_EQ(s.LE, 3.0);
}

// Table 14: built in with a free tip 0.8L, 1.4L destabilising; mLT = 1.0 (4.3.6.6).
TEST(LateralLengths, OfCantileversFollowTable14)
{
    for (const bool leftTip : {false, true}) {
        Case given;
        given.points = {{0.0, leftTip ? L"Free" : L"Fixed"}, {3.0, leftTip ? L"Fixed" : L"Free"}};
        const double P = 20e3;
        given.force = [=](double) { return Vector(0, 0, leftTip ? P : -P); };
        given.moment = [=](double x) { return Vector(0, P * (leftTip ? x : 3.0 - x), 0); };
        Checked normal(given);
        normal.Check();
        const SpanResult span = normal.Spans(BucklingMode::LateralTorsional).front();
        EXPECT_TRUE(span.lateral.cantilever);
        EXPECT_DOUBLE_EQ(span.LE, 0.8 * 3.0) << leftTip;
        EXPECT_EQ(span.m, 1.0);
        given.loadHeight = 0.2;
        Checked destabilised(given);
        destabilised.Check();
        EXPECT_DOUBLE_EQ(destabilised.Spans(BucklingMode::LateralTorsional).front().LE, 1.4 * 3.0);
    }
}

// A pinned support cannot carry a cantilever: the other end must be supported too, and that is named.
TEST(LateralLengths, TakeAnUndeclaredSupportForOneWhereTheMemberWouldFallOtherwise)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {6.0, L"Top and Bottom flange lateral"}};
    Uniform(given, 6.0, 10e3);
    Checked c(given);
    c.Check();
    EXPECT_FALSE(c.Spans(BucklingMode::LateralTorsional).front().lateral.cantilever);
    EXPECT_DOUBLE_EQ(c.Spans(BucklingMode::LateralTorsional).front().LE, 6.0);
    EXPECT_TRUE(c.Assumes(L"vertical support"));
}

// A beam that runs on past its second support ends in a cantilever.
TEST(LateralLengths, OfAnOverhang)
{
    Case given;
    given.points = {{0.0, L"Pinned"}, {6.0, L"Pinned"}, {8.0, L"Free"}};
    given.force = [](double x) { return Vector(0, 0, x < 6.0 ? 20e3 / 3.0 : -20e3); };
    given.moment = [](double x) { return Vector(0, x < 6.0 ? 20e3 * x / 3.0 : 20e3 * (8.0 - x), 0); };
    Checked c(given);
    c.Check();
    const auto spans = c.Spans(BucklingMode::LateralTorsional);
    ASSERT_EQ(spans.size(), 2u);
    EXPECT_FALSE(spans[0].lateral.cantilever);
    EXPECT_TRUE(spans[1].lateral.cantilever);
    EXPECT_DOUBLE_EQ(spans[1].LE, 2.0) << "Table 14, continuous with lateral and torsional restraint, free tip: 1.0L";
    EXPECT_STREQ(spans[1].endReason, L"free tip of a cantilever");
}

TEST(MomentFactors, ComeFromTheMomentShapeOrTheUserOrTheLoad)
{
    Case given;
    Uniform(given, 6.0, 5e3);
    Checked uniform(given);
    uniform.Check();
    const SpanResult u = uniform.Spans(BucklingMode::LateralTorsional).front();
    EXPECT_EQ(u.momentX.pattern, LoadPattern::Uniform);
    EXPECT_NEAR(u.m, 0.925, 1e-6) << "a parabola from one sub-span";
    given.loadHeight = 0.3;
    Checked destabilised(given);
    destabilised.Check();
    EXPECT_EQ(destabilised.Spans(BucklingMode::LateralTorsional).front().m, 1.0);
    given.loadHeight = 0.0;
    Checked factor(given);
    factor.member.SetEquivalentUniformMomentFactor(0.9);
    factor.Check();
    EXPECT_EQ(factor.Spans(BucklingMode::LateralTorsional).front().m, 0.9);
    EXPECT_TRUE(factor.Assumes(L"equivalent uniform moment factor"));
}

TEST(LoadPatterns, AreRecognised)
{
    const auto pattern = [](Case given) {
        Checked c(given);
        c.Check();
        return c.Spans(BucklingMode::LateralTorsional).front().momentX.pattern;
    };
    Case given;
    EXPECT_EQ(pattern(given), LoadPattern::None);
    EndMoments(given, 6.0, 0.0, 50e3);
    EXPECT_EQ(pattern(given), LoadPattern::EndMoments);
    given.points = {{0.0, L"Pinned"}, {3.0, L"Free"}, {6.0, L"Pinned"}};
    given.force = [](double x) { return Vector(0, 0, x < 3 ? -10e3 : 10e3); };
    given.moment = [](double x) { return Vector(0, -10e3 * std::min(x, 6 - x), 0); };
    EXPECT_EQ(pattern(given), LoadPattern::CentralPoint);
    given.points = {{0.0, L"Pinned"}, {2.0, L"Free"}, {6.0, L"Pinned"}};
    given.force = [](double x) { return Vector(0, 0, x < 2 ? -10e3 : 5e3); };
    given.moment = [](double x) { return Vector(0, x < 2 ? -10e3 * x : -5e3 * (6 - x), 0); };
    EXPECT_EQ(pattern(given), LoadPattern::PointLoads);
}

// 4.7.10.2 for an angle brace without moments, L 120x120x10, 3.2 m: λv = max(3.2/rv, 0.7*3.2/rv + 15, 0.7*3.2/ry + 30).
TEST(AngleStruts, KeepTheLeastSlendernessOfTheirConnections)
{
    Case given;
    given.section = L"L 120x120x10";
    given.points = {{0.0, L"Pinned"}, {1.0, L"Pinned"}};
    EndMoments(given, 1.0, 0.0, 0.0, -100e3);
    Checked c(given);
    EXPECT_TRUE(c.Check());
    // rv = 2.36 cm, ry = 3.67 cm: LE/rv = 42.4; 0.7/rv + 15 = 44.7; 0.7/ry + 30 = 49.1.
    EXPECT_NEAR(c.Spans(BucklingMode::Minor).front().slenderness, 49.1, 0.2);
    EXPECT_EQ(c.Entry(Rule::StrutConnections).status, CheckStatus::Passed);
    EXPECT_TRUE(c.Assumes(L"end connections of the strut"));
}

TEST(Ties, OfSingleAnglesCountAsEccentricallyConnected)
{
    Case given;
    given.section = L"L 100x100x10";
    EndMoments(given, 6.0, 0.0, 0.0, 300e3);
    Checked c(given);
    EXPECT_TRUE(c.Check());
    EXPECT_NEAR(c.Entry(Rule::EccentricConnection).resistance, 400.8e3, 0.2e3);
    EXPECT_TRUE(c.Assumes(L"end connection of the tie"));
    EXPECT_EQ(c.Entry(Rule::BucklingMinor).status, CheckStatus::NotApplicable);
}

// Biaxial bending without axial force is checked by 4.8.3.3 with Fc = 0 (4.9).
TEST(Interaction, ConcernsMomentsAboutBothAxesWithoutCompression)
{
    Case given;
    EndMoments(given, 6.0, 50e3, 50e3, 0.0, 10e3, 10e3);
    Checked c(given);
    c.Check();
    ASSERT_EQ(c.member.Interactions().size(), 1u);
    const SectionProperties& s = c.member.Properties();
    EXPECT_NEAR(c.member.Interactions()[0].first, 50e3 / (275e6 * s.Zx) + 10e3 / (275e6 * s.Zy), 1e-9);
}

// Spans of the three modes have different ends: every combination with a common stretch is checked once.
TEST(Interaction, PairsTheSpansThatOverlap)
{
    Case given;
    given.section = L"UC 254x254x89";
    given.points = {{0.0, L"Pinned"}, {2.0, L"F12L"}, {4.0, L"F1L"}, {6.0, L"Pinned"}};
    EndMoments(given, 6.0, -20e3, -40e3, -400e3);
    Checked c(given);
    c.Check();
    EXPECT_EQ(Ends(c.Spans(BucklingMode::Major)), (std::vector<Stretch>{{0, 6}}));
    EXPECT_EQ(Ends(c.Spans(BucklingMode::Minor)), (std::vector<Stretch>{{0, 2}, {2, 6}}));
    EXPECT_EQ(Ends(c.Spans(BucklingMode::LateralTorsional)), (std::vector<Stretch>{{0, 2}, {2, 4}, {2, 6}, {4, 6}}));
    std::vector<Stretch> common;
    for (const InteractionResult& i : c.member.Interactions())
        common.emplace_back(i.start, i.end);
    EXPECT_EQ(common, (std::vector<Stretch>{{0, 2}, {2, 4}, {4, 6}}));
}
