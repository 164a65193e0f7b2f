// Load patterns and deflections of prismatic members against the closed forms of beam theory (moment-area and unit-load
// methods; the deflections are those of any table of beam formulas), and by exactly how much the required rules depart
// from them.
//
// Symbols: L span, w uniform load, P point load, M end moment, n equal sub-spans of length h = L / n, EI stiffness,
// x distance from the span's left end. Sagging moments are positive, V = dM/dx, deflections are from the chord.

#include "member/LayoutSupport.h"

#include <cmath>
#include <functional>

#include <gtest/gtest.h>

using namespace LayoutSupport;
using namespace Keltrix::Steel;

namespace {

using Function = std::function<double(double)>;

constexpr double EI = 2.5e7;

/// A span of length L in n equal sub-spans, its left end at `start`, with moment and shear given from there. A member
/// point stands at the member's start too, when the span does not start there.
struct Beam {
    Layout layout;
    int left = 0;
    int n;
    double L;
    double start;

    Beam(double length, int subSpans, const Function& moment, const Function& shear, double from = 0.0) :
        n(subSpans), L(length), start(from)
    {
        std::vector<double> positions;
        if (from != 0.0) {
            positions.push_back(0.0);
            left = 1;
        }
        for (int i = 0; i <= n; ++i)
            positions.push_back(from + At(i));
        layout = Layout(positions);
        for (int i = 0; i < n; ++i) {
            CSubSpan& subSpan = layout.subSpans[static_cast<std::size_t>(left + i)];
            subSpan.SetMomentsAll({0.0, moment(At(i)), 0.0}, {0.0, moment(At(i + 1)), 0.0});
            // Shear just inside the sub-span, so that a point load at a joint is a jump.
            const double inside = 1e-9 * L / n;
            const double vl = shear(At(i) + inside);
            const double vr = shear(At(i + 1) - inside);
            subSpan.SetForcesAll({0.0, 0.0, std::round(vl)}, {0.0, 0.0, std::round(vr)});
        }
    }

    double h() const { return L / n; }
    double At(int i) const { return L * i / n; }
    CSpan Span() const { return layout.Span(left, left + n); }
    double Deflection(int i) const { return Span().DispYY(start + At(i), EI, 1.0, false, false); }
    double MomentL(int i) const { return layout.subSpans[static_cast<std::size_t>(left + i)].GetMomentsLeft().y; }
    double MomentR(int i) const { return layout.subSpans[static_cast<std::size_t>(left + i)].GetMomentsRight().y; }

    /// Deflection at point k of the beam whose moments are linear between the points, by the unit-load method.
    double UnitLoad(int k) const
    {
        const double a = At(k);
        const auto unit = [&](double x) { return x <= a ? x * (L - a) / L : a * (L - x) / L; };
        double sum = 0.0;
        for (int i = 0; i < n; ++i) {
            const double u1 = unit(At(i));
            const double u2 = unit(At(i + 1));
            const double m1 = MomentL(i);
            const double m2 = MomentR(i);
            sum += h() / 6.0 * (2.0 * m1 * u1 + m1 * u2 + m2 * u1 + 2.0 * m2 * u2);
        }
        return sum / EI;
    }

