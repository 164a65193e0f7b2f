// Design codes, and the words that a search suggests.

#include <pybind11/stl.h>

#include "Bindings.h"
#include "check/CodesJson.h"
#include "keltrix/host/Host.h"
#include "text/Fields.h"
#include "text/Json.h"
#include "text/Text.h"

namespace Keltrix::Python {

namespace {

py::object NearestOf(const std::string& text, const std::vector<std::string>& candidates)
{
    std::vector<CString> wide;
    wide.reserve(candidates.size());
    for (const std::string& candidate : candidates)
        wide.push_back(Host::Wide(candidate));
    const std::vector<std::wstring_view> views(wide.begin(), wide.end());
    const auto nearest = Host::Nearest(Host::Wide(text), views);
    if (!nearest) return py::none();
    return TextOf(nearest->c_str());
}

} // namespace

void AddSettings(py::module_& module)
{
    using Options = std::vector<std::pair<std::string, std::string>>;
    py::class_<Host::Settings>(module, "Settings")
        .def(py::init([](const std::string& code, const std::string& annex, const Options& options, bool allowGaps,
                         bool isStrict) {
                 return Host::Settings{code, annex, options, allowGaps, isStrict};
             }),
             py::arg("code"), py::arg("annex"), py::arg("options"), py::arg("allow_gaps"), py::arg("strict"));
    module.def("codes_json", [] { return TextOf(Host::JsonText(Host::CodesJson())); });
    module.def(
        "utilisation_text", [](double utilisation) { return TextOf(Host::UtilisationText(utilisation)); },
        py::arg("utilisation"));
    module.def("nearest", NearestOf, py::arg("text"), py::arg("candidates"));
}

} // namespace Keltrix::Python
