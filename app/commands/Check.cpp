#include <algorithm>

#include "check/ReportKey.h"
#include "commands/CheckFindings.h"
#include "commands/CheckJobs.h"
#include "io/Progress.h"
#include "stream/Workers.h"

namespace Keltrix::App {

namespace {

// Puts findings out as the options want them, and keeps none but the rows of a table that is to be sorted.
class CheckOutput {
public:
    CheckOutput(const CheckOptions& options, const Console& console) :
        m_options(options), m_console(console), m_progress(console.progress)
    {}

    void Write(const OutputPiece& piece)
    {
        m_worst = Worse(m_worst, piece.code);
        if (piece.kind == OutputPiece::Message) {
            Flush();
            m_progress.Clear();
            m_console.err(piece.text);
            return;
        }
        if (!piece.text.empty()) PutText(piece);
        m_progress.Count(piece.code);
    }

    // Writes what was put so far.
    void Flush()
    {
        if (m_text.empty()) return;
        m_progress.Clear();
        m_console.out(m_text);
        m_text.clear();
    }

    // What follows the last member.
    ExitCode Finish()
    {
        Flush();
        m_progress.Clear();
        if (m_options.format == Format::JSON) m_console.out(m_hasText ? "\n]\n" : "[]\n");
        if (!m_rows.empty()) m_console.out(RenderMarkup(Table(), m_options.rendering));
        const bool isReport = m_options.report == "brief" || m_options.report == "verbose";
        if (m_hasText && isReport && m_options.format == Format::TABLE && m_options.rendering.kind != Rendering::Raw)
            m_console.out('\n' + RenderMarkup(ReportKey(), m_options.rendering));
        return m_worst;
    }

private:
    struct Row {
        double utilisation;
        std::string text;
    };

    void PutText(const OutputPiece& piece)
    {
        const bool isTable = m_options.format == Format::TABLE && m_options.report == "table";
        if (isTable) {
            m_rows.push_back({piece.utilisation, piece.text});
            return;
        }
        if (m_options.format == Format::JSON) m_text += m_hasText ? ",\n" : "[\n";
        m_hasText = true;
        m_text += piece.text;
    }

    std::string Table()
    {
        std::stable_sort(m_rows.begin(), m_rows.end(),
                         [](const Row& a, const Row& b) { return a.utilisation > b.utilisation; });
        const std::string head = "Utilisation\tStatus\tSection\tGrade\tClass\tGoverning\tAt\tFile\tMember";
        const auto tabs = std::count(head.begin(), head.end(), '\t');
        const bool hasBeams = std::any_of(m_rows.begin(), m_rows.end(), [&](const Row& row) {
            return std::count(row.text.begin(), row.text.end(), '\t') > tabs;
        });
        std::string text = "<table>" + head + (hasBeams ? "\tCombination\n" : "\n");
        for (const Row& row : m_rows)
            text += row.text;
        return text + "</table>\n";
    }

    const CheckOptions& m_options;
    const Console& m_console;
    Progress m_progress;
    std::vector<Row> m_rows;
    std::string m_text; // not yet written
    bool m_hasText = false;
    ExitCode m_worst = EXIT_FINE;
};

ExitCode CheckEnvelope(const CheckOptions& options, const Console& console)
{
    std::vector<CheckedMember> cases;
    MemberStream stream(options.files, options.reading, console, BeamReading::MembersWithDeflections, options.code);
    while (auto member = stream.Next()) {
        if (!member->remark.empty()) console.err(member->remark);
        stream.Use(*member, [&] {
            cases.push_back(CheckAsAsked(*member, options, console));
            return EXIT_FINE;
        });
    }
    // A case that is missing would make the envelope look better than it is.
    if (stream.Worst() == EXIT_BAD_INPUT || cases.empty()) return stream.Worst();
    CheckOutput output(options, console);
    output.Write(PieceOf(OneEnvelope(std::move(cases)), options));
    return Worse(stream.Worst(), output.Finish());
}

} // namespace

ExitCode Check(const CheckOptions& options, const Console& console)
{
    if (options.envelope && options.jobs != 1)
        throw BadUsage(
            "--jobs: the load cases of an envelope are merged in one process; share out the members instead");
    if (options.steps && (options.format == Format::TABLE || options.report == "table"))
        throw BadUsage("--steps: they are in the objects of --format json and jsonl; --report table has none, and the "
                       "other reports print "
                       "them by themselves");
    if (options.envelope) return CheckEnvelope(options, console);

    const int jobs = options.jobs == 0 ? MostWorkers() : options.jobs;
    FilePieces pieces(options.files, console);
    const std::unique_ptr<FindingsStream> findings =
        jobs > 1 ? FindingsOfWorkers(options, jobs, console.in)
                 : std::make_unique<MemberFindings>(options, pieces, console.in);
    CheckOutput output(options, console);
    while (const auto piece = findings->Next()) {
        output.Write(*piece);
        if (findings->IsDrained()) output.Flush();
    }
    return output.Finish();
}

} // namespace Keltrix::App
