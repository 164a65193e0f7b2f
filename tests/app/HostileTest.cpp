// What surrounds the program is against it: streams that are closed, disks that are full, places that cannot be written,
// signals in the middle of the work. It says so, exits accordingly, and no file is lost or left in half.

#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "AppSupport.h"
#include "io/Failure.h"
#include "io/Output.h"

namespace Keltrix::App {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using Trial::GOOD_MEMBER;
using Trial::LinesOf;
using Trial::ReadWhole;
using Trial::RunKsteel;
using Trial::RunShell;
using Trial::TestDirectory;

// A comma in the title, of which a warning tells.
const std::string WARNED_MEMBER = [] {
    std::string text = GOOD_MEMBER;
    text.replace(text.find("Floor beam"), 10, "Floor beam, level 2");
    return text;
}();

constexpr unsigned NOBODY = 65534;

// How the process `child` ends that runs `act` in a copy of this one: its exit code, or 1000 and the signal that ended it.
// A copy that belongs to nobody has none of the rights of an administrator, who may write everywhere.
int RunInCopy(const std::function<int()>& act, bool asNobody = false)
{
    const pid_t child = fork();
    if (child == 0) {
        if (asNobody && geteuid() == 0 && setuid(NOBODY) != 0) _exit(99);
        int code = 98;
        try {
            code = act();
        } catch (...) {
        }
        _exit(code);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFSIGNALED(status) ? 1000 + WTERMSIG(status) : WEXITSTATUS(status);
}

// 0 where the text was written, 1 where that was refused with `reason` in the message.
int TryToWrite(const std::string& path, const std::string& text, const std::string& reason = {})
{
    try {
        WriteFile(path, text);
        return 0;
    } catch (const BadOutput& failure) {
        return std::string_view(failure.what()).find(reason) == std::string_view::npos ? 2 : 1;
    }
}

std::vector<std::string> NamesIn(const TestDirectory& directory)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory.Path("")))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

unsigned ModeOf(const std::string& path)
{
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
}

// --- Standard streams ---

TEST(ClosedStreams, MessagesNeverGetIntoTheOutputFile)
{
    const TestDirectory directory;
    const std::string file = directory.Write("a.csv", WARNED_MEMBER);
    const std::string sheet = directory.Path("a.html");
    const auto result = RunShell("ksteel report '" + file + "' -o '" + sheet + "' 2>&-; code=$?; " + "ksteel report '" +
                                 file + "' -o '" + sheet + ".open' 2>/dev/null; exit $code");
    EXPECT_EQ(result.code, 2) << "a warning was lost\n" << result;
    EXPECT_TRUE(ReadWhole(sheet) == ReadWhole(sheet + ".open")) << ReadWhole(sheet).substr(0, 300);
    EXPECT_THAT(ReadWhole(sheet), HasSubstr("a.csv:1: warning: TITLE title")) << "it is in the record all the same";
}

TEST(ClosedStreams, WorkersDoNotTakeTheirPlaces)
{
    const TestDirectory directory;
    const std::string file = directory.Write("a.csv", GOOD_MEMBER);
    for (const char* closed : {"<&- >&-", ">&-", "<&- >&- --format jsonl"}) {
        const auto result = RunKsteel("check --jobs 2 '" + file + "' " + closed);
        EXPECT_EQ(result.code, 2) << closed << "\n" << result;
        EXPECT_THAT(result.err, StartsWith("ksteel: standard output: cannot be written")) << closed;
    }
    EXPECT_EQ(RunKsteel("check --jobs 2 '" + file + "' <&- >&- 2>&-").code, 2);
}

TEST(ClosedStreams, StandardInputThatIsClosedIsNoEmptyFile)
{
    for (const char* jobs : {"1", "2"}) {
        const auto result = RunKsteel(std::string("check --jobs ") + jobs + " - <&-");
        EXPECT_EQ(result.code, 2) << result;
        EXPECT_EQ(result.err, "ksteel: standard input: cannot be read\n");
    }
}

