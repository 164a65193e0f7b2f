#pragma once

#include <array>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "keltrix/bs5950/Capacity.h"
#include "keltrix/bs5950/DesignOptions.h"
#include "keltrix/bs5950/Export.h"
#include "keltrix/bs5950/Ledger.h"
#include "keltrix/bs5950/SectionBS5950.h"
#include "keltrix/design/DesignCode.h"
#include "keltrix/design/Findings.h"
#include "keltrix/design/MomentDiagram.h"
#include "keltrix/design/Stretches.h"
#include "keltrix/stability/CriticalLoad.h"
#include "keltrix/steel/SteelMember.h"

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

/// A concentrated load or reaction on the web at a member point (clause 4.5). Forces in N.
struct WebLoadResult {
    int point = 0; ///< place of the member point
    double x = 0.0;
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

/// One span of a buckling check: what it reaches from and to, and what was found. A span of lateral-torsional buckling is a
/// stretch of one flange, or of both where both have the same ends (Design::FindStretches); its ends need not be member points. With the
/// option LateralMethod::Elastic it is a length that buckles by itself, for both flanges.
struct SpanResult {
    BucklingMode mode = BucklingMode::Major;
    int left = 0, right = 0; ///< places of the member points at or outside the ends
    double start = 0.0, end = 0.0;
    Design::StretchEnd from, to;  ///< the ends; `point` is -1 between member points
    std::array<bool, 2> flange{}; ///< whose stretch it is; lateral-torsional buckling alone
    /// The flanges that a moment beyond the tolerance compresses: those that are checked.
    std::array<bool, 2> compressed{};
    /// Angle: turned the other way about, so that My counts with the other sign about u-u and v-v. Spans of both ways are
    /// there where both moments act; compression is recorded for the first way alone.
    bool turned = false;
    const wchar_t* startReason = L"";
    const wchar_t* endReason = L"";

    double LE = 0.0; ///< effective length; infinite where no row of a table applies; 0 of an elastic check
    const wchar_t* lengthRule = L"";
    double lengthFactor = 0.0;     ///< of Table 22; 0 where the rule has none
    double tipMoment = 0.0;        ///< moment at the tip of a cantilever; from 1 N·m on it lengthens LE (4.3.5.4)
    double leastSlenderness = 0.0; ///< of clause 4.7.10; 0 where it does not apply
    double connectionFactor = 1.0; ///< 0.8 on the resistance of a strut with one bolt (4.7.10)
    double radius = 0.0;
    double slenderness = 0.0;
    double strength = 0.0;   ///< pc or pb
    double resistance = 0.0; ///< Pcx, Pcy or Mb
    double effect = 0.0;     ///< largest compression or moment in the span
    double utilisation = 0.0;
    bool applied = false; ///< whether there was an action to check

