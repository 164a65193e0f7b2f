#include "MemberCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "Text.h"

namespace Keltrix::App {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Trial::GOOD_MEMBER;

std::vector<std::string> Defects(const std::string& text)
{
    const CString wide = Wide(text);
    std::vector<std::string> messages;
    for (const Defect& defect : CheckMemberFile(wide).defects)
        messages.push_back(defect.Text("floor.csv"));
    return messages;
}

// The good member with one line replaced; an empty line number of text removes it.
std::string WithLine(int number, const std::string& line)
{
    std::istringstream stream(GOOD_MEMBER);
    std::string text;
    std::string old;
    for (int i = 1; std::getline(stream, old); ++i)
        text += i == number ? line : old + '\n';
    return text;
}

std::vector<std::string> DefectsWithLine(int number, const std::string& line)
{
    return Defects(WithLine(number, line));
}

TEST(MemberCheck, AGoodMemberHasNoDefects) { EXPECT_THAT(Defects(GOOD_MEMBER), IsEmpty()); }

TEST(MemberCheck, WindowsLineEndsAndAnyCaseOfKeywordsAreFine)
{
    std::string text;
    for (const char c : GOOD_MEMBER)
        text += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_THAT(Defects(text), IsEmpty());
    EXPECT_THAT(DefectsWithLine(4, "grade,S275\n"), IsEmpty());
}

TEST(MemberCheck, ADecimalCommaInAPositionIsRecognised)
{
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,2,5m,Top flange lateral,0\n"),
                ElementsAre("floor.csv:13: MEMBERPOINT position: got \"2,5m\", expected a number in m; write 2.5"));
}

TEST(MemberCheck, ANumberWithTrailingLettersIsToldWithWhatToWriteAndOneThatIsNoneIsAnError)
{
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,2,2.5m,Top flange lateral,0\n"),
        ElementsAre("floor.csv:13: warning: MEMBERPOINT position: got \"2.5m\", expected a number in m; write 2.5"));
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,2,2500 mm,Top flange lateral,0\n").at(0),
        "floor.csv:13: warning: MEMBERPOINT position: got \"2500 mm\", expected a number in m; it is read as 2500");
    EXPECT_THAT(DefectsWithLine(5, "NET_TO_GROSS,full\n"),
                ElementsAre("floor.csv:5: NET_TO_GROSS net to gross ratio: got \"full\", expected a number"));
    EXPECT_THAT(DefectsWithLine(5, "NET_TO_GROSS,0,9\n"),
                ElementsAre("floor.csv:5: NET_TO_GROSS net to gross ratio: got \"0,9\", expected a number; write 0.9"));
}

TEST(MemberCheck, ACommaInATitleIsTold)
{
    EXPECT_THAT(
        DefectsWithLine(1, "TITLE,Beam, first floor\n"),
        ElementsAre("floor.csv:1: warning: TITLE title: got \"Beam, first floor\", expected a title without a comma; "
                    "it is read as \"Beam\", the rest is lost"));
}

TEST(MemberCheck, AnUnknownKeywordIsToldWithTheNearestOne)
{
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPONT,2,3,Top flange lateral,0\n"),
        ElementsAre("floor.csv:13: got \"MEMBERPONT\", expected a MEMBERPOINT, SUBSPAN or END line; the keyword is "
                    "unknown; write MEMBERPOINT",
                    "floor.csv:14: MEMBERPOINT index: got 3, expected 2, without a gap",
                    "floor.csv:18: END: got 2 MEMBERPOINT lines and 2 SUBSPAN lines, expected one SUBSPAN line less "
                    "than MEMBERPOINT lines"));
}

TEST(MemberCheck, ALineInTheWrongPlaceIsTold)
{
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,2,3,Top flange lateral,0\nGRADE,S355\n"),
        ElementsAre("floor.csv:14: GRADE: got \"GRADE\", expected a MEMBERPOINT, SUBSPAN or END line; the line is in "
                    "the wrong place"));
    EXPECT_THAT(DefectsWithLine(4, "NET_TO_GROSS,1\n").at(0),
                "floor.csv:4: NET_TO_GROSS: got \"NET_TO_GROSS\", expected a GRADE line here");
}

