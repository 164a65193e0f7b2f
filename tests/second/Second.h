#pragma once

// A second calculation of member checks to BS 5950-1:2000, written from the standard as a checking engineer's plain
// calculation. It shares no code with the module or with the library's sections: properties come from the outline of
// the section, interaction sums are searched along the member by sampling, restraints are closed here. N, m, Pa.
//
// Properties.cpp      section properties from the outline
// Diagram.cpp         moments between the ends of a sub-span
// Classification.cpp  classes, effective properties, reduced design strength
// Local.cpp           cross-section checks along the member
// Restraints.cpp      what follows from a restraint, stretches of the flanges, Tables 13, 14 and 22
// Buckling.cpp        struts, lateral-torsional buckling, member interaction

#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Second {

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double PI = 3.14159265358979323846;

inline double Over(double effect, double resistance)
{
    if (effect == 0.0) return 0.0;
    return resistance > 0.0 ? effect / resistance : INF;
}

// What is given

enum class Shape { I, Channel, Tee, Angle, Box, Tube };
enum class Make { Rolled, Welded, Formed };

struct Section {
    Shape shape = Shape::I;
    Make make = Make::Rolled;
    double D = 0.0, B = 0.0, t = 0.0, T = 0.0; ///< T, B of flange 1 (top); D the vertical, B the horizontal leg
    double B2 = 0.0, T2 = 0.0;                 ///< flange 2 of an I
    double r = 0.0, rToe = 0.0;

    bool EqualFlanges() const { return B == B2 && T == T2; }
};

struct Grade {
    std::string name = "S275"; ///< or "User"
    double Ys = 0.0, Us = 0.0, E = 0.0, factor = 1.0;
};

struct Point {
    double x = 0.0;
    unsigned bits = 0;
    double height = 0.0;
};

/// The piece between two points. Index 0 is its left, 1 its right end.
struct SubSpan {
    double F[2] = {0.0, 0.0}, Fy[2] = {0.0, 0.0}, Fz[2] = {0.0, 0.0};
    double Mxx[2] = {0.0, 0.0}, Myy[2] = {0.0, 0.0}, Mzz[2] = {0.0, 0.0};
    unsigned bits = 0;
    double height = 0.0;
};

struct Member {
    Section section;
    Grade grade;
    std::vector<Point> points;
    std::vector<SubSpan> subs;
    bool given = false; ///< effective lengths; below zero a factor of the member's length
    double givenMajor = 0.0, givenMinor = 0.0, givenLT = 0.0;
    std::optional<double> factor; ///< equivalent uniform moment factor
    bool exact = false;           ///< more exact interaction
    double netGross = 1.0, plasElas = 1.2;

    double Length() const { return points.back().x - points.front().x; }
};

// (1) Properties

struct Properties {
    double A = 0.0, Ix = 0.0, Iy = 0.0, Zx = 0.0, Zy = 0.0, Sx = 0.0, Sy = 0.0, J = 0.0, H = 0.0;
    double rx = 0.0, ry = 0.0, cy = 0.0, cx = 0.0; ///< centroid above the bottom, right of the left edge
    double Iu = 0.0, Iv = 0.0, Zu = 0.0, Zv = 0.0, rv = 0.0, alpha = 0.0;
    double psi = 0.0; ///< monosymmetry with flange 1 compressed; of an angle about u-u, per thickness, positive
    double hs = 0.0;
    double d = 0.0, b = 0.0, b2 = 0.0; ///< web depth and flange widths as Figure 5 has them
    double r1 = 0.0;                   ///< outer corner radius of a hollow section
};
Properties PropertiesOf(const Section& s);

struct Steel {
    double py = 0.0, E = 0.0, Ke = 1.0, eps = 1.0;
};
Steel SteelOf(const Grade& grade, const Section& s);

// (2) Moment diagram

enum class Bending { Major, Minor };

/// Moments along the member about both axes.
class Diagram {
public:
    explicit Diagram(const Member& member);
    /// The diagrams about axes that are turned by an angle: c Mx + s My and -s Mx + c My, My times `side`. Their curves go in
    /// pairs.
    Diagram Turned(double alpha, double side) const;

