#pragma once

#include <optional>
#include <string>
#include <vector>

#include "keltrix/design/MomentDiagram.h"
#include "memberfile/CodelessMember.h"

namespace Keltrix::Host {

/// What ends a span.
enum class Split {
    Minor,            ///< restraint against minor-axis shear: the whole section held laterally
    LateralTorsional, ///< that, or either flange held laterally, or restraint against torsion
    Major             ///< restraint against major-axis shear: a support
};

/// The load pattern of one axis, as the tests of CSpan have it.
struct LoadPatternReport {
    /// In words: "uniform load". CSpan looks at the ends of sub-spans; where the moment diagram shows a load that its tests
    /// do not see, the words say so.
    std::string pattern;
    bool loaded = false;
    bool pointLoad = false;
    bool leftEndPointLoadOnly = false;
    bool rightEndPointLoadOnly = false;
    bool leftEndMomentOnly = false;
    bool rightEndMomentOnly = false;
    bool centrePointLoad = false;
    bool uniformLoad = false;
};

/// Largest deflection of a span from its chord, m.
struct Deflection {
    double EI = 0.0;           ///< N·m²
    double atPoints = 0.0;     ///< CSpan's value over the member points; not-a-number where it has none
    double integrated = 0.0;   ///< by integration of the moment diagram, upwards and downwards alike above zero
    double integratedAt = 0.0; ///< and its position along the member
    bool isUpwards = false;
    /// False where the moment is not known along the whole span: `integrated` is then the largest of three readings, each
    /// taken for all sub-spans that do not balance.
    bool isKnown = true;
    bool hasLoadBetweenPoints = false; ///< which CSpan's value leaves out
};

/// Forces and moments at a relative position of a span.
struct StationForces {
    double t = 0.0;
    double position = 0.0;
    Vec3<double> force;
    Vec3<double> moment;
};

/// A stretch of a compressed flange between the sections that hold it: what is checked for lateral-torsional buckling; its
/// effective length and the row of the table that gave it.
struct EffectiveLengthLT {
    int flange = 3; ///< as CCodeShare::LT_BuckleDirection
    double start = 0.0, end = 0.0;
    /// "Table 13" of beams, "Table 14" of cantilevers, "the longer of Tables 13 and 14"; empty where the member's file gives
    /// the length.
    std::string table;
    std::string standard; ///< whose table it is: "BS 5950-1:2000"; empty where `table` is
    std::string row;      ///< "1.0L(normal)"
    double length = 0.0;  ///< infinite where no row applies
    bool cantilever = false;
    bool nominalRejectedLeft = false; ///< the row without torsional restraint was refused at this end
    bool nominalRejectedRight = false;
};

struct SpanEnd {
    int point = 0; ///< the member point's own index
    double position = 0.0;
    std::string restraint;
    std::vector<std::string> heldBy; ///< which of the rules of the split hold here; "member end" where none does
};

struct SpanReport {
    SpanEnd left, right;
    double length = 0.0;
    std::string continuousRestraint;
    bool momentReverses = false;
    double loadHeight = 0.0;
    bool destabilising = false;
    /// Extremes of the forces over the sub-span ends, and of the moments over the span.
    Vec3<double> maxForce, minForce, maxMoment, minMoment;
    Design::Extremes momentMajor, momentMinor;
    /// Ends and quarter points; where the moment is not known, the largest that it can be.
    std::vector<StationForces> stations;
    LoadPatternReport major, minor;
    int compressionFlange = 3; ///< as CCodeShare::LT_BuckleDirection
    /// The stretches of which the span has a part, in the order of their starts. They can reach beyond the span. None of an
    /// angle, whose moments count about its principal axes.
    std::vector<EffectiveLengthLT> lt;
    bool isAngle = false;
    bool lengthsByCode = false; ///< the design code has rules of its own for `lt`, and the check applies them
    std::optional<Deflection> deflectionMajor, deflectionMinor;
};

/// The spans of a valid member. `EI` is the bending stiffness about the major axis, N·m²; without it both stiffnesses
/// are those of the section with the modulus E, where the section is known.
std::vector<SpanReport> MakeSpanReports(CodelessMember& member, Split split, std::optional<double> EI,
                                        double E = STEEL_E);

/// "flange 1 (top)", "flange 2 (bottom)", "both in turn", "neither".
std::string CompressionFlangeName(int direction);

} // namespace Keltrix::Host
