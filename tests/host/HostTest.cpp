#include "keltrix/host/Host.h"

#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Keltrix::Host {

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

// 5 m between forks under 10 kN at mid-span: 12.5 kNm.
const std::string BEAM = "TITLE,Beam\nHEADINGS,a\nSECTION,UB 457x191x67,ROLLED\nGRADE,S275\nNET_TO_GROSS,1\n"
                         "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2\nSHEAR_LAG_FACTOR,0.7\nHEADINGS,b\n"
                         "EFFECTIVE_LENGTH_OVERRIDES,NO\nEQUIVALENT_UNIFORM_MOMENT_FACTOR,1\nHEADINGS,c\n"
                         "MEMBERPOINT,1,0,Pinned,0\nMEMBERPOINT,2,2.5,Free,0\nMEMBERPOINT,3,5,Pinned,0\nHEADINGS,d\n"
                         "SUBSPAN,1,0,0,-5000,0,0,-5000,0,0,0,0,-12500,0,Free,0\n"
                         "SUBSPAN,2,0,0,5000,0,0,5000,0,-12500,0,0,0,0,Free,0\nEND\n";

std::string With(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t at = text.find(from);
    return text.replace(at, from.size(), to);
}

// What is said of settings that mean nothing.
std::string MessageOf(const Settings& settings)
{
    try {
        Check(BEAM, "a", settings);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return {};
}

} // namespace

TEST(HostCheck, GivesFindingsOfEachMember)
{
    const Outcomes outcomes = Check(BEAM + With(BEAM, "TITLE,Beam", "TITLE,Second") + BEAM, "beams.csv");
    ASSERT_EQ(outcomes.members.size(), 3U);
    EXPECT_TRUE(outcomes.Pass());
    EXPECT_TRUE(outcomes.diagnostics.empty());
    const Outcome& second = outcomes.members[1];
    EXPECT_EQ(second.title, "Second");
    EXPECT_EQ(second.line, 19);
    EXPECT_EQ(second.status, "pass");
    EXPECT_EQ(second.findings.status, Design::Status::Passed);
    ASSERT_NE(second.findings.Governing(), nullptr);
    EXPECT_DOUBLE_EQ(second.utilisation, second.findings.Governing()->utilisation);
    // Handbooks give Mb = 196 kNm at 5 m in S275; the file asks for a factor of 1.
    EXPECT_NEAR(second.utilisation, 12.5 / 196.0, 0.0002);
    EXPECT_EQ(second.governing, "lateral-torsional buckling (4.3.6), 0 m to 5 m");
}

TEST(HostCheck, ARefusedMemberKeepsNoneOfTheOthersAndDoesNotPass)
{
    const Outcomes outcomes = Check(With(BEAM, "2.5,Free", "2.5m,Free") + BEAM, "beams.csv");
    ASSERT_EQ(outcomes.members.size(), 2U);
    EXPECT_EQ(outcomes.members[0].status, "refused");
    ASSERT_FALSE(outcomes.members[0].diagnostics.empty());
    EXPECT_EQ(outcomes.members[0].diagnostics[0].severity, "error");
    EXPECT_EQ(outcomes.members[0].diagnostics[0].line, 13);
    EXPECT_THAT(outcomes.members[0].diagnostics[0].message, StartsWith("beams.csv:13: MEMBERPOINT position: got"));
    EXPECT_EQ(outcomes.members[1].status, "pass");
    EXPECT_FALSE(outcomes.Pass());
    EXPECT_THROW(FindingsJson(outcomes.members[0]), std::invalid_argument);
    EXPECT_THROW(Report(outcomes.members[0]), std::invalid_argument);
}

TEST(HostCheck, DiagnosticsHaveTheirParts)
{
    const Outcomes outcomes = Check(With(BEAM, "2.5,Free", "2.5m,Free"), "beams.csv");
    ASSERT_EQ(outcomes.members.size(), 1U);
    ASSERT_FALSE(outcomes.members[0].diagnostics.empty());
    const Diagnostic& error = outcomes.members[0].diagnostics[0];
    EXPECT_EQ(error.keyword, "MEMBERPOINT");
    EXPECT_EQ(error.field, "position");
    EXPECT_EQ(error.got, "\"2.5m\"");
    EXPECT_EQ(error.expected, "a number in m");
    EXPECT_EQ(error.advice, "write 2.5");
}

TEST(HostCheck, SheetsOfBeamsHaveTheirLoads)
{
    const std::string beam = "section = \"UB 457x191x67\"\ngrade = \"S275\"\nlength = 6.0\n[[load]]\nkind = "
                             "\"imposed\"\nudl = 5.0\n";
    const Outcomes outcomes = Check(beam, "beam.toml");
    ASSERT_EQ(outcomes.members.size(), 1U);
    ASSERT_TRUE(outcomes.members[0].loads);
    EXPECT_THAT(outcomes.members[0].loads("m1", false), HasSubstr("m1-loads"));
    EXPECT_THAT(Sheets(outcomes, "Job"), HasSubstr("-loads"));
    const Outcomes member = Check(BEAM, "beams.csv");
    EXPECT_FALSE(member.members.at(0).loads);
    EXPECT_THAT(Sheets(member, "Job"), testing::Not(HasSubstr("-loads")));
}

