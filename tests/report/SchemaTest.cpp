// Every JSON output against its schema in docs/schema. The validator knows the words that those schemas use and refuses any
// other, so that no rule of a schema is passed over in silence. The schemas are open, because names may be added at any time; here they are
// closed, so that no name is added without its line in the schema.

#include <gtest/gtest.h>

#include <cmath>

#include "app/AppSupport.h"
#include "io/Failure.h"
#include "text/Json.h"

namespace Keltrix::App {
namespace {

const std::string SCHEMA_DIR = KSTEEL_SOURCE_DIR "/docs/schema/";

class Validator {
public:
    explicit Validator(const Json& schema) : m_root(schema) {}

    // The first departure with its place; empty where there is none.
    std::string Check(const Json& value) { return Check(value, m_root, "$"); }

private:
    std::string Check(const Json& value, const Json& schema, const std::string& at)
    {
        for (const auto& [word, rule] : schema.items()) {
            std::string fault = CheckWord(value, word, rule, at);
            if (!fault.empty()) return fault;
        }
        return {};
    }

    std::string CheckWord(const Json& value, const std::string& word, const Json& rule, const std::string& at)
    {
        if (word == "$schema" || word == "$id" || word == "$defs" || word == "title" || word == "description")
            return {};
        if (word == "$ref") {
            const std::string name = rule.get<std::string>();
            const std::size_t hash = name.find("#/$defs/");
            if (hash == std::string::npos) return at + ": unknown reference " + name;
            const std::string definition = name.substr(hash + 8);
            if (hash == 0) return Check(value, m_root.at("$defs").at(definition), at);
            const Json other = Json::parse(Trial::ReadWhole(SCHEMA_DIR + name.substr(0, hash)));
            return Validator(other).Check(value, other.at("$defs").at(definition), at);
        }
        if (word == "type") return IsOfType(value, rule) ? "" : at + ": " + value.dump() + " is no " + rule.dump();
        if (word == "enum")
            return std::find(rule.begin(), rule.end(), value) != rule.end()
                       ? ""
                       : at + ": " + value.dump() + " is none of " + rule.dump();
        if (word == "anyOf") return CheckAnyOf(value, rule, at);
        if (word == "minimum") return !value.is_number() || value >= rule ? "" : at + ": below " + rule.dump();
        if (word == "maximum") return !value.is_number() || value <= rule ? "" : at + ": above " + rule.dump();
        if (word == "minItems") return !value.is_array() || value.size() >= rule ? "" : at + ": too few items";
        if (word == "maxItems") return !value.is_array() || value.size() <= rule ? "" : at + ": too many items";
        if (word == "minProperties") return !value.is_object() || value.size() >= rule ? "" : at + ": too few members";
        if (word == "maxProperties") return !value.is_object() || value.size() <= rule ? "" : at + ": too many members";
        if (word == "items") return CheckItems(value, rule, at);
        if (word == "properties") return CheckProperties(value, rule, at);
        if (word == "required") return CheckRequired(value, rule, at);
        return at + ": the schema has a word that is not known here: " + word;
    }

    static bool IsOfType(const Json& value, const Json& rule)
    {
        if (rule.is_array()) {
            return std::any_of(rule.begin(), rule.end(), [&](const Json& one) { return IsOfType(value, one); });
        }
        const std::string type = rule.get<std::string>();
        if (type == "number") return value.is_number();
        if (type == "integer") return value.is_number_integer();
        if (type == "string") return value.is_string();
        if (type == "boolean") return value.is_boolean();
        if (type == "array") return value.is_array();
        if (type == "object") return value.is_object();
        return type == "null" && value.is_null();
    }

    std::string CheckAnyOf(const Json& value, const Json& rule, const std::string& at)
    {
        std::string faults;
        for (const Json& one : rule) {
            const std::string fault = Check(value, one, at);
            if (fault.empty()) return {};
            faults += "\n  " + fault;
        }
        return at + ": none of the alternatives fits:" + faults;
    }

    std::string CheckItems(const Json& value, const Json& rule, const std::string& at)
    {
        if (!value.is_array()) return {};
        for (std::size_t i = 0; i < value.size(); ++i) {
            std::string fault = Check(value[i], rule, at + "[" + std::to_string(i) + "]");
            if (!fault.empty()) return fault;
        }
        return {};
    }

    std::string CheckProperties(const Json& value, const Json& rule, const std::string& at)
    {
        if (!value.is_object()) return {};
        for (const auto& [name, one] : rule.items()) {
            if (!value.contains(name)) continue;
            std::string fault = Check(value.at(name), one, at + "." + name);
            if (!fault.empty()) return fault;
        }
        for (const auto& [name, one] : value.items())
            if (!rule.contains(name)) return at + ": has \"" + name + "\", which the schema does not";
        return {};
    }

    static std::string CheckRequired(const Json& value, const Json& rule, const std::string& at)
    {
        if (!value.is_object()) return {};
        for (const Json& name : rule)
            if (!value.contains(name.get<std::string>())) return at + ": lacks " + name.dump();
        return {};
    }

    const Json& m_root;
};

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
    EXPECT_EQ(Validator(schema).Check(output), "") << row.arguments;
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
    ::testing::Values(OutputRow{"check", "check --format json examples/*.csv", 0},
                      OutputRow{"check", "check --format json --exact examples/column.csv", 0},
                      OutputRow{"check", "check --format json --envelope examples/column.csv examples/column.csv", 0},
                      OutputRow{"check", "check --format json - < tests/report/failing.csv", 1},
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
                      OutputRow{"validate", "validate --format json tests/app/golden/spoiled.csv no_such_file.csv",
                                2}));

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
            EXPECT_EQ(Validator(schema).Check(output), "") << line;
            statuses.insert(output.at("status").get<std::string>());
        }
    }
    EXPECT_EQ(statuses, (std::set<std::string>{"fail", "pass", "refused"}));
    EXPECT_NE(Validator(schema).Check(Json{{"file", "x"}, {"status", "refused"}}), "");
}

TEST(SchemaValidator, ReportsEachKindOfFault)
{
    const Json schema = SchemaOf("check");
    const auto result = Trial::RunKsteel("check --format json examples/floor_beam.csv");
    const Json good = Json::parse(result.out);
    ASSERT_EQ(Validator(schema).Check(good), "");
    const auto fault = [&](const std::function<void(Json&)>& spoil) {
        Json bad = good;
        spoil(bad);
        return Validator(schema).Check(bad);
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
    EXPECT_EQ(Validator(strange).Check(good), "$: the schema has a word that is not known here: pattern");
}

} // namespace
} // namespace Keltrix::App
