// Whole outputs of the program, kept in tests/app/golden. After a wanted change, write them anew with
//   KSTEEL_REFRESH_GOLDEN=1 ctest -R Golden
// and read the difference before it is committed.

#include <gtest/gtest.h>

#include "AppSupport.h"

namespace Keltrix::App {
namespace {

struct GoldenRow {
    const char* file;
    const char* arguments;
    int code;
};

class Golden : public ::testing::TestWithParam<GoldenRow> {};

TEST_P(Golden, OutputIsAsKept)
{
    const GoldenRow& row = GetParam();
    const auto result = Trial::RunKsteel(row.arguments);
    EXPECT_EQ(result.code, row.code) << result;
    const std::filesystem::path kept = std::filesystem::path(KSTEEL_GOLDEN_DIR) / row.file;
    if (std::getenv("KSTEEL_REFRESH_GOLDEN")) {
        std::ofstream(kept, std::ios::binary) << result.out;
        GTEST_SKIP() << "written anew: " << kept;
    }
    EXPECT_EQ(result.out, Trial::ReadWhole(kept))
        << "ksteel " << row.arguments << " differs from " << kept << "; see the top of GoldenTest.cpp";
}

INSTANTIATE_TEST_SUITE_P(
    App, Golden,
    ::testing::Values(GoldenRow{"show_floor_beam.txt", "show examples/floor_beam.csv", 0},
                      GoldenRow{"show_floor_beam_colour.txt", "show --color always examples/floor_beam.csv", 0},
                      GoldenRow{"show_floor_beam_raw.txt", "show --raw examples/floor_beam.csv", 0},
                      GoldenRow{"validate_spoiled.txt", "validate tests/app/golden/spoiled.csv", 2},
                      GoldenRow{"section_ub.txt", "section 'UB 457x191x67'", 0},
                      GoldenRow{"section_angle.svg", "section 'L 60x30x5' --svg -", 0},
                      GoldenRow{"sections_ubp.txt", "sections --family UBP --sort mass", 0},
                      GoldenRow{"spans_floor_beam.txt", "spans examples/floor_beam.csv", 0},
                      GoldenRow{"spans_cantilever.json", "spans --format json examples/cantilever.csv", 0}),
    [](const auto& row) {
        std::string name = row.param.file;
        for (char& c : name)
            if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
        return name;
    });

} // namespace
} // namespace Keltrix::App
