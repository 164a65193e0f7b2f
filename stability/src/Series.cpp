#include "Series.h"

#include <Eigen/Cholesky>
#include <Eigen/Core>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "keltrix/stability/CoupledBuckling.h"

namespace Keltrix::Stability {

namespace {

constexpr int FEW = 8;
constexpr int SOME = 12;
constexpr int MANY = 24;
// Estimated error over the difference between two series: where a load stands above the section they converge with the third power of their terms.
constexpr double CAUTION = 3.0;
// Largest estimated error that is taken.
constexpr double LARGEST_ESTIMATE = 1e-5;
// What the iteration leaves, as a share of the factor.
constexpr double ITERATION = 1e-7;
// A factor so many times that of the other sign counts as none.
constexpr double NONE_BESIDE = 1e4;

// Shorter pieces, as a share of the length, are summed up at places: by parts their integrals are small differences.
constexpr double LONG_PIECE = 0.1;

using SmallMatrix = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::ColMajor, MANY, MANY>;
using SmallVector = Eigen::Matrix<double, Eigen::Dynamic, 1, Eigen::ColMajor, MANY, 1>;

// Gauss and Legendre's places on (-1, 1), from the middle outwards, and weights.
constexpr std::array<double, 4> PLACES{0.1834346424956498, 0.5255324099163290, 0.7966664774136267, 0.9602898564975363};
constexpr std::array<double, 4> WEIGHTS{0.3626837833783620, 0.3137066458778873, 0.2223810344533745, 0.1012285362903763};

// cos(π s), s from 0 to 1, by its power series. That of the standard library has another last digit on another machine, and with it every factor would.
double CosineOfHalfTurns(double s)
{
    const bool isBeyond = s > 0.5;
    const double half = isBeyond ? 1.0 - s : s;
    const bool isSine = half > 0.25;
    const double angle = std::numbers::pi * (isSine ? 0.5 - half : half);
    const double square = angle * angle;
    double sum = 1.0;
    for (int k = isSine ? 19 : 18; k > 1; k -= 2)
        sum = 1.0 - sum * square / (k * (k - 1));
    const double value = isSine ? angle * sum : sum;
    return isBeyond ? -value : value;
}

// cos(k θ) and sin(k θ), θ = π s, k = 0, 1, ... by their recurrences.
struct Waves {
    explicit Waves(double s) : first(CosineOfHalfTurns(s)) { before = {first, -CosineOfHalfTurns(std::abs(s - 0.5))}; }

    void Next()
    {
        const std::array<double, 2> next{2.0 * first * now[0] - before[0], 2.0 * first * now[1] - before[1]};
        before = now;
        now = next;
    }
    double Cosine() const { return now[0]; }
    double Sine() const { return now[1]; }

    double first;
    std::array<double, 2> before{}, now{1.0, 0.0};
};

// A polynomial in s from 0 to 1, its coefficients in rising order.
using Quartic = std::array<double, 5>;

// Its integral with a cosine, from the polynomial and its derivatives at both ends.
class ByParts {
public:
    explicit ByParts(const Quartic& p)
    {
        Quartic derivative = p;
        for (std::size_t n = 0; n < p.size(); ++n) {
            m_first[n] = derivative[0];
            for (const double c : derivative)
                m_last[n] += c;
            for (std::size_t i = 0; i + 1 < p.size(); ++i)
                derivative[i] = static_cast<double>(i + 1) * derivative[i + 1];
            derivative.back() = 0.0;
        }
        for (std::size_t i = 0; i < p.size(); ++i)
            m_mean += p[i] / static_cast<double>(i + 1);
    }

