// The commands with the EN 1993-1-1 module.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "text/Json.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;
using Trial::RunKsteel;

// Examples of doubly symmetric sections.
constexpr const char* EXAMPLES[] = {"cantilever.csv", "column.csv",      "continuous_beam.csv", "crane_beam.csv",
                                    "floor_beam.csv", "floor_beam.toml", "hollow_strut.csv",    "two_span.toml"};

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

TEST(Ec3, RefusesOtherSectionsWithTheReasonAndTheLine)
{
    for (const char* command : {"check", "validate"}) {
        const auto result = RunKsteel(std::string(command) + " examples/tie.csv --code ec3");
        EXPECT_EQ(result.code, 2) << result;
        EXPECT_THAT(result.out + result.err,
                    HasSubstr("examples/tie.csv:3: SECTION: angles are not checked to EN 1993-1-1 yet"));
    }
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
