#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>

#include "check/FindingsJson.h"
#include "check/TopicSummary.h"
#include "commands/CheckFindings.h"
#include "io/AnnexArgument.h"
#include "report/MemberReport.h"
#include "text/Json.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

using Design::CheckStatus;
using Design::Topic;

// What one design code says of a member, or why it does not take it.
struct Opinion {
    std::optional<CheckedMember> checked;
    Refusal refusal;
};

std::string TitleOf(const CodeChoice& choice)
{
    const Design::CodeDescription& d = choice.code->Description();
    std::string title = Utf8(d.title);
    if (!d.annexes.empty()) title += " (" + AnnexOf(choice) + ')';
    return title;
}

// "ec3", or "ec3:recommended" with its national annex.
CodeChoice ChoiceNamed(const std::string& text)
{
    const std::size_t colon = text.find(':');
    CodeChoice choice;
    choice.code = &DesignCodeNamed(text.substr(0, colon));
    if (colon != std::string::npos) ChooseAnnex(text.substr(colon + 1), choice, "--code " + text.substr(0, colon));
    return choice;
}

std::vector<CodeChoice> ChoicesOf(const CompareOptions& options)
{
    std::vector<CodeChoice> choices;
    for (const std::string& text : options.codes)
        choices.push_back(ChoiceNamed(text));
    if (options.codes.empty())
        for (const Design::DesignCode* const code : DesignCodes())
            choices.push_back({code, {}});
    if (choices.size() < 2)
        throw BadUsage("compare: two design codes at least: --code NAME[:ANNEX] --code NAME[:ANNEX]");
    return choices;
}

// The members of a file as one design code has them, in their order. A message that every code gives is told once.
std::vector<Opinion> OpinionsOn(const std::string& file, const CompareOptions& options, const CodeChoice& choice,
                                const Console& console, std::set<std::string>& told, ExitCode& worst)
{
    std::vector<Opinion> opinions;
    const Console once{console.in,
                       {},
                       [&](std::string_view message) {
                           if (told.emplace(message).second) console.err(message);
                       },
                       {}};
    const auto keep = [&](CheckedMember checked) {
        for (const MemberWarning& warning : checked.CheckWarnings())
            once.err(TitleOf(choice) + ": " + warning.Message());
        const ExitCode code = checked.Status() == "pass" ? EXIT_FINE : EXIT_MEMBER_FAILS;
        opinions.push_back({std::move(checked), {}});
        return code;
    };
    MemberStream stream({file}, options.reading, once, BeamReading::Whole, choice);
    while (auto member = stream.Next()) {
        stream.Use(*member, [&] { return keep(CheckOne(*member, choice, false)); });
        if (member->refusal) opinions.push_back({{}, *member->refusal});
    }
    worst = Worse(worst, stream.Worst());
    return opinions;
}

// --- The table ---

// What a code says of a topic: its largest utilisation with the clause, and whether a rule of it is open. Empty where nothing applies.
std::string TopicCell(const CheckedMember& checked, Topic topic)
{
    const TopicSummary summary = SummaryOf(checked, topic);
    std::string text;
    if (summary.worst) {
        text = UtilisationText(summary.worst->utilisation) + " (" + AsText(Utf8(summary.worst->clause)) + ')';
        if (summary.worst->status == CheckStatus::Failed) text = "<red>" + text + "</red>";
    }
    if (summary.isOpen) text += std::string(text.empty() ? "" : ", ") + "<red>not evaluated</red>";
    return text;
}

using Cell = std::string (*)(const CheckedMember&);
struct HeadRow {
    const char* name;
    Cell cell;
};

std::string StrengthCell(const CheckedMember& checked)
{
    const Design::Resistance& strength = checked.findings.designStrength;
    return Utf8(strength.symbol) + " = " + Utf8(QuantityText(strength.quantity, strength.value, CDesFormat()));
}

const HeadRow HEAD[] = {
    {"Status", [](const CheckedMember& c) { return StatusMarkup(c.Status(), c.warnings); }},
    {"Utilisation", [](const CheckedMember& c) { return "<b>" + UtilisationText(c.Utilisation()) + "</b>"; }},
    {"Governed by", [](const CheckedMember& c) { return c.Governing(); }},
    {"Design strength", StrengthCell},
    {"Class", [](const CheckedMember& c) { return std::to_string(c.member->SectionClass()); }},
};

