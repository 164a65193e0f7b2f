// The three reports of a result.

#include "support/ResultRecord.h"

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

const std::string localHeading = "<h4>Local capacity checks:</h4>\n";
const std::string along = "<h5>Checks along member:</h5>\n";
const std::string critical = "<h5>Checks critical sub_spans:</h5>\n";

void SetAt(CMemberResult& result, int position, ResultSetter set, double util)
{
    result.SetCurSubSpan(position);
    (result.*set)(util);
}

struct SummaryLine {
    const char* label;
    int loadFlags; ///< shown when any of these is set; -1: always
};
constexpr SummaryLine summaryLines[] = {
    {"\tLocalAxial                  \t<b>", 0x1}, {"\tLocalMomMajor               \t<b>", 0x2},
    {"\tLocalMomMinor               \t<b>", 0x4}, {"\tLocalShearMajor             \t<b>", 0x2},
    {"\tLocalShearMinor             \t<b>", 0x4}, {"\tLocalTorsion                \t<b>", 0x8},
    {"\tBucklingAxialMajor          \t<b>", 0x1}, {"\tBucklingAxialMinor          \t<b>", 0x1},
    {"\tBucklingAxialTorsion        \t<b>", 0x1}, {"\tBucklingAxialFlexuralTorsion\t<b>", 0x1},
    {"\tBucklingLT                  \t<b>", 0x6}, {"\tBucklingCombined            \t<b>", -1},
    {"\tLocalCombined               \t<b>", -1},  {"\tUtilOverAll                 \t<b>", -1},
};

struct FlagLine {
    const char* text;
    int flag;
};
constexpr FlagLine flagLines[] = {
    {"\t<blue>NOTIFY</blue>\n", 0x1},
    {"\t<orange>WARNING</orange>\n", 0x2},
    {"\t<red>FAIL</red>\n", 0x4},
    {"\t<red>NOT CHECKED</red>\n", 0x8},
    {"\t<red>FAIL LOCAL</red>\n", 0x10},
    {"\t<red>FAIL BUCKLE</red>\n", 0x20},
    {"\t<red>FAIL BUCKLE LAT_TORS</red>\n", 0x100},
    {"\t<red>FAIL BUCKLE AXIAL MAJOR</red>\n", 0x200},
    {"\t<red>FAIL BUCKLE AXIAL MINOR</red>\n", 0x400},
    {"\t<red>FAIL BUCKLE AXIAL TORSION</red>\n", 0x1000000},
    {"\t<red>FAIL BUCKLE AXIAL FLEXURAL TORSION</red>\n", 0x2000000},
    {"\t<red>FAIL LOCAL AXIAL</red>\n", 0x1000},
    {"\t<red>FAIL LOCAL BENDING MAJOR</red>\n", 0x2000},
    {"\t<red>FAIL LOCAL BENDING MINOR</red>\n", 0x4000},
    {"\t<red>FAIL LOCAL SHEAR MAJOR</red>\n", 0x8000},
    {"\t<red>FAIL LOCAL SHEAR MINOR</red>\n", 0x10000},
    {"\t<red>FAIL LOCAL TORSION</red>\n", 0x20000},
    {"\t<blue>INFO LOCAL SLENDER</blue>\n", 0x100000},
    {"\t<blue>INFO LOCAL SLENDER WEB</blue>\n", 0x200000},
    {"\t<blue>INFO LOCAL SLENDER FLANGE</blue>\n", 0x400000},
    {"\t<blue>INFO MEMBER SLENDER</blue>\n", 0x800000},
};

std::string Summary(const std::array<double, 14>& utils, int loadFlags, const std::string& flags,
                    const CDesFormat& format = CDesFormat())
{
    std::string text = "<h4>Utilization factors:</h4>\n";
    for (std::size_t i = 0; i < utils.size(); ++i)
        if (summaryLines[i].loadFlags == -1 || (loadFlags & summaryLines[i].loadFlags) != 0)
            text += summaryLines[i].label + Utf8(format.Util(utils[i])) + "</b>\n";
    return text + "<h4>Flags:</h4>\n" + flags;
}

} // namespace

TEST(VerboseReport, OneEntryIsGivenAsItIs)
{
    EXPECT_EQ(Utf8(WithTexts({L"member\n"}).GetVerbose()), "member\n");
    EXPECT_EQ(Utf8(CMemberResult().GetVerbose()), "");
}

