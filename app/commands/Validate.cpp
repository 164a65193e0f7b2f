#include <algorithm>

#include "beamfile/BeamText.h"
#ifdef KELTRIX_HOST_WITH_STATICS
#include "check/CheckedBeam.h"
#endif
#include "check/CheckedMember.h"
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

Json JsonOf(const Defect& defect)
{
    return {{"line", defect.line},         {"severity", SeverityWord(defect.severity)},
            {"code", defect.code},         {"keyword", defect.keyword},
            {"field", defect.field},       {"got", defect.got},
            {"expected", defect.expected}, {"advice", defect.advice},
            {"message", defect.Message()}};
}

// Those of the members and those between them.
std::vector<MemberWarning> WarningsOf(const MemberFile& file)
{
    std::vector<MemberWarning> warnings;
    for (const Defect& defect : file.Check().defects) {
        if (defect.severity != Severity::Error) warnings.push_back(WarningOf(defect, file.Name()));
    }
    return warnings;
}

Json JsonOf(const MemberFile& file)
{
    const FileCheck& check = file.Check();
    Json defects = Json::array();
    for (const Defect& defect : check.defects)
        defects.push_back(JsonOf(defect));
    return {{"schema", JSON_SCHEMA},
            {"file", file.Name()},
            {"members", file.MemberCount()},
            {"errors", check.Errors()},
            {"warnings", WarningsJson(WarningsOf(file))},
            {"defects", std::move(defects)}};
}

// What the design code rejects in the members that reading accepts.
void AddCodeDefects(MemberFile& file, const CodeChoice& choice)
{
    for (std::size_t i = 0; i < file.MemberCount(); ++i) {
        if (file.Member(i).hasErrors) continue;
        try {
            CheckMember(file, i, choice, false);
        } catch (const BadMember& failure) {
            file.Add(failure.defect);
        }
    }
}

#ifdef KELTRIX_HOST_WITH_STATICS
// A beam with what the design code, where one is asked for, rejects in its members.
Beam ReadAndJudge(const std::string& name, const std::string& bytes, const ValidateOptions& options)
{
    CodeChoice code = options.code;
    if (!code.code && !DesignCodes().empty()) code = DefaultCode();
    Beam beam = ReadBeam(name, bytes, options.reading, code);
    if (!options.code.code || beam.members.empty()) return beam;
    try {
        CheckBeam(beam, options.code, false);
    } catch (const BadMember& refusal) {
        beam.made.defects.push_back(refusal.defect);
    }
    return beam;
}

std::size_t Count(const Beam& beam, Severity severity)
{
    return static_cast<std::size_t>(std::count_if(beam.made.defects.begin(), beam.made.defects.end(),
                                                  [&](const Defect& defect) { return defect.severity == severity; }));
}

std::string TextOf(const Beam& beam)
{
    std::string text;
    for (const Defect& defect : beam.made.defects)
        text += Printable(BeamMessage(defect, beam.file.name)) + '\n';
    for (const MemberFile& member : beam.members)
        for (const Defect& defect : member.Check().defects)
            text += Printable(defect.Text(member.Name())) + '\n';
    return text + beam.file.name + ": 1 beam, " + CountOf(beam.members.size(), "combination") + ", " +
           CountOf(Count(beam, Severity::Error), "error") + ", " + CountOf(Count(beam, Severity::Warning), "warning") +
           NotesText(Count(beam, Severity::Note)) + '\n';
}

Json JsonOf(const Beam& beam)
{
    Json defects = Json::array();
    for (const Defect& defect : beam.made.defects)
        defects.push_back(JsonOf(defect));
    return {{"file", beam.file.name},
            {"members", beam.members.size()},
            {"errors", Count(beam, Severity::Error)},
            {"warnings", WarningsJson(WarningsOf(beam))},
            {"defects", std::move(defects)}};
}

// Whether the bytes were a beam, and what was said of it.
bool ValidateBeam(const std::string& name, const std::string& bytes, const ValidateOptions& options,
                  const Console& console, Json& files, ExitCode& worst)
{
    if (!IsBeamText(name, bytes)) return false;
    const Beam beam = ReadAndJudge(name, bytes, options);
    if (Count(beam, Severity::Error) > 0) worst = EXIT_BAD_INPUT;
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
