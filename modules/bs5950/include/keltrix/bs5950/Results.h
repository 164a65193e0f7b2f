#pragma once

// What a check of a member found, in the standard's own terms.

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "keltrix/bs5950/Capacity.h"
#include "keltrix/bs5950/Export.h"
#include "keltrix/bs5950/Ledger.h"
#include "keltrix/design/Findings.h"
#include "keltrix/design/MomentDiagram.h"
#include "keltrix/design/Stretches.h"
#include "keltrix/stability/CriticalLoad.h"
#include "keltrix/steel/CodeShare.h"

namespace Keltrix::BS5950 {

using Design::Place;
/// Why a place is a position: an end of a sub-span, an extreme of a moment, the place inside a sub-span where a utilisation is
/// larger than at all of those, or a place where a rule that applies cannot be evaluated (4.4.4.2).
enum class Found { End, Extreme, LargestUtilisation, RuleNotEvaluated };
/// Which moment was taken where the forces of a sub-span do not balance: the one that follows from the left end and the
/// shears, the one that follows from the right end, or the straight line between the end moments.
enum class Reading { Diagram, FromLeft, FromRight, Straight };

/// A position of the local checks and what was found there. Forces in N, moments in N·m.
struct PositionResult {
    double x = 0.0;  ///< along the member, m
    int subSpan = 0; ///< counted from 0
    Place place = Place::LeftEnd;
    Found found = Found::End;
    Reading majorReading = Reading::Diagram;
    Reading minorReading = Reading::Diagram;
    bool reversed = false; ///< angle: turned the other way, so that My counts with the other sign about u-u and v-v
    Actions actions;       ///< Mx and My about the section's axes
    Classification cls;

    double Pt = 0.0;  ///< tension capacity, clause 4.6.1
    double Pte = 0.0; ///< of an angle, channel or tee that is connected eccentrically (4.6.3.1)
    double Pz = 0.0;  ///< compression capacity of the cross-section, A py (Aeff py or A pyr in class 4)
    double Pvx = 0.0; ///< shear capacity along x
    double Pvy = 0.0; ///< shear capacity along y (parallel to the web)
    double Vw = 0.0;  ///< simple shear buckling resistance; 0 where the web need not be checked
    double Vwx = 0.0; ///< the same of the walls across of a rectangular hollow section
    double Pf = 0.0;  ///< axial capacity of the flanges where they alone carry the moment; otherwise 0
    double Mcx = 0.0; ///< moment capacity with the coexistent shear (about u-u for an angle)
    double Mcy = 0.0; ///< (about v-v for an angle)
    double Mrx = 0.0; ///< reduced by the axial force; 0 where the more exact rule was not used
    double Mry = 0.0;
    double momentMajor = 0.0; ///< action effects compared with Mcx and Mcy; Mu and Mv of an angle
    double momentMinor = 0.0;
    bool eccentricTie = false; ///< clause 4.6.3.1 applies
    bool flangesOnly = false;  ///< Mcx is that of the flanges alone (4.4.4.2)
    bool flangesOnlyY = false; ///< Mcy is
    double z1 = 1.0, z2 = 1.0; ///< exponents of the more exact rule

    // Utilisations. That of a tie is by the smaller of Pt and Pte; the combination with moments is by Pt (4.8.2), and never below
    // the axial one.
    double axial = 0.0;
    double major = 0.0;
    double minor = 0.0;
    double shearMajor = 0.0;
    double shearMinor = 0.0;
    double shearBuckling = 0.0;
    double shearBucklingX = 0.0; ///< of the walls across
    double combined = 0.0;

    KELTRIX_BS5950_API double Largest() const;
    /// Entry of the result record: two for each sub-span, so that records of load cases of one member can be merged
    /// whatever their actions. What is found inside a sub-span goes to the entry of its left end.
    int Entry() const { return 1 + 2 * subSpan + (place == Place::RightEnd ? 1 : 0); }
};

/// A concentrated load or reaction on the web at a member point, or from one to another (clause 4.5). Forces in N, positions in m.
struct WebLoadResult {
    int point = 0;    ///< place of the member point, the first one
    double x = 0.0;   ///< position of the first point
    double end = 0.0; ///< position of the last point, the same for a load at a point
    double force = 0.0;
    bool onFlange1 = true; ///< presses downwards
    bool held = false;     ///< the flange that it presses on is held laterally
    WebLoad load;
    double Pbw = 0.0; ///< bearing capacity
    double Px = 0.0;  ///< buckling resistance, for a flange that is held

