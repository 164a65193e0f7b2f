// Bending about z-z of sections that are stiffer about z-z than about y-y: 6.3.2.1(1) has the axis of the larger stiffness in mind, whatever the
// axes are called.

#include <cmath>
#include <numbers>

#include "MemberCheck.h"
#include "keltrix/ec3/Buckling.h"

namespace Keltrix::EC3 {

namespace {

// Under a uniform moment about z-z between forks. The section moves along its web then.
double MomentAcross(const Section& s, double E, double G, double L)
{
    const double k2 = std::numbers::pi * std::numbers::pi / (L * L);
    return std::sqrt(FlexuralNcr(E, s.Iy, L) * (G * s.It + k2 * E * s.Iw));
}

} // namespace

// Lateral-torsional buckling is evaluated about y-y alone. About z-z nothing is lost up to the slenderness of 6.3.2.2(4), found for a uniform
// moment, which is safe; beyond it the length stays open.
void MemberCheck::RecordLateralAcross()
{
    const Section& s = m_in.section;
    if (IsAngle() || !(s.Iz > s.Iy * (1.0 + 1e-9))) return;
    const double plateau = (s.IsWelded() ? m_in.annex->welded : m_in.annex->rolled).lambda0;
    for (const ForkLength& length : FindForkLengths()) {
        Design::RuleFinding f =
            FindingOf(Rule::Lateral, Design::CheckStatus::NotEvaluated,
                      L"the section is stiffer about z-z than about y-y, and lateral-torsional buckling under "
                      L"moments about z-z is not evaluated");
        f.start = length.start;
        f.end = length.end;
        const double M = MomentsOver(f.start, f.end).Mz;
        if (length.held || !(M > 0.0)) continue;
        const double Mcr = length.isFork ? MomentAcross(s, m_in.material.E, m_in.material.G, f.end - f.start) : 0.0;
        const double slenderness2 = m_class.Wz * m_in.material.fy / Mcr;
        const bool isStocky = slenderness2 <= plateau * plateau || M <= plateau * plateau * Mcr;
        if (m_class.Wz > 0.0 && isStocky) continue;
        if (length.isFork) f.slenderness = std::sqrt(slenderness2);
        Add(f);
    }
}

} // namespace Keltrix::EC3
