#pragma once

#include <string_view>

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
    /// Elastic critical moments beside checks by the tables.
    void ElasticOffers();
    /// Assumptions, rules not evaluated and the ledger.
    void Summary();
    void Position(std::size_t index);
    struct Bending;
    void Class(const PositionResult& p);
    void Element(const ElementClass& e);
    void Tension(const PositionResult& p);
    void Axial(const PositionResult& p);
    void Shear(const PositionResult& p);
    void ShearBuckling(Axis direction, double depth, double thickness, double Vw);
    void Moment(const PositionResult& p);
    void PrincipalMoments(const PositionResult& p);
    void Moment(const Bending& b, const Classification& c);
    void HighShear(const Bending& b, double rho);
    void FlangesOnly(const Bending& b, const Classification& c);
    void Combined(const PositionResult& p);
    void MoreExact(const PositionResult& p);
    void ConcentratedLoad(const WebLoadResult& w);
    void SpanTitle(const wchar_t* what, const SpanResult& span);
    void MomentShapeLines(const MomentShape& shape);
    void LateralFactor(const SpanResult& span);
    void FlexuralFactor(const wchar_t* symbol, double value, const MomentShape& shape, bool sway);
    void StrutSlenderness(const SpanResult& span);
    void CompressionResistanceLines(const SpanResult& span);
    void LateralLength(const SpanResult& span);
    void LateralSlenderness(const SpanResult& span);
    void ElasticLateral(const SpanResult& span);
    void ElasticResistance(const SpanResult& span);
    void MomentTerms(const InteractionResult& r);
    void SimplifiedInteraction(const InteractionResult& r);
    void ExactInteraction(const InteractionResult& r);
    void SimpleColumn(const InteractionResult& r);
    void LedgerTable();

    /// Begins a part of the calculation, whose heading is the next line, in the present entry of the result.
    void BeginPart(double start, double end, int entry);
    /// Entry of the buckling checks.
    int LastEntry() const { return 2 * static_cast<int>(m_model.subSpans.size()) + 1; }

    template <class... Args>
    void Line(const wchar_t* format, const Args&... args)
    {
        if (m_isInPart && std::wstring_view(format).find(L"<red>") != std::wstring_view::npos)
            m_found.parts.back().second.isMarked = true;
        CString text;
        text.Format(format, args...);
        text += L"\n";
        m_result.AddOutputString(text);
    }
    /// "0.735", or in red with FAIL where the limit is reached (`inclusive`) or passed.
    CString Verdict(double utilisation, bool inclusive) const;
    CString Volume(double m3) const;
    CString Area(double m2) const;
    /// A dimension of the section, in cm.
    CString Small(double m) const;

    const MemberModel& m_model;
    MemberResults& m_found;
    Steel::CMemberResult& m_result;
    const CDesFormat& m_fmt;
    bool m_isInPart = false;
};

} // namespace Keltrix::BS5950
