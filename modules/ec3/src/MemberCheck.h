#pragma once

#include <array>
#include <limits>
#include <optional>
#include <vector>

#include "CrossSectionCheck.h"
#include "Ledger.h"
#include "keltrix/design/DesignCode.h"
#include "keltrix/design/PointLoads.h"
#include "keltrix/ec3/AnnexA.h"
#include "keltrix/ec3/Buckling.h"
#include "keltrix/ec3/Critical.h"
#include "keltrix/ec3/GeneralMethod.h"
#include "keltrix/ec3/SteelMemberEC3.h"
#include "keltrix/stability/CriticalLoad.h"

namespace Keltrix::EC3 {

/// What a check is made with.
struct MemberInput {
    std::vector<Steel::CMemberPoint> points;
    std::vector<Steel::CSubSpan> subSpans;
    CSection keltrixSection;
    Section section;
    Material material;
    Strength strength;
    const Annex* annex = nullptr;
    DesignOptions options;
    bool lengthOverride = false;
    double Lyy = 0.0, Lzz = 0.0, Llt = 0.0; ///< m; below zero minus a factor of the member's length
    std::optional<double> momentFactor;
    double netGross = 1.0;
    bool withSteps = false;
    CDesFormat format;

    double Start() const { return points.front().GetPos(); }
    double End() const { return points.back().GetPos(); }
    double Length() const { return End() - Start(); }
    /// Distance within which two positions are one.
    double SamePlace() const { return 1e-9 * Length(); }
};

/// Critical load of a length in which nothing buckles.
inline constexpr double NEVER = std::numeric_limits<double>::infinity();

enum class BucklingMode { Major, Minor, Torsion };

/// Moments over a stretch and their factors of Table B.3; of an angle about u-u and v-v.
struct StretchMoments {
    double My = 0.0, Mz = 0.0; ///< largest magnitudes; 0 where they are noise
    double CmMajor = 1.0, CmMinor = 1.0;
};

/// Length for flexural or torsional buckling.
struct StrutSpan {
    BucklingMode mode = BucklingMode::Major;
    int left = 0, right = 0; ///< places of the member points
    double start = 0.0, end = 0.0;
    bool held = false;             ///< along its length
    bool sway = false;             ///< its ends move against each other
    const wchar_t* open = nullptr; ///< why it has no buckling length; null where it has one
    const wchar_t* rule = L"";     ///< where the length comes from
    double Lcr = 0.0;
    double N = 0.0; ///< largest compression
    StretchMoments moments;
    double NcrT = 0.0; ///< of twist by itself
    StrutResistance strut;
    double utilisation = 0.0;

    bool IsApplied() const { return N > 0.0; }
};

/// Length between neighbouring sections that are held along the web and in twist, or one that is held so all along.
struct ForkLength {
    double start = 0.0, end = 0.0;
    bool held = false;   ///< all along
    bool isFork = false; ///< both ends are held; an end of the member may not be
};

/// The compression flange as a strut, 6.3.2.4. Lengths in m.
struct FlangeStrut {
    double Lc = 0.0;
    double kc = 1.0;
    double radius = 0.0; ///< if,z
    double lambda1 = 0.0;
    double slenderness = 0.0; ///< λ̄f
    Curve curve = Curve::C;
    double chi = 1.0; ///< kfl χ, at most 1
};
/// if,z of flange 1 with a third of the half web, of a section with equal flanges in bending alone.
double FlangeRadius(const Section& section);
FlangeStrut ReduceFlange(const Section& section, const Strength& strength, const Annex& annex, double Lc, double kc);

/// Length for lateral-torsional buckling: between neighbouring sections held against lateral movement and twist, or a length that is held
/// so all along.
struct LateralSpan {
    double start = 0.0, end = 0.0;
    bool held = false;
    const wchar_t* open = nullptr; ///< why it is not evaluated; null where it is
    bool mechanism = false;        ///< its restraints leave a motion free
    double M = 0.0;                ///< largest moment
    StretchMoments moments;
    double lambda = 0.0; ///< critical load factor; infinite where nothing buckles
    double error = 0.0;
    double largestMoment = 0.0; ///< of the unit whose factor lambda is
    double Mcr = 0.0;           ///< less the error; infinite where nothing buckles
    double C1 = 1.0;
    const wchar_t* C1Source = L"";
    double uniformMcr = 0.0;           ///< under uniform moment; 0 where not found
    std::optional<FlangeStrut> flange; ///< of 6.3.2.4, where the options ask for it
    std::optional<LateralRule> rule;   ///< none where the section does not buckle laterally
    LateralReduction reduction;
    double MbRd = 0.0;
    double utilisation = 0.0;
    /// χLT under the uniform moment that the shift of a class 4 section's neutral axis makes; 1 where it makes none.
    double shiftChi = 1.0;

