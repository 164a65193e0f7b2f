#pragma once

#include "keltrix/design/Findings.h"

namespace Keltrix::EC3 {

/// The rules of the standard in the order in which they are shown.
enum class Rule {
    Strength,
    Classification,
    Tension,
    AngleTie,
    Compression,
    BendingMajor,
    BendingMinor,
    HolesInFlange,
    ShearMajor,
    ShearMinor,
    ShearBuckling,
    Torsion,
    BendingShearMajor,
    BendingShearMinor,
    ShearBucklingMoment,
    FlangeInduced,
    ShearLag,
    Combined,
    ConcentratedLoads,
    WebLoadBending,
    FlexuralMajor,
    FlexuralMinor,
    Torsional,
    Lateral,
    InteractionMajor,
    InteractionMinor,
    GeneralMethod,
    SimpleColumn,
    Frame,
    BuiltUp,
    Ductility,
    Deflection,
    Vibration,
    Fatigue,
    Fracture,
    Restraints,
    Connections,
    Openings,
    Robustness,
    COUNT
};

/// General rules are about the member as a whole, or about what the input does not hold.
enum class Stage { General, Local, Buckling };

struct RuleRow {
    const wchar_t* name;
    const wchar_t* clause;
    Stage stage;
    Design::Topic topic;
};
const RuleRow& RowOf(Rule rule);
inline Stage StageOf(const Design::RuleFinding& f) { return RowOf(static_cast<Rule>(f.rule)).stage; }

/// A finding with the rule's own name and clause.
Design::RuleFinding FindingOf(Rule rule, Design::CheckStatus status, const wchar_t* reason = L"");

} // namespace Keltrix::EC3
