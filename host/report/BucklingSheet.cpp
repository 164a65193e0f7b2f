#include "report/BucklingSheet.h"

#include "report/MemberSheet.h"
#include "text/Html.h"
#include "text/Text.h"
#ifdef KELTRIX_HOST_WITH_STABILITY
#include "check/BucklingReport.h"
#include "report/BucklingDrawing.h"
#endif

namespace Keltrix::Host {

#ifdef KELTRIX_HOST_WITH_STABILITY

namespace {

BucklingReport ReportOf(const CheckedMember& checked)
{
    return MakeBucklingReport(*checked.member, ModuliOf(checked.code, checked.member->GetGrade()), false);
}

std::string Sentence(const std::string& text) { return EscapedHtml(WithUnitsKept(text)); }

std::string VerdictHtml(const BucklingReport& report)
{
    std::string html = VerdictSentence(report);
    // An answer that could not be had is no failure of the member.
    const bool isMarked = report.refusal.empty() && !report.IsStable();
    html = "<span class=\"" + std::string(isMarked ? "red" : "value") + "\">" + Sentence(html) + "</span>.";
    const auto* const load = report.Critical();
    if (load) html += " Estimated error " + Sentence(ErrorText(load->error)) + '.';
    return html;
}

std::string RowHtml(const std::vector<std::string>& row, bool governs)
{
    std::string html = governs ? "<tr class=\"critical\">" : "<tr>";
    for (const std::string& cell : row)
        html += "<td class=\"n\">" +
                (cell == UnitTable::NOT_HELD ? "<span class=\"red\">" + cell + "</span>" : Sentence(cell)) + "</td>";
    return html + "</tr>\n";
}

std::string UnitsHtml(const BucklingReport& report)
{
    constexpr std::size_t most = 12;
    const UnitTable table = MakeUnitTable(report);
    std::string html =
        "<table class=\"wide small\">\n<caption class=\"skip\">Units that buckle by themselves</caption>\n"
        "<thead><tr>";
    for (const std::string& name : table.head)
        html += "<th scope=\"col\" class=\"n\">" + name + "</th>";
    html += "</tr></thead>\n<tbody>\n";
    std::size_t shown = 0;
    for (std::size_t i = 0; i < report.units.size(); ++i) {
        if (shown >= most && static_cast<int>(i) != report.governing) continue;
        html += RowHtml(table.rows[i], static_cast<int>(i) == report.governing);
        ++shown;
    }
    html += "</tbody></table>\n";
    if (shown < report.units.size())
        html += "<p class=\"muted\">" + std::to_string(report.units.size() - shown) +
                " more units have larger factors or do not buckle.</p>\n";
    return html;
}

} // namespace

std::string BucklingHtml(const std::string& id, const CheckedMember& checked, const DrawnLayout& layout,
                         const MemberAxis& axis)
{
    const BucklingReport report = ReportOf(checked);
    std::string html = "<p>" + VerdictHtml(report) + "</p>\n";
    if (!report.refusal.empty()) return html;
    html += "<figure>" + BucklingSvg(id + "-buckling", report, layout, axis, checked.member->GetKeltrixSec()) +
            "</figure>\n";
    if (!report.units.empty()) html += UnitsHtml(report);
    html += "<p class=\"muted\">Factor on all forces at which the perfect elastic member buckles sideways, E = " +
            Sentence(Rounded(report.moduli.E / 1e9, 4) + " kN/mm²") +
            ", G = " + Sentence(Rounded(report.moduli.G / 1e9, 4) + " kN/mm²") +
            "; each length between sections held against lateral movement and twist by itself. For information: the "
            "checks name what they use.";
    for (const std::string& remark : report.remarks)
        html += ' ' + Sentence(remark);
    return html + "</p>\n";
}

std::string BucklingLine(const CheckedMember& checked)
{
    return "<p>Elastic critical load: " + VerdictHtml(ReportOf(checked)) + "</p>\n";
}

#else

namespace {
const char* const ABSENT = "not in this ksteel, which was built without Eigen";
}

std::string BucklingHtml(const std::string&, const CheckedMember&, const DrawnLayout&, const MemberAxis&)
{
    return std::string("<p>Elastic critical loads are ") + ABSENT + ".</p>\n";
}

std::string BucklingLine(const CheckedMember&)
{
    return std::string("<p>Elastic critical load: ") + ABSENT + ".</p>\n";
}

#endif

} // namespace Keltrix::Host