    /// Entry of the result record of a member with that many sub-spans.
    int Entry(int subSpans) const { return point < subSpans ? 1 + 2 * point : 2 * subSpans; }
};

enum class BucklingMode { Major, Minor, LateralTorsional };
enum class LoadPattern { None, EndMoments, Uniform, CentralPoint, PointLoads, General };
/// "end moments only", ...
KELTRIX_BS5950_API const wchar_t* LoadPatternName(LoadPattern pattern);

/// The moment diagram of a span as Tables 18 and 26 read it; N·m.
struct MomentShape {
    double M2 = 0.0, M3 = 0.0, M4 = 0.0; ///< at the quarter points
    double M24 = 0.0;                    ///< largest in the central half
    double Mmax = 0.0;                   ///< largest
    double Mleft = 0.0, Mright = 0.0;
    LoadPattern pattern = LoadPattern::None;
    bool balanced = true; ///< forces and moments of every sub-span in the span belong together
    double factor = 1.0;  ///< mLT of Table 18 or m of Table 26; 1.0 where not balanced
};

/// A length of the member that buckles by itself under the major-axis moments alone (Stability::Unit), and its elastic critical
/// moment.
struct ElasticUnit {
    double start = 0.0; ///< m
    double end = 0.0;
    Stability::Outcome outcome = Stability::Outcome::NothingBuckles;
    double lambda = 0.0;        ///< smallest factor above zero of the moments as given; infinite where nothing buckles
    double error = 0.0;         ///< estimated relative error of the factor
    double largestMoment = 0.0; ///< largest magnitude, N·m
    /// lambda times the largest moment, less the estimated error. 0 where the length is not held, infinite where nothing buckles.
    double Mcr = 0.0;
    const wchar_t* refusal = nullptr; ///< why the critical moment cannot be used; null where it can
};

/// What a buckling check is about: a length of the member with its ends. A stretch of lateral-torsional buckling is that of one flange, or
/// of both where both have the same ends (Design::FindStretches); its ends need not be member points. With the option
/// LateralMethod::Elastic it is a length that buckles by itself, for both flanges.
struct SpanStretch {
    BucklingMode mode = BucklingMode::Major;
    int left = 0, right = 0; ///< places of the member points at or outside the ends
    double start = 0.0, end = 0.0;
    Design::StretchEnd from, to; ///< the ends; `point` is -1 between member points
    const wchar_t* startReason = L"";
    const wchar_t* endReason = L"";
    /// Angle: turned the other way about, so that My counts with the other sign about u-u and v-v. Spans of both ways are
    /// there where both moments act; compression is recorded for the first way alone.
    bool turned = false;
    bool continuous = false; ///< held along its length: no buckling in this mode
    bool overridden = false; ///< its effective length is given
};

/// What flexural buckling adds: a strut, and the moments over it that its interaction reads.
struct FlexuralResult {
    double lengthFactor = 0.0; ///< of Table 22; 0 where the rule has none
    bool sway = false;
    double fullLength = 0.0;       ///< length between the points that hold the strut, of clause 4.7.10
    double leastSlenderness = 0.0; ///< of clause 4.7.10; 0 where it does not apply
    double connectionFactor = 1.0; ///< 0.8 on the resistance of a strut with one bolt (4.7.10)
    double Aeff = 0.0;
    double My = 0.0;                 ///< largest moment compared with Mcy (Mv of an angle)
    double major = 0.0, minor = 0.0; ///< largest local utilisations by moment about the two axes
    double pyZx = 0.0, pyZy = 0.0;   ///< py Z (about u-u, v-v of an angle), with pyr or Zeff in class 4; N·m
    MomentShape momentY;             ///< minor-axis moment over the span (Mv of an angle)
    double myx = 1.0;                ///< Major: factor of the minor-axis moment over this span
};

/// What lateral-torsional buckling adds.
struct LateralResult {
    std::array<bool, 2> flange{}; ///< whose stretch it is
    /// The flanges that a moment beyond the tolerance compresses: those that are checked.
    std::array<bool, 2> compressed{};
    Steel::CCodeShare::LT_BuckleDirection sense = Steel::CCodeShare::LT_COMP_NONE; ///< the same for CCodeShare
    int resisting = 0; ///< flange, 0 or 1, whose compression gives the resistance
    /// Lateral-torsional buckling need not be considered: nothing compressed, held along, not stiffer about x-x, or within Table 15.
    bool exempt = false;
    bool cantilever = false;
    bool destabilising = false;
    bool simpleColumn = false; ///< 4.7.7 serves in place of 4.3.6
    double storey = 0.0;       ///< length between the levels around it, where 4.7.7 serves
    double tipMoment = 0.0;    ///< moment at the tip of a cantilever; from 1 N·m on it lengthens LE (4.3.5.4)
    double modulus = 0.0;      ///< with which Mb was made
    SlendernessLT lt;
    std::optional<ElasticUnit> elastic; ///< where it is checked elastically
};

/// One span of a buckling check: the stretch, what every mode finds of it, and what its mode adds.
struct SpanResult : SpanStretch {
    double LE = 0.0; ///< effective length; infinite where no row of a table applies; 0 of an elastic check
    const wchar_t* lengthRule = L"";
    double radius = 0.0;
    double slenderness = 0.0;
    int cls = 1;
    double py = 0.0;         ///< design strength of the class: py, or pyr of clause 3.6.5
    double strength = 0.0;   ///< pc or pb
    double resistance = 0.0; ///< Pcx, Pcy or Mb
    double effect = 0.0;     ///< largest compression or moment in the span
    double utilisation = 0.0;
    bool applied = false; ///< whether there was an action to check
    double Mx = 0.0;      ///< largest moment compared with Mcx (Mu of an angle)
    MomentShape momentX;  ///< major-axis moment over the span (Mu of an angle)
    double m = 1.0;       ///< mx (Major), my (Minor) or mLT

