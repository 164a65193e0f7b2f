#include "report/BucklingSheet.h"

#include <cmath>

#include "Html.h"
#include "Text.h"
#include "report/MemberSheet.h"
#ifdef KSTEEL_WITH_STABILITY
#include "BucklingReport.h"
#include "report/BucklingDrawing.h"
#endif

namespace Keltrix::App {

#ifdef KSTEEL_WITH_STABILITY

namespace {

using Stability::Outcome;

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

std::string Cell(const std::string& text) { return "<td class=\"n\">" + Sentence(text) + "</td>"; }

std::string UnitRow(const BucklingReport& report, std::size_t i)
{
    const CDesFormat format;
    const BucklingUnit& unit = report.units[i];
    const Stability::Unit& found = unit.found;
    const bool isFree = found.outcome == Outcome::NotHeld;
    const auto text = [](double value, const CString& shown) { return value == 0.0 ? std::string("-") : Utf8(shown); };
    const std::string free = "<td class=\"n\"><span class=\"red\">not held</span></td>";
    const std::string sense = unit.moment < 0.0 ? " sagging" : unit.moment > 0.0 ? " hogging" : "";
    const double Mcr = found.positive ? found.positive->Mcr : 0.0;
    return std::string(static_cast<int>(i) == report.governing ? "<tr class=\"governs\">" : "<tr>") +
           Cell(Rounded(found.start, 5) + " m") + Cell(Rounded(found.end, 5) + " m") +
           (isFree ? free : Cell(found.positive ? Figures(found.positive->lambda, 4) : "none")) +
           Cell(text(unit.moment, format.Moment(std::fabs(unit.moment))) + sense) +
           Cell(unit.moment == 0.0 ? "-" : Rounded(found.largestMomentAt, 5) + " m") +
           Cell(text(Mcr, format.Moment(Mcr))) + Cell(text(unit.compression, format.Force(unit.compression))) +
           Cell(text(unit.Ncr, format.Force(unit.Ncr))) +
           (isFree ? free : Cell(found.negative ? Figures(found.negative->lambda, 4) : "none")) + "</tr>\n";
}

std::string UnitTable(const BucklingReport& report)
{
    constexpr std::size_t most = 12;
    std::string html =
        "<table class=\"wide small\">\n<caption class=\"skip\">Units that buckle by themselves</caption>\n"
        "<thead><tr>";
    for (const char* name : {"From", "To", "λ<sub>cr</sub>", "Largest moment", "At", "M<sub>cr</sub>", "Compression",
                             "N<sub>cr</sub>", "λ, all forces turned"})
        html += "<th scope=\"col\" class=\"n\">" + std::string(name) + "</th>";
    html += "</tr></thead>\n<tbody>\n";
    std::size_t shown = 0;
    for (std::size_t i = 0; i < report.units.size(); ++i) {
        if (shown >= most && static_cast<int>(i) != report.governing) continue;
        html += UnitRow(report, i);
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
    if (!report.units.empty()) html += UnitTable(report);
    html += "<p class=\"muted\">Factor on all forces at which the perfect elastic member buckles sideways, E = " +
            Sentence(Rounded(report.moduli.E / 1e9, 4) + " kN/mm²") +
            ", G = " + Sentence(Rounded(report.moduli.G / 1e9, 4) + " kN/mm²") +
            "; each length between sections held against lateral movement and twist by itself. No check above uses it.";
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

} // namespace Keltrix::App
