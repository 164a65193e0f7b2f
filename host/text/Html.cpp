#include "text/Html.h"

#include <array>
#include <charconv>

#include "text/Text.h"

namespace Keltrix::Host {

std::string EscapedHtml(std::string_view text)
{
    std::string escaped;
    for (const char c : Printable(text)) {
        switch (c) {
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '&':
            escaped += "&amp;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\'':
            escaped += "&#39;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string CssString(std::string_view text)
{
    std::string css = "\"";
    const std::string printable = Printable(text);
    for (std::string_view rest = printable; !rest.empty();) {
        const auto [value, length] = FirstCodePoint(rest);
        rest.remove_prefix(length);
        const bool isPlain = (value >= 'a' && value <= 'z') || (value >= 'A' && value <= 'Z') ||
                             (value >= '0' && value <= '9') || value == ' ';
        if (isPlain) {
            css += static_cast<char>(value);
            continue;
        }
        std::array<char, 8> hex;
        const auto end = std::to_chars(hex.data(), hex.data() + hex.size(), static_cast<unsigned>(value), 16).ptr;
        css += '\\' + std::string(hex.data(), end) + ' ';
    }
    return css + '"';
}

} // namespace Keltrix::Host