    double Mx = 0.0, My = 0.0;       ///< largest moments compared with Mcx and Mcy (Mu and Mv of an angle)
    double major = 0.0, minor = 0.0; ///< largest local utilisations by moment about the two axes
    double pyZx = 0.0, pyZy = 0.0;   ///< py Z (about u-u, v-v of an angle), with pyr or Zeff in class 4; N·m
    MomentShape momentX;             ///< major-axis moment over the span (Mu of an angle)
    MomentShape momentY; ///< minor-axis moment over the span (Mv of an angle); not of lateral-torsional buckling
    double m = 1.0;      ///< mx (Major), my (Minor) or mLT
    double myx = 1.0;    ///< Major: factor of the minor-axis moment over this span
    bool sway = false;
    bool continuous = false; ///< held along its length: no buckling in this mode
    bool cantilever = false;
    bool destabilising = false;
    bool overridden = false;
    int sense = 3;     ///< compressed flanges as CCodeShare::LT_BuckleDirection
    int resisting = 0; ///< flange, 0 or 1, whose compression gives the resistance
    int cls = 1;
    double modulus = 0.0; ///< with which Mb was made
    double Aeff = 0.0;
    double py = 0.0; ///< design strength of the class: py, or pyr of clause 3.6.5
    SlendernessLT lt;
    std::optional<ElasticUnit> elastic; ///< of lateral-torsional buckling that is checked elastically
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

/// A steel member checked to BS 5950-1:2000.
///
/// Signs are the host's: axial force above zero is tension; shear Fz is along the web, Fy along the flanges;
/// Myy is the moment about the section's x-x axis, above zero it compresses flange 2 (the bottom flange), so that a
/// simply supported beam under gravity has moments below zero; dMyy/dx = Fz. Mzz is the moment about y-y.
///
/// Design option 1 takes the simplified interaction rules (4.8.2.2, 4.8.3.2 a, 4.8.3.3.1), option 2 the more exact
/// ones (4.8.2.3, 4.8.3.2 b, 4.8.3.3.2, 4.8.3.3.3) where the section has them.
///
/// Utilisations, flags and text go to the attached result: entry 0 the member, then the left and the right end of each
/// sub-span (PositionResult::Entry), the last entry the buckling checks. Without a result the check runs just the same.
class KELTRIX_BS5950_API CSteelMemberBS5950 : public Steel::CSteelMemberGen, public Design::CodeMember {
public:
    KELTRIX_CONSTANT static constexpr int SIMPLIFIED = 1;
    KELTRIX_CONSTANT static constexpr int MORE_EXACT = 2;

    CSteelMemberBS5950() = default;
    CSteelMemberBS5950* Clone() const override { return new CSteelMemberBS5950(*this); }
    int NumDesOpt() const override { return 2; }
    CString DesOptName(int desOpt) override;

    /// Drops section, grade and findings; points, overrides and factors stay until they are read.
    void PrepareInput() override;
    bool SetKeltrixSec(const CSection& section) override;
    CSection GetKeltrixSec() const override;
    bool SetGrade(const CSteelGrade& grade) override;
    CSteelGrade GetGrade() const override { return m_grade; }
    /// With `alongMember` the text covers every position, otherwise only those above 1.0 or else the one of the largest
    /// utilisation. All positions are checked either way. True when every local check that applies was evaluated and none
    /// failed.
    bool CheckLocal(bool alongMember) override;
    /// True when every buckling check that applies was evaluated and none failed.
    bool CheckBuckling() override;
    /// True when every rule that applies was evaluated and none failed: Status() tells the two other outcomes apart.
    bool Check() override;
    bool SetMemberPointVec(const std::vector<Steel::CMemberPoint>& points) override;
    bool SetSubSpanVec(const std::vector<Steel::CSubSpan>& subSpans) override;
    Steel::SubspanEffectiveLengthData GetEffectiveLengths() const override;
    CString GetSectionText(const CDesFormat& fmt) const override;
    int SectionClass() const override { return m_class; }

    // As a design code's member.
    Steel::CSteelMemberGen& Member() override { return *this; }
    /// A copy of what stands in Checks(), Positions() and so on, as every design code gives it.
    Design::MemberFindings Findings() const override;

    /// Drops the findings.
    void SetOptions(const DesignOptions& options);
    const DesignOptions& Options() const { return m_options; }

    const SectionProperties& Properties() const { return m_section.Properties(); }
    /// Material for the present section and grade; its `refusal` says why there is none.
    const Material& Steel() const { return m_section.Steel(); }
    double DesignStrength() const { return m_section.Steel().py; }

