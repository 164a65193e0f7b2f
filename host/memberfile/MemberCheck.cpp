#include "memberfile/MemberCheck.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "keltrix/platform/KxData.h"
#include "keltrix/steel/MemberLayout.h"
#include "memberfile/ActionFindings.h"
#include "sections/SectionShapes.h"
#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Data::CRestraint;
using Steel::CMemberPoint;
using Steel::CSubSpan;

// The lines of a member in the order in which they are read.
enum Rank : int {
    UNKNOWN = -2,
    HEADINGS = -1,
    TITLE,
    SECTION,
    GRADE,
    NET_TO_GROSS,
    PLASTIC_ELASTIC,
    SHEAR_LAG,
    LENGTH_OVERRIDES,
    UNIFORM_MOMENT,
    STRONG_AXIS,
    WEAK_AXIS,
    MEMBERPOINT,
    SUBSPAN,
    END
};

struct Keyword {
    std::wstring_view word;
    Rank rank;
};

constexpr Keyword KEYWORDS[] = {{L"TITLE", TITLE},
                                {L"SECTION", SECTION},
                                {L"GRADE", GRADE},
                                {L"NET_TO_GROSS", NET_TO_GROSS},
                                {L"ALLOWABLE_PLASTIC/ELASTIC_RATIO", PLASTIC_ELASTIC},
                                {L"SHEAR_LAG_FACTOR", SHEAR_LAG},
                                {L"EFFECTIVE_LENGTH_OVERRIDES", LENGTH_OVERRIDES},
                                {L"EQUIVALENT_UNIFORM_MOMENT_FACTOR", UNIFORM_MOMENT},
                                {L"MOMENT_AMPLIFICATION_FACTOR_STRONG_AXIS", STRONG_AXIS},
                                {L"MOMENT_AMPLIFICATION_FACTOR_WEAK_AXIS", WEAK_AXIS},
                                {L"MEMBERPOINT", MEMBERPOINT},
                                {L"SUBSPAN", SUBSPAN},
                                {L"END", END},
                                {L"HEADINGS", HEADINGS}};

Rank RankOf(std::wstring_view word)
{
    for (const Keyword& keyword : KEYWORDS) {
        if (SameWord(word, keyword.word)) return keyword.rank;
    }
    return UNKNOWN;
}

std::string WordOf(Rank rank)
{
    for (const Keyword& keyword : KEYWORDS) {
        if (keyword.rank == rank) return Utf8(keyword.word);
    }
    return {};
}

// What a number field is meant to hold.
struct Quantity {
    const char* expected;
    const char* dimension; // of the units that people write after the number
};

constexpr Quantity METRES{"a number in m", "length"};
constexpr Quantity NEWTONS{"a number in N", "force"};
constexpr Quantity NEWTON_METRES{"a number in N·m", "moment"};
constexpr Quantity PASCALS{"a number in Pa", "stress"};
constexpr Quantity RATIO{"a number", ""};
constexpr Quantity EFFECTIVE_LENGTH{"a length in m, or below zero minus a factor of the member's length", "length"};

struct Unit {
    std::wstring_view word;
    std::string_view dimension;
    double factor;
};

constexpr Unit UNITS[] = {{L"m", "length", 1.0},     {L"cm", "length", 1e-2},   {L"mm", "length", 1e-3},
                          {L"N", "force", 1.0},      {L"kN", "force", 1e3},     {L"MN", "force", 1e6},
                          {L"Nm", "moment", 1.0},    {L"kNm", "moment", 1e3},   {L"MNm", "moment", 1e6},
                          {L"Pa", "stress", 1.0},    {L"kPa", "stress", 1e3},   {L"MPa", "stress", 1e6},
                          {L"N/mm2", "stress", 1e6}, {L"N/mm²", "stress", 1e6}, {L"GPa", "stress", 1e9}};

const std::vector<std::wstring_view> RESTRAINT_NAMES = {L"Free",
                                                        L"None",
                                                        L"Pin",
                                                        L"Pinned",
                                                        L"Fix",
                                                        L"Fixed",
                                                        L"Encastre",
                                                        L"Full rotational",
                                                        L"Partial rotational",
                                                        L"Top flange lateral",
                                                        L"Bottom flange lateral",
                                                        L"Top and Bottom flange lateral"};

// "one of Free, None, ..., a code as "F1L TR", or a number of bits".
const std::string& RestraintExpected()
{
    static const std::string text = [] {
        std::string list = "one of ";
        for (const std::wstring_view name : RESTRAINT_NAMES)
            list += Utf8(name) + ", ";
        return list + "a code as \"F1L TR\", or a number of bits";
    }();
    return text;
}

struct Line {
    LineNumber number = 0;
    std::wstring_view whole;
    std::wstring_view keyword;
    std::wstring_view rest;
    Rank rank = UNKNOWN;
    bool isPastEnd = false;
};

// Walks a text line by line, as the reader does.
class LineWalk {
public:
    LineWalk(const CString& text, LineNumber firstLine) : m_text(text) { m_line.number = firstLine - 1; }

    const Line& Current() const { return m_line; }
    void Next()
    {
        const bool isFirst = !m_hasBegun;
        m_hasBegun = true;
        if (!isFirst && AtEndOfLines()) {
            const LineNumber number = m_line.isPastEnd ? m_line.number : m_line.number + 1;
            m_line = {number, m_text.View().substr(m_text.View().size()), {}, {}, UNKNOWN, true};
            return;
        }
        m_line.whole = GetLineView(isFirst ? &m_text : nullptr);
        m_line.rest = m_line.whole;
        m_line.keyword = GetSubString(m_line.rest);
        m_line.rank = RankOf(m_line.keyword);
        ++m_line.number;
    }
    /// Offset of the current line's first character, and of the one after its line break.
    std::size_t Start() const { return static_cast<std::size_t>(m_line.whole.data() - m_text.View().data()); }
    std::size_t Finish() const
    {
        const std::size_t feed = m_text.View().find(L'\n', Start() + m_line.whole.size());
        return feed == std::wstring_view::npos ? m_text.View().size() : feed + 1;
    }

private:
    const CString& m_text;
    Line m_line;
    bool m_hasBegun = false;
};

