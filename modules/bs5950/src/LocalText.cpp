// The text of the local checks. Every equation shows the numbers that its result follows from.

#include <algorithm>
#include <cmath>

#include "CrossSection.h"
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

void MemberText::Class(const PositionResult& p)
{
    const CString py = m_fmt.NoDim(m_model.Steel().py * 1e-6);
    Line(L"Class <b>%i</b> <i>cl. 3.5</i>, ε = (275/py)^0.5 = (275/%s)^0.5 = %s, r1 = %s, r2 = %s", p.cls.cls, py,
         m_fmt.NoDim(p.cls.epsilon), m_fmt.NoDim(p.cls.r1), m_fmt.NoDim(p.cls.r2));
    const CResultIndent indent(&m_result);
    if (p.cls.count == 0) Line(L"no compression in the section, so no element to classify");
    for (int i = 0; i < p.cls.count; ++i)
        Element(p.cls.elements[static_cast<std::size_t>(i)]);
    if (p.cls.cls == 3 && p.momentMajor + p.momentMinor > 0.0)
        Line(L"semi-compact <i>cl. 3.5.6</i>: %s = %s, %s = %s", p.cls.WxName, Volume(p.cls.Wx), p.cls.WyName,
             Volume(p.cls.Wy));
    if (p.cls.cls == 4)
        Line(L"slender <i>cl. 3.6</i>: Aeff = %s, %s = %s, %s = %s; design strength <i>cl. 3.6.5</i> %s in "
             L"compression, %s about x-x, %s about y-y",
             Area(p.cls.Aeff), p.cls.WxName, Volume(p.cls.Wx), p.cls.WyName, Volume(p.cls.Wy),
             m_fmt.Stress(p.cls.pyCompression), m_fmt.Stress(p.cls.pyMomentX), m_fmt.Stress(p.cls.pyMomentY));
}

void MemberText::Element(const ElementClass& e)
{
    if (!e.compressed) {
        Line(L"%s %s = %s: not in compression", e.element, e.ratioName, m_fmt.NoDim(e.ratio));
        return;
    }
    // Rows of the tables for axial compression alone have a limit of class 3 only; a web that is in tension nearly all over
    // its depth has none.
    const auto limit = [&](std::size_t i) {
        const double value = e.limit[i];
        return value > 1e6 ? CString(L"no limit") : value > 0.0 ? m_fmt.NoDim(value) : CString(L"-");
    };
    Line(L"%s %s = %s, limits %s, %s, %s: class %i <i>%s</i>", e.element, e.ratioName, m_fmt.NoDim(e.ratio), limit(0),
         limit(1), limit(2), e.cls, e.source);
}

void MemberText::Tension(const PositionResult& p)
{
    const SectionProperties& s = m_model.Properties();
    const Material& m = m_model.Steel();
    const double netGross = m_model.section.Design().netGross;
    const double Ae = s.A * std::min(1.0, m.Ke * netGross);
    const CString Ft = m_fmt.Force(p.actions.F);
    Line(L"Tension <i>cl. 4.6.1, 3.4.3</i>: Ae = min(Ke (net/gross) A, A) = min(%s * %s * %s, %s) = %s",
         m_fmt.NoDim(m.Ke), m_fmt.NoDim(netGross), Area(s.A), Area(s.A), Area(Ae));
    Line(L"\tPt = py Ae = %s * %s = %s", m_fmt.Stress(m.py), Area(Ae), m_fmt.Force(p.Pt));
    Line(L"\tFt/Pt = %s/%s = %s", Ft, m_fmt.Force(p.Pt), Verdict(p.actions.F / p.Pt, true));
    if (!p.eccentricTie) return;
    const double a2 = UnconnectedArea(s);
    Line(L"Eccentric connection <i>cl. 4.6.3.1</i>: Pt = max(0, py(Ae - 0.5 a2)) = max(0, %s * (%s - 0.5 * %s)) = %s",
         m_fmt.Stress(m.py), Area(Ae), Area(a2), m_fmt.Force(p.Pte));
    Line(L"\ta2 = %s is the part that is not connected", Area(a2));
    Line(L"\tFt/Pt = %s/%s = %s", Ft, m_fmt.Force(p.Pte), Verdict(p.actions.F / p.Pte, true));
}

