// The text of the buckling checks. Every equation shows the numbers that its result follows from.

#include <algorithm>
#include <cmath>

#include "ElasticRules.h"
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

bool IsKnown(double length) { return length < 1e300; }

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

// What m and mLT are read from.
void MemberText::MomentShapeLines(const MomentShape& shape)
{
    Line(L"load pattern: %s; M2, M3, M4 at the quarter points %s, %s, %s, M24 %s, Mmax %s",
         LoadPatternName(shape.pattern), m_fmt.Moment(shape.M2), m_fmt.Moment(shape.M3), m_fmt.Moment(shape.M4),
         m_fmt.Moment(shape.M24), m_fmt.Moment(shape.Mmax));
    if (shape.pattern != LoadPattern::EndMoments) return;
    const bool leftLarger = std::abs(shape.Mleft) >= std::abs(shape.Mright);
    const double larger = leftLarger ? shape.Mleft : shape.Mright;
    const double smaller = leftLarger ? shape.Mright : shape.Mleft;
    Line(L"β = %s/%s = %s", m_fmt.Moment(smaller), m_fmt.Moment(larger), m_fmt.NoDim(smaller / larger));
}

void MemberText::LateralFactor(const SpanResult& span)
{
    const MomentShape& shape = span.momentX;
    MomentShapeLines(shape);
    const CString m = m_fmt.NoDim(span.m);
    if (!shape.balanced)
        Line(L"mLT = %s: the moment is not known all along, its forces do not balance", m);
    else if (span.lateral.destabilising || span.lateral.cantilever)
        Line(L"mLT = %s <i>cl. 4.3.6.6</i>, %s", m, span.lateral.cantilever ? L"cantilever" : L"destabilising load");
    else if (span.lateral.simpleColumn)
        Line(L"mLT = %s <i>cl. 4.7.7</i>", m);
    else if (m_model.momentFactor)
        Line(L"mLT = %s, given by the user", m);
    else if (span.m != shape.factor)
        Line(L"mLT = %s: the largest moment of the stretch compresses the other flange", m);
    else
        Line(L"mLT = min(1, max(0.44, 0.2 + (0.15 |M2| + 0.5 |M3| + 0.15 |M4|)/Mmax)) = min(1, max(0.44, 0.2 + (0.15 * "
             L"|%s| + 0.5 * |%s| + 0.15 * |%s|)/%s)) = %s <i>Table 18</i>",
             m_fmt.Moment(shape.M2), m_fmt.Moment(shape.M3), m_fmt.Moment(shape.M4), m_fmt.Moment(shape.Mmax), m);
}

void MemberText::FlexuralFactor(const wchar_t* symbol, double value, const MomentShape& shape, bool sway)
{
    if (shape.Mmax == 0.0) return;
    MomentShapeLines(shape);
    const CString m = m_fmt.NoDim(value);
    if (!shape.balanced) {
        Line(L"%s = %s: the moment is not known all along, its forces do not balance", symbol, m);
        return;
    }
    if (m_model.momentFactor) {
        Line(L"%s = %s, given by the user%s", symbol, m, sway ? L", at least 0.85 in sway mode" : L"");
        return;
    }
    const CString Mmax = m_fmt.Moment(shape.Mmax);
    CString numbers;
    numbers.Format(L"0.2 + |0.1 * %s + 0.6 * %s + 0.1 * %s|/%s, 0.8 * %s/%s", m_fmt.Moment(shape.M2),
                   m_fmt.Moment(shape.M3), m_fmt.Moment(shape.M4), Mmax, m_fmt.Moment(shape.M24), Mmax);
    const wchar_t* const least = sway ? L"0.85, " : L"";
    Line(L"%s = min(1, max(%s0.2 + |0.1 M2 + 0.6 M3 + 0.1 M4|/Mmax, 0.8 M24/Mmax)) = min(1, max(%s%s)) = %s <i>Table "
         L"26%s</i>",
         symbol, least, least, numbers, m, sway ? L", sway mode" : L"");
}

