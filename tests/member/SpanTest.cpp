// Spans: identity, places, geometry, restraints of ends and of the whole, extreme and interpolated forces.

#include "member/LayoutSupport.h"

#include <algorithm>
#include <cstdint>
#include <random>
#include <type_traits>

#include <gtest/gtest.h>

using namespace LayoutSupport;
using namespace Keltrix::Steel;
using Keltrix::Data::BOT_FLANGE;
using Keltrix::Data::SHR_CENTRE;
using Keltrix::Data::TOP_FLANGE;

namespace {

struct Forces {
    Vector force;
    Vector moment;
    bool useSign = false;
    bool has = false;
};

Forces ForcesOf(const CRestraint& restraint)
{
    Forces forces;
    forces.has = restraint.GetForcesAndMoments(forces.force, forces.moment, forces.useSign);
    return forces;
}

/// Restraint of one sub-span [0, 1] with these major-axis moments at its ends.
Forces ContinuousOf(const std::vector<double>& myy)
{
    Layout layout(myy.size() == 2 ? std::vector<double>{0.0, 1.0} : std::vector<double>{0.0, 1.0, 2.0});
    layout.Myy(myy);
    return ForcesOf(layout.Whole().ContinuousRestraint());
}

Layout Numbered()
{
    // Sub-span i has forces 100 i + 1, 2, 3 at its left and 100 i + 4, 5, 6 at its right end, moments 1000 more.
    Layout layout({0.0, 1.0, 3.0, 6.0, 10.0});
    for (std::size_t i = 0; i < layout.subSpans.size(); ++i) {
        const double base = 100.0 * static_cast<double>(i);
        layout.subSpans[i].SetForcesAll({base + 1, base + 2, base + 3}, {base + 4, base + 5, base + 6});
        layout.subSpans[i].SetMomentsAll({base + 1001, base + 1002, base + 1003},
                                         {base + 1004, base + 1005, base + 1006});
    }
    return layout;
}

void SetPointHeight(Layout& layout, std::size_t i, double height, Keltrix::Data::LoadPos ref = SHR_CENTRE)
{
    layout.points[i].SetRestraint(CRestraint(0, ref, height));
}

void SetSubSpanHeight(Layout& layout, std::size_t i, double height, Keltrix::Data::LoadPos ref = SHR_CENTRE)
{
    layout.subSpans[i].SetRestraint(CRestraint(0, ref, height));
}

#if defined(__x86_64__) || defined(__aarch64__)
/// Under the Itanium C++ ABI: whether a pointer to a member function names a virtual one.
template <class F>
bool IsVirtual(F function)
{
    std::array<std::intptr_t, 2> words{};
    static_assert(sizeof function == sizeof words);
    std::memcpy(words.data(), &function, sizeof words);
#if defined(__aarch64__)
    return (words[1] & 1) != 0;
#else
    return (words[0] & 1) != 0;
#endif
}
#endif

} // namespace

// Identity and layout

static_assert(std::is_polymorphic_v<CSpan> && std::has_virtual_destructor_v<CSpan>);
static_assert(sizeof(CSpan) == 3 * sizeof(void*) + 2 * sizeof(std::int32_t),
              "table pointer, two indices, two pointers");

TEST(SpanLayout, FieldsStandInTheirOrderBehindTheTablePointer)
{
    const Layout layout({0.0, 1.0, 2.0});
    const CSpan span = layout.Span(1, 2);
    const auto* bytes = reinterpret_cast<const unsigned char*>(&span);
    std::int32_t left = 0;
    std::int32_t right = 0;
    const void* points = nullptr;
    const void* subSpans = nullptr;
    std::memcpy(&left, bytes + sizeof(void*), sizeof left);
    std::memcpy(&right, bytes + sizeof(void*) + 4, sizeof right);
    std::memcpy(&points, bytes + sizeof(void*) + 8, sizeof points);
    std::memcpy(&subSpans, bytes + 2 * sizeof(void*) + 8, sizeof subSpans);
    EXPECT_EQ(left, 1);
    EXPECT_EQ(right, 2);
    EXPECT_EQ(points, &layout.points);
    EXPECT_EQ(subSpans, &layout.subSpans);
}

