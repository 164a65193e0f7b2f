// Lateral-torsional buckling, 6.3.2: lengths between forks, elastic critical moments, reduction.

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "MemberCheck.h"
#include "keltrix/design/Stretches.h"
#include "keltrix/stability/Refusal.h"
#include "keltrix/stability/SectionConstants.h"

namespace Keltrix::EC3 {

using Design::CheckStatus;
using Design::MomentDiagram;
using Design::Quantity;
using Design::RuleFinding;
using Stability::Outcome;
using Steel::CRestraint;

namespace {

// C1 of the diagram with the smallest kc of Table 6.6, end moments of ψ = -1.
constexpr double LARGEST_C1 = 2.76;
constexpr unsigned int BY_MOMENT = CRestraint::COMP_FLANGE_LATERAL | CRestraint::TENS_FLANGE_LATERAL |
                                   CRestraint::COMP_FLANGE_WARPING | CRestraint::TENS_FLANGE_WARPING;

const Stability::Unit* FindUnit(const Stability::CriticalLoads& loads, double start, double end, double tolerance)
{
    const auto unit = std::lower_bound(loads.units.begin(), loads.units.end(), start - tolerance,
                                       [](const Stability::Unit& u, double x) { return u.start < x; });
    const bool found = unit != loads.units.end() && std::abs(unit->start - start) <= tolerance &&
                       std::abs(unit->end - end) <= tolerance;
    return found ? &*unit : nullptr;
}

int SignOf(const Design::Extremes& moments)
{
    if (moments.least >= 0.0 && moments.greatest > 0.0) return 1;
    return moments.greatest <= 0.0 && moments.least < 0.0 ? -1 : 0;
}

template <class Part>
void MoveToShearCentre(Part& part)
{
    CRestraint r = part.GetRestraint();
    r.SetLoadHeight(0.0);
    r.SetRefLoadHeight(Steel::SHR_CENTRE);
    part.SetRestraint(r);
}

} // namespace

std::vector<Steel::CMemberPoint>::const_iterator MemberCheck::FirstPointFrom(double x) const
{
    return std::lower_bound(m_in.points.begin(), m_in.points.end(), x,
                            [](const Steel::CMemberPoint& p, double at) { return p.GetPos() < at; });
}

bool MemberCheck::HasLoadHeight(double from, double to) const
{
    const auto isOff = [](const CRestraint& r) {
        return r.LoadHeight() != 0.0 || r.RefLoadHeight() != Steel::SHR_CENTRE;
    };
    const double tolerance = m_in.SamePlace();
    for (auto p = FirstPointFrom(from - tolerance); p != m_in.points.end() && p->GetPos() <= to + tolerance; ++p)
        if (isOff(p->GetRestraint())) return true;
    const auto range = m_major.Covering(from, to);
    for (int k = range.first; k < range.last; ++k)
        if (isOff(m_in.subSpans[static_cast<std::size_t>(k)].GetRestraint())) return true;
    return false;
}

// Restraints of the compression or the tension flange along a sub-span hold one flange up to where the moment changes sign and the other
// one beyond: the sub-span is divided there, so that each part holds one.
void MemberCheck::DivideAtContraflexures(std::vector<Steel::CMemberPoint>& points,
                                         std::vector<Steel::CSubSpan>& subSpans) const
{
    const std::vector<Steel::CSubSpan> whole = std::exchange(subSpans, {});
    const std::vector<Steel::CMemberPoint> given = std::exchange(points, {});
    const auto addPoint = [&](const Steel::CMemberPoint& p) {
        points.push_back(p);
        points.back().Set1Index(static_cast<int>(points.size()));
    };
    for (std::size_t k = 0; k < whole.size(); ++k) {
        addPoint(given[k]);
        const auto& piece = m_major.At(static_cast<int>(k));
        const Design::Parabola& moment = m_major.Curves(static_cast<int>(k)).front();
        const CRestraint along = whole[k].GetRestraint();
        double from = 0.0;
        const auto addPart = [&](double to) {
            subSpans.push_back(whole[k]);
            subSpans.back().Set1Index(static_cast<int>(subSpans.size()));
            const double M = moment.At(0.5 * (from + to));
            subSpans.back().SetRestraint(Design::Resolved(along, M > 0.0 ? 1 : M < 0.0 ? -1 : 0));
            from = to;
        };
        if (!along.IsFree(BY_MOMENT, false)) {
            for (const double s : moment.Zeros()) {
                if (std::isnan(s)) break;
                addPart(s);
                Steel::CMemberPoint p;
                p.SetPos(piece.Position(s));
                addPoint(p);
            }
        }
        addPart(1.0);
    }
    addPoint(given.back());
}

// The bending moments, alone unless `withAxial` says so: axial forces take part by 6.3.3. A uniform moment in their place, N·m, keeps the restraints as the real
// moments have them: those of the compression or the tension flange become those of a flange.
Stability::CriticalLoads MemberCheck::Analyse(bool atShearCentre, double uniform, bool withAxial) const
{
    std::vector<Steel::CMemberPoint> points = m_in.points;
    std::vector<Steel::CSubSpan> subSpans = m_in.subSpans;
    if (uniform != 0.0) DivideAtContraflexures(points, subSpans);
    for (Steel::CSubSpan& sub : subSpans) {
        Vec3<double> left = sub.GetForcesLeft();
        Vec3<double> right = sub.GetForcesRight();
        if (!withAxial) left.x = right.x = 0.0;
        if (uniform != 0.0) {
            left.z = right.z = 0.0;
            sub.SetMomentsAll({0.0, uniform, 0.0}, {0.0, uniform, 0.0});
        }
        sub.SetForcesAll(left, right);
        if (atShearCentre) MoveToShearCentre(sub);
    }
    for (Steel::CMemberPoint& p : points) {
        if (uniform != 0.0) {
            const auto before = m_major.LeftOf(p.GetPos());
            const auto after = m_major.RightOf(p.GetPos());
            const Design::Extremes both{std::min(before.least, after.least), std::max(before.greatest, after.greatest)};
            p.SetRestraint(Design::Resolved(p.GetRestraint(), SignOf(both)));
        }
        if (atShearCentre) MoveToShearCentre(p);
    }
    CString reason;
    const auto constants =
        Stability::MakeSectionConstants(m_in.keltrixSection, m_in.material.E, m_in.material.G, &reason);
    if (!constants) {
        Stability::CriticalLoads none;
        none.reason = reason;
        return none;
    }
    return Stability::FindCriticalLoads(points, subSpans, MomentDiagram(points, subSpans, Design::Bending::Major),
                                        *constants, Stability::FACTORS_ALONE);
}

void MemberCheck::FindLaterals()
{
    m_laterals.clear();
    const std::optional<LateralRule> rule = LateralRuleOf(m_in.section.basis, *m_in.annex);
    const double M = MomentsOver(m_in.Start(), m_in.End()).My;
    if (!rule || !(M > 0.0 || HasShift())) {
        LateralSpan whole;
        whole.start = m_in.Start();
        whole.end = m_in.End();
        whole.held = true;
        whole.M = rule ? 0.0 : M;
        // What does not buckle laterally can be free to move all the same.
        if (!rule && M > 0.0 && !m_in.lengthOverride) {
            const Stability::CriticalLoads loads = Analyse(false, 0.0);
            whole.mechanism = std::any_of(loads.units.begin(), loads.units.end(),
                                          [](const Stability::Unit& unit) { return unit.outcome == Outcome::NotHeld; });
        }
        m_laterals.push_back(whole);
        return;
    }
    if (m_in.lengthOverride)
        FindOverridden();
    else if (IsAngle())
        FindOfAngle();
    else
        FindElastic();
    for (LateralSpan& span : m_laterals) {
        span.rule = rule;
        CheckLateral(span);
    }
}

// A given length stands for the whole member, with the closed form for a uniform moment of each sense that acts.
void MemberCheck::FindOverridden()
{
    LateralSpan span;
    span.start = m_in.Start();
    span.end = m_in.End();
    span.M = MomentsOver(span.start, span.end).My;
    const double L = m_in.Llt >= 0.0 ? m_in.Llt : -m_in.Llt * m_in.Length();
    span.lambda = span.Mcr = NEVER;
    span.C1Source = L"with a given length the moment counts as uniform";
    if (HasLoadHeight(span.start, span.end))
        span.open = L"the effective length is given, and the closed form of Mcr takes loads at the shear centre alone";
    else if (m_in.options.lateral == LateralMethod::Simplified)
        span.open = L"the effective length is given, and 6.3.2.4 goes by the supports of the compression flange";
    else if (L > 0.0) {
        const auto Mcr = [&](bool top) { return UniformMcr(m_in.section, m_in.material.E, m_in.material.G, L, top); };
        const double least = std::min(Mcr(true), Mcr(false));
        span.Mcr =
            m_classActions.compressesTop == m_classActions.compressesBottom ? least : Mcr(m_classActions.compressesTop);
        span.lambda = span.M > 0.0 ? span.Mcr / span.M : NEVER;
        if (HasShift()) span.shiftChi = ShiftChi(least);
    }
    span.uniformMcr = span.Mcr;
    m_laterals.push_back(span);
}

void MemberCheck::FindElastic()
{
    const Stability::CriticalLoads loads = Analyse(false, 0.0);
    const auto add = [this](double from, double to, bool held) {
        LateralSpan span;
        span.start = from;
        span.end = to;
        span.held = held;
        const double M = m_major.Between(from, to).Magnitude();
        span.M = M > m_check->NoiseMy() ? M : 0.0;
        m_laterals.push_back(span);
        return m_laterals.size() - 1;
    };
    if (!loads.IsAnswered()) {
        m_laterals[add(m_in.Start(), m_in.End(), false)].open = L"the elastic analysis of the member gives no answer";
        return;
    }
    const bool byTables = m_in.options.mcr == CriticalMoment::C1;
    Stability::CriticalLoads centre, uniform;
    const bool simplified = m_in.options.lateral == LateralMethod::Simplified;
    const bool withC1 = !byTables && !simplified &&
                        (LateralRuleOf(m_in.section.basis, *m_in.annex)->isModified ||
                         m_in.options.interaction == InteractionMethod::AnnexA);
    if (withC1) centre = HasLoadHeight(m_in.Start(), m_in.End()) ? Analyse(true, 0.0) : loads;
    if (withC1 || HasShift()) uniform = Analyse(true, 1000.0);
    double x = m_in.Start();
    for (const Stability::Unit& unit : loads.units) {
        if (unit.start - x > m_in.SamePlace()) add(x, unit.start, true);
        LateralSpan& span = m_laterals[add(unit.start, unit.end, false)];
        SetElastic(span, unit);
        if (simplified)
            SetSimplified(span);
        else if (byTables)
            SetByTables(span);
        else if (withC1)
            SetC1(span, centre, uniform);
        if (HasShift()) SetShift(span, uniform);
        x = unit.end;
    }
    if (m_in.End() - x > m_in.SamePlace()) add(x, m_in.End(), true);
}

void MemberCheck::SetElastic(LateralSpan& span, const Stability::Unit& unit) const
{
    span.open = Stability::DesignRefusal(unit);
    span.lambda = span.Mcr = NEVER;
    span.mechanism = unit.outcome == Outcome::NotHeld;
    if (span.mechanism) span.lambda = span.Mcr = 0.0;
    if (!unit.positive || span.mechanism) return;
    span.lambda = unit.positive->lambda;
    span.error = unit.positive->error;
    span.largestMoment = unit.largestMoment;
    span.Mcr = span.lambda * unit.largestMoment / (1.0 + span.error);
}

// C1: the critical moment with all loads at the shear centre over that under uniform moment of the same sense, by the same solver. 1 where one
// of them is not found.
void MemberCheck::SetC1(LateralSpan& span, const Stability::CriticalLoads& centre,
                        const Stability::CriticalLoads& uniform) const
{
    span.C1Source = L"elastic Mcr with loads at the shear centre over that under uniform moment";
    const auto range = m_major.Covering(span.start, span.end);
    // All sub-spans together, so that it does not matter where the member is divided.
    bool byMoment = false;
    Design::Extremes held;
    for (int k = range.first; k < range.last; ++k) {
        const auto& piece = m_major.At(k);
        if (m_in.subSpans[static_cast<std::size_t>(k)].GetRestraint().IsFree(BY_MOMENT, false)) continue;
        const Design::Extremes along = m_major.Between(piece.start, piece.End());
        held = byMoment ? Design::Extremes{std::min(held.least, along.least), std::max(held.greatest, along.greatest)}
                        : along;
        byMoment = true;
    }
    if (byMoment && SignOf(held) == 0) {
        span.C1Source = L"a restraint along it changes its flange with the moment: taken as uniform";
        return;
    }
    const auto* a = FindUnit(centre, span.start, span.end, m_in.SamePlace());
    const auto* b = FindUnit(uniform, span.start, span.end, m_in.SamePlace());
    const Design::Extremes moments = m_major.Between(span.start, span.end);
    const auto& reference = !b ? std::optional<Stability::CriticalLoad>{}
                            : std::abs(moments.greatest) >= std::abs(moments.least) ? b->positive
                                                                                    : b->negative;
    if (reference) span.uniformMcr = std::abs(reference->lambda) * b->largestMoment / (1.0 + reference->error);
    if (!a || !a->positive || !reference) {
        span.C1Source = L"no critical load under uniform moment: taken as uniform";
        return;
    }
    span.C1 = a->positive->lambda * a->largestMoment / (std::abs(reference->lambda) * b->largestMoment);
}

double MemberCheck::ShiftChi(double Mcr) const
{
    const double MRk = m_class.Wy * m_in.material.fy;
    return ReduceLateral(*LateralRuleOf(m_in.section.basis, *m_in.annex), Mcr > 0.0 ? std::sqrt(MRk / Mcr) : NEVER, 1.0)
        .chi;
}

// The moment NEd eN of class 4 bends the length evenly, in the sense that is worse.
void MemberCheck::SetShift(LateralSpan& span, const Stability::CriticalLoads& uniform) const
{
    const auto* const unit = FindUnit(uniform, span.start, span.end, m_in.SamePlace());
    span.shiftChi = 0.0;
    if (!unit || unit->outcome == Outcome::NotHeld) return;
    double Mcr = NEVER;
    for (const auto& load : {unit->positive, unit->negative})
        if (load) Mcr = std::min(Mcr, std::abs(load->lambda) * unit->largestMoment / (1.0 + load->error));
    span.shiftChi = ShiftChi(Mcr);
}

// k = kw = 1 between forks: C1 of end moments and of single loads on simple spans as handbooks have it, otherwise from the quarter points.
void MemberCheck::SetByTables(LateralSpan& span) const
{
    const auto isFork = [&](double x) {
        const auto p = FirstPointFrom(x - m_in.SamePlace());
        return IsHeld(BucklingMode::Minor, p->GetRestraint()) && IsHeld(BucklingMode::Torsion, p->GetRestraint());
    };
    if (span.open || span.mechanism || !(span.M > 0.0)) return;
    if (m_in.section.basis.monosymmetry != 0.0) {
        span.open =
            L"the closed form of Mcr with the tables' C1 is for sections that are symmetrical about the major axis";
        return;
    }
    const bool startInside = span.start > m_in.Start() + m_in.SamePlace();
    const bool endInside = span.end < m_in.End() - m_in.SamePlace();
    if ((!startInside && !isFork(span.start)) || (!endInside && !isFork(span.end))) {
        span.open = L"an end is no fork: the closed form of Mcr does not hold";
        return;
    }
    if (HasLoadHeight(span.start, span.end)) {
        span.open = L"a load acts off the shear centre, which the closed form with C1 alone does not take";
        return;
    }
    const MomentPattern p = PatternOf(m_major, span.start, span.end);
    const double L = span.end - span.start;
    const auto magnitude = [&](double share) { return m_major.LeftOf(span.start + share * L).Magnitude(); };
    const double ends = std::abs(p.left) >= std::abs(p.right) ? p.left : p.right;
    const double other = ends == p.left ? p.right : p.left;
    const double m2 = magnitude(0.25), m3 = magnitude(0.5), m4 = magnitude(0.75);
    const double least = 1e-9 * span.M;
    const bool simple = std::abs(ends) <= least && std::abs(m2 - m4) <= 1e-6 * span.M;
    if (p.linear) {
        const double c = 1.33 - 0.33 * other / ends;
        span.C1 = c * c;
        span.C1Source = L"end moments, (1.33 - 0.33 ψ)²";
    } else if (simple && p.uniform && !p.point && std::abs(m2 - 0.75 * m3) <= 1e-6 * span.M) {
        span.C1 = 1.127;
        span.C1Source = L"uniform load on a simple span";
    } else if (simple && !p.uniform && p.point && std::abs(m2 - 0.5 * m3) <= 1e-6 * span.M) {
        span.C1 = 1.348;
        span.C1Source = L"force at the middle of a simple span";
    } else {
        const double M2 = span.M * span.M;
        span.C1 = std::sqrt(35.0 * M2 / (M2 + 9.0 * m2 * m2 + 16.0 * m3 * m3 + 9.0 * m4 * m4));
        span.C1Source = L"from the moments at the quarter points";
    }
    span.error = 0.0;
    span.Mcr = ElasticMoment(m_in.section.basis, m_in.material.E, m_in.material.G, L, span.C1);
    span.lambda = span.Mcr / span.M;
    span.uniformMcr = span.Mcr / span.C1;
}

void MemberCheck::CheckLateral(LateralSpan& span) const
{
    if (!span.open && !(m_class.Wy > 0.0)) span.open = m_class.effective.refusalY;
    if (!span.IsApplied() || span.open) return;
    const double MRk = m_class.Wy * m_in.material.fy;
    if (span.flange) {
        // (6.59): no reduction of a slenderness up to λc0 Mc,Rd/My,Ed. Interaction takes kfl χ all the same.
        const double McRd = MRk / m_in.strength.gammaM1;
        const bool stocky = span.flange->slenderness * span.M <= m_in.annex->flangePlateau * McRd;
        span.MbRd = (stocky ? 1.0 : span.flange->chi) * McRd;
        span.utilisation = span.MbRd > 0.0 ? span.M / span.MbRd : NEVER;
        return;
    }
    const double slenderness = span.Mcr > 0.0 ? std::sqrt(MRk / span.Mcr) : NEVER;
    span.reduction = ReduceLateral(*span.rule, slenderness, span.C1);
    span.MbRd = span.Chi() * MRk / m_in.strength.gammaM1;
    span.utilisation = span.MbRd > 0.0 ? span.M / span.MbRd : NEVER;
}

// Cantilevers, and lengths with restraints between their ends: the ratio of two critical moments may be above that of any diagram of the table.
// Told where the length fails without the factor, or its resistance is part of an interaction.
void MemberCheck::WarnOfCurveFactor(std::size_t lateral)
{
    const LateralSpan& span = m_laterals[lateral];
    const LateralReduction& r = span.reduction;
    if (!(r.chiMod > r.chi) || !(span.C1 > LARGEST_C1)) return;
    const double unraised = span.utilisation * r.chiMod / r.chi;
    const bool interacts = std::any_of(m_combinations.begin(), m_combinations.end(),
                                       [&](const Combination& c) { return c.lateral == lateral; });
    if (unraised <= 1.0 && !interacts) return;
    CString text;
    text.Format(L"lateral-torsional buckling, %s to %s: C1 = %s is above that of any moment diagram of Table 6.6 "
                L"(2.76), and kc = 1/C1^0.5 raises χLT "
                L"from %s to %s; without it the utilisation is %s",
                m_in.format.Length(span.start), m_in.format.Length(span.end), m_in.format.NoDim(span.C1),
                m_in.format.NoDim(r.chi), m_in.format.NoDim(r.chiMod), m_in.format.Util(unraised));
    m_findings.warnings.push_back({Design::WarningKind::CurveFactor, text, -1, span.start, span.end, unraised});
}

void MemberCheck::RecordLateral(const LateralSpan& span)
{
    RuleFinding f = FindingOf(Rule::Lateral, CheckStatus::NotApplicable);
    f.start = span.start;
    f.end = span.end;
    const auto leave = [&](CheckStatus status, const wchar_t* reason) {
        f.status = status;
        f.reason = reason;
        Add(f);
    };
    if (!span.rule && span.mechanism) {
        f.utilisation = NEVER;
        return leave(CheckStatus::Failed, L"not held: the restraints leave it free to move or twist");
    }
    if (!span.rule && span.M > 0.0) return leave(CheckStatus::NotApplicable, L"the section does not buckle laterally");
    if (!(span.M > 0.0)) return leave(CheckStatus::NotApplicable, L"no moment about the major axis");
    if (span.held)
        return leave(CheckStatus::NotApplicable, L"held against lateral movement and twist along its length");
    if (span.open) return leave(CheckStatus::NotEvaluated, span.open);
    f.symbol = L"MbRd";
    f.quantity = Quantity::Moment;
    f.resistance = span.MbRd;
    f.slenderness = span.flange ? span.flange->slenderness : span.reduction.slenderness;
    if (span.flange) f.clause = L"6.3.2.4";
    AddResistance(L"MbRd", Quantity::Moment, span.MbRd, span.start, span.end);
    if (std::isinf(span.Mcr) && !span.flange)
        return leave(CheckStatus::NotApplicable, L"no elastic critical load: nothing buckles under these moments");
    f.utilisation = Steel::CMemberResult::InfinitiseNANs(span.utilisation);
    f.status = f.utilisation <= 1.0 ? CheckStatus::Passed : CheckStatus::Failed;
    if (span.mechanism) return leave(CheckStatus::Failed, L"not held: the restraints leave it free to move or twist");
    if (span.flange) {
        AddResistance(L"chiLT", Quantity::None, span.Chi(), span.start, span.end);
        if (m_in.withSteps) AddFlangeSteps(f, span);
        return Add(f);
    }
    const LateralReduction& r = span.reduction;
    AddResistance(L"Mcr", Quantity::Moment, span.Mcr, span.start, span.end);
    AddResistance(L"lambdaLT", Quantity::None, r.slenderness, span.start, span.end);
    AddResistance(L"chiLT", Quantity::None, r.chiMod, span.start, span.end);
    if (*span.C1Source) AddResistance(L"C1", Quantity::None, span.C1, span.start, span.end);
    AddResistance(L"f", Quantity::None, r.f, span.start, span.end);
    if (m_in.withSteps) {
        const auto n = [this](double value) { return m_in.format.NoDim(value); };
        if (m_in.lengthOverride || IsAngle())
            AddStep(f, L"Mcr", Quantity::Moment, span.Mcr, L"6.3.2.2(2)")
                .Formula(L"(Pz β/2) + ((Pz β/2)² + Pz (G It + π² E Iw/L²))^0.5")
                .Note(L"of a uniform moment, Pz = π² E Iz/L²");
        else if (m_in.options.mcr == CriticalMoment::C1)
            AddStep(f, L"Mcr", Quantity::Moment, span.Mcr, L"6.3.2.2(2)")
                .Formula(L"C1 (Pz (G It + π² E Iw/L²))^0.5")
                .Note(L"Pz = π² E Iz/L², C1 %s, L = %s", span.C1Source, m_in.format.Length(span.end - span.start));
        else
            AddStep(f, L"Mcr", Quantity::Moment, span.Mcr, L"6.3.2.2(2)")
                .Formula(L"λcr Mmax/(1 + error)")
                .Values(L"%s * %s/(1 + %s)", n(span.lambda), m_in.format.Moment(span.largestMoment), n(span.error));
        AddStep(f, L"λLT", Quantity::None, r.slenderness, L"6.3.2.2(1)")
            .Formula(L"(Wy fy/Mcr)^0.5")
            .Values(L"(%s/%s)^0.5", m_in.format.Moment(m_class.Wy * m_in.material.fy), m_in.format.Moment(span.Mcr));
        AddStep(f, L"αLT", Quantity::None, ImperfectionFactor(span.rule->curve), span.rule->clause)
            .Note(L"curve %s", CurveName(span.rule->curve));
        AddStep(f, L"φLT", Quantity::None, r.phi, span.rule->clause)
            .Formula(L"0.5(1 + αLT(λLT - %s) + %s λLT²)", n(span.rule->lambda0), n(span.rule->beta))
            .Values(L"0.5 * (1 + %s * (%s - %s) + %s * %s²)", n(ImperfectionFactor(span.rule->curve)), n(r.slenderness),
                    n(span.rule->lambda0), n(span.rule->beta), n(r.slenderness));
        AddStep(f, L"χLT", Quantity::None, r.chi, span.rule->clause)
            .Formula(L"min(1, 1/λLT², 1/(φLT + (φLT² - %s λLT²)^0.5))", n(span.rule->beta))
            .Values(L"min(1, 1/%s², 1/(%s + (%s² - %s * %s²)^0.5))", n(r.slenderness), n(r.phi), n(r.phi),
                    n(span.rule->beta), n(r.slenderness));
        if (span.rule->isModified) {
            AddStep(f, L"C1", Quantity::None, span.C1, L"").Note(L"%s", span.C1Source);
            AddStep(f, L"kc", Quantity::None, r.kc, L"6.3.2.3(2)")
                .Formula(L"min(1, 1/C1^0.5)")
                .Values(L"min(1, 1/%s^0.5)", n(span.C1));
            AddStep(f, L"f", Quantity::None, r.f, L"6.3.2.3(2)")
                .Formula(L"min(1, 1 - 0.5(1 - kc)(1 - 2(λLT - 0.8)²))")
                .Values(L"min(1, 1 - 0.5 * (1 - %s) * (1 - 2 * (%s - 0.8)²))", n(r.kc), n(r.slenderness));
            AddStep(f, L"χLT,mod", Quantity::None, r.chiMod, L"(6.58)")
                .Formula(L"min(1, 1/λLT², χLT/f)")
                .Values(L"min(1, 1/%s², %s/%s)", n(r.slenderness), n(r.chi), n(r.f));
        }
        AddStep(f, L"MbRd", Quantity::Moment, span.MbRd, L"(6.55)")
            .Formula(L"χLT Wy fy/γM1")
            .Values(L"%s * %s/%s", n(r.chiMod), m_in.format.Moment(m_class.Wy * m_in.material.fy),
                    n(m_in.strength.gammaM1));
        AddStep(f, IsAngle() ? L"MuEd" : L"MyEd", Quantity::Moment, span.M, L"");
    }
    Add(f);
}

} // namespace Keltrix::EC3
