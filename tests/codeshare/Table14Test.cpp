// BS 5950-1:2000 Table 14, cantilevers.

#include "TableOracle.h"

#include <gtest/gtest.h>

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

const std::string clause14 = "<i>BS5950-1:2000 Table 14</i> condition: ";
const std::string tipText = "Le increased due to tip moment: <i>BS5950-1:2000 cl. 4.3.5.4</i>\n";

// Flange 1 in compression throughout.
constexpr unsigned int supports[4] = {tensLateral, torsionPart | tensLateral, minorShear | torsion,
                                      minorShear | torsion | compWarping | tensWarping};
// The tip that is held against torsion only.
constexpr unsigned int tips[4] = {0, tensLateral, torsion, torsion | tensLateral};

struct Factor {
    double k;
    const char* text;
};
constexpr Factor normal[4][4] = {{{3.0, "3"}, {2.7, "2.7"}, {2.4, "2.4"}, {2.1, "2.1"}},
                                 {{2.0, "2"}, {1.8, "1.8"}, {1.6, "1.6"}, {1.4, "1.4"}},
                                 {{1.0, "1"}, {0.9, "0.9"}, {0.8, "0.8"}, {0.7, "0.7"}},
                                 {{0.8, "0.8"}, {0.7, "0.7"}, {0.6, "0.6"}, {0.5, "0.5"}}};
constexpr Factor destabilizing[4][4] = {{{7.5, "7.5"}, {7.5, "7.5"}, {4.5, "4.5"}, {3.6, "3.6"}},
                                        {{5.0, "5"}, {5.0, "5"}, {3.0, "3"}, {2.4, "2.4"}},
                                        {{2.5, "2.5"}, {2.5, "2.5"}, {1.5, "1.5"}, {1.2, "1.2"}},
                                        {{1.4, "1.4"}, {1.4, "1.4"}, {0.6, "0.6"}, {0.5, "0.5"}}};

double Length(CMemberResult* result, double L, const CRestraint& support, const CRestraint& tip,
              bool isDestabilizing = false, Direction dir = flange1)
{
    return CCodeShare(result).BS5950_1_2000_Table14(L, dir, support, tip, isDestabilizing);
}

std::string Condition(const CRestraint& support, const CRestraint& tip, Direction dir = flange1)
{
    CMemberResult result;
    Length(&result, 1.0, support, tip, false, dir);
    const std::string text = Texts(result).at(0);
    return text.substr(clause14.size(), 2);
}

} // namespace

TEST(Table14, EveryPairOfSupportAndTipHasItsFactorAndLabel)
{
    for (std::size_t s = 0; s < 4; ++s)
        for (std::size_t t = 0; t < 4; ++t)
            for (const bool high : {false, true}) {
                const Factor& factor = (high ? destabilizing : normal)[s][t];
                CMemberResult result;
                const double length = Length(&result, 2.0, Held(supports[s]), Held(tips[t]), high);
                const std::string label =
                    std::string(1, "abcd"[s]) + "1234"[t] + (high ? " (destabilizing) " : " ") + factor.text + "*L\n";
                EXPECT_EQ(Texts(result), std::vector<std::string>{clause14 + label});
                EXPECT_DOUBLE_EQ(length, factor.k * 2.0) << label;
                EXPECT_EQ(result.GetFlags(), 0) << label;
            }
}

TEST(Table14, FreeTipAndASupportWithTheTensionFlangeHeldOnly)
{
    EXPECT_DOUBLE_EQ(Length(nullptr, 1.0, Held(tensLateral), Held(0)), 3.0);
    EXPECT_DOUBLE_EQ(Length(nullptr, 1.0, Held(tensLateral), Held(0), true), 7.5);
}

