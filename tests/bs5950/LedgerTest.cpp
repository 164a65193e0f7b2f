#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <optional>
#include <random>
#include <set>
#include <sstream>

#include "Members.h"
#include "support/RandomCases.h"

using namespace BS5950Test;

namespace {

CString ReadExample(const std::string& name)
{
    std::ifstream in(std::string(KELTRIX_EXAMPLES_DIR) + "/" + name + ".csv");
    if (!in) throw std::runtime_error("no example " + name);
    std::stringstream text;
    text << in.rdbuf();
    return CString::FromUtf8(text.str()).value();
}

struct Example {
    const char* name;
    Rule governing;
};

constexpr Example EXAMPLES[] = {
    {"floor_beam", Rule::MomentMajor},      {"continuous_beam", Rule::MomentMajor},
    {"crane_beam", Rule::LateralTorsional}, {"cantilever", Rule::LateralTorsional},
    {"column", Rule::BucklingInteraction},  {"tie", Rule::EccentricConnection},
    {"angle_brace", Rule::BucklingMinor},   {"hollow_strut", Rule::BucklingInteraction},
};

void ExpectComplete(const Ledger& ledger, const std::string& what)
{
    std::set<Rule> rules;
    int governing = 0;
    double largest = 0.0;
    for (const LedgerEntry& e : ledger.Entries()) {
        rules.insert(e.rule);
        governing += e.governing ? 1 : 0;
        largest = std::max(largest, e.utilisation);
        EXPECT_NE(std::wstring(e.clause), L"") << what;
        if (e.status != CheckStatus::Passed && e.status != CheckStatus::Failed) {
            EXPECT_NE(std::wstring(e.reason), L"") << what << ": " << *CString(RuleName(e.rule)).ToUtf8();
        }
        if (e.status == CheckStatus::Failed) {
            EXPECT_TRUE(e.utilisation >= 1.0) << what << ": " << *CString(RuleName(e.rule)).ToUtf8();
        }
    }
    for (int i = 0; i < static_cast<int>(Rule::COUNT); ++i)
        EXPECT_TRUE(rules.count(static_cast<Rule>(i)) == 1)
            << what << " has no entry of " << *CString(RuleName(static_cast<Rule>(i))).ToUtf8();
    EXPECT_EQ(governing, largest > 0.0 ? 1 : 0) << what;
    if (ledger.Governing()) {
        EXPECT_EQ(ledger.Governing()->utilisation, largest) << what;
    }
}

} // namespace

TEST(Examples, PassAndAreGovernedByWhatTheyShow)
{
    for (const Example& example : EXAMPLES) {
        CSteelMemberBS5950 member;
        CMemberResult result;
        member.SetResult(&result);
        CSteelGrade grade;
        ASSERT_TRUE(member.CSVInputData(ReadExample(example.name), grade)) << example.name;
        ASSERT_TRUE(member.SetGrade(grade)) << example.name;
        EXPECT_TRUE(member.Check()) << example.name;
        EXPECT_FALSE(result.HasFailed()) << example.name;
        EXPECT_GT(result.UtilOverAll(), 0.5) << example.name;
        ASSERT_NE(member.Checks().Governing(), nullptr) << example.name;
        EXPECT_EQ(RuleName(member.Checks().Governing()->rule), RuleName(example.governing)) << example.name;
        ExpectComplete(member.Checks(), example.name);
        EXPECT_EQ(result.UtilOverAll(), member.Checks().Governing()->utilisation) << example.name;
    }
}

