#include "keltrix/stability/Refusal.h"

namespace Keltrix::Stability {

namespace {

// Largest estimated relative error of a critical load that is used.
constexpr double LARGEST_ERROR = 0.01;
// Largest jump of the moment inside a length, as a share of its largest moment, that rounding of the input explains.
constexpr double LARGEST_JUMP = 1e-3;

} // namespace

const wchar_t* DesignRefusal(const Unit& unit)
{
    if (unit.outcome == Outcome::NotHeld) return nullptr;
    if (unit.largestJump > LARGEST_JUMP * unit.largestMoment)
        return L"the moment jumps inside it at a section that is free to twist, and how the couple is applied is not "
               L"part of the input";
    if (!unit.balanced) return L"the forces of a sub-span do not balance";
    if (unit.restraintsLeftOut) return L"its restraints follow each other more closely than the analysis can take";
    if (unit.positive && !(unit.positive->error <= LARGEST_ERROR))
        return L"the estimated error of the elastic analysis is above 1 %";
    return nullptr;
}

} // namespace Keltrix::Stability
