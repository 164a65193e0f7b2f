// Cutting a file into pieces: where it cuts, and that the pieces hold the same members with the same faults as the whole.

#include "memberfile/MemberPieces.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "PieceFindings.h"
#include "io/Failure.h"
#include "stream/MemberPieceReader.h"
#include "support/RandomCases.h"

namespace Keltrix::App {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Trial::CutInPieces;
using Trial::GOOD_MEMBER;
using Trial::TestDirectory;

std::vector<std::string> TextsOf(const std::vector<MemberPiece>& pieces)
{
    std::vector<std::string> texts;
    for (const MemberPiece& piece : pieces)
        texts.push_back(piece.bytes);
    return texts;
}

TEST(MemberCutter, APieceEndsBehindEachEndLine)
{
    const std::vector<MemberPiece> pieces = CutInPieces(GOOD_MEMBER + "\n\n" + GOOD_MEMBER + GOOD_MEMBER);
    EXPECT_THAT(TextsOf(pieces), ElementsAre(GOOD_MEMBER, "\n\n" + GOOD_MEMBER, GOOD_MEMBER));
    EXPECT_EQ(pieces[0].FirstLine(), 1);
    EXPECT_EQ(pieces[1].FirstLine(), 19);
    EXPECT_EQ(pieces[2].FirstLine(), 39);
    EXPECT_EQ(pieces[2].start.bytes, 2 * GOOD_MEMBER.size() + 2);
    EXPECT_FALSE(pieces[0].isBehindEnd);
    EXPECT_TRUE(pieces[1].isBehindEnd);
    EXPECT_TRUE(pieces[2].isBehindEnd);
}

TEST(MemberCutter, APieceIsThereAsSoonAsItsEndLineIs)
{
    MemberCutter cutter;
    cutter.Add(GOOD_MEMBER.substr(0, GOOD_MEMBER.size() - 1));
    EXPECT_FALSE(cutter.Next());
    cutter.Add("\n");
    ASSERT_TRUE(cutter.Next());
    EXPECT_FALSE(cutter.Next());
    EXPECT_FALSE(cutter.Rest());
}

TEST(MemberCutter, TheSameHoweverTheBytesCome)
{
    const std::string text = "remark\n" + GOOD_MEMBER + "\r\n" + GOOD_MEMBER + "rest";
    const std::vector<std::string> whole = TextsOf(CutInPieces(text));
    ASSERT_EQ(whole.size(), 3u);
    for (const std::size_t step : {1, 2, 3, 7, 64, 1000}) {
        const std::vector<MemberPiece> pieces = CutInPieces(text, step);
        EXPECT_EQ(TextsOf(pieces), whole) << step;
        EXPECT_EQ(pieces[2].FirstLine(), 39) << step;
    }
}

TEST(MemberCutter, AnEndLineIsKnownAsTheReaderKnowsIt)
{
    for (const char* end : {"END\n", "end\n", "END\r\n", " \tEnd \t\n", "END,x\n", "eNd ,\r\n"})
        EXPECT_EQ(CutInPieces(std::string("MEMBERPOINT,1\n") + end + "x\n").size(), 2u) << end;
    for (const char* other : {"ENDE\n", "EN D\n", "END\r\r\n", "\"END\"\n", "x,END\n",
                              "\xC2\xA0"
                              "END\n"})
        EXPECT_EQ(CutInPieces(std::string("MEMBERPOINT,1\n") + other + "x\n").size(), 1u) << other;
}

// Behind these lines the reader takes the next one whatever it is.
TEST(MemberCutter, AnEndLineThatTheReaderPassesOverEndsNothing)
{
    for (const char* line : {"ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2000\n", "EFFECTIVE_LENGTH_OVERRIDES,NO\n",
                             "EQUIVALENT_UNIFORM_MOMENT_FACTOR,0.9000\n"}) {
        std::string text = GOOD_MEMBER;
        const std::size_t at = text.find(line) + std::string(line).size();
        text.insert(at, "END\n");
        EXPECT_THAT(TextsOf(CutInPieces(text + GOOD_MEMBER)), ElementsAre(text, GOOD_MEMBER)) << line;
    }
}

TEST(MemberCutter, OnlyBlankLinesBehindTheLastMemberAreNoPiece)
{
    EXPECT_EQ(CutInPieces(GOOD_MEMBER + " \n\t\r\n\n").size(), 1u);
    EXPECT_THAT(TextsOf(CutInPieces(GOOD_MEMBER + "\nx")), ElementsAre(GOOD_MEMBER, "\nx"));
    EXPECT_THAT(TextsOf(CutInPieces("\n \n")), ElementsAre("\n \n")) << "a file without a member is to be reported";
}

TEST(MemberCutter, WhatIsTooLargeIsToldOnceAndTheNextMemberIsFound)
{
    const std::string line(1 << 20, ',');
    for (const bool hasLines : {false, true}) {
        MemberCutter cutter;
        std::vector<MemberPiece> pieces;
        const auto feed = [&](const std::string& bytes) {
            cutter.Add(bytes);
            while (auto piece = cutter.Next())
                pieces.push_back(*piece);
        };
        feed(GOOD_MEMBER);
        std::size_t fed = GOOD_MEMBER.size();
        for (std::size_t i = 0; i < 150; ++i) {
            feed(hasLines ? line + "\n" : line);
            fed += line.size() + (hasLines ? 1 : 0);
        }
        feed("\nEND\n" + GOOD_MEMBER);
        ASSERT_EQ(pieces.size(), 3u);
        EXPECT_TRUE(pieces[1].isTooLarge);
        EXPECT_EQ(pieces[1].FirstLine(), 19);
        EXPECT_EQ(pieces[1].bytes, "");
        EXPECT_EQ(pieces[2].bytes, GOOD_MEMBER);
        EXPECT_EQ(pieces[2].start.bytes, fed + 5);
        EXPECT_EQ(pieces[2].FirstLine(), hasLines ? 19 + 152 : 19 + 2);
        EXPECT_TRUE(pieces[2].isBehindEnd);
        EXPECT_FALSE(cutter.Rest());
    }
}

TEST(MemberPieceReader, OnlyTheOneMemberOfAFileOnDiskIsWhole)
{
    const TestDirectory directory;
    const auto isWhole = [](const std::string& path, std::istream& in) {
        MemberPieceReader reader(path, in);
        std::vector<MemberPiece> pieces;
        while (reader.Read(pieces)) {
        }
        return pieces.at(0).isWhole;
    };
    std::istringstream in(GOOD_MEMBER);
    EXPECT_TRUE(isWhole(directory.Write("one.csv", GOOD_MEMBER + "\n"), in));
    EXPECT_FALSE(isWhole(directory.Write("two.csv", GOOD_MEMBER + GOOD_MEMBER), in));
    EXPECT_FALSE(isWhole("-", in));
}

TEST(MemberPieceReader, AnEmptyFileIsRefused)
{
    std::istringstream in;
    MemberPieceReader reader("-", in);
    std::vector<MemberPiece> pieces;
    EXPECT_THROW(reader.Read(pieces), BadInput);
}

TEST(MemberFile, FaultsOfAPieceAreToldWithThePlaceInTheFile)
{
    const std::vector<MemberPiece> pieces = CutInPieces(GOOD_MEMBER + GOOD_MEMBER.substr(0, 18) + "\xE9\n");
    ASSERT_EQ(pieces.size(), 2u);
    try {
        const MemberFile file("f.csv", pieces[1]);
        FAIL() << "not refused";
    } catch (const BadInput& failure) {
        EXPECT_EQ(failure.what(), "f.csv: byte " + std::to_string(GOOD_MEMBER.size() + 18) +
                                      " (line 20, column 2) is not UTF-8 text; save the file as UTF-8");
    }
    MemberPiece large;
    large.start.lines = 41;
    large.isTooLarge = true;
    try {
        const MemberFile file("f.csv", large);
        FAIL() << "not refused";
    } catch (const BadInput& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("f.csv:42: no END line in 64 MiB"));
    }
}

