#pragma once

#include <cstddef>
#include <vector>

#include "text/Markup.h"

namespace Keltrix::Host {

/// The columns of a terminal that the longest part of a cell takes that is not broken: a word, or a number with its unit or with
/// the family in front of it ("-119.5 kN", "UB 457x191x67"). A path may be broken after each of its slashes.
std::size_t WidestPart(const Document::Cell& cell);

/// A cell in lines of at most `width` columns, at least one; styles go on in the next line. A part that is wider has a
/// line to itself.
std::vector<Document::Cell> Wrapped(const Document::Cell& cell, std::size_t width);

} // namespace Keltrix::Host
