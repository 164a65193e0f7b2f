// check, design and capacity. Figures of the code itself are the module's tests; here is what becomes of them.

#include <cmath>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "AppSupport.h"
#include "commands/CodeCommands.h"

namespace Keltrix::App {
namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Trial::GOOD_MEMBER;
using Trial::RunKsteel;
using Trial::TestDirectory;

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    EXPECT_NE(text.find(from), std::string::npos) << from;
    return text.replace(text.find(from), from.size(), to);
}

// The column of the examples under half its axial force.
std::string WithHalfTheForce(std::string column)
{
    EXPECT_THAT(column, HasSubstr("-1.2E+06"));
    while (column.find("-1.2E+06") != std::string::npos)
        column = Replaced(column, "-1.2E+06", "-600000");
    return column;
}

// Forces and moments a hundred times as large: 1500 kNm, far beyond any beam of this depth.
const std::string OVERLOADED = [] {
    std::string text = GOOD_MEMBER;
    for (std::size_t at = 0; (at = text.find("5000", at)) != std::string::npos; at += 6)
        text.insert(at + 4, "00");
    return text;
}();

TEST(CheckCommand, APassingMemberIsZeroAndAFailingOneIsOne)
{
    const TestDirectory directory;
    const auto good = RunKsteel("check '" + directory.Write("a.csv", GOOD_MEMBER) + "'");
    EXPECT_EQ(good.code, 0) << good;
    EXPECT_THAT(good.out, StartsWith("Floor beam\nUB 457x191x67 in S275: pass, utilisation 0."));
    const auto bad = RunKsteel("check '" + directory.Write("b.csv", OVERLOADED) + "'");
    EXPECT_EQ(bad.code, 1) << bad;
    EXPECT_THAT(bad.out, StartsWith("Floor beam\nUB 457x191x67 in S275: fail, utilisation 4."));
}

TEST(CheckCommand, BadInputOutweighsAFailure)
{
    const TestDirectory directory;
    EXPECT_EQ(RunKsteel("check '" + directory.Write("b.csv", OVERLOADED) + "' missing.csv").code, 2);
}

json CheckedExample(const std::string& example, const std::string& options)
{
    const auto run = RunKsteel("check --format jsonl " + options + " '" KSTEEL_SOURCE_DIR "/examples/" + example + "'");
    EXPECT_LE(run.code, 1) << run;
    return json::parse(run.out);
}

// The clauses that were evaluated.
std::set<std::string> Evaluated(const json& member)
{
    std::set<std::string> clauses;
    for (const json& check : member["checks"])
        if (check["status"] == "passed" || check["status"] == "failed") clauses.insert(check["clause"]);
    return clauses;
}

bool Assumes(const json& member, const std::string& text)
{
    for (const json& assumption : member["assumptions"])
        if (assumption["text"].get<std::string>().find(text) != std::string::npos) return true;
    return false;
}

// A pinned angle: λ = L/rv = 3.2/0.0236 = 136 either way, and one bolt leaves 80 % of the resistance (4.7.10.2 b). Two bolts let
// 0.85 L/rv = 115 replace it, above 0.7 L/rv + 15 = 110.
TEST(MemberOptionsOfTheCommandLine, TheConnectionOfAnAngleStrut)
{
    const double plain = CheckedExample("angle_brace.csv", "")["overall"];
    const json oneBolt = CheckedExample("angle_brace.csv", "--connection bolt");
    EXPECT_NEAR(oneBolt["overall"].get<double>(), plain / 0.8, 1e-6);
    EXPECT_TRUE(Assumes(oneBolt, "one bolt"));
    const json bolts = CheckedExample("angle_brace.csv", "--connection bolts");
    EXPECT_LT(bolts["overall"].get<double>(), 0.9 * plain);
    EXPECT_GT(bolts["overall"].get<double>(), 0.85 * 0.85 * plain) << "not more than Euler's load grows";
}

// L 100x100x10, 19.2 cm², net 0.88 of it, Ke = 1.2: Ae = A, Pt = 275 * 19.2 = 528 kN, and 300/528 = 0.568.
TEST(MemberOptionsOfTheCommandLine, MomentsThatHoldTheEccentricity)
{
    const json tie = CheckedExample("tie.csv", "--moments-hold-eccentricity");
    EXPECT_NEAR(tie["overall"].get<double>(), 300.0 / 528.0, 0.002);
    EXPECT_TRUE(Assumes(tie, "eccentricity"));
    EXPECT_EQ(CheckedExample("tie.csv", "")["governing"]["clause"], "4.6.3");
}

TEST(MemberOptionsOfTheCommandLine, ASimpleColumn)
{
    const json column = CheckedExample("column.csv", "--simple-column");
    EXPECT_TRUE(Evaluated(column).count("4.7.7"));
    EXPECT_FALSE(Evaluated(CheckedExample("column.csv", "")).count("4.7.7"));
}

// The longer the bearing, the more the web carries.
TEST(MemberOptionsOfTheCommandLine, WebBearingIsEvaluatedWithABearingLength)
{
    const json beam = CheckedExample("floor_beam.csv", "--bearing 0.05");
    EXPECT_TRUE(Evaluated(beam).count("4.5.2"));
    EXPECT_TRUE(Evaluated(beam).count("4.5.3"));
    const json longer = CheckedExample("floor_beam.csv", "--bearing 0.1");
    const auto bearing = [](const json& member) {
        for (const json& check : member["checks"])
            if (check["clause"] == "4.5.2") return check["utilisation"].get<double>();
        return 0.0;
    };
    EXPECT_GT(bearing(beam), bearing(longer));
    EXPECT_GT(bearing(longer), 0.0);
    EXPECT_FALSE(Evaluated(CheckedExample("floor_beam.csv", "")).count("4.5.2"));
}

