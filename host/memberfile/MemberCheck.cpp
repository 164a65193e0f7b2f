#include "memberfile/MemberCheck.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "keltrix/platform/KxData.h"
#include "memberfile/FieldCheck.h"
#include "memberfile/MemberLayoutCheck.h"
#include "sections/SectionShapes.h"
#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

// "a GRADE line here", "an END line here".
std::string LineHere(LineKind kind)
{
    const std::string word = KeywordOf(kind);
    return (std::string_view("AEIOU").find(word[0]) == std::string_view::npos ? "a " : "an ") + word + " line here";
}

bool IsTypeWord(std::wstring_view word)
{
    return word == L"ROLLED" || word == L"WELDED" || word == L"FORMED" || word == L"UNDEF";
}

void CheckDescription(FieldCheck& fields, std::wstring_view description, std::wstring_view type)
{
    const CSectDB* const catalogue = CSectDB::GetDatabase();
    CSecDB section(CString(), catalogue);
    if (!section.SetUpFromDesc(CString(description))) {
        std::string names;
        for (const CString& name : catalogue->Suggest(description, 3))
            names += (names.empty() ? "nearest: " : ", ") + Utf8(name);
        constexpr const char* expected = "a catalogue section or a parametric description";
        if (description.empty()) return fields.Error("section", "description", "nothing", expected);
        return fields.Error("section", "description", Quote(description), expected, names);
    }
    if (!MakeGeometry(CSection(CString(description)))) {
        return fields.Error("section", "description", Quote(description), "dimensions that fit together to a section");
    }
    const CString word = SecTypeString(section.CatalogueType());
    if (section.CatalogueType() != SEC_UNDEF && IsTypeWord(type) && !SameWord(type, word) &&
        !SameWord(type, L"UNDEF")) {
        fields.Warn("section-type", "type", Quote(type), Utf8(word) + ", as the catalogue has this section",
                    "it is read as written");
    }
}

void CheckSection(FieldCheck& fields)
{
    const std::wstring_view description = fields.Field(0);
    const std::wstring_view type = fields.Field(1);
    if (fields.Count() == 3 && NumberPrefix(type) > 0 && IsTypeWord(fields.Field(2))) {
        const std::wstring joined = std::wstring(description) + L'.' + std::wstring(type);
        return fields.Error("decimal-comma", "description",
                            Quote(std::wstring(description) + L',' + std::wstring(type)), "a section without a comma",
                            "write " + Utf8(joined));
    }
    fields.WarnOfExtraFields(2);
    CheckDescription(fields, description, type);
    if (!IsTypeWord(type)) {
        fields.Warn("section-type", "type", type.empty() ? "nothing" : Quote(type),
                    "ROLLED, WELDED, FORMED or UNDEF, in capitals", "it is read as UNDEF");
    }
}

void CheckGrade(FieldCheck& fields)
{
    const std::wstring_view name = fields.Field(0);
    if (name.empty()) fields.Error("grade", "name", "nothing", "the name of a grade, or User_defined");
    if (!SameWord(name, L"User_defined")) return fields.WarnOfExtraFields(1);
    for (std::size_t i = 1; i <= 4; ++i)
        fields.Number(i);
    fields.RefuseExtraFields(5);
}

// The effective lengths, where they are given.
std::optional<std::array<double, 3>> CheckLengthOverrides(FieldCheck& fields)
{
    const std::wstring_view word = fields.Field(0);
    if (word == L"YES") {
        std::array<double, 3> lengths{};
        for (std::size_t i = 0; i < lengths.size(); ++i)
            lengths[i] = fields.Number(i + 1);
        fields.RefuseExtraFields(4);
        return lengths;
    }
    if (SameWord(word, L"YES"))
        fields.Error("overrides", "word", Quote(word), "YES or NO", "write YES, in capitals");
    else if (!SameWord(word, L"NO"))
        fields.Error("overrides", "word", word.empty() ? "nothing" : Quote(word), "YES or NO");
    else
        fields.WarnOfExtraFields(1);
    return std::nullopt;
}

// Goes through the lines in the order of the grammar.
class Checker {
public:
    Checker(const CString& text, const ReadingOptions& options, LineNumber firstLine) :
        m_text(text), m_options(options), m_walk(text, firstLine), m_defects(options.isStrict)
    {}

