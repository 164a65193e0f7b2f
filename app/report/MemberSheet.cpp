#include "report/MemberSheet.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "Html.h"
#include "Markup.h"
#include "Render.h"
#include "ReportKey.h"
#include "SectionCatalogue.h"
#include "SectionShapes.h"
#include "SectionValues.h"
#include "Text.h"
#include "report/Diagrams.h"
#include "report/Join.h"
#include "report/MemberDrawing.h"
#include "report/SectionSheet.h"
#include "report/UtilisationChart.h"

namespace Keltrix::App {

namespace {

using Design::RuleFinding;
using Steel::CMemberResult;

std::string Wording(const wchar_t* text) { return EscapedHtml(Utf8(std::wstring_view(text))); }

std::string UtilText(double utilisation) { return EscapedHtml(Utf8(CDesFormat().Util(utilisation))); }

std::string Metres(double value) { return WithUnitsKept(Rounded(value, 5) + " m"); }

// A user's text keeps its own direction of writing to itself.
std::string Isolated(const std::string& text) { return "<bdi>" + EscapedHtml(text) + "</bdi>"; }

// --- Title block and verdict ---

// Who has not signed yet finds the place.
std::string SignaturesHtml(const TitleBlock& block)
{
    if (block.made.IsEmpty() && block.checked.IsEmpty() && block.approved.IsEmpty()) return {};
    std::string html = "<table class=\"block signatures\">\n<caption class=\"skip\">Signatures</caption>\n<tbody>\n";
    const auto add = [&](const char* word, const Signature& signature) {
        html.append("<tr><th scope=\"row\">").append(word).append("</th><td>").append(Isolated(signature.name));
        html.append("</td><th scope=\"row\">Date</th><td>").append(Isolated(signature.date)).append("</td></tr>\n");
    };
    add("Made", block.made);
    add("Checked", block.checked);
    add("Approved", block.approved);
    return html + "</tbody></table>\n";
}

std::string Edition(const Design::DesignCode& code)
{
    const std::string edition = Wording(code.Description().edition);
    return edition.empty() ? edition : ", " + edition;
}

std::string TitleBlockHtml(const CheckedMember& checked, const TitleBlock& block)
{
    std::vector<std::pair<std::string, std::string>> cells;
    const auto add = [&](const char* name, const std::string& html) {
        if (!html.empty()) cells.emplace_back(name, html);
    };
    const auto given = [](const std::string& text) { return text.empty() ? text : Isolated(text); };
    add("Client", given(block.client));
    add("Project", given(block.project));
    add("Job", given(block.job));
    add("Revision", given(block.revision));
    add("Member", given(block.member));
    add("Section", Isolated(checked.Section()) + ", grade " + EscapedHtml(checked.Grade()));
    add("Code", EscapedHtml(Utf8(checked.member->DesOptName(checked.member->DesOpt()))) + Edition(*checked.code));
    add("Forces from", given(block.forces));
    add("File", Isolated(checked.name));
    add("Program", "ksteel " + EscapedHtml(block.version));

    std::string html = "<table class=\"block\">\n<caption class=\"skip\">Title block</caption>\n";
    for (std::size_t i = 0; i < cells.size(); i += 2) {
        html += "<tr><th scope=\"row\">" + cells[i].first + "</th><td>" + cells[i].second + "</td>";
        if (i + 1 < cells.size())
            html += "<th scope=\"row\">" + cells[i + 1].first + "</th><td>" + cells[i + 1].second + "</td>";
        else
            html += "<td colspan=\"2\"></td>";
        html += "</tr>\n";
    }
    return html + "</table>\n" + SignaturesHtml(block);
}

// Right below the verdict, which does not hold without them.
std::string WarningsHtml(const CheckedMember& checked)
{
    if (checked.warnings.empty()) return {};
    std::string html = "<div class=\"warnings\" role=\"note\">\n<p><strong>" + CountText(checked.warnings) +
                       ". Read before this sheet is used:</strong></p>\n<ul>\n";
    for (const MemberWarning& warning : checked.warnings)
        html += "<li><strong>" + std::string(SeverityWord(warning.severity)) + "</strong>, " +
                Isolated(warning.file + ':' + std::to_string(warning.line)) + ": " + EscapedHtml(warning.text) +
                "</li>\n";
    return html + "</ul>\n</div>\n";
}

std::string VerdictHtml(const CheckedMember& checked)
{
    const std::string status = checked.Status();
    std::string html = status == "pass" ? "<p class=\"verdict\">" : "<p class=\"verdict fails\">";
    html += StatusHtml(status) +
            (checked.warnings.empty() ? "" : ", <span class=\"orange\">" + CountText(checked.warnings) + "</span>") +
            ", utilisation <b>" + UtilText(checked.result->UtilOverAll()) + "</b>, governed by " +
            EscapedHtml(WithUnitsKept(checked.Governing()));
    return html + ".</p>\n" + WarningsHtml(checked);
}

// --- Member ---

std::string TableHead(const char* caption, std::initializer_list<const char*> names,
                      std::initializer_list<const char*> numbers, std::initializer_list<const char*> others)
{
    std::string html =
        "<table class=\"wide\">\n<caption class=\"skip\">" + std::string(caption) + "</caption>\n<thead><tr>";
    const auto add = [&](const char* name, const char* attribute) {
        html.append("<th scope=\"col\"").append(attribute).append(">").append(name).append("</th>");
    };
    for (const char* name : names)
        add(name, "");
    for (const char* name : numbers)
        add(name, " class=\"n\"");
    for (const char* name : others)
        add(name, "");
    return html + "</tr></thead>\n<tbody>\n";
}

// Nothing in the input says how a member stands. One whose axial force causes more stress than its moments is no beam.
std::string StandingHtml(const DrawnLayout& layout, const CSection& section)
{
    const auto geometry = MakeGeometry(section);
    if (!geometry) return {};
    double axial = 0.0; // the largest stress, tension above zero
    double bending = 0.0;
    const auto add = [&](const Vec3<double>& forces, const Vec3<double>& moments) {
        if (std::fabs(forces.x) > std::fabs(axial) * geometry->Area()) axial = forces.x / geometry->Area();
        bending = std::max(bending, std::fabs(moments.y) / geometry->Zxx() + std::fabs(moments.z) / geometry->Zyy());
    };
    for (std::size_t k = 0; k < layout.SubSpanCount(); ++k) {
        add(layout.subSpans[k].GetForcesLeft(), layout.subSpans[k].GetMomentsLeft());
        add(layout.subSpans[k].GetForcesRight(), layout.subSpans[k].GetMomentsRight());
    }
    if (!(std::fabs(axial) > bending)) return {};
    return "<p class=\"muted\">" + std::string(axial < 0.0 ? "Column, strut or brace" : "Tie or brace") +
           ", by its axial force: drawn lying down, point 1 at the left. The input does not say how it stands; top and "
           "bottom are those of the drawing.</p>\n";
}

std::string PointTable(const DrawnLayout& layout)
{
    std::string html = TableHead("Member points", {"Point"}, {"At"}, {"Restraint", "What it holds", "Load height"});
    for (std::size_t i = 0; i < layout.points.size(); ++i) {
        const Steel::CRestraint restraint = layout.points[i].GetRestraint();
        html += "<tr><th scope=\"row\">" + std::to_string(i + 1) + "</th><td class=\"n\">" +
                Metres(layout.points[i].GetPos()) + "</td><td>" + EscapedHtml(Utf8(restraint.UserDescription())) +
                "</td><td>" + HoldWords(RestraintOfPoint(layout, i)) + "</td><td>" +
                (restraint.LoadHeight() == 0.0 ? "0" : Metres(restraint.LoadHeight())) + "</td></tr>\n";
    }
    return html + "</tbody></table>\n";
}

// In the short form: as many points as leave room for the rest.
std::string FewPoints(const DrawnLayout& layout)
{
    constexpr std::size_t most = 6;
    if (layout.points.size() <= most) return PointTable(layout);
    return "<p class=\"muted\">The " + std::to_string(layout.points.size()) +
           " points and what holds each are in the full sheet.</p>\n";
}

std::string SubSpanTable(const DrawnLayout& layout)
{
    std::string html = TableHead("Sub-spans", {"Sub-span"}, {"From", "To"}, {"Restraint along it", "What it holds"});
    for (std::size_t k = 0; k < layout.SubSpanCount(); ++k) {
        const Steel::CSubSpan& subSpan = layout.subSpans[k];
        html += "<tr><th scope=\"row\">" + std::to_string(k + 1) + "</th><td class=\"n\">" +
                Metres(layout.points[k].GetPos()) + "</td><td class=\"n\">" + Metres(layout.points[k + 1].GetPos()) +
                "</td><td>" + EscapedHtml(Utf8(subSpan.GetRestraint().UserDescription())) + "</td><td>" +
                HoldWords(RestraintOfSubSpan(subSpan)) + "</td></tr>\n";
    }
    return html + "</tbody></table>\n";
}

std::string ActionsHtml(const std::string& id, const DrawnLayout& layout, const MemberAxis& axis)
{
    std::string html;
    std::string absent;
    for (const ActionDiagram& diagram : ActionDiagrams(layout)) {
        if (diagram.IsZero())
            AddItem(absent, ", ", diagram.symbol);
        else
            html += "<figure class=\"action\">" + DiagramSvg(id + "-" + diagram.symbol, diagram, layout, axis) +
                    "</figure>\n";
    }
    if (!absent.empty()) html += "<p class=\"muted\">Zero along the whole member: " + absent + ".</p>\n";
    return html + "<p class=\"muted\">Axes of the host: tension above zero; a major-axis moment above zero compresses "
                  "flange 2, "
                  "the bottom flange.</p>\n";
}

// --- Section ---

std::string ValueTable(const char* caption, const std::vector<SectionValue>& values, bool isDimension)
{
    std::string html = "<table>\n<caption class=\"skip\">" + std::string(caption) + "</caption>\n<tbody>\n";
    for (const SectionValue& value : values)
        html += "<tr><th scope=\"row\">" + EscapedHtml(value.symbol) + "</th><td class=\"n\">" +
                (isDimension ? Rounded : Figures)(value.si * value.factor, isDimension ? 6 : 4) + "</td><td>" +
                EscapedHtml(value.unit) + "</td></tr>\n";
    return html + "</tbody></table>\n";
}

std::string ClassAndStrength(const CheckedMember& checked)
{
    return "<p>Class " + std::to_string(checked.member->SectionClass()) + ", design strength " +
           Wording(checked.findings.designStrength.symbol) + " = " +
           EscapedHtml(Utf8(CDesFormat().Stress(checked.findings.designStrength.value))) + "</p>\n";
}

std::string SectionHtml(const std::string& id, const CheckedMember& checked)
{
    const CSection section = checked.member->GetKeltrixSec();
    std::string html = "<div class=\"split\">\n<figure>" +
                       SectionSheetSvg(id + "-section", section, checked.Section()) + "</figure>\n" +
                       ValueTable("Dimensions", SectionDimensionValues(section), true);
    std::vector<SectionValue> values = SectionPropertyValues(section);
    const std::size_t half = (values.size() + 1) / 2;
    const std::vector<SectionValue> rest(values.begin() + static_cast<std::ptrdiff_t>(half), values.end());
    values.resize(half);
    html += ValueTable("Properties", values, false) + ValueTable("More properties", rest, false) + "</div>\n";
    return html + ClassAndStrength(checked);
}

// In the short form: in one paragraph.
std::string SectionLine(const CheckedMember& checked)
{
    const CSection section = checked.member->GetKeltrixSec();
    std::string text;
    const auto add = [&](const SectionValue& value, const std::string& number) {
        AddItem(text, ", ", EscapedHtml(WithUnitsKept(value.symbol + " = " + number + ' ' + value.unit)));
    };
    for (const SectionValue& value : SectionDimensionValues(section))
        add(value, Rounded(value.si * value.factor, 6));
    for (const SectionValue& value : SectionPropertyValues(section))
        add(value, Figures(value.si * value.factor, 4));
    return "<p>" + text + "</p>\n" + ClassAndStrength(checked);
}

// --- Checks ---

std::string ResistanceText(const RuleFinding& entry)
{
    if (std::isnan(entry.resistance)) return {};
    const CString value = Design::QuantityText(entry.quantity, entry.resistance, CDesFormat());
    return Wording(entry.symbol) + " = " + EscapedHtml(Utf8(value));
}

std::string PlaceText(const RuleFinding& entry)
{
    if (std::isnan(entry.start)) return {};
    return entry.start == entry.end ? "at " + Metres(entry.start) : Metres(entry.start) + " to " + Metres(entry.end);
}

std::string CheckRow(const RuleFinding& entry)
{
    const bool fails = entry.status == Design::CheckStatus::Failed;
    std::string html = entry.governing ? "<tr class=\"governs\">" : "<tr>";
    html += "<td>" + Wording(entry.name) + (entry.governing ? " (governs)" : "") + "</td><td>" + Wording(entry.clause) +
            "</td><td>" + PlaceText(entry) + "</td><td class=\"n\">" +
            (entry.utilisation == 0.0 ? std::string() : UtilText(entry.utilisation)) + "</td><td class=\"n\">" +
            ResistanceText(entry) + "</td><td>" + StatusHtml(fails ? "fail" : "pass");
    if (entry.reason[0] != L'\0') html += ": " + Wording(entry.reason);
    return html + "</td></tr>\n";
}

// In the short form with the largest utilisation of each rule, and every failure.
std::string CheckTable(const Design::MemberFindings& findings, bool isBrief)
{
    std::string html = TableHead("Checks that were evaluated", {"Check", "Clause", "Where"},
                                 {"Utilisation", "Resistance"}, {"Result"});
    for (const RuleFinding& entry : findings.rules) {
        const bool isShown =
            !isBrief || entry.status == Design::CheckStatus::Failed || &entry == findings.Worst(entry.rule);
        if (entry.WasEvaluated() && isShown) html += CheckRow(entry);
    }
    return html + "</tbody></table>\n";
}

// What lies outside the input, in one sentence.
std::string OutsideHtml(const Design::MemberFindings& findings)
{
    std::string rules;
    for (const RuleFinding& entry : findings.rules) {
        if (entry.status != Design::CheckStatus::OutOfScope) continue;
        rules += (rules.empty() ? "" : "; ") + Wording(entry.name) + " (" + Wording(entry.clause) + ")";
    }
    return rules.empty() ? std::string() : "<p>Outside the input, to be checked by other means: " + rules + ".</p>\n";
}

// What was not evaluated comes before what does not apply: the engineer has to look after it. The short form leaves out what does
// not apply, and only names what lies outside the input.
std::string IdleTable(const Design::MemberFindings& findings, bool isBrief)
{
    std::string rows;
    for (const Design::CheckStatus status :
         {Design::CheckStatus::NotEvaluated, Design::CheckStatus::OutOfScope, Design::CheckStatus::NotApplicable}) {
        if (isBrief && status != Design::CheckStatus::NotEvaluated) break;
        for (const RuleFinding& entry : findings.rules) {
            if (entry.status != status) continue;
            rows += "<tr><td>" + Wording(entry.name) + "</td><td>" + Wording(entry.clause) + "</td><td>" +
                    Wording(Design::StatusName(status)) + ": " + Wording(entry.reason);
            if (const std::string place = PlaceText(entry); !place.empty()) rows += ", " + place;
            rows += "</td></tr>\n";
        }
    }
    const std::string outside = isBrief ? OutsideHtml(findings) : std::string();
    if (rows.empty()) return "<div class=\"small\">\n" + outside + "</div>\n";
    return "<div class=\"small\">\n" +
           TableHead("Checks without a result", {"Check without a result", "Clause", "Why"}, {}, {}) + rows +
           "</tbody></table>\n" + outside + "</div>\n";
}

std::string ListHtml(const std::vector<std::string>& sentences, const char* none)
{
    if (sentences.empty()) return "<p>" + std::string(none) + "</p>\n";
    std::string html = "<ul>\n";
    for (const std::string& sentence : sentences)
        html += "<li>" + EscapedHtml(sentence) + "</li>\n";
    return html + "</ul>\n";
}

std::vector<std::string> AssumptionSentences(const Design::MemberFindings& findings)
{
    std::vector<std::string> sentences;
    for (const Design::Assumption& assumption : findings.assumptions)
        sentences.push_back(Utf8(std::wstring_view(assumption.name)) + ": " +
                            Utf8(Design::AssumptionText(assumption, CDesFormat())));
    return sentences;
}

// --- Calculation ---

std::string PlainText(const Document::Line& line)
{
    std::string text;
    for (const Document::Cell& cell : line.cells)
        for (const Document::Run& run : cell)
            text += run.text;
    return text;
}

// The largest utilisation that a part of the report comes to, as it stands there: a bold number after an equals sign.
std::string LargestResult(const Document& part)
{
    std::string largest;
    double value = -1.0;
    for (const Document::Line& line : part.lines) {
        for (const Document::Cell& cell : line.cells) {
            for (std::size_t i = 1; i < cell.size(); ++i) {
                if (!cell[i].style.bold || !cell[i - 1].text.ends_with("= ")) continue;
                CString text = Wide(cell[i].text);
                const double number = text.CompareNoCase(L"inf") == 0 ? HUGE_VAL : GetValueDouble(text);
                if (!(number > value)) continue;
                value = number;
                largest = cell[i].text;
            }
        }
    }
    return largest;
}

bool HasColour(const Document& part, bool isRed = false)
{
    for (const Document::Line& line : part.lines)
        for (const Document::Cell& cell : line.cells)
            for (const Document::Run& run : cell)
                if (isRed ? run.style.colour == Document::Colour::Red : run.style.colour != Document::Colour::None)
                    return true;
    return false;
}

// Where the short form looks: the position, or the span, of the largest utilisation, and all others, as headings have them.
class GoverningPlace {
public:
    struct Place {
        double start;
        double end; // start, where it is a position
    };

