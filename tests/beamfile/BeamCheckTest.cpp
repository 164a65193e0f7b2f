// The check of a beam against checks of its members one by one, and against hand calculation.

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "beamfile/BeamSupport.h"
#include "check/FindingsJson.h"
#include "keltrix/host/Host.h"
#include "report/HtmlReport.h"
#include "report/MemberReport.h"
#include "support/RandomCases.h"
#include "text/Json.h"

namespace Keltrix::BeamTest {
namespace {

using Design::CheckStatus;
using Design::RuleFinding;
using testing::HasSubstr;
using testing::Not;

CheckedMember CheckAlone(const Beam& beam, std::size_t i)
{
    // As another program would read what was written: from the bytes.
    MemberPiece piece;
    piece.bytes = beam.made.members[i].text;
    const MemberFile file("member.csv", piece);
    EXPECT_EQ(file.Check().Errors(), 0u) << beam.made.members[i].text;
    return CheckMember(file, 0, DefaultCode(), false);
}

// A beam of up to three spans, an overhang, loads of all shapes, restraints.
std::string RandomBeam(unsigned seed)
{
    std::mt19937 random(seed);
    const auto number = [&](double least, double most) {
        return std::uniform_real_distribution<double>(least, most)(random);
    };
    const auto figure = [&](double least, double most) { return Shortest(number(least, most)); };
    const int spans = 1 + static_cast<int>(random() % 3);
    double length = 0.0;
    std::string list;
    for (int i = 0; i < spans; ++i) {
        const double span = std::round(number(6.0, 18.0)) / 2.0;
        length += span;
        list += (i ? ", " : "") + Shortest(span);
    }
    std::string text = "title = \"Random\"\nsection = \"UB 457x191x67\"\ngrade = \"S275\"\nspans = [" + list + "]\n";
    const auto place = [&] { return Shortest(std::round(number(0.0, 10.0 * length)) / 10.0); };
    const std::string first = place();
    std::string second = place();
    while (second == first) // a place twice is an error
        second = place();
    text += "[[restraint]]\nat = [" + first + ", " + second + "]\nholds = \"Top flange lateral\"\n";
    text += "[[load]]\nkind = \"permanent\"\nudl = " + figure(1, 20) + "\n";
    text += "[[load]]\nkind = \"imposed\"\ntrapezoid = [" + figure(0, 20) + ", " + figure(0, 20) + "]\n";
    text += "[[load]]\nkind = \"imposed\"\npoint = " + figure(1, 80) + "\nat = " + place() + "\nheight = 0.2\n";
    if (random() % 2) text += "[[load]]\nkind = \"wind\"\nmajor = true\nudl = " + figure(-8, -1) + "\n";
    if (random() % 2) text += "[[load]]\nkind = \"imposed\"\naxial = " + figure(-90, 90) + "\nat = " + place() + "\n";
    return text;
}

// The stretch of a rule; of what is listed at its worst place alone, none.
std::pair<double, double> PlaceOf(const RuleFinding& rule)
{
    if (std::isnan(rule.start) || rule.start == rule.end) return {-1.0, -1.0};
    return {rule.start, rule.end};
}

TEST(BeamCheck, IsTheEnvelopeOfItsMembersReadFromTheirFiles)
{
    for (unsigned seed = 1; seed <= static_cast<unsigned>(TestSupport::RandomCases(60)); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const Beam beam = Read(RandomBeam(seed));
        ASSERT_FALSE(beam.members.empty()) << Messages(beam);
        const CheckedMember checked = CheckBeam(beam, DefaultCode(), false);
        double largest = 0.0;
        bool passed = true;
        bool failed = false;
        std::map<std::tuple<int, std::wstring, std::pair<double, double>>, double>
            worst; // of rules and clauses at places
        for (std::size_t i = 0; i < beam.members.size(); ++i) {
            const CheckedMember alone = CheckAlone(beam, i);
            largest = std::max(largest, alone.result->UtilOverAll());
            passed = passed && alone.passed;
            failed = failed || alone.failed;
            for (const RuleFinding& rule : alone.findings.rules)
                if (rule.WasEvaluated()) {
                    double& known = worst[{rule.rule, rule.clause, PlaceOf(rule)}];
                    known = std::max(known, rule.utilisation);
                }
        }
        EXPECT_EQ(checked.result->UtilOverAll(), largest); // exactly: the same numbers were read
        std::size_t found = 0;
        for (const RuleFinding& rule : checked.findings.rules) {
            if (!rule.WasEvaluated() || std::wstring_view(rule.symbol) == L"limit") continue;
            const auto at = worst.find({rule.rule, rule.clause, PlaceOf(rule)});
            ASSERT_NE(at, worst.end());
            EXPECT_EQ(rule.utilisation, at->second) << DescribeEntry(rule);
            ++found;
        }
        EXPECT_EQ(found, worst.size());
        const bool deflects = std::any_of(beam.made.deflections.begin(), beam.made.deflections.end(),
                                          [](const auto& check) { return !check.IsPassed(); });
        EXPECT_EQ(checked.failed, failed || deflects);
        EXPECT_EQ(checked.passed, passed && !deflects);
    }
}

// Each rule names a combination whose own member has that very finding.
TEST(BeamCheck, NamesTheCombinationOfEachRule)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const Beam beam = Read(RandomBeam(seed));
        const CheckedMember checked = CheckBeam(beam, DefaultCode(), false);
        std::map<std::string, CheckedMember> alone;
        for (std::size_t i = 0; i < beam.members.size(); ++i)
            alone.emplace(beam.made.members[i].name, CheckAlone(beam, i));
        ASSERT_EQ(checked.sources.size(), checked.findings.rules.size());
        int governing = 0;
        for (const RuleFinding& rule : checked.findings.rules) {
            governing += rule.governing;
            if (std::wstring_view(rule.symbol) == L"limit") continue;
            const auto at = alone.find(checked.CombinationOf(&rule));
            ASSERT_NE(at, alone.end()) << checked.CombinationOf(&rule);
            const auto& rules = at->second.findings.rules;
            EXPECT_TRUE(std::any_of(rules.begin(), rules.end(), [&](const RuleFinding& one) {
                return one.rule == rule.rule && one.status == rule.status && one.utilisation == rule.utilisation;
            })) << DescribeEntry(rule);
        }
        EXPECT_EQ(governing, 1);
        EXPECT_EQ(checked.findings.Governing()->utilisation, checked.Utilisation());
    }
}

