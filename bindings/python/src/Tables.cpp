// Members from tables of forces and of members.

#include <pybind11/stl.h>

#include "Bindings.h"
#include "check/DesignCodes.h"
#include "import/Import.h"
#include "text/BadInput.h"

namespace Keltrix::Python {

namespace {

py::dict FindingOf(const Host::ImportFinding& finding)
{
    const Host::Defect& defect = finding.defect;
    return DiagnosticOf({Host::SeverityWord(defect.severity), defect.line, defect.code, finding.Message(),
                         defect.keyword, defect.field, defect.got, defect.expected, defect.advice});
}

// `map` is what `ksteel import --map` takes. With errors the text is empty.
py::tuple FromTables(const py::bytes& forces, const py::bytes& members, const std::vector<std::string>& map,
                     bool allowRepeats, bool isStrict)
{
    Host::ImportSettings settings;
    if (const std::string fault = Host::ReadImportMap(map, settings); !fault.empty()) throw Host::BadInput(fault);
    settings.forces.allowRepeats = allowRepeats;
    settings.isStrict = isStrict;
    settings.hasGrade = Host::IsGradeOfAnyCode;
    settings.grades = Host::GradesOfAllCodes();
    const std::string_view forceBytes = forces;
    const std::string_view memberBytes = members;
    Host::Import import;
    {
        const py::gil_scoped_release release;
        import = Host::ImportForces({"forces", forceBytes}, {"members", memberBytes}, settings);
    }
    py::list findings;
    for (const Host::ImportFinding& finding : import.findings)
        findings.append(FindingOf(finding));
    return py::make_tuple(TextOf(import.text), findings, import.members, import.cases);
}

} // namespace

void AddTables(py::module_& module)
{
    module.def("from_tables", FromTables, py::arg("forces"), py::arg("members"), py::arg("map"),
               py::arg("allow_repeats"), py::arg("strict"));
}

} // namespace Keltrix::Python
