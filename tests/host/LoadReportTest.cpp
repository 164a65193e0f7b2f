// What is reported of loads, against calculations by hand and the equilibrium of what is written.

#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/LoadedBeams.h"
#include "loads/LoadText.h"
#include "statics/RandomBeam.h"
#include "support/RandomCases.h"
#include "text/Json.h"
#include "text/Render.h"

namespace LoadsTest {

namespace {

using namespace Keltrix::Host;
using StaticsTest::ExpectClose;
using ::testing::HasSubstr;
using ::testing::Not;

std::string TextOf(const LoadReport& report) { return RenderMarkup(LoadMarkup(report), Rendering::Plain); }

// The value and the combination of an end of a range.
void ExpectGoverned(const Loaded& loaded, const Governed& governed, double value, double at, const char* combination)
{
    ExpectClose(governed.value, value, 1e-9);
    ExpectClose(governed.at, at, 1e-9);
    EXPECT_EQ(loaded.NameOf(governed.combination), combination);
}

} // namespace

// Dead: 12 x 9/2 = 54 kN at each end. Imposed: 45 x 6/9 = 30 kN and 15 kN. Ultimate 1.4 and 1.6: 75.6 + 48 = 123.6 kN and 99.6 kN.
// The load is 16.8 kN/m, the shear right of 3 m 123.6 - 50.4 - 72 = 1.2 kN: zero at 3 + 1.2/16.8 = 3.0714 m. The moment at 3 m is
// 123.6 x 3 - 16.8 x 4.5 = 295.2 kNm, the largest one 295.2 + 1.2²/(2 x 16.8) = 295.243 kNm.
TEST(LoadReport, FloorBeamByHand)
{
    const Loaded floor(FloorBeam());
    const LoadReport& report = floor.report;
    ASSERT_EQ(report.supports.size(), 2U);
    ExpectClose(report.supports[0].OfCase(0, ReactionPart::Vertical), 54e3);
    ExpectClose(report.supports[1].OfCase(0, ReactionPart::Vertical), 54e3);
    ExpectClose(report.supports[0].OfCase(1, ReactionPart::Vertical), 30e3);
    ExpectClose(report.supports[1].OfCase(1, ReactionPart::Vertical), 15e3);
    ExpectClose(report.sums[0].down, 108e3);
    ExpectClose(report.sums[1].down, 45e3);
    ExpectGoverned(floor, report.supports[0].RangeOf(ReactionPart::Vertical).greatest, 123.6e3, 0.0,
                   "dead and imposed: 1.4 Dead + 1.6 Imposed");
    ExpectGoverned(floor, report.supports[1].RangeOf(ReactionPart::Vertical).greatest, 99.6e3, 9.0,
                   "dead and imposed: 1.4 Dead + 1.6 Imposed");
    ExpectGoverned(floor, report.EnvelopeOf(Action::Moment).whole.greatest, 295242.857142857, 3.0 + 1.0 / 14.0,
                   "dead and imposed: 1.4 Dead + 1.6 Imposed");
    EXPECT_EQ(report.EnvelopeOf(Action::Moment).whole.least.value, 0.0) << "no hogging";
    EXPECT_EQ(report.EnvelopeOf(Action::Moment).whole.least.combination, -1);
    ExpectGoverned(floor, report.EnvelopeOf(Action::Shear).whole.least, -99.6e3, 9.0,
                   "dead and imposed: 1.4 Dead + 1.6 Imposed");
    EXPECT_TRUE(report.EnvelopeOf(Action::Axial).whole.IsZero());
    EXPECT_FALSE(report.HasReaction(ReactionPart::Horizontal));
    EXPECT_FALSE(report.HasReaction(ReactionPart::Moment));

    const std::string text = TextOf(report);
    EXPECT_THAT(text, HasSubstr("295.24 kNm  3.0714 m"));
    EXPECT_THAT(text, HasSubstr("123.6 kN"));
    EXPECT_THAT(text, HasSubstr("45 kN  at 3 m"));
    EXPECT_THAT(text, HasSubstr("12 kN/m  0 m to 9 m"));
    EXPECT_THAT(text, Not(HasSubstr("hogging")));
}

// The imposed load alone, a = 3 m from the left: P a (L² - a²)^1.5/(9 √3 L EI) = 45 x 3 x 72^1.5/(140.296 x 21,000) = 27.994 mm,
// √((81 - 9)/3) = 4.899 m from the right end; allowed 9,000/360 = 25 mm.
TEST(LoadReport, DeflectionByHand)
{
    const Loaded floor(FloorBeam());
    ASSERT_EQ(floor.report.checks.size(), 1U);
    const DeflectionCheck& check = floor.report.checks[0];
    EXPECT_NEAR(check.deflection, 27.994e-3, 1e-6);
    EXPECT_NEAR(check.at, 9.0 - 4.89898, 1e-5);
    ExpectClose(check.allowed, 0.025);
    EXPECT_THAT(TextOf(floor.report), HasSubstr("27.994  4.101       25        1.120  fail"));
    // The drawn shape is that of the imposed load alone and reaches the same value.
    ASSERT_EQ(floor.report.shape.check, 0);
    double largest = 0.0;
    for (const auto& [at, deflection] : floor.report.shape.samples)
        largest = std::max(largest, deflection);
    ExpectClose(largest, check.deflection);
}

// Dead 10, imposed 20 kN/m. Both spans 1.4 and 1.6: 46 x 8²/8 = 368 kNm over the middle, 1.25 x 46 x 8 = 460 kN. Span 1 alone
// with the imposed load: (46 + 14) x 8²/16 = 240 kNm, 46 x 4 - 240/8 = 154 kN at the end, 154²/(2 x 46) = 257.783 kNm at
// 154/46 = 3.348 m. Least reaction of the end: dead 1.0, span 2 loaded: (10 + 42) x 8²/16 = 208 kNm, 40 - 26 = 14 kN.
TEST(LoadReport, TwoSpansByHand)
{
    const Loaded two(TwoSpans());
    const LoadReport& report = two.report;
    const ActionEnvelope& moment = report.EnvelopeOf(Action::Moment);
    ExpectGoverned(two, moment.whole.least, -368e3, 8.0, "dead and imposed: 1.4 Dead + 1.6 Imposed");
    ExpectGoverned(two, moment.whole.greatest, 154e3 * 154e3 / 92e3, 154.0 / 46.0,
                   "dead and imposed: 1.4 Dead + 1.6 Imposed on span 1");
    ASSERT_EQ(moment.spans.size(), 2U);
    ExpectGoverned(two, moment.spans[1].greatest, 154e3 * 154e3 / 92e3, 16.0 - 154.0 / 46.0,
                   "dead and imposed: 1.4 Dead + 1.6 Imposed on span 2");
    ExpectGoverned(two, report.supports[1].RangeOf(ReactionPart::Vertical).greatest, 460e3, 8.0,
                   "dead and imposed: 1.4 Dead + 1.6 Imposed");
    ExpectGoverned(two, report.supports[0].RangeOf(ReactionPart::Vertical).least, 14e3, 0.0,
                   "dead and imposed: 1 Dead + 1.6 Imposed on span 2");
    // Unfactored on all spans: 0.375 and 1.25 w L.
    ExpectClose(report.supports[0].OfCase(1, ReactionPart::Vertical), 60e3);
    ExpectClose(report.supports[1].OfCase(1, ReactionPart::Vertical), 200e3);
    EXPECT_THAT(TextOf(report), HasSubstr("span by span"));
}

// Dead: (126 x 5.25 + 30 x 10.5)/8 = 122.0625 kN right, 156 - 122.0625 = 33.9375 kN left; over the support
// 12 x 2.5²/2 + 30 x 2.5 = 112.5 kNm hogging.
TEST(LoadReport, OverhangByHand)
{
    const Loaded beam(Overhanging());
    ExpectClose(beam.report.supports[0].OfCase(0, ReactionPart::Vertical), 33.9375e3);
    ExpectClose(beam.report.supports[1].OfCase(0, ReactionPart::Vertical), 122.0625e3);
    ExpectClose(beam.report.EnvelopeOf(Action::Moment).whole.least.value, -1.4 * 112.5e3);
    EXPECT_THAT(TextOf(beam.report), HasSubstr("10.5 m: 8 m, 2.5 m overhang"));
    // Only permanent loads: the limits on variable loads find none of them, and that is no failure.
    for (const DeflectionCheck& check : beam.report.checks)
        EXPECT_EQ(check.deflection, 0.0);
}

// 30 kN at the tip alone: 30 x 2.5/8 = 9.375 kN hold the left end down, 1.4 times that are 13.125 kN.
TEST(LoadReport, UpliftIsSaid)
{
    Beam beam = Overhanging();
    beam.loads.erase(beam.loads.begin());
    const Loaded loaded(beam);
    ExpectClose(loaded.report.supports[0].RangeOf(ReactionPart::Vertical).least.value, -13.125e3);
    EXPECT_THAT(TextOf(loaded.report), HasSubstr("least, uplift  -13.125 kN"));
    EXPECT_THAT(TextOf(Loaded(Overhanging()).report), Not(HasSubstr("uplift")));
}

// What holds a flange alone carries nothing, and is named in a line of its own.
TEST(LoadReport, PlacesWithoutReactionsAreNamed)
{
    Beam beam = FloorBeam();
    beam.supports.push_back(Held(3.0, Steel::CRestraint::FLANGE1_LATERAL));
    beam.supports.push_back(Held(6.5, Steel::CRestraint::FLANGE1_LATERAL));
    const Loaded loaded(beam);
    const std::string text = TextOf(loaded.report);
    EXPECT_THAT(text, HasSubstr("      9  Imposed        15\nNo reaction at what holds the member at 3 m, 6.5 m.\n"));
    EXPECT_EQ(loaded.report.supports.size(), 4U) << "the data has all";
    EXPECT_THAT(TextOf(Loaded(FloorBeam()).report), Not(HasSubstr("No reaction")));
}

// 25 + 6 x 3 = 43 kN; 25 x 3 + 6 x 3²/2 = 102 kNm hogging, which the wall gives anticlockwise.
TEST(LoadReport, CantileverByHand)
{
    const Loaded beam(Cantilever());
    ExpectClose(beam.report.supports[0].OfCase(0, ReactionPart::Vertical), 43e3);
    ExpectClose(beam.report.supports[0].OfCase(0, ReactionPart::Moment), -102e3);
    ExpectGoverned(beam, beam.report.EnvelopeOf(Action::Moment).whole.least, -1.6 * 102e3, 0.0,
                   "dead and imposed: 1.6 Imposed");
    EXPECT_THAT(TextOf(beam.report), HasSubstr("-163.2 kNm"));
}

// The base carries 150 kN upwards; 150 x 0.227 = 34.05 kNm clockwise are held by 34.05/4.5 = 7.567 kN to the left at the top and to the
// right at the base.
TEST(LoadReport, ColumnByHand)
{
    const Loaded column(Column());
    const auto& supports = column.report.supports;
    ExpectClose(column.report.sums[0].down, 150e3);
    EXPECT_EQ(column.report.sums[0].right, 0.0);
    ExpectClose(supports[0].OfCase(0, ReactionPart::Vertical), 150e3);
    EXPECT_EQ(supports[1].OfCase(0, ReactionPart::Vertical), 0.0);
    ExpectClose(supports[0].OfCase(0, ReactionPart::Horizontal), 34.05e3 / 4.5);
    ExpectClose(supports[1].OfCase(0, ReactionPart::Horizontal), -34.05e3 / 4.5);
    ExpectClose(supports[0].OfCase(0, ReactionPart::Along), 150e3);
    ExpectClose(column.report.EnvelopeOf(Action::Axial).whole.least.value, -1.6 * 150e3);
    const std::string text = TextOf(column.report);
    EXPECT_THAT(text, HasSubstr("90° above the horizontal"));
    EXPECT_THAT(text, HasSubstr("34.05 kNm clockwise  at 4.5 m"));
    EXPECT_THAT(text, HasSubstr("compression"));
}

// Forces and moments about the left end, of the data and of the JSON alike; nothing of the statics is used but its answers.
TEST(LoadReport, ReactionsBalanceTheLoadsOfRandomBeams)
{
    const unsigned seed = 20240817;
    StaticsTest::BeamGenerator random(seed);
    int reported = 0;
    for (int i = 0; i < TestSupport::RandomCases(300); ++i) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", beam " + std::to_string(i));
        StaticsTest::BeamGenerator::Kinds kinds;
        kinds.cases = 2;
        Beam beam = random.Make(kinds);
        beam.inclination = i % 3 == 0 ? 0.0 : random.Real(-1.5, 1.5);
        beam.cases[0].name = L"Dead";
        beam.cases[1] = {L"Wind", ActionKind::Wind, Category::None, false};
        if (!Analysis(beam).IsAnswered()) continue;
        ++reported;
        const Loaded loaded(beam);
        const Json json = Json::parse(JsonText(JsonOf(loaded.report)));
        const Beam& analysed = loaded.analysis.GetBeam();
        for (std::size_t c = 0; c < 2; ++c) {
            const Json& sums = json.at("cases").at(c);
            double up = 0.0;
            double right = 0.0;
            double lateral = 0.0;
            double moment = 0.0; // clockwise about the left end
            double size = 1.0;
            for (const Json& support : json.at("reactions")) {
                const Json& r = support.at("cases").at(c);
                up += r.at("vertical").get<double>();
                right += r.at("horizontal").get<double>();
                lateral += r.at("lateral").get<double>();
                moment += r.at("moment").get<double>() - r.at("across").get<double>() * support.at("at").get<double>();
                size += std::fabs(r.at("vertical").get<double>()) + std::fabs(r.at("horizontal").get<double>()) +
                        std::fabs(r.at("lateral").get<double>()) + std::fabs(r.at("moment").get<double>());
            }
            for (const Load& load : analysed.loads) {
                if (load.caseIndex != c || load.direction == Direction::Minor || load.direction == Direction::Axial)
                    continue;
                const double share = load.direction == Direction::Gravity ? std::cos(beam.inclination) : 1.0;
                const double d = load.to - load.from;
                if (load.shape == LoadShape::Moment)
                    moment += load.value;
                else if (load.shape == LoadShape::Point)
                    moment += share * load.value * load.from;
                else
                    moment +=
                        share * d *
                        (0.5 * (load.value + load.valueTo) * load.from + d * (load.value + 2.0 * load.valueTo) / 6.0);
                size += std::fabs(load.value) + std::fabs(load.valueTo);
            }
            EXPECT_NEAR(up, sums.at("down").get<double>(), 1e-8 * size);
            EXPECT_NEAR(right, -sums.at("right").get<double>(), 1e-8 * size);
            EXPECT_NEAR(lateral, -sums.at("lateral").get<double>(), 1e-8 * size);
            EXPECT_NEAR(moment, 0.0, 1e-8 * size * (1.0 + beam.length));
        }
        // What is said of the whole is the worst of the spans, and what is drawn stays within and reaches it.
        for (const ActionEnvelope& envelope : loaded.report.envelopes) {
            GovernedRange worst;
            for (const GovernedRange& span : envelope.spans) {
                worst.greatest.value = std::max(worst.greatest.value, span.greatest.value);
                worst.least.value = std::min(worst.least.value, span.least.value);
            }
            const double scale = std::max({1.0, worst.greatest.value, -worst.least.value});
            EXPECT_NEAR(std::max(0.0, envelope.whole.greatest.value), worst.greatest.value, 1e-8 * scale);
            EXPECT_NEAR(std::min(0.0, envelope.whole.least.value), worst.least.value, 1e-8 * scale);
            double greatest = 0.0;
            for (const ActionEnvelope::Sample& sample : envelope.samples)
                greatest = std::max(greatest, sample.greatest);
            EXPECT_NEAR(greatest, worst.greatest.value, 1e-8 * scale);
        }
    }
    EXPECT_GT(reported, TestSupport::RandomCases(200));
}

