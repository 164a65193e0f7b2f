#include "memberfile/MemberPieces.h"

#include <algorithm>

#include "memberfile/MemberGrammar.h"

namespace Keltrix::Host {

namespace {

constexpr std::string_view BLANKS = " \t";

std::string_view FirstField(std::string_view line)
{
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    std::string_view word = line.substr(0, line.find(','));
    word.remove_prefix(std::min(word.find_first_not_of(BLANKS), word.size()));
    return word.substr(0, word.find_last_not_of(BLANKS) + 1);
}

constexpr char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// The first letters of the lines that matter for a cut.
const std::string& CuttingLetters()
{
    static const std::string letters = [] {
        std::string found;
        for (const LineRule& line : MemberLines())
            if (line.place == LinePlace::Last || line.hidesNextLine) found += static_cast<char>(line.word[0]);
        return found;
    }();
    return letters;
}

bool IsBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

} // namespace

void MemberCutter::Add(std::string_view bytes)
{
    m_buffer.erase(0, m_begin);
    m_lineBegin -= m_begin;
    m_searched -= m_begin;
    m_begin = 0;
    m_buffer += bytes;
}

// Lines are looked at one after another: each says what the next may be.
bool MemberCutter::EndsMember(std::string_view line)
{
    // Nearly all lines begin with another letter than the keywords looked for.
    const std::size_t first = std::min(line.find_first_not_of(BLANKS), line.size());
    if (first == line.size() || CuttingLetters().find(Upper(line[first])) == std::string::npos) {
        m_mayHideEnd = false;
        return false;
    }
    const LineKind kind = LineKindOf(FirstField(line));
    const bool endsMember = !m_mayHideEnd && kind == LineKind::End;
    m_mayHideEnd = kind != LineKind::Unknown && RuleOf(kind).hidesNextLine;
    return endsMember;
}

MemberPiece MemberCutter::Take(std::size_t end)
{
    MemberPiece piece;
    piece.bytes = m_buffer.substr(m_begin, end - m_begin);
    piece.start = m_start;
    piece.isBehindEnd = m_isBehindEnd;
    m_start.bytes += end - m_begin;
    m_start.lines += m_lines;
    m_lines = 0;
    m_begin = end;
    m_isBehindEnd = true;
    return piece;
}

// Of a piece that is too large only the place is kept, and the line that is not yet whole.
void MemberCutter::Drop()
{
    m_start.bytes += m_lineBegin - m_begin;
    m_begin = m_lineBegin;
}

std::optional<MemberPiece> MemberCutter::Next()
{
    for (;;) {
        const std::size_t feed = m_buffer.find('\n', m_searched);
        if (feed == std::string::npos) break;
        const bool isEnd = EndsMember(std::string_view(m_buffer).substr(m_lineBegin, feed - m_lineBegin));
        m_lineBegin = m_searched = feed + 1;
        ++m_lines;
        if (!isEnd) continue;
        MemberPiece piece = Take(feed + 1);
        if (!m_isDropping) return piece;
        m_isDropping = false;
    }
    m_searched = m_buffer.size();
    const bool isTooLarge = m_buffer.size() - m_begin > LARGEST_FILE;
    std::optional<MemberPiece> tooLarge;
    if (isTooLarge && !m_isDropping) {
        m_isDropping = true;
        tooLarge.emplace();
        tooLarge->start = m_start;
        tooLarge->isTooLarge = true;
    }
    if (m_isDropping) {
        Drop();
        // A line that is too large by itself: its start says that it is not END, its rest is of no use.
        if (m_buffer.size() - m_begin > LARGEST_FILE) {
            m_start.bytes += m_buffer.size() - m_begin - 1;
            m_buffer.assign(1, '.');
            m_begin = m_lineBegin = 0;
            m_searched = 1;
        }
    }
    return tooLarge;
}

std::optional<MemberPiece> MemberCutter::Rest()
{
    if (m_isDropping) return std::nullopt;
    MemberPiece piece = Take(m_buffer.size());
    if (piece.isBehindEnd && IsBlank(piece.bytes)) return std::nullopt;
    return piece;
}

} // namespace Keltrix::Host