#if defined(__x86_64__) || defined(__aarch64__)
TEST(SpanLayout, OnlyTheDestructorIsVirtual)
{
    EXPECT_FALSE(IsVirtual(&CSpan::SetNull));
    EXPECT_FALSE(IsVirtual(&CSpan::IsNull));
    EXPECT_FALSE(IsVirtual(&CSpan::IsValid));
    EXPECT_FALSE(IsVirtual(&CSpan::SetCMPIndexLeft));
    EXPECT_FALSE(IsVirtual(&CSpan::SetCMPIndexRight));
    EXPECT_FALSE(IsVirtual(&CSpan::GetCMPIndexLeft));
    EXPECT_FALSE(IsVirtual(&CSpan::GetCMPIndexRight));
    EXPECT_FALSE(IsVirtual(&CSpan::GetCSSIndexLeft));
    EXPECT_FALSE(IsVirtual(&CSpan::GetCSSIndexRight));
    EXPECT_FALSE(IsVirtual(&CSpan::NumSubSpans));
    EXPECT_FALSE(IsVirtual(&CSpan::PosLeft));
    EXPECT_FALSE(IsVirtual(&CSpan::PosRight));
    EXPECT_FALSE(IsVirtual(&CSpan::Length));
    EXPECT_FALSE(IsVirtual(&CSpan::InterpolatePosition));
    EXPECT_FALSE(IsVirtual(&CSpan::IsLEndOfMember));
    EXPECT_FALSE(IsVirtual(&CSpan::IsREndOfMember));
    EXPECT_FALSE(IsVirtual(&CSpan::GetString));
    EXPECT_FALSE(IsVirtual(&CSpan::RestraintEndL));
    EXPECT_FALSE(IsVirtual(&CSpan::RestraintEndR));
    EXPECT_FALSE(IsVirtual(&CSpan::IsDestabilized));
    EXPECT_FALSE(IsVirtual(&CSpan::ContinuousRestraint));
    EXPECT_FALSE(IsVirtual(&CSpan::MaxForces));
    EXPECT_FALSE(IsVirtual(&CSpan::MinForces));
    EXPECT_FALSE(IsVirtual(&CSpan::InterpolateForces));
    EXPECT_FALSE(IsVirtual(&CSpan::InterpolateMoments));
    EXPECT_FALSE(IsVirtual(&CSpan::IsMinorAxisLoaded));
    EXPECT_FALSE(IsVirtual(&CSpan::IsMajorAxisLoaded));
    EXPECT_FALSE(IsVirtual(&CSpan::IsLoaded));
    EXPECT_FALSE(IsVirtual(&CSpan::IsLoadedWithPointLoad));
    EXPECT_FALSE(IsVirtual(&CSpan::IsLeftEndPtLoadOnly));
    EXPECT_FALSE(IsVirtual(&CSpan::IsRightEndPtLoadOnly));
    EXPECT_FALSE(IsVirtual(&CSpan::IsLeftEndMomentLoadOnly));
    EXPECT_FALSE(IsVirtual(&CSpan::IsRightEndMomentLoadOnly));
    EXPECT_FALSE(IsVirtual(&CSpan::IsLeftEndMomentLoaded));
    EXPECT_FALSE(IsVirtual(&CSpan::IsRightEndMomentLoaded));
    EXPECT_FALSE(IsVirtual(&CSpan::IsLoadedWithCentrePointLoad));
    EXPECT_FALSE(IsVirtual(&CSpan::IsLoadedWithUDL));
    EXPECT_FALSE(IsVirtual(&CSpan::MaxDispXX));
    EXPECT_FALSE(IsVirtual(&CSpan::MaxDispYY));
    EXPECT_FALSE(IsVirtual(&CSpan::DispXX));
    EXPECT_FALSE(IsVirtual(&CSpan::DispYY));
}
#endif

TEST(Span, IsNullWhenBothPlacesAreZero)
{
    const Layout layout({0.0, 1.0, 2.0});
    EXPECT_TRUE(layout.Span(0, 0).IsNull());
    EXPECT_FALSE(layout.Span(0, 1).IsNull());
    EXPECT_FALSE(layout.Span(1, 1).IsNull());
    EXPECT_FALSE(layout.Span(1, 0).IsNull());
    CSpan span = layout.Span(1, 2);
    span.SetNull();
    EXPECT_TRUE(span.IsNull());
    EXPECT_EQ(span.GetCMPIndexLeft(), 0);
    EXPECT_EQ(span.GetCMPIndexRight(), 0);
}

TEST(Span, IsValidBetweenPointsThatExist)
{
    const Layout layout({0.0, 1.0, 2.0});
    EXPECT_TRUE(layout.Span(0, 2).IsValid());
    EXPECT_TRUE(layout.Span(1, 1).IsValid());
    EXPECT_TRUE(layout.Span(0, 0).IsValid()) << "null, but its point exists";
    EXPECT_TRUE(layout.Span(2, 2).IsValid());
    EXPECT_FALSE(layout.Span(0, 3).IsValid());
    EXPECT_FALSE(layout.Span(3, 3).IsValid());
    EXPECT_FALSE(layout.Span(2, 1).IsValid());
    EXPECT_FALSE(layout.Span(-1, 2).IsValid()) << "compared as unsigned, -1 is the largest";
    EXPECT_FALSE(layout.Span(0, 2147483647).IsValid());
    const std::vector<CMemberPoint> noPoints;
    EXPECT_FALSE(CSpan(&noPoints, &layout.subSpans, 0, 0).IsValid());
}

TEST(Span, IsValidNeedsBothVectorsButDoesNotCountSubSpans)
{
    const Layout layout({0.0, 1.0, 2.0});
    const std::vector<CSubSpan> none;
    EXPECT_FALSE(CSpan(nullptr, &layout.subSpans, 0, 1).IsValid());
    EXPECT_FALSE(CSpan(&layout.points, nullptr, 0, 1).IsValid());
    EXPECT_FALSE(CSpan(nullptr, nullptr, 0, 0).IsValid());
    EXPECT_TRUE(CSpan(&layout.points, &none, 0, 2).IsValid());
}

TEST(Span, EqualityIsThatOfPlacesAndVectorsByAddress)
{
    const Layout layout({0.0, 1.0, 2.0});
    const Layout sameContent({0.0, 1.0, 2.0});
    EXPECT_TRUE(layout.Span(0, 2) == layout.Span(0, 2));
    EXPECT_FALSE(layout.Span(0, 2) != layout.Span(0, 2));
    EXPECT_FALSE(layout.Span(0, 2) == layout.Span(1, 2));
    EXPECT_FALSE(layout.Span(0, 2) == layout.Span(0, 1));
    EXPECT_TRUE(layout.Span(0, 2) != layout.Span(0, 1));
    EXPECT_FALSE(layout.Span(0, 2) == sameContent.Span(0, 2));
    EXPECT_FALSE(layout.Span(0, 2) == CSpan(&sameContent.points, &layout.subSpans, 0, 2));
    EXPECT_FALSE(layout.Span(0, 2) == CSpan(&layout.points, &sameContent.subSpans, 0, 2));
}

