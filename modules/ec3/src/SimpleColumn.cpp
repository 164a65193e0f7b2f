// Columns in simple construction: NEd/Nb,min + My,Ed/Mb,Rd + 1.5 Mz,Ed/Mc,z,Rd <= 1 in place of (6.61) and (6.62).

#include <algorithm>
#include <cmath>

#include "MemberCheck.h"

namespace Keltrix::EC3 {

using Design::CheckStatus;
using Design::Quantity;
using Design::RuleFinding;

// Why the rule does not take a length; null where it does. Beyond the conditions that the rule names, its factors 1.0, 1.0 and 1.5 are not to be below
// those of Annex B.
const wchar_t* MemberCheck::SimpleColumnRefusal(const Combination& c) const
{
    const Section& s = m_in.section;
    const StrutSpan& y = m_struts[c.major];
    const StrutSpan& z = m_struts[c.minor];
    if (!(s.shape == Shape::I || s.shape == Shape::RHS) || s.fabrication != Fabrication::Rolled)
        return L"the section is no rolled I or H section nor a hot finished rectangular or square hollow one";
    if (m_class.cls == 4) return L"the section is class 4";
    if (m_in.lengthOverride) return L"effective lengths are given";
    if (y.open || z.open || y.held || z.held || y.sway || z.sway || std::abs(y.start - z.start) > m_in.SamePlace() ||
        std::abs(y.end - z.end) > m_in.SamePlace())
        return L"it is not held about both axes at the same places, and nowhere between them";
    if (!(LeastCompression(y.start, y.end) > 0.0)) return L"it is not in compression all along";
    const auto isStraight = [&](const Design::MomentDiagram& moments, double noise) {
        return !(moments.Between(y.start, y.end).Magnitude() > noise) ||
               (moments.IsBalanced(y.start, y.end) && PatternOf(moments, y.start, y.end).linear);
    };
    if (!isStraight(m_major, m_check->NoiseMy()) || !isStraight(m_minor, m_check->NoiseMz()))
        return L"its moments are not linear between the floors";
    // A moment that does not act has factors too, of Cm = 1.
    if ((c.My > 0.0 && std::max(c.k.kyy, c.k.kzy) > 1.0) || (c.Mz > 0.0 && std::max(c.k.kyz, c.k.kzz) > 1.5))
        return L"a factor of Annex B is above that of the rule (1.0 for My, 1.5 for Mz)";
    return nullptr;
}

double MemberCheck::LeastCompression(double from, double to) const
{
    double least = std::numeric_limits<double>::infinity();
    const auto range = m_major.Covering(from, to);
    for (int k = range.first; k < range.last; ++k) {
        const Steel::CSubSpan& sub = m_in.subSpans[static_cast<std::size_t>(k)];
        least = std::min({least, -sub.GetForcesLeft().x, -sub.GetForcesRight().x});
    }
    return least;
}

void MemberCheck::CheckSimpleColumn(Combination& c) const
{
    c.simpleRefusal = SimpleColumnRefusal(c);
    if (c.simpleRefusal) return;
    const LateralSpan& lateral = m_laterals[c.lateral];
    SimpleColumnCheck s;
    s.NbRd = std::min(m_struts[c.major].strut.NbRd, m_struts[c.minor].strut.NbRd);
    for (const StrutSpan& t : m_struts)
        if (t.mode == BucklingMode::Torsion && !t.open && t.start < c.end && t.end > c.start)
            s.NbRd = std::min(s.NbRd, t.strut.NbRd);
    s.N = std::max(c.Ny, c.Nz);
    s.MbRd = lateral.Chi() * c.MyRk / m_in.strength.gammaM1;
    s.MczRd = c.MzRk / std::max(m_in.strength.gammaM0, m_in.strength.gammaM1);
    const auto term = [](double action, double resistance) { return action > 0.0 ? action / resistance : 0.0; };
    s.utilisation = term(s.N, s.NbRd) + term(c.My, s.MbRd) + 1.5 * term(c.Mz, s.MczRd);
    c.simple = s;
}

void MemberCheck::RecordSimpleColumn(const Combination& c)
{
    const SimpleColumnCheck& s = *c.simple;
    RuleFinding f = FindingOf(Rule::SimpleColumn, CheckStatus::Passed);
    f.start = c.start;
    f.end = c.end;
    f.utilisation = Steel::CMemberResult::InfinitiseNANs(s.utilisation);
    if (f.utilisation > 1.0) f.status = CheckStatus::Failed;
    if (m_in.withSteps) {
        const CDesFormat& fmt = m_in.format;
        const auto share = [&](const wchar_t* symbol, double factor, double action, double resistance,
                               const CString& values) {
            const double value = action > 0.0 ? factor * action / resistance : 0.0;
            Design::Step& step = AddStep(f, symbol, Quantity::None, value, L"");
            if (action > 0.0) step.Values(L"%s", values);
            return value;
        };
        const double N = share(L"NEd/Nb,Rd", 1.0, s.N, s.NbRd, fmt.Force(s.N) + L"/" + fmt.Force(s.NbRd));
        f.steps.back().Note(L"the least of all modes");
        const double My = share(L"My,Ed/Mb,Rd", 1.0, c.My, s.MbRd, fmt.Moment(c.My) + L"/" + fmt.Moment(s.MbRd));
        const double Mz = share(L"1.5 Mz,Ed/Mc,z,Rd", 1.5, c.Mz, s.MczRd,
                                CString(L"1.5 * ") + fmt.Moment(c.Mz) + L"/" + fmt.Moment(s.MczRd));
        AddStep(f, L"sum", Quantity::None, f.utilisation, f.clause)
            .Values(L"%s + %s + %s", fmt.NoDim(N), fmt.NoDim(My), fmt.NoDim(Mz));
    }
    Add(f);
}

} // namespace Keltrix::EC3
