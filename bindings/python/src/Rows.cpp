// Tables of simple members: a row is one member between two points, with linear moments or a uniform load between them. Each row stands for the text
// of a member file. Rows that share their words share one file, in which their numbers change; where anything is to be said of a row, its own text is
// written and read.

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cmath>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <unordered_map>
#include <vector>

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include "Bindings.h"
#include "MemberWords.h"
#include "check/CheckedForm.h"
#include "keltrix/host/Host.h"
#include "memberfile/MemberFile.h"
#include "memberfile/MemberText.h"
#include "text/BadInput.h"
#include "text/SourceText.h"
#include "text/Text.h"

namespace Keltrix::Python {

namespace {

// --- The columns ---

enum TextColumn : std::size_t { TITLE, SECTION, TYPE, GRADE, RESTRAINT_START, RESTRAINT_END, RESTRAINT_ALONG, TEXTS };

enum NumberColumn : std::size_t {
    LENGTH,
    AXIAL,
    MAJOR_START,
    MAJOR_END,
    MINOR_START,
    MINOR_END,
    UNIFORM_LOAD,
    LOAD_HEIGHT,
    LENGTH_MAJOR,
    LENGTH_MINOR,
    LENGTH_LT,
    MOMENT_FACTOR,
    NET_TO_GROSS,
    PLASTIC_TO_ELASTIC,
    SHEAR_LAG,
    NUMBERS
};

struct TextRule {
    const char* name;
    const char* standard; // that of a table without the column; null where the column is required
    bool mayBeBlank;      // a cell without a text means the standard
    const char* meaning;
};

constexpr std::array<TextRule, TEXTS> TEXT_RULES{
    {{"title", "", true, "name of the member"},
     {"section", nullptr, false, "designation of the catalogue, or a parametric description"},
     {"type", "", true, "rolled, welded or formed; without it as the catalogue has it"},
     {"grade", nullptr, false, "steel grade"},
     {"restraint_start", "Pinned", false, "what is held at the start, in the words of member files"},
     {"restraint_end", "Pinned", false, "what is held at the end"},
     {"restraint_along", "Free", false, "what is held all along"}}};

struct NumberRule {
    const char* name;
    const char* unit;
    bool isRequired;
    bool mayBeMissing; // not-a-number means that nothing is given
    double standard;
    const char* meaning;
};

constexpr double NOTHING = std::numeric_limits<double>::quiet_NaN();

constexpr std::array<NumberRule, NUMBERS> NUMBER_RULES{
    {{"length", "m", true, false, 0.0, "length between start and end"},
     {"N", "N", false, false, 0.0, "axial force, tension above zero"},
     {"Myy_start", "N.m", false, false, 0.0, "major-axis moment at the start, sagging below zero"},
     {"Myy_end", "N.m", false, false, 0.0, "major-axis moment at the end, sagging below zero"},
     {"Mzz_start", "N.m", false, false, 0.0, "minor-axis moment at the start"},
     {"Mzz_end", "N.m", false, false, 0.0, "minor-axis moment at the end"},
     {"w", "N/m", false, false, 0.0, "uniform load in the plane of the web, downwards above zero"},
     {"load_height", "m", false, false, 0.0, "height of the load above the shear centre, destabilising above zero"},
     {"Lyy", "m", false, true, NOTHING,
      "effective length, major axis; below zero a factor of the length (-0.85); given with Lzz and Llt"},
     {"Lzz", "m", false, true, NOTHING, "effective length, minor axis"},
     {"Llt", "m", false, true, NOTHING, "effective length, lateral-torsional"},
     {"moment_factor", "", false, true, NOTHING, "equivalent uniform moment factor in the place of the computed one"},
     {"net_to_gross", "", false, false, 1.0, "net area over gross area"},
     {"plastic_to_elastic", "", false, false, 1.2, "limit of plastic over elastic modulus"},
     {"shear_lag", "", false, false, 0.7, "shear lag factor, for codes that use it"}}};

py::list Columns()
{
    py::list columns;
    for (const TextRule& rule : TEXT_RULES)
        columns.append(py::make_tuple(rule.name, "text", "", rule.standard == nullptr,
                                      rule.standard ? py::object(py::str(rule.standard)) : py::none(), rule.meaning));
    for (const NumberRule& rule : NUMBER_RULES)
        columns.append(
            py::make_tuple(rule.name, "number", rule.unit, rule.isRequired, OrNone(rule.standard), rule.meaning));
    return columns;
}

// The texts of a column, each that differs once.
class Texts {
public:
    // Nothing stands for a cell without a text.
    Texts(const py::list& cells, const TextRule& rule, bool isOneLine)
    {
        m_values.emplace_back(rule.standard ? rule.standard : "");
        m_faults.emplace_back(rule.mayBeBlank ? std::string()
                                              : std::string(rule.name) + ": got nothing, expected " + rule.meaning);
        std::unordered_map<const PyObject*, std::uint32_t> seen; // the same object as a rule
        std::unordered_map<std::string, std::uint32_t> known;
        m_places.reserve(cells.size());
        for (const py::handle cell : cells) {
            const auto at = seen.find(cell.ptr());
            m_places.push_back(at != seen.end() ? at->second
                                                : seen[cell.ptr()] = PlaceOf(cell, rule, isOneLine, known));
        }
    }