TEST(VerboseReport, FurtherEntriesFollowUnderTheHeadingsOfChecksAlongTheMember)
{
    EXPECT_EQ(Utf8(WithTexts({L"m\n", L"one", L"two\n"}).GetVerbose()), "m\n" + localHeading + along + "onetwo\n");
    EXPECT_EQ(Utf8(WithTexts({L"", L""}).GetVerbose()), localHeading + along);
}

TEST(VerboseReport, WithTextDisabledItSaysSo)
{
    CMemberResult result = WithTexts({L"m\n", L"one\n"});
    result.EnableText(false);
    EXPECT_EQ(Utf8(result.GetVerbose()), localHeading + along + "Verbose results not stored\n");
    EXPECT_EQ(Utf8((result + result).GetVerbose()),
              localHeading + along +
                  "Verbose results not stored\nVerbose results not stored\nVerbose results not stored\n");
}

TEST(LocalTitle, NamesWhereTheChecksAre)
{
    const CMemberResult result;
    EXPECT_EQ(Utf8(result.TitleForCheckLocalOutput(true)),
              "<h4>Local capacity checks:</h4>\n<h5>Checks along member:</h5>\n");
    EXPECT_EQ(Utf8(result.TitleForCheckLocalOutput(false)),
              "<h4>Local capacity checks:</h4>\n<h5>Checks critical sub_spans:</h5>\n");
}

TEST(BriefReport, OneEntryIsThatEntryAlone)
{
    CMemberResult result = WithTexts({L"member"});
    result.SetUtilLocalAxial(5.0);
    EXPECT_EQ(Utf8(result.GetBrief()), "member");
}

TEST(BriefReport, WithoutCriticalPositionsItHoldsTheFirstAndTheLastEntry)
{
    EXPECT_EQ(Utf8(WithTexts({L"m\n", L"1\n", L"2\n", L"b\n"}).GetBrief()), "m\n" + localHeading + critical + "b\n");
}

TEST(BriefReport, BucklingIsLeftOutWhenNotIncluded)
{
    CMemberResult result = WithTexts({L"m\n", L"1\n", L"b\n"});
    result.SetIncBuckChk(false);
    EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical);
    SetAt(result, 1, &CMemberResult::SetUtilLocalAxial, 1.5);
    EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical + "1\n");
}

TEST(BriefReport, EachLocalArrayGivesThePositionOfItsMaximumAboveTheLimit)
{
    for (std::size_t i = 1; i < localSetters.size(); ++i) {
        CMemberResult result = WithTexts({L"m\n", L"1\n", L"2\n", L"3\n", L"b\n"});
        SetAt(result, 1, &CMemberResult::SetUtilLocalCombined, 9.0);
        SetAt(result, 3, localSetters[i], 1.1);
        EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical + "1\n3\nb\n") << "array " << i;
    }
}

TEST(BriefReport, CriticalPositionsComeOnceEachInAscendingOrder)
{
    CMemberResult result = WithTexts({L"m\n", L"1\n", L"2\n", L"3\n", L"b\n"});
    SetAt(result, 3, &CMemberResult::SetUtilLocalAxial, 1.2);
    SetAt(result, 3, &CMemberResult::SetUtilLocalMomMajor, 1.3);
    SetAt(result, 1, &CMemberResult::SetUtilLocalTorsion, 1.1);
    SetAt(result, 2, &CMemberResult::SetUtilLocalTorsion, 1.05); // fails, but is not the maximum of its array
    EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical + "1\n3\nb\n");
}

TEST(BriefReport, OfEqualMaximaTheFirstPositionIsTaken)
{
    CMemberResult result = WithTexts({L"m\n", L"1\n", L"2\n", L"b\n"});
    SetAt(result, 2, &CMemberResult::SetUtilLocalAxial, 1.5);
    SetAt(result, 1, &CMemberResult::SetUtilLocalAxial, 1.5);
    EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical + "1\nb\n");
}

TEST(BriefReport, AMaximumOfExactlyTheLimitIsNotCritical)
{
    CMemberResult result = WithTexts({L"m\n", L"1\n", L"2\n", L"b\n"});
    SetAt(result, 2, &CMemberResult::SetUtilLocalTorsion, 1.5);
    SetAt(result, 1, &CMemberResult::SetUtilLocalAxial, 1.0);
    EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical + "2\nb\n");
}

