#include "check/Validation.h"

#include <algorithm>

#include "text/Json.h"

namespace Keltrix::Host {

namespace {

Json DefectJson(const Defect& defect)
{
    return {{"line", defect.line},         {"severity", SeverityWord(defect.severity)},
            {"code", defect.code},         {"keyword", defect.keyword},
            {"field", defect.field},       {"got", defect.got},
            {"expected", defect.expected}, {"advice", defect.advice},
            {"message", defect.Message()}};
}

// Those of the members and those between them.
std::vector<MemberWarning> WarningsOfAll(const MemberFile& file)
{
    std::vector<MemberWarning> warnings;
    for (const Defect& defect : file.Check().defects) {
        if (defect.severity != Severity::Error) warnings.push_back(WarningOf(defect, file.Name()));
    }
    return warnings;
}

} // namespace

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

Json JsonOf(const MemberFile& file)
{
    const FileCheck& check = file.Check();
    Json defects = Json::array();
    for (const Defect& defect : check.defects)
        defects.push_back(DefectJson(defect));
    return {{"schema", JSON_SCHEMA},
            {"file", file.Name()},
            {"members", file.MemberCount()},
            {"errors", check.Errors()},
            {"warnings", WarningsJson(WarningsOfAll(file))},
            {"defects", std::move(defects)}};
}

#ifdef KELTRIX_HOST_WITH_STATICS
Beam ReadAndJudge(const std::string& name, std::string_view bytes, const ReadingOptions& reading,
                  const CodeChoice& choice)
{
    CodeChoice code = choice;
    if (!code.code && !DesignCodes().empty()) code = DefaultCode();
    Beam beam = ReadBeam(name, bytes, reading, code);
    if (!choice.code || beam.members.empty()) return beam;
    try {
        CheckBeam(beam, choice, false);
    } catch (const BadMember& refusal) {
        beam.made.defects.push_back(refusal.defect);
    }
    return beam;
}

std::size_t DefectCount(const Beam& beam, Severity severity)
{
    return static_cast<std::size_t>(std::count_if(beam.made.defects.begin(), beam.made.defects.end(),
                                                  [&](const Defect& defect) { return defect.severity == severity; }));
}

Json JsonOf(const Beam& beam)
{
    Json defects = Json::array();
    for (const Defect& defect : beam.made.defects)
        defects.push_back(DefectJson(defect));
    return {{"file", beam.file.name},
            {"members", beam.members.size()},
            {"errors", DefectCount(beam, Severity::Error)},
            {"warnings", WarningsJson(WarningsOf(beam))},
            {"defects", std::move(defects)}};
}
#endif

} // namespace Keltrix::Host
