#pragma once

#include <vector>

#include "keltrix/platform/CString.h"
#include "keltrix/statics/Combinations.h"
#include "keltrix/statics/Export.h"
#include "keltrix/steel/MemberLayout.h"

namespace Keltrix::Statics {

/// Points and sub-spans of a member under one combination, with the signs of the member file: Fz is the shear with the
/// opposite sign of the textbook's, Myy is below zero where the member sags, tension is above zero.
struct GeneratedMember {
    std::vector<Steel::CMemberPoint> points;
    std::vector<Steel::CSubSpan> subSpans;
    std::vector<Note> notes;
};

/// Members for combinations, one each, with the same points: at every support, hinge, restraint's end, load and change
/// of load of any case.
///
/// Lengths under a linear load are divided until the parabola between two points errs by less than 0.1 % of the
/// combination's largest moment. End moments are exact. End shears are exact, except in sub-spans whose end moments do
/// not belong to a linear shear within 0.5 % (close to the tip of a cantilever under a triangular load, as a rule):
/// there the shears of the mean load are taken, which differ by less than 0.1 % of the largest shear. A note says so.
///
/// A point holds what the supports at it hold. A sub-span holds what all restraints along it hold. Of the loads that
/// act in the combination, the highest one gives the load height of its point or sub-span, above the shear centre. The
/// self weight acts at the shear centre.
///
/// Springs and hinges are in the forces alone: the point of a spring holds rigidly what its restraint says, and the member is
/// continuous at a hinge. Notes say so. Throws what Analysis::Of throws where a combination names an unknown case or a factor
/// that is not finite.
KELTRIX_STATICS_API std::vector<GeneratedMember> MakeMembers(const Analysis& analysis,
                                                             const std::vector<Combination>& combinations);

} // namespace Keltrix::Statics
