#pragma once

#include "MemberModel.h"

namespace Keltrix::BS5950 {

/// Lateral-torsional buckling under moments about y-y of sections that are stiffer about that axis, such as wide T sections (B.2.8 b) and
/// hollow sections that lie flat: by elastic critical moments, because the standard has no effective lengths for it.
class AcrossChecks {
public:
    /// Both are borrowed.
    AcrossChecks(const MemberModel& model, MemberResults& found) : m_model(model), m_found(found) {}

    /// Checks all lengths and adds their entries to the ledger. The struts of the member are checked already.
    void Check();
    /// Adds the entries of lengths with other actions beside the moments about y-y.
    void RecordCombinations();

private:
    void Find();
    void FindGiven();
    void CheckOne(AcrossResult& across) const;
    void Combine(AcrossResult& across) const;
    void Record(const AcrossResult& across);

    const MemberModel& m_model;
    MemberResults& m_found;
};

} // namespace Keltrix::BS5950
