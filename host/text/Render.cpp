#include "text/Render.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "text/Html.h"
#include "text/Text.h"
#include "text/Wrap.h"

namespace Keltrix::Host {

namespace {

using Kind = Document::Kind;

constexpr std::size_t INDENT_WIDTH = 2;
constexpr std::size_t COLUMN_GAP = 2;
// A longer cell does not widen its column: it pushes aside what follows it in its own line.
constexpr std::size_t WIDEST_COLUMN = 60;
// What goes on from the line above it.
constexpr std::size_t HANGING_INDENT = 4;

std::size_t WidthOf(const Document::Cell& cell)
{
    return std::accumulate(cell.begin(), cell.end(), std::size_t{0},
                           [](std::size_t sum, const Document::Run& run) { return sum + DisplayWidth(run.text); });
}

// Blanks that pad a cell in the report's text would widen its column.
void TrimRight(Document::Cell& cell)
{
    while (!cell.empty()) {
        std::string& text = cell.back().text;
        text.erase(text.find_last_not_of(' ') + 1);
        if (!text.empty()) return;
        cell.pop_back();
    }
}

bool LooksNumeric(const Document::Cell& cell)
{
    const std::string& text = cell.front().text;
    static constexpr std::string_view starts = "0123456789+-.";
    return starts.find(text[0]) != std::string_view::npos || text.starts_with("inf") || text.starts_with("nan");
}

// Lines that share their columns.
class Block {
public:
    // `width`: of the terminal, or 0 for lines of any length.
    Block(std::span<Document::Line> lines, bool ansi, std::size_t width) : m_ansi(ansi), m_width(width), m_lines(lines)
    {
        for (Document::Line& line : m_lines) {
            for (Document::Cell& cell : line.cells)
                TrimRight(cell);
        }
        for (Document::Line& line : m_lines) {
            if (line.kind == Kind::Caption) ShiftCaptions(line);
        }
        Measure();
        if (m_width != 0) Fit();
    }

    void Append(std::string& out) const
    {
        for (const Document::Line& line : m_lines)
            AppendLine(out, line);
    }

    void AppendHtml(std::string& out) const
    {
        const Document::Line& first = m_lines.front();
        if (first.table != 0)
            AppendHtmlTable(out);
        else if (HasColumns(first) && first.heading == 0)
            AppendHtmlPairs(out);
        else
            AppendHtmlLine(out, first);
    }

private:
    static bool HasColumns(const Document::Line& line) { return line.kind != Kind::Note && line.cells.size() > 1; }

    // Captions belong to the last columns: the first ones of a table name what a row is about.
    void ShiftCaptions(Document::Line& line)
    {
        std::size_t columns = 0;
        for (const Document::Line& other : m_lines) {
            if (other.kind == Kind::Row) columns = std::max(columns, other.cells.size());
        }
        if (line.cells.size() < columns) line.cells.insert(line.cells.begin(), columns - line.cells.size(), {});
    }

    void Measure()
    {
        bool isHeader = true;
        for (const Document::Line& line : m_lines) {
            if (!HasColumns(line)) continue;
            if (line.cells.size() > m_widths.size()) {
                m_widths.resize(line.cells.size(), 0);
                m_numbers.resize(line.cells.size(), 0);
                m_texts.resize(line.cells.size(), 0);
                m_least.resize(line.cells.size(), 0);
            }
            for (std::size_t i = 0; i < line.cells.size(); ++i) {
                const std::size_t width = WidthOf(line.cells[i]);
                if (width <= WIDEST_COLUMN || m_width != 0) m_widths[i] = std::max(m_widths[i], width);
                if (m_width != 0) m_least[i] = std::max(m_least[i], WidestPart(line.cells[i]));
                if (isHeader || line.kind != Kind::Row || line.cells[i].empty()) continue;
                ++(LooksNumeric(line.cells[i]) ? m_numbers[i] : m_texts[i]);
            }
            if (line.kind == Kind::Row) isHeader = false;
        }
    }

    bool IsRight(const Document::Line& line, std::size_t column) const
    {
        return line.table != 0 && !line.alignLeft && m_numbers[column] > 0 && m_texts[column] == 0;
    }

    // Columns that stand in one line, and how far they are indented.
    struct Group {
        std::size_t first;
        std::size_t last; // after the last one
        std::size_t indent;
    };

