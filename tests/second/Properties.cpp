// (1) Section properties from the outline of the section: corners with their radii, polygons, integrals by Green.
// Torsion constants of rolled sections by the fillet formulas of El Darwish and Johnston (ASCE, J. Struct. Div., 1965), as
// the British section tables print them.

#include <algorithm>
#include <cmath>

#include "Second.h"

namespace Second {

namespace {

struct Vertex {
    double x = 0.0, y = 0.0;
};
struct Corner {
    double x = 0.0, y = 0.0, r = 0.0;
};
using Polygon = std::vector<Vertex>;

/// A polygon whose corners are rounded by arcs that touch both sides.
Polygon Rounded(const std::vector<Corner>& corners)
{
    const int steps = 128;
    Polygon out;
    const std::size_t n = corners.size();
    for (std::size_t i = 0; i < n; ++i) {
        const Corner &before = corners[(i + n - 1) % n], &here = corners[i], &after = corners[(i + 1) % n];
        if (here.r <= 0.0) {
            out.push_back({here.x, here.y});
            continue;
        }
        double ax = before.x - here.x, ay = before.y - here.y, bx = after.x - here.x, by = after.y - here.y;
        const double la = std::hypot(ax, ay), lb = std::hypot(bx, by);
        ax /= la, ay /= la, bx /= lb, by /= lb;
        const double half = 0.5 * std::acos(std::clamp(ax * bx + ay * by, -1.0, 1.0));
        const double reach = here.r / std::tan(half), centre = here.r / std::sin(half);
        const double mx = ax + bx, my = ay + by, lm = std::hypot(mx, my);
        const double cx = here.x + mx / lm * centre, cy = here.y + my / lm * centre;
        const double a0 = std::atan2(here.y + ay * reach - cy, here.x + ax * reach - cx);
        double sweep = std::atan2(here.y + by * reach - cy, here.x + bx * reach - cx) - a0;
        if (sweep > PI) sweep -= 2.0 * PI;
        if (sweep < -PI) sweep += 2.0 * PI;
        for (int k = 0; k <= steps; ++k) {
            // The chords lie a little outside the arc between its ends, so that they enclose its area.
            const double a = a0 + sweep * k / steps, step = std::fabs(sweep) / steps;
            const double r = here.r * (k == 0 || k == steps ? 1.0 : std::sqrt(step / std::sin(step)));
            out.push_back({cx + r * std::cos(a), cy + r * std::sin(a)});
        }
    }
    return out;
}

/// Integral over a polygon of a homogeneous polynomial f of the given degree (at most 5).
template <class F>
double Integral(const Polygon& p, int degree, F f)
{
    const double at[3] = {0.5 - std::sqrt(0.15), 0.5, 0.5 + std::sqrt(0.15)};
    const double weight[3] = {5.0 / 18.0, 8.0 / 18.0, 5.0 / 18.0};
    double sum = 0.0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const Vertex &u = p[i], &v = p[(i + 1) % p.size()];
        const double cross = u.x * v.y - v.x * u.y;
        double line = 0.0;
        for (int k = 0; k < 3; ++k)
            line += weight[k] * f(u.x + at[k] * (v.x - u.x), u.y + at[k] * (v.y - u.y));
        sum += cross * line / (degree + 2);
    }
    return sum;
}

Polygon Moved(Polygon p, double dx, double dy)
{
    for (Vertex& v : p)
        v.x += dx, v.y += dy;
    return p;
}

Polygon Turned(Polygon p, double angle)
{
    const double c = std::cos(angle), s = std::sin(angle);
    for (Vertex& v : p)
        v = {c * v.x + s * v.y, -s * v.x + c * v.y};
    return p;
}

Polygon Transposed(Polygon p)
{
    for (Vertex& v : p)
        std::swap(v.x, v.y);
    std::reverse(p.begin(), p.end());
    return p;
}

/// The part of a polygon above a level.
Polygon Above(const Polygon& p, double level)
{
    Polygon out;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const Vertex &u = p[i], &v = p[(i + 1) % p.size()];
        if (u.y >= level) out.push_back(u);
        if ((u.y >= level) != (v.y >= level)) {
            const double k = (level - u.y) / (v.y - u.y);
            out.push_back({u.x + k * (v.x - u.x), level});
        }
    }
    return out;
}

