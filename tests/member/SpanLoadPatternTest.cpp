// Load patterns of spans: hand-made spans with literal results, ties at the tolerances, the asymmetries that are
// required, and a second statement of every rule over random spans full of ties.

#include "member/LayoutSupport.h"

#include <algorithm>
#include <functional>
#include <random>

#include <gtest/gtest.h>

using namespace LayoutSupport;
using namespace Keltrix::Steel;

namespace {

Layout TwoBays() { return Layout({0.0, 2.0, 4.0}); }
Layout ThreeBays() { return Layout({0.0, 2.0, 4.0, 6.0}); }

// Second statement of the rules

struct Rules {
    const Layout& layout;
    int L;
    int R;

    const CSubSpan& Sub(int i) const { return layout.subSpans[static_cast<std::size_t>(i)]; }
    double P(int k) const { return layout.points[static_cast<std::size_t>(k)].GetPos(); }
    double Len() const { return P(R) - P(L); }
    Vector FL(int i) const { return Sub(i).GetForcesLeft(); }
    Vector FR(int i) const { return Sub(i).GetForcesRight(); }
    Vector ML(int i) const { return Sub(i).GetMomentsLeft(); }
    Vector MR(int i) const { return Sub(i).GetMomentsRight(); }
    bool HasJointAfter(int i) const { return i < R - 1; }
    bool Short(int i) const { return std::abs(P(i) - P(i + 1)) < 0.001; }

    static bool DifferAbsolutely(double reference, double b)
    {
        const double tolerance = std::max(1.0, std::abs(0.001 * reference));
        return reference != b && std::abs(reference - b) >= tolerance;
    }
    static bool DifferRelatively(const Vector& reference, const Vector& b)
    {
        const auto differ = [](double r, double v) { return std::abs(r - v) > std::abs(r * 0.001); };
        return differ(reference.x, b.x) || differ(reference.y, b.y) || differ(reference.z, b.z);
    }
    static bool DifferExactly(const Vector& a, const Vector& b) { return a.x != b.x || a.y != b.y || a.z != b.z; }

    bool AxisLoaded(double Vector::*axis) const
    {
        if (R - L == 1) return false;
        for (int i = L; i < R; ++i) {
            if (DifferAbsolutely(FL(i).*axis, FR(i).*axis)) return true;
            if (HasJointAfter(i) && DifferAbsolutely(FL(i + 1).*axis, FR(i).*axis)) return true;
        }
        return false;
    }
    bool Loaded(bool single) const
    {
        if (R - L == 1 && !single) return false;
        for (int i = L; i < R; ++i) {
            if (DifferRelatively(FL(i), FR(i))) return true;
            if (HasJointAfter(i) && DifferRelatively(FL(i + 1), FR(i))) return true;
        }
        return false;
    }
    bool PointLoad() const
    {
        if (R - L == 1) return false;
        for (int i = L; i < R; ++i) {
            if (DifferRelatively(FL(i), FR(i)) && Short(i)) return true;
            if (HasJointAfter(i) && DifferRelatively(FL(i + 1), FR(i))) return true;
        }
        return false;
    }
    bool JointJumps(int i) const
    {
        return DifferAbsolutely(ML(i + 1).y, ML(i).y) || DifferAbsolutely(FL(i + 1).z, FR(i).z);
    }
    bool LeftEndPointLoadOnly() const
    {
        if (R - L == 1) return false;
        if (!(std::abs(ML(L).y) < 1.0)) return false;
        for (int i = L + 1; i < R - 1; ++i)
            if (JointJumps(i)) return false;
        const double m = MR(R - 1).y;
        return !(std::abs((m - Len() * FL(L).z) / m) > 0.05);
    }
    bool RightEndPointLoadOnly() const
    {
        if (R - L == 1) return false;
        for (int i = L; i < R - 1; ++i)
            if (JointJumps(i)) return false;
        if (!(std::abs(MR(R - 1).y) < 1.0)) return false;
        const double m = ML(L).y;
        return !(std::abs((Len() * FR(R - 1).z + m) / m) > 0.05);
    }
    bool LeftEndMomentOnly() const { return !(std::abs((MR(R - 1).y - ML(L).y) / MR(R - 1).y) > 0.05); }
    bool RightEndMomentOnly() const { return !(std::abs((ML(L).y - MR(R - 1).y) / ML(L).y) > 0.05); }
    bool LeftEndMoment() const { return std::abs(ML(L).y) <= 100.0; }
    bool RightEndMoment() const { return std::abs(MR(R - 1).y) <= 100.0; }
    bool CentrePointLoad() const
    {
        if (R - L == 1) return false;
        int offCentre = 0;
        const auto look = [&](double position) {
            const double r = position / Len();
            if (!(std::abs(r - 0.5) < 0.001)) ++offCentre;
        };
        for (int i = L; i < R; ++i) {
            if (DifferExactly(FL(i), FR(i)) && Short(i))
                look(P(i));
            else if (HasJointAfter(i) && DifferExactly(FL(i + 1), FR(i)))
                look(P(i + 1));
        }
        return offCentre == 0;
    }
    double Slope(int i) const { return (FR(i).z - FL(i).z) / (P(i + 1) - P(i)); }
    bool UniformLoad() const
    {
        if (R - L == 1) return false;
        for (int i = L; i < R; ++i) {
            if (DifferAbsolutely(FL(i).z, FR(i).z) && Short(i)) return false;
            if (HasJointAfter(i) && DifferAbsolutely(FL(i + 1).z, FR(i).z)) return false;
        }
        for (int i = L + 1; i < R; ++i) {
            const double tolerance = std::max(1.0, std::abs(0.001 * FR(i).z));
            if (Slope(i) != Slope(L) && std::abs(Slope(i) - Slope(L)) >= tolerance) return false;
        }
        return true;
    }
};

struct Operation {
    const char* name;
    std::function<bool(const CSpan&)> asked;
    std::function<bool(const Rules&)> expected;
    bool needsSubSpans; // reads the first and the last sub-span whatever their number
};

const std::vector<Operation>& Operations()
{
    static const std::vector<Operation> operations{
        {"IsMinorAxisLoaded", [](const CSpan& s) { return s.IsMinorAxisLoaded(); },
         [](const Rules& r) { return r.AxisLoaded(&Vector::z); }, false},
        {"IsMajorAxisLoaded", [](const CSpan& s) { return s.IsMajorAxisLoaded(); },
         [](const Rules& r) { return r.AxisLoaded(&Vector::y); }, false},
        {"IsLoaded(false)", [](const CSpan& s) { return s.IsLoaded(false); },
         [](const Rules& r) { return r.Loaded(false); }, false},
        {"IsLoaded(true)", [](const CSpan& s) { return s.IsLoaded(true); },
         [](const Rules& r) { return r.Loaded(true); }, false},
        {"IsLoadedWithPointLoad", [](const CSpan& s) { return s.IsLoadedWithPointLoad(); },
         [](const Rules& r) { return r.PointLoad(); }, false},
        {"IsLeftEndPtLoadOnly", [](const CSpan& s) { return s.IsLeftEndPtLoadOnly(); },
         [](const Rules& r) { return r.LeftEndPointLoadOnly(); }, true},
        {"IsRightEndPtLoadOnly", [](const CSpan& s) { return s.IsRightEndPtLoadOnly(); },
         [](const Rules& r) { return r.RightEndPointLoadOnly(); }, true},
        {"IsLeftEndMomentLoadOnly", [](const CSpan& s) { return s.IsLeftEndMomentLoadOnly(); },
         [](const Rules& r) { return r.LeftEndMomentOnly(); }, true},
        {"IsRightEndMomentLoadOnly", [](const CSpan& s) { return s.IsRightEndMomentLoadOnly(); },
         [](const Rules& r) { return r.RightEndMomentOnly(); }, true},
        {"IsLeftEndMomentLoaded", [](const CSpan& s) { return s.IsLeftEndMomentLoaded(); },
         [](const Rules& r) { return r.LeftEndMoment(); }, true},
        {"IsRightEndMomentLoaded", [](const CSpan& s) { return s.IsRightEndMomentLoaded(); },
         [](const Rules& r) { return r.RightEndMoment(); }, true},
        {"IsLoadedWithCentrePointLoad", [](const CSpan& s) { return s.IsLoadedWithCentrePointLoad(); },
         [](const Rules& r) { return r.CentrePointLoad(); }, false},
        {"IsLoadedWithUDL", [](const CSpan& s) { return s.IsLoadedWithUDL(); },
         [](const Rules& r) { return r.UniformLoad(); }, false}};
    return operations;
}

} // namespace