TEST(Span, CopiesShareTheVectors)
{
    Layout layout({0.0, 1.0, 2.0});
    const CSpan span = layout.Span(0, 2);
    const CSpan copy(span);
    CSpan assigned = layout.Span(1, 1);
    assigned = span;
    const CSpan& self = assigned;
    assigned = self;
    EXPECT_TRUE(copy == span);
    EXPECT_TRUE(assigned == span);
    layout.points[2].SetPos(5.0);
    EXPECT_EQ(copy.Length(), 5.0);
    EXPECT_EQ(assigned.Length(), 5.0);
}

TEST(Span, PlacesAreSetUnlessNegative)
{
    const Layout layout({0.0, 1.0, 2.0});
    CSpan span = layout.Span(1, 2);
    span.SetCMPIndexLeft(-1);
    span.SetCMPIndexRight(-7);
    EXPECT_EQ(span.GetCMPIndexLeft(), 1);
    EXPECT_EQ(span.GetCMPIndexRight(), 2);
    span.SetCMPIndexLeft(0);
    span.SetCMPIndexRight(9);
    EXPECT_EQ(span.GetCMPIndexLeft(), 0);
    EXPECT_EQ(span.GetCMPIndexRight(), 9) << "not checked against the vectors";
    span.SetCMPIndexRight(0);
    EXPECT_EQ(span.GetCMPIndexRight(), 0);
}

TEST(Span, SubSpansRunFromLeftToOneBeforeRight)
{
    const Layout layout({0.0, 1.0, 3.0, 6.0, 10.0});
    const CSpan span = layout.Span(1, 4);
    EXPECT_EQ(span.GetCSSIndexLeft(), 1);
    EXPECT_EQ(span.GetCSSIndexRight(), 3);
    EXPECT_EQ(span.NumSubSpans(), 3);
    EXPECT_EQ(layout.Span(2, 2).NumSubSpans(), 0);
    EXPECT_EQ(layout.Span(2, 2).GetCSSIndexRight(), 1);
    EXPECT_EQ(layout.Span(2, 1).NumSubSpans(), -1);
}

TEST(Span, PositionsAndLength)
{
    const Layout layout({0.0, 1.0, 3.0, 6.0, 10.0});
    const CSpan span = layout.Span(1, 3);
    EXPECT_EQ(span.PosLeft(), 1.0);
    EXPECT_EQ(span.PosRight(), 6.0);
    EXPECT_EQ(span.Length(), 5.0);
    EXPECT_EQ(span.InterpolatePosition(0.0), 1.0);
    EXPECT_EQ(span.InterpolatePosition(1.0), 6.0);
    EXPECT_EQ(span.InterpolatePosition(0.5), 3.5);
    EXPECT_EQ(span.InterpolatePosition(2.0), 11.0) << "not clamped";
    EXPECT_EQ(span.InterpolatePosition(-1.0), -4.0);
    // (1 - t) a + t b, not a + t (b - a): at t = 0.1 from 0.3 to 0.9 the two differ in the last place.
    const Layout thirds({0.3, 0.9});
    EXPECT_EQ(thirds.Whole().InterpolatePosition(0.1), (1.0 - 0.1) * 0.3 + 0.1 * 0.9);
}

TEST(Span, EndsOfTheMember)
{
    const Layout layout({0.0, 1.0, 2.0});
    EXPECT_TRUE(layout.Span(0, 2).IsLEndOfMember());
    EXPECT_TRUE(layout.Span(0, 2).IsREndOfMember());
    EXPECT_TRUE(layout.Span(0, 1).IsLEndOfMember());
    EXPECT_FALSE(layout.Span(0, 1).IsREndOfMember());
    EXPECT_FALSE(layout.Span(1, 2).IsLEndOfMember());
    EXPECT_TRUE(layout.Span(1, 2).IsREndOfMember());
    EXPECT_FALSE(layout.Span(0, 0).IsLEndOfMember()) << "a null span is no end";
    EXPECT_FALSE(layout.Span(0, 0).IsREndOfMember());
    const Layout single({0.0});
    EXPECT_FALSE(single.Span(0, 0).IsREndOfMember()) << "not even where the member has one point";
}

TEST(Span, TextGivesBothPositionsAndTheLength)
{
    const Layout layout({0.0, 1.0, 3.25});
    const CDesFormat fmt;
    EXPECT_EQ(Utf8(layout.Span(1, 2).GetString(fmt)),
              Utf8(fmt.Length(1.0)) + " to " + Utf8(fmt.Length(3.25)) + " = " + Utf8(fmt.Length(2.25)));
    EXPECT_EQ(Utf8(layout.Span(1, 2).GetString(fmt)), "1 m to 3.25 m = 2.25 m");
}

// Restraints

TEST(SpanEndRestraint, IsThePointsWithTheForcesOfTheSubSpanEnd)
{
    Layout layout = Numbered();
    CRestraint left(0x8043, TOP_FLANGE, 0.3);
    left.SetForcesAndMoments({9.0, 9.0, 9.0}, {9.0, 9.0, 9.0}, false);
    layout.points[1].SetRestraint(left);
    layout.points[3].SetRestraint(CRestraint(0x2, BOT_FLANGE, -0.2));
    layout.subSpans[1].SetRestraint(CRestraint(0x40000, SHR_CENTRE, 7.0));
    layout.subSpans[2].SetRestraint(CRestraint(0x40000, SHR_CENTRE, 7.0));

    // Span from point 1 to point 3: sub-spans 1 and 2.
    CRestraint expected(0x8043, TOP_FLANGE, 0.3);
    expected.SetForcesAndMoments({101.0, 102.0, 103.0}, {1101.0, 1102.0, 1103.0}, true);
    EXPECT_TRUE(Identical(layout.Span(1, 3).RestraintEndL(), expected)) << "the sign is used, whatever the point says";
    expected = CRestraint(0x2, BOT_FLANGE, -0.2);
    expected.SetForcesAndMoments({204.0, 205.0, 206.0}, {1204.0, 1205.0, 1206.0}, true);
    EXPECT_TRUE(Identical(layout.Span(1, 3).RestraintEndR(), expected));
}

