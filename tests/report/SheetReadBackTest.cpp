// Drawings and tables of the calculation sheet read back as numbers: what an engineer measures on paper is what the member is.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

#include "HtmlReader.h"
#include "check/CheckedMember.h"
#include "io/Failure.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"
#include "report/MemberSheet.h"
#include "text/Html.h"
#include "text/Text.h"

namespace Keltrix::App {
namespace {

// The member as the standard's own class.
const Keltrix::BS5950::CSteelMemberBS5950& StandardOf(const Keltrix::Host::CheckedMember& checked)
{
    return dynamic_cast<const Keltrix::BS5950::CSteelMemberBS5950&>(*checked.coded);
}

using Trial::HtmlElement;
using Trial::HtmlReader;

constexpr double PAPER = 0.011; // mm: coordinates are rounded to 0.01

std::string Written(double value)
{
    std::ostringstream text;
    text.precision(12);
    text << value;
    return text.str();
}

struct Place {
    double x = 0.0;
    std::string restraint = "Free";
    double loadHeight = 0.0;
};

struct Piece {
    double shearLeft = 0.0, shearRight = 0.0, momentLeft = 0.0, momentRight = 0.0;
    double axial = 0.0;
    std::string along = "Free";
};

// A member as a file has it.
struct Given {
    std::string section = "UB 457x191x67,ROLLED";
    std::vector<Place> places{{0.0, "Pinned"}, {6.0, "Pinned"}};
    std::vector<Piece> pieces{{}};

    std::string Text() const
    {
        std::string text = "TITLE,Read back\nHEADINGS,a\nSECTION," + section +
                           "\nGRADE,S275\nNET_TO_GROSS,1\nALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\nSHEAR_LAG_FACTOR,0.7\n"
                           "HEADINGS,a\nEFFECTIVE_LENGTH_OVERRIDES,NO\nHEADINGS,a\n";
        for (std::size_t i = 0; i < places.size(); ++i)
            text += "MEMBERPOINT," + std::to_string(i + 1) + ',' + Written(places[i].x) + ',' + places[i].restraint +
                    ',' + Written(places[i].loadHeight) + '\n';
        text += "HEADINGS,a\n";
        for (std::size_t k = 0; k < pieces.size(); ++k) {
            const Piece& p = pieces[k];
            text += "SUBSPAN," + std::to_string(k + 1) + ',' + Written(p.axial) + ",0," + Written(p.shearLeft) + ',' +
                    Written(p.axial) + ",0," + Written(p.shearRight) + ",0," + Written(p.momentLeft) + ",0,0," +
                    Written(p.momentRight) + ",0," + p.along + ",0\n";
        }
        return text + "END\n";
    }
};

// One drawing of a sheet: its elements in order.
struct Drawing {
    std::string title;
    std::vector<HtmlElement> elements;

    std::vector<HtmlElement> Of(const std::string& name, const std::string& cls) const
    {
        std::vector<HtmlElement> found;
        for (const HtmlElement& e : elements)
            if (e.name == name && (e.attributes.count("class") ? e.attributes.at("class") : "") == cls)
                found.push_back(e);
        return found;
    }
};

double Number(const HtmlElement& element, const char* attribute) { return std::stod(element.attributes.at(attribute)); }

class Sheet {
public:
    explicit Sheet(const Given& given)
    {
        MemberPiece piece;
        piece.bytes = given.Text();
        piece.isWhole = true;
        const MemberFile file("f.csv", piece);
        checked = CheckMember(file, 0, DefaultCode(), true);
        html = "<div>" + MemberSheet(checked, {}, "m") + "</div>";
        const HtmlReader reader(html);
        EXPECT_EQ(reader.Error(), "");
        elements = reader.Elements();
    }

    /// Drawings of a class, in order.
    std::vector<Drawing> Drawings(const std::string& cls) const
    {
        std::vector<Drawing> drawings;
        bool isInside = false;
        for (const HtmlElement& e : elements) {
            if (e.name == "svg") {
                isInside = e.attributes.at("class") == cls;
                if (isInside) drawings.emplace_back();
            } else if (e.name == "table" || e.name == "figure" || e.name == "section")
                isInside = false;
            else if (isInside && e.name == "title")
                drawings.back().title = e.text;
            else if (isInside)
                drawings.back().elements.push_back(e);
        }
        return drawings;
    }

