#pragma once

#include <functional>
#include <istream>

#include "commands/CheckFindings.h"

namespace Keltrix::App {

/// Checks the files' members in `jobs` processes; the findings are those of one process, in the same order. `pause` is
/// called when the next ones may be long in coming.
void CheckInWorkers(const CheckOptions& options, int jobs, std::istream& standardInput, const OutputPieceSink& sink,
                    const std::function<void()>& pause);

} // namespace Keltrix::App
