// The calculation of the rules of buckling, line by line.

#include "BucklingLines.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::BS5950 {

using Design::AreaText;
using Design::ModulusText;

namespace {

bool IsKnown(double length) { return length < 1e300; }

} // namespace

// What m and mLT are read from.
void BucklingLines::MomentShapeLines(const MomentShape& shape)
{
    Remark(L"load pattern: %s; M2, M3, M4 at the quarter points %s, %s, %s, M24 %s, Mmax %s",
           LoadPatternName(shape.pattern), m_fmt.Moment(shape.M2), m_fmt.Moment(shape.M3), m_fmt.Moment(shape.M4),
           m_fmt.Moment(shape.M24), m_fmt.Moment(shape.Mmax));
    if (shape.pattern != LoadPattern::EndMoments) return;
    const bool leftLarger = std::abs(shape.Mleft) >= std::abs(shape.Mright);
    const double larger = leftLarger ? shape.Mleft : shape.Mright;
    const double smaller = leftLarger ? shape.Mright : shape.Mleft;
    Step(L"β", LineValue::Number(smaller / larger)).Values(L"%s/%s", m_fmt.Moment(smaller), m_fmt.Moment(larger));
}

void BucklingLines::LateralFactor(const SpanResult& span)
{
    const MomentShape& shape = span.momentX;
    const LateralResult& l = span.lateral;
    MomentShapeLines(shape);
    const LineValue m = LineValue::Number(span.m);
    if (!shape.balanced)
        Step(L"mLT", m).Note(L"the moment is not known all along, its forces do not balance");
    else if (l.destabilising || l.cantilever)
        Step(L"mLT", m).Note(l.cantilever ? L"cantilever" : L"destabilising load").Cite(L"4.3.6.6");
    else if (l.simpleColumn)
        Step(L"mLT", m).Cite(L"4.7.7");
    else if (m_model.momentFactor)
        Step(L"mLT", m).Note(L"given by the user");
    else if (span.m != shape.factor)
        Step(L"mLT", m).Note(L"the largest moment of the stretch compresses the other flange");
    else
        Step(L"mLT", m)
            .Formula(L"min(1, max(0.44, 0.2 + (0.15 |M2| + 0.5 |M3| + 0.15 |M4|)/Mmax))")
            .Values(L"min(1, max(0.44, 0.2 + (0.15 * |%s| + 0.5 * |%s| + 0.15 * |%s|)/%s))", m_fmt.Moment(shape.M2),
                    m_fmt.Moment(shape.M3), m_fmt.Moment(shape.M4), m_fmt.Moment(shape.Mmax))
            .Cite(L"Table 18");
}

void BucklingLines::FlexuralFactor(const wchar_t* symbol, double value, const MomentShape& shape, bool sway)
{
    if (shape.Mmax == 0.0) return;
    MomentShapeLines(shape);
    const LineValue m = LineValue::Number(value);
    if (!shape.balanced) {
        Step(symbol, m).Note(L"the moment is not known all along, its forces do not balance");
        return;
    }
    if (m_model.momentFactor) {
        Step(symbol, m).Note(sway ? L"given by the user, at least 0.85 in sway mode" : L"given by the user");
        return;
    }
    const CString Mmax = m_fmt.Moment(shape.Mmax);
    const wchar_t* const least = sway ? L"0.85, " : L"";
    Step(symbol, m)
        .Formula(L"min(1, max(%s0.2 + |0.1 M2 + 0.6 M3 + 0.1 M4|/Mmax, 0.8 M24/Mmax))", least)
        .Values(L"min(1, max(%s0.2 + |0.1 * %s + 0.6 * %s + 0.1 * %s|/%s, 0.8 * %s/%s))", least, m_fmt.Moment(shape.M2),
                m_fmt.Moment(shape.M3), m_fmt.Moment(shape.M4), Mmax, m_fmt.Moment(shape.M24), Mmax)
        .Cite(sway ? L"Table 26, sway mode" : L"Table 26");
}

