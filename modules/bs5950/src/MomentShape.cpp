#include "MomentShape.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace Keltrix::BS5950 {

using Design::MomentDiagram;

namespace {

// Shear at a share of a piece, as the slope of the moment.
double ShearAt(const MomentDiagram::Piece& piece, double x)
{
    const double s = piece.length > 0.0 ? std::clamp((x - piece.start) / piece.length, 0.0, 1.0) : 0.0;
    return (1.0 - s) * piece.shearLeft + s * piece.shearRight;
}

struct Part {
    double from, to, shearFrom, shearTo;
};

// The sub-spans of the diagram between two positions.
std::vector<Part> PartsOf(const MomentDiagram& diagram, double from, double to)
{
    std::vector<Part> parts;
    const MomentDiagram::Range covered = diagram.Covering(from, to);
    for (int k = covered.first; k < covered.last; ++k) {
        const MomentDiagram::Piece& piece = diagram.At(k);
        const double a = std::max(from, piece.start);
        const double b = std::min(to, piece.End());
        parts.push_back({a, b, ShearAt(piece, a), ShearAt(piece, b)});
    }
    return parts;
}

LoadPattern PatternOf(const MomentDiagram& diagram, double from, double to, double Mmax)
{
    const std::vector<Part> parts = PartsOf(diagram, from, to);
    double scale = 1.0;
    for (const Part& p : parts)
        scale = std::max({scale, std::abs(p.shearFrom), std::abs(p.shearTo)});
    const double tolerance = std::max(1.0, 0.001 * scale);
    const double length = to - from;
    int jumps = 0;
    double jumpAt = 0.0;
    double total = 0.0; // change of shear along the parts
    for (std::size_t i = 0; i < parts.size(); ++i) {
        total += parts[i].shearTo - parts[i].shearFrom;
        if (i + 1 < parts.size() && std::abs(parts[i + 1].shearFrom - parts[i].shearTo) > tolerance) {
            ++jumps;
            jumpAt = parts[i].to - from;
        }
    }
    const bool distributed = std::abs(total) > tolerance;
    if (jumps == 0 && !distributed) return Mmax > 1.0 ? LoadPattern::EndMoments : LoadPattern::None;
    if (jumps == 0) {
        const auto uniform = [&](const Part& p) {
            return std::abs(p.shearTo - p.shearFrom - total * (p.to - p.from) / length) <= tolerance;
        };
        return std::all_of(parts.begin(), parts.end(), uniform) ? LoadPattern::Uniform : LoadPattern::General;
    }
    if (distributed) return LoadPattern::General;
    if (jumps == 1 && std::abs(jumpAt - 0.5 * length) < 0.001 * length) return LoadPattern::CentralPoint;
    return LoadPattern::PointLoads;
}

double FactorOf(const MomentShape& shape, FactorTable table)
{
    return table == FactorTable::Table18 ? MomentFactorLT(shape.M2, shape.M3, shape.M4, shape.Mmax)
                                         : MomentFactor(shape.M2, shape.M3, shape.M4, shape.M24, shape.Mmax);
}

} // namespace

MomentShape ShapeOf(const MomentDiagram& diagram, double from, double to, FactorTable table)
{
    MomentShape shape;
    const double length = to - from;
    const auto sides = [&](double share) {
        const double x = from + share * length;
        return std::array<double, 2>{diagram.LeftOf(x).Worst(), diagram.RightOf(x).Worst()};
    };
    const std::array<double, 2> M2 = sides(0.25);
    const std::array<double, 2> M3 = sides(0.5);
    const std::array<double, 2> M4 = sides(0.75);
    shape.Mmax = diagram.Between(from, to).Magnitude();
    shape.M24 = std::max(
        {diagram.Between(from + 0.25 * length, from + 0.75 * length).Magnitude(), std::abs(M2[0]), std::abs(M4[1])});
    shape.Mleft = diagram.RightOf(from).Worst();
    shape.Mright = diagram.LeftOf(to).Worst();
    shape.pattern = PatternOf(diagram, from, to, shape.Mmax);
    shape.factor = -1.0;
    MomentShape tried = shape;
    for (const double m2 : M2)
        for (const double m3 : M3)
            for (const double m4 : M4) {
                tried.M2 = m2;
                tried.M3 = m3;
                tried.M4 = m4;
                tried.factor = FactorOf(tried, table);
                if (!(tried.factor <= shape.factor)) shape = tried;
            }
    shape.balanced = diagram.IsBalanced(from, to);
    if (!shape.balanced) shape.factor = 1.0;
    return shape;
}

} // namespace Keltrix::BS5950
