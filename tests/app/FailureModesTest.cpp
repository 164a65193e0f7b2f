// What happens to every command in every format where its output cannot go, and to workers whose other side is killed. The commands and their
// formats are those of the program's own help: one that this table does not know fails the test.

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"

namespace fs = std::filesystem;
using namespace Keltrix::App;
using namespace Keltrix::App::Trial;
using ::testing::HasSubstr;

namespace {

const std::map<std::string, std::string> ARGUMENTS = {
    {"show", "examples/floor_beam.csv"},
    {"validate", "examples/floor_beam.csv"},
    {"section", "'UB 457x191x67'"},
    {"sections", ""},
    {"spans", "examples/floor_beam.csv"},
    {"import", "examples/frame/forces.csv --members examples/frame/members.csv --map member-file"},
    {"buckling", "examples/floor_beam.csv"},
    {"loads", "examples/floor_beam.toml"},
    {"new", "beam"},
    {"check", "examples/floor_beam.csv"},
    {"compare", "examples/floor_beam.csv"},
    {"report", "examples/floor_beam.csv"},
    {"design", "examples/floor_beam.csv --family UB"},
    {"capacity", "'UB 457x191x67'"},
    {"codes", ""},
    {"help", "files"},
    {"manual", ""},
    {"completion", "bash"},
};

// Words in the first column of a part of the help.
std::set<std::string> CommandsOfTheProgram()
{
    std::set<std::string> commands;
    const std::string help = RunKsteel("--help").out;
    for (const std::string& line : LinesOf(help.substr(help.find("Subcommands:"))))
        if (std::smatch match; std::regex_search(line, match, std::regex("^  ([a-z]+) "))) commands.insert(match[1]);
    return commands;
}

/// One way to run a command: with a format, and with what writes its output to a place.
struct Way {
    std::string command; ///< with its arguments
    std::string output;  ///< the option for a file; empty: standard output
    bool isFolder = false;
};

std::vector<Way> EveryWay()
{
    std::vector<Way> ways;
    for (const auto& [name, arguments] : ARGUMENTS) {
        const std::string help = RunKsteel(name + " --help").out;
        std::vector<std::string> formats;
        if (std::smatch match; std::regex_search(help, match, std::regex("--format TEXT:\\{([a-z,]+)\\}"))) {
            const std::string list = match[1];
            const std::regex word("[a-z]+");
            for (std::sregex_iterator at(list.begin(), list.end(), word), end; at != end; ++at)
                formats.push_back(" --format " + at->str());
        } else {
            formats.emplace_back();
        }
        for (const std::string& format : formats) {
            const std::string command = name + ' ' + arguments + format;
            ways.push_back({command + (name == "report" ? " -o -" : ""), "", false});
            if (help.find("-o,--output") != std::string::npos) ways.push_back({command, "-o", name == "loads"});
            if (help.find("--svg") != std::string::npos) ways.push_back({command, "--svg", false});
            if (help.find("--directory") != std::string::npos) ways.push_back({command, "--directory", true});
        }
    }
    return ways;
}

// Waits until something holds, for at most some seconds.
template <class Condition>
bool Becomes(Condition condition)
{
    for (int i = 0; i < 500; ++i) {
        if (condition()) return true;
        usleep(20000);
    }
    return false;
}

std::vector<pid_t> ChildrenOf(pid_t parent)
{
    std::vector<pid_t> children;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        const std::string stat = ReadWhole(entry.path() / "stat");
        const std::size_t end = stat.rfind(')');
        if (end == std::string::npos || end + 4 > stat.size() || stat[end + 2] == 'Z') continue;
        if (std::stol(stat.substr(end + 4)) == parent) children.push_back(std::stoi(name));
    }
    return children;
}

} // namespace

TEST(FailureModes, EveryCommandIsTried)
{
    std::set<std::string> tried;
    for (const auto& [name, arguments] : ARGUMENTS)
        tried.insert(name);
    for (const std::string& command : CommandsOfTheProgram())
        EXPECT_TRUE(tried.count(command) == 1) << command << " is not in the table";
    EXPECT_GE(EveryWay().size(), 35u);
}

TEST(FailureModes, AFullDiskBehindStandardOutputIsTold)
{
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "Left out: needs /dev/full";
    const std::set<std::string> commands = CommandsOfTheProgram();
    for (const Way& way : EveryWay()) {
        if (!way.output.empty() || commands.count(way.command.substr(0, way.command.find(' '))) == 0) continue;
        const auto result = RunKsteel(way.command + " > /dev/full");
        EXPECT_EQ(result.code, EXIT_BAD_INPUT) << way.command << "\n" << result;
        EXPECT_THAT(result.err, HasSubstr("standard output: cannot be written: No space left on device"))
            << way.command;
    }
}

TEST(FailureModes, APipeThatNobodyReadsEndsTheProgram)
{
    const std::set<std::string> commands = CommandsOfTheProgram();
    for (const Way& way : EveryWay()) {
        if (!way.output.empty() || commands.count(way.command.substr(0, way.command.find(' '))) == 0) continue;
        const auto result =
            RunShell("{ sleep 0.05; ksteel " + way.command + " 2>/dev/null; echo $? >&2; } | exec true");
        EXPECT_EQ(result.err, std::to_string(128 + SIGPIPE) + "\n") << way.command;
    }
}

