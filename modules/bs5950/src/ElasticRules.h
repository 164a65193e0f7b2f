#pragma once

#include "LateralChecks.h"

namespace Keltrix::BS5950 {

/// Lateral-torsional buckling by elastic critical moments (Annex B.2), as a check where the option asks for it, otherwise as a figure
/// beside the tables.
class ElasticRules {
public:
    /// Borrowed.
    explicit ElasticRules(const MemberModel& model) : m_model(model), m_lateral(model) {}

    /// The lengths that are checked elastically, and why others are not.
    void FindUnits(MemberResults& found) const;
    /// What was asked for and is not done.
    void AddWarnings(MemberResults& found) const;
    /// Adds the spans of a member that has units.
    void AddSpans(const std::vector<Design::Stretch>& stretches, MemberResults& found) const;

    /// Of the stretches that an elastically checked length has in common with the tables' way, the one of the largest utilisation; not
    /// applied where the tables check none.
    SpanResult WorstByTables(const SpanResult& span) const;
    /// The elastic figures that are offered beside the tables, one for each unit.
    std::vector<SpanResult> Offers(const std::vector<SpanResult>& spans) const;
    /// Entries of status Information; `offers` are those of these spans.
    void AddInformation(const std::vector<SpanResult>& spans, const std::vector<SpanResult>& offers,
                        std::vector<LedgerEntry>& entries) const;

private:
    struct Analysis;
    Analysis Analyse() const;
    bool CanBeUsed() const;
    SpanResult MakeSpan(double from, double to, const ElasticUnit* unit) const;
    const wchar_t* Refusal(const std::vector<ElasticUnit>& units, const std::vector<Design::Stretch>& stretches) const;
    void AddPart(const std::vector<Design::Stretch>& part, double from, double to, MemberResults& found) const;
    bool IsOffered(const SpanResult& span, const std::vector<SpanResult>& spans) const;
    double Tolerance() const;

    const MemberModel& m_model;
    LateralRules m_lateral;
};

/// What a unit of an elastic analysis gives a check.
ElasticUnit ElasticUnitOf(const Stability::Unit& unit);

/// Whether some length of a member is checked elastically.
bool UsesElastic(const std::vector<ElasticUnit>& units);

} // namespace Keltrix::BS5950
