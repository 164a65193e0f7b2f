#include "memberfile/MemberCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "text/Text.h"

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

// What a number with its unit is in the unit of the field.
TEST(MemberCheck, UnitsAreConverted)
{
    const auto advice = [](const std::vector<std::string>& defects) {
        for (const std::string& defect : defects)
            if (const auto at = defect.rfind("write "); at != std::string::npos) return defect.substr(at);
        return std::string("no advice");
    };
    const auto position = [&](const std::string& value) {
        return advice(DefectsWithLine(13, "MEMBERPOINT,2," + value + ",Top flange lateral,0\n"));
    };
    const auto subSpan = [&](const std::string& force, const std::string& moment) {
        return advice(DefectsWithLine(17, "SUBSPAN,2,0,0," + force + ",0,0,0,0," + moment + ",0,0,0,0,Free,0\n"));
    };
    const auto strength = [&](const std::string& value) {
        return advice(DefectsWithLine(4, "GRADE,User_defined," + value + ",410e6,0,1\n"));
    };
    EXPECT_EQ(position("2.5m"), "write 2.5");
    EXPECT_EQ(position("250cm"), "write 2.5");
    EXPECT_EQ(position("2500mm"), "write 2.5");
    EXPECT_EQ(subSpan("12N", "0"), "write 12");
    EXPECT_EQ(subSpan("12kN", "0"), "write 12000");
    EXPECT_EQ(subSpan("12MN", "0"), "write 12000000");
    EXPECT_EQ(subSpan("0", "12Nm"), "write 12");
    EXPECT_EQ(subSpan("0", "12kNm"), "write 12000");
    EXPECT_EQ(subSpan("0", "12MNm"), "write 12000000");
    EXPECT_EQ(strength("275000000Pa"), "write 275000000");
    EXPECT_EQ(strength("275000kPa"), "write 275000000");
    for (const char* const unit : {"MPa", "N/mm2", "N/mm²"})
        EXPECT_EQ(strength(std::string("275") + unit), "write 275000000") << unit;
    EXPECT_EQ(strength("0.275GPa"), "write 275000000");
}

TEST(MemberCheck, ANumberWithTrailingLettersIsToldWithWhatToWriteAndOneThatIsNoneIsAnError)
{
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,2.5m,Top flange lateral,0\n"),
                ElementsAre("floor.csv:13: MEMBERPOINT position: got \"2.5m\", expected a number in m; write 2.5"));
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,2500 mm,Top flange lateral,0\n").at(0),
                "floor.csv:13: MEMBERPOINT position: got \"2500 mm\", expected a number in m; write 2.5");
    const auto subSpan = [](const std::string& shear, const std::string& moment) {
        return DefectsWithLine(17, "SUBSPAN,2,0,0," + shear + ",0,0,5000,0," + moment + ",0,0,0,0,Free,0\n");
    };
    EXPECT_THAT(subSpan("-126.75kN", "-15000"),
                ElementsAre("floor.csv:17: SUBSPAN Fz-L: got \"-126.75kN\", expected a number in N; write -126750"));
    EXPECT_THAT(subSpan("-126 750", "-15000"),
                ElementsAre("floor.csv:17: SUBSPAN Fz-L: got \"-126 750\", expected a number in N; write -126750"));
    EXPECT_THAT(subSpan("5000", "-15kNm"),
                ElementsAre("floor.csv:17: SUBSPAN My-L: got \"-15kNm\", expected a number in N·m; write -15000"));
    EXPECT_THAT(subSpan("5000", "-15 kN"),
                ElementsAre("floor.csv:17: SUBSPAN My-L: got \"-15 kN\", expected a number in N·m"));
    EXPECT_THAT(subSpan("5000", "-15m"),
                ElementsAre("floor.csv:17: SUBSPAN My-L: got \"-15m\", expected a number in N·m"));
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
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,3,Top flange lateral,16777217\n").size(), 2u); // and far too high
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
        ElementsAre("floor.csv:6: EFFECTIVE_LENGTH_OVERRIDES: got \"EFFECTIVE_LENGTH_OVERRIDES\", expected a "
                    "SHEAR_LAG_FACTOR line here; the line in its place is lost",
                    "floor.csv:8: MEMBERPOINT: got \"MEMBERPOINT\", expected an EFFECTIVE_LENGTH_OVERRIDES line here; "
                    "the one in line 6 was taken for the missing SHEAR_LAG_FACTOR line"));
}

