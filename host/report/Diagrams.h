#pragma once

#include <string>
#include <vector>

#include "report/MemberAxis.h"

namespace Keltrix::Host {

/// A value of an action at a position along the member: m, N or N·m.
struct Station {
    double position = 0.0;
    double value = 0.0;
};

/// One action along a member.
struct ActionDiagram {
    /// The action along one sub-span: one curve where it is known, several where the end shears and the end moments do not
    /// belong together. A curve is a row of stations from the left end to the right one, extremes among them.
    struct Piece {
        std::vector<std::vector<Station>> curves;
        bool IsKnown() const { return curves.size() == 1; }
    };

    std::string symbol; ///< "Myy"
    std::string name;   ///< "moment about the major axis"
    bool isMoment = false;
    bool sags = false; ///< values below zero are called sagging, those above zero hogging
    std::vector<Piece> pieces;

    bool IsZero() const;
    bool IsKnown() const;
    /// The largest and the smallest value with their positions, the first of equal ones.
    Station Largest() const;
    Station Smallest() const;
    /// "354 kNm".
    std::string ValueText(double value) const;
    /// "-90 kNm sagging".
    std::string NamedValue(double value) const;
};

/// Axial force, shear and moment about both axes, and torsion. Bending moments are those of Design::MomentDiagram, all others
/// are linear along each sub-span.
std::vector<ActionDiagram> ActionDiagrams(const DrawnLayout& layout);

/// The diagram to the scale of the member's drawing, values above zero upwards (so that a moment lies on the side in
/// tension). The extremes, between points too, and the values at the member's ends are written. Where an action is not
/// known, all that it can be is drawn in broken lines.
std::string DiagramSvg(const std::string& id, const ActionDiagram& diagram, const DrawnLayout& layout,
                       const MemberAxis& axis);

} // namespace Keltrix::Host
