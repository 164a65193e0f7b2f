#pragma once

#include <Eigen/Core>
#include <cstddef>
#include <vector>

#include "Freedoms.h"

namespace Keltrix::Stability {

using Vector = Eigen::VectorXd;

/// Symmetric matrix, of which each row is kept from its first entry to the diagonal. Its Cholesky factor fits into the same
/// places.
class Profile {
public:
    Profile() = default;
    /// Zero, with the given first columns.
    explicit Profile(const std::vector<int>& first);

    int Size() const { return static_cast<int>(m_first.size()); }
    /// Adds to the entry of a row and a column, column <= row.
    void Add(int row, int column, double value)
    {
        m_values[m_diagonal[static_cast<std::size_t>(row)] - static_cast<std::size_t>(row - column)] += value;
    }
    bool IsZero() const;
    /// Whether every entry between a displacement that is marked and one that is not is zero (`between`), or every other one.
    bool IsZeroWhere(bool between, const std::vector<char>& marked) const;
    bool IsFinite() const;
    Vector Times(const Vector& x) const;
    /// This matrix less a multiple of another one of the same profile.
    Profile Less(double factor, const Profile& other) const;
    /// Replaces the matrix by its Cholesky factor. False where it is not positive definite, to the precision of its diagonal; the
    /// matrix is then lost.
    bool Factorise();
    /// Of the factor L: L x = b and Lᵀ x = b, in place.
    void SolveLower(Vector& b) const;
    void SolveUpper(Vector& b) const;

private:
    auto Row(std::size_t i) { return m_values.data() + m_diagonal[i] - (i - static_cast<std::size_t>(m_first[i])); }
    auto Row(std::size_t i) const
    {
        return m_values.data() + m_diagonal[i] - (i - static_cast<std::size_t>(m_first[i]));
    }

    std::vector<int> m_first;
    std::vector<std::size_t> m_diagonal; // places of the diagonal's entries
    std::vector<double> m_values;
};

/// Elastic stiffness K and the matrix S of the loads' work: the potential is ½ xᵀ (K - λ S) x.
struct Pencil {
    Profile stiffness;
    Profile work;
    /// Displacements that are twists, not lateral ones. Where K does not couple the two and S nothing else, changing the sign of the twists
    /// turns every factor into that of the other sign: the section is doubly symmetric and loaded at its centre.
    std::vector<char> twist;

    bool IsMirrored() const { return stiffness.IsZeroWhere(true, twist) && work.IsZeroWhere(false, twist); }
};

Pencil Assemble(const Mesh& mesh, const Layout& unit, const SectionConstants& section, bool warpingFree,
                const Freedoms& freedoms);

} // namespace Keltrix::Stability