TEST(MemberCheck, ALoadHeightThatSinglePrecisionRoundsIsTold)
{
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,2,3,Top flange lateral,0.123456789\n"),
        ElementsAre("floor.csv:13: warning: MEMBERPOINT load height: got \"0.123456789\", expected at most seven "
                    "significant digits; single precision rounds it to 0.12345679"));
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,3,Top flange lateral,0.1\n"), IsEmpty());
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,3,Top flange lateral,16777217\n").size(), 1u);
}

TEST(MemberCheck, AMissingShearLagLineIsToldWhereItCostsNothing)
{
    EXPECT_THAT(
        DefectsWithLine(7, ""),
        ElementsAre("floor.csv:7: warning: HEADINGS: got \"HEADINGS\", expected a SHEAR_LAG_FACTOR line here; the "
                    "factor keeps the section's value"));
}

TEST(MemberCheck, AMissingShearLagLineThatCostsTheOverridesIsAnError)
{
    const std::string text = "TITLE,t\nSECTION,TUBE 100x5,FORMED\nGRADE,S355\nNET_TO_GROSS,1\n"
                             "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\nEFFECTIVE_LENGTH_OVERRIDES,NO\nHEADINGS\n"
                             "MEMBERPOINT,1,0,Pinned,0\nMEMBERPOINT,2,6,Pinned,0\n"
                             "SUBSPAN,1,0,0,0,0,0,0,0,0,0,0,0,0,Free,0\nEND\n";
    EXPECT_THAT(
        Defects(text),
        ElementsAre("floor.csv:6: warning: EFFECTIVE_LENGTH_OVERRIDES: got \"EFFECTIVE_LENGTH_OVERRIDES\", expected a "
                    "SHEAR_LAG_FACTOR line here; the line in its place is lost",
                    "floor.csv:8: MEMBERPOINT: got \"MEMBERPOINT\", expected an EFFECTIVE_LENGTH_OVERRIDES line here; "
                    "the one in line 6 was taken for the missing SHEAR_LAG_FACTOR line"));
}

TEST(MemberCheck, ExtraAndMissingFieldsAreTold)
{
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,2,3,Top flange lateral,0,7\n"),
        ElementsAre("floor.csv:13: warning: MEMBERPOINT: got 5 fields, expected 4 fields; those behind are not read"));
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,2,3\n"),
        ElementsAre("floor.csv:13: warning: MEMBERPOINT restraint: got nothing, expected a restraint as \"Pinned\" or "
                    "\"F1L TR\", or a number of bits; it is read as Free",
                    "floor.csv:13: warning: MEMBERPOINT load height: got nothing, expected a number in m; it is read "
                    "as 0"));
}

TEST(MemberCheck, ARestraintThatIsNotUnderstoodIsTold)
{
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,3,Pined,0\n"),
                ElementsAre("floor.csv:13: MEMBERPOINT restraint: got \"Pined\", expected a restraint as \"Pinned\" "
                            "or \"F1L TR\", or a number of bits; write Pinned"));
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,3,Top_flange_lateral,0\n").at(0),
                "floor.csv:13: MEMBERPOINT restraint: got \"Top_flange_lateral\", expected a restraint as \"Pinned\" "
                "or \"F1L TR\", or a number of bits; write Top flange lateral");
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,3,67,0\n"), IsEmpty()); // a number of bits
    EXPECT_EQ(DefectsWithLine(13, "MEMBERPOINT,2,3,MIN,0\n").size(), 1u);  // understood, but holds nothing
    EXPECT_EQ(DefectsWithLine(13, "MEMBERPOINT,2,3,99999999999,0\n").size(), 1u);
}

