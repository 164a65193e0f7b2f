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
constexpr double NO_FACTOR = 1e4;
// Relative change between two looks at which an end of the spectrum is good.
constexpr double CHANGE = 1e-9;
// Relative step below a factor at which K - λ S must be definite.
constexpr double MARGIN = 1e-7;
constexpr Eigen::Index MOST_STEPS = 160;
constexpr Eigen::Index FIRST_LOOK = 6;
constexpr Eigen::Index FIRST_LOOK_FROM_ARBITRARY = 12;

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
        if (!m_factor.IsFinite() || !m_pencil.work.IsFinite() || !m_factor.Factorise()) return pairs;
        pairs.definite = true;
        if (m_pencil.work.IsZero()) return pairs;
        Iterate(start);
        pairs.definite = std::isfinite(m_ritz.front()) && std::isfinite(m_ritz.back());
        if (!pairs.definite) return pairs;
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
        m_diagonal.clear();
        m_beside.clear();
        m_ritz.clear();
        Eigen::Index look = start.size() == size ? FIRST_LOOK : FIRST_LOOK_FROM_ARBITRARY;
        for (Eigen::Index step = 1;; ++step) {
            m_basis.col(step - 1) = next;
            next = Apply(next);
            m_diagonal.push_back(next.dot(m_basis.col(step - 1)));
            double residual = TakeOffBasis(step, next);
            const bool last = step == most;
            if (last || step == look) {
                if (HasSettled() || last) return SolveVectors();
                look += std::max<Eigen::Index>(3, look / 4);
            }
            // The space closes: the iteration goes on in what is left.
            if (!(residual > 1e-12 * std::abs(m_diagonal.front()) && residual > 1e-300)) {
                next = Arbitrary(size);
                next[step % size] += 1.0;
                TakeOffBasis(step, next);
                residual = 0.0;
            }
            const double norm = next.norm();
            if (!(norm > 1e-12 * (residual > 0.0 ? residual : 1.0))) return SolveVectors();
            m_beside.push_back(residual);
            next /= norm;
        }
    }

    // Makes a vector orthogonal to the first vectors of the basis, twice where the first time took nearly all of it. Its norm.
    double TakeOffBasis(Eigen::Index count, Vector& next) const
    {
        const auto basis = m_basis.leftCols(count);
        double norm = next.norm();
        for (;;) {
            const double before = norm;
            m_share.noalias() = basis.transpose() * next;
            next.noalias() -= basis * m_share;
            norm = next.norm();
            if (!(norm < 0.5 * before) || !(norm > 1e-14 * std::abs(m_diagonal.front()))) return norm;
        }
    }

    // Whether both ends have changed little since the last look, or are of a sign that does not count.
    bool HasSettled()
    {
        const std::vector<double> before = std::move(m_ritz);
        const auto steps = static_cast<Eigen::Index>(m_diagonal.size());
        m_solver.computeFromTridiagonal(Eigen::Map<const Vector>(m_diagonal.data(), steps),
                                        Eigen::Map<const Vector>(m_beside.data(), steps - 1), Eigen::EigenvaluesOnly);
        m_ritz.assign(m_solver.eigenvalues().data(), m_solver.eigenvalues().data() + steps);
        if (before.empty()) return false;
        const double largest = std::max(std::abs(m_ritz.front()), std::abs(m_ritz.back()));
        const auto good = [&](double value, double was) {
            return value <= largest / NO_FACTOR || std::abs(value - was) <= CHANGE * value;
        };
        return good(-m_ritz.front(), -before.front()) && good(m_ritz.back(), before.back());
    }

    void SolveVectors()
    {
        const auto steps = static_cast<Eigen::Index>(m_diagonal.size());
        m_solver.computeFromTridiagonal(Eigen::Map<const Vector>(m_diagonal.data(), steps),
                                        Eigen::Map<const Vector>(m_beside.data(), steps - 1));
        m_ritz.assign(m_solver.eigenvalues().data(), m_solver.eigenvalues().data() + steps);
        m_ritzVectors = m_solver.eigenvectors();
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
        for (int halving = 0; halving < 200 && std::abs(high - low) > 1e-12 * std::abs(high); ++halving) {
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
    mutable Vector m_share;
    std::vector<double> m_diagonal; // of the tridiagonal matrix
    std::vector<double> m_beside;
    Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> m_solver;
    std::vector<double> m_ritz;
    Eigen::MatrixXd m_ritzVectors;
};

} // namespace

Eigenpairs FindEigenpairs(const Pencil& pencil, const Vector& start) { return Finder(pencil).Find(start); }

} // namespace Keltrix::Stability
