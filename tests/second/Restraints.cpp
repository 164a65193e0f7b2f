// (5) What follows from a restraint; the lengths over which a flange or a strut is not held; Tables 13, 14 and 22.

#include <algorithm>
#include <cmath>

#include "Second.h"
#include "keltrix/steel/Restraint.h"

namespace Second {

namespace {

using Bits = Keltrix::Data::CRestraint;

constexpr unsigned LATERAL[2] = {Bits::FLANGE1_LATERAL, Bits::FLANGE2_LATERAL};
constexpr unsigned WARPING[2] = {Bits::FLANGE1_WARPING, Bits::FLANGE2_WARPING};
constexpr unsigned WARPING_PART[2] = {Bits::FLANGE1_WARPING_PART, Bits::FLANGE2_WARPING_PART};
constexpr unsigned RELATIVE = Bits::COMP_FLANGE_LATERAL | Bits::TENS_FLANGE_LATERAL | Bits::COMP_FLANGE_WARPING |
                              Bits::TENS_FLANGE_WARPING | Bits::COMP_FLANGE_WARPING_PART |
                              Bits::TENS_FLANGE_WARPING_PART;

bool Has(unsigned bits, unsigned all) { return (bits & all) == all; }

/// Compression and tension flange said as flange 1 and 2; where the sign is not known they hold nothing, except for both of
/// them together, which hold both flanges.
unsigned Named(unsigned bits, int sign)
{
    const unsigned pairs[3][2] = {{Bits::COMP_FLANGE_LATERAL, Bits::TENS_FLANGE_LATERAL},
                                  {Bits::COMP_FLANGE_WARPING, Bits::TENS_FLANGE_WARPING},
                                  {Bits::COMP_FLANGE_WARPING_PART, Bits::TENS_FLANGE_WARPING_PART}};
    const unsigned* flanges[3] = {LATERAL, WARPING, WARPING_PART};
    unsigned named = bits & ~RELATIVE;
    for (int k = 0; k < 3; ++k) {
        const bool compression = Has(bits, pairs[k][0]), tension = Has(bits, pairs[k][1]);
        const int c = sign > 0 ? 1 : 0;
        if ((compression && sign != 0) || (compression && tension)) named |= flanges[k][c];
        if ((tension && sign != 0) || (compression && tension)) named |= flanges[k][1 - c];
    }
    return named;
}

} // namespace

unsigned Close(unsigned bits, int sign)
{
    bits = Named(bits, sign);
    for (int pass = 0; pass < 4; ++pass) {
        for (int f = 0; f < 2; ++f)
            if (Has(bits, WARPING[f])) bits |= WARPING_PART[f];
        if (Has(bits, Bits::TORSION)) bits |= Bits::TORSION_PART | Bits::TORSION_FRICTION;
        if (Has(bits, Bits::MAJOR_ROTATION)) bits |= Bits::MAJOR_ROTATION_PART;
        if (Has(bits, Bits::MINOR_ROTATION)) bits |= Bits::MINOR_ROTATION_PART;
        if (Has(bits, LATERAL[0] | LATERAL[1])) bits |= Bits::MINOR_SHEAR | Bits::TORSION;
        const bool lateral = (bits & (LATERAL[0] | LATERAL[1] | Bits::MINOR_SHEAR)) != 0;
        if (Has(bits, Bits::TORSION) && lateral) bits |= LATERAL[0] | LATERAL[1] | Bits::MINOR_SHEAR;
    }
    return bits;
}

namespace {

/// A section at which something is said about the flange: a member point or the edge of a held length.
struct Holder {
    double x = 0.0;
    std::vector<unsigned> restraints; ///< of the point and of the held lengths that touch it, each closed by itself
    std::vector<double> middle;       ///< of the length that each of these is of, the point itself for the first
    bool support = false, end = false;
};
struct HeldLength {
    double a = 0.0, b = 0.0;
    unsigned bits = 0;
};

class Flanges {
public:
    explicit Flanges(const Basis& b) : m_b(b), m_tol(1e-9 * b.member.Length())
    {
        for (const Point& p : b.member.points)
            m_start = std::min(m_start, p.x), m_end = std::max(m_end, p.x);
        FindAlong();
        FindHolders();
    }

