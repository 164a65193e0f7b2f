#include "check/SpanReport.h"

#include <cmath>
#include <map>
#include <memory>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "design/RandomMember.h"
#include "text/Text.h"
#ifdef KELTRIX_HOST_WITH_BS5950
#include "keltrix/bs5950/SteelMemberBS5950.h"
#endif

namespace Keltrix::App {
namespace {

using Steel::CMemberPoint;
using Steel::CSubSpan;
using ::testing::ElementsAre;

struct Joint {
    double x;
    const wchar_t* restraint;
    double loadHeight = 0.0;
};

/// A member whose major-axis shear and moment are given by functions of x; the shear from the left and from the right.
template <class Shear, class Moment>
std::unique_ptr<CodelessMember> MakeMember(const std::vector<Joint>& joints, Shear shear, Moment moment)
{
    auto member = std::make_unique<CodelessMember>();
    member->SetKeltrixSec(CSection(L"UB 457x191x67"));
    std::vector<CMemberPoint> points;
    std::vector<CSubSpan> subSpans;
    for (std::size_t i = 0; i < joints.size(); ++i) {
        CMemberPoint& point = points.emplace_back();
        point.Set1Index(static_cast<int>(i) + 1);
        point.SetPos(joints[i].x);
        Data::CRestraint restraint;
        EXPECT_TRUE(restraint.SetDescription(joints[i].restraint));
        restraint.SetLoadHeight(joints[i].loadHeight);
        point.SetRestraint(restraint);
        if (i == 0) continue;
        const double a = joints[i - 1].x;
        const double b = joints[i].x;
        const double inside = 1e-6 * (b - a);
        CSubSpan& subSpan = subSpans.emplace_back();
        subSpan.Set1Index(static_cast<int>(i));
        subSpan.SetForcesAll({0.0, 0.0, shear(a + inside)}, {0.0, 0.0, shear(b - inside)});
        subSpan.SetMomentsAll({0.0, moment(a), 0.0}, {0.0, moment(b), 0.0});
    }
    EXPECT_TRUE(member->SetMemberPointVec(points));
    EXPECT_TRUE(member->SetSubSpanVec(subSpans));
    return member;
}

// Simply supported over 8 m, 40 kN at mid-span: M = -P x/2 up to the middle (sagging compresses flange 1, below zero).
std::unique_ptr<CodelessMember> MidSpanLoad(const wchar_t* middle = L"Free", double start = 0.0)
{
    const double P = 40e3;
    const auto shear = [=](double x) { return x - start < 4.0 ? -P / 2 : P / 2; };
    const auto moment = [=](double x) { return -P / 2 * std::fmin(x - start, 8.0 - (x - start)); };
    return MakeMember({{start, L"Pinned"}, {start + 4.0, middle}, {start + 8.0, L"Pinned"}}, shear, moment);
}

TEST(SpanReport, ABeamWithAMidSpanLoadIsOneSpanWithTheClosedFormsDeflection)
{
    for (const double start : {0.0, 3.0}) {
        const auto member = MidSpanLoad(L"Free", start);
        const std::vector<SpanReport> spans = MakeSpanReports(*member, Split::LateralTorsional, 60e6);
        ASSERT_EQ(spans.size(), 1u);
        EXPECT_EQ(spans[0].major.pattern, "point load at mid-span");
        EXPECT_EQ(spans[0].minor.pattern, "none");
        EXPECT_EQ(CompressionFlangeName(spans[0].compressionFlange), "flange 1 (top)");
        // P L³ / 48 EI = 40e3 x 512 / (48 x 60e6)
        ASSERT_TRUE(spans[0].deflectionMajor);
        EXPECT_NEAR(spans[0].deflectionMajor->integrated, 40e3 * 512 / (48 * 60e6), 1e-9);
        EXPECT_NEAR(spans[0].deflectionMajor->integratedAt, start + 4.0, 1e-9);
        EXPECT_FALSE(spans[0].deflectionMinor) << "EI was given for the major axis alone";
        ASSERT_EQ(spans[0].lt.size(), 1u);
        EXPECT_EQ(spans[0].lt[0].table, "Table 13");
        EXPECT_DOUBLE_EQ(spans[0].lt[0].length, 8.0);
        EXPECT_EQ(spans[0].lt[0].row, "1.0L(normal)");
    }
}

TEST(SpanReport, AUniformLoadIsRecognisedAndItsDeflectionApproachesTheClosedForm)
{
    const double w = 10e3, L = 8.0, EI = 60e6;
    std::vector<Joint> joints;
    for (int i = 0; i <= 16; ++i)
        joints.push_back({L * i / 16, i == 0 || i == 16 ? L"Pinned" : L"Free"});
    const auto member = MakeMember(
        joints, [=](double x) { return w * (x - L / 2); }, [=](double x) { return -w * x * (L - x) / 2; });
    const std::vector<SpanReport> spans = MakeSpanReports(*member, Split::Minor, EI);
    ASSERT_EQ(spans.size(), 1u);
    EXPECT_EQ(spans[0].major.pattern, "uniform load");
    const double closed = 5 * w * std::pow(L, 4) / (384 * EI);
    EXPECT_NEAR(spans[0].deflectionMajor->integrated, closed,
                1e-5 * closed); // shears are taken a little off the points
    ASSERT_EQ(spans[0].stations.size(), 5u);
    EXPECT_NEAR(spans[0].stations[2].moment.y, -w * L * L / 8, 1e-6);
}

// A member by the shears and moments at the ends of each sub-span.
struct Ends {
    double V1, V2, M1, M2;
};
std::unique_ptr<CodelessMember> MemberOf(const std::vector<Joint>& joints, const std::vector<Ends>& ends)
{
    auto member = std::make_unique<CodelessMember>();
    member->SetKeltrixSec(CSection(L"UB 457x191x67"));
    std::vector<CMemberPoint> points;
    std::vector<CSubSpan> subSpans;
    for (std::size_t i = 0; i < joints.size(); ++i) {
        CMemberPoint& point = points.emplace_back();
        point.Set1Index(static_cast<int>(i) + 1);
        point.SetPos(joints[i].x);
        Data::CRestraint restraint;
        EXPECT_TRUE(restraint.SetDescription(joints[i].restraint));
        point.SetRestraint(restraint);
        if (i == 0) continue;
        const Ends& e = ends[i - 1];
        CSubSpan& subSpan = subSpans.emplace_back();
        subSpan.Set1Index(static_cast<int>(i));
        subSpan.SetForcesAll({0.0, 0.0, e.V1}, {0.0, 0.0, e.V2});
        subSpan.SetMomentsAll({0.0, e.M1, 0.0}, {0.0, e.M2, 0.0});
    }
    EXPECT_TRUE(member->SetMemberPointVec(points));
    EXPECT_TRUE(member->SetSubSpanVec(subSpans));
    return member;
}

TEST(SpanReport, LoadWithinOneSubSpanBendsTheBeam)
{
    const double w = 20e3, L = 6.0, EI = 20e6;
    const auto member = MemberOf({{0.0, L"Pinned"}, {L, L"Pinned"}}, {{-w * L / 2, w * L / 2, 0.0, 0.0}});
    const SpanReport span = MakeSpanReports(*member, Split::Minor, EI).at(0);
    EXPECT_EQ(span.major.pattern, "uniform load within one sub-span, which CSpan does not see");
    EXPECT_FALSE(span.major.loaded) << "as CSpan has it";
    // 5 w L⁴/384 EI = 5 · 20e3 · 1296/(384 · 20e6) = 0.016875 m
    EXPECT_NEAR(span.deflectionMajor->integrated, 0.016875, 1e-12);
    EXPECT_NEAR(span.deflectionMajor->integratedAt, 3.0, 1e-9);
    EXPECT_FALSE(span.deflectionMajor->isUpwards);
    EXPECT_TRUE(span.deflectionMajor->isKnown);
    EXPECT_EQ(span.momentMajor.least, -90e3);
    EXPECT_EQ(span.momentMajor.leastAt, 3.0);
    EXPECT_EQ(span.momentMajor.greatest, 0.0);
    // w x (L - x)/2 at a quarter: 20 · 1.5 · 4.5/2 = 67.5 kN·m
    EXPECT_NEAR(span.stations.at(1).moment.y, -67.5e3, 1e-6);
}

// Two equal spans: wL²/8 over the middle support; in each the largest deflection is 0.0054161 w L⁴/EI at 0.4215 L from
// the outer support (Roark, a beam supported at one end and fixed at the other).
TEST(SpanReport, ContinuousBeamsSagBetweenTheirSupports)
{
    const double w = 40e3, L = 8.0, EI = 100e6;
    const double M = w * L * L / 8;
    const auto member = MemberOf({{0.0, L"Pinned"}, {L, L"Pinned"}, {2 * L, L"Pinned"}},
                                 {{-3 * w * L / 8, 5 * w * L / 8, 0.0, M}, {-5 * w * L / 8, 3 * w * L / 8, M, 0.0}});
    const std::vector<SpanReport> spans = MakeSpanReports(*member, Split::Major, EI);
    ASSERT_EQ(spans.size(), 2u);
    for (const SpanReport& span : spans) {
        EXPECT_NEAR(span.deflectionMajor->integrated, 0.0054161 * w * std::pow(L, 4) / EI, 1e-6);
        EXPECT_FALSE(span.deflectionMajor->isUpwards);
        EXPECT_EQ(span.momentMajor.greatest, M);
        EXPECT_NEAR(span.momentMajor.least, -9.0 * w * L * L / 128, 1e-6);
    }
    EXPECT_NEAR(spans[0].deflectionMajor->integratedAt, 0.4215 * L, 1e-3);
    EXPECT_NEAR(spans[1].deflectionMajor->integratedAt, 2 * L - 0.4215 * L, 1e-3);
    EXPECT_NEAR(spans[0].momentMajor.leastAt, 3.0 * L / 8, 1e-9);
    EXPECT_NEAR(spans[1].momentMajor.leastAt, 2 * L - 3.0 * L / 8, 1e-9);
}

// M0 at one end of a pinned beam: 0.06415 M0 L²/EI at L/3^0.5 from the other end. Hogging lifts it.
TEST(SpanReport, AHoggingEndMomentLiftsTheBeam)
{
    const double M0 = 60e3, L = 6.0, EI = 20e6;
    const auto member = MemberOf({{0.0, L"Pinned"}, {L, L"Pinned"}}, {{M0 / L, M0 / L, 0.0, M0}});
    const SpanReport span = MakeSpanReports(*member, Split::Minor, EI).at(0);
    EXPECT_EQ(span.major.pattern, "end moments");
    EXPECT_NEAR(span.deflectionMajor->integrated, M0 * L * L / (9 * std::sqrt(3.0) * EI), 1e-9);
    EXPECT_NEAR(span.deflectionMajor->integratedAt, L / std::sqrt(3.0), 1e-6);
    EXPECT_TRUE(span.deflectionMajor->isUpwards);
}

TEST(SpanReport, WhereForcesDoNotBalanceTheDeflectionIsTheLargestReading)
{
    // 5 kN·m that the shears do not ask for; the parabolas sag by 5 w L⁴/384 EI, the line hardly.
    const auto member = MemberOf({{0.0, L"Pinned"}, {6.0, L"Pinned"}}, {{-60e3, 60e3, 0.0, -5e3}});
    const SpanReport span = MakeSpanReports(*member, Split::Minor, 20e6).at(0);
    EXPECT_EQ(span.major.pattern, "not known: the forces do not balance");
    EXPECT_FALSE(span.deflectionMajor->isKnown);
    EXPECT_GE(span.deflectionMajor->integrated, 0.016875);
    EXPECT_LE(span.momentMajor.least, -90e3);
}

// Where a sub-span is divided plays no part.
TEST(SpanReport, DividingASubSpanChangesNoDeflection)
{
    const auto report = [](const DesignTest::Member& layout) {
        CodelessMember member;
        member.SetKeltrixSec(CSection(L"UB 457x191x67"));
        EXPECT_TRUE(member.SetMemberPointVec(layout.points));
        EXPECT_TRUE(member.SetSubSpanVec(layout.subSpans));
        return MakeSpanReports(member, Split::Major, {});
    };
    constexpr unsigned seed = 20260;
    std::mt19937 random(seed);
    for (int run = 0; run < 1000; ++run) {
        const DesignTest::Member whole = DesignTest::RandomMember(random);
        const std::size_t k = random() % whole.subSpans.size();
        const double s = std::uniform_real_distribution<double>(0.05, 0.95)(random);
        const std::vector<SpanReport> a = report(whole);
        const std::vector<SpanReport> b = report(DesignTest::Divided(whole, k, s));
        ASSERT_EQ(a.size(), b.size()) << "seed " << seed << ", run " << run;
        for (std::size_t i = 0; i < a.size(); ++i) {
            ASSERT_NEAR(a[i].deflectionMajor->integrated, b[i].deflectionMajor->integrated,
                        1e-9 + 1e-7 * a[i].deflectionMajor->integrated)
                << "seed " << seed << ", run " << run;
            ASSERT_NEAR(a[i].deflectionMinor->integrated, b[i].deflectionMinor->integrated,
                        1e-9 + 1e-7 * a[i].deflectionMinor->integrated)
                << "seed " << seed << ", run " << run;
        }
    }
}

TEST(SpanReport, TheSplitDecidesWhereSpansEnd)
{
    const auto flange = MidSpanLoad(L"Top flange lateral");
    EXPECT_EQ(MakeSpanReports(*flange, Split::LateralTorsional, {}).size(), 2u);
    EXPECT_EQ(MakeSpanReports(*flange, Split::Minor, {}).size(), 1u);
    EXPECT_EQ(MakeSpanReports(*flange, Split::Major, {}).size(), 1u);
    const auto whole = MidSpanLoad(L"MINV");
    EXPECT_EQ(MakeSpanReports(*whole, Split::Minor, {}).size(), 2u);
    EXPECT_EQ(MakeSpanReports(*whole, Split::Major, {}).size(), 1u);
    const auto twist = MidSpanLoad(L"TR");
    EXPECT_EQ(MakeSpanReports(*twist, Split::LateralTorsional, {}).size(), 2u);
    EXPECT_EQ(MakeSpanReports(*twist, Split::Minor, {}).size(), 1u);
    const auto support = MidSpanLoad(L"MAJV");
    EXPECT_EQ(MakeSpanReports(*support, Split::Major, {}).size(), 2u);
    EXPECT_EQ(MakeSpanReports(*support, Split::LateralTorsional, {}).size(), 1u);
}

// A hogging beam braced at the top: its free bottom flange buckles over the whole length, whatever the spans are.
TEST(SpanReport, LengthsAreThoseOfTheCompressedFlangesStretches)
{
    const auto member = MakeMember(
        {{0.0, L"Pinned"}, {3.0, L"Top flange lateral"}, {6.0, L"Pinned"}}, [](double) { return 0.0; },
        [](double) { return 100e3; });
    const std::vector<SpanReport> spans = MakeSpanReports(*member, Split::LateralTorsional, {});
    ASSERT_EQ(spans.size(), 2u);
    for (const SpanReport& span : spans) {
        ASSERT_EQ(span.lt.size(), 1u);
        EXPECT_EQ(CompressionFlangeName(span.lt[0].flange), "flange 2 (bottom)");
        EXPECT_EQ(span.lt[0].start, 0.0);
        EXPECT_EQ(span.lt[0].end, 6.0);
        EXPECT_DOUBLE_EQ(span.lt[0].length, 6.0);
        EXPECT_EQ(span.lt[0].row, "1.0L(normal)");
    }
    // The other way about the brace holds the compressed flange.
    const auto sagging = MakeMember(
        {{0.0, L"Pinned"}, {3.0, L"Top flange lateral"}, {6.0, L"Pinned"}}, [](double) { return 0.0; },
        [](double) { return -100e3; });
    EXPECT_DOUBLE_EQ(MakeSpanReports(*sagging, Split::LateralTorsional, {}).at(1).lt.at(0).start, 3.0);
    // No moment, nothing that buckles this way; a length that is given stands.
    const auto idle = MakeMember(
        {{0.0, L"Pinned"}, {6.0, L"Pinned"}}, [](double) { return 0.0; }, [](double) { return 0.0; });
    EXPECT_TRUE(MakeSpanReports(*idle, Split::LateralTorsional, {}).at(0).lt.empty());
    member->SetLengthOverride(true);
    member->SetLlt(-0.85);
    EXPECT_DOUBLE_EQ(MakeSpanReports(*member, Split::LateralTorsional, {}).at(1).lt.at(0).length, 0.85 * 6.0);
}

#ifdef KELTRIX_HOST_WITH_BS5950
// One rule, stated by spans and by check: for random members every effective length of the one is one of the other.
TEST(SpanReport, LengthsAreThoseOfTheCheck)
{
    constexpr unsigned seed = 1300;
    std::mt19937 random(seed);
    int compared = 0;
    for (int i = 0; i < 2000; ++i) {
        const DesignTest::Member made = DesignTest::RandomMember(random);
        CodelessMember codeless;
        BS5950::CSteelMemberBS5950 checked;
        Steel::CMemberResult result;
        result.EnableText(false);
        const CSection section(i % 2 == 0 ? L"UB 457x191x67" : L"UC 203x203x46");
        for (Steel::CSteelMember* member :
             {static_cast<Steel::CSteelMember*>(&codeless), static_cast<Steel::CSteelMember*>(&checked)}) {
            ASSERT_TRUE(member->SetKeltrixSec(section));
            ASSERT_TRUE(member->SetGrade(CSteelGrade(L"S275", 275e6, 410e6, 205e9, 1.0)));
            ASSERT_TRUE(member->SetMemberPointVec(made.points));
            ASSERT_TRUE(member->SetSubSpanVec(made.subSpans));
        }
        checked.SetResult(&result);
        checked.Check();
        // By start and end: the longest of the flanges that are checked.
        std::map<std::pair<double, double>, double> bySpans;
        for (const SpanReport& span : MakeSpanReports(codeless, Split::Major, {})) {
            for (const EffectiveLengthLT& lt : span.lt) {
                double& length = bySpans[{lt.start, lt.end}];
                length = std::max(length, lt.length);
            }
        }
        std::map<std::pair<double, double>, double> byCheck;
        for (const BS5950::SpanResult& span : checked.Spans()) {
            if (span.mode != BS5950::BucklingMode::LateralTorsional || span.continuous) continue;
            if (!span.lateral.compressed[0] && !span.lateral.compressed[1]) continue;
            double& length = byCheck[{span.start, span.end}];
            length = std::max(length, span.LE);
            ++compared;
        }
        EXPECT_EQ(bySpans, byCheck) << "member " << i << " of seed " << seed;
    }
    EXPECT_GT(compared, 2000);
}
#endif

TEST(SpanReport, EndsSayByWhatTheyAreHeld)
{
    const auto member = MidSpanLoad(L"F2L");
    const std::vector<SpanReport> spans = MakeSpanReports(*member, Split::LateralTorsional, {});
    ASSERT_EQ(spans.size(), 2u);
    EXPECT_EQ(spans[0].right.point, 2);
    // Flange 2 is in tension at mid-span.
    EXPECT_THAT(spans[0].right.heldBy, ElementsAre("flange 2 lateral", "tension flange lateral"));
    const auto major = MakeSpanReports(*member, Split::Major, {});
    EXPECT_THAT(major[0].left.heldBy, ElementsAre("major shear"));
}

TEST(SpanReport, ACantileverUsesTheCantileverTable)
{
    const double P = 10e3, L = 3.0;
    const auto member = MakeMember(
        {{0.0, L"Fixed"}, {1.5, L"Free"}, {L, L"Free"}}, [=](double) { return -P; },
        [=](double x) { return P * (L - x); });
    const std::vector<SpanReport> spans = MakeSpanReports(*member, Split::LateralTorsional, 60e6);
    ASSERT_EQ(spans.size(), 1u);
    ASSERT_EQ(spans[0].lt.size(), 1u);
    EXPECT_TRUE(spans[0].lt[0].cantilever);
    EXPECT_EQ(spans[0].lt[0].table, "Table 14");
    EXPECT_EQ(spans[0].lt[0].row, "d1 0.8*L");
    EXPECT_DOUBLE_EQ(spans[0].lt[0].length, 0.8 * L);
    EXPECT_THAT(spans[0].right.heldBy, ElementsAre("member end"));
    // The support at the right: the same the other way round.
    const auto mirrored = MakeMember(
        {{0.0, L"Free"}, {1.5, L"Free"}, {L, L"Fixed"}}, [=](double) { return P; }, [=](double x) { return P * x; });
    EXPECT_DOUBLE_EQ(MakeSpanReports(*mirrored, Split::LateralTorsional, {})[0].lt.at(0).length, 0.8 * L);
}

TEST(SpanReport, AnEndWithoutSupportIsATipOnlyWhereTheRestCanCarryIt)
{
    const auto none = [](double) { return 0.0; };
    const auto bent = [](double x) { return 1e3 * x; };
    const auto isCantilever = [&](const std::vector<Joint>& joints) {
        const auto member = MakeMember(joints, none, bent);
        return MakeSpanReports(*member, Split::Minor, {}).back().lt.at(0).cantilever;
    };
    EXPECT_TRUE(isCantilever({{0.0, L"Pinned"}, {4.0, L"Pinned"}, {6.0, L"Free"}})); // an overhang
    EXPECT_TRUE(isCantilever({{0.0, L"Full rotational"}, {6.0, L"Free"}}));
    EXPECT_FALSE(isCantilever({{0.0, L"Pinned"}, {6.0, L"Free"}})) << "one pin cannot carry a cantilever";
    EXPECT_FALSE(isCantilever({{0.0, L"Pinned"}, {6.0, L"Pinned"}}));
}

TEST(SpanReport, ADestabilisingLoadTakesItsColumn)
{
    const auto member = MakeMember(
        {{0.0, L"Pinned"}, {4.0, L"Free", 0.2}, {8.0, L"Pinned"}}, [](double x) { return x < 4.0 ? -20e3 : 20e3; },
        [](double x) { return -20e3 * std::fmin(x, 8.0 - x); });
    const std::vector<SpanReport> spans = MakeSpanReports(*member, Split::Minor, {});
    EXPECT_TRUE(spans[0].destabilising);
    EXPECT_EQ(spans[0].lt[0].row, "1.2L(destabilizing)");
    EXPECT_DOUBLE_EQ(spans[0].lt[0].length, 9.6);
    EXPECT_DOUBLE_EQ(spans[0].loadHeight, 0.2f);
}

TEST(SpanReport, AnEndWithoutTorsionalRestraintHasNoRow)
{
    const auto member = MakeMember(
        {{0.0, L"F1L MAJV"}, {4.0, L"Free"}, {8.0, L"Pinned"}}, [](double x) { return x < 4.0 ? -20e3 : 20e3; },
        [](double x) { return -20e3 * std::fmin(x, 8.0 - x); });
    const std::vector<SpanReport> spans = MakeSpanReports(*member, Split::Minor, {});
    EXPECT_TRUE(std::isinf(spans[0].lt[0].length));
    EXPECT_TRUE(spans[0].lt[0].nominalRejectedLeft);
    EXPECT_FALSE(spans[0].lt[0].nominalRejectedRight);
}

TEST(SpanReport, WithoutAStiffnessTheSectionGivesBoth)
{
    const auto member = MidSpanLoad();
    const std::vector<SpanReport> spans = MakeSpanReports(*member, Split::Minor, {});
    ASSERT_TRUE(spans[0].deflectionMajor && spans[0].deflectionMinor);
    EXPECT_NEAR(spans[0].deflectionMajor->EI / 205e9, 29380e-8, 1e-7);
    EXPECT_NEAR(spans[0].deflectionMinor->EI / 205e9, 1452e-8, 1e-8);
    member->SetKeltrixSec(CSection(L"unknown"));
    EXPECT_FALSE(MakeSpanReports(*member, Split::Minor, {})[0].deflectionMajor);
}

} // namespace
} // namespace Keltrix::App
