// Drawings of loads read back: what stands where, and the numbers beside it.

#include "report/LoadDrawing.h"

#include <cmath>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HtmlReader.h"
#include "host/LoadedBeams.h"
#include "statics/RandomBeam.h"

namespace LoadsTest {
namespace {

using App::Trial::HtmlElement;
using App::Trial::HtmlReader;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using namespace Keltrix::Host;

struct Place {
    double x, y;
};

// Of a path of absolute lines.
std::vector<Place> PlacesOf(const HtmlElement& path)
{
    std::string data = path.attributes.at("d");
    for (char& c : data)
        if (c == ',') c = ' ';
    std::vector<Place> places;
    std::istringstream in(data);
    for (char command = 0; in >> command;) {
        if (command == 'Z') continue;
        Place place{};
        in >> place.x >> place.y;
        EXPECT_TRUE(in) << data;
        places.push_back(place);
    }
    return places;
}

struct Drawing {
    explicit Drawing(const std::string& text) : svg(text) { EXPECT_EQ(svg.Error(), "") << text; }

    std::vector<std::string> Texts(const char* cls) const
    {
        std::vector<std::string> texts;
        for (const HtmlElement* text : svg.OfClass("text", cls))
            texts.push_back(text->text);
        return texts;
    }

    HtmlReader svg;
};

Drawing LoadsOf(const Loaded& loaded) { return Drawing(LoadsSvg("a", loaded.analysis.GetBeam(), loaded.report)); }
Drawing EnvelopesOf(const Loaded& loaded)
{
    return Drawing(EnvelopeSvg("b", loaded.analysis.GetBeam(), loaded.report));
}

} // namespace

// 9 m at 1:60 are 150 mm: 3 m stand 50 mm from the left end at 17 mm.
TEST(LoadDrawing, LoadsStandWhereTheyActWithTheirSizes)
{
    const Loaded floor(FloorBeam());
    const Drawing drawing = LoadsOf(floor);
    EXPECT_THAT(drawing.Texts("value over"), ElementsAre("12 kN/m", "45 kN"));
    EXPECT_THAT(drawing.Texts("value"), ElementsAre("9 m"));
    EXPECT_THAT(drawing.Texts("name"), ElementsAre("Dead", "Imposed"));
    const auto bands = drawing.svg.OfClass("path", "band");
    ASSERT_EQ(bands.size(), 1U);
    EXPECT_NEAR(PlacesOf(*bands[0]).front().x, 17.0, 0.006);
    EXPECT_NEAR(PlacesOf(*bands[0]).back().x, 167.0, 0.006);
    const auto arrows = drawing.svg.OfClass("path", "load");
    const std::vector<Place> arrow = PlacesOf(*arrows.back());
    EXPECT_NEAR(arrow[0].x, 67.0, 0.006);
    EXPECT_NEAR(arrow[1].x, 67.0, 0.006);
    EXPECT_GT(arrow[1].y, arrow[0].y) << "downwards";
    // The symbol in the member, in each case and in the legend.
    EXPECT_EQ(drawing.svg.OfClass("path", "support pin").size(), 4U);
    EXPECT_EQ(drawing.svg.OfClass("path", "support roller").size(), 4U);
}

// Three or more loads close to each other, at either end and in the middle: no arrow goes through the label of another load, and no label
// over another one.
TEST(LoadDrawing, ArrowsOfCloseLoadsCrossNoLabel)
{
    for (const double place : {0.1, 3.0, 6.2, 8.4}) {
        Statics::Beam beam = FloorBeam();
        beam.loads.clear();
        for (const double from : {0.0, 0.05, 0.15, 0.2, 0.5})
            beam.loads.push_back(PointLoad(1, 145e3, place + from));
        const Loaded loaded(beam);
        const Drawing drawing = LoadsOf(loaded);
        const auto labels = drawing.svg.OfClass("text", "value over");
        const auto arrows = drawing.svg.OfClass("path", "load");
        ASSERT_EQ(labels.size(), 5U);
        ASSERT_EQ(arrows.size(), 5U);
        for (std::size_t i = 0; i < labels.size(); ++i)
            for (std::size_t k = 0; k < labels.size(); ++k) {
                if (i == k) continue;
                const double half = 0.5 * 1.7 * static_cast<double>(labels[i]->text.size());
                const double x = NumberOf(*labels[i], "x");
                const double y = NumberOf(*labels[i], "y");
                const Place tail = PlacesOf(*arrows[k]).front();
                const bool isBeside = std::fabs(tail.x - x) > half;
                EXPECT_TRUE(isBeside || tail.y > y) << place << ": arrow " << k << " through label " << i;
                const bool isApart = std::fabs(NumberOf(*labels[k], "x") - x) > 2.0 * half;
                EXPECT_TRUE(isApart || std::fabs(NumberOf(*labels[k], "y") - y) > 3.0)
                    << place << ": label " << k << " over " << i;
            }
    }
}

TEST(LoadDrawing, TheCurvesAreTheEnvelopes)
{
    const Loaded two(TwoSpans());
    const Drawing drawing = EnvelopesOf(two);
    const auto greatest = drawing.svg.OfClass("path", "curve greatest");
    const auto least = drawing.svg.OfClass("path", "curve least");
    const auto bases = drawing.svg.OfClass("line", "base");
    ASSERT_EQ(greatest.size(), 2U) << "moment and shear";
    ASSERT_EQ(bases.size(), 2U);
    for (std::size_t a = 0; a < 2; ++a) {
        const ActionEnvelope& envelope = two.report.EnvelopeOf(a == 0 ? Action::Moment : Action::Shear);
        const double down = a == 0 ? 1.0 : -1.0; // sagging moments below the line
        const double base = NumberOf(*bases[a], "y1");
        const double unit = 20.0 / (envelope.whole.greatest.value - envelope.whole.least.value);
        const auto upper = PlacesOf(*greatest[a]);
        const auto lower = PlacesOf(*least[a]);
        ASSERT_EQ(upper.size(), envelope.samples.size() + 2);
        for (std::size_t i = 0; i < envelope.samples.size(); ++i) {
            const ActionEnvelope::Sample& sample = envelope.samples[i];
            EXPECT_NEAR(upper[i + 1].x, 28.0 + sample.at * 8.0, 0.006) << "16 m at 1:125";
            EXPECT_NEAR(upper[i + 1].y, base + down * unit * sample.greatest, 0.011);
            EXPECT_NEAR(lower[i + 1].y, base + down * unit * sample.least, 0.011);
        }
    }
    EXPECT_THAT(drawing.Texts("value"),
                ElementsAre("257.78 kNm at 3.3478 m (3)", "-368 kNm at 8 m (1)", "257.78 kNm at 12.652 m (6)",
                            "230 kN at 8 m (1)", "-230 kN at 8 m (1)", "154 kN at 0 m (3)", "-154 kN at 16 m (6)",
                            ::testing::MatchesRegex("35.696 mm at .* m, allowed 22.222 mm")));
}

// Every peak has its dot on the curve, at the place that its label names.
TEST(LoadDrawing, PeaksStandAtTheirPlaces)
{
    const Loaded two(TwoSpans());
    const Drawing drawing = EnvelopesOf(two);
    const auto peaks = drawing.svg.OfClass("circle", "peak");
    const auto texts = drawing.Texts("value");
    ASSERT_EQ(peaks.size(), texts.size());
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const double at = std::stod(texts[i].substr(texts[i].find(" at ") + 4));
        EXPECT_NEAR(NumberOf(*peaks[i], "cx"), 28.0 + 8.0 * at, 0.011) << texts[i];
    }
}

