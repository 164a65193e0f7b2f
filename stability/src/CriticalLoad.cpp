#include "keltrix/stability/CriticalLoad.h"

#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>

#include "Eigenvalues.h"
#include "Layout.h"
#include "Mesh.h"
#include "Series.h"

namespace Keltrix::Stability {

namespace {

// Displacements that strain nothing: v = translation + rotation (x - start)/length, φ = twist.
struct RigidMotion {
    bool free = false; ///< nothing resists it
    double translation = 0.0;
    double rotation = 0.0;
    double twist = 0.0;
};

// The rigid motion that the conditions resist least. It is free where they leave it at less than a millionth of its
// size.
RigidMotion LeastHeldMotion(const Layout& unit, const SectionConstants& section, bool warpingFree)
{
    constexpr double FREE = 1e-6;
    const double start = unit.stations.front().x;
    const double length = unit.stations.back().x - start;
    const double depth = std::max(std::abs(section.flange[0]), std::abs(section.flange[1]));
    Eigen::Matrix3d sum = Eigen::Matrix3d::Zero();
    const auto hold = [&](double x, const Holds& holds) {
        for (const Condition condition : CONDITIONS) {
            const Coefficients c = CoefficientsOf(condition, section);
            const double phi = condition == TWIST ? 1.0 : c.phi / depth;
            const Eigen::Vector3d value(c.v, c.v * (x - start) / length, phi);
            if (holds.value & condition) sum += value * value.transpose();
            const bool turns = condition == SHEAR_CENTRE || (!warpingFree && condition != TWIST);
            if ((holds.slope & condition) && turns) sum(1, 1) += 1.0;
        }
        if (warpingFree && Rank(holds.slope, section) == 2) sum(1, 1) += 1.0;
    };
    for (std::size_t i = 0; i < unit.stations.size(); ++i) {
        hold(unit.stations[i].x, unit.stations[i].holds);
        if (i == unit.pieces.size()) break;
        hold(unit.stations[i].x, unit.pieces[i].along);
        hold(unit.stations[i + 1].x, unit.pieces[i].along);
    }
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(sum);
    const Eigen::Vector3d motion = solver.eigenvectors().col(0);
    RigidMotion least;
    least.free = solver.eigenvalues()[0] < FREE * FREE;
    least.translation = motion[0];
    least.rotation = motion[1];
    least.twist = motion[2] / depth;
    return least;
}

ShapeSample SampleOf(double x, double v, double phi, const SectionConstants& section)
{
    return {x, v, phi, {v + section.flange[0] * phi, v + section.flange[1] * phi}};
}

// The largest displacement becomes 1, above zero.
void Normalise(std::vector<ShapeSample>& shape)
{
    double largest = 0.0;
    for (const ShapeSample& s : shape)
        for (const double value : {s.flange[0], s.flange[1], s.v})
            if (std::abs(value) > std::abs(largest) * (1.0 + 1e-9)) largest = value;
    if (largest == 0.0) return;
    for (ShapeSample& s : shape)
        s = {s.x, s.v / largest, s.phi / largest, {s.flange[0] / largest, s.flange[1] / largest}};
}

// A mesh with its matrices and factors.
struct Solved {
    Mesh mesh;
    Freedoms freedoms;
    Eigenpairs pairs;
};

// A vector of the coarser mesh on the halved one.
Vector Prolonged(const Solved& coarse, const Vector& vector, const Freedoms& fine)
{
    Vector start = Vector::Zero(fine.Count());
    const auto set = [&](std::size_t node, Freedoms::Which which, double value) {
        if (const int free = fine.FreeIndex(node, which); free >= 0) start[free] = value;
    };
    const auto cubic = [&](std::size_t node, double h, double left, double slopeLeft, double right, double slopeRight,
                           Freedoms::Which value, std::initializer_list<Freedoms::Which> slopes) {
        set(node, value, 0.5 * (left + right) + h / 8.0 * (slopeLeft - slopeRight));
        for (const Freedoms::Which slope : slopes)
            set(node, slope, 1.5 * (right - left) / h - 0.25 * (slopeLeft + slopeRight));
    };
    for (std::size_t i = 0; i < coarse.mesh.nodes.size(); ++i) {
        const auto at = [&](std::size_t node, Freedoms::Which which) {
            return coarse.freedoms.Value(vector, node, which);
        };
        for (const auto which :
             {Freedoms::PHI, Freedoms::PHI_SLOPE_LEFT, Freedoms::PHI_SLOPE_RIGHT, Freedoms::V, Freedoms::V_SLOPE})
            set(2 * i, which, at(i, which));
        if (i + 1 == coarse.mesh.nodes.size()) break;
        const double h = coarse.mesh.nodes[i + 1].x - coarse.mesh.nodes[i].x;
        cubic(2 * i + 1, h, at(i, Freedoms::PHI), at(i, Freedoms::PHI_SLOPE_RIGHT), at(i + 1, Freedoms::PHI),
              at(i + 1, Freedoms::PHI_SLOPE_LEFT), Freedoms::PHI,
              {Freedoms::PHI_SLOPE_LEFT, Freedoms::PHI_SLOPE_RIGHT});
        cubic(2 * i + 1, h, at(i, Freedoms::V), at(i, Freedoms::V_SLOPE), at(i + 1, Freedoms::V),
              at(i + 1, Freedoms::V_SLOPE), Freedoms::V, {Freedoms::V_SLOPE});
    }
    return start;
}

Eigenpairs Prolonged(const Solved& coarse, const Freedoms& fine)
{
    Eigenpairs guess = coarse.pairs;
    for (std::optional<Eigenpair>* const pair : {&guess.positive, &guess.negative})
        if (*pair) (*pair)->vector = Prolonged(coarse, (*pair)->vector, fine);
    return guess;
}

Solved Solve(Mesh mesh, const Layout& unit, const SectionConstants& section, bool warpingFree, const Solved* coarser)
{
    Freedoms freedoms(mesh, section, warpingFree);
    const Pencil pencil = Assemble(mesh, unit, section, warpingFree, freedoms);
    Eigenpairs pairs = FindEigenpairs(pencil, coarser ? Prolonged(*coarser, freedoms) : Eigenpairs());
    return {std::move(mesh), std::move(freedoms), std::move(pairs)};
}

std::vector<ShapeSample> ShapeOf(const Solved& solved, const Vector& vector, const SectionConstants& section)
{
    std::vector<ShapeSample> shape;
    shape.reserve(solved.mesh.nodes.size());
    for (std::size_t i = 0; i < solved.mesh.nodes.size(); ++i)
        shape.push_back(SampleOf(solved.mesh.nodes[i].x, solved.freedoms.Value(vector, i, Freedoms::V),
                                 solved.freedoms.Value(vector, i, Freedoms::PHI), section));
    Normalise(shape);
    return shape;
}

// Factors of one sign on meshes that are halved one after the other. The error of cubic elements falls with the fourth power
// of their size, so that it is a fifteenth of the difference between a mesh and the halved one, and is taken off; five times as
// much, and what the iteration leaves, is the estimated error. A buckle that is short beside the elements converges otherwise at first. Where three meshes show
// that, the whole difference counts as the error.
class Convergence {
public:
    void Take(const std::optional<Eigenpair>& pair)
    {
        m_before = m_coarse;
        m_coarse = m_fine;
        m_fine = pair ? std::optional(pair->lambda) : std::nullopt;
    }
    double Error() const
    {
        if (!m_fine) return 0.0;
        if (!m_coarse) return 1.0;
        return std::abs((*m_coarse - *m_fine) / *m_fine) * (IsIrregular() ? 1.0 : 5.0 / HALVING) + ITERATION;
    }
    // Two meshes, which may mislead, have to be closer to each other than three.
    bool IsGood() const { return Error() <= (IsIrregular() ? 3e-4 : m_before ? 2.5e-4 : 5e-5); }
    double Lambda() const { return m_coarse ? *m_fine + (*m_fine - *m_coarse) / HALVING : *m_fine; }

private:
    static constexpr double HALVING = 15.0;
    static constexpr double ITERATION = 1e-6;

