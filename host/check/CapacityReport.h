#pragma once

#include <string>
#include <vector>

#include "check/DesignCodes.h"
#include "sections/SectionCatalogue.h"
#include "text/JsonFwd.h"

namespace Keltrix::Host {

/// FindSection, with the section made as `type` says: "rolled", "welded" or "formed"; empty: as the catalogue has it.
NamedSection FindSectionOfType(const std::string& name, const std::string& type);

/// The capacity table of a section in a grade for effective lengths in m. Throws BadInput where the design code makes none, with its reason,
/// and where its table has gaps.
Design::CapacityTable CapacityTableOf(const NamedSection& section, const std::string& grade,
                                      const std::vector<double>& lengths, const CodeChoice& choice);

/// The table as `ksteel capacity --format json` writes it: an object for each effective length.
Json JsonOf(const Design::CapacityTable& table, const std::vector<double>& lengths);

} // namespace Keltrix::Host
