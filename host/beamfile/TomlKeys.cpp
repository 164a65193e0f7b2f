#include "beamfile/TomlKeys.h"

#include <algorithm>
#include <cmath>

#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Host {

std::string InWords(const std::vector<const char*>& words)
{
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i)
        text += (i == 0 ? "" : i + 1 < words.size() ? ", " : " or ") + std::string(words[i]);
    return text;
}

namespace {

std::string Suggestion(const std::string& got, const std::vector<const char*>& words)
{
    std::vector<CString> wide;
    wide.reserve(words.size());
    for (const char* word : words)
        wide.push_back(Wide(word));
    std::vector<std::wstring_view> candidates;
    candidates.reserve(wide.size());
    for (const CString& word : wide)
        candidates.push_back(word.View());
    const std::optional<std::wstring> nearest = Nearest(Wide(got).View(), candidates);
    return nearest ? "did you mean " + Utf8(std::wstring_view(*nearest)) : std::string();
}

} // namespace

std::string GotOf(const toml::node& node)
{
    if (node.is_table()) return "a table";
    if (node.is_array()) return "a list";
    if (const auto* const text = node.as_string()) return Quote(Wide(text->get()).View());
    if (const auto* const number = node.as_floating_point()) return Shortest(number->get());
    if (const auto* const number = node.as_integer()) return std::to_string(number->get());
    if (const auto* const flag = node.as_boolean()) return flag->get() ? "true" : "false";
    return "a date or time";
}

TomlKeys::TomlKeys(const toml::table& table, std::string path, std::vector<Defect>& defects) :
    m_table(table), m_path(std::move(path)), m_defects(defects)
{}

LineNumber TomlKeys::LineOf(const toml::node& node)
{
    return std::max<LineNumber>(static_cast<LineNumber>(node.source().begin.line), 1);
}

LineNumber TomlKeys::LineOf(const char* key)
{
    const toml::node* const node = Find(key);
    return node ? LineOf(*node) : Line();
}

const toml::node* TomlKeys::Find(const char* key)
{
    if (std::none_of(m_asked.begin(), m_asked.end(), [&](const char* asked) { return std::string_view(asked) == key; }))
        m_asked.push_back(key);
    return m_table.get(key);
}

std::string TomlKeys::PathOf(const char* key) const
{
    if (m_path.empty()) return key;
    return *key ? m_path + '.' + key : m_path;
}

void TomlKeys::Error(LineNumber line, const char* key, std::string got, std::string expected, std::string advice)
{
    Defect defect;
    defect.line = line;
    defect.code = "beam-file";
    defect.keyword = PathOf(key);
    defect.got = std::move(got);
    defect.expected = std::move(expected);
    defect.advice = std::move(advice);
    m_defects.push_back(std::move(defect));
}

void TomlKeys::Missing(const char* key, std::string expected) { Error(Line(), key, "nothing", std::move(expected)); }

void TomlKeys::Say(Severity severity, LineNumber line, const char* key, std::string text)
{
    Error(line, key, {}, {}, std::move(text));
    m_defects.back().severity = severity;
}

std::optional<double> TomlKeys::NumberOf(const toml::node& node, const char* key, const NumberRange& range)
{
    const std::optional<double> number =
        node.is_number() ? node.value<double>() : std::optional<double>(); // no booleans
    const bool isIn = number && std::isfinite(*number) && *number <= range.most &&
                      (range.isOpen ? *number > range.least : *number >= range.least);
    if (isIn) return number;
    Error(LineOf(node), key, GotOf(node), range.expected);
    return std::nullopt;
}

std::optional<double> TomlKeys::Number(const char* key, const NumberRange& range)
{
    const toml::node* const node = Find(key);
    return node ? NumberOf(*node, key, range) : std::nullopt;
}

std::optional<bool> TomlKeys::Flag(const char* key)
{
    const toml::node* const node = Find(key);
    if (!node) return std::nullopt;
    if (const auto* const flag = node->as_boolean()) return flag->get();
    Error(LineOf(*node), key, GotOf(*node), "true or false");
    return std::nullopt;
}

