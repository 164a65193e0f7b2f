#include <algorithm>

#include "CheckedMember.h"
#include "Text.h"
#include "commands/DesignCommands.h"
#include "commands/EachMember.h"

namespace Keltrix::App {

namespace {

ExitCode CodeOf(const CheckedMember& checked) { return checked.Status() == "pass" ? EXIT_FINE : EXIT_MEMBER_FAILS; }

std::string Coloured(const std::string& status) { return status == "pass" ? "pass" : "<red>" + status + "</red>"; }

std::string UtilText(double utilisation) { return Utf8(CDesFormat().Util(utilisation)); }

// One line in front of each report: what an engineer asks first.
std::string Verdict(const CheckedMember& checked)
{
    return "<h4>" + checked.title + "</h4>\n" + checked.Section() + " in " + checked.Grade() + ": <b>" +
           Coloured(checked.Status()) + "</b>, utilisation <b>" + UtilText(checked.result->UtilOverAll()) +
           "</b>, governed by " + checked.Governing() + "\n";
}

std::string ReportText(const CheckedMember& checked, const std::string& kind)
{
    const Steel::CMemberResult& result = *checked.result;
    if (kind == "verbose") return Utf8(result.GetVerbose()) + Utf8(result.GetSummary());
    if (kind == "summary") return Utf8(result.GetSummary());
    return Utf8(result.GetBrief()) + Utf8(result.GetSummary());
}

std::string TableText(std::vector<CheckedMember>& members)
{
    std::stable_sort(members.begin(), members.end(), [](const CheckedMember& a, const CheckedMember& b) {
        return a.result->UtilOverAll() > b.result->UtilOverAll();
    });
    // Files and titles, which may be long, stand last.
    std::string text = "<table>Utilisation\tStatus\tSection\tGrade\tClass\tGoverning\tAt\tFile\tMember\n";
    for (const CheckedMember& checked : members) {
        std::string status = Coloured(checked.Status());
        if (checked.result->TestFlags(Steel::CMemberResult::NOT_CHECKED)) status += ", <red>NOT CHECKED</red>";
        const BS5950::LedgerEntry* const governing = checked.member->Checks().Governing();
        text += UtilText(checked.result->UtilOverAll()) + '\t' + status + '\t' + checked.Section() + '\t' +
                checked.Grade() + '\t' + std::to_string(checked.member->SectionClass()) + '\t' +
                (governing ? DescribeRule(*governing) : "nothing") + '\t' +
                (governing ? DescribePlace(*governing) : "") + '\t' + checked.name + '\t' + checked.title + '\n';
    }
    return text + "</table>\n";
}

// The cases merged into one member, which they must be.
std::vector<CheckedMember> OneEnvelope(std::vector<CheckedMember> cases)
{
    for (const CheckedMember& checked : cases) {
        if (checked.member->Positions().size() != cases.front().member->Positions().size() ||
            checked.Section() != cases.front().Section())
            throw BadInput(checked.name + ": is no load case of the member in " + cases.front().name +
                           ": section and sub-spans must be the same");
    }
    std::vector<CheckedMember> merged;
    merged.push_back(Envelope(std::move(cases)));
    return merged;
}

Json ListOf(const std::vector<CheckedMember>& members)
{
    Json list = Json::array();
    for (const CheckedMember& checked : members)
        list.push_back(JsonOf(checked));
    return list;
}

} // namespace

ExitCode Check(const CheckOptions& options, const Console& console)
{
    const int option = options.exact ? BS5950::CSteelMemberBS5950::MORE_EXACT : BS5950::CSteelMemberBS5950::SIMPLIFIED;
    const bool withText = options.format == Format::TABLE && options.report != "table";
    std::vector<CheckedMember> members;
    const auto put = [&](const CheckedMember& checked) {
        console.out(RenderMarkup(Verdict(checked) + ReportText(checked, options.report), options.rendering));
    };

    ExitCode code = ForEachMember(options.files, console, [&](const MemberFile& file, std::size_t i) {
        CheckedMember checked = CheckMember(file, i, option, withText);
        const ExitCode own = CodeOf(checked);
        if (withText && !options.envelope)
            put(checked);
        else
            members.push_back(std::move(checked));
        return own;
    });
    if (options.envelope) {
        // A case that is missing would make the envelope look better than it is.
        if (code == EXIT_BAD_INPUT || members.empty()) return code;
        members = OneEnvelope(std::move(members));
        code = CodeOf(members.front());
        if (withText) put(members.front());
    }
    if (options.format == Format::JSON)
        console.out(JsonText(ListOf(members)));
    else if (!withText && !members.empty())
        console.out(RenderMarkup(TableText(members), options.rendering));
    return code;
}

} // namespace Keltrix::App