// One or no sub-span

TEST(SpanLoadPattern, OneSubSpanHasNoPattern)
{
    // Every test but those of end moments is false, whatever the forces: here a left end point load, a cantilever.
    Layout layout({0.0, 4.0});
    layout.Fz({10.0, 10.0}).Fy({5.0, 9000.0}).Myy({0.0, 40.0});
    const CSpan span = layout.Whole();
    EXPECT_FALSE(span.IsMinorAxisLoaded());
    EXPECT_FALSE(span.IsMajorAxisLoaded());
    EXPECT_FALSE(span.IsLoaded(false));
    EXPECT_FALSE(span.IsLoadedWithPointLoad());
    EXPECT_FALSE(span.IsLeftEndPtLoadOnly());
    EXPECT_FALSE(span.IsRightEndPtLoadOnly());
    EXPECT_FALSE(span.IsLoadedWithCentrePointLoad());
    EXPECT_FALSE(span.IsLoadedWithUDL());
    EXPECT_TRUE(span.IsLoaded(true)) << "asked for, it looks at the single sub-span";
}

TEST(SpanLoadPattern, OneSubSpanIsTestedForEndMoments)
{
    Layout layout({0.0, 4.0});
    layout.Myy({1000.0, 1040.0});
    EXPECT_TRUE(layout.Whole().IsLeftEndMomentLoadOnly());
    EXPECT_TRUE(layout.Whole().IsRightEndMomentLoadOnly());
    EXPECT_FALSE(layout.Whole().IsLeftEndMomentLoaded());
    layout.Myy({100.0, 0.0});
    EXPECT_TRUE(layout.Whole().IsLeftEndMomentLoaded());
    EXPECT_TRUE(layout.Whole().IsRightEndMomentLoaded());
}

TEST(SpanLoadPattern, OneSubSpanWithoutLoadIsNotLoadedEvenWhenAskedFor)
{
    Layout layout({0.0, 4.0});
    layout.Fz({10.0, 10.0});
    EXPECT_FALSE(layout.Whole().IsLoaded(true));
}

TEST(SpanLoadPattern, WithoutSubSpansCentreAndUniformLoadAreTrue)
{
    const Layout layout = TwoBays();
    const CSpan span = layout.Span(1, 1);
    EXPECT_FALSE(span.IsMinorAxisLoaded());
    EXPECT_FALSE(span.IsMajorAxisLoaded());
    EXPECT_FALSE(span.IsLoaded(false));
    EXPECT_FALSE(span.IsLoaded(true));
    EXPECT_FALSE(span.IsLoadedWithPointLoad());
    EXPECT_TRUE(span.IsLoadedWithCentrePointLoad());
    EXPECT_TRUE(span.IsLoadedWithUDL());
    EXPECT_FALSE(span.IsLeftEndMomentLoaded());
    EXPECT_FALSE(span.IsRightEndMomentLoaded());
    EXPECT_FALSE(span.IsLeftEndMomentLoadOnly());
    EXPECT_FALSE(span.IsRightEndMomentLoadOnly());
}

// Loaded or not

TEST(SpanAxisLoaded, DifferenceAlongASubSpan)
{
    Layout layout = TwoBays();
    layout.Fz({0.5, 1.2, 1.2, 1.2});
    EXPECT_FALSE(layout.Whole().IsMinorAxisLoaded()) << "0.7 is less than 1.0";
    layout.Fz({1500.0, 1501.6, 1501.6, 1501.6});
    EXPECT_TRUE(layout.Whole().IsMinorAxisLoaded()) << "1.6 is not less than 1.5";
    EXPECT_FALSE(layout.Whole().IsMajorAxisLoaded());
    layout.Fz({1500.0, 1501.4, 1501.4, 1501.4});
    EXPECT_FALSE(layout.Whole().IsMinorAxisLoaded());
}

