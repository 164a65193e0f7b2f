#pragma once

#include <optional>
#include <string>
#include <vector>

#include "import/ImportTable.h"
#include "memberfile/MemberText.h"

namespace Keltrix::Host {

/// What holds a member at a place, or along a length.
struct HeldPlace {
    double from = 0.0;
    double to = 0.0;
    Steel::CRestraint restraint;
    bool isPlace = false; ///< `from` and `to` are the same
};

/// A row of a table of members.
struct ImportedMember {
    std::string name;
    LineNumber line = 0;
    MemberContent content; ///< without title, points and sub-spans
    std::optional<ImportNumber> length;
    std::optional<Steel::CRestraint> start, end;
    std::vector<HeldPlace> held;
    double loadHeight = 0.0; ///< of all loads, above the shear centre, m
};

/// Reads a table of members. Sections and restraints that are not understood, members without a section or grade, members that are there
/// twice and unknown columns are errors; a table without lengths or load heights is noted.
std::vector<ImportedMember> ReadMembers(ImportTable& table, const ImportNames& names, ImportFindings& findings);

/// The fields of a table of members.
const std::vector<ImportField>& MemberFields();

} // namespace Keltrix::Host
