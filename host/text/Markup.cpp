#include "text/Markup.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

#include "text/Text.h"

namespace Keltrix::Host {

namespace {

// Stands for a "<" that begins no tag: a control character, of which no text that is shown holds any.
constexpr char LITERAL_LESS = '\x02';

enum class Tag { H4, H5, H6, Bold, Italic, Red, Orange, Blue, Table, AlignLeft, Align, TableWrap, TableBreak, Count };

struct TagName {
    std::string_view name;
    Tag tag;
};

constexpr TagName TAG_NAMES[] = {{"h4", Tag::H4},
                                 {"h5", Tag::H5},
                                 {"h6", Tag::H6},
                                 {"b", Tag::Bold},
                                 {"i", Tag::Italic},
                                 {"red", Tag::Red},
                                 {"orange", Tag::Orange},
                                 {"blue", Tag::Blue},
                                 {"table", Tag::Table},
                                 {"align left", Tag::AlignLeft},
                                 {"align right", Tag::Align},
                                 {"align", Tag::Align},
                                 {"tablewrap", Tag::TableWrap},
                                 {"tablebreak", Tag::TableBreak}};

struct FoundTag {
    Tag tag;
    bool closes;
    std::size_t length;
};

// The tag at the front of a text that begins with "<", if it is one.
std::optional<FoundTag> FindTag(std::string_view text)
{
    constexpr std::size_t longest = 16;
    const std::size_t end = text.substr(0, longest).find('>');
    if (end == std::string_view::npos) return std::nullopt;
    std::string_view name = text.substr(1, end - 1);
    const bool closes = name.starts_with('/');
    if (closes) name.remove_prefix(1);
    for (const TagName& known : TAG_NAMES) {
        const bool same = std::equal(name.begin(), name.end(), known.name.begin(), known.name.end(),
                                     [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; });
        if (same) return FoundTag{known.tag, closes, end + 1};
    }
    return std::nullopt;
}

class MarkupReader {
public:
    Document Read(std::string_view text)
    {
        while (!text.empty()) {
            const std::size_t length = Step(text);
            text.remove_prefix(length);
        }
        if (m_hasContent) EndLine();
        return std::move(m_document);
    }

private:
    // Tabs beyond are no columns that anybody reads.
    static constexpr std::size_t MOST_COLUMNS = 256;
    static constexpr auto TAG_COUNT = static_cast<std::size_t>(Tag::Count);

    bool IsOpen(Tag tag) const { return m_open[static_cast<std::size_t>(tag)] > 0; }

    // Takes one piece off the front of the text and returns its length.
    std::size_t Step(std::string_view text)
    {
        switch (text[0]) {
        case '\n':
            EndLine();
            return 1;
        case '\t':
            TakeTab();
            return 1;
        case '<':
            if (const std::optional<FoundTag> found = FindTag(text)) {
                TakeTag(*found);
                return found->length;
            }
            TakeText(text.substr(0, 1));
            return 1;
        case LITERAL_LESS:
            TakeText("<");
            return 1;
        default:
            const std::size_t length = TextLength(text);
            TakeText(text.substr(0, length));
            return length;
        }
    }

    // The length of a text that begins with none of these.
    static std::size_t TextLength(std::string_view text)
    {
        const std::string_view plain = text.substr(0, PlainLength(text));
        const std::size_t less = plain.find('<');
        if (less != std::string_view::npos) return less;
        const auto end = std::find_if(plain.end(), text.end(),
                                      [](char c) { return c == '\n' || c == '\t' || c == '<' || c == LITERAL_LESS; });
        return static_cast<std::size_t>(end - text.begin());
    }

    void TakeTab()
    {
        m_hasContent = true;
        const bool mayIndent = m_line.cells.empty() && (!IsOpen(Tag::Table) || m_line.indent < m_tableIndent);
        if (mayIndent) {
            ++m_line.indent;
            return;
        }
        StartCell();
        if (m_line.cells.size() < MOST_COLUMNS)
            m_line.cells.emplace_back();
        else
            TakeText(" ");
    }

