#include <cmath>

#include "keltrix/steel/MemberLayout.h"
#include "member/Envelope.h"
#include "member/MomentTolerance.h"

namespace Keltrix::Steel {

namespace {

Vec3<double> Mean(const Vec3<double>& a, const Vec3<double>& b)
{
    return {(a.x + b.x) * 0.5, (a.y + b.y) * 0.5, (a.z + b.z) * 0.5};
}

Vec3<double> Sum(const Vec3<double>& a, const Vec3<double>& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }

Vec3<double> Divided(const Vec3<double>& v, double by) { return {v.x / by, v.y / by, v.z / by}; }

Vec3<double> Between(const Vec3<double>& a, const Vec3<double>& b, double s)
{
    return {(1.0 - s) * a.x + s * b.x, (1.0 - s) * a.y + s * b.y, (1.0 - s) * a.z + s * b.z};
}

/// The load height of largest magnitude with its reference; the first of them on a tie.
struct LoadHeightOfLargestMagnitude {
    double height;
    LoadPos reference;

    explicit LoadHeightOfLargestMagnitude(const CRestraint& first) :
        height(first.LoadHeight()), reference(first.RefLoadHeight())
    {}
    void Consider(const LoadHeightOfLargestMagnitude& candidate)
    {
        if (std::fabs(candidate.height) > std::fabs(height)) *this = candidate;
    }
    void Consider(const CRestraint& candidate) { Consider(LoadHeightOfLargestMagnitude(candidate)); }
};

/// Envelope of the sub-spans from place `left` to before `right`. Without any, the sub-span at `left` itself, or one without
/// forces after the last.
template <double (*Pick)(double, double)>
CSubSpan EnvelopeOf(const std::vector<CSubSpan>& subSpans, int left, int right)
{
    const auto place = static_cast<std::size_t>(left);
    const CSubSpan first = place < subSpans.size() ? subSpans[place] : CSubSpan();
    if (left >= right) return first;
    Vec3<double> forceLeft = first.GetForcesLeft();
    Vec3<double> forceRight = first.GetForcesRight();
    Vec3<double> momentLeft = first.GetMomentsLeft();
    Vec3<double> momentRight = first.GetMomentsRight();
    for (int i = left + 1; i < right; ++i) {
        const CSubSpan& subSpan = subSpans[static_cast<std::size_t>(i)];
        forceLeft = PickEach<Pick>(forceLeft, subSpan.GetForcesLeft());
        forceRight = PickEach<Pick>(forceRight, subSpan.GetForcesRight());
        momentLeft = PickEach<Pick>(momentLeft, subSpan.GetMomentsLeft());
        momentRight = PickEach<Pick>(momentRight, subSpan.GetMomentsRight());
    }
    CSubSpan envelope;
    envelope.SetForcesAll(forceLeft, forceRight);
    envelope.SetMomentsAll(momentLeft, momentRight);
    return envelope;
}

/// A vector that a sub-span holds at one of its ends.
using EndVector = Vec3<double> (CSubSpan::*)() const;

/// The value at the relative position t of a span, from the values at the sub-span ends.
Vec3<double> Interpolate(const CSpan& span, const std::vector<CMemberPoint>& points,
                         const std::vector<CSubSpan>& subSpans, double t, EndVector left, EndVector right)
{
    const auto subSpan = [&](int i) -> const CSubSpan& { return subSpans[static_cast<std::size_t>(i)]; };
    const auto position = [&](int i) { return points[static_cast<std::size_t>(i)].GetPos(); };
    const int first = span.GetCSSIndexLeft();
    const int last = span.GetCSSIndexRight();
    if (t == 0.0) return (subSpan(first).*left)();
    if (t == 1.0) return (subSpan(last).*right)();

    const double x = span.InterpolatePosition(t);
    const int lastPoint = static_cast<int>(points.size()) - 1;
    const int lastSubSpan = static_cast<int>(subSpans.size()) - 1;
    int k = first;
    while (k < lastPoint && x > position(k))
        ++k;
    if (position(k) == x) {
        // Where the point is an end of the member, only one side exists.
        if (k == 0) return (subSpan(0).*left)();
        if (k > lastSubSpan) return (subSpan(k - 1).*right)();
        return Mean((subSpan(k - 1).*right)(), (subSpan(k).*left)());
    }
    if (k == 0) k = 1;
    const double before = position(k - 1);
    const double s = (x - before) / (position(k) - before);
    return Between((subSpan(k - 1).*left)(), (subSpan(k - 1).*right)(), s);
}

} // namespace

CSpan::~CSpan() = default;

bool CSpan::operator==(const CSpan& other) const
{
    return m_iLeft == other.m_iLeft && m_iRight == other.m_iRight && m_pPoints == other.m_pPoints &&
           m_pSubSpans == other.m_pSubSpans;
}

void CSpan::SetNull()
{
    m_iLeft = 0;
    m_iRight = 0;
}

bool CSpan::IsValid() const
{
    if (m_pPoints == nullptr || m_pSubSpans == nullptr) return false;
    const auto left = static_cast<unsigned int>(m_iLeft);
    const auto right = static_cast<unsigned int>(m_iRight);
    return left <= right && right + 1 <= m_pPoints->size();
}

void CSpan::SetCMPIndexLeft(int i)
{
    if (i >= 0) m_iLeft = i;
}

void CSpan::SetCMPIndexRight(int i)
{
    if (i >= 0) m_iRight = i;
}

bool CSpan::IsLEndOfMember() const { return m_iLeft == 0 && !IsNull(); }

bool CSpan::IsREndOfMember() const { return !IsNull() && m_iRight == static_cast<int>(m_pPoints->size()) - 1; }

CString CSpan::GetString(const CDesFormat& fmt) const
{
    return fmt.Length(PosLeft()) + L" to " + fmt.Length(PosRight()) + L" = " + fmt.Length(Length());
}

CRestraint CSpan::RestraintEndL() const
{
    const CSubSpan& first = SubSpan(m_iLeft);
    CRestraint restraint = Point(m_iLeft).GetRestraint();
    restraint.SetForcesAndMoments(first.GetForcesLeft(), first.GetMomentsLeft(), true);
    return restraint;
}

CRestraint CSpan::RestraintEndR() const
{
    const CSubSpan& last = SubSpan(m_iRight - 1);
    CRestraint restraint = Point(m_iRight).GetRestraint();
    restraint.SetForcesAndMoments(last.GetForcesRight(), last.GetMomentsRight(), true);
    return restraint;
}

bool CSpan::IsDestabilized() const
{
    for (int i = m_iLeft; i <= m_iRight; ++i)
        if (Point(i).GetRestraint().IsDestabilized()) return true;
    for (int i = m_iLeft; i < m_iRight; ++i)
        if (SubSpan(i).GetRestraint().IsDestabilized()) return true;
    return false;
}

CRestraint CSpan::ContinuousRestraint() const
{
    const auto place = static_cast<std::size_t>(m_iLeft);
    const CSubSpan first = place < m_pSubSpans->size() ? (*m_pSubSpans)[place] : CSubSpan();
    CRestraint restraint = first.GetRestraint();

    // Only the two end sub-spans take part: kept for compatibility.
    int flag = 0;
    if (m_iLeft < m_iRight)
        flag = SubSpan(m_iLeft).GetRestraint().RestFlag() & SubSpan(m_iRight - 1).GetRestraint().RestFlag();
    restraint.SetRestFlag(flag);

    Vec3<double> force(0.0, 0.0, 0.0);
    Vec3<double> moment(0.0, 0.0, 0.0);
    LoadHeightOfLargestMagnitude atPoints(Point(m_iLeft).GetRestraint());
    LoadHeightOfLargestMagnitude alongSubSpans{CRestraint()};
    // The extremes of MaxForces and MinForces, in the same pass: a long span does not fit into the cache.
    MajorMomentExtremes extremes(first, first);
    for (int i = m_iLeft; i < m_iRight; ++i) {
        const CSubSpan& subSpan = SubSpan(i);
        force = Sum(force, Mean(subSpan.GetForcesLeft(), subSpan.GetForcesRight()));
        moment = Sum(moment, Mean(subSpan.GetMomentsLeft(), subSpan.GetMomentsRight()));
        extremes.Consider(subSpan);
        atPoints.Consider(Point(i + 1).GetRestraint());
        alongSubSpans.Consider(subSpan.GetRestraint());
    }
    const MajorMomentRange range(extremes);
    const bool reverses = range.largest >= range.tolerance && range.smallest <= -range.tolerance;
    const double count = NumSubSpans();
    restraint.SetForcesAndMoments(Divided(force, count), Divided(moment, count), !reverses);

    // On a tie that of a point.
    atPoints.Consider(alongSubSpans);
    // Single precision: kept for compatibility.
    restraint.SetLoadHeight(static_cast<float>(atPoints.height));
    restraint.SetRefLoadHeight(atPoints.reference);
    return restraint;
}

CSubSpan CSpan::MaxForces() const { return EnvelopeOf<LargerOrFirst>(*m_pSubSpans, m_iLeft, m_iRight); }

CSubSpan CSpan::MinForces() const { return EnvelopeOf<SmallerOrFirst>(*m_pSubSpans, m_iLeft, m_iRight); }

Vec3<double> CSpan::InterpolateForces(double t) const
{
    return Interpolate(*this, *m_pPoints, *m_pSubSpans, t, &CSubSpan::GetForcesLeft, &CSubSpan::GetForcesRight);
}

Vec3<double> CSpan::InterpolateMoments(double t) const
{
    return Interpolate(*this, *m_pPoints, *m_pSubSpans, t, &CSubSpan::GetMomentsLeft, &CSubSpan::GetMomentsRight);
}

} // namespace Keltrix::Steel
