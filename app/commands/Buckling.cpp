#include "check/BucklingText.h"
#include "commands/CheckFindings.h"
#include "commands/Commands.h"
#include "io/Output.h"
#include "memberfile/CodelessMember.h"
#include "report/BucklingDrawing.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

// One member at most: a drawing shows one.
class DrawingFile {
public:
    explicit DrawingFile(std::string path) : m_path(std::move(path)) {}

    void Add(const BucklingReport& report, CodelessMember& member, const std::string& title)
    {
        if (m_path.empty()) return;
        if (++m_members > 1) throw BadUsage("--svg draws one member, and the files hold more");
        if (report.refusal.empty()) m_svg = BucklingSvgFile(report, member, title);
    }
    void Write(const Console& console) const
    {
        if (m_path.empty()) return;
        if (m_svg.empty())
            console.err("--svg: no member was analysed, so there is no drawing");
        else
            WriteFile(m_path, m_svg);
    }

private:
    std::string m_path;
    std::string m_svg;
    std::size_t m_members = 0;
};

} // namespace

ExitCode ShowBuckling(const BucklingOptions& options, const Console& console)
{
    Json members = Json::array();
    DrawingFile drawing(options.svgFile);
    const bool hasText = options.svgFile != "-"; // else the drawing alone
    const bool isJson = options.format == Format::JSON;
    const auto showOne = [&](const MemberFile& file, std::size_t i) {
        CodelessMember member;
        member.SetGrade(file.ReadInto(i, member));
        const BucklingReport report =
            MakeBucklingReport(member, ModuliOf(options.code.code, member.GetGrade()), options.continuity);
        const std::string title = Utf8(member.GetTitle());
        drawing.Add(report, member, title);
        if (hasText && options.format == Format::JSON_LINES)
            console.out(JsonLine(BucklingJson(file, i, member, report)));
        else if (hasText && isJson)
            members.push_back(BucklingJson(file, i, member, report));
        else if (hasText)
            console.out(RenderMarkup("<h4>" + AsText(title) + "</h4>\n" + WarningMarkup(file.WarningsOf(i)) +
                                         BucklingMarkup(report),
                                     options.rendering));
        return report.IsStable() ? EXIT_FINE : EXIT_MEMBER_FAILS;
    };
    MemberStream stream(options.files, options.reading, console, BeamReading::Members, options.code);
    while (auto member = stream.Next()) {
        stream.Use(*member, [&] { return showOne(*member->file, member->place); });
        if (member->refusal && hasText && options.format == Format::JSON_LINES)
            console.out(RefusalLine(*member->refusal));
    }
    drawing.Write(console);
    if (hasText && isJson) console.out(JsonText(members));
    return stream.Worst();
}

} // namespace Keltrix::App