void MemberText::Axial(const PositionResult& p)
{
    if (p.actions.F > 0.0) Tension(p);
    if (!(p.actions.F < 0.0)) return;
    const wchar_t* const area = p.cls.Aeff < m_model.Properties().A ? L"Aeff" : L"Ag";
    const wchar_t* const py = p.cls.pyCompression < m_model.Steel().py ? L"pyr" : L"py";
    Line(L"Compression <i>cl. 4.8.3.2</i>: Pz = %s %s = %s * %s = %s", area, py, Area(p.cls.Aeff),
         m_fmt.Stress(p.cls.pyCompression), m_fmt.Force(p.Pz));
    Line(L"\tFc/Pz = %s/%s = %s", m_fmt.Force(-p.actions.F), m_fmt.Force(p.Pz), Verdict(p.axial, true));
}

void MemberText::Shear(const PositionResult& p)
{
    const SectionProperties& s = m_model.Properties();
    const CString py = m_fmt.Stress(m_model.Steel().py);
    const auto ratio = [&](const wchar_t* V, const wchar_t* P, double force, double capacity, double utilisation) {
        Line(L"\t%s/%s = %s/%s = %s", V, P, m_fmt.Force(force), m_fmt.Force(capacity), Verdict(utilisation, true));
    };
    if (p.actions.Fvy != 0.0) {
        Line(L"Shear along the web <i>cl. 4.2.3</i>: Pvy = 0.6 py Av = 0.6 * %s * %s = %s", py, Area(s.Avy),
             m_fmt.Force(p.Pvy));
        ratio(L"Fvy", L"Pvy", p.actions.Fvy, p.Pvy, p.shearMajor);
    }
    if (p.Vw > 0.0 && p.actions.Fvy != 0.0) {
        ShearBuckling(Axis::Y, s.d, s.t, p.Vw);
        ratio(L"Fvy", L"Vw", p.actions.Fvy, p.Vw, p.shearBuckling);
    }
    if (p.actions.Fvx != 0.0) {
        Line(L"Shear along the flanges <i>cl. 4.2.3</i>: Pvx = 0.6 py Av = 0.6 * %s * %s = %s", py, Area(s.Avx),
             m_fmt.Force(p.Pvx));
        ratio(L"Fvx", L"Pvx", p.actions.Fvx, p.Pvx, p.shearMinor);
    }
    if (p.Vwx > 0.0 && p.actions.Fvx != 0.0) {
        ShearBuckling(Axis::X, s.b, s.T, p.Vwx);
        ratio(L"Fvx", L"Vwx", p.actions.Fvx, p.Vwx, p.shearBucklingX);
    }
}

void MemberText::ShearBuckling(Axis direction, double depth, double thickness, double Vw)
{
    const SectionProperties& s = m_model.Properties();
    const double spacing = m_model.options.stiffenerSpacing;
    const double py = m_model.Steel().py;
    const bool stiffened = direction == Axis::Y && spacing > 0.0;
    const CString stiffeners =
        stiffened ? CString(L"stiffeners ") + m_fmt.Length(spacing) + L" apart" : CString(L"no stiffeners");
    const bool along = direction == Axis::Y;
    const bool two = s.shape == Shape::RHS;
    Line(L"Shear buckling%s <i>cl. 4.4.5, H.1</i>: %s above %s, %s", along ? L"" : L" of the walls across",
         along ? L"d/t" : L"b/T", s.IsWelded() ? L"62ε" : L"70ε", stiffeners);
    Line(L"\t%s = %s/%s = %s, qw = %s", along ? L"d/t" : L"b/T", Small(depth), Small(thickness),
         m_fmt.NoDim(depth / thickness),
         m_fmt.Stress(ShearBucklingStrength(depth / thickness, py, stiffened ? spacing / depth : UNSTIFFENED)));
    Line(L"\t%s = %s%s qw = %s%s * %s * %s = %s", along ? L"Vw" : L"Vwx", two ? L"2 " : L"", along ? L"d t" : L"b T",
         two ? L"2 * " : L"", Small(depth), Small(thickness),
         m_fmt.Stress(ShearBucklingStrength(depth / thickness, py, stiffened ? spacing / depth : UNSTIFFENED)),
         m_fmt.Force(Vw));
}

