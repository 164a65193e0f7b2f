// Deflections of spans from their chord: values worked out by hand, the required departures from mechanics one by one,
// and the sums done directly for every candidate, sub-span by sub-span, over random spans.

#include "member/LayoutSupport.h"
#include "support/RandomCases.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

using namespace LayoutSupport;
using namespace Keltrix::Steel;

namespace {

// The sums as they are defined: for each candidate over all sub-spans again.
struct DirectSums {
    const Layout& layout;
    int L;
    int R;
    double Vector::*axis;
    double stiffness;
    double momentLeft = 0.0; ///< ma
    double slope = 0.0;
    double largestTerm = 0.0;

    double P(int k) const { return layout.points[static_cast<std::size_t>(k)].GetPos(); }
    double Len() const { return P(R) - P(L); }
    const CSubSpan& Sub(int i) const { return layout.subSpans[static_cast<std::size_t>(i)]; }
    double Corrected(double moment, double x) const { return moment - momentLeft - slope * x; }

    void Correct(bool leftEnd, bool rightEnd)
    {
        const double first = Sub(L).GetMomentsLeft().*axis;
        const double ma = leftEnd ? first : 0.0;
        const double mb = rightEnd ? first : 0.0; // the same value again: required
        momentLeft = ma;
        slope = (mb - ma) / Len();
    }

    double Term(double value)
    {
        largestTerm = std::max(largestTerm, std::abs(value));
        return value;
    }

    double Deflection(int k)
    {
        const double a = P(k + 1) - P(L);
        double all = 0.0;
        double upToHere = 0.0;
        for (int i = L; i < R; ++i) {
            const double x0 = P(i);
            const double h = P(i + 1) - P(i);
            const double m1 = Corrected(Sub(i).GetMomentsLeft().*axis, P(i));
            const double m2 = Corrected(Sub(i).GetMomentsRight().*axis, P(i + 1));
            if ((m1 > 0.0 && m2 > 0.0) || (m1 < 0.0 && m2 < 0.0)) {
                const double area = (m1 + m2) * 0.5 * h / stiffness;
                const double c = (2.0 * m2 + m1) / (m1 + m2);
                all += Term((Len() - x0 - c * h / 3.0) * area);
                if (i <= k) upToHere += Term((a - x0 - c * h / 3.0) * area);
            } else {
                const double d = std::abs(m1) / (std::abs(m2) + std::abs(m1)) * h;
                const double e = h - d;
                const double area1 = m1 * 0.5 * d / stiffness;
                const double area2 = e * m2 * 0.5 / stiffness;
                all += Term((Len() - x0 - (2.0 * d / 3.0 + d)) * area2) + Term((Len() - x0 - d / 3.0) * area1);
                if (i <= k) upToHere += Term((a - x0 - (2.0 * d / 3.0 + d)) * area2) + Term((a - x0 - d / 3.0) * area1);
            }
        }
        return Term(all / Len() * a) - Term(upToHere);
    }

    double Max()
    {
        if (R - L <= 1) return 0.0;
        double max = 0.0;
        for (int k = L; k < R; ++k) {
            const double value = std::abs(Deflection(k));
            max = max > value ? max : value; // the newer one where either is not-a-number
        }
        return max;
    }

    double At(double pos)
    {
        if (R - L <= 1) return 0.0;
        double before = P(L);
        double deflectionBefore = 0.0;
        for (int k = L; k < R; ++k) {
            const double deflection = Deflection(k);
            const double here = P(k + 1);
            if (here >= pos || std::abs(here - pos) < 0.001)
                return deflectionBefore + (deflection - deflectionBefore) / (here - before) * (pos - before);
            before = here;
            deflectionBefore = deflection;
        }
        return 0.0;
    }
};

/// Mean moments of the span's continuous restraint.
Vector MeanMoments(const CSpan& span)
{
    Vector force;
    Vector moment;
    bool useSign = false;
    EXPECT_TRUE(span.ContinuousRestraint().GetForcesAndMoments(force, moment, useSign));
    return moment;
}

double MaxYY(const Layout& layout, double ei = 1.0) { return layout.Whole().MaxDispYY(ei, 1.0); }

double AtYY(const Layout& layout, double pos, bool left = false, bool right = false)
{
    return layout.Whole().DispYY(pos, 1.0, 1.0, left, right);
}

} // namespace

