// Matrices of cubic Hermite elements. Within an element of length h the displacements are φ and φ' at its ends, v at the right
// end less v at the left one (only v' enters the energy) and v' at both ends.

#include "Pencil.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Keltrix::Stability {

namespace {

// Rows are short as a rule: a loop with two sums beats a call for long vectors.
double Dot(const double* a, const double* b, int count)
{
    double even = 0.0;
    double odd = 0.0;
    int i = 0;
    for (; i + 1 < count; i += 2) {
        even += a[i] * b[i];
        odd += a[i + 1] * b[i + 1];
    }
    return i < count ? even + odd + a[i] * b[i] : even + odd;
}

} // namespace

Profile::Profile(const std::vector<int>& first) : m_first(first), m_diagonal(first.size())
{
    std::size_t place = 0;
    for (std::size_t i = 0; i < first.size(); ++i) {
        place += i - static_cast<std::size_t>(first[i]);
        m_diagonal[i] = place++;
    }
    m_values.assign(place, 0.0);
}

bool Profile::IsZero() const
{
    return std::all_of(m_values.begin(), m_values.end(), [](double value) { return value == 0.0; });
}

bool Profile::IsZeroWhere(bool between, const std::vector<char>& marked) const
{
    for (std::size_t i = 0; i < m_first.size(); ++i) {
        const double* const row = Row(i);
        const auto first = static_cast<std::size_t>(m_first[i]);
        for (std::size_t j = first; j <= i; ++j)
            if ((marked[i] != marked[j]) == between && row[j - first] != 0.0) return false;
    }
    return true;
}

bool Profile::IsFinite() const
{
    return std::all_of(m_values.begin(), m_values.end(), [](double value) { return std::isfinite(value); });
}

Vector Profile::Times(const Vector& x) const
{
    Vector y = Vector::Zero(x.size());
    for (std::size_t i = 0; i < m_first.size(); ++i) {
        const double* const row = Row(i);
        const int first = m_first[i];
        const int count = static_cast<int>(i) - first;
        const double* const xs = x.data() + first;
        double* const ys = y.data() + first;
        const double here = xs[count];
        for (int j = 0; j < count; ++j)
            ys[j] += here * row[j];
        ys[count] += Dot(row, xs, count + 1);
    }
    return y;
}

Profile Profile::Less(double factor, const Profile& other) const
{
    Profile result = *this;
    for (std::size_t i = 0; i < m_values.size(); ++i)
        result.m_values[i] -= factor * other.m_values[i];
    return result;
}

bool Profile::Factorise()
{
    // What rounding leaves of a diagonal entry that is zero.
    constexpr double ROUNDING = 1e-15;
    for (std::size_t i = 0; i < m_first.size(); ++i) {
        double* const row = Row(i);
        const int first = m_first[i];
        const double before = std::abs(row[static_cast<int>(i) - first]);
        for (int j = first; j <= static_cast<int>(i); ++j) {
            const auto column = static_cast<std::size_t>(j);
            const int from = std::max(first, m_first[column]);
            const double* const other = Row(column) - m_first[column];
            double sum = row[j - first];
            sum -= Dot(row + (from - first), other + from, j - from);
            if (column != i) {
                row[j - first] = sum / other[j];
            } else {
                if (!(sum > ROUNDING * before)) return false;
                row[j - first] = std::sqrt(sum);
            }
        }
    }
    return true;
}

void Profile::SolveLower(Vector& b) const
{
    for (std::size_t i = 0; i < m_first.size(); ++i) {
        const double* const row = Row(i);
        const int count = static_cast<int>(i) - m_first[i];
        double* const bs = b.data() + m_first[i];
        bs[count] = (bs[count] - Dot(row, bs, count)) / row[count];
    }
}

void Profile::SolveUpper(Vector& b) const
{
    for (std::size_t i = m_first.size(); i-- > 0;) {
        const double* const row = Row(i);
        const int count = static_cast<int>(i) - m_first[i];
        double* const bs = b.data() + m_first[i];
        const double here = bs[count] / row[count];
        bs[count] = here;
        for (int j = 0; j < count; ++j)
            bs[j] -= here * row[j];
    }
}

