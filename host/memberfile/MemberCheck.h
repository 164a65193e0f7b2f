#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "keltrix/platform/CString.h"

namespace Keltrix::Host {

/// A line of a file, counted from 1. A stream of members may have more lines than 32 bits count.
using LineNumber = std::int64_t;

enum class Severity {
    Error,   ///< the member is refused: the reader refuses it, or what it says is missing, incomplete or ambiguous
    Warning, ///< it can be read, but something in it is changed by reading or contradicts something else
    Note     ///< it can be read as it stands, and looks unlike what people mean
};
/// "error", "warning", "note".
const char* SeverityWord(Severity severity);

/// How strictly a member file is read.
struct ReadingOptions {
    bool allowGaps = false; ///< numbers need not start at 1, nor positions at 0; those of sub-spans may leave some out
    bool isStrict = false;  ///< every warning is an error
};

/// One thing that is wrong with a member file. Texts are UTF-8; those that do not apply are empty.
struct Defect {
    Severity severity = Severity::Error;
    LineNumber line = 0;
    std::string code;               ///< one word for each kind of defect: "missing-field"
    std::string keyword;            ///< of the line: "MEMBERPOINT"
    std::string field;              ///< "position"
    std::string got;                ///< what stands there, quoted
    std::string expected;           ///< "a number in m"
    std::string advice;             ///< what comes of it, or what to write instead
    std::size_t member = NO_MEMBER; ///< its place among the file's members

    static constexpr std::size_t NO_MEMBER = static_cast<std::size_t>(-1);

    /// "got "2.5m", expected a number in m; write 2.5".
    std::string Message() const;
    /// "MEMBERPOINT position: " and the message.
    std::string Statement() const;
    /// "floor.csv:14: " and the statement; a warning or note says so after the line number.
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

    std::size_t Errors() const { return Count(Severity::Error); }
    std::size_t Warnings() const { return Count(Severity::Warning); }
    std::size_t Notes() const { return Count(Severity::Note); }
    /// The defects of member i. What stands between members belongs to none.
    std::vector<Defect> DefectsOf(std::size_t i) const;

private:
    std::size_t Count(Severity severity) const;
};

/// Checks a member file, which may hold several members one after another. `isRefused` is set exactly where the library's
/// reader or its validation of points and sub-spans refuses the member. The check continues after the first defect, and
/// reports of each its place, what was expected and what was found.
///
/// This is the strict reading of the format. What the reader silently takes as zero, Free or nothing is an error: a number,
/// a restraint or a load height that is missing, empty or followed by other text, a value that is not finite, fields beyond
/// the last one, a line that is passed over. Numbers of points and sub-spans start at 1 and positions at 0, so that a lost
/// point is noticed (`allowGaps` permits others). Empty fields beyond the last one, as spreadsheets write them, are one
/// warning. Lines that start with # before and after a member are comments.
///
/// One pass over the text. A thousand defects are listed; beyond them only the first error and the first warning of each
/// member.
///
/// The text may be a part of a file that follows an END line (`isAfterEnd`), whose first line is `firstLine`: what stands
/// before its first TITLE then belongs to no member.
FileCheck CheckMemberFile(const CString& text, const ReadingOptions& options = {}, LineNumber firstLine = 1,
                          bool isAfterEnd = false);

} // namespace Keltrix::Host
