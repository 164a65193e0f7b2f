// Several design codes side by side.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "text/Json.h"

namespace Keltrix::App {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using Trial::RunKsteel;
using Trial::TestDirectory;

Json ObjectsOf(const std::string& arguments, int code = 0)
{
    const auto result = RunKsteel("compare --format json " + arguments);
    EXPECT_EQ(result.code, code) << result;
    return Json::parse(result.out);
}

TEST(Compare, HasWhatCheckFindsForEachCode)
{
    const Json compared = ObjectsOf("examples/column.csv --code ec3:recommended --code bs5950");
    ASSERT_EQ(compared.size(), 1u);
    const Json& codes = compared[0]["codes"];
    ASSERT_EQ(codes.size(), 2u);
    const char* const checks[] = {"--code ec3 --annex recommended", "--code bs5950"};
    for (std::size_t i = 0; i < 2; ++i) {
        const auto result = RunKsteel("check --format json examples/column.csv " + std::string(checks[i]));
        EXPECT_EQ(codes[i], Json::parse(result.out)[0]) << checks[i];
    }
}

// UC 254x254x89 in S275, 1200 kN: A fy = 11,300 mm² 265 N/mm² in both codes, so that what squashes the section is 0.40 in both.
TEST(Compare, PutsWhatIsAboutOneThingIntoOneLine)
{
    const auto result = RunKsteel("compare examples/column.csv --width 120");
    EXPECT_EQ(result.code, 0) << result;
    EXPECT_THAT(result.out, AllOf(HasSubstr("BS 5950-1:2000 "), HasSubstr("EN 1993-1-1:2005+A1:2014 (uk)")));
    EXPECT_THAT(result.out,
                ::testing::ContainsRegex("compression +0\\.400 \\(4\\.8\\.3\\.2\\) +0\\.400 \\(6\\.2\\.4\\)"));
    EXPECT_THAT(result.out, ::testing::ContainsRegex("torsional buckling +- +0\\.[0-9]+ \\(6\\.3\\.1\\)"));
    EXPECT_THAT(result.out, Not(HasSubstr("other")));
}

TEST(Compare, FailsWhereOneCodeFails)
{
    const TestDirectory directory;
    std::string text = Trial::ReadWhole(KSTEEL_SOURCE_DIR "/examples/floor_beam.toml");
    const std::size_t load = text.find("45.0");
    ASSERT_NE(load, std::string::npos);
    text.replace(load, 4, "66.0"); // between what the two codes bear
    const Json compared = ObjectsOf("'" + directory.Write("beam.toml", text) + "'", 1);
    EXPECT_EQ(compared[0]["codes"][0]["status"], "fail");
    EXPECT_EQ(compared[0]["codes"][1]["status"], "pass");
    // Each with its own combinations.
    EXPECT_EQ(compared[0]["codes"][0]["checks"][9]["combination"].get<std::string>().find("6.10"), std::string::npos);
    EXPECT_THAT(compared[0]["codes"][1].dump(), HasSubstr("6.10"));
}

TEST(Compare, ShowsWhyACodeDoesNotTakeAMember)
{
    const TestDirectory directory;
    std::string text = Trial::ReadWhole(KSTEEL_SOURCE_DIR "/examples/tie.csv");
    const std::string section = "L 100x100x10,ROLLED";
    text.replace(text.find(section), section.size(), "C 100x50x3x3,FORMED");
    const std::string file = "'" + directory.Write("tie.csv", text) + "'";
    const auto result = RunKsteel("compare " + file + " examples/column.csv --width 300");
    EXPECT_EQ(result.code, 2) << result;
    EXPECT_THAT(result.out, AllOf(HasSubstr("Angle tie"), HasSubstr("cold-formed open sections are for EN 1993-1-3"),
                                  HasSubstr("Column 4.5 m")));
    const Json refused = ObjectsOf(file, 2)[0]["codes"][1];
    EXPECT_EQ(refused["status"], "refused");
    EXPECT_EQ(refused["code"], "ec3");
}

TEST(Compare, TellsAMessageOfTheFileOnce)
{
    const auto result = RunKsteel("compare examples/column.csv no_such_file.csv");
    EXPECT_EQ(result.code, 2);
    const std::size_t first = result.err.find("no_such_file.csv");
    ASSERT_NE(first, std::string::npos) << result;
    EXPECT_EQ(result.err.find("no_such_file.csv", first + 1), std::string::npos) << result.err;
    EXPECT_THAT(result.out, HasSubstr("Column 4.5 m"));
}

TEST(Compare, RefusesWhatItCannotDo)
{
    EXPECT_EQ(RunKsteel("compare examples/column.csv --code ec3").code, 3);
    EXPECT_EQ(RunKsteel("compare - < examples/column.csv").code, 3);
    EXPECT_EQ(RunKsteel("compare").code, 3);
    const auto device = RunKsteel("compare /dev/null");
    EXPECT_EQ(device.code, 3);
    EXPECT_EQ(device.err,
              "ksteel: compare: /dev/null: files are read once for each design code, which streams cannot be; "
              "see ksteel --help\n");
    const auto unknown = RunKsteel("compare examples/column.csv --code ec3 --code ec4");
    EXPECT_EQ(unknown.code, 2);
    EXPECT_EQ(unknown.err, "ksteel: --code: got \"ec4\", expected bs5950 or ec3\n");
    EXPECT_EQ(RunKsteel("compare examples/column.csv --code ec3:fr --code bs5950").err,
              "ksteel: --code ec3: got \"fr\", expected uk or recommended\n");
}

} // namespace
} // namespace Keltrix::App
