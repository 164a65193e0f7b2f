#pragma once

#include <optional>

#include "Layout.h"

namespace Keltrix::Stability {

/// A factor with its estimated relative error.
struct Factor {
    double lambda = 0.0;
    double error = 0.0;
};

/// The factors of smallest magnitude of both signs; none where there is none.
struct Factors {
    std::optional<Factor> positive;
    std::optional<Factor> negative;
};

/// Critical factors of a unit that forks hold at both ends and nothing between: under moments and loads alone from a series of sines, under one
/// compression all along from its closed form. Nothing for every other unit, and where the series does not converge fast, as under a load above
/// a section without warping stiffness.
///
/// Between forks the lateral displacement follows from the twist: E Iz v'' = -λ M φ. What is left of the potential is
/// ½ ∫ (E Iw φ''² + G It φ'²) dx - ½ λ [∫ βz M φ'² dx + Σ Q zQ φ² + ∫ q zq φ² dx] - ½ λ² ∫ M² φ²/(E Iz) dx, quadratic in λ, whose smallest factor is
/// an upper bound (Ritz). The estimated error is three times the difference from a series of fewer terms.
std::optional<Factors> FactorsBySeries(const Layout& unit, const SectionConstants& section);

} // namespace Keltrix::Stability