TEST(ClosedStreams, AMessageThatIsLostIsAnErrorAndADrawingIsNot)
{
    const TestDirectory directory;
    const std::string warned = directory.Write("warned.csv", WARNED_MEMBER);
    const std::string good = directory.Write("good.csv", GOOD_MEMBER);
    for (const char* lost : {"2>&-", "2>/dev/full"}) {
        if (std::string_view(lost) == "2>/dev/full" && !fs::exists("/dev/full")) continue;
        const auto result = RunKsteel("show '" + warned + "' " + lost);
        EXPECT_EQ(result.code, 2) << lost << "\n" << result;
        EXPECT_THAT(result.out, StartsWith("Floor beam\n")) << lost;
        EXPECT_EQ(RunKsteel("show '" + good + "' " + lost).code, 0) << "nothing was to be said";
    }
}

// The status of a program that is ended by the closed pipe it writes to.
constexpr int ENDED_BY_PIPE = 128 + SIGPIPE;

TEST(ClosedPipe, EndsTheProgramSilentlyWithTheUsualStatus)
{
    const TestDirectory directory;
    std::string members;
    for (int i = 0; i < 40; ++i)
        members += GOOD_MEMBER;
    const std::string file = directory.Write("many.csv", members);
    for (const std::string& command : {std::string("sections --format json"), "check '" + file + "'",
                                       "check --jobs 2 '" + file + "'", "report '" + file + "' -o -"}) {
        const auto result = RunShell("{ ksteel " + command + "; echo \"status $?\" >&2; } | head -n 1");
        EXPECT_EQ(LinesOf(result.out).size(), 1u) << command;
        EXPECT_EQ(result.err, "status " + std::to_string(ENDED_BY_PIPE) + "\n") << command;
    }
}

TEST(ClosedPipe, OfMessagesEndsTheProgramToo)
{
    const auto result = RunShell("{ sleep 0.2; ksteel show missing.csv 2>&1; echo \"status $?\" >&2; } | exec true");
    EXPECT_EQ(result.err, "status " + std::to_string(ENDED_BY_PIPE) + "\n");
}

// --- Output files ---

TEST(OutputFile, ASymbolicLinkStaysAndItsTargetIsWritten)
{
    const TestDirectory directory;
    fs::create_directory(directory.Path("deep"));
    const std::string target = directory.Write("deep/target.svg", "old");
    fs::create_symlink("deep/target.svg", directory.Path("link"));
    fs::create_symlink("link", directory.Path("link to link"));
    WriteFile(directory.Path("link to link"), "new");
    EXPECT_TRUE(fs::is_symlink(directory.Path("link")));
    EXPECT_TRUE(fs::is_symlink(directory.Path("link to link")));
    EXPECT_EQ(ReadWhole(target), "new");
    EXPECT_THAT(NamesIn(directory), ::testing::ElementsAre("deep", "link", "link to link"));

    fs::create_symlink("deep/none.svg", directory.Path("dangling"));
    WriteFile(directory.Path("dangling"), "made");
    EXPECT_TRUE(fs::is_symlink(directory.Path("dangling")));
    EXPECT_EQ(ReadWhole(directory.Path("deep/none.svg")), "made");
}

// As /dev/stdout is one; a link of the test's own is no loss if it is replaced.
std::string LinkToStandardOutput(const TestDirectory& directory)
{
    fs::create_symlink("/proc/self/fd/1", directory.Path("stdout"));
    return directory.Path("stdout");
}

