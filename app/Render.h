#pragma once

#include <string>
#include <string_view>

#include "Markup.h"

namespace Keltrix::App {

/// How a report is put out.
enum class Rendering {
    Raw,   ///< the mark-up as it is
    Plain, ///< plain text, tables in aligned columns
    Ansi,  ///< as Plain, with the colours and styles of a terminal
    Html   ///< a fragment of HTML
};

/// A document as text. Columns of tables line up; so do the cells of neighbouring lines outside of tables. A column
/// of numbers is set to the right unless its table says otherwise. No line ends in a blank.
std::string RenderText(Document document, bool ansi);

/// A document as a fragment of HTML: headings h4 to h6, tables with their header rows, all other lines as paragraphs of the
/// class "i1", "i2" and so on for their indent; colours are the classes "red", "orange" and "blue", a column of numbers
/// has the class "n". Text is escaped: no character of it can become a tag. Empty lines are left out.
std::string RenderHtml(Document document);

/// A marked-up text as it is to be put out.
std::string RenderMarkup(std::string_view markup, Rendering rendering);

} // namespace Keltrix::App
