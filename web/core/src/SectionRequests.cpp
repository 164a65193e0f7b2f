#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "Replies.h"
#include "RequestFields.h"
#include "check/CapacityReport.h"
#include "check/CheckedBeam.h"
#include "check/SectionChoice.h"
#include "keltrix/host/Host.h"
#include "sections/SectionCatalogue.h"
#include "sections/SectionSvg.h"
#include "sections/SectionValues.h"
#include "text/BadInput.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::Web {

using Host::BadInput;
using Host::CodeChoice;
using Host::Json;
using Host::JsonObject;
using Host::Utf8;

namespace {

Json ValueList(const std::vector<Host::SectionValue>& values)
{
    Json list = Json::array();
    for (const Host::SectionValue& value : values)
        list.push_back(JsonObject("symbol", value.symbol, "value", Host::Rounded(value.si * value.factor, 4), "unit",
                                  value.unit, "meaning", value.meaning));
    return list;
}

// The figures of sections in words, as `ksteel design` shows them.
void AddTexts(Json& list, const std::vector<Host::Candidate>& candidates)
{
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        list[i]["shown"] = Host::UtilisationText(candidates[i].utilisation);
        list[i]["mass_text"] = Host::Rounded(candidates[i].entry->massPerMetre, 4);
        list[i]["depth_text"] = Host::Rounded(candidates[i].entry->depth * 1e3, 4);
        list[i]["warnings"] = candidates[i].warnings.size();
    }
}

const char* KiloUnitOf(Design::Quantity quantity)
{
    return quantity == Design::Quantity::Moment ? ", kNm" : quantity == Design::Quantity::Force ? ", kN" : "";
}

std::string CapacityText(const std::optional<double>& value)
{
    return value ? Host::Figures(*value / 1e3, 3) : "\u2013";
}

// One row for each number of the first column, one column for each curve.
Json CurveTable(const char* title, const std::string& first, const std::vector<double>& numbers,
                const std::vector<Design::CapacityCurve>& curves)
{
    Json head = Json::array({first});
    for (const Design::CapacityCurve& curve : curves)
        head.push_back(Utf8(curve.symbol) + KiloUnitOf(curve.quantity));
    Json rows = Json::array();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        Json row = Json::array({Host::Rounded(numbers[i], 5)});
        for (const Design::CapacityCurve& curve : curves)
            row.push_back(CapacityText(curve.values[i]));
        rows.push_back(std::move(row));
    }
    return JsonObject("title", title, "head", std::move(head), "rows", std::move(rows));
}

// One column for each share of an axial force.
Json ReducedTable(const Design::CapacityTable& table)
{
    Json head = Json::array({Utf8(table.shareName)});
    for (const double share : table.shares)
        head.push_back(Host::Rounded(share, 3));
    Json rows = Json::array();
    for (const Design::CapacityCurve& curve : table.reduced) {
        Json row = Json::array({Utf8(curve.symbol) + KiloUnitOf(curve.quantity)});
        for (const std::optional<double>& value : curve.values)
            row.push_back(CapacityText(value));
        rows.push_back(std::move(row));
    }
    return JsonObject("title", "Reduced by an axial force", "head", std::move(head), "rows", std::move(rows));
}

Json CrossSectionTable(const Design::CapacityTable& table)
{
    Json head = Json::array();
    Json row = Json::array();
    for (const Design::Capacity& capacity : table.crossSection) {
        head.push_back(Utf8(capacity.resistance.symbol) + KiloUnitOf(capacity.resistance.quantity));
        row.push_back(Host::Figures(capacity.resistance.value / 1e3, capacity.figures));
    }
    return JsonObject("title", "Cross-section", "head", std::move(head), "rows", Json::array({std::move(row)}));
}

// Of each resistance that depends on the effective length: pairs of that and its size.
Json CapacityCharts(const Design::CapacityTable& table, const std::vector<double>& lengths)
{
    Json charts = Json::array();
    for (const Design::CapacityCurve& curve : table.buckling) {
        Json points = Json::array();
        double most = 0.0;
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            if (!curve.values[i]) continue;
            points.push_back(Json::array({lengths[i], *curve.values[i]}));
            most = std::max(most, *curve.values[i]);
        }
        charts.push_back(JsonObject("title", Utf8(curve.symbol) + KiloUnitOf(curve.quantity), "points",
                                    std::move(points), "most", most, "most_text", Host::Figures(most / 1e3, 3)));
    }
    return charts;
}

std::string ClassWords(const Design::CapacityTable& table)
{
    std::string text;
    for (const Design::CapacityClass& one : table.classes)
        text += (text.empty() ? "class " : ", class ") + std::to_string(one.cls) + ' ' + Utf8(one.state);
    return text;
}

} // namespace

