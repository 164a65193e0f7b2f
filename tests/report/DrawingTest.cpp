#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

#include "HtmlReader.h"
#include "io/Failure.h"
#include "report/Diagrams.h"
#include "report/MemberDrawing.h"
#include "report/SectionSheet.h"
#include "report/Svg.h"

namespace Keltrix::App {
namespace {

using Steel::CMemberPoint;
using Steel::CRestraint;
using Steel::CSubSpan;

CMemberPoint Point(int index, double position, int bits, double loadHeight = 0.0)
{
    CMemberPoint point;
    point.Set1Index(index);
    point.SetPos(position);
    point.SetRestraint(CRestraint(bits, Data::SHR_CENTRE, loadHeight));
    return point;
}

CSubSpan SubSpan(int index, double shearL, double shearR, double momentL, double momentR, int bits = 0)
{
    CSubSpan subSpan;
    subSpan.Set1Index(index);
    subSpan.SetForcesAll({0.0, 0.0, shearL}, {0.0, 0.0, shearR});
    subSpan.SetMomentsAll({0.0, momentL, 0.0}, {0.0, momentR, 0.0});
    subSpan.SetRestraint(CRestraint(bits, Data::SHR_CENTRE, 0.0));
    return subSpan;
}

// 6 m with a central load of 40 kN: M = 40 * 6/4 = 60 kN·m, sagging, so below zero.
DrawnLayout CentralLoad()
{
    return {{Point(1, 0.0, CRestraint::PINNED), Point(2, 3.0, CRestraint::TOP_FLANGE_LATERAL),
             Point(3, 6.0, CRestraint::PINNED)},
            {SubSpan(1, -20e3, -20e3, 0.0, -60e3), SubSpan(2, 20e3, 20e3, -60e3, 0.0)}};
}

std::size_t CountClass(const Trial::HtmlReader& svg, const char* name, const char* cls)
{
    return svg.OfClass(name, cls).size();
}

TEST(DrawingScale, IsTheNextUsualScaleAtWhichTheSizeFits)
{
    EXPECT_EQ(DrawingScale(7.5, 158.0), 50.0); // 47.5
    EXPECT_EQ(DrawingScale(9.0, 158.0), 60.0); // 57
    EXPECT_EQ(DrawingScale(15.8, 158.0), 100.0);
    EXPECT_EQ(DrawingScale(0.3, 50.0), 6.0);
    EXPECT_EQ(DrawingScale(0.05, 50.0), 1.0);
    EXPECT_EQ(DrawingScale(std::nan(""), 50.0), 1.0);
    EXPECT_EQ(DrawingScale(0.0, 50.0), 1.0);
    for (double size = 0.01; size < 1e4; size *= 1.07) {
        const double scale = DrawingScale(size, 100.0);
        EXPECT_LE(size * 1e3 / scale, 100.0 * (1.0 + 1e-9)) << size;
        EXPECT_GE(size * 1e3 / scale, 74.0)
            << "a smaller scale than needed for " << size; // steps are at most 4/3 apart
    }
}

TEST(MemberDrawing, LengthAndDepthAreToTheSameScale)
{
    const DrawnLayout layout = CentralLoad();
    const CSection section(CString(L"UB 457x191x67"));
    const MemberAxis axis(layout, 0.4534);
    const Trial::HtmlReader svg(MemberSvg("e", layout, axis, section.Component(0)));
    ASSERT_EQ(svg.Error(), "");
    ASSERT_EQ(axis.Scale(), 40.0); // 6 m in 150 mm of paper
    const auto steel = svg.OfClass("rect", "steel");
    ASSERT_EQ(steel.size(), 1u);
    EXPECT_NEAR(NumberOf(*steel[0], "width"), 6000.0 / 40.0, 0.01);
    EXPECT_NEAR(NumberOf(*steel[0], "height"), 453.4 / 40.0, 0.01);
}

TEST(MemberDrawing, SupportsAndRestraintsAreDrawnByKindAndFlange)
{
    const DrawnLayout layout = CentralLoad();
    const CSection section(CString(L"UB 457x191x67"));
    const MemberAxis axis(layout, 0.4534);
    const Trial::HtmlReader svg(MemberSvg("e", layout, axis, section.Component(0)));
    // A pinned point: support, both flanges, torsion. Each kind stands once more in the legend.
    EXPECT_EQ(CountClass(svg, "path", "support"), 2u + 1u);
    EXPECT_EQ(CountClass(svg, "circle", "twist"), 2u + 1u);
    EXPECT_EQ(CountClass(svg, "circle", "lateral"), 2u + 1u + 2u + 1u);
    EXPECT_EQ(CountClass(svg, "circle", "subspan"), 2u);
    EXPECT_EQ(CountClass(svg, "text", "point"), 3u);
    EXPECT_EQ(CountClass(svg, "line", "along"), 0u);
    // The flange in the middle of the span is the top one: above the axis of the member.
    const Trial::HtmlElement& steel = *svg.OfClass("rect", "steel")[0];
    const double middle = NumberOf(steel, "y") + NumberOf(steel, "height") / 2.0;
    for (const auto* mark : svg.OfClass("circle", "lateral")) {
        if (std::abs(NumberOf(*mark, "cx") - MemberAxis::WIDTH / 2.0) < 0.1) {
            EXPECT_LT(NumberOf(*mark, "cy"), middle);
        }
    }
}

TEST(MemberDrawing, TheCompressionFlangeIsTheOneThatTheMomentTells)
{
    DrawnLayout layout = CentralLoad();
    layout.points[1].SetRestraint(CRestraint(CRestraint::COMP_FLANGE_LATERAL, Data::SHR_CENTRE, 0.0));
    EXPECT_EQ(HoldWords(RestraintOfPoint(layout, 1)), "flange 1 (top) held laterally");
    layout.subSpans[1].SetMomentsLeft({0.0, 60e3, 0.0});
    EXPECT_EQ(HoldWords(RestraintOfPoint(layout, 1)), "flange 2 (bottom) held laterally");
}

TEST(MemberDrawing, FixedEndsContinuousRestraintAndLoadHeightsAreDrawn)
{
    CRestraint fixed;
    fixed.SetEnc();
    DrawnLayout layout{{Point(1, 0.0, fixed.RestFlag()), Point(2, 2.0, 0, 0.25)},
                       {SubSpan(1, -10e3, -10e3, 20e3, 0.0, CRestraint::BOTTOM_FLANGE_LATERAL)}};
    const CSection section(CString(L"RHS 200x100x6.3"));
    const MemberAxis axis(layout, 0.2);
    const Trial::HtmlReader svg(MemberSvg("e", layout, axis, section.Component(0)));
    ASSERT_EQ(svg.Error(), "");
    EXPECT_EQ(CountClass(svg, "path", "wall"), 1u);
    EXPECT_EQ(CountClass(svg, "path", "support"), 0u);
    EXPECT_EQ(CountClass(svg, "line", "along"), 1u + 1u);
    EXPECT_EQ(CountClass(svg, "path", "load"), 1u + 1u);
    EXPECT_EQ(CountClass(svg, "line", "hidden"), 2u); // the walls of a hollow section
}

TEST(MemberDrawing, CrowdedNumbersAreThinnedAndTheLastOneStays)
{
    DrawnLayout layout;
    for (int i = 0; i <= 500; ++i)
        layout.points.push_back(Point(i + 1, i * 0.02, i % 500 == 0 ? int(CRestraint::PINNED) : 0));
    for (int i = 0; i < 500; ++i)
        layout.subSpans.push_back(SubSpan(i + 1, 0.0, 0.0, -1.0, -1.0));
    const CSection section(CString(L"UB 457x191x67"));
    const MemberAxis axis(layout, 0.4534);
    const Trial::HtmlReader svg(MemberSvg("e", layout, axis, section.Component(0)));
    const auto numbers = svg.OfClass("text", "point");
    EXPECT_LT(numbers.size(), 60u);
    ASSERT_GT(numbers.size(), 5u);
    EXPECT_EQ(numbers.front()->text, "1");
    EXPECT_EQ(numbers.back()->text, "501");
    for (std::size_t i = 1; i < numbers.size(); ++i)
        EXPECT_GT(NumberOf(*numbers[i], "x") - NumberOf(*numbers[i - 1], "x"), 2.0) << numbers[i]->text;
    EXPECT_LT(svg.OfClass("circle", "subspan").size(), 60u);
    EXPECT_LT(svg.OfClass("line", "station").size(), 200u);
}

TEST(Diagrams, StationsLieWhereTheValuesSay)
{
    const DrawnLayout layout = CentralLoad();
    const MemberAxis axis(layout, 0.4534);
    const ActionDiagram moment = ActionDiagrams(layout)[2];
    ASSERT_EQ(moment.symbol, "Myy");
    const std::string text = DiagramSvg("d", moment, layout, axis);
    const Trial::HtmlReader svg(text);
    ASSERT_EQ(svg.Error(), "");
    const auto values = svg.OfClass("text", "value");
    ASSERT_EQ(values.size(), 1u) << text;
    EXPECT_EQ(values[0]->text, "-60 kNm sagging");
    // Below zero is below the base line: 15 mm for the largest value.
    const double base = NumberOf(*svg.OfClass("line", "base")[0], "y1");
    const auto peaks = svg.OfClass("circle", "peak");
    ASSERT_EQ(peaks.size(), 1u);
    EXPECT_NEAR(NumberOf(*peaks[0], "cx"), MemberAxis::WIDTH / 2.0, 0.01);
    EXPECT_NEAR(NumberOf(*peaks[0], "cy"), base + 15.0, 0.01);
}

// The numbers of a path's commands, pair by pair.
std::vector<std::pair<double, double>> PlacesOf(const Trial::HtmlElement& path)
{
    std::string data = path.attributes.at("d");
    for (char& c : data)
        if (std::isalpha(static_cast<unsigned char>(c)) || c == ',') c = ' ';
    std::istringstream stream(data);
    std::vector<std::pair<double, double>> places;
    for (double x, y; stream >> x >> y;)
        places.emplace_back(x, y);
    return places;
}

// 20 kN/m over 6 m in one sub-span without end moments: the checks are for 90 kN·m.
TEST(Diagrams, AParabolaBetweenPointsIsDrawnWithItsExtreme)
{
    const DrawnLayout layout{{Point(1, 0.0, CRestraint::PINNED), Point(2, 6.0, CRestraint::PINNED)},
                             {SubSpan(1, -60e3, 60e3, 0.0, 0.0)}};
    const MemberAxis axis(layout, 0.4534);
    const ActionDiagram moment = ActionDiagrams(layout)[2];
    EXPECT_FALSE(moment.IsZero());
    EXPECT_EQ(moment.Smallest().value, -90e3);
    EXPECT_EQ(moment.Smallest().position, 3.0);
    const Trial::HtmlReader svg(DiagramSvg("d", moment, layout, axis));
    ASSERT_EQ(svg.Error(), "");
    const auto values = svg.OfClass("text", "value");
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0]->text, "-90 kNm sagging at 3 m");
    EXPECT_EQ(svg.OfClass("circle", "peak between").size(), 1u);
    // Every place of the curve is on the parabola w x (L - x)/2, 15 mm high.
    const double base = NumberOf(*svg.OfClass("line", "base")[0], "y1");
    const auto curve = PlacesOf(*svg.OfClass("path", "curve").at(0));
    EXPECT_GT(curve.size(), 15u);
    for (const auto& [x, y] : curve) {
        const double s = (x - axis.Left()) / (axis.Right() - axis.Left());
        EXPECT_NEAR(y - base, 15.0 * 4.0 * s * (1.0 - s), 0.02) << s;
    }
    EXPECT_EQ(svg.OfClass("path", "curve unsure").size(), 0u);
}

