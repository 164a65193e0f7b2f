// Member points: index conventions, order and equality, report text, and their comma-separated lines.

#include "member/LayoutSupport.h"

#include <clocale>
#include <random>
#include <type_traits>

#include <gtest/gtest.h>

using namespace LayoutSupport;
using namespace Keltrix::Steel;

namespace {

CMemberPoint Read(std::string_view text)
{
    CMemberPoint point;
    CString line = Wide(text);
    point.CSVLineIn(line);
    return point;
}

std::string Line(const CMemberPoint& point) { return Utf8(point.CSVLineOut()); }

unsigned int BitsOf(const CMemberPoint& point) { return RestraintOracle::Bits(point.GetRestraint()); }

} // namespace

static_assert(!std::is_polymorphic_v<CMemberPoint>);
static_assert(sizeof(CMemberPoint) == 88, "position, restraint, index");

TEST(MemberPoint, DefaultIsTheFreeFirstPointAtZero)
{
    const CMemberPoint point;
    EXPECT_EQ(point.GetPos(), 0.0);
    EXPECT_EQ(point.Get1Index(), 1);
    EXPECT_EQ(point.CMPIndex(), 0);
    EXPECT_EQ(point.IndexCSSRight(), 0);
    EXPECT_EQ(point.IndexCSSLeft(), -1) << "there is no sub-span to the left";
    EXPECT_TRUE(Identical(point.GetRestraint(), CRestraint()));
}

TEST(MemberPoint, PlacesFollowFromTheIndex)
{
    const CMemberPoint point = PointAt(7, 1.5);
    EXPECT_EQ(point.Get1Index(), 7);
    EXPECT_EQ(point.CMPIndex(), 6);
    EXPECT_EQ(point.IndexCSSRight(), 6);
    EXPECT_EQ(point.IndexCSSLeft(), 5);
    EXPECT_EQ(point.GetPos(), 1.5);
}

TEST(MemberPoint, FieldsStandInTheirOrder)
{
    const CMemberPoint point = PointAt(9, 2.5, CRestraint(0x43, Keltrix::Data::SHR_CENTRE, 0.0));
    const auto* bytes = reinterpret_cast<const unsigned char*>(&point);
    double position = 0.0;
    unsigned int bits = 0;
    int index = 0;
    std::memcpy(&position, bytes, sizeof position);
    std::memcpy(&bits, bytes + 8, sizeof bits);
    std::memcpy(&index, bytes + 80, sizeof index);
    EXPECT_EQ(position, 2.5);
    EXPECT_EQ(bits, 0x43U);
    EXPECT_EQ(index, 9);
}

TEST(MemberPoint, TakesTheWholeRestraintAndGivesACopy)
{
    CRestraint restraint(0x8043, Keltrix::Data::BOT_FLANGE, 0.3);
    restraint.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, false);
    CMemberPoint point;
    point.SetRestraint(restraint);
    EXPECT_TRUE(Identical(point.GetRestraint(), restraint));
    point.GetRestraint().SetFree();
    EXPECT_TRUE(Identical(point.GetRestraint(), restraint));
    CMemberPoint copy;
    copy = point;
    EXPECT_TRUE(Identical(copy.GetRestraint(), restraint));
    EXPECT_TRUE(Identical(CMemberPoint(point).GetRestraint(), restraint));
}

TEST(MemberPoint, OrderIsByNumberNotByPosition)
{
    EXPECT_TRUE(PointAt(2, 9.0) < PointAt(3, 1.0));
    EXPECT_FALSE(PointAt(3, 1.0) < PointAt(2, 9.0));
    EXPECT_FALSE(PointAt(2, 1.0) < PointAt(2, 9.0));
    EXPECT_TRUE(PointAt(-1, 0.0) < PointAt(0, 0.0));
}