// A length in mm would be a bearing of 100 m that passes everywhere.
TEST(MemberOptionsOfTheCommandLine, LengthsOutOfRangeAreBadUsage)
{
    for (const char* option : {"--bearing 100", "--bearing 0", "--bearing nan", "--bearing -0.1", "--stiffeners 1500",
                               "--stiffeners 0", "--connection glue"})
        EXPECT_EQ(RunKsteel(std::string("check ") + option + " '" KSTEEL_SOURCE_DIR "/examples/floor_beam.csv'").code,
                  3)
            << option;
}

TEST(CheckCommand, AGradeThatTheCodeDoesNotKnowIsBadInput)
{
    const TestDirectory directory;
    const auto result = RunKsteel("check '" + directory.Write("a.csv", Replaced(GOOD_MEMBER, "S275", "S999")) + "'");
    EXPECT_EQ(result.code, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("a.csv:4: GRADE: got \"S999\", expected S275, S355, S460 or User_defined"));
}

TEST(CheckCommand, ASectionThatTheCodeDoesNotCoverIsBadInput)
{
    const TestDirectory directory;
    const auto result =
        RunKsteel("check '" + directory.Write("a.csv", Replaced(GOOD_MEMBER, "UB 457x191x67", "XX 1")) + "'");
    EXPECT_EQ(result.code, 2) << result;
    EXPECT_EQ(result.out, "");
}

TEST(CheckCommand, ReportsAreOfFourKinds)
{
    EXPECT_THAT(RunKsteel("check --report verbose examples/floor_beam.csv").out, HasSubstr("Checks along member:"));
    EXPECT_THAT(RunKsteel("check --report brief examples/floor_beam.csv").out, HasSubstr("Checks critical sub_spans:"));
    const auto summary = RunKsteel("check --report summary examples/floor_beam.csv");
    EXPECT_THAT(summary.out, HasSubstr("UtilOverAll"));
    EXPECT_THAT(summary.out, ::testing::Not(HasSubstr("Input Data")));
}

TEST(CheckCommand, TheTableListsTheWorstFirst)
{
    const TestDirectory directory;
    const std::string file = directory.Write("two.csv", GOOD_MEMBER + Replaced(OVERLOADED, "Floor beam", "Overloaded"));
    const auto table = RunKsteel("check --report table '" + file + "'");
    EXPECT_EQ(table.code, 1) << table;
    EXPECT_LT(table.out.find("Overloaded"), table.out.find("Floor beam"));
    EXPECT_THAT(table.out, HasSubstr("two.csv:19"));
}

TEST(CheckCommand, TheJsonHasEveryMemberOfTheReport)
{
    const auto result = RunKsteel("check --format json examples/floor_beam.csv");
    EXPECT_EQ(result.code, 0) << result;
    const json list = json::parse(result.out);
    ASSERT_EQ(list.size(), 1u);
    const json& member = list[0];
    std::set<std::string> names;
    for (const auto& [name, value] : member.items())
        names.insert(name);
    EXPECT_THAT(names,
                ElementsAre("annex", "assumptions", "checks", "class", "code", "design_strength", "effective_lengths",
                            "file", "flags", "governing", "grade", "line", "moments", "overall", "resistances",
                            "schema", "section", "status", "title", "utilisation", "warnings"));
    EXPECT_EQ(member["status"], "pass");
    EXPECT_EQ(member["class"], 1);
    EXPECT_EQ(member["design_strength"], 275e6);
    EXPECT_EQ(member["overall"], member["governing"]["utilisation"]);
    EXPECT_EQ(member["resistances"]["Mcx"], member["governing"]["resistance"]);
    EXPECT_EQ(member["governing"]["quantity"], "moment");
    // The list has every resistance of the names beside it, and nothing else.
    const json& listed = member["resistances"]["list"];
    const json& spans = member["resistances"]["spans"];
    ASSERT_EQ(listed.size(), 6 + spans.size());
    for (std::size_t i = 0; i < listed.size(); ++i) {
        const std::string symbol = listed[i]["symbol"];
        const json& source = i < 6 ? member["resistances"] : spans[i - 6];
        EXPECT_EQ(listed[i]["value"], source[symbol]) << symbol;
        EXPECT_EQ(listed[i]["quantity"], symbol[0] == 'M' ? "moment" : "force") << symbol;
        EXPECT_EQ(listed[i]["start"], i < 6 ? json() : source["start"]);
        EXPECT_EQ(listed[i]["end"], i < 6 ? json() : source["end"]);
    }
    // The largest of all local and buckling utilisations is the overall one.
    double largest = member["utilisation"]["buckling"]["combined"];
    for (const json& position : member["utilisation"]["local"])
        largest = std::max(largest, position["combined"].get<double>());
    EXPECT_EQ(member["overall"], largest);
    int governing = 0;
    for (const json& check : member["checks"]) {
        governing += check["governing"].get<bool>() ? 1 : 0;
        EXPECT_THAT((std::set<std::string>{"passed", "failed", "not applicable", "not evaluated", "outside the input"}),
                    ::testing::Contains(check["status"].get<std::string>()));
    }
    EXPECT_EQ(governing, 1);
    std::set<std::string> symbols;
    for (const json& span : member["resistances"]["spans"])
        for (const auto& [name, value] : span.items())
            symbols.insert(name);
    EXPECT_THAT(symbols, ElementsAre("Mb", "Pcx", "Pcy", "end", "start"));
}