    // ∫ p(s) cos(α + β s) ds from the waves of both ends.
    double Times(double beta, const Waves& first, const Waves& last) const
    {
        if (beta == 0.0) return m_mean;
        const double b = 1.0 / beta;
        const auto end = [b](const Quartic& p, const Waves& w) {
            return b * (w.Sine() * (p[0] - b * b * (p[2] - b * b * p[4])) + b * w.Cosine() * (p[1] - b * b * p[3]));
        };
        return end(m_last, last) - end(m_first, first);
    }

private:
    Quartic m_first{}, m_last{}; // derivatives
    double m_mean = 0.0;
};

// Forks at both ends and nothing that holds between them.
bool IsBetweenForks(const Layout& unit)
{
    const auto isFork = [](const Holds& holds) {
        return holds.slope == 0 && (holds.value & SHEAR_CENTRE) != 0 && (holds.value & TWIST) != 0;
    };
    if (!isFork(unit.stations.front().holds) || !isFork(unit.stations.back().holds)) return false;
    const auto isFree = [](const Station& s) { return !s.holds.Any() && !s.jump; };
    if (!std::all_of(unit.stations.begin() + 1, unit.stations.end() - 1, isFree)) return false;
    return std::all_of(unit.pieces.begin(), unit.pieces.end(),
                       [](const Piece& p) { return p.balanced && !p.along.Any(); });
}

bool HasNoAxialForce(const Layout& unit)
{
    return std::all_of(unit.pieces.begin(), unit.pieces.end(),
                       [](const Piece& p) { return p.axialLeft == 0.0 && p.axialRight == 0.0; });
}

// The compression of a length under one axial force all along and nothing else; none where anything else acts, and of a tie.
std::optional<double> UniformCompression(const Layout& unit)
{
    const double N = unit.pieces.front().axialLeft;
    const auto isUniform = [N](const Piece& p) {
        const Design::Parabola& m = p.moment;
        return p.axialLeft == N && p.axialRight == N && p.torque == 0.0 && m.left == 0.0 && m.right == 0.0 &&
               m.curvature == 0.0;
    };
    if (!(N > 0.0) || !std::all_of(unit.pieces.begin(), unit.pieces.end(), isUniform)) return std::nullopt;
    if (std::any_of(unit.stations.begin(), unit.stations.end(), [](const Station& s) { return s.torque != 0.0; }))
        return std::nullopt;
    return N;
}

// The potential ½ yᵀ (1 - λ H - λ² B) y, scaled so that the stiffness is 1.
class Potential {
public:
    Potential(const Layout& unit, const SectionConstants& section, int terms) :
        m_section(section), m_start(unit.stations.front().x), m_length(unit.stations.back().x - m_start),
        m_terms(terms), m_linear(SmallMatrix::Zero(terms, terms)), m_quadratic(SmallMatrix::Zero(terms, terms))
    {
        for (std::size_t i = 0; i < unit.pieces.size(); ++i)
            AddPiece(unit.pieces[i], unit.stations[i].x, unit.stations[i + 1].x);
        for (std::size_t i = 1; i + 1 < unit.stations.size(); ++i)
            if (unit.stations[i].torque != 0.0) AddTorque(unit.stations[i].torque, unit.stations[i].x);
        Fill();
    }

    /// Whether the factors of both signs have one magnitude.
    bool IsEven() const { return m_isEven; }

    /// The smallest factor above zero of the first terms, of the loads as they are (sign 1) or all turned (-1); infinite where there is none, not-a-number where
    /// it is not found. `shape` is that of fewer terms, or empty, and becomes that of this factor.
    double Smallest(int terms, double sign, SmallVector& shape) const
    {
        const SmallMatrix H = sign * m_linear.topLeftCorner(terms, terms);
        const SmallMatrix B = m_quadratic.topLeftCorner(terms, terms);
        const auto known = shape.size();
        shape.conservativeResize(terms);
        for (auto i = known; i < terms; ++i)
            shape[i] = known > 0 ? 0.0 : 1.0 / static_cast<double>((i + 1) * (i + 1));
        double lambda = Rayleigh(H, B, shape);
        for (int i = 0; i < (known > 0 ? 1 : 3); ++i) {
            shape = (H * shape + lambda * (B * shape)).eval();
            shape.normalize();
            lambda = Rayleigh(H, B, shape);
        }
        return Refined(H, B, shape, lambda);
    }

private:
    // The positive root of 1 - λ h - λ² b for the vector's h and b.
    static double Rayleigh(const SmallMatrix& H, const SmallMatrix& B, const SmallVector& y)
    {
        const double k = y.squaredNorm();
        const double h = y.dot(H * y);
        const double b = y.dot(B * y);
        const double root = std::sqrt(h * h + 4.0 * k * b);
        return h > 0.0 ? 2.0 * k / (h + root) : (root - h) / (2.0 * b);
    }

