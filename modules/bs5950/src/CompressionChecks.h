#pragma once

#include "MemberModel.h"

namespace Keltrix::BS5950 {

/// Flexural buckling of struts: 4.7.2 to 4.7.4, 4.7.10, Table 22.
class CompressionChecks {
public:
    /// Both are borrowed.
    CompressionChecks(const MemberModel& model, MemberResults& found) : m_model(model), m_found(found) {}

    /// Adds the spans of a mode, not checked so far.
    void FindSpans(BucklingMode mode, bool turned);
    /// Checks one of them and adds its entry to the ledger.
    void Check(SpanResult& span);
    /// The entry of clause 4.7.10, when all spans are checked.
    void RecordConnections();

private:
    SpanResult MakeSpan(BucklingMode mode, int left, int right, bool turned) const;
    double MomentUtilisation(const PositionResult& p, Axis axis, bool turned) const;
    void SetCapacityRatios(SpanResult& span) const;
    void SetReasons(SpanResult& span) const;
    void SetLength(SpanResult& span);
    void SetSlenderness(SpanResult& span) const;
    void SetResistance(SpanResult& span) const;
    void Record(const SpanResult& span);
    /// Largest of a value over the positions of a span, 0 where none is above 0.
    template <class Value>
    double LargestOver(const SpanResult& span, Value value) const;

    const MemberModel& m_model;
    MemberResults& m_found;
};

/// Gives a span an effective length that the user says. It belongs to the whole member; below zero it is minus a factor of the
/// member's length.
void SetOverride(SpanResult& span, double value, double memberLength);

} // namespace Keltrix::BS5950
