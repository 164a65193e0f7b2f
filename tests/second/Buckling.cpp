// (6) Struts (4.7, Annex C), lateral-torsional buckling (4.3, Annex B), member interaction (4.8.3.3, 4.9).

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "Second.h"

namespace Second {

namespace {

double Perry(double py, double pE, double eta)
{
    const double phi = 0.5 * (py + (eta + 1.0) * pE);
    return pE * py / (phi + std::sqrt(phi * phi - pE * py));
}

/// Annex C.
double StrutStrength(double py, double E, double lambda, double a)
{
    if (std::isinf(lambda) || py <= 0.0) return 0.0;
    const double lambda0 = 0.2 * std::sqrt(PI * PI * E / py);
    if (lambda <= lambda0) return py;
    return Perry(py, PI * PI * E / (lambda * lambda), a * (lambda - lambda0) / 1000.0);
}

/// Table 23: Robertson constants up to and over 40 mm.
std::pair<double, double> Robertson(const Section& s, Bending axis)
{
    const double a = 2.0, b = 3.5, c = 5.5, d = 8.0;
    const bool major = axis == Bending::Major;
    if (s.shape == Shape::Box && s.make == Make::Welded) return {b, c};
    if (s.shape == Shape::Box || s.shape == Shape::Tube)
        return s.make == Make::Rolled ? std::pair{a, a} : std::pair{c, c};
    if (s.shape != Shape::I) return {c, c};
    if (s.make == Make::Welded) return major ? std::pair{b, b} : std::pair{c, d};
    const bool H = s.D <= 1.2 * std::max(s.B, s.B2);
    if (H) return major ? std::pair{b, c} : std::pair{c, d};
    return major ? std::pair{a, b} : std::pair{b, c};
}

double StrutStrength(const Basis& b, Bending axis, double py, double lambda)
{
    const Section& s = b.s;
    if (s.make == Make::Welded && (s.shape == Shape::I || s.shape == Shape::Box)) py -= 20e6;
    const auto [thin, thick] = Robertson(s, axis);
    double T = s.shape == Shape::Angle || s.shape == Shape::Tube ? s.t : std::max(s.t, s.T);
    if (s.shape == Shape::I) T = std::max(T, s.T2);
    const double first = StrutStrength(py, b.steel.E, lambda, thin),
                 second = StrutStrength(py, b.steel.E, lambda, thick);
    if (T <= 40.0e-3 + 1e-9) return first;
    return T < 50e-3 - 1e-9 ? 0.5 * (first + second) : second;
}

/// Annex B.2.1, B.2.2.
double BendingStrength(double py, double E, double lambda, bool welded)
{
    if (std::isinf(lambda)) return 0.0;
    const double l0 = 0.4 * std::sqrt(PI * PI * E / py), a = 7.0 / 1000.0;
    if (lambda <= l0) return py;
    double eta = a * (lambda - l0);
    if (welded && lambda <= 3.0 * l0) eta = std::min(2.0 * eta, 2.0 * a * l0);
    return Perry(py, PI * PI * E / (lambda * lambda), eta);
}

/// Table 15 between its rows; up to D/B 1.25 its first row, beyond 4 none.
double Table15(double ratio, double py)
{
    const double rows[12][2] = {{1.25, 770}, {1.33, 670}, {1.4, 580}, {1.44, 550}, {1.5, 515}, {1.67, 435},
                                {1.75, 410}, {1.8, 395},  {2.0, 340}, {2.5, 275},  {3.0, 225}, {4.0, 170}};
    const double k = 275e6 / py;
    if (ratio <= 1.0) return INF;
    if (ratio <= rows[0][0]) return rows[0][1] * k;
    for (int i = 1; i < 12; ++i)
        if (ratio <= rows[i][0])
            return k * (rows[i - 1][1] +
                        (rows[i][1] - rows[i - 1][1]) * (ratio - rows[i - 1][0]) / (rows[i][0] - rows[i - 1][0]));
    return 0.0;
}

/// Whether a moment about x-x can make the section buckle sideways over this length.
bool BucklesLaterally(const Basis& b, double LE)
{
    const Section& s = b.s;
    const Properties& p = b.p;
    if (s.shape == Shape::Tube) return false;
    if (s.shape == Shape::Angle) return true;
    if (p.Iy >= p.Ix * (1.0 - 1e-9)) return false;
    if (s.shape == Shape::Box && s.make != Make::Welded) return LE / p.ry > Table15(s.D / s.B, b.steel.py);
    return true;
}

double EquivalentSlenderness(const Basis& b, double LE, double betaW, int flange)
{
    const Section& s = b.s;
    const Properties& p = b.p;
    if (!(p.J > 0.0)) return INF; // the formula of the junctions does not serve these thicknesses
    const double lambda = LE / (s.shape == Shape::Angle ? p.rv : p.ry), gamma = 1.0 - p.Iy / p.Ix;
    double u = 1.0, x = 1.0, w = 1.0, psi = 0.0;
    switch (s.shape) {
    case Shape::Box: {
        const double g = gamma * (1.0 - p.J / (2.6 * p.Ix));
        const double phi = std::sqrt(p.Sx * p.Sx * g / (p.A * p.J));
        return 2.25 * std::sqrt(phi * lambda * betaW);
    }
    case Shape::Angle: {
        const double phi = std::sqrt(p.Zu * p.Zu * (1.0 - p.Iv / p.Iu) / (p.A * p.J));
        const double k = lambda > 0.0 ? -4.5 * p.psi / lambda : 0.0;
        const double v = s.B == s.D ? 1.0 : 1.0 / std::sqrt(std::sqrt(1.0 + k * k) + k);
        return 2.25 * v * std::sqrt(phi * lambda);
    }
    case Shape::Channel:
        u = std::pow(p.Iy * p.Sx * p.Sx * gamma / (p.A * p.A * p.H), 0.25);
        x = 1.132 * std::sqrt(p.A * p.H / (p.Iy * p.J));
        break;
    case Shape::Tee:
        u = std::pow(4.0 * p.Sx * p.Sx * gamma / (p.A * p.A * p.hs * p.hs), 0.25);
        x = 0.566 * p.hs * std::sqrt(p.A / p.J);
        w = 4.0 * p.H / (p.Iy * p.hs * p.hs);
        psi = flange == 0 ? p.psi : -p.psi;
        break;
    default: {
        u = std::pow(4.0 * p.Sx * p.Sx * gamma / (p.A * p.A * p.hs * p.hs), 0.25);
        x = 0.566 * p.hs * std::sqrt(p.A / p.J);
        if (s.EqualFlanges()) break;
        const double i1 = s.T * s.B * s.B * s.B, i2 = s.T2 * s.B2 * s.B2 * s.B2;
        const double eta = (flange == 0 ? i1 : i2) / (i1 + i2);
        w = 4.0 * eta * (1.0 - eta);
        psi = (eta > 0.5 ? 0.8 : 1.0) * (2.0 * eta - 1.0);
        if (eta < 0.1 || eta > 0.9) psi = flange == 0 ? p.psi : -p.psi;
        break;
    }
    }
    const double q = 0.05 * (lambda / x) * (lambda / x);
    const double v = 1.0 / std::sqrt(std::sqrt(w + q + psi * psi) + psi);
    return u * v * lambda * std::sqrt(betaW);
}

double BucklingMoment(const Basis& b, const Class& c, double LE, int flange)
{
    if (std::isinf(LE)) return 0.0;
    const bool angle = b.s.shape == Shape::Angle;
    const double betaW = angle || c.cls <= 2 ? 1.0 : c.Wx / b.p.Sx;
    const double lambda = EquivalentSlenderness(b, LE, betaW, flange);
    return c.Wx * BendingStrength(c.pyrX, b.steel.E, lambda, b.s.make == Make::Welded);
}

/// Table 18.
double FactorLT(double M2, double M3, double M4, double largest)
{
    if (largest <= 0.0) return 1.0;
    return std::max(0.44, 0.2 + (0.15 * std::fabs(M2) + 0.5 * std::fabs(M3) + 0.15 * std::fabs(M4)) / largest);
}

/// Table 26.
double Factor(double M2, double M3, double M4, double M24, double largest)
{
    if (largest <= 0.0) return 1.0;
    return std::max(0.2 + std::fabs(0.1 * M2 + 0.6 * M3 + 0.1 * M4) / largest, 0.8 * M24 / largest);
}

/// Table 18 over a length.
double TableFactorLT(const Diagram& d, double a, double b)
{
    const double L = b - a;
    const auto [below, above] = d.Largest(Bending::Major, a, b);
    return FactorLT(d.Value(Bending::Major, a + 0.25 * L), d.Value(Bending::Major, a + 0.5 * L),
                    d.Value(Bending::Major, a + 0.75 * L), std::max(below, above));
}

double Biggest(const Diagram& d, Bending axis, double a, double b)
{
    const auto [below, above] = d.Largest(axis, a, b);
    return std::max(below, above);
}

/// Table 26 over a length.
double TableFactor(const Diagram& d, Bending axis, double a, double b)
{
    const double L = b - a;
    return Factor(d.Value(axis, a + 0.25 * L), d.Value(axis, a + 0.5 * L), d.Value(axis, a + 0.75 * L),
                  Biggest(d, axis, a + 0.25 * L, b - 0.25 * L), Biggest(d, axis, a, b));
}

/// A place of the member with its class; `F` compression only.
struct Place {
    double x = 0.0, from = 0.0, to = 0.0; ///< and the sub-span that it belongs to
    Actions a;
    Class c;
    Capacity capacity;
};

/// What a check needs of a span.
struct Strut {
    FlexuralSpan span;
    double Fc = 0.0, Pc = INF;
    double M = 0.0, m = 1.0;          ///< about the span's own axis
    double other = 0.0, mOther = 1.0; ///< about the other axis over this span
    double pyZ = INF, Mc = INF, McOther = INF;
};
struct Lateral {
    Stretch stretch;
    bool buckles = true;
    double M = 0.0, m = 1.0, Mb = INF;
};

class Checker {
public:
    explicit Checker(const Basis& b) : m_b(b), m_d(b.diagram) { FindPlaces(); }

