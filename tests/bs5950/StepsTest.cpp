// The steps of a rule's calculation: they lead to the figures that its finding has, with the numbers of a hand calculation.

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "Members.h"

namespace {

using namespace BS5950Test;
using Design::RuleFinding;
using Design::Step;

const RuleFinding& FindingOf(const Design::MemberFindings& findings, Rule rule)
{
    const RuleFinding* f = findings.Worst(static_cast<int>(rule));
    if (!f) throw std::runtime_error("no finding of a rule");
    return *f;
}

const Step* StepNamed(const RuleFinding& f, const std::wstring& symbol)
{
    for (const Step& step : f.steps)
        if (symbol == step.symbol) return &step;
    return nullptr;
}

std::string TextOf(const RuleFinding& f, const std::wstring& symbol)
{
    const Step* step = StepNamed(f, symbol);
    return step ? *Design::StepText(*step, CDesFormat()).ToUtf8() : "no such step";
}

Case Beam()
{
    Case given;
    given.along = L"Top flange lateral";
    Uniform(given, 6.0, 30e3);
    return given;
}

// UB 457x191x67 S275 under 30 kN/m over 6 m: M = 30 · 6²/8 = 135 kNm, Fv = 90 kN, py = 275 N/mm²; Av = 453.4 · 8.5 = 3853.9 mm², so that
// Pv = 0.6 · 275 · 3853.9 = 635.89 kN and 90/635.9 = 0.1415.
TEST(Steps, OfABeamAreThoseOfAHandCalculation)
{
    Checked c(Beam());
    c.Check();
    const Design::MemberFindings findings = c.member.Findings();
    const RuleFinding& shear = FindingOf(findings, Rule::ShearMajor);
    ASSERT_EQ(shear.steps.size(), 2u);
    EXPECT_EQ(std::wstring(shear.steps[0].symbol), L"Pvy");
    EXPECT_EQ(shear.steps[0].quantity, Quantity::Force);
    EXPECT_NEAR(shear.steps[0].value, 635.9e3, 100.0);
    EXPECT_EQ(std::wstring(shear.steps[0].clause), L"4.2.3");
    EXPECT_EQ(TextOf(shear, L"Pvy"), "Pvy = 0.6 py Av = 0.6 * 275 N/mm² * 38.54 cm² = 635.89 kN");
    EXPECT_NEAR(shear.steps[1].value, 0.1415, 1e-4);
    const RuleFinding& moment = FindingOf(findings, Rule::MomentMajor);
    ASSERT_TRUE(StepNamed(moment, L"Mx/Mcx"));
    EXPECT_NEAR(StepNamed(moment, L"Mx/Mcx")->value, 135e3 / (275e6 * 1471e-6), 1e-3);
    const RuleFinding& cls = FindingOf(findings, Rule::Classification);
    ASSERT_TRUE(StepNamed(cls, L"ε"));
    EXPECT_EQ(StepNamed(cls, L"ε")->value, 1.0); // (275/275)^0.5
    ASSERT_TRUE(StepNamed(cls, L"d/t"));
    EXPECT_NEAR(StepNamed(cls, L"d/t")->value, 407.6 / 8.5, 1e-3);
}

TEST(Steps, AreGivenWhereATextIsAskedFor)
{
    Checked c(Beam(), false);
    c.Check();
    for (const RuleFinding& f : c.member.Findings().rules)
        EXPECT_TRUE(f.steps.empty()) << f.rule;
}

// Every finding with a resistance has the step that gives it, and every evaluated one a step that gives its utilisation, to the bit.
void ExpectStepsToLeadTo(const RuleFinding& f, const std::string& how)
{
    const auto rule = static_cast<Rule>(f.rule);
    const bool calculated = f.WasEvaluated() && f.utilisation > 0.0 && rule != Rule::WebThickness;
    if (!calculated) return;
    const std::wstring symbol = f.symbol;
    bool resistance = symbol.empty();
    bool utilisation = false;
    for (const Step& step : f.steps) {
        resistance = resistance || (symbol == step.symbol && step.value == f.resistance);
        utilisation = utilisation || CMemberResult::InfinitiseNANs(step.value) == f.utilisation;
    }
    EXPECT_TRUE(resistance) << how << ", rule " << f.rule << ", " << *CString(f.symbol).ToUtf8();
    EXPECT_TRUE(utilisation) << how << ", rule " << f.rule;
}

TEST(Steps, LeadToTheResistanceAndTheUtilisationOfTheirFinding)
{
    std::mt19937 random(5950);
    const auto among = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    const wchar_t* const sections[] = {L"UB 457x191x67", L"UC 203x203x46", L"RHS 200x100x5",  L"CHS 168.3x5",
                                       L"PFC 200x90x30", L"L 100x100x10",  L"UB 1016x305x222"};
    int evaluated = 0;
    for (int i = 0; i < 300; ++i) {
        Case given;
        given.section = sections[static_cast<std::size_t>(i) % std::size(sections)];
        given.points = {{0.0, L"Pinned"}, {among(1.0, 4.0), L"Free"}, {6.0, L"Pinned"}};
        given.option = i % 2 ? CSteelMemberBS5950::MORE_EXACT : CSteelMemberBS5950::SIMPLIFIED;
        EndMoments(given, 6.0, among(-60.0, 60.0) * 1e3, among(-60.0, 60.0) * 1e3,
                   i % 3 == 0 ? 0.0 : among(-200.0, 200.0) * 1e3, i % 4 ? 0.0 : among(-5.0, 5.0) * 1e3, 0.0);
        Checked c(given);
        DesignOptions options;
        if (i % 5 == 0) options.stiffBearing = 0.05;
        if (i % 7 == 0) options.lateral = LateralMethod::Elastic;
        c.member.SetOptions(options);
        c.Check();
        for (const RuleFinding& f : c.member.Findings().rules) {
            ExpectStepsToLeadTo(f, "seed 5950, member " + std::to_string(i));
            evaluated += f.WasEvaluated() && f.utilisation > 0.0;
        }
    }
    EXPECT_GT(evaluated, 1500);
}

} // namespace