TEST(LoadDrawing, SymbolsOfWhatHolds)
{
    Statics::Beam beam = StaticsTest::Continuous({6.0, 8.0, 7.0});
    beam.length = 23.0;
    beam.supports[0].holds = Held(0.0, StaticsTest::ENCASTRE).holds;
    beam.supports[2].vertical = 2e6;
    beam.supports[3].rotation = 5e6;
    beam.hinges = {{16.0, true, false}};
    beam.supports.push_back(Held(17.0, Steel::CRestraint::FLANGE2_LATERAL));
    beam.restraints.push_back(
        {0.0, 14.0, Steel::CRestraint(Steel::CRestraint::FLANGE1_LATERAL, Steel::SHR_CENTRE, 0.0)});
    beam.loads = {UniformLoad(0, 10e3)};
    const Loaded loaded(beam);
    const Drawing drawing = LoadsOf(loaded);
    const auto count = [&](const char* name, const char* cls) { return drawing.svg.OfClass(name, cls).size(); };
    // Each twice beside the member, and once in the legend.
    EXPECT_EQ(count("path", "wall"), 2U);
    EXPECT_EQ(count("rect", "wall"), 1U);
    EXPECT_EQ(count("path", "wall spring"), 3U);
    EXPECT_EQ(count("path", "wall turn"), 3U);
    EXPECT_EQ(count("circle", "support hinge"), 3U);
    EXPECT_EQ(count("path", "support roller"), 5U);
    EXPECT_EQ(count("path", "support pin"), 0U) << "the wall takes axial loads";
    EXPECT_EQ(count("circle", "lateral"), 2U);
    EXPECT_EQ(count("line", "along"), 2U);
    EXPECT_THAT(drawing.Texts("value"), ElementsAre("6 m", "8 m", "7 m", "2 m"));
    // The flange held is the one below, the deck is above.
    const double axis = NumberOf(*drawing.svg.OfClass("rect", "steel")[0], "y") + 1.2;
    EXPECT_GT(NumberOf(*drawing.svg.OfClass("circle", "lateral")[0], "cy"), axis);
    EXPECT_LT(NumberOf(*drawing.svg.OfClass("line", "along")[0], "y1"), axis);
}