// "a GRADE line here", "an END line here".
std::string LineHere(Rank rank)
{
    const std::string word = WordOf(rank);
    return (std::string_view("AEIOU").find(word[0]) == std::string_view::npos ? "a " : "an ") + word + " line here";
}

std::string Count(std::size_t n, const char* what) { return std::to_string(n) + ' ' + what + (n == 1 ? "" : "s"); }

// The shortest decimal that single precision reads back as the same value.
double ShortestOfFloat(float value)
{
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    double decimal = value;
    std::from_chars(buffer.data(), end, decimal);
    return decimal;
}

bool IsOnlyOf(std::wstring_view text, std::wstring_view characters)
{
    return text.find_first_not_of(characters) == std::wstring_view::npos;
}

bool IsComment(std::wstring_view line)
{
    const std::size_t first = line.find_first_not_of(L" \t");
    return first != std::wstring_view::npos && line[first] == L'#';
}

// What separates the fields of a line in the place of commas, in words; empty where nothing does.
std::string ForeignSeparator(std::wstring_view line)
{
    const std::size_t first = line.find_first_not_of(L" \t");
    if (first == std::wstring_view::npos) return {};
    line.remove_prefix(first);
    if (line[0] == L'"' && RankOf(line.substr(1, line.find_first_of(L"\",;\t", 1) - 1)) != UNKNOWN)
        return "quotation marks around its fields";
    const std::size_t end = line.find_first_of(L",;\t");
    if (end == std::wstring_view::npos || line[end] == L',' || RankOf(line.substr(0, end)) == UNKNOWN) return {};
    return line[end] == L';' ? "semicolons between its fields" : "tabs between its fields";
}

class Checker {
public:
    Checker(const CString& text, const ReadingOptions& options, LineNumber firstLine) :
        m_text(text), m_options(options), m_walk(text, firstLine)
    {}

    FileCheck Check(bool isAfterEnd)
    {
        m_walk.Next();
        if (isAfterEnd ? GoToNextMember() : GoPastComments()) {
            do {
                CheckMember();
                if (Now().rank == END) m_walk.Next();
            } while (GoToNextMember());
        }
        std::stable_sort(m_check.defects.begin(), m_check.defects.end(),
                         [](const Defect& a, const Defect& b) { return a.line < b.line; });
        if (m_unlisted > 0) {
            m_check.defects.push_back({m_unlistedError ? Severity::Error : Severity::Warning,
                                       Now().number,
                                       "not-listed",
                                       {},
                                       {},
                                       {},
                                       {},
                                       Count(m_unlisted, "further defect") + " not listed; mend those above first",
                                       m_check.members.size() - 1});
        }
        return std::move(m_check);
    }

private:
    // --- Defects ---

    // A file that is no member file at all would have one in every line.
    static constexpr std::size_t MOST_DEFECTS = 1000;

    void Add(Severity severity, const char* code, const Line& line, std::string field, std::string got,
             std::string expected, std::string advice)
    {
        if (severity == Severity::Warning && m_options.isStrict) severity = Severity::Error;
        if (severity == Severity::Error) m_member.hasErrors = true;
        // Each member keeps a reason of its own, however many defects the file has.
        const bool isFirst = !std::exchange(m_hasDefect[static_cast<std::size_t>(severity)], true);
        if (m_check.defects.size() >= MOST_DEFECTS && !(isFirst && m_isInMember)) {
            ++m_unlisted;
            if (severity == Severity::Error) m_unlistedError = true;
            return;
        }
        const std::string keyword = line.rank == UNKNOWN ? std::string() : WordOf(line.rank);
        m_check.defects.push_back({severity, line.number, code, keyword, std::move(field), std::move(got),
                                   std::move(expected), std::move(advice),
                                   m_isInMember ? m_check.members.size() : Defect::NO_MEMBER});
    }
    void Warn(const char* code, std::string field, std::string got, std::string expected, std::string advice)
    {
        Add(Severity::Warning, code, Now(), std::move(field), std::move(got), std::move(expected), std::move(advice));
    }
    void Note(const char* code, std::string field, std::string got, std::string expected, std::string advice)
    {
        Add(Severity::Note, code, Now(), std::move(field), std::move(got), std::move(expected), std::move(advice));
    }
    // The reader would take something else in its place: nobody can have meant that.
    void Unreadable(const char* code, std::string field, std::string got, std::string expected, std::string advice)
    {
        Add(Severity::Error, code, Now(), std::move(field), std::move(got), std::move(expected), std::move(advice));
    }
    void Refuse(std::string got, std::string expected, std::string advice)
    {
        RefuseAt("line-order", Now(), {}, std::move(got), std::move(expected), std::move(advice));
    }
    void RefuseAt(const char* code, const Line& line, std::string field, std::string got, std::string expected,
                  std::string advice = {})
    {
        m_member.isRefused = true;
        Add(Severity::Error, code, line, std::move(field), std::move(got), std::move(expected), std::move(advice));
    }

    const Line& Now() const { return m_walk.Current(); }
    std::string QuoteLine() const
    {
        if (Now().isPastEnd) return "the end of the file";
        return Now().keyword.empty() && Now().rest.empty() ? "an empty line" : Quote(Now().keyword);
    }

    // --- Lines ---

