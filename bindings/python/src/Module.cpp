// The module _keltrix: errors of the host become keltrix.InputError.

#include <cmath>
#include <exception>

#include "Bindings.h"
#include "text/BadInput.h"
#include "text/Text.h"

namespace Keltrix::Python {

py::str TextOf(std::string_view utf8)
{
    const auto size = static_cast<Py_ssize_t>(utf8.size());
    return py::reinterpret_steal<py::str>(PyUnicode_DecodeUTF8(utf8.data(), size, "replace"));
}

py::str TextOf(const wchar_t* text) { return TextOf(Host::Utf8(text)); }

py::object OrNone(double value)
{
    if (std::isnan(value)) return py::none();
    return py::float_(value);
}

namespace {

void Translate(std::exception_ptr failure)
{
    try {
        if (failure) std::rethrow_exception(failure);
    } catch (const Host::BadInput& refusal) {
        const py::object type = py::module_::import("keltrix._errors").attr("InputError");
        PyErr_SetObject(type.ptr(), TextOf(refusal.what()).ptr());
    }
}

// Objects of one interpreter must not reach another one, which pybind11 does not keep apart.
bool IsMainInterpreter() { return PyInterpreterState_Get() == PyInterpreterState_Main(); }

} // namespace

} // namespace Keltrix::Python

PYBIND11_MODULE(_keltrix, module)
{
    namespace kx = Keltrix::Python;
    module.doc() = "The host library of Keltrix Steel. Use the package keltrix, which is made of it.";
    module.attr("__version__") = KELTRIX_VERSION;
    pybind11::register_exception_translator(kx::Translate);
    module.def("is_main_interpreter", kx::IsMainInterpreter);
    kx::AddSettings(module);
    kx::AddSections(module);
    kx::AddMembers(module);
    kx::AddChecks(module);
    kx::AddRows(module);
    kx::AddStudies(module);
    kx::AddTables(module);
}
