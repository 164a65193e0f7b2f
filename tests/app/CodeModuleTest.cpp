// Design codes from shared libraries: the sample that the documents go through, and files that are none.

#include <cmath>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "text/Json.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using Trial::RunKsteel;
using Trial::TestDirectory;

const std::string WITH_TIE = "--module '" KSTEEL_TIE_MODULE "' ";
const std::string LOADED = "ksteel: --module: design code tie, Ties by stress, from " +
                           std::filesystem::canonical(KSTEEL_TIE_MODULE).string() + "\n";

// CHS 88.9x5 of 4 m in S235 with a force and a moment at both ends.
std::string Hanger(const std::string& force, const std::string& moment = "0")
{
    std::string text = "TITLE,Hanger\n"
                       "SECTION,CHS 88.9x5,ROLLED\n"
                       "GRADE,S235\n"
                       "NET_TO_GROSS,1\n"
                       "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\n"
                       "SHEAR_LAG_FACTOR,0.7\n"
                       "EFFECTIVE_LENGTH_OVERRIDES,NO\n"
                       "HEADINGS\n"
                       "MEMBERPOINT,1,0,Pinned,0\n"
                       "MEMBERPOINT,2,4,Pinned,0\n"
                       "SUBSPAN,1,FORCE,0,0,FORCE,0,0,0,MOMENT,0,0,MOMENT,0,Free,0\n"
                       "END\n";
    const auto fill = [&](const std::string& word, const std::string& value) {
        for (std::size_t at = 0; (at = text.find(word)) != std::string::npos;)
            text.replace(at, word.size(), value);
    };
    fill("FORCE", force);
    fill("MOMENT", moment);
    return text;
}

struct Found {
    int code = 0;
    Json member;
};

Found CheckHanger(const std::string& text, const std::string& options = "")
{
    const TestDirectory directory;
    const auto result =
        RunKsteel(WITH_TIE + "check '" + directory.Write("hanger.csv", text) + "' --code tie --format json " + options);
    const Json output = Json::parse(result.out, nullptr, false);
    EXPECT_TRUE(output.is_array() && output.size() == 1) << result;
    return {result.code, output.is_array() && !output.empty() ? output[0] : Json()};
}

// A = π (88.9² - 78.9²)/4 = 1317.9 mm², A fy = 1317.9 * 235 = 309.71 kN.
TEST(CodeModule, ChecksByItsOwnRules)
{
    const Found half = CheckHanger(Hanger("154853"));
    EXPECT_EQ(half.code, 0);
    EXPECT_EQ(half.member["status"], "pass");
    EXPECT_NEAR(half.member["overall"].get<double>(), 0.5, 1e-4);
    EXPECT_EQ(half.member["governing"]["rule"], "tension");
    const Json& resistance = half.member["resistances"].at(0);
    EXPECT_EQ(resistance["symbol"], "Nt");
    EXPECT_NEAR(resistance["value"].get<double>(), 309.71e3, 10.0);
    EXPECT_EQ(half.member["design_strength"], 235e6);
    EXPECT_EQ(half.member["checks"].size(), 3u);
    const Found more = CheckHanger(Hanger("310e3"));
    EXPECT_EQ(more.code, 1);
    EXPECT_EQ(more.member["status"], "fail");
    EXPECT_GT(more.member["overall"].get<double>(), 1.0);
}

TEST(CodeModule, WhatItDoesNotEvaluateDoesNotPass)
{
    for (const std::string& text : {Hanger("-100e3"), Hanger("100e3", "5e3")}) {
        const Found found = CheckHanger(text);
        EXPECT_EQ(found.code, 1) << text;
        EXPECT_EQ(found.member["status"], "not checked") << text;
    }
}

// Bolted ends leave 90 %, a slot of 20 mm in a wall of 5 mm takes 100 of 1317.9 mm², the second annex divides by 1.1.
TEST(CodeModule, HasItsOwnOptionsAndAnnexes)
{
    const auto overall = [](const std::string& options) {
        return CheckHanger(Hanger("154853"), options).member["overall"].get<double>();
    };
    const double plain = overall("");
    EXPECT_NEAR(overall("--ends bolted"), plain / 0.9, 1e-9);
    EXPECT_EQ(overall("--ends welded"), plain);
    EXPECT_NEAR(overall("--hole 0.02"), plain * 1317.9 / 1217.9, 1e-4);
    EXPECT_EQ(overall("--annex plain"), plain);
    EXPECT_NEAR(overall("--annex Careful"), plain * 1.1, 1e-9);
    const std::string check = WITH_TIE + "check examples/tie.csv --code tie ";
    const auto annex = RunKsteel(check + "--annex uk");
    EXPECT_EQ(annex.code, 2);
    EXPECT_EQ(annex.err, LOADED + "ksteel: --annex: got \"uk\", expected plain or careful\n");
    EXPECT_EQ(RunKsteel(check + "--ends glued").err,
              LOADED + "ksteel: --ends: got \"glued\", expected welded or bolted; see ksteel --help\n");
    EXPECT_EQ(RunKsteel(check + "--simple-column").code, 3) << "an option of another code";
    EXPECT_THAT(RunKsteel(WITH_TIE + "check --code tie --help").out, HasSubstr("--ends welded|bolted"));
}

