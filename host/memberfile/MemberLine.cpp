#include "memberfile/MemberLine.h"

#include <algorithm>

#include "keltrix/platform/KxUtil.h"

namespace Keltrix::Host {

void LineWalk::Next()
{
    const bool isFirst = !m_hasBegun;
    m_hasBegun = true;
    if (!isFirst && AtEndOfLines()) {
        const LineNumber number = m_line.isPastEnd ? m_line.number : m_line.number + 1;
        m_line = {number, m_text.View().substr(m_text.View().size()), {}, {}, LineKind::Unknown, true};
        return;
    }
    m_line.whole = GetLineView(isFirst ? &m_text : nullptr);
    m_line.rest = m_line.whole;
    m_line.keyword = GetSubString(m_line.rest);
    m_line.kind = LineKindOf(m_line.keyword);
    ++m_line.number;
}

std::size_t LineWalk::Finish() const
{
    const std::size_t feed = m_text.View().find(L'\n', Start() + m_line.whole.size());
    return feed == std::wstring_view::npos ? m_text.View().size() : feed + 1;
}

bool LineWalk::StartsMember() const
{
    if (m_line.kind != LineKind::Title) return false;
    std::wstring_view rest = m_text.View().substr(Finish());
    for (int i = 0; i < 2; ++i) {
        std::wstring_view line = rest.substr(0, rest.find(L'\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        const LineKind kind = LineKindOf(GetSubString(line));
        if (kind != LineKind::Headings) return kind == LineKind::Section;
    }
    return false;
}

bool IsOnlyOf(std::wstring_view text, std::wstring_view characters)
{
    return text.find_first_not_of(characters) == std::wstring_view::npos;
}

bool IsCommentLine(std::wstring_view line)
{
    const std::size_t first = line.find_first_not_of(L" \t");
    return first != std::wstring_view::npos && line[first] == L'#';
}

bool IsIdleLine(std::wstring_view line) { return IsOnlyOf(line, L" \t\r,"); }

std::string ForeignSeparator(std::wstring_view line)
{
    const auto isKeyword = [](std::wstring_view word) { return LineKindOf(word) != LineKind::Unknown; };
    const std::size_t first = line.find_first_not_of(L" \t");
    if (first == std::wstring_view::npos) return {};
    line.remove_prefix(first);
    if (line[0] == L'"' && isKeyword(line.substr(1, line.find_first_of(L"\",;\t", 1) - 1)))
        return "quotation marks around its fields";
    const std::size_t end = line.find_first_of(L",;\t");
    if (end == std::wstring_view::npos || line[end] == L',' || !isKeyword(line.substr(0, end))) return {};
    return line[end] == L';' ? "semicolons between its fields" : "tabs between its fields";
}

} // namespace Keltrix::Host
