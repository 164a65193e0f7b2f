// Member files from points, forces and words.

#include <array>
#include <optional>

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include "Bindings.h"
#include "MemberWords.h"
#include "memberfile/MemberText.h"
#include "sections/SectionCatalogue.h"
#include "text/BadInput.h"
#include "text/Fields.h"
#include "text/Text.h"

namespace Keltrix::Python {

void RequireLine(const std::string& what, const std::string& text)
{
    if (text.find_first_of("\r\n") == std::string::npos && text.find('\0') == std::string::npos) return;
    throw Host::BadInput(what + ": got " + Host::Quote(Host::Wide(text).View()) + ", expected one line of text");
}

void RequireField(const std::string& what, const std::string& text)
{
    RequireLine(what, text);
    if (text.find(',') == std::string::npos) return;
    throw Host::BadInput(what + ": got " + Host::Quote(Host::Wide(text).View()) + ", expected a text without a comma");
}

std::string TypeOf(const std::string& section, const std::string& word)
{
    if (word.empty()) {
        try {
            return Host::Utf8(SecTypeString(Host::FindSection(section).section.Component(0).Type()));
        } catch (const Host::BadInput&) {
            return "UNDEF";
        }
    }
    for (const SecType type : {SEC_UNDEF, SEC_ROLLED, SEC_WELDED, SEC_FORMED}) {
        const CString known = SecTypeString(type);
        if (Host::SameWord(known.View(), Host::Wide(word).View())) return Host::Utf8(known);
    }
    throw Host::BadInput("type: got " + Host::Quote(Host::Wide(word).View()) + ", expected rolled, welded or formed");
}

namespace {

using Numbers = py::array_t<double, py::array::c_style | py::array::forcecast>;

constexpr std::size_t POINT_NUMBERS = 2;     // position, load height
constexpr std::size_t SUB_SPAN_NUMBERS = 13; // forces left and right, moments left and right, load height

Steel::CRestraint AtHeight(double height)
{
    Steel::CRestraint restraint;
    restraint.SetLoadHeight(height);
    return restraint;
}

// `numbers` holds those of a row, one after another.
Vec3<double> Vector(const double* numbers) { return {numbers[0], numbers[1], numbers[2]}; }

void RequireShape(const char* what, const Numbers& numbers, std::size_t rows, std::size_t columns)
{
    if (numbers.ndim() == 2 && numbers.shape(0) == static_cast<py::ssize_t>(rows) &&
        numbers.shape(1) == static_cast<py::ssize_t>(columns))
        return;
    throw Host::BadInput(std::string(what) + ": the numbers are no table of " + std::to_string(rows) + " rows and " +
                         std::to_string(columns) + " columns");
}

py::str MemberText(const std::string& title, const std::string& section, const std::string& type,
                   const std::string& grade, const std::array<double, 3>& ratios,
                   const std::optional<std::array<double, 3>>& lengths, const std::optional<double>& momentFactor,
                   const Numbers& points, const std::vector<std::string>& pointWords, const Numbers& subSpans,
                   const std::vector<std::string>& subSpanWords)
{
    RequireShape("points", points, pointWords.size(), POINT_NUMBERS);
    RequireShape("sub-spans", subSpans, subSpanWords.size(), SUB_SPAN_NUMBERS);
    RequireLine("title", title);
    RequireField("section", section);
    RequireField("grade", grade);
    for (const std::string& words : pointWords)
        RequireField("restraint", words);
    for (const std::string& words : subSpanWords)
        RequireField("restraint", words);
    Host::MemberContent content;
    content.title = title;
    content.section = section;
    content.type = TypeOf(section, type);
    content.grade = grade;
    content.netToGross = ratios[0];
    content.plasticToElastic = ratios[1];
    content.shearLag = ratios[2];
    content.effectiveLengths = lengths;
    content.momentFactor = momentFactor;
    for (std::size_t i = 0; i < pointWords.size(); ++i) {
        const double* const row = points.data() + i * POINT_NUMBERS;
        Steel::CMemberPoint point;
        point.SetPos(row[0]);
        point.SetRestraint(AtHeight(row[1]));
        content.points.push_back(point);
    }
    for (std::size_t i = 0; i < subSpanWords.size(); ++i) {
        const double* const row = subSpans.data() + i * SUB_SPAN_NUMBERS;
        Steel::CSubSpan subSpan;
        subSpan.SetForcesAll(Vector(row), Vector(row + 3));
        subSpan.SetMomentsAll(Vector(row + 6), Vector(row + 9));
        subSpan.SetRestraint(AtHeight(row[12]));
        content.subSpans.push_back(subSpan);
    }
    content.pointWords = pointWords;
    content.subSpanWords = subSpanWords;
    return TextOf(Host::MemberFileText(content));
}

} // namespace

void AddMembers(py::module_& module)
{
    module.def("member_text", MemberText, py::arg("title"), py::arg("section"), py::arg("type"), py::arg("grade"),
               py::arg("ratios"), py::arg("lengths"), py::arg("moment_factor"), py::arg("points"),
               py::arg("point_words"), py::arg("sub_spans"), py::arg("sub_span_words"));
}

} // namespace Keltrix::Python
