#pragma once

#include <array>
#include <string>
#include <vector>

namespace Keltrix::Host {

/// The six actions of a section, in the order of a table.
enum ImportedAction { ACTION_N, ACTION_VY, ACTION_VZ, ACTION_T, ACTION_MY, ACTION_MZ, IMPORTED_ACTIONS };

/// The two bending planes of a table by its axes.
enum class TablePlane { XZ, XY }; ///< Vz with My, Vy with Mz

/// What the actions of a table mean: which axis lies in the web, and their signs against those of the member file.
struct SignConvention {
    const char* name;
    const char* meaning; ///< one sentence
    bool isWebAlongZ;    ///< else along y, and Mz is the major-axis moment
    /// The member file has these times the table's values. The major ones belong to the plane of the web.
    int axial, torsion, majorShear, majorMoment, minorShear, minorMoment;

    /// +1 where dM/dx = V in a plane of the table, -1 where dM/dx = -V.
    int LawOf(TablePlane plane) const;
    /// Fx, Fy, Fz, Mx, My, Mz of the member file.
    std::array<double, IMPORTED_ACTIONS> InMemberFile(const std::array<double, IMPORTED_ACTIONS>& table) const;
};

/// All of them; docs/import.md has a sketch of each.
const std::vector<SignConvention>& SignConventions();

/// Null for an unknown name; letter case does not matter.
const SignConvention* SignConventionNamed(const std::string& name);

/// "member-file, z-down ... or sagging".
std::string SignConventionNames();

} // namespace Keltrix::Host
