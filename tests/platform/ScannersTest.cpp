#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Show.h"
#include "keltrix/platform/KxUtil.h"

namespace Keltrix {
namespace {

constexpr double INF = std::numeric_limits<double>::infinity();

std::vector<CString> LinesOf(const CString& text)
{
    std::vector<CString> lines{GetLine(&text)};
    while (!AtEndOfLines())
        lines.push_back(GetLine(nullptr));
    return lines;
}

TEST(GetLine, CutsTextAtLineFeedsWithOrWithoutACarriageReturn)
{
    EXPECT_EQ(LinesOf(L"a\nb\r\nc"), (std::vector<CString>{L"a", L"b", L"c"}));
    EXPECT_EQ(LinesOf(L"a\n"), (std::vector<CString>{L"a"}));
    EXPECT_EQ(LinesOf(L"a\n\nb"), (std::vector<CString>{L"a", L"", L"b"}));
    EXPECT_EQ(LinesOf(L"\n"), (std::vector<CString>{L""}));
    EXPECT_EQ(LinesOf(L"\r\n\r\n"), (std::vector<CString>{L"", L""}));
    EXPECT_EQ(LinesOf(L""), (std::vector<CString>{L""}));
    EXPECT_EQ(LinesOf(L"a\rb\r\r\nc"), (std::vector<CString>{L"a\rb\r", L"c"}));
}

TEST(GetLine, GivesEmptyLinesBehindTheEnd)
{
    const CString text = L"only";
    EXPECT_EQ(GetLine(&text), L"only");
    EXPECT_TRUE(AtEndOfLines());
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(GetLine(nullptr), L"");
    EXPECT_TRUE(AtEndOfLines());
}

TEST(GetLine, StartsAfreshWithEveryText)
{
    const CString first = L"1\n2\n3";
    const CString second = L"x\ny";
    EXPECT_EQ(GetLine(&first), L"1");
    EXPECT_EQ(GetLine(nullptr), L"2");
    EXPECT_EQ(GetLine(&second), L"x");
    EXPECT_EQ(GetLine(nullptr), L"y");
    EXPECT_EQ(GetLine(&first), L"1");
}

TEST(GetLine, SharesItsPlaceWithTheViewThatPointsIntoTheText)
{
    const CString text = L"first\nsecond\nthird";
    EXPECT_EQ(GetLine(&text), L"first");
    const std::wstring_view second = GetLineView(nullptr);
    EXPECT_EQ(second, L"second");
    EXPECT_EQ(second.data(), text.GetString() + 6);
    EXPECT_EQ(GetLine(nullptr), L"third");
}

TEST(GetLine, KeepsItsPlacePerThread)
{
    const CString text = L"1\n2\n3";
    EXPECT_EQ(GetLine(&text), L"1");
    bool endBeforeStart = false;
    CString beforeStart = L"?";
    CString otherFirst;
    std::thread other([&] {
        endBeforeStart = AtEndOfLines();
        beforeStart = GetLine(nullptr);
        const CString otherText = L"a\nb";
        otherFirst = GetLine(&otherText);
    });
    other.join();
    EXPECT_TRUE(endBeforeStart);
    EXPECT_EQ(beforeStart, L"");
    EXPECT_EQ(otherFirst, L"a");
    EXPECT_EQ(GetLine(nullptr), L"2");
}

TEST(GetSubString, TakesTrimmedFieldsFromTheFront)
{
    CString line = L"SECTION, \tUB 457x191x67\t ,ROLLED";
    EXPECT_EQ(GetSubString(line), L"SECTION");
    EXPECT_EQ(line, L" \tUB 457x191x67\t ,ROLLED");
    EXPECT_EQ(GetSubString(line), L"UB 457x191x67");
    EXPECT_EQ(GetSubString(line), L"ROLLED");
    EXPECT_EQ(line, L"");
    EXPECT_EQ(GetSubString(line), L"");
    EXPECT_EQ(line, L"");
}

TEST(GetSubString, GivesEmptyFieldsBetweenCommas)
{
    CString line = L",, ,x,";
    EXPECT_EQ(GetSubString(line), L"");
    EXPECT_EQ(GetSubString(line), L"");
    EXPECT_EQ(GetSubString(line), L"");
    EXPECT_EQ(GetSubString(line), L"x");
    EXPECT_EQ(line, L"");
    CString quoted = L"\"a,b\"";
    EXPECT_EQ(GetSubString(quoted), L"\"a") << "quotation marks mean nothing";
    CString returned = L" a\r ";
    EXPECT_EQ(GetSubString(returned), L"a\r") << "only blanks and tabs are trimmed";
}

TEST(GetSubString, TakesViewsThatPointIntoTheLine)
{
    const std::wstring_view text = L"ab, cd ,ef";
    std::wstring_view line = text;
    EXPECT_EQ(GetSubString(line).data(), text.data());
    const std::wstring_view second = GetSubString(line);
    EXPECT_EQ(second, L"cd");
    EXPECT_EQ(second.data(), text.data() + 4);
    EXPECT_EQ(GetSubString(line), L"ef");
    EXPECT_TRUE(line.empty());
}

template <class T>
T Taken(T (*take)(std::wstring_view&), std::wstring_view text)
{
    return take(text);
}

double Double(std::wstring_view text) { return Taken<double>(GetValueDouble, text); }

TEST(GetValueDouble, ReadsTheLongestValidPrefix)
{
    const struct {
        const wchar_t* text;
        double value;
    } cases[] = {
        {L"2.5", 2.5},        {L" 2.5 ", 2.5},   {L"2.5m", 2.5},     {L"+2.5", 2.5},
        {L"-2.5e3", -2500.0}, {L"1E+3", 1000.0}, {L"1e", 1.0},       {L"1e+", 1.0},
        {L"1e-x", 1.0},       {L".5", 0.5},      {L"5.", 5.0},       {L"5.e1", 50.0},
        {L"1.2.3", 1.2},      {L"0x10", 0.0},    {L"0x1p3", 0.0},    {L"007", 7.0},
        {L"1 2", 1.0},        {L"1'000", 1.0},   {L"", 0.0},         {L"abc", 0.0},
        {L".", 0.0},          {L"-", 0.0},       {L"+", 0.0},        {L".e5", 0.0},
        {L"e5", 0.0},         {L"+-1", 0.0},     {L"--1", 0.0},      {L"- 1", 0.0},
        {L"1d5", 1.0},        {L"\t3\t", 3.0},   {L"2\u00A05", 2.0}, {L"2\uFF15", 2.0},
        {L"\uFF12", 0.0},     {L"\u22125", 0.0}, {L"1e\u0663", 1.0}, {L"0e99999999999999999999", 0.0},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Double(text), value) << CString(text).ToUtf8().value_or("");
    }
}

TEST(GetValueDouble, KeepsTheSignOfZero)
{
    EXPECT_TRUE(std::signbit(Double(L"-0")));
    EXPECT_TRUE(std::signbit(Double(L"-0.000e5")));
    EXPECT_TRUE(std::signbit(Double(L"-1e-999")));
    EXPECT_FALSE(std::signbit(Double(L"0")));
    EXPECT_FALSE(std::signbit(Double(L"-")));
}

TEST(GetValueDouble, ReadsInfinityAndNotANumberInAnyCase)
{
    EXPECT_EQ(Double(L"INF"), INF);
    EXPECT_EQ(Double(L"-Inf"), -INF);
    EXPECT_EQ(Double(L"+infinity"), INF);
    EXPECT_EQ(Double(L"inf,"), INF);
    EXPECT_TRUE(std::isnan(Double(L"NAN")));
    EXPECT_TRUE(std::isnan(Double(L"nan")));
    EXPECT_TRUE(std::isnan(Double(L"-NaN")));
    EXPECT_TRUE(std::signbit(Double(L"-NAN")));
    EXPECT_EQ(Double(L"IN"), 0.0);
    EXPECT_EQ(Double(L"na"), 0.0);
}

TEST(GetValueDouble, GivesInfinityOnOverflowAndSubnormalsOrZeroOnUnderflow)
{
    EXPECT_EQ(Double(L"1e999"), INF);
    EXPECT_EQ(Double(L"-1e999"), -INF);
    EXPECT_EQ(Double(L"1.7976931348623159e308"), INF);
    EXPECT_EQ(Double(L"1.7976931348623158e308"), 1.7976931348623157e308);
    EXPECT_EQ(Double(L"1e99999999999999999999999"), INF);
    EXPECT_EQ(Double(L"1e-99999999999999999999999"), 0.0);
    EXPECT_EQ(Double(L"1e-999"), 0.0);
    EXPECT_EQ(Double(L"4.9e-324"), 4.9406564584124654e-324);
    EXPECT_EQ(Double(L"2.5e-324"), 4.9406564584124654e-324);
    EXPECT_EQ(Double(L"2.4e-324"), 0.0);
    EXPECT_EQ(Double(L"2.2250738585072011e-308"), 2.2250738585072011e-308);
    EXPECT_EQ(Double(L"1e-310"), 1e-310);
}

TEST(GetValueDouble, RoundsLongFieldsCorrectly)
{
    // Half-way between 1 and the next double: to even, unless any later digit is not 0.
    const std::wstring half = L"1.00000000000000011102230246251565404236316680908203125";
    const double next = std::nextafter(1.0, 2.0);
    EXPECT_EQ(Double(half), 1.0);
    EXPECT_EQ(Double(half + L"1"), next);
    EXPECT_EQ(Double(half + std::wstring(2000, L'0')), 1.0);
    EXPECT_EQ(Double(half + std::wstring(2000, L'0') + L"1"), next);
    EXPECT_EQ(Double(std::wstring(5000, L'0') + L"12"), 12.0);
    EXPECT_EQ(Double(L"0." + std::wstring(5000, L'0') + L"12e5001"), 1.2);
    EXPECT_EQ(Double(L"1" + std::wstring(5000, L'0') + L"e-5000"), 1.0);
    EXPECT_EQ(Double(std::wstring(400, L'9')), INF);
    EXPECT_EQ(Double(std::wstring(1000, L'3') + L"e-1000"), 1.0 / 3.0);
}

TEST(GetValueDouble, ReadsBackWhatIsWrittenWithEveryNumberOfDigits)
{
    constexpr std::uint64_t seed = 754;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    for (int run = 0; run < 100000; ++run) {
        const auto value = BitsOf<double>(static_cast<std::uint64_t>(random()));
        if (!std::isfinite(value)) continue;
        char narrow[1200];
        const int digits = run % 10 == 0 ? 780 : static_cast<int>(random() % 25);
        std::snprintf(narrow, sizeof narrow, "%.*e", digits, value);
        const std::string text = narrow;
        ASSERT_EQ(BitsOf<std::uint64_t>(Double(std::wstring(text.begin(), text.end()))),
                  BitsOf<std::uint64_t>(std::strtod(narrow, nullptr)))
            << text;
    }
}

TEST(GetValueDouble, DoesNotLookAtTheProcessLocale)
{
    const CommaLocale locale;
    if (!locale.IsSet())
        GTEST_SKIP()
            << "Left out: needs a locale with a decimal comma (Debian: apt-get install locales; ./test makes one)";
    EXPECT_EQ(Double(L"2.5"), 2.5);
    CString line = L"2,5";
    EXPECT_EQ(GetValueDouble(line), 2.0);
    EXPECT_EQ(line, L"5");
}

TEST(GetValueFloat, RoundsOnceAndNotThroughDouble)
{
    // Just above half-way between 1 and the next float, by less than a double can show: rounding twice gives 1.
    const std::wstring text = L"1.000000059604644775390625000000000001";
    EXPECT_EQ(static_cast<float>(Double(text)), 1.0F);
    EXPECT_EQ(Taken<float>(GetValueFloat, text), std::nextafter(1.0F, 2.0F));
}

TEST(GetValueFloat, ReadsTheRangeOfFloat)
{
    EXPECT_EQ(Taken<float>(GetValueFloat, L" 0.15 m"), 0.15F);
    EXPECT_EQ(Taken<float>(GetValueFloat, L"1e39"), std::numeric_limits<float>::infinity());
    EXPECT_EQ(Taken<float>(GetValueFloat, L"-1e39"), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(Taken<float>(GetValueFloat, L"1e-45"), std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(Taken<float>(GetValueFloat, L"1e-50"), 0.0F);
    EXPECT_TRUE(std::isnan(Taken<float>(GetValueFloat, L"NAN")));
    EXPECT_EQ(Taken<float>(GetValueFloat, L""), 0.0F);
}

TEST(GetValueInt, ReadsWholePrefixesAndClamps)
{
    const struct {
        const wchar_t* text;
        int value;
    } cases[] = {
        {L"12", 12},
        {L" -7 ", -7},
        {L"+3", 3},
        {L"2.9", 2},
        {L"1e3", 1},
        {L"3m", 3},
        {L"", 0},
        {L"x", 0},
        {L"-", 0},
        {L"+-1", 0},
        {L"INF", 0},
        {L"0x1F", 0},
        {L"0012", 12},
        {L"2147483647", INT_MAX},
        {L"2147483648", INT_MAX},
        {L"-2147483648", INT_MIN},
        {L"-2147483649", INT_MIN},
        {L"99999999999999999999999", INT_MAX},
        {L"-99999999999999999999999", INT_MIN},
        {L"\uFF11", 0},
        {L"1\u0661", 1},
    };
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(Taken<int>(GetValueInt, text), value) << CString(text).ToUtf8().value_or("");
    }
}

TEST(GetValue, TakesExactlyOneFieldFromALineOfEitherKind)
{
    CString line = L"1,2.5,0.25,tail";
    EXPECT_EQ(GetValueInt(line), 1);
    EXPECT_EQ(GetValueDouble(line), 2.5);
    EXPECT_EQ(GetValueFloat(line), 0.25F);
    EXPECT_EQ(line, L"tail");
    EXPECT_EQ(GetValueInt(line), 0);
    EXPECT_EQ(line, L"");
    EXPECT_EQ(GetValueDouble(line), 0.0);

    std::wstring_view view = L"1,2.5,0.25,tail";
    EXPECT_EQ(GetValueInt(view), 1);
    EXPECT_EQ(GetValueDouble(view), 2.5);
    EXPECT_EQ(GetValueFloat(view), 0.25F);
    EXPECT_EQ(view, L"tail");
}

TEST(StringTo, TakesWholeNumbersOnly)
{
    int value = 99;
    EXPECT_TRUE(StringTo(L"3", value));
    EXPECT_EQ(value, 3);
    EXPECT_TRUE(StringTo(L" \t-12\t ", value));
    EXPECT_EQ(value, -12);
    EXPECT_TRUE(StringTo(CString(L"+4"), value));
    EXPECT_EQ(value, 4);
    EXPECT_TRUE(StringTo(L"99999999999", value));
    EXPECT_EQ(value, INT_MAX);
    EXPECT_TRUE(StringTo(L"-99999999999", value));
    EXPECT_EQ(value, INT_MIN);
    value = 99;
    for (const wchar_t* const text :
         {L"", L" ", L"x", L"3x", L"3.0", L"3 4", L"-", L"+", L"--3", L"0x3", L"1e2", L"3\n", L"\uFF13"}) {
        EXPECT_FALSE(StringTo(text, value)) << CString(text).ToUtf8().value_or("");
        EXPECT_EQ(value, 99);
    }
}

} // namespace
} // namespace Keltrix
