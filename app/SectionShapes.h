#pragma once

#include <memory>

#include "keltrix/platform/KxData.h"
#include "keltrix/steel/SectionGeometry.h"

namespace Keltrix::App {

// The section geometry of the library without any design code: each shape with what it protects opened for reading.

class ISection : public Steel::CDesSectGeomI {
public:
    ISection() = default;
    ISection* Clone() const override { return new ISection(*this); }
};

class ChannelSection : public Steel::CDesSectGeomPFC {
public:
    ChannelSection() = default;
    ChannelSection* Clone() const override { return new ChannelSection(*this); }
};

class TeeSection : public Steel::CDesSectGeomT {
public:
    TeeSection() = default;
    TeeSection* Clone() const override { return new TeeSection(*this); }
    using Steel::CDesSectGeomT::YbarPlastic;
};

class AngleSection : public Steel::CDesSectGeomAngle {
public:
    AngleSection() = default;
    AngleSection* Clone() const override { return new AngleSection(*this); }
    /// Angle from the x axis to the u axis, radians, independent of the unit of length: 45° only where Ixx and Iyy are
    /// equal to a billionth of their sum. The base's rule compares their difference with 1e-6, which in metres takes
    /// every small angle for an equal-leg one.
    double Alpha() const override;
    /// By the circle of second moments whatever the size of Ixy. The base takes an Ixy below 1e-10, in metres 0.01 cm⁴, for
    /// zero.
    double Iuu() const override;
    double Ivv() const override;
};

class RhsSection : public Steel::CDesSectGeomRHS {
public:
    RhsSection() = default;
    RhsSection* Clone() const override { return new RhsSection(*this); }
    using Steel::CDesSectGeomRHS::RadiusInner;
    using Steel::CDesSectGeomRHS::RadiusOuter;
};

class ChsSection : public Steel::CDesSectGeomCHS {
public:
    ChsSection() = default;
    ChsSection* Clone() const override { return new ChsSection(*this); }
};

/// Geometry of the shape of component 0, filled from it; null for a shape that the library does not know, and for dimensions
/// that are no section (not finite, not above zero, plates that do not fit into the outline).
std::unique_ptr<Steel::CDesSectGeom> MakeGeometry(const CSection& section);

} // namespace Keltrix::App
