// The built program: its exit codes and output, where it writes, and that nothing brings it down.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "AppSupport.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using Trial::GOOD_MEMBER;
using Trial::RunKsteel;
using Trial::TestDirectory;

const std::vector<std::string> FILE_COMMANDS = {"show", "validate", "spans"
#ifdef KELTRIX_HOST_WITH_BS5950
                                                ,
                                                "check", "design --family UB"
#endif
};

TEST(CommandLine, ExitCodesAreExplainedInTheHelp)
{
    const auto help = RunKsteel("--help");
    EXPECT_EQ(help.code, 0) << help;
    EXPECT_THAT(help.out,
                HasSubstr("Exit codes: 0 fine, 1 a member fails, 2 bad input or output that cannot be written, 3 bad "
                          "usage."));
    EXPECT_EQ(RunKsteel("show --help").code, 0);
    EXPECT_THAT(RunKsteel("--version").out, StartsWith("ksteel "));
}

TEST(CommandLine, BadUsageIsThree)
{
    for (const char* arguments : {"", "frobnicate", "show", "show --color blue x", "section", "sections --sort shape",
                                  "sections --min-Ixx much", "sections --min-Ixx nan", "sections --min-Ixx inf",
                                  "sections --min-Ixx=-1", "spans --EI 0 examples/floor_beam.csv", "spans --EI x f",
                                  "spans --split nowhere f", "validate --format xml f", "--frobnicate"}) {
        const auto result = RunKsteel(arguments);
        EXPECT_EQ(result.code, 3) << arguments << "\n" << result;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_THAT(result.err, StartsWith("ksteel: ")) << arguments;
    }
}

TEST(CommandLine, ATitleIsNoMarkUp)
{
    const TestDirectory directory;
    std::string text = GOOD_MEMBER;
    text.replace(text.find("Floor beam"), 10, "<red>A</h4> <table>b");
    const std::string file = directory.Write("a.csv", text);
    for (const std::string& command : FILE_COMMANDS) {
        if (command == "validate") continue;
        EXPECT_THAT(RunKsteel(command + " --color always '" + file + "'").out, HasSubstr("<red>A</h4> <table>b"))
            << command;
    }
}

TEST(CommandLine, AnUnknownCommandIsToldWithTheKnownOnes)
{
    const auto result = RunKsteel("frobnicate x");
    EXPECT_THAT(result.err,
                StartsWith("ksteel: unknown command \"frobnicate\", expected one of show, validate, section"));
}

TEST(CommandLine, BadInputIsTwoAndIsToldOnStandardError)
{
    const TestDirectory directory;
    const std::string empty = directory.Write("empty.csv", "");
    const std::string nul = directory.Write("nul.csv", std::string("TITLE\0\0", 7));
    const std::string latin = directory.Write("latin.csv", "TITLE,Tr\xE4ger\n");
    const std::string commas = directory.Write("commas.csv", std::string(10 << 20, ','));
    const std::string noMember = directory.Write("no.csv", "hello\n");
    for (const std::string& command : FILE_COMMANDS) {
        for (const std::string& file :
             {std::string("missing.csv"), std::string("/"), empty, nul, latin, commas, noMember}) {
            const auto result = RunKsteel(command + " '" + file + "'");
            EXPECT_EQ(result.code, 2) << command << " " << file << "\n" << result;
            if (command != "validate") {
                EXPECT_EQ(result.out, "") << command << " " << file;
                EXPECT_THAT(result.err, StartsWith("ksteel: ")) << command << " " << file;
            }
        }
    }
}

TEST(CommandLine, AHundredMegabytesOfCommasAreRefused)
{
    const TestDirectory directory;
    const std::string file = directory.Write("commas.csv", std::string(std::size_t(100) << 20, ','));
    const auto result = RunKsteel("validate '" + file + "'");
    EXPECT_EQ(result.code, 2);
    EXPECT_THAT(result.err, HasSubstr("commas.csv: larger than 64 MiB, which no member file is; split it"));
    EXPECT_EQ(RunKsteel("validate - <'" + file + "'").code, 2);
}

TEST(CommandLine, ATitleOfTenMegabytesIsShown)
{
    const TestDirectory directory;
    std::string text = GOOD_MEMBER;
    text.replace(text.find("Floor beam"), 10, std::string(10 << 20, 'x'));
    const std::string file = directory.Write("long.csv", text);
    const auto result = RunKsteel("show '" + file + "'");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_GT(result.out.size(), std::size_t(10) << 20);
}

TEST(CommandLine, StandardInputIsDash)
{
    const TestDirectory directory;
    const std::string file = directory.Write("a.csv", GOOD_MEMBER);
    for (const std::string& command : FILE_COMMANDS) {
        const auto result = RunKsteel(command + " - <'" + file + "'");
        EXPECT_LE(result.code, 1) << command << "\n" << result;
        EXPECT_THAT(result.out,
                    HasSubstr(command == "validate" ? "standard input: 1 member, no errors" : "Floor beam"));
    }
}

