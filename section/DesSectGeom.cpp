#include "keltrix/steel/SectionGeometry.h"
#include "section/Fabrication.h"

namespace Keltrix::Steel {

namespace {

/// Fabrication kind of a component; `previous` where its type is none that is known.
int FabTypeOf(const CSecComp& component, int previous)
{
    switch (static_cast<int>(component.Type())) {
    case SEC_UNDEF:
        return (component.Shape() & CSecGeom::BUILT_UP_MASK) == 0 ? Fabrication::HOT_ROLLED : Fabrication::WELDED;
    case SEC_ROLLED:
        return Fabrication::HOT_ROLLED;
    case SEC_WELDED:
        return Fabrication::WELDED;
    case SEC_FORMED:
        return Fabrication::COLD_FORMED;
    case SEC_WELDED_2:
        return Fabrication::WELDED_2;
    case SEC_OTHER:
        return Fabrication::OTHER;
    default:
        return previous;
    }
}

int PlateTypeOf(const CSecComp& component)
{
    const int plate = static_cast<int>(component.Plate());
    return plate == PLATE_1 || plate == PLATE_2 ? plate : PLATE_NONE;
}

} // namespace

CCloneableGeom::~CCloneableGeom() = default;

CDesSectGeom::~CDesSectGeom() = default;

bool CDesSectGeom::SetKeltrixSec(const CSection& sec, CMemberResult* const)
{
    const CSecComp& component = sec.Component(0);
    m_iFabType = FabTypeOf(component, m_iFabType);
    m_iPlateType = PlateTypeOf(component);
    return true;
}

bool CDesSectGeom::IsWelded() const { return m_iFabType == Fabrication::WELDED || m_iFabType == Fabrication::WELDED_2; }

CString CDesSectGeom::FabricationText() const
{
    switch (m_iFabType) {
    case Fabrication::HOT_ROLLED:
        return L"Hot rolled ";
    case Fabrication::COLD_FORMED:
        return L"Cold formed ";
    default:
        return L"Welded ";
    }
}

int CDesSectGeom::ShapeCode(const CSection& sec) { return sec.Component(0).Shape() & CSecGeom::SHAPE_MASK; }

} // namespace Keltrix::Steel
