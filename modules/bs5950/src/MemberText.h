#pragma once

#include "CalculationLines.h"
#include "MemberModel.h"

namespace Keltrix::BS5950 {

/// Writes what a check found into the text of a result, and notes its parts. Made only where text is enabled.
class MemberText {
public:
    /// Everything is borrowed.
    MemberText(const MemberModel& model, MemberResults& found, Steel::CMemberResult& result) :
        m_model(model), m_found(found), m_result(result), m_fmt(result.DesFormat())
    {}

    void Warnings();
    /// With `alongMember` every position, otherwise those above 1.0 or else the one of the largest utilisation.
    void Local(bool alongMember);
    void Buckling();

private:
    void Flexural(const SpanResult& span);
    void LateralTitle(const SpanResult& span);
    void Lateral(const SpanResult& span);
    void Interaction(const InteractionResult& r);
    void Across(const AcrossResult& r);
    /// Elastic critical moments beside checks by the tables.
    void ElasticOffers(const std::vector<SpanResult>& offers);
    /// Assumptions, rules not evaluated and the ledger.
    void Summary();
    void Position(std::size_t index);
    void ConcentratedLoad(const WebLoadResult& w);
    void SpanTitle(const wchar_t* what, const SpanResult& span);
    void BesideElastic(const SpanResult& span);
    void LedgerTable();

    /// Begins a part of the calculation, whose heading is the next line, in the present entry of the result.
    void BeginPart(double start, double end, int entry);
    /// Entry of the buckling checks.
    int LastEntry() const { return 2 * static_cast<int>(m_model.subSpans.size()) + 1; }

    /// The line that was put together in m_line.
    void Write();
    void Print(const CalculationLines& lines);
    void Append(const CalculationLine& line);
    template <class... Args>
    void Line(const wchar_t* format, const Args&... args)
    {
        m_line.Empty();
        m_line.AppendFormat(format, args...);
        Write();
    }
    /// "0.735", or in red with FAIL where the limit is reached (`inclusive`) or passed.
    CString Verdict(double utilisation, bool inclusive) const;
    const MemberModel& m_model;
    MemberResults& m_found;
    Steel::CMemberResult& m_result;
    const CDesFormat& m_fmt;
    bool m_isInPart = false;
    CString m_line; ///< keeps its space from line to line
};

} // namespace Keltrix::BS5950
