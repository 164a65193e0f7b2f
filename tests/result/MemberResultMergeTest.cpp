// The record as a value: merging, comparing, clearing, resizing, copying and moving.

#include "support/ResultRecord.h"

#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

const char* const notStored = "Verbose results not stored\n";

CMemberResult WithLocalAxial(std::vector<double> values)
{
    CMemberResult result;
    result.IniDynaArray(static_cast<int>(values.size()));
    ResultAccess::Local(result, 1) = std::move(values);
    return result;
}

std::vector<double> LocalAxial(CMemberResult result) { return ResultAccess::Local(result, 1); }

} // namespace

TEST(ResultMerge, LoadFlagsAreTheRightOnesResultFlagsTheUnion)
{
    CMemberResult a;
    CMemberResult b;
    a.SetLoadFlags(0xA);
    b.SetLoadFlags(0x5);
    a.SetFlags(0x1);
    b.SetFlags(0x100);
    EXPECT_EQ((a + b).GetLoadFlags(), 0x5);
    EXPECT_EQ((b + a).GetLoadFlags(), 0xA);
    // Nothing is implied: the flag words are united as they are.
    EXPECT_EQ((a + b).GetFlags(), 0x101);
}

TEST(ResultMerge, LocalArraysAreTakenWholeByTheFirstDifference)
{
    EXPECT_EQ(LocalAxial(WithLocalAxial({0.9, 0.1}) + WithLocalAxial({0.5, 2.0})), (std::vector<double>{0.9, 0.1}));
    EXPECT_EQ(LocalAxial(WithLocalAxial({0.5, 2.0}) + WithLocalAxial({0.9, 0.1})), (std::vector<double>{0.9, 0.1}));
    EXPECT_EQ(LocalAxial(WithLocalAxial({0.5, 0.2}) + WithLocalAxial({0.5, 0.3})), (std::vector<double>{0.5, 0.3}));
}

TEST(ResultMerge, OfAnArrayAndItsPrefixTheLongerOneIsTaken)
{
    EXPECT_EQ(LocalAxial(WithLocalAxial({0.5}) + WithLocalAxial({0.5, 0.0})), (std::vector<double>{0.5, 0.0}));
    EXPECT_EQ(LocalAxial(WithLocalAxial({0.5, 0.0}) + WithLocalAxial({0.5})), (std::vector<double>{0.5, 0.0}));
    EXPECT_EQ(LocalAxial(WithLocalAxial({0.6}) + WithLocalAxial({0.5, 9.0})), (std::vector<double>{0.6}));
    EXPECT_EQ(LocalAxial(WithLocalAxial({}) + WithLocalAxial({0.0})), (std::vector<double>{0.0}));
}

TEST(ResultMerge, EachLocalArrayIsChosenOnItsOwn)
{
    CMemberResult a;
    CMemberResult b;
    for (std::size_t i = 0; i < ResultAccess::numLocal; ++i) {
        ResultAccess::Local(a, i) = {i % 2 == 0 ? 1.0 : 0.0};
        ResultAccess::Local(b, i) = {i % 2 == 0 ? 0.0 : 1.0};
    }
    CMemberResult sum = a + b;
    for (std::size_t i = 0; i < ResultAccess::numLocal; ++i)
        EXPECT_EQ(ResultAccess::Local(sum, i), std::vector<double>{1.0}) << "array " << i;
}

TEST(ResultMerge, NotANumberInAnArrayKeepsTheLeftOne)
{
    CMemberResult sum = WithLocalAxial({notANumber}) + WithLocalAxial({5.0});
    EXPECT_TRUE(std::isnan(sum.UtilLocalAxial(0)));
    sum = WithLocalAxial({5.0}) + WithLocalAxial({notANumber});
    EXPECT_EQ(sum.UtilLocalAxial(0), 5.0);
    // The pair decides, whatever follows it; a difference before it has decided already.
    sum = WithLocalAxial({notANumber, 1.0}) + WithLocalAxial({3.0, 2.0});
    EXPECT_TRUE(std::isnan(sum.UtilLocalAxial(0)));
    EXPECT_EQ(sum.UtilLocalAxial(1), 1.0);
    sum = WithLocalAxial({3.0, 1.0}) + WithLocalAxial({notANumber, 2.0});
    EXPECT_EQ(LocalAxial(sum), (std::vector<double>{3.0, 1.0}));
    sum = WithLocalAxial({0.0, 1.0}) + WithLocalAxial({3.0, notANumber});
    EXPECT_EQ(sum.UtilLocalAxial(0), 3.0);
}

