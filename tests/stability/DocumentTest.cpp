// Figures of docs/stability.md.

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "stability/Beams.h"

namespace StabilityTest {

namespace {

std::string Document()
{
    std::ifstream in(KELTRIX_SOURCE_DIR "/docs/stability.md");
    EXPECT_TRUE(in);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// The cell after the row's name.
void ExpectRow(const std::string& row, double value, const char* unit = "")
{
    char figure[64];
    std::snprintf(figure, sizeof figure, "%.3f%s", value, unit);
    EXPECT_NE(Document().find("| " + row + " | " + figure + " |"), std::string::npos) << row << " " << figure;
}

} // namespace

TEST(Documents, Figures)
{
    ExpectRow("UB 457x191x82, 6 m between forks, uniform moment, E 210, G 81 kN/mm²",
              Factor(Beam(6.0, 1e3, 1e3), RoundedUB(), false), " kN·m");
    ExpectRow("two spans of 9.75 m, 10 kN at the middle of each, whole member",
              Factor(TwoSpans(), ConstantsOf(Steel::Test::HostI(0.3, 0.2, 0.01, 0.015, 0.0)), true));
    const SectionConstants deep = ConstantsOf(Steel::Test::HostI(0.5, 0.28, 0.0125, 0.019, 0.0));
    ExpectRow("18 m, uniform load, fork at mid-span, whole member", Factor(HeldAt(0.5, L"F12L TR"), deep, true));
    ExpectRow("18 m, uniform load, top flange held at a quarter", Factor(HeldAt(0.25, L"F1L"), deep, false));
}

} // namespace StabilityTest