    std::vector<Stretch> Of(int flange) const
    {
        std::vector<Stretch> all;
        double from = m_start, to = m_end;
        const bool left = IsTip(0), right = IsTip(m_b.member.points.size() - 1);
        if (left) AddCantilever(flange, true, from, all);
        if (right) AddCantilever(flange, false, to, all);
        AddBetween(flange, from, to, all);
        AddHeld(flange, from, to, all);
        return all;
    }

private:
    int SignOf(double value) const
    {
        const double tiny = 1e-9 * m_largest;
        return value > tiny ? 1 : value < -tiny ? -1 : 0;
    }

    /// Sign of the moment at a point, zero where it is none or the two sides disagree.
    int SignAt(std::size_t point) const
    {
        int sign = 0;
        const auto& subs = m_b.member.subs;
        bool first = true;
        const auto add = [&](double value) {
            const int s = SignOf(value);
            if (first)
                sign = s;
            else if (s != sign)
                sign = 0;
            first = false;
        };
        if (point > 0)
            for (const double m : m_b.diagram.At(Bending::Major, static_cast<int>(point) - 1,
                                                 m_b.member.points[point].x - m_b.member.points[point - 1].x))
                add(m);
        if (point < subs.size())
            for (const double m : m_b.diagram.At(Bending::Major, static_cast<int>(point), 0.0))
                add(m);
        return sign;
    }

    /// The left end and the places where the moment changes its sign; one that rounding sets beside a zero is none.
    std::vector<double> Contraflexures(int sub, double L) const
    {
        std::vector<double> edges{0.0};
        const std::vector<double> zeros = m_b.diagram.Zeros(Bending::Major, sub);
        const auto none = [&](double from, double to) {
            for (const double s : {from, 0.5 * (from + to), to})
                for (const double m : m_b.diagram.At(Bending::Major, sub, s))
                    if (SignOf(m) != 0) return false;
            return true;
        };
        for (std::size_t k = 0; k < zeros.size(); ++k)
            if (!none(edges.back(), zeros[k]) && !none(zeros[k], k + 1 < zeros.size() ? zeros[k + 1] : L))
                edges.push_back(zeros[k]);
        return edges;
    }

    void FindAlong()
    {
        const auto [below, above] = m_b.diagram.Largest(Bending::Major, m_start, m_end);
        m_largest = std::max(below, above);
        for (std::size_t i = 0; i < m_b.member.subs.size(); ++i) {
            const double x0 = m_b.member.points[i].x, L = m_b.member.points[i + 1].x - x0;
            const unsigned bits = m_b.member.subs[i].bits;
            std::vector<double> edges{0.0};
            if ((bits & RELATIVE) != 0) edges = Contraflexures(static_cast<int>(i), L);
            edges.push_back(L);
            for (std::size_t k = 0; k + 1 < edges.size(); ++k) {
                const double mid = 0.5 * (edges[k] + edges[k + 1]);
                int sign = 2;
                for (const double m : m_b.diagram.At(Bending::Major, static_cast<int>(i), mid)) {
                    const int s = SignOf(m);
                    sign = sign == 2 || sign == s ? s : 0;
                }
                m_along.push_back({x0 + edges[k], x0 + edges[k + 1], Close(bits, sign)});
            }
        }
    }

    void FindHolders()
    {
        const auto& points = m_b.member.points;
        for (std::size_t j = 0; j < points.size(); ++j) {
            Holder h;
            h.x = points[j].x;
            h.restraints.push_back(Close(points[j].bits, SignAt(j)));
            h.middle.push_back(h.x);
            h.support = Has(points[j].bits, Bits::MAJOR_SHEAR);
            h.end = j == 0 || j + 1 == points.size();
            m_holders.push_back(h);
        }
        for (const HeldLength& along : m_along)
            for (const double x : {along.a, along.b}) {
                Holder* same = nullptr;
                for (Holder& h : m_holders)
                    if (std::fabs(h.x - x) <= m_tol) same = &h;
                if (!same) {
                    Holder h;
                    h.x = x;
                    m_holders.push_back(h);
                    same = &m_holders.back();
                }
                same->restraints.push_back(along.bits);
                same->middle.push_back(0.5 * (along.a + along.b));
            }
        std::sort(m_holders.begin(), m_holders.end(), [](const Holder& a, const Holder& b) { return a.x < b.x; });
    }

