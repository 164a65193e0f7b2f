#include "keltrix/statics/Combinations.h"

#include <algorithm>
#include <cmath>

#include "Patterns.h"

namespace Keltrix::Statics {

namespace {

// Share by which rounding may part two products of the same factors.
constexpr double SAME = 1e-12;

bool IsLimitState(LimitState state) { return state >= LimitState::Ultimate && state <= LimitState::QuasiPermanent; }

class Expander {
public:
    explicit Expander(const Analysis& analysis) :
        m_analysis(analysis), m_beam(analysis.GetBeam()), m_variable(VariableUnits(analysis)),
        m_signs(FindSigns(analysis, m_variable))
    {}

    Combinations Expand(const std::vector<CombinationRule>& rules)
    {
        Combinations combinations;
        for (const CombinationRule& rule : rules) {
            if (const wchar_t* const fault = FaultOf(rule)) {
                combinations.notes.push_back({rule.name + L": left out, because it " + fault, true});
                continue;
            }
            for (const Signs& signs : SignsFor(rule))
                Add(rule, signs);
        }
        for (std::size_t i = 0; i < m_made.size(); ++i) {
            if (IsNeedless(i)) {
                ++combinations.dropped;
                continue;
            }
            combinations.list.push_back(m_made[i].combination);
            combinations.list.back().name += L": " + NameOf(combinations.list.back());
        }
        Note(rules, combinations);
        return combinations;
    }

private:
    struct Made {
        Combination combination;
        std::vector<double> factors; ///< of the units
    };

    static bool HasChoice(const RuleTerm& term) { return term.unfavourable != term.favourable; }
    // What is wrong with a rule, or null.
    const wchar_t* FaultOf(const CombinationRule& rule) const
    {
        if (!IsLimitState(rule.state)) return L"is for no limit state";
        for (const RuleTerm& term : rule.terms) {
            if (term.caseIndex >= m_beam.cases.size()) return L"names a case that the beam has not";
            if (!std::isfinite(term.unfavourable) || !std::isfinite(term.favourable))
                return L"has a factor that is not a number";
        }
        return nullptr;
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

    void Measure(Made& made) const
    {
        const std::vector<Unit>& units = m_analysis.Units();
        made.factors.assign(units.size(), 0.0);
        for (std::size_t u = 0; u < units.size(); ++u)
            for (const Term& term : made.combination.terms)
                if (term.caseIndex == units[u].caseIndex && term.ActsOn(units[u].span)) made.factors[u] += term.factor;
    }

    // Whether nothing acts, or an earlier combination of the limit state has the same factors, unit by unit. A share of another one is not
    // needless: it can have the least reaction, and the larger deflection where permanent loads or a camber are taken off.
    bool IsNeedless(std::size_t i) const
    {
        const Made& made = m_made[i];
        if (std::all_of(made.factors.begin(), made.factors.end(), [](double factor) { return factor == 0.0; }))
            return true;
        const auto same = [](double a, double b) {
            return std::abs(a - b) <= SAME * std::max(std::abs(a), std::abs(b));
        };
        return std::any_of(m_made.begin(), m_made.begin() + static_cast<std::ptrdiff_t>(i), [&](const Made& other) {
            return other.combination.state == made.combination.state &&
                   std::equal(made.factors.begin(), made.factors.end(), other.factors.begin(), same);
        });
    }

    void Note(const std::vector<CombinationRule>& rules, Combinations& combinations) const
    {
        const bool choice = std::any_of(rules.begin(), rules.end(), [&](const CombinationRule& rule) {
            return !FaultOf(rule) && std::any_of(rule.terms.begin(), rule.terms.end(), [&](const RuleTerm& term) {
                return IsPermanent(term) && HasChoice(term);
            });
        });
        if (choice)
            combinations.notes.push_back(
                {L"permanent loads come from one source: all of them have one factor, on all spans"});
        if (std::any_of(m_variable.begin(), m_variable.end(), [](const Unit* unit) { return unit->span >= 0; }))
            combinations.notes.push_back({L"patterns load whole spans"});
        NoteMissing(rules, combinations);
    }

    // Cases whose loads no rule counts, such as a self weight that rules made for another beam do not know: of the ultimate limit state, and of
    // the others where there are any.
    void NoteMissing(const std::vector<CombinationRule>& rules, Combinations& combinations) const
    {
        const auto isUltimate = [](const CombinationRule& rule) { return rule.state == LimitState::Ultimate; };
        NoteMissing(rules, true, L"ultimate combination", combinations);
        if (!std::all_of(rules.begin(), rules.end(), isUltimate))
            NoteMissing(rules, false, L"combination of serviceability", combinations);
    }

    void NoteMissing(const std::vector<CombinationRule>& rules, bool ultimate, const wchar_t* what,
                     Combinations& combinations) const
    {
        std::vector<bool> missing(m_beam.cases.size(), false);
        for (const Unit& unit : m_analysis.Units())
            missing[unit.caseIndex] = true;
        for (const CombinationRule& rule : rules) {
            if (FaultOf(rule) || (rule.state == LimitState::Ultimate) != ultimate) continue;
            for (const RuleTerm& term : rule.terms)
                if (term.unfavourable != 0.0 || term.favourable != 0.0) missing[term.caseIndex] = false;
        }
        for (std::size_t c = 0; c < missing.size(); ++c)
            if (missing[c])
                combinations.notes.push_back({L"the loads of the case " + m_beam.cases[c].name + L" act in no " + what +
                                                  L": no rule counts them",
                                              true});
    }

    const Analysis& m_analysis;
    const Beam& m_beam;
    std::vector<const Unit*> m_variable;
    std::vector<Signs> m_signs;
    std::vector<Made> m_made;
};

} // namespace

Combinations Expand(const Analysis& analysis, const std::vector<CombinationRule>& rules)
{
    if (!analysis.IsAnswered()) {
        Combinations none;
        none.notes.push_back({L"no combinations, because the beam is not answered: " + analysis.Reason(), true});
        return none;
    }
    return Expander(analysis).Expand(rules);
}

} // namespace Keltrix::Statics
