#include <charconv>
#include <cmath>

#include "Json.h"
#include "SectionCatalogue.h"
#include "Text.h"
#include "commands/Bs5950Commands.h"
#include "keltrix/bs5950/BS5950.h"

namespace Keltrix::App {

namespace {

constexpr int RATIOS = 11; // F/(A py) = 0.0, 0.1, ... 1.0

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

const char* FabricationWord(const BS5950::SectionProperties& section)
{
    switch (section.fabrication) {
    case BS5950::Fabrication::Rolled:
        return "rolled";
    case BS5950::Fabrication::Formed:
        return "formed";
    default:
        return "welded";
    }
}

// The section as --type says it is made.
NamedSection SectionOfType(const CapacityOptions& options)
{
    NamedSection section = FindSection(options.name);
    if (options.type.empty()) return section;
    CSecComp component = section.section.Component(0);
    component.SetType(options.type == "rolled" ? SEC_ROLLED : options.type == "welded" ? SEC_WELDED : SEC_FORMED);
    section.section.SetComponent(0, component);
    return section;
}

std::string Markup(const NamedSection& section, const std::string& grade, const BS5950::SectionCapacity& c,
                   const std::vector<double>& lengths)
{
    std::string text = "<h4>" + section.name + " in " + grade + "</h4>\n";
    text += "py = " + Rounded(c.Steel().py / 1e6, 4) + " N/mm², class " + std::to_string(c.ClassMajorBending()) +
            " in bending about x-x, " + std::to_string(c.ClassMinorBending()) + " about y-y, " +
            std::to_string(c.ClassCompression()) + " in compression\n";
    if (const wchar_t* note = BS5950::FabricationNote(c.Section()))
        text += "<orange>" + Utf8(std::wstring_view(note)) + "</orange>\n";
    else
        text += std::string(FabricationWord(c.Section())) + '\n';
    text += "<h5>Cross-section</h5>\n<table>Pz\tPt\tPvx\tPvy\tMcx\tMcy\n"
            "<tablewrap><i>kN\tkN\tkN\tkN\tkNm\tkNm</i></tablewrap>\n";
    text += Kilo(c.Pz(), 4) + '\t' + Kilo(c.Pt(), 4) + '\t' + Kilo(c.Pvx(), 3) + '\t' + Kilo(c.Pvy(), 3) + '\t' +
            Kilo(c.Mcx(), 3) + '\t' + Kilo(c.Mcy(), 3) + "\n</table>\n";

    text += "<h5>Reduced moment capacities (kNm)</h5>\n<table>F/(A py)";
    std::string x = "\nMrx";
    std::string y = "\nMry";
    for (int i = 0; i < RATIOS; ++i) {
        text += i < 10 ? "\t0." + std::to_string(i) : "\t1.0";
        x += '\t' + OrDash(c.Mrx(i / 10.0));
        y += '\t' + OrDash(c.Mry(i / 10.0));
    }
    text += x + y + "\n</table>\n";

    text += "<h5>Buckling resistances</h5>\n<table>LE\tPcx\tPcy\tMb\n"
            "<tablewrap><i>m\tkN\tkN\tkNm</i></tablewrap>\n";
    for (const double LE : lengths)
        text +=
            Rounded(LE, 5) + '\t' + Kilo(c.Pcx(LE), 3) + '\t' + Kilo(c.Pcy(LE), 3) + '\t' + Kilo(c.Mb(LE), 3) + '\n';
    return text + "</table>\n";
}

Json JsonOf(const BS5950::SectionCapacity& c, const std::vector<double>& lengths)
{
    Json Mrx = Json::array();
    Json Mry = Json::array();
    for (int i = 0; i < RATIOS; ++i) {
        const std::optional<double> x = c.Mrx(i / 10.0);
        const std::optional<double> y = c.Mry(i / 10.0);
        Mrx.push_back(x ? Json(*x) : Json());
        Mry.push_back(y ? Json(*y) : Json());
    }
    const wchar_t* const note = BS5950::FabricationNote(c.Section());
    Json list = Json::array();
    for (const double LE : lengths) {
        list.push_back({{"LE", LE},
                        {"type", FabricationWord(c.Section())},
                        {"type_note", note ? Json(Utf8(std::wstring_view(note))) : Json()},
                        {"Pz", c.Pz()},
                        {"Pt", c.Pt()},
                        {"Pvx", c.Pvx()},
                        {"Pvy", c.Pvy()},
                        {"Mcx", c.Mcx()},
                        {"Mcy", c.Mcy()},
                        {"Mrx", Mrx},
                        {"Mry", Mry},
                        {"Pcx", c.Pcx(LE)},
                        {"Pcy", c.Pcy(LE)},
                        {"Mb", c.Mb(LE)}});
    }
    return list;
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
    const NamedSection section = SectionOfType(options);
    const BS5950::SectionCapacity capacity(section.section, CSteelGrade(Wide(options.grade), 0.0, 0.0, 0.0, 1.0));
    if (!capacity.IsValid())
        throw BadInput(section.name + " in " + PrintableLine(options.grade) + ": " +
                       Utf8(std::wstring_view(capacity.Refusal())));
    console.out(
        options.format == Format::JSON
            ? JsonText(JsonOf(capacity, lengths))
            : RenderMarkup(Markup(section, PrintableLine(options.grade), capacity, lengths), options.rendering));
    return EXIT_FINE;
}

} // namespace Keltrix::App