TEST(LedgerOfChecks, HasEveryRuleWhateverTheActions)
{
    for (const wchar_t* section :
         {L"UB 457x191x67", L"L 150x75x10", L"CHS 168.3x5", L"RHS 200x100x6.3", L"PFC 200x90x30", L"T 254x343x63"})
        for (const double F : {0.0, -50e3, 50e3})
            for (const double M : {0.0, -10e3, 10e3})
                for (const double My : {0.0, 2e3}) {
                    Case given;
                    given.section = section;
                    EndMoments(given, 6.0, M, 0.0, F, My, 0.0);
                    Checked c(given);
                    const bool passed = c.Check();
                    ExpectComplete(c.member.Checks(), *CString(section).ToUtf8());
                    EXPECT_EQ(c.member.Checks().HasFailed(), c.result.HasFailed()) << *CString(section).ToUtf8();
                    EXPECT_EQ(passed, c.member.Status() == Design::Status::Passed);
                    // The moment of an angle is about both principal axes.
                    const bool isBent = M != 0.0 || My != 0.0;
                    const bool isBentTwice = section[0] == L'L' ? isBent : M != 0.0 && My != 0.0;
                    const auto applies = [&](Rule rule) { return c.Entry(rule).status != CheckStatus::NotApplicable; };
                    EXPECT_EQ(applies(Rule::CombinedTension), F > 0.0 && isBent) << F << ' ' << M << ' ' << My;
                    EXPECT_EQ(applies(Rule::CombinedCompression), (F < 0.0 && isBent) || (F <= 0.0 && isBentTwice))
                        << *CString(section).ToUtf8() << ' ' << F << ' ' << M << ' ' << My;
                }
}

// Random actions and restraints on every section of the catalogue: the ledger stays complete and says the same as the
// record.
TEST(LedgerOfChecks, StaysCompleteAndInStepWithTheRecordForRandomMembers)
{
    constexpr unsigned SEED = 2000;
    std::mt19937 random(SEED);
    std::uniform_real_distribution<double> sign(-1.0, 1.0);
    const wchar_t* restraints[] = {L"Free", L"Pinned", L"Fixed", L"F1L", L"F12L", L"F1L TF MAJV", L"TP F2L MAJV"};
    const auto pick = [&] { return restraints[static_cast<std::size_t>((sign(random) + 1.0) * 3.4999)]; };
    int members = 0;
    const auto& entries = CSectDB::GetDatabase()->Entries();
    const int all = static_cast<int>(entries.size());
    const int wanted = std::min(all, Keltrix::TestSupport::RandomCases(all));
    for (int k = 0; k < wanted; ++k) {
        const CSectDB::Entry& entry =
            entries[static_cast<std::size_t>(k) * entries.size() / static_cast<std::size_t>(wanted)];
        const std::optional<SectionProperties> s = MakeProperties(CSection(entry.designation), nullptr);
        ASSERT_TRUE(s.has_value()) << *entry.designation.ToUtf8();
        Case given;
        given.section = entry.designation.GetString();
        given.type = entry.secType;
        given.grade = L"S275";
        given.option = members % 2 + 1;
        given.points = {{0.0, pick()}, {1.5, pick()}, {3.0, pick()}, {5.5, pick()}};
        given.force = [&](double) {
            return Vector(s->A * 120e6 * sign(random), s->A * 10e6 * sign(random), s->A * 20e6 * sign(random));
        };
        given.moment = [&](double) {
            const double minor = sign(random);
            return Vector(0, s->Zx * 200e6 * sign(random), minor > 0 ? s->Zy * 200e6 * minor : 0.0);
        };
        Checked c(given, members % 10 == 0);
        const bool passed = c.Check();
        const std::string name = *entry.designation.ToUtf8() + ", seed " + std::to_string(SEED);
        ExpectComplete(c.member.Checks(), name);
        EXPECT_EQ(c.member.Checks().HasFailed(), c.result.HasFailed()) << name;
        EXPECT_EQ(passed, c.member.Status() == Design::Status::Passed) << name;
        ASSERT_NE(c.member.Checks().Governing(), nullptr) << name;
        EXPECT_EQ(c.member.Checks().Governing()->utilisation, c.result.UtilOverAll()) << name;
        ++members;
    }
    EXPECT_EQ(members, wanted);
    EXPECT_GT(all, 1000);
}

