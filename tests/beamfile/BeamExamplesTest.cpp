// The beams of examples/ against hand calculations, whose figures stand beside each.

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "beamfile/BeamSupport.h"

namespace Keltrix::BeamTest {
namespace {

Beam Example(const std::string& name)
{
    std::ifstream in(KELTRIX_SOURCE_DIR "/examples/" + name + ".toml", std::ios::binary);
    EXPECT_TRUE(in) << name;
    std::ostringstream text;
    text << in.rdbuf();
    return Read(text.str());
}

// The most and the least axial force of all combinations, N.
Design::Extremes AxialForces(const Beam& beam)
{
    Design::Extremes extremes;
    for (const BeamMember& member : beam.made.members) {
        const auto& combination = beam.made.combinations.list[member.combination];
        for (const Statics::AxialPiece& piece : beam.made.analysis->Of(combination.terms).axial) {
            extremes.greatest = std::max({extremes.greatest, piece.left, piece.right});
            extremes.least = std::min({extremes.least, piece.left, piece.right});
        }
    }
    return extremes;
}

// The reaction upwards at a support in the combination whose name holds some words.
double ReactionIn(const Beam& beam, const std::string& words, std::size_t support)
{
    for (const BeamMember& member : beam.made.members)
        if (member.name.find(words) != std::string::npos)
            return beam.made.analysis->Of(beam.made.combinations.list[member.combination].terms)
                .reactions[support]
                .vertical;
    ADD_FAILURE() << "no combination " << words;
    return 0.0;
}

// P = 1.4 x 30 + 1.6 x 45 = 114 kN at 3 and 6 m, w = 1.4 x 82.2 x 9.81 N/m = 1.129 kN/m: R = 114 + 1.129 x 4.5 = 119.08 kN,
// M = 114 x 3 + 1.129 x 81/8 = 353.43 kNm. I = 47 500 cm⁴: 45 kN at both thirds deflect 23 P L³/(648 EI) =
// 23 x 45e3 x 729/(648 x 205e9 x 475e-6) = 11.96 mm, limit 9000/360 = 25 mm. All loads: 23 x 75e3 x 729/(648 EI) +
// 5 x 806.4 x 6561/(384 EI) = 19.93 + 0.71 = 20.64 mm, limit 9000/250 = 36 mm.
TEST(BeamExamples, FloorBeam)
{
    const Beam beam = Example("floor_beam");
    const CheckedMember checked = CheckBeam(beam, DefaultCode(), false);
    EXPECT_EQ(checked.Status(), "pass");
    EXPECT_NEAR(checked.momentMajor.least, -353.43e3, 20.0);
    EXPECT_NEAR(ReactionIn(beam, "1.4 Dead + 1.6 Imposed", 0), 119.08e3, 5.0);
    const Design::RuleFinding* const variable = Find(checked, "deflection, variable loads");
    const Design::RuleFinding* const total = Find(checked, "deflection, all loads");
    ASSERT_TRUE(variable && total);
    EXPECT_NEAR(variable->utilisation, 11.96 / 25.0, 2e-3);
    EXPECT_NEAR(total->utilisation, 20.64 / 36.0, 2e-3);
}

// G = 10 + 101 x 9.81e-3 = 10.991 kN/m, w = 1.4 x 10.991 + 1.6 x 20 = 47.387 kN/m. Both spans loaded: M = w L²/8 = 379.10 kNm at the
// support, whose reaction is 1.25 w L = 473.87 kN. One span loaded: M at the support (15.387 + 47.387) 64/16 = 251.10 kNm, R at its end
// 47.387 x 4 - 251.10/8 = 158.16 kN, M = R²/2w = 263.94 kNm. Deflection under 20 kN/m on one span: 0.0092 q L⁴/EI, tables, with
// I = 61 500 cm⁴: 5.98 mm; limit 8000/360 = 22.22 mm.
TEST(BeamExamples, TwoSpans)
{
    const Beam beam = Example("two_span");
    const CheckedMember checked = CheckBeam(beam, DefaultCode(), false);
    EXPECT_EQ(checked.Status(), "pass");
    EXPECT_NEAR(checked.momentMajor.greatest, 379.10e3, 10.0);
    EXPECT_NEAR(checked.momentMajor.greatestAt, 8.0, 1e-9);
    EXPECT_NEAR(checked.momentMajor.least, -263.94e3, 20.0);
    double middle = 0.0;
    for (const BeamMember& member : beam.made.members)
        for (const Statics::Reaction& reaction :
             beam.made.analysis->Of(beam.made.combinations.list[member.combination].terms).reactions)
            if (reaction.at == 8.0) middle = std::max(middle, reaction.vertical);
    EXPECT_NEAR(middle, 473.87e3, 10.0);
    const Design::RuleFinding* const deflection = Find(checked, "deflection, ");
    ASSERT_TRUE(deflection);
    EXPECT_NEAR(deflection->utilisation, 5.98 / 22.22, 0.01 * 5.98 / 22.22);
}

// 8 m at 10°: G = 3 + 39.1 x 9.81e-3 = 3.3836 kN/m, S = 4 kN/m; 1.4 G + 1.6 S = 11.137 kN/m, across 11.137 cos 10° = 10.968 kN/m:
// M = 10.968 x 64/8 = 87.74 kNm; along 11.137 sin 10° x 8 = 15.47 kN of compression at the foot. Suction 1.4 x 6 = 8.4 kN/m against
// 1.0 G cos 10° = 3.3322: M = -5.0678 x 64/8 = -40.54 kNm.
TEST(BeamExamples, Rafter)
{
    const Beam beam = Example("rafter");
    const CheckedMember checked = CheckBeam(beam, DefaultCode(), false);
    EXPECT_EQ(checked.Status(), "pass");
    EXPECT_NEAR(checked.momentMajor.least, -87.74e3, 10.0);
    EXPECT_NEAR(checked.momentMajor.greatest, 40.54e3, 10.0);
    EXPECT_NEAR(AxialForces(beam).least, -15.47e3, 5.0);
}

// Reaction 1.4 x 60 + 1.6 x 75 = 204 kN, 0.1016 + 0.1 = 0.2016 m from the centre: M = 41.126 kNm at the top. At the foot
// N = 204 + 1.4 x 180 + 1.6 x 200 + 1.4 x 46.1 x 9.81e-3 x 3.5 = 778.22 kN.
TEST(BeamExamples, Column)
{
    const Beam beam = Example("column");
    const CheckedMember checked = CheckBeam(beam, DefaultCode(), false);
    EXPECT_EQ(checked.Status(), "pass");
    EXPECT_NEAR(std::max(checked.momentMajor.greatest, -checked.momentMajor.least), 41.126e3, 2.0);
    EXPECT_NEAR(AxialForces(beam).least, -778.22e3, 10.0);
    EXPECT_EQ(Find(checked, "deflection, "), nullptr); // no limit of beams
}

// N = 1.4 x 150 + 1.6 x 220 = 562 kN, M = 1.4 x 22.2 x 9.81 x 9/8 = 343.0 N·m.
TEST(BeamExamples, Chord)
{
    const Beam beam = Example("chord");
    const CheckedMember checked = CheckBeam(beam, DefaultCode(), false);
    EXPECT_EQ(checked.Status(), "pass");
    EXPECT_NEAR(AxialForces(beam).least, -562e3, 1e-6);
    EXPECT_NEAR(checked.momentMajor.least, -343.0, 0.1);
}

// N = 1.4 x 90 = 126 kN of tension, 1.4 x 60 = 84 kN of compression; wind comes from one side at a time.
TEST(BeamExamples, Brace)
{
    const Beam beam = Example("brace");
    const CheckedMember checked = CheckBeam(beam, DefaultCode(), false);
    EXPECT_EQ(checked.Status(), "pass");
    EXPECT_NEAR(AxialForces(beam).greatest, 126e3, 1e-6);
    EXPECT_NEAR(AxialForces(beam).least, -84e3, 1e-6);
    EXPECT_EQ(checked.CombinationOf(checked.findings.Governing()), "dead and wind: 1.4 Wind from the right");
}

} // namespace
} // namespace Keltrix::BeamTest
