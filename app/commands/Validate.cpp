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

} // namespace

ExitCode Validate(const ValidateOptions& options, const Console& console)
{
    ExitCode worst = EXIT_FINE;
    Json files = Json::array();
    for (const std::string& path : options.files) {
        try {
            MemberFile file(ReadText(path, console.in), options.reading);
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
