#pragma once

#include <vector>

#include "keltrix/stability/CriticalLoad.h"

namespace Keltrix::Stability {

/// Elastic critical loads under the moments about the minor axis alone: the section moves along its web and twists. Of sections that are stiffer about
/// their minor axis, such as wide T sections and boxes that lie flat.
///
/// A section is held by supports along the web (major-axis shear) and against twist; a unit lies between two such sections. Rotation about the
/// major axis holds the slope. All other restraints are left out, which never raises a critical load. The sub-spans' Fy and Mz are taken; every load along
/// the major axis acts at the edge of the section towards which it destabilises, because the input has no place for it. `width` is the width of the
/// section along the major axis, m.
///
/// `CriticalLoad::Mcr` and the moments of a unit are those about the minor axis; the shape's v is the displacement along the web, its flanges are the two edges.
/// Gives a reason as FindCriticalLoads does, and where the shear centre lies off the web plane.
KELTRIX_STABILITY_API CriticalLoads FindCriticalLoadsAcross(const std::vector<Steel::CMemberPoint>& points,
                                                            const std::vector<Steel::CSubSpan>& subSpans,
                                                            const SectionConstants& section, double width,
                                                            const Options& options = {});

} // namespace Keltrix::Stability
