#include "keltrix/stability/CoupledBuckling.h"

#include <algorithm>
#include <cmath>

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

} // namespace Keltrix::Stability