TEST(CheckCommand, AnEnvelopeIsOneMemberWithTheWorstOfItsCases)
{
    const TestDirectory directory;
    const std::string a = directory.Write("a.csv", GOOD_MEMBER);
    const std::string b = directory.Write("b.csv", OVERLOADED);
    for (const std::string& files : {a + "' '" + b, b + "' '" + a}) {
        const auto result = RunKsteel("check --envelope --format json '" + files + "'");
        EXPECT_EQ(result.code, 1) << result;
        const json list = json::parse(result.out);
        ASSERT_EQ(list.size(), 1u);
        EXPECT_EQ(list[0]["status"], "fail");
        EXPECT_EQ(list[0]["file"], b) << "the case that governs";
    }
    const std::string other = directory.Write("c.csv", Replaced(GOOD_MEMBER, "UB 457x191x67", "UB 406x178x74"));
    const auto mixed = RunKsteel("check --envelope '" + a + "' '" + other + "'");
    EXPECT_EQ(mixed.code, 2) << mixed;
    EXPECT_THAT(mixed.err, HasSubstr("is no load case of the member in"));
    EXPECT_EQ(RunKsteel("check --envelope '" + a + "' missing.csv").code, 2);
}

// A pinned beam of 6 m in one sub-span.
std::string OneSubSpan(const std::string& forces, double length = 6.0)
{
    std::ostringstream text;
    text << "TITLE,Beam\nSECTION,UB 457x191x67,ROLLED\nGRADE,S275\nNET_TO_GROSS,1\n"
            "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\nSHEAR_LAG_FACTOR,0.7\nEFFECTIVE_LENGTH_OVERRIDES,NO\nHEADINGS\n"
            "MEMBERPOINT,1,0,Pinned,0\nMEMBERPOINT,2,"
         << length << ",Pinned,0\nSUBSPAN,1," << forces << ",Free,0\nEND\n";
    return text.str();
}
const std::string UNIFORM = "0,0,-60000,0,0,60000,0,0,0,0,0,0";       // 20 kN/m: 90 kN·m sagging
const std::string END_MOMENT = "0,0,10000,0,0,10000,0,0,0,0,60000,0"; // 60 kN·m at the right end

// Shear that passes zero at different places is a matter of the load case.
TEST(CheckCommand, LoadCasesMergeWhereverTheirShearPassesZero)
{
    const TestDirectory directory;
    const std::string a = directory.Write("a.csv", OneSubSpan(UNIFORM));
    const std::string b = directory.Write("b.csv", OneSubSpan(END_MOMENT));
    // wL²/8 with w = 20 kN/m at mid-span, and 150 kN of end shears with 45 kN·m at the right end: zero shear off the middle.
    const std::string c = directory.Write("c.csv", OneSubSpan("0,0,-52500,0,0,67500,0,0,0,0,45000,0"));
    const auto result = RunKsteel("check --envelope --format json '" + a + "' '" + b + "' '" + c + "'");
    ASSERT_EQ(result.code, 0) << result;
    const json merged = json::parse(result.out)[0];
    const json single = json::parse(RunKsteel("check --format json '" + a + "' '" + b + "' '" + c + "'").out);
    double largest = 0.0;
    for (const json& one : single) {
        largest = std::max(largest, one["overall"].get<double>());
        // Every row of every case is in the envelope, or something larger in its place.
        for (const json& row : one["utilisation"]["local"]) {
            bool isCovered = false;
            for (const json& other : merged["utilisation"]["local"])
                isCovered = isCovered ||
                            (other["position"] == row["position"] && other["place"] == row["place"] &&
                             other["combined"] >= row["combined"] && other["moment_major"] >= row["moment_major"] &&
                             other["shear_major"] >= row["shear_major"]);
            EXPECT_TRUE(isCovered) << row;
        }
    }
    EXPECT_EQ(merged["overall"], largest);
    EXPECT_EQ(merged["moments"]["major"]["least"], -90000.0);
    EXPECT_EQ(merged["moments"]["major"]["greatest"], 60000.0);
}

TEST(CheckCommand, AnEnvelopeOfDifferentMembersIsRefusedWithTheDifference)
{
    const TestDirectory directory;
    const std::string good = OneSubSpan(UNIFORM);
    const std::string a = directory.Write("a.csv", good);
    const auto refusal = [&](const std::string& other) {
        const auto result = RunKsteel("check --envelope '" + a + "' '" + directory.Write("b.csv", other) + "'");
        EXPECT_EQ(result.code, 2) << result;
        return result.err;
    };
    EXPECT_THAT(refusal(OneSubSpan("0,0,-60000,0,0,60000,0,0,0,0,0,0", 12.0)), HasSubstr("point 2 at 12 m, not 6 m"));
    EXPECT_THAT(refusal(Replaced(good, "S275", "S355")), HasSubstr("grade S355, not S275"));
    EXPECT_THAT(refusal(Replaced(good, "ROLLED", "WELDED")), HasSubstr("section type WELDED, not ROLLED"));
    EXPECT_THAT(refusal(Replaced(good, "NET_TO_GROSS,1", "NET_TO_GROSS,0.9")),
                HasSubstr("net to gross ratio 0.9, not 1"));
    EXPECT_THAT(refusal(Replaced(good, "RATIO,1.2", "RATIO,1.5")),
                HasSubstr("allowable plastic to elastic ratio 1.5, not 1.2"));
    EXPECT_THAT(refusal(Replaced(good, "OVERRIDES,NO", "OVERRIDES,YES,6,6,3")),
                HasSubstr("effective lengths 6 m, 6 m and 3 m, not by the restraints"));
    EXPECT_THAT(refusal(Replaced(good, "OVERRIDES,NO\n", "OVERRIDES,NO\nEQUIVALENT_UNIFORM_MOMENT_FACTOR,0.9\n")),
                HasSubstr("equivalent uniform moment factor 0.9, not as computed"));
    EXPECT_THAT(refusal(Replaced(good, "2,6,Pinned", "2,6,Fixed")),
                HasSubstr("restraint of point 2 Fixed, not Pinned"));
    EXPECT_THAT(refusal(Replaced(good, ",Free,0\nEND", ",Top flange lateral,0\nEND")),
                HasSubstr("restraint of sub-span 1 Top flange lateral, not Free"));
    // The height of its load belongs to a load case.
    const auto result = RunKsteel("check --envelope '" + a + "' '" +
                                  directory.Write("b.csv", Replaced(good, ",Free,0\nEND", ",Free,0.2\nEND")) + "'");
    EXPECT_EQ(result.code, 0) << result;
}

