#include "keltrix/stability/Refusal.h"

#include <cmath>
#include <string>

#include <gtest/gtest.h>

using namespace Keltrix;
using Stability::DesignRefusal;

namespace {

// A unit whose critical load can be used.
Stability::Unit Sound()
{
    Stability::Unit unit;
    unit.outcome = Stability::Outcome::Buckles;
    unit.balanced = true;
    unit.largestMoment = 100e3;
    unit.positive.emplace();
    unit.positive->error = 0.01;
    return unit;
}

std::wstring Reason(const Stability::Unit& unit)
{
    const wchar_t* const reason = DesignRefusal(unit);
    return reason ? reason : L"";
}

} // namespace

TEST(DesignRefusal, TakesAnErrorOfOnePerCentAndNoMore)
{
    Stability::Unit unit = Sound();
    EXPECT_EQ(Reason(unit), L"");
    unit.positive->error = 0.0101;
    EXPECT_EQ(Reason(unit), L"the estimated error of the elastic analysis is above 1 %");
    unit.positive->error = std::nan("");
    EXPECT_EQ(Reason(unit), L"the estimated error of the elastic analysis is above 1 %");
    unit.positive.reset();
    EXPECT_EQ(Reason(unit), L"");
}

TEST(DesignRefusal, SaysWhatOfTheInputIsNotKnown)
{
    Stability::Unit unit = Sound();
    unit.largestJump = 100.0; // a thousandth of the largest moment
    EXPECT_EQ(Reason(unit), L"");
    unit.largestJump = 101.0;
    EXPECT_EQ(Reason(unit), L"the moment jumps inside it at a section that is free to twist, and how the couple is "
                            L"applied is not part of the input");
    unit = Sound();
    unit.balanced = false;
    EXPECT_EQ(Reason(unit), L"the forces of a sub-span do not balance");
    unit = Sound();
    unit.restraintsLeftOut = true;
    EXPECT_EQ(Reason(unit), L"its restraints follow each other more closely than the analysis can take");
}

// A mechanism is one whatever the moments are: it fails, which no reason takes away.
TEST(DesignRefusal, LeavesWhatIsNotHeldAsItIs)
{
    Stability::Unit unit = Sound();
    unit.outcome = Stability::Outcome::NotHeld;
    unit.balanced = false;
    EXPECT_EQ(Reason(unit), L"");
}
