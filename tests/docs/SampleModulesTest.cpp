// The sample modules that people copy, given members whose sub-spans have numbers with gaps: validation accepts these, and the arrays of a
// result have one place for each sub-span, not for each number.

#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#define main ModuleExampleMain              // the program's own; the test's is that of the test library
#include "examples/code/module_example.cpp" // NOLINT(bugprone-suspicious-include): its class is in no header
#undef main
#include "install/consumer/YieldCode.h"

namespace {

// Two sub-spans of 2 m with 300 kN and 150 kN of tension, numbered 5 and 900.
CString MemberWithGaps(const CString& section)
{
    return L"TITLE,Hanger\nSECTION," + section +
           L",ROLLED\n"
           L"GRADE,User_defined,290E6,430E6,205E9,1\n"
           L"NET_TO_GROSS,1\n"
           L"ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\n"
           L"SHEAR_LAG_FACTOR,0.7\n"
           L"EFFECTIVE_LENGTH_OVERRIDES,NO\n"
           L"HEADINGS\n"
           L"MEMBERPOINT,1,0,Pinned,0\n"
           L"MEMBERPOINT,2,2,Free,0\n"
           L"MEMBERPOINT,3,4,Pinned,0\n"
           L"SUBSPAN,5,300E3,0,0,300E3,0,0,0,0,0,0,0,0,Free,0\n"
           L"SUBSPAN,900,150E3,0,0,150E3,0,0,0,0,0,0,0,0,Free,0\n"
           L"END\n";
}

void ReadAndCheck(CSteelMember& member, const CString& section, CMemberResult& result)
{
    CSteelGrade grade;
    ASSERT_TRUE(member.CSVInputData(MemberWithGaps(section), grade));
    ASSERT_TRUE(member.SetGrade(grade));
    ASSERT_TRUE(member.SetResult(&result));
    ASSERT_EQ(member.GetSubSpanVec().at(1).Get1Index(), 900) << "the numbers have gaps";
    EXPECT_TRUE(member.Check()) << result.GetVerbose().ToUtf8().value();
}

TEST(SampleModules, TheOneOfTheDocumentsCountsPositionsByItselfWhereNumbersHaveGaps)
{
    TieMember tie;
    CMemberResult result;
    ASSERT_NO_FATAL_FAILURE(ReadAndCheck(tie, L"CHS 88.9x5", result));
    // A = π (88.9² - 78.9²)/4 = 1317.9 mm²; A py = 1317.9 · 290 = 382.19 kN
    EXPECT_EQ(result.UtilLocalAxial(0), 0.0);
    EXPECT_NEAR(result.UtilLocalAxial(1), 300.0 / 382.19, 1e-5);
    EXPECT_NEAR(result.UtilLocalAxial(2), 150.0 / 382.19, 1e-5);
    EXPECT_EQ(result.UtilLocalAxial(3), 0.0);
    int place = 0;
    EXPECT_NEAR(result.MaxUtilLocalAxial(&place), 300.0 / 382.19, 1e-5);
    EXPECT_EQ(place, 1);
    result.SetCurSubSpan(2);
    EXPECT_THAT(result.GetVerbose().ToUtf8().value(), ::testing::HasSubstr("F/(A py) = 150 kN / 382.19 kN"));
}

TEST(SampleModules, TheOneOutsideTheTreeCountsPositionsByItselfWhereNumbersHaveGaps)
{
    const std::unique_ptr<CSteelMember> member(NewYieldMember());
    CMemberResult result;
    ASSERT_NO_FATAL_FAILURE(ReadAndCheck(*member, L"UB 457x191x67", result));
    // Published: A = 85.5 cm²; A py = 8550 · 290 = 2479.5 kN
    EXPECT_NEAR(result.UtilLocalCombined(0), 300.0 / 2479.5, 1e-4);
    EXPECT_NEAR(result.UtilLocalCombined(1), 150.0 / 2479.5, 1e-4);
    int place = -1;
    result.MaxUtilLocalCombined(&place);
    EXPECT_EQ(place, 0);
}

} // namespace
