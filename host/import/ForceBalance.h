#pragma once

#include <optional>
#include <string>
#include <vector>

#include "import/ForceTable.h"

namespace Keltrix::Host {

/// A stretch along which a moment does not change as the shears say.
struct ForceGap {
    const ForceRow* row = nullptr; ///< at its right end
    double from = 0.0;
    double to = 0.0;
    double byMoments = 0.0; ///< change of the moment, N·m, jumps left out
    double byShears = 0.0;
};

/// The first stretch of a case without dM/dx = law * V in a plane; nothing where all is in balance. Balance is that of every stretch
/// between two stations: within 1 % of the largest moment of the plane and case, and the rounding of the table's figures. Between stations shears are
/// linear. A moment that jumps at a station is a couple and no gap.
std::optional<ForceGap> FindGap(const ForceCase& one, TablePlane plane, int law);

/// A moment that differs on the two sides of a station by more than rounding.
struct ForceCouple {
    const ForceStation* station = nullptr;
    double moment = 0.0; ///< N·m
};
std::vector<ForceCouple> FindCouples(const ForceCase& one, TablePlane plane);

inline ImportedAction ShearOf(TablePlane plane) { return plane == TablePlane::XZ ? ACTION_VZ : ACTION_VY; }
inline ImportedAction MomentOf(TablePlane plane) { return plane == TablePlane::XZ ? ACTION_MY : ACTION_MZ; }

} // namespace Keltrix::Host
