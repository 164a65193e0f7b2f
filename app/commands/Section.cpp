#include "commands/Commands.h"
#include "io/Output.h"
#include "sections/SectionCatalogue.h"
#include "sections/SectionSvg.h"
#include "sections/SectionValues.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

std::string TypeName(const CSection& section)
{
    switch (section.Component(0).Type()) {
    case SEC_ROLLED:
        return "hot rolled or hot finished";
    case SEC_FORMED:
        return "cold formed";
    case SEC_WELDED:
        return "welded";
    default:
        return "taken as welded";
    }
}

std::string ValueTable(const std::vector<SectionValue>& values, std::string (*number)(double, int), int figures)
{
    std::string text = "<table>Symbol\tValue\tUnit\tMeaning\n";
    for (const SectionValue& value : values)
        text += value.symbol + '\t' + number(value.si * value.factor, figures) + '\t' + value.unit + '\t' +
                value.meaning + '\n';
    return text + "</table>\n";
}

std::string Markup(const NamedSection& section)
{
    const std::string source = section.entry ? "" : " (area x 7850 kg/m³)";
    return "<h4>" + section.name + "</h4>\n" + ShapeName(section.section.Component(0).Shape()) + " section, " +
           TypeName(section.section) + ", " + Rounded(MassPerMetre(section), 4) + " kg/m" + source + "\n" +
           "<h5>Dimensions</h5>\n" + ValueTable(SectionDimensionValues(section.section), Rounded, 6) +
           "<h5>Properties</h5>\n" + ValueTable(SectionPropertyValues(section.section), Figures, 4);
}

Json JsonOf(const std::vector<SectionValue>& values)
{
    Json object = Json::object();
    for (const SectionValue& value : values)
        object[value.symbol] = value.si;
    return object;
}

Json JsonOf(const NamedSection& section)
{
    return {{"schema", JSON_SCHEMA},
            {"name", section.name},
            {"family", section.entry ? Json(Utf8(section.entry->family)) : Json()},
            {"shape", ShapeName(section.section.Component(0).Shape())},
            {"type", Utf8(SecTypeString(section.section.Component(0).Type()))},
            {"mass_per_metre", MassPerMetre(section)},
            {"dimensions", JsonOf(SectionDimensionValues(section.section))},
            {"properties", JsonOf(SectionPropertyValues(section.section))}};
}

} // namespace

ExitCode ShowSection(const SectionOptions& options, const Console& console)
{
    const NamedSection section = FindSection(options.name);
    if (!options.svgFile.empty()) WriteFile(options.svgFile, SectionSvg(section.section, section.name));
    if (options.svgFile == "-") return EXIT_FINE;
    console.out(options.format == Format::JSON ? JsonText(JsonOf(section))
                                               : RenderMarkup(Markup(section), options.rendering));
    return EXIT_FINE;
}

} // namespace Keltrix::App
