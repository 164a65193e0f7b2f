// The laws of the test kit on the design codes of this repository, with random members of every shape that they take.
//
// KELTRIX_TEST_SCALE multiplies the number of members.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <ostream>
#include <string_view>

#include "keltrix/bs5950/DesignCode.h"
#include "keltrix/design/SectionProperties.h"
#include "keltrix/testkit/Laws.h"
#include "support/RandomCases.h"
#ifdef KELTRIX_TESTKIT_WITH_EC3
#include "keltrix/ec3/DesignCode.h"
#endif

using Keltrix::TestSupport::RandomCases;

namespace {

using namespace Keltrix;
using TestKit::Law;
using TestKit::LawManner;
using TestKit::LawOptions;
using TestKit::LawSubject;

struct SectionOf {
    const wchar_t* section;
    const wchar_t* grade;
    int type;
};

std::ostream& operator<<(std::ostream& out, const SectionOf& s) { return out << *CString(s.section).ToUtf8(); }

const SectionOf SECTIONS[] = {
    {L"UB 457x191x67", L"S275", SEC_ROLLED},          {L"UC 254x254x89", L"S355", SEC_ROLLED},
    {L"I 1200x400x10x25", L"S355", SEC_WELDED},       {L"GI 600x300x200x12x20x15", L"S275", SEC_WELDED},
    {L"GI 600x200x300x7x15x20", L"S355", SEC_WELDED}, {L"PFC 300x90x41", L"S275", SEC_ROLLED},
    {L"T 254x343x63", L"S275", SEC_ROLLED},           {L"T 229x191x34", L"S355", SEC_ROLLED},
    {L"L 150x150x15", L"S275", SEC_ROLLED},           {L"L 200x100x15", L"S355", SEC_ROLLED},
    {L"L 150x150x10", L"S355", SEC_ROLLED},           {L"RHS 200x100x6.3", L"S355", SEC_ROLLED},
    {L"BOX 400x300x8x8", L"S355", SEC_WELDED},        {L"CHS 168.3x5", L"S355", SEC_ROLLED},
};

LawSubject SubjectOf(const SectionOf& s, const Design::DesignCode& code)
{
    constexpr double strength = 300e6;
    LawSubject subject;
    subject.code = &code;
    subject.section = s.section;
    subject.type = s.type;
    subject.grade = CSteelGrade(s.grade, 0.0, 0.0, 0.0, 1.0);
    CSection section{CString(s.section)};
    CSecComp component = section.Component(0);
    component.SetType(s.type);
    section.SetComponent(0, component);
    subject.momentScale = strength * Design::MakeProperties(section, nullptr).value().Zx;
    return subject;
}

// Each shape has random numbers of its own.
LawOptions OptionsOf(const SectionOf& s, int members)
{
    LawOptions options;
    options.seed = 20260311;
    for (const wchar_t c : std::wstring_view(s.section))
        options.seed = options.seed * 31 + static_cast<unsigned>(c);
    options.members = RandomCases(members);
    return options;
}

// The options of BS 5950-1 in the order of its description, and given lengths.
LawManner MannerOfBS5950(std::mt19937& random)
{
    const auto one = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(random) == 0; };
    LawManner manner;
    const double exact = one(2) ? 1.0 : 0.0;
    const bool lengthsGiven = one(10);
    const double connection = one(3) ? 1.0 : one(2) ? 2.0 : 0.0;
    manner.settings.options = {exact, connection, one(3) ? 1.0 : 0.0, one(5) ? 1.0 : 0.0};
    manner.prepare = [lengthsGiven](Steel::CSteelMemberGen& member) {
        member.SetLengthOverride(lengthsGiven);
        member.SetLyy(-1.0);
        member.SetLzz(-0.9);
        member.SetLlt(-0.8);
    };
    return manner;
}

void ExpectLaw(Law law, const LawSubject& subject, const LawOptions& options)
{
    const TestKit::LawReport report = TestKit::Try(law, subject, options);
    EXPECT_TRUE(report.Holds()) << report.breach;
    EXPECT_EQ(report.tried, options.members);
}

class BS5950Laws : public ::testing::TestWithParam<SectionOf> {};

TEST_P(BS5950Laws, MembersAreTheSameDividedAndTurnedEndForEnd)
{
    LawOptions options = OptionsOf(GetParam(), 150);
    options.manner = MannerOfBS5950;
    ExpectLaw(Law::Division, SubjectOf(GetParam(), BS5950::Code()), options);
    ExpectLaw(Law::Mirroring, SubjectOf(GetParam(), BS5950::Code()), options);
}

TEST_P(BS5950Laws, MembersLoseNoResistanceByARestraint)
{
    ExpectLaw(Law::RestraintAdded, SubjectOf(GetParam(), BS5950::Code()), OptionsOf(GetParam(), 150));
}

TEST_P(BS5950Laws, FindingsKeepTheUsualLaws)
{
    LawOptions options = OptionsOf(GetParam(), 60);
    options.manner = MannerOfBS5950;
    for (const Law law : TestKit::UsualLaws())
        if (law != Law::Division && law != Law::Mirroring)
            ExpectLaw(law, SubjectOf(GetParam(), BS5950::Code()), options);
}

std::string NameOfShape(const ::testing::TestParamInfo<SectionOf>& shape)
{
    std::string name = *CString(shape.param.section).ToUtf8();
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(EveryShape, BS5950Laws, ::testing::ValuesIn(SECTIONS), NameOfShape);

#ifdef KELTRIX_TESTKIT_WITH_EC3
class EC3Laws : public ::testing::TestWithParam<SectionOf> {};

// Elastic critical loads are eigenvalues of a numerical solution.
TEST_P(EC3Laws, FindingsKeepTheUsualLaws)
{
    LawOptions options = OptionsOf(GetParam(), 26);
    options.tolerance = 1e-3;
    options.manner = [](std::mt19937& random) {
        const auto any = [&](int n) { return std::uniform_int_distribution<int>(0, n)(random); };
        return LawManner{{static_cast<std::size_t>(any(1)), {static_cast<double>(any(2))}}, {}};
    };
    for (const Law law : TestKit::UsualLaws())
        ExpectLaw(law, SubjectOf(GetParam(), EC3::Code()), options);
}

INSTANTIATE_TEST_SUITE_P(EveryShape, EC3Laws, ::testing::ValuesIn(SECTIONS), NameOfShape);
#endif

} // namespace
