#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Json.h"
#include "MemberFile.h"
#include "keltrix/bs5950/BS5950.h"
#include "keltrix/design/MomentDiagram.h"

namespace Keltrix::App {

/// Local utilisations at one position.
struct LocalFinding {
    double x = 0.0; ///< along the member, m
    int subSpan = 0;
    BS5950::Place place = BS5950::Place::LeftEnd;
    double combined = 0.0;
    double axial = 0.0;
    double momentMajor = 0.0;
    double momentMinor = 0.0;
    double shearMajor = 0.0; ///< shear buckling included
    double shearMinor = 0.0;
    bool hasTorsion = false; ///< torsion acts, which no rule evaluates
};

/// A member with the findings of its check. The member holds the address of the result, so neither moves.
struct CheckedMember {
    std::string file;
    LineNumber line = 1; ///< of its TITLE line
    std::string name;    ///< how messages call it
    std::string title;
    std::optional<double> momentFactor; ///< the equivalent uniform moment factor that the file gives
    std::unique_ptr<BS5950::CSteelMemberBS5950> member;
    std::unique_ptr<Steel::CMemberResult> result;
    /// What reading found, and what looks wrong in the findings of the check.
    std::vector<MemberWarning> warnings;
    std::size_t fileWarnings = 0; ///< how many of them reading found; they come first
    /// The local findings by position along the member; those of an envelope are the largest of its load cases.
    std::vector<LocalFinding> local;
    /// The largest and the smallest moment along the member, those between points too; of all load cases in an envelope.
    Design::Extremes momentMajor, momentMinor;
    bool passed = false; ///< every rule that applies was evaluated, and none failed
    bool failed = false;

    std::string Section() const;
    std::string Grade() const;
    /// "pass", "fail", or "not checked" where nothing could be checked; only the first passes.
    std::string Status() const;
    /// The warnings that the check added to those of the file.
    std::vector<MemberWarning> CheckWarnings() const;
    /// DescribeEntry of the governing entry; "nothing" without one.
    std::string Governing() const;
};

/// Gives a member, read from place i of a file, its grade. Throws BadMember with the reason of the design code.
void SetGradeOf(const MemberFile& file, std::size_t i, BS5950::CSteelMemberBS5950& member, const CSteelGrade& grade);

/// Throws BadMember where the last check of a member, read from place i of a file, evaluated nothing because the code takes
/// none of its values as given, with the reason of the code and the line that it speaks of.
void RequireAccepted(const MemberFile& file, std::size_t i, const BS5950::CSteelMemberBS5950& member);

/// What is said about members beyond their files.
struct MemberOptions {
    bool exact = false; ///< the more exact interaction rules
    BS5950::DesignOptions design;

    void ApplyTo(BS5950::CSteelMemberBS5950& member) const;
};

/// Reads member i of a file and checks it. Without `withText` the result holds no text, which saves most of the time.
/// Throws BadMember where the design code rejects the section, the grade or a factor.
CheckedMember CheckMember(const MemberFile& file, std::size_t i, const MemberOptions& options, bool withText);

/// What distinguishes two members: "section UB 406x178x60, not UB 457x191x67". Points, restraints, the division into
/// sub-spans, section, type, grade and factors make a member; forces, moments, load heights and the title belong to a load
/// case. Empty where both are load cases of one member.
std::string DifferenceOf(const CheckedMember& member, const CheckedMember& other);

/// Load cases of one member merged into one: utilisations, flags and texts as the result record merges them, local
/// findings and warnings of all cases, the worst status. Ledger, resistances and effective lengths are those of the case
/// with the largest utilisation.
CheckedMember Envelope(std::vector<CheckedMember> cases);

/// "fail" where a check failed, else "pass" where every rule that applies was evaluated, else "not checked".
std::string StatusText(bool passed, bool failed);

/// The words of the flags of a result.
std::vector<std::string> FlagWords(int flags);

/// Rule and clause of a ledger entry: "moment capacity, major axis (4.2.5)".
std::string DescribeRule(const BS5950::LedgerEntry& entry);
/// Its place: "at 3 m", "0 m to 3 m", or empty where it is of the member as a whole.
std::string DescribePlace(const BS5950::LedgerEntry& entry);
/// Both: "lateral-torsional buckling (4.3.6), 0 m to 3 m".
std::string DescribeEntry(const BS5950::LedgerEntry& entry);

/// What an engineer asks first: the member, its status, utilisation and what governs.
Json HeadlineJson(const CheckedMember& checked);

/// The findings in full, the headline first.
Json JsonOf(const CheckedMember& checked);

} // namespace Keltrix::App