TEST(ResultMerge, SingleValuesAreTheLargerOnesAndTheLeftOnNotANumber)
{
    for (std::size_t i = 0; i < ResultAccess::numBuckling; ++i) {
        CMemberResult a;
        CMemberResult b;
        ResultAccess::Buckling(a, i) = 0.4;
        ResultAccess::Buckling(b, i) = 0.7;
        CMemberResult sum = a + b;
        EXPECT_EQ(ResultAccess::Buckling(sum, i), 0.7) << i;
        sum = b + a;
        EXPECT_EQ(ResultAccess::Buckling(sum, i), 0.7) << i;
        ResultAccess::Buckling(a, i) = notANumber;
        sum = a + b;
        EXPECT_TRUE(std::isnan(ResultAccess::Buckling(sum, i))) << i;
        sum = b + a;
        EXPECT_EQ(ResultAccess::Buckling(sum, i), 0.7) << i;
    }
    CMemberResult a;
    CMemberResult b;
    ResultAccess::OverAll(a) = notANumber;
    ResultAccess::OverAll(b) = 0.7;
    EXPECT_TRUE(std::isnan((a + b).UtilOverAll()));
    EXPECT_EQ((b + a).UtilOverAll(), 0.7);
    ResultAccess::OverAll(a) = 0.0;
    ResultAccess::OverAll(b) = -0.0;
    EXPECT_FALSE(std::signbit((a + b).UtilOverAll()));
    EXPECT_TRUE(std::signbit((b + a).UtilOverAll()));
}

TEST(ResultMerge, TextsFollowOneAnotherPositionByPosition)
{
    CMemberResult a = WithTexts({L"a0", L"a1\n"});
    CMemberResult b = WithTexts({L"b0\n", L"b1", L"b2"});
    a.SetCurSubSpan(1);
    b.SetCurSubSpan(2);
    const CMemberResult sum = a + b;
    EXPECT_EQ(Texts(sum), (std::vector<std::string>{"a0b0\n", "a1\nb1"}));
    EXPECT_EQ(sum.CurSubSpan(), 1);
    EXPECT_TRUE(sum.TextEnabled());
}

TEST(ResultMerge, FormatAndIndentationAreTheLeftOnesAndBucklingCountsAsIncluded)
{
    CMemberResult a;
    CMemberResult b;
    CUnit unit;
    unit.SetLength(L"mm", 1000.0);
    a.SetDesFormat(CDesFormat(unit));
    a.SetIncBuckChk(false);
    b.SetIncBuckChk(false);
    ResultAccess::Push(a, 2);
    ResultAccess::Push(b, 5);
    ResultAccess::Push(b, 6);
    const CMemberResult sum = a + b;
    EXPECT_TRUE(sum.DesFormat() == CDesFormat(unit));
    EXPECT_EQ(ResultAccess::Indents(sum), std::vector<int>{2});
    EXPECT_TRUE(sum.IncBuckChk());
    EXPECT_TRUE((b + a).DesFormat() == CDesFormat(CUnit()));
}

TEST(ResultMerge, WhereEitherHasNoTextTheSumHoldsOnlyNotes)
{
    CMemberResult a = WithTexts({L"a0", L"a1", L"a2"});
    a.SetCurSubSpan(2);
    ResultAccess::Push(a, 3);
    CMemberResult b = WithTexts({L"b0"});
    b.EnableText(false); // two entries now
    const CMemberResult ab = a + b;
    EXPECT_EQ(Texts(ab), (std::vector<std::string>{"", notStored, notStored}));
    EXPECT_FALSE(ab.TextEnabled());
    EXPECT_EQ(ab.CurSubSpan(), 0);
    EXPECT_EQ(ResultAccess::Indents(ab), std::vector<int>{3});

    b.SetCurSubSpan(1);
    const CMemberResult ba = b + a;
    EXPECT_EQ(Texts(ba), (std::vector<std::string>{"", notStored, notStored}));
    EXPECT_EQ(ba.CurSubSpan(), 0);
    EXPECT_FALSE(ba.TextEnabled());

    CMemberResult none;
    none.IniDynaArray(0);
    none.EnableText(false); // the note alone
    const CMemberResult bn = b + none;
    EXPECT_EQ(Texts(bn), (std::vector<std::string>{"", notStored}));
}

