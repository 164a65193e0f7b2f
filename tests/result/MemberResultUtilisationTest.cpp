// Utilisations: what each setter stores and which failure it raises, and the maxima over the positions.

#include "support/ResultRecord.h"

#include <cfloat>

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

const double justAbove = std::nextafter(1.0, 2.0);
const double justBelow = std::nextafter(1.0, 0.0);

struct LocalRow {
    const char* name;
    ResultSetter set;
    double (CMemberResult::*get)(int) const;
    double (CMemberResult::*max)(int*) const;
    int bit;
};
constexpr LocalRow localRows[] = {
    {"axial", &CMemberResult::SetUtilLocalAxial, &CMemberResult::UtilLocalAxial, &CMemberResult::MaxUtilLocalAxial,
     0x1000},
    {"major bending", &CMemberResult::SetUtilLocalMomMajor, &CMemberResult::UtilLocalMomMajor,
     &CMemberResult::MaxUtilLocalMomMajor, 0x2000},
    {"minor bending", &CMemberResult::SetUtilLocalMomMinor, &CMemberResult::UtilLocalMomMinor,
     &CMemberResult::MaxUtilLocalMomMinor, 0x4000},
    {"major shear", &CMemberResult::SetUtilLocalShearMajor, &CMemberResult::UtilLocalShearMajor,
     &CMemberResult::MaxUtilLocalShearMajor, 0x8000},
    {"minor shear", &CMemberResult::SetUtilLocalShearMinor, &CMemberResult::UtilLocalShearMinor,
     &CMemberResult::MaxUtilLocalShearMinor, 0x10000},
    {"torsion", &CMemberResult::SetUtilLocalTorsion, &CMemberResult::UtilLocalTorsion,
     &CMemberResult::MaxUtilLocalTorsion, 0x20000},
};

struct BucklingRow {
    const char* name;
    ResultSetter set;
    double (CMemberResult::*get)() const;
    int bit;
    bool failsAtLimit;
};
constexpr BucklingRow bucklingRows[] = {
    {"lateral-torsional", &CMemberResult::SetUtilBucklingLT, &CMemberResult::UtilBucklingLT, 0x100, false},
    {"axial major", &CMemberResult::SetUtilBucklingAxialMajor, &CMemberResult::UtilBucklingAxialMajor, 0x200, true},
    {"axial minor", &CMemberResult::SetUtilBucklingAxialMinor, &CMemberResult::UtilBucklingAxialMinor, 0x400, true},
    {"torsion", &CMemberResult::SetUtilBucklingAxialTorsion, &CMemberResult::UtilBucklingAxialTorsion, 0x1000000, true},
    {"flexural torsion", &CMemberResult::SetUtilBucklingAxialFlexuralTorsion,
     &CMemberResult::UtilBucklingAxialFlexuralTorsion, 0x2000000, true},
};

} // namespace

TEST(ResultUtilisation, AFreshResultHasItsDefaults)
{
    const CMemberResult result;
    EXPECT_EQ(Record(result), Record());
    EXPECT_EQ(result.GetLoadFlags(), 15);
    EXPECT_EQ(result.GetFlags(), 0);
    EXPECT_FALSE(result.HasFailed());
    EXPECT_TRUE(result.TextEnabled());
    EXPECT_EQ(result.CurSubSpan(), 0);
    EXPECT_TRUE(result.IncBuckChk());
    EXPECT_EQ(result.UtilOverAll(), 0.0);
    EXPECT_EQ(result.UtilLocalCombined(0), 0.0);
    EXPECT_EQ(result.UtilBucklingCombined(), 0.0);
    EXPECT_TRUE(result.DesFormat() == CDesFormat(CUnit()));
}

TEST(ResultUtilisation, NotANumberCountsAsInfiniteAndEverythingElseStaysAsItIs)
{
    EXPECT_EQ(CMemberResult::InfinitiseNANs(notANumber), infinity);
    EXPECT_EQ(CMemberResult::InfinitiseNANs(-notANumber), infinity);
    EXPECT_EQ(CMemberResult::InfinitiseNANs(std::numeric_limits<double>::signaling_NaN()), infinity);
    for (const double value : {infinity, -infinity, 0.0, -0.0, 1.0, -1.0, DBL_MIN, DBL_MIN / 2, -DBL_TRUE_MIN, DBL_MAX})
        EXPECT_TRUE(Record::SameBits(CMemberResult::InfinitiseNANs(value), value)) << value;
}

