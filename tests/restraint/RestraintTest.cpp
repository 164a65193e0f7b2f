// Restraints as values: defaults, bit operations, queries, comparison, mirroring, and the load position's texts.

#include "restraint/RestraintOracle.h"

#include <cstring>
#include <limits>
#include <stdexcept>
#include <type_traits>

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Data;
using RestraintOracle::Bits;
using RestraintOracle::Identical;
using RestraintOracle::Utf8;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

CRestraint WithHeight(double height, int bits = 0) { return {bits, SHR_CENTRE, height}; }

CRestraint WithMoment(unsigned int bits, double momentY, bool useSign = true)
{
    CRestraint restraint(static_cast<int>(bits), SHR_CENTRE, 0.0);
    restraint.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, momentY, 6.0}, useSign);
    return restraint;
}

template <class T>
T FieldAt(const CRestraint& restraint, std::size_t offset)
{
    T value;
    std::memcpy(&value, reinterpret_cast<const unsigned char*>(&restraint) + offset, sizeof value);
    return value;
}

} // namespace

TEST(LoadPosition, NamesOfTheThreePositions)
{
    EXPECT_EQ(Utf8(LoadPosString(SHR_CENTRE)), "SHR_CENTRE");
    EXPECT_EQ(Utf8(LoadPosString(TOP_FLANGE)), "TOP_FLANGE");
    EXPECT_EQ(Utf8(LoadPosString(BOT_FLANGE)), "BOT_FLANGE");
    EXPECT_EQ(static_cast<int>(SHR_CENTRE), 0);
    EXPECT_EQ(static_cast<int>(TOP_FLANGE), 1);
    EXPECT_EQ(static_cast<int>(BOT_FLANGE), 2);
}

TEST(LoadPosition, AnyOtherValueHasNoName)
{
    EXPECT_EQ(Utf8(LoadPosString(static_cast<LoadPos>(7))), "");
    EXPECT_EQ(Utf8(LoadPosString(static_cast<LoadPos>(3))), "");
    EXPECT_EQ(Utf8(LoadPosString(static_cast<LoadPos>(-1))), "");
}

TEST(LoadPosition, ReadsNamesAndNumbersInAnyCaseWithWhiteSpaceAround)
{
    EXPECT_EQ(LoadPosID(L"  top_flange ", SHR_CENTRE), TOP_FLANGE);
    EXPECT_EQ(LoadPosID(L"\t\r\nBot_Flange\n", SHR_CENTRE), BOT_FLANGE);
    EXPECT_EQ(LoadPosID(L"shr_centre", BOT_FLANGE), SHR_CENTRE);
    EXPECT_EQ(LoadPosID(L"0", BOT_FLANGE), SHR_CENTRE);
    EXPECT_EQ(LoadPosID(L" 1", BOT_FLANGE), TOP_FLANGE);
    EXPECT_EQ(LoadPosID(L"2 ", SHR_CENTRE), BOT_FLANGE);
}

TEST(LoadPosition, EmptyTextGivesTheDefault)
{
    EXPECT_EQ(LoadPosID(L"", BOT_FLANGE), BOT_FLANGE);
    EXPECT_EQ(LoadPosID(L" \t ", TOP_FLANGE), TOP_FLANGE);
    EXPECT_EQ(LoadPosID(L"", static_cast<LoadPos>(7)), static_cast<LoadPos>(7));
}

TEST(LoadPosition, UnknownTextThrowsWithItsMessage)
{
    for (const wchar_t* text : {L"3", L"00", L"1.0", L"-1", L"TOP FLANGE", L"TOP", L"SHR_CENTRE,", L"TOP_FLANGEX"}) {
        try {
            (void)LoadPosID(text, SHR_CENTRE);
            ADD_FAILURE() << "no exception for \"" << Utf8(text) << '"';
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "Unrecognised steel load position") << Utf8(text);
        }
    }
}

TEST(LoadPosition, ReadingLeavesTheCallersTextAlone)
{
    const CString text(L"  top_flange ");
    (void)LoadPosID(text, SHR_CENTRE);
    EXPECT_EQ(Utf8(text), "  top_flange ");
}

