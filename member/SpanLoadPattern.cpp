// Load patterns of a span, read off the forces and moments at the sub-span ends, because the host gives no loads.
//
// Symbols: FL, FR forces at the left and right end of a sub-span, ML, MR its moments; P position of a member point.

#include <algorithm>
#include <cmath>

#include "keltrix/steel/MemberLayout.h"
#include "member/SamePoint.h"

namespace Keltrix::Steel {

namespace {

constexpr double RELATIVE = 0.001;         // of the reference value
constexpr double FLOOR = 1.0;              // N, N·m
constexpr double END_LOAD_RATIO = 0.05;    // agreement of an end moment with a pattern
constexpr double SMALL_END_MOMENT = 100.0; // N·m

/// Apart by the floor and by 0.1 % of the reference.
bool DifferAbsolutely(double reference, double other)
{
    return reference != other && std::fabs(reference - other) >= std::max(FLOOR, std::fabs(RELATIVE * reference));
}

bool DifferRelatively(double reference, double other)
{
    return std::fabs(reference - other) > std::fabs(reference * RELATIVE);
}

/// Apart by more than 0.1 % of the reference in any component, without a floor.
bool DifferRelatively(const Vec3<double>& reference, const Vec3<double>& other)
{
    return DifferRelatively(reference.x, other.x) || DifferRelatively(reference.y, other.y) ||
           DifferRelatively(reference.z, other.z);
}

/// Not above the limit: an infinite ratio is, a not-a-number ratio is not.
bool WithinEndLoadRatio(double ratio) { return !(std::fabs(ratio) > END_LOAD_RATIO); }

/// The same component of forces changes along a sub-span or jumps between two.
bool ComponentChanges(const std::vector<CSubSpan>& subSpans, int left, int right, double Vec3<double>::*component)
{
    if (right - left == 1) return false;
    for (int i = left; i < right; ++i) {
        const CSubSpan& subSpan = subSpans[static_cast<std::size_t>(i)];
        const double end = subSpan.GetForcesRight().*component;
        if (DifferAbsolutely(subSpan.GetForcesLeft().*component, end)) return true;
        if (i < right - 1 &&
            DifferAbsolutely(subSpans[static_cast<std::size_t>(i) + 1].GetForcesLeft().*component, end))
            return true;
    }
    return false;
}

/// The shear Fz jumps at the joint between two sub-spans, or the moment Myy differs between their left ends. That the
/// left ends are compared, and not the two sides of the joint, is kept for compatibility: wherever the moment varies along
/// a sub-span, these tests find a change.
bool ChangesAtJoint(const CSubSpan& subSpan, const CSubSpan& next)
{
    return DifferAbsolutely(next.GetMomentsLeft().y, subSpan.GetMomentsLeft().y) ||
           DifferAbsolutely(next.GetForcesLeft().z, subSpan.GetForcesRight().z);
}

bool SamePoint(double a, double b) { return std::fabs(a - b) < SAME_POINT; }

} // namespace

bool CSpan::IsMinorAxisLoaded() const { return ComponentChanges(*m_pSubSpans, m_iLeft, m_iRight, &Vec3<double>::z); }

bool CSpan::IsMajorAxisLoaded() const { return ComponentChanges(*m_pSubSpans, m_iLeft, m_iRight, &Vec3<double>::y); }

bool CSpan::IsLoaded(bool singleSubSpan) const
{
    if (NumSubSpans() == 1 && !singleSubSpan) return false;
    for (int i = m_iLeft; i < m_iRight; ++i) {
        if (DifferRelatively(SubSpan(i).GetForcesLeft(), SubSpan(i).GetForcesRight())) return true;
        if (i < m_iRight - 1 && DifferRelatively(SubSpan(i + 1).GetForcesLeft(), SubSpan(i).GetForcesRight()))
            return true;
    }
    return false;
}

bool CSpan::IsLoadedWithPointLoad() const
{
    if (NumSubSpans() == 1) return false;
    for (int i = m_iLeft; i < m_iRight; ++i) {
        // A jump is a load at a point also where it happens over a sub-span of no length.
        if (SamePoint(Pos(i), Pos(i + 1)) && DifferRelatively(SubSpan(i).GetForcesLeft(), SubSpan(i).GetForcesRight()))
            return true;
        if (i < m_iRight - 1 && DifferRelatively(SubSpan(i + 1).GetForcesLeft(), SubSpan(i).GetForcesRight()))
            return true;
    }
    return false;
}

bool CSpan::IsLeftEndPtLoadOnly() const
{
    if (NumSubSpans() <= 1) return false;
    if (!(std::fabs(SubSpan(m_iLeft).GetMomentsLeft().y) < FLOOR)) return false;
    // The joint after the first sub-span is not looked at, unlike in the test of the right end: kept for compatibility.
    for (int i = m_iLeft + 1; i < m_iRight - 1; ++i)
        if (ChangesAtJoint(SubSpan(i), SubSpan(i + 1))) return false;
    const double endMoment = SubSpan(m_iRight - 1).GetMomentsRight().y;
    const double shear = SubSpan(m_iLeft).GetForcesLeft().z;
    return WithinEndLoadRatio((endMoment - Length() * shear) / endMoment);
}

bool CSpan::IsRightEndPtLoadOnly() const
{
    if (NumSubSpans() <= 1) return false;
    for (int i = m_iLeft; i < m_iRight - 1; ++i)
        if (ChangesAtJoint(SubSpan(i), SubSpan(i + 1))) return false;
    if (!(std::fabs(SubSpan(m_iRight - 1).GetMomentsRight().y) < FLOOR)) return false;
    const double endMoment = SubSpan(m_iLeft).GetMomentsLeft().y;
    const double shear = SubSpan(m_iRight - 1).GetForcesRight().z;
    // Plus, where the test of the left end has minus: kept for compatibility.
    return WithinEndLoadRatio((Length() * shear + endMoment) / endMoment);
}

bool CSpan::IsLeftEndMomentLoadOnly() const
{
    if (NumSubSpans() < 1) return false;
    const double left = SubSpan(m_iLeft).GetMomentsLeft().y;
    const double right = SubSpan(m_iRight - 1).GetMomentsRight().y;
    return WithinEndLoadRatio((right - left) / right);
}

bool CSpan::IsRightEndMomentLoadOnly() const
{
    if (NumSubSpans() < 1) return false;
    const double left = SubSpan(m_iLeft).GetMomentsLeft().y;
    const double right = SubSpan(m_iRight - 1).GetMomentsRight().y;
    return WithinEndLoadRatio((left - right) / left);
}

// At most, not at least: callers rely on this sense.
bool CSpan::IsLeftEndMomentLoaded() const
{
    return NumSubSpans() >= 1 && std::fabs(SubSpan(m_iLeft).GetMomentsLeft().y) <= SMALL_END_MOMENT;
}

bool CSpan::IsRightEndMomentLoaded() const
{
    return NumSubSpans() >= 1 && std::fabs(SubSpan(m_iRight - 1).GetMomentsRight().y) <= SMALL_END_MOMENT;
}

bool CSpan::IsLoadedWithCentrePointLoad() const
{
    if (NumSubSpans() == 1) return false;
    if (NumSubSpans() < 1) return true;
    const double length = Length();
    // The point's own position over the span's length: the centre only of a span that starts at position 0. Kept.
    const auto isCentre = [length](double position) { return std::fabs(position / length - 0.5) < RELATIVE; };
    for (int i = m_iLeft; i < m_iRight; ++i) {
        if (!(SubSpan(i).GetForcesLeft() == SubSpan(i).GetForcesRight()) && SamePoint(Pos(i), Pos(i + 1))) {
            if (!isCentre(Pos(i))) return false;
        } else if (i < m_iRight - 1 && !(SubSpan(i + 1).GetForcesLeft() == SubSpan(i).GetForcesRight())) {
            if (!isCentre(Pos(i + 1))) return false;
        }
    }
    return true;
}

bool CSpan::IsLoadedWithUDL() const
{
    if (NumSubSpans() == 1) return false;
    double firstSlope = 0.0;
    for (int i = m_iLeft; i < m_iRight; ++i) {
        const double begin = SubSpan(i).GetForcesLeft().z;
        const double end = SubSpan(i).GetForcesRight().z;
        if (DifferAbsolutely(begin, end) && SamePoint(Pos(i), Pos(i + 1))) return false;
        if (i < m_iRight - 1 && DifferAbsolutely(SubSpan(i + 1).GetForcesLeft().z, end)) return false;
        const double slope = (end - begin) / (Pos(i + 1) - Pos(i));
        if (i == m_iLeft) firstSlope = slope;
        // A slope is held against the tolerance of a force: kept for compatibility.
        const double tolerance = std::max(FLOOR, std::fabs(RELATIVE * end));
        if (i > m_iLeft && slope != firstSlope && std::fabs(slope - firstSlope) >= tolerance) return false;
    }
    return true;
}

} // namespace Keltrix::Steel
