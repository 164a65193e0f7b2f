#include "check/DesignCodes.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <system_error>

#include "keltrix/platform/NumberText.h"
#include "text/BadInput.h"
#include "text/Text.h"
#ifdef KELTRIX_HOST_WITH_BS5950
#include "keltrix/bs5950/DesignCode.h"
#endif
#ifdef KELTRIX_HOST_WITH_EC3
#include "keltrix/ec3/DesignCode.h"
#endif

namespace Keltrix::Host {

namespace {

std::vector<const Design::DesignCode*>& Codes()
{
    // The design codes that are built in, the default first. No other source of the program names one.
    static std::vector<const Design::DesignCode*> codes{
#ifdef KELTRIX_HOST_WITH_BS5950
        &BS5950::Code(),
#endif
#ifdef KELTRIX_HOST_WITH_EC3
        &EC3::Code(),
#endif
    };
    return codes;
}

std::string IdOf(const Design::DesignCode& code) { return Utf8(code.Description().id); }

bool IsCalled(const wchar_t* name, const std::string& wanted)
{
    return CString(name).CompareNoCase(Wide(wanted).GetString()) == 0;
}

// "a", "a or b", "a, b or c".
std::string Alternatives(const std::vector<std::string>& names)
{
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "" : i + 1 < names.size() ? ", " : " or ") + names[i];
    return text;
}

void RequireAny()
{
    if (Codes().empty()) throw BadInput("no design code is built in; --module FILE loads one");
}

// One word of small letters, digits and hyphens.
bool IsWord(std::wstring_view text)
{
    return !text.empty() && text.front() != L'-' && std::all_of(text.begin(), text.end(), [](wchar_t c) {
        return (c >= L'a' && c <= L'z') || (c >= L'0' && c <= L'9') || c == L'-';
    });
}

// A value as CodeSettings has it. Throws BadInput for one that means nothing.
double OptionValue(const Design::CodeOption& option, const std::string& text)
{
    const std::string got = "option " + Utf8(option.name) + ": got \"" + PrintableLine(text) + "\", expected ";
    if (option.kind == Design::OptionKind::Flag) {
        if (!text.empty()) throw BadInput(got + "no value: it is a flag");
        return 1.0;
    }
    if (option.kind == Design::OptionKind::Choice) {
        const std::size_t place = PlaceOf(option.values, text);
        if (place == 0) throw BadInput(got + ListOf(option.values));
        return static_cast<double>(place);
    }
    double length = 0.0;
    const auto [end, error] = ReadNumber(text.data(), text.data() + text.size(), length);
    if (error != std::errc() || end != text.data() + text.size() || !(length >= option.least && length <= option.most))
        throw BadInput(got + "a length in m, " + Shortest(option.least) + " to " + Shortest(option.most));
    return length;
}

const char* FaultOf(const Design::CodeOption& option)
{
    if (!IsWord(option.name)) return "an option's name is no word of small letters, digits and hyphens";
    if (option.kind == Design::OptionKind::Choice && option.values.empty()) return "an option to choose has no values";
    if (option.kind == Design::OptionKind::Length && !(option.least < option.most)) return "a length has no range";
    return nullptr;
}

// What keeps a description from being used; null where nothing does.
const char* FaultOf(const Design::CodeDescription& description)
{
    if (!IsWord(description.id)) return "its id is no word of small letters, digits and hyphens";
    if (std::wstring_view(description.title).empty()) return "it has no title";
    if (description.grades.empty()) return "it has no grades";
    for (const Design::CodeOption& option : description.options)
        if (const char* const fault = FaultOf(option)) return fault;
    return nullptr;
}

} // namespace

const std::vector<const Design::DesignCode*>& DesignCodes() { return Codes(); }

void AddDesignCode(const Design::DesignCode& code, const std::string& from)
{
    if (const char* const fault = FaultOf(code.Description()))
        throw BadInput(from + ": the design code cannot be used: " + fault);
    for (const Design::DesignCode* known : Codes())
        if (IsCalled(known->Description().id, IdOf(code)))
            throw BadInput(from + ": there is a design code " + IdOf(code) + " already");
    Codes().push_back(&code);
}

std::string ListOfCodes()
{
    std::vector<std::string> names;
    names.reserve(Codes().size());
    for (const Design::DesignCode* code : Codes())
        names.push_back(IdOf(*code));
    return Alternatives(names);
}

