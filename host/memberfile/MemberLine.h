#pragma once

#include <string>
#include <string_view>

#include "keltrix/platform/CString.h"
#include "memberfile/Defect.h"
#include "memberfile/MemberGrammar.h"

namespace Keltrix::Host {

/// A line of a text, as the library's reader divides it.
struct MemberLine {
    LineNumber number = 0;
    std::wstring_view whole;
    std::wstring_view keyword; ///< its first field
    std::wstring_view rest;    ///< what follows that field's comma
    LineKind kind = LineKind::Unknown;
    bool isPastEnd = false; ///< there is no such line
};

/// Walks a text line by line, as the library's reader does.
class LineWalk {
public:
    LineWalk(const CString& text, LineNumber firstLine) : m_text(text) { m_line.number = firstLine - 1; }

    const MemberLine& Current() const { return m_line; }
    void Next();
    /// Offset of the current line's first character, and of the one after its line break.
    std::size_t Start() const { return static_cast<std::size_t>(m_line.whole.data() - m_text.View().data()); }
    std::size_t Finish() const;
    /// Whether the current line begins a member: TITLE, perhaps a line of captions, SECTION. In the two places where any
    /// line is passed over, a TITLE line by itself is just that.
    bool StartsMember() const;

private:
    const CString& m_text;
    MemberLine m_line;
    bool m_hasBegun = false;
};

/// Whether a text has no other characters than these.
bool IsOnlyOf(std::wstring_view text, std::wstring_view characters);

/// Whether a line starts with #, after blanks.
bool IsCommentLine(std::wstring_view line);

/// Whether a line between members holds nothing: blanks and the commas that spreadsheets write.
bool IsIdleLine(std::wstring_view line);

/// What separates the fields of a line in the place of commas, in words; empty where nothing does.
std::string ForeignSeparator(std::wstring_view line);

} // namespace Keltrix::Host