    std::uint32_t Place(std::size_t row) const { return m_places[row]; }
    const std::string& Value(std::size_t row) const { return m_values[m_places[row]]; }
    /// What is wrong with the cell by itself; empty where nothing is.
    const std::string& Fault(std::size_t row) const { return m_faults[m_places[row]]; }
    bool IsBlank(std::size_t row) const { return m_places[row] == 0; }

private:
    std::uint32_t PlaceOf(py::handle cell, const TextRule& rule, bool isOneLine,
                          std::unordered_map<std::string, std::uint32_t>& known)
    {
        if (cell.is_none()) return 0;
        Py_ssize_t size = 0;
        const char* const bytes = PyUnicode_AsUTF8AndSize(cell.ptr(), &size);
        if (!bytes) {
            PyErr_Clear();
            m_values.emplace_back();
            m_faults.push_back(std::string(rule.name) + ": got no text in UTF-8, expected " + rule.meaning);
            return static_cast<std::uint32_t>(m_values.size() - 1);
        }
        std::string value(bytes, static_cast<std::size_t>(size));
        if (value.empty() && rule.mayBeBlank) return 0;
        const auto [at, isNew] = known.emplace(std::move(value), static_cast<std::uint32_t>(m_values.size()));
        if (!isNew) return at->second;
        m_values.push_back(at->first);
        m_faults.emplace_back();
        try {
            (isOneLine ? RequireLine : RequireField)(rule.name, at->first);
        } catch (const Host::BadInput& fault) {
            m_faults.back() = fault.what();
        }
        return at->second;
    }

    std::vector<std::uint32_t> m_places;
    std::vector<std::string> m_values;
    std::vector<std::string> m_faults;
};

// --- What came of a row ---

enum RowStatus : std::uint8_t { PASS, FAIL, NOT_CHECKED, REFUSED };
constexpr const char* STATUS_WORDS[] = {"pass", "fail", "not checked", "refused"};

struct RowResult {
    RowStatus status = REFUSED;
    double utilisation = NOTHING;
    const wchar_t* rule = L""; // texts of the design code, which live as long
    const wchar_t* clause = L"";
    double start = NOTHING;
    double end = NOTHING;
    int sectionClass = 0;
    int warnings = 0;
    std::string message;
};

RowStatus StatusOf(const Host::CheckedMember& checked)
{
    const std::string status = checked.Status();
    return static_cast<RowStatus>(std::find(std::begin(STATUS_WORDS), std::end(STATUS_WORDS), status) -
                                  std::begin(STATUS_WORDS));
}

void Take(const Host::CheckedMember& checked, RowResult& result)
{
    result.status = StatusOf(checked);
    result.utilisation = checked.Utilisation();
    if (const Design::RuleFinding* const governing = checked.findings.Governing()) {
        result.rule = governing->name;
        result.clause = governing->clause;
        result.start = governing->start;
        result.end = governing->end;
    }
    result.sectionClass = checked.member->SectionClass();
    result.warnings = static_cast<int>(
        std::count_if(checked.warnings.begin(), checked.warnings.end(),
                      [](const Host::MemberWarning& one) { return one.severity == Host::Severity::Warning; }));
    if (result.status == NOT_CHECKED) result.message = Host::DescribeOpenRule(checked.findings);
    for (const Host::MemberWarning& warning : checked.warnings)
        result.message += (result.message.empty() ? "" : "; ") + warning.text;
}

// --- Rows that differ in their numbers alone ---

// What rows have in common that share a member file: the places of their words, and the bits of the numbers that are read with the words.
using FormKey = std::array<std::uint64_t, 12>;

struct FormHash {
    std::size_t operator()(const FormKey& key) const
    {
        std::uint64_t hash = 14695981039346656037u;
        for (const std::uint64_t part : key) {
            hash = (hash ^ part) * 1099511628211u;
            hash ^= hash >> 29;
        }
        return static_cast<std::size_t>(hash);
    }
};

// The forms of one thread. A file is made a form where its words come a second time, so that rows of which no two are alike cost nothing more.
class Forms {
public:
    using Form = std::unique_ptr<Host::CheckedForm>;

