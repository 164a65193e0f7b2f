#include <cmath>

#include "keltrix/steel/SectionGeometry.h"
#include "section/PrincipalAxes.h"

namespace Keltrix::Steel {

namespace {

/// Ratio of plastic to elastic modulus where the host gives none, and the limit below which it gives none.
constexpr double DEFAULT_PLAS_ELAS = 1.2;
constexpr double NO_PLAS_ELAS = 1e-10;

} // namespace

CSectionCodeBase::CSectionCodeBase() = default;

CSectionCodeBase::~CSectionCodeBase() = default;

bool CSectionCodeBase::SetSteelDesignProp(const CSteelGrade& grade)
{
    m_grade = grade;
    const CSecComp& component = m_section.Component(0);
    m_dNetGross = component.NetGross();
    // A component has one beta; all four factors take it.
    m_dBeta1 = m_dBeta2 = m_dBeta3 = m_dBeta4 = component.Beta();
    m_dPlasElas = component.PlasElas();
    if (std::abs(m_dPlasElas) < NO_PLAS_ELAS) {
        m_bPlasElasDefaulted = true; // never taken back, also when a later component has a ratio
        m_dPlasElas = DEFAULT_PLAS_ELAS;
    }
    return true;
}

void CSectionCodeBase::MirrorXX()
{
    SectionChanged();
    if (m_bRestraintSet) m_restraint.MirrorMajorAxis();
    m_dMomentXX = -m_dMomentXX;
    m_dShearY = -m_dShearY;
    m_dTorsion = -m_dTorsion;
}

bool CSectionCodeBase::SetKeltrixSec(const CSection& sec, CMemberResult* const)
{
    SectionChanged();
    m_section = sec;
    return true;
}

double CSectionCodeBase::Gamma() const { return 0.0; }

double CSectionCodeBase::Iuu() const
{
    const double Ix = Ixx();
    const double Iy = Iyy();
    return PrincipalAxes::Iuu(Ix, Iy, Ixy());
}

double CSectionCodeBase::Ivv() const
{
    const double Ix = Ixx();
    const double Iy = Iyy();
    return PrincipalAxes::Ivv(Ix, Iy, Ixy());
}

double CSectionCodeBase::Alpha() const
{
    const double Ix = Ixx();
    const double Iy = Iyy();
    return PrincipalAxes::Alpha(Ix, Iy, Ixy());
}

CSection CSectionCodeBase::GetKeltrixSec() { return m_section; }

void CSectionCodeBase::SetMemberForces(Vec3<double> force)
{
    ForcesChanged();
    m_dForceAxial = force.x;
    m_dShearX = force.y;
    m_dShearY = -force.z;
}

void CSectionCodeBase::SetMemberMoments(Vec3<double> moment)
{
    ForcesChanged();
    m_dTorsion = moment.x;
    m_dMomentXX = moment.y;
    m_dMomentYY = moment.z;
}

void CSectionCodeBase::SetMomentXX(double moment)
{
    ForcesChanged();
    m_dMomentXX = moment;
}

void CSectionCodeBase::SetMomentYY(double moment)
{
    ForcesChanged();
    m_dMomentYY = moment;
}

void CSectionCodeBase::SetForceAxial(double force)
{
    ForcesChanged();
    m_dForceAxial = force;
}

void CSectionCodeBase::SetTorsion(double moment)
{
    ForcesChanged();
    m_dTorsion = moment;
}

void CSectionCodeBase::SetShearForceX(double force)
{
    ForcesChanged();
    m_dShearX = force;
}

void CSectionCodeBase::SetShearForceY(double force)
{
    ForcesChanged();
    m_dShearY = force;
}

void CSectionCodeBase::ClearForcesAndMoments()
{
    ForcesChanged();
    m_dMomentXX = 0.0;
    m_dMomentYY = 0.0;
    m_dForceAxial = 0.0;
    m_dTorsion = 0.0;
    m_dShearX = 0.0;
    m_dShearY = 0.0;
}

void CSectionCodeBase::SetGrade(const CSteelGrade& grade)
{
    SectionChanged();
    m_grade = grade;
}

void CSectionCodeBase::SetMemberRestraint(const CRestraint& restraint)
{
    if (&restraint != &m_restraint) m_restraint = restraint;
    m_bRestraintSet = true;
}

} // namespace Keltrix::Steel
