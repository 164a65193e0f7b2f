// Beam files through the program: recognised, checked as one member, shown by combinations, refused.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "text/Json.h"

namespace Keltrix::App::Trial {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string BEAM = "title = \"Floor, level 2\"\nsection = \"UB 457x191x67\"\ngrade = \"S275\"\nlength = 6.0\n"
                         "supports = \"pinned\"\ncombinations = \"bs5950\"\ndeflection = { imposed = 360 }\n"
                         "[[restraint]]\nfrom = 0\nto = 6\nholds = \"Top flange lateral\"\n"
                         "[[load]]\ncase = \"Dead\"\nkind = \"permanent\"\nudl = 12.0\n"
                         "[[load]]\ncase = \"Imposed\"\nkind = \"imposed\"\nudl = 15.0\n";

TEST(BeamCommand, ChecksABeamAsOneMember)
{
    const TestDirectory directory;
    const std::string file = directory.Write("beam.toml", BEAM);
    const RunResult table = RunKsteel("check --report table '" + file + "'");
    EXPECT_EQ(table.code, EXIT_FINE) << table.err;
    EXPECT_EQ(LinesOf(table.out).size(), 2u);
    EXPECT_THAT(table.out, HasSubstr("Combination"));
    EXPECT_THAT(table.out, HasSubstr("dead and imposed: 1.4 Dead + 1.6 Imposed"));
    const auto json = nlohmann::json::parse(RunKsteel("check --format json '" + file + "'").out);
    ASSERT_EQ(json.size(), 1u);
    EXPECT_EQ(json[0]["title"], "Floor, level 2");
    EXPECT_EQ(json[0]["governing"]["combination"], "dead and imposed: 1.4 Dead + 1.6 Imposed");
}

TEST(BeamCommand, ReadsABeamFromStandardInputAndInWorkers)
{
    const TestDirectory directory;
    const std::string file = directory.Write("beam.txt", BEAM);
    const std::string one = RunKsteel("check --report table '" + file + "'").out;
    EXPECT_EQ(LinesOf(RunKsteel("check --report table - <'" + file + "'").out).size(), 2u);
    EXPECT_EQ(RunKsteel("check --jobs 2 --report table '" + file + "'").out, one);
}

TEST(BeamCommand, ShowsEachCombinationByItself)
{
    const TestDirectory directory;
    const std::string file = directory.Write("beam.toml", BEAM);
    const auto json = nlohmann::json::parse(RunKsteel("check --combinations --format json '" + file + "'").out);
    ASSERT_GE(json.size(), 2u);
    EXPECT_THAT(json[0]["title"].get<std::string>(), HasSubstr("Floor; level 2: "));
    EXPECT_FALSE(json[0]["governing"].contains("combination"));
    double largest = 0.0;
    for (const auto& member : json)
        largest = std::max(largest, member["overall"].get<double>());
    const auto whole = nlohmann::json::parse(RunKsteel("check --format json '" + file + "'").out);
    EXPECT_EQ(whole[0]["overall"].get<double>(), largest);
    EXPECT_EQ(nlohmann::json::parse(RunKsteel("spans --format json '" + file + "'").out).size(), json.size());
    EXPECT_EQ(RunKsteel("report --combinations -o - '" + file + "'").code, EXIT_FINE);
}

TEST(BeamCommand, FailsAndRefusesByItsExitCode)
{
    const TestDirectory directory;
    EXPECT_EQ(RunKsteel("check '" +
                        directory.Write("long.toml", BEAM + "[[load]]\ncase = \"Dead\"\npoint = 300\nat = 3\n") + "'")
                  .code,
              EXIT_MEMBER_FAILS);
    const std::string bad = directory.Write("bad.toml", BEAM + "[[load]]\ncase = \"Dead\"\nudl = inf\n");
    const RunResult refused = RunKsteel("check --format jsonl '" + bad + "'");
    EXPECT_EQ(refused.code, EXIT_BAD_INPUT);
    EXPECT_THAT(refused.err, HasSubstr("bad.toml:22: error: load.udl: got inf, expected a load in kN/m"));
    EXPECT_EQ(nlohmann::json::parse(refused.out)["status"], "refused");
    EXPECT_EQ(RunKsteel("validate '" + bad + "'").code, EXIT_BAD_INPUT);
    const RunResult mixed =
        RunKsteel("check --report table '" + bad + "' '" + directory.Write("good.toml", BEAM) + "'");
    EXPECT_EQ(mixed.code, EXIT_BAD_INPUT);
    EXPECT_THAT(mixed.out, HasSubstr("good.toml"));
}

// The deflections of a beam have no place among its members: they are told, and count.
TEST(BeamCommand, DeflectionsCountWhereMembersAreShown)
{
    const TestDirectory directory;
    std::string soft = BEAM;
    soft.replace(soft.find("imposed = 360"), 13, "imposed = 3000");
    const std::string file = directory.Write("soft.toml", soft);
    for (const char* mode : {"--combinations", "--envelope"}) {
        const RunResult outcome = RunKsteel("check --report table " + std::string(mode) + " '" + file + "'");
        EXPECT_EQ(outcome.code, EXIT_MEMBER_FAILS) << mode;
        EXPECT_THAT(outcome.err, HasSubstr("warning: deflection: of the beam, in none of its members: fails")) << mode;
        EXPECT_THAT(outcome.out, Not(HasSubstr("fail"))) << mode;
    }
    EXPECT_EQ(RunKsteel("report --combinations -o - '" + file + "'").code, EXIT_MEMBER_FAILS);
    EXPECT_EQ(RunKsteel("check --jobs 2 --combinations '" + file + "'").code, EXIT_MEMBER_FAILS);
}

TEST(BeamCommand, DesignUpdatesTheSelfWeight)
{
    const TestDirectory directory;
    // 20 m under nothing but its own weight: lighter sections weigh less, and each must hold itself.
    const std::string text =
        "section = \"UB 1016x305x494\"\ngrade = \"S275\"\nlength = 20\ncombinations = \"bs5950\"\n"
        "deflection = { total = 200 }\n[[restraint]]\nfrom = 0\nto = 20\nholds = \"Top flange lateral\"\n"
        "[[load]]\ncase = \"Dead\"\nkind = \"permanent\"\nudl = 0.1\n";
    const auto json = nlohmann::json::parse(
        RunKsteel("design --family UB --count 1 --format json '" + directory.Write("beam.toml", text) + "'").out);
    ASSERT_EQ(json.size(), 1u);
    const std::string chosen = json[0]["chosen"];
    // What design chose, checked by itself, has the same utilisation.
    std::string again = text;
    again.replace(again.find("UB 1016x305x494"), 15, chosen);
    const auto check =
        nlohmann::json::parse(RunKsteel("check --format json '" + directory.Write("chosen.toml", again) + "'").out);
    EXPECT_EQ(check[0]["overall"], json[0]["passing"][0]["overall"]);
    EXPECT_EQ(check[0]["status"], "pass");
}

// What is said is said of the section that is offered: its weight, and what its check found.
TEST(BeamCommand, DesignWarnsOfTheSectionThatIsOffered)
{
    const TestDirectory directory;
    std::string text = BEAM;
    text.replace(text.find("UB 457x191x67"), 13, "UB 610x229x125");
    const std::string design = "design --family UB --count 1 '" + directory.Write("beam.toml", text) + "'";
    const auto json = nlohmann::json::parse(RunKsteel(design + " --format json").out)[0];
    const std::string chosen = json["chosen"];
    ASSERT_NE(chosen, "UB 610x229x125");
    text.replace(text.find("UB 610x229x125"), 14, chosen);
    const std::string check = RunKsteel("check --format json '" + directory.Write("beam.toml", text) + "'").out;
    EXPECT_EQ(json["warnings"], nlohmann::json::parse(check)[0]["warnings"]);
    EXPECT_THAT(json["warnings"].dump(), Not(HasSubstr("125 kg/m")));
    EXPECT_EQ(json["order"], "mass");
}

// Springs leave the buckling open whatever the section: the rows say so.
TEST(BeamCommand, DesignNamesTheRuleThatIsOpen)
{
    const TestDirectory directory;
    std::string text = BEAM;
    text.replace(text.find("supports = \"pinned\""), 19,
                 "supports = [{ at = 0, holds = \"Pinned\" }, { at = 6, holds = \"Pinned\", lateral = 200 }]");
    const RunResult design = RunKsteel("design --family UB '" + directory.Write("beam.toml", text) + "'");
    EXPECT_EQ(design.code, EXIT_MEMBER_FAILS);
    EXPECT_THAT(design.out, HasSubstr("not evaluated: buckling of a member with springs or hinges (none): the checks "
                                      "take springs as rigid"));
}

TEST(BeamCommand, FamiliesMayHaveBlanksBetweenThem)
{
    const std::string list = "examples/floor_beam.toml --count 1";
    const RunResult plain = RunKsteel("design --family UB,UC " + list);
    EXPECT_EQ(plain.code, EXIT_FINE);
    EXPECT_EQ(RunKsteel("design --family 'ub, uc ' " + list).out, plain.out);
}

// A pass by nothing would be a load forgotten.
TEST(BeamCommand, ABeamWithoutALoadDoesNotPass)
{
    const TestDirectory directory;
    std::string text = "self-weight = false\n" + BEAM;
    for (const char* load : {"udl = 12.0", "udl = 15.0"})
        text.replace(text.find(load), 10, "udl = 0.00");
    const std::string file = directory.Write("beam.toml", text);
    const RunResult result = RunKsteel("check --report table '" + file + "'");
    EXPECT_EQ(result.code, EXIT_MEMBER_FAILS) << result;
    EXPECT_THAT(result.out, HasSubstr("not checked"));
    const auto json = nlohmann::json::parse(RunKsteel("check --format json '" + file + "'").out)[0];
    EXPECT_EQ(json["status"], "not checked");
    EXPECT_THAT(json["checks"].dump(), HasSubstr("no load acts on the beam in any combination"));
}

// A tee has no flange at half its depth: it is not passed over in silence.
TEST(BeamCommand, DesignSaysWhySectionsAreNotChecked)
{
    const TestDirectory directory;
    std::string text = BEAM + "height = \"top flange\"\n";
    const std::string file = directory.Write("beam.toml", text);
    const RunResult tees = RunKsteel("design --family T '" + file + "'");
    EXPECT_EQ(tees.code, EXIT_MEMBER_FAILS) << tees.err;
    EXPECT_THAT(tees.out, HasSubstr("not checked: T 127x102x11 and "));
    EXPECT_THAT(tees.out, HasSubstr("height from a flange: tees, angles and sections with flanges of two sizes"));
    EXPECT_THAT(tees.out, Not(HasSubstr("nan")));
    const auto json =
        nlohmann::json::parse(RunKsteel("design --family T,UB --count 1 --format json '" + file + "'").out);
    EXPECT_FALSE(json[0]["not_checked"].empty());
    EXPECT_EQ(json[0]["passing"].size(), 1u);
    for (const auto& section : json[0]["not_checked"])
        EXPECT_EQ(section["section"].get<std::string>().substr(0, 2), "T ");
    text.replace(text.find("UB 457x191x67"), 13, "T 229x191x34");
    EXPECT_THAT(RunKsteel("check '" + directory.Write("tee.toml", text) + "'").err,
                HasSubstr("load: height from a flange"));
    EXPECT_EQ(RunKsteel("design --envelope --family UB '" + file + "'").code, EXIT_BAD_USAGE);
}

// The self weight is that of each section, also by depth.
TEST(BeamCommand, DesignByDepthHasTheWeightOfEachSection)
{
    const TestDirectory directory;
    const auto json =
        nlohmann::json::parse(RunKsteel("design --family UB,UC --by depth --max-depth 300 --count 2 --format json '" +
                                        directory.Write("beam.toml", BEAM) + "'")
                                  .out);
    ASSERT_EQ(json[0]["passing"].size(), 2u);
    for (const auto& section : json[0]["passing"]) {
        std::string again = BEAM;
        again.replace(again.find("UB 457x191x67"), 13, section["section"]);
        const auto check =
            nlohmann::json::parse(RunKsteel("check --format json '" + directory.Write("again.toml", again) + "'").out);
        EXPECT_EQ(check[0]["overall"], section["overall"]);
        EXPECT_EQ(check[0]["status"], "pass");
    }
}

TEST(BeamCommand, AMemberFileIsStillOne)
{
    const TestDirectory directory;
    const RunResult outcome = RunKsteel("check --report table '" + directory.Write("member.csv", GOOD_MEMBER) + "'");
    EXPECT_THAT(outcome.out, Not(HasSubstr("Combination")));
    EXPECT_THAT(RunKsteel("check '" + directory.Write("member.toml", GOOD_MEMBER) + "'").err,
                HasSubstr("member.toml:1: error: this is a member file"));
}

} // namespace
} // namespace Keltrix::App::Trial
