#pragma once

#include <array>
#include <string>
#include <vector>

#include "import/ImportTable.h"
#include "import/SignConvention.h"

namespace Keltrix::Host {

/// A row of a table of forces in SI, signs as they stand there.
struct ForceRow {
    LineNumber line = 0;
    ImportNumber station;
    std::array<double, IMPORTED_ACTIONS> value{};
    std::array<double, IMPORTED_ACTIONS>
        half{}; ///< half a unit of the last digit of its column; 0 where all of it is 0
};

/// A place of a member with the actions on its left and on its right; the same row where nothing jumps.
struct ForceStation {
    double at = 0.0;
    const ForceRow* left = nullptr;
    const ForceRow* right = nullptr;
};

struct ForceCase {
    std::string name;
    std::vector<ForceRow> rows;
    std::vector<ForceStation> stations; ///< ascending, of `rows`
};

struct MemberForces {
    std::string name;
    LineNumber line = 0;   ///< of its first row
    bool isBroken = false; ///< a row of it could not be read: what it lacks says nothing
    std::vector<ForceCase> cases;
    std::vector<double> stations; ///< of all its cases, ascending

    /// What two places may differ by and be the same.
    double Tolerance() const;
    /// What an end may differ by, with the rounding of the stations.
    double EndTolerance() const;
};

/// How the rows of a table of forces are understood.
struct ForceReading {
    ImportNames names;
    bool allowRepeats = false; ///< two rows at a station may be the same
};

/// Reads a table of forces, members and cases in the order of their first rows. Each row belongs to exactly one station of one case. Rows out
/// of order, a third one at a place, two at an end, two that are the same, and stations and cases that a member has in part alone are errors.
std::vector<MemberForces> ReadForces(ImportTable& table, const ForceReading& reading, ImportFindings& findings);

/// The fields of a table of forces in the order member, case, station, N, Vy, Vz, T, My, Mz.
const std::vector<ImportField>& ForceFields();

} // namespace Keltrix::Host
