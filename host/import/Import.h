#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "import/ForceTable.h"
#include "import/SignConvention.h"

namespace Keltrix::Host {

/// How tables of forces and members are understood.
struct ImportSettings {
    const SignConvention* convention = nullptr;
    ForceReading forces;
    ImportNames members;
    bool isStrict = false; ///< every warning is an error
    /// Whether a design code has a grade of that name; without it none is asked.
    std::function<bool(const std::string&)> hasGrade = {};
    std::string grades; ///< that there are, in words: "S275, S355"
};

/// Reads what maps columns: the name of a sign convention, once; FIELD=CAPTION or FIELD=none of the forces, members.FIELD=CAPTION of the
/// members; length=UNIT, force=UNIT, moment=UNIT. Returns what is wrong as a sentence, or nothing.
std::string ReadImportMap(const std::vector<std::string>& items, ImportSettings& settings);

/// A table as a file holds it.
struct ImportFile {
    std::string name; ///< as messages call it
    std::string_view bytes;
};

/// What came of two tables.
struct Import {
    std::string text; ///< one member file for each member and case, one after another; empty with errors
    std::vector<ImportFinding> findings;
    std::size_t members = 0;
    std::size_t cases = 0; ///< of all members together

    bool HasErrors() const;
};

/// Makes members of a table of forces and a table of members. Points are the stations and the places where something holds the member;
/// actions at a place between two stations are those of a linear shear. Forces that do not balance in the settings' sign convention are an
/// error, which names the conventions in which they would. Throws BadInput for bytes that are no text.
Import ImportForces(const ImportFile& forces, const ImportFile& members, const ImportSettings& settings);

} // namespace Keltrix::Host
