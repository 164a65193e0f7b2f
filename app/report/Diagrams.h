#pragma once

#include <string>
#include <vector>

#include "report/MemberAxis.h"

namespace Keltrix::App {

/// One action along a member.
struct ActionDiagram {
    std::string symbol; ///< "Myy"
    std::string name;   ///< "moment about the major axis"
    bool isMoment = false;
    /// Values at the left and the right end of every sub-span, N or N·m.
    std::vector<double> left;
    std::vector<double> right;

    bool IsZero() const;
    /// "354 kNm".
    std::string ValueText(double value) const;
};

/// Axial force, shear and moment about both axes, and torsion.
std::vector<ActionDiagram> ActionDiagrams(const MemberLayout& layout);

/// The diagram to the scale of the member's drawing, values above zero upwards (so that a moment lies on the side in
/// tension), linear along each sub-span. The extremes and the values at the member's ends are written.
std::string DiagramSvg(const std::string& id, const ActionDiagram& diagram, const MemberLayout& layout,
                       const MemberAxis& axis);

} // namespace Keltrix::App
