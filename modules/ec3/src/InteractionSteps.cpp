// The steps of (6.61) and (6.62) with their numbers, so that they can be followed by hand.

#include "MemberCheck.h"

namespace Keltrix::EC3 {

using Design::Quantity;
using Design::RuleFinding;

void MemberCheck::AddAnnexASteps(RuleFinding& f, const Combination& c, bool first) const
{
    const AnnexAFactors& a = *c.annexA;
    const auto n = [this](double value) { return m_in.format.NoDim(value); };
    AddStep(f, L"factors", Quantity::None, std::nan(""), L"Table A.2", L"Cmy,0 = %s, Cmz,0 = %s", n(a.Cmy0), n(a.Cmz0));
    AddStep(f, L"factors", Quantity::None, std::nan(""), L"Table A.1", L"Cmy = %s, Cmz = %s, CmLT = %s", n(a.Cmy),
            n(a.Cmz), n(a.CmLT));
    AddStep(f, L"factors", Quantity::None, std::nan(""), L"Table A.1",
            L"μy = %s, μz = %s, Cyy = %s, Cyz = %s, Czy = %s, Czz = %s", n(a.muY), n(a.muZ), n(a.Cyy), n(a.Cyz),
            n(a.Czy), n(a.Czz));
    AddStep(f, first ? L"kyy" : L"kzy", Quantity::None, first ? c.k.kyy : c.k.kzy, L"Table A.1", L"");
    AddStep(f, first ? L"kyz" : L"kzz", Quantity::None, first ? c.k.kyz : c.k.kzz, L"Table A.1", L"");
}

// Factors of Tables B.1 and B.2.
void MemberCheck::AddFactorSteps(RuleFinding& f, const Combination& c, bool first) const
{
    if (c.annexA) return AddAnnexASteps(f, c, first);
    const AnnexBInput& i = c.input;
    const auto n = [this](double value) { return m_in.format.NoDim(value); };
    const auto by = [&](const wchar_t* symbol, double value, double Cm, double lambda, double share, bool minor) {
        const wchar_t* const table = minor && !i.isHollow && i.isPlastic ? L"Table B.1, I and H" : L"Table B.1";
        CString formula;
        if (!i.isPlastic)
            formula.Format(L"Cm(1 + 0.6 λ n), at most Cm(1 + 0.6 n), of Cm = %s, λ = %s, n = %s", n(Cm), n(lambda),
                           n(share));
        else if (minor && !i.isHollow)
            formula.Format(L"Cm(1 + (2 λ - 0.6) n), at most Cm(1 + 1.4 n), of Cm = %s, λ = %s, n = %s", n(Cm),
                           n(lambda), n(share));
        else
            formula.Format(L"Cm(1 + (λ - 0.2) n), at most Cm(1 + 0.8 n), of Cm = %s, λ = %s, n = %s", n(Cm), n(lambda),
                           n(share));
        AddStep(f, symbol, Quantity::None, value, table, L"%s", formula);
    };
    if (first) {
        by(L"kyy", c.k.kyy, i.Cmy, i.lambdaY, i.ny, false);
        by(L"kzz", c.k.kzz, i.Cmz, i.lambdaZ, i.nz, true);
        AddStep(f, L"kyz", Quantity::None, c.k.kyz, L"Table B.1", i.isPlastic ? L"0.6 kzz" : L"kzz");
        return;
    }
    if (i.isHollow)
        AddStep(f, L"kzy", Quantity::None, c.k.kzy, L"Table B.1", L"%s * %s", i.isPlastic ? L"0.6" : L"0.8",
                n(c.k.kyy));
    else if (i.isPlastic && i.lambdaZ < 0.4)
        AddStep(f, L"kzy", Quantity::None, c.k.kzy, L"Table B.2",
                L"0.6 + λz, at most 1 - 0.1 λz nz/(CmLT - 0.25), of CmLT = %s, λz = %s, nz = %s", n(i.CmLT),
                n(i.lambdaZ), n(i.nz));
    else
        AddStep(f, L"kzy", Quantity::None, c.k.kzy, L"Table B.2",
                L"1 - %s λz nz/(CmLT - 0.25), at least 1 - %s nz/(CmLT - 0.25), of CmLT = %s, λz = %s, nz = %s",
                i.isPlastic ? L"0.1" : L"0.05", i.isPlastic ? L"0.1" : L"0.05", n(i.CmLT), n(i.lambdaZ), n(i.nz));
    by(L"kzz", c.k.kzz, i.Cmz, i.lambdaZ, i.nz, true);
}

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
    if (!c.annexA)
        AddStep(f, L"factors", Quantity::None, std::nan(""), L"Table B.3", L"Cmy = %s, Cmz = %s, CmLT = %s", n(i.Cmy),
                n(i.Cmz), n(i.CmLT));
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
