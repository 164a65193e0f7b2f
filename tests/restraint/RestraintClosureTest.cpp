// Closing of restraint sets over whole ranges of bits, against the tables in RestraintOracle.h.

#include "restraint/RestraintOracle.h"

#include <random>

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Data;
using namespace RestraintOracle;

namespace {

unsigned int Closed(unsigned int bits, Moment moment)
{
    CRestraint restraint = Make(bits, moment);
    restraint.MakeConsistent();
    return Bits(restraint);
}

/// Bit sets with up to `count` random bits of all 32, so that small sets and bits that are no restraints occur often.
unsigned int RandomSet(std::mt19937& random, int count)
{
    unsigned int bits = 0;
    for (int i = 0; i < count; ++i)
        bits |= 1U << (random() % 32);
    return bits;
}

} // namespace

TEST(RestraintClosure, EachRuleByItself)
{
    struct Row {
        unsigned int bits;
        Moment moment;
        unsigned int closed;
        const char* why;
    };
    const std::vector<Row> rows{
        {0x0, Moment::None, 0x0, "nothing implies nothing"},
        {0x4, Moment::None, 0x14, "full warping implies part, flange 1"},
        {0x8, Moment::None, 0x28, "flange 2"},
        {0x800, Moment::None, 0x2800, "compression flange"},
        {0x1000, Moment::None, 0x5000, "tension flange"},
        {0x40, Moment::None, 0x1c0, "torsion implies part and friction"},
        {0x80, Moment::None, 0x80, "torsion part does not imply friction"},
        {0x100, Moment::None, 0x100, "nor the other way"},
        {0x10000, Moment::None, 0x30000, "full major rotation implies part"},
        {0x40000, Moment::None, 0xc0000, "full minor rotation implies part"},
        {0x3, Moment::None, 0x1007c3, "both flanges lateral: the whole section, and so torsion"},
        {0x600, Moment::None, 0x1007c3, "compression and tension flange lateral: the same"},
        {0x41, Moment::None, 0x1007c3, "torsion with flange 1 lateral"},
        {0x42, Moment::None, 0x1007c3, "torsion with flange 2 lateral"},
        {0x240, Moment::None, 0x1007c3, "torsion with compression flange lateral"},
        {0x440, Moment::None, 0x1007c3, "torsion with tension flange lateral"},
        {0x100040, Moment::None, 0x1007c3, "torsion with minor shear"},
        {0x100001, Moment::None, 0x100001, "minor shear without torsion implies nothing"},
        {0x81, Moment::None, 0x81, "torsion part is not torsion"},
        {0xc, Moment::None, 0x783c, "warping of both flanges"},
        {0x1800, Moment::None, 0x783c, "warping of compression and tension flange"},
        {0x30, Moment::None, 0x6030, "part warping of both flanges"},
        {0x6000, Moment::None, 0x6030, "part warping of compression and tension flange"},
        {0x18, Moment::None, 0x6038, "part warping of one and full of the other: both parts"},
        {0x200000, Moment::None, 0x200000, "vertical support implies nothing"},
        {0x3000000, Moment::None, 0x3000000, "part connection implies nothing"},
        {0x1, Moment::Positive, 0x401, "flange 2 in compression"},
        {0x2, Moment::Positive, 0x202, ""},
        {0x4, Moment::Positive, 0x5014, ""},
        {0x8, Moment::Positive, 0x2828, ""},
        {0x10, Moment::Positive, 0x4010, ""},
        {0x20, Moment::Positive, 0x2020, ""},
        {0x200, Moment::Positive, 0x202, ""},
        {0x400, Moment::Positive, 0x401, ""},
        {0x800, Moment::Positive, 0x2828, ""},
        {0x1000, Moment::Positive, 0x5014, ""},
        {0x2000, Moment::Positive, 0x2020, ""},
        {0x4000, Moment::Positive, 0x4010, ""},
        {0x1, Moment::Negative, 0x201, "flange 1 in compression"},
        {0x2, Moment::Negative, 0x402, ""},
        {0x4, Moment::Negative, 0x2814, ""},
        {0x8, Moment::Negative, 0x5028, ""},
        {0x10, Moment::Negative, 0x2010, ""},
        {0x20, Moment::Negative, 0x4020, ""},
        {0x200, Moment::Negative, 0x201, ""},
        {0x400, Moment::Negative, 0x402, ""},
        {0x800, Moment::Negative, 0x2814, ""},
        {0x1000, Moment::Negative, 0x5028, ""},
        {0x2000, Moment::Negative, 0x2010, ""},
        {0x4000, Moment::Negative, 0x4020, ""},
        {0x401, Moment::Negative, 0x1007c3, "needs a second look: compression and tension mapped, then both flanges"},
        {0x1, Moment::Zero, 0x1, "a zero moment maps nothing"},
        {0x1, Moment::PositiveUnused, 0x1, "nor does a sign that is not used"},
        {0xfcc08000, Moment::Positive, 0xfcc08000, "bits that are no restraints stay"},
        {0xffffffff, Moment::Positive, 0xffffffff, ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Hex(Closed(row.bits, row.moment)), Hex(row.closed))
            << Hex(row.bits) << ' ' << Name(row.moment) << ": " << row.why;
        EXPECT_EQ(Hex(RestraintOracle::Closure(row.bits, row.moment)), Hex(row.closed)) << "the oracle itself";
    }
}

