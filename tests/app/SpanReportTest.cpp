#include "SpanReport.h"

#include <cmath>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "Text.h"

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
        EXPECT_EQ(spans[0].lt.table, "Table 13");
        EXPECT_DOUBLE_EQ(spans[0].lt.length, 8.0);
        EXPECT_EQ(spans[0].lt.row, "1.0L(normal)");
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
    // 5 w L⁴ / 384 EI; chords of the parabola lie inside it by a share of (1/16)² and less.
    const double closed = 5 * w * std::pow(L, 4) / (384 * EI);
    EXPECT_LT(spans[0].deflectionMajor->integrated, closed);
    EXPECT_GT(spans[0].deflectionMajor->integrated, closed * (1 - 1.0 / 128));
    ASSERT_EQ(spans[0].stations.size(), 5u);
    EXPECT_NEAR(spans[0].stations[2].moment.y, -w * L * L / 8, 1e-6);
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
    EXPECT_TRUE(spans[0].lt.cantilever);
    EXPECT_EQ(spans[0].lt.table, "Table 14");
    EXPECT_EQ(spans[0].lt.row, "d1 0.8*L");
    EXPECT_DOUBLE_EQ(spans[0].lt.length, 0.8 * L);
    EXPECT_THAT(spans[0].right.heldBy, ElementsAre("member end"));
    // The support at the right: the same the other way round.
    const auto mirrored = MakeMember(
        {{0.0, L"Free"}, {1.5, L"Free"}, {L, L"Fixed"}}, [=](double) { return P; }, [=](double x) { return P * x; });
    EXPECT_DOUBLE_EQ(MakeSpanReports(*mirrored, Split::LateralTorsional, {})[0].lt.length, 0.8 * L);
}

TEST(SpanReport, AnEndWithoutSupportIsATipOnlyWhereTheRestCanCarryIt)
{
    const auto none = [](double) { return 0.0; };
    const auto bent = [](double x) { return 1e3 * x; };
    const auto isCantilever = [&](const std::vector<Joint>& joints) {
        const auto member = MakeMember(joints, none, bent);
        return MakeSpanReports(*member, Split::Minor, {}).back().lt.cantilever;
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
    EXPECT_EQ(spans[0].lt.row, "1.2L(destabilizing)");
    EXPECT_DOUBLE_EQ(spans[0].lt.length, 9.6);
    EXPECT_DOUBLE_EQ(spans[0].loadHeight, 0.2f);
}

TEST(SpanReport, AnEndWithoutTorsionalRestraintHasNoRow)
{
    const auto member = MakeMember(
        {{0.0, L"F1L MAJV"}, {4.0, L"Free"}, {8.0, L"Pinned"}}, [](double x) { return x < 4.0 ? -20e3 : 20e3; },
        [](double x) { return -20e3 * std::fmin(x, 8.0 - x); });
    const std::vector<SpanReport> spans = MakeSpanReports(*member, Split::Minor, {});
    EXPECT_TRUE(std::isinf(spans[0].lt.length));
    EXPECT_TRUE(spans[0].lt.nominalRejectedLeft);
    EXPECT_FALSE(spans[0].lt.nominalRejectedRight);
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
