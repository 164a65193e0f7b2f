#pragma once

#include <span>
#include <string>

namespace Keltrix::App {

/// A page of `ksteel help` that belongs to no single command.
struct HelpTopic {
    const char* name = "";
    const char* meaning = "";
    const char* text = ""; ///< lines of at most 80 characters
};

/// In the order in which they are listed; exit codes are listed beside them.
std::span<const HelpTopic> HelpTopics();

/// A command line that works in the folder of the sources, and what it does. The tests run every one.
struct Example {
    const char* command = ""; ///< the command whose page it stands on
    const char* line = "";
    const char* meaning = "";
};

std::span<const Example> CommandExamples();

} // namespace Keltrix::App