TEST(RestraintClosure, EveryBitAndPairAgreesWithTheTables)
{
    for (const Moment moment : allMoments)
        for (const unsigned int bits : SmallSets())
            ASSERT_EQ(Hex(Closed(bits, moment)), Hex(RestraintOracle::Closure(bits, moment)))
                << Hex(bits) << ' ' << Name(moment);
}

TEST(RestraintClosure, EveryCombinationOfFlangeTorsionAndShearBitsAgreesWithTheTables)
{
    for (const Moment moment : {Moment::None, Moment::Positive, Moment::Negative})
        for (unsigned int i = 0; i < 65536; ++i) {
            const unsigned int bits = FlangeTorsionShearSet(i);
            const unsigned int closed = Closed(bits, moment);
            if (closed == RestraintOracle::Closure(bits, moment)) continue;
            FAIL() << Hex(bits) << ' ' << Name(moment) << ": closed to " << Hex(closed) << ", expected "
                   << Hex(RestraintOracle::Closure(bits, moment));
        }
}

TEST(RestraintClosure, OnlyAddsBitsAndClosingTwiceChangesNothing)
{
    constexpr unsigned int seed = 20240611;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int i = 0; i < 50000; ++i) {
        const unsigned int bits = i % 5 == 0 ? static_cast<unsigned int>(random()) : RandomSet(random, 1 + i % 7);
        for (const Moment moment : allMoments) {
            const unsigned int closed = Closed(bits, moment);
            ASSERT_EQ(Hex(closed & bits), Hex(bits)) << Name(moment);
            ASSERT_EQ(Hex(closed & ~bits & ~0x1a7fffU), Hex(0))
                << "added outside what can be implied, from " << Hex(bits) << ' ' << Name(moment);
            ASSERT_EQ(Hex(Closed(closed, moment)), Hex(closed)) << "from " << Hex(bits) << ' ' << Name(moment);
            ASSERT_EQ(Hex(closed), Hex(RestraintOracle::Closure(bits, moment)))
                << "from " << Hex(bits) << ' ' << Name(moment);
        }
    }
}

TEST(RestraintClosure, LeavesEverythingButTheBitsAlone)
{
    CRestraint restraint = Make(0x3, Moment::NegativeUnused);
    restraint.SetRefLoadHeight(BOT_FLANGE);
    restraint.SetLoadHeight(-0.25);
    CRestraint expected = restraint;
    expected.SetRestFlag(0x1007c3);
    restraint.MakeConsistent();
    EXPECT_TRUE(Identical(restraint, expected));
}

TEST(RestraintClosure, QueriesOnEveryBitAndPairAgreeWithTheTables)
{
    std::vector<unsigned int> questions = SmallSets();
    questions.insert(questions.end(),
                     {0x33f7fff, 0x1a7fff, 0x3f01ff, 0xfcc08000, 0xffffffff, 0x100640, 0x8001, 0x33f7ffe});
    for (const Moment moment : {Moment::None, Moment::Positive, Moment::Negative})
        for (const unsigned int bits : SmallSets()) {
            const CRestraint restraint = Make(bits, moment);
            for (const bool consistent : {false, true}) {
                for (const unsigned int asked : questions) {
                    const bool restrained = RestraintOracle::IsRestrained(bits, moment, asked, consistent);
                    const bool free = RestraintOracle::IsFree(bits, moment, asked, consistent);
                    if (restraint.IsRestrained(asked, consistent) == restrained &&
                        restraint.IsFree(asked, consistent) == free)
                        continue;
                    FAIL() << "bits " << Hex(bits) << ' ' << Name(moment) << " asked " << Hex(asked)
                           << (consistent ? " consistent" : " raw") << ": restrained "
                           << restraint.IsRestrained(asked, consistent) << " expected " << restrained << ", free "
                           << restraint.IsFree(asked, consistent) << " expected " << free;
                }
                ASSERT_EQ(restraint.IsEnc(consistent), RestraintOracle::IsEnc(bits, moment, consistent))
                    << Hex(bits) << ' ' << Name(moment);
            }
        }
}

