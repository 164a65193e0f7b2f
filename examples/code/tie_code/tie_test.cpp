// The sample design code under the laws of the test kit. docs/writing-a-design-code.md goes through it.

#include <gtest/gtest.h>

#include "keltrix/testkit/Laws.h"
#include "keltrix/testkit/TestMember.h"

using namespace Keltrix;

extern "C" const Design::CodeModule* keltrix_design_code();

namespace {

// Hangers under tension, and every other one with something that the code does not evaluate.
TestKit::TestMember Hanger(std::mt19937& random)
{
    TestKit::TestMember member = TestKit::RandomMember(random);
    const bool isPlain = std::uniform_int_distribution<int>(0, 1)(random) == 0;
    for (Steel::CSubSpan& s : member.subSpans) {
        if (!isPlain) break;
        s.SetForcesAll({std::abs(s.GetForcesLeft().x), 0.0, 0.0}, {std::abs(s.GetForcesRight().x), 0.0, 0.0});
        s.SetMomentsAll({0.0, 0.0, 0.0}, {0.0, 0.0, 0.0});
    }
    return member;
}

TestKit::LawManner Manner(std::mt19937& random)
{
    const auto any = [&](int n) { return static_cast<double>(std::uniform_int_distribution<int>(0, n)(random)); };
    return {{static_cast<std::size_t>(any(1)), {any(2), any(1) * 0.02}}, {}};
}

TEST(TieCode, KeepsTheLawsOfADesignCode)
{
    TestKit::LawSubject subject;
    subject.code = keltrix_design_code()->code;
    subject.section = L"CHS 88.9x5";
    subject.grade = CSteelGrade(L"S235", 0.0, 0.0, 0.0, 1.0);
    TestKit::LawOptions options;
    options.make = Hanger;
    options.manner = Manner;
    for (const TestKit::Law law : TestKit::UsualLaws()) {
        const TestKit::LawReport report = TestKit::Try(law, subject, options);
        EXPECT_TRUE(report.Holds()) << report.breach;
    }
}

} // namespace
