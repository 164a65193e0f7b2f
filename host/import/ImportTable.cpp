#include "import/ImportTable.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "keltrix/platform/NumberText.h"
#include "text/Fields.h"
#include "text/SourceText.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

constexpr std::size_t MOST_FINDINGS = 1000;

// Letters and digits of a caption in lower case.
std::string Bare(std::string_view text)
{
    std::string bare;
    for (const char c : text) {
        if (c == ' ' || c == '\t' || c == '_' || c == '-' || c == '.') continue;
        bare += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return bare;
}

constexpr ImportUnit IMPORT_UNITS[] = {
    {"m", ImportUnitKind::Length, 1.0},     {"cm", ImportUnitKind::Length, 0.01},
    {"mm", ImportUnitKind::Length, 0.001},  {"N", ImportUnitKind::Force, 1.0},
    {"kN", ImportUnitKind::Force, 1e3},     {"MN", ImportUnitKind::Force, 1e6},
    {"Nm", ImportUnitKind::Moment, 1.0},    {"kNm", ImportUnitKind::Moment, 1e3},
    {"MNm", ImportUnitKind::Moment, 1e6},   {"kNcm", ImportUnitKind::Moment, 10.0},
    {"Nmm", ImportUnitKind::Moment, 0.001}, {"kNmm", ImportUnitKind::Moment, 1.0},
};

// "N [kN]" and "N (kN)": the name and the unit.
std::pair<std::string_view, std::string_view> SplitCaption(std::string_view caption)
{
    for (const auto& [open, close] : {std::pair('[', ']'), std::pair('(', ')')}) {
        const std::size_t at = caption.rfind(open);
        if (at == std::string_view::npos || caption.back() != close) continue;
        return {Trimmed(caption.substr(0, at)), Trimmed(caption.substr(at + 1, caption.size() - at - 2))};
    }
    return {caption, {}};
}

std::string_view WithoutBrackets(std::string_view text)
{
    if (text.size() >= 2 &&
        ((text.front() == '[' && text.back() == ']') || (text.front() == '(' && text.back() == ')')))
        return Trimmed(text.substr(1, text.size() - 2));
    return text;
}

std::size_t CountOutsideQuotes(std::string_view line, char wanted)
{
    bool isQuoted = false;
    std::size_t count = 0;
    for (const char c : line) {
        if (c == '"') isQuoted = !isQuoted;
        if (c == wanted && !isQuoted) ++count;
    }
    return count;
}

// Half a unit of the last digit of a number in decimal notation.
double HalfOfLastDigit(std::string_view text)
{
    const std::size_t exponentAt = std::min(text.find_first_of("eE"), text.size());
    int exponent = 0;
    if (exponentAt < text.size()) {
        std::string_view digits = text.substr(exponentAt + 1);
        if (!digits.empty() && digits.front() == '+') digits.remove_prefix(1);
        std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    }
    const std::size_t point = text.substr(0, exponentAt).find('.');
    const int decimals = point == std::string_view::npos ? 0 : static_cast<int>(exponentAt - point - 1);
    return 0.5 * std::pow(10.0, exponent - decimals);
}

} // namespace

std::string_view Trimmed(std::string_view text)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string Quoted(std::string_view text) { return Quote(Wide(text).View()); }

std::string PlaceText(double metres) { return Rounded(metres, 9) + " m"; }

void ImportFindings::Error(const std::string& file, LineNumber line, std::string column, std::string got,
                           std::string expected, std::string advice)
{
    Defect defect;
    defect.line = line;
    defect.code = "import";
    defect.keyword = std::move(column);
    defect.got = std::move(got);
    defect.expected = std::move(expected);
    defect.advice = std::move(advice);
    ++m_errors;
    Add({file, std::move(defect)});
}

void ImportFindings::Say(Severity severity, const std::string& file, LineNumber line, std::string text)
{
    Defect defect;
    defect.severity = severity;
    defect.line = line;
    defect.code = "import";
    defect.advice = std::move(text);
    if (severity == Severity::Error) ++m_errors;
    Add({file, std::move(defect)});
}

void ImportFindings::Add(ImportFinding finding)
{
    if (m_list.size() < MOST_FINDINGS)
        m_list.push_back(std::move(finding));
    else
        ++m_left;
}

