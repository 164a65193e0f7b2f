// check, design and capacity. Figures of the code itself are the module's tests; here is what becomes of them.

#include <cmath>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "AppSupport.h"
#include "commands/Bs5950Commands.h"

namespace Keltrix::App {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Trial::GOOD_MEMBER;
using Trial::RunKsteel;
using Trial::TestDirectory;

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    EXPECT_NE(text.find(from), std::string::npos) << from;
    return text.replace(text.find(from), from.size(), to);
}

// Forces and moments a hundred times as large: 1500 kNm, far beyond any beam of this depth.
const std::string OVERLOADED = [] {
    std::string text = Replaced(GOOD_MEMBER, "0,0,0,0,-15000,0,Free", "0,0,0,0,-1500000,0,Free");
    return Replaced(text, "0,-15000,0,0,0,0,Free", "0,-1500000,0,0,0,0,Free");
}();

TEST(CheckCommand, APassingMemberIsZeroAndAFailingOneIsOne)
{
    const TestDirectory directory;
    const auto good = RunKsteel("check '" + directory.Write("a.csv", GOOD_MEMBER) + "'");
    EXPECT_EQ(good.code, 0) << good;
    EXPECT_THAT(good.out, StartsWith("Floor beam\nUB 457x191x67 in S275: pass, utilisation 0."));
    const auto bad = RunKsteel("check '" + directory.Write("b.csv", OVERLOADED) + "'");
    EXPECT_EQ(bad.code, 1) << bad;
    EXPECT_THAT(bad.out, StartsWith("Floor beam\nUB 457x191x67 in S275: fail, utilisation 4."));
}

TEST(CheckCommand, BadInputOutweighsAFailure)
{
    const TestDirectory directory;
    EXPECT_EQ(RunKsteel("check '" + directory.Write("b.csv", OVERLOADED) + "' missing.csv").code, 2);
}

TEST(CheckCommand, AGradeThatTheCodeDoesNotKnowIsBadInput)
{
    const TestDirectory directory;
    const auto result = RunKsteel("check '" + directory.Write("a.csv", Replaced(GOOD_MEMBER, "S275", "S999")) + "'");
    EXPECT_EQ(result.code, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("GRADE: got \"S999\", expected S275, S355, S460 or User_defined"));
}

TEST(CheckCommand, ASectionThatTheCodeDoesNotCoverIsBadInput)
{
    const TestDirectory directory;
    const auto result =
        RunKsteel("check '" + directory.Write("a.csv", Replaced(GOOD_MEMBER, "UB 457x191x67", "XX 1")) + "'");
    EXPECT_EQ(result.code, 2) << result;
    EXPECT_EQ(result.out, "");
}

TEST(CheckCommand, ReportsAreOfFourKinds)
{
    EXPECT_THAT(RunKsteel("check --report verbose examples/floor_beam.csv").out, HasSubstr("Checks along member:"));
    EXPECT_THAT(RunKsteel("check --report brief examples/floor_beam.csv").out, HasSubstr("Checks critical sub_spans:"));
    const auto summary = RunKsteel("check --report summary examples/floor_beam.csv");
    EXPECT_THAT(summary.out, HasSubstr("UtilOverAll"));
    EXPECT_THAT(summary.out, ::testing::Not(HasSubstr("Input Data")));
}

TEST(CheckCommand, TheTableListsTheWorstFirst)
{
    const TestDirectory directory;
    const std::string file = directory.Write("two.csv", GOOD_MEMBER + Replaced(OVERLOADED, "Floor beam", "Overloaded"));
    const auto table = RunKsteel("check --report table '" + file + "'");
    EXPECT_EQ(table.code, 1) << table;
    EXPECT_LT(table.out.find("Overloaded"), table.out.find("Floor beam"));
    EXPECT_THAT(table.out, HasSubstr("two.csv:19"));
}