    void CheckMember()
    {
        m_member = MemberText();
        m_member.firstLine = Now().number;
        m_points.clear();
        m_subSpans.clear();
        m_stop = false;
        m_pending = true;
        m_lostOverridesLine = 0;
        m_givenLengths.reset();
        m_hasDefect = {};
        m_isInMember = true;
        m_isPaddingTold = false;
        const std::size_t start = m_walk.Start();

        if (std::string separator = ForeignSeparator(Now().whole); !separator.empty())
            return RefuseForeignFile(separator, start);
        if (Reach(TITLE)) CheckTitle();
        SkipCaption();
        if (Reach(SECTION)) CheckSection();
        Advance();
        if (Reach(GRADE)) CheckGrade();
        Advance();
        if (Reach(NET_TO_GROSS)) CheckSingleNumber("net to gross ratio");
        Advance();
        if (Reach(PLASTIC_ELASTIC)) CheckSingleNumber("ratio");
        CheckShearLag();
        SkipCaption();
        if (Reach(LENGTH_OVERRIDES)) CheckLengthOverrides();
        CheckFactors();
        CheckPointsAndSubSpans();

        EndMember(start, Now().rank == END ? m_walk.Finish() : m_walk.Start());
    }

    void EndMember(std::size_t start, std::size_t finish)
    {
        m_member.text = m_text.View().substr(start, finish - start);
        m_check.members.push_back(m_member);
        m_isInMember = false;
    }

    // No line of such a file is read: one message in the place of one for each line.
    void RefuseForeignFile(const std::string& separator, std::size_t start)
    {
        m_member.isRefused = true;
        Add(Severity::Error, "separator", Now(), {}, "a file with " + separator,
            "commas between fields, and no quotation marks",
            "save it as CSV with commas between fields, a point in numbers and no quotation marks");
        while (!Now().isPastEnd)
            m_walk.Next();
        EndMember(start, m_walk.Start());
    }

    // Past the comments in front of the first member; whether anything follows them.
    bool GoPastComments()
    {
        bool hasComment = false;
        while (!Now().isPastEnd && IsComment(Now().whole)) {
            hasComment = true;
            m_walk.Next();
        }
        while (hasComment && !Now().isPastEnd && (IsComment(Now().whole) || IsOnlyOf(Now().whole, L" \t\r,")))
            m_walk.Next();
        return true;
    }

    // Past the lines between two members; whether there is another one.
    bool GoToNextMember()
    {
        bool isTold = false;
        while (!Now().isPastEnd && Now().rank != TITLE) {
            const bool isIdle = IsOnlyOf(Now().whole, L" \t\r,") || IsComment(Now().whole);
            if (!isIdle && !isTold) {
                if (std::string separator = ForeignSeparator(Now().whole); !separator.empty()) return true;
                Warn("stray-line", {}, QuoteLine(), "nothing, or the TITLE line of another member",
                     "lines after END are not read; a comment starts with #");
                isTold = true;
            }
            m_walk.Next();
        }
        return !Now().isPastEnd;
    }

    // Goes to the next line, unless the present one is still to be looked at.
    void Advance()
    {
        if (m_stop) return;
        if (!m_pending) m_walk.Next();
        m_pending = false;
    }

    // To the next line, past one line of captions.
    void SkipCaption()
    {
        Advance();
        if (!m_stop && Now().rank == HEADINGS) m_walk.Next();
    }

    // Whether the line that must come now is here. Where it is not, the reader stops; the check looks for the place at
    // which it can go on.
    bool Reach(Rank wanted)
    {
        if (wanted == TITLE) Advance();
        bool isTold = false;
        while (!m_stop) {
            const Line& line = Now();
            if (line.rank == wanted) return true;
            const bool newMember = line.rank == TITLE && wanted != TITLE;
            if (line.isPastEnd || newMember || line.rank > wanted) {
                const std::string got = newMember ? "the TITLE line of another member" : QuoteLine();
                if (!isTold) Refuse(got, LineHere(wanted), LostOverrides(wanted));
                m_stop = line.isPastEnd || newMember;
                m_pending = true;
                return false;
            }
            RefuseStray(LineHere(wanted));
            isTold = true;
            m_walk.Next();
        }
        return false;
    }

    std::string LostOverrides(Rank wanted) const
    {
        if (wanted != LENGTH_OVERRIDES || m_lostOverridesLine == 0) return {};
        return "the one in line " + std::to_string(m_lostOverridesLine) +
               " was taken for the missing SHEAR_LAG_FACTOR line";
    }

    // A line that does not belong here, at which the reader stops.
    void RefuseStray(const std::string& expected)
    {
        const Line& line = Now();
        std::string advice;
        if (line.rank == HEADINGS)
            advice = "only one line of captions is skipped here";
        else if (line.rank != UNKNOWN)
            advice = "the line is in the wrong place";
        else if (line.keyword.empty())
            advice = line.rest.empty() ? "take the line out" : "the line has no keyword";
        else
            advice = UnknownKeyword();
        Refuse(QuoteLine(), expected, advice);
    }

    std::string UnknownKeyword() const
    {
        std::vector<std::wstring_view> words;
        for (const Keyword& keyword : KEYWORDS)
            words.push_back(keyword.word);
        const std::optional<std::wstring> nearest = Nearest(Now().keyword, words);
        return "the keyword is unknown" + (nearest ? "; write " + Utf8(*nearest) : std::string());
    }

    void CheckTitle()
    {
        const FieldList list = SplitFields(Now().rest, 1);
        if (!list.fields.empty()) m_member.title = list.fields[0];
        if (list.count <= 1 || IsPadding(1)) return;
        Warn("title-comma", "title", Quote(Now().rest), "a title without a comma",
             "it is read as " + Quote(m_member.title) + ", the rest is lost");
    }