std::vector<ImportFinding> ImportFindings::Take()
{
    if (m_left > 0) {
        ImportFinding more{m_list.front().file, {}};
        more.defect.severity = m_errors > 0 ? Severity::Error : Severity::Warning;
        more.defect.line = m_list.back().defect.line;
        more.defect.advice = std::to_string(m_left) + " messages more are not shown";
        m_list.push_back(std::move(more));
        m_left = 0;
    }
    return std::move(m_list);
}

const ImportUnit* ImportUnitNamed(std::string_view text)
{
    std::string bare;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 2, "·") == 0) {
            ++i; // two bytes
            continue;
        }
        if (text[i] != ' ' && text[i] != '.' && text[i] != '*' && text[i] != '-') bare += text[i];
    }
    // Letter case does not matter, except where it tells m from M.
    for (const ImportUnit& unit : IMPORT_UNITS) {
        const bool hasPrefix = unit.word[0] == 'm' || unit.word[0] == 'M';
        if (SameWord(Wide(bare).View(), Wide(unit.word).View()) && (!hasPrefix || bare[0] == unit.word[0]))
            return &unit;
    }
    return nullptr;
}

std::string ImportUnitWords(ImportUnitKind kind)
{
    switch (kind) {
    case ImportUnitKind::Length:
        return "m, cm or mm";
    case ImportUnitKind::Force:
        return "N, kN or MN";
    default:
        return "Nm, kNm, MNm, kNcm, Nmm or kNmm";
    }
}

ImportTable::ImportTable(std::string name, std::string_view bytes, ImportFindings& findings) :
    m_name(std::move(name)), m_findings(findings)
{
    DecodeText(m_name, bytes); // throws where the bytes are no text
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    if (bytes.find('\n') == std::string_view::npos && bytes.find('\r') != std::string_view::npos) {
        m_findings.Error(m_name, 1, {}, "lines that end in carriage returns alone", "line feeds",
                         "save the table with line feeds at the ends of its lines");
        return;
    }
    LineNumber number = 0;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        const std::string_view line = Trimmed(bytes.substr(0, end));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        ++number;
        if (line.empty() || (m_headerLine == 0 && line.front() == '#') ||
            line.find_first_not_of(",; \t") == std::string_view::npos)
            continue;
        if (m_headerLine == 0) {
            m_headerLine = number;
            ReadHeader(line);
            if (m_columns.empty()) return;
        } else {
            ReadRow(line, number);
        }
    }
    if (m_headerLine == 0) m_findings.Error(m_name, 1, {}, "nothing", "a line of captions");
}

std::optional<std::vector<std::string>> ImportTable::Split(std::string_view line, LineNumber number)
{
    std::vector<std::string> cells;
    for (;;) {
        std::string cell;
        line = Trimmed(line);
        if (!line.empty() && line.front() == '"') {
            std::size_t i = 1;
            for (; i < line.size() && (line[i] != '"' || (i + 1 < line.size() && line[i + 1] == '"')); ++i) {
                if (line[i] == '"') ++i; // the second one of two
                cell += line[i];
            }
            if (i >= line.size()) {
                m_findings.Error(m_name, number, {}, "a quotation mark without its end", "quotation marks in pairs");
                return std::nullopt;
            }
            line = Trimmed(line.substr(i + 1));
            if (!line.empty() && line.front() != m_separator) {
                m_findings.Error(m_name, number, {}, Quoted(line.substr(0, 20)) + " behind a quotation",
                                 "a separator there");
                return std::nullopt;
            }
            cell = std::string(Trimmed(cell));
        }
        const std::size_t end = std::min(line.find(m_separator), line.size());
        if (cell.empty()) cell = std::string(Trimmed(line.substr(0, end)));
        cells.push_back(std::move(cell));
        if (end == line.size()) return cells;
        line.remove_prefix(end + 1);
    }
}