    void TakeText(std::string_view text)
    {
        m_hasContent = true;
        StartCell();
        Document::Cell& cell = m_line.cells.back();
        const Document::Style style = CurrentStyle();
        if (cell.empty() || !(cell.back().style == style)) cell.push_back({{}, style});
        AppendPrintable(cell.back().text, text);
    }

    // The line's first cell settles what kind of line it is.
    void StartCell()
    {
        if (m_line.cells.empty()) {
            m_line.cells.emplace_back();
            m_line.heading = IsOpen(Tag::H4) ? 4 : IsOpen(Tag::H5) ? 5 : IsOpen(Tag::H6) ? 6 : 0;
            if (!IsOpen(Tag::Table)) return;
            m_line.kind = IsOpen(Tag::TableBreak)  ? Document::Kind::Note
                          : IsOpen(Tag::TableWrap) ? Document::Kind::Caption
                                                   : Document::Kind::Row;
            m_line.table = m_tables;
            m_line.alignLeft = IsOpen(Tag::AlignLeft);
        }
    }

    Document::Style CurrentStyle() const
    {
        Document::Style style;
        style.bold = IsOpen(Tag::Bold);
        style.italic = IsOpen(Tag::Italic);
        style.colour = IsOpen(Tag::Red)      ? Document::Colour::Red
                       : IsOpen(Tag::Orange) ? Document::Colour::Orange
                       : IsOpen(Tag::Blue)   ? Document::Colour::Blue
                                             : Document::Colour::None;
        return style;
    }

    void TakeTag(const FoundTag& found)
    {
        m_onlyTags = true;
        if (found.tag == Tag::Align || (found.tag == Tag::AlignLeft && found.closes)) {
            m_open[static_cast<std::size_t>(Tag::AlignLeft)] = 0;
            return;
        }
        int& open = m_open[static_cast<std::size_t>(found.tag)];
        if (found.closes) {
            if (open == 0) return;
            --open;
            if (found.tag == Tag::Table) CloseInTable();
            return;
        }
        ++open;
        if (found.tag == Tag::Table && open == 1) {
            ++m_tables;
            m_tableIndent = m_line.indent;
        }
        // A note stands on a line of its own, though the text has no line break in front of it.
        if (found.tag == Tag::TableBreak && !m_line.cells.empty()) FlushLine();
    }

    void CloseInTable()
    {
        for (const Tag tag : {Tag::AlignLeft, Tag::TableWrap, Tag::TableBreak})
            m_open[static_cast<std::size_t>(tag)] = 0;
    }

    // A line of nothing but tags is no line of the text.
    void EndLine()
    {
        if (!m_line.cells.empty() || !m_onlyTags) FlushLine();
        m_line = {};
        m_hasContent = false;
        m_onlyTags = false;
        for (const Tag tag : {Tag::H4, Tag::H5, Tag::H6, Tag::Bold, Tag::Italic, Tag::Red, Tag::Orange, Tag::Blue})
            m_open[static_cast<std::size_t>(tag)] = 0;
    }

    void FlushLine()
    {
        if (m_line.cells.empty()) m_line.cells.emplace_back();
        const int indent = m_line.indent;
        m_document.lines.push_back(std::move(m_line));
        m_line = {};
        m_line.indent = indent;
    }

    Document m_document;
    Document::Line m_line;
    std::array<int, TAG_COUNT> m_open{};
    int m_tables = 0;
    int m_tableIndent = 0;
    bool m_hasContent = false;
    bool m_onlyTags = false;
};

} // namespace

Document ReadMarkup(std::string_view markup) { return MarkupReader().Read(markup); }

std::string AsText(std::string_view utf8)
{
    std::string text = PrintableLine(utf8);
    std::replace(text.begin(), text.end(), '<', LITERAL_LESS);
    return text;
}

std::string RawMarkup(std::string_view markup)
{
    std::string text(markup);
    std::replace(text.begin(), text.end(), LITERAL_LESS, '<');
    return text;
}

} // namespace Keltrix::Host