TEST(Table14, SupportConditionsInTheirOrder)
{
    const CRestraint freeTip = Held(0);
    EXPECT_EQ(Condition(Held(minorShear | torsion | compWarping | tensWarping), freeTip), "d1");
    EXPECT_EQ(Condition(Held(minorShear | torsion | compWarping), freeTip), "c1");
    EXPECT_EQ(Condition(Held(minorShear | torsion | tensWarping), freeTip), "c1");
    EXPECT_EQ(Condition(Held(minorShear | torsion | compWarpingPart | tensWarpingPart), freeTip), "c1");
    // Full torsion with any lateral restraint closes to minor shear as well.
    EXPECT_EQ(Condition(Held(torsion | tensLateral), freeTip), "c1");
    EXPECT_EQ(Condition(Held(torsionPart | minorShear), freeTip), "?1");
    EXPECT_EQ(Condition(Held(torsionPart | compLateral), freeTip), "b1");
    EXPECT_EQ(Condition(Held(torsionPart | tensLateral), freeTip), "b1");
    EXPECT_EQ(Condition(Held(torsionPart | tensLateral | compWarping | tensWarping), freeTip), "b1");
    EXPECT_EQ(Condition(Held(tensLateral), freeTip), "a1");
    EXPECT_EQ(Condition(Held(torsionFriction | tensLateral), freeTip), "a1");
    EXPECT_EQ(Condition(Held(compLateral), freeTip), "?1");
    EXPECT_EQ(Condition(Held(minorShear), freeTip), "?1");
    EXPECT_EQ(Condition(Held(torsion), freeTip), "?1");
    EXPECT_EQ(Condition(Held(0), freeTip), "?1");
}

TEST(Table14, TipConditionsInTheirOrder)
{
    const CRestraint support = Held(minorShear | torsion);
    EXPECT_EQ(Condition(support, Held(torsion | compLateral)), "c4");
    EXPECT_EQ(Condition(support, Held(torsion | tensLateral)), "c4");
    EXPECT_EQ(Condition(support, Held(torsion | minorShear)), "c4");
    EXPECT_EQ(Condition(support, Held(torsion)), "c3");
    EXPECT_EQ(Condition(support, Held(torsionPart | compLateral)), "c1");
    EXPECT_EQ(Condition(support, Held(torsionPart | tensLateral)), "c2");
    EXPECT_EQ(Condition(support, Held(tensLateral)), "c2");
    EXPECT_EQ(Condition(support, Held(compLateral)), "c1");
    EXPECT_EQ(Condition(support, Held(minorShear)), "c1");
    EXPECT_EQ(Condition(support, Held(0)), "c1");
}

TEST(Table14, TheDirectionDecidesWhichFlangeIsTheTensionFlange)
{
    EXPECT_EQ(Condition(Held(0x2), Held(0x2), CCodeShare::LT_COMP_FLANGE1), "a2");
    EXPECT_EQ(Condition(Held(0x2), Held(0x2), CCodeShare::LT_COMP_FLANGE2), "?1");
    EXPECT_EQ(Condition(Held(0x1), Held(0x1), CCodeShare::LT_COMP_FLANGE1), "?1");
    EXPECT_EQ(Condition(Held(0x1), Held(0x1), CCodeShare::LT_COMP_FLANGE2), "a2");
    // Each end by its own stored moment.
    for (const int value : {2, 3, 4, -1}) {
        const auto dir = static_cast<Direction>(value);
        EXPECT_EQ(Condition(HeldWithMoment(0x2, -0.5), HeldWithMoment(0x1, 0.5), dir), "a2");
        EXPECT_EQ(Condition(HeldWithMoment(0x2, 0.5), HeldWithMoment(0x1, -0.5), dir), "?1");
        EXPECT_EQ(Condition(Held(0x2), Held(0x1), dir), "?1");
    }
}

