#include "text/Fields.h"

#include <random>

#include <gtest/gtest.h>

#include "keltrix/platform/KxUtil.h"
#include "text/Text.h"

namespace Keltrix::Host {
namespace {

struct PrefixRow {
    const wchar_t* text;
    std::size_t number;
    std::size_t whole;
};

TEST(Fields, EveryLetterIsTheSameInEitherCase)
{
    for (wchar_t c = L'A'; c <= L'Z'; ++c)
        EXPECT_TRUE(SameWord(std::wstring(1, c), std::wstring(1, static_cast<wchar_t>(c - L'A' + L'a'))))
            << static_cast<char>(c);
    // The neighbours of the letters have no other case: @ and `, [ and {.
    EXPECT_FALSE(SameWord(L"@", L"`"));
    EXPECT_FALSE(SameWord(L"[", L"{"));
}

TEST(Fields, ThePrefixThatIsReadAsANumberIsFound)
{
    static constexpr PrefixRow rows[] = {
        {L"2.5", 3, 1},  {L"2.5m", 3, 1},  {L"", 0, 0},      {L"abc", 0, 0},  {L"-3", 2, 2},  {L"+3", 2, 2},
        {L"-", 0, 0},    {L".5", 2, 0},    {L"5.", 2, 1},    {L".", 0, 0},    {L"1e3", 3, 1}, {L"1e", 1, 1},
        {L"1e+", 1, 1},  {L"1E-2x", 4, 1}, {L"inf", 3, 0},   {L"-INF", 4, 0}, {L"nan", 3, 0}, {L"Infinity", 8, 0},
        {L"0x10", 1, 1}, {L"1 000", 1, 1}, {L"1e5.5", 3, 1}, {L"--1", 0, 0},  {L"in", 0, 0},
    };
    for (const PrefixRow& row : rows) {
        EXPECT_EQ(NumberPrefix(row.text), row.number) << Quote(row.text);
        EXPECT_EQ(WholeNumberPrefix(row.text), row.whole) << Quote(row.text);
    }
}

// The platform's scanner is the measure: the prefix alone reads as the same value, and no longer start of the text does
// not.
TEST(Fields, ThePrefixIsTheReadersOverRandomTexts)
{
    constexpr unsigned seed = 20260721;
    std::mt19937 random(seed);
    static constexpr std::wstring_view letters = L"0129.eE+-infa x";
    for (int run = 0; run < 20000; ++run) {
        std::wstring text;
        for (unsigned n = random() % 8; n > 0; --n)
            text += letters[random() % letters.size()];
        std::wstring_view whole = text;
        std::wstring_view prefix = std::wstring_view(text).substr(0, NumberPrefix(text));
        const double fromWhole = GetValueDouble(whole);
        const double fromPrefix = GetValueDouble(prefix);
        const bool same = fromWhole == fromPrefix || (fromWhole != fromWhole && fromPrefix != fromPrefix);
        if (text.empty() || text.front() == L' ') continue;
        EXPECT_TRUE(same) << "seed " << seed << ", text " << Quote(text) << ": " << fromWhole << " against "
                          << fromPrefix;
    }
}

TEST(Fields, NearestForgivesAFewLettersAndAnyCase)
{
    const std::vector<std::wstring_view> words = {L"Pinned", L"Fixed", L"Top flange lateral"};
    EXPECT_EQ(Nearest(L"pined", words), L"Pinned");
    EXPECT_EQ(Nearest(L"TOP FLANGE LATERAl", words), L"Top flange lateral");
    EXPECT_EQ(Nearest(L"welded", words), std::nullopt);
    EXPECT_EQ(Nearest(L"", words), std::nullopt);
    EXPECT_EQ(Nearest(std::wstring(100000, L'x'), words), std::nullopt);
}

TEST(Fields, ALineIsSplitAsTheReaderTakesIt)
{
    const FieldList list = SplitFields(L" 1 ,2,,x", 3);
    EXPECT_EQ(list.count, 4u);
    EXPECT_EQ(list.fields, (std::vector<std::wstring_view>{L"1", L"2", L""}));
    EXPECT_EQ(SplitFields(L"1,2,", 9).count, 2u); // the last comma ends a field and begins none
    EXPECT_EQ(SplitFields(L"1,2,", 1).count, 2u);
    EXPECT_EQ(SplitFields(L"", 9).count, 0u);
}

} // namespace
} // namespace Keltrix::Host
