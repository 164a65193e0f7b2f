// Many members: worker processes, streams, and lines of JSON.

#include <algorithm>
#include <cmath>
#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "AppSupport.h"

namespace Keltrix::App {
namespace {

using nlohmann::json;
using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Trial::GOOD_MEMBER;
using Trial::LinesOf;
using Trial::ReadWhole;
using Trial::RunKsteel;
using Trial::RunResult;
using Trial::RunShell;
using Trial::TestDirectory;

const std::string SPOILED = "TITLE,Spoiled\nSECTION,UB 1x1x1,ROLLED\nGRADE,S275\nEND\n";
const std::string FOREIGN_GRADE = [] {
    std::string text = GOOD_MEMBER;
    text.replace(text.find("S275"), 4, "Q345");
    return text;
}();

std::string Repeated(const std::string& text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

// Files of every kind: small and large ones, such with faults, none, and a stream.
struct Batch {
    Batch()
    {
        std::string members;
        for (const char* name : {"floor_beam", "column", "tie", "crane_beam"})
            members += ReadWhole(std::string(KSTEEL_SOURCE_DIR "/examples/") + name + ".csv");
        const std::string failing = ReadWhole(KSTEEL_SOURCE_DIR "/tests/report/failing.csv");
        const std::string mixed =
            Repeated(members, 5) + SPOILED + failing + "remark\n" + FOREIGN_GRADE + "TITLE,\xE9\nEND\n";
        files = " '" + directory.Write("large.csv", Repeated(mixed, 8)) + "' '" +
                directory.Write("small.csv", GOOD_MEMBER) + "' missing.csv '" + directory.Write("empty.csv", "") +
                "' '" + directory.Write("failing.csv", failing) + "' - examples <'" +
                directory.Write("stream.csv", Repeated(mixed, 3)) + "'";
    }
    TestDirectory directory;
    std::string files;
};

TEST(CheckJobs, AnyNumberOfWorkersGivesTheSameOutput)
{
    const Batch batch;
    const auto expectSame = [&](const std::string& options, const RunResult& one, const std::string& jobs) {
        const auto several = RunKsteel("check --jobs " + jobs + ' ' + options + batch.files);
        EXPECT_EQ(several.code, 2) << options << " " << jobs;
        EXPECT_TRUE(several.out == one.out) << options << " " << jobs;
        EXPECT_EQ(several.err, one.err) << options << " " << jobs;
    };
    for (const char* options : {"", "--report verbose --exact", "--report summary --color always", "--report table",
                                "--format json", "--format jsonl", "--format jsonl --report table"}) {
        const auto one = RunKsteel(std::string("check ") + options + batch.files);
        EXPECT_EQ(one.code, 2) << options;
        EXPECT_GT(one.out.size(), 10000u) << options;
        EXPECT_THAT(one.err, HasSubstr("missing.csv: no such file")) << options;
        expectSame(options, one, "3");
        if (std::string_view(options) != "--format jsonl") continue;
        for (const char* jobs : {"2", "7", "0"})
            expectSame(options, one, jobs);
    }
}

TEST(CheckJobs, ManySmallFilesComeInTheirOrder)
{
    const TestDirectory directory;
    std::string files;
    std::vector<std::string> names;
    for (int i = 0; i < 300; ++i) {
        names.push_back(directory.Write(std::to_string(i) + ".csv", GOOD_MEMBER));
        files += " '" + names.back() + "'";
    }
    const auto result = RunKsteel("check --format jsonl --report table --jobs 3" + files);
    EXPECT_EQ(result.code, 0) << result.err;
    std::vector<std::string> seen;
    for (const std::string& line : LinesOf(result.out))
        seen.push_back(json::parse(line)["file"]);
    EXPECT_EQ(seen, names);
}

TEST(CheckJobs, TheExitCodeIsTheWorstOfAll)
{
    EXPECT_EQ(RunKsteel("check --jobs 2 examples/column.csv examples/tie.csv").code, 0);
    EXPECT_EQ(RunKsteel("check --jobs 2 examples/column.csv tests/report/failing.csv").code, 1);
    EXPECT_EQ(RunKsteel("check --jobs 2 missing.csv tests/report/failing.csv").code, 2);
}

TEST(CheckJobs, BadUsage)
{
    for (const char* arguments :
         {"check --jobs -1 examples/tie.csv", "check --jobs 1025 examples/tie.csv", "check --jobs two examples/tie.csv",
          "check --steps examples/tie.csv", "check --steps --format jsonl --report table examples/tie.csv",
          "check --jobs 2 --envelope examples/tie.csv examples/tie.csv", "show --jobs 2 examples/tie.csv",
          "validate --format jsonl examples/tie.csv"}) {
        const auto result = RunKsteel(arguments);
        EXPECT_EQ(result.code, 3) << arguments << "\n" << result;
        EXPECT_EQ(result.out, "") << arguments;
    }
}

// The figures are those without steps. Of a beam each finding has the steps of its own combination.
TEST(CheckJson, StepsStandBesideTheFiguresTheyLeadTo)
{
    for (const char* code : {"bs5950", "ec3"})
        for (const char* file : {"examples/floor_beam.csv", "examples/floor_beam.toml"}) {
            SCOPED_TRACE(std::string(code) + ' ' + file);
            const std::string check = std::string("check --format jsonl --code ") + code + ' ' + file;
            const auto result = RunKsteel(check + " --steps");
            EXPECT_EQ(RunKsteel(check + " --steps --jobs 2").out, result.out);
            json with = json::parse(result.out);
            int governing = 0;
            for (json& entry : with["checks"]) {
                ASSERT_TRUE(entry.contains("steps"));
                if (entry["governing"].get<bool>()) {
                    ++governing;
                    ASSERT_FALSE(entry["steps"].empty());
                    const double resistance = entry["resistance"].get<double>();
                    EXPECT_TRUE(std::any_of(entry["steps"].begin(), entry["steps"].end(), [&](const json& step) {
                        return step["quantity"] == entry["quantity"] && step["value"].is_number() &&
                               std::abs(step["value"].get<double>() - resistance) <= 1e-12 * resistance;
                    })) << entry;
                }
                entry.erase("steps");
            }
            EXPECT_EQ(governing, 1);
            EXPECT_EQ(with, json::parse(RunKsteel(check).out));
        }
}

TEST(CheckJobs, AClosedPipeEndsTheRun)
{
    const TestDirectory directory;
    const std::string file = directory.Write("many.csv", Repeated(GOOD_MEMBER, 2000));
    const auto result = RunShell("{ ksteel check --jobs 2 '" + file + "'; echo \"code $?\" >&2; } | head -n 1");
    EXPECT_EQ(LinesOf(result.out).size(), 1u);
    EXPECT_EQ(result.err, "code " + std::to_string(128 + SIGPIPE) + "\n");
}

TEST(CheckJobs, WithoutProcessesTheMembersAreCheckedInThisOne)
{
    const auto usual = RunKsteel("check examples/*.csv");
    // Enough for a file, not for the pipes of a worker.
    const auto single = RunShell("exec 3>&-; ulimit -n 4; ksteel check --jobs 3 examples/*.csv");
    EXPECT_EQ(single.code, 0) << single.err;
    EXPECT_EQ(single.out, usual.out);
    EXPECT_EQ(single.err, "ksteel: --jobs: no worker process can be started, the work is done in one process: Too many "
                          "open files\n" +
                              usual.err);
}

// 1,000 defects of a piece of a file are listed. This one is a single piece: END after a factor may be the factor's own line.
TEST(CheckJobs, EveryMemberSaysWhyItIsRefused)
{
    const TestDirectory directory;
    constexpr int count = 400;
    const std::string file =
        directory.Write("f.csv", Repeated("TITLE,M\nEQUIVALENT_UNIFORM_MOMENT_FACTOR,x\nEND\n", count));
    const auto result = RunKsteel("check --format jsonl '" + file + "'");
    EXPECT_EQ(result.code, 2);
    const std::vector<std::string> lines = LinesOf(result.out);
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const json member = json::parse(lines[static_cast<std::size_t>(i)]);
        ASSERT_FALSE(member["errors"].empty()) << i;
        const std::string place = file + ':' + std::to_string(3 * i + 2) + ": EQUIVALENT_UNIFORM_MOMENT_FACTOR";
        EXPECT_THAT(member["errors"][0].get<std::string>(), StartsWith(place));
        for (const auto& error : member["errors"])
            EXPECT_THAT(result.err, HasSubstr(error.get<std::string>()));
    }
}

TEST(JsonLines, EachLineIsTheMemberOfTheArray)
{
    const auto array = RunKsteel("check --format json examples/*.csv tests/report/failing.csv");
    const auto lines = RunKsteel("check --format jsonl examples/*.csv tests/report/failing.csv");
    EXPECT_EQ(lines.code, 1);
    json collected = json::array();
    for (const std::string& line : LinesOf(lines.out))
        collected.push_back(json::parse(line));
    EXPECT_EQ(collected, json::parse(array.out));
    EXPECT_EQ(collected.size(), 9u);
}

TEST(JsonLines, AsATableTheyHoldTheHeadline)
{
    const auto full = json::parse(RunKsteel("check --format jsonl examples/column.csv").out);
    const auto headline = json::parse(RunKsteel("check --format jsonl --report table examples/column.csv").out);
    EXPECT_EQ(headline.size(), 15u);
    for (const auto& [name, value] : headline.items())
        EXPECT_EQ(value, full[name]) << name;
    for (const char* name :
         {"schema", "file", "line", "title", "section", "grade", "status", "overall", "governing", "warnings", "flags"})
        EXPECT_TRUE(headline.contains(name)) << name;
}

TEST(JsonLines, AnEnvelopeIsOneLine)
{
    const auto result = RunKsteel("check --envelope --format jsonl examples/tie.csv examples/tie.csv");
    EXPECT_EQ(result.code, 0) << result;
    EXPECT_EQ(LinesOf(result.out).size(), 1u);
}

TEST(JsonLines, WhatIsRefusedHasItsLineToo)
{
    const TestDirectory directory;
    const std::string file =
        directory.Write("f.csv", GOOD_MEMBER + SPOILED + FOREIGN_GRADE + "TITLE,\xE9\nEND\n" + GOOD_MEMBER);
    const auto result = RunKsteel("check --format jsonl --report table missing.csv '" + file + "'");
    EXPECT_EQ(result.code, 2);
    const std::vector<std::string> lines = LinesOf(result.out);
    ASSERT_EQ(lines.size(), 6u) << result;
    std::vector<json> found;
    for (const std::string& line : lines)
        found.push_back(json::parse(line));

    EXPECT_EQ(lines[0],
              "{\"schema\":1,\"file\":\"missing.csv\",\"line\":null,\"title\":\"\",\"status\":\"refused\",\"errors\":["
              "\"missing.csv: no such file\"],\"warnings\":[]}");
    EXPECT_EQ(found[1]["status"], "pass");
    EXPECT_EQ(found[2]["status"], "refused");
    EXPECT_EQ(found[2]["line"], 19);
    EXPECT_EQ(found[2]["title"], "Spoiled");
    ASSERT_GE(found[2]["errors"].size(), 2u);
    EXPECT_THAT(found[2]["errors"][0].get<std::string>(), StartsWith(file + ":20: SECTION description: got"));
    EXPECT_EQ(found[3]["status"], "refused");
    EXPECT_EQ(found[3]["line"], 23);
    EXPECT_THAT(found[3]["errors"][0].get<std::string>(), StartsWith(file + ":26: GRADE: got \"Q345\""));
    EXPECT_EQ(found[4]["line"], 41);
    EXPECT_THAT(found[4]["errors"][0].get<std::string>(), HasSubstr("(line 41, column 7) is not UTF-8"));
    EXPECT_EQ(found[5]["status"], "pass");
    EXPECT_EQ(found[5]["line"], 43);
    for (const json& one : found) {
        if (one["status"] != "refused") continue;
        for (const auto& error : one["errors"])
            EXPECT_THAT(result.err, HasSubstr("ksteel: " + error.get<std::string>() + "\n"))
                << "also on standard error, for people";
    }
}

// A program that feeds members and waits for each answer gets it: neither the reading nor the workers wait for more.
TEST(Streams, AMemberIsAnsweredWhileTheInputIsOpen)
{
    const TestDirectory directory;
    const std::string member = directory.Write("member.csv", GOOD_MEMBER);
    for (const char* jobs : {"1", "2"}) {
        const auto fed = RunShell("in='" + directory.Path(std::string("in") + jobs) + "'; out='" +
                                  directory.Path(std::string("out") + jobs) +
                                  "'; mkfifo \"$in\" \"$out\"; "
                                  "ksteel check --format jsonl --report table --jobs " +
                                  jobs +
                                  " - <\"$in\" >\"$out\" & "
                                  "exec 4>\"$in\" 5<\"$out\"; "
                                  "for i in 1 2 3; do cat '" +
                                  member +
                                  "' >&4; IFS= read -r line <&5; "
                                  "echo \"$i $line\"; done; exec 4>&-; wait");
        const std::vector<std::string> lines = LinesOf(fed.out);
        ASSERT_EQ(lines.size(), 3u) << fed;
        EXPECT_THAT(lines[2], StartsWith("3 {\"schema\":1,\"file\":\"standard input\",\"line\":37,"));
    }
}

TEST(Streams, ABadPlaceInAStreamLosesOneMember)
{
    const TestDirectory directory;
    const std::string file = directory.Write("f", GOOD_MEMBER + "TITLE,\xFF\nEND\n" + GOOD_MEMBER +
                                                      std::string("TITLE,\0\nEND\n", 12) + GOOD_MEMBER);
    const auto result = RunKsteel("check --format jsonl --report table - <'" + file + "'");
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(LinesOf(result.out).size(), 5u);
    EXPECT_THAT(result.err,
                HasSubstr("byte " + std::to_string(GOOD_MEMBER.size() + 6) + " (line 19, column 7) is not UTF-8"));
    EXPECT_THAT(result.err, HasSubstr("(line 39, column 7) is a NUL character"));
}

// Largest memory of a command and all that it starts, in KiB.
long PeakMemory(const std::string& script)
{
    const pid_t child = fork();
    if (child == 0) {
        execl("/bin/sh", "sh", "-c", script.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    EXPECT_EQ(wait4(child, &status, 0, &usage), child);
    EXPECT_EQ(status, 0) << script;
    return usage.ru_maxrss;
}

TEST(Streams, MemoryDoesNotGrowWithTheInput)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "Left out: needs a build without the address sanitizer, which keeps freed memory for a while";
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    GTEST_SKIP() << "Left out: needs a build without the address sanitizer, which keeps freed memory for a while";
#endif
#endif
    const TestDirectory directory;
    const std::string file = directory.Write("many.csv", Repeated(GOOD_MEMBER, 500));
    for (const char* jobs : {"1", "2"}) {
        for (const char* options : {"--format jsonl", "--format json", "--report verbose"}) {
            const auto peak = [&](int times) {
                return PeakMemory("for i in $(seq " + std::to_string(times) + "); do cat '" + file + "'; done | '" +
                                  Trial::ProgramUnderTest() + "' check " + options + " --jobs " + jobs +
                                  " - >/dev/null");
            };
            // Far less than the tens of MiB that are put out. Some replies wait for an earlier one, how many is up to
            // chance: eight of up to 1 MiB with two workers, in strings with room for up to twice as much.
            const long few = peak(1);
            const long many = peak(12);
            EXPECT_LT(many, few + 18 * 1024) << options << " --jobs " << jobs << ": KiB for 500 and for 6000 members";
        }
    }
}

TEST(Progress, IsShownOnATerminalAndTakenAway)
{
    if (RunShell("TERM=xterm script -qec 'echo works' /dev/null </dev/null").out != "works\r\n")
        GTEST_SKIP() << "Left out: needs the command script and a terminal to play (Debian: apt-get install bsdutils)";
    const TestDirectory directory;
    const std::string member = directory.Write("member.csv", GOOD_MEMBER);
    std::string feed;
    const auto terminal = [&](const std::string& redirection) {
        return RunShell("M='" + member + "' K='" + Trial::ProgramUnderTest() + "' TERM=xterm script -qec '" + feed +
                        redirection + "' /dev/null </dev/null")
            .out;
    };
    std::string shown;
    // Nothing is shown where a loaded machine starts the program after all members are there.
    for (const char* seconds : {"0.7", "5"}) {
        feed = std::string("(cat \"$M\"; sleep ") + seconds + "; cat \"$M\") | \"$K\" check - --format jsonl ";
        shown = terminal("2>&1 >/dev/null");
        if (!shown.empty()) break;
    }
    // Which of the two a loaded machine shows is up to chance: there is one line in 200 ms at most.
    EXPECT_THAT(shown,
                AnyOf(HasSubstr("\r1 members, 0 fail, 0 refused, "), HasSubstr("\r2 members, 0 fail, 0 refused, ")));
    EXPECT_THAT(shown, HasSubstr(" a second\x1b[K\r\x1b[K"));
    EXPECT_EQ(terminal(">/dev/null 2>/dev/null"), "");
    const auto piped = RunShell("M='" + member + "' K='" + Trial::ProgramUnderTest() + "'; " + feed);
    EXPECT_EQ(piped.err, "") << "no terminal, no line";
    EXPECT_EQ(LinesOf(piped.out).size(), 2u);
}

} // namespace
} // namespace Keltrix::App