TEST(ResultUtilisation, LocalComponentsFailAtTheLimit)
{
    for (const LocalRow& row : localRows) {
        for (const double util : {justBelow, 1.0, justAbove, 2.0}) {
            CMemberResult result;
            (result.*row.set)(util);
            EXPECT_EQ((result.*row.get)(0), util) << row.name;
            EXPECT_EQ(result.UtilLocalCombined(0), util) << row.name;
            EXPECT_EQ(result.UtilOverAll(), util) << row.name;
            EXPECT_EQ(result.UtilBucklingCombined(), 0.0) << row.name;
            EXPECT_EQ(result.GetFlags(), util >= 1.0 ? 0x17 | row.bit : 0) << row.name << " " << util;
        }
    }
}

TEST(ResultUtilisation, LocalAxialAtTheLimitSetsItsExactFlags)
{
    CMemberResult result;
    result.SetUtilLocalAxial(1.0);
    EXPECT_EQ(result.GetFlags(), 0x1017);
}

TEST(ResultUtilisation, LateralTorsionalBucklingFailsOnlyAboveTheLimitAxialBucklingAtIt)
{
    for (const BucklingRow& row : bucklingRows) {
        for (const double util : {justBelow, 1.0, justAbove, 2.0}) {
            CMemberResult result;
            (result.*row.set)(util);
            EXPECT_EQ((result.*row.get)(), util) << row.name;
            EXPECT_EQ(result.UtilBucklingCombined(), util) << row.name;
            EXPECT_EQ(result.UtilOverAll(), util) << row.name;
            EXPECT_EQ(result.UtilLocalCombined(0), 0.0) << row.name;
            const bool fails = row.failsAtLimit ? util >= 1.0 : util > 1.0;
            EXPECT_EQ(result.GetFlags(), fails ? 0x27 | row.bit : 0) << row.name << " " << util;
        }
    }
}

TEST(ResultUtilisation, LateralTorsionalBucklingAtTheLimitIsStoredWithoutAFlag)
{
    CMemberResult result;
    result.SetUtilBucklingLT(1.0);
    EXPECT_EQ(result.GetFlags(), 0);
    EXPECT_EQ(result.UtilBucklingLT(), 1.0);
    EXPECT_EQ(result.UtilBucklingCombined(), 1.0);
    result.SetUtilBucklingAxialMajor(1.0);
    EXPECT_EQ(result.GetFlags(), 0x227);
    EXPECT_EQ(result.UtilBucklingCombined(), 1.0);
}

TEST(ResultUtilisation, CombinedBucklingFailsOnlyAboveTheLimitCombinedLocalAtIt)
{
    for (const double util : {justBelow, 1.0, justAbove}) {
        CMemberResult buckling;
        buckling.SetUtilBucklingCombined(util);
        EXPECT_EQ(buckling.UtilBucklingCombined(), util);
        EXPECT_EQ(buckling.UtilOverAll(), util);
        EXPECT_EQ(buckling.GetFlags(), util > 1.0 ? 0x27 : 0) << util;

        CMemberResult local;
        local.SetUtilLocalCombined(util);
        EXPECT_EQ(local.UtilLocalCombined(0), util);
        EXPECT_EQ(local.UtilOverAll(), util);
        EXPECT_EQ(local.GetFlags(), util >= 1.0 ? 0x17 : 0) << util;
    }
}

TEST(ResultUtilisation, TheOverallValueIsKeptAtItsMaximumWithoutAnyFlag)
{
    CMemberResult result;
    result.SetUtilOverAll(2.0);
    result.SetUtilOverAll(1.5);
    EXPECT_EQ(result.UtilOverAll(), 2.0);
    EXPECT_EQ(result.GetFlags(), 0);
    result.SetUtilOverAll(notANumber);
    EXPECT_EQ(result.UtilOverAll(), infinity);
    EXPECT_EQ(result.GetFlags(), 0);
}