TEST(MemberPoint, EqualityLooksAtNumberAndExactPositionOnly)
{
    // The restraint takes no part: required.
    const CRestraint pinned(CRestraint::PINNED, Keltrix::Data::TOP_FLANGE, 0.3);
    EXPECT_TRUE(PointAt(2, 1.0, pinned) == PointAt(2, 1.0));
    EXPECT_FALSE(PointAt(2, 1.0, pinned) == PointAt(2, 1.0000000001, pinned));
    EXPECT_FALSE(PointAt(2, 1.0) == PointAt(3, 1.0));
    EXPECT_TRUE(PointAt(2, 0.0) == PointAt(2, -0.0));
    EXPECT_FALSE(PointAt(2, notANumber) == PointAt(2, notANumber));
}

TEST(MemberPoint, EqualityHoldsWithARestraintThatHoldsNotANumber)
{
    CRestraint restraint(0x1, Keltrix::Data::SHR_CENTRE, notANumber);
    restraint.SetForcesAndMoments({notANumber, 0.0, 0.0}, Vector(), true);
    EXPECT_FALSE(restraint == restraint);
    EXPECT_TRUE(PointAt(2, 1.0, restraint) == PointAt(2, 1.0, restraint));
}

TEST(MemberPointReport, HeadThenBodyIndentedByOneTab)
{
    const CDesFormat fmt;
    EXPECT_EQ(Utf8(PointAt(3, 2.5).GetString(fmt)), "MemberPoint " + Utf8(fmt.Int(3)) +
                                                        "\n\tPosition: " + Utf8(fmt.Length(2.5)) +
                                                        "\n\tPoint Restraint:\n\tRestraints set:\n\t\tnone\n");
    EXPECT_EQ(Utf8(PointAt(3, 2.5).GetString(fmt)),
              "MemberPoint 3\n\tPosition: 2.5 m\n\tPoint Restraint:\n\tRestraints set:\n\t\tnone\n");
}

TEST(MemberPointReport, ListsTheClosureAndTheLoadHeight)
{
    const CDesFormat fmt;
    const CRestraint restraint(0x3, Keltrix::Data::SHR_CENTRE, 0.25);
    EXPECT_EQ(Utf8(PointAt(12, 6.0, restraint).GetString(fmt)),
              "MemberPoint 12\n"
              "\tPosition: " +
                  Utf8(fmt.Length(6.0)) +
                  "\n"
                  "\tPoint Restraint:\n"
                  "\tRestraints set:\n"
                  "\t\tminor axis shear <i>(section X direction)</i>\n"
                  "\t\tflange 1 lateral\n"
                  "\t\tflange 2 lateral\n"
                  "\t\tcompression flange lateral\n"
                  "\t\ttension flange lateral\n"
                  "\t\ttorsion\n"
                  "\tload is destabilizing: (by " +
                  Utf8(fmt.LengthSmall(0.25)) + "m)\n");
}

TEST(MemberPointLine, TitleIsFixed)
{
    EXPECT_EQ(Utf8(CMemberPoint::CSVTitleLine()), "Index,Position,Restraint int, Load height\n");
}

TEST(MemberPointLine, WritesFourFields)
{
    EXPECT_EQ(Line(PointAt(3, 2.5)), "3,2.5,Free,0\n");
    EXPECT_EQ(Line(PointAt(1, 0.0, CRestraint(CRestraint::PINNED, Keltrix::Data::SHR_CENTRE, 0.0))), "1,0,Pinned,0\n");
    // With a height there is no preset name: the code of the closure of 0x43, which is 0x1007c3.
    EXPECT_EQ(Line(PointAt(2, 6.0, CRestraint(0x43, Keltrix::Data::SHR_CENTRE, 0.3))), "2,6,F12L TR MINV,0.3\n");
    EXPECT_EQ(Line(PointAt(2, 6.0, CRestraint(0x1, Keltrix::Data::BOT_FLANGE, 0.0))), "2,6,F1L,0\n");
    EXPECT_EQ(Line(PointAt(-4, -1.25, CRestraint(0x40000, Keltrix::Data::SHR_CENTRE, -0.125))),
              "-4,-1.25,MINR,-0.125\n");
}

