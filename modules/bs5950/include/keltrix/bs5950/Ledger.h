#pragma once

#include <cstddef>
#include <limits>
#include <vector>

#include "keltrix/bs5950/Export.h"
#include "keltrix/design/Findings.h"

namespace Keltrix::BS5950 {

/// The rules of the standard that a check of a member goes through. Every check leaves at least one ledger entry for
/// each of them.
enum class Rule {
    DesignStrength,
    Classification,
    Tension,
    EccentricConnection,
    Compression,
    ShearMajor,
    ShearMinor,
    ShearBuckling,
    WebThickness,
    EndAnchorage,
    Stiffeners,
    WebBearing,
    WebBuckling,
    MomentMajor,
    MomentMinor,
    BoltHoles,
    CombinedTension,
    CombinedCompression,
    Torsion,
    BucklingMajor,
    BucklingMinor,
    StrutConnections,
    TorsionalBuckling,
    LateralTorsional,
    BucklingInteraction,
    SwayStability,
    Robustness,
    Fatigue,
    BrittleFracture,
    Deflection,
    Vibration,
    Restraints,
    Connections,
    WebOpenings,
    CompoundStruts,
    TensionFlange,
    AngleInteraction,
    SimpleColumn,
    COUNT
};

enum class Stage { General, Local, Buckling };
using Design::Assumption;
using Design::AssumptionText;
using Design::CheckStatus;
using Design::Quantity;
using Design::StatusName;

/// "moment capacity, major axis"
KELTRIX_BS5950_API const wchar_t* RuleName(Rule rule);
/// "4.2.5"
KELTRIX_BS5950_API const wchar_t* RuleClause(Rule rule);
KELTRIX_BS5950_API Stage RuleStage(Rule rule);
KELTRIX_BS5950_API Design::Topic RuleTopic(Rule rule);

/// What became of one rule at one place. Texts are static.
struct LedgerEntry {
    Rule rule = Rule::DesignStrength;
    const wchar_t* clause = L""; ///< the clause or table applied
    CheckStatus status = CheckStatus::NotEvaluated;
    const wchar_t* reason = L""; ///< why not applicable, not evaluated or failed without a number
    int position = -1; ///< place in SteelMember::Positions(), -1 where the entry is of a span or of the member
    double start = std::numeric_limits<double>::quiet_NaN(); ///< position or start of the span, m
    double end = std::numeric_limits<double>::quiet_NaN();
    double utilisation = 0.0; ///< 0 where nothing was evaluated
    double resistance = std::numeric_limits<double>::quiet_NaN();
    const wchar_t* symbol = L""; ///< of the resistance: "Mcx"
    Quantity quantity = Quantity::None;
    bool governing = false;                                        ///< the largest utilisation of the whole ledger
    double slenderness = std::numeric_limits<double>::quiet_NaN(); ///< λLT or λ, of information and of elastic checks
};

/// The ledger of checks of a member: one entry for every rule, several where it was applied span by span.
class KELTRIX_BS5950_API Ledger {
public:
    void Add(const LedgerEntry& entry) { m_entries.push_back(entry); }
    /// Drops the entries of a stage, so that it can be checked again.
    void Drop(Stage stage);
    void Clear() { m_entries.clear(); }
    /// Marks the entry of the largest utilisation above zero (the first of equal ones) and unmarks all others.
    void MarkGoverning();

    const std::vector<LedgerEntry>& Entries() const { return m_entries; }
    /// The marked entry, or null.
    const LedgerEntry* Governing() const;
    /// The entry of the largest utilisation of a rule (its first entry when all are zero), or null.
    const LedgerEntry* Find(Rule rule) const;
    bool HasFailed() const;
    bool HasFailed(Stage stage) const;
    /// Whether a rule that applies was not evaluated.
    bool IsOpen() const;
    bool IsOpen(Stage stage) const;
    /// Failed before NotChecked before Passed; NotChecked where there are no entries.
    Design::Status Status() const;

private:
    std::vector<LedgerEntry> m_entries;
};

} // namespace Keltrix::BS5950
