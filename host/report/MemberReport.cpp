#include "report/MemberReport.h"

#include "report/MemberSheet.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

// The combination of what governs a beam.
std::string InCombination(const CheckedMember& checked)
{
    const std::string combination = checked.CombinationOf(checked.findings.Governing());
    return checked.shownCombination.empty() || combination.empty() ? "" : ", in " + AsText(combination);
}

// One line in front of each report: what an engineer asks first.
std::string Verdict(const CheckedMember& checked)
{
    return "<h4>" + AsText(checked.title) + "</h4>\n" + checked.Section() + " in " + checked.Grade() + ": <b>" +
           StatusMarkup(checked.Status(), checked.warnings) + "</b>, utilisation <b>" +
           UtilisationText(checked.Utilisation()) + "</b>, governed by " + checked.Governing() +
           InCombination(checked) + "\n" + WarningMarkup(checked.warnings);
}

std::string Cell(const wchar_t* text) { return AsText(Utf8(text)); }

// The checks of a beam with the combination in which each is worst.
std::string EnvelopeTable(const CheckedMember& checked)
{
    std::string text = "<h4>Envelope of the combinations</h4>\n"
                       "<table><align left>Check\tWhere\tUtilisation\tResult\tCombination\n";
    for (const Design::RuleFinding& entry : checked.findings.rules) {
        const bool isOpen = entry.status == Design::CheckStatus::NotEvaluated;
        if (!entry.WasEvaluated() && !isOpen) continue;
        const bool passes = entry.status == Design::CheckStatus::Passed;
        const std::string result = Cell(Design::StatusName(entry.status));
        text += DescribeRule(entry) + '\t' + DescribePlace(entry) + '\t' +
                (isOpen ? "" : UtilisationText(entry.utilisation)) + '\t' +
                (passes ? result : "<red>" + result + "</red>") +
                (entry.reason[0] != L'\0' ? ": " + Cell(entry.reason) : "") + (entry.governing ? ", governs" : "") +
                '\t' + AsText(checked.CombinationOf(&entry)) + '\n';
    }
    return text + "</table>\n<h4>Calculation of the combination " + AsText(checked.shownCombination) + "</h4>\n";
}

std::string Calculation(const CheckedMember& checked, const std::string& kind)
{
    const Steel::CMemberResult& result = checked.ShownResult();
    if (kind == "verbose") return Utf8(result.GetVerbose()) + Utf8(result.GetSummary());
    if (kind == "summary") return Utf8(result.GetSummary());
    return Utf8(result.GetBrief()) + Utf8(result.GetSummary());
}

} // namespace

std::string ReportMarkup(const CheckedMember& checked, const std::string& kind)
{
    return Verdict(checked) + (checked.shownCombination.empty() ? "" : EnvelopeTable(checked)) +
           Calculation(checked, kind);
}

std::string FlagMeanings(const Steel::CMemberResult& result)
{
    std::string text;
    for (const std::string& sentence : FlagSentences(result.GetFlags()))
        text += '\t' + sentence + '\n';
    return text.empty() ? text : "<h4>Meaning of the flags:</h4>\n" + text;
}

} // namespace Keltrix::Host