TEST(MemberPointLine, NumbersHaveSixSignificantDigits)
{
    struct Row {
        double value;
        const char* text;
    };
    for (const Row& row : {Row{1234567.0, "1.23457E+06"}, Row{0.00001234567, "1.23457E-05"}, Row{1e6, "1E+06"},
                           Row{100000.0, "100000"}, Row{0.0001, "0.0001"}, Row{-0.0, "-0"}, Row{2.0 / 3.0, "0.666667"},
                           Row{123456.5, "123456"}, Row{123457.5, "123458"}, Row{1e100, "1E+100"}, Row{infinity, "INF"},
                           Row{-infinity, "-INF"}, Row{0.1, "0.1"}, Row{9999995.0, "1E+07"}}) {
        EXPECT_EQ(Line(PointAt(1, row.value)), "1," + std::string(row.text) + ",Free,0\n");
        EXPECT_EQ(Line(PointAt(1, 0.0, CRestraint(0x40000, Keltrix::Data::SHR_CENTRE, row.value))),
                  "1,0,MINR," + std::string(row.text) + "\n");
    }
}

TEST(MemberPointLine, ReadsFourFieldsAndConsumesTheLine)
{
    CString line(L" 3 , 2.5,\tPinned ,0.5");
    CMemberPoint point;
    point.CSVLineIn(line);
    EXPECT_EQ(Utf8(line), "");
    EXPECT_EQ(point.Get1Index(), 3);
    EXPECT_EQ(point.GetPos(), 2.5);
    EXPECT_EQ(BitsOf(point), 0x300043U);
    EXPECT_EQ(point.GetRestraint().LoadHeight(), 0.5);
}

TEST(MemberPointLine, LeavesWhatStandsBehindTheFourthField)
{
    CString line(L"3,2.5,Pinned,0.5,next, one");
    CMemberPoint point;
    point.CSVLineIn(line);
    EXPECT_EQ(Utf8(line), "next, one");
}

TEST(MemberPointLine, RestraintMayBeANumberOfBits)
{
    EXPECT_EQ(BitsOf(Read("1,0,67,0")), 67U);
    EXPECT_EQ(BitsOf(Read("1,0, 3145795 ,0")), 0x300043U);
    EXPECT_EQ(BitsOf(Read("1,0,0,0")), 0U);
    EXPECT_EQ(BitsOf(Read("1,0,-1,0")), 0xffffffffU);
    EXPECT_EQ(BitsOf(Read("1,0,12,0")), 12U) << "12 has only letters of the code, but is no word of it";
    EXPECT_EQ(BitsOf(Read("1,0,1,0")), 1U);
    EXPECT_EQ(BitsOf(Read("1,0,99999999999,0")), 0x7fffffffU) << "clamped as whole numbers are";
}

TEST(MemberPointLine, RestraintThatIsNeitherReadsAsNoBits)
{
    for (const char* field : {"rubbish", "0x43", "6.7", "F1", "Top_flange_lateral", "67 x"})
        EXPECT_EQ(BitsOf(Read("1,0," + std::string(field) + ",0")), 0U) << field;
}

TEST(MemberPointLine, ADescriptionResetsTheRestraintANumberReplacesOnlyItsBits)
{
    CRestraint old(0x1, Keltrix::Data::BOT_FLANGE, 0.7);
    old.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, false);
    CMemberPoint described = PointAt(1, 0.0, old);
    CString line(L"1,0,TR,0.5");
    described.CSVLineIn(line);
    EXPECT_TRUE(Identical(described.GetRestraint(), CRestraint(0x40, Keltrix::Data::SHR_CENTRE, 0.5)));

    CMemberPoint numbered = PointAt(1, 0.0, old);
    line = L"1,0,64,0.5";
    numbered.CSVLineIn(line);
    CRestraint expected = old;
    expected.SetRestFlag(64);
    expected.SetLoadHeight(0.5);
    EXPECT_TRUE(Identical(numbered.GetRestraint(), expected)) << "reference and forces stay";
}

