#pragma once

#include <array>
#include <optional>

#include "Pencil.h"

namespace Keltrix::Stability {

/// A factor λ at which K - λ S is singular, with its null vector.
struct Eigenpair {
    double lambda = 0.0;
    Vector vector;
};

/// The smallest factor above zero and that of smallest magnitude below zero; nothing where there is none. A factor ten thousand
/// times larger than the other one counts as none.
struct Eigenpairs {
    bool definite = false; ///< K is positive definite and all numbers are finite; otherwise there are no factors
    std::optional<Eigenpair> positive;
    std::optional<Eigenpair> negative;
};

/// `guess` are the factors of a coarser mesh with their vectors on this one; without any, or where they mislead, the factors are found from
/// scratch. That no factor is missed is proved for each end by a factorisation of K - λ S, which is positive definite only below
/// the smallest factor.
Eigenpairs FindEigenpairs(const Pencil& pencil, const Eigenpairs& guess);

} // namespace Keltrix::Stability
