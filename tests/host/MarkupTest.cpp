#include "text/Markup.h"

#include <random>

#include <gtest/gtest.h>

#include "memberfile/CodelessMember.h"
#include "text/Render.h"
#include "text/Text.h"

namespace Keltrix::Host {
namespace {

std::string Plain(std::string_view markup) { return RenderMarkup(markup, Rendering::Plain); }
std::string Ansi(std::string_view markup) { return RenderMarkup(markup, Rendering::Ansi); }

TEST(Markup, TagsDisappearFromPlainText)
{
    EXPECT_EQ(Plain("<h4>Flags:</h4>\n\t<red>FAIL</red>\n"), "Flags:\n  FAIL\n");
    EXPECT_EQ(Plain("a <b>b</b> <i>c</i>\n"), "a b c\n");
}

TEST(Markup, TerminalsGetStylesAndColours)
{
    EXPECT_EQ(Ansi("<red>FAIL</red> x\n"), "\x1B[31mFAIL\x1B[0m x\n");
    EXPECT_EQ(Ansi("<orange>W</orange><blue>N</blue>\n"), "\x1B[33mW\x1B[0m\x1B[34mN\x1B[0m\n");
    EXPECT_EQ(Ansi("<b><i>v</i></b>\n"), "\x1B[1;3mv\x1B[0m\n");
    EXPECT_EQ(Ansi("<h4>T</h4>\n"), "\x1B[1;4mT\x1B[0m\n");
}

// What a table leaves open ends with it.
TEST(Markup, TheAlignmentOfATableEndsWithIt)
{
    const std::string second = "<table>c\td\n1\t22\n333\t4\n</table>\n";
    const std::string alone = Plain(second);
    ASSERT_NE(alone, Plain("<table><align left>c\td\n1\t22\n333\t4\n</table>\n"));
    const std::string both = Plain("<table><align left>a\tb\n1\t2\n</table>\n" + second);
    ASSERT_GT(both.size(), alone.size());
    EXPECT_EQ(both.substr(both.size() - alone.size()), alone);
}

TEST(Markup, RawIsUntouched)
{
    EXPECT_EQ(RenderMarkup("<h4>x</h4>\n\t<zz>\x1B", Rendering::Raw), "<h4>x</h4>\n\t<zz>\x1B");
}

TEST(Markup, WhatIsNoTagIsText)
{
    EXPECT_EQ(Plain("a < b & c > d <unknown> </x> <\n"), "a < b & c > d <unknown> </x> <\n");
    EXPECT_EQ(Plain("<b\n"), "<b\n");
    EXPECT_EQ(Plain("<>"), "<>\n");
}

TEST(Markup, UnbalancedTagsEndWithTheirLine)
{
    EXPECT_EQ(Ansi("</b>a</red>\n<b>b\nc\n"), "a\n\x1B[1mb\x1B[0m\nc\n");
    EXPECT_EQ(Plain("<h4>title\nplain\n"), "title\nplain\n");
    EXPECT_EQ(Plain("</table></table>x\n<table>"), "x\n");
}

TEST(Markup, AUsersTextStandsAsItIs)
{
    const std::string title = "a <red>b</h4> & \t<table>\nc\x02";
    EXPECT_EQ(RenderMarkup("<h4>" + AsText(title) + "</h4>\nx", Rendering::Plain),
              "a <red>b</h4> &  <table>[U+000A]c\xEF\xBF\xBD\nx\n");
    EXPECT_EQ(RenderMarkup(AsText("<b>"), Rendering::Ansi), "<b>\n");
    EXPECT_EQ(RenderMarkup(AsText("<b>"), Rendering::Html), "<p>&lt;b&gt;</p>\n");
    EXPECT_EQ(RenderMarkup(AsText("<b>"), Rendering::Raw), "<b>");
}

TEST(Markup, ControlCharactersNeverReachTheTerminal)
{
    EXPECT_EQ(Plain("a\x1B]0;evil\x07z\r\n"), "a\xEF\xBF\xBD]0;evil\xEF\xBF\xBDz\xEF\xBF\xBD\n");
}

TEST(Markup, TablesLineUpInColumns)
{
    EXPECT_EQ(Plain("<table><align left>Ref\tPos\tRestraint\n1\t0 m\tPinned\n10\t12.5 m\tFree\n</align></table>\n"),
              "Ref  Pos     Restraint\n"
              "1    0 m     Pinned\n"
              "10   12.5 m  Free\n");
}

TEST(Markup, NumbersAreSetToTheRightAndTextsToTheLeft)
{
    EXPECT_EQ(Plain("<table>Name\tForce\nx\t1 kN\nlonger\t-10 kN\n</table>\n"), "Name     Force\n"
                                                                                "x         1 kN\n"
                                                                                "longer  -10 kN\n");
}

TEST(Markup, ALineOfCaptionsBelongsToTheLastColumnsAndANoteStandsAcross)
{
    EXPECT_EQ(
        Plain("<table>Ref\tFx\tRestraint\n<tablewrap><i>axial\t</i></tablewrap>\n1\t5 kN\tFree\n"
              "<tablebreak><blue><b>Note:</b> <i>a long note across all columns</i></blue></tablebreak></table>\n"),
        "Ref     Fx  Restraint\n"
        "     axial\n"
        "  1   5 kN  Free\n"
        "Note: a long note across all columns\n");
}

TEST(Markup, IndentedTablesKeepTheirIndentAndTheirColumns)
{
    EXPECT_EQ(Plain("\t\t<table>A\tB\n\t\t1\t2\n\t\t</table>\n\tnext\n"), "    A  B\n    1  2\n  next\n");
}

TEST(Markup, LabelsAndValuesOutsideTablesLineUp)
{
    EXPECT_EQ(Plain("\tLocalAxial                  \t<b>0.5</b>\n\tUtilOverAll                 \t<b>0.75</b>\n"),
              "  LocalAxial   0.5\n  UtilOverAll  0.75\n");
}

TEST(Markup, ACellBeyondSixtyColumnsDoesNotWidenItsColumn)
{
    const std::string wide(61, 'w');
    EXPECT_EQ(Plain("<table>A\tB\n" + wide + "\tx\ny\tz\n</table>\n"), "A  B\n" + wide + "  x\ny  z\n");
}

TEST(Markup, TheInputReportReadsAsIntended)
{
    CodelessMember member;
    Steel::CMemberResult result;
    member.SetResult(&result);
    result.ClearStrings();
    CSteelGrade grade;
    const CString text =
        L"TITLE,t\nSECTION,TUBE 100x5,FORMED\nGRADE,S355\nNET_TO_GROSS,1\n"
        L"ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\nSHEAR_LAG_FACTOR,0.7\n"
        L"EFFECTIVE_LENGTH_OVERRIDES,YES,-0.85,4,0\nHEADINGS\n"
        L"MEMBERPOINT,1,0,Pinned,0\nMEMBERPOINT,2,6,F1L,0.5\nSUBSPAN,1,1000,0,0,1000,0,0,0,0,0,0,0,0,Free,0\nEND\n";
    ASSERT_TRUE(member.CSVInputData(text, grade));
    member.SetGrade(grade);
    ASSERT_TRUE(member.Check());
    EXPECT_EQ(Plain(Utf8(result.GetVerbose())),
              "Input Data:\n"
              "  Section Data:\n"
              "    TUBE 100x5\n"
              "    Grade S355\n"
              "    Net to gross ratio 1, allowable plastic to elastic ratio 1.2, shear lag factor 0.7\n"
              "    Cold formed CHS section dimensions:\n"
              "      D  = 0.1\n"
              "      t = 0.005\n"
              "  Forces, Moments, Restraints, Effective Lengths and Calculation Overrides:\n"
              "    MemberPoints\n"
              "    Ref  Pos  Restraint\n"
              "    1    0 m  Pinned\n"
              "    2    6 m  F1L\n"
              "    SubSpans\n"
              "     Ref     Fx           Fy           Fz      Mxx        Myy        Mzz  Restraint\n"
              "          axial  shear (min)  shear (maj)  torsion  mom (maj)  mom (min)\n"
              "    0-1L   1 kN         0 kN         0 kN    0 kNm      0 kNm      0 kNm  Free\n"
              "    0-1R   1 kN         0 kN         0 kN    0 kNm      0 kNm      0 kNm  Free\n"
              "    Note: forces and moments in ZMD Axes\n"
              "    Effective Lengths\n"
              "      manually overridden...\n"
              "      Lxx = (0.85 * 6 m) = 5.1 m\n"
              "      Lyy = 4 m\n"
              "      Llt = 0 m\n");
}

// Whatever comes in, rendering ends, gives well-formed text without control characters, and no line ends in a blank.
TEST(Markup, AnyBytesAreRendered)
{
    constexpr unsigned seed = 4711;
    std::mt19937 random(seed);
    static constexpr std::string_view pieces[] = {"<table>",
                                                  "</table>",
                                                  "<align left>",
                                                  "</align>",
                                                  "<tablewrap>",
                                                  "</tablewrap>",
                                                  "<tablebreak>",
                                                  "</tablebreak>",
                                                  "<h4>",
                                                  "</h4>",
                                                  "<b>",
                                                  "</b>",
                                                  "<red>",
                                                  "</red>",
                                                  "<",
                                                  ">",
                                                  "/",
                                                  "\t",
                                                  "\n",
                                                  " ",
                                                  "text",
                                                  "1",
                                                  "-2 kN",
                                                  "\x1B",
                                                  "\xFF",
                                                  "\xC3",
                                                  "\xC3\xA9",
                                                  "&",
                                                  "<h6>",
                                                  "</i>"};
    for (int run = 0; run < 3000; ++run) {
        std::string markup;
        for (unsigned n = random() % 60; n > 0; --n)
            markup += pieces[random() % std::size(pieces)];
        const std::string text = Plain(markup);
        EXPECT_EQ(Printable(text), text) << "seed " << seed << ", mark-up " << markup;
        EXPECT_EQ(text.find(" \n"), std::string::npos) << "seed " << seed << ", mark-up " << markup;
        EXPECT_TRUE(text.empty() || text.back() == '\n');
        Ansi(markup);
    }
}

TEST(Markup, HugeLinesAreRenderedInBoundedSpace)
{
    EXPECT_LT(Plain("x" + std::string(1000000, '\t') + "\ny\tz\n").size(), 2000000u);
    EXPECT_EQ(Plain(std::string(1000000, 'x')).size(), 1000001u);
    std::string tags;
    for (int i = 0; i < 200000; ++i)
        tags += "<red><b><table>";
    EXPECT_EQ(Plain(tags + "x\n"), "x\n");
}

} // namespace
} // namespace Keltrix::Host