void BucklingLines::Flexural(const SpanResult& span)
{
    const bool x = span.mode == BucklingMode::Major;
    FlexuralLength(span);
    if (!span.applied) {
        Remark(L"no compression: nothing to check");
        return;
    }
    Slenderness(span);
    CompressionResistance(span);
    Step(x ? L"Fc/Pcx" : L"Fc/Pcy", LineValue::Utilisation(span.utilisation, true))
        .Values(L"%s/%s", m_fmt.Force(span.effect), m_fmt.Force(span.resistance));
    FlexuralFactor(x ? L"mx" : L"my", span.m, x ? span.momentX : span.flexural.momentY, span.flexural.sway);
    if (x) FlexuralFactor(L"myx", span.flexural.myx, span.flexural.momentY, span.flexural.sway);
}

void BucklingLines::FlexuralLength(const SpanResult& span)
{
    const double k = span.flexural.lengthFactor;
    if (k > 0.0 && IsKnown(span.LE))
        Step(L"LE", LineValue::Distance(span.LE))
            .Formula(L"%s L", m_fmt.NoDim(k))
            .Values(L"%s * %s", m_fmt.NoDim(k), m_fmt.Length(span.end - span.start))
            .Cite(span.lengthRule);
    else
        Step(L"LE", LineValue::Distance(span.LE)).Note(L"%s", span.lengthRule);
}

void BucklingLines::Slenderness(const SpanResult& span)
{
    const SectionProperties& s = m_model.Properties();
    const bool x = span.mode == BucklingMode::Major;
    const wchar_t* const axis = x ? L"x" : s.shape == Shape::Angle ? L"v" : L"y";
    const CString LE = m_fmt.Length(span.LE);
    const CString r = DimensionText(span.radius);
    if (!(span.flexural.leastSlenderness > 0.0)) {
        Step(L"λ", LineValue::Number(span.slenderness)).Formula(L"LE/r%s", axis).Values(L"%s/%s", LE, r).Cite(L"4.7.2");
        return;
    }
    const CString length = m_fmt.Length(span.flexural.fullLength);
    const bool oneBolt = m_model.options.connection == Connection::OneBolt;
    // Across the gusset, and with one bolt, the whole length counts (Table 25).
    const bool inPlane = s.shape == Shape::Channel ? x : s.shape != Shape::Angle && !x;
    const bool fullLength = oneBolt || (s.shape == Shape::Angle ? x : !inPlane);
    const CString factor = fullLength ? L"1" : L"0.85";
    const wchar_t* const more = s.shape == Shape::Angle && !x ? L"15" : L"30";
    CString symbols, numbers;
    symbols.Format(L"%s L/r%s", factor, axis);
    numbers.Format(L"%s * %s/%s", factor, length, r);
    if (!inPlane) {
        symbols.AppendFormat(L", 0.7 L/r%s + %s", axis, more);
        numbers.AppendFormat(L", 0.7 * %s/%s + %s", length, r, more);
    }
    if (s.shape == Shape::Angle && !x) {
        const CString ry = DimensionText(s.ry);
        symbols += L", 1 L/ry, 0.7 L/ry + 30";
        numbers.AppendFormat(L", 1 * %s/%s, 0.7 * %s/%s + 30", length, ry, length, ry);
    }
    Step(L"least slenderness for the end connections", LineValue::Number(span.flexural.leastSlenderness))
        .Formula(inPlane ? L"%s" : L"max(%s)", symbols)
        .Values(inPlane ? L"%s" : L"max(%s)", numbers)
        .Cite(L"4.7.10");
    // Two or more bolts: 0.85 L/r in place of L/r between pinned ends.
    const bool reduced = span.slenderness < span.LE / span.radius * (1.0 - 1e-12);
    Step(L"λ", LineValue::Number(span.slenderness))
        .Formula(L"max(%s/r%s, least)", reduced ? L"0.85 L" : L"LE", axis)
        .Values(L"max(%s%s/%s, %s)", reduced ? L"0.85 * " : L"", reduced ? length : LE, r,
                m_fmt.NoDim(span.flexural.leastSlenderness))
        .Cite(L"4.7.2, 4.7.10");
}

