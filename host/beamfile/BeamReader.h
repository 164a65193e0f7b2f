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
/// A standard of combinations, as beam files and design codes name it.
struct CombinationStandard {
    const char* word;  ///< "bs5950"
    const char* title; ///< "BS 5950-1"
    Statics::RuleOptions options;
};
/// The standard of a word; null where none has it.
const CombinationStandard* StandardNamed(std::wstring_view word);
/// "bs5950, en1990 or ...".
std::string StandardWords();

/// The standard of the combinations and combinations of the file's own; the cases must have been read.
void ReadCombinations(TomlKeys& keys, BeamFile& file);

} // namespace Keltrix::Host