TEST(SpanAxisLoaded, MinorAxisReadsFzAndMajorAxisReadsFy)
{
    Layout layout = TwoBays();
    layout.Fy({0.0, 0.0, 50.0, 50.0});
    EXPECT_TRUE(layout.Whole().IsMajorAxisLoaded());
    EXPECT_FALSE(layout.Whole().IsMinorAxisLoaded());
    Layout minor = TwoBays();
    minor.Fz({0.0, 0.0, 50.0, 50.0});
    EXPECT_FALSE(minor.Whole().IsMajorAxisLoaded());
    EXPECT_TRUE(minor.Whole().IsMinorAxisLoaded());
    Layout axial = TwoBays();
    axial.Fx({0.0, 0.0, 50.0, 50.0});
    EXPECT_FALSE(axial.Whole().IsMajorAxisLoaded());
    EXPECT_FALSE(axial.Whole().IsMinorAxisLoaded());
}

TEST(SpanAxisLoaded, ATieAtTheToleranceIsADifference)
{
    for (double Vector::*axis : {&Vector::y, &Vector::z}) {
        const auto loaded = [axis](const std::vector<double>& values) {
            Layout layout = TwoBays();
            return axis == &Vector::z ? layout.Fz(values).Whole().IsMinorAxisLoaded()
                                      : layout.Fy(values).Whole().IsMajorAxisLoaded();
        };
        EXPECT_TRUE(loaded({0.0, 1.0, 1.0, 1.0}));
        EXPECT_FALSE(loaded({0.0, std::nextafter(1.0, 0.0), 1.0, 1.0}));
        EXPECT_TRUE(loaded({1500.0, 1501.5, 1501.5, 1501.5})) << "0.001 x 1500 = 1.5";
        EXPECT_TRUE(loaded({-1500.0, -1501.5, -1501.5, -1501.5}));
        // The reference is the left end: 2 is 0.1 % of 2000 but not of 2001.
        EXPECT_FALSE(loaded({2001.0, 1999.0, 1999.0, 1999.0}));
        EXPECT_TRUE(loaded({1999.0, 2001.0, 2001.0, 2001.0}));
        // At a joint the reference is the next sub-span's left end.
        EXPECT_TRUE(loaded({2001.0, 2001.0, 1999.0, 1999.0}));
        EXPECT_FALSE(loaded({1999.0, 1999.0, 2001.0, 2001.0}));
    }
}

TEST(SpanAxisLoaded, OnlySubSpansAndJointsOfTheSpanCount)
{
    Layout layout({0.0, 1.0, 2.0, 3.0, 4.0});
    layout.Fz({500.0, 900.0, 10.0, 10.0, 10.0, 10.0, 700.0, 800.0});
    EXPECT_FALSE(layout.Span(1, 3).IsMinorAxisLoaded()) << "not the jumps at its own ends";
    EXPECT_TRUE(layout.Span(1, 4).IsMinorAxisLoaded());
    EXPECT_TRUE(layout.Span(0, 2).IsMinorAxisLoaded());
}

TEST(SpanAxisLoaded, TheLastSubSpanIsLookedAt)
{
    Layout layout = ThreeBays();
    layout.Fz({10.0, 10.0, 10.0, 10.0, 10.0, 20.0});
    EXPECT_TRUE(layout.Whole().IsMinorAxisLoaded());
}

TEST(SpanLoaded, SeesAnAxialForceChangeAlone)
{
    Layout layout = TwoBays();
    layout.Fx({100.0, 100.0, 105.0, 105.0});
    EXPECT_TRUE(layout.Whole().IsLoaded(false));
    EXPECT_FALSE(layout.Whole().IsMinorAxisLoaded());
    EXPECT_FALSE(layout.Whole().IsMajorAxisLoaded());
}

TEST(SpanLoaded, IsRelativeWithoutAFloorAndStrict)
{
    Layout layout = TwoBays();
    layout.Fy({0.0, 1e-9, 1e-9, 1e-9});
    EXPECT_TRUE(layout.Whole().IsLoaded(false)) << "anything differs from zero";
    layout.Fy({1e-9, 0.0, 0.0, 0.0});
    EXPECT_TRUE(layout.Whole().IsLoaded(false));
    // 1000 x 0.001 is exactly 1: a difference of 1 is not more.
    layout.Fy({1000.0, 1001.0, 1001.0, 1001.0});
    EXPECT_FALSE(layout.Whole().IsLoaded(false));
    layout.Fy({1000.0, std::nextafter(1001.0, 2000.0), std::nextafter(1001.0, 2000.0), std::nextafter(1001.0, 2000.0)});
    EXPECT_TRUE(layout.Whole().IsLoaded(false));
    // At a joint the reference is the next left end: 1 is more than 0.1 % of 999, but not of 1000.
    layout.Fy({1000.0, 1000.0, 999.0, 999.0});
    EXPECT_TRUE(layout.Whole().IsLoaded(false));
    layout.Fy({999.0, 999.0, 1000.0, 1000.0});
    EXPECT_FALSE(layout.Whole().IsLoaded(false));
}

TEST(SpanLoaded, NotANumberIsNoDifference)
{
    Layout layout = TwoBays();
    layout.Fz({notANumber, 5.0, 5.0, 5.0});
    EXPECT_FALSE(layout.Whole().IsLoaded(true));
    EXPECT_FALSE(layout.Whole().IsMinorAxisLoaded());
}

// Point loads

TEST(SpanPointLoad, IsAJumpAtAJoint)
{
    Layout layout = TwoBays();
    layout.Fz({50.0, 50.0, -50.0, -50.0});
    EXPECT_TRUE(layout.Whole().IsLoadedWithPointLoad());
    Layout axial = TwoBays();
    axial.Fx({50.0, 50.0, 60.0, 60.0});
    EXPECT_TRUE(axial.Whole().IsLoadedWithPointLoad()) << "in any component";
}

TEST(SpanPointLoad, IsNoSlopeAlongARealSubSpan)
{
    Layout layout = TwoBays();
    layout.Fz({50.0, 0.0, 0.0, -50.0});
    EXPECT_FALSE(layout.Whole().IsLoadedWithPointLoad());
    EXPECT_TRUE(layout.Whole().IsLoaded(false));
}

