#include "io/Input.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "io/Failure.h"
#include "io/Output.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::App {
namespace {

using Trial::TestDirectory;

std::string Refusal(const std::string& bytes)
{
    try {
        DecodeText("f.csv", bytes);
        return "no refusal";
    } catch (const BadInput& failure) {
        return failure.what();
    }
}

TEST(Input, IllFormedUtf8IsRefusedWithItsPlace)
{
    EXPECT_EQ(Refusal("TITLE,x\nSECTI\xE9N\n"),
              "f.csv: byte 13 (line 2, column 6) is not UTF-8 text; save the file as UTF-8");
    EXPECT_EQ(Refusal("\xEF\xBB\xBF\xC0\xAF"),
              "f.csv: byte 3 (line 1, column 4) is not UTF-8 text; save the file as UTF-8");
    EXPECT_EQ(Refusal(std::string("\xFF\xFET\0", 4)), "f.csv: byte 0 begins UTF-16 text; save the file as UTF-8");
}

TEST(Input, NulCharactersAreRefused)
{
    EXPECT_EQ(Refusal(std::string("TITLE\0x", 7)),
              "f.csv: byte 5 (line 1, column 6) is a NUL character, so this is no text file");
}

TEST(Input, AnEmptyFileIsRefused) { EXPECT_EQ(Refusal(""), "f.csv: is empty"); }

TEST(Input, AByteOrderMarkIsDropped) { EXPECT_EQ(DecodeText("f", "\xEF\xBB\xBFTITLE").text, L"TITLE"); }

TEST(Input, DashIsStandardInput)
{
    std::istringstream in("TITLE,x\n");
    const SourceText source = ReadText("-", in);
    EXPECT_EQ(source.name, "standard input");
    EXPECT_EQ(source.text, L"TITLE,x\n");
}

TEST(Input, AFileAboveTheLimitIsRefusedAlsoFromStandardInput)
{
    std::istringstream in(std::string(LARGEST_FILE + 1, ','));
    EXPECT_THROW(ReadBytes("-", in), BadInput);
}

TEST(Output, AFileIsWrittenWholeAndLeavesNothingBeside)
{
    const TestDirectory directory;
    WriteFile(directory.Path("a.svg"), "first");
    WriteFile(directory.Path("a.svg"), "second");
    EXPECT_EQ(Trial::ReadWhole(directory.Path("a.svg")), "second");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory.Path("")), {}), 1);
}

TEST(Output, AFileThatCannotBeWrittenIsToldAndLeavesNothing)
{
    const TestDirectory directory;
    EXPECT_THROW(WriteFile(directory.Path("missing/a.svg"), "x"), BadOutput);
    EXPECT_THROW(WriteFile(directory.Path(""), "x"), BadOutput);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory.Path("")), {}), 0);
}

TEST(Output, ADeviceKeepsItsName)
{
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "Left out: needs /dev/full";
    EXPECT_THROW(WriteFile("/dev/full", "x"), BadOutput);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
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
} // namespace Keltrix::App
