#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>
#include <vector>

/// Section properties by integration over the exact outline: straight edges and circular arcs, no formula of any shape.
/// What the closed formulas of section geometry are held against.
namespace Keltrix::Steel::Test {

struct Vertex {
    double x;
    double y;
};

/// An outline of straight edges; outer loops run anticlockwise, openings clockwise. Arcs are divided into so many chords
/// that the error of any integral stays below 1e-7 of the arc's own share.
class Outline {
public:
    static constexpr int CHORDS_PER_QUARTER = 2000;

    void Begin() { m_loops.emplace_back(); }
    void To(double x, double y) { m_loops.back().push_back({x, y}); }
    /// An arc from one angle to another, in degrees; anticlockwise where the second is the larger.
    void Arc(double xc, double yc, double r, double from, double to)
    {
        if (r == 0.0) {
            To(xc, yc);
            return;
        }
        const int chords = static_cast<int>(std::ceil(std::abs(to - from) / 90.0 * CHORDS_PER_QUARTER));
        for (int i = 0; i <= chords; ++i) {
            const double angle = (from + (to - from) * i / chords) * std::numbers::pi / 180.0;
            To(xc + r * std::cos(angle), yc + r * std::sin(angle));
        }
    }
    /// Completes a loop that was drawn for x >= 0 from bottom to top by its mirror image.
    void MirrorInY()
    {
        std::vector<Vertex>& loop = m_loops.back();
        for (std::size_t i = loop.size(); i-- > 0;)
            loop.push_back({-loop[i].x, loop[i].y});
    }
    /// The outline with x and y exchanged (loops keep their sense).
    Outline Exchanged() const
    {
        Outline exchanged;
        for (const auto& loop : m_loops) {
            exchanged.Begin();
            for (std::size_t i = loop.size(); i-- > 0;)
                exchanged.To(loop[i].y, loop[i].x);
        }
        return exchanged;
    }
    /// Shifted so that (x, y) is the origin, then turned by -angle: what lay along the angle lies along x.
    Outline SeenFrom(double x, double y, double angle) const
    {
        const double c = std::cos(angle);
        const double s = std::sin(angle);
        Outline seen;
        for (const auto& loop : m_loops) {
            seen.Begin();
            for (const Vertex& v : loop)
                seen.To((v.x - x) * c + (v.y - y) * s, -(v.x - x) * s + (v.y - y) * c);
        }
        return seen;
    }
    /// What lies above y.
    Outline Above(double y) const
    {
        Outline above;
        for (const auto& loop : m_loops) {
            above.Begin();
            for (std::size_t i = 0; i < loop.size(); ++i) {
                const Vertex& a = loop[i];
                const Vertex& b = loop[(i + 1) % loop.size()];
                if (a.y >= y) above.To(a.x, a.y);
                if ((a.y >= y) != (b.y >= y)) above.To(a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y), y);
            }
        }
        return above;
    }
    /// ∮ F(x, y) dy, which is ∫∫ ∂F/∂x dA; exact for F up to degree 5 along an edge (Gauss, three points).
    template <class F>
    double Contour(F f) const
    {
        const double offset = std::sqrt(0.15);
        double sum = 0.0;
        for (const auto& loop : m_loops)
            for (std::size_t i = 0; i < loop.size(); ++i) {
                const Vertex& a = loop[i];
                const Vertex& b = loop[(i + 1) % loop.size()];
                const auto at = [&](double t) { return f(a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)); };
                sum += (5.0 * at(0.5 - offset) + 8.0 * at(0.5) + 5.0 * at(0.5 + offset)) / 18.0 * (b.y - a.y);
            }
        return sum;
    }
    /// Largest and smallest y.
    std::pair<double, double> RangeY() const
    {
        double low = m_loops.front().front().y;
        double high = low;
        for (const auto& loop : m_loops)
            for (const Vertex& v : loop) {
                low = std::min(low, v.y);
                high = std::max(high, v.y);
            }
        return {low, high};
    }