TEST(SpanPointLoad, IsAJumpOverAVeryShortSubSpan)
{
    Layout shorter({0.0, 2.0, 2.0 + 0.00099, 4.0});
    shorter.Fz({50.0, 50.0, 50.0, -50.0, -50.0, -50.0});
    EXPECT_TRUE(shorter.Whole().IsLoadedWithPointLoad());
    Layout atTolerance({0.0, 0.001, 4.0}); // 0.001 - 0 is the tolerance itself
    atTolerance.Fz({50.0, -50.0, -50.0, -50.0});
    EXPECT_FALSE(atTolerance.Whole().IsLoadedWithPointLoad());
    Layout zeroLength({0.0, 2.0, 2.0, 4.0});
    zeroLength.Fz({50.0, 50.0, 50.0, -50.0, -50.0, -50.0});
    EXPECT_TRUE(zeroLength.Whole().IsLoadedWithPointLoad());
}

// Load at one end only: a cantilever with a point load at its tip

// The joint tests compare the moments of two left ends: required, though it makes them miss tip loads on spans of more
// than two sub-spans.
TEST(SpanEndPointLoad, LeftTipLoad)
{
    // Fixed at the right: V = 50 all along, M(x) = 50 x, 200 at x = 4, 300 at x = 6.
    Layout two = TwoBays();
    two.Fz({50, 50, 50, 50}).Myy({0, 100, 100, 200});
    EXPECT_TRUE(two.Whole().IsLeftEndPtLoadOnly());
    EXPECT_FALSE(two.Whole().IsRightEndPtLoadOnly()) << "the right end has a moment";
    Layout three = ThreeBays();
    three.Fz({50, 50, 50, 50, 50, 50}).Myy({0, 100, 100, 200, 200, 300});
    EXPECT_FALSE(three.Whole().IsLeftEndPtLoadOnly()) << "left ends 100 and 200";
    three.Myy({0, 100, 100, 777, 100, 300});
    EXPECT_TRUE(three.Whole().IsLeftEndPtLoadOnly()) << "the moment at an inner right end is not looked at";
}

TEST(SpanEndPointLoad, RightTipLoad)
{
    // Fixed at the left: V = 50, M(x) = -50 (4 - x).
    Layout two = TwoBays();
    two.Fz({50, 50, 50, 50}).Myy({-200, -100, -100, 0});
    EXPECT_FALSE(two.Whole().IsRightEndPtLoadOnly()) << "left ends -200 and -100";
    two.Myy({-200, -100, -200, 0});
    EXPECT_TRUE(two.Whole().IsRightEndPtLoadOnly());
    EXPECT_FALSE(two.Whole().IsLeftEndPtLoadOnly());
    Layout three = ThreeBays();
    three.Fz({50, 50, 50, 50, 50, 50}).Myy({-300, -200, -200, -100, -100, 0});
    EXPECT_FALSE(three.Whole().IsRightEndPtLoadOnly());
    three.Myy({-300, 777, -300, 777, -300, 0});
    EXPECT_TRUE(three.Whole().IsRightEndPtLoadOnly());
}

TEST(SpanEndPointLoad, SignsOfTheFinalTestsDiffer)
{
    // Left: (Mr - Len V) / Mr. Right: (Len V + Ml) / Ml. With the other sign of the moment the ratio is 2.
    Layout left = ThreeBays();
    left.Fz({50, 50, 50, 50, 50, 50}).Myy({0, -100, -100, -200, -100, -300});
    EXPECT_FALSE(left.Whole().IsLeftEndPtLoadOnly());
    Layout right = ThreeBays();
    right.Fz({50, 50, 50, 50, 50, 50}).Myy({300, 200, 300, 100, 300, 0});
    EXPECT_FALSE(right.Whole().IsRightEndPtLoadOnly());
}

TEST(SpanEndPointLoad, AgreesWithinFivePercentOfTheFarMoment)
{
    const auto leftWith = [](double endMoment) {
        Layout layout = ThreeBays(); // Len V = 6 x 50 = 300
        layout.Fz({50, 50, 50, 50, 50, 50}).Myy({0, 100, 100, 200, 100, endMoment});
        return layout.Whole().IsLeftEndPtLoadOnly();
    };
    EXPECT_TRUE(leftWith(315.0)); // 15 / 315 = 0.0476
    EXPECT_TRUE(leftWith(286.0)); // 14 / 286 = 0.0490
    EXPECT_FALSE(leftWith(285.0)) << "15 / 285 = 0.0526: normalised by the moment, not by Len V";
    EXPECT_FALSE(leftWith(316.0)); // 16 / 316 = 0.0506
    const auto rightWith = [](double endMoment) {
        Layout layout = ThreeBays();
        layout.Fz({50, 50, 50, 50, 50, 50}).Myy({endMoment, -200, endMoment, -100, endMoment, 0});
        return layout.Whole().IsRightEndPtLoadOnly();
    };
    EXPECT_TRUE(rightWith(-315.0));
    EXPECT_TRUE(rightWith(-286.0));
    EXPECT_FALSE(rightWith(-285.0));
    EXPECT_FALSE(rightWith(-316.0));
}

TEST(SpanEndPointLoad, ATieAtFivePercentIsTrue)
{
    // Len V = 3 x 19 = 57, M = 60: |60 - 57| / 60 is the double 0.05 itself.
    ASSERT_EQ(3.0 / 60.0, 0.05);
    Layout layout({0.0, 1.0, 3.0});
    layout.Fz({19, 19, 19, 19}).Myy({0, 19, 19, 60});
    EXPECT_TRUE(layout.Whole().IsLeftEndPtLoadOnly());
    layout.Myy({-60, -38, -60, 0});
    EXPECT_TRUE(layout.Whole().IsRightEndPtLoadOnly());
}

TEST(SpanEndPointLoad, TheNearEndMustBeWithoutMomentBelowOne)
{
    const auto leftWith = [](double endMoment) {
        Layout layout = ThreeBays();
        layout.Fz({50, 50, 50, 50, 50, 50}).Myy({endMoment, 100, 100, 200, 100, 300});
        return layout.Whole().IsLeftEndPtLoadOnly();
    };
    EXPECT_TRUE(leftWith(0.999));
    EXPECT_TRUE(leftWith(-0.999));
    EXPECT_FALSE(leftWith(1.0));
    EXPECT_FALSE(leftWith(-1.0));
    EXPECT_FALSE(leftWith(notANumber));
    const auto rightWith = [](double endMoment) {
        Layout layout = ThreeBays();
        layout.Fz({50, 50, 50, 50, 50, 50}).Myy({-300, -200, -300, -100, -300, endMoment});
        return layout.Whole().IsRightEndPtLoadOnly();
    };
    EXPECT_TRUE(rightWith(-0.999));
    EXPECT_FALSE(rightWith(1.0));
    EXPECT_FALSE(rightWith(notANumber));
}