    bool IsApplied() const { return M > 0.0 && !held; }
    /// χLT for interaction: 1 where nothing buckles.
    double Chi() const
    {
        if (flange && !held) return mechanism ? 0.0 : flange->chi;
        return rule && !held && std::isfinite(Mcr) ? reduction.chiMod : 1.0;
    }
};

/// Length that moves along its web and twists under moments about z-z, where that is the stiffer axis.
struct AcrossLength {
    double start = 0.0, end = 0.0;
    double Mcr = 0.0;              ///< less the error; infinite where nothing buckles
    const wchar_t* open = nullptr; ///< why it is not evaluated; null where it is
    bool mechanism = false;        ///< its restraints leave a motion free
    const wchar_t* held = nullptr; ///< why it cannot buckle, whatever the moments; null where it can
};

/// 6.3.4 over a length.
struct GeneralCheck {
    double amplifier = 0.0;      ///< αult,k
    double criticalFactor = 0.0; ///< αcr,op
    GeneralReduction reduction;
    double utilisation = 0.0;
};

/// A column in simple construction.
struct SimpleColumnCheck {
    double N = 0.0;
    double NbRd = 0.0; ///< the least of all modes
    double MbRd = 0.0, MczRd = 0.0;
    double utilisation = 0.0;
};

/// Lengths that are checked together for (6.61) and (6.62).
struct Combination {
    std::size_t major = 0, minor = 0, lateral = 0; ///< places in the lists of spans
    double start = 0.0, end = 0.0;                 ///< what they have in common
    double N = 0.0, My = 0.0, Mz = 0.0;
    double Ny = 0.0, Nz = 0.0;           ///< largest compression of the major and of the minor length
    double shiftMy = 0.0, shiftMz = 0.0; ///< NEd eN of class 4
    double MyRk = 0.0, MzRk = 0.0;
    double NyRd = 0.0, NzRd = 0.0; ///< what the compression is held against in (6.61) and in (6.62)
    bool twists = false;           ///< one of them is that of torsional-flexural buckling
    AnnexBInput input;
    InteractionFactors k;
    double first = 0.0;                      ///< left side of (6.61)
    double second = 0.0;                     ///< left side of (6.62)
    std::optional<AnnexAFactors> annexA;     ///< where the options ask for Annex A
    std::optional<GeneralCheck> general;     ///< where they ask for 6.3.4
    std::optional<SimpleColumnCheck> simple; ///< where they ask for a column in simple construction and it is one
    const wchar_t* simpleRefusal = nullptr;  ///< why it is none
    const wchar_t* open = nullptr;
};

/// A concentrated load or reaction on the web, EN 1993-1-5 6 and 7.2.
struct WebLoadCheck {
    Design::PointLoad load;
    bool isHeld = false; ///< the pressed flange and the compressed one are held laterally there
    WebForce force;
    WebForceResistance resistance;
    double utilisation = 0.0; ///< η2; 0 where not held
    double eta1 = 0.0;        ///< of axial force and moments that compress the pressed flange; 0 where it is in tension
    double withMoment = 0.0;  ///< (η2 + 0.8 η1)/1.4
    /// At the edge of the web beside a pressed flange that is in tension: stresses over fy/γM0, 0 elsewhere.
    double along = 0.0, across = 0.0, shear = 0.0;
    double yield = 0.0; ///< of the three, by 6.2.1(5)

    /// Entry of the result record of a member with that many sub-spans.
    int Entry(int subSpans) const { return load.point < subSpans ? 1 + 2 * load.point : 2 * subSpans; }
};

/// One check of a member.
class MemberCheck {
public:
    explicit MemberCheck(MemberInput input);

    void CheckGeneral();
    void CheckLocal();
    void CheckBuckling();
    /// Marks the governing finding, sets the status, and gives the resistances with their places.
    void Finish();