TEST(HostCheck, WhatTheDesignCodeRejectsHasItsLine)
{
    const Outcomes outcomes = Check(With(BEAM, "GRADE,S275", "GRADE,S111"), "beams.csv");
    ASSERT_EQ(outcomes.members.size(), 1U);
    EXPECT_EQ(outcomes.members[0].status, "refused");
    ASSERT_EQ(outcomes.members[0].diagnostics.size(), 1U);
    EXPECT_EQ(outcomes.members[0].diagnostics[0].line, 4);
    EXPECT_EQ(outcomes.members[0].diagnostics[0].code, "code-grade");
}

TEST(HostCheck, ATextThatIsNoneIsADiagnostic)
{
    for (const std::string& text : {std::string(), std::string("\xFF\xFE\0", 3), std::string("a\0b", 3)}) {
        const Outcomes outcomes = Check(text, "odd.csv");
        EXPECT_FALSE(outcomes.Pass());
        ASSERT_EQ(outcomes.diagnostics.size(), 1U);
        EXPECT_THAT(outcomes.diagnostics[0].message, StartsWith("odd.csv: "));
    }
    EXPECT_FALSE(Check("no member at all\n", "odd.csv").Pass());
}

TEST(HostCheck, StrictReadingMakesErrorsOfWarnings)
{
    const std::string text = With(BEAM, "MEMBERPOINT,1,0,Pinned,0\n", "MEMBERPOINT,1,0,Pinned,0,,\n");
    const Outcomes lenient = Check(text, "beams.csv");
    ASSERT_EQ(lenient.members.size(), 1U);
    EXPECT_EQ(lenient.members[0].status, "pass");
    ASSERT_FALSE(lenient.members[0].diagnostics.empty());
    EXPECT_EQ(lenient.members[0].diagnostics[0].severity, "warning");
    Settings strict;
    strict.isStrict = true;
    EXPECT_EQ(Check(text, "beams.csv", strict).members.at(0).status, "refused");
}

TEST(HostCheck, GapsAreThoseOfTheFirstNumberAndOfSubSpans)
{
    Settings gaps;
    gaps.allowGaps = true;
    EXPECT_EQ(Check(With(BEAM, "SUBSPAN,2", "SUBSPAN,7"), "a").members.at(0).status, "refused");
    EXPECT_EQ(Check(With(BEAM, "SUBSPAN,2", "SUBSPAN,7"), "a", gaps).members.at(0).status, "pass");
    EXPECT_EQ(Check(With(BEAM, "MEMBERPOINT,3", "MEMBERPOINT,7"), "a", gaps).members.at(0).status, "refused");
}

TEST(HostCheck, SettingsThatMeanNothingThrow)
{
    Settings settings;
    settings.code = "none-such";
    EXPECT_THROW(Check(BEAM, "a", settings), std::runtime_error);
    settings.code = "BS5950";
    EXPECT_NO_THROW(Check(BEAM, "a", settings));
    settings.annex = "xx";
    EXPECT_THROW(Check(BEAM, "a", settings), std::runtime_error);
    settings.annex.clear();
    settings.options = {{"none-such", ""}};
    EXPECT_THROW(Check(BEAM, "a", settings), std::runtime_error);
    settings.options = {{"simple-column", "yes"}};
    EXPECT_THROW(Check(BEAM, "a", settings), std::runtime_error);
    for (const char* const value : {"", "x", "-1", "1e9", "0.1m", "nan"}) {
        settings.options = {{"bearing", value}};
        EXPECT_THROW(Check(BEAM, "a", settings), std::runtime_error) << value;
    }
    settings.options = {{"bearing", "0.1"}};
    EXPECT_NO_THROW(Check(BEAM, "a", settings));
    settings.options = {{"ltb", "elastic"}, {"bearing", "0.1"}, {"ltb", "tables"}};
    EXPECT_EQ(MessageOf(settings), "option ltb: is given twice");
    settings.options = {{"ltb", "yes"}};
    EXPECT_EQ(MessageOf(settings), "option ltb: got \"yes\", expected tables or elastic");
    settings.options.clear();
    settings.code = "none-such";
    EXPECT_EQ(MessageOf(settings), "design code: got \"none-such\", expected bs5950 or ec3");
}

TEST(HostCheck, WritesJsonReportAndSheets)
{
    const Outcomes outcomes = Check(BEAM, "beams.csv");
    ASSERT_EQ(outcomes.members.size(), 1U);
    const std::string json = FindingsJson(outcomes.members[0]);
    EXPECT_THAT(json, StartsWith("{"));
    EXPECT_THAT(json, HasSubstr("\"status\": \"pass\""));
    const std::string report = Report(outcomes.members[0]);
    EXPECT_THAT(report, HasSubstr("UB 457x191x67 in S275: pass"));
    EXPECT_EQ(report.find('<'), std::string::npos);
    const std::string html = Sheets(outcomes, "A <job>");
    EXPECT_THAT(html, StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(html, HasSubstr("A &lt;job&gt;"));
    EXPECT_THAT(html, HasSubstr("id=\"m1\""));
}

} // namespace Keltrix::Host
