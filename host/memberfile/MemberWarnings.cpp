#include "memberfile/MemberWarnings.h"

#include <algorithm>

#include "text/Markup.h"

namespace Keltrix::Host {

namespace {

std::string CountOf(const std::vector<MemberWarning>& warnings, Severity severity)
{
    const auto n = std::count_if(warnings.begin(), warnings.end(),
                                 [severity](const MemberWarning& warning) { return warning.severity == severity; });
    if (n == 0) return {};
    return std::to_string(n) + ' ' + SeverityWord(severity) + (n == 1 ? "" : "s");
}

} // namespace

std::string MemberWarning::Message() const
{
    return file + ':' + std::to_string(line) + ": " + SeverityWord(severity) + ": " + text;
}

MemberWarning WarningOf(const Defect& defect, const std::string& file)
{
    return {defect.code, defect.severity, file, defect.line, defect.Statement()};
}

std::string CountText(const std::vector<MemberWarning>& warnings)
{
    const std::string count = CountOf(warnings, Severity::Warning);
    const std::string notes = CountOf(warnings, Severity::Note);
    return count + (count.empty() || notes.empty() ? "" : ", ") + notes;
}

std::string StatusMarkup(const std::string& status, const std::vector<MemberWarning>& warnings)
{
    const std::string text = status == "pass" ? status : "<red>" + status + "</red>";
    return warnings.empty() ? text : text + ", <orange>" + CountText(warnings) + "</orange>";
}

std::string WarningMarkup(const std::vector<MemberWarning>& warnings)
{
    std::string text;
    for (const MemberWarning& warning : warnings)
        text += "<orange>" + std::string(SeverityWord(warning.severity)) + "</orange>, " + AsText(warning.file) + ':' +
                std::to_string(warning.line) + ": " + AsText(warning.text) + '\n';
    return text;
}

Json WarningsJson(const std::vector<MemberWarning>& warnings)
{
    Json list = Json::array();
    for (const MemberWarning& warning : warnings)
        list.push_back(JsonObject("code", warning.code, "severity", SeverityWord(warning.severity), "file",
                                  warning.file, "line", warning.line, "text", warning.text));
    return list;
}

} // namespace Keltrix::Host
