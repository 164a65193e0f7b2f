#include "SectionShapes.h"

#include <cmath>
#include <numbers>

namespace Keltrix::App {

namespace {

using Geom = CSecGeom;

double Dim(const CSecComp& c, Geom::Prop prop) { return c.Dimension(0.0, prop); }

bool ArePositive(const CSecComp& c, std::initializer_list<Geom::Prop> props)
{
    for (const Geom::Prop prop : props) {
        if (!(Dim(c, prop) > 0.0) || !std::isfinite(Dim(c, prop))) return false;
    }
    return true;
}

// Whether plates and fillets fit into the outline, so that every formula has a meaning.
bool FitsTogether(const CSecComp& c, int shape)
{
    const double D = Dim(c, Geom::DEPTH);
    const double B = Dim(c, Geom::WIDTH);
    const double t = Dim(c, Geom::WEB_THICKNESS);
    const double T = Dim(c, Geom::FLANGE_THICKNESS);
    const double r = Dim(c, Geom::ROOT_RADIUS);
    const double rt = Dim(c, Geom::TOE_RADIUS);
    if (!(r >= 0.0) || !(rt >= 0.0)) return false;
    if (!ArePositive(c, {Geom::DEPTH, Geom::WEB_THICKNESS})) return false;
    if (shape == Geom::SHAPE_CHS) return 2.0 * t < D;
    if (!ArePositive(c, {Geom::WIDTH, Geom::FLANGE_THICKNESS})) return false;
    switch (shape) {
    case Geom::SHAPE_I:
        return 2.0 * (T + r) <= D && t + 2.0 * r <= B;
    case Geom::SHAPE_GENERAL_I: {
        const double B2 = Dim(c, Geom::BOTTOM_FLANGE_WIDTH);
        const double T2 = Dim(c, Geom::BOTTOM_FLANGE_THICKNESS);
        return ArePositive(c, {Geom::BOTTOM_FLANGE_WIDTH, Geom::BOTTOM_FLANGE_THICKNESS}) && T + T2 + 2.0 * r <= D &&
               t + 2.0 * r <= std::fmin(B, B2);
    }
    case Geom::SHAPE_CHANNEL:
        return 2.0 * (T + r) <= D && t + r + rt <= B && rt <= T;
    case Geom::SHAPE_T:
        return T + r <= D && t + 2.0 * (r + rt) <= B && rt <= T;
    case Geom::SHAPE_ANGLE:
        return t + r + rt <= std::fmin(D, B) && rt <= t;
    case Geom::SHAPE_RHS:
        return 2.0 * T < D && 2.0 * t < B;
    default:
        return false;
    }
}

std::unique_ptr<Steel::CDesSectGeom> NewShape(int shape)
{
    switch (shape) {
    case Geom::SHAPE_I:
    case Geom::SHAPE_GENERAL_I:
        return std::make_unique<ISection>();
    case Geom::SHAPE_CHANNEL:
        return std::make_unique<ChannelSection>();
    case Geom::SHAPE_T:
        return std::make_unique<TeeSection>();
    case Geom::SHAPE_ANGLE:
        return std::make_unique<AngleSection>();
    case Geom::SHAPE_RHS:
        return std::make_unique<RhsSection>();
    case Geom::SHAPE_CHS:
        return std::make_unique<ChsSection>();
    default:
        return nullptr;
    }
}

} // namespace

double AngleSection::Alpha() const
{
    const double Ix = Ixx();
    const double Iy = Iyy();
    if (std::abs(Ix - Iy) <= 1e-9 * (Ix + Iy)) return std::numbers::pi / 4.0;
    return std::atan2(-2.0 * Ixy(), Ix - Iy) / 2.0;
}

double AngleSection::Iuu() const
{
    const double Ix = Ixx();
    const double Iy = Iyy();
    return (Ix + Iy) / 2.0 + std::hypot((Ix - Iy) / 2.0, Ixy());
}

double AngleSection::Ivv() const
{
    const double Ix = Ixx();
    const double Iy = Iyy();
    return (Ix + Iy) / 2.0 - std::hypot((Ix - Iy) / 2.0, Ixy());
}

std::unique_ptr<Steel::CDesSectGeom> MakeGeometry(const CSection& section)
{
    const CSecComp& component = section.Component(0);
    const int shape = component.Shape() & Geom::SHAPE_MASK;
    std::unique_ptr<Steel::CDesSectGeom> geometry = NewShape(shape);
    if (!geometry || !FitsTogether(component, shape)) return nullptr;
    return geometry->SetKeltrixSec(section, nullptr) ? std::move(geometry) : nullptr;
}

} // namespace Keltrix::App
