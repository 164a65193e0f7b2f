// The text store: indentation, scopes, switching text off.

#include "support/ResultRecord.h"

#include <memory>
#include <type_traits>

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

std::string Tabified(const wchar_t* text, int indent, bool indentFirst)
{
    return Utf8(CMemberResult::Tabify(text, indent, indentFirst));
}

std::string TextOf(const CMemberResult& result, std::size_t entry = 0) { return Texts(result).at(entry); }

} // namespace

TEST(Tabify, PutsTabsAfterEveryLineBreakThatIsFollowedByText)
{
    EXPECT_EQ(Tabified(L"one\ntwo", 2, false), "one\n\t\ttwo");
    EXPECT_EQ(Tabified(L"one\ntwo", 2, true), "\t\tone\n\t\ttwo");
    EXPECT_EQ(Tabified(L"one\ntwo\n", 2, false), "one\n\t\ttwo\n");
    EXPECT_EQ(Tabified(L"one\ntwo\n", 1, true), "\tone\n\ttwo\n");
}

TEST(Tabify, NoIndentGivesTheTextBack)
{
    EXPECT_EQ(Tabified(L"one\ntwo\n", 0, false), "one\ntwo\n");
    EXPECT_EQ(Tabified(L"one\ntwo\n", 0, true), "one\ntwo\n");
    EXPECT_EQ(Tabified(L"", 0, true), "");
}

TEST(Tabify, TextsThatAreEmptyOrOneLineBreak)
{
    EXPECT_EQ(Tabified(L"", 1, false), "");
    EXPECT_EQ(Tabified(L"", 1, true), "\t");
    EXPECT_EQ(Tabified(L"\n", 1, false), "\n");
    EXPECT_EQ(Tabified(L"\n", 3, true), "\t\t\t\n");
    EXPECT_EQ(Tabified(L"\n\n", 1, false), "\n\t\n");
    EXPECT_EQ(Tabified(L"\na", 1, false), "\n\ta");
    EXPECT_EQ(Tabified(L"a", 2, true), "\t\ta");
}

TEST(ResultText, IsEnabledFromTheStart)
{
    const CMemberResult result;
    EXPECT_TRUE(result.TextEnabled());
    EXPECT_TRUE(CMemberResult::TextEnabled(&result));
    EXPECT_FALSE(CMemberResult::TextEnabled(nullptr));
}

TEST(ResultText, PiecesContinueALineWithoutNewIndentation)
{
    CMemberResult result;
    const CResultIndent indent(&result);
    result.AddOutputString(L"x");
    result.AddOutputString(L"y\n");
    result.AddOutputString(L"z");
    EXPECT_EQ(TextOf(result), "\txy\n\tz");
}

TEST(ResultText, EveryLineThatAPieceOpensIsIndented)
{
    CMemberResult result;
    ResultAccess::Push(result, 2);
    result.AddOutputString(L"a\nb\n");
    result.AddOutputString(L"c");
    result.AddOutputString(L"d\ne");
    EXPECT_EQ(TextOf(result), "\t\ta\n\t\tb\n\t\tcd\n\t\te");
}

TEST(ResultText, WithoutIndentationTextIsTakenAsItIs)
{
    CMemberResult result;
    result.AddOutputString(L"a\nb\n");
    result.AddOutputString(L"\n");
    result.AddOutputString(L"c");
    EXPECT_EQ(TextOf(result), "a\nb\n\nc");
}

TEST(ResultText, AnEmptyPieceStillIndentsANewLine)
{
    CMemberResult result;
    const CResultIndent indent(&result);
    result.AddOutputString(L"");
    EXPECT_EQ(TextOf(result), "\t");
    // The entry is no longer empty and does not end in a line break, so the next piece continues it.
    result.AddOutputString(L"a\n");
    result.AddOutputString(L"");
    result.AddOutputString(L"b");
    EXPECT_EQ(TextOf(result), "\ta\n\tb");
}

TEST(ResultText, ALineBreakAddedToAnIndentedTextLeavesTabsBeforeIt)
{
    CMemberResult result;
    const CResultIndent indent(&result);
    result.AddOutputString(L"\n");
    result.AddOutputString(L"\n");
    EXPECT_EQ(TextOf(result), "\t\n\t\n");
}

TEST(ResultText, GoesToTheCurrentPositionAndEachPositionIndentsOnItsOwn)
{
    CMemberResult result;
    result.IniDynaArray(3);
    const CResultIndent indent(&result);
    result.AddOutputString(L"m");
    result.SetCurSubSpan(2);
    result.AddOutputString(L"b\n");
    result.SetCurSubSpan(0);
    result.AddOutputString(L"n");
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"\tmn", "", "\tb\n"}));
}

TEST(ResultIndentation, NestedScopesAddUp)
{
    CMemberResult result;
    EXPECT_EQ(ResultAccess::Indent(result), 0);
    {
        const CResultIndent outer(&result);
        EXPECT_EQ(ResultAccess::Indent(result), 1);
        {
            const CResultIndent inner(&result);
            EXPECT_EQ(ResultAccess::Indent(result), 2);
            ResultAccess::Push(result, 3);
            EXPECT_EQ(ResultAccess::Indent(result), 5);
            EXPECT_EQ(ResultAccess::Pop(result), 3);
        }
        EXPECT_EQ(ResultAccess::Indent(result), 1);
    }
    EXPECT_EQ(ResultAccess::Indent(result), 0);
    EXPECT_TRUE(ResultAccess::Indents(result).empty());
}

