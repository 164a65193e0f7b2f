#include "statics/SecondSolution.h"

#include <array>
#include <cmath>
#include <utility>

namespace StaticsTest {

using namespace Keltrix::Statics;
using Keltrix::Steel::CRestraint;

namespace {

void Add(State& a, double factor, const State& b)
{
    a.deflection += factor * b.deflection;
    a.slope += factor * b.slope;
    a.moment += factor * b.moment;
    a.shear += factor * b.shear;
}

// Solves by elimination with full pivoting, in long double.
std::vector<double> Eliminate(std::vector<std::vector<long double>> a, std::vector<long double> b)
{
    const std::size_t n = b.size();
    std::vector<std::size_t> order(n);
    for (std::size_t i = 0; i < n; ++i)
        order[i] = i;
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t row = k;
        std::size_t column = k;
        for (std::size_t i = k; i < n; ++i)
            for (std::size_t j = k; j < n; ++j)
                if (std::abs(a[i][j]) > std::abs(a[row][column])) {
                    row = i;
                    column = j;
                }
        std::swap(a[k], a[row]);
        std::swap(b[k], b[row]);
        for (auto& line : a)
            std::swap(line[k], line[column]);
        std::swap(order[k], order[column]);
        for (std::size_t i = k + 1; i < n; ++i) {
            const long double factor = a[i][k] / a[k][k];
            for (std::size_t j = k; j < n; ++j)
                a[i][j] -= factor * a[k][j];
            b[i] -= factor * b[k];
        }
    }
    std::vector<double> x(n);
    for (std::size_t i = n; i-- > 0;) {
        long double sum = b[i];
        for (std::size_t j = i + 1; j < n; ++j)
            sum -= a[i][j] * b[j];
        b[i] = sum / a[i][i];
        x[order[i]] = static_cast<double>(b[i]);
    }
    return x;
}

} // namespace

Shooting::Shooting(const Beam& beam, std::size_t caseIndex, bool minor)
{
    m_EI = beam.section.E * (minor ? beam.section.Iz : beam.section.Iy);
    for (Load load : beam.loads) {
        if (load.caseIndex != caseIndex || load.direction == Direction::Axial) continue;
        if ((load.direction == Direction::Minor) != minor) continue;
        if (load.direction == Direction::Gravity && load.shape != LoadShape::Moment) {
            load.value *= std::cos(beam.inclination);
            load.valueTo *= std::cos(beam.inclination);
        }
        m_loads.push_back(load);
    }
    m_sources.push_back({Source::Deflection, 0.0, 1.0});
    m_sources.push_back({Source::Slope, 0.0, 1.0});
    AddSupports(beam, minor);
    for (const Hinge& hinge : beam.hinges)
        if (minor ? hinge.minor : hinge.major) {
            m_conditions.push_back({Condition::NoMoment, hinge.at, 0.0, 0});
            m_sources.push_back({Source::Slope, hinge.at, 1.0});
        }
    m_conditions.push_back({Condition::NoMoment, beam.length, 0.0, 0});
    m_conditions.push_back({Condition::NoShear, beam.length, 0.0, 0});
    Determine();
}

void Shooting::AddSupports(const Beam& beam, bool minor)
{
    for (const Support& s : beam.supports) {
        const double spring = minor ? s.lateral : s.vertical;
        const double rotation = minor ? s.lateralRotation : s.rotation;
        const bool held = s.holds.IsRestrained(minor ? CRestraint::MINOR_SHEAR : CRestraint::MAJOR_SHEAR, true);
        const bool clamped =
            s.holds.IsRestrained(minor ? CRestraint::MINOR_ROTATION : CRestraint::MAJOR_ROTATION, true);
        if (spring > 0.0 || held) {
            m_conditions.push_back({Condition::Vertical, s.at, spring, m_sources.size()});
            m_sources.push_back({Source::Shear, s.at, 1.0});
        }
        if (rotation > 0.0 || clamped) {
            m_conditions.push_back({Condition::Rotation, s.at, rotation, m_sources.size()});
            m_sources.push_back({Source::Moment, s.at, 1.0});
        }
    }
}

State Shooting::Of(const Source& source, double x) const
{
    State s;
    if (x < source.at) return s;
    const double t = x - source.at;
    switch (source.kind) {
    case Source::Deflection:
        return {1.0, 0.0, 0.0, 0.0};
    case Source::Slope:
        return {t, 1.0, 0.0, 0.0};
    case Source::Moment:
        return {-t * t / (2.0 * m_EI), -t / m_EI, 1.0, 0.0};
    case Source::Shear:
        return {-t * t * t / (6.0 * m_EI), -t * t / (2.0 * m_EI), t, 1.0};
    }
    return s;
}

// Gauss's four points integrate polynomials of seventh degree exactly; the load times its influence has the fourth.
State Shooting::OfLoads(double x) const
{
    static constexpr std::array<double, 4> AT{-0.8611363115940526, -0.3399810435848563, 0.3399810435848563,
                                              0.8611363115940526};
    static constexpr std::array<double, 4> WEIGHT{0.3478548451374538, 0.6521451548625461, 0.6521451548625461,
                                                  0.3478548451374538};
    State sum;
    for (const Load& load : m_loads) {
        if (load.shape == LoadShape::Moment)
            Add(sum, load.value, Of({Source::Moment, load.from, 1.0}, x));
        else if (load.shape == LoadShape::Point)
            Add(sum, -load.value, Of({Source::Shear, load.from, 1.0}, x));
        else if (x > load.from) {
            const double end = std::min(x, load.to);
            for (std::size_t i = 0; i < AT.size(); ++i) {
                const double at = load.from + 0.5 * (1.0 + AT[i]) * (end - load.from);
                const double q =
                    load.value + (load.valueTo - load.value) *
                                     (std::isinf(load.to) ? 0.0 : (at - load.from) / (load.to - load.from));
                Add(sum, -q * WEIGHT[i] * 0.5 * (end - load.from), Of({Source::Shear, at, 1.0}, x));
            }
        }
    }
    return sum;
}

void Shooting::Determine()
{
    const std::size_t n = m_sources.size();
    std::vector<std::vector<long double>> a(n, std::vector<long double>(n, 0.0L));
    std::vector<long double> b(n, 0.0L);
    for (std::size_t r = 0; r < n; ++r) {
        const Condition& c = m_conditions[r];
        const auto pick = [&](const State& s) {
            return c.kind == Condition::Vertical   ? s.deflection * m_EI
                   : c.kind == Condition::Rotation ? s.slope * m_EI
                   : c.kind == Condition::NoMoment ? s.moment
                                                   : s.shear;
        };
        for (std::size_t k = 0; k < n; ++k)
            a[r][k] = pick(Of(m_sources[k], c.at));
        b[r] = -pick(OfLoads(c.at));
        // Upwards against a deflection downwards; against the rotation.
        if (c.stiffness > 0.0) a[r][c.source] += (c.kind == Condition::Vertical ? -1.0 : 1.0) * m_EI / c.stiffness;
    }
    for (auto& row : a) { // the starting values belong to EI
        row[0] /= m_EI;
        row[1] /= m_EI;
    }
    const std::vector<double> x = Eliminate(std::move(a), std::move(b));
    for (std::size_t k = 0; k < n; ++k)
        m_sources[k].value = k < 2 ? x[k] / m_EI : x[k];
}

State Shooting::RightOf(double x) const
{
    State sum = OfLoads(x);
    for (const Source& source : m_sources)
        Add(sum, source.value, Of(source, x));
    return sum;
}

} // namespace StaticsTest