TEST(RestraintLayout, FieldsStandInTheirOrder)
{
    static_assert(std::is_trivially_copyable_v<CRestraint>);
    static_assert(!std::is_polymorphic_v<CRestraint>);
    static_assert(sizeof(LoadPos) == 4);
    static_assert(sizeof(CRestraint) == 72, "bits, reference, height, force, moment, two bools");

    CRestraint restraint(0x1234, BOT_FLANGE, 0.25);
    restraint.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, false);
    EXPECT_EQ(FieldAt<std::uint32_t>(restraint, 0), 0x1234U);
    EXPECT_EQ(FieldAt<std::int32_t>(restraint, 4), 2);
    EXPECT_EQ(FieldAt<double>(restraint, 8), 0.25);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(FieldAt<double>(restraint, 16 + 8 * static_cast<std::size_t>(i)), i + 1.0) << "component " << i;
    EXPECT_EQ(FieldAt<unsigned char>(restraint, 64), 0) << "use of the moment sign";
    EXPECT_EQ(FieldAt<unsigned char>(restraint, 65), 1) << "has forces and moments";
}

TEST(RestraintConstants, BitsMasksAndPresetsHaveTheirValues)
{
    unsigned int all = 0;
    for (const unsigned int bit : RestraintOracle::restraintBits)
        all |= bit;
    EXPECT_EQ(CRestraint::RESTRAINT_MASK, 0x33f7fffU);
    EXPECT_EQ(CRestraint::RESTRAINT_MASK, all);
    EXPECT_EQ(CRestraint::IMPLIED_MASK, 0x1a7fffU);
    EXPECT_EQ(CRestraint::ENCASTRE, 0x3f01ffU);
    EXPECT_EQ(CRestraint::NON_RESTRAINT_MASK, 0xfcc08000U);
    EXPECT_EQ(CRestraint::NON_RESTRAINT_MASK, ~CRestraint::RESTRAINT_MASK);

    const std::vector<unsigned int> named{CRestraint::FLANGE1_LATERAL,
                                          CRestraint::FLANGE2_LATERAL,
                                          CRestraint::FLANGE1_WARPING,
                                          CRestraint::FLANGE2_WARPING,
                                          CRestraint::FLANGE1_WARPING_PART,
                                          CRestraint::FLANGE2_WARPING_PART,
                                          CRestraint::TORSION,
                                          CRestraint::TORSION_PART,
                                          CRestraint::TORSION_FRICTION,
                                          CRestraint::COMP_FLANGE_LATERAL,
                                          CRestraint::TENS_FLANGE_LATERAL,
                                          CRestraint::COMP_FLANGE_WARPING,
                                          CRestraint::TENS_FLANGE_WARPING,
                                          CRestraint::COMP_FLANGE_WARPING_PART,
                                          CRestraint::TENS_FLANGE_WARPING_PART,
                                          CRestraint::MAJOR_ROTATION,
                                          CRestraint::MAJOR_ROTATION_PART,
                                          CRestraint::MINOR_ROTATION,
                                          CRestraint::MINOR_ROTATION_PART,
                                          CRestraint::MINOR_SHEAR,
                                          CRestraint::MAJOR_SHEAR,
                                          CRestraint::PART_A_CONNECTED,
                                          CRestraint::PART_B_CONNECTED};
    EXPECT_EQ(named,
              std::vector<unsigned int>(RestraintOracle::restraintBits.begin(), RestraintOracle::restraintBits.end()));

    EXPECT_EQ(CRestraint::FREE, 0);
    EXPECT_EQ(CRestraint::PINNED, 0x300043);
    EXPECT_EQ(CRestraint::FULL_ROTATIONAL, 0x31004d);
    EXPECT_EQ(CRestraint::PARTIAL_ROTATIONAL, 0x320071);
    EXPECT_EQ(CRestraint::TOP_FLANGE_LATERAL, 0x1);
    EXPECT_EQ(CRestraint::BOTTOM_FLANGE_LATERAL, 0x2);
    EXPECT_EQ(CRestraint::TOP_AND_BOTTOM_FLANGE_LATERAL, 0x100643);
}

TEST(RestraintPresets, PickListHasSixNamesInOrder)
{
    std::vector<std::string> names;
    for (const CString& name : CRestraint::PresetStrings())
        names.push_back(Utf8(name));
    EXPECT_EQ(names, (std::vector<std::string>{"Free", "Pinned", "Fixed", "Full rotational", "Partial rotational",
                                               "Top flange lateral"}));
}

