#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>

#include "keltrix/statics/Combinations.h"

namespace Keltrix::Statics {

namespace {

bool IsSnow(ActionKind kind) { return kind == ActionKind::Snow || kind == ActionKind::SnowAbove1000m; }

// Places of the cases of a beam by kind.
struct Groups {
    std::vector<std::size_t> permanent;
    std::vector<std::size_t> imposed;
    std::vector<std::size_t> roof; ///< imposed, category H
    std::vector<std::size_t> snow;
    std::vector<std::size_t> wind;

    explicit Groups(const Beam& beam)
    {
        for (std::size_t i = 0; i < beam.cases.size(); ++i) {
            const Case& c = beam.cases[i];
            if (c.kind == ActionKind::Permanent)
                permanent.push_back(i);
            else if (c.kind == ActionKind::Wind)
                wind.push_back(i);
            else
                (IsSnow(c.kind) ? snow : c.category == Category::H ? roof : imposed).push_back(i);
        }
    }
};

// Each of some alternatives, or none where there are none.
std::vector<std::optional<std::size_t>> OneOf(const std::vector<std::size_t>& cases)
{
    if (cases.empty()) return {std::nullopt};
    return {cases.begin(), cases.end()};
}

std::vector<std::size_t> With(std::vector<std::size_t> cases, std::optional<std::size_t> more)
{
    if (more) cases.push_back(*more);
    return cases;
}

CombinationRule RuleOf(const wchar_t* name, const wchar_t* clause, LimitState state)
{
    CombinationRule rule;
    rule.name = name;
    rule.clause = clause;
    rule.state = state;
    return rule;
}

void AddTerms(const std::vector<std::size_t>& cases, double unfavourable, double favourable, const wchar_t* source,
              CombinationRule& rule)
{
    for (const std::size_t c : cases)
        rule.terms.push_back({c, unfavourable, favourable, source});
}

// BS 5950-1:2000, 2.4.1.2 and 2.5.1. Snow on a roof is an imposed load there.
class Rules5950 {
public:
    explicit Rules5950(const Beam& beam) : m_groups(beam)
    {
        m_groups.imposed.insert(m_groups.imposed.end(), m_groups.roof.begin(), m_groups.roof.end());
    }

    std::vector<CombinationRule> Make()
    {
        for (const bool ultimate : {true, false}) {
            for (const auto snow : OneOf(m_groups.snow)) {
                const std::vector<std::size_t> imposed = With(m_groups.imposed, snow);
                Gravity(ultimate, imposed);
                if (imposed.empty()) continue;
                for (const std::size_t wind : m_groups.wind)
                    All(ultimate, imposed, wind);
            }
            for (const std::size_t wind : m_groups.wind)
                Wind(ultimate, wind);
        }
        return std::move(m_rules);
    }

private:
    CombinationRule Start(bool ultimate, const wchar_t* name, double dead, const wchar_t* source) const
    {
        CombinationRule rule = RuleOf(name, ultimate ? L"BS 5950-1 2.4.1.2, Table 2" : L"BS 5950-1 2.5.1",
                                      ultimate ? LimitState::Ultimate : LimitState::Serviceability);
        AddTerms(m_groups.permanent, ultimate ? dead : 1.0, 1.0, ultimate ? source : L"unfactored, 2.5.1", rule);
        return rule;
    }

