#include "MemberCheck.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "Fields.h"
#include "Text.h"
#include "keltrix/platform/KxData.h"
#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::App {

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
    const wchar_t* unit; // forgiven behind the number in a suggestion
};

constexpr Quantity METRES{"a number in m", L"m"};
constexpr Quantity NEWTONS{"a number in N", L"N"};
constexpr Quantity NEWTON_METRES{"a number in N·m", L"Nm"};
constexpr Quantity PASCALS{"a number in Pa", L"Pa"};
constexpr Quantity RATIO{"a number", L""};
constexpr Quantity EFFECTIVE_LENGTH{"a length in m, or below zero minus a factor of the member's length", L"m"};

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
    /// Offset of the current line's first character, and of the one behind its line break.
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

class Checker {
public:
    Checker(const CString& text, LineNumber firstLine) : m_text(text), m_walk(text, firstLine) {}

    FileCheck Check(bool isBehindEnd)
    {
        m_walk.Next();
        if (!isBehindEnd || GoToNextMember()) {
            do {
                CheckMember();
                if (Now().rank == END) m_walk.Next();
            } while (GoToNextMember());
        }
        std::stable_sort(m_check.defects.begin(), m_check.defects.end(),
                         [](const Defect& a, const Defect& b) { return a.line < b.line; });
        if (m_unlisted > 0) {
            m_check.defects.push_back({m_unlistedError ? Severity::Error : Severity::Warning,
                                       m_walk.Current().number,
                                       {},
                                       {},
                                       {},
                                       {},
                                       Count(m_unlisted, "further defect") + " not listed; mend those above first"});
        }
        return std::move(m_check);
    }

private:
    // --- Defects ---

    // A file that is no member file at all would have one in every line.
    static constexpr std::size_t MOST_DEFECTS = 1000;

    void Add(Severity severity, const Line& line, std::string field, std::string got, std::string expected,
             std::string advice)
    {
        if (severity == Severity::Error) m_member.hasErrors = true;
        if (m_check.defects.size() >= MOST_DEFECTS) {
            ++m_unlisted;
            if (severity == Severity::Error) m_unlistedError = true;
            return;
        }
        const std::string keyword = line.rank == UNKNOWN ? std::string() : WordOf(line.rank);
        m_check.defects.push_back(
            {severity, line.number, keyword, std::move(field), std::move(got), std::move(expected), std::move(advice)});
    }
    void Warn(std::string field, std::string got, std::string expected, std::string advice)
    {
        Add(Severity::Warning, Now(), std::move(field), std::move(got), std::move(expected), std::move(advice));
    }
    // The reader would take something else in its place: nobody can have meant that.
    void Unreadable(std::string field, std::string got, std::string expected, std::string advice)
    {
        Add(Severity::Error, Now(), std::move(field), std::move(got), std::move(expected), std::move(advice));
    }
    void Refuse(std::string got, std::string expected, std::string advice)
    {
        RefuseAt(Now(), {}, std::move(got), std::move(expected), std::move(advice));
    }
    void RefuseAt(const Line& line, std::string field, std::string got, std::string expected, std::string advice = {})
    {
        m_member.isRefused = true;
        Add(Severity::Error, line, std::move(field), std::move(got), std::move(expected), std::move(advice));
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
        const std::size_t start = m_walk.Start();

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

        const std::size_t finish = Now().rank == END ? m_walk.Finish() : m_walk.Start();
        m_member.text = m_text.View().substr(start, finish - start);
        m_check.members.push_back(m_member);
    }