    void CheckSection()
    {
        const FieldList list = SplitFields(Now().rest, 3);
        const std::wstring_view description = list.fields.empty() ? std::wstring_view() : list.fields[0];
        const std::wstring_view type = list.fields.size() > 1 ? list.fields[1] : std::wstring_view();
        if (list.count == 3 && NumberPrefix(type) > 0 && IsTypeWord(list.fields[2])) {
            const std::wstring joined = std::wstring(description) + L'.' + std::wstring(type);
            Unreadable("decimal-comma", "description", Quote(std::wstring(description) + L',' + std::wstring(type)),
                       "a section without a comma", "write " + Utf8(joined));
            return;
        }
        WarnOfExtraFields(list, 2);
        CheckDescription(description, type);
        if (!IsTypeWord(type)) {
            Warn("section-type", "type", type.empty() ? "nothing" : Quote(type),
                 "ROLLED, WELDED, FORMED or UNDEF, in capitals", "it is read as UNDEF");
        }
    }

    static bool IsTypeWord(std::wstring_view word)
    {
        return word == L"ROLLED" || word == L"WELDED" || word == L"FORMED" || word == L"UNDEF";
    }

    void CheckDescription(std::wstring_view description, std::wstring_view type)
    {
        const CSectDB* const catalogue = CSectDB::GetDatabase();
        CSecDB section(CString(), catalogue);
        if (!section.SetUpFromDesc(CString(description))) {
            std::string names;
            for (const CString& name : catalogue->Suggest(description, 3))
                names += (names.empty() ? "nearest: " : ", ") + Utf8(name);
            constexpr const char* expected = "a catalogue section or a parametric description";
            if (description.empty()) return Unreadable("section", "description", "nothing", expected, {});
            return Unreadable("section", "description", Quote(description), expected, names);
        }
        if (!MakeGeometry(CSection(CString(description)))) {
            return Unreadable("section", "description", Quote(description), "dimensions that fit together to a section",
                              {});
        }
        const CString word = SecTypeString(section.CatalogueType());
        if (section.CatalogueType() != SEC_UNDEF && IsTypeWord(type) && !SameWord(type, word) &&
            !SameWord(type, L"UNDEF")) {
            Warn("section-type", "type", Quote(type), Utf8(word) + ", as the catalogue has this section",
                 "it is read as written");
        }
    }

    void CheckGrade()
    {
        const FieldList list = SplitFields(Now().rest, 6);
        const std::wstring_view name = list.fields.empty() ? std::wstring_view() : list.fields[0];
        if (name.empty()) Unreadable("grade", "name", "nothing", "the name of a grade, or User_defined", {});
        if (!SameWord(name, L"User_defined")) return WarnOfExtraFields(list, 1);
        const double Py = CheckNumber(list, 1, "Py", PASCALS);
        const double Pu = CheckNumber(list, 2, "Pu", PASCALS);
        const double E = CheckNumber(list, 3, "E", PASCALS);
        const double factor = CheckNumber(list, 4, "material factor", RATIO);
        RefuseExtraFields(list, 5);
        constexpr double mostStrength = 1e9;
        constexpr double mostE = 250e9;
        NoteAbove("Py", Py, mostStrength);
        NoteAbove("Pu", Pu, mostStrength);
        NoteAbove("E", E, mostE);
        if (factor > 0.0 && factor < 1.0)
            Note("material-factor", "material factor", Shortest(factor), "1 or above",
                 "below 1 it adds to the strength");
    }

    // Steel has no such value.
    void NoteAbove(const char* name, double value, double most)
    {
        if (!(value > most) || !std::isfinite(value)) return;
        Note("large-strength", name, Shortest(value) + " Pa", "at most " + Shortest(most) + " Pa in steel",
             "is it in Pa?");
    }

    // A line of one number after its keyword.
    double CheckSingleNumber(const char* field)
    {
        const FieldList list = SplitFields(Now().rest, 2);
        if (RefuseDecimalComma(list, 0, 2, field, RATIO)) return 0.0;
        const double value = CheckNumber(list, 0, field, RATIO);
        RefuseExtraFields(list, 1);
        return value;
    }

    // The rules of Tables 18 and 26 of BS 5950-1:2000 give no factor below 0.4.
    void CheckMomentFactor()
    {
        constexpr double least = 0.4;
        const double factor = CheckSingleNumber("factor");
        if (factor > 0.0 && factor < least)
            Note("moment-factor", "factor", Shortest(factor), "0.4 or above, as the rules for it give",
                 "it lowers the moments that are checked for buckling");
    }

    // Whether the current line begins a member: TITLE, perhaps a line of captions, SECTION. In the two places where any
    // line is passed over, a TITLE line by itself is just that.
    bool StartsMember() const
    {
        if (Now().rank != TITLE) return false;
        std::wstring_view rest = m_text.View().substr(m_walk.Finish());
        for (int i = 0; i < 2; ++i) {
            std::wstring_view line = rest.substr(0, rest.find(L'\n'));
            rest.remove_prefix(std::min(line.size() + 1, rest.size()));
            const Rank rank = RankOf(GetSubString(line));
            if (rank != HEADINGS) return rank == SECTION;
        }
        return false;
    }

    // The reader takes the line in this place whatever it is.
    void CheckShearLag()
    {
        Advance();
        if (m_stop) return;
        if (Now().rank == SHEAR_LAG) {
            CheckSingleNumber("factor");
            return;
        }
        const std::string expected = LineHere(SHEAR_LAG);
        if (Now().rank == HEADINGS) {
            Warn("no-shear-lag", {}, QuoteLine(), expected, "the factor keeps the section's value");
        } else if (m_member.isRefused) {
            m_pending = true;
        } else {
            if (Now().rank == LENGTH_OVERRIDES) m_lostOverridesLine = Now().number;
            m_pending = StartsMember() || Now().isPastEnd;
            if (!m_pending) ReportLostLine(expected, {});
        }
    }

