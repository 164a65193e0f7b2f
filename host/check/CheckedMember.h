#pragma once

#include <deque>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/DesignCodes.h"
#include "keltrix/design/MomentDiagram.h"
#include "memberfile/MemberFile.h"

namespace Keltrix::Host {

/// What an envelope knows of a finding beyond the finding itself.
struct RuleSource {
    std::string combination; ///< the load case or combination that it comes from
    /// What is compared with the resistance, where the resistance is a limit of deflection: m. Else not-a-number.
    double demand = std::numeric_limits<double>::quiet_NaN();
};

/// A member with the findings of its check. The member holds the address of the result, so neither moves.
struct CheckedMember {
    std::string file;
    LineNumber line = 1;  ///< of its TITLE line
    std::string name;     ///< how messages call it
    std::string caseName; ///< how an envelope calls it; empty: as messages do
    std::string title;
    const Design::DesignCode* code = nullptr;
    std::string annex;                         ///< national annex; empty where the code has none
    std::unique_ptr<Design::CodeMember> coded; ///< owns the member
    Steel::CSteelMemberGen* member = nullptr;
    std::unique_ptr<Steel::CMemberResult> result;
    /// What the check found. The positions of an envelope have the largest values of its load cases.
    Design::MemberFindings findings;
    /// What reading found, and what looks wrong in the findings of the check.
    std::vector<MemberWarning> warnings;
    std::size_t fileWarnings = 0; ///< how many of them reading found; they come first
    /// The largest and the smallest moment along the member, those between points too; of all load cases in an envelope.
    Design::Extremes momentMajor, momentMinor;
    bool passed = false; ///< every rule that applies was evaluated, and none failed
    bool failed = false;
    /// Of an envelope: where each of the findings' rules comes from, in their order. Empty for a single load case.
    std::vector<RuleSource> sources;
    /// Of a beam: the largest utilisation of a limit of deflection.
    double serviceability = 0.0;
    /// Of a beam: the record of the combination with the largest utilisation, whose text is shown; `result` has the values of all.
    std::unique_ptr<Steel::CMemberResult> shown;
    std::string shownCombination;
    std::deque<CString> texts; ///< of findings that no design code made

    std::string Section() const;
    std::string Grade() const;
    /// The largest utilisation of all that was checked; not-a-number is the largest of all.
    double Utilisation() const;
    /// The record whose text is the calculation.
    const Steel::CMemberResult& ShownResult() const { return shown ? *shown : *result; }
    /// The load case or combination of one of the findings' rules; empty where there is one case alone.
    std::string CombinationOf(const Design::RuleFinding* entry) const;
    /// "pass", "fail", or "not checked" where nothing could be checked; only the first passes.
    std::string Status() const;
    /// Figures beside the rules, of status Information; of an envelope, those of the case with the largest utilisation. Computed at each call, which
    /// can take longer than the check.
    std::vector<Design::RuleFinding> Information() const { return coded->Information(); }
    /// The load case or combination of these figures; empty where there is one case alone.
    std::string InformationCombination() const;
    /// The warnings that the check added to those of the file.
    std::vector<MemberWarning> CheckWarnings() const;
    /// DescribeEntry of the governing entry; "nothing" without one.
    std::string Governing() const;
};

/// Gives a member, read from place i of a file, its grade. Throws BadMember with the reason of the design code.
void SetGradeOf(const MemberFile& file, std::size_t i, const Design::DesignCode& code, Steel::CSteelMemberGen& member,
                const CSteelGrade& grade);

/// Throws BadMember where the last check of a member, read from place i of a file, evaluated nothing because the code takes
/// none of its values as given, with the reason of the code and the line that it speaks of.
void RequireAccepted(const MemberFile& file, std::size_t i, const Design::MemberFindings& findings);

/// Reads member i of a file for a check by RunCheck; the result is not yet the member's. Throws BadMember where the design code rejects the section,
/// the grade or a factor.
CheckedMember ReadToCheck(const MemberFile& file, std::size_t i, const CodeChoice& choice);

/// Checks a member that was read from place i of a file and has its result. The warnings of the check are added to those
/// that it has. Throws BadMember where the design code rejects a value.
void RunCheck(const MemberFile& file, std::size_t i, CheckedMember& checked);

/// Reads member i of a file and checks it. Without `withText` the result holds no text, which saves most of the time.
/// Throws BadMember where the design code rejects the section, the grade or a factor.
CheckedMember CheckMember(const MemberFile& file, std::size_t i, const CodeChoice& choice, bool withText);

/// What distinguishes two members: "section UB 406x178x60, not UB 457x191x67". Points, restraints, the division into
/// sub-spans, section, type, grade and factors make a member; forces, moments, load heights and the title belong to a load
/// case. Empty where both are load cases of one member.
std::string DifferenceOf(const CheckedMember& member, const CheckedMember& other);

/// Load cases of one member merged into one: utilisations, flags and texts as the result record merges them, local
/// findings, assumptions and warnings of all cases, the worst status. Each rule at each place is that of the case in which it is worst (a rule that is listed at its worst place alone: wherever that is), with the
/// case's name: not-a-number and a failure without a number are worse than any utilisation, and a rule that was not evaluated in one of the
/// cases stays. Resistances and effective lengths are those of the case with the largest utilisation.
CheckedMember Envelope(std::vector<CheckedMember> cases);

/// "fail" where a check failed, else "pass" where every rule that applies was evaluated, else "not checked".
std::string StatusText(bool passed, bool failed);

/// The words of the flags of a result.
std::vector<std::string> FlagWords(int flags);

/// "force", "moment", "stress", "length"; empty for a number.
const char* QuantityWord(Design::Quantity quantity);

/// Rule and clause of a finding: "moment capacity, major axis (4.2.5)".
std::string DescribeRule(const Design::RuleFinding& entry);
/// Its place: "at 3 m", "0 m to 3 m", or empty where it is of the member as a whole.
std::string DescribePlace(const Design::RuleFinding& entry);
/// Both: "lateral-torsional buckling (4.3.6), 0 m to 3 m".
std::string DescribeEntry(const Design::RuleFinding& entry);

/// The first rule that applies and was not evaluated, with the reason: "not evaluated: torsion (none): no rule"; empty without one.
std::string DescribeOpenRule(const Design::MemberFindings& findings);

} // namespace Keltrix::Host