    CheckedMember checked;
    std::string html;
    std::vector<HtmlElement> elements;
};

// The elevation with its own scale, found from the steel.
struct Elevation {
    Drawing drawing;
    double left = 0.0, top = 0.0, width = 0.0, depth = 0.0;
    double legend = 0.0; ///< below this are dimensions and legend
    double scale = 0.0;  ///< mm of paper for 1 m

    explicit Elevation(const Sheet& sheet, double length)
    {
        drawing = sheet.Drawings("member").at(0);
        const HtmlElement steel = drawing.Of("rect", "steel").at(0);
        left = Number(steel, "x");
        top = Number(steel, "y");
        width = Number(steel, "width");
        depth = Number(steel, "height");
        legend = Number(drawing.Of("line", "dim").at(0), "y1");
        scale = width / length;
    }
    double X(double position) const { return left + position * scale; }
    double Middle() const { return top + 0.5 * depth; }
};

// What a restraint holds, in marks: how many of each kind stand at its point, and where.
struct Marks {
    const char* restraint;
    bool support, top, bottom, torsion, partTorsion, topWarping, partlyFixed;
};

constexpr Marks RESTRAINTS[] = {{"Free", false, false, false, false, false, false, false},
                                {"Pinned", true, true, true, true, false, false, false},
                                {"F1L", false, true, false, false, false, false, false},
                                {"F2L", false, false, true, false, false, false, false},
                                {"MAJV", true, false, false, false, false, false, false},
                                {"TP", false, false, false, false, true, false, false},
                                {"F1W", false, false, false, false, false, true, false},
                                {"MAJPV F1L", true, true, false, false, false, false, true}};

// Marks of a kind at a place of the elevation, the legend left out.
int CountAt(const Elevation& e, const char* name, const char* cls, double x, double above, double below)
{
    int count = 0;
    for (const HtmlElement& mark : e.drawing.Of(name, cls)) {
        const bool isCircle = mark.attributes.count("cx") > 0;
        const double cx = isCircle ? Number(mark, "cx") : Number(mark, "x") + 0.5 * Number(mark, "width");
        const double cy = isCircle ? Number(mark, "cy") : Number(mark, "y") + 0.5 * Number(mark, "height");
        if (cy < e.legend && std::abs(cx - x) < 0.05 && cy > above && cy < below) ++count;
    }
    return count;
}

int CountSupports(const Elevation& e, double x)
{
    int count = 0;
    for (const HtmlElement& mark : e.drawing.Of("path", "support")) {
        double apexX = 0.0, apexY = 0.0;
        char separator = 0;
        std::istringstream(mark.attributes.at("d").substr(1)) >> apexX >> separator >> apexY;
        if (apexY < e.legend && std::abs(apexX - x) < 0.05 && apexY > e.Middle()) ++count;
    }
    return count;
}

// A member of random points that are far enough apart to be distinguished.
Given RandomMember(std::mt19937& random)
{
    std::uniform_real_distribution<double> apart(0.8, 2.5);
    std::uniform_real_distribution<double> load(-1.0, 1.0);
    Given given;
    given.places.assign(1, {0.0, "Pinned"});
    given.pieces.clear();
    const std::size_t count = 3 + random() % 4;
    for (std::size_t i = 1; i < count; ++i) {
        given.places.push_back({given.places.back().x + std::round(apart(random) * 100.0) / 100.0, "Free"});
        given.places.back().restraint = RESTRAINTS[random() % std::size(RESTRAINTS)].restraint;
        const double shear = std::round(load(random) * 50e3);
        Piece piece;
        piece.shearLeft = piece.shearRight = shear;
        piece.momentLeft = given.pieces.empty() ? 0.0 : given.pieces.back().momentRight;
        piece.momentRight = piece.momentLeft + shear * (given.places[i].x - given.places[i - 1].x);
        piece.axial = std::round(load(random) * 200e3);
        given.pieces.push_back(piece);
    }
    given.places.back().restraint = "Pinned";
    return given;
}

} // namespace

TEST(ElevationReadBack, MarksStandAtTheirPointsAndFlanges)
{
    constexpr unsigned SEED = 11;
    std::mt19937 random(SEED);
    for (int member = 0; member < 60; ++member) {
        const Given given = RandomMember(random);
        SCOPED_TRACE("seed " + std::to_string(SEED) + "\n" + given.Text());
        const Elevation e(Sheet(given), given.places.back().x);
        const double inf = 1e9;
        for (std::size_t i = 1; i + 1 < given.places.size(); ++i) {
            const double x = e.X(given.places[i].x);
            const auto* const marks = std::find_if(std::begin(RESTRAINTS), std::end(RESTRAINTS), [&](const Marks& m) {
                return m.restraint == given.places[i].restraint;
            });
            EXPECT_EQ(CountSupports(e, x), marks->support);
            EXPECT_EQ(CountAt(e, "circle", "lateral", x, -inf, e.Middle()), marks->top);
            EXPECT_EQ(CountAt(e, "circle", "lateral", x, e.Middle(), inf), marks->bottom);
            EXPECT_EQ(CountAt(e, "circle", "twist", x, e.Middle() - 0.1, e.Middle() + 0.1), marks->torsion);
            EXPECT_EQ(CountAt(e, "circle", "twist part", x, e.Middle() - 0.1, e.Middle() + 0.1), marks->partTorsion);
            EXPECT_EQ(CountAt(e, "rect", "warp", x, -inf, e.Middle()), marks->topWarping);
            EXPECT_EQ(CountAt(e, "rect", "warp", x, e.Middle(), inf), 0);
            EXPECT_EQ(CountAt(e, "rect", "wall part", x, -inf, inf), marks->partlyFixed);
            EXPECT_EQ(CountAt(e, "rect", "wall", x, -inf, inf), 0);
        }
        if (testing::Test::HasFailure()) return;
    }
}

TEST(ElevationReadBack, EveryKindOfHoldHasItsLegendAndNoOther)
{
    const auto notes = [](const char* restraint) {
        Given given;
        given.places = {{0.0, "Free"}, {3.0, restraint}, {6.0, "Free"}};
        given.pieces.assign(2, {});
        std::vector<std::string> texts;
        const Elevation e(Sheet(given), 6.0);
        for (const HtmlElement& note : e.drawing.Of("text", "note"))
            if (Number(note, "y") > e.legend) texts.push_back(note.text);
        return texts;
    };
    EXPECT_EQ(notes("Free").size(), 0u);
    EXPECT_EQ(notes("MAJV").size(), 1u);
    EXPECT_EQ(notes("TP").size(), 1u);
    EXPECT_EQ(notes("F1W").size(), 1u);
    EXPECT_EQ(notes("F1L"), notes("F2L"));
    EXPECT_NE(notes("TP"), notes("F1W"));
    EXPECT_EQ(notes("Pinned").size(), 3u) << "support, flanges, torsion";
    EXPECT_EQ(notes("MAJPV").size(), 2u);
    EXPECT_NE(notes("MAJPV"), notes("MAJRV"));
}

// Numbers and places of points are written at their places; the dimension line runs from end to end.
TEST(ElevationReadBack, PlacesAreWrittenWhereTheyAre)
{
    constexpr unsigned SEED = 12;
    std::mt19937 random(SEED);
    for (int member = 0; member < 20; ++member) {
        const Given given = RandomMember(random);
        SCOPED_TRACE("seed " + std::to_string(SEED) + "\n" + given.Text());
        const Elevation e(Sheet(given), given.places.back().x);
        const HtmlElement dimension = e.drawing.Of("line", "dim").at(0);
        EXPECT_NEAR(Number(dimension, "x1"), e.left, PAPER);
        EXPECT_NEAR(Number(dimension, "x2"), e.left + e.width, PAPER);
        int places = 0;
        for (const HtmlElement& text : e.drawing.Of("text", "")) {
            if (!text.text.ends_with(" m")) continue;
            EXPECT_NEAR(Number(text, "x"), e.X(std::stod(text.text)), 0.03) << text.text;
            ++places;
        }
        EXPECT_EQ(places, static_cast<int>(given.places.size()));
        const auto numbers = e.drawing.Of("text", "point");
        ASSERT_EQ(numbers.size(), given.places.size());
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            EXPECT_EQ(numbers[i].text, std::to_string(i + 1));
            EXPECT_NEAR(Number(numbers[i], "x"), e.X(given.places[i].x), 0.03);
        }
        const auto pieces = e.drawing.Of("circle", "subspan");
        ASSERT_EQ(pieces.size(), given.pieces.size());
        for (std::size_t k = 0; k < pieces.size(); ++k)
            EXPECT_NEAR(Number(pieces[k], "cx"), e.X(0.5 * (given.places[k].x + given.places[k + 1].x)), 0.03);
        if (testing::Test::HasFailure()) return;
    }
}