TEST(MemberFile, AMarkInFrontOfAFileThatWasAppendedIsDropped)
{
    const std::vector<MemberPiece> pieces = CutInPieces(GOOD_MEMBER + "\xEF\xBB\xBF" + GOOD_MEMBER);
    ASSERT_EQ(pieces.size(), 2u);
    const MemberFile file("f.csv", pieces[1]);
    ASSERT_EQ(file.MemberCount(), 1u);
    EXPECT_FALSE(file.Member(0).hasErrors);
    EXPECT_TRUE(file.Check().defects.empty());
    EXPECT_EQ(file.NameOf(0), "f.csv:19");
}

// --- The pieces against the whole ---

// Answers the number of pieces, so that a test can count.
std::size_t ExpectPiecesLikeTheWhole(const std::string& text)
{
    std::istringstream in(text);
    Trial::PieceFindings whole;
    whole.Add(MemberFile(ReadText("-", in)));
    Trial::PieceFindings pieced;
    const std::vector<MemberPiece> pieces = CutInPieces(text);
    for (const MemberPiece& piece : pieces)
        pieced.Add(MemberFile("standard input", piece));
    EXPECT_EQ(whole.members, pieced.members) << text;
    EXPECT_EQ(whole.defects, pieced.defects) << text;
    return pieces.size();
}

TEST(MemberPieces, RandomFilesHaveTheSameMembersAndFaultsAsAWhole)
{
    const std::vector<std::string> lines = [] {
        std::vector<std::string> all = {"",
                                        "remark",
                                        "END",
                                        "end,x",
                                        "TITLE,another",
                                        "HEADINGS",
                                        "MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS,1",
                                        "MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS,1"};
        std::istringstream stream(GOOD_MEMBER);
        for (std::string line; std::getline(stream, line);)
            all.push_back(line);
        return all;
    }();
    std::mt19937 random(20261121);
    const auto below = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(random); };
    std::size_t pieces = 0;
    const auto files = static_cast<std::size_t>(TestSupport::RandomCases(8000));
    for (std::size_t i = 0; i < files && !::testing::Test::HasFailure(); ++i) {
        std::vector<std::string> file;
        for (std::size_t k = below(3) + 1; k > 0; --k)
            file.insert(file.end(), lines.begin() + 8, lines.end());
        for (std::size_t changes = below(6); changes > 0; --changes) {
            const auto at = file.begin() + static_cast<std::ptrdiff_t>(below(file.size()));
            switch (below(3)) {
            case 0:
                file.insert(at, lines[below(lines.size())]);
                break;
            case 1:
                *at = lines[below(lines.size())];
                break;
            default:
                if (file.size() > 1) file.erase(at);
            }
        }
        std::string text;
        for (const std::string& line : file)
            text += line + '\n';
        pieces += ExpectPiecesLikeTheWhole(text);
    }
    EXPECT_GT(pieces, files) << "most files of several members are cut";
}

} // namespace
} // namespace Keltrix::App