    GoverningPlace(const Design::MemberFindings& findings, const std::vector<Place>& places, bool isSpan)
    {
        const RuleFinding* worst = nullptr;
        for (const RuleFinding& entry : findings.rules) {
            const bool isOne = entry.WasEvaluated() && !std::isnan(entry.start) && (entry.start < entry.end) == isSpan;
            // Not-a-number is worse than any number.
            if (isOne && (!worst || !(entry.utilisation <= worst->utilisation))) worst = &entry;
        }
        if (!worst) return;
        for (const Place& place : places) {
            const bool isThere =
                isSpan ? place.start < worst->end && worst->start < place.end : place.start == worst->start;
            RuleFinding named = *worst;
            named.start = place.start;
            named.end = place.end;
            (isThere ? m_governing : m_other).push_back(DescribePlace(named));
        }
    }

    // A heading without a known place is about the governing one as well as any other.
    bool IsIn(const std::string& heading) const
    {
        const auto holds = [&](const std::string& place) {
            const std::size_t at = heading.find(place);
            return at != std::string::npos && (at == 0 || heading[at - 1] == ' ');
        };
        return std::any_of(m_governing.begin(), m_governing.end(), holds) ||
               std::none_of(m_other.begin(), m_other.end(), holds);
    }

private:
    std::vector<std::string> m_governing;
    std::vector<std::string> m_other;
};

// The report in parts: each heading of the fifth level begins one that can be folded.
class CalculationHtml {
public:
    CalculationHtml() = default;
    // The short form: the governing position and span alone, unfolded, with what came to a result or a remark there.
    explicit CalculationHtml(const Design::MemberFindings& findings) : m_isBrief(true)
    {
        std::vector<GoverningPlace::Place> positions;
        std::vector<GoverningPlace::Place> spans;
        for (const Design::LocalFinding& position : findings.positions)
            positions.push_back({position.x, position.x});
        for (const Design::SpanFinding& span : findings.spans)
            spans.push_back({span.start, span.end});
        m_position.emplace(findings, positions, false);
        m_span.emplace(findings, spans, true);
    }

