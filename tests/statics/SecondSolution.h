#pragma once

// The same beams by another way that shares no code: the differential equation EI w'''' = q is integrated from the left end with unknown
// starting values, reactions and kinks of hinges, which the conditions on the way determine. Loads are integrated numerically.

#include <vector>

#include "keltrix/statics/Beam.h"

namespace StaticsTest {

struct State {
    double deflection = 0.0;
    double slope = 0.0;
    double moment = 0.0;
    double shear = 0.0;
};

class Shooting {
public:
    /// The loads of one case in one plane. The beam must be held.
    Shooting(const Keltrix::Statics::Beam& beam, std::size_t caseIndex, bool minor);

    State RightOf(double x) const;

private:
    // What changes the state at a place by 1, and everything after it.
    struct Source {
        enum Kind { Deflection, Slope, Moment, Shear } kind;
        double at;
        double value;
    };
    struct Condition {
        enum Kind { Vertical, Rotation, NoMoment, NoShear } kind;
        double at;
        double stiffness; // 0: rigid
        std::size_t source;
    };

    void AddSupports(const Keltrix::Statics::Beam& beam, bool minor);
    State Of(const Source& source, double x) const;
    State OfLoads(double x) const;
    void Determine();

    std::vector<Source> m_sources;
    std::vector<Condition> m_conditions;
    std::vector<Keltrix::Statics::Load> m_loads; // with their component across the plane
    double m_EI = 0.0;
};

} // namespace StaticsTest
