#include "Freedoms.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::Stability {

namespace {

// Coefficients are 1 or heights of flanges; what is smaller after elimination is rounding.
constexpr double NOTHING = 1e-12;
// Most displacements that a condition may tie together. It is met by restraints of warping along sub-spans that
// change flange more often than this.
constexpr std::size_t MOST_TERMS = 12;

} // namespace

Freedoms::Freedoms(const Mesh& mesh, const SectionConstants& section, bool warpingFree) :
    m_section(section), m_warpingFree(warpingFree)
{
    const std::size_t nodes = mesh.nodes.size();
    m_pivot.assign(nodes * PER_NODE, -1);
    for (std::size_t i = 0; i < nodes; ++i) {
        HoldValues(i, mesh.nodes[i].holds.value);
        if (i > 0) HoldElement(i - 1, mesh.elements[i - 1].along);
        HoldSlopes(i, PHI_SLOPE_LEFT, Slopes(mesh.nodes[i].holds.slope));
        if (i + 1 < nodes) {
            HoldValues(i, mesh.elements[i].along.value);
            HoldSlopes(i, PHI_SLOPE_RIGHT, mesh.elements[i].along.value | Slopes(mesh.elements[i].along.slope));
        }
        // What no element uses: the second slope of a section that resists warping, slopes beyond the ends.
        const int base = PER_NODE * static_cast<int>(i);
        if (!m_warpingFree || i + 1 == nodes) Add({{base + PHI_SLOPE_RIGHT, 1.0}});
        if (m_warpingFree && i == 0) Add({{base + PHI_SLOPE_LEFT, 1.0}});
    }
    Resolve();
}

// Of a section that does not resist warping, φ' is free at no cost: conditions in which it takes part hold nothing, except what
// they leave of v' when two of them are combined.
unsigned Freedoms::Slopes(unsigned conditions) const
{
    if (!m_warpingFree) return conditions;
    return (conditions & SHEAR_CENTRE) != 0 || Rank(conditions, m_section) == 2 ? SHEAR_CENTRE : 0u;
}

void Freedoms::HoldValues(std::size_t node, unsigned conditions)
{
    for (const Condition condition : CONDITIONS) {
        if (!(conditions & condition)) continue;
        const Coefficients c = CoefficientsOf(condition, m_section);
        Add({{Raw(node, PHI), c.phi}, {Raw(node, V), c.v}});
    }
}

void Freedoms::HoldSlopes(std::size_t node, Which phiSlope, unsigned conditions)
{
    for (const Condition condition : CONDITIONS) {
        if (!(conditions & condition)) continue;
        const Coefficients c = CoefficientsOf(condition, m_section);
        Add({{Raw(node, phiSlope), c.phi}, {Raw(node, V_SLOPE), c.v}});
    }
}

// At the right end of an element: what is zero all along has no slope either, and what has no slope is the same at both
// ends.
void Freedoms::HoldElement(std::size_t element, const Holds& along)
{
    HoldValues(element + 1, along.value);
    HoldSlopes(element + 1, PHI_SLOPE_LEFT, along.value | Slopes(along.slope));
    Tie(element, Slopes(along.slope));
}

void Freedoms::Tie(std::size_t element, unsigned conditions)
{
    for (const Condition condition : CONDITIONS) {
        if (!(conditions & condition)) continue;
        const Coefficients c = CoefficientsOf(condition, m_section);
        Add({{Raw(element, PHI), -c.phi},
             {Raw(element, V), -c.v},
             {Raw(element + 1, PHI), c.phi},
             {Raw(element + 1, V), c.v}});
    }
}

void Freedoms::Add(std::initializer_list<Term> terms)
{
    m_equation.clear();
    for (const Term& term : terms)
        if (std::abs(term.coefficient) > NOTHING) m_equation.push_back(term);
    Eliminate();
    if (m_equation.empty()) return;
    if (m_equation.size() > MOST_TERMS) {
        m_leftOut = true;
        return;
    }
    const Term last = m_equation.back();
    m_equation.pop_back();
    for (Term& term : m_equation)
        term.coefficient /= -last.coefficient;
    m_pivot[static_cast<std::size_t>(last.index)] = static_cast<int>(m_pivots.size());
    m_pivots.push_back(m_equation);
}

// Replaces the displacements of the equation that earlier equations give, from the last one to the first.
void Freedoms::Eliminate()
{
    for (std::size_t place = m_equation.size(); place-- > 0;) {
        const Term term = m_equation[place];
        const int pivot = m_pivot[static_cast<std::size_t>(term.index)];
        if (pivot < 0) continue;
        m_equation.erase(m_equation.begin() + static_cast<std::ptrdiff_t>(place));
        for (const Term& by : m_pivots[static_cast<std::size_t>(pivot)]) {
            const double coefficient = term.coefficient * by.coefficient;
            const auto at = std::lower_bound(m_equation.begin(), m_equation.end(), by.index,
                                             [](const Term& t, int index) { return t.index < index; });
            if (at == m_equation.end() || at->index != by.index)
                m_equation.insert(at, {by.index, coefficient});
            else
                at->coefficient += coefficient;
        }
        std::erase_if(m_equation, [](const Term& t) { return std::abs(t.coefficient) <= NOTHING; });
        // Everything that was put in comes before the term that went out; all after it is free.
        place = static_cast<std::size_t>(
            std::count_if(m_equation.begin(), m_equation.end(), [&](const Term& t) { return t.index < term.index; }));
    }
}

// Numbers the free displacements, and writes every displacement in terms of them.
void Freedoms::Resolve()
{
    m_free.assign(m_pivot.size(), -1);
    for (std::size_t i = 0; i < m_pivot.size(); ++i)
        if (m_pivot[i] < 0) m_free[i] = m_count++;
    m_begin.reserve(m_pivot.size() + 1);
    m_terms.reserve(m_pivot.size());
    m_begin.push_back(0);
    for (std::size_t i = 0; i < m_pivot.size(); ++i) {
        if (m_free[i] >= 0) {
            m_terms.push_back({m_free[i], 1.0});
        } else if (const Equation& by = m_pivots[static_cast<std::size_t>(m_pivot[i])]; !by.empty()) {
            m_equation = by;
            Eliminate();
            for (const Term& term : m_equation)
                m_terms.push_back({m_free[static_cast<std::size_t>(term.index)], term.coefficient});
        }
        m_begin.push_back(m_terms.size());
    }
}

} // namespace Keltrix::Stability
