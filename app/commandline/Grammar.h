#pragma once

#include <string>

#include "commandline/SharedOptions.h"

namespace Keltrix::App {

/// The commands with their options and what runs each of them. `app` and `shared` have to outlive `commands`.
void AddMemberCommands(CLI::App& app, Commands& commands, Shared& shared);
void AddBeamCommands(CLI::App& app, Commands& commands, Shared& shared);
void AddCodeCommands(CLI::App& app, Commands& commands, Shared& shared);
void AddManualCommands(CLI::App& app, Commands& commands, Shared& shared);

/// "Exit codes: 0 fine, 1 a member fails, ..."
std::string ExitCodeLine();

} // namespace Keltrix::App
