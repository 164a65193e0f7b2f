// Options that more than one command has.

#include "commandline/SharedOptions.h"

#include "check/DesignCodes.h"
#include "io/AnnexArgument.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

/// A terminal wider than this is a slip of the finger.
constexpr std::size_t WIDEST_WIDTH = 100000;

// A length in this range, which not-a-number is not.
CLI::Validator Between(double least, double most)
{
    const std::string range = Shortest(least) + " to " + Shortest(most);
    return {[=](const std::string& text) {
                double length = 0.0;
                const bool isInside = CLI::detail::lexical_cast(text, length) && length >= least && length <= most;
                return isInside ? std::string() : "got " + text + ", expected a length in m, " + range;
            },
            range};
}

CLI::Validator OneOf(const std::vector<Design::Term>& values)
{
    return {[&values](const std::string& text) {
                if (PlaceOf(values, text) > 0) return std::string();
                return "got \"" + PrintableLine(text) + "\", expected " + ListOf(values);
            },
            ""};
}

// The code and the annex that are asked for.
void Choose(const Shared& shared, CodeNeed need, CodeChoice& choice)
{
    const CodeArguments& asked = shared.asked;
    if (asked.code != shared.parsed.code || asked.annex != shared.parsed.annex ||
        asked.modules != shared.parsed.modules)
        throw BadUsage("--code, --annex and --module cannot be the value of another option");
    if (need == CodeNeed::WhenGiven && asked.code.empty() && asked.annex.empty()) return;
    if (need == CodeNeed::WhenThere && asked.code.empty() && DesignCodes().empty()) return;
    if (asked.code.empty() && !asked.modules.empty())
        throw BadUsage("--module: say which design code to use: --code " + ListOfCodes());
    choice.code = asked.code.empty() ? DefaultCode().code : &DesignCodeNamed(asked.code);
    if (!asked.annex.empty()) ChooseAnnex(asked.annex, choice);
}

} // namespace

void AddColour(CLI::App& command, Shared& shared)
{
    command.add_option("--color", shared.colour, "Colours: auto (on a terminal), always, never")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->capture_default_str();
    command.add_flag("--raw", shared.raw, "The report's mark-up as it is");
    command
        .add_option("--width", shared.width,
                    "Columns into which lines are broken, 40 or more; 0: not broken; without it the terminal's")
        ->check(CLI::IsMember(std::vector<int>{0}) | CLI::Range(NARROWEST_WIDTH, WIDEST_WIDTH))
        ->type_name("COLUMNS");
}

void AddFormat(CLI::App& command, Shared& shared, const std::vector<std::string>& formats)
{
    const std::string lines = formats.size() > 2 ? ", or jsonl: one line of JSON for each member" : "";
    command.add_option("--format", shared.format, "Output: table or json" + lines)
        ->check(CLI::IsMember(formats))
        ->capture_default_str();
}

void AddFiles(CLI::App& command, std::vector<std::string>& files)
{
    command.add_option("FILE", files, "Member files or beam files; - is standard input")->required();
}

void AddCodeOption(CLI::App& command, const Design::CodeOption& option, double& value)
{
    using Design::OptionKind;
    const std::string name = "--" + Utf8(option.name);
    const std::string meaning = Utf8(option.meaning);
    if (option.kind == OptionKind::Flag) {
        command.add_flag_callback(
            name, [&value] { value = 1.0; }, meaning);
    } else if (option.kind == OptionKind::Length) {
        command.add_option(name, value, meaning)->check(Between(option.least, option.most));
    } else {
        std::string names;
        for (const Design::Term& term : option.values)
            names += (names.empty() ? "" : "|") + Utf8(term.name);
        command
            .add_option_function<std::string>(
                name, [&](const std::string& text) { value = static_cast<double>(PlaceOf(option.values, text)); },
                meaning)
            ->type_name(names)
            ->check(OneOf(option.values));
    }
}

void AddMemberOptions(CLI::App& command, const Shared& shared, CodeChoice& choice)
{
    if (!shared.code) return;
    const auto& options = shared.code->Description().options;
    choice.settings.options.assign(options.size(), 0.0);
    for (std::size_t i = 0; i < options.size(); ++i) {
        try {
            AddCodeOption(command, options[i], choice.settings.options[i]);
        } catch (const CLI::OptionAlreadyAdded&) {
            throw BadInput("design code " + Utf8(shared.code->Description().id) + ": the option --" +
                           Utf8(options[i].name) + " is there already");
        }
    }
}

void AddCode(CLI::App& command, Shared& shared, CodeNeed need, CodeChoice& choice, const std::string& meaning)
{
    CLI::Option* const code = command.add_option("--code", shared.parsed.code, meaning + ": " + ListOfCodes());
    code->type_name("NAME");
    if (need != CodeNeed::WhenGiven && shared.code) code->default_str(Utf8(shared.code->Description().id));
    command
        .add_option("--annex", shared.parsed.annex,
                    "National annex of the design code, or a file of national choices (.toml)")
        ->type_name("NAME|FILE");
    shared.choose[&command] = [&shared, need, &choice] { Choose(shared, need, choice); };
}

} // namespace Keltrix::App
