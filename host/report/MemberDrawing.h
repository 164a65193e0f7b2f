#pragma once

#include <string>

#include "keltrix/platform/KxData.h"
#include "report/MemberAxis.h"

namespace Keltrix::Host {

/// What holds a member point or a sub-span, in a few words: "supported in the plane of the web, flange 1 (top) held laterally, torsion held".
std::string HoldWords(const Steel::CRestraint& restraint);

/// The restraint of a point or of a sub-span together with the forces and moments there, so that "the compression flange"
/// is one of the two flanges. Where the moment has no sign, or two, it stays unknown.
Steel::CRestraint RestraintOfPoint(const DrawnLayout& layout, std::size_t point);
Steel::CRestraint RestraintOfSubSpan(const Steel::CSubSpan& subSpan);

/// The member in elevation, to scale: supports, flanges and torsion held at points and along sub-spans, load heights, numbers of
/// points and sub-spans, positions.
std::string MemberSvg(const std::string& id, const DrawnLayout& layout, const MemberAxis& axis,
                      const CSecComp& component);

} // namespace Keltrix::Host
