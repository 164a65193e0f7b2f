#pragma once

#include <map>
#include <string>
#include <vector>

#include "catalogue/CatalogueSupport.h"
#include "catalogue/ReferenceTables.h"

/// The section properties of every catalogue row against published figures.
namespace Keltrix::Steel::Test {

/// Properties by symbol, SI units: "A", "Ixx", "Iyy", "rx", "ry", "Zxx", "Zyy", "Sxx", "Syy", "J", "H" (warping constant),
/// and for tees and angles "cx", "cy", "Iuu", "Ivv", "ru", "rv", "tan α".
using Properties = std::map<std::string, double>;

/// What the section shapes give that programs and design codes use (SectionShapes.h).
Properties Computed(const CatalogueRow& row);

/// The same by integration over the exact outline, with the corner radii that the standards tabulate. J and H of open
/// sections, which have no exact outline integral, are left out, except H of an I section: Iyy (D - T)²/4. J of a
/// rectangular hollow section is the standards' formula with the tabulated radii.
Properties Exact(const CatalogueRow& row);

/// Why a figure differs from the published one by more than its rounding.
enum class Reason {
    None,         ///< it does not
    Formula,      ///< the closed formula departs from exact geometry, on which the table agrees
    RoundedTwice, ///< exact geometry lies at most a tenth of the tolerance beyond it: the table rounds a rounded figure
    Table,        ///< exact geometry of the nominal dimensions departs from the table, too
    Approximation, ///< J and H of open sections have no exact outline integral: the table follows another approximation
};

/// A published figure and what the library gives for it, in the unit of the table.
struct Figure {
    std::string section;
    std::string property;
    std::string unit;
    std::string printed;
    double published;
    double tolerance; ///< half a unit of the third figure, or of the last printed one where that is coarser
    double computed;
    double exact; ///< NaN where there is none, or where the figure agrees
    Reason reason;
};

struct FamilyResult {
    std::string family;
    int rows = 0;
    std::vector<Figure> figures;

    int Agreeing() const;
};

/// Compares every catalogue row that has a published one. Families in catalogue order.
std::vector<FamilyResult> Validate(const PublishedTables& published);

/// The report as it stands in docs/validation.md.
std::string ValidationReport(const std::vector<FamilyResult>& results);

} // namespace Keltrix::Steel::Test
