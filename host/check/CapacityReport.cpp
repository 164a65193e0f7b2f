#include "check/CapacityReport.h"

#include <algorithm>
#include <optional>

#include "text/BadInput.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

Json CapacityOrNull(const std::optional<double>& value) { return value ? Json(*value) : Json(); }

void AddLists(Json& row, const std::vector<Design::CapacityCurve>& curves)
{
    for (const Design::CapacityCurve& curve : curves) {
        Json values = Json::array();
        for (const std::optional<double>& value : curve.values)
            values.push_back(CapacityOrNull(value));
        row[Utf8(curve.symbol)] = std::move(values);
    }
}

// A module may fill less than it should.
void RequireComplete(const Design::CapacityTable& table, const Design::DesignCode& code, std::size_t lengths)
{
    const auto isShort = [](const std::vector<Design::CapacityCurve>& curves, std::size_t count) {
        return std::any_of(curves.begin(), curves.end(),
                           [=](const auto& curve) { return curve.values.size() != count; });
    };
    if (isShort(table.reduced, table.shares.size()) || isShort(table.buckling, lengths) ||
        isShort(table.bearing, table.bearings.size()))
        throw BadInput(Utf8(code.Description().title) + ": the capacity table of the design code has gaps");
}

} // namespace

NamedSection FindSectionOfType(const std::string& name, const std::string& type)
{
    NamedSection section = FindSection(name);
    if (type.empty()) return section;
    CSecComp component = section.section.Component(0);
    component.SetType(type == "rolled" ? SEC_ROLLED : type == "welded" ? SEC_WELDED : SEC_FORMED);
    section.section.SetComponent(0, component);
    return section;
}

Design::CapacityTable CapacityTableOf(const NamedSection& section, const std::string& grade,
                                      const std::vector<double>& lengths, const CodeChoice& choice)
{
    Design::CapacityTable table = choice.code->Capacities(section.section, CSteelGrade(Wide(grade), 0.0, 0.0, 0.0, 1.0),
                                                          lengths, choice.settings);
    if (!table.refusal.IsEmpty())
        throw BadInput(section.name + " in " + PrintableLine(grade) + ": " + Utf8(table.refusal));
    RequireComplete(table, *choice.code, lengths.size());
    return table;
}

Json JsonOf(const Design::CapacityTable& table, const std::vector<double>& lengths)
{
    const std::string note = Utf8(table.fabricationNote);
    Json list = Json::array();
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        Json row{{"schema", JSON_SCHEMA},
                 {"LE", lengths[i]},
                 {"type", Utf8(table.fabrication)},
                 {"type_note", note.empty() ? Json() : Json(note)}};
        for (const Design::Capacity& c : table.crossSection)
            row[Utf8(c.resistance.symbol)] = c.resistance.value;
        AddLists(row, table.reduced);
        for (const Design::CapacityCurve& curve : table.buckling)
            row[Utf8(curve.symbol)] = CapacityOrNull(curve.values[i]);
        if (!table.bearing.empty()) row[Utf8(table.bearingName)] = table.bearings;
        AddLists(row, table.bearing);
        for (const CString& text : table.notes)
            row["notes"].push_back(Utf8(text));
        list.push_back(std::move(row));
    }
    return list;
}

} // namespace Keltrix::Host