TEST(LoadReport, JsonHasTheValuesInFull)
{
    const Loaded floor(FloorBeam());
    const Json json = Json::parse(JsonText(JsonOf(floor.report)));
    EXPECT_EQ(json.at("title"), "Beam B12");
    EXPECT_EQ(json.at("length"), 9.0);
    const Json& governing = json.at("envelopes").at(0).at("whole").at("greatest");
    EXPECT_EQ(json.at("envelopes").at(0).at("action"), "moment");
    EXPECT_EQ(governing.at("value").get<double>(), floor.report.EnvelopeOf(Action::Moment).whole.greatest.value);
    const Json& combination = json.at("combinations").at(governing.at("combination").get<std::size_t>() - 1);
    EXPECT_EQ(combination.at("name"), "dead and imposed: 1.4 Dead + 1.6 Imposed");
    EXPECT_EQ(combination.at("terms").at(1).at("factor"), 1.6);
    EXPECT_EQ(json.at("loads").at(1).at("from"), 3.0);
    EXPECT_EQ(json.at("deflections").at(0).at("status"), "failed");
    EXPECT_EQ(json.at("deflections").at(0).at("span"), 1);
    EXPECT_TRUE(json.at("envelopes").at(0).at("whole").at("least").at("combination").is_null());
}

