#pragma once

#include <span>
#include <string>

#include "io/Failure.h"
#include "manual/CommandLine.h"

namespace Keltrix::App {

struct ExitCodeText {
    ExitCode code = EXIT_FINE;
    const char* meaning = "";
};

/// "ksteel" of the program, "ksteel-check" of a command.
std::string PageName(const CommandText& command);

/// The page of a command, or of the program, in the language of man(7).
std::string ManualPage(const CommandLineText& line, const CommandText& command, std::span<const ExitCodeText> exitCodes,
                       const std::string& version);

} // namespace Keltrix::App
