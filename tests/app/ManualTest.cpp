// Manual pages and completions: that they hold what the command line takes, and that the programs that read them do.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "AppSupport.h"
#include "manual/Topics.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;
using Trial::RunKsteel;
using Trial::RunShell;
using Trial::TestDirectory;

std::vector<std::string> CommandsOfHelp()
{
    const std::string help = RunKsteel("--help").out;
    std::vector<std::string> names;
    const std::regex row("\n  ([a-z]+) {2,}");
    const std::string list = help.substr(help.find("Subcommands:"));
    for (std::sregex_iterator i(list.begin(), list.end(), row), end; i != end; ++i)
        names.push_back((*i)[1]);
    return names;
}

std::set<std::string> OptionsOfHelp(const std::string& command)
{
    const std::string help = RunKsteel(command + " --help").out;
    std::set<std::string> names;
    const std::regex row("\n  (?:-[a-z],)?(--[a-zA-Z-]+)");
    for (std::sregex_iterator i(help.begin(), help.end(), row), end; i != end; ++i)
        names.insert((*i)[1]);
    return names;
}

// What the completion of a line ends with gives; the last word is the one that is completed.
std::set<std::string> CompletedByBash(const std::string& words)
{
    const TestDirectory directory;
    const std::string script = directory.Write(
        "complete", "source \"$1\"\nCOMP_WORDS=(" + words +
                        ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_ksteel\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n");
    const std::string completion = "'" + directory.Path("completion") + "'";
    const auto result =
        RunShell("ksteel completion bash >" + completion + " && bash --norc '" + script + "' " + completion);
    EXPECT_EQ(result.code, 0) << result;
    std::set<std::string> lines;
    std::istringstream stream(result.out);
    for (std::string line; std::getline(stream, line);)
        if (!line.empty()) lines.insert(line);
    return lines;
}

bool IsThere(const std::string& program) { return RunShell("command -v " + program).code == 0; }

} // namespace

TEST(Manual, EveryCommandHasAPageWithAllOfItsOptions)
{
    const std::vector<std::string> commands = CommandsOfHelp();
    ASSERT_GE(commands.size(), 15U);
    const std::string program = RunKsteel("manual").out;
    EXPECT_THAT(program, HasSubstr(".TH KSTEEL 1"));
    for (const std::string& command : commands) {
        EXPECT_THAT(program, HasSubstr("\n\\fB" + command + "\\fR\n"));
        const auto page = RunKsteel("manual " + command);
        EXPECT_EQ(page.code, 0) << page;
        for (const std::string& option : OptionsOfHelp(command))
            EXPECT_THAT(page.out, HasSubstr("\\fB" + std::regex_replace(option, std::regex("-"), "\\-") + "\\fR"))
                << command;
    }
    const std::string check = RunKsteel("manual check").out;
    EXPECT_THAT(check, HasSubstr("\\fB\\-\\-format\\fR \\fIjson|jsonl|table\\fR\n"));
    EXPECT_THAT(check, HasSubstr("\\fB\\-\\-code\\fR \\fIbs5950|ec3\\fR\n"));
    EXPECT_THAT(check, HasSubstr("Range: 0.001 to 1."));
    // Of each design code, not of the chosen one alone.
    EXPECT_THAT(check, HasSubstr("\\fB\\-\\-mcr\\fR \\fIc1|elastic\\fR\nWith \\-\\-code ec3: "));
    EXPECT_THAT(check, HasSubstr("\\fB\\-\\-ltb\\fR \\fIelastic|tables\\fR\nWith \\-\\-code bs5950: "));
    EXPECT_THAT(check, HasSubstr(".TP\n3\nbad usage.\n"));
}

TEST(Manual, WhatItCannotWriteIsRefused)
{
    EXPECT_EQ(RunKsteel("manual frobnicate").code, 3);
    EXPECT_THAT(RunKsteel("manual frobnicate").err, HasSubstr("expected one of show, validate"));
    EXPECT_EQ(RunKsteel("manual check --directory .").code, 3) << "one page or all";
    EXPECT_EQ(RunKsteel("manual --directory /nowhere/at/all").code, 2);
}

