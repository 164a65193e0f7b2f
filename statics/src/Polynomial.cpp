#include "Polynomial.h"

#include <cmath>

namespace Keltrix::Statics {

namespace {

// A polynomial of which the constant outweighs everything else keeps its sign between 0 and 1.
bool KeepsSign(const Polynomial& p)
{
    double others = 0.0;
    for (std::size_t i = 1; i < Polynomial::TERMS; ++i)
        others += std::abs(p.c[i]);
    return !(std::abs(p.c[0]) < others);
}

// The zero between two places of unlike sign of a polynomial that is monotone between them: Newton's steps, and halving where one of
// them leaves the bracket.
double ZeroBetween(const Polynomial& p, const Polynomial& slope, double a, double b)
{
    const bool rises = p.At(a) < 0.0;
    double s = 0.5 * (a + b);
    for (int i = 0; i < 80; ++i) {
        const double value = p.At(s);
        if (value == 0.0) return s;
        ((value < 0.0) == rises ? a : b) = s;
        double next = s - value / slope.At(s);
        if (!(next > a && next < b)) next = 0.5 * (a + b);
        if (std::abs(next - s) <= 1e-16 || next == a || next == b) return next;
        s = next;
    }
    return s;
}

} // namespace

Polynomial Polynomial::Derivative() const
{
    Polynomial d;
    for (std::size_t i = 1; i < TERMS; ++i)
        d.c[i - 1] = static_cast<double>(i) * c[i];
    return d;
}

Roots FindRoots(const Polynomial& polynomial)
{
    Roots roots;
    if (KeepsSign(polynomial)) return roots;
    const Polynomial slope = polynomial.Derivative();
    const Roots turns = FindRoots(slope);
    double left = 0.0;
    double valueLeft = polynomial.At(0.0);
    for (std::size_t i = 0; i <= turns.count; ++i) {
        const double right = i < turns.count ? turns.at[i] : 1.0;
        const double valueRight = polynomial.At(right);
        if ((valueLeft < 0.0 && valueRight > 0.0) || (valueLeft > 0.0 && valueRight < 0.0))
            roots.at[roots.count++] = ZeroBetween(polynomial, slope, left, right);
        // A zero at a turning point is touched, not crossed; the next interval starts at it.
        left = right;
        valueLeft = valueRight;
    }
    return roots;
}

Polynomial ShearOf(const Piece& p)
{
    const double h = p.length;
    return {{p.shear, -p.loadLeft * h, -0.5 * (p.loadRight - p.loadLeft) * h}};
}

Polynomial MomentOf(const Piece& p)
{
    const double h = p.length;
    const double change = p.loadRight - p.loadLeft;
    return {{p.moment, p.shear * h, -p.loadLeft * h * h / 2.0, -change * h * h / 6.0}};
}

Polynomial DeflectionOf(const Piece& p, double EI)
{
    const double h = p.length;
    const double k = h * h / EI;
    const double change = p.loadRight - p.loadLeft;
    return {{p.deflection, p.slope * h, -k * p.moment / 2.0, -k * p.shear * h / 6.0, k * p.loadLeft * h * h / 24.0,
             k * change * h * h / 120.0}};
}

} // namespace Keltrix::Statics
