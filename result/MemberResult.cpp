#include "keltrix/steel/MemberResult.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace Keltrix::Steel {

namespace {

constexpr double LIMIT = 1.0;

constexpr int LOCAL_FAILURES = 0x3F000;
constexpr int BUCKLING_FAILURES = 0x3000700;
constexpr int ANY_LOCAL_FAILURE =
    CMemberResult::FAIL_LOCAL | CMemberResult::FAIL | CMemberResult::WARNING | CMemberResult::NOTIFY;
constexpr int ANY_BUCKLING_FAILURE =
    CMemberResult::FAIL_BUCKLE | CMemberResult::FAIL | CMemberResult::WARNING | CMemberResult::NOTIFY;

const wchar_t* const NOT_STORED = L"Verbose results not stored\n";

/// The array that compares greater: the first difference decides, or else the greater length. If either element of that
/// pair is NaN, the first array is kept.
const std::vector<double>& GreaterOrFirst(const std::vector<double>& a, const std::vector<double>& b)
{
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i)
        if (a[i] != b[i]) return a[i] < b[i] ? b : a;
    return a.size() < b.size() ? b : a;
}

/// Replaces texts by an empty one and that many notes; those that are such texts already are left as they are.
void PutNotes(std::vector<CString>& texts, std::size_t numNotes, bool alreadyNotes)
{
    if (!alreadyNotes) texts.assign(1, CString());
    if (texts.size() > 1 + numNotes) texts.resize(1 + numNotes);
    while (texts.size() < 1 + numNotes)
        texts.emplace_back(NOT_STORED);
}

} // namespace

CMemberResult::CMemberResult() { IniDynaArray(1); }

void CMemberResult::Clear()
{
    CMemberResult fresh;
    fresh.m_bTextEnabled = m_bTextEnabled;
    fresh.m_format = std::move(m_format);
    *this = std::move(fresh);
}

CMemberResult CMemberResult::operator+(const CMemberResult& other) const
{
    CMemberResult merged = *this;
    merged += other;
    return merged;
}

// Works in place: merging n records takes time linear in n.
CMemberResult& CMemberResult::operator+=(const CMemberResult& other)
{
    m_iLoadFlags = other.m_iLoadFlags;
    m_iFlags |= other.m_iFlags;
    m_bIncBuckChk = true;
    for (double CMemberResult::*const value :
         {&CMemberResult::m_dUtilOverAll, &CMemberResult::m_dUtilBucklingCombined, &CMemberResult::m_dUtilBucklingLT,
          &CMemberResult::m_dUtilBucklingAxialMajor, &CMemberResult::m_dUtilBucklingAxialMinor,
          &CMemberResult::m_dUtilBucklingAxialTorsion, &CMemberResult::m_dUtilBucklingAxialFlexuralTorsion})
        if (other.*value > this->*value) this->*value = other.*value;
    for (std::vector<double> CMemberResult::*const values :
         {&CMemberResult::m_vUtilLocalCombined, &CMemberResult::m_vUtilLocalAxial, &CMemberResult::m_vUtilLocalMomMajor,
          &CMemberResult::m_vUtilLocalMomMinor, &CMemberResult::m_vUtilLocalShearMajor,
          &CMemberResult::m_vUtilLocalShearMinor, &CMemberResult::m_vUtilLocalTorsion})
        this->*values = GreaterOrFirst(this->*values, other.*values);

    const std::size_t common = std::min(m_vstrVerbose.size(), other.m_vstrVerbose.size());
    if (m_bTextEnabled && other.m_bTextEnabled) {
        m_bTextsAreNotes = false;
        for (std::size_t k = 0; k < common; ++k)
            m_vstrVerbose[k] += other.m_vstrVerbose[k];
        return *this;
    }
    m_bTextEnabled = false;
    m_iCurSubSpan = 0;
    PutNotes(m_vstrVerbose, common, m_bTextsAreNotes);
    m_bTextsAreNotes = true;
    return *this;
}

