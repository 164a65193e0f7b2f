#include <algorithm>

#include "keltrix/steel/SteelMember.h"
#include "member/MomentTolerance.h"

namespace Keltrix::Steel {

namespace {

/// Lists mostly come in order, which is cheap to see; sorting would take a second list's memory.
template <class Numbered>
void SortByNumber(std::vector<Numbered>& list)
{
    if (!std::is_sorted(list.begin(), list.end())) std::stable_sort(list.begin(), list.end());
}

} // namespace

// Members are made and destroyed in any number of threads. Nothing else depends on the count, so that no order is needed.
std::atomic<int> CSteelMemberGen::m_iInstances{0};

CSteelMemberGen::CSteelMemberGen() { m_iInstances.fetch_add(1, std::memory_order_relaxed); }

CSteelMemberGen::CSteelMemberGen(const CSteelMemberGen& other) :
    CSteelMember(other), m_vMemberPoints(other.m_vMemberPoints), m_vSubSpans(other.m_vSubSpans),
    m_strTitle(other.m_strTitle), m_bLengthOverride(other.m_bLengthOverride), m_dLyy(other.m_dLyy),
    m_dLzz(other.m_dLzz), m_dLlt(other.m_dLlt), m_iNumSubSpansUser(other.m_iNumSubSpansUser)
{
    m_iInstances.fetch_add(1, std::memory_order_relaxed);
}

CSteelMemberGen::~CSteelMemberGen() { m_iInstances.fetch_sub(1, std::memory_order_relaxed); }

bool CSteelMemberGen::SetResult(CMemberResult* result)
{
    if (result == nullptr) return false;
    m_pResult = result;
    if (result->TextEnabled()) result->AddOutputString(L"<h4>Design Code:</h4>\n\t" + DesOptName(DesOpt()) + L"\n");
    return true;
}

bool CSteelMemberGen::SetMemberPointVec(const std::vector<CMemberPoint>& points)
{
    if (&points != &m_vMemberPoints) m_vMemberPoints = points;
    SortByNumber(m_vMemberPoints);
    return ValidateMPV(&m_vMemberPoints, nullptr);
}

bool CSteelMemberGen::SetSubSpanVec(const std::vector<CSubSpan>& subSpans)
{
    if (&subSpans != &m_vSubSpans) m_vSubSpans = subSpans;
    SortByNumber(m_vSubSpans);
    return ValidateSSV(&m_vSubSpans, nullptr);
}

void CSteelMemberGen::SetTitle(const CString& title) { m_strTitle = title; }

void CSteelMemberGen::SetQuickCheckMode() { m_bQuickCheckMode = true; }

std::vector<CMemberPoint> CSteelMemberGen::GetMemberPointVec() { return m_vMemberPoints; }

std::vector<CSubSpan> CSteelMemberGen::GetSubSpanVec() { return m_vSubSpans; }

CString CSteelMemberGen::GetTitle() { return m_strTitle; }

double CSteelMemberGen::Length() const
{
    return m_vMemberPoints.empty() ? 0.0 : m_vMemberPoints.back().GetPos() - m_vMemberPoints.front().GetPos();
}

void CSteelMemberGen::SetLengthOverride(bool isOverridden) { m_bLengthOverride = isOverridden; }
void CSteelMemberGen::SetLyy(double length) { m_dLyy = length; }
void CSteelMemberGen::SetLzz(double length) { m_dLzz = length; }
void CSteelMemberGen::SetLlt(double length) { m_dLlt = length; }
void CSteelMemberGen::SetNumSubSpansUser(int count) { m_iNumSubSpansUser = count; }

bool CSteelMemberGen::LengthOverride() const { return m_bLengthOverride; }
double CSteelMemberGen::Lyy() const { return m_dLyy; }
double CSteelMemberGen::Lzz() const { return m_dLzz; }
double CSteelMemberGen::Llt() const { return m_dLlt; }
int CSteelMemberGen::NumSubSpansUser() const { return m_iNumSubSpansUser; }

void CSteelMemberGen::SetEquivalentUniformMomentFactor(double factor) { m_optEquivalentUniformMomentFactor = factor; }

void CSteelMemberGen::SetMomentAmplificationFactorStrongAxis(double)
{
    throw unsupported_design_code_error("Moment amplification factor (strong axis) not supported in this design code");
}

void CSteelMemberGen::SetMomentAmplificationFactorWeakAxis(double)
{
    throw unsupported_design_code_error("Moment amplification factor (weak axis) not supported in this design code");
}

void CSteelMemberGen::Clear()
{
    m_vMemberPoints.clear();
    m_vSubSpans.clear();
    m_strTitle.Empty();
    if (m_pResult != nullptr) m_pResult->Clear();
}

CCodeShare::LT_BuckleDirection CSteelMemberGen::BucklingSenseLT(const CSpan& span) const
{
    const MajorMomentRange range(span);
    const bool positive = range.largest > range.tolerance;
    const bool negative = range.smallest < -range.tolerance;
    if (negative && positive) return CCodeShare::LT_COMP_BOTH;
    if (negative) return CCodeShare::LT_COMP_FLANGE1;
    if (positive) return CCodeShare::LT_COMP_FLANGE2;
    return CCodeShare::LT_COMP_NONE;
}

} // namespace Keltrix::Steel
