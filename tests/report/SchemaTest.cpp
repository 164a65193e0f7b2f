// Every JSON output against its schema in docs/schema.

#include <gtest/gtest.h>

#include <cmath>

#include "app/AppSupport.h"
#include "io/Failure.h"
#include "support/SchemaValidator.h"
#include "text/Json.h"

namespace Keltrix::App {
namespace {

const std::string SCHEMA_DIR = KSTEEL_SOURCE_DIR "/docs/schema/";

// The first departure of an output from a schema; empty where there is none.
std::string FaultOf(const Json& schema, const Json& output)
{
    return TestSupport::SchemaValidator(schema, SCHEMA_DIR).Check(output);
}

Json SchemaOf(const std::string& name) { return Json::parse(Trial::ReadWhole(SCHEMA_DIR + name + ".schema.json")); }

struct OutputRow {
    const char* schema;
    const char* arguments;
    int code;
};

std::ostream& operator<<(std::ostream& stream, const OutputRow& row) { return stream << row.arguments; }

class Schema : public ::testing::TestWithParam<OutputRow> {};

TEST_P(Schema, HoldsForTheOutput)
{
    const OutputRow& row = GetParam();
    const Json schema = SchemaOf(row.schema);
    const auto result = Trial::RunKsteel(row.arguments);
    ASSERT_EQ(result.code, row.code) << row.arguments << "\n" << result.err;
    const Json output = Json::parse(result.out);
    EXPECT_FALSE(output.empty()) << row.arguments;
    EXPECT_EQ(FaultOf(schema, output), "") << row.arguments;
}

#ifdef KELTRIX_HOST_WITH_STABILITY
INSTANTIATE_TEST_SUITE_P(
    Buckling, Schema,
    ::testing::Values(OutputRow{"buckling", "buckling --format json examples/*.csv", 1},
                      OutputRow{"buckling", "buckling --format json --continuity examples/continuous_beam.csv", 0},
                      OutputRow{"buckling", "buckling --format json - < tests/report/not_held.csv", 1}));
#endif

#ifdef KELTRIX_HOST_WITH_STATICS
INSTANTIATE_TEST_SUITE_P(Loads, Schema,
                         ::testing::Values(OutputRow{"loads", "loads --format json tests/report/two_span.toml", 0},
                                           OutputRow{"loads", "loads --format json examples/*.toml", 0},
                                           OutputRow{"loads", "loads --format json tests/report/inclined.toml", 0}));
#endif

INSTANTIATE_TEST_SUITE_P(
    Output, Schema,
    ::testing::Values(
        OutputRow{"check", "check --format json examples/*.csv", 0},
        OutputRow{"check", "check --format json --steps examples/column.csv examples/two_span.toml", 0},
        OutputRow{"check", "check --format json --steps --code ec3 examples/column.csv examples/two_span.toml", 0},
        OutputRow{"check", "check --format json --exact examples/column.csv", 0},
        OutputRow{"check", "check --format json --envelope examples/column.csv examples/column.csv", 0},
        OutputRow{"check", "check --format json - < tests/report/failing.csv", 1},
        OutputRow{"check", "check --format json --code ec3 examples/column.csv examples/two_span.toml", 0},
        OutputRow{"check", "check --format json --code ec3 --annex recommended examples/cantilever.csv", 0},
        OutputRow{"compare", "compare --format json examples/column.csv examples/floor_beam.toml", 0},
        OutputRow{"compare", "compare --format json examples/tie.csv", 1},
        OutputRow{"spans", "spans --format json examples/*.csv", 0},
        OutputRow{"spans", "spans --format json --split major examples/*.csv", 0},
        OutputRow{"spans", "spans --format json --split minor --EI 1e7 examples/*.csv", 0},
        OutputRow{"section", "section --format json 'UB 457x191x67'", 0},
        OutputRow{"section", "section --format json 'L 60x30x5'", 0},
        OutputRow{"section", "section --format json 'PFC 200x90x30'", 0},
        OutputRow{"section", "section --format json 'T 229x191x34'", 0},
        OutputRow{"section", "section --format json 'CHS 168.3x5'", 0},
        OutputRow{"section", "section --format json 'CFRHS 200x100x6'", 0},
        OutputRow{"section", "section --format json 'GI 600x250x200x10x20x15'", 0},
        OutputRow{"sections", "sections --format json", 0},
        OutputRow{"capacity", "capacity --format json 'UB 457x191x67'", 0},
        OutputRow{"capacity", "capacity --format json 'L 100x100x10' --grade S355", 0},
        OutputRow{"capacity", "capacity --format json 'SHS 150x150x8' --LE 2,4.5,6", 0},
        OutputRow{"codes", "codes --format json", 0},
        OutputRow{"design", "design --format json examples/column.csv --family UC", 0},
        OutputRow{"design", "design --format json examples/column.csv --family L", 1},
        OutputRow{"validate", "validate --format json examples/*.csv", 0},
        OutputRow{"validate", "validate --format json tests/app/golden/spoiled.csv no_such_file.csv", 2}));

TEST(SchemaOfLines, HoldsForEachKindOfLine)
{
    const Json schema = SchemaOf("check-line");
    std::set<std::string> statuses;
    for (const char* options : {"", "--report table "}) {
        const auto result =
            Trial::RunKsteel("check --format jsonl " + std::string(options) +
                             "examples/*.csv tests/report/failing.csv tests/app/golden/spoiled.csv none.csv");
        ASSERT_EQ(result.code, 2) << result.err;
        std::istringstream lines(result.out);
        for (std::string line; std::getline(lines, line);) {
            const Json output = Json::parse(line);
            EXPECT_EQ(FaultOf(schema, output), "") << line;
            statuses.insert(output.at("status").get<std::string>());
        }
    }
    EXPECT_EQ(statuses, (std::set<std::string>{"fail", "pass", "refused"}));
    EXPECT_NE(FaultOf(schema, Json{{"file", "x"}, {"status", "refused"}}), "");
}

TEST(SchemaValidator, ReportsEachKindOfFault)
{
    const Json schema = SchemaOf("check");
    const auto result = Trial::RunKsteel("check --format json examples/floor_beam.csv");
    const Json good = Json::parse(result.out);
    ASSERT_EQ(FaultOf(schema, good), "");
    const auto fault = [&](const std::function<void(Json&)>& spoil) {
        Json bad = good;
        spoil(bad);
        return FaultOf(schema, bad);
    };
    EXPECT_EQ(fault([](Json& j) { j[0].erase("class"); }), "$[0]: lacks \"class\"");
    EXPECT_EQ(fault([](Json& j) { j[0]["extra"] = 1; }), "$[0]: has \"extra\", which the schema does not");
    EXPECT_EQ(fault([](Json& j) { j[0]["title"] = 5; }), "$[0].title: 5 is no \"string\"");
    EXPECT_EQ(fault([](Json& j) { j[0]["class"] = 5; }), "$[0].class: above 4");
    EXPECT_EQ(fault([](Json& j) { j[0]["line"] = 0; }), "$[0].line: below 1");
    EXPECT_EQ(fault([](Json& j) { j[0]["checks"] = Json::array(); }), "$[0].checks: too few items");
    EXPECT_NE(fault([](Json& j) { j[0]["status"] = "good"; }), "");
    EXPECT_NE(fault([](Json& j) { j[0]["governing"] = "none"; }), "");
    EXPECT_NE(fault([](Json& j) { j[0]["checks"][0]["status"] = nullptr; }), "");
    const Json strange = Json::parse(R"({"pattern": "x"})");
    EXPECT_EQ(FaultOf(strange, good), "$: the schema has a word that is not known here: pattern");
}

} // namespace
} // namespace Keltrix::App
