// Members that cannot be checked: why, on the record and in the text.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "CheckedMember.h"

using namespace EC3Test;
using Design::CheckStatus;
using Design::Subject;

namespace {

constexpr double NO_NUMBER = std::numeric_limits<double>::quiet_NaN();

CSection NetSection(const wchar_t* name, double netGross)
{
    CSection section{CString(name)};
    CSecComp component = section.Component(0);
    component.SetNetGross(netGross);
    section.SetComponent(0, component);
    return section;
}

std::wstring ReasonOf(const Checked& c, Subject subject)
{
    EXPECT_EQ(c.findings.refusal.subject, subject);
    EXPECT_FALSE(c.passed);
    EXPECT_EQ(c.findings.status, Design::Status::NotChecked);
    // Each rule of the ledger says it.
    EXPECT_FALSE(c.findings.rules.empty());
    for (const Design::RuleFinding& f : c.findings.rules) {
        EXPECT_EQ(f.status, CheckStatus::NotEvaluated);
        EXPECT_EQ(std::wstring(f.reason), c.findings.refusal.reason);
    }
    return c.findings.refusal.reason;
}

Checked CheckedAfter(const std::function<void(CSteelMemberEC3&)>& prepare, const wchar_t* grade = L"S275")
{
    return {Column(4.0, 100e3, 5e3, 0.0), L"UB 457x191x67", grade, true, {}, -1, UkAnnex(), prepare};
}

} // namespace

TEST(Refusal, OfTheSectionAndTheGrade)
{
    CSteelMemberEC3 member;
    EXPECT_FALSE(member.SetKeltrixSec(CSection(L"UB 1x2x3")));
    EXPECT_FALSE(member.SetGrade(CSteelGrade(L"S999", 0.0, 0.0, 0.0, 1.0)));
    EXPECT_FALSE(member.SetGrade(CSteelGrade(L"User_defined", 500e6, 0.0, 0.0, 1.0))) << "EN 1993-1-12";
    // Without a result record the findings are there all the same.
    EXPECT_FALSE(member.Check());
    EXPECT_EQ(member.Findings().refusal.subject, Subject::Section);
    EXPECT_TRUE(member.SetKeltrixSec(CSection(L"UB 457x191x67")));
    EXPECT_FALSE(member.Check());
    EXPECT_EQ(member.Findings().refusal.subject, Subject::Grade);
    EXPECT_EQ(std::wstring(member.Findings().refusal.reason), L"the member has no steel grade");
    // Its record has the flags, and the text where one is wanted.
    for (const bool text : {false, true}) {
        Steel::CMemberResult result;
        result.EnableText(text);
        member.SetResult(&result);
        EXPECT_FALSE(member.Check());
        EXPECT_TRUE(result.GetFlags() & Steel::CMemberResult::NOT_CHECKED);
        EXPECT_EQ(result.GetVerbose().Find(L"Not checked:") >= 0, text);
        member.SetResult(nullptr);
    }
    // A web of 200 mm is beyond the 150 mm of EN 10025-2: the section's, not the grade's.
    const Checked thick(Column(4.0, 100e3, 5e3, 0.0), L"I 1000x600x200x200", L"S275");
    EXPECT_EQ(ReasonOf(thick, Subject::Section),
              L"the thickest element lies beyond the thicknesses for which the grade has a strength (3.2.1)");
    EXPECT_GE(thick.member.GetSectionText(CDesFormat()).Find(L"the thickest element lies beyond"), 0);
}

// Its geometry is known, the rules are those of another part of the standard.
TEST(Refusal, OfAColdFormedOpenSection)
{
    const Checked c(Column(4.0, 100e3, 5e3, 0.0), L"C 300x100x6x10", L"S275", true, {}, SEC_FORMED);
    EXPECT_NE(ReasonOf(c, Subject::Section).find(L"EN 1993-1-3"), std::wstring::npos);
    EXPECT_EQ(c.member.SectionClass(), 0);
}

TEST(Refusal, OfAMemberWithoutASectionIsPrinted)
{
    EXPECT_EQ(CSteelMemberEC3().GetSectionText(CDesFormat()), L"no section\n");
}

TEST(Refusal, OfNumbersThatAreNone)
{
    EXPECT_EQ(ReasonOf(CheckedAfter([](CSteelMemberEC3& m) {
                           DesignTest::Member broken = Column(4.0, NO_NUMBER, 0.0, 0.0);
                           m.SetSubSpanVec(broken.subSpans);
                       }),
                       Subject::Member),
              L"a force or a moment is not a finite number");
    EXPECT_EQ(ReasonOf(CheckedAfter([](CSteelMemberEC3& m) { m.SetEquivalentUniformMomentFactor(0.0); }),
                       Subject::MomentFactor),
              L"the equivalent uniform moment factor that is given is not a finite number above 0");
    EXPECT_EQ(ReasonOf(CheckedAfter([](CSteelMemberEC3& m) { m.SetSubSpanVec({}); }), Subject::Member),
              L"member points and sub-spans do not fit together");
    for (const double ratio : {0.0, -0.5, 1.01, NO_NUMBER})
        EXPECT_EQ(ReasonOf(CheckedAfter([&](CSteelMemberEC3& m) {
                               EXPECT_TRUE(m.SetKeltrixSec(NetSection(L"UB 457x191x67", ratio)));
                           }),
                           Subject::NetToGross),
                  L"the net to gross area ratio does not lie above 0 and up to 1")
            << ratio;
}

