// The catalogue and the properties of sections.

#include <algorithm>
#include <limits>

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include "Bindings.h"
#include "sections/SectionCatalogue.h"
#include "sections/SectionSvg.h"
#include "sections/SectionValues.h"
#include "text/Text.h"

namespace Keltrix::Python {

namespace {

using Host::NamedSection;
using Host::SectionValue;

py::list ListOf(const std::vector<SectionValue>& values)
{
    py::list list;
    for (const SectionValue& value : values)
        list.append(
            py::make_tuple(TextOf(value.symbol), value.si, TextOf(value.unit), value.factor, TextOf(value.meaning)));
    return list;
}

// What stands in a table. A dimension whose symbol a property has is told apart from it.
std::vector<SectionValue> ValuesOf(const CSection& section)
{
    const std::vector<SectionValue> properties = Host::SectionPropertyValues(section);
    std::vector<SectionValue> values = Host::SectionDimensionValues(section);
    for (SectionValue& value : values)
        if (std::any_of(properties.begin(), properties.end(),
                        [&](const SectionValue& property) { return property.symbol == value.symbol; }))
            value.symbol += "_dimension";
    values.insert(values.end(), properties.begin(), properties.end());
    return values;
}

py::dict SectionOf(const std::string& name)
{
    const NamedSection section = Host::FindSection(name);
    const CSecComp& component = section.section.Component(0);
    py::dict made;
    made["name"] = TextOf(section.name);
    made["family"] = section.entry ? py::object(TextOf(section.entry->family.GetString())) : py::none();
    made["shape"] = TextOf(Host::ShapeName(component.Shape()));
    made["type"] = TextOf(SecTypeString(component.Type()).GetString());
    made["mass_per_metre"] = Host::MassPerMetre(section);
    made["dimensions"] = ListOf(Host::SectionDimensionValues(section.section));
    made["properties"] = ListOf(Host::SectionPropertyValues(section.section));
    return made;
}

py::list Designations(const std::string& family)
{
    const std::string wanted = family.empty() ? std::string() : Host::FamilyNamed(family);
    py::list names;
    for (const CSectDB::Entry& entry : CSectDB::GetDatabase()->Entries())
        if (wanted.empty() || Host::Utf8(entry.family) == wanted) names.append(TextOf(entry.designation.GetString()));
    return names;
}

// A row of numbers for each section of a family: mass first, then what the sections have, in the order of the first that has it.
py::tuple Table(const std::string& family)
{
    const std::string wanted = Host::FamilyNamed(family);
    std::vector<std::string> symbols{"mass_per_metre"};
    std::vector<std::vector<std::pair<std::size_t, double>>> rows;
    py::list names;
    for (const CSectDB::Entry& entry : CSectDB::GetDatabase()->Entries()) {
        if (Host::Utf8(entry.family) != wanted) continue;
        names.append(TextOf(entry.designation.GetString()));
        std::vector<std::pair<std::size_t, double>>& row = rows.emplace_back();
        row.emplace_back(0, entry.massPerMetre);
        for (const SectionValue& value : ValuesOf(CSection(entry.designation))) {
            const auto at = std::find(symbols.begin(), symbols.end(), value.symbol);
            row.emplace_back(static_cast<std::size_t>(at - symbols.begin()), value.si);
            if (at == symbols.end()) symbols.push_back(value.symbol);
        }
    }
    py::array_t<double> numbers({rows.size(), symbols.size()});
    auto cells = numbers.mutable_unchecked<2>();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (std::size_t j = 0; j < symbols.size(); ++j)
            cells(static_cast<py::ssize_t>(i), static_cast<py::ssize_t>(j)) = std::numeric_limits<double>::quiet_NaN();
        for (const auto& [column, value] : rows[i])
            cells(static_cast<py::ssize_t>(i), static_cast<py::ssize_t>(column)) = value;
    }
    return py::make_tuple(names, symbols, numbers);
}

} // namespace

void AddSections(py::module_& module)
{
    module.def("families", Host::Families);
    module.def("designations", Designations, py::arg("family"));
    module.def("section", SectionOf, py::arg("name"));
    module.def("section_table", Table, py::arg("family"));
    module.def(
        "section_svg",
        [](const std::string& name) {
            const NamedSection section = Host::FindSection(name);
            return TextOf(Host::SectionSvg(section.section, section.name));
        },
        py::arg("name"));
}

} // namespace Keltrix::Python
