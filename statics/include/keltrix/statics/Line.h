#pragma once

#include <utility>
#include <vector>

#include "keltrix/statics/Export.h"

namespace Keltrix::Statics {

/// A length without any change of load, by its state at the left end. With t from the left end and the load q linear
/// from loadLeft to loadRight: shear' = -q, moment' = shear, EI deflection'' = -moment. Moments sag above zero.
struct Piece {
    double start = 0.0;
    double length = 0.0;
    double deflection = 0.0; ///< m, downwards (along y about the minor axis)
    double slope = 0.0;      ///< radians
    double moment = 0.0;     ///< N·m
    double shear = 0.0;      ///< N
    double loadLeft = 0.0;   ///< N/m
    double loadRight = 0.0;

    double End() const { return start + length; }
    /// At the distance t from the left end, 0 to length.
    KELTRIX_STATICS_API double ShearAt(double t) const;
    KELTRIX_STATICS_API double MomentAt(double t) const;
    KELTRIX_STATICS_API double DeflectionAt(double t, double EI) const;
    KELTRIX_STATICS_API double SlopeAt(double t, double EI) const;
};

/// A largest or smallest value, and where it is, m.
struct Extreme {
    double value = 0.0;
    double at = 0.0;
};

/// Least and greatest value along a length.
struct Extremes {
    Extreme least;
    Extreme greatest;

    /// The one of the larger magnitude.
    const Extreme& Worst() const { return -least.value > greatest.value ? least : greatest; }
};

/// Side of a place where a quantity may jump.
enum class Side { Left, Right };

/// A straight reference with a parabola on it, from which deflections count: the values at two places and the rise of
/// the parabola above the straight line at the middle (zero at both places).
struct Reference {
    double from = 0.0;
    double to = 0.0;
    double valueFrom = 0.0;
    double valueTo = 0.0;
    double rise = 0.0;

    KELTRIX_STATICS_API double At(double x) const;
};

/// Shears, moments and deflections of a member in one plane, exact between breaks: polynomials of second, third and
/// fifth degree. Extremes come from the zeros of the derivatives. A line without pieces is zero everywhere.
class KELTRIX_STATICS_API Line {
public:
    Line() = default;
    Line(std::vector<Piece> pieces, double EI) : m_pieces(std::move(pieces)), m_EI(EI) {}

    const std::vector<Piece>& Pieces() const { return m_pieces; }
    double EI() const { return m_EI; }
    bool IsEmpty() const { return m_pieces.empty(); }

    /// Beside a place of the member; a place beyond the ends is the end.
    double Shear(double x, Side side) const;
    double Moment(double x, Side side) const;
    double Slope(double x, Side side) const;
    double Deflection(double x) const;

    /// Over a stretch of the member, the jumps at its inner places included; at its ends the side within the stretch.
    /// The ends of the stretch may be in either order; one beyond the member counts as the member's end. Of a stretch
    /// without length both sides of the place count. Of places that are not numbers the extremes are not either.
    Extremes Shears(double from, double to) const;
    Extremes Moments(double from, double to) const;
    Extremes Deflections(double from, double to) const { return Deflections(from, to, Reference()); }
    /// Of the deflection less the reference.
    Extremes Deflections(double from, double to, const Reference& reference) const;

    /// Whether the other line has the same breaks and the same stiffness, as lines of one analysis and plane have.
    bool HasBreaksOf(const Line& other) const;
    /// Adds a multiple of a line with the same breaks and stiffness. A line without pieces takes the multiple, and adds
    /// nothing. Throws std::invalid_argument, and changes nothing, where breaks or stiffness differ or the factor is
    /// not finite.
    void Add(double factor, const Line& other);

private:
    const Piece* Beside(double x, Side side, double& t) const;

    std::vector<Piece> m_pieces;
    double m_EI = 1.0;
};

/// Axial force along a piece, tension above zero; N.
struct AxialPiece {
    double left = 0.0;
    double right = 0.0;
    double bow = 0.0; ///< half the change of the axial load along the piece

    /// At a share of the piece's length, 0 to 1.
    double At(double s) const { return (1.0 - s) * left + s * right + bow * s * (1.0 - s); }
};

} // namespace Keltrix::Statics
