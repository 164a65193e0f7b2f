// ksteel loads and ksteel new as their users meet them.

#include <cmath>
#include <filesystem>
#include <map>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "text/Json.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

// 9 m, dead 12 kN/m without self weight, imposed 45 kN at 3 m.
const std::string FLOOR = "title = \"Floor beam\"\nsection = \"UB 457x191x67\"\ngrade = \"S275\"\nspans = [9]\n"
                          "supports = \"Pinned\"\ncombinations = \"bs5950\"\nself-weight = false\n"
                          "deflection = { imposed = 360 }\n"
                          "[[restraint]]\nfrom = 0\nto = 9\nholds = \"Top flange lateral\"\n"
                          "[[load]]\ncase = \"dead\"\nudl = 12\n"
                          "[[load]]\ncase = \"imposed\"\npoint = 45\nat = 3\n";

std::set<std::string> NamesIn(const std::string& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

const std::set<std::string> MEMBER_NAMES = {"01-dead-and-imposed-1.4-dead-1.6-imposed.csv",
                                            "02-dead-and-imposed-1.4-dead.csv", "03-dead-and-imposed-1-dead.csv",
                                            "04-dead-and-imposed-1-dead-1.6-imposed.csv"};

} // namespace

// 1.4 x 54 + 1.6 x 30 = 123.6 kN and 1.4 x 54 + 1.6 x 15 = 99.6 kN; 295.243 kNm at 3 + 1.2/16.8 = 3.0714 m.
TEST(LoadsCommand, PrintsReactionsAndEnvelopes)
{
    const Trial::TestDirectory directory;
    const std::string file = directory.Write("floor.toml", FLOOR);
    const auto table = Trial::RunKsteel("loads '" + file + "'");
    EXPECT_EQ(table.code, 0) << table.err;
    for (const char* text : {"Floor beam\nUB 457x191x67 in S275, 9 m\n", "123.6 kN", "99.6 kN", "295.24 kNm  3.0714 m"})
        EXPECT_THAT(table.out, HasSubstr(text));
    EXPECT_EQ(Trial::RunShell("ksteel loads - < '" + file + "'").out, table.out);

    const auto json = Trial::RunKsteel("loads --format json '" + file + "'");
    ASSERT_EQ(json.code, 0) << json.err;
    const Json beam = Json::parse(json.out).at(0);
    EXPECT_EQ(beam.at("file"), file);
    EXPECT_NEAR(beam.at("reactions").at(0).at("ultimate").at("vertical").at("greatest").at("value").get<double>(),
                123.6e3, 1e-6);
    EXPECT_EQ(beam.at("deflections").at(0).at("status"), "passed");
}

TEST(LoadsCommand, DrawsOneBeam)
{
    const Trial::TestDirectory directory;
    const std::string file = directory.Write("floor.toml", FLOOR);
    const auto drawn = Trial::RunKsteel("loads --svg - '" + file + "'");
    EXPECT_EQ(drawn.code, 0) << drawn.err;
    EXPECT_THAT(drawn.out, StartsWith("<?xml"));
    EXPECT_THAT(drawn.out, HasSubstr(">295.24 kNm at 3.0714 m (1)<"));
    const auto two = Trial::RunKsteel("loads --svg '" + directory.Path("a.svg") + "' '" + file + "' '" + file + "'");
    EXPECT_EQ(two.code, 3);
    EXPECT_THAT(two.err, HasSubstr("--svg draws one beam"));
    EXPECT_FALSE(std::filesystem::exists(directory.Path("a.svg")));
}