    // Findings of the last check.
    const Ledger& Checks() const { return m_ledger; }
    /// Outcome of the last check; NotChecked before one.
    Design::Status Status() const { return m_ledger.Status(); }
    /// What in the input leaves the answer in doubt, by place.
    const std::vector<Design::Warning>& Warnings() const { return m_warnings; }
    /// Moments along the member as they were checked, about x-x and y-y.
    const Design::MomentDiagram& MajorMoments() const { return m_major; }
    const Design::MomentDiagram& MinorMoments() const { return m_minor; }
    const std::vector<Assumption>& Assumptions() const { return m_assumptions; }
    const std::vector<PositionResult>& Positions() const { return m_positions; }
    /// Where a stiff bearing length is given and the section is one that 4.5 is evaluated for; otherwise empty.
    const std::vector<WebLoadResult>& WebLoads() const { return m_webLoads; }
    const std::vector<SpanResult>& Spans() const { return m_spans; }
    const std::vector<InteractionResult>& Interactions() const { return m_interactions; }
    /// Figures beside the rules, as entries of status Information: lateral-torsional buckling by the method that was not used, and
    /// the elastic critical load of a strut. With LateralMethod::Tables the elastic figures are given where a stretch has no effective length, where
    /// the other flange is held along it, and for cantilevers. Calculated at each call; empty before a check.
    std::vector<LedgerEntry> Information() const;
    ResistanceSummary Resistances() const;

protected:
    CSteelMemberBS5950(const CSteelMemberBS5950&) = default;

private:
    class Text;
    friend class Text;

    Design::Refusal FindRefusal() const;
    Design::Refusal NumbersRefusal() const;
    bool Prepare();
    void RecordGeneral();
    void RecordOutside();
    void Refuse(const Design::Refusal& refusal);
    void Assume(const wchar_t* name, const wchar_t* text, double value);
    void DropFindings();
    void CollectPositions();
    void RecordAssumptions();
    void RecordLoads();
    void RecordLoad(const Design::MomentDiagram& moments, const wchar_t* name, double sign);
    void RecordWarnings();
    void SetLoads();

    void RunLocal(bool alongMember);
    void RunBuckling();
    void RecordLocal();
    void RecordLocalRule(Rule rule, double PositionResult::*utilisation, double PositionResult::*resistance,
                         const wchar_t* symbol, Quantity quantity, const wchar_t* absent);
    void RecordAxial();
    void RecordAxialRule(Rule rule, int position, double PositionResult::*resistance, const wchar_t* symbol);
    bool MayHaveEccentricConnection() const;
    void RecordTie(int position);
    void RecordBoltHoles();
    bool HasCombination(bool tension) const;
    void RecordCombined();
    void RecordTorsion();
    void WriteLocalUtilisations();

    double StiffenerSpacing(Axis direction) const;
    void RecordWebs();
    void RecordShearBuckling();
    void RecordSlenderFlanges();
    void RecordWebThickness();
    void RecordEndAnchorage();
    void RecordStiffeners();
    double SpreadOfBearing() const;
    void FindWebLoads();
    void RecordWebLoads();
    void RecordWebLoad(Rule rule);
    void WriteWebUtilisations();