// The inner faces of the flanges are drawn at their thickness: mm, to the scale of the drawing.
TEST(ElevationReadBack, FlangesAreAsThickAsTheyAre)
{
    struct Row {
        const char* section;
        const char* edge;
        double top, bottom; // mm; 0 for none
    };
    for (const Row& row :
         {Row{"UB 457x191x67,ROLLED", "edge", 12.7, 12.7}, Row{"L 150x75x10,ROLLED", "edge", 0, 10},
          Row{"T 229x191x34,ROLLED", "edge", 12.7, 0}, Row{"CHS 168.3x5,ROLLED", "hidden", 5, 5},
          Row{"RHS 200x100x6.3,ROLLED", "hidden", 6.3, 6.3}, Row{"GI 600x250x200x10x40x25,WELDED", "edge", 40, 25}}) {
        Given given;
        given.section = row.section;
        given.places.back().x = 1.5;
        const Elevation e(Sheet(given), 1.5);
        std::vector<double> lines;
        for (const HtmlElement& line : e.drawing.Of("line", row.edge))
            if (Number(line, "y1") < e.legend) lines.push_back(Number(line, "y1"));
        ASSERT_EQ(lines.size(), static_cast<std::size_t>((row.top > 0.0) + (row.bottom > 0.0))) << row.section;
        const double mm = e.scale / 1e3;
        if (row.top > 0.0) {
            EXPECT_NEAR(lines.front(), e.top + row.top * mm, 2 * PAPER) << row.section;
        }
        if (row.bottom > 0.0) {
            EXPECT_NEAR(lines.back(), e.top + e.depth - row.bottom * mm, 2 * PAPER) << row.section;
        }
    }
}

