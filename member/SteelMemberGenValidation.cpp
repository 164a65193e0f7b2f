#include <algorithm>

#include "keltrix/steel/SteelMember.h"

namespace Keltrix::Steel {

namespace {

bool Refuse(CString* err, const wchar_t* message)
{
    if (err != nullptr) *err += message;
    return false;
}

/// Every pair of consecutive points, in the stored order; the first fault ends the walk. Points are only read.
bool ValidatePointPairs(const std::vector<CMemberPoint>& points, CString* err)
{
    for (std::size_t i = 1; i < points.size(); ++i) {
        const CMemberPoint& a = points[i - 1];
        const CMemberPoint& b = points[i];
        if (a.GetPos() > b.GetPos())
            return Refuse(err, L"MemberPoint list order by Index conflicts with order by Position\n");
        if (a.GetPos() == b.GetPos()) return Refuse(err, L"MemberPoint has at least two points with same Position\n");
        if (a.Get1Index() == b.Get1Index())
            return Refuse(err, L"MemberPoint list has at least two points with same Indices\n");
        // In a wider type, so that the largest index has a successor.
        if (static_cast<long long>(b.Get1Index()) != static_cast<long long>(a.Get1Index()) + 1)
            return Refuse(err, L"MemberPoint list has gaps in Indices\n");
    }
    return true;
}

/// Whether the list equals itself sorted by number. A sub-span that does not equal itself, because it holds not-a-number, is
/// out of order anywhere.
bool IsInOrder(const std::vector<CSubSpan>& subSpans)
{
    return std::is_sorted(subSpans.begin(), subSpans.end()) &&
           std::all_of(subSpans.begin(), subSpans.end(), [](const CSubSpan& s) { return s == s; });
}

} // namespace

bool CSteelMemberGen::ValidateMPV(const std::vector<CMemberPoint>* const mpv, CString* err)
{
    if (mpv->empty()) return Refuse(err, L"There are no MemberPoints\n");
    return ValidatePointPairs(*mpv, err);
}

bool CSteelMemberGen::ValidateSSV(const std::vector<CSubSpan>* const ssv, CString* err)
{
    if (ssv->empty()) return Refuse(err, L"There are no SubSpans\n");
    if (!IsInOrder(*ssv)) return Refuse(err, L"SubSpan list was not in order\n");
    const auto sameIndex = [](const CSubSpan& a, const CSubSpan& b) { return a.Get1Index() == b.Get1Index(); };
    if (std::adjacent_find(ssv->begin(), ssv->end(), sameIndex) != ssv->end())
        return Refuse(err, L"SubSpan list has at least two points with same Indices\n");
    return true;
}

bool CSteelMemberGen::ValidateMPVandSSV(const std::vector<CMemberPoint>* const mpv,
                                        const std::vector<CSubSpan>* const ssv, CString* err)
{
    // If the sizes match there is at least one point, so an empty list is reported as a size mismatch.
    if (mpv->size() != ssv->size() + 1) return Refuse(err, L"MemberPoint and SubSpan lists sizes are incompatible\n");
    return ValidateMPV(mpv, err) && ValidateSSV(ssv, err);
}

void CSteelMemberGen::SortMPVByPos(std::vector<CMemberPoint>* mpv)
{
    std::stable_sort(mpv->begin(), mpv->end(),
                     [](const CMemberPoint& a, const CMemberPoint& b) { return a.GetPos() < b.GetPos(); });
}

bool CSteelMemberGen::ValidateInputData() const
{
    CString errors;
    if (ValidateMPVandSSV(&m_vMemberPoints, &m_vSubSpans, m_bQuickCheckMode ? nullptr : &errors)) return true;
    if (!CMemberResult::TextEnabled(m_pResult) || m_bQuickCheckMode) return false;
    m_pResult->AddOutputString(L"Error in input data:\n" + CMemberResult::Tabify(errors, 1, true));
    return false;
}

} // namespace Keltrix::Steel
