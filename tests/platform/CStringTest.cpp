#include "keltrix/platform/CString.h"

#include <cstdint>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "Show.h"

namespace Keltrix {
namespace {

TEST(CString, IsEmptyByDefaultAndFromANullPointer)
{
    EXPECT_TRUE(CString().IsEmpty());
    EXPECT_EQ(CString(static_cast<const wchar_t*>(nullptr)).GetLength(), 0);
    EXPECT_EQ(CString().GetString()[0], L'\0');
}

TEST(CString, RepeatsACharacterAndNeverANegativeNumberOfTimes)
{
    EXPECT_EQ(CString(L'-', 3), L"---");
    EXPECT_EQ(CString(L'-', 0), L"");
    EXPECT_EQ(CString(L'-', -2), L"");
    CString text = L"a";
    text.Append(2, L'b');
    text.Append(-1, L'c');
    EXPECT_EQ(text, L"abb");
}

TEST(CString, GivesItsCharactersAndTheTerminator)
{
    const CString text = L"xyz";
    EXPECT_EQ(text[0], L'x');
    EXPECT_EQ(text[2], L'z');
    EXPECT_EQ(text[3], L'\0');
}

TEST(CString, CutsPartsAndClampsTheirEnds)
{
    const CString text = L"restraint";
    EXPECT_EQ(text.Left(4), L"rest");
    EXPECT_EQ(text.Left(0), L"");
    EXPECT_EQ(text.Left(-1), L"");
    EXPECT_EQ(text.Left(99), L"restraint");
    EXPECT_EQ(text.Right(5), L"raint");
    EXPECT_EQ(text.Right(-1), L"");
    EXPECT_EQ(text.Right(99), L"restraint");
    EXPECT_EQ(text.Mid(4), L"raint");
    EXPECT_EQ(text.Mid(9), L"");
    EXPECT_EQ(text.Mid(10), L"");
    EXPECT_EQ(text.Mid(-3), L"restraint");
    EXPECT_EQ(text.Mid(4, 3), L"rai");
    EXPECT_EQ(text.Mid(4, -1), L"");
    EXPECT_EQ(text.Mid(7, 99), L"nt");
    EXPECT_EQ(text.Mid(-1, 4), L"rest");
}

TEST(CString, FindsFromAPlaceOnwards)
{
    const CString text = L"abcabc";
    EXPECT_EQ(text.Find(L'c'), 2);
    EXPECT_EQ(text.Find(L'c', 2), 2);
    EXPECT_EQ(text.Find(L'c', 3), 5);
    EXPECT_EQ(text.Find(L'c', 6), -1);
    EXPECT_EQ(text.Find(L'x'), -1);
    EXPECT_EQ(text.Find(L"ca"), 2);
    EXPECT_EQ(text.Find(L"bc", 2), 4);
    EXPECT_EQ(text.Find(L"bc", -5), 1);
    EXPECT_EQ(text.Find(L"cab", 3), -1);
    EXPECT_EQ(text.Find(L"", 3), 3);
    EXPECT_EQ(text.Find(L"", 6), 6);
    EXPECT_EQ(text.Find(L"", 7), -1);
}

TEST(CString, ReplacesFromTheLeftWithoutLookingAtWhatWasPutIn)
{
    CString text = L"aaaa";
    EXPECT_EQ(text.Replace(L"aa", L"a"), 2);
    EXPECT_EQ(text, L"aa");
    EXPECT_EQ(text.Replace(L"a", L"aa"), 2);
    EXPECT_EQ(text, L"aaaa");
    EXPECT_EQ(text.Replace(L"", L"x"), 0);
    EXPECT_EQ(text.Replace(L"b", L"x"), 0);
    EXPECT_EQ(text.Replace(L"a", L""), 4);
    EXPECT_TRUE(text.IsEmpty());

    CString lines = L"a\nb\nc";
    EXPECT_EQ(lines.Replace(L"\n", L"\n\t"), 2);
    EXPECT_EQ(lines, L"a\n\tb\n\tc");
    EXPECT_EQ(lines.Replace(L'\t', L' '), 2);
    EXPECT_EQ(lines, L"a\n b\n c");
}

TEST(CString, ReplacesByItself)
{
    CString text = L"ab";
    EXPECT_EQ(text.Replace(L"a", text.GetString()), 1);
    EXPECT_EQ(text, L"abb");
}

TEST(CString, RemovesEveryOccurrenceOfACharacter)
{
    CString text = L"a, b, c";
    EXPECT_EQ(text.Remove(L','), 2);
    EXPECT_EQ(text, L"a b c");
    EXPECT_EQ(text.Remove(L'z'), 0);
}

TEST(CString, ChangesTheCaseOfAsciiLettersOnly)
{
    CString text = L"aZ@[`{\u00E4\u00C4";
    EXPECT_EQ(text.MakeUpper(), L"AZ@[`{\u00E4\u00C4");
    EXPECT_EQ(text.MakeLower(), L"az@[`{\u00E4\u00C4");
    EXPECT_EQ(&text.MakeLower(), &text);
}

TEST(CString, TrimsWhiteSpaceButNoOtherBlankLookingCharacter)
{
    const CString padded = L" \t\r\n\v\fa b\u00A0\f\v\n\r\t ";
    EXPECT_EQ(CString(padded).Trim(), L"a b\u00A0");
    EXPECT_EQ(CString(padded).TrimLeft(), L"a b\u00A0\f\v\n\r\t ");
    EXPECT_EQ(CString(padded).TrimRight(), L" \t\r\n\v\fa b\u00A0");
    EXPECT_EQ(CString(L" \t ").Trim(), L"");
    EXPECT_EQ(CString(L" \t ").TrimLeft(), L"");
    EXPECT_EQ(CString(L" \t ").TrimRight(), L"");
}

TEST(CString, ComparesByCodeUnitsAndWithoutCase)
{
    EXPECT_EQ(CString(L"abc").Compare(L"abc"), 0);
    EXPECT_LT(CString(L"ABC").Compare(L"abc"), 0);
    EXPECT_GT(CString(L"abcd").Compare(L"abc"), 0);
    EXPECT_EQ(CString(L"RoLLed").CompareNoCase(L"ROLLED"), 0);
    EXPECT_LT(CString(L"a").CompareNoCase(L"B"), 0);
    EXPECT_GT(CString(L"b").CompareNoCase(L"A"), 0);
    EXPECT_LT(CString(L"ab").CompareNoCase(L"ABC"), 0);
    EXPECT_LT(CString(L"_").CompareNoCase(L"A"), 0) << "letters count as lower case, so '_' (95) is before 'a' (97)";
    EXPECT_NE(CString(L"\u00E4").CompareNoCase(L"\u00C4"), 0);
    EXPECT_TRUE(CString(L"a") < CString(L"b"));
    EXPECT_TRUE(CString(L"a") >= L"a");
    EXPECT_TRUE(CString() == static_cast<const wchar_t*>(nullptr));
}

TEST(CString, JoinsTexts)
{
    CString text = L"a";
    text += L'b';
    text += L"c";
    text += CString(L"d");
    text += std::wstring_view(L"ef").substr(0, 1);
    text += static_cast<const wchar_t*>(nullptr);
    EXPECT_EQ(text, L"abcde");
    EXPECT_EQ(CString(L"a") + L"b", L"ab");
    EXPECT_EQ(L"a" + CString(L"b"), L"ab");
    EXPECT_EQ(CString(L"a") + CString(L"b"), L"ab");
    text += text;
    EXPECT_EQ(text, L"abcdeabcde");
}

// --- UTF-8 ----------------------------------------------------------------------------------------------------------

std::string Bytes(std::initializer_list<int> values)
{
    std::string bytes;
    for (const int value : values)
        bytes.push_back(static_cast<char>(value));
    return bytes;
}

std::string Hex(const std::string& bytes)
{
    std::string text;
    char buffer[4];
    for (const char c : bytes) {
        std::snprintf(buffer, sizeof buffer, "%02X ", static_cast<unsigned>(static_cast<unsigned char>(c)));
        text += buffer;
    }
    return text;
}

// The table of well-formed sequences (The Unicode Standard, table 3-7), written down independently of the decoder.
bool IsWellFormedSequence(const unsigned char* b, std::size_t length)
{
    const auto in = [](unsigned char x, int low, int high) { return x >= low && x <= high; };
    switch (length) {
    case 1:
        return b[0] <= 0x7F;
    case 2:
        return in(b[0], 0xC2, 0xDF) && in(b[1], 0x80, 0xBF);
    case 3:
        if (!in(b[2], 0x80, 0xBF)) return false;
        if (b[0] == 0xE0) return in(b[1], 0xA0, 0xBF);
        if (b[0] == 0xED) return in(b[1], 0x80, 0x9F);
        return in(b[0], 0xE1, 0xEF) && in(b[1], 0x80, 0xBF);
    case 4:
        if (!in(b[2], 0x80, 0xBF) || !in(b[3], 0x80, 0xBF)) return false;
        if (b[0] == 0xF0) return in(b[1], 0x90, 0xBF);
        if (b[0] == 0xF4) return in(b[1], 0x80, 0x8F);
        return in(b[0], 0xF1, 0xF3) && in(b[1], 0x80, 0xBF);
    default:
        return false;
    }
}

TEST(CStringUtf8, AcceptsExactlyTheWellFormedPairsAndTriplesThatStartWithAnyLead)
{
    // Every lead byte with boundary values in each further place.
    const int boundary[] = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xFF};
    int accepted = 0;
    for (int lead = 0x80; lead <= 0xFF; ++lead) {
        for (const int b1 : boundary) {
            for (const int b2 : boundary) {
                for (const int b3 : boundary) {
                    const std::string bytes = Bytes({lead, b1, b2, b3});
                    const auto* raw = reinterpret_cast<const unsigned char*>(bytes.data());
                    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
                    const bool expected = IsWellFormedSequence(raw, length);
                    ASSERT_EQ(CString::FromUtf8(bytes.substr(0, length)).has_value(), expected)
                        << Hex(bytes.substr(0, length));
                    accepted += expected;
                }
            }
        }
    }
    EXPECT_GT(accepted, 0);
}

TEST(CStringUtf8, CarriesEveryCodePointThereAndBack)
{
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (c >= 0xD800 && c <= 0xDFFF) continue;
        std::wstring wide;
        if (sizeof(wchar_t) == 2 && c >= 0x10000) {
            wide = {static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10)),
                    static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF))};
        } else {
            wide = {static_cast<wchar_t>(c)};
        }
        const CString text(wide);
        const auto bytes = text.ToUtf8();
        ASSERT_TRUE(bytes) << std::hex << static_cast<unsigned>(c);
        ASSERT_EQ(bytes->size(), c < 0x80 ? 1U : c < 0x800 ? 2U : c < 0x10000 ? 3U : 4U);
        ASSERT_TRUE(IsWellFormedSequence(reinterpret_cast<const unsigned char*>(bytes->data()), bytes->size()));
        ASSERT_EQ(CString::FromUtf8(*bytes), text) << std::hex << static_cast<unsigned>(c);
    }
}

