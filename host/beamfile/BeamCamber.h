#pragma once

#include <cstddef>
#include <vector>

#include "beamfile/BeamFile.h"
#include "keltrix/statics/Analysis.h"

namespace Keltrix::Host {

/// The camber of each span of an analysis, m. A file's list has one value for each length between supports, from the left end on; overhangs have
/// none, and so have lengths beyond the end of the list.
std::vector<double> CamberOf(const BeamFile& file, const std::vector<Statics::Span>& spans);

/// The lengths between supports.
std::size_t SpansWithCamber(const std::vector<Statics::Span>& spans);

} // namespace Keltrix::Host
