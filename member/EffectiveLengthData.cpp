#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Steel {

SubspanEffectiveLengthData& SubspanEffectiveLengthData::operator=(SubspanEffectiveLengthData&& other) noexcept
{
    if (this != &other) {
        m_majorAxis = std::move(other.m_majorAxis);
        m_minorAxis = std::move(other.m_minorAxis);
        m_lateralTorsional = std::move(other.m_lateralTorsional);
    }
    return *this;
}

} // namespace Keltrix::Steel
