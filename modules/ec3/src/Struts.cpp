// Flexural and torsional buckling of members in compression, 6.3.1.

#include <algorithm>
#include <cmath>
#include <limits>

#include "MemberCheck.h"
#include "keltrix/design/Segments.h"

namespace Keltrix::EC3 {

using Design::CheckStatus;
using Design::Quantity;
using Design::RuleFinding;
using Steel::CRestraint;

namespace {

struct StrutSymbols {
    const wchar_t* resistance;
    const wchar_t* force;
    const wchar_t* slenderness;
    const wchar_t* reduction;
};

StrutSymbols SymbolsOf(BucklingMode mode, bool isAngle)
{
    if (mode == BucklingMode::Torsion) return {L"NbTRd", L"NcrT", L"lambdaT", L"chiT"};
    if (isAngle)
        return mode == BucklingMode::Major ? StrutSymbols{L"NbuRd", L"NcrU", L"lambdaU", L"chiU"}
                                           : StrutSymbols{L"NbvRd", L"NcrV", L"lambdaV", L"chiV"};
    return mode == BucklingMode::Major ? StrutSymbols{L"NbyRd", L"NcrY", L"lambdaY", L"chiY"}
                                       : StrutSymbols{L"NbzRd", L"NcrZ", L"lambdaZ", L"chiZ"};
}

Rule RuleOf(BucklingMode mode)
{
    return mode == BucklingMode::Major   ? Rule::FlexuralMajor
           : mode == BucklingMode::Minor ? Rule::FlexuralMinor
                                         : Rule::Torsional;
}

constexpr wchar_t OPEN_END[] =
    L"an end is not held, and no buckling length follows from the restraints: effective lengths have to be given";

} // namespace

// An angle moves along both legs when it buckles about u-u or v-v: what holds it along one of them does not hold it.
bool MemberCheck::IsHeld(BucklingMode mode, const CRestraint& restraint) const
{
    const bool major = restraint.IsRestrained(CRestraint::MAJOR_SHEAR, false);
    const bool minor = restraint.IsRestrained(CRestraint::MINOR_SHEAR, true);
    switch (mode) {
    case BucklingMode::Major:
        return major && (minor || !IsAngle());
    case BucklingMode::Minor:
        return minor && (major || !IsAngle());
    case BucklingMode::Torsion:
        break;
    }
    return restraint.IsRestrained(CRestraint::TORSION, true);
}

bool MemberCheck::IsHeldInside() const
{
    const auto holds = [this](const auto& part) {
        const CRestraint restraint = part.GetRestraint();
        return IsHeld(BucklingMode::Major, restraint) || IsHeld(BucklingMode::Minor, restraint) ||
               IsHeld(BucklingMode::Torsion, restraint);
    };
    const auto isInside = [this](const Steel::CMemberPoint& point) {
        return point.GetPos() > m_in.Start() + m_in.SamePlace() && point.GetPos() < m_in.End() - m_in.SamePlace();
    };
    return std::any_of(m_in.subSpans.begin(), m_in.subSpans.end(), holds) ||
           std::any_of(m_in.points.begin(), m_in.points.end(),
                       [&](const Steel::CMemberPoint& point) { return isInside(point) && holds(point); });
}

double MemberCheck::LargestCompression(double from, double to) const
{
    double largest = 0.0;
    const auto range = m_major.Covering(from, to);
    for (int k = range.first; k < range.last; ++k) {
        const auto& piece = m_major.At(k);
        const Steel::CSubSpan& sub = m_in.subSpans[static_cast<std::size_t>(k)];
        const double left = -sub.GetForcesLeft().x;
        const double right = -sub.GetForcesRight().x;
        const auto at = [&](double x) {
            return piece.length > 0.0 && left != right
                       ? left + (right - left) * std::clamp((x - piece.start) / piece.length, 0.0, 1.0)
                       : left;
        };
        largest = std::max({largest, at(from), at(to)});
        if (!(piece.length > 0.0)) largest = std::max(largest, right);
    }
    return largest > m_check->NoiseN() ? largest : 0.0;
}

StrutSpan MemberCheck::MakeStrut(BucklingMode mode, int left, int right) const
{
    StrutSpan span;
    span.mode = mode;
    span.left = left;
    span.right = right;
    span.start = m_in.points[static_cast<std::size_t>(left)].GetPos();
    span.end = m_in.points[static_cast<std::size_t>(right)].GetPos();
    return span;
}

// 1.0 L between held ends. An end that is free beside one that is held in position and direction makes 2.0 L.
void MemberCheck::SetLength(StrutSpan& span) const
{
    const int last = static_cast<int>(m_in.points.size()) - 1;
    const auto restraint = [&](int point) { return m_in.points[static_cast<std::size_t>(point)].GetRestraint(); };
    const bool heldLeft = span.left > 0 || IsHeld(span.mode, restraint(0));
    const bool heldRight = span.right < last || IsHeld(span.mode, restraint(last));
    const double L = span.end - span.start;
    if (heldLeft && heldRight) {
        span.Lcr = L;
        span.rule = L"1.0 L between held sections";
        return;
    }
    const unsigned int rotation = IsAngle() ? CRestraint::MAJOR_ROTATION | CRestraint::MINOR_ROTATION
                                  : span.mode == BucklingMode::Major ? CRestraint::MAJOR_ROTATION
                                                                     : CRestraint::MINOR_ROTATION;
    const int root = heldLeft ? span.left : span.right;
    if ((heldLeft || heldRight) && span.mode != BucklingMode::Torsion && restraint(root).IsRestrained(rotation, true)) {
        span.Lcr = 2.0 * L;
        span.sway = true;
        span.rule = L"2.0 L, one end free and the other held in position and direction";
        return;
    }
    span.open = OPEN_END;
}

void MemberCheck::FindStruts(BucklingMode mode)
{
    const int points = static_cast<int>(m_in.points.size());
    if (m_in.lengthOverride) {
        StrutSpan span = MakeStrut(mode, 0, points - 1);
        const auto length = [&](double value) { return value >= 0.0 ? value : -value * m_in.Length(); };
        span.rule = L"given by the user";
        span.Lcr = length(mode == BucklingMode::Major ? m_in.Lyy : m_in.Lzz);
        if (IsAngle()) {
            span.Lcr = std::max(length(m_in.Lyy), length(m_in.Lzz));
            span.rule = L"the longer of the lengths given for both axes, because those of an angle are inclined";
        }
        if (mode == BucklingMode::Torsion) {
            span.Lcr = std::max(span.Lcr, length(m_in.Llt));
            span.rule = IsAngle()
                            ? L"the longest of the lengths given"
                            : L"the longer of the lengths given for the minor axis and for lateral-torsional buckling";
        }
        // More than the member's length means that its ends move against each other.
        span.sway = span.Lcr > m_in.Length() * (1.0 + 1e-9);
        m_struts.push_back(span);
        return;
    }
    const auto pointHeld = [&](int i) { return IsHeld(mode, m_in.points[static_cast<std::size_t>(i)].GetRestraint()); };
    const auto subHeld = [&](int k) { return IsHeld(mode, m_in.subSpans[static_cast<std::size_t>(k)].GetRestraint()); };
    for (const auto& [left, right] : Design::Segments(points, pointHeld, subHeld)) {
        StrutSpan span = MakeStrut(mode, left, right);
        span.held = subHeld(left);
        if (span.held)
            span.rule = L"held along its length";
        else
            SetLength(span);
        m_struts.push_back(span);
    }
}

// Smallest critical force of flexure in one of the lengths that a length for twist reaches into.
double MemberCheck::LeastForce(BucklingMode mode, StrutSpan& span) const
{
    double least = std::numeric_limits<double>::infinity();
    for (const StrutSpan& other : m_struts) {
        const bool reaches = other.start < span.end - m_in.SamePlace() && other.end > span.start + m_in.SamePlace();
        if (other.mode != mode || !reaches) continue;
        if (other.open)
            span.open = other.open;
        else
            least = std::min(least, other.strut.Ncr);
    }
    return least;
}

double MemberCheck::TwistForce(StrutSpan& span) const
{
    constexpr double HELD = std::numeric_limits<double>::infinity();
    const Section& s = m_in.section;
    span.NcrT = span.Lcr > 0.0 ? TorsionalNcr(s.basis, m_in.material.E, m_in.material.G, span.Lcr) : HELD;
    if (span.held) return HELD;
    const ShearCentre centre = ShearCentreOf(s);
    ModeForces forces{HELD, HELD, span.NcrT};
    if (centre.alongMajor != 0.0) forces.major = LeastForce(BucklingMode::Major, span);
    if (centre.alongMinor != 0.0) forces.minor = LeastForce(BucklingMode::Minor, span);
    return CoupledNcr(s, forces);
}

void MemberCheck::CheckStrut(StrutSpan& span) const
{
    const Section& s = m_in.section;
    const Material& m = m_in.material;
    span.N = LargestCompression(span.start, span.end);
    if (!(m_class.A > 0.0) && !span.open) span.open = m_class.effective.refusalA;
    if (span.open) return;
    const AxisCurves curves = CompressionCurves(s.basis, m.grade);
    const Curve curve = span.mode == BucklingMode::Major ? curves.y : curves.z;
    const double I = span.mode == BucklingMode::Major ? MajorSecondMoment(s) : MinorSecondMoment(s);
    double Ncr = std::numeric_limits<double>::infinity();
    if (span.mode == BucklingMode::Torsion)
        Ncr = TwistForce(span);
    else if (span.Lcr > 0.0)
        Ncr = FlexuralNcr(m.E, I, span.Lcr);
    if (span.open) return;
    span.strut = BuckleStrut(Ncr, m_class.A, m.fy, m_in.strength.gammaM1, curve);
    span.utilisation = span.N / span.strut.NbRd;
}

// The elastic critical force with its formula and numbers.
void MemberCheck::AddForceStep(RuleFinding& f, const StrutSpan& span) const
{
    const Section& s = m_in.section;
    const StrutResistance& r = span.strut;
    if (span.mode != BucklingMode::Torsion) {
        const double I = span.mode == BucklingMode::Major ? MajorSecondMoment(s) : MinorSecondMoment(s);
        AddStep(f, L"Ncr", Quantity::Force, r.Ncr, L"6.3.1.3").Formula(L"π² E I/Lcr²").Note(L"I = %.5g cm⁴", I * 1e8);
        return;
    }
    AddStep(f, L"Ncr,T", Quantity::Force, span.NcrT, L"6.3.1.4")
        .Formula(L"(G It + π² E Iw/Lcr²)/i0²")
        .Note(L"i0 = %.4g cm", s.i0 * 1e2);
    const ShearCentre centre = ShearCentreOf(s);
    if (centre.alongMajor == 0.0 && centre.alongMinor == 0.0) return;
    AddStep(f, L"Ncr,TF", Quantity::Force, r.Ncr, L"6.3.1.4")
        .Note(L"with flexure, shear centre %.4g cm along and %.4g cm across the major axis from the centroid",
              std::abs(centre.alongMajor) * 1e2, std::abs(centre.alongMinor) * 1e2);
}

void MemberCheck::RecordStrut(const StrutSpan& span)
{
    RuleFinding f = FindingOf(RuleOf(span.mode), CheckStatus::NotApplicable);
    f.start = span.start;
    f.end = span.end;
    const StrutResistance& r = span.strut;
    if (!span.open) {
        const StrutSymbols symbols = SymbolsOf(span.mode, IsAngle());
        f.symbol = symbols.resistance;
        f.quantity = Quantity::Force;
        f.resistance = r.NbRd;
        f.slenderness = r.slenderness;
        AddResistance(f.symbol, Quantity::Force, r.NbRd, span.start, span.end);
        if (!span.held) {
            AddResistance(symbols.force, Quantity::Force, r.Ncr, span.start, span.end);
            AddResistance(symbols.slenderness, Quantity::None, r.slenderness, span.start, span.end);
        }
        AddResistance(symbols.reduction, Quantity::None, r.reduction.chi, span.start, span.end);
    }
    if (!span.IsApplied()) {
        f.reason = L"no compression";
    } else if (span.open) {
        f.status = CheckStatus::NotEvaluated;
        f.reason = span.open;
    } else {
        // The result record counts exactly 1.0 as a failure of axial buckling.
        f.utilisation = Steel::CMemberResult::InfinitiseNANs(span.utilisation);
        f.status = f.utilisation < 1.0 ? CheckStatus::Passed : CheckStatus::Failed;
    }
    if (m_in.withSteps && span.IsApplied() && !span.open) {
        const auto n = [this](double value) { return m_in.format.NoDim(value); };
        AddStep(f, L"Lcr", Quantity::Distance, span.Lcr, L"").Note(L"%s", span.rule);
        AddForceStep(f, span);
        const wchar_t* const A = m_class.cls == 4 ? L"Aeff" : L"A";
        AddStep(f, L"λ", Quantity::None, r.slenderness, L"6.3.1.2")
            .Formula(L"(%s fy/Ncr)^0.5", A)
            .Values(L"(%s/%s)^0.5", m_in.format.Force(m_class.A * m_in.material.fy), m_in.format.Force(r.Ncr));
        AddStep(f, L"α", Quantity::None, ImperfectionFactor(r.curve), L"Tables 6.1, 6.2")
            .Note(L"curve %s", CurveName(r.curve));
        AddStep(f, L"φ", Quantity::None, r.reduction.phi, L"6.3.1.2")
            .Formula(L"0.5(1 + α(λ - 0.2) + λ²)")
            .Values(L"0.5 * (1 + %s * (%s - 0.2) + %s²)", n(ImperfectionFactor(r.curve)), n(r.slenderness),
                    n(r.slenderness));
        AddStep(f, L"χ", Quantity::None, r.reduction.chi, L"(6.49)")
            .Formula(L"min(1, 1/(φ + (φ² - λ²)^0.5))")
            .Values(L"min(1, 1/(%s + (%s² - %s²)^0.5))", n(r.reduction.phi), n(r.reduction.phi), n(r.slenderness));
        AddStep(f, f.symbol, Quantity::Force, r.NbRd, L"(6.47)")
            .Formula(L"χ %s fy/γM1", A)
            .Values(L"%s * %s/%s", n(r.reduction.chi), m_in.format.Force(m_class.A * m_in.material.fy),
                    n(m_in.strength.gammaM1));
        AddStep(f, L"NEd", Quantity::Force, span.N, L"");
    }
    Add(f);
}

void MemberCheck::RecordNoTorsion()
{
    Add(FindingOf(Rule::Torsional, CheckStatus::NotApplicable, L"a hollow section does not buckle by twist"));
}

} // namespace Keltrix::EC3
