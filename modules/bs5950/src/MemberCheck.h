#pragma once

#include "MemberModel.h"

namespace Keltrix::BS5950 {

/// One check of a member: the chapters of the standard in their order. It fills results and touches nothing else.
class MemberCheck {
public:
    /// Both are borrowed.
    MemberCheck(const MemberModel& model, MemberResults& found) : m_model(model), m_found(found) {}

    /// What stands before every check: positions, assumptions, warnings, and the rules about the member as a whole.
    void CheckGeneral();
    /// Each in place of what stood there of an earlier one.
    void CheckLocal();
    void CheckBuckling();

private:
    void Add(Rule rule, CheckStatus status, const wchar_t* why);
    void RecordOutside();
    void RecordAssumptions();
    void RecordWarnings();
    void FindSpans();
    void AssumeFactors();

    const MemberModel& m_model;
    MemberResults& m_found;
};

/// Figures beside the rules, as entries of status Information; `offers` are the elastic ones of the spans found.
std::vector<LedgerEntry> Information(const MemberModel& model, const MemberResults& found,
                                     const std::vector<SpanResult>& offers);

} // namespace Keltrix::BS5950