    std::size_t Total(const std::vector<std::size_t>& widths, const Group& group) const
    {
        const auto at = [&](std::size_t i) { return widths.begin() + static_cast<std::ptrdiff_t>(i); };
        const std::size_t gaps = group.last > group.first ? m_gap * (group.last - group.first - 1) : 0;
        return std::accumulate(at(group.first), at(group.last), group.indent + gaps);
    }

    // The width of the terminal is shared out: as the columns want it, with narrow gaps, and with the last columns in lines of
    // their own, whichever fits first.
    void Fit()
    {
        m_groups.assign(1, {0, m_widths.size(), 0});
        std::size_t indent = 0;
        for (const Document::Line& line : m_lines)
            indent = std::max(indent, IndentOf(line));
        const std::size_t room = m_width > indent ? m_width - indent : 1;
        for (const std::size_t gap : {COLUMN_GAP, COLUMN_GAP - 1}) {
            m_gap = gap;
            if (Total(m_least, m_groups.front()) <= room) return Shrink(m_groups.front(), room);
        }
        m_gap = COLUMN_GAP;
        Split(room);
        for (const Group& group : m_groups)
            Shrink(group, room);
    }

    void Split(std::size_t room)
    {
        m_groups.assign(1, {0, 0, 0});
        for (std::size_t i = 0; i < m_widths.size(); ++i) {
            Group& group = m_groups.back();
            group.last = i + 1;
            if (Total(m_least, group) <= room || group.first == i) continue;
            group.last = i;
            m_groups.push_back({i, i + 1, HANGING_INDENT});
        }
    }

    // The widest columns give way first.
    void Shrink(const Group& group, std::size_t room)
    {
        for (std::size_t total = Total(m_widths, group); total > room; --total) {
            std::size_t widest = group.last;
            for (std::size_t i = group.first; i < group.last; ++i) {
                if (m_widths[i] > m_least[i] && (widest == group.last || m_widths[i] > m_widths[widest])) widest = i;
            }
            if (widest == group.last) return;
            --m_widths[widest];
        }
    }

    void AppendLine(std::string& out, const Document::Line& line) const
    {
        if (!HasColumns(line)) return AppendText(out, line);
        if (m_width == 0) return AppendRow(out, line, 0, IndentOf(line), line.cells);
        for (std::size_t place = 0; place < m_groups.size(); ++place)
            AppendGroup(out, line, place);
    }

    // A line of one cell, or a note across a table.
    void AppendText(std::string& out, const Document::Line& line) const
    {
        std::size_t indent = IndentOf(line);
        const auto width = [&] {
            return std::accumulate(line.cells.begin(), line.cells.end(), indent,
                                   [](std::size_t sum, const Document::Cell& cell) { return sum + WidthOf(cell); });
        };
        if (m_width == 0 || width() <= m_width) {
            PutLine(out, indent, line.cells, line.heading);
            return;
        }
        Document::Cell text;
        for (const Document::Cell& cell : line.cells)
            text.insert(text.end(), cell.begin(), cell.end());
        const std::size_t hanging = indent + HANGING_INDENT;
        for (const Document::Cell& part : Wrapped(text, m_width > hanging ? m_width - hanging : 1)) {
            PutLine(out, indent, std::span(&part, 1), line.heading);
            indent = hanging;
        }
    }

    // Cells without gaps between them.
    void PutLine(std::string& out, std::size_t indent, std::span<const Document::Cell> cells, int heading) const
    {
        const std::size_t start = out.size();
        out.append(indent, ' ');
        for (const Document::Cell& cell : cells)
            AppendCell(out, cell, heading);
        EndLine(out, start);
    }

    // Ends the line that began at `start`, without blanks at its end.
    static void EndLine(std::string& out, std::size_t start)
    {
        while (out.size() > start && out.back() == ' ')
            out.pop_back();
        out += '\n';
    }

    static std::size_t IndentOf(const Document::Line& line)
    {
        return INDENT_WIDTH * static_cast<std::size_t>(line.indent);
    }

