#include <algorithm>

#include "beamfile/BeamReader.h"
#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

using Statics::CombinationStandard;
using Statics::LimitState;

constexpr std::size_t MOST_RULES = 200;
constexpr NumberRange FACTOR{-100.0, 100.0, "a factor, -100 to 100, or [unfavourable, favourable]"};

// As long as the names live.
std::vector<const char*> WordsOf(const std::vector<std::string>& names)
{
    std::vector<const char*> words;
    words.reserve(names.size());
    for (const std::string& name : names)
        words.push_back(name.c_str());
    return words;
}

class CombinationReader {
public:
    CombinationReader(TomlKeys& keys, BeamFile& file) : m_keys(keys), m_file(file) {}

    void Read()
    {
        const std::vector<std::string> names = CombinationNames();
        const std::vector<const char*> words = WordsOf(names);
        m_file.combinationsLine = m_keys.LineOf(m_keys.Has("combinations") ? "combinations" : "combination");
        const std::optional<std::size_t> place = m_keys.Word("combinations", words);
        if (place) m_file.standard = &Statics::CombinationStandards()[*place];
        for (const toml::table* table : m_keys.Tables("combination", MOST_RULES))
            ReadOne(*table);
    }

private:
    void ReadOne(const toml::table& table)
    {
        TomlKeys keys(table, "combination", m_file.defects);
        Statics::CombinationRule rule;
        const std::optional<std::string> name = keys.Text("name", "the name of a combination");
        if (!keys.Has("name")) keys.Missing("name", "the name of a combination");
        const std::optional<std::size_t> state =
            keys.Word("state", {"ultimate", "serviceability", "characteristic", "frequent", "quasi-permanent"});
        rule.name = Wide(name.value_or(std::string()));
        rule.clause = L"the beam file";
        rule.state = static_cast<LimitState>(state.value_or(0));
        const toml::node* const factors = keys.Find("factors");
        if (!factors || !factors->is_table()) {
            keys.Error(keys.LineOf("factors"), "factors", factors ? GotOf(*factors) : "nothing",
                       "{ Dead = [1.35, 1.0], Imposed = 1.5 }, the names being those of cases");
        } else {
            ReadFactors(*factors->as_table(), rule);
        }
        keys.Finish();
        m_file.own.push_back(std::move(rule));
    }

    void ReadFactors(const toml::table& table, Statics::CombinationRule& rule)
    {
        TomlKeys keys(table, "combination.factors", m_file.defects);
        for (const auto& [key, node] : table) {
            const std::string name(key.str());
            const auto& cases = m_file.beam.cases;
            const auto at = std::find_if(cases.begin(), cases.end(), [&](const Statics::Case& one) {
                return SameWord(one.name.View(), Wide(name).View());
            });
            if (at == cases.end()) {
                keys.Error(TomlKeys::LineOf(node), "", "the case " + Quote(Wide(name).View()), "one of " + CaseList());
                continue;
            }
            AddTerm(keys, node, name.c_str(), static_cast<std::size_t>(at - cases.begin()), rule);
        }
        if (table.empty()) keys.Error(keys.Line(), "", "no factor", "factors of cases");
    }

    void AddTerm(TomlKeys& keys, const toml::node& node, const char* name, std::size_t place,
                 Statics::CombinationRule& rule) const
    {
        const auto isTwice = [&](const Statics::RuleTerm& known) { return known.caseIndex == place; };
        if (std::any_of(rule.terms.begin(), rule.terms.end(), isTwice))
            return keys.Error(TomlKeys::LineOf(node), name, "a second factor of the case", "one");
        Statics::RuleTerm term;
        term.caseIndex = place;
        term.source = L"the beam file";
        if (const toml::array* const pair = node.as_array()) {
            if (pair->size() != 2)
                return keys.Error(TomlKeys::LineOf(node), name, "a list of " + std::to_string(pair->size()),
                                  FACTOR.expected);
            term.unfavourable = keys.NumberOf((*pair)[0], name, FACTOR).value_or(0.0);
            term.favourable = keys.NumberOf((*pair)[1], name, FACTOR).value_or(0.0);
            if (term.favourable > term.unfavourable)
                keys.Error(TomlKeys::LineOf(node), name, "the larger factor second", FACTOR.expected);
        } else {
            term.unfavourable = keys.NumberOf(node, name, FACTOR).value_or(0.0);
            // Spans that a case may leave unloaded have nothing of it.
            term.favourable = m_file.beam.cases[place].bySpan ? 0.0 : term.unfavourable;
        }
        rule.terms.push_back(term);
    }

    std::string CaseList() const
    {
        std::string list;
        for (const Statics::Case& one : m_file.beam.cases)
            list += (list.empty() ? "" : ", ") + Utf8(one.name);
        return list.empty() ? "no case, as the file has none" : list;
    }

    TomlKeys& m_keys;
    BeamFile& m_file;
};

} // namespace

const CombinationStandard* StandardNamed(std::wstring_view name)
{
    for (const CombinationStandard& standard : Statics::CombinationStandards())
        if (SameWord(name, standard.name)) return &standard;
    return nullptr;
}

std::vector<std::string> CombinationNames()
{
    std::vector<std::string> names;
    names.reserve(Statics::CombinationStandards().size());
    for (const CombinationStandard& standard : Statics::CombinationStandards())
        names.push_back(Utf8(standard.name));
    return names;
}

std::string StandardWords() { return InWords(WordsOf(CombinationNames())); }

void ReadCombinations(TomlKeys& keys, BeamFile& file) { CombinationReader(keys, file).Read(); }

} // namespace Keltrix::Host