TEST(SpanDisplacement, OneSubSpanOrNoneIsZero)
{
    Layout layout({0.0, 2.0, 4.0});
    layout.Myy({5.0, 6.0, 6.0, 7.0}).Mzz({5.0, 6.0, 6.0, 7.0});
    for (const CSpan& span : {layout.Span(0, 1), layout.Span(1, 2), layout.Span(1, 1), layout.Span(0, 0)}) {
        EXPECT_EQ(span.MaxDispXX(2.0, 3.0), 0.0);
        EXPECT_EQ(span.MaxDispYY(2.0, 3.0), 0.0);
        for (const bool left : {false, true})
            for (const bool right : {false, true}) {
                EXPECT_EQ(span.DispXX(1.0, 2.0, 3.0, left, right), 0.0);
                EXPECT_EQ(span.DispYY(1.0, 2.0, 3.0, left, right), 0.0);
            }
    }
}

TEST(SpanDisplacement, WithoutSubSpansNothingIsRead)
{
    const std::vector<CMemberPoint> points{PointAt(1, 0.0)};
    const std::vector<CSubSpan> none;
    const CSpan span(&points, &none, 0, 0);
    EXPECT_EQ(span.MaxDispXX(1.0, 1.0), 0.0);
    EXPECT_EQ(span.MaxDispYY(1.0, 1.0), 0.0);
    EXPECT_EQ(span.DispXX(0.0, 1.0, 1.0, true, true), 0.0);
    EXPECT_EQ(span.DispYY(0.0, 1.0, 1.0, true, true), 0.0);
}

TEST(SpanDisplacement, MajorMomentBendsYYAndMinorMomentXX)
{
    Layout major({0.0, 2.0, 4.0});
    major.Myy({2.0, 4.0, 4.0, 6.0}).Mzz({3.0, 3.0, 3.0, 3.0});
    // Linear moment 2 to 6 over 4 m: (2 + 6) 4^2 / 16 = 8 at mid-span; uniform 3: 3 x 4^2 / 8 = 6.
    EXPECT_NEAR(major.Whole().MaxDispYY(1.0, 1.0), 8.0, 1e-12);
    EXPECT_NEAR(major.Whole().MaxDispXX(1.0, 1.0), 6.0, 1e-12);
    EXPECT_NEAR(major.Whole().DispYY(2.0, 1.0, 1.0, false, false), 8.0, 1e-12);
    EXPECT_NEAR(major.Whole().DispXX(2.0, 1.0, 1.0, false, false), 6.0, 1e-12);
    EXPECT_NEAR(major.Whole().MaxDispYY(2.0, 8.0), 0.5, 1e-12) << "only the product of modulus and inertia counts";
    EXPECT_NEAR(major.Whole().MaxDispYY(8.0, 2.0), 0.5, 1e-12);
}

