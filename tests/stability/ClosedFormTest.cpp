// Critical loads against closed forms.

#include <gtest/gtest.h>

#include "stability/Beams.h"

namespace StabilityTest {

namespace {

double Positive(const CriticalLoads& loads)
{
    EXPECT_TRUE(loads.IsAnswered()) << loads.reason.GetString();
    const Unit* const unit = loads.Governing();
    EXPECT_TRUE(unit && unit->positive);
    return unit && unit->positive ? unit->positive->lambda : std::nan("");
}

} // namespace

// UB 457x191x82 over 6 m: E 210000, G 81000 N/mm², Iz 18.7e6 mm⁴, It 692000 mm⁴, Iw 0.922e12 mm⁶ give 342.775 kN·m.
TEST(ClosedForm, UniformMomentByHand)
{
    SectionConstants s;
    s.E = 210e9;
    s.G = 81e9;
    s.A = 10400e-6;
    s.Iy = 371e-6;
    s.Iz = 18.7e-6;
    s.It = 692e-9;
    s.Iw = 0.922e-6;
    s.flange = {0.222, -0.222};
    const CriticalLoads loads = Analyse(Beam(6.0, 1e3, 1e3), s);
    EXPECT_NEAR(Positive(loads), 342.775, 0.0005);
    EXPECT_NEAR(loads.Governing()->positive->lambda, UniformMoment(s, 6.0) / 1e3, 342.775e-6);
    EXPECT_NEAR(loads.Governing()->negative->lambda, -UniformMoment(s, 6.0) / 1e3, 342.775e-6);
    EXPECT_LT(loads.Governing()->positive->error, 1e-4);
}

} // namespace StabilityTest