    // A line in a place where the reader takes any. One with a keyword held something that somebody meant.
    void ReportLostLine(const std::string& expected, const std::string& advice)
    {
        const bool isKnown = Now().rank != UNKNOWN;
        Add(isKnown ? Severity::Error : Severity::Warning, "lost-line", Now(), {}, QuoteLine(), expected,
            "the line in its place is lost" + advice);
    }

    void CheckLengthOverrides()
    {
        const FieldList list = SplitFields(Now().rest, 5);
        const std::wstring_view word = list.fields.empty() ? std::wstring_view() : list.fields[0];
        if (word == L"YES") {
            m_givenLengths = {{CheckNumber(list, 1, "major-axis length", EFFECTIVE_LENGTH),
                               CheckNumber(list, 2, "minor-axis length", EFFECTIVE_LENGTH),
                               CheckNumber(list, 3, "lateral-torsional length", EFFECTIVE_LENGTH)}};
            m_lengthsLine = Now();
            return RefuseExtraFields(list, 4);
        }
        if (SameWord(word, L"YES"))
            return Unreadable("overrides", "word", Quote(word), "YES or NO", "write YES, in capitals");
        if (!SameWord(word, L"NO"))
            return Unreadable("overrides", "word", word.empty() ? "nothing" : Quote(word), "YES or NO", {});
        WarnOfExtraFields(list, 1);
    }

    // The optional factors, and the line after them, which the reader passes over.
    void CheckFactors()
    {
        Advance();
        if (m_stop) return;
        if (Now().rank == UNIFORM_MOMENT) {
            CheckMomentFactor();
            m_walk.Next();
        }
        bool sawWeakAxis = false;
        while (Now().rank == STRONG_AXIS || Now().rank == WEAK_AXIS) {
            Refuse(Quote(Now().whole), "no such line",
                   "moment amplification factors are not supported by the design codes of this program");
            sawWeakAxis = Now().rank == WEAK_AXIS;
            m_walk.Next();
        }
        if (Now().rank == HEADINGS && !sawWeakAxis) return;
        if (m_member.isRefused || Now().isPastEnd || StartsMember()) {
            m_pending = true;
            return;
        }
        ReportLostLine("a HEADINGS line in front of the points",
                       ": write \"HEADINGS,Index,Position,Restraint int, Load height\" above it");
    }

    void CheckPointsAndSubSpans()
    {
        while (!m_stop) {
            Advance();
            const Line& line = Now();
            if (line.isPastEnd || line.rank == TITLE) {
                Refuse(line.isPastEnd ? "the end of the file" : "the TITLE line of another member",
                       "a MEMBERPOINT, SUBSPAN or END line", "a member ends with END");
                break;
            }
            if (line.rank == MEMBERPOINT) {
                CheckMemberPoint();
            } else if (line.rank == SUBSPAN) {
                CheckSubSpan();
            } else if (line.rank == END) {
                const FieldList list = SplitFields(line.rest, 1);
                WarnOfExtraFields(list, 0);
                break;
            } else if (line.rank != HEADINGS) {
                RefuseStray("a MEMBERPOINT, SUBSPAN or END line");
            }
        }
        CheckLayout();
    }

    // --- Fields ---

    // Whether the line has only empty fields after the first `wanted`, as spreadsheets write them to make all lines as long
    // as the longest. The first such line of a member is a warning.
    bool IsPadding(std::size_t wanted)
    {
        std::wstring_view rest = Now().rest;
        for (std::size_t i = 0; i < wanted; ++i)
            GetSubString(rest);
        if (!IsOnlyOf(rest, L" \t\r,")) return false;
        if (!m_isPaddingTold)
            Warn("padding", {}, "empty fields after the last one", "none",
                 "they are not read, here and in all lines of this member");
        m_isPaddingTold = true;
        return true;
    }

    void WarnOfExtraFields(const FieldList& list, std::size_t wanted)
    {
        if (list.count <= wanted || IsPadding(wanted)) return;
        Warn("extra-fields", {}, Count(list.count, "field"), wanted == 0 ? "none" : Count(wanted, "field"),
             "those after the last one are not read");
    }

    // In a line of numbers a field too many is as a rule the second half of a number.
    void RefuseExtraFields(const FieldList& list, std::size_t wanted)
    {
        if (list.count <= wanted || IsPadding(wanted)) return;
        Unreadable("extra-fields", {}, Count(list.count, "field"), Count(wanted, "field"),
                   "is there a comma within a number?");
    }

    // A line that ends early is one defect, whatever is lost with its rest.
    void RefuseShortLine(const FieldList& list, std::size_t wanted, const char* firstMissing)
    {
        if (list.count >= wanted) return;
        const bool isOne = list.count + 1 == wanted;
        Unreadable("missing-field", {}, Count(list.count, "field"), Count(wanted, "field"),
                   firstMissing + std::string(isOne ? " is missing" : " and what follows it are missing"));
    }

    double CheckNumber(const FieldList& list, std::size_t i, const char* name, const Quantity& quantity)
    {
        const std::wstring_view field = i < list.fields.size() ? list.fields[i] : std::wstring_view();
        std::wstring_view copy = field;
        const double value = GetValueDouble(copy);
        const std::size_t prefix = NumberPrefix(field);
        if (field.empty()) {
            Unreadable("missing-field", name, "nothing", quantity.expected, "write 0 where that is meant");
        } else if (prefix == 0) {
            Unreadable("number", name, Quote(field), quantity.expected, {});
        } else if (prefix < field.size()) {
            Unreadable("number", name, Quote(field), quantity.expected, AdviceOnNumber(field, prefix, quantity));
        } else if (!std::isfinite(value)) {
            Unreadable("number", name, Quote(field), quantity.expected + std::string(" that is finite"), {});
        }
        return value;
    }