bool CMemberResult::operator==(const CMemberResult& other) const
{
    return m_iLoadFlags == other.m_iLoadFlags && m_iFlags == other.m_iFlags && m_dUtilOverAll == other.m_dUtilOverAll &&
           m_vUtilLocalCombined == other.m_vUtilLocalCombined && m_vUtilLocalAxial == other.m_vUtilLocalAxial &&
           m_vUtilLocalMomMajor == other.m_vUtilLocalMomMajor && m_vUtilLocalMomMinor == other.m_vUtilLocalMomMinor &&
           m_vUtilLocalShearMajor == other.m_vUtilLocalShearMajor &&
           m_vUtilLocalShearMinor == other.m_vUtilLocalShearMinor && m_vUtilLocalTorsion == other.m_vUtilLocalTorsion &&
           m_dUtilBucklingCombined == other.m_dUtilBucklingCombined && m_dUtilBucklingLT == other.m_dUtilBucklingLT &&
           m_dUtilBucklingAxialMajor == other.m_dUtilBucklingAxialMajor &&
           m_dUtilBucklingAxialMinor == other.m_dUtilBucklingAxialMinor &&
           m_dUtilBucklingAxialTorsion == other.m_dUtilBucklingAxialTorsion &&
           m_dUtilBucklingAxialFlexuralTorsion == other.m_dUtilBucklingAxialFlexuralTorsion &&
           m_vstrVerbose == other.m_vstrVerbose && !(m_format != other.m_format) && m_viIndent == other.m_viIndent;
}

void CMemberResult::AddFlags(int bits)
{
    if (bits & LOCAL_FAILURES) bits |= FAIL_LOCAL;
    if (bits & BUCKLING_FAILURES) bits |= FAIL_BUCKLE;
    if (bits & (FAIL_LOCAL | FAIL_BUCKLE)) bits |= FAIL;
    if (bits & (INFO_MEMBER_SLENDER | FAIL)) bits |= WARNING;
    if (bits & (INFO_LOCAL_SLENDER_WEB | INFO_LOCAL_SLENDER_FLANGE)) bits |= INFO_LOCAL_SLENDER;
    if (bits & (INFO_LOCAL_SLENDER | WARNING)) bits |= NOTIFY;
    m_iFlags |= bits;
}

double CMemberResult::InfinitiseNANs(double value)
{
    return std::isnan(value) ? std::numeric_limits<double>::infinity() : value;
}

double CMemberResult::At(const std::vector<double>& values, int i)
{
    assert(i >= 0 && static_cast<std::size_t>(i) < values.size());
    return values[static_cast<std::size_t>(i)];
}

double CMemberResult::MaxOf(const std::vector<double>& values, int* index)
{
    double largest = 0.0;
    int best = -1;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i] > largest) {
            largest = values[i];
            best = static_cast<int>(i);
        }
    }
    if (index != nullptr && best >= 0) *index = best;
    return largest;
}

void CMemberResult::RaiseOverAll(double util)
{
    if (util > m_dUtilOverAll) m_dUtilOverAll = util;
}

void CMemberResult::SetUtilOverAll(double util) { RaiseOverAll(InfinitiseNANs(util)); }

void CMemberResult::RaiseLocalCombined(double util)
{
    assert(m_iCurSubSpan >= 0 && static_cast<std::size_t>(m_iCurSubSpan) < m_vUtilLocalCombined.size());
    double& combined = m_vUtilLocalCombined[static_cast<std::size_t>(m_iCurSubSpan)];
    if (!(util > combined)) return;
    combined = util;
    RaiseOverAll(util);
    if (util >= LIMIT) AddFlags(ANY_LOCAL_FAILURE);
}

void CMemberResult::SetLocal(std::vector<double>& component, double util, int failFlag)
{
    const double v = InfinitiseNANs(util);
    assert(m_iCurSubSpan >= 0 && static_cast<std::size_t>(m_iCurSubSpan) < component.size());
    double& stored = component[static_cast<std::size_t>(m_iCurSubSpan)];
    if (!(v > stored)) return;
    stored = v;
    RaiseLocalCombined(v);
    if (v >= LIMIT) AddFlags(ANY_LOCAL_FAILURE | failFlag);
}

void CMemberResult::SetUtilLocalCombined(double util) { RaiseLocalCombined(InfinitiseNANs(util)); }
void CMemberResult::SetUtilLocalAxial(double util) { SetLocal(m_vUtilLocalAxial, util, FAIL_LOCAL_AXIAL); }
void CMemberResult::SetUtilLocalMomMajor(double util)
{
    SetLocal(m_vUtilLocalMomMajor, util, FAIL_LOCAL_BENDING_MAJOR);
}
void CMemberResult::SetUtilLocalMomMinor(double util)
{
    SetLocal(m_vUtilLocalMomMinor, util, FAIL_LOCAL_BENDING_MINOR);
}
void CMemberResult::SetUtilLocalShearMajor(double util)
{
    SetLocal(m_vUtilLocalShearMajor, util, FAIL_LOCAL_SHEAR_MAJOR);
}
void CMemberResult::SetUtilLocalShearMinor(double util)
{
    SetLocal(m_vUtilLocalShearMinor, util, FAIL_LOCAL_SHEAR_MINOR);
}
void CMemberResult::SetUtilLocalTorsion(double util) { SetLocal(m_vUtilLocalTorsion, util, FAIL_LOCAL_TORSION); }

