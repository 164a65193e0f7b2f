#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/Markup.h"

namespace Keltrix::Host {

/// How a report is put out.
struct Rendering {
    enum Kind {
        Raw,   ///< the mark-up as it is
        Plain, ///< plain text, tables in aligned columns
        Ansi,  ///< as Plain, with the colours and styles of a terminal
        Html   ///< a fragment of HTML
    };

    Kind kind = Plain;
    /// Of plain and coloured text, in columns of a terminal; 0 leaves lines as long as they are.
    std::size_t width = 0;

    constexpr Rendering(Kind how = Plain, std::size_t columns = 0) : kind(how), width(columns) {}
};

/// A document as text. Columns of tables line up; so do the cells of neighbouring lines outside of tables. A column
/// of numbers is set to the right unless its table says otherwise. No line ends in a blank.
///
/// With a width, what is wider is broken at blanks, except for parts that are wider by themselves: lines of text go on indented, cells go on in
/// their column, widest columns first. Where a table does not fit in that way, its last columns follow in further lines of
/// each row, indented, the captions as well.
std::string RenderText(Document document, bool ansi, std::size_t width = 0);

/// A document as a fragment of HTML: headings h4 to h6, tables with their header rows, all other lines as paragraphs of the
/// class "i1", "i2" and so on for their indent; colours are the classes "red", "orange" and "blue", a column of numbers
/// has the class "n". Text is escaped: no character of it can become a tag. Empty lines are left out.
std::string RenderHtml(Document document);

/// A marked-up text as it is to be put out.
std::string RenderMarkup(std::string_view markup, Rendering rendering);

} // namespace Keltrix::Host
