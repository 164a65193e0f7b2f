#pragma once

#include "MemberModel.h"

namespace Keltrix::BS5950 {

/// The checks of the cross-section at its positions: classification, 4.2, 4.6, 4.8.2, 4.8.3.2; webs by WebChecks.
class LocalChecks {
public:
    /// Both are borrowed.
    LocalChecks(const MemberModel& model, MemberResults& found) : m_model(model), m_found(found) {}

    /// Finds the positions, evaluated.
    void FindPositions();
    /// Adds the entries of the cross-section to the ledger.
    void Check();

private:
    void RecordAxial();
    void RecordAxialRule(Rule rule, int position, double PositionResult::*resistance, const wchar_t* symbol);
    void RecordTie(int position);
    void RecordBoltHoles();
    bool HasCombination(bool tension) const;
    void RecordCombined();
    void RecordTorsion();

    const MemberModel& m_model;
    MemberResults& m_found;
};

} // namespace Keltrix::BS5950