TEST(LedgerOfChecks, AgreesWithTheResultRecord)
{
    Case given;
    Uniform(given, 6.0, 100e3, -300e3);
    Checked c(given);
    EXPECT_FALSE(c.Check());
    EXPECT_TRUE(c.result.TestFlags(CMemberResult::FAIL_LOCAL | CMemberResult::FAIL_BUCKLE));
    EXPECT_EQ(c.Entry(Rule::MomentMajor).utilisation, c.result.MaxUtilLocalMomMajor(nullptr));
    EXPECT_EQ(c.Entry(Rule::BucklingMinor).utilisation, c.result.UtilBucklingAxialMinor());
    EXPECT_EQ(c.Entry(Rule::LateralTorsional).utilisation, c.result.UtilBucklingLT());
    EXPECT_EQ(c.Entry(Rule::MomentMajor).status, CheckStatus::Failed);
}

TEST(Refusals, GiveEveryRuleAnEntryAndSayWhy)
{
    const auto expectRefused = [](CSteelMemberBS5950& member, const wchar_t* why) {
        CMemberResult result;
        member.SetResult(&result);
        EXPECT_FALSE(member.Check());
        EXPECT_TRUE(result.TestFlags(CMemberResult::NOT_CHECKED)) << *CString(why).ToUtf8();
        ExpectComplete(member.Checks(), *CString(why).ToUtf8());
        for (const LedgerEntry& e : member.Checks().Entries())
            EXPECT_EQ(e.status, CheckStatus::NotEvaluated);
        EXPECT_GE(result.GetVerbose().Find(why), 0) << *CString(why).ToUtf8();
        EXPECT_EQ(member.SectionClass(), 0);
    };
    CSteelMemberBS5950 empty;
    expectRefused(empty, L"no section");

    CSteelMemberBS5950 gradeless;
    ASSERT_TRUE(gradeless.SetKeltrixSec(CSection(L"UB 457x191x67")));
    expectRefused(gradeless, L"no steel grade");

    CSteelMemberBS5950 thick;
    ASSERT_TRUE(thick.SetKeltrixSec(CSection(L"UC 356x406x1299")));
    ASSERT_TRUE(thick.SetGrade(GradeNamed(L"S460")));
    expectRefused(thick, L"outside Table 9");

    CSteelMemberBS5950 pointless;
    ASSERT_TRUE(pointless.SetKeltrixSec(CSection(L"UB 457x191x67")));
    ASSERT_TRUE(pointless.SetGrade(GradeNamed(L"S275")));
    expectRefused(pointless, L"do not fit together");

    for (const double factor : {-1.0, 0.0, std::nan(""), double(INFINITY)}) {
        Case given;
        Uniform(given, 6.0, 20e3, -100e3);
        Checked negative(given);
        negative.member.SetEquivalentUniformMomentFactor(factor);
        expectRefused(negative.member, L"equivalent uniform moment factor");
    }
}

TEST(Refusals, OfSectionsAndGradesAreAnsweredAtOnce)
{
    CSteelMemberBS5950 member;
    EXPECT_FALSE(member.SetKeltrixSec(CSection(L"no such section")));
    EXPECT_FALSE(member.SetKeltrixSec(CSection()));
    EXPECT_TRUE(member.SetKeltrixSec(CSection(L"UB 457x191x67")));
    EXPECT_FALSE(member.SetKeltrixSec(CSection(L"no such section")));
    EXPECT_EQ(member.GetKeltrixSec().Component(0).Description(true), L"UB 457x191x67") << "the section before stays";
    EXPECT_FALSE(member.SetGrade(GradeNamed(L"S235")));
    EXPECT_FALSE(member.SetGrade(CSteelGrade(L"User_defined", 0, 0, 0, 1)));
    EXPECT_TRUE(member.SetGrade(CSteelGrade(L"User_defined", 300e6, 0, 0, 1)));
    EXPECT_EQ(member.DesignStrength(), 300e6);
    EXPECT_THROW(member.SetMomentAmplificationFactorStrongAxis(1.1), Steel::unsupported_design_code_error);
}