TEST(ResultUtilisation, ASmallerOrEqualSecondValueChangesNothingAndRaisesNoFlag)
{
    for (const LocalRow& row : localRows) {
        CMemberResult result;
        (result.*row.set)(3.0);
        result.SetFlags(0);
        const Record before(result);
        for (const double util : {3.0, 2.5, 0.1, -3.0})
            (result.*row.set)(util);
        EXPECT_EQ(Record(result), before) << row.name;
    }
    for (const BucklingRow& row : bucklingRows) {
        CMemberResult result;
        (result.*row.set)(3.0);
        result.SetFlags(0);
        const Record before(result);
        for (const double util : {3.0, 2.5, 0.1, -3.0})
            (result.*row.set)(util);
        EXPECT_EQ(Record(result), before) << row.name;
    }
}

TEST(ResultUtilisation, NegativeAndZeroValuesOnAFreshResultChangeNothing)
{
    for (const double util : {0.0, -0.0, -0.5, -2.0, -infinity}) {
        CMemberResult result;
        for (const ResultSetter set : localSetters)
            (result.*set)(util);
        for (const ResultSetter set : bucklingSetters)
            (result.*set)(util);
        result.SetUtilOverAll(util);
        EXPECT_EQ(Record(result), Record()) << util;
    }
}

TEST(ResultUtilisation, NotANumberStoresInfinityAndRaisesTheComponentsFailure)
{
    for (const LocalRow& row : localRows) {
        CMemberResult result;
        (result.*row.set)(notANumber);
        EXPECT_EQ((result.*row.get)(0), infinity) << row.name;
        EXPECT_EQ(result.UtilOverAll(), infinity) << row.name;
        EXPECT_EQ(result.GetFlags(), 0x17 | row.bit) << row.name;
    }
    for (const BucklingRow& row : bucklingRows) {
        CMemberResult result;
        (result.*row.set)(notANumber);
        EXPECT_EQ((result.*row.get)(), infinity) << row.name;
        EXPECT_EQ(result.UtilBucklingCombined(), infinity) << row.name;
        EXPECT_EQ(result.GetFlags(), 0x27 | row.bit) << row.name;
    }
}

TEST(ResultUtilisation, AComponentBelowTheCombinedValueStillRaisesItsOwnFailure)
{
    CMemberResult result;
    result.SetUtilLocalCombined(5.0);
    result.SetUtilBucklingCombined(5.0);
    result.SetFlags(0);
    result.SetUtilLocalTorsion(1.2);
    EXPECT_EQ(result.UtilLocalCombined(0), 5.0);
    EXPECT_EQ(result.GetFlags(), 0x20017);
    result.SetFlags(0);
    result.SetUtilBucklingAxialMinor(1.0);
    EXPECT_EQ(result.UtilBucklingCombined(), 5.0);
    EXPECT_EQ(result.GetFlags(), 0x427);
    result.SetFlags(0);
    result.SetUtilBucklingLT(1.0);
    EXPECT_EQ(result.GetFlags(), 0);
}

TEST(ResultUtilisation, TheOverallValueRisesOnlyWithTheCombinedOne)
{
    CMemberResult result;
    result.SetUtilLocalCombined(5.0);
    result.SetUtilBucklingCombined(5.0);
    ResultAccess::OverAll(result) = 0.0;
    result.SetUtilLocalAxial(2.0);
    result.SetUtilBucklingLT(2.0);
    EXPECT_EQ(result.UtilOverAll(), 0.0);
    result.SetUtilLocalAxial(6.0);
    EXPECT_EQ(result.UtilOverAll(), 6.0);
    result.SetUtilBucklingAxialTorsion(5.5);
    EXPECT_EQ(result.UtilBucklingCombined(), 5.5);
    EXPECT_EQ(result.UtilOverAll(), 6.0);
}