    // The place of the form, empty where it is still to be made. Null where the words are new, or too many are known.
    Form* Find(const FormKey& key)
    {
        const auto at = m_forms.find(key);
        if (at != m_forms.end()) return &at->second;
        if (m_forms.size() < MOST) m_forms[key];
        return nullptr;
    }

private:
    static constexpr std::size_t MOST = 4096;
    std::unordered_map<FormKey, Form, FormHash> m_forms;
};

// Calls work(i, thread) for each i below the count, in blocks that the threads take as they come. The work throws nothing.
template <class Work>
void ShareOut(std::size_t count, unsigned int jobs, const Work& work)
{
    std::atomic<std::size_t> next{0};
    constexpr std::size_t block = 64;
    const auto take = [&](unsigned int thread) {
        for (std::size_t at = next.fetch_add(block); at < count; at = next.fetch_add(block))
            for (std::size_t i = at; i < std::min(at + block, count); ++i)
                work(i, thread);
    };
    std::vector<std::thread> helpers;
    helpers.reserve(jobs);
    try {
        for (unsigned int i = 1; i < jobs && i * block < count; ++i)
            helpers.emplace_back(take, i);
    } catch (const std::system_error&) {
        // The system gives no more threads: those that there are share the work.
    }
    take(0);
    for (std::thread& helper : helpers)
        helper.join();
}

// --- The table ---

using Numbers = py::array_t<double, py::array::c_style | py::array::forcecast>;

class Rows {
public:
    Rows(const std::vector<py::list>& texts, const Numbers& numbers, const Host::Settings& settings) :
        m_choice(Host::ChooseCode(settings.code, settings.annex, settings.options)), m_reading{settings.allowGaps,
                                                                                               settings.isStrict}
    {
        if (texts.size() != TEXTS || numbers.ndim() != 2 || numbers.shape(0) != static_cast<py::ssize_t>(NUMBERS))
            throw std::invalid_argument("the columns are not those of the table");
        m_count = static_cast<std::size_t>(numbers.shape(1));
        for (std::size_t i = 0; i < TEXTS; ++i) {
            if (texts[i].size() != m_count) throw std::invalid_argument("a column has another length than the others");
            m_texts.emplace_back(texts[i], TEXT_RULES[i], i == TITLE);
        }
        for (std::size_t i = 0; i < NUMBERS; ++i) {
            const double* const first = numbers.data() + i * m_count;
            m_numbers[i].assign(first, first + m_count);
        }
        FindTypes();
    }

    std::size_t Count() const { return m_count; }

    /// The member file of a row. Throws BadInput with what keeps it from being one.
    std::string Text(std::size_t row) const
    {
        if (row >= m_count) throw py::index_error("no such row");
        const std::string fault = FaultOf(row);
        if (!fault.empty()) throw Host::BadInput(fault);
        return Host::MemberFileText(ContentOf(row));
    }

    // One call at a time: the forms of the threads stay for the next call.
    std::vector<RowResult> Check(std::size_t first, std::size_t count, unsigned int jobs)
    {
        std::vector<RowResult> results(count);
        if (m_forms.size() < std::max(jobs, 1u)) m_forms.resize(std::max(jobs, 1u));
        ShareOut(count, jobs,
                 [&](std::size_t i, unsigned int thread) { results[i] = CheckRow(first + i, m_forms[thread]); });
        return results;
    }

private:
    double Number(NumberColumn column, std::size_t row) const { return m_numbers[column][row]; }

    std::string NameOf(std::size_t row) const { return "row " + std::to_string(row); }