// Whose combinations a beam has is never guessed.
TEST(CodeModule, ABeamMustNameItsCombinationsWhereTheCodeNamesNone)
{
    const TestDirectory directory;
    const std::string beam = "section = \"CHS 88.9x5\"\ngrade = \"S235\"\nlength = 4\nself-weight = false\n"
                             "[[load]]\nkind = \"permanent\"\naxial = 100\nat = 4\n";
    const auto unnamed = RunKsteel(WITH_TIE + "check --code tie '" + directory.Write("tie.toml", beam) + "'");
    EXPECT_EQ(unnamed.code, 2) << unnamed;
    EXPECT_THAT(unnamed.err, HasSubstr("combinations: got nothing, expected bs5950, en1990"));
    EXPECT_THAT(unnamed.err, HasSubstr("the design code names none"));
    const auto named = RunKsteel(WITH_TIE + "check --code tie '" +
                                 directory.Write("named.toml", "combinations = \"en1990\"\n" + beam) + "'");
    EXPECT_EQ(named.code, 0) << named;
    EXPECT_EQ(RunKsteel(WITH_TIE + "new beam --code tie --span 4 --udl dead=1").code, 3);
}

TEST(CodeModule, EveryCommandTakesIt)
{
    const TestDirectory directory;
    const std::string file = directory.Write("hanger.csv", Hanger("154853")) + " --code tie";
    for (const char* report : {"brief", "verbose", "summary", "table"}) {
        const auto check = RunKsteel(WITH_TIE + "check " + file + " --report " + report);
        EXPECT_EQ(check.code, 0) << check;
        EXPECT_THAT(check.out, HasSubstr("0.500"));
    }
    for (const char* form : {"", " --brief"}) {
        const auto sheet = RunKsteel(WITH_TIE + "report -o - " + file + form);
        EXPECT_EQ(sheet.code, 0) << sheet.err;
        EXPECT_THAT(sheet.out, HasSubstr("Ties by stress, an example"));
        EXPECT_THAT(sheet.out, HasSubstr("design strength fy = 235"));
    }
    const auto design = RunKsteel(WITH_TIE + "design --family CHS " + file);
    EXPECT_EQ(design.code, 0) << design;
    EXPECT_THAT(design.out, HasSubstr("is the lightest section that passes"));
    const auto capacity = RunKsteel(WITH_TIE + "capacity 'CHS 88.9x5' --code tie");
    EXPECT_EQ(capacity.code, 0) << capacity;
    EXPECT_THAT(capacity.out, HasSubstr("309.7"));
    EXPECT_THAT(capacity.out, HasSubstr("S235"));
    EXPECT_EQ(RunKsteel(WITH_TIE + "capacity 'UB 457x191x67' --code tie").code, 2);
    EXPECT_EQ(RunKsteel(WITH_TIE + "validate " + file).code, 0);
    const auto spans = RunKsteel(WITH_TIE + "spans examples/floor_beam.csv --code tie");
    EXPECT_EQ(spans.code, 0) << spans;
    EXPECT_THAT(spans.out, HasSubstr("by the rules of the design code"));
    EXPECT_THAT(spans.out, ::testing::Not(HasSubstr("BS 5950")));
    const Json codes = Json::parse(RunKsteel(WITH_TIE + "codes --format json").out);
    ASSERT_EQ(codes.size(), 3u);
    EXPECT_EQ(codes[2]["id"], "tie");
    EXPECT_EQ(codes[2]["default"], false);
}

