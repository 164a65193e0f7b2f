#include "sections/SectionCatalogue.h"

#include <algorithm>

#include "sections/SectionShapes.h"
#include "text/BadInput.h"
#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

constexpr double STEEL_DENSITY = 7850.0; // kg/m³

} // namespace

void AddCatalogue(const std::string& name, std::string_view csv)
{
    std::string message;
    for (const CatalogueError& error : CSectDB::GetDatabase()->AddCsv(csv)) {
        if (!message.empty()) message += '\n';
        message += PrintableLine(name);
        if (error.line > 0) message += ':' + std::to_string(error.line);
        if (error.column > 0) message += ", column " + std::to_string(error.column);
        message += ": " + Printable(Utf8(error.message));
    }
    if (!message.empty()) throw BadInput(message);
}

NamedSection FindSection(const std::string& name)
{
    const CString description = Wide(name);
    CSectDB* const catalogue = CSectDB::GetDatabase();
    CSecDB found(CString(), catalogue);
    if (!found.SetUpFromDesc(description)) {
        std::string nearest;
        for (const CString& suggestion : catalogue->Suggest(description, 5))
            nearest += (nearest.empty() ? "" : ", ") + Utf8(suggestion);
        throw BadInput("unknown section " + Quote(description) + "; nearest: " + nearest);
    }
    NamedSection section{CSection(description), Utf8(found.UserDesc()), catalogue->Find(description)};
    if (!MakeGeometry(section.section))
        throw BadInput(Quote(description) + ": these dimensions do not fit together to a section");
    return section;
}

double MassPerMetre(const NamedSection& section)
{
    if (section.entry) return section.entry->massPerMetre;
    return MakeGeometry(section.section)->Area() * STEEL_DENSITY;
}

std::vector<std::string> Families()
{
    std::vector<std::string> families;
    for (const CSectDB::Entry& entry : CSectDB::GetDatabase()->Entries()) {
        std::string family = Utf8(entry.family);
        if (std::find(families.begin(), families.end(), family) == families.end())
            families.push_back(std::move(family));
    }
    return families;
}

std::string FamilyNamed(const std::string& name)
{
    std::string wanted = name;
    wanted.erase(0, wanted.find_first_not_of(' '));
    wanted.erase(wanted.find_last_not_of(' ') + 1);
    std::string list;
    for (const std::string& family : Families()) {
        if (SameWord(Wide(family), Wide(wanted))) return family;
        list += (list.empty() ? "" : ", ") + family;
    }
    throw BadInput("unknown family " + Quote(Wide(name)) + "; the catalogue has " + list);
}

std::string ShapeName(int shape)
{
    switch (shape & CSecGeom::SHAPE_MASK) {
    case CSecGeom::SHAPE_I:
    case CSecGeom::SHAPE_GENERAL_I:
        return "I";
    case CSecGeom::SHAPE_CHANNEL:
        return "channel";
    case CSecGeom::SHAPE_T:
        return "tee";
    case CSecGeom::SHAPE_ANGLE:
        return "angle";
    case CSecGeom::SHAPE_RHS:
        return "RHS";
    case CSecGeom::SHAPE_CHS:
        return "CHS";
    default:
        return {};
    }
}

} // namespace Keltrix::Host
