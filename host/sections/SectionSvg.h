#pragma once

#include <algorithm>
#include <string>

#include "keltrix/platform/KxData.h"

namespace Keltrix::Host {

/// The elements of a section's drawing without a frame or a style: one user unit to the millimetre, y downwards from the top
/// edge, x from the left edge. Their classes are "steel", "axis", "plastic", "principal" and "centroid".
struct SectionDrawing {
    double width = 0.0; ///< extent, mm
    double depth = 0.0;
    double datum = 0.0; ///< x of the axis of symmetry, the channel's back, the angle's heel
    std::string body;   ///< empty for a section that has no outline

    double Size() const { return std::max(width, depth); }
};
SectionDrawing DrawSection(const CSection& section);

/// A drawing of the section to scale as SVG, one user unit to the millimetre: the outline with its fillets, the
/// centroid with the axes x-x and y-y, the plastic axes dashed, and the principal axes u-u and v-v of an angle.
std::string SectionSvg(const CSection& section, const std::string& title);

} // namespace Keltrix::Host