void MemberText::Flexural(const SpanResult& span)
{
    const bool x = span.mode == BucklingMode::Major;
    SpanTitle(x ? L"Compression buckling about the major axis" : L"Compression buckling about the minor axis", span);
    const CResultIndent indent(&m_result);
    const double L = span.end - span.start;
    if (span.flexural.lengthFactor > 0.0 && IsKnown(span.LE))
        Line(L"LE = %s L = %s * %s = %s <i>%s</i>", m_fmt.NoDim(span.flexural.lengthFactor),
             m_fmt.NoDim(span.flexural.lengthFactor), m_fmt.Length(L), m_fmt.Length(span.LE), span.lengthRule);
    else
        Line(L"LE = %s, %s", m_fmt.Length(span.LE), span.lengthRule);
    if (!span.applied) {
        Line(L"no compression: nothing to check");
        return;
    }
    StrutSlenderness(span);
    CompressionResistanceLines(span);
    const wchar_t* const axis = x ? L"x" : L"y";
    Line(L"Fc/Pc%s = %s/%s = %s", axis, m_fmt.Force(span.effect), m_fmt.Force(span.resistance),
         Verdict(span.utilisation, true));
    FlexuralFactor(x ? L"mx" : L"my", span.m, x ? span.momentX : span.flexural.momentY, span.flexural.sway);
    if (x) FlexuralFactor(L"myx", span.flexural.myx, span.flexural.momentY, span.flexural.sway);
}

void MemberText::StrutSlenderness(const SpanResult& span)
{
    const SectionProperties& s = m_model.Properties();
    const bool x = span.mode == BucklingMode::Major;
    const wchar_t* const axis = x ? L"x" : s.shape == Shape::Angle ? L"v" : L"y";
    const CString LE = m_fmt.Length(span.LE);
    const CString r = Small(span.radius);
    if (!(span.flexural.leastSlenderness > 0.0)) {
        Line(L"λ = LE/r%s = %s/%s = %s <i>cl. 4.7.2</i>", axis, LE, r, m_fmt.NoDim(span.slenderness));
        return;
    }
    const CString length = m_fmt.Length(span.flexural.fullLength);
    const bool oneBolt = m_model.options.connection == Connection::OneBolt;
    const bool fullLength = oneBolt || (s.shape == Shape::Angle && x);
    const CString factor = fullLength ? L"1" : L"0.85";
    const wchar_t* const more = s.shape == Shape::Angle && !x ? L"15" : L"30";
    CString symbols, numbers;
    symbols.Format(L"%s L/r%s, 0.7 L/r%s + %s", factor, axis, axis, more);
    numbers.Format(L"%s * %s/%s, 0.7 * %s/%s + %s", factor, length, r, length, r, more);
    if (s.shape == Shape::Angle && !x) {
        const CString ry = Small(s.ry);
        symbols += L", 1 L/ry, 0.7 L/ry + 30";
        numbers.AppendFormat(L", 1 * %s/%s, 0.7 * %s/%s + 30", length, ry, length, ry);
    }
    Line(L"least slenderness for the end connections = max(%s) = max(%s) = %s <i>cl. 4.7.10</i>", symbols, numbers,
         m_fmt.NoDim(span.flexural.leastSlenderness));
    // Two or more bolts: 0.85 L/r in place of L/r between pinned ends.
    const bool reduced = span.slenderness < span.LE / span.radius * (1.0 - 1e-12);
    Line(L"λ = max(%s/r%s, least) = max(%s%s/%s, %s) = %s <i>cl. 4.7.2, 4.7.10</i>", reduced ? L"0.85 L" : L"LE", axis,
         reduced ? L"0.85 * " : L"", reduced ? length : LE, r, m_fmt.NoDim(span.flexural.leastSlenderness),
         m_fmt.NoDim(span.slenderness));
}