    /// What the required rules add at point k: the second triangle's centroid taken at d + 2d/3 instead of d + 2e/3
    /// wherever a sub-span's end moments are not strictly of one sign, and lever arms shorter by the span's start.
    double RequiredDeparture(int k) const
    {
        const double a = At(k);
        double sum = 0.0;
        for (int i = 0; i < n; ++i) {
            const double m1 = MomentL(i);
            const double m2 = MomentR(i);
            double shift = -start * (m1 + m2) / 2.0 * h();
            if (!((m1 > 0.0 && m2 > 0.0) || (m1 < 0.0 && m2 < 0.0))) {
                const double d = std::abs(m1) / (std::abs(m1) + std::abs(m2)) * h();
                const double e = h() - d;
                shift += m2 * e / 2.0 * 2.0 * (e - d) / 3.0;
            }
            sum += shift * (a / L - (i < k ? 1.0 : 0.0));
        }
        return sum / EI;
    }
};

/// Rounding of sums whose terms are at most about the largest moment times L squared.
double Rounding(const Beam& beam, double largestMoment)
{
    return 1e-13 * beam.n * largestMoment * beam.L * (beam.L + beam.start) / EI;
}

/// The span's deflections are those of beam theory for moments linear between the points plus the required departures.
void ExpectUnitLoadDeflections(const Beam& beam, double largestMoment, const std::string& what)
{
    for (int k = 1; k <= beam.n; ++k)
        EXPECT_NEAR(beam.Deflection(k), beam.UnitLoad(k) + beam.RequiredDeparture(k), Rounding(beam, largestMoment))
            << what << ", n " << beam.n << ", start " << beam.start << ", point " << k;
}

constexpr double w = 20e3;
constexpr double P = 60e3;
constexpr double M = 90e3;

Beam CentrePointLoad(double L, int n, double start = 0.0)
{
    return {L, n, [L](double x) { return x <= L / 2 ? P * x / 2 : P * (L - x) / 2; },
            [L](double x) { return x < L / 2 ? P / 2 : -P / 2; }, start};
}

Beam UniformLoad(double L, int n, double start = 0.0)
{
    return {L, n, [L](double x) { return w * x * (L - x) / 2; }, [L](double x) { return w * (L / 2 - x); }, start};
}

Beam EndMoments(double L, int n, double left, double right, double start = 0.0)
{
    return {L, n, [=](double x) { return left + (right - left) * x / L; }, [=](double) { return (right - left) / L; },
            start};
}

double UniformLoadDeflection(double L, double x) { return w * x * (L * L * L - 2 * L * x * x + x * x * x) / (24 * EI); }

} // namespace

TEST(SpanClosedForm, SimplySupportedUnderCentrePointLoad)
{
    // Truth at mid-span: P L^3 / 48 EI. The first sub-span starts at a zero moment, so the centroid of its triangle is
    // taken at its left end: mid-span comes out as 1 - 4 / n^3 of the truth, half of it with two sub-spans.
    const double L = 8.0;
    const double truth = P * L * L * L / (48 * EI);
    struct Row {
        int n;
        double ratio;
    };
    for (const Row& row : {Row{2, 0.5}, Row{4, 0.9375}, Row{10, 0.996}, Row{20, 0.9995}}) {
        const Beam beam = CentrePointLoad(L, row.n);
        EXPECT_NEAR(beam.UnitLoad(row.n / 2), truth, 1e-12) << "moments are linear between the points";
        EXPECT_NEAR(beam.Deflection(row.n / 2) / truth, row.ratio, 1e-11) << "n " << row.n;
        EXPECT_NEAR(beam.Span().MaxDispYY(EI, 1.0) / truth, row.ratio, 1e-11) << "n " << row.n;
        ExpectUnitLoadDeflections(beam, P * L / 4, "centre point load");
    }
}

TEST(SpanClosedForm, PatternOfACentrePointLoad)
{
    for (const int n : {2, 4, 10}) {
        const Beam beam = CentrePointLoad(8.0, n);
        const CSpan span = beam.Span();
        EXPECT_TRUE(span.IsMinorAxisLoaded()) << n;
        EXPECT_FALSE(span.IsMajorAxisLoaded()) << n;
        EXPECT_TRUE(span.IsLoaded(false)) << n;
        EXPECT_TRUE(span.IsLoadedWithPointLoad()) << n;
        EXPECT_TRUE(span.IsLoadedWithCentrePointLoad()) << n;
        EXPECT_FALSE(span.IsLoadedWithUDL()) << n;
        EXPECT_FALSE(span.IsLeftEndPtLoadOnly()) << n;
        EXPECT_FALSE(span.IsRightEndPtLoadOnly()) << n;
        EXPECT_TRUE(span.IsLeftEndMomentLoaded()) << "no end moment, and the sense is the opposite of the name";
        EXPECT_TRUE(span.IsRightEndMomentLoaded());
    }
    const Beam later = CentrePointLoad(8.0, 4, 8.0);
    EXPECT_FALSE(later.Span().IsLoadedWithCentrePointLoad()) << "12 / 8 is not a half";
    EXPECT_TRUE(later.Span().IsLoadedWithPointLoad());
}

