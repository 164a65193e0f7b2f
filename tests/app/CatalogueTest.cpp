// A host's own catalogue file, by the program: the catalogue is shared within a process.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppSupport.h"

namespace Keltrix::App {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using Trial::RunKsteel;
using Trial::TestDirectory;

const std::string HEADER =
    "family,designation,shape,type,mass_kg_m,depth_mm,width_mm,web_mm,flange_mm,root_mm,toe_mm\n";

TEST(OwnCatalogue, ItsSectionsAreThereBesideTheBuiltInOnes)
{
    const TestDirectory directory;
    const std::string file = directory.Write("own.csv", HEADER + "OWN,300x12,I,welded,60,300,150,8,12,0,0\n");
    const auto section = RunKsteel("--catalogue '" + file + "' section 'own 300x12'");
    EXPECT_EQ(section.code, 0) << section;
    EXPECT_THAT(section.out, StartsWith("OWN 300x12\nI section, welded, 60 kg/m\n"));
    const auto list = RunKsteel("sections --family OWN --catalogue '" + file + "'");
    EXPECT_EQ(list.code, 0) << list;
    EXPECT_THAT(list.out, HasSubstr("OWN 300x12"));
    EXPECT_EQ(RunKsteel("section 'UB 457x191x67' --catalogue '" + file + "'").code, 0);
}

TEST(OwnCatalogue, FaultsAreToldWithLineAndColumn)
{
    const TestDirectory directory;
    const std::string file = directory.Write("own.csv", HEADER + "OWN,1,I,welded,60,300,150,8,12,0,0\n"
                                                                 "OWN,2,I,riveted,60,300,-150,8,12,0,0\n");
    const auto result = RunKsteel("--catalogue '" + file + "' section 'OWN 1'");
    EXPECT_EQ(result.code, 2) << result;
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err,
                HasSubstr("own.csv:3, column 4: type: expected one of rolled, welded, formed, found \"riveted\"\n"));
    EXPECT_THAT(result.err,
                HasSubstr("own.csv:3, column 7: width_mm: expected a dimension in mm, not negative, found \"-150\"\n"));
}

TEST(OwnCatalogue, ThousandsOfFaultsAreNotListed)
{
    const TestDirectory directory;
    std::string rows;
    for (int i = 0; i < 3000; ++i)
        rows += "OWN," + std::to_string(i) + ",I,riveted,60,300,150,8,12,0,0\n";
    const std::string file = directory.Write("own.csv", HEADER + rows);
    const auto result = RunKsteel("--catalogue '" + file + "' sections");
    EXPECT_EQ(result.code, 2);
    const std::vector<std::string> lines = Trial::LinesOf(result.err);
    ASSERT_EQ(lines.size(), 1001u);
    EXPECT_THAT(lines[999], StartsWith(file + ":1001, column 4: type: expected one of"));
    EXPECT_EQ(lines[1000],
              file + ":1002: 1000 faults were found up to here, and the rest was not read; mend those above first");
}

TEST(OwnCatalogue, AMissingFileIsBadInput)
{
    const auto result = RunKsteel("--catalogue nowhere.csv sections");
    EXPECT_EQ(result.code, 2) << result;
    EXPECT_EQ(result.err, "ksteel: nowhere.csv: no such file\n");
}

} // namespace
} // namespace Keltrix::App
