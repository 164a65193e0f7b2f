#pragma once

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
    void Arc(double xc, double yc, double r, double from, double to);
    /// Completes a loop that was drawn for x >= 0 from bottom to top by its mirror image.
    void MirrorInY();
    const std::vector<std::vector<Vertex>>& Loops() const { return m_loops; }

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

ExactProperties Integrate(const Outline& outline);

/// Flange 1 on top; heights from the outer face of flange 2.
Outline OutlineOfI(double D, double B1, double B2, double t, double T1, double T2, double r);
/// Back of the web at x = 0.
Outline OutlineOfChannel(double D, double B, double t, double T, double r, double rt);
/// Stem's tip at y = 0, flange on top.
Outline OutlineOfT(double D, double B, double t, double T, double r, double rt);
/// Heel at the origin, leg A up and leg B to the right.
Outline OutlineOfAngle(double A, double B, double T, double r, double rt);
/// Centre at the origin.
Outline OutlineOfRhs(double D, double B, double Tw, double Tf, double ri, double ro);
/// Centre at the origin.
Outline OutlineOfChs(double D, double t);

} // namespace Keltrix::Steel::Test