TEST(CheckCommand, TheTableSaysOnceThatARuleWasNotEvaluated)
{
    const TestDirectory directory;
    const auto tableOf = [&](const std::string& forces) {
        return RunKsteel("check --report table '" + directory.Write("a.csv", OneSubSpan(forces)) + "'").out;
    };
    // 50 kN·m of torsion, for which there is no rule.
    const std::string twisted = tableOf("0,0,-60000,0,0,60000,50000,0,0,50000,0,0");
    EXPECT_THAT(twisted, HasSubstr("not checked  "));
    EXPECT_THAT(twisted, ::testing::Not(HasSubstr("NOT CHECKED")));
    EXPECT_THAT(tableOf("0,0,-6e6,0,0,6e6,50000,0,0,50000,0,0"), HasSubstr("fail, NOT CHECKED"));
}

TEST(CheckCommand, ALargeUtilisationIsNotedAndOneWithoutARowIsNot)
{
    const TestDirectory directory;
    const auto messages = [&](const std::string& text) {
        return RunKsteel("check --report table '" + directory.Write("a.csv", text) + "'").err;
    };
    EXPECT_THAT(messages(OneSubSpan("0,0,-60e6,0,0,60e6,0,0,0,0,0,0")), HasSubstr("are positions in mm"));
    // Nothing holds the member: its effective length is infinite, whatever the units are.
    const std::string free = messages(Replaced(Replaced(OneSubSpan(UNIFORM), "Pinned", "Free"), "Pinned", "Free"));
    EXPECT_THAT(free, HasSubstr("note: MEMBERPOINT"));
    EXPECT_THAT(free, ::testing::Not(HasSubstr("are positions in mm")));
}

// What the design code rejects is said in the same words, with its line, by everything that asks the code.
struct RejectedRow {
    const char* from;
    const char* to;
    const char* message;
};

TEST(Rejected, MembersHaveTheSameMessageInCheckValidateDesignAndReport)
{
    const RejectedRow rows[] = {
        {"GRADE,S275", "GRADE,S235", "a.csv:3: GRADE: got \"S235\", expected S275, S355, S460 or User_defined"},
        {"GRADE,S275", "GRADE,43A", "a.csv:3: GRADE: got \"43A\", expected S275, S355, S460 or User_defined"},
        {"GRADE,S275", "GRADE,User_defined,300e6,0,0,0",
         "a.csv:3: GRADE: the user-defined grade's material factor must be finite and above 0"},
        {"GRADE,S275", "GRADE,User_defined,300e6,-1,0,1",
         "a.csv:3: GRADE: the user-defined grade's tensile strength must be finite and not below 0"},
        {"GRADE,S275", "GRADE,User_defined,300e6,0,-1,1",
         "a.csv:3: GRADE: the user-defined grade's modulus must be finite and not below 0"},
        {"GRADE,S275", "GRADE,User_defined,0,0,0,1", "a.csv:3: GRADE: the user-defined grade gives no yield strength"},
        {"NET_TO_GROSS,1", "NET_TO_GROSS,0", "a.csv:4: NET_TO_GROSS: the net to gross area ratio"},
        {"RATIO,1.2", "RATIO,0.5", "a.csv:5: ALLOWABLE_PLASTIC/ELASTIC_RATIO: the allowable plastic to elastic ratio"},
        {"OVERRIDES,NO\n", "OVERRIDES,NO\nEQUIVALENT_UNIFORM_MOMENT_FACTOR,-1\n",
         "a.csv:8: EQUIVALENT_UNIFORM_MOMENT_FACTOR: the equivalent uniform moment factor"}};
    const TestDirectory directory;
    for (const RejectedRow& row : rows) {
        const std::string file = directory.Write("a.csv", Replaced(OneSubSpan(UNIFORM), row.from, row.to));
        for (const char* command : {"check", "check --report table", "design --family UB", "report -o -"}) {
            const auto result = RunKsteel(command + (" '" + file + "'"));
            EXPECT_EQ(result.code, 2) << command << row.to << result;
            EXPECT_THAT(result.err, HasSubstr(row.message)) << command << " " << row.to;
        }
        EXPECT_EQ(RunKsteel("validate '" + file + "'").code, 0) << "the format has no codes";
        const auto result = RunKsteel("validate --code BS5950 '" + file + "'");
        EXPECT_EQ(result.code, 2) << row.to << result;
        EXPECT_THAT(result.out, HasSubstr(row.message)) << row.to;
        const json defects = json::parse(RunKsteel("validate --code bs5950 --format json '" + file + "'").out)[0];
        EXPECT_EQ(defects["errors"], 1) << row.to;
    }
    const std::string good = directory.Write("a.csv", OneSubSpan(UNIFORM));
    EXPECT_EQ(RunKsteel("validate --code BS5950 '" + good + "'").code, 0);
}