double Area(const Polygon& p)
{
    return Integral(p, 0, [](double, double) { return 1.0; });
}
double FirstMoment(const Polygon& p)
{
    return Integral(p, 1, [](double, double y) { return y; });
}

/// A solid outline less its hole.
struct Outline {
    Polygon solid, hole;

    template <class F>
    double Of(int degree, F f) const
    {
        return Integral(solid, degree, f) - (hole.empty() ? 0.0 : Integral(hole, degree, f));
    }
    Outline Map(Polygon (*how)(Polygon, double, double), double u, double v) const
    {
        return {how(solid, u, v), hole.empty() ? hole : how(hole, u, v)};
    }
    double Area() const { return Second::Area(solid) - (hole.empty() ? 0.0 : Second::Area(hole)); }
    double AreaAbove(double y) const
    {
        return Second::Area(Above(solid, y)) - (hole.empty() ? 0.0 : Second::Area(Above(hole, y)));
    }
    double MomentAbove(double y) const
    {
        return FirstMoment(Above(solid, y)) - (hole.empty() ? 0.0 : FirstMoment(Above(hole, y)));
    }
};

/// Plastic modulus about the horizontal axis: the equal-area axis by bisection.
double Plastic(const Outline& o)
{
    double low = INF, high = -INF;
    for (const Vertex& v : o.solid)
        low = std::min(low, v.y), high = std::max(high, v.y);
    const double A = o.Area(), first = o.Of(1, [](double, double y) { return y; });
    for (int i = 0; i < 50; ++i) {
        const double mid = 0.5 * (low + high);
        (o.AreaAbove(mid) > 0.5 * A ? low : high) = mid;
    }
    const double y = 0.5 * (low + high);
    const double above = o.MomentAbove(y) - y * o.AreaAbove(y);
    return 2.0 * above - (first - y * A);
}

double Farthest(const Outline& o)
{
    double far = 0.0;
    for (const Vertex& v : o.solid)
        far = std::max(far, std::fabs(v.y));
    return far;
}

// Outlines, anticlockwise, the bottom left corner of the enclosing rectangle at the origin.

Polygon OutlineI(const Section& s)
{
    const double w = std::max(s.B, s.B2), m = 0.5 * w;
    const double l1 = m - 0.5 * s.B, r1 = m + 0.5 * s.B, l2 = m - 0.5 * s.B2, r2 = m + 0.5 * s.B2;
    const double wl = m - 0.5 * s.t, wr = m + 0.5 * s.t, top = s.D - s.T;
    return Rounded({{l2, 0, 0},
                    {r2, 0, 0},
                    {r2, s.T2, 0},
                    {wr, s.T2, s.r},
                    {wr, top, s.r},
                    {r1, top, 0},
                    {r1, s.D, 0},
                    {l1, s.D, 0},
                    {l1, top, 0},
                    {wl, top, s.r},
                    {wl, s.T2, s.r},
                    {l2, s.T2, 0}});
}

Polygon OutlineChannel(const Section& s)
{
    const double top = s.D - s.T;
    return Rounded({{0, 0, 0},
                    {s.B, 0, 0},
                    {s.B, s.T, s.rToe},
                    {s.t, s.T, s.r},
                    {s.t, top, s.r},
                    {s.B, top, s.rToe},
                    {s.B, s.D, 0},
                    {0, s.D, 0}});
}

Polygon OutlineTee(const Section& s)
{
    const double m = 0.5 * s.B, wl = m - 0.5 * s.t, wr = m + 0.5 * s.t, top = s.D - s.T;
    return Rounded({{wl, 0, 0},
                    {wr, 0, 0},
                    {wr, top, s.r},
                    {s.B, top, s.rToe},
                    {s.B, s.D, 0},
                    {0, s.D, 0},
                    {0, top, s.rToe},
                    {wl, top, s.r}});
}

Polygon OutlineAngle(const Section& s)
{
    return Rounded({{0, 0, 0}, {s.B, 0, 0}, {s.B, s.t, s.rToe}, {s.t, s.t, s.r}, {s.t, s.D, s.rToe}, {0, s.D, 0}});
}

