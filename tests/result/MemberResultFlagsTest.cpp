// Result flags and load flags: what each flag implies, and the two different ways of asking.

#include "support/ResultRecord.h"

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

/// The chain of implications, from the flags given alone.
unsigned int Implied(unsigned int bits)
{
    if (bits & 0x3F000u) bits |= 0x10u;
    if (bits & 0x3000700u) bits |= 0x20u;
    if (bits & 0x30u) bits |= 0x4u;
    if (bits & 0x800004u) bits |= 0x2u;
    if (bits & 0x600000u) bits |= 0x100000u;
    if (bits & 0x100002u) bits |= 0x1u;
    return bits;
}

unsigned int AfterAdding(unsigned int before, unsigned int bits)
{
    CMemberResult result;
    result.SetFlags(static_cast<int>(before));
    result.AddFlags(static_cast<int>(bits));
    return static_cast<unsigned int>(result.GetFlags());
}

struct AddedFlags {
    int added;
    int flags;
};

} // namespace

TEST(ResultFlags, ConstantsHaveTheirBits)
{
    EXPECT_EQ(CMemberResult::NOTIFY, 0x1);
    EXPECT_EQ(CMemberResult::WARNING, 0x2);
    EXPECT_EQ(CMemberResult::FAIL, 0x4);
    EXPECT_EQ(CMemberResult::NOT_CHECKED, 0x8);
    EXPECT_EQ(CMemberResult::FAIL_LOCAL, 0x10);
    EXPECT_EQ(CMemberResult::FAIL_BUCKLE, 0x20);
    EXPECT_EQ(CMemberResult::FAIL_BUCKLE_LAT_TORS, 0x100);
    EXPECT_EQ(CMemberResult::FAIL_BUCKLE_AXIAL_MAJOR, 0x200);
    EXPECT_EQ(CMemberResult::FAIL_BUCKLE_AXIAL_MINOR, 0x400);
    EXPECT_EQ(CMemberResult::FAIL_LOCAL_AXIAL, 0x1000);
    EXPECT_EQ(CMemberResult::FAIL_LOCAL_BENDING_MAJOR, 0x2000);
    EXPECT_EQ(CMemberResult::FAIL_LOCAL_BENDING_MINOR, 0x4000);
    EXPECT_EQ(CMemberResult::FAIL_LOCAL_SHEAR_MAJOR, 0x8000);
    EXPECT_EQ(CMemberResult::FAIL_LOCAL_SHEAR_MINOR, 0x10000);
    EXPECT_EQ(CMemberResult::FAIL_LOCAL_TORSION, 0x20000);
    EXPECT_EQ(CMemberResult::INFO_LOCAL_SLENDER, 0x100000);
    EXPECT_EQ(CMemberResult::INFO_LOCAL_SLENDER_WEB, 0x200000);
    EXPECT_EQ(CMemberResult::INFO_LOCAL_SLENDER_FLANGE, 0x400000);
    EXPECT_EQ(CMemberResult::INFO_MEMBER_SLENDER, 0x800000);
    EXPECT_EQ(CMemberResult::FAIL_BUCKLE_AXIAL_TORSION, 0x1000000);
    EXPECT_EQ(CMemberResult::FAIL_BUCKLE_AXIAL_FLEXURAL_TORSION, 0x2000000);
}

TEST(ResultFlags, EachFlagBringsWhatItImplies)
{
    constexpr AddedFlags rows[] = {{0x0, 0x0},
                                   {0x1, 0x1},
                                   {0x2, 0x3},
                                   {0x4, 0x7},
                                   {0x8, 0x8},
                                   {0x10, 0x17},
                                   {0x20, 0x27},
                                   {0x40, 0x40},
                                   {0x80, 0x80},
                                   {0x100, 0x127},
                                   {0x200, 0x227},
                                   {0x400, 0x427},
                                   {0x800, 0x800},
                                   {0x1000, 0x1017},
                                   {0x2000, 0x2017},
                                   {0x4000, 0x4017},
                                   {0x8000, 0x8017},
                                   {0x10000, 0x10017},
                                   {0x20000, 0x20017},
                                   {0x40000, 0x40000},
                                   {0x80000, 0x80000},
                                   {0x100000, 0x100001},
                                   {0x200000, 0x300001},
                                   {0x400000, 0x500001},
                                   {0x800000, 0x800003},
                                   {0x1000000, 0x1000027},
                                   {0x2000000, 0x2000027},
                                   {0x4000000, 0x4000000}};
    for (const AddedFlags& row : rows)
        EXPECT_EQ(AfterAdding(0, static_cast<unsigned int>(row.added)), static_cast<unsigned int>(row.flags))
            << "added 0x" << std::hex << row.added;
}