    bool Holds(const Holder& h, int flange) const
    {
        return std::any_of(h.restraints.begin(), h.restraints.end(),
                           [&](unsigned bits) { return Has(bits, LATERAL[flange]); });
    }
    /// The restraints of a section that hold the flange, those of a held length together with its point; where none does
    /// (an end of the member) that of the point.
    std::vector<unsigned> Holding(const Holder& h, int flange) const
    {
        const bool atPoint = !h.restraints.empty() && h.middle.front() == h.x;
        const unsigned point = atPoint ? h.restraints.front() : 0u;
        std::vector<unsigned> holding;
        for (const unsigned bits : h.restraints)
            if (Has(bits, LATERAL[flange])) holding.push_back(Close(bits | point, 0));
        return holding.empty() ? std::vector<unsigned>{point} : holding;
    }
    bool HeldBetween(int flange, double a, double b) const
    {
        for (const HeldLength& along : m_along)
            if (along.a <= a + m_tol && along.b >= b - m_tol && Has(along.bits, LATERAL[flange])) return true;
        return false;
    }

    bool IsTip(std::size_t point) const
    {
        const auto& points = m_b.member.points;
        if (Has(points[point].bits, Bits::MAJOR_SHEAR)) return false;
        int supports = 0;
        bool fixed = false;
        for (const Point& p : points)
            if (Has(p.bits, Bits::MAJOR_SHEAR)) {
                ++supports;
                fixed = fixed || Has(p.bits, Bits::MAJOR_ROTATION);
            }
        return supports >= 2 || (supports == 1 && fixed);
    }

    /// A height above zero, or uplift from below: a jump of the shear downwards where nothing holds the point up, a shear that falls along.
    bool Destabilising(double a, double b) const
    {
        const std::vector<SubSpan>& subs = m_b.member.subs;
        const std::vector<Point>& points = m_b.member.points;
        double most = 0.0;
        for (const SubSpan& s : subs)
            most = std::max({most, std::abs(s.Fz[0]), std::abs(s.Fz[1])});
        const double noise = 1e-9 * most;
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (points[i].x < a - m_tol || points[i].x > b + m_tol) continue;
            if (points[i].height > 0.0) return true;
            const double jump = (i < subs.size() ? subs[i].Fz[0] : 0.0) - (i > 0 ? subs[i - 1].Fz[1] : 0.0);
            if (points[i].height < 0.0 && jump < -noise && !Has(points[i].bits, Bits::MAJOR_SHEAR)) return true;
        }
        for (std::size_t i = 0; i < subs.size(); ++i) {
            const double from = std::max(a, points[i].x), to = std::min(b, points[i + 1].x);
            const bool up = subs[i].Fz[1] - subs[i].Fz[0] < -noise;
            if (to - from > m_tol && (subs[i].height > 0.0 || (subs[i].height < 0.0 && up))) return true;
        }
        return false;
    }

    /// Table 13 for one end: the length is k L + 2D or infinite.
    double Table13(int flange, const Holder& h, double L, bool destabilising) const
    {
        double best = INF;
        for (const unsigned bits : Holding(h, flange))
            best = std::min(best, Table13(flange, bits, h.support || h.end, L, destabilising));
        return best;
    }
    double Table13(int flange, unsigned bits, bool supported, double L, bool destabilising) const
    {
        const double more = destabilising ? 0.2 : 0.0, some = destabilising ? 0.15 : 0.0;
        const unsigned c = LATERAL[flange], t = LATERAL[1 - flange];
        const bool lateral = (bits & (c | t | Bits::MINOR_SHEAR)) != 0;
        if (Has(bits, Bits::TORSION_PART | c)) {
            if (Has(bits, WARPING[0] | WARPING[1])) return (0.7 + some) * L;
            if (Has(bits, WARPING[flange])) return (0.75 + some) * L;
            if (Has(bits, WARPING_PART[0] | WARPING_PART[1])) return (0.8 + some) * L;
            if (Has(bits, WARPING_PART[flange])) return (0.85 + some) * L;
            return (1.0 + more) * L;
        }
        if (Has(bits, Bits::TORSION_PART) && lateral) return (1.0 + more) * L + 2.0 * m_b.s.D;
        if (Has(bits, Bits::TORSION_FRICTION) && lateral) return (1.2 + more) * L + 2.0 * m_b.s.D;
        if (Has(bits, c) && !supported) return (1.0 + more) * L;
        return INF;
    }

