#pragma once

#include <cmath>
#include <numbers>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "keltrix/platform/KxData.h"
#include "keltrix/platform/KxUtil.h"

/// What the tests of the catalogue share: its rows in mm, and the area of the exact outline of a row.
namespace Keltrix::Steel::Test {

/// A catalogue row as it was written: mm, kg/m.
struct CatalogueRow {
    std::string family;
    std::string name; ///< family and designation: "UB 457x191x67"
    int shape;
    int secType;
    double mass;
    double D, B, t, T; ///< depth, width, web and flange thickness
    double r, rt;      ///< root and toe radius
};

inline std::string Narrow(const CString& text) { return text.ToUtf8().value_or("(ill-formed)"); }

inline CatalogueRow RowOf(const CSectDB::Entry& e)
{
    // The number of mm that was read; the way through metres costs its last bit.
    const auto mm = [](double metres) { return std::round(metres * 1e9) / 1e6; };
    return {Narrow(e.family),      Narrow(e.designation), e.shape,        e.secType,
            e.massPerMetre,        mm(e.depth),           mm(e.width),    mm(e.webThickness),
            mm(e.flangeThickness), mm(e.rootRadius),      mm(e.toeRadius)};
}

/// All rows of the built-in catalogue, in its order.
inline const std::vector<CatalogueRow>& Catalogue()
{
    static const std::vector<CatalogueRow> rows = [] {
        std::vector<CatalogueRow> all;
        for (const CSectDB::Entry& entry : CSectDB::GetDatabase()->Entries())
            all.push_back(RowOf(entry));
        return all;
    }();
    return rows;
}

inline std::string Family(const CatalogueRow& row)
{
    if (row.family == "L") return row.D == row.B ? "L equal" : "L unequal";
    return row.family;
}

/// Outer and inner corner radius of a rectangular hollow section as the standards tabulate it: EN 10210-2 hot
/// finished, EN 10219-2 cold formed by wall thickness.
inline std::pair<double, double> TabulatedCornerRadii(int secType, double t)
{
    if (secType == SEC_ROLLED) return {1.5 * t, 1.0 * t};
    if (t <= 6.0) return {2.0 * t, 1.0 * t};
    if (t <= 10.0) return {2.5 * t, 1.5 * t};
    return {3.0 * t, 2.0 * t};
}

/// Area in mm² of the exact outline: plates; a fillet or rounding of radius r in a right angle fills or takes
/// (1 - π/4) r².
inline double ExactArea(const CatalogueRow& row)
{
    const double spandrel = 1.0 - std::numbers::pi / 4.0;
    const auto [D, B, t, T, r, rt] = std::tuple(row.D, row.B, row.t, row.T, row.r, row.rt);
    switch (row.shape) {
    case CSecGeom::SHAPE_I:
        return 2.0 * B * T + (D - 2.0 * T) * t + 4.0 * spandrel * r * r;
    case CSecGeom::SHAPE_CHANNEL:
        return 2.0 * B * T + (D - 2.0 * T) * t + 2.0 * spandrel * r * r - 2.0 * spandrel * rt * rt;
    case CSecGeom::SHAPE_T:
        return B * T + (D - T) * t + 2.0 * spandrel * r * r - 2.0 * spandrel * rt * rt;
    case CSecGeom::SHAPE_ANGLE:
        return t * (D + B - t) + spandrel * r * r - 2.0 * spandrel * rt * rt;
    case CSecGeom::SHAPE_CHS:
        return std::numbers::pi * t * (D - t);
    default: {
        const auto [ro, ri] = TabulatedCornerRadii(row.secType, t);
        return 2.0 * t * (D + B - 2.0 * t) - 4.0 * spandrel * (ro * ro - ri * ri);
    }
    }
}

} // namespace Keltrix::Steel::Test
