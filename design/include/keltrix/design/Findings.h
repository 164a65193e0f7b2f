#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "keltrix/design/Export.h"
#include "keltrix/platform/CString.h"
#include "keltrix/platform/KxUtil.h"

// What a check of a member found, as data. Forces in N, moments in N·m, stresses in Pa, lengths in m. Not-a-number is a number that
// is not there. Texts of type const wchar_t* are static: they live as long as the design code that gives them.
namespace Keltrix::Design {

/// What a check says of a member as a whole. A member has passed only where every rule that applies was evaluated and none
/// failed. NotChecked: nothing failed, but a rule that applies was not evaluated, or nothing was checked at all.
enum class Status { Passed, Failed, NotChecked };
/// "pass", "fail", "not checked"
KELTRIX_DESIGN_API const wchar_t* StatusName(Status status);

/// What became of one rule. NotEvaluated: the rule applies, or may apply, and was not evaluated, so that the member cannot pass.
/// OutOfScope: the rule is about what the input does not hold, such as the frame around the member; it is reported and does
/// not keep a member from passing. Information: a figure beside the rules, which neither passes nor fails, whatever its utilisation.
enum class CheckStatus { Passed, Failed, NotApplicable, NotEvaluated, OutOfScope, Information };
/// "passed", "failed", "not applicable", "not evaluated", "outside the input", "information"
KELTRIX_DESIGN_API const wchar_t* StatusName(CheckStatus status);

/// What a number is: a force in N, a moment in N·m, a stress in Pa, a small length in m (of a section, a limit of deflection), a distance along the
/// member in m, an area in m², a modulus in m³, or none of these. Resistances are of the first five.
enum class Quantity { None, Force, Moment, Stress, Length, Distance, Area, Modulus };
/// Its text in the user's units: "275 N/mm²"; of a small length in mm, of an area in cm² and of a modulus in cm³.
KELTRIX_DESIGN_API CString QuantityText(Quantity quantity, double value, const CDesFormat& fmt);
/// "85.5 cm²", "98.3 cm³": four figures without an exponent.
KELTRIX_DESIGN_API CString AreaText(double m2);
KELTRIX_DESIGN_API CString ModulusText(double m3);

/// One step of the calculation of a rule: symbol = formula = values = value, note. The value always stands in it; not-a-number where it has none,
/// infinite where it has no limit.
struct Step {
    const wchar_t* symbol = L"";
    Quantity quantity = Quantity::None;
    double value = std::numeric_limits<double>::quiet_NaN();
    CString formula; ///< in symbols: "py Ae"; may be empty
    CString values;  ///< the formula with its numbers, in the user's units: "275 N/mm² * 12.4 cm²"; may be empty
    CString note;    ///< what belongs to the value: "curve b"; may be empty
    const wchar_t* clause = L""; ///< may be empty

    /// Set the three texts, formatted as by CString::Format.
    template <class... Args>
    Step& Formula(const wchar_t* format, const Args&... args)
    {
        formula.Format(format, args...);
        return *this;
    }
    template <class... Args>
    Step& Values(const wchar_t* format, const Args&... args)
    {
        values.Format(format, args...);
        return *this;
    }
    template <class... Args>
    Step& Note(const wchar_t* format, const Args&... args)
    {
        note.Format(format, args...);
        return *this;
    }
};
/// The step as a line, without its clause: "Pt = py Ae = 275 N/mm² * 12.4 cm² = 341 kN, note".
KELTRIX_DESIGN_API CString StepText(const Step& step, const CDesFormat& fmt);
/// The same with a text of its own in place of the value's.
KELTRIX_DESIGN_API CString StepText(const Step& step, const CString& value);
/// Appends it to a text.
KELTRIX_DESIGN_API void AppendStep(CString& text, const Step& step, std::wstring_view value);

/// What a rule is about, whatever the design code calls it: what two codes say of one thing can stand side by side. Other: a matter that codes
/// treat each in its own way, or no resistance at all.
enum class Topic {
    Other,
    Tension,
    Compression, ///< of the cross-section
    BendingMajor,
    BendingMinor,
    ShearMajor, ///< along the web
    ShearMinor,
    ShearBuckling,
    WebForces, ///< of the web under concentrated loads
    Torsion,
    CrossSection, ///< actions on the cross-section that act together
    BucklingMajor,
    BucklingMinor,
    BucklingTorsional,
    LateralTorsional,
    MemberInteraction, ///< buckling under actions that act together
    Deflection,
    COUNT
};
/// "bending, major axis"; "other"
KELTRIX_DESIGN_API const wchar_t* TopicName(Topic topic);

/// Whether one utilisation is worse than another. Not-a-number is worse than every number, and not worse than itself.
inline bool IsWorse(double utilisation, double other) { return !std::isnan(other) && !(utilisation <= other); }

/// What one rule gave at one place.
struct RuleFinding {
    int rule = 0; ///< the design code's own number of the rule, from 0 on in the order in which rules are shown
    const wchar_t* name = L"";
    const wchar_t* clause = L""; ///< the clause or table applied
    CheckStatus status = CheckStatus::NotEvaluated;
    const wchar_t* reason = L""; ///< why not applicable, not evaluated or failed without a number
    double start =
        std::numeric_limits<double>::quiet_NaN(); ///< position or start of the span; of the whole member without
    double end = std::numeric_limits<double>::quiet_NaN();
    double utilisation = 0.0; ///< 0 where nothing was evaluated; of information what it would be
    double resistance = std::numeric_limits<double>::quiet_NaN();
    const wchar_t* symbol = L""; ///< of the resistance: "Mcx"
    Quantity quantity = Quantity::None;
    bool governing = false; ///< the largest utilisation of the whole member
    double slenderness =
        std::numeric_limits<double>::quiet_NaN(); ///< with which the resistance was found, where it is given
    Topic topic = Topic::Other;
    std::vector<Step> steps = {}; ///< empty where no text was asked for or the code does not give them

