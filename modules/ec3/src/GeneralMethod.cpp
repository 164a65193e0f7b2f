// 6.3.4, general method for lateral and lateral-torsional buckling, in place of (6.61) and (6.62).

#include <algorithm>
#include <cmath>
#include <limits>

#include "MemberCheck.h"
#include "keltrix/ec3/GeneralMethod.h"
#include "keltrix/stability/Refusal.h"

namespace Keltrix::EC3 {

using Design::CheckStatus;
using Design::Quantity;
using Design::RuleFinding;

double InPlaneAmplifier(const InPlaneInput& input)
{
    const auto isWithin = [&](double amplifier) {
        AnnexBInput scaled = input.factors;
        scaled.ny *= amplifier;
        scaled.nz *= amplifier;
        const double kyy = AnnexB(scaled).kyy;
        return scaled.ny + kyy * amplifier * input.moment <= 1.0;
    };
    const double least = std::max(input.factors.ny, input.axial + input.moment);
    if (!(least > 0.0)) return std::numeric_limits<double>::infinity();
    // Up to where the cross-section, or the strut alone, reaches 1.
    double low = 0.0, high = 1.0 / least;
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (low + high);
        (isWithin(middle) ? low : high) = middle;
    }
    return low;
}

GeneralReduction ReduceGeneral(double amplifier, double criticalFactor, Curve minor, const LateralRule* lateral)
{
    GeneralReduction r;
    r.slenderness =
        criticalFactor > 0.0 ? std::sqrt(amplifier / criticalFactor) : std::numeric_limits<double>::infinity();
    r.chi = CompressionReduction(r.slenderness, ImperfectionFactor(minor)).chi;
    r.chiLT = lateral ? ReduceLateral(*lateral, r.slenderness, 1.0).chi : 1.0;
    return r;
}

// The smallest critical factor of the forces as they are of the lengths that a combination touches; infinite where nothing buckles there. Null
// reason where it is found.
const wchar_t* MemberCheck::CriticalFactorOver(double from, double to, double& factor) const
{
    factor = std::numeric_limits<double>::infinity();
    if (!m_loaded->IsAnswered()) return L"the elastic analysis of the member gives no answer";
    for (const Stability::Unit& unit : m_loaded->units) {
        if (unit.end <= from + m_in.SamePlace() || unit.start >= to - m_in.SamePlace()) continue;
        if (unit.outcome == Stability::Outcome::NotHeld) {
            factor = 0.0;
            return nullptr;
        }
        if (const wchar_t* const refusal = Stability::DesignRefusal(unit)) return refusal;
        if (unit.positive) factor = std::min(factor, unit.positive->lambda / (1.0 + unit.positive->error));
    }
    return nullptr;
}

void MemberCheck::CheckByGeneralMethod(Combination& c)
{
    GeneralCheck g;
    c.general = g;
    const StrutSpan& y = m_struts[c.major];
    const auto leave = [&](const wchar_t* why) { c.open = why; };
    if (c.Mz > 0.0) return leave(L"6.3.4(1) is for compression and bending in the plane of the web alone");
    if (m_in.lengthOverride)
        return leave(L"lengths are given, and the analysis knows the supports of the member alone");
    if (y.open && c.Ny > 0.0) return leave(y.open);
    // A tube of class 4, which has neither a modulus nor an area.
    if (!(c.MyRk > 0.0)) return leave(m_class.effective.refusalY);
    if (!m_loaded) m_loaded = Analyse(false, 0.0, true);
    if (const wchar_t* const why = CriticalFactorOver(c.start, c.end, g.criticalFactor)) return leave(why);
    InPlaneInput in;
    in.factors = c.input;
    in.factors.ny /= m_in.strength.gammaM1;
    in.factors.nz /= m_in.strength.gammaM1;
    in.axial = c.Ny / (m_class.A * m_in.strength.fy);
    in.moment = c.My / c.MyRk;
    g.amplifier = InPlaneAmplifier(in);
    const std::optional<LateralRule> rule = LateralRuleOf(m_in.section.basis, *m_in.annex);
    g.reduction = ReduceGeneral(g.amplifier, g.criticalFactor,
                                CompressionCurves(m_in.section.basis, m_in.material.grade).z, rule ? &*rule : nullptr);
    const double op = g.reduction.Chi() * g.amplifier / m_in.strength.gammaM1;
    g.utilisation = op > 0.0 ? 1.0 / op : std::numeric_limits<double>::infinity();
    c.general = g;
}

void MemberCheck::RecordGeneral(const Combination& c)
{
    RuleFinding f = FindingOf(Rule::GeneralMethod, CheckStatus::NotEvaluated);
    f.start = c.start;
    f.end = c.end;
    f.reason = c.open ? c.open : L"";
    const GeneralCheck& g = *c.general;
    if (!c.open) {
        f.utilisation = Steel::CMemberResult::InfinitiseNANs(g.utilisation);
        f.status = f.utilisation <= 1.0 ? CheckStatus::Passed : CheckStatus::Failed;
        f.slenderness = g.reduction.slenderness;
        AddResistance(L"alphaUlt", Quantity::None, g.amplifier, c.start, c.end);
        AddResistance(L"alphaCr", Quantity::None, g.criticalFactor, c.start, c.end);
        AddResistance(L"chiOp", Quantity::None, g.reduction.Chi(), c.start, c.end);
    }
    if (!c.open && m_in.withSteps) {
        const CDesFormat& fmt = m_in.format;
        AddStep(f, L"NEd", Quantity::Force, c.Ny, L"");
        AddStep(f, L"MyEd", Quantity::Moment, c.My, L"");
        AddStep(f, L"αult,k", Quantity::None, g.amplifier, L"6.3.4(2)")
            .Note(L"factor at which NEd/(χy NRk) + kyy My,Ed/My,Rk, or the cross-section alone, reaches 1");
        AddStep(f, L"αcr,op", Quantity::None, g.criticalFactor, L"6.3.4(3)")
            .Note(L"elastic analysis with NEd and My,Ed as the member is held and loaded");
        AddStep(f, L"λop", Quantity::None, g.reduction.slenderness, L"(6.64)")
            .Formula(L"(αult,k/αcr,op)^0.5")
            .Values(L"(%s/%s)^0.5", fmt.NoDim(g.amplifier), fmt.NoDim(g.criticalFactor));
        AddStep(f, L"χop", Quantity::None, g.reduction.Chi(), L"6.3.4(4)a")
            .Formula(L"min(χ, χLT)")
            .Values(L"min(%s, %s)", fmt.NoDim(g.reduction.chi), fmt.NoDim(g.reduction.chiLT));
        AddStep(f, L"χop αult,k/γM1", Quantity::None, 1.0 / g.utilisation, L"(6.63)")
            .Values(L"%s * %s/%s", fmt.NoDim(g.reduction.Chi()), fmt.NoDim(g.amplifier),
                    fmt.NoDim(m_in.strength.gammaM1))
            .Note(L"at least 1");
        AddStep(f, L"utilisation", Quantity::None, f.utilisation, L"").Values(L"1/%s", fmt.NoDim(1.0 / g.utilisation));
    }
    Add(f);
}

} // namespace Keltrix::EC3