TEST(ResultMerge, NotesAreNoMoreThanTheShorterRecordNeeds)
{
    CMemberResult sum = WithTexts({L"a0", L"a1", L"a2"});
    CMemberResult other = WithTexts({L"b0", L"b1"});
    other.EnableText(false);
    sum += other;
    EXPECT_EQ(Texts(sum), (std::vector<std::string>{"", notStored, notStored, notStored}));
    CMemberResult none;
    none.IniDynaArray(1);
    sum += none;
    EXPECT_EQ(Texts(sum), (std::vector<std::string>{"", notStored}));
}

TEST(ResultMerge, EachSumWithoutTextGrowsByOneEntry)
{
    CMemberResult sum;
    sum.EnableText(false);
    CMemberResult other;
    other.IniDynaArray(10);
    for (std::size_t entries = 3; entries < 8; ++entries) {
        sum += other;
        EXPECT_EQ(ResultAccess::Texts(sum).size(), entries);
    }
}

TEST(ResultMerge, AddingInPlaceIsTheSameAsTheSum)
{
    const unsigned int seed = 77;
    Random random(seed);
    for (int run = 0; run < 50; ++run) {
        const int positions = Pick(random, 1, 3);
        CMemberResult a = RandomResult(random, positions);
        CMemberResult b = RandomResult(random, positions + 1);
        const CMemberResult sum = a + b;
        CMemberResult& answer = a += b;
        EXPECT_EQ(&answer, &a);
        EXPECT_EQ(Record(a), Record(sum)) << "seed " << seed << " run " << run;
    }
    CMemberResult self = WithTexts({L"x"});
    self += self;
    EXPECT_EQ(Texts(self), std::vector<std::string>{"xx"});
}

TEST(ResultMerge, RandomRecordsMergeAsTheRulesOverPlainValuesSay)
{
    const unsigned int seed = 20240612;
    Random random(seed);
    for (int run = 0; run < 600; ++run) {
        const int positions = Pick(random, 1, 3);
        CMemberResult a = RandomResult(random, positions);
        // The right one needs at least as many texts as the left, which may have been given one more or two.
        CMemberResult b = RandomResult(random, positions + Pick(random, 2, 3));
        const Record left(a);
        const Record right(b);
        EXPECT_EQ(Record(a + b), Record::Merged(left, right))
            << "seed " << seed << " run " << run << "\nleft " << left << "right " << right;
        EXPECT_EQ(Record(a), left);
        EXPECT_EQ(Record(b), right);
        const CMemberResult sum = a + b;
        if (!sum.TextEnabled()) {
            EXPECT_EQ(Record(sum + b), Record::Merged(Record(sum), right)) << "seed " << seed << " run " << run;
            EXPECT_EQ(Record(b + sum), Record::Merged(right, Record(sum))) << "seed " << seed << " run " << run;
            EXPECT_EQ(Record(sum + sum), Record::Merged(Record(sum), Record(sum))) << "seed " << seed << " run " << run;
        }
    }
}

TEST(ResultEquality, PositionTextSwitchAndIncludeBucklingAreNotCompared)
{
    CMemberResult a;
    CMemberResult b;
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a != b);
    a.SetCurSubSpan(3);
    a.SetIncBuckChk(false);
    EXPECT_TRUE(a == b);
    CMemberResult disabled;
    disabled.EnableText(false);
    CMemberResult enabledAgain = disabled;
    enabledAgain.EnableText(true);
    EXPECT_TRUE(disabled == enabledAgain);
}