void BucklingLines::CompressionResistance(const SpanResult& span)
{
    const SectionProperties& s = m_model.Properties();
    const bool x = span.mode == BucklingMode::Major;
    const double Aeff = span.flexural.Aeff;
    const bool effective = Aeff < s.A;
    if (effective)
        Step(L"λ (Aeff/Ag)^0.5", LineValue::Number(span.slenderness * std::sqrt(Aeff / s.A)))
            .Values(L"%s * (%s/%s)^0.5", m_fmt.NoDim(span.slenderness), AreaText(Aeff), AreaText(s.A))
            .Cite(L"4.7.4");
    const wchar_t* const py = span.py < m_model.Steel().py ? L"pyr" : L"py";
    CString strength = m_fmt.Stress(span.py);
    if (LosesStrengthByWelding(s)) {
        Step(py, LineValue::Stress(span.py - 20e6)).Values(L"%s - 20 N/mm²", strength).Note(L"welded").Cite(L"4.7.5");
        strength = m_fmt.Stress(span.py - 20e6);
    }
    const StrutCurve curve = Table23(s, x ? Axis::X : Axis::Y);
    CString lead;
    lead.Format(L"curve %s%s%s <i>Table 23</i> for %s = %s: ", CString(StrutCurve::Name(curve.a), 1),
                curve.over > 0.0 ? L" and " : L"",
                curve.over > 0.0 ? CString(StrutCurve::Name(curve.aOver), 1) : CString(), py, strength);
    Step(L"pc", LineValue::Stress(span.strength)).Lead(lead).Cite(L"Annex C");
    const bool oneBolt = span.flexural.connectionFactor < 1.0;
    const CString share = oneBolt ? m_fmt.NoDim(span.flexural.connectionFactor) : CString();
    Step(x ? L"Pcx" : L"Pcy", LineValue::Force(span.resistance))
        .Formula(L"%s%s%s pc", share, oneBolt ? L" " : L"", effective ? L"Aeff" : L"Ag")
        .Values(L"%s%s%s * %s", share, oneBolt ? L" * " : L"", AreaText(Aeff), m_fmt.Stress(span.strength))
        .Cite(oneBolt ? L"4.7.4, 4.7.10: one bolt" : L"4.7.4");
}

void BucklingLines::LateralLength(const SpanResult& span)
{
    if (!IsKnown(span.LE)) {
        Step(L"LE", LineValue::Distance(span.LE)).Note(L"%s", span.lengthRule);
        Remark(L"<red>no row of the table applies to an end of the span</red>");
        return;
    }
    if (!(std::abs(span.lateral.tipMoment) >= 1.0)) {
        Step(L"LE", LineValue::Distance(span.LE)).Note(L"%s", span.lengthRule);
        return;
    }
    // The table's length, before the moment at the tip made it longer: the larger of 1.3 and + 0.3 L.
    const double L = span.end - span.start;
    const double table = span.LE / 1.3 >= L ? span.LE / 1.3 : span.LE - 0.3 * L;
    const CString text = m_fmt.Length(table);
    Step(L"LE", LineValue::Distance(span.LE))
        .Formula(L"max(1.3 LE, LE + 0.3 L)")
        .Values(L"max(1.3 * %s, %s + 0.3 * %s)", text, text, m_fmt.Length(L))
        .Note(L"%s", span.lengthRule)
        .Cite(L"4.3.5.4");
}

