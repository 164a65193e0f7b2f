#pragma once

#include <string>

namespace Keltrix::Python {

/// Throws BadInput where a text cannot stand in a field of a member file, which holds no comma and no line break; `what` is what messages
/// call it.
void RequireField(const std::string& what, const std::string& text);

/// The same for a title, whose commas become semicolons.
void RequireLine(const std::string& what, const std::string& text);

/// How a section is made, as member files write it, from "rolled", "welded" or "formed" in any letter case; without a word as the catalogue has
/// it. A section that there is not is left to the reader of the text.
std::string TypeOf(const std::string& section, const std::string& word);

} // namespace Keltrix::Python
