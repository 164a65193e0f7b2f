#include "check/ReportKey.h"
#include "commands/Commands.h"
#include "memberfile/CodelessMember.h"
#include "stream/MemberStream.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

ExitCode ShowMember(const MemberFile& file, std::size_t i, const ShowOptions& options, const Console& console)
{
    CodelessMember member;
    member.SetGrade(file.ReadInto(i, member));
    Steel::CMemberResult result;
    member.SetResult(&result);
    result.ClearStrings(); // no design code is at work whose name would stand there
    if (!member.Check()) throw BadInput(file.NameOf(i) + ": " + Utf8(result.GetVerbose()));
    const std::string report = "<h4>" + AsText(Utf8(member.GetTitle())) + "</h4>\n" +
                               WarningMarkup(file.WarningsOf(i)) + Utf8(result.GetVerbose());
    console.out(RenderMarkup(report, options.rendering));
    return EXIT_FINE;
}

} // namespace

ExitCode Show(const ShowOptions& options, const Console& console)
{
    bool hasShown = false;
    MemberStream stream(options.files, options.reading, console);
    while (auto member = stream.Next())
        stream.Use(*member, [&] {
            const ExitCode shown = ShowMember(*member->file, member->place, options, console);
            hasShown = true;
            return shown;
        });
    if (hasShown && options.rendering.kind != Rendering::Raw)
        console.out('\n' + RenderMarkup(ReportKey(), options.rendering));
    return stream.Worst();
}

} // namespace Keltrix::App