void BucklingLines::LateralSlenderness(const SpanResult& span)
{
    const SectionProperties& s = m_model.Properties();
    const SlendernessLT& lt = span.lateral.lt;
    const CString lambda = m_fmt.NoDim(lt.lambda);
    if (span.lateral.simpleColumn) {
        CString lead;
        lead.Format(L"λ = L/ry = %s/%s = %s, ", m_fmt.Length(span.lateral.storey), DimensionText(s.ry), lambda);
        Step(L"λLT", LineValue::Number(lt.lambdaLT))
            .Formula(L"0.5 λ")
            .Values(L"0.5 * %s", lambda)
            .Lead(lead)
            .Cite(L"4.7.7");
        return;
    }
    const wchar_t* const axis = s.shape == Shape::Angle ? L"v" : L"y";
    Step(L"λ", LineValue::Number(lt.lambda))
        .Formula(L"LE/r%s", axis)
        .Values(L"%s/%s", m_fmt.Length(span.LE), DimensionText(s.MinorRadius()));
    const CString phi = m_fmt.NoDim(lt.phi);
    const CString betaW = m_fmt.NoDim(lt.betaW);
    const LineValue lambdaLT = LineValue::Number(lt.lambdaLT);
    switch (s.shape) {
    case Shape::RHS: {
        const Material& steel = m_model.Steel();
        if (!s.IsWelded())
            Remark(L"limiting slenderness for D/B = %s/%s = %s: %s <i>Table 15</i>", DimensionText(s.D),
                   DimensionText(s.B), m_fmt.NoDim(s.D / s.B), m_fmt.NoDim(Table15(s.D / s.B, steel.py)));
        if (!IsWithinTable15(s, steel, lt.lambda))
            Step(L"λLT", lambdaLT)
                .Formula(L"2.25 (φb λ βW)^0.5")
                .Values(L"2.25 * (%s * %s * %s)^0.5", phi, lambda, betaW)
                .Lead(L"φb = " + phi + L", ")
                .Cite(lt.source);
        return;
    }
    case Shape::Angle: {
        CString lead;
        lead.Format(L"φa = %s, ψa = %s, va = %s, ", phi, m_fmt.NoDim(s.psi), m_fmt.NoDim(lt.v));
        Step(L"λLT", lambdaLT)
            .Formula(L"2.25 va (φa λ)^0.5")
            .Values(L"2.25 * %s * (%s * %s)^0.5", m_fmt.NoDim(lt.v), phi, lambda)
            .Lead(lead)
            .Cite(lt.source);
        return;
    }
    default:
        Step(L"λ/x", LineValue::Number(lt.lambda / lt.x)).Values(L"%s/%s", lambda, m_fmt.NoDim(lt.x));
        Step(L"λLT", lambdaLT)
            .Formula(L"u v λ βW^0.5")
            .Values(L"%s * %s * %s * %s^0.5", m_fmt.NoDim(lt.u), m_fmt.NoDim(lt.v), lambda, betaW)
            .Cite(lt.source);
    }
}

void BucklingLines::Lateral(const SpanResult& span)
{
    if (span.lateral.elastic) return ElasticLateral(span);
    LateralLength(span);
    LateralSlenderness(span);
    const bool angle = m_model.Properties().shape == Shape::Angle;
    const bool simple = span.lateral.simpleColumn;
    CString lead;
    lead.Format(L"for %s = %s: λL0 = %s, ", span.py < m_model.Steel().py ? L"pyr" : L"py", m_fmt.Stress(span.py),
                m_fmt.NoDim(LimitingSlendernessLT(span.py, m_model.Steel().E)));
    Step(L"pb", LineValue::Stress(span.strength)).Lead(lead).Cite(L"Annex B.2");
    Step(simple ? L"Mbs" : L"Mb", LineValue::Moment(span.resistance))
        .Formula(L"pb %s", angle ? L"Zu" : L"W")
        .Values(L"%s * %s", m_fmt.Stress(span.strength), ModulusText(span.lateral.modulus))
        .Cite(simple  ? L"4.7.7"
              : angle ? L"4.3.8"
                      : L"4.3.6.4")
        .Note(L"class %i", span.cls);
    LateralFactor(span);
    Step(angle    ? (simple ? L"mLT Mu/Mbs" : L"mLT Mu/Mb")
         : simple ? L"mLT Mx/Mbs"
                  : L"mLT Mx/Mb",
         LineValue::Utilisation(span.utilisation, false))
        .Values(L"%s * %s/%s", m_fmt.NoDim(span.m), m_fmt.Moment(span.effect), m_fmt.Moment(span.resistance));
}