// Capacity, class modulus, and what high shear takes off, about one axis.
struct MemberText::Bending {
    Axis axis;
    const wchar_t* subscript;
    double effect, capacity, utilisation;
    double py, W;
    const wchar_t* modulus;
    double Z, Sv;
    bool plastic;
    double Fv, Pv;
    bool flangesOnly;
};

void MemberText::Moment(const PositionResult& p)
{
    const SectionProperties& s = m_model.Properties();
    const bool angle = s.shape == Shape::Angle;
    if (angle && (p.momentMajor != 0.0 || p.momentMinor != 0.0)) PrincipalMoments(p);
    Moment({Axis::X, angle ? L"u" : L"x", p.momentMajor, p.Mcx, p.major, p.cls.pyMomentX, p.cls.Wx, p.cls.WxName,
            angle ? p.cls.Wx : s.Zx, s.Svx, p.cls.WxIsPlastic, p.actions.Fvy, p.Pvy, p.flangesOnly},
           p.cls);
    Moment({Axis::Y, angle ? L"v" : L"y", p.momentMinor, p.Mcy, p.minor, p.cls.pyMomentY, p.cls.Wy, p.cls.WyName,
            angle ? p.cls.Wy : s.Zy, s.Svy, p.cls.WyIsPlastic, p.actions.Fvx, p.Pvx, p.flangesOnlyY},
           p.cls);
}

void MemberText::PrincipalMoments(const PositionResult& p)
{
    const SectionProperties& s = m_model.Properties();
    const CString c = m_fmt.NoDim(std::cos(s.alpha));
    const CString n = m_fmt.NoDim(std::sin(s.alpha));
    const CString Mx = m_fmt.Moment(p.actions.Mx);
    const CString My = m_fmt.Moment(p.reversed ? -p.actions.My : p.actions.My);
    Line(L"Moments about the principal axes, cos α = %s, sin α = %s%s", c, n,
         p.reversed ? L", the angle turned the other way" : L"");
    Line(L"\tMu = |Mx cos α + My sin α| = |%s * %s + %s * %s| = %s", Mx, c, My, n, m_fmt.Moment(p.momentMajor));
    Line(L"\tMv = |My cos α - Mx sin α| = |%s * %s - %s * %s| = %s", My, c, Mx, n, m_fmt.Moment(p.momentMinor));
}

void MemberText::Moment(const Bending& b, const Classification& c)
{
    if (b.effect == 0.0) return;
    const SectionProperties& s = m_model.Properties();
    const CString py = m_fmt.Stress(b.py);
    const wchar_t* const strength = b.py < m_model.Steel().py ? L"pyr" : L"py";
    if (b.flangesOnly) {
        FlangesOnly(b, c);
    } else {
        const double rho = HighShearFactor(b.Fv, b.Pv);
        const bool angle = s.shape == Shape::Angle;
        CString reduced = b.modulus;
        CString numbers = Volume(b.W);
        if (rho > 0.0) {
            HighShear(b, rho);
            const wchar_t* const values = b.plastic ? L"max(0, %s - %s * %s)" : L"max(0, %s - %s * %s/1.5)";
            if (angle)
                reduced.Format(L"%s (1 - ρ)", b.modulus);
            else
                reduced.Format(b.plastic ? L"max(0, %s - ρ Sv)" : L"max(0, %s - ρ Sv/1.5)", b.modulus);
            if (angle)
                numbers.Format(L"%s * (1 - %s)", Volume(b.W), m_fmt.NoDim(rho));
            else
                numbers.Format(values, Volume(b.W), m_fmt.NoDim(rho), Volume(b.Sv));
        }
        const CString limit = m_fmt.NoDim(std::min(m_model.section.Design().plasElas, 1.5));
        Line(L"Moment <i>cl. 4.2.5</i>: Mc%s = min(%s %s, %s %s Z) = min(%s * %s, %s * %s * %s) = %s", b.subscript,
             strength, reduced, limit, strength, py, numbers, limit, py, Volume(b.Z), m_fmt.Moment(b.capacity));
    }
    Line(L"\tM%s/Mc%s = %s/%s = %s", b.subscript, b.subscript, m_fmt.Moment(b.effect), m_fmt.Moment(b.capacity),
         Verdict(b.utilisation, true));
}

