#include "keltrix/stability/CoupledBuckling.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Keltrix::Stability {

double CoupledForce(double alongMajor, double alongMinor, const ModeForces& forces)
{
    if (!std::isfinite(forces.twist)) return forces.twist;
    double high = forces.twist;
    if (alongMajor != 0.0) high = std::min(high, forces.major);
    if (alongMinor != 0.0) high = std::min(high, forces.minor);
    if (alongMajor == 0.0 && alongMinor == 0.0) return high;
    // What is left of the stiffness of twist falls with the force, down to zero at the smallest root.
    const auto isStable = [&](double N) {
        const auto lost = [N](double share, double force) {
            return share == 0.0 ? 0.0 : N * N * share * share / (force - N);
        };
        return forces.twist - N - lost(alongMajor, forces.major) - lost(alongMinor, forces.minor) > 0.0;
    };
    double low = 0.0;
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (low + high);
        (isStable(middle) ? low : high) = middle;
    }
    return low;
}

double StrutForceBetweenForks(const SectionConstants& section, double length)
{
    const double k2 = std::numbers::pi * std::numbers::pi / (length * length);
    const double i2 = section.PolarRadius2();
    const double Pz = section.E * section.Iz * k2;
    const double Pt = (section.G * section.It + section.E * section.Iw * k2) / i2;
    const double share = 1.0 - section.zc * section.zc / i2;
    const double sum = Pz + Pt;
    return 2.0 * Pz * Pt / (sum + std::sqrt(std::max(0.0, sum * sum - 4.0 * share * Pz * Pt)));
}

} // namespace Keltrix::Stability