    void AppendGroup(std::string& out, const Document::Line& line, std::size_t place) const
    {
        const Group group{m_groups[place].first, std::min(m_groups[place].last, line.cells.size()),
                          m_groups[place].indent};
        if (place > 0 && group.first >= group.last) return;
        const std::size_t indent = group.indent + IndentOf(line);
        std::vector<std::vector<Document::Cell>> columns;
        std::size_t height = 1;
        std::size_t lastFilled = group.last;
        while (lastFilled > group.first + 1 && line.cells[lastFilled - 1].empty())
            --lastFilled;
        for (std::size_t i = group.first; i < group.last; ++i) {
            // Empty columns after it are room for a cell.
            const bool isLast = i + 1 == lastFilled && !IsRight(line, i);
            const std::size_t width = isLast ? Total(m_widths, {i, m_groups[place].last, 0}) : m_widths[i];
            columns.push_back(Wrapped(line.cells[i], width));
            height = std::max(height, columns.back().size());
        }
        for (std::size_t row = 0; row < height; ++row) {
            std::vector<Document::Cell> cells;
            cells.reserve(columns.size());
            for (std::vector<Document::Cell>& column : columns)
                cells.push_back(row < column.size() ? std::move(column[row]) : Document::Cell());
            AppendRow(out, line, group.first, indent, cells);
        }
    }

    // `cells`: those of the columns from `first` on.
    void AppendRow(std::string& out, const Document::Line& line, std::size_t first, std::size_t indent,
                   const std::vector<Document::Cell>& cells) const
    {
        const std::size_t start = out.size();
        out.append(indent, ' ');
        // Blanks are put out only when something follows them.
        std::size_t owed = 0;
        for (std::size_t k = 0; k < cells.size(); ++k) {
            const std::size_t column = first + k;
            const std::size_t width = WidthOf(cells[k]);
            const std::size_t fill = m_widths[column] - std::min(width, m_widths[column]);
            const bool isRight = IsRight(line, column);
            if (isRight) owed += fill;
            if (!cells[k].empty()) {
                out.append(owed, ' ');
                AppendCell(out, cells[k], line.heading);
                owed = 0;
            } else if (isRight) {
                owed += m_widths[column] - fill;
            }
            owed += m_gap + (isRight ? 0 : fill);
        }
        EndLine(out, start);
    }

    void AppendCell(std::string& out, const Document::Cell& cell, int heading) const
    {
        for (const Document::Run& run : cell) {
            const std::string start = m_ansi ? EscapeOf(run.style, heading) : std::string();
            out += start;
            out += run.text;
            if (!start.empty()) out += "\x1B[0m";
        }
    }

    static std::string EscapeOf(const Document::Style& style, int heading)
    {
        std::string escape;
        const auto add = [&escape](std::string_view code) {
            escape += escape.empty() ? std::string_view("\x1B[") : std::string_view(";");
            escape += code;
        };
        if (style.bold || heading == 4 || heading == 5) add("1");
        if (style.italic) add("3");
        if (heading == 4 || heading == 6) add("4");
        if (style.colour == Document::Colour::Red) add("31");
        if (style.colour == Document::Colour::Orange) add("33");
        if (style.colour == Document::Colour::Blue) add("34");
        if (!escape.empty()) escape += 'm';
        return escape;
    }

    // --- HTML ---

    static std::string HtmlOf(const Document::Cell& cell)
    {
        std::string html;
        for (const Document::Run& run : cell) {
            const bool hasColour = run.style.colour != Document::Colour::None;
            if (hasColour) html.append("<span class=\"").append(ColourClass(run.style.colour)).append("\">");
            if (run.style.bold) html += "<b>";
            if (run.style.italic) html += "<i>";
            html += EscapedHtml(run.text);
            if (run.style.italic) html += "</i>";
            if (run.style.bold) html += "</b>";
            if (hasColour) html += "</span>";
        }
        return html;
    }

    static const char* ColourClass(Document::Colour colour)
    {
        return colour == Document::Colour::Red ? "red" : colour == Document::Colour::Orange ? "orange" : "blue";
    }

    // Deeper than this the page has no room to the right.
    static std::string IndentClass(const Document::Line& line)
    {
        std::string name = "i";
        name += std::to_string(std::min(line.indent, 8));
        return name;
    }

    static void AppendHtmlLine(std::string& out, const Document::Line& line)
    {
        std::string text;
        for (const Document::Cell& cell : line.cells) {
            if (!text.empty()) text += ' ';
            text += HtmlOf(cell);
        }
        if (text.empty()) return;
        static constexpr const char* TAGS[] = {"p", "h4", "h5", "h6"};
        const char* const tag = TAGS[line.heading == 0 ? 0 : line.heading - 3];
        out.append("<").append(tag);
        if (line.indent > 0 && line.heading == 0) out.append(" class=\"").append(IndentClass(line)).append("\"");
        out.append(">").append(text).append("</").append(tag).append(">\n");
    }