    // Whether three differences do not fall as they should, by about sixteen. Those that are rounding do not fall at all.
    bool IsIrregular() const
    {
        if (!m_before || !m_coarse) return false;
        const double last = std::abs(*m_coarse - *m_fine);
        const double ratio = std::abs(*m_before - *m_coarse) / last;
        return last > 1e-7 * std::abs(*m_fine) && (ratio < 8.0 || ratio > 32.0);
    }

    std::optional<double> m_before, m_coarse, m_fine;
};
// Most elements of the finest mesh.
constexpr std::size_t MOST_REFINED = 2000;

std::optional<CriticalLoad> LoadOf(const Convergence& factors, const Solved& solved,
                                   const std::optional<Eigenpair>& pair, const SectionConstants& section, double moment)
{
    if (!pair) return std::nullopt;
    CriticalLoad load;
    load.error = factors.Error();
    load.lambda = factors.Lambda();
    load.Mcr = std::abs(load.lambda) * moment;
    load.shape = ShapeOf(solved, pair->vector, section);
    return load;
}

// Part of a layout from one station to another. What lies beyond holds its end sections only in what they have in common.
Layout Part(const Layout& whole, std::size_t from, std::size_t to)
{
    Layout part;
    const auto at = [](std::size_t i) { return static_cast<std::ptrdiff_t>(i); };
    part.stations.assign(whole.stations.begin() + at(from), whole.stations.begin() + at(to) + 1);
    part.pieces.assign(whole.pieces.begin() + at(from), whole.pieces.begin() + at(to));
    if (from > 0) part.stations.front().holds.value |= whole.pieces[from - 1].along.value;
    if (to < whole.pieces.size()) part.stations.back().holds.value |= whole.pieces[to].along.value;
    return part;
}

class Analysis {
public:
    Analysis(const MemberInput& input, const Options& options) : m_in(input), m_options(options) {}

