// BS 5950-1:2000 Table 13, the conditions of both ends, and what the merge of their findings does to the result.

#include "TableOracle.h"

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

const CRestraint fixedEnd = Held(torsionPart | compLateral | compWarping | tensWarping); // 0.7 L
const CRestraint freeEnd = Held(0);                                                      // no row

double BothEnds(CMemberResult* result, const CRestraint& end1, const CRestraint& end2, double L = 4.0, double D = 0.4)
{
    return CCodeShare(result).BS5950_1_2000_Table13(L, D, flange1, end1, end2, false, false, false);
}

} // namespace

TEST(Table13TwoEnds, TheMeanOfTheTwoLengths)
{
    EXPECT_DOUBLE_EQ(BothEnds(nullptr, nominal, nominal), 4.0);
    EXPECT_DOUBLE_EQ(BothEnds(nullptr, nominal, fixedEnd), 3.4);
    EXPECT_DOUBLE_EQ(BothEnds(nullptr, fixedEnd, nominal), 3.4);
}

TEST(Table13TwoEnds, OneInfiniteLengthMakesTheMeanInfinite)
{
    EXPECT_EQ(BothEnds(nullptr, nominal, freeEnd), infinity);
    EXPECT_EQ(BothEnds(nullptr, freeEnd, nominal), infinity);
    EXPECT_EQ(BothEnds(nullptr, freeEnd, freeEnd), infinity);
    EXPECT_EQ(BothEnds(nullptr, nominal, nominal, notANumber), infinity);
    EXPECT_EQ(BothEnds(nullptr, nominal, nominal, -infinity), infinity);
    // Only one of the ends has a row with the depth in it.
    EXPECT_EQ(BothEnds(nullptr, nominal, Held(torsionPart | tensLateral), 4.0, notANumber), infinity);
}

TEST(Table13TwoEnds, TheNominalRowIsRefusedEndByEnd)
{
    const CCodeShare rules(nullptr);
    EXPECT_EQ(rules.BS5950_1_2000_Table13(4.0, 0.4, flange1, nominal, fixedEnd, false, true, false), infinity);
    EXPECT_DOUBLE_EQ(rules.BS5950_1_2000_Table13(4.0, 0.4, flange1, nominal, fixedEnd, false, false, true), 3.4);
    EXPECT_EQ(rules.BS5950_1_2000_Table13(4.0, 0.4, flange1, fixedEnd, nominal, false, false, true), infinity);
    EXPECT_DOUBLE_EQ(rules.BS5950_1_2000_Table13(4.0, 0.4, flange1, fixedEnd, nominal, false, true, false), 3.4);
}

TEST(Table13TwoEnds, EqualFindingsAreWrittenOnce)
{
    CMemberResult result;
    BothEnds(&result, nominal, nominal);
    EXPECT_EQ(Texts(result), std::vector<std::string>{clause13 + "1.0L(normal)\n"});
    EXPECT_EQ(result.GetFlags(), 0);
}

TEST(Table13TwoEnds, DifferentFindingsFollowOneAnother)
{
    CMemberResult result;
    result.AddOutputString(L"x\n");
    BothEnds(&result, nominal, fixedEnd);
    EXPECT_EQ(Texts(result),
              std::vector<std::string>{"x\n" + clause13 + "1.0L(normal)\n" + clause13 + "0.7L(normal)\n"});
}

TEST(Table13TwoEnds, TextIsIndentedAsANewTextWhateverStoodBefore)
{
    // The scratch records start without text, so each line begins with the indentation even after an open line.
    CMemberResult result;
    const CResultIndent indent(&result);
    result.AddOutputString(L"open");
    BothEnds(&result, nominal, fixedEnd);
    EXPECT_EQ(Texts(result),
              std::vector<std::string>{"\topen\t" + clause13 + "1.0L(normal)\n\t" + clause13 + "0.7L(normal)\n"});
}

TEST(Table13TwoEnds, TheFailureOfEitherEndIsCarriedOver)
{
    for (const bool first : {true, false}) {
        CMemberResult result;
        BothEnds(&result, first ? freeEnd : nominal, first ? nominal : freeEnd);
        EXPECT_EQ(result.GetFlags(), 0x127);
        EXPECT_EQ(result.UtilBucklingLT(), infinity);
        EXPECT_EQ(result.UtilBucklingCombined(), infinity);
        EXPECT_EQ(result.UtilOverAll(), infinity);
        EXPECT_EQ(Texts(result), std::vector<std::string>{clause13 + (first ? "?\n" : "1.0L(normal)\n") + clause13 +
                                                          (first ? "1.0L(normal)\n" : "?\n")});
    }
}

TEST(Table13TwoEnds, TwoFailuresAreWrittenOnce)
{
    CMemberResult result;
    BothEnds(&result, freeEnd, freeEnd);
    EXPECT_EQ(result.GetFlags(), 0x127);
    EXPECT_EQ(Texts(result), std::vector<std::string>{clause13 + "?\n"});
}

TEST(Table13TwoEnds, TheBucklingCheckCountsAsIncludedAfterwards)
{
    CMemberResult result;
    result.SetIncBuckChk(false);
    BothEnds(&result, nominal, nominal);
    EXPECT_TRUE(result.IncBuckChk());
}