const Design::DesignCode& DesignCodeNamed(const std::string& name, const std::string& subject)
{
    for (const Design::DesignCode* code : Codes())
        if (IsCalled(code->Description().id, name)) return *code;
    RequireAny();
    throw BadInput(subject + ": got \"" + PrintableLine(name) + "\", expected " + ListOfCodes());
}

std::size_t AnnexNamed(const Design::DesignCode& code, const std::string& name, const std::string& subject)
{
    const std::vector<Design::Term>& annexes = code.Description().annexes;
    for (std::size_t i = 0; i < annexes.size(); ++i)
        if (IsCalled(annexes[i].name, name)) return i;
    throw BadInput(
        subject + ": got \"" + PrintableLine(name) + "\", expected " +
        (annexes.empty() ? "none: " + Utf8(code.Description().title) + " has no national annexes" : ListOf(annexes)));
}

bool IsGradeOfAnyCode(const std::string& name)
{
    return Codes().empty() || std::any_of(Codes().begin(), Codes().end(), [&](const Design::DesignCode* code) {
               return code->HasGrade(Wide(name)) && !code->IsUserGrade(CSteelGrade(Wide(name), 0.0, 0.0, 0.0, 1.0));
           });
}

std::string GradesOfAllCodes()
{
    std::string grades;
    for (const Design::DesignCode* const code : Codes())
        for (const Design::Term& grade : code->Description().grades) {
            const std::string name = Utf8(grade.name);
            const bool isUsers = code->IsUserGrade(CSteelGrade(grade.name, 0.0, 0.0, 0.0, 1.0));
            if (!isUsers && grades.find(name) == std::string::npos) grades += (grades.empty() ? "" : ", ") + name;
        }
    return grades;
}

std::string AnnexOf(const CodeChoice& choice)
{
    if (!choice.settings.annexTitle.IsEmpty()) return Utf8(choice.settings.annexTitle);
    const std::vector<Design::Term>& annexes = choice.code->Description().annexes;
    return choice.settings.annex < annexes.size() ? Utf8(annexes[choice.settings.annex].name) : std::string();
}

std::string ListOf(const std::vector<Design::Term>& terms)
{
    std::vector<std::string> names;
    names.reserve(terms.size());
    for (const Design::Term& term : terms)
        names.push_back(Utf8(term.name));
    return Alternatives(names);
}

std::size_t PlaceOf(const std::vector<Design::Term>& values, const std::string& name)
{
    for (std::size_t i = 0; i < values.size(); ++i)
        if (CString(values[i].name) == Wide(name)) return i + 1;
    return 0;
}

void SetOption(const Design::DesignCode& code, const std::string& name, const std::string& value,
               Design::CodeSettings& settings)
{
    const std::vector<Design::CodeOption>& options = code.Description().options;
    const auto option = std::find_if(options.begin(), options.end(),
                                     [&](const Design::CodeOption& one) { return CString(one.name) == Wide(name); });
    if (option == options.end()) {
        std::vector<std::string> names;
        names.reserve(options.size());
        for (const Design::CodeOption& one : options)
            names.push_back(Utf8(one.name));
        throw BadInput("option \"" + PrintableLine(name) + "\" of " + IdOf(code) + ": expected " +
                       (names.empty() ? "none" : Alternatives(names)));
    }
    settings.options.resize(options.size(), 0.0);
    settings.options[static_cast<std::size_t>(option - options.begin())] = OptionValue(*option, value);
}

CodeChoice ChooseCode(const std::string& code, const std::string& annex,
                      const std::vector<std::pair<std::string, std::string>>& options)
{
    CodeChoice choice;
    choice.code = code.empty() ? DefaultCode().code : &DesignCodeNamed(code, "design code");
    if (!annex.empty()) choice.settings.annex = AnnexNamed(*choice.code, annex, "national annex");
    std::set<std::string_view> given;
    for (const auto& [name, value] : options) {
        SetOption(*choice.code, name, value, choice.settings);
        if (!given.insert(name).second) throw BadInput("option " + name + ": is given twice");
    }
    return choice;
}

CodeChoice DefaultCode()
{
    RequireAny();
    return {Codes().front(), {}};
}

} // namespace Keltrix::Host
