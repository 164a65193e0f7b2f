#include "MomentDiagram.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::BS5950 {

using Steel::CMemberPoint;
using Steel::CSubSpan;

MomentDiagram::MomentDiagram(const std::vector<CMemberPoint>& points, const std::vector<CSubSpan>& subSpans,
                             Component component) :
    m_points(points),
    m_subSpans(subSpans), m_component(component)
{}

// Equilibrium of the element: dMyy/dx = Fz and dMzz/dx = -Fy. The shear here is the slope of the moment.
double MomentDiagram::ShearLeft(int subSpan) const
{
    const Vec3<double> f = m_subSpans[static_cast<std::size_t>(subSpan)].GetForcesLeft();
    return m_component == Component::Major ? f.z : -f.y;
}

double MomentDiagram::ShearRight(int subSpan) const
{
    const Vec3<double> f = m_subSpans[static_cast<std::size_t>(subSpan)].GetForcesRight();
    return m_component == Component::Major ? f.z : -f.y;
}

double MomentDiagram::MomentLeft(int subSpan) const
{
    const Vec3<double> m = m_subSpans[static_cast<std::size_t>(subSpan)].GetMomentsLeft();
    return m_component == Component::Major ? m.y : m.z;
}

double MomentDiagram::MomentRight(int subSpan) const
{
    const Vec3<double> m = m_subSpans[static_cast<std::size_t>(subSpan)].GetMomentsRight();
    return m_component == Component::Major ? m.y : m.z;
}

bool MomentDiagram::IsParabolic(int subSpan) const
{
    const double h = Length(subSpan);
    const double change = 0.5 * h * (ShearLeft(subSpan) + ShearRight(subSpan));
    const double left = MomentLeft(subSpan);
    const double right = MomentRight(subSpan);
    const double scale = std::max({std::abs(left), std::abs(right), std::abs(change)});
    return std::abs(left + change - right) <= std::max(1.0, 0.01 * scale);
}

double MomentDiagram::ZeroShear(int subSpan) const
{
    const double left = ShearLeft(subSpan);
    const double right = ShearRight(subSpan);
    if (!(left * right < 0.0) || !IsParabolic(subSpan)) return -1.0;
    const double s = left / (left - right);
    return s > 1e-6 && s < 1.0 - 1e-6 ? s : -1.0;
}

double MomentDiagram::InSubSpan(int subSpan, double s) const
{
    const double linear = (1.0 - s) * MomentLeft(subSpan) + s * MomentRight(subSpan);
    if (!IsParabolic(subSpan)) return linear;
    // The parabola through both end moments whose second derivative is the slope of the shear.
    return linear - 0.5 * (ShearRight(subSpan) - ShearLeft(subSpan)) * Length(subSpan) * s * (1.0 - s);
}

double MomentDiagram::At(int left, int right, double x) const
{
    int k = left;
    while (k < right - 1 && x > Position(k + 1))
        ++k;
    const double h = Length(k);
    return h > 0.0 ? InSubSpan(k, std::clamp((x - Position(k)) / h, 0.0, 1.0)) : MomentLeft(k);
}

double MomentDiagram::LargestIn(int left, int right, double from, double to) const
{
    double largest = std::max(std::abs(At(left, right, from)), std::abs(At(left, right, to)));
    const auto consider = [&](double x, double moment) {
        if (x >= from && x <= to) largest = std::max(largest, std::abs(moment));
    };
    for (int k = left; k < right; ++k) {
        if (Position(k) > to || Position(k + 1) < from) continue;
        consider(Position(k), MomentLeft(k));
        consider(Position(k + 1), MomentRight(k));
        const double s = ZeroShear(k);
        if (s > 0.0) consider(Position(k) + s * Length(k), InSubSpan(k, s));
    }
    return largest;
}

LoadPattern MomentDiagram::Pattern(int left, int right, double Mmax) const
{
    double scale = 1.0;
    for (int k = left; k < right; ++k)
        scale = std::max({scale, std::abs(ShearLeft(k)), std::abs(ShearRight(k))});
    const double tolerance = std::max(1.0, 0.001 * scale);
    const double length = Position(right) - Position(left);

    int jumps = 0;
    double jumpAt = 0.0;
    double total = 0.0; // change of shear over the sub-spans
    for (int k = left; k < right; ++k) {
        total += ShearRight(k) - ShearLeft(k);
        if (k + 1 < right && std::abs(ShearLeft(k + 1) - ShearRight(k)) > tolerance) {
            ++jumps;
            jumpAt = Position(k + 1) - Position(left);
        }
    }
    const bool distributed = std::abs(total) > tolerance;
    if (jumps == 0 && !distributed) return Mmax > 1.0 ? LoadPattern::EndMoments : LoadPattern::None;
    if (jumps == 0) {
        for (int k = left; k < right; ++k) {
            const double expected = total * Length(k) / length;
            if (std::abs(ShearRight(k) - ShearLeft(k) - expected) > tolerance) return LoadPattern::General;
        }
        return LoadPattern::Uniform;
    }
    if (distributed) return LoadPattern::General;
    if (jumps == 1 && std::abs(jumpAt - 0.5 * length) < 0.001 * length) return LoadPattern::CentralPoint;
    return LoadPattern::PointLoads;
}

MomentShape MomentDiagram::Shape(int left, int right) const
{
    MomentShape shape;
    const double x0 = Position(left);
    const double length = Position(right) - x0;
    shape.M2 = At(left, right, x0 + 0.25 * length);
    shape.M3 = At(left, right, x0 + 0.5 * length);
    shape.M4 = At(left, right, x0 + 0.75 * length);
    shape.M24 = LargestIn(left, right, x0 + 0.25 * length, x0 + 0.75 * length);
    shape.Mmax = LargestIn(left, right, x0, x0 + length);
    shape.Mleft = MomentLeft(left);
    shape.Mright = MomentRight(right - 1);
    shape.pattern = Pattern(left, right, shape.Mmax);
    return shape;
}

} // namespace Keltrix::BS5950
