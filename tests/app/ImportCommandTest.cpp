// ksteel import: what it writes where, and what it refuses. What tables say is the host library's.

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"

namespace Keltrix::App::Trial {
namespace {

using testing::HasSubstr;

const std::string TABLES = "import examples/frame/forces.csv --members examples/frame/members.csv ";

TEST(ImportCommand, WritesOneStreamOfMembers)
{
    const TestDirectory directory;
    const RunResult out = RunKsteel(TABLES + "--map z-down");
    EXPECT_EQ(out.code, EXIT_FINE) << out;
    EXPECT_THAT(out.err, HasSubstr("note: read as z-down"));
    const std::string file = directory.Path("members.csv");
    EXPECT_EQ(RunKsteel(TABLES + "--map z-down -o '" + file + "'").out, "");
    EXPECT_EQ(ReadWhole(file), out.out);
    EXPECT_EQ(RunKsteel("validate '" + file + "'").code, EXIT_FINE);
    const RunResult piped =
        RunKsteel("import - --members examples/frame/members.csv --map z-down <examples/frame/forces.csv");
    EXPECT_EQ(piped.out, out.out);
}

// Every check would refuse the member, at a place in a file that nobody wrote.
TEST(ImportCommand, RefusesGradesThatNoDesignCodeHas)
{
    const TestDirectory directory;
    const std::string members = ReadWhole(KSTEEL_SOURCE_DIR "/examples/frame/members.csv");
    const std::size_t at = members.find("S275") == std::string::npos ? members.find("S355") : members.find("S275");
    ASSERT_NE(at, std::string::npos);
    const auto withGrade = [&](const std::string& grade) {
        std::string text = members;
        const std::string file = directory.Write("members.csv", text.replace(at, 4, grade));
        return RunKsteel("import examples/frame/forces.csv --map z-down --members '" + file + "'");
    };
    const RunResult unknown = withGrade("S999");
    EXPECT_EQ(unknown.code, EXIT_BAD_INPUT);
    EXPECT_EQ(unknown.out, "");
    EXPECT_THAT(unknown.err,
                HasSubstr("grade: got \"S999\", expected a grade of a design code of this program: S275, "));
    EXPECT_EQ(withGrade("S355").code, EXIT_FINE);
    EXPECT_EQ(withGrade("User_defined").code, EXIT_BAD_INPUT);
}

TEST(ImportCommand, WritesNothingWhereAnythingIsWrong)
{
    const TestDirectory directory;
    const std::string file = directory.Write("old.csv", "as it was\n");
    const RunResult wrong = RunKsteel(TABLES + "--map sagging -o '" + file + "'");
    EXPECT_EQ(wrong.code, EXIT_BAD_INPUT) << wrong;
    EXPECT_THAT(wrong.err, HasSubstr("they would as member-file, z-down, start-face, y-up"));
    EXPECT_EQ(ReadWhole(file), "as it was\n");
    EXPECT_EQ(RunKsteel(TABLES + "--map z-down -o examples/frame/forces.csv").code, EXIT_BAD_USAGE);
    EXPECT_EQ(RunKsteel(TABLES + "--map z-up").code, EXIT_BAD_USAGE);
    EXPECT_EQ(RunKsteel("import - --members - --map z-down </dev/null").code, EXIT_BAD_USAGE);
    EXPECT_EQ(RunKsteel("import missing.csv --members examples/frame/members.csv --map z-down").code, EXIT_BAD_INPUT);
}

} // namespace
} // namespace Keltrix::App::Trial