void MemberText::HighShear(const Bending& b, double rho)
{
    if (rho < 1.0)
        Line(L"High shear <i>cl. 4.2.5.3</i>: Fv > 0.6 Pv, ρ = (2 Fv/Pv - 1)² = (2 * %s/%s - 1)² = %s",
             m_fmt.Force(b.Fv), m_fmt.Force(b.Pv), m_fmt.NoDim(rho));
    else
        Line(L"High shear <i>cl. 4.2.5.3</i>: ρ = 1, because Fv is not below Pv");
}

void MemberText::FlangesOnly(const Bending& b, const Classification& c)
{
    const SectionProperties& s = m_model.Properties();
    const bool x = b.axis == Axis::X;
    if (!FlangesAloneMayCarryMoment(c, b.axis)) {
        Line(
            L"Moment <i>cl. 4.4.4.2</i>: <red>NOT CHECKED</red>: thin web with Fv > 0.6 Vw beside a slender flange. Of "
            L"the section as a whole:");
        return;
    }
    const bool first = s.B * s.T <= s.B2 * s.T2;
    const double width = x ? (first ? s.B : s.B2) : s.D;
    const double thickness = x ? (first ? s.T : s.T2) : s.t;
    const double arm = x ? s.hs : s.B - s.t;
    Line(L"Moment <i>cl. 4.4.4.2</i>: thin web with Fv > 0.6 Vw, the flanges alone carry the moment");
    Line(L"\tMc%s = py B T hs = %s * %s * %s * %s = %s", b.subscript, m_fmt.Stress(m_model.Steel().py), Small(width),
         Small(thickness), Small(arm), m_fmt.Moment(b.capacity));
}

void MemberText::Combined(const PositionResult& p)
{
    if (KindsOfAction(p) < 2) return;
    const double F = p.actions.F;
    const wchar_t* const clause = CombinationClause(p);
    if (p.Mrx > 0.0) return MoreExact(p);
    const bool angle = m_model.Properties().shape == Shape::Angle;
    const CString u = m_fmt.Util(p.major);
    const CString v = m_fmt.Util(p.minor);
    const wchar_t* const moments = angle ? L"Mu/Mcu + Mv/Mcv" : L"Mx/Mcx + My/Mcy";
    if (F == 0.0) {
        Line(L"Combined <i>cl. %s</i>: %s = %s + %s = %s", clause, moments, u, v, Verdict(p.major + p.minor, true));
        return;
    }
    if (p.flangesOnly || p.flangesOnlyY)
        Line(L"The flanges that carry the moment alone carry the axial force too: Pf = %s", m_fmt.Force(p.Pf));
    const wchar_t* const axial = p.Pf > 0.0 ? L"F/Pf" : F > 0.0 ? L"Ft/Pt" : L"Fc/Pz";
    const double term = std::abs(F) / (p.Pf > 0.0 ? p.Pf : F > 0.0 ? p.Pt : p.Pz);
    Line(L"Combined <i>cl. %s</i>: %s + %s = %s + %s + %s = %s", clause, axial, moments, m_fmt.Util(term), u, v,
         Verdict(term + p.major + p.minor, true));
}