    /// Table 14 with the increase for a moment at the tip.
    double Table14(int flange, const Holder& support, const Holder& tip, double L, bool destabilising,
                   double tipMoment) const
    {
        double best = INF;
        for (const unsigned bits : Holding(support, flange))
            best = std::min(best, Table14(flange, bits, tip.restraints.front(), L, destabilising, tipMoment));
        return best;
    }
    double Table14(int flange, unsigned support, unsigned tip, double L, bool destabilising, double tipMoment) const
    {
        static const double normal[4][4] = {
            {3.0, 2.7, 2.4, 2.1}, {2.0, 1.8, 1.6, 1.4}, {1.0, 0.9, 0.8, 0.7}, {0.8, 0.7, 0.6, 0.5}};
        static const double high[4][4] = {
            {7.5, 7.5, 4.5, 3.6}, {5.0, 5.0, 3.0, 2.4}, {2.5, 2.5, 1.5, 1.2}, {1.4, 1.4, 0.6, 0.5}};
        const unsigned t = LATERAL[1 - flange], any = support & (LATERAL[0] | LATERAL[1]);
        int row = -1;
        if (Has(support, Bits::MINOR_SHEAR | Bits::TORSION))
            row = Has(support, WARPING[0] | WARPING[1]) ? 3 : 2;
        else if (Has(support, Bits::TORSION_PART) && any != 0)
            row = 1;
        else if (Has(support, t))
            row = 0;
        if (row < 0) return INF;
        const bool torsion = Has(tip, Bits::TORSION);
        const bool lateral = (tip & (LATERAL[0] | LATERAL[1])) != 0;
        const int column = torsion ? (lateral ? 3 : 2) : Has(tip, t) ? 1 : 0;
        const double LE = (destabilising ? high : normal)[row][column] * L;
        return std::fabs(tipMoment) >= 1.0 ? std::max(LE + 0.3 * L, 1.3 * LE) : LE;
    }

    /// The stretch of a cantilever for one flange; `edge` moves to where the rest of the member begins.
    void AddCantilever(int flange, bool left, double& edge, std::vector<Stretch>& all) const
    {
        std::vector<Holder> way = m_holders;
        if (!left) std::reverse(way.begin(), way.end());
        const double start = way.front().x;
        const auto far = [&](double x) { return std::fabs(x - start); };
        double support = INF;
        for (const Holder& h : way)
            if (h.support) support = std::min(support, far(h.x));
        const Holder tip = way.front();
        // Held along its whole length.
        bool whole = true;
        for (const HeldLength& along : m_along) {
            const bool inside = std::min(far(along.a), far(along.b)) < support - m_tol;
            if (inside && !Has(along.bits, LATERAL[flange])) whole = false;
        }
        if (whole) return;
        const bool fourth = Has(tip.restraints.front(), Bits::TORSION | LATERAL[flange]);
        // Held lengths along the cantilever do not count, nor at its support.
        for (Holder& h : way)
            for (std::size_t k = h.restraints.size(); !fourth && k-- > 0;)
                if (h.middle[k] != h.x && far(h.middle[k]) < support) {
                    h.restraints.erase(h.restraints.begin() + static_cast<std::ptrdiff_t>(k));
                    h.middle.erase(h.middle.begin() + static_cast<std::ptrdiff_t>(k));
                }
        const Holder* to = nullptr;
        for (std::size_t k = 1; k < way.size(); ++k) {
            if (!Holds(way[k], flange)) continue;
            if (!fourth && far(way[k].x) < support - m_tol) continue;
            to = &way[k];
            break;
        }
        if (fourth && to && far(to->x) < support - m_tol) return; // divided by restraints: Table 13
        Stretch s;
        const Holder& stop = to ? *to : way.back();
        const double L = far(stop.x);
        s.a = std::min(tip.x, stop.x);
        s.b = std::max(tip.x, stop.x);
        s.cantilever = true;
        s.destabilising = Destabilising(s.a, s.b);
        const double moment = TipMoment(left);
        s.LE = Table14(flange, stop, tip, L, s.destabilising, moment);
        s.compressed[flange] = true;
        all.push_back(s);
        edge = stop.x;
    }