TEST(Table14, TheTipsUseOfTheMomentSignRulesTheSupportToo)
{
    // Required: the support's own flag has no say. Flange 1 is the tension flange here.
    constexpr Direction dir = CCodeShare::LT_COMP_FLANGE2;
    EXPECT_EQ(Condition(HeldWithMoment(0x1, 0.0, false), HeldWithMoment(0, 0.0, true), dir), "a1");
    EXPECT_EQ(Condition(HeldWithMoment(0x1, 0.0, true), HeldWithMoment(0, 0.0, false), dir), "?1");
    EXPECT_EQ(Condition(HeldWithMoment(tensLateral, 0.0, true), HeldWithMoment(0x1, 0.0, false), dir), "a1");
}

TEST(Table14, AMomentAtTheTipLengthensTheCantilever)
{
    // k L = 2, L = 2: 2 + 0.6 and 1.3 x 2 are the same.
    CMemberResult result;
    EXPECT_DOUBLE_EQ(Length(&result, 2.0, Held(supports[2]), HeldWithMoment(0, -2.0)), 2.6);
    EXPECT_EQ(Texts(result), std::vector<std::string>{clause14 + "c1 1*L\n" + tipText});
    // k L = 10, L = 2: 1.3 x 10 governs.
    EXPECT_DOUBLE_EQ(Length(nullptr, 2.0, Held(supports[1]), HeldWithMoment(0, 2.0), true), 13.0);
    // k L = 1, L = 2: 1 + 0.3 x 2 governs.
    EXPECT_DOUBLE_EQ(Length(nullptr, 2.0, Held(supports[3]), HeldWithMoment(tips[3], 2.0)), 1.6);
}

TEST(Table14, TheTipMomentCountsFromExactlyOneInTheGivenRestraint)
{
    const CRestraint support = Held(supports[2]);
    const double below = std::nextafter(1.0, 0.0);
    for (const Direction dir : {CCodeShare::LT_COMP_FLANGE1, CCodeShare::LT_COMP_FLANGE2, CCodeShare::LT_COMP_BOTH}) {
        // The working copy's moment of 1 in the first two directions plays no part.
        EXPECT_DOUBLE_EQ(Length(nullptr, 1.0, support, Held(0), false, dir), 1.0);
        EXPECT_DOUBLE_EQ(Length(nullptr, 1.0, support, HeldWithMoment(0, below), false, dir), 1.0);
        EXPECT_DOUBLE_EQ(Length(nullptr, 1.0, support, HeldWithMoment(0, -below), false, dir), 1.0);
        EXPECT_DOUBLE_EQ(Length(nullptr, 1.0, support, HeldWithMoment(0, 1.0), false, dir), 1.3);
        EXPECT_DOUBLE_EQ(Length(nullptr, 1.0, support, HeldWithMoment(0, -1.0), false, dir), 1.3);
        EXPECT_DOUBLE_EQ(Length(nullptr, 1.0, support, HeldWithMoment(0, 1.0, false), false, dir), 1.3);
        EXPECT_DOUBLE_EQ(Length(nullptr, 1.0, support, HeldWithMoment(0, notANumber), false, dir), 1.0);
        // The support's moment plays no part either.
        EXPECT_DOUBLE_EQ(Length(nullptr, 1.0, HeldWithMoment(supports[2], 50.0), Held(0), false, dir), 1.0);
    }
}

TEST(Table14, WithoutARowTheLengthIsInfiniteWhateverTheCantileverIs)
{
    for (const double L : {0.0, -0.0, 2.0, infinity, notANumber})
        for (const double moment : {0.0, 5.0}) {
            CMemberResult result;
            EXPECT_EQ(Length(&result, L, Held(0), HeldWithMoment(0, moment)), infinity) << L << " " << moment;
            EXPECT_EQ(result.GetFlags(), 0x127);
            EXPECT_EQ(result.UtilBucklingLT(), infinity);
            EXPECT_EQ(Texts(result),
                      std::vector<std::string>{clause14 + "?1 inf*L\n" + (moment == 0.0 ? "" : tipText)});
        }
}