// Each part alone has the rules of its stage, and what is common to both.
TEST(Member, PartsOfACheckHaveTheirOwnRules)
{
    Checked c(Column(4.0, 500e3, 20e3, 5e3), L"UC 254x254x89", L"S275");
    const auto has = [&](const wchar_t* clause) {
        const auto rules = c.member.Findings().rules;
        return std::any_of(rules.begin(), rules.end(),
                           [&](const Design::RuleFinding& f) { return f.clause == std::wstring(clause); });
    };
    EXPECT_TRUE(c.member.CheckLocal(true));
    EXPECT_TRUE(has(L"6.2.9"));
    EXPECT_FALSE(has(L"6.3.3 (6.61)"));
    EXPECT_TRUE(has(L"3.2.1"));
    EXPECT_TRUE(c.member.CheckBuckling());
    EXPECT_FALSE(has(L"6.2.9"));
    EXPECT_TRUE(has(L"6.3.3 (6.61)"));
    EXPECT_TRUE(has(L"3.2.1"));
}

// Steels that the standard does not list: fu/fy at least 1.10 (3.2.2), fu as fy where none is given, E as given.
TEST(Member, UserDefinedGradesAreTold)
{
    const auto checked = [](double fu, double E) {
        return CheckedAfter(
            [=](CSteelMemberEC3& m) { EXPECT_TRUE(m.SetGrade(CSteelGrade(L"User_defined", 300e6, fu, E, 1.0))); });
    };
    const auto assumed = [](const Checked& c, const wchar_t* name) {
        return std::any_of(c.findings.assumptions.begin(), c.findings.assumptions.end(),
                           [&](const Design::Assumption& a) { return a.name == std::wstring(name); });
    };
    const Checked without = checked(0.0, 0.0);
    EXPECT_TRUE(assumed(without, L"ultimate strength"));
    EXPECT_TRUE(assumed(without, L"modulus of elasticity"));
    EXPECT_EQ(without.Rule(L"3.2.2").status, CheckStatus::OutOfScope);
    EXPECT_TRUE(without.passed);
    const Checked soft = checked(329e6, 200e9);
    EXPECT_FALSE(assumed(soft, L"ultimate strength"));
    EXPECT_FALSE(assumed(soft, L"modulus of elasticity"));
    EXPECT_EQ(soft.Rule(L"3.2.2").status, CheckStatus::NotEvaluated) << "329/300 is below 1.10";
    EXPECT_FALSE(soft.passed);
    EXPECT_EQ(checked(330e6, 0.0).Rule(L"3.2.2").status, CheckStatus::Passed);
}

// Table B.3 has no factor below 0.4. Given, it stands in place of all three: UC 254x254x89 in S275 of 4.5 m under 1200 kN, λy 0.4534, ny 0.442:
// kyy = C(1 + 0.2534 * 0.442) = 1.112 C.
TEST(Member, AGivenMomentFactorStandsInPlaceOfTableB3)
{
    const auto checked = [](double factor, const DesignOptions& options = {}) {
        return Checked(Column(4.5, 1200e3, 45e3, 12e3), L"UC 254x254x89", L"S275", false, options, -1, UkAnnex(),
                       [=](CSteelMemberEC3& m) { m.SetEquivalentUniformMomentFactor(factor); });
    };
    const auto isWarned = [](const Checked& c) {
        return std::any_of(c.findings.warnings.begin(), c.findings.warnings.end(),
                           [](const Design::Warning& w) { return w.kind == Design::WarningKind::LowMomentFactor; });
    };
    EXPECT_NEAR(checked(0.8).Value(L"kyy"), 0.8 * 1.112, 0.001);
    EXPECT_FALSE(isWarned(checked(0.8)));
    EXPECT_NEAR(checked(0.3).Value(L"kyy"), 0.4 * 1.112, 0.001);
    EXPECT_TRUE(isWarned(checked(0.3)));
    // Annex A has factors of its own, and does not take it.
    DesignOptions annexA;
    annexA.interaction = InteractionMethod::AnnexA;
    const Checked a = checked(0.8, annexA);
    EXPECT_EQ(a.Rule(L"6.3.3 (6.61)").status, CheckStatus::NotEvaluated);
    EXPECT_EQ(std::wstring(a.Rule(L"6.3.3 (6.61)").reason),
              L"Annex A has factors of its own: a given equivalent uniform moment factor is for Annex B");
    // Of an angle, whose moments have one course only where one of them acts.
    const auto angle = [](double Mz, std::optional<double> factor) {
        return Checked(Column(2.0, 60e3, 1e3, Mz), L"L 100x100x10", L"S275", true, {}, -1, UkAnnex(),
                       [=](CSteelMemberEC3& m) {
                           if (factor) m.SetEquivalentUniformMomentFactor(*factor);
                       });
    };
    const auto Cmy = [](const Checked& c) {
        for (const Design::Step& step : c.Rule(L"6.3.3 (6.61)").steps)
            if (step.symbol == std::wstring(L"Cmy")) return step.value;
        return 0.0;
    };
    EXPECT_NEAR(Cmy(angle(0.0, {})), 0.6, 1e-9);
    EXPECT_NEAR(Cmy(angle(0.5e3, {})), 1.0, 1e-9);
    EXPECT_NEAR(Cmy(angle(0.5e3, 0.7)), 0.7, 1e-9);
}
