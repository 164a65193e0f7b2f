#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

#include "BuiltInCatalogue.h"
#include "SectionNames.h"
#include "keltrix/platform/KxData.h"
#include "keltrix/platform/KxUtil.h"
#include "keltrix/platform/NumberText.h"

namespace Keltrix {

namespace {

std::string_view TrimBlanks(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

enum Column { FAMILY, DESIGNATION, SHAPE, TYPE, MASS, DEPTH, WIDTH, WEB, FLANGE, ROOT, TOE, COLUMN_COUNT };

constexpr std::array<std::string_view, COLUMN_COUNT> COLUMN_NAMES = {"family",    "designation", "shape",    "type",
                                                                     "mass_kg_m", "depth_mm",    "width_mm", "web_mm",
                                                                     "flange_mm", "root_mm",     "toe_mm"};

struct Word {
    std::string_view name;
    int value;
};

constexpr Word SHAPE_WORDS[] = {{"I", CSecGeom::SHAPE_I},     {"channel", CSecGeom::SHAPE_CHANNEL},
                                {"tee", CSecGeom::SHAPE_T},   {"angle", CSecGeom::SHAPE_ANGLE},
                                {"RHS", CSecGeom::SHAPE_RHS}, {"CHS", CSecGeom::SHAPE_CHS}};
constexpr Word TYPE_WORDS[] = {{"rolled", SEC_ROLLED}, {"welded", SEC_WELDED}, {"formed", SEC_FORMED}};

// Reads a catalogue CSV text and gathers every error in it.
class CsvReader {
public:
    explicit CsvReader(std::string_view csv) : m_rest(csv)
    {
        constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
        if (m_rest.substr(0, byteOrderMark.size()) == byteOrderMark) m_rest.remove_prefix(byteOrderMark.size());
    }

    void Read()
    {
        bool header = false;
        while (NextLine()) {
            if (m_errors.size() >= MOST_ERRORS) {
                m_errors.resize(MOST_ERRORS);
                AddError(m_line, 0,
                         std::to_string(MOST_ERRORS) +
                             " faults were found up to here, and the rest was not read; mend those above first");
                return;
            }
            if (!header) {
                header = true;
                if (!ReadHeader()) return;
            } else {
                ReadRow();
            }
        }
        if (!header) {
            AddError(0, 0, "expected a header line with the columns " + ColumnList() + ", found no line at all");
        }
    }

    struct Row {
        CSectDB::Entry entry;
        int line;
        int column; // of the designation
    };
    std::vector<Row> m_rows;
    std::vector<CatalogueError> m_errors;

    void AddError(int line, int column, const std::string& message)
    {
        // A message may quote bytes of the file, and these need not be well-formed.
        std::optional<CString> text = CString::FromUtf8(message);
        if (!text) {
            std::string ascii = message;
            std::replace_if(
                ascii.begin(), ascii.end(), [](char c) { return static_cast<unsigned char>(c) > 0x7F; }, '?');
            text = CString::FromUtf8(ascii);
        }
        m_errors.push_back({line, column, *text});
    }

private:
    // A file that is no catalogue at all has a fault in every line.
    static constexpr std::size_t MOST_ERRORS = 1000;

    // The next line that is neither empty nor a comment, split into its fields.
    bool NextLine()
    {
        while (!m_rest.empty()) {
            const std::size_t end = std::min(m_rest.find('\n'), m_rest.size());
            std::string_view line = m_rest.substr(0, end);
            m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
            ++m_line;
            if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
            line = TrimBlanks(line);
            if (line.empty() || line.front() == '#') continue;

            m_fields.clear();
            for (;;) {
                const std::size_t comma = line.find(',');
                m_fields.push_back(TrimBlanks(line.substr(0, comma)));
                if (comma == std::string_view::npos) return true;
                line.remove_prefix(comma + 1);
            }
        }
        return false;
    }

    static std::string ColumnList()
    {
        std::string list;
        for (const std::string_view name : COLUMN_NAMES)
            list.append(list.empty() ? "" : ",").append(name);
        return list;
    }

    bool ReadHeader()
    {
        const std::size_t errors = m_errors.size();
        m_columns.fill(0);
        for (std::size_t i = 0; i < m_fields.size(); ++i) {
            const int column = static_cast<int>(i) + 1;
            const auto name = std::find(COLUMN_NAMES.begin(), COLUMN_NAMES.end(), m_fields[i]);
            if (name == COLUMN_NAMES.end()) {
                AddError(m_line, column, "expected one of the column names " + ColumnList() + ", found " + Quoted(i));
                continue;
            }
            int& place = m_columns[static_cast<std::size_t>(name - COLUMN_NAMES.begin())];
            if (place != 0) {
                AddError(m_line, column, "expected each column name once, found " + Quoted(i) + " again");
            }
            place = column;
        }
        for (std::size_t c = 0; c < COLUMN_COUNT; ++c) {
            if (m_columns[c] == 0) {
                AddError(m_line, 0, "expected a column \"" + std::string(COLUMN_NAMES[c]) + "\", found none");
            }
        }
        m_fieldCount = m_fields.size();
        return m_errors.size() == errors;
    }

    std::string Quoted(std::size_t field) const { return '"' + std::string(m_fields[field]) + '"'; }

    std::string_view Field(Column column) const { return m_fields[static_cast<std::size_t>(m_columns[column] - 1)]; }

    void Expected(Column column, const std::string& what)
    {
        const std::string found = Field(column).empty() ? "nothing" : '"' + std::string(Field(column)) + '"';
        AddError(m_line, m_columns[column],
                 std::string(COLUMN_NAMES[column]) + ": expected " + what + ", found " + found);
    }

    CString Text(Column column)
    {
        const std::string_view field = Field(column);
        std::optional<CString> text = CString::FromUtf8(field);
        if (field.empty() || !text || field.find('"') != std::string_view::npos) {
            Expected(column, "plain UTF-8 text without quotation marks");
            return {};
        }
        return *text;
    }

    template <std::size_t N>
    int WordValue(Column column, const Word (&words)[N])
    {
        std::string list;
        for (const Word& word : words) {
            if (word.name == Field(column)) return word.value;
            list.append(list.empty() ? "" : ", ").append(word.name);
        }
        Expected(column, "one of " + list);
        return 0;
    }

    // A number that is not negative; an empty field is 0.
    double Number(Column column, const char* what)
    {
        const std::string_view field = Field(column);
        if (field.empty()) return 0.0;
        double value = 0.0;
        const auto [end, error] = ReadNumber(field.data(), field.data() + field.size(), value);
        if (error != std::errc() || end != field.data() + field.size() || !std::isfinite(value) || value < 0.0) {
            Expected(column, what);
            return std::nan("");
        }
        return value;
    }

    double Millimetres(Column column) { return Number(column, "a dimension in mm, not negative") / 1000.0; }

    void RequirePositive(Column column, double value, const char* what)
    {
        if (value == 0.0) Expected(column, what);
    }

    void ReadRow()
    {
        if (m_fields.size() != m_fieldCount) {
            AddError(m_line, 0,
                     "expected " + std::to_string(m_fieldCount) + " fields as in the header line, found " +
                         std::to_string(m_fields.size()));
            return;
        }
        CSectDB::Entry entry;
        entry.family = Text(FAMILY);
        entry.designation = entry.family + L" " + Text(DESIGNATION);
        entry.shape = WordValue(SHAPE, SHAPE_WORDS);
        entry.secType = WordValue(TYPE, TYPE_WORDS);
        entry.massPerMetre = Number(MASS, "a mass per metre in kg/m, above 0");
        RequirePositive(MASS, entry.massPerMetre, "a mass per metre in kg/m, above 0");
        entry.depth = Millimetres(DEPTH);
        entry.width = Millimetres(WIDTH);
        entry.webThickness = Millimetres(WEB);
        entry.flangeThickness = Millimetres(FLANGE);
        entry.rootRadius = Millimetres(ROOT);
        entry.toeRadius = Millimetres(TOE);
        CheckDimensions(entry);
        m_rows.push_back({std::move(entry), m_line, m_columns[DESIGNATION]});
    }

    // Every shape needs its dimensions; a shape of one thickness may give it in either column.
    void CheckDimensions(CSectDB::Entry& entry)
    {
        const bool circular = entry.shape == CSecGeom::SHAPE_CHS;
        if (circular || entry.shape == CSecGeom::SHAPE_RHS || entry.shape == CSecGeom::SHAPE_ANGLE) {
            if (entry.webThickness == 0.0) entry.webThickness = entry.flangeThickness;
            if (entry.flangeThickness == 0.0) entry.flangeThickness = entry.webThickness;
            if (entry.webThickness != entry.flangeThickness && !std::isnan(entry.webThickness) &&
                !std::isnan(entry.flangeThickness)) {
                Expected(FLANGE, "the thickness of the column web_mm, since this shape has a single one");
            }
        }
        RequirePositive(DEPTH, entry.depth, "a dimension in mm, above 0");
        if (!circular) RequirePositive(WIDTH, entry.width, "a dimension in mm, above 0");
        RequirePositive(WEB, entry.webThickness, "a dimension in mm, above 0");
        RequirePositive(FLANGE, entry.flangeThickness, "a dimension in mm, above 0");
    }

    std::string_view m_rest;
    int m_line = 0;
    std::size_t m_fieldCount = 0;
    std::vector<std::string_view> m_fields;
    std::array<int, COLUMN_COUNT> m_columns{};
};

} // namespace

struct CSectDB::Impl {
    using Places = std::unordered_map<std::wstring, std::size_t>;
    static constexpr std::size_t SEVERAL = static_cast<std::size_t>(-1);

