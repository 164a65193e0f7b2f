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

constexpr wchar_t NOTHING_TOGETHER[] = L"nowhere compression with a moment, nor moments about both axes";
constexpr wchar_t ONLY_DOUBLY_SYMMETRIC[] = L"6.3.4 is evaluated for doubly symmetric sections alone";

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
        if (!(piece.length > 0.0)) continue;
        // The part of the sub-span that lies between the places: a parabola is known by three points.
        const double a = std::max(from, piece.start);
        const double b = std::min(to, piece.End());
        for (const double x : {a, 0.5 * (a + b), b}) {
            const double line = left + (right - left) * (x - from) / (to - from);
            const double M = moments.Curves(k).front().At((x - piece.start) / piece.length);
            if (std::abs(M - line) > tolerance) return false;
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
    if (IsAngle()) {
        // Where one moment acts those about u-u and v-v have its course. The course of both together is not known.
        const bool both = m.My > 0.0 && m.Mz > 0.0 && !m_in.momentFactor;
        m.CmMajor = m.CmMinor = both ? 1.0 : m.My > 0.0 ? m.CmMajor : m.CmMinor;
        const AxisMoments moments = LargestAxisMoments(m_in.section, m.My, m.Mz);
        m.My = moments.major;
        m.Mz = moments.minor;
    }
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
    if (!lateral.held) return lateral.moments;
    return m_struts[c.minor].held ? m_struts[c.major].moments : m_struts[c.minor].moments;
}

void MemberCheck::SetEffects(Combination& c) const
{
    const StrutSpan& z = m_struts[c.minor];
    const StretchMoments& stretch = StretchOf(c);
    c.Ny = m_struts[c.major].N;
    c.Nz = z.N;
    c.My = stretch.My;
    c.Mz = z.held ? stretch.Mz : std::max(stretch.Mz, z.moments.Mz);
    c.shiftMy = std::max(c.Ny, c.Nz) * m_class.effective.eNy;
    c.shiftMz = std::max(c.Ny, c.Nz) * m_class.effective.eNz;
    const Section& s = m_in.section;
    c.input.isHollow = s.IsHollow();
    c.input.isPlastic = m_class.IsPlastic() && (s.IsDoublySymmetric() || s.shape == Shape::UnequalI);
    const bool isElastic = m_class.IsPlastic() && !c.input.isPlastic;
    c.MyRk = (isElastic ? std::min(m_class.Wy, s.Wely) : m_class.Wy) * m_in.material.fy;
    c.MzRk = (isElastic ? std::min(m_class.Wz, s.Welz) : m_class.Wz) * m_in.material.fy;
}

// Why it is not evaluated; null where it is.
const wchar_t* MemberCheck::OpenReason(const Combination& c) const
{
    const StrutSpan& y = m_struts[c.major];
    const StrutSpan& z = m_struts[c.minor];
    const LateralSpan& lateral = m_laterals[c.lateral];
    const bool bendsMajor = c.My + c.shiftMy > 0.0;
    if (m_class.effective.refusalZ && c.Mz + c.shiftMz > 0.0) return m_class.effective.refusalZ;
    if (m_class.effective.refusalY && bendsMajor) return m_class.effective.refusalY;
    if (lateral.open && bendsMajor) return lateral.open;
    if (y.open && c.Ny > 0.0) return y.open;
    return z.open && c.Nz > 0.0 ? z.open : nullptr;
}

void MemberCheck::CheckCombination(Combination& c)
{
    const LateralSpan& lateral = m_laterals[c.lateral];
    SetEffects(c);
    c.open = OpenReason(c);
    const bool isDoublySymmetric = m_in.section.IsDoublySymmetric();
    const bool general = m_in.options.interaction == InteractionMethod::General && isDoublySymmetric;
    if (!c.open || general) SetStrutTerms(c);
    if (m_in.options.interaction == InteractionMethod::AnnexA && !c.open) c.open = AnnexARefusal(c);
    if (m_in.options.interaction == InteractionMethod::General && !isDoublySymmetric) c.open = ONLY_DOUBLY_SYMMETRIC;
    if (c.open && !general) return;
    SetFactors(c);
    if (general) {
        c.open = nullptr;
        return CheckByGeneralMethod(c);
    }
    if (m_in.options.simpleColumn) CheckSimpleColumn(c);
    if (m_in.options.interaction == InteractionMethod::AnnexA) ApplyAnnexA(c);
    const AnnexBInput& i = c.input;
    const double gamma = m_in.strength.gammaM1;
    const double My = Term(c.My, lateral.Chi() * c.MyRk / gamma) + Term(c.shiftMy, lateral.shiftChi * c.MyRk / gamma);
    const double Mz = Term(c.Mz + c.shiftMz, c.MzRk / gamma);
    const auto times = [](double k, double term) { return term == 0.0 ? 0.0 : k * term; };
    c.first = i.ny + times(c.k.kyy, My) + times(c.k.kyz, Mz);
    c.second = i.nz + times(c.k.kzy, My) + times(c.k.kzz, Mz);
}

// Table B.3 and Annex B.
void MemberCheck::SetFactors(Combination& c) const
{
    const StrutSpan& y = m_struts[c.major];
    const StrutSpan& z = m_struts[c.minor];
    AnnexBInput& i = c.input;
    const StretchMoments& stretch = StretchOf(c);
    // Table B.3: at least 0.9 of a length that buckles by sway. The moment of a shift of the neutral axis is uniform.
    i.Cmy = std::max(c.shiftMy > 0.0 ? 1.0 : y.sway ? 0.9 : 0.0, y.moments.CmMajor);
    // The table reads Cmz between lateral supports; between forks, where they are fewer, it can be the larger one.
    i.Cmz = std::max({c.shiftMz > 0.0 ? 1.0 : z.sway ? 0.9 : 0.0, stretch.CmMinor, z.moments.CmMinor});
    i.CmLT = c.shiftMy > 0.0 ? 1.0 : stretch.CmMajor;
    c.k = AnnexB(i);
}