// A line of the table; nothing where no code has anything to say.
std::string Line(const std::string& name, const std::vector<const Opinion*>& opinions,
                 const std::function<std::string(const CheckedMember&)>& cell)
{
    std::string line = name;
    bool isEmpty = true;
    for (const Opinion* const opinion : opinions) {
        const std::string text = opinion->checked ? cell(*opinion->checked) : std::string();
        isEmpty = isEmpty && text.empty();
        line += '\t' + (text.empty() ? "-" : text);
    }
    return isEmpty ? "" : line + '\n';
}

std::string RefusalText(const std::vector<const Opinion*>& opinions, const std::vector<CodeChoice>& choices)
{
    std::string text;
    for (std::size_t i = 0; i < opinions.size(); ++i)
        for (const std::string& reason : opinions[i]->refusal.reasons)
            text += "<red>" + AsText(TitleOf(choices[i])) + ": " + AsText(PrintableLine(reason)) + "</red>\n";
    return text;
}

std::string TableOf(const std::vector<const Opinion*>& opinions, const std::vector<CodeChoice>& choices)
{
    const auto known =
        std::find_if(opinions.begin(), opinions.end(), [](const Opinion* o) { return o->checked.has_value(); });
    if (known == opinions.end())
        return "<h4>" + AsText(PrintableLine(opinions.front()->refusal.title)) + "</h4>\n" +
               RefusalText(opinions, choices);
    const CheckedMember& first = *(*known)->checked;
    std::string text =
        "<h4>" + AsText(first.title) + "</h4>\n" + first.Section() + " in " + first.Grade() + "\n<table><align left>";
    for (const CodeChoice& choice : choices)
        text += '\t' + AsText(TitleOf(choice));
    text += '\n';
    for (const HeadRow& row : HEAD)
        text += Line(row.name, opinions, row.cell);
    for (const Topic topic : TopicsInOrder())
        text += Line(Utf8(Design::TopicName(topic)), opinions,
                     [topic](const CheckedMember& c) { return TopicCell(c, topic); });
    return text + "</table>\n" + RefusalText(opinions, choices);
}

Json JsonOfOpinion(const Opinion& opinion, const CodeChoice& choice)
{
    if (opinion.checked) return JsonOf(*opinion.checked);
    return JsonObject("code", Utf8(choice.code->Description().id), "status", "refused", "errors",
                      opinion.refusal.reasons);
}

Json JsonOfMember(const std::string& file, const std::vector<const Opinion*>& opinions,
                  const std::vector<CodeChoice>& choices)
{
    std::string title;
    Json codes = Json::array();
    for (std::size_t i = 0; i < opinions.size(); ++i) {
        codes.push_back(JsonOfOpinion(*opinions[i], choices[i]));
        if (title.empty()) title = opinions[i]->checked ? opinions[i]->checked->title : opinions[i]->refusal.title;
    }
    return JsonObject("schema", JSON_SCHEMA, "file", file, "title", title, "codes", std::move(codes));
}

} // namespace

ExitCode Compare(const CompareOptions& options, const Console& console)
{
    const std::vector<CodeChoice> choices = ChoicesOf(options);
    for (const std::string& file : options.files) {
        std::error_code ignored;
        const std::filesystem::path path(file);
        if (file == "-" || (std::filesystem::exists(path, ignored) && !std::filesystem::is_regular_file(path, ignored)))
            throw BadUsage("compare: " + PrintableLine(file) +
                           ": files are read once for each design code, which streams cannot be");
    }
    ExitCode worst = EXIT_FINE;
    std::set<std::string> told;
    Json list = Json::array();
    for (const std::string& file : options.files) {
        std::vector<std::vector<Opinion>> columns;
        columns.reserve(choices.size());
        for (const CodeChoice& choice : choices)
            columns.push_back(OpinionsOn(file, options, choice, console, told, worst));
        for (const auto& column : columns)
            if (column.size() != columns.front().size()) throw BadInput(file + ": changed while it was compared");
        for (std::size_t i = 0; i < columns.front().size(); ++i) {
            std::vector<const Opinion*> opinions;
            opinions.reserve(columns.size());
            for (const auto& column : columns)
                opinions.push_back(&column[i]);
            if (options.format == Format::TABLE)
                console.out(RenderMarkup(TableOf(opinions, choices), options.rendering));
            else
                list.push_back(JsonOfMember(file, opinions, choices));
        }
    }
    if (options.format == Format::JSON) console.out(JsonText(list));
    return worst;
}

} // namespace Keltrix::App
