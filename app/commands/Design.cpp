#include <algorithm>
#include <utility>

#include "check/SectionChoice.h"
#include "commands/CheckFindings.h"
#include "text/Json.h"
#include "text/Markup.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

bool ShowsDepth(const DesignOptions& options) { return options.by == "depth" || options.maxDepth; }

std::string RowText(const Candidate& candidate, const DesignOptions& options)
{
    const std::string verdict = candidate.status == "pass" ? candidate.status : "<red>" + candidate.status + "</red>";
    return candidate.name + '\t' + Rounded(candidate.entry->massPerMetre, 4) + '\t' +
           (ShowsDepth(options) ? Rounded(candidate.entry->depth * 1e3, 4) + '\t' : "") +
           Utf8(CDesFormat().Util(candidate.utilisation)) + '\t' + verdict + '\t' + AsText(candidate.governing) + '\n';
}

std::string NothingText(const DesignOptions& options, const SectionChoice& choice)
{
    const std::string of = options.families.size() > 1 ? "families" : "family";
    if (choice.isEmpty) return "no section of the " + of + " is within the depth";
    return "no section of the " + of + (options.maxDepth ? " within the depth passes" : " passes");
}

// Each reason once, with the first of its sections and their number.
std::string UncheckedText(const SectionChoice& choice)
{
    std::vector<std::pair<std::string, std::vector<std::string>>> reasons;
    for (const Candidate& one : choice.unchecked) {
        auto at = std::find_if(reasons.begin(), reasons.end(),
                               [&](const auto& known) { return known.first == one.governing; });
        if (at == reasons.end()) at = reasons.insert(reasons.end(), {one.governing, {}});
        at->second.push_back(one.name);
    }
    std::string text;
    for (const auto& [reason, names] : reasons)
        text += "<orange>not checked: " + names.front() +
                (names.size() > 1 ? " and " + std::to_string(names.size() - 1) + " more" : "") + ": " + AsText(reason) +
                "</orange>\n";
    return text;
}

std::string Markup(const std::string& title, const SectionChoice& choice, const std::vector<MemberWarning>& warnings,
                   const DesignOptions& options)
{
    std::string text = "<h4>" + AsText(title) + "</h4>\n" + WarningMarkup(warnings);
    text += choice.passing.empty()
                ? "<red>" + NothingText(options, choice) + "</red>\n"
                : "<b>" + choice.passing.front().name + "</b> is the " +
                      (options.by == "depth" ? "shallowest" : "lightest") + " section that passes" +
                      (warnings.empty() ? "" : ", <orange>" + CountText(warnings) + "</orange>") + "\n";
    text += UncheckedText(choice);
    if (choice.failing.empty() && choice.passing.empty()) return text;
    text += std::string("<table>Section\tkg/m\t") + (ShowsDepth(options) ? "mm\t" : "") +
            "Utilisation\tVerdict\tGoverning\n";
    for (const Candidate& candidate : choice.failing)
        text += RowText(candidate, options);
    for (const Candidate& candidate : choice.passing)
        text += RowText(candidate, options);
    return text + "</table>\n";
}

// What becomes of the members: shown one by one, or as load cases of one.
class DesignOutput {
public:
    DesignOutput(const DesignOptions& options, const Console& console) : m_options(options), m_console(console) {}

    ExitCode Show(const SectionChoice& choice, const ChoiceHead& head)
    {
        if (m_options.format == Format::JSON)
            m_members.push_back(JsonOf(choice, m_options.by, head));
        else
            m_console.out(RenderMarkup(Markup(head.title, choice, head.warnings, m_options), m_options.rendering));
        return choice.passing.empty() ? EXIT_MEMBER_FAILS : EXIT_FINE;
    }

    void Finish() const
    {
        if (m_options.format == Format::JSON) m_console.out(JsonText(m_members));
    }

private:
    const DesignOptions& m_options;
    const Console& m_console;
    Json m_members = Json::array();
};

ExitCode DesignOne(const StreamMember& member, const DesignOptions& options, DesignOutput& output)
{
#ifdef KELTRIX_HOST_WITH_STATICS
    if (member.beam) {
        // Its own weight, deflections and messages of the check are those of the section that is offered.
        const Beam& beam = *member.beam;
        const SectionChoice choice = ChooseSection(beam, options);
        return output.Show(choice, {beam.file.name, 1, beam.file.title,
                                    choice.passing.empty() ? WarningsOf(beam) : choice.passing.front().warnings});
    }
#endif
    const MemberFile& file = *member.file;
    const MemberText& text = file.Member(member.place);
    return output.Show(ChooseSection(file, member.place, options),
                       {file.Name(), text.firstLine, Utf8(text.title), file.WarningsOf(member.place)});
}

ExitCode DesignEach(const DesignOptions& options, const Console& console, DesignOutput& output)
{
    MemberStream stream(options.files, options.reading, console, BeamReading::Whole, options.code);
    while (auto member = stream.Next())
        stream.Use(*member, [&] { return DesignOne(*member, options, output); });
    return stream.Worst();
}

ExitCode DesignEnvelope(const DesignOptions& options, const Console& console, DesignOutput& output)
{
    std::vector<CheckedMember> cases;
    std::vector<MemberWarning> warnings;
    MemberStream stream(options.files, options.reading, console, BeamReading::Whole, options.code);
    while (auto member = stream.Next()) {
        if (member->beam)
            throw BadUsage("--envelope: takes member files; a beam file has all combinations of its member already");
        stream.Use(*member, [&] {
            cases.push_back(CheckOne(*member, options.code, false));
            RequireLoadCase(cases.front(), cases.back());
            const std::vector<MemberWarning> more = member->file->WarningsOf(member->place);
            warnings.insert(warnings.end(), more.begin(), more.end());
            return EXIT_FINE;
        });
    }
    const ExitCode code = stream.Worst();
    // A case that is missing could be the one that governs.
    if (code == EXIT_BAD_INPUT || cases.empty()) return code;
    const CheckedMember& first = cases.front();
    return Worse(code, output.Show(ChooseSection(cases, options), {first.file, first.line, first.title, warnings}));
}

} // namespace

ExitCode Design(const DesignOptions& options, const Console& console)
{
    if (options.count < 1) throw BadUsage("--count: got " + std::to_string(options.count) + ", expected 1 or more");
    if (options.maxDepth && !(*options.maxDepth > 0.0))
        throw BadUsage("--max-depth: got " + Shortest(*options.maxDepth * 1e3) + ", expected a depth in mm above 0");
    SectionsOf(options);
    DesignOutput output(options, console);
    const ExitCode code =
        options.envelope ? DesignEnvelope(options, console, output) : DesignEach(options, console, output);
    if (!options.envelope || code != EXIT_BAD_INPUT) output.Finish();
    return code;
}

} // namespace Keltrix::App