// Name, family, mass in kg/m and outer dimensions in mm of every section.
Json Sections(const Json&, std::string_view)
{
    Json list = Json::array();
    for (const CSectDB::Entry& entry : CSectDB::GetDatabase()->Entries())
        list.push_back(Json::array(
            {Utf8(entry.designation), Utf8(entry.family), entry.massPerMetre, entry.depth * 1e3, entry.width * 1e3}));
    return list;
}

Json Section(const Json& request, std::string_view)
{
    const Host::NamedSection section = Host::FindSection(WordOf(request, "section"));
    const CSecComp& component = section.section.Component(0);
    return JsonObject("name", section.name, "shape", Host::ShapeName(component.Shape()), "mass",
                      Host::Rounded(Host::MassPerMetre(section), 4), "dimensions",
                      ValueList(Host::SectionDimensionValues(section.section)), "properties",
                      ValueList(Host::SectionPropertyValues(section.section)), "svg",
                      Host::SectionSvg(section.section, section.name));
}

Json Lightest(const Json& request, std::string_view bytes)
{
    const Host::Settings settings = SettingsOf(request);
    const double depth = NumberOf(request, "depth", std::nan(""));
    const double count = NumberOf(request, "count", 6.0);
    if (!(count >= 1.0 && count <= 100.0)) throw BadInput("count: expected 1 to 100");
    Host::SectionSearch search;
    search.families = WordsOf(request, "families");
    if (search.families.empty()) throw BadInput("families: expected one or more");
    search.by = WordOf(request, "by", "mass");
    if (search.by != "mass" && search.by != "depth") throw BadInput("by: expected mass or depth");
    if (!std::isnan(depth)) {
        if (!(depth > 0.0)) throw BadInput("depth: expected a depth in mm above 0");
        search.maxDepth = depth / 1e3;
    }
    search.count = static_cast<int>(count);
    search.code = ChoiceOf(settings);
    search.reading = ReadingOf(settings);
    const Host::Beam beam = Host::ReadBeam(NameOf(request), bytes, search.reading, search.code);
    if (beam.members.empty()) throw BadInput("the beam has errors: no section can be chosen");
    const Host::SectionChoice choice = Host::ChooseSection(beam, search);
    Json json = Host::JsonOf(choice, search.by,
                             {beam.file.name, 1, beam.file.title,
                              choice.passing.empty() ? Host::WarningsOf(beam) : choice.passing.front().warnings});
    AddTexts(json["passing"], choice.passing);
    AddTexts(json["lighter_failing"], choice.failing);
    return json;
}

// Resistances of a section, every figure as `ksteel capacity` prints it.
Json Capacity(const Json& request, std::string_view)
{
    const CodeChoice choice = ChoiceOf(SettingsOf(request));
    std::vector<double> lengths;
    for (const Json& length : request.value("lengths", Json::array()))
        lengths.push_back(length.is_number() ? length.get<double>() : std::nan(""));
    if (lengths.empty()) throw BadInput("lengths: expected effective lengths in m");
    for (const double length : lengths)
        if (!(length > 0.0) || !std::isfinite(length)) throw BadInput("lengths: expected lengths in m above 0");
    const Host::NamedSection section = Host::FindSectionOfType(WordOf(request, "section"), WordOf(request, "type"));
    const Design::CapacityTable table = Host::CapacityTableOf(section, WordOf(request, "grade"), lengths, choice);
    std::vector<double> bearings = table.bearings;
    for (double& length : bearings)
        length *= 1e3;
    Json tables = Json::array({CrossSectionTable(table)});
    if (!table.buckling.empty())
        tables.push_back(CurveTable("Buckling, by effective length", "LE, m", lengths, table.buckling));
    if (!table.reduced.empty()) tables.push_back(ReducedTable(table));
    if (!table.bearing.empty())
        tables.push_back(
            CurveTable("Web under concentrated loads", Utf8(table.bearingName) + ", mm", bearings, table.bearing));
    Json notes = Json::array();
    if (table.fabricationNote[0] != L'\0') notes.push_back(Utf8(table.fabricationNote));
    for (const CString& note : table.notes)
        notes.push_back(Utf8(note));
    return JsonObject("section", section.name, "strength",
                      Utf8(table.designStrength.symbol) + " = " +
                          TextOf(table.designStrength.quantity, table.designStrength.value),
                      "classes", ClassWords(table), "fabrication", Utf8(table.fabrication), "notes", std::move(notes),
                      "tables", std::move(tables), "charts", CapacityCharts(table, lengths));
}

} // namespace Keltrix::Web
