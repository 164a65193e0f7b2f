#pragma once

#include <string>
#include <string_view>

#include <pybind11/pybind11.h>

#include "keltrix/host/Host.h"

// The parts of the module _keltrix. Each is a thin layer over the host library: what goes in are texts, numbers and words, what comes out are
// plain values, arrays and JSON. The package keltrix around it is what people see.
namespace Keltrix::Python {

namespace py = pybind11;

/// Python's text of a UTF-8 text; ill-formed bytes become U+FFFD.
py::str TextOf(std::string_view utf8);
py::str TextOf(const wchar_t* text);

/// None for not-a-number, which says that a number is not there.
py::object OrNone(double value);

/// A diagnostic with its parts by name; None for the line where it is none.
py::dict DiagnosticOf(const Host::Diagnostic& diagnostic);

void AddSettings(py::module_& module);
void AddSections(py::module_& module);
void AddMembers(py::module_& module);
void AddChecks(py::module_& module);
void AddRows(py::module_& module);
void AddStudies(py::module_& module);
void AddTables(py::module_& module);

} // namespace Keltrix::Python
