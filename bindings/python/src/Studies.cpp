// What is asked of a member or a section beside its check: whether its text is sound, how it buckles, which section would do, what a section
// carries.

#include <cmath>
#include <optional>

#include <pybind11/stl.h>

#include "Bindings.h"
#include "beamfile/BeamText.h"
#include "check/BucklingText.h"
#include "check/CapacityReport.h"
#include "check/SectionChoice.h"
#include "check/Validation.h"
#include "keltrix/host/Host.h"
#include "text/BadInput.h"
#include "text/Json.h"
#include "text/SourceText.h"
#include "text/Text.h"

namespace Keltrix::Python {

namespace {

using Host::CodeChoice;
using Host::Json;
using Host::MemberFile;

CodeChoice ChoiceOf(const Host::Settings& settings)
{
    return Host::ChooseCode(settings.code, settings.annex, settings.options);
}

Host::ReadingOptions ReadingOf(const Host::Settings& settings) { return {settings.allowGaps, settings.isStrict}; }

// Without `withCode` the text alone is judged.
py::str Validate(const py::bytes& text, const std::string& name, const Host::Settings& settings, bool withCode)
{
    const std::string_view bytes = text;
    const std::string printable = Host::PrintableLine(name);
    std::string json;
    {
        const py::gil_scoped_release release;
        const CodeChoice choice = withCode ? ChoiceOf(settings) : CodeChoice();
        if (Host::IsBeamText(printable, bytes)) {
            json = Host::JsonText(Host::JsonOf(Host::ReadAndJudge(printable, bytes, ReadingOf(settings), choice)));
        } else {
            MemberFile file(Host::DecodeText(printable, bytes), ReadingOf(settings));
            if (withCode) Host::AddCodeDefects(file, choice);
            json = Host::JsonText(Host::JsonOf(file));
        }
    }
    return TextOf(json);
}

// Of a beam, which takes its modulus and its combinations from a code in any case, the first where none is asked for.
CodeChoice ChoiceOfBeam(const CodeChoice& choice) { return choice.code ? choice : Host::DefaultCode(); }

// What reading finds, without a check. A beam is read for the design code, which judges its grade and its section.
py::str Read(const py::bytes& text, const std::string& name, const Host::Settings& settings)
{
    const std::string_view bytes = text;
    const std::string printable = Host::PrintableLine(name);
    if (Host::IsBeamText(printable, bytes)) {
        const Host::Beam beam = Host::ReadBeam(printable, bytes, ReadingOf(settings), ChoiceOf(settings));
        return TextOf(Host::JsonText(Host::JsonOf(beam)));
    }
    return TextOf(Host::JsonText(Host::JsonOf(MemberFile(Host::DecodeText(printable, bytes), ReadingOf(settings)))));
}

Json BucklingOf(const MemberFile& file, std::size_t i, const CodeChoice& choice, bool continuity)
{
    Host::CodelessMember member;
    member.SetGrade(file.ReadInto(i, member));
    const Host::BucklingReport report =
        Host::MakeBucklingReport(member, Host::ModuliOf(choice.code, member.GetGrade()), continuity);
    return Host::BucklingJson(file, i, member, report);
}

// Of each member of the text, or of each combination of a beam.
Json BucklingsOf(std::string_view bytes, const std::string& name, const Host::Settings& settings, bool withCode,
                 bool continuity)
{
    const CodeChoice choice = withCode ? ChoiceOf(settings) : CodeChoice();
    Json members = Json::array();
    if (Host::IsBeamText(name, bytes)) {
        const Host::Beam beam = Host::ReadBeam(name, bytes, ReadingOf(settings), ChoiceOfBeam(choice));
        for (const MemberFile& file : beam.members)
            members.push_back(BucklingOf(file, 0, choice, continuity));
        return members;
    }
    const MemberFile file(Host::DecodeText(name, bytes), ReadingOf(settings));
    for (std::size_t i = 0; i < file.MemberCount(); ++i)
        if (!file.Member(i).hasErrors) members.push_back(BucklingOf(file, i, choice, continuity));
    return members;
}

py::str Buckling(const py::bytes& text, const std::string& name, const Host::Settings& settings, bool withCode,
                 bool continuity)
{
    const std::string_view bytes = text;
    std::string json;
    {
        const py::gil_scoped_release release;
        json = Host::JsonText(BucklingsOf(bytes, Host::PrintableLine(name), settings, withCode, continuity));
    }
    return TextOf(json);
}

Json DesignOf(std::string_view bytes, const std::string& name, const Host::SectionSearch& search)
{
    Json members = Json::array();
    if (Host::IsBeamText(name, bytes)) {
        const Host::Beam beam = Host::ReadBeam(name, bytes, search.reading, search.code);
        const Host::SectionChoice choice = Host::ChooseSection(beam, search);
        members.push_back(
            Host::JsonOf(choice, search.by,
                         {beam.file.name, 1, beam.file.title,
                          choice.passing.empty() ? Host::WarningsOf(beam) : choice.passing.front().warnings}));
        return members;
    }
    const MemberFile file(Host::DecodeText(name, bytes), search.reading);
    for (std::size_t i = 0; i < file.MemberCount(); ++i) {
        const Host::MemberText& member = file.Member(i);
        if (!member.hasErrors)
            members.push_back(
                Host::JsonOf(Host::ChooseSection(file, i, search), search.by,
                             {file.Name(), member.firstLine, Host::Utf8(member.title), file.WarningsOf(i)}));
    }
    return members;
}

py::str Designs(const py::bytes& text, const std::string& name, const Host::Settings& settings,
                const std::vector<std::string>& families, const std::string& by, const std::optional<double>& maxDepth,
                int count)
{
    if (by != "mass" && by != "depth")
        throw Host::BadInput("by: got \"" + Host::PrintableLine(by) + "\", expected mass or depth");
    if (count < 1) throw Host::BadInput("count: got " + std::to_string(count) + ", expected 1 or more");
    if (maxDepth && !(*maxDepth > 0.0))
        throw Host::BadInput("max_depth: got " + Host::Shortest(*maxDepth) + ", expected a depth in m above 0");
    if (families.empty()) throw Host::BadInput("family: got nothing, expected a family of the catalogue or several");
    const std::string_view bytes = text;
    std::string json;
    {
        const py::gil_scoped_release release;
        const Host::SectionSearch search{families, by, maxDepth, count, ChoiceOf(settings), ReadingOf(settings)};
        Host::SectionsOf(search);
        json = Host::JsonText(DesignOf(bytes, Host::PrintableLine(name), search));
    }
    return TextOf(json);
}

py::str Capacity(const std::string& name, const std::string& type, const std::string& grade,
                 const std::vector<double>& lengths, const Host::Settings& settings, const std::optional<double>& C1)
{
    for (const double length : lengths)
        if (!(length > 0.0) || !std::isfinite(length))
            throw Host::BadInput("lengths: got " + Host::Shortest(length) + ", expected lengths in m above 0");
    if (lengths.empty()) throw Host::BadInput("lengths: got nothing, expected effective lengths in m");
    if (!type.empty() && type != "rolled" && type != "welded" && type != "formed")
        throw Host::BadInput("type: got \"" + Host::PrintableLine(type) + "\", expected rolled, welded or formed");
    CodeChoice choice = ChoiceOf(settings);
    const Design::CodeDescription& code = choice.code->Description();
    if (C1 && !code.tablesTakeC1) throw Host::BadInput("C1: the tables of " + Host::Utf8(code.title) + " take none");
    if (C1 && !(*C1 >= 1.0 && *C1 <= 5.0)) throw Host::BadInput("C1: got " + Host::Shortest(*C1) + ", expected 1 to 5");
    if (C1) choice.settings.C1 = *C1;
    const std::string asked = grade.empty() ? Host::Utf8(code.grades.front().name) : grade;
    const Host::NamedSection section = Host::FindSectionOfType(name, type);
    return TextOf(Host::JsonText(Host::JsonOf(Host::CapacityTableOf(section, asked, lengths, choice), lengths)));
}

} // namespace

void AddStudies(py::module_& module)
{
    module.def("validate", Validate, py::arg("text"), py::arg("name"), py::arg("settings"), py::arg("with_code"));
    module.def("read", Read, py::arg("text"), py::arg("name"), py::arg("settings"));
    module.def("buckling", Buckling, py::arg("text"), py::arg("name"), py::arg("settings"), py::arg("with_code"),
               py::arg("continuity"));
    module.def("design", Designs, py::arg("text"), py::arg("name"), py::arg("settings"), py::arg("families"),
               py::arg("by"), py::arg("max_depth"), py::arg("count"));
    module.def("capacity", Capacity, py::arg("section"), py::arg("type"), py::arg("grade"), py::arg("lengths"),
               py::arg("settings"), py::arg("C1"));
}

} // namespace Keltrix::Python