    void Gravity(bool ultimate, const std::vector<std::size_t>& imposed)
    {
        CombinationRule rule =
            Start(ultimate, L"dead and imposed", 1.4, L"Table 2: dead load 1.4, 1.0 where it counteracts");
        AddTerms(imposed, ultimate ? 1.6 : 1.0, 0.0, ultimate ? L"Table 2: imposed load 1.6" : L"unfactored, 2.5.1",
                 rule);
        m_rules.push_back(rule);
    }
    void Wind(bool ultimate, std::size_t wind)
    {
        CombinationRule rule =
            Start(ultimate, L"dead and wind", 1.4, L"Table 2: dead load 1.4, 1.0 where it counteracts");
        AddTerms({wind}, ultimate ? 1.4 : 1.0, 0.0, ultimate ? L"Table 2: wind load 1.4" : L"unfactored, 2.5.1", rule);
        m_rules.push_back(rule);
    }
    void All(bool ultimate, const std::vector<std::size_t>& imposed, std::size_t wind)
    {
        CombinationRule rule = Start(ultimate, L"dead, imposed and wind", 1.2,
                                     L"Table 2: dead load with wind and imposed load 1.2, 1.0 where it counteracts");
        const wchar_t* const source =
            ultimate ? L"Table 2: with wind and imposed load 1.2" : L"80 % of imposed and wind load together, 2.5.1";
        AddTerms(With(imposed, wind), ultimate ? 1.2 : 0.8, 0.0, source, rule);
        m_rules.push_back(rule);
    }

    Groups m_groups;
    std::vector<CombinationRule> m_rules;
};

// Variable actions that lead or accompany as a whole: cases of one kind and category.
struct Action {
    std::vector<std::size_t> cases;
    Psi psi;
    bool unknown = false; ///< an imposed load without a category
};

// EN 1990, 6.4.3.2 and 6.5.3, Table A1.2(B).
class RulesEN1990 {
public:
    RulesEN1990(const Beam& beam, const RuleOptions& options) : m_beam(beam), m_groups(beam), m_options(options)
    {
        m_xi = options.basis == Basis::EN1990UK ? 0.925 : 0.85;
    }

    std::vector<CombinationRule> Make()
    {
        if (m_options.expression == Expression::E610)
            For(&RulesEN1990::E610);
        else {
            For(&RulesEN1990::E610a);
            For(&RulesEN1990::E610b);
        }
        For(&RulesEN1990::Characteristic);
        For(&RulesEN1990::Frequent);
        For(&RulesEN1990::QuasiPermanent);
        return std::move(m_rules);
    }

private:
    using Maker = void (RulesEN1990::*)(const std::vector<Action>&);

    // Every set of actions that act together.
    void For(Maker maker)
    {
        for (const auto snow : OneOf(m_groups.snow))
            for (const auto wind : OneOf(m_groups.wind))
                (this->*maker)(ActionsOf(With(With(m_groups.imposed, snow), wind)));
        if (m_groups.roof.empty()) return;
        std::vector<std::size_t> imposed = m_groups.imposed;
        imposed.insert(imposed.end(), m_groups.roof.begin(), m_groups.roof.end());
        (this->*maker)(ActionsOf(imposed));
    }

    std::vector<Action> ActionsOf(const std::vector<std::size_t>& cases) const
    {
        std::vector<Action> actions;
        for (const std::size_t c : cases) {
            const Case& added = m_beam.cases[c];
            const auto same = std::find_if(actions.begin(), actions.end(), [&](const Action& action) {
                const Case& first = m_beam.cases[action.cases.front()];
                return first.kind == added.kind && first.category == added.category;
            });
            if (same != actions.end())
                same->cases.push_back(c);
            else
                actions.push_back({{c},
                                   PsiOf(m_options.basis, added.kind, added.category),
                                   added.kind == ActionKind::Imposed && added.category == Category::None});
        }
        return actions;
    }

    const wchar_t* Table() const { return m_options.basis == Basis::EN1990UK ? L"Table NA.A1.2(B)" : L"Table A1.2(B)"; }
    CString Source(const wchar_t* text) const
    {
        CString source;
        source.Format(L"%s: %s", Table(), text);
        return source;
    }
    // Adds an action with a combination value.
    void AddWithPsi(const Action& action, const wchar_t* what, double factor, double psi, CombinationRule& rule) const
    {
        const wchar_t* const table = m_options.basis == Basis::EN1990UK ? L"Table NA.A1.1" : L"Table A1.1";
        CString source;
        source.Format(L"%s, %s", what, action.unknown ? L"1 because the case has no category" : table);
        AddTerms(action.cases, factor * psi, 0.0, source.GetString(), rule);
    }

