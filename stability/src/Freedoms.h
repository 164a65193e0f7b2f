#pragma once

#include <array>
#include <span>
#include <vector>

#include "Mesh.h"

namespace Keltrix::Stability {

/// A free coordinate times a coefficient.
struct Term {
    int index = 0;
    double coefficient = 0.0;
};

/// The displacements of a mesh's nodes in terms of those that are free, after the conditions are eliminated.
///
/// A node has φ, φ' on its left and on its right, v and v'. Where the section resists warping φ' is the same on both sides.
/// Conditions are linear equations between few displacements. Each gives its last displacement in terms of
/// earlier ones, so that the matrices stay banded.
class Freedoms {
public:
    enum Which { PHI = 0, PHI_SLOPE_LEFT = 1, PHI_SLOPE_RIGHT = 2, V = 3, V_SLOPE = 4, PER_NODE = 5 };

    Freedoms(const Mesh& mesh, const SectionConstants& section, bool warpingFree);

    /// Number of free displacements.
    int Count() const { return m_count; }
    bool RestraintsLeftOut() const { return m_leftOut; }
    /// A displacement in terms of free ones; empty where it is held.
    std::span<const Term> Of(std::size_t node, Which which) const { return TermsOf(Raw(node, which)); }
    /// The slopes of φ at the ends of an element.
    std::span<const Term> SlopeAtLeft(std::size_t element) const { return Of(element, PHI_SLOPE_RIGHT); }
    std::span<const Term> SlopeAtRight(std::size_t element) const { return Of(element + 1, PHI_SLOPE_LEFT); }

    /// Value of a displacement for values of the free ones.
    template <class Vector>
    double Value(const Vector& free, std::size_t node, Which which) const
    {
        double value = 0.0;
        for (const Term& term : Of(node, which))
            value += term.coefficient * free[term.index];
        return value;
    }
    /// Whether a displacement is a free one itself, and which.
    int FreeIndex(std::size_t node, Which which) const { return m_free[static_cast<std::size_t>(Raw(node, which))]; }

private:
    using Equation = std::vector<Term>; // ascending displacements, sum zero

    int Raw(std::size_t node, Which which) const
    {
        if (which == PHI_SLOPE_RIGHT && !m_warpingFree) which = PHI_SLOPE_LEFT;
        return PER_NODE * static_cast<int>(node) + which;
    }
    std::span<const Term> TermsOf(int raw) const
    {
        const auto i = static_cast<std::size_t>(raw);
        return std::span<const Term>(m_terms).subspan(m_begin[i], m_begin[i + 1] - m_begin[i]);
    }
    unsigned Slopes(unsigned conditions) const;
    void HoldValues(std::size_t node, unsigned conditions);
    void HoldSlopes(std::size_t node, Which phiSlope, unsigned conditions);
    void HoldElement(std::size_t element, const Holds& along);
    void Tie(std::size_t element, unsigned conditions);
    void Add(std::initializer_list<Term> terms);
    void Eliminate();
    void Resolve();

    SectionConstants m_section;
    bool m_warpingFree;
    bool m_leftOut = false;
    int m_count = 0;
    Equation m_equation;
    std::vector<int> m_pivot;       // per displacement: its place in m_pivots, -1
    std::vector<Equation> m_pivots; // the displacement in terms of earlier ones
    std::vector<int> m_free;        // per displacement: its number among the free ones, -1
    std::vector<Term> m_terms;
    std::vector<std::size_t> m_begin;
};

} // namespace Keltrix::Stability