// 9 m, 12 kN/m and 67.1 kg/m x 9.81 = 0.658 kN/m of dead load, 45 kN imposed at 3 m. With 1.4 and 1.6: w = 1.4 x 12.658 = 17.722 kN/m,
// P = 72 kN. R at the left = 17.722 x 9/2 + 72 x 6/9 = 79.748 + 48 = 127.748 kN. Shear is zero at 3 + (127.748 - 17.722 x 3 - 72)/17.722 =
// 3.1457 m, M = 127.748 x 3.1457 - 17.722 x 3.1457²/2 - 72 x 0.1457 = 401.86 - 87.68 - 10.49 = 303.68 kNm.
TEST(BeamCheck, FloorBeamByHand)
{
    const Beam beam = Read(FloorBeam("combinations = \"bs5950\"\n"));
    const CheckedMember checked = CheckBeam(beam, DefaultCode(), false);
    EXPECT_EQ(checked.Status(), "pass");
    EXPECT_NEAR(checked.momentMajor.least, -303.68e3, 20.0);
    EXPECT_NEAR(checked.momentMajor.leastAt, 3.1457, 1e-4);
    const RuleFinding* const moment = Find(checked, "moment capacity, major axis");
    ASSERT_TRUE(moment);
    // Mcx = 275 x 1471 cm³ = 404.5 kNm
    EXPECT_NEAR(moment->utilisation, 303.68 / 404.5, 1e-3);
    EXPECT_EQ(checked.CombinationOf(moment), "dead and imposed: 1.4 Dead + 1.6 Imposed");
    EXPECT_EQ(beam.members.size(), 4u); // dead 1.4 or 1.0, with and without imposed
}

