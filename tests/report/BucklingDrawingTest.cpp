#include "report/BucklingDrawing.h"

#include <cmath>
#include <numbers>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HtmlReader.h"
#include "app/AppSupport.h"
#include "app/BucklingSupport.h"
#include "report/Style.h"

namespace Keltrix::App {
namespace {

using DesignTest::AddPoint;
using DesignTest::Member;
using StabilityTest::AddSpan;
using ::testing::HasSubstr;
using ::testing::Not;
using Trial::HtmlElement;
using Trial::HtmlReader;

constexpr const wchar_t* UB = L"UB 457x191x82";

// 9 m, a deck on the top flange of the first 6 m: it buckles most in the last 3 m, to one side.
Member Decked()
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddSpan(m, 6.0, 0.0, 180e3, 20e3, L"F1L", L"F1L");
    AddSpan(m, 3.0, 180e3, 0.0, 20e3, L"Free", L"Pinned");
    return m;
}

struct ShapeDrawing {
    ShapeDrawing(const Member& m, const wchar_t* section = UB) :
        report(Trial::ReportOf(m, section)), layout{m.points, m.subSpans},
        axis(layout, CSection(section).Component(0).Dimension(0.0, CSecGeom::DEPTH)),
        text(BucklingSvg("b", report, layout, axis, CSection(section))), svg(text)
    {
        EXPECT_EQ(svg.Error(), "");
    }