    std::vector<Entry> entries;
    std::vector<SectionName> names; // of the entries
    Places places;                  // by normalised key
    Places placesBySizes;           // by SectionName::Key(); SEVERAL where rows differ in trailing zeros alone
    std::unordered_set<std::wstring> families;

    // The name under the family that the catalogue has for it. A host's own family of that name stands for itself.
    SectionName InOwnTerms(SectionName name) const
    {
        if (!families.contains(name.family)) name.family = UsualFamily(name.family);
        return name;
    }

    const Entry* FindOtherSpelling(const std::wstring& key) const
    {
        const SectionName name = ReadSectionName(key);
        if (!name.isWhole || !LegsFit(name)) return nullptr;
        for (const SectionName& form : OtherForms(InOwnTerms(name))) {
            const auto found = placesBySizes.find(form.Key());
            if (found != placesBySizes.end() && found->second != SEVERAL) return &entries[found->second];
        }
        return nullptr;
    }

    void Append(Entry entry)
    {
        const SectionName& name = names.emplace_back(ReadSectionName(NormalisedKey(entry.designation)));
        families.insert(NormalisedKey(entry.family));
        if (name.isWhole) {
            const auto [place, isNew] = placesBySizes.emplace(name.Key(), entries.size());
            if (!isNew) place->second = SEVERAL;
        }
        entries.push_back(std::move(entry));
    }
};

CSectDB::CSectDB() : m_impl(std::make_unique<Impl>()) {}

CSectDB::~CSectDB() = default;

CSectDB* CSectDB::GetDatabase()
{
    static CSectDB* const database = [] {
        static CSectDB catalogue;
        for (const std::string_view csv : BuiltInCatalogue()) {
            [[maybe_unused]] const std::vector<CatalogueError> errors = catalogue.AddCsv(csv);
            assert(errors.empty());
        }
        return &catalogue;
    }();
    return database;
}

const CSectDB::Entry* CSectDB::Find(std::wstring_view designation) const
{
    const std::wstring key = NormalisedKey(designation);
    const auto found = m_impl->places.find(key);
    return found == m_impl->places.end() ? m_impl->FindOtherSpelling(key) : &m_impl->entries[found->second];
}

const std::vector<CSectDB::Entry>& CSectDB::Entries() const { return m_impl->entries; }

std::vector<CString> CSectDB::Suggest(std::wstring_view text, std::size_t count) const
{
    // Longer texts are no slips of the pen, and their distance would only cost time.
    constexpr std::size_t longest = 64;
    const std::wstring key = NormalisedKey(text.substr(0, 4 * longest)).substr(0, longest);

    const SectionName wanted = m_impl->InOwnTerms(ReadSectionName(key));
    std::vector<SectionName> forms = OtherForms(wanted);
    if (wanted.sizes.size() > 2) {
        // The two legs, or depth and width, may have been exchanged.
        forms.push_back(wanted);
        std::swap(forms.back().sizes[0], forms.back().sizes[1]);
    }

    struct Candidate {
        double difference;
        std::size_t place;
        auto operator<=>(const Candidate&) const = default;
    };
    std::vector<Candidate> candidates;
    candidates.reserve(m_impl->entries.size());
    for (std::size_t i = 0; i < m_impl->entries.size(); ++i) {
        double least = Difference(forms.front(), m_impl->names[i]);
        for (std::size_t k = 1; k < forms.size(); ++k)
            least = std::min(least, Difference(forms[k], m_impl->names[i]));
        candidates.push_back({least, i});
    }
    const std::size_t most = std::min(count, candidates.size());
    std::partial_sort(candidates.begin(), candidates.begin() + static_cast<std::ptrdiff_t>(most), candidates.end());

    std::vector<CString> names;
    for (std::size_t i = 0; i < most; ++i)
        names.push_back(m_impl->entries[candidates[i].place].designation);
    return names;
}

std::vector<CatalogueError> CSectDB::AddCsv(std::string_view csv)
{
    CsvReader reader(csv);
    reader.Read();

    std::unordered_map<std::wstring, std::size_t> places;
    for (std::size_t i = 0; i < reader.m_rows.size(); ++i) {
        const auto& [entry, line, column] = reader.m_rows[i];
        std::wstring key = NormalisedKey(entry.designation);
        if (m_impl->places.contains(key) || !places.emplace(std::move(key), m_impl->entries.size() + i).second) {
            const std::string name = entry.designation.ToUtf8().value_or(std::string());
            reader.AddError(line, column, "designation: expected a new designation, found \"" + name + "\" again");
        }
    }
    std::stable_sort(reader.m_errors.begin(), reader.m_errors.end(),
                     [](const CatalogueError& a, const CatalogueError& b) { return a.line < b.line; });
    if (!reader.m_errors.empty()) return reader.m_errors;

    m_impl->entries.reserve(m_impl->entries.size() + reader.m_rows.size());
    m_impl->places.merge(places);
    for (CsvReader::Row& row : reader.m_rows)
        m_impl->Append(std::move(row.entry));
    return {};
}

} // namespace Keltrix
