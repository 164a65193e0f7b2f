#pragma once

#include <utility>

#include "MemberModel.h"
#include "keltrix/steel/CodeShare.h"

namespace Keltrix::BS5950 {

/// Stretches of lateral-torsional buckling and their resistances: 4.3, Tables 13, 14 and 18, 4.7.7, Annex B.2.
class LateralRules {
public:
    /// Borrowed.
    explicit LateralRules(const MemberModel& model) : m_model(model) {}

    /// Given effective lengths leave one stretch, the whole member, for both flanges.
    std::vector<Design::Stretch> Stretches(bool turned) const;
    /// The span of a stretch, not checked so far.
    SpanResult MakeSpan(const Design::Stretch& stretch, bool turned) const;
    bool IsApplied(const SpanResult& span) const;
    bool IsExempt(const SpanResult& span) const;
    /// Effective length of the stretch for each flange that is compressed; the longer one counts.
    void FindLength(SpanResult& span, const Steel::CCodeShare& rules) const;
    /// The smallest Mb of the flanges that are compressed.
    void SetResistance(SpanResult& span) const;
    /// mLT.
    double MomentFactor(const SpanResult& span) const;
    /// Whether 4.7.7 serves.
    bool IsSimpleColumn(const SpanResult& span) const;
    /// The levels around a stretch; 0 and 0 where it does not lie between two.
    std::pair<double, double> StoreyOf(const SpanResult& span) const;

private:
    SlendernessLT ElasticSlenderness(const SpanResult& span, const Classification& c) const;

    const MemberModel& m_model;
};

/// The checks of lateral-torsional buckling of a member.
class LateralChecks {
public:
    /// Both are borrowed.
    LateralChecks(const MemberModel& model, MemberResults& found) : m_model(model), m_found(found), m_rules(model) {}

    /// Adds the spans, not checked so far.
    void FindSpans(bool turned);
    /// Checks one of them and adds its entry to the ledger.
    void Check(SpanResult& span);

private:
    void SetLength(SpanResult& span);
    void SetFactor(SpanResult& span);
    bool IsUnsupportedEnd(const Design::StretchEnd& end) const;
    void Record(const SpanResult& span);

    const MemberModel& m_model;
    MemberResults& m_found;
    LateralRules m_rules;
};

} // namespace Keltrix::BS5950
