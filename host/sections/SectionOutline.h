#pragma once

#include <vector>

#include "keltrix/platform/KxData.h"

namespace Keltrix::Host {

/// One closed line of an outline, anticlockwise for material and clockwise for an opening. m, y upwards.
struct OutlineLoop {
    struct Piece {
        double x; ///< where the piece ends
        double y;
        double radius = 0.0; ///< 0 for a straight line
        bool anticlockwise = true;
    };
    double x = 0.0; ///< where the first piece starts
    double y = 0.0;
    std::vector<Piece> pieces;
};

/// The outline of a cross-section, with fillets and roundings as arcs of at most a half circle. y is measured from the
/// lowest edge. x is measured from the axis of symmetry of an I, a T and hollow sections, from the back of a channel and
/// from the heel of an angle.
struct SectionOutline {
    std::vector<OutlineLoop> loops;
    double left = 0.0; ///< extent
    double right = 0.0;
    double top = 0.0;

    /// Enclosed area, with arcs in chords: up to a thousandth of the arcs' own share off.
    double Area() const;
    /// Height of the axis parallel to x that halves the area; of the one parallel to y, its x.
    double HalvingHeight() const;
    double HalvingX() const;
};

/// Empty for a shape that has no outline here.
SectionOutline MakeOutline(const CSection& section);

} // namespace Keltrix::Host
