// Sub-spans: index conventions, envelopes, equality, report text, and their comma-separated lines.

#include "member/LayoutSupport.h"

#include <random>
#include <type_traits>

#include <gtest/gtest.h>

using namespace LayoutSupport;
using namespace Keltrix::Steel;

namespace {

CSubSpan Example(const CRestraint& restraint = {})
{
    return SubSpanWith(2, {1000.0, 2000.0, 3000.0}, {-4000.0, 5000.0, 6000.5}, {7000.0, -8000.0, 9000.0},
                       {10000.0, 11000.0, 0.0}, restraint);
}

void ExpectVectors(const CSubSpan& subSpan, const Vector& forceL, const Vector& forceR, const Vector& momentL,
                   const Vector& momentR, const std::string& what = "")
{
    EXPECT_EQ(Shown{subSpan.GetForcesLeft()}, Shown{forceL}) << "forces left " << what;
    EXPECT_EQ(Shown{subSpan.GetForcesRight()}, Shown{forceR}) << "forces right " << what;
    EXPECT_EQ(Shown{subSpan.GetMomentsLeft()}, Shown{momentL}) << "moments left " << what;
    EXPECT_EQ(Shown{subSpan.GetMomentsRight()}, Shown{momentR}) << "moments right " << what;
}

CSubSpan ReadSubSpan(std::string_view text)
{
    CSubSpan subSpan;
    subSpan.CSVLineIn(Wide(text));
    return subSpan;
}

unsigned int RestraintBitsOf(const CSubSpan& subSpan) { return RestraintOracle::Bits(subSpan.GetRestraint()); }

} // namespace

static_assert(!std::is_polymorphic_v<CSubSpan>);
static_assert(sizeof(CSubSpan) == 176, "index, four vectors, restraint");

TEST(SubSpan, DefaultIsTheFirstWithoutForcesAndFree)
{
    const CSubSpan subSpan;
    EXPECT_EQ(subSpan.Get1Index(), 1);
    EXPECT_EQ(subSpan.IndexCSS(), 0);
    EXPECT_EQ(subSpan.IndexCMPLeft(), 0);
    EXPECT_EQ(subSpan.IndexCMPRight(), 1);
    ExpectVectors(subSpan, zero, zero, zero, zero);
    EXPECT_TRUE(Identical(subSpan.GetRestraint(), CRestraint()));
}

TEST(SubSpan, PlacesFollowFromTheIndex)
{
    CSubSpan subSpan;
    subSpan.Set1Index(5);
    EXPECT_EQ(subSpan.Get1Index(), 5);
    EXPECT_EQ(subSpan.IndexCSS(), 4);
    EXPECT_EQ(subSpan.IndexCMPLeft(), 4);
    EXPECT_EQ(subSpan.IndexCMPRight(), 5);
}

TEST(SubSpan, FieldsStandInTheirOrder)
{
    const CSubSpan subSpan = SubSpanWith(9, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 9.0}, {10.0, 11.0, 12.0},
                                         CRestraint(0x43, Keltrix::Data::SHR_CENTRE, 0.0));
    const auto* bytes = reinterpret_cast<const unsigned char*>(&subSpan);
    int index = 0;
    unsigned int bits = 0;
    std::memcpy(&index, bytes, sizeof index);
    std::memcpy(&bits, bytes + 104, sizeof bits);
    EXPECT_EQ(index, 9);
    EXPECT_EQ(bits, 0x43U);
    for (std::size_t i = 0; i < 12; ++i) {
        double component = 0.0;
        std::memcpy(&component, bytes + 8 + 8 * i, sizeof component);
        EXPECT_EQ(component, static_cast<double>(i) + 1.0);
    }
}

