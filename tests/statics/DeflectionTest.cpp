// Deflections against limits, with the numbers of a calculation by hand.

#include <stdexcept>

#include "keltrix/statics/Deflections.h"
#include "statics/Beams.h"

namespace StaticsTest {

namespace {

// 9 m, EI = 21 MN·m², dead 6 kN/m, imposed 8 kN/m: 5 x 8 x 9⁴/(384 x 21,000) = 32.54 mm, and 24.41 mm by the dead load.
Beam FloorBeam()
{
    Beam beam = Single(9.0, PINNED, PINNED);
    beam.cases = {{L"Dead", ActionKind::Permanent, Category::None, false},
                  {L"Imposed", ActionKind::Imposed, Category::B, false}};
    beam.loads = {UniformLoad(0, 6e3), UniformLoad(1, 8e3)};
    return beam;
}
constexpr double IMPOSED = 5.0 * 8e3 * 6561.0 / (384.0 * EI);
constexpr double DEAD = 5.0 * 6e3 * 6561.0 / (384.0 * EI);

std::vector<DeflectionCheck> Check(const Beam& beam, Basis basis, const std::vector<DeflectionLimit>& limits,
                                   const std::vector<double>& camber = {})
{
    const Analysis analysis(beam);
    EXPECT_TRUE(analysis.IsAnswered());
    return CheckDeflections(analysis, Expand(analysis, MakeRules(analysis, {basis, Expression::E610})).list, limits,
                            camber);
}

} // namespace

TEST(Deflections, ImposedLoadsOfAFloorBeam)
{
    for (const Basis basis : {Basis::BS5950, Basis::EN1990UK}) {
        const auto brittle = Check(FloorBeam(), basis, DeflectionLimitsOf(basis, true));
        ASSERT_EQ(brittle.size(), 1U);
        EXPECT_TRUE(brittle[0].IsEvaluated());
        EXPECT_NEAR(IMPOSED, 0.03254, 5e-6);
        ExpectClose(brittle[0].deflection, IMPOSED);
        ExpectClose(brittle[0].allowed, 0.025);
        ExpectClose(brittle[0].utilisation, IMPOSED / 0.025);
        ExpectClose(brittle[0].at, 4.5);
        ExpectClose(Check(FloorBeam(), basis, DeflectionLimitsOf(basis, false))[0].allowed, 0.045);
    }
    EXPECT_TRUE(DeflectionLimitsOf(Basis::EN1990, true).empty());
    EXPECT_EQ(*DeflectionLimitsOf(Basis::BS5950, true)[0].clause.ToUtf8(), "BS 5950-1 2.5.2, Table 8");
    EXPECT_EQ(*DeflectionLimitsOf(Basis::EN1990UK, true)[0].clause.ToUtf8(), "NA to BS EN 1993-1-1, NA.2.23");
}

// All loads against span/250 with a rise of 20 mm. The rise is a parabola, the deflection flatter at its ends: 36.95 mm at the middle.
TEST(Deflections, TotalLessCamber)
{
    DeflectionLimit limit;
    limit.spanRatio = 250.0;
    ExpectClose(Check(FloorBeam(), Basis::BS5950, {limit})[0].deflection, DEAD + IMPOSED);
    const auto checks = Check(FloorBeam(), Basis::BS5950, {limit}, {0.020});
    ExpectClose(checks[0].deflection, DEAD + IMPOSED - 0.020, 1e-9);
    ExpectClose(checks[0].allowed, 0.036);
    // More camber than load: what counts is the rise that is left.
    EXPECT_LT(Check(FloorBeam(), Basis::BS5950, {limit}, {0.200})[0].deflection, -0.140);
    // A limit on variable loads knows no camber.
    ExpectClose(Check(FloorBeam(), Basis::BS5950, DeflectionLimitsOf(Basis::BS5950, true), {0.020})[0].deflection,
                IMPOSED);
}

TEST(Deflections, WithoutACombinationNothingIsChecked)
{
    DeflectionLimit limit;
    limit.spanRatio = 250.0;
    limit.state = LimitState::QuasiPermanent;
    const auto checks = Check(FloorBeam(), Basis::BS5950, {limit});
    ASSERT_EQ(checks.size(), 1U);
    EXPECT_FALSE(checks[0].IsEvaluated());
    EXPECT_EQ(checks[0].utilisation, INFINITY);
    EXPECT_FALSE(checks[0].IsPassed());
    EXPECT_GE(checks[0].reason.Find(L"no combination of the limit state"), 0);
}

TEST(Deflections, WithoutAnAnswerNothingIsChecked)
{
    const Analysis analysis(Single(9.0, PINNED, 0));
    Combination all;
    all.state = LimitState::Serviceability;
    all.terms = {{0, 1.0, {}}};
    EXPECT_FALSE(analysis.Spans().empty());
    EXPECT_TRUE(CheckDeflections(analysis, {all}, DeflectionLimitsOf(Basis::BS5950, true)).empty());
}

// A span of 6 m with an overhang of 2 m, 10 kN at its tip: P a² (L + a)/3EI down there; the span rises by P a L²/(9√3 EI). With the span loaded alone, the tip
// rises by W L³ a/24EI.
TEST(Deflections, OverhangsFromTheirSupportsAndSpansFromTheirChords)
{
    Beam beam = Plain(8.0);
    beam.supports = {Held(0.0, PINNED), Held(6.0, PINNED)};
    beam.cases = {{L"Imposed", ActionKind::Imposed, Category::A, true}};
    beam.loads = {PointLoad(0, 10e3, 8.0), UniformLoad(0, 2e3, 0.0, 6.0)};
    const auto checks = Check(beam, Basis::BS5950, DeflectionLimitsOf(Basis::BS5950, false));
    ASSERT_EQ(checks.size(), 2U);
    ExpectClose(checks[0].allowed, 6.0 / 200.0);
    // On the span both cases are close: 5 W L⁴/384EI down, P a L²/(9√3 EI) up. The larger counts, with its sign.
    const double down = 5.0 * 2e3 * 1296.0 / (384.0 * EI);
    const double up = 10e3 * 2.0 * 36.0 / (9.0 * std::sqrt(3.0) * EI);
    EXPECT_GT(up, down);
    ExpectClose(checks[0].deflection, -up);
    ExpectClose(checks[1].deflection, 10e3 * 4.0 * 8.0 / (3.0 * EI));
    ExpectClose(checks[1].allowed, 2.0 / 180.0);
    ExpectClose(checks[1].at, 8.0);
    // On springs the span sinks as a whole; its deflection is from the chord.
    beam.supports[0].vertical = beam.supports[1].vertical = 1e5;
    ExpectClose(Check(beam, Basis::BS5950, DeflectionLimitsOf(Basis::BS5950, false))[0].deflection, -up, 1e-9);
}

// The same seen from its other end, on springs: the tip on the left is measured from its own support, and no camber counts for it.
TEST(Deflections, AnOverhangOnTheLeft)
{
    Beam beam = Plain(8.0);
    beam.supports = {Held(2.0, PINNED), Held(8.0, PINNED)};
    beam.supports[0].vertical = beam.supports[1].vertical = 1e6;
    beam.loads = {PointLoad(0, 10e3, 0.0)};
    const Analysis analysis(beam);
    const Combination all{L"all", L"", LimitState::Serviceability, {{0, 1.0, {}}}, {}};
    DeflectionLimit limit;
    limit.spanRatio = 200.0;
    limit.overhangRatio = 180.0;
    const auto checks = CheckDeflections(analysis, {all}, {limit}, {0.5, 0.0});
    ASSERT_EQ(checks.size(), 2U);
    // Reactions of 10 x 8/6 and -10 x 2/6 kN sink by 13.33 mm and rise by 3.33 mm: the tip goes down by a third of the difference more.
    const double sinks = 10e3 * 8.0 / 6.0 / 1e6;
    const double rises = 10e3 * 2.0 / 6.0 / 1e6;
    ExpectClose(checks[0].deflection, 10e3 * 4.0 * 8.0 / (3.0 * EI) + (sinks + rises) / 3.0, 1e-10);
    ExpectClose(checks[1].deflection, -10e3 * 2.0 * 36.0 / (9.0 * std::sqrt(3.0) * EI), 1e-10);
}

TEST(Deflections, AcrossTheWeb)
{
    Beam beam = Single(6.0, PINNED, PINNED);
    beam.cases = {{L"Wind", ActionKind::Wind, Category::None, false}};
    beam.loads = {UniformLoad(0, 1e3, 0.0, INFINITY, Direction::Minor)};
    DeflectionLimit limit;
    limit.spanRatio = 300.0;
    limit.minor = true;
    ExpectClose(Check(beam, Basis::BS5950, {limit})[0].deflection, 5.0 * 1e3 * 1296.0 / (384.0 * 210e9 * 1e-5));
}

// 6 m, EI = 20.5 MN·m²: permanent 20 kN/m, imposed 6 kN/m, wind -16 kN/m. Of the variable loads the wind alone deflects most, by 5 x 16 x 6⁴/(384 x 20,500) =
// 13.171 mm upwards; with 80 % of the imposed load it is 6.585 mm, and the imposed load alone makes 4.939 mm. All forces of 1 G + 1 W are a third of those of
// 1 G + 0.8 Q + 0.8 W, because the loads are 4 and 12 kN/m.
TEST(Deflections, WindAloneGovernsVariableLoads)
{
    Beam beam = Single(6.0, PINNED, PINNED);
    beam.section.E = 205e9;
    beam.cases = {{L"G", ActionKind::Permanent, Category::None, false},
                  {L"Q", ActionKind::Imposed, Category::B, false},
                  {L"W", ActionKind::Wind, Category::None, false}};
    beam.loads = {UniformLoad(0, 20e3), UniformLoad(1, 6e3), UniformLoad(2, -16e3)};
    for (const Basis basis : {Basis::BS5950, Basis::EN1990UK}) {
        const auto checks = Check(beam, basis, DeflectionLimitsOf(basis, false));
        ASSERT_EQ(checks.size(), 1U);
        EXPECT_NEAR(checks[0].deflection, -13.171e-3, 5e-7);
        EXPECT_NEAR(checks[0].utilisation, 13.171 / 30.0, 5e-5);
    }
}

// Under the permanent load alone the beam stays above its chord by the rest of the camber: 40 - 24.41 = 15.59 mm. With the imposed load it sinks by 16.95 mm.
// Against span/500 both count.
TEST(Deflections, TheRiseUnderPermanentLoadsAloneCounts)
{
    DeflectionLimit limit;
    limit.spanRatio = 500.0;
    const auto checks = Check(FloorBeam(), Basis::BS5950, {limit}, {0.045});
    EXPECT_NEAR(checks[0].deflection, DEAD - 0.045, 1e-9);
    EXPECT_NEAR(checks[0].deflection, -0.02059, 5e-6);
}

TEST(Deflections, RatiosAndCambersThatAreNoneAreNotAPass)
{
    DeflectionLimit limit;
    for (const double ratio : {static_cast<double>(NAN), -250.0, static_cast<double>(INFINITY)}) {
        limit.spanRatio = ratio;
        const auto checks = Check(FloorBeam(), Basis::BS5950, {limit});
        ASSERT_EQ(checks.size(), 1U) << ratio;
        EXPECT_FALSE(checks[0].IsEvaluated() && checks[0].utilisation <= 1.0);
        EXPECT_TRUE(checks[0].utilisation > 1.0);
        EXPECT_GE(checks[0].reason.Find(L"of the limit: 0 (no limit) or a number above zero"), 0);
    }
    limit.spanRatio = 100.0;
    EXPECT_TRUE(Check(FloorBeam(), Basis::BS5950, {limit}, {0.0})[0].IsPassed());
    const auto checks = Check(FloorBeam(), Basis::BS5950, {limit}, {NAN});
    EXPECT_FALSE(checks[0].IsPassed());
    EXPECT_EQ(*checks[0].reason.ToUtf8(), "the camber of the span is not a number");
    limit.counted = static_cast<Counted>(7);
    EXPECT_FALSE(Check(FloorBeam(), Basis::BS5950, {limit})[0].IsPassed());
    EXPECT_THROW(DeflectionLimitsOf(static_cast<Basis>(7), true), std::invalid_argument);
}

TEST(Deflections, CombinationsOfUnknownCasesAreRefused)
{
    const Analysis analysis(FloorBeam());
    const Combination unknown{L"all", L"", LimitState::Serviceability, {{7, 1.0, {}}}, {}};
    EXPECT_THROW(CheckDeflections(analysis, {unknown}, DeflectionLimitsOf(Basis::BS5950, true)), std::invalid_argument);
}

} // namespace StaticsTest
