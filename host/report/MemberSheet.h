#pragma once

#include <functional>
#include <string>

#include "check/CheckedMember.h"

namespace Keltrix::Host {

/// Who did something to a calculation, and when.
struct Signature {
    std::string name;
    std::string date;

    bool IsEmpty() const { return name.empty() && date.empty(); }
};

/// What the user puts into the title block; empty texts leave their line out, and so do the signatures where none of them is given.
/// There is no date unless it is given: a report made twice from the same files is the same report.
struct TitleBlock {
    std::string client;
    std::string job;
    std::string project; ///< number of the project
    std::string revision;
    std::string member; ///< the member's mark
    std::string forces; ///< where the forces and moments come from
    Signature made, checked, approved;
    std::string version;  ///< of the program
    bool isBrief = false; ///< the short form: the calculation of the governing position and span alone
};

/// Makes the part of a sheet about the loads that the forces follow from, with ids that start with `id`.
using LoadPart = std::function<std::string(const std::string& id, bool isBrief)>;

/// The calculation sheet of one member, the content of an article of HTML. All ids in it start with `id`; that of its heading
/// is `id` and "-h". Without `loads` the forces are those of the input.
std::string MemberSheet(const CheckedMember& checked, const TitleBlock& block, const std::string& id,
                        const LoadPart& loads = {});

/// "LABEL: a sentence" for each flag of a result.
std::vector<std::string> FlagSentences(int flags);

/// A text with its numbers and their units kept on one line.
std::string WithUnitsKept(const std::string& text);

/// One of "pass", "fail" and "not checked" with the class of its colour.
std::string StatusHtml(const std::string& status);

} // namespace Keltrix::Host
