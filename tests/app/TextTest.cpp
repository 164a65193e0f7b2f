#include "Text.h"

#include <limits>

#include <gtest/gtest.h>

namespace Keltrix::App {
namespace {

TEST(Text, PrintableReplacesControlCharactersAndIllFormedBytes)
{
    EXPECT_EQ(Printable("a\x1B[31mb"), "a\xEF\xBF\xBD[31mb");
    EXPECT_EQ(Printable("a\tb\n"), "a\tb\n");
    EXPECT_EQ(Printable(std::string_view("\0\r\x7F", 3)), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(Printable("\xC2\x9B"), "\xEF\xBF\xBD"); // a control character of two bytes
    EXPECT_EQ(Printable("\xFFx"), "\xEF\xBF\xBDx");
    EXPECT_EQ(Printable("\xC0\xAF"), "\xEF\xBF\xBD\xEF\xBF\xBD"); // overlong
    EXPECT_EQ(Printable("\xED\xA0\x80").size(), 9u);              // a surrogate: three bad bytes
    EXPECT_EQ(Printable("\xE2\x82"), "\xEF\xBF\xBD\xEF\xBF\xBD"); // cut off
    EXPECT_EQ(Printable("N/mm\xC2\xB2 \xE2\x82\xAC"), "N/mm\xC2\xB2 \xE2\x82\xAC");
}

TEST(Text, DisplayWidthCountsWhatATerminalShows)
{
    EXPECT_EQ(DisplayWidth("cm\xC2\xB2"), 3u);
    EXPECT_EQ(DisplayWidth("e\xCC\x81"), 1u);    // e with a combining accent
    EXPECT_EQ(DisplayWidth("\xE6\xA2\x81"), 2u); // 梁
    EXPECT_EQ(DisplayWidth(""), 0u);
}

TEST(Text, UnpairedSurrogatesComeOutAsReplacementCharacters)
{
    CString text = L"a";
    text += static_cast<wchar_t>(0xD800);
    text += L'b';
    EXPECT_EQ(Utf8(text), "a\xEF\xBF\xBD"
                          "b");
}

TEST(Text, QuotesAreCutAndHoldNoControlCharacters)
{
    EXPECT_EQ(Quote(L"2,5m"), "\"2,5m\"");
    EXPECT_EQ(Quote(L"a\tb\x1b"), "\"a b\xEF\xBF\xBD\"");
    EXPECT_EQ(Quote(std::wstring(61, L'x')), "\"" + std::string(60, 'x') + "...\"");
}

TEST(Text, FiguresKeepTheNumberOfSignificantFigures)
{
    EXPECT_EQ(Figures(29380.4, 4), "29380");
    EXPECT_EQ(Figures(29384.9, 3), "29400");
    EXPECT_EQ(Figures(4.1205, 4), "4.120"); // the double lies below the tie
    EXPECT_EQ(Figures(0.0703841, 3), "0.0704");
    EXPECT_EQ(Figures(999.96, 4), "1000");
    EXPECT_EQ(Figures(0.0, 4), "0");
    EXPECT_EQ(Figures(-1.5, 2), "-1.5");
    EXPECT_EQ(Figures(1e-9, 3), "1.00e-09");
    EXPECT_EQ(Figures(std::numeric_limits<double>::infinity(), 3), "inf");
    EXPECT_EQ(Rounded(453.4, 6), "453.4");
    EXPECT_EQ(Rounded(300.0, 6), "300");
    EXPECT_EQ(Rounded(0.5, 3), "0.5");
    EXPECT_EQ(Shortest(0.1), "0.1");
    EXPECT_EQ(Shortest(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(Shortest(std::numeric_limits<double>::quiet_NaN()), "nan");
}

} // namespace
} // namespace Keltrix::App
