#include "sections/SectionOutline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "sections/SectionShapes.h"

namespace Keltrix::Host {

namespace {

using Geom = CSecGeom;

class LoopPen {
public:
    LoopPen(double x, double y)
    {
        m_loop.x = x;
        m_loop.y = y;
    }
    LoopPen& Line(double x, double y)
    {
        m_loop.pieces.push_back({x, y});
        return *this;
    }
    /// A rounding of a corner that sticks out.
    LoopPen& Round(double x, double y, double r) { return Arc(x, y, r, true); }
    /// A fillet in a corner that goes in.
    LoopPen& Fillet(double x, double y, double r) { return Arc(x, y, r, false); }
    LoopPen& Arc(double x, double y, double r, bool anticlockwise)
    {
        if (r > 0.0) m_loop.pieces.push_back({x, y, r, anticlockwise});
        return *this;
    }
    /// Completes what was drawn upwards at positive x by its mirror image.
    LoopPen& MirrorInY()
    {
        const OutlineLoop half = m_loop;
        Line(-half.pieces.back().x, half.pieces.back().y);
        for (std::size_t i = half.pieces.size(); i-- > 0;) {
            const OutlineLoop::Piece& piece = half.pieces[i];
            const double x = i == 0 ? half.x : half.pieces[i - 1].x;
            const double y = i == 0 ? half.y : half.pieces[i - 1].y;
            m_loop.pieces.push_back({-x, y, piece.radius, piece.anticlockwise});
        }
        return *this;
    }
    const OutlineLoop& Loop() const { return m_loop; }

private:
    OutlineLoop m_loop;
};

// The dimensions by the symbols of the drawings.
struct Dimensions {
    explicit Dimensions(const CSecComp& c) :
        D(c.Dimension(0.0, Geom::DEPTH)), B(c.Dimension(0.0, Geom::WIDTH)), t(c.Dimension(0.0, Geom::WEB_THICKNESS)),
        T(c.Dimension(0.0, Geom::FLANGE_THICKNESS)), B2(B), T2(T), r(c.Dimension(0.0, Geom::ROOT_RADIUS)),
        rt(c.Dimension(0.0, Geom::TOE_RADIUS))
    {
        if ((c.Shape() & Geom::SHAPE_MASK) != Geom::SHAPE_GENERAL_I) return;
        B2 = c.Dimension(0.0, Geom::BOTTOM_FLANGE_WIDTH);
        T2 = c.Dimension(0.0, Geom::BOTTOM_FLANGE_THICKNESS);
    }
    double D, B, t, T, B2, T2, r, rt;
};

OutlineLoop DrawI(const Dimensions& d)
{
    return LoopPen(d.B2 / 2, 0)
        .Line(d.B2 / 2, d.T2)
        .Line(d.t / 2 + d.r, d.T2)
        .Fillet(d.t / 2, d.T2 + d.r, d.r)
        .Line(d.t / 2, d.D - d.T - d.r)
        .Fillet(d.t / 2 + d.r, d.D - d.T, d.r)
        .Line(d.B / 2, d.D - d.T)
        .Line(d.B / 2, d.D)
        .MirrorInY()
        .Loop();
}

OutlineLoop DrawChannel(const Dimensions& d)
{
    return LoopPen(0, 0)
        .Line(d.B, 0)
        .Line(d.B, d.T - d.rt)
        .Round(d.B - d.rt, d.T, d.rt)
        .Line(d.t + d.r, d.T)
        .Fillet(d.t, d.T + d.r, d.r)
        .Line(d.t, d.D - d.T - d.r)
        .Fillet(d.t + d.r, d.D - d.T, d.r)
        .Line(d.B - d.rt, d.D - d.T)
        .Round(d.B, d.D - d.T + d.rt, d.rt)
        .Line(d.B, d.D)
        .Line(0, d.D)
        .Loop();
}

OutlineLoop DrawT(const Dimensions& d)
{
    return LoopPen(d.t / 2, 0)
        .Line(d.t / 2, d.D - d.T - d.r)
        .Fillet(d.t / 2 + d.r, d.D - d.T, d.r)
        .Line(d.B / 2 - d.rt, d.D - d.T)
        .Round(d.B / 2, d.D - d.T + d.rt, d.rt)
        .Line(d.B / 2, d.D)
        .MirrorInY()
        .Loop();
}

OutlineLoop DrawAngle(const Dimensions& d)
{
    return LoopPen(0, 0)
        .Line(d.B, 0)
        .Line(d.B, d.t - d.rt)
        .Round(d.B - d.rt, d.t, d.rt)
        .Line(d.t + d.r, d.t)
        .Fillet(d.t, d.t + d.r, d.r)
        .Line(d.t, d.D - d.rt)
        .Round(d.t - d.rt, d.D, d.rt)
        .Line(0, d.D)
        .Loop();
}

// A rectangle with rounded corners, symmetric about x = 0.
OutlineLoop DrawBox(double width, double bottom, double top, double r)
{
    const double x = width / 2;
    return LoopPen(x - r, bottom)
        .Round(x, bottom + r, r)
        .Line(x, top - r)
        .Round(x - r, top, r)
        .Line(-x + r, top)
        .Round(-x, top - r, r)
        .Line(-x, bottom + r)
        .Round(-x + r, bottom, r)
        .Line(x - r, bottom)
        .Loop();
}

OutlineLoop DrawCircle(double centre, double r)
{
    return LoopPen(r, centre).Round(-r, centre, r).Round(r, centre, r).Loop();
}

// The loop run the other way round, as the edge of an opening.
OutlineLoop Opening(const OutlineLoop& loop)
{
    const OutlineLoop::Piece& last = loop.pieces.back();
    OutlineLoop opening{last.x, last.y, {}};
    for (std::size_t i = loop.pieces.size(); i-- > 0;) {
        const OutlineLoop::Piece& piece = loop.pieces[i];
        const double x = i == 0 ? loop.x : loop.pieces[i - 1].x;
        const double y = i == 0 ? loop.y : loop.pieces[i - 1].y;
        opening.pieces.push_back({x, y, piece.radius, !piece.anticlockwise});
    }
    return opening;
}

struct Point {
    double x;
    double y;
};

// Corners of a loop, with each arc in chords.
std::vector<Point> Corners(const OutlineLoop& loop)
{
    constexpr int chords = 32;
    std::vector<Point> corners{{loop.x, loop.y}};
    for (const OutlineLoop::Piece& piece : loop.pieces) {
        const Point a = corners.back();
        if (piece.radius > 0.0) {
            // The centre lies beside the middle of the chord, to its left for an anticlockwise arc.
            const double dx = piece.x - a.x;
            const double dy = piece.y - a.y;
            const double chord = std::hypot(dx, dy);
            const double rise = std::sqrt(std::max(piece.radius * piece.radius - chord * chord / 4.0, 0.0));
            const double side = piece.anticlockwise ? 1.0 : -1.0;
            const double cx = a.x + dx / 2.0 - side * rise * dy / chord;
            const double cy = a.y + dy / 2.0 + side * rise * dx / chord;
            const double from = std::atan2(a.y - cy, a.x - cx);
            const double turn = side * 2.0 * std::asin(std::min(chord / (2.0 * piece.radius), 1.0));
            for (int i = 1; i < chords; ++i) {
                const double angle = from + turn * i / chords;
                corners.push_back({cx + piece.radius * std::cos(angle), cy + piece.radius * std::sin(angle)});
            }
        }
        corners.push_back({piece.x, piece.y});
    }
    return corners;
}

// Area of what lies below y = height: the trapezia between the edges and that line.
double AreaBelow(const std::vector<Point>& corners, double height)
{
    double area = 0.0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Point& a = corners[i];
        const Point& b = corners[(i + 1) % corners.size()];
        const double ya = std::min(a.y, height);
        const double yb = std::min(b.y, height);
        double sum = ya + yb;
        if ((a.y > height) != (b.y > height)) {
            // The part of the edge above the line counts with the line's height.
            const double share = std::fabs((std::max(a.y, b.y) - height) / (a.y - b.y));
            sum = share * 2.0 * height + (1.0 - share) * (height + std::min(a.y, b.y));
        }
        area -= sum / 2.0 * (b.x - a.x);
    }
    return area;
}

double HalvingLevel(const std::vector<std::vector<Point>>& loops, double low, double high)
{
    const auto areaBelow = [&](double level) {
        double area = 0.0;
        for (const std::vector<Point>& corners : loops)
            area += AreaBelow(corners, level);
        return area;
    };
    const double half = areaBelow(high) / 2.0;
    for (int i = 0; i < 60; ++i) {
        const double middle = (low + high) / 2.0;
        (areaBelow(middle) < half ? low : high) = middle;
    }
    return (low + high) / 2.0;
}

} // namespace

