#include "Render.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "Html.h"
#include "Text.h"

namespace Keltrix::App {

namespace {

using Kind = Document::Kind;

constexpr std::size_t INDENT_WIDTH = 2;
constexpr std::size_t COLUMN_GAP = 2;
// A longer cell does not widen its column: it pushes aside what stands behind it in its own line.
constexpr std::size_t WIDEST_COLUMN = 60;

std::string PlainText(const Document::Cell& cell)
{
    std::string text;
    for (const Document::Run& run : cell)
        text += run.text;
    return text;
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

bool LooksNumeric(const std::string& text)
{
    static constexpr std::string_view starts = "0123456789+-.";
    return starts.find(text[0]) != std::string_view::npos || text.starts_with("inf") || text.starts_with("nan");
}

// Lines that share their columns.
class Block {
public:
    Block(std::span<Document::Line> lines, bool ansi) : m_ansi(ansi), m_lines(lines)
    {
        for (Document::Line& line : m_lines) {
            for (Document::Cell& cell : line.cells)
                TrimRight(cell);
        }
        for (Document::Line& line : m_lines) {
            if (line.kind == Kind::Caption) ShiftCaptions(line);
        }
        Measure();
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
            }
            for (std::size_t i = 0; i < line.cells.size(); ++i) {
                const std::string text = PlainText(line.cells[i]);
                const std::size_t width = DisplayWidth(text);
                if (width <= WIDEST_COLUMN) m_widths[i] = std::max(m_widths[i], width);
                if (isHeader || line.kind != Kind::Row || text.empty()) continue;
                ++(LooksNumeric(text) ? m_numbers[i] : m_texts[i]);
            }
            if (line.kind == Kind::Row) isHeader = false;
        }
    }

    bool IsRight(const Document::Line& line, std::size_t column) const
    {
        return line.table != 0 && !line.alignLeft && m_numbers[column] > 0 && m_texts[column] == 0;
    }

    void AppendLine(std::string& out, const Document::Line& line) const
    {
        std::string text(INDENT_WIDTH * static_cast<std::size_t>(line.indent), ' ');
        if (!HasColumns(line)) {
            for (const Document::Cell& cell : line.cells)
                AppendCell(text, cell, line.heading);
        }
        // Blanks are put out only when something follows them.
        std::size_t owed = 0;
        for (std::size_t i = 0; HasColumns(line) && i < line.cells.size(); ++i) {
            const std::size_t width = DisplayWidth(PlainText(line.cells[i]));
            const std::size_t fill = m_widths[i] - std::min(width, m_widths[i]);
            const bool isRight = IsRight(line, i);
            if (isRight) owed += fill;
            if (!line.cells[i].empty()) {
                text.append(owed, ' ');
                AppendCell(text, line.cells[i], line.heading);
                owed = 0;
            } else if (isRight) {
                owed += m_widths[i] - fill;
            }
            owed += COLUMN_GAP + (isRight ? 0 : fill);
        }
        text.erase(text.find_last_not_of(' ') + 1);
        out += text;
        out += '\n';
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
    std::span<Document::Line> m_lines;
    std::vector<std::size_t> m_widths;
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
void ForEachBlock(Document& document, bool ansi, Use use)
{
    std::vector<Document::Line>& lines = document.lines;
    for (std::size_t first = 0; first < lines.size();) {
        std::size_t last = first + 1;
        while (last < lines.size() && SameBlock(lines[last - 1], lines[last]))
            ++last;
        use(Block(std::span(lines).subspan(first, last - first), ansi), lines[first].heading);
        first = last;
    }
}

} // namespace

std::string RenderText(Document document, bool ansi)
{
    std::string out;
    ForEachBlock(document, ansi, [&](const Block& block, int heading) {
        const bool isSection = heading == 4;
        if (isSection && !out.empty() && !out.ends_with("\n\n")) out += '\n';
        block.Append(out);
    });
    return out;
}

std::string RenderHtml(Document document)
{
    std::string out;
    ForEachBlock(document, false, [&](const Block& block, int) { block.AppendHtml(out); });
    return out;
}

std::string RenderMarkup(std::string_view markup, Rendering rendering)
{
    if (rendering == Rendering::Raw) return RawMarkup(markup);
    if (rendering == Rendering::Html) return RenderHtml(ReadMarkup(markup));
    return RenderText(ReadMarkup(markup), rendering == Rendering::Ansi);
}

} // namespace Keltrix::App