TEST(SpanEndPointLoad, LeftTestPassesOverTheFirstJointAndRightTestDoesNot)
{
    // The asymmetry is required. A jump of Fz (50 to 60) and another Myy (0, then 150) after the first joint.
    Layout left = ThreeBays();
    left.Fz({50, 50, 60, 60, 60, 60}).Myy({0, 100, 150, 200, 150, 300});
    EXPECT_TRUE(left.Whole().IsLeftEndPtLoadOnly()) << "Mr = 300 = 6 x 50, and the first joint is not looked at";
    Layout right = ThreeBays();
    right.Fz({50, 50, 50, 50, 50, 50}).Myy({-300, 0, -300, 0, -300, 0});
    ASSERT_TRUE(right.Whole().IsRightEndPtLoadOnly());
    right.Fz({60, 60, 50, 50, 50, 50});
    EXPECT_FALSE(right.Whole().IsRightEndPtLoadOnly());
    right.Fz({50, 50, 50, 50, 50, 50}).Myy({-300, 0, -250, 0, -250, 0});
    EXPECT_FALSE(right.Whole().IsRightEndPtLoadOnly());
}

TEST(SpanEndPointLoad, BothTestsLookAtTheLastJoint)
{
    Layout left = ThreeBays();
    left.Fz({50, 50, 50, 50, 60, 60}).Myy({0, 100, 100, 200, 100, 300});
    EXPECT_FALSE(left.Whole().IsLeftEndPtLoadOnly());
    left.Fz({50, 50, 50, 50, 50, 50}).Myy({0, 100, 100, 250, 250, 300});
    EXPECT_FALSE(left.Whole().IsLeftEndPtLoadOnly()) << "the same moment on both sides of the joint does not count";
    Layout right = ThreeBays();
    right.Fz({50, 50, 50, 50, 60, 60}).Myy({-360, 0, -360, 0, -360, 0});
    EXPECT_FALSE(right.Whole().IsRightEndPtLoadOnly());
    right.Fz({60, 60, 60, 60, 60, 60});
    EXPECT_TRUE(right.Whole().IsRightEndPtLoadOnly());
    right.Myy({-360, 0, -360, 0, -300, 0});
    EXPECT_FALSE(right.Whole().IsRightEndPtLoadOnly());
}

TEST(SpanEndPointLoad, JointTestsHaveTheAbsoluteFloorWithTheNextEndAsReference)
{
    const auto leftWith = [](double jointForce, double nextForce, double moment, double nextMoment) {
        Layout layout = ThreeBays();
        layout.Fz({50, 50, 50, jointForce, nextForce, 50}).Myy({0, 0, moment, 77, nextMoment, 300});
        return layout.Whole().IsLeftEndPtLoadOnly();
    };
    EXPECT_TRUE(leftWith(10.0, 10.9, 5.0, 5.9));
    EXPECT_FALSE(leftWith(10.0, 11.0, 5.0, 5.0)) << "a tie is a difference";
    EXPECT_FALSE(leftWith(10.0, 10.0, 5.0, 6.0));
    EXPECT_TRUE(leftWith(1999.0, 2001.0, 5.0, 5.0)) << "0.001 x 2001 is more than 2";
    EXPECT_FALSE(leftWith(2001.0, 1999.0, 5.0, 5.0));
    EXPECT_TRUE(leftWith(10.0, 10.0, 1999.0, 2001.0));
    EXPECT_FALSE(leftWith(10.0, 10.0, 2001.0, 1999.0));
}

TEST(SpanEndPointLoad, OnlyFzAndMyyAreLookedAt)
{
    Layout layout = ThreeBays();
    layout.Fz({50, 50, 50, 50, 50, 50}).Myy({0, 100, 100, 200, 100, 300});
    layout.Fy({1, 900, -50, 33, 70, 2}).Fx({1, 900, -50, 33, 70, 2}).Mzz({77, 5, 100, -8, 40, 300});
    EXPECT_TRUE(layout.Whole().IsLeftEndPtLoadOnly());
    layout.Fz({50, 999, -999, 50, 50, 50});
    EXPECT_TRUE(layout.Whole().IsLeftEndPtLoadOnly()) << "a change along a sub-span is not looked at";
}

TEST(SpanEndPointLoad, TwoSubSpansHaveNoInnerOneForTheLeftTest)
{
    Layout layout = TwoBays();
    layout.Fz({50, 50, 90, 90}).Myy({0, 100, 700, 200});
    EXPECT_TRUE(layout.Whole().IsLeftEndPtLoadOnly()) << "200 = 4 x 50; the only joint is the first one";
    layout.Fz({90, 90, 50, 50}).Myy({-200, -100, -200, 0});
    EXPECT_FALSE(layout.Whole().IsRightEndPtLoadOnly()) << "here that joint is looked at";
}

TEST(SpanEndPointLoad, AZeroFarMomentIsFalseUnlessTheShearIsZeroToo)
{
    Layout layout = TwoBays();
    layout.Fz({50, 50, 50, 50});
    EXPECT_FALSE(layout.Whole().IsLeftEndPtLoadOnly()) << "infinite ratio";
    EXPECT_FALSE(layout.Whole().IsRightEndPtLoadOnly());
    layout.Fz({0, 0, 0, 0});
    EXPECT_TRUE(layout.Whole().IsLeftEndPtLoadOnly()) << "0 / 0 is not greater than 0.05";
    EXPECT_TRUE(layout.Whole().IsRightEndPtLoadOnly());
}

TEST(SpanEndPointLoad, LengthIsTheSpansOwn)
{
    // From 10 to 14 with V = 50: M = 200.
    Layout layout({0.0, 10.0, 12.0, 14.0});
    layout.Fz({1, 1, 50, 50, 50, 50}).Myy({7, 7, 0, 100, 100, 200});
    EXPECT_TRUE(layout.Span(1, 3).IsLeftEndPtLoadOnly());
    layout.Myy({7, 7, -200, -100, -200, 0});
    EXPECT_TRUE(layout.Span(1, 3).IsRightEndPtLoadOnly());
}

// End moments

