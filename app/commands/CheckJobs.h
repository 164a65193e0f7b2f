#pragma once

#include <istream>

#include "commands/CheckFindings.h"

namespace Keltrix::App {

/// Checks the files' members in `jobs` processes; the findings are those of one process, in the same order.
void CheckInWorkers(const CheckOptions& options, int jobs, std::istream& standardInput, const FindingSink& sink);

} // namespace Keltrix::App
