// The steps of (6.61) and (6.62) with their numbers, so that they can be followed by hand.

#include "MemberCheck.h"

namespace Keltrix::EC3 {

using Design::Quantity;
using Design::RuleFinding;

void MemberCheck::AddAnnexASteps(RuleFinding& f, const Combination& c, bool first) const
{
    const AnnexAFactors& a = *c.annexA;
    struct Factor {
        const wchar_t* symbol;
        double value;
        const wchar_t* table;
    };
    const Factor factors[] = {
        {L"Cmy,0", a.Cmy0, L"Table A.2"}, {L"Cmz,0", a.Cmz0, L"Table A.2"}, {L"Cmy", a.Cmy, L"Table A.1"},
        {L"Cmz", a.Cmz, L"Table A.1"},    {L"CmLT", a.CmLT, L"Table A.1"},  {L"μy", a.muY, L"Table A.1"},
        {L"μz", a.muZ, L"Table A.1"},     {L"Cyy", a.Cyy, L"Table A.1"},    {L"Cyz", a.Cyz, L"Table A.1"},
        {L"Czy", a.Czy, L"Table A.1"},    {L"Czz", a.Czz, L"Table A.1"}};
    for (const Factor& factor : factors)
        AddStep(f, factor.symbol, Quantity::None, factor.value, factor.table);
    AddStep(f, first ? L"kyy" : L"kzy", Quantity::None, first ? c.k.kyy : c.k.kzy, L"Table A.1");
    AddStep(f, first ? L"kyz" : L"kzz", Quantity::None, first ? c.k.kyz : c.k.kzz, L"Table A.1");
}

// Factors of Tables B.1 and B.2.
void MemberCheck::AddFactorSteps(RuleFinding& f, const Combination& c, bool first) const
{
    if (c.annexA) return AddAnnexASteps(f, c, first);
    const AnnexBInput& i = c.input;
    const auto n = [this](double value) { return m_in.format.NoDim(value); };
    const auto by = [&](const wchar_t* symbol, double value, double Cm, double lambda, double share, bool minor) {
        const wchar_t* const table = minor && !i.isHollow && i.isPlastic ? L"Table B.1, I and H" : L"Table B.1";
        Design::Step& step = AddStep(f, symbol, Quantity::None, value, table);
        if (!i.isPlastic)
            step.Formula(L"Cm(1 + 0.6 n min(1, λ))")
                .Values(L"%s * (1 + 0.6 * %s * min(1, %s))", n(Cm), n(share), n(lambda));
        else if (minor && !i.isHollow)
            step.Formula(L"Cm(1 + n min(1.4, 2 λ - 0.6))")
                .Values(L"%s * (1 + %s * min(1.4, 2 * %s - 0.6))", n(Cm), n(share), n(lambda));
        else
            step.Formula(L"Cm(1 + n min(0.8, λ - 0.2))")
                .Values(L"%s * (1 + %s * min(0.8, %s - 0.2))", n(Cm), n(share), n(lambda));
    };
    if (first) {
        by(L"kyy", c.k.kyy, i.Cmy, i.lambdaY, i.ny, false);
        by(L"kzz", c.k.kzz, i.Cmz, i.lambdaZ, i.nz, true);
        AddStep(f, L"kyz", Quantity::None, c.k.kyz, L"Table B.1").Formula(i.isPlastic ? L"0.6 kzz" : L"kzz");
        return;
    }
    if (i.isHollow)
        AddStep(f, L"kzy", Quantity::None, c.k.kzy, L"Table B.1")
            .Formula(L"%s kyy", i.isPlastic ? L"0.6" : L"0.8")
            .Values(L"%s * %s", i.isPlastic ? L"0.6" : L"0.8", n(c.k.kyy));
    else if (i.isPlastic && i.lambdaZ < 0.4)
        AddStep(f, L"kzy", Quantity::None, c.k.kzy, L"Table B.2")
            .Formula(L"min(0.6 + λz, 1 - 0.1 λz nz/(CmLT - 0.25))")
            .Values(L"min(0.6 + %s, 1 - 0.1 * %s * %s/(%s - 0.25))", n(i.lambdaZ), n(i.lambdaZ), n(i.nz), n(i.CmLT));
    else
        AddStep(f, L"kzy", Quantity::None, c.k.kzy, L"Table B.2")
            .Formula(L"1 - %s min(1, λz) nz/(CmLT - 0.25)", i.isPlastic ? L"0.1" : L"0.05")
            .Values(L"1 - %s * min(1, %s) * %s/(%s - 0.25)", i.isPlastic ? L"0.1" : L"0.05", n(i.lambdaZ), n(i.nz),
                    n(i.CmLT));
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
                span.strut.reduction.chi, L"(6.49)")
            .Note(L"curve %s, λ = %s", CurveName(span.strut.curve), n(span.strut.slenderness));
    Design::Step& ratio = AddStep(f, L"NEd/Nb,Rd", Quantity::None, share, L"(6.47)");
    const double N = first ? c.Ny : c.Nz;
    if (N > 0.0) ratio.Values(L"%s/%s", m_in.format.Force(N), m_in.format.Force(first ? c.NyRd : c.NzRd));
    if (twists) ratio.Note(L"flexural-torsional buckling");
    if (!c.annexA) {
        AddStep(f, L"Cmy", Quantity::None, i.Cmy, L"Table B.3");
        AddStep(f, L"Cmz", Quantity::None, i.Cmz, L"Table B.3");
        AddStep(f, L"CmLT", Quantity::None, i.CmLT, L"Table B.3");
    }
    AddFactorSteps(f, c, first);
    const double My = c.My > 0.0 ? c.My / (lateral.Chi() * c.MyRk / gamma) : 0.0;
    const double shift = c.shiftMy > 0.0 ? c.shiftMy / (lateral.shiftChi * c.MyRk / gamma) : 0.0;
    const double Mz = c.Mz + c.shiftMz > 0.0 ? (c.Mz + c.shiftMz) / (c.MzRk / gamma) : 0.0;
    AddStep(f, IsAngle() ? L"Mu,Ed/Mb,Rd" : L"My,Ed/Mb,Rd", Quantity::None, My, L"")
        .Formula(IsAngle() ? L"Mu,Ed/(χLT Mu,Rk/γM1)" : L"My,Ed/(χLT My,Rk/γM1)")
        .Values(L"%s/(%s * %s)", moment(c.My), n(lateral.Chi()), moment(c.MyRk / gamma));
    if (c.shiftMy > 0.0)
        AddStep(f, L"ΔMy,Ed/Mb,Rd", Quantity::None, shift, L"")
            .Formula(L"NEd eN,y/(χLT My,Rk/γM1)")
            .Values(L"%s/(%s * %s)", moment(c.shiftMy), n(lateral.shiftChi), moment(c.MyRk / gamma));
    CString effect = moment(c.Mz);
    if (c.shiftMz > 0.0) effect = CString(L"(") + effect + L" + " + moment(c.shiftMz) + L")";
    AddStep(f, IsAngle() ? L"Mv,Ed/Mv,Rd" : L"Mz,Ed/Mz,Rd", Quantity::None, Mz, L"")
        .Formula(IsAngle() ? L"Mv,Ed/(Mv,Rk/γM1)" : L"Mz,Ed/(Mz,Rk/γM1)")
        .Values(L"%s/%s", effect, moment(c.MzRk / gamma));
    AddStep(f, L"sum", Quantity::None, first ? c.first : c.second, first ? L"(6.61)" : L"(6.62)")
        .Values(L"%s + %s * %s + %s * %s", n(share), n(first ? c.k.kyy : c.k.kzy), n(My + shift),
                n(first ? c.k.kyz : c.k.kzz), n(Mz));
}

} // namespace Keltrix::EC3
