// Unstiffened webs under concentrated loads and reactions, EN 1993-1-5 6 and 7.2.

#include <algorithm>
#include <cmath>

#include "MemberCheck.h"

namespace Keltrix::EC3 {

using Design::CheckStatus;
using Design::Quantity;
using Design::RuleFinding;

namespace {

const WebLoadCheck* WorstOf(const std::vector<WebLoadCheck>& loads, double WebLoadCheck::*utilisation)
{
    const WebLoadCheck* worst = nullptr;
    for (const WebLoadCheck& w : loads)
        if (w.isHeld && w.*utilisation > (worst ? worst->*utilisation : 0.0)) worst = &w;
    return worst;
}

// From the centroid to the edge of the web at a flange; below zero where the axis lies in that flange.
double WebEdge(const Section& s, bool atFlange1)
{
    const double first = s.b * s.tf, second = s.b2 * s.tf2, web = s.hw * s.tw;
    const double fromBottom =
        (first * (s.h - 0.5 * s.tf) + second * 0.5 * s.tf2 + web * (s.tf2 + 0.5 * s.hw)) / (first + second + web);
    return atFlange1 ? s.h - fromBottom - s.tf : fromBottom - s.tf2;
}

} // namespace

// What acts where a load presses, the worst at both sides of a point or along the load.
MemberCheck::WebLoadActions MemberCheck::ActionsAt(const Design::PointLoad& load) const
{
    WebLoadActions a;
    const Design::MomentRange My = m_major.LeftOf(load.x), MyAfter = m_major.RightOf(load.end);
    a.least = std::min(My.least, MyAfter.least);
    a.greatest = std::max(My.greatest, MyAfter.greatest);
    a.Mz = std::max(m_minor.LeftOf(load.x).Magnitude(), m_minor.RightOf(load.end).Magnitude());
    if (load.end > load.x) {
        const Design::Extremes along = m_major.Between(load.x, load.end);
        a.least = std::min(a.least, along.least);
        a.greatest = std::max(a.greatest, along.greatest);
        a.Mz = std::max(a.Mz, m_minor.Between(load.x, load.end).Magnitude());
    }
    const auto take = [&a](const Vec3<double>& forces) {
        a.compression = std::max(a.compression, -forces.x);
        a.tension = std::max(a.tension, forces.x);
        a.V = std::max(a.V, std::abs(forces.z));
    };
    const auto subSpan = [this](int k) -> const Steel::CSubSpan& { return m_in.subSpans[static_cast<std::size_t>(k)]; };
    for (int point = load.point; point <= load.lastPoint; ++point) {
        if (point > 0) take(subSpan(point - 1).GetForcesRight());
        if (point < static_cast<int>(m_in.subSpans.size())) take(subSpan(point).GetForcesLeft());
    }
    return a;
}

// 6.1(1): the compression flange is held laterally. The flange that is pressed would turn against the web as well.
bool MemberCheck::IsWebLoadHeld(const Design::PointLoad& load) const
{
    if (!load.held) return false;
    const WebLoadActions a = ActionsAt(load);
    const double noise = m_check->NoiseMy();
    const auto holds = [&](Design::Flange flange) {
        return Design::IsFlangeHeld(m_in.points, m_in.subSpans, m_major, load.point, flange) &&
               Design::IsFlangeHeld(m_in.points, m_in.subSpans, m_major, load.lastPoint, flange);
    };
    if (a.least < -noise && !holds(Design::Flange::First)) return false;
    return !(a.greatest > noise) || holds(Design::Flange::Second);
}

// η1 of 4.6 at the flange that is pressed: 0 where the compression and My together do not compress it (7.2(2)).
double MemberCheck::BendingOf(const WebLoadCheck& check) const
{
    const WebLoadActions a = ActionsAt(check.load);
    const double My = check.load.onFlange1 ? -a.least : a.greatest;
    const double Mz = a.Mz;
    const double N = a.compression;
    if (!(My > m_check->NoiseMy()) && !(N > m_check->NoiseN())) return 0.0;
    const bool slender = m_class.cls == 4;
    const EffectiveSection& e = m_class.effective;
    const double area = slender ? e.Aeff : m_in.section.A;
    const double Wy = slender ? e.Weffy : m_in.section.Wely;
    const double Wz = slender ? e.Weffz : m_in.section.Welz;
    const auto term = [&](double action, double property) {
        return action > 0.0 ? action * m_in.strength.gammaM0 / (property * m_in.strength.fy) : 0.0;
    };
    // What relieves the flange does so least with the modulus of the fibre nearer to the axis.
    const Section& s = m_in.section;
    const double relief =
        My < 0.0 ? -My * m_in.strength.gammaM0 * (s.h - s.Iy / s.Wely) / (s.Iy * m_in.strength.fy) : 0.0;
    const double along = term(N, area) + term(std::max(My, 0.0) + N * (slender ? e.eNy : 0.0), Wy) - relief;
    return along > 0.0 ? along + term(Mz + N * (slender ? e.eNz : 0.0), Wz) : 0.0;
}

// 7.2(2): the criterion of EN 1993-1-1 6.2.1(5) where moment and axial force together pull the flange that is pressed. The force spreads from the
// stiff bearing through the flange at 45°, at an end of the member to one side alone.
void MemberCheck::SetYield(WebLoadCheck& check) const
{
    const Section& s = m_in.section;
    const WebLoadActions a = ActionsAt(check.load);
    const double My = check.load.onFlange1 ? a.greatest : -a.least; // above zero where it pulls the flange
    const double yield = m_in.strength.fy / m_in.strength.gammaM0;
    const double tf = check.load.onFlange1 ? s.tf : s.tf2;
    const double perMoment =
        My > 0.0 && m_class.cls == 4 ? 1.0 / m_class.effective.Weffy : WebEdge(s, check.load.onFlange1) / s.Iy;
    const double loaded = check.resistance.ss + tf + std::min(tf, check.force.c);
    check.along = (My * perMoment + a.tension / s.A) / yield;
    if (!(My > m_check->NoiseMy() || a.tension > m_check->NoiseN()) || !(check.along > 0.0)) {
        check.along = 0.0;
        return;
    }
    check.across = check.load.force / (loaded * s.tw) / yield;
    check.shear = a.V / (s.hw * s.tw) / yield;
    check.yield = std::sqrt(check.along * check.along + check.across * check.across + check.along * check.across +
                            3.0 * check.shear * check.shear);
}

void MemberCheck::FindWebLoads()
{
    m_webLoads.clear();
    Design::LoadSpacing spacing;
    spacing.stiffBearing = m_in.options.stiffBearing;
    spacing.patch = spacing.group = m_in.section.hw;
    WebForce force;
    force.ss = spacing.stiffBearing;
    force.atEnd = true;
    for (const bool first : {true, false}) {
        force.onFlange1 = first;
        spacing.loaded = std::max(spacing.loaded, LongestLoadedLength(m_in.section, force));
    }
    for (const Design::PointLoad& load : Design::FindPointLoads(m_in.points, m_in.subSpans, m_major, spacing)) {
        WebLoadCheck w;
        w.load = load;
        w.force = force;
        w.force.ss = load.bearing;
        w.force.c = load.bearingToEnd;
        w.force.onFlange1 = load.onFlange1;
        if (const auto r = ResistWebForce(m_in.section, m_in.strength, w.force)) w.resistance = *r;
        w.isHeld = IsWebLoadHeld(load);
        m_webLoads.push_back(w);
    }
}

void MemberCheck::RecordWebLoads()
{
    FindWebLoads();
    const auto both = [this](CheckStatus status, const wchar_t* reason) {
        Add(FindingOf(Rule::ConcentratedLoads, status, reason));
        Add(FindingOf(Rule::WebLoadBending, status, reason));
        m_webLoads.clear();
    };
    if (m_webLoads.empty()) return both(CheckStatus::NotApplicable, L"no concentrated load or reaction along the web");
    if (!(m_in.options.stiffBearing > 0.0))
        return both(CheckStatus::OutOfScope, L"no stiff bearing length is given for supports and concentrated loads");
    const Shape shape = m_in.section.shape;
    if (shape != Shape::I && shape != Shape::UnequalI) {
        RuleFinding f = FindingOf(Rule::ConcentratedLoads, CheckStatus::NotEvaluated,
                                  L"the rule is evaluated for webs of I and H sections alone");
        f.start = f.end = m_webLoads.front().load.x;
        Add(f);
        Add(FindingOf(Rule::WebLoadBending, CheckStatus::NotApplicable, L"no resistance of the web alone"));
        m_webLoads.clear();
        return;
    }
    Assume(L"stiff bearing",
           L"the given length at every support and concentrated load, with what follows within the effective loaded "
           L"length of it; at an end of the member it begins there; webs without stiffeners there. Loads that lie "
           L"further apart and within hw are also one load on the length between them (6.3(1)), loads along sub-spans "
           L"up to hw long one on their length; along longer ones they are taken to be spread. A force that passes "
           L"through the web to a support beneath (Figure 6.1 b) "
           L"is seen only by what the shear changes there",
           m_in.options.stiffBearing);
    for (WebLoadCheck& w : m_webLoads) {
        if (!w.isHeld) continue;
        w.utilisation = Steel::CMemberResult::InfinitiseNANs(w.load.force / w.resistance.FRd);
        w.eta1 = BendingOf(w);
        if (w.eta1 > 0.0) w.withMoment = Steel::CMemberResult::InfinitiseNANs((w.utilisation + 0.8 * w.eta1) / 1.4);
        SetYield(w);
    }
    RecordUnheldWebLoads();
    RecordWebForce();
    RecordWebBending();
}

void MemberCheck::RecordUnheldWebLoads()
{
    for (const WebLoadCheck& w : m_webLoads) {
        if (w.isHeld) continue;
        RuleFinding f = FindingOf(Rule::ConcentratedLoads, CheckStatus::NotEvaluated,
                                  L"the rule needs the compression flange, and the flange that the load presses on, "
                                  L"held laterally there (6.1(1))");
        f.start = w.load.x;
        f.end = w.load.end;
        Add(f);
    }
}

void MemberCheck::RecordWebForce()
{
    const WebLoadCheck* const worst = WorstOf(m_webLoads, &WebLoadCheck::utilisation);
    if (!worst) return;
    const WebForceResistance& r = worst->resistance;
    RuleFinding f = FindingOf(Rule::ConcentratedLoads, LocalStatus(worst->utilisation));
    f.start = worst->load.x;
    f.end = worst->load.end;
    f.utilisation = worst->utilisation;
    f.resistance = r.FRd;
    f.symbol = L"FRd";
    f.quantity = Quantity::Force;
    AddResistance(f.symbol, f.quantity, f.resistance, worst->load.x, worst->load.end);
    if (m_in.withSteps) {
        AddStep(f, L"ss", Quantity::Length, r.ss, L"6.3")
            .Note(worst->load.end > worst->load.x ? L"from the first load to the last, at most hw"
                                                  : L"stiff bearing, at most hw");
        AddStep(f, L"c", Quantity::Length, worst->force.c, L"Figure 6.1")
            .Note(L"from the end of the member to the bearing");
        AddStep(f, L"kF", Quantity::None, r.kF, L"Figure 6.1").Formula(L"min(6, 2 + 6 (ss + c)/hw)");
        AddStep(f, L"Fcr", Quantity::Force, r.Fcr, L"(6.5)").Formula(L"0.9 kF E tw³/hw");
        AddStep(f, L"m1", Quantity::None, r.m1, L"(6.8)");
        AddStep(f, L"m2", Quantity::None, r.m2, L"(6.9)");
        AddStep(f, L"ly", Quantity::Length, r.ly, L"(6.10) to (6.12)").Note(L"the least of the three");
        AddStep(f, L"λF", Quantity::None, r.slenderness, L"(6.4)").Formula(L"(ly tw fyw/Fcr)^0.5");
        AddStep(f, L"χF", Quantity::None, r.chi, L"(6.3)").Formula(L"min(1, 0.5/λF)");
        AddStep(f, L"FRd", Quantity::Force, r.FRd, L"(6.1)")
            .Formula(L"χF ly tw fyw/γM1")
            .Values(L"%s * %s * %s * %s/%s", m_in.format.NoDim(r.chi),
                    Design::QuantityText(Quantity::Length, r.ly, m_in.format),
                    Design::QuantityText(Quantity::Length, m_in.section.tw, m_in.format),
                    m_in.format.Stress(m_in.strength.fy), m_in.format.NoDim(m_in.strength.gammaM1));
        AddStep(f, L"FEd", Quantity::Force, worst->load.force, L"")
            .Note(worst->load.onFlange1 ? L"on the top flange" : L"on the bottom flange");
    }
    Add(f);
}

void MemberCheck::RecordWebYield(const WebLoadCheck& worst)
{
    RuleFinding f = FindingOf(Rule::WebLoadBending, CheckStatus::Passed);
    f.clause = L"EN 1993-1-5 7.2(2)";
    f.start = worst.load.x;
    f.end = worst.load.end;
    f.utilisation = Steel::CMemberResult::InfinitiseNANs(worst.yield);
    f.status = LocalStatus(f.utilisation);
    if (m_in.withSteps) {
        const double yield = m_in.strength.fy / m_in.strength.gammaM0;
        const auto n = [this](double value) { return m_in.format.NoDim(value); };
        const auto share = [&](const wchar_t* symbol, double value) -> Design::Step& {
            return AddStep(f, symbol, Quantity::None, value, L"EN 1993-1-1 6.2.1(5)")
                .Values(L"%s/%s", m_in.format.Stress(value * yield), m_in.format.Stress(yield));
        };
        share(L"σx γM0/fy", worst.along).Note(L"tension along the pressed flange at the edge of the web");
        share(L"σz γM0/fy", worst.across).Note(L"compression across, over ss and the spread through the flange");
        share(L"τ γM0/fy", worst.shear);
        AddStep(f, L"utilisation", Quantity::None, f.utilisation, L"EN 1993-1-1 (6.1)")
            .Values(L"(%s² + %s² + %s * %s + 3 * %s²)^0.5", n(worst.along), n(worst.across), n(worst.along),
                    n(worst.across), n(worst.shear));
    }
    Add(f);
}

void MemberCheck::RecordWebBending()
{
    const WebLoadCheck* const pulled = WorstOf(m_webLoads, &WebLoadCheck::yield);
    if (pulled) RecordWebYield(*pulled);
    const WebLoadCheck* const worst = WorstOf(m_webLoads, &WebLoadCheck::withMoment);
    if (!worst && pulled) return;
    if (!worst)
        return Add(FindingOf(Rule::WebLoadBending, CheckStatus::NotApplicable,
                             L"no load presses on a flange that has stresses along it"));
    RuleFinding f = FindingOf(Rule::WebLoadBending, LocalStatus(worst->withMoment));
    f.start = worst->load.x;
    f.end = worst->load.end;
    f.utilisation = worst->withMoment;
    if (m_in.withSteps) {
        AddStep(f, L"η1", Quantity::None, worst->eta1, L"(4.14)")
            .Note(L"of the moments and the compression there, by elastic moduli, of class 4 effective ones");
        AddStep(f, L"η2", Quantity::None, worst->utilisation, L"(6.14)")
            .Formula(L"FEd/FRd")
            .Values(L"%s/%s", m_in.format.Force(worst->load.force), m_in.format.Force(worst->resistance.FRd));
        const double sum = worst->utilisation + 0.8 * worst->eta1;
        const auto n = [this](double value) { return m_in.format.NoDim(value); };
        AddStep(f, L"η2 + 0.8 η1", Quantity::None, sum, L"(7.2)")
            .Values(L"%s + 0.8 * %s", n(worst->utilisation), n(worst->eta1))
            .Note(L"at most 1.4");
        AddStep(f, L"(η2 + 0.8 η1)/1.4", Quantity::None, worst->withMoment, L"").Values(L"%s/1.4", n(sum));
    }
    Add(f);
}

} // namespace Keltrix::EC3
