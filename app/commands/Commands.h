#pragma once

#include <optional>
#include <string>
#include <vector>

#include "check/DesignCodes.h"
#include "io/Console.h"
#include "io/Failure.h"
#include "memberfile/MemberCheck.h"
#include "text/Render.h"

namespace Keltrix::App {

enum class Format { TABLE, JSON, JSON_LINES };

struct ShowOptions {
    std::vector<std::string> files;
    ReadingOptions reading;
    Rendering rendering = Rendering::Plain;
};
/// The input report of every member of the files.
ExitCode Show(const ShowOptions& options, const Console& console);

struct ValidateOptions {
    std::vector<std::string> files;
    ReadingOptions reading;
    CodeChoice code; ///< also what this design code rejects; without one the format alone
    Format format = Format::TABLE;
};
/// Every defect of the files; EXIT_BAD_INPUT where there is an error among them.
ExitCode Validate(const ValidateOptions& options, const Console& console);

struct SectionOptions {
    std::string name;
    std::string svgFile; ///< empty: none
    Format format = Format::TABLE;
    Rendering rendering = Rendering::Plain;
};
/// Dimensions and properties of one section.
ExitCode ShowSection(const SectionOptions& options, const Console& console);

struct SectionsOptions {
    std::string family;  ///< empty: all
    double minIxx = 0.0; ///< cm⁴
    std::string sort;    ///< empty: catalogue order
    Format format = Format::TABLE;
    Rendering rendering = Rendering::Plain;
};
/// The catalogue, family by family.
ExitCode ListSections(const SectionsOptions& options, const Console& console);

struct SpansOptions {
    std::vector<std::string> files;
    ReadingOptions reading;
    CodeChoice code;          ///< gives the modulus of elasticity; without one that of steel
    std::string split = "lt"; ///< minor, lt or major
    std::optional<double> EI; ///< bending stiffness about the major axis, N·m²
    Format format = Format::TABLE;
    Rendering rendering = Rendering::Plain;
};
/// The spans of every member of the files.
ExitCode ShowSpans(const SpansOptions& options, const Console& console);

struct ImportOptions {
    std::string forces;
    std::string members;
    std::vector<std::string> map; ///< preset of signs, captions, units
    bool allowRepeats = false;    ///< two rows of a station may be the same
    ReadingOptions reading;
    std::string output; ///< empty or "-": standard output
};
/// One stream of members from a table of forces and a table of members. Nothing is written where anything is wrong with them.
ExitCode ImportTables(const ImportOptions& options, const Console& console);

struct BucklingOptions {
    std::vector<std::string> files;
    ReadingOptions reading;
    CodeChoice code;         ///< gives the moduli; without one those of the grade or of steel
    bool continuity = false; ///< the whole member at once
    std::string svgFile;     ///< empty: none
    Format format = Format::TABLE;
    Rendering rendering = Rendering::Plain;
};
/// The elastic critical load of every member of the files; EXIT_MEMBER_FAILS where one is not held, buckles under the forces given
/// or less, or cannot be analysed. Not part of a program without the stability library.
ExitCode ShowBuckling(const BucklingOptions& options, const Console& console);

} // namespace Keltrix::App