TEST(SpanDestabilized, ByAnyPointOrSubSpanOfTheSpan)
{
    for (int i = 0; i <= 4; ++i) {
        Layout layout({0.0, 1.0, 2.0, 3.0, 4.0});
        SetPointHeight(layout, static_cast<std::size_t>(i), 1e-300);
        EXPECT_EQ(layout.Span(1, 3).IsDestabilized(), i >= 1 && i <= 3) << "point " << i;
    }
    for (int i = 0; i <= 3; ++i) {
        Layout layout({0.0, 1.0, 2.0, 3.0, 4.0});
        SetSubSpanHeight(layout, static_cast<std::size_t>(i), 0.1);
        EXPECT_EQ(layout.Span(1, 3).IsDestabilized(), i >= 1 && i <= 2) << "sub-span " << i;
    }
}

TEST(SpanDestabilized, NotByZeroOrNegativeHeights)
{
    Layout layout({0.0, 1.0, 2.0});
    for (std::size_t i = 0; i < 3; ++i)
        SetPointHeight(layout, i, i == 1 ? 0.0 : -0.4);
    for (std::size_t i = 0; i < 2; ++i)
        SetSubSpanHeight(layout, i, i == 1 ? -0.0 : -0.4);
    EXPECT_FALSE(layout.Whole().IsDestabilized());
    EXPECT_FALSE(layout.Span(1, 1).IsDestabilized());
    SetPointHeight(layout, 1, 0.1);
    EXPECT_TRUE(layout.Span(1, 1).IsDestabilized()) << "a span without sub-spans has a point";
}

TEST(SpanContinuousRestraint, BitsAreThoseOfTheFirstAndTheLastSubSpan)
{
    // Sub-spans in between take no part: required. 0x43 & 0x42 = 0x42 although the middle one is free.
    Layout layout({0.0, 1.0, 2.0, 3.0});
    layout.subSpans[0].SetRestraint(CRestraint(0x8043, SHR_CENTRE, 0.0));
    layout.subSpans[1].SetRestraint(CRestraint(0x0, SHR_CENTRE, 0.0));
    layout.subSpans[2].SetRestraint(CRestraint(0x8042, SHR_CENTRE, 0.0));
    EXPECT_EQ(layout.Whole().ContinuousRestraint().RestFlag(), 0x8042);
    EXPECT_EQ(layout.Span(0, 2).ContinuousRestraint().RestFlag(), 0x0);
    EXPECT_EQ(layout.Span(0, 1).ContinuousRestraint().RestFlag(), 0x8043) << "first and last are the same one";
    EXPECT_EQ(layout.Span(2, 3).ContinuousRestraint().RestFlag(), 0x8042);
    // The bits themselves, not their closures: 0x3 and 0x600 close to the same set but have no bit in common.
    layout.subSpans[0].SetRestraint(CRestraint(0x3, SHR_CENTRE, 0.0));
    layout.subSpans[2].SetRestraint(CRestraint(0x600, SHR_CENTRE, 0.0));
    EXPECT_EQ(layout.Whole().ContinuousRestraint().RestFlag(), 0x0);
}

TEST(SpanContinuousRestraint, ForcesAreTheMeanOfTheSubSpansMeans)
{
    // Sub-spans of lengths 2 and 3 count alike. Their means: 102.5 and 202.5 (x), and so on; mean of both 152.5.
    const Layout layout = Numbered();
    const Forces forces = ForcesOf(layout.Span(1, 3).ContinuousRestraint());
    EXPECT_TRUE(forces.has);
    EXPECT_EQ(Shown{forces.force}, Shown({152.5, 153.5, 154.5}));
    EXPECT_EQ(Shown{forces.moment}, Shown({1152.5, 1153.5, 1154.5}));
}

TEST(SpanContinuousRestraint, ReversalOfTheMajorMomentTurnsTheSignOff)
{
    EXPECT_FALSE(ContinuousOf({10.0, -10.0}).useSign);
    EXPECT_TRUE(ContinuousOf({10.0, -0.5}).useSign) << "tolerance 1.0 at small moments";
    EXPECT_TRUE(ContinuousOf({500.0, -4.0}).useSign) << "tolerance 1 % of 500";
    EXPECT_TRUE(ContinuousOf({4.0, -500.0}).useSign);
    EXPECT_TRUE(ContinuousOf({10.0, 20.0}).useSign);
    EXPECT_TRUE(ContinuousOf({-10.0, -20.0}).useSign);
    EXPECT_TRUE(ContinuousOf({0.0, 0.0}).useSign);
    for (const auto& moments : {std::vector<double>{10.0, -10.0}, {500.0, -4.0}})
        EXPECT_TRUE(ContinuousOf(moments).has);
}

TEST(SpanContinuousRestraint, ReversalCountsAtExactlyTheTolerance)
{
    EXPECT_FALSE(ContinuousOf({10.0, -1.0}).useSign) << "-1.0 is at the tolerance 1.0";
    EXPECT_FALSE(ContinuousOf({1.0, -10.0}).useSign);
    EXPECT_FALSE(ContinuousOf({500.0, -5.0}).useSign) << "-5.0 is at the tolerance 0.01 x 500";
    EXPECT_FALSE(ContinuousOf({5.0, -500.0}).useSign);
    EXPECT_TRUE(ContinuousOf({500.0, std::nextafter(-5.0, 0.0)}).useSign);
    EXPECT_TRUE(ContinuousOf({10.0, std::nextafter(-1.0, 0.0)}).useSign);
    EXPECT_FALSE(ContinuousOf({1.0, -1.0}).useSign);
}

