// The steps that the entries of the ledger rest on.

#include "FindingSteps.h"

#include <algorithm>
#include <array>

#include "BucklingLines.h"
#include "LocalLines.h"

namespace Keltrix::BS5950 {

namespace {

using Steps = std::vector<Design::Step>;

// Entries of spans follow each other in the order of the spans.
class StepFinder {
public:
    StepFinder(const MemberModel& model, const MemberResults& found) : m_model(model), m_found(found) {}

    Steps Find(const LedgerEntry& e)
    {
        switch (e.rule) {
        case Rule::WebBearing:
        case Rule::WebBuckling:
            return OfWeb(e);
        case Rule::BucklingMajor:
            return OfSpan(BucklingMode::Major);
        case Rule::BucklingMinor:
            return OfSpan(BucklingMode::Minor);
        case Rule::LateralTorsional:
            return OfSpan(BucklingMode::LateralTorsional);
        case Rule::BucklingInteraction:
            return OfInteraction();
        default:
            return OfPosition(e);
        }
    }

private:
    Steps OfPosition(const LedgerEntry& e) const
    {
        const PositionResult* p = nullptr;
        if (e.rule == Rule::Classification)
            p = WorstClassed();
        else if (e.position >= 0)
            p = &m_found.positions[static_cast<std::size_t>(e.position)];
        if (!p) return {};
        LocalLines lines(m_model);
        lines.OfRule(e, *p);
        return lines.Steps();
    }

    // Of the positions with the member's class the one with the largest utilisation.
    const PositionResult* WorstClassed() const
    {
        const PositionResult* worst = nullptr;
        for (const PositionResult& p : m_found.positions)
            if (p.cls.cls == m_found.cls && (!worst || p.Largest() > worst->Largest())) worst = &p;
        return worst;
    }

    Steps OfWeb(const LedgerEntry& e) const
    {
        const auto& loads = m_found.webLoads;
        const auto w = std::find_if(loads.begin(), loads.end(), [&](const WebLoadResult& r) {
            return r.x == e.start && r.end == e.end && (e.rule == Rule::WebBuckling ? r.Px : r.Pbw) == e.resistance;
        });
        if (w == loads.end()) return {};
        LocalLines lines(m_model);
        lines.WebBearing(*w);
        if (e.rule == Rule::WebBuckling) lines.WebBuckling(*w);
        return lines.Steps();
    }

    Steps OfSpan(BucklingMode mode)
    {
        const bool lateral = mode == BucklingMode::LateralTorsional;
        std::size_t& next = m_next[static_cast<std::size_t>(mode)];
        while (next < m_found.spans.size() &&
               (m_found.spans[next].mode != mode || (m_found.spans[next].turned && !lateral)))
            ++next;
        if (next == m_found.spans.size()) return lateral ? OfAcross() : Steps();
        const SpanResult& span = m_found.spans[next++];
        if (!span.applied) return {};
        BucklingLines lines(m_model);
        if (lateral)
            lines.Lateral(span);
        else
            lines.Flexural(span);
        return lines.Steps();
    }

    // The entries of moments about the stiffer y-y axis follow those of the spans.
    Steps OfAcross()
    {
        if (m_nextAcross == m_found.across.size()) return {};
        const AcrossResult& across = m_found.across[m_nextAcross++];
        if (across.open) return {};
        BucklingLines lines(m_model);
        lines.Across(across);
        return lines.Steps();
    }

    Steps OfInteractionAcross()
    {
        while (m_nextCombined < m_found.across.size() && !(m_found.across[m_nextCombined].combined > 0.0))
            ++m_nextCombined;
        if (m_nextCombined == m_found.across.size()) return {};
        BucklingLines lines(m_model);
        lines.InteractionAcross(m_found.across[m_nextCombined++]);
        return lines.Steps();
    }

    Steps OfInteraction()
    {
        if (m_nextInteraction == m_found.interactions.size()) return OfInteractionAcross();
        BucklingLines lines(m_model);
        lines.Interaction(m_found.interactions[m_nextInteraction++], m_found);
        return lines.Steps();
    }

    const MemberModel& m_model;
    const MemberResults& m_found;
    std::array<std::size_t, 3> m_next{};
    std::size_t m_nextInteraction = 0;
    std::size_t m_nextAcross = 0;
    std::size_t m_nextCombined = 0;
};

} // namespace

std::vector<std::vector<Design::Step>> LedgerSteps(const MemberModel& model, const MemberResults& found)
{
    std::vector<std::vector<Design::Step>> steps;
    steps.reserve(found.ledger.Entries().size());
    StepFinder finder(model, found);
    for (const LedgerEntry& e : found.ledger.Entries())
        steps.push_back(finder.Find(e));
    return steps;
}

} // namespace Keltrix::BS5950