TEST(SpanClosedForm, SimplySupportedUnderUniformLoad)
{
    // Truth at mid-span: 5 w L^4 / 384 EI. Chords of the moment parabola take off 0.8 / n^2 of it, the first triangle
    // 6.4 (n - 1) / n^4: 40 % of the truth with 2 sub-spans, 87.5 % with 4, 98.6 % with 10, 99.7 % with 20.
    const double L = 8.0;
    const double truth = 5 * w * L * L * L * L / (384 * EI);
    struct Row {
        int n;
        double ratio;
    };
    for (const Row& row : {Row{2, 0.4}, Row{4, 0.875}, Row{10, 0.98624}, Row{20, 0.99724}, Row{100, 0.9999136640}}) {
        const Beam beam = UniformLoad(L, row.n);
        EXPECT_NEAR(beam.Deflection(row.n / 2) / truth, row.ratio, 1e-10) << "n " << row.n;
        ExpectUnitLoadDeflections(beam, w * L * L / 8, "uniform load");
        for (int k = 1; k < row.n; ++k) {
            const double x = beam.At(k);
            EXPECT_NEAR(beam.UnitLoad(k),
                        UniformLoadDeflection(L, x) - w * beam.h() * beam.h() * x * (L - x) / (24 * EI), 1e-11)
                << "n " << row.n << ", x " << x;
        }
    }
}

TEST(SpanClosedForm, PatternOfAUniformLoad)
{
    for (const int n : {2, 4, 10, 20}) {
        const Beam beam = UniformLoad(8.0, n);
        const CSpan span = beam.Span();
        EXPECT_TRUE(span.IsMinorAxisLoaded()) << n;
        EXPECT_TRUE(span.IsLoaded(false)) << n;
        EXPECT_FALSE(span.IsLoadedWithPointLoad()) << n;
        EXPECT_TRUE(span.IsLoadedWithUDL()) << n;
        EXPECT_TRUE(span.IsLoadedWithCentrePointLoad()) << "no jump is off-centre where there is none; n " << n;
    }
    EXPECT_TRUE(UniformLoad(8.0, 10, 24.0).Span().IsLoadedWithUDL()) << "wherever the span starts";
}

TEST(SpanClosedForm, EndMoments)
{
    const double L = 6.0;
    for (const int n : {2, 4, 10}) {
        // Equal end moments: M L^2 / 8 EI, exact.
        const Beam equal = EndMoments(L, n, M, M);
        EXPECT_NEAR(equal.Deflection(n / 2), M * L * L / (8 * EI), 1e-12) << n;
        EXPECT_TRUE(equal.Span().IsLeftEndMomentLoadOnly());
        EXPECT_TRUE(equal.Span().IsRightEndMomentLoadOnly());
        EXPECT_FALSE(equal.Span().IsLeftEndMomentLoaded()) << "90 kNm is more than 100 Nm: the sense is required";
        // A moment at the left end only: M L^2 / 16 EI at mid-span, exact, because the last sub-span's second
        // triangle has no area.
        const Beam left = EndMoments(L, n, M, 0.0);
        EXPECT_NEAR(left.Deflection(n / 2), M * L * L / (16 * EI), 1e-12) << n;
        // The mirror image departs by the first triangle: 1 - (8/3) / n^3 of the truth.
        const Beam right = EndMoments(L, n, 0.0, M);
        EXPECT_NEAR(right.Deflection(n / 2) / (M * L * L / (16 * EI)), 1.0 - 8.0 / 3.0 / (n * n * n), 1e-11) << n;
        // Double curvature with the zero in the middle of a sub-span, or on a point.
        for (const auto& [m1, m2] : {std::pair(M, -M), std::pair(M, -M / 3), std::pair(-M / 4, M)})
            ExpectUnitLoadDeflections(EndMoments(L, n, m1, m2), M, "end moments");
    }
    EXPECT_FALSE(EndMoments(L, 4, M, 0.0).Span().IsLeftEndMomentLoadOnly());
    EXPECT_FALSE(EndMoments(L, 4, M, -M).Span().IsRightEndMomentLoadOnly());
}