TEST(CStringUtf8, WritesKnownTexts)
{
    EXPECT_EQ(CString(L"N/mm\u00B2").ToUtf8(), "N/mm\xC2\xB2");
    EXPECT_EQ(CString::FromUtf8("\xE2\x82\xAC"), CString(L"\u20AC"));
    EXPECT_EQ(CString::FromUtf8(""), CString());
    EXPECT_EQ(CString::FromUtf8(std::string_view("a\0b", 3))->GetLength(), 3);
}

TEST(CStringUtf8, SaysWhereIllFormedInputBegins)
{
    const struct {
        std::string bytes;
        std::size_t offset;
    } cases[] = {
        {Bytes({'a', 'b', 0x80}), 2},              // stray continuation byte
        {Bytes({'a', 0xC3, 'b'}), 1},              // missing continuation byte
        {Bytes({0xE2, 0x82}), 0},                  // cut short
        {Bytes({'a', 0xF0, 0x9F, 0x98}), 1},       // cut short
        {Bytes({0xC3, 0xA4, 0xC0, 0x80}), 2},      // overlong, two bytes
        {Bytes({0xC1, 0xBF}), 0},                  // overlong, two bytes
        {Bytes({'a', 0xE0, 0x9F, 0xBF}), 1},       // overlong, three bytes
        {Bytes({0xF0, 0x8F, 0xBF, 0xBF}), 0},      // overlong, four bytes
        {Bytes({'a', 'b', 0xED, 0xA0, 0x80}), 2},  // first surrogate
        {Bytes({0xED, 0xBF, 0xBF}), 0},            // last surrogate
        {Bytes({'a', 0xF4, 0x90, 0x80, 0x80}), 1}, // U+110000
        {Bytes({0xF5, 0x80, 0x80, 0x80}), 0},
        {Bytes({'a', 0xFF}), 1},
    };
    for (const auto& [bytes, offset] : cases) {
        std::size_t found = 999;
        EXPECT_FALSE(CString::FromUtf8(bytes, &found)) << Hex(bytes);
        EXPECT_EQ(found, offset) << Hex(bytes);
    }
    std::size_t untouched = 7;
    EXPECT_TRUE(CString::FromUtf8("fine", &untouched));
    EXPECT_EQ(untouched, 7U);
}