    FileCheck Check(bool isAfterEnd)
    {
        m_walk.Next();
        if (isAfterEnd ? GoToNextMember() : GoPastComments()) {
            do {
                CheckMember();
                if (Now().kind == LineKind::End) m_walk.Next();
            } while (GoToNextMember());
        }
        m_check.defects = m_defects.Take(Now().number);
        return std::move(m_check);
    }

private:
    const MemberLine& Now() const { return m_walk.Current(); }
    std::string QuoteLine() const
    {
        if (Now().isPastEnd) return "the end of the file";
        return Now().keyword.empty() && Now().rest.empty() ? "an empty line" : Quote(Now().keyword);
    }
    void Refuse(std::string got, std::string expected, std::string advice)
    {
        m_defects.Refuse("line-order", Now(), {}, std::move(got), std::move(expected), std::move(advice));
    }
    void Warn(const char* code, std::string expected, std::string advice)
    {
        m_defects.Add(Severity::Warning, code, Now(), {}, QuoteLine(), std::move(expected), std::move(advice));
    }

    void CheckMember()
    {
        m_member = MemberText();
        m_member.firstLine = Now().number;
        m_layout = MemberLayout();
        m_stop = false;
        m_pending = true;
        m_lostOverridesLine = 0;
        m_defects.BeginMember();
        const std::size_t start = m_walk.Start();

        if (std::string separator = ForeignSeparator(Now().whole); !separator.empty())
            return RefuseForeignFile(separator, start);
        for (const LineRule& rule : MemberLines()) {
            if (rule.place == LinePlace::Required) CheckRequired(rule);
            if (rule.place == LinePlace::Unread) CheckUnread(rule);
        }
        CheckOptionalLines();
        CheckRepeatedLines();
        CheckMemberLayout(m_layout, Now(), m_options.allowGaps, m_defects);
        EndMember(start, Now().kind == LineKind::End ? m_walk.Finish() : m_walk.Start());
    }

    void EndMember(std::size_t start, std::size_t finish)
    {
        m_member.text = m_text.View().substr(start, finish - start);
        m_member.hasErrors = m_defects.HasErrors();
        m_member.isRefused = m_defects.IsRefused();
        m_check.members.push_back(m_member);
        m_defects.EndMember();
    }