    // What is likely meant by a number with other text after it: another unit, or digits in groups.
    static std::string AdviceOnNumber(std::wstring_view field, std::size_t prefix, const Quantity& quantity)
    {
        std::wstring number(field.substr(0, prefix));
        std::wstring_view after = field.substr(prefix);
        const bool hasGroups = after[0] == L' ' && IsOnlyOf(after, L" 0123456789.");
        after = GetSubString(after);
        const auto meant = [&](const Unit& unit) {
            return unit.dimension == quantity.dimension && SameWord(unit.word, after) &&
                   (unit.word[0] != L'M' || unit.word == after);
        };
        const auto* const unit = std::find_if(std::begin(UNITS), std::end(UNITS), meant);
        if (unit != std::end(UNITS) && unit->factor == 1.0) return "write " + Utf8(number);
        if (unit != std::end(UNITS)) {
            std::wstring_view digits = number;
            return "write " + Rounded(GetValueDouble(digits) * unit->factor, 12);
        }
        if (!hasGroups) return {};
        number.assign(field);
        number.erase(std::remove(number.begin(), number.end(), L' '), number.end());
        return NumberPrefix(number) == number.size() ? "write " + Utf8(number) : std::string();
    }

    int CheckWholeNumber(const FieldList& list, std::size_t i, const char* name, const char* expected)
    {
        const std::wstring_view field = i < list.fields.size() ? list.fields[i] : std::wstring_view();
        std::wstring_view copy = field;
        const int value = GetValueInt(copy);
        if (field.empty()) {
            Unreadable("missing-field", name, "nothing", expected, {});
        } else if (WholeNumberPrefix(field) < field.size()) {
            Unreadable("number", name, Quote(field), expected, {});
        } else if (IsClamped(field, value)) {
            Unreadable("number", name, Quote(field), expected + std::string(" within 32 bits"), {});
        }
        return value;
    }

    static bool IsClamped(std::wstring_view digits, int value)
    {
        if (value != std::numeric_limits<int>::max() && value != std::numeric_limits<int>::min()) return false;
        std::wstring_view copy = digits;
        return GetValueDouble(copy) != static_cast<double>(value);
    }

    // "2,5" is two fields, of which one number was meant. The fields after it are then not looked at.
    bool RefuseDecimalComma(const FieldList& list, std::size_t i, std::size_t count, const char* name,
                            const Quantity& quantity)
    {
        if (list.count != count || i + 1 >= list.fields.size()) return false;
        const std::wstring_view whole = list.fields[i];
        const std::wstring_view decimals = list.fields[i + 1];
        if (whole.empty() || WholeNumberPrefix(whole) != whole.size() || decimals.empty()) return false;
        if (decimals[0] < L'0' || decimals[0] > L'9') return false;
        const std::wstring number = std::wstring(whole) + L'.' + std::wstring(decimals);
        Unreadable("decimal-comma", name, Quote(std::wstring(whole) + L',' + std::wstring(decimals)), quantity.expected,
                   "write " + Utf8(std::wstring_view(number).substr(0, NumberPrefix(number))));
        return true;
    }

    void CheckMemberPoint()
    {
        const FieldList list = SplitFields(Now().rest, 6);
        const bool isShifted =
            list.count == 5 && IsRestraintText(list.fields[3]) && RefuseDecimalComma(list, 1, 5, "position", METRES);
        const int index = CheckWholeNumber(list, 0, "index", "a whole number");
        double position = 0.0;
        CRestraint restraint;
        if (isShifted) {
            std::wstring_view field = list.fields[1];
            position = GetValueDouble(field);
        } else {
            static constexpr const char* names[] = {"the index", "the position", "the restraint", "the load height"};
            if (list.count < 4) RefuseShortLine(list, 4, names[list.count]);
            if (list.count > 1) position = CheckNumber(list, 1, "position", METRES);
            if (list.count > 2) CheckRestraint(list, 2, restraint);
            if (list.count > 3 && !RefuseDecimalComma(list, 3, 5, "load height", METRES)) {
                CheckLoadHeight(list, 3, restraint);
                RefuseExtraFields(list, 4);
            }
        }
        CMemberPoint point;
        point.Set1Index(index);
        point.SetPos(position);
        point.SetRestraint(restraint);
        m_points.push_back({point, Now()});
    }

    void CheckSubSpan()
    {
        static constexpr const char* names[] = {"the index", "Fx-L", "Fy-L", "Fz-L",          "Fx-R",
                                                "Fy-R",      "Fz-R", "Mx-L", "My-L",          "Mz-L",
                                                "Mx-R",      "My-R", "Mz-R", "the restraint", "the load height"};
        const FieldList list = SplitFields(Now().rest, 16);
        if (list.count < 15) RefuseShortLine(list, 15, names[list.count]);
        const int index = CheckWholeNumber(list, 0, "index", "a whole number");
        std::array<double, 12> values{};
        for (std::size_t i = 1; i <= values.size() && i < list.count; ++i)
            values[i - 1] = CheckNumber(list, i, names[i], i <= 6 ? NEWTONS : NEWTON_METRES);
        CRestraint restraint;
        if (list.count > 13) CheckRestraint(list, 13, restraint);
        if (list.count > 14 && !RefuseDecimalComma(list, 14, 16, "load height", METRES)) {
            CheckLoadHeight(list, 14, restraint);
            RefuseExtraFields(list, 15);
        }
        CSubSpan subSpan;
        subSpan.Set1Index(index);
        subSpan.SetForcesAll({values[0], values[1], values[2]}, {values[3], values[4], values[5]});
        subSpan.SetMomentsAll({values[6], values[7], values[8]}, {values[9], values[10], values[11]});
        subSpan.SetRestraint(restraint);
        m_subSpans.push_back({subSpan, Now()});
    }

