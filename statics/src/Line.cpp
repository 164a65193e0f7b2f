#include "keltrix/statics/Line.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "Polynomial.h"
#include "SamePlace.h"

namespace Keltrix::Statics {

namespace {

void Take(double value, double at, bool& any, Extremes& extremes)
{
    if (!any) extremes = {{value, at}, {value, at}};
    any = true;
    if (value < extremes.least.value || std::isnan(value)) extremes.least = {value, at};
    if (value > extremes.greatest.value || std::isnan(value)) extremes.greatest = {value, at};
}

// Extremes of a polynomial of each piece over a stretch.
template <class Of>
Extremes ExtremesOf(const std::vector<Piece>& pieces, double from, double to, Of polynomialOf)
{
    Extremes extremes;
    if (pieces.empty()) return extremes;
    if (std::isnan(from) || std::isnan(to)) {
        const Extreme unknown{std::nan(""), std::nan("")};
        return {unknown, unknown};
    }
    if (from > to) std::swap(from, to);
    from = std::clamp(from, pieces.front().start, pieces.back().End());
    to = std::clamp(to, pieces.front().start, pieces.back().End());
    const double tolerance = SAME_PLACE * pieces.back().End();
    bool any = false;
    for (const Piece& piece : pieces) {
        const double a = std::max(from, piece.start);
        const double b = std::min(to, piece.End());
        if (b < a || (b - a <= tolerance && to - from > tolerance)) continue;
        const Polynomial p = polynomialOf(piece);
        const double sa = a <= piece.start ? 0.0 : (a - piece.start) / piece.length;
        const double sb = b >= piece.End() ? 1.0 : (b - piece.start) / piece.length;
        Take(p.At(sa), a, any, extremes);
        for (const double s : FindRoots(p.Derivative()))
            if (s > sa && s < sb) Take(p.At(s), piece.start + s * piece.length, any, extremes);
        Take(p.At(sb), b, any, extremes);
    }
    return extremes;
}

} // namespace

double Piece::ShearAt(double t) const { return shear - loadLeft * t - (loadRight - loadLeft) * t * t / (2.0 * length); }
double Piece::MomentAt(double t) const { return MomentOf(*this).At(t / length); }
double Piece::DeflectionAt(double t, double EI) const { return DeflectionOf(*this, EI).At(t / length); }
double Piece::SlopeAt(double t, double EI) const
{
    return DeflectionOf(*this, EI).Derivative().At(t / length) / length;
}

double Reference::At(double x) const
{
    if (!(to > from)) return valueFrom;
    const double s = (x - from) / (to - from);
    return (1.0 - s) * valueFrom + s * valueTo + 4.0 * rise * s * (1.0 - s);
}

const Piece* Line::Beside(double x, Side side, double& t) const
{
    if (m_pieces.empty()) return nullptr;
    const double tolerance = SAME_PLACE * m_pieces.back().End();
    const double place = side == Side::Left ? x - tolerance : x + tolerance;
    auto it = std::upper_bound(m_pieces.begin(), m_pieces.end(), place,
                               [](double position, const Piece& piece) { return position < piece.End(); });
    if (it == m_pieces.end()) --it;
    t = x - it->start;
    if (t <= tolerance) t = 0.0;
    if (t >= it->length - tolerance) t = it->length;
    return &*it;
}

double Line::Shear(double x, Side side) const
{
    double t = 0.0;
    const Piece* const piece = Beside(x, side, t);
    return piece ? piece->ShearAt(t) : 0.0;
}

double Line::Moment(double x, Side side) const
{
    double t = 0.0;
    const Piece* const piece = Beside(x, side, t);
    return piece ? piece->MomentAt(t) : 0.0;
}

double Line::Slope(double x, Side side) const
{
    double t = 0.0;
    const Piece* const piece = Beside(x, side, t);
    return piece ? piece->SlopeAt(t, m_EI) : 0.0;
}

double Line::Deflection(double x) const
{
    double t = 0.0;
    const Piece* const piece = Beside(x, Side::Right, t);
    return piece ? piece->DeflectionAt(t, m_EI) : 0.0;
}

Extremes Line::Shears(double from, double to) const
{
    return ExtremesOf(m_pieces, from, to, [](const Piece& piece) { return ShearOf(piece); });
}

Extremes Line::Moments(double from, double to) const
{
    return ExtremesOf(m_pieces, from, to, [](const Piece& piece) { return MomentOf(piece); });
}

Extremes Line::Deflections(double from, double to, const Reference& reference) const
{
    return ExtremesOf(m_pieces, from, to, [&](const Piece& piece) {
        Polynomial p = DeflectionOf(piece, m_EI);
        // The reference is a parabola: its values at the ends and its rise over their middle say what to take off.
        const double left = reference.At(piece.start);
        const double right = reference.At(piece.End());
        const double bow = reference.At(piece.start + 0.5 * piece.length) - 0.5 * (left + right);
        p.c[0] -= left;
        p.c[1] -= right - left + 4.0 * bow;
        p.c[2] += 4.0 * bow;
        return p;
    });
}

bool Line::HasBreaksOf(const Line& other) const
{
    return m_EI == other.m_EI &&
           std::equal(m_pieces.begin(), m_pieces.end(), other.m_pieces.begin(), other.m_pieces.end(),
                      [](const Piece& a, const Piece& b) { return a.start == b.start && a.length == b.length; });
}

void Line::Add(double factor, const Line& other)
{
    if (!std::isfinite(factor)) throw std::invalid_argument("a factor that is not a number");
    if (other.IsEmpty()) return;
    if (IsEmpty()) {
        *this = other;
        for (Piece& p : m_pieces)
            p = {p.start, p.length, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0};
    } else if (!HasBreaksOf(other))
        throw std::invalid_argument("lines of different members do not add");
    for (std::size_t i = 0; i < m_pieces.size(); ++i) {
        Piece& p = m_pieces[i];
        const Piece& o = other.m_pieces[i];
        p.deflection += factor * o.deflection;
        p.slope += factor * o.slope;
        p.moment += factor * o.moment;
        p.shear += factor * o.shear;
        p.loadLeft += factor * o.loadLeft;
        p.loadRight += factor * o.loadRight;
    }
}

} // namespace Keltrix::Statics