TEST(SpanClosedForm, CantileverWithATipLoad)
{
    const double L = 4.0;
    // From the chord between support and tip: y(x) - y(L) x / L with y = P x^2 (3 L - x) / 6 EI.
    const auto fromChord = [L](double x) { return P * x * x * (3 * L - x) / (6 * EI) - P * L * L * x / (3 * EI); };
    for (const int n : {2, 4, 8}) {
        const Beam fixedLeft(
            L, n, [L](double x) { return -P * (L - x); }, [](double) { return P; });
        for (int k = 1; k < n; ++k)
            EXPECT_NEAR(fixedLeft.Deflection(k), fromChord(fixedLeft.At(k)), 1e-12)
                << "exact; n " << n << " point " << k;
        // The moments of left ends are compared, so that a moment which varies hides the load: required.
        EXPECT_FALSE(fixedLeft.Span().IsRightEndPtLoadOnly()) << n;
        EXPECT_FALSE(fixedLeft.Span().IsLeftEndPtLoadOnly()) << n;
        const Beam fixedRight(
            L, n, [](double x) { return P * x; }, [](double) { return P; });
        EXPECT_EQ(fixedRight.Span().IsLeftEndPtLoadOnly(), n == 2) << n;
        EXPECT_FALSE(fixedRight.Span().IsRightEndPtLoadOnly()) << n;
        ExpectUnitLoadDeflections(fixedRight, P * L, "cantilever fixed at the right");
        // Mid-length: -fromChord with 1 - (8/3) / n^3, as for an end moment of the same size.
        EXPECT_NEAR(fixedRight.Deflection(n / 2) / -fromChord(L / 2), 1.0 - 8.0 / 3.0 / (n * n * n), 1e-11) << n;
    }
}

TEST(SpanClosedForm, CantileverUnderUniformLoadIsNoTipLoad)
{
    const double L = 4.0;
    const Beam beam(
        L, 8, [](double x) { return w * x * x / 2; }, [](double x) { return w * x; });
    EXPECT_FALSE(beam.Span().IsLeftEndPtLoadOnly());
    EXPECT_TRUE(beam.Span().IsLoadedWithUDL());
    ExpectUnitLoadDeflections(beam, w * L * L / 2, "cantilever under uniform load");
}

TEST(SpanClosedForm, ProppedCantileverUnderUniformLoad)
{
    // Fixed at the left: M = -w L^2 / 8 + 5 w L x / 8 - w x^2 / 2, zero at L / 4;
    // y = w x^2 (3 L^2 - 5 L x + 2 x^2) / 48 EI.
    const double L = 8.0;
    for (const int n : {4, 8, 10, 20}) {
        const Beam beam(
            L, n, [L](double x) { return -w * L * L / 8 + 5 * w * L * x / 8 - w * x * x / 2; },
            [L](double x) { return 5 * w * L / 8 - w * x; });
        ExpectUnitLoadDeflections(beam, w * L * L / 8, "propped cantilever");
        for (int k = 1; k < n; ++k) {
            const double x = beam.At(k);
            const double y = w * x * x * (3 * L * L - 5 * L * x + 2 * x * x) / (48 * EI);
            EXPECT_NEAR(beam.UnitLoad(k), y - w * beam.h() * beam.h() * x * (L - x) / (24 * EI), 1e-11)
                << "n " << n << ", x " << x;
        }
        EXPECT_TRUE(beam.Span().IsLoadedWithUDL()) << n;
        EXPECT_FALSE(beam.Span().IsLeftEndMomentLoaded()) << n;
        EXPECT_TRUE(beam.Span().IsRightEndMomentLoaded()) << n;
    }
}