TEST(SpanDisplacement, TwoTriangleRuleWithAZeroEndMoment)
{
    // EI = 8, sub-spans [0, 2] and [2, 4], moment 0, 12, 0.
    // Sub-span 1: d = 0, e = 2: A2 = 2 x 12 x 0.5 / 8 = 1.5 with its centroid at d + 2d/3 = 0 (truly at 4/3).
    // Sub-span 2: d = 2, e = 0: A1 = 1.5 with its centroid at 2/3, as in truth; A2 = 0.
    // S = 4 x 1.5 + (4 - 2 - 2/3) x 1.5 = 8. Sa at 2 m: 2 x 1.5 = 3. 8 / 4 x 2 - 3 = 1 (in truth 2).
    Layout layout({0.0, 2.0, 4.0});
    layout.Myy({0.0, 12.0, 12.0, 0.0});
    EXPECT_NEAR(MaxYY(layout, 8.0), 1.0, 1e-12);
    EXPECT_NEAR(layout.Whole().DispYY(2.0, 8.0, 1.0, false, false), 1.0, 1e-12);
    EXPECT_NEAR(layout.Whole().DispYY(1.0, 8.0, 1.0, false, false), 0.5, 1e-12) << "linear between points";
    EXPECT_NEAR(layout.Whole().DispYY(3.0, 8.0, 1.0, false, false), 0.5, 1e-12);
    EXPECT_NEAR(layout.Whole().DispYY(4.0, 8.0, 1.0, false, false), 0.0, 1e-12);
    layout.Myy({0.0, -12.0, -12.0, 0.0});
    EXPECT_NEAR(MaxYY(layout, 8.0), 1.0, 1e-12) << "the largest magnitude";
    EXPECT_NEAR(layout.Whole().DispYY(2.0, 8.0, 1.0, false, false), -1.0, 1e-12) << "with its sign";
}

TEST(SpanDisplacement, TwoTriangleRuleWithAChangeOfSign)
{
    // EI = 1. Sub-span [0, 4], moment 2 to -6: d = 2/8 x 4 = 1, e = 3. A1 = 2 x 0.5 x 1 = 1 at 1/3;
    // A2 = 3 x -6 x 0.5 = -9 at d + 2d/3 = 5/3 (truly at d + 2e/3 = 3).
    // Sub-span [4, 8], moment -6: A = -24 with c = -18 / -12 = 1.5, centroid at 1.5 x 4 / 3 = 2.
    // S = (8 - 5/3)(-9) + (8 - 1/3)(1) + (8 - 4 - 2)(-24) = -57 + 23/3 - 48 = -292/3.
    // Sa at 4 m = (4 - 5/3)(-9) + (4 - 1/3)(1) = -21 + 11/3 = -52/3. -292/3 / 8 x 4 + 52/3 = -94/3 (truly -112/3).
    Layout layout({0.0, 4.0, 8.0});
    layout.Myy({2.0, -6.0, -6.0, -6.0});
    EXPECT_NEAR(AtYY(layout, 4.0), -94.0 / 3.0, 1e-12);
    EXPECT_NEAR(MaxYY(layout), 94.0 / 3.0, 1e-12);
}

TEST(SpanDisplacement, AChangeOfSignInTheMiddleOfASubSpanIsExact)
{
    // d = e, so that the second centroid is where it should be. Linear moment 4 to -4 over [0, 4] and -4 over [4, 8]:
    // unit-load method at 4 m: 4/6 (2 x 4 x 0 + 4 x 2 - 4 x 0 - 2 x 4 x 2) + 4/6 (-2 x 4 x 2 - 4 x 0 - 4 x 2) = -64/3.
    Layout layout({0.0, 4.0, 8.0});
    layout.Myy({4.0, -4.0, -4.0, -4.0});
    EXPECT_NEAR(AtYY(layout, 4.0), -64.0 / 3.0, 1e-12);
}

TEST(SpanDisplacement, LeverArmsAreMeasuredFromTheMembersStart)
{
    // EI = 1, sub-spans of 2 m, moments 2, 4 and 4, 6. Starting at 0:
    // A1 = 6 at 10/9, A2 = 10 at 16/15. S = (4 - 10/9) 6 + (4 - 2 - 16/15) 10 = 80/3; Sa = (2 - 10/9) 6 = 16/3; 8.
    Layout atZero({0.0, 2.0, 4.0});
    atZero.Myy({2.0, 4.0, 4.0, 6.0});
    EXPECT_NEAR(AtYY(atZero, 2.0), 8.0, 1e-12);
    // Starting at 10 every lever arm is 10 shorter: S = 80/3 - 160 = -400/3, Sa = 16/3 - 60 = -164/3,
    // -400/3 / 4 x 2 + 164/3 = -12. Required.
    Layout atTen({10.0, 12.0, 14.0});
    atTen.Myy({2.0, 4.0, 4.0, 6.0});
    EXPECT_NEAR(AtYY(atTen, 12.0), -12.0, 1e-11);
    EXPECT_NEAR(MaxYY(atTen), 12.0, 1e-11);
    // The same as a later span of a longer member.
    Layout member({0.0, 10.0, 12.0, 14.0, 20.0});
    member.Myy({99.0, 99.0, 2.0, 4.0, 4.0, 6.0, 99.0, 99.0});
    EXPECT_NEAR(member.Span(1, 3).DispYY(12.0, 1.0, 1.0, false, false), -12.0, 1e-11);
    EXPECT_NEAR(member.Span(1, 3).MaxDispYY(1.0, 1.0), 12.0, 1e-11);
}

