// Members in bending and axial compression, 6.3.3 with Annex B, and the order of the buckling checks.

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

constexpr double INF = std::numeric_limits<double>::infinity();

template <class A, class B>
bool Overlap(const A& a, const B& b, double tolerance)
{
    return std::min(a.end, b.end) - std::max(a.start, b.start) > tolerance;
}

double Term(double effect, double resistance)
{
    if (effect == 0.0) return 0.0;
    return resistance > 0.0 ? effect / resistance : INF;
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

} // namespace

MomentPattern PatternOf(const MomentDiagram& moments, double from, double to)
{
    MomentPattern p;
    p.left = moments.RightOf(from).Worst();
    p.right = moments.LeftOf(to).Worst();
    const auto before = moments.LeftOf(0.5 * (from + to));
    const auto after = moments.RightOf(0.5 * (from + to));
    p.middle = before.Magnitude() >= after.Magnitude() ? before.Worst() : after.Worst();
    const double largest = moments.Between(from, to).Magnitude();
    p.linear = IsLinear(moments, from, to, p.left, p.right, 1e-6 * largest);
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

// Table B.3; 1.0, its largest value, where the moments are not known; not below 0.9 of a length that buckles by sway.
double MemberCheck::MomentFactor(const MomentDiagram& moments, double from, double to, double noise, bool sway) const
{
    const double least = sway ? 0.9 : 0.4;
    if (m_in.momentFactor) return std::max(least, *m_in.momentFactor);
    if (!moments.IsBalanced(from, to) || !(moments.Between(from, to).Magnitude() > noise)) return 1.0;
    return std::max(least, EquivalentMomentFactor(PatternOf(moments, from, to)));
}

void MemberCheck::FindCombinations()
{
    const double tolerance = m_in.SamePlace();
    for (std::size_t y = 0; y < m_struts.size(); ++y)
        for (std::size_t z = 0; z < m_struts.size(); ++z)
            for (std::size_t l = 0; l < m_laterals.size(); ++l) {
                const StrutSpan& major = m_struts[y];
                const StrutSpan& minor = m_struts[z];
                const LateralSpan& lateral = m_laterals[l];
                if (major.mode != BucklingMode::Major || minor.mode != BucklingMode::Minor) continue;
                Combination c;
                c.major = y;
                c.minor = z;
                c.lateral = l;
                c.start = std::max({major.start, minor.start, lateral.start});
                c.end = std::min({major.end, minor.end, lateral.end});
                if (!(c.end - c.start > tolerance)) continue;
                CheckCombination(c);
                m_combinations.push_back(c);
            }
}

void MemberCheck::CheckCombination(Combination& c) const
{
    const StrutSpan& y = m_struts[c.major];
    const StrutSpan& z = m_struts[c.minor];
    const LateralSpan& lateral = m_laterals[c.lateral];
    // The stretch between forks; where the section is held all along, that between lateral supports, or between vertical ones.
    double from = lateral.start, to = lateral.end;
    if (lateral.held) {
        from = z.held ? y.start : z.start;
        to = z.held ? y.end : z.end;
    }
    const auto largest = [](const MomentDiagram& moments, double a, double b, double noise) {
        const double M = moments.Between(a, b).Magnitude();
        return M > noise ? M : 0.0;
    };
    c.Ny = y.N;
    c.Nz = z.N;
    c.My = largest(m_major, from, to, m_check->NoiseMy());
    if (!z.held)
        c.Mz = largest(m_minor, std::min(from, z.start), std::max(to, z.end), m_check->NoiseMz());
    else
        c.Mz = largest(m_minor, from, to, m_check->NoiseMz());
    const double gamma = m_in.strength.gammaM1;
    const double fy = m_in.material.fy;
    c.MyRk = m_class.Wy * fy;
    c.MzRk = m_class.Wz * fy;
    if ((y.open && c.Ny > 0.0) || (z.open && c.Nz > 0.0)) c.open = y.open && c.Ny > 0.0 ? y.open : z.open;
    if (lateral.open && c.My > 0.0) c.open = lateral.open;
    if (!m_in.section.IsDoublySymmetric()) c.open = L"Annex B is for sections that are doubly symmetric";
    if (c.open) return;
    AnnexBInput& i = c.input;
    i.isPlastic = m_class.IsPlastic();
    i.isHollow = m_in.section.IsHollow();
    i.ny = c.Ny > 0.0 ? Term(c.Ny, y.strut.NbRd) : 0.0;
    i.nz = c.Nz > 0.0 ? Term(c.Nz, z.strut.NbRd) : 0.0;
    i.lambdaY = y.open ? 0.0 : y.strut.slenderness;
    i.lambdaZ = z.open ? 0.0 : z.strut.slenderness;
    i.Cmy = MomentFactor(m_major, y.start, y.end, m_check->NoiseMy(), y.sway);
    i.Cmz = MomentFactor(m_minor, from, to, m_check->NoiseMz(), z.sway);
    i.CmLT = MomentFactor(m_major, from, to, m_check->NoiseMy(), false);
    c.k = AnnexB(i);
    const double My = Term(c.My, lateral.Chi() * c.MyRk / gamma);
    const double Mz = Term(c.Mz, c.MzRk / gamma);
    const auto times = [](double k, double term) { return term == 0.0 ? 0.0 : k * term; };
    c.first = i.ny + times(c.k.kyy, My) + times(c.k.kyz, Mz);
    c.second = i.nz + times(c.k.kzy, My) + times(c.k.kzz, Mz);
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
        AddStep(f, L"factors", Quantity::None, std::nan(""), L"Table B.3", L"Cmy = %s, Cmz = %s, CmLT = %s",
                m_in.format.NoDim(c.input.Cmy), m_in.format.NoDim(c.input.Cmz), m_in.format.NoDim(c.input.CmLT));
        AddStep(f, first ? L"kyy" : L"kzy", Quantity::None, first ? c.k.kyy : c.k.kzy,
                m_in.section.IsHollow() ? L"Table B.1" : L"Table B.2", L"");
        AddStep(f, first ? L"kyz" : L"kzz", Quantity::None, first ? c.k.kyz : c.k.kzz, L"Table B.1", L"");
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
        RecordStrut(span);
    }
    if (m_in.section.IsHollow()) RecordNoTorsion();
    FindLaterals();
    for (const LateralSpan& span : m_laterals)
        RecordLateral(span);
    FindCombinations();
    const auto applies = [](const Combination& c) {
        return ((c.Ny > 0.0 || c.Nz > 0.0) && (c.My > 0.0 || c.Mz > 0.0)) || (c.My > 0.0 && c.Mz > 0.0);
    };
    for (const bool first : {true, false}) {
        bool any = false;
        for (const Combination& c : m_combinations) {
            if (!applies(c)) continue;
            any = true;
            RecordCombination(c, first);
        }
        if (!any)
            Add(FindingOf(first ? Rule::InteractionMajor : Rule::InteractionMinor, CheckStatus::NotApplicable,
                          L"nowhere compression with a moment, nor moments about both axes"));
    }
    std::erase_if(m_combinations, [&](const Combination& c) { return !applies(c); });
}

} // namespace Keltrix::EC3
