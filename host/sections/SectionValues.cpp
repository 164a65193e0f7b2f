#include "sections/SectionValues.h"

#include <cmath>
#include <numbers>

#include "sections/SectionOutline.h"
#include "sections/SectionShapes.h"

namespace Keltrix::Host {

namespace {

using Geom = CSecGeom;

class ValueList {
public:
    void Millimetres(const char* symbol, double m, const char* meaning) { Add(symbol, m, "mm", 1e3, meaning); }
    void Area(const char* symbol, double m2, const char* meaning) { Add(symbol, m2, "cm²", 1e4, meaning); }
    void Modulus(const char* symbol, double m3, const char* meaning) { Add(symbol, m3, "cm³", 1e6, meaning); }
    void SecondMoment(const char* symbol, double m4, const char* meaning) { Add(symbol, m4, "cm⁴", 1e8, meaning); }
    void Radius(const char* symbol, double m, const char* meaning) { Add(symbol, m, "cm", 1e2, meaning); }
    void Add(const char* symbol, double si, const char* unit, double factor, const char* meaning)
    {
        m_values.push_back({symbol, si, unit, factor, meaning});
    }
    std::vector<SectionValue> Take() { return std::move(m_values); }

private:
    std::vector<SectionValue> m_values;
};

void AddCommon(ValueList& list, const Steel::CDesSectGeom& g)
{
    const double A = g.Area();
    list.Area("A", A, "area");
    list.SecondMoment("Ixx", g.Ixx(), "second moment of area about x-x, the major axis");
    list.SecondMoment("Iyy", g.Iyy(), "second moment of area about y-y");
    list.SecondMoment("Ixy", g.Ixy(), "product moment of area about the centroid");
    list.Radius("rx", std::sqrt(g.Ixx() / A), "radius of gyration about x-x");
    list.Radius("ry", std::sqrt(g.Iyy() / A), "radius of gyration about y-y");
    list.Modulus("Zxx", g.Zxx(), "elastic modulus about x-x, to the extreme fibre");
    list.Modulus("Zyy", g.Zyy(), "elastic modulus about y-y, to the extreme fibre");
    list.Modulus("Sxx", g.Sxx(), "plastic modulus about x-x");
    list.Modulus("Syy", g.Syy(), "plastic modulus about y-y");
    list.SecondMoment("J", g.J(), "torsion constant (St Venant)");
}

void AddAngle(ValueList& list, const AngleShape& g)
{
    const double A = g.Area();
    list.Add("alpha", g.Alpha(), "°", 180.0 / std::numbers::pi, "angle from x-x to u-u, the major principal axis");
    list.SecondMoment("Iuu", g.Iuu(), "second moment of area about u-u");
    list.SecondMoment("Ivv", g.Ivv(), "second moment of area about v-v, the minor principal axis");
    list.Radius("ru", std::sqrt(g.Iuu() / A), "radius of gyration about u-u");
    list.Radius("rv", std::sqrt(g.Ivv() / A), "radius of gyration about v-v, the least one");
    list.Modulus("Zuu", g.Zuu(), "elastic modulus about u-u");
    list.Modulus("Zvv", g.Zvv(), "elastic modulus about v-v");
    list.Modulus("Suu", g.Suu(), "plastic modulus about u-u");
    list.Modulus("Svv", g.Svv(), "plastic modulus about v-v");
}

void AddWarping(ValueList& list, const Steel::CDesSectGeom& g)
{
    static constexpr const char* meaning = "warping constant";
    if (const auto* i = dynamic_cast<const IShape*>(&g)) list.Add("Iw", i->Gamma(), "dm⁶", 1e6, meaning);
    if (const auto* c = dynamic_cast<const ChannelShape*>(&g)) list.Add("Iw", c->Iw(), "dm⁶", 1e6, meaning);
    if (const auto* t = dynamic_cast<const TeeShape*>(&g)) {
        list.Add("Iw", t->Iw(), "cm⁶", 1e12, meaning);
        list.Millimetres("beta", t->MonoSymBeta(), "monosymmetry property for lateral-torsional buckling");
    }
}

// Where the axes lie. The library has the centroid of hollow sections and of axes of symmetry at 0.
void AddAxes(ValueList& list, const CSection& section, const Steel::CDesSectGeom& g)
{
    const SectionOutline outline = MakeOutline(section);
    const bool hollow = dynamic_cast<const RhsShape*>(&g) || dynamic_cast<const ChsShape*>(&g);
    const double Ybar = hollow ? outline.top / 2.0 : g.Ybar();
    const double Xbar = hollow ? 0.0 : g.Xbar();
    list.Millimetres("Xbar", Xbar - outline.left, "centroid, from the left edge");
    list.Millimetres("Ybar", Ybar, "centroid, above the bottom edge");
    list.Millimetres("Xp", outline.HalvingX() - outline.left,
                     "axis of equal areas parallel to y-y, from the left edge");
    list.Millimetres("Yp", outline.HalvingHeight(), "axis of equal areas parallel to x-x, above the bottom edge");
}

struct DimensionOf {
    const CSecComp& component;
    double operator()(Geom::Prop prop) const { return component.Dimension(0.0, prop); }
};

void AddRadii(ValueList& list, const DimensionOf& dim)
{
    list.Millimetres("r", dim(Geom::ROOT_RADIUS), "root radius");
    if (dim(Geom::TOE_RADIUS) > 0.0) list.Millimetres("rt", dim(Geom::TOE_RADIUS), "toe radius");
}

void AddFlangedDimensions(ValueList& list, const DimensionOf& dim, const char* web)
{
    list.Millimetres("D", dim(Geom::DEPTH), "depth");
    list.Millimetres("B", dim(Geom::WIDTH), "width");
    list.Millimetres("t", dim(Geom::WEB_THICKNESS), web);
    list.Millimetres("T", dim(Geom::FLANGE_THICKNESS), "flange thickness");
    AddRadii(list, dim);
}

void AddUnequalDimensions(ValueList& list, const DimensionOf& dim)
{
    list.Millimetres("D", dim(Geom::DEPTH), "depth");
    list.Millimetres("B", dim(Geom::WIDTH), "width of the top flange");
    list.Millimetres("B2", dim(Geom::BOTTOM_FLANGE_WIDTH), "width of the bottom flange");
    list.Millimetres("t", dim(Geom::WEB_THICKNESS), "web thickness");
    list.Millimetres("T", dim(Geom::FLANGE_THICKNESS), "thickness of the top flange");
    list.Millimetres("T2", dim(Geom::BOTTOM_FLANGE_THICKNESS), "thickness of the bottom flange");
    AddRadii(list, dim);
}

void AddHollowDimensions(ValueList& list, const DimensionOf& dim, const CSection& section)
{
    list.Millimetres("D", dim(Geom::DEPTH), "depth");
    list.Millimetres("B", dim(Geom::WIDTH), "width");
    list.Millimetres("t", dim(Geom::WEB_THICKNESS), "side wall thickness");
    list.Millimetres("T", dim(Geom::FLANGE_THICKNESS), "top and bottom wall thickness");
    const auto geometry = MakeGeometry(section);
    const auto* const rhs = dynamic_cast<const RhsShape*>(geometry.get());
    if (!rhs) return;
    list.Millimetres("ro", rhs->RadiusOuter(), "outer corner radius, from the thickness");
    list.Millimetres("ri", rhs->RadiusInner(), "inner corner radius, from the thickness");
}

} // namespace

std::vector<SectionValue> SectionDimensionValues(const CSection& section)
{
    const DimensionOf dim{section.Component(0)};
    ValueList list;
    switch (section.Component(0).Shape() & Geom::SHAPE_MASK) {
    case Geom::SHAPE_CHS:
        list.Millimetres("D", dim(Geom::DEPTH), "outside diameter");
        list.Millimetres("t", dim(Geom::WEB_THICKNESS), "wall thickness");
        break;
    case Geom::SHAPE_RHS:
        AddHollowDimensions(list, dim, section);
        break;
    case Geom::SHAPE_ANGLE:
        list.Millimetres("A", dim(Geom::DEPTH), "vertical leg");
        list.Millimetres("B", dim(Geom::WIDTH), "horizontal leg");
        list.Millimetres("t", dim(Geom::WEB_THICKNESS), "leg thickness");
        AddRadii(list, dim);
        break;
    case Geom::SHAPE_GENERAL_I:
        AddUnequalDimensions(list, dim);
        break;
    case Geom::SHAPE_T:
        AddFlangedDimensions(list, dim, "stem thickness");
        break;
    default:
        AddFlangedDimensions(list, dim, "web thickness");
    }
    return list.Take();
}

std::vector<SectionValue> SectionPropertyValues(const CSection& section)
{
    ValueList list;
    const std::unique_ptr<Steel::CDesSectGeom> geometry = MakeGeometry(section);
    if (!geometry) return {};
    AddCommon(list, *geometry);
    AddWarping(list, *geometry);
    if (const auto* angle = dynamic_cast<const AngleShape*>(geometry.get())) AddAngle(list, *angle);
    AddAxes(list, section, *geometry);
    return list.Take();
}

} // namespace Keltrix::Host
