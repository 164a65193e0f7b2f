#pragma once

#include <cmath>
#include <initializer_list>
#include <numbers>
#include <utility>

#include "keltrix/steel/SectionGeometry.h"

/// Concrete classes of every shape, as a code module has them, with their protected operations open to tests; and host
/// sections to fill them from.
namespace Keltrix::Steel::Test {

class ISection : public CDesSectGeomI {
public:
    ISection() = default;
    ISection* Clone() const override { return new ISection(*this); }
    using CDesSectGeomI::FabType;
    using CDesSectGeomI::PlateTypeCode;
};

class ChannelSection : public CDesSectGeomPFC {
public:
    ChannelSection() = default;
    ChannelSection* Clone() const override { return new ChannelSection(*this); }
    using CDesSectGeomPFC::FabType;
};

class TSection : public CDesSectGeomT {
public:
    TSection() = default;
    TSection* Clone() const override { return new TSection(*this); }
    using CDesSectGeomT::FabType;
    using CDesSectGeomT::YbarPlastic;
};

/// With the Alpha of the exported base.
class AngleSection : public CDesSectGeomAngle {
public:
    AngleSection() = default;
    AngleSection* Clone() const override { return new AngleSection(*this); }
    using CDesSectGeomAngle::FabType;
    using CDesSectGeomAngle::Reflect45;
    using CDesSectGeomAngle::SetDepth;
    using CDesSectGeomAngle::SetRootRadius;
    using CDesSectGeomAngle::SetThickness;
    using CDesSectGeomAngle::SetToeRadius;
    using CDesSectGeomAngle::SetWidth;
};

/// With an Alpha that does not depend on the unit of length: 45° only where Ixx and Iyy differ by less than a billionth
/// of their sum.
class RelativeAlphaAngle : public AngleSection {
public:
    RelativeAlphaAngle() = default;
    RelativeAlphaAngle* Clone() const override { return new RelativeAlphaAngle(*this); }
    double Alpha() const override
    {
        const double Ix = Ixx();
        const double Iy = Iyy();
        if (std::abs(Ix - Iy) <= 1e-9 * (Ix + Iy)) return std::numbers::pi / 4.0;
        return std::atan2(-2.0 * Ixy(), Ix - Iy) / 2.0;
    }
};

class RhsSection : public CDesSectGeomRHS {
public:
    RhsSection() = default;
    RhsSection* Clone() const override { return new RhsSection(*this); }
    using CDesSectGeomRHS::FabType;
    using CDesSectGeomRHS::RadiusInner;
    using CDesSectGeomRHS::RadiusOuter;
    using CDesSectGeomRHS::Rotate90Clockwise;
};

class ChsSection : public CDesSectGeomCHS {
public:
    ChsSection() = default;
    ChsSection* Clone() const override { return new ChsSection(*this); }
    using CDesSectGeomCHS::FabType;
};

/// A host section whose component 0 has the shape word, type and dimensions given.
inline CSection HostSection(int shape, int type, std::initializer_list<std::pair<CSecGeom::Prop, double>> dimensions)
{
    CSecComp component;
    component.SetShape(shape);
    component.SetType(type);
    for (const auto& [prop, value] : dimensions)
        component.SetDimension(prop, value);
    CSection section;
    section.SetComponent(0, component);
    return section;
}

inline CSection HostI(double D, double B, double t, double T, double r, int type = SEC_ROLLED)
{
    return HostSection(CSecGeom::SHAPE_I, type,
                       {{CSecGeom::DEPTH, D},
                        {CSecGeom::WIDTH, B},
                        {CSecGeom::WEB_THICKNESS, t},
                        {CSecGeom::FLANGE_THICKNESS, T},
                        {CSecGeom::ROOT_RADIUS, r}});
}

/// Flange 1 is the top flange.
inline CSection HostGeneralI(double D, double B1, double B2, double t, double T1, double T2, double r,
                             int type = SEC_WELDED)
{
    return HostSection(CSecGeom::SHAPE_GENERAL_I, type,
                       {{CSecGeom::DEPTH, D},
                        {CSecGeom::WIDTH, B1},
                        {CSecGeom::BOTTOM_FLANGE_WIDTH, B2},
                        {CSecGeom::WEB_THICKNESS, t},
                        {CSecGeom::FLANGE_THICKNESS, T1},
                        {CSecGeom::BOTTOM_FLANGE_THICKNESS, T2},
                        {CSecGeom::ROOT_RADIUS, r}});
}

inline CSection HostChannel(double D, double B, double t, double T, double r, double rt = 0.0, int type = SEC_ROLLED)
{
    return HostSection(CSecGeom::SHAPE_CHANNEL, type,
                       {{CSecGeom::DEPTH, D},
                        {CSecGeom::WIDTH, B},
                        {CSecGeom::WEB_THICKNESS, t},
                        {CSecGeom::FLANGE_THICKNESS, T},
                        {CSecGeom::ROOT_RADIUS, r},
                        {CSecGeom::TOE_RADIUS, rt}});
}

inline CSection HostT(double D, double B, double t, double T, double r, double rt = 0.0, int type = SEC_ROLLED)
{
    return HostSection(CSecGeom::SHAPE_T, type,
                       {{CSecGeom::DEPTH, D},
                        {CSecGeom::WIDTH, B},
                        {CSecGeom::WEB_THICKNESS, t},
                        {CSecGeom::FLANGE_THICKNESS, T},
                        {CSecGeom::ROOT_RADIUS, r},
                        {CSecGeom::TOE_RADIUS, rt}});
}

/// A is the vertical leg, B the horizontal one.
inline CSection HostAngle(double A, double B, double T, double r, double rt, int type = SEC_ROLLED)
{
    return HostSection(CSecGeom::SHAPE_ANGLE, type,
                       {{CSecGeom::DEPTH, A},
                        {CSecGeom::WIDTH, B},
                        {CSecGeom::WEB_THICKNESS, T},
                        {CSecGeom::FLANGE_THICKNESS, T},
                        {CSecGeom::ROOT_RADIUS, r},
                        {CSecGeom::TOE_RADIUS, rt}});
}

inline CSection HostRhs(double D, double B, double Tw, double Tf, int type = SEC_ROLLED)
{
    return HostSection(
        CSecGeom::SHAPE_RHS, type,
        {{CSecGeom::DEPTH, D}, {CSecGeom::WIDTH, B}, {CSecGeom::WEB_THICKNESS, Tw}, {CSecGeom::FLANGE_THICKNESS, Tf}});
}

inline CSection HostChs(double D, double t, int type = SEC_ROLLED)
{
    return HostSection(CSecGeom::SHAPE_CHS, type, {{CSecGeom::DEPTH, D}, {CSecGeom::WEB_THICKNESS, t}});
}

/// A section object of the class, filled from a host section.
template <class Geometry>
Geometry Make(const CSection& section)
{
    Geometry geometry;
    geometry.SetKeltrixSec(section, nullptr);
    return geometry;
}

} // namespace Keltrix::Steel::Test