TEST(MemberCheck, ExtraAndMissingFieldsAreTold)
{
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,2,3,Top flange lateral,0.5,7\n"),
        ElementsAre("floor.csv:13: MEMBERPOINT: got 5 fields, expected 4 fields; is there a comma within a number?"));
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,2,3\n"),
        ElementsAre("floor.csv:13: MEMBERPOINT: got 2 fields, expected 4 fields; the restraint and what follows "
                    "it are missing"));
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,3,,0\n").at(0),
                ::testing::AllOf(
                    ::testing::StartsWith("floor.csv:13: MEMBERPOINT restraint: got nothing, expected one of Free, "),
                    ::testing::EndsWith("write Free where nothing is held")));
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,,Free,0\n").at(0),
                "floor.csv:13: MEMBERPOINT position: got nothing, expected a number in m; write 0 where that is meant");
    EXPECT_THAT(
        DefectsWithLine(16, "SUBSPAN,1\n"),
        ElementsAre("floor.csv:16: SUBSPAN: got 1 field, expected 15 fields; Fx-L and what follows it are missing"));
    EXPECT_THAT(DefectsWithLine(16, "SUBSPAN,1,0,0,-5000,0,0,-5000,0,0,0,0,-15000,0,Free\n"),
                ElementsAre("floor.csv:16: SUBSPAN: got 14 fields, expected 15 fields; the load height is missing"));
    EXPECT_THAT(DefectsWithLine(9, "EFFECTIVE_LENGTH_OVERRIDES,YES,6,,3\n").size(), 1u);
    EXPECT_THAT(DefectsWithLine(10, "EQUIVALENT_UNIFORM_MOMENT_FACTOR\n").size(), 1u);
}

// 0.2 m above the shear centre with a decimal comma would be 0 m, and a load that destabilises one that does not.
TEST(MemberCheck, ADecimalCommaInALoadHeightIsAnError)
{
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,3,Top flange lateral,0,2\n"),
                ElementsAre("floor.csv:13: MEMBERPOINT load height: got \"0,2\", expected a number in m; write 0.2"));
    EXPECT_THAT(DefectsWithLine(17, "SUBSPAN,2,0,0,5000,0,0,5000,0,-15000,0,0,0,0,Free,0,2\n"),
                ElementsAre("floor.csv:17: SUBSPAN load height: got \"0,2\", expected a number in m; write 0.2"));
}

TEST(MemberCheck, ARestraintThatIsNotUnderstoodIsTold)
{
    EXPECT_THAT(
        DefectsWithLine(13, "MEMBERPOINT,2,3,Pined,0\n"),
        ElementsAre("floor.csv:13: MEMBERPOINT restraint: got \"Pined\", expected one of Free, None, Pin, Pinned, Fix, "
                    "Fixed, Encastre, Full rotational, Partial rotational, Top flange lateral, Bottom flange lateral, "
                    "Top and Bottom flange lateral, a code as \"F1L TR\", or a number of bits; write Pinned"));
    EXPECT_THAT(DefectsWithLine(13, "MEMBERPOINT,2,3,Top_flange_lateral,0\n").at(0),
                ::testing::EndsWith("write Top flange lateral"));
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
            "floor.csv:17: SUBSPAN index: got 3, expected 2, without a gap; is a line lost above it? --allow-gaps "
            "permits other numbers"));
    EXPECT_THAT(
        DefectsWithLine(17, "SUBSPAN,2,nan,0,0,0,0,0,0,0,0,0,0,0,Free,0\n"),
        ElementsAre("floor.csv:17: SUBSPAN Fx-L: got \"nan\", expected a number in N that is finite",
                    "floor.csv:17: SUBSPAN: got a value that is not a finite number, expected forces, moments and load "
                    "height that are numbers"));
}