    // How the sections are made; rows have few different ones.
    void FindTypes()
    {
        std::unordered_map<std::uint64_t, std::uint32_t> known;
        m_types.reserve(m_count);
        for (std::size_t row = 0; row < m_count; ++row) {
            const std::uint64_t key = (std::uint64_t(m_texts[SECTION].Place(row)) << 32) | m_texts[TYPE].Place(row);
            const auto [at, isNew] = known.emplace(key, static_cast<std::uint32_t>(m_typeWords.size()));
            m_types.push_back(at->second);
            if (!isNew) continue;
            try {
                m_typeWords.emplace_back(TypeOf(m_texts[SECTION].Value(row), m_texts[TYPE].Value(row)), std::string());
            } catch (const Host::BadInput& fault) {
                m_typeWords.emplace_back(std::string(), fault.what());
            }
        }
    }

    // What is wrong with the cells by themselves.
    std::string FaultOf(std::size_t row) const
    {
        for (const Texts& texts : m_texts)
            if (!texts.Fault(row).empty()) return texts.Fault(row);
        if (!m_typeWords[m_types[row]].second.empty()) return m_typeWords[m_types[row]].second;
        for (std::size_t i = 0; i < NUMBERS; ++i) {
            const double value = m_numbers[i][row];
            if (std::isfinite(value) || (NUMBER_RULES[i].mayBeMissing && std::isnan(value))) continue;
            return std::string(NUMBER_RULES[i].name) + ": got " + Host::Shortest(value) + ", expected " +
                   NUMBER_RULES[i].meaning + (*NUMBER_RULES[i].unit ? std::string(", ") + NUMBER_RULES[i].unit : "");
        }
        const bool hasMajor = !std::isnan(Number(LENGTH_MAJOR, row));
        if (hasMajor != !std::isnan(Number(LENGTH_MINOR, row)) || hasMajor != !std::isnan(Number(LENGTH_LT, row)))
            return "Lyy, Lzz, Llt: expected all three effective lengths or none of them";
        if (!(Number(LENGTH, row) > 0.0))
            return "length: got " + Host::Shortest(Number(LENGTH, row)) + ", expected a length in m above 0";
        return {};
    }

    // Shears are those that belong to the moments: dMyy/dx = Fz, dMzz/dx = -Fy.
    Steel::CSubSpan SubSpanOf(std::size_t row) const
    {
        const double L = Number(LENGTH, row);
        const double N = Number(AXIAL, row);
        const double slopeMajor = (Number(MAJOR_END, row) - Number(MAJOR_START, row)) / L;
        const double slopeMinor = (Number(MINOR_END, row) - Number(MINOR_START, row)) / L;
        const double half = Number(UNIFORM_LOAD, row) * L / 2.0;
        Steel::CSubSpan subSpan;
        subSpan.SetForcesAll({N, -slopeMinor, slopeMajor - half}, {N, -slopeMinor, slopeMajor + half});
        subSpan.SetMomentsAll({0.0, Number(MAJOR_START, row), Number(MINOR_START, row)},
                              {0.0, Number(MAJOR_END, row), Number(MINOR_END, row)});
        subSpan.SetRestraint(AtHeight(row));
        return subSpan;
    }

    Steel::CRestraint AtHeight(std::size_t row) const
    {
        Steel::CRestraint restraint;
        restraint.SetLoadHeight(Number(LOAD_HEIGHT, row));
        return restraint;
    }

    std::vector<Steel::CMemberPoint> PointsOf(std::size_t row) const
    {
        std::vector<Steel::CMemberPoint> points(2);
        for (Steel::CMemberPoint& point : points)
            point.SetRestraint(AtHeight(row));
        points[1].SetPos(Number(LENGTH, row));
        return points;
    }

    std::optional<std::array<double, 3>> LengthsOf(std::size_t row) const
    {
        if (std::isnan(Number(LENGTH_MAJOR, row))) return std::nullopt;
        return {{Number(LENGTH_MAJOR, row), Number(LENGTH_MINOR, row), Number(LENGTH_LT, row)}};
    }

    Host::MemberContent ContentOf(std::size_t row) const
    {
        Host::MemberContent content;
        content.title = m_texts[TITLE].IsBlank(row) ? NameOf(row) : m_texts[TITLE].Value(row);
        content.section = m_texts[SECTION].Value(row);
        content.type = m_typeWords[m_types[row]].first;
        content.grade = m_texts[GRADE].Value(row);
        content.netToGross = Number(NET_TO_GROSS, row);
        content.plasticToElastic = Number(PLASTIC_TO_ELASTIC, row);
        content.shearLag = Number(SHEAR_LAG, row);
        content.effectiveLengths = LengthsOf(row);
        if (!std::isnan(Number(MOMENT_FACTOR, row))) content.momentFactor = Number(MOMENT_FACTOR, row);
        content.points = PointsOf(row);
        content.pointWords = {m_texts[RESTRAINT_START].Value(row), m_texts[RESTRAINT_END].Value(row)};
        content.subSpans = {SubSpanOf(row)};
        content.subSpanWords = {m_texts[RESTRAINT_ALONG].Value(row)};
        return content;
    }