TEST(ResultUtilisation, LocalSettersWriteAtTheCurrentPositionOnly)
{
    CMemberResult result;
    result.IniDynaArray(3);
    result.SetCurSubSpan(2);
    result.SetUtilLocalShearMajor(0.4);
    result.SetCurSubSpan(1);
    result.SetUtilLocalShearMajor(0.3);
    EXPECT_EQ(result.UtilLocalShearMajor(0), 0.0);
    EXPECT_EQ(result.UtilLocalShearMajor(1), 0.3);
    EXPECT_EQ(result.UtilLocalShearMajor(2), 0.4);
    EXPECT_EQ(result.UtilLocalCombined(1), 0.3);
    EXPECT_EQ(result.UtilOverAll(), 0.4);
}

TEST(ResultUtilisation, ALocalFailureAtAPositionBelowAnotherOnesValueIsStillRaised)
{
    CMemberResult result;
    result.IniDynaArray(2);
    result.SetUtilLocalAxial(4.0);
    result.SetFlags(0);
    result.SetCurSubSpan(1);
    result.SetUtilLocalAxial(1.0);
    EXPECT_EQ(result.GetFlags(), 0x1017);
    EXPECT_EQ(result.UtilOverAll(), 4.0);
}

TEST(ResultUtilisation, RandomRunsOfSettersAgreeWithTheRulesOverPlainValues)
{
    const unsigned int seed = 20240611;
    Random random(seed);
    for (int run = 0; run < 400; ++run) {
        CMemberResult result;
        const int positions = Pick(random, 1, 4);
        result.IniDynaArray(positions);
        Record expected(result);
        for (int k = 0; k < 25; ++k) {
            expected.current = Pick(random, 0, positions - 1);
            result.SetCurSubSpan(expected.current);
            const double util = RandomUtil(random);
            if (Pick(random, 0, 1) == 0) {
                const auto i = static_cast<std::size_t>(Pick(random, 0, 6));
                (result.*localSetters[i])(util);
                expected.SetLocal(i, util);
            } else {
                const auto i = static_cast<std::size_t>(Pick(random, 0, 5));
                (result.*bucklingSetters[i])(util);
                expected.SetBuckling(i, util);
            }
            if (Pick(random, 0, 9) == 0) {
                result.SetFlags(0);
                expected.flags = 0;
            }
            ASSERT_EQ(Record(result), expected)
                << "seed " << seed << " run " << run << " step " << k << " util " << util;
        }
    }
}

TEST(ResultMaximum, TheFirstOfEqualMaximaWins)
{
    for (const LocalRow& row : localRows) {
        CMemberResult result;
        result.IniDynaArray(3);
        const double values[] = {0.5, 0.7, 0.7};
        for (int i = 0; i < 3; ++i) {
            result.SetCurSubSpan(i);
            (result.*row.set)(values[i]);
        }
        int index = 99;
        EXPECT_EQ((result.*row.max)(&index), 0.7) << row.name;
        EXPECT_EQ(index, 1) << row.name;
        index = 99;
        EXPECT_EQ(result.MaxUtilLocalCombined(&index), 0.7) << row.name;
        EXPECT_EQ(index, 1) << row.name;
        EXPECT_EQ((result.*row.max)(nullptr), 0.7) << row.name;
    }
}

TEST(ResultMaximum, WithoutAValueAboveZeroThePositionIsLeftAlone)
{
    CMemberResult result;
    int index = 42;
    EXPECT_EQ(result.MaxUtilLocalAxial(&index), 0.0);
    EXPECT_EQ(index, 42);
    ResultAccess::Local(result, 1) = {-2.0, -0.0, notANumber};
    EXPECT_EQ(result.MaxUtilLocalAxial(&index), 0.0);
    EXPECT_EQ(index, 42);
    result.IniDynaArray(0);
    EXPECT_EQ(result.MaxUtilLocalAxial(&index), 0.0);
    EXPECT_EQ(index, 42);
    EXPECT_EQ(result.MaxUtilLocalAxial(nullptr), 0.0);
}

TEST(ResultMaximum, NotANumberIsPassedOverAndInfinityTaken)
{
    CMemberResult result;
    ResultAccess::Local(result, 6) = {0.2, notANumber, infinity, 0.4, infinity};
    int index = -7;
    EXPECT_EQ(result.MaxUtilLocalTorsion(&index), infinity);
    EXPECT_EQ(index, 2);
}
