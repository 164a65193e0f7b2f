#include "commands/Commands.h"

#include "check/DesignCodes.h"
#include "import/Import.h"
#include "io/Input.h"
#include "io/Output.h"

namespace Keltrix::App {

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
    settings.hasGrade = IsGradeOfAnyCode;
    settings.grades = GradesOfAllCodes();
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