// A limit whose combinations are missing has no figure and is no pass; without an ultimate combination there is no envelope, and both are said.
TEST(LoadReport, WhatIsNotEvaluatedIsSaid)
{
    const Analysis analysis(FloorBeam());
    Combinations own;
    own.list.push_back({L"Quasi", L"", LimitState::QuasiPermanent, {{0, 1.0, {}}}, {L""}});
    const std::vector<DeflectionLimit> limits = DeflectionLimitsOf(Basis::BS5950, true);
    const LoadReport report =
        MakeLoadReport({analysis, own, limits, CheckDeflections(analysis, own.list, limits), {}, "", "", ""});
    const std::string text = TextOf(report);
    EXPECT_THAT(text, HasSubstr("not evaluated: there is no combination of the limit state of this limit"));
    EXPECT_THAT(text, HasSubstr("there is no ultimate combination"));
    EXPECT_THAT(text, Not(HasSubstr("pass")));
    EXPECT_THAT(text, Not(HasSubstr("Envelopes")));
    const Json json = JsonOf(report);
    EXPECT_EQ(json.at("deflections").at(0).at("status"), "not evaluated");
    EXPECT_TRUE(json.at("deflections").at(0).at("utilisation").is_null());
    EXPECT_TRUE(json.at("reactions").at(0).at("ultimate").is_null());
    EXPECT_TRUE(json.at("envelopes").empty());
    EXPECT_EQ(report.shape.check, -1);
}

