// Standard cases. Formulas are those of the tables of structural handbooks (Roark's Formulas for Stress and Strain, 7th edition, chapter 8;
// The Steel Construction Institute, Steel Designers' Manual, 6th edition, appendix: bending moment and reaction tables), or derived where they stand.
// W is a load for each metre, P a force, C a clockwise moment. EI is that of Beams.h.

#include <functional>
#include <stdexcept>
#include <string>

#include "statics/Beams.h"

namespace StaticsTest {

namespace {

constexpr double L = 8.0;
constexpr double W = 12e3;
constexpr double P = 50e3;
constexpr double C = 30e3;

Response With(Beam beam, const std::vector<Load>& loads)
{
    beam.loads = loads;
    return Solved(beam);
}
double LeftMoment(const Response& r) { return r.major.Moment(0.0, Side::Right); }
double RightMoment(const Response& r) { return r.major.Moment(1e9, Side::Left); }

} // namespace

// Both ends clamped: end moments, sagging above zero.
TEST(ClosedForms, FixedEndMoments)
{
    struct Row {
        const char* name;
        std::vector<Load> loads;
        double left, right;
    };
    const double a = 3.0;
    const double b = L - a;
    const double c = 2.5; // length of a load from the left end
    const Row rows[] = {
        {"uniform", {UniformLoad(0, W)}, -W * L * L / 12, -W * L * L / 12},
        {"at the middle", {PointLoad(0, P, L / 2)}, -P * L / 8, -P * L / 8},
        {"anywhere", {PointLoad(0, P, a)}, -P * a * b * b / (L * L), -P * a * a * b / (L * L)},
        {"at the third points", {PointLoad(0, P, L / 3), PointLoad(0, P, 2 * L / 3)}, -2 * P * L / 9, -2 * P * L / 9},
        {"uniform from the left end",
         {UniformLoad(0, W, 0.0, c)},
         -W * c * c * (6 * L * L - 8 * c * L + 3 * c * c) / (12 * L * L),
         -W * c * c * c * (4 * L - 3 * c) / (12 * L * L)},
        {"triangle rising to the right", {TrapezoidalLoad(0, 0.0, 0.0, L, W)}, -W * L * L / 30, -W * L * L / 20},
        {"triangle rising to the left", {TrapezoidalLoad(0, 0.0, W, L, 0.0)}, -W * L * L / 20, -W * L * L / 30},
        {"triangle with its peak at the middle",
         {TrapezoidalLoad(0, 0.0, 0.0, L / 2, W), TrapezoidalLoad(0, L / 2, W, L, 0.0)},
         -5 * W * L * L / 96,
         -5 * W * L * L / 96},
        {"moment", {MomentLoad(0, C, a)}, C * b * (2 * a - b) / (L * L), -C * a * (2 * b - a) / (L * L)},
    };
    for (const Row& row : rows) {
        const Response r = With(Single(L, ENCASTRE, ENCASTRE), row.loads);
        ExpectClose(LeftMoment(r), row.left, 1e-12, row.name);
        ExpectClose(RightMoment(r), row.right, 1e-12, row.name);
    }
}

// Left end clamped, right end on a prop.
TEST(ClosedForms, ProppedCantilevers)
{
    Response r = With(Single(L, ENCASTRE, PINNED), {UniformLoad(0, W)});
    ExpectClose(LeftMoment(r), -W * L * L / 8);
    ExpectClose(r.reactions[1].vertical, 3.0 / 8.0 * W * L);
    const Extremes e = r.major.Deflections(0.0, L);
    // w(x) from the prop = W (L³ x - 3 L x³ + 2 x⁴)/48 EI; its slope is zero at x = L (1 + √33)/16.
    const double x = L * (1.0 + std::sqrt(33.0)) / 16.0;
    ExpectClose(L - e.greatest.at, x);
    ExpectClose(e.greatest.value, W * (L * L * L * x - 3 * L * x * x * x + 2 * x * x * x * x) / (48 * EI));
    r = With(Single(L, ENCASTRE, PINNED), {PointLoad(0, P, L / 2)});
    ExpectClose(LeftMoment(r), -3 * P * L / 16);
    ExpectClose(r.major.Moment(L / 2, Side::Left), 5 * P * L / 32);
    ExpectClose(r.major.Deflection(L / 2), 7 * P * L * L * L / (768 * EI));
    ExpectClose(LeftMoment(With(Single(L, ENCASTRE, PINNED), {TrapezoidalLoad(0, 0.0, W, L, 0.0)})), -W * L * L / 15);
    ExpectClose(LeftMoment(With(Single(L, ENCASTRE, PINNED), {TrapezoidalLoad(0, 0.0, 0.0, L, W)})),
                -7 * W * L * L / 120);
    // A moment at the prop carries over half of itself.
    r = With(Single(L, ENCASTRE, PINNED), {MomentLoad(0, C, L)});
    ExpectClose(RightMoment(r), -C);
    ExpectClose(LeftMoment(r), C / 2);
}

TEST(ClosedForms, Cantilevers)
{
    const auto tip = [](const std::vector<Load>& loads) {
        return With(Single(L, ENCASTRE, 0), loads).major.Deflection(L);
    };
    ExpectClose(tip({UniformLoad(0, W)}), W * std::pow(L, 4) / (8 * EI));
    ExpectClose(tip({PointLoad(0, P, L)}), P * std::pow(L, 3) / (3 * EI));
    ExpectClose(tip({MomentLoad(0, C, L)}), C * L * L / (2 * EI));
    ExpectClose(tip({TrapezoidalLoad(0, 0.0, W, L, 0.0)}), W * std::pow(L, 4) / (30 * EI));
    ExpectClose(tip({TrapezoidalLoad(0, 0.0, 0.0, L, W)}), 11 * W * std::pow(L, 4) / (120 * EI));
    const Response r = With(Single(L, ENCASTRE, 0), {PointLoad(0, P, 5.0)});
    ExpectClose(LeftMoment(r), -5 * P);
    ExpectClose(r.reactions[0].moment, -5 * P); // counter-clockwise
    ExpectClose(r.major.Deflection(L), P * 25 * (3 * L - 5) / (6 * EI));
}

TEST(ClosedForms, SimplySupported)
{
    Response r = With(Single(L, PINNED, PINNED), {UniformLoad(0, W)});
    ExpectClose(r.major.Moments(0.0, L).greatest.value, W * L * L / 8);
    ExpectClose(r.major.Deflections(0.0, L).greatest.value, 5 * W * std::pow(L, 4) / (384 * EI));
    const double a = 5.5;
    const double b = L - a;
    r = With(Single(L, PINNED, PINNED), {PointLoad(0, P, a)});
    ExpectClose(r.major.Moments(0.0, L).greatest.value, P * a * b / L);
    const Extreme most = r.major.Deflections(0.0, L).greatest;
    ExpectClose(most.at, std::sqrt((L * L - b * b) / 3));
    ExpectClose(most.value, P * b * std::pow(L * L - b * b, 1.5) / (9 * std::sqrt(3.0) * L * EI));
    r = With(Single(L, PINNED, PINNED), {PointLoad(0, P, L / 3), PointLoad(0, P, 2 * L / 3)});
    ExpectClose(r.major.Deflection(L / 2), 23 * P * L * L * L / (648 * EI));
    r = With(Single(L, PINNED, PINNED), {TrapezoidalLoad(0, 0.0, 0.0, L, W)});
    ExpectClose(r.major.Moments(0.0, L).greatest.value, W * L * L / (9 * std::sqrt(3.0)));
    ExpectClose(r.major.Moments(0.0, L).greatest.at, L / std::sqrt(3.0));
    // 15 x⁴ - 30 x² + 7 = 0 of the slope, in lengths.
    const double x = std::sqrt(1.0 - std::sqrt(8.0 / 15.0));
    ExpectClose(r.major.Deflections(0.0, L).greatest.at, x * L);
    ExpectClose(r.major.Deflections(0.0, L).greatest.value,
                W * std::pow(L, 4) / (360 * EI) * x * (3 * std::pow(x, 4) - 10 * x * x + 7));
    r = With(Single(L, PINNED, PINNED), {MomentLoad(0, C, 0.0)});
    ExpectClose(r.major.Deflections(0.0, L).greatest.value, C * L * L / (9 * std::sqrt(3.0) * EI));
    ExpectClose(r.reactions[0].vertical, -C / L);
}

TEST(ClosedForms, Overhangs)
{
    const double a = 2.5;
    Beam beam = Plain(L + a);
    beam.supports = {Held(0.0, PINNED), Held(L, PINNED)};
    Response r = With(beam, {PointLoad(0, P, L + a)});
    ExpectClose(r.major.Deflection(L + a), P * a * a * (L + a) / (3 * EI));
    ExpectClose(r.major.Deflections(0.0, L).least.value, -P * a * L * L / (9 * std::sqrt(3.0) * EI));
    ExpectClose(r.major.Deflections(0.0, L).least.at, L / std::sqrt(3.0));
    ExpectClose(r.reactions[0].vertical, -P * a / L);
    r = With(beam, {UniformLoad(0, W, L)});
    ExpectClose(r.major.Deflection(L + a), W * a * a * a * (4 * L + 3 * a) / (24 * EI));
    r = With(beam, {UniformLoad(0, W)});
    ExpectClose(r.major.Moments(0.0, L).greatest.value, W * std::pow(L + a, 2) * std::pow(L - a, 2) / (8 * L * L));
    ExpectClose(r.major.Moment(L, Side::Left), -W * a * a / 2);
}

// Equations of three moments, worked out: 2 MB (6 + 8) = -W (6³ + 8³)/4 gives MB = -6.5 W for spans of 6 and 8 m. Spans of 6, 8 and 6 m: 28 MB + 8 MC =
// -182 W with MB = MC, MB = -182/36 W.
TEST(ClosedForms, ThreeMoments)
{
    Response r = With(Continuous({6.0, 8.0}), {UniformLoad(0, W)});
    ExpectClose(r.major.Moment(6.0, Side::Left), -6.5 * W);
    ExpectClose(r.reactions[0].vertical, 3 * W - 6.5 * W / 6);
    ExpectClose(r.reactions[1].vertical, 7 * W + 6.5 * W / 6 + 6.5 * W / 8);
    r = With(Continuous({6.0, 8.0, 6.0}), {UniformLoad(0, W)});
    ExpectClose(r.major.Moment(14.0, Side::Right), -182.0 / 36.0 * W);
    // A load on the middle span of three alone, P at its middle: 28 MB + 8 MC = -3 P 8²/8, MB = MC.
    r = With(Continuous({6.0, 8.0, 6.0}), {PointLoad(0, P, 10.0)});
    ExpectClose(r.major.Moment(6.0, Side::Left), -24.0 / 36.0 * P);
}

// Moments of continuous beams with equal spans, in W L² and P L: tables of handbooks (Steel Designers' Manual, appendix; Reynolds's Reinforced Concrete
// Designer's Handbook, table 33), three digits.
TEST(Published, ContinuousBeamsOfEqualSpans)
{
    struct Row {
        std::vector<double> supports; // inner ones from the left
        std::vector<double> spans;    // largest moment in each span, at the middle for a force
        bool force;
    };
    const Row rows[] = {
        {{-0.125}, {0.070, 0.070}, false},
        {{-0.100, -0.100}, {0.080, 0.025, 0.080}, false},
        {{-0.107, -0.071, -0.107}, {0.077, 0.036, 0.036, 0.077}, false},
        {{-0.105, -0.079, -0.079, -0.105}, {0.078, 0.033, 0.046, 0.033, 0.078}, false},
        {{-0.188}, {0.156, 0.156}, true},
        {{-0.150, -0.150}, {0.175, 0.100, 0.175}, true},
        {{-0.161, -0.107, -0.161}, {0.170, 0.116, 0.116, 0.170}, true},
        {{-0.158, -0.118, -0.118, -0.158}, {0.171, 0.112, 0.132, 0.112, 0.171}, true},
    };
    for (const Row& row : rows) {
        const std::size_t spans = row.spans.size();
        Beam beam = Continuous(std::vector<double>(spans, 1.0));
        for (std::size_t i = 0; i < spans; ++i)
            beam.loads.push_back(row.force ? PointLoad(0, 1.0, static_cast<double>(i) + 0.5)
                                           : UniformLoad(0, 1.0, static_cast<double>(i), static_cast<double>(i) + 1.0));
        const Response r = Solved(beam);
        for (std::size_t i = 0; i < spans; ++i) {
            const double x = static_cast<double>(i);
            EXPECT_NEAR(r.major.Moments(x, x + 1.0).greatest.value, row.spans[i], 5.01e-4) << spans << " span " << i;
            if (i > 0) {
                EXPECT_NEAR(r.major.Moment(x, Side::Left), row.supports[i - 1], 5.01e-4) << spans << " support " << i;
            }
        }
    }
}

// Reactions in W L and largest deflections in W L⁴/EI of the same tables.
TEST(Published, ReactionsAndDeflectionsOfEqualSpans)
{
    struct Row {
        std::vector<double> reactions;
        double deflection; // of the first span
    };
    const Row rows[] = {
        {{0.375, 1.250, 0.375}, 0.0054},
        {{0.400, 1.100, 1.100, 0.400}, 0.0069},
        {{0.393, 1.143, 0.929, 1.143, 0.393}, 0.0065},
        {{0.395, 1.132, 0.974, 0.974, 1.132, 0.395}, 0.0066},
    };
    for (const Row& row : rows) {
        Beam beam = Continuous(std::vector<double>(row.reactions.size() - 1, 1.0));
        beam.loads = {UniformLoad(0, 1.0)};
        const Response r = Solved(beam);
        for (std::size_t i = 0; i < row.reactions.size(); ++i)
            EXPECT_NEAR(r.reactions[i].vertical, row.reactions[i], 5.01e-4) << i;
        EXPECT_NEAR(EI * r.major.Deflections(0.0, 1.0).greatest.value, row.deflection, 5.01e-5);
    }
}

// A hinge lets the second span of Gerber's beam hang on the first: simple statics.
TEST(ClosedForms, Hinges)
{
    Beam beam = Continuous({8.0, 8.0});
    beam.hinges = {{11.0, true, false}};
    const Response r = With(beam, {UniformLoad(0, W)});
    // The hung length of 5 m gives 2.5 W to the hinge; at the support 2.5 W x 3 m + W 3²/2.
    ExpectClose(r.major.Moment(8.0, Side::Left), -12 * W);
    EXPECT_EQ(r.major.Moment(11.0, Side::Left), 0.0);
    ExpectClose(r.reactions[2].vertical, 2.5 * W);
    EXPECT_GT(std::abs(r.major.Slope(11.0, Side::Left) - r.major.Slope(11.0, Side::Right)), 1e-4);
}

TEST(ClosedForms, Springs)
{
    // The middle support of two spans gives way: R (L'³/48EI + 1/k) = 5 W L'⁴/384EI with L' = 16 m.
    Beam beam = Continuous({8.0, 8.0});
    beam.supports[1].vertical = 2e6;
    Response r = With(beam, {UniformLoad(0, W)});
    const double length = 16.0;
    const double force = 5 * W * std::pow(length, 4) / (384 * EI) / (std::pow(length, 3) / (48 * EI) + 1 / 2e6);
    ExpectClose(r.reactions[1].vertical, force);
    ExpectClose(r.major.Deflection(8.0), force / 2e6);
    // Both ends turn elastically: W L²/12 / (1 + 2 EI/(k L)).
    beam = Single(L, PINNED, PINNED);
    beam.supports[0].rotation = beam.supports[1].rotation = 5e6;
    r = With(beam, {UniformLoad(0, W)});
    ExpectClose(LeftMoment(r), -W * L * L / 12 / (1 + 2 * EI / (5e6 * L)));
    ExpectClose(r.reactions[0].moment, LeftMoment(r));
    ExpectClose(r.reactions[1].moment, -RightMoment(r));
    // Springs from soft to rigid go from a beam of 16 m to one of two spans.
    beam = Continuous({8.0, 8.0});
    for (const double k : {1e-3, 1e15}) {
        beam.supports[1].vertical = k;
        r = With(beam, {UniformLoad(0, W)});
        ExpectClose(r.reactions[1].vertical, k < 1.0 ? 0.0 : 1.25 * W * L, k < 1.0 ? 1e-2 : 1e-9);
    }
}

// Several holds at one place: the stiffer spring, and a rigid hold beside a spring.
TEST(ClosedForms, HoldsAtOnePlace)
{
    Beam beam = Continuous({8.0, 8.0});
    beam.supports[1].vertical = 2e6;
    const double stiff = With(beam, {UniformLoad(0, W)}).reactions[1].vertical;
    beam.supports.push_back(beam.supports[1]);
    beam.supports.back().vertical = 1e5;
    ExpectClose(With(beam, {UniformLoad(0, W)}).reactions[1].vertical, stiff);
    beam.supports.back().vertical = 0.0;
    ExpectClose(With(beam, {UniformLoad(0, W)}).reactions[1].vertical, 1.25 * W * L);
}

// A rafter at 30°: 0.866 of its weight bends it, half of it goes along it to the lower end.
TEST(ClosedForms, Inclined)
{
    Beam beam = Single(L, PINNED, PINNED);
    beam.inclination = std::acos(-1.0) / 6.0;
    const Response r = With(beam, {UniformLoad(0, W)});
    ExpectClose(r.major.Moment(L / 2, Side::Left), std::sqrt(0.75) * W * L * L / 8);
    ExpectClose(r.axial.front().left, -0.5 * W * L);
    ExpectClose(r.axial.back().right, 0.0);
    ExpectClose(r.reactions[0].axial, 0.5 * W * L);
}

// Held along its length at 3 m, with loads along it on both sides: tension on one, compression on the other.
TEST(ClosedForms, AxialLoads)
{
    Beam beam = Single(L, PINNED, PINNED);
    beam.axiallyHeldAt = 3.0;
    beam.loads = {PointLoad(0, -P, 0.0, Direction::Axial), TrapezoidalLoad(0, 3.0, 0.0, L, -W, Direction::Axial)};
    const Response r = Solved(beam);
    ExpectClose(r.axial[0].At(0.5), P);
    ExpectClose(r.axial[1].left, -W * 5.0 / 2);
    ExpectClose(r.axial[1].At(0.5), -W * 5.0 / 2 * 0.75); // what lies beyond: the triangle less its first quarter
    ASSERT_EQ(r.reactions.size(), 3U);
    ExpectClose(r.reactions[1].axial, P + W * 5.0 / 2);
}

// BS 5950-1:2000, 4.7.7: a beam of 150 kN on the flange of a column 254 mm deep acts 127 + 100 mm from its centre: 34.05 kNm.
TEST(ClosedForms, EccentricReactionOnAColumn)
{
    Beam beam = Single(4.0, PINNED, PINNED);
    beam.inclination = std::acos(0.0);
    beam.loads = EccentricReaction(0, 150e3, 4.0, NominalEccentricity(0.127));
    const Response r = Solved(beam);
    ExpectClose(r.axial[0].left, -150e3);
    ExpectClose(r.major.Moment(4.0, Side::Left), -34.05e3);
    EXPECT_EQ(r.major.Moment(0.0, Side::Right), 0.0);
}

// Lateral loads go to what holds the section sideways, not to a single flange.
TEST(ClosedForms, MinorAxis)
{
    Beam beam = Single(L, PINNED, PINNED);
    beam.supports.push_back(Held(4.0, CRestraint::TOP_FLANGE_LATERAL));
    beam.loads = {UniformLoad(0, W, 0.0, INFINITY, Direction::Minor)};
    ExpectClose(Solved(beam).minor.Moment(4.0, Side::Left), W * L * L / 8);
    beam.supports.back() = Held(4.0, CRestraint::TOP_AND_BOTTOM_FLANGE_LATERAL);
    const Response r = Solved(beam);
    ExpectClose(r.minor.Moment(4.0, Side::Left), -W * 16.0 / 8);
    ExpectClose(r.reactions[1].lateral, -1.25 * W * 4.0); // against the load, which is along y
    EXPECT_EQ(r.major.Moment(4.0, Side::Left), 0.0);
}

// Lengths of one member that differ by 5,000 to 1: two supports 3 mm apart hold like a clamp. Moments of three spans 8, e, 8 m under a load
// on all: 2 MB (8 + e) + MC e = -W (8³ + e³)/4, MB = MC.
TEST(ClosedForms, SupportsCloseTogether)
{
    const double e = 0.003;
    Beam beam = Continuous({8.0, e, 8.0});
    const Response r = With(beam, {UniformLoad(0, W)});
    const double expected = -W * (512.0 + e * e * e) / 4.0 / (16.0 + 3.0 * e);
    ExpectClose(r.major.Moment(8.0, Side::Left), expected, 1e-10);
    ExpectClose(r.major.Moment(8.0 + e, Side::Right), expected, 1e-10);
    ExpectClose(r.reactions[1].vertical, 0.5 * W * (8.0 + e) - expected / 8.0, 1e-7);
}

TEST(Mechanisms, AreNamed)
{
    struct Row {
        const char* text;
        Beam beam;
    };
    Beam hinged = Continuous({8.0, 8.0});
    hinged.hinges = {{3.0, true, false}, {10.0, true, false}, {12.0, true, false}};
    Beam sideways = Single(8.0, CRestraint::MAJOR_SHEAR, CRestraint::MAJOR_SHEAR);
    sideways.loads = {PointLoad(0, 1.0, 4.0, Direction::Minor)};
    const Row rows[] = {
        {"nothing holds the member in place: from 0 m to 8 m it turns about 0 m", Single(8.0, PINNED, 0)},
        {"nothing holds the member in place: from 0 m to 8 m it moves as a whole",
         Single(8.0, CRestraint::MAJOR_ROTATION, CRestraint::MINOR_SHEAR)},
        {"nothing holds the member in place: from 0 m to 8 m it ", Plain(8.0)},
        {"nothing holds the member in place: ", hinged},
        {"nothing holds the member sideways: from 0 m to 8 m it ", sideways},
    };
    for (const Row& row : rows) {
        const Analysis analysis(row.beam);
        EXPECT_FALSE(analysis.IsAnswered());
        EXPECT_EQ((*analysis.Reason().ToUtf8()).rfind(row.text, 0), 0U) << *analysis.Reason().ToUtf8();
        ASSERT_FALSE(analysis.Motion().samples.empty());
        double largest = 0.0;
        for (const auto& [x, w] : analysis.Motion().samples)
            largest = std::max(largest, std::abs(w));
        EXPECT_DOUBLE_EQ(largest, 1.0);
        EXPECT_TRUE(analysis.Units().empty());
    }
    // A spring holds, as does a clamp with a free end.
    Beam sprung = Single(8.0, PINNED, 0);
    sprung.supports[0].rotation = 1e5;
    EXPECT_TRUE(Analysis(sprung).IsAnswered());
}

TEST(SelfWeight, ActsInTheFirstPermanentCase)
{
    Beam beam = Single(L, PINNED, PINNED);
    beam.selfWeight = true;
    beam.section.mass = 67.1;
    const Analysis analysis(beam);
    ExpectClose(analysis.OfCase(0).major.Moment(L / 2, Side::Left), 67.1 * 9.81 * L * L / 8);
    ASSERT_EQ(analysis.Notes().size(), 1U);
    EXPECT_EQ(*analysis.Notes()[0].ToUtf8(),
              "self weight of 67.1 kg/m, 0.65825 kN for each metre, acts in the case Loads");
    beam.cases[0].kind = ActionKind::Imposed;
    const Analysis own(beam);
    ASSERT_EQ(own.GetBeam().cases.size(), 2U);
    EXPECT_EQ(*own.GetBeam().cases[1].name.ToUtf8(), "Self weight");
    EXPECT_EQ(own.OfCase(0).major.Moment(L / 2, Side::Left), 0.0);
    ExpectClose(own.OfCase(1).major.Moment(L / 2, Side::Left), 67.1 * 9.81 * L * L / 8);
}

TEST(Faults, EachIsNamed)
{
    struct Row {
        const char* text;
        Part part;
        std::function<void(Beam&)> spoil;
    };
    const Row rows[] = {
        {"length -1: a length above zero", Part::Beam, [](Beam& b) { b.length = -1.0; }},
        {"length nan", Part::Beam, [](Beam& b) { b.length = NAN; }},
        {"inclination nan", Part::Beam, [](Beam& b) { b.inclination = NAN; }},
        {"axial hold at 9 m", Part::Beam, [](Beam& b) { b.axiallyHeldAt = 9.0; }},
        {"apart by less than a ten-thousandth", Part::Beam,
         [](Beam& b) { b.supports.push_back(Held(7.9995, PINNED)); }},
        {"Young's modulus 0", Part::Section, [](Beam& b) { b.section.E = 0.0; }},
        {"major axis nan", Part::Section, [](Beam& b) { b.section.Iy = NAN; }},
        {"mass -1 kg/m: no mass", Part::Section, [](Beam& b) { b.section.mass = -1.0; }},
        {"the self weight is to act", Part::Section, [](Beam& b) { b.selfWeight = true; }},
        {"support at 8.5 m", Part::Support, [](Beam& b) { b.supports[1].at = 8.5; }},
        {"support at nan m", Part::Support, [](Beam& b) { b.supports[1].at = NAN; }},
        {"stiffness -5", Part::Support, [](Beam& b) { b.supports[1].lateralRotation = -5.0; }},
        {"stiffness inf", Part::Support, [](Beam& b) { b.supports[1].vertical = INFINITY; }},
        {"load height 0.2 m of a restraint", Part::Support, [](Beam& b) { b.supports[0].holds.SetLoadHeight(0.2); }},
        {"hinge at 0 m", Part::Hinge,
         [](Beam& b) {
             b.hinges = {{0.0, true, false}};
         }},
        {"a second hinge at 3 m", Part::Hinge,
         [](Beam& b) {
             b.hinges = {{3.0, true, false}, {3.0, true, false}};
         }},
        {"the support there holds rotation", Part::Hinge,
         [](Beam& b) {
             b.hinges = {{3.0, true, false}};
             b.supports.push_back(Held(3.0, ENCASTRE));
         }},
        {"restraint from -1 m", Part::Restraint,
         [](Beam& b) {
             b.restraints = {{-1.0, 3.0, {}}};
         }},
        {"restraint to 9 m", Part::Restraint,
         [](Beam& b) {
             b.restraints = {{1.0, 9.0, {}}};
         }},
        {"at one place use a support", Part::Restraint,
         [](Beam& b) {
             b.restraints = {{1.0, 1.0, {}}};
         }},
        {"a permanent action acts on all spans", Part::Case, [](Beam& b) { b.cases[0].bySpan = true; }},
        {"case 7: the beam has no such case", Part::Load, [](Beam& b) { b.loads = {UniformLoad(7, 1.0)}; }},
        {"load inf: a number is expected", Part::Load, [](Beam& b) { b.loads = {PointLoad(0, INFINITY, 1.0)}; }},
        {"load nan at its end", Part::Load, [](Beam& b) { b.loads = {TrapezoidalLoad(0, 0.0, 1.0, 2.0, NAN)}; }},
        {"load at 8.1 m", Part::Load, [](Beam& b) { b.loads = {PointLoad(0, 1.0, 8.1)}; }},
        {"load to 8.1 m", Part::Load, [](Beam& b) { b.loads = {UniformLoad(0, 1.0, 1.0, 8.1)}; }},
        {"a place after its beginning", Part::Load, [](Beam& b) { b.loads = {UniformLoad(0, 1.0, 3.0, 2.0)}; }},
        {"torsion is not analysed", Part::Load, [](Beam& b) { b.loads = {MomentLoad(0, 1.0, 1.0, Direction::Axial)}; }},
        {"put it beside the hinge", Part::Load,
         [](Beam& b) {
             b.hinges = {{3.0, true, false}};
             b.loads = {MomentLoad(0, 1.0, 3.0)};
         }},
        {"load across the web", Part::Load,
         [](Beam& b) {
             b.section.Iz = 0.0;
             b.loads = {PointLoad(0, 1.0, 1.0, Direction::Minor)};
         }},
        {"load height nan", Part::Load,
         [](Beam& b) {
             b.loads = {PointLoad(0, 1.0, 1.0)};
             b.loads[0].height = NAN;
         }},
        {"from the top flange, whose height is nan", Part::Load,
         [](Beam& b) {
             b.loads = {PointLoad(0, 1.0, 1.0)};
             b.loads[0].reference = Steel::TOP_FLANGE;
         }},
        {"from the bottom flange", Part::Load,
         [](Beam& b) {
             b.loads = {PointLoad(0, 1.0, 1.0)};
             b.loads[0].reference = Steel::BOT_FLANGE;
         }},
        {"from reference 9", Part::Load,
         [](Beam& b) {
             b.loads = {PointLoad(0, 1.0, 1.0)};
             b.loads[0].reference = static_cast<Steel::LoadPos>(9);
         }},
        {"length 1e+10 m: one from 1e-6 to 1e9 m is expected", Part::Beam, [](Beam& b) { b.length = 1e10; }},
        {"length 1e-07 m: one from 1e-6 to 1e9 m is expected", Part::Beam, [](Beam& b) { b.length = 1e-7; }},
        {"Young's modulus nan", Part::Section, [](Beam& b) { b.section.E = NAN; }},
        {"major axis 0 m", Part::Section, [](Beam& b) { b.section.Iy = 0.0; }},
        {"mass nan kg/m: no mass", Part::Section, [](Beam& b) { b.section.mass = NAN; }},
        {"load height 0 m of a restraint", Part::Support,
         [](Beam& b) { b.supports[0].holds.SetRefLoadHeight(Steel::TOP_FLANGE); }},
        {"hinge at 9 m", Part::Hinge,
         [](Beam& b) {
             b.hinges = {{9.0, true, false}};
         }},
        {"the support there holds rotation", Part::Hinge,
         [](Beam& b) {
             b.hinges = {{3.0, true, false}};
             b.supports.push_back(Held(3.0, CRestraint::MAJOR_SHEAR));
             b.supports.back().rotation = 1e6;
         }},
        {"the support there holds rotation", Part::Hinge,
         [](Beam& b) {
             b.hinges = {{3.0, false, true}};
             b.supports.push_back(Held(3.0, ENCASTRE));
         }},
        {"the support there holds rotation", Part::Hinge,
         [](Beam& b) {
             b.hinges = {{3.0, true, true}};
             b.supports.push_back(Held(3.0, CRestraint::MAJOR_SHEAR));
             b.supports.back().lateralRotation = 1e6;
         }},
        {"load to -inf m", Part::Load, [](Beam& b) { b.loads = {UniformLoad(0, 1.0, 1.0, -INFINITY)}; }},
        {"put it beside the hinge", Part::Load,
         [](Beam& b) {
             b.hinges = {{3.0, false, true}};
             b.loads = {MomentLoad(0, 1.0, 3.0, Direction::Minor)};
         }},
        {"load across the web", Part::Load,
         [](Beam& b) {
             b.section.Iz = NAN;
             b.loads = {PointLoad(0, 1.0, 1.0, Direction::Minor)};
         }},
        {"only a load across the major axis has one", Part::Load,
         [](Beam& b) {
             b.section.topFlange = 0.2;
             b.loads = {PointLoad(0, 1.0, 1.0, Direction::Axial)};
             b.loads[0].reference = Steel::TOP_FLANGE;
         }},
        {"bending stiffness 0 N·m² about the major axis", Part::Section,
         [](Beam& b) { b.section.E = b.section.Iy = 1e-200; }},
        {"bending stiffness inf N·m² about the minor axis", Part::Section,
         [](Beam& b) {
             b.section.E = b.section.Iz = 1e200;
             b.loads = {UniformLoad(0, 1.0, 0.0, INFINITY, Direction::Minor)};
         }},
        // EI = 21 MN·m², 8 m: a ten-millionth of EI/L³ = 41.0 kN/m and of EI/L = 2.625 MNm.
        {"too soft beside the member to be computed with; give 0 (no spring) or at least 0.004102", Part::Support,
         [](Beam& b) { b.supports[1].vertical = 0.004; }},
        {"too soft beside the member to be computed with; give 0 (no spring) or at least 0.2625", Part::Support,
         [](Beam& b) { b.supports[1].rotation = 0.26; }},
        {"kind of action 9: there is no such kind", Part::Case,
         [](Beam& b) { b.cases[0].kind = static_cast<ActionKind>(9); }},
        {"category -1: there is no such category", Part::Case,
         [](Beam& b) { b.cases[0].category = static_cast<Category>(-1); }},
        {"shape 3: there is no such shape", Part::Load,
         [](Beam& b) {
             b.loads = {UniformLoad(0, 1.0)};
             b.loads[0].shape = static_cast<LoadShape>(3);
         }},
        {"direction 4: there is no such direction", Part::Load,
         [](Beam& b) { b.loads = {UniformLoad(0, 1.0, 0.0, INFINITY, static_cast<Direction>(4))}; }},
        {"only a load across the major axis has one", Part::Load,
         [](Beam& b) {
             b.loads = {PointLoad(0, 1.0, 1.0, Direction::Axial)};
             b.loads[0].height = 0.1;
         }},
    };
    EXPECT_TRUE(FindFaults(Single(8.0, PINNED, PINNED)).empty());
    for (const Row& row : rows) {
        Beam beam = Single(8.0, PINNED, PINNED);
        row.spoil(beam);
        const std::vector<Fault> faults = FindFaults(beam);
        bool found = false;
        std::string texts;
        for (const Fault& fault : faults) {
            const std::string text = *fault.text.ToUtf8();
            texts += text + "; ";
            found = found || (fault.part == row.part && text.find(row.text) != std::string::npos);
        }
        EXPECT_TRUE(found) << row.text << " among: " << texts;
        const Analysis analysis(beam);
        EXPECT_FALSE(analysis.IsAnswered());
        EXPECT_TRUE(analysis.Units().empty());
    }
}

// What holds rotation in the other plane than that of the hinge is none of its business.
TEST(Faults, AHingeInOnePlaneLeavesTheOtherAlone)
{
    Beam beam = Single(8.0, PINNED, PINNED);
    beam.hinges = {{3.0, true, false}};
    beam.supports.push_back(Held(3.0, CRestraint::PINNED | CRestraint::MINOR_ROTATION));
    beam.loads = {MomentLoad(0, 1.0, 3.0, Direction::Minor)};
    EXPECT_TRUE(FindFaults(beam).empty());
    beam.hinges = {{3.0, false, true}};
    beam.supports.back() = Held(3.0, CRestraint::PINNED | CRestraint::MAJOR_ROTATION);
    beam.loads = {MomentLoad(0, 1.0, 3.0)};
    EXPECT_TRUE(FindFaults(beam).empty());
}

TEST(Line, WithoutPiecesIsZeroEverywhere)
{
    const Line line;
    EXPECT_EQ(line.Shear(1.0, Side::Left), 0.0);
    EXPECT_EQ(line.Moment(1.0, Side::Right), 0.0);
    EXPECT_EQ(line.Slope(1.0, Side::Left), 0.0);
    EXPECT_EQ(line.Deflection(1.0), 0.0);
    EXPECT_EQ(line.Moments(0.0, 1.0).greatest.value, 0.0);
    EXPECT_EQ(line.Moments(0.0, 1.0).least.value, 0.0);
}

TEST(Line, OfPlacesThatAreNoNumbersHasNoExtremes)
{
    Beam beam = Single(8.0, PINNED, PINNED);
    beam.loads = {UniformLoad(0, 1e3)};
    const Line line = Solved(beam).major;
    for (const auto& [from, to] : {std::pair{NAN, 4.0F}, {4.0F, NAN}}) {
        EXPECT_TRUE(std::isnan(line.Moments(from, to).greatest.value));
        EXPECT_TRUE(std::isnan(line.Shears(from, to).least.value));
        EXPECT_TRUE(std::isnan(line.Deflections(from, to).greatest.at));
    }
}

// Of beams that differ in a length, in a break or in what holds them.
TEST(Response, OfAnotherBeamIsNotAddedAndChangesNothing)
{
    const auto loaded = [](Beam beam) {
        beam.loads = {UniformLoad(0, 1e3), PointLoad(0, 1e3, 1.0, Direction::Axial)};
        return Solved(beam);
    };
    Response sum = loaded(Single(8.0, PINNED, PINNED));
    const double before = sum.major.Moment(4.0, Side::Left);
    const Response others[] = {loaded(Single(9.0, PINNED, PINNED)), loaded(Continuous({4.0, 4.0})),
                               loaded(Single(8.0, ENCASTRE, 0U))};
    for (const Response& other : others) {
        EXPECT_THROW(sum.Add(1.0, other), std::invalid_argument);
        EXPECT_THROW(sum.major.Add(1.0, Line({{0.0, 3.0}}, EI)), std::invalid_argument);
        EXPECT_THROW(sum.major.Add(1.0, Line(sum.major.Pieces(), 2.0 * EI)), std::invalid_argument);
    }
    EXPECT_THROW(sum.Add(NAN, others[0]), std::invalid_argument);
    EXPECT_THROW(sum.major.Add(INFINITY, sum.major), std::invalid_argument);
    EXPECT_EQ(sum.major.Moment(4.0, Side::Left), before);
}

// The softest spring that is taken, with the closest node to the pin: the beam turns about the pin, P/k at its end.
TEST(Faults, TheSoftestSpringIsComputedWith)
{
    const double k = 1.001e-7 * EI / 216.0;
    for (const double closest : {3.0, 6.1e-4}) {
        Beam beam = Single(6.0, PINNED, PINNED);
        beam.supports[1].vertical = k;
        beam.hinges.clear();
        beam.supports.push_back(Held(closest, PINNED));
        beam.supports[2].vertical = k;
        beam.loads = {PointLoad(0, 1.0, 6.0)};
        const Response r = Solved(beam);
        // About the pin: k w 6 + k w (c/6) c = 1 x 6.
        const double w = 1.0 / (k * (1.0 + closest * closest / 36.0));
        ExpectClose(r.major.Deflection(6.0), w, 1e-5);
        ExpectClose(r.reactions[2].vertical, k * w, 1e-5);
    }
}

TEST(Faults, ForcesBeyondTheRangeOfNumbersAreRefused)
{
    Beam beam = Single(1e9, PINNED, PINNED);
    beam.cases[0].name = L"Huge";
    beam.loads = {UniformLoad(0, 1e300)};
    const Analysis analysis(beam);
    EXPECT_FALSE(analysis.IsAnswered());
    EXPECT_EQ(*analysis.Reason().ToUtf8(),
              "the forces or deflections of the case Huge are beyond the range of numbers");
    EXPECT_TRUE(analysis.Units().empty());
    EXPECT_TRUE(analysis.OfCase(0).IsEmpty());
    EXPECT_FALSE(Analysis(Plain(1e200)).IsAnswered());
}

TEST(Faults, SpansAreLengths)
{
    for (const double span : {-2.0, 0.0, static_cast<double>(NAN), static_cast<double>(INFINITY)}) {
        Beam beam = Continuous({3.0});
        EXPECT_THROW(SetSpans(beam, {6.0, span, 5.0}), std::invalid_argument);
        EXPECT_EQ(beam.length, 3.0);
        EXPECT_EQ(beam.supports.size(), 2U);
    }
}

// 4 kN along y at the tip of 3 m turns the member about z at the clamp by 12 kNm; the clamp gives as much against it.
TEST(Reactions, SignOfTheLateralMoment)
{
    Beam beam = Single(3.0, ENCASTRE, 0);
    beam.loads = {PointLoad(0, 4e3, 3.0, Direction::Minor)};
    const Reaction r = Solved(beam).reactions[0];
    ExpectClose(r.lateral, -4e3);
    ExpectClose(r.lateralMoment, -12e3);
    beam.loads = {MomentLoad(0, 5e3, 3.0, Direction::Minor)};
    ExpectClose(Solved(beam).reactions[0].lateralMoment, -5e3);
}

} // namespace StaticsTest
