#include <cmath>
#include <cstdint>
#include <iterator>
#include <map>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "Show.h"
#include "keltrix/platform/KxData.h"

namespace Keltrix {
namespace {

using Prop = CSecGeom::Prop;

struct Form {
    const wchar_t* description;
    int shape;
    std::map<int, double> millimetres; // by number of dimension; every other is 0
};

const Form FORMS[] = {
    {L"I 400x200x10x15", 1, {{0, 400}, {1, 200}, {2, 10}, {3, 15}}},
    {L"I 400x200x10x15x12.5", 1, {{0, 400}, {1, 200}, {2, 10}, {3, 15}, {10, 12.5}}},
    {L"GI 600x200x300x10x15x20", 11, {{0, 600}, {1, 200}, {4, 300}, {2, 10}, {3, 15}, {6, 20}}},
    {L"GI 600x200x300x10x15x20x8", 11, {{0, 600}, {1, 200}, {4, 300}, {2, 10}, {3, 15}, {6, 20}, {10, 8}}},
    {L"C 200x90x7x14", 3, {{0, 200}, {1, 90}, {2, 7}, {3, 14}}},
    {L"C 200x90x7x14x12x6", 3, {{0, 200}, {1, 90}, {2, 7}, {3, 14}, {10, 12}, {11, 6}}},
    {L"TEE 150x200x8x12", 4, {{0, 150}, {1, 200}, {2, 8}, {3, 12}}},
    {L"TEE 150x200x8x12x10x0", 4, {{0, 150}, {1, 200}, {2, 8}, {3, 12}, {10, 10}}},
    {L"ANGLE 150x75x10", 5, {{0, 150}, {1, 75}, {2, 10}, {3, 10}}},
    {L"ANGLE 150x75x10x12x4.8", 5, {{0, 150}, {1, 75}, {2, 10}, {3, 10}, {10, 12}, {11, 4.8}}},
    {L"BOX 300x200x8x12", 9, {{0, 300}, {1, 200}, {2, 8}, {3, 12}}},
    {L"TUBE 168.3x5", 7, {{0, 168.3}, {2, 5}}},
};

void ExpectGeometry(const CSecGeom& geometry, const Form& form)
{
    EXPECT_EQ(geometry.Shape(), form.shape);
    for (int i = 0; i < 16; ++i) {
        const auto found = form.millimetres.find(i);
        const double metres = found == form.millimetres.end() ? 0.0 : found->second / 1000.0;
        EXPECT_EQ(geometry.Dimension(0.0, static_cast<Prop>(i)), metres) << "dimension " << i;
    }
}

TEST(ParametricDescription, SetsUpEveryForm)
{
    for (const Form& form : FORMS) {
        SCOPED_TRACE(CString(form.description).ToUtf8().value());
        CSecDB geometry(L"", nullptr);
        ASSERT_TRUE(geometry.SetUpFromDesc(form.description));
        ExpectGeometry(geometry, form);
        EXPECT_EQ(geometry.CatalogueType(), SEC_UNDEF);
        EXPECT_EQ(geometry.Description(true), form.description);
        EXPECT_EQ(geometry.Description(false), form.description);
        EXPECT_EQ(geometry.UserDesc(), form.description);
    }
}

TEST(ParametricDescription, ForgivesCaseBlanksAndTheMultiplicationSign)
{
    for (const wchar_t* const text : {L"i 400x200x10x15", L"I400X200X10X15", L"  I\t400 x 200 X 10\u00D715  ",
                                      L"I 400.0x200.00x1e1x15.", L"I 400*200 * 10*15", L"I 400x200x10x15x0"}) {
        SCOPED_TRACE(CString(text).ToUtf8().value());
        CSecDB geometry(L"", nullptr);
        ASSERT_TRUE(geometry.SetUpFromDesc(text));
        ExpectGeometry(geometry, FORMS[0]);
        EXPECT_EQ(geometry.UserDesc(), L"I 400x200x10x15");
    }
}

TEST(ParametricDescription, RefusesWhatIsNoWholeDescription)
{
    for (const wchar_t* const text : {L"",
                                      L" ",
                                      L"I",
                                      L"I 400",
                                      L"I 400x200x10",
                                      L"I 400x200x10x15x",
                                      L"I 400x200x10x15x5x5",
                                      L"I 400x200x10x15 mm",
                                      L"I x400x200x10x15",
                                      L"I 400x200x10x0",
                                      L"I 0x200x10x15",
                                      L"I -400x200x10x15",
                                      L"I 400x200x10x15x-1",
                                      L"I infx200x10x15",
                                      L"I nanx200x10x15",
                                      L"I 1e999x200x10x15",
                                      L"I 400xx200x10x15",
                                      L"I 4 00x200x10x15",
                                      L"I 400,200,10,15",
                                      L"J 400x200x10x15",
                                      L"II 400x200x10x15",
                                      L"C 200x90x7x14x12",
                                      L"TEE 150x200x8x12x10",
                                      L"ANGLE 150x75x10x12",
                                      L"ANGLE 150x75",
                                      L"BOX 300x200x8",
                                      L"BOX 300x200x8x12x5",
                                      L"TUBE 100",
                                      L"TUBE 100x5x1",
                                      L"GI 600x200x300x10x15",
                                      L"I 1e-330x200x10x15",
                                      L"400x200x10x15"}) {
        SCOPED_TRACE(CString(text).ToUtf8().value());
        CSecDB geometry(L"", nullptr);
        EXPECT_FALSE(geometry.SetUpFromDesc(text));
        ExpectGeometry(geometry, {text, 0, {}});
        EXPECT_EQ(geometry.UserDesc(), text);
        EXPECT_EQ(geometry.Description(true), L"");
    }
}

TEST(ParametricDescription, IsEmptyForAShapeWithoutAForm)
{
    for (int shape = 0; shape < 16; ++shape) {
        CSecGeom geometry;
        geometry.SetShape(shape);
        const bool known =
            shape == 1 || shape == 3 || shape == 4 || shape == 5 || shape == 7 || shape == 9 || shape == 11;
        EXPECT_EQ(geometry.Description(true).IsEmpty(), !known) << shape;
    }
    CSecGeom outside;
    outside.SetShape(0x1001);
    EXPECT_EQ(outside.Description(true), L"") << "bits of the mask beyond the code make another shape";
    CSecGeom builtUp;
    builtUp.SetShape(0x101);
    EXPECT_FALSE(builtUp.Description(true).IsEmpty()) << "bits outside of the mask do not";
}

TEST(ParametricDescription, WritesTheFewestDigitsThatGiveTheSameDimension)
{
    constexpr std::uint32_t seed = 4534;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int run = 0; run < 100000; ++run) {
        static constexpr long long powers[] = {1, 10, 100, 1000, 10000};
        const long long power = powers[run % 5];
        const auto digits = 1 + static_cast<long long>(random() % 20000000);
        std::string number = std::to_string(digits / power);
        if (digits % power != 0) {
            number += '.';
            number.append(std::to_string(power + digits % power), 1, std::string::npos);
            while (number.back() == '0')
                number.pop_back();
        }
        const std::wstring description = L"TUBE " + std::wstring(number.begin(), number.end()) + L"x1";
        CSecDB geometry(L"", nullptr);
        ASSERT_TRUE(geometry.SetUpFromDesc(CString(description))) << number;
        ASSERT_EQ(geometry.Description(true), CString(description));
    }
}

TEST(ParametricDescription, RestoresEveryDimensionBitForBit)
{
    constexpr std::uint64_t seed = 1000;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    for (int run = 0; run < 100000; ++run) {
        // Dimensions as a description gives them: any number of mm, divided by 1000.
        const double mm = std::ldexp(static_cast<double>(random() >> 11) + 1.0, static_cast<int>(random() % 60) - 70);
        CSecGeom geometry;
        geometry.SetShape(CSecGeom::SHAPE_CHS);
        geometry.SetDimension(CSecGeom::DEPTH, mm / 1000.0);
        geometry.SetDimension(CSecGeom::WEB_THICKNESS, 0.005);
        CSecDB back(L"", nullptr);
        ASSERT_TRUE(back.SetUpFromDesc(geometry.Description(true))) << geometry.Description(true).ToUtf8().value();
        ASSERT_EQ(back.Dimension(0.0, CSecGeom::DEPTH), mm / 1000.0)
            << std::hexfloat << mm << ' ' << geometry.Description(true).ToUtf8().value();
        ASSERT_EQ(back.Description(true), geometry.Description(true));
    }
}

TEST(ParametricDescription, RestoresWhateverRandomTextItAccepts)
{
    constexpr std::uint32_t seed = 77;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    static constexpr const wchar_t* WORDS[] = {L"I", L"GI", L"C", L"TEE", L"ANGLE", L"BOX", L"TUBE", L"X"};
    static constexpr const wchar_t* NUMBERS[] = {L"1",     L"20.5", L"1e3", L"0",  L"-1", L"inf",   L"nan",
                                                 L"1e400", L"",     L".5",  L"5.", L"+7", L"0.1e-2"};
    int accepted = 0;
    for (int run = 0; run < 200000; ++run) {
        std::wstring text = WORDS[random() % std::size(WORDS)];
        const auto numbers = random() % 8;
        for (unsigned i = 0; i < numbers; ++i) {
            text += i == 0 ? L" " : random() % 50 == 0 ? L"," : random() % 5 == 0 ? L" \u00D7 " : L"x";
            text += NUMBERS[random() % 3 == 0 ? random() % std::size(NUMBERS) : random() % 3];
        }
        CSecDB geometry(L"", nullptr);
        if (!geometry.SetUpFromDesc(CString(text))) {
            ASSERT_EQ(geometry.Shape(), 0);
            continue;
        }
        ++accepted;
        CSecDB back(L"", nullptr);
        ASSERT_TRUE(back.SetUpFromDesc(geometry.Description(true))) << CString(text).ToUtf8().value();
        ASSERT_EQ(back.Shape(), geometry.Shape());
        for (int i = 0; i < 16; ++i) {
            ASSERT_EQ(back.Dimension(0.0, static_cast<Prop>(i)), geometry.Dimension(0.0, static_cast<Prop>(i)))
                << CString(text).ToUtf8().value() << ", dimension " << i;
        }
    }
    EXPECT_GT(accepted, 1000);
}

TEST(ParametricDescription, RestoresTheExtremesOfTheRange)
{
    for (const wchar_t* const text : {L"TUBE 1e-300x1e300", L"TUBE 1e308x5e-318"}) {
        CSecDB geometry(L"", nullptr);
        ASSERT_TRUE(geometry.SetUpFromDesc(text));
        CSecDB back(L"", nullptr);
        ASSERT_TRUE(back.SetUpFromDesc(geometry.Description(true)));
        EXPECT_EQ(back.Dimension(0.0, CSecGeom::DEPTH), geometry.Dimension(0.0, CSecGeom::DEPTH));
        EXPECT_EQ(back.Dimension(0.0, CSecGeom::WEB_THICKNESS), geometry.Dimension(0.0, CSecGeom::WEB_THICKNESS));
    }
}

} // namespace
} // namespace Keltrix