    // Past the lines between two members; whether there is another one.
    bool GoToNextMember()
    {
        bool isTold = false;
        while (!Now().isPastEnd && Now().rank != TITLE) {
            const bool isBlank = Now().keyword.empty() && Now().rest.empty();
            if (!isBlank && !isTold) {
                Add(Severity::Warning, Now(), {}, QuoteLine(), "nothing, or the TITLE line of another member",
                    "lines behind END are not read");
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
        if (list.count <= 1) return;
        Warn("title", Quote(Now().rest), "a title without a comma",
             "it is read as " + Quote(m_member.title) + ", the rest is lost");
    }

    void CheckSection()
    {
        const FieldList list = SplitFields(Now().rest, 3);
        const std::wstring_view description = list.fields.empty() ? std::wstring_view() : list.fields[0];
        const std::wstring_view type = list.fields.size() > 1 ? list.fields[1] : std::wstring_view();
        if (list.count == 3 && NumberPrefix(type) > 0 && IsTypeWord(list.fields[2])) {
            const std::wstring joined = std::wstring(description) + L'.' + std::wstring(type);
            Unreadable("description", Quote(std::wstring(description) + L',' + std::wstring(type)),
                       "a section without a comma", "write " + Utf8(joined));
            return;
        }
        WarnOfExtraFields(list, 2);
        CheckDescription(description, type);
        if (!IsTypeWord(type)) {
            Warn("type", type.empty() ? "nothing" : Quote(type), "ROLLED, WELDED, FORMED or UNDEF, in capitals",
                 "it is read as UNDEF");
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
            if (description.empty()) return Warn("description", "nothing", expected, {});
            return Unreadable("description", Quote(description), expected, names);
        }
        const CString word = SecTypeString(section.CatalogueType());
        if (section.CatalogueType() != SEC_UNDEF && IsTypeWord(type) && !SameWord(type, word) &&
            !SameWord(type, L"UNDEF")) {
            Warn("type", Quote(type), Utf8(word) + ", as the catalogue has this section", "it is read as written");
        }
    }

    void CheckGrade()
    {
        const FieldList list = SplitFields(Now().rest, 6);
        const std::wstring_view name = list.fields.empty() ? std::wstring_view() : list.fields[0];
        if (name.empty()) Warn("name", "nothing", "the name of a grade, or User_defined", {});
        if (!SameWord(name, L"User_defined")) return WarnOfExtraFields(list, 1);
        CheckNumber(list, 1, "Py", PASCALS);
        CheckNumber(list, 2, "Pu", PASCALS);
        CheckNumber(list, 3, "E", PASCALS);
        CheckNumber(list, 4, "material factor", RATIO);
        WarnOfExtraFields(list, 5);
    }

    // A line of one number behind its keyword.
    void CheckSingleNumber(const char* field)
    {
        const FieldList list = SplitFields(Now().rest, 2);
        if (RefuseDecimalComma(list, 0, 2, field, RATIO)) return;
        CheckNumber(list, 0, field, RATIO);
        WarnOfExtraFields(list, 1);
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
        if (Now().rank == SHEAR_LAG) return CheckSingleNumber("factor");
        const std::string expected = LineHere(SHEAR_LAG);
        if (Now().rank == HEADINGS) {
            Warn({}, QuoteLine(), expected, "the factor keeps the section's value");
        } else if (m_member.isRefused) {
            m_pending = true;
        } else {
            if (Now().rank == LENGTH_OVERRIDES) m_lostOverridesLine = Now().number;
            m_pending = StartsMember() || Now().isPastEnd;
            if (!m_pending) Warn({}, QuoteLine(), expected, "the line in its place is lost");
        }
    }

    void CheckLengthOverrides()
    {
        const FieldList list = SplitFields(Now().rest, 5);
        const std::wstring_view word = list.fields.empty() ? std::wstring_view() : list.fields[0];
        if (word == L"YES") {
            CheckNumber(list, 1, "major-axis length", EFFECTIVE_LENGTH);
            CheckNumber(list, 2, "minor-axis length", EFFECTIVE_LENGTH);
            CheckNumber(list, 3, "lateral-torsional length", EFFECTIVE_LENGTH);
            return WarnOfExtraFields(list, 4);
        }
        if (SameWord(word, L"YES")) return Unreadable("word", Quote(word), "YES or NO", "write YES, in capitals");
        if (!SameWord(word, L"NO"))
            Warn("word", word.empty() ? "nothing" : Quote(word), "YES or NO", "it is read as NO");
        WarnOfExtraFields(list, 1);
    }

    // The optional factors, and the line behind them, which the reader passes over.
    void CheckFactors()
    {
        Advance();
        if (m_stop) return;
        if (Now().rank == UNIFORM_MOMENT) {
            CheckSingleNumber("factor");
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
        Warn({}, QuoteLine(), "a HEADINGS line in front of the points",
             "the line in its place is lost: write \"HEADINGS,Index,Position,Restraint int, Load height\" above it");
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

    void WarnOfExtraFields(const FieldList& list, std::size_t wanted)
    {
        if (list.count <= wanted) return;
        Warn({}, Count(list.count, "field"), wanted == 0 ? "none" : Count(wanted, "field"),
             "those behind are not read");
    }

    double CheckNumber(const FieldList& list, std::size_t i, const char* name, const Quantity& quantity)
    {
        const std::wstring_view field = i < list.fields.size() ? list.fields[i] : std::wstring_view();
        std::wstring_view copy = field;
        const double value = GetValueDouble(copy);
        const std::size_t prefix = NumberPrefix(field);
        if (field.empty()) {
            Warn(name, "nothing", quantity.expected, "it is read as 0");
        } else if (prefix == 0) {
            Unreadable(name, Quote(field), quantity.expected, {});
        } else if (prefix < field.size()) {
            Warn(name, Quote(field), quantity.expected, AdviceOnNumber(field, prefix, quantity));
        } else if (!std::isfinite(value)) {
            Warn(name, Quote(field), quantity.expected + std::string(" that is finite"),
                 "it is read as " + Shortest(value));
        }
        return value;
    }

    static std::string AdviceOnNumber(std::wstring_view field, std::size_t prefix, const Quantity& quantity)
    {
        const std::string number = Utf8(field.substr(0, prefix));
        std::wstring_view behind = field.substr(prefix);
        behind = GetSubString(behind);
        if (SameWord(behind, quantity.unit)) return "write " + number;
        return "it is read as " + number;
    }

    int CheckWholeNumber(const FieldList& list, std::size_t i, const char* name, const char* expected)
    {
        const std::wstring_view field = i < list.fields.size() ? list.fields[i] : std::wstring_view();
        std::wstring_view copy = field;
        const int value = GetValueInt(copy);
        const std::size_t prefix = WholeNumberPrefix(field);
        const std::string readAs = "it is read as " + std::to_string(value);
        if (field.empty()) {
            Warn(name, "nothing", expected, readAs);
        } else if (prefix == 0) {
            Unreadable(name, Quote(field), expected, {});
        } else if (prefix < field.size()) {
            Warn(name, Quote(field), expected, readAs);
        } else if (IsClamped(field, value)) {
            Warn(name, Quote(field), expected + std::string(" within 32 bits"), readAs);
        }
        return value;
    }

    static bool IsClamped(std::wstring_view digits, int value)
    {
        if (value != std::numeric_limits<int>::max() && value != std::numeric_limits<int>::min()) return false;
        std::wstring_view copy = digits;
        return GetValueDouble(copy) != static_cast<double>(value);
    }

    // "2,5" is two fields, of which one number was meant. The fields behind are then not looked at.
    bool RefuseDecimalComma(const FieldList& list, std::size_t i, std::size_t count, const char* name,
                            const Quantity& quantity)
    {
        if (list.count != count || i + 1 >= list.fields.size()) return false;
        const std::wstring_view whole = list.fields[i];
        const std::wstring_view decimals = list.fields[i + 1];
        if (whole.empty() || WholeNumberPrefix(whole) != whole.size() || decimals.empty()) return false;
        if (decimals[0] < L'0' || decimals[0] > L'9') return false;
        const std::wstring number = std::wstring(whole) + L'.' + std::wstring(decimals);
        Unreadable(name, Quote(std::wstring(whole) + L',' + std::wstring(decimals)), quantity.expected,
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
            position = CheckNumber(list, 1, "position", METRES);
            CheckRestraint(list, 2, restraint);
            CheckLoadHeight(list, 3, restraint);
            WarnOfExtraFields(list, 4);
        }
        CMemberPoint point;
        point.Set1Index(index);
        point.SetPos(position);
        m_points.push_back({point, Now()});
    }

    void CheckSubSpan()
    {
        static constexpr const char* names[] = {"Fx-L", "Fy-L", "Fz-L", "Fx-R", "Fy-R", "Fz-R",
                                                "Mx-L", "My-L", "Mz-L", "Mx-R", "My-R", "Mz-R"};
        const FieldList list = SplitFields(Now().rest, 16);
        const int index = CheckWholeNumber(list, 0, "index", "a whole number");
        std::array<double, 12> values{};
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = CheckNumber(list, i + 1, names[i], i < 6 ? NEWTONS : NEWTON_METRES);
        CRestraint restraint;
        CheckRestraint(list, 13, restraint);
        CheckLoadHeight(list, 14, restraint);
        if (list.count > 15) {
            Warn({}, Count(list.count, "field"), "15 fields", "those behind are not read; is there a decimal comma?");
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
        static constexpr const char* expected = "a restraint as \"Pinned\" or \"F1L TR\", or a number of bits";
        if (i >= list.fields.size()) return Warn("restraint", "nothing", expected, "it is read as Free");
        const std::wstring_view field = list.fields[i];
        if (restraint.SetDescription(CString(field))) {
            const bool saysFree = field.empty() || SameWord(field, L"Free") || SameWord(field, L"None");
            if (restraint.RestFlag() == 0 && !saysFree)
                Warn("restraint", Quote(field), expected, "it holds nothing: write Free where that is meant");
            return;
        }
        int bits = 0;
        if (!StringTo(field, bits)) {
            std::wstring blanks(field);
            std::replace(blanks.begin(), blanks.end(), L'_', L' ');
            const std::optional<std::wstring> nearest = Nearest(blanks, RESTRAINT_NAMES);
            return Unreadable("restraint", Quote(field), expected, nearest ? "write " + Utf8(*nearest) : std::string());
        }
        restraint.SetRestFlag(bits);
        if (IsClamped(field, bits) || (static_cast<unsigned int>(bits) & CRestraint::NON_RESTRAINT_MASK) != 0)
            Warn("restraint", Quote(field), expected, "it has bits that are no restraints");
    }

    // Read in single precision.
    void CheckLoadHeight(const FieldList& list, std::size_t i, CRestraint& restraint)
    {
        const double written = CheckNumber(list, i, "load height", METRES);
        std::wstring_view field = i < list.fields.size() ? list.fields[i] : std::wstring_view();
        const float height = GetValueFloat(field);
        restraint.SetLoadHeight(height);
        if (std::isfinite(written) && ShortestOfFloat(height) != written) {
            Warn("load height", Quote(list.fields[i]), "at most seven significant digits",
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
        Add(Severity::Warning, stray->line, "index", std::to_string(stray->record.Get1Index()),
            "lines in ascending order", "lines are read in the order of their indices");
        std::stable_sort(list.begin(), list.end(), less);
    }

    // The rules of the library's validation, with the places.
    void CheckLayout()
    {
        // Nothing was reached of what is judged here.
        if (m_points.empty() && m_subSpans.empty() && m_member.isRefused) return;
        SortByIndex(m_points);
        SortByIndex(m_subSpans);
        if (m_points.size() != m_subSpans.size() + 1 || m_subSpans.empty()) {
            const std::string expected = m_subSpans.empty() && m_points.size() <= 1
                                             ? "at least two MEMBERPOINT lines and one SUBSPAN line"
                                             : "one SUBSPAN line less than MEMBERPOINT lines";
            Refuse(Count(m_points.size(), "MEMBERPOINT line") + " and " + Count(m_subSpans.size(), "SUBSPAN line"),
                   expected, {});
        }
        for (std::size_t i = 1; i < m_points.size(); ++i)
            CheckPair(m_points[i - 1], m_points[i]);
        CheckSubSpanList();
    }

    void CheckPair(const Placed<CMemberPoint>& a, const Placed<CMemberPoint>& b)
    {
        const double x = a.record.GetPos();
        const std::string before = " of the point in line " + std::to_string(a.line.number);
        if (x > b.record.GetPos())
            RefuseAt(b.line, "position", Shortest(b.record.GetPos()), "a position beyond " + Shortest(x) + before);
        else if (x == b.record.GetPos())
            RefuseAt(b.line, "position", Shortest(x), "another position than that" + before);
        const long long index = a.record.Get1Index();
        if (index == b.record.Get1Index())
            RefuseAt(b.line, "index", std::to_string(index), "another index than that" + before);
        else if (index + 1 != b.record.Get1Index())
            RefuseAt(b.line, "index", std::to_string(b.record.Get1Index()),
                     std::to_string(index + 1) + ", without a gap");
    }

    void CheckSubSpanList()
    {
        for (std::size_t i = 0; i < m_subSpans.size(); ++i) {
            const Placed<CSubSpan>& here = m_subSpans[i];
            if (!(here.record == here.record)) {
                RefuseAt(here.line, {}, "a value that is not a finite number",
                         "forces, moments and load height that are numbers");
            }
            if (i == 0) continue;
            const Placed<CSubSpan>& before = m_subSpans[i - 1];
            const long long gap = static_cast<long long>(here.record.Get1Index()) - before.record.Get1Index();
            if (gap == 0) {
                RefuseAt(here.line, "index", std::to_string(here.record.Get1Index()),
                         "another index than that of the sub-span in line " + std::to_string(before.line.number));
            } else if (gap > 1)
                Add(Severity::Warning, here.line, "index", std::to_string(here.record.Get1Index()),
                    std::to_string(before.record.Get1Index() + 1LL),
                    "sub-spans lie between the points one after another, whatever their indices");
        }
    }

    const CString& m_text;
    LineWalk m_walk;
    FileCheck m_check;
    std::size_t m_unlisted = 0;
    bool m_unlistedError = false;

    // Of the member that is being checked.
    MemberText m_member;
    std::vector<Placed<CMemberPoint>> m_points;
    std::vector<Placed<CSubSpan>> m_subSpans;
    bool m_stop = false;    // nothing of the member is left
    bool m_pending = false; // the current line is still to be looked at
    LineNumber m_lostOverridesLine = 0;
};

} // namespace

std::string Defect::Message() const
{
    std::string message;
    if (!got.empty()) message = "got " + got;
    if (!expected.empty()) message += (message.empty() ? "expected " : ", expected ") + expected;
    if (!advice.empty()) message += (message.empty() ? "" : "; ") + advice;
    return message;
}

std::string Defect::Text(const std::string& file) const
{
    std::string text = file + ':' + std::to_string(line) + ": ";
    if (severity == Severity::Warning) text += "warning: ";
    text += keyword;
    if (!field.empty()) text += (keyword.empty() ? "" : " ") + field;
    if (!keyword.empty() || !field.empty()) text += ": ";
    return text + Message();
}

std::size_t FileCheck::Errors() const
{
    return static_cast<std::size_t>(std::count_if(
        defects.begin(), defects.end(), [](const Defect& defect) { return defect.severity == Severity::Error; }));
}

std::size_t FileCheck::Warnings() const { return defects.size() - Errors(); }

FileCheck CheckMemberFile(const CString& text, LineNumber firstLine, bool isBehindEnd)
{
    return Checker(text, firstLine).Check(isBehindEnd);
}

} // namespace Keltrix::App
