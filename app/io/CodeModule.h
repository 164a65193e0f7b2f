#pragma once

#include <string>

#include "keltrix/design/DesignCode.h"

namespace Keltrix::App {

/// Loads a shared library that holds a design code and returns the code. The library stays loaded as long as the process runs; loading
/// it runs code of its own. Throws BadInput, with the name of the file, where it is missing, is no such library, was built for
/// another version of the interface or needs what is not there. Always throws on a system without POSIX's dlopen, and in a program that holds
/// the steel library statically, whose classes a module cannot share.
const Design::DesignCode& LoadCodeModule(const std::string& file);

} // namespace Keltrix::App
