#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "keltrix/platform/KxData.h"

namespace Keltrix::Host {

/// Adds the text of a host's own catalogue to the shared catalogue. Throws BadInput with one line for each fault of the text, each
/// with line and column ("own.csv:3, column 5: ..."); `name` is what these call it.
void AddCatalogue(const std::string& name, std::string_view csv);

/// A section set up from a catalogue designation or a parametric description.
struct NamedSection {
    CSection section;
    std::string name;                      ///< in the form in which descriptions are written
    const CSectDB::Entry* entry = nullptr; ///< its catalogue row, where it has one
};

/// Throws BadInput for a name that means no section (with the nearest names of the catalogue), and for dimensions that
/// are no section.
NamedSection FindSection(const std::string& name);

/// Mass per metre, kg/m: as the catalogue has it, or the area times 7850 kg/m³.
double MassPerMetre(const NamedSection& section);

/// Families of the catalogue in its order.
std::vector<std::string> Families();

/// A family as the catalogue writes it; letter case and blanks around it do not matter. Throws BadInput, with all of them, for any other name.
std::string FamilyNamed(const std::string& name);

/// "I", "channel", "tee", "angle", "RHS", "CHS"; empty for any other shape.
std::string ShapeName(int shape);

} // namespace Keltrix::Host