TEST(LoadsCommand, MemberFilesSayWhatTheBeamSays)
{
    const Trial::TestDirectory directory;
    const std::string file = directory.Write("floor.toml", FLOOR);
    const std::string folder = directory.Path("new folder/members");
    const auto written = Trial::RunKsteel("loads '" + file + "' -o '" + folder + "'");
    ASSERT_EQ(written.code, 0) << written.err;
    EXPECT_EQ(NamesIn(folder), MEMBER_NAMES);
    const auto validated = Trial::RunShell("ksteel validate --strict '" + folder + "'/*.csv");
    EXPECT_EQ(validated.code, 0) << validated;
    // Of the members the worst has the utilisation of the beam's strength checks.
    const Json beam = Json::parse(Trial::RunKsteel("check --format json '" + file + "'").out).at(0);
    const Json members =
        Json::parse(Trial::RunShell("ksteel check --format json --report summary '" + folder + "'/*.csv").out);
    ASSERT_EQ(members.size(), 4U);
    double worst = 0.0;
    for (const Json& member : members)
        worst = std::max(worst, member.at("overall").get<double>());
    EXPECT_DOUBLE_EQ(worst, beam.at("overall").get<double>());
}

// Rule by rule and place by place: the beam has the largest utilisation of its member files, and no rule that none of them has.
TEST(LoadsCommand, ExamplesAreTheEnvelopesOfTheirMemberFiles)
{
    using Places = std::map<std::string, double>;
    const auto add = [](const Json& member, Places& worst) {
        for (const Json& entry : member.at("checks")) {
            // Deflections are of the beam alone; a rule that applies in one combination is not listed for those in which it does not.
            if (entry.at("rule").get<std::string>().rfind("deflection", 0) == 0) continue;
            // Figures beside the rules are those of the governing combination.
            if (entry.at("status") == "not applicable" || entry.at("status") == "information") continue;
            // A rule of cross-sections stands where it is worst.
            const bool isOfPosition = entry.at("start") == entry.at("end");
            const std::string place = isOfPosition ? "" : entry.at("start").dump() + entry.at("end").dump();
            const std::string key = entry.at("rule").dump() + entry.at("clause").dump() + place;
            const Json& utilisation = entry.at("utilisation");
            const double value = utilisation.is_null() ? INFINITY : utilisation.get<double>();
            const auto [known, isNew] = worst.emplace(key, value);
            if (!isNew) known->second = std::max(known->second, value);
        }
    };
    int files = 0;
    for (const auto& example : std::filesystem::directory_iterator(KSTEEL_SOURCE_DIR "/examples")) {
        if (example.path().extension() != ".toml") continue;
        SCOPED_TRACE(example.path().string());
        ++files;
        const Trial::TestDirectory directory;
        const std::string folder = directory.Path("members");
        ASSERT_EQ(Trial::RunKsteel("loads '" + example.path().string() + "' -o '" + folder + "'").code, 0);
        Places ofBeam;
        Places ofMembers;
        add(Json::parse(Trial::RunKsteel("check --format json '" + example.path().string() + "'").out).at(0), ofBeam);
        for (const Json& member : Json::parse(Trial::RunShell("ksteel check --format json '" + folder + "'/*.csv").out))
            add(member, ofMembers);
        EXPECT_EQ(ofBeam, ofMembers);
    }
    EXPECT_GE(files, 6);
}