TEST(CommandLine, OneBadFileDoesNotKeepTheOthersBack)
{
    const TestDirectory directory;
    const std::string good = directory.Write("good.csv", GOOD_MEMBER);
    const auto result = RunKsteel("show missing.csv '" + good + "'");
    EXPECT_EQ(result.code, 2) << result;
    EXPECT_THAT(result.out, StartsWith("Floor beam\n"));
    EXPECT_EQ(result.err, "ksteel: missing.csv: no such file\n");
}

TEST(CommandLine, WarningsOfWhatReadingLosesGoToStandardError)
{
    const TestDirectory directory;
    std::string text = GOOD_MEMBER;
    text.replace(text.find("Floor beam"), 10, "Floor beam, level 2");
    const std::string file = directory.Write("a.csv", text);
    const auto result = RunKsteel("show '" + file + "'");
    EXPECT_EQ(result.code, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("a.csv:1: warning: TITLE title: got \"Floor beam, level 2\""));
}

TEST(CommandLine, OutputThatCannotBeWrittenIsTold)
{
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "Left out: needs /dev/full";
    const auto full = RunKsteel("section 'UB 457x191x67' >/dev/full");
    EXPECT_EQ(full.code, 2) << full;
    EXPECT_THAT(full.err, StartsWith("ksteel: standard output: cannot be written"));
    const auto svg = RunKsteel("section 'UB 457x191x67' --svg /nowhere/a.svg");
    EXPECT_EQ(svg.code, 2) << svg;
    EXPECT_THAT(svg.err, StartsWith("ksteel: /nowhere/a.svg: cannot be written"));
    EXPECT_EQ(svg.out, "");
}

TEST(CommandLine, AClosedStreamIsTold)
{
    const auto closed = RunKsteel("sections >&-");
    EXPECT_EQ(closed.code, 2) << closed;
    EXPECT_THAT(closed.err, StartsWith("ksteel: standard output: cannot be written"));
}

// A name or a title is shown as what it is, in one line: it cannot pretend to be another message or another text.
TEST(CommandLine, NamesAndTitlesShowWhatIsHiddenInThem)
{
    const auto missing = RunKsteel("show \"$(printf 'a\\nksteel: b\\342\\200\\256.csv')\"");
    EXPECT_EQ(missing.code, 2);
    EXPECT_EQ(missing.err, "ksteel: a[U+000A]ksteel: b[U+202E].csv: no such file\n");

    const TestDirectory directory;
    std::string text = GOOD_MEMBER;
    text.replace(text.find("Floor beam"), 10,
                 "Beam \xE2\x80\xAE"
                 "76x191\xE2\x80\x8B");
    text.replace(text.find("ROLLED"), 6, "ROLLED\xE2\x80\x8B");
    const std::string file = directory.Write("two\nlines.csv", text);
    for (const std::string& command : FILE_COMMANDS) {
        const auto result = RunKsteel(command + " '" + file + "'");
        EXPECT_EQ((result.out + result.err).find("\xE2\x80\xAE"), std::string::npos) << command;
        EXPECT_EQ((result.out + result.err).find("\xE2\x80\x8B"), std::string::npos) << command;
        if (command != "validate") {
            EXPECT_THAT(result.out, HasSubstr("Beam [U+202E]76x191[U+200B]")) << command;
        }
        EXPECT_THAT(result.out + result.err, ::testing::Not(HasSubstr("two\nlines"))) << command;
    }
}

TEST(CommandLine, ColoursComeWhenAskedForAndNotIntoFiles)
{
    EXPECT_THAT(RunKsteel("show --color always examples/floor_beam.csv").out, HasSubstr("\x1B["));
    EXPECT_THAT(RunKsteel("show --color never examples/floor_beam.csv").out, ::testing::Not(HasSubstr("\x1B")));
    EXPECT_THAT(RunKsteel("show examples/floor_beam.csv").out, ::testing::Not(HasSubstr("\x1B")));
    EXPECT_THAT(RunKsteel("show --raw examples/floor_beam.csv").out, HasSubstr("<h6>MemberPoints</h6>"));
}

TEST(CommandLine, DefectsAreToldAsJson)
{
    const TestDirectory directory;
    std::string text = GOOD_MEMBER;
    text.replace(text.find("2,3,Top"), 7, "2,2.5m,Top");
    const std::string file = directory.Write("a.csv", text);
    const auto result = RunKsteel("validate --format json '" + file + "' missing.csv");
    EXPECT_EQ(result.code, 2) << result;
    const auto json = nlohmann::json::parse(result.out);
    ASSERT_EQ(json.size(), 2u);
    EXPECT_EQ(json[0]["file"], file);
    EXPECT_EQ(json[0]["errors"], 1);
    EXPECT_EQ(json[0]["warnings"].size(), 0u);
    const auto expected = nlohmann::json{{"line", 13},
                                         {"severity", "error"},
                                         {"code", "number"},
                                         {"keyword", "MEMBERPOINT"},
                                         {"field", "position"},
                                         {"got", "\"2.5m\""},
                                         {"expected", "a number in m"},
                                         {"advice", "write 2.5"},
                                         {"message", "got \"2.5m\", expected a number in m; write 2.5"}};
    EXPECT_EQ(json[0]["defects"][0], expected);
    EXPECT_EQ(json[1]["error"], "missing.csv: no such file");
}

