#include "MemberText.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::BS5950 {

using Steel::CCodeShare;
using Steel::CMemberResult;
using Steel::CResultIndent;

namespace {

const wchar_t* SenseName(int sense)
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

const wchar_t* FabricationName(Fabrication fabrication)
{
    switch (fabrication) {
    case Fabrication::Rolled:
        return L"rolled or hot finished";
    case Fabrication::Formed:
        return L"cold formed";
    case Fabrication::Welded:
        break;
    }
    return L"welded";
}

} // namespace

CString CSteelMemberBS5950::Text::Verdict(double utilisation, bool inclusive) const
{
    const double u = CMemberResult::InfinitiseNANs(utilisation);
    const bool fails = inclusive ? u >= 1.0 : u > 1.0;
    CString text;
    text.Format(fails ? L"<red><b>%s</b> FAIL</red>" : L"<b>%s</b> OK", m_fmt.Util(u));
    return text;
}

namespace {

// Four figures without an exponent.
CString Figures(double value, const wchar_t* unit)
{
    CString text;
    text.Format(std::abs(value) < 9999.5 ? L"%.4G %s" : L"%.0f %s", value, unit);
    return text;
}

} // namespace

CString CSteelMemberBS5950::Text::Volume(double m3) const { return Figures(m3 * 1e6, L"cm³"); }

CString CSteelMemberBS5950::Text::Area(double m2) const { return Figures(m2 * 1e4, L"cm²"); }

CString CSteelMemberBS5950::Text::Small(double m) const { return Figures(m * 1e2, L"cm"); }

void CSteelMemberBS5950::Text::Refusal(const wchar_t* reason) { Line(L"<red><b>Not checked:</b></red> %s", reason); }

void CSteelMemberBS5950::Text::Warnings()
{
    for (const Design::Warning& warning : m_member.m_warnings)
        Line(L"<red><b>WARNING:</b></red> %s", warning.text);
}

void CSteelMemberBS5950::Text::BucklingTitle()
{
    Line(L"<h4>Buckling checks:</h4>");
    Warnings();
}

void CSteelMemberBS5950::Text::SpanTitle(const wchar_t* what, const SpanResult& span)
{
    CString title = what;
    if (span.from.point >= 0 && span.to.point >= 0)
        title.AppendFormat(L", point %i to %i", span.from.point + 1, span.to.point + 1);
    const wchar_t* const flange = span.flange[0] == span.flange[1] ? L""
                                  : span.flange[0]                 ? L", flange 1 (top)"
                                                                   : L", flange 2 (bottom)";
    Line(L"<h5>%s: %s to %s, length %s%s%s</h5>", title, m_fmt.Length(span.start), m_fmt.Length(span.end),
         m_fmt.Length(span.end - span.start), flange, span.turned ? L", the angle turned the other way" : L"");
    const CResultIndent indent(&m_result);
    if (span.overridden) return;
    const auto line = [this](const wchar_t* verb, const Design::StretchEnd& end, const wchar_t* reason) {
        if (end.point < 0)
            Line(L"%s between points at %s: %s", verb, m_fmt.Length(end.x), reason);
        else
            Line(L"%s at point %i, restraint \"%s\": %s", verb, end.point + 1,
                 m_member.PointRestraint(end.point).UserDescription(), reason);
    };
    line(L"starts", span.from, span.startReason);
    line(L"ends", span.to, span.endReason);
}

void CSteelMemberBS5950::Text::MomentFactorLine(const wchar_t* symbol, double value, const MomentShape& shape,
                                                bool lateral, const SpanResult& span)
{
    if (shape.Mmax == 0.0) return;
    Line(L"load pattern: %s; M at the quarter points %s, %s, %s, largest %s", LoadPatternName(shape.pattern),
         m_fmt.Moment(shape.M2), m_fmt.Moment(shape.M3), m_fmt.Moment(shape.M4), m_fmt.Moment(shape.Mmax));
    if (shape.pattern == LoadPattern::EndMoments) {
        const bool leftLarger = std::abs(shape.Mleft) >= std::abs(shape.Mright);
        const double larger = leftLarger ? shape.Mleft : shape.Mright;
        Line(L"β = %s", m_fmt.NoDim((leftLarger ? shape.Mright : shape.Mleft) / larger));
    }
    if (!shape.balanced)
        Line(L"%s = %s: the moment is not known all along, its forces do not balance", symbol, m_fmt.NoDim(value));
    else if (lateral && (span.destabilising || span.cantilever))
        Line(L"mLT = %s <i>cl. 4.3.6.6</i>, %s", m_fmt.NoDim(value),
             span.cantilever ? L"cantilever" : L"destabilising load");
    else if (m_member.EquivalentUniformMomentFactor())
        Line(L"%s = %s, given by the user%s", symbol, m_fmt.NoDim(value),
             span.sway ? L", at least 0.85 in sway mode" : L"");
    else if (lateral && span.m != shape.factor)
        Line(L"mLT = %s: the largest moment of the stretch compresses the other flange", m_fmt.NoDim(value));
    else if (lateral)
        Line(L"mLT = 0.2 + (0.15 M2 + 0.5 M3 + 0.15 M4)/Mmax >= 0.44 = %s <i>Table 18</i>", m_fmt.NoDim(value));
    else
        Line(L"%s = 0.2 + (0.1 M2 + 0.6 M3 + 0.1 M4)/Mmax >= 0.8 M24/Mmax%s = %s <i>Table 26</i>", symbol,
             span.sway ? L", in sway mode at least 0.85" : L"", m_fmt.NoDim(value));
}

