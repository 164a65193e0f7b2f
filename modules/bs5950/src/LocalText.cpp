// The text of the local checks.

#include <algorithm>
#include <cmath>

#include "LocalLines.h"
#include "MemberText.h"

namespace Keltrix::BS5950 {

using Steel::CResultIndent;

namespace {

const wchar_t* PlaceName(const PositionResult& p)
{
    if (p.place != Place::Inside) return p.place == Place::LeftEnd ? L"left end" : L"right end";
    if (p.found == Found::RuleNotEvaluated) return L"high shear beside a slender flange";
    return p.found == Found::Extreme ? L"zero shear" : L"largest utilisation inside";
}

const wchar_t* ReadingName(Reading reading)
{
    switch (reading) {
    case Reading::FromLeft:
        return L"by the left end and the shears";
    case Reading::FromRight:
        return L"by the right end and the shears";
    case Reading::Straight:
        return L"on the straight line between the end moments";
    case Reading::Diagram:
        break;
    }
    return L"";
}

} // namespace

void MemberText::Position(std::size_t index)
{
    const PositionResult& p = m_found.positions[index];
    const Actions& a = p.actions;
    m_result.SetCurSubSpan(p.Entry());
    BeginPart(p.x, p.x, p.Entry());
    Line(L"<h5>Position %i: %s of sub-span %i, at %s</h5>", static_cast<int>(index) + 1, PlaceName(p), p.subSpan + 1,
         m_fmt.Length(p.x));
    const CResultIndent indent(&m_result);
    if (p.majorReading != Reading::Diagram)
        Line(L"<red>forces do not balance</red>: Mx %s", ReadingName(p.majorReading));
    if (p.minorReading != Reading::Diagram)
        Line(L"<red>forces do not balance</red>: My %s", ReadingName(p.minorReading));
    Line(L"F = %s (%s), Mx = %s, My = %s, Fvy = %s, Fvx = %s", m_fmt.Force(a.F),
         a.F > 0.0   ? L"tension"
         : a.F < 0.0 ? L"compression"
                     : L"none",
         m_fmt.Moment(a.Mx), m_fmt.Moment(a.My), m_fmt.Force(a.Fvy), m_fmt.Force(a.Fvx));
    LocalLines lines(m_model);
    lines.All(p);
    Print(lines);
    const LedgerEntry* torsion = m_found.ledger.Find(Rule::Torsion);
    if (torsion && torsion->status == CheckStatus::NotEvaluated && a.Mt != 0.0)
        Line(L"<red>NOT CHECKED</red>: torsion of %s. BS 5950-1:2000 has no rule for torsion; check it by other means.",
             m_fmt.Moment(a.Mt));
}

void MemberText::Local(bool alongMember)
{
    const std::vector<PositionResult>& positions = m_found.positions;
    std::size_t worst = 0;
    bool any = false;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        if (positions[i].Largest() > positions[worst].Largest()) worst = i;
        if (!alongMember && !(positions[i].Largest() <= 1.0)) {
            Position(i);
            any = true;
        }
        if (alongMember) Position(i);
    }
    if (!alongMember && !any && !positions.empty()) Position(worst);
    for (const WebLoadResult& load : m_found.webLoads)
        ConcentratedLoad(load);
}

void MemberText::ConcentratedLoad(const WebLoadResult& w)
{
    const int entry = w.Entry(static_cast<int>(m_model.subSpans.size()));
    m_result.SetCurSubSpan(entry);
    BeginPart(w.x, w.end, entry);
    const wchar_t* const what = w.onFlange1 ? L"a load" : L"a reaction or an upward load";
    if (w.end > w.x)
        Line(L"<h5>Web under %s of %s from %s to %s</h5>", what, m_fmt.Force(w.force), m_fmt.Length(w.x),
             m_fmt.Length(w.end));
    else
        Line(L"<h5>Web under %s of %s at %s</h5>", what, m_fmt.Force(w.force), m_fmt.Length(w.x));
    const CResultIndent indent(&m_result);
    LocalLines lines(m_model);
    lines.WebBearing(w);
    lines.WebBuckling(w);
    Print(lines);
}

} // namespace Keltrix::BS5950