namespace {

// Order of an element's displacements.
enum Local { PHI_LEFT, PHI_SLOPE_LEFT, PHI_RIGHT, PHI_SLOPE_RIGHT, V_RISE, V_SLOPE_LEFT, V_SLOPE_RIGHT, LOCALS };
using Matrix = Eigen::Matrix<double, LOCALS, LOCALS>;

// Gauss points and weights on 0 to 1: four integrate the degree 6 of the work of a quadratic moment exactly.
constexpr std::array<double, 4> GAUSS_POINTS{0.069431844202973712, 0.33000947820757187, 0.66999052179242813,
                                             0.93056815579702629};
constexpr std::array<double, 4> GAUSS_WEIGHTS{0.17392742256872693, 0.32607257743127307, 0.32607257743127307,
                                              0.17392742256872693};

// φ, φ' and v' at a place of an element as factors of its displacements.
struct Shape {
    std::array<double, 4> phi;
    std::array<double, 4> phiSlope;
    std::array<double, 3> vSlope;
};
Shape ShapeAt(double t, double h)
{
    const double t2 = t * t;
    const double t3 = t2 * t;
    const double rise = 6.0 * (t - t2) / h;
    const double left = 1.0 - 4.0 * t + 3.0 * t2;
    const double right = 3.0 * t2 - 2.0 * t;
    return {{1.0 - 3.0 * t2 + 2.0 * t3, h * (t - 2.0 * t2 + t3), 3.0 * t2 - 2.0 * t3, h * (t3 - t2)},
            {-rise, left, rise, right},
            {rise, left, right}};
}

void AddTorque(const Shape& at, double torque, Matrix& work)
{
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j <= i; ++j)
            work(i, j) += torque * at.phi[static_cast<std::size_t>(i)] * at.phi[static_cast<std::size_t>(j)];
}

Matrix StiffnessOf(double h, const SectionConstants& s, bool warpingFree)
{
    Matrix k = Matrix::Zero();
    const double bending = s.E * s.Iz / (h * h * h);
    const double warping = warpingFree ? 0.0 : s.E * s.Iw / (h * h * h);
    const double torsion = s.G * s.It / (30.0 * h);
    const auto set = [&](int i, int j, double cubic, double linear) { k(i, j) = warping * cubic + torsion * linear; };
    set(PHI_LEFT, PHI_LEFT, 12.0, 36.0);
    set(PHI_SLOPE_LEFT, PHI_LEFT, 6.0 * h, 3.0 * h);
    set(PHI_SLOPE_LEFT, PHI_SLOPE_LEFT, 4.0 * h * h, 4.0 * h * h);
    set(PHI_RIGHT, PHI_LEFT, -12.0, -36.0);
    set(PHI_RIGHT, PHI_SLOPE_LEFT, -6.0 * h, -3.0 * h);
    set(PHI_RIGHT, PHI_RIGHT, 12.0, 36.0);
    set(PHI_SLOPE_RIGHT, PHI_LEFT, 6.0 * h, 3.0 * h);
    set(PHI_SLOPE_RIGHT, PHI_SLOPE_LEFT, 2.0 * h * h, -h * h);
    set(PHI_SLOPE_RIGHT, PHI_RIGHT, -6.0 * h, -3.0 * h);
    set(PHI_SLOPE_RIGHT, PHI_SLOPE_RIGHT, 4.0 * h * h, 4.0 * h * h);
    k(V_RISE, V_RISE) = 12.0 * bending;
    k(V_SLOPE_LEFT, V_RISE) = k(V_SLOPE_RIGHT, V_RISE) = -6.0 * h * bending;
    k(V_SLOPE_LEFT, V_SLOPE_LEFT) = k(V_SLOPE_RIGHT, V_SLOPE_RIGHT) = 4.0 * h * h * bending;
    k(V_SLOPE_RIGHT, V_SLOPE_LEFT) = 2.0 * h * h * bending;
    return k;
}

