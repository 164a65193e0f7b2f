#pragma once

#include <memory>
#include <string>
#include <vector>

#include "beamfile/BeamFile.h"
#include "keltrix/statics/Analysis.h"
#include "keltrix/statics/Combinations.h"
#include "keltrix/statics/Deflections.h"
#include "keltrix/statics/GeneratedMember.h"

namespace Keltrix::Host {

/// The member that a beam is under one ultimate combination.
struct BeamMember {
    std::string name;            ///< of the combination: "dead and imposed: 1.4 Dead + 1.6 Imposed"
    std::string text;            ///< a member file
    std::size_t combination = 0; ///< its place in the list of the combinations
};

/// What follows from a beam file: forces, combinations, members, deflections.
struct BeamMembers {
    /// Null where the file has errors.
    std::unique_ptr<Statics::Analysis> analysis;
    Statics::Combinations combinations;
    std::vector<BeamMember> members; ///< one for each ultimate combination, in their order
    std::vector<Statics::DeflectionLimit> limits;
    std::vector<Statics::DeflectionCheck> deflections;
    /// The defects of the file, and what an engineer has to know of how it was read: what statics and members leave out or
    /// approximate. A warning is what can be unsafe.
    std::vector<Defect> defects;

    bool HasErrors() const;
};

/// The most combinations that a beam may have, all limit states together.
inline constexpr std::size_t MOST_COMBINATIONS = 1000;

/// Analyses the beam and makes its members. Where the file does not say whose combinations it wants, they are those that go with the design
/// code and the annex of the settings; where that names none, and without a code, an error says so. With errors there are no members.
BeamMembers MembersOf(const BeamFile& file, const Design::DesignCode* code, const Design::CodeSettings& settings = {});

/// The member file of a beam under one combination. Numbers are in the fewest digits that say them exactly, so that what is read is what
/// was computed. The title is "TITLE of beam: NAME of combination", with semicolons in the place of commas.
std::string MemberTextOf(const BeamFile& file, const Statics::GeneratedMember& member, const std::string& combination);

} // namespace Keltrix::Host