TEST(RestraintPresets, ListsForSpansAndPointsAreBuiltOnce)
{
    EXPECT_EQ(CRestraint::SpanPresets(),
              (std::vector<CRestraint::Presets>{CRestraint::FREE, CRestraint::PINNED, CRestraint::TOP_FLANGE_LATERAL}));
    EXPECT_EQ(CRestraint::PointPresets(),
              (std::vector<CRestraint::Presets>{CRestraint::FREE, CRestraint::TOP_FLANGE_LATERAL,
                                                CRestraint::BOTTOM_FLANGE_LATERAL,
                                                CRestraint::TOP_AND_BOTTOM_FLANGE_LATERAL}));
    EXPECT_EQ(&CRestraint::SpanPresets(), &CRestraint::SpanPresets());
    EXPECT_EQ(&CRestraint::PointPresets(), &CRestraint::PointPresets());
}

TEST(RestraintValue, DefaultIsFreeAtTheShearCentreWithoutForces)
{
    const CRestraint restraint;
    EXPECT_EQ(restraint.RestFlag(), 0);
    EXPECT_EQ(restraint.RefLoadHeight(), SHR_CENTRE);
    EXPECT_EQ(restraint.LoadHeight(), 0.0);
    Vec3<double> force;
    Vec3<double> moment;
    bool useSign = false;
    EXPECT_FALSE(restraint.GetForcesAndMoments(force, moment, useSign));
    EXPECT_EQ(force, Vec3<double>(0.0, 0.0, 0.0)) << "filled although none are set";
    EXPECT_EQ(moment, Vec3<double>(0.0, 0.0, 0.0));
    EXPECT_TRUE(useSign);
}

TEST(RestraintValue, ConstructorSetsBitsReferenceAndHeight)
{
    const CRestraint restraint(0x43, TOP_FLANGE, -0.2);
    EXPECT_EQ(restraint.RestFlag(), 0x43);
    EXPECT_EQ(restraint.RefLoadHeight(), TOP_FLANGE);
    EXPECT_EQ(restraint.LoadHeight(), -0.2);
    Vec3<double> force;
    Vec3<double> moment;
    bool useSign = false;
    EXPECT_FALSE(restraint.GetForcesAndMoments(force, moment, useSign));
    EXPECT_TRUE(useSign);
}

TEST(RestraintValue, AccessorsSetOneFieldEach)
{
    CRestraint restraint;
    restraint.SetRestFlag(-1);
    EXPECT_EQ(restraint.RestFlag(), -1) << "all 32 bits are kept";
    restraint.SetRefLoadHeight(static_cast<LoadPos>(9));
    EXPECT_EQ(static_cast<int>(restraint.RefLoadHeight()), 9);
    restraint.SetLoadHeight(0.125);
    EXPECT_EQ(restraint.LoadHeight(), 0.125);
    EXPECT_EQ(restraint.RestFlag(), -1);
}

TEST(RestraintValue, CopyingCopiesEveryField)
{
    CRestraint original(0x8043, BOT_FLANGE, 0.3);
    original.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, -5.0, 6.0}, false);
    const CRestraint copy(original);
    EXPECT_TRUE(Identical(copy, original));
    CRestraint assigned;
    assigned = original;
    EXPECT_TRUE(Identical(assigned, original));
    const CRestraint& self = assigned;
    assigned = self;
    EXPECT_TRUE(Identical(assigned, original));
}

TEST(RestraintForces, AreKeptWithTheUseOfTheSignAndCleared)
{
    CRestraint restraint(0x3, TOP_FLANGE, 0.4);
    restraint.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, false);
    Vec3<double> force;
    Vec3<double> moment;
    bool useSign = true;
    EXPECT_TRUE(restraint.GetForcesAndMoments(force, moment, useSign));
    EXPECT_EQ(force, Vec3<double>(1.0, 2.0, 3.0));
    EXPECT_EQ(moment, Vec3<double>(4.0, 5.0, 6.0));
    EXPECT_FALSE(useSign);

    restraint.ClearForcesAndMoments();
    EXPECT_FALSE(restraint.GetForcesAndMoments(force, moment, useSign));
    EXPECT_EQ(force, Vec3<double>(0.0, 0.0, 0.0));
    EXPECT_EQ(moment, Vec3<double>(0.0, 0.0, 0.0));
    EXPECT_TRUE(useSign);
    EXPECT_EQ(restraint.RestFlag(), 0x3);
    EXPECT_EQ(restraint.RefLoadHeight(), TOP_FLANGE);
    EXPECT_EQ(restraint.LoadHeight(), 0.4);
}

