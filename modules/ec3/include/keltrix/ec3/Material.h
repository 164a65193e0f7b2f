#pragma once

#include "keltrix/design/SectionProperties.h"
#include "keltrix/ec3/Annex.h"
#include "keltrix/ec3/Export.h"
#include "keltrix/ec3/Section.h"
#include "keltrix/platform/KxData.h"

namespace Keltrix::EC3 {

enum class Grade { None, S235, S275, S355, S420, S460, User };

/// Clause 3.2.6, Pa.
inline constexpr double ELASTIC_MODULUS = 210e9;
inline constexpr double SHEAR_MODULUS = 81e9;

/// Material of a section: what clause 3.2 makes of a grade and a thickness. Stresses in Pa.
struct Material {
    Grade grade = Grade::None;
    double fy = 0.0; ///< nominal yield strength
    double fu = 0.0; ///< nominal ultimate strength
    double E = ELASTIC_MODULUS;
    double G = SHEAR_MODULUS;
    bool fuAssumed = false;      ///< user-defined grade without tensile strength: fu is fy
    const wchar_t* source = L""; ///< where the strengths come from: "EN 10025-2"
    /// Why there are no strengths; null where there are.
    const wchar_t* refusal = nullptr;

    bool IsValid() const { return refusal == nullptr; }
    /// (235 N/mm² / fy)^0.5
    double Epsilon() const;
};

/// The grade that a name means: "S235" to "S460", each also with a quality ("S355J2H"), or "User_defined"; letter case and
/// blanks are forgiven. None for any other name.
KELTRIX_EC3_API Grade GradeFromName(const CString& name);

/// Clause 3.2.1(1) with the annex: strengths for the thickest element (m). Hollow sections by EN 10210 (hot finished) or EN 10219 (cold
/// formed), others by EN 10025. Where standards differ by quality, as of S420N and S420M, the lower figures count; S275 and S355 with a quality N or M have
/// the tensile strengths of fine grain steels.
/// A user-defined grade has its strengths divided by its material factor, and G in the ratio of its E to 210 kN/mm².
/// `refusal` says why there are none: no such grade, a thickness beyond the standard, a yield strength above 460 N/mm².
KELTRIX_EC3_API Material MakeMaterial(const CSteelGrade& grade, double thickest, bool hollow,
                                      Design::Fabrication fabrication, const Annex& annex);

/// The same for a section: by its thickest element.
KELTRIX_EC3_API Material MakeMaterial(const CSteelGrade& grade, const Design::SectionProperties& section,
                                      const Annex& annex);

/// Strengths, partial factors and national choices as the resistances of cross-sections take them.
KELTRIX_EC3_API Strength MakeStrength(const Material& material, const Annex& annex);

} // namespace Keltrix::EC3
