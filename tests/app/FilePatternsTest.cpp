// Patterns among file names, for the shell of Windows, which leaves them to programs.

#include "io/FilePatterns.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"
#include "io/Input.h"

namespace Keltrix::App {
namespace {

using ::testing::ElementsAre;
using Trial::TestDirectory;

// A folder with files, and what patterns in it stand for, without the folder's name.
class FilePatterns : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const char* name :
             {"b.csv", "a.csv", "C.CSV", "d e.csv", "a.csv1", "beam.toml", "\xC3\xA9.csv", "aab.txt"})
            std::ofstream(FilePath(m_directory.Path("") + name));
        std::filesystem::create_directory(m_directory.Path("folder.csv"));
    }

    std::vector<std::string> Files(const std::string& pattern) const
    {
        const std::string folder = m_directory.Path("");
        std::vector<std::string> names;
        for (const std::string& file : ExpandPatterns({folder + pattern})) {
            EXPECT_EQ(file.substr(0, folder.size()), folder);
            names.push_back(file.substr(folder.size()));
        }
        return names;
    }

private:
    TestDirectory m_directory;
};

TEST_F(FilePatterns, StarStandsForAnyCharacters)
{
    EXPECT_THAT(Files("*.csv"), ElementsAre("C.CSV", "a.csv", "b.csv", "d e.csv", "\xC3\xA9.csv"));
    EXPECT_THAT(Files("a*"), ElementsAre("a.csv", "a.csv1", "aab.txt"));
    EXPECT_THAT(Files("*a*b*.t*"), ElementsAre("aab.txt"));
    EXPECT_THAT(Files("**m.toml"), ElementsAre("beam.toml"));
    EXPECT_THAT(Files("*v1*"), ElementsAre("a.csv1"));
}

TEST_F(FilePatterns, QuestionMarkStandsForOneCharacter)
{
    EXPECT_THAT(Files("?.csv"), ElementsAre("C.CSV", "a.csv", "b.csv", "\xC3\xA9.csv"));
    EXPECT_THAT(Files("a?b.txt"), ElementsAre("aab.txt"));
    EXPECT_THAT(Files("D?E.csv"), ElementsAre("d e.csv"));
    EXPECT_THAT(Files("?\?.csv"), ElementsAre("?\?.csv")) << "an accented letter is one character";
}

TEST_F(FilePatterns, WhatMatchesNothingStays)
{
    EXPECT_THAT(Files("*.xlsx"), ElementsAre("*.xlsx"));
    EXPECT_THAT(Files("missing/*.csv"), ElementsAre("missing/*.csv"));
    EXPECT_THAT(Files("*/a.csv"), ElementsAre("*/a.csv")) << "in the last part of a path alone";
    EXPECT_THAT(Files("missing.csv"), ElementsAre("missing.csv"));
    EXPECT_THAT(ExpandPatterns({"-", "b.csv", "", "a.csv"}), ElementsAre("-", "b.csv", "", "a.csv"));
    EXPECT_THAT(ExpandPatterns({}), ElementsAre());
}

} // namespace
} // namespace Keltrix::App
