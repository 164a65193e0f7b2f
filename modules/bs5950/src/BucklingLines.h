#pragma once

#include "CalculationLines.h"
#include "MemberModel.h"

namespace Keltrix::BS5950 {

/// The calculation of the rules of buckling over a span, line by line. Every step shows the numbers that its result follows from.
class BucklingLines : public CalculationLines {
public:
    /// Borrowed.
    explicit BucklingLines(const MemberModel& model) : m_model(model), m_fmt(model.format) {}

    void Flexural(const SpanResult& span);
    /// Effective length, resistance and utilisation of a span that is applied.
    void Lateral(const SpanResult& span);
    /// What Mb follows from where it is found elastically.
    void ElasticResistance(const SpanResult& span);
    void Interaction(const InteractionResult& r, const MemberResults& found);
    /// Of a result that is evaluated.
    void Across(const AcrossResult& r);
    void InteractionAcross(const AcrossResult& r);

private:
    void FlexuralLength(const SpanResult& span);
    void Slenderness(const SpanResult& span);
    void CompressionResistance(const SpanResult& span);
    void MomentShapeLines(const MomentShape& shape);
    void FlexuralFactor(const wchar_t* symbol, double value, const MomentShape& shape, bool sway);
    void LateralLength(const SpanResult& span);
    void LateralSlenderness(const SpanResult& span);
    void LateralFactor(const SpanResult& span);
    void ElasticLateral(const SpanResult& span);
    void MomentTerms(const InteractionResult& r, const MemberResults& found);
    void SimplifiedInteraction(const InteractionResult& r, const MemberResults& found);
    void ExactInteraction(const InteractionResult& r, const MemberResults& found);
    void SimpleColumn(const InteractionResult& r, const MemberResults& found);

    const MemberModel& m_model;
    const CDesFormat& m_fmt;
};

} // namespace Keltrix::BS5950
