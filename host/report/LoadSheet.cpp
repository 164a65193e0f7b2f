#include "report/LoadSheet.h"

#include "beamfile/BeamCamber.h"
#include "loads/LoadText.h"
#include "report/LoadDrawing.h"
#include "text/Render.h"
#include "text/Text.h"

namespace Keltrix::Host {

LoadReport LoadReportOf(const Beam& beam)
{
    const BeamMembers& made = beam.made;
    return MakeLoadReport({*made.analysis, made.combinations, made.limits, made.deflections,
                           CamberOf(beam.file, made.analysis->Spans()), beam.file.title, beam.file.section,
                           Utf8(beam.file.grade.Name())});
}

std::string LoadHtml(const std::string& id, const Beam& beam, bool isBrief)
{
    const LoadReport report = LoadReportOf(beam);
    const Statics::Beam& analysed = beam.made.analysis->GetBeam();
    std::string html;
    for (const std::string& drawing : LoadsSvgs(id + "-loads", analysed, report))
        html += "<figure>" + drawing + "</figure>\n";
    const std::string envelopes = EnvelopeSvg(id + "-envelopes", analysed, report);
    if (!envelopes.empty()) html += "<figure>" + envelopes + "</figure>\n";
    return html + RenderHtml(ReadMarkup(LoadTables(report, isBrief)));
}

LoadPart LoadPartOf(std::shared_ptr<const Beam> beam)
{
    return [beam = std::move(beam)](const std::string& id, bool isBrief) { return LoadHtml(id, *beam, isBrief); };
}

} // namespace Keltrix::Host