    // Inverse iteration at shifts that lie below the smallest factor, which a factorisation of the potential there proves.
    static double Refined(const SmallMatrix& H, const SmallMatrix& B, SmallVector& y, double lambda)
    {
        constexpr int MOST_ROUNDS = 60;
        const auto factorised = [&](double at) {
            return Eigen::LLT<SmallMatrix>(SmallMatrix::Identity(H.rows(), H.cols()) - at * H - at * at * B);
        };
        double shift = 0.9 * lambda;
        Eigen::LLT<SmallMatrix> factors = factorised(shift);
        for (int i = 0; factors.info() != Eigen::Success && i < MOST_ROUNDS; ++i) {
            shift *= 0.7;
            factors = factorised(shift);
        }
        for (int i = 0; i < MOST_ROUNDS; ++i) {
            y = factors.solve((H * y + (lambda + shift) * (B * y)).eval());
            y.normalize();
            const double before = lambda;
            lambda = std::min(lambda, Rayleigh(H, B, y));
            if (!std::isfinite(lambda)) return lambda;
            if (before - lambda > 0.1 * ITERATION * lambda) continue;
            shift = lambda * (1.0 - ITERATION);
            factors = factorised(shift);
            if (factors.info() == Eigen::Success) return lambda;
            // Another shape has a smaller factor.
            for (int k = 0; factors.info() != Eigen::Success && k < MOST_ROUNDS; ++k) {
                shift *= 0.95;
                factors = factorised(shift);
            }
            y += SmallVector::Ones(y.size());
        }
        return std::nan("");
    }

    void AddPiece(const Piece& piece, double from, double to)
    {
        const double length = to - from;
        if (length >= LONG_PIECE * m_length) return AddByParts(piece, from, length);
        const int cells = std::max(1, static_cast<int>(std::ceil(m_terms * length / (1.5 * m_length))));
        const double half = 0.5 / cells;
        for (int cell = 0; cell < cells; ++cell)
            for (std::size_t k = 0; k < PLACES.size(); ++k)
                for (const double side : {-1.0, 1.0}) {
                    const double s = (2 * cell + 1 + side * PLACES[k]) * half;
                    AddPlace(piece, s, from + s * length, WEIGHTS[k] * half * length);
                }
    }

    // Polynomials times cosines by parts.
    void AddByParts(const Piece& piece, double from, double length)
    {
        const Design::Parabola& m = piece.moment;
        const std::array<double, 3> moment{m.left, m.right - m.left - m.curvature, m.curvature};
        Quartic square{};
        for (std::size_t i = 0; i < moment.size(); ++i)
            for (std::size_t j = 0; j < moment.size(); ++j)
                square[i + j] += moment[i] * moment[j] * length / (m_section.E * m_section.Iz);
        const double wagner = m_section.betaZ * length;
        const bool isLinear = piece.torque != 0.0 || wagner != 0.0;
        const ByParts squares(square);
        const ByParts wagners({wagner * moment[0], wagner * moment[1], wagner * moment[2]});
        const ByParts torques({piece.torque * length});
        const double turn = std::numbers::pi * length / m_length;
        Waves first((from - m_start) / m_length), last((from + length - m_start) / m_length);
        for (std::size_t k = 0; k <= 2 * static_cast<std::size_t>(m_terms); ++k, first.Next(), last.Next()) {
            const double beta = static_cast<double>(k) * turn;
            m_squares[k] += squares.Times(beta, first, last);
            if (!isLinear) continue;
            m_torques[k] += torques.Times(beta, first, last);
            m_wagners[k] += wagners.Times(beta, first, last);
        }
    }

    void AddPlace(const Piece& piece, double s, double x, double weight)
    {
        const double moment = piece.moment.At(s);
        const double square = weight * moment * moment / (m_section.E * m_section.Iz);
        const double torque = weight * piece.torque;
        const double wagner = weight * m_section.betaZ * moment;
        const bool isLinear = torque != 0.0 || wagner != 0.0;
        ForCosines(x, [&](std::size_t k, double cosine) {
            m_squares[k] += square * cosine;
            if (!isLinear) return;
            m_torques[k] += torque * cosine;
            m_wagners[k] += wagner * cosine;
        });
    }

    void AddTorque(double torque, double x)
    {
        ForCosines(x, [&](std::size_t k, double cosine) { m_torques[k] += torque * cosine; });
    }

