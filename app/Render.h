#pragma once

#include <string>
#include <string_view>

#include "Markup.h"

namespace Keltrix::App {

/// How a report is put out.
enum class Rendering {
    Raw,   ///< the mark-up as it is
    Plain, ///< plain text, tables in aligned columns
    Ansi   ///< as Plain, with the colours and styles of a terminal
};

/// A document as text. Columns of tables line up; so do the cells of neighbouring lines outside of tables. A column
/// of numbers is set to the right unless its table says otherwise. No line ends in a blank.
std::string RenderText(const Document& document, bool ansi);

/// A marked-up text as it is to be put out.
std::string RenderMarkup(std::string_view markup, Rendering rendering);

} // namespace Keltrix::App