    const MemberInput& Input() const { return m_in; }
    const Classification& Class() const { return m_class; }
    const std::vector<Position>& Positions() const { return m_positions; }
    const std::vector<StrutSpan>& Struts() const { return m_struts; }
    const std::vector<LateralSpan>& Laterals() const { return m_laterals; }
    const std::vector<WebLoadCheck>& WebLoads() const { return m_webLoads; }
    const std::vector<Combination>& Combinations() const { return m_combinations; }
    Design::MemberFindings& Findings() { return m_findings; }
    const Design::MemberFindings& Findings() const { return m_findings; }

private:
    // General (MemberCheck.cpp).
    bool IsAngle() const { return m_in.section.shape == Shape::Angle; }
    ClassActions MakeClassActions() const;
    void Assume(const wchar_t* name, const wchar_t* text, double value = std::nan(""));
    void AssumeOfShape();
    void WarnOfMomentFactor();
    void AssumeChoices();
    void AssumeWebClass();
    void WarnOfHeldAlong();
    void RecordOutside();
    void Add(Design::RuleFinding finding);
    /// The step, whose texts are to be set before the next is added.
    static Design::Step& AddStep(Design::RuleFinding& f, const wchar_t* symbol, Design::Quantity quantity, double value,
                                 const wchar_t* clause);
    void AddResistance(const wchar_t* symbol, Design::Quantity quantity, double value, double start, double end);

    // Cross-section (LocalChecks.cpp).
    struct LocalRule;
    void RecordClass();
    void RecordLocal(const LocalRule& rule);
    void AddResistanceSteps(Design::RuleFinding& f, const LocalRule& rule, const Position& p) const;
    void RecordHoles();
    void RecordAngleTie();
    void RecordHighShear(bool major);
    void RecordTorsion();
    void RecordSlenderWeb();
    void RecordShearBuckling();
    void RecordShearBending(bool across);
    void RecordCombined();
    void AddShearSteps(Design::RuleFinding& f, const Actions& a, double rhoZ, double rhoY) const;
    void AddCombinedSteps(Design::RuleFinding& f, const Interaction& i, const Position& p) const;
    int Worst(double Position::*utilisation) const;

    // Webs under concentrated loads (ConcentratedLoads.cpp).
    void FindWebLoads();
    struct WebLoadActions {
        double least = 0.0, greatest = 0.0; // of My
        double Mz = 0.0;                    // magnitude
        double compression = 0.0, tension = 0.0;
        double V = 0.0;
    };
    WebLoadActions ActionsAt(const Design::PointLoad& load) const;
    bool IsWebLoadHeld(const Design::PointLoad& load) const;
    double BendingOf(const WebLoadCheck& check) const;
    void SetYield(WebLoadCheck& check) const;
    void RecordWebLoads();
    void RecordUnheldWebLoads();
    void RecordWebForce();
    void RecordWebBending();
    void RecordWebYield(const WebLoadCheck& worst);

    // Struts (Struts.cpp).
    bool IsHeld(BucklingMode mode, const Steel::CRestraint& restraint) const;
    void FindStruts(BucklingMode mode);
    StrutSpan MakeStrut(BucklingMode mode, int left, int right) const;
    void SetLength(StrutSpan& span) const;
    void CheckStrut(StrutSpan& span) const;
    double LeastForce(BucklingMode mode, StrutSpan& span) const;
    double TwistForce(StrutSpan& span) const;
    void AddForceStep(Design::RuleFinding& f, const StrutSpan& span) const;
    void RecordStrut(const StrutSpan& span);
    void RecordNoTorsion();
    double LargestCompression(double from, double to) const;

