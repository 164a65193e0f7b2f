#include "check/AnnexFile.h"

#include <cmath>
#include <limits>

#include "beamfile/BeamReader.h"
#include "beamfile/SafeToml.h"
#include "beamfile/TomlKeys.h"
#include "text/BadInput.h"
#include "text/SourceText.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

std::string Rounded15(double value) { return value >= 1e8 ? std::string("any number") : Shortest(value); }

// Texts that TomlKeys keeps by their addresses.
struct ChoiceTexts {
    std::string key;
    std::string expected;
    std::vector<std::string> words;
};

class AnnexReader {
public:
    AnnexReader(const toml::table& table, CodeChoice& choice, std::vector<Defect>& defects) :
        m_choice(choice), m_defects(defects), m_keys(table, {}, defects)
    {}

    void Read()
    {
        ReadBase();
        const auto title = m_keys.Text("title");
        if (!title) {
            if (!m_keys.Has("title")) m_keys.Missing("title", "a text by which reports call these choices");
        } else {
            m_choice.settings.annexTitle = Wide(*title);
        }
        if (const auto standard = m_keys.Text("combinations", "a standard of combinations")) {
            if (const Statics::CombinationStandard* const found = StandardNamed(Wide(*standard).View()))
                m_choice.settings.annexCombinations = found->name;
            else
                m_keys.Error(m_keys.LineOf("combinations"), "combinations", Quote(Wide(*standard).View()),
                             StandardWords());
        }
        ReadChoices();
        m_keys.Finish();
        for (Defect& defect : m_defects)
            defect.code = "annex-file";
    }

private:
    void ReadBase()
    {
        const std::vector<Design::Term>& annexes = m_choice.code->Description().annexes;
        std::vector<std::string> names;
        names.reserve(annexes.size());
        for (const Design::Term& annex : annexes)
            names.push_back(Utf8(annex.name));
        std::vector<const char*> words;
        words.reserve(names.size());
        for (const std::string& name : names)
            words.push_back(name.c_str());
        if (const auto place = m_keys.Word("base", words))
            m_choice.settings.annex = *place;
        else if (!m_keys.Has("base"))
            m_keys.Missing("base", InWords(words) + ", the choices that hold where the file makes none");
    }

    void ReadChoices()
    {
        const std::vector<Design::NationalChoice>& choices = m_choice.code->Description().nationalChoices;
        m_texts.reserve(choices.size());
        m_choice.settings.nationalChoices.assign(choices.size(), std::numeric_limits<double>::quiet_NaN());
        for (std::size_t i = 0; i < choices.size(); ++i)
            if (const auto value = ReadChoice(choices[i])) m_choice.settings.nationalChoices[i] = *value;
    }

    std::optional<double> ReadChoice(const Design::NationalChoice& choice)
    {
        ChoiceTexts& texts = m_texts.emplace_back();
        texts.key = Utf8(choice.key);
        if (choice.values.empty()) {
            texts.expected = Utf8(choice.meaning) + " (" + Utf8(choice.clause) + "), " + Shortest(choice.least) +
                             " to " + Rounded15(choice.most);
            return m_keys.Number(texts.key.c_str(), {choice.least, choice.most, texts.expected.c_str()});
        }
        texts.words.reserve(choice.values.size());
        std::vector<const char*> words;
        words.reserve(choice.values.size());
        for (const Design::Term& term : choice.values) {
            texts.words.push_back(Utf8(term.name));
            words.push_back(texts.words.back().c_str());
        }
        const auto place = m_keys.Word(texts.key.c_str(), words);
        return place ? std::optional(static_cast<double>(*place + 1)) : std::nullopt;
    }

    CodeChoice& m_choice;
    std::vector<Defect>& m_defects;
    TomlKeys m_keys;
    std::vector<ChoiceTexts> m_texts;
};

} // namespace

void ReadAnnexFile(const std::string& name, std::string_view bytes, CodeChoice& choice)
{
    constexpr std::size_t largest = 100000;
    if (choice.code->Description().nationalChoices.empty())
        throw BadInput(name + ": " + Utf8(choice.code->Description().title) + " takes no file of national choices");
    if (bytes.size() > largest) throw BadInput(name + ": larger than 100 kB: no file of national choices");
    DecodeText(name, bytes); // for its messages
    const SafeToml toml = ReadSafeToml(bytes);
    if (!toml.fault.empty()) throw BadInput(name + ':' + std::to_string(toml.line) + ": " + toml.fault);
    std::vector<Defect> defects;
    AnnexReader(toml.root, choice, defects).Read();
    std::string text;
    for (const Defect& defect : defects)
        text += (text.empty() ? "" : "\n") + name + ':' + std::to_string(defect.line) + ": " + defect.Statement();
    if (!text.empty()) throw BadInput(text);
}

} // namespace Keltrix::Host