TEST(FailureModes, AFileOnAFullDiskIsNamedAndHalfOfItIsNowhere)
{
    const std::set<std::string> commands = CommandsOfTheProgram();
    int files = 0;
    for (const Way& way : EveryWay()) {
        if (way.output.empty() || commands.count(way.command.substr(0, way.command.find(' '))) == 0) continue;
        SCOPED_TRACE(way.command + ' ' + way.output);
        ++files;
        const TestDirectory directory;
        const std::string target = way.isFolder ? directory.Path("") : directory.Write("target", "old");
        const std::string force = way.command.rfind("new ", 0) == 0 ? " --force" : "";
        // 512 bytes in one shell, 1 KiB in another: less than any of these files, and not for the messages, which go through a pipe. A sheet is
        // collected in a temporary file.
        const std::string run = "ksteel " + way.command + force + ' ' + way.output + " '" + target + "' > /dev/null";
        const auto result = RunShell("{ (ulimit -f 1; " + run + "); echo \"code $?\" >&2; } 2>&1 | cat");
        EXPECT_THAT(result.out, HasSubstr("code " + std::to_string(EXIT_BAD_INPUT) + "\n"));
        EXPECT_THAT(result.out, ::testing::AnyOf(HasSubstr("a temporary file cannot be written"),
                                                 ::testing::ContainsRegex(target + "[^\n]*cannot be written")));
        for (const auto& entry : fs::directory_iterator(directory.Path(""))) {
            const std::string name = entry.path().filename().string();
            if (way.isFolder) {
                EXPECT_NE(name.rfind(".ksteel-", 0), 0u) << name << " was left";
            } else {
                EXPECT_EQ(name, "target") << "was left";
            }
        }
        if (!way.isFolder) {
            EXPECT_EQ(ReadWhole(target), "old");
        }
        if (!way.isFolder && fs::exists("/dev/full")) {
            const auto full = RunKsteel(way.command + force + ' ' + way.output + " /dev/full > /dev/null");
            EXPECT_EQ(full.code, EXIT_BAD_INPUT) << full;
            EXPECT_THAT(full.err, HasSubstr("/dev/full: cannot be written: No space left on device"));
        }
    }
    EXPECT_GE(files, 8);
}

/// A check by two workers, whose input a test holds open.
class OpenCheck {
public:
    explicit OpenCheck(const std::string& options)
    {
        const std::string pipe = m_directory.Path("in");
        EXPECT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        const std::string command = "exec '" KSTEEL_PATH "' check - --jobs 2 " + options + " < '" + pipe + "' > '" +
                                    m_directory.Path("out") + "' 2> '" + m_directory.Path("err") + "'";
        m_pid = fork();
        if (m_pid == 0) {
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
        m_in = std::fopen(pipe.c_str(), "w");
    }
    ~OpenCheck() { Close(); }
    OpenCheck(const OpenCheck&) = delete;
    OpenCheck& operator=(const OpenCheck&) = delete;

    void Put(int members) const
    {
        for (int i = 0; i < members; ++i)
            std::fputs(GOOD_MEMBER.c_str(), m_in);
        std::fflush(m_in);
    }
    void Close()
    {
        if (m_in) std::fclose(m_in);
        m_in = nullptr;
    }
    std::string Out() const { return ReadWhole(m_directory.Path("out")); }
    std::string Err() const { return ReadWhole(m_directory.Path("err")); }
    pid_t Pid() const { return m_pid; }
    std::vector<pid_t> Workers() const { return ChildrenOf(m_pid); }
    /// The wait status.
    int End()
    {
        Close();
        int status = -1;
        waitpid(m_pid, &status, 0);
        return status;
    }

private:
    TestDirectory m_directory;
    std::FILE* m_in = nullptr;
    pid_t m_pid = -1;
};

TEST(FailureModes, AWorkerThatIsKilledLosesNoMember)
{
    if (!fs::exists("/proc/self/stat")) GTEST_SKIP() << "Left out: needs /proc, which names the workers";
    for (const char* options : {"--format jsonl", "--format json", "--report table", "--report brief"}) {
        SCOPED_TRACE(options);
        OpenCheck check(options);
        check.Put(3);
        ASSERT_TRUE(Becomes([&] { return !check.Workers().empty(); }));
        kill(check.Workers().front(), SIGKILL);
        check.Put(40);
        EXPECT_EQ(check.End(), 0) << check.Err();
        const std::string whole = RunShell("for i in $(seq 43); do cat <<'END_OF_MEMBER'\n" + GOOD_MEMBER +
                                           "END_OF_MEMBER\ndone | ksteel check - " + options)
                                      .out;
        EXPECT_EQ(check.Out(), whole);
    }
}

TEST(FailureModes, WorkersEndWithTheProgramThatIsKilled)
{
    if (!fs::exists("/proc/self/stat")) GTEST_SKIP() << "Left out: needs /proc, which names the workers";
    OpenCheck check("--format jsonl");
    check.Put(3);
    ASSERT_TRUE(Becomes([&] { return !check.Workers().empty(); }));
    const std::vector<pid_t> workers = check.Workers();
    kill(check.Pid(), SIGKILL);
    EXPECT_TRUE(WIFSIGNALED(check.End()));
    EXPECT_TRUE(Becomes([&] {
        return std::none_of(workers.begin(), workers.end(), [](pid_t worker) {
            const std::string stat = ReadWhole("/proc/" + std::to_string(worker) + "/stat");
            return !stat.empty() && stat.find(") Z") == std::string::npos;
        });
    }));
    for (const std::string& line : LinesOf(check.Out()))
        EXPECT_EQ(line.back(), '}') << "a line is whole or is not there";
}
