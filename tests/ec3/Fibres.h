#pragma once

// Sections as fibres, for plastic and effective resistances by other means than formulas. N, mm.

#include <algorithm>
#include <cmath>
#include <vector>

namespace EC3Test {

struct Fibre {
    double y, z; ///< middle, z up
    double A;
    double strength = 1.0; ///< share of fy
    bool active = true;
};

class Fibres {
public:
    /// A rectangle from y1 to y2 and z1 to z2.
    void Rectangle(double y1, double y2, double z1, double z2, double strength = 1.0, int ny = 200, int nz = 200)
    {
        const double dy = (y2 - y1) / ny, dz = (z2 - z1) / nz;
        for (int i = 0; i < ny; ++i)
            for (int j = 0; j < nz; ++j)
                m_fibres.push_back({y1 + (i + 0.5) * dy, z1 + (j + 0.5) * dz, dy * dz, strength});
    }
    void Ring(double outer, double inner, int rings = 40, int around = 1000)
    {
        const double dr = (outer - inner) / rings, da = 2.0 * 3.14159265358979 / around;
        for (int i = 0; i < rings; ++i)
            for (int j = 0; j < around; ++j) {
                const double r = inner + (i + 0.5) * dr, a = (j + 0.5) * da;
                m_fibres.push_back({r * std::cos(a), r * std::sin(a), r * dr * da, 1.0});
            }
    }

    /// Plastic force over fy: of all that counts.
    double Squash() const
    {
        double sum = 0.0;
        for (const Fibre& f : m_fibres)
            sum += f.A * f.strength;
        return sum;
    }
    /// Plastic moment over fy with a compressive force N over fy, about y-y (z-z): stress blocks on both sides of a straight neutral
    /// axis, compression on the side of large z (y) where `positive`. About the gross centroid, which symmetric sections have at 0.
    double Plastic(bool major, double N, bool positive = true) const
    {
        std::vector<std::pair<double, double>> order;
        for (const Fibre& f : m_fibres)
            order.emplace_back((positive ? 1.0 : -1.0) * (major ? f.z : f.y), f.A * f.strength);
        std::sort(order.begin(), order.end());
        double tension = 0.5 * (Squash() - N);
        double M = 0.0;
        for (const auto& [at, A] : order) {
            const double pulled = std::clamp(tension, 0.0, A);
            M += at * (A - 2.0 * pulled);
            tension -= pulled;
        }
        return M;
    }
    /// Where the stress blocks change sign.
    double NeutralAxis(double N, bool positive) const
    {
        std::vector<std::pair<double, double>> order;
        for (const Fibre& f : m_fibres)
            order.emplace_back(f.z, f.A);
        std::sort(order.begin(), order.end());
        double below = 0.5 * (Squash() - (positive ? N : -N));
        for (const auto& [at, A] : order)
            if ((below -= A) <= 0.0) return at;
        return order.back().first;
    }

    double Area() const
    {
        return Sum([](const Fibre&) { return 1.0; });
    }
    double Centroid(bool major) const
    {
        return Sum([=](const Fibre& f) { return major ? f.z : f.y; }) / Area();
    }
    double SecondMoment(bool major) const
    {
        const double c = Centroid(major);
        return Sum([=](const Fibre& f) { return std::pow((major ? f.z : f.y) - c, 2.0); });
    }
    /// Takes out fibres of which the test is true.
    template <class Test>
    void Drop(Test test)
    {
        for (Fibre& f : m_fibres)
            if (test(f)) f.active = false;
    }

private:
    template <class Value>
    double Sum(Value value) const
    {
        double sum = 0.0;
        for (const Fibre& f : m_fibres)
            if (f.active) sum += f.A * value(f);
        return sum;
    }
    std::vector<Fibre> m_fibres;
};

} // namespace EC3Test