TEST(BriefReport, WithoutAnyAboveTheLimitThePositionOfTheLargestCombinedValueIsTaken)
{
    CMemberResult result = WithTexts({L"m\n", L"1\n", L"2\n", L"b\n"});
    SetAt(result, 1, &CMemberResult::SetUtilLocalAxial, 0.4);
    SetAt(result, 2, &CMemberResult::SetUtilLocalAxial, 0.6);
    EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical + "2\nb\n");
    SetAt(result, 1, &CMemberResult::SetUtilLocalCombined, 1.0);
    EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical + "1\nb\n");
}

TEST(BriefReport, TheFirstPositionIsNeverTakenForTheLargestCombinedValueOnly)
{
    CMemberResult result = WithTexts({L"m\n", L"1\n", L"b\n"});
    SetAt(result, 0, &CMemberResult::SetUtilLocalAxial, 1.0);
    SetAt(result, 1, &CMemberResult::SetUtilLocalAxial, 1.0);
    EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical + "b\n");
}

TEST(BriefReport, ACriticalFirstPositionRepeatsTheMemberLevelText)
{
    // Entries are taken by position as they stand: position 0 is the entry that the report has already begun with.
    CMemberResult result = WithTexts({L"m\n", L"1\n", L"b\n"});
    SetAt(result, 0, &CMemberResult::SetUtilLocalAxial, 1.5);
    EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical + "m\nb\n");
}

TEST(BriefReport, ACriticalLastPositionAppearsTwice)
{
    CMemberResult result = WithTexts({L"m\n", L"1\n", L"b\n"});
    SetAt(result, 2, &CMemberResult::SetUtilLocalShearMinor, 1.5);
    EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical + "b\nb\n");
    SetAt(result, 2, &CMemberResult::SetUtilLocalCombined, 1.5);
    result.SetIncBuckChk(false);
    EXPECT_EQ(Utf8(result.GetBrief()), "m\n" + localHeading + critical + "b\n");
}

TEST(BriefReport, PositionsBeyondTheEntriesAreSkipped)
{
    CMemberResult longer = WithTexts({L"", L"", L"", L""});
    SetAt(longer, 3, &CMemberResult::SetUtilLocalAxial, 2.0);
    SetAt(longer, 1, &CMemberResult::SetUtilLocalMomMajor, 1.5);
    const CMemberResult sum = WithTexts({L"m\n", L"b\n"}) + longer;
    EXPECT_EQ(sum.UtilLocalAxial(3), 2.0);
    EXPECT_EQ(Utf8(sum.GetBrief()), "m\n" + localHeading + critical + "b\nb\n");
}

TEST(BriefReport, WithTextDisabledItShowsTheNote)
{
    CMemberResult result;
    result.EnableText(false);
    EXPECT_EQ(Utf8(result.GetBrief()), localHeading + critical + "Verbose results not stored\n");
    CMemberResult two;
    two.IniDynaArray(2);
    two.SetCurSubSpan(1);
    two.SetUtilLocalAxial(3.0);
    two.EnableText(false);
    EXPECT_EQ(Utf8(two.GetBrief()), localHeading + critical + "Verbose results not stored\n");
}

TEST(SummaryReport, OfAFreshResultListsAllLinesWithZeroAndNoFlag)
{
    const std::string expected = "<h4>Utilization factors:</h4>\n"
                                 "\tLocalAxial                  \t<b>0</b>\n"
                                 "\tLocalMomMajor               \t<b>0</b>\n"
                                 "\tLocalMomMinor               \t<b>0</b>\n"
                                 "\tLocalShearMajor             \t<b>0</b>\n"
                                 "\tLocalShearMinor             \t<b>0</b>\n"
                                 "\tLocalTorsion                \t<b>0</b>\n"
                                 "\tBucklingAxialMajor          \t<b>0</b>\n"
                                 "\tBucklingAxialMinor          \t<b>0</b>\n"
                                 "\tBucklingAxialTorsion        \t<b>0</b>\n"
                                 "\tBucklingAxialFlexuralTorsion\t<b>0</b>\n"
                                 "\tBucklingLT                  \t<b>0</b>\n"
                                 "\tBucklingCombined            \t<b>0</b>\n"
                                 "\tLocalCombined               \t<b>0</b>\n"
                                 "\tUtilOverAll                 \t<b>0</b>\n"
                                 "<h4>Flags:</h4>\n"
                                 "\tNone\n";
    EXPECT_EQ(Utf8(CMemberResult().GetSummary()), expected);
}