TEST(ResultFlags, EveryBitAndEveryPairOfBitsImpliesTheSameAsTheChain)
{
    for (unsigned int i = 0; i < 32; ++i)
        for (unsigned int k = i; k < 32; ++k) {
            const unsigned int bits = 1u << i | 1u << k;
            EXPECT_EQ(AfterAdding(0, bits), Implied(bits)) << "added 0x" << std::hex << bits;
        }
}

TEST(ResultFlags, ImplicationsComeFromTheAddedFlagsAloneNotFromThoseAlreadySet)
{
    EXPECT_EQ(AfterAdding(0x1000, 0x8), 0x1008u);
    EXPECT_EQ(AfterAdding(0x200000, 0), 0x200000u);
    EXPECT_EQ(AfterAdding(0x800000, 0x100), 0x800127u);
}

TEST(ResultFlags, RemovingClearsExactlyTheseBits)
{
    CMemberResult result;
    result.AddFlags(CMemberResult::FAIL_LOCAL_AXIAL);
    result.RemoveFlags(CMemberResult::FAIL_LOCAL_AXIAL);
    EXPECT_EQ(result.GetFlags(), 0x17);
    EXPECT_TRUE(result.HasFailed());
    result.RemoveFlags(CMemberResult::FAIL | CMemberResult::NOTIFY);
    EXPECT_EQ(result.GetFlags(), 0x12);
    EXPECT_FALSE(result.HasFailed());
}

TEST(ResultFlags, HavingFailedIsTheFailBitAlone)
{
    CMemberResult result;
    result.SetFlags(~0x4);
    EXPECT_FALSE(result.HasFailed());
    result.SetFlags(0x4);
    EXPECT_TRUE(result.HasFailed());
}

TEST(ResultFlags, ResultFlagsAreTestedForAllBitsLoadFlagsForAnyBit)
{
    CMemberResult result;
    EXPECT_TRUE(result.TestFlags(0));
    EXPECT_FALSE(result.TestLoadFlags(0));
    result.SetFlags(0x3);
    result.SetLoadFlags(0x3);
    EXPECT_TRUE(result.TestFlags(0x3));
    EXPECT_FALSE(result.TestFlags(0x6));
    EXPECT_TRUE(result.TestLoadFlags(0x6));
    EXPECT_FALSE(result.TestLoadFlags(0x4));
}

TEST(ResultFlags, LoadFlagsOfAFreshResult)
{
    CMemberResult result;
    EXPECT_EQ(result.GetLoadFlags(), 15);
    EXPECT_FALSE(result.TestLoadFlags(0x10));
    EXPECT_TRUE(result.TestLoadFlags(0x11));
    EXPECT_EQ(CMemberResult::LOAD_AXIAL, 0x1);
    EXPECT_EQ(CMemberResult::LOAD_MAJOR, 0x2);
    EXPECT_EQ(CMemberResult::LOAD_MINOR, 0x4);
    EXPECT_EQ(CMemberResult::LOAD_TORSION, 0x8);
}

TEST(ResultFlags, LoadFlagsAreAddedAndRemovedBitByBitWithoutImplications)
{
    CMemberResult result;
    result.RemoveLoadFlags(0x5);
    EXPECT_EQ(result.GetLoadFlags(), 0xA);
    result.AddLoadFlags(0x1004);
    EXPECT_EQ(result.GetLoadFlags(), 0x100E);
    result.SetLoadFlags(0x40);
    EXPECT_EQ(result.GetLoadFlags(), 0x40);
    EXPECT_EQ(result.GetFlags(), 0);
}