TEST(SpanClosedForm, SecondSpanOfAContinuousBeam)
{
    // Two equal spans under uniform load: M = 3 w L x / 8 - w x^2 / 2 in the first, its mirror image in the second. Both
    // deflect alike in truth: y = w x (L^3 - 3 L x^2 + 2 x^3) / 48 EI, x from the outer support.
    const double L = 8.0;
    const int n = 16;
    const auto moment = [L](double x) { return 3 * w * L * x / 8 - w * x * x / 2; };
    const Beam first(L, n, moment, [L](double x) { return 3 * w * L / 8 - w * x; });
    const Beam second(
        L, n, [&](double x) { return moment(L - x); }, [L](double x) { return 5 * w * L / 8 - w * x; }, L);
    const Beam secondAtZero(
        L, n, [&](double x) { return moment(L - x); }, [L](double x) { return 5 * w * L / 8 - w * x; });
    const auto truth = [L](double x) { return w * x * (L * L * L - 3 * L * x * x + 2 * x * x * x) / (48 * EI); };
    ExpectUnitLoadDeflections(first, w * L * L / 8, "first span");
    ExpectUnitLoadDeflections(second, w * L * L / 8, "second span");
    ExpectUnitLoadDeflections(secondAtZero, w * L * L / 8, "second span moved to 0");
    const double mid = truth(L / 2);
    EXPECT_NEAR(mid, w * L * L * L * L / (192 * EI), 1e-15);
    EXPECT_NEAR(first.Deflection(n / 2) / mid, 1.0, 0.02);
    EXPECT_NEAR(secondAtZero.Deflection(n / 2) / mid, 1.0, 0.02);
    // The second span starts at L. Area of its moments: w L^3 / 48, of its inner half -w L^3 / 192, so that the lever arms
    // shift mid-span by -L (w L^3 / 96 + w L^3 / 192) / EI = -w L^4 / 64 EI, minus three times the truth: it comes out
    // as minus twice the truth.
    EXPECT_NEAR(second.Deflection(n / 2) / mid, -2.0, 0.03);
    EXPECT_GT(second.Span().MaxDispYY(EI, 1.0), 1.9 * first.Span().MaxDispYY(EI, 1.0));
}

TEST(SpanClosedForm, SimpleSpanThatDoesNotStartAtZero)
{
    // The shift is -start (area x a / L - area up to a) / EI. Under symmetrical load it is zero at mid-span and
    // opposite at the quarter points: for a uniform load -start x 3 w L^3 / 384 EI at L / 4, where the truth is
    // 57 w L^4 / 6144 EI: 48/57 = 84.2 % of the truth for a span that starts at L.
    const double L = 8.0;
    const int n = 40;
    const double quarter = 57 * w * L * L * L * L / (6144 * EI);
    EXPECT_NEAR(quarter, UniformLoadDeflection(L, L / 4), 1e-15);
    const Beam atZero = UniformLoad(L, n);
    const Beam atL = UniformLoad(L, n, L);
    EXPECT_NEAR(atZero.Deflection(n / 4) / quarter, 1.0, 1e-3);
    EXPECT_NEAR(atL.Deflection(n / 4) / quarter, 1.0 - 48.0 / 57.0, 2e-3);
    EXPECT_NEAR(atL.Deflection(3 * n / 4) / quarter, 1.0 + 48.0 / 57.0, 2e-3);
    EXPECT_NEAR(atL.Deflection(n / 2) / UniformLoadDeflection(L, L / 2), 1.0, 1e-3);
    ExpectUnitLoadDeflections(atL, w * L * L / 8, "uniform load on a later span");
    // A uniform moment is shifted nowhere.
    EXPECT_NEAR(EndMoments(L, 8, M, M, 3 * L).Deflection(2), EndMoments(L, 8, M, M).Deflection(2), 1e-12);
}