TEST(SpanContinuousRestraint, ReversalIsSoughtAtBothEndsOfEverySubSpan)
{
    EXPECT_FALSE(ContinuousOf({0.0, 0.0, 30.0, -30.0}).useSign);
    EXPECT_FALSE(ContinuousOf({30.0, 0.0, 0.0, -30.0}).useSign);
    EXPECT_FALSE(ContinuousOf({0.0, -30.0, 30.0, 0.0}).useSign);
    // The minor-axis moment takes no part.
    Layout minor({0.0, 1.0});
    minor.Mzz({30.0, -30.0});
    EXPECT_TRUE(ForcesOf(minor.Whole().ContinuousRestraint()).useSign);
    // Nor do sub-spans outside the span.
    Layout outside({0.0, 1.0, 2.0, 3.0});
    outside.Myy({-90.0, -90.0, 50.0, 60.0, -90.0, -90.0});
    EXPECT_TRUE(ForcesOf(outside.Span(1, 2).ContinuousRestraint()).useSign);
    EXPECT_FALSE(ForcesOf(outside.Span(0, 2).ContinuousRestraint()).useSign);
}

TEST(SpanContinuousRestraint, LoadHeightIsTheLargestInSinglePrecision)
{
    Layout layout({0.0, 1.0, 2.0});
    SetPointHeight(layout, 1, 0.1, TOP_FLANGE);
    const CRestraint restraint = layout.Whole().ContinuousRestraint();
    EXPECT_EQ(restraint.LoadHeight(), static_cast<double>(0.1F));
    EXPECT_NE(restraint.LoadHeight(), 0.1);
    EXPECT_EQ(restraint.RefLoadHeight(), TOP_FLANGE);
    EXPECT_TRUE(restraint.IsDestabilized());
}

TEST(SpanContinuousRestraint, LargestHeightIsByMagnitudeAndTiesKeepTheEarlier)
{
    struct Row {
        std::array<double, 3> points;
        std::array<double, 2> subSpans;
        double height;
        int place; // 0 to 2 a point, 3 and 4 a sub-span
    };
    for (const Row& row :
         {Row{{0.0, 0.0, 0.0}, {0.0, 0.0}, 0.0, 0}, Row{{0.25, -0.5, 0.25}, {0.0, 0.0}, -0.5, 1},
          Row{{0.5, -0.5, 0.5}, {-0.5, 0.5}, 0.5, 0}, Row{{-0.5, 0.5, 0.5}, {0.5, 0.5}, -0.5, 0},
          Row{{0.0, 0.25, -0.25}, {0.25, 0.25}, 0.25, 1}, Row{{0.0, 0.25, 0.0}, {-0.75, 0.75}, -0.75, 3},
          Row{{0.0, 0.25, 0.0}, {0.5, -0.75}, -0.75, 4}, Row{{0.0, 0.0, 1.0}, {0.5, 0.75}, 1.0, 2}}) {
        Layout layout({0.0, 1.0, 2.0});
        // The reference tells which place was chosen.
        for (std::size_t i = 0; i < 3; ++i)
            SetPointHeight(layout, i, row.points[i], static_cast<Keltrix::Data::LoadPos>(10 + i));
        for (std::size_t i = 0; i < 2; ++i)
            SetSubSpanHeight(layout, i, row.subSpans[i], static_cast<Keltrix::Data::LoadPos>(13 + i));
        const CRestraint restraint = layout.Whole().ContinuousRestraint();
        EXPECT_EQ(restraint.LoadHeight(), row.height) << "place " << row.place;
        EXPECT_EQ(static_cast<int>(restraint.RefLoadHeight()) - 10, row.place) << "height " << row.height;
    }
}

TEST(SpanContinuousRestraint, HeightsAreComparedBeforeTheyAreRounded)
{
    // Both round to the same single-precision number; the later one is larger by one unit in double precision.
    Layout layout({0.0, 1.0});
    SetPointHeight(layout, 0, 0.1, TOP_FLANGE);
    SetPointHeight(layout, 1, std::nextafter(0.1, 1.0), BOT_FLANGE);
    EXPECT_EQ(layout.Whole().ContinuousRestraint().RefLoadHeight(), BOT_FLANGE);
}

TEST(SpanContinuousRestraint, HeightsOutsideTheSpanTakeNoPart)
{
    Layout layout({0.0, 1.0, 2.0, 3.0, 4.0});
    SetPointHeight(layout, 0, 9.0);
    SetPointHeight(layout, 4, 9.0);
    SetSubSpanHeight(layout, 0, 9.0);
    SetSubSpanHeight(layout, 3, 9.0);
    SetPointHeight(layout, 3, -0.5, BOT_FLANGE);
    EXPECT_EQ(layout.Span(1, 3).ContinuousRestraint().LoadHeight(), -0.5) << "the right end point takes part";
}

TEST(SpanContinuousRestraint, WithoutSubSpansHasNoBitsAndNotANumberForces)
{
    Layout layout = Numbered();
    layout.subSpans[2].SetRestraint(CRestraint(0x43, SHR_CENTRE, 5.0));
    SetPointHeight(layout, 2, 0.25, BOT_FLANGE);
    layout.Myy({0, 0, 0, 0, 40.0, -40.0, 0, 0});
    const CRestraint restraint = layout.Span(2, 2).ContinuousRestraint();
    EXPECT_EQ(restraint.RestFlag(), 0);
    const Forces forces = ForcesOf(restraint);
    EXPECT_TRUE(forces.has);
    EXPECT_EQ(Shown{forces.force}, Shown({notANumber, notANumber, notANumber}));
    EXPECT_EQ(Shown{forces.moment}, Shown({notANumber, notANumber, notANumber}));
    EXPECT_FALSE(forces.useSign) << "the extremes are then those of the sub-span at the left place";
    EXPECT_EQ(restraint.LoadHeight(), 0.25) << "of the only point";
    EXPECT_EQ(restraint.RefLoadHeight(), BOT_FLANGE);
}