TEST(SubSpan, SettersSetOneEndEach)
{
    CSubSpan subSpan;
    subSpan.SetForcesLeft({1.0, 2.0, 3.0});
    ExpectVectors(subSpan, {1.0, 2.0, 3.0}, zero, zero, zero);
    subSpan.SetForcesRight({4.0, 5.0, 6.0});
    ExpectVectors(subSpan, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, zero, zero);
    subSpan.SetMomentsLeft({7.0, 8.0, 9.0});
    ExpectVectors(subSpan, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 9.0}, zero);
    subSpan.SetMomentsRight({10.0, 11.0, 12.0});
    ExpectVectors(subSpan, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 9.0}, {10.0, 11.0, 12.0});
    subSpan.SetForcesAll(zero, {1.0, 1.0, 1.0});
    ExpectVectors(subSpan, zero, {1.0, 1.0, 1.0}, {7.0, 8.0, 9.0}, {10.0, 11.0, 12.0});
    subSpan.SetMomentsAll({2.0, 2.0, 2.0}, zero);
    ExpectVectors(subSpan, zero, {1.0, 1.0, 1.0}, {2.0, 2.0, 2.0}, zero);
}

TEST(SubSpan, ClearGoesBackToTheDefault)
{
    CSubSpan subSpan = Example(CRestraint(0x43, Keltrix::Data::TOP_FLANGE, 0.3));
    subSpan.Clear();
    EXPECT_EQ(subSpan.Get1Index(), 1);
    ExpectVectors(subSpan, zero, zero, zero, zero);
    EXPECT_TRUE(Identical(subSpan.GetRestraint(), CRestraint()));
}

TEST(SubSpan, CopiesEveryField)
{
    CRestraint restraint(0x8043, Keltrix::Data::BOT_FLANGE, 0.3);
    restraint.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, false);
    const CSubSpan original = Example(restraint);
    CSubSpan copy;
    copy = original;
    EXPECT_EQ(copy.Get1Index(), 2);
    ExpectVectors(copy, original.GetForcesLeft(), original.GetForcesRight(), original.GetMomentsLeft(),
                  original.GetMomentsRight());
    EXPECT_TRUE(Identical(copy.GetRestraint(), restraint));
}

TEST(SubSpan, OrderIsByNumber)
{
    CSubSpan second;
    second.Set1Index(2);
    CSubSpan third;
    third.Set1Index(3);
    EXPECT_TRUE(second < third);
    EXPECT_FALSE(third < second);
    EXPECT_FALSE(second < second);
}

TEST(SubSpan, EqualityIsExactButForLoadHeights)
{
    const auto elevated = [](double height) { return CRestraint(0x1, Keltrix::Data::SHR_CENTRE, height); };
    EXPECT_TRUE(Example(elevated(1.0)) == Example(elevated(1.000001)));
    EXPECT_FALSE(Example(elevated(1.0)) == Example(elevated(1.001)));
    EXPECT_TRUE(Example(CRestraint(0x3, Keltrix::Data::SHR_CENTRE, 0.0)) ==
                Example(CRestraint(0x100643, Keltrix::Data::SHR_CENTRE, 0.0)))
        << "restraints are compared by closure";
    CSubSpan other = Example();
    other.Set1Index(3);
    EXPECT_FALSE(Example() == other);
    for (int i = 0; i < 12; ++i) {
        std::array<double, 12> v{1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0, 10.0, 11.0, 12.0};
        const auto make = [&v] {
            return SubSpanWith(1, {v[0], v[1], v[2]}, {v[3], v[4], v[5]}, {v[6], v[7], v[8]}, {v[9], v[10], v[11]});
        };
        const CSubSpan a = make();
        EXPECT_TRUE(a == make());
        v[static_cast<std::size_t>(i)] += 1e-12;
        EXPECT_FALSE(a == make()) << "component " << i;
        v[static_cast<std::size_t>(i)] = notANumber;
        EXPECT_FALSE(make() == make()) << "component " << i;
    }
}

TEST(SubSpanEnvelope, OfVectorsTakesTheFirstOnTiesAndNotANumber)
{
    const Vector a(1.0, notANumber, 3.0);
    const Vector b(2.0, 5.0, 3.0);
    EXPECT_EQ(Shown{CSubSpan::Max(a, b)}, Shown({2.0, notANumber, 3.0}));
    EXPECT_EQ(Shown{CSubSpan::Min(a, b)}, Shown({1.0, notANumber, 3.0}));
    EXPECT_EQ(Shown{CSubSpan::Max(b, a)}, Shown({2.0, 5.0, 3.0}));
    EXPECT_EQ(Shown{CSubSpan::Min(b, a)}, Shown({1.0, 5.0, 3.0}));
    // On a tie the first one's zero is taken, sign included.
    EXPECT_TRUE(std::signbit(CSubSpan::Max(Vector(-0.0, 0.0, 0.0), zero).x));
    EXPECT_FALSE(std::signbit(CSubSpan::Max(zero, Vector(-0.0, 0.0, 0.0)).x));
    EXPECT_TRUE(std::signbit(CSubSpan::Min(Vector(-0.0, 0.0, 0.0), zero).x));
    EXPECT_FALSE(std::signbit(CSubSpan::Min(zero, Vector(-0.0, 0.0, 0.0)).x));
}