void CSteelMemberBS5950::Text::Flexural(const SpanResult& span)
{
    const bool x = span.mode == BucklingMode::Major;
    SpanTitle(x ? L"Compression buckling about the major axis" : L"Compression buckling about the minor axis", span);
    const CResultIndent indent(&m_result);
    const SectionProperties& s = m_member.Properties();
    const wchar_t* axis = x ? L"x" : s.shape == Shape::Angle ? L"v" : L"y";
    if (span.lengthFactor > 0.0)
        Line(L"LE = %s L = %s <i>%s</i>", m_fmt.NoDim(span.lengthFactor), m_fmt.Length(span.LE), span.lengthRule);
    else
        Line(L"LE = %s, %s", m_fmt.Length(span.LE), span.lengthRule);
    if (!span.applied) {
        Line(L"no compression: nothing to check");
        return;
    }
    const StrutCurve curve = Table23(s, x ? Axis::X : Axis::Y);
    CString radius;
    radius.Format(L"%.3G cm", span.radius * 100.0);
    Line(L"λ = LE/r%s = %s/%s = %s <i>cl. 4.7.2</i>%s", axis, m_fmt.Length(span.LE), radius,
         m_fmt.NoDim(span.slenderness),
         span.slenderness > span.LE / span.radius ? L", raised to the least slenderness of cl. 4.7.10" : L"");
    Line(L"curve %s%s%s <i>Table 23</i>, pc = %s <i>Annex C</i>%s", CString(StrutCurve::Name(curve.a), 1),
         curve.over > 0.0 ? L" and " : L"", curve.over > 0.0 ? CString(StrutCurve::Name(curve.aOver), 1) : CString(),
         m_fmt.Stress(span.strength),
         LosesStrengthByWelding(s) ? L", py less 20 N/mm² for welding <i>cl. 4.7.5</i>" : L"");
    Line(L"Pc%s = %s pc = %s * %s = %s <i>cl. 4.7.4</i>", x ? L"x" : L"y", span.Aeff < s.A ? L"Aeff" : L"Ag",
         Area(span.Aeff), m_fmt.Stress(span.strength), m_fmt.Force(span.resistance));
    Line(L"Fc/Pc%s = %s/%s = %s", x ? L"x" : L"y", m_fmt.Force(span.effect), m_fmt.Force(span.resistance),
         Verdict(span.utilisation, true));
    MomentFactorLine(x ? L"mx" : L"my", span.m, x ? span.momentX : span.momentY, false, span);
    if (x && span.momentY.Mmax > 0.0) Line(L"myx = %s", m_fmt.NoDim(span.myx));
}

void CSteelMemberBS5950::Text::LateralTitle(const SpanResult& span)
{
    SpanTitle(L"Lateral-torsional buckling", span);
    const CResultIndent indent(&m_result);
    Line(L"compressed: %s; load: %s", SenseName(span.sense),
         span.destabilising ? L"destabilising, it acts above its reference and moves with the flange" : L"normal");
}