// From the critical factor to Mb.
void BucklingLines::ElasticResistance(const SpanResult& span)
{
    const SectionProperties& s = m_model.Properties();
    const ElasticUnit& e = *span.lateral.elastic;
    const wchar_t* const p = span.py < m_model.Steel().py ? L"pyr" : L"py";
    const CString py = m_fmt.Stress(span.py);
    const CString E = m_fmt.Stress(m_model.Steel().E);
    Remark(L"elastic analysis of this length as it is held and loaded, load heights included, under the moments alone; "
           L"E = %s, G = E/2.6 = %s/2.6 = %s <i>cl. 3.1.3</i>",
           E, E, m_fmt.Stress(m_model.Steel().E / 2.6));
    switch (e.outcome) {
    case Stability::Outcome::NotHeld:
        Remark(L"not held: the restraints leave this length free to move sideways or to twist; pb = 0");
        break;
    case Stability::Outcome::NothingBuckles:
        Remark(L"nothing buckles under these moments, however large they are: pb = %s", p);
        break;
    case Stability::Outcome::Buckles: {
        const double Mp = span.lateral.modulus * span.py;
        Step(L"Mcr", LineValue::Moment(e.Mcr))
            .Formula(L"λcr Mmax/(1 + error)")
            .Values(L"%s * %s/(1 + %s)", m_fmt.NoDim(e.lambda), m_fmt.Moment(e.largestMoment), m_fmt.NoDim(e.error));
        Step(L"Mp", LineValue::Moment(Mp))
            .Formula(L"βW Sx %s", p)
            .Values(L"%s * %s * %s", m_fmt.NoDim(span.lateral.lt.betaW), ModulusText(s.Sx), py)
            .Cite(L"4.3.6.9");
        Step(L"λLT", LineValue::Number(span.lateral.lt.lambdaLT))
            .Formula(L"(π² E/%s)^0.5 (Mp/Mcr)^0.5", p)
            .Values(L"(9.87 * %s/%s)^0.5 * (%s/%s)^0.5", E, py, m_fmt.Moment(Mp), m_fmt.Moment(e.Mcr))
            .Cite(L"Annex B.2");
        CString lead;
        lead.Format(L"for %s = %s: λL0 = %s, ", p, py, m_fmt.NoDim(LimitingSlendernessLT(span.py, m_model.Steel().E)));
        Step(L"pb", LineValue::Stress(span.strength)).Lead(lead).Cite(L"Annex B.2");
        break;
    }
    }
    Step(L"Mb", LineValue::Moment(span.resistance))
        .Formula(L"pb W")
        .Values(L"%s * %s", m_fmt.Stress(span.strength), ModulusText(span.lateral.modulus))
        .Cite(L"4.3.6.4")
        .Note(L"class %i", span.cls);
}

void BucklingLines::ElasticLateral(const SpanResult& span)
{
    ElasticResistance(span);
    if (m_model.momentFactor)
        Step(L"mLT", LineValue::Number(span.m)).Note(L"given by the user, at least 1");
    else
        Step(L"mLT", LineValue::Number(1.0)).Note(L"the shape of the moments is part of Mcr");
    Step(L"mLT Mx/Mb", LineValue::Utilisation(span.utilisation, false))
        .Values(L"%s * %s/%s", m_fmt.NoDim(span.m), m_fmt.Moment(span.effect), m_fmt.Moment(span.resistance));
}

void BucklingLines::Interaction(const InteractionResult& r, const MemberResults& found)
{
    switch (r.rule) {
    case InteractionRule::Simplified:
        return SimplifiedInteraction(r, found);
    case InteractionRule::MoreExact:
        return ExactInteraction(r, found);
    case InteractionRule::SimpleColumn:
        return SimpleColumn(r, found);
    }
}

// The terms of moments over Mb and over py Z, each from its own numbers.
void BucklingLines::MomentTerms(const InteractionResult& r, const MemberResults& found)
{
    const SpanResult& x = found.Span(r.major);
    const SpanResult& y = found.Span(r.minor);
    const SpanResult& lt = found.Span(r.lateral);
    const bool angle = m_model.Properties().shape == Shape::Angle;
    if (r.MxTerm > 0.0)
        Step(angle ? L"mx Mu/(py Zu)" : L"mx Mx/(py Zx)", LineValue::Number(r.MxTerm))
            .Values(L"%s * %s/%s", m_fmt.NoDim(x.m), m_fmt.Moment(x.Mx), m_fmt.Moment(x.flexural.pyZx));
    if (r.MyTerm > 0.0)
        Step(angle ? L"my Mv/(py Zv)" : L"my My/(py Zy)", LineValue::Number(r.MyTerm))
            .Values(L"%s * %s/%s", m_fmt.NoDim(y.m), m_fmt.Moment(y.flexural.My), m_fmt.Moment(y.flexural.pyZy));
    if (r.MLTTerm > 0.0 && lt.effect > 0.0)
        Step(L"mLT MLT/Mb", LineValue::Number(r.MLTTerm))
            .Values(L"%s * %s/%s", m_fmt.NoDim(lt.m), m_fmt.Moment(lt.effect), m_fmt.Moment(lt.resistance));
}