TEST(ResultEquality, EveryOtherFieldIsComparedExactly)
{
    const CMemberResult plain;
    const auto differs = [&](auto change) {
        CMemberResult changed;
        change(changed);
        return changed != plain && plain != changed && !(changed == plain);
    };
    EXPECT_TRUE(differs([](CMemberResult& r) { r.SetLoadFlags(7); }));
    EXPECT_TRUE(differs([](CMemberResult& r) { r.SetFlags(1); }));
    EXPECT_TRUE(differs([](CMemberResult& r) { ResultAccess::OverAll(r) = 1e-300; }));
    for (std::size_t i = 0; i < ResultAccess::numLocal; ++i) {
        EXPECT_TRUE(differs([&](CMemberResult& r) { ResultAccess::Local(r, i)[0] = 1e-300; })) << i;
        EXPECT_TRUE(differs([&](CMemberResult& r) { ResultAccess::Local(r, i).push_back(0.0); })) << i;
    }
    for (std::size_t i = 0; i < ResultAccess::numBuckling; ++i)
        EXPECT_TRUE(differs([&](CMemberResult& r) { ResultAccess::Buckling(r, i) = 1e-300; })) << i;
    EXPECT_TRUE(differs([](CMemberResult& r) { r.AddOutputString(L"x"); }));
    EXPECT_TRUE(differs([](CMemberResult& r) { r.EnableText(false); }));
    EXPECT_TRUE(differs([](CMemberResult& r) { ResultAccess::Push(r, 0); }));
    EXPECT_TRUE(differs([](CMemberResult& r) {
        CUnit unit;
        unit.SetMoment(L"Nm", 1.0);
        r.SetDesFormat(CDesFormat(unit));
    }));
}

TEST(ResultEquality, TextsAreComparedCaseSensitively)
{
    EXPECT_TRUE(WithTexts({L"x"}) == WithTexts({L"x"}));
    EXPECT_FALSE(WithTexts({L"x"}) == WithTexts({L"X"}));
}

TEST(ResultEquality, NotANumberEqualsNothing)
{
    CMemberResult a;
    ResultAccess::Local(a, 3)[0] = notANumber;
    const CMemberResult b = a;
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);
    CMemberResult c;
    ResultAccess::Buckling(c, 2) = notANumber;
    EXPECT_FALSE(c == CMemberResult(c));
    CMemberResult d;
    ResultAccess::OverAll(d) = notANumber;
    EXPECT_FALSE(d == CMemberResult(d));
}

TEST(ResultClear, BackToAFreshRecordButForTextSwitchAndFormat)
{
    const unsigned int seed = 5;
    Random random(seed);
    for (int run = 0; run < 60; ++run) {
        CMemberResult result = RandomResult(random, Pick(random, 1, 4));
        Record expected;
        expected.textEnabled = result.TextEnabled();
        expected.format = result.DesFormat();
        result.Clear();
        EXPECT_EQ(Record(result), expected) << "seed " << seed << " run " << run;
    }
}

TEST(ResultClear, AClearedRecordWithoutTextStillStoresNoneAndMergesAsBefore)
{
    CMemberResult result;
    result.EnableText(false);
    result.Clear();
    EXPECT_EQ(Texts(result), std::vector<std::string>{""});
    result.AddOutputString(L"x");
    EXPECT_EQ(Texts(result), std::vector<std::string>{""});
    EXPECT_EQ(Texts(result + result), (std::vector<std::string>{"", notStored}));
}

TEST(ResultClear, ClearingTheStringsKeepsTheNumberOfPositions)
{
    CMemberResult result = WithTexts({L"a", L"", L"c\n"});
    result.SetUtilLocalAxial(2.0);
    ResultAccess::Push(result, 2);
    Record expected(result);
    expected.texts = {"", "", ""};
    result.ClearStrings();
    EXPECT_EQ(Record(result), expected);
    result.EnableText(false);
    result.ClearStrings();
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", "", "", ""}));
    // The note is gone from this record, and a sum still has its notes.
    EXPECT_EQ(Texts(result + CMemberResult()), (std::vector<std::string>{"", notStored}));
    EXPECT_EQ(Texts(CMemberResult() + result), (std::vector<std::string>{"", notStored}));
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", "", "", ""}));
}

