#pragma once

#include "MemberModel.h"

namespace Keltrix::BS5950 {

/// The checks of webs and walls: 4.4 and 4.5.
class WebChecks {
public:
    /// Both are borrowed.
    WebChecks(const MemberModel& model, MemberResults& found) : m_model(model), m_found(found) {}

    /// Adds the entries to the ledger and finds the concentrated loads on the web.
    void Check();

private:
    void RecordShearBuckling();
    void RecordSlenderFlanges();
    void RecordThickness();
    void RecordEndAnchorage();
    void RecordStiffeners();
    double SpreadOfBearing() const;
    void FindLoads();
    void RecordLoads();
    void RecordLoad(Rule rule);

    const MemberModel& m_model;
    MemberResults& m_found;
};

} // namespace Keltrix::BS5950