/// Corner radii: hot finished by EN 10210-2, cold formed by EN 10219-2, welded none.
std::pair<double, double> BoxRadii(const Section& s)
{
    if (s.make == Make::Welded) return {0.0, 0.0};
    if (s.make == Make::Rolled) return {1.5 * s.t, 1.0 * s.t};
    const double mm = 1e3 * s.t;
    const double inner = mm <= 6.0 + 1e-9 ? 1.0 : mm <= 10.0 + 1e-9 ? 1.5 : 2.0;
    return {(inner + 1.0) * s.t, inner * s.t};
}

Outline OutlineBox(const Section& s)
{
    const auto [ro, ri] = BoxRadii(s);
    const double t = s.t, T = s.T;
    return {Rounded({{0, 0, ro}, {s.B, 0, ro}, {s.B, s.D, ro}, {0, s.D, ro}}),
            Rounded({{t, T, ri}, {s.B - t, T, ri}, {s.B - t, s.D - T, ri}, {t, s.D - T, ri}})};
}

Outline OutlineOf(const Section& s)
{
    if (s.shape == Shape::I) return {OutlineI(s), {}};
    if (s.shape == Shape::Channel) return {OutlineChannel(s), {}};
    if (s.shape == Shape::Tee) return {OutlineTee(s), {}};
    if (s.shape == Shape::Angle) return {OutlineAngle(s), {}};
    return OutlineBox(s);
}

// Torsion

/// What the junction of one flange and a web adds to the plates: α D⁴, D the inscribed circle.
double JunctionTee(double t, double T, double r)
{
    const double a = -0.042 + 0.2204 * t / T + 0.1355 * r / T - 0.0865 * t * r / (T * T) - 0.0725 * t * t / (T * T);
    const double d = ((T + r) * (T + r) + (r + 0.25 * t) * t) / (2.0 * r + T);
    return a * std::pow(d, 4);
}

double JunctionChannel(double t, double T, double r)
{
    const double a = -0.0908 + 0.2621 * t / T + 0.1231 * r / T - 0.0752 * t * r / (T * T) - 0.0945 * t * t / (T * T);
    const double d = 2.0 * ((3.0 * r + t + T) - std::sqrt(2.0 * (2.0 * r + t) * (2.0 * r + T)));
    return a * std::pow(d, 4);
}

double JunctionAngle(double t, double r)
{
    const double a = 0.0768 + 0.0479 * r / t;
    const double d = 2.0 * ((3.0 * r + 2.0 * t) - std::sqrt(2.0 * (2.0 * r + t) * (2.0 * r + t)));
    return a * std::pow(d, 4);
}

double Cube(double v) { return v * v * v; }

double TorsionOpen(const Section& s)
{
    const double t = s.t, T = s.T, r = s.r;
    const bool fillet = r > 0.0;
    switch (s.shape) {
    case Shape::I: {
        double J = (s.B * Cube(T) + s.B2 * Cube(s.T2) + (s.D - T - s.T2) * Cube(t)) / 3.0;
        if (fillet) J += JunctionTee(t, T, r) + JunctionTee(t, s.T2, r) - 0.21 * (std::pow(T, 4) + std::pow(s.T2, 4));
        return J;
    }
    case Shape::Channel: {
        double J = (2.0 * s.B * Cube(T) + (s.D - 2.0 * T) * Cube(t)) / 3.0;
        if (fillet) J += 2.0 * JunctionChannel(t, T, r) - 0.42 * std::pow(T, 4);
        return J;
    }
    case Shape::Tee: {
        double J = (s.B * Cube(T) + (s.D - T) * Cube(t)) / 3.0;
        if (fillet) J += JunctionTee(t, T, r) - 0.21 * std::pow(T, 4) - 0.105 * std::pow(t, 4);
        return J;
    }
    default: {
        // The two free ends take away more than a junction without fillet adds.
        return (s.D + s.B - t) * Cube(t) / 3.0 + JunctionAngle(t, r) - 0.21 * std::pow(t, 4);
    }
    }
}

