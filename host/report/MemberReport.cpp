#include "report/MemberReport.h"

#include "report/MemberSheet.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

std::string UtilText(double utilisation) { return Utf8(CDesFormat().Util(utilisation)); }

// One line in front of each report: what an engineer asks first.
std::string Verdict(const CheckedMember& checked)
{
    return "<h4>" + AsText(checked.title) + "</h4>\n" + checked.Section() + " in " + checked.Grade() + ": <b>" +
           StatusMarkup(checked.Status(), checked.warnings) + "</b>, utilisation <b>" +
           UtilText(checked.result->UtilOverAll()) + "</b>, governed by " + checked.Governing() + "\n" +
           WarningMarkup(checked.warnings);
}

std::string Calculation(const CheckedMember& checked, const std::string& kind)
{
    const Steel::CMemberResult& result = *checked.result;
    if (kind == "verbose") return Utf8(result.GetVerbose()) + Utf8(result.GetSummary());
    if (kind == "summary") return Utf8(result.GetSummary());
    return Utf8(result.GetBrief()) + Utf8(result.GetSummary());
}

} // namespace

std::string ReportMarkup(const CheckedMember& checked, const std::string& kind)
{
    return Verdict(checked) + Calculation(checked, kind);
}

std::string FlagMeanings(const Steel::CMemberResult& result)
{
    std::string text;
    for (const std::string& sentence : FlagSentences(result.GetFlags()))
        text += '\t' + sentence + '\n';
    return text.empty() ? text : "<h4>Meaning of the flags:</h4>\n" + text;
}

} // namespace Keltrix::Host