    // A description that is no number.
    static bool IsRestraintText(std::wstring_view field)
    {
        return !field.empty() && NumberPrefix(field) == 0 && CRestraint().SetDescription(CString(field));
    }

    void CheckRestraint(const FieldList& list, std::size_t i, CRestraint& restraint)
    {
        const std::wstring_view field = i < list.fields.size() ? list.fields[i] : std::wstring_view();
        if (field.empty())
            return Unreadable("missing-field", "restraint", "nothing", RestraintExpected(),
                              "write Free where nothing is held");
        if (restraint.SetDescription(CString(field))) {
            const bool saysFree = SameWord(field, L"Free") || SameWord(field, L"None");
            if (restraint.RestFlag() == 0 && !saysFree)
                Unreadable("restraint", "restraint", Quote(field), RestraintExpected(),
                           "it holds nothing: write Free where that is meant");
            return;
        }
        int bits = 0;
        if (!StringTo(field, bits)) {
            std::wstring blanks(field);
            std::replace(blanks.begin(), blanks.end(), L'_', L' ');
            const std::optional<std::wstring> nearest = Nearest(blanks, RESTRAINT_NAMES);
            return Unreadable("restraint", "restraint", Quote(field), RestraintExpected(),
                              nearest ? "write " + Utf8(*nearest) : std::string());
        }
        restraint.SetRestFlag(bits);
        if (IsClamped(field, bits) || (static_cast<unsigned int>(bits) & CRestraint::NON_RESTRAINT_MASK) != 0)
            Unreadable("restraint", "restraint", Quote(field), RestraintExpected(),
                       "it has bits that are no restraints");
    }

    // Read in single precision.
    void CheckLoadHeight(const FieldList& list, std::size_t i, CRestraint& restraint)
    {
        const double written = CheckNumber(list, i, "load height", METRES);
        std::wstring_view field = i < list.fields.size() ? list.fields[i] : std::wstring_view();
        const float height = GetValueFloat(field);
        restraint.SetLoadHeight(height);
        if (std::isfinite(written) && ShortestOfFloat(height) != written) {
            Warn("load-height-digits", "load height", Quote(list.fields[i]), "at most seven significant digits",
                 "single precision rounds it to " + Shortest(ShortestOfFloat(height)));
        }
    }

    // --- The member as a whole ---

    template <class Record>
    struct Placed {
        Record record;
        Line line;
    };

    template <class Record>
    void SortByIndex(std::vector<Placed<Record>>& list)
    {
        const auto less = [](const Placed<Record>& a, const Placed<Record>& b) { return a.record < b.record; };
        const auto stray = std::is_sorted_until(list.begin(), list.end(), less);
        if (stray == list.end()) return;
        Add(Severity::Warning, "index-order", stray->line, "index", std::to_string(stray->record.Get1Index()),
            "lines in ascending order", "lines are read in the order of their indices");
        std::stable_sort(list.begin(), list.end(), less);
    }

    // The rules of the library's validation, with the places, and what the strict reading adds to them.
    void CheckLayout()
    {
        // The member was refused before its first point; there is no layout to check.
        if (m_points.empty() && m_subSpans.empty() && m_member.isRefused) return;
        SortByIndex(m_points);
        SortByIndex(m_subSpans);
        if (m_points.size() != m_subSpans.size() + 1 || m_subSpans.empty()) {
            const std::string expected = m_subSpans.empty() && m_points.size() <= 1
                                             ? "at least two MEMBERPOINT lines and one SUBSPAN line"
                                             : "one SUBSPAN line less than MEMBERPOINT lines";
            RefuseAt("count", Now(), {},
                     Count(m_points.size(), "MEMBERPOINT line") + " and " + Count(m_subSpans.size(), "SUBSPAN line"),
                     expected, {});
        } else if (!m_options.allowGaps) {
            CheckStart();
        }
        for (std::size_t i = 1; i < m_points.size(); ++i)
            CheckPair(m_points[i - 1], m_points[i]);
        CheckSubSpanList();
        if (m_member.hasErrors) return;
        if (m_givenLengths) NoteGivenLengths(*m_givenLengths);
        CheckActions();
    }

