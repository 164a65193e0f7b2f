#pragma once

#include "check/SectionChoice.h"
#include "commands/Commands.h"
#include "report/MemberSheet.h"

namespace Keltrix::App {

// The commands that check members or sections to a design code.

struct CheckOptions {
    std::vector<std::string> files;
    ReadingOptions reading;
    std::string report = "brief"; ///< brief, verbose, summary or table
    bool envelope = false;        ///< the files are load cases of one member
    bool combinations = false;    ///< each combination of a beam is a member by itself
    bool steps = false;           ///< JSON has the steps of each rule
    CodeChoice code;
    int jobs = 1; ///< worker processes; 0 is one for each processor
    Format format = Format::TABLE;
    Rendering rendering = Rendering::Plain;
};
/// Checks every member of the files; EXIT_MEMBER_FAILS where one does not pass.
ExitCode Check(const CheckOptions& options, const Console& console);

struct CompareOptions {
    std::vector<std::string> files;
    ReadingOptions reading;
    std::vector<std::string> codes; ///< "ec3", "ec3:recommended"; empty: all there are, each with its first annex
    Format format = Format::TABLE;
    Rendering rendering = Rendering::Plain;
};
/// Checks every member of the files to each of the codes and puts side by side what they find; EXIT_MEMBER_FAILS where one does not pass in all
/// of them. Throws BadUsage for standard input, and for less than two codes.
ExitCode Compare(const CompareOptions& options, const Console& console);

struct ReportOptions {
    std::vector<std::string> files;
    ReadingOptions reading;
    std::string output;        ///< "-" is standard output
    bool envelope = false;     ///< the files are load cases of one member
    bool combinations = false; ///< each combination of a beam is a member by itself
    TitleBlock block;
    CodeChoice code;
};
/// Checks every member of the files and writes their calculation sheets as one HTML file. No file is written where no
/// member could be read.
ExitCode Report(const ReportOptions& options, const Console& console);

struct DesignOptions : SectionSearch {
    std::vector<std::string> files;
    bool envelope = false; ///< the files are load cases of one member
    Format format = Format::TABLE;
    Rendering rendering = Rendering::Plain;
};
/// The lightest or shallowest section of families with which each member of the files passes, and what comes next.
ExitCode Design(const DesignOptions& options, const Console& console);

struct CapacityOptions {
    std::string name;
    CodeChoice code;
    std::string grade;       ///< empty: the first one of the code
    std::string LE = "1:14"; ///< "1:14", "1:14:0.5", "3" or "2,4.5,6", m
    std::string type;        ///< rolled, welded or formed; empty: as the catalogue has it, welded where it has none
    Format format = Format::TABLE;
    Rendering rendering = Rendering::Plain;
};
/// The capacity table of a section.
ExitCode Capacity(const CapacityOptions& options, const Console& console);

struct CodesOptions {
    Format format = Format::TABLE;
    Rendering rendering = Rendering::Plain;
};
/// The design codes with their options, national annexes and scope.
ExitCode ListCodes(const CodesOptions& options, const Console& console);

/// The effective lengths that such a text means. Throws BadUsage for any other text, lengths that are not above 0 and
/// more than a thousand of them.
std::vector<double> EffectiveLengthList(const std::string& text);

} // namespace Keltrix::App
