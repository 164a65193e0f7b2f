#include "memberfile/MemberForm.h"

#include <algorithm>
#include <cmath>

#include "memberfile/CodelessMember.h"

namespace Keltrix::Host {

namespace {

// A text has no sign on its zero.
double Written(double value) { return value == 0.0 ? 0.0 : value; }

Vec3<double> Written(const Vec3<double>& v) { return {Written(v.x), Written(v.y), Written(v.z)}; }

bool IsFinite(const Vec3<double>& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

std::size_t DefectsOf(MemberLayout& layout, bool allowGaps, bool isStrict)
{
    DefectList defects(isStrict);
    defects.BeginMember();
    CheckMemberLayout(layout, MemberLine(), allowGaps, defects);
    defects.EndMember();
    return defects.Take(0).size();
}

} // namespace

MemberForm::MemberForm(const MemberFile& file) : m_allowGaps(file.AllowsGaps()), m_isStrict(file.IsStrict())
{
    if (file.MemberCount() != 1 || file.Check().Errors() > 0) return;
    CodelessMember member;
    file.ReadInto(0, member);
    for (const Steel::CMemberPoint& point : member.MemberPoints())
        m_layout.points.push_back({point, {}});
    for (const Steel::CSubSpan& subSpan : member.SubSpans())
        m_layout.subSpans.push_back({subSpan, {}});
    if (member.LengthOverride()) m_layout.givenLengths = {member.Lyy(), member.Lzz(), member.Llt()};
    // What the layout does not explain is in the words.
    m_isClean = file.Check().defects.size() == DefectsOf(m_layout, m_allowGaps, m_isStrict);
}

bool MemberForm::HasSameShape(const MemberNumbers& numbers) const
{
    return numbers.points.size() == m_layout.points.size() && numbers.subSpans.size() == m_layout.subSpans.size() &&
           numbers.effectiveLengths.has_value() == m_layout.givenLengths.has_value();
}

bool MemberForm::TakePositions(const std::vector<Steel::CMemberPoint>& points)
{
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!std::isfinite(points[i].GetPos())) return false;
        m_layout.points[i].record.SetPos(Written(points[i].GetPos()));
    }
    return true;
}

bool MemberForm::TakeActions(const std::vector<Steel::CSubSpan>& subSpans)
{
    for (std::size_t i = 0; i < subSpans.size(); ++i) {
        const Steel::CSubSpan& from = subSpans[i];
        if (!IsFinite(from.GetForcesLeft()) || !IsFinite(from.GetForcesRight()) || !IsFinite(from.GetMomentsLeft()) ||
            !IsFinite(from.GetMomentsRight()))
            return false;
        Steel::CSubSpan& to = m_layout.subSpans[i].record;
        to.SetForcesAll(Written(from.GetForcesLeft()), Written(from.GetForcesRight()));
        to.SetMomentsAll(Written(from.GetMomentsLeft()), Written(from.GetMomentsRight()));
    }
    return true;
}

bool MemberForm::Take(const MemberNumbers& numbers)
{
    if (!m_isClean || !HasSameShape(numbers)) return false;
    if (!TakePositions(numbers.points) || !TakeActions(numbers.subSpans)) return false;
    if (numbers.effectiveLengths) {
        for (std::size_t i = 0; i < 3; ++i) {
            if (!std::isfinite((*numbers.effectiveLengths)[i])) return false;
            (*m_layout.givenLengths)[i] = Written((*numbers.effectiveLengths)[i]);
        }
    }
    return DefectsOf(m_layout, m_allowGaps, m_isStrict) == 0;
}

void MemberForm::Give(Steel::CSteelMemberGen& member) const
{
    std::vector<Steel::CMemberPoint> points;
    points.reserve(m_layout.points.size());
    for (const PlacedRecord<Steel::CMemberPoint>& point : m_layout.points)
        points.push_back(point.record);
    std::vector<Steel::CSubSpan> subSpans;
    subSpans.reserve(m_layout.subSpans.size());
    for (const PlacedRecord<Steel::CSubSpan>& subSpan : m_layout.subSpans)
        subSpans.push_back(subSpan.record);
    if (m_layout.givenLengths) {
        member.SetLyy((*m_layout.givenLengths)[0]);
        member.SetLzz((*m_layout.givenLengths)[1]);
        member.SetLlt((*m_layout.givenLengths)[2]);
    }
    member.SetMemberPointVec(points);
    member.SetSubSpanVec(subSpans);
}

} // namespace Keltrix::Host