    Buckling Run()
    {
        for (const FlexuralSpan& s : FlexuralSpans(m_b, Bending::Major))
            m_major.push_back(MakeStrut(Bending::Major, s));
        for (const FlexuralSpan& s : FlexuralSpans(m_b, Bending::Minor))
            m_minor.push_back(MakeStrut(Bending::Minor, s));
        for (const Stretch& s : StretchesOf(m_b))
            m_lateral.push_back(MakeLateral(s));
        Buckling u;
        for (const Strut& s : m_major)
            u.major = std::max(u.major, Over(s.Fc, s.Pc));
        for (const Strut& s : m_minor)
            u.minor = std::max(u.minor, Over(s.Fc, s.Pc));
        for (const Lateral& l : m_lateral)
            if (l.buckles || IsUpright(l)) u.lateral = std::max(u.lateral, Over(l.m * l.M, l.Mb));
        for (const Strut& x : m_major)
            for (const Strut& y : m_minor) {
                if (Common({x.span.a, y.span.a}, {x.span.b, y.span.b}))
                    u.interaction = std::max(u.interaction, Interaction(x, y, Lateral()));
                for (const Lateral& l : m_lateral)
                    if (Common({x.span.a, y.span.a, l.stretch.a}, {x.span.b, y.span.b, l.stretch.b}))
                        u.interaction = std::max(u.interaction, Interaction(x, y, l));
            }
        const bool sideways =
            (m_b.s.shape == Shape::Box || m_b.s.shape == Shape::Tee) && m_b.p.Iy > m_b.p.Ix * (1.0 + 1e-9);
        u.notEvaluated = sideways && Biggest(m_d, Bending::Minor, -INF, INF) > 1e-6 * m_b.steel.py * m_b.p.Zy;
        return u;
    }

private:
    /// A hollow section that does not buckle over this length is said to use its full moment.
    bool IsUpright(const Lateral& l) const
    {
        return m_b.s.shape == Shape::Box && m_b.p.Ix > m_b.p.Iy * (1.0 + 1e-9) && !l.stretch.held;
    }
    bool Common(std::initializer_list<double> starts, std::initializer_list<double> ends) const
    {
        return std::min(ends) - std::max(starts) > 1e-9 * m_b.member.Length();
    }

