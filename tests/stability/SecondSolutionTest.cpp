// Random members against the second solution.

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <random>

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

// Without shapes a plain unit is solved by a series. Elements give the same factors within the errors that both estimate.
TEST(SecondSolution, SeriesAgainstElementsForPlainUnits)
{
    constexpr unsigned SEED = 120824;
    std::mt19937 random(SEED);
    const auto real = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(random); };
    const std::vector<CSection> sections = SectionsOfEveryKind();
    int bySeries = 0;
    int atCentre = 0;
    double worst = 0.0;
    const int members = NumberOfMembers(2000);
    for (int i = 0; i < members; ++i) {
        const SectionConstants section = ConstantsOf(sections[random() % sections.size()]);
        Member m;
        AddPoint(m, 0.0, L"Pinned");
        const int pieces = 1 + static_cast<int>(random() % 4);
        bool hasHeight = false;
        const auto setHeight = [&](auto set, std::size_t place) {
            if (random() % 6 != 0) return;
            hasHeight = true;
            set(m, place, real(-0.5, 0.5));
        };
        double moment = random() % 3 ? real(-1e5, 1e5) : 0.0;
        for (int k = 0; k < pieces; ++k) {
            const double end = random() % 4 ? real(-1e5, 1e5) : moment;
            const bool last = k + 1 == pieces;
            AddSpan(m, real(0.3, 6.0), moment, end, random() % 2 ? real(-2e4, 2e4) : 0.0, L"Free",
                    last ? L"Pinned" : L"Free");
            moment = end;
            setHeight(SetHeightAlong, static_cast<std::size_t>(k));
            if (!last) setHeight(SetHeight, static_cast<std::size_t>(k) + 1);
        }
        SCOPED_TRACE("seed " + std::to_string(SEED) + ", member " + std::to_string(i));
        const CriticalLoads elements = Analyse(m, section);
        Options options;
        options.shapes = false;
        const CriticalLoads series = FindCriticalLoads(m.points, m.subSpans, MajorOf(m), section, options);
        ASSERT_EQ(series.units.size(), 1u);
        ASSERT_EQ(elements.units.size(), 1u);
        const Unit& a = elements.units[0];
        const Unit& b = series.units[0];
        EXPECT_EQ(a.outcome, b.outcome);
        const auto compare = [&](const std::optional<Stability::CriticalLoad>& byElements,
                                 const std::optional<Stability::CriticalLoad>& found) {
            ASSERT_EQ(byElements.has_value(), found.has_value());
            if (!found || !found->shape.empty()) return;
            ++bySeries;
            const double difference = std::abs(found->lambda / byElements->lambda - 1.0);
            worst = std::max(worst, difference);
            EXPECT_LE(difference, found->error + byElements->error) << found->lambda;
            EXPECT_NEAR(found->Mcr, byElements->Mcr, (found->error + byElements->error) * found->Mcr);
        };
        compare(a.positive, b.positive);
        compare(a.negative, b.negative);
        if (hasHeight || section.betaZ != 0.0 || (b.positive && b.positive->shape.empty())) continue;
        ++atCentre;
    }
    std::printf("%d factors of %d members by the series, largest difference %.2g; %d not, though all loads are at the "
                "shear centre\n",
                bySeries, members, worst, atCentre);
    EXPECT_GT(bySeries, members / 2);
    EXPECT_LT(atCentre, members / 20);
}

} // namespace StabilityTest
