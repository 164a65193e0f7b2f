#pragma once

#include <string>
#include <string_view>

namespace Keltrix::Host {

/// A text as HTML or SVG shows it, between tags and within quoted attributes alike: the five characters that mean something
/// there are escaped; control characters and ill-formed UTF-8 come out as U+FFFD.
std::string EscapedHtml(std::string_view text);

/// The same text as a string of CSS, quotes included, fit to stand in a style element: everything but ASCII letters,
/// digits and blanks is written as its code point.
std::string CssString(std::string_view text);

} // namespace Keltrix::Host
