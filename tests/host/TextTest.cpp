#include "text/Text.h"

#include <limits>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace Keltrix::Host {
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
    EXPECT_EQ(Printable("\xE0\x80\xAF").size(), 9u);              // overlong by a byte
    EXPECT_EQ(Printable("\xF0\x80\x80\xAF").size(), 12u);         // and by two
    EXPECT_EQ(Printable("\xF4\x90\x80\x80").size(), 12u);         // beyond the last character
    EXPECT_EQ(Printable("\xF0\x9F\x8C\x89"), "\xF0\x9F\x8C\x89"); // a bridge
    EXPECT_EQ(Printable("N/mm\xC2\xB2 \xE2\x82\xAC"), "N/mm\xC2\xB2 \xE2\x82\xAC");
}

// It looks at several characters at once: each byte at each place among plain ones, and texts of any bytes.
TEST(Text, ThePlainLengthIsThatFoundByteByByte)
{
    const auto byteByByte = [](std::string_view text) {
        std::size_t length = 0;
        while (length < text.size() && text[length] >= 0x20 && text[length] < 0x7F)
            ++length;
        return length;
    };
    for (std::size_t size = 0; size < 20; ++size) {
        for (std::size_t place = 0; place < size; ++place) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string text(size, byte % 2 == 0 ? ' ' : '~');
                text[place] = static_cast<char>(byte);
                ASSERT_EQ(PlainLength(text), byteByByte(text)) << size << ", " << place << ", " << byte;
            }
        }
    }
    constexpr unsigned SEED = 7;
    std::mt19937 random(SEED);
    for (int i = 0; i < 20000; ++i) {
        std::string text(random() % 40, ' ');
        for (char& c : text)
            c = static_cast<char>(random() % 8 == 0 ? random() % 256 : 0x20 + random() % 0x5F);
        ASSERT_EQ(PlainLength(text), byteByByte(text)) << "seed " << SEED;
    }
}

TEST(Text, WhatIsHiddenAndChangesATextIsNamed)
{
    EXPECT_EQ(Printable("Beam \xE2\x80\xAE"
                        "67\xE2\x80\xAC"),
              "Beam [U+202E]67[U+202C]");                                   // overridden direction
    EXPECT_EQ(Printable("\xE2\x81\xA6x\xE2\x81\xA9"), "[U+2066]x[U+2069]"); // isolated direction
    EXPECT_EQ(Printable("B1\xE2\x80\x8B"), "B1[U+200B]");                   // no width
    EXPECT_EQ(Printable("\xE2\x80\x8Dx\xEF\xBB\xBF\xC2\xAD"), "[U+200D]x[U+FEFF][U+00AD]");
    EXPECT_EQ(Printable("a\xE2\x80\xA8"
                        "b"),
              "a[U+2028]b");                               // a line separator
    EXPECT_EQ(Printable("\xF3\xA0\x81\x81"), "[U+E0041]"); // a tag
    const std::string seen = "Tr\xC3\xA4ger e\xCC\x81 \xE6\xA2\x81 \xD7\xA9 \xE2\x9D\xA4\xEF\xB8\x8F";
    EXPECT_EQ(Printable(seen), seen) << "letters of any writing, accents and their variations stay";
    EXPECT_EQ(DisplayWidth(Printable("\xE2\x80\x8B")), 8u);
}

TEST(Text, ANameStandsInOneLine)
{
    EXPECT_EQ(PrintableLine("a\nksteel: b.csv\tc\r"), "a[U+000A]ksteel: b.csv c\xEF\xBF\xBD");
    EXPECT_EQ(Quote(L"a\nb"), "\"a[U+000A]b\"");
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
} // namespace Keltrix::Host
