#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "io/Failure.h"

namespace Keltrix::App::Trial {

/// A member of three points that every reader takes, for tests to spoil. Line numbers in tests count from its TITLE.
inline const std::string GOOD_MEMBER = "TITLE,Floor beam\n"                                      // 1
                                       "HEADINGS,Keltrix description,Rolled/Welded\n"            // 2
                                       "SECTION,UB 457x191x67,ROLLED\n"                          // 3
                                       "GRADE,S275\n"                                            // 4
                                       "NET_TO_GROSS,1.0000\n"                                   // 5
                                       "ALLOWABLE_PLASTIC/ELASTIC_RATIO,1.2000\n"                // 6
                                       "SHEAR_LAG_FACTOR,0.7000\n"                               // 7
                                       "HEADINGS,YES/NO,Leff Maj, Leff Min, Leff LT\n"           // 8
                                       "EFFECTIVE_LENGTH_OVERRIDES,NO\n"                         // 9
                                       "EQUIVALENT_UNIFORM_MOMENT_FACTOR,0.9000\n"               // 10
                                       "HEADINGS,Index,Position,Restraint int, Load height\n"    // 11
                                       "MEMBERPOINT,1,0,Pinned,0\n"                              // 12
                                       "MEMBERPOINT,2,3,Top flange lateral,0\n"                  // 13
                                       "MEMBERPOINT,3,6,Pinned,0\n"                              // 14
                                       "HEADINGS,Index,Fx-L,Fy-L,Fz-L\n"                         // 15
                                       "SUBSPAN,1,0,0,-5000,0,0,-5000,0,0,0,0,-15000,0,Free,0\n" // 16
                                       "SUBSPAN,2,0,0,5000,0,0,5000,0,-15000,0,0,0,0,Free,0\n"   // 17
                                       "END\n";                                                  // 18

inline std::string ReadWhole(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

inline std::vector<std::string> LinesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// A directory of one test, removed at its end.
class TestDirectory {
public:
    TestDirectory()
    {
        const auto* const info = ::testing::UnitTest::GetInstance()->current_test_info();
        m_path =
            std::filesystem::path(::testing::TempDir()) / (std::string("ksteel_") + info->test_suite_name() + "_" +
                                                           info->name() + "_" + std::to_string(std::random_device{}()));
        std::filesystem::remove_all(m_path);
        std::filesystem::create_directories(m_path);
    }
    TestDirectory(const TestDirectory&) = delete;
    TestDirectory& operator=(const TestDirectory&) = delete;
    ~TestDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    /// Writes a file and returns its path.
    std::string Write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(m_path / name, std::ios::binary) << bytes;
        return (m_path / name).string();
    }
    std::string Path(const std::string& name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

struct RunResult {
    int code = -1;
    std::string out;
    std::string err;
};

inline std::ostream& operator<<(std::ostream& stream, const RunResult& result)
{
    return stream << "exit code " << result.code << "\n--- out\n" << result.out << "--- err\n" << result.err;
}

/// The program that is tested: the built one, or another that the variable KSTEEL_UNDER_TEST names.
inline std::string ProgramUnderTest()
{
    const char* const other = std::getenv("KSTEEL_UNDER_TEST");
    return other ? other : KSTEEL_PATH;
}

/// Runs a script of the shell from the source directory, in which `ksteel` is the program that is tested.
inline RunResult RunShell(const std::string& script)
{
    const TestDirectory directory;
    const std::string command = "cd '" KSTEEL_SOURCE_DIR "' && ksteel() { '" + ProgramUnderTest() +
                                "' \"$@\"; } && { " + script + "\n} >'" + directory.Path("out") + "' 2>'" +
                                directory.Path("err") + "'";
    const int status = std::system(command.c_str());
    RunResult result;
    // A crash is a code of its own, so that no test takes it for an answer.
    result.code = (status & 0x7f) == 0 ? (status >> 8) & 0xff : 1000 + (status & 0x7f);
    result.out = ReadWhole(directory.Path("out"));
    result.err = ReadWhole(directory.Path("err"));
    return result;
}

/// Runs the program that is tested: arguments, and redirections where a test needs some.
inline RunResult RunKsteel(const std::string& arguments) { return RunShell("ksteel " + arguments); }

} // namespace Keltrix::App::Trial