TEST(SpanEndMomentOnly, EndsAreCompared)
{
    const auto ask = [](double left, double right) {
        Layout layout = TwoBays();
        layout.Myy({left, 7.0, -7.0, right});
        return std::pair(layout.Whole().IsLeftEndMomentLoadOnly(), layout.Whole().IsRightEndMomentLoadOnly());
    };
    EXPECT_EQ(ask(1000.0, 1000.0), std::pair(true, true));
    EXPECT_EQ(ask(1000.0, -1000.0), std::pair(false, false));
    // 50 / 1050 = 0.0476 for the left test; 50 / 1000 = 0.05, a tie, for the right one.
    EXPECT_EQ(ask(1000.0, 1050.0), std::pair(true, true));
    // 51 / 1051 = 0.0485 and 51 / 1000 = 0.051.
    EXPECT_EQ(ask(1000.0, 1051.0), std::pair(true, false));
    EXPECT_EQ(ask(1051.0, 1000.0), std::pair(false, true));
    EXPECT_EQ(ask(1050.0, 1000.0), std::pair(true, true));
    EXPECT_EQ(ask(-1000.0, -1051.0), std::pair(true, false));
}

TEST(SpanEndMomentOnly, ZeroReferenceIsFalseAndBothZeroTrue)
{
    const auto ask = [](double left, double right) {
        Layout layout = TwoBays();
        layout.Myy({left, 7.0, -7.0, right});
        return std::pair(layout.Whole().IsLeftEndMomentLoadOnly(), layout.Whole().IsRightEndMomentLoadOnly());
    };
    EXPECT_EQ(ask(1000.0, 0.0), std::pair(false, false)) << "left: infinite; right: 1";
    EXPECT_EQ(ask(0.0, 1000.0), std::pair(false, false)) << "left: 1; right: infinite";
    EXPECT_EQ(ask(0.0, 0.0), std::pair(true, true)) << "not a number";
    EXPECT_EQ(ask(notANumber, 5.0), std::pair(true, true));
}

TEST(SpanEndMoment, IsTrueForSmallMomentsOppositeToItsName)
{
    // Callers rely on this sense.
    const auto left = [](double moment) {
        Layout layout = TwoBays();
        layout.Myy({moment, 5000.0, 5000.0, 5000.0});
        return layout.Whole().IsLeftEndMomentLoaded();
    };
    const auto right = [](double moment) {
        Layout layout = TwoBays();
        layout.Myy({5000.0, 5000.0, 5000.0, moment});
        return layout.Whole().IsRightEndMomentLoaded();
    };
    for (const double moment : {0.0, 100.0, -100.0, 99.5}) {
        EXPECT_TRUE(left(moment)) << moment;
        EXPECT_TRUE(right(moment)) << moment;
    }
    for (const double moment : {100.5, -100.5, std::nextafter(100.0, 200.0), 1e6}) {
        EXPECT_FALSE(left(moment)) << moment;
        EXPECT_FALSE(right(moment)) << moment;
    }
}

// Centre point load

TEST(SpanCentrePointLoad, AJumpAtHalfTheLength)
{
    Layout layout = TwoBays();
    layout.Fz({50, 50, -50, -50});
    EXPECT_TRUE(layout.Whole().IsLoadedWithCentrePointLoad());
    Layout off({0.0, 1.0, 4.0});
    off.Fz({50, 50, -50, -50});
    EXPECT_FALSE(off.Whole().IsLoadedWithCentrePointLoad());
}

TEST(SpanCentrePointLoad, IsMeasuredFromTheMembersStart)
{
    // Required. From 2 to 6 with the load at 4 the ratio is 4 / 4 = 1.0, off-centre.
    Layout layout({0.0, 2.0, 4.0, 6.0});
    layout.Fz({0, 0, 50, 50, -50, -50});
    EXPECT_FALSE(layout.Span(1, 3).IsLoadedWithCentrePointLoad());
    // From 1 to 5 (length 4): a load at 2, a quarter of the span, has ratio 2 / 4 = 0.5.
    Layout quarter({0.0, 1.0, 2.0, 5.0});
    quarter.Fz({0, 0, 50, 50, -50, -50});
    EXPECT_TRUE(quarter.Span(1, 3).IsLoadedWithCentrePointLoad());
}

TEST(SpanCentrePointLoad, WithoutAnyJumpIsTrue)
{
    Layout layout = TwoBays();
    EXPECT_TRUE(layout.Whole().IsLoadedWithCentrePointLoad());
    layout.Fz({50, 0, 0, -50});
    EXPECT_TRUE(layout.Whole().IsLoadedWithCentrePointLoad()) << "a slope along a real sub-span is no jump";
}

TEST(SpanCentrePointLoad, OneOffCentreJumpBesideTheCentreOneIsFalse)
{
    Layout layout({0.0, 1.0, 2.0, 4.0});
    layout.Fz({60, 60, 50, 50, -50, -50});
    EXPECT_FALSE(layout.Whole().IsLoadedWithCentrePointLoad());
    layout.Fz({50, 50, 50, 50, -50, -50});
    EXPECT_TRUE(layout.Whole().IsLoadedWithCentrePointLoad());
}

TEST(SpanCentrePointLoad, JumpsAreExactDifferencesInAnyComponent)
{
    Layout layout({0.0, 1.0, 4.0});
    layout.Fx({5.0, 5.0, std::nextafter(5.0, 6.0), 5.0});
    EXPECT_FALSE(layout.Whole().IsLoadedWithCentrePointLoad());
    layout.Fx({5.0, 5.0, 5.0, 5.0});
    EXPECT_TRUE(layout.Whole().IsLoadedWithCentrePointLoad());
    layout.Fy({notANumber, 1.0, 1.0, 1.0});
    EXPECT_TRUE(layout.Whole().IsLoadedWithCentrePointLoad());
    layout.Fy({1.0, notANumber, notANumber, 1.0});
    EXPECT_FALSE(layout.Whole().IsLoadedWithCentrePointLoad()) << "not-a-number is not equal to itself";
}

TEST(SpanCentrePointLoad, ToleranceIsAThousandthOfTheLengthStrictly)
{
    const auto at = [](double position, double length) {
        Layout layout({0.0, position, length});
        layout.Fz({50, 50, -50, -50});
        return layout.Whole().IsLoadedWithCentrePointLoad();
    };
    EXPECT_TRUE(at(5.009, 10.0));
    EXPECT_TRUE(at(4.991, 10.0));
    EXPECT_FALSE(at(5.011, 10.0));
    EXPECT_FALSE(at(4.989, 10.0));
}

