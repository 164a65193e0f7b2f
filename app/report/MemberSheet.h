#pragma once

#include <string>

#include "CheckedMember.h"

namespace Keltrix::App {

/// What the user puts into the title block; empty texts leave their line out. There is no date unless it is given: a report
/// made twice from the same files is the same report.
struct TitleBlock {
    std::string job;
    std::string member; ///< the member's mark
    std::string date;
    std::string by;
    std::string version; ///< of the program
};

/// The calculation sheet of one member, the content of an article of HTML. All ids in it start with `id`; that of its heading
/// is `id` and "-h".
std::string MemberSheet(const CheckedMember& checked, const TitleBlock& block, const std::string& id);

/// "LABEL: a sentence" for each flag of a result.
std::vector<std::string> FlagSentences(int flags);

/// A text with its numbers and their units kept on one line.
std::string WithUnitsKept(const std::string& text);

/// One of "pass", "fail" and "not checked" with the class of its colour.
std::string StatusHtml(const std::string& status);

} // namespace Keltrix::App
