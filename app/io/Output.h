#pragma once

#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "io/Failure.h"
#include "text/TextSink.h"

namespace Keltrix::App {

/// Writes to a C stream and reports what went wrong: throws ClosedPipe for a pipe that nobody reads any more, BadOutput for
/// a full disk and the like.
void WriteAll(std::FILE* stream, std::string_view text);

/// Writes a file as a whole: into a temporary file beside it, which then takes its name, so that a file of that name is
/// either the old one or the new one. "-", and the name of the file to which standard output goes, are standard output. A
/// symbolic link stays and its target is written. The mode and the owner of a file are kept; where that is not possible,
/// where it has other names (hard links) and where its folder cannot be written, the new text is written over the old one
/// after room was made for all of it. Throws BadOutput and leaves no other file on failure, nor
/// where SIGHUP, SIGINT, SIGQUIT or SIGTERM ends the program. One file at a time.
void WriteFile(const std::string& path, std::string_view text);

/// The same for a text that is handed over piece by piece, so that it need not be in memory as a whole.
void WriteFile(const std::string& path, const std::function<void(const TextSink&)>& write);

/// Throws BadUsage where an output file is also one of the inputs, under whatever name: it would be replaced. "-" is the
/// standard input among the inputs, and as an output no file. `option` is the name of the output's option.
void RequireNoInput(const std::string& option, const std::string& output, const std::vector<std::string>& inputs);

/// A file for reading and writing that is gone when it is closed, in the folder that TMPDIR names. Throws BadOutput where
/// there can be none.
std::FILE* OpenTemporaryFile();

/// Opens the null device on those of the three standard descriptors that are closed, in such a way that reading from the
/// input and writing to the outputs fail. Otherwise the next file that is opened takes their place. To be called before
/// anything is opened.
void OpenClosedStreams();

/// Lets a write to a closed pipe, and one beyond the allowed size of a file, fail instead of ending the program.
void LetWritesFail();

/// Ends the program as a closed pipe ends programs that know nothing of it: by SIGPIPE. Returns where the system has no
/// such signal.
void EndByClosedPipe();

/// Keeps the standard streams' line ends and UTF-8 as they are, on systems that would translate them.
void PassBytesUnchanged();

/// Whether standard output is a terminal that is to have colours: not with NO_COLOR set or TERM=dumb.
bool TerminalHasColour();

/// Whether standard error is a terminal on which a line can be written over.
bool TerminalShowsProgress();

} // namespace Keltrix::App
