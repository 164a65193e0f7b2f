#include <algorithm>

#include "commands/CheckFindings.h"
#include "io/Output.h"
#include "io/TemporarySheets.h"
#include "report/HtmlReport.h"
#ifdef KELTRIX_HOST_WITH_STATICS
#include "report/LoadSheet.h"
#endif

namespace Keltrix::App {

namespace {

ExitCode Added(HtmlReport& report, const Console& noting, const CheckedMember& checked, const LoadPart& loads)
{
    for (const MemberWarning& warning : checked.CheckWarnings())
        noting.err(warning.Message());
    report.Add(checked, loads);
    return checked.Status() == "pass" ? EXIT_FINE : EXIT_MEMBER_FAILS;
}

// What the sheet of a beam shows of its loads.
LoadPart LoadsOf([[maybe_unused]] const StreamMember& member)
{
#ifdef KELTRIX_HOST_WITH_STATICS
    if (member.beam) return LoadPartOf(member.beam);
#endif
    return {};
}

// The envelope of load cases, with the calculation of that which has the largest utilisation.
CheckedMember SheetEnvelope(std::vector<CheckedMember> cases)
{
    const auto worst = std::max_element(cases.begin(), cases.end(), [](const CheckedMember& a, const CheckedMember& b) {
        return a.result->UtilOverAll() < b.result->UtilOverAll();
    });
    auto shown = std::make_unique<Steel::CMemberResult>(*worst->result);
    std::string name = worst->name;
    CheckedMember envelope = OneEnvelope(std::move(cases));
    envelope.shown = std::move(shown);
    envelope.shownCombination = std::move(name);
    return envelope;
}

ExitCode AddEnvelope(const ReportOptions& options, const Console& noting, HtmlReport& report)
{
    std::vector<CheckedMember> cases;
    MemberStream stream(options.files, options.reading, noting, BeamReading::MembersWithDeflections, options.code);
    while (auto member = stream.Next()) {
        if (!member->remark.empty()) noting.err(member->remark);
        stream.Use(*member, [&] {
            cases.push_back(CheckOne(*member, options.code, true));
            RequireLoadCase(cases.front(), cases.back());
            for (const MemberWarning& warning : cases.back().CheckWarnings())
                noting.err(warning.Message());
            return EXIT_FINE;
        });
    }
    const ExitCode code = stream.Worst();
    // A case that is missing would make the envelope look better than it is.
    if (code == EXIT_BAD_INPUT || cases.empty()) return code;
    const CheckedMember checked = SheetEnvelope(std::move(cases));
    report.Add(checked);
    return Worse(code, checked.Status() == "pass" ? EXIT_FINE : EXIT_MEMBER_FAILS);
}

ExitCode AddEach(const ReportOptions& options, const Console& noting, HtmlReport& report)
{
    MemberStream stream(options.files, options.reading, noting, BeamsAs(options.combinations), options.code);
    while (auto member = stream.Next()) {
        if (!member->remark.empty()) noting.err(member->remark);
        stream.Use(*member,
                   [&] { return Added(report, noting, CheckOne(*member, options.code, true), LoadsOf(*member)); });
    }
    return stream.Worst();
}

} // namespace

ExitCode Report(const ReportOptions& options, const Console& console)
{
    HtmlReport report(options.block, std::make_unique<TemporarySheets>());
    // The messages about the files are part of the record.
    Console noting = console;
    noting.err = [&](std::string_view message) {
        report.AddRemark(std::string(message));
        console.err(message);
    };
    noting.wasRead = [&](const std::string& name, const std::string& sha256) { report.AddInput(name, sha256); };
    if (options.envelope && options.combinations)
        throw BadUsage("--envelope: takes all cases as one member, and --combinations each by itself");
    const ExitCode code = options.envelope ? AddEnvelope(options, noting, report) : AddEach(options, noting, report);
    if (report.MemberCount() == 0) return code;
    if (report.MemberCount() > 1 && !options.block.member.empty())
        throw BadUsage("--member: names one member, and the files hold " + std::to_string(report.MemberCount()));
    WriteFile(options.output, [&](const TextSink& put) { report.Write(put); });
    return code;
}

} // namespace Keltrix::App