    CombinationRule Permanent(CombinationRule rule, double factor, const CString& source) const
    {
        AddTerms(m_groups.permanent, factor, 1.0, source.GetString(), rule);
        return rule;
    }

    // One rule for each leading action, or one where there is none.
    template <class Leading, class Accompanying>
    void Lead(const CombinationRule& start, const std::vector<Action>& actions, Leading leading,
              Accompanying accompanying)
    {
        if (actions.empty()) m_rules.push_back(start);
        for (std::size_t lead = 0; lead < actions.size(); ++lead) {
            CombinationRule rule = start;
            if (actions.size() > 1) {
                rule.name += L", leading ";
                rule.name += m_beam.cases[actions[lead].cases.front()].name;
            }
            for (std::size_t i = 0; i < actions.size(); ++i)
                (i == lead ? leading(actions[i], rule) : accompanying(actions[i], rule));
            m_rules.push_back(rule);
        }
    }

    void E610(const std::vector<Action>& actions)
    {
        Fundamental(RuleOf(L"6.10", L"EN 1990 6.4.3.2 (6.10)", LimitState::Ultimate), 1.35,
                    Source(L"1.35 unfavourable, 1.0 favourable"), actions);
    }
    void E610b(const std::vector<Action>& actions)
    {
        Fundamental(RuleOf(L"6.10b", L"EN 1990 6.4.3.2 (6.10b)", LimitState::Ultimate), m_xi * 1.35,
                    Source(m_options.basis == Basis::EN1990UK ? L"0.925 x 1.35 unfavourable, 1.0 favourable"
                                                              : L"0.85 x 1.35 unfavourable, 1.0 favourable"),
                    actions);
    }
    void Fundamental(const CombinationRule& start, double permanent, const CString& source,
                     const std::vector<Action>& actions)
    {
        const CString leading = Source(L"leading 1.5");
        Lead(
            Permanent(start, permanent, source), actions,
            [&](const Action& a, CombinationRule& rule) { AddTerms(a.cases, 1.5, 0.0, leading.GetString(), rule); },
            [&](const Action& a, CombinationRule& rule) { AddWithPsi(a, L"1.5 ψ0", 1.5, a.psi.psi0, rule); });
    }
    void E610a(const std::vector<Action>& actions)
    {
        CombinationRule rule = Permanent(RuleOf(L"6.10a", L"EN 1990 6.4.3.2 (6.10a)", LimitState::Ultimate), 1.35,
                                         Source(L"1.35 unfavourable, 1.0 favourable"));
        for (const Action& a : actions)
            AddWithPsi(a, L"1.5 ψ0", 1.5, a.psi.psi0, rule);
        m_rules.push_back(rule);
    }

    CombinationRule Serviceable(const wchar_t* name, const wchar_t* clause, LimitState state) const
    {
        return Permanent(RuleOf(name, clause, state), 1.0, L"Table A1.4: 1.0");
    }
    void Characteristic(const std::vector<Action>& actions)
    {
        Lead(
            Serviceable(L"characteristic", L"EN 1990 6.5.3 (6.14b)", LimitState::Characteristic), actions,
            [&](const Action& a, CombinationRule& rule) { AddTerms(a.cases, 1.0, 0.0, L"leading 1.0", rule); },
            [&](const Action& a, CombinationRule& rule) { AddWithPsi(a, L"ψ0", 1.0, a.psi.psi0, rule); });
    }
    void Frequent(const std::vector<Action>& actions)
    {
        Lead(
            Serviceable(L"frequent", L"EN 1990 6.5.3 (6.15b)", LimitState::Frequent), actions,
            [&](const Action& a, CombinationRule& rule) { AddWithPsi(a, L"ψ1", 1.0, a.psi.psi1, rule); },
            [&](const Action& a, CombinationRule& rule) { AddWithPsi(a, L"ψ2", 1.0, a.psi.psi2, rule); });
    }
    void QuasiPermanent(const std::vector<Action>& actions)
    {
        CombinationRule rule = Serviceable(L"quasi-permanent", L"EN 1990 6.5.3 (6.16b)", LimitState::QuasiPermanent);
        for (const Action& a : actions)
            AddWithPsi(a, L"ψ2", 1.0, a.psi.psi2, rule);
        m_rules.push_back(rule);
    }