    void AddBetween(int flange, double from, double to, std::vector<Stretch>& all) const
    {
        const Holder* before = nullptr;
        for (const Holder& h : m_holders) {
            if (h.x < from - m_tol || h.x > to + m_tol) continue;
            if (!before) {
                before = &h;
                continue;
            }
            if (!Holds(h, flange) && !h.end) continue;
            if (h.x - before->x > m_tol && !HeldBetween(flange, before->x, h.x)) {
                Stretch s;
                s.a = before->x;
                s.b = h.x;
                s.destabilising = Destabilising(s.a, s.b);
                const double L = s.b - s.a;
                s.LE = 0.5 * (Table13(flange, *before, L, s.destabilising) + Table13(flange, h, L, s.destabilising));
                s.cantilever = ReachesTip(s);
                // Between the tip and a restraint that counts: by both tables, the longer length.
                if (IsTip(0) && s.a < m_start + m_tol)
                    s.LE = std::max(s.LE, Table14(flange, h, *before, L, s.destabilising, TipMoment(true)));
                if (s.cantilever && !(IsTip(0) && s.a < m_start + m_tol))
                    s.LE = std::max(s.LE, Table14(flange, *before, h, L, s.destabilising, TipMoment(false)));
                s.compressed[flange] = true;
                all.push_back(s);
            }
            before = &h;
        }
    }

    /// Lengths that are held, those side by side as one: nothing buckles there.
    void AddHeld(int flange, double from, double to, std::vector<Stretch>& all) const
    {
        Stretch* open = nullptr;
        std::vector<Stretch> held;
        for (const HeldLength& along : m_along) {
            if (!Has(along.bits, LATERAL[flange]) || along.a < from - m_tol || along.b > to + m_tol) {
                open = nullptr;
                continue;
            }
            if (!open) {
                held.push_back({});
                open = &held.back();
                open->a = along.a;
                open->held = open->compressed[flange] = true;
            }
            open->b = along.b;
        }
        for (Stretch& s : held) {
            s.LE = 0.0;
            s.destabilising = Destabilising(s.a, s.b);
            s.cantilever = ReachesTip(s);
            all.push_back(s);
        }
    }

    double TipMoment(bool left) const
    {
        const std::size_t last = m_b.member.subs.size() - 1;
        const double L = m_b.member.points[last + 1].x - m_b.member.points[last].x;
        double most = 0.0;
        for (const double m : m_b.diagram.At(Bending::Major, left ? 0 : static_cast<int>(last), left ? 0.0 : L))
            most = std::max(most, std::fabs(m));
        return most;
    }

    bool ReachesTip(const Stretch& s) const
    {
        return (IsTip(0) && s.a < m_start + m_tol) || (IsTip(m_b.member.points.size() - 1) && s.b > m_end - m_tol);
    }

    const Basis& m_b;
    double m_tol;
    double m_start = INF, m_end = -INF;
    double m_largest = 0.0;
    std::vector<HeldLength> m_along;
    std::vector<Holder> m_holders;

public:
    bool AnyTip() const { return IsTip(0) || IsTip(m_b.member.points.size() - 1); }
    bool AnyHeight() const { return Destabilising(m_start, m_end); }
};

double GivenLength(double given, double L) { return given < 0.0 ? -given * L : given; }

/// Table 22 by what holds the two ends in position and in direction (0 no, 1 partly, 2 fully).
double Table22(bool held1, int turn1, bool held2, int turn2)
{
    if (held1 && held2) {
        if (turn1 == 2 && turn2 == 2) return 0.7;
        if (turn1 == 2 || turn2 == 2 || (turn1 == 1 && turn2 == 1)) return 0.85;
        return 1.0;
    }
    if (held1 == held2) return INF;
    const int fixed = held1 ? turn1 : turn2, other = held1 ? turn2 : turn1;
    if (fixed != 2) return INF;
    return other == 2 ? 1.2 : other == 1 ? 1.5 : 2.0;
}

} // namespace