    std::string Of(Document report)
    {
        for (Document::Line& line : report.lines) {
            if (line.heading == 4) {
                Flush();
                m_isShown = IsShown(PlainText(line));
            } else if (line.heading == 5) {
                Flush();
                m_isPart = true;
            }
            if (m_isShown) m_part.lines.push_back(std::move(line));
        }
        Flush();
        return std::move(m_html);
    }

private:
    bool IsShown(const std::string& heading)
    {
        const bool isLocal = heading.starts_with("Local capacity checks");
        m_place = isLocal ? &m_position : &m_span;
        if (m_isBrief) return isLocal || heading.starts_with("Buckling checks");
        // The ledger stands in the table of checks.
        return !heading.starts_with("Ledger of checks");
    }

    bool IsLeftOut(const Document& part) const
    {
        const bool isEmpty = LargestResult(part).empty() && !HasColour(part);
        return m_isBrief && (isEmpty || !(*m_place)->IsIn(PlainText(part.lines.front())));
    }

    void Flush()
    {
        Document part = std::exchange(m_part, {});
        const bool isPart = std::exchange(m_isPart, false);
        if (part.lines.empty() || (isPart && IsLeftOut(part))) return;
        if (!isPart || part.lines.size() == 1) {
            m_html += RenderHtml(std::move(part));
            return;
        }
        Document heading;
        heading.lines.push_back(std::move(part.lines.front()));
        part.lines.erase(part.lines.begin());
        const bool fails = HasColour(part, true);
        std::string result = LargestResult(part);
        if (!result.empty())
            result = "<span class=\"result" + std::string(fails ? " fail" : "") + "\">" + EscapedHtml(result) +
                     (fails ? " fails" : "") + "</span>";
        std::string title = RenderHtml(std::move(heading));
        title.pop_back();
        m_html += (fails || m_isBrief ? "<details open><summary>" : "<details><summary>") + title + result +
                  "</summary>\n" + RenderHtml(std::move(part)) + "</details>\n";
    }

