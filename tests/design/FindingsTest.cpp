#include <gtest/gtest.h>

#include <set>
#include <string>

#include "keltrix/design/Findings.h"
#include "keltrix/design/LateralLength.h"
#include "keltrix/design/SectionProperties.h"
#include "keltrix/design/Stretches.h"

using namespace Keltrix;

TEST(Findings, StatusesHaveTheWordsOfTheReports)
{
    EXPECT_EQ(std::wstring(Design::StatusName(Design::Status::Passed)), L"pass");
    EXPECT_EQ(std::wstring(Design::StatusName(Design::Status::Failed)), L"fail");
    EXPECT_EQ(std::wstring(Design::StatusName(Design::Status::NotChecked)), L"not checked");
}

TEST(Findings, StatusesOfRulesHaveTheirWords)
{
    using Design::CheckStatus;
    EXPECT_EQ(std::wstring(Design::StatusName(CheckStatus::Passed)), L"passed");
    EXPECT_EQ(std::wstring(Design::StatusName(CheckStatus::Failed)), L"failed");
    EXPECT_EQ(std::wstring(Design::StatusName(CheckStatus::NotApplicable)), L"not applicable");
    EXPECT_EQ(std::wstring(Design::StatusName(CheckStatus::NotEvaluated)), L"not evaluated");
    EXPECT_EQ(std::wstring(Design::StatusName(CheckStatus::OutOfScope)), L"outside the input");
    EXPECT_EQ(std::wstring(Design::StatusName(CheckStatus::Information)), L"information");
}

// A value of another version of a code module: never a pass, and text without a unit that it may not have.
TEST(Findings, AnUnknownValueIsNoPass)
{
    EXPECT_EQ(std::wstring(Design::StatusName(static_cast<Design::Status>(99))), L"not checked");
    EXPECT_EQ(std::wstring(Design::StatusName(static_cast<Design::CheckStatus>(99))), L"not evaluated");
    EXPECT_EQ(std::wstring(Design::TopicName(static_cast<Design::Topic>(99))), L"other");
    EXPECT_EQ(Design::QuantityText(static_cast<Design::Quantity>(99), 0.85, CDesFormat()), CString(L"0.85"));
    EXPECT_EQ(std::wstring(Design::FabricationName(static_cast<Design::Fabrication>(99))), L"welded");
    EXPECT_EQ(std::wstring(Design::FabricationText(static_cast<Design::Fabrication>(99))), L"welded");
    EXPECT_EQ(std::wstring(Design::EndKindText(static_cast<Design::EndKind>(99))), L"end of the member, not held");
    EXPECT_EQ(std::wstring(Design::TextOf(static_cast<Design::LateralTable>(99))), L"the longer of Tables 13 and 14");
}

TEST(Findings, TheWorstOfARuleIsNoFigureForInformation)
{
    Design::MemberFindings findings;
    for (const auto& [status, utilisation] : {std::pair{Design::CheckStatus::Passed, 0.5},
                                              {Design::CheckStatus::Information, 0.9},
                                              {Design::CheckStatus::Passed, 0.7}}) {
        Design::RuleFinding finding;
        finding.rule = 4;
        finding.status = status;
        finding.utilisation = utilisation;
        findings.rules.push_back(finding);
    }
    ASSERT_NE(findings.Worst(4), nullptr);
    EXPECT_EQ(findings.Worst(4)->utilisation, 0.7);
    EXPECT_EQ(findings.Worst(5), nullptr);
}

// Two codes stand side by side by these: no two topics share a name, and each has one.
TEST(Findings, EveryTopicHasANameOfItsOwn)
{
    std::set<std::wstring> names;
    for (int i = 0; i < static_cast<int>(Design::Topic::COUNT); ++i)
        names.insert(Design::TopicName(static_cast<Design::Topic>(i)));
    EXPECT_EQ(names.size(), static_cast<std::size_t>(Design::Topic::COUNT));
    EXPECT_EQ(names.count(L""), 0U);
    EXPECT_EQ(std::wstring(Design::TopicName(Design::Topic::Other)), L"other");
    EXPECT_EQ(std::wstring(Design::TopicName(Design::Topic::BendingMajor)), L"bending, major axis");
    EXPECT_EQ(std::wstring(Design::TopicName(Design::Topic::Deflection)), L"deflection");
}

TEST(Findings, AQuantityHasItsUnit)
{
    const CDesFormat fmt;
    EXPECT_EQ(Design::QuantityText(Design::Quantity::Force, 528e3, fmt), CString(L"528 kN"));
    EXPECT_EQ(Design::QuantityText(Design::Quantity::Moment, 404e3, fmt), CString(L"404 kNm"));
    EXPECT_EQ(Design::QuantityText(Design::Quantity::Stress, 275e6, fmt), CString(L"275 N/mm²"));
    EXPECT_EQ(Design::QuantityText(Design::Quantity::Modulus, 1471e-6, fmt), CString(L"1471 cm³"));
    EXPECT_EQ(Design::QuantityText(Design::Quantity::None, 0.85, fmt), CString(L"0.85"));
}

TEST(Findings, AnAssumedLoadIsSaidWithItsPlace)
{
    const Design::Assumption load{L"uniform load", L"read as a uniform load", 20e3, 0.0, 6.0, true};
    EXPECT_EQ(Design::AssumptionText(load, CDesFormat()), CString(L"read as a uniform load: 20 kN/m, 0 m to 6 m"));
    EXPECT_EQ(Design::AssumptionText({L"Ke", L"taken as 1.0", 1.0}, CDesFormat()), CString(L"taken as 1.0"));
}

TEST(Findings, TheGoverningAndTheWorstOfARule)
{
    Design::MemberFindings findings;
    EXPECT_EQ(findings.Governing(), nullptr);
    EXPECT_EQ(findings.Worst(0), nullptr);
    EXPECT_FALSE(findings.HasFailed());
    for (const double utilisation : {0.4, 0.9, 0.9, 0.1}) {
        Design::RuleFinding f;
        f.rule = utilisation == 0.1 ? 1 : 0;
        f.utilisation = utilisation;
        f.status = Design::CheckStatus::Passed;
        findings.rules.push_back(f);
    }
    EXPECT_EQ(findings.Worst(0), &findings.rules[1]) << "the first of equal ones";
    EXPECT_EQ(findings.Worst(1), &findings.rules[3]);
    EXPECT_EQ(findings.Worst(2), nullptr);
    findings.rules[2].governing = true;
    EXPECT_EQ(findings.Governing(), &findings.rules[2]);
    findings.rules[3].status = Design::CheckStatus::Failed;
    EXPECT_TRUE(findings.HasFailed());
}
