// Random members against the second solution.

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

#include "stability/RandomBuckling.h"

namespace StabilityTest {

namespace {

bool Agree(const std::optional<Stability::CriticalLoad>& load, const std::optional<double>& other)
{
    return load.has_value() == other.has_value() && (!load || std::abs(load->lambda / *other - 1.0) < 2.5e-3);
}

// Of a section that does not resist warping: the factor at which the axial force takes all torsional stiffness from a cross-section.
// The buckle is then as short as it likes, and polynomials come to its factor slowly.
double WhereTorsionVanishes(const SecondMember& m)
{
    if (m.section.Iw > 0.0) return std::numeric_limits<double>::infinity();
    double largest = 0.0;
    for (const SecondSubSpan& s : m.subSpans)
        largest = std::max({largest, std::abs(s.compressionLeft), std::abs(s.compressionRight)});
    return m.section.G * m.section.It / (largest * m.section.PolarRadius2());
}

} // namespace

// Ritz's factors come from above, so that the library's may exceed them by no more than its estimated error.
TEST(SecondSolution, RandomMembers)
{
    constexpr unsigned SEED = 20260;
    Generator generator(SEED);
    int buckling = 0;
    int notHeld = 0;
    double worst = 0.0;
    for (int i = 0; i < NumberOfMembers(5000); ++i) {
        const Pair pair = generator.Make();
        SCOPED_TRACE("seed " + std::to_string(SEED) + ", member " + std::to_string(i) + ": " + pair.text);
        const SectionConstants& section = pair.second.section;
        const CriticalLoads loads = Analyse(pair.member, section, true);
        ASSERT_TRUE(loads.IsAnswered()) << loads.reason.GetString();
        SecondResult second = SolveAgain(pair.second, 9);
        if (loads.units.empty()) continue; // held all along
        const Unit& unit = loads.units[0];
        // Short buckles need polynomials of a higher degree.
        for (int degree = 14;
             degree < 40 && !(Agree(unit.positive, second.positive) && Agree(unit.negative, second.negative));
             degree += 9)
            second = SolveAgain(pair.second, degree);
        ASSERT_EQ(unit.outcome != Outcome::NotHeld, second.held);
        notHeld += second.held ? 0 : 1;
        const auto compare = [&](const std::optional<Stability::CriticalLoad>& load,
                                 const std::optional<double>& found) {
            const double other = found.value_or(0.0);
            // A factor above 1e9 is rounding of work that vanishes.
            ASSERT_EQ(load.has_value(), found.has_value() && std::abs(other) < 1e9) << other;
            if (!load) return;
            ++buckling;
            const double difference = load->lambda / other - 1.0;
            EXPECT_LE(difference, load->error) << load->lambda << " " << other;
            if (std::abs(load->lambda) > 0.95 * WhereTorsionVanishes(pair.second)) return;
            worst = std::max(worst, std::abs(difference));
            EXPECT_NEAR(load->lambda, other, 0.005 * std::abs(other));
        };
        compare(unit.positive, second.positive);
        compare(unit.negative, second.negative);
    }
    RecordProperty("factors", buckling);
    RecordProperty("worst_difference", std::to_string(worst));
    std::printf("%d factors, %d members not held, largest difference %.2g\n", buckling, notHeld, worst);
    EXPECT_GT(buckling, NumberOfMembers(5000) / 2);
    EXPECT_GT(notHeld, NumberOfMembers(5000) / 100);
}

} // namespace StabilityTest
