#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "Show.h"
#include "keltrix/platform/KxUtil.h"

namespace Keltrix {
namespace {

constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

TEST(CUnit, IsMetresAndKilonewtonsByDefault)
{
    const CUnit unit;
    EXPECT_EQ(unit.Length(), (CUnit::Entry{L"m", 1.0}));
    EXPECT_EQ(unit.LengthSmall(), (CUnit::Entry{L"m", 1.0}));
    EXPECT_EQ(unit.Force(), (CUnit::Entry{L"kN", 1e-3}));
    EXPECT_EQ(unit.Moment(), (CUnit::Entry{L"kNm", 1e-3}));
    EXPECT_EQ(unit.Stress(), (CUnit::Entry{L"N/mm\u00B2", 1e-6}));
}

TEST(CDesFormat, WritesQuantitiesInTheirUnits)
{
    const CDesFormat format;
    EXPECT_EQ(format.Length(6.25), L"6.25 m");
    EXPECT_EQ(format.Length(-6.0), L"-6 m");
    EXPECT_EQ(format.Length(1.0 / 3.0), L"0.333333 m");
    EXPECT_EQ(format.LengthSmall(0.0127), L"0.0127");
    EXPECT_EQ(format.LengthSmall(0.4534), L"0.4534");
    EXPECT_EQ(format.Force(12345.6), L"12.346 kN");
    EXPECT_EQ(format.Force(123450.0), L"123.45 kN");
    EXPECT_EQ(format.Force(123456789.0), L"123460 kN");
    EXPECT_EQ(format.Moment(86400.0), L"86.4 kNm");
    EXPECT_EQ(format.Stress(275e6), L"275 N/mm\u00B2");
    EXPECT_EQ(format.NoDim(0.85), L"0.85");
    EXPECT_EQ(format.NoDim(2.0 / 3.0), L"0.6667");
    EXPECT_EQ(format.NoDim(1.0), L"1");
    EXPECT_EQ(format.Int(-12), L"-12");
    EXPECT_EQ(format.Int(std::numeric_limits<int>::min()), L"-2147483648");
}

TEST(CDesFormat, WritesZeroOfEitherSignAsZero)
{
    const CDesFormat format;
    for (const double zero : {0.0, -0.0}) {
        EXPECT_EQ(format.Length(zero), L"0 m");
        EXPECT_EQ(format.LengthSmall(zero), L"0");
        EXPECT_EQ(format.Force(zero), L"0 kN");
        EXPECT_EQ(format.Moment(zero), L"0 kNm");
        EXPECT_EQ(format.Stress(zero), L"0 N/mm\u00B2");
        EXPECT_EQ(format.NoDim(zero), L"0");
        EXPECT_EQ(format.Util(zero), L"0");
    }
    EXPECT_EQ(format.Int(0), L"0");
}

TEST(CDesFormat, WritesWhatIsNotFiniteAsWords)
{
    const CDesFormat format;
    EXPECT_EQ(format.Length(INFINITE), L"inf m");
    EXPECT_EQ(format.Force(-INFINITE), L"-inf kN");
    EXPECT_EQ(format.Moment(NOT_A_NUMBER), L"nan kNm");
    EXPECT_EQ(format.LengthSmall(NOT_A_NUMBER), L"nan");
    EXPECT_EQ(format.NoDim(std::copysign(NOT_A_NUMBER, -1.0)), L"nan");
    EXPECT_EQ(format.Util(INFINITE), L"inf");
    EXPECT_EQ(format.Util(-INFINITE), L"-inf");
    EXPECT_EQ(format.Util(NOT_A_NUMBER), L"nan");
}

TEST(CDesFormat, WritesPlainDecimalsInTheRangeOfEngineering)
{
    const CDesFormat format;
    EXPECT_EQ(format.Length(1e-4), L"0.0001 m");
    EXPECT_EQ(format.Length(0.000123456789), L"0.000123457 m");
    EXPECT_EQ(format.Length(9.9e-5), L"9.9e-05 m");
    EXPECT_EQ(format.Length(9.999999e-5), L"0.0001 m");
    EXPECT_EQ(format.Length(999999.6), L"1000000 m");
    EXPECT_EQ(format.Length(999999000.0), L"999999000 m");
    EXPECT_EQ(format.Length(999999900.0), L"1e+09 m") << "rounded to six figures it is 1e9";
    EXPECT_EQ(format.Length(9.9999996), L"10 m");
    EXPECT_EQ(format.Length(-1.5e12), L"-1.5e+12 m");
    EXPECT_EQ(format.NoDim(std::numeric_limits<double>::max()), L"1.798e+308");
    EXPECT_EQ(format.NoDim(5e-324), L"4.941e-324");
    EXPECT_EQ(format.NoDim(1200.0), L"1200");
    EXPECT_EQ(format.NoDim(12345.0), L"12340") << "half to even of the exact value";
}

// The C library's digits: "%g" where it is plain, "%e" beyond, and the whole number that "%e" stands for between.
std::string Printed(double value, int figures)
{
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*e", figures - 1, value);
    const double rounded = std::strtod(text.data(), nullptr);
    const int exponent = std::atoi(std::strchr(text.data(), 'e') + 1);
    if (exponent >= figures && exponent < 9)
        std::snprintf(text.data(), text.size(), "%.0f", rounded);
    else
        std::snprintf(text.data(), text.size(), "%.*g", figures, value);
    return text.data();
}

TEST(CDesFormat, HasTheDigitsOfPrintf)
{
    constexpr unsigned SEED = 20;
    std::mt19937 random(SEED);
    std::uniform_real_distribution<double> exponent(-7.0, 12.0);
    std::uniform_int_distribution<int> ties(1, 2'000'000);
    const CDesFormat format;
    for (int i = 0; i < 200'000; ++i) {
        // Every other one is at a tie of some digit, or beside it.
        double value = std::pow(10.0, exponent(random));
        if (i % 2) value = std::nextafter(ties(random) * 0.5 * std::pow(10.0, i / 2 % 7 - 3), i % 3 ? 0.0 : 1e9);
        if (i % 5 == 0) value = -value;
        ASSERT_EQ(format.NoDim(value).ToUtf8().value(), Printed(value, 4))
            << value << " seed " << SEED << " number " << i;
        ASSERT_EQ(format.LengthSmall(value).ToUtf8().value(), Printed(value, 6))
            << value << " seed " << SEED << " number " << i;
        std::array<char, 64> fixed{};
        std::snprintf(fixed.data(), fixed.size(), "%.3f", value);
        const double shown = std::strtod(fixed.data(), nullptr);
        if (std::abs(value) < 1e9 && shown != 1.0 && shown != 0.0) {
            ASSERT_STREQ(format.Util(value).ToUtf8().value().c_str(), fixed.data())
                << value << " seed " << SEED << " number " << i;
        }
    }
}

TEST(CDesFormat, WritesUtilisationsWithThreeDecimals)
{
    const CDesFormat format;
    EXPECT_EQ(format.Util(0.873456), L"0.873");
    EXPECT_EQ(format.Util(0.5), L"0.500");
    EXPECT_EQ(format.Util(1.0), L"1.000");
    EXPECT_EQ(format.Util(1.25), L"1.250");
    EXPECT_EQ(format.Util(12.3456), L"12.346");
    EXPECT_EQ(format.Util(0.0001), L"0.000");
    EXPECT_EQ(format.Util(-0.0001), L"0.000");
    EXPECT_EQ(format.Util(-0.25), L"-0.250");
    EXPECT_EQ(format.Util(1e12), L"1e+12");
}

TEST(CDesFormat, NeverWritesAUtilisationAsTheLimitThatIsNotTheLimit)
{
    const CDesFormat format;
    EXPECT_EQ(format.Util(1.0004), L"1.0004");
    EXPECT_EQ(format.Util(0.9996), L"0.9996");
    EXPECT_EQ(format.Util(0.99996), L"0.99996");
    EXPECT_EQ(format.Util(1.000001), L"1.000001");
    EXPECT_EQ(format.Util(1.0006), L"1.001");
    EXPECT_EQ(format.Util(0.9994), L"0.999");
    EXPECT_EQ(format.Util(std::nextafter(1.0, 2.0)), L"1.0000000000000002");
    EXPECT_EQ(format.Util(std::nextafter(1.0, 0.0)), L"0.9999999999999999");
}

TEST(CDesFormat, DoesNotLookAtTheProcessLocale)
{
    const CommaLocale locale;
    if (!locale.IsSet())
        GTEST_SKIP()
            << "Left out: needs a locale with a decimal comma (Debian: apt-get install locales; ./test makes one)";
    EXPECT_EQ(CDesFormat().Length(1234.5), L"1234.5 m");
    EXPECT_EQ(CDesFormat().Util(0.5), L"0.500");
}

TEST(CDesFormat, ConvertsToTheUnitsOfTheUser)
{
    CUnit unit;
    unit.SetLength(L"ft", 1.0 / 0.3048);
    unit.SetLengthSmall(L"mm", 1000.0);
    unit.SetForce(L"N", 1.0);
    unit.SetMoment(L"", 1e-6);
    unit.SetStress(L"MPa", 1e-6);
    const CDesFormat format(unit);
    EXPECT_EQ(format.Length(3.048), L"10 ft");
    EXPECT_EQ(format.LengthSmall(0.0127), L"12.7");
    EXPECT_EQ(format.Force(1500.0), L"1500 N");
    EXPECT_EQ(format.Moment(2.5e6), L"2.5") << "no unit text, no blank";
    EXPECT_EQ(format.Stress(355e6), L"355 MPa");
    EXPECT_EQ(format.Unit(), unit);
    EXPECT_NE(format, CDesFormat());
    EXPECT_EQ(CDesFormat(CUnit()), CDesFormat());
}

} // namespace
} // namespace Keltrix
