// Bending about z-z of sections that are stiffer about z-z than about y-y: 6.3.2.1(1) has the axis of the larger stiffness in mind, whatever the
// axes are called.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "MemberCheck.h"
#include "keltrix/ec3/Buckling.h"
#include "keltrix/stability/AcrossWeb.h"
#include "keltrix/stability/Refusal.h"

namespace Keltrix::EC3 {

using Design::CheckStatus;
using Design::Quantity;
using Design::RuleFinding;
using Stability::Outcome;

namespace {

// 6.3.2.2: "other cross-sections".
constexpr LateralRule OTHER_SECTIONS{L"6.3.2.2", Curve::D, 0.2, 1.0, false};

} // namespace

// The lengths along the member, each with the elastic critical moment at which it moves along the web and twists.
std::vector<AcrossLength> MemberCheck::FindAcross() const
{
    const Section& s = m_in.section;
    std::vector<AcrossLength> lengths;
    if (m_in.lengthOverride) {
        // It moves along the web, as the major axis does, and twists.
        const auto given = [&](double length) { return length >= 0.0 ? length : -length * m_in.Length(); };
        const double L = std::max(given(m_in.Lyy), given(m_in.Llt));
        if (L == 0.0) {
            AcrossLength& length = lengths.emplace_back(AcrossLength{m_in.Start(), m_in.End(), NEVER});
            length.held = L"moments about z-z, the stiffer axis: the lengths given for movement along the web and for "
                          L"lateral-torsional buckling are 0";
            return lengths;
        }
        constexpr double PI_SQUARED = std::numbers::pi * std::numbers::pi;
        const double torsion = m_in.material.G * s.It + PI_SQUARED * m_in.material.E * s.Iw / (L * L);
        lengths.push_back({m_in.Start(), m_in.End(), std::sqrt(FlexuralNcr(m_in.material.E, s.Iy, L) * torsion)});
        return lengths;
    }
    const auto constants =
        Stability::MakeSectionConstants(m_in.keltrixSection, m_in.material.E, m_in.material.G, nullptr);
    Stability::CriticalLoads loads;
    if (constants)
        loads = Stability::FindCriticalLoadsAcross(m_in.points, m_in.subSpans, *constants,
                                                   std::max(s.basis.B, s.basis.B2), Stability::FACTORS_ALONE);
    if (!constants || !loads.IsAnswered()) {
        lengths.push_back({m_in.Start(), m_in.End(), 0.0,
                           L"the section is stiffer about z-z than about y-y, and no elastic critical "
                           L"moment about z-z can be found for it"});
        return lengths;
    }
    double x = m_in.Start();
    const auto addHeld = [&](double to) {
        if (!(to - x > m_in.SamePlace())) return;
        lengths.emplace_back(AcrossLength{x, to, NEVER}).held =
            L"moments about z-z, the stiffer axis: held along the web and against twist along its length";
    };
    for (const Stability::Unit& unit : loads.units) {
        addHeld(unit.start);
        x = unit.end;
        AcrossLength& length = lengths.emplace_back(AcrossLength{unit.start, unit.end});
        length.open = Stability::DesignRefusal(unit);
        length.mechanism = unit.outcome == Outcome::NotHeld;
        length.Mcr = length.mechanism ? 0.0 : NEVER;
        if (unit.positive && !length.mechanism)
            length.Mcr = unit.positive->lambda * unit.largestMoment / (1.0 + unit.positive->error);
    }
    addHeld(m_in.End());
    return lengths;
}

// 6.3.2.2 for moments about z-z alone. No rule covers them together with moments about y-y or compression: up to the slenderness of
// 6.3.2.2(4) nothing is lost, beyond it such a length stays open.
void MemberCheck::RecordLateralAcross()
{
    const Section& s = m_in.section;
    if (IsAngle() || !(s.Iz > s.Iy * (1.0 + 1e-9))) return;
    if (!(MomentsOver(m_in.Start(), m_in.End()).Mz > 0.0)) return;
    const double plateau = (s.IsWelded() ? m_in.annex->welded : m_in.annex->rolled).lambda0;
    const double MRk = m_class.Wz * m_in.material.fy;
    for (const AcrossLength& length : FindAcross()) {
        const StretchMoments moments = MomentsOver(length.start, length.end);
        if (!(moments.Mz > 0.0)) continue;
        RuleFinding f = FindingOf(Rule::Lateral, CheckStatus::NotEvaluated, length.open);
        f.start = length.start;
        f.end = length.end;
        if (length.open) {
            Add(f);
            continue;
        }
        if (length.held) {
            f.status = CheckStatus::NotApplicable;
            f.reason = length.held;
            Add(f);
            continue;
        }
        const double slenderness = std::sqrt(MRk / length.Mcr);
        f.slenderness = slenderness;
        const bool isStocky = slenderness <= plateau || moments.Mz <= plateau * plateau * length.Mcr;
        const bool isAlone = !(moments.My > 0.0) && !(LargestCompression(length.start, length.end) > 0.0);
        if (MRk > 0.0 && isStocky) {
            f.status = CheckStatus::NotApplicable;
            f.clause = L"6.3.2.2(4)";
            f.reason = L"moments about z-z, the stiffer axis: up to the slenderness, or the share of Mcr, at which "
                       L"nothing is lost";
        } else if (!isAlone && !length.mechanism) {
            RuleFinding alone = f;
            CheckAcross(alone, length, moments.Mz);
            Add(alone);
            f.reason = L"the section is stiffer about z-z than about y-y, and lateral-torsional buckling under moments "
                       L"about z-z "
                       L"together with moments about y-y or compression is not evaluated";
        } else {
            CheckAcross(f, length, moments.Mz);
        }
        Add(f);
    }
}

void MemberCheck::CheckAcross(RuleFinding& f, const AcrossLength& length, double M)
{
    const double MRk = m_class.Wz * m_in.material.fy;
    const LateralReduction r = ReduceLateral(OTHER_SECTIONS, f.slenderness, 1.0);
    const double chi = length.mechanism ? 0.0 : r.chi;
    f.symbol = L"MbzRd";
    f.quantity = Quantity::Moment;
    f.resistance = chi * MRk / m_in.strength.gammaM1;
    f.utilisation = Steel::CMemberResult::InfinitiseNANs(M / f.resistance);
    f.status = f.utilisation <= 1.0 ? CheckStatus::Passed : CheckStatus::Failed;
    f.reason = length.mechanism
                   ? L"moments about z-z, the stiffer axis: not held, the restraints leave it free to move or twist"
                   : L"moments about z-z, the stiffer axis";
    AddResistance(L"MbzRd", Quantity::Moment, f.resistance, length.start, length.end);
    if (!m_in.withSteps || length.mechanism) return;
    Design::Step& Mcr = AddStep(f, L"Mcr", Quantity::Moment, length.Mcr, L"6.3.2.2(2)");
    if (m_in.lengthOverride)
        Mcr.Formula(L"(Ncr,y (G It + π² E Iw/L²))^0.5").Note(L"of a uniform moment about z-z");
    else
        Mcr.Note(L"elastic analysis of the length under moments about z-z alone, less the estimated error");
    AddStep(f, L"λLT", Quantity::None, f.slenderness, L"6.3.2.2(1)")
        .Formula(L"(Wz fy/Mcr)^0.5")
        .Values(L"(%s/%s)^0.5", m_in.format.Moment(MRk), m_in.format.Moment(length.Mcr));
    AddStep(f, L"χLT", Quantity::None, r.chi, OTHER_SECTIONS.clause).Note(L"curve %s", CurveName(OTHER_SECTIONS.curve));
    AddStep(f, L"MbzRd", Quantity::Moment, f.resistance, L"(6.55)")
        .Formula(L"χLT Wz fy/γM1")
        .Values(L"%s * %s/%s", m_in.format.NoDim(chi), m_in.format.Moment(MRk),
                m_in.format.NoDim(m_in.strength.gammaM1));
    AddStep(f, L"MzEd", Quantity::Moment, M, L"");
}

} // namespace Keltrix::EC3