TEST(CodeModule, RefusesWhatItDoesNotTakeWithTheLine)
{
    const TestDirectory directory;
    const std::string beam = directory.Write("a.csv", Trial::GOOD_MEMBER);
    const auto section = RunKsteel(WITH_TIE + "check --code tie '" + beam + "'");
    EXPECT_EQ(section.code, 2) << section;
    EXPECT_THAT(section.err, HasSubstr("a.csv:3: SECTION: \""));
    EXPECT_THAT(section.err, HasSubstr("the section is no circular hollow section"));
    std::string text = Hanger("1e3");
    text.replace(text.find("S235"), 4, "S999");
    const std::string hanger = directory.Write("b.csv", text);
    for (const char* command : {"check", "validate"}) {
        const auto grade = RunKsteel(WITH_TIE + command + " --code tie " + hanger);
        EXPECT_EQ(grade.code, 2) << grade;
        EXPECT_THAT(grade.out + grade.err, HasSubstr("b.csv:3: GRADE: got \"S999\", expected S235 or User_defined"));
    }
}

// The output must not depend on the number of processes.
TEST(CodeModule, WorkersCheckToItToo)
{
    const TestDirectory directory;
    std::string text;
    for (int i = 0; i < 50; ++i)
        text += Hanger(std::to_string(6000 * i));
    const std::string command =
        WITH_TIE + "check --code tie --report table '" + directory.Write("many.csv", text) + "'";
    const auto one = RunKsteel(command);
    const auto three = RunKsteel(command + " --jobs 3");
    EXPECT_EQ(one.code, 0) << one.err;
    EXPECT_EQ(one.out, three.out);
}

// Who loads a module and says no code would be checked to one of which he does not think.
TEST(CodeModule, WantsTheCodeNamed)
{
    const auto result = RunKsteel(WITH_TIE + "check examples/tie.csv");
    EXPECT_EQ(result.code, 3) << result;
    EXPECT_THAT(result.err, HasSubstr("--module: say which design code to use: --code bs5950, ec3 or tie"));
    EXPECT_EQ(RunKsteel(WITH_TIE + "check examples/tie.csv --code bs5950").out,
              RunKsteel("check examples/tie.csv").out);
    EXPECT_EQ(RunKsteel(WITH_TIE + "show examples/tie.csv").code, 0) << "takes no code";
    EXPECT_EQ(RunKsteel(WITH_TIE + "validate examples/tie.csv").code, 0) << "judges the format alone";
}

// Whoever runs foreign code reads which, in full, however short the name that he gave, and apart from the results.
TEST(CodeModule, WhatWasLoadedIsToldWithItsPlace)
{
    const TestDirectory directory;
    std::filesystem::create_symlink(std::filesystem::absolute(KSTEEL_TIE_MODULE), directory.Path("short.so"));
    const auto result = RunKsteel("codes --module '" + directory.Path("short.so") + "'");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, LOADED);
    EXPECT_THAT(result.out, Not(HasSubstr("--module")));
    EXPECT_EQ(RunKsteel("codes").err, "");
    EXPECT_THAT(RunKsteel(WITH_TIE + WITH_TIE + "codes").err, HasSubstr(LOADED)) << "the first of two";
}

TEST(CodeModule, AFileThatIsNoneIsBadInputWithTheReason)
{
    const TestDirectory directory;
    const std::string text = directory.Write("text.so", "This is no library.\n");
    struct Row {
        std::string file;
        std::string message;
    };
    const Row rows[] = {
        {directory.Path("missing.so"), "no such file"},
        {directory.Path(""), "no file that can be read"},
        {text, "cannot be loaded: "},
        {KSTEEL_STRANGER_MODULE, "no module with a design code: it has no function keltrix_design_code"},
        {KSTEEL_EMPTY_MODULE, "no module with a design code: it gives none"},
        {KSTEEL_STALE_MODULE, "built for version 0 of the interface of design codes, this ksteel has version "}};
    for (const Row& row : rows) {
        const auto result = RunKsteel("codes --module '" + row.file + "'");
        EXPECT_EQ(result.code, 2) << row.file << "\n" << result;
        EXPECT_THAT(result.err, HasSubstr("ksteel: --module: " + row.file + ": " + row.message));
        EXPECT_EQ(result.out, "") << row.file;
    }
    const auto twice = RunKsteel(WITH_TIE + WITH_TIE + "codes");
    EXPECT_EQ(twice.code, 2) << twice;
    EXPECT_THAT(twice.err, HasSubstr("there is a design code tie already"));
    // A name without a folder is a file in this one, not a library of the system.
    EXPECT_THAT(RunKsteel("--module libm.so.6 codes").err, HasSubstr("libm.so.6: no such file"));
}

} // namespace
} // namespace Keltrix::App