    FlexuralResult flexural; ///< of the modes Major and Minor
    LateralResult lateral;   ///< of the mode LateralTorsional
};

/// Lateral-torsional buckling under moments about y-y of a section that is stiffer about that axis (B.2.8 b), over a length between sections that
/// are supported along the web and held against twist.
struct AcrossResult {
    ElasticUnit elastic;           ///< of the moments about y-y
    const wchar_t* open = nullptr; ///< why it is not evaluated; null where it is
    double LE = 0.0;               ///< effective length for a uniform moment, where one is given; otherwise 0
    int cls = 0;                   ///< worst class over the length
    double py = 0.0;               ///< py, or pyr of clause 3.6.5
    double modulus = 0.0;          ///< Wy with which Mb was made
    double lambdaLT = 0.0;
    double Mb = 0.0;
    double m = 1.0;
    double My = 0.0;          ///< largest moment about y-y
    double utilisation = 0.0; ///< m My/Mb
    double compression = 0.0; ///< largest Fc/Pc of the struts of the length
    double MxTerm = 0.0;      ///< largest mx Mx/(py Zx) of the length
    double combined = 0.0;    ///< Fc/Pc + mx Mx/(py Zx) + m My/Mb; 0 where My acts alone
};

/// Resistances of the governing positions by their symbols; not-a-number where a rule was not applied.
struct ResistanceSummary {
    double Pz = std::numeric_limits<double>::quiet_NaN();
    double Pt = std::numeric_limits<double>::quiet_NaN();
    double Pvx = std::numeric_limits<double>::quiet_NaN();
    double Pvy = std::numeric_limits<double>::quiet_NaN();
    double Mcx = std::numeric_limits<double>::quiet_NaN();
    double Mcy = std::numeric_limits<double>::quiet_NaN();
};

/// Formulas of an interaction check: 4.8.3.3.1, 4.8.3.3.2 or .3, 4.7.7.
enum class InteractionRule { Simplified, MoreExact, SimpleColumn };

/// One interaction check of a combination of spans (clause 4.8.3.3; 4.9 where there is no compression).
struct InteractionResult {
    InteractionRule rule = InteractionRule::Simplified;
    double start = 0.0, end = 0.0;         ///< stretch that the spans have in common
    int major = 0, minor = 0, lateral = 0; ///< places in Spans()
    const wchar_t* clause = L"";
    double Fc = 0.0;
    double MxTerm = 0.0, MLTTerm = 0.0, MyTerm = 0.0; ///< moment terms of the simplified rule
    double first = 0.0;                               ///< in-plane sum
    double second = 0.0;                              ///< sum with lateral-torsional buckling
    double third = 0.0;                               ///< interactive sum of the more exact rule
    double utilisation = 0.0;
};

/// Everything that a check of a member found. Plain data: the rules fill it, texts and findings are made from it.
struct MemberResults {
    Design::Refusal refusal; ///< Subject::None where something was evaluated
    int cls = 0;             ///< worst class along the member, 0 before a check
    Ledger ledger;
    std::vector<Assumption> assumptions;
    std::vector<Design::Warning> warnings;
    Design::MomentDiagram major, minor; ///< moments as they were checked, about x-x and y-y
    std::vector<PositionResult> positions;
    /// Where a stiff bearing length is given and the section is one that 4.5 is evaluated for; otherwise empty.
    std::vector<WebLoadResult> webLoads;
    std::vector<SpanResult> spans;
    std::vector<InteractionResult> interactions;
    std::vector<AcrossResult> across; ///< where the section is stiffer about y-y and bent about it
    std::vector<ElasticUnit> units;   ///< where the option asks for elastic checks
    CString elasticReason;            ///< why there are none; empty where there are or none were asked for
    /// Figures beside the rules, where a check has written them; others are computed when they are asked for.
    std::optional<std::vector<LedgerEntry>> information;
    /// Parts of the text, in the order of writing, each with its entry of the result record.
    std::vector<std::pair<int, Design::CalculationPart>> parts;

    /// Adds an assumption, unless there is one of that name.
    void Assume(const wchar_t* name, const wchar_t* text, double value = std::numeric_limits<double>::quiet_NaN());
    /// Back to what it is before a check; memory is kept for the next one.
    void Clear();
    /// The least along the member.
    KELTRIX_BS5950_API ResistanceSummary Resistances() const;
    const SpanResult& Span(int place) const { return spans[static_cast<std::size_t>(place)]; }
};

} // namespace Keltrix::BS5950
