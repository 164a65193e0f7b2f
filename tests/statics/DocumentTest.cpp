// The sample and the figures of docs/statics.md.

#include <cstdio>
#include <fstream>
#include <sstream>

#include "statics/RandomBeam.h"

namespace StaticsTest {

namespace {

std::string Read(const std::string& name)
{
    std::ifstream in(KELTRIX_SOURCE_DIR "/" + name);
    EXPECT_TRUE(in) << name;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void ExpectRow(const std::string& row, const char* format, double value)
{
    char figure[64];
    std::snprintf(figure, sizeof figure, format, value);
    EXPECT_NE(Read("docs/statics.md").find("| " + row + " | " + figure + " |"), std::string::npos)
        << row << " " << figure;
}

std::string Between(const std::string& text, const std::string& from, const std::string& to)
{
    const std::size_t begin = text.find(from) + from.size();
    return text.substr(begin, text.find(to, begin) - begin);
}

std::string WithoutIndent(const std::string& text)
{
    std::istringstream in(text);
    std::string all;
    for (std::string line; std::getline(in, line);) {
        const std::size_t first = line.find_first_not_of(' ');
        if (first != std::string::npos) all += line.substr(first) + "\n";
    }
    return all;
}

} // namespace

TEST(Documents, SampleAndItsFigures)
{
    // clang-format off
    // The sample:
    Beam beam;
    SetSpans(beam, {8.0, 8.0});
    beam.section.E = 205e9;
    beam.section.Iy = 294e-6;
    beam.section.mass = 67.1;
    beam.cases = {{L"Dead", ActionKind::Permanent, Category::None, false},
                  {L"Imposed", ActionKind::Imposed, Category::B, true}};
    beam.loads = {UniformLoad(0, 10e3), UniformLoad(1, 20e3)};
    const Analysis analysis(beam);
    const Combinations combinations = Expand(analysis, MakeRules(analysis, {Basis::BS5950, Expression::E610}));
    const std::vector<GeneratedMember> members = MakeMembers(analysis, combinations.list);
    // clang-format on
    const std::string code =
        Between(Read("tests/statics/DocumentTest.cpp"), "// The sample:\n", "    // clang-format on");
    EXPECT_EQ(WithoutIndent(code), WithoutIndent(Between(Read("docs/statics.md"), "```cpp\n", "```")));
    std::size_t ultimate = 0;
    double largest = 0.0;
    for (std::size_t i = 0; i < combinations.list.size(); ++i) {
        if (combinations.list[i].state != LimitState::Ultimate) continue;
        ++ultimate;
        for (const auto& s : members[i].subSpans)
            largest = std::max(largest, s.GetMomentsLeft().y);
    }
    ExpectRow("combinations of the sample above, ultimate", "%.0f", static_cast<double>(ultimate));
    // (1.4 (10 + 0.0671 x 9.81) + 1.6 x 20) x 8²/8
    EXPECT_NEAR(largest, (1.4 * (10e3 + 67.1 * 9.81) + 1.6 * 20e3) * 8.0, 1e-6);
    ExpectRow("its largest support moment", "%.3f kNm", -largest / 1e3);
}

TEST(Documents, Figures)
{
    Beam beam = Continuous({6.0, 8.0});
    beam.loads = {UniformLoad(0, 12e3)};
    ExpectRow("two spans of 6 and 8 m, 12 kN/m: moment at the support", "%.3f kNm",
              Solved(beam).major.Moment(6.0, Side::Left) / 1e3);
    beam = Continuous({1.0, 1.0, 1.0, 1.0});
    beam.loads = {UniformLoad(0, 1.0)};
    ExpectRow("four equal spans, uniform load: moment at the second support / W L²", "%.4f",
              Solved(beam).major.Moment(1.0, Side::Left));
    beam = Single(1.0, ENCASTRE, PINNED);
    beam.loads = {UniformLoad(0, 1.0)};
    ExpectRow("propped cantilever, uniform load: largest deflection x EI/W L⁴", "%.6f",
              EI * Solved(beam).major.Deflections(0.0, 1.0).greatest.value);
}

TEST(Documents, TheMemberByHand)
{
    Beam beam = Single(6.0, PINNED, PINNED);
    beam.loads = {UniformLoad(0, 10e3), PointLoad(0, 6e3, 3.0, Direction::Minor),
                  PointLoad(0, 20e3, 6.0, Direction::Axial)};
    const GeneratedMember m = MemberOf(beam);
    std::string lines;
    for (const auto& p : m.points)
        lines += "MEMBERPOINT," + *p.CSVLineOut().ToUtf8();
    for (const auto& s : m.subSpans)
        lines += "SUBSPAN," + *s.CSVLineOut().ToUtf8();
    EXPECT_NE(Read("docs/statics.md").find(lines), std::string::npos) << lines;
}

} // namespace StaticsTest
