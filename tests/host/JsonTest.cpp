#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RandomCases.h"
#include "text/Json.h"
#include "text/JsonWriter.h"

namespace Keltrix::Host {
namespace {

template <class Value>
std::string Written(const Value& value)
{
    JsonWriter json;
    json.Put(value);
    return json.Take();
}

TEST(JsonWriter, ANumberIsFixedFromTenThousandthsToThousandMillionMillions)
{
    EXPECT_EQ(Written(0.1), "0.1");
    EXPECT_EQ(Written(0.0001), "0.0001");
    EXPECT_EQ(Written(0.00012345), "0.00012345");
    EXPECT_EQ(Written(0.00001), "1e-05");
    EXPECT_EQ(Written(1.25e-7), "1.25e-07");
    EXPECT_EQ(Written(-12.5), "-12.5");
    EXPECT_EQ(Written(100000.0), "100000.0");
    EXPECT_EQ(Written(123456789012345.0), "123456789012345.0");
    EXPECT_EQ(Written(1e15), "1e+15");
    EXPECT_EQ(Written(1.5e100), "1.5e+100");
    EXPECT_EQ(Written(5e-324), "5e-324");
    EXPECT_EQ(Written(std::numeric_limits<double>::max()), "1.7976931348623157e+308");
    EXPECT_EQ(Written(0.0), "0.0");
    EXPECT_EQ(Written(-0.0), "-0.0");
}

TEST(JsonWriter, WhatJsonDoesNotHaveIsNull)
{
    EXPECT_EQ(Written(std::numeric_limits<double>::quiet_NaN()), "null");
    EXPECT_EQ(Written(std::numeric_limits<double>::infinity()), "null");
    EXPECT_EQ(Written(-std::numeric_limits<double>::infinity()), "null");
    EXPECT_EQ(Written(nullptr), "null");
}

TEST(JsonWriter, WholeNumbersAndTruthAreWords)
{
    EXPECT_EQ(Written(true), "true");
    EXPECT_EQ(Written(false), "false");
    EXPECT_EQ(Written(0), "0");
    EXPECT_EQ(Written(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(Written(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
}

TEST(JsonWriter, TextIsQuotedAndItsControlsEscaped)
{
    EXPECT_EQ(Written(""), "\"\"");
    EXPECT_EQ(Written("a\"b\\c/d"), R"("a\"b\\c/d")");
    EXPECT_EQ(Written("\b\f\n\r\t"), R"("\b\f\n\r\t")");
    EXPECT_EQ(Written(std::string_view("\0\x01\x1F\x7F", 4)), "\"\\u0000\\u0001\\u001f\x7F\"");
    EXPECT_EQ(Written("N/mm\xC2\xB2 \xF0\x9F\x98\x80"), "\"N/mm\xC2\xB2 \xF0\x9F\x98\x80\"");
    EXPECT_EQ(Written(L"plain"), "\"plain\"");
    EXPECT_EQ(Written(L"py \x03BB\n"), "\"py \xCE\xBB\\n\"") << "as the same text in bytes";
}

TEST(JsonWriter, IllFormedTextBecomesReplacementCharacters)
{
    EXPECT_EQ(Written("a\xFF"), "\"a\xEF\xBF\xBD\"");
    EXPECT_EQ(Written("\xC0\xAFz"), "\"\xEF\xBF\xBD\xEF\xBF\xBDz\"") << "overlong";
    EXPECT_EQ(Written("\xE2\x82"), "\"\xEF\xBF\xBD\xEF\xBF\xBD\"") << "cut off";
    EXPECT_EQ(Written(L"\xD800"), "\"\xEF\xBF\xBD\"") << "half of a pair";
}

// A list, a record and what is empty, once in one line and once indented.
std::string SampleOf(JsonWriter json)
{
    json.BeginObject();
    json.Add("a", [&] { json.Array(std::vector<int>{1, 2}, [&](int value) { json.Put(value); }); });
    json.Add(
        "b", [&] { json.Object("c", 0.5, "d", nullptr); }, "e", "text");
    json.Add("none", [&] { json.Object("list", [&] { json.Array(std::vector<int>(), [](int) {}); }); });
    json.Name("empty");
    json.BeginObject();
    json.EndObject();
    json.EndObject();
    return json.Take();
}

TEST(JsonWriter, InOneLineThereAreNoBlanks)
{
    EXPECT_EQ(SampleOf({}), R"({"a":[1,2],"b":{"c":0.5,"d":null},"e":"text","none":{"list":[]},"empty":{}})");
}

TEST(JsonWriter, IndentedEachValueHasItsLine)
{
    const std::string text = "{\n"
                             "  \"a\": [\n"
                             "    1,\n"
                             "    2\n"
                             "  ],\n"
                             "  \"b\": {\n"
                             "    \"c\": 0.5,\n"
                             "    \"d\": null\n"
                             "  },\n"
                             "  \"e\": \"text\",\n"
                             "  \"none\": {\n"
                             "    \"list\": []\n"
                             "  },\n"
                             "  \"empty\": {}\n"
                             "}";
    EXPECT_EQ(SampleOf(JsonWriter::Indented()), text);
    EXPECT_EQ(SampleOf(JsonWriter::Indented()), Json::parse(SampleOf({})).dump(2));
    std::string within = "[\n" + SampleOf(JsonWriter::Indented(1)) + "\n]";
    EXPECT_EQ(within, Json::parse("[" + SampleOf({}) + "]").dump(2));
}

TEST(JsonWriter, ATreeIsWrittenAsItsValues)
{
    const Json tree = {{"z", {1, -2, 3u}},        {"a", {{"x", 0.25}, {"y", true}}},
                       {"empty", Json::object()}, {"list", Json::array()},
                       {"text", "two\nlines"},    {"none", nullptr}};
    EXPECT_EQ(Written(tree), tree.dump());
    JsonWriter json = JsonWriter::Indented();
    json.Put(tree);
    EXPECT_EQ(json.Take(), tree.dump(2));
}

// Each number that a double can hold reads back bit by bit, and no other writer needs fewer characters.
TEST(JsonWriter, AnyNumberReadsBackExactly)
{
    constexpr unsigned SEED = 20261124;
    std::mt19937_64 random(SEED);
    std::uniform_real_distribution<double> exponent(-8.0, 18.0);
    const int count = TestSupport::RandomCases(200000);
    for (int i = 0; i < count; ++i) {
        const double anyBits = std::bit_cast<double>(random());
        const double ofUse = std::pow(10.0, exponent(random)) * (random() % 2 == 0 ? 1.0 : -1.0);
        const double rounded = std::round(ofUse * 1e4) / 1e4;
        for (const double value : std::array{anyBits, ofUse, rounded}) {
            if (!std::isfinite(value)) continue;
            const std::string text = Written(value);
            ASSERT_EQ(std::bit_cast<std::uint64_t>(std::strtod(text.c_str(), nullptr)),
                      std::bit_cast<std::uint64_t>(value))
                << text << ", seed " << SEED;
            ASSERT_EQ(Json::parse(text).get<double>(), value) << text << ", seed " << SEED;
            ASSERT_LE(text.size(), Json(value).dump().size()) << text << ", seed " << SEED;
        }
    }
}

TEST(Json, AnObjectOfNamesAndValuesIsThatOfAnInitialiserList)
{
    const Json list = {{"b", 1.5}, {"a", "text"}, {"c", {1, 2}}, {"d", nullptr}, {"e", true}};
    const Json object =
        JsonObject("b", 1.5, "a", std::string("text"), "c", std::vector<int>{1, 2}, "d", Json(), "e", true);
    EXPECT_EQ(object, list);
    EXPECT_EQ(object.dump(), list.dump()) << "in the same order";
    EXPECT_EQ(JsonObject().dump(), "{}");
}

TEST(Json, AnEntryIsIndentedAsInTheWholeDocument)
{
    const Json entry = {{"a", {1, 2}}, {"b", {{"c", "two\nlines"}}}, {"e", Json::array()}};
    EXPECT_EQ("[\n" + IndentedJson(entry, 1) + ",\n" + IndentedJson(entry, 1) + "\n]\n", JsonText({entry, entry}));
    EXPECT_EQ(JsonLine(entry), entry.dump() + "\n");
}

TEST(Json, NumbersWithoutAFormInJsonAreNullAndIllFormedTextIsReplaced)
{
    EXPECT_EQ(JsonText({{"b", 0.1}, {"a", std::numeric_limits<double>::infinity()}, {"c", "\xFF"}}),
              "{\n  \"b\": 0.1,\n  \"a\": null,\n  \"c\": \"\xEF\xBF\xBD\"\n}\n");
}

} // namespace
} // namespace Keltrix::Host
