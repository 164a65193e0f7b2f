#pragma once

#include <limits>
#include <string>
#include <vector>

#include "memberfile/MemberCheck.h"
#include "text/JsonFwd.h"

namespace Keltrix::Host {

/// What an engineer must know of a member that is not refused: it stands in every report of the member.
struct MemberWarning {
    std::string code;                      ///< one word for each kind: "moment-jump"
    Severity severity = Severity::Warning; ///< a warning or a note
    std::string file;
    LineNumber line = 0; ///< that it speaks of
    std::string text;
    /// Design::Warning's stretch and utilisation; not-a-number where it has none.
    double start = std::numeric_limits<double>::quiet_NaN();
    double end = std::numeric_limits<double>::quiet_NaN();
    double utilisation = std::numeric_limits<double>::quiet_NaN();

    /// "floor.csv:14: warning: MEMBERPOINT: " and so on.
    std::string Message() const;
};

/// A defect that is no error.
MemberWarning WarningOf(const Defect& defect, const std::string& file);

/// "2 warnings", "1 warning, 1 note"; empty without any.
std::string CountText(const std::vector<MemberWarning>& warnings);

/// "pass, 2 warnings": a status and what comes with it, in the mark-up of reports.
std::string StatusMarkup(const std::string& status, const std::vector<MemberWarning>& warnings);

/// A line of mark-up for each warning.
std::string WarningMarkup(const std::vector<MemberWarning>& warnings);

/// An array of "code", "severity", "file", "line", "text".
Json WarningsJson(const std::vector<MemberWarning>& warnings);

} // namespace Keltrix::Host