TEST(SpanCentrePointLoad, AJumpOverAShortSubSpanLiesAtItsLeftPointAndHidesTheJointBehindIt)
{
    Layout layout({0.0, 2.0, 2.0005, 4.0});
    layout.Fz({50, 50, 50, -50, -50, -50});
    EXPECT_TRUE(layout.Whole().IsLoadedWithCentrePointLoad());
    // A jump over a short sub-span and a further one at the joint after it: only the first is looked at, at its left
    // point. The joint is off-centre (2.0045 / 4 = 0.501125), the left point (2.0036 / 4 = 0.5009) is not.
    Layout hidden({0.0, 2.0036, 2.0045, 4.0});
    hidden.Fz({50, 50, 50, -50, -70, -70});
    EXPECT_TRUE(hidden.Whole().IsLoadedWithCentrePointLoad());
    // The left point counts: 1.9955 / 4 = 0.498875 is off-centre, 1.9964 / 4 = 0.4991 would not be.
    Layout left({0.0, 1.9955, 1.9964, 4.0});
    left.Fz({50, 50, 50, -50, -50, -50});
    EXPECT_FALSE(left.Whole().IsLoadedWithCentrePointLoad());
}

TEST(SpanCentrePointLoad, AZeroLengthSpanHasNoCentre)
{
    Layout layout({0.0, 0.0, 0.0});
    layout.Fz({50, 50, -50, -50});
    EXPECT_FALSE(layout.Whole().IsLoadedWithCentrePointLoad()) << "0 / 0 counts as off-centre";
}

// Uniform load

TEST(SpanUniformLoad, EqualSlopesWithoutJumps)
{
    Layout layout({0.0, 1.0, 3.0, 6.0});
    layout.Fz({60, 40, 40, 0, 0, -60});
    EXPECT_TRUE(layout.Whole().IsLoadedWithUDL());
    Layout unloaded = ThreeBays();
    unloaded.Fz({50, 50, 50, 50, 50, 50});
    EXPECT_TRUE(unloaded.Whole().IsLoadedWithUDL()) << "no change at all";
}

TEST(SpanUniformLoad, AJumpAtAJointIsNone)
{
    Layout layout = ThreeBays();
    layout.Fz({60, 40, 40, 20, 19, -1});
    EXPECT_FALSE(layout.Whole().IsLoadedWithUDL()) << "a jump of 1.0 is at the tolerance";
    layout.Fz({60, 40, 40, 20, 19.01, -0.99});
    EXPECT_TRUE(layout.Whole().IsLoadedWithUDL());
    layout.Fz({4000, 1999, 2001, 0, 0, -2001});
    EXPECT_TRUE(layout.Whole().IsLoadedWithUDL()) << "the next left end is the reference: 2 < 2.001";
    layout.Fz({4001, 2001, 1999, -1, -1, -2001});
    EXPECT_FALSE(layout.Whole().IsLoadedWithUDL());
}

TEST(SpanUniformLoad, AJumpOverAShortSubSpanIsNone)
{
    Layout layout({0.0, 2.0, 2.0005, 4.0});
    layout.Fz({60, 20, 20, 19, 19, -21});
    EXPECT_FALSE(layout.Whole().IsLoadedWithUDL());
    // The same change over exactly the tolerance of length is a slope: -1 / 0.001, and -3999 / 3.999.
    Layout shorter({0.0, 0.0005, 4.0});
    shorter.Fz({20, 19, 19, -3980});
    EXPECT_FALSE(shorter.Whole().IsLoadedWithUDL());
    Layout real({0.0, 0.001, 4.0});
    real.Fz({20, 19, 19, -3980});
    EXPECT_TRUE(real.Whole().IsLoadedWithUDL());
}

TEST(SpanUniformLoad, SlopesAreComparedWithTheToleranceOfAForce)
{
    // Required. Slopes -10 and -10.9 N/m differ by less than 1.0; -10 and -11 do not.
    Layout layout({0.0, 10.0, 20.0});
    layout.Fz({200, 100, 100, -9});
    EXPECT_TRUE(layout.Whole().IsLoadedWithUDL());
    layout.Fz({200, 100, 100, -10});
    EXPECT_FALSE(layout.Whole().IsLoadedWithUDL()) << "a tie is a difference";
    // The force at the right end of the sub-span sets the tolerance: 0.001 x |-9900| = 9.9.
    layout.Fz({10000, 100, 100, -9900}); // slopes -990 and -1000: 10 >= 9.9
    EXPECT_FALSE(layout.Whole().IsLoadedWithUDL());
    layout.Fz({10000, 0, 0, -10050}); // slopes -1000 and -1005: 5 < 10.05
    EXPECT_TRUE(layout.Whole().IsLoadedWithUDL());
    layout.Fz({10050, 0, 0, -100}); // slopes -1005 and -10
    EXPECT_FALSE(layout.Whole().IsLoadedWithUDL());
}

TEST(SpanUniformLoad, AWeakTriangularLoadPassesForUniform)
{
    // Slopes -0.25 and -0.75 N/m: less than 1.0 apart, so a load that trebles is taken for uniform.
    Layout layout = TwoBays();
    layout.Fz({2.0, 1.5, 1.5, 0.0});
    EXPECT_TRUE(layout.Whole().IsLoadedWithUDL());
}

TEST(SpanUniformLoad, EverySlopeIsComparedWithTheFirst)
{
    // Slopes 0, -0.9, -1.8: neighbours are within 1.0, the third is not within 1.0 of the first.
    Layout layout({0.0, 10.0, 20.0, 30.0});
    layout.Fz({50, 50, 50, 41, 41, 23});
    EXPECT_FALSE(layout.Whole().IsLoadedWithUDL());
}

TEST(SpanUniformLoad, OnlyFzIsLookedAt)
{
    Layout layout = TwoBays();
    layout.Fz({50, 50, 50, 50}).Fy({0, 9000, -9000, 5}).Fx({0, 9000, -9000, 5});
    EXPECT_TRUE(layout.Whole().IsLoadedWithUDL());
}

