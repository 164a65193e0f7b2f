#include "keltrix/bs5950/Capacity.h"

#include <algorithm>
#include <cmath>

namespace Keltrix::BS5950 {

SectionCapacity::SectionCapacity(const CSection& section, const CSteelGrade& grade)
{
    const std::optional<SectionProperties> properties = MakeProperties(section, nullptr);
    if (!properties) {
        m_refusal = L"the section is not one that this standard's module covers";
        return;
    }
    m_section = *properties;
    m_material = MakeMaterial(grade, m_section.thickest);
    m_refusal = m_material.refusal;
    const double ratio = section.Component(0).PlasElas();
    if (ratio > 0.0) m_design.plasElas = ratio;
    if (!IsValid()) m_material = Material{};
}

// A moment that decides which elements are compressed without adding to a stress ratio.
double SectionCapacity::NominalMoment(Axis axis) const
{
    return 1e-3 * m_material.py * (axis == Axis::X ? -m_section.Zx : m_section.Zy);
}

int SectionCapacity::ClassMajorBending() const
{
    if (!IsValid()) return 0;
    Actions a;
    a.Mx = NominalMoment(Axis::X);
    return Classify(m_section, m_material, a).cls;
}

int SectionCapacity::ClassMinorBending() const
{
    if (!IsValid()) return 0;
    Actions a;
    a.My = NominalMoment(Axis::Y);
    return Classify(m_section, m_material, a).cls;
}

int SectionCapacity::ClassCompression() const
{
    if (!IsValid()) return 0;
    Actions a;
    a.F = -SquashLoad();
    return Classify(m_section, m_material, a).cls;
}

// A resistance to compression is a force at which the section is classified, so it is looked for on both sides of class 4:
// the gross section up to the force at which an element turns slender, the slender section beyond.
template <class Resistance>
double SectionCapacity::AtOwnClass(Resistance resistance) const
{
    const auto classAt = [&](double force) {
        Actions a;
        a.F = -force;
        return Classify(m_section, m_material, a);
    };
    const double gross = resistance(classAt(0.0));
    if (classAt(gross).cls < 4) return gross;
    double low = 0.0;
    double high = gross;
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (low + high);
        (classAt(middle).cls < 4 ? low : high) = middle;
    }
    return std::max(resistance(classAt(SquashLoad())), low);
}

double SectionCapacity::SquashLoad() const { return IsValid() ? m_section.A * m_material.py : 0.0; }

double SectionCapacity::Pz() const
{
    if (!IsValid()) return 0.0;
    return AtOwnClass([](const Classification& c) { return c.Aeff * c.pyCompression; });
}

double SectionCapacity::Pt() const { return IsValid() ? TensionCapacity(m_section, m_material, 1.0) : 0.0; }

double SectionCapacity::Pvx() const { return IsValid() ? ShearCapacity(m_section, m_material, Axis::X) : 0.0; }

double SectionCapacity::Pvy() const { return IsValid() ? ShearCapacity(m_section, m_material, Axis::Y) : 0.0; }

double SectionCapacity::Mcx() const
{
    if (!IsValid()) return 0.0;
    Actions a;
    a.Mx = NominalMoment(Axis::X);
    return MomentCapacity(m_section, m_material, Classify(m_section, m_material, a), m_design, Axis::X, 0.0);
}

double SectionCapacity::Mcy() const
{
    if (!IsValid()) return 0.0;
    Actions a;
    a.My = NominalMoment(Axis::Y);
    return MomentCapacity(m_section, m_material, Classify(m_section, m_material, a), m_design, Axis::Y, 0.0);
}

std::optional<double> SectionCapacity::Mr(Axis axis, double n) const
{
    if (!IsValid() || !m_section.IsDoublySymmetric() || !(n >= 0.0 && n <= 1.0)) return std::nullopt;
    Actions a;
    a.F = -n * SquashLoad();
    (axis == Axis::X ? a.Mx : a.My) = NominalMoment(axis);
    if (Classify(m_section, m_material, a).cls > 2) return std::nullopt;
    const double Mc = axis == Axis::X ? Mcx() : Mcy();
    return ReducedMomentCapacity(m_section, m_material, axis, n, Mc);
}

std::optional<double> SectionCapacity::Mrx(double n) const { return Mr(Axis::X, n); }

std::optional<double> SectionCapacity::Mry(double n) const { return Mr(Axis::Y, n); }

double SectionCapacity::Pc(Axis axis, double LE) const
{
    if (!IsValid() || !(LE >= 0.0)) return 0.0;
    const double radius = axis == Axis::X ? m_section.rx : m_section.MinorRadius();
    return AtOwnClass(
        [&](const Classification& c) { return CompressionResistance(m_section, m_material, c, axis, LE / radius); });
}

double SectionCapacity::Pcx(double LE) const { return Pc(Axis::X, LE); }

double SectionCapacity::Pcy(double LE) const { return Pc(Axis::Y, LE); }

double SectionCapacity::Mb(double LE) const
{
    if (!IsValid() || !(LE >= 0.0)) return 0.0;
    Actions a;
    a.Mx = NominalMoment(Axis::X);
    const Classification c = Classify(m_section, m_material, a);
    return std::min(BucklingResistanceMoment(m_section, m_material, c, LE, true), Mcx());
}

} // namespace Keltrix::BS5950