std::optional<std::string> TomlKeys::Text(const char* key, const char* expected)
{
    constexpr std::size_t longest = 200;
    const toml::node* const node = Find(key);
    if (!node) return std::nullopt;
    const auto* const text = node->as_string();
    if (!text) {
        Error(LineOf(*node), key, GotOf(*node), expected);
        return std::nullopt;
    }
    const std::string& value = text->get();
    if (value.find_first_not_of(" \t\r\n") == std::string::npos || value.size() > longest ||
        value.find('\n') != std::string::npos) {
        Error(LineOf(*node), key, GotOf(*node), std::string(expected) + " in one line of 1 to 200 bytes");
        return std::nullopt;
    }
    return PrintableLine(value);
}

std::optional<std::size_t> TomlKeys::Word(const char* key, const std::vector<const char*>& words)
{
    const toml::node* const node = Find(key);
    if (!node) return std::nullopt;
    const auto* const text = node->as_string();
    const CString got = Wide(text ? text->get() : std::string());
    for (std::size_t i = 0; text && i < words.size(); ++i)
        if (SameWord(got.View(), Wide(words[i]).View())) return i;
    Error(LineOf(*node), key, GotOf(*node), InWords(words), text ? Suggestion(text->get(), words) : std::string());
    return std::nullopt;
}

std::vector<double> TomlKeys::Numbers(const char* key, const NumberRange& range, std::size_t most)
{
    std::vector<double> numbers;
    const toml::node* const node = Find(key);
    if (!node) return numbers;
    const toml::array* const list = node->as_array();
    if (!list) {
        if (const std::optional<double> number = NumberOf(*node, key, range)) numbers.push_back(*number);
        return numbers;
    }
    if (list->empty() || list->size() > most) {
        Error(LineOf(*node), key, "a list of " + std::to_string(list->size()),
              std::string(range.expected) + ", or a list of 1 to " + std::to_string(most));
        return numbers;
    }
    for (const toml::node& item : *list)
        if (const std::optional<double> number = NumberOf(item, key, range)) numbers.push_back(*number);
    return numbers;
}

std::vector<double> TomlKeys::Places(const char* key, const NumberRange& range, std::size_t most)
{
    std::vector<double> places = Numbers(key, range, most);
    std::vector<double> sorted = places;
    std::sort(sorted.begin(), sorted.end());
    const auto twice = std::adjacent_find(sorted.begin(), sorted.end());
    if (twice != sorted.end()) Error(LineOf(key), key, Shortest(*twice) + " twice", "each place once");
    return places;
}

std::vector<const toml::table*> TomlKeys::Tables(const char* key, std::size_t most)
{
    std::vector<const toml::table*> tables;
    const toml::node* const node = Find(key);
    if (!node) return tables;
    if (const toml::table* const one = node->as_table()) return {one};
    const toml::array* const list = node->as_array();
    if (!list) {
        Error(LineOf(*node), key, GotOf(*node), "tables: [[" + std::string(key) + "]]");
        return tables;
    }
    if (list->size() > most) {
        Error(LineOf(*node), key, std::to_string(list->size()) + " of them", "at most " + std::to_string(most));
        return tables;
    }
    for (const toml::node& item : *list) {
        if (const toml::table* const table = item.as_table())
            tables.push_back(table);
        else
            Error(LineOf(item), key, GotOf(item), "a table");
    }
    return tables;
}

void TomlKeys::Finish()
{
    for (const auto& [key, node] : m_table) {
        const std::string name(key.str());
        if (std::any_of(m_asked.begin(), m_asked.end(), [&](const char* asked) { return name == asked; })) continue;
        const LineNumber line = std::max<LineNumber>(static_cast<LineNumber>(key.source().begin.line), 1);
        const std::string suggestion = Suggestion(name, m_asked);
        Error(line, "", "unknown key " + Quote(Wide(name).View()),
              suggestion.empty() ? InWords(m_asked) : std::string(), suggestion);
    }
}

} // namespace Keltrix::Host