// 45 kN at a = 6 m, b = 3 m from the supports of 9 m, EI = 205e9 x 294e-6 = 60.23e6 N·m²: the largest deflection is
// P b (L² - b²)^1.5 / (9 √3 L EI) = 45e3 x 3 x 72^1.5 / (9 x 1.7320508 x 9 x 60.23e6) = 9.761 mm, span/360 = 25 mm.
TEST(BeamCheck, DeflectionByHand)
{
    const CheckedMember checked = CheckBeam(Read(FloorBeam()), DefaultCode(), false);
    const RuleFinding* const deflection = Find(checked, "deflection, variable loads");
    ASSERT_TRUE(deflection);
    EXPECT_EQ(deflection->status, CheckStatus::Passed);
    EXPECT_NEAR(deflection->utilisation, 9.761 / 25.0, 1e-3);
    EXPECT_NEAR(deflection->resistance, 0.025, 1e-12);
    const Json json = JsonOf(checked);
    EXPECT_NEAR(json["checks"].back()["demand"].get<double>(), 9.761e-3, 1e-5);
    EXPECT_EQ(json["checks"].back()["quantity"], "length");
    EXPECT_EQ(json["checks"].back()["combination"], "dead and imposed: 1 Dead + 1 Imposed");
}

TEST(BeamCheck, ADeflectionThatIsTooLargeFailsTheBeam)
{
    const CheckedMember checked = CheckBeam(Read(FloorBeam("deflection = { imposed = 2000 }\n")), DefaultCode(), true);
    // 9.761 mm against 4.5 mm
    EXPECT_NEAR(checked.Utilisation(), 9.761 / 4.5, 1e-3);
    EXPECT_EQ(checked.Status(), "fail");
    EXPECT_THAT(checked.Governing(), HasSubstr("deflection, variable loads"));
    EXPECT_THAT(ReportMarkup(checked, "brief"), HasSubstr("9.761 mm at 4.101 m, at most 4.5 mm, L/2000"));
    EXPECT_EQ(JsonOf(checked)["status"], "fail");
}

TEST(BeamCheck, LimitsWithoutAServiceabilityCombinationAreNotEvaluated)
{
    const std::string own = "[[combination]]\nname = \"C1\"\nfactors = { Dead = 1.35, Imposed = 1.5 }\n";
    const CheckedMember asked =
        CheckBeam(Read(FloorBeam("deflection = { imposed = 360 }\n", own)), DefaultCode(), false);
    EXPECT_EQ(asked.Status(), "not checked");
    const RuleFinding* const open = Find(asked, "deflection, ");
    ASSERT_TRUE(open);
    EXPECT_EQ(open->status, CheckStatus::NotEvaluated);
    // Not asked for: told, but the strength alone decides.
    const Beam silent = Read(FloorBeam({}, own));
    EXPECT_THAT(Messages(silent), HasSubstr("warning: deflection: not evaluated"));
    EXPECT_EQ(CheckBeam(silent, DefaultCode(), false).Status(), "pass");
    EXPECT_EQ(silent.members.size(), 2u); // with the imposed case on its span and without
}

TEST(BeamCheck, TextIsThatOfTheGoverningCombination)
{
    const CheckedMember checked = CheckBeam(Read(FloorBeam()), DefaultCode(), true);
    const std::string text = ReportMarkup(checked, "brief");
    EXPECT_THAT(text, HasSubstr("Calculation of the combination dead and imposed: 1.4 Dead + 1.6 Imposed"));
    EXPECT_THAT(text, Not(HasSubstr("Floor beam B12: dead and imposed: 1.4 Dead\n")));
    HtmlReport report{TitleBlock()};
    report.Add(checked);
    std::string html;
    report.Write([&](std::string_view piece) { html += piece; });
    EXPECT_THAT(html, HasSubstr("<th scope=\"col\">Combination</th>"));
    EXPECT_THAT(html, HasSubstr("<bdi>dead and imposed: 1 Dead + 1 Imposed</bdi>"));
    EXPECT_THAT(html, HasSubstr("limit = 25"));
}

TEST(BeamCheck, TheDesignCodeRejectsTheSectionInItsLine)
{
    EXPECT_THAT(Messages("section = \"IPE 3000\"\ngrade = \"S275\"\nlength = 6\n"),
                HasSubstr("beam.toml:1: error: section: unknown section \"IPE 3000\"; nearest: "));
    EXPECT_THAT(Messages("section = \"UB 457x191x67\"\ngrade = \"S276\"\nlength = 6\n"),
                HasSubstr("beam.toml:2: error: grade: got \"S276\", expected one of S275, S355, S460"));
}

