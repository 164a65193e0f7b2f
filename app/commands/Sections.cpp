#include <algorithm>
#include <cmath>

#include "commands/Commands.h"
#include "sections/SectionCatalogue.h"
#include "sections/SectionShapes.h"
#include "text/Fields.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

constexpr double CM2 = 1e4;
constexpr double CM3 = 1e6;
constexpr double CM4 = 1e8;

// One catalogue row with the properties by which sections are chosen. SI.
struct Row {
    std::string family;
    std::string name;
    const CSectDB::Entry* entry;
    double A, Ixx, Iyy, Zxx, Sxx, ry;
};

Row RowOf(const CSectDB::Entry& entry)
{
    const auto geometry = MakeGeometry(CSection(entry.designation));
    if (!geometry) {
        const double none = std::nan("");
        return {Utf8(entry.family), Utf8(entry.designation), &entry, none, none, none, none, none, none};
    }
    return {Utf8(entry.family), Utf8(entry.designation), &entry,
            geometry->Area(),   geometry->Ixx(),         geometry->Iyy(),
            geometry->Zxx(),    geometry->Sxx(),         std::sqrt(geometry->Iyy() / geometry->Area())};
}

struct SortKey {
    std::string_view name;
    double (*value)(const Row&);
};

constexpr SortKey SORT_KEYS[] = {
    {"mass", [](const Row& row) { return row.entry->massPerMetre; }},
    {"depth", [](const Row& row) { return row.entry->depth; }},
    {"A", [](const Row& row) { return row.A; }},
    {"Ixx", [](const Row& row) { return row.Ixx; }},
    {"Iyy", [](const Row& row) { return row.Iyy; }},
    {"Zxx", [](const Row& row) { return row.Zxx; }},
    {"Sxx", [](const Row& row) { return row.Sxx; }},
    {"ry", [](const Row& row) { return row.ry; }},
};

// Ascending; rows of equal value stay in catalogue order.
void SortRows(std::vector<Row>& rows, const std::string& key)
{
    if (key.empty()) return;
    if (key == "name") {
        std::stable_sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.name < b.name; });
        return;
    }
    std::string names = "name";
    for (const SortKey& known : SORT_KEYS) {
        names += ", " + std::string(known.name);
        if (known.name != key) continue;
        std::stable_sort(rows.begin(), rows.end(),
                         [&](const Row& a, const Row& b) { return known.value(a) < known.value(b); });
        return;
    }
    throw BadUsage("--sort: got \"" + PrintableLine(key) + "\", expected one of " + names);
}

std::string Markup(const std::vector<Row>& rows)
{
    std::string text = "<table>Section\tMass\tD\tB\tt\tT\tA\tIxx\tIyy\tZxx\tSxx\try\n"
                       "<tablewrap><i>kg/m\tmm\tmm\tmm\tmm\tcm²\tcm⁴\tcm⁴\tcm³\tcm³\tcm</i></tablewrap>\n";
    const auto mm = [](double metres) { return metres > 0.0 ? Rounded(metres * 1e3, 5) : std::string("-"); };
    for (const Row& row : rows) {
        text += row.name + '\t' + Rounded(row.entry->massPerMetre, 4) + '\t' + mm(row.entry->depth) + '\t' +
                mm(row.entry->width) + '\t' + mm(row.entry->webThickness) + '\t' + mm(row.entry->flangeThickness) +
                '\t' + Figures(row.A * CM2, 3) + '\t' + Figures(row.Ixx * CM4, 4) + '\t' + Figures(row.Iyy * CM4, 3) +
                '\t' + Figures(row.Zxx * CM3, 3) + '\t' + Figures(row.Sxx * CM3, 3) + '\t' + Figures(row.ry * 1e2, 3) +
                '\n';
    }
    return text + "</table>\n";
}

Json JsonOf(const std::vector<Row>& rows)
{
    Json list = Json::array();
    for (const Row& row : rows) {
        const CSectDB::Entry& entry = *row.entry;
        list.push_back({{"schema", JSON_SCHEMA},
                        {"name", row.name},
                        {"family", row.family},
                        {"shape", ShapeName(entry.shape)},
                        {"mass_per_metre", entry.massPerMetre},
                        {"D", entry.depth},
                        {"B", entry.width},
                        {"t", entry.webThickness},
                        {"T", entry.flangeThickness},
                        {"r", entry.rootRadius},
                        {"rt", entry.toeRadius},
                        {"A", row.A},
                        {"Ixx", row.Ixx},
                        {"Iyy", row.Iyy},
                        {"Zxx", row.Zxx},
                        {"Sxx", row.Sxx},
                        {"ry", row.ry}});
    }
    return list;
}

} // namespace

ExitCode ListSections(const SectionsOptions& options, const Console& console)
{
    if (!(options.minIxx >= 0.0 && std::isfinite(options.minIxx)))
        throw BadUsage("--min-Ixx: got " + Shortest(options.minIxx) +
                       ", expected a second moment of area in cm^4, not below 0");
    const std::string family = options.family.empty() ? std::string() : FamilyNamed(options.family);
    std::vector<Row> rows;
    for (const CSectDB::Entry& entry : CSectDB::GetDatabase()->Entries()) {
        if (!family.empty() && Utf8(entry.family) != family) continue;
        Row row = RowOf(entry);
        const bool isStiffEnough = row.Ixx * CM4 >= options.minIxx || options.minIxx <= 0.0;
        if (isStiffEnough) rows.push_back(std::move(row));
    }
    SortRows(rows, options.sort);
    if (options.format == Format::JSON) {
        console.out(JsonText(JsonOf(rows)));
        return EXIT_FINE;
    }
    console.out(rows.empty() ? "no section matches\n" : RenderMarkup(Markup(rows), options.rendering));
    return EXIT_FINE;
}

} // namespace Keltrix::App
