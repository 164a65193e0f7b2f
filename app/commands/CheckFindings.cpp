#include "commands/CheckFindings.h"

#include "report/MemberReport.h"
#include "text/Json.h"
#include "text/Markup.h"
#include "text/Text.h"
#ifdef KELTRIX_HOST_WITH_STATICS
#include "check/CheckedBeam.h"
#endif

namespace Keltrix::App {

namespace {

// A last column for beams.
std::string Combination(const CheckedMember& checked, const Design::RuleFinding* governing)
{
    return checked.shownCombination.empty() ? "" : '\t' + AsText(checked.CombinationOf(governing));
}

// Files and titles, which may be long, stand last.
std::string TableRow(const CheckedMember& checked)
{
    std::string status = StatusMarkup(checked.Status(), checked.warnings);
    // Beside a failure there can be a rule that was not evaluated.
    if (checked.Status() != "not checked" && checked.result->TestFlags(Steel::CMemberResult::NOT_CHECKED))
        status += ", <red>NOT CHECKED</red>";
    const Design::RuleFinding* const governing = checked.findings.Governing();
    return UtilisationText(checked.Utilisation()) + '\t' + status + '\t' + checked.Section() + '\t' + checked.Grade() +
           '\t' + std::to_string(checked.member->SectionClass()) + '\t' +
           (governing ? DescribeRule(*governing) : "nothing") + '\t' + (governing ? DescribePlace(*governing) : "") +
           '\t' + AsText(checked.name) + '\t' + AsText(checked.title) + Combination(checked, governing) + '\n';
}

std::string TextOf(const CheckedMember& checked, const CheckOptions& options)
{
    switch (options.format) {
    case Format::JSON:
        return IndentedJson(JsonOf(checked), 1);
    case Format::JSON_LINES:
        return JsonLine(options.report == "table" ? HeadlineJson(checked) : JsonOf(checked));
    default:
        if (options.report == "table") return TableRow(checked);
        return RenderMarkup(ReportMarkup(checked, options.report) +
                                (options.rendering.kind == Rendering::Raw ? "" : FlagMeanings(*checked.result)),
                            options.rendering);
    }
}

} // namespace

std::string RefusalLine(const Refusal& refusal)
{
    return JsonLine({{"schema", JSON_SCHEMA},
                     {"file", refusal.file},
                     {"line", refusal.line > 0 ? Json(refusal.line) : Json()},
                     {"title", refusal.title},
                     {"status", "refused"},
                     {"errors", refusal.reasons},
                     {"warnings", WarningsJson(refusal.warnings)}});
}

ExitCode PutMember(const CheckedMember& checked, const CheckOptions& options, const OutputPieceSink& sink)
{
    const ExitCode code = checked.Status() == "pass" ? EXIT_FINE : EXIT_MEMBER_FAILS;
    const std::string text = TextOf(checked, options);
    sink({OutputPiece::Member, code, checked.Utilisation(), text});
    return code;
}

CheckedMember CheckAsAsked(const MemberFile& file, std::size_t i, const CheckOptions& options, const Console& console)
{
    CheckedMember checked =
        CheckMember(file, i, options.code, options.format == Format::TABLE && options.report != "table");
    for (const MemberWarning& warning : checked.CheckWarnings())
        console.err(warning.Message());
    return checked;
}

#ifdef KELTRIX_HOST_WITH_STATICS
CheckedMember CheckAsAsked(const Beam& beam, const CheckOptions& options, const Console& console)
{
    CheckedMember checked = CheckBeam(beam, options.code, options.format == Format::TABLE && options.report != "table");
    for (const MemberWarning& warning : checked.CheckWarnings())
        console.err(warning.Message());
    return checked;
}
#else
CheckedMember CheckAsAsked(const Beam&, const CheckOptions&, const Console&)
{
    throw BadInput("a beam file, and this ksteel was built without Eigen, which it needs");
}
#endif

void RequireLoadCase(const CheckedMember& first, const CheckedMember& other)
{
    const std::string difference = DifferenceOf(first, other);
    if (!difference.empty())
        throw BadInput(other.name + ": is no load case of the member in " + first.name + ": " + difference);
}

CheckedMember OneEnvelope(std::vector<CheckedMember> cases)
{
    for (const CheckedMember& checked : cases)
        RequireLoadCase(cases.front(), checked);
    return Envelope(std::move(cases));
}

BeamUse BeamUseOf(const CheckOptions& options, std::function<ExitCode(const Beam&)> use,
                  std::function<void(ExitCode, const std::string&)> tell)
{
    if (options.combinations) return {options.code, {}, std::move(tell)};
    return {options.code, std::move(use), {}};
}

CheckLoop::CheckLoop(const CheckOptions& options, std::istream& standardInput, OutputPieceSink sink) :
    m_options(options), m_sink(std::move(sink)), m_console{standardInput,
                                                           {},
                                                           [this](std::string_view message) {
                                                               m_sink({OutputPiece::Message, EXIT_FINE, 0.0, message});
                                                           },
                                                           {}},
    m_loop(
        m_console, options.reading,
        [this](const MemberFile& file, std::size_t i) {
            return PutMember(CheckAsAsked(file, i, m_options, m_console), m_options, m_sink);
        },
        [this](const Refusal& refusal) {
            const std::string line = m_options.format == Format::JSON_LINES ? RefusalLine(refusal) : std::string();
            m_sink({OutputPiece::Refused, EXIT_BAD_INPUT, 0.0, line});
        },
        BeamUseOf(
            options,
            [this](const Beam& beam) { return PutMember(CheckAsAsked(beam, m_options, m_console), m_options, m_sink); },
            [this](ExitCode code, const std::string& message) {
                m_sink({OutputPiece::Message, code, 0.0, message});
            }))
{}

} // namespace Keltrix::App
