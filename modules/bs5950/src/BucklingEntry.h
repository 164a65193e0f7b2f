#pragma once

#include "Numbers.h"
#include "keltrix/bs5950/Results.h"

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

} // namespace Keltrix::BS5950
