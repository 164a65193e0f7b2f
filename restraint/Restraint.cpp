#include "keltrix/steel/Restraint.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "restraint/RestraintClosure.h"

namespace Keltrix::Data {

namespace {

constexpr double NO_HEIGHT = 1e-10;       // m: load heights below this are no height at all
constexpr double HEIGHT_TOLERANCE = 1e-5; // relative to the larger of two load heights

bool SameLoadHeight(double a, double b)
{
    if (a == b) return true;
    const double absA = std::fabs(a);
    const double absB = std::fabs(b);
    if (absA < NO_HEIGHT && absB < NO_HEIGHT) return true;
    return std::fabs(a - b) / std::max(absA, absB) < HEIGHT_TOLERANCE;
}

} // namespace

CString LoadPosString(LoadPos pos)
{
    switch (pos) {
    case SHR_CENTRE:
        return L"SHR_CENTRE";
    case TOP_FLANGE:
        return L"TOP_FLANGE";
    case BOT_FLANGE:
        return L"BOT_FLANGE";
    }
    return CString();
}

LoadPos LoadPosID(CString text, LoadPos defaultPos)
{
    text.Trim();
    text.MakeUpper();
    if (text.IsEmpty()) return defaultPos;
    if (text == L"SHR_CENTRE" || text == L"0") return SHR_CENTRE;
    if (text == L"TOP_FLANGE" || text == L"1") return TOP_FLANGE;
    if (text == L"BOT_FLANGE" || text == L"2") return BOT_FLANGE;
    throw std::runtime_error("Unrecognised steel load position");
}

std::vector<CString> CRestraint::PresetStrings()
{
    return {L"Free", L"Pinned", L"Fixed", L"Full rotational", L"Partial rotational", L"Top flange lateral"};
}

const std::vector<CRestraint::Presets>& CRestraint::SpanPresets()
{
    static const std::vector<Presets> presets{FREE, PINNED, TOP_FLANGE_LATERAL};
    return presets;
}

const std::vector<CRestraint::Presets>& CRestraint::PointPresets()
{
    static const std::vector<Presets> presets{FREE, TOP_FLANGE_LATERAL, BOTTOM_FLANGE_LATERAL,
                                              TOP_AND_BOTTOM_FLANGE_LATERAL};
    return presets;
}

unsigned int CRestraint::Closure(unsigned int flag, int compression) { return RestraintClosure(flag, compression); }

bool CRestraint::operator==(const CRestraint& other) const
{
    if (m_iRestFlag != other.m_iRestFlag && ConsistentFlag() != other.ConsistentFlag()) return false;
    if (m_eRefLoadHeight != other.m_eRefLoadHeight) return false;
    if (!SameLoadHeight(m_dLoadHeight, other.m_dLoadHeight)) return false;
    if (m_bHasForcesAndMoments != other.m_bHasForcesAndMoments) return false;
    if (!m_bHasForcesAndMoments) return true;
    return m_vForce == other.m_vForce && m_vMoment == other.m_vMoment && m_bUseMomentSign == other.m_bUseMomentSign;
}

bool CRestraint::IsRestrained(unsigned int bits, bool consistent) const
{
    const unsigned int flag = consistent && (bits & IMPLIED_MASK) ? ConsistentFlag() : m_iRestFlag;
    return (flag & bits) == bits;
}

bool CRestraint::IsFree(unsigned int bits, bool consistent) const
{
    if (m_iRestFlag == 0) return true;
    const bool close = consistent && (bits & IMPLIED_MASK) && bits != RESTRAINT_MASK;
    const unsigned int flag = close ? ConsistentFlag() : m_iRestFlag;
    return (flag & bits & RESTRAINT_MASK) == 0;
}

bool CRestraint::IsEnc(bool consistent) const
{
    const unsigned int flag = consistent ? ConsistentFlag() : m_iRestFlag;
    return (flag & ENCASTRE) == ENCASTRE;
}

bool CRestraint::IsPreset(unsigned int preset) const
{
    return *this == CRestraint(static_cast<int>(preset), SHR_CENTRE, 0.0);
}

void CRestraint::SetForcesAndMoments(const Vec3<double>& force, const Vec3<double>& moment, bool useMomentSign)
{
    m_vForce = force;
    m_vMoment = moment;
    m_bUseMomentSign = useMomentSign;
    m_bHasForcesAndMoments = true;
}

bool CRestraint::GetForcesAndMoments(Vec3<double>& force, Vec3<double>& moment, bool& useMomentSign) const
{
    force = m_vForce;
    moment = m_vMoment;
    useMomentSign = m_bUseMomentSign;
    return m_bHasForcesAndMoments;
}

void CRestraint::ClearForcesAndMoments()
{
    m_vForce = Vec3<double>(0.0, 0.0, 0.0);
    m_vMoment = Vec3<double>(0.0, 0.0, 0.0);
    m_bUseMomentSign = true;
    m_bHasForcesAndMoments = false;
}

// Meant to exchange the states of two bits, but drops every other bit: kept for compatibility.
void CRestraint::SwapBits(unsigned int& flag, unsigned int a, unsigned int b)
{
    const bool hadA = (flag & a) != 0;
    const bool hadB = (flag & b) != 0;
    flag &= a | b;
    if (hadB) flag |= a;
    if (hadA) flag |= b;
}

void CRestraint::MirrorMajorAxis()
{
    m_vForce.z = -m_vForce.z;
    m_vMoment.x = -m_vMoment.x;
    m_vMoment.y = -m_vMoment.y;
    // Two exchanges of disjoint pairs leave no bit at all, because each drops what the other would keep.
    SwapBits(m_iRestFlag, FLANGE1_LATERAL, FLANGE2_LATERAL);
    SwapBits(m_iRestFlag, FLANGE1_WARPING, FLANGE2_WARPING);
}

} // namespace Keltrix::Data