// The tip of the arrow lies at the height of the load above the axis: 0.4 m of a beam 0.4534 m deep.
TEST(ElevationReadBack, TheTipOfALoadIsAtItsHeight)
{
    for (const double height : {0.4, 0.25, -0.2}) {
        Given given;
        given.places = {{0.0, "Pinned"}, {2.0, "Free", height}, {6.0, "Pinned"}};
        given.pieces.assign(2, {});
        const Elevation e(Sheet(given), 6.0);
        int arrows = 0;
        for (const HtmlElement& arrow : e.drawing.Of("path", "load")) {
            double x = 0.0, y = 0.0, tipX = 0.0, tipY = 0.0;
            char c = 0;
            std::istringstream(arrow.attributes.at("d").substr(1)) >> x >> c >> y >> c >> tipX >> c >> tipY;
            if (tipY > e.legend) continue;
            EXPECT_NEAR(tipX, e.X(2.0), 0.03);
            EXPECT_NEAR(tipY, e.Middle() - height * e.scale, 0.03) << height;
            EXPECT_LT(y, tipY) << "it comes from above";
            ++arrows;
        }
        EXPECT_EQ(arrows, 1);
    }
}

// A restraint along a sub-span is a line at its flange between its two points and nowhere else.
TEST(ElevationReadBack, ARestraintAlongASubSpanRunsBetweenItsPoints)
{
    struct Row {
        const char* along;
        bool top, bottom;
    };
    for (const Row& row : {Row{"F1L", true, false}, Row{"F2L", false, true}, Row{"Free", false, false}}) {
        Given given;
        given.places = {{0.0, "Pinned"}, {2.0, "Pinned"}, {6.0, "Pinned"}};
        given.pieces.assign(2, {});
        given.pieces[1].along = row.along;
        const Elevation e(Sheet(given), 6.0);
        int top = 0, bottom = 0;
        for (const HtmlElement& line : e.drawing.Of("line", "along")) {
            if (Number(line, "y1") > e.legend) continue;
            EXPECT_GT(Number(line, "x1"), e.X(2.0));
            EXPECT_LT(Number(line, "x1"), e.X(2.0) + 3.0);
            EXPECT_LT(Number(line, "x2"), e.X(6.0));
            EXPECT_GT(Number(line, "x2"), e.X(6.0) - 3.0);
            (Number(line, "y1") < e.Middle() ? top : bottom) += 1;
        }
        EXPECT_EQ(top, row.top) << row.along;
        EXPECT_EQ(bottom, row.bottom) << row.along;
    }
}