TEST(LoadDrawing, EveryKindOfLoadHasItsSense)
{
    Statics::Beam beam = Single(10.0, StaticsTest::PINNED, StaticsTest::PINNED);
    beam.loads = {UniformLoad(0, -3e3, 0.0, 4.0),
                  TrapezoidalLoad(0, 5.0, 0.0, 9.0, 15e3),
                  PointLoad(0, -5e3, 2.0),
                  PointLoad(0, 6e3, 4.0, Direction::Minor),
                  MomentLoad(0, 12e3, 6.0),
                  MomentLoad(0, -13e3, 8.0),
                  PointLoad(0, -400e3, 10.0, Direction::Axial)};
    const Loaded loaded(beam);
    const Drawing drawing = LoadsOf(loaded);
    const auto texts = drawing.Texts("value over");
    EXPECT_EQ(std::set<std::string>(texts.begin(), texts.end()),
              (std::set<std::string>{"3 kN/m up", "0 to 15 kN/m", "5 kN up", "6 kN along y", "12 kNm clockwise",
                                     "13 kNm anticlockwise", "400 kN against x"}));
    const auto arrows = drawing.svg.OfClass("path", "load");
    // Upwards from the member at 2 m, and pressing on the right end from outside. 10 m at 1:75.
    const std::vector<Place> axial = PlacesOf(*arrows.back());
    EXPECT_NEAR(axial[1].x, 92.0 + 10000.0 / 75.0 / 2.0, 0.006);
    EXPECT_GT(axial[0].x, axial[1].x);
    const std::vector<Place> up = PlacesOf(*arrows[arrows.size() - 2]);
    EXPECT_LT(up[1].y, up[0].y);
    EXPECT_EQ(drawing.svg.OfClass("path", "load part").size(), 1U);
    const auto turns = drawing.svg.OfClass("path", "load turn");
    ASSERT_EQ(turns.size(), 2U);
    // The first one goes over the top from the left to the right.
    EXPECT_LT(PlacesOf(*turns[0]).front().x, PlacesOf(*turns[0]).back().x);
    EXPECT_GT(PlacesOf(*turns[1]).front().x, PlacesOf(*turns[1]).back().x);
}

