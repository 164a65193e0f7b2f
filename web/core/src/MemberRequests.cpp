#include <memory>
#include <vector>

#include "Replies.h"
#include "RequestFields.h"
#include "check/CheckedMember.h"
#include "check/FindingsJson.h"
#include "import/Import.h"
#include "memberfile/MemberPieces.h"
#include "text/BadInput.h"
#include "text/Json.h"
#include "text/SourceText.h"
#include "text/Text.h"

namespace Keltrix::Web {

using Host::BadInput;
using Host::CheckedMember;
using Host::CodeChoice;
using Host::Json;
using Host::JsonObject;
using Host::Utf8;

namespace {

struct Batch {
    std::string name;
    CodeChoice choice;
    Host::ReadingOptions reading;
    Host::MemberCutter cutter;
    bool isFull = false; // all that was found of each member, as `ksteel check --format jsonl` writes it
};
std::unique_ptr<Batch> batch;

Json RefusalJson(const std::string& title, Host::LineNumber line, const std::vector<std::string>& reasons)
{
    return JsonObject("schema", Host::JSON_SCHEMA, "file", batch->name, "line", line, "title", title, "status",
                      "refused", "errors", reasons);
}

// A row, and its figures in words.
struct BatchRow {
    Json row;
    std::string shown = {};
    std::string governing = {};
};

BatchRow RowOf(const Host::MemberFile& file, std::size_t i)
{
    const Host::MemberText& member = file.Member(i);
    const auto refuse = [&](const std::vector<std::string>& reasons) {
        return BatchRow{RefusalJson(Utf8(member.title), member.firstLine, reasons)};
    };
    if (member.hasErrors) {
        const std::vector<std::string> errors = file.ErrorsOf(i);
        return refuse(errors.empty() ? file.UnlistedErrorsOf(i) : errors);
    }
    try {
        const CheckedMember checked = Host::CheckMember(file, i, batch->choice, false);
        return {batch->isFull ? Host::JsonOf(checked) : Host::HeadlineJson(checked),
                Host::UtilisationText(checked.Utilisation()), checked.Governing()};
    } catch (const BadInput& failure) {
        return refuse({failure.what()});
    }
}

// A row for each member, with the bytes of the file that hold it.
void AddRows(Json& rows, const Host::MemberPiece& piece)
{
    const auto add = [&](BatchRow one) {
        rows.push_back(JsonObject("from", piece.start.bytes, "bytes", piece.bytes.size(), "text",
                                  batch->isFull ? Host::JsonLine(one.row) : std::string(), "row",
                                  batch->isFull ? Json() : std::move(one.row), "shown", one.shown, "governing",
                                  one.governing));
    };
    try {
        const Host::MemberFile file(batch->name, piece, batch->reading);
        for (const Host::Defect& defect : file.Check().defects)
            if (defect.severity == Host::Severity::Error && defect.member == Host::Defect::NO_MEMBER)
                add({RefusalJson({}, defect.line, {defect.Text(batch->name)})});
        for (std::size_t i = 0; i < file.MemberCount(); ++i)
            add(RowOf(file, i));
    } catch (const BadInput& failure) {
        add({RefusalJson({}, piece.FirstLine(), {failure.what()})});
    }
}

} // namespace

// --- Forces of another program ---

Json Conventions(const Json&, std::string_view)
{
    Json list = Json::array();
    for (const Host::SignConvention& convention : Host::SignConventions())
        list.push_back(JsonObject("name", convention.name, "meaning", convention.meaning));
    return list;
}

// Members of a table of forces and one of members. The bytes are those of both, the first table ending after `split`.
Json ImportTables(const Json& request, std::string_view bytes)
{
    Host::ImportSettings settings;
    if (const std::string fault = Host::ReadImportMap(WordsOf(request, "map"), settings); !fault.empty())
        throw BadInput(fault);
    settings.forces.allowRepeats = IsSet(request, "repeats");
    settings.hasGrade = Host::IsGradeOfAnyCode;
    settings.grades = Host::GradesOfAllCodes();
    const double split = NumberOf(request, "split", -1.0);
    if (!(split >= 0.0 && split <= static_cast<double>(bytes.size())))
        throw BadInput("split: expected the size of the first table");
    const auto at = static_cast<std::size_t>(split);
    const Host::Import import = Host::ImportForces(
        {Host::PrintableLine(WordOf(request, "forces", "forces.csv")), bytes.substr(0, at)},
        {Host::PrintableLine(WordOf(request, "members", "members.csv")), bytes.substr(at)}, settings);
    Json findings = Json::array();
    for (const Host::ImportFinding& finding : import.findings)
        findings.push_back(
            JsonObject("severity", Host::SeverityWord(finding.defect.severity), "text", finding.Message()));
    return JsonObject("text", import.text, "members", import.members, "cases", import.cases, "refused",
                      import.HasErrors(), "findings", std::move(findings));
}

// --- A batch of members, in pieces of the file as they come ---

Json BeginBatch(const Json& request, std::string_view)
{
    const Host::Settings settings = SettingsOf(request);
    batch = std::make_unique<Batch>();
    batch->name = NameOf(request);
    batch->choice = ChoiceOf(settings);
    batch->reading = ReadingOf(settings);
    batch->isFull = IsSet(request, "full");
    return Json::object();
}

Json AddToBatch(const Json& request, std::string_view bytes)
{
    if (!batch) throw BadInput("no batch was begun");
    Json rows = Json::array();
    batch->cutter.Add(bytes);
    while (const auto piece = batch->cutter.Next())
        AddRows(rows, *piece);
    if (IsSet(request, "last")) {
        if (const auto rest = batch->cutter.Rest()) AddRows(rows, *rest);
        batch.reset();
    }
    return rows;
}

} // namespace Keltrix::Web
