#pragma once

#include <stdexcept>

namespace Keltrix::App {

/// What `ksteel` returns to the shell.
enum ExitCode : int {
    EXIT_FINE = 0,
    EXIT_MEMBER_FAILS = 1,
    EXIT_BAD_INPUT = 2, ///< also where output cannot be written
    EXIT_BAD_USAGE = 3
};

/// The worse of two exit codes of one run, the larger number being the worse.
inline ExitCode Worse(ExitCode a, ExitCode b) { return a > b ? a : b; }

/// Input that cannot be used; the message names the place. Ends the command with EXIT_BAD_INPUT.
class BadInput : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

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
