// Lanczos iteration with L⁻¹ S L⁻ᵀ, K = L Lᵀ, whose eigenvalues are 1/λ: the factors of smallest magnitude are at its ends. All
// vectors are kept and made orthogonal to each other. On a finer mesh inverse iteration goes on from the vectors of the coarser one.

#include "Eigenvalues.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace Keltrix::Stability {

namespace {

// A factor this much larger than that of the other sign is none.
constexpr double NO_FACTOR = 1e4;
// Relative change between two looks at which an end of the spectrum is good.
constexpr double CHANGE = 1e-9;
// The same between two steps of inverse iteration.
constexpr double INVERSE_CHANGE = 1e-10;
// Relative step below a factor at which K - λ S must be definite.
constexpr double MARGIN = 1e-7;
constexpr Eigen::Index MOST_STEPS = 160;
constexpr Eigen::Index FIRST_LOOK = 12;
// How far below the factor of a coarser mesh the shift of the inverse iteration lies, and most steps of it. A factor that a finer mesh
// lowers by more belongs to a buckle that the coarser one did not resolve, whose vector is no good start.
constexpr double SHIFT = 2e-3;
constexpr int MOST_INVERSE_STEPS = 12;

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

// Symmetric tridiagonal matrix, of which the ends of the spectrum are asked. They cost a few passes, where a general solver finds the
// whole spectrum.
class Tridiagonal {
public:
    void Clear()
    {
        m_diagonal.clear();
        m_beside.clear();
    }
    std::vector<double>& Diagonal() { return m_diagonal; }
    const std::vector<double>& Diagonal() const { return m_diagonal; }
    std::vector<double>& Beside() { return m_beside; }
    Eigen::Index Size() const { return static_cast<Eigen::Index>(m_diagonal.size()); }

    /// The largest eigenvalue (sign 1) or the smallest one (sign -1): Laguerre's iteration from a bound of the spectrum, which comes closer
    /// from outside and never passes a root of a polynomial whose roots are all real.
    double Extreme(double sign) const
    {
        const double norm = Norm();
        if (!std::isfinite(norm)) return norm;
        const double n = static_cast<double>(m_diagonal.size());
        double x = sign * norm; // all eigenvalues of sign T lie below |x|
        for (int i = 0; i < 100; ++i) {
            double slope = 0.0;     // -p'/p
            double curvature = 0.0; // (p'/p)² - p''/p
            if (!Logarithmic(x, sign, slope, curvature)) break;
            const double root = std::sqrt(std::max(0.0, (n - 1.0) * (n * curvature - slope * slope)));
            const double step = n / (std::abs(slope) + root);
            const double next = x - sign * step;
            if (!(step > 4e-16 * norm) || next == x) break;
            x = next;
        }
        return x;
    }

    /// Its vector, by inverse iteration from just outside of the spectrum.
    Vector VectorAt(double value, double sign) const
    {
        const std::size_t n = m_diagonal.size();
        const double norm = Norm();
        Vector x = Vector::Ones(Size());
        std::vector<double> pivots(n);
        double shift = value;
        double away = 1e-15 * norm;
        while (!Factorise(shift, sign, pivots) && away < norm) {
            shift = value + sign * away;
            away *= 4.0;
        }
        for (int i = 0; i < 4; ++i) {
            for (std::size_t k = 1; k < n; ++k)
                x[At(k)] -= m_beside[k - 1] / pivots[k - 1] * x[At(k - 1)];
            x[At(n - 1)] /= pivots[n - 1];
            for (std::size_t k = n - 1; k-- > 0;)
                x[At(k)] = (x[At(k)] - m_beside[k] * x[At(k + 1)]) / pivots[k];
            x /= x.norm();
        }
        return x;
    }

private:
    static Eigen::Index At(std::size_t i) { return static_cast<Eigen::Index>(i); }

    double Norm() const
    {
        double norm = 0.0;
        for (std::size_t i = 0; i < m_diagonal.size(); ++i) {
            const double before = i > 0 ? std::abs(m_beside[i - 1]) : 0.0;
            const double after = i < m_beside.size() && i + 1 < m_diagonal.size() ? std::abs(m_beside[i]) : 0.0;
            norm = std::max(norm, std::abs(m_diagonal[i]) + before + after);
        }
        return norm;
    }

