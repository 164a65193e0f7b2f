#include "SectionValues.h"

#include <cmath>
#include <numbers>

#include "SectionOutline.h"
#include "SectionShapes.h"

namespace Keltrix::App {

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

void AddAngle(ValueList& list, const AngleSection& g)
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
    if (const auto* i = dynamic_cast<const ISection*>(&g)) list.Add("Iw", i->Gamma(), "dm⁶", 1e6, meaning);
    if (const auto* c = dynamic_cast<const ChannelSection*>(&g)) list.Add("Iw", c->Iw(), "dm⁶", 1e6, meaning);
    if (const auto* t = dynamic_cast<const TeeSection*>(&g)) {
        list.Add("Iw", t->Iw(), "cm⁶", 1e12, meaning);
        list.Millimetres("beta", t->MonoSymBeta(), "monosymmetry property for lateral-torsional buckling");
    }
}

// Where the axes lie. The library has the centroid of hollow sections and of axes of symmetry at 0.
void AddAxes(ValueList& list, const CSection& section, const Steel::CDesSectGeom& g)
{
    const SectionOutline outline = MakeOutline(section);
    const bool hollow = dynamic_cast<const RhsSection*>(&g) || dynamic_cast<const ChsSection*>(&g);
    const double Ybar = hollow ? outline.top / 2.0 : g.Ybar();
    const double Xbar = hollow ? 0.0 : g.Xbar();
    list.Millimetres("Xbar", Xbar - outline.left, "centroid, from the left edge");
    list.Millimetres("Ybar", Ybar, "centroid, above the bottom edge");
    list.Millimetres("Xp", outline.HalvingX() - outline.left,
                     "axis of equal areas parallel to y-y, from the left edge");
    list.Millimetres("Yp", outline.HalvingHeight(), "axis of equal areas parallel to x-x, above the bottom edge");
}

} // namespace

std::vector<SectionValue> SectionDimensions(const CSection& section)
{
    const CSecComp& c = section.Component(0);
    const int shape = c.Shape() & Geom::SHAPE_MASK;
    const auto dim = [&](Geom::Prop prop) { return c.Dimension(0.0, prop); };
    const bool general = shape == Geom::SHAPE_GENERAL_I;
    ValueList list;
    if (shape == Geom::SHAPE_CHS) {
        list.Millimetres("D", dim(Geom::DEPTH), "outside diameter");
        list.Millimetres("t", dim(Geom::WEB_THICKNESS), "wall thickness");
        return list.Take();
    }
    const bool angle = shape == Geom::SHAPE_ANGLE;
    list.Millimetres(angle ? "A" : "D", dim(Geom::DEPTH), angle ? "vertical leg" : "depth");
    list.Millimetres("B", dim(Geom::WIDTH), angle ? "horizontal leg" : general ? "width of the top flange" : "width");
    if (general) list.Millimetres("B2", dim(Geom::BOTTOM_FLANGE_WIDTH), "width of the bottom flange");
    const bool hollow = shape == Geom::SHAPE_RHS;
    list.Millimetres("t", dim(Geom::WEB_THICKNESS),
                     angle                    ? "leg thickness"
                     : hollow                 ? "side wall thickness"
                     : shape == Geom::SHAPE_T ? "stem thickness"
                                              : "web thickness");
    if (!angle)
        list.Millimetres("T", dim(Geom::FLANGE_THICKNESS),
                         hollow    ? "top and bottom wall thickness"
                         : general ? "thickness of the top flange"
                                   : "flange thickness");
    if (general) list.Millimetres("T2", dim(Geom::BOTTOM_FLANGE_THICKNESS), "thickness of the bottom flange");
    if (hollow) {
        const auto geometry = MakeGeometry(section);
        const auto* rhs = dynamic_cast<const RhsSection*>(geometry.get());
        list.Millimetres("ro", rhs ? rhs->RadiusOuter() : 0.0, "outer corner radius, from the thickness");
        list.Millimetres("ri", rhs ? rhs->RadiusInner() : 0.0, "inner corner radius, from the thickness");
        return list.Take();
    }
    list.Millimetres("r", dim(Geom::ROOT_RADIUS), "root radius");
    if (dim(Geom::TOE_RADIUS) > 0.0) list.Millimetres("rt", dim(Geom::TOE_RADIUS), "toe radius");
    return list.Take();
}

std::vector<SectionValue> SectionProperties(const CSection& section)
{
    ValueList list;
    const std::unique_ptr<Steel::CDesSectGeom> geometry = MakeGeometry(section);
    if (!geometry) return {};
    AddCommon(list, *geometry);
    AddWarping(list, *geometry);
    if (const auto* angle = dynamic_cast<const AngleSection*>(geometry.get())) AddAngle(list, *angle);
    AddAxes(list, section, *geometry);
    return list.Take();
}

} // namespace Keltrix::App
