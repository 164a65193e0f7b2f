#include "io/Input.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "io/Failure.h"
#include "io/Output.h"
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

} // namespace
} // namespace Keltrix::App
