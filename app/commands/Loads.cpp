#include <algorithm>
#include <filesystem>

#include "commands/BeamCommands.h"
#include "io/Input.h"
#include "io/Output.h"
#include "loads/LoadText.h"
#include "report/LoadDrawing.h"
#include "report/LoadSheet.h"
#include "stream/MemberStream.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

namespace fs = std::filesystem;

// Letters, digits and decimal points of a name; everything else is a dash. Never more than fits a file name.
std::string SafeName(const std::string& name)
{
    constexpr std::size_t longest = 80;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    std::string safe;
    for (const char c : name) {
        const bool isPoint = c == '.' && !safe.empty() && isDigit(safe.back());
        if (isPoint || isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'))
            safe += c;
        else if (!safe.empty() && safe.back() != '-')
            safe += '-';
        if (safe.size() == longest) break;
    }
    while (!safe.empty() && (safe.back() == '-' || safe.back() == '.'))
        safe.pop_back();
    return safe;
}

// "03-dead-and-imposed-1.4-Dead.csv": the number has as many digits as the last one, so that files sort by it.
std::string FileNameOf(const std::string& combination, std::size_t number, std::size_t last)
{
    std::string digits = std::to_string(number);
    const std::size_t width = std::max<std::size_t>(2, std::to_string(last).size());
    digits.insert(0, width - std::min(width, digits.size()), '0');
    const std::string name = SafeName(combination);
    return digits + (name.empty() ? "" : "-" + name) + ".csv";
}

// The member files of one beam in a folder. All names are looked at before any file is written.
class MemberFolder {
public:
    explicit MemberFolder(const LoadsOptions& options) : m_options(options) {}

    void Add(const Beam& beam, const Console& console)
    {
        if (m_options.folder.empty()) return;
        if (++m_beams > 1) throw BadUsage("--output takes the members of one beam, and the files hold more");
        const std::vector<BeamMember>& members = beam.made.members;
        if (members.empty()) {
            console.err("--output: the beam has no ultimate combination, so there are no member files");
            return;
        }
        for (std::size_t i = 0; i < members.size(); ++i)
            m_files.emplace_back(
                (FilePath(m_options.folder) / FileNameOf(members[i].name, i + 1, members.size())).string(),
                members[i].text);
    }

    void Write() const
    {
        if (m_files.empty()) return;
        MakeFolder();
        for (const auto& [path, text] : m_files) {
            RequireNoInput("--output", path, m_options.files);
            std::error_code ignored;
            if (!m_options.force && fs::exists(fs::symlink_status(FilePath(path), ignored)))
                throw BadUsage("--output: " + PrintableLine(path) + " is there already; --force replaces it");
        }
        for (const auto& [path, text] : m_files)
            WriteFile(path, text);
    }

private:
    void MakeFolder() const
    {
        std::error_code error;
        fs::create_directories(FilePath(m_options.folder), error);
        if (!fs::is_directory(FilePath(m_options.folder), error))
            throw BadOutput(PrintableLine(m_options.folder) + ": no folder, and none can be made there");
    }

    const LoadsOptions& m_options;
    std::size_t m_beams = 0;
    std::vector<std::pair<std::string, std::string>> m_files;
};

} // namespace

ExitCode ShowLoads(const LoadsOptions& options, const Console& console)
{
    Json beams = Json::array();
    MemberFolder folder(options);
    std::string svg;
    std::size_t drawn = 0;
    const bool hasText = options.svgFile != "-"; // else the drawing alone
    const bool isJson = options.format == Format::JSON;
    const auto showBeam = [&](const Beam& beam) {
        const LoadReport report = LoadReportOf(beam);
        if (!options.svgFile.empty()) {
            if (++drawn > 1) throw BadUsage("--svg draws one beam, and the files hold more");
            svg = LoadSvgFile(beam.made.analysis->GetBeam(), report);
        }
        folder.Add(beam, console);
        if (hasText && isJson) {
            Json entry =
                JsonObject("schema", JSON_SCHEMA, "file", beam.file.name, "warnings", WarningsJson(WarningsOf(beam)));
            entry.update(JsonOf(report));
            beams.push_back(std::move(entry));
        } else if (hasText) {
            console.out(RenderMarkup(LoadMarkup(report), options.rendering));
        }
        return EXIT_FINE;
    };
    const auto refuseMember = [&](const MemberFile& file, std::size_t i) {
        console.err(file.Name() + ':' + std::to_string(file.Member(i).firstLine) +
                    ": a member file, and loads are those of beam files");
        return EXIT_BAD_INPUT;
    };
    MemberStream stream(options.files, options.reading, console, BeamReading::Whole, options.code.code);
    while (auto member = stream.Next())
        stream.Use(*member,
                   [&] { return member->beam ? showBeam(*member->beam) : refuseMember(*member->file, member->place); });
    folder.Write();
    if (!svg.empty()) WriteFile(options.svgFile, svg);
    if (hasText && isJson) console.out(JsonText(beams));
    return stream.Worst();
}

} // namespace Keltrix::App