    /// The actions at a place. Where a moment is zero there the place belongs to what is on its two sides; the section of unequal
    /// flanges and the box, whose limits differ between compression alone and bending, to that, too.
    std::vector<Actions> ActionsBeside(int sub, double s) const
    {
        const auto i = static_cast<std::size_t>(sub);
        const bool angle = m_b.s.shape == Shape::Angle;
        const double L = m_b.member.points[i + 1].x - m_b.member.points[i].x;
        const double least[2] = {1.000001e-6 * m_b.steel.py * (angle ? m_b.p.Zu : m_b.p.Zx),
                                 1.000001e-6 * m_b.steel.py * (angle ? m_b.p.Zv : m_b.p.Zy)};
        const std::vector<Actions> here = ActionsAt(m_b, sub, s),
                                   left = ActionsAt(m_b, sub, std::max(0.0, s - 1e-2 * L)),
                                   right = ActionsAt(m_b, sub, std::min(L, s + 1e-2 * L));
        const bool alone = m_b.s.shape == Shape::Box || (m_b.s.shape == Shape::I && !m_b.s.EqualFlanges());
        const auto beside = [&](double value, double one, double other, int axis) {
            if (std::fabs(value) >= least[axis]) return std::vector<double>{value};
            std::vector<double> values;
            for (const double v : {one, other})
                if (std::fabs(v) > least[axis]) values.push_back(std::copysign(least[axis], v));
            if (values.empty() || (alone && here.front().F < 0.0)) values.push_back(0.0);
            return values;
        };
        std::vector<Actions> all;
        for (std::size_t k = 0; k < here.size(); ++k)
            for (const double Mx : beside(here[k].Mx, left[k].Mx, right[k].Mx, 0))
                for (const double My : beside(here[k].My, left[k].My, right[k].My, 1)) {
                    all.push_back(here[k]);
                    all.back().Mx = Mx;
                    all.back().My = My;
                }
        return all;
    }