    BucklingReport report;
    DrawnLayout layout;
    MemberAxis axis;
    std::string text;
    HtmlReader svg;
};

struct ShapePlace {
    double x, y;
};

// The ends of all pieces of a path, lines and arcs alike.
std::vector<ShapePlace> PlacesOf(std::string path)
{
    for (char& c : path)
        if (c == ',') c = ' ';
    std::vector<ShapePlace> places;
    std::istringstream in(path);
    for (char command = 0; in >> command;) {
        if (command == 'Z') continue;
        double skipped = 0.0;
        for (int i = 0; command == 'A' && i < 5; ++i)
            in >> skipped;
        ShapePlace place{};
        in >> place.x >> place.y;
        EXPECT_TRUE(in) << path;
        places.push_back(place);
    }
    return places;
}

std::vector<ShapePlace> CurveOf(const ShapeDrawing& drawing, const char* cls)
{
    const auto curves = drawing.svg.OfClass("path", cls); // the last ones are the legend's
    EXPECT_EQ(curves.size(), 2u) << cls;
    return PlacesOf(curves.front()->attributes.at("d"));
}

double BaseOf(const ShapeDrawing& drawing) { return NumberOf(*drawing.svg.OfClass("line", "axis").at(0), "y1"); }

TEST(BucklingDrawing, TheCurvesInPlanAreTheShape)
{
    const ShapeDrawing drawing(Decked());
    const auto& shape = ShownShape(drawing.report.Governing()->found);
    const double base = BaseOf(drawing);
    const auto top = CurveOf(drawing, "flange one");
    const auto bottom = CurveOf(drawing, "flange two");
    const auto centre = CurveOf(drawing, "centre");
    ASSERT_GE(top.size(), 49u);
    ASSERT_EQ(bottom.size(), top.size());
    double unit = 0.0; // mm for a displacement of 1
    for (std::size_t i = 0; i < top.size(); ++i)
        unit = std::max({unit, base - top[i].y, base - bottom[i].y});
    EXPECT_GT(unit, 8.0) << "large enough to be seen";
    for (std::size_t i = 0; i < top.size(); ++i) {
        const double x = 9.0 * static_cast<double>(i) / static_cast<double>(top.size() - 1);
        EXPECT_NEAR(top[i].x, drawing.axis.X(x), 0.006);
        EXPECT_NEAR((base - top[i].y) / unit, ShapeAt(shape, x).flange[0], 2e-3) << x;
        EXPECT_NEAR((base - bottom[i].y) / unit, ShapeAt(shape, x).flange[1], 2e-3) << x;
        EXPECT_NEAR((base - centre[i].y) / unit, ShapeAt(shape, x).v, 2e-3) << x;
    }
    for (std::size_t i = 0; 3 * i <= 2 * (top.size() - 1); ++i)
        EXPECT_NEAR(top[i].y, base, 0.02) << "the deck keeps the flange straight";
}

TEST(BucklingDrawing, AMirroredMemberHasTheMirroredDrawing)
{
    const ShapeDrawing drawing(Decked());
    const ShapeDrawing mirrored(DesignTest::Mirrored(Decked()));
    EXPECT_NEAR(BaseOf(drawing), BaseOf(mirrored), 0.03);
    for (const char* cls : {"flange one", "flange two", "centre"}) {
        const auto a = CurveOf(drawing, cls);
        const auto b = CurveOf(mirrored, cls);
        ASSERT_EQ(a.size(), b.size());
        for (std::size_t i = 0; i < a.size(); ++i) {
            EXPECT_NEAR(b[a.size() - 1 - i].x, MemberAxis::WIDTH - a[i].x, 0.02);
            EXPECT_NEAR(b[a.size() - 1 - i].y, a[i].y, 0.05) << cls << ' ' << i;
        }
    }
    EXPECT_EQ(drawing.svg.OfClass("path", "brace").size(), mirrored.svg.OfClass("path", "brace").size());
}

TEST(BucklingDrawing, RestraintsStandAtTheFlangeThatTheyHold)
{
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddSpan(m, 3.0, 0.0, 90e3, 20e3, L"Free", L"F2L");
    AddSpan(m, 3.0, 90e3, 0.0, 20e3, L"Free", L"Pinned");
    const ShapeDrawing drawing(m);
    const double base = BaseOf(drawing);
    const auto marksInPlan = [&](const char* cls, double x) {
        std::vector<std::vector<ShapePlace>> marks;
        for (const HtmlElement* mark : drawing.svg.OfClass("path", cls)) {
            const auto places = PlacesOf(mark->attributes.at("d"));
            if (std::fabs(places[0].x - x) < 0.01 && std::fabs(places[0].y - base) < 0.01) marks.push_back(places);
        }
        return marks;
    };
    const double middle = drawing.axis.X(3.0);
    EXPECT_EQ(marksInPlan("brace", middle).size(), 0u);
    ASSERT_EQ(marksInPlan("brace two", middle).size(), 1u);
    EXPECT_GT(marksInPlan("brace two", middle)[0][1].y, base) << "below the line";
    const double left = drawing.axis.X(0.0);
    ASSERT_EQ(marksInPlan("brace", left).size(), 1u);
    EXPECT_LT(marksInPlan("brace", left)[0][1].y, base) << "above the line";
    EXPECT_EQ(marksInPlan("brace two", left).size(), 1u);
    // Forks in plan, in two of the sections, and once in the legend.
    EXPECT_EQ(drawing.svg.OfClass("circle", "twist").size(), 2u + 2u + 1u);
    EXPECT_EQ(drawing.svg.OfClass("line", "along").size(), 0u);
    EXPECT_EQ(ShapeDrawing(Decked()).svg.OfClass("line", "along").size(), 1u + 1u);
}

struct Transform {
    double x = 0.0, y = 0.0, turn = 0.0;
};

Transform TransformOf(const HtmlElement& element)
{
    Transform t;
    const std::string& text = element.attributes.at("transform");
    EXPECT_EQ(std::sscanf(text.c_str(), "translate(%lf %lf) rotate(%lf)", &t.x, &t.y, &t.turn) >= 2, true) << text;
    return t;
}

// Where the flanges of the drawn sections are is where the plan has them, within what a turn differs from its slope.
TEST(BucklingDrawing, SectionsMoveAndTwistAsThePlanHasThem)
{
    for (const wchar_t* name : {UB, L"GI 600x250x200x10x20x15", L"T 229x191x34", L"RHS 200x100x6.3", L"CHS 168.3x5"}) {
        const ShapeDrawing drawing(StabilityTest::CentrallyLoaded(6.0, 0.1), name);
        const CSection section(name);
        const auto constants = StabilityTest::ConstantsOf(section);
        const auto& shape = ShownShape(drawing.report.Governing()->found);
        const auto ghosts = drawing.svg.OfClass("use", "ghost");
        const auto moved = drawing.svg.OfClass("use", "buckled");
        ASSERT_EQ(ghosts.size(), 7u);
        ASSERT_EQ(moved.size(), 7u);
        std::vector<ShapePlace> outline;
        for (const HtmlElement* path : drawing.svg.Named("path"))
            if (path->attributes.count("id") > 0) outline = PlacesOf(path->attributes.at("d"));
        // The arcs of a tube begin and end at its sides, half its depth from the middle.
        const bool isTube = CString(name).Find(L"CHS") == 0;
        double high = 0.0, low = 0.0;
        for (const ShapePlace& place : outline) {
            high = std::min(high, isTube ? place.x : place.y);
            low = std::max(low, isTube ? place.x : place.y);
        }
        const double depth = section.Component(0).Dimension(0.0, CSecGeom::DEPTH);
        const double scale = (low - high) / depth; // mm for 1 m
        // The flange's own height, and the half of its thickness above it, from the shear centre.
        EXPECT_GT(-high / scale, constants.flange[0]) << "the top edge lies above the middle of the flange";
        EXPECT_LT(-high / scale - constants.flange[0], 0.06 * depth);
        double sideways = 0.0; // mm for a displacement of 1, from the middle section
        const auto flangeX = [&](std::size_t i, std::size_t k) {
            const Transform t = TransformOf(*moved[i]);
            const double z = scale * constants.flange[k];
            return t.x + z * std::sin(t.turn * std::numbers::pi / 180.0) - TransformOf(*ghosts[i]).x;
        };
        sideways = -flangeX(3, 0) / ShapeAt(shape, 3.0).flange[0];
        EXPECT_GT(sideways, 2.0) << "the section moves visibly";
        for (std::size_t i = 0; i < 7; ++i) {
            EXPECT_LE(std::fabs(TransformOf(*moved[i]).turn), 25.5);
            for (std::size_t k = 0; k < 2; ++k)
                EXPECT_NEAR(-flangeX(i, k), sideways * ShapeAt(shape, static_cast<double>(i)).flange[k],
                            0.05 * sideways + 0.02)
                    << "section " << i << ", flange " << k + 1;
        }
    }
}

TEST(BucklingDrawing, WhatHoldsTheCompressionFlangeChangesSidesAtTheContraflexure)
{
    // Sags from 0 to 4 m and hogs from there to 6 m: linear from 100 to -50 kN·m.
    Member m;
    AddPoint(m, 0.0, L"Pinned");
    AddSpan(m, 6.0, 100e3, -50e3, 0.0, L"FCL", L"Pinned");
    const ShapeDrawing drawing(m);
    const auto lineFrom = [&](const char* cls) {
        const auto lines = drawing.svg.OfClass("line", cls);
        EXPECT_GE(lines.size(), 1u) << cls;
        return lines.empty() ? ShapePlace{} : ShapePlace{NumberOf(*lines[0], "x1"), NumberOf(*lines[0], "x2")};
    };
    EXPECT_NEAR(lineFrom("along").x, drawing.axis.X(0.0) + 2.0, 0.02);
    EXPECT_NEAR(lineFrom("along").y, drawing.axis.X(4.0) - 2.0, 0.02);
    EXPECT_NEAR(lineFrom("along two").x, drawing.axis.X(4.0) + 2.0, 0.02);
    EXPECT_NEAR(lineFrom("along two").y, drawing.axis.X(6.0) - 2.0, 0.02);
}

// The shear centre of a channel lies outside of its web; the marks stand at the flanges all the same.
TEST(BucklingDrawing, MarksOfAChannelStandAtItsFlanges)
{
    const ShapeDrawing drawing(StabilityTest::UniformlyLoaded(6.0), L"PFC 200x90x30");
    std::vector<ShapePlace> outline;
    for (const HtmlElement* path : drawing.svg.Named("path"))
        if (path->attributes.count("id") > 0) outline = PlacesOf(path->attributes.at("d"));
    double left = 1e9, right = -1e9, top = 1e9;
    for (const ShapePlace& place : outline) {
        left = std::min(left, place.x);
        right = std::max(right, place.x);
        top = std::min(top, place.y);
    }
    EXPECT_GT(left, 0.0) << "all of the section lies on one side of its shear centre";
    const Transform ghost = TransformOf(*drawing.svg.OfClass("use", "ghost").at(0));
    int marks = 0;
    for (const HtmlElement* mark : drawing.svg.OfClass("path", "brace")) {
        const ShapePlace tip = PlacesOf(mark->attributes.at("d"))[0];
        if (std::fabs(tip.y - (ghost.y + top)) > 0.02 || std::fabs(tip.x - drawing.axis.X(0.0)) > 1.0) continue;
        ++marks;
        EXPECT_NEAR(tip.x, ghost.x + (left + right) / 2.0, 0.02);
    }
    EXPECT_EQ(marks, 1);
}

TEST(BucklingDrawing, SaysWhereNothingBucklesAndDrawsAFreeMotion)
{
    Member tie = StabilityTest::Beam(6.0, 0.0, 0.0);
    StabilityTest::Compress(tie, -1e5);
    const ShapeDrawing nothing(tie);
    EXPECT_THAT(nothing.text, HasSubstr("nothing buckles"));
    EXPECT_EQ(nothing.svg.OfClass("path", "flange one").size(), 0u);
    EXPECT_EQ(nothing.svg.Named("use").size(), 0u);
    Member free;
    AddPoint(free, 0.0, L"Pinned");
    AddSpan(free, 6.0, 0.0, 0.0, 10e3);
    const ShapeDrawing motion(free);
    EXPECT_THAT(motion.text, HasSubstr("free motion"));
    const auto line = CurveOf(motion, "flange one");
    const double rise = (BaseOf(motion) - line.back().y) / (line.back().x - line.front().x);
    for (const ShapePlace& place : line)
        EXPECT_NEAR(BaseOf(motion) - place.y, rise * (place.x - line.front().x), 0.02)
            << "a straight line from the fork";
}

TEST(BucklingDrawing, EveryLookHasARuleInTheStyle)
{
    const ShapeDrawing drawing(Decked());
    for (const std::string& style : {DrawingStyle(), ReportStyle()}) {
        for (const HtmlElement& element : drawing.svg.Elements()) {
            const auto cls = element.attributes.find("class");
            if (cls == element.attributes.end() || element.name == "svg") continue;
            std::istringstream words(cls->second);
            for (std::string word; words >> word;)
                EXPECT_THAT(style, HasSubstr("." + word)) << element.name;
        }
    }
    EXPECT_THAT(DrawingStyle(), Not(HasSubstr("details"))) << "only what a drawing needs";
}

TEST(BucklingDrawing, AFileOfItsOwnHasItsStyleTitleAndVerdict)
{
    auto member = Trial::MemberOf(Decked(), UB);
    const BucklingReport report = MakeBucklingReport(*member, Trial::STEEL, false);
    const std::string file = BucklingSvgFile(report, *member, "Beam <1> & \"2\"");
    ASSERT_EQ(file.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n", 0), 0u);
    const HtmlReader svg(file.substr(file.find('\n') + 1));
    EXPECT_EQ(svg.Error(), "");
    EXPECT_EQ(svg.Named("style").size(), 1u);
    EXPECT_THAT(file, HasSubstr("Beam &lt;1&gt; &amp;"));
    EXPECT_THAT(file, HasSubstr(VerdictSentence(report)));
}

TEST(BucklingSheet, TheSheetShowsTheDrawingAndTheFiguresOfTheCommand)
{
    const auto sheet = Trial::RunKsteel("report examples/crane_beam.csv -o -");
    ASSERT_EQ(sheet.code, 0) << sheet;
    const HtmlReader html(sheet.out);
    ASSERT_EQ(html.Error(), "");
    EXPECT_EQ(html.OfClass("svg", "buckling").size(), 1u);
    EXPECT_THAT(sheet.out, HasSubstr(">Elastic critical load</h3>"));
    const auto command = Trial::RunKsteel("buckling examples/crane_beam.csv");
    EXPECT_THAT(command.out, HasSubstr("λcr = 1.220, Mcr = 295.91 kNm at 3.75 m"));
    EXPECT_THAT(sheet.out, HasSubstr("λcr = 1.220, Mcr = 295.91 kNm at 3.75\u00A0m"));
}

TEST(BucklingSheet, TheShortFormHasALineAndAnAngleItsReason)
{
    const auto brief = Trial::RunKsteel("report --brief examples/crane_beam.csv -o -");
    EXPECT_THAT(brief.out, HasSubstr("<p>Elastic critical load: <span class=\"value\">λcr = 1.220"));
    EXPECT_THAT(brief.out, Not(HasSubstr("class=\"buckling\"")));
    const auto angle = Trial::RunKsteel("report examples/angle_brace.csv -o -");
    EXPECT_THAT(angle.out, HasSubstr("Not analysed: the principal axes of an angle"));
    EXPECT_THAT(angle.out, Not(HasSubstr("class=\"buckling\"")));
}

} // namespace
} // namespace Keltrix::App
