// The steps of (6.61) and (6.62) with their numbers, so that they can be followed by hand.

#include "MemberCheck.h"

namespace Keltrix::EC3 {

using Design::Quantity;
using Design::RuleFinding;

void MemberCheck::AddInteractionSteps(RuleFinding& f, const Combination& c, bool first) const
{
    const StrutSpan& span = m_struts[first ? c.major : c.minor];
    const LateralSpan& lateral = m_laterals[c.lateral];
    const AnnexBInput& i = c.input;
    const auto n = [this](double value) { return m_in.format.NoDim(value); };
    const auto moment = [this](double value) { return m_in.format.Moment(value); };
    const double gamma = m_in.strength.gammaM1;
    const double share = first ? i.ny : i.nz;
    const bool twists = c.twists && (first ? c.NyRd : c.NzRd) < (span.open ? 0.0 : span.strut.NbRd);
    if (!span.open && !twists)
        AddStep(f, first ? (IsAngle() ? L"χu" : L"χy") : (IsAngle() ? L"χv" : L"χz"), Quantity::None,
                span.strut.reduction.chi, L"(6.49)", L"curve %s, λ = %s", CurveName(span.strut.curve),
                n(span.strut.slenderness));
    AddStep(f, L"NEd/Nb,Rd", Quantity::None, share, twists ? L"Nb,TF" : L"(6.47)", L"%s/%s",
            m_in.format.Force(first ? c.Ny : c.Nz), m_in.format.Force(first ? c.NyRd : c.NzRd));
    AddFactorSteps(f, c, first);
    const double My = c.My > 0.0 ? c.My / (lateral.Chi() * c.MyRk / gamma) : 0.0;
    const double shift = c.shiftMy > 0.0 ? c.shiftMy / (lateral.shiftChi * c.MyRk / gamma) : 0.0;
    const double Mz = c.Mz + c.shiftMz > 0.0 ? (c.Mz + c.shiftMz) / (c.MzRk / gamma) : 0.0;
    AddStep(f, IsAngle() ? L"Mu,Ed/Mb,Rd" : L"My,Ed/Mb,Rd", Quantity::None, My, L"χLT My,Rk/γM1", L"%s/(%s * %s)",
            moment(c.My), n(lateral.Chi()), moment(c.MyRk / gamma));
    if (c.shiftMy > 0.0)
        AddStep(f, L"ΔMy,Ed/Mb,Rd", Quantity::None, shift, L"NEd eN,y", L"%s/(%s * %s)", moment(c.shiftMy),
                n(lateral.shiftChi), moment(c.MyRk / gamma));
    CString effect = moment(c.Mz);
    if (c.shiftMz > 0.0) effect = CString(L"(") + effect + L" + " + moment(c.shiftMz) + L")";
    AddStep(f, IsAngle() ? L"Mv,Ed/Mv,Rd" : L"Mz,Ed/Mz,Rd", Quantity::None, Mz, L"Mz,Rk/γM1", L"%s/%s", effect,
            moment(c.MzRk / gamma));
    AddStep(f, L"sum", Quantity::None, first ? c.first : c.second, first ? L"(6.61)" : L"(6.62)",
            L"%s + %s * %s + %s * %s", n(share), n(first ? c.k.kyy : c.k.kzy), n(My + shift),
            n(first ? c.k.kyz : c.k.kzz), n(Mz));
}

} // namespace Keltrix::EC3
