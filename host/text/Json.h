#pragma once

#include <string>
#include <utility>

#include <nlohmann/json.hpp>

#include "text/JsonFwd.h"

namespace Keltrix::Host {

/// The first entry, "schema", of every object that an output consists of. It grows where a name goes or changes its meaning; names may be
/// added at any time.
inline constexpr int JSON_SCHEMA = 1;

/// An object of names and their values: JsonObject("x", 1.5, "y", "text"). Names must differ. Does the same as an
/// initialiser list, which makes and throws away an array for each pair: that took half of the time of a check with JSON.
template <class... NamesAndValues>
Json JsonObject(NamesAndValues&&... namesAndValues)
{
    static_assert(sizeof...(NamesAndValues) % 2 == 0, "a name has no value");
    Json json = Json::object();
    auto& members = json.get_ref<Json::object_t&>();
    members.reserve(sizeof...(NamesAndValues) / 2);
    const auto add = [&members](const auto& self, const char* name, auto&& value, auto&&... rest) -> void {
        members.emplace_back(name, std::forward<decltype(value)>(value));
        if constexpr (sizeof...(rest) > 0) self(self, std::forward<decltype(rest)>(rest)...);
    };
    if constexpr (sizeof...(NamesAndValues) > 0) add(add, std::forward<NamesAndValues>(namesAndValues)...);
    return json;
}

/// A document as text: indented by two blanks, with a final line break. Numbers in the fewest digits that say them
/// exactly; not-a-number and infinity, which JSON does not have, as null. Ill-formed text comes out as U+FFFD.
std::string JsonText(const Json& document);

/// The same without the line break, in the place of an entry `depth` levels below the top.
std::string IndentedJson(const Json& document, int depth);

/// The same in one line, without blanks, with its line break.
std::string JsonLine(const Json& document);

} // namespace Keltrix::Host