TEST(RestraintForces, ClearGoesBackToTheDefault)
{
    CRestraint restraint(0x8043, BOT_FLANGE, 0.3);
    restraint.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, -5.0, 6.0}, false);
    restraint.Clear();
    EXPECT_TRUE(Identical(restraint, CRestraint()));
}

TEST(RestraintBitOperations, AddAndRemoveTouchOnlyTheirBits)
{
    CRestraint restraint(0x8005, SHR_CENTRE, 0.0);
    restraint.Add(0x42);
    EXPECT_EQ(Bits(restraint), 0x8047U);
    restraint.Remove(0x8004);
    EXPECT_EQ(Bits(restraint), 0x43U);
    restraint.Remove(0x100);
    EXPECT_EQ(Bits(restraint), 0x43U);
}

TEST(RestraintBitOperations, FreeKeepsBitsThatAreNoRestraints)
{
    CRestraint restraint(-1, SHR_CENTRE, 0.5);
    restraint.SetFree();
    EXPECT_EQ(Bits(restraint), 0xfcc08000U);
    EXPECT_EQ(restraint.LoadHeight(), 0.5);
}

TEST(RestraintBitOperations, PresetReplacesRestraintsAndKeepsOtherBits)
{
    CRestraint restraint(0x8000 | 0x1000000, SHR_CENTRE, 0.5);
    restraint.SetPreset(CRestraint::PINNED);
    EXPECT_EQ(Bits(restraint), 0x308043U);
    EXPECT_EQ(restraint.LoadHeight(), 0.5);
    restraint.SetPreset(CRestraint::FREE);
    EXPECT_EQ(Bits(restraint), 0x8000U);
    restraint.SetPreset(0x10000001);
    EXPECT_EQ(Bits(restraint), 0x10008001U) << "a preset's own bits are taken whatever they are";
}

TEST(RestraintBitOperations, EncastreClearsCompressionTensionAndPartConnection)
{
    CRestraint parts(0x1000000, SHR_CENTRE, 0.0);
    parts.SetEnc();
    EXPECT_EQ(Bits(parts), 0x3f01ffU);
    CRestraint everything(-1, SHR_CENTRE, 0.0);
    everything.SetEnc();
    // 0xffffffff & 0xfcff81ff leaves bit 15 and bits 22-23, 26-31; with 0x3f01ff: 0xfcff81ff.
    EXPECT_EQ(Bits(everything), 0xfcff81ffU);
    CRestraint comp(0x7e00, SHR_CENTRE, 0.0);
    comp.SetEnc();
    EXPECT_EQ(Bits(comp), 0x3f01ffU);
}

TEST(RestraintSwapBits, ExchangesTwoBitsAndDropsAllOthers)
{
    // Dropping the other bits is required; mirroring relies on it.
    const auto swapped = [](unsigned int flag, unsigned int a, unsigned int b) {
        CRestraintTestAccess::SwapBits(flag, a, b);
        return flag;
    };
    // 0x5 & 0x3 = 0x1; b was not set; a was: | 0x2.
    EXPECT_EQ(swapped(0x5, 0x1, 0x2), 0x3U) << "the bit itself is not cleared";
    EXPECT_EQ(swapped(0x4, 0x1, 0x2), 0U);
    EXPECT_EQ(swapped(0x2, 0x1, 0x2), 0x3U);
    EXPECT_EQ(swapped(0x3, 0x1, 0x2), 0x3U);
    EXPECT_EQ(swapped(0xffffffff, 0x1, 0x2), 0x3U);
    EXPECT_EQ(swapped(0, 0x1, 0x2), 0U);
    // Masks of several bits: a's bits are set when any bit of b was.
    EXPECT_EQ(swapped(0x8, 0x3, 0xc), 0xbU);
}