TEST(SpanDisplacement, BothEndMomentFlagsReadTheLeftEndsMoment)
{
    // EI = 1, [0, 2] and [2, 4], moment 4, 8, 12; the left end's moment is 4.
    Layout layout({0.0, 2.0, 4.0});
    layout.Myy({4.0, 8.0, 8.0, 12.0});
    // Neither: (4 + 12) 4^2 / 16 = 16.
    EXPECT_NEAR(AtYY(layout, 2.0, false, false), 16.0, 1e-12);
    // Both: M - 4, that is 0, 4, 8. A1 = 4 at 0; A2 = 12 at 10/9. S = 16 + (2 - 10/9) 12 = 80/3; Sa = 8; 16/3.
    // Reading the right end's own moment, 12, would leave 0, 0, 0.
    EXPECT_NEAR(AtYY(layout, 2.0, true, true), 16.0 / 3.0, 1e-12);
    // Left only: M - 4 + x, that is 0, 6, 12. A1 = 6 at 0; A2 = 18 at 10/9. S = 24 + 16 = 40; Sa = 12; 8.
    EXPECT_NEAR(AtYY(layout, 2.0, true, false), 8.0, 1e-12);
    // Right only: M - x, that is 4, 6, 8: (4 + 8) 4^2 / 16 = 12. With the right end's own moment, M - 3x, 4.
    EXPECT_NEAR(AtYY(layout, 2.0, false, true), 12.0, 1e-12);
}

TEST(SpanDisplacement, EndMomentCorrectionUsesPositionsFromTheMembersStart)
{
    // EI = 1, [4, 6] and [6, 8], moment 4, 8, 12. Right only: slope = 4 / 4 = 1, M - x: 0, 2, 4.
    // A1 = 2 at 0; A2 = 6 at (8 + 2)/6 x 2/3 = 10/9. S = (4 - 4) 2 + (4 - 6 - 10/9) 6 = -56/3;
    // Sa at 6 m = (2 - 4) 2 = -4. -56/3 / 4 x 2 + 4 = -16/3.
    Layout layout({4.0, 6.0, 8.0});
    layout.Myy({4.0, 8.0, 8.0, 12.0});
    EXPECT_NEAR(AtYY(layout, 6.0, false, true), -16.0 / 3.0, 1e-12);
    // Left only: M - 4 + x: 4, 10, 16. A1 = 14 at 24/14 x 2/3 = 8/7; A2 = 26 at 42/26 x 2/3 = 14/13.
    // S = (0 - 8/7) 14 + (-2 - 14/13) 26 = -16 - 80 = -96; Sa = (2 - 4 - 8/7) 14 = -44. -96 / 4 x 2 + 44 = -4.
    EXPECT_NEAR(AtYY(layout, 6.0, true, false), -4.0, 1e-12);
}

TEST(SpanDisplacement, BothFlagsTakeOffAConstant)
{
    // With every moment on one side of zero before and after, both flags take off the deflection of a constant moment.
    Layout layout({0.0, 1.0, 3.0, 4.0});
    layout.Myy({5.0, 9.0, 9.0, 8.0, 8.0, 7.0});
    Layout less({0.0, 1.0, 3.0, 4.0});
    less.Myy({0.0, 4.0, 4.0, 3.0, 3.0, 2.0});
    for (const double pos : {0.5, 1.0, 2.0, 3.0, 3.7})
        EXPECT_NEAR(AtYY(layout, pos, true, true), AtYY(less, pos), 1e-12) << pos;
}

