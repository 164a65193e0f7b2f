#include "commands/Commands.h"

#include <algorithm>

#include "check/DesignCodes.h"
#include "import/Import.h"
#include "io/Input.h"
#include "io/Output.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

// Grades are judged by all design codes that there are.
void JudgeGrades(ImportSettings& settings)
{
    settings.hasGrade = [](const std::string& name) {
        const std::vector<const Design::DesignCode*>& codes = DesignCodes();
        return codes.empty() || std::any_of(codes.begin(), codes.end(), [&](const Design::DesignCode* code) {
                   return code->HasGrade(Wide(name)) && !code->IsUserGrade(CSteelGrade(Wide(name), 0.0, 0.0, 0.0, 1.0));
               });
    };
    for (const Design::DesignCode* const code : DesignCodes())
        for (const Design::Term& grade : code->Description().grades) {
            const std::string name = Utf8(grade.name);
            const bool isUsers = code->IsUserGrade(CSteelGrade(grade.name, 0.0, 0.0, 0.0, 1.0));
            if (!isUsers && settings.grades.find(name) == std::string::npos)
                settings.grades += (settings.grades.empty() ? "" : ", ") + name;
        }
}

} // namespace

ExitCode ImportTables(const ImportOptions& options, const Console& console)
{
    ImportSettings settings;
    if (const std::string fault = ReadImportMap(options.map, settings); !fault.empty())
        throw BadUsage("--map: " + fault);
    if (options.forces == "-" && options.members == "-")
        throw BadUsage("--members: forces and members cannot both be standard input");
    RequireNoInput("--output", options.output, {options.forces, options.members});
    settings.forces.allowRepeats = options.allowRepeats;
    settings.isStrict = options.reading.isStrict;
    JudgeGrades(settings);
    const std::string forces = ReadBytes(options.forces, console.in);
    const std::string members = ReadBytes(options.members, console.in);
    const Import import =
        ImportForces({NameOfInput(options.forces), forces}, {NameOfInput(options.members), members}, settings);
    for (const ImportFinding& finding : import.findings)
        console.err(finding.Message());
    if (import.HasErrors()) return EXIT_BAD_INPUT;
    if (options.output.empty() || options.output == "-")
        console.out(import.text);
    else
        WriteFile(options.output, import.text);
    return EXIT_FINE;
}

} // namespace Keltrix::App