void MemberText::MoreExact(const PositionResult& p)
{
    const SectionProperties& s = m_model.Properties();
    const double py = m_model.Steel().py;
    const double F = std::abs(p.actions.F);
    const double n = F / (s.A * py);
    const CString strength = m_fmt.Stress(py);
    Line(L"Combined <i>cl. %s</i>: n = F/(A py) = %s/(%s * %s) = %s", CombinationClause(p), m_fmt.Force(F), Area(s.A),
         strength, m_fmt.NoDim(n));
    const auto reduced = [&](const wchar_t* axis, Axis which, double Mc, double Mr) {
        const double Sr = ReducedPlasticModulus(s, which, n);
        Line(L"\tSr%s = %s <i>I.2</i>, Mr%s = min(py Sr%s, Mc%s) = min(%s * %s, %s) = %s", axis, Volume(Sr), axis, axis,
             axis, strength, Volume(Sr), m_fmt.Moment(Mc), m_fmt.Moment(Mr));
    };
    reduced(L"x", Axis::X, p.Mcx, p.Mrx);
    reduced(L"y", Axis::Y, p.Mcy, p.Mry);
    const double x = p.momentMajor == 0.0 ? 0.0 : p.momentMajor / p.Mrx;
    const double y = p.momentMinor == 0.0 ? 0.0 : p.momentMinor / p.Mry;
    Line(L"\t(Mx/Mrx)^z1 + (My/Mry)^z2 = (%s/%s)^%s + (%s/%s)^%s = %s", m_fmt.Moment(p.momentMajor),
         m_fmt.Moment(p.Mrx), m_fmt.NoDim(p.z1), m_fmt.Moment(p.momentMinor), m_fmt.Moment(p.Mry), m_fmt.NoDim(p.z2),
         m_fmt.NoDim(std::pow(x, p.z1) + std::pow(y, p.z2)));
    Line(L"\tlargest of this, the two ratios and the axial force alone = max(%s, %s, %s, %s) = %s",
         m_fmt.NoDim(std::pow(x, p.z1) + std::pow(y, p.z2)), m_fmt.NoDim(x), m_fmt.NoDim(y), m_fmt.NoDim(p.axial),
         Verdict(p.combined, true));
}

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
    Class(p);
    Axial(p);
    Shear(p);
    Moment(p);
    Combined(p);
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
    const SectionProperties& s = m_model.Properties();
    const int entry = w.Entry(static_cast<int>(m_model.subSpans.size()));
    m_result.SetCurSubSpan(entry);
    BeginPart(w.x, w.x, entry);
    Line(L"<h5>Web under %s of %s at %s</h5>", w.onFlange1 ? L"a load" : L"a reaction or an upward load",
         m_fmt.Force(w.force), m_fmt.Length(w.x));
    const CResultIndent indent(&m_result);
    const double k = std::min(s.T, s.T2) + (s.IsWelded() ? 0.0 : s.r);
    const double n = std::min(5.0, 2.0 + 0.6 * w.load.bearingToEnd / k);
    const CString spread = Small(w.load.stiffBearing) + L" + " + m_fmt.NoDim(n) + L" * " + Small(k);
    Line(L"k = %s, n = min(5, 2 + 0.6 be/k) = min(5, 2 + 0.6 * %s/%s) = %s <i>cl. 4.5.2.1</i>", Small(k),
         Small(w.load.bearingToEnd), Small(k), m_fmt.NoDim(n));
    Line(L"Pbw = (b1 + n k) t py = (%s) * %s * %s = %s", spread, Small(s.t), m_fmt.Stress(m_model.Steel().py),
         m_fmt.Force(w.Pbw));
    Line(L"\tF/Pbw = %s/%s = %s", m_fmt.Force(w.force), m_fmt.Force(w.Pbw), Verdict(w.force / w.Pbw, true));
    if (!w.held) {
        Line(L"<red>NOT CHECKED</red>: buckling of the web, because the flange that the load presses on is not held "
             L"laterally");
        return;
    }
    const double ae = w.load.loadToEnd;
    CString share, numbers;
    if (ae < 0.7 * s.d) {
        share = L" (ae + 0.7 d)/(1.4 d)";
        numbers.Format(L" * (%s + 0.7 * %s)/(1.4 * %s)", Small(ae), Small(s.d), Small(s.d));
    }
    Line(L"Px = 25 ε t/((b1 + n k) d)^0.5 Pbw%s = 25 * %s * %s/((%s) * %s)^0.5 * %s%s = %s <i>cl. 4.5.3.1</i>", share,
         m_fmt.NoDim(Epsilon(m_model.Steel().py)), Small(s.t), spread, Small(s.d), m_fmt.Force(w.Pbw), numbers,
         m_fmt.Force(w.Px));
    Line(L"\tF/Px = %s/%s = %s", m_fmt.Force(w.force), m_fmt.Force(w.Px), Verdict(w.force / w.Px, true));
}

} // namespace Keltrix::BS5950
