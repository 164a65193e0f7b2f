#pragma once

#include <array>
#include <optional>
#include <vector>

#include "keltrix/design/MomentDiagram.h"
#include "keltrix/stability/SectionConstants.h"
#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Stability {

/// Linear conditions on the pair (v, φ), or alike on (v', φ'), as bits: the quantity that is zero.
enum Condition : unsigned {
    SHEAR_CENTRE = 1, ///< v
    TWIST = 2,        ///< φ
    FLANGE1 = 4,      ///< v + z1 φ
    FLANGE2 = 8       ///< v + z2 φ
};

/// Coefficients of a condition.
struct Coefficients {
    double v = 0.0;
    double phi = 0.0;
};
Coefficients CoefficientsOf(Condition condition, const SectionConstants& section);
inline constexpr std::array<Condition, 4> CONDITIONS{SHEAR_CENTRE, TWIST, FLANGE1, FLANGE2};

/// Number of independent conditions in a set: 0, 1 or 2.
int Rank(unsigned conditions, const SectionConstants& section);

/// Conditions on (v, φ) and on (v', φ').
struct Holds {
    unsigned value = 0;
    unsigned slope = 0;

    void Add(const Holds& other)
    {
        value |= other.value;
        slope |= other.slope;
    }
    bool operator==(const Holds& other) const { return value == other.value && slope == other.slope; }
    bool Any() const { return value != 0 || slope != 0; }
};

/// A place with something at it: a member point (several, where they are at one place) or a contraflexure.
struct Station {
    double x = 0.0;
    Holds holds;
    double torque = 0.0; ///< sum of the loads times their heights, downwards and upwards above zero: N·m per radian
    bool jump = false;   ///< the moment jumps
};

/// The length between two neighbouring stations, with what acts along it. Moments sag above zero, compression is above zero.
struct Piece {
    Design::Parabola moment;
    double axialLeft = 0.0;
    double axialRight = 0.0;
    double torque = 0.0; ///< distributed load times its height, N
    Holds along;
    bool balanced = true;
};

/// A member as the analysis sees it. Piece i lies between stations i and i + 1.
struct Layout {
    std::vector<Station> stations;
    std::vector<Piece> pieces;
};

/// The readings of the moment in a sub-span whose end moments do not belong to its shears: through both end moments with the
/// curvature that the shears have; from the left end; from the right end; straight.
inline constexpr int READINGS = 4;

struct MemberInput {
    const std::vector<Steel::CMemberPoint>& points;
    const std::vector<Steel::CSubSpan>& subSpans;
    const Design::MomentDiagram& major;
    const SectionConstants& section;
};

/// Why a member cannot be analysed; empty where it can.
CString ReasonAgainst(const MemberInput& input);

/// The layout of a member that can be analysed.
Layout MakeLayout(const MemberInput& input, int reading);

} // namespace Keltrix::Stability