// Twice the work of the loads of a piece between the shares s0 and s1 of it, which lie at t0 and t1 of the element.
void AddWork(const Piece& piece, double pieceLength, std::array<double, 2> s, std::array<double, 2> t, double h,
             const SectionConstants& section, Matrix& work)
{
    const double polar = section.PolarRadius2();
    for (std::size_t g = 0; g < GAUSS_POINTS.size(); ++g) {
        const double share = s[0] + GAUSS_POINTS[g] * (s[1] - s[0]);
        const Shape at = ShapeAt(t[0] + GAUSS_POINTS[g] * (t[1] - t[0]), h);
        const double dx = GAUSS_WEIGHTS[g] * (t[1] - t[0]) * h;
        const double M = piece.moment.At(share) * dx;
        const double slopeM = piece.moment.Slope(share) / pieceLength * dx;
        const double N = ((1.0 - share) * piece.axialLeft + share * piece.axialRight) * dx;
        const double twisting = section.betaZ * M + N * polar;
        const double torque = piece.torque * dx;
        const double coupled = M + N * section.zc;
        for (std::size_t i = 0; i < 4; ++i)
            for (std::size_t j = 0; j <= i; ++j)
                work(static_cast<int>(i), static_cast<int>(j)) +=
                    twisting * at.phiSlope[i] * at.phiSlope[j] + torque * at.phi[i] * at.phi[j];
        for (std::size_t i = 0; i < 3; ++i) {
            const int row = V_RISE + static_cast<int>(i);
            for (std::size_t j = 0; j < 4; ++j)
                work(row, static_cast<int>(j)) += at.vSlope[i] * (coupled * at.phiSlope[j] + slopeM * at.phi[j]);
            for (std::size_t j = 0; j <= i; ++j)
                work(row, V_RISE + static_cast<int>(j)) += N * at.vSlope[i] * at.vSlope[j];
        }
    }
}

class Assembler {
public:
    Assembler(const Mesh& mesh, const Layout& unit, const SectionConstants& section, bool warpingFree,
              const Freedoms& freedoms) :
        m_mesh(mesh),
        m_unit(unit), m_section(section), m_warpingFree(warpingFree), m_freedoms(freedoms)
    {}

    Pencil Make()
    {
        std::vector<int> first(static_cast<std::size_t>(m_freedoms.Count()));
        for (std::size_t i = 0; i < first.size(); ++i)
            first[i] = static_cast<int>(i);
        for (std::size_t e = 0; e < m_mesh.elements.size(); ++e) {
            FindTerms(e);
            int least = m_freedoms.Count();
            for (const auto& terms : m_terms)
                for (const Term& term : terms)
                    least = std::min(least, term.index);
            for (const auto& terms : m_terms)
                for (const Term& term : terms)
                    first[static_cast<std::size_t>(term.index)] =
                        std::min(first[static_cast<std::size_t>(term.index)], least);
        }
        Pencil pencil{Profile(first), Profile(first), std::vector<char>(first.size(), 0)};
        for (std::size_t node = 0; node < m_mesh.nodes.size(); ++node)
            for (const auto which : {Freedoms::PHI, Freedoms::PHI_SLOPE_LEFT, Freedoms::PHI_SLOPE_RIGHT})
                if (const int free = m_freedoms.FreeIndex(node, which); free >= 0)
                    pencil.twist[static_cast<std::size_t>(free)] = 1;
        for (std::size_t e = 0; e < m_mesh.elements.size(); ++e)
            AddElement(e, pencil);
        return pencil;
    }

private:
    void FindTerms(std::size_t e)
    {
        const auto take = [this](Local local, std::span<const Term> terms) {
            m_terms[local].assign(terms.begin(), terms.end());
        };
        take(PHI_LEFT, m_freedoms.Of(e, Freedoms::PHI));
        take(PHI_SLOPE_LEFT, m_freedoms.SlopeAtLeft(e));
        take(PHI_RIGHT, m_freedoms.Of(e + 1, Freedoms::PHI));
        take(PHI_SLOPE_RIGHT, m_freedoms.SlopeAtRight(e));
        take(V_SLOPE_LEFT, m_freedoms.Of(e, Freedoms::V_SLOPE));
        take(V_SLOPE_RIGHT, m_freedoms.Of(e + 1, Freedoms::V_SLOPE));
        // What both ends have in common goes out, so that a flange that is kept parallel over many elements does not tie
        // all of them together.
        take(V_RISE, m_freedoms.Of(e + 1, Freedoms::V));
        auto& rise = m_terms[V_RISE];
        for (const Term& left : m_freedoms.Of(e, Freedoms::V)) {
            const auto same =
                std::find_if(rise.begin(), rise.end(), [&](const Term& term) { return term.index == left.index; });
            if (same == rise.end())
                rise.push_back({left.index, -left.coefficient});
            else if (same->coefficient == left.coefficient)
                rise.erase(same);
            else
                same->coefficient -= left.coefficient;
        }
    }