    const Beam& m_beam;
    Groups m_groups;
    RuleOptions m_options;
    double m_xi;
    std::vector<CombinationRule> m_rules;
};

void RequireBasis(Basis basis)
{
    if (basis < Basis::BS5950 || basis > Basis::EN1990UK) throw std::invalid_argument("no basis of combinations");
}

} // namespace

const std::vector<CombinationStandard>& CombinationStandards()
{
    static const std::vector<CombinationStandard> standards{
        {L"bs5950", L"BS 5950-1", L"BS 5950-1", L"BS 5950-1", {Basis::BS5950, Expression::E610}},
        {L"en1990",
         L"EN 1990 with its recommended values, (6.10)",
         L"EN 1990",
         L"EN 1993-1-1",
         {Basis::EN1990, Expression::E610}},
        {L"en1990-610ab",
         L"EN 1990 with its recommended values, (6.10a) and (6.10b)",
         L"EN 1990",
         L"EN 1993-1-1",
         {Basis::EN1990, Expression::E610ab}},
        {L"en1990-uk",
         L"EN 1990 with the UK National Annex, (6.10)",
         L"EN 1990",
         L"EN 1993-1-1",
         {Basis::EN1990UK, Expression::E610}},
        {L"en1990-uk-610ab",
         L"EN 1990 with the UK National Annex, (6.10a) and (6.10b)",
         L"EN 1990",
         L"EN 1993-1-1",
         {Basis::EN1990UK, Expression::E610ab}}};
    return standards;
}

Psi PsiOf(Basis basis, ActionKind kind, Category category)
{
    RequireBasis(basis);
    if (basis == Basis::BS5950) return {};
    const bool uk = basis == Basis::EN1990UK;
    switch (kind) {
    case ActionKind::Permanent:
        return {};
    case ActionKind::Wind:
        return uk ? Psi{0.5, 0.2, 0.0} : Psi{0.6, 0.2, 0.0};
    case ActionKind::Snow:
        return {0.5, 0.2, 0.0};
    case ActionKind::SnowAbove1000m:
        return {0.7, 0.5, 0.2};
    case ActionKind::Imposed:
        break;
    }
    switch (category) {
    case Category::A:
    case Category::B:
    case Category::G:
        return {0.7, 0.5, 0.3};
    case Category::C:
    case Category::D:
    case Category::F:
        return {0.7, 0.7, 0.6};
    case Category::E:
        return {1.0, 0.9, 0.8};
    case Category::H:
        return uk ? Psi{0.7, 0.0, 0.0} : Psi{0.0, 0.0, 0.0};
    case Category::None:
        break;
    }
    return {};
}

std::vector<CombinationRule> MakeRules(const Analysis& analysis, const RuleOptions& options)
{
    RequireBasis(options.basis);
    if (options.expression != Expression::E610 && options.expression != Expression::E610ab)
        throw std::invalid_argument("no expression of EN 1990 6.4.3.2");
    if (!analysis.IsAnswered()) return {};
    const Beam& beam = analysis.GetBeam();
    if (options.basis == Basis::BS5950) return Rules5950(beam).Make();
    return RulesEN1990(beam, options).Make();
}

} // namespace Keltrix::Statics