    Host::MemberFile FileOf(std::size_t row) const
    {
        return Host::MemberFile(Host::SourceText{NameOf(row), Host::Wide(Text(row))}, m_reading);
    }

    // The title is no part of a key: nothing that a table gives back depends on it.
    FormKey KeyOf(std::size_t row) const
    {
        FormKey key{m_types[row]};
        std::size_t at = 1;
        for (const TextColumn column : {SECTION, GRADE, RESTRAINT_START, RESTRAINT_END, RESTRAINT_ALONG})
            key[at++] = m_texts[column].Place(row);
        for (const NumberColumn column : {LOAD_HEIGHT, MOMENT_FACTOR, NET_TO_GROSS, PLASTIC_TO_ELASTIC, SHEAR_LAG})
            key[at++] = std::bit_cast<std::uint64_t>(Number(column, row));
        key[at++] = std::isnan(Number(LENGTH_MAJOR, row)) ? 0 : 1;
        return key;
    }

    // Null where the row's own text has to be read.
    const Host::CheckedMember* CheckByForm(std::size_t row, Forms& forms) const
    {
        Forms::Form* const form = forms.Find(KeyOf(row));
        if (!form || !FaultOf(row).empty()) return nullptr;
        if (!*form) *form = std::make_unique<Host::CheckedForm>(FileOf(row), m_choice);
        return (*form)->Check({PointsOf(row), {SubSpanOf(row)}, LengthsOf(row)});
    }

    RowResult CheckRow(std::size_t row, Forms& forms) const
    {
        RowResult result;
        try {
            if (const Host::CheckedMember* const checked = CheckByForm(row, forms)) {
                Take(*checked, result);
                return result;
            }
            const Host::MemberFile file = FileOf(row);
            for (const Host::Defect& defect : file.Check().defects)
                if (defect.severity == Host::Severity::Error)
                    result.message += (result.message.empty() ? "" : "; ") + defect.Statement();
            if (result.message.empty()) Take(Host::CheckMember(file, 0, m_choice, false), result);
        } catch (const Host::BadMember& refusal) {
            result.message = refusal.defect.Statement();
        } catch (const std::bad_alloc&) {
            result.message = "not enough memory for this row";
        } catch (const std::exception& failure) {
            result.message = failure.what();
        }
        return result;
    }