TEST(RestraintMirror, NegatesForceZMomentXAndYAndEmptiesTheBits)
{
    CRestraint restraint(-1, TOP_FLANGE, 0.3);
    restraint.SetForcesAndMoments({1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, false);
    restraint.MirrorMajorAxis();
    EXPECT_EQ(restraint.RestFlag(), 0) << "bits that are no restraints go too";
    EXPECT_EQ(restraint.RefLoadHeight(), TOP_FLANGE);
    EXPECT_EQ(restraint.LoadHeight(), 0.3);
    Vec3<double> force;
    Vec3<double> moment;
    bool useSign = true;
    EXPECT_TRUE(restraint.GetForcesAndMoments(force, moment, useSign));
    EXPECT_EQ(force, Vec3<double>(1.0, 2.0, -3.0));
    EXPECT_EQ(moment, Vec3<double>(-4.0, -5.0, 6.0));
    EXPECT_FALSE(useSign);
}

TEST(RestraintMirror, EmptiesEveryBitSet)
{
    for (const unsigned int bits : RestraintOracle::SmallSets()) {
        CRestraint restraint = RestraintOracle::Make(bits);
        restraint.MirrorMajorAxis();
        EXPECT_EQ(restraint.RestFlag(), 0) << RestraintOracle::Hex(bits);
    }
}

TEST(RestraintQueries, ZeroFlagIsFreeOfAnything)
{
    const CRestraint restraint;
    for (const unsigned int bits : {0U, 0x1U, 0x8000U, 0xffffffffU, 0x33f7fffU}) {
        EXPECT_TRUE(restraint.IsFree(bits, true)) << RestraintOracle::Hex(bits);
        EXPECT_TRUE(restraint.IsFree(bits, false)) << RestraintOracle::Hex(bits);
    }
}

TEST(RestraintQueries, FreeIgnoresBitsThatAreNoRestraintsButRestrainedDoesNot)
{
    const CRestraint restraint(0x8000, SHR_CENTRE, 0.0);
    EXPECT_TRUE(restraint.IsFree(0x8000, false));
    EXPECT_TRUE(restraint.IsFree(0x8000, true));
    EXPECT_TRUE(restraint.IsRestrained(0x8000, false));
    EXPECT_TRUE(restraint.IsRestrained(0x8000, true));
    EXPECT_FALSE(restraint.IsRestrained(0x400000, true));
    EXPECT_TRUE(restraint.IsRestrained(0, false)) << "every bit of no bits is set";
}

TEST(RestraintQueries, ClosureAddsMinorShearWhenBothFlangesAreHeld)
{
    const CRestraint restraint(0x3, SHR_CENTRE, 0.0);
    EXPECT_TRUE(restraint.IsRestrained(0x100000, true));
    EXPECT_FALSE(restraint.IsRestrained(0x100000, false));
    EXPECT_FALSE(restraint.IsFree(0x100000, true));
    EXPECT_TRUE(restraint.IsFree(0x100000, false));
    EXPECT_EQ(restraint.RestFlag(), 0x3) << "asking changes nothing";
}

TEST(RestraintQueries, MomentSignNamesTheCompressionFlange)
{
    EXPECT_TRUE(WithMoment(0x1, -5.0).IsRestrained(0x200, true));
    EXPECT_FALSE(WithMoment(0x1, -5.0).IsRestrained(0x400, true));
    EXPECT_FALSE(WithMoment(0x1, 5.0).IsRestrained(0x200, true));
    EXPECT_TRUE(WithMoment(0x1, 5.0).IsRestrained(0x400, true));
    for (const double moment : {-5.0, 5.0}) {
        EXPECT_FALSE(WithMoment(0x1, moment, false).IsRestrained(0x200, true)) << moment;
        EXPECT_FALSE(WithMoment(0x1, moment, false).IsRestrained(0x400, true)) << moment;
    }
    for (const double moment : {0.0, -0.0, notANumber}) {
        EXPECT_FALSE(WithMoment(0x1, moment).IsRestrained(0x200, true)) << moment;
        EXPECT_FALSE(WithMoment(0x1, moment).IsRestrained(0x400, true)) << moment;
    }
    EXPECT_TRUE(WithMoment(0x1, 1e-300).IsRestrained(0x400, true)) << "the sign decides, not the size";
    EXPECT_FALSE(CRestraint(0x1, SHR_CENTRE, 0.0).IsRestrained(0x200, true));
    EXPECT_FALSE(CRestraint(0x1, SHR_CENTRE, 0.0).IsRestrained(0x400, true));
}

TEST(RestraintQueries, OnlyTheMomentAboutYDecides)
{
    CRestraint restraint(0x1, SHR_CENTRE, 0.0);
    restraint.SetForcesAndMoments({9.0, 9.0, 9.0}, {9.0, 0.0, -9.0}, true);
    EXPECT_FALSE(restraint.IsRestrained(0x200, true));
    EXPECT_FALSE(restraint.IsRestrained(0x400, true));
}

TEST(RestraintQueries, EncastreNeedsEveryBitOfItself)
{
    EXPECT_TRUE(CRestraint(0x3f01ff, SHR_CENTRE, 0.0).IsEnc(false));
    EXPECT_TRUE(CRestraint(0x3f01ff | 0x8000, SHR_CENTRE, 0.0).IsEnc(false));
    // Both flanges lateral and warping, both full rotations, vertical support: everything else is implied.
    const CRestraint implied(0x25000f, SHR_CENTRE, 0.0);
    EXPECT_FALSE(implied.IsEnc(false));
    EXPECT_TRUE(implied.IsEnc(true));
    const CRestraint noSupport(0x5000f, SHR_CENTRE, 0.0);
    EXPECT_FALSE(noSupport.IsEnc(true)) << "vertical support is never implied";
    for (unsigned int i = 0; i < 22; ++i) {
        const unsigned int bit = 1U << i;
        if ((0x3f01ffU & bit) == 0) continue;
        EXPECT_FALSE(CRestraint(static_cast<int>(0x3f01ffU & ~bit), SHR_CENTRE, 0.0).IsEnc(false))
            << RestraintOracle::Hex(bit);
    }
}

TEST(RestraintQueries, PresetNeedsShearCentreNoHeightAndNoForces)
{
    EXPECT_TRUE(CRestraint(0x300043, SHR_CENTRE, 0.0).IsPreset(CRestraint::PINNED));
    EXPECT_FALSE(CRestraint(0x300043, SHR_CENTRE, 0.2).IsPreset(CRestraint::PINNED));
    EXPECT_FALSE(CRestraint(0x300043, TOP_FLANGE, 0.0).IsPreset(CRestraint::PINNED));
    EXPECT_FALSE(WithMoment(0x300043, 0.0).IsPreset(CRestraint::PINNED));
    EXPECT_TRUE(WithHeight(1e-11, 0x300043).IsPreset(CRestraint::PINNED)) << "compared as heights are";
    EXPECT_TRUE(CRestraint(0x3, SHR_CENTRE, 0.0).IsPreset(CRestraint::TOP_AND_BOTTOM_FLANGE_LATERAL));
    EXPECT_TRUE(CRestraint().IsPreset(CRestraint::FREE));
    EXPECT_FALSE(CRestraint(0x8000, SHR_CENTRE, 0.0).IsPreset(CRestraint::FREE)) << "other bits take part";
}

TEST(RestraintQueries, LoadHeightAboveZeroDestabilises)
{
    EXPECT_TRUE(WithHeight(1e-300).IsDestabilized());
    EXPECT_FALSE(WithHeight(1e-300).IsStabilized());
    EXPECT_TRUE(WithHeight(-1e-300).IsStabilized());
    EXPECT_FALSE(WithHeight(-1e-300).IsDestabilized());
    for (const double height : {0.0, -0.0, notANumber}) {
        EXPECT_FALSE(WithHeight(height).IsDestabilized()) << height;
        EXPECT_FALSE(WithHeight(height).IsStabilized()) << height;
    }
}

TEST(RestraintEquality, ComparesClosuresOfTheBits)
{
    EXPECT_TRUE(CRestraint(0x3, SHR_CENTRE, 0.0) == CRestraint(0x100643, SHR_CENTRE, 0.0));
    EXPECT_FALSE(CRestraint(0x3, SHR_CENTRE, 0.0) != CRestraint(0x100643, SHR_CENTRE, 0.0));
    EXPECT_FALSE(CRestraint(0x1, SHR_CENTRE, 0.0) == CRestraint(0x2, SHR_CENTRE, 0.0));
    EXPECT_TRUE(CRestraint(0x1, SHR_CENTRE, 0.0) != CRestraint(0x2, SHR_CENTRE, 0.0));
    EXPECT_FALSE(CRestraint(0x8001, SHR_CENTRE, 0.0) == CRestraint(0x1, SHR_CENTRE, 0.0));
    EXPECT_TRUE(WithMoment(0x1, 5.0) == WithMoment(0x401, 5.0)) << "closed with the moment's sign";
    EXPECT_FALSE(WithMoment(0x1, 5.0) == WithMoment(0x201, 5.0));
}

TEST(RestraintEquality, LoadHeightsAgreeToOneInAHundredThousand)
{
    EXPECT_TRUE(WithHeight(1.0) == WithHeight(1.000001));
    EXPECT_TRUE(WithHeight(1e-11) == WithHeight(-1e-11));
    EXPECT_FALSE(WithHeight(0.0) == WithHeight(1e-9)) << "relative difference 1";
    EXPECT_FALSE(WithHeight(0.0) == WithHeight(1e-10)) << "the floor itself is not below the floor";
    EXPECT_TRUE(WithHeight(0.0) == WithHeight(0.99e-10));
    EXPECT_FALSE(WithHeight(1.0) == WithHeight(-1.0));
    // A tie at the tolerance: 1 / 100000 is the double 1e-5 itself, and not below it.
    EXPECT_FALSE(WithHeight(100000.0) == WithHeight(99999.0));
    EXPECT_FALSE(WithHeight(99999.0) == WithHeight(100000.0));
    EXPECT_TRUE(WithHeight(100000.0) == WithHeight(99999.5));
    EXPECT_TRUE(WithHeight(1e-9) == WithHeight(1.000001e-9)) << "relative above the floor";
    EXPECT_FALSE(WithHeight(1e-9) == WithHeight(1.1e-9));
    EXPECT_TRUE(WithHeight(infinity) == WithHeight(infinity));
    EXPECT_FALSE(WithHeight(infinity) == WithHeight(-infinity));
    EXPECT_FALSE(WithHeight(infinity) == WithHeight(1.0));
    EXPECT_FALSE(WithHeight(notANumber) == WithHeight(notANumber));
    EXPECT_FALSE(WithHeight(notANumber) == WithHeight(0.0));
}

TEST(RestraintEquality, ReferenceAndForcesAreComparedExactly)
{
    EXPECT_FALSE(CRestraint(1, SHR_CENTRE, 0.0) == CRestraint(1, TOP_FLANGE, 0.0));
    EXPECT_FALSE(WithMoment(1, 5.0) == CRestraint(1, SHR_CENTRE, 0.0)) << "forces on one side only";
    EXPECT_FALSE(CRestraint(1, SHR_CENTRE, 0.0) == WithMoment(1, 5.0));
    EXPECT_FALSE(WithMoment(0, 5.0, true) == WithMoment(0, 5.0, false)) << "the use of the sign takes part";
    for (int i = 0; i < 6; ++i) {
        std::array<double, 6> v{1.0, 2.0, 3.0, 4.0, 5.0, 6.0};
        CRestraint a;
        a.SetForcesAndMoments({v[0], v[1], v[2]}, {v[3], v[4], v[5]}, true);
        v[static_cast<std::size_t>(i)] += 1e-12;
        CRestraint b;
        b.SetForcesAndMoments({v[0], v[1], v[2]}, {v[3], v[4], v[5]}, true);
        EXPECT_FALSE(a == b) << "component " << i;
        EXPECT_TRUE(a == a) << "component " << i;
    }
    EXPECT_FALSE(WithMoment(0, notANumber) == WithMoment(0, notANumber)) << "not-a-number equals nothing";
}

TEST(RestraintEquality, ForgottenForcesDoNotCount)
{
    CRestraint cleared = WithMoment(0x1, 5.0, false);
    cleared.ClearForcesAndMoments();
    EXPECT_TRUE(cleared == CRestraint(0x1, SHR_CENTRE, 0.0));
    CRestraint mirrored; // negated zeros, and forces still not set
    mirrored.MirrorMajorAxis();
    EXPECT_TRUE(mirrored == CRestraint());
}
