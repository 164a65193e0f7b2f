// The digits of the portable seam are those of the standard library.

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "platform/src/NumberTextPortable.h"

namespace Keltrix {

namespace {

using Buffer = std::array<char, 2048>;

template <class... Arguments>
std::string Standard(Arguments... arguments)
{
    Buffer buffer;
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), arguments...).ptr};
}

template <class... Arguments>
std::string Portably(Arguments... arguments)
{
    Buffer buffer;
    return {buffer.data(), Portable::to_chars(buffer.data(), buffer.data() + buffer.size(), arguments...).ptr};
}

// Every bit pattern, numbers as engineers have them, whole numbers, and short decimals, which lie between two doubles as often as not.
std::vector<double> Numbers()
{
    std::vector<double> numbers{0.0,
                                -0.0,
                                1.0,
                                0.5,
                                2.5,
                                0.1,
                                0.3,
                                9.5,
                                99.95,
                                1e21,
                                1e22,
                                1e23,
                                9007199254740992.0,
                                9007199254740993.0,
                                1.2345678901234568e+20,
                                0.0001,
                                0.00001,
                                123456.5,
                                std::numeric_limits<double>::min(),
                                std::numeric_limits<double>::denorm_min(),
                                std::numeric_limits<double>::max(),
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity()};
    std::mt19937_64 random(20001);
    for (int i = 0; i < 6000; ++i) {
        const double any = std::bit_cast<double>(random());
        if (std::isfinite(any)) numbers.push_back(any);
        const double unit = static_cast<double>(random() >> 11) / 9007199254740992.0;
        numbers.push_back((unit - 0.5) * std::pow(10.0, static_cast<double>(random() % 24) - 8.0));
        numbers.push_back(static_cast<double>(random() % 1000000) * 5.0 / 1000.0);
        numbers.push_back(std::ldexp(1.0, static_cast<int>(random() % 2000) - 1000));
        numbers.push_back(static_cast<double>(random() >> (random() % 60)));
    }
    return numbers;
}

TEST(NumberText, TheShortestDigitsAreTheSame)
{
    for (const double value : Numbers()) {
        ASSERT_EQ(Portably(value), Standard(value));
        ASSERT_EQ(Portably(value, std::chars_format::fixed), Standard(value, std::chars_format::fixed));
        ASSERT_EQ(Portably(value, std::chars_format::scientific), Standard(value, std::chars_format::scientific));
        const auto single = static_cast<float>(value);
        ASSERT_EQ(Portably(single), Standard(single));
    }
}

TEST(NumberText, DigitsOfAPrecisionAreTheSame)
{
    for (const double value : Numbers()) {
        for (const int precision : {0, 1, 2, 3, 5, 6, 9, 17, 40}) {
            for (const std::chars_format form :
                 {std::chars_format::fixed, std::chars_format::scientific, std::chars_format::general}) {
                ASSERT_EQ(Portably(value, form, precision), Standard(value, form, precision)) << precision;
            }
        }
    }
}

TEST(NumberText, ATooSmallBufferIsToldAndNotOverrun)
{
    std::array<char, 4> buffer{'#', '#', '#', '#'};
    const auto result = Portable::to_chars(buffer.data(), buffer.data() + 3, 1.25);
    EXPECT_EQ(result.ec, std::errc::value_too_large);
    EXPECT_EQ(result.ptr, buffer.data() + 3);
    EXPECT_EQ(buffer[3], '#');
}

template <class T>
void ExpectReadAlike(std::string_view text)
{
    T standard(42);
    T portable(42);
    const auto expected = std::from_chars(text.data(), text.data() + text.size(), standard);
    const auto got = Portable::from_chars(text.data(), text.data() + text.size(), portable);
    EXPECT_EQ(got.ec, expected.ec) << text;
    EXPECT_EQ(got.ptr - text.data(), expected.ptr - text.data()) << text;
    if (std::isnan(standard))
        EXPECT_TRUE(std::isnan(portable)) << text;
    else
        EXPECT_EQ(portable, standard) << text;
}

TEST(NumberText, WhatIsReadIsTheSame)
{
    for (const std::string_view text : {"",
                                        "-",
                                        ".",
                                        "+1",
                                        "1",
                                        "1.",
                                        ".5",
                                        "-.5",
                                        "1e",
                                        "1e+",
                                        "1e5",
                                        "1E-5",
                                        "1.5x",
                                        "0x10",
                                        "inf",
                                        "-inf",
                                        "Infinity",
                                        "infx",
                                        "nan",
                                        "-nan",
                                        "nan(1)",
                                        "1e400",
                                        "-1e400",
                                        "1e-400",
                                        "-1e-400",
                                        "0e500",
                                        "0e-500",
                                        "5e-324",
                                        "2e-324",
                                        "1e39",
                                        "1e-46",
                                        "1e-40",
                                        "1,5",
                                        " 1",
                                        "--1",
                                        "00012.250",
                                        "1.7976931348623159e308",
                                        "2.2250738585072011e-308"}) {
        ExpectReadAlike<double>(text);
        ExpectReadAlike<float>(text);
    }
    for (const double value : Numbers()) {
        for (const std::string& text : {Standard(value), Standard(value, std::chars_format::general, 5),
                                        Standard(value, std::chars_format::scientific, 25)}) {
            ExpectReadAlike<double>(text);
            ExpectReadAlike<float>(text);
        }
    }
}

} // namespace

} // namespace Keltrix