// The combined buckling value fails only above the limit, unlike the local one, which fails at it: kept.
void CMemberResult::RaiseBucklingCombined(double util)
{
    if (!(util > m_dUtilBucklingCombined)) return;
    m_dUtilBucklingCombined = util;
    RaiseOverAll(util);
    if (util > LIMIT) AddFlags(ANY_BUCKLING_FAILURE);
}

void CMemberResult::SetBuckling(double& component, double util, int failFlag, bool failsAtLimit)
{
    const double v = InfinitiseNANs(util);
    if (!(v > component)) return;
    component = v;
    RaiseBucklingCombined(v);
    if (failsAtLimit ? v >= LIMIT : v > LIMIT) AddFlags(ANY_BUCKLING_FAILURE | failFlag);
}

void CMemberResult::SetUtilBucklingCombined(double util) { RaiseBucklingCombined(InfinitiseNANs(util)); }
// Lateral-torsional buckling fails only above the limit, the axial components at it: kept.
void CMemberResult::SetUtilBucklingLT(double util)
{
    SetBuckling(m_dUtilBucklingLT, util, FAIL_BUCKLE_LAT_TORS, false);
}
void CMemberResult::SetUtilBucklingAxialMajor(double util)
{
    SetBuckling(m_dUtilBucklingAxialMajor, util, FAIL_BUCKLE_AXIAL_MAJOR, true);
}
void CMemberResult::SetUtilBucklingAxialMinor(double util)
{
    SetBuckling(m_dUtilBucklingAxialMinor, util, FAIL_BUCKLE_AXIAL_MINOR, true);
}
void CMemberResult::SetUtilBucklingAxialTorsion(double util)
{
    SetBuckling(m_dUtilBucklingAxialTorsion, util, FAIL_BUCKLE_AXIAL_TORSION, true);
}
void CMemberResult::SetUtilBucklingAxialFlexuralTorsion(double util)
{
    SetBuckling(m_dUtilBucklingAxialFlexuralTorsion, util, FAIL_BUCKLE_AXIAL_FLEXURAL_TORSION, true);
}

void CMemberResult::FailBucklingLT()
{
    SetUtilBucklingLT(std::numeric_limits<double>::infinity());
    // Added directly too: a value that was infinite before raises no flag.
    m_iFlags |= FAIL_BUCKLE_LAT_TORS | ANY_BUCKLING_FAILURE;
}

void CMemberResult::IniDynaArray(int n)
{
    const auto count = static_cast<std::size_t>(std::max(n, 0));
    m_vUtilLocalCombined.resize(count, 0.0);
    m_vUtilLocalAxial.resize(count, 0.0);
    m_vUtilLocalMomMajor.resize(count, 0.0);
    m_vUtilLocalMomMinor.resize(count, 0.0);
    m_vUtilLocalShearMajor.resize(count, 0.0);
    m_vUtilLocalShearMinor.resize(count, 0.0);
    m_vUtilLocalTorsion.resize(count, 0.0);
    m_vstrVerbose.resize(count);
    m_bTextsAreNotes = false;
}

void CMemberResult::EnableText(bool enable)
{
    m_bTextEnabled = enable;
    if (enable) return;
    ClearStrings();
    m_vstrVerbose.emplace_back(NOT_STORED);
}

void CMemberResult::ClearStrings()
{
    for (CString& text : m_vstrVerbose)
        text.Empty();
    m_bTextsAreNotes = false;
}

// What *this = *this + scratch comes to, where scratch is a copy of this record with empty texts, the same failure and the
// added text, but without copying arrays and texts.
void CMemberResult::MergeScratch(const CString& addedText, bool failedLT)
{
    if (failedLT) FailBucklingLT();
    m_bIncBuckChk = true;
    if (m_bTextEnabled) {
        TextHere() += addedText;
        return;
    }
    m_iCurSubSpan = 0;
    PutNotes(m_vstrVerbose, m_vstrVerbose.size(), m_bTextsAreNotes);
    m_bTextsAreNotes = true;
}

} // namespace Keltrix::Steel