// Warnings reach everything that says something of the member.
TEST(Warnings, OfTheDesignCodeStandInEveryOutput)
{
    const TestDirectory directory;
    std::string text = OneSubSpan("0,0,-60000,0,0,60000,0,0,0,0,0,0");
    const std::string none = "EFFECTIVE_LENGTH_OVERRIDES,NO";
    text.replace(text.find(none), none.size(), "EFFECTIVE_LENGTH_OVERRIDES,YES,6,6,1");
    const std::string file = directory.Write("a.csv", text);
    const std::string said =
        "is checked by Tables 13, 14 and 18 and not by the elastic critical moment that the options ask for: "
        "the effective length is given";
    const std::string options = " --ltb elastic '" + file + "'";
    for (const char* command : {"check", "check --report summary", "check --report table --format jsonl", "report -o -",
                                "check --format json"}) {
        const Trial::RunResult result = RunKsteel(command + options);
        EXPECT_EQ(result.code, 0) << command;
        EXPECT_THAT(result.err, HasSubstr("a.csv:1: warning: lateral-torsional buckling " + said)) << command;
        EXPECT_THAT(result.out, HasSubstr(said)) << command;
    }
    EXPECT_THAT(RunKsteel("check --report table" + options).out, HasSubstr("pass, 1 warning"));
    const json output = json::parse(RunKsteel("check --format json" + options).out)[0];
    ASSERT_EQ(output["warnings"].size(), 1u);
    EXPECT_EQ(output["warnings"][0]["code"], "other-method");
    const Trial::RunResult strict = RunKsteel("check --strict" + options);
    EXPECT_EQ(strict.code, 2);
    EXPECT_THAT(strict.err, HasSubstr(said));
    EXPECT_EQ(RunKsteel("check '" + file + "'").err, "") << "nothing to warn of without the option";
}

TEST(Warnings, OfUnbalancedForcesStandInEveryOutput)
{
    const TestDirectory directory;
    // An end moment of 5 kN·m that the shears do not ask for.
    const std::string file = directory.Write("a.csv", OneSubSpan("0,0,-60000,0,0,60000,0,0,0,0,-5000,0"));
    const std::string said =
        "forces do not balance in sub-span 1 (0 m to 6 m), Myy: by the shears the moment changes by 0 kNm, by "
        "the end moments by -5 kNm.";
    const auto expectTold = [&](const Trial::RunResult& result) {
        EXPECT_THAT(result.err, HasSubstr("a.csv:11: warning: SUBSPAN: " + said));
        return result.out;
    };
    for (const char* report : {"brief", "verbose", "summary"}) {
        const std::string out = expectTold(RunKsteel("check --report " + std::string(report) + " '" + file + "'"));
        EXPECT_THAT(out, HasSubstr("in S275: pass, 1 warning, utilisation")) << report;
        EXPECT_THAT(out, HasSubstr("warning, " + file + ":11: SUBSPAN: " + said)) << report;
    }
    EXPECT_THAT(expectTold(RunKsteel("check --report table '" + file + "'")), HasSubstr("pass, 1 warning"));
    EXPECT_THAT(expectTold(RunKsteel("show '" + file + "'")), HasSubstr(said));
    EXPECT_THAT(expectTold(RunKsteel("spans '" + file + "'")), HasSubstr(said));
    const std::string design = expectTold(RunKsteel("design --family UB '" + file + "'"));
    EXPECT_THAT(design, HasSubstr("is the lightest section that passes, 1 warning"));
    EXPECT_THAT(design, HasSubstr(said));
    EXPECT_THAT(RunKsteel("validate '" + file + "'").out, HasSubstr(said));
    for (const char* command : {"check --format json", "check --format jsonl", "check --format jsonl --report table",
                                "design --family UB --format json", "spans --format json", "validate --format json"}) {
        json output = json::parse(RunKsteel(command + (" '" + file + "'")).out);
        if (output.is_array()) output = output[0];
        ASSERT_EQ(output["warnings"].size(), 1u) << command;
        EXPECT_EQ(output["warnings"][0]["code"], "unbalanced") << command;
        EXPECT_EQ(output["warnings"][0]["severity"], "warning") << command;
        EXPECT_EQ(output["warnings"][0]["line"], 11) << command;
        EXPECT_THAT(output["warnings"][0]["text"].get<std::string>(), HasSubstr(said)) << command;
    }
    const std::string html = expectTold(RunKsteel("report -o - '" + file + "'"));
    EXPECT_THAT(html, HasSubstr("<div class=\"warnings\""));
    EXPECT_LT(html.find("<div class=\"warnings\""), html.find("<h3"));
}

TEST(Warnings, AreErrorsWhereReadingIsStrict)
{
    const TestDirectory directory;
    const std::string file = directory.Write("a.csv", OneSubSpan("0,0,-60000,0,0,60000,0,0,0,0,-5000,0"));
    for (const char* command : {"check", "check --report table", "check --format jsonl", "check --envelope",
                                "design --family UB", "spans", "show", "validate", "report -o -"}) {
        EXPECT_LE(RunKsteel(command + (" '" + file + "'")).code, 1) << command;
        const auto result = RunKsteel(command + (" --strict '" + file + "'"));
        EXPECT_EQ(result.code, 2) << command << result;
    }
    // Notes stay notes: a pinned beam under 600 N.
    const std::string light = directory.Write("b.csv", OneSubSpan("0,0,-60,0,0,60,0,0,0,0,0,0"));
    const auto noted = RunKsteel("check --strict '" + light + "'");
    EXPECT_EQ(noted.code, 0) << noted;
    EXPECT_THAT(noted.out, HasSubstr("pass, 1 note, utilisation"));
}

TEST(Warnings, OfAllCasesStandInAnEnvelope)
{
    const TestDirectory directory;
    const std::string a = directory.Write("a.csv", OneSubSpan(UNIFORM));
    const std::string b = directory.Write("b.csv", OneSubSpan("0,0,-6000,0,0,6000,0,0,0,0,-500,0"));
    const json merged = json::parse(RunKsteel("check --envelope --format json '" + a + "' '" + b + "'").out)[0];
    EXPECT_EQ(merged["file"], a);
    ASSERT_EQ(merged["warnings"].size(), 1u);
    EXPECT_EQ(merged["warnings"][0]["file"], b);
}

