#include "support/Outline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>
#include <vector>

namespace Keltrix::Steel::Test {

void Outline::Arc(double xc, double yc, double r, double from, double to)
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

void Outline::MirrorInY()
{
    std::vector<Vertex>& loop = m_loops.back();
    for (std::size_t i = loop.size(); i-- > 0;)
        loop.push_back({-loop[i].x, loop[i].y});
}

namespace {

// The outline with x and y exchanged (loops keep their sense).
Outline Exchanged(const Outline& outline)
{
    Outline exchanged;
    for (const auto& loop : outline.Loops()) {
        exchanged.Begin();
        for (std::size_t i = loop.size(); i-- > 0;)
            exchanged.To(loop[i].y, loop[i].x);
    }
    return exchanged;
}

// Shifted so that (x, y) is the origin, then turned by -angle: what lay along the angle lies along x.
Outline SeenFrom(const Outline& outline, double x, double y, double angle)
{
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    Outline seen;
    for (const auto& loop : outline.Loops()) {
        seen.Begin();
        for (const Vertex& v : loop)
            seen.To((v.x - x) * c + (v.y - y) * s, -(v.x - x) * s + (v.y - y) * c);
    }
    return seen;
}

// What lies above y.
Outline Above(const Outline& outline, double y)
{
    Outline above;
    for (const auto& loop : outline.Loops()) {
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

// ∮ F(x, y) dy, which is ∫∫ ∂F/∂x dA; exact for F up to degree 5 along an edge (Gauss, three points).
template <class F>
double Contour(const Outline& outline, F f)
{
    const double offset = std::sqrt(0.15);
    double sum = 0.0;
    for (const auto& loop : outline.Loops())
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const Vertex& a = loop[i];
            const Vertex& b = loop[(i + 1) % loop.size()];
            const auto at = [&](double t) { return f(a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)); };
            sum += (5.0 * at(0.5 - offset) + 8.0 * at(0.5) + 5.0 * at(0.5 + offset)) / 18.0 * (b.y - a.y);
        }
    return sum;
}

// Smallest and largest y.
std::pair<double, double> RangeY(const Outline& outline)
{
    double low = outline.Loops().front().front().y;
    double high = low;
    for (const auto& loop : outline.Loops())
        for (const Vertex& v : loop) {
            low = std::min(low, v.y);
            high = std::max(high, v.y);
        }
    return {low, high};
}

double AreaOf(const Outline& outline)
{
    return Contour(outline, [](double x, double) { return x; });
}

double MomentAboutX(const Outline& outline)
{
    return Contour(outline, [](double x, double y) { return x * y; });
}

double SecondMomentAboutX(const Outline& outline)
{
    return Contour(outline, [](double x, double y) { return x * y * y; });
}

// Height of the axis parallel to x that halves the area, and the plastic modulus about it.
std::pair<double, double> Plastic(const Outline& outline)
{
    auto [low, high] = RangeY(outline);
    const double half = AreaOf(outline) / 2.0;
    for (int i = 0; i < 60; ++i) {
        const double middle = (low + high) / 2.0;
        (AreaOf(Above(outline, middle)) > half ? low : high) = middle;
    }
    const double axis = (low + high) / 2.0;
    const Outline above = Above(outline, axis);
    const double firstAbove = MomentAboutX(above) - axis * AreaOf(above);
    const double firstAll = MomentAboutX(outline) - axis * 2.0 * half;
    return {axis, 2.0 * firstAbove - firstAll};
}

} // namespace

ExactProperties Integrate(const Outline& outline)
{
    ExactProperties p;
    p.area = AreaOf(outline);
    p.ybar = MomentAboutX(outline) / p.area;
    p.xbar = Contour(outline, [](double x, double) { return x * x / 2.0; }) / p.area;
    const Outline centred = SeenFrom(outline, p.xbar, p.ybar, 0.0);
    p.Ixx = SecondMomentAboutX(centred);
    p.Iyy = Contour(centred, [](double x, double) { return x * x * x / 3.0; });
    p.Ixy = Contour(centred, [](double x, double y) { return x * x * y / 2.0; });
    p.monosymmetry =
        Contour(centred, [](double x, double y) { return y * x * x * x / 3.0 + y * y * y * x; }) / (2.0 * p.Ixx);
    p.alpha = std::atan2(-2.0 * p.Ixy, p.Ixx - p.Iyy) / 2.0;

    const auto elastic = [](const Outline& seen) {
        const auto [low, high] = RangeY(seen);
        return SecondMomentAboutX(seen) / std::max(-low, high);
    };
    const Outline u = SeenFrom(outline, p.xbar, p.ybar, p.alpha);
    const Outline v = SeenFrom(outline, p.xbar, p.ybar, p.alpha + std::numbers::pi / 2.0);
    const Outline exchanged = Exchanged(centred);
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

Outline OutlineOfI(double D, double B1, double B2, double t, double T1, double T2, double r)
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

Outline OutlineOfChannel(double D, double B, double t, double T, double r, double rt)
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

Outline OutlineOfT(double D, double B, double t, double T, double r, double rt)
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

Outline OutlineOfAngle(double A, double B, double T, double r, double rt)
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

Outline OutlineOfRhs(double D, double B, double Tw, double Tf, double ri, double ro)
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

Outline OutlineOfChs(double D, double t)
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
