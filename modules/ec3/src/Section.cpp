#include "keltrix/ec3/Section.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Keltrix::EC3 {

namespace {

void CopyDimensions(Section& s)
{
    const Design::SectionProperties& p = s.basis;
    s.shape = p.shape;
    s.fabrication = p.fabrication;
    s.h = p.D;
    s.b = p.B;
    s.tw = p.t;
    s.tf = p.T;
    s.b2 = p.B2;
    s.tf2 = p.T2;
    // A root radius of a rolled section that counts as welded makes no plate narrower.
    s.r = p.IsWelded() ? 0.0 : p.r;
    s.hw = p.shape == Shape::Tee ? p.D - p.T : p.D - p.T - p.T2;
    s.webs = p.shape == Shape::RHS ? 2 : p.shape == Shape::Angle || p.shape == Shape::CHS ? 0 : 1;
    s.thickest = std::max({p.t, p.T, p.T2});
}

// The steel library's x-x is y-y here, and its y-y is z-z.
void CopyProperties(Section& s)
{
    const Design::SectionProperties& p = s.basis;
    s.A = p.A;
    s.Iy = p.Ix;
    s.Iz = p.Iy;
    s.It = p.J;
    s.Iw = p.H;
    s.Wply = p.Sx;
    s.Wplz = p.Sy;
    s.Wely = p.Zx;
    s.Welz = p.Zy;
    s.iy = p.rx;
    s.iz = p.ry;
    s.y0 = p.x0;
    s.z0 = p.y0;
    s.i0 = std::sqrt(s.iy * s.iy + s.iz * s.iz + s.y0 * s.y0 + s.z0 * s.z0);
    s.Iu = p.Iu;
    s.Iv = p.Iv;
    s.Welu = p.Zu;
    s.Welv = p.Zv;
    s.iv = p.rv;
}

void Add(Section& s, const wchar_t* name, PlateKind kind, PlatePlace place, double c, double t, int count)
{
    Plate& plate = s.plates[static_cast<std::size_t>(s.plateCount++)];
    plate.name = name;
    plate.kind = kind;
    plate.place = place;
    plate.c = c;
    plate.t = t;
    plate.count = count;
    plate.ratioName = kind == PlateKind::Leg ? L"h/t" : kind == PlateKind::Tube ? L"d/t" : L"c/t";
}

// Table 5.2, sheet 2: outstands from the root of the fillet; of a welded section from the face of the web, because the weld's size is
// not known.
void AddFlanges(Section& s)
{
    const bool channel = s.shape == Shape::Channel;
    const int count = channel ? 1 : 2;
    const double c1 = channel ? s.b - s.tw - s.r : 0.5 * (s.b - s.tw) - s.r;
    const double c2 = channel ? c1 : 0.5 * (s.b2 - s.tw) - s.r;
    const bool equal = s.shape != Shape::UnequalI;
    Add(s, equal ? L"flange" : L"flange 1", PlateKind::Outstand, PlatePlace::Flange1, c1, s.tf, count);
    if (s.shape == Shape::Tee) return;
    Add(s, equal ? L"flange" : L"flange 2", PlateKind::Outstand, PlatePlace::Flange2, c2, s.tf2, count);
}

// Table 5.2: c of every plate. Walls of hollow sections are h - 3t and b - 3t, those of a welded box the clear distances.
void SetPlates(Section& s)
{
    switch (s.shape) {
    case Shape::RHS: {
        const double off = s.IsWelded() ? 2.0 : 3.0;
        Add(s, L"web", PlateKind::Internal, PlatePlace::Web, s.h - off * s.tf, s.tw, 2);
        Add(s, L"flange", PlateKind::Internal, PlatePlace::Flange1, s.b - off * s.tw, s.tf, 1);
        Add(s, L"flange", PlateKind::Internal, PlatePlace::Flange2, s.b - off * s.tw, s.tf, 1);
        break;
    }
    case Shape::CHS:
        Add(s, L"tube", PlateKind::Tube, PlatePlace::Tube, s.h, s.tw, 1);
        break;
    case Shape::Angle:
        Add(s, L"vertical leg", PlateKind::Leg, PlatePlace::VerticalLeg, s.h, s.tw, 1);
        Add(s, L"horizontal leg", PlateKind::Leg, PlatePlace::HorizontalLeg, s.b, s.tw, 1);
        break;
    case Shape::Tee:
        Add(s, L"stem", PlateKind::Outstand, PlatePlace::Web, s.hw - s.r, s.tw, 1);
        AddFlanges(s);
        break;
    default:
        Add(s, L"web", PlateKind::Internal, PlatePlace::Web, s.hw - 2.0 * s.r, s.tw, 1);
        AddFlanges(s);
        break;
    }
}

double FlangeArea(const Section& s) { return s.b * s.tf + s.b2 * s.tf2; }

} // namespace