TEST(ResultIndentation, PopGivesTheTopAndZeroWhenThereIsNothing)
{
    CMemberResult result;
    EXPECT_EQ(ResultAccess::Pop(result), 0);
    ResultAccess::Push(result, 4);
    ResultAccess::Push(result, 7);
    EXPECT_EQ(ResultAccess::Pop(result), 7);
    EXPECT_EQ(ResultAccess::Pop(result), 4);
    EXPECT_EQ(ResultAccess::Pop(result), 0);
    ResultAccess::Push(result, 1);
    ResultAccess::Push(result, 2);
    ResultAccess::ClearIndent(result);
    EXPECT_TRUE(ResultAccess::Indents(result).empty());
    EXPECT_EQ(ResultAccess::Indent(result), 0);
}

TEST(ResultIndentation, WithTextDisabledNothingIsPushedOrPopped)
{
    CMemberResult result;
    ResultAccess::Push(result, 4);
    result.EnableText(false);
    ResultAccess::Push(result, 5);
    EXPECT_EQ(ResultAccess::Indents(result), std::vector<int>{4});
    EXPECT_EQ(ResultAccess::Pop(result), 0);
    EXPECT_EQ(ResultAccess::Indents(result), std::vector<int>{4});
    EXPECT_EQ(ResultAccess::Indent(result), 4);
    {
        const CResultIndent scope(&result);
        EXPECT_EQ(ResultAccess::Indents(result), std::vector<int>{4});
    }
    EXPECT_EQ(ResultAccess::Indents(result), std::vector<int>{4});
}

TEST(ResultIndentation, AScopeWhoseTextIsDisabledMeanwhileLeavesItsLevelBehind)
{
    CMemberResult result;
    {
        const CResultIndent scope(&result);
        result.EnableText(false);
    }
    EXPECT_EQ(ResultAccess::Indents(result), std::vector<int>{1});
}

TEST(ResultIndentation, AScopeOpenedWithoutTextTakesTheTopOffIfTextIsEnabledMeanwhile)
{
    CMemberResult result;
    ResultAccess::Push(result, 3);
    result.EnableText(false);
    {
        const CResultIndent scope(&result);
        result.EnableText(true);
    }
    EXPECT_TRUE(ResultAccess::Indents(result).empty());
    result.EnableText(false);
    auto scope = std::make_unique<CResultIndent>(&result);
    result.EnableText(true);
    scope.reset();
    EXPECT_TRUE(ResultAccess::Indents(result).empty());
}

TEST(ResultIndentation, AScopeOfANullResultChangesNothing)
{
    CMemberResult result;
    ResultAccess::Push(result, 2);
    {
        const CResultIndent scope(nullptr);
        EXPECT_EQ(ResultAccess::Indent(result), 2);
    }
    EXPECT_EQ(ResultAccess::Indent(result), 2);
    static_assert(!std::is_copy_constructible_v<CResultIndent> && !std::is_copy_assignable_v<CResultIndent>);
}

TEST(ResultTextSwitch, DisablingEmptiesTheTextsAndAppendsANote)
{
    CMemberResult fresh;
    fresh.EnableText(false);
    EXPECT_EQ(Texts(fresh), (std::vector<std::string>{"", "Verbose results not stored\n"}));
    EXPECT_FALSE(fresh.TextEnabled());
    EXPECT_FALSE(CMemberResult::TextEnabled(&fresh));

    CMemberResult result;
    result.IniDynaArray(2);
    result.AddOutputString(L"a");
    result.EnableText(false);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", "", "Verbose results not stored\n"}));
    // Once more: the note too is emptied and another one appended.
    result.EnableText(false);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", "", "", "Verbose results not stored\n"}));
}

TEST(ResultTextSwitch, NothingIsAddedWhileDisabled)
{
    CMemberResult result;
    result.EnableText(false);
    result.AddOutputString(L"a");
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", "Verbose results not stored\n"}));
}

TEST(ResultTextSwitch, EnablingOnlySetsTheSwitch)
{
    CMemberResult result;
    result.AddOutputString(L"a");
    result.EnableText(true);
    EXPECT_EQ(Texts(result), std::vector<std::string>{"a"});
    result.EnableText(false);
    result.EnableText(true);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", "Verbose results not stored\n"}));
    result.AddOutputString(L"b");
    result.SetCurSubSpan(1);
    result.AddOutputString(L"c");
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"b", "Verbose results not stored\nc"}));
}

TEST(ResultTextSwitch, TextAddedAfterEnablingASumAgainIsKeptAndMerged)
{
    CMemberResult disabled;
    disabled.EnableText(false);
    CMemberResult sum = disabled + disabled;
    EXPECT_EQ(Texts(sum),
              (std::vector<std::string>{"", "Verbose results not stored\n", "Verbose results not stored\n"}));
    sum.EnableText(true);
    sum.AddOutputString(L"x");
    EXPECT_EQ(Texts(sum),
              (std::vector<std::string>{"x", "Verbose results not stored\n", "Verbose results not stored\n"}));
    const CMemberResult twice = sum + sum;
    EXPECT_EQ(Texts(twice).at(0), "xx");
    EXPECT_EQ(Texts(twice).at(1), "Verbose results not stored\nVerbose results not stored\n");
    EXPECT_EQ(Texts(sum + disabled),
              (std::vector<std::string>{"", "Verbose results not stored\n", "Verbose results not stored\n"}));
}

TEST(ResultTextSwitch, ThePrivateAppendDoesNotAskTheSwitch)
{
    CMemberResult result;
    result.EnableText(false);
    ResultAccess::ReallyAddVerbose(result, L"x");
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"x", "Verbose results not stored\n"}));
    EXPECT_EQ(Texts(result + result),
              (std::vector<std::string>{"", "Verbose results not stored\n", "Verbose results not stored\n"}));
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"x", "Verbose results not stored\n"}));
}