TEST(CheckCommand, TheJsonHasEveryMemberOfTheReport)
{
    const auto result = RunKsteel("check --format json examples/floor_beam.csv");
    EXPECT_EQ(result.code, 0) << result;
    const json list = json::parse(result.out);
    ASSERT_EQ(list.size(), 1u);
    const json& member = list[0];
    std::set<std::string> names;
    for (const auto& [name, value] : member.items())
        names.insert(name);
    EXPECT_THAT(names, ElementsAre("assumptions", "checks", "class", "design_strength", "effective_lengths", "file",
                                   "flags", "governing", "grade", "line", "overall", "resistances", "section", "status",
                                   "title", "utilisation"));
    EXPECT_EQ(member["status"], "pass");
    EXPECT_EQ(member["class"], 1);
    EXPECT_EQ(member["design_strength"], 275e6);
    EXPECT_EQ(member["overall"], member["governing"]["utilisation"]);
    EXPECT_EQ(member["resistances"]["Mcx"], member["governing"]["resistance"]);
    // The largest of all local and buckling utilisations is the overall one.
    double largest = member["utilisation"]["buckling"]["combined"];
    for (const json& position : member["utilisation"]["local"])
        largest = std::max(largest, position["combined"].get<double>());
    EXPECT_EQ(member["overall"], largest);
    int governing = 0;
    for (const json& check : member["checks"]) {
        governing += check["governing"].get<bool>() ? 1 : 0;
        EXPECT_THAT((std::set<std::string>{"passed", "failed", "not applicable", "not evaluated"}),
                    ::testing::Contains(check["status"].get<std::string>()));
    }
    EXPECT_EQ(governing, 1);
    std::set<std::string> symbols;
    for (const json& span : member["resistances"]["spans"])
        for (const auto& [name, value] : span.items())
            symbols.insert(name);
    EXPECT_THAT(symbols, ElementsAre("Mb", "Pcx", "Pcy", "end", "start"));
}

TEST(CheckCommand, AnEnvelopeIsOneMemberWithTheWorstOfItsCases)
{
    const TestDirectory directory;
    const std::string a = directory.Write("a.csv", GOOD_MEMBER);
    const std::string b = directory.Write("b.csv", OVERLOADED);
    for (const std::string& files : {a + "' '" + b, b + "' '" + a}) {
        const auto result = RunKsteel("check --envelope --format json '" + files + "'");
        EXPECT_EQ(result.code, 1) << result;
        const json list = json::parse(result.out);
        ASSERT_EQ(list.size(), 1u);
        EXPECT_EQ(list[0]["status"], "fail");
        EXPECT_EQ(list[0]["file"], b) << "the case that governs";
    }
    const std::string other = directory.Write("c.csv", Replaced(GOOD_MEMBER, "UB 457x191x67", "UB 406x178x74"));
    const auto mixed = RunKsteel("check --envelope '" + a + "' '" + other + "'");
    EXPECT_EQ(mixed.code, 2) << mixed;
    EXPECT_THAT(mixed.err, HasSubstr("is no load case of the member in"));
    EXPECT_EQ(RunKsteel("check --envelope '" + a + "' missing.csv").code, 2);
}

TEST(DesignCommand, TheLightestSectionThatPassesIsFound)
{
    const auto result = RunKsteel("design --family UB --format json examples/floor_beam.csv");
    EXPECT_EQ(result.code, 0) << result;
    const json member = json::parse(result.out)[0];
    EXPECT_EQ(member["chosen"], member["passing"][0]["section"]);
    EXPECT_EQ(member["passing"].size(), 6u);
    const double mass = member["passing"][0]["mass_per_metre"];
    for (const json& section : member["passing"]) {
        EXPECT_LT(section["overall"].get<double>(), 1.0);
        EXPECT_GE(section["mass_per_metre"].get<double>(), mass);
    }
    for (const json& section : member["lighter_failing"]) {
        EXPECT_GE(section["overall"].get<double>(), 1.0);
        EXPECT_LE(section["mass_per_metre"].get<double>(), mass);
    }
}