// Cold-formed open sections belong to BS 5950-5.
TEST(Refusals, OfColdFormedOpenSections)
{
    CSection channel(L"C 200x75x2x2");
    CSecComp component = channel.Component(0);
    component.SetType(SEC_FORMED);
    channel.SetComponent(0, component);
    CSteelMemberBS5950 member;
    EXPECT_FALSE(member.SetKeltrixSec(channel));
    EXPECT_TRUE(member.SetKeltrixSec(CSection(L"CFRHS 200x100x6")));
}

// Not-a-number is no action and no normal load: whatever it stands for is not known.
TEST(Refusals, OfNumbersThatAreNotFinite)
{
    const auto expectRefused = [](const Case& given, const wchar_t* why) {
        Checked c(given);
        EXPECT_FALSE(c.Check());
        EXPECT_EQ(c.member.Status(), Design::Status::NotChecked);
        EXPECT_TRUE(c.result.TestFlags(CMemberResult::NOT_CHECKED));
        EXPECT_GE(c.result.GetBrief().Find(why), 0) << *c.result.GetBrief().ToUtf8();
    };
    for (const double bad : {std::nan(""), double(INFINITY), -double(INFINITY)}) {
        Case given;
        given.force = [bad](double) { return Vector(bad, 0, 0); };
        expectRefused(given, L"a force or a moment is not a finite number");
        given = {};
        given.moment = [bad](double) { return Vector(0, 0, bad); };
        expectRefused(given, L"a force or a moment is not a finite number");
        given = {};
        Uniform(given, 6.0, 20e3);
        given.loadHeight = bad;
        expectRefused(given, L"a load height is not a finite number");
    }
}

// A calculation has the lines of the actions that act, and of no others.
TEST(CalculationText, HasLinesOfWhatActsAlone)
{
    constexpr const char* shearX = "Shear along the flanges";
    constexpr const char* shearY = "Shear along the web";
    const auto has = [](const Vec3<double>& force, const Vec3<double>& moment, const char* line) {
        Case given;
        given.force = [&](double) { return force; };
        given.moment = [&](double) { return moment; };
        Checked c(given);
        c.Check();
        return c.Verbose().find(line) != std::string::npos;
    };
    const Vec3<double> none = Vector(0, 0, 0);
    EXPECT_FALSE(has(none, Vector(0, 10e3, 0), shearX));
    EXPECT_FALSE(has(none, Vector(0, 10e3, 0), shearY));
    EXPECT_TRUE(has(Vector(0, 10e3, 0), none, shearX));
    EXPECT_FALSE(has(Vector(0, 10e3, 0), none, shearY));
    EXPECT_FALSE(has(Vector(0, 0, 10e3), none, shearX));
    EXPECT_TRUE(has(Vector(0, 0, 10e3), none, shearY));
    for (const char* line : {"Tension <i>", "Compression <i>"})
        EXPECT_FALSE(has(Vector(0, 0, 10e3), none, line)) << line;
    EXPECT_TRUE(has(Vector(10e3, 0, 0), none, "Tension <i>"));
    EXPECT_TRUE(has(Vector(-10e3, 0, 0), none, "Compression <i>"));
}

