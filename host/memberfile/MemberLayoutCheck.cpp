#include "memberfile/MemberLayoutCheck.h"

#include <algorithm>
#include <utility>

#include "memberfile/ActionFindings.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Steel::CMemberPoint;
using Steel::CSubSpan;

class LayoutCheck {
public:
    LayoutCheck(MemberLayout& layout, const MemberLine& end, bool allowGaps, DefectList& defects) :
        m_layout(layout), m_end(end), m_allowGaps(allowGaps), m_defects(defects)
    {}

    void Check()
    {
        // The member was refused before its first point; there is no layout to check.
        if (m_layout.points.empty() && m_layout.subSpans.empty() && m_defects.IsRefused()) return;
        SortByIndex(m_layout.points);
        SortByIndex(m_layout.subSpans);
        if (m_layout.points.size() != m_layout.subSpans.size() + 1 || m_layout.subSpans.empty()) {
            const std::string expected = m_layout.subSpans.empty() && m_layout.points.size() <= 1
                                             ? "at least two MEMBERPOINT lines and one SUBSPAN line"
                                             : "one SUBSPAN line less than MEMBERPOINT lines";
            m_defects.Refuse("count", m_end, {},
                             CountedWord(m_layout.points.size(), "MEMBERPOINT line") + " and " +
                                 CountedWord(m_layout.subSpans.size(), "SUBSPAN line"),
                             expected, {});
        } else if (!m_allowGaps) {
            CheckStart();
        }
        for (std::size_t i = 1; i < m_layout.points.size(); ++i)
            CheckPair(m_layout.points[i - 1], m_layout.points[i]);
        CheckSubSpanList();
        if (m_defects.HasErrors()) return;
        if (m_layout.givenLengths) NoteGivenLengths(*m_layout.givenLengths);
        CheckActions();
    }

private:
    template <class Record>
    void SortByIndex(std::vector<PlacedRecord<Record>>& list)
    {
        const auto less = [](const PlacedRecord<Record>& a, const PlacedRecord<Record>& b) {
            return a.record < b.record;
        };
        const auto stray = std::is_sorted_until(list.begin(), list.end(), less);
        if (stray == list.end()) return;
        m_defects.Add(Severity::Warning, "index-order", stray->line, "index", std::to_string(stray->record.Get1Index()),
                      "lines in ascending order", "lines are read in the order of their indices");
        std::stable_sort(list.begin(), list.end(), less);
    }

    // A length of 0 leaves a mode of buckling out. Lengths that would do as factors are metres all the same.
    void NoteGivenLengths(const std::array<double, 3>& lengths)
    {
        static constexpr const char* names[] = {"major-axis length", "minor-axis length", "lateral-torsional length"};
        constexpr double mostFactor = 2.0;
        const double member = m_layout.points.back().record.GetPos() - m_layout.points.front().record.GetPos();
        const double largest = *std::max_element(lengths.begin(), lengths.end());
        if (largest > 0.0 && largest <= mostFactor && largest < member / 2.0) {
            m_defects.Add(Severity::Note, "short-lengths", m_layout.lengthsLine, {},
                          "effective lengths up to " + Shortest(largest) + " m",
                          "lengths in m in a member of " + Shortest(member) + " m",
                          "are they factors? write a factor below zero");
        }
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            if (lengths[i] == 0.0)
                m_defects.Add(Severity::Note, "no-buckling", m_layout.lengthsLine, names[i], "0",
                              "a length, or a factor below zero", "with 0 the member is not checked for this buckling");
        }
    }

    // Where the first point and the first sub-span are lost together, all the others still fit each other.
    void CheckStart()
    {
        static constexpr const char* advice = "is a line lost above it? --allow-gaps permits other numbers";
        const auto expectFirst = [&](const auto& list) {
            if (list.empty() || list.front().record.Get1Index() == 1) return;
            m_defects.Add(Severity::Error, "first-index", list.front().line, "index",
                          std::to_string(list.front().record.Get1Index()), "1 for the first one", advice);
        };
        expectFirst(m_layout.points);
        expectFirst(m_layout.subSpans);
        if (m_layout.points.empty() || m_layout.points.front().record.GetPos() == 0.0) return;
        m_defects.Add(Severity::Error, "first-position", m_layout.points.front().line, "position",
                      Shortest(m_layout.points.front().record.GetPos()), "0 for the first point",
                      "is a line lost above it? --allow-gaps permits another start");
    }

    void CheckPair(const PlacedRecord<CMemberPoint>& a, const PlacedRecord<CMemberPoint>& b)
    {
        const double x = a.record.GetPos();
        const std::string before = " of the point in line " + std::to_string(a.line.number);
        if (x > b.record.GetPos())
            m_defects.Refuse("position", b.line, "position", Shortest(b.record.GetPos()),
                             "a position beyond " + Shortest(x) + before);
        else if (x == b.record.GetPos())
            m_defects.Refuse("position", b.line, "position", Shortest(x), "another position than that" + before);
        const long long index = a.record.Get1Index();
        if (index == b.record.Get1Index())
            m_defects.Refuse("index", b.line, "index", std::to_string(index), "another index than that" + before);
        else if (index + 1 != b.record.Get1Index())
            m_defects.Refuse("index", b.line, "index", std::to_string(b.record.Get1Index()),
                             std::to_string(index + 1) + ", without a gap");
    }

    void CheckSubSpanList()
    {
        for (std::size_t i = 0; i < m_layout.subSpans.size(); ++i) {
            const PlacedRecord<CSubSpan>& here = m_layout.subSpans[i];
            if (!(here.record == here.record)) {
                m_defects.Refuse("number", here.line, {}, "a value that is not a finite number",
                                 "forces, moments and load height that are numbers");
            }
            if (i == 0) continue;
            const PlacedRecord<CSubSpan>& before = m_layout.subSpans[i - 1];
            const long long gap = static_cast<long long>(here.record.Get1Index()) - before.record.Get1Index();
            if (gap == 0) {
                m_defects.Refuse("index", here.line, "index", std::to_string(here.record.Get1Index()),
                                 "another index than that of the sub-span in line " +
                                     std::to_string(before.line.number));
            } else if (gap > 1 && !m_allowGaps) {
                m_defects.Add(Severity::Error, "index", here.line, "index", std::to_string(here.record.Get1Index()),
                              std::to_string(before.record.Get1Index() + 1LL) + ", without a gap",
                              "is a line lost above it? --allow-gaps permits other numbers");
            }
        }
    }

    // What the forces, moments and restraints of a member that can be read say of each other.
    void CheckActions()
    {
        std::vector<CMemberPoint> points;
        for (const PlacedRecord<CMemberPoint>& point : m_layout.points)
            points.push_back(point.record);
        std::vector<CSubSpan> subSpans;
        for (const PlacedRecord<CSubSpan>& subSpan : m_layout.subSpans)
            subSpans.push_back(subSpan.record);
        for (ActionFinding& finding : FindInActions(points, subSpans)) {
            const MemberLine& line =
                finding.isOfPoint ? m_layout.points[finding.index].line : m_layout.subSpans[finding.index].line;
            m_defects.Add(finding.severity, finding.code, line, std::move(finding.field), std::move(finding.got),
                          std::move(finding.expected), std::move(finding.advice));
        }
    }

    MemberLayout& m_layout;
    const MemberLine& m_end;
    const bool m_allowGaps;
    DefectList& m_defects;
};

} // namespace

void CheckMemberLayout(MemberLayout& layout, const MemberLine& end, bool allowGaps, DefectList& defects)
{
    LayoutCheck(layout, end, allowGaps, defects).Check();
}

} // namespace Keltrix::Host
