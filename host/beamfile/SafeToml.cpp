#include "beamfile/SafeToml.h"

#include <algorithm>

#include "beamfile/BeamFile.h"
#include "beamfile/BeamText.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

// Names between two dots of one key, "a.b.c": each is a level of tables, which are destroyed by recursion.
constexpr int MOST_DOTS = 16;

// Whether a key in the line has more dots than any key of a beam file. Quoted texts do not count, except in lines with triple quotes,
// where it is not certain what is within them.
bool HasDeepKey(std::string_view line)
{
    const bool isPlain = line.find("\"\"\"") == line.npos && line.find("'''") == line.npos;
    int dots = 0;
    for (std::size_t i = 0; i < line.size();) {
        const char c = line[i];
        if (isPlain && (c == '"' || c == '\'')) {
            i = AfterQuoted(line, i);
            continue;
        }
        if (isPlain && c == '#') return false;
        if (c == '.' && ++dots > MOST_DOTS) return true;
        if (c == ',' || c == '=' || c == '[' || c == ']' || c == '{' || c == '}') dots = 0;
        ++i;
    }
    return false;
}

// Whether a line begins with "[" or "[[" and no name follows: toml++ 3.3 takes for granted that one does.
bool HasNamelessHeader(std::string_view line)
{
    std::size_t i = 0;
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    const auto skip = [&] {
        while (i < line.size() && isBlank(line[i]))
            ++i;
    };
    skip();
    if (i == line.size() || line[i] != '[') return false;
    ++i;
    skip();
    if (i < line.size() && line[i] == '[') ++i;
    skip();
    if (i == line.size()) return true;
    const char c = line[i];
    const bool isName = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
                        c == '_' || c == '"' || c == '\'';
    return !isName && c != ']';
}

// What a line has that toml++ 3.3 does not read safely: characters beyond ASCII outside of quotes and comments. Texts in three quotes,
// which no key needs, would leave open what is within quotes.
const char* UnsafePart(std::string_view line)
{
    for (std::size_t i = 0; i < line.size();) {
        const char c = line[i];
        if (c == '#') return nullptr;
        if (static_cast<unsigned char>(c) >= 0x80) return "a character beyond ASCII outside of quotes";
        const bool isEnd = c == '\r' && i + 1 == line.size();
        if (static_cast<unsigned char>(c) < ' ' && c != '\t' && !isEnd) return "a control character";
        if (c != '"' && c != '\'') {
            ++i;
            continue;
        }
        if (line.substr(i, 3) == "\"\"\"" || line.substr(i, 3) == "'''") return "a text in three quotes";
        i = AfterQuoted(line, i);
    }
    return nullptr;
}

// The line of a table without a name; 0 without one.
LineNumber NamelessHeaderIn(std::string_view bytes)
{
    for (LineNumber number = 1; !bytes.empty(); ++number) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        if (HasNamelessHeader(bytes.substr(0, end))) return number;
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return 0;
}

// The line of a key that is too deep; 0 without one.
LineNumber DeepKeyIn(std::string_view bytes)
{
    for (LineNumber number = 1; !bytes.empty(); ++number) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        if (HasDeepKey(bytes.substr(0, end))) return number;
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return 0;
}

// The line in which a closing brace stands where a list has a value, as in "[ }"; 0 without one. toml++ 3.3 takes for granted that none does.
// The text has neither control characters nor texts in three quotes.
LineNumber BraceForValueIn(std::string_view bytes)
{
    char before = '\0'; // the last character that is neither a blank nor in a comment
    for (LineNumber number = 1; !bytes.empty(); ++number) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        const std::string_view line = bytes.substr(0, end);
        for (std::size_t i = 0; i < line.size() && line[i] != '#';) {
            const char c = line[i];
            if (c == '}' && (before == '[' || before == ',')) return number;
            if (c != ' ' && c != '\t' && c != '\r') before = c;
            i = c == '"' || c == '\'' ? AfterQuoted(line, i) : i + 1;
        }
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return 0;
}

SafeToml Parsed(std::string_view bytes)
{
    try {
        return {toml::parse(bytes), 0, {}};
    } catch (const toml::parse_error& error) {
        const toml::source_position at = error.source().begin;
        return {{},
                static_cast<LineNumber>(at.line),
                "column " + std::to_string(at.column) + ": no TOML: " + PrintableLine(error.description())};
    }
}

std::string_view WithoutMark(std::string_view bytes)
{
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    return bytes;
}

} // namespace

SafeToml ReadSafeToml(std::string_view bytes)
{
    bytes = WithoutMark(bytes);
    if (const LineNumber line = DeepKeyIn(bytes); line > 0)
        return {{}, line, "a key of more than " + std::to_string(MOST_DOTS) + " parts; at most so many are expected"};
    if (const LineNumber line = NamelessHeaderIn(bytes); line > 0)
        return {{}, line, "expected the name of a table after the bracket, as [[load]]"};
    std::string_view rest = bytes;
    for (LineNumber number = 1; !rest.empty(); ++number) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        if (const char* const unsafe = UnsafePart(rest.substr(0, end)))
            return {{}, number, std::string(unsafe) + "; keys in ASCII and texts in one pair of quotes are expected"};
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    if (const LineNumber line = BraceForValueIn(bytes); line > 0)
        return {{}, line, "no TOML: a closing brace where a value is expected"};
    return Parsed(bytes);
}

SafeToml ReadBeamToml(std::string_view bytes)
{
    bytes = WithoutMark(bytes);
    if (bytes.size() > LARGEST_BEAM_FILE)
        return {{}, 1, "larger than " + std::to_string(LARGEST_BEAM_FILE >> 10) + " KiB, which no beam file is"};
    if (FirstLineOfContent(bytes).substr(0, 5) == "TITLE")
        return {{}, 1, "this is a member file; a name that ends with .toml is for beam files"};
    return ReadSafeToml(bytes);
}

} // namespace Keltrix::Host
