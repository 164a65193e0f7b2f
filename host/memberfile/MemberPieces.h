#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "memberfile/MemberCheck.h"
#include "text/SourceText.h"

namespace Keltrix::Host {

/// A part of a member file that can be read by itself: as a rule one member, up to and with its END line.
struct MemberPiece {
    std::string bytes;
    FilePlace start;          ///< where it begins in its file
    bool isBehindEnd = false; ///< an END line stands before it
    bool isWhole = false;     ///< it is all of a regular file
    bool isTooLarge = false;  ///< there is no END line in LARGEST_FILE bytes; the bytes are not kept

    LineNumber FirstLine() const { return start.lines + 1; }
};

/// Cuts the bytes of a member file into pieces, each after an END line, as soon as that line is there, so that a stream
/// of any length is read in the memory of one member. It cuts after an END line only if the reader is sure to treat it as
/// the end. After a ratio line and before the points the reader accepts any line, so an END there is not a cut. Where it does
/// not cut, a piece holds several members.
class MemberCutter {
public:
    void Add(std::string_view bytes);
    /// The next piece that ends with an END line, or one that is too large.
    std::optional<MemberPiece> Next();
    /// What is left at the end of the input; nothing where only blank lines are left after an END line.
    std::optional<MemberPiece> Rest();

private:
    bool EndsMember(std::string_view line);
    MemberPiece Take(std::size_t end);
    void Drop();

    std::string m_buffer;
    std::size_t m_begin = 0;     // of the piece, in the buffer
    std::size_t m_lineBegin = 0; // of the line that is looked for
    std::size_t m_searched = 0;  // up to here there is no line feed in that line
    std::int64_t m_lines = 0;    // in the piece so far
    FilePlace m_start;           // of the piece
    bool m_isBehindEnd = false;
    bool m_mayHideEnd = false; // the line before this one is one after which any line is taken
    bool m_isDropping = false; // the rest of a piece that is too large
};

} // namespace Keltrix::Host