void ImportTable::ReadHeader(std::string_view line)
{
    const std::size_t semicolons = CountOutsideQuotes(line, ';');
    const std::size_t commas = CountOutsideQuotes(line, ',');
    if (semicolons == 0 && commas == 0)
        return m_findings.Error(m_name, m_headerLine, {}, Quoted(line), "captions separated by commas or semicolons");
    m_separator = semicolons > 0 ? ';' : ',';
    const std::optional<std::vector<std::string>> cells = Split(line, m_headerLine);
    if (!cells) return;
    for (const std::string& cell : *cells) {
        const auto [name, unit] = SplitCaption(cell);
        m_columns.push_back({cell, std::string(name), std::string(unit)});
    }
    while (!m_columns.empty() && m_columns.back().caption.empty())
        m_columns.pop_back();
}

// Whether a line below the captions has units and nothing else.
bool ImportTable::ReadUnits(const std::vector<std::string>& cells, LineNumber number)
{
    bool hasUnit = false;
    for (const std::string& cell : cells) {
        const std::string_view text = WithoutBrackets(cell);
        if (text.empty() || text == "-") continue;
        if (!ImportUnitNamed(text)) return false;
        hasUnit = true;
    }
    if (!hasUnit) return false;
    for (std::size_t i = 0; i < cells.size() && i < m_columns.size(); ++i) {
        const std::string_view text = WithoutBrackets(cells[i]);
        if (text.empty() || text == "-") continue;
        Column& column = m_columns[i];
        if (!column.unit.empty() && ImportUnitNamed(column.unit) != ImportUnitNamed(text))
            m_findings.Error(m_name, number, column.caption, Quoted(text), "the unit of its caption");
        column.unit = text;
    }
    return true;
}

void ImportTable::ReadRow(std::string_view line, LineNumber number)
{
    std::optional<std::vector<std::string>> cells = Split(line, number);
    if (!cells) return;
    while (cells->size() > m_columns.size() && cells->back().empty())
        cells->pop_back();
    if (cells->size() != m_columns.size()) {
        const bool isLong = cells->size() > m_columns.size();
        return m_findings.Error(m_name, number, {}, std::to_string(cells->size()) + " fields",
                                std::to_string(m_columns.size()) + ", one for each caption",
                                isLong && m_separator == ',' ? "a decimal comma? write a decimal point" : "");
    }
    if (m_rows.empty() && ReadUnits(*cells, number)) return;
    m_rows.push_back({number, std::move(*cells)});
}

bool ImportTable::Find(const std::vector<ImportField>& fields, const ImportNames& names)
{
    m_fields = fields;
    m_places.assign(fields.size(), -1);
    m_units.assign(fields.size(), nullptr);
    if (m_columns.empty()) return false;
    bool isComplete = true;
    for (std::size_t field = 0; field < fields.size(); ++field) {
        FindColumn(field, names);
        const auto named = names.columns.find(fields[field].name);
        const bool isNone = named != names.columns.end() && named->second == "none";
        if (m_places[field] < 0 && fields[field].isRequired && !isNone) isComplete = false;
        if (m_places[field] >= 0 && fields[field].unit) FindUnit(field, names);
    }
    RequireOneUnit();
    return isComplete;
}

void ImportTable::FindColumn(std::size_t field, const ImportNames& names)
{
    const ImportField& wanted = m_fields[field];
    const auto named = names.columns.find(wanted.name);
    if (named != names.columns.end() && named->second == "none") return;
    std::string all;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const Column& column = m_columns[i];
        all += (i == 0 ? "" : ", ") + column.caption;
        const std::string bare = Bare(column.name);
        const bool isIt = named != names.columns.end()
                              ? named->second == column.caption || named->second == column.name
                              : std::any_of(wanted.captions.begin(), wanted.captions.end(),
                                            [&](const char* caption) { return bare == caption; });
        if (!isIt) continue;
        if (m_places[field] >= 0)
            m_findings.Error(m_name, m_headerLine, wanted.name,
                             "two columns for it, " +
                                 Quoted(m_columns[static_cast<std::size_t>(m_places[field])].caption) + " and " +
                                 Quoted(column.caption),
                             "one", std::string("say which with --map ") + wanted.name + "=CAPTION");
        else
            m_places[field] = static_cast<int>(i);
    }
    if (m_places[field] >= 0 || (!wanted.isRequired && named == names.columns.end())) return;
    m_findings.Error(m_name, m_headerLine, wanted.name, "no such column among " + PrintableLine(all),
                     named != names.columns.end() ? "a column " + Quoted(named->second)
                                                  : "a column " + std::string(wanted.name),
                     std::string("say which with --map ") + wanted.name + "=CAPTION" +
                         (wanted.unit ? ", or =none where the actions are 0" : ""));
}

