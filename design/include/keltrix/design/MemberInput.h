#pragma once

#include <optional>
#include <vector>

#include "keltrix/design/Export.h"
#include "keltrix/design/Findings.h"
#include "keltrix/design/MomentDiagram.h"
#include "keltrix/steel/SteelMember.h"

// What every design code asks of a member before it checks it, and what it has to say of the input whatever its rules are.
namespace Keltrix::Design {

/// A grade's name in capitals, without blanks and without the quality that may follow ("JR", "J2H", "NL", "Q" and the others of EN 10025,
/// EN 10210 and EN 10219): "S355" of "s355 j2". "USER_DEFINED" stays whole. Empty where what follows the first four characters is no
/// quality.
KELTRIX_DESIGN_API CString GradeWithoutQuality(const CString& name);

/// Why the values of a user-defined grade cannot be used: no yield strength above zero, or a value that is below zero or not
/// finite. Null where they can.
KELTRIX_DESIGN_API const wchar_t* UserGradeRefusal(const CSteelGrade& grade);

/// Numbers with which no check can be made: positions, forces, moments or load heights that are not finite, or a given moment factor
/// that is not a finite number above 0. Subject::None where all can be used.
KELTRIX_DESIGN_API Refusal NumbersRefusal(const std::vector<Steel::CMemberPoint>& points,
                                          const std::vector<Steel::CSubSpan>& subSpans,
                                          std::optional<double> momentFactor);

/// The input gives no loads. Shears that differ over a sub-span are read as those of a uniform load, which fits a load of another
/// shape as well. Adds one assumption for each stretch of the same load, wherever the member is divided; loads along the web, then
/// along the flanges.
KELTRIX_DESIGN_API void AssumeUniformLoads(const MomentDiagram& major, const MomentDiagram& minor,
                                           std::vector<Assumption>& assumptions);

/// Adds one warning for each sub-span and axis whose end moments do not belong to its shears.
KELTRIX_DESIGN_API void WarnOfUnbalancedForces(const MomentDiagram& major, const MomentDiagram& minor,
                                               const CDesFormat& fmt, std::vector<Warning>& warnings);

} // namespace Keltrix::Design
