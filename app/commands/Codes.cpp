#include "commands/CodeCommands.h"
#include "text/Json.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

const char* KindName(Design::OptionKind kind)
{
    switch (kind) {
    case Design::OptionKind::Choice:
        return "choice";
    case Design::OptionKind::Length:
        return "length";
    default:
        return "flag";
    }
}

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

Json JsonOf(const std::vector<Design::Term>& terms)
{
    Json list = Json::array();
    for (const Design::Term& term : terms)
        list.push_back({{"name", Utf8(term.name)}, {"meaning", Utf8(term.meaning)}});
    return list;
}

Json JsonOf(const Design::CodeOption& option)
{
    const bool isLength = option.kind == Design::OptionKind::Length;
    return {{"name", Utf8(option.name)},
            {"kind", KindName(option.kind)},
            {"meaning", Utf8(option.meaning)},
            {"values", JsonOf(option.values)},
            {"least", isLength ? Json(option.least) : Json()},
            {"most", isLength ? Json(option.most) : Json()}};
}

Json JsonOf(const Design::CodeDescription& d, bool isDefault)
{
    Json options = Json::array();
    for (const Design::CodeOption& option : d.options)
        options.push_back(JsonOf(option));
    return {{"schema", JSON_SCHEMA},          {"id", Utf8(d.id)},           {"title", Utf8(d.title)},
            {"edition", Utf8(d.edition)},     {"default", isDefault},       {"scope", Utf8(d.scope)},
            {"families", JsonOf(d.families)}, {"grades", JsonOf(d.grades)}, {"annexes", JsonOf(d.annexes)},
            {"options", std::move(options)}};
}

} // namespace

ExitCode ListCodes(const CodesOptions& options, const Console& console)
{
    Json list = Json::array();
    std::string text;
    for (const Design::DesignCode* code : DesignCodes()) {
        const bool isDefault = code == DesignCodes().front();
        if (options.format == Format::JSON)
            list.push_back(JsonOf(code->Description(), isDefault));
        else
            text += Markup(code->Description(), isDefault);
    }
    if (text.empty()) text = "no design code is built in\n";
    console.out(options.format == Format::JSON ? JsonText(list) : RenderMarkup(text, options.rendering));
    return EXIT_FINE;
}

} // namespace Keltrix::App