TEST(RestraintClosure, QueriesOnRandomSetsAgreeWithTheTables)
{
    constexpr unsigned int seed = 77031;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int i = 0; i < 100000; ++i) {
        const unsigned int bits =
            i % 3 == 0 ? 0x3f01ffU & ~RandomSet(random, 3) : RandomSet(random, 3 + static_cast<int>(random() % 8));
        const unsigned int asked = RandomSet(random, 1 + static_cast<int>(random() % 4));
        const Moment moment = allMoments[random() % allMoments.size()];
        const bool consistent = (random() & 1) != 0;
        const CRestraint restraint = Make(bits, moment);
        ASSERT_EQ(restraint.IsRestrained(asked, consistent),
                  RestraintOracle::IsRestrained(bits, moment, asked, consistent))
            << Hex(bits) << " asked " << Hex(asked) << ' ' << Name(moment);
        ASSERT_EQ(restraint.IsFree(asked, consistent), RestraintOracle::IsFree(bits, moment, asked, consistent))
            << Hex(bits) << " asked " << Hex(asked) << ' ' << Name(moment);
        ASSERT_EQ(restraint.IsEnc(consistent), RestraintOracle::IsEnc(bits, moment, consistent))
            << Hex(bits) << ' ' << Name(moment);
        ASSERT_EQ(Hex(Bits(restraint)), Hex(bits)) << "asking changes nothing";
    }
}

TEST(RestraintClosure, FreedomOfTheWholeMaskIsNotClosedAndNeedNotBe)
{
    // Closing only adds bits to a set that has some, so the answer is the same with and without.
    for (const unsigned int bits : SmallSets())
        for (const Moment moment : {Moment::None, Moment::Positive, Moment::Negative}) {
            const bool free = (bits & 0x33f7fffU) == 0;
            EXPECT_EQ(Make(bits, moment).IsFree(0x33f7fff, true), free) << Hex(bits);
            EXPECT_EQ(Make(bits, moment).IsFree(0x33f7fff, false), free) << Hex(bits);
        }
}

TEST(RestraintClosure, EqualityOfEveryBitAndPairIsEqualityOfClosures)
{
    const std::vector<unsigned int> sets = SmallSets();
    for (const Moment moment : {Moment::None, Moment::Positive, Moment::Negative}) {
        std::vector<CRestraint> restraints;
        std::vector<unsigned int> closures;
        for (const unsigned int bits : sets) {
            restraints.push_back(Make(bits, moment));
            closures.push_back(RestraintOracle::Closure(bits, moment));
        }
        for (std::size_t i = 0; i < sets.size(); ++i)
            for (std::size_t j = 0; j < sets.size(); ++j) {
                const bool equal = closures[i] == closures[j];
                if ((restraints[i] == restraints[j]) == equal && (restraints[i] != restraints[j]) != equal) continue;
                FAIL() << Hex(sets[i]) << " and " << Hex(sets[j]) << ' ' << Name(moment) << " should be "
                       << (equal ? "equal" : "unequal");
            }
    }
}

TEST(RestraintClosure, PresetsOfEveryBitAndPairAreThoseWithThePresetsClosure)
{
    for (const unsigned int preset : {0U, 0x300043U, 0x31004dU, 0x320071U, 0x1U, 0x2U, 0x100643U, 0x3f01ffU})
        for (const unsigned int bits : SmallSets()) {
            const bool equal =
                RestraintOracle::Closure(bits, Moment::None) == RestraintOracle::Closure(preset, Moment::None);
            EXPECT_EQ(Make(bits).IsPreset(preset), equal) << Hex(bits) << " as " << Hex(preset);
            EXPECT_FALSE(Make(bits, Moment::Zero).IsPreset(preset)) << Hex(bits) << " with forces";
        }
}
