#include <algorithm>

#include "beamfile/BeamText.h"
#include "check/Validation.h"
#include "commands/Commands.h"
#include "io/Input.h"
#include "memberfile/MemberFile.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

std::string CountOf(std::size_t n, const char* what)
{
    return (n == 0 ? "no" : std::to_string(n)) + ' ' + what + (n == 1 ? "" : "s");
}

std::string NotesText(std::size_t notes) { return notes == 0 ? std::string() : ", " + CountOf(notes, "note"); }

std::string TextOf(const MemberFile& file)
{
    const FileCheck& check = file.Check();
    std::string text;
    for (const Defect& defect : check.defects)
        text += Printable(defect.Text(file.Name())) + '\n';
    return text + file.Name() + ": " + CountOf(file.MemberCount(), "member") + ", " + CountOf(check.Errors(), "error") +
           ", " + CountOf(check.Warnings(), "warning") + NotesText(check.Notes()) + '\n';
}

#ifdef KELTRIX_HOST_WITH_STATICS
std::string TextOf(const Beam& beam)
{
    std::string text;
    for (const Defect& defect : beam.made.defects)
        text += Printable(BeamMessage(defect, beam.file.name)) + '\n';
    for (const MemberFile& member : beam.members)
        for (const Defect& defect : member.Check().defects)
            text += Printable(defect.Text(member.Name())) + '\n';
    return text + beam.file.name + ": 1 beam, " + CountOf(beam.members.size(), "combination") + ", " +
           CountOf(DefectCount(beam, Severity::Error), "error") + ", " +
           CountOf(DefectCount(beam, Severity::Warning), "warning") + NotesText(DefectCount(beam, Severity::Note)) +
           '\n';
}

// Whether the bytes were a beam, and what was said of it.
bool ValidateBeam(const std::string& name, const std::string& bytes, const ValidateOptions& options,
                  const Console& console, Json& files, ExitCode& worst)
{
    if (!IsBeamText(name, bytes)) return false;
    const Beam beam = ReadAndJudge(name, bytes, options.reading, options.code);
    if (DefectCount(beam, Severity::Error) > 0) worst = EXIT_BAD_INPUT;
    if (options.format == Format::JSON)
        files.push_back(JsonOf(beam));
    else
        console.out(TextOf(beam));
    return true;
}
#else
bool ValidateBeam(const std::string& name, const std::string& bytes, const ValidateOptions&, const Console&, Json&,
                  ExitCode&)
{
    if (!IsBeamText(name, bytes)) return false;
    throw BadInput(name + ": a beam file, and this ksteel was built without Eigen, which it needs");
}
#endif

} // namespace

ExitCode Validate(const ValidateOptions& options, const Console& console)
{
    ExitCode worst = EXIT_FINE;
    Json files = Json::array();
    for (const std::string& path : options.files) {
        try {
            const std::string bytes = ReadBytes(path, console.in);
            if (ValidateBeam(NameOfInput(path), bytes, options, console, files, worst)) continue;
            MemberFile file(DecodeText(NameOfInput(path), bytes), options.reading);
            if (options.code.code) AddCodeDefects(file, options.code);
            if (file.Check().Errors() > 0) worst = EXIT_BAD_INPUT;
            if (options.format == Format::JSON)
                files.push_back(JsonOf(file));
            else
                console.out(TextOf(file));
        } catch (const BadInput& failure) {
            console.err(failure.what());
            worst = EXIT_BAD_INPUT;
            if (options.format == Format::JSON)
                files.push_back({{"schema", JSON_SCHEMA}, {"file", NameOfInput(path)}, {"error", failure.what()}});
        }
    }
    if (options.format == Format::JSON) console.out(JsonText(files));
    return worst;
}

} // namespace Keltrix::App