TEST(SpanUniformLoad, SlopesOfZeroLengthSubSpans)
{
    // 0 / 0 does not differ from anything; a finite force over no length is infinite and differs.
    Layout unloaded({0.0, 2.0, 2.0, 4.0});
    unloaded.Fz({60, 20, 20, 20, 20, -20});
    EXPECT_TRUE(unloaded.Whole().IsLoadedWithUDL());
    Layout small({0.0, 2.0, 2.0, 4.0}); // below the tolerance of a jump, but an infinite slope
    small.Fz({60, 20, 20, 19.5, 19.5, -20.5});
    EXPECT_FALSE(small.Whole().IsLoadedWithUDL());
    Layout first({0.0, 0.0, 2.0, 4.0}); // the first slope not-a-number: nothing differs from it
    first.Fz({60, 60, 60, 20, 20, -500});
    EXPECT_TRUE(first.Whole().IsLoadedWithUDL());
}

// Random spans

TEST(SpanLoadPattern, RandomSpansFullOfTiesAgreeWithTheRulesSpeltOut)
{
    constexpr unsigned int seed = 112358;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto pick = [&random](const std::vector<double>& values) { return values[random() % values.size()]; };
    const std::vector<double> steps{0.0, 0.0005, 0.00099, 0.001, 0.5, 1.0, 2.0, 2.0};
    const std::vector<double> nudges{0.0, 0.0, 0.0, 0.0, 0.5, 1.0, -1.0, 1.5, 2.0, -2.0, 1e-9, 30.0};
    const std::vector<double> forces{0.0, 50.0, -50.0, 1000.0, 1500.0, 1999.0, 2000.0, 2001.0};
    const std::vector<double> moments{0.0, 0.5, 1.0, -1.0, 100.0, 100.5, -100.0, 200.0, 300.0, 315.0, 1999.0, 2001.0};
    std::vector<std::array<int, 2>> counts(Operations().size(), {0, 0});
    for (int run = 0; run < 60000; ++run) {
        const int n = static_cast<int>(random() % 5);
        const int before = static_cast<int>(random() % 3);
        std::vector<double> positions{run % 2 ? 0.0 : 2.0};
        while (static_cast<int>(positions.size()) < before + n + 2)
            positions.push_back(positions.back() + pick(steps));
        Layout layout(positions);
        // Mostly carried on from one end to the next, with now and then a jump.
        const bool steady = run % 3 != 0;
        Vector force{pick(forces), pick(forces), pick(forces)}; // braces: drawn in this order by every compiler
        double moment = pick(moments);
        const double slope = pick({0.0, 0.0, 10.0, -50.0});
        for (std::size_t i = 0; i < layout.subSpans.size(); ++i) {
            const auto nudge = [&](double value, int oneIn) {
                return random() % static_cast<unsigned>(oneIn) ? value : value + pick(nudges);
            };
            if (!steady) force = Vector{nudge(force.x, 6), nudge(force.y, 4), nudge(force.z, 3)};
            const Vector left = force;
            const double length = positions[i + 1] - positions[i];
            force.z += slope * length;
            if (random() % 8 == 0) force = Vector{nudge(force.x, 2), nudge(force.y, 2), nudge(force.z, 2)};
            const double momentLeft = moment;
            moment = random() % 3 ? moment + 0.5 * (left.z + force.z) * length : pick(moments);
            layout.subSpans[i].SetForcesAll(left, force);
            layout.subSpans[i].SetMomentsAll({0.0, momentLeft, 0.0}, {0.0, moment, 0.0});
            if (random() % 6 == 0) moment = nudge(moment, 2);
        }
        if (random() % 4 == 0) { // a cantilever's tip: no moment at one end
            const std::size_t tip = static_cast<std::size_t>(before);
            layout.subSpans[tip].SetMomentsLeft({0.0, pick({0.0, 0.5, 1.0}), 0.0});
        }
        const Rules rules{layout, before, before + n};
        const CSpan span = layout.Span(before, before + n);
        for (std::size_t i = 0; i < Operations().size(); ++i) {
            const Operation& operation = Operations()[i];
            if (n == 0 && operation.needsSubSpans) continue;
            const bool expected = operation.expected(rules);
            ++counts[i][expected];
            ASSERT_EQ(operation.asked(span), expected) << operation.name << ", run " << run << ", span " << before
                                                       << " to " << before + n << ", " << layout.Describe();
        }
    }
    for (std::size_t i = 0; i < counts.size(); ++i) {
        EXPECT_GT(counts[i][0], 50) << Operations()[i].name << " is never false";
        EXPECT_GT(counts[i][1], 50) << Operations()[i].name << " is never true";
    }
}

// With the true moments, and with those that the joint tests let pass: the same at all left ends that they look at.
TEST(SpanLoadPattern, CantileversWithTipLoadsAroundTheFivePercentAgreeWithTheRules)
{
    constexpr unsigned int seed = 8128;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    int left = 0;
    int right = 0;
    for (int run = 0; run < 5000; ++run) {
        const int n = 1 + static_cast<int>(random() % 5);
        std::vector<double> positions{random() % 2 ? 0.0 : 10.0};
        for (int i = 0; i < n; ++i)
            positions.push_back(positions.back() + 0.5 + unit(random));
        Layout layout(positions);
        const double start = positions.front();
        const double length = positions.back() - start;
        const double shear = 100.0 + 1000.0 * unit(random);
        const double factor = 0.94 + 0.12 * unit(random);
        for (std::size_t i = 0; i < layout.subSpans.size(); ++i) {
            const auto moment = [&](double x) {
                return factor * shear * (run % 2 ? x - start : x - start - length) + (random() % 9 ? 0.0 : 1.0);
            };
            layout.subSpans[i].SetForcesAll({0.0, 0.0, shear}, {0.0, 0.0, shear + (random() % 9 ? 0.0 : 1.0)});
            const bool isLooked = run % 4 >= 2 && (run % 2 == 0 || i > 0);
            const double atLeft = moment(isLooked ? start : positions[i]);
            layout.subSpans[i].SetMomentsAll({0.0, atLeft, 0.0}, {0.0, moment(positions[i + 1]), 0.0});
        }
        const Rules rules{layout, 0, n};
        left += rules.LeftEndPointLoadOnly();
        right += rules.RightEndPointLoadOnly();
        ASSERT_EQ(layout.Whole().IsLeftEndPtLoadOnly(), rules.LeftEndPointLoadOnly()) << layout.Describe();
        ASSERT_EQ(layout.Whole().IsRightEndPtLoadOnly(), rules.RightEndPointLoadOnly()) << layout.Describe();
    }
    EXPECT_GT(left, 200);
    EXPECT_GT(right, 200);
}