    // A length of 0 leaves a mode of buckling out. Lengths that would do as factors are metres all the same.
    void NoteGivenLengths(const std::array<double, 3>& lengths)
    {
        static constexpr const char* names[] = {"major-axis length", "minor-axis length", "lateral-torsional length"};
        constexpr double mostFactor = 2.0;
        const double member = m_points.back().record.GetPos() - m_points.front().record.GetPos();
        const double largest = *std::max_element(lengths.begin(), lengths.end());
        if (largest > 0.0 && largest <= mostFactor && largest < member / 2.0) {
            Add(Severity::Note, "short-lengths", m_lengthsLine, {},
                "effective lengths up to " + Shortest(largest) + " m",
                "lengths in m in a member of " + Shortest(member) + " m",
                "are they factors? write a factor below zero");
        }
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            if (lengths[i] == 0.0)
                Add(Severity::Note, "no-buckling", m_lengthsLine, names[i], "0", "a length, or a factor below zero",
                    "with 0 the member is not checked for this buckling");
        }
    }

    // Where the first point and the first sub-span are lost together, all the others still fit each other.
    void CheckStart()
    {
        static constexpr const char* advice = "is a line lost above it? --allow-gaps permits other numbers";
        const auto expectFirst = [&](const auto& list) {
            if (list.empty() || list.front().record.Get1Index() == 1) return;
            Add(Severity::Error, "first-index", list.front().line, "index",
                std::to_string(list.front().record.Get1Index()), "1 for the first one", advice);
        };
        expectFirst(m_points);
        expectFirst(m_subSpans);
        if (m_points.empty() || m_points.front().record.GetPos() == 0.0) return;
        Add(Severity::Error, "first-position", m_points.front().line, "position",
            Shortest(m_points.front().record.GetPos()), "0 for the first point",
            "is a line lost above it? --allow-gaps permits another start");
    }

    void CheckPair(const Placed<CMemberPoint>& a, const Placed<CMemberPoint>& b)
    {
        const double x = a.record.GetPos();
        const std::string before = " of the point in line " + std::to_string(a.line.number);
        if (x > b.record.GetPos())
            RefuseAt("position", b.line, "position", Shortest(b.record.GetPos()),
                     "a position beyond " + Shortest(x) + before);
        else if (x == b.record.GetPos())
            RefuseAt("position", b.line, "position", Shortest(x), "another position than that" + before);
        const long long index = a.record.Get1Index();
        if (index == b.record.Get1Index())
            RefuseAt("index", b.line, "index", std::to_string(index), "another index than that" + before);
        else if (index + 1 != b.record.Get1Index())
            RefuseAt("index", b.line, "index", std::to_string(b.record.Get1Index()),
                     std::to_string(index + 1) + ", without a gap");
    }

    void CheckSubSpanList()
    {
        for (std::size_t i = 0; i < m_subSpans.size(); ++i) {
            const Placed<CSubSpan>& here = m_subSpans[i];
            if (!(here.record == here.record)) {
                RefuseAt("number", here.line, {}, "a value that is not a finite number",
                         "forces, moments and load height that are numbers");
            }
            if (i == 0) continue;
            const Placed<CSubSpan>& before = m_subSpans[i - 1];
            const long long gap = static_cast<long long>(here.record.Get1Index()) - before.record.Get1Index();
            if (gap == 0) {
                RefuseAt("index", here.line, "index", std::to_string(here.record.Get1Index()),
                         "another index than that of the sub-span in line " + std::to_string(before.line.number));
            } else if (gap > 1 && !m_options.allowGaps) {
                Add(Severity::Error, "index", here.line, "index", std::to_string(here.record.Get1Index()),
                    std::to_string(before.record.Get1Index() + 1LL) + ", without a gap",
                    "is a line lost above it? --allow-gaps permits other numbers");
            }
        }
    }

    // What the forces, moments and restraints of a member that can be read say of each other.
    void CheckActions()
    {
        std::vector<CMemberPoint> points;
        for (const Placed<CMemberPoint>& point : m_points)
            points.push_back(point.record);
        std::vector<CSubSpan> subSpans;
        for (const Placed<CSubSpan>& subSpan : m_subSpans)
            subSpans.push_back(subSpan.record);
        for (ActionFinding& finding : FindInActions(points, subSpans)) {
            const Line& line = finding.isOfPoint ? m_points[finding.index].line : m_subSpans[finding.index].line;
            Add(finding.severity, finding.code, line, std::move(finding.field), std::move(finding.got),
                std::move(finding.expected), std::move(finding.advice));
        }
    }

    const CString& m_text;
    const ReadingOptions m_options;
    LineWalk m_walk;
    FileCheck m_check;
    std::size_t m_unlisted = 0;
    bool m_unlistedError = false;

    // Of the member that is being checked.
    MemberText m_member;
    bool m_isInMember = false;
    std::array<bool, 3> m_hasDefect{}; // by severity
    bool m_isPaddingTold = false;
    std::vector<Placed<CMemberPoint>> m_points;
    std::vector<Placed<CSubSpan>> m_subSpans;
    bool m_stop = false;    // nothing of the member is left
    bool m_pending = false; // the current line is still to be looked at
    LineNumber m_lostOverridesLine = 0;
    std::optional<std::array<double, 3>> m_givenLengths;
    Line m_lengthsLine;
};

} // namespace

const char* SeverityWord(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return "error";
    case Severity::Warning:
        return "warning";
    default:
        return "note";
    }
}

std::string Defect::Message() const
{
    std::string message;
    if (!got.empty()) message = "got " + got;
    if (!expected.empty()) message += (message.empty() ? "expected " : ", expected ") + expected;
    if (!advice.empty()) message += (message.empty() ? "" : "; ") + advice;
    return message;
}

std::string Defect::Statement() const
{
    std::string text = keyword;
    if (!field.empty()) text += (keyword.empty() ? "" : " ") + field;
    if (!text.empty()) text += ": ";
    return text + Message();
}

std::string Defect::Text(const std::string& file) const
{
    const std::string kind = severity == Severity::Error ? std::string() : SeverityWord(severity) + std::string(": ");
    return file + ':' + std::to_string(line) + ": " + kind + Statement();
}

std::size_t FileCheck::Count(Severity severity) const
{
    return static_cast<std::size_t>(std::count_if(
        defects.begin(), defects.end(), [severity](const Defect& defect) { return defect.severity == severity; }));
}

std::vector<Defect> FileCheck::DefectsOf(std::size_t i) const
{
    const auto isBefore = [](const Defect& defect, LineNumber line) { return defect.line < line; };
    // A member that lacks its END is reported in the line that begins the next.
    const LineNumber last = i + 1 < members.size() ? members[i + 1].firstLine : std::numeric_limits<LineNumber>::max();
    std::vector<Defect> found;
    for (auto at = std::lower_bound(defects.begin(), defects.end(), members[i].firstLine, isBefore);
         at != defects.end() && at->line <= last; ++at) {
        if (at->member == i) found.push_back(*at);
    }
    return found;
}

FileCheck CheckMemberFile(const CString& text, const ReadingOptions& options, LineNumber firstLine, bool isAfterEnd)
{
    return Checker(text, options, firstLine).Check(isAfterEnd);
}

} // namespace Keltrix::Host
