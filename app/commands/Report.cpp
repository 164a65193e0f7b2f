#include "commands/CodeCommands.h"
#include "io/Output.h"
#include "io/TemporarySheets.h"
#include "report/HtmlReport.h"
#include "stream/EachMember.h"

namespace Keltrix::App {

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
    const ExitCode code =
        ForEachMember(options.files, options.reading, noting, [&](const MemberFile& file, std::size_t i) {
            CheckedMember checked = CheckMember(file, i, options.code, true);
            for (const MemberWarning& warning : checked.CheckWarnings())
                noting.err(warning.Message());
            report.Add(checked);
            return checked.Status() == "pass" ? EXIT_FINE : EXIT_MEMBER_FAILS;
        });
    if (report.MemberCount() == 0) return code;
    if (report.MemberCount() > 1 && !options.block.member.empty())
        throw BadUsage("--member: names one member, and the files hold " + std::to_string(report.MemberCount()));
    WriteFile(options.output, [&](const TextSink& put) { report.Write(put); });
    return code;
}

} // namespace Keltrix::App