// A rule that applies and that nobody evaluated leaves the member unchecked, however low its utilisation: torsion of 50 kNm
// beside a moment that uses a quarter of the section.
TEST(Statuses, APassNeedsEveryRuleThatApplies)
{
    Case given;
    given.along = L"Pinned";
    given.moment = [](double) { return Vector(50e3, -100e3, 0); };
    Checked torsion(given);
    EXPECT_FALSE(torsion.Check());
    EXPECT_LT(torsion.result.UtilOverAll(), 0.3);
    EXPECT_FALSE(torsion.result.HasFailed());
    EXPECT_EQ(torsion.member.Status(), Design::Status::NotChecked);
    EXPECT_TRUE(torsion.member.Checks().IsOpen(Stage::Local));
    EXPECT_FALSE(torsion.member.Checks().IsOpen(Stage::Buckling));
    EXPECT_FALSE(torsion.member.CheckLocal(true));
    EXPECT_TRUE(torsion.member.CheckBuckling());

    given.moment = [](double) { return Vector(50e3, -900e3, 0); };
    Checked failed(given);
    EXPECT_FALSE(failed.Check());
    EXPECT_EQ(failed.member.Status(), Design::Status::Failed);

    given.moment = [](double) { return Vector(0, -100e3, 0); };
    Checked passed(given);
    EXPECT_EQ(passed.member.Status(), Design::Status::NotChecked) << "before the check";
    EXPECT_TRUE(passed.Check());
    EXPECT_EQ(passed.member.Status(), Design::Status::Passed);
    EXPECT_EQ(passed.Entry(Rule::Deflection).status, CheckStatus::OutOfScope);
    EXPECT_EQ(passed.Entry(Rule::SwayStability).status, CheckStatus::OutOfScope);
}

// 6 m, Fz -60 and 60 kN, 40 kNm at the right end: the shears ask for no change of moment, the moments change by 40 kNm.
TEST(Warnings, OfForcesThatDoNotBalanceCannotBeMissed)
{
    Case given;
    given.force = [](double x) { return Vector(0, 0, x < 3.0 ? -60e3 : 60e3); };
    given.moment = [](double x) { return Vector(0, x > 3.0 ? 40e3 : 0.0, 0); };
    Checked c(given);
    c.Check();
    ASSERT_EQ(c.member.Warnings().size(), 1u);
    const Design::Warning& warning = c.member.Warnings().front();
    EXPECT_EQ(warning.kind, Design::WarningKind::UnbalancedForces);
    EXPECT_EQ(warning.subSpan, 0);
    EXPECT_EQ(warning.start, 0.0);
    EXPECT_EQ(warning.end, 6.0);
    const std::string text = *warning.text.ToUtf8();
    for (const char* part : {"sub-span 1", "changes by 0", "40 kNm", "dMyy/dx = Fz", "Divide there"})
        EXPECT_NE(text.find(part), std::string::npos) << part << " in " << text;
    EXPECT_TRUE(c.result.TestFlags(CMemberResult::WARNING));
    const std::string line = "<red><b>WARNING:</b></red> " + text;
    const std::string verbose = c.Verbose();
    const std::string brief = *c.result.GetBrief().ToUtf8();
    for (const std::string& report : {verbose, brief}) {
        const std::size_t first = report.find(line);
        ASSERT_NE(first, std::string::npos);
        EXPECT_LT(first, report.find("Position")) << "before the local checks";
        EXPECT_NE(report.find(line, report.find("<h4>Buckling checks:</h4>")), std::string::npos);
    }
    EXPECT_NE(verbose.find("Mx by the left end and the shears"), std::string::npos);
    c.Check();
    EXPECT_EQ(c.member.Warnings().size(), 1u) << "once, however often the member is checked";
}

TEST(Warnings, OfAMomentFactorBelowEveryTable)
{
    Case given;
    Uniform(given, 6.0, 10e3, -100e3);
    Checked low(given);
    low.member.SetEquivalentUniformMomentFactor(0.39);
    low.Check();
    ASSERT_EQ(low.member.Warnings().size(), 1u);
    EXPECT_EQ(low.member.Warnings().front().kind, Design::WarningKind::LowMomentFactor);
    EXPECT_NE(low.member.Warnings().front().text.Find(L"0.39"), -1);
    Checked fine(given);
    fine.member.SetEquivalentUniformMomentFactor(0.4);
    fine.Check();
    EXPECT_TRUE(fine.member.Warnings().empty());
}