TEST(BeamCheck, TheHostLibraryTakesABeamAsOneMember)
{
    const Outcomes outcomes = Host::Check(FloorBeam(), "beam.toml");
    ASSERT_EQ(outcomes.members.size(), 1u);
    EXPECT_TRUE(outcomes.Pass());
    EXPECT_EQ(outcomes.members[0].title, "Floor beam B12");
    EXPECT_THAT(FindingsJson(outcomes.members[0]),
                HasSubstr("\"combination\": \"dead and imposed: 1.4 Dead + 1.6 Imposed\""));
    EXPECT_THAT(Host::Report(outcomes.members[0]), HasSubstr("Envelope of the combinations"));
    const Outcomes refused = Host::Check(FloorBeam("camber = nan\n"), "beam.toml");
    ASSERT_EQ(refused.members.size(), 1u);
    EXPECT_EQ(refused.members[0].status, "refused");
    EXPECT_FALSE(refused.Pass());
    EXPECT_THAT(refused.members[0].diagnostics.front().message, HasSubstr("beam.toml:6: error: camber: got nan"));
}

// 1.35 x 12.658 and 1.5 x 45: M = 17.089 x 81/8 = 173.0 kNm without imposed load. Table NA.2.23 limits variable loads as BS 5950 does;
// EN 1993-1-1 itself gives no limits, and says so.
TEST(BeamCheck, CombinationsAndLimitsOfTheEurocodes)
{
    const Beam british = Read(FloorBeam("combinations = \"en1990-uk\"\n"));
    EXPECT_EQ(british.made.members[0].name, "6.10: 1.35 Dead + 1.5 Imposed");
    EXPECT_THAT(Messages(british),
                HasSubstr("warning: combinations: factors of EN 1990 with the resistances of BS 5950-1:2000"));
    EXPECT_THAT(Messages(FloorBeam("combinations = \"bs5950\"\n")), Not(HasSubstr("warning")));
    ASSERT_EQ(british.made.limits.size(), 1u);
    EXPECT_EQ(british.made.limits[0].clause, CString(L"NA to BS EN 1993-1-1, NA.2.23"));
    const CheckedMember checked = CheckBeam(british, DefaultCode(), false);
    const RuleFinding* const deflection = Find(checked, "deflection, ");
    ASSERT_TRUE(deflection);
    EXPECT_NEAR(deflection->utilisation, 9.761 / 25.0, 1e-3);
    const Beam other = Read(FloorBeam("combinations = \"en1990\"\n"));
    EXPECT_THAT(Messages(other), HasSubstr("warning: deflection: not checked: EN 1993-1-1 gives no limits"));
    EXPECT_TRUE(other.made.deflections.empty());
}

// 60 kN at 0.1 + 0.1 m from a column of 5 m, at its middle: 1.4 x 12 = 16.8 kNm, half of it above and half below.
TEST(BeamCheck, AMomentThatTheFileHasIsNoJumpToBeWarnedOf)
{
    const CheckedMember checked =
        CheckBeam(Read("section = \"UC 203x203x46\"\ngrade = \"S275\"\nlength = 5\ncolumn = true\n[[load]]\n"
                       "kind = \"permanent\"\nreaction = 60\nat = 2.5\nface = 0.1\n"),
                  DefaultCode(), false);
    EXPECT_NEAR(checked.momentMajor.greatest, 8.4e3, 1e-6);
    EXPECT_NEAR(checked.momentMajor.least, -8.4e3, 1e-6);
    for (const MemberWarning& warning : checked.warnings)
        EXPECT_EQ(warning.severity, Severity::Note) << warning.Message();
}

TEST(BeamCheck, WhatTheMemberCannotSayIsAWarning)
{
    const std::string text = "section = \"UB 457x191x67\"\ngrade = \"S275\"\nspans = [8, 8]\nhinges = [11]\n"
                             "supports = [{ at = 8, holds = \"Pinned\", vertical = 20000 }]\n"
                             "[[load]]\nkind = \"imposed\"\nudl = 10\n";
    const CheckedMember checked = CheckBeam(Read(text), DefaultCode(), false);
    std::string warnings;
    for (const MemberWarning& warning : checked.warnings)
        warnings += warning.Message() + '\n';
    EXPECT_THAT(warnings, HasSubstr("warning: members: the springs at 8 m are in the forces alone"));
    EXPECT_THAT(warnings, HasSubstr("warning: members: the hinge at 11 m is in the forces alone"));
    EXPECT_TRUE(Read(text, {false, true}).made.HasErrors()); // where every warning is an error
}

RuleFinding FindingOf(int rule, CheckStatus status, double utilisation, double at, bool governing = false)
{
    RuleFinding finding;
    finding.rule = rule;
    finding.name = L"a rule";
    finding.clause = L"1.1";
    finding.status = status;
    finding.start = finding.end = at;
    finding.utilisation = utilisation;
    finding.governing = governing;
    return finding;
}