TEST(Table13TwoEnds, WithTextDisabledThePositionGoesBackToZeroAndEntriesGrow)
{
    CMemberResult result;
    result.IniDynaArray(2);
    result.SetCurSubSpan(1);
    result.EnableText(false);
    const std::string note = "Verbose results not stored\n";
    BothEnds(&result, nominal, nominal);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", note, note, note}));
    EXPECT_EQ(result.CurSubSpan(), 0);
    EXPECT_FALSE(result.TextEnabled());
    BothEnds(&result, freeEnd, nominal);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", note, note, note, note}));
    EXPECT_EQ(result.GetFlags(), 0x127);
}

TEST(Table13TwoEnds, ANullResultOnlyComputesAndRestraintsAreNotChanged)
{
    const CRestraint end1 = HeldWithMoment(0x85, 3.0);
    const CRestraint end2 = HeldWithMoment(0x202, -3.0, false);
    BothEnds(nullptr, end1, end2);
    EXPECT_EQ(end1.RestFlag(), 0x85);
    EXPECT_EQ(end2.RestFlag(), 0x202);
    EXPECT_EQ(MomentY(end1), 3.0);
    EXPECT_FALSE(UsesMomentSign(end2));
}

TEST(Table13TwoEnds, RecordsAreLeftAsTheMergeOfTwoScratchRecordsLeavesThem)
{
    const unsigned int seed = 20240613;
    Random random(seed);
    for (int run = 0; run < 6000; ++run) {
        const int positions = Pick(random, 1, 4);
        CMemberResult result = RandomResult(random, positions);
        CMemberResult expectedResult = result;
        int resized = positions;
        // Several calls on the same record, so that the effects of one are the start of the next.
        for (int call = Pick(random, 1, 4); call > 0; --call) {
            const CRestraint end1 = RandomRestraint(random);
            const CRestraint end2 = Pick(random, 0, 2) == 0 ? end1 : RandomRestraint(random);
            const Direction dir = RandomDirection(random);
            const bool destabilizing = Pick(random, 0, 1) == 0;
            const bool rejected1 = Pick(random, 0, 1) == 0;
            const bool rejected2 = Pick(random, 0, 1) == 0;
            const double length = CCodeShare(&result).BS5950_1_2000_Table13(7.0, 0.4, dir, end1, end2, destabilizing,
                                                                            rejected1, rejected2);
            const double expected =
                Table13(&expectedResult, 7.0, 0.4, dir, end1, end2, destabilizing, rejected1, rejected2);
            const std::string inputs = "seed " + std::to_string(seed) + " run " + std::to_string(run) + " ends " +
                                       Show(end1) + " / " + Show(end2) + " direction " +
                                       std::to_string(static_cast<int>(dir));
            if (std::isfinite(expected))
                ASSERT_NEAR(length, expected, 1e-12) << inputs;
            else
                ASSERT_EQ(length, expected) << inputs;
            ASSERT_EQ(Record(result), Record(expectedResult)) << inputs;
            // What may happen between two calls.
            switch (Pick(random, 0, 6)) {
            case 0:
                result.SetCurSubSpan(positions - 1);
                expectedResult.SetCurSubSpan(positions - 1);
                break;
            case 1:
                result.ClearStrings();
                expectedResult.ClearStrings();
                break;
            case 2:
                resized = positions + Pick(random, 0, 8);
                result.IniDynaArray(resized);
                expectedResult.IniDynaArray(resized);
                break;
            case 3:
                result.EnableText(true);
                expectedResult.EnableText(true);
                result.AddOutputString(L"between");
                expectedResult.AddOutputString(L"between");
                break;
            case 4:
                result.EnableText(false);
                expectedResult.EnableText(false);
                break;
            default:
                break;
            }
        }
    }
}

TEST(Table13TwoEnds, ARecordWithoutPositionsAndTextIsMergedToo)
{
    CMemberResult result;
    result.IniDynaArray(0);
    result.EnableText(false);
    result.IniDynaArray(0);
    CMemberResult expected = result;
    BothEnds(&result, freeEnd, nominal);
    Table13(&expected, 4.0, 0.4, flange1, freeEnd, nominal, false, false, false);
    EXPECT_EQ(Record(result), Record(expected));
    EXPECT_EQ(Texts(result), std::vector<std::string>{""});
    EXPECT_EQ(result.GetFlags(), 0x127);
}

TEST(Table13TwoEnds, WithTextDisabledWhateverTheEntriesHoldIsReplacedByNotes)
{
    const std::string note = "Verbose results not stored\n";
    CMemberResult result;
    result.EnableText(false);
    BothEnds(&result, nominal, nominal);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", note, note}));
    result.IniDynaArray(5); // two empty entries
    BothEnds(&result, nominal, nominal);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", note, note, note, note, note}));
    ResultAccess::ReallyAddVerbose(result, L"a text in spite of the switch");
    BothEnds(&result, nominal, nominal);
    EXPECT_EQ(Texts(result), (std::vector<std::string>{"", note, note, note, note, note, note}));
}
