#include "keltrix/bs5950/SectionProperties.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Keltrix::BS5950 {

namespace {

// Figure 5: widths and depths of the elements. A welded web is the clear depth between the flanges, as in 4.2.3 and 4.5.2.1: a
// root radius, such as that of a rolled section taken as welded, does not shorten it. Footnote of Table 12 for hollow sections: 3t
// off for hot finished, 5t for cold formed; the clear width for welded boxes.
void SetElementWidths(SectionProperties& s)
{
    const bool welded = s.IsWelded();
    switch (s.shape) {
    case Shape::I:
    case Shape::UnequalI:
        s.d = s.D - s.T - s.T2 - (welded ? 0.0 : 2.0 * s.r);
        s.b = welded ? 0.5 * (s.B - s.t) : 0.5 * s.B;
        s.b2 = welded ? 0.5 * (s.B2 - s.t) : 0.5 * s.B2;
        break;
    case Shape::Channel:
        s.d = s.D - 2.0 * s.T - (welded ? 0.0 : 2.0 * s.r);
        s.b = s.b2 = s.B;
        break;
    case Shape::Tee:
        s.d = s.D;
        s.b = s.b2 = 0.5 * s.B;
        break;
    case Shape::Angle:
        s.d = s.D;
        s.b = s.b2 = s.B;
        break;
    case Shape::RHS: {
        const double off = welded ? 2.0 : s.fabrication == Fabrication::Formed ? 5.0 : 3.0;
        s.d = s.D - off * s.T;
        s.b = s.b2 = s.B - off * s.t;
        break;
    }
    case Shape::CHS:
        s.d = s.D;
        s.b = s.b2 = s.D;
        break;
    }
}

// Plastic modulus about x-x of what is left without the shear area of two flanges and a web: both flanges of a welded section, their
// outstands of a rolled one, whose shear area has the whole depth. The plastic neutral axis lies in the larger flange, y0 from its
// inner face.
double FlangesPlasticModulus(const SectionProperties& s)
{
    const double web = s.IsWelded() ? 0.0 : s.t;
    const bool firstSmaller = (s.B - web) * s.T <= (s.B2 - web) * s.T2;
    const double smaller = firstSmaller ? (s.B - web) * s.T : (s.B2 - web) * s.T2;
    const double B = (firstSmaller ? s.B2 : s.B) - web;
    const double T = firstSmaller ? s.T2 : s.T;
    const double y0 = 0.5 * (B * T - smaller) / B;
    return smaller * (s.hs - 0.5 * T + y0) + 0.5 * B * (y0 * y0 + (T - y0) * (T - y0));
}

// Clause 4.2.3. Sv is the plastic modulus of the shear area (4.2.5.3); of singly symmetric sections, of the gross
// section less the flanges.
void SetShearAreas(SectionProperties& s)
{
    const bool welded = s.IsWelded();
    switch (s.shape) {
    case Shape::I:
    case Shape::UnequalI:
        s.Avy = welded ? s.t * (s.D - s.T - s.T2) : s.t * s.D;
        s.Avx = 0.9 * (s.B * s.T + s.B2 * s.T2);
        s.Svx = s.shape == Shape::I ? s.Avy * (welded ? s.D - 2.0 * s.T : s.D) / 4.0
                                    : std::max(0.0, s.Sx - FlangesPlasticModulus(s));
        s.Svy = 0.9 * (s.B * s.B * s.T + s.B2 * s.B2 * s.T2) / 4.0;
        break;
    case Shape::Channel:
        s.Avy = welded ? s.t * (s.D - 2.0 * s.T) : s.t * s.D;
        s.Avx = 0.9 * 2.0 * s.B * s.T;
        s.Svx = s.Avy * (welded ? s.D - 2.0 * s.T : s.D) / 4.0;
        s.Svy = s.Sy;
        break;
    case Shape::Tee:
        s.Avy = welded ? s.t * (s.D - s.T) : s.t * s.D;
        s.Avx = 0.9 * s.B * s.T;
        s.Svx = std::max(0.0, s.Sx - s.B * s.T * s.T / 4.0);
        s.Svy = 0.9 * s.B * s.B * s.T / 4.0;
        break;
    case Shape::Angle:
        s.Avy = 0.9 * s.D * s.t;
        s.Avx = 0.9 * s.B * s.t;
        s.Svx = s.Sx;
        s.Svy = s.Sy;
        break;
    case Shape::RHS:
        if (welded) {
            s.Avy = 2.0 * s.t * (s.D - 2.0 * s.T);
            s.Avx = 2.0 * s.T * (s.B - 2.0 * s.t);
        } else {
            s.Avy = s.A * s.D / (s.D + s.B);
            s.Avx = s.A * s.B / (s.D + s.B);
        }
        s.Svx = s.Avy * (welded ? s.D - 2.0 * s.T : s.D) / 4.0;
        s.Svy = s.Avx * (welded ? s.B - 2.0 * s.t : s.B) / 4.0;
        break;
    case Shape::CHS:
        s.Avy = s.Avx = 0.6 * s.A;
        s.Svx = s.Svy = s.Sx;
        break;
    }
}

// Annex B.2.3 for I sections, equal flanges or not, and channels; B.2.8 for a T; B.2.9 for an angle.
void SetBucklingParameters(SectionProperties& s)
{
    const double gamma = 1.0 - s.Iy / s.Ix;
    switch (s.shape) {
    case Shape::I:
    case Shape::UnequalI:
    case Shape::Tee:
        s.u = std::pow(std::max(0.0, 4.0 * s.Sx * s.Sx * gamma) / (s.A * s.A * s.hs * s.hs), 0.25);
        s.x = 0.566 * s.hs * std::sqrt(s.A / s.J);
        break;
    case Shape::Channel:
        s.u = std::pow(std::max(0.0, s.Iy * s.Sx * s.Sx * gamma) / (s.A * s.A * s.H), 0.25);
        s.x = 1.132 * std::sqrt(s.A * s.H / (s.Iy * s.J));
        break;
    default:
        break;
    }
    if (s.shape == Shape::UnequalI || s.shape == Shape::Tee) s.psi = s.monosymmetry / s.hs;
    if (s.shape == Shape::Angle) s.psi = s.monosymmetry / s.t;
    if (s.shape == Shape::Tee) s.w = 4.0 * s.H / (s.Iy * s.hs * s.hs);
}

} // namespace

std::optional<SectionProperties> MakeProperties(const CSection& section, Steel::CMemberResult* result)
{
    const std::optional<Design::SectionProperties> properties = Design::MakeProperties(section, result);
    if (!properties) return std::nullopt;
    if (properties->fabrication == Fabrication::Formed && !properties->IsHollow()) return std::nullopt; // for BS 5950-5
    SectionProperties s;
    static_cast<Design::SectionProperties&>(s) = *properties;
    s.thickest = std::max({s.t, s.T, s.T2});
    SetElementWidths(s);
    SetBucklingParameters(s);
    SetShearAreas(s);
    return s;
}

} // namespace Keltrix::BS5950