TEST(Diagrams, AContinuousBeamSagsInItsSpansAndHogsOverItsSupport)
{
    const DrawnLayout layout{
        {Point(1, 0.0, CRestraint::PINNED), Point(2, 8.0, CRestraint::PINNED), Point(3, 16.0, CRestraint::PINNED)},
        {SubSpan(1, -120e3, 200e3, 0.0, 320e3), SubSpan(2, -200e3, 120e3, 320e3, 0.0)}};
    const MemberAxis axis(layout, 0.4534);
    const Trial::HtmlReader svg(DiagramSvg("d", ActionDiagrams(layout)[2], layout, axis));
    const auto values = svg.OfClass("text", "value");
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0]->text, "320 kNm hogging");
    // 9 w L²/128 with w = 40 kN/m at 3 L/8 from the end
    EXPECT_EQ(values[1]->text, "-180 kNm sagging at 3 m");
}

TEST(Diagrams, WhereForcesDoNotBalanceAllThatTheMomentCanBeIsDrawn)
{
    const DrawnLayout layout{{Point(1, 0.0, CRestraint::PINNED), Point(2, 3.0, 0), Point(3, 6.0, CRestraint::PINNED)},
                             {SubSpan(1, -20e3, -20e3, 0.0, -60e3), SubSpan(2, -60e3, 60e3, -60e3, 0.0)}};
    const ActionDiagram moment = ActionDiagrams(layout)[2];
    EXPECT_FALSE(moment.IsKnown());
    const MemberAxis axis(layout, 0.4534);
    const std::string text = DiagramSvg("d", moment, layout, axis);
    const Trial::HtmlReader svg(text);
    ASSERT_EQ(svg.Error(), "");
    ASSERT_EQ(svg.OfClass("path", "curve unsure").size(), 1u);
    EXPECT_NE(text.find("Not known along the whole member"), std::string::npos);
    // From the left end: -60 - 22.5 = at mid-length and further; nothing that can be is left out.
    EXPECT_LT(moment.Smallest().value, -60e3 - 22.5e3);
}