void MemberText::CompressionResistanceLines(const SpanResult& span)
{
    const SectionProperties& s = m_model.Properties();
    const bool x = span.mode == BucklingMode::Major;
    const bool effective = span.flexural.Aeff < s.A;
    if (effective)
        Line(L"λ (Aeff/Ag)^0.5 = %s * (%s/%s)^0.5 = %s <i>cl. 4.7.4</i>", m_fmt.NoDim(span.slenderness),
             Area(span.flexural.Aeff), Area(s.A), m_fmt.NoDim(span.slenderness * std::sqrt(span.flexural.Aeff / s.A)));
    const wchar_t* const py = span.py < m_model.Steel().py ? L"pyr" : L"py";
    CString strength = m_fmt.Stress(span.py);
    if (LosesStrengthByWelding(s)) {
        const CString less = m_fmt.Stress(span.py - 20e6);
        Line(L"%s = %s - 20 N/mm² = %s <i>cl. 4.7.5</i>, welded", py, strength, less);
        strength = less;
    }
    const StrutCurve curve = Table23(s, x ? Axis::X : Axis::Y);
    Line(L"curve %s%s%s <i>Table 23</i> for %s = %s: pc = %s <i>Annex C</i>", CString(StrutCurve::Name(curve.a), 1),
         curve.over > 0.0 ? L" and " : L"", curve.over > 0.0 ? CString(StrutCurve::Name(curve.aOver), 1) : CString(),
         py, strength, m_fmt.Stress(span.strength));
    const bool oneBolt = span.flexural.connectionFactor < 1.0;
    const CString share = oneBolt ? m_fmt.NoDim(span.flexural.connectionFactor) : CString();
    Line(L"Pc%s = %s%s%s pc = %s%s%s * %s = %s <i>cl. 4.7.4%s</i>", x ? L"x" : L"y", share, oneBolt ? L" " : L"",
         effective ? L"Aeff" : L"Ag", share, oneBolt ? L" * " : L"", Area(span.flexural.Aeff),
         m_fmt.Stress(span.strength), m_fmt.Force(span.resistance), oneBolt ? L", 4.7.10: one bolt" : L"");
}

void MemberText::LateralTitle(const SpanResult& span)
{
    SpanTitle(L"Lateral-torsional buckling", span);
    const CResultIndent indent(&m_result);
    Line(L"compressed: %s; load: %s", SenseName(span.lateral.sense),
         span.lateral.destabilising ? L"destabilising, it acts above its reference and moves with the flange"
                                    : L"normal");
}

void MemberText::LateralLength(const SpanResult& span)
{
    if (!IsKnown(span.LE)) {
        Line(L"LE = %s, %s", m_fmt.Length(span.LE), span.lengthRule);
        Line(L"<red>no row of the table applies to an end of the span</red>");
        return;
    }
    if (!(std::abs(span.lateral.tipMoment) >= 1.0)) {
        Line(L"LE = %s, %s", m_fmt.Length(span.LE), span.lengthRule);
        return;
    }
    // The table's length, before the moment at the tip made it longer: the larger of 1.3 and + 0.3 L.
    const double L = span.end - span.start;
    const double table = span.LE / 1.3 >= L ? span.LE / 1.3 : span.LE - 0.3 * L;
    const CString text = m_fmt.Length(table);
    Line(L"LE = max(1.3 LE, LE + 0.3 L) = max(1.3 * %s, %s + 0.3 * %s) = %s <i>%s, cl. 4.3.5.4</i>", text, text,
         m_fmt.Length(L), m_fmt.Length(span.LE), span.lengthRule);
}

