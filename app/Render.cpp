#include "Render.h"

#include <algorithm>
#include <vector>

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
    Block(const Document::Line* first, const Document::Line* last, bool ansi) : m_ansi(ansi)
    {
        for (const Document::Line* line = first; line != last; ++line) {
            m_lines.push_back(*line);
            for (Document::Cell& cell : m_lines.back().cells)
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
        std::string codes;
        if (style.bold || heading == 4 || heading == 5) codes += ";1";
        if (style.italic) codes += ";3";
        if (heading == 4 || heading == 6) codes += ";4";
        if (style.colour == Document::Colour::Red) codes += ";31";
        if (style.colour == Document::Colour::Orange) codes += ";33";
        if (style.colour == Document::Colour::Blue) codes += ";34";
        return codes.empty() ? codes : "\x1B[" + codes.substr(1) + "m";
    }

    bool m_ansi;
    std::vector<Document::Line> m_lines;
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

} // namespace

std::string RenderText(const Document& document, bool ansi)
{
    std::string out;
    const std::vector<Document::Line>& lines = document.lines;
    for (std::size_t first = 0; first < lines.size();) {
        std::size_t last = first + 1;
        while (last < lines.size() && SameBlock(lines[last - 1], lines[last]))
            ++last;
        const bool isSection = lines[first].heading == 4;
        if (isSection && !out.empty() && !out.ends_with("\n\n")) out += '\n';
        Block(lines.data() + first, lines.data() + last, ansi).Append(out);
        first = last;
    }
    return out;
}

std::string RenderMarkup(std::string_view markup, Rendering rendering)
{
    if (rendering == Rendering::Raw) return std::string(markup);
    return RenderText(ReadMarkup(markup), rendering == Rendering::Ansi);
}

} // namespace Keltrix::App
