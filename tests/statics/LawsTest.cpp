// Random beams: against a second solution, and laws that hold for every beam.

#include <algorithm>
#include <functional>
#include <stdexcept>

#include "keltrix/design/MomentDiagram.h"
#include "statics/RandomBeam.h"
#include "statics/SecondSolution.h"

namespace StaticsTest {

namespace {

// Largest magnitudes of a line: the scale of what rounding may leave.
struct Scale {
    double moment = 1e-6;
    double shear = 1e-6;
    double deflection = 1e-12;
};
Scale ScaleOf(const Line& line)
{
    Scale scale;
    for (const Piece& p : line.Pieces()) {
        for (const double t : {0.0, 0.5 * p.length, p.length}) {
            scale.moment = std::max(scale.moment, std::abs(p.MomentAt(t)));
            scale.shear = std::max(scale.shear, std::abs(p.ShearAt(t)));
            scale.deflection = std::max(scale.deflection, std::abs(p.DeflectionAt(t, line.EI())));
        }
    }
    // A moment that does not change along the member has no shear of its own.
    scale.shear = std::max(scale.shear, scale.moment / line.Pieces().back().End());
    return scale;
}

void ExpectSecondSolution(const Analysis& analysis, const Line& line, bool minor)
{
    const Shooting second(analysis.GetBeam(), 0, minor);
    const Scale scale = ScaleOf(line);
    for (const Piece& p : line.Pieces())
        for (const double s : {0.1, 0.5, 0.93}) {
            const double x = p.start + s * p.length;
            const State state = second.RightOf(x);
            EXPECT_NEAR(line.Moment(x, Side::Right), state.moment, 1e-8 * scale.moment) << x;
            EXPECT_NEAR(line.Shear(x, Side::Right), state.shear, 1e-8 * scale.shear) << x;
            EXPECT_NEAR(line.Deflection(x), state.deflection, 1e-8 * scale.deflection) << x;
            EXPECT_NEAR(line.Slope(x, Side::Right), state.slope,
                        1e-8 * scale.deflection / analysis.GetBeam().length * 100.0)
                << x;
        }
}

// Integral of a function over a length; exact for polynomials of seventh degree.
double Integral(double from, double to, const std::function<double(double)>& of)
{
    double sum = 0.0;
    const double at[] = {-0.8611363115940526, -0.3399810435848563, 0.3399810435848563, 0.8611363115940526};
    const double weight[] = {0.3478548451374538, 0.6521451548625461, 0.6521451548625461, 0.3478548451374538};
    for (int i = 0; i < 4; ++i)
        sum += 0.5 * (to - from) * weight[i] * of(from + 0.5 * (1.0 + at[i]) * (to - from));
    return sum;
}

double Share(const Load& load, double inclination)
{
    return load.direction == Direction::Gravity && load.shape != LoadShape::Moment ? std::cos(inclination) : 1.0;
}

// Loads of one plane between two places: their sum, and their moment about the right one. Distributed ones alone.
struct Sum {
    double force = 0.0;
    double moment = 0.0;
    double largest = 0.0;
};
Sum DistributedBetween(const Beam& beam, bool minor, double from, double to)
{
    Sum sum;
    for (const Load& load : beam.loads) {
        if (load.shape != LoadShape::Distributed || load.direction == Direction::Axial) continue;
        if ((load.direction == Direction::Minor) != minor) continue;
        const double a = std::max(from, load.from);
        const double b = std::min(to, std::min(load.to, beam.length));
        if (b <= a) continue;
        const auto q = [&](double x) {
            const double s = std::isinf(load.to) ? 0.0 : (x - load.from) / (load.to - load.from);
            return Share(load, beam.inclination) * (load.value + s * (load.valueTo - load.value));
        };
        sum.force += Integral(a, b, q);
        sum.moment += Integral(a, b, [&](double x) { return q(x) * (to - x); });
    }
    return sum;
}
Sum PointsAt(const Beam& beam, bool minor, double x)
{
    Sum sum;
    for (const Load& load : beam.loads) {
        if (load.shape == LoadShape::Distributed || std::abs(load.from - x) > 1e-9 * beam.length) continue;
        if (load.direction == Direction::Axial || (load.direction == Direction::Minor) != minor) continue;
        (load.shape == LoadShape::Point ? sum.force : sum.moment) += Share(load, beam.inclination) * load.value;
    }
    return sum;
}

double WorkOn(const Beam& beam, std::size_t caseIndex, const Response& r)
{
    double work = 0.0;
    for (const Load& load : beam.loads) {
        if (load.caseIndex != caseIndex) continue;
        const Line& line = load.direction == Direction::Minor ? r.minor : r.major;
        const double share = Share(load, beam.inclination);
        if (load.shape == LoadShape::Point)
            work += share * load.value * line.Deflection(load.from);
        else if (load.shape == LoadShape::Moment)
            work += load.value * line.Slope(load.from, Side::Left);
        else
            for (const Piece& p : line.Pieces()) {
                const double a = std::max(p.start, load.from);
                const double b = std::min(p.End(), load.to);
                if (b - a <= 1e-9 * beam.length) continue;
                work += Integral(a, b, [&](double x) {
                    const double s = (x - load.from) / (load.to - load.from);
                    return share * (load.value + s * (load.valueTo - load.value)) *
                           p.DeflectionAt(x - p.start, line.EI());
                });
            }
    }
    return work;
}

Beam Mirrored(const Beam& beam)
{
    Beam m = beam;
    m.axiallyHeldAt = beam.length - *beam.axiallyHeldAt;
    for (Support& s : m.supports)
        s.at = beam.length - s.at;
    for (Hinge& h : m.hinges)
        h.at = beam.length - h.at;
    for (Load& load : m.loads) {
        const double to = load.shape == LoadShape::Distributed ? std::min(load.to, beam.length) : load.from;
        const double value = load.value;
        load.to = beam.length - load.from;
        load.from = beam.length - to;
        if (load.shape == LoadShape::Distributed) std::swap(load.value, load.valueTo);
        if (load.shape == LoadShape::Moment) load.value = -value;
    }
    return m;
}

} // namespace

TEST(RandomLaws, SecondSolution)
{
    ForRandomBeams(3000, {}, [](const Analysis& analysis, BeamGenerator&) {
        const Response r = analysis.OfCase(0);
        ExpectSecondSolution(analysis, r.major, false);
        if (!r.minor.IsEmpty()) ExpectSecondSolution(analysis, r.minor, true);
    });
}

TEST(RandomLaws, Superposition)
{
    BeamGenerator::Kinds kinds;
    kinds.cases = 3;
    ForRandomBeams(1000, kinds, [](const Analysis& analysis, BeamGenerator& random) {
        std::vector<Term> terms;
        Beam together = analysis.GetBeam();
        for (std::size_t c = 0; c < 3; ++c)
            terms.push_back({c, random.Real(-2.0, 2.0), {}});
        for (Load& load : together.loads) {
            load.value *= terms[load.caseIndex].factor;
            load.valueTo *= terms[load.caseIndex].factor;
            load.caseIndex = 0;
        }
        const Response sum = analysis.Of(terms);
        const Response once = Solved(together);
        const Scale scale = ScaleOf(once.major);
        ASSERT_EQ(sum.major.Pieces().size(), once.major.Pieces().size());
        for (std::size_t i = 0; i < once.major.Pieces().size(); ++i) {
            EXPECT_NEAR(sum.major.Pieces()[i].moment, once.major.Pieces()[i].moment, 1e-9 * scale.moment);
            EXPECT_NEAR(sum.major.Pieces()[i].shear, once.major.Pieces()[i].shear, 1e-9 * scale.shear);
            EXPECT_NEAR(sum.major.Pieces()[i].deflection, once.major.Pieces()[i].deflection, 1e-9 * scale.deflection);
        }
    });
}

TEST(RandomLaws, Mirror)
{
    ForRandomBeams(1000, {}, [](const Analysis& analysis, BeamGenerator&) {
        const double length = analysis.GetBeam().length;
        const Response r = analysis.OfCase(0);
        const Response m = Solved(Mirrored(analysis.GetBeam()));
        for (Line Response::*const plane : {&Response::major, &Response::minor}) {
            const Line& a = r.*plane;
            const Line& b = m.*plane;
            ASSERT_EQ(a.IsEmpty(), b.IsEmpty());
            if (a.IsEmpty()) continue;
            const Scale scale = ScaleOf(a);
            for (const Piece& p : a.Pieces()) {
                const double x = p.start + 0.4 * p.length;
                EXPECT_NEAR(a.Moment(x, Side::Left), b.Moment(length - x, Side::Left), 1e-9 * scale.moment);
                EXPECT_NEAR(a.Shear(x, Side::Left), -b.Shear(length - x, Side::Left), 1e-9 * scale.shear);
                EXPECT_NEAR(a.Deflection(x), b.Deflection(length - x), 1e-9 * scale.deflection);
            }
        }
        for (std::size_t i = 0; i < r.reactions.size(); ++i)
            EXPECT_NEAR(r.reactions[i].vertical, m.reactions[r.reactions.size() - 1 - i].vertical,
                        1e-9 * ScaleOf(r.major).shear);
    });
}

// Maxwell and Betti: the loads of one case do as much work on the displacements of another as the other way round.
TEST(RandomLaws, Reciprocity)
{
    BeamGenerator::Kinds kinds;
    kinds.cases = 2;
    ForRandomBeams(1000, kinds, [](const Analysis& analysis, BeamGenerator&) {
        const Beam& beam = analysis.GetBeam();
        const Response a = analysis.OfCase(0);
        const Response b = analysis.OfCase(1);
        const double scale = std::sqrt(std::abs(WorkOn(beam, 0, a) * WorkOn(beam, 1, b)));
        EXPECT_NEAR(WorkOn(beam, 0, b), WorkOn(beam, 1, a), 1e-9 * scale);
    });
}

// Loads and reactions of the whole member.
TEST(RandomLaws, EquilibriumOfTheMember)
{
    ForRandomBeams(2000, {}, [](const Analysis& analysis, BeamGenerator&) {
        const Beam& beam = analysis.GetBeam();
        const Response r = analysis.OfCase(0);
        for (const bool minor : {false, true}) {
            Sum loads = DistributedBetween(beam, minor, 0.0, beam.length);
            double size = std::abs(loads.force) + std::abs(loads.moment) / beam.length;
            for (const Load& load : beam.loads) {
                if (load.shape == LoadShape::Distributed || (load.direction == Direction::Minor) != minor) continue;
                const bool point = load.shape == LoadShape::Point;
                loads.force += point ? load.value : 0.0;
                loads.moment += point ? load.value * (beam.length - load.from) : -load.value;
                size += std::abs(load.value) / (point ? 1.0 : beam.length);
            }
            double force = 0.0;
            double moment = 0.0;
            for (const Reaction& x : r.reactions) {
                const double up = minor ? -x.lateral : x.vertical;
                force += up;
                moment += up * (beam.length - x.at) + (minor ? x.lateralMoment : x.moment);
                size += std::abs(up);
            }
            EXPECT_NEAR(force, loads.force, 1e-9 * size);
            EXPECT_NEAR(moment, loads.moment, 1e-9 * size * beam.length);
        }
    });
}

TEST(RandomLaws, EquilibriumOfSubSpansAndPoints)
{
    ForRandomBeams(2000, {}, [](const Analysis& analysis, BeamGenerator&) {
        const Beam& beam = analysis.GetBeam();
        const GeneratedMember m = MakeMembers(analysis, {Everything(analysis)}).front();
        const Response r = analysis.OfCase(0);
        for (const bool minor : {false, true}) {
            const Scale scale = ScaleOf(r.major);
            const Scale across = minor ? ScaleOf(r.minor.IsEmpty() ? r.major : r.minor) : scale;
            // Textbook signs from those of the member.
            const auto shear = [&](const Vec3<double>& f) { return minor ? f.y : -f.z; };
            const auto bending = [&](const Vec3<double>& v) { return minor ? -v.z : -v.y; };
            double shearBefore = 0.0;
            double momentBefore = 0.0;
            for (std::size_t k = 0; k <= m.subSpans.size(); ++k) {
                const double x = m.points[k].GetPos();
                const bool end = k == m.subSpans.size();
                const double left = end ? 0.0 : shear(m.subSpans[k].GetForcesLeft());
                const double momentLeft = end ? 0.0 : bending(m.subSpans[k].GetMomentsLeft());
                Sum at = PointsAt(beam, minor, x);
                for (const Reaction& reaction : r.reactions)
                    if (reaction.at == x) {
                        at.force -= minor ? -reaction.lateral : reaction.vertical;
                        at.moment += minor ? reaction.lateralMoment : reaction.moment;
                    }
                // Shears of mean loads are within 0.1 % of the largest shear, from both sides.
                const bool linear =
                    beam.loads.end() != std::find_if(beam.loads.begin(), beam.loads.end(), [](const Load& l) {
                        return l.value != l.valueTo && l.shape == LoadShape::Distributed;
                    });
                EXPECT_NEAR(left - shearBefore, -at.force, (linear ? 2e-3 : 1e-9) * across.shear) << x;
                EXPECT_NEAR(momentLeft - momentBefore, at.moment, 1e-9 * across.moment) << x;
                if (end) break;
                const double to = m.points[k + 1].GetPos();
                const double right = shear(m.subSpans[k].GetForcesRight());
                const double momentRight = bending(m.subSpans[k].GetMomentsRight());
                const Sum along = DistributedBetween(beam, minor, x, to);
                EXPECT_NEAR(right - left, -along.force, 1e-9 * across.shear) << x;
                const double change = momentRight - momentLeft - left * (to - x);
                const double exact = std::abs(change + along.moment);
                const double mean = std::abs(change + 0.5 * along.force * (to - x));
                EXPECT_LE(std::min(exact, mean), 1e-9 * across.moment) << x;
                shearBefore = right;
                momentBefore = momentRight;
            }
        }
    });
}

TEST(RandomLaws, TheMomentDiagramOfTheChecks)
{
    ForRandomBeams(2000, {}, [](const Analysis& analysis, BeamGenerator&) {
        const GeneratedMember m = MakeMembers(analysis, {Everything(analysis)}).front();
        const Response r = analysis.OfCase(0);
        const Design::MomentDiagram major(m.points, m.subSpans, Design::Bending::Major);
        const Design::MomentDiagram minor(m.points, m.subSpans, Design::Bending::Minor);
        for (std::size_t k = 0; k < m.subSpans.size(); ++k)
            for (const double s : {0.0, 0.2113248654, 0.5, 0.7886751346, 1.0}) {
                const double x = (1.0 - s) * m.points[k].GetPos() + s * m.points[k + 1].GetPos();
                const Side side = s == 1.0 ? Side::Left : Side::Right;
                const int place = static_cast<int>(k);
                EXPECT_TRUE(major.IsBalanced(place));
                EXPECT_NEAR(major.InSubSpan(place, s).Worst(), -r.major.Moment(x, side), 1e-3 * ScaleOf(r.major).moment)
                    << x;
                if (r.minor.IsEmpty()) continue;
                EXPECT_TRUE(minor.IsBalanced(place));
                EXPECT_NEAR(minor.InSubSpan(place, s).Worst(), -r.minor.Moment(x, side), 1e-3 * ScaleOf(r.minor).moment)
                    << x;
            }
    });
}

// Extremes from zeros of derivatives against a fine comb.
TEST(RandomLaws, ExtremesAgainstSamples)
{
    ForRandomBeams(300, {}, [](const Analysis& analysis, BeamGenerator& random) {
        const Line line = analysis.OfCase(0).major;
        const Scale scale = ScaleOf(line);
        const double from = random.Real(0.0, 0.4) * analysis.GetBeam().length;
        const double to = random.Real(0.6, 1.0) * analysis.GetBeam().length;
        const Reference chord{from, to, line.Deflection(from), line.Deflection(to), 0.001};
        const Extremes moments = line.Moments(from, to);
        const Extremes shears = line.Shears(from, to);
        const Extremes deflections = line.Deflections(from, to, chord);
        const double rounding = 1e-9 * (scale.deflection + chord.rise);
        double most = -1e300;
        double mostShear = -1e300;
        double mostDeflection = -1e300;
        double steepest =
            0.0; // change of the deflection from one sample to the next: what they can miss at a hinge's kink
        double before = line.Deflection(from) - chord.At(from);
        for (int i = 0; i <= 2000; ++i) {
            const double x = from + (to - from) * i / 2000.0;
            const Side side = i < 2000 ? Side::Right : Side::Left;
            most = std::max(most, line.Moment(x, side));
            mostShear = std::max(mostShear, line.Shear(x, side));
            const double deflection = line.Deflection(x) - chord.At(x);
            mostDeflection = std::max(mostDeflection, deflection);
            steepest = std::max(steepest, std::abs(deflection - before));
            before = deflection;
            EXPECT_LE(line.Moment(x, side), moments.greatest.value + 1e-9 * scale.moment);
            EXPECT_GE(line.Moment(x, side), moments.least.value - 1e-9 * scale.moment);
            EXPECT_GE(line.Shear(x, side), shears.least.value - 1e-9 * scale.shear);
            EXPECT_LE(deflection, deflections.greatest.value + rounding);
            EXPECT_GE(deflection, deflections.least.value - rounding);
        }
        EXPECT_NEAR(most, moments.greatest.value, scale.shear * (to - from) / 2000.0);
        // Loads of up to 100 kN/m between two samples.
        EXPECT_NEAR(mostShear, shears.greatest.value, 1e5 * (to - from) / 2000.0);
        EXPECT_NEAR(mostDeflection, deflections.greatest.value, steepest + rounding);
        EXPECT_NEAR(line.Deflection(deflections.greatest.at) - chord.At(deflections.greatest.at),
                    deflections.greatest.value, rounding);
    });
}

// Sums may begin with nothing; responses of different beams do not add.
TEST(Responses, AddUpFromNothing)
{
    Beam beam = Single(6.0, ENCASTRE, PINNED);
    beam.loads = {UniformLoad(0, 10e3), PointLoad(0, 2e3, 6.0, Direction::Axial),
                  UniformLoad(0, 1e3, 0.0, INFINITY, Direction::Minor)};
    const Response one = Solved(beam);
    Response sum;
    sum.Add(1.4, one);
    sum.Add(1.0, Response());
    // q L²/8 at the clamp, both axes; 5/8 q L there.
    ExpectClose(sum.major.Moment(0.0, Side::Right), -1.4 * 45e3);
    ExpectClose(sum.minor.Moment(0.0, Side::Right), -1.4 * 4.5e3);
    ExpectClose(sum.axial.front().left, 1.4 * 2e3);
    ASSERT_EQ(sum.reactions.size(), 2U);
    ExpectClose(sum.reactions[0].vertical, 1.4 * 37.5e3);
    ExpectClose(sum.reactions[0].moment, -1.4 * 45e3);
    ExpectClose(sum.major.Deflection(3.0), 1.4 * one.major.Deflection(3.0));
    Line line;
    line.Add(2.0, one.major);
    ExpectClose(line.Moment(0.0, Side::Right), -90e3);
}

TEST(Responses, OfOtherBeamsAreRefusedAndChangeNothing)
{
    Beam beam = Single(6.0, PINNED, PINNED);
    beam.loads = {UniformLoad(0, 10e3)};
    const Response one = Solved(beam);
    std::vector<Beam> others(5, beam);
    others[0].loads.push_back(PointLoad(0, 1e3, 2.0));
    others[1] = Single(7.0, PINNED, PINNED);
    others[1].loads = beam.loads;
    others[2].section.E = 205e9;
    others[3].supports[1].at = 5.0;
    others[3].hinges.clear();
    others[4].loads.push_back(UniformLoad(0, 1e3, 0.0, INFINITY, Direction::Minor));
    for (const Beam& other : others) {
        Response sum = one;
        EXPECT_THROW(sum.Add(1.0, Solved(other)), std::invalid_argument);
        EXPECT_EQ(sum.major.Moment(3.0, Side::Left), one.major.Moment(3.0, Side::Left));
    }
    Response sum = one;
    EXPECT_THROW(sum.Add(NAN, one), std::invalid_argument);
    EXPECT_THROW(sum.Add(INFINITY, one), std::invalid_argument);
}

TEST(Responses, OfUnknownCasesAndFactorsAreRefused)
{
    Beam beam = Single(6.0, PINNED, PINNED);
    beam.loads = {UniformLoad(0, 10e3)};
    const Analysis analysis(beam);
    EXPECT_THROW(analysis.OfCase(1), std::invalid_argument);
    EXPECT_THROW(analysis.Of({{0, NAN, {}}}), std::invalid_argument);
    EXPECT_THROW(analysis.Of({{0, INFINITY, {}}}), std::invalid_argument);
    EXPECT_THROW(analysis.Of({{0, 1e305, {}}}), std::overflow_error);
    EXPECT_NO_THROW(analysis.Of({{0, 0.0, {}}}));
}

// A stretch may be given from either end; beyond the member its end counts.
TEST(Lines, StretchesFromRightToLeft)
{
    Beam beam = Single(6.0, PINNED, PINNED);
    beam.loads = {UniformLoad(0, 10e3)};
    const Line line = Solved(beam).major;
    ExpectClose(line.Moments(5.0, 1.0).greatest.value, 45e3);
    ExpectClose(line.Shears(8.0, 1.0).least.value, -30e3);
    ExpectClose(line.Shears(7.0, 9.0).least.value, -30e3);
    EXPECT_TRUE(std::isnan(line.Moments(NAN, 1.0).greatest.value));
    EXPECT_TRUE(std::isnan(line.Moment(NAN, Side::Left)));
}

} // namespace StaticsTest