// Their readers find nothing wrong with the pages.
TEST(Help, OfACommandIsItsOwn)
{
    for (const std::string& name : CommandsOfHelp())
        EXPECT_EQ(RunKsteel("help " + name).out, RunKsteel(name + " --help").out) << name;
    const auto all = RunKsteel("help");
    EXPECT_EQ(all.code, 0);
    EXPECT_EQ(all.out.rfind(RunKsteel("--help").out, 0), 0u) << all.out;
}

TEST(Help, TopicsAreListedAndPrinted)
{
    const std::string list = RunKsteel("help").out;
    ASSERT_GE(HelpTopics().size(), 4u);
    for (const HelpTopic& topic : HelpTopics()) {
        EXPECT_THAT(list, HasSubstr("\n  " + std::string(topic.name) + ' '));
        const auto page = RunKsteel(std::string("help ") + topic.name);
        EXPECT_EQ(page.code, 0) << topic.name;
        EXPECT_EQ(page.out, topic.text);
        for (const std::string& line : Trial::LinesOf(topic.text))
            EXPECT_LE(line.size(), 83u) << line;
        EXPECT_THAT(RunKsteel("manual").out, HasSubstr(topic.name == std::string("units") ? ".SH UNITS\n.nf" : ".nf"));
    }
    EXPECT_THAT(RunKsteel("help exit-codes").out, HasSubstr("  1  a member fails\n"));
    const auto unknown = RunKsteel("help unit");
    EXPECT_EQ(unknown.code, 3);
    EXPECT_EQ(unknown.out, "");
    EXPECT_THAT(unknown.err, HasSubstr("help: got \"unit\", expected one of show, "));
    EXPECT_THAT(unknown.err, HasSubstr("units, environment, exit-codes"));
}

// The words of the first column, up to two blanks, and the codes are read as restraints.
TEST(Help, EveryRestraintThatItNamesIsOne)
{
    std::string text;
    for (const HelpTopic& topic : HelpTopics())
        if (topic.name == std::string("restraints")) text = topic.text;
    int words = 0;
    const auto expectRead = [&](const std::string& word) {
        ++words;
        const TestDirectory directory;
        std::string member = Trial::GOOD_MEMBER;
        member.replace(member.find("Top flange lateral"), 18, word);
        EXPECT_EQ(RunKsteel("validate --strict '" + directory.Write("a.csv", member) + "'").code, 0) << word;
    };
    const std::size_t codes = text.find("Or codes");
    ASSERT_NE(codes, std::string::npos);
    const std::regex row("(?:^|\n)  ([A-Z][A-Za-z ]*?)  ");
    const std::string names = text.substr(0, codes);
    for (std::sregex_iterator i(names.begin(), names.end(), row), end; i != end; ++i)
        expectRead((*i)[1]);
    const std::string list = text.substr(codes);
    const std::regex code("\\b(F[12C]+T?L|FTL|F[12]W|F1P|T[RPF]|M[IA][NJ][VR])\\b");
    for (std::sregex_iterator i(list.begin(), list.end(), code), end; i != end; ++i)
        expectRead((*i)[1]);
    EXPECT_GE(words, 20);
}

TEST(Manual, EveryExampleRuns)
{
    std::set<std::string> commands;
    for (const Example& example : CommandExamples()) {
        const TestDirectory directory;
        const auto result =
            RunShell("mkdir -p '" + directory.Path("") + "' && ln -s \"$PWD/examples\" '" + directory.Path("examples") +
                     "' && cd '" + directory.Path("") + "' && " + example.line);
        EXPECT_EQ(result.code, 0) << example.line << "\n" << result;
        EXPECT_THAT(RunKsteel("manual " + std::string(example.command)).out, HasSubstr(".SH EXAMPLES\n.TP\n"));
        commands.insert(example.command);
    }
    for (const std::string& name : CommandsOfHelp())
        EXPECT_TRUE(name == "help" || commands.count(name) == 1) << name << " has no example";
}