TEST(SubSpanEnvelope, OfSubSpansIsNoRealSubSpan)
{
    const CRestraint restraint(0x43, Keltrix::Data::TOP_FLANGE, 0.3);
    const CSubSpan a =
        SubSpanWith(4, {1.0, -2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 9.0}, {10.0, 11.0, 12.0}, restraint);
    const CSubSpan b =
        SubSpanWith(5, {-1.0, 2.0, 30.0}, {40.0, -5.0, 60.0}, {-7.0, 80.0, -9.0}, {1.0, 110.0, -12.0}, restraint);
    for (const auto& [first, second] : {std::pair(a, b), std::pair(b, a)}) {
        const CSubSpan max = CSubSpan::Max(first, second);
        EXPECT_EQ(max.Get1Index(), 1);
        EXPECT_TRUE(Identical(max.GetRestraint(), CRestraint()));
        ExpectVectors(max, {1.0, 2.0, 30.0}, {40.0, 5.0, 60.0}, {7.0, 80.0, 9.0}, {10.0, 110.0, 12.0}, "largest");
        const CSubSpan min = CSubSpan::Min(first, second);
        EXPECT_EQ(min.Get1Index(), 1);
        EXPECT_TRUE(Identical(min.GetRestraint(), CRestraint()));
        ExpectVectors(min, {-1.0, -2.0, 3.0}, {4.0, -5.0, 6.0}, {-7.0, 8.0, -9.0}, {1.0, 11.0, -12.0}, "smallest");
    }
}

TEST(SubSpanReport, IsLaidOutEndByEndAndIndentedByOneTab)
{
    const CDesFormat fmt;
    const auto f = [&fmt](double value) { return Utf8(fmt.Force(value)); };
    const auto m = [&fmt](double value) { return Utf8(fmt.Moment(value)); };
    const CRestraint restraint(0x1, Keltrix::Data::SHR_CENTRE, -0.2);
    EXPECT_EQ(Utf8(Example(restraint).GetString(fmt)), "SubSpan " + Utf8(fmt.Int(2)) +
                                                           "\n"
                                                           "\tLH end:\tForce <i>(x,y,z in ZMD element axes):</i>\n"
                                                           "\t\t" +
                                                           f(1000.0) + ",\t" + f(2000.0) + ",\t" + f(3000.0) +
                                                           "\n"
                                                           "\t\tMoment <i>(xx,yy,zz in ZMD element axes):</i>\n"
                                                           "\t\t" +
                                                           m(7000.0) + ",\t" + m(-8000.0) + ",\t" + m(9000.0) +
                                                           "\n"
                                                           "\tRH end:\tForce <i>(x,y,z in ZMD element axes):</i>\n"
                                                           "\t\t" +
                                                           f(-4000.0) + ",\t" + f(5000.0) + ",\t" + f(6000.5) +
                                                           "\n"
                                                           "\t\tMoment <i>(xx,yy,zz in ZMD element axes):</i>\n"
                                                           "\t\t" +
                                                           m(10000.0) + ",\t" + m(11000.0) + ",\t" + m(0.0) +
                                                           "\n"
                                                           "\tSpan Restraint:\n"
                                                           "\tRestraints set:\n"
                                                           "\t\tflange 1 lateral\n"
                                                           "\tload is stabilizing: (by " +
                                                           Utf8(fmt.LengthSmall(0.2)) + "m)\n");
    EXPECT_EQ(f(1000.0) + ",\t" + m(7000.0), "1 kN,\t7 kNm") << "the formatter brings value and unit";
}

