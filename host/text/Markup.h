#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Keltrix::Host {

/// What the report mark-up says, free of how it will look: the one reading of it that every kind of output starts from.
///
/// Headings "h4" "h5" "h6"; "b", "i"; colours "red", "orange", "blue"; "table" with "align left" (or right), "tablewrap"
/// (a second line of column captions) and "tablebreak" (a note across the table). Tabs at the start of a line indent it,
/// others separate cells.
///
/// Any text can be read. What is not one of these tags is text, "<" and "&" included; a closing tag without its
/// opening one is dropped, and headings, bold, italics and colours end with their line at the latest. Ill-formed UTF-8
/// and control characters come out as U+FFFD.
struct Document {
    enum class Colour { None, Red, Orange, Blue };

    struct Style {
        bool bold = false;
        bool italic = false;
        Colour colour = Colour::None;
        friend bool operator==(const Style&, const Style&) = default;
    };

    /// Text of one style.
    struct Run {
        std::string text;
        Style style;
        friend bool operator==(const Run&, const Run&) = default;
    };
    using Cell = std::vector<Run>;

    enum class Kind {
        Text,    ///< outside of any table
        Row,     ///< a row of a table
        Caption, ///< a line of captions of the last columns of a table
        Note     ///< a text across a table
    };

    struct Line {
        Kind kind = Kind::Text;
        int heading = 0; ///< 4, 5 or 6, or 0 for none
        int indent = 0;
        int table = 0;           ///< number of the table, counted from 1; 0 outside of any
        bool alignLeft = false;  ///< all columns of the table to the left
        std::vector<Cell> cells; ///< at least one
    };

    std::vector<Line> lines;
};

Document ReadMarkup(std::string_view markup);

/// A text of the user's, such as a title, for a place in mark-up in which it is to stand as it is: no tags are seen in it,
/// and it ends no line and no cell.
std::string AsText(std::string_view utf8);

/// Mark-up as people write it, with "<" where AsText put something else.
std::string RawMarkup(std::string_view markup);

} // namespace Keltrix::Host