    Host::CodeChoice m_choice;
    Host::ReadingOptions m_reading;
    std::size_t m_count = 0;
    std::vector<Texts> m_texts;
    std::array<std::vector<double>, NUMBERS> m_numbers;
    std::vector<std::uint32_t> m_types;                           // of each row a place in the next
    std::vector<std::pair<std::string, std::string>> m_typeWords; // the word, or what is wrong with it
    std::vector<Forms> m_forms;                                   // of each thread
};

// One text of Python for each text of the design code.
class Interned {
public:
    const py::str& Of(const wchar_t* text)
    {
        const auto at = m_texts.find(text);
        return at != m_texts.end() ? at->second : m_texts.emplace(text, TextOf(text)).first->second;
    }

private:
    std::unordered_map<const wchar_t*, py::str> m_texts;
};

py::dict ColumnsOf(const std::vector<RowResult>& results)
{
    const std::size_t count = results.size();
    Interned interned;
    const py::str words[] = {py::str(STATUS_WORDS[PASS]), py::str(STATUS_WORDS[FAIL]),
                             py::str(STATUS_WORDS[NOT_CHECKED]), py::str(STATUS_WORDS[REFUSED])};
    const py::str none("");
    const auto size = static_cast<py::ssize_t>(count);
    py::array_t<double> utilisation(size);
    py::array_t<double> start(size);
    py::array_t<double> end(size);
    py::array_t<std::int32_t> sectionClass(size);
    py::array_t<std::int32_t> warnings(size);
    py::list status(count);
    py::list rule(count);
    py::list clause(count);
    py::list message(count);
    for (std::size_t i = 0; i < count; ++i) {
        const RowResult& result = results[i];
        const auto at = static_cast<py::ssize_t>(i);
        utilisation.mutable_at(at) = result.utilisation;
        start.mutable_at(at) = result.start;
        end.mutable_at(at) = result.end;
        sectionClass.mutable_at(at) = result.sectionClass;
        warnings.mutable_at(at) = result.warnings;
        status[i] = words[result.status];
        rule[i] = interned.Of(result.rule);
        clause[i] = interned.Of(result.clause);
        message[i] = result.message.empty() ? none : TextOf(result.message);
    }
    py::dict made;
    made["status"] = status;
    made["utilisation"] = utilisation;
    made["rule"] = rule;
    made["clause"] = clause;
    made["start"] = start;
    made["end"] = end;
    made["section_class"] = sectionClass;
    made["warnings"] = warnings;
    made["message"] = message;
    return made;
}

py::dict CheckRows(Rows& rows, std::size_t first, std::size_t count, unsigned int jobs)
{
    if (first > rows.Count() || count > rows.Count() - first) throw py::index_error("no such rows");
    std::vector<RowResult> results;
    {
        const py::gil_scoped_release release;
        results = rows.Check(first, count, jobs);
    }
    return ColumnsOf(results);
}

// --- Member files ---

RowResult CheckOne(const Host::MemberFile& file, std::size_t i, const Host::CodeChoice& choice)
{
    RowResult result;
    try {
        if (!file.Member(i).hasErrors) {
            Take(Host::CheckMember(file, i, choice, false), result);
            return result;
        }
        for (const Host::Defect& defect : file.Check().DefectsOf(i))
            if (defect.severity == Host::Severity::Error)
                result.message += (result.message.empty() ? "" : "; ") + defect.Statement();
        if (!result.message.empty()) return result;
        for (const std::string& error : file.UnlistedErrorsOf(i))
            result.message += (result.message.empty() ? "" : "; ") + error;
    } catch (const Host::BadMember& refusal) {
        result.message = refusal.defect.Statement();
    } catch (const std::bad_alloc&) {
        result.message = "not enough memory for this member";
    } catch (const std::exception& failure) {
        result.message = failure.what();
    }
    return result;
}

// The members of a text, checked piece by piece, so that the caller can stop in between.
class Members {
public:
    Members(const py::bytes& text, const std::string& name, const Host::Settings& settings)
    {
        const std::string_view bytes = text;
        const py::gil_scoped_release release;
        m_choice = Host::ChooseCode(settings.code, settings.annex, settings.options);
        m_file = std::make_unique<Host::MemberFile>(Host::DecodeText(name, bytes),
                                                    Host::ReadingOptions{settings.allowGaps, settings.isStrict});
        // Lines between members could be one that has lost its TITLE.
        for (const Host::Defect& defect : m_file->Check().defects)
            if (defect.member == Host::Defect::NO_MEMBER) throw Host::BadInput(defect.Text(m_file->Name()));
    }

    py::list Titles() const
    {
        py::list titles;
        for (std::size_t i = 0; i < m_file->MemberCount(); ++i)
            titles.append(TextOf(Host::Utf8(m_file->Member(i).title)));
        return titles;
    }

    py::dict Check(std::size_t first, std::size_t count, unsigned int jobs) const
    {
        if (first > m_file->MemberCount() || count > m_file->MemberCount() - first)
            throw py::index_error("no such members");
        std::vector<RowResult> results(count);
        {
            const py::gil_scoped_release release;
            ShareOut(count, jobs,
                     [&](std::size_t i, unsigned int) { results[i] = CheckOne(*m_file, first + i, m_choice); });
        }
        return ColumnsOf(results);
    }

private:
    Host::CodeChoice m_choice;
    std::unique_ptr<Host::MemberFile> m_file;
};

} // namespace

void AddRows(py::module_& module)
{
    module.def("row_columns", Columns);
    py::class_<Members>(module, "Members")
        .def(py::init<const py::bytes&, const std::string&, const Host::Settings&>(), py::arg("text"), py::arg("name"),
             py::arg("settings"))
        .def("titles", &Members::Titles)
        .def("check", &Members::Check, py::arg("first"), py::arg("count"), py::arg("jobs"));
    py::class_<Rows>(module, "Rows")
        .def(py::init<const std::vector<py::list>&, const Numbers&, const Host::Settings&>(), py::arg("texts"),
             py::arg("numbers"), py::arg("settings"))
        .def(
            "text", [](const Rows& rows, std::size_t row) { return TextOf(rows.Text(row)); }, py::arg("row"))
        .def("check", CheckRows, py::arg("first"), py::arg("count"), py::arg("jobs"));
}

} // namespace Keltrix::Python