namespace {

struct Vertex {
    double x, y;
};

std::vector<Vertex> VerticesOf(const std::string& path)
{
    std::vector<Vertex> vertices;
    std::istringstream in(path);
    for (char command = 0; in >> command && command != 'Z';) {
        Vertex v{};
        char comma = 0;
        in >> v.x >> comma >> v.y;
        vertices.push_back(v);
    }
    return vertices;
}

// Requires the values at the ends of the sub-spans to be corners of the curve, at the scale that its marked values give.
void ExpectCurve(const Drawing& diagram, const Elevation& e, const std::vector<Vertex>& expected)
{
    const double base = Number(diagram.Of("line", "base").at(0), "y1");
    const auto peaks = diagram.Of("circle", "peak");
    const auto values = diagram.Of("text", "value");
    ASSERT_EQ(peaks.size(), values.size());
    ASSERT_FALSE(peaks.empty());
    double unit = 0.0; // mm for 1 kN or 1 kNm, from the largest value
    double largest = 0.0;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const double value = std::stod(values[i].text);
        if (std::abs(value) <= largest) continue;
        largest = std::abs(value);
        unit = (base - Number(peaks[i], "cy")) / value;
    }
    EXPECT_GT(unit, 0.0) << "values above zero stand above the line";
    const std::vector<Vertex> curve = VerticesOf(diagram.Of("path", "curve").at(0).attributes.at("d"));
    for (const Vertex& v : expected) {
        const double x = e.X(v.x);
        const double y = base - v.y / 1e3 * unit;
        const bool found = std::any_of(curve.begin(), curve.end(), [&](const Vertex& c) {
            return std::abs(c.x - x) < 0.03 && std::abs(c.y - y) < 0.03;
        });
        EXPECT_TRUE(found) << diagram.title << ": " << v.y << " at " << v.x << " m";
    }
    for (std::size_t i = 0; i < peaks.size(); ++i)
        EXPECT_NEAR(Number(peaks[i], "cy"), base - std::stod(values[i].text) * unit, 0.03) << values[i].text;
}

const Drawing& Called(const std::vector<Drawing>& drawings, const std::string& symbol)
{
    for (const Drawing& d : drawings)
        if (d.title.starts_with(symbol)) return d;
    throw std::runtime_error("no diagram of " + symbol);
}

} // namespace

TEST(DiagramReadBack, CurvesHaveTheirValuesAtTheEndsOfSubSpans)
{
    constexpr unsigned SEED = 13;
    std::mt19937 random(SEED);
    for (int member = 0; member < 40; ++member) {
        const Given given = RandomMember(random);
        SCOPED_TRACE("seed " + std::to_string(SEED) + "\n" + given.Text());
        const Sheet sheet(given);
        const Elevation e(sheet, given.places.back().x);
        const std::vector<Drawing> diagrams = sheet.Drawings("diagram");
        std::vector<Vertex> axial, shear, moment;
        for (std::size_t k = 0; k < given.pieces.size(); ++k) {
            const Piece& p = given.pieces[k];
            const double a = given.places[k].x, b = given.places[k + 1].x;
            axial.insert(axial.end(), {{a, p.axial}, {b, p.axial}});
            shear.insert(shear.end(), {{a, p.shearLeft}, {b, p.shearRight}});
            moment.insert(moment.end(), {{a, p.momentLeft}, {b, p.momentRight}});
        }
        ExpectCurve(Called(diagrams, "Fx"), e, axial);
        ExpectCurve(Called(diagrams, "Fz"), e, shear);
        ExpectCurve(Called(diagrams, "Myy"), e, moment);
        if (testing::Test::HasFailure()) return;
    }
}