    bool WasEvaluated() const { return status == CheckStatus::Passed || status == CheckStatus::Failed; }
};

/// A value that the check had to assume, by name.
struct Assumption {
    const wchar_t* name = L"";
    const wchar_t* text = L"";
    double value = std::numeric_limits<double>::quiet_NaN(); ///< the assumed number in SI, where it is one
    double start = std::numeric_limits<double>::quiet_NaN(); ///< where it was assumed; not-a-number: everywhere
    double end = std::numeric_limits<double>::quiet_NaN();
    bool isLoad = false; ///< the value is a load in N/m
};
/// Its text, with load and place where it has them: "read as a uniform load: 20 kN/m, 0 m to 6 m".
KELTRIX_DESIGN_API CString AssumptionText(const Assumption& assumption, const CDesFormat& fmt);

enum class WarningKind {
    UnbalancedForces, ///< the end moments of a sub-span do not belong to its shears
    OtherMethod,      ///< a method that the options ask for cannot be used, and another one stands in
    LowMomentFactor,  ///< an equivalent uniform moment factor was given that lies below any of the standard's tables
    HeldAlong,        ///< a length counts as held against buckling by a restraint along it that few things can give
    CurveFactor ///< a resistance is raised for the shape of its moments by more than the standard's table has for any
};

/// Something in the input that leaves the answer in doubt and that an engineer must see before he uses it.
struct Warning {
    WarningKind kind = WarningKind::UnbalancedForces;
    CString text;                                            ///< one sentence or more, complete in itself
    int subSpan = -1;                                        ///< counted from 0; -1 where it is of the member
    double start = std::numeric_limits<double>::quiet_NaN(); ///< m
    double end = std::numeric_limits<double>::quiet_NaN();
    /// The utilisation that is in doubt, or what it would be: of warnings of one kind and stretch in several combinations the one with the largest is shown.
    /// Not-a-number where there is none; every text is shown then.
    double utilisation = std::numeric_limits<double>::quiet_NaN();
};

/// Which end of its sub-span a position is, or a place inside it.
enum class Place { LeftEnd, Inside, RightEnd };

/// Utilisations of a cross-section at one position; 0 where a rule does not apply.
struct LocalFinding {
    double x = 0.0;  ///< along the member
    int subSpan = 0; ///< counted from 0
    Place place = Place::LeftEnd;
    double combined = 0.0;
    double axial = 0.0;
    double momentMajor = 0.0;
    double momentMinor = 0.0;
    double shearMajor = 0.0; ///< shear buckling included
    double shearMinor = 0.0;
    bool hasTorsion = false; ///< torsion acts, and no rule evaluates it
};

/// A resistance by its symbol; not-a-number where its rule was not applied.
struct Resistance {
    const wchar_t* symbol = L"";
    Quantity quantity = Quantity::None;
    double value = std::numeric_limits<double>::quiet_NaN();
};

/// A stretch of the member that a buckling check is about.
struct SpanFinding {
    double start = 0.0;
    double end = 0.0;
    Resistance resistance;      ///< not-a-number where the stretch is held all along or has no action to check
    bool isCombination = false; ///< the stretch that several spans have in common; has no resistance of its own
};

/// What a part of the calculation in the result's text came to. A part begins at each heading of the fifth level in it.
struct CalculationPart {
    double start = 0.0; ///< the place that the part is about, m
    double end = 0.0;   ///< equal to `start` where it is a position
    /// The largest utilisation that the part shows; not-a-number where it shows none.
    double utilisation = std::numeric_limits<double>::quiet_NaN();
    bool isMarked = false; ///< something in it fails, or was not checked: text in red
};

/// What of the input a design code does not take.
enum class Subject { None, Member, Section, Grade, NetToGross, PlasticToElastic, MomentFactor };

/// Why nothing could be checked; Subject::None where something was.
struct Refusal {
    Subject subject = Subject::None;
    const wchar_t* reason = L"";
};

/// The findings of the last check of a member.
struct MemberFindings {
    Status status = Status::NotChecked;
    Refusal refusal;
    Resistance designStrength;          ///< of the steel in this section: py, fy
    std::optional<double> momentFactor; ///< the equivalent uniform moment factor that the input gives
    std::vector<RuleFinding> rules;     ///< one for each rule at least, several where it was applied span by span
    std::vector<Assumption> assumptions;
    std::vector<Warning> warnings;
    std::vector<LocalFinding> positions; ///< in the order of their places
    std::vector<Resistance> resistances; ///< of the cross-section, the least along the member
    std::vector<SpanFinding> spans;
    /// In the order of their headings in the text; empty where no text was asked for or the code does not give them.
    std::vector<CalculationPart> parts;

    /// The finding that governs, or null.
    KELTRIX_DESIGN_API const RuleFinding* Governing() const;
    /// The finding of the largest utilisation of a rule (its first where all are zero), or null. Information does not count.
    KELTRIX_DESIGN_API const RuleFinding* Worst(int rule) const;
    KELTRIX_DESIGN_API bool HasFailed() const;
};

} // namespace Keltrix::Design
