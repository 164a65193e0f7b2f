#pragma once

#include <array>
#include <optional>
#include <vector>

#include "CrossSectionCheck.h"
#include "Ledger.h"
#include "keltrix/design/DesignCode.h"
#include "keltrix/ec3/Buckling.h"
#include "keltrix/ec3/Critical.h"
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
    double Mcr = 0.0; ///< less the error; infinite where nothing buckles
    double C1 = 1.0;
    const wchar_t* C1Source = L"";
    std::optional<LateralRule> rule; ///< none where the section does not buckle laterally
    LateralReduction reduction;
    double MbRd = 0.0;
    double utilisation = 0.0;
    /// χLT under the uniform moment that the shift of a class 4 section's neutral axis makes; 1 where it makes none.
    double shiftChi = 1.0;

    bool IsApplied() const { return M > 0.0 && !held; }
    /// χLT for interaction: 1 where nothing buckles.
    double Chi() const { return rule && !held && std::isfinite(Mcr) ? reduction.chiMod : 1.0; }
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
    double first = 0.0;  ///< left side of (6.61)
    double second = 0.0; ///< left side of (6.62)
    const wchar_t* open = nullptr;
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
    void RecordOutside();
    void Add(Design::RuleFinding finding);
    template <class... Args>
    void AddStep(Design::RuleFinding& f, const wchar_t* symbol, Design::Quantity quantity, double value,
                 const wchar_t* clause, const wchar_t* formula, const Args&... args) const;
    void AddResistance(const wchar_t* symbol, Design::Quantity quantity, double value, double start, double end);

    // Cross-section (LocalChecks.cpp).
    struct LocalRule;
    void RecordClass();
    void RecordLocal(const LocalRule& rule);
    void AddResistanceSteps(Design::RuleFinding& f, const LocalRule& rule, double effect) const;
    void RecordHoles();
    void RecordAngleTie();
    void RecordHighShear(bool major);
    void RecordTorsion();
    void RecordSlenderWeb();
    void RecordShearBuckling();
    void RecordCombined();
    void AddCombinedSteps(Design::RuleFinding& f, const Interaction& i, const Position& p) const;
    int Worst(double Position::*utilisation) const;

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
    Stability::CriticalLoads Analyse(bool atShearCentre, double uniform) const;
    void SetElastic(LateralSpan& span, const Stability::Unit& unit) const;
    void SetC1(LateralSpan& span, const Stability::CriticalLoads& centre,
               const Stability::CriticalLoads& uniform) const;
    void SetByTables(LateralSpan& span) const;
    void CheckLateral(LateralSpan& span) const;
    void WarnOfCurveFactor(const LateralSpan& span);
    void RecordLateral(const LateralSpan& span);
    bool HasLoadHeight(double from, double to) const;
    std::vector<Steel::CMemberPoint>::const_iterator FirstPointFrom(double x) const;

    // Interaction (Interaction.cpp).
    void FindCombinations();
    void CheckCombination(Combination& c) const;
    const StretchMoments& StretchOf(const Combination& c) const;
    void SetEffects(Combination& c) const;
    const wchar_t* OpenReason(const Combination& c) const;
    void SetStrutTerms(Combination& c) const;
    double LeastTwist(Combination& c, double& slenderness) const;
    void AddInteractionSteps(Design::RuleFinding& f, const Combination& c, bool first) const;
    void AddFactorSteps(Design::RuleFinding& f, const Combination& c, bool first) const;
    bool IsHeldInside() const;
    double MomentFactor(const Design::MomentDiagram& moments, double from, double to, double noise) const;
    StretchMoments MomentsOver(double from, double to) const;
    void RecordCombination(const Combination& c, bool first);

    MemberInput m_in;
    Design::MomentDiagram m_major;
    Design::MomentDiagram m_minor;
    Classification m_class;
    ClassActions m_classActions;
    bool m_heldInside = false; ///< something holds the member between its ends, in any mode of buckling
    std::optional<CrossSectionCheck> m_check;
    std::vector<Position> m_positions;
    std::vector<StrutSpan> m_struts;
    std::vector<LateralSpan> m_laterals;
    std::vector<Combination> m_combinations;
    Design::MemberFindings m_findings;
};

template <class... Args>
void MemberCheck::AddStep(Design::RuleFinding& f, const wchar_t* symbol, Design::Quantity quantity, double value,
                          const wchar_t* clause, const wchar_t* formula, const Args&... args) const
{
    Design::Step step;
    step.symbol = symbol;
    step.quantity = quantity;
    step.value = value;
    step.clause = clause;
    step.formula.Format(formula, args...);
    f.steps.push_back(step);
}

/// Moment along a stretch for Table B.3.
MomentPattern PatternOf(const Design::MomentDiagram& moments, double from, double to);

} // namespace Keltrix::EC3
