#include "report/MemberSheet.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "check/ReportKey.h"
#include "report/BucklingSheet.h"
#include "report/Diagrams.h"
#include "report/Join.h"
#include "report/MemberDrawing.h"
#include "report/SectionSheet.h"
#include "report/UtilisationChart.h"
#include "sections/SectionCatalogue.h"
#include "sections/SectionShapes.h"
#include "sections/SectionValues.h"
#include "text/Html.h"
#include "text/Markup.h"
#include "text/Render.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Design::RuleFinding;
using Steel::CMemberResult;

std::string Wording(const wchar_t* text) { return EscapedHtml(Utf8(text)); }

std::string PlaceHtml(double metres) { return WithUnitsKept(LengthText(metres)); }

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
            ", utilisation <b>" + UtilisationText(checked.Utilisation()) + "</b>, governed by " +
            EscapedHtml(WithUnitsKept(checked.Governing()));
    const std::string combination = checked.CombinationOf(checked.findings.Governing());
    if (!combination.empty()) html += ", in " + Isolated(combination);
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
                PlaceHtml(layout.points[i].GetPos()) + "</td><td>" + EscapedHtml(Utf8(restraint.UserDescription())) +
                "</td><td>" + HoldWords(RestraintOfPoint(layout, i)) + "</td><td>" +
                (restraint.LoadHeight() == 0.0 ? "0" : PlaceHtml(restraint.LoadHeight())) + "</td></tr>\n";
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
                PlaceHtml(layout.points[k].GetPos()) + "</td><td class=\"n\">" +
                PlaceHtml(layout.points[k + 1].GetPos()) + "</td><td>" +
                EscapedHtml(Utf8(subSpan.GetRestraint().UserDescription())) + "</td><td>" +
                HoldWords(RestraintOfSubSpan(subSpan)) + "</td></tr>\n";
    }
    return html + "</tbody></table>\n";
}

// Forces, lengths and critical loads of an envelope are those of one combination.
std::string ShownHtml(const CheckedMember& checked)
{
    if (checked.shownCombination.empty()) return {};
    return "<p>Of the combination " + Isolated(checked.shownCombination) +
           ", in which the largest utilisation of strength was found; so are effective lengths, resistances, the "
           "elastic critical load and "
           "the calculation below.</p>\n";
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
    // A limit of deflection.
    const CString value = Design::QuantityText(entry.quantity, entry.resistance, CDesFormat());
    return Wording(entry.symbol) + " = " + EscapedHtml(Utf8(value));
}

std::string PlaceText(const RuleFinding& entry)
{
    if (std::isnan(entry.start)) return {};
    return entry.start == entry.end ? "at " + PlaceHtml(entry.start)
                                    : PlaceHtml(entry.start) + " to " + PlaceHtml(entry.end);
}

std::string CheckRow(const RuleFinding& entry, const CheckedMember& checked)
{
    const bool fails = entry.status == Design::CheckStatus::Failed;
    std::string html = entry.governing ? "<tr class=\"governs\">" : "<tr>";
    html += "<td>" + Wording(entry.name) + (entry.governing ? " (governs)" : "") + "</td><td>" + Wording(entry.clause) +
            "</td><td>" + PlaceText(entry) + "</td><td class=\"n\">" +
            (entry.utilisation == 0.0 ? std::string() : UtilisationText(entry.utilisation)) + "</td><td class=\"n\">" +
            ResistanceText(entry) + "</td><td>" + StatusHtml(fails ? "fail" : "pass");
    if (entry.reason[0] != L'\0') html += ": " + Wording(entry.reason);
    if (!checked.sources.empty()) html += "</td><td>" + Isolated(checked.CombinationOf(&entry));
    return html + "</td></tr>\n";
}

