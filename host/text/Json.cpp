#include "text/Json.h"

namespace Keltrix::Host {

namespace {

constexpr int INDENT = 2;

std::string Dump(const Json& document, int indent)
{
    return document.dump(indent, ' ', false, Json::error_handler_t::replace);
}

} // namespace

std::string JsonText(const Json& document) { return Dump(document, INDENT) + '\n'; }

std::string IndentedJson(const Json& document, int depth)
{
    // Line breaks within texts are escaped: those in the dump are its own.
    const std::string margin(static_cast<std::size_t>(INDENT * depth), ' ');
    const std::string text = Dump(document, INDENT);
    std::string indented = margin;
    for (const char c : text) {
        indented += c;
        if (c == '\n') indented += margin;
    }
    return indented;
}

std::string JsonLine(const Json& document) { return Dump(document, -1) + '\n'; }

} // namespace Keltrix::Host
