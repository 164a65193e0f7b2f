#pragma once

#include <algorithm>

#include "Numbers.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"

namespace Keltrix::BS5950 {

/// Entry of a rule for one span, not evaluated so far.
inline LedgerEntry SpanEntry(Rule rule, const SpanResult& span)
{
    LedgerEntry e;
    e.rule = rule;
    e.clause = RuleClause(rule);
    e.start = span.start;
    e.end = span.end;
    return e;
}

template <class Value>
double CSteelMemberBS5950::LargestOver(const SpanResult& span, Value value) const
{
    const auto first = std::lower_bound(m_positions.begin(), m_positions.end(), span.left,
                                        [](const PositionResult& p, int k) { return p.subSpan < k; });
    double largest = 0.0;
    for (auto p = first; p != m_positions.end() && p->subSpan < span.right; ++p)
        largest = std::max(largest, value(*p));
    return largest;
}

} // namespace Keltrix::BS5950