// Nb,Rd and slenderness of both equations. Sections that are not doubly symmetric buckle by flexure and twist together: (6.62), and (6.61)
// too where twist goes with flexure about the major axis, takes the smaller of both resistances and the larger slenderness.
void MemberCheck::SetStrutTerms(Combination& c) const
{
    const StrutSpan& y = m_struts[c.major];
    const StrutSpan& z = m_struts[c.minor];
    AnnexBInput& i = c.input;
    c.NyRd = y.open ? 0.0 : y.strut.NbRd;
    c.NzRd = z.open ? 0.0 : z.strut.NbRd;
    i.lambdaY = y.open ? 0.0 : y.strut.slenderness;
    i.lambdaZ = z.open ? 0.0 : z.strut.slenderness;
    if (!m_in.section.IsDoublySymmetric() && (c.Ny > 0.0 || c.Nz > 0.0)) {
        double slenderness = 0.0;
        const double twist = LeastTwist(c, slenderness);
        const auto take = [&](double& NbRd, double& lambda) {
            if (!(twist < NbRd) && !(slenderness > lambda)) return;
            c.twists = true;
            NbRd = std::min(NbRd, twist);
            lambda = std::max(lambda, slenderness);
        };
        if (ShearCentreOf(m_in.section).alongMajor != 0.0) take(c.NyRd, i.lambdaY);
        take(c.NzRd, i.lambdaZ);
    }
    i.ny = c.Ny > 0.0 ? Term(c.Ny, c.NyRd) : 0.0;
    i.nz = c.Nz > 0.0 ? Term(c.Nz, c.NzRd) : 0.0;
}

// The smallest resistance to torsional-flexural buckling of the lengths for twist that the combination reaches into.
double MemberCheck::LeastTwist(Combination& c, double& slenderness) const
{
    double least = std::numeric_limits<double>::infinity();
    for (const StrutSpan& span : m_struts) {
        const bool reaches = span.start < c.end - m_in.SamePlace() && span.end > c.start + m_in.SamePlace();
        if (span.mode != BucklingMode::Torsion || !reaches || span.held) continue;
        if (span.open) c.open = span.open;
        if (span.open || !(span.strut.NbRd < least)) continue;
        least = span.strut.NbRd;
        slenderness = span.strut.slenderness;
    }
    return least;
}

void MemberCheck::RecordCombination(const Combination& c, bool first)
{
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
    if (!c.open && m_in.withSteps) AddInteractionSteps(f, c, first);
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
    RecordLateralAcross();
    FindCombinations();
    RecordCombinations();
    for (std::size_t lateral = 0; lateral < m_laterals.size(); ++lateral)
        WarnOfCurveFactor(lateral);
}

void MemberCheck::RecordCombinations()
{
    const auto applies = [](const Combination& c) {
        return ((c.Ny > 0.0 || c.Nz > 0.0) && (c.My > 0.0 || c.Mz > 0.0)) || (c.My > 0.0 && c.Mz > 0.0) ||
               c.shiftMy > 0.0 || c.shiftMz > 0.0;
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
                      m_combinations.empty() ? NOTHING_TOGETHER
                      : general              ? L"the general method of 6.3.4 stands in its place"
                                             : L"a column in simple construction: its rule stands in its place"));
    }
    if (!m_in.section.IsDoublySymmetric() && !m_combinations.empty())
        Assume(L"bending and axial compression",
               m_in.section.shape == Shape::UnequalI
                   ? L"6.3.3 is for doubly symmetric sections: Annex B as for I sections, with torsional-flexural "
                     L"buckling in (6.62) where it is the weaker"
                   : L"6.3.3 is for doubly symmetric sections: Annex B as in class 3, with elastic moduli and with "
                     L"torsional-flexural buckling where it is the weaker");
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
    if (!anyGeneral) Add(FindingOf(Rule::GeneralMethod, CheckStatus::NotApplicable, WhyNoGeneralMethod()));
    if (!anySimple) Add(FindingOf(Rule::SimpleColumn, CheckStatus::NotApplicable, WhyNoSimpleColumn()));
}

const wchar_t* MemberCheck::WhyNoGeneralMethod() const
{
    if (m_in.options.interaction != InteractionMethod::General) return L"the options do not ask for it";
    return m_combinations.empty() ? NOTHING_TOGETHER : ONLY_DOUBLY_SYMMETRIC;
}

const wchar_t* MemberCheck::WhyNoSimpleColumn() const
{
    if (!m_in.options.simpleColumn) return L"the options do not say that the member is such a column";
    if (m_combinations.empty()) return NOTHING_TOGETHER;
    if (m_in.options.interaction == InteractionMethod::General)
        return L"the general method of 6.3.4 is asked for too and goes before the rule, which was not looked at";
    const auto isRefused = [](const Combination& c) { return c.simpleRefusal != nullptr; };
    if (std::none_of(m_combinations.begin(), m_combinations.end(), isRefused))
        return L"what keeps (6.61) and (6.62) from being evaluated keeps the rule from being looked at";
    return std::all_of(m_combinations.begin(), m_combinations.end(), isRefused)
               ? L"no length of the member meets the conditions of the rule"
               : L"no length of the member at which the rule was looked at meets its conditions";
}

} // namespace Keltrix::EC3
