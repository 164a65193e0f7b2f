#pragma once

#include <string_view>
#include <vector>

#include "keltrix/platform/CString.h"
#include "memberfile/Defect.h"

namespace Keltrix::Host {

/// How strictly a member file is read.
struct ReadingOptions {
    bool allowGaps = false; ///< numbers need not start at 1, nor positions at 0; those of sub-spans may leave some out
    bool isStrict = false;  ///< every warning is an error
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