    void FindPlaces()
    {
        const bool angle = m_b.s.shape == Shape::Angle;
        for (std::size_t i = 0; i < m_b.member.subs.size(); ++i)
            for (const double s : Places(m_b, static_cast<int>(i))) {
                for (const Actions& a : ActionsBeside(static_cast<int>(i), s)) {
                    Place p{m_b.member.points[i].x + s, m_b.member.points[i].x, m_b.member.points[i + 1].x, a, {}, {}};
                    if (p.a.F > -1e-6 * m_b.p.A * m_b.steel.py) p.a.F = 0.0;
                    if (std::fabs(p.a.Mx) < 1e-6 * m_b.steel.py * (angle ? m_b.p.Zu : m_b.p.Zx)) p.a.Mx = 0.0;
                    if (std::fabs(p.a.My) < 1e-6 * m_b.steel.py * (angle ? m_b.p.Zv : m_b.p.Zy)) p.a.My = 0.0;
                    p.c = Classify(m_b.s, m_b.p, m_b.steel, p.a);
                    p.capacity = MomentCapacity(m_b, p.c, p.a);
                    m_places.push_back(p);
                }
            }
    }

    template <class F>
    void ForEach(double a, double b, F f) const
    {
        const double tol = 1e-9 * m_b.member.Length();
        for (const Place& p : m_places)
            if (p.x >= a - tol && p.x <= b + tol && p.to > a + tol && p.from < b - tol) f(p);
    }
    static double Over(double effect, double resistance) { return Second::Over(effect, resistance); }

    /// Slenderness with the floors of 4.7.10 for single angles, channels and tees.
    std::vector<double> Slendernesses(Bending axis, const FlexuralSpan& s) const
    {
        const Properties& p = m_b.p;
        const auto floored = [&](double r, double k, double plus) {
            return std::max({s.LE / r, k * s.L / r, 0.7 * s.L / r + plus});
        };
        const bool major = axis == Bending::Major;
        switch (m_b.s.shape) {
        case Shape::Angle:
            if (major) return {floored(p.rx, 1.0, 30.0)};
            return {floored(p.rv, 0.85, 15.0), floored(p.ry, 1.0, 30.0)};
        case Shape::Channel:
            if (!major) return {floored(p.ry, 1.0, 30.0)};
            return {std::max(s.LE, 0.85 * s.L) / p.rx};
        case Shape::Tee:
            if (major) return {floored(p.rx, 1.0, 30.0)};
            return {std::max(s.LE, 0.85 * s.L) / p.ry};
        default:
            break;
        }
        return {s.LE / (major ? p.rx : p.ry)};
    }

