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

double Factor(const Member& m, const SectionConstants& s, bool continuity)
{
    return Analyse(m, s, continuity).Governing()->positive->lambda;
}

} // namespace

TEST(Documents, Figures)
{
    SectionConstants ub;
    ub.E = 210e9;
    ub.G = 81e9;
    ub.A = 10400e-6;
    ub.Iy = 371e-6;
    ub.Iz = 18.7e-6;
    ub.It = 692e-9;
    ub.Iw = 0.922e-6;
    ub.flange = {0.222, -0.222};
    ExpectRow("UB 457x191x82, 6 m between forks, uniform moment, E 210, G 81 kN/mm²",
              Factor(Beam(6.0, 1e3, 1e3), ub, false), " kN·m");
    const double PL = 10e3 * 9.75;
    Member two;
    AddPoint(two, 0.0, L"Pinned");
    AddSpan(two, 4.875, 0.0, 5.0 / 32.0 * PL);
    AddSpan(two, 4.875, 5.0 / 32.0 * PL, -3.0 / 16.0 * PL, 0.0, L"Free", L"Pinned");
    AddSpan(two, 4.875, -3.0 / 16.0 * PL, 5.0 / 32.0 * PL);
    AddSpan(two, 4.875, 5.0 / 32.0 * PL, 0.0, 0.0, L"Free", L"Pinned");
    ExpectRow("two spans of 9.75 m, 10 kN at the middle of each, whole member",
              Factor(two, ConstantsOf(Steel::Test::HostI(0.3, 0.2, 0.01, 0.015, 0.0)), true));
    const auto held = [](double share, const wchar_t* text) {
        const double a = share * 18.0;
        const double moment = 1.5e3 * a * (18.0 - a);
        Member m;
        AddPoint(m, 0.0, L"Pinned");
        AddSpan(m, a, 0.0, moment, 3e3, L"Free", text);
        AddSpan(m, 18.0 - a, moment, 0.0, 3e3, L"Free", L"Pinned");
        return m;
    };
    const SectionConstants deep = ConstantsOf(Steel::Test::HostI(0.5, 0.28, 0.0125, 0.019, 0.0));
    ExpectRow("18 m, uniform load, fork at mid-span, whole member", Factor(held(0.5, L"F12L TR"), deep, true));
    ExpectRow("18 m, uniform load, top flange held at a quarter", Factor(held(0.25, L"F1L"), deep, false));
}

} // namespace StabilityTest