void MemberText::LateralSlenderness(const SpanResult& span)
{
    const SectionProperties& s = m_model.Properties();
    const SlendernessLT& lt = span.lateral.lt;
    const CString lambda = m_fmt.NoDim(lt.lambda);
    const CString lambdaLT = m_fmt.NoDim(lt.lambdaLT);
    if (span.lateral.simpleColumn) {
        Line(L"λ = L/ry = %s/%s = %s, λLT = 0.5 λ = 0.5 * %s = %s <i>cl. 4.7.7</i>", m_fmt.Length(span.lateral.storey),
             Small(s.ry), lambda, lambda, lambdaLT);
        return;
    }
    const wchar_t* const axis = s.shape == Shape::Angle ? L"v" : L"y";
    Line(L"λ = LE/r%s = %s/%s = %s", axis, m_fmt.Length(span.LE), Small(s.MinorRadius()), lambda);
    const CString phi = m_fmt.NoDim(lt.phi);
    const CString betaW = m_fmt.NoDim(lt.betaW);
    switch (s.shape) {
    case Shape::RHS: {
        const Material& steel = m_model.Steel();
        if (!s.IsWelded())
            Line(L"limiting slenderness for D/B = %s/%s = %s: %s <i>Table 15</i>", Small(s.D), Small(s.B),
                 m_fmt.NoDim(s.D / s.B), m_fmt.NoDim(Table15(s.D / s.B, steel.py)));
        if (!IsWithinTable15(s, steel, lt.lambda))
            Line(L"φb = %s, λLT = 2.25 (φb λ βW)^0.5 = 2.25 * (%s * %s * %s)^0.5 = %s <i>%s</i>", phi, phi, lambda,
                 betaW, lambdaLT, lt.source);
        return;
    }
    case Shape::Angle:
        Line(L"φa = %s, ψa = %s, va = %s, λLT = 2.25 va (φa λ)^0.5 = 2.25 * %s * (%s * %s)^0.5 = %s <i>%s</i>", phi,
             m_fmt.NoDim(s.psi), m_fmt.NoDim(lt.v), m_fmt.NoDim(lt.v), phi, lambda, lambdaLT, lt.source);
        return;
    default:
        Line(L"λ/x = %s/%s = %s", lambda, m_fmt.NoDim(lt.x), m_fmt.NoDim(lt.lambda / lt.x));
        Line(L"λLT = u v λ βW^0.5 = %s * %s * %s * %s^0.5 = %s <i>cl. %s</i>", m_fmt.NoDim(lt.u), m_fmt.NoDim(lt.v),
             lambda, betaW, lambdaLT, lt.source);
    }
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
    if (span.lateral.elastic) {
        ElasticLateral(span);
        return;
    }
    if (!span.overridden) {
        // The tables write the rows that they find.
        SpanResult again = span;
        again.LE = 0.0;
        LateralRules(m_model).FindLength(again, CCodeShare(&m_result));
    }
    LateralLength(span);
    LateralSlenderness(span);
    const bool angle = s.shape == Shape::Angle;
    const bool simple = span.lateral.simpleColumn;
    const wchar_t* const Mb = simple ? L"Mbs" : L"Mb";
    Line(L"for %s = %s: λL0 = %s, pb = %s <i>Annex B.2</i>", span.py < m_model.Steel().py ? L"pyr" : L"py",
         m_fmt.Stress(span.py), m_fmt.NoDim(LimitingSlendernessLT(span.py, m_model.Steel().E)),
         m_fmt.Stress(span.strength));
    const wchar_t* const clause = simple ? L"4.7.7" : angle ? L"4.3.8" : L"4.3.6.4";
    Line(L"%s = pb %s = %s * %s = %s <i>cl. %s</i>, class %i", Mb, angle ? L"Zu" : L"W", m_fmt.Stress(span.strength),
         Volume(span.lateral.modulus), m_fmt.Moment(span.resistance), clause, span.cls);
    LateralFactor(span);
    Line(L"mLT M%s/%s = %s * %s/%s = %s", angle ? L"u" : L"x", Mb, m_fmt.NoDim(span.m), m_fmt.Moment(span.effect),
         m_fmt.Moment(span.resistance), Verdict(span.utilisation, false));
}

// From the critical factor to Mb.
void MemberText::ElasticResistance(const SpanResult& span)
{
    const SectionProperties& s = m_model.Properties();
    const ElasticUnit& e = *span.lateral.elastic;
    const wchar_t* const p = span.py < m_model.Steel().py ? L"pyr" : L"py";
    const CString py = m_fmt.Stress(span.py);
    const CString E = m_fmt.Stress(m_model.Steel().E);
    Line(L"elastic analysis of this length as it is held and loaded, load heights included, under the moments alone; E "
         L"= "
         L"%s, G = E/2.6 = %s/2.6 = %s <i>cl. 3.1.3</i>",
         E, E, m_fmt.Stress(m_model.Steel().E / 2.6));
    switch (e.outcome) {
    case Stability::Outcome::NotHeld:
        Line(L"not held: the restraints leave this length free to move sideways or to twist; pb = 0");
        break;
    case Stability::Outcome::NothingBuckles:
        Line(L"nothing buckles under these moments, however large they are: pb = %s", p);
        break;
    case Stability::Outcome::Buckles: {
        const CString Mcr = m_fmt.Moment(e.Mcr);
        const CString Mp = m_fmt.Moment(span.lateral.modulus * span.py);
        Line(L"Mcr = λcr Mmax/(1 + error) = %s * %s/(1 + %s) = %s", m_fmt.NoDim(e.lambda),
             m_fmt.Moment(e.largestMoment), m_fmt.NoDim(e.error), Mcr);
        Line(L"Mp = βW Sx %s = %s * %s * %s = %s <i>cl. 4.3.6.9</i>", p, m_fmt.NoDim(span.lateral.lt.betaW),
             Volume(s.Sx), py, Mp);
        Line(L"λLT = (π² E/%s)^0.5 (Mp/Mcr)^0.5 = (9.87 * %s/%s)^0.5 * (%s/%s)^0.5 = %s <i>Annex B.2</i>", p, E, py, Mp,
             Mcr, m_fmt.NoDim(span.lateral.lt.lambdaLT));
        Line(L"for %s = %s: λL0 = %s, pb = %s <i>Annex B.2</i>", p, py,
             m_fmt.NoDim(LimitingSlendernessLT(span.py, m_model.Steel().E)), m_fmt.Stress(span.strength));
        break;
    }
    }
    Line(L"Mb = pb W = %s * %s = %s <i>cl. 4.3.6.4</i>, class %i", m_fmt.Stress(span.strength),
         Volume(span.lateral.modulus), m_fmt.Moment(span.resistance), span.cls);
}

