#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "beamfile/BeamFile.h"
#include "beamfile/TomlKeys.h"

namespace Keltrix::Host {

// Ranges of a beam file's numbers: wide enough for every member, narrow enough that no product of them leaves the range of numbers.
inline constexpr double MOST_METRES = 1e4;
inline constexpr double MOST_FORCE = 1e9; // kN, kNm, kN/m
inline constexpr NumberRange PLACE{0.0, MOST_METRES, "a place in m from the left end, 0 or above"};
inline constexpr NumberRange LENGTH{0.0, MOST_METRES, "a length in m above 0", true};
inline constexpr NumberRange STIFFNESS{0.0, 1e12, "a stiffness of 0 or above"};
inline constexpr std::size_t MOST_PARTS = 1000; // loads, restraints
inline constexpr std::size_t MOST_SPANS = 50;

/// Where the parts of a beam stand in its file; parallel to the vectors of the beam.
struct PartLines {
    std::vector<LineNumber> supports;
    std::vector<LineNumber> hinges;
    std::vector<LineNumber> restraints;
    std::vector<LineNumber> cases;
    std::vector<LineNumber> loads;
};

/// Lengths, supports, hinges and restraints.
void ReadSupports(TomlKeys& keys, BeamFile& file, PartLines& lines);
/// Cases and loads.
void ReadLoads(TomlKeys& keys, BeamFile& file, PartLines& lines);
/// The standard of combinations of a name, letter case aside; null where none has it.
const Statics::CombinationStandard* StandardNamed(std::wstring_view name);
/// The names of all in a sentence: "en1990, en1990-uk or ...".
std::string StandardWords();

/// The standard of the combinations and combinations of the file's own; the cases must have been read.
void ReadCombinations(TomlKeys& keys, BeamFile& file);

} // namespace Keltrix::Host
