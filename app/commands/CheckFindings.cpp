#include "commands/CheckFindings.h"

#include "check/FindingsJson.h"
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
        return IndentedFindings(checked, 1, options.steps);
    case Format::JSON_LINES:
        return options.report == "table" ? HeadlineLine(checked) : FindingsLine(checked, options.steps);
    default:
        if (options.report == "table") return TableRow(checked);
        return RenderMarkup(ReportMarkup(checked, options.report) +
                                (options.rendering.kind == Rendering::Raw ? "" : FlagMeanings(*checked.result)),
                            options.rendering);
    }
}

#ifdef KELTRIX_HOST_WITH_STATICS
CheckedMember CheckOfBeam(const Beam& beam, const CodeChoice& choice, bool withText, bool withSteps)
{
    return CheckBeam(beam, choice, withText, withSteps);
}
#else
CheckedMember CheckOfBeam(const Beam&, const CodeChoice&, bool, bool)
{
    throw BadInput("a beam file, and this ksteel was built without Eigen, which it needs");
}
#endif

} // namespace

CheckedMember CheckOne(const StreamMember& member, const CodeChoice& choice, bool withText, bool withSteps)
{
    if (member.beam) return CheckOfBeam(*member.beam, choice, withText, withSteps);
    return CheckMember(*member.file, member.place, choice, withText || withSteps);
}

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

OutputPiece PieceOf(const CheckedMember& checked, const CheckOptions& options)
{
    const ExitCode code = checked.Status() == "pass" ? EXIT_FINE : EXIT_MEMBER_FAILS;
    return {OutputPiece::Member, code, checked.Utilisation(), TextOf(checked, options)};
}

OutputPiece PieceOf(const Refusal& refusal, const CheckOptions& options)
{
    return {OutputPiece::Refused, EXIT_BAD_INPUT, 0.0,
            options.format == Format::JSON_LINES ? RefusalLine(refusal) : std::string()};
}

CheckedMember CheckAsAsked(const StreamMember& member, const CheckOptions& options, const Console& console)
{
    CheckedMember checked =
        CheckOne(member, options.code, options.format == Format::TABLE && options.report != "table", options.steps);
    for (const MemberWarning& warning : checked.CheckWarnings())
        console.err(warning.Message());
    return checked;
}

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

MemberFindings::MemberFindings(const CheckOptions& options, PieceSource& pieces, std::istream& standardInput) :
    m_options(options), m_console{standardInput,
                                  {},
                                  [this](std::string_view message) {
                                      m_ready.push_back({OutputPiece::Message, EXIT_FINE, 0.0, std::string(message)});
                                  },
                                  {}},
    m_members(pieces, options.reading, m_console, BeamsAs(options.combinations), options.code)
{}

std::optional<OutputPiece> MemberFindings::Next()
{
    while (m_ready.empty()) {
        std::optional<StreamMember> member = m_members.Next();
        if (member) Check(*member);
        if (!member && m_ready.empty()) return std::nullopt;
    }
    OutputPiece piece = std::move(m_ready.front());
    m_ready.pop_front();
    return piece;
}

void MemberFindings::Check(StreamMember& member)
{
    m_members.Use(member, [&] {
        OutputPiece piece = PieceOf(CheckAsAsked(member, m_options, m_console), m_options);
        const ExitCode code = piece.code;
        m_ready.push_back(std::move(piece));
        return code;
    });
    if (member.refusal) m_ready.push_back(PieceOf(*member.refusal, m_options));
    if (!member.remark.empty()) m_ready.push_back({OutputPiece::Message, member.code, 0.0, member.remark});
}

} // namespace Keltrix::App