    std::string m_html;
    Document m_part;
    bool m_isPart = false;
    bool m_isShown = true;
    bool m_isBrief = false;
    std::optional<GoverningPlace> m_position;
    std::optional<GoverningPlace> m_span;
    const std::optional<GoverningPlace>* m_place = &m_span; // of the parts at hand
};

std::string Part(const std::string& id, const char* name, const char* title, const std::string& content)
{
    const std::string label = id + '-' + name;
    return "<section aria-labelledby=\"" + label + "\">\n<h3 id=\"" + label + "\">" + title + "</h3>\n" + content +
           "</section>\n";
}

struct FlagSentence {
    int flag;
    const char* sentence;
};

constexpr FlagSentence FLAG_SENTENCES[] = {
    {CMemberResult::NOTIFY, "there is something to read below"},
    {CMemberResult::WARNING, "a check is at its limit, has failed or needs the engineer's judgement"},
    {CMemberResult::FAIL, "the member fails"},
    {CMemberResult::NOT_CHECKED, "an action or a condition is outside of the rules that were checked"},
    {CMemberResult::FAIL_LOCAL, "a cross-section check fails"},
    {CMemberResult::FAIL_BUCKLE, "a buckling check fails"},
    {CMemberResult::FAIL_BUCKLE_LAT_TORS, "the member fails in lateral-torsional buckling"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_MAJOR, "the member fails in compression buckling about the major axis"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_MINOR, "the member fails in compression buckling about the minor axis"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_TORSION, "the member fails in torsional buckling"},
    {CMemberResult::FAIL_BUCKLE_AXIAL_FLEXURAL_TORSION, "the member fails in flexural-torsional buckling"},
    {CMemberResult::FAIL_LOCAL_AXIAL, "the axial force exceeds the capacity of the cross-section"},
    {CMemberResult::FAIL_LOCAL_BENDING_MAJOR, "the major-axis moment exceeds the moment capacity"},
    {CMemberResult::FAIL_LOCAL_BENDING_MINOR, "the minor-axis moment exceeds the moment capacity"},
    {CMemberResult::FAIL_LOCAL_SHEAR_MAJOR, "the shear along the web exceeds the shear capacity"},
    {CMemberResult::FAIL_LOCAL_SHEAR_MINOR, "the shear along the flanges exceeds the shear capacity"},
    {CMemberResult::FAIL_LOCAL_TORSION, "the torsion exceeds the capacity of the cross-section"},
    {CMemberResult::INFO_LOCAL_SLENDER, "the cross-section is slender (class 4)"},
    {CMemberResult::INFO_LOCAL_SLENDER_WEB, "the web is slender"},
    {CMemberResult::INFO_LOCAL_SLENDER_FLANGE, "the flange is slender"},
    {CMemberResult::INFO_MEMBER_SLENDER, "the member is very slender"},
};

} // namespace

std::string WithUnitsKept(const std::string& text)
{
    static constexpr std::string_view noBreak = "\xC2\xA0";
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    std::string kept;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isGap =
            text[i] == ' ' && i > 0 && i + 1 < text.size() && isDigit(text[i - 1]) && isLetter(text[i + 1]);
        // "0 m to 3 m": a unit, and no word that follows a number.
        const bool endsSoon = i + 2 >= text.size() || !isLetter(text[i + 2]);
        if (isGap && endsSoon)
            kept += noBreak;
        else
            kept += text[i];
    }
    return kept;
}

