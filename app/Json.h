#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace Keltrix::App {

/// JSON whose members keep the order in which they were written.
using Json = nlohmann::ordered_json;

/// A document as text: indented by two blanks, with a final line break. Numbers in the fewest digits that say them
/// exactly; not-a-number and infinity, which JSON does not have, as null. Ill-formed text comes out as U+FFFD.
std::string JsonText(const Json& document);

/// The same without the line break, in the place of an entry `depth` levels below the top.
std::string IndentedJson(const Json& document, int depth);

/// The same in one line, without blanks, with its line break.
std::string JsonLine(const Json& document);

} // namespace Keltrix::App
