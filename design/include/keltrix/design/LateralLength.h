#pragma once

#include <array>
#include <vector>

#include "keltrix/design/Export.h"
#include "keltrix/design/MomentDiagram.h"
#include "keltrix/design/Stretches.h"
#include "keltrix/steel/CodeShare.h"

namespace Keltrix::Design {

/// Tables of BS 5950-1:2000, 4.3.5, that gave an effective length.
enum class LateralTable { Table13, Table14, LongerOfBoth };

/// Whose tables they are: "BS 5950-1:2000".
inline constexpr wchar_t LATERAL_TABLES_STANDARD[] = L"BS 5950-1:2000";
/// "Table 13", "Table 14" or "the longer of Tables 13 and 14".
KELTRIX_DESIGN_API const wchar_t* TextOf(LateralTable table);

/// Effective length for lateral-torsional buckling, and where it comes from.
struct LateralLength {
    double LE = 0.0; ///< m; infinite where no row of the table applies
    LateralTable table = LateralTable::Table13;
    /// Major-axis moment at the tip with which Table 14 gave the length, N·m; 0 where Table 13 gave it.
    double tipMoment = 0.0;
    /// At the left and right end: the row of nominal torsional restraint was refused. It is for a beam that goes on past the
    /// restraint, or whose support holds it against rotation by itself (4.3.5.2, 4.2.2). Of a support, and of an end of the
    /// member, some torsional restraint has to be known.
    std::array<bool, 2> nominalRefused{};
};

/// Whether a load turns the section further where it buckles, anywhere in a stretch, its ends included: a load height above zero at a point of
/// the member or along a sub-span, whatever acts there, or one below zero where the load acts upwards (the shear falls, by more than 1e-9 of the
/// largest; not at vertical supports, where the jump is the reaction). Linear in the number of points.
KELTRIX_DESIGN_API bool IsDestabilised(const Stretch& stretch, const std::vector<Steel::CMemberPoint>& points,
                                       const std::vector<Steel::CSubSpan>& subSpans);

/// Effective length for lateral-torsional buckling of a flange of a stretch. `stretch` and `diagram` are of the member with these
/// points; `depth` is that of the section, m. Beams are by Table 13, by what the ends hold for this flange. Cantilevers are
/// by Table 14; of two tips the longer length counts. With a tip that is held in the fourth way of Table 14 the restraints between it
/// and the support count (4.3.5.5). Whether a stretch from the tip that ends before the first vertical support is then a
/// cantilever or a length between two sections that hold the flange is open: the longer of both counts. `rules` notes
/// the rows in its result.
KELTRIX_DESIGN_API LateralLength FindLateralLength(const Stretch& stretch, Flange flange,
                                                   const std::vector<Steel::CMemberPoint>& points,
                                                   const MomentDiagram& diagram, double depth, bool destabilising,
                                                   const Steel::CCodeShare& rules);

} // namespace Keltrix::Design
