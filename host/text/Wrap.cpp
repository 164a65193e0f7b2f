#include "text/Wrap.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Cell = Document::Cell;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsUnit(std::string_view word)
{
    static constexpr std::string_view UNITS[] = {"m", "mm",    "kN", "kNm",  "cm",   "cm²",   "cm³",   "cm⁴",  "dm⁶",
                                                 "N", "N/mm²", "kg", "kg/m", "kN/m", "N/mm2", "kN·m²", "N·m²", "%"};
    while (!word.empty() && std::string_view(",;:.)").find(word.back()) != std::string_view::npos)
        word.remove_suffix(1);
    return std::find(std::begin(UNITS), std::end(UNITS), word) != std::end(UNITS);
}

// "UB" of "UB 457x191x67".
bool IsFamily(std::string_view word)
{
    const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
    return !word.empty() && word.size() <= 5 && std::all_of(word.begin(), word.end(), isCapital);
}

// A stretch of a text that stays on one line, and where the next one begins.
struct Part {
    std::size_t begin;
    std::size_t end;
    std::size_t width;
};

std::size_t EndOfWord(std::string_view text, std::size_t begin) { return std::min(text.find(' ', begin), text.size()); }

bool StaysTogether(std::string_view word, std::string_view next)
{
    if (word.empty() || next.empty()) return false;
    return (IsDigit(word.back()) && IsUnit(next)) || (IsDigit(next.front()) && (IsFamily(word) || word == "cl."));
}

// Words with what they keep beside them; a word with slashes is a part up to and with each of them.
std::vector<Part> PartsOf(std::string_view text)
{
    std::vector<Part> parts;
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t end = EndOfWord(text, begin);
        std::size_t word = begin;
        while (end < text.size()) {
            const std::size_t next = end + 1;
            const std::size_t nextEnd = EndOfWord(text, next);
            if (!StaysTogether(text.substr(word, end - word), text.substr(next, nextEnd - next))) break;
            word = next;
            end = nextEnd;
        }
        for (std::size_t from = begin; from < end;) {
            const std::size_t slash = text.substr(0, end).find('/', from + 1);
            // "N/mm²" and "and/or" are words, "examples/beam.csv" is a path.
            const bool isPath = end - from > 16 && slash != std::string_view::npos && slash + 1 < end;
            const std::size_t to = isPath ? slash + 1 : end;
            parts.push_back({from, to, DisplayWidth(text.substr(from, to - from))});
            from = to;
        }
        begin = std::min(end + 1, text.size());
    }
    return parts;
}

std::string TextOf(const Cell& cell)
{
    std::string text;
    for (const Document::Run& run : cell)
        text += run.text;
    return text;
}

// The bytes from `begin` to `end` of a cell's text, in their styles.
Cell Slice(const Cell& cell, std::size_t begin, std::size_t end)
{
    Cell slice;
    std::size_t start = 0;
    for (const Document::Run& run : cell) {
        const std::size_t from = std::max(begin, start);
        const std::size_t to = std::min(end, start + run.text.size());
        if (from < to) slice.push_back({run.text.substr(from - start, to - from), run.style});
        start += run.text.size();
    }
    return slice;
}

} // namespace

std::size_t WidestPart(const Cell& cell)
{
    std::size_t widest = 0;
    for (const Part& part : PartsOf(TextOf(cell)))
        widest = std::max(widest, part.width);
    return widest;
}

std::vector<Cell> Wrapped(const Cell& cell, std::size_t width)
{
    const std::string text = TextOf(cell);
    if (DisplayWidth(text) <= width) return {cell};
    std::vector<Cell> lines;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t used = 0;
    for (const Part& part : PartsOf(text)) {
        const std::size_t gap = part.begin - end; // blanks
        if (end > begin && used + gap + part.width > width) {
            lines.push_back(Slice(cell, begin, end));
            end = begin = part.begin;
        }
        if (end == begin) {
            begin = part.begin;
            used = part.width;
        } else {
            used += gap + part.width;
        }
        end = part.end;
    }
    lines.push_back(Slice(cell, begin, end));
    return lines;
}

} // namespace Keltrix::Host