// In the short form with the largest utilisation of each rule, and every failure.
std::string CheckTable(const CheckedMember& checked, bool isBrief)
{
    const Design::MemberFindings& findings = checked.findings;
    std::string html = checked.sources.empty() ? TableHead("Checks that were evaluated", {"Check", "Clause", "Where"},
                                                           {"Utilisation", "Resistance"}, {"Result"})
                                               : TableHead("Checks that were evaluated", {"Check", "Clause", "Where"},
                                                           {"Utilisation", "Resistance"}, {"Result", "Combination"});
    for (const RuleFinding& entry : findings.rules) {
        const bool isShown =
            !isBrief || entry.status == Design::CheckStatus::Failed || &entry == findings.Worst(entry.rule);
        if (entry.WasEvaluated() && isShown) html += CheckRow(entry, checked);
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

// Figures beside the rules.
std::string InformationTable(const CheckedMember& checked)
{
    std::string rows;
    for (const RuleFinding& entry : checked.Information()) {
        rows += "<tr><td>" + Wording(entry.name) + "</td><td>" + Wording(entry.clause) + "</td><td>" +
                PlaceText(entry) + "</td><td class=\"n\">" + UtilisationText(entry.utilisation) +
                "</td><td class=\"n\">" + ResistanceText(entry) + "</td><td>" + Wording(entry.reason) + "</td></tr>\n";
    }
    if (rows.empty()) return {};
    return TableHead("For information, no checks", {"For information", "Basis", "Where"}, {"Utilisation", "Resistance"},
                     {"What it is"}) +
           rows + "</tbody></table>\n";
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
        sentences.push_back(Utf8(assumption.name) + ": " + Utf8(Design::AssumptionText(assumption, CDesFormat())));
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

// Where the short form looks: the position, or the span, of the largest utilisation.
class GoverningPlace {
public:
    GoverningPlace(const Design::MemberFindings& findings, bool isSpan)
    {
        for (const RuleFinding& entry : findings.rules) {
            const bool isOne = entry.WasEvaluated() && !std::isnan(entry.start) && (entry.start < entry.end) == isSpan;
            if (isOne && (!m_worst || Design::IsWorse(entry.utilisation, m_worst->utilisation))) m_worst = &entry;
        }
    }

    // Where nothing was evaluated at a place, every place is as good.
    bool Has(const Design::CalculationPart& part) const
    {
        if (!m_worst) return true;
        return IsSpan(part) ? part.start < m_worst->end && m_worst->start < part.end : part.start == m_worst->start;
    }

    static bool IsSpan(const Design::CalculationPart& part) { return part.start < part.end; }

private:
    const RuleFinding* m_worst = nullptr;
};

// The report in parts: each heading of the fifth level begins one that can be folded. The short form has the governing position and
// span alone, unfolded, with what came to a result or a remark there.
class CalculationHtml {
public:
    CalculationHtml(const Design::MemberFindings& findings, bool isBrief) :
        m_findings(findings), m_isBrief(isBrief), m_position(findings, false), m_span(findings, true)
    {}

    std::string Of(Document report)
    {
        const auto headings = std::count_if(report.lines.begin(), report.lines.end(),
                                            [](const Document::Line& line) { return line.heading == 5; });
        // The input report, which comes first, has headings without a finding.
        m_before = headings - static_cast<std::ptrdiff_t>(m_findings.parts.size());
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
    bool IsShown(const std::string& heading) const
    {
        if (m_isBrief) return heading.starts_with("Local capacity checks") || heading.starts_with("Buckling checks");
        // The ledger stands in the table of checks.
        return !heading.starts_with("Ledger of checks");
    }

    bool IsLeftOut(const Design::CalculationPart& part) const
    {
        const bool isEmpty = std::isnan(part.utilisation) && !part.isMarked;
        return m_isBrief && (isEmpty || !(GoverningPlace::IsSpan(part) ? m_span : m_position).Has(part));
    }

    // What the code found in the part at hand; nothing where its text and its findings are not of the same parts.
    std::optional<Design::CalculationPart> NextFinding()
    {
        const std::ptrdiff_t place = m_next++ - m_before;
        if (m_before < 0 || place < 0) return std::nullopt;
        return m_findings.parts[static_cast<std::size_t>(place)];
    }

    void Flush()
    {
        Document part = std::exchange(m_part, {});
        const bool isPart = std::exchange(m_isPart, false);
        const std::optional<Design::CalculationPart> found = isPart ? NextFinding() : std::nullopt;
        if (part.lines.empty() || (found && IsLeftOut(*found))) return;
        if (isPart && m_isBrief && !found && !m_findings.parts.empty()) return;
        if (!isPart || part.lines.size() == 1) {
            m_html += RenderHtml(std::move(part));
            return;
        }
        m_html += FoldedHtml(std::move(part), found);
    }

    std::string FoldedHtml(Document part, const std::optional<Design::CalculationPart>& found) const
    {
        Document heading;
        heading.lines.push_back(std::move(part.lines.front()));
        part.lines.erase(part.lines.begin());
        const bool fails = found && found->isMarked;
        std::string result;
        if (found && !std::isnan(found->utilisation))
            result = "<span class=\"result" + std::string(fails ? " fail" : "") + "\">" +
                     UtilisationText(found->utilisation) + (fails ? " fails" : "") + "</span>";
        std::string title = RenderHtml(std::move(heading));
        title.pop_back();
        // Where the code tells nothing of the parts none is folded away.
        const bool isWarned = !found && !m_findings.warnings.empty(); // the warnings stand below the input
        return (fails || m_isBrief || isWarned || m_findings.parts.empty() ? "<details open><summary>"
                                                                           : "<details><summary>") +
               title + result + "</summary>\n" + RenderHtml(std::move(part)) + "</details>\n";
    }

    const Design::MemberFindings& m_findings;
    const bool m_isBrief;
    const GoverningPlace m_position;
    const GoverningPlace m_span;
    std::string m_html;
    Document m_part;
    bool m_isPart = false;
    bool m_isShown = true;
    std::ptrdiff_t m_before = 0;
    std::ptrdiff_t m_next = 0;
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

std::string MemberSheet(const CheckedMember& checked, const TitleBlock& block, const std::string& id,
                        const LoadPart& loads)
{
    const DrawnLayout layout{checked.member->GetMemberPointVec(), checked.member->GetSubSpanVec()};
    const CSection section = checked.member->GetKeltrixSec();
    const CSecComp& component = section.Component(0);
    const MemberAxis axis(layout, component.Dimension(0.0, CSecGeom::DEPTH));
    const Design::MemberFindings& findings = checked.findings;

    std::string html = "<h2 id=\"" + id + "-h\">" + Isolated(checked.title) + "</h2>\n" +
                       TitleBlockHtml(checked, block) + VerdictHtml(checked);
    if (loads) html += Part(id, "beam", "Loads", loads(id + "-beam", block.isBrief));
    const std::string drawing = "<figure>" + MemberSvg(id + "-elevation", layout, axis, component) + "</figure>\n" +
                                StandingHtml(layout, section);
    const std::string actions =
        Part(id, "actions", "Forces and moments", ShownHtml(checked) + ActionsHtml(id, layout, axis));
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
               Part(id, "checks", "Checks",
                    CheckTable(checked, true) + IdleTable(findings, true) + BucklingLine(checked)) +
               flags +
               calculation("Calculation, governing position and span", CalculationHtml(findings, true),
                           checked.ShownResult().GetVerbose()) +
               "</div>\n";

    html += Part(id, "member", "Member", drawing + PointTable(layout) + SubSpanTable(layout)) + actions;
    html += Part(id, "steel", "Section", SectionHtml(id, checked));
    const std::string chart = UtilisationSvg(id + "-chart", checked);
    html +=
        Part(id, "checks", "Checks",
             (chart.empty() ? "<p>No check has a utilisation above zero.</p>\n" : "<figure>" + chart + "</figure>\n") +
                 CheckTable(checked, false) + InformationTable(checked) + IdleTable(findings, false));
    html += Part(id, "critical", "Elastic critical load", BucklingHtml(id, checked, layout, axis));
    return html + flags +
           calculation("Calculation", CalculationHtml(findings, false), checked.ShownResult().GetVerbose()) +
           RenderHtml(ReadMarkup(ReportKey()));
}

} // namespace Keltrix::Host