TEST(LoadsCommand, FilesThatAreThereStay)
{
    const Trial::TestDirectory directory;
    const std::string file = directory.Write("floor.toml", FLOOR);
    const std::string kept = directory.Write("03-dead-and-imposed-1-dead.csv", "mine\n");
    const std::string folder = std::filesystem::path(kept).parent_path().string();
    const auto refused = Trial::RunKsteel("loads '" + file + "' -o '" + folder + "'");
    EXPECT_EQ(refused.code, 3);
    EXPECT_THAT(refused.err, HasSubstr("03-dead-and-imposed-1-dead.csv is there already; --force replaces it"));
    EXPECT_EQ(Trial::ReadWhole(kept), "mine\n");
    EXPECT_EQ(NamesIn(folder), (std::set<std::string>{"03-dead-and-imposed-1-dead.csv", "floor.toml"}))
        << "none of the others was written";
    EXPECT_EQ(Trial::RunKsteel("loads '" + file + "' --force -o '" + folder + "'").code, 0);
    EXPECT_THAT(Trial::ReadWhole(kept), StartsWith("TITLE,Floor beam"));
    EXPECT_EQ(Trial::ReadWhole(file), FLOOR);
    // The input is never written over, whatever it is called.
    const std::string input = directory.Write("02-dead-and-imposed-1.4-dead.csv", FLOOR);
    const auto itself = Trial::RunKsteel("loads '" + input + "' --force -o '" + folder + "'");
    EXPECT_EQ(itself.code, 3);
    EXPECT_EQ(Trial::ReadWhole(input), FLOOR);
    // A file is no folder.
    const auto none = Trial::RunKsteel("loads '" + file + "' -o '" + file + "'");
    EXPECT_EQ(none.code, 2);
    EXPECT_THAT(none.err, HasSubstr("no folder"));
}

TEST(LoadsCommand, WhatCannotBeReadIsBadInput)
{
    const Trial::TestDirectory directory;
    const std::string member = directory.Write("member.csv", Trial::GOOD_MEMBER);
    const auto refused = Trial::RunKsteel("loads '" + member + "'");
    EXPECT_EQ(refused.code, 2);
    EXPECT_THAT(refused.err, HasSubstr("a member file, and loads are those of beam files"));
    const std::string loose = directory.Write("loose.toml", FLOOR + "hinges = [4]\n");
    EXPECT_EQ(Trial::RunKsteel("loads '" + loose + "' -o '" + directory.Path("out") + "'").code, 2);
    EXPECT_FALSE(std::filesystem::exists(directory.Path("out")));
    EXPECT_EQ(Trial::RunKsteel("loads none.toml").code, 2);
    EXPECT_EQ(Trial::RunKsteel("loads").code, 3);
}

// Names of cases that file systems would take for something else.
TEST(LoadsCommand, FileNamesAreSafe)
{
    const Trial::TestDirectory directory;
    std::string text = FLOOR;
    const auto replace = [&](const std::string& from, const std::string& to) {
        text.replace(text.find(from), from.size(), to);
    };
    replace("case = \"dead\"", "case = \"../../Decke \\\"Süd\\\" $(x)\"\nkind = \"permanent\"");
    replace("case = \"imposed\"", "case = \"" + std::string(150, 'n') + "\"\nkind = \"imposed\"");
    const std::string file = directory.Write("floor.toml", text);
    const std::string folder = directory.Path("out");
    const auto written = Trial::RunKsteel("loads '" + file + "' -o '" + folder + "'");
    ASSERT_EQ(written.code, 0) << written.err;
    const std::set<std::string> names = NamesIn(folder);
    EXPECT_EQ(names.size(), 4U);
    for (const std::string& name : names) {
        EXPECT_LE(name.size(), 100U) << name;
        EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-"),
                  std::string::npos)
            << name;
        EXPECT_EQ(name.find(".."), std::string::npos) << name;
    }
    EXPECT_EQ(Trial::RunShell("ksteel validate --strict '" + folder + "'/*.csv").code, 0);
}

