// The part of a calculation sheet about loads: it is there for beams, complete, and says what ksteel loads says.

#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HtmlReader.h"
#include "app/AppSupport.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

std::string SheetOf(const std::string& arguments)
{
    const auto result = Trial::RunKsteel("report " + arguments + " -o -");
    EXPECT_LE(result.code, 1) << result.err;
    const Trial::HtmlReader reader(result.out);
    EXPECT_EQ(reader.Error(), "");
    std::set<std::string> ids;
    for (const Trial::HtmlElement& element : reader.Elements()) {
        const auto id = element.attributes.find("id");
        if (id == element.attributes.end()) continue;
        EXPECT_TRUE(ids.insert(id->second).second) << "twice: " << id->second;
    }
    return result.out;
}

// The cells of the rows of tables, text alone.
std::set<std::string> CellsOf(const std::string& html)
{
    std::set<std::string> cells;
    const Trial::HtmlReader reader(html);
    for (const Trial::HtmlElement* cell : reader.Named("td"))
        cells.insert(cell->text);
    return cells;
}

} // namespace

TEST(LoadSheet, HasTheFiguresOfTheBeam)
{
    const std::string file = "tests/report/two_span.toml";
    const std::string sheet = SheetOf(file);
    EXPECT_LT(sheet.find("id=\"m1-beam\""), sheet.find("id=\"m1-member\"")) << "the first part";
    const Json beam = Json::parse(Trial::RunKsteel("loads --format json " + file).out).at(0);
    const std::set<std::string> cells = CellsOf(sheet);
    const auto expectCell = [&](double value, const std::string& unit) {
        EXPECT_EQ(cells.count(Rounded(value / 1e3, 5) + unit), 1U) << value;
    };
    for (const Json& support : beam.at("reactions")) {
        expectCell(support.at("ultimate").at("vertical").at("greatest").at("value").get<double>(), " kN");
        for (const Json& one : support.at("cases"))
            expectCell(one.at("vertical").get<double>(), "");
    }
    for (const Json& span : beam.at("envelopes").at(0).at("spans"))
        expectCell(span.at("least").at("value").get<double>(), " kNm");
    for (const Json& check : beam.at("deflections"))
        EXPECT_EQ(cells.count(Rounded(check.at("deflection").get<double>() * 1e3, 5)), 1U);
    // More than twenty combinations: those that govern nothing are counted.
    std::set<int> governing;
    const std::function<void(const Json&)> collect = [&](const Json& json) {
        if (json.is_object() && json.contains("combination") && json.at("combination").is_number())
            governing.insert(json.at("combination").get<int>());
        if (json.is_structured())
            for (const Json& part : json)
                collect(part);
    };
    for (const char* part : {"reactions", "envelopes", "deflections"})
        collect(beam.at(part));
    const std::size_t left = beam.at("combinations").size() - governing.size();
    EXPECT_THAT(sheet, HasSubstr(std::to_string(left) + " more combinations govern nothing below."));
}

TEST(LoadSheet, TheShortFormLeavesTablesOut)
{
    const std::string brief = SheetOf("--brief tests/report/two_span.toml");
    EXPECT_THAT(brief, HasSubstr("id=\"m1-beam-loads1-t\""));
    EXPECT_THAT(brief, HasSubstr("Reactions by case"));
    EXPECT_THAT(brief, Not(HasSubstr(">Envelopes over")));
    EXPECT_THAT(brief, Not(HasSubstr(">Combinations<")));
}

TEST(LoadSheet, MemberFilesHaveNone) { EXPECT_THAT(SheetOf("examples/floor_beam.csv"), Not(HasSubstr("m1-beam"))); }

} // namespace Keltrix::App
