#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "keltrix/platform/CString.h"
#include "keltrix/statics/Export.h"
#include "keltrix/steel/MemberLayout.h"

/// Beams and columns as an engineer knows them: spans, supports, restraints, and loads by case. SI units: m, N, N·m,
/// kg, radians.
///
/// x runs along the member from its left (or lower) end, z up across it, y to the left of somebody who looks along x. A
/// load is above zero downwards (against z), along y, or along x; a moment is above zero about y, which is clockwise
/// with x to the right and z up, or about z.
namespace Keltrix::Statics {

/// Standard acceleration of fall that turns masses into loads, m/s².
inline constexpr double GRAVITY = 9.81;

/// What a beam is made of. The same section over the whole length.
struct Section {
    double E = 0.0;    ///< Young's modulus, N/m²
    double Iy = 0.0;   ///< second moment of area about the major axis, m⁴
    double Iz = 0.0;   ///< about the minor axis; needed where a load bends the beam about it
    double mass = 0.0; ///< kg/m. 0 is a fault while Beam::selfWeight is true
    /// Heights of the top and the bottom flange above the shear centre, m, for loads whose height counts from a flange.
    double topFlange = std::numeric_limits<double>::quiet_NaN();
    double bottomFlange = std::numeric_limits<double>::quiet_NaN();
};

/// A place that is held. The restraint says how: MAJOR_SHEAR against moving up and down, MAJOR_ROTATION against
/// rotation about the major axis; MINOR_SHEAR and MINOR_ROTATION likewise for loads across. All bits go to the member's
/// point as they are, and count for loads as their closure does. A stiffness above zero takes the place of the rigid
/// hold; partial rotational bits without one hold no rotation. Several supports at one place count together, the larger
/// stiffness of each kind; a rigid hold of one of them outweighs the springs of the others.
struct Support {
    double at = 0.0;
    Steel::CRestraint holds = Steel::CRestraint(Steel::CRestraint::PINNED, Steel::SHR_CENTRE, 0.0);
    double vertical = 0.0;        ///< spring, N/m
    double rotation = 0.0;        ///< N·m per radian, about the major axis
    double lateral = 0.0;         ///< N/m
    double lateralRotation = 0.0; ///< N·m per radian, about the minor axis
};

/// A place inside the member that carries no moment.
struct Hinge {
    double at = 0.0;
    bool major = true;
    bool minor = false;
};

/// What holds the member along a length, such as a deck on the top flange, without carrying loads. At one place use a
/// Support with a restraint that has no vertical hold.
struct Restraint {
    double from = 0.0;
    double to = 0.0;
    Steel::CRestraint holds;
};

/// Kinds of actions, as combinations distinguish them.
enum class ActionKind { Permanent, Imposed, Snow, SnowAbove1000m, Wind };
/// Categories of imposed loads, EN 1990 Table A1.1: A dwellings, B offices, C congregation, D shopping, E storage, F
/// vehicles to 30 kN, G vehicles to 160 kN, H roofs.
enum class Category { None, A, B, C, D, E, F, G, H };

/// Loads that come and go together.
struct Case {
    CString name;
    ActionKind kind = ActionKind::Permanent;
    Category category = Category::None;
    /// Each span may carry its loads or not, by itself. Of variable actions only.
    bool bySpan = false;
};

enum class LoadShape { Distributed, Point, Moment };
/// Gravity acts straight down whatever the inclination; the others are in the member's axes.
enum class Direction { Gravity, Major, Minor, Axial };

/// One load. Use the functions below to make it.
struct Load {
    std::size_t caseIndex = 0;
    LoadShape shape = LoadShape::Distributed;
    Direction direction = Direction::Gravity;
    double from = 0.0;    ///< place of a point load or moment
    double to = 0.0;      ///< infinite: to the end of the member. Of distributed loads alone
    double value = 0.0;   ///< N/m of the member's length at `from`, N, N·m
    double valueTo = 0.0; ///< N/m at `to`
    /// Height of application above the reference, m. Of loads across the major axis alone.
    double height = 0.0;
    Steel::LoadPos reference = Steel::SHR_CENTRE;
};

KELTRIX_STATICS_API Load UniformLoad(std::size_t caseIndex, double load, double from = 0.0,
                                     double to = std::numeric_limits<double>::infinity(),
                                     Direction direction = Direction::Gravity);
KELTRIX_STATICS_API Load TrapezoidalLoad(std::size_t caseIndex, double from, double load, double to, double loadTo,
                                         Direction direction = Direction::Gravity);
KELTRIX_STATICS_API Load PointLoad(std::size_t caseIndex, double force, double at,
                                   Direction direction = Direction::Gravity);
/// `direction` Minor is about z, every other one that is not Axial is about y.
KELTRIX_STATICS_API Load MomentLoad(std::size_t caseIndex, double moment, double at,
                                    Direction direction = Direction::Major);

/// Reaction of a beam on a column, downwards, with an eccentricity in the plane of bending: a force straight down and a
/// moment. An eccentricity above zero is against z, to the right of a column whose x goes up, and the moment then
/// clockwise; in the minor plane it is along y, and the moment about z.
KELTRIX_STATICS_API std::vector<Load> EccentricReaction(std::size_t caseIndex, double reaction, double at,
                                                        double eccentricity, Direction plane = Direction::Major);
/// Nominal eccentricity of the reaction of a simply supported beam from the column's centre line, m: 100 mm from the
/// face of the column (BS 5950-1:2000, 4.7.7). `faceDistance` is half the depth, or for a connection to the web half
/// the web's thickness.
KELTRIX_STATICS_API double NominalEccentricity(double faceDistance);

/// A straight prismatic member in one line with its loads.
struct Beam {
    double length = 0.0;
    Section section;
    double inclination = 0.0; ///< of x above the horizontal; π/2 for a column
    std::vector<Support> supports;
    std::vector<Hinge> hinges;
    std::vector<Restraint> restraints;
    std::vector<Case> cases;
    std::vector<Load> loads;
    /// The weight of the section acts in the first permanent case, or in a case "Self weight" of its own where there is
    /// none. It needs a mass: without one set this to false.
    bool selfWeight = true;
    /// The place that takes axial loads; without one the first support.
    std::optional<double> axiallyHeldAt;
};

/// Supports with the same restraint at both ends of each span; the beam becomes as long as all spans together.
/// Throws std::invalid_argument, and changes nothing, where a span is not a length above zero.
KELTRIX_STATICS_API void SetSpans(Beam& beam, const std::vector<double>& spans,
                                  int restraint = Steel::CRestraint::PINNED);

/// The part of a beam that a fault is in.
enum class Part { Beam, Section, Support, Hinge, Restraint, Case, Load };

/// What is wrong with a beam: the part, its place in the beam's vector, and a sentence with what was found and what is
/// expected.
struct Fault {
    Part part = Part::Beam;
    std::size_t index = 0;
    CString text;
};

/// Everything that keeps a beam from being analysed, except motions that nothing holds: numbers that are not finite,
/// places outside the member, loads of cases that do not exist, hinges at ends, at each other or at held rotations,
/// moments at hinges, torsion, load heights from unknown flanges, values that an enumeration has not, lengths below 1e-6
/// or above 1e9 m, places so close together (below 1e-4 of the length) that no stiffness lies between them, springs so
/// soft (below 1e-7 EI/L³ of the whole length, 1e-7 EI/L for rotations) that they could not be computed with. Empty for a
/// sound beam.
KELTRIX_STATICS_API std::vector<Fault> FindFaults(const Beam& beam);

} // namespace Keltrix::Statics