// The same shears as those of a uniform load of 200/6 = 33.33 kN/m belong to a point load of 200 kN at mid-span.
TEST(Assumptions, NameTheUniformLoadThatIsReadFromTheShears)
{
    const auto loads = [](const Checked& c) {
        std::vector<Assumption> list;
        for (const Assumption& a : c.member.Assumptions())
            if (a.isLoad) list.push_back(a);
        return list;
    };
    Case given;
    given.section = L"UB 406x178x54";
    given.force = [](double x) { return Vector(0, 0, x < 3.0 ? -100e3 : 100e3); };
    Checked c(given);
    c.Check();
    ASSERT_EQ(loads(c).size(), 1u);
    EXPECT_NEAR(loads(c)[0].value, 33333.3, 0.1);
    EXPECT_EQ(loads(c)[0].start, 0.0);
    EXPECT_EQ(loads(c)[0].end, 6.0);
    EXPECT_NE(c.Verbose().find("33.333 kN/m, 0 m to 6 m"), std::string::npos);
    c.member.CheckLocal(true);
    c.member.CheckBuckling();
    EXPECT_EQ(loads(c).size(), 1u);

    Uniform(given, 6.0, 20e3);
    given.points = {{0.0, L"Pinned"}, {1.0, L"Free"}, {4.0, L"Free"}, {6.0, L"Pinned"}};
    Checked divided(given);
    divided.Check();
    ASSERT_EQ(loads(divided).size(), 1u) << "one load, wherever the member is divided";
    EXPECT_NEAR(loads(divided)[0].value, 20e3, 1.0);
    EXPECT_EQ(loads(divided)[0].end, 6.0);

    EndMoments(given, 6.0, 0.0, 50e3, 0.0, 0.0, 5e3);
    Checked unloaded(given);
    unloaded.Check();
    EXPECT_TRUE(loads(unloaded).empty());
}

TEST(Assumptions, AreNamed)
{
    Case given;
    Uniform(given, 6.0, 5e3);
    given.plasElas = 0.0;
    Checked defaulted(given);
    defaulted.Check();
    EXPECT_TRUE(defaulted.Assumes(L"plastic to elastic limit"));
    EXPECT_NE(defaulted.Verbose().find("plastic to elastic limit"), std::string::npos);
    given.plasElas = 1.2;
    Checked complete(given);
    complete.Check();
    ASSERT_EQ(complete.member.Assumptions().size(), 1u);
    EXPECT_TRUE(complete.member.Assumptions().front().isLoad);
    given.loadHeight = 0.2;
    Checked destabilised(given);
    destabilised.Check();
    EXPECT_TRUE(destabilised.Assumes(L"mLT"));
    given.loadHeight = 0.0;
    given.type = SEC_UNDEF;
    Checked untyped(given);
    untyped.Check();
    EXPECT_TRUE(untyped.Assumes(L"fabrication"));
    given.type = SEC_ROLLED;
    Case free;
    free.points = {{0.0, L"Fixed"}, {4.0, L"Free"}};
    EndMoments(free, 4.0, 0.0, 0.0, -50e3);
    Checked sway(free);
    sway.Check();
    EXPECT_TRUE(sway.Assumes(L"missing restraint"));
    given.section = L"PFC 200x90x30";
    Checked channel(given);
    channel.Check();
    EXPECT_TRUE(channel.Assumes(L"line of loading"));
}

TEST(DesignOptions, HaveNamesAndTwoKinds)
{
    CSteelMemberBS5950 member;
    EXPECT_EQ(member.NumDesOpt(), 2);
    EXPECT_EQ(member.DesOpt(), CSteelMemberBS5950::SIMPLIFIED);
    EXPECT_EQ(member.DesOptName(1), L"BS 5950-1:2000");
    EXPECT_EQ(member.DesOptName(2), L"BS 5950-1:2000 (more exact interaction)");
}