    /// A given factor stands for the computed one, but not for the least value of a sway case or of unknown moments.
    double Uniform(double computed, bool sway, bool known) const
    {
        const double m = known ? m_b.member.factor.value_or(computed) : std::max(1.0, m_b.member.factor.value_or(1.0));
        return sway ? std::max(m, 0.85) : m;
    }

    Strut MakeStrut(Bending axis, const FlexuralSpan& span) const
    {
        const bool major = axis == Bending::Major;
        const Bending across = major ? Bending::Minor : Bending::Major;
        Strut s;
        s.span = span;
        std::vector<double> lambdas =
            span.held && !m_b.member.given ? std::vector<double>{0.0} : Slendernesses(axis, span);
        ForEach(span.a, span.b, [&](const Place& p) {
            s.Fc = std::max(s.Fc, -p.a.F);
            s.pyZ = std::min(s.pyZ, (major ? p.c.pyrX * p.c.Zx : p.c.pyrY * p.c.Zy));
            if (p.a.F >= 0.0) return;
            for (const double lambda : lambdas) {
                const double reduced = lambda * std::sqrt(p.c.Aeff / m_b.p.A);
                s.Pc = std::min(s.Pc, p.c.Aeff * StrutStrength(m_b, axis, p.c.pyAxial, reduced));
            }
        });
        const auto largest = [&](Bending about, double& M, double& m, double& Mc) {
            M = Biggest(m_d, about, span.a, span.b);
            const bool known = m_d.Known(about, span.a, span.b);
            m = Uniform(known ? TableFactor(m_d, about, span.a, span.b) : 1.0, span.sway, known);
            double most = 0.0;
            ForEach(span.a, span.b, [&](const Place& p) {
                const double here = std::fabs(about == Bending::Major ? p.a.Mx : p.a.My);
                const double own = about == Bending::Major ? p.capacity.Mcx : p.capacity.Mcy;
                if (here > most * (1.0 + 1e-9))
                    most = here, Mc = own;
                else if (here > most * (1.0 - 1e-9))
                    Mc = std::min(Mc, own);
            });
            const double tiny = 1e-6 * m_b.steel.py * (about == Bending::Major ? m_b.p.Zx : m_b.p.Zy);
            if (M < tiny) M = 0.0;
        };
        largest(axis, s.M, s.m, s.Mc);
        largest(across, s.other, s.mOther, s.McOther);
        return s;
    }

    Lateral MakeLateral(const Stretch& stretch) const
    {
        Lateral l;
        l.stretch = stretch;
        l.buckles = !stretch.held && BucklesLaterally(m_b, stretch.LE);
        const auto largest = m_d.Largest(Bending::Major, stretch.a, stretch.b);
        const double first = std::get<0>(largest);
        const double second = std::get<1>(largest);
        const bool both = stretch.compressed[0] && stretch.compressed[1];
        l.M = both ? std::max(first, second) : stretch.compressed[0] ? first : second;
        const bool ownIsLargest = l.M >= std::max(first, second) * (1.0 - 1e-9);
        const bool known = m_d.Known(Bending::Major, stretch.a, stretch.b);
        l.m = known && ownIsLargest ? TableFactorLT(m_d, stretch.a, stretch.b) : 1.0;
        l.m = Uniform(l.m, false, known);
        if (stretch.destabilising || stretch.cantilever) l.m = std::max(1.0, m_b.member.factor.value_or(1.0));
        // For each compressed flange where the moment compresses it.
        ForEach(stretch.a, stretch.b, [&](const Place& p) {
            for (int f = 0; f < 2; ++f) {
                const double most = f == 0 ? first : second;
                if (!stretch.compressed[f] || most <= 1e-6 * m_b.steel.py * m_b.p.Zx ||
                    (f == 0 ? p.a.Mx >= 0.0 : p.a.Mx <= 0.0))
                    continue;
                l.Mb = std::min(l.Mb, l.buckles ? BucklingMoment(m_b, p.c, stretch.LE, f) : p.c.pyrX * p.c.Wx);
            }
        });
        return l;
    }