    // Lateral-torsional buckling (Lateral.cpp).
    void FindLaterals();
    void FindElastic();
    void FindOverridden();
    void FindOfAngle();
    double ShiftChi(double Mcr) const;
    void SetShift(LateralSpan& span, const Stability::CriticalLoads& uniform) const;
    bool HasShift() const { return m_class.effective.eNy > 0.0 && LargestCompression(m_in.Start(), m_in.End()) > 0.0; }
    void DivideAtContraflexures(std::vector<Steel::CMemberPoint>& points, std::vector<Steel::CSubSpan>& subSpans) const;
    Stability::CriticalLoads Analyse(bool atShearCentre, double uniform, bool withAxial = false) const;
    void SetElastic(LateralSpan& span, const Stability::Unit& unit) const;
    void SetC1(LateralSpan& span, const Stability::CriticalLoads& centre,
               const Stability::CriticalLoads& uniform) const;
    void SetByTables(LateralSpan& span) const;
    void SetSimplified(LateralSpan& span) const;
    void AddFlangeSteps(Design::RuleFinding& f, const LateralSpan& span) const;
    void CheckLateral(LateralSpan& span) const;
    void WarnOfCurveFactor(std::size_t lateral);
    void RecordLateral(const LateralSpan& span);
    std::vector<AcrossLength> FindAcross() const;
    void CheckAcross(Design::RuleFinding& f, const AcrossLength& length, double M);
    void RecordLateralAcross();
    std::vector<ForkLength> FindForkLengths() const;
    bool HasLoadHeight(double from, double to) const;
    std::vector<Steel::CMemberPoint>::const_iterator FirstPointFrom(double x) const;

    // Interaction (Interaction.cpp).
    void FindCombinations();
    void CheckCombination(Combination& c);
    void SetFactors(Combination& c) const;
    const StretchMoments& StretchOf(const Combination& c) const;
    void SetEffects(Combination& c) const;
    const wchar_t* OpenReason(const Combination& c) const;
    void SetStrutTerms(Combination& c) const;
    double LeastTwist(Combination& c, double& slenderness) const;
    void AddInteractionSteps(Design::RuleFinding& f, const Combination& c, bool first) const;
    void AddFactorSteps(Design::RuleFinding& f, const Combination& c, bool first) const;
    void AddAnnexASteps(Design::RuleFinding& f, const Combination& c, bool first) const;
    bool IsHeldInside() const;
    double MomentFactor(const Design::MomentDiagram& moments, double from, double to, double noise) const;
    StretchMoments MomentsOver(double from, double to) const;
    void RecordCombination(const Combination& c, bool first);
    void RecordCombinations();
    void RecordOtherMethods();
    const wchar_t* WhyNoGeneralMethod() const;
    const wchar_t* WhyNoSimpleColumn() const;

    // Annex A (AnnexA.cpp).
    DeflectedMoments DeflectedOver(const Design::MomentDiagram& moments, double from, double to, double noise) const;
    static double LargestDeflection(const Design::MomentDiagram& moments, double from, double to);
    const wchar_t* AnnexARefusal(const Combination& c) const;
    void ApplyAnnexA(Combination& c) const;

    // General method (GeneralMethod.cpp).
    const wchar_t* CriticalFactorOver(double from, double to, double& factor) const;
    void CheckByGeneralMethod(Combination& c);
    void RecordGeneral(const Combination& c);

    // Columns in simple construction (SimpleColumn.cpp).
    const wchar_t* SimpleColumnRefusal(const Combination& c) const;
    double LeastCompression(double from, double to) const;
    void CheckSimpleColumn(Combination& c) const;
    void RecordSimpleColumn(const Combination& c);

    MemberInput m_in;
    Design::MomentDiagram m_major;
    Design::MomentDiagram m_minor;
    Classification m_class;
    ClassActions m_classActions;
    bool m_heldInside = false; ///< something holds the member between its ends, in any mode of buckling
    std::optional<CrossSectionCheck> m_check;
    std::vector<Position> m_positions;
    std::vector<WebLoadCheck> m_webLoads;
    std::vector<StrutSpan> m_struts;
    std::vector<LateralSpan> m_laterals;
    std::vector<Combination> m_combinations;
    std::optional<Stability::CriticalLoads> m_loaded; ///< under all forces, for 6.3.4
    Design::MemberFindings m_findings;
};

inline Design::Step& MemberCheck::AddStep(Design::RuleFinding& f, const wchar_t* symbol, Design::Quantity quantity,
                                          double value, const wchar_t* clause)
{
    Design::Step& step = f.steps.emplace_back();
    step.symbol = symbol;
    step.quantity = quantity;
    step.value = value;
    step.clause = clause;
    return step;
}

/// The result record counts exactly 1.0 as a failure of a cross-section.
inline Design::CheckStatus LocalStatus(double utilisation)
{
    return utilisation < 1.0 ? Design::CheckStatus::Passed : Design::CheckStatus::Failed;
}

/// Moment along a stretch for Table B.3.
MomentPattern PatternOf(const Design::MomentDiagram& moments, double from, double to);

} // namespace Keltrix::EC3