TEST(MemberPointLine, LoadHeightIsReadInSinglePrecision)
{
    EXPECT_EQ(Read("1,0,TR,0.1").GetRestraint().LoadHeight(), static_cast<double>(0.1F));
    EXPECT_NE(Read("1,0,TR,0.1").GetRestraint().LoadHeight(), 0.1);
    // 2^24 + 1 is not a single-precision number; its neighbours 2^24 and 2^24 + 2 tie, and the even one is taken.
    EXPECT_EQ(Read("1,0,TR,16777217").GetRestraint().LoadHeight(), 16777216.0);
    EXPECT_EQ(Read("1,0,TR,-0.123456789").GetRestraint().LoadHeight(), static_cast<double>(-0.123456789F));
    EXPECT_EQ(Read("1,16777217,TR,0").GetPos(), 16777217.0) << "the position is not";
}

TEST(MemberPointLine, MissingAndMalformedFieldsReadAsZeroAndFree)
{
    const CMemberPoint empty = Read("");
    EXPECT_EQ(empty.Get1Index(), 0);
    EXPECT_EQ(empty.GetPos(), 0.0);
    EXPECT_TRUE(Identical(empty.GetRestraint(), CRestraint()));
    const CMemberPoint shortLine = Read("4,1.5");
    EXPECT_EQ(shortLine.Get1Index(), 4);
    EXPECT_EQ(shortLine.GetPos(), 1.5);
    EXPECT_TRUE(Identical(shortLine.GetRestraint(), CRestraint()));
    const CMemberPoint malformed = Read("x,y,TR,z");
    EXPECT_EQ(malformed.Get1Index(), 0);
    EXPECT_EQ(malformed.GetPos(), 0.0);
    EXPECT_EQ(BitsOf(malformed), 0x40U);
    EXPECT_EQ(malformed.GetRestraint().LoadHeight(), 0.0);
    const CMemberPoint prefixes = Read("3.7,2.5m,TR,0.5m");
    EXPECT_EQ(prefixes.Get1Index(), 3);
    EXPECT_EQ(prefixes.GetPos(), 2.5);
    EXPECT_EQ(prefixes.GetRestraint().LoadHeight(), 0.5);
    EXPECT_EQ(Read("5,,,").Get1Index(), 5);
}

TEST(MemberPointLine, WhatIsWrittenIsReadBack)
{
    constexpr unsigned int seed = 20001;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> length(-1e3, 1e3);
    for (int i = 0; i < 2000; ++i) {
        // Bits without compression, tension, friction and part connection, whose code is read back to the same closure.
        const int bits = static_cast<int>(random() & random() & 0x3f007f);
        const bool elevated = random() % 2 != 0;
        const CRestraint restraint(bits, Keltrix::Data::SHR_CENTRE, elevated ? std::abs(length(random)) * 1e-3 : 0.0);
        const CMemberPoint point = PointAt(static_cast<int>(random() % 1000), length(random), restraint);
        const std::string text = Line(point);
        const CMemberPoint read = Read(text);
        ASSERT_EQ(read.Get1Index(), point.Get1Index()) << text;
        ASSERT_NEAR(read.GetPos(), point.GetPos(), 5e-6 * std::abs(point.GetPos()) + 1e-12) << text;
        ASSERT_EQ(RestraintOracle::Closure(BitsOf(read), RestraintOracle::Moment::None),
                  RestraintOracle::Closure(static_cast<unsigned int>(bits), RestraintOracle::Moment::None))
            << text << " from " << RestraintOracle::Hex(static_cast<unsigned int>(bits));
        ASSERT_NEAR(read.GetRestraint().LoadHeight(), restraint.LoadHeight(), 5.1e-6 * restraint.LoadHeight()) << text;
        ASSERT_EQ(Line(read), text) << "a line written from what was read is the same line";
    }
}
