#pragma once

// A second solution of the same variational problem, which shares no code with the library: in each sub-span v and φ are
// Legendre series, continuity and restraints are linear equations between the coefficients whose null space comes from a dense
// decomposition, and all eigenvalues from a dense solver. It reads forces and moments by itself and knows restraints by their
// meaning, not by the library's bits.

#include <optional>
#include <string>
#include <vector>

#include "keltrix/stability/SectionConstants.h"

namespace StabilityTest {

/// One linear condition: a v + b φ = 0, on the displacements or on their slopes.
struct SecondCondition {
    bool slope = false;
    double v = 0.0;
    double phi = 0.0;
};

struct SecondPoint {
    double x = 0.0;
    double load = 0.0; ///< N downwards
    double height = 0.0;
    std::vector<SecondCondition> conditions;
};

struct SecondSubSpan {
    double momentLeft = 0.0; ///< sagging
    double momentRight = 0.0;
    double load = 0.0; ///< N/m downwards
    double height = 0.0;
    double compressionLeft = 0.0;
    double compressionRight = 0.0;
    std::vector<SecondCondition> along;
};

struct SecondMember {
    Keltrix::Stability::SectionConstants section;
    std::vector<SecondPoint> points;
    std::vector<SecondSubSpan> subSpans;
};

struct SecondResult {
    bool held = false;
    std::optional<double> positive;
    std::optional<double> negative;
};

/// Critical factors of the whole member at once, with polynomials of the given degree in each sub-span.
SecondResult SolveAgain(const SecondMember& member, int degree);

} // namespace StabilityTest