TEST(ResultResize, WhatIsKeptStaysAndWhatIsNewIsZeroAndEmpty)
{
    CMemberResult result = WithTexts({L"a", L"b"});
    result.SetCurSubSpan(1);
    for (const ResultSetter set : localSetters)
        (result.*set)(0.5);
    result.IniDynaArray(4);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"a", "b", "", ""}));
    for (std::size_t i = 0; i < ResultAccess::numLocal; ++i)
        EXPECT_EQ(ResultAccess::Local(result, i), (std::vector<double>{0.0, 0.5, 0.0, 0.0})) << i;
    EXPECT_EQ(result.CurSubSpan(), 1);
    EXPECT_EQ(result.UtilOverAll(), 0.5);
    result.IniDynaArray(1);
    EXPECT_EQ(Texts(result), std::vector<std::string>{"a"});
    for (std::size_t i = 0; i < ResultAccess::numLocal; ++i)
        EXPECT_EQ(ResultAccess::Local(result, i), std::vector<double>{0.0}) << i;
    result.IniDynaArray(2);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"a", ""}));
    EXPECT_EQ(result.UtilLocalAxial(1), 0.0);
}

TEST(ResultResize, NoPositionsAtAllWorks)
{
    CMemberResult result;
    result.IniDynaArray(0);
    EXPECT_TRUE(ResultAccess::Texts(result).empty());
    for (std::size_t i = 0; i < ResultAccess::numLocal; ++i)
        EXPECT_TRUE(ResultAccess::Local(result, i).empty());
    EXPECT_EQ(Utf8(result.GetVerbose()), "");
    EXPECT_EQ(Utf8(result.GetBrief()), "");
    EXPECT_EQ(Texts(result + result), std::vector<std::string>{});
    EXPECT_TRUE(result == result);
    result.ClearStrings();
    result.SetUtilBucklingLT(2.0);
    EXPECT_EQ(result.GetFlags(), 0x127);
    result.IniDynaArray(1);
    EXPECT_EQ(Texts(result), std::vector<std::string>{""});
}

TEST(ResultResize, TheNoteOfARecordWithoutTextIsCutOffLikeAnyEntry)
{
    CMemberResult result;
    result.IniDynaArray(2);
    result.EnableText(false);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", "", notStored}));
    result.IniDynaArray(2);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", ""}));
    EXPECT_EQ(Texts(result + result), (std::vector<std::string>{"", notStored, notStored}));
    // Growing a sum's texts adds empty ones.
    CMemberResult sum = result + result;
    sum.IniDynaArray(5);
    EXPECT_EQ(Texts(sum), (std::vector<std::string>{"", notStored, notStored, "", ""}));
    EXPECT_EQ(Texts(sum + sum), (std::vector<std::string>{"", notStored, notStored, notStored, notStored, notStored}));
    EXPECT_EQ(Texts(sum), (std::vector<std::string>{"", notStored, notStored, "", ""}));
}

TEST(ResultCopy, CopiesAndMovesCarryEveryField)
{
    const unsigned int seed = 6;
    Random random(seed);
    for (int run = 0; run < 40; ++run) {
        const CMemberResult original = RandomResult(random, Pick(random, 1, 4));
        const Record expected(original);
        const CMemberResult copy(original);
        EXPECT_EQ(Record(copy), expected) << "seed " << seed << " run " << run;
        CMemberResult assigned = RandomResult(random, 2);
        assigned = original;
        EXPECT_EQ(Record(assigned), expected) << "seed " << seed << " run " << run;
        CMemberResult source(original);
        CMemberResult moved(std::move(source));
        EXPECT_EQ(Record(moved), expected) << "seed " << seed << " run " << run;
        CMemberResult target = RandomResult(random, 3);
        target = std::move(moved);
        EXPECT_EQ(Record(target), expected) << "seed " << seed << " run " << run;
        CMemberResult& same = target;
        target = same;
        EXPECT_EQ(Record(target), expected) << "seed " << seed << " run " << run;
    }
}

static_assert(std::is_copy_constructible_v<CMemberResult> && std::is_copy_assignable_v<CMemberResult>);
static_assert(std::is_move_constructible_v<CMemberResult> && std::is_move_assignable_v<CMemberResult>);