TEST(DesignCommand, TheLightestSectionThatPassesIsFound)
{
    const auto result = RunKsteel("design --family UB --format json examples/floor_beam.csv");
    EXPECT_EQ(result.code, 0) << result;
    const json member = json::parse(result.out)[0];
    EXPECT_EQ(member["chosen"], member["passing"][0]["section"]);
    EXPECT_EQ(member["passing"].size(), 6u);
    const double mass = member["passing"][0]["mass_per_metre"];
    for (const json& section : member["passing"]) {
        EXPECT_LT(section["overall"].get<double>(), 1.0);
        EXPECT_GE(section["mass_per_metre"].get<double>(), mass);
    }
    for (const json& section : member["lighter_failing"]) {
        EXPECT_GE(section["overall"].get<double>(), 1.0);
        EXPECT_LE(section["mass_per_metre"].get<double>(), mass);
    }
}

TEST(DesignCommand, EachLighterSectionFailsByItself)
{
    // The choice against single checks of the same member with every lighter section of the family.
    const json chosen = json::parse(RunKsteel("design --family UB --format json examples/floor_beam.csv").out)[0];
    const json all = json::parse(RunKsteel("sections --family UB --sort mass --format json").out);
    const std::string text = Trial::ReadWhole(KSTEEL_SOURCE_DIR "/examples/floor_beam.csv");
    const TestDirectory directory;
    std::string members;
    int lighter = 0;
    for (const json& section : all) {
        if (section["name"] == chosen["chosen"]) break;
        members += Replaced(text, "UB 457x191x67", section["name"]);
        ++lighter;
    }
    ASSERT_GT(lighter, 5);
    const json checks = json::parse(RunKsteel("check --format json '" + directory.Write("all.csv", members) + "'").out);
    ASSERT_EQ(checks.size(), static_cast<std::size_t>(lighter));
    for (const json& check : checks)
        EXPECT_EQ(check["status"], "fail") << check["section"];
}

// Of several families, and by depth: against single checks of every section that comes first.
TEST(DesignCommand, TheShallowestSectionOfSeveralFamiliesWithinADepth)
{
    const auto result = RunKsteel("design --family UB,UC --by depth --format json examples/floor_beam.csv");
    EXPECT_EQ(result.code, 0) << result;
    const json member = json::parse(result.out)[0];
    double depth = 0.0;
    for (const char* list : {"lighter_failing", "passing"})
        for (const json& section : member[list]) {
            EXPECT_GE(section["depth"].get<double>(), depth) << section;
            depth = section["depth"];
        }
    const double least = member["passing"][0]["depth"];
    json all = json::parse(RunKsteel("sections --family UB --format json").out);
    for (const json& section : json::parse(RunKsteel("sections --family UC --format json").out))
        all.push_back(section);
    const std::string text = Trial::ReadWhole(KSTEEL_SOURCE_DIR "/examples/floor_beam.csv");
    std::string members;
    std::size_t shallower = 0;
    for (const json& section : all) {
        if (section["D"].get<double>() >= least) continue;
        members += Replaced(text, "UB 457x191x67", section["name"]);
        ++shallower;
    }
    ASSERT_GT(shallower, 10u);
    const TestDirectory directory;
    const json checks = json::parse(RunKsteel("check --format json '" + directory.Write("all.csv", members) + "'").out);
    ASSERT_EQ(checks.size(), shallower);
    for (const json& check : checks)
        EXPECT_NE(check["status"], "pass") << check["section"];

    // Within a depth nothing deeper is tried, and the lightest comes first.
    const json within = json::parse(
        RunKsteel("design --family UB --family UC --max-depth 350 --format json examples/floor_beam.csv").out)[0];
    for (const char* list : {"lighter_failing", "passing"})
        for (const json& section : within[list])
            EXPECT_LE(section["depth"].get<double>(), 0.350) << section;
    EXPECT_LE(within["passing"][0]["mass_per_metre"], within["passing"][1]["mass_per_metre"]);
    const auto table = RunKsteel("design --family UC --by depth examples/floor_beam.csv");
    EXPECT_THAT(table.out, HasSubstr("is the shallowest section that passes"));
    EXPECT_THAT(table.out, HasSubstr("mm  Utilisation"));
    const auto none = RunKsteel("design --family UB --max-depth 50 examples/floor_beam.csv");
    EXPECT_EQ(none.code, 1) << none;
    EXPECT_THAT(none.out, HasSubstr("no section of the family is within the depth"));
    for (const char* bad : {"--max-depth 0", "--max-depth -3", "--max-depth nan", "--by price", "--family UB,XYZ"})
        EXPECT_GE(RunKsteel(std::string("design --family UB examples/floor_beam.csv ") + bad).code, 2) << bad;
}

// The section of an envelope passes in every case, and is that of the case that needs the most.
TEST(DesignCommand, LoadCasesOfOneMember)
{
    const TestDirectory directory;
    const std::string heavy = Trial::ReadWhole(KSTEEL_SOURCE_DIR "/examples/column.csv");
    const std::string light = directory.Write("light.csv", WithHalfTheForce(heavy));
    const std::string files = "'" + light + "' examples/column.csv";
    const json both = json::parse(RunKsteel("design --envelope --family UC --format json " + files).out);
    ASSERT_EQ(both.size(), 1u);
    const json alone = json::parse(RunKsteel("design --family UC --format json examples/column.csv").out)[0];
    EXPECT_EQ(both[0]["chosen"], alone["chosen"]);
    EXPECT_EQ(both[0]["passing"][0]["overall"], alone["passing"][0]["overall"]);
    EXPECT_THAT(both[0]["passing"][0]["governing"].get<std::string>(), HasSubstr("in examples/column.csv"));
    const std::string checked = Replaced(heavy, "UC 254x254x89", both[0]["chosen"]);
    const json envelope = json::parse(RunKsteel("check --envelope --format json '" + directory.Write("a.csv", checked) +
                                                "' '" + directory.Write("b.csv", WithHalfTheForce(checked)) + "'")
                                          .out)[0];
    EXPECT_EQ(envelope["overall"], both[0]["passing"][0]["overall"]);

    const auto stranger = RunKsteel("design --envelope --family UC examples/column.csv examples/tie.csv");
    EXPECT_EQ(stranger.code, 2) << stranger;
    EXPECT_THAT(stranger.err, HasSubstr("is no load case of the member in"));
    EXPECT_EQ(stranger.out, "");
    EXPECT_EQ(RunKsteel("design --envelope --family UC examples/column.csv missing.csv").code, 2);
}