void CSteelMemberBS5950::Text::Lateral(const SpanResult& span)
{
    const CResultIndent indent(&m_result);
    const SectionProperties& s = m_member.Properties();
    if (!span.applied) {
        Line(L"%s: nothing to check",
             span.continuous                          ? L"flange held along the span <i>cl. 4.2.2</i>"
             : !CanBuckleLaterally(s)                 ? L"the section does not buckle laterally <i>cl. 4.3.6.1</i>"
             : span.momentX.Mmax == 0.0               ? L"no moment about the major axis"
             : span.sense == CCodeShare::LT_COMP_NONE ? L"no moment beyond the tolerance compresses the flange"
                                                      : L"effective length given as zero");
        return;
    }
    const Material& m = m_member.Steel();
    const SlendernessLT& lt = span.lt;
    Line(L"LE = %s, %s", m_fmt.Length(span.LE), span.lengthRule);
    if (!(span.LE < 1e300)) Line(L"<red>no row of the table applies to an end of the span</red>");
    if (s.shape == Shape::RHS) {
        const double limit = Table15(s.D / s.B, span.py);
        Line(L"λ = LE/ry = %s, limiting slenderness for D/B = %s: %s <i>Table 15</i>", m_fmt.NoDim(lt.lambda),
             m_fmt.NoDim(s.D / s.B), m_fmt.NoDim(limit));
        if (lt.lambda > limit)
            Line(L"φb = %s, λLT = 2.25(φb λ βW)^0.5 = %s <i>%s</i>", m_fmt.NoDim(lt.phi), m_fmt.NoDim(lt.lambdaLT),
                 lt.source);
    } else if (s.shape == Shape::Angle)
        Line(L"λ = LE/rv = %s, φa = %s, ψa = %s, λLT = %s <i>cl. %s</i>", m_fmt.NoDim(lt.lambda), m_fmt.NoDim(lt.phi),
             m_fmt.NoDim(s.psi), m_fmt.NoDim(lt.lambdaLT), lt.source);
    else {
        Line(L"λ = LE/ry = %s, λ/x = %s/%s = %s", m_fmt.NoDim(lt.lambda), m_fmt.NoDim(lt.lambda), m_fmt.NoDim(lt.x),
             m_fmt.NoDim(lt.lambda / lt.x));
        Line(L"λLT = u v λ βW^0.5 = %s * %s * %s * %s^0.5 = %s <i>cl. %s</i>", m_fmt.NoDim(lt.u), m_fmt.NoDim(lt.v),
             m_fmt.NoDim(lt.lambda), m_fmt.NoDim(lt.betaW), m_fmt.NoDim(lt.lambdaLT), lt.source);
    }
    Line(L"λL0 = %s, pb = %s <i>Annex B.2</i>", m_fmt.NoDim(LimitingSlendernessLT(span.py, m.E)),
         m_fmt.Stress(span.strength));
    Line(L"class %i, modulus %s: Mb = %s <i>cl. 4.3.6.4</i>", span.cls, Volume(span.modulus),
         m_fmt.Moment(span.resistance));
    MomentFactorLine(L"mLT", span.m, span.momentX, true, span);
    Line(L"mLT M/Mb = %s * %s/%s = %s", m_fmt.NoDim(span.m), m_fmt.Moment(span.effect), m_fmt.Moment(span.resistance),
         Verdict(span.utilisation, false));
}

void CSteelMemberBS5950::Text::Interaction(const InteractionResult& r)
{
    const SpanResult& x = m_member.m_spans[static_cast<std::size_t>(r.major)];
    const SpanResult& y = m_member.m_spans[static_cast<std::size_t>(r.minor)];
    Line(L"<h5>Interaction, %s to %s</h5>", m_fmt.Length(r.start), m_fmt.Length(r.end));
    const CResultIndent indent(&m_result);
    if (r.third == 0.0 && CString(r.clause) == L"4.8.3.3.1") {
        Line(L"Fc/Pc + mx Mx/(py Zx) + my My/(py Zy) = %s + %s + %s = %s <i>cl. %s</i>",
             m_fmt.Util(std::max(x.utilisation, y.utilisation)), m_fmt.Util(r.MxTerm), m_fmt.Util(r.MyTerm),
             Verdict(r.first, false), r.clause);
        Line(L"Fc/Pcy + mLT MLT/Mb + my My/(py Zy) = %s + %s + %s = %s <i>cl. %s</i>", m_fmt.Util(y.utilisation),
             m_fmt.Util(r.MLTTerm), m_fmt.Util(r.MyTerm), Verdict(r.second, false), r.clause);
        return;
    }
    const wchar_t* k = m_member.Properties().IsHollow() ? L"0.5 " : L"";
    Line(L"Fc/Pcx + mx Mx/Mcx (1 + 0.5 Fc/Pcx) + 0.5 myx My/Mcy = %s <i>cl. %s</i>", Verdict(r.first, false), r.clause);
    Line(L"Fc/Pcy + %smLT MLT/Mb + my My/Mcy (1 + %sFc/Pcy) = %s <i>cl. %s</i>", k, k, Verdict(r.second, false),
         r.clause);
    Line(L"mx Mx(1 + 0.5 Fc/Pcx)/(Mcx(1 - Fc/Pcx)) + my My(1 + %sFc/Pcy)/(Mcy(1 - Fc/Pcy)) = %s <i>cl. %s</i>", k,
         Verdict(r.third, false), r.clause);
}

