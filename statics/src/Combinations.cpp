#include "keltrix/statics/Combinations.h"

#include <algorithm>
#include <cmath>

#include "Patterns.h"

namespace Keltrix::Statics {

namespace {

constexpr double SAME = 1e-11;

class Expander {
public:
    explicit Expander(const Analysis& analysis) :
        m_analysis(analysis), m_beam(analysis.GetBeam()), m_variable(VariableUnits(analysis)),
        m_signs(FindSigns(analysis, m_variable))
    {
        MeasureUnits();
    }

    Combinations Expand(const std::vector<CombinationRule>& rules)
    {
        Combinations combinations;
        for (const CombinationRule& rule : rules) {
            if (!HasItsCases(rule)) {
                combinations.notes.push_back(rule.name + L": left out, because it names a case that the beam has not");
                continue;
            }
            for (const Signs& signs : SignsFor(rule))
                Add(rule, signs);
        }
        for (std::size_t i = 0; i < m_made.size(); ++i) {
            if (IsDominated(i)) {
                ++combinations.dropped;
                continue;
            }
            Combination& kept = m_made[i].combination;
            kept.name += L": " + NameOf(kept);
            combinations.list.push_back(std::move(kept));
        }
        Note(rules, combinations);
        return combinations;
    }

private:
    struct Made {
        Combination combination;
        std::vector<double> factors; ///< of the units
        std::vector<double> forces;
        std::size_t largest = 0; ///< place of the largest force
        bool dropped = false;
    };

    static bool HasChoice(const RuleTerm& term) { return term.unfavourable != term.favourable; }
    bool HasItsCases(const CombinationRule& rule) const
    {
        return std::all_of(rule.terms.begin(), rule.terms.end(),
                           [&](const RuleTerm& term) { return term.caseIndex < m_beam.cases.size(); });
    }
    bool IsPermanent(const RuleTerm& term) const { return m_beam.cases[term.caseIndex].kind == ActionKind::Permanent; }

    // Signs with 0 where a rule has no choice.
    std::vector<Signs> SignsFor(const CombinationRule& rule) const
    {
        std::vector<bool> chosen(m_variable.size() + 1, false);
        for (const RuleTerm& term : rule.terms) {
            if (!HasChoice(term)) continue;
            if (IsPermanent(term)) chosen[0] = true;
            for (std::size_t i = 0; i < m_variable.size(); ++i)
                if (m_variable[i]->caseIndex == term.caseIndex) chosen[i + 1] = true;
        }
        Signs all(chosen.size(), 1);
        Signs none(chosen.size(), -1);
        none[0] = 1;
        std::vector<Signs> signs{all, none};
        signs.insert(signs.end(), m_signs.begin(), m_signs.end());
        for (Signs& s : signs)
            for (std::size_t i = 0; i < s.size(); ++i)
                if (!chosen[i]) s[i] = 0;
        return Distinct(std::move(signs));
    }

    void Add(const CombinationRule& rule, const Signs& signs)
    {
        Made made;
        made.combination.clause = rule.clause;
        made.combination.state = rule.state;
        for (const RuleTerm& term : rule.terms) {
            if (IsPermanent(term))
                Append(term, signs[0] < 0 ? term.favourable : term.unfavourable, {}, made.combination);
            else
                AddVariable(term, signs, made.combination);
        }
        made.combination.name = rule.name;
        Measure(made);
        m_made.push_back(std::move(made));
    }

    void AddVariable(const RuleTerm& term, const Signs& signs, Combination& combination) const
    {
        const std::size_t spans = m_analysis.Spans().size();
        std::vector<bool> on(spans, false);
        std::size_t units = 0;
        std::size_t count = 0;
        bool whole = false;
        for (std::size_t i = 0; i < m_variable.size(); ++i) {
            const Unit& unit = *m_variable[i];
            if (unit.caseIndex != term.caseIndex) continue;
            ++units;
            if (signs[i + 1] <= 0) continue;
            ++count;
            whole = whole || unit.span < 0;
            if (unit.span >= 0) on[static_cast<std::size_t>(unit.span)] = true;
        }
        if (units == 0) return;
        if (whole || count == units)
            Append(term, term.unfavourable, {}, combination);
        else if (count == 0)
            Append(term, term.favourable, {}, combination);
        else {
            Append(term, term.unfavourable, on, combination);
            on.flip();
            Append(term, term.favourable, on, combination);
        }
    }

    static void Append(const RuleTerm& rule, double factor, const std::vector<bool>& spans, Combination& combination)
    {
        if (factor == 0.0) return;
        combination.terms.push_back({rule.caseIndex, factor, spans});
        combination.sources.push_back(rule.source);
    }

    CString NameOf(const Combination& combination) const
    {
        const CDesFormat format;
        CString name;
        for (const Term& term : combination.terms) {
            if (!name.IsEmpty()) name += L" + ";
            name += format.NoDim(term.factor) + L" " + m_beam.cases[term.caseIndex].name;
            if (term.spans.empty()) continue;
            const auto count = std::count(term.spans.begin(), term.spans.end(), true);
            name += count > 1 ? L" on spans " : L" on span ";
            bool any = false;
            for (std::size_t i = 0; i < term.spans.size(); ++i) {
                if (!term.spans[i]) continue;
                if (any) name += L", ";
                name += format.Int(static_cast<int>(i) + 1);
                any = true;
            }
        }
        return name.IsEmpty() ? CString(L"no loads") : name;
    }

