#include "sections/SectionShapes.h"

#include <cmath>

namespace Keltrix::Host {

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

} // namespace

std::unique_ptr<Steel::CDesSectGeom> MakeGeometry(const CSection& section)
{
    const CSecComp& component = section.Component(0);
    const int shape = component.Shape() & Geom::SHAPE_MASK;
    return FitsTogether(component, shape) ? Steel::MakeSectionShape(section, nullptr) : nullptr;
}

} // namespace Keltrix::Host
