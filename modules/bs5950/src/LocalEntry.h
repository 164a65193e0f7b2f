#pragma once

#include "keltrix/bs5950/Results.h"

namespace Keltrix::BS5950 {

inline LedgerEntry EntryOf(Rule rule)
{
    LedgerEntry e;
    e.rule = rule;
    e.clause = RuleClause(rule);
    return e;
}

inline LedgerEntry Absent(Rule rule, const wchar_t* why)
{
    LedgerEntry e = EntryOf(rule);
    e.status = CheckStatus::NotApplicable;
    e.reason = why;
    return e;
}

/// A rule of the cross-section by its figures at a position.
struct LocalRule {
    Rule rule;
    double PositionResult::*utilisation;
    double PositionResult::*resistance;
    const wchar_t* symbol;
    Quantity quantity;
    const wchar_t* absent; ///< the reason where it applies nowhere
};

/// Entry of the largest utilisation by a rule.
LedgerEntry WorstEntry(const std::vector<PositionResult>& positions, const LocalRule& r);

/// The result record counts a local utilisation of exactly 1.0 as a failure, so the ledger does.
inline CheckStatus LocalStatus(double utilisation)
{
    return utilisation < 1.0 ? CheckStatus::Passed : CheckStatus::Failed;
}

} // namespace Keltrix::BS5950