// Names are text: no mark-up is seen in them, and none of them ends a line or a cell.
TEST(LoadReport, NamesAreText)
{
    Beam beam = FloorBeam();
    beam.cases[0].name = L"<b>Dead</b>\t<table>\nload";
    const std::string text = TextOf(Loaded(beam).report);
    EXPECT_THAT(text, HasSubstr("<b>Dead</b> <table>[U+000A]load"));
    EXPECT_EQ(text.find("\nload"), std::string::npos);
}

TEST(LoadReport, BeamsWithoutAnAnswerAreRefused)
{
    const Analysis analysis(Single(9.0, StaticsTest::PINNED, 0));
    ASSERT_FALSE(analysis.IsAnswered());
    const Combinations none;
    EXPECT_THROW(MakeLoadReport({analysis, none, {}, {}, {}, "", "", ""}), std::invalid_argument);
}

// 8 m under 3 kN/m along y: 24 kN in all, 12 kN at each end; w L²/8 = 24 kNm about z.
TEST(LoadReport, LoadsAcrossTheWebHaveAColumnOfTheirOwn)
{
    Beam beam = Single(8.0, StaticsTest::PINNED, StaticsTest::PINNED);
    beam.cases = {{L"Dead", ActionKind::Permanent, Category::None, false},
                  {L"Drift", ActionKind::SnowAbove1000m, Category::None, false}};
    beam.loads = {UniformLoad(0, 2e3), UniformLoad(1, 3e3, 0.0, INFINITY, Direction::Minor)};
    const Loaded loaded(beam);
    ExpectClose(loaded.report.sums[1].lateral, 24e3);
    ExpectClose(std::fabs(loaded.report.supports[0].OfCase(1, ReactionPart::Lateral)), 12e3);
    const std::string text = TextOf(loaded.report);
    EXPECT_THAT(text, HasSubstr("Along y"));
    EXPECT_THAT(text, HasSubstr("3 kN/m along y"));
    EXPECT_THAT(text, HasSubstr("snow above 1000 m"));
}

