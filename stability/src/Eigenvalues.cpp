// Lanczos iteration with L⁻¹ S L⁻ᵀ, K = L Lᵀ, whose eigenvalues are 1/λ: the factors of smallest magnitude are at its ends. All
// vectors are kept and made orthogonal to each other.

#include "Eigenvalues.h"

#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Keltrix::Stability {

namespace {

// A factor this much larger than that of the other sign is none.
constexpr double NO_FACTOR = 1e6;
// Relative residual at which a vector is good: its factor is then better than the square of it over the relative gap.
constexpr double RESIDUAL = 1e-6;
// Relative step below a factor at which K - λ S must be definite.
constexpr double MARGIN = 1e-7;
constexpr Eigen::Index MOST_STEPS = 160;
constexpr Eigen::Index FIRST_LOOK = 6;

// A fixed vector without symmetry (xorshift), so that no mode is orthogonal to it and every run gives the same digits.
Vector Arbitrary(Eigen::Index size)
{
    Vector x(size);
    std::uint64_t state = 0x9e3779b97f4a7c15ULL;
    for (Eigen::Index i = 0; i < size; ++i) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        x[i] = static_cast<double>(state >> 11) * 0x1p-53 - 0.5;
    }
    return x;
}

class Finder {
public:
    explicit Finder(const Pencil& pencil) : m_pencil(pencil), m_factor(pencil.stiffness) {}

    Eigenpairs Find(const Vector& start)
    {
        Eigenpairs pairs;
        if (m_factor.Size() == 0) {
            pairs.definite = true;
            return pairs;
        }
        if (!m_factor.Factorise()) return pairs;
        pairs.definite = true;
        if (m_pencil.work.IsZero()) return pairs;
        Iterate(start);
        const double largest = std::max(std::abs(m_ritz.front()), std::abs(m_ritz.back()));
        if (m_ritz.back() > largest / NO_FACTOR) pairs.positive = PairAt(m_ritz.size() - 1);
        if (m_ritz.front() < -largest / NO_FACTOR) pairs.negative = PairAt(0);
        const double bound = largest > 0.0 ? NO_FACTOR / largest : 0.0;
        Prove(pairs.positive, bound);
        Prove(pairs.negative, -bound);
        return pairs;
    }

private:
    Vector Apply(const Vector& y) const
    {
        Vector x = y;
        m_factor.SolveUpper(x);
        x = m_pencil.work.Times(x);
        m_factor.SolveLower(x);
        return x;
    }

    void Iterate(const Vector& start)
    {
        const Eigen::Index size = m_factor.Size();
        const Eigen::Index most = std::min(size, MOST_STEPS);
        m_basis.resize(size, most);
        Vector next = start.size() == size ? m_factor.UpperTimes(start) : Arbitrary(size);
        if (!(next.norm() > 0.0)) next = Arbitrary(size);
        next /= next.norm();
        std::vector<double> diagonal;
        std::vector<double> beside;
        Eigen::Index look = FIRST_LOOK;
        for (Eigen::Index step = 1;; ++step) {
            m_basis.col(step - 1) = next;
            next = Apply(next);
            diagonal.push_back(next.dot(m_basis.col(step - 1)));
            const auto basis = m_basis.leftCols(step);
            for (int twice = 0; twice < 2; ++twice)
                next -= basis * (basis.transpose() * next);
            double residual = next.norm();
            const bool last = step == most;
            if (last || step == look) {
                Solve(diagonal, beside);
                if (last || Converged(residual)) return;
                look += std::max<Eigen::Index>(4, look / 3);
            }
            // The space closes: the iteration goes on in what is left.
            if (!(residual > 1e-12 * std::abs(diagonal.front()) && residual > 1e-300)) {
                next = Arbitrary(size);
                next[step % size] += 1.0;
                for (int twice = 0; twice < 2; ++twice)
                    next -= basis * (basis.transpose() * next);
                residual = 0.0;
            }
            beside.push_back(residual);
            const double norm = next.norm();
            if (!(norm > 1e-12)) return Solve(diagonal, beside);
            next /= norm;
        }
    }

    void Solve(const std::vector<double>& diagonal, const std::vector<double>& beside)
    {
        const auto steps = static_cast<Eigen::Index>(diagonal.size());
        Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> solver;
        solver.computeFromTridiagonal(Eigen::Map<const Vector>(diagonal.data(), steps),
                                      Eigen::Map<const Vector>(beside.data(), steps - 1));
        const Vector& values = solver.eigenvalues();
        m_ritz.assign(values.data(), values.data() + steps);
        m_ritzVectors = solver.eigenvectors();
    }

    // Whether both ends are good, or of a sign that does not count.
    bool Converged(double residual) const
    {
        const double largest = std::max(std::abs(m_ritz.front()), std::abs(m_ritz.back()));
        const Eigen::Index last = m_ritzVectors.rows() - 1;
        const auto good = [&](std::size_t end, double sign) {
            const double value = m_ritz[end] * sign;
            if (value <= largest / NO_FACTOR) return true;
            return residual * std::abs(m_ritzVectors(last, static_cast<Eigen::Index>(end))) <= RESIDUAL * value;
        };
        return good(0, -1.0) && good(m_ritz.size() - 1, 1.0);
    }

    Eigenpair PairAt(std::size_t end) const
    {
        Vector x = m_basis.leftCols(m_ritzVectors.rows()) * m_ritzVectors.col(static_cast<Eigen::Index>(end));
        m_factor.SolveUpper(x);
        return {1.0 / m_ritz[end], x};
    }

    bool IsDefiniteAt(double lambda) const { return m_pencil.stiffness.Less(lambda, m_pencil.work).Factorise(); }

    // There is no factor of smaller magnitude than the one found, nor any up to the bound where none was found. Otherwise it is
    // found by bisection.
    void Prove(std::optional<Eigenpair>& pair, double bound)
    {
        const double sought = pair ? pair->lambda * (1.0 - MARGIN) : bound;
        if (sought == 0.0 || !std::isfinite(sought) || IsDefiniteAt(sought)) return;
        double low = 0.0;
        double high = sought;
        while (std::abs(high - low) > 1e-12 * std::abs(high)) {
            const double middle = 0.5 * (low + high);
            (IsDefiniteAt(middle) ? low : high) = middle;
        }
        Profile shifted = m_pencil.stiffness.Less(low * (1.0 - MARGIN), m_pencil.work);
        if (!shifted.Factorise()) return;
        Vector x = Arbitrary(m_factor.Size());
        for (int i = 0; i < 6; ++i) {
            x = m_pencil.work.Times(x);
            shifted.SolveLower(x);
            shifted.SolveUpper(x);
            x /= x.norm();
        }
        pair = Eigenpair{low, x};
    }

    const Pencil& m_pencil;
    Profile m_factor;
    Eigen::MatrixXd m_basis;
    std::vector<double> m_ritz;
    Eigen::MatrixXd m_ritzVectors;
};

} // namespace

Eigenpairs FindEigenpairs(const Pencil& pencil, const Vector& start) { return Finder(pencil).Find(start); }

} // namespace Keltrix::Stability
