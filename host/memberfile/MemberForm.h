#pragma once

#include <array>
#include <optional>
#include <vector>

#include "memberfile/MemberFile.h"
#include "memberfile/MemberLayoutCheck.h"

namespace Keltrix::Host {

/// The numbers of a member that differ from one load to the next.
struct MemberNumbers {
    std::vector<Steel::CMemberPoint> points;               ///< their positions count
    std::vector<Steel::CSubSpan> subSpans;                 ///< their forces and moments count
    std::optional<std::array<double, 3>> effectiveLengths; ///< major, minor, lateral-torsional, m
};

/// A member file whose words stay and whose numbers change. The words are read once, by the readers of member files; the numbers go through the
/// same check of the layout and need no text. With it a table of members that share their words is read without writing a file for each.
class MemberForm {
public:
    /// Of a file that holds one member.
    explicit MemberForm(const MemberFile& file);

    /// Puts numbers in the place of those before, exactly as the text of a member file would hold them. False where the check of that text would find
    /// anything at all, in the words or in the numbers: then the text has to be read.
    bool Take(const MemberNumbers& numbers);

    /// What the last numbers made of the member. Only after Take was true.
    void Give(Steel::CSteelMemberGen& member) const;

private:
    bool HasSameShape(const MemberNumbers& numbers) const;
    bool TakePositions(const std::vector<Steel::CMemberPoint>& points);
    bool TakeActions(const std::vector<Steel::CSubSpan>& subSpans);

    bool m_allowGaps;
    bool m_isStrict;
    bool m_isClean = false; // the words have no defect
    MemberLayout m_layout;
};

} // namespace Keltrix::Host
