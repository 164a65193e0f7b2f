#pragma once

#include "commands/Commands.h"
#include "loads/NewBeam.h"

namespace Keltrix::App {

// The commands about beam files: beams from their loads. Not part of a program without the statics library.

struct LoadsOptions {
    std::vector<std::string> files;
    ReadingOptions reading;
    CodeChoice
        code; ///< gives the modulus and the combinations where the file names no standard; without one the default code's
    std::string svgFile; ///< empty: none
    std::string folder;  ///< for the member files, one for each ultimate combination; empty: none are written
    bool force = false;  ///< member files of the folder may be replaced
    Format format = Format::TABLE;
    Rendering rendering = Rendering::Plain;
};
/// Loads, combinations, reactions, envelopes and deflections of every beam of the files. The exit code is that of reading: a
/// deflection beyond its limit is no failure here.
ExitCode ShowLoads(const LoadsOptions& options, const Console& console);

struct NewOptions {
    std::string kind; ///< "beam" or "member"
    std::string title;
    std::string section = NewBeam().section;
    std::string grade = NewBeam().grade;
    std::string combinations; ///< empty: those of the code
    std::vector<double> spans;
    std::vector<std::string> uniform, points, moments, restraints;
    CodeChoice code; ///< judges section and grade
    std::string output;
    bool force = false;
};
/// Writes a beam file, or the member file of its first combination, with comments.
ExitCode New(const NewOptions& options, const Console& console);

} // namespace Keltrix::App
