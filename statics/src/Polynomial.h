#pragma once

#include <array>
#include <cstddef>

#include "keltrix/statics/Line.h"

namespace Keltrix::Statics {

/// Polynomial of at most fifth degree over s, 0 to 1: the sum of c[i] sⁱ.
struct Polynomial {
    static constexpr std::size_t TERMS = 6;
    std::array<double, TERMS> c{};

    double At(double s) const
    {
        double value = 0.0;
        for (std::size_t i = TERMS; i-- > 0;)
            value = value * s + c[i];
        return value;
    }
    Polynomial Derivative() const;
};

/// Places strictly between 0 and 1 where a polynomial changes sign, ascending.
struct Roots {
    std::array<double, Polynomial::TERMS> at{};
    std::size_t count = 0;

    const double* begin() const { return at.data(); }
    const double* end() const { return at.data() + count; }
};
Roots FindRoots(const Polynomial& polynomial);

/// Shear, moment and deflection of a piece over the share of its length.
Polynomial ShearOf(const Piece& piece);
Polynomial MomentOf(const Piece& piece);
Polynomial DeflectionOf(const Piece& piece, double EI);

} // namespace Keltrix::Statics
