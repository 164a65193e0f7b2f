#include <algorithm>
#include <charconv>
#include <cmath>

#include "check/CapacityReport.h"
#include "commands/CodeCommands.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::App {

namespace {

[[noreturn]] void RefuseLengths(const std::string& text)
{
    throw BadUsage("--LE: got \"" + PrintableLine(text) +
                   "\", expected lengths in m above 0 as 1:14, 1:14:0.5 or 2,4.5,6");
}

// The numbers between separators; a text that is no such list is refused.
std::vector<double> Numbers(const std::string& text, char separator, const std::string& whole)
{
    std::vector<double> numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (;;) {
        double value = 0.0;
        const auto [next, error] = std::from_chars(at, end, value);
        if (error != std::errc() || !(value > 0.0) || !std::isfinite(value)) RefuseLengths(whole);
        numbers.push_back(value);
        if (next == end) return numbers;
        if (*next != separator) RefuseLengths(whole);
        at = next + 1;
    }
}

std::string Kilo(double value, int figures) { return Figures(value / 1e3, figures); }

std::string OrDash(const std::optional<double>& value) { return value ? Kilo(*value, 3) : "-"; }

const char* UnitOf(Design::Quantity quantity)
{
    return quantity == Design::Quantity::Moment ? "kNm" : quantity == Design::Quantity::Force ? "kN" : "";
}

std::string ClassText(const Design::CapacityTable& table)
{
    std::string text;
    for (const Design::CapacityClass& c : table.classes)
        text += (text.empty() ? ", class " : ", ") + std::to_string(c.cls) + ' ' + Utf8(c.state);
    return text;
}

// With a decimal: "0.0", "0.25".
std::string ShareText(double share)
{
    const std::string text = Rounded(share, 3);
    return text.find('.') == std::string::npos ? text + ".0" : text;
}

std::string CrossSectionMarkup(const Design::CapacityTable& table)
{
    std::string symbols;
    std::string units;
    std::string values;
    for (const Design::Capacity& c : table.crossSection) {
        const char* const gap = symbols.empty() ? "" : "\t";
        symbols.append(gap).append(Utf8(c.resistance.symbol));
        units.append(gap).append(UnitOf(c.resistance.quantity));
        values.append(gap).append(Kilo(c.resistance.value, c.figures));
    }
    return "<h5>Cross-section</h5>\n<table>" + symbols + "\n<tablewrap><i>" + units + "</i></tablewrap>\n" + values +
           "\n</table>\n";
}

std::string ReducedMarkup(const Design::CapacityTable& table)
{
    if (table.reduced.empty()) return {};
    std::string text = "<h5>Reduced moment capacities (kNm)</h5>\n<table>" + Utf8(table.shareName);
    for (const double share : table.shares)
        text += '\t' + ShareText(share);
    for (const Design::CapacityCurve& curve : table.reduced) {
        text += '\n' + Utf8(curve.symbol);
        for (const std::optional<double>& value : curve.values)
            text += '\t' + OrDash(value);
    }
    return text + "\n</table>\n";
}

std::string BearingMarkup(const Design::CapacityTable& table)
{
    if (table.bearing.empty()) return {};
    std::string text = "<h5>Web under concentrated loads</h5>\n<table>" + Utf8(table.bearingName);
    std::string units = "mm";
    for (const Design::CapacityCurve& curve : table.bearing) {
        text.append("\t").append(Utf8(curve.symbol));
        units.append("\t").append(UnitOf(curve.quantity));
    }
    text += "\n<tablewrap><i>" + units + "</i></tablewrap>\n";
    for (std::size_t i = 0; i < table.bearings.size(); ++i) {
        text += Rounded(table.bearings[i] * 1e3, 5);
        for (const Design::CapacityCurve& curve : table.bearing)
            text += '\t' + OrDash(curve.values[i]);
        text += '\n';
    }
    return text + "</table>\n";
}

std::string NotesMarkup(const Design::CapacityTable& table)
{
    std::string text;
    for (const CString& note : table.notes)
        text += "<orange>" + Utf8(note) + "</orange>\n";
    return text;
}

std::string BucklingMarkup(const Design::CapacityTable& table, const std::vector<double>& lengths)
{
    if (table.buckling.empty()) return {};
    std::string text = "<h5>Buckling resistances</h5>\n<table>LE";
    std::string units = "m";
    for (const Design::CapacityCurve& curve : table.buckling) {
        text.append("\t").append(Utf8(curve.symbol));
        units.append("\t").append(UnitOf(curve.quantity));
    }
    text += "\n<tablewrap><i>" + units + "</i></tablewrap>\n";
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        text += Rounded(lengths[i], 5);
        for (const Design::CapacityCurve& curve : table.buckling)
            text += '\t' + OrDash(curve.values[i]);
        text += '\n';
    }
    return text + "</table>\n";
}

std::string Markup(const NamedSection& section, const std::string& grade, const Design::CapacityTable& table,
                   const std::vector<double>& lengths)
{
    std::string text = "<h4>" + section.name + " in " + grade + "</h4>\n";
    text += Utf8(table.designStrength.symbol) + " = " + Rounded(table.designStrength.value / 1e6, 4) + " N/mm²" +
            ClassText(table) + '\n';
    const std::string note = Utf8(table.fabricationNote);
    text += note.empty() ? Utf8(table.fabrication) + '\n' : "<orange>" + note + "</orange>\n";
    return text + NotesMarkup(table) + CrossSectionMarkup(table) + ReducedMarkup(table) +
           BucklingMarkup(table, lengths) + BearingMarkup(table);
}

} // namespace

std::vector<double> EffectiveLengthList(const std::string& text)
{
    constexpr double most = 1000.0;
    if (text.find(':') == std::string::npos) {
        std::vector<double> lengths = Numbers(text, ',', text);
        if (static_cast<double>(lengths.size()) > most) RefuseLengths(text);
        return lengths;
    }
    std::vector<double> range = Numbers(text, ':', text);
    if (range.size() == 2) range.push_back(1.0);
    // Half a thousandth of a step forgives the rounding of decimal steps.
    const double steps = std::floor((range[1] - range[0]) / range[2] + 5e-4);
    if (range.size() != 3 || !(steps >= 0.0) || steps >= most) RefuseLengths(text);
    std::vector<double> lengths;
    for (int i = 0; i <= static_cast<int>(steps); ++i)
        lengths.push_back(range[0] + i * range[2]);
    return lengths;
}

ExitCode Capacity(const CapacityOptions& options, const Console& console)
{
    const std::vector<double> lengths = EffectiveLengthList(options.LE);
    const NamedSection section = FindSectionOfType(options.name, options.type);
    const Design::DesignCode& code = *options.code.code;
    const std::string grade = options.grade.empty() ? Utf8(code.Description().grades.front().name) : options.grade;
    const Design::CapacityTable table = CapacityTableOf(section, grade, lengths, options.code);
    console.out(options.format == Format::JSON
                    ? JsonText(JsonOf(table, lengths))
                    : RenderMarkup(Markup(section, PrintableLine(grade), table, lengths), options.rendering));
    return EXIT_FINE;
}

} // namespace Keltrix::App