private:
    std::vector<std::vector<Vertex>> m_loops;
};

struct ExactProperties {
    double area = 0.0;
    double xbar = 0.0, ybar = 0.0;
    double Ixx = 0.0, Iyy = 0.0, Ixy = 0.0;
    double Iuu = 0.0, Ivv = 0.0, alpha = 0.0; ///< alpha from x to the major axis, between -π/2 and π/2
    double Zxx = 0.0, Zyy = 0.0, Zuu = 0.0, Zvv = 0.0;
    double Sxx = 0.0, Syy = 0.0, Suu = 0.0, Svv = 0.0;
    double plasticX = 0.0, plasticY = 0.0; ///< equal-area axes: x of the one parallel to y, y of the one parallel to x
    double monosymmetry = 0.0;             ///< ∫ y (x² + y²) dA / (2 Ixx), about the centroid
};

inline double AreaOf(const Outline& outline)
{
    return outline.Contour([](double x, double) { return x; });
}
inline double MomentAboutX(const Outline& outline)
{
    return outline.Contour([](double x, double y) { return x * y; });
}
inline double SecondMomentAboutX(const Outline& outline)
{
    return outline.Contour([](double x, double y) { return x * y * y; });
}

/// Height of the axis parallel to x that halves the area, and the plastic modulus about it.
inline std::pair<double, double> Plastic(const Outline& outline)
{
    auto [low, high] = outline.RangeY();
    const double half = AreaOf(outline) / 2.0;
    for (int i = 0; i < 60; ++i) {
        const double middle = (low + high) / 2.0;
        (AreaOf(outline.Above(middle)) > half ? low : high) = middle;
    }
    const double axis = (low + high) / 2.0;
    const Outline above = outline.Above(axis);
    const double firstAbove = MomentAboutX(above) - axis * AreaOf(above);
    const double firstAll = MomentAboutX(outline) - axis * 2.0 * half;
    return {axis, 2.0 * firstAbove - firstAll};
}

inline ExactProperties Integrate(const Outline& outline)
{
    ExactProperties p;
    p.area = AreaOf(outline);
    p.ybar = MomentAboutX(outline) / p.area;
    p.xbar = outline.Contour([](double x, double) { return x * x / 2.0; }) / p.area;
    const Outline centred = outline.SeenFrom(p.xbar, p.ybar, 0.0);
    p.Ixx = SecondMomentAboutX(centred);
    p.Iyy = centred.Contour([](double x, double) { return x * x * x / 3.0; });
    p.Ixy = centred.Contour([](double x, double y) { return x * x * y / 2.0; });
    p.monosymmetry =
        centred.Contour([](double x, double y) { return y * x * x * x / 3.0 + y * y * y * x; }) / (2.0 * p.Ixx);
    p.alpha = std::atan2(-2.0 * p.Ixy, p.Ixx - p.Iyy) / 2.0;

    const auto elastic = [](const Outline& seen) {
        const auto [low, high] = seen.RangeY();
        return SecondMomentAboutX(seen) / std::max(-low, high);
    };
    const Outline u = outline.SeenFrom(p.xbar, p.ybar, p.alpha);
    const Outline v = outline.SeenFrom(p.xbar, p.ybar, p.alpha + std::numbers::pi / 2.0);
    const Outline exchanged = centred.Exchanged();
    p.Iuu = SecondMomentAboutX(u);
    p.Ivv = SecondMomentAboutX(v);
    p.Zxx = elastic(centred);
    p.Zyy = elastic(exchanged);
    p.Zuu = elastic(u);
    p.Zvv = elastic(v);
    const auto [plasticY, Sxx] = Plastic(centred);
    const auto [plasticX, Syy] = Plastic(exchanged);
    p.plasticY = plasticY + p.ybar;
    p.plasticX = plasticX + p.xbar;
    p.Sxx = Sxx;
    p.Syy = Syy;
    p.Suu = Plastic(u).second;
    p.Svv = Plastic(v).second;
    return p;
}

