// The text of the buckling checks.

#include <algorithm>
#include <cmath>

#include "BucklingLines.h"
#include "ElasticRules.h"
#include "MemberCheck.h"
#include "MemberText.h"

namespace Keltrix::BS5950 {

using Steel::CCodeShare;
using Steel::CMemberResult;
using Steel::CResultIndent;

namespace {

const wchar_t* SenseName(CCodeShare::LT_BuckleDirection sense)
{
    switch (sense) {
    case CCodeShare::LT_COMP_FLANGE1:
        return L"flange 1 (top)";
    case CCodeShare::LT_COMP_FLANGE2:
        return L"flange 2 (bottom)";
    case CCodeShare::LT_COMP_BOTH:
        return L"either flange, the moment reverses";
    default:
        break;
    }
    return L"none, no moment beyond the tolerance";
}

} // namespace

void MemberText::SpanTitle(const wchar_t* what, const SpanResult& span)
{
    CString title = what;
    if (span.from.point >= 0 && span.to.point >= 0)
        title.AppendFormat(L", point %i to %i", span.from.point + 1, span.to.point + 1);
    const wchar_t* const flange = span.lateral.flange[0] == span.lateral.flange[1] ? L""
                                  : span.lateral.flange[0]                         ? L", flange 1 (top)"
                                                                                   : L", flange 2 (bottom)";
    BeginPart(span.start, span.end, LastEntry());
    Line(L"<h5>%s: %s to %s, length %s%s%s</h5>", title, m_fmt.Length(span.start), m_fmt.Length(span.end),
         m_fmt.Length(span.end - span.start), flange, span.turned ? L", the angle turned the other way" : L"");
    const CResultIndent indent(&m_result);
    if (span.overridden) return;
    const auto line = [this](const wchar_t* verb, const Design::StretchEnd& end, const wchar_t* reason) {
        if (end.point < 0)
            Line(L"%s between points at %s: %s", verb, m_fmt.Length(end.x), reason);
        else
            Line(L"%s at point %i, restraint \"%s\": %s", verb, end.point + 1,
                 m_model.PointRestraint(end.point).UserDescription(), reason);
    };
    line(L"starts", span.from, span.startReason);
    line(L"ends", span.to, span.endReason);
}

void MemberText::Flexural(const SpanResult& span)
{
    const bool x = span.mode == BucklingMode::Major;
    SpanTitle(x ? L"Compression buckling about the major axis" : L"Compression buckling about the minor axis", span);
    const CResultIndent indent(&m_result);
    BucklingLines lines(m_model);
    lines.Flexural(span);
    Print(lines);
}

void MemberText::LateralTitle(const SpanResult& span)
{
    SpanTitle(L"Lateral-torsional buckling", span);
    const CResultIndent indent(&m_result);
    Line(L"compressed: %s; load: %s", SenseName(span.lateral.sense),
         span.lateral.destabilising ? L"destabilising, it acts above its reference and moves with the flange"
                                    : L"normal");
}

void MemberText::Lateral(const SpanResult& span)
{
    LateralTitle(span);
    const CResultIndent indent(&m_result);
    const SectionProperties& s = m_model.Properties();
    if (!span.applied) {
        Line(L"%s: nothing to check",
             span.continuous            ? L"flange held along the span <i>cl. 4.2.2</i>"
             : !CanBuckleLaterally(s)   ? L"the section does not buckle laterally <i>cl. 4.3.6.1</i>"
             : span.momentX.Mmax == 0.0 ? L"no moment about the major axis"
             : span.lateral.sense == CCodeShare::LT_COMP_NONE ? L"no moment beyond the tolerance compresses the flange"
                                                              : L"effective length given as zero");
        return;
    }
    BucklingLines lines(m_model);
    lines.Lateral(span);
    if (span.lateral.elastic) {
        Print(lines);
        if (span.lateral.elastic->outcome == Stability::Outcome::NotHeld) m_found.parts.back().second.isMarked = true;
        BesideElastic(span);
        return;
    }
    if (!span.overridden) {
        // The tables write the rows that they find.
        SpanResult again = span;
        again.LE = 0.0;
        LateralRules(m_model).FindLength(again, CCodeShare(&m_result));
    }
    Print(lines);
}

// What the tables say of an elastically checked length.
void MemberText::BesideElastic(const SpanResult& span)
{
    const SpanResult tables = ElasticRules(m_model).WorstByTables(span);
    if (!tables.applied) return;
    Line(L"beside it, by Tables 13, 14 and 18, for information; %s to %s; LE = %s; mLT Mx/Mb = %s * %s/%s = %s",
         m_fmt.Length(tables.start), m_fmt.Length(tables.end), m_fmt.Length(tables.LE), m_fmt.NoDim(tables.m),
         m_fmt.Moment(tables.effect), m_fmt.Moment(tables.resistance), m_fmt.Util(tables.utilisation));
}

void MemberText::ElasticOffers(const std::vector<SpanResult>& offers)
{
    for (const SpanResult& span : offers) {
        SpanTitle(L"For information, lateral-torsional buckling by the elastic critical moment", span);
        const CResultIndent indent(&m_result);
        BucklingLines lines(m_model);
        lines.ElasticResistance(span);
        Print(lines);
        Line(L"mLT Mx/Mb = %s * %s/%s = %s, for information: option ltb checks so", m_fmt.NoDim(span.m),
             m_fmt.Moment(span.effect), m_fmt.Moment(span.resistance),
             m_fmt.Util(CMemberResult::InfinitiseNANs(span.utilisation)));
    }
}

void MemberText::Buckling()
{
    m_result.SetCurSubSpan(LastEntry());
    Line(L"<h4>Buckling checks:</h4>");
    Warnings();
    for (const SpanResult& span : m_found.spans)
        if (span.mode == BucklingMode::LateralTorsional)
            Lateral(span);
        else if (!span.turned)
            Flexural(span);
    for (const InteractionResult& interaction : m_found.interactions)
        Interaction(interaction);
    for (const AcrossResult& across : m_found.across)
        Across(across);
    const std::vector<SpanResult> offers = ElasticRules(m_model).Offers(m_found.spans);
    m_found.information = Information(m_model, m_found, offers);
    ElasticOffers(offers);
    Summary();
}

void MemberText::Interaction(const InteractionResult& r)
{
    BeginPart(r.start, r.end, LastEntry());
    Line(L"<h5>Interaction, %s to %s</h5>", m_fmt.Length(r.start), m_fmt.Length(r.end));
    const CResultIndent indent(&m_result);
    BucklingLines lines(m_model);
    lines.Interaction(r, m_found);
    Print(lines);
}

void MemberText::Across(const AcrossResult& r)
{
    const ElasticUnit& e = r.elastic;
    BeginPart(e.start, e.end, LastEntry());
    Line(L"<h5>Lateral-torsional buckling under moments about y-y, the stiffer axis: %s to %s</h5>",
         m_fmt.Length(e.start), m_fmt.Length(e.end));
    const CResultIndent indent(&m_result);
    if (r.open) {
        Line(L"<red>not evaluated</red>: %s", r.open);
        return;
    }
    BucklingLines lines(m_model);
    lines.Across(r);
    if (r.combined > 0.0) lines.InteractionAcross(r);
    Print(lines);
}

} // namespace Keltrix::BS5950
