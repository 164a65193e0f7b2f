#pragma once

#include <iosfwd>
#include <memory>

#include "commands/CheckFindings.h"

namespace Keltrix::App {

/// Checks the files of the options in `jobs` processes. The findings come in the order of the input, as in one process. The options and the input must
/// outlive the stream.
std::unique_ptr<FindingsStream> FindingsOfWorkers(const CheckOptions& options, int jobs, std::istream& standardInput);

} // namespace Keltrix::App
