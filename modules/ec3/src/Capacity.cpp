#include "keltrix/ec3/Capacity.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "keltrix/ec3/Critical.h"
#include "keltrix/ec3/SteelMemberEC3.h"

namespace Keltrix::EC3 {

namespace {

// Members with an axial force and moments about both axes.
ClassActions BothWays(double NEd) { return {NEd, true, true, true, true}; }

} // namespace

SectionCapacity::SectionCapacity(const CSection& section, const CSteelGrade& grade, const Annex& annex) :
    m_annex(&annex), m_refusal(SectionRefusal(section))
{
    if (m_refusal) return;
    m_section = *MakeSection(section, nullptr);
    m_material = MakeMaterial(grade, m_section.basis, annex);
    m_refusal = m_material.refusal;
    if (m_refusal) return;
    m_strength = MakeStrength(m_material, annex);
    m_major = Classify(m_section, m_strength, ClassActions::Major());
    m_minor = Classify(m_section, m_strength, ClassActions::Minor());
    m_compression = Classify(m_section, m_strength, ClassActions::Compression(m_section.A * m_material.fy));
}

std::optional<double> SectionCapacity::MNyRd(double n) const
{
    if (!IsValid()) return std::nullopt;
    const double N = n * *NplRd();
    const Classification c = Classify(m_section, m_strength, BothWays(N));
    if (!c.IsPlastic()) return std::nullopt;
    return EC3::MNyRd(m_section, m_strength, c, -N).value;
}

std::optional<double> SectionCapacity::MNzRd(double n) const
{
    if (!IsValid()) return std::nullopt;
    const double N = n * *NplRd();
    const Classification c = Classify(m_section, m_strength, BothWays(N));
    if (!c.IsPlastic()) return std::nullopt;
    return EC3::MNzRd(m_section, m_strength, c, -N).value;
}

std::optional<double> SectionCapacity::VbwRd() const
{
    if (!IsValid() || !NeedsShearBuckling(m_section, m_strength)) return std::nullopt;
    return EC3::VbwRd(m_section, m_strength).value;
}

std::optional<double> SectionCapacity::VbwyRd() const
{
    if (!IsValid() || !NeedsShearBucklingAcross(m_section, m_strength)) return std::nullopt;
    return EC3::VbwRd(TurnedSection(m_section), m_strength).value;
}

std::optional<double> SectionCapacity::FRd(double ss, bool atEnd) const
{
    if (!IsValid()) return std::nullopt;
    WebForce force;
    force.ss = ss;
    force.atEnd = true;
    force.c = atEnd ? 0.0 : 2.0 * m_section.hw;
    return EC3::FRd(m_section, m_strength, force).value;
}

double SectionCapacity::Nb(Axis axis, double L, double area) const
{
    const AxisCurves curves = CompressionCurves(m_section.basis, m_material.grade);
    double Ncr = std::numeric_limits<double>::infinity();
    if (L > 0.0) {
        const double y = FlexuralNcr(m_material.E, MajorSecondMoment(m_section), L);
        const double z = FlexuralNcr(m_material.E, MinorSecondMoment(m_section), L);
        const double T = TorsionalNcr(m_section.basis, m_material.E, m_material.G, L);
        Ncr = axis == Axis::T ? CoupledNcr(m_section, {y, z, T}) : axis == Axis::Y ? y : z;
    }
    return BuckleStrut(Ncr, area, m_material.fy, m_strength.gammaM1, axis == Axis::Y ? curves.y : curves.z).NbRd;
}

std::optional<double> SectionCapacity::AtOwnClass(Axis axis, double L) const
{
    if (!IsValid()) return std::nullopt;
    const auto isSlender = [&](double N) { return Classify(m_section, m_strength, ClassActions::Major(N)).cls == 4; };
    const double gross = Nb(axis, L, m_section.A);
    if (m_compression.cls < 4 || !isSlender(gross)) return gross;
    double low = 0.0, high = gross;
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (low + high);
        (isSlender(middle) ? high : low) = middle;
    }
    if (!(m_compression.A > 0.0)) return std::nullopt;
    return std::max(Nb(axis, L, m_compression.A), low);
}

std::optional<double> SectionCapacity::NbTRd(double L) const
{
    if (!IsValid() || m_section.IsHollow()) return std::nullopt;
    return Nb(Axis::T, L, m_compression.A);
}

std::optional<double> SectionCapacity::MbRd(double L, double C1) const
{
    if (!IsValid() || !(m_major.Wy > 0.0)) return std::nullopt;
    const double MRk = m_major.Wy * m_material.fy;
    const std::optional<LateralRule> rule = LateralRuleOf(m_section.basis, *m_annex);
    if (!rule || !(L > 0.0)) return MRk / m_strength.gammaM1;
    // The factor of the tables is for sections whose shear centre is in the middle of their depth.
    const bool isMonosymmetric = m_section.basis.monosymmetry != 0.0 || m_section.shape == Shape::Angle;
    if (isMonosymmetric && C1 != 1.0) return std::nullopt;
    const auto uniform = [&](bool top) { return UniformMcr(m_section, m_material.E, m_material.G, L, top); };
    const double Mcr = isMonosymmetric ? std::min(uniform(true), uniform(false))
                                       : ElasticMoment(m_section.basis, m_material.E, m_material.G, L, C1);
    return ReduceLateral(*rule, std::sqrt(MRk / Mcr), C1).chiMod * MRk / m_strength.gammaM1;
}

} // namespace Keltrix::EC3