TEST(ReportCommand, LoadCasesOfOneMember)
{
    const TestDirectory directory;
    const std::string heavy = Trial::ReadWhole(KSTEEL_SOURCE_DIR "/examples/column.csv");
    const std::string light = directory.Write("light.csv", WithHalfTheForce(heavy));
    const auto sheet = RunKsteel("report --envelope -o - '" + light + "' examples/column.csv");
    EXPECT_EQ(sheet.code, 0) << sheet.err;
    // One sheet, with the utilisation of the envelope, and the case in which it was found.
    const json envelope =
        json::parse(RunKsteel("check --envelope --format json '" + light + "' examples/column.csv").out)[0];
    EXPECT_NEAR(envelope["overall"].get<double>(), 0.759, 0.0005);
    EXPECT_THAT(sheet.out, HasSubstr("utilisation <b>0.759</b>"));
    EXPECT_THAT(sheet.out, HasSubstr("Of the combination <bdi>examples/column.csv</bdi>"));
    EXPECT_THAT(sheet.out, HasSubstr("light.csv"));
    const auto stranger =
        RunKsteel("report --envelope -o '" + directory.Path("none.html") + "' examples/column.csv examples/tie.csv");
    EXPECT_EQ(stranger.code, 2) << stranger;
    EXPECT_FALSE(std::filesystem::exists(directory.Path("none.html")));
    EXPECT_EQ(RunKsteel("report --envelope --combinations -o - examples/column.csv").code, 3);
    EXPECT_EQ(RunKsteel("report --envelope -o - examples/column.csv missing.csv").out, "");
}

TEST(DesignCommand, WhereNothingPassesTheCodeIsOne)
{
    const TestDirectory directory;
    std::string text = Replaced(OVERLOADED, "-1500000", "-150000000");
    const auto result = RunKsteel("design --family PFC '" + directory.Write("a.csv", text) + "'");
    EXPECT_EQ(result.code, 1) << result;
    EXPECT_THAT(result.out, HasSubstr("no section of the family passes"));
    EXPECT_EQ(RunKsteel("design --family XYZ examples/floor_beam.csv").code, 2);
    EXPECT_EQ(RunKsteel("design examples/floor_beam.csv").code, 3);
    EXPECT_EQ(RunKsteel("design --family UB --count 0 examples/floor_beam.csv").code, 3);
}

TEST(CapacityCommand, TheTableHasARowForEachLength)
{
    const auto result = RunKsteel("capacity 'UB 457x191x67' --grade S275 --LE 2:4 --format json");
    EXPECT_EQ(result.code, 0) << result;
    const json list = json::parse(result.out);
    ASSERT_EQ(list.size(), 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(list[i]["LE"], 2.0 + i);
        // 275 N/mm² on 1471 cm³, below 1.2 py Zx
        EXPECT_NEAR(list[i]["Mcx"].get<double>(), 275e6 * 1471e-6, 200.0);
        EXPECT_LE(list[i]["Mb"], list[i]["Mcx"]);
        EXPECT_EQ(list[i]["Mrx"].size(), 11u);
    }
    EXPECT_GT(list[0]["Mb"], list[2]["Mb"]);
    EXPECT_GT(list[0]["Pcy"], list[2]["Pcy"]);
    const auto table = RunKsteel("capacity 'UB 457x191x67' --LE 2:4");
    EXPECT_THAT(table.out, HasSubstr("F/(A py)   0.0   0.1"));
    EXPECT_THAT(table.out, HasSubstr("LE   Pcx"));
}

TEST(CapacityCommand, LengthsAreARangeOrAList)
{
    EXPECT_THAT(EffectiveLengthList("1:4"), ElementsAre(1.0, 2.0, 3.0, 4.0));
    EXPECT_THAT(EffectiveLengthList("1:2:0.5"), ElementsAre(1.0, 1.5, 2.0));
    EXPECT_EQ(EffectiveLengthList("1:2:0.1").size(), 11u); // decimal steps reach the end
    EXPECT_THAT(EffectiveLengthList("3"), ElementsAre(3.0));
    EXPECT_THAT(EffectiveLengthList("2,4.5,6"), ElementsAre(2.0, 4.5, 6.0));
    for (const char* text : {"", "0", "-1", "x", "1:", "4:1", "1:2:3:4", "1,,2", "1:1e9", "nan", "inf", "1 2", "1:2:0"})
        EXPECT_THROW(EffectiveLengthList(text), BadUsage) << text;
}