TEST(SpanDisplacement, MaximumTakesNoCorrectionAndLooksAtPointsOnly)
{
    // Uniform moment 8 over 4 m, EI = 1: truly 16 at mid-span; at 1 m and 3 m 8 x 1 x 3 / 2 = 12.
    Layout layout({0.0, 1.0, 3.0, 4.0});
    layout.Myy({8.0, 8.0, 8.0, 8.0, 8.0, 8.0});
    EXPECT_NEAR(MaxYY(layout), 12.0, 1e-12);
    EXPECT_NEAR(AtYY(layout, 2.0), 12.0, 1e-12) << "and is linear in between";
}

TEST(SpanDisplacement, PositionsNearAPointAreInterpolatedTowardsIt)
{
    Layout layout({0.0, 2.0, 4.0});
    layout.Myy({2.0, 4.0, 4.0, 6.0}); // 8 at 2 m, 0 at the ends
    EXPECT_NEAR(AtYY(layout, 2.0005), 8.0 / 2.0 * 2.0005, 1e-9) << "carried on beyond the point at 2 m";
    EXPECT_NEAR(AtYY(layout, 1.9995), 8.0 / 2.0 * 1.9995, 1e-9);
    EXPECT_NEAR(AtYY(layout, 2.0015), 8.0 - 4.0 * 0.0015, 1e-9) << "belongs to the next sub-span";
    EXPECT_NEAR(AtYY(layout, 4.0005), 8.0 - 4.0 * 2.0005, 1e-9) << "beyond the right end by less than 1 mm";
    EXPECT_EQ(AtYY(layout, 4.0015), 0.0);
    EXPECT_EQ(AtYY(layout, 400.0), 0.0);
    EXPECT_EQ(AtYY(layout, infinity), 0.0);
    EXPECT_EQ(AtYY(layout, 0.0), 0.0);
    EXPECT_NEAR(AtYY(layout, -1.0), -4.0, 1e-12) << "before the left end the first line is carried on";
}

TEST(SpanDisplacement, ASubSpanWithoutEndMomentsMakesEverythingNotANumber)
{
    Layout layout({0.0, 1.0, 2.0, 3.0, 4.0});
    layout.Myy({5.0, 5.0, 0.0, 0.0, 5.0, 5.0, 5.0, 5.0});
    EXPECT_TRUE(std::isnan(MaxYY(layout)));
    for (const double pos : {0.5, 1.0, 2.5, 4.0})
        EXPECT_TRUE(std::isnan(AtYY(layout, pos))) << pos;
    EXPECT_EQ(AtYY(layout, 9.0), 0.0) << "beyond the end nothing is interpolated";
    Layout last({0.0, 1.0, 2.0, 3.0});
    last.Myy({5.0, 5.0, 5.0, 5.0, 0.0, 0.0});
    EXPECT_TRUE(std::isnan(MaxYY(last))) << "the last sub-span's area takes part in every candidate";
    Layout outside({0.0, 1.0, 2.0, 3.0});
    outside.Myy({5.0, 5.0, 5.0, 5.0, 0.0, 0.0});
    EXPECT_FALSE(std::isnan(outside.Span(0, 2).MaxDispYY(1.0, 1.0))) << "only sub-spans of the span";
}

TEST(SpanDisplacement, NoMomentInTheOtherAxisMakesThatAxisNotANumberOnly)
{
    Layout layout({0.0, 2.0, 4.0});
    layout.Myy({2.0, 4.0, 4.0, 6.0});
    EXPECT_TRUE(std::isnan(layout.Whole().MaxDispXX(1.0, 1.0)));
    EXPECT_FALSE(std::isnan(layout.Whole().MaxDispYY(1.0, 1.0)));
}

