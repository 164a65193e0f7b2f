// The calculation of the rules of the cross-section, line by line.

#include "LocalLines.h"

#include <algorithm>
#include <cmath>

#include "CrossSection.h"

namespace Keltrix::BS5950 {

using Design::AreaText;
using Design::ModulusText;

CString LocalLines::Ratio(double effect, double resistance) const
{
    return m_fmt.Force(effect) + L"/" + m_fmt.Force(resistance);
}

void LocalLines::Class(const PositionResult& p)
{
    const CString py = m_fmt.NoDim(m_model.Steel().py * 1e-6);
    CString lead;
    lead.Format(L"Class <b>%i</b> <i>cl. 3.5</i>, ", p.cls.cls);
    Step(L"ε", LineValue::Number(p.cls.epsilon))
        .Formula(L"(275/py)^0.5")
        .Values(L"(275/%s)^0.5", py)
        .Lead(lead)
        .Of(L"3.5")
        .Note(L"r1 = %s, r2 = %s", m_fmt.NoDim(p.cls.r1), m_fmt.NoDim(p.cls.r2));
    Indent(1);
    if (p.cls.count == 0) Remark(L"no compression in the section, so no element to classify");
    for (int i = 0; i < p.cls.count; ++i)
        Element(p.cls.elements[static_cast<std::size_t>(i)]);
    if (p.cls.cls == 3 && p.momentMajor + p.momentMinor > 0.0)
        Remark(L"semi-compact <i>cl. 3.5.6</i>: %s = %s, %s = %s", p.cls.WxName, ModulusText(p.cls.Wx), p.cls.WyName,
               ModulusText(p.cls.Wy));
    if (p.cls.cls == 4)
        Remark(L"slender <i>cl. 3.6</i>: Aeff = %s, %s = %s, %s = %s; design strength <i>cl. 3.6.5</i> %s in "
               L"compression, %s about x-x, %s about y-y",
               AreaText(p.cls.Aeff), p.cls.WxName, ModulusText(p.cls.Wx), p.cls.WyName, ModulusText(p.cls.Wy),
               m_fmt.Stress(p.cls.pyCompression), m_fmt.Stress(p.cls.pyMomentX), m_fmt.Stress(p.cls.pyMomentY));
    Indent(-1);
}

void LocalLines::Element(const ElementClass& e)
{
    if (!e.compressed) {
        Remark(L"%s %s = %s: not in compression", e.element, e.ratioName, m_fmt.NoDim(e.ratio));
        return;
    }
    // Rows of the tables for axial compression alone have a limit of class 3 only; a web that is in tension nearly all over
    // its depth has none.
    const auto limit = [&](std::size_t i) {
        const double value = e.limit[i];
        return value > 1e6 ? CString(L"no limit") : value > 0.0 ? m_fmt.NoDim(value) : CString(L"-");
    };
    Step(e.ratioName, LineValue::Number(e.ratio))
        .Lead(CString(e.element) + L" ")
        .Note(L"limits %s, %s, %s: class %i", limit(0), limit(1), limit(2), e.cls)
        .Cite(e.source);
}

double LocalLines::EffectiveTieArea() const
{
    return m_model.Properties().A * std::min(1.0, m_model.Steel().Ke * m_model.section.Design().netGross);
}

void LocalLines::Tension(const PositionResult& p)
{
    const SectionProperties& s = m_model.Properties();
    const Material& m = m_model.Steel();
    const CString Ae = AreaText(EffectiveTieArea());
    Step(L"Ae", LineValue::Area(EffectiveTieArea()))
        .Formula(L"min(Ke (net/gross) A, A)")
        .Values(L"min(%s * %s * %s, %s)", m_fmt.NoDim(m.Ke), m_fmt.NoDim(m_model.section.Design().netGross),
                AreaText(s.A), AreaText(s.A))
        .Lead(L"Tension <i>cl. 4.6.1, 3.4.3</i>: ")
        .Of(L"3.4.3");
    Step(L"Pt", LineValue::Force(p.Pt))
        .Formula(L"py Ae")
        .Values(L"%s * %s", m_fmt.Stress(m.py), Ae)
        .Lead(L"\t")
        .Of(L"4.6.1");
    Step(L"Ft/Pt", LineValue::Utilisation(p.actions.F / p.Pt, true))
        .Values(L"%s", Ratio(p.actions.F, p.Pt))
        .Lead(L"\t");
}

void LocalLines::EccentricTie(const PositionResult& p)
{
    const CString a2 = AreaText(UnconnectedArea(m_model.Properties()));
    Step(L"Pt", LineValue::Force(p.Pte))
        .Formula(L"max(0, py(Ae - 0.5 a2))")
        .Values(L"max(0, %s * (%s - 0.5 * %s))", m_fmt.Stress(m_model.Steel().py), AreaText(EffectiveTieArea()), a2)
        .Lead(L"Eccentric connection <i>cl. 4.6.3.1</i>: ")
        .Of(L"4.6.3.1");
    Step(L"a2", LineValue::Area(UnconnectedArea(m_model.Properties())))
        .Note(L"the part that is not connected")
        .Lead(L"\t");
    Step(L"Ft/Pt", LineValue::Utilisation(p.actions.F / p.Pte, true))
        .Values(L"%s", Ratio(p.actions.F, p.Pte))
        .Lead(L"\t");
}

void LocalLines::Compression(const PositionResult& p)
{
    const wchar_t* const area = p.cls.Aeff < m_model.Properties().A ? L"Aeff" : L"Ag";
    const wchar_t* const py = p.cls.pyCompression < m_model.Steel().py ? L"pyr" : L"py";
    Step(L"Pz", LineValue::Force(p.Pz))
        .Formula(L"%s %s", area, py)
        .Values(L"%s * %s", AreaText(p.cls.Aeff), m_fmt.Stress(p.cls.pyCompression))
        .Lead(L"Compression <i>cl. 4.8.3.2</i>: ")
        .Of(L"4.8.3.2");
    Step(L"Fc/Pz", LineValue::Utilisation(p.axial, true)).Values(L"%s", Ratio(-p.actions.F, p.Pz)).Lead(L"\t");
}

void LocalLines::ShearMajor(const PositionResult& p)
{
    Step(L"Pvy", LineValue::Force(p.Pvy))
        .Formula(L"0.6 py Av")
        .Values(L"0.6 * %s * %s", m_fmt.Stress(m_model.Steel().py), AreaText(m_model.Properties().Avy))
        .Lead(L"Shear along the web <i>cl. 4.2.3</i>: ")
        .Of(L"4.2.3");
    Step(L"Fvy/Pvy", LineValue::Utilisation(p.shearMajor, true))
        .Values(L"%s", Ratio(ShearAlong(m_model.Properties(), p, Axis::Y).Fv, p.Pvy))
        .Lead(L"\t");
}

void LocalLines::ShearMinor(const PositionResult& p)
{
    Step(L"Pvx", LineValue::Force(p.Pvx))
        .Formula(L"0.6 py Av")
        .Values(L"0.6 * %s * %s", m_fmt.Stress(m_model.Steel().py), AreaText(m_model.Properties().Avx))
        .Lead(L"Shear along the flanges <i>cl. 4.2.3</i>: ")
        .Of(L"4.2.3");
    Step(L"Fvx/Pvx", LineValue::Utilisation(p.shearMinor, true))
        .Values(L"%s", Ratio(ShearAlong(m_model.Properties(), p, Axis::X).Fv, p.Pvx))
        .Lead(L"\t");
}

void LocalLines::ShearBuckling(const PositionResult& p, Axis direction)
{
    const SectionProperties& s = m_model.Properties();
    const bool along = direction == Axis::Y;
    const double depth = along ? s.d : s.b;
    const double thickness = along ? s.t : s.T;
    const double spacing = m_model.StiffenerSpacing(direction);
    const bool stiffened = along && m_model.options.stiffenerSpacing > 0.0;
    const CString stiffeners =
        stiffened ? CString(L"stiffeners ") + m_fmt.Length(spacing) + L" apart" : CString(L"no stiffeners");
    const bool two = s.shape == Shape::RHS;
    const wchar_t* const ratio = along ? L"d/t" : L"b/T";
    const CString qw = m_fmt.Stress(
        ShearBucklingStrength(depth / thickness, m_model.Steel().py, stiffened ? spacing / depth : UNSTIFFENED));
    Remark(L"Shear buckling%s <i>cl. 4.4.5, H.1</i>: %s above %s, %s", along ? L"" : L" of the walls across", ratio,
           s.IsWelded() ? L"62ε" : L"70ε", stiffeners);
    Step(ratio, LineValue::Number(depth / thickness))
        .Values(L"%s/%s", DimensionText(depth), DimensionText(thickness))
        .Lead(L"\t")
        .Of(L"4.4.5")
        .Note(L"qw = %s", qw);
    Step(along ? L"Vw" : L"Vwx", LineValue::Force(along ? p.Vw : p.Vwx))
        .Formula(L"%s%s qw", two ? L"2 " : L"", along ? L"d t" : L"b T")
        .Values(L"%s%s * %s * %s", two ? L"2 * " : L"", DimensionText(depth), DimensionText(thickness), qw)
        .Lead(L"\t")
        .Of(L"4.4.5, H.1");
    if (along)
        Step(L"Fvy/Vw", LineValue::Utilisation(p.shearBuckling, true))
            .Values(L"%s", Ratio(p.actions.Fvy, p.Vw))
            .Lead(L"\t");
    else
        Step(L"Fvx/Vwx", LineValue::Utilisation(p.shearBucklingX, true))
            .Values(L"%s", Ratio(p.actions.Fvx, p.Vwx))
            .Lead(L"\t");
}

// Capacity, class modulus, and what high shear takes off, about one axis.
struct LocalLines::Bending {
    Axis axis;
    const wchar_t* capacityName;
    const wchar_t* ratioName;
    double effect, capacity, utilisation;
    double py, W;
    const wchar_t* modulus;
    double Z, Sv;
    bool plastic;
    double Fv, Pv;
    bool flangesOnly;
};

LocalLines::Bending LocalLines::BendingOf(const PositionResult& p, Axis axis) const
{
    const SectionProperties& s = m_model.Properties();
    const bool angle = s.shape == Shape::Angle;
    const ShearPair shear = ShearBesideMoment(s, p, axis);
    if (axis == Axis::X)
        return {axis,
                angle ? L"Mcu" : L"Mcx",
                angle ? L"Mu/Mcu" : L"Mx/Mcx",
                p.momentMajor,
                p.Mcx,
                p.major,
                p.cls.pyMomentX,
                p.cls.Wx,
                p.cls.WxName,
                angle ? p.cls.Wx : s.Zx,
                s.Svx,
                p.cls.WxIsPlastic,
                shear.Fv,
                shear.Pv,
                p.flangesOnly};
    return {axis,
            angle ? L"Mcv" : L"Mcy",
            angle ? L"Mv/Mcv" : L"My/Mcy",
            p.momentMinor,
            p.Mcy,
            p.minor,
            p.cls.pyMomentY,
            p.cls.Wy,
            p.cls.WyName,
            angle ? p.cls.Wy : s.Zy,
            s.Svy,
            p.cls.WyIsPlastic,
            shear.Fv,
            shear.Pv,
            p.flangesOnlyY};
}

void LocalLines::PrincipalMoments(const PositionResult& p)
{
    const SectionProperties& s = m_model.Properties();
    const CString c = m_fmt.NoDim(std::cos(s.alpha));
    const CString n = m_fmt.NoDim(std::sin(s.alpha));
    const CString Mx = m_fmt.Moment(p.actions.Mx);
    const CString My = m_fmt.Moment(p.reversed ? -p.actions.My : p.actions.My);
    Remark(L"Moments about the principal axes, cos α = %s, sin α = %s%s", c, n,
           p.reversed ? L", the angle turned the other way" : L"");
    Step(L"Mu", LineValue::Moment(p.momentMajor))
        .Formula(L"|Mx cos α + My sin α|")
        .Values(L"|%s * %s + %s * %s|", Mx, c, My, n)
        .Lead(L"\t");
    Step(L"Mv", LineValue::Moment(p.momentMinor))
        .Formula(L"|My cos α - Mx sin α|")
        .Values(L"|%s * %s - %s * %s|", My, c, Mx, n)
        .Lead(L"\t");
}

void LocalLines::Moment(const PositionResult& p, Axis axis)
{
    const Bending b = BendingOf(p, axis);
    if (b.flangesOnly)
        FlangesOnly(b, p.cls);
    else
        Capacity(b);
    Step(b.ratioName, LineValue::Utilisation(b.utilisation, true))
        .Values(L"%s/%s", m_fmt.Moment(b.effect), m_fmt.Moment(b.capacity))
        .Lead(L"\t");
}

void LocalLines::Capacity(const Bending& b)
{
    const CString py = m_fmt.Stress(b.py);
    const wchar_t* const strength = b.py < m_model.Steel().py ? L"pyr" : L"py";
    const double rho = HighShearFactor(b.Fv, b.Pv);
    const bool angle = m_model.Properties().shape == Shape::Angle;
    CString reduced = b.modulus;
    CString numbers = ModulusText(b.W);
    if (rho > 0.0) {
        HighShear(b, rho);
        const wchar_t* const values = b.plastic ? L"max(0, %s - %s * %s)" : L"max(0, %s - %s * %s/1.5)";
        if (angle)
            reduced.Format(L"%s (1 - ρ)", b.modulus);
        else
            reduced.Format(b.plastic ? L"max(0, %s - ρ Sv)" : L"max(0, %s - ρ Sv/1.5)", b.modulus);
        if (angle)
            numbers.Format(L"%s * (1 - %s)", ModulusText(b.W), m_fmt.NoDim(rho));
        else
            numbers.Format(values, ModulusText(b.W), m_fmt.NoDim(rho), ModulusText(b.Sv));
    }
    const CString limit = m_fmt.NoDim(std::min(m_model.section.Design().plasElas, 1.5));
    Step(b.capacityName, LineValue::Moment(b.capacity))
        .Formula(L"min(%s %s, %s %s Z)", strength, reduced, limit, strength)
        .Values(L"min(%s * %s, %s * %s * %s)", py, numbers, limit, py, ModulusText(b.Z))
        .Lead(L"Moment <i>cl. 4.2.5</i>: ")
        .Of(L"4.2.5");
}

void LocalLines::HighShear(const Bending& b, double rho)
{
    if (rho < 1.0)
        Step(L"ρ", LineValue::Number(rho))
            .Formula(L"(2 Fv/Pv - 1)²")
            .Values(L"(2 * %s/%s - 1)²", m_fmt.Force(b.Fv), m_fmt.Force(b.Pv))
            .Lead(L"High shear <i>cl. 4.2.5.3</i>: Fv > 0.6 Pv, ")
            .Of(L"4.2.5.3");
    else
        Step(L"ρ", LineValue::Number(1.0))
            .Note(L"because Fv is not below Pv")
            .Lead(L"High shear <i>cl. 4.2.5.3</i>: ")
            .Of(L"4.2.5.3");
}

void LocalLines::FlangesOnly(const Bending& b, const Classification& c)
{
    const SectionProperties& s = m_model.Properties();
    const bool x = b.axis == Axis::X;
    if (!FlangesAloneMayCarryMoment(c, b.axis)) {
        Remark(
            L"Moment <i>cl. 4.4.4.2</i>: <red>NOT CHECKED</red>: thin web with Fv > 0.6 Vw beside a slender flange. Of "
            L"the section as a whole:");
        return;
    }
    const bool first = s.B * s.T <= s.B2 * s.T2;
    const double width = x ? (first ? s.B : s.B2) : s.D;
    const double thickness = x ? (first ? s.T : s.T2) : s.t;
    const double arm = x ? s.hs : s.B - s.t;
    Remark(L"Moment <i>cl. 4.4.4.2</i>: thin web with Fv > 0.6 Vw, the flanges alone carry the moment");
    Step(b.capacityName, LineValue::Moment(b.capacity))
        .Formula(L"py B T hs")
        .Values(L"%s * %s * %s * %s", m_fmt.Stress(m_model.Steel().py), DimensionText(width), DimensionText(thickness),
                DimensionText(arm))
        .Lead(L"\t")
        .Of(L"4.4.4.2");
}

void LocalLines::Combined(const PositionResult& p)
{
    if (p.Mrx > 0.0) return MoreExact(p);
    const double F = p.actions.F;
    const wchar_t* const clause = CombinationClause(p);
    CString lead;
    lead.Format(L"Combined <i>cl. %s</i>: ", clause);
    const bool angle = m_model.Properties().shape == Shape::Angle;
    const CString u = m_fmt.Util(p.major);
    const CString v = m_fmt.Util(p.minor);
    if (F == 0.0) {
        Step(angle ? L"Mu/Mcu + Mv/Mcv" : L"Mx/Mcx + My/Mcy", LineValue::Utilisation(p.major + p.minor, true))
            .Values(L"%s + %s", u, v)
            .Lead(lead)
            .Of(clause);
        return;
    }
    if (p.flangesOnly || p.flangesOnlyY)
        Remark(L"The flanges that carry the moment alone carry the axial force too: Pf = %s", m_fmt.Force(p.Pf));
    const double term = std::abs(F) / (p.Pf > 0.0 ? p.Pf : F > 0.0 ? p.Pt : p.Pz);
    const wchar_t* const symbol = p.Pf > 0.0 ? (angle ? L"F/Pf + Mu/Mcu + Mv/Mcv" : L"F/Pf + Mx/Mcx + My/Mcy")
                                  : F > 0.0  ? (angle ? L"Ft/Pt + Mu/Mcu + Mv/Mcv" : L"Ft/Pt + Mx/Mcx + My/Mcy")
                                             : (angle ? L"Fc/Pz + Mu/Mcu + Mv/Mcv" : L"Fc/Pz + Mx/Mcx + My/Mcy");
    Step(symbol, LineValue::Utilisation(term + p.major + p.minor, true))
        .Values(L"%s + %s + %s", m_fmt.Util(term), u, v)
        .Lead(lead)
        .Of(clause);
}

void LocalLines::MoreExact(const PositionResult& p)
{
    const SectionProperties& s = m_model.Properties();
    const double py = m_model.Steel().py;
    const double F = std::abs(p.actions.F);
    const double n = F / (s.A * py);
    const CString strength = m_fmt.Stress(py);
    const wchar_t* const clause = CombinationClause(p);
    Step(L"n", LineValue::Number(n))
        .Formula(L"F/(A py)")
        .Values(L"%s/(%s * %s)", m_fmt.Force(F), AreaText(s.A), strength)
        .Lead(CString(L"Combined <i>cl. ") + clause + L"</i>: ")
        .Of(clause);
    const auto reduced = [&](const wchar_t* Sr, const wchar_t* Mr, const wchar_t* names, Axis which, double Mc,
                             double value) {
        const CString modulus = ModulusText(ReducedPlasticModulus(s, which, n));
        Step(Mr, LineValue::Moment(value))
            .Formula(L"min(%s)", names)
            .Values(L"min(%s * %s, %s)", strength, modulus, m_fmt.Moment(Mc))
            .Lead(CString(L"\t") + Sr + L" = " + modulus + L" <i>I.2</i>, ")
            .Of(L"I.2");
    };
    reduced(L"Srx", L"Mrx", L"py Srx, Mcx", Axis::X, p.Mcx, p.Mrx);
    reduced(L"Sry", L"Mry", L"py Sry, Mcy", Axis::Y, p.Mcy, p.Mry);
    const double x = p.momentMajor == 0.0 ? 0.0 : p.momentMajor / p.Mrx;
    const double y = p.momentMinor == 0.0 ? 0.0 : p.momentMinor / p.Mry;
    const double sum = std::pow(x, p.z1) + std::pow(y, p.z2);
    Step(L"(Mx/Mrx)^z1 + (My/Mry)^z2", LineValue::Number(sum))
        .Values(L"(%s/%s)^%s + (%s/%s)^%s", m_fmt.Moment(p.momentMajor), m_fmt.Moment(p.Mrx), m_fmt.NoDim(p.z1),
                m_fmt.Moment(p.momentMinor), m_fmt.Moment(p.Mry), m_fmt.NoDim(p.z2))
        .Lead(L"\t")
        .Of(clause);
    Step(L"largest of this, the two ratios and the axial force alone", LineValue::Utilisation(p.combined, true))
        .Values(L"max(%s, %s, %s, %s)", m_fmt.NoDim(sum), m_fmt.NoDim(x), m_fmt.NoDim(y), m_fmt.NoDim(p.axial))
        .Lead(L"\t");
}

CString LocalLines::Spread(const WebLoadResult& w) const
{
    const SectionProperties& s = m_model.Properties();
    const double k = std::min(s.T, s.T2) + (s.IsWelded() ? 0.0 : s.r);
    const double n = std::min(5.0, 2.0 + 0.6 * w.load.bearingToEnd / k);
    return DimensionText(w.load.stiffBearing) + L" + " + m_fmt.NoDim(n) + L" * " + DimensionText(k);
}

void LocalLines::WebBearing(const WebLoadResult& w)
{
    const SectionProperties& s = m_model.Properties();
    const double k = std::min(s.T, s.T2) + (s.IsWelded() ? 0.0 : s.r);
    const double n = std::min(5.0, 2.0 + 0.6 * w.load.bearingToEnd / k);
    const CString root = DimensionText(k);
    Step(L"n", LineValue::Number(n))
        .Formula(L"min(5, 2 + 0.6 be/k)")
        .Values(L"min(5, 2 + 0.6 * %s/%s)", DimensionText(w.load.bearingToEnd), root)
        .Lead(L"k = " + root + L", ")
        .Cite(L"4.5.2.1");
    Step(L"Pbw", LineValue::Force(w.Pbw))
        .Formula(L"(b1 + n k) t py")
        .Values(L"(%s) * %s * %s", Spread(w), DimensionText(s.t), m_fmt.Stress(m_model.Steel().py))
        .Of(L"4.5.2.1");
    Step(L"F/Pbw", LineValue::Utilisation(w.force / w.Pbw, true)).Values(L"%s", Ratio(w.force, w.Pbw)).Lead(L"\t");
}

void LocalLines::WebBuckling(const WebLoadResult& w)
{
    const SectionProperties& s = m_model.Properties();
    if (!w.held) {
        Remark(L"<red>NOT CHECKED</red>: buckling of the web, because the flange that the load presses on is not held "
               L"laterally");
        return;
    }
    const double ae = w.load.loadToEnd;
    CString share, numbers;
    if (ae < 0.7 * s.d) {
        share = L" (ae + 0.7 d)/(1.4 d)";
        numbers.Format(L" * (%s + 0.7 * %s)/(1.4 * %s)", DimensionText(ae), DimensionText(s.d), DimensionText(s.d));
    }
    Step(L"Px", LineValue::Force(w.Px))
        .Formula(L"25 ε t/((b1 + n k) d)^0.5 Pbw%s", share)
        .Values(L"25 * %s * %s/((%s) * %s)^0.5 * %s%s", m_fmt.NoDim(Epsilon(m_model.Steel().py)), DimensionText(s.t),
                Spread(w), DimensionText(s.d), m_fmt.Force(w.Pbw), numbers)
        .Cite(L"4.5.3.1");
    Step(L"F/Px", LineValue::Utilisation(w.force / w.Px, true)).Values(L"%s", Ratio(w.force, w.Px)).Lead(L"\t");
}

void LocalLines::All(const PositionResult& p)
{
    Class(p);
    if (p.actions.F > 0.0) Tension(p);
    if (p.actions.F > 0.0 && p.eccentricTie) EccentricTie(p);
    if (p.actions.F < 0.0) Compression(p);
    if (p.actions.Fvy != 0.0) ShearMajor(p);
    if (p.actions.Fvy != 0.0 && p.Vw > 0.0) ShearBuckling(p, Axis::Y);
    if (p.actions.Fvx != 0.0) ShearMinor(p);
    if (p.actions.Fvx != 0.0 && p.Vwx > 0.0) ShearBuckling(p, Axis::X);
    const bool bent = p.momentMajor != 0.0 || p.momentMinor != 0.0;
    if (bent && m_model.Properties().shape == Shape::Angle) PrincipalMoments(p);
    if (p.momentMajor != 0.0) Moment(p, Axis::X);
    if (p.momentMinor != 0.0) Moment(p, Axis::Y);
    if (KindsOfAction(p) > 1) Combined(p);
}

// What is left of a combination where another action vanishes.
void LocalLines::OneAction(const PositionResult& p)
{
    if (p.momentMajor != 0.0) Moment(p, Axis::X);
    if (p.momentMinor != 0.0) Moment(p, Axis::Y);
    if (p.actions.F > 0.0) Tension(p);
    if (p.actions.F < 0.0) Compression(p);
}

void LocalLines::OfRule(const LedgerEntry& e, const PositionResult& p)
{
    const bool angle = m_model.Properties().shape == Shape::Angle;
    switch (e.rule) {
    case Rule::Classification:
        return Class(p);
    case Rule::Tension:
        return Tension(p);
    case Rule::EccentricConnection:
        return EccentricTie(p);
    case Rule::Compression:
        return Compression(p);
    case Rule::ShearMajor:
        return ShearMajor(p);
    case Rule::ShearMinor:
        return ShearMinor(p);
    case Rule::ShearBuckling:
        return ShearBuckling(p, CString(e.symbol) == L"Vwx" ? Axis::X : Axis::Y);
    case Rule::MomentMajor:
    case Rule::MomentMinor:
        if (angle) PrincipalMoments(p);
        return Moment(p, e.rule == Rule::MomentMajor ? Axis::X : Axis::Y);
    case Rule::CombinedTension:
    case Rule::CombinedCompression:
        if (KindsOfAction(p) > 1) return Combined(p);
        return OneAction(p);
    default:
        return;
    }
}

} // namespace Keltrix::BS5950