// A column is drawn lying, which it says, and 150 kN straight down press on its top from the right.
TEST(LoadDrawing, ColumnsSayThatTheyAreDrawnLying)
{
    const Loaded column(Column());
    const Drawing drawing = LoadsOf(column);
    EXPECT_THAT(drawing.Texts("note"), Contains(HasSubstr("Drawn lying: it stands at 90° to the horizontal")));
    EXPECT_THAT(LoadsOf(Loaded(FloorBeam())).Texts("note"), Each(Not(HasSubstr("lying"))));
    const std::vector<Place> arrow = PlacesOf(*drawing.svg.OfClass("path", "load").back());
    EXPECT_NEAR(arrow[1].x, 167.0, 0.006);
    EXPECT_GT(arrow[0].x, arrow[1].x);
    EXPECT_EQ(arrow[0].y, arrow[1].y);
}

// The deflection less a camber, of all loads: the label is that of the check, and the curve has it at its place.
TEST(LoadDrawing, TheDeflectedShapeIsThatOfTheCheck)
{
    DeflectionLimit limit;
    limit.name = L"total";
    limit.spanRatio = 250.0;
    const Loaded floor(FloorBeam(), {limit}, {0.020});
    const Drawing drawing = EnvelopesOf(floor);
    const DeflectionCheck& check = floor.report.checks[0];
    const auto curve = PlacesOf(*drawing.svg.OfClass("path", "curve shape").at(0));
    const double base = NumberOf(*drawing.svg.OfClass("line", "axis").at(0), "y1");
    double lowest = 0.0;
    for (const Place& place : curve)
        lowest = std::max(lowest, place.y - base);
    EXPECT_NEAR(lowest, 12.0, 0.011);
    const auto peak = drawing.svg.OfClass("circle", "peak").back();
    EXPECT_NEAR(NumberOf(*peak, "cy"), base + 12.0, 0.011);
    EXPECT_NEAR(NumberOf(*peak, "cx"), 17.0 + check.at * 1e3 / 60.0, 0.011);
    // 5 x 12 x 9⁴/(384 x 21,000) = 48.82 mm of the dead load and about 28 mm of the imposed one, less 20 mm.
    EXPECT_NEAR(check.deflection, 0.0566, 5e-4);
}

TEST(LoadDrawing, ManyCasesAndLoadsAreSaidAndNotDrawn)
{
    Statics::Beam beam = Single(10.0, StaticsTest::PINNED, StaticsTest::PINNED);
    for (int i = 0; i < 100; ++i)
        beam.loads.push_back(PointLoad(0, 1e3, 0.1 * i));
    EXPECT_THAT(LoadsOf(Loaded(beam)).Texts("note"), Contains("60 more loads of this case are in the table alone."));
    for (int i = 0; i < 14; ++i)
        beam.cases.push_back({L"<More> & more", ActionKind::Permanent, Category::None, false});
    EXPECT_THAT(LoadsOf(Loaded(beam)).Texts("note"), Contains("3 more cases are in the tables alone."));
}

TEST(LoadDrawing, LoadHeightsAreWritten)
{
    Statics::Beam beam = FloorBeam();
    beam.section.topFlange = 0.2;
    beam.loads[1].reference = Steel::TOP_FLANGE;
    EXPECT_THAT(LoadsOf(Loaded(beam)).Texts("value over"), ElementsAre("12 kN/m", "45 kN, on the top flange"));
}