TEST(OutputFile, StandardOutputByAnotherNameIsWrittenWhereItStands)
{
    if (!fs::exists("/proc/self/fd"))
        GTEST_SKIP() << "Left out: needs /proc/self/fd, which gives standard output a name";
    const TestDirectory directory;
    const std::string link = LinkToStandardOutput(directory);
    const std::string log = directory.Write("log", "what was there before\n");
    const std::string command = "ksteel section 'UB 457x191x67' --svg '" + link + "' ";
    const auto appended = RunShell(command + ">>'" + log + "'");
    EXPECT_EQ(appended.code, 0) << appended;
    EXPECT_THAT(ReadWhole(log), StartsWith("what was there before\n<"));
    const auto closed = RunShell("{ sleep 0.2; " + command + "; echo \"status $?\" >&2; } | exec true");
    EXPECT_EQ(closed.err, "status " + std::to_string(128 + SIGPIPE) + "\n");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_THAT(NamesIn(directory), ::testing::ElementsAre("log", "stdout"));
}

TEST(OutputFile, ALinkThatLeadsInACircleIsRefused)
{
    const TestDirectory directory;
    fs::create_symlink("b", directory.Path("a"));
    fs::create_symlink("a", directory.Path("b"));
    EXPECT_EQ(TryToWrite(directory.Path("a"), "x", "cannot be written: Too many levels of symbolic links"), 1);
    EXPECT_THAT(NamesIn(directory), ::testing::ElementsAre("a", "b"));
}

TEST(OutputFile, OtherNamesOfTheFileSeeTheNewText)
{
    const TestDirectory directory;
    const std::string file = directory.Write("a.svg", "a long text that was there before");
    fs::create_hard_link(file, directory.Path("other name"));
    WriteFile(file, "new");
    EXPECT_EQ(ReadWhole(directory.Path("other name")), "new");
    EXPECT_EQ(fs::hard_link_count(file), 2u);
    const std::string longer(100000, 'x');
    WriteFile(file, longer);
    EXPECT_TRUE(ReadWhole(directory.Path("other name")) == longer);
    EXPECT_THAT(NamesIn(directory), ::testing::ElementsAre("a.svg", "other name"));
}

TEST(OutputFile, ItsModeIsKeptAndThatOfANewOneIsTheUsual)
{
    const TestDirectory directory;
    const std::string file = directory.Write("a.svg", "old");
    for (const unsigned mode : {0640U, 0604U, 0755U}) {
        ASSERT_EQ(chmod(file.c_str(), mode), 0);
        WriteFile(file, "new");
        EXPECT_EQ(ModeOf(file), mode);
    }
    const mode_t before = umask(027);
    WriteFile(directory.Path("made.svg"), "x");
    umask(before);
    EXPECT_EQ(ModeOf(directory.Path("made.svg")), 0640U);
}

TEST(OutputFile, ItsOwnerIsKept)
{
    if (geteuid() != 0) GTEST_SKIP() << "Left out: needs root, who alone can give a file away";
    const TestDirectory directory;
    const std::string file = directory.Write("a.svg", "old");
    ASSERT_EQ(chown(file.c_str(), NOBODY, NOBODY), 0);
    WriteFile(file, "new");
    struct stat status {};
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, NOBODY);
    EXPECT_EQ(status.st_gid, NOBODY);
    EXPECT_EQ(ReadWhole(file), "new");
}

TEST(OutputFile, OneThatIsForReadingOnlyStaysAsItIs)
{
    const TestDirectory directory;
    const std::string file = directory.Write("a.svg", "old");
    ASSERT_EQ(chmod(file.c_str(), 0444), 0);
    ASSERT_EQ(chmod(directory.Path("").c_str(), 0777), 0);
    EXPECT_EQ(RunInCopy([&] { return TryToWrite(file, "new", "a.svg: cannot be written: Permission denied"); }, true),
              1);
    EXPECT_EQ(ReadWhole(file), "old");
    EXPECT_THAT(NamesIn(directory), ::testing::ElementsAre("a.svg"));
}