TEST(SpanContinuousRestraint, RandomSpansAgreeWithTheRulesSpeltOut)
{
    constexpr unsigned int seed = 60606;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::vector<double> heights{0.0, 0.1, -0.1, 0.25, -0.25, 0.3};
    const std::vector<double> moments{0.0, 1.0, -1.0, 0.5, -0.5, 100.0, -100.0, 5.0, -5.0, 500.0, 33.3, -0.9999};
    int reversals = 0;
    for (int run = 0; run < 3000; ++run) {
        const int n = 1 + static_cast<int>(random() % 6);
        const int before = static_cast<int>(random() % 3);
        std::vector<double> positions;
        for (int i = 0; i < before + n + 2; ++i)
            positions.push_back(0.5 * i + 0.25);
        Layout layout(positions);
        for (std::size_t i = 0; i < layout.points.size(); ++i)
            SetPointHeight(layout, i, heights[random() % heights.size()],
                           static_cast<Keltrix::Data::LoadPos>(random() % 3));
        for (CSubSpan& subSpan : layout.subSpans) {
            const auto vector = [&] {
                const double x = static_cast<double>(random() % 1000) * 0.37 - 100.0;
                const double y = moments[random() % moments.size()];
                return Vector(x, y, static_cast<double>(random() % 1000) * 0.11);
            };
            const Vector fl = vector();
            const Vector fr = vector();
            const Vector ml = vector();
            subSpan.SetForcesAll(fl, fr);
            subSpan.SetMomentsAll(ml, vector());
            subSpan.SetRestraint(CRestraint(static_cast<int>(random()),
                                            static_cast<Keltrix::Data::LoadPos>(random() % 3),
                                            heights[random() % heights.size()]));
        }

        const auto left = static_cast<std::size_t>(before);
        const auto right = static_cast<std::size_t>(before + n);
        Vector force = zero;
        Vector moment = zero;
        double largest = -infinity;
        double smallest = infinity;
        const auto addMean = [](Vector& sum, const Vector& a, const Vector& b) {
            sum = Vector(sum.x + (a.x + b.x) * 0.5, sum.y + (a.y + b.y) * 0.5, sum.z + (a.z + b.z) * 0.5);
        };
        for (std::size_t i = left; i < right; ++i) {
            const CSubSpan& s = layout.subSpans[i];
            addMean(force, s.GetForcesLeft(), s.GetForcesRight());
            addMean(moment, s.GetMomentsLeft(), s.GetMomentsRight());
            for (const double m : {s.GetMomentsLeft().y, s.GetMomentsRight().y}) {
                largest = std::max(largest, m);
                smallest = std::min(smallest, m);
            }
        }
        const double tolerance = std::max(1.0, 0.01 * std::max(std::abs(largest), std::abs(smallest)));
        const bool reverses = largest >= tolerance && smallest <= -tolerance;
        reversals += reverses;
        std::vector<CRestraint> candidates;
        for (std::size_t i = left; i <= right; ++i)
            candidates.push_back(layout.points[i].GetRestraint());
        for (std::size_t i = left; i < right; ++i)
            candidates.push_back(layout.subSpans[i].GetRestraint());
        const auto chosen = std::max_element(candidates.begin(), candidates.end(), [](const auto& a, const auto& b) {
            return std::abs(a.LoadHeight()) < std::abs(b.LoadHeight());
        }); // the first of the largest

        CRestraint expected(layout.subSpans[left].GetRestraint().RestFlag() &
                                layout.subSpans[right - 1].GetRestraint().RestFlag(),
                            chosen->RefLoadHeight(), static_cast<double>(static_cast<float>(chosen->LoadHeight())));
        const double count = static_cast<double>(n);
        expected.SetForcesAndMoments({force.x / count, force.y / count, force.z / count},
                                     {moment.x / count, moment.y / count, moment.z / count}, !reverses);
        const CRestraint got = layout.Span(before, before + n).ContinuousRestraint();
        ASSERT_TRUE(Identical(got, expected))
            << "run " << run << ", span " << before << " to " << before + n << ", " << layout.Describe() << "\n  bits "
            << got.RestFlag() << " expected " << expected.RestFlag() << ", height " << got.LoadHeight() << " expected "
            << expected.LoadHeight() << ", forces " << Shown{ForcesOf(got).force} << " expected "
            << Shown{ForcesOf(expected).force} << ", moments " << Shown{ForcesOf(got).moment} << " expected "
            << Shown{ForcesOf(expected).moment};
    }
    EXPECT_GT(reversals, 100);
    EXPECT_LT(reversals, 2900);
}

// Forces