TEST(Table14, TheFailureShowsEvenWhereTheValueWasInfiniteBefore)
{
    CMemberResult result;
    result.SetUtilBucklingLT(infinity);
    result.SetFlags(0);
    Length(&result, 1.0, Held(0), Held(0), true);
    EXPECT_EQ(result.GetFlags(), 0x127);
    EXPECT_EQ(Texts(result), std::vector<std::string>{clause14 + "?1 (destabilizing) inf*L\n"});
}

TEST(Table14, AnInfiniteCantileverWithARowIsNoFailure)
{
    CMemberResult result;
    EXPECT_EQ(Length(&result, infinity, Held(supports[0]), Held(0)), infinity);
    EXPECT_EQ(result.GetFlags(), 0);
    EXPECT_TRUE(std::isnan(Length(&result, notANumber, Held(supports[0]), Held(0))));
    EXPECT_EQ(result.GetFlags(), 0);
}

TEST(Table14, WithTextDisabledOnlyTheFailureIsWritten)
{
    CMemberResult result;
    result.EnableText(false);
    const Record before(result);
    EXPECT_DOUBLE_EQ(Length(&result, 2.0, Held(supports[2]), HeldWithMoment(0, -2.0)), 2.6);
    EXPECT_EQ(Record(result), before);
    EXPECT_EQ(Length(&result, 2.0, Held(0), Held(0)), infinity);
    EXPECT_EQ(result.GetFlags(), 0x127);
    EXPECT_EQ(Record(result).texts, before.texts);
}

TEST(Table14, EveryCombinationOfTheBitsAgreesWithThePlainStatementOfTheRules)
{
    const CRestraint plainTip = HeldWithMoment(0, 0.0);
    const CRestraint plainSupport = Held(minorShear | torsion);
    const CCodeShare rules(nullptr);
    for (unsigned int combination = 0; combination < 1u << 16; ++combination) {
        const unsigned int bits = SpreadOverTableBits(combination);
        for (const int value : {0, 1, 2, 3}) {
            const auto dir = static_cast<Direction>(value);
            for (const double moment : {-5.0, 0.25}) {
                const CRestraint restraint = HeldWithMoment(bits, moment);
                for (const bool high : {false, true}) {
                    const double asSupport = rules.BS5950_1_2000_Table14(3.0, dir, restraint, plainTip, high);
                    ASSERT_EQ(asSupport, Table14(nullptr, 3.0, dir, restraint, plainTip, high))
                        << Show(restraint) << " as support, direction " << value << " destabilizing " << high;
                    const double asTip = rules.BS5950_1_2000_Table14(3.0, dir, plainSupport, restraint, high);
                    ASSERT_EQ(asTip, Table14(nullptr, 3.0, dir, plainSupport, restraint, high))
                        << Show(restraint) << " as tip, direction " << value << " destabilizing " << high;
                }
            }
        }
    }
}

TEST(Table14, RecordsAreWrittenAsThePlainStatementOfTheRulesWritesThem)
{
    const unsigned int seed = 14;
    Random random(seed);
    for (int run = 0; run < 6000; ++run) {
        CMemberResult result = RandomResult(random, Pick(random, 1, 3));
        CMemberResult expectedResult = result;
        const CRestraint support = RandomRestraint(random);
        const CRestraint tip = RandomRestraint(random);
        const Direction dir = RandomDirection(random);
        const bool high = Pick(random, 0, 1) == 0;
        const double length = Length(&result, 3.0, support, tip, high, dir);
        const double expected = Table14(&expectedResult, 3.0, dir, support, tip, high);
        const std::string inputs = "seed " + std::to_string(seed) + " run " + std::to_string(run) + " support " +
                                   Show(support) + " tip " + Show(tip);
        ASSERT_TRUE(SameLength(length, expected)) << inputs << ": " << length << " instead of " << expected;
        ASSERT_EQ(Record(result), Record(expectedResult)) << inputs;
    }
}