/// Flange 1 on top; heights from the outer face of flange 2.
inline Outline OutlineOfI(double D, double B1, double B2, double t, double T1, double T2, double r)
{
    Outline outline;
    outline.Begin();
    outline.To(B2 / 2.0, 0.0);
    outline.To(B2 / 2.0, T2);
    outline.Arc(t / 2.0 + r, T2 + r, r, 270.0, 180.0);
    outline.Arc(t / 2.0 + r, D - T1 - r, r, 180.0, 90.0);
    outline.To(B1 / 2.0, D - T1);
    outline.To(B1 / 2.0, D);
    outline.MirrorInY();
    return outline;
}

/// Back of the web at x = 0.
inline Outline OutlineOfChannel(double D, double B, double t, double T, double r, double rt)
{
    Outline outline;
    outline.Begin();
    outline.To(0.0, 0.0);
    outline.To(B, 0.0);
    outline.Arc(B - rt, T - rt, rt, 0.0, 90.0);
    outline.Arc(t + r, T + r, r, 270.0, 180.0);
    outline.Arc(t + r, D - T - r, r, 180.0, 90.0);
    outline.Arc(B - rt, D - T + rt, rt, 270.0, 360.0);
    outline.To(B, D);
    outline.To(0.0, D);
    return outline;
}

/// Stem's tip at y = 0, flange on top.
inline Outline OutlineOfT(double D, double B, double t, double T, double r, double rt)
{
    Outline outline;
    outline.Begin();
    outline.To(t / 2.0, 0.0);
    outline.Arc(t / 2.0 + r, D - T - r, r, 180.0, 90.0);
    outline.Arc(B / 2.0 - rt, D - T + rt, rt, 270.0, 360.0);
    outline.To(B / 2.0, D);
    outline.MirrorInY();
    return outline;
}

/// Heel at the origin, leg A up and leg B to the right.
inline Outline OutlineOfAngle(double A, double B, double T, double r, double rt)
{
    Outline outline;
    outline.Begin();
    outline.To(0.0, 0.0);
    outline.To(B, 0.0);
    outline.Arc(B - rt, T - rt, rt, 0.0, 90.0);
    outline.Arc(T + r, T + r, r, 270.0, 180.0);
    outline.Arc(T - rt, A - rt, rt, 0.0, 90.0);
    outline.To(0.0, A);
    return outline;
}

/// Centre at the origin.
inline Outline OutlineOfRhs(double D, double B, double Tw, double Tf, double ri, double ro)
{
    Outline outline;
    const double b = B / 2.0, d = D / 2.0;
    outline.Begin();
    outline.Arc(b - ro, -d + ro, ro, 270.0, 360.0);
    outline.Arc(b - ro, d - ro, ro, 0.0, 90.0);
    outline.Arc(-b + ro, d - ro, ro, 90.0, 180.0);
    outline.Arc(-b + ro, -d + ro, ro, 180.0, 270.0);
    const double bi = b - Tw, di = d - Tf;
    outline.Begin();
    outline.Arc(-bi + ri, -di + ri, ri, 270.0, 180.0);
    outline.Arc(-bi + ri, di - ri, ri, 180.0, 90.0);
    outline.Arc(bi - ri, di - ri, ri, 90.0, 0.0);
    outline.Arc(bi - ri, -di + ri, ri, 360.0, 270.0);
    return outline;
}

/// Centre at the origin.
inline Outline OutlineOfChs(double D, double t)
{
    Outline outline;
    outline.Begin();
    outline.Arc(0.0, 0.0, D / 2.0, 0.0, 360.0);
    if (2.0 * t < D) {
        outline.Begin();
        outline.Arc(0.0, 0.0, D / 2.0 - t, 360.0, 0.0);
    }
    return outline;
}

} // namespace Keltrix::Steel::Test