    std::vector<Unit> Make()
    {
        m_layouts.push_back(MakeLayout(m_in, 0));
        const bool balanced = std::all_of(Whole().pieces.begin(), Whole().pieces.end(),
                                          [](const Piece& piece) { return piece.balanced; });
        for (int reading = 1; !balanced && reading < READINGS; ++reading)
            m_layouts.push_back(MakeLayout(m_in, reading));
        FindEnds();
        std::vector<Unit> units;
        for (std::size_t i = 0; i + 1 < m_ends.size(); ++i)
            if (!IsHeldAlong(m_ends[i], m_ends[i + 1])) units.push_back(UnitOf(m_ends[i], m_ends[i + 1]));
        return units;
    }

private:
    const Layout& Whole() const { return m_layouts.front(); }

    bool IsHeld(std::size_t station) const
    {
        unsigned value = Whole().stations[station].holds.value;
        if (station > 0) value |= Whole().pieces[station - 1].along.value;
        if (station < Whole().pieces.size()) value |= Whole().pieces[station].along.value;
        return Rank(value, m_in.section) == 2;
    }

    bool IsHeldAlong(std::size_t from, std::size_t to) const
    {
        for (std::size_t i = from; i < to; ++i)
            if (Rank(Whole().pieces[i].along.value, m_in.section) < 2) return false;
        return true;
    }

    bool IsFree(std::size_t from, std::size_t to) const
    {
        const Layout part = Part(Whole(), from, to);
        return LeastHeldMotion(part, m_in.section, IsWarpingFree(part)).free;
    }

    bool IsWarpingFree(const Layout& unit) const
    {
        return Stability::IsWarpingFree(m_in.section, unit.stations.back().x - unit.stations.front().x);
    }

    // Stations at which units end, not those inside a length that is held all along, wherever that is divided. A length from an end of the member to the first section that is held, which this section by
    // itself does not hold, is analysed together with the length beyond it.
    void FindEnds()
    {
        const std::size_t last = Whole().pieces.size();
        m_ends.push_back(0);
        for (std::size_t i = 1; i < last && !m_options.continuity; ++i)
            if (IsHeld(i) && !IsHeldAlong(i - 1, i + 1)) m_ends.push_back(i);
        m_ends.push_back(last);
        while (m_ends.size() > 2 && !IsHeld(0) && IsFree(m_ends[0], m_ends[1]))
            m_ends.erase(m_ends.begin() + 1);
        while (m_ends.size() > 2 && !IsHeld(last) && IsFree(m_ends[m_ends.size() - 2], m_ends.back()))
            m_ends.erase(m_ends.end() - 2);
    }

    Unit UnitOf(std::size_t from, std::size_t to) const
    {
        Unit unit;
        unit.start = Whole().stations[from].x;
        unit.end = Whole().stations[to].x;
        for (std::size_t i = from; i < to; ++i) {
            unit.balanced = unit.balanced && Whole().pieces[i].balanced;
            unit.continuous = unit.continuous || (i > from && IsHeld(i));
        }
        const Design::Extremes extremes = m_in.major.Between(unit.start, unit.end);
        unit.largestMoment = extremes.Magnitude();
        unit.largestMomentAt = -extremes.least > extremes.greatest ? extremes.leastAt : extremes.greatestAt;
        FindJump(from, to, unit);
        if (!m_options.shapes && unit.balanced && BuckleBySeries(Part(Whole(), from, to), unit)) return unit;
        for (int reading = 0; reading < (unit.balanced ? 1 : READINGS); ++reading) {
            const Layout part = Part(m_layouts[static_cast<std::size_t>(reading)], from, to);
            const RigidMotion motion = LeastHeldMotion(part, m_in.section, IsWarpingFree(part));
            if (motion.free || !Buckle(part, unit)) {
                SetFree(motion, unit);
                break;
            }
        }
        if (unit.positive && unit.outcome != Outcome::NotHeld) unit.outcome = Outcome::Buckles;
        return unit;
    }