TEST(SubSpanReport, OfADefaultSubSpan)
{
    EXPECT_EQ(Utf8(CSubSpan().GetString(CDesFormat())), "SubSpan 1\n"
                                                        "\tLH end:\tForce <i>(x,y,z in ZMD element axes):</i>\n"
                                                        "\t\t0 kN,\t0 kN,\t0 kN\n"
                                                        "\t\tMoment <i>(xx,yy,zz in ZMD element axes):</i>\n"
                                                        "\t\t0 kNm,\t0 kNm,\t0 kNm\n"
                                                        "\tRH end:\tForce <i>(x,y,z in ZMD element axes):</i>\n"
                                                        "\t\t0 kN,\t0 kN,\t0 kN\n"
                                                        "\t\tMoment <i>(xx,yy,zz in ZMD element axes):</i>\n"
                                                        "\t\t0 kNm,\t0 kNm,\t0 kNm\n"
                                                        "\tSpan Restraint:\n"
                                                        "\tRestraints set:\n"
                                                        "\t\tnone\n");
}

TEST(SubSpanLine, TitleIsFixed)
{
    EXPECT_EQ(Utf8(CSubSpan::CSVTitleLine()), "Index,Fx-L,Fy-L,Fz-L,Fx-R,Fy-R,Fz-R,Mx-L,My-L,Mz-L,Mx-R,My-R,Mz-R,"
                                              "Restraint,Load height\n");
}

TEST(SubSpanLine, WritesFifteenFieldsInTheTitlesOrder)
{
    EXPECT_EQ(Utf8(CSubSpan().CSVLineOut()), "1,0,0,0,0,0,0,0,0,0,0,0,0,Free,0\n");
    EXPECT_EQ(Utf8(Example(CRestraint(CRestraint::PINNED, Keltrix::Data::SHR_CENTRE, 0.0)).CSVLineOut()),
              "2,1000,2000,3000,-4000,5000,6000.5,7000,-8000,9000,10000,11000,0,Pinned,0\n");
    const CSubSpan digits =
        SubSpanWith(17, {1234567.0, 2.0 / 3.0, -0.0}, {infinity, 1e-7, 1e6}, {0.1, 0.2, 0.3},
                    {-1e-20, 99999.95, 123456.7}, CRestraint(0x30043, Keltrix::Data::TOP_FLANGE, 0.0123456789));
    // 0x30043 closes to 0x1307c3: flanges together, torsion, major rotation, shear.
    EXPECT_EQ(Utf8(digits.CSVLineOut()), "17,1.23457E+06,0.666667,-0,INF,1E-07,1E+06,0.1,0.2,0.3,-1E-20,99999.9,123457,"
                                         "F12L TR MAJR MINV,0.0123457\n");
}

TEST(SubSpanLine, ReadsFifteenFieldsAndLeavesTheCallersLineAlone)
{
    const CString line(L"3, 1,2,3,4,5,6 ,7,8,9,10,11,12.5, Top flange lateral ,0.25");
    const CString before = line;
    CSubSpan subSpan;
    subSpan.CSVLineIn(line);
    EXPECT_EQ(Utf8(line), Utf8(before));
    EXPECT_EQ(subSpan.Get1Index(), 3);
    ExpectVectors(subSpan, {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 9.0}, {10.0, 11.0, 12.5});
    EXPECT_TRUE(Identical(subSpan.GetRestraint(), CRestraint(0x1, Keltrix::Data::SHR_CENTRE, 0.25)));
}

TEST(SubSpanLine, RestraintMayBeANumberOfBitsAndHeightIsSinglePrecision)
{
    const std::string forces = "1,0,0,0,0,0,0,0,0,0,0,0,0,";
    EXPECT_EQ(RestraintBitsOf(ReadSubSpan(forces + "67,0")), 67U);
    EXPECT_EQ(RestraintBitsOf(ReadSubSpan(forces + "12,0")), 12U);
    EXPECT_EQ(RestraintBitsOf(ReadSubSpan(forces + "rubbish,0")), 0U);
    EXPECT_EQ(ReadSubSpan(forces + "67,0.1").GetRestraint().LoadHeight(), static_cast<double>(0.1F));
    EXPECT_EQ(ReadSubSpan(forces + "TR,16777217").GetRestraint().LoadHeight(), 16777216.0);
    EXPECT_EQ(ReadSubSpan("1,16777217").GetForcesLeft().x, 16777217.0) << "forces are read in double precision";
}