TEST(SummaryReport, WithoutLoadOnlyTheLastThreeLinesAppear)
{
    CMemberResult result;
    result.SetLoadFlags(0);
    EXPECT_EQ(Utf8(result.GetSummary()), "<h4>Utilization factors:</h4>\n"
                                         "\tBucklingCombined            \t<b>0</b>\n"
                                         "\tLocalCombined               \t<b>0</b>\n"
                                         "\tUtilOverAll                 \t<b>0</b>\n"
                                         "<h4>Flags:</h4>\n"
                                         "\tNone\n");
}

TEST(SummaryReport, ShowsTheLinesOfTheActionsPresentWithTheirOwnValues)
{
    CMemberResult result;
    result.IniDynaArray(2);
    result.SetCurSubSpan(1);
    std::array<double, 14> utils{};
    for (std::size_t i = 1; i < 7; ++i) {
        utils[i - 1] = 0.01 * static_cast<double>(i);
        (result.*localSetters[i])(utils[i - 1]);
    }
    // The lateral-torsional setter is the first of the components, its line the last of them.
    static constexpr std::size_t line[] = {0, 10, 6, 7, 8, 9};
    for (std::size_t i = 1; i < 6; ++i) {
        utils[line[i]] = 0.1 * static_cast<double>(i);
        (result.*bucklingSetters[i])(utils[line[i]]);
    }
    result.SetUtilBucklingCombined(0.71);
    result.SetUtilLocalCombined(0.72);
    result.SetUtilOverAll(0.73);
    utils[11] = 0.71;
    utils[12] = 0.72;
    utils[13] = 0.73;
    for (int loadFlags = 0; loadFlags < 32; ++loadFlags) {
        result.SetLoadFlags(loadFlags);
        EXPECT_EQ(Utf8(result.GetSummary()), Summary(utils, loadFlags, "\tNone\n")) << "load flags " << loadFlags;
    }
}

TEST(SummaryReport, LocalLinesShowTheMaximumOverThePositionsFromZeroUp)
{
    CMemberResult result;
    for (std::size_t i = 0; i < ResultAccess::numLocal; ++i)
        ResultAccess::Local(result, i) = {-0.5, -0.25};
    EXPECT_EQ(Utf8(result.GetSummary()), Summary({}, 15, "\tNone\n"));
}

TEST(SummaryReport, EachFlagHasItsLine)
{
    for (const FlagLine& row : flagLines) {
        CMemberResult result;
        result.SetFlags(row.flag);
        EXPECT_EQ(Utf8(result.GetSummary()), Summary({}, 15, row.text)) << "flag 0x" << std::hex << row.flag;
    }
}

TEST(SummaryReport, AllFlagsComeInTheOrderOfTheReport)
{
    CMemberResult result;
    result.SetFlags(-1);
    std::string expected;
    for (const FlagLine& row : flagLines)
        expected += row.text;
    EXPECT_EQ(Utf8(result.GetSummary()), Summary({}, 15, expected));
}

TEST(SummaryReport, UnassignedFlagsHaveNoLineAndAreNotNoneEither)
{
    for (const int flag : {0x40, 0x80, 0x800, 0x40000, 0x80000, 0x4000000}) {
        CMemberResult result;
        result.SetFlags(flag);
        EXPECT_EQ(Utf8(result.GetSummary()), Summary({}, 15, "")) << "flag 0x" << std::hex << flag;
    }
}

TEST(SummaryReport, ValuesGoThroughTheNumberFormat)
{
    CMemberResult result;
    result.SetUtilLocalAxial(infinity);
    const std::string inf = Utf8(result.DesFormat().Util(infinity));
    const std::string text = Utf8(result.GetSummary());
    EXPECT_NE(text.find("\tLocalAxial                  \t<b>" + inf + "</b>\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\tUtilOverAll                 \t<b>" + inf + "</b>\n"), std::string::npos) << text;
}
