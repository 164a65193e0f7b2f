#include "commands/CodeCommands.h"
#include "io/Output.h"
#include "io/TemporarySheets.h"
#include "report/HtmlReport.h"
#include "stream/EachMember.h"
#ifdef KELTRIX_HOST_WITH_STATICS
#include "report/LoadSheet.h"
#endif

namespace Keltrix::App {

namespace {

ExitCode Added(HtmlReport& report, const Console& noting, const CheckedMember& checked, const LoadPart& loads = {})
{
    for (const MemberWarning& warning : checked.CheckWarnings())
        noting.err(warning.Message());
    report.Add(checked, loads);
    return checked.Status() == "pass" ? EXIT_FINE : EXIT_MEMBER_FAILS;
}

// The envelope of a beam, or each of its combinations by itself.
BeamUse BeamUseOf([[maybe_unused]] const ReportOptions& options, [[maybe_unused]] HtmlReport& report,
                  [[maybe_unused]] const Console& noting)
{
    BeamUse use{options.code.code, {}, {}};
    if (options.combinations) use.tellDeflections = [&](ExitCode, const std::string& message) { noting.err(message); };
#ifdef KELTRIX_HOST_WITH_STATICS
    if (!options.combinations)
        use.use = [&](const Beam& beam) {
            return Added(report, noting, CheckBeam(beam, options.code, true),
                         [&](const std::string& id, bool isBrief) { return LoadHtml(id, beam, isBrief); });
        };
#endif
    return use;
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
    const ExitCode code = ForEachMember(
        options.files, options.reading, noting,
        [&](const MemberFile& file, std::size_t i) {
            const CheckedMember checked = CheckMember(file, i, options.code, true);
            return Added(report, noting, checked);
        },
        BeamUseOf(options, report, noting));
    if (report.MemberCount() == 0) return code;
    if (report.MemberCount() > 1 && !options.block.member.empty())
        throw BadUsage("--member: names one member, and the files hold " + std::to_string(report.MemberCount()));
    WriteFile(options.output, [&](const TextSink& put) { report.Write(put); });
    return code;
}

} // namespace Keltrix::App
