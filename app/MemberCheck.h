#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "keltrix/platform/CString.h"

namespace Keltrix::App {

/// A line of a file, counted from 1. A stream of members may have more lines than 32 bits count.
using LineNumber = std::int64_t;

enum class Severity {
    Error,  ///< the member is refused, or something in it cannot be read: a text for a number, an unknown section
    Warning ///< it can be read, but reading loses or changes something on the way
};

/// One thing that is wrong with a member file. Texts are UTF-8; those that do not apply are empty.
struct Defect {
    Severity severity = Severity::Error;
    LineNumber line = 0;
    std::string keyword;  ///< of the line: "MEMBERPOINT"
    std::string field;    ///< "position"
    std::string got;      ///< what stands there, quoted
    std::string expected; ///< "a number in m"
    std::string advice;   ///< what comes of it, or what to write instead

    /// "got "2.5m", expected a number in m; write 2.5".
    std::string Message() const;
    /// "floor.csv:14: MEMBERPOINT position: " and the message; a warning says so behind the line number.
    std::string Text(const std::string& file) const;
};

/// The part of a file's text that is one member: from its TITLE line to its END line.
struct MemberText {
    LineNumber firstLine = 1;
    std::wstring_view text; ///< a view into the text that was checked
    std::wstring_view title;
    bool hasErrors = false;
    bool isRefused = false; ///< by the library's reader, or by the validation of points and sub-spans
};

/// What was found in a file: its members and its defects in the order of their lines.
struct FileCheck {
    std::vector<MemberText> members;
    std::vector<Defect> defects;

    std::size_t Errors() const;
    std::size_t Warnings() const;
};

/// Checks a member file, which may hold several members one after another. It follows the library's reader line by
/// line, so that a member is refused here exactly if the reader or the validation of points and sub-spans refuses it; but it
/// goes on behind the first fault, and says of each where it is, what was expected and what stands there. It is stricter in
/// one thing: what the reader silently takes for zero or nothing, because it cannot be read at all, is an error, too.
/// One pass over the text.
///
/// The text may be a part of a file that follows an END line (`isBehindEnd`), whose first line is `firstLine`: what stands
/// before its first TITLE then belongs to no member.
FileCheck CheckMemberFile(const CString& text, LineNumber firstLine = 1, bool isBehindEnd = false);

} // namespace Keltrix::App