    double Interaction(const Strut& x, const Strut& y, const Lateral& l) const
    {
        const double u = Sum(x, y, l);
        if (std::getenv("SECOND_SPANS"))
            for (const Strut* s : {&x, &y})
                std::printf("   second %g..%g Fc %.6g Pc %.6g M %.6g m %.4g Mc %.6g pyZ %.6g other %.6g m %.4g Mc %.6g "
                            "lateral %g..%g M %.6g m %.4g Mb %.6g: %.5g\n",
                            s->span.a, s->span.b, s->Fc, s->Pc, s->M, s->m, s->Mc, s->pyZ, s->other, s->mOther,
                            s->McOther, l.stretch.a, l.stretch.b, l.M, l.m, l.Mb, u);
        return u;
    }

    double Sum(const Strut& x, const Strut& y, const Lateral& l) const
    {
        const bool F = x.Fc > 0.0 || y.Fc > 0.0, Mx = x.M > 0.0, My = y.M > 0.0;
        if (F + Mx + My < 2) return 0.0;
        const Section& s = m_b.s;
        const double fx = Over(x.Fc, x.Pc), fy = Over(y.Fc, y.Pc);
        const double lateral = Over(l.m * l.M, l.Mb);
        const bool I = s.shape == Shape::I && s.EqualFlanges(),
                   hollow = s.shape == Shape::Box || s.shape == Shape::Tube;
        if (!m_b.member.exact || (!I && !hollow)) {
            const double minor = Over(y.m * y.M, y.pyZ);
            return std::max(std::max(fx, fy) + Over(x.m * x.M, x.pyZ) + minor, fy + lateral + minor);
        }
        const double major = Mx ? Over(x.m * x.M, x.Mc) * (1.0 + 0.5 * fx) : 0.0;
        const double minor = My ? Over(y.m * y.M, y.Mc) * (1.0 + (I ? 1.0 : 0.5) * fy) : 0.0;
        double worst = fx + major + 0.5 * Over(x.mOther * x.other, x.McOther);
        // 4.8.3.3.3 b: half of MLT/Mcx where 4.3.6.1 asks for no lateral-torsional buckling, else the whole of MLT/Mb.
        const double sideways = I || l.buckles ? lateral : 0.5 * std::max(lateral, Mx ? l.m * Over(l.M, x.Mc) : 0.0);
        worst = std::max(worst, fy + sideways + minor);
        // With one moment alone this is the first condition again.
        const auto amplified = [](double term, double f) {
            return term == 0.0 ? 0.0 : f < 1.0 ? term / (1.0 - f) : INF;
        };
        worst = std::max(worst, amplified(major, fx) + amplified(minor, fy));
        return worst;
    }

    const Basis& m_b;
    const Diagram& m_d;
    std::vector<Place> m_places;
    std::vector<Strut> m_major, m_minor;
    std::vector<Lateral> m_lateral;
};

} // namespace

Buckling CheckBuckling(const Basis& b) { return Checker(b).Run(); }

void Buckling::Raise(const Buckling& o)
{
    for (double Buckling::*u : {&Buckling::major, &Buckling::minor, &Buckling::lateral, &Buckling::interaction})
        this->*u = std::max(this->*u, o.*u);
    notEvaluated = notEvaluated || o.notEvaluated;
}

// (7) The member. How an angle is turned is not known: both ways are checked and the worse one counts.

Findings Check(const Member& member)
{
    Findings f;
    for (const double side : {1.0, -1.0}) {
        const Basis b(member, side);
        f.local.Raise(CheckLocal(b));
        f.buckling.Raise(CheckBuckling(b));
        f.fails = f.fails || b.thinWeb;
        if (member.section.shape != Shape::Angle) break;
    }
    const Local& l = f.local;
    for (const double u : {l.tension, l.tie, l.compression, l.shearMajor, l.shearMinor, l.shearBuckling, l.momentMajor,
                           l.momentMinor, l.combinedTension, l.combinedCompression, f.buckling.major, f.buckling.minor,
                           f.buckling.lateral, f.buckling.interaction})
        f.fails = f.fails || u > 1.0;
    f.notEvaluated = l.notEvaluated || f.buckling.notEvaluated;
    return f;
}

} // namespace Second
