#pragma once

// Random beams, and members of beams for the tests.

#include <random>
#include <string>

#include "keltrix/statics/GeneratedMember.h"
#include "statics/Beams.h"
#include "support/RandomCases.h"

using Keltrix::TestSupport::RandomCases;

namespace StaticsTest {

/// All cases once.
inline Combination Everything(const Analysis& analysis)
{
    Combination all;
    for (std::size_t c = 0; c < analysis.GetBeam().cases.size(); ++c)
        all.terms.push_back({c, 1.0, {}});
    return all;
}

inline GeneratedMember MemberOf(const Beam& beam)
{
    const Analysis analysis(beam);
    EXPECT_TRUE(analysis.IsAnswered()) << *analysis.Reason().ToUtf8();
    if (!analysis.IsAnswered()) return {};
    return MakeMembers(analysis, {Everything(analysis)}).front();
}

/// Random beams of one to five spans: overhangs, fixed ends, springs, hinges, every kind of load.
class BeamGenerator {
public:
    explicit BeamGenerator(unsigned seed) : m_random(seed) {}

    double Real(double a, double b) { return std::uniform_real_distribution<double>(a, b)(m_random); }
    int Whole(int a, int b) { return std::uniform_int_distribution<int>(a, b)(m_random); }
    bool Chance(double share) { return Real(0.0, 1.0) < share; }

    struct Kinds {
        bool springs = true;
        bool hinges = true;
        bool minor = true;
        bool moments = true;
        bool upwards = true;
        int cases = 1;
    };

    Beam Make(const Kinds& kinds)
    {
        Beam beam = Plain(1.0);
        std::vector<double> spans;
        const int count = Whole(1, 5);
        for (int i = 0; i < count; ++i)
            spans.push_back(Real(1.0, 12.0));
        SetSpans(beam, spans);
        AddOverhangs(beam);
        if (kinds.springs) AddSprings(beam);
        if (Chance(0.3)) beam.supports.front().holds = Held(0.0, ENCASTRE).holds;
        if (kinds.hinges) AddHinges(beam);
        beam.cases.resize(static_cast<std::size_t>(kinds.cases));
        for (std::size_t c = 0; c < beam.cases.size(); ++c)
            for (int i = Whole(1, 4); i > 0; --i)
                AddLoad(beam, c, kinds);
        return beam;
    }

private:
    void AddOverhangs(Beam& beam)
    {
        if (Chance(0.3)) {
            const double more = Real(0.3, 3.0);
            for (Support& s : beam.supports)
                s.at += more;
            beam.length += more;
        }
        if (Chance(0.3)) beam.length += Real(0.3, 3.0);
    }
    void AddSprings(Beam& beam)
    {
        for (Support& s : beam.supports) {
            if (Chance(0.2)) s.vertical = std::pow(10.0, Real(4.0, 8.0));
            if (Chance(0.2)) s.rotation = std::pow(10.0, Real(5.0, 8.0));
            if (Chance(0.1)) s.lateral = std::pow(10.0, Real(4.0, 8.0));
        }
    }
    // In inner spans, at most one in each, so that as a rule nothing is left loose.
    void AddHinges(Beam& beam)
    {
        for (std::size_t i = 1; i + 1 < beam.supports.size(); ++i)
            if (Chance(0.2)) {
                const double a = beam.supports[i].at;
                const double b = beam.supports[i + 1].at;
                beam.hinges.push_back({a + Real(0.1, 0.9) * (b - a), true, false});
            }
    }
    void AddLoad(Beam& beam, std::size_t c, const Kinds& kinds)
    {
        const Direction direction = kinds.minor && Chance(0.2) ? Direction::Minor
                                    : Chance(0.2)              ? Direction::Major
                                                               : Direction::Gravity;
        const double sign = kinds.upwards && Chance(0.3) ? -1.0 : 1.0;
        double a = Real(0.0, 0.9) * beam.length;
        double b = a + Real(0.02, 1.0) * (beam.length - a);
        switch (Whole(0, kinds.moments ? 4 : 3)) {
        case 0:
            beam.loads.push_back(UniformLoad(c, sign * Real(1e3, 3e4), 0.0, INFINITY, direction));
            break;
        case 1:
            beam.loads.push_back(UniformLoad(c, sign * Real(1e3, 3e4), a, b, direction));
            break;
        case 2:
            beam.loads.push_back(TrapezoidalLoad(c, a, sign * Real(0.0, 3e4), b, sign * Real(0.0, 3e4), direction));
            break;
        case 3:
            beam.loads.push_back(PointLoad(c, sign * Real(1e3, 1e5), a, direction));
            break;
        default:
            beam.loads.push_back(MomentLoad(c, Real(-5e4, 5e4), a, direction));
        }
    }

    std::mt19937 m_random;
};

inline constexpr unsigned SEED = 20031;

/// Calls `check` with the analysis of random beams; those that nothing holds are counted, not checked.
template <class Check>
void ForRandomBeams(int count, const BeamGenerator::Kinds& kinds, Check check)
{
    BeamGenerator generator(SEED);
    int answered = 0;
    for (int i = 0; i < RandomCases(count); ++i) {
        const Beam beam = generator.Make(kinds);
        SCOPED_TRACE("seed " + std::to_string(SEED) + ", beam " + std::to_string(i));
        const Analysis analysis(beam);
        if (!analysis.IsAnswered()) {
            EXPECT_FALSE(analysis.Motion().samples.empty()) << *analysis.Reason().ToUtf8();
            continue;
        }
        ++answered;
        check(analysis, generator);
        if (testing::Test::HasFailure()) return;
    }
    EXPECT_GT(answered, RandomCases(count) * 3 / 4);
}

} // namespace StaticsTest