// Two spans, the top flange held all along, too weak without the factor for a C1 above the table, in several combinations with other figures each.
TEST(BeamCheck, AWarningWithAUtilisationStandsOnceForEachPlaceInItsWorstCombination)
{
    const std::string text =
        "section = \"UB 457x152x60\"\ngrade = \"S355\"\nspans = [8.0, 8.0]\ncombinations = \"bs5950\"\n"
        "[[restraint]]\nfrom = 0\nto = 16\nholds = \"Top flange lateral\"\n"
        "[[load]]\ncase = \"Dead\"\nkind = \"permanent\"\nudl = 20.0\n"
        "[[load]]\ncase = \"Imposed\"\nkind = \"imposed\"\nudl = 30.0\n";
    const CodeChoice ec3 = ChooseCode("ec3", "", {});
    const Beam beam = ReadBeam("beam.toml", text, {}, ec3);
    ASSERT_FALSE(beam.made.HasErrors()) << Messages(beam);
    const auto isCurve = [](const MemberWarning& w) { return w.code == "curve-factor"; };
    std::map<double, double> worst;
    std::size_t all = 0;
    for (std::size_t i = 0; i < beam.members.size(); ++i)
        for (const MemberWarning& w : CheckMember(beam.members[i], 0, ec3, false).warnings) {
            if (!isCurve(w)) continue;
            ++all;
            worst[w.start] = std::max(worst[w.start], w.utilisation);
        }
    ASSERT_GT(all, worst.size());
    const CheckedMember checked = CheckBeam(beam, ec3, false);
    std::size_t shown = 0;
    for (const MemberWarning& w : checked.warnings) {
        if (!isCurve(w)) continue;
        ++shown;
        EXPECT_EQ(w.utilisation, worst.at(w.start));
        EXPECT_THAT(w.text, HasSubstr(", the worst of "));
    }
    EXPECT_EQ(shown, worst.size());
}

// Of each rule at each place the worst: not-a-number before a failure without a number before any utilisation; what was not evaluated in one
// case stays beside what was in another; what applies in one case applies.
TEST(BeamCheck, EnvelopeKeepsTheWorstOfEachRuleAtEachPlace)
{
    const Beam beam = Read(FloorBeam());
    std::vector<CheckedMember> cases;
    const double none = std::nan("");
    const std::vector<std::vector<RuleFinding>> rules = {
        {FindingOf(0, CheckStatus::Passed, 0.5, none), FindingOf(1, CheckStatus::Passed, 0.9, 2.0),
         FindingOf(1, CheckStatus::Passed, 0.2, 4.0), FindingOf(2, CheckStatus::NotApplicable, 0.0, none),
         FindingOf(3, CheckStatus::NotApplicable, 0.0, none), FindingOf(4, CheckStatus::Passed, 0.95, 1.0, true)},
        {FindingOf(0, CheckStatus::NotEvaluated, 0.0, none), FindingOf(1, CheckStatus::Failed, 0.0, 2.0),
         FindingOf(1, CheckStatus::Passed, 0.3, 4.0, true), FindingOf(2, CheckStatus::Passed, 0.1, 3.0),
         FindingOf(3, CheckStatus::NotApplicable, 0.0, none), FindingOf(4, CheckStatus::Failed, none, 1.0)}};
    for (std::size_t i = 0; i < rules.size(); ++i) {
        cases.push_back(CheckAlone(beam, i));
        cases.back().caseName = i == 0 ? "one" : "two";
        cases.back().findings.rules = rules[i];
    }
    const CheckedMember envelope = Envelope(std::move(cases));
    std::string text;
    for (const RuleFinding& rule : envelope.findings.rules)
        text += std::to_string(rule.rule) + ' ' + Utf8(std::wstring_view(Design::StatusName(rule.status))) + ' ' +
                Shortest(rule.utilisation) + ' ' + envelope.CombinationOf(&rule) +
                (rule.governing ? " governs\n" : "\n");
    EXPECT_EQ(text, "0 passed 0.5 one\n0 not evaluated 0 two\n1 failed 0 two\n1 passed 0.3 two\n2 passed 0.1 two\n"
                    "3 not applicable 0 one\n4 failed nan two governs\n");
}

} // namespace
} // namespace Keltrix::BeamTest