TEST(Manual, PagesAreWellFormed)
{
    const TestDirectory directory;
    ASSERT_EQ(RunKsteel("manual --directory '" + directory.Path("") + "'").code, 0);
    const std::size_t pages = CommandsOfHelp().size() + 1;
    std::size_t count = 0;
    for (const auto& file : std::filesystem::directory_iterator(directory.Path("")))
        count += file.path().extension() == ".1" ? 1 : 0;
    EXPECT_EQ(count, pages);
    const bool hasGroff = IsThere("groff"), hasMandoc = IsThere("mandoc");
    if (!hasGroff && !hasMandoc)
        GTEST_SKIP() << "Left out: groff or mandoc reads the pages (Debian: groff-base or mandoc)";
    const std::string files = "'" + directory.Path("") + "'/*.1";
    if (hasMandoc) {
        // The same sources give the same bytes: no date.
        EXPECT_EQ(RunShell("mandoc -Tlint -Wwarning " + files + " | grep -v 'missing date'").out, "");
    }
    if (hasGroff) {
        const auto read =
            RunShell("for page in " + files + "; do groff -man -Tutf8 -Kutf8 -ww \"$page\" >/dev/null || exit; done");
        EXPECT_EQ(read.code, 0) << read;
        EXPECT_EQ(read.err, "");
    }
}

TEST(Completion, BashCompletesCommandsOptionsAndTheirWords)
{
    if (!IsThere("bash")) GTEST_SKIP() << "Left out: bash completes";
    const std::vector<std::string> commands = CommandsOfHelp();
    EXPECT_EQ(CompletedByBash("ksteel \"\""), std::set<std::string>(commands.begin(), commands.end()));
    EXPECT_EQ(CompletedByBash("ksteel che"), std::set<std::string>{"check"});
    EXPECT_EQ(CompletedByBash("ksteel check --rep"), std::set<std::string>{"--report"});
    EXPECT_EQ(CompletedByBash("ksteel check --report \"\""),
              (std::set<std::string>{"brief", "verbose", "summary", "table"}));
    EXPECT_EQ(CompletedByBash("ksteel check x.csv --format = js"), (std::set<std::string>{"json", "jsonl"}));
    EXPECT_EQ(CompletedByBash("ksteel --catalogue own.csv check --code e"), std::set<std::string>{"ec3"});
    EXPECT_EQ(CompletedByBash("ksteel check --ltb \"\""),
              (std::set<std::string>{"curves", "elastic", "simplified", "tables"}))
        << "of both codes";
    EXPECT_EQ(CompletedByBash("ksteel check --annex u"), std::set<std::string>{"uk"});
    EXPECT_EQ(CompletedByBash("ksteel design --family UB"), (std::set<std::string>{"UB", "UBP"}));
    EXPECT_EQ(CompletedByBash("ksteel check --jobs \"\""), std::set<std::string>()) << "a number";
    EXPECT_EQ(CompletedByBash("ksteel completion z"), std::set<std::string>{"zsh"});
    EXPECT_EQ(CompletedByBash("ksteel manual che"), std::set<std::string>{"check"});
    EXPECT_EQ(CompletedByBash("ksteel --catalogue check rep"), std::set<std::string>{"report"}) << "a file's name";
    EXPECT_EQ(CompletedByBash("ksteel check examples/floor_b"),
              (std::set<std::string>{"examples/floor_beam.csv", "examples/floor_beam.toml"}));
    for (const std::string& command : commands) {
        std::set<std::string> shown = CompletedByBash("ksteel " + command + " --");
        for (const std::string& option : OptionsOfHelp(command))
            EXPECT_EQ(shown.count(option), 1U) << command << ' ' << option;
    }
}

TEST(Completion, OtherShellsCanReadTheirs)
{
    EXPECT_EQ(RunKsteel("completion tcsh").code, 3);
    EXPECT_THAT(RunKsteel("completion zsh").out, HasSubstr("--format=[Output"));
    EXPECT_THAT(RunKsteel("completion fish").out, HasSubstr(" -l format -x -a 'json jsonl table' "));
    if (IsThere("zsh")) {
        EXPECT_EQ(RunShell("ksteel completion zsh | zsh -n").err, "");
    }
    if (IsThere("fish")) {
        EXPECT_EQ(RunShell("ksteel completion fish | fish --no-execute").err, "");
    }
    if (!IsThere("zsh") || !IsThere("fish"))
        GTEST_SKIP() << "Left out: zsh and fish read their completions (Debian: zsh fish)";
}

} // namespace Keltrix::App