TEST(MemberCheck, ASectionThatIsNotInTheCatalogueIsToldWithTheNearestOnes)
{
    EXPECT_THAT(DefectsWithLine(3, "SECTION,UB 457x191x68,ROLLED\n").at(0),
                ::testing::StartsWith("floor.csv:3: SECTION description: got \"UB 457x191x68\", expected a catalogue "
                                      "section or a parametric description; nearest: UB 457x191x67, "));
    EXPECT_THAT(DefectsWithLine(3, "SECTION,RHS 200x100x6,3,ROLLED\n"),
                ElementsAre("floor.csv:3: SECTION description: got \"RHS 200x100x6,3\", expected a section without a "
                            "comma; write RHS 200x100x6.3"));
    EXPECT_THAT(
        DefectsWithLine(3, "SECTION,UB 457x191x67,RIVETED\n"),
        ElementsAre("floor.csv:3: warning: SECTION type: got \"RIVETED\", expected ROLLED, WELDED, FORMED or UNDEF, in "
                    "capitals; it is read as UNDEF"));
    EXPECT_THAT(
        DefectsWithLine(3, "SECTION,UB 457x191x67,FORMED\n"),
        ElementsAre("floor.csv:3: warning: SECTION type: got \"FORMED\", expected ROLLED, as the catalogue has this "
                    "section; it is read as written"));
}

TEST(MemberCheck, LayoutFaultsHaveTheirPlace)
{
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,2,7,Free,0\n"),
        ElementsAre("floor.csv:14: MEMBERPOINT position: got 6, expected a position beyond 7 of the point in line 13"));
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,2,6,Free,0\n"),
        ElementsAre("floor.csv:14: MEMBERPOINT position: got 6, expected another position than that of the point in "
                    "line 13"));
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,3,3,Free,0\n"),
        ElementsAre(
            "floor.csv:13: MEMBERPOINT index: got 3, expected 2, without a gap",
            "floor.csv:14: MEMBERPOINT index: got 3, expected another index than that of the point in line 13"));
    EXPECT_THAT(
        DefectsWithLine(17, "SUBSPAN,1,0,0,0,0,0,0,0,0,0,0,0,0,Free,0\n"),
        ElementsAre("floor.csv:17: SUBSPAN index: got 1, expected another index than that of the sub-span in line 16"));
    EXPECT_THAT(
        DefectsWithLine(17, "SUBSPAN,3,0,0,0,0,0,0,0,0,0,0,0,0,Free,0\n"),
        ElementsAre(
            "floor.csv:17: warning: SUBSPAN index: got 3, expected 2; sub-spans lie between the points one after "
            "another, whatever their indices"));
    EXPECT_THAT(
        DefectsWithLine(17, "SUBSPAN,2,nan,0,0,0,0,0,0,0,0,0,0,0,Free,0\n"),
        ElementsAre(
            "floor.csv:17: warning: SUBSPAN Fx-L: got \"nan\", expected a number in N that is finite; it is read "
            "as nan",
            "floor.csv:17: SUBSPAN: got a value that is not a finite number, expected forces, moments and load "
            "height that are numbers"));
}

TEST(MemberCheck, AFirstPointWithoutACaptionAboveItIsLost)
{
    std::vector<std::string> defects = DefectsWithLine(11, "");
    ASSERT_EQ(defects.size(), 2u);
    EXPECT_THAT(defects[0],
                ::testing::HasSubstr("floor.csv:11: warning: MEMBERPOINT: got \"MEMBERPOINT\", expected a HEADINGS "
                                     "line in front of the points; the line in its place is lost"));
    EXPECT_THAT(defects[1], ::testing::HasSubstr("got 2 MEMBERPOINT lines and 2 SUBSPAN lines"));
}

TEST(MemberCheck, MomentAmplificationLinesAreRefused)
{
    EXPECT_THAT(
        DefectsWithLine(10, "MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS,1.1\n"),
        ElementsAre("floor.csv:10: MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS: got "
                    "\"MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS,1.1\", expected no such line; moment amplification "
                    "factors are not supported by the design codes of this program"));
}

TEST(MemberCheck, AllDefectsOfAFileAreToldInOneRun)
{
    std::string text = GOOD_MEMBER;
    const auto replace = [&](const std::string& from, const std::string& to) {
        text.replace(text.find(from), from.size(), to);
    };
    replace("GRADE,S275\n", "");                        // line 4 is now NET_TO_GROSS
    replace("ELASTIC_RATIO,1.2000", "ELASTIC_RATIO,x"); // line 5
    replace("OVERRIDES,NO", "OVERRIDES,PERHAPS");       // line 8
    replace("3,6,Pinned", "3,2,Pinned");                // line 13
    replace("END\n", "");
    std::vector<LineNumber> lines;
    for (const Defect& defect : CheckMemberFile(Wide(text)).defects)
        lines.push_back(defect.line);
    EXPECT_THAT(lines, ElementsAre(4, 5, 8, 13, 17));
}