// Plate girder 800x300, web 12, flanges 20, S275 (py 265), LE = 6 m: welded Mb = 924 kNm, rolled 1080 kNm.
TEST(CapacityCommand, SaysHowTheSectionIsMadeAndCountsWithIt)
{
    const auto Mb = [](const std::string& arguments) {
        const auto result = RunKsteel("capacity --format json --LE 6 " + arguments);
        EXPECT_EQ(result.code, 0) << result;
        return json::parse(result.out).at(0);
    };
    const json assumed = Mb("'I 800x300x12x20'");
    EXPECT_NEAR(assumed["Mb"].get<double>(), 924e3, 1e3);
    EXPECT_EQ(assumed["type"], "welded");
    EXPECT_THAT(assumed["type_note"].get<std::string>(), HasSubstr("taken as welded"));
    const json welded = Mb("'I 800x300x12x20' --type welded");
    EXPECT_EQ(welded["Mb"], assumed["Mb"]);
    EXPECT_TRUE(welded["type_note"].is_null());
    const json rolled = Mb("'I 800x300x12x20' --type rolled");
    EXPECT_NEAR(rolled["Mb"].get<double>(), 1080e3, 5e3); // half a unit of the third figure
    EXPECT_EQ(rolled["type"], "rolled");
    const json contradicted = Mb("'CFRHS 200x100x5' --type rolled");
    EXPECT_EQ(contradicted["type"], "formed");
    EXPECT_THAT(contradicted["type_note"].get<std::string>(), HasSubstr("less favourable"));
    EXPECT_TRUE(Mb("'CFRHS 200x100x5'")["type_note"].is_null());
    EXPECT_THAT(RunKsteel("capacity 'I 800x300x12x20'").out, HasSubstr("taken as welded"));
    EXPECT_EQ(RunKsteel("capacity 'I 800x300x12x20' --type cast").code, 3);
}

// What capacity tables and what check finds are the same figures, for every shape and every way to make it.
TEST(CapacityCommand, AgreesWithTheCheckOfAMember)
{
    struct Row {
        const char* section;
        const char* type;
    };
    constexpr Row ROWS[] = {
        {"UB 457x191x67", "ROLLED"},     {"UB 457x191x67", "UNDEF"},    {"UB 457x191x67", "WELDED"},
        {"I 800x350x8x14", "UNDEF"},     {"I 800x350x8x14", "ROLLED"},  {"GI 600x300x200x12x20x15", "UNDEF"},
        {"CFRHS 200x100x5", "UNDEF"},    {"CFRHS 200x100x5", "ROLLED"}, {"BOX 400x300x8x10", "UNDEF"},
        {"BOX 400x300x10x10", "FORMED"}, {"PFC 300x90x41", "UNDEF"},    {"T 191x229x34", "UNDEF"},
        {"TUBE 300x8", "UNDEF"},         {"CFCHS 168.3x5", "ROLLED"}};
    const Trial::TestDirectory directory;
    for (const Row& row : ROWS) {
        const std::string type = row.type;
        const std::string file = std::string("TITLE,agreement\nHEADINGS,a,b\nSECTION,") + row.section + ',' + type +
                                 "\nGRADE,S275\nNET_TO_GROSS,1.0\nALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\n"
                                 "SHEAR_LAG_FACTOR,0.7\nHEADINGS,YES/NO,a,b,c\nEFFECTIVE_LENGTH_OVERRIDES,NO\n"
                                 "HEADINGS,a\nMEMBERPOINT,1,0.0,Pinned,0.0\nMEMBERPOINT,2,6.0,Pinned,0.0\nHEADINGS,a\n"
                                 "SUBSPAN,1,0,0,0,0,0,0,0,-5000,0,0,-5000,0,Free,0.0\nEND\n";
        const auto checked = RunKsteel("check --format json '" + directory.Write("member.csv", file) + "'");
        const json member = json::parse(checked.out).at(0);
        const std::string option = type == "UNDEF"    ? ""
                                   : type == "ROLLED" ? " --type rolled"
                                   : type == "WELDED" ? " --type welded"
                                                      : " --type formed";
        const auto table = RunKsteel("capacity --format json --LE 6 '" + std::string(row.section) + "'" + option);
        const json capacity = json::parse(table.out).at(0);
        const json& found = member["resistances"];
        for (const char* symbol : {"Pt", "Pvx", "Pvy", "Mcx"})
            EXPECT_NEAR(found[symbol].get<double>(), capacity[symbol].get<double>(),
                        1e-6 * capacity[symbol].get<double>())
                << row.section << ' ' << type << ' ' << symbol;
    }
}

TEST(CapacityCommand, BadNamesAndGradesAreBadInput)
{
    EXPECT_EQ(RunKsteel("capacity 'UB 1x1x1'").code, 2);
    EXPECT_EQ(RunKsteel("capacity 'UB 457x191x67' --grade S999").code, 2);
    EXPECT_EQ(RunKsteel("capacity 'UB 457x191x67' --LE x").code, 3);
}

// A section that is said to be welded is welded in every candidate: design offers none that check fails.
TEST(DesignCommand, WhatIsSaidToBeWeldedStaysWelded)
{
    const TestDirectory directory;
    const auto agrees = [&](const std::string& name, const std::string& text, const std::string& section) {
        const std::string file = directory.Write(name, text);
        const json best =
            json::parse(RunKsteel("design --family UB --format json '" + file + "' --count 1").out)[0]["passing"][0];
        const std::string chosen = directory.Write(name, Replaced(text, section, best["section"]));
        const json checked = json::parse(RunKsteel("check --format json '" + chosen + "'").out)[0];
        EXPECT_EQ(checked["status"], "pass") << name;
        EXPECT_DOUBLE_EQ(checked["overall"].get<double>(), best["overall"].get<double>()) << name;
        return best["section"].get<std::string>();
    };
    const std::string beam = Trial::ReadWhole(KSTEEL_SOURCE_DIR "/examples/floor_beam.toml");
    const std::string section = "UB 533x210x82";
    EXPECT_EQ(agrees("rolled.toml", beam, section), "UB 457x191x74");
    EXPECT_NE(agrees("welded.toml", Replaced(beam, "length", "type = \"welded\"\nlength"), section), "UB 457x191x74");
    const std::string member = Trial::ReadWhole(KSTEEL_SOURCE_DIR "/examples/floor_beam.csv");
    agrees("welded.csv", Replaced(member, "UB 457x191x67,ROLLED", "UB 457x191x67,WELDED"), "UB 457x191x67");
}

} // namespace
} // namespace Keltrix::App