    // A name and its values in each line.
    void AppendHtmlPairs(std::string& out) const
    {
        out += "<table class=\"pairs " + IndentClass(m_lines.front()) + "\">\n";
        for (const Document::Line& line : m_lines) {
            out += "<tr><th scope=\"row\">" + HtmlOf(line.cells[0]) + "</th>";
            for (std::size_t i = 1; i < line.cells.size(); ++i)
                out += "<td>" + HtmlOf(line.cells[i]) + "</td>";
            out += "</tr>\n";
        }
        out += "</table>\n";
    }

    void AppendHtmlRow(std::string& out, const Document::Line& line, bool isHead) const
    {
        out += "<tr>";
        for (std::size_t i = 0; i < line.cells.size(); ++i) {
            const bool isNumber = i < m_numbers.size() && IsRight(line, i);
            out += isHead ? "<th scope=\"col\"" : "<td";
            out += isNumber ? " class=\"n\">" : ">";
            out.append(HtmlOf(line.cells[i])).append(isHead ? "</th>" : "</td>");
        }
        out += "</tr>\n";
    }

    void AppendHtmlNote(std::string& out, const Document::Line& line) const
    {
        out += "<tr><td colspan=\"" + std::to_string(std::max<std::size_t>(m_widths.size(), 1)) + "\">";
        for (const Document::Cell& cell : line.cells)
            out += HtmlOf(cell) + ' ';
        out += "</td></tr>\n";
    }

    // The first row and the captions below it are the table's head.
    void AppendHtmlTable(std::string& out) const
    {
        out += "<table class=\"" + IndentClass(m_lines.front()) + "\">\n";
        bool isHead = m_lines.front().kind == Kind::Row && m_lines.size() > 1;
        bool hasRow = false;
        out += isHead ? "<thead>\n" : "<tbody>\n";
        for (const Document::Line& line : m_lines) {
            if (isHead && (line.kind == Kind::Note || (line.kind == Kind::Row && hasRow))) {
                out += "</thead>\n<tbody>\n";
                isHead = false;
            }
            hasRow = true;
            if (line.kind == Kind::Note)
                AppendHtmlNote(out, line);
            else
                AppendHtmlRow(out, line, isHead);
        }
        out += isHead ? "</thead>\n</table>\n" : "</tbody>\n</table>\n";
    }

    bool m_ansi;
    std::size_t m_width;
    std::size_t m_gap = COLUMN_GAP;
    std::vector<Group> m_groups;
    std::span<Document::Line> m_lines;
    std::vector<std::size_t> m_widths;
    std::vector<std::size_t> m_least;   // without breaking what stays together
    std::vector<std::size_t> m_numbers; // cells below the first row that hold a number, by column
    std::vector<std::size_t> m_texts;
};

// Whether two neighbouring lines share their columns.
bool SameBlock(const Document::Line& a, const Document::Line& b)
{
    if (a.table != b.table) return false;
    if (a.table != 0) return true;
    return a.cells.size() > 1 && b.cells.size() > 1 && a.indent == b.indent && a.heading == 0 && b.heading == 0;
}

// Calls `use` for every block and the heading level of its first line. Trims and shifts the document's cells.
template <class Use>
void ForEachBlock(Document& document, bool ansi, std::size_t width, Use use)
{
    std::vector<Document::Line>& lines = document.lines;
    for (std::size_t first = 0; first < lines.size();) {
        std::size_t last = first + 1;
        while (last < lines.size() && SameBlock(lines[last - 1], lines[last]))
            ++last;
        use(Block(std::span(lines).subspan(first, last - first), ansi, width), lines[first].heading);
        first = last;
    }
}

} // namespace

std::string RenderText(Document document, bool ansi, std::size_t width)
{
    std::string out;
    ForEachBlock(document, ansi, width, [&](const Block& block, int heading) {
        const bool isSection = heading == 4;
        if (isSection && !out.empty() && !out.ends_with("\n\n")) out += '\n';
        block.Append(out);
    });
    return out;
}

std::string RenderHtml(Document document)
{
    std::string out;
    ForEachBlock(document, false, 0, [&](const Block& block, int) { block.AppendHtml(out); });
    return out;
}

std::string RenderMarkup(std::string_view markup, Rendering rendering)
{
    if (rendering.kind == Rendering::Raw) return RawMarkup(markup);
    if (rendering.kind == Rendering::Html) return RenderHtml(ReadMarkup(markup));
    return RenderText(ReadMarkup(markup), rendering.kind == Rendering::Ansi, rendering.width);
}

} // namespace Keltrix::Host