/// Bredt; with rounded corners the open strip's part as well, as EN 10210-2 and EN 10219-2 have it.
double TorsionBox(const Section& s)
{
    if (s.make == Make::Welded) {
        const double b = s.B - s.t, h = s.D - s.T;
        return 4.0 * b * b * h * h / (2.0 * b / s.T + 2.0 * h / s.t);
    }
    const auto [ro, ri] = BoxRadii(s);
    const double t = s.t, rc = 0.5 * (ro + ri), b = s.B - t, h = s.D - t;
    const double length = 2.0 * (b + h) - 2.0 * rc * (4.0 - PI), enclosed = b * h - rc * rc * (4.0 - PI);
    return Cube(t) * length / 3.0 + 4.0 * enclosed * enclosed * t / length;
}

double Warping(const Section& s, const Properties& p)
{
    if (s.shape == Shape::Tee) return Cube(s.T * s.B) / 144.0 + Cube((s.D - 0.5 * s.T) * s.t) / 36.0;
    if (s.shape != Shape::Channel) return 0.0;
    const double h = s.D - s.T, e = p.cx - 0.5 * s.t;
    return 0.25 * h * h * (p.Iy - p.A * e * e * (h * h * p.A / (4.0 * p.Ix) - 1.0));
}

// Dimensions by which plates are classed (Figure 5).
void SetPlates(const Section& s, Properties& p)
{
    const bool welded = s.make == Make::Welded;
    switch (s.shape) {
    case Shape::I:
        p.d = s.D - s.T - s.T2 - (welded ? 0.0 : 2.0 * s.r);
        p.b = 0.5 * (s.B - (welded ? s.t : 0.0));
        p.b2 = 0.5 * (s.B2 - (welded ? s.t : 0.0));
        break;
    case Shape::Channel:
        p.d = s.D - 2.0 * s.T - (welded ? 0.0 : 2.0 * s.r);
        p.b = p.b2 = s.B; // Figure 5 shows channels with their overall width
        break;
    case Shape::Tee:
        p.d = s.D;
        p.b = 0.5 * s.B;
        break;
    case Shape::Angle:
        p.d = s.D, p.b = s.B;
        break;
    case Shape::Box: {
        const double corner = s.make == Make::Rolled ? 1.5 : 2.5;
        p.d = welded ? s.D - 2.0 * s.T : s.D - 2.0 * corner * s.t;
        p.b = welded ? s.B - 2.0 * s.t : s.B - 2.0 * corner * s.t;
        break;
    }
    case Shape::Tube:
        p.d = s.D;
        break;
    }
}

Properties Tube(const Section& s)
{
    Properties p;
    const double D = s.D, di = s.D - 2.0 * s.t;
    p.A = 0.25 * PI * (D * D - di * di);
    p.Ix = p.Iy = PI / 64.0 * (std::pow(D, 4) - std::pow(di, 4));
    p.Zx = p.Zy = 2.0 * p.Ix / D;
    p.Sx = p.Sy = (Cube(D) - Cube(di)) / 6.0;
    p.J = 2.0 * p.Ix;
    p.cx = p.cy = 0.5 * D;
    p.rx = p.ry = p.rv = std::sqrt(p.Ix / p.A);
    SetPlates(s, p);
    return p;
}

/// ψ = (2 y0 - ∫ y (x² + y²) dA/Ix)/hs, y from the centroid towards flange 1, y0 that of the shear centre; above zero
/// where the compressed flange 1 is the larger.
double Monosymmetry(const Section& s, const Properties& p, const Outline& centred)
{
    const double third = centred.Of(3, [](double x, double y) { return y * (x * x + y * y); }) / p.Ix;
    double y0 = s.D - 0.5 * s.T - p.cy;
    if (s.shape == Shape::I) {
        const double i1 = s.T * Cube(s.B), i2 = s.T2 * Cube(s.B2);
        y0 -= p.hs * i2 / (i1 + i2);
    }
    return (2.0 * y0 - third) / p.hs;
}