TEST(SubSpanLine, ANumberKeepsReferenceAndForcesOfTheRestraint)
{
    CRestraint old(0x1, Keltrix::Data::BOT_FLANGE, 0.7);
    old.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, false);
    CSubSpan subSpan = Example(old);
    subSpan.CSVLineIn(L"1,0,0,0,0,0,0,0,0,0,0,0,0,64,0.5");
    CRestraint expected = old;
    expected.SetRestFlag(64);
    expected.SetLoadHeight(0.5);
    EXPECT_TRUE(Identical(subSpan.GetRestraint(), expected));
    subSpan.CSVLineIn(L"1,0,0,0,0,0,0,0,0,0,0,0,0,TR,0.5");
    EXPECT_TRUE(Identical(subSpan.GetRestraint(), CRestraint(0x40, Keltrix::Data::SHR_CENTRE, 0.5)));
}

TEST(SubSpanLine, MissingAndMalformedFieldsReadAsZeroAndFree)
{
    CSubSpan subSpan = Example(CRestraint(0x43, Keltrix::Data::TOP_FLANGE, 0.3));
    subSpan.CSVLineIn(L"");
    EXPECT_EQ(subSpan.Get1Index(), 0);
    ExpectVectors(subSpan, zero, zero, zero, zero);
    EXPECT_TRUE(Identical(subSpan.GetRestraint(), CRestraint()));
    const CSubSpan partly = ReadSubSpan("7,1,x,3kN,,5");
    EXPECT_EQ(partly.Get1Index(), 7);
    ExpectVectors(partly, {1.0, 0.0, 3.0}, {0.0, 5.0, 0.0}, zero, zero);
}

TEST(SubSpanLine, SixSignificantDigitsComeBackExactlyAndMoreAreRounded)
{
    const CSubSpan exact = Example(CRestraint(CRestraint::PINNED, Keltrix::Data::SHR_CENTRE, 0.0));
    EXPECT_TRUE(ReadSubSpan(Utf8(exact.CSVLineOut())) == exact);
    const CSubSpan rounded =
        ReadSubSpan(Utf8(SubSpanWith(1, {1234567.0, 0.12345678, -1.0000004}, zero, zero, zero).CSVLineOut()));
    EXPECT_EQ(Shown{rounded.GetForcesLeft()}, Shown({1234570.0, 0.123457, -1.0}));
}

TEST(SubSpanLine, WhatIsWrittenIsReadBackAndWrittenAgainTheSame)
{
    constexpr unsigned int seed = 31415;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> exponent(-9.0, 12.0);
    const auto value = [&] {
        const double sign = random() % 2 ? 1.0 : -1.0;
        return random() % 8 ? sign * std::pow(10.0, exponent(random)) : 0.0;
    };
    for (int i = 0; i < 1000; ++i) {
        const auto vector = [&] {
            const double x = value();
            const double y = value();
            return Vector(x, y, value());
        };
        const Vector fl = vector();
        const Vector fr = vector();
        const Vector ml = vector();
        const CSubSpan subSpan =
            SubSpanWith(static_cast<int>(random() % 100), fl, fr, ml, vector(),
                        CRestraint(static_cast<int>(random() & 0x33f007f), Keltrix::Data::SHR_CENTRE, 0.0));
        const std::string text = Utf8(subSpan.CSVLineOut());
        const CSubSpan read = ReadSubSpan(text);
        ASSERT_EQ(Utf8(read.CSVLineOut()), text);
        ASSERT_NEAR(read.GetForcesLeft().x, fl.x, 5.1e-6 * std::abs(fl.x)) << text;
        ASSERT_NEAR(read.GetForcesRight().y, fr.y, 5.1e-6 * std::abs(fr.y)) << text;
        ASSERT_NEAR(read.GetMomentsLeft().z, ml.z, 5.1e-6 * std::abs(ml.z)) << text;
    }
}