TEST(DesignCommand, EachLighterSectionFailsByItself)
{
    // The choice against single checks of the same member with every lighter section of the family.
    const json chosen = json::parse(RunKsteel("design --family UB --format json examples/floor_beam.csv").out)[0];
    const json all = json::parse(RunKsteel("sections --family UB --sort mass --format json").out);
    const std::string text = Trial::ReadWhole(KSTEEL_SOURCE_DIR "/examples/floor_beam.csv");
    const TestDirectory directory;
    std::string members;
    int lighter = 0;
    for (const json& section : all) {
        if (section["name"] == chosen["chosen"]) break;
        members += Replaced(text, "UB 457x191x67", section["name"]);
        ++lighter;
    }
    ASSERT_GT(lighter, 5);
    const json checks = json::parse(RunKsteel("check --format json '" + directory.Write("all.csv", members) + "'").out);
    ASSERT_EQ(checks.size(), static_cast<std::size_t>(lighter));
    for (const json& check : checks)
        EXPECT_EQ(check["status"], "fail") << check["section"];
}

TEST(DesignCommand, WhereNothingPassesTheCodeIsOne)
{
    const TestDirectory directory;
    std::string text = Replaced(OVERLOADED, "-1500000", "-150000000");
    const auto result = RunKsteel("design --family PFC '" + directory.Write("a.csv", text) + "'");
    EXPECT_EQ(result.code, 1) << result;
    EXPECT_THAT(result.out, HasSubstr("no section of the family passes"));
    EXPECT_EQ(RunKsteel("design --family XYZ examples/floor_beam.csv").code, 2);
    EXPECT_EQ(RunKsteel("design examples/floor_beam.csv").code, 3);
    EXPECT_EQ(RunKsteel("design --family UB --count 0 examples/floor_beam.csv").code, 3);
}

TEST(CapacityCommand, TheTableHasARowForEachLength)
{
    const auto result = RunKsteel("capacity 'UB 457x191x67' --grade S275 --LE 2:4 --format json");
    EXPECT_EQ(result.code, 0) << result;
    const json list = json::parse(result.out);
    ASSERT_EQ(list.size(), 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(list[i]["LE"], 2.0 + i);
        // 275 N/mm² on 1471 cm³, below 1.2 py Zx
        EXPECT_NEAR(list[i]["Mcx"].get<double>(), 275e6 * 1471e-6, 200.0);
        EXPECT_LE(list[i]["Mb"], list[i]["Mcx"]);
        EXPECT_EQ(list[i]["Mrx"].size(), 11u);
    }
    EXPECT_GT(list[0]["Mb"], list[2]["Mb"]);
    EXPECT_GT(list[0]["Pcy"], list[2]["Pcy"]);
    const auto table = RunKsteel("capacity 'UB 457x191x67' --LE 2:4");
    EXPECT_THAT(table.out, HasSubstr("F/Pz   0.0   0.1"));
    EXPECT_THAT(table.out, HasSubstr("LE   Pcx"));
}

TEST(CapacityCommand, LengthsAreARangeOrAList)
{
    EXPECT_THAT(EffectiveLengthList("1:4"), ElementsAre(1.0, 2.0, 3.0, 4.0));
    EXPECT_THAT(EffectiveLengthList("1:2:0.5"), ElementsAre(1.0, 1.5, 2.0));
    EXPECT_EQ(EffectiveLengthList("1:2:0.1").size(), 11u); // decimal steps reach the end
    EXPECT_THAT(EffectiveLengthList("3"), ElementsAre(3.0));
    EXPECT_THAT(EffectiveLengthList("2,4.5,6"), ElementsAre(2.0, 4.5, 6.0));
    for (const char* text : {"", "0", "-1", "x", "1:", "4:1", "1:2:3:4", "1,,2", "1:1e9", "nan", "inf", "1 2", "1:2:0"})
        EXPECT_THROW(EffectiveLengthList(text), BadUsage) << text;
}

TEST(CapacityCommand, BadNamesAndGradesAreBadInput)
{
    EXPECT_EQ(RunKsteel("capacity 'UB 1x1x1'").code, 2);
    EXPECT_EQ(RunKsteel("capacity 'UB 457x191x67' --grade S999").code, 2);
    EXPECT_EQ(RunKsteel("capacity 'UB 457x191x67' --LE x").code, 3);
}

} // namespace
} // namespace Keltrix::App
