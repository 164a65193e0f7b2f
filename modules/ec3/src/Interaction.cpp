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

void MemberCheck::CheckCombination(Combination& c) const
{
    const StrutSpan& y = m_struts[c.major];
    const StrutSpan& z = m_struts[c.minor];
    const LateralSpan& lateral = m_laterals[c.lateral];
    // The stretch between forks; where the section is held all along, that between lateral supports, or between vertical ones.
    const StretchMoments& stretch = !lateral.held ? lateral.moments : z.held ? y.moments : z.moments;
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
    if (c.open) return;
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
        if (span.mode != BucklingMode::Torsion) span.moments = MomentsOver(span.start, span.end);
        RecordStrut(span);
    }
    if (m_in.section.IsHollow()) RecordNoTorsion();
    FindLaterals();
    for (LateralSpan& span : m_laterals) {
        if (!span.held) span.moments = MomentsOver(span.start, span.end);
        RecordLateral(span);
    }
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