    // No line of such a file is read: one message in the place of one for each line.
    void RefuseForeignFile(const std::string& separator, std::size_t start)
    {
        m_defects.Refuse("separator", Now(), {}, "a file with " + separator,
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
        while (!Now().isPastEnd && IsCommentLine(Now().whole)) {
            hasComment = true;
            m_walk.Next();
        }
        while (hasComment && !Now().isPastEnd && (IsCommentLine(Now().whole) || IsIdleLine(Now().whole)))
            m_walk.Next();
        return true;
    }

    // Past the lines between two members; whether there is another one.
    bool GoToNextMember()
    {
        bool isTold = false;
        while (!Now().isPastEnd && Now().kind != LineKind::Title) {
            const bool isIdle = IsIdleLine(Now().whole) || IsCommentLine(Now().whole);
            if (!isIdle && !isTold) {
                if (std::string separator = ForeignSeparator(Now().whole); !separator.empty()) return true;
                Warn("stray-line", "nothing, or the TITLE line of another member",
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

    // To the line of a rule, past one line of captions where there may be one.
    void AdvanceTo(const LineRule& rule)
    {
        Advance();
        if (rule.mayFollowCaption && !m_stop && Now().kind == LineKind::Headings) m_walk.Next();
    }

    void CheckRequired(const LineRule& rule)
    {
        AdvanceTo(rule);
        if (Reach(rule.kind)) CheckFieldsOf(rule);
    }

    void CheckFieldsOf(const LineRule& rule)
    {
        FieldCheck fields(m_defects, Now());
        switch (rule.kind) {
        case LineKind::Title:
            return CheckTitle(fields);
        case LineKind::Section:
            return CheckSection(fields);
        case LineKind::Grade:
            return CheckGrade(fields);
        case LineKind::LengthOverrides:
            m_layout.givenLengths = CheckLengthOverrides(fields);
            m_layout.lengthsLine = Now();
            return;
        default:
            fields.SingleNumber();
        }
    }

    void CheckTitle(FieldCheck& fields)
    {
        m_member.title = fields.Field(0);
        if (fields.Count() <= 1 || fields.IsPadding(1)) return;
        fields.Warn("title-comma", "title", Quote(Now().rest), "a title without a comma",
                    "it is read as " + Quote(m_member.title) + ", the rest is lost");
    }

    // Whether the line that must come now is here. Where it is not, the reader stops; the check looks for the place at
    // which it can go on.
    bool Reach(LineKind wanted)
    {
        bool isTold = false;
        while (!m_stop) {
            const MemberLine& line = Now();
            if (line.kind == wanted) return true;
            const bool newMember = line.kind == LineKind::Title && wanted != LineKind::Title;
            if (line.isPastEnd || newMember || line.kind > wanted) {
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

    std::string LostOverrides(LineKind wanted) const
    {
        if (wanted != LineKind::LengthOverrides || m_lostOverridesLine == 0) return {};
        return "the one in line " + std::to_string(m_lostOverridesLine) +
               " was taken for the missing SHEAR_LAG_FACTOR line";
    }

    // A line that does not belong here, at which the reader stops.
    void RefuseStray(const std::string& expected)
    {
        const MemberLine& line = Now();
        std::string advice;
        if (line.kind == LineKind::Headings)
            advice = "only one line of captions is skipped here";
        else if (line.kind != LineKind::Unknown)
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
        words.reserve(MemberLines().size());
        for (const LineRule& rule : MemberLines())
            words.push_back(rule.word);
        const std::optional<std::wstring> nearest = Nearest(Now().keyword, words);
        return "the keyword is unknown" + (nearest ? "; write " + Utf8(*nearest) : std::string());
    }

    // A place in which the reader takes any line.
    void CheckUnread(const LineRule& rule)
    {
        AdvanceTo(rule);
        if (m_stop) return;
        if (Now().kind == rule.kind) return CheckFieldsOf(rule);
        const std::string expected = LineHere(rule.kind);
        if (Now().kind == LineKind::Headings) {
            Warn("no-shear-lag", expected, "the factor keeps the section's value");
        } else if (m_defects.IsRefused()) {
            m_pending = true;
        } else {
            if (Now().kind == LineKind::LengthOverrides) m_lostOverridesLine = Now().number;
            m_pending = m_walk.StartsMember() || Now().isPastEnd;
            if (!m_pending) ReportLostLine(expected, {});
        }
    }

    // A line in a place where the reader takes any. One with a keyword held something that somebody meant.
    void ReportLostLine(const std::string& expected, const std::string& advice)
    {
        const bool isKnown = Now().kind != LineKind::Unknown;
        m_defects.Add(isKnown ? Severity::Error : Severity::Warning, "lost-line", Now(), {}, QuoteLine(), expected,
                      "the line in its place is lost" + advice);
    }

    bool IsAt(LinePlace place) const { return Now().kind != LineKind::Unknown && RuleOf(Now().kind).place == place; }

    // The optional factors, and the line after them, which the reader passes over.
    void CheckOptionalLines()
    {
        Advance();
        if (m_stop) return;
        if (IsAt(LinePlace::Optional)) {
            CheckFieldsOf(RuleOf(Now().kind));
            m_walk.Next();
        }
        bool sawWeakAxis = false;
        while (IsAt(LinePlace::Unsupported)) {
            Refuse(Quote(Now().whole), "no such line",
                   "moment amplification factors are not supported by the design codes of this program");
            sawWeakAxis = Now().kind == LineKind::WeakAxis;
            m_walk.Next();
        }
        if (Now().kind == LineKind::Headings && !sawWeakAxis) return;
        if (m_defects.IsRefused() || Now().isPastEnd || m_walk.StartsMember()) {
            m_pending = true;
            return;
        }
        std::string caption = CaptionLineOf(LineKind::MemberPoint);
        caption.pop_back();
        ReportLostLine("a HEADINGS line in front of the points", ": write \"" + caption + "\" above it");
    }

    void CheckRepeatedLines()
    {
        while (!m_stop) {
            Advance();
            if (Now().isPastEnd || Now().kind == LineKind::Title) {
                Refuse(Now().isPastEnd ? "the end of the file" : "the TITLE line of another member",
                       RepeatedLinesText(), "a member ends with END");
                return;
            }
            if (IsAt(LinePlace::Repeated)) {
                AddRecord(FieldCheck(m_defects, Now()).All());
            } else if (IsAt(LinePlace::Last)) {
                FieldCheck(m_defects, Now()).WarnOfExtraFields(0);
                return;
            } else if (!IsAt(LinePlace::Caption)) {
                RefuseStray(RepeatedLinesText());
            }
        }
    }

    void AddRecord(const FieldValues& values)
    {
        const auto& n = values.numbers;
        if (Now().kind == LineKind::MemberPoint) {
            Steel::CMemberPoint point;
            point.Set1Index(values.index);
            point.SetPos(n[0]);
            point.SetRestraint(values.restraint);
            m_layout.points.push_back({point, Now()});
            return;
        }
        Steel::CSubSpan subSpan;
        subSpan.Set1Index(values.index);
        subSpan.SetForcesAll({n[0], n[1], n[2]}, {n[3], n[4], n[5]});
        subSpan.SetMomentsAll({n[6], n[7], n[8]}, {n[9], n[10], n[11]});
        subSpan.SetRestraint(values.restraint);
        m_layout.subSpans.push_back({subSpan, Now()});
    }

    const CString& m_text;
    const ReadingOptions m_options;
    LineWalk m_walk;
    DefectList m_defects;
    FileCheck m_check;

    // Of the member that is being checked.
    MemberText m_member;
    MemberLayout m_layout;
    bool m_stop = false;    // nothing of the member is left
    bool m_pending = false; // the current line is still to be looked at
    LineNumber m_lostOverridesLine = 0;
};

} // namespace

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