void ImportTable::FindUnit(std::size_t field, const ImportNames& names)
{
    const ImportUnitKind kind = *m_fields[field].unit;
    const Column& column = m_columns[static_cast<std::size_t>(m_places[field])];
    const auto given = names.units.find(kind);
    const ImportUnit* const stated = column.unit.empty() ? nullptr : ImportUnitNamed(column.unit);
    const bool isKnown = stated && stated->kind == kind;
    if (!column.unit.empty() && !isKnown)
        return m_findings.Error(m_name, m_headerLine, column.caption, Quoted(column.unit), ImportUnitWords(kind));
    if (stated && given != names.units.end() && given->second != stated)
        return m_findings.Error(m_name, m_headerLine, column.caption, Quoted(column.unit),
                                std::string(given->second->word) + ", as --map says");
    m_units[field] = stated ? stated : given != names.units.end() ? given->second : nullptr;
    if (m_units[field]) return;
    const char* const key = kind == ImportUnitKind::Length  ? "length"
                            : kind == ImportUnitKind::Force ? "force"
                                                            : "moment";
    m_findings.Error(m_name, m_headerLine, column.caption, "no unit", ImportUnitWords(kind),
                     "write it behind the caption, as in \"" + column.caption + " [" +
                         (kind == ImportUnitKind::Length  ? "m"
                          : kind == ImportUnitKind::Force ? "kN"
                                                          : "kNm") +
                         "]\", or give --map " + key + "=UNIT");
}

// Two units of one kind in one table are a slip sooner than a wish.
void ImportTable::RequireOneUnit()
{
    for (std::size_t i = 0; i < m_units.size(); ++i)
        for (std::size_t k = 0; k < i; ++k) {
            if (!m_units[i] || !m_units[k] || m_units[i]->kind != m_units[k]->kind || m_units[i] == m_units[k])
                continue;
            m_findings.Error(m_name, m_headerLine, CaptionOf(i),
                             std::string("mixed units, ") + m_units[i]->word + " here and " + m_units[k]->word +
                                 " in " + Quoted(CaptionOf(k)),
                             "the same unit in both");
            break;
        }
}

std::vector<std::string> ImportTable::Others() const
{
    std::vector<std::string> others;
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        if (std::find(m_places.begin(), m_places.end(), static_cast<int>(i)) == m_places.end())
            others.push_back(PrintableLine(m_columns[i].caption));
    return others;
}

std::string ImportTable::CaptionOf(std::size_t field) const
{
    return m_places[field] < 0 ? m_fields[field].name
                               : PrintableLine(m_columns[static_cast<std::size_t>(m_places[field])].caption);
}

std::string ImportTable::Text(const Row& row, std::size_t field) const
{
    return m_places[field] < 0 ? std::string() : row.cells[static_cast<std::size_t>(m_places[field])];
}

std::optional<ImportNumber> ImportTable::Number(const Row& row, std::size_t field)
{
    const std::string text = Text(row, field);
    std::string_view digits = text;
    if (digits.size() > 1 && digits.front() == '+' && digits[1] != '-') digits.remove_prefix(1);
    double value = 0.0;
    const auto [end, error] = ReadNumber(digits.data(), digits.data() + digits.size(), value);
    const ImportUnit* const unit = m_units[field];
    const double factor = unit ? unit->factor : 1.0;
    const std::string expected = unit ? std::string("a number in ") + unit->word : "a number";
    if (error == std::errc() && end == digits.data() + digits.size() && std::isfinite(value) &&
        std::isfinite(value * factor))
        return ImportNumber{value * factor, HalfOfLastDigit(digits) * factor};
    const std::string_view rest(end, static_cast<std::size_t>(digits.data() + digits.size() - end));
    std::string advice;
    if (rest.starts_with(",")) advice = "write a decimal point";
    if (error == std::errc() && ImportUnitNamed(Trimmed(rest)))
        advice = "units stand in the header, one for the whole column";
    m_findings.Error(m_name, row.line, CaptionOf(field), text.empty() ? "nothing" : Quoted(text), expected, advice);
    return std::nullopt;
}

} // namespace Keltrix::Host