TEST(OutputFile, AFileInAFolderThatCannotBeWrittenIsWrittenInItsPlace)
{
    const TestDirectory directory;
    const std::string file = directory.Write("a.svg", "the old text, which is longer");
    ASSERT_EQ(chmod(file.c_str(), 0666), 0);
    ASSERT_EQ(chmod(directory.Path("").c_str(), 0555), 0);
    EXPECT_EQ(RunInCopy([&] { return TryToWrite(file, "new"); }, true), 0);
    EXPECT_EQ(ReadWhole(file), "new");
    EXPECT_EQ(RunInCopy([&] { return TryToWrite(directory.Path("b.svg"), "new", "Permission denied"); }, true), 1);
    ASSERT_EQ(chmod(directory.Path("").c_str(), 0755), 0);
    EXPECT_THAT(NamesIn(directory), ::testing::ElementsAre("a.svg"));
}

TEST(OutputFile, ANameMayBeAsLongAsTheSystemAllows)
{
    const TestDirectory directory;
    const std::string name(255, 'n');
    for (const char* text : {"first", "second"}) {
        WriteFile(directory.Path(name), text);
        EXPECT_EQ(ReadWhole(directory.Path(name)), text);
    }
    EXPECT_EQ(TryToWrite(directory.Path(name + "n"), "x", "cannot be written: File name too long"), 1);
    EXPECT_EQ(NamesIn(directory), std::vector<std::string>{name});
}

// The rights of the second writer's file must not depend on a name that somebody else can guess and put there.
TEST(OutputFile, ItIsMadeByNobodyElse)
{
    const TestDirectory directory;
    WriteFile(directory.Path("a.svg"), [&](const TextSink& put) {
        put("text");
        const std::vector<std::string> names = NamesIn(directory);
        ASSERT_EQ(names.size(), 1u);
        EXPECT_THAT(names[0], StartsWith(".ksteel-"));
        EXPECT_TRUE(fs::is_regular_file(directory.Path(names[0])));
    });
}

TEST(OutputFile, AnInterruptedRunLeavesNothingBehind)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const TestDirectory directory;
        const std::string file = directory.Write("a.svg", "old");
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        if (child == 0) {
            std::signal(signal, SIG_DFL); // a shell starts its background jobs with SIGINT ignored
            WriteFile(file, [&](const TextSink& put) {
                put("half");
                if (write(ready[1], "x", 1) != 1) _exit(1);
                for (;;)
                    pause();
            });
            _exit(1);
        }
        char byte = 0;
        ASSERT_EQ(read(ready[0], &byte, 1), 1);
        EXPECT_EQ(NamesIn(directory).size(), 2u) << "in the middle of it";
        kill(child, signal);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_THAT(NamesIn(directory), ::testing::ElementsAre("a.svg")) << signal;
        EXPECT_EQ(ReadWhole(file), "old");
        close(ready[0]);
        close(ready[1]);
    }
}

// nohup has the end of the terminal ignored.
TEST(OutputFile, AnIgnoredSignalStaysIgnored)
{
    const TestDirectory directory;
    EXPECT_EQ(RunInCopy([&] {
                  std::signal(SIGHUP, SIG_IGN);
                  WriteFile(directory.Path("a.svg"), [&](const TextSink& put) {
                      put("a");
                      std::raise(SIGHUP);
                      put("b");
                  });
                  return std::signal(SIGHUP, SIG_IGN) == SIG_IGN && std::signal(SIGTERM, SIG_DFL) == SIG_DFL ? 0 : 1;
              }),
              0);
    EXPECT_EQ(ReadWhole(directory.Path("a.svg")), "ab");
}

