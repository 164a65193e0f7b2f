#include "Positions.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

#include "keltrix/design/Places.h"

namespace Keltrix::BS5950 {

using Design::Between;
using Design::LargestMagnitude;
using Design::Parabola;
using Design::Sum;

namespace {

// Steps of a search between two places of the rules' breaks.
constexpr int STEPS = 8;
// Share of the sub-span by which a place beside a break lies off it.
constexpr double BESIDE = 1e-13;
// Gain by which a place must exceed what is known to become a position.
constexpr double GAIN = 1e-12;

int SignOf(double value) { return (value > 0.0) - (value < 0.0) + 1; }

// From left to right; readings of one place by their moments.
bool Precedes(const PositionResult& a, const PositionResult& b)
{
    const auto key = [](const PositionResult& p) {
        return std::tuple(p.place, p.x, p.actions.Mx, p.actions.My, p.reversed, p.majorReading, p.minorReading);
    };
    return key(a) < key(b);
}

// Two readings that agree at an end of the sub-span.
bool IsRepeated(const PositionResult& a, const PositionResult& b)
{
    return a.place == b.place && a.place != Place::Inside && a.actions.Mx == b.actions.Mx &&
           a.actions.My == b.actions.My && a.momentMajor == b.momentMajor && a.momentMinor == b.momentMinor;
}

// Coefficients of 1, s, s² ...
using Polynomial = std::array<double, 5>;

Polynomial PolynomialOf(const Parabola& p) { return {p.left, p.right - p.left - p.curvature, p.curvature, 0.0, 0.0}; }

// Of a polynomial of the second degree.
Polynomial Square(const Polynomial& p)
{
    return {p[0] * p[0], 2.0 * p[0] * p[1], 2.0 * p[0] * p[2] + p[1] * p[1], 2.0 * p[1] * p[2], p[2] * p[2]};
}

double At(const Polynomial& p, double s) { return p[0] + s * (p[1] + s * (p[2] + s * (p[3] + s * p[4]))); }

// Places strictly between 0 and 1 where the polynomial changes its sign, ascending: one at most between neighbouring places
// where its derivative does.
std::vector<double> RootsBetweenEnds(const Polynomial& p, int degree)
{
    std::vector<double> places{0.0};
    if (degree > 1) {
        Polynomial derivative{};
        for (std::size_t i = 1; i < p.size(); ++i)
            derivative[i - 1] = static_cast<double>(i) * p[i];
        for (const double s : RootsBetweenEnds(derivative, degree - 1))
            places.push_back(s);
    }
    places.push_back(1.0);
    std::vector<double> roots;
    for (std::size_t i = 1; i < places.size(); ++i) {
        double low = places[i - 1];
        double high = places[i];
        const bool rises = At(p, low) < 0.0;
        if (rises == (At(p, high) < 0.0)) continue;
        double s = 0.5 * (low + high);
        while (s > low && s < high) {
            ((At(p, s) < 0.0) == rises ? low : high) = s;
            s = 0.5 * (low + high);
        }
        if (high > 0.0 && high < 1.0) roots.push_back(high);
    }
    return roots;
}

// Place of the largest value of a smooth function between a and c, from a first guess b, by Brent's method: golden section and
// parabolic steps.
template <class Function>
double MaximumPlace(const Function& f, double a, double b, double c)
{
    constexpr double GOLDEN = 0.3819660112501051;
    constexpr double TOLERANCE = 1e-9;
    double x = b, w = b, v = b;
    double fx = f(x), fw = fx, fv = fx;
    double step = 0.0, before = 0.0;
    for (int i = 0; i < 80; ++i) {
        const double middle = 0.5 * (a + c);
        if (std::abs(x - middle) <= 2.0 * TOLERANCE - 0.5 * (c - a)) break;
        const double r = (x - w) * (fx - fv);
        double q = (x - v) * (fx - fw);
        double p = (x - v) * q - (x - w) * r;
        q = 2.0 * (q - r);
        if (q > 0.0) p = -p;
        q = std::abs(q);
        const double last = before;
        before = step;
        if (std::abs(p) < std::abs(0.5 * q * last) && p > q * (a - x) && p < q * (c - x)) {
            step = p / q;
        } else {
            before = x < middle ? c - x : a - x;
            step = GOLDEN * before;
        }
        const double u = x + (std::abs(step) >= TOLERANCE ? step : std::copysign(TOLERANCE, step));
        const double fu = f(u);
        if (fu >= fx) {
            (u >= x ? a : c) = x;
            v = w, fv = fw, w = x, fw = fx, x = u, fx = fu;
        } else {
            (u < x ? a : c) = u;
            if (fu >= fw || w == x) {
                v = w, fv = fw, w = u, fw = fu;
            } else if (fu >= fv || v == x || v == w)
                v = u, fv = fu;
        }
    }
    return x;
}

std::uint64_t BranchOf(const PositionResult& p, const CrossSection& section)
{
    std::uint64_t branch = 1;
    const auto put = [&branch](int value, int values) {
        branch = branch * static_cast<std::uint64_t>(values) + static_cast<std::uint64_t>(value);
    };
    const Actions& a = p.actions;
    put(p.cls.cls, 5);
    for (const ElementClass& e : p.cls.elements)
        put(e.compressed ? e.cls : 0, 5);
    put(p.cls.count, 7);
    put(SignOf(p.cls.r1), 3);
    put(SignOf(a.F), 3);
    put(SignOf(a.Mx), 3);
    put(SignOf(a.My), 3);
    put(p.flangesOnly, 2);
    put(p.flangesOnlyY, 2);
    put(p.Mrx > 0.0, 2);
    // The more exact rule takes the smaller of two capacities, and the largest of what it compares.
    put(p.Mrx == p.Mcx, 2);
    put(p.Mry == p.Mcy, 2);
    put(p.combined == p.axial, 2);
    put(a.Fvy > section.HighShearY(), 2);
    put(a.Fvx > section.HighShearX(), 2);
    put(section.Properties().shape == Shape::CHS && std::hypot(a.Fvy, a.Fvx) > section.HighShearY(), 2);
    return branch;
}

} // namespace

Actions SubSpanActions::At(double s, const CSectionBS5950& section) const
{
    return section.ActionsOf(Between(forceLeft, forceRight, s),
                             {Between(torsionLeft, torsionRight, s), major.At(s), minor.At(s)});
}

PositionFinder::PositionFinder(const CrossSection& section, const Design::MomentDiagram& major,
                               const Design::MomentDiagram& minor) :
    m_section(section),
    m_major(major), m_minor(minor)
{}

void PositionFinder::Find(int subSpan, const Steel::CSubSpan& sub, double from, double to,
                          std::vector<PositionResult>& positions)
{
    m_from = from;
    m_to = to;
    m_actions.forceLeft = sub.GetForcesLeft();
    m_actions.forceRight = sub.GetForcesRight();
    m_actions.torsionLeft = sub.GetMomentsLeft().x;
    m_actions.torsionRight = sub.GetMomentsRight().x;
    m_blank.subSpan = subSpan;
    const auto first = static_cast<std::ptrdiff_t>(positions.size());
    const auto majors = m_major.Curves(subSpan);
    const auto minors = m_minor.Curves(subSpan);
    const bool angle = m_section.Properties().shape == Shape::Angle;
    for (std::size_t i = 0; i < majors.size(); ++i)
        for (std::size_t j = 0; j < minors.size(); ++j) {
            m_actions.major = majors[i];
            m_actions.minor = minors[j];
            m_blank.majorReading = majors.size() > 1 ? static_cast<Reading>(i + 1) : Reading::Diagram;
            m_blank.minorReading = minors.size() > 1 ? static_cast<Reading>(j + 1) : Reading::Diagram;
            m_blank.reversed = false;
            FindReading(positions);
            // How an angle is turned is not known: the moments about its principal axes are taken both ways.
            m_blank.reversed =
                angle && LargestMagnitude(m_actions.major) > 0.0 && LargestMagnitude(m_actions.minor) > 0.0;
            if (m_blank.reversed) FindReading(positions);
        }
    const auto begin = positions.begin() + first;
    if (positions.end() - begin == 2) return;
    std::sort(begin, positions.end(), Precedes);
    positions.erase(std::unique(begin, positions.end(), IsRepeated), positions.end());
}

PositionResult PositionFinder::Position(double s, Place place) const
{
    PositionResult p = m_blank;
    p.place = place;
    p.x = Between(m_from, m_to, s);
    p.actions = m_actions.At(s, m_section.Section());
    m_section.Evaluate(p);
    return p;
}

// One reading of the moments: the ends, the extremes, and what lies between.
void PositionFinder::FindReading(std::vector<PositionResult>& positions)
{
    const SectionProperties& s = m_section.Properties();
    m_first = m_actions.major;
    m_second = m_actions.minor;
    if (s.shape == Shape::Angle) {
        const double sign = m_blank.reversed ? -1.0 : 1.0;
        m_first = Sum(m_actions.major, std::cos(s.alpha), m_actions.minor, sign * std::sin(s.alpha));
        m_second = Sum(m_actions.major, -std::sin(s.alpha), m_actions.minor, sign * std::cos(s.alpha));
    }
    const std::size_t first = positions.size();
    positions.push_back(Position(0.0, Place::LeftEnd));
    AddExtremes(positions);
    positions.push_back(Position(1.0, Place::RightEnd));
    if (NeedsSearch(positions.data() + first, positions.data() + positions.size())) Search(positions, first);
}

void PositionFinder::AddExtremes(std::vector<PositionResult>& positions) const
{
    for (const double s : Design::ExtremePlaces(m_first, m_second)) {
        if (std::isnan(s)) continue;
        positions.push_back(Position(s, Place::Inside));
        positions.back().found = Found::Extreme;
    }
}

// Whether both moments and the compression are nowhere larger than at a position.
bool PositionFinder::IsWorst(const PositionResult& p) const
{
    constexpr double EQUAL = 1.0 - 1e-14;
    const double left = m_actions.forceLeft.x;
    const double right = m_actions.forceRight.x;
    const bool axial = left == right || (std::max(left, right) <= 0.0 && p.actions.F <= std::min(left, right) * EQUAL);
    return axial && p.momentMajor >= EQUAL * LargestMagnitude(m_first) &&
           p.momentMinor >= EQUAL * LargestMagnitude(m_second);
}

// A utilisation can be largest away from ends and extremes where a moment capacity depends on the shear, or where actions that
// are combined are not at their worst together. With compressed elements of a section that is not symmetrical more moment
// can mean less compression, so that its class has to be looked at all along.
bool PositionFinder::NeedsSearch(const PositionResult* first, const PositionResult* last) const
{
    if (!(m_to > m_from)) return false;
    const auto larger = [](double a, double b) { return std::max(std::abs(a), std::abs(b)); };
    const Vec3<double>& l = m_actions.forceLeft;
    const Vec3<double>& r = m_actions.forceRight;
    const bool x = LargestMagnitude(m_actions.major) > 0.0;
    const bool y = LargestMagnitude(m_actions.minor) > 0.0;
    const SectionProperties& s = m_section.Properties();
    const double along = larger(l.z, r.z), across = larger(l.y, r.y);
    // Either shear reduces either moment of an angle, and the resultant both of a tube.
    const bool isEither = s.shape == Shape::Angle || s.shape == Shape::CHS;
    if (along > m_section.HighShearY() && (x || (isEither && y))) return true;
    if (across > m_section.HighShearX() && (y || (isEither && x))) return true;
    if (s.shape == Shape::CHS && std::hypot(along, across) > m_section.HighShearY() && (x || y)) return true;
    const int kinds = (larger(l.x, r.x) > 0.0) + x + y;
    if (kinds < 2) return false;
    if (s.shape == Shape::UnequalI || s.shape == Shape::Tee) return true;
    // The two rules of combination do not follow each other, so the worse one has to serve everywhere.
    const bool moreExact = m_section.IsMoreExact() && s.IsDoublySymmetric();
    return std::none_of(first, last,
                        [&](const PositionResult& p) { return IsWorst(p) && (p.Mrx > 0.0 || !moreExact); });
}

std::array<double, PositionFinder::MEASURES> PositionFinder::Measures(const PositionResult& p)
{
    const bool tension = p.actions.F > 0.0;
    return {tension ? p.axial : 0.0,    tension ? 0.0 : p.axial,   p.major, p.minor,
            tension ? p.combined : 0.0, tension ? 0.0 : p.combined};
}

PositionFinder::Sample PositionFinder::Evaluate(double s) const
{
    const PositionResult p = Position(s, Place::Inside);
    Sample sample;
    sample.s = s;
    sample.branch = BranchOf(p, m_section);
    sample.value = Measures(p);
    sample.sumOfRatios = p.Mrx == 0.0;
    sample.capacities = {p.Pz, p.Mcx, p.Mcy};
    sample.open = {IsLeftToSlenderFlanges(p, Axis::X), IsLeftToSlenderFlanges(p, Axis::Y)};
    return sample;
}

void PositionFinder::Take(const Sample& sample)
{
    for (std::size_t i = 0; i < MEASURES; ++i)
        if (sample.value[i] > m_best[i].value[i]) m_best[i] = sample;
    for (std::size_t axis = 0; axis < 2; ++axis)
        if (sample.open[axis] && m_open[axis] < 0.0) m_open[axis] = sample.s;
}

// A rule that cannot be evaluated somewhere between the positions has to be known, however small the utilisation there.
void PositionFinder::AddOpenPlaces(std::vector<PositionResult>& positions, std::size_t first) const
{
    for (const Axis axis : {Axis::X, Axis::Y}) {
        const double s = m_open[axis == Axis::X ? 0 : 1];
        const auto known = std::any_of(positions.begin() + static_cast<std::ptrdiff_t>(first), positions.end(),
                                       [axis](const PositionResult& p) { return IsLeftToSlenderFlanges(p, axis); });
        if (s < 0.0 || known) continue;
        positions.push_back(Position(s, Place::Inside));
        positions.back().found = Found::RuleNotEvaluated;
    }
}

// Searches the whole sub-span, and makes a position of each place where a utilisation exceeds all that is known.
void PositionFinder::Search(std::vector<PositionResult>& positions, std::size_t first)
{
    m_best = {};
    m_open = {-1.0, -1.0};
    for (std::size_t i = first; i < positions.size(); ++i) {
        const PositionResult& p = positions[i];
        Sample known;
        known.value = Measures(p);
        Take(known);
    }
    const std::array<Sample, MEASURES> known = m_best;
    FindBreaks();
    for (std::size_t i = 1; i < m_breaks.size(); ++i)
        SearchPiece(m_breaks[i - 1], m_breaks[i]);
    for (std::size_t i = 0; i < MEASURES; ++i) {
        const double s = m_best[i].s;
        if (!(m_best[i].value[i] > known[i].value[i] * (1.0 + GAIN))) continue;
        const auto same = [s](const Sample& other) { return other.s == s; };
        if (std::any_of(m_best.begin(), m_best.begin() + static_cast<std::ptrdiff_t>(i), same)) continue;
        positions.push_back(Position(s, Place::Inside));
        positions.back().found = Found::LargestUtilisation;
    }
    AddOpenPlaces(positions, first);
}

void PositionFinder::AddRoots(const Parabola& curve, double level) { Design::AddPlacesAtLevel(curve, level, m_breaks); }

// Places where the rules can change their formula, ascending, with both ends.
void PositionFinder::FindBreaks()
{
    const CSectionBS5950& section = m_section.Section();
    const Vec3<double>& l = m_actions.forceLeft;
    const Vec3<double>& r = m_actions.forceRight;
    m_breaks = {0.0, 1.0};
    const auto both = [this](const Parabola& curve, double level) {
        AddRoots(curve, level);
        AddRoots(curve, -level);
    };
    const Actions least = section.LeastActions();
    both(m_actions.major, least.Mx);
    both(m_actions.minor, least.My);
    both({l.x, r.x, 0.0}, least.F);
    for (const double level : m_section.AxialThresholds())
        both({l.x, r.x, 0.0}, level);
    for (const double level : m_section.ShearThresholdsY())
        both({l.z, r.z, 0.0}, level);
    for (const double level : m_section.ShearThresholdsX())
        both({l.y, r.y, 0.0}, level);
    if (section.Properties().shape == Shape::Angle) {
        AddRoots(m_first, 0.0);
        AddRoots(m_second, 0.0);
    } else if (section.Properties().shape == Shape::CHS) {
        AddResultantBreaks();
        // The square of the resultant shear at the square of a threshold.
        const double dz = r.z - l.z, dy = r.y - l.y;
        for (const double level : m_section.ShearThresholdsY())
            AddRoots({l.z * l.z + l.y * l.y, r.z * r.z + r.y * r.y, dz * dz + dy * dy}, level * level);
    } else
        AddStressBreaks();
    std::sort(m_breaks.begin(), m_breaks.end());
}

// Places where the elastic stress vanishes at an edge of the section, so that an element begins to be compressed.
void PositionFinder::AddStressBreaks()
{
    const SectionProperties& s = m_section.Properties();
    const Parabola axial{-m_actions.forceLeft.x / s.A, -m_actions.forceRight.x / s.A, 0.0};
    const Parabola top = Sum(axial, 1.0, m_actions.major, -(s.D - s.cy) / s.Ix);
    const Parabola bottom = Sum(axial, 1.0, m_actions.major, s.cy / s.Ix);
    for (const double side : {-1.0 / s.Zy, 0.0, 1.0 / s.Zy}) {
        AddRoots(Sum(top, 1.0, m_actions.minor, side), 0.0);
        AddRoots(Sum(bottom, 1.0, m_actions.minor, side), 0.0);
    }
}

// The same for a circular section, whose two moments have one resultant: it reaches Z F/A where a polynomial of the fourth degree
// vanishes.
void PositionFinder::AddResultantBreaks()
{
    const SectionProperties& s = m_section.Properties();
    const double k = s.Zx / s.A;
    const Polynomial x = PolynomialOf(m_actions.major);
    const Polynomial y = PolynomialOf(m_actions.minor);
    const Polynomial F = PolynomialOf({k * m_actions.forceLeft.x, k * m_actions.forceRight.x, 0.0});
    Polynomial difference = Square(x);
    const Polynomial y2 = Square(y);
    const Polynomial F2 = Square(F);
    for (std::size_t i = 0; i < difference.size(); ++i)
        difference[i] += y2[i] - F2[i];
    for (const double root : RootsBetweenEnds(difference, 4))
        m_breaks.push_back(root);
}

// Between two breaks the branch of the rules changes only where an element changes its class: found by bisection.
void PositionFinder::SearchPiece(double from, double to)
{
    if (!(to - from > 4.0 * BESIDE)) return;
    from += BESIDE;
    to -= BESIDE;
    Sample start = Evaluate(from);
    Sample last = start;
    for (int i = 1; i <= STEPS; ++i) {
        const Sample next = Evaluate(i == STEPS ? to : from + (to - from) * i / STEPS);
        while (last.branch != next.branch) {
            Sample lo = last;
            Sample hi = next;
            double s = 0.5 * (lo.s + hi.s);
            while (s > lo.s && s < hi.s) {
                const Sample middle = Evaluate(s);
                (middle.branch == lo.branch ? lo : hi) = middle;
                s = 0.5 * (lo.s + hi.s);
            }
            SearchRun(start, lo);
            start = last = hi;
        }
        last = next;
    }
    SearchRun(start, last);
}

// One branch of the rules from end to end: the utilisations are smooth. Sums of ratios in which no capacity varies are parabolas.
void PositionFinder::SearchRun(const Sample& from, const Sample& to)
{
    Take(from);
    Take(to);
    const int steps = from.sumOfRatios && from.capacities == to.capacities ? 2 : STEPS;
    std::array<Sample, STEPS + 1> samples;
    samples[0] = from;
    for (int i = 1; i < steps; ++i) {
        samples[static_cast<std::size_t>(i)] = Evaluate(from.s + (to.s - from.s) * i / steps);
        Take(samples[static_cast<std::size_t>(i)]);
    }
    const auto last = static_cast<std::size_t>(steps);
    samples[last] = to;
    for (std::size_t measure = 0; measure < MEASURES; ++measure)
        for (std::size_t i = 1; i < last; ++i)
            RefineMaximum(measure, {&samples[i - 1], &samples[i], &samples[i + 1]}, i == 1 || i + 1 == last,
                          steps == 2);
}

// Around three neighbouring samples of which the middle one is the largest, or that lie at an end of the run.
void PositionFinder::RefineMaximum(std::size_t measure, const std::array<const Sample*, 3>& near, bool atEnd,
                                   bool parabolic)
{
    const auto& [a, b, c] = near;
    const double fa = a->value[measure];
    const double fb = b->value[measure];
    const double fc = c->value[measure];
    if (!atEnd && (fb < fa || fb < fc)) return;
    const double bend = fa - 2.0 * fb + fc; // the samples are evenly spaced
    if (!(bend < 0.0)) return;
    const double h = 0.5 * (c->s - a->s);
    const double shift = 0.5 * (fa - fc) / bend;
    if (!(std::abs(shift) < 1.0)) return;
    const double estimate = fb - 0.25 * (fc - fa) * (fc - fa) / (2.0 * bend);
    if (!(estimate > 0.999 * m_best[measure].value[measure])) return;
    const double guess = b->s + shift * h;
    if (parabolic)
        Take(Evaluate(guess));
    else
        Take(Evaluate(MaximumPlace([&](double s) { return Evaluate(s).value[measure]; }, a->s, guess, c->s)));
}

} // namespace Keltrix::BS5950