std::string StatusHtml(const std::string& status)
{
    return "<span class=\"" + std::string(status == "pass" ? "pass" : "fail") + "\">" +
           (status == "pass"   ? "Passes"
            : status == "fail" ? "Fails"
                               : "Not checked") +
           "</span>";
}

std::vector<std::string> FlagSentences(int flags)
{
    std::vector<std::string> sentences;
    for (const FlagSentence& known : FLAG_SENTENCES) {
        if (flags & known.flag) sentences.push_back(FlagWords(known.flag).front() + ": " + known.sentence);
    }
    return sentences;
}

std::string MemberSheet(const CheckedMember& checked, const TitleBlock& block, const std::string& id)
{
    const DrawnLayout layout{checked.member->GetMemberPointVec(), checked.member->GetSubSpanVec()};
    const CSection section = checked.member->GetKeltrixSec();
    const CSecComp& component = section.Component(0);
    const MemberAxis axis(layout, component.Dimension(0.0, CSecGeom::DEPTH));
    const Design::MemberFindings& findings = checked.findings;

    std::string html = "<h2 id=\"" + id + "-h\">" + Isolated(checked.title) + "</h2>\n" +
                       TitleBlockHtml(checked, block) + VerdictHtml(checked);
    const std::string drawing = "<figure>" + MemberSvg(id + "-elevation", layout, axis, component) + "</figure>\n" +
                                StandingHtml(layout, section);
    const std::string actions = Part(id, "actions", "Forces and moments", ActionsHtml(id, layout, axis));
    const std::vector<std::string> set = FlagSentences(checked.result->GetFlags());
    const std::vector<std::string> assumed = AssumptionSentences(findings);
    const std::string flags = Part(id, "flags", "Flags and assumptions",
                                   set.empty() && assumed.empty() && block.isBrief
                                       ? "<p>No flag is set. No assumption was made.</p>\n"
                                       : "<h4>Flags</h4>\n" + ListHtml(set, "No flag is set.") +
                                             "<h4>Assumptions</h4>\n" + ListHtml(assumed, "None."));
    const auto calculation = [&](const char* title, CalculationHtml form, const CString& report) {
        return Part(id, "calculation", title,
                    "<div class=\"calculation\">\n" + form.Of(ReadMarkup(Utf8(report))) + "</div>\n");
    };
    if (block.isBrief)
        return "<div class=\"brief\">\n" + html + Part(id, "member", "Member", drawing + FewPoints(layout)) + actions +
               Part(id, "steel", "Section", SectionLine(checked)) +
               Part(id, "checks", "Checks", CheckTable(findings, true) + IdleTable(findings, true)) + flags +
               calculation("Calculation, governing position and span", CalculationHtml(findings),
                           checked.result->GetVerbose()) +
               "</div>\n";

    html += Part(id, "member", "Member", drawing + PointTable(layout) + SubSpanTable(layout)) + actions;
    html += Part(id, "steel", "Section", SectionHtml(id, checked));
    const std::string chart = UtilisationSvg(id + "-chart", checked);
    html +=
        Part(id, "checks", "Checks",
             (chart.empty() ? "<p>No check has a utilisation above zero.</p>\n" : "<figure>" + chart + "</figure>\n") +
                 CheckTable(findings, false) + IdleTable(findings, false));
    return html + flags + calculation("Calculation", CalculationHtml(), checked.result->GetVerbose()) +
           RenderHtml(ReadMarkup(ReportKey()));
}

} // namespace Keltrix::App