TEST(SpanExtremes, AreTakenEndByEndOverTheSubSpansOfTheSpan)
{
    Layout layout({0.0, 1.0, 2.0, 3.0, 4.0});
    layout.Fz({99, 99, 1, -5, 3, -7, -99, -99}).Myy({99, 99, -2, 8, 4, -6, -99, -99});
    for (CSubSpan& subSpan : layout.subSpans)
        subSpan.SetRestraint(CRestraint(0x43, TOP_FLANGE, 0.3));
    const CSubSpan max = layout.Span(1, 3).MaxForces();
    EXPECT_EQ(Shown{max.GetForcesLeft()}, Shown({0.0, 0.0, 3.0}));
    EXPECT_EQ(Shown{max.GetForcesRight()}, Shown({0.0, 0.0, -5.0}));
    EXPECT_EQ(Shown{max.GetMomentsLeft()}, Shown({0.0, 4.0, 0.0}));
    EXPECT_EQ(Shown{max.GetMomentsRight()}, Shown({0.0, 8.0, 0.0}));
    const CSubSpan min = layout.Span(1, 3).MinForces();
    EXPECT_EQ(Shown{min.GetForcesLeft()}, Shown({0.0, 0.0, 1.0}));
    EXPECT_EQ(Shown{min.GetForcesRight()}, Shown({0.0, 0.0, -7.0}));
    EXPECT_EQ(Shown{min.GetMomentsLeft()}, Shown({0.0, -2.0, 0.0}));
    EXPECT_EQ(Shown{min.GetMomentsRight()}, Shown({0.0, -6.0, 0.0}));
    for (const CSubSpan& extreme : {max, min}) {
        EXPECT_EQ(extreme.Get1Index(), 1) << "an envelope has no number of its own";
        EXPECT_TRUE(Identical(extreme.GetRestraint(), CRestraint()));
    }
}

TEST(SpanExtremes, OfOneSubSpanAreAnEnvelopeToo)
{
    Layout layout = Numbered();
    layout.subSpans[2].SetRestraint(CRestraint(0x43, TOP_FLANGE, 0.3));
    const CSubSpan max = layout.Span(2, 3).MaxForces();
    EXPECT_EQ(Shown{max.GetForcesLeft()}, Shown({201.0, 202.0, 203.0}));
    EXPECT_EQ(max.Get1Index(), 1) << "the sub-span was put together with itself";
    EXPECT_TRUE(Identical(max.GetRestraint(), CRestraint()));
}

TEST(SpanExtremes, WithoutSubSpansAreTheSubSpanAtTheLeftPlace)
{
    Layout layout = Numbered();
    layout.subSpans[2].SetRestraint(CRestraint(0x43, TOP_FLANGE, 0.3));
    EXPECT_TRUE(layout.Span(2, 2).MaxForces() == layout.subSpans[2]);
    EXPECT_TRUE(layout.Span(2, 2).MinForces() == layout.subSpans[2]);
    EXPECT_EQ(layout.Span(2, 2).MinForces().Get1Index(), 3);
}

TEST(SpanExtremes, AtTheLastPointThereIsNoSubSpan)
{
    const Layout layout = Numbered();
    const CSpan span = layout.Span(4, 4);
    EXPECT_EQ(Shown{span.MaxForces().GetForcesLeft()}, Shown(zero));
    EXPECT_EQ(Shown{span.MinForces().GetMomentsRight()}, Shown(zero));
    EXPECT_EQ(span.ContinuousRestraint().RestFlag(), 0);
}

TEST(SpanExtremes, NotANumberInTheFirstSubSpanStaysAndLaterIsPassedOver)
{
    Layout layout({0.0, 1.0, 2.0});
    layout.Fz({notANumber, 1.0, 5.0, notANumber});
    EXPECT_TRUE(std::isnan(layout.Whole().MaxForces().GetForcesLeft().z));
    EXPECT_EQ(layout.Whole().MaxForces().GetForcesRight().z, 1.0);
}

TEST(SpanInterpolation, EndsAreExact)
{
    // Values for which (1 - t) a + t b would lose digits.
    Layout layout({0.1, 0.7, 1.9});
    layout.Fz({1e300, 2.0, 3.0, 1e-300}).Myy({0.1, 5.0, 6.0, 0.3});
    const CSpan span = layout.Whole();
    EXPECT_EQ(span.InterpolateForces(0.0).z, 1e300);
    EXPECT_EQ(span.InterpolateForces(-0.0).z, 1e300);
    EXPECT_EQ(span.InterpolateForces(1.0).z, 1e-300);
    EXPECT_EQ(span.InterpolateMoments(0.0).y, 0.1);
    EXPECT_EQ(span.InterpolateMoments(1.0).y, 0.3);
}

TEST(SpanInterpolation, InnerPointsGiveTheMeanOfBothSides)
{
    const Layout layout = Numbered();
    // Points 0, 1, 3, 6, 10. From 0 to 6, t = 0.5 is the point at 3: 104..106 on its left, 201..203 on its right.
    EXPECT_EQ(Shown{layout.Span(0, 3).InterpolateForces(0.5)}, Shown({152.5, 153.5, 154.5}));
    EXPECT_EQ(Shown{layout.Span(0, 3).InterpolateMoments(0.5)}, Shown({1152.5, 1153.5, 1154.5}));
    // A span that starts elsewhere: from 1 to 6 with its inner point in the middle.
    Layout moved = Numbered();
    moved.points[2].SetPos(3.5);
    EXPECT_EQ(Shown{moved.Span(1, 3).InterpolateForces(0.5)}, Shown({152.5, 153.5, 154.5}));
}

TEST(SpanInterpolation, TheLastInnerPointHasTwoSidesToo)
{
    Layout layout({0.0, 2.0, 4.0});
    layout.Fz({1.0, 3.0, 7.0, 9.0});
    EXPECT_EQ(layout.Whole().InterpolateForces(0.5).z, 5.0);
}

TEST(SpanInterpolation, RoundingOntoTheMembersEndGivesItsOnlySide)
{
    // From 0.7 to 0.9, at the number before 1: (1 - t) 0.7 + t 0.9 rounds to 0.9 itself.
    Layout layout({0.7, 0.9});
    layout.Fz({1.0, 3.0});
    const double t = std::nextafter(1.0, 0.0);
    ASSERT_EQ(layout.Whole().InterpolatePosition(t), 0.9);
    EXPECT_EQ(layout.Whole().InterpolateForces(t).z, 3.0);
}