void BucklingLines::SimplifiedInteraction(const InteractionResult& r, const MemberResults& found)
{
    const CString fx = m_fmt.NoDim(found.Span(r.major).utilisation);
    const CString fy = m_fmt.NoDim(found.Span(r.minor).utilisation);
    const bool angle = m_model.Properties().shape == Shape::Angle;
    MomentTerms(r, found);
    const CString MyTerm = m_fmt.NoDim(r.MyTerm);
    Step(angle ? L"Fc/Pc + mx Mu/(py Zu) + my Mv/(py Zv)" : L"Fc/Pc + mx Mx/(py Zx) + my My/(py Zy)",
         LineValue::Utilisation(r.first, false))
        .Values(L"max(%s, %s) + %s + %s", fx, fy, m_fmt.NoDim(r.MxTerm), MyTerm)
        .Cite(r.clause);
    Step(angle ? L"Fc/Pcy + mLT MLT/Mb + my Mv/(py Zv)" : L"Fc/Pcy + mLT MLT/Mb + my My/(py Zy)",
         LineValue::Utilisation(r.second, false))
        .Values(L"%s + %s + %s", fy, m_fmt.NoDim(r.MLTTerm), MyTerm)
        .Cite(r.clause);
}

void BucklingLines::SimpleColumn(const InteractionResult& r, const MemberResults& found)
{
    const SpanResult& y = found.Span(r.minor);
    const SpanResult& lt = found.Span(r.lateral);
    if (r.MLTTerm > 0.0)
        Step(L"Mx/Mbs", LineValue::Number(r.MLTTerm))
            .Values(L"%s/%s", m_fmt.Moment(lt.effect), m_fmt.Moment(lt.resistance));
    if (r.MyTerm > 0.0)
        Step(L"My/(py Zy)", LineValue::Number(r.MyTerm))
            .Values(L"%s/%s", m_fmt.Moment(y.flexural.My), m_fmt.Moment(y.flexural.pyZy));
    Step(L"Fc/Pc + Mx/Mbs + My/(py Zy)", LineValue::Utilisation(r.first, false))
        .Values(L"max(%s, %s) + %s + %s", m_fmt.NoDim(found.Span(r.major).utilisation), m_fmt.NoDim(y.utilisation),
                m_fmt.NoDim(r.MLTTerm), m_fmt.NoDim(r.MyTerm))
        .Cite(r.clause);
}

void BucklingLines::ExactInteraction(const InteractionResult& r, const MemberResults& found)
{
    const SpanResult& x = found.Span(r.major);
    const SpanResult& y = found.Span(r.minor);
    const SpanResult& lt = found.Span(r.lateral);
    const bool hollow = m_model.Properties().IsHollow();
    const wchar_t* const times = hollow ? L"0.5 * " : L"";
    const CString fx = m_fmt.NoDim(x.utilisation);
    const CString fy = m_fmt.NoDim(y.utilisation);
    const CString mx = m_fmt.NoDim(x.m);
    const CString my = m_fmt.NoDim(y.m);
    const CString major = m_fmt.NoDim(x.flexural.major);
    const CString minor = m_fmt.NoDim(y.flexural.minor);
    Step(L"Fc/Pcx + mx Mx/Mcx (1 + 0.5 Fc/Pcx) + 0.5 myx My/Mcy", LineValue::Utilisation(r.first, false))
        .Values(L"%s + %s * %s * (1 + 0.5 * %s) + 0.5 * %s * %s", fx, mx, major, fx, m_fmt.NoDim(x.flexural.myx),
                m_fmt.NoDim(x.flexural.minor))
        .Cite(r.clause);
    const bool half = hollow && lt.lateral.exempt;
    const CString bending = m_fmt.NoDim(half ? 2.0 * r.MLTTerm : r.MLTTerm);
    Step(half     ? L"Fc/Pcy + 0.5 mLT MLT/Mcx + my My/Mcy (1 + 0.5 Fc/Pcy)"
         : hollow ? L"Fc/Pcy + mLT MLT/Mb + my My/Mcy (1 + 0.5 Fc/Pcy)"
                  : L"Fc/Pcy + mLT MLT/Mb + my My/Mcy (1 + Fc/Pcy)",
         LineValue::Utilisation(r.second, false))
        .Values(L"%s + %s%s + %s * %s * (1 + %s%s)", fy, half ? L"0.5 * " : L"", bending, my, minor, times, fy)
        .Cite(r.clause);
    Step(hollow ? L"mx Mx (1 + 0.5 Fc/Pcx)/(Mcx (1 - Fc/Pcx)) + my My (1 + 0.5 Fc/Pcy)/(Mcy (1 - Fc/Pcy))"
                : L"mx Mx (1 + 0.5 Fc/Pcx)/(Mcx (1 - Fc/Pcx)) + my My (1 + Fc/Pcy)/(Mcy (1 - Fc/Pcy))",
         LineValue::Utilisation(r.third, false))
        .Values(L"%s * %s * (1 + 0.5 * %s)/(1 - %s) + %s * %s * (1 + %s%s)/(1 - %s)", mx, major, fx, fx, my, minor,
                times, fy, fy)
        .Cite(r.clause);
}