TEST(CommandLine, SectionsAreToldAsJsonInSi)
{
    const auto json = nlohmann::json::parse(RunKsteel("section --format json 'ub 457 X 191 x 67'").out);
    EXPECT_EQ(json["name"], "UB 457x191x67");
    EXPECT_EQ(json["family"], "UB");
    EXPECT_EQ(json["shape"], "I");
    EXPECT_EQ(json["type"], "ROLLED");
    EXPECT_EQ(json["mass_per_metre"], 67.1);
    EXPECT_DOUBLE_EQ(json["dimensions"]["D"].get<double>(), 0.4534);
    EXPECT_NEAR(json["properties"]["Ixx"].get<double>(), 2.938e-4, 1e-7);

    const auto list = nlohmann::json::parse(RunKsteel("sections --format json --family uc --sort mass").out);
    ASSERT_GT(list.size(), 10u);
    for (std::size_t i = 1; i < list.size(); ++i) {
        EXPECT_EQ(list[i]["family"], "UC");
        EXPECT_GE(list[i]["mass_per_metre"], list[i - 1]["mass_per_metre"]);
    }
    const auto stiff = nlohmann::json::parse(RunKsteel("sections --format json --min-Ixx 100000 --family UB").out);
    for (const auto& section : stiff)
        EXPECT_GE(section["Ixx"].get<double>(), 1e-3);
    EXPECT_GT(stiff.size(), 5u);
}

TEST(CommandLine, UnknownSectionsAndFamiliesAreBadInput)
{
    const auto section = RunKsteel("section 'UB 457x191x68'");
    EXPECT_EQ(section.code, 2) << section;
    EXPECT_THAT(section.err, StartsWith("ksteel: unknown section \"UB 457x191x68\"; nearest: UB 457x191x67, "));
    const auto family = RunKsteel("sections --family UX");
    EXPECT_EQ(family.code, 2) << family;
    EXPECT_THAT(family.err, StartsWith("ksteel: unknown family \"UX\"; the catalogue has UB, UC"));
}

TEST(CommandLine, SpansAreToldAsJson)
{
    const auto json = nlohmann::json::parse(RunKsteel("spans --format json examples/floor_beam.csv").out);
    ASSERT_EQ(json.size(), 1u);
    EXPECT_EQ(json[0]["split"], "lt");
    ASSERT_EQ(json[0]["spans"].size(), 3u);
    const auto& span = json[0]["spans"][1];
    EXPECT_EQ(span["start"], 3.0);
    EXPECT_EQ(span["end"], 6.0);
    EXPECT_EQ(span["compression_flange"], "flange 1 (top)");
    EXPECT_TRUE(span["lt_effective_lengths"].empty()) << "the deck holds the compressed flange all along";
    const auto& lengths = json[0]["spans"][2]["lt_effective_lengths"];
    ASSERT_EQ(lengths.size(), 1u);
    EXPECT_EQ(lengths[0]["flange"], "flange 1 (top)");
    EXPECT_EQ(lengths[0]["start"], 6.0);
    EXPECT_EQ(lengths[0]["length"], 3.0);
    EXPECT_EQ(lengths[0]["row"], "1.0L(normal)");
    EXPECT_EQ(span["stations"].size(), 5u);
    // 1 kN/m over the 3 m between the points: 354 + 1·3²/8 kN·m at mid-span.
    EXPECT_EQ(span["min"]["Myy"], -355125.0);
    EXPECT_EQ(span["moment_major"]["least_position"], 4.5);
    const auto whole =
        nlohmann::json::parse(RunKsteel("spans --split minor --format json examples/floor_beam.csv").out);
    EXPECT_EQ(whole[0]["spans"].size(), 1u);
}

TEST(CommandLine, TheDrawingGoesToItsFile)
{
    const TestDirectory directory;
    const std::string file = directory.Path("a.svg");
    const auto result = RunKsteel("section 'PFC 200x90x30' --svg '" + file + "'");
    EXPECT_EQ(result.code, 0) << result;
    EXPECT_THAT(result.out, StartsWith("PFC 200x90x30\n"));
    EXPECT_THAT(Trial::ReadWhole(file), StartsWith("<?xml"));
    EXPECT_THAT(RunKsteel("section 'PFC 200x90x30' --svg -").out, StartsWith("<?xml"));
}

} // namespace
} // namespace Keltrix::App