TEST(OutputFile, ALimitOfItsSizeIsAnErrorAndTheOldTextStays)
{
    const TestDirectory directory;
    const std::string file = directory.Write("a.csv", GOOD_MEMBER);
    const std::string old(300, 'o');
    const std::string sheet = directory.Write("a.html", old);
    const std::string linked = directory.Write("linked.svg", old);
    fs::create_hard_link(linked, directory.Path("other name"));
    // The unit is 512 bytes in one shell and 1 KiB in another.
    for (const std::string& command :
         {"report '" + file + "' -o '" + sheet + "'", "section 'UB 457x191x67' --svg '" + linked + "'",
          "section 'UB 457x191x67' --svg '" + sheet + "'"}) {
        const auto result = RunShell("ulimit -f 1; ksteel " + command + " >/dev/null");
        EXPECT_EQ(result.code, 2) << command << "\n" << result;
        EXPECT_THAT(result.err, HasSubstr("cannot be written")) << command;
        EXPECT_EQ(ReadWhole(sheet), old) << command;
        EXPECT_EQ(ReadWhole(linked), old) << command;
    }
    EXPECT_THAT(NamesIn(directory), ::testing::ElementsAre("a.csv", "a.html", "linked.svg", "other name"));
    const auto output = RunShell("ulimit -f 1; ksteel sections");
    EXPECT_EQ(output.code, 2);
    EXPECT_THAT(output.err, StartsWith("ksteel: standard output: cannot be written: File too large"));
}

TEST(OutputFile, TemporaryFilesFollowTheirVariable)
{
    if (!fs::exists("/proc/self/fd"))
        GTEST_SKIP() << "Left out: needs /proc/self/fd, which shows where an open file is";
    const TestDirectory directory;
    EXPECT_EQ(RunInCopy([&] {
                  setenv("TMPDIR", directory.Path("").c_str(), 1);
                  std::FILE* const file = OpenTemporaryFile();
                  const fs::path place = fs::read_symlink("/proc/self/fd/" + std::to_string(fileno(file)));
                  return place.string().rfind(directory.Path(""), 0) == 0 && NamesIn(directory).empty() ? 0 : 1;
              }),
              0);
    const auto result =
        RunShell("TMPDIR=/nowhere ksteel report examples/tie.csv -o '" + directory.Path("a.html") + "'");
    EXPECT_EQ(result.code, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("/nowhere"));
    EXPECT_THAT(result.err, HasSubstr("TMPDIR"));
    EXPECT_TRUE(NamesIn(directory).empty());
}

TEST(OutputFile, IsNeverOneOfTheInputs)
{
    const TestDirectory directory;
    const std::string file = directory.Write("a.csv", GOOD_MEMBER);
    const std::string own = directory.Write(
        "own.csv", "family,designation,shape,type,mass_kg_m,depth_mm,width_mm,web_mm,flange_mm,root_mm,toe_mm\n"
                   "OWN,300x12,I,welded,60,300,150,8,12,0,0\n");
    const std::string catalogue = ReadWhole(own);
    fs::create_symlink("a.csv", directory.Path("link"));
    fs::create_hard_link(file, directory.Path("other name"));
    const auto expectRefused = [&](const std::string& arguments, const std::string& what) {
        const auto result = RunKsteel(arguments);
        EXPECT_EQ(result.code, 3) << arguments << "\n" << result;
        EXPECT_THAT(result.err, HasSubstr(what)) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_EQ(ReadWhole(file), GOOD_MEMBER) << arguments;
        EXPECT_EQ(ReadWhole(own), catalogue) << arguments;
    };
    for (const char* name : {"a.csv", "link", "other name", "./a.csv"}) {
        const std::string output = " -o '" + directory.Path(name) + "'";
        expectRefused("report '" + file + "'" + output, "is the input");
        expectRefused("report examples/tie.csv '" + file + "'" + output, "is the input");
        expectRefused("report - <'" + file + "'" + output, "is the input standard input");
    }
    expectRefused("--catalogue '" + own + "' report '" + file + "' -o '" + own + "'", "is the input");
    expectRefused("--catalogue '" + own + "' section 'OWN 300x12' --svg '" + own + "'", "is the input");
    EXPECT_EQ(RunKsteel("report '" + file + "' -o '" + directory.Path("a.html") + "'").code, 0);
    EXPECT_EQ(RunKsteel("report - -o - <'" + file + "'").code, 0);
}

} // namespace
} // namespace Keltrix::App