// Whatever the beam, the drawing is well-formed and every coordinate a number within the paper.
TEST(LoadDrawing, RandomBeamsStayOnThePaper)
{
    const unsigned seed = 4711;
    StaticsTest::BeamGenerator random(seed);
    int drawn = 0;
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", beam " + std::to_string(i));
        StaticsTest::BeamGenerator::Kinds kinds;
        kinds.cases = 2;
        Statics::Beam beam = random.Make(kinds);
        beam.inclination = i % 2 == 0 ? 0.0 : random.Real(-1.57, 1.57);
        beam.cases[1] = {L"<&> \"wind\"", ActionKind::Wind, Category::None, false};
        if (!Analysis(beam).IsAnswered()) continue;
        const Loaded loaded(beam);
        for (const std::string& text : {LoadsSvg("a", loaded.analysis.GetBeam(), loaded.report),
                                        EnvelopeSvg("b", loaded.analysis.GetBeam(), loaded.report)}) {
            const Drawing drawing(text);
            ++drawn;
            EXPECT_EQ(text.find("nan"), std::string::npos);
            EXPECT_EQ(text.find("inf"), std::string::npos);
            const double height = NumberOf(*drawing.svg.Named("svg").front(), "height");
            for (const HtmlElement* element : drawing.svg.Named("text")) {
                EXPECT_GE(NumberOf(*element, "x"), 0.0);
                EXPECT_LE(NumberOf(*element, "x"), 184.0);
                EXPECT_GE(NumberOf(*element, "y"), 2.0) << element->text;
                EXPECT_LE(NumberOf(*element, "y"), height) << element->text;
            }
            for (const char* cls : {"curve greatest", "curve least", "curve shape"})
                for (const HtmlElement* curve : drawing.svg.OfClass("path", cls))
                    for (const Place& place : PlacesOf(*curve)) {
                        EXPECT_TRUE(place.x >= 12.9 && place.x <= 171.1) << place.x;
                        EXPECT_TRUE(place.y >= 0.0 && place.y <= height) << place.y;
                    }
        }
    }
    EXPECT_GT(drawn, 250);
}

TEST(LoadDrawing, OnPaperEachCaseIsDrawnOnce)
{
    Statics::Beam beam = Single(10.0, StaticsTest::PINNED, StaticsTest::PINNED);
    beam.cases.resize(7);
    for (std::size_t c = 0; c < 7; ++c) {
        beam.cases[c].name.Format(L"Case %s", CDesFormat().Int(static_cast<int>(c)));
        beam.loads.push_back(PointLoad(c, 1e3 * (1.0 + static_cast<double>(c)), 5.0));
    }
    const Loaded loaded(beam);
    std::vector<std::string> names;
    std::vector<std::string> sizes;
    const auto drawings = LoadsSvgs("a", loaded.analysis.GetBeam(), loaded.report);
    ASSERT_EQ(drawings.size(), 3U);
    for (const std::string& text : drawings) {
        const Drawing drawing(text);
        for (const std::string& name : drawing.Texts("name"))
            names.push_back(name);
        for (const std::string& size : drawing.Texts("value over"))
            sizes.push_back(size);
        EXPECT_LT(NumberOf(*drawing.svg.Named("svg").front(), "height"), 240.0) << "a page";
    }
    EXPECT_THAT(names, ElementsAre("Case 0", "Case 1", "Case 2", "Case 3", "Case 4", "Case 5", "Case 6"));
    EXPECT_THAT(sizes, ElementsAre("1 kN", "2 kN", "3 kN", "4 kN", "5 kN", "6 kN", "7 kN"));
}

TEST(LoadDrawing, AFileOfItsOwnHasTitleAndStyle)
{
    const Loaded floor(FloorBeam());
    const std::string text = LoadSvgFile(floor.analysis.GetBeam(), floor.report);
    EXPECT_TRUE(text.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"));
    const Drawing drawing(text.substr(text.find('\n') + 1));
    EXPECT_EQ(drawing.svg.Named("style").size(), 1U);
    EXPECT_THAT(drawing.Texts("name"), Contains("Beam B12"));
    EXPECT_THAT(drawing.Texts("note"), Contains("UB 457x191x67 in S275"));
}

} // namespace LoadsTest
