#include "loads/NewBeam.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "keltrix/platform/KxUtil.h"
#include "keltrix/statics/Combinations.h"
#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Host {

namespace {

constexpr const char* LOAD_KINDS[] = {"permanent", "dead", "imposed", "live", "snow", "snow-above-1000m", "wind"};
constexpr const char* KIND_LIST = "dead, permanent, imposed, live, snow, snow-above-1000m or wind";
// As the reader of beam files has them.
constexpr double LONGEST_BEAM = 1e4;
constexpr double LARGEST_LOAD = 1e9;

// Of a basic string of TOML.
std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : PrintableLine(text)) {
        if (c == '"' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

// A comment behind a line, in one column with the others.
std::string Commented(const std::string& line, const std::string& comment)
{
    constexpr std::size_t column = 34;
    return line + std::string(line.size() < column ? column - line.size() : 1, ' ') + "# " + comment + '\n';
}

std::optional<double> NumberIn(const std::string& text)
{
    const CString wide = Wide(text);
    const std::wstring_view view = wide.View();
    if (view.empty() || NumberPrefix(view) != view.size()) return std::nullopt;
    std::wstring_view rest = view;
    const double value = GetValueDouble(rest);
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<double> PlaceIn(const std::string& text)
{
    const std::optional<double> place = NumberIn(text);
    return place && *place >= 0.0 && *place <= LONGEST_BEAM ? place : std::nullopt;
}

std::string Got(const std::string& text) { return "got \"" + PrintableLine(text) + "\""; }

// "3" or "0:6".
std::string ReadPlaces(const std::string& text, std::optional<double>& from, std::optional<double>& to)
{
    const std::size_t colon = text.find(':');
    from = PlaceIn(text.substr(0, colon));
    if (colon != std::string::npos) to = PlaceIn(text.substr(colon + 1));
    if (!from || (colon != std::string::npos && !to))
        return "expected a place in m as 3, or two of them as 0:6, from the left end";
    if (to && !(*to > *from)) return "expected the second place beyond the first one";
    return {};
}

const char* UnitOf(NewBeam::Shape shape)
{
    return shape == NewBeam::Shape::Uniform ? "kN/m" : shape == NewBeam::Shape::Point ? "kN" : "kNm";
}

const char* KeyOf(NewBeam::Shape shape)
{
    return shape == NewBeam::Shape::Uniform ? "udl" : shape == NewBeam::Shape::Point ? "point" : "moment";
}

const char* MeaningOf(NewBeam::Shape shape)
{
    return shape == NewBeam::Shape::Uniform ? "kN/m, downwards"
           : shape == NewBeam::Shape::Point ? "kN, downwards"
                                            : "kNm, clockwise";
}

double LengthOf(const NewBeam& beam) { return std::accumulate(beam.spans.begin(), beam.spans.end(), 0.0); }

std::string RestraintText(const NewBeam::Restraint& restraint)
{
    std::string text = "\n[[restraint]]\n";
    if (restraint.to)
        text += Commented("from = " + Shortest(restraint.from), "m from the left end") +
                "to = " + Shortest(*restraint.to) + '\n';
    else
        text += Commented("at = " + Shortest(restraint.from), "m from the left end, or a list of places");
    return text + "holds = " + Quoted(restraint.holds) + '\n';
}

std::string LoadText(const NewBeam::Load& load)
{
    std::string text = "\n[[load]]\ncase = " + Quoted(load.name) + '\n' +
                       Commented(std::string(KeyOf(load.shape)) + " = " + Shortest(load.value), MeaningOf(load.shape));
    if (load.shape != NewBeam::Shape::Uniform) return text + "at = " + Shortest(load.from.value_or(0.0)) + '\n';
    if (load.from) text += "from = " + Shortest(*load.from) + '\n';
    if (load.to) text += "to = " + Shortest(*load.to) + '\n';
    return text;
}

// "en1990, en1990-uk, ...".
std::string StandardNames()
{
    std::string names;
    for (const Statics::CombinationStandard& standard : Statics::CombinationStandards())
        names += (names.empty() ? "" : ", ") + Utf8(standard.name);
    return names;
}

std::string HeadText(const NewBeam& beam)
{
    std::string spans;
    for (const double span : beam.spans)
        spans += (spans.empty() ? "" : ", ") + Shortest(span);
    return "# A beam for ksteel, in m, kN, kN/m and kNm. \"ksteel loads FILE\" shows forces and reactions,\n"
           "# \"ksteel check FILE\" checks it.\n"
           "title = " +
           Quoted(beam.title) + '\n' +
           Commented("section = " + Quoted(beam.section), "as \"ksteel sections\" lists it, or a description") +
           "grade = " + Quoted(beam.grade) + '\n' + Commented("spans = [" + spans + "]", "from support to support") +
           Commented("supports = \"Pinned\"", "\"Fixed\", or a list: [{ at = 0, holds = \"Pinned\" }, ...]") +
           (beam.combinations.empty() ? std::string()
                                      : Commented("combinations = " + Quoted(beam.combinations), StandardNames())) +
           Commented("deflection = { imposed = 360 }", "span/360 of imposed loads; total = 250 of all loads") +
           "# self-weight = false             # without this line the weight of the section acts, too\n";
}

} // namespace

std::string BeamFileText(const NewBeam& beam)
{
    std::string text = HeadText(beam);
    if (beam.restraints.empty())
        text += "\n# A length or a place that is held without carrying loads, such as by a deck:\n"
                "# [[restraint]]\n# from = 0\n# to = " +
                Shortest(LengthOf(beam)) + "\n# holds = \"Top flange lateral\"\n";
    for (const NewBeam::Restraint& restraint : beam.restraints)
        text += RestraintText(restraint);
    text += std::string("\n# Loads. The case is a kind (") + KIND_LIST +
            ")\n# or a name of your own with kind = \"imposed\" beside it.\n";
    if (beam.loads.empty()) text += "# This load is an example. Put yours in its place.\n";
    const std::vector<NewBeam::Load> example{{"dead", NewBeam::Shape::Uniform, 1.0, {}, {}}};
    for (const NewBeam::Load& load : beam.loads.empty() ? example : beam.loads)
        text += LoadText(load);
    return text;
}

std::string ReadNewRestraint(const std::string& text, NewBeam& beam)
{
    const std::size_t at = text.find('@');
    const std::string what = text.substr(0, at);
    NewBeam::Restraint restraint;
    if (what == "top")
        restraint.holds = "Top flange lateral";
    else if (what == "bottom")
        restraint.holds = "Bottom flange lateral";
    else if (what == "both")
        restraint.holds = "F1L F2L";
    else
        return Got(text) + ", expected top, bottom or both, then @ and a place in m, as top@0:6 or bottom@3";
    std::optional<double> from;
    const std::string fault =
        ReadPlaces(at == std::string::npos ? std::string() : text.substr(at + 1), from, restraint.to);
    if (!fault.empty()) return Got(text) + ", " + fault;
    restraint.from = *from;
    beam.restraints.push_back(restraint);
    return {};
}

std::string ReadNewLoad(const std::string& text, NewBeam::Shape shape, NewBeam& beam)
{
    const bool isUniform = shape == NewBeam::Shape::Uniform;
    const std::string form = std::string("a case, = and a load in ") + UnitOf(shape) +
                             (isUniform ? ", as dead=12 or snow=3@0:4" : ", then @ and a place in m, as imposed=45@3");
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) return Got(text) + ", expected " + form;
    NewBeam::Load load;
    load.shape = shape;
    load.name = text.substr(0, equals);
    if (std::find(std::begin(LOAD_KINDS), std::end(LOAD_KINDS), load.name) == std::end(LOAD_KINDS))
        return Got(load.name) + " for the case, expected " + KIND_LIST;
    const std::size_t at = text.find('@', equals);
    const std::size_t end = at == std::string::npos ? text.size() : at;
    const std::optional<double> value = NumberIn(text.substr(equals + 1, end - equals - 1));
    if (!value || std::fabs(*value) > LARGEST_LOAD) return Got(text) + ", expected " + form;
    load.value = *value;
    if (at == std::string::npos && !isUniform) return Got(text) + " without a place, expected " + form;
    if (at != std::string::npos) {
        const std::string fault = ReadPlaces(text.substr(at + 1), load.from, load.to);
        if (!fault.empty()) return Got(text) + ", " + fault;
        if (!isUniform && load.to) return Got(text) + ", expected one place";
        if (isUniform && !load.to) return Got(text) + ", expected two places, as dead=12@0:4";
    }
    beam.loads.push_back(load);
    return {};
}

std::string FaultOf(const NewBeam& beam)
{
    for (const double span : beam.spans)
        if (!(std::isfinite(span) && span > 0.0 && span <= LONGEST_BEAM))
            return "--span: got " + Shortest(span) + ", expected a length in m above 0";
    const double length = LengthOf(beam);
    if (length > LONGEST_BEAM)
        return "--span: the spans are " + Shortest(length) + " m together, expected at most " + Shortest(LONGEST_BEAM) +
               " m";
    const auto beyond = [&](const std::optional<double>& place) { return place && *place > length * (1.0 + 1e-12); };
    const auto fault = [&](const char* option, double place) {
        return std::string(option) + ": the place " + Shortest(place) + " m is beyond the end of the beam, which is " +
               Shortest(length) + " m long";
    };
    for (const NewBeam::Restraint& one : beam.restraints)
        if (beyond(one.from) || beyond(one.to)) return fault("--restraint", one.to.value_or(one.from));
    for (const NewBeam::Load& load : beam.loads)
        if (beyond(load.from) || beyond(load.to))
            return fault((std::string("--") + KeyOf(load.shape)).c_str(), load.to.value_or(*load.from));
    return {};
}

} // namespace Keltrix::Host