TEST(MemberCheck, AFileMayHoldSeveralMembers)
{
    const CString text = Wide(GOOD_MEMBER + "\n\n" + GOOD_MEMBER + "remark\n" + GOOD_MEMBER);
    const FileCheck check = CheckMemberFile(text);
    ASSERT_EQ(check.members.size(), 3u);
    EXPECT_EQ(check.members[0].firstLine, 1);
    EXPECT_EQ(check.members[1].firstLine, 21);
    EXPECT_EQ(check.members[2].firstLine, 40);
    for (const MemberText& member : check.members) {
        EXPECT_EQ(Utf8(member.text), GOOD_MEMBER);
        EXPECT_FALSE(member.hasErrors);
    }
    ASSERT_EQ(check.defects.size(), 1u);
    EXPECT_EQ(check.defects[0].Text("f"), "f:39: warning: got \"remark\", expected nothing, or the TITLE line of "
                                          "another member; lines behind END are not "
                                          "read");
}

TEST(MemberCheck, AMemberWithoutEndDoesNotSpoilTheNext)
{
    const std::string cut = GOOD_MEMBER.substr(0, GOOD_MEMBER.find("END"));
    const CString text = Wide(cut + GOOD_MEMBER);
    const FileCheck check = CheckMemberFile(text);
    ASSERT_EQ(check.members.size(), 2u);
    EXPECT_TRUE(check.members[0].hasErrors);
    EXPECT_FALSE(check.members[1].hasErrors);
    EXPECT_EQ(Utf8(check.members[1].text), GOOD_MEMBER);
}

// The reader takes "yes" for NO: lengths that somebody gave would be lost.
TEST(MemberCheck, SmallLettersWhereTheReaderWantsCapitalsAreTold)
{
    EXPECT_THAT(DefectsWithLine(9, "EFFECTIVE_LENGTH_OVERRIDES,yes,1,2,3\n"),
                ElementsAre("floor.csv:9: EFFECTIVE_LENGTH_OVERRIDES word: got \"yes\", expected YES or NO; write YES, "
                            "in capitals"));
    EXPECT_THAT(DefectsWithLine(9, "EFFECTIVE_LENGTH_OVERRIDES,no\n"), ElementsAre());
    EXPECT_THAT(DefectsWithLine(3, "SECTION,UB 457x191x67,rolled\n"),
                ElementsAre("floor.csv:3: warning: SECTION type: got \"rolled\", expected ROLLED, WELDED, FORMED or "
                            "UNDEF, in capitals; it is read as UNDEF"));
}

TEST(MemberCheck, ATextThatIsNoMemberHasOneErrorForEachLineUpToALimit)
{
    EXPECT_THAT(Defects("hello"),
                ElementsAre("floor.csv:1: got \"hello\", expected a TITLE line here; the keyword is unknown"));
    std::string lines;
    for (int i = 0; i < 5000; ++i)
        lines += "x\n";
    const FileCheck check = CheckMemberFile(Wide(lines));
    EXPECT_EQ(check.defects.size(), 1001u);
    EXPECT_EQ(check.defects.back().Message(), "4000 further defects not listed; mend those above first");
}

TEST(MemberCheck, ATenMegabyteLineIsCheckedInOnePass)
{
    const std::string commas(10 << 20, ',');
    EXPECT_EQ(Defects(commas).size(), 1u);
    EXPECT_EQ(DefectsWithLine(1, "TITLE," + commas + "\n").size(), 1u);
    EXPECT_FALSE(DefectsWithLine(13, "MEMBERPOINT" + commas + "\n").empty());
    EXPECT_FALSE(DefectsWithLine(16, "SUBSPAN" + commas + "\n").empty());
    EXPECT_FALSE(DefectsWithLine(3, "SECTION," + std::string(10 << 20, 'x') + "\n").empty());
    EXPECT_FALSE(DefectsWithLine(13, "MEMBERPOINT,2,3," + std::string(1 << 20, 'F') + ",0\n").empty());
}

} // namespace
} // namespace Keltrix::App