const Plate* Section::Find(PlatePlace place) const
{
    for (int i = 0; i < plateCount; ++i)
        if (plates[static_cast<std::size_t>(i)].place == place) return &plates[static_cast<std::size_t>(i)];
    return nullptr;
}

std::optional<Section> MakeSection(const CSection& section, Steel::CMemberResult* result)
{
    const std::optional<Design::SectionProperties> properties = Design::MakeProperties(section, result);
    if (!properties) return std::nullopt;
    if (properties->fabrication == Fabrication::Formed && !properties->IsHollow()) return std::nullopt; // EN 1993-1-3
    Section s;
    s.basis = *properties;
    CopyDimensions(s);
    CopyProperties(s);
    SetPlates(s);
    return s;
}

double ShearAreaZ(const Section& s, double eta)
{
    const double web = s.webs * s.hw * s.tw;
    switch (s.shape) {
    case Shape::I:
    case Shape::UnequalI:
        if (s.IsWelded()) return eta * web;
        return std::max(s.A - FlangeArea(s) + (s.tw + 2.0 * s.r) * 0.5 * (s.tf + s.tf2), eta * web);
    case Shape::Channel:
        return s.IsWelded() ? eta * web : s.A - FlangeArea(s) + (s.tw + s.r) * s.tf;
    case Shape::Tee:
        return s.IsWelded() ? s.tw * (s.h - 0.5 * s.tf) : s.A - s.b * s.tf + (s.tw + 2.0 * s.r) * 0.5 * s.tf;
    case Shape::RHS:
        return s.IsWelded() ? eta * web : s.A * s.h / (s.b + s.h);
    case Shape::CHS:
        return 2.0 * s.A / std::numbers::pi;
    case Shape::Angle:
        return s.h * s.tw / 1.5;
    }
    return 0.0;
}

double ShearAreaY(const Section& s)
{
    switch (s.shape) {
    case Shape::Tee:
        return s.b * s.tf / 1.5;
    case Shape::Angle:
        return s.b * s.tw / 1.5;
    case Shape::CHS:
        return 2.0 * s.A / std::numbers::pi;
    case Shape::RHS:
        if (!s.IsWelded()) return s.A * s.b / (s.b + s.h);
        [[fallthrough]];
    default:
        return s.A - s.webs * s.hw * s.tw;
    }
}

const wchar_t* ShearAreaZClause(const Section& s)
{
    switch (s.shape) {
    case Shape::I:
    case Shape::UnequalI:
        return s.IsWelded() ? L"6.2.6(3)d" : L"6.2.6(3)a";
    case Shape::Channel:
        return s.IsWelded() ? L"6.2.6(3)d" : L"6.2.6(3)b";
    case Shape::Tee:
        return L"6.2.6(3)c";
    case Shape::RHS:
        return s.IsWelded() ? L"6.2.6(3)d" : L"6.2.6(3)f";
    case Shape::CHS:
        return L"6.2.6(3)g";
    case Shape::Angle:
        return L"6.2.6(4)";
    }
    return L"";
}

const wchar_t* ShearAreaYClause(const Section& s)
{
    switch (s.shape) {
    case Shape::Tee:
    case Shape::Angle:
        return L"6.2.6(4)";
    case Shape::CHS:
        return L"6.2.6(3)g";
    case Shape::RHS:
        return s.IsWelded() ? L"6.2.6(3)e" : L"6.2.6(3)f";
    default:
        return L"6.2.6(3)e";
    }
}

} // namespace Keltrix::EC3