    // Pivots of T - x, which all have the sign -`sign` outside of the spectrum. False where one has not.
    bool Factorise(double x, double sign, std::vector<double>& pivots) const
    {
        for (std::size_t i = 0; i < m_diagonal.size(); ++i) {
            const double off = i > 0 ? m_beside[i - 1] : 0.0;
            pivots[i] = m_diagonal[i] - x - (i > 0 ? off * off / pivots[i - 1] : 0.0);
            if (!(sign * pivots[i] < 0.0)) return false;
        }
        return true;
    }

    // Derivatives of the logarithm of the characteristic polynomial, which is the product of the pivots.
    bool Logarithmic(double x, double sign, double& slope, double& curvature) const
    {
        double q = 1.0, dq = 0.0, ddq = 0.0; // pivot and its derivatives by x
        for (std::size_t i = 0; i < m_diagonal.size(); ++i) {
            if (i == 0) {
                q = m_diagonal[0] - x;
                dq = -1.0;
                ddq = 0.0;
            } else {
                const double share = m_beside[i - 1] / q;
                const double ratio = dq / q;
                const double less = share * share;
                ddq = less * (ddq - 2.0 * dq * ratio);
                dq = -1.0 + less * dq;
                q = m_diagonal[i] - x - m_beside[i - 1] * share;
            }
            if (!(sign * q < 0.0)) return false;
            const double ratio = dq / q;
            slope -= ratio;
            curvature += ratio * ratio - ddq / q;
        }
        return true;
    }

    std::vector<double> m_diagonal;
    std::vector<double> m_beside;
};

class Finder {
public:
    explicit Finder(const Pencil& pencil) : m_pencil(pencil), m_mirrored(pencil.IsMirrored()) {}

    /// From the factors of a coarser mesh; nothing where they mislead. K is definite where it is less a multiple of S of either sign.
    std::optional<Eigenpairs> Refine(const Eigenpairs& guess) const
    {
        if (!guess.positive && !guess.negative) return std::nullopt;
        Eigenpairs pairs;
        pairs.definite = true;
        if (m_mirrored) {
            if (!guess.positive || !(pairs.positive = Refined(*guess.positive))) return std::nullopt;
            pairs.negative = Mirrored(*pairs.positive);
            return pairs;
        }
        if (guess.positive && !(pairs.positive = Refined(*guess.positive))) return std::nullopt;
        if (guess.negative && !(pairs.negative = Refined(*guess.negative))) return std::nullopt;
        const double least =
            std::min(pairs.positive ? pairs.positive->lambda : std::numeric_limits<double>::infinity(),
                     pairs.negative ? -pairs.negative->lambda : std::numeric_limits<double>::infinity());
        const double greatest =
            std::max(pairs.positive ? pairs.positive->lambda : 0.0, pairs.negative ? -pairs.negative->lambda : 0.0);
        if (!(greatest < NO_FACTOR * least)) return std::nullopt;
        if (!pairs.positive && !IsDefiniteAt(NO_FACTOR * least)) return std::nullopt;
        if (!pairs.negative && !IsDefiniteAt(-NO_FACTOR * least)) return std::nullopt;
        return pairs;
    }

