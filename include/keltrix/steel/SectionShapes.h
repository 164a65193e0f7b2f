#pragma once

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <utility>

#include "keltrix/platform/KxData.h"
#include "keltrix/platform/KxUtil.h"
#include "keltrix/steel/SectionGeometry.h"

/// The section geometry as design codes and programs use it: each shape of SectionGeometry.h as a class that can be made,
/// with the protected operations that drawings and tables read, and with the few rules that the exported bases keep for
/// compatibility replaced by those of the product standards. Whoever shows or checks a section takes it from here, so that
/// the values shown are the values checked.
namespace Keltrix::Steel {

/// I and H sections, with equal or unequal flanges.
class IShape : public CDesSectGeomI {
public:
    IShape() = default;
    IShape* Clone() const override { return new IShape(*this); }
};

/// Channels.
class ChannelShape : public CDesSectGeomPFC {
public:
    ChannelShape() = default;
    ChannelShape* Clone() const override { return new ChannelShape(*this); }
};

/// Tees.
class TeeShape : public CDesSectGeomT {
public:
    TeeShape() = default;
    TeeShape* Clone() const override { return new TeeShape(*this); }
    using CDesSectGeomT::YbarPlastic;
};

/// Angles with equal or unequal legs.
class AngleShape : public CDesSectGeomAngle {
public:
    AngleShape() = default;
    AngleShape* Clone() const override { return new AngleShape(*this); }
    /// Angle from the x axis to the u axis, radians, independent of the unit of length: 45° only where Ixx and Iyy are
    /// equal to a billionth of their sum. The base's rule compares their difference with 1e-6, which in metres takes
    /// every small angle for an equal-leg one.
    double Alpha() const override
    {
        const double Ix = Ixx();
        const double Iy = Iyy();
        if (std::abs(Ix - Iy) <= 1e-9 * (Ix + Iy)) return std::numbers::pi / 4.0;
        return std::atan2(-2.0 * Ixy(), Ix - Iy) / 2.0;
    }
    /// By the circle of second moments whatever the size of Ixy. The base takes an Ixy below 1e-10, in metres 0.01 cm⁴,
    /// for zero.
    double Iuu() const override { return 0.5 * (Ixx() + Iyy()) + std::hypot(0.5 * (Ixx() - Iyy()), Ixy()); }
    double Ivv() const override { return 0.5 * (Ixx() + Iyy()) - std::hypot(0.5 * (Ixx() - Iyy()), Ixy()); }
};

/// Corner radii of cold-formed hollow sections are those with which EN 10219-2 tabulates its properties: outside and inside
/// 2.0 and 1.0 times the thickness up to 6 mm, 2.5 and 1.5 times up to 10 mm, 3.0 and 2.0 times above. The base has the
/// middle pair for every thickness. Second moments (Iyy and the elastic moduli follow) are those of the exact outline.
class RhsShape : public CDesSectGeomRHS {
public:
    RhsShape() = default;
    RhsShape* Clone() const override { return new RhsShape(*this); }
    double RadiusOuter() const override { return CDesSectGeomRHS::RadiusOuter() + ColdFormedOffset(); }
    double RadiusInner() const override { return CDesSectGeomRHS::RadiusInner() + ColdFormedOffset(); }
    double Ixx() const override
    {
        // The base takes each corner's own second moment about its face and transfers it from its centroid.
        constexpr double area = 1.0 - std::numbers::pi / 4.0;
        constexpr double centroid = (10.0 - 3.0 * std::numbers::pi) / (3.0 * (4.0 - std::numbers::pi));
        const double fourth = std::pow(RadiusOuter(), 4.0) - std::pow(RadiusInner(), 4.0);
        return CDesSectGeomRHS::Ixx() + 4.0 * area * centroid * centroid * fourth;
    }

private:
    static constexpr int COLD_FORMED = 2; // of FabType

    // What the radii differ from the base's, both by as much.
    double ColdFormedOffset() const
    {
        if (FabType() != COLD_FORMED) return 0.0;
        const double t = CDesSectGeomRHS::RadiusOuter() - CDesSectGeomRHS::RadiusInner();
        const double mm = t * 1e3 * (1.0 - 1e-9); // 6 mm and 10 mm belong to the rows that end with them
        return mm <= 6.0 ? -0.5 * t : mm <= 10.0 ? 0.0 : 0.5 * t;
    }
};

/// Circular hollow sections.
class ChsShape : public CDesSectGeomCHS {
public:
    ChsShape() = default;
    ChsShape* Clone() const override { return new ChsShape(*this); }
};

/// How a section component is made.
struct SectionMake {
    SecType type = SEC_WELDED; ///< SEC_ROLLED, SEC_WELDED or SEC_FORMED
    bool assumed = false;      ///< the component's type does not say it
    bool contradicted = false; ///< the component's type is not that of its catalogue row
};

/// A component's type and the shared catalogue's row of its designation asked together: the one that says something counts,
/// of two the less favourable (welded before rolled, cold formed before both). A section of which neither says it is welded.
inline SectionMake HowMade(const CSecComp& component)
{
    const auto known = [](int type) { return type == SEC_WELDED_2 ? SEC_WELDED : type; };
    const auto says = [](int type) { return type == SEC_ROLLED || type == SEC_WELDED || type == SEC_FORMED; };
    const CSectDB::Entry* const row = CSectDB::GetDatabase()->Find(component.Description(true));
    const int listed = row ? known(row->secType) : SEC_UNDEF;
    const int stated = known(component.Type());
    SectionMake make;
    make.assumed = !says(stated);
    make.contradicted = says(stated) && says(listed) && stated != listed;
    // The types rise from favourable to unfavourable.
    const int type = says(stated) && says(listed) ? std::max(stated, listed) : says(stated) ? stated : listed;
    if (says(type)) make.type = static_cast<SecType>(type);
    return make;
}

/// The geometry of component 0, made as HowMade has it; null for a shape that the library does not know. Departures from
/// what the shape can represent go to the result, which may be null.
inline std::unique_ptr<CDesSectGeom> MakeSectionShape(const CSection& section, CMemberResult* result)
{
    CSecComp component = section.Component(0);
    std::unique_ptr<CDesSectGeom> geometry;
    switch (component.Shape() & CSecGeom::SHAPE_MASK) {
    case CSecGeom::SHAPE_I:
    case CSecGeom::SHAPE_GENERAL_I:
        geometry = std::make_unique<IShape>();
        break;
    case CSecGeom::SHAPE_CHANNEL:
        geometry = std::make_unique<ChannelShape>();
        break;
    case CSecGeom::SHAPE_T:
        geometry = std::make_unique<TeeShape>();
        break;
    case CSecGeom::SHAPE_ANGLE:
        geometry = std::make_unique<AngleShape>();
        break;
    case CSecGeom::SHAPE_RHS:
        geometry = std::make_unique<RhsShape>();
        break;
    case CSecGeom::SHAPE_CHS:
        geometry = std::make_unique<ChsShape>();
        break;
    default:
        return nullptr;
    }
    component.SetType(HowMade(component).type);
    CSection made = section;
    made.SetComponent(0, component);
    return geometry->SetKeltrixSec(made, result) ? std::move(geometry) : nullptr;
}

} // namespace Keltrix::Steel