    void FindFlexuralSpans(BucklingMode mode, bool turned);
    void MakeDiagrams();
    bool HasTwoWays() const;
    void AssumeFactors();
    SpanResult FlexuralSpan(BucklingMode mode, int left, int right, bool turned) const;
    double MomentUtilisation(const PositionResult& p, Axis axis, bool turned) const;
    void SetCapacityRatios(SpanResult& span) const;
    void SetReasons(SpanResult& span) const;
    void SetOverride(SpanResult& span, double value) const;
    void CheckFlexural(SpanResult& span);
    void SetFlexuralLength(SpanResult& span);
    double LongestUnheld(BucklingMode mode) const;
    void SetStrutSlenderness(SpanResult& span) const;
    void SetCompressionResistance(SpanResult& span) const;
    void FindLateralSpans(bool turned);
    struct ElasticAnalysis;
    ElasticAnalysis AnalyseElastically() const;
    void FindElasticUnits();
    bool CanUseElastic() const;
    bool UsesElastic() const;
    const wchar_t* ElasticRefusal(const std::vector<Design::Stretch>& stretches) const;
    void FindElasticSpans(const std::vector<Design::Stretch>& stretches, double from, double to);
    SpanResult ElasticSpan(double from, double to, const ElasticUnit* unit) const;
    SlendernessLT ElasticSlenderness(const SpanResult& span, const Classification& c) const;
    bool OffersElastic(const SpanResult& span) const;
    SpanResult WorstByTables(const SpanResult& span) const;
    std::vector<SpanResult> OfferedUnits() const;
    LedgerEntry InformationEntry(const SpanResult& span, const wchar_t* reason) const;
    void AddLateralInformation(std::vector<LedgerEntry>& entries) const;
    void RecordElasticWarnings();
    double CheckedFlexuralLoad(double from, double to) const;
    std::vector<LedgerEntry> StrutInformation() const;
    bool IsPlainlyStable() const;
    void RecordTorsionalBuckling();
    std::vector<Design::Stretch> LateralStretches(bool turned) const;
    SpanResult LateralSpan(const Design::Stretch& stretch, bool turned) const;
    void CheckLateral(SpanResult& span);
    void SetLateralLength(SpanResult& span);
    void FindLateralLength(SpanResult& span, const Steel::CCodeShare& rules) const;
    void SetBendingResistance(SpanResult& span) const;
    void SetLateralFactor(SpanResult& span);
    double LateralFactor(const SpanResult& span) const;
    bool IsLateralApplied(const SpanResult& span) const;
    bool IsSimpleColumn(const SpanResult& span) const;
    void FindLevels();
    std::pair<double, double> StoreyOf(const SpanResult& span) const;
    void CheckInteractions(bool turned);
    void CheckInteractionsOf(Design::Flange flange, bool turned);
    bool CheckInteraction(int major, int minor, int lateral);
    void RecordNoInteraction();
    InteractionResult Interact(int major, int minor, int lateral) const;
    void SimpleColumnInteraction(InteractionResult& r) const;
    void SimplifiedInteraction(InteractionResult& r) const;
    void ExactInteraction(InteractionResult& r) const;
    void RecordFlexural(const SpanResult& span);
    void RecordStrutConnections();
    void RecordLateral(const SpanResult& span);
    void RecordMinorAxisLateral();
    void WriteBucklingUtilisations();
    Steel::CRestraint PointRestraint(int point) const;
    bool PointHeld(BucklingMode mode, int point) const;
    bool SubSpanHeld(BucklingMode mode, int subSpan) const;
    bool IsUnsupportedEnd(const Design::StretchEnd& end) const;
    bool IsEccentricStrut() const;
    double Factor(double computed, double least) const;
    /// Moments about the axes of the buckling checks: x-x and y-y, or u-u and v-v of an angle.
    const Design::MomentDiagram& MomentsX(bool turned) const;
    const Design::MomentDiagram& MomentsY(bool turned) const;
    /// Magnitudes up to which moments are analysis noise and count as none; about u-u, v-v of an angle.
    double LeastMomentX() const;
    double LeastMomentY() const;
    const SpanResult& Span(int place) const { return m_spans[static_cast<std::size_t>(place)]; }
    /// Largest of a value over the positions of a span, 0 where none is above 0.
    template <class Value>
    double LargestOver(const SpanResult& span, Value value) const;

    CSectionBS5950 m_section;
    CSteelGrade m_grade;
    bool m_hasGrade = false;
    DesignOptions m_options;

    Design::MomentDiagram m_major;
    Design::MomentDiagram m_minor;
    std::vector<Design::MomentDiagram> m_principal; ///< angle: Mu and Mv, then those of the angle turned the other way
    std::vector<ElasticUnit> m_units;               ///< where the option asks for elastic checks
    CString m_elasticReason;                        ///< why there are none
    Ledger m_ledger;
    std::vector<Assumption> m_assumptions;
    std::vector<Design::Warning> m_warnings;
    std::vector<PositionResult> m_positions;
    std::vector<WebLoadResult> m_webLoads;
    std::vector<SpanResult> m_spans;
    std::vector<double> m_levels; ///< of a column in simple construction
    std::vector<InteractionResult> m_interactions;
    /// Parts of the text, in the order of writing, each with its entry of the result record.
    std::vector<std::pair<int, Design::CalculationPart>> m_parts;
    Design::Refusal m_refusal; ///< of the last check; Subject::None where it evaluated something
    int m_class = 0;
};

} // namespace Keltrix::BS5950