TEST(Diagrams, BothExtremesOfAShearDiagramAreWritten)
{
    const DrawnLayout layout = CentralLoad();
    const MemberAxis axis(layout, 0.4534);
    const Trial::HtmlReader svg(DiagramSvg("d", ActionDiagrams(layout)[1], layout, axis));
    const auto values = svg.OfClass("text", "value");
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0]->text, "20 kN");
    EXPECT_EQ(values[1]->text, "-20 kN");
}

TEST(Diagrams, ValuesThatAreNotFiniteDoNotSpoilTheDrawing)
{
    DrawnLayout layout = CentralLoad();
    layout.subSpans[0].SetMomentsRight({0.0, std::numeric_limits<double>::infinity(), 0.0});
    layout.subSpans[1].SetMomentsLeft({0.0, std::nan(""), 0.0});
    const MemberAxis axis(layout, 0.4534);
    const std::string text = DiagramSvg("d", ActionDiagrams(layout)[2], layout, axis);
    EXPECT_EQ(Trial::HtmlReader(text).Error(), "");
    const std::string body = text.substr(text.find("</desc>"));
    EXPECT_EQ(body.find("=\"nan"), std::string::npos) << text;
    EXPECT_EQ(body.find(",inf"), std::string::npos) << text;
    EXPECT_NE(body.find(">inf kNm hogging<"), std::string::npos) << text;
}

