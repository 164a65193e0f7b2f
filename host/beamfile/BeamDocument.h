#pragma once

#include <string>
#include <string_view>

#include "text/JsonFwd.h"

namespace Keltrix::Host {

/// The keys and values of a beam file as they stand in it, for programs that edit one: tables as objects, arrays as arrays. Nothing is judged but
/// the syntax. Infinity and not-a-number, which JSON does not have, are the texts "inf", "-inf" and "nan", dates and times the texts that stand
/// there. Throws BadInput for bytes that are no text, for more than LARGEST_BEAM_FILE and for what is no TOML, with line and column.
Json BeamDocument(const std::string& name, std::string_view bytes);

} // namespace Keltrix::Host