// The largest and the smallest value of a diagram are written, as numbers.
TEST(DiagramReadBack, TheExtremesAreWritten)
{
    constexpr unsigned SEED = 14;
    std::mt19937 random(SEED);
    for (int member = 0; member < 40; ++member) {
        const Given given = RandomMember(random);
        SCOPED_TRACE("seed " + std::to_string(SEED) + "\n" + given.Text());
        double most = 0.0, least = 0.0;
        for (const Piece& p : given.pieces) {
            most = std::max({most, p.momentLeft, p.momentRight});
            least = std::min({least, p.momentLeft, p.momentRight});
        }
        const std::vector<Drawing> diagrams = Sheet(given).Drawings("diagram");
        double drawnMost = 0.0, drawnLeast = 0.0;
        for (const HtmlElement& value : Called(diagrams, "Myy").Of("text", "value")) {
            drawnMost = std::max(drawnMost, std::stod(value.text));
            drawnLeast = std::min(drawnLeast, std::stod(value.text));
        }
        EXPECT_NEAR(drawnMost, most / 1e3, 1e-4 * most / 1e3 + 1e-3);
        EXPECT_NEAR(drawnLeast, least / 1e3, 1e-4 * -least / 1e3 + 1e-3);
        if (testing::Test::HasFailure()) return;
    }
}

namespace {

// Rows of the table that has a caption: the texts of their cells, with those of what is in them.
std::vector<std::vector<std::string>> RowsOf(const Sheet& sheet, const std::string& caption)
{
    std::vector<std::vector<std::string>> rows;
    bool isInside = false;
    for (const HtmlElement& e : sheet.elements) {
        if (e.name == "table") isInside = false;
        if (e.name == "caption") isInside = e.text == caption;
        if (!isInside) continue;
        if (e.name == "tr") rows.emplace_back();
        if (rows.empty()) continue;
        if (e.name == "td" || (e.name == "th" && e.attributes.count("scope") && e.attributes.at("scope") == "row"))
            rows.back().push_back(e.text);
        else if (e.name != "th" && e.name != "tr" && e.name != "thead" && e.name != "tbody" && !rows.back().empty())
            rows.back().back() += e.text;
    }
    std::erase_if(rows, [](const auto& row) { return row.empty(); });
    return rows;
}

std::string Html(const wchar_t* text) { return EscapedHtml(Utf8(std::wstring_view(text))); }

Given LoadedColumn(double scale)
{
    Given given;
    given.section = "UC 254x254x89,ROLLED";
    given.places = {{0.0, "Pinned"}, {4.5, "Pinned"}};
    given.pieces = {{scale * 10e3, scale * 10e3, 0.0, scale * 45e3, scale * -1200e3}};
    return given;
}

} // namespace

TEST(SheetReadBack, TheTableOfChecksIsTheLedger)
{
    for (const double scale : {1.0, 3.0}) {
        const Sheet sheet(LoadedColumn(scale));
        std::vector<BS5950::LedgerEntry> evaluated;
        std::size_t others = 0;
        for (const BS5950::LedgerEntry& e : StandardOf(sheet.checked).Checks().Entries()) {
            const bool is = e.status == BS5950::CheckStatus::Passed || e.status == BS5950::CheckStatus::Failed;
            if (is)
                evaluated.push_back(e);
            else
                ++others;
        }
        const auto rows = RowsOf(sheet, "Checks that were evaluated");
        ASSERT_EQ(rows.size(), evaluated.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const BS5950::LedgerEntry& e = evaluated[i];
            ASSERT_EQ(rows[i].size(), 6u);
            EXPECT_EQ(rows[i][0], Html(BS5950::RuleName(e.rule)) + (e.governing ? " (governs)" : ""));
            EXPECT_EQ(rows[i][1], Html(e.clause));
            EXPECT_EQ(rows[i][2].empty(), std::isnan(e.start));
            EXPECT_EQ(rows[i][3].empty(), e.utilisation == 0.0);
            if (e.utilisation > 0.0) {
                EXPECT_NEAR(std::stod(rows[i][3]), e.utilisation, 0.5001e-3);
            }
            EXPECT_EQ(rows[i][4].starts_with(Html(e.symbol) + " = "), e.quantity != BS5950::Quantity::None);
            const bool fails = e.status == BS5950::CheckStatus::Failed;
            EXPECT_TRUE(rows[i][5].starts_with(fails ? "Fails" : "Passes")) << rows[i][5];
        }
        EXPECT_EQ(RowsOf(sheet, "Checks without a result").size(), others);
    }
}