TEST(Svg, HasARoleATitleAndADescriptionOfItsOwn)
{
    Svg drawing("m1-x", "A & B", "<none>");
    const Trial::HtmlReader svg(drawing.Finish("c", 10.0, 5.0));
    ASSERT_EQ(svg.Error(), "");
    const Trial::HtmlElement& root = *svg.Named("svg").at(0);
    EXPECT_EQ(root.attributes.at("role"), "img");
    EXPECT_EQ(root.attributes.at("aria-labelledby"), "m1-x-t m1-x-d");
    EXPECT_EQ(root.attributes.at("width"), "10mm");
    EXPECT_EQ(root.attributes.at("viewBox"), "0 0 10 5");
    EXPECT_EQ(svg.Named("title").at(0)->text, "A &amp; B");
    EXPECT_EQ(svg.Named("desc").at(0)->text, "&lt;none&gt;");
}

TEST(SectionSheet, EveryShapeIsDrawnWithItsDimensions)
{
    struct Row {
        const wchar_t* name;
        std::vector<std::string> texts;
    };
    const Row rows[] = {{L"UB 457x191x67", {"453.4", "189.9", "t = 8.5", "T = 12.7"}},
                        {L"L 150x75x10", {"150", "75", "t = 10"}},
                        {L"CHS 168.3x5", {"168.3", "t = 5"}},
                        {L"RHS 200x100x6.3", {"200", "100", "t = 6.3"}},
                        {L"GI 600x250x200x10x20x15", {"600", "250", "t = 10", "T = 20", "T2 = 15"}},
                        {L"PFC 200x90x30", {"200", "90"}}};
    for (const Row& row : rows) {
        const Trial::HtmlReader svg(SectionSheetSvg("s", CSection(CString(row.name)), "x"));
        ASSERT_EQ(svg.Error(), "");
        ASSERT_EQ(svg.OfClass("path", "steel").size(), 1u);
        for (const std::string& text : row.texts) {
            bool found = false;
            for (const auto* element : svg.Named("text"))
                found = found || element->text == text;
            EXPECT_TRUE(found) << text << " in the drawing of " << CString(row.name).ToUtf8().value_or("?");
        }
    }
    EXPECT_EQ(SectionSheetSvg("s", CSection(CString(L"no section")), "x"), "");
}

} // namespace
} // namespace Keltrix::App
