// The commands with the EN 1993-1-1 module.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "text/Json.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;
using Trial::RunKsteel;
using Trial::TestDirectory;

constexpr const char* EXAMPLES[] = {"angle_brace.csv", "brace.toml",          "cantilever.csv", "chord.toml",
                                    "column.csv",      "continuous_beam.csv", "crane_beam.csv", "floor_beam.csv",
                                    "floor_beam.toml", "hollow_strut.csv",    "rafter.toml",    "tie.csv",
                                    "two_span.toml"};

TEST(Ec3, ChecksReportsAndValidatesTheExamples)
{
    for (const char* name : EXAMPLES) {
        const std::string file = std::string(" examples/") + name + " --code ec3";
        const auto check = RunKsteel("check" + file + " --format json");
        EXPECT_LT(check.code, 2) << name << "\n" << check;
        EXPECT_THAT(check.out, HasSubstr("6.2.5")) << name;
        const auto report = RunKsteel("report" + file + " -o -");
        EXPECT_LT(report.code, 2) << name << "\n" << report;
        EXPECT_THAT(report.out, HasSubstr("EN 1993-1-1")) << name;
        EXPECT_EQ(RunKsteel("validate" + file).code, 0) << name;
    }
}

// A resistance has its symbol, its value and its place.
TEST(Ec3, ListsItsResistances)
{
    const Json member = Json::parse(RunKsteel("check examples/column.csv --code ec3 --format json").out)[0];
    std::string symbols;
    for (const Json& r : member["resistances"]) {
        symbols += r["symbol"].get<std::string>() + " ";
        EXPECT_TRUE(r["start"].is_number() && r["end"].is_number()) << r.dump();
        EXPECT_TRUE(r["value"].is_number()) << r.dump();
    }
    for (const char* symbol :
         {"NplRd", "NcRd", "McyRd", "MczRd", "VczRd", "VcyRd", "MNyRd",   "MNzRd",   "NbyRd",   "NbzRd",
          "NbTRd", "MbRd", "Mcr",   "NcrY",  "NcrZ",  "NcrT",  "lambdaY", "lambdaZ", "lambdaT", "lambdaLT",
          "chiY",  "chiZ", "chiT",  "chiLT", "kyy",   "kyz",   "kzy",     "kzz",     "C1",      "f"})
        EXPECT_THAT(symbols, HasSubstr(std::string(symbol) + " "));
}

// Cold-formed open sections are for another part of the standard.
TEST(Ec3, RefusesOtherSectionsWithTheReasonAndTheLine)
{
    const TestDirectory directory;
    std::string text = Trial::ReadWhole(KSTEEL_SOURCE_DIR "/examples/tie.csv");
    const std::string section = "L 100x100x10,ROLLED";
    text.replace(text.find(section), section.size(), "C 100x50x3x3,FORMED");
    const std::string file = directory.Write("formed.csv", text);
    for (const char* command : {"check", "validate"}) {
        const auto result = RunKsteel(std::string(command) + " '" + file + "' --code ec3");
        EXPECT_EQ(result.code, 2) << result;
        EXPECT_THAT(result.out + result.err, HasSubstr("formed.csv:3: SECTION: "));
        EXPECT_THAT(result.out + result.err, HasSubstr("cold-formed open sections are for EN 1993-1-3"));
    }
}

