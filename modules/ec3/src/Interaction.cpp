// Members in bending and axial compression, 6.3.3 and the order of the buckling checks.

#include <algorithm>
#include <cmath>
#include <limits>

#include "MemberCheck.h"

namespace Keltrix::EC3 {

using Design::CheckStatus;
using Design::MomentDiagram;
using Design::Quantity;
using Design::RuleFinding;

namespace {

double Term(double effect, double resistance)
{
    if (effect == 0.0) return 0.0;
    return resistance > 0.0 ? effect / resistance : std::numeric_limits<double>::infinity();
}

// Whether all moments between two places lie on the line through those at its ends.
bool IsLinear(const MomentDiagram& moments, double from, double to, double left, double right, double tolerance)
{
    const MomentDiagram::Range range = moments.Covering(from, to);
    for (int k = range.first; k < range.last; ++k) {
        const MomentDiagram::Piece& piece = moments.At(k);
        for (const double s : {0.0, 0.5, 1.0}) {
            const double x = piece.Position(s);
            if (x < from || x > to) continue;
            const double line = left + (right - left) * (x - from) / (to - from);
            if (std::abs(moments.Curves(k).front().At(s) - line) > tolerance) return false;
        }
    }
    return true;
}

// How Annex B finds kyy or kzy.
const wchar_t* FormulaMajor(const AnnexBInput& i, bool first)
{
    if (first)
        return i.isPlastic ? L"Cmy(1 + (λy - 0.2) ny), at most Cmy(1 + 0.8 ny)"
                           : L"Cmy(1 + 0.6 λy ny), at most Cmy(1 + 0.6 ny)";
    if (i.isHollow) return i.isPlastic ? L"0.6 kyy" : L"0.8 kyy";
    if (!i.isPlastic) return L"1 - 0.05 λz nz/(CmLT - 0.25), at least 1 - 0.05 nz/(CmLT - 0.25)";
    return i.lambdaZ < 0.4 ? L"0.6 + λz, at most 1 - 0.1 λz nz/(CmLT - 0.25)"
                           : L"1 - 0.1 λz nz/(CmLT - 0.25), at least 1 - 0.1 nz/(CmLT - 0.25)";
}

// How Annex B finds kyz or kzz.
const wchar_t* FormulaMinor(const AnnexBInput& i, bool first)
{
    if (first) return i.isPlastic ? L"0.6 kzz" : L"kzz";
    if (!i.isPlastic) return L"Cmz(1 + 0.6 λz nz), at most Cmz(1 + 0.6 nz)";
    return i.isHollow ? L"Cmz(1 + (λz - 0.2) nz), at most Cmz(1 + 0.8 nz)"
                      : L"Cmz(1 + (2 λz - 0.6) nz), at most Cmz(1 + 1.4 nz)";
}

} // namespace

MomentPattern PatternOf(const MomentDiagram& moments, double from, double to)
{
    MomentPattern p;
    p.left = moments.RightOf(from).Worst();
    p.right = moments.LeftOf(to).Worst();
    const auto before = moments.LeftOf(0.5 * (from + to));
    const auto after = moments.RightOf(0.5 * (from + to));
    p.middle = before.Magnitude() >= after.Magnitude() ? before.Worst() : after.Worst();
    const Design::Extremes extremes = moments.Between(from, to);
    p.largest = -extremes.least > extremes.greatest ? extremes.least : extremes.greatest;
    p.linear = IsLinear(moments, from, to, p.left, p.right, 1e-6 * std::abs(p.largest));
    p.uniform = p.point = false;
    const MomentDiagram::Range range = moments.Covering(from, to);
    double shear = 0.0;
    for (int k = range.first; k < range.last; ++k)
        shear = std::max({shear, std::abs(moments.At(k).shearLeft), std::abs(moments.At(k).shearRight)});
    for (int k = range.first; k < range.last; ++k) {
        const MomentDiagram::Piece& piece = moments.At(k);
        if (piece.length > 0.0 && std::abs(piece.shearRight - piece.shearLeft) > 1e-6 * shear) p.uniform = true;
        if (k + 1 < range.last && std::abs(moments.At(k + 1).shearLeft - piece.shearRight) > 1e-6 * shear)
            p.point = true;
    }
    return p;
}

// Table B.3; 1.0, its largest value, where the moments are not known.
double MemberCheck::MomentFactor(const MomentDiagram& moments, double from, double to, double noise) const
{
    if (m_in.momentFactor) return std::max(0.4, *m_in.momentFactor);
    // Given lengths do not say from where to where they reach, nor whether the places where the member is held move.
    if (m_in.lengthOverride && m_heldInside) return 1.0;
    if (!moments.IsBalanced(from, to) || !(moments.Between(from, to).Magnitude() > noise)) return 1.0;
    return EquivalentMomentFactor(PatternOf(moments, from, to));
}

StretchMoments MemberCheck::MomentsOver(double from, double to) const
{
    const auto largest = [&](const MomentDiagram& moments, double noise) {
        const double M = moments.Between(from, to).Magnitude();
        return M > noise ? M : 0.0;
    };
    StretchMoments m;
    m.My = largest(m_major, m_check->NoiseMy());
    m.Mz = largest(m_minor, m_check->NoiseMz());
    m.CmMajor = MomentFactor(m_major, from, to, m_check->NoiseMy());
    m.CmMinor = MomentFactor(m_minor, from, to, m_check->NoiseMz());
    return m;
}

// The lengths of each kind follow each other along the member: one walk along all three lists.
void MemberCheck::FindCombinations()
{
    const auto isMode = [](BucklingMode mode) { return [mode](const StrutSpan& s) { return s.mode == mode; }; };
    const auto place = [this](auto it) { return static_cast<std::size_t>(it - m_struts.begin()); };
    std::size_t y = place(std::find_if(m_struts.begin(), m_struts.end(), isMode(BucklingMode::Major)));
    std::size_t z = place(std::find_if(m_struts.begin(), m_struts.end(), isMode(BucklingMode::Minor)));
    const std::size_t lastY = z;
    const std::size_t lastZ = place(std::find_if(m_struts.begin(), m_struts.end(), isMode(BucklingMode::Torsion)));
    const double tolerance = m_in.SamePlace();
    for (std::size_t l = 0; y < lastY && z < lastZ && l < m_laterals.size();) {
        const StrutSpan& major = m_struts[y];
        const StrutSpan& minor = m_struts[z];
        const LateralSpan& lateral = m_laterals[l];
        Combination c;
        c.major = y;
        c.minor = z;
        c.lateral = l;
        c.start = std::max({major.start, minor.start, lateral.start});
        c.end = std::min({major.end, minor.end, lateral.end});
        if (c.end - c.start > tolerance) {
            CheckCombination(c);
            m_combinations.push_back(c);
        }
        y += major.end <= c.end + tolerance;
        z += minor.end <= c.end + tolerance;
        l += lateral.end <= c.end + tolerance;
    }
}

// The stretch between forks; where the section is held all along, that between lateral supports, or between vertical ones.
const StretchMoments& MemberCheck::StretchOf(const Combination& c) const
{
    const LateralSpan& lateral = m_laterals[c.lateral];
    const StrutSpan& z = m_struts[c.minor];
    return !lateral.held ? lateral.moments : z.held ? m_struts[c.major].moments : z.moments;
}

void MemberCheck::CheckCombination(Combination& c)
{
    const StrutSpan& y = m_struts[c.major];
    const StrutSpan& z = m_struts[c.minor];
    const LateralSpan& lateral = m_laterals[c.lateral];
    const StretchMoments& stretch = StretchOf(c);
    c.Ny = y.N;
    c.Nz = z.N;
    c.My = stretch.My;
    c.Mz = z.held ? stretch.Mz : std::max(stretch.Mz, z.moments.Mz);
    const double gamma = m_in.strength.gammaM1;
    const double fy = m_in.material.fy;
    c.MyRk = m_class.Wy * fy;
    c.MzRk = m_class.Wz * fy;
    if ((y.open && c.Ny > 0.0) || (z.open && c.Nz > 0.0)) c.open = y.open && c.Ny > 0.0 ? y.open : z.open;
    if (lateral.open && c.My > 0.0) c.open = lateral.open;
    if (!m_in.section.IsDoublySymmetric()) c.open = L"Annex B is for sections that are doubly symmetric";
    if (m_in.options.interaction == InteractionMethod::AnnexA && !c.open) c.open = AnnexARefusal(c);
    const bool general = m_in.options.interaction == InteractionMethod::General && m_in.section.IsDoublySymmetric();
    if (c.open && !general) return;
    SetFactors(c);
    if (general) {
        c.open = nullptr;
        return CheckByGeneralMethod(c);
    }
    if (m_in.options.simpleColumn) CheckSimpleColumn(c);
    if (m_in.options.interaction == InteractionMethod::AnnexA) ApplyAnnexA(c);
    const double My = Term(c.My, lateral.Chi() * c.MyRk / gamma);
    const double Mz = Term(c.Mz, c.MzRk / gamma);
    const auto times = [](double k, double term) { return term == 0.0 ? 0.0 : k * term; };
    c.first = c.input.ny + times(c.k.kyy, My) + times(c.k.kyz, Mz);
    c.second = c.input.nz + times(c.k.kzy, My) + times(c.k.kzz, Mz);
}

// Table B.3 and Annex B.
void MemberCheck::SetFactors(Combination& c) const
{
    const StrutSpan& y = m_struts[c.major];
    const StrutSpan& z = m_struts[c.minor];
    const StretchMoments& stretch = StretchOf(c);
    AnnexBInput& i = c.input;
    i.isPlastic = m_class.IsPlastic();
    i.isHollow = m_in.section.IsHollow();
    i.ny = c.Ny > 0.0 ? Term(c.Ny, y.strut.NbRd) : 0.0;
    i.nz = c.Nz > 0.0 ? Term(c.Nz, z.strut.NbRd) : 0.0;
    i.lambdaY = y.open ? 0.0 : y.strut.slenderness;
    i.lambdaZ = z.open ? 0.0 : z.strut.slenderness;
    // Table B.3: at least 0.9 of a length that buckles by sway.
    i.Cmy = std::max(y.sway ? 0.9 : 0.0, y.moments.CmMajor);
    // The table reads Cmz between lateral supports; between forks, where they are fewer, it can be the larger one.
    i.Cmz = std::max({z.sway ? 0.9 : 0.0, stretch.CmMinor, z.moments.CmMinor});
    i.CmLT = stretch.CmMajor;
    c.k = AnnexB(i);
}

void MemberCheck::AddFactorSteps(RuleFinding& f, const Combination& c, bool first) const
{
    const CDesFormat& fmt = m_in.format;
    const auto no = [&](double value) { return fmt.NoDim(value); };
    if (const auto& a = c.annexA) {
        AddStep(f, L"factors", Quantity::None, std::nan(""), L"Table A.2", L"Cmy,0 = %s, Cmz,0 = %s", no(a->Cmy0),
                no(a->Cmz0));
        AddStep(f, L"factors", Quantity::None, std::nan(""), L"Table A.1", L"Cmy = %s, Cmz = %s, CmLT = %s", no(a->Cmy),
                no(a->Cmz), no(a->CmLT));
        AddStep(f, L"factors", Quantity::None, std::nan(""), L"Table A.1",
                L"μy = %s, μz = %s, Cyy = %s, Cyz = %s, Czy = %s, Czz = %s", no(a->muY), no(a->muZ), no(a->Cyy),
                no(a->Cyz), no(a->Czy), no(a->Czz));
    } else {
        const AnnexBInput& i = c.input;
        AddStep(f, L"factors", Quantity::None, std::nan(""), L"Table B.3", L"Cmy = %s, Cmz = %s, CmLT = %s", no(i.Cmy),
                no(i.Cmz), no(i.CmLT));
        AddStep(f, L"with", Quantity::None, std::nan(""), L"",
                L"λy = %s, λz = %s, NEd/(χy NRk/γM1) = %s, NEd/(χz NRk/γM1) = %s", no(i.lambdaY), no(i.lambdaZ),
                no(i.ny), no(i.nz));
    }
    const wchar_t* const table = c.annexA ? L"Table A.1" : m_in.section.IsHollow() ? L"Table B.1" : L"Table B.2";
    AddStep(f, first ? L"kyy" : L"kzy", Quantity::None, first ? c.k.kyy : c.k.kzy, table, L"%s",
            c.annexA ? L"" : FormulaMajor(c.input, first));
    AddStep(f, first ? L"kyz" : L"kzz", Quantity::None, first ? c.k.kyz : c.k.kzz, c.annexA ? table : L"Table B.1",
            L"%s", c.annexA ? L"" : FormulaMinor(c.input, first));
}

void MemberCheck::RecordCombination(const Combination& c, bool first)
{
    const StrutSpan& y = m_struts[c.major];
    const StrutSpan& z = m_struts[c.minor];
    const LateralSpan& lateral = m_laterals[c.lateral];
    RuleFinding f = FindingOf(first ? Rule::InteractionMajor : Rule::InteractionMinor, CheckStatus::NotEvaluated);
    f.start = c.start;
    f.end = c.end;
    f.reason = c.open ? c.open : L"";
    if (!c.open) {
        f.utilisation = Steel::CMemberResult::InfinitiseNANs(first ? c.first : c.second);
        f.status = f.utilisation <= 1.0 ? CheckStatus::Passed : CheckStatus::Failed;
        AddResistance(first ? L"kyy" : L"kzy", Quantity::None, first ? c.k.kyy : c.k.kzy, c.start, c.end);
        AddResistance(first ? L"kyz" : L"kzz", Quantity::None, first ? c.k.kyz : c.k.kzz, c.start, c.end);
    }
    if (!c.open && m_in.withSteps) {
        const StrutSpan& span = first ? y : z;
        const double N = first ? c.Ny : c.Nz;
        AddFactorSteps(f, c, first);
        AddStep(f, L"NEd/Nb,Rd", Quantity::None, first ? c.input.ny : c.input.nz, L"", L"%s/%s", m_in.format.Force(N),
                m_in.format.Force(span.open ? 0.0 : span.strut.NbRd));
        const double gamma = m_in.strength.gammaM1;
        AddStep(f, L"My,Ed/Mb,Rd", Quantity::None, Term(c.My, lateral.Chi() * c.MyRk / gamma), L"", L"%s/%s",
                m_in.format.Moment(c.My), m_in.format.Moment(lateral.Chi() * c.MyRk / gamma));
        AddStep(f, L"Mz,Ed/Mz,Rd", Quantity::None, Term(c.Mz, c.MzRk / gamma), L"", L"%s/%s", m_in.format.Moment(c.Mz),
                m_in.format.Moment(c.MzRk / gamma));
    }
    Add(f);
}

void MemberCheck::CheckBuckling()
{
    FindStruts(BucklingMode::Major);
    FindStruts(BucklingMode::Minor);
    if (!m_in.section.IsHollow()) FindStruts(BucklingMode::Torsion);
    for (StrutSpan& span : m_struts) {
        CheckStrut(span);
        if (span.mode != BucklingMode::Torsion) span.moments = MomentsOver(span.start, span.end);
        RecordStrut(span);
    }
    WarnOfHeldAlong();
    if (m_in.section.IsHollow()) RecordNoTorsion();
    FindLaterals();
    for (LateralSpan& span : m_laterals) {
        if (!span.held) span.moments = MomentsOver(span.start, span.end);
        RecordLateral(span);
    }
    FindCombinations();
    RecordCombinations();
}

void MemberCheck::RecordCombinations()
{
    const auto applies = [](const Combination& c) {
        return ((c.Ny > 0.0 || c.Nz > 0.0) && (c.My > 0.0 || c.Mz > 0.0)) || (c.My > 0.0 && c.Mz > 0.0);
    };
    std::erase_if(m_combinations, [&](const Combination& c) { return !applies(c); });
    const bool general = m_in.options.interaction == InteractionMethod::General;
    for (const bool first : {true, false}) {
        const Rule rule = first ? Rule::InteractionMajor : Rule::InteractionMinor;
        bool any = false;
        for (const Combination& c : m_combinations) {
            if (c.general || c.simple) continue;
            any = true;
            RecordCombination(c, first);
        }
        if (any) continue;
        Add(FindingOf(rule, CheckStatus::NotApplicable,
                      m_combinations.empty() ? L"nowhere compression with a moment, nor moments about both axes"
                      : general              ? L"the general method of 6.3.4 stands in its place"
                                             : L"a column in simple construction: its rule stands in its place"));
    }
    RecordOtherMethods();
}

void MemberCheck::RecordOtherMethods()
{
    bool anyGeneral = false, anySimple = false;
    for (const Combination& c : m_combinations) {
        anyGeneral = anyGeneral || c.general;
        anySimple = anySimple || c.simple;
        if (c.general) RecordGeneral(c);
        if (c.simple) RecordSimpleColumn(c);
        if (c.simpleRefusal)
            m_findings.assumptions.push_back({L"no column in simple construction here, (6.61) and (6.62) stand",
                                              c.simpleRefusal, std::nan(""), c.start, c.end});
    }
    if (!anyGeneral) Add(FindingOf(Rule::GeneralMethod, CheckStatus::NotApplicable, L"the options do not ask for it"));
    if (!anySimple)
        Add(FindingOf(Rule::SimpleColumn, CheckStatus::NotApplicable,
                      m_in.options.simpleColumn ? L"no length of the member meets the conditions of the rule"
                                                : L"the options do not say that the member is such a column"));
}

} // namespace Keltrix::EC3
