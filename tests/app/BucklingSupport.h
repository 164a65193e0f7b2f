#pragma once

// Members for the tests of what is told of elastic critical loads.

#include <memory>

#include <gtest/gtest.h>

#include "app/AppSupport.h"
#include "check/BucklingReport.h"
#include "memberfile/CodelessMember.h"
#include "stability/Beams.h"

namespace Keltrix::App::Trial {

inline std::unique_ptr<CodelessMember> MemberOf(const DesignTest::Member& m, const wchar_t* section)
{
    auto member = std::make_unique<CodelessMember>();
    member->SetKeltrixSec(CSection(section));
    EXPECT_TRUE(member->SetMemberPointVec(m.points));
    EXPECT_TRUE(member->SetSubSpanVec(m.subSpans));
    return member;
}

inline const Moduli STEEL{205e9, 205e9 / 2.6, "steel"};

inline BucklingReport ReportOf(const DesignTest::Member& m, const wchar_t* section, bool continuity = false)
{
    return MakeBucklingReport(*MemberOf(m, section), STEEL, continuity);
}

} // namespace Keltrix::App::Trial