void MemberText::ElasticLateral(const SpanResult& span)
{
    ElasticResistance(span);
    if (m_model.momentFactor)
        Line(L"mLT = %s, given by the user, at least 1", m_fmt.NoDim(span.m));
    else
        Line(L"mLT = 1: the shape of the moments is part of Mcr");
    if (span.lateral.elastic->outcome == Stability::Outcome::NotHeld) m_found.parts.back().second.isMarked = true;
    Line(L"mLT Mx/Mb = %s * %s/%s = %s", m_fmt.NoDim(span.m), m_fmt.Moment(span.effect), m_fmt.Moment(span.resistance),
         Verdict(span.utilisation, false));
    const SpanResult tables = ElasticRules(m_model).WorstByTables(span);
    if (!tables.applied) return;
    Line(L"beside it, by Tables 13, 14 and 18, for information; %s to %s; LE = %s; mLT Mx/Mb = %s * %s/%s = %s",
         m_fmt.Length(tables.start), m_fmt.Length(tables.end), m_fmt.Length(tables.LE), m_fmt.NoDim(tables.m),
         m_fmt.Moment(tables.effect), m_fmt.Moment(tables.resistance), m_fmt.Util(tables.utilisation));
}

void MemberText::ElasticOffers()
{
    for (const SpanResult& span : ElasticRules(m_model).Offers(m_found.spans)) {
        SpanTitle(L"For information, lateral-torsional buckling by the elastic critical moment", span);
        const CResultIndent indent(&m_result);
        ElasticResistance(span);
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
    ElasticOffers();
    Summary();
}

void MemberText::Interaction(const InteractionResult& r)
{
    BeginPart(r.start, r.end, LastEntry());
    Line(L"<h5>Interaction, %s to %s</h5>", m_fmt.Length(r.start), m_fmt.Length(r.end));
    const CResultIndent indent(&m_result);
    switch (r.rule) {
    case InteractionRule::Simplified:
        SimplifiedInteraction(r);
        break;
    case InteractionRule::MoreExact:
        ExactInteraction(r);
        break;
    case InteractionRule::SimpleColumn:
        SimpleColumn(r);
        break;
    }
}

// The terms of moments over Mb and over py Z, each from its own numbers.
void MemberText::MomentTerms(const InteractionResult& r)
{
    const SpanResult& x = m_found.Span(r.major);
    const SpanResult& y = m_found.Span(r.minor);
    const SpanResult& lt = m_found.Span(r.lateral);
    const bool angle = m_model.Properties().shape == Shape::Angle;
    const wchar_t* const u = angle ? L"u" : L"x";
    const wchar_t* const v = angle ? L"v" : L"y";
    if (r.MxTerm > 0.0)
        Line(L"mx M%s/(py Z%s) = %s * %s/%s = %s", u, u, m_fmt.NoDim(x.m), m_fmt.Moment(x.Mx),
             m_fmt.Moment(x.flexural.pyZx), m_fmt.NoDim(r.MxTerm));
    if (r.MyTerm > 0.0)
        Line(L"my M%s/(py Z%s) = %s * %s/%s = %s", v, v, m_fmt.NoDim(y.m), m_fmt.Moment(y.flexural.My),
             m_fmt.Moment(y.flexural.pyZy), m_fmt.NoDim(r.MyTerm));
    if (r.MLTTerm > 0.0 && lt.effect > 0.0)
        Line(L"mLT MLT/Mb = %s * %s/%s = %s", m_fmt.NoDim(lt.m), m_fmt.Moment(lt.effect), m_fmt.Moment(lt.resistance),
             m_fmt.NoDim(r.MLTTerm));
}

void MemberText::SimplifiedInteraction(const InteractionResult& r)
{
    const SpanResult& x = m_found.Span(r.major);
    const SpanResult& y = m_found.Span(r.minor);
    const bool angle = m_model.Properties().shape == Shape::Angle;
    MomentTerms(r);
    const CString MxTerm = m_fmt.NoDim(r.MxTerm);
    const CString MyTerm = m_fmt.NoDim(r.MyTerm);
    const wchar_t* const first = angle ? L"mx Mu/(py Zu)" : L"mx Mx/(py Zx)";
    const wchar_t* const second = angle ? L"my Mv/(py Zv)" : L"my My/(py Zy)";
    Line(L"Fc/Pc + %s + %s = max(%s, %s) + %s + %s = %s <i>cl. %s</i>", first, second, m_fmt.NoDim(x.utilisation),
         m_fmt.NoDim(y.utilisation), MxTerm, MyTerm, Verdict(r.first, false), r.clause);
    Line(L"Fc/Pcy + mLT MLT/Mb + %s = %s + %s + %s = %s <i>cl. %s</i>", second, m_fmt.NoDim(y.utilisation),
         m_fmt.NoDim(r.MLTTerm), MyTerm, Verdict(r.second, false), r.clause);
}

void MemberText::SimpleColumn(const InteractionResult& r)
{
    const SpanResult& x = m_found.Span(r.major);
    const SpanResult& y = m_found.Span(r.minor);
    const SpanResult& lt = m_found.Span(r.lateral);
    if (r.MLTTerm > 0.0)
        Line(L"Mx/Mbs = %s/%s = %s", m_fmt.Moment(lt.effect), m_fmt.Moment(lt.resistance), m_fmt.NoDim(r.MLTTerm));
    if (r.MyTerm > 0.0)
        Line(L"My/(py Zy) = %s/%s = %s", m_fmt.Moment(y.flexural.My), m_fmt.Moment(y.flexural.pyZy),
             m_fmt.NoDim(r.MyTerm));
    Line(L"Fc/Pc + Mx/Mbs + My/(py Zy) = max(%s, %s) + %s + %s = %s <i>cl. %s</i>", m_fmt.NoDim(x.utilisation),
         m_fmt.NoDim(y.utilisation), m_fmt.NoDim(r.MLTTerm), m_fmt.NoDim(r.MyTerm), Verdict(r.first, false), r.clause);
}

void MemberText::ExactInteraction(const InteractionResult& r)
{
    const SpanResult& x = m_found.Span(r.major);
    const SpanResult& y = m_found.Span(r.minor);
    const SpanResult& lt = m_found.Span(r.lateral);
    const bool hollow = m_model.Properties().IsHollow();
    const wchar_t* const k = hollow ? L"0.5 " : L"";
    const wchar_t* const times = hollow ? L"0.5 * " : L"";
    const CString fx = m_fmt.NoDim(x.utilisation);
    const CString fy = m_fmt.NoDim(y.utilisation);
    const CString mx = m_fmt.NoDim(x.m);
    const CString my = m_fmt.NoDim(y.m);
    const CString major = m_fmt.NoDim(x.flexural.major);
    const CString minor = m_fmt.NoDim(y.flexural.minor);
    Line(L"Fc/Pcx + mx Mx/Mcx (1 + 0.5 Fc/Pcx) + 0.5 myx My/Mcy = %s + %s * %s * (1 + 0.5 * %s) + 0.5 * %s * %s = %s "
         L"<i>cl. "
         L"%s</i>",
         fx, mx, major, fx, m_fmt.NoDim(x.flexural.myx), m_fmt.NoDim(x.flexural.minor), Verdict(r.first, false),
         r.clause);
    const CString bending = lt.effect > 0.0 ? m_fmt.NoDim(lt.m * lt.effect / lt.resistance) : CString(L"0");
    Line(L"Fc/Pcy + %smLT MLT/Mb + my My/Mcy (1 + %sFc/Pcy) = %s + %s%s + %s * %s * (1 + %s%s) = %s <i>cl. %s</i>", k,
         k, fy, times, bending, my, minor, times, fy, Verdict(r.second, false), r.clause);
    Line(L"mx Mx (1 + 0.5 Fc/Pcx)/(Mcx (1 - Fc/Pcx)) + my My (1 + %sFc/Pcy)/(Mcy (1 - Fc/Pcy)) = %s * %s * (1 + 0.5 * "
         L"%s)/(1 - %s) + %s * %s * (1 + %s%s)/(1 - %s) = %s <i>cl. %s</i>",
         k, mx, major, fx, fx, my, minor, times, fy, fy, Verdict(r.third, false), r.clause);
}

} // namespace Keltrix::BS5950
