#include "beamfile/BeamCamber.h"

#include <algorithm>

namespace Keltrix::Host {

std::vector<double> CamberOf(const BeamFile& file, const std::vector<Statics::Span>& spans)
{
    std::vector<double> camber(file.camber.empty() ? 0 : spans.size());
    std::size_t next = 0;
    for (std::size_t i = 0; i < camber.size() && next < file.camber.size(); ++i)
        if (!spans[i].IsOverhang()) camber[i] = file.camber[next++];
    return camber;
}

std::size_t SpansWithCamber(const std::vector<Statics::Span>& spans)
{
    return static_cast<std::size_t>(
        std::count_if(spans.begin(), spans.end(), [](const Statics::Span& span) { return !span.IsOverhang(); }));
}

} // namespace Keltrix::Host
