#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keltrix/design/DesignCode.h"
#include "keltrix/statics/Combinations.h"
#include "memberfile/MemberCheck.h"
#include "sections/SectionCatalogue.h"

namespace Keltrix::Host {

/// The most that a beam file may hold: 1 MiB. One of twenty lines has less than a kilobyte.
inline constexpr std::size_t LARGEST_BEAM_FILE = std::size_t(1) << 20;

/// The limits of deflection that a file asks for; ratios of span or overhang, 0 for none.
struct DeflectionWishes {
    bool isAsked = false;         ///< the file has its own limits; else those of the standard hold
    bool isOff = false;           ///< the file says that there are none
    double imposed = 0.0;         ///< of variable loads, span over this
    double cantilever = 0.0;      ///< of variable loads, length of an overhang over this
    double total = 0.0;           ///< of all loads less the camber
    double totalCantilever = 0.0; ///< of all loads, on overhangs
    LineNumber line = 1;
};

/// A beam as its file says it: TOML, in m, kN, kNm; here in SI. docs/beam-file.md describes the keys.
struct BeamFile {
    std::string name; ///< of the file, as messages call it
    std::string title;
    std::string section; ///< designation or parametric description, as the catalogue writes it
    std::string type;    ///< "ROLLED", "WELDED", "FORMED", or "UNDEF": as the catalogue has it
    CSteelGrade grade;
    double netToGross = 1.0;
    double plasticToElastic = 1.2;
    double shearLag = 0.7;
    std::optional<double> momentFactor;
    std::optional<std::array<double, 3>> effectiveLengths; ///< major, minor, lateral-torsional, m
    Statics::Beam beam;
    /// The standard that makes the combinations; null where the file leaves that to the design code or has its own alone.
    const Statics::CombinationStandard* standard = nullptr;
    /// The file's own combinations; their cases are those of `beam`.
    std::vector<Statics::CombinationRule> own;
    DeflectionWishes deflection;
    std::optional<bool> brittle;
    std::vector<double> camber; ///< m, of each span

    /// Errors, warnings and notes in the order of their lines. `keyword` is the key: "load.at".
    std::vector<Defect> defects;

    /// Lines for messages about what follows from the file.
    LineNumber sectionLine = 1;
    LineNumber gradeLine = 1;
    LineNumber supportsLine = 1;
    LineNumber combinationsLine = 1;

    bool HasErrors() const;
};

/// Reads a beam file. Everything that is wrong with it is among the defects, in one pass: syntax, unknown keys, types, ranges, and what
/// Statics::FindFaults says of the beam. With errors the rest is what could be read. `code`, where there is one, judges grade and
/// section and gives the modulus of elasticity; without one that is 205 kN/mm². Throws BadInput for bytes that are no text.
BeamFile ReadBeamFile(const std::string& name, std::string_view bytes, const Design::DesignCode* code);

/// The names of the standards whose combinations a beam file can ask for: "en1990-uk".
std::vector<std::string> CombinationNames();

/// Puts the section `named` into a beam: its name, stiffness, mass and the heights of its flanges, which are known where the shear centre is at
/// half the depth.
void SetSectionOf(BeamFile& file, const NamedSection& named, const Design::DesignCode* code);

/// Why a load whose height counts from a flange has none with the beam's section; empty where it has, and of other loads.
std::string FlangeHeightFault(const BeamFile& file, const Statics::Load& load);

/// "floor.toml:14: error: load.at: got "x", expected a number in m".
std::string BeamMessage(const Defect& defect, const std::string& file);

} // namespace Keltrix::Host