void BucklingLines::Across(const AcrossResult& r)
{
    const ElasticUnit& e = r.elastic;
    const double E = m_model.Steel().E;
    const wchar_t* const p = r.py < m_model.Steel().py ? L"pyr" : L"py";
    if (e.outcome == Stability::Outcome::NotHeld) {
        Remark(L"not held: the restraints leave this length free to move along the web or to twist; pb = 0");
    } else if (e.outcome == Stability::Outcome::NothingBuckles) {
        Remark(L"nothing buckles under these moments, however large they are: pb = %s", p);
    } else if (r.LE > 0.0) {
        Step(L"Mcr", LineValue::Moment(e.Mcr))
            .Formula(L"(π² E Ix/LE² (G J + π² E H/LE²))^0.5")
            .Note(L"a uniform moment over LE = %s", m_fmt.Length(r.LE));
    } else {
        Remark(L"elastic analysis of this length under the moments about y-y alone; loads act at the edge of the "
               L"section towards "
               L"which they destabilise");
        Step(L"Mcr", LineValue::Moment(e.Mcr))
            .Formula(L"λcr Mmax/(1 + error)")
            .Values(L"%s * %s/(1 + %s)", m_fmt.NoDim(e.lambda), m_fmt.Moment(e.largestMoment), m_fmt.NoDim(e.error));
    }
    if (e.outcome == Stability::Outcome::Buckles) {
        Step(L"λLT", LineValue::Number(r.lambdaLT))
            .Formula(L"(π² E Wy/Mcr)^0.5")
            .Values(L"(9.87 * %s * %s/%s)^0.5", m_fmt.Stress(E), ModulusText(r.modulus), m_fmt.Moment(e.Mcr))
            .Cite(L"Annex B.2");
        CString lead;
        lead.Format(L"for %s = %s: λL0 = %s, ", p, m_fmt.Stress(r.py), m_fmt.NoDim(LimitingSlendernessLT(r.py, E)));
        Step(L"pb", LineValue::Stress(r.Mb / r.modulus)).Lead(lead).Cite(L"Annex B.2");
    }
    Step(L"Mb", LineValue::Moment(r.Mb))
        .Formula(L"pb Wy")
        .Values(L"%s * %s", m_fmt.Stress(r.Mb / r.modulus), ModulusText(r.modulus))
        .Cite(L"4.3.6.4")
        .Note(L"class %i", r.cls);
    Step(L"m My/Mb", LineValue::Utilisation(r.utilisation, false))
        .Values(L"%s * %s/%s", m_fmt.NoDim(r.m), m_fmt.Moment(r.My), m_fmt.Moment(r.Mb));
}

void BucklingLines::InteractionAcross(const AcrossResult& r)
{
    Step(L"Fc/Pc + mx Mx/(py Zx) + m My/Mb", LineValue::Utilisation(r.combined, false))
        .Values(L"%s + %s + %s", m_fmt.NoDim(r.compression), m_fmt.NoDim(r.MxTerm), m_fmt.NoDim(r.utilisation))
        .Cite(L"4.8.3.3.1");
}

} // namespace Keltrix::BS5950