TEST(CStringUtf8, RefusesTextThatIsNotWellFormed)
{
    for (const unsigned unit : {0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU}) {
        EXPECT_FALSE(CString(std::wstring{L'a', static_cast<wchar_t>(unit)}).ToUtf8()) << std::hex << unit;
        EXPECT_FALSE(CString(std::wstring{static_cast<wchar_t>(unit), L'a'}).ToUtf8()) << std::hex << unit;
    }
    EXPECT_FALSE(CString(std::wstring{static_cast<wchar_t>(0xDC00), static_cast<wchar_t>(0xD800)}).ToUtf8());
    if constexpr (sizeof(wchar_t) == 4) {
        EXPECT_FALSE(CString(std::wstring{static_cast<wchar_t>(0x110000)}).ToUtf8());
        EXPECT_FALSE(CString(std::wstring{static_cast<wchar_t>(0xFFFFFFFFU)}).ToUtf8());
        EXPECT_FALSE(CString(std::wstring{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)}).ToUtf8())
            << "a surrogate pair has no place in 32-bit units";
    }
}

TEST(CStringUtf8, AcceptsRandomBytesOnlyWhenTheyComeBackUnchanged)
{
    constexpr std::uint32_t seed = 20240517;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    int accepted = 0;
    for (int run = 0; run < 200000; ++run) {
        std::string bytes;
        for (auto n = random() % 5; n > 0; --n)
            bytes.push_back(static_cast<char>(random() & 0xFF));
        if (const auto text = CString::FromUtf8(bytes)) {
            ASSERT_EQ(text->ToUtf8(), bytes) << Hex(bytes);
            ++accepted;
        }
    }
    EXPECT_GT(accepted, 1000);
}

} // namespace
} // namespace Keltrix