// The report has the formula, the numbers with units, the result and the clause, and says why spans begin and end.
TEST(Report, CanBeFollowedWithTheStandardOnTheDesk)
{
    CSteelMemberBS5950 member;
    CMemberResult result;
    member.SetResult(&result);
    CSteelGrade grade;
    ASSERT_TRUE(member.CSVInputData(ReadExample("floor_beam"), grade));
    member.SetGrade(grade);
    member.Check();
    const std::string text = *result.GetVerbose().ToUtf8();
    for (const char* part :
         {"<h4>Design Code:</h4>", "BS 5950-1:2000", "py = 275 N/mm²", "<i>cl. 4.2.3</i>", "<i>Table 11</i>",
          "<i>cl. 4.2.5</i>", "Mx/Mcx = 354 kNm/404.53 kNm", "<i>BS5950-1:2000 Table 13 and clause 4.3.5.2</i>",
          "λLT = u v λ βW^0.5", "<i>Table 18</i>", "load pattern: uniform load", "starts at point 3",
          "flange held laterally at the point", "<h4>Ledger of checks:</h4>", "(governs)", "<h4>Assumptions:</h4>"})
        EXPECT_NE(text.find(part), std::string::npos) << part;
    const std::string brief = *result.GetBrief().ToUtf8();
    EXPECT_NE(brief.find("Position 4: zero shear"), std::string::npos) << "the critical position";
    EXPECT_EQ(brief.find("Position 6"), std::string::npos);
}

TEST(Report, IsNotBuiltWithoutTextAndTheFindingsAreTheSame)
{
    Case given;
    given.points.clear();
    for (int i = 0; i <= 12; ++i)
        given.points.emplace_back(0.5 * i, i % 12 == 0 ? L"Pinned" : L"Free");
    Uniform(given, 6.0, 20e3, -200e3);
    Checked silent(given, false), written(given, true);
    EXPECT_EQ(silent.Check(), written.Check());
    EXPECT_EQ(silent.result.UtilOverAll(), written.result.UtilOverAll());
    EXPECT_EQ(silent.result.GetFlags(), written.result.GetFlags());
    EXPECT_EQ(silent.Verbose().find("Moment"), std::string::npos);
}

TEST(WithoutAResult, TheCheckRunsJustTheSame)
{
    Case given;
    Uniform(given, 6.0, 20e3, -200e3);
    Checked c(given);
    const bool passed = c.Check();
    std::unique_ptr<CSteelMemberBS5950> alone(c.member.Clone());
    EXPECT_EQ(alone->Check(), passed);
    EXPECT_EQ(alone->Checks().Governing()->utilisation, c.result.UtilOverAll());
    EXPECT_EQ(alone->SectionClass(), c.member.SectionClass());
}

// What the headers offer can be called from outside the library.
TEST(PublicFindings, CanBeReadByAHost)
{
    Case given;
    Uniform(given, 6.0, 20e3);
    Checked c(given);
    ASSERT_TRUE(c.Check());
    double largest = 0.0;
    for (const PositionResult& p : c.member.Positions())
        largest = std::max(largest, p.Largest());
    EXPECT_NEAR(largest, 90e3 / 404.5e3, 1e-3) << "w L²/8 = 90 kNm over the published Mcx";
    EXPECT_EQ(c.member.Positions().front().cls.elements[0].SlenderFactor(), 1.0);
    EXPECT_EQ(StrutCurve::Name(5.5), L'c');
}

TEST(SectionObject, DropsWhatFollowedFromOldActions)
{
    CSectionBS5950 section;
    EXPECT_EQ(section.SectionClass(), 0);
    ASSERT_TRUE(section.SetKeltrixSec(CSection(L"UB 457x191x67"), nullptr));
    section.SetSteelDesignProp(GradeNamed(L"S275"));
    section.SetMemberMoments({0, -50e3, 0});
    EXPECT_EQ(section.SectionClass(), 1);
    section.SetMemberForces({-1780e3, 0, 0});
    EXPECT_EQ(section.SectionClass(), 4);
    section.SetGrade(GradeNamed(L"S355"));
    EXPECT_EQ(section.Steel().py, 355e6);
    const std::unique_ptr<CSectionBS5950> copy(section.Clone());
    EXPECT_EQ(copy->Area(), section.Area());
}
