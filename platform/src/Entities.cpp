#include "keltrix/platform/KxUtil.h"

namespace Keltrix {

CCloneable::~CCloneable() = default;

CDesign::~CDesign() = default;

int CDesign::Category() { return 0; }

void CDesign::SetDesOpt(int option) { m_iDesOpt = option; }

int CDesign::DesOpt() const { return m_iDesOpt; }

int CDesign::NumDesOpt() const { return 1; }

} // namespace Keltrix