    // At a section that is held against twist a jump of the moment does no work.
    void FindJump(std::size_t from, std::size_t to, Unit& unit) const
    {
        for (std::size_t i = from + 1; i < to; ++i) {
            const Station& station = Whole().stations[i];
            const unsigned held =
                station.holds.value | Whole().pieces[i - 1].along.value | Whole().pieces[i].along.value;
            const double jump = std::abs(Whole().pieces[i].moment.At(0.0) - Whole().pieces[i - 1].moment.At(1.0));
            if ((held & TWIST) || !(jump > unit.largestJump)) continue;
            unit.largestJump = jump;
            unit.largestJumpAt = station.x;
        }
    }

    void SetFree(const RigidMotion& motion, Unit& unit) const
    {
        unit.outcome = Outcome::NotHeld;
        unit.positive.reset();
        unit.negative.reset();
        const double end = motion.translation + motion.rotation;
        unit.freeMotion = {SampleOf(unit.start, motion.translation, motion.twist, m_in.section),
                           SampleOf(unit.end, end, motion.twist, m_in.section)};
        Normalise(unit.freeMotion);
    }

    // False where the series is not for the unit.
    bool BuckleBySeries(const Layout& part, Unit& unit) const
    {
        const auto factors = FactorsBySeries(part, m_in.section);
        if (!factors) return false;
        const auto take = [&](const std::optional<Factor>& factor, std::optional<CriticalLoad>& load) {
            if (factor) load = {factor->lambda, factor->error, std::abs(factor->lambda) * unit.largestMoment, {}};
        };
        take(factors->positive, unit.positive);
        take(factors->negative, unit.negative);
        if (unit.positive) unit.outcome = Outcome::Buckles;
        return true;
    }

    // False where the stiffness is not positive definite to working precision.
    bool Buckle(const Layout& part, Unit& unit) const
    {
        const SectionConstants& section = m_in.section;
        const bool warpingFree = IsWarpingFree(part);
        Convergence positive, negative;
        Solved solved = Solve(MakeMesh(part, section), part, section, warpingFree, nullptr);
        for (int meshes = 1;; ++meshes) {
            if (!solved.pairs.definite) return false;
            positive.Take(solved.pairs.positive);
            negative.Take(solved.pairs.negative);
            const bool room = 2 * solved.mesh.elements.size() <= MOST_REFINED;
            const bool good = positive.IsGood() && negative.IsGood();
            if (meshes == 1 || (room && !good)) {
                solved = Solve(Halved(solved.mesh, part), part, section, warpingFree, &solved);
                continue;
            }
            unit.restraintsLeftOut =
                unit.restraintsLeftOut || solved.mesh.restraintsLeftOut || solved.freedoms.RestraintsLeftOut();
            Keep(LoadOf(positive, solved, solved.pairs.positive, section, unit.largestMoment), unit.positive);
            Keep(LoadOf(negative, solved, solved.pairs.negative, section, unit.largestMoment), unit.negative);
            return true;
        }
    }

    // Of several readings of the moments the load of smallest magnitude.
    static void Keep(std::optional<CriticalLoad> load, std::optional<CriticalLoad>& kept)
    {
        if (load && (!kept || std::abs(load->lambda) < std::abs(kept->lambda))) kept = std::move(load);
    }

    MemberInput m_in;
    Options m_options;
    std::vector<Layout> m_layouts; // one for each reading of unbalanced moments
    std::vector<std::size_t> m_ends;
};

int GoverningOf(const std::vector<Unit>& units)
{
    int governing = -1;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const Unit& unit = units[i];
        if (unit.outcome == Outcome::NotHeld) return static_cast<int>(i);
        const Unit* const before = governing < 0 ? nullptr : &units[static_cast<std::size_t>(governing)];
        if (unit.positive && (!before || unit.positive->lambda < before->positive->lambda))
            governing = static_cast<int>(i);
    }
    return governing;
}

} // namespace

CriticalLoads FindCriticalLoads(const std::vector<Steel::CMemberPoint>& points,
                                const std::vector<Steel::CSubSpan>& subSpans, const Design::MomentDiagram& major,
                                const SectionConstants& section, const Options& options)
{
    const MemberInput input{points, subSpans, major, section};
    CriticalLoads loads;
    loads.continuity = options.continuity;
    loads.reason = ReasonAgainst(input);
    if (!loads.IsAnswered()) return loads;
    loads.units = Analysis(input, options).Make();
    loads.governing = GoverningOf(loads.units);
    return loads;
}

} // namespace Keltrix::Stability
