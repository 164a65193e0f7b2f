#pragma once

#include <string>

#include "manual/CommandLine.h"

namespace Keltrix::App {

/// What completes command lines in a shell: commands, options, the words that an option takes, files. The shell is "bash", "zsh" or "fish";
/// the text is empty for another one.
std::string CompletionScript(const CommandLineText& line, const std::string& shell);

} // namespace Keltrix::App
