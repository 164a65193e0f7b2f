#pragma once

#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Keltrix::Host {

// The lines of a member file. Whoever reads, cuts, writes or explains one asks this table. The library's reader, which is older, has
// the same lines; tests hold the two against each other.

/// The lines of a member in the order in which they are read.
enum class LineKind : int {
    Unknown = -2,
    Headings = -1,
    Title,
    Section,
    Grade,
    NetToGross,
    PlasticToElastic,
    ShearLag,
    LengthOverrides,
    UniformMoment,
    StrongAxis,
    WeakAxis,
    MemberPoint,
    SubSpan,
    End
};

/// Where a line stands in its member.
enum class LinePlace {
    Required,    ///< in its order, once
    Unread,      ///< in its order; the library's reader takes the line in this place whatever it is
    Optional,    ///< in its order or not at all
    Unsupported, ///< in its order or not at all; the library's reader refuses the member
    Repeated,    ///< after all of these, any number of them in any order
    Last,        ///< after all others, once
    Caption      ///< passed over where the order has it
};

/// What a number field is meant to hold.
struct FieldQuantity {
    const char* expected;  ///< "a number in m"
    const char* dimension; ///< of the units that people write after the number; empty: none
};

/// The numbers that people mean, as a rule. Another one is noted.
struct UsualRange {
    double least; ///< of the numbers above 0
    double most;
    const char* code; ///< of the note
    const char* unit; ///< behind the number in the note: " Pa"
    const char* expected;
    const char* advice;
};

enum class FieldKind { Text, Description, SectionType, YesOrNo, Number, WholeNumber, Restraint, LoadHeight };

/// A field of a line.
struct FieldRule {
    const char* name;    ///< in messages
    const char* caption; ///< in a line of captions
    FieldKind kind;
    const FieldQuantity* quantity = nullptr; ///< of a number
    const UsualRange* usual = nullptr;       ///< where every number is usual: none
};

/// A row of the table of keywords in the documents, in Markdown.
struct LineSentence {
    const char* fields;
    const char* meaning;
};

/// A line of the file.
struct LineRule {
    LineKind kind;
    std::wstring_view word;
    LinePlace place;
    bool mayFollowCaption; ///< one line of captions in front of it is passed over
    bool hidesNextLine;    ///< the library's reader may take the line after it whatever that is
    std::span<const FieldRule> fields;
    std::span<const LineSentence> sentences;
    const char* explanation; ///< lines of captions that say it in full to people who write a file by hand; may be empty
};

/// All lines in their order, HEADINGS last.
std::span<const LineRule> MemberLines();

/// The rule of a line, which is not Unknown.
const LineRule& RuleOf(LineKind kind);

/// The line that a keyword begins, in any letter case.
LineKind LineKindOf(std::wstring_view word);
/// The same for bytes.
LineKind LineKindOf(std::string_view word);

/// "MEMBERPOINT"; empty for Unknown.
std::string KeywordOf(LineKind kind);

/// "a MEMBERPOINT, SUBSPAN or END line": what may come after all lines that have an order.
const std::string& RepeatedLinesText();

/// "HEADINGS,Index,Position,Restraint,Load height" and a line feed: a line of captions over the fields of a line.
std::string CaptionLineOf(LineKind kind);

} // namespace Keltrix::Host
