#include "MemberText.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::BS5950 {

using Steel::CCodeShare;
using Steel::CMemberResult;
using Steel::CResultIndent;

namespace {

const wchar_t* PlaceName(const PositionResult& p)
{
    if (p.place != Place::Inside) return p.place == Place::LeftEnd ? L"left end" : L"right end";
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

CString CSteelMemberBS5950::Text::Volume(double m3) const
{
    CString text;
    text.Format(L"%.4G cm³", m3 * 1e6);
    return text;
}

CString CSteelMemberBS5950::Text::Area(double m2) const
{
    CString text;
    text.Format(L"%.4G cm²", m2 * 1e4);
    return text;
}

void CSteelMemberBS5950::Text::Refusal(const wchar_t* reason) { Line(L"<red><b>Not checked:</b></red> %s", reason); }

void CSteelMemberBS5950::Text::Class(const PositionResult& p)
{
    Line(L"Class <b>%i</b> <i>cl. 3.5</i>, ε = (275/py)^0.5 = %s, r1 = %s, r2 = %s", p.cls.cls,
         m_fmt.NoDim(p.cls.epsilon), m_fmt.NoDim(p.cls.r1), m_fmt.NoDim(p.cls.r2));
    const CResultIndent indent(&m_result);
    if (p.cls.count == 0) Line(L"no compression in the section, so no element to classify");
    for (int i = 0; i < p.cls.count; ++i) {
        const ElementClass& e = p.cls.elements[static_cast<std::size_t>(i)];
        if (!e.compressed) {
            Line(L"%s %s = %s: not in compression", e.element, e.ratioName, m_fmt.NoDim(e.ratio));
            continue;
        }
        // Rows of the tables for axial compression alone have a limit of class 3 only.
        const auto limit = [&](int i3) {
            const double value = e.limit[static_cast<std::size_t>(i3)];
            return value > 0.0 ? m_fmt.NoDim(value) : CString(L"-");
        };
        Line(L"%s %s = %s, limits %s, %s, %s: class %i <i>%s</i>", e.element, e.ratioName, m_fmt.NoDim(e.ratio),
             limit(0), limit(1), limit(2), e.cls, e.source);
    }
    if (p.cls.cls == 3 && p.momentMajor + p.momentMinor > 0.0)
        Line(L"semi-compact <i>cl. 3.5.6</i>: %s = %s, %s = %s", p.cls.WxName, Volume(p.cls.Wx), p.cls.WyName,
             Volume(p.cls.Wy));
    if (p.cls.cls == 4)
        Line(L"slender <i>cl. 3.6</i>: Aeff = %s, %s = %s, %s = %s; design strength <i>cl. 3.6.5</i> %s in "
             L"compression, %s "
             L"about x-x, %s about y-y",
             Area(p.cls.Aeff), p.cls.WxName, Volume(p.cls.Wx), p.cls.WyName, Volume(p.cls.Wy),
             m_fmt.Stress(p.cls.pyCompression), m_fmt.Stress(p.cls.pyMomentX), m_fmt.Stress(p.cls.pyMomentY));
}

void CSteelMemberBS5950::Text::Axial(const PositionResult& p)
{
    const SectionProperties& s = m_member.Properties();
    const Material& m = m_member.Steel();
    if (p.actions.F > 0.0) {
        const double Ae = s.A * std::min(1.0, m.Ke * m_member.m_section.Design().netGross);
        if (p.eccentricTie)
            Line(L"Tension <i>cl. 4.6.3.1</i>: Pt = py(Ae - 0.5 a2), Ae = %s, a2 the unconnected part: Pt = %s",
                 Area(Ae), m_fmt.Force(p.Pt));
        else
            Line(L"Tension <i>cl. 4.6.1, 3.4.3</i>: Ae = Ke (net/gross) A <= A = %s, Pt = py Ae = %s", Area(Ae),
                 m_fmt.Force(p.Pt));
        Line(L"\tFt/Pt = %s/%s = %s", m_fmt.Force(p.actions.F), m_fmt.Force(p.Pt), Verdict(p.axial, true));
    }
    if (p.actions.F < 0.0) {
        Line(L"Compression <i>cl. 4.8.3.2</i>: %s py = %s * %s = %s", p.cls.cls == 4 ? L"Aeff" : L"Ag",
             Area(p.cls.Aeff), m_fmt.Stress(p.cls.pyCompression), m_fmt.Force(p.Pz));
        Line(L"\tFc/(A py) = %s/%s = %s", m_fmt.Force(-p.actions.F), m_fmt.Force(p.Pz), Verdict(p.axial, true));
    }
}

void CSteelMemberBS5950::Text::Shear(const PositionResult& p)
{
    const SectionProperties& s = m_member.Properties();
    const Material& m = m_member.Steel();
    if (p.actions.Fvy != 0.0) {
        Line(L"Shear along the web <i>cl. 4.2.3</i>: Pvy = 0.6 py Av = 0.6 * %s * %s = %s", m_fmt.Stress(m.py),
             Area(s.Avy), m_fmt.Force(p.Pvy));
        Line(L"\tFvy/Pvy = %s/%s = %s", m_fmt.Force(p.actions.Fvy), m_fmt.Force(p.Pvy), Verdict(p.shearMajor, true));
    }
    if (p.Vw > 0.0 && p.actions.Fvy != 0.0) {
        Line(L"Shear buckling <i>cl. 4.4.5, H.1</i>: d/t = %s above %s, no stiffeners, qw = %s, Vw = d t qw = %s",
             m_fmt.NoDim(s.d / s.t), s.IsWelded() ? L"62ε" : L"70ε",
             m_fmt.Stress(ShearBucklingStrength(s.d / s.t, m.py)), m_fmt.Force(p.Vw));
        Line(L"\tFvy/Vw = %s", Verdict(p.shearBuckling, true));
    }
    if (p.actions.Fvx != 0.0) {
        Line(L"Shear along the flanges <i>cl. 4.2.3</i>: Pvx = 0.6 py Av = 0.6 * %s * %s = %s", m_fmt.Stress(m.py),
             Area(s.Avx), m_fmt.Force(p.Pvx));
        Line(L"\tFvx/Pvx = %s/%s = %s", m_fmt.Force(p.actions.Fvx), m_fmt.Force(p.Pvx), Verdict(p.shearMinor, true));
    }
}

void CSteelMemberBS5950::Text::Moment(const PositionResult& p)
{
    const SectionProperties& s = m_member.Properties();
    const bool angle = s.shape == Shape::Angle;
    const double limit = std::min(m_member.m_section.Design().plasElas, 1.5);
    const auto one = [&](const wchar_t* axis, double effect, double capacity, double py, double W, const wchar_t* W_,
                         double Z, double Fv, double Pv, double utilisation) {
        if (effect == 0.0) return;
        const double rho = HighShearFactor(Fv, Pv);
        if (rho > 0.0)
            Line(L"Moment <i>cl. 4.2.5.3</i>: Fv > 0.6 Pv, ρ = (2 Fv/Pv - 1)² = %s taken off %s", m_fmt.NoDim(rho), W_);
        if (p.flangesOnly && effect == p.momentMajor)
            Line(L"Moment <i>cl. 4.4.4.2</i>: thin web with Fv > 0.6 Vw, the flanges alone carry the moment");
        Line(L"Moment <i>cl. 4.2.5</i>: Mc%s = py %s = %s * %s, at most %s py Z (Z = %s): %s", axis, W_,
             m_fmt.Stress(py), Volume(W), m_fmt.NoDim(limit), Volume(Z), m_fmt.Moment(capacity));
        Line(L"\tM%s/Mc%s = %s/%s = %s", axis, axis, m_fmt.Moment(effect), m_fmt.Moment(capacity),
             Verdict(utilisation, true));
    };
    if (angle && (p.momentMajor != 0.0 || p.momentMinor != 0.0))
        Line(L"Moments about the principal axes, α = %s°", m_fmt.NoDim(s.alpha * 57.29577951308232));
    one(angle ? L"u" : L"x", p.momentMajor, p.Mcx, p.cls.pyMomentX, p.cls.Wx, p.cls.WxName, angle ? s.Zu : s.Zx,
        p.actions.Fvy, p.Pvy, p.major);
    one(angle ? L"v" : L"y", p.momentMinor, p.Mcy, p.cls.pyMomentY, p.cls.Wy, p.cls.WyName, angle ? s.Zv : s.Zy,
        p.actions.Fvx, p.Pvx, p.minor);
}

void CSteelMemberBS5950::Text::Combined(const PositionResult& p)
{
    const int kinds = (p.actions.F != 0.0) + (p.momentMajor != 0.0) + (p.momentMinor != 0.0);
    if (kinds < 2) return;
    const bool tension = p.actions.F > 0.0;
    if (p.Mrx > 0.0) {
        Line(L"Combined <i>cl. %s, I.2</i>: (Mx/Mrx)^z1 + (My/Mry)^z2, Mrx = %s, Mry = %s, z1 = %s, z2 = %s",
             tension ? L"4.8.2.3" : L"4.8.3.2 b", m_fmt.Moment(p.Mrx), m_fmt.Moment(p.Mry), m_fmt.NoDim(p.z1),
             m_fmt.NoDim(p.z2));
        Line(L"\t= %s", Verdict(p.combined, true));
        return;
    }
    Line(L"Combined <i>cl. %s</i>: %s + Mx/Mcx + My/Mcy = %s + %s + %s = %s", tension ? L"4.8.2.2" : L"4.8.3.2 a",
         tension ? L"Ft/Pt" : L"Fc/(A py)", m_fmt.Util(p.axial), m_fmt.Util(p.major), m_fmt.Util(p.minor),
         Verdict(p.combined, true));
}

void CSteelMemberBS5950::Text::Position(std::size_t index)
{
    const PositionResult& p = m_member.m_positions[index];
    const Actions& a = p.actions;
    m_result.SetCurSubSpan(p.Entry());
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
    Class(p);
    Axial(p);
    Shear(p);
    Moment(p);
    Combined(p);
    const LedgerEntry* torsion = m_member.m_ledger.Find(Rule::Torsion);
    if (torsion && torsion->status == CheckStatus::NotEvaluated && a.Mt != 0.0)
        Line(L"<red>NOT CHECKED</red>: torsion of %s. BS 5950-1:2000 has no rule for torsion; check it by other means.",
             m_fmt.Moment(a.Mt));
}

void CSteelMemberBS5950::Text::Local(bool alongMember)
{
    const std::vector<PositionResult>& positions = m_member.m_positions;
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
}

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
    Line(L"<h5>%s, %s to %s, length %s</h5>", what, m_fmt.Length(span.start), m_fmt.Length(span.end),
         m_fmt.Length(span.end - span.start));
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
    const wchar_t* const of = span.flange[0] == span.flange[1] ? L""
                              : span.flange[0]                 ? L" of flange 1 (top)"
                                                               : L" of flange 2 (bottom)";
    const CString what =
        CString(L"Lateral-torsional buckling") + of + (span.turned ? L", the angle turned the other way" : L"");
    SpanTitle(what.GetString(), span);
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