    bool Balanced(Bending axis, int sub) const { return m_balanced[Index(axis)][static_cast<std::size_t>(sub)]; }
    /// The moments that are possible at a distance from the left end of a sub-span: one, or three where the forces do
    /// not balance.
    std::vector<double> At(Bending axis, int sub, double s) const;
    /// Distances inside a sub-span at which the moment may have an extreme.
    std::vector<double> Extremes(Bending axis, int sub) const;
    /// Distances inside a sub-span at which the moment passes through zero.
    std::vector<double> Zeros(Bending axis, int sub) const;
    /// Distances inside a sub-span at which the moment has this value.
    std::vector<double> Reaching(Bending axis, int sub, double level) const;
    /// Largest moment of each sign over a length: first below zero (as a positive number), second above zero.
    std::pair<double, double> Largest(Bending axis, double a, double b) const;
    /// Whether every sub-span of the length balances.
    bool Known(Bending axis, double a, double b) const;
    /// The moment at a place; of two at a joint the larger.
    double Value(Bending axis, double x) const;

private:
    struct Curve {
        double m0 = 0.0, m1 = 0.0, m2 = 0.0; ///< m0 + m1 s + m2 s²
        double operator()(double s) const { return m0 + s * (m1 + s * m2); }
    };
    static std::size_t Index(Bending axis) { return axis == Bending::Major ? 0 : 1; }
    const std::vector<Curve>& Curves(Bending axis, int sub) const
    {
        return m_curves[Index(axis)][static_cast<std::size_t>(sub)];
    }
    void Add(Bending axis, double scale);

    const Member* m_member;
    std::vector<std::vector<Curve>> m_curves[2];
    std::vector<bool> m_balanced[2];
};

// (3) Classification

/// F tension above zero; Mx above zero compresses flange 2.
struct Actions {
    double F = 0.0, Mx = 0.0, My = 0.0, Vy = 0.0, Vx = 0.0;
};

struct Class {
    int cls = 1;
    double pyrX = 0.0, pyrY = 0.0; ///< design strength in bending, reduced by 3.6.5 where class 4
    double Aeff = 0.0;             ///< for compression
    double pyAxial = 0.0;          ///< goes with Aeff
    double Wx = 0.0, Wy = 0.0;     ///< moduli of the moment capacities (u-u, v-v of an angle)
    bool plasticX = true, plasticY = true;
    double Zx = 0.0, Zy = 0.0;   ///< elastic moduli of the interaction
    bool flangeSlender = false;  ///< of the flanges in bending about x-x
    bool flangeSlenderY = false; ///< about y-y
};
Class Classify(const Section& s, const Properties& p, const Steel& steel, const Actions& a);

// (4) Cross-section checks

/// Everything that is constant along a member.
struct Basis {
    /// `side`: 1, or -1 for an angle that is turned the other way.
    explicit Basis(const Member& given, double side = 1.0);

    const Member& member;
    Section s;
    Properties p;
    Steel steel;
    Diagram diagram;
    double Pt = 0.0, PtEccentric = 0.0, Pvy = 0.0, Pvx = 0.0;
    double VwY = 0.0, VwX = 0.0; ///< 0 where no check is needed
    bool thinWeb = false;        ///< fails 4.4.3
};

/// Largest utilisations of the cross-section.
struct Local {
    double tension = 0.0, tie = 0.0, compression = 0.0, shearMajor = 0.0, shearMinor = 0.0, shearBuckling = 0.0;
    double momentMajor = 0.0, momentMinor = 0.0, combinedTension = 0.0, combinedCompression = 0.0;
    bool notEvaluated = false;

    void Raise(const Local& other);
};
struct Capacity {
    double Mcx = 0.0, Mcy = 0.0;
    bool evaluated = true;
    bool lowShear = true;
    double flangesCarry = INF; ///< area of flanges that alone carry moment and axial force (4.4.4.2)
};
Capacity MomentCapacity(const Basis& b, const Class& c, const Actions& a);
Local LocalAt(const Basis& b, const Actions& a);
Local CheckLocal(const Basis& b);
/// Actions at a place of a sub-span, all that are possible there; of an angle about u-u and v-v.
std::vector<Actions> ActionsAt(const Basis& b, int sub, double s);
/// Places of a sub-span at which the buckling checks look for classes and capacities.
std::vector<double> Places(const Basis& b, int sub);

// (5) Restraints

/// Closure of a restraint; sign above zero: flange 2 is compressed, below: flange 1, zero: not known.
unsigned Close(unsigned bits, int sign);

/// A length over which a flange is not held.
struct Stretch {
    double a = 0.0, b = 0.0;
    double LE = INF;
    bool cantilever = false;
    bool destabilising = false;
    bool compressed[2] = {false, false}; ///< by flange
    bool held = false;                   ///< held along its length: no buckling
};
std::vector<Stretch> StretchesOf(const Basis& b);

struct FlexuralSpan {
    double a = 0.0, b = 0.0;
    double LE = 0.0;
    double L = 0.0;    ///< between the sections that hold
    bool held = false; ///< no buckling about this axis
    bool sway = false;
};
std::vector<FlexuralSpan> FlexuralSpans(const Basis& b, Bending axis);

// (6) Buckling

struct Buckling {
    double major = 0.0, minor = 0.0, lateral = 0.0, interaction = 0.0;
    bool notEvaluated = false;

    void Raise(const Buckling& other);
};
Buckling CheckBuckling(const Basis& b);

// (7) The member

struct Findings {
    Local local;
    Buckling buckling;
    bool fails = false;
    bool notEvaluated = false;
};
Findings Check(const Member& member);

} // namespace Second
