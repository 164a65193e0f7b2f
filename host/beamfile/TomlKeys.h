#pragma once

#include <optional>
#include <string>
#include <vector>

#include "beamfile/Toml.h"
#include "memberfile/MemberCheck.h"

namespace Keltrix::Host {

/// Beam files are in kN and m.
inline constexpr double KILO = 1e3;

/// "rolled, welded or formed".
std::string InWords(const std::vector<const char*>& words);

/// A range of numbers, with the words for it.
struct NumberRange {
    double least;
    double most;
    const char* expected; ///< "a length in m above 0"
    bool isOpen = false;  ///< the least value is not in it
};

/// The keys of a table of a TOML file, each asked for by its name. What is wrong with one goes to the defects, with its line. Keys that
/// nobody asked for are unknown ones.
class TomlKeys {
public:
    /// `path` stands in front of the keys in messages: "load".
    TomlKeys(const toml::table& table, std::string path, std::vector<Defect>& defects);

    LineNumber Line() const { return LineOf(m_table); }
    LineNumber LineOf(const char* key);
    static LineNumber LineOf(const toml::node& node);

    bool Has(const char* key) { return Find(key) != nullptr; }
    /// The node of a key, or null.
    const toml::node* Find(const char* key);
    std::optional<double> Number(const char* key, const NumberRange& range);
    std::optional<bool> Flag(const char* key);
    /// A text that is not empty, in one line.
    std::optional<std::string> Text(const char* key, const char* expected = "a text");
    /// The place of a word in a list; letter case does not matter.
    std::optional<std::size_t> Word(const char* key, const std::vector<const char*>& words);
    /// A number or a list of them, at most `most`.
    std::vector<double> Numbers(const char* key, const NumberRange& range, std::size_t most);
    /// A list of tables, or a table by itself, at most `most`.
    std::vector<const toml::table*> Tables(const char* key, std::size_t most);

    /// A number as a value by itself.
    std::optional<double> NumberOf(const toml::node& node, const char* key, const NumberRange& range);
    void Error(LineNumber line, const char* key, std::string got, std::string expected, std::string advice = {});
    void Missing(const char* key, std::string expected);
    void Say(Severity severity, LineNumber line, const char* key, std::string text);
    /// Reports the keys that nobody asked for.
    void Finish();

private:
    std::string PathOf(const char* key) const;

    const toml::table& m_table;
    std::string m_path;
    std::vector<Defect>& m_defects;
    std::vector<const char*> m_asked;
};

/// What a node is, as messages quote it: "12", "\"x\"", "a list", "a table".
std::string GotOf(const toml::node& node);

} // namespace Keltrix::Host