TEST(NewCommand, WritesABeamThatIsReadBack)
{
    const Trial::TestDirectory directory;
    const std::string file = directory.Path("b12.toml");
    const auto made = Trial::RunKsteel("new beam --title B12 --span 9 --span 8 --section 'UB 533x210x82' --grade S355 "
                                       "--udl dead=12 --point imposed=45@3 --point imposed=20@12 "
                                       "--restraint top@0:6 --restraint bottom@9 -o '" +
                                       file + "'");
    ASSERT_EQ(made.code, 0) << made.err;
    EXPECT_EQ(made.out, "");
    EXPECT_THAT(Trial::ReadWhole(file), HasSubstr("spans = [9, 8]"));
    const auto validated = Trial::RunKsteel("validate --strict '" + file + "'");
    EXPECT_EQ(validated.code, 0) << validated;
    const auto loads = Trial::RunKsteel("loads --strict --format json '" + file + "'");
    ASSERT_EQ(loads.code, 0) << loads.err;
    const Json beam = Json::parse(loads.out).at(0);
    EXPECT_EQ(beam.at("title"), "B12");
    EXPECT_EQ(beam.at("grade"), "S355");
    EXPECT_EQ(beam.at("spans").size(), 2U);
    EXPECT_EQ(beam.at("cases").at(1).at("down"), 65e3);
    EXPECT_LE(Trial::RunKsteel("check '" + file + "'").code, 1);

    const auto again = Trial::RunKsteel("new beam -o '" + file + "'");
    EXPECT_EQ(again.code, 3);
    EXPECT_THAT(again.err, HasSubstr("is there already; --force replaces it"));
    EXPECT_THAT(Trial::ReadWhole(file), HasSubstr("spans = [9, 8]")) << "untouched";
    EXPECT_EQ(Trial::RunKsteel("new beam --force -o '" + file + "'").code, 0);
    EXPECT_THAT(Trial::ReadWhole(file), HasSubstr("spans = [9]"));
}

// 20 kN/m over 6 m: 60 kN and 90 kNm, 1.4 times that and no self weight less than 0.1 of it.
TEST(NewCommand, WritesAMemberWhoseForcesAreThoseOfTheLoads)
{
    const auto made = Trial::RunKsteel("new member --span 6 --udl dead=20 --restraint top@3");
    ASSERT_EQ(made.code, 0) << made.err;
    const double w = 1.4 * (20.0 + 67.1 * 9.81 / 1e3);
    std::istringstream lines(made.out);
    double moment = 0.0;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("SUBSPAN,1,")) continue;
        std::vector<std::string> fields;
        std::istringstream stream(line);
        for (std::string field; std::getline(stream, field, ',');)
            fields.push_back(field);
        EXPECT_NEAR(std::stod(fields.at(4)), -w * 3e3, 1e-3);
        moment = std::stod(fields.at(12));
    }
    EXPECT_NEAR(moment, -w * 36.0 / 8.0 * 1e3, 1e-3);
    EXPECT_THAT(made.out, HasSubstr("HEADINGS,Signs: tension above zero"));
    const auto validated = Trial::RunShell("ksteel new member --span 6 --udl dead=20 | ksteel validate --strict -");
    EXPECT_EQ(validated.code, 0) << validated;
    EXPECT_THAT(validated.out, HasSubstr("no errors, no warnings"));
}

TEST(NewCommand, WhatMeansNothingIsRefused)
{
    const auto refusal = [](const std::string& arguments, int code) {
        const auto result = Trial::RunKsteel("new " + arguments);
        EXPECT_EQ(result.code, code) << arguments << result;
        EXPECT_EQ(result.out, "") << arguments;
        return result.err;
    };
    EXPECT_THAT(refusal("beam --udl 12", 3), HasSubstr("--udl: got \"12\", expected a case"));
    EXPECT_THAT(refusal("beam --point imposed=45@12", 3), HasSubstr("beyond the end of the beam, which is 9 m long"));
    EXPECT_THAT(refusal("beam --restraint left@3", 3), HasSubstr("expected top, bottom or both"));
    EXPECT_THAT(refusal("beam --span 0", 3), HasSubstr("--span: got 0"));
    EXPECT_THAT(refusal("beam --combinations bs449", 3), HasSubstr("--combinations"));
    EXPECT_THAT(refusal("bridge", 3), HasSubstr("KIND"));
    EXPECT_THAT(refusal("beam --section 'UB 457x191x68'", 2), HasSubstr("UB 457x191x67"));
    EXPECT_THAT(refusal("beam --grade S999", 2), HasSubstr("S999"));
}

} // namespace Keltrix::App