std::vector<Stretch> StretchesOf(const Basis& b)
{
    const Flanges flanges(b);
    if (b.member.given) {
        Stretch s;
        s.a = b.member.points.front().x;
        s.b = b.member.points.back().x;
        s.LE = GivenLength(b.member.givenLT, b.member.Length());
        s.cantilever = flanges.AnyTip();
        s.destabilising = flanges.AnyHeight();
        s.compressed[0] = s.compressed[1] = true;
        s.held = s.LE == 0.0;
        return {s};
    }
    // Only where the flange is compressed; stretches of both flanges with the same ends are one.
    const auto [below, above] = b.diagram.Largest(Bending::Major, -INF, INF);
    const double tiny = std::max(1e-6 * b.steel.py * b.p.Zx, 1e-5 * std::max(below, above));
    std::vector<Stretch> all;
    for (int f = 0; f < 2; ++f)
        for (const Stretch& s : flanges.Of(f)) {
            const auto [first, second] = b.diagram.Largest(Bending::Major, s.a, s.b);
            const bool bent = (f == 0 ? first : second) > tiny;
            if (!bent) continue;
            bool merged = false;
            for (Stretch& other : all)
                if (other.held == s.held &&
                    std::fabs(other.a - s.a) + std::fabs(other.b - s.b) < 1e-9 * b.member.Length()) {
                    other.LE = std::max(other.LE, s.LE);
                    other.compressed[f] = merged = true;
                    other.cantilever = other.cantilever || s.cantilever;
                }
            if (!merged) all.push_back(s);
        }
    return all;
}

std::vector<FlexuralSpan> FlexuralSpans(const Basis& b, Bending axis)
{
    const auto& points = b.member.points;
    const bool major = axis == Bending::Major;
    const unsigned shear = major ? Bits::MAJOR_SHEAR : Bits::MINOR_SHEAR;
    const unsigned full = major ? Bits::MAJOR_ROTATION : Bits::MINOR_ROTATION;
    const unsigned part = major ? Bits::MAJOR_ROTATION_PART : Bits::MINOR_ROTATION_PART;
    const auto signAt = [&](std::size_t i) {
        const double m = b.diagram.Value(Bending::Major, points[i].x);
        return m > 0.0 ? 1 : m < 0.0 ? -1 : 0;
    };
    const auto along = [&](std::size_t i) { return Has(Close(b.member.subs[i].bits, 0), shear); };
    std::vector<bool> held;
    for (std::size_t i = 0; i < points.size(); ++i)
        held.push_back(Has(Close(points[i].bits, signAt(i)), shear) || (i > 0 && along(i - 1)) ||
                       (i < b.member.subs.size() && along(i)));
    std::vector<FlexuralSpan> spans;
    std::size_t from = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (!held[i] && i + 1 < points.size()) continue;
        FlexuralSpan s;
        s.a = points[from].x;
        s.b = points[i].x;
        s.L = s.b - s.a;
        s.held = i == from + 1 && along(from);
        if (s.held && !spans.empty() && spans.back().held) { // held lengths side by side are one
            spans.back().b = s.b;
            spans.back().L += s.L;
            from = i;
            continue;
        }
        const auto turn = [&](std::size_t k) {
            const unsigned bits = Close(points[k].bits, 0);
            return Has(bits, full) ? 2 : Has(bits, part) ? 1 : 0;
        };
        if (!s.held) {
            s.LE = s.L * Table22(held[from], turn(from), held[i], turn(i));
            s.sway = held[from] != held[i];
        }
        spans.push_back(s);
        from = i;
    }
    if (!b.member.given) return spans;
    FlexuralSpan whole;
    whole.a = points.front().x;
    whole.b = points.back().x;
    const double length = whole.b - whole.a;
    whole.LE = GivenLength(major ? b.member.givenMajor : b.member.givenMinor, length);
    whole.held = whole.LE == 0.0;
    whole.sway = whole.LE > length * (1.0 + 1e-12);
    for (const FlexuralSpan& s : spans) // 4.7.10 goes by the longest piece between sections that hold
        if (!s.held) whole.L = std::max(whole.L, s.L);
    return {whole};
}

} // namespace Second
