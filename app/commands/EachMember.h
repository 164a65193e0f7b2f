#pragma once

#include <functional>
#include <string>
#include <vector>

#include "MemberFile.h"
#include "commands/Commands.h"

namespace Keltrix::App {

/// Calls `use` for every member of the files that reading accepts, in order. What is wrong with the others, and what
/// reading loses of these, goes to the console's errors; a file or member that cannot be used does not keep the others
/// from it. Answers the worst exit code of all.
ExitCode ForEachMember(const std::vector<std::string>& files, const Console& console,
                       const std::function<ExitCode(const MemberFile&, std::size_t)>& use);

} // namespace Keltrix::App