TEST(MemberCheck, AFirstPointWithoutACaptionAboveItIsLost)
{
    std::vector<std::string> defects = DefectsWithLine(11, "");
    ASSERT_EQ(defects.size(), 2u);
    EXPECT_THAT(defects[0], ::testing::HasSubstr("floor.csv:11: MEMBERPOINT: got \"MEMBERPOINT\", expected a HEADINGS "
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
                                          "another member; lines after END are not "
                                          "read; a comment starts with #");
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
    EXPECT_THAT(DefectsWithLine(9, "EFFECTIVE_LENGTH_OVERRIDES,NO,6\n"),
                ElementsAre(::testing::HasSubstr("got 2 fields, expected 1 field")));
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

// The first point and the first sub-span, lost together, leave a member in which all fits.
TEST(MemberCheck, NumbersStartAtOneAndPositionsAtZeroUnlessGapsAreAllowed)
{
    std::string text = WithLine(16, "");
    text.replace(text.find("MEMBERPOINT,1,0,Pinned,0\n"), 25, "");
    EXPECT_THAT(Defects(text), ::testing::IsSupersetOf(
                                   {"floor.csv:12: MEMBERPOINT index: got 2, expected 1 for the first one; is a line "
                                    "lost above it? --allow-gaps permits other numbers",
                                    "floor.csv:12: MEMBERPOINT position: got 3, expected 0 for the first point; is a "
                                    "line lost above it? --allow-gaps permits another start",
                                    "floor.csv:15: SUBSPAN index: got 2, expected 1 for the first one; is a line lost "
                                    "above it? --allow-gaps permits other numbers"}));
    ReadingOptions gaps;
    gaps.allowGaps = true;
    const CString wide = Wide(text);
    EXPECT_EQ(CheckMemberFile(wide, gaps).Errors(), 0u);
    const CString gap = Wide(WithLine(17, "SUBSPAN,7,0,0,5000,0,0,5000,0,-15000,0,0,0,0,Free,0\n"));
    EXPECT_EQ(CheckMemberFile(gap).Errors(), 1u);
    EXPECT_EQ(CheckMemberFile(gap, gaps).defects.size(), 0u);
}

TEST(MemberCheck, WarningsAreErrorsWhereReadingIsStrictAndNotesAreNot)
{
    ReadingOptions strict;
    strict.isStrict = true;
    const CString comma = Wide(WithLine(1, "TITLE,Beam, first floor\n"));
    EXPECT_EQ(CheckMemberFile(comma).Warnings(), 1u);
    EXPECT_EQ(CheckMemberFile(comma, strict).Errors(), 1u);
    EXPECT_TRUE(CheckMemberFile(comma, strict).members.at(0).hasErrors);
    const CString stray = Wide(GOOD_MEMBER + "remark\n");
    const FileCheck check = CheckMemberFile(stray, strict);
    EXPECT_EQ(check.Errors(), 1u);
    EXPECT_FALSE(check.members.at(0).hasErrors) << "the line is of no member";
    const CString high = Wide(WithLine(13, "MEMBERPOINT,2,3,Top flange lateral,400\n"));
    EXPECT_EQ(CheckMemberFile(high, strict).Notes(), 1u);
    EXPECT_EQ(CheckMemberFile(high, strict).Errors(), 0u);
}

TEST(MemberCheck, ForcesThatDoNotBelongTogetherAreWarnings)
{
    // 5 kN over 3 m make 15 kN·m, not 14; from there on 14 kN·m become 0 over 3 m, which 5 kN do not.
    EXPECT_THAT(
        DefectsWithLine(16, "SUBSPAN,1,0,0,-5000,0,0,-5000,0,0,0,0,-14000,0,Free,0\n"),
        ElementsAre(
            "floor.csv:13: warning: MEMBERPOINT: got My = -14000 N·m on its left and -15000 N·m on its right, expected "
            "the "
            "same moment on both sides of a point; checked as it stands; is a moment lost, or does a couple act at "
            "the point?",
            "floor.csv:16: warning: SUBSPAN: forces do not balance in sub-span 1 (0 m to 3 m), Myy: by the shears "
            "the moment changes by -15 kNm, by the end moments by -14 kNm. The moment in between is not known; "
            "the worst of three readings is checked. A load inside the sub-span? Divide there. A sign? dMyy/dx = "
            "Fz"));
    // Six significant digits are no contradiction.
    EXPECT_THAT(DefectsWithLine(16, "SUBSPAN,1,0,0,-5000,0,0,-5000,0,0,0,0,-15000.1,0,Free,0\n"), IsEmpty());
    // Mzz changes by -Fy.
    EXPECT_THAT(DefectsWithLine(16, "SUBSPAN,1,0,100,-5000,0,100,-5000,0,0,300,0,-15000,0,Free,0\n"), IsEmpty());
    EXPECT_THAT(DefectsWithLine(16, "SUBSPAN,1,0,-100,-5000,0,-100,-5000,0,0,300,0,-15000,0,Free,0\n").size(), 1u);
}

TEST(MemberCheck, WhatLooksUnlikeAMemberIsNoted)
{
    const auto codes = [](const std::string& text) {
        std::vector<std::string> found;
        const CString wide = Wide(text);
        for (const Defect& defect : CheckMemberFile(wide).defects) {
            EXPECT_EQ(defect.severity, Severity::Note) << defect.Text("f");
            found.push_back(defect.code);
        }
        return found;
    };
    const auto replaced = [](const std::vector<std::pair<std::string, std::string>>& changes) {
        std::string text = GOOD_MEMBER;
        for (const auto& [from, to] : changes)
            for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
                text.replace(at, from.size(), to);
        return text;
    };
    EXPECT_THAT(codes(GOOD_MEMBER), IsEmpty());
    EXPECT_THAT(codes(replaced({{"5000", "5"}})), ElementsAre("small-forces")); // kN and kN·m
    EXPECT_THAT(codes(replaced({{"2,3,Top", "2,3000,Top"}, {"3,6,Pin", "3,6000,Pin"}, {"15000", "15000000"}})),
                ElementsAre("long-member"));
    EXPECT_THAT(codes(replaced({{"Pinned", "F1L F2L"}})), ElementsAre("no-support"));
    EXPECT_THAT(codes(replaced({{"Top flange lateral", "Bottom flange lateral"}})), ElementsAre("idle-flange"));
    EXPECT_THAT(codes(replaced({{"3,6,Pinned", "3,6,Free"}, {"0,0,5000,0,0,5000", "9000,0,5000,9000,0,5000"}})),
                ElementsAre("loaded-free-end"));
}

TEST(MemberCheck, AMemberThatNothingHoldsLaterallyIsAWarning)
{
    std::string text = GOOD_MEMBER;
    for (const auto& [from, to] :
         {std::pair("Top flange lateral", "Free"), {"0,Pinned", "0,MAJV TR"}, {"6,Pinned", "6,MAJV TR"}})
        text.replace(text.find(from), std::string(from).size(), to);
    EXPECT_THAT(
        Defects(text),
        ElementsAre(
            "floor.csv:12: warning: MEMBERPOINT restraint: got no point and no sub-span that is held laterally, "
            "expected at least one lateral support; nothing keeps the member from moving sideways, which the "
            "rules of sections that do not buckle laterally do not look at"));
    // One flange at one place is enough not to be told.
    text.replace(text.find("MAJV TR"), 7, "MAJV TR F1L");
    EXPECT_THAT(Defects(text), IsEmpty());
}

TEST(MemberCheck, ValuesThatAddStrengthOrLeaveBucklingOutAreNoted)
{
    const std::string grade = "floor.csv:4: note: GRADE ";
    EXPECT_THAT(DefectsWithLine(4, "GRADE,User_defined,300e6,400e6,205e9,0.1\n"),
                ElementsAre(grade + "material factor: got 0.1, expected 1 or above; below 1 it adds to the strength"));
    EXPECT_THAT(DefectsWithLine(4, "GRADE,User_defined,275e9,0,0,1\n"),
                ElementsAre(grade + "Py: got 2.75e+11 Pa, expected at most 1e+09 Pa in steel; is it in Pa?"));
    EXPECT_THAT(DefectsWithLine(4, "GRADE,User_defined,300e6,400e9,205e12,1\n").size(), 2u);
    EXPECT_THAT(DefectsWithLine(4, "GRADE,User_defined,960e6,980e6,210e9,1\n"), IsEmpty());

    const auto lengths = [](const std::string& fields) {
        return DefectsWithLine(9, "EFFECTIVE_LENGTH_OVERRIDES,YES," + fields + "\n");
    };
    EXPECT_THAT(lengths("6,6,3"), IsEmpty());
    EXPECT_THAT(lengths("-0.85,-1,-1.2"), IsEmpty());
    EXPECT_THAT(lengths("6,6,1.5"), IsEmpty()) << "purlins";
    EXPECT_THAT(
        lengths("0.85,1,1.2"),
        ElementsAre("floor.csv:9: note: EFFECTIVE_LENGTH_OVERRIDES: got effective lengths up to 1.2 m, expected "
                    "lengths in m in a member of 6 m; are they factors? write a factor below zero"));
    EXPECT_THAT(lengths("6,6,0"),
                ElementsAre("floor.csv:9: note: EFFECTIVE_LENGTH_OVERRIDES lateral-torsional length: got 0, expected a "
                            "length, or a factor below zero; with 0 the member is not checked for this buckling"));
    EXPECT_THAT(lengths("0,0,0").size(), 3u);

    EXPECT_THAT(
        DefectsWithLine(10, "EQUIVALENT_UNIFORM_MOMENT_FACTOR,0.04\nHEADINGS\n"),
        ElementsAre("floor.csv:10: note: EQUIVALENT_UNIFORM_MOMENT_FACTOR factor: got 0.04, expected 0.4 or above, "
                    "as the rules for it give; it lowers the moments that are checked for buckling"));
    EXPECT_THAT(DefectsWithLine(10, "EQUIVALENT_UNIFORM_MOMENT_FACTOR,0.44\nHEADINGS\n"), IsEmpty());
}

// A toe radius of 30 mm in a flange of 10 mm.
TEST(MemberCheck, DimensionsThatDoNotFitTogetherAreAnError)
{
    EXPECT_THAT(
        DefectsWithLine(3, "SECTION,C 200x80x8x10x5x30,ROLLED\n"),
        ElementsAre("floor.csv:3: SECTION description: got \"C 200x80x8x10x5x30\", expected dimensions that fit "
                    "together to a section"));
    EXPECT_THAT(DefectsWithLine(3, "SECTION,C 200x80x8x10x5x3,ROLLED\n"), IsEmpty());
}

TEST(MemberCheck, AFileWithOtherSeparatorsHasOneMessage)
{
    const auto separated = [](char separator) {
        std::string text = GOOD_MEMBER;
        std::replace(text.begin(), text.end(), ',', separator);
        return text;
    };
    const std::string how =
        ", expected commas between fields, and no quotation marks; save it as CSV with commas between fields, a point "
        "in numbers and no quotation marks";
    EXPECT_THAT(Defects(separated(';')),
                ElementsAre("floor.csv:1: got a file with semicolons between its fields" + how));
    EXPECT_THAT(Defects(separated('\t')), ElementsAre("floor.csv:1: got a file with tabs between its fields" + how));
    std::string quoted = GOOD_MEMBER;
    for (std::size_t at = 0; (at = quoted.find(',', at)) != std::string::npos; at += 3)
        quoted.replace(at, 1, "\",\"");
    for (std::size_t at = 0; (at = quoted.find('\n', at)) != std::string::npos; at += 3)
        quoted.replace(at, 1, at + 1 < quoted.size() ? "\"\n\"" : "\"\n");
    EXPECT_THAT(Defects('"' + quoted),
                ElementsAre("floor.csv:1: got a file with quotation marks around its fields" + how));
}

TEST(MemberCheck, LinesThatStartWithAHashAreCommentsOutsideOfMembers)
{
    const CString text =
        Wide("# forces of run 12\n\n# second line\n" + GOOD_MEMBER + "# between\n\n" + GOOD_MEMBER + "# end\n");
    const FileCheck check = CheckMemberFile(text);
    EXPECT_THAT(check.defects, IsEmpty());
    ASSERT_EQ(check.members.size(), 2u);
    EXPECT_EQ(check.members[0].firstLine, 4);
    EXPECT_EQ(Utf8(check.members[0].text), GOOD_MEMBER);
    EXPECT_THAT(DefectsWithLine(5, "# inside\nNET_TO_GROSS,1\n"), ::testing::Not(IsEmpty()));
}

TEST(MemberCheck, EmptyFieldsOfASpreadsheetAreOneWarning)
{
    std::string text = GOOD_MEMBER;
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 4)
        text.insert(at, ",,,");
    EXPECT_THAT(
        Defects(text + ",,,,\n"),
        ElementsAre(
            "floor.csv:1: warning: TITLE: got empty fields after the last one, expected none; they are not read, here "
            "and in all lines of this member"));
}

// However many defects a file has, each member of it says why it is refused.
TEST(MemberCheck, EachMemberKeepsAReasonOfItsOwn)
{
    std::string text;
    for (int i = 0; i < 1500; ++i)
        text += WithLine(13, "MEMBERPOINT,2,x,Free,0\n");
    const CString wide = Wide(text);
    const FileCheck check = CheckMemberFile(wide);
    ASSERT_EQ(check.members.size(), 1500u);
    for (std::size_t i = 0; i < check.members.size(); ++i)
        ASSERT_FALSE(check.DefectsOf(i).empty()) << i;
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