    // Numbers that say all forces of each unit, in shares of the largest of their kind.
    void MeasureUnits()
    {
        std::vector<double> scale;
        for (const Unit& unit : m_analysis.Units()) {
            std::vector<double> forces;
            const auto take = [&](std::size_t kind, double value) {
                if (scale.size() <= kind) scale.resize(kind + 1, 0.0);
                scale[kind] = std::max(scale[kind], std::abs(value));
                forces.push_back(value);
            };
            std::size_t kind = 0;
            for (const Line* const line : {&unit.response.major, &unit.response.minor}) {
                for (const Piece& p : line->Pieces()) {
                    take(kind, p.moment);
                    take(kind + 1, p.shear);
                    take(kind + 2, p.loadLeft);
                    take(kind + 2, p.loadRight);
                }
                kind += 3;
            }
            for (const AxialPiece& a : unit.response.axial) {
                take(kind, a.left);
                take(kind, a.right);
            }
            m_forces.push_back(std::move(forces));
        }
        for (std::vector<double>& forces : m_forces)
            Scale(forces, scale);
    }

    void Scale(std::vector<double>& forces, const std::vector<double>& scale) const
    {
        std::size_t i = 0;
        const auto divide = [&](std::size_t kind) {
            if (scale[kind] > 0.0) forces[i] /= scale[kind];
            ++i;
        };
        const Response& response = m_analysis.Units().front().response;
        std::size_t kind = 0;
        for (const Line* const line : {&response.major, &response.minor}) {
            for (std::size_t p = 0; p < line->Pieces().size(); ++p)
                for (const std::size_t offset : {0U, 1U, 2U, 2U})
                    divide(kind + offset);
            kind += 3;
        }
        while (i < forces.size())
            divide(kind);
    }

    void Measure(Made& made) const
    {
        const std::vector<Unit>& units = m_analysis.Units();
        made.factors.assign(units.size(), 0.0);
        made.forces.assign(m_forces.empty() ? 0 : m_forces.front().size(), 0.0);
        for (std::size_t u = 0; u < units.size(); ++u) {
            for (const Term& term : made.combination.terms)
                if (term.caseIndex == units[u].caseIndex && term.ActsOn(units[u].span)) made.factors[u] += term.factor;
            if (made.factors[u] == 0.0) continue;
            for (std::size_t i = 0; i < made.forces.size(); ++i)
                made.forces[i] += made.factors[u] * m_forces[u][i];
        }
        const auto smaller = [](double a, double b) { return std::abs(a) < std::abs(b); };
        const auto largest = std::max_element(made.forces.begin(), made.forces.end(), smaller);
        made.largest = static_cast<std::size_t>(largest - made.forces.begin());
    }

    bool IsDominated(std::size_t i)
    {
        for (std::size_t j = 0; j < m_made.size(); ++j) {
            if (j == i || m_made[j].dropped || !Dominates(m_made[j], m_made[i])) continue;
            m_made[i].dropped = true;
            return true;
        }
        return false;
    }

    // Whether b has the forces of a, times a factor of at most 1, and no load that a has not.
    static bool Dominates(const Made& a, const Made& b)
    {
        if (a.combination.state != b.combination.state) return false;
        for (std::size_t u = 0; u < a.factors.size(); ++u)
            if (b.factors[u] != 0.0 && a.factors[u] == 0.0) return false;
        // The factor that its largest force would have.
        const double largest = a.forces.empty() ? 0.0 : a.forces[a.largest];
        const double k = largest != 0.0 ? b.forces[a.largest] / largest : 0.0;
        if (!(k >= 0.0 && k <= 1.0 + SAME)) return false;
        for (std::size_t i = 0; i < a.forces.size(); ++i)
            if (std::abs(b.forces[i] - k * a.forces[i]) > SAME) return false;
        return true;
    }

    void Note(const std::vector<CombinationRule>& rules, Combinations& combinations) const
    {
        const bool choice = std::any_of(rules.begin(), rules.end(), [&](const CombinationRule& rule) {
            return HasItsCases(rule) && std::any_of(rule.terms.begin(), rule.terms.end(), [&](const RuleTerm& term) {
                       return IsPermanent(term) && HasChoice(term);
                   });
        });
        if (choice)
            combinations.notes.push_back(
                L"permanent loads come from one source: all of them have one factor, on all spans");
        if (std::any_of(m_variable.begin(), m_variable.end(), [](const Unit* unit) { return unit->span >= 0; }))
            combinations.notes.push_back(L"patterns load whole spans");
    }

    const Analysis& m_analysis;
    const Beam& m_beam;
    std::vector<const Unit*> m_variable;
    std::vector<Signs> m_signs;
    std::vector<std::vector<double>> m_forces; // of each unit
    std::vector<Made> m_made;
};

} // namespace

Combinations Expand(const Analysis& analysis, const std::vector<CombinationRule>& rules)
{
    if (!analysis.IsAnswered()) return {};
    return Expander(analysis).Expand(rules);
}

} // namespace Keltrix::Statics