double SectionOutline::Area() const
{
    double area = 0.0;
    for (const OutlineLoop& loop : loops)
        area += AreaBelow(Corners(loop), top);
    return area;
}

double SectionOutline::HalvingHeight() const
{
    std::vector<std::vector<Point>> corners;
    for (const OutlineLoop& loop : loops)
        corners.push_back(Corners(loop));
    return HalvingLevel(corners, 0.0, top);
}

double SectionOutline::HalvingX() const
{
    std::vector<std::vector<Point>> corners;
    for (const OutlineLoop& loop : loops) {
        corners.push_back(Corners(loop));
        // Seen along x: a quarter turn keeps the sense of the loop.
        for (Point& point : corners.back())
            point = {-point.y, point.x - left};
    }
    return left + HalvingLevel(corners, 0.0, right - left);
}

SectionOutline MakeOutline(const CSection& section)
{
    const CSecComp& component = section.Component(0);
    const Dimensions d(component);
    const auto geometry = MakeGeometry(section);
    if (!geometry) return {};
    const double halfWidth = std::max(d.B, d.B2) / 2;
    switch (component.Shape() & Geom::SHAPE_MASK) {
    case Geom::SHAPE_I:
    case Geom::SHAPE_GENERAL_I:
        return {{DrawI(d)}, -halfWidth, halfWidth, d.D};
    case Geom::SHAPE_CHANNEL:
        return {{DrawChannel(d)}, 0.0, d.B, d.D};
    case Geom::SHAPE_T:
        return {{DrawT(d)}, -halfWidth, halfWidth, d.D};
    case Geom::SHAPE_ANGLE:
        return {{DrawAngle(d)}, 0.0, d.B, d.D};
    case Geom::SHAPE_RHS: {
        const auto& rhs = static_cast<const RhsShape&>(*geometry);
        return {{DrawBox(d.B, 0.0, d.D, rhs.RadiusOuter()),
                 Opening(DrawBox(d.B - 2 * d.t, d.T, d.D - d.T, rhs.RadiusInner()))},
                -halfWidth,
                halfWidth,
                d.D};
    }
    default:
        return {{DrawCircle(d.D / 2, d.D / 2), Opening(DrawCircle(d.D / 2, d.D / 2 - d.t))}, -d.D / 2, d.D / 2, d.D};
    }
}

} // namespace Keltrix::Host
