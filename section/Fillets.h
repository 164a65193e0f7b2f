#pragma once

/// Geometry of fillets and roundings, per power of their radius R.
///
/// A fillet between two faces at right angles fills the spandrel between the faces and the quarter circle that touches
/// both: the square R x R at the corner less the quarter disc of radius R about the opposite corner of that square. A
/// rounding of a corner removes the same figure. With distances measured from a face:
///   area              A  = R² - π R²/4
///   first moment      Q  = R³/2 - (π R²/4)(R - 4R/(3π))       so the centroid lies at Q/A from each face
///   second moment     If = R⁴/3 - [π/16 - 4/(9π) + (π/4)(1 - 4/(3π))²] R⁴ = (1 - 5π/16) R⁴ about the face
///   own second moment I0 = If - A (Q/A)²
/// (quarter disc: Young, Budynas, Roark's Formulas for Stress and Strain, properties of sections).
namespace Keltrix::Steel::Fillet {

/// Area of one spandrel: 1 - π/4, R².
inline constexpr double AREA = 0.21460183660255172;
/// Area of two spandrels: 2 - π/2, R².
inline constexpr double PAIR_AREA = 0.42920367320510344;
/// Area of four spandrels: 4 - π, R².
inline constexpr double FOUR_AREA = 0.8584073464102069;

/// Distance of the centroid from each of the two faces: (10 - 3π)/(3(4 - π)), R.
inline constexpr double CENTROID = 0.22336793894575216;

/// Second moment of one, two and four spandrels about their own centroidal axes parallel to a face:
/// 1 - 5π/16 - (1 - π/4) CENTROID², R⁴ each.
inline constexpr double OWN_SECOND_MOMENT = 0.007545115641596548;
inline constexpr double PAIR_OWN_SECOND_MOMENT = 0.015090231283193097;
inline constexpr double FOUR_OWN_SECOND_MOMENT = 0.030180462566386193;

/// Second moment of one spandrel about its straight face: 1 - 5π/16, R⁴.
inline constexpr double FACE_SECOND_MOMENT = 0.01825229575318965;

/// Product moment of one spandrel about its centroid, taken positive: -(19/24 - π/4 - AREA CENTROID²), R⁴. Rounded to
/// six decimals, as is required; the exact value is 0.0044387.
inline constexpr double PRODUCT_MOMENT = 0.004439;

/// Root radii below this, in the host's length unit, count as none in the torsion constants.
inline constexpr double NO_RADIUS = 1e-10;

} // namespace Keltrix::Steel::Fillet