TEST(SpanDisplacement, ZeroStiffnessIsNotFinite)
{
    Layout layout({0.0, 2.0, 4.0});
    layout.Myy({2.0, 4.0, 4.0, 6.0});
    EXPECT_FALSE(std::isfinite(layout.Whole().MaxDispYY(0.0, 1.0)));
    EXPECT_FALSE(std::isfinite(layout.Whole().DispYY(2.0, 1.0, 0.0, false, false)));
}

TEST(SpanDisplacement, TheEndOfASpanHasNoDeflectionAtAll)
{
    // Sums in the stated order leave exactly nothing, however large moments are beside the stiffness.
    Layout layout({0.0, 1.7, 2.9, 4.3});
    layout.Myy({0, 81234.5, 81234.5, 65432.1, 65432.1, 12.3});
    EXPECT_EQ(layout.Whole().DispYY(4.3, 1.0, 1.0, false, false), 0.0);
    EXPECT_EQ(layout.Whole().DispYY(4.3, 1.0, 1.0, true, false), 0.0);
}

TEST(SpanDisplacement, RandomSpansAgreeWithTheDirectSums)
{
    constexpr unsigned int seed = 161803;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    int notNumbers = 0;
    for (int run = 0; run < Keltrix::TestSupport::RandomCases(4000); ++run) {
        const int n = 2 + static_cast<int>(random() % 30);
        const int before = static_cast<int>(random() % 3);
        std::vector<double> positions{run % 3 ? 50.0 * unit(random) : 0.0};
        if (run % 3 == 0 && before > 0) positions[0] = -1.0;
        while (static_cast<int>(positions.size()) < before + n + 2)
            positions.push_back(positions.back() + (random() % 40 ? 0.05 + 2.0 * unit(random) : 0.0));
        Layout layout(positions);
        const int kind = static_cast<int>(random() % 4); // one sign, any sign, many zeros, continuous
        const auto moment = [&] {
            const double size = std::pow(10.0, 4.0 * unit(random));
            const double sign = kind == 0 || random() % 2 ? 1.0 : -1.0;
            return kind == 2 && random() % 3 == 0 ? 0.0 : sign * size;
        };
        double carried = moment();
        double carriedZ = moment();
        for (CSubSpan& subSpan : layout.subSpans) {
            const double y = kind == 3 ? carried : moment();
            const double z = kind == 3 ? carriedZ : moment();
            carried = moment();
            carriedZ = moment();
            subSpan.SetMomentsAll({9.0, y, z}, {9.0, carried, carriedZ});
        }
        const CSpan span = layout.Span(before, before + n);
        const double modulus = 0.5 + unit(random);
        const double inertia = run % 50 == 7 ? 0.0 : 1.0 + 100.0 * unit(random);
        const auto where = [&] {
            return "run " + std::to_string(run) + ", span " + std::to_string(before) + " to " +
                   std::to_string(before + n) + ", E " + Layout::Number(modulus) + ", I " + Layout::Number(inertia) +
                   ", " + layout.Describe();
        };
        for (double Vector::*axis : {&Vector::y, &Vector::z}) {
            const bool major = axis == &Vector::y;
            DirectSums sums{layout, before, before + n, axis, modulus * inertia};
            const double expected = sums.Max();
            const double got = major ? span.MaxDispYY(modulus, inertia) : span.MaxDispXX(modulus, inertia);
            if (std::isnan(expected)) {
                ++notNumbers;
                ASSERT_TRUE(std::isnan(got)) << got << ' ' << where();
            } else if (n <= 16 || std::isinf(expected)) {
                ASSERT_EQ(got, expected) << where();
            } else {
                ASSERT_NEAR(got, expected, 1e-12 * sums.largestTerm) << where();
            }
            for (int i = 0; i < 6; ++i) {
                const bool left = (i & 1) != 0;
                const bool right = (i & 2) != 0;
                double pos = span.PosLeft() - 0.1 + (span.Length() + 0.2) * unit(random);
                if (i >= 3) { // at a point, or within or just beyond 1 mm of it
                    const auto point = static_cast<std::size_t>(before) + random() % static_cast<unsigned>(n + 1);
                    const double offsets[] = {0.0, 0.0005, -0.0005, 0.0015, -0.0015, 0.0009};
                    pos = positions[point] + offsets[random() % 6];
                }
                DirectSums corrected{layout, before, before + n, axis, modulus * inertia};
                corrected.Correct(left, right);
                const double at = corrected.At(pos);
                const double gotAt = major ? span.DispYY(pos, modulus, inertia, left, right)
                                           : span.DispXX(pos, modulus, inertia, left, right);
                if (std::isnan(at)) {
                    ASSERT_TRUE(std::isnan(gotAt)) << gotAt << " at " << Layout::Number(pos) << ' ' << where();
                    continue;
                }
                ASSERT_EQ(gotAt, at) << "at " << Layout::Number(pos) << (left ? " left" : "") << (right ? " right" : "")
                                     << ' ' << where();
            }
        }
    }
    EXPECT_GT(notNumbers, Keltrix::TestSupport::RandomCases(50));
    EXPECT_LT(notNumbers, 4000);
}

