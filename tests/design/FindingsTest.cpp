#include <gtest/gtest.h>

#include <string>

#include "keltrix/design/Findings.h"

using namespace Keltrix;

TEST(Findings, StatusesHaveTheWordsOfTheReports)
{
    EXPECT_EQ(std::wstring(Design::StatusName(Design::Status::Passed)), L"pass");
    EXPECT_EQ(std::wstring(Design::StatusName(Design::Status::Failed)), L"fail");
    EXPECT_EQ(std::wstring(Design::StatusName(Design::Status::NotChecked)), L"not checked");
}