// Every command takes channels, tees, angles and unequal flanges.
TEST(Ec3, EveryCommandTakesEveryFamily)
{
    const TestDirectory directory;
    for (const char* section : {"PFC 200x90x30,ROLLED", "T 229x191x49,ROLLED", "L 120x120x15,ROLLED",
                                "L 200x100x15,ROLLED", "GI 400x200x120x8x15x12,WELDED"}) {
        std::string text = Trial::ReadWhole(KSTEEL_SOURCE_DIR "/examples/angle_brace.csv");
        const std::string own = "L 120x120x10,ROLLED";
        text.replace(text.find(own), own.size(), section);
        const std::string file = " '" + directory.Write("member.csv", text) + "' --code ec3";
        const Json member = Json::parse(RunKsteel("check" + file + " --format json").out)[0];
        EXPECT_EQ(member["status"], "pass") << section;
        EXPECT_EQ(RunKsteel("validate" + file).code, 0) << section;
        EXPECT_EQ(RunKsteel("report" + file + " -o -").code, 0) << section;
        const auto compared = RunKsteel("compare" + file + " --code bs5950");
        EXPECT_LT(compared.code, 2) << section << compared;
        const std::string name = std::string(section).substr(0, std::string(section).find(','));
        const auto table = RunKsteel("capacity '" + name + "' --code ec3 --grade S275 --LE 3");
        EXPECT_EQ(table.code, 0) << table;
        EXPECT_THAT(table.out, HasSubstr("NbTRd")) << table;
        EXPECT_THAT(table.out, ::testing::Not(HasSubstr("MNyRd"))) << "no reduced plastic moments";
    }
    // The lightest of each family that passes is checked again by itself in design.
    for (const char* family : {"PFC", "T", "L"}) {
        const auto found = RunKsteel(std::string("design examples/angle_brace.csv --code ec3 --family ") + family);
        EXPECT_EQ(found.code, 0) << found;
        EXPECT_THAT(found.out, HasSubstr(std::string(family) + " ")) << family;
        EXPECT_THAT(found.out, HasSubstr("is the lightest section that passes")) << family;
    }
}

// A verbose report has each factor of (6.61) and (6.62) with its formula and numbers.
TEST(Ec3, ReportsTheInteractionSoThatItCanBeFollowedByHand)
{
    const auto report = RunKsteel("check examples/column.csv --code ec3 --report verbose");
    for (const char* part :
         {"kyy = Cm(1 + n min(0.8, λ - 0.2)) = ", "kzy = 1 - 0.1 min(1, λz) nz/(CmLT - 0.25) = 1 - ",
          "kzz = Cm(1 + n min(1.4, 2 λ - 0.6)) = ", "χz = 0.6765, curve c, λ = 0.7772 (6.49)", "sum = "})
        EXPECT_THAT(report.out, HasSubstr(part)) << report.out;
}

// Published tables: UB 457x191x67 in S275, C1 = 1.00 and 1.77: Mb,Rd 278 and 382 kNm at 4 m.
TEST(Ec3, CapacityTakesTheShapeOfTheMoment)
{
    const auto at = [](const std::string& options) {
        const auto result =
            RunKsteel("capacity 'UB 457x191x67' --code ec3 --grade S275 --LE 4 --format json " + options);
        EXPECT_EQ(result.code, 0) << result;
        return Json::parse(result.out)[0]["MbRd"].get<double>();
    };
    EXPECT_NEAR(at("") / 1e3, 278.0, 1.0);
    EXPECT_NEAR(at("--C1 1.77") / 1e3, 382.0, 2.0);
    EXPECT_EQ(RunKsteel("capacity 'UB 457x191x67' --code ec3 --C1 0.5").code, 3);
    EXPECT_EQ(RunKsteel("capacity 'UB 457x191x67' --C1 1.77").code, 3) << "BS 5950 has none";
}

TEST(Ec3, DesignFindsTheLightestSection)
{
    const auto result = RunKsteel("design examples/floor_beam.csv --code ec3 --family UB --format json");
    EXPECT_EQ(result.code, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("UB 533x165x66"));
}

TEST(Ec3, TheRecommendedValuesAreAnAnnex)
{
    const auto uk = RunKsteel("check examples/column.csv --code ec3 --annex uk");
    EXPECT_THAT(uk.out, HasSubstr("UK National Annex"));
    const auto recommended = RunKsteel("check examples/column.csv --code ec3 --annex recommended");
    EXPECT_THAT(recommended.out, HasSubstr("recommended values"));
    EXPECT_THAT(recommended.out, HasSubstr("fy = 275 N/mm²")) << "Table 3.1 up to 40 mm";
}

} // namespace
} // namespace Keltrix::App
