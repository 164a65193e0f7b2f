#include "AcrossChecks.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "BucklingEntry.h"
#include "ElasticRules.h"
#include "SpanClass.h"
#include "keltrix/bs5950/Resistance.h"
#include "keltrix/stability/AcrossWeb.h"

namespace Keltrix::BS5950 {

using Stability::Outcome;
using Steel::CMemberResult;

namespace {

// Share by which the second moments differ where the section is stiffer about y-y.
constexpr double STIFFER = 1e-9;

} // namespace

void AcrossChecks::Check()
{
    const SectionProperties& s = m_model.Properties();
    m_found.across.clear();
    if (!(s.Iy > s.Ix * (1.0 + STIFFER)) || s.shape == Shape::Angle ||
        m_model.minor.Largest() <= m_model.LeastMomentY())
        return;
    if (m_model.lengthOverride)
        FindGiven();
    else
        Find();
    for (AcrossResult& across : m_found.across) {
        if (!across.open) CheckOne(across);
        Record(across);
    }
    if (m_found.across.empty() || m_model.lengthOverride) return;
    m_found.Assume(
        L"lateral-torsional buckling under moments about y-y",
        L"by elastic critical moments (Annex B.2): the section is stiffer about y-y; loads along x-x act at the edge "
        L"of "
        L"the section towards which they destabilise, only supports along the web and restraint against twist count",
        std::nan(""));
}

// A given effective length is that of a uniform moment between forks. The section moves along its web, as it does about the major axis, and twists:
// the longer of both lengths.
void AcrossChecks::FindGiven()
{
    const SectionProperties& s = m_model.Properties();
    const double E = m_model.Steel().E;
    AcrossResult across;
    const auto given = [this](double length) { return length >= 0.0 ? length : -length * m_model.Length(); };
    across.LE = std::max(given(m_model.Lyy), given(m_model.Llt));
    across.elastic.start = m_model.points.front().GetPos();
    across.elastic.end = m_model.points.back().GetPos();
    across.elastic.largestMoment = m_model.minor.Largest();
    if (across.LE == 0.0) return;
    const double k2 = std::numbers::pi * std::numbers::pi / (across.LE * across.LE);
    across.elastic.outcome = Outcome::Buckles;
    across.elastic.Mcr = std::sqrt(k2 * E * s.Ix * (E / 2.6 * s.J + k2 * E * s.H));
    m_found.across.push_back(across);
}

void AcrossChecks::Find()
{
    const double E = m_model.Steel().E;
    CString reason;
    const auto constants = Stability::MakeSectionConstants(m_model.KeltrixSection(), E, E / 2.6, &reason);
    Stability::CriticalLoads loads;
    if (constants) {
        const SectionProperties& s = m_model.Properties();
        loads = Stability::FindCriticalLoadsAcross(m_model.points, m_model.subSpans, *constants, std::max(s.B, s.B2),
                                                   Stability::FACTORS_ALONE);
        reason = loads.reason;
    }
    if (!reason.IsEmpty()) {
        AcrossResult whole;
        whole.elastic.start = m_model.points.front().GetPos();
        whole.elastic.end = m_model.points.back().GetPos();
        whole.open =
            L"the section is stiffer about y-y, and no elastic critical moment about that axis can be found for it";
        m_found.across.push_back(whole);
        return;
    }
    for (const Stability::Unit& unit : loads.units) {
        if (unit.largestMoment <= m_model.LeastMomentY()) continue;
        AcrossResult across;
        across.elastic = ElasticUnitOf(unit);
        across.open = across.elastic.refusal;
        m_found.across.push_back(across);
    }
}

// Annex B.2: λLT = (π² E/py)^0.5 (Mp/Mcr)^0.5 with Mp = py Wy of the class.
void AcrossChecks::CheckOne(AcrossResult& across) const
{
    const SectionProperties& s = m_model.Properties();
    const double E = m_model.Steel().E;
    const ElasticUnit& e = across.elastic;
    const SpanClass classes(s, m_model.Steel(), m_model.subSpans, m_model.major, m_model.minor);
    const WorstClass worst = classes.Worst(e.start, e.end, SpanClass::Part::Acted);
    const Classification& c = worst.bendingY;
    across.cls = worst.cls;
    across.py = c.pyMomentY;
    across.modulus = c.Wy;
    across.lambdaLT = std::numbers::pi * std::sqrt(E * c.Wy / e.Mcr);
    across.Mb = BendingStrength(across.lambdaLT, c.pyMomentY, s.IsWelded(), E) * c.Wy;
    across.My = e.largestMoment;
    across.m = m_model.Factor(1.0, 1.0);
    across.utilisation = CMemberResult::InfinitiseNANs(Ratio(across.m * across.My, across.Mb));
    Combine(across);
}

// 4.8.3.3.1 with the axes exchanged, the worse of both axes for the strut.
void AcrossChecks::Combine(AcrossResult& across) const
{
    const ElasticUnit& e = across.elastic;
    const double tolerance = 1e-9 * m_model.Length();
    for (const SpanResult& span : m_found.spans) {
        const bool overlaps = std::min(span.end, e.end) - std::max(span.start, e.start) > tolerance;
        if (span.mode == BucklingMode::LateralTorsional || !overlaps) continue;
        if (span.applied)
            across.compression = std::max(across.compression, CMemberResult::InfinitiseNANs(span.utilisation));
        if (span.mode == BucklingMode::Major)
            across.MxTerm = std::max(across.MxTerm, span.m * span.Mx / span.flexural.pyZx);
    }
    if (across.compression > 0.0 || across.MxTerm > 0.0)
        across.combined = CMemberResult::InfinitiseNANs(across.compression + across.MxTerm + across.utilisation);
}

void AcrossChecks::Record(const AcrossResult& across)
{
    const ElasticUnit& e = across.elastic;
    LedgerEntry entry;
    entry.rule = Rule::LateralTorsional;
    entry.clause = m_model.Properties().shape == Shape::Tee ? L"B.2.8 b, elastic Mcr" : L"Annex B.2, elastic Mcr";
    entry.start = e.start;
    entry.end = e.end;
    if (across.open) {
        entry.status = CheckStatus::NotEvaluated;
        entry.reason = across.open;
        m_found.ledger.Add(entry);
        return;
    }
    entry.status = across.utilisation > 1.0 ? CheckStatus::Failed : CheckStatus::Passed;
    entry.utilisation = across.utilisation;
    entry.slenderness = across.lambdaLT;
    entry.resistance = across.Mb;
    entry.symbol = L"Mb";
    entry.quantity = Quantity::Moment;
    entry.reason = e.outcome == Outcome::NotHeld
                       ? L"moment about y-y, the stiffer axis: not held, the restraints leave the length free to move "
                         L"along the web "
                         L"or to twist"
                       : L"moment about y-y, the stiffer axis, by the elastic critical moment";
    m_found.ledger.Add(entry);
}

void AcrossChecks::RecordCombinations()
{
    for (const AcrossResult& across : m_found.across) {
        if (!(across.combined > 0.0)) continue;
        LedgerEntry entry;
        entry.rule = Rule::BucklingInteraction;
        entry.clause = L"4.8.3.3.1";
        entry.start = across.elastic.start;
        entry.end = across.elastic.end;
        entry.utilisation = across.combined;
        entry.status = entry.utilisation > 1.0 ? CheckStatus::Failed : CheckStatus::Passed;
        entry.reason = L"with lateral-torsional buckling about y-y, the stiffer axis";
        m_found.ledger.Add(entry);
    }
}

} // namespace Keltrix::BS5950