    Eigenpairs Find()
    {
        Eigenpairs pairs;
        m_factor = m_pencil.stiffness;
        if (m_factor.Size() == 0) {
            pairs.definite = true;
            return pairs;
        }
        if (!m_factor.IsFinite() || !m_pencil.work.IsFinite() || !m_factor.Factorise()) return pairs;
        pairs.definite = true;
        if (m_pencil.work.IsZero()) return pairs;
        Iterate();
        pairs.definite = std::isfinite(m_least) && std::isfinite(m_greatest);
        if (!pairs.definite) return pairs;
        const double largest = std::max(std::abs(m_least), std::abs(m_greatest));
        if (m_greatest > largest / NO_FACTOR) pairs.positive = PairAt(m_greatest, 1.0);
        if (m_least < -largest / NO_FACTOR) pairs.negative = PairAt(m_least, -1.0);
        const double bound = largest > 0.0 ? NO_FACTOR / largest : 0.0;
        Prove(pairs.positive, bound);
        if (m_mirrored && pairs.positive) {
            pairs.negative = Mirrored(*pairs.positive);
            return pairs;
        }
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

    Eigenpair Mirrored(const Eigenpair& pair) const
    {
        Eigenpair other{-pair.lambda, pair.vector};
        for (std::size_t i = 0; i < m_pencil.twist.size(); ++i)
            if (m_pencil.twist[i]) other.vector[static_cast<Eigen::Index>(i)] *= -1.0;
        return other;
    }

    // Inverse iteration with a shift just below the guess, and the proof that no factor lies below what it finds.
    std::optional<Eigenpair> Refined(const Eigenpair& guess) const
    {
        const double shift = guess.lambda * (1.0 - SHIFT);
        Profile shifted = m_pencil.stiffness.Less(shift, m_pencil.work);
        if (!shifted.Factorise()) return std::nullopt;
        Eigenpair pair = guess;
        Vector& x = pair.vector;
        Vector worked = m_pencil.work.Times(x);
        for (int step = 0; step < MOST_INVERSE_STEPS; ++step) {
            const double before = pair.lambda;
            x = worked;
            shifted.SolveLower(x);
            shifted.SolveUpper(x);
            const double given = x.dot(worked);
            worked = m_pencil.work.Times(x);
            const double taken = x.dot(worked);
            pair.lambda = shift + given / taken;
            const double size = x.norm();
            if (!std::isfinite(pair.lambda) || !(size > 0.0)) return std::nullopt;
            x /= size;
            worked /= size;
            if (std::abs(pair.lambda - before) > INVERSE_CHANGE * std::abs(pair.lambda)) continue;
            if (!IsDefiniteAt(pair.lambda * (1.0 - MARGIN))) return std::nullopt;
            return pair;
        }
        return std::nullopt;
    }

    void Iterate()
    {
        const Eigen::Index size = m_factor.Size();
        const Eigen::Index most = std::min(size, MOST_STEPS);
        m_basis.resize(size, most);
        Vector next = Arbitrary(size);
        next /= next.norm();
        m_matrix.Clear();
        m_looked = false;
        Eigen::Index look = FIRST_LOOK;
        for (Eigen::Index step = 1;; ++step) {
            m_basis.col(step - 1) = next;
            next = Apply(next);
            m_matrix.Diagonal().push_back(next.dot(m_basis.col(step - 1)));
            double residual = TakeOffBasis(step, next);
            const bool last = step == most;
            if (last || step == look) {
                if (HasSettled() || last) return;
                look += std::max<Eigen::Index>(3, look / 4);
            }
            // The space closes: the iteration goes on in what is left.
            if (!(residual > 1e-12 * std::abs(m_matrix.Diagonal().front()) && residual > 1e-300)) {
                next = Arbitrary(size);
                next[step % size] += 1.0;
                TakeOffBasis(step, next);
                residual = 0.0;
            }
            const double norm = next.norm();
            if (!(norm > 1e-12 * (residual > 0.0 ? residual : 1.0))) {
                HasSettled();
                return;
            }
            m_matrix.Beside().push_back(residual);
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
            if (!(norm < 0.5 * before) || !(norm > 1e-14 * std::abs(m_matrix.Diagonal().front()))) return norm;
        }
    }

    // Whether both ends have changed little since the last look, or are of a sign that does not count.
    bool HasSettled()
    {
        const double least = m_least;
        const double greatest = m_greatest;
        m_greatest = m_matrix.Extreme(1.0);
        m_least = m_mirrored ? -m_greatest : m_matrix.Extreme(-1.0);
        if (!std::exchange(m_looked, true)) return false;
        const double largest = std::max(std::abs(m_least), std::abs(m_greatest));
        const auto good = [&](double value, double was) {
            return value <= largest / NO_FACTOR || std::abs(value - was) <= CHANGE * value;
        };
        return good(-m_least, -least) && good(m_greatest, greatest);
    }

    Eigenpair PairAt(double value, double sign) const
    {
        Vector x = m_basis.leftCols(m_matrix.Size()) * m_matrix.VectorAt(value, sign);
        m_factor.SolveUpper(x);
        return {1.0 / value, x};
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
    bool m_mirrored; // both ends of the spectrum are one
    Profile m_factor;
    Eigen::MatrixXd m_basis;
    mutable Vector m_share;
    Tridiagonal m_matrix;
    // Ends of its spectrum at the last look.
    bool m_looked = false;
    double m_least = 0.0;
    double m_greatest = 0.0;
};

} // namespace

Eigenpairs FindEigenpairs(const Pencil& pencil, const Eigenpairs& guess)
{
    Finder finder(pencil);
    if (const std::optional<Eigenpairs> refined = finder.Refine(guess)) return *refined;
    return finder.Find();
}

} // namespace Keltrix::Stability
