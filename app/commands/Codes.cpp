#include "check/CodesJson.h"
#include "commands/CodeCommands.h"
#include "text/Json.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

std::string RangeText(const Design::CodeOption& option)
{
    return Shortest(option.least).append(" to ").append(Shortest(option.most)).append(" m");
}

// What follows the option's name on the command line.
std::string ValueText(const Design::CodeOption& option)
{
    if (option.kind == Design::OptionKind::Length) return " M";
    std::string text;
    for (const Design::Term& value : option.values)
        text.append(text.empty() ? " " : "|").append(Utf8(value.name));
    return text;
}

std::string TermLines(const std::vector<Design::Term>& terms)
{
    std::string text;
    for (const Design::Term& term : terms) {
        text.append("\t").append(AsText(Utf8(term.name)));
        text.append("\t").append(AsText(Utf8(term.meaning))).append("\n");
    }
    return text;
}

std::string OptionLines(const std::vector<Design::CodeOption>& options)
{
    std::string text;
    for (const Design::CodeOption& option : options) {
        text.append("\t--").append(AsText(Utf8(option.name) + ValueText(option)));
        text.append("\t").append(AsText(Utf8(option.meaning)));
        if (option.kind == Design::OptionKind::Length) text.append(", ").append(RangeText(option));
        text.append("\n");
    }
    return text;
}

std::string Part(const char* title, const std::string& lines)
{
    return "<h5>" + std::string(title) + "</h5>\n" + (lines.empty() ? "\tnone\n" : lines);
}

std::string Markup(const Design::CodeDescription& d, bool isDefault)
{
    std::string text = "<h4>" + Utf8(d.id) + ": " + AsText(Utf8(d.title));
    if (const std::string edition = Utf8(d.edition); !edition.empty()) text += ", " + AsText(edition);
    text += isDefault ? " (default)</h4>\n" : "</h4>\n";
    text += AsText(Utf8(d.scope)) + "\n";
    return text + Part("Sections", TermLines(d.families)) + Part("Grades", TermLines(d.grades)) +
           Part("National annexes", TermLines(d.annexes)) + Part("Options", OptionLines(d.options));
}

} // namespace

ExitCode ListCodes(const CodesOptions& options, const Console& console)
{
    if (options.format == Format::JSON) {
        console.out(JsonText(CodesJson()));
        return EXIT_FINE;
    }
    std::string text;
    for (const Design::DesignCode* code : DesignCodes())
        text += Markup(code->Description(), code == DesignCodes().front());
    if (text.empty()) text = "no design code is built in\n";
    console.out(RenderMarkup(text, options.rendering));
    return EXIT_FINE;
}

} // namespace Keltrix::App
