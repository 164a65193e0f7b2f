#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Json.h"
#include "MemberFile.h"
#include "keltrix/bs5950/BS5950.h"

namespace Keltrix::App {

/// A member with the findings of its check. The member holds the address of the result, so neither moves.
struct CheckedMember {
    std::string file;
    LineNumber line = 1; ///< of its TITLE line
    std::string name;    ///< how messages call it
    std::string title;
    std::unique_ptr<BS5950::CSteelMemberBS5950> member;
    std::unique_ptr<Steel::CMemberResult> result;
    bool passed = false;

    std::string Section() const;
    std::string Grade() const;
    /// "pass", "fail", or "not checked" where nothing could be checked; only the first passes.
    std::string Status() const;
    /// DescribeEntry of the governing entry; "nothing" without one.
    std::string Governing() const;
};

/// Reads member i of a file and checks it. `option` is the design option of the module; without `withText` the result
/// holds no text, which spares most of the time. Throws BadInput where the design
/// code takes the section or the grade not at all.
CheckedMember CheckMember(const MemberFile& file, std::size_t i, int option, bool withText);

/// Load cases of one member merged into the first of them: utilisations, flags and texts as the result record merges
/// them. Ledger, resistances and effective lengths are those of the case with the largest utilisation.
CheckedMember Envelope(std::vector<CheckedMember> cases);

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
