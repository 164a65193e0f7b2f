#include "beamfile/BeamText.h"

#include <algorithm>

namespace Keltrix::Host {

namespace {

bool IsBareKey(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
}

} // namespace

std::string_view FirstLineOfContent(std::string_view bytes)
{
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        std::string_view line = bytes.substr(0, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        const std::size_t first = line.find_first_not_of(" \t\r");
        if (first != std::string_view::npos && line[first] != '#') return line.substr(first);
    }
    return {};
}

std::size_t AfterQuoted(std::string_view line, std::size_t i)
{
    const char quote = line[i];
    for (++i; i < line.size() && line[i] != quote; ++i)
        if (quote == '"' && line[i] == '\\') ++i;
    return std::min(i + 1, line.size());
}

bool IsBeamText(const std::string& name, std::string_view bytes)
{
    constexpr std::string_view extension = ".toml";
    if (name.size() > extension.size() && name.ends_with(extension)) return true;
    std::string_view line = FirstLineOfContent(bytes);
    if (line.empty()) return false;
    if (line.front() == '[') return true;
    std::size_t i = 0;
    if (line.front() == '"' || line.front() == '\'') i = AfterQuoted(line, 0);
    while (i < line.size() && (IsBareKey(line[i]) || line[i] == '.'))
        ++i;
    const std::size_t next = line.find_first_not_of(" \t", i);
    return i > 0 && next != std::string_view::npos && line[next] == '=';
}

} // namespace Keltrix::Host