TEST(SpanDisplacement, TwentyThousandSubSpansAreQuick)
{
    // Uniform load w = 1 on L = 200, EI = 1e8, sampled at n equal sub-spans: 5 w L^4 / 384 EI at mid-span, less 0.8 / n^2
    // of it for the chords of the parabola and 6.4 (n - 1) / n^4 of it for the first triangle's centroid.
    constexpr int n = 20000;
    constexpr double L = 200.0;
    constexpr double stiffness = 1e8;
    constexpr double truth = 5.0 * L * L * L * L / (384.0 * stiffness);
    std::vector<double> positions;
    std::vector<double> moments;
    std::vector<double> shears;
    for (int i = 0; i <= n; ++i)
        positions.push_back(L * i / n);
    for (std::size_t i = 0; i < n; ++i)
        for (const double x : {positions[i], positions[i + 1]}) {
            moments.push_back(x * (L - x) / 2.0);
            shears.push_back(L / 2.0 - x);
        }
    Layout layout(positions);
    layout.Myy(moments).Mzz(moments).Fz(shears).Fy(shears);
    const CSpan span = layout.Whole();
    EXPECT_NEAR(span.MaxDispYY(stiffness, 1.0), truth, 1e-8 * truth);
    EXPECT_NEAR(span.MaxDispXX(stiffness, 1.0), truth, 1e-8 * truth);
    EXPECT_NEAR(span.DispYY(L / 2.0, stiffness, 1.0, false, false), truth, 1e-8 * truth);
    EXPECT_NEAR(span.DispXX(L / 2.0, stiffness, 1.0, true, false), truth, 1e-8 * truth);
    EXPECT_NEAR(span.InterpolateMoments(0.3).y, 0.105 * L * L, 1e-4);
    EXPECT_NEAR(span.MaxForces().GetMomentsLeft().y, L * L / 8.0, 1e-9);
    EXPECT_TRUE(span.IsLoadedWithUDL());
    EXPECT_TRUE(span.IsLoadedWithCentrePointLoad());
    EXPECT_FALSE(span.IsDestabilized());
    EXPECT_NEAR(MeanMoments(span).y, L * L / 12.0, 1e-4);
}

TEST(SpanDisplacement, PointsCloserThanTheToleranceAreTakenForTheOneAskedFor)
{
    // Uniform moment 8 on 1 m, EI = 1: y = 4 x (1 - x). Points every 0.25 mm around 0.5: the walk stops at 0.49925, the
    // first within 1 mm of 0.5, and carries its line from 0.499 on to 0.5: slope 4 (1 - 0.99825) = 0.007.
    Layout layout({0.0, 0.499, 0.49925, 0.4995, 0.49975, 0.5, 1.0});
    layout.Myy(std::vector<double>(12, 8.0));
    EXPECT_NEAR(AtYY(layout, 0.5), 4.0 * 0.499 * 0.501 + 0.007 * 0.001, 1e-9);
}