void SetAngle(const Section& s, const Outline& centred, Properties& p)
{
    const double Ixy = centred.Of(2, [](double x, double y) { return x * y; });
    p.alpha = 0.5 * std::atan2(-2.0 * Ixy, p.Ix - p.Iy);
    const Outline uv{Turned(centred.solid, p.alpha), {}};
    p.Iu = uv.Of(2, [](double, double v) { return v * v; });
    p.Iv = uv.Of(2, [](double u, double) { return u * u; });
    p.Zu = p.Iu / Farthest(uv);
    p.Zv = p.Iv / Farthest({Transposed(uv.solid), {}});
    p.rv = std::sqrt(p.Iv / p.A);
    const double c = std::cos(p.alpha), si = std::sin(p.alpha);
    const double v0 = -si * (0.5 * s.t - p.cx) + c * (0.5 * s.t - p.cy);
    const double third = uv.Of(3, [](double u, double v) { return v * (u * u + v * v); }) / p.Iu;
    p.psi = std::fabs(2.0 * v0 - third) / s.t;
}

} // namespace

Properties PropertiesOf(const Section& s)
{
    if (s.shape == Shape::Tube) return Tube(s);
    const Outline raw = OutlineOf(s);
    Properties p;
    p.A = raw.Area();
    p.cx = raw.Of(1, [](double x, double) { return x; }) / p.A;
    p.cy = raw.Of(1, [](double, double y) { return y; }) / p.A;
    const Outline o = raw.Map(Moved, -p.cx, -p.cy);
    const Outline turned{Transposed(o.solid), o.hole.empty() ? Polygon{} : Transposed(o.hole)};
    p.Ix = o.Of(2, [](double, double y) { return y * y; });
    p.Iy = o.Of(2, [](double x, double) { return x * x; });
    p.Zx = p.Ix / Farthest(o);
    p.Zy = p.Iy / Farthest(turned);
    p.Sx = Plastic(o);
    p.Sy = Plastic(turned);
    p.rx = std::sqrt(p.Ix / p.A);
    p.ry = p.rv = std::sqrt(p.Iy / p.A);
    p.J = s.shape == Shape::Box ? TorsionBox(s) : TorsionOpen(s);
    p.H = Warping(s, p);
    p.hs = s.shape == Shape::I ? s.D - 0.5 * (s.T + s.T2) : s.shape == Shape::Channel ? s.D - s.T : s.D - 0.5 * s.T;
    if (s.shape == Shape::I || s.shape == Shape::Tee) p.psi = Monosymmetry(s, p, o);
    if (s.shape == Shape::Angle) SetAngle(s, o, p);
    SetPlates(s, p);
    return p;
}

/// Table 9 and clause 3.4.3, by the thickest element.
Steel SteelOf(const Grade& grade, const Section& s)
{
    Steel steel;
    steel.E = 205e9;
    double mm = 1e3 * s.t;
    if (s.shape == Shape::I || s.shape == Shape::Channel || s.shape == Shape::Tee || s.shape == Shape::Box)
        mm = std::max(mm, 1e3 * s.T);
    if (s.shape == Shape::I) mm = std::max(mm, 1e3 * s.T2);
    const double limits[6] = {16, 40, 63, 80, 100, 150};
    const double S275[6] = {275, 265, 255, 245, 235, 225}, S355[6] = {355, 345, 335, 325, 315, 295};
    const double S460[6] = {460, 440, 430, 410, 400, 0};
    int row = 0;
    while (row < 6 && mm > limits[row] + 1e-9)
        ++row;
    if (grade.name == "User") {
        const double Y = grade.Us > 0.0 ? std::min(grade.Ys, grade.Us / 1.2) : grade.Ys;
        steel.py = Y / grade.factor;
        steel.Ke = grade.Us > 0.0 ? grade.Us / 1.2 / Y : 1.0;
        if (grade.E > 0.0) steel.E = grade.E;
    } else if (row < 6) {
        steel.py = 1e6 * (grade.name == "S275" ? S275 : grade.name == "S355" ? S355 : S460)[row];
        steel.Ke = grade.name == "S275" ? 1.2 : grade.name == "S355" ? 1.1 : 1.0;
    }
    steel.eps = std::sqrt(275e6 / steel.py);
    return steel;
}

} // namespace Second
