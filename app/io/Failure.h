#pragma once

#include <stdexcept>

#include "text/BadInput.h"

/// The program `ksteel`: command line, files and streams, worker processes. It uses the words of the host library as its own.
namespace Keltrix::App {

using namespace Host;

/// What `ksteel` returns to the shell.
enum ExitCode : int {
    EXIT_FINE = 0,
    EXIT_MEMBER_FAILS = 1,
    EXIT_BAD_INPUT = 2, ///< BadInput, and where output cannot be written
    EXIT_BAD_USAGE = 3
};

/// The worse of two exit codes of one run, the larger number being the worse.
inline ExitCode Worse(ExitCode a, ExitCode b) { return a > b ? a : b; }

/// Output that cannot be written: a full disk, a closed stream. Ends the program with EXIT_BAD_INPUT.
class BadOutput : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Output to a pipe that nobody reads any more. Ends the program without a message, as SIGPIPE does.
class ClosedPipe : public BadOutput {
public:
    using BadOutput::BadOutput;
};

/// Options that contradict each other or have no meaning. Ends the command with EXIT_BAD_USAGE.
class BadUsage : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace Keltrix::App