void CSteelMemberBS5950::Text::LedgerTable()
{
    Line(L"<h4>Ledger of checks:</h4>");
    CString rows = L"<table><align left>Clause\tRule\tStatus\tWhere\tUtilisation\tResistance\n";
    for (const LedgerEntry& e : m_member.m_ledger.Entries()) {
        CString where;
        if (e.position >= 0)
            where.Format(L"position %i at %s", e.position + 1, m_fmt.Length(e.start));
        else if (e.start < e.end)
            where.Format(L"%s to %s", m_fmt.Length(e.start), m_fmt.Length(e.end));
        CString resistance;
        if (e.quantity != Quantity::None)
            resistance.Format(L"%s = %s", e.symbol,
                              e.quantity == Quantity::Force    ? m_fmt.Force(e.resistance)
                              : e.quantity == Quantity::Moment ? m_fmt.Moment(e.resistance)
                                                               : m_fmt.Stress(e.resistance));
        const bool done = e.status == CheckStatus::Passed || e.status == CheckStatus::Failed;
        const CString name = e.governing ? CString(L"<b>") + RuleName(e.rule) + L" (governs)</b>" : RuleName(e.rule);
        const CString status = e.status == CheckStatus::Failed ? CString(L"<red>failed</red>") : StatusName(e.status);
        rows.AppendFormat(L"%s\t%s\t%s%s%s\t%s\t%s\t%s\n", e.clause, name, status, *e.reason ? L": " : L"", e.reason,
                          where, done && e.utilisation > 0.0 ? m_fmt.Util(e.utilisation) : CString(), resistance);
    }
    rows += L"</align></table>\n";
    m_result.AddOutputString(rows);
}

void CSteelMemberBS5950::Text::Summary()
{
    Line(L"<h4>Assumptions:</h4>");
    if (m_member.m_assumptions.empty()) Line(L"\tnone");
    for (const Assumption& a : m_member.m_assumptions)
        Line(L"\t<b>%s</b>: %s", a.name, AssumptionText(a, m_fmt));
    LedgerTable();
}

CString CSteelMemberBS5950::GetSectionText(const CDesFormat& fmt) const
{
    CString text;
    if (!m_section.HasSection()) return L"no section\n";
    const SectionProperties& s = m_section.Properties();
    text = GetKeltrixSec().Component(0).Description(true) + L", " + FabricationName(s.fabrication) + L"\n";
    text += const_cast<CSectionBS5950&>(m_section).SectGeomString(fmt); // not const in the base, and changes nothing
    text.AppendFormat(L"A = %.4G cm², Ix = %.5G cm⁴, Iy = %.5G cm⁴\n", s.A * 1e4, s.Ix * 1e8, s.Iy * 1e8);
    text.AppendFormat(L"Zx = %.4G cm³, Zy = %.4G cm³, Sx = %.4G cm³, Sy = %.4G cm³\n", s.Zx * 1e6, s.Zy * 1e6,
                      s.Sx * 1e6, s.Sy * 1e6);
    text.AppendFormat(L"rx = %.4G cm, ry = %.4G cm, J = %.4G cm⁴\n", s.rx * 1e2, s.ry * 1e2, s.J * 1e8);
    if (s.u > 0.0) text.AppendFormat(L"u = %.3f, x = %.1f <i>Annex B.2</i>\n", s.u, s.x);
    if (s.shape == Shape::Angle)
        text.AppendFormat(L"Zu = %.4G cm³, Zv = %.4G cm³, rv = %.4G cm, tan α = %.3f\n", s.Zu * 1e6, s.Zv * 1e6,
                          s.rv * 1e2, std::tan(s.alpha));
    if (!m_hasGrade) return text + L"no grade\n";
    const Material& m = m_section.Steel();
    if (!m.IsValid()) {
        text.AppendFormat(L"Grade %s: <red>%s</red>\n", m_grade.Name(), m.refusal);
        return text;
    }
    text.AppendFormat(L"Grade %s, thickest element %s m: py = %s <i>cl. 3.1.1%s</i>, E = %s\n", m_grade.Name(),
                      fmt.LengthSmall(s.thickest), fmt.Stress(m.py), m.grade == Grade::User ? L"" : L", Table 9",
                      fmt.Stress(m.E));
    return text;
}

} // namespace Keltrix::BS5950
