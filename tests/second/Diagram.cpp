// (2) Moments between the ends of a sub-span. Shear is linear there; dM is its integral. Where the end moments differ by
// dM the moment is the parabola through both of them; elsewhere it is not known, and three curves are kept.

#include <algorithm>
#include <cmath>

#include "Second.h"

namespace Second {

Diagram::Diagram(const Member& member) : m_member(&member)
{
    double largest[2] = {0.0, 0.0};
    for (std::size_t i = 0; i < member.subs.size(); ++i) {
        const SubSpan& s = member.subs[i];
        const double L = member.points[i + 1].x - member.points[i].x;
        for (int e = 0; e < 2; ++e) {
            largest[0] = std::max({largest[0], std::fabs(s.Myy[e]), std::fabs(s.Fz[e]) * L / 4.0});
            largest[1] = std::max({largest[1], std::fabs(s.Mzz[e]), std::fabs(s.Fy[e]) * L / 4.0});
        }
    }
    Add(Bending::Major, largest[0]);
    Add(Bending::Minor, largest[1]);
}

void Diagram::Add(Bending axis, double scale)
{
    const bool major = axis == Bending::Major;
    for (std::size_t i = 0; i < m_member->subs.size(); ++i) {
        const SubSpan& s = m_member->subs[i];
        const double L = m_member->points[i + 1].x - m_member->points[i].x;
        const double VL = major ? s.Fz[0] : -s.Fy[0], VR = major ? s.Fz[1] : -s.Fy[1];
        const double ML = major ? s.Myy[0] : s.Mzz[0], MR = major ? s.Myy[1] : s.Mzz[1];
        const double dM = 0.5 * (VL + VR) * L, r = MR - ML - dM, c = 0.5 * (VR - VL) / L;
        const double size = std::max({std::fabs(ML), std::fabs(MR), (std::fabs(VL) + std::fabs(VR)) * L / 8.0});
        const bool balanced = std::fabs(r) <= std::max(0.01 * size, 1e-9 * scale);
        std::vector<Curve> curves;
        if (balanced) {
            curves.push_back({ML, (MR - ML) / L - c * L, c});
        } else {
            curves.push_back({ML, VL, c});
            curves.push_back({MR - dM, VL, c});
            curves.push_back({ML, (MR - ML) / L, 0.0});
        }
        m_curves[Index(axis)].push_back(curves);
        m_balanced[Index(axis)].push_back(balanced);
    }
}

Diagram Diagram::Turned(double alpha, double side) const
{
    const double c = std::cos(alpha), s = std::sin(alpha);
    Diagram turned = *this;
    for (std::size_t i = 0; i < m_curves[0].size(); ++i) {
        std::vector<Curve> u, v;
        for (const Curve& x : m_curves[0][i])
            for (const Curve& y : m_curves[1][i]) {
                const auto mix = [](double a, const Curve& p, double b, const Curve& q) {
                    return Curve{a * p.m0 + b * q.m0, a * p.m1 + b * q.m1, a * p.m2 + b * q.m2};
                };
                u.push_back(mix(c, x, s * side, y));
                v.push_back(mix(-s, x, c * side, y));
            }
        turned.m_curves[0][i] = u;
        turned.m_curves[1][i] = v;
        turned.m_balanced[0][i] = turned.m_balanced[1][i] = m_balanced[0][i] && m_balanced[1][i];
    }
    return turned;
}

std::vector<double> Diagram::At(Bending axis, int sub, double s) const
{
    std::vector<double> values;
    for (const Curve& c : Curves(axis, sub))
        values.push_back(c(s));
    return values;
}

std::vector<double> Diagram::Extremes(Bending axis, int sub) const
{
    const auto i = static_cast<std::size_t>(sub);
    const double L = m_member->points[i + 1].x - m_member->points[i].x;
    std::vector<double> places;
    for (const Curve& c : Curves(axis, sub))
        if (c.m2 != 0.0) {
            const double s = -0.5 * c.m1 / c.m2;
            if (s > 0.0 && s < L) places.push_back(s);
        }
    return places;
}

std::vector<double> Diagram::Zeros(Bending axis, int sub) const
{
    const auto i = static_cast<std::size_t>(sub);
    const double L = m_member->points[i + 1].x - m_member->points[i].x;
    std::vector<double> places;
    for (const double s : Reaching(axis, sub, 0.0))
        if (s > 1e-9 * L && s < (1.0 - 1e-9) * L) places.push_back(s);
    return places;
}

std::vector<double> Diagram::Reaching(Bending axis, int sub, double level) const
{
    const auto i = static_cast<std::size_t>(sub);
    const double L = m_member->points[i + 1].x - m_member->points[i].x;
    std::vector<double> places;
    for (Curve c : Curves(axis, sub)) {
        c.m0 -= level;
        double roots[2] = {-1.0, -1.0};
        const double disc = c.m1 * c.m1 - 4.0 * c.m2 * c.m0;
        if (std::fabs(c.m2) * L <= 1e-12 * std::fabs(c.m1)) {
            if (c.m1 != 0.0) roots[0] = -c.m0 / c.m1;
        } else if (disc > 0.0) {
            const double q = -0.5 * (c.m1 + std::copysign(std::sqrt(disc), c.m1));
            roots[0] = q / c.m2;
            if (q != 0.0) roots[1] = c.m0 / q;
        }
        for (const double s : roots)
            if (s > 0.0 && s < L) places.push_back(s);
    }
    std::sort(places.begin(), places.end());
    return places;
}

std::pair<double, double> Diagram::Largest(Bending axis, double a, double b) const
{
    double below = 0.0, above = 0.0;
    for (std::size_t i = 0; i < m_member->subs.size(); ++i) {
        const double x0 = m_member->points[i].x, x1 = m_member->points[i + 1].x;
        const double from = std::max(a, x0), to = std::min(b, x1);
        if (to - from < 1e-9 * m_member->Length()) continue;
        std::vector<double> places = Extremes(axis, static_cast<int>(i));
        for (double& s : places)
            s += x0;
        places.push_back(from);
        places.push_back(to);
        for (const double x : places) {
            if (x < from || x > to) continue;
            for (const double m : At(axis, static_cast<int>(i), x - x0))
                below = std::max(below, -m), above = std::max(above, m);
        }
    }
    return {below, above};
}

bool Diagram::Known(Bending axis, double a, double b) const
{
    for (std::size_t i = 0; i < m_member->subs.size(); ++i) {
        const double from = std::max(a, m_member->points[i].x), to = std::min(b, m_member->points[i + 1].x);
        if (to - from > 1e-9 * m_member->Length() && !Balanced(axis, static_cast<int>(i))) return false;
    }
    return true;
}

double Diagram::Value(Bending axis, double x) const
{
    double worst = 0.0;
    const double near = 1e-9 * m_member->Length();
    for (std::size_t i = 0; i < m_member->subs.size(); ++i) {
        const double x0 = m_member->points[i].x, x1 = m_member->points[i + 1].x;
        if (x < x0 - near || x > x1 + near) continue;
        for (const double m : At(axis, static_cast<int>(i), std::clamp(x, x0, x1) - x0))
            if (std::fabs(m) > std::fabs(worst)) worst = m;
    }
    return worst;
}

} // namespace Second