TEST(LoadText, SizesAndPlacesInWords)
{
    EXPECT_EQ(SizeOf(UniformLoad(0, 12e3), true), "12 kN/m");
    EXPECT_EQ(SizeOf(UniformLoad(0, -2e3), true), "2 kN/m up");
    EXPECT_EQ(SizeOf(TrapezoidalLoad(0, 0.0, 0.0, 3.0, 15e3), true), "0 to 15 kN/m");
    EXPECT_EQ(SizeOf(TrapezoidalLoad(0, 0.0, -15e3, 3.0, 0.0), true), "15 to 0 kN/m up");
    EXPECT_EQ(SizeOf(TrapezoidalLoad(0, 0.0, -5e3, 3.0, 10e3), true), "-5 to 10 kN/m");
    EXPECT_EQ(SizeOf(PointLoad(0, -45e3, 3.0, Direction::Minor), true), "45 kN against y");
    EXPECT_EQ(SizeOf(PointLoad(0, 400e3, 3.0, Direction::Axial), true), "400 kN along x");
    EXPECT_EQ(SizeOf(PointLoad(0, 5e3, 3.0, Direction::Major), false), "5 kN across, against z");
    EXPECT_EQ(SizeOf(MomentLoad(0, -20e3, 3.0), true), "20 kNm anticlockwise");
    Load load = PointLoad(0, 1e3, 3.0);
    load.reference = Steel::TOP_FLANGE;
    EXPECT_EQ(PlaceOf(load), "at 3 m, on the top flange");
    load.height = 0.2;
    EXPECT_EQ(PlaceOf(load), "at 3 m, 0.2 m above the top flange");
    load.reference = Steel::BOT_FLANGE;
    EXPECT_EQ(PlaceOf(load), "at 3 m, 0.2 m above the bottom flange");
    load.height = -0.1;
    load.reference = Steel::SHR_CENTRE;
    EXPECT_EQ(PlaceOf(load), "at 3 m, 0.1 m below the shear centre");
    EXPECT_EQ(PlaceOf(UniformLoad(0, 1e3, 1.0, 6.0)), "1 m to 6 m");
    EXPECT_EQ(SizeOf(MomentLoad(0, -20e3, 3.0, Direction::Minor), true), "-20 kNm about z");
    EXPECT_EQ(SizeOf(TrapezoidalLoad(0, 0.0, 0.0, 3.0, -15e3), true), "0 to 15 kN/m up");
}

} // namespace LoadsTest
