#pragma once

#include <cstdint>
#include <string>

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

} // namespace Keltrix::Host