// A bar is as long as its utilisation up to 2, where it is cut and says so; it is coloured as a failure where it is one.
TEST(SheetReadBack, BarsAreTheLedgerEvenWhereTheyAreCut)
{
    for (const double scale : {0.5, 1.6, 5.0}) {
        const Sheet sheet(LoadedColumn(scale));
        const Drawing chart = sheet.Drawings("chart").at(0);
        const HtmlElement limit = chart.Of("line", "limit").at(0);
        const double start = Number(chart.Of("line", "base").at(0), "x1");
        const double unit = Number(limit, "x1") - start;
        std::vector<HtmlElement> bars;
        for (const HtmlElement& e : chart.elements)
            if (e.name == "rect") bars.push_back(e);
        std::vector<BS5950::LedgerEntry> largest;
        for (int rule = 0; rule < static_cast<int>(BS5950::Rule::COUNT); ++rule) {
            const auto* const entry = StandardOf(sheet.checked).Checks().Find(static_cast<BS5950::Rule>(rule));
            if (entry && entry->utilisation > 0.0) largest.push_back(*entry);
        }
        ASSERT_EQ(bars.size(), largest.size());
        for (std::size_t i = 0; i < bars.size(); ++i) {
            const double u = largest[i].utilisation;
            EXPECT_NEAR(Number(bars[i], "x"), start, PAPER);
            EXPECT_NEAR(Number(bars[i], "width"), unit * std::min(u, 2.0), 0.05) << u;
            const bool fails = largest[i].status == BS5950::CheckStatus::Failed;
            EXPECT_EQ(bars[i].attributes.at("class") == "bar fails", fails) << u;
        }
        int cut = 0;
        for (const HtmlElement& e : chart.elements)
            cut += e.name == "text" && e.text.find("cut") != std::string::npos;
        EXPECT_EQ(cut,
                  std::count_if(largest.begin(), largest.end(), [](const auto& e) { return e.utilisation >= 2.0; }));
    }
}

TEST(SheetReadBack, TablesOfPointsAndSubSpansAreTheMember)
{
    constexpr unsigned SEED = 15;
    std::mt19937 random(SEED);
    const Given given = RandomMember(random);
    const Sheet sheet(given);
    const auto points = RowsOf(sheet, "Member points");
    ASSERT_EQ(points.size(), given.places.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(points[i][0], std::to_string(i + 1));
        EXPECT_NEAR(std::stod(points[i][1]), given.places[i].x, 1e-9);
        EXPECT_EQ(points[i][3] == "free", given.places[i].restraint == "Free");
    }
    const auto pieces = RowsOf(sheet, "Sub-spans");
    ASSERT_EQ(pieces.size(), given.pieces.size());
    for (std::size_t k = 0; k < pieces.size(); ++k) {
        EXPECT_NEAR(std::stod(pieces[k][1]), given.places[k].x, 1e-9);
        EXPECT_NEAR(std::stod(pieces[k][2]), given.places[k + 1].x, 1e-9);
        EXPECT_EQ(pieces[k][3], "Free");
    }
}

// The result beside a folded part of the calculation is the largest utilisation in it.
TEST(SheetReadBack, AFoldedPartShowsItsLargestResult)
{
    const Sheet sheet(LoadedColumn(1.0));
    std::vector<double> shown;
    for (const HtmlElement& e : sheet.elements)
        if (e.name == "span" && e.attributes.count("class") && e.attributes.at("class") == "result")
            shown.push_back(std::stod(e.text));
    ASSERT_FALSE(shown.empty());
    const auto& member = StandardOf(sheet.checked);
    const auto isShown = [&](double u) {
        return std::any_of(shown.begin(), shown.end(), [u](double s) { return std::abs(s - u) < 0.51e-3; });
    };
    for (const BS5950::PositionResult& p : member.Positions())
        EXPECT_TRUE(isShown(p.Largest())) << p.x;
    for (const BS5950::SpanResult& s : member.Spans())
        EXPECT_TRUE(!s.applied || isShown(s.utilisation)) << s.utilisation;
    for (const BS5950::InteractionResult& i : member.Interactions())
        EXPECT_TRUE(isShown(i.utilisation)) << i.utilisation;
}

} // namespace Keltrix::App