    // cos(k θ), θ = π (x - start)/length, by its recurrence.
    template <class Use>
    void ForCosines(double x, Use use) const
    {
        const double first = CosineOfHalfTurns((x - m_start) / m_length);
        double before = first;
        double now = 1.0;
        for (std::size_t k = 0; k <= 2 * static_cast<std::size_t>(m_terms); ++k) {
            use(k, now);
            const double next = 2.0 * first * now - before;
            before = now;
            now = next;
        }
    }

    double Wave(int term) const { return (term + 1) * std::numbers::pi / m_length; }

    // From sin i sin j = (cos(i - j) - cos(i + j))/2 and cos i cos j = (cos(i - j) + cos(i + j))/2.
    void Fill()
    {
        std::array<double, MANY> scale{};
        for (int i = 0; i < m_terms; ++i) {
            const double k2 = Wave(i) * Wave(i);
            const double stiffness =
                0.5 * m_length * k2 * (m_section.G * m_section.It + k2 * m_section.E * m_section.Iw);
            scale[static_cast<std::size_t>(i)] = 1.0 / std::sqrt(stiffness);
        }
        for (int j = 0; j < m_terms; ++j)
            for (int i = j; i < m_terms; ++i) {
                const auto less = static_cast<std::size_t>(i - j);
                const auto more = less + 2 * static_cast<std::size_t>(j + 1);
                const double scaled = 0.5 * scale[static_cast<std::size_t>(i)] * scale[static_cast<std::size_t>(j)];
                m_quadratic(i, j) = m_quadratic(j, i) = scaled * (m_squares[less] - m_squares[more]);
                m_linear(i, j) = m_linear(j, i) = scaled * (m_torques[less] - m_torques[more] +
                                                            Wave(i) * Wave(j) * (m_wagners[less] + m_wagners[more]));
            }
        m_isEven = m_linear.isZero(0.0);
    }

    using Cosines = std::array<double, static_cast<std::size_t>(2 * MANY + 1)>;

    const SectionConstants& m_section;
    double m_start;
    double m_length;
    int m_terms;
    // Integrals of the work with cos(k θ): M²/(E Iz), loads times their heights, βz M.
    Cosines m_squares{}, m_torques{}, m_wagners{};
    SmallMatrix m_linear;
    SmallMatrix m_quadratic;
    bool m_isEven = false;
};

// The factor of one sign from a longer and a shorter series. None where it is not finite or they differ too much.
std::optional<Factor> FactorOf(const Potential& potential, int fewer, int more, double sign)
{
    SmallVector shape;
    const double rough = potential.Smallest(fewer, sign, shape);
    const double lambda = potential.Smallest(more, sign, shape);
    const double error = CAUTION * std::abs(rough / lambda - 1.0) + ITERATION;
    if (!(std::isfinite(lambda) && error <= LARGEST_ESTIMATE)) return std::nullopt;
    return Factor{lambda, error};
}

std::optional<Factors> FactorsOf(const Layout& unit, const SectionConstants& section, int fewer, int more)
{
    const Potential potential(unit, section, more);
    const auto positive = FactorOf(potential, fewer, more, 1.0);
    if (!positive) return std::nullopt;
    const auto negative = potential.IsEven() ? positive : FactorOf(potential, fewer, more, -1.0);
    if (!negative) return std::nullopt;
    Factors factors{positive, Factor{-negative->lambda, negative->error}};
    if (positive->lambda > NONE_BESIDE * negative->lambda) factors.positive.reset();
    if (negative->lambda > NONE_BESIDE * positive->lambda) factors.negative.reset();
    return factors;
}

} // namespace

std::optional<Factors> FactorsBySeries(const Layout& unit, const SectionConstants& section)
{
    if (!IsBetweenForks(unit)) return std::nullopt;
    if (const auto compression = UniformCompression(unit); compression && !section.offWebPlane) {
        const double length = unit.stations.back().x - unit.stations.front().x;
        return Factors{Factor{StrutForceBetweenForks(section, length) / *compression}, std::nullopt};
    }
    if (!HasNoAxialForce(unit)) return std::nullopt;
    if (const auto factors = FactorsOf(unit, section, FEW, SOME)) return factors;
    return FactorsOf(unit, section, SOME, MANY);
}

} // namespace Keltrix::Stability