TEST(SpanInterpolation, RoundingOntoTheMembersStartGivesItsOnlySide)
{
    Layout layout({5.0, 7.0});
    layout.Fz({1.0, 3.0});
    constexpr double t = 1e-300;
    ASSERT_EQ(layout.Whole().InterpolatePosition(t), 5.0);
    EXPECT_EQ(layout.Whole().InterpolateForces(t).z, 1.0);
}

TEST(SpanInterpolation, BeforeTheMemberTheFirstSubSpanGoesOn)
{
    Layout layout({0.0, 2.0, 4.0});
    layout.Fz({1.0, 3.0, 7.0, 9.0});
    EXPECT_EQ(layout.Whole().InterpolateForces(-0.25).z, 0.0);
}

TEST(SpanInterpolation, IsLinearAlongASubSpan)
{
    const Layout layout = Numbered();
    // From 0 to 10: t = 0.2 is x = 2, halfway along sub-span 1 (1 to 3): mean of 101 and 104.
    EXPECT_EQ(Shown{layout.Whole().InterpolateForces(0.2)}, Shown({102.5, 103.5, 104.5}));
    // t = 0.7 is x = 7, a quarter along sub-span 3 (6 to 10): 301 + 0.75.
    const Vector quarter = layout.Whole().InterpolateMoments(0.7);
    EXPECT_NEAR(quarter.x, 1301.75, 1e-9);
    EXPECT_NEAR(quarter.y, 1302.75, 1e-9);
    EXPECT_NEAR(quarter.z, 1303.75, 1e-9);
    // A span in the middle: from 1 to 6, t = 0.2 is x = 2 again.
    EXPECT_NEAR(layout.Span(1, 3).InterpolateForces(0.2).x, 102.5, 1e-9);
}

TEST(SpanInterpolation, AtAPairOfPointsInOnePlaceTheFirstOneCounts)
{
    // Points 0, 2, 2, 4: x = 2 stops at point 1, so the mean is of the sub-span before and the zero-length one.
    Layout layout({0.0, 2.0, 2.0, 4.0});
    layout.Fz({10.0, 20.0, 30.0, 70.0, 90.0, 100.0});
    EXPECT_EQ(layout.Whole().InterpolateForces(0.5).z, 25.0);
}

TEST(SpanInterpolation, RandomSpansAgreeWithTheRulesSpeltOut)
{
    constexpr unsigned int seed = 271828;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> value(-1e4, 1e4);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    int onPoints = 0;
    for (int run = 0; run < 2000; ++run) {
        const int n = 1 + static_cast<int>(random() % 8);
        const int before = static_cast<int>(random() % 3);
        std::vector<double> positions{run % 2 ? 0.0 : 0.25 * static_cast<double>(random() % 100)};
        while (static_cast<int>(positions.size()) < before + n + 2)
            positions.push_back(positions.back() + 0.25 * static_cast<double>(1 + random() % 8));
        Layout layout(positions);
        for (CSubSpan& subSpan : layout.subSpans) {
            const auto vector = [&] {
                const double x = value(random);
                const double y = value(random);
                return Vector(x, y, value(random));
            };
            const Vector fl = vector();
            const Vector fr = vector();
            const Vector ml = vector();
            subSpan.SetForcesAll(fl, fr);
            subSpan.SetMomentsAll(ml, vector());
        }
        const auto left = static_cast<std::size_t>(before);
        const std::size_t right = left + static_cast<std::size_t>(n);
        const double start = positions[left];
        const double end = positions[right];
        // Every other t aims at an inner point; quarters of metres make many of them hit exactly.
        const double t = run % 2 && n > 1
                             ? (positions[left + 1 + random() % static_cast<unsigned>(n - 1)] - start) / (end - start)
                             : unit(random);
        const double x = (1.0 - t) * start + t * end;
        if (t == 0.0 || t == 1.0 || x >= end) continue;
        std::size_t k = left;
        while (x > positions[k])
            ++k;
        if (k == left) continue; // rounding fell on the left end, where nothing is settled
        const auto expect = [&](auto leftEnd, auto rightEnd) {
            const CSubSpan& s = layout.subSpans[k - 1];
            const Vector a = (s.*leftEnd)();
            const Vector b = (s.*rightEnd)();
            if (positions[k] == x) {
                const Vector c = (layout.subSpans[k].*leftEnd)();
                return Vector((b.x + c.x) * 0.5, (b.y + c.y) * 0.5, (b.z + c.z) * 0.5);
            }
            const double f = (x - positions[k - 1]) / (positions[k] - positions[k - 1]);
            return Vector((1.0 - f) * a.x + f * b.x, (1.0 - f) * a.y + f * b.y, (1.0 - f) * a.z + f * b.z);
        };
        onPoints += positions[k] == x;
        const CSpan span = layout.Span(before, before + n);
        ASSERT_EQ(Shown{span.InterpolateForces(t)}, Shown{expect(&CSubSpan::GetForcesLeft, &CSubSpan::GetForcesRight)})
            << "t " << Layout::Number(t) << ", span " << before << " to " << before + n << ", " << layout.Describe();
        ASSERT_EQ(Shown{span.InterpolateMoments(t)},
                  Shown{expect(&CSubSpan::GetMomentsLeft, &CSubSpan::GetMomentsRight)})
            << "t " << Layout::Number(t) << ", span " << before << " to " << before + n << ", " << layout.Describe();
    }
    EXPECT_GT(onPoints, 100);
}
