#pragma once

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "keltrix/design/DesignCode.h"
#include "keltrix/testkit/TestMember.h"

// Laws that every design code keeps, whatever its formulas. They know nothing of a code but its interface, and try random members.
// docs/writing-a-design-code.md shows a test of somebody's own code with them.
namespace Keltrix::TestKit {

enum class Law {
    Division, ///< a sub-span divided where its own forces say what acts there: each rule and each figure beside the rules has the same utilisations
    Mirroring, ///< a member turned end for end: likewise
    MoreLoad,  ///< all forces and moments doubled: the largest utilisation does not fall, and what failed does not pass
    Units,     ///< findings are the same with or without a result, with or without text, and in whatever units that is
    RestraintAdded, ///< no resistance to buckling falls at any place. Tables of moment shapes can break it: it is asked for by itself
    LedgerComplete,     ///< each member has a finding for every rule that any member has
    NoPassWithOpenRule, ///< a member passes only where no rule failed or is open; the check, the findings and the flags of the result agree, and
                        ///< the largest utilisation governs
    NotANumber,         ///< a member with a force or moment that is infinite or not a number never passes
    COUNT
};
/// "division of a sub-span"
const char* LawName(Law law);

/// All laws but RestraintAdded.
std::vector<Law> UsualLaws();

/// With what members are checked.
struct LawSubject {
    const Design::DesignCode* code = nullptr;
    CString section;      ///< a designation or parametric description that the code takes
    int type = SEC_UNDEF; ///< how the section is made
    CSteelGrade grade;    ///< that the code takes
    double momentScale =
        3e5; ///< about the moment that the section carries, N·m: random actions are a tenth of it to one and a half
};

/// How a member is checked, beside its section and grade.
struct LawManner {
    Design::CodeSettings settings;
    std::function<void(Steel::CSteelMemberGen&)> prepare = {}; ///< given lengths and the like; may be empty
};

/// How many members a law is tried on, and how exactly it has to hold.
struct LawOptions {
    unsigned seed = 1;
    int members = 100;
    double tolerance = 1e-9; ///< of utilisations, relative above 1; for codes with numerical solutions 1e-3 as a rule
    double informationTolerance = 1e-3; ///< of figures beside the rules, many of which come from numerical solutions
    /// The members; without it RandomMember, scaled to the section.
    std::function<TestMember(std::mt19937&)> make = {};
    /// With what each is checked; without it the settings are empty.
    std::function<LawManner(std::mt19937&)> manner = {};
};

/// What came of a law.
struct LawReport {
    int tried = 0;
    std::string breach; ///< the first one, with its seed, its member and both findings; empty where the law holds

    bool Holds() const { return breach.empty() && tried > 0; }
};

/// Tries a law on random members. Throws std::invalid_argument where the code does not take the section or the grade.
LawReport Try(Law law, const LawSubject& subject, const LawOptions& options = {});

} // namespace Keltrix::TestKit