    void AddElement(std::size_t e, Pencil& pencil)
    {
        const double left = m_mesh.nodes[e].x;
        const double h = m_mesh.nodes[e + 1].x - left;
        const Element& element = m_mesh.elements[e];
        Matrix work = Matrix::Zero();
        for (std::size_t p = element.firstPiece; p <= element.lastPiece; ++p) {
            const double start = m_unit.stations[p].x;
            const double end = m_unit.stations[p + 1].x;
            const double from = std::max(start, left);
            const double to = std::min(end, left + h);
            const double length = end - start;
            AddWork(m_unit.pieces[p], length, {(from - start) / length, (to - start) / length},
                    {(from - left) / h, (to - left) / h}, h, m_section, work);
            if (start >= left && m_unit.stations[p].torque != 0.0)
                AddTorque(ShapeAt((start - left) / h, h), m_unit.stations[p].torque, work);
        }
        if (const Station& last = m_unit.stations.back(); e + 1 == m_mesh.elements.size() && last.torque != 0.0)
            AddTorque(ShapeAt(1.0, h), last.torque, work);
        FindTerms(e);
        Scatter(StiffnessOf(h, m_section, m_warpingFree), pencil.stiffness);
        Scatter(work, pencil.work);
    }

    // Only the lower triangle of the element's matrix is filled.
    void Scatter(const Matrix& matrix, Profile& into) const
    {
        for (int i = 0; i < LOCALS; ++i) {
            for (int j = 0; j <= i; ++j) {
                const double value = matrix(i, j);
                if (value == 0.0) continue;
                for (const Term& a : m_terms[static_cast<std::size_t>(i)])
                    for (const Term& b : m_terms[static_cast<std::size_t>(j)])
                        AddBoth(a, b, value, i == j, into);
            }
        }
    }

    // An entry off the diagonal of the element's matrix stands for its mirror, too.
    static void AddBoth(const Term& a, const Term& b, double value, bool diagonal, Profile& into)
    {
        const double product = a.coefficient * b.coefficient * value;
        if (a.index == b.index)
            into.Add(a.index, a.index, diagonal ? product : 2.0 * product);
        else if (!diagonal)
            into.Add(std::max(a.index, b.index), std::min(a.index, b.index), product);
        else if (a.index > b.index)
            into.Add(a.index, b.index, product);
    }

    const Mesh& m_mesh;
    const Layout& m_unit;
    const SectionConstants& m_section;
    bool m_warpingFree;
    const Freedoms& m_freedoms;
    std::array<std::vector<Term>, LOCALS> m_terms;
};

} // namespace

Pencil Assemble(const Mesh& mesh, const Layout& unit, const SectionConstants& section, bool warpingFree,
                const Freedoms& freedoms)
{
    return Assembler(mesh, unit, section, warpingFree, freedoms).Make();
}

} // namespace Keltrix::Stability
