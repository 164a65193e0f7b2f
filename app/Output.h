#pragma once

#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

namespace Keltrix::App {

/// Writes to a C stream and reports what went wrong: throws BadOutput for a closed pipe, a full disk and the like.
void WriteAll(std::FILE* stream, std::string_view text);

/// Writes a file as a whole: into a temporary file beside it, which then takes its name, so that a file of that name is
/// either the old one or the new one. "-" is standard output. Throws BadOutput and leaves nothing behind on failure.
void WriteFile(const std::string& path, std::string_view text);

/// The same for a text that is handed over piece by piece, so that it need not be in memory as a whole.
using TextSink = std::function<void(std::string_view)>;
void WriteFile(const std::string& path, const std::function<void(const TextSink&)>& write);

/// A file for reading and writing that is gone when it is closed; null where there can be none.
std::FILE* OpenTemporaryFile();

/// Lets a write to a closed pipe fail instead of ending the program.
void IgnoreClosedPipes();

/// Keeps the standard streams' line ends and UTF-8 as they are, on systems that would translate them.
void PassBytesUnchanged();

/// Whether standard output is a terminal that is to have colours: not with NO_COLOR set or TERM=dumb.
bool TerminalHasColour();

/// Whether standard error is a terminal on which a line can be written over.
bool TerminalShowsProgress();

} // namespace Keltrix::App
